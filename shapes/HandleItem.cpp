#include "HandleItem.h"

#include <QGraphicsSceneHoverEvent>
#include <QMatrix>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double kSquareHalf = 3.0; // device pixels
constexpr double kSquareSide = 2 * kSquareHalf;
constexpr int kRoundness = 100;

} // namespace

HandleItem::HandleItem(QGraphicsItem* parent)
    : QGraphicsPathItem(parent)
{
}

HandleItem::~HandleItem() = default;

void HandleItem::setHandleMap(QMap<int, QRectF> handles)
{
    m_handles = handles;
    // The squares are painted from the map: a new map repaints the item.
    update();
}

void HandleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    // An empty path hides the item. Qt still calls paint for an item whose
    // empty extent sits at the scene origin when the origin is in view, so the
    // handles of the map are painted only while the path gives them an extent.
    if (path().isEmpty())
        return;
    paintHandles(painter);
}

void HandleItem::paintHandles(QPainter* painter, int roundKey) const
{
    const QMatrix m = painter->matrix();
    for (int i = 0; i < m_handles.size(); ++i) {
        const QPointF c = m_handles.value(i).center();
        // m12 serves in both lines and m21 in neither; the view never turns or
        // shears, so this is the plain mapping of the centre to the device.
        const double x = m.m11() * c.x() + m.m12() * c.y() + m.dx();
        const double y = m.m22() * c.y() + m.m12() * c.x() + m.dy();
        const QMatrix unscaled(1.0, m.m12(), m.m21(), 1.0, x - c.x(), y - c.y());
        painter->setMatrix(unscaled, false);
        const QRectF square(c.x() - kSquareHalf, c.y() - kSquareHalf, kSquareSide, kSquareSide);
        if (i == roundKey) {
            QPainterPath disc;
            disc.addRoundRect(square, kRoundness);
            painter->fillPath(disc, brush());
        } else {
            painter->fillRect(square, brush());
        }
    }
}

int HandleItem::handleNumberAt(const QPointF& scenePos, const QPointF& offset) const
{
    for (int i = 0; i < m_handles.size(); ++i) {
        if (m_handles.value(i).translated(offset).contains(scenePos))
            return i + 1;
    }
    return 0;
}

HoverHandleItem::HoverHandleItem(QGraphicsItem* parent)
    : HandleItem(parent)
{
    setAcceptHoverEvents(true);
}

HoverHandleItem::~HoverHandleItem() = default;

int HoverHandleItem::hoverNumberAt(const QPointF& scenePos) const
{
    return handleNumberAt(scenePos);
}

Qt::CursorShape HoverHandleItem::cursorOf(int number) const
{
    switch (number) {
    case 1:
    case 5: return Qt::SizeFDiagCursor;
    case 2:
    case 6: return Qt::SizeVerCursor;
    case 3:
    case 7: return Qt::SizeBDiagCursor;
    case 4:
    case 8: return Qt::SizeHorCursor;
    default: return Qt::ArrowCursor;
    }
}

bool HoverHandleItem::updateCursor(QGraphicsSceneHoverEvent* event)
{
    if (!isVisible())
        return false;
    setCursor(cursorOf(hoverNumberAt(event->scenePos())));
    return true;
}

void HoverHandleItem::hoverEnterEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverEnterEvent(event);
}

void HoverHandleItem::hoverMoveEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverMoveEvent(event);
}

void HoverHandleItem::hoverLeaveEvent(QGraphicsSceneHoverEvent* event)
{
    setCursor(Qt::ArrowCursor);
    QGraphicsPathItem::hoverLeaveEvent(event);
}
