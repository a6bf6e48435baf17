#include "odcircle.h"

#include "CircleHandleItem.h"
#include "geometryhelpers.h"
#include "roundshape.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsScene>

namespace {

using RoundShape::CenterX;
using RoundShape::CenterY;
using RoundShape::Radius;
constexpr int SlotCount = 3;

// Row 0 (the body move) owns the centre, row 1 (every handle) the radius.
constexpr std::array<unsigned, 2> kOwnedSlots = {1u << CenterX | 1u << CenterY, 1u << Radius};

enum Key { Top = 0, Right = 1, Bottom = 2, Left = 3 };
constexpr int kBodyMove = 0;

} // namespace

ODCircle::ODCircle(QGraphicsScene* scene)
    : ODShape(scene, DM_CIRCLE)
    , m_center(0, 0)
    , m_radius(0.0f)
    , m_ellipseItem(nullptr)
{
    m_ellipseItem = own(m_scene->addEllipse(QRectF()));
    adoptHandleItem(new CircleHandleItem(nullptr));
}

ODCircle::ODCircle(QGraphicsScene* scene, QPointF point)
    : ODCircle(scene)
{
    m_center = point;
    UpdateHandles();
}

ODCircle::~ODCircle()
{
    deleteItems({m_ellipseItem});
    m_ellipseItem = nullptr;
}

CircleHandleItem* ODCircle::circleHandleItem() const
{
    return static_cast<CircleHandleItem*>(m_handleItem);
}

void ODCircle::ShowShape()
{
    UpdateCurData();
    m_ellipseItem->setPen(currentPen());
    m_ellipseItem->setBrush(solidBrush());
    m_ellipseItem->setRect(RoundShape::boundingSquare(m_center, m_radius));
}

void ODCircle::HideShape()
{
    m_ellipseItem->setRect(QRectF());
}

void ODCircle::UpdateHandles()
{
    const QRectF r = RoundShape::boundingSquare(m_center, m_radius);
    QVector<QPointF> points(4);
    points[Top] = QPointF(m_center.x(), r.top());
    points[Right] = QPointF(r.right(), m_center.y());
    points[Bottom] = QPointF(m_center.x(), r.bottom());
    points[Left] = QPointF(r.left(), m_center.y());
    setHandles(points);
}

void ODCircle::ShowHandle()
{
    ODShape::ShowHandle();
    raiseHandlesAbove(m_ellipseItem->zValue());
}

int ODCircle::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    return m_ellipseItem->contains(point) ? 1 : 0;
}

void ODCircle::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    if (number > 0)
        m_radius = Distance(pos, m_center);
    UpdateOrgData(number);
}

void ODCircle::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_center += delta;
    UpdateOrgData(kBodyMove);
}

void ODCircle::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(RoundShape::ownerOf(number), {m_center.x(), m_center.y(), m_radius}, kOwnedSlots);
}

void ODCircle::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_center = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
    m_radius = float(m_orgData[Radius]);
}

void ODCircle::setHandleCursor(QPointF point)
{
    setViewportCursor(point, RoundShape::handleCursors());
}

void ODCircle::SetCircle(double x, double y, double r)
{
    shownStateChanged();
    m_orgData = {x, y, r};
}

bool ODCircle::GetParam(double* x, double* y, double* r) const
{
    return readOrgData({x, y, r}, SlotRule::AtLeast);
}

void ODCircle::setZValue(long z)
{
    setItemsZValue(z, {m_ellipseItem});
}
