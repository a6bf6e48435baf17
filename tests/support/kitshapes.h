#pragma once

// Shapes as a test puts them down and reads them back: a rectangle added
// straight to a layer as if the operator had drawn it, the parameters of each
// shape kind in the order of its GetParam, and scene mouse events for calling
// a tool directly.

#include "kitcompare.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odellipse.h"
#include "odrect1.h"
#include "odrect2.h"

#include <QCursor>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QPointF>
#include <QtTest/QTest>

#include <initializer_list>

namespace Kit {

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

// Left, top, right, bottom; empty when the shape has none.
inline Params paramsOf(const ODRect1& shape, bool* ok = nullptr, int* direction = nullptr, int* count = nullptr)
{
    double l = -1.0, t = -1.0, r = -1.0, b = -1.0;
    int d = -1, c = -1;
    const bool result = shape.GetParam(&l, &t, &r, &b, &d, &c);
    if (ok)
        *ok = result;
    if (direction)
        *direction = d;
    if (count)
        *count = c;
    return result ? Params{l, t, r, b} : Params{};
}

inline Params paramsOf(const ODRect1* shape)
{
    return paramsOf(*shape);
}

// Centre x, centre y, width, height, angle; empty when the shape has none.
inline Params paramsOf(const ODRect2& shape)
{
    double x = 0, y = 0, w = 0, h = 0, a = 0;
    int d = 0, c = 0;
    if (!shape.GetParam(&x, &y, &w, &h, &a, &d, &c))
        return {};
    return {x, y, w, h, a};
}

// Centre x, centre y, the two radii, angle; empty when the shape has none.
inline Params paramsOf(const ODEllipse& shape)
{
    double x = 0, y = 0, rx = 0, ry = 0, a = 0;
    if (!shape.GetParam(&x, &y, &rx, &ry, &a))
        return {};
    return {x, y, rx, ry, a};
}

// A rotated rectangle as the shape operator sets one up: centre, full sizes,
// angle, shown with its handle rectangles made.
inline void place(ODRect2& shape, double x, double y, double w, double h, double angle)
{
    shape.SetRect(x, y, w, h);
    shape.SetRoateAngle(angle);
    shape.UpdateRotateCenter();
    shape.ShowShape();
    shape.UpdateHandles();
}

// An ellipse shown from its reference, with handle rectangles made.
inline void place(ODEllipse& shape, float x, float y, float rx, float ry, float angle)
{
    shape.SetEllipse(x, y, rx, ry, angle);
    shape.ShowShape();
    shape.UpdateHandles();
}

inline Params edgesOf(const QRectF& r)
{
    return {r.left(), r.top(), r.right(), r.bottom()};
}

inline bool layerHasId(ShaperLayer* layer, long id)
{
    for (ODShape* shape : layer->shapes()) {
        if (shape && shape->GetShapeID() == id)
            return true;
    }
    return false;
}

// A shape alone in a scene, its handles at the scale of a zoom.
template <class Shape>
struct ZoomedShape
{
    explicit ZoomedShape(double zoom) { shape.SetScale(float(zoom)); }

    QGraphicsScene scene;
    Shape shape{&scene};
};

// The cursor over each of the eight handles of a box from (0, 0) to
// (100, 60), 1 top left clockwise to 8 left, inside it off the handles and
// outside it, in columns "point" (scene) and "cursor"; a shape test adds its
// own rows after them.
inline void addBoxHandleCursorRows()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<Qt::CursorShape>("cursor");
    const struct
    {
        const char* name;
        QPointF point;
        Qt::CursorShape cursor;
    } rows[] = {
        {"1 top left", {0, 0}, Qt::SizeFDiagCursor},     {"2 top", {50, 0}, Qt::SizeVerCursor},
        {"3 top right", {100, 0}, Qt::SizeBDiagCursor},  {"4 right", {100, 30}, Qt::SizeHorCursor},
        {"5 bottom right", {100, 60}, Qt::SizeFDiagCursor}, {"6 bottom", {50, 60}, Qt::SizeVerCursor},
        {"7 bottom left", {0, 60}, Qt::SizeBDiagCursor}, {"8 left", {0, 30}, Qt::SizeHorCursor},
        {"inside, off the handles", {50, 30}, Qt::ArrowCursor}, {"outside", {-20, -20}, Qt::ArrowCursor},
    };
    for (const auto& row : rows)
        QTest::newRow(row.name) << row.point << row.cursor;
}

// A scene in a view whose own cursor and viewport cursor are the wait cursor,
// so that a cursor a shape sets on the viewport shows, and one it sets on the
// view by mistake too.
struct CursorView
{
    CursorView()
    {
        view.setCursor(Qt::WaitCursor);
        view.viewport()->setCursor(Qt::WaitCursor);
    }
    Qt::CursorShape viewportCursor() const { return view.viewport()->cursor().shape(); }
    Qt::CursorShape viewCursor() const { return view.cursor().shape(); }

    QGraphicsScene scene;
    QGraphicsView view{&scene};
};

// Fails the running test unless setZValue of the shape reaches every item.
template <class Shape>
void verifyZValueReaches(Shape& shape, std::initializer_list<const QGraphicsItem*> items)
{
    for (double z : {3001.0, -4.0}) {
        shape.setZValue(z);
        for (const QGraphicsItem* item : items)
            QCOMPARE(item->zValue(), z);
    }
}

// A shape dressed for a pixel check on a view at zoom: handles at that
// zoom's scale, a pure red pen one scene unit wide, and the brush given.
inline void dressForPixels(ODShape& shape, double zoom, const QColor& brush)
{
    shape.SetScale(float(zoom));
    shape.SetPenColor(QColor(255, 0, 0));
    shape.SetBrushColor(brush);
    shape.SetLineWidth(1.0f);
}

// Fails the running test unless, with the handles shown, setHandleCursor at
// point (scene) puts cursor on the viewport and leaves the view's own cursor,
// and, with the handles hidden, puts the arrow there.
template <class Shape>
void verifyHandleCursor(CursorView& v, Shape& shape, const QPointF& point, Qt::CursorShape cursor)
{
    shape.ShowHandle();
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);

    shape.HideHandle();
    v.view.viewport()->setCursor(Qt::WaitCursor);
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), Qt::ArrowCursor);
}

// Fails the running test unless a shape made at a point adds itemCount items
// to its scene and takes every one of them away when it is deleted.
template <class Shape>
void verifyItemsLeaveWithTheShape(int itemCount)
{
    QGraphicsScene scene;
    const int before = scene.items().size();
    auto* shape = new Shape(&scene, QPointF(1, 1));
    QCOMPARE(scene.items().size(), before + itemCount);
    delete shape;
    QCOMPARE(scene.items().size(), before);
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

} // namespace Kit
