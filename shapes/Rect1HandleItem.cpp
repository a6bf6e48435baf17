#include "Rect1HandleItem.h"

Rect1HandleItem::Rect1HandleItem(QGraphicsItem* parent)
    : HoverHandleItem(parent)
{
}

Rect1HandleItem::~Rect1HandleItem() = default;
