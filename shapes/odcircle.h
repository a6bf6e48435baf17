#pragma once

#include "odshape.h"

#include <QPointF>

class CircleHandleItem;
class QGraphicsEllipseItem;

// A circle given by centre and radius. Reference data: centre x, centre y,
// radius. Its four handles sit on the top, right, bottom and left of the
// circle, and each sets the radius to the mouse's distance from the centre,
// which only a body move shifts.
class KESIMAGEWND_TESTS_EXPORT ODCircle : public ODShape
{
public:
    explicit ODCircle(QGraphicsScene* scene);
    // A circle of radius 0 on the press point, as a drawing tool makes it.
    ODCircle(QGraphicsScene* scene, QPointF point);
    ~ODCircle() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    void ShowHandle() override;
    int HitTest(QPointF point, bool handles) override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void setHandleCursor(QPointF point) override;

    // Replaces the reference by centre and radius. Shown at ShowShape.
    void SetCircle(double x, double y, double r);
    // The first three reference values; false, writing nothing, when the
    // reference holds fewer. A longer reference is accepted.
    bool GetParam(double* x, double* y, double* r) const;
    void setZValue(long z);

    QPointF center() const { return m_center; }
    float radius() const { return m_radius; }
    QGraphicsEllipseItem* ellipseItem() const { return m_ellipseItem; }
    CircleHandleItem* circleHandleItem() const;

private:
    QPointF m_center;
    float m_radius;
    QGraphicsEllipseItem* m_ellipseItem;
};
