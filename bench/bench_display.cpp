// Regions of interest and overlays shown by the host one call at a time, and
// read back by id, on a layer that already holds 10^3, 10^4 or 10^5 shapes.
// Each display call makes one shape and, for a ROI, walks the layer to keep
// every shape at the scene's scale; the walk visits only what changed, so a
// call costs about the same at every count.
//
//   build/bench/bench_display [--benchmark_filter=...]
//
// Read the figures as ratios from one run: 10^5 against 10^3 for one call.

#include "KESImageWnd.h"
#include "MainWindow.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"

#include "qtbenchmarkmain.h"

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>

#include <QApplication>
#include <QWidget>

#include <memory>

namespace {

constexpr int kPictureSide = 4096;
// Every benchmark makes this many calls, so that a layer of 10^3 shapes
// grows by no more than a small multiple while it is timed.
constexpr int kCalls = 2000;
// Overlays in one path of the path benchmark.
constexpr int kPathLength = 10;

// The shapes sit on a grid over the picture, wrapping around.
QPointF gridPoint(int i)
{
    const int perRow = 100;
    return QPointF(20 + (i % perRow) * 40, 20 + ((i / perRow) % perRow) * 40);
}

VorROI rectangleAt(int i)
{
    const QPointF p = gridPoint(i);
    VorROI roi;
    roi.GenRect1(VorPoint(p.x(), p.y()), VorPoint(p.x() + 25, p.y() + 15));
    return roi;
}

VorOverlay circleAt(int i)
{
    const QPointF p = gridPoint(i);
    VorOverlay ov;
    ov.GenCircle(VorPoint(p.x() + 12, p.y() + 12), 10);
    ov.SetPen(255, 0, 0, 1);
    return ov;
}

// A window of a host showing a large picture, its active layer holding count
// shapes from data, half ROIs and half overlays.
class Host
{
public:
    explicit Host(int count)
        : widget(new QWidget)
        , window(new KESImageWnd)
        , picture(cv::Mat(kPictureSide, kPictureSide, CV_8UC1, cv::Scalar(90)))
    {
        widget->resize(800, 600);
        window->create(reinterpret_cast<qlonglong>(widget.get()));
        widget->show();
        QApplication::processEvents();
        window->setBackground(picture);
        QApplication::processEvents();
        for (int i = 0; i < count; ++i) {
            if (i % 2 == 0) {
                VorROI roi = rectangleAt(i);
                ids.append(layer()->DrawROI(roi, true));
            } else {
                VorOverlay ov = circleAt(i);
                ids.append(layer()->DrawOverlay(ov, true));
            }
        }
        QApplication::processEvents();
    }
    ~Host() { window->destory(); }

    ImageCtrlScene* scene() const { return window->mainWindow()->GetImageCtrlView()->GetImageCtrlScene(); }
    ShaperLayer* layer() const { return scene()->GetActiveLayer(); }

    std::unique_ptr<QWidget> widget;
    std::unique_ptr<KESImageWnd> window;
    VorImage picture;
    QVector<long> ids;
};

bool allDrawn(const QVector<long>& ids)
{
    return !ids.contains(-1);
}

void DisplayROI(benchmark::State& state)
{
    Host host(int(state.range(0)));
    int i = 0;
    long last = 0;
    for (auto _ : state) {
        VorROI roi = rectangleAt(i++);
        last = host.layer()->DrawROI(roi, true);
        benchmark::DoNotOptimize(last);
    }
    if (last < 0 || !allDrawn(host.ids))
        state.SkipWithError("a ROI was refused");
    state.counters["shapes"] = double(state.range(0));
}

void DisplayOverlay(benchmark::State& state)
{
    Host host(int(state.range(0)));
    int i = 0;
    long last = 0;
    for (auto _ : state) {
        VorOverlay ov = circleAt(i++);
        last = host.layer()->DrawOverlay(ov, true);
        benchmark::DoNotOptimize(last);
    }
    if (last < 0 || !allDrawn(host.ids))
        state.SkipWithError("an overlay was refused");
    state.counters["shapes"] = double(state.range(0));
}

// One path of kPathLength overlays a call; the time is per overlay.
void DisplayOverlayPath(benchmark::State& state)
{
    Host host(int(state.range(0)));
    VorOverlayPath path;
    for (int k = 0; k < kPathLength; ++k)
        path.Append(circleAt(k));
    long last = 0;
    for (auto _ : state) {
        last = host.layer()->DrawOverlayPath(path, true);
        benchmark::DoNotOptimize(last);
    }
    if (last < 0)
        state.SkipWithError("the path was refused");
    state.SetItemsProcessed(state.iterations() * kPathLength);
    state.counters["shapes"] = double(state.range(0));
}

// Every shape of the layer read back by id in turn, as a ROI and as an overlay.
void ReadBackById(benchmark::State& state)
{
    Host host(int(state.range(0)));
    int i = 0;
    long result = 0;
    for (auto _ : state) {
        const long id = host.ids[i++ % host.ids.size()];
        VorROI roi;
        VorOverlay ov;
        result |= host.layer()->GetROIShape(id, &roi);
        result |= host.layer()->GetOverlay(id, &ov);
        benchmark::DoNotOptimize(roi);
        benchmark::DoNotOptimize(ov);
    }
    if (result != 0)
        state.SkipWithError("an id was not found");
    state.counters["shapes"] = double(state.range(0));
}

} // namespace

BENCHMARK(DisplayROI)->Arg(1000)->Arg(10000)->Arg(100000)->Iterations(kCalls)->Unit(benchmark::kMicrosecond);
BENCHMARK(DisplayOverlay)->Arg(1000)->Arg(10000)->Arg(100000)->Iterations(kCalls)->Unit(benchmark::kMicrosecond);
BENCHMARK(DisplayOverlayPath)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Iterations(kCalls / kPathLength)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadBackById)->Arg(1000)->Arg(10000)->Arg(100000)->Iterations(20 * kCalls)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    return runWidgetBenchmarks(argc, argv);
}
