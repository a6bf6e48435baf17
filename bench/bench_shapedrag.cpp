// One mouse move of an operator dragging a handle of a selected shape, for
// every kind of shape, with 10^2 and 10^4 other shapes (rectangles) on the
// same layer. The move goes to the view's viewport as the platform sends it:
// through the scene and the select tool to the shape, which moves its handle,
// and the layer, which shows its shapes and handles again. Painting is left
// out: it depends on the view's size, not on the number of shapes.
//
//   build/bench/bench_shapedrag [--benchmark_filter=...]
//
// Read the figures as ratios from one run: a kind against the rectangle at the
// same count, and 10^4 against 10^2 for one kind.

#include "KESImageWnd.h"
#include "MainWindow.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odannular.h"
#include "odanycloseline.h"
#include "odanyline.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odline.h"
#include "odpoint.h"
#include "odpolygon.h"
#include "odrect1.h"
#include "odselecttool.h"
#include "odshapetoolmanage.h"

#include "qtbenchmarkmain.h"

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include <functional>
#include <memory>

namespace {

constexpr int kPictureSide = 4096;
// The shape under test sits in the picture's top left corner, shown in the
// view at zoom 1; the other shapes fill the rest of the picture on a grid.
const QPointF kCentre(200, 150);

// The kind of shape dragged, how it is made about kCentre, where a click
// selects it and which handle the drag takes.
struct Kind
{
    const char* name;
    std::function<ODShape*(QGraphicsScene*)> make;
    QPointF body;
    int handleKey;
    // Free lines grow by a point per move of an end handle: they are made
    // anew after this many moves, with the clock stopped, so that every kind
    // is timed at about the same size.
    int movesBeforeRemake;
};

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = {
        {"rectangle",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODRect1(s);
             shape->SetRect(kCentre.x() - 60, kCentre.y() - 40, kCentre.x() + 60, kCentre.y() + 40);
             return shape;
         },
         kCentre, 3, 0},
        {"line",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODLine(s);
             shape->SetLine(float(kCentre.x() - 60), float(kCentre.y()), float(kCentre.x() + 60), float(kCentre.y()));
             return shape;
         },
         kCentre, 1, 0},
        {"arrow line",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODArrowLine(s);
             shape->SetLine(float(kCentre.x() - 60), float(kCentre.y()), float(kCentre.x() + 60), float(kCentre.y()));
             return shape;
         },
         kCentre, 1, 0},
        {"circle",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODCircle(s);
             shape->SetCircle(kCentre.x(), kCentre.y(), 50);
             return shape;
         },
         kCentre, 1, 0},
        {"arc",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODARC(s);
             shape->SetCircle(kCentre.x(), kCentre.y(), 50, 0, 90);
             return shape;
         },
         kCentre + QPointF(30, -30), 0, 0},
        {"annulus",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODAnnular(s);
             shape->SetTours(kCentre.x(), kCentre.y(), 30, 70, 10, -350);
             return shape;
         },
         kCentre + QPointF(-50, 0), 3, 0},
        {"point",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODPoint(s);
             shape->SetPoint(kCentre.x(), kCentre.y());
             return shape;
         },
         kCentre, 0, 0},
        {"polygon",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODPolygon(s);
             shape->SetPolygonPoints(QVector<QPointF>{kCentre + QPointF(-60, -40), kCentre + QPointF(60, -30),
                                                      kCentre + QPointF(50, 40), kCentre + QPointF(-50, 30)});
             return shape;
         },
         kCentre, 1, 0},
        {"free line",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODAnyLine(s);
             shape->SetAnyLinePoints(QVector<QPointF>{kCentre + QPointF(-60, 0), kCentre, kCentre + QPointF(60, 0)});
             return shape;
         },
         kCentre, 1, 64},
        {"closed free line",
         [](QGraphicsScene* s) -> ODShape* {
             auto* shape = new ODAnyCloseLine(s);
             shape->SetAnyLinePoints(QVector<QPointF>{kCentre + QPointF(-60, 0), kCentre, kCentre + QPointF(60, 0)});
             return shape;
         },
         kCentre, 1, 64},
    };
    return all;
}

