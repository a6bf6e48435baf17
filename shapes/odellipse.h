#pragma once

#include "odshape.h"

#include <QPointF>
#include <QRectF>

class QGraphicsEllipseItem;
class Rect2HandleItem;

// An ellipse given by centre, two radii and an angle, with the nine handles of
// the rotated rectangle. Reference data: centre x, centre y, radius x, radius
// y; the angle has no second copy. A handle drag changes the radii
// symmetrically around the centre, which never moves during a resize, so the
// ellipse is always turned about its own centre.
class KESIMAGEWND_TESTS_EXPORT ODEllipse : public ODShape
{
public:
    explicit ODEllipse(QGraphicsScene* scene);
    // An ellipse of no size centred on the press point, as a drawing tool makes it.
    ODEllipse(QGraphicsScene* scene, QPointF point);
    ~ODEllipse() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    void ShowHandle() override;
    int HitTest(QPointF point, bool handles) override;
    QRectF hitReach() const override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void setHandleCursor(QPointF point) override;

    // Replaces the reference by centre and radii and stores the angle (degrees,
    // counter-clockwise on the screen). Shown at ShowShape.
    void SetEllipse(float x, float y, float rx, float ry, float angle);
    void SetRoateAngle(float angle);
    // The reference (centre x, centre y, radius x, radius y), then the angle;
    // false, writing nothing, unless the reference holds four values.
    bool GetParam(double* x, double* y, double* rx, double* ry, double* angle) const;
    void setZValue(long z);

    // From the ellipse's unturned frame to the scene: a turn about the centre.
    QPointF RotatePoint(QPointF p);

    QPointF center() const { return m_center; }
    float radiusX() const { return m_radiusX; }
    float radiusY() const { return m_radiusY; }
    float rotateAngle() const { return m_rotateAngle; }
    QGraphicsEllipseItem* ellipseItem() const { return m_ellipseItem; }
    Rect2HandleItem* rect2HandleItem() const;

private:
    // The unturned bounding rectangle of the current geometry.
    QRectF boundingRectangle() const;

    QPointF m_center;
    float m_radiusX;
    float m_radiusY;
    float m_rotateAngle;
    QGraphicsEllipseItem* m_ellipseItem;
};
