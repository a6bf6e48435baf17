#include "odline.h"

#include <QGraphicsLineItem>
#include <QGraphicsScene>
#include <QLineF>

#include <cmath>

namespace {

// How far from the shown line, in scene units, the body reaches.
constexpr int kBodyTolerance = 15;

double dot(const QPointF& a, const QPointF& b)
{
    return a.x() * b.x() + a.y() * b.y();
}

} // namespace

ODLine::ODLine(QGraphicsScene* scene)
    : ODSegmentShape(scene, DM_LINE)
    , m_lineItem(nullptr)
    , m_firstHit(false)
{
    m_lineItem = own(m_scene->addLine(QLineF()));
    adoptCrossHandleItem();
}

ODLine::ODLine(QGraphicsScene* scene, QPointF point)
    : ODLine(scene)
{
    startAt(point);
    m_firstHit = true;
}

ODLine::~ODLine()
{
    deleteItems({m_lineItem});
    m_lineItem = nullptr;
}

void ODLine::ShowShape()
{
    UpdateCurData();
    m_lineItem->setPen(currentPen());
    m_lineItem->setLine(QLineF(WholePixel(m_startPoint), WholePixel(m_endPoint)));
}

void ODLine::HideShape()
{
    m_lineItem->setLine(QLineF());
}

// The body test measures the distance to the line between the whole-pixel ends.
QRectF ODLine::hitReach() const
{
    const QRectF line = QRectF(QPointF(WholePixel(m_startPoint)), QPointF(WholePixel(m_endPoint))).normalized();
    return ODShape::hitReach() | line.adjusted(-kBodyTolerance, -kBodyTolerance, kBodyTolerance, kBodyTolerance);
}

int ODLine::HitTest(QPointF point, bool handles)
{
    if (!handles)
        return isPointNearLine(point, WholePixel(m_startPoint), WholePixel(m_endPoint), kBodyTolerance) ? 1 : 0;
    int number = hitHandle(point);
    // Both ends of a drawn line start on the press point: the first hit takes
    // the end, whichever handle was found.
    if (number != 0 && m_firstHit) {
        ++number;
        m_firstHit = false;
    }
    return number;
}

void ODLine::setZValue(long z)
{
    setItemsZValue(z, {m_lineItem});
}

bool isPointNearLine(const QPointF& point, const QPointF& start, const QPointF& end, int tolerance)
{
    const QPointF d = end - start;
    const double length = std::sqrt(dot(d, d));
    // No length, no direction: the normal would be 0 / 0 and every comparison false.
    if (!(length > 0.0))
        return false;
    const QPointF normal = QPointF(-d.y(), d.x()) / length;
    const QPointF fromStart = point - start;
    const double distance = std::abs(dot(fromStart, normal));
    const double along = dot(fromStart, d / length);
    return tolerance >= distance && along >= 0.0 && length >= along;
}