// A host widget with one image window at zoom 1 on a large picture, count
// rectangles spread over the picture beyond the view, and the shape of a kind.
struct Host
{
    Host(const Kind& kind, int count)
        : widget(new QWidget)
        , window(new KESImageWnd)
        , picture(cv::Mat(kPictureSide, kPictureSide, CV_8UC1, cv::Scalar(90)))
        , kind(kind)
    {
        widget->resize(800, 600);
        window->create(reinterpret_cast<qlonglong>(widget.get()));
        widget->show();
        QApplication::processEvents();
        window->setBackground(picture);
        view()->Zoom(1.0);
        view()->centerOn(QPointF(400, 300));
        QApplication::processEvents();

        ShaperLayer* layer = scene()->GetActiveLayer();
        const int perRow = 100;
        for (int i = 0; i < count; ++i) {
            const double x = 500 + (i % perRow) * 35;
            const double y = 500 + (i / perRow) * 35;
            auto* rect = new ODRect1(scene());
            rect->SetRect(x, y, x + 20, y + 20);
            layer->addShape(rect);
        }
        makeShape();
    }
    ~Host()
    {
        ODShapeToolManage::GetODShapeToolManage()->clearSelectedShape();
        window->destory();
    }

    ImageCtrlView* view() const { return window->mainWindow()->GetImageCtrlView(); }
    ImageCtrlScene* scene() const { return view()->GetImageCtrlScene(); }

    void send(QEvent::Type type, const QPointF& scenePos, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        const QPoint local = view()->mapFromScene(scenePos);
        QMouseEvent event(type, QPointF(local), QPointF(local), QPointF(view()->viewport()->mapToGlobal(local)),
                          button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &event);
    }

    // The shape of the kind, shown, selected by a click on its body, and its
    // handle pressed: the drag is armed.
    void makeShape()
    {
        ShaperLayer* layer = scene()->GetActiveLayer();
        if (shape) {
            send(QEvent::MouseButtonRelease, handle, Qt::LeftButton, Qt::NoButton);
            layer->clearSelectedShape();
            layer->removeShape(shape);
        }
        shape = kind.make(scene());
        layer->addShape(shape);
        layer->Update();
        layer->Show(false);
        send(QEvent::MouseButtonPress, kind.body, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, kind.body, Qt::LeftButton, Qt::NoButton);
        handle = shape->handles().value(kind.handleKey).center();
        send(QEvent::MouseButtonPress, handle, Qt::LeftButton, Qt::LeftButton);
        QApplication::processEvents();
    }

    std::unique_ptr<QWidget> widget;
    std::unique_ptr<KESImageWnd> window;
    VorImage picture;
    const Kind& kind;
    ODShape* shape = nullptr;
    QPointF handle;
};

void DragHandle(benchmark::State& state, int kindIndex)
{
    const Kind& kind = kinds().at(size_t(kindIndex));
    Host host(kind, int(state.range(0)));
    if (!host.shape || host.shape->handles().isEmpty()) {
        state.SkipWithError("the shape shows no handles");
        return;
    }
    int moves = 0;
    for (auto _ : state) {
        // Back and forth by a few pixels, as a hand holding a handle does.
        const QPointF to = host.handle + QPointF(moves % 2 == 0 ? 4 : 7, moves % 3);
        host.send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        ++moves;
        if (kind.movesBeforeRemake > 0 && moves % kind.movesBeforeRemake == 0) {
            state.PauseTiming();
            host.makeShape();
            state.ResumeTiming();
        }
    }
    // The moves must have dragged the handle, not the view or nothing.
    const ODSelectTool* select = ODShapeToolManage::GetODShapeToolManage()->selectTool();
    if (select->currentShape() != host.shape || select->dragState() != ODSelectTool::ResizedHandle) {
        state.SkipWithError("the moves did not drag the handle");
        return;
    }
    state.SetLabel(kind.name);
    state.counters["shapes"] = double(state.range(0));
}

} // namespace

BENCHMARK_CAPTURE(DragHandle, rectangle, 0)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, line, 1)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, arrowline, 2)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, circle, 3)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, arc, 4)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, annulus, 5)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, point, 6)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, polygon, 7)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, freeline, 8)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DragHandle, closedfreeline, 9)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    return runWidgetBenchmarks(argc, argv);
}
