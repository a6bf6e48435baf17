// The cost of one operator or host event on a shape layer that holds many live
// shapes: N = 10^2, 10^3, 10^4 and 10^5 shapes of every kind the tools make
// (rectangles, rotated rectangles, ellipses, circles, annuli, arcs, lines,
// arrow lines, points, polygons, free lines and closed free lines), shown by
// the host on a 2448 x 2048 picture fitted into a 1280 x 1024 window. Events
// go to the view's viewport as the platform sends them, and the window paints
// after each one, as it would between two events of a live session:
//
//   move        one mouse move of a handle drag, at fit and at zoom 4
//   press       a press on a shape, and a press on empty ground
//   draw        one more rectangle: press, two moves and release
//   clear       clearLayer(LAYER_SHAPE) of the host, and the layer's clearShape
//   display     N overlays shown one display call at a time
//
// Each timed event is followed by the paint it asks for; the paints counted on
// the viewport are reported per event ("paints"). At the end the run prints
// a table of the per-event times and each against the time at N = 10^2 of the
// same run; for clear and display, whose work grows with N by nature, the
// ratio is of the time per shape.
//
//   build/bench/bench_manyshapes [--scene_index=bsp|none] [--benchmark_filter=...]
//
// --scene_index sets the scene's item index before the shapes are made (BSP
// tree or none) to compare the two; without it the scene keeps the window's.

#include "KESImageWnd.h"
#include "MainWindow.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odselecttool.h"
#include "odshape.h"
#include "odshapetoolmanage.h"

#include "VorImage.h"
#include "VorOverlay.h"
#include "VorPointArray.h"
#include "VorROI.h"

#include "qtbenchmarkmain.h"

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 2448;
constexpr int kHeight = 2048;
constexpr int kKinds = 12;

// The dragged rectangle sits at the picture's centre in a zone kept free of
// other shapes; a second free zone beside it is the empty ground that presses
// and the drawn rectangle use.
const QPointF kCentre(kWidth / 2.0, kHeight / 2.0);
const QRectF kDragged(kCentre.x() - 60, kCentre.y() - 30, 120, 60);
const QRectF kDragZone(kCentre.x() - 100, kCentre.y() - 60, 200, 120);
const QRectF kGroundZone(kCentre.x() + 176, kCentre.y() - 60, 120, 120);
const QPointF kGround = kGroundZone.center();

using Clock = std::chrono::steady_clock;

// The index the scenes get, when the command line names one.
enum class SceneIndex { Window, Bsp, None };
SceneIndex g_sceneIndex = SceneIndex::Window;
// The index the scenes had, for the summary.
const char* g_indexName = "";

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

VorPointArray pointsOf(std::initializer_list<QPointF> points)
{
    VorPointArray array;
    for (const QPointF& p : points)
        array.Append(VorPoint(p.x(), p.y()));
    return array;
}

// The shapes of kind k in a square cell of side c with its top left at o,
// within 0.15 c .. 0.85 c of the cell, as a host's ROI or overlay.
struct CellShape
{
    bool isOverlay = false;
    VorROI roi;
    VorOverlay overlay;
};

