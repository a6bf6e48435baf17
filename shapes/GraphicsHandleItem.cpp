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
    // An empty path hides the item. Qt still calls paint for an item whose
    // empty extent sits at the scene origin when the origin is in view, so the
    // handles of the map are painted only while the path gives them an extent.
    if (path().isEmpty())
        return;
    HandleItemPaint::paintHandles(painter, m_handles, brush());
}
