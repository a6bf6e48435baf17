#include "GraphicsHandleItem.h"

#include "handleitempaint.h"

GraphicsHandleItem::GraphicsHandleItem(QGraphicsItem* parent)
    : QGraphicsPathItem(parent)
{
}

GraphicsHandleItem::~GraphicsHandleItem() = default;

void GraphicsHandleItem::setHandleMap(QMap<int, QRectF> handles)
{
    m_handles = handles;
}

void GraphicsHandleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    HandleItemPaint::paintHandles(painter, m_handles, brush());
}
