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

#include <QGraphicsSceneMouseEvent>

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
