#include "odpointlistshape.h"

#include "GraphicsHandleItem.h"
#include "VorPointArray.h"

ODPointListShape::ODPointListShape(QGraphicsScene* scene, DrawMode mode)
    : ODShape(scene, mode)
{
}

ODPointListShape::~ODPointListShape() = default;

GraphicsHandleItem* ODPointListShape::graphicsHandleItem() const
{
    return static_cast<GraphicsHandleItem*>(m_handleItem);
}

void ODPointListShape::adoptPointHandleItem()
{
    auto* item = new GraphicsHandleItem(nullptr);
    item->setCursor(Qt::CrossCursor);
    adoptHandleItem(item);
}

void ODPointListShape::ShowHandle()
{
    ODShape::ShowHandle();
    graphicsHandleItem()->setHandleMap(m_handles);
}

void ODPointListShape::UpdateCurData()
{
    if (!referenceMatchesPoints())
        return;
    for (int i = 0; i < m_points.size(); ++i)
        m_points[i] = QPointF(m_orgData[2 * i], m_orgData[2 * i + 1]);
}

void ODPointListShape::writePointsToReference()
{
    for (int i = 0; i < m_points.size(); ++i) {
        m_orgData[2 * i] = m_points[i].x();
        m_orgData[2 * i + 1] = m_points[i].y();
    }
}

void ODPointListShape::AddPoint(QPointF point)
{
    shownStateChanged();
    m_orgData.append(point.x());
    m_orgData.append(point.y());
    m_points.append(point);
}

bool ODPointListShape::GetParam(VorPointArray* points) const
{
    if (!points)
        return true;
    points->Clear();
    for (int i = 0; i + 1 < m_orgData.size(); i += 2)
        points->Append(VorPoint(m_orgData[i], m_orgData[i + 1]));
    return true;
}

void ODPointListShape::appendPoints(const QVector<QPointF>& points)
{
    shownStateChanged();
    m_points.clear();
    m_points.reserve(points.size());
    m_orgData.reserve(m_orgData.size() + 2 * points.size());
    for (const QPointF& point : points) {
        m_points.append(point);
        m_orgData.append(point.x());
        m_orgData.append(point.y());
    }
}

void ODPointListShape::assignPoints(const QVector<double>& values)
{
    shownStateChanged();
    const int pairs = values.size() / 2;
    m_points.clear();
    m_points.reserve(pairs);
    for (int i = 0; i < pairs; ++i)
        m_points.append(QPointF(values[2 * i], values[2 * i + 1]));
    m_orgData = values;
}

void ODPointListShape::setAnyHandleCursor(QPointF point, Qt::CursorShape shape)
{
    QVector<Qt::CursorShape> cursorByNumber(m_handles.size() + 1, shape);
    cursorByNumber[0] = Qt::ArrowCursor;
    setViewportCursor(point, cursorByNumber);
}
