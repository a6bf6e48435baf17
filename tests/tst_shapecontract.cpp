// The protocol every editable shape keeps, run over each shape class as a row:
// parameters read back through the class's own GetParam, the reference built
// on first use, handle and body hit tests, items that stay with the shape for
// its whole life and leave with it, pen width, z order and handle pixels on a
// real view at three zooms. A shape class joins by adding its entry to
// shapeContracts().

#include "testkit.h"

#include "CircleHandleItem.h"
#include "GraphicsHandleItem.h"
#include "Rect1HandleItem.h"
#include "Rect2HandleItem.h"
#include "VorPointArray.h"
#include "geometryhelpers.h"
#include "odannular.h"
#include "odanycloseline.h"
#include "odanyline.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odimage.h"
#include "odline.h"
#include "odpoint.h"
#include "odpolygon.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odshape.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QGraphicsPathItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsPolygonItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QSet>
#include <QtTest>

#include <cmath>
#include <functional>
#include <memory>
#include <typeinfo>

namespace {

// How a handle item paints a handle rectangle.
enum class HandlePaint {
    FixedDevicePixels, // a 6 by 6 device-pixel square whatever the zoom
    SceneUnits,        // the rectangle as it stands, growing with the zoom, outlined in the pen's colour
};

// Output presets that no shape writes by itself.
constexpr double kPresetValue = -12345.5;
constexpr int kPresetInt = -7;

// The side of a handle rectangle in handle units, and of a fixed-size square
// in device pixels.
constexpr double kHandleSide = 6.0;

// What the contract needs to know about one shape class.
struct ShapeContract
{
    QString name;
    int slotCount = 0;   // values in orgData()
    int paramCount = 0;  // values GetParam writes: the slots, then the class's extras
    int handleCount = 0; // keys 0 .. handleCount - 1
    HandlePaint handlePaint = HandlePaint::FixedDevicePixels;
    QString handleItemClass;
    std::function<bool(const QGraphicsPathItem*)> hasHandleItemClass;
    // The class makes no handle item: its handles serve the hit test alone
    // and are never painted.
    bool hasHandleItem = true;
    // The display items draw with the shape's pen; a picture has none.
    bool displayTakesPen = true;
    int roundHandleKey = -1;              // the key painted as a disc, -1 for none
    QVector<QPair<int, int>> joinedHandles; // keys joined by a painted line
    bool showHandleRaisesHandleItem = false; // ShowHandle puts the handle item one above the main item
    // The class makes its handles in every constructor and its hit test makes
    // them anew before it looks, so a handle is found without UpdateHandles.
    bool hitTestUpdatesHandles = false;
    // The reference is a list of points, two slots each, that a tool fills
    // point by point: a shape made at a point holds that point from the start,
    // GetParam succeeds also with no points, slotCount is the box shape's and
    // slotsAtPoint holds the one point.
    bool referenceIsPointList = false;

    std::function<ODShape*(QGraphicsScene*)> make;
    std::function<ODShape*(QGraphicsScene*, QPointF)> makeAt;
    // The slots of a shape made at a point, before anything moved it.
    std::function<QVector<double>(QPointF)> slotsAtPoint;
    // Parameters (slots, then extras) of a shape filling the box of the given
    // centre and half size, unturned; and how to hand them to the shape.
    std::function<QVector<double>(QPointF, QSizeF)> boxParams;
    std::function<void(ODShape*, const QVector<double>&)> setParams;
    // GetParam with outputs preset to values, which are read back afterwards.
    std::function<bool(const ODShape*, QVector<double>&)> getParam;
    // A point on the body of the box shape: its centre, unless said otherwise.
    std::function<QPointF(QPointF, QSizeF)> bodyPoint = [](QPointF centre, QSizeF) { return centre; };
    // The display items, the main item first.
    std::function<QList<QGraphicsItem*>(const ODShape*)> displayItems;
    std::function<void(ODShape*, long)> setZValue;

    // Where the handles of a shape with these parameters sit, in key order, at
    // the given handle scale (scene coordinates).
    std::function<QVector<QPointF>(const QVector<double>& params, float handleScale)> handleCentres;
    // The parameters after MoveHandleTo(number, target) on the shape with
    // these parameters: the slots the handle owns change, nothing else does.
    std::function<QVector<double>(const QVector<double>& params, int number, QPointF target)> dragResult;
    // The parameters that MoveShape shifts: x positions and y positions.
    QVector<int> xParams;
    QVector<int> yParams;
    // How near computed positions must come: geometry kept in float (radii,
    // angles, handle positions through float sines) is within this of the
    // double formula.
    double tolerance = 1e-9;
};

template <typename Shape>
const Shape* as(const ODShape* shape)
{
    return static_cast<const Shape*>(shape);
}

template <typename Shape>
Shape* as(ODShape* shape)
{
    return static_cast<Shape*>(shape);
}

template <typename Item>
std::function<bool(const QGraphicsPathItem*)> isExactly()
{
    return [](const QGraphicsPathItem* item) { return item && typeid(*item) == typeid(Item); };
}

// The nine handles of a turned rectangle: eight squares and a round rotation
// handle joined to the top-centre one, on a Rect2HandleItem that ShowHandle
// raises above the main item.
void useTurnedRectangleHandles(ShapeContract& c)
{
    c.handleCount = 9;
    c.handlePaint = HandlePaint::FixedDevicePixels;
    c.handleItemClass = "Rect2HandleItem";
    c.hasHandleItemClass = isExactly<Rect2HandleItem>();
    c.roundHandleKey = 8;
    c.joinedHandles = {{8, 1}};
    c.showHandleRaisesHandleItem = true;
}

// The eight handles of a box: corners and edge middles clockwise from the top left.
QVector<QPointF> boxHandleCentres(const QRectF& box)
{
    const QPointF c = box.center();
    return {box.topLeft(),     QPointF(c.x(), box.top()),    box.topRight(),   QPointF(box.right(), c.y()),
            box.bottomRight(), QPointF(c.x(), box.bottom()), box.bottomLeft(), QPointF(box.left(), c.y())};
}

// The same and the rotation handle, 10 handle units above the top centre.
QVector<QPointF> turnedBoxHandleCentres(const QRectF& box, float handleScale)
{
    QVector<QPointF> centres = boxHandleCentres(box);
    centres.append(QPointF(box.center().x(), box.top() - 10.0f * handleScale));
    return centres;
}

// The angle a rotation handle dragged to target gives: straight above the
// centre is 360, counter-clockwise on the screen, in float.
double rotationHandleAngle(QPointF target, QPointF centre)
{
    return ConvertAngle(360.0f - (90.0f - CalculateAngle(target, centre)));
}

// The sides of a box after handle number went to target. Slots: left 0, top 1,
// right 2, bottom 3; numbers clockwise from the top left.
QVector<double> boxDragResult(QVector<double> v, int number, QPointF target)
{
    const bool left = number == 1 || number == 7 || number == 8;
    const bool right = number >= 3 && number <= 5;
    const bool top = number >= 1 && number <= 3;
    const bool bottom = number >= 5 && number <= 7;
    if (left)
        v[0] = target.x();
    if (top)
        v[1] = target.y();
    if (right)
        v[2] = target.x();
    if (bottom)
        v[3] = target.y();
    return v;
}

ShapeContract rect1Contract()
{
    ShapeContract c;
    c.name = "ODRect1";
    c.slotCount = 4;
    c.paramCount = 6;
    c.handleCount = 8;
    c.handlePaint = HandlePaint::FixedDevicePixels;
    c.handleItemClass = "Rect1HandleItem";
    c.hasHandleItemClass = isExactly<Rect1HandleItem>();
    c.showHandleRaisesHandleItem = true;
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODRect1(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODRect1(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), p.x(), p.y()}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        return QVector<double>{centre.x() - half.width(), centre.y() - half.height(), centre.x() + half.width(),
                               centre.y() + half.height(), double(SL_TOP_TO_BOTTOM), 3};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        auto* rect = as<ODRect1>(shape);
        rect->SetRect(v[0], v[1], v[2], v[3]);
        rect->SetSearchLine(SEARCHLINEDIRECTION(int(v[4])), int(v[5]));
        rect->SetSearchLineFlag(true);
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        double l = v[0], t = v[1], r = v[2], b = v[3];
        int direction = int(v[4]), count = int(v[5]);
        const bool ok = as<ODRect1>(shape)->GetParam(&l, &t, &r, &b, &direction, &count);
        v = {l, t, r, b, double(direction), double(count)};
        return ok;
    };
    c.displayItems = [](const ODShape* shape) {
        return QList<QGraphicsItem*>{as<ODRect1>(shape)->rectItem(), as<ODRect1>(shape)->searchLineItem()};
    };
    c.setZValue = [](ODShape* shape, long z) { as<ODRect1>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float) {
        return boxHandleCentres(QRectF(QPointF(v[0], v[1]), QPointF(v[2], v[3])));
    };
    c.dragResult = &boxDragResult;
    c.xParams = {0, 2};
    c.yParams = {1, 3};
    return c;
}

