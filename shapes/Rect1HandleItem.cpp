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
    HandleItemPaint::paintHandles(painter, m_handles, brush());
}

bool Rect1HandleItem::updateCursor(QGraphicsSceneHoverEvent* event)
{
    if (!isVisible())
        return false;
    setCursor(HandleItemPaint::rectangleCursor(HandleItemPaint::handleNumberAt(m_handles, event->scenePos())));
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
