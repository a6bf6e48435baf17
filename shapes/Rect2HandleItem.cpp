#include "Rect2HandleItem.h"

#include "numericguards.h"

#include <QMatrix>
#include <QPainter>

namespace {

constexpr int kRotationKey = 8;
constexpr int kRotationNumber = kRotationKey + 1;
constexpr int kTurnedCycle = 8;        // the box handles 1 to 8
constexpr float kStepDegrees = 45.0f;  // one place of the cycle
constexpr float kHalfStepDegrees = 22.5f;

} // namespace

Rect2HandleItem::Rect2HandleItem(QGraphicsItem* parent)
    : HoverHandleItem(parent)
    , m_rotateAngle(0.0f)
{
}

Rect2HandleItem::~Rect2HandleItem() = default;

void Rect2HandleItem::setRotateAngle(float angle)
{
    m_rotateAngle = angle;
}

void Rect2HandleItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    // An empty path hides the item (see HandleItem::paint).
    if (path().isEmpty())
        return;
    const QMatrix sceneMatrix = painter->matrix();
    paintHandles(painter, kRotationKey);
    if (m_handles.size() == kRotationNumber) {
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
    if (number < 1 || number > kTurnedCycle)
        return number;
    float a = m_rotateAngle;
    if (a < 0.0f)
        a += 360.0f;
    const int turned = TruncateToInt(float(number) + (kHalfStepDegrees + a) / kStepDegrees) % kTurnedCycle;
    return turned == 0 ? kTurnedCycle : turned;
}

int Rect2HandleItem::hoverNumberAt(const QPointF& scenePos) const
{
    return turnedHandleNumber(handleNumberAt(scenePos));
}

Qt::CursorShape Rect2HandleItem::cursorOf(int number) const
{
    return number == kRotationNumber ? Qt::CrossCursor : HoverHandleItem::cursorOf(number);
}
