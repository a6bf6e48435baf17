// One full repaint of a 2448 x 2048 picture fitted into the window's view, in a
// 1280 x 1024 host widget: the viewport repaints synchronously, through the
// scene's background, the image layer and the pixel labels; with a region
// image of the whole frame over the picture besides. Runs on the
// offscreen platform unless QT_QPA_PLATFORM says otherwise.
//
//   build/bench/bench_repaint [--benchmark_filter=...]

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odregion.h"

#include "qtbenchmarkmain.h"

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>

#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <memory>

namespace {

constexpr int kWidth = 2448;
constexpr int kHeight = 2048;

cv::Mat randomPicture(int type)
{
    cv::Mat mat(kHeight, kWidth, type);
    cv::RNG rng(0x1280u + unsigned(type));
    rng.fill(mat, cv::RNG::UNIFORM, 0, 256);
    return mat;
}

// A host widget with one image window showing the picture, fitted.
struct Host
{
    explicit Host(int type)
        : widget(new QWidget)
        , window(new KESImageWnd)
        , picture(randomPicture(type))
    {
        widget->resize(1280, 1024);
        window->create(reinterpret_cast<qlonglong>(widget.get()));
        widget->show();
        QApplication::processEvents();
        window->setBackground(picture);
        window->zoomFitWnd();
        QApplication::processEvents();
    }
    ~Host()
    {
        window->destory();
    }

    ImageCtrlView* view() const { return window->mainWindow()->GetImageCtrlView(); }

    std::unique_ptr<QWidget> widget;
    std::unique_ptr<KESImageWnd> window;
    VorImage picture;
};

void describe(benchmark::State& state, Host& host)
{
    double scale = 0.0;
    host.window->getZoomRatio(&scale);
    const QSize viewport = host.view()->viewport()->size();
    state.counters["scale"] = scale;
    state.counters["viewport_w"] = viewport.width();
    state.counters["viewport_h"] = viewport.height();
}

void Repaint(benchmark::State& state, int type)
{
    Host host(type);
    QWidget* viewport = host.view()->viewport();
    for (auto _ : state)
        viewport->repaint();
    describe(state, host);
}

// The same repaint with a half-transparent region image of the frame's size
// painted over the picture: every other column of the mask is inside.
void RepaintWithRegion(benchmark::State& state, int type)
{
    Host host(type);
    cv::Mat stripes(kHeight, kWidth, CV_8UC1, cv::Scalar(0));
    for (int x = 0; x < kWidth; x += 2)
        stripes.col(x).setTo(cv::Scalar(255));
    VorImage mask(stripes);
    ODRegion* region = host.view()->GetImageCtrlScene()->GetImageLayer()->GetRegion();
    region->LoadVorRegion(&mask);
    region->Update(255, 0, 0, 128);
    QWidget* viewport = host.view()->viewport();
    for (auto _ : state)
        viewport->repaint();
    describe(state, host);
}

void Grab(benchmark::State& state, int type)
{
    Host host(type);
    QWidget* viewport = host.view()->viewport();
    for (auto _ : state) {
        QPixmap pixels = viewport->grab();
        benchmark::DoNotOptimize(pixels.cacheKey());
    }
    describe(state, host);
}

BENCHMARK_CAPTURE(Repaint, gray8, CV_8UC1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Repaint, colour8, CV_8UC3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RepaintWithRegion, gray8, CV_8UC1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Grab, gray8, CV_8UC1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Grab, colour8, CV_8UC3)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    return runWidgetBenchmarks(argc, argv);
}