ShapeContract rect2Contract()
{
    ShapeContract c;
    c.name = "ODRect2";
    c.slotCount = 4;
    c.paramCount = 7;
    useTurnedRectangleHandles(c);
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODRect2(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODRect2(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), 0, 0}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        return QVector<double>{centre.x(), centre.y(), 2 * half.width(), 2 * half.height(), 0,
                               double(SL_LEFT_TO_RIGHT), 3};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        auto* rect = as<ODRect2>(shape);
        rect->SetRect(v[0], v[1], v[2], v[3]);
        rect->SetRoateAngle(v[4]);
        rect->UpdateRotateCenter();
        rect->SetSearchLine(SEARCHLINEDIRECTION(int(v[5])), int(v[6]));
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        double x = v[0], y = v[1], w = v[2], h = v[3], angle = v[4];
        int direction = int(v[5]), count = int(v[6]);
        const bool ok = as<ODRect2>(shape)->GetParam(&x, &y, &w, &h, &angle, &direction, &count);
        v = {x, y, w, h, angle, double(direction), double(count)};
        return ok;
    };
    c.displayItems = [](const ODShape* shape) {
        return QList<QGraphicsItem*>{as<ODRect2>(shape)->rectItem(), as<ODRect2>(shape)->searchLineItem()};
    };
    c.setZValue = [](ODShape* shape, long z) { as<ODRect2>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float handleScale) {
        return turnedBoxHandleCentres(QRectF(v[0] - v[2] / 2, v[1] - v[3] / 2, v[2], v[3]), handleScale);
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        // Unturned, a resize moves the grabbed corner or edge and keeps the
        // opposite one: centre and size follow.
        QRectF r(v[0] - v[2] / 2, v[1] - v[3] / 2, v[2], v[3]);
        switch (number) {
        case 1: r.setTopLeft(target); break;
        case 2: r.setTop(target.y()); break;
        case 3: r.setTopRight(target); break;
        case 4: r.setRight(target.x()); break;
        case 5: r.setBottomRight(target); break;
        case 6: r.setBottom(target.y()); break;
        case 7: r.setBottomLeft(target); break;
        case 8: r.setLeft(target.x()); break;
        default: break;
        }
        if (number >= 1 && number <= 8) {
            v[0] = r.center().x();
            v[1] = r.center().y();
            v[2] = r.width();
            v[3] = r.height();
        }
        if (number == 9)
            v[4] = rotationHandleAngle(target, QPointF(v[0], v[1]));
        return v;
    };
    c.xParams = {0};
    c.yParams = {1};
    c.tolerance = Kit::kGeometryTolerance;
    return c;
}

ShapeContract ellipseContract()
{
    ShapeContract c;
    c.name = "ODEllipse";
    c.slotCount = 4;
    c.paramCount = 5;
    useTurnedRectangleHandles(c);
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODEllipse(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODEllipse(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), 0, 0}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        return QVector<double>{centre.x(), centre.y(), half.width(), half.height(), 0};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        as<ODEllipse>(shape)->SetEllipse(float(v[0]), float(v[1]), float(v[2]), float(v[3]), float(v[4]));
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        double x = v[0], y = v[1], rx = v[2], ry = v[3], angle = v[4];
        const bool ok = as<ODEllipse>(shape)->GetParam(&x, &y, &rx, &ry, &angle);
        v = {x, y, rx, ry, angle};
        return ok;
    };
    c.displayItems = [](const ODShape* shape) {
        return QList<QGraphicsItem*>{as<ODEllipse>(shape)->ellipseItem()};
    };
    c.setZValue = [](ODShape* shape, long z) { as<ODEllipse>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float handleScale) {
        return turnedBoxHandleCentres(QRectF(v[0] - v[2], v[1] - v[3], 2 * v[2], 2 * v[3]), handleScale);
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        // The centre stays; a corner sets both radii, an edge the radius of its
        // axis, as the distance of the target from the centre.
        const QPointF centre(v[0], v[1]);
        const QPointF d = target - centre;
        if (number % 2 == 1 && number <= 7) {
            v[2] = float(std::abs(d.x()));
            v[3] = float(std::abs(d.y()));
        } else if (number == 2 || number == 6) {
            v[3] = Distance(target, centre);
        } else if (number == 4 || number == 8) {
            v[2] = Distance(target, centre);
        } else if (number == 9) {
            v[4] = rotationHandleAngle(target, centre);
        }
        return v;
    };
    c.xParams = {0};
    c.yParams = {1};
    c.tolerance = Kit::kGeometryTolerance;
    return c;
}

// The two ends of a straight shape as its parameters, for the box: the given
// corners or edge middles.
QVector<double> endsParams(QPointF start, QPointF end)
{
    return {start.x(), start.y(), end.x(), end.y()};
}

// What the line and the arrow line share: two ends with a handle each on a
// plain handle item, handle 1 owning the start and 2 the end.
void useLineEnds(ShapeContract& c)
{
    c.slotCount = 4;
    c.paramCount = 4;
    c.handleCount = 2;
    c.handlePaint = HandlePaint::SceneUnits;
    c.handleItemClass = "QGraphicsPathItem";
    c.hasHandleItemClass = isExactly<QGraphicsPathItem>();
    c.slotsAtPoint = [](QPointF p) { return endsParams(p, p); };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        as<ODSegmentShape>(shape)->SetLine(float(v[0]), float(v[1]), float(v[2]), float(v[3]));
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        return as<ODSegmentShape>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3]);
    };
    c.handleCentres = [](const QVector<double>& v, float) {
        return QVector<QPointF>{QPointF(v[0], v[1]), QPointF(v[2], v[3])};
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        if (number == 1 || number == 2) {
            v[2 * (number - 1)] = target.x();
            v[2 * (number - 1) + 1] = target.y();
        }
        return v;
    };
    c.xParams = {0, 2};
    c.yParams = {1, 3};
}

ShapeContract lineContract()
{
    ShapeContract c;
    c.name = "ODLine";
    useLineEnds(c);
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODLine(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODLine(scene, p); };
    // From the top left corner to the bottom right one.
    c.boxParams = [](QPointF centre, QSizeF half) {
        return endsParams(centre - QPointF(half.width(), half.height()), centre + QPointF(half.width(), half.height()));
    };
    c.displayItems = [](const ODShape* shape) { return QList<QGraphicsItem*>{as<ODLine>(shape)->lineItem()}; };
    c.setZValue = [](ODShape* shape, long z) { as<ODLine>(shape)->setZValue(z); };
    return c;
}

ShapeContract arrowLineContract()
{
    ShapeContract c;
    c.name = "ODArrowLine";
    useLineEnds(c);
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODArrowLine(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODArrowLine(scene, p); };
    // From the middle of the left edge to the middle of the right one.
    c.boxParams = [](QPointF centre, QSizeF half) {
        return endsParams(centre - QPointF(half.width(), 0), centre + QPointF(half.width(), 0));
    };
    c.displayItems = [](const ODShape* shape) { return QList<QGraphicsItem*>{as<ODArrowLine>(shape)->arrowItem()}; };
    c.setZValue = [](ODShape* shape, long z) { as<ODArrowLine>(shape)->setZValue(z); };
    return c;
}

