#pragma once

#include "odsegmentshape.h"

#include <QPointF>

class QGraphicsLineItem;

// A straight line between two ends, shown on whole pixels while its reference
// (x1, y1, x2, y2) keeps the fractions. Its body is a strip of 15 scene units
// on each side of the shown line, square at the ends. A line made at a press
// point has both ends there, and its first handle hit takes the end, so that
// the drag draws the line from its start.
class KESIMAGEWND_TESTS_EXPORT ODLine : public ODSegmentShape
{
public:
    explicit ODLine(QGraphicsScene* scene);
    // A line of no length on the press point, as a drawing tool makes it.
    ODLine(QGraphicsScene* scene, QPointF point);
    ~ODLine() override;

    void ShowShape() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    QRectF hitReach() const override;

    void setZValue(long z);

    QGraphicsLineItem* lineItem() const { return m_lineItem; }
    bool firstHit() const { return m_firstHit; }

private:
    QGraphicsLineItem* m_lineItem;
    bool m_firstHit;
};

// True when point lies within tolerance (scene units, whatever the zoom) of
// the segment from start to end, measured across it, and not beyond either end
// along it: a strip with square ends. A segment of no length has no direction,
// and nothing is near it.
KESIMAGEWND_TESTS_EXPORT bool isPointNearLine(const QPointF& point, const QPointF& start, const QPointF& end,
                                              int tolerance);
