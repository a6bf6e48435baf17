#pragma once

// The point-list shapes as a test puts them down and reads them back: corners
// or points handed over as pairs of reference slots, the points of a point
// array, and the handle squares painted on a viewport.

#include "kitcompare.h"
#include "kitpixels.h"

#include "VorPointArray.h"
#include "odfreeline.h"
#include "odpolygon.h"

#include <QGraphicsView>
#include <QImage>
#include <QPointF>
#include <QVector>
#include <QtTest/QTest>

namespace Kit {

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
