#pragma once

#include "odshape.h"

#include <QPointF>
#include <QPolygonF>
#include <QVector>

class GraphicsHandleItem;
class VorPointArray;

// The base of the shapes that hold a list of points: the polygon and the two
// free lines. The reference holds x0, y0, x1, y1, ..., two slots a point, and
// the current geometry is the point list; UpdateCurData copies the reference
// into the list only while it holds two slots for every point. The handles are
// squares painted by a GraphicsHandleItem, with the cross cursor on the whole
// item. A tool builds such a shape with the plain constructor and AddPoint.
class KESIMAGEWND_TESTS_EXPORT ODPointListShape : public ODShape
{
public:
    ~ODPointListShape() override;

    void ShowHandle() override;
    void UpdateCurData() override;

    // Appends the point (scene coordinates) to the list and its x and y to the
    // reference.
    void AddPoint(QPointF point);
    // Clears the array, then appends a point for each pair of reference slots;
    // true, also when there are none. A null array is left alone.
    bool GetParam(VorPointArray* points) const;

    const QPolygonF& points() const { return m_points; }
    GraphicsHandleItem* graphicsHandleItem() const;

protected:
    ODPointListShape(QGraphicsScene* scene, DrawMode mode);

    // The list anew from points; each point's x and y are appended to the
    // reference, which is not cleared, so a filled shape keeps its old slots
    // ahead of the new ones.
    void appendPoints(const QVector<QPointF>& points);
    // The list anew from the pairs of values, which become the reference as
    // they are. A lone last value makes no point but stays in the reference,
    // where the count rules of each class then decide what reaches it.
    void assignPoints(const QVector<double>& values);
    // The handle item of a point list, made after the display items so that it
    // stands above them at the same z value.
    void adoptPointHandleItem();
    // True when the reference holds two slots for each point of the list.
    bool referenceMatchesPoints() const { return m_orgData.size() / 2 == m_points.size(); }
    // Point i to slots 2i and 2i + 1, for every point; the reference must hold
    // at least two slots a point.
    void writePointsToReference();
    // The cursor of the view's viewport: shape over any handle while handles
    // are shown, else the arrow.
    void setAnyHandleCursor(QPointF point, Qt::CursorShape shape);

    QPolygonF m_points;
};