CellShape shapeOfKind(int kind, QPointF o, double c, bool asOverlay)
{
    const QPointF m = o + QPointF(c / 2, c / 2);
    auto at = [&](double fx, double fy) { return o + QPointF(fx * c, fy * c); };
    auto vp = [](QPointF p) { return VorPoint(p.x(), p.y()); };
    CellShape s;
    // The kinds that only an overlay draws: arrow lines and closed free lines.
    s.isOverlay = asOverlay || kind == 7 || kind == 11;
    VorROI& r = s.roi;
    VorOverlay& v = s.overlay;
    switch (kind) {
    case 0:
        s.isOverlay ? v.GenRect1(vp(at(0.15, 0.15)), vp(at(0.85, 0.85))) : r.GenRect1(vp(at(0.15, 0.15)), vp(at(0.85, 0.85)));
        break;
    case 1: s.isOverlay ? v.GenRect2(vp(m), 0.7 * c, 0.4 * c, 30) : r.GenRect2(vp(m), 0.7 * c, 0.4 * c, 30); break;
    case 2: s.isOverlay ? v.GenEllipse(vp(m), 0.35 * c, 0.2 * c, 20) : r.GenEllipse(vp(m), 0.35 * c, 0.2 * c, 20); break;
    case 3: s.isOverlay ? v.GenCircle(vp(m), 0.35 * c) : r.GenCircle(vp(m), 0.35 * c); break;
    case 4:
        s.isOverlay ? v.GenTorus(vp(m), 0.2 * c, 0.35 * c, 10, 300) : r.GenTorus(vp(m), 0.2 * c, 0.35 * c, 10, 300);
        break;
    case 5: s.isOverlay ? v.GenArc(vp(m), 0.35 * c, 0, 120) : r.GenArc(vp(m), 0.35 * c, 0, 120); break;
    case 6:
        s.isOverlay ? v.GenLine(vp(at(0.15, 0.3)), vp(at(0.85, 0.7))) : r.GenLine(vp(at(0.15, 0.3)), vp(at(0.85, 0.7)));
        break;
    case 7: v.GenArrowLine(vp(at(0.15, 0.7)), vp(at(0.85, 0.3))); break;
    case 8: s.isOverlay ? v.GenPoint(vp(m)) : r.GenPoint(vp(m)); break;
    case 9: {
        const VorPointArray p = pointsOf({at(0.15, 0.2), at(0.85, 0.15), at(0.8, 0.85), at(0.2, 0.8)});
        s.isOverlay ? v.GenPolygon(p) : r.GenPolygon(p);
        break;
    }
    case 10: {
        const VorPointArray p = pointsOf({at(0.15, 0.5), at(0.3, 0.2), at(0.5, 0.6), at(0.7, 0.3), at(0.85, 0.5)});
        s.isOverlay ? v.GenIrregular(p) : r.GenIrregular(p);
        break;
    }
    default: v.GenPolyLine(pointsOf({at(0.15, 0.5), at(0.4, 0.15), at(0.85, 0.4), at(0.7, 0.85), at(0.3, 0.8)})); break;
    }
    if (s.isOverlay)
        v.SetPen(255, 128, 0, 1);
    return s;
}

// The cells of a grid over the picture that leave both free zones alone,
// enough of them for count shapes.
std::vector<QPointF> gridCells(int count, double& side)
{
    side = std::sqrt(double(kWidth) * kHeight / (count * 1.1));
    for (;;) {
        std::vector<QPointF> cells;
        for (double y = 0; y + side <= kHeight && int(cells.size()) < count; y += side) {
            for (double x = 0; x + side <= kWidth && int(cells.size()) < count; x += side) {
                const QRectF cell(x, y, side, side);
                if (!cell.intersects(kDragZone) && !cell.intersects(kGroundZone))
                    cells.push_back(cell.topLeft());
            }
        }
        if (int(cells.size()) >= count)
            return cells;
        side *= 0.97;
    }
}

// Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    long paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

// A host widget with one window, a fitted picture and count shapes of every
// kind on the shape layer, the host's way (display calls), plus the rectangle
// that the drags and presses take.
class Host
{
public:
    explicit Host(int count)
        : m_count(count)
        , widget(new QWidget)
        , window(new KESImageWnd)
        , picture(cv::Mat(kHeight, kWidth, CV_8UC1, cv::Scalar(90)))
    {
        widget->resize(1280, 1024);
        window->create(reinterpret_cast<qlonglong>(widget.get()));
        widget->show();
        QApplication::processEvents();
        window->setBackground(picture);
        window->zoomFitWnd();
        if (g_sceneIndex != SceneIndex::Window)
            scene()->setItemIndexMethod(g_sceneIndex == SceneIndex::Bsp ? QGraphicsScene::BspTreeIndex
                                                                          : QGraphicsScene::NoIndex);
        g_indexName = scene()->itemIndexMethod() == QGraphicsScene::BspTreeIndex ? "BSP tree" : "none";
        view()->viewport()->installEventFilter(&counter);
        QApplication::processEvents();
        fill();
    }
    ~Host() { window->destory(); }

