#pragma once

#include "kesimagewnd_export.h"

#include <QGraphicsPathItem>
#include <QList>
#include <QMap>
#include <QPointF>
#include <QRectF>

// The handles of a rotated rectangle or an ellipse: eight squares and, at key
// 8, a round rotation handle joined to the top-centre handle by a line, all of
// a fixed screen size. The hover cursor turns with the shape: each 45 degrees of
// turn moves it one place along the cycle of handles.
class KESIMAGEWND_TESTS_EXPORT Rect2HandleItem : public QGraphicsPathItem
{
public:
    explicit Rect2HandleItem(QGraphicsItem* parent = nullptr);
    ~Rect2HandleItem() override;

    void setHandleMap(QMap<int, QRectF> handles);
    const QMap<int, QRectF>& handleMap() const { return m_handles; }
    // As QGraphicsItem::setRotation: positive clockwise on the screen.
    void setRotateAngle(float angle);
    float rotateAngle() const { return m_rotateAngle; }

    // The cursor's handle number for a hit handle number, turned by the angle.
    int turnedHandleNumber(int number) const;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;

private:
    bool updateCursor(QGraphicsSceneHoverEvent* event);

    QMap<int, QRectF> m_handles;
    float m_rotateAngle;
    QList<QPointF> m_points;  // kept empty
};
