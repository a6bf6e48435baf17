#pragma once

#include "odshape.h"

#include <QPoint>
#include <QPointF>

// The end handling that the straight line and the arrow line share: two ends,
// a handle on each (key 0 the start, key 1 the end) on a plain handle item with
// the cross cursor, and reference data x1, y1, x2, y2. Handle number 1 owns
// the start's two slots and number 2 the end's; a body move shifts both ends.
// A subclass adds its display item, how it shows itself and its hit tests.
class KESIMAGEWND_TESTS_EXPORT ODSegmentShape : public ODShape
{
public:
    ~ODSegmentShape() override = default;

    void UpdateHandles() override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void setHandleCursor(QPointF point) override;

    // Replaces the reference by the two ends (scene coordinates), shown at
    // ShowShape.
    void SetLine(float x1, float y1, float x2, float y2);
    // The reference: start x, start y, end x, end y; false, writing nothing,
    // unless the reference holds exactly four values.
    bool GetParam(double* x1, double* y1, double* x2, double* y2) const;

    QPointF startPoint() const { return m_startPoint; }
    QPointF endPoint() const { return m_endPoint; }

protected:
    // Handle numbers, one more than the keys of m_handles.
    enum HandleNumber { StartHandle = 1, EndHandle = 2 };

    ODSegmentShape(QGraphicsScene* scene, DrawMode mode);

    // Both ends on point (scene coordinates) and the handles made there, as a
    // drawing tool starts the shape at the press point.
    void startAt(QPointF point);

    // Takes the class's plain handle item, with the cross cursor; a subclass
    // calls it after adding its display item, so the handles stand above it.
    void adoptCrossHandleItem();

    QPointF m_startPoint;
    QPointF m_endPoint;
};

// A point rounded to whole pixels as QPointF::toPoint() rounds, halves up, but
// held within int: NaN gives 0 and coordinates beyond int saturate.
KESIMAGEWND_TESTS_EXPORT QPoint WholePixel(const QPointF& point);