    ImageCtrlView* view() const { return window->mainWindow()->GetImageCtrlView(); }
    ImageCtrlScene* scene() const { return view()->GetImageCtrlScene(); }
    ShaperLayer* layer() const { return scene()->GetActiveLayer(); }
    int count() const { return m_count; }

    // The count shapes, then the dragged rectangle, then a paint.
    void fill()
    {
        double side = 0;
        const std::vector<QPointF> cells = gridCells(m_count, side);
        for (int i = 0; i < m_count; ++i)
            display(shapeOfKind(i % kKinds, cells[size_t(i)], side, false));
        VorROI rect;
        rect.GenRect1(VorPoint(kDragged.left(), kDragged.top()), VorPoint(kDragged.right(), kDragged.bottom()));
        dragged = layer()->shapeById(window->displayROI(rect));
        filled = true;
        paint();
    }

    long display(CellShape s)
    {
        return s.isOverlay ? window->displayOverlay(s.overlay) : window->displayROI(s.roi);
    }

    void send(QEvent::Type type, const QPointF& scenePos, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        const QPoint local = view()->mapFromScene(scenePos);
        QMouseEvent event(type, QPointF(local), QPointF(local), QPointF(view()->viewport()->mapToGlobal(local)),
                          button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &event);
    }
    void press(const QPointF& p) { send(QEvent::MouseButtonPress, p, Qt::LeftButton, Qt::LeftButton); }
    void move(const QPointF& p) { send(QEvent::MouseMove, p, Qt::NoButton, Qt::LeftButton); }
    void release(const QPointF& p) { send(QEvent::MouseButtonRelease, p, Qt::LeftButton, Qt::NoButton); }
    void click(const QPointF& p)
    {
        press(p);
        paint();
        release(p);
        paint();
    }

    // Whatever the last event asked to repaint is painted, as the event loop
    // does between two events.
    void paint()
    {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }

    ODSelectTool* selectTool() const { return ODShapeToolManage::GetODShapeToolManage()->selectTool(); }

    // The handle of the dragged rectangle farthest to the bottom right.
    QPointF cornerHandle() const
    {
        QPointF best;
        double bestSum = -1e300;
        for (const QRectF& h : dragged->handles()) {
            if (h.center().x() + h.center().y() > bestSum) {
                bestSum = h.center().x() + h.center().y();
                best = h.center();
            }
        }
        return best;
    }

    ODShape* dragged = nullptr;
    // Whether the layer holds what fill() gave it.
    bool filled = false;
    PaintCounter counter;

private:
    int m_count;

public:
    std::unique_ptr<QWidget> widget;
    std::unique_ptr<KESImageWnd> window;
    VorImage picture;
};

// One host for all cases of one count, made when a case of another count
// asks; the cases that empty the layer fill it again for the next.
std::unique_ptr<Host> g_host;

Host& hostOf(int count)
{
    if (!g_host || g_host->count() != count) {
        g_host.reset();
        g_host.reset(new Host(count));
    }
    if (!g_host->filled) {
        g_host->window->clearLayer(KESImageWnd::LAYER_SHAPE);
        g_host->fill();
    }
    return *g_host;
}

// The summary: seconds per event by case and count, and whether the ratio is
// per shape.
struct Row
{
    std::map<int, double> seconds;
    bool perShape = false;
    std::string unit;
};
std::vector<std::string> g_order;
std::map<std::string, Row> g_rows;

