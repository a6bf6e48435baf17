#include "GraphicsHandleItem.h"

GraphicsHandleItem::GraphicsHandleItem(QGraphicsItem* parent)
    : HandleItem(parent)
{
}

GraphicsHandleItem::~GraphicsHandleItem() = default;
