#pragma once

#include "odshape.h"

#include <QPainterPath>
#include <QPointF>

class QGraphicsPathItem;

// A sector of a ring: centre, inner and outer radius, start angle and sweep in
// degrees, 0 at three o'clock and positive counter-clockwise on the screen.
// The sweep is held with the sign opposite to QPainterPath::arcTo: -350, the
// default, is 350 degrees counter-clockwise from the start. Reference data:
// centre x, centre y, inner radius, outer radius; the angles have no second
// copy. Handles 1 and 2 set the start and the end angle at mid radius, 3 and 4
// the inner and the outer radius at mid angle; optional search lines run
// along radii.
class KESIMAGEWND_TESTS_EXPORT ODAnnular : public ODShape
{
public:
    explicit ODAnnular(QGraphicsScene* scene);
    // A sector of no size about the press point, as a drawing tool makes it:
    // all four handles on the centre.
    ODAnnular(QGraphicsScene* scene, QPointF point);
    ~ODAnnular() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void setHandleCursor(QPointF point) override;

    // Replaces the reference by centre and radii and stores start and sweep as
    // given (sweep in the held sign). Shown at ShowShape.
    void SetTours(double x, double y, double inner, double outer, double start, double sweep);
    void SetStartAngle(float angle);
    // Stores the sweep as given, in the held sign.
    void SetSweepAngle(float angle);
    void SetSearchLine(SEARCHLINEDIRECTION direction, int count);
    void SetSearchLineFlag(bool flag);
    bool HaveSearchLine() const;
    // The reference, the start angle, the sweep in arcTo's sign (the held one
    // negated), direction and count; false, writing nothing, unless the
    // reference holds four values.
    bool GetParam(double* x, double* y, double* inner, double* outer, double* start, double* sweep,
                  int* direction, int* count) const;
    void setZValue(long z);

    // The scene point at radius from the centre in the direction angle
    // (degrees), computed in single precision.
    QPointF GetPoint(float radius, double angle);
    // The search lines along radii from the start angle, counter-clockwise,
    // with arrow heads for the directions inner to outer and outer to inner;
    // empty below two lines.
    QPainterPath GenSearchline();

    QPointF center() const { return m_center; }
    double innerRadius() const { return m_innerRadius; }
    double outerRadius() const { return m_outerRadius; }
    double startAngle() const { return m_startAngle; }
    double sweepAngle() const { return m_sweepAngle; }
    SEARCHLINEDIRECTION searchDirection() const { return m_searchDirection; }
    int searchCount() const { return m_searchCount; }
    QGraphicsPathItem* annularItem() const { return m_annularItem; }
    QGraphicsPathItem* searchLineItem() const { return m_searchLineItem; }

private:
    QPointF m_center;
    double m_outerRadius;
    double m_innerRadius;
    double m_startAngle;
    double m_sweepAngle;
    SEARCHLINEDIRECTION m_searchDirection;
    int m_searchCount;
    bool m_searchLineFlag;
    QGraphicsPathItem* m_annularItem;
    QGraphicsPathItem* m_searchLineItem;
};