void record(const std::string& name, int count, double seconds, bool perShape)
{
    if (!g_rows.count(name))
        g_order.push_back(name);
    Row& row = g_rows[name];
    row.seconds[count] = seconds;
    row.perShape = perShape;
}

// Times of each iteration summed; the clock of Google Benchmark is manual.
struct Timer
{
    double total = 0;
    long iterations = 0;
    long paints = 0;

    // One timed iteration that took seconds and painted paintsNow - paintsBefore times.
    void add(double seconds, long paintsBefore, long paintsNow)
    {
        total += seconds;
        paints += paintsNow - paintsBefore;
        ++iterations;
    }
};

void finish(benchmark::State& state, const std::string& name, const Timer& timer, bool perShape = false)
{
    const int count = int(state.range(0));
    state.counters["shapes"] = count;
    if (timer.iterations > 0) {
        state.counters["paints"] = double(timer.paints) / double(timer.iterations);
        record(name, count, timer.total / double(timer.iterations), perShape);
    }
}

void DragHandle(benchmark::State& state, double zoom)
{
    Host& host = hostOf(int(state.range(0)));
    if (zoom > 0) {
        host.window->zoom(zoom);
        host.view()->centerOn(kCentre);
    }
    host.paint();
    host.click(kDragged.center());
    const QPointF handle = host.cornerHandle();
    host.press(handle);
    host.paint();
    Timer timer;
    int moves = 0;
    for (auto _ : state) {
        // Back and forth by a few pixels, as a hand holding a handle does.
        const QPointF to = handle + QPointF(moves % 2 == 0 ? 4 : 7, moves % 3);
        ++moves;
        const long before = host.counter.paints;
        const auto start = Clock::now();
        host.move(to);
        host.paint();
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        timer.add(seconds, before, host.counter.paints);
    }
    const bool dragged = host.selectTool()->currentShape() == host.dragged
                         && host.selectTool()->dragState() == ODSelectTool::ResizedHandle;
    host.release(handle);
    host.click(kGround);
    if (zoom > 0)
        host.window->zoomFitWnd();
    host.paint();
    if (!dragged) {
        state.SkipWithError("the moves did not drag the handle");
        return;
    }
    finish(state, zoom > 0 ? "move, zoom 4" : "move, fitted", timer);
}

// A press and its release at a point, each timed with its paint: the press
// on the clock of Google Benchmark, the release in a row of its own.
struct ClickTimes
{
    Timer press;
    Timer release;
};

void timedClick(benchmark::State& state, Host& host, const QPointF& at, ClickTimes& times)
{
    long before = host.counter.paints;
    auto start = Clock::now();
    host.press(at);
    host.paint();
    double seconds = secondsSince(start);
    state.SetIterationTime(seconds);
    times.press.add(seconds, before, host.counter.paints);
    before = host.counter.paints;
    start = Clock::now();
    host.release(at);
    host.paint();
    seconds = secondsSince(start);
    times.release.add(seconds, before, host.counter.paints);
}

// Clicks at `target`, each after an untimed click at `setUp`; `selectsShape`
// says whether the click must leave the dragged rectangle selected or nothing.
// The press is the benchmark's time, the release a figure beside it.
void timedClicks(benchmark::State& state, const QPointF& setUp, const QPointF& target, bool selectsShape,
                 const char* name, const char* releaseName)
{
    Host& host = hostOf(int(state.range(0)));
    ClickTimes times;
    bool asExpected = true;
    for (auto _ : state) {
        state.PauseTiming();
        host.click(setUp);
        state.ResumeTiming();
        timedClick(state, host, target, times);
        asExpected = asExpected && host.selectTool()->currentShape() == (selectsShape ? host.dragged : nullptr);
    }
    if (selectsShape)
        host.click(kGround);
    if (!asExpected) {
        state.SkipWithError(selectsShape ? "the click did not select the shape" : "the click left a shape selected");
        return;
    }
    finish(state, name, times.press);
    state.counters["release_ms"] = times.release.total / double(times.release.iterations) * 1e3;
    record(releaseName, int(state.range(0)), times.release.total / double(times.release.iterations), false);
}

