#include "odsegmentshape.h"

#include "numericguards.h"

#include <QCursor>
#include <QGraphicsPathItem>

#include <array>

namespace {

enum Slot { StartX = 0, StartY = 1, EndX = 2, EndY = 3, SlotCount = 4 };

constexpr unsigned kStart = 1u << StartX | 1u << StartY;
constexpr unsigned kEnd = 1u << EndX | 1u << EndY;
// What each number writes back; index = number. 1 is the start's handle, 2 the
// end's; 0 and every other number own no slot.
constexpr std::array<unsigned, 3> kOwnedSlots = {0, kStart, kEnd};

} // namespace

ODSegmentShape::ODSegmentShape(QGraphicsScene* scene, DrawMode mode)
    : ODShape(scene, mode)
    , m_startPoint(0, 0)
    , m_endPoint(0, 0)
{
}

void ODSegmentShape::startAt(QPointF point)
{
    shownStateChanged();
    m_startPoint = point;
    m_endPoint = point;
    UpdateHandles();
}

void ODSegmentShape::adoptCrossHandleItem()
{
    auto* item = new QGraphicsPathItem;
    item->setCursor(Qt::CrossCursor);
    adoptHandleItem(item);
}

void ODSegmentShape::UpdateHandles()
{
    setHandles({m_startPoint, m_endPoint});
}

void ODSegmentShape::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    if (number == StartHandle)
        m_startPoint = pos;
    else if (number == EndHandle)
        m_endPoint = pos;
    UpdateOrgData(number);
}

void ODSegmentShape::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_startPoint += delta;
    m_endPoint += delta;
    UpdateOrgData(StartHandle);
    UpdateOrgData(EndHandle);
}

void ODSegmentShape::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(number, {m_startPoint.x(), m_startPoint.y(), m_endPoint.x(), m_endPoint.y()}, kOwnedSlots);
}

void ODSegmentShape::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_startPoint = QPointF(m_orgData[StartX], m_orgData[StartY]);
    m_endPoint = QPointF(m_orgData[EndX], m_orgData[EndY]);
}

void ODSegmentShape::setHandleCursor(QPointF point)
{
    static const QVector<Qt::CursorShape> cursors = {Qt::ArrowCursor, Qt::CrossCursor, Qt::CrossCursor};
    setViewportCursor(point, cursors);
}

void ODSegmentShape::SetLine(float x1, float y1, float x2, float y2)
{
    shownStateChanged();
    m_orgData = {x1, y1, x2, y2};
}

bool ODSegmentShape::GetParam(double* x1, double* y1, double* x2, double* y2) const
{
    return readOrgData({x1, y1, x2, y2});
}

QPoint WholePixel(const QPointF& point)
{
    return QPoint(RoundToInt(point.x()), RoundToInt(point.y()));
}
