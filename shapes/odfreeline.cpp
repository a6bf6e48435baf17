#include "odfreeline.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPen>

namespace {

enum EndHandle { FirstPointHandle = 1, LastPointHandle = 2 };

// The stroke width around the line that counts as body.
constexpr int kBodyStrokeWidth = 15;

} // namespace

ODFreeLine::ODFreeLine(QGraphicsScene* scene, DrawMode mode)
    : ODPointListShape(scene, mode)
    , m_pathItem(nullptr)
{
    m_pathItem = own(m_scene->addPath(QPainterPath()));
    adoptPointHandleItem();
}

ODFreeLine::~ODFreeLine()
{
    deleteItems({m_pathItem});
    m_pathItem = nullptr;
}

void ODFreeLine::SetAnyLinePoints(QVector<QPointF> points)
{
    shownStateChanged();
    appendPoints(points);
}

void ODFreeLine::SetAnyLinePoints(QVector<double>& values)
{
    shownStateChanged();
    assignPoints(values);
}

void ODFreeLine::setZValue(long z)
{
    setItemsZValue(z, {m_pathItem});
}

QPainterPath ODFreeLine::linePath(bool closed) const
{
    QPainterPath path;
    if (m_points.isEmpty())
        return path;
    path.moveTo(m_points.first());
    for (const QPointF& point : m_points)
        path.lineTo(point);
    if (closed)
        path.lineTo(m_points.first());
    return path;
}

void ODFreeLine::showLine(bool closed)
{
    UpdateCurData();
    const QPainterPath path = linePath(closed);
    m_pathItem->setPen(currentPen());
    m_pathItem->setPath(path);
    m_pathItem->setBrush(solidBrush());
}

void ODFreeLine::HideShape()
{
    m_pathItem->setPath(QPainterPath());
}

void ODFreeLine::UpdateHandles()
{
    // Without points there is no end to put a handle on.
    if (m_points.isEmpty()) {
        hitReachMayHaveChanged();
        m_handles.clear();
        return;
    }
    setHandles({m_points.first(), m_points.last()});
}

// The body test strokes the line through the points with a wide pen.
QRectF ODFreeLine::hitReach() const
{
    const QRectF line = linePath(false).controlPointRect();
    return ODShape::hitReach() | line.adjusted(-kBodyStrokeWidth, -kBodyStrokeWidth, kBodyStrokeWidth, kBodyStrokeWidth);
}

int ODFreeLine::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    QPainterPath path = linePath(false);
    path.closeSubpath();
    QGraphicsPathItem probe(path);
    QPen pen;
    pen.setWidth(kBodyStrokeWidth);
    probe.setPen(pen);
    return probe.contains(point) ? 1 : 0;
}

void ODFreeLine::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    if (number == FirstPointHandle) {
        m_points.prepend(pos);
        m_orgData.insert(0, pos.x());
        m_orgData.insert(1, pos.y());
    } else if (number == LastPointHandle) {
        m_points.append(pos);
        m_orgData.append(pos.x());
        m_orgData.append(pos.y());
    }
    UpdateOrgData(number);
}

void ODFreeLine::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    if (!referenceMatchesPoints())
        return;
    m_points.translate(delta);
    UpdateOrgData(0);
}

void ODFreeLine::UpdateOrgData(int)
{
    shownStateChanged();
    if (m_orgData.size() == 2 * m_points.size())
        writePointsToReference();
}

void ODFreeLine::setHandleCursor(QPointF point)
{
    setAnyHandleCursor(point, Qt::CrossCursor);
}
