#pragma once

#include "odshape.h"

#include <QPointF>

class QGraphicsPathItem;

// A point shown as a cross whose arms reach m_crossSize scene units from it,
// with one handle on it. Reference data x, y. The point is grabbed only by its
// handle rectangle, whether the body or the handles are asked, and whatever a
// handle number says the point moves.
class KESIMAGEWND_TESTS_EXPORT ODPoint : public ODShape
{
public:
    explicit ODPoint(QGraphicsScene* scene);
    // A point on the press point, as a drawing tool makes it.
    ODPoint(QGraphicsScene* scene, QPointF point);
    ~ODPoint() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    QRectF hitReach() const override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void AdjustParameter() override;

    // Replaces the reference by the point (scene coordinates), shown at ShowShape.
    void SetPoint(double x, double y);
    // The arm length of the cross in scene units, from the point outward.
    void SetCrossSize(int size);
    // The reference x, y; false, writing nothing, unless it holds exactly two values.
    bool GetParam(double* x, double* y) const;
    void setZValue(long z);

    int crossSize() const { return m_crossSize; }
    QPointF point() const { return m_point; }
    QGraphicsPathItem* crossItem() const { return m_crossItem; }

private:
    int m_crossSize;
    QPointF m_point;
    QGraphicsPathItem* m_crossItem;
};
