#pragma once

#include "kesimagewnd_export.h"

#include <QCursor>
#include <QGraphicsPathItem>
#include <QMap>
#include <QPointF>
#include <QRectF>

// The item that paints a selected shape's handles at a fixed screen size. Its
// path, set by the shape's ShowHandle, only gives the item its extent for Qt's
// paint, hit and hover logic and is never painted; the item paints from its
// copy of the shape's handle map, keys from 0, each handle a filled square of
// 6 by 6 device pixels in the item's brush, whatever the zoom. An item with an
// empty path shows nothing.
class KESIMAGEWND_TESTS_EXPORT HandleItem : public QGraphicsPathItem
{
public:
    explicit HandleItem(QGraphicsItem* parent = nullptr);
    ~HandleItem() override;

    // Replaces the copy of the shape's handle map (scene coordinates).
    void setHandleMap(QMap<int, QRectF> handles);
    const QMap<int, QRectF>& handleMap() const { return m_handles; }

    // Paints every handle of the map as a square; an override that adds to it
    // calls this first and then draws with the painter's matrix restored.
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    // The number (key + 1) of the first handle, keys from 0, whose rectangle
    // moved by offset contains scenePos; 0 for none.
    int handleNumberAt(const QPointF& scenePos, const QPointF& offset = QPointF()) const;
    // Paints the map with the zoom dropped from the painter's matrix: each
    // handle's centre keeps its device position and the square is 6 device
    // pixels wide. The key roundKey is filled as a disc. The painter is left in
    // device units.
    void paintHandles(QPainter* painter, int roundKey = -1) const;

    QMap<int, QRectF> m_handles;
};

// A handle item that gives the mouse the resize cursor of the handle under it.
// While the item is visible, a hover at a scene position finds the handle
// number there and sets that number's cursor on the item; leaving sets the
// arrow.
class KESIMAGEWND_TESTS_EXPORT HoverHandleItem : public HandleItem
{
public:
    explicit HoverHandleItem(QGraphicsItem* parent = nullptr);
    ~HoverHandleItem() override;

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;

    // The number whose cursor shows for a hover at scenePos, 0 for none. An
    // override returns the number of its own hit rule; the base walks the keys
    // from 0 with the plain rectangles.
    virtual int hoverNumberAt(const QPointF& scenePos) const;
    // The cursor of a number: an override gives its class's table. The base
    // has the rectangle's: 1 and 5 diagonal down, 3 and 7 diagonal up, 2 and 6
    // vertical, 4 and 8 horizontal, anything else the arrow.
    virtual Qt::CursorShape cursorOf(int number) const;

private:
    // False, having done nothing, while the item is hidden.
    bool updateCursor(QGraphicsSceneHoverEvent* event);
};
