#include "odarc.h"

#include "geometryhelpers.h"
#include "roundshape.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPainterPath>

namespace {

using RoundShape::CenterX;
using RoundShape::CenterY;
using RoundShape::Radius;
enum Slot { StartAngle = 3, SweepAngle = 4, SlotCount = 5 };

// Row 0 (the body move) owns the centre, row 1 (both handles) the radius; the
// angles belong to no handle.
constexpr std::array<unsigned, 2> kOwnedSlots = {1u << CenterX | 1u << CenterY, 1u << Radius};

constexpr float kDrawnRadius = 5.0f;
constexpr double kDrawnStartAngle = 0.0;
constexpr double kDrawnSweepAngle = 30.0;
constexpr int kBodyMove = 0;

// The point at angle on the ellipse inscribed in r, as a path reaches it by
// arcMoveTo. A square of no size has no such point; its centre stands for it.
QPointF arcPoint(const QRectF& r, double angle)
{
    if (r.isNull())
        return r.center();
    QPainterPath path;
    path.arcMoveTo(r, angle);
    return path.currentPosition();
}

} // namespace

ODARC::ODARC(QGraphicsScene* scene)
    : ODShape(scene, DM_ARC)
    , m_center(0, 0)
    , m_radius(kDrawnRadius)
    , m_startAngle(kDrawnStartAngle)
    , m_sweepAngle(kDrawnSweepAngle)
    , m_arcItem(nullptr)
{
    m_arcItem = own(m_scene->addPath(QPainterPath()));
    adoptHandleItem(new QGraphicsPathItem);
}

ODARC::ODARC(QGraphicsScene* scene, QPointF point)
    : ODARC(scene)
{
    m_center = point;
    UpdateHandles();
}

ODARC::~ODARC()
{
    deleteItems({m_arcItem});
    m_arcItem = nullptr;
}

void ODARC::ShowShape()
{
    UpdateCurData();
    m_arcItem->setPen(currentPen());
    m_arcItem->setBrush(solidBrush());
    const QRectF r = RoundShape::boundingSquare(m_center, m_radius);
    // Left open: a brush of some opacity fills the chord area.
    QPainterPath path;
    path.arcMoveTo(r, m_startAngle);
    path.arcTo(r, m_startAngle, m_sweepAngle);
    m_arcItem->setPath(path);
}

void ODARC::HideShape()
{
    m_arcItem->setPath(QPainterPath());
}

void ODARC::UpdateHandles()
{
    const QRectF r = RoundShape::boundingSquare(m_center, m_radius);
    setHandles({arcPoint(r, m_startAngle), arcPoint(r, m_startAngle + m_sweepAngle)});
}

int ODARC::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    return m_arcItem->contains(point) ? 1 : 0;
}

void ODARC::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    if (number > 0)
        m_radius = Distance(pos, m_center);
    UpdateOrgData(number);
}

void ODARC::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_center += delta;
    UpdateOrgData(kBodyMove);
}

void ODARC::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(RoundShape::ownerOf(number), {m_center.x(), m_center.y(), m_radius, m_startAngle, m_sweepAngle},
                 kOwnedSlots);
}

void ODARC::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_center = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
    m_radius = float(m_orgData[Radius]);
    m_startAngle = m_orgData[StartAngle];
    m_sweepAngle = m_orgData[SweepAngle];
}

void ODARC::setHandleCursor(QPointF point)
{
    setViewportCursor(point, RoundShape::handleCursors());
}

void ODARC::SetCircle(double x, double y, double r, double start, double sweep)
{
    shownStateChanged();
    m_orgData = {x, y, r, start, sweep};
}

bool ODARC::GetParam(double* x, double* y, double* r, double* start, double* sweep) const
{
    return readOrgData({x, y, r, start, sweep}, SlotRule::AtLeast);
}

void ODARC::setZValue(long z)
{
    setItemsZValue(z, {m_arcItem});
}
