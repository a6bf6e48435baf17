#include "odellipse.h"

#include "Rect2HandleItem.h"
#include "geometryhelpers.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsScene>
#include <QPainterPath>

#include <cmath>

namespace {

constexpr int kSlots = 4; // centre x, centre y, radius x, radius y
enum Slot { CenterX = 0, CenterY = 1, RadiusX = 2, RadiusY = 3 };
constexpr int kRotationKey = 8;

} // namespace

ODEllipse::ODEllipse(QGraphicsScene* scene)
    : ODShape(scene, DM_ELLIPSE)
    , m_center(0, 0)
    , m_radiusX(0.0f)
    , m_radiusY(0.0f)
    , m_rotateAngle(0.0f)
    , m_ellipseItem(nullptr)
{
    m_ellipseItem = m_scene->addEllipse(QRectF());
    auto* handleItem = new Rect2HandleItem(nullptr);
    handleItem->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    m_scene->addItem(handleItem);
    m_handleItem = handleItem;
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
    m_ellipseItem->setBrush(QBrush(m_brushColor, Qt::SolidPattern));
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
    const float s = handleScale();
    const QRectF r = boundingRectangle();
    const QPointF centre = r.center();
    const QPointF points[9] = {r.topLeft(),
                               QPointF(centre.x(), r.top()),
                               r.topRight(),
                               QPointF(r.right(), centre.y()),
                               r.bottomRight(),
                               QPointF(centre.x(), r.bottom()),
                               r.bottomLeft(),
                               QPointF(r.left(), centre.y()),
                               QPointF(m_center.x(), r.top() - 10 * s)};
    m_handles.clear();
    for (int key = 0; key < 9; ++key)
        m_handles.insert(key, MakeElpHandle(RotatePoint(points[key])));
}

void ODEllipse::ShowHandle()
{
    m_isVisiblehandleMark = true;
    const float s = handleScale();
    QPen pen;
    pen.setWidth(0);
    pen.setColor(m_penColor);
    m_handleItem->setPen(pen);
    UpdateHandles();

    QPainterPath path;
    for (int key = 0; key < kRotationKey; ++key)
        path.addRect(m_handles.value(key));
    path.addEllipse(m_handles.value(kRotationKey));
    const QRectF r = boundingRectangle();
    path.moveTo(RotatePoint(QPointF(m_center.x(), r.top() - 3 * s)));
    path.lineTo(RotatePoint(QPointF(m_center.x(), r.top() - 7 * s)));

    m_handleItem->setPath(path);
    m_handleItem->setZValue(m_ellipseItem->zValue() + 1.0);
    rect2HandleItem()->setRotateAngle(-m_rotateAngle);
    rect2HandleItem()->setHandleMap(m_handles);
}

int ODEllipse::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    return m_ellipseItem->contains(::RotatePoint(point, m_center, m_rotateAngle)) ? 1 : 0;
}

void ODEllipse::MoveHandleTo(int number, const QPointF& pos)
{
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
    case 9:
        m_rotateAngle = ConvertAngle(360.0f - (90.0f - CalculateAngle(pos, m_center)));
        break;
    default:
        break;
    }
    UpdateOrgData(number);
}

void ODEllipse::MoveShape(const QPointF& delta)
{
    m_center += delta;
    UpdateOrgData(0);
}

void ODEllipse::UpdateOrgData(int number)
{
    if (m_orgData.size() != kSlots) {
        m_orgData = {m_center.x(), m_center.y(), m_radiusX, m_radiusY};
        return;
    }
    switch (number) {
    case 0:
        m_orgData[CenterX] = m_center.x();
        m_orgData[CenterY] = m_center.y();
        break;
    case 1:
    case 3:
    case 5:
    case 7:
        m_orgData[RadiusX] = m_radiusX;
        m_orgData[RadiusY] = m_radiusY;
        break;
    case 2:
    case 6:
        m_orgData[RadiusY] = m_radiusY;
        break;
    case 4:
    case 8:
        m_orgData[RadiusX] = m_radiusX;
        break;
    default:
        break;
    }
}

void ODEllipse::UpdateCurData()
{
    if (m_orgData.size() != kSlots)
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
    m_orgData = {x, y, rx, ry};
    m_rotateAngle = angle;
}

void ODEllipse::SetRoateAngle(float angle)
{
    m_rotateAngle = angle;
}

bool ODEllipse::GetParam(double* x, double* y, double* rx, double* ry, double* angle) const
{
    if (m_orgData.size() != kSlots)
        return false;
    if (x)
        *x = m_orgData[CenterX];
    if (y)
        *y = m_orgData[CenterY];
    if (rx)
        *rx = m_orgData[RadiusX];
    if (ry)
        *ry = m_orgData[RadiusY];
    if (angle)
        *angle = m_rotateAngle;
    return true;
}

void ODEllipse::setZValue(long z)
{
    m_handleItem->setZValue(z);
    m_ellipseItem->setZValue(z);
}
