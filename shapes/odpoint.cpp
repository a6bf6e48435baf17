#include "odpoint.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPainterPath>

namespace {

enum Slot { X = 0, Y = 1, SlotCount = 2 };

// The arm length of a new point's cross, in scene units.
constexpr int kDefaultCrossSize = 5;
// The number AdjustParameter stores with; the point ignores it.
constexpr int kAnyNumber = 0;
// The number a move stores with; the point ignores it.
constexpr int kPointHandle = 1;

} // namespace

ODPoint::ODPoint(QGraphicsScene* scene)
    : ODShape(scene, DM_POINT)
    , m_crossSize(kDefaultCrossSize)
    , m_point(0, 0)
    , m_crossItem(nullptr)
{
    m_crossItem = own(m_scene->addPath(QPainterPath()));
    adoptHandleItem(new QGraphicsPathItem);
    UpdateHandles();
}

ODPoint::ODPoint(QGraphicsScene* scene, QPointF point)
    : ODPoint(scene)
{
    m_point = point;
    UpdateHandles();
}

ODPoint::~ODPoint()
{
    deleteItems({m_crossItem});
    m_crossItem = nullptr;
}

void ODPoint::UpdateHandles()
{
    setHandles({m_point});
}

void ODPoint::ShowShape()
{
    UpdateCurData();
    const double x = m_point.x();
    const double y = m_point.y();
    const int size = m_crossSize;
    QPainterPath path;
    path.moveTo(x - size, y);
    path.lineTo(x + size, y);
    path.moveTo(x, y - size);
    path.lineTo(x, y + size);
    m_crossItem->setPen(currentPen());
    m_crossItem->setPath(path);
}

void ODPoint::HideShape()
{
    m_crossItem->setPath(QPainterPath());
}

// The test makes the handle anew around the point at the shape's scale.
QRectF ODPoint::hitReach() const
{
    return ODShape::hitReach() | MakeElpHandle(m_point);
}

int ODPoint::HitTest(QPointF point, bool)
{
    // The body and the handle are one test: the handle rectangle, made anew.
    UpdateHandles();
    return m_handles.value(0).contains(point) ? 1 : 0;
}

void ODPoint::MoveHandleTo(int, const QPointF& pos)
{
    shownStateChanged();
    m_point = pos;
    UpdateOrgData(kPointHandle);
}

void ODPoint::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_point += delta;
    UpdateOrgData(kPointHandle);
}

void ODPoint::UpdateOrgData(int)
{
    shownStateChanged();
    m_orgData = {m_point.x(), m_point.y()};
}

void ODPoint::UpdateCurData()
{
    // A point shown before it has a reference keeps where it is.
    if (m_orgData.size() < SlotCount)
        return;
    m_point = QPointF(m_orgData[X], m_orgData[Y]);
}

void ODPoint::AdjustParameter()
{
    shownStateChanged();
    UpdateOrgData(kAnyNumber);
}

void ODPoint::SetPoint(double x, double y)
{
    shownStateChanged();
    m_orgData = {x, y};
}

void ODPoint::SetCrossSize(int size)
{
    shownStateChanged();
    m_crossSize = size;
}

bool ODPoint::GetParam(double* x, double* y) const
{
    return readOrgData({x, y});
}

void ODPoint::setZValue(long z)
{
    setItemsZValue(z, {m_crossItem});
}
