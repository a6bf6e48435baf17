#include "CircleHandleItem.h"

#include <QBrush>

CircleHandleItem::CircleHandleItem(QGraphicsItem* parent)
    : HoverHandleItem(parent)
{
    setBrush(QBrush(Qt::blue, Qt::SolidPattern));
}

CircleHandleItem::~CircleHandleItem() = default;

int CircleHandleItem::hoverNumberAt(const QPointF& scenePos) const
{
    // adjusted(-1, -1, -1, -1): the rectangle moves one unit up and left and
    // keeps its size.
    return handleNumberAt(scenePos, QPointF(-1, -1));
}

Qt::CursorShape CircleHandleItem::cursorOf(int number) const
{
    switch (number) {
    case 1:
    case 3: return Qt::SizeVerCursor;
    case 2:
    case 4: return Qt::SizeHorCursor;
    default: return Qt::ArrowCursor;
    }
}
