#include "odpolygon.h"

#include <QGraphicsPolygonItem>
#include <QGraphicsScene>

namespace {

// The number that stands for every vertex: a body move and the rubber band.
constexpr int kAllVertices = 0;

} // namespace

ODPolygon::ODPolygon(QGraphicsScene* scene)
    : ODPointListShape(scene, DM_POLYGON)
    , QObject(nullptr)
    , m_polygonItem(nullptr)
{
    m_polygonItem = own(m_scene->addPolygon(QPolygonF()));
    adoptPointHandleItem();
}

ODPolygon::~ODPolygon()
{
    deleteItems({m_polygonItem});
    m_polygonItem = nullptr;
}

void ODPolygon::SetPolygonPoints(QVector<QPointF> points)
{
    shownStateChanged();
    appendPoints(points);
}

void ODPolygon::SetPolygonPoints(QVector<double>& values)
{
    shownStateChanged();
    assignPoints(values);
}

void ODPolygon::setZValue(long z)
{
    setItemsZValue(z, {m_polygonItem});
}

void ODPolygon::ShowShape()
{
    UpdateCurData();
    m_polygonItem->setPen(currentPen());
    m_polygonItem->setBrush(solidBrush());
    m_polygonItem->setPolygon(m_points);
}

void ODPolygon::HideShape()
{
    m_polygonItem->setPolygon(QPolygonF());
}

void ODPolygon::UpdateHandles()
{
    setHandles(m_points);
}

int ODPolygon::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    // The bounding box, not the outline: a click in the notch of a concave
    // polygon selects it.
    return m_polygonItem->boundingRect().contains(point) ? 1 : 0;
}

void ODPolygon::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    if (number >= 1 && number <= m_points.size())
        m_points[number - 1] = pos;
    UpdateOrgData(number);
}

void ODPolygon::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_points.translate(delta);
    UpdateOrgData(kAllVertices);
}

void ODPolygon::UpdateOrgData(int number)
{
    shownStateChanged();
    if (number == kAllVertices) {
        if (m_orgData.size() >= 2 * m_points.size())
            writePointsToReference();
        return;
    }
    // A vertex handle writes its own two slots, when the list has the vertex
    // and the reference its slots.
    const int vertex = number - 1;
    if (number > 0 && m_points.size() >= number && m_orgData.size() >= 2 * number) {
        m_orgData[2 * vertex] = m_points[vertex].x();
        m_orgData[2 * vertex + 1] = m_points[vertex].y();
    }
}

void ODPolygon::setHandleCursor(QPointF point)
{
    setAnyHandleCursor(point, Qt::SizeAllCursor);
}

void ODPolygon::removePoint(int index)
{
    shownStateChanged();
    if (index < 0 || index >= m_points.size())
        return;
    m_points.remove(index);
    m_orgData.resize(2 * m_points.size());
    writePointsToReference();
    ShowHandle();
}

int ODPolygon::length() const
{
    return m_points.size();
}

int ODPolygon::pointSize() const
{
    return m_points.size();
}

void ODPolygon::ChangeLastPoint(QPointF point)
{
    shownStateChanged();
    if (m_points.isEmpty())
        return;
    m_points.last() = point;
    UpdateOrgData(kAllVertices);
}