ShapeContract pointContract()
{
    ShapeContract c;
    c.name = "ODPoint";
    c.slotCount = 2;
    c.paramCount = 2;
    c.handleCount = 1;
    c.handlePaint = HandlePaint::SceneUnits;
    c.handleItemClass = "QGraphicsPathItem";
    c.hasHandleItemClass = isExactly<QGraphicsPathItem>();
    c.hitTestUpdatesHandles = true;
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODPoint(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODPoint(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y()}; };
    // The point at the centre of the box.
    c.boxParams = [](QPointF centre, QSizeF) { return QVector<double>{centre.x(), centre.y()}; };
    c.setParams = [](ODShape* shape, const QVector<double>& v) { as<ODPoint>(shape)->SetPoint(v[0], v[1]); };
    c.getParam = [](const ODShape* shape, QVector<double>& v) { return as<ODPoint>(shape)->GetParam(&v[0], &v[1]); };
    // The body is the handle rectangle: 3 units out from the point.
    c.bodyPoint = [](QPointF centre, QSizeF) { return centre + QPointF(2.5, -3); };
    c.displayItems = [](const ODShape* shape) { return QList<QGraphicsItem*>{as<ODPoint>(shape)->crossItem()}; };
    c.setZValue = [](ODShape* shape, long z) { as<ODPoint>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float) { return QVector<QPointF>{QPointF(v[0], v[1])}; };
    // Whatever the number, the point goes to the target.
    c.dragResult = [](QVector<double>, int, QPointF target) { return QVector<double>{target.x(), target.y()}; };
    c.xParams = {0};
    c.yParams = {1};
    return c;
}

// The circle of the box: radius the smaller half size, handles on top, right,
// bottom and left, each setting the radius.
ShapeContract circleContract()
{
    ShapeContract c;
    c.name = "ODCircle";
    c.slotCount = 3;
    c.paramCount = 3;
    c.handleCount = 4;
    c.handlePaint = HandlePaint::FixedDevicePixels;
    c.handleItemClass = "CircleHandleItem";
    c.hasHandleItemClass = isExactly<CircleHandleItem>();
    c.showHandleRaisesHandleItem = true;
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODCircle(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODCircle(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), 0}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        return QVector<double>{centre.x(), centre.y(), qMin(half.width(), half.height())};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) { as<ODCircle>(shape)->SetCircle(v[0], v[1], v[2]); };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        double x = v[0], y = v[1], r = v[2];
        const bool ok = as<ODCircle>(shape)->GetParam(&x, &y, &r);
        v = {x, y, r};
        return ok;
    };
    c.displayItems = [](const ODShape* shape) {
        return QList<QGraphicsItem*>{as<ODCircle>(shape)->ellipseItem()};
    };
    c.setZValue = [](ODShape* shape, long z) { as<ODCircle>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float) {
        const double x = v[0], y = v[1], r = v[2];
        return QVector<QPointF>{QPointF(x, y - r), QPointF(x + r, y), QPointF(x, y + r), QPointF(x - r, y)};
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        if (number > 0)
            v[2] = Distance(target, QPointF(v[0], v[1]));
        return v;
    };
    c.xParams = {0};
    c.yParams = {1};
    return c;
}

// A box as a point list: its corners clockwise on the screen from the top left.
QVector<double> boxCorners(QPointF centre, QSizeF half)
{
    const double l = centre.x() - half.width(), r = centre.x() + half.width();
    const double t = centre.y() - half.height(), b = centre.y() + half.height();
    return {l, t, r, t, r, b, l, b};
}

QVector<QPointF> pointsOf(const QVector<double>& v)
{
    QVector<QPointF> points;
    for (int i = 0; i + 1 < v.size(); i += 2)
        points.append(QPointF(v[i], v[i + 1]));
    return points;
}

// What the three point-list classes share: made as the tools make them (the
// plain constructor, then AddPoint), parameters through a point array that
// the outputs preset and that sets their length, squares on a
// GraphicsHandleItem at the z value of the display item.
template <typename Shape>
ShapeContract pointListContract(const QString& name, QGraphicsItem* (*displayItem)(const Shape*))
{
    ShapeContract c;
    c.name = name;
    c.referenceIsPointList = true;
    c.slotCount = 8;
    c.paramCount = 8;
    c.handlePaint = HandlePaint::FixedDevicePixels;
    c.handleItemClass = "GraphicsHandleItem";
    c.hasHandleItemClass = isExactly<GraphicsHandleItem>();
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new Shape(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* {
        auto* shape = new Shape(scene);
        shape->AddPoint(p);
        return shape;
    };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y()}; };
    c.boxParams = &boxCorners;
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        VorPointArray array;
        for (const QPointF& p : pointsOf(v))
            array.Append(VorPoint(p.x(), p.y()));
        const bool ok = as<Shape>(shape)->GetParam(&array);
        v.clear();
        for (int i = 0; i < array.Length(); ++i)
            v << array[i].x << array[i].y;
        return ok;
    };
    c.displayItems = [displayItem](const ODShape* shape) {
        return QList<QGraphicsItem*>{displayItem(as<Shape>(shape))};
    };
    c.setZValue = [](ODShape* shape, long z) { as<Shape>(shape)->setZValue(z); };
    c.xParams = {0, 2, 4, 6};
    c.yParams = {1, 3, 5, 7};
    return c;
}

ShapeContract polygonContract()
{
    ShapeContract c = pointListContract<ODPolygon>(
        "ODPolygon", [](const ODPolygon* shape) -> QGraphicsItem* { return shape->polygonItem(); });
    c.handleCount = 4;
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        QVector<double> values = v;
        as<ODPolygon>(shape)->SetPolygonPoints(values);
    };
    // A handle on every corner; a drag moves that corner.
    c.handleCentres = [](const QVector<double>& v, float) { return pointsOf(v); };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        v[2 * (number - 1)] = target.x();
        v[2 * (number - 1) + 1] = target.y();
        return v;
    };
    return c;
}

// The free lines: a handle on the first and the last point; a drag adds the
// target as a new point at that end.
template <typename Shape>
ShapeContract freeLineContract(const QString& name)
{
    ShapeContract c = pointListContract<Shape>(
        name, [](const Shape* shape) -> QGraphicsItem* { return shape->pathItem(); });
    c.handleCount = 2;
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        QVector<double> values = v;
        as<Shape>(shape)->SetAnyLinePoints(values);
    };
    c.handleCentres = [](const QVector<double>& v, float) {
        const QVector<QPointF> points = pointsOf(v);
        return QVector<QPointF>{points.first(), points.last()};
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        if (number == 1) {
            v.insert(0, target.x());
            v.insert(1, target.y());
        } else if (number == 2) {
            v << target.x() << target.y();
        }
        return v;
    };
    return c;
}

ShapeContract anyLineContract()
{
    return freeLineContract<ODAnyLine>("ODAnyLine");
}

ShapeContract anyCloseLineContract()
{
    return freeLineContract<ODAnyCloseLine>("ODAnyCloseLine");
}

// Where a path stands after arcMoveTo on the square of a circle.
QPointF arcMovePoint(QPointF centre, double radius, double angle)
{
    QPainterPath path;
    path.arcMoveTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), angle);
    return path.currentPosition();
}