// A click that selects the dragged rectangle by its body, from nothing
// selected.
void PressOnShape(benchmark::State& state)
{
    timedClicks(state, kGround, kDragged.center(), true, "press on a shape", "  its release (shape)");
}

// A click on empty ground while the rectangle is selected. The press keeps
// the current shape; the release selects anew and finds nothing.
void PressOnGround(benchmark::State& state)
{
    timedClicks(state, kDragged.center(), kGround, false, "press on ground", "  its release (ground)");
}

// One more rectangle drawn by the operator in the free zone: the draw mode is
// set untimed, then press, two moves and release, each painted. The new
// rectangle is removed untimed.
void DrawOneMore(benchmark::State& state)
{
    Host& host = hostOf(int(state.range(0)));
    const QPointF from = kGroundZone.topLeft() + QPointF(20, 20);
    const QPointF to = kGroundZone.bottomRight() - QPointF(20, 20);
    Timer timer;
    bool drawn = true;
    for (auto _ : state) {
        host.window->drawRect();
        const int shapesBefore = host.layer()->shapeCount();
        const long before = host.counter.paints;
        const auto start = Clock::now();
        host.press(from);
        host.paint();
        host.move((from + to) / 2);
        host.paint();
        host.move(to);
        host.paint();
        host.release(to);
        host.paint();
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        timer.add(seconds, before, host.counter.paints);
        drawn = drawn && host.layer()->shapeCount() == shapesBefore + 1;
        if (host.layer()->shapeCount() > shapesBefore)
            host.window->removeShape(host.window->getShapeIDS(KESImageWnd::LAYER_SHAPE).last());
        host.paint();
    }
    if (!drawn) {
        state.SkipWithError("no rectangle was drawn");
        return;
    }
    finish(state, "draw one more rect", timer);
}

// The host empties the shape layer; the layer is filled again untimed.
void ClearLayer(benchmark::State& state)
{
    Host& host = hostOf(int(state.range(0)));
    Timer timer;
    for (auto _ : state) {
        if (host.layer()->shapeCount() == 0)
            host.fill();
        host.filled = false;
        const long before = host.counter.paints;
        const auto start = Clock::now();
        host.window->clearLayer(KESImageWnd::LAYER_SHAPE);
        host.paint();
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        timer.add(seconds, before, host.counter.paints);
    }
    if (host.layer()->shapeCount() != 0) {
        state.SkipWithError("shapes were left");
        return;
    }
    finish(state, "clearLayer(SHAPE)", timer, true);
}

// The layer's own clearShape, which deletes the shapes and nothing else.
void ClearShape(benchmark::State& state)
{
    Host& host = hostOf(int(state.range(0)));
    Timer timer;
    for (auto _ : state) {
        if (host.layer()->shapeCount() == 0)
            host.fill();
        host.filled = false;
        host.layer()->clearCurrentShape();
        host.layer()->clearSelectedShape();
        const auto start = Clock::now();
        host.layer()->clearShape();
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        timer.add(seconds, 0, 0);
    }
    host.paint();
    finish(state, "clearShape", timer, true);
}

// N overlays of every kind shown one display call at a time on an empty
// layer, then painted; the layer is emptied untimed.
void DisplayOverlays(benchmark::State& state)
{
    Host& host = hostOf(int(state.range(0)));
    const int count = host.count();
    double side = 0;
    const std::vector<QPointF> cells = gridCells(count, side);
    std::vector<CellShape> overlays;
    overlays.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        overlays.push_back(shapeOfKind(i % kKinds, cells[size_t(i)], side, true));
    Timer timer;
    bool shown = true;
    for (auto _ : state) {
        host.filled = false;
        host.window->clearLayer(KESImageWnd::LAYER_SHAPE);
        host.paint();
        const long before = host.counter.paints;
        const auto start = Clock::now();
        for (CellShape& s : overlays)
            shown = host.display(s) >= 0 && shown;
        host.paint();
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        timer.add(seconds, before, host.counter.paints);
    }
    if (!shown || host.layer()->shapeCount() != count) {
        state.SkipWithError("an overlay was refused");
        return;
    }
    finish(state, "display N overlays", timer, true);
}

