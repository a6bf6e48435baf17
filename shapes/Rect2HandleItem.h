#pragma once

#include "HandleItem.h"

#include <QList>
#include <QPointF>

// The handles of a rotated rectangle or an ellipse: eight squares and, at key
// 8, a round rotation handle joined to the top-centre handle by a cosmetic
// line when the map holds all nine. The hover cursor turns with the shape:
// each 45 degrees of turn moves it one place along the cycle of handles, and
// the rotation handle has the cross.
class KESIMAGEWND_TESTS_EXPORT Rect2HandleItem : public HoverHandleItem
{
public:
    explicit Rect2HandleItem(QGraphicsItem* parent = nullptr);
    ~Rect2HandleItem() override;

    // As QGraphicsItem::setRotation: positive clockwise on the screen.
    void setRotateAngle(float angle);
    float rotateAngle() const { return m_rotateAngle; }

    // The cursor's handle number for a hit handle number, turned by the angle.
    int turnedHandleNumber(int number) const;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    int hoverNumberAt(const QPointF& scenePos) const override;
    // The rectangle's cursors, and the cross for the rotation handle.
    Qt::CursorShape cursorOf(int number) const override;

private:
    float m_rotateAngle;
    QList<QPointF> m_points;  // kept empty
};