// The arc of the box: on the box's circle from 30 over 120 degrees, so that
// its body, the area between chord and arc, lies above the centre.
ShapeContract arcContract()
{
    ShapeContract c;
    c.name = "ODARC";
    c.slotCount = 5;
    c.paramCount = 5;
    c.handleCount = 2;
    c.handlePaint = HandlePaint::SceneUnits;
    c.handleItemClass = "QGraphicsPathItem";
    c.hasHandleItemClass = isExactly<QGraphicsPathItem>();
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODARC(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODARC(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), 5, 0, 30}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        return QVector<double>{centre.x(), centre.y(), qMin(half.width(), half.height()), 30, 120};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        as<ODARC>(shape)->SetCircle(v[0], v[1], v[2], v[3], v[4]);
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        double x = v[0], y = v[1], r = v[2], start = v[3], sweep = v[4];
        const bool ok = as<ODARC>(shape)->GetParam(&x, &y, &r, &start, &sweep);
        v = {x, y, r, start, sweep};
        return ok;
    };
    c.bodyPoint = [](QPointF centre, QSizeF half) {
        return centre - QPointF(0, 0.75 * qMin(half.width(), half.height()));
    };
    c.displayItems = [](const ODShape* shape) { return QList<QGraphicsItem*>{as<ODARC>(shape)->arcItem()}; };
    c.setZValue = [](ODShape* shape, long z) { as<ODARC>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float) {
        const QPointF centre(v[0], v[1]);
        return QVector<QPointF>{arcMovePoint(centre, v[2], v[3]), arcMovePoint(centre, v[2], v[3] + v[4])};
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        if (number > 0)
            v[2] = Distance(target, QPointF(v[0], v[1]));
        return v;
    };
    c.xParams = {0};
    c.yParams = {1};
    return c;
}

// The annulus of the box: outer radius the smaller half size, inner a quarter
// of it, the left half from 90 over 180 degrees (held as -180), so that its
// handles sit on whole device pixels, and three search lines outward.
ShapeContract annulusContract()
{
    ShapeContract c;
    c.name = "ODAnnular";
    c.slotCount = 4;
    c.paramCount = 8;
    c.handleCount = 4;
    c.handlePaint = HandlePaint::SceneUnits;
    c.handleItemClass = "QGraphicsPathItem";
    c.hasHandleItemClass = isExactly<QGraphicsPathItem>();
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODAnnular(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODAnnular(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), 0, 0}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        const double outer = qMin(half.width(), half.height());
        return QVector<double>{centre.x(), centre.y(), outer / 4, outer, 90, 180, double(SL_INNER_TO_OUTER), 3};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        auto* annulus = as<ODAnnular>(shape);
        annulus->SetTours(v[0], v[1], v[2], v[3], v[4], -v[5]);
        annulus->SetSearchLine(SEARCHLINEDIRECTION(int(v[6])), int(v[7]));
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        double x = v[0], y = v[1], inner = v[2], outer = v[3], start = v[4], sweep = v[5];
        int direction = int(v[6]), count = int(v[7]);
        const bool ok = as<ODAnnular>(shape)->GetParam(&x, &y, &inner, &outer, &start, &sweep, &direction, &count);
        v = {x, y, inner, outer, start, sweep, double(direction), double(count)};
        return ok;
    };
    c.bodyPoint = [](QPointF centre, QSizeF half) {
        const double outer = qMin(half.width(), half.height());
        return centre - QPointF((outer / 4 + outer) / 2, 0);
    };
    c.displayItems = [](const ODShape* shape) {
        return QList<QGraphicsItem*>{as<ODAnnular>(shape)->annularItem(), as<ODAnnular>(shape)->searchLineItem()};
    };
    c.setZValue = [](ODShape* shape, long z) { as<ODAnnular>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float) {
        // Start and end at mid radius, inner and outer at mid angle; the
        // reported sweep runs counter-clockwise from the start.
        const QPointF centre(v[0], v[1]);
        const double mid = (v[2] + v[3]) / 2, start = v[4], end = v[4] + v[5], middle = v[4] + v[5] / 2;
        auto at = [&centre](double r, double degrees) {
            const double a = degrees * 3.14159265358979323846 / 180;
            return QPointF(centre.x() + r * std::cos(a), centre.y() - r * std::sin(a));
        };
        return QVector<QPointF>{at(mid, start), at(mid, end), at(v[2], middle), at(v[3], middle)};
    };
    c.dragResult = [](QVector<double> v, int number, QPointF target) {
        // Handles 1 and 2 set the angles, 3 the inner radius (5 inside the
        // outer at most), 4 the outer (5 outside the inner at least); the
        // hole that 4 gives a thin ring stays out of the reference.
        const QPointF centre(v[0], v[1]);
        const double held = -v[5];
        const double epsilon = double(1e-6f);
        if (number == 1) {
            const float end = ConvertAngle(float(v[4] - held));
            const double start = ConvertAngle(CalculateAngle(target, centre));
            double sweep = start - end;
            if (sweep > epsilon)
                sweep -= 360;
            v[4] = start;
            v[5] = -sweep;
        } else if (number == 2) {
            const double d = ConvertAngle(CalculateAngle(target, centre)) - v[4];
            v[5] = d > epsilon ? d : 360 + d;
        } else if (number == 3) {
            const double r = Distance(target, centre);
            v[2] = r - v[3] > epsilon ? v[3] - 5 : r;
        } else if (number == 4) {
            const double r = Distance(target, centre);
            v[3] = 1e-6 > r - v[2] ? v[2] + 5 : r;
        }
        return v;
    };
    c.xParams = {0};
    c.yParams = {1};
    c.tolerance = Kit::kGeometryTolerance;
    return c;
}

// The picture in a box: the rectangle's geometry and handles, three edge
// middles on whole pixels, and no handle item at all.
ShapeContract imageContract()
{
    ShapeContract c;
    c.name = "ODImage";
    c.slotCount = 4;
    c.paramCount = 4;
    c.handleCount = 8;
    c.handleItemClass = "no handle item";
    c.hasHandleItemClass = [](const QGraphicsPathItem* item) { return item == nullptr; };
    c.hasHandleItem = false;
    c.displayTakesPen = false;
    c.make = [](QGraphicsScene* scene) -> ODShape* { return new ODImage(scene); };
    c.makeAt = [](QGraphicsScene* scene, QPointF p) -> ODShape* { return new ODImage(scene, p); };
    c.slotsAtPoint = [](QPointF p) { return QVector<double>{p.x(), p.y(), p.x(), p.y()}; };
    c.boxParams = [](QPointF centre, QSizeF half) {
        return QVector<double>{centre.x() - half.width(), centre.y() - half.height(), centre.x() + half.width(),
                               centre.y() + half.height()};
    };
    c.setParams = [](ODShape* shape, const QVector<double>& v) {
        as<ODImage>(shape)->SetRect(float(v[0]), float(v[1]), float(v[2]), float(v[3]));
    };
    c.getParam = [](const ODShape* shape, QVector<double>& v) {
        return as<ODImage>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3]);
    };
    c.displayItems = [](const ODShape* shape) { return QList<QGraphicsItem*>{as<ODImage>(shape)->pixmapItem()}; };
    c.setZValue = [](ODShape* shape, long z) { as<ODImage>(shape)->setZValue(z); };
    c.handleCentres = [](const QVector<double>& v, float) {
        QVector<QPointF> centres = boxHandleCentres(QRectF(QPointF(v[0], v[1]), QPointF(v[2], v[3])));
        for (int key : {1, 5, 7})
            centres[key] = QPointF(int(centres[key].x()), int(centres[key].y()));
        return centres;
    };
    c.dragResult = &boxDragResult;
    c.xParams = {0, 2};
    c.yParams = {1, 3};
    return c;
}

// Every shape class the contract covers, one entry each.
const QVector<ShapeContract>& shapeContracts()
{
    static const QVector<ShapeContract> contracts = {
        rect1Contract(),     rect2Contract(), ellipseContract(),   circleContract(),  arcContract(),
        annulusContract(),   lineContract(),  arrowLineContract(), pointContract(),   polygonContract(),
        anyLineContract(),   anyCloseLineContract(), imageContract(),
    };
    return contracts;
}

const ShapeContract& contractOf(const QString& name)
{
    for (const ShapeContract& contract : shapeContracts()) {
        if (contract.name == name)
            return contract;
    }
    qFatal("no shape contract named %s", qPrintable(name));
    return shapeContracts().first();
}

const double kZooms[] = {0.25, 1.0, 4.0};

void addShapeRows()
{
    QTest::addColumn<QString>("shape");
    for (const ShapeContract& contract : shapeContracts())
        QTest::newRow(qPrintable(contract.name)) << contract.name;
}