// The table of the run: per-event times, and each against N = 10^2.
void printSummary()
{
    if (g_rows.empty())
        return;
    std::vector<int> counts;
    for (const auto& entry : g_rows)
        for (const auto& cell : entry.second.seconds)
            if (std::find(counts.begin(), counts.end(), cell.first) == counts.end())
                counts.push_back(cell.first);
    std::sort(counts.begin(), counts.end());
    std::printf("\nScene item index: %s\n", g_indexName);
    std::printf("Per event, ms (x N=100: the time against N=100 of this run; "
                "for clear and display, the time per shape against it)\n");
    std::printf("%-22s", "event");
    for (int n : counts)
        std::printf(" | %9s %9s", ("N=" + std::to_string(n)).c_str(), "x N=100");
    std::printf("\n");
    for (const std::string& name : g_order) {
        const Row& row = g_rows.at(name);
        std::printf("%-22s", name.c_str());
        const auto base = row.seconds.find(100);
        for (int n : counts) {
            const auto it = row.seconds.find(n);
            if (it == row.seconds.end()) {
                std::printf(" | %9s %9s", "-", "-");
                continue;
            }
            double ratio = 0;
            if (base != row.seconds.end() && base->second > 0) {
                ratio = it->second / base->second;
                if (row.perShape)
                    ratio /= double(n) / 100.0;
            }
            std::printf(" | %9.3f %9.2f", it->second * 1e3, ratio);
        }
        std::printf("\n");
    }
    g_host.reset();
}

// Iterations by count: the slow cases of large counts run a few times only.
int iterationsFor(int count, int at100, int at1000, int at10k, int at100k)
{
    return count <= 100 ? at100 : count <= 1000 ? at1000 : count <= 10000 ? at10k : at100k;
}

void registerAll()
{
    for (int count : {100, 1000, 10000, 100000}) {
        auto add = [count](const char* name, auto fn, int iterations) {
            benchmark::RegisterBenchmark(name, fn)
                ->Arg(count)
                ->Iterations(iterations)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        };
        add("DragHandle/fitted", [](benchmark::State& s) { DragHandle(s, 0); },
            iterationsFor(count, 200, 100, 20, 5));
        add("DragHandle/zoom4", [](benchmark::State& s) { DragHandle(s, 4); },
            iterationsFor(count, 200, 100, 40, 10));
        add("PressOnShape", PressOnShape, iterationsFor(count, 50, 30, 10, 3));
        add("PressOnGround", PressOnGround, iterationsFor(count, 50, 30, 10, 3));
        add("DrawOneMore", DrawOneMore, iterationsFor(count, 30, 20, 5, 2));
        add("ClearLayer", ClearLayer, iterationsFor(count, 10, 5, 3, 2));
        add("ClearShape", ClearShape, iterationsFor(count, 10, 5, 3, 2));
        add("DisplayOverlays", DisplayOverlays, iterationsFor(count, 20, 5, 2, 1));
    }
}

} // namespace

int main(int argc, char** argv)
{
    // --scene_index is ours; the rest goes to Google Benchmark.
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--scene_index=bsp")
            g_sceneIndex = SceneIndex::Bsp;
        else if (arg == "--scene_index=none")
            g_sceneIndex = SceneIndex::None;
        else
            argv[kept++] = argv[i];
    }
    argc = kept;
    registerAll();
    return runWidgetBenchmarks(argc, argv, printSummary);
}
