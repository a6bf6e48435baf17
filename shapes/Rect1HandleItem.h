#pragma once

#include "kesimagewnd_export.h"

#include <QGraphicsPathItem>
#include <QMap>
#include <QRectF>

// The eight handles of an axis-parallel rectangle, painted as squares of a
// fixed screen size, with a resize cursor for the handle under the mouse. The
// path gives only the item's extent; painting uses the copy of the handle map.
class KESIMAGEWND_TESTS_EXPORT Rect1HandleItem : public QGraphicsPathItem
{
public:
    explicit Rect1HandleItem(QGraphicsItem* parent = nullptr);
    ~Rect1HandleItem() override;

    void setHandleMap(QMap<int, QRectF> handles);
    const QMap<int, QRectF>& handleMap() const { return m_handles; }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;

private:
    bool updateCursor(QGraphicsSceneHoverEvent* event);

    QMap<int, QRectF> m_handles;
};
