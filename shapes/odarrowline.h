#pragma once

#include "odsegmentshape.h"

#include <QPainterPath>
#include <QPointF>

class QGraphicsPathItem;

// A straight line with an arrow head on its end: the head reaches 7 scene
// units back along the line and 3.5 to each side, its wings on whole offsets
// from the tip. Reference data x1, y1, x2, y2. Its body is a stroke of 15
// scene units along the line; while both ends coincide every handle hit takes
// the end, so that a drawn arrow grows from its start.
class KESIMAGEWND_TESTS_EXPORT ODArrowLine : public ODSegmentShape
{
public:
    explicit ODArrowLine(QGraphicsScene* scene);
    // An arrow of no length on the press point, as a drawing tool makes it.
    ODArrowLine(QGraphicsScene* scene, QPointF point);
    ~ODArrowLine() override;

    void ShowShape() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    QRectF hitReach() const override;

    void setZValue(long z);

    // The line from start to tip and the two wings of the head (scene
    // coordinates): moveTo start, lineTo tip, moveTo the first wing, lineTo
    // tip, lineTo the second wing.
    static QPainterPath arrowPath(const QPointF& start, const QPointF& tip);

    QGraphicsPathItem* arrowItem() const { return m_arrowItem; }

private:
    QGraphicsPathItem* m_arrowItem;
};
