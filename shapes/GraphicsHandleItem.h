#pragma once

#include "kesimagewnd_export.h"

#include <QGraphicsPathItem>
#include <QMap>
#include <QRectF>

// Handles of the point-list shapes: any number of squares of a fixed screen
// size. Its path gives only its extent for Qt; it paints from its copy of the
// shape's handle map, and keeps the one cursor its shape gave it.
class KESIMAGEWND_TESTS_EXPORT GraphicsHandleItem : public QGraphicsPathItem
{
public:
    explicit GraphicsHandleItem(QGraphicsItem* parent = nullptr);
    ~GraphicsHandleItem() override;

    void setHandleMap(QMap<int, QRectF> handles);
    const QMap<int, QRectF>& handleMap() const { return m_handles; }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QMap<int, QRectF> m_handles;
};