void addShapeAndZoomRows()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<double>("zoom");
    for (const ShapeContract& contract : shapeContracts()) {
        for (double zoom : kZooms)
            QTest::addRow("%s at zoom %g", qPrintable(contract.name), zoom) << contract.name << zoom;
    }
}

// GetParam's outputs preset as a caller does it: the slots with one
// sentinel, the extras with one that integer outputs can hold too.
QVector<double> presetOutputs(const ShapeContract& contract)
{
    QVector<double> outputs(contract.paramCount, kPresetValue);
    for (int i = contract.slotCount; i < contract.paramCount; ++i)
        outputs[i] = kPresetInt;
    return outputs;
}

// The items that are in the scene now and were not before.
QSet<QGraphicsItem*> itemsAddedSince(const QGraphicsScene& scene, const QSet<QGraphicsItem*>& before)
{
    QSet<QGraphicsItem*> added;
    for (QGraphicsItem* item : scene.items()) {
        if (!before.contains(item))
            added.insert(item);
    }
    return added;
}

QSet<QGraphicsItem*> itemsOf(const QGraphicsScene& scene)
{
    const QList<QGraphicsItem*> items = scene.items();
    return QSet<QGraphicsItem*>(items.begin(), items.end());
}

// True when a display item shows nothing: empty rectangle, path, polygon or
// line, or a hidden pixmap.
bool hasEmptyGeometry(QGraphicsItem* item)
{
    if (auto* rect = qgraphicsitem_cast<QGraphicsRectItem*>(item))
        return rect->rect().isEmpty();
    if (auto* ellipse = qgraphicsitem_cast<QGraphicsEllipseItem*>(item))
        return ellipse->rect().isEmpty();
    if (auto* path = dynamic_cast<QGraphicsPathItem*>(item))
        return path->path().isEmpty();
    if (auto* polygon = qgraphicsitem_cast<QGraphicsPolygonItem*>(item))
        return polygon->polygon().isEmpty();
    if (auto* line = qgraphicsitem_cast<QGraphicsLineItem*>(item))
        return line->line().isNull();
    if (auto* pixmap = qgraphicsitem_cast<QGraphicsPixmapItem*>(item))
        return !pixmap->isVisible();
    return false;
}

bool penOf(QGraphicsItem* item, QPen* pen)
{
    if (auto* shapeItem = dynamic_cast<QAbstractGraphicsShapeItem*>(item)) {
        *pen = shapeItem->pen();
        return true;
    }
    if (auto* line = qgraphicsitem_cast<QGraphicsLineItem*>(item)) {
        *pen = line->pen();
        return true;
    }
    return false;
}

QString describe(const QVector<double>& values)
{
    QStringList parts;
    for (double v : values)
        parts << QString::number(v, 'g', 17);
    return "{" + parts.join(", ") + "}";
}

// Distance of a point from the segment a-b.
double distanceToSegment(const QPointF& p, const QPointF& a, const QPointF& b)
{
    const QPointF ab = b - a;
    const double length2 = QPointF::dotProduct(ab, ab);
    double t = length2 > 0 ? QPointF::dotProduct(p - a, ab) / length2 : 0.0;
    t = qBound(0.0, t, 1.0);
    const QPointF nearest = a + t * ab;
    return std::hypot(p.x() - nearest.x(), p.y() - nearest.y());
}

// A shape made on a scene and removed with it, whatever the test's outcome.
using ShapePtr = std::unique_ptr<ODShape>;

// The box geometry used throughout: centred on centre, half size half.
const QPointF kBoxCentre(160, 120);
const QSizeF kBoxHalf(60, 40);

ShapePtr makeBoxShape(const ShapeContract& contract, QGraphicsScene* scene, QPointF centre = kBoxCentre,
                      QSizeF half = kBoxHalf)
{
    ShapePtr shape(contract.make(scene));
    contract.setParams(shape.get(), contract.boxParams(centre, half));
    return shape;
}

} // namespace

class tst_ShapeContract : public QObject
{
    Q_OBJECT

private slots:
    void everyShapeClassHasAContract();

    void freshShapeGetParamFailsAndLeavesTheOutputs_data();
    void freshShapeGetParamFailsAndLeavesTheOutputs();
    void firstUpdateOrgDataFillsEverySlotFromTheCurrentGeometry_data();
    void firstUpdateOrgDataFillsEverySlotFromTheCurrentGeometry();
    void getParamReadsBackTheParametersSet_data();
    void getParamReadsBackTheParametersSet();
    void handleHitTestGivesKeyPlusOneAtEveryHandleCentre_data();
    void handleHitTestGivesKeyPlusOneAtEveryHandleCentre();
    void handlesSitWhereTheClassPutsThemAtEveryZoom_data();
    void handlesSitWhereTheClassPutsThemAtEveryZoom();
    void eachHandleDragWritesBackTheSlotsItOwns_data();
    void eachHandleDragWritesBackTheSlotsItOwns();
    void moveShapeShiftsEveryPositionAndNothingElse_data();
    void moveShapeShiftsEveryPositionAndNothingElse();
    void handleHitTestFindsNothingBeforeHandlesAreUpdated_data();
    void handleHitTestFindsNothingBeforeHandlesAreUpdated();
    void bodyHitTestHitsInsideAndMissesFarOutside_data();
    void bodyHitTestHitsInsideAndMissesFarOutside();
    void shapeOwnsExactlyItsDisplayItemsAndHandleItem_data();
    void shapeOwnsExactlyItsDisplayItemsAndHandleItem();
    void destructorRemovesEveryItemItAdded_data();
    void destructorRemovesEveryItemItAdded();
    void hideShapeKeepsItemsInTheSceneWithEmptyGeometry_data();
    void hideShapeKeepsItemsInTheSceneWithEmptyGeometry();
    void lineWidthIsTruncatedOnEveryDisplayItem_data();
    void lineWidthIsTruncatedOnEveryDisplayItem();
    void zValueReachesEveryItemAndHandlesGoAboveTheMainItem_data();
    void zValueReachesEveryItemAndHandlesGoAboveTheMainItem();
    void handlesArePaintedAtTheirSizeOnAShownView_data();
    void handlesArePaintedAtTheirSizeOnAShownView();
};

void tst_ShapeContract::everyShapeClassHasAContract()
{
    QStringList names;
    for (const ShapeContract& contract : shapeContracts()) {
        QVERIFY2(!names.contains(contract.name), qPrintable(contract.name));
        names << contract.name;
        QVERIFY(contract.slotCount > 0);
        QVERIFY(contract.paramCount >= contract.slotCount);
        QVERIFY(contract.handleCount > 0);
        QVERIFY(contract.make && contract.makeAt && contract.slotsAtPoint && contract.boxParams);
        QVERIFY(contract.setParams && contract.getParam && contract.bodyPoint && contract.displayItems);
        QVERIFY(contract.setZValue && contract.hasHandleItemClass);
        QVERIFY(contract.handleCentres && contract.dragResult);
        QVERIFY(!contract.xParams.isEmpty() && !contract.yParams.isEmpty());
        QCOMPARE(contract.boxParams(kBoxCentre, kBoxHalf).size(), contract.paramCount);
        QCOMPARE(contract.slotsAtPoint(kBoxCentre).size(), contract.referenceIsPointList ? 2 : contract.slotCount);

        // The handle item is of the class the contract names, with the blue brush.
        QGraphicsScene scene;
        ShapePtr shape(contract.make(&scene));
        QVERIFY2(contract.hasHandleItemClass(shape->handleItem()),
                 qPrintable(contract.name + " lacks a " + contract.handleItemClass));
        QCOMPARE(shape->handleItem() != nullptr, contract.hasHandleItem);
        if (contract.hasHandleItem)
            QCOMPARE(shape->handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    }
}

void tst_ShapeContract::freshShapeGetParamFailsAndLeavesTheOutputs_data()
{
    addShapeRows();
}

void tst_ShapeContract::freshShapeGetParamFailsAndLeavesTheOutputs()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    const ShapePtr plain(contract.make(&scene));
    const ShapePtr atPoint(contract.makeAt(&scene, QPointF(37.25, 61.5)));
    if (contract.referenceIsPointList) {
        // No fresh state: the plain shape reads back no point, over whatever
        // the caller preset, and the one made at a point reads back that point.
        QVERIFY(plain->orgData().isEmpty());
        QVector<double> outputs = presetOutputs(contract);
        QVERIFY(contract.getParam(plain.get(), outputs));
        QVERIFY2(outputs.isEmpty(), qPrintable(Kit::text(outputs)));
        const QVector<double> point = contract.slotsAtPoint(QPointF(37.25, 61.5));
        QCOMPARE(atPoint->orgData(), point);
        outputs = presetOutputs(contract);
        QVERIFY(contract.getParam(atPoint.get(), outputs));
        QCOMPARE(outputs, point);
        return;
    }
    for (const ODShape* fresh : {plain.get(), atPoint.get()}) {
        QVERIFY(fresh->orgData().isEmpty());
        QVector<double> outputs = presetOutputs(contract);
        const QVector<double> preset = outputs;
        QVERIFY(!contract.getParam(fresh, outputs));
        QCOMPARE(outputs, preset);
    }
}

