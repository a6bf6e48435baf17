#pragma once

// Helpers for tests of shapes, shape layers and mouse tools: a window with a
// picture at a chosen zoom, rectangles put straight into a layer, the shared
// tool objects, scene mouse events for driving a tool by hand, and a log of
// what reaches the host in the order it arrives.

#include "viewinput.h"

#include "ShapeLayer.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "oddrawtool.h"
#include "odrect1.h"
#include "odselecttool.h"
#include "odshapetoolmanage.h"

#include "VorImage.h"

#include <QApplication>
#include <QGraphicsSceneMouseEvent>
#include <QScrollBar>
#include <QString>
#include <QStringList>

#include <opencv2/core.hpp>

#include <memory>

namespace ShapeKit {

inline ODShapeToolManage* tools()
{
    return ODShapeToolManage::GetODShapeToolManage();
}

inline ODSelectTool* selectTool()
{
    return static_cast<ODSelectTool*>(tools()->GetShapeTool(DM_SELECT));
}

inline ODDrawTool<ODRect1>* rectTool()
{
    return static_cast<ODDrawTool<ODRect1>*>(tools()->GetShapeTool(DM_RECT1));
}

// The tools outlive every window of a test binary: a current shape left from
// an earlier test would point into a scene that is gone.
inline void forgetCurrentShape()
{
    tools()->clearSelectedShape();
}

// The scene position that a viewport event at the pixel nearest to scenePos
// carries: what the tools really see.
inline QPointF seenAt(QGraphicsView* view, const QPointF& scenePos)
{
    return view->mapToScene(view->mapFromScene(scenePos));
}

// A rectangle put straight into a layer, shown, with its handle rectangles
// made, as a shape that the operator has drawn before.
inline ODRect1* addRect(ShaperLayer* layer, double left, double top, double right, double bottom)
{
    ImageCtrlScene* scene = layer->scene();
    auto* shape = new ODRect1(scene);
    shape->SetPenColor(scene->getPenColor());
    shape->SetBrushColor(scene->getBrushColor());
    shape->SetLineWidth(scene->getLineWidth());
    shape->SetScale(float(scene->getScale()));
    shape->SetRect(left, top, right, bottom);
    layer->addShape(shape);
    shape->ShowShape();
    shape->UpdateHandles();
    return shape;
}

inline QVector<double> paramsOf(ODRect1* shape)
{
    double l = -1.0, t = -1.0, r = -1.0, b = -1.0;
    int direction = -1, count = -1;
    if (!shape->GetParam(&l, &t, &r, &b, &direction, &count))
        return {};
    return {l, t, r, b};
}

inline bool layerHasId(ShaperLayer* layer, long id)
{
    for (ODShape* shape : layer->shapes()) {
        if (shape && shape->GetShapeID() == id)
            return true;
    }
    return false;
}

// A scene mouse event as the view would deliver it, for calling a tool
// directly.
class SceneMouse
{
public:
    SceneMouse(QEvent::Type type, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton)
        : event(type)
    {
        event.setScenePos(scenePos);
        event.setButton(button);
        event.setButtons(type == QEvent::GraphicsSceneMouseRelease ? Qt::NoButton : Qt::MouseButtons(button));
        event.setAccepted(false);
    }
    QGraphicsSceneMouseEvent* operator->() { return &event; }
    QGraphicsSceneMouseEvent* get() { return &event; }

    QGraphicsSceneMouseEvent event;
};

// A host window showing a grey picture at a fixed zoom, scrolled to its top
// left corner, so that scene points of the picture's upper left part are on
// the viewport.
class PictureWindow : public EmbeddedWindow
{
public:
    explicit PictureWindow(double zoom = 1.0, QSize picture = QSize(200, 150), QSize hostSize = QSize(640, 480))
        : EmbeddedWindow(hostSize)
        , image(cv::Mat(picture.height(), picture.width(), CV_8UC1, cv::Scalar(60)))
    {
        wnd->setBackground(image);
        QApplication::processEvents();
        setZoom(zoom);
    }
    // The scene never deletes its static layer; the shapes a test put there
    // go here, so that nothing outlives the window.
    ~PictureWindow()
    {
        if (ShaperLayer* layer = staticLayer()) {
            layer->clearSelectedShape();
            layer->clearShape();
        }
    }

    void setZoom(double zoom)
    {
        view()->Zoom(zoom);
        view()->horizontalScrollBar()->setValue(0);
        view()->verticalScrollBar()->setValue(0);
        QApplication::processEvents();
    }

    ShaperLayer* active() const { return scene()->GetActiveLayer(); }
    ShaperLayer* staticLayer() const { return scene()->GetStaticActiveLayer(); }
    EventThread* relay() const { return scene()->GetEventThread(); }

    void press(const QPointF& p, Qt::MouseButton button = Qt::LeftButton) { ViewInput::pressAt(view(), p, button); }
    void move(const QPointF& p, Qt::MouseButtons buttons = Qt::LeftButton) { ViewInput::moveTo(view(), p, buttons); }
    void release(const QPointF& p, Qt::MouseButton button = Qt::LeftButton)
    {
        ViewInput::releaseAt(view(), p, button);
    }
    void click(const QPointF& p, Qt::MouseButton button = Qt::LeftButton)
    {
        press(p, button);
        release(p, button);
    }
    void drag(const QPointF& from, const QPointF& to, Qt::MouseButton button = Qt::LeftButton)
    {
        press(from, button);
        move(to, button);
        release(to, button);
    }
    QPointF seen(const QPointF& p) const { return seenAt(view(), p); }

    VorImage image;
};

// What reaches the host through the facade, in order of arrival, as short
// texts: "clicked 7", "moved 7", "resized 7", "mouseClicked 10,20",
// "doubleClick".
class HostLog : public QObject
{
public:
    explicit HostLog(KESImageWnd* wnd)
    {
        connect(wnd, &KESImageWnd::shapeClicked, this, [this](long id) { entries << QString("clicked %1").arg(id); });
        connect(wnd, &KESImageWnd::shapeMoved, this, [this](long id) { entries << QString("moved %1").arg(id); });
        connect(wnd, &KESImageWnd::shapeResized, this, [this](long id) { entries << QString("resized %1").arg(id); });
        connect(wnd, &KESImageWnd::mouseClicked, this,
                [this](double x, double y) { entries << QString("mouseClicked %1,%2").arg(x).arg(y); });
        connect(wnd, &KESImageWnd::mouseDoubleClick, this, [this] { entries << QString("doubleClick"); });
    }

    // Only the shape events, in order.
    QStringList shapeEvents() const
    {
        QStringList out;
        for (const QString& e : entries) {
            if (e.startsWith("clicked") || e.startsWith("moved") || e.startsWith("resized"))
                out << e;
        }
        return out;
    }

    QStringList entries;
};

inline QString clickedText(long id)
{
    return QString("clicked %1").arg(id);
}
inline QString movedText(long id)
{
    return QString("moved %1").arg(id);
}
inline QString resizedText(long id)
{
    return QString("resized %1").arg(id);
}

// A left-click callback of the event relay, and what it received.
struct LeftClicks
{
    struct Call
    {
        long long window;
        float x;
        float y;
    };
    QList<Call> calls;

    static void record(long long window, float x, float y, void* data)
    {
        static_cast<LeftClicks*>(data)->calls.append({window, x, y});
    }
    void attach(EventThread* relay) { relay->RegisterMouseLClickEvent(&LeftClicks::record, this); }
    static void detach(EventThread* relay) { relay->RegisterMouseLClickEvent(nullptr, nullptr); }
};

} // namespace ShapeKit
