#include "Rect1HandleItem.h"

#include "handleitempaint.h"

#include <QCursor>
#include <QGraphicsSceneHoverEvent>

Rect1HandleItem::Rect1HandleItem(QGraphicsItem* parent)
    : QGraphicsPathItem(parent)
{
    setAcceptHoverEvents(true);
}

Rect1HandleItem::~Rect1HandleItem() = default;

void Rect1HandleItem::setHandleMap(QMap<int, QRectF> handles)
{
    m_handles = handles;
}

void Rect1HandleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    // An empty path hides the item. Qt still calls paint for an item whose
    // empty extent sits at the scene origin when the origin is in view, so the
    // handles of the map are painted only while the path gives them an extent.
    if (path().isEmpty())
        return;
    HandleItemPaint::paintHandles(painter, m_handles, brush());
}

bool Rect1HandleItem::updateCursor(QGraphicsSceneHoverEvent* event)
{
    if (!isVisible())
        return false;
    const int number = HandleItemPaint::handleNumberAt(m_handles, event->scenePos());
    // Numbers 1 to 8 have resize cursors; the cross of number 9 belongs to the
    // rotation handle of a turned rectangle, which this item has not.
    setCursor(number <= 8 ? HandleItemPaint::rectangleCursor(number) : Qt::ArrowCursor);
    return true;
}

void Rect1HandleItem::hoverEnterEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverEnterEvent(event);
}

void Rect1HandleItem::hoverMoveEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverMoveEvent(event);
}

void Rect1HandleItem::hoverLeaveEvent(QGraphicsSceneHoverEvent* event)
{
    setCursor(Qt::ArrowCursor);
    QGraphicsPathItem::hoverLeaveEvent(event);
}
