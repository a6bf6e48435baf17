#include "CircleHandleItem.h"

#include "handleitempaint.h"

#include <QBrush>
#include <QCursor>
#include <QGraphicsSceneHoverEvent>

CircleHandleItem::CircleHandleItem(QGraphicsItem* parent)
    : QGraphicsPathItem(parent)
{
    setAcceptHoverEvents(true);
    setBrush(QBrush(Qt::blue, Qt::SolidPattern));
}

CircleHandleItem::~CircleHandleItem() = default;

void CircleHandleItem::setHandleMap(QMap<int, QRectF> handles)
{
    m_handles = handles;
}

void CircleHandleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    // An empty path hides the item. Qt still calls paint for an item whose
    // empty extent sits at the scene origin when the origin is in view, so the
    // handles of the map are painted only while the path gives them an extent.
    if (path().isEmpty())
        return;
    HandleItemPaint::paintHandles(painter, m_handles, brush());
}

bool CircleHandleItem::updateCursor(QGraphicsSceneHoverEvent* event)
{
    if (!isVisible())
        return false;
    // adjusted(-1, -1, -1, -1): the rectangle moves one unit up and left and
    // keeps its size.
    const int number = HandleItemPaint::handleNumberAt(m_handles, event->scenePos(), QPointF(-1, -1));
    Qt::CursorShape shape = Qt::ArrowCursor;
    if (number == 1 || number == 3)
        shape = Qt::SizeVerCursor;
    else if (number == 2 || number == 4)
        shape = Qt::SizeHorCursor;
    setCursor(shape);
    return true;
}

void CircleHandleItem::hoverEnterEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverEnterEvent(event);
}

void CircleHandleItem::hoverMoveEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverMoveEvent(event);
}

void CircleHandleItem::hoverLeaveEvent(QGraphicsSceneHoverEvent* event)
{
    setCursor(Qt::ArrowCursor);
    QGraphicsPathItem::hoverLeaveEvent(event);
}
