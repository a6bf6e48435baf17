#pragma once

#include "odshape.h"

#include <QPointF>

class QGraphicsPathItem;

// An open arc of a circle: centre, radius, start angle and sweep, in degrees
// as QPainterPath::arcTo takes them (0 at three o'clock, positive
// counter-clockwise on the screen). Reference data: centre x, centre y,
// radius, start, sweep. Its two handles, at the ends of the arc, both set the
// radius; no drag changes the angles.
class KESIMAGEWND_TESTS_EXPORT ODARC : public ODShape
{
public:
    explicit ODARC(QGraphicsScene* scene);
    // An arc of radius 5, from 0 over 30 degrees, about the press point, as a
    // drawing tool makes it.
    ODARC(QGraphicsScene* scene, QPointF point);
    ~ODARC() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void setHandleCursor(QPointF point) override;

    // Replaces the reference by centre, radius, start and sweep. Shown at ShowShape.
    void SetCircle(double x, double y, double r, double start, double sweep);
    // The first five reference values; false, writing nothing, when the
    // reference holds fewer. A longer reference is accepted.
    bool GetParam(double* x, double* y, double* r, double* start, double* sweep) const;
    void setZValue(long z);

    QPointF center() const { return m_center; }
    float radius() const { return m_radius; }
    double startAngle() const { return m_startAngle; }
    double sweepAngle() const { return m_sweepAngle; }
    QGraphicsPathItem* arcItem() const { return m_arcItem; }

private:
    QPointF m_center;
    float m_radius;
    double m_startAngle;
    double m_sweepAngle;
    QGraphicsPathItem* m_arcItem;
};