void tst_ShapeContract::firstUpdateOrgDataFillsEverySlotFromTheCurrentGeometry_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("number");
    for (const ShapeContract& contract : shapeContracts()) {
        // Any number rebuilds a missing reference: none, each handle, and
        // numbers no handle has.
        const QList<int> numbers = {-1, 0, 1, contract.handleCount, contract.handleCount + 1, 1000};
        for (int number : numbers)
            QTest::addRow("%s, number %d", qPrintable(contract.name), number) << contract.name << number;
    }
}

void tst_ShapeContract::firstUpdateOrgDataFillsEverySlotFromTheCurrentGeometry()
{
    QFETCH(QString, shape);
    QFETCH(int, number);
    const ShapeContract& contract = contractOf(shape);
    const QPointF press(37.25, 61.5);
    QGraphicsScene scene;
    const ShapePtr fresh(contract.makeAt(&scene, press));
    // A point list holds its point from the start, and keeps it.
    if (contract.referenceIsPointList)
        QCOMPARE(fresh->orgData(), contract.slotsAtPoint(press));
    else
        QVERIFY(fresh->orgData().isEmpty());

    fresh->UpdateOrgData(number);
    const QVector<double> expected = contract.slotsAtPoint(press);
    QCOMPARE(fresh->orgData(), expected);

    QVector<double> outputs = presetOutputs(contract);
    QVERIFY(contract.getParam(fresh.get(), outputs));
    QCOMPARE(outputs.mid(0, contract.slotCount), expected);
}

void tst_ShapeContract::getParamReadsBackTheParametersSet_data()
{
    addShapeRows();
}

void tst_ShapeContract::getParamReadsBackTheParametersSet()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    const ShapePtr box = makeBoxShape(contract, &scene);
    const QVector<double> expected = contract.boxParams(kBoxCentre, kBoxHalf);
    QCOMPARE(box->orgData(), expected.mid(0, contract.slotCount));
    QVector<double> outputs = presetOutputs(contract);
    QVERIFY(contract.getParam(box.get(), outputs));
    QVERIFY2(outputs == expected, qPrintable(describe(outputs) + " instead of " + describe(expected)));
}

void tst_ShapeContract::handleHitTestGivesKeyPlusOneAtEveryHandleCentre_data()
{
    addShapeAndZoomRows();
}

void tst_ShapeContract::handleHitTestGivesKeyPlusOneAtEveryHandleCentre()
{
    QFETCH(QString, shape);
    QFETCH(double, zoom);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    // A box that keeps its handles apart at every zoom.
    const QSizeF half(kBoxHalf.width() / zoom, kBoxHalf.height() / zoom);
    ShapePtr box(contract.make(&scene));
    box->SetScale(float(zoom));
    contract.setParams(box.get(), contract.boxParams(kBoxCentre, half));
    box->ShowShape();
    box->UpdateHandles();

    const QMap<int, QRectF>& handles = box->handles();
    QCOMPARE(handles.size(), contract.handleCount);
    QCOMPARE(handles.firstKey(), 0);
    QCOMPARE(handles.lastKey(), contract.handleCount - 1);
    const double side = kHandleSide * box->handleScale();
    QCOMPARE(double(box->handleScale()), qMax(1.0, 1.0 / zoom));
    for (int key = 0; key < contract.handleCount; ++key) {
        const QRectF handle = handles.value(key);
        QVERIFY2(std::abs(handle.width() - side) < 1e-4 && std::abs(handle.height() - side) < 1e-4,
                 qPrintable(QString("key %1 is %2 wide").arg(key).arg(handle.width())));
        QCOMPARE(box->HitTest(handle.center(), true), key + 1);
    }
    // Far from every handle: none.
    QCOMPARE(box->HitTest(kBoxCentre + QPointF(10 * half.width(), 10 * half.height()), true), 0);
}

void tst_ShapeContract::handlesSitWhereTheClassPutsThemAtEveryZoom_data()
{
    addShapeAndZoomRows();
}

void tst_ShapeContract::handlesSitWhereTheClassPutsThemAtEveryZoom()
{
    QFETCH(QString, shape);
    QFETCH(double, zoom);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    const QSizeF half(kBoxHalf.width() / zoom, kBoxHalf.height() / zoom);
    const QVector<double> params = contract.boxParams(kBoxCentre, half);
    ShapePtr box(contract.make(&scene));
    box->SetScale(float(zoom));
    contract.setParams(box.get(), params);
    box->ShowShape();
    box->UpdateHandles();

    const QVector<QPointF> expected = contract.handleCentres(params, box->handleScale());
    QCOMPARE(box->handles().size(), expected.size());
    for (int key = 0; key < expected.size(); ++key) {
        const QPointF actual = box->handles().value(key).center();
        QVERIFY2(Kit::near(actual, expected[key], contract.tolerance),
                 qPrintable(QString("key %1 at %2 instead of %3")
                                .arg(key)
                                .arg(Kit::text(actual), Kit::text(expected[key]))));
    }
}

void tst_ShapeContract::eachHandleDragWritesBackTheSlotsItOwns_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("number");
    for (const ShapeContract& contract : shapeContracts()) {
        for (int number = 1; number <= contract.handleCount; ++number)
            QTest::addRow("%s, handle %d", qPrintable(contract.name), number) << contract.name << number;
    }
}

void tst_ShapeContract::eachHandleDragWritesBackTheSlotsItOwns()
{
    QFETCH(QString, shape);
    QFETCH(int, number);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    const QVector<double> params = contract.boxParams(kBoxCentre, kBoxHalf);
    ShapePtr box = makeBoxShape(contract, &scene);
    box->ShowShape();
    box->UpdateHandles();

    // The operator grabs the handle where it is painted and drags it a little
    // way off; the number comes from the hit test, as the select tool takes it.
    const QPointF grab = box->handles().value(number - 1).center();
    QCOMPARE(box->HitTest(grab, true), number);
    const QPointF target = grab + QPointF(7, 5);
    box->MoveHandleTo(number, target);

    const QVector<double> expected = contract.dragResult(params, number, target);
    QVector<double> outputs = presetOutputs(contract);
    QVERIFY(contract.getParam(box.get(), outputs));
    QVERIFY2(Kit::near(outputs, expected, contract.tolerance),
             qPrintable(Kit::text(outputs) + " instead of " + Kit::text(expected)));

    // Showing reloads the current geometry from the reference and leaves it.
    box->ShowShape();
    outputs = presetOutputs(contract);
    QVERIFY(contract.getParam(box.get(), outputs));
    QVERIFY2(Kit::near(outputs, expected, contract.tolerance),
             qPrintable(Kit::text(outputs) + " after showing, instead of " + Kit::text(expected)));
}

void tst_ShapeContract::moveShapeShiftsEveryPositionAndNothingElse_data()
{
    addShapeRows();
}

