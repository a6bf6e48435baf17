#pragma once

#include "kesimagewnd_export.h"

#include <QGraphicsPathItem>
#include <QMap>
#include <QRectF>

// The four handles of a circle, painted as squares of a fixed screen size, with
// a resize cursor under the mouse. Its hover test looks at each handle moved one
// unit up and to the left, and that offset is part of its behaviour.
class KESIMAGEWND_TESTS_EXPORT CircleHandleItem : public QGraphicsPathItem
{
public:
    explicit CircleHandleItem(QGraphicsItem* parent = nullptr);
    ~CircleHandleItem() override;

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
