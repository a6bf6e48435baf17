#include "Rect2HandleItem.h"

#include "handleitempaint.h"
#include "numericguards.h"

#include <QCursor>
#include <QGraphicsSceneHoverEvent>
#include <QMatrix>
#include <QPainter>

namespace {

constexpr int kRotationKey = 8;

} // namespace

Rect2HandleItem::Rect2HandleItem(QGraphicsItem* parent)
    : QGraphicsPathItem(parent)
    , m_rotateAngle(0.0f)
{
    setAcceptHoverEvents(true);
}

Rect2HandleItem::~Rect2HandleItem() = default;

void Rect2HandleItem::setHandleMap(QMap<int, QRectF> handles)
{
    m_handles = handles;
}

void Rect2HandleItem::setRotateAngle(float angle)
{
    m_rotateAngle = angle;
}

void Rect2HandleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    // An empty path hides the item. Qt still calls paint for an item whose
    // empty extent sits at the scene origin when the origin is in view, so the
    // handles of the map are painted only while the path gives them an extent.
    if (path().isEmpty())
        return;
    const QMatrix sceneMatrix = painter->matrix();
    HandleItemPaint::paintHandles(painter, m_handles, brush(), kRotationKey);
    if (m_handles.size() == 9) {
        painter->setMatrix(sceneMatrix, false);
        QPen pen = painter->pen();
        pen.setWidth(0);
        pen.setColor(Qt::blue);
        painter->setPen(pen);
        painter->drawLine(m_handles.value(kRotationKey).center(), m_handles.value(1).center());
    }
}

int Rect2HandleItem::turnedHandleNumber(int number) const
{
    if (number < 1 || number > 8)
        return number;
    float a = m_rotateAngle;
    if (a < 0.0f)
        a += 360.0f;
    const int turned = TruncateToInt(float(number) + (22.5f + a) / 45.0f) % 8;
    return turned == 0 ? 8 : turned;
}

bool Rect2HandleItem::updateCursor(QGraphicsSceneHoverEvent* event)
{
    if (!isVisible())
        return false;
    const int number = turnedHandleNumber(HandleItemPaint::handleNumberAt(m_handles, event->scenePos()));
    setCursor(HandleItemPaint::rectangleCursor(number));
    return true;
}

void Rect2HandleItem::hoverEnterEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverEnterEvent(event);
}

void Rect2HandleItem::hoverMoveEvent(QGraphicsSceneHoverEvent* event)
{
    if (updateCursor(event))
        QGraphicsPathItem::hoverMoveEvent(event);
}

void Rect2HandleItem::hoverLeaveEvent(QGraphicsSceneHoverEvent* event)
{
    setCursor(Qt::ArrowCursor);
    QGraphicsPathItem::hoverLeaveEvent(event);
}