void tst_ShapeContract::moveShapeShiftsEveryPositionAndNothingElse()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    QVector<double> expected = contract.boxParams(kBoxCentre, kBoxHalf);
    ShapePtr box = makeBoxShape(contract, &scene);
    box->ShowShape();

    const QPointF delta(7.5, -3.25);
    box->MoveShape(delta);
    box->MoveShape(delta);
    for (int index : contract.xParams)
        expected[index] += 2 * delta.x();
    for (int index : contract.yParams)
        expected[index] += 2 * delta.y();
    QVector<double> outputs = presetOutputs(contract);
    QVERIFY(contract.getParam(box.get(), outputs));
    QVERIFY2(Kit::near(outputs, expected, contract.tolerance),
             qPrintable(Kit::text(outputs) + " instead of " + Kit::text(expected)));
}

void tst_ShapeContract::handleHitTestFindsNothingBeforeHandlesAreUpdated_data()
{
    addShapeRows();
}

void tst_ShapeContract::handleHitTestFindsNothingBeforeHandlesAreUpdated()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    // A twin with its handles made tells where the handles will be.
    ShapePtr twin = makeBoxShape(contract, &scene);
    twin->ShowShape();
    twin->UpdateHandles();
    QCOMPARE(twin->handles().size(), contract.handleCount);

    ShapePtr untouched = makeBoxShape(contract, &scene);
    untouched->ShowShape();
    if (contract.hitTestUpdatesHandles) {
        // Made at construction, where the shape stood then; the hit test
        // moves them to the shown geometry before it looks.
        QCOMPARE(untouched->handles().size(), contract.handleCount);
        for (int key = 0; key < contract.handleCount; ++key)
            QVERIFY(untouched->handles().value(key) != twin->handles().value(key));
        for (int key = 0; key < contract.handleCount; ++key)
            QCOMPARE(untouched->HitTest(twin->handles().value(key).center(), true), key + 1);
        QCOMPARE(untouched->handles(), twin->handles());
        return;
    }
    QVERIFY(untouched->handles().isEmpty());
    for (int key = 0; key < contract.handleCount; ++key)
        QCOMPARE(untouched->HitTest(twin->handles().value(key).center(), true), 0);

    untouched->UpdateHandles();
    for (int key = 0; key < contract.handleCount; ++key)
        QCOMPARE(untouched->HitTest(twin->handles().value(key).center(), true), key + 1);
}

void tst_ShapeContract::bodyHitTestHitsInsideAndMissesFarOutside_data()
{
    addShapeRows();
}

void tst_ShapeContract::bodyHitTestHitsInsideAndMissesFarOutside()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    ShapePtr box = makeBoxShape(contract, &scene);
    box->ShowShape();
    box->UpdateHandles();
    QCOMPARE(box->HitTest(contract.bodyPoint(kBoxCentre, kBoxHalf), false), 1);
    const QPointF far(10 * kBoxHalf.width(), 10 * kBoxHalf.height());
    QCOMPARE(box->HitTest(kBoxCentre + far, false), 0);
    QCOMPARE(box->HitTest(kBoxCentre - far, false), 0);
    QCOMPARE(box->HitTest(kBoxCentre + QPointF(far.x(), 0), false), 0);
    QCOMPARE(box->HitTest(kBoxCentre - QPointF(0, far.y()), false), 0);
}

void tst_ShapeContract::shapeOwnsExactlyItsDisplayItemsAndHandleItem_data()
{
    addShapeRows();
}

void tst_ShapeContract::shapeOwnsExactlyItsDisplayItemsAndHandleItem()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    scene.addRect(QRectF(0, 0, 10, 10));
    for (bool atPoint : {false, true}) {
        const QSet<QGraphicsItem*> before = itemsOf(scene);
        ShapePtr made(atPoint ? contract.makeAt(&scene, QPointF(5, 5)) : contract.make(&scene));
        const QSet<QGraphicsItem*> added = itemsAddedSince(scene, before);

        QSet<QGraphicsItem*> own;
        for (QGraphicsItem* item : contract.displayItems(made.get())) {
            QVERIFY(item);
            own.insert(item);
        }
        QCOMPARE(own.size(), contract.displayItems(made.get()).size());
        QCOMPARE(made->handleItem() != nullptr, contract.hasHandleItem);
        if (contract.hasHandleItem)
            own.insert(made->handleItem());
        QCOMPARE(added, own);
        for (QGraphicsItem* item : own)
            QCOMPARE(item->scene(), &scene);
    }
}

void tst_ShapeContract::destructorRemovesEveryItemItAdded_data()
{
    addShapeRows();
}

void tst_ShapeContract::destructorRemovesEveryItemItAdded()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    QGraphicsRectItem* neighbour = scene.addRect(QRectF(0, 0, 10, 10));
    // A shape in full use: shown, handles shown, then deleted.
    const QSet<QGraphicsItem*> before = itemsOf(scene);
    ODShape* made = makeBoxShape(contract, &scene).release();
    made->ShowShape();
    made->ShowHandle();
    const QSet<QGraphicsItem*> added = itemsAddedSince(scene, before);
    QVERIFY(!added.isEmpty());
    QCOMPARE(scene.items().size(), before.size() + added.size());

    delete made;
    QCOMPARE(scene.items().size(), before.size());
    QCOMPARE(itemsOf(scene), before);
    for (QGraphicsItem* item : added)
        QVERIFY(!scene.items().contains(item));
    QCOMPARE(neighbour->scene(), &scene);
}

void tst_ShapeContract::hideShapeKeepsItemsInTheSceneWithEmptyGeometry_data()
{
    addShapeRows();
}

void tst_ShapeContract::hideShapeKeepsItemsInTheSceneWithEmptyGeometry()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    const QSet<QGraphicsItem*> before = itemsOf(scene);
    ShapePtr box = makeBoxShape(contract, &scene);
    const QSet<QGraphicsItem*> added = itemsAddedSince(scene, before);
    box->ShowShape();
    box->ShowHandle();
    const QList<QGraphicsItem*> display = contract.displayItems(box.get());
    for (QGraphicsItem* item : display)
        QVERIFY2(!hasEmptyGeometry(item), "a shown display item shows nothing");

    box->HideShape();
    QCOMPARE(itemsAddedSince(scene, before), added);
    for (QGraphicsItem* item : display) {
        QCOMPARE(item->scene(), &scene);
        QVERIFY(hasEmptyGeometry(item));
    }
    // Shown again from the same reference.
    box->ShowShape();
    for (QGraphicsItem* item : display)
        QVERIFY(!hasEmptyGeometry(item));
}

void tst_ShapeContract::lineWidthIsTruncatedOnEveryDisplayItem_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<float>("lineWidth");
    QTest::addColumn<int>("penWidth");
    for (const ShapeContract& contract : shapeContracts()) {
        QTest::addRow("%s, 0.9 is cosmetic", qPrintable(contract.name)) << contract.name << 0.9f << 0;
        QTest::addRow("%s, 2.7 is 2", qPrintable(contract.name)) << contract.name << 2.7f << 2;
    }
}

void tst_ShapeContract::lineWidthIsTruncatedOnEveryDisplayItem()
{
    QFETCH(QString, shape);
    QFETCH(float, lineWidth);
    QFETCH(int, penWidth);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    ShapePtr box = makeBoxShape(contract, &scene);
    box->SetPenColor(QColor(200, 30, 40));
    box->SetLineWidth(lineWidth);
    box->ShowShape();
    for (QGraphicsItem* item : contract.displayItems(box.get())) {
        QPen pen;
        if (!contract.displayTakesPen) {
            // Nothing to draw with: the width changes no pixel either.
            QVERIFY(!penOf(item, &pen));
            continue;
        }
        QVERIFY(penOf(item, &pen));
        QCOMPARE(pen.width(), penWidth);
        QCOMPARE(pen.widthF(), double(penWidth));
        QCOMPARE(pen.color(), QColor(200, 30, 40));
    }
}

void tst_ShapeContract::zValueReachesEveryItemAndHandlesGoAboveTheMainItem_data()
{
    addShapeRows();
}

