#pragma once

#include "odpointlistshape.h"

#include <QPainterPath>
#include <QPointF>
#include <QVector>

class QGraphicsPathItem;

// The base of the two freehand lines: a list of points drawn as one path, with
// a handle on the first point (key 0) and one on the last (key 1). A handle
// drag does not move a point: it adds the mouse position as a new point at
// that end, so the operator goes on drawing from either end and handle work
// never shrinks the line. The body is the closed line stroked 15 wide
// together with its inside. The reference is written only while it holds
// exactly two slots a point.
class KESIMAGEWND_TESTS_EXPORT ODFreeLine : public ODPointListShape
{
public:
    ~ODFreeLine() override;

    void UpdateHandles() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    QRectF hitReach() const override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void setHandleCursor(QPointF point) override;

    // The points anew (scene coordinates), appended to the reference, which
    // keeps whatever it held before.
    void SetAnyLinePoints(QVector<QPointF> points);
    // The points from pairs x0, y0, x1, y1, ..., which also become the
    // reference; a lone last value is dropped.
    void SetAnyLinePoints(QVector<double>& values);
    void setZValue(long z);

    QGraphicsPathItem* pathItem() const { return m_pathItem; }

protected:
    ODFreeLine(QGraphicsScene* scene, DrawMode mode);

    // The path from the first point through every point, the first included;
    // closed adds a line back to the first point. Empty without points.
    QPainterPath linePath(bool closed) const;
    // The common steps of showing: the points reloaded from the reference, the
    // working pen, the path and the solid brush.
    void showLine(bool closed);

    QGraphicsPathItem* m_pathItem;
};
