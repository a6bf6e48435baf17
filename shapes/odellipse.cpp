#include "odellipse.h"

#include "Rect2HandleItem.h"
#include "boxhandles.h"
#include "geometryhelpers.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsScene>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

enum Slot { CenterX = 0, CenterY = 1, RadiusX = 2, RadiusY = 3, SlotCount = 4 };

constexpr unsigned kCentre = 1u << CenterX | 1u << CenterY;
constexpr unsigned kBothRadii = 1u << RadiusX | 1u << RadiusY;
// What each number writes back; index = number. 0 is the body move, which
// owns the centre; corners own both radii, edges one; the rotation handle (9)
// owns no slot, the angle having no second copy.
constexpr std::array<unsigned, 10> kOwnedSlots = {
    kCentre, kBothRadii, 1u << RadiusY, kBothRadii, 1u << RadiusX, kBothRadii, 1u << RadiusY, kBothRadii,
    1u << RadiusX, 0,
};
constexpr int kBodyMove = 0;

} // namespace

ODEllipse::ODEllipse(QGraphicsScene* scene)
    : ODShape(scene, DM_ELLIPSE)
    , m_center(0, 0)
    , m_radiusX(0.0f)
    , m_radiusY(0.0f)
    , m_rotateAngle(0.0f)
    , m_ellipseItem(nullptr)
{
    m_ellipseItem = own(m_scene->addEllipse(QRectF()));
    adoptHandleItem(new Rect2HandleItem(nullptr));
}

ODEllipse::ODEllipse(QGraphicsScene* scene, QPointF point)
    : ODEllipse(scene)
{
    m_center = point;
    UpdateHandles();
}

ODEllipse::~ODEllipse()
{
    deleteItems({m_ellipseItem});
    m_ellipseItem = nullptr;
}

Rect2HandleItem* ODEllipse::rect2HandleItem() const
{
    return static_cast<Rect2HandleItem*>(m_handleItem);
}

QRectF ODEllipse::boundingRectangle() const
{
    // Normalised, as shown: a negative radius set by a host must not turn the
    // handles inside out.
    QRectF r(m_center.x() - m_radiusX, m_center.y() - m_radiusY, 2 * m_radiusX, 2 * m_radiusY);
    AdjustRect(r);
    return r;
}

QPointF ODEllipse::RotatePoint(QPointF p)
{
    return ::RotatePoint(p, m_center, -m_rotateAngle);
}

void ODEllipse::ShowShape()
{
    UpdateCurData();
    const QRectF r = boundingRectangle();
    m_ellipseItem->setPen(currentPen());
    m_ellipseItem->setBrush(solidBrush());
    m_ellipseItem->setRect(r);
    m_ellipseItem->setTransformOriginPoint(m_center);
    m_ellipseItem->setRotation(-m_rotateAngle);
}

void ODEllipse::HideShape()
{
    m_ellipseItem->setRect(QRectF());
}

void ODEllipse::UpdateHandles()
{
    const QRectF r = boundingRectangle();
    QVector<QPointF> points = BoxHandles::turnedBoxPoints(r, r.center(), m_center.x(), handleScale());
    for (QPointF& point : points)
        point = RotatePoint(point);
    setHandles(points);
}

void ODEllipse::ShowHandle()
{
    beginShowHandle();
    const float s = handleScale();
    const QRectF r = boundingRectangle();
    const double stemX = m_center.x();
    m_handleItem->setPath(BoxHandles::turnedExtent(m_handles, BoxHandles::RotationShape::Ellipse,
                                                   RotatePoint(BoxHandles::stemPoint(r, stemX, BoxHandles::kStemNear, s)),
                                                   RotatePoint(BoxHandles::stemPoint(r, stemX, BoxHandles::kStemFar, s))));
    raiseHandlesAbove(m_ellipseItem->zValue());
    rect2HandleItem()->setRotateAngle(-m_rotateAngle);
}

// The body test turns the point about the centre into the item's unturned
// rectangle, so it reaches no farther from the centre than that rectangle's
// farthest corner.
QRectF ODEllipse::hitReach() const
{
    qreal farthest = 0.0;
    const QRectF rect = m_ellipseItem->boundingRect();
    for (const QPointF& corner : {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()})
        farthest = std::max(farthest, std::hypot(corner.x() - m_center.x(), corner.y() - m_center.y()));
    return ODShape::hitReach() | QRectF(m_center.x() - farthest, m_center.y() - farthest, 2 * farthest, 2 * farthest);
}

int ODEllipse::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    return m_ellipseItem->contains(::RotatePoint(point, m_center, m_rotateAngle)) ? 1 : 0;
}

void ODEllipse::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    const QPointF p = ::RotatePoint(pos, m_center, m_rotateAngle);
    switch (number) {
    case 1:
    case 3:
    case 5:
    case 7:
        m_radiusX = float(std::abs(p.x() - m_center.x()));
        m_radiusY = float(std::abs(p.y() - m_center.y()));
        break;
    case 2:
    case 6:
        m_radiusY = Distance(p, m_center);
        break;
    case 4:
    case 8:
        m_radiusX = Distance(p, m_center);
        break;
    case BoxHandles::Rotation + 1:
        m_rotateAngle = ConvertAngle(360.0f - (90.0f - CalculateAngle(pos, m_center)));
        break;
    default:
        break;
    }
    UpdateOrgData(number);
}

void ODEllipse::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_center += delta;
    UpdateOrgData(kBodyMove);
}

void ODEllipse::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(number, {m_center.x(), m_center.y(), m_radiusX, m_radiusY}, kOwnedSlots);
}

void ODEllipse::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_center = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
    m_radiusX = float(m_orgData[RadiusX]);
    m_radiusY = float(m_orgData[RadiusY]);
}

void ODEllipse::setHandleCursor(QPointF point)
{
    static const QVector<Qt::CursorShape> cursors = {
        Qt::ArrowCursor,     Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor,
        Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor,   Qt::CrossCursor};
    setViewportCursor(point, cursors);
}

void ODEllipse::SetEllipse(float x, float y, float rx, float ry, float angle)
{
    shownStateChanged();
    m_orgData = {x, y, rx, ry};
    m_rotateAngle = angle;
}

void ODEllipse::SetRoateAngle(float angle)
{
    shownStateChanged();
    m_rotateAngle = angle;
}

bool ODEllipse::GetParam(double* x, double* y, double* rx, double* ry, double* angle) const
{
    if (!readOrgData({x, y, rx, ry}))
        return false;
    if (angle)
        *angle = m_rotateAngle;
    return true;
}

void ODEllipse::setZValue(long z)
{
    setItemsZValue(z, {m_ellipseItem});
}