void tst_ShapeContract::zValueReachesEveryItemAndHandlesGoAboveTheMainItem()
{
    QFETCH(QString, shape);
    const ShapeContract& contract = contractOf(shape);
    QGraphicsScene scene;
    const QSet<QGraphicsItem*> before = itemsOf(scene);
    ShapePtr box = makeBoxShape(contract, &scene);
    const QSet<QGraphicsItem*> owned = itemsAddedSince(scene, before);
    QCOMPARE(owned.contains(box->handleItem()), contract.hasHandleItem);

    for (long z : {7L, -3L, 3001L}) {
        contract.setZValue(box.get(), z);
        for (QGraphicsItem* item : owned)
            QCOMPARE(item->zValue(), double(z));
    }

    contract.setZValue(box.get(), 7);
    box->ShowShape();
    box->ShowHandle();
    QGraphicsItem* main = contract.displayItems(box.get()).first();
    QCOMPARE(main->zValue(), 7.0);
    for (QGraphicsItem* item : contract.displayItems(box.get()))
        QCOMPARE(item->zValue(), 7.0);
    if (!contract.hasHandleItem)
        QCOMPARE(box->handleItem(), nullptr);
    else if (contract.showHandleRaisesHandleItem)
        QCOMPARE(box->handleItem()->zValue(), main->zValue() + 1.0);
    else
        QCOMPARE(box->handleItem()->zValue(), 7.0);
}

void tst_ShapeContract::handlesArePaintedAtTheirSizeOnAShownView_data()
{
    addShapeAndZoomRows();
}

void tst_ShapeContract::handlesArePaintedAtTheirSizeOnAShownView()
{
    QFETCH(QString, shape);
    QFETCH(double, zoom);
    const ShapeContract& contract = contractOf(shape);

    Kit::PictureWindow window(zoom, QSize(640, 480));
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    ImageCtrlScene* scene = window.scene();
    QCOMPARE(scene->getScale(), zoom);

    // The box in the middle of the viewport, 120 by 80 device pixels at any
    // zoom, on a grid that maps to whole device pixels where it can.
    const double grid = qMax(1.0, 1.0 / zoom);
    const QPointF middle = view->mapToScene(view->viewport()->rect().center());
    const QPointF centre(std::round(middle.x() / grid) * grid, std::round(middle.y() / grid) * grid);
    const QSizeF half(kBoxHalf.width() / zoom, kBoxHalf.height() / zoom);

    ShapePtr box(contract.make(scene));
    box->SetScale(float(zoom));
    box->SetPenColor(QColor(220, 40, 40));
    box->SetBrushColor(QColor(0, 0, 0, 0));
    box->SetLineWidth(1.0f);
    contract.setParams(box.get(), contract.boxParams(centre, half));
    box->ShowShape();
    box->ShowHandle();
    QCOMPARE(box->handles().size(), contract.handleCount);

    const QImage image = Kit::grabViewport(view);
    QVERIFY(!image.isNull());
    if (!contract.hasHandleItem) {
        // Shown handles are hit, yet nothing paints them.
        QVERIFY(box->isVisiblehandleMark());
        QCOMPARE(Kit::countColour(image, Kit::kHandleBlue), 0);
        return;
    }
    // The side of a painted handle in device pixels.
    const double side = contract.handlePaint == HandlePaint::FixedDevicePixels
                            ? kHandleSide
                            : kHandleSide * box->handleScale() * zoom;
    const int wholeSide = int(std::lround(side));

    // Device positions of the joining lines, to tell their pixels apart.
    QVector<QPair<QPointF, QPointF>> lines;
    for (const auto& joined : contract.joinedHandles)
        lines.append({view->viewportTransform().map(box->handles().value(joined.first).center()),
                      view->viewportTransform().map(box->handles().value(joined.second).center())});
    auto onALine = [&lines](int x, int y) {
        for (const auto& line : lines) {
            if (distanceToSegment(QPointF(x + 0.5, y + 0.5), line.first, line.second) < 1.5)
                return true;
        }
        return false;
    };

    // Where each handle's square sits: exactly, when its centre lands on a
    // whole pixel and nothing is scaled; else with a pixel of slack on every edge.
    struct Zone
    {
        QPointF device;
        QRect square;
        QRect allowed;
        bool exact;
    };
    QVector<Zone> zones;
    for (int key = 0; key < contract.handleCount; ++key) {
        const QPointF sceneCentre = box->handles().value(key).center();
        Zone zone;
        zone.device = view->viewportTransform().map(sceneCentre);
        zone.exact = Kit::mapsToWholePixel(view, sceneCentre) && wholeSide % 2 == 0
                     && std::abs(side - wholeSide) < 1e-9;
        const QPoint topLeft(int(std::floor(zone.device.x() - side / 2 + 0.5)),
                             int(std::floor(zone.device.y() - side / 2 + 0.5)));
        zone.square = QRect(topLeft, QSize(wholeSide, wholeSide));
        zone.allowed = zone.exact ? zone.square : zone.square.adjusted(-1, -1, 1, 1);
        zones.append(zone);
    }
    auto inAnotherZone = [&zones](int key, int x, int y) {
        for (int other = 0; other < zones.size(); ++other) {
            if (other != key && zones[other].allowed.contains(x, y))
                return true;
        }
        return false;
    };

    for (int key = 0; key < contract.handleCount; ++key) {
        const Zone& zone = zones[key];
        const QString where = QString("key %1 at %2, %3").arg(key).arg(zone.device.x()).arg(zone.device.y());
        QVERIFY2(image.rect().adjusted(8, 8, -8, -8).contains(zone.device.toPoint()),
                 qPrintable(where + " off view"));

        // Blue inside the square, and none around it but the joining lines.
        int inside = 0;
        int stray = 0;
        QRect bounds;
        const QRect window = zone.allowed.adjusted(-4, -4, 4, 4).intersected(image.rect());
        for (int y = window.top(); y <= window.bottom(); ++y) {
            for (int x = window.left(); x <= window.right(); ++x) {
                if (!Kit::isColour(image, x, y))
                    continue;
                if (zone.allowed.contains(x, y)) {
                    ++inside;
                    bounds |= QRect(x, y, 1, 1);
                } else if (!onALine(x, y) && !inAnotherZone(key, x, y)) {
                    ++stray;
                }
            }
        }
        QVERIFY2(stray == 0, qPrintable(where + QString(": %1 blue pixels outside the square").arg(stray)));
        const QRect& square = zone.square;
        if (key == contract.roundHandleKey) {
            // A disc: the square's corners stay unfilled, its middle is filled.
            for (const QPoint& corner : {square.topLeft(), square.topRight(), square.bottomLeft(),
                                         square.bottomRight()})
                QVERIFY2(!Kit::isColour(image, corner.x(), corner.y()), qPrintable(where + ": corner filled"));
            const int core = wholeSide - 2;
            QVERIFY2(inside >= core * core && inside < wholeSide * wholeSide,
                     qPrintable(where + QString(": %1 disc pixels").arg(inside)));
        } else if (zone.exact) {
            // A plain item strokes the square's edge with a cosmetic line in
            // the pen's colour, which blends the outermost ring of pixels.
            const QRect filled =
                contract.handlePaint == HandlePaint::SceneUnits ? square.adjusted(1, 1, -1, -1) : square;
            const int area = filled.width() * filled.height();
            QVERIFY2(inside == area, qPrintable(where + QString(": %1 pixels instead of %2").arg(inside).arg(area)));
            QCOMPARE(bounds, filled);
        } else {
            // Off the pixel grid the smoothed edges are blends: at most one row
            // and one column of the square lose their pure blue (a plain item's
            // outline in the pen's colour takes one more), none is added.
            const int lost = contract.handlePaint == HandlePaint::FixedDevicePixels ? 1 : 2;
            const int core = wholeSide - lost;
            QVERIFY2(inside >= core * core && inside <= wholeSide * wholeSide,
                     qPrintable(where + QString(": %1 pixels").arg(inside)));
            QVERIFY2(bounds.width() >= core && bounds.width() <= wholeSide && bounds.height() >= core
                         && bounds.height() <= wholeSide,
                     qPrintable(where + QString(": %1 by %2").arg(bounds.width()).arg(bounds.height())));
        }
    }
}

QTEST_MAIN(tst_ShapeContract)
#include "tst_shapecontract.moc"
