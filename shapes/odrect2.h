#pragma once

#include "odshape.h"

#include <QLine>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

class QGraphicsPathItem;
class QGraphicsRectItem;
class Rect2HandleItem;

// The rectangle given by centre, full width, full height and an angle in
// degrees, counter-clockwise on the screen. Reference data: centre x, centre
// y, width, height; the angle has a single copy. The items hold the unturned
// rectangle and are turned by Qt around m_rotateCenter. A resize works in the
// unturned frame around a rotation centre that stays put for the whole drag;
// AdjustParameter carries the moved centre into the scene at the release, so
// the far corner of a corner drag stays where it was on the screen. A ninth
// handle above the top edge turns the rectangle. Search lines, drawn in the
// unturned frame, turn with it.
class KESIMAGEWND_TESTS_EXPORT ODRect2 : public ODShape
{
public:
    explicit ODRect2(QGraphicsScene* scene);
    // A zero-size rectangle centred on the press point, as a drawing tool makes it.
    ODRect2(QGraphicsScene* scene, QPointF point);
    ~ODRect2() override;

    // Nine handles of the turned rectangle, already in scene positions.
    void UpdateHandles() override;
    // The items get the unturned rectangle and turn about m_rotateCenter,
    // which follows the centre unless a resize is under way.
    void ShowShape() override;
    void HideShape() override;
    // Squares, a round rotation handle and a stem make the extent; the item is
    // told the turn so that its cursors turn too.
    void ShowHandle() override;
    // Only the map goes: the path stays, and so does the visible mark.
    void HideHandle() override;
    // The body test is containment in the unturned rectangle.
    int HitTest(QPointF point, bool handles) override;
    // Resizes in the unturned frame about the fixed rotation centre; number 9
    // sets the angle.
    void MoveHandleTo(int number, const QPointF& pos) override;
    // Stores the centre only when the reference is already there.
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    // Makes the sizes positive and carries the centre into the scene.
    void AdjustParameter() override;
    void setHandleCursor(QPointF point) override;

    // Replaces the reference: centre x, centre y, full width, full height.
    void SetRect(double x, double y, double w, double h);
    // Degrees, counter-clockwise on the screen.
    void SetRoateAngle(double angle);
    // The rotation centre from the reference's centre, when it holds four values.
    void UpdateRotateCenter();
    void SetSearchLine(SEARCHLINEDIRECTION direction, int count);
    void SetSearchLineFlag(bool flag);
    bool HaveSearchLine() const;
    // The reference, the angle, direction and count; false, writing nothing,
    // unless the reference holds four values.
    bool GetParam(double* x, double* y, double* w, double* h, double* angle, int* direction, int* count) const;
    bool GetParam(double* x, double* y, double* w, double* h, double* angle, SEARCHLINEDIRECTION* direction,
                  int* count) const;
    void setZValue(long z);
    // The drawing tool's rule at the release: a rectangle drawn in DM_RECT2
    // with a full length below 2.0 is thrown away.
    bool isTooSmallToKeep() const;

    // A point of the unturned frame carried to the scene. Always goes through
    // the trigonometry, also at angle 0.
    QPointF RotatePoint(QPointF p);
    // The handle outline with a round rotation handle and its stem, without
    // the handle scale.
    virtual QPainterPath handlePath();

    QPainterPath GenSearchline();
    QPainterPath GenSearchlineItem(QLine line);

    QPointF center() const { return m_center; }
    double width() const { return m_width; }
    double height() const { return m_height; }
    double rotateAngle() const { return m_rotateAngle; }
    QPointF rotateCenter() const { return m_rotateCenter; }
    bool followCenter() const { return m_followCenter; }
    QGraphicsRectItem* rectItem() const { return m_rectItem; }
    QGraphicsPathItem* searchLineItem() const { return m_searchLineItem; }
    Rect2HandleItem* rect2HandleItem() const;

private:
    void createItems();
    // The unturned rectangle, normalised.
    QRectF shownRect() const;

    QPointF m_center;
    double m_width;
    double m_height;
    SEARCHLINEDIRECTION m_searchDirection;
    int m_searchCount;
    bool m_searchLineFlag;
    bool m_followCenter;
    double m_rotateAngle;
    QPointF m_rotateCenter;
    QGraphicsRectItem* m_rectItem;
    QGraphicsPathItem* m_searchLineItem;
};
