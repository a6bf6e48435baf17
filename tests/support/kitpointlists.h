#pragma once

// The point-list shapes as a test puts them down and reads them back: corners
// or points handed over as pairs of reference slots, the points of a point
// array or a path, a freehand L with its inside, a new shape's items, and the
// handle squares painted on a viewport.

#include "kitcompare.h"
#include "kitpixels.h"
#include "kitwindow.h"

#include "GraphicsHandleItem.h"
#include "VorPointArray.h"
#include "odfreeline.h"
#include "odpolygon.h"

#include <QColor>
#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QVector>
#include <QtTest/QTest>

#include <initializer_list>

namespace Kit {

// A freehand L: along the top from (40, 40) to (120, 40), then down to
// (120, 100). Closed, its third side runs from (120, 100) back to (40, 40).
inline const QVector<QPointF> kLinePoints = {QPointF(40, 40), QPointF(80, 40), QPointF(120, 40), QPointF(120, 100)};
// Inside the triangle that the closed L encloses, more than 7.5 from each side.
inline const QPointF kInsideTheL(105, 55);
// Half way along the closing side.
inline const QPointF kOnTheClosingSide(80, 70);

// Two reference slots a point: x0, y0, x1, y1, ...
inline Params slotsOf(const QVector<QPointF>& points)
{
    Params values;
    for (const QPointF& p : points)
        values << p.x() << p.y();
    return values;
}

// The points an array holds, in order.
inline QVector<QPointF> pointsOf(const VorPointArray& array)
{
    QVector<QPointF> points;
    for (int i = 0; i < array.Length(); ++i)
        points.append(QPointF(array[i].x, array[i].y));
    return points;
}

// The points of a path's elements, in order.
inline QVector<QPointF> elementPoints(const QPainterPath& path)
{
    QVector<QPointF> points;
    for (int i = 0; i < path.elementCount(); ++i)
        points.append(QPointF(path.elementAt(i)));
    return points;
}

// What GetParam of a point-list shape writes into an array handed in filled.
template <class Shape>
QVector<QPointF> pointsReadBack(const Shape& shape, bool* ok = nullptr)
{
    VorPointArray array;
    array.Append(VorPoint(-1, -1));
    const bool result = shape.GetParam(&array);
    if (ok)
        *ok = result;
    return pointsOf(array);
}

// A polygon or a free line with these points as its reference, shown from
// it, with its handle rectangles made.
inline void place(ODPolygon& shape, const QVector<QPointF>& points)
{
    Params values = slotsOf(points);
    shape.SetPolygonPoints(values);
    shape.ShowShape();
    shape.UpdateHandles();
}

inline void place(ODFreeLine& shape, const QVector<QPointF>& points)
{
    Params values = slotsOf(points);
    shape.SetAnyLinePoints(values);
    shape.ShowShape();
    shape.UpdateHandles();
}

// Fails the running test unless a point-list shape just made has no point, no
// reference and no handle, and owns exactly its display item and its handle
// item in the scene: a GraphicsHandleItem with the cross cursor on the whole
// item, the handle blue brush and no hover events.
inline void verifyNewPointListShape(const ODPointListShape& shape, const QGraphicsScene& scene,
                                    const QGraphicsItem* displayItem)
{
    QVERIFY(shape.points().isEmpty());
    QVERIFY(shape.orgData().isEmpty());
    QVERIFY(shape.handles().isEmpty());
    QCOMPARE(scene.items().size(), 2);
    QCOMPARE(displayItem->scene(), &scene);
    QVERIFY(shape.graphicsHandleItem() != nullptr);
    QCOMPARE(shape.handleItem()->scene(), &scene);
    QCOMPARE(shape.handleItem()->cursor().shape(), Qt::CrossCursor);
    QCOMPARE(shape.handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    QVERIFY(!shape.handleItem()->acceptHoverEvents());
}

// A point-list shape on the active layer of a window, in these colours and
// line width, still without points.
template <class Shape>
Shape* addPointListShape(PictureWindow& w, const QColor& pen, const QColor& brush, float lineWidth = 3)
{
    auto* shape = new Shape(w.scene());
    shape->SetPenColor(pen);
    shape->SetBrushColor(brush);
    shape->SetLineWidth(lineWidth);
    w.active()->addShape(shape);
    return shape;
}

// The grey of a PictureWindow's picture, as the viewport shows it.
inline QRgb pictureGrey()
{
    return qRgb(PictureWindow::kGrey, PictureWindow::kGrey, PictureWindow::kGrey);
}

// Fails the running test unless the grab's pixel under each scene point has
// the colour, within one a channel.
inline void verifyColourAt(QGraphicsView* view, const QImage& image, std::initializer_list<QPointF> scenePoints,
                           QRgb colour)
{
    for (const QPointF& point : scenePoints) {
        const QRgb actual = image.pixel(view->mapFromScene(point));
        QVERIFY2(colourNear(actual, colour),
                 qPrintable(text(point) + ": " + colourText(actual) + ", expected " + colourText(colour)));
    }
}

// Fails the running test unless the grab shows a 6 by 6 square of handle
// blue on each of the scene points and no handle blue anywhere else.
inline void verifyHandleSquaresOnlyAt(QGraphicsView* view, const QImage& image, const QVector<QPointF>& scenePoints)
{
    const int side = int(kHandleSide);
    for (const QPointF& point : scenePoints) {
        const Blob blob = findColour(image, around(view->mapFromScene(point), side));
        QVERIFY2(blob.count == side * side, qPrintable(text(point) + QString(": %1 blue pixels").arg(blob.count)));
        QCOMPARE(blob.bounds.size(), QSize(side, side));
    }
    QCOMPARE(countColour(image, kHandleBlue), side * side * scenePoints.size());
}

} // namespace Kit
