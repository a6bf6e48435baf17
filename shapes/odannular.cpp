#include "odannular.h"

#include "geometryhelpers.h"
#include "searchline.h"

#include <QCursor>
#include <QGraphicsPathItem>
#include <QGraphicsScene>

#include <cmath>

namespace {

enum Slot { CenterX = 0, CenterY = 1, InnerRadius = 2, OuterRadius = 3, SlotCount = 4 };

// What each number writes back; index = number. 1 and 2 together are the body
// move; as handles they change only the angles, and rewrite their slots
// unchanged.
constexpr std::array<unsigned, 5> kOwnedSlots = {
    0,                                   // none
    1u << CenterX,                       // 1
    1u << CenterY | 1u << InnerRadius,   // 2
    1u << InnerRadius,                   // 3 inner radius
    1u << OuterRadius,                   // 4 outer radius
};

enum Handle { Start = 1, End = 2, Inner = 3, Outer = 4 };
// The numbers a body move writes back with, one after the other.
constexpr int kMovedCentreX = 1;
constexpr int kMovedCentreYAndInner = 2;
enum Key { StartKey = 0, EndKey = 1, InnerKey = 2, OuterKey = 3, KeyCount = 4 };

// The pi of the shapes: part of their results.
constexpr float kPi = 3.141592f;
constexpr double kDefaultStartAngle = 10.0;
constexpr double kDefaultSweepAngle = -350.0;
// A sweep that comes out as NaN falls back to the default.
constexpr double kNaNSweepAngle = -350.0;
constexpr double kFullTurn = 360.0;
// 1e-6 as a float, widened: the angle test of the end handles and the inner
// radius test.
constexpr double kSingleEpsilon = 9.999999974752427e-07;
// The outer radius test, in full double.
constexpr double kDoubleEpsilon = 1e-06;
// How far the dragged radius stays from the other one when pushed past it.
constexpr double kRadiusGap = 5.0;
// A ring whose inner radius is this or less gets its hole from the outer one.
constexpr double kThinInnerRadius = 5.0;
constexpr double kHoleShare = 0.38200002908706665;
// The arrow head's wings, in radians off the line, and its length as a share
// of the outer radius.
constexpr double kWingAngle = 0.25;
constexpr double kHeadDivisor = 15.0;

} // namespace

ODAnnular::ODAnnular(QGraphicsScene* scene)
    : ODShape(scene, DM_ANNULAR)
    , m_center(0, 0)
    , m_outerRadius(0.0)
    , m_innerRadius(0.0)
    , m_startAngle(kDefaultStartAngle)
    , m_sweepAngle(kDefaultSweepAngle)
    , m_searchDirection(SL_INNER_TO_OUTER)
    , m_searchCount(0)
    , m_searchLineFlag(false)
    , m_annularItem(nullptr)
    , m_searchLineItem(nullptr)
{
    m_annularItem = own(m_scene->addPath(QPainterPath()));
    m_searchLineItem = own(m_scene->addPath(QPainterPath()));
    auto* handleItem = new QGraphicsPathItem;
    handleItem->setCursor(Qt::CrossCursor);
    adoptHandleItem(handleItem);
}

ODAnnular::ODAnnular(QGraphicsScene* scene, QPointF point)
    : ODAnnular(scene)
{
    m_center = point;
    UpdateHandles();
}

ODAnnular::~ODAnnular()
{
    deleteItems({m_annularItem, m_searchLineItem});
    m_annularItem = nullptr;
    m_searchLineItem = nullptr;
}

QPointF ODAnnular::GetPoint(float radius, double angle)
{
    const float a = ConvertAngle(float(angle));
    const float rad = a * kPi / 180.0f;
    const float dx = radius * std::cos(rad);
    const float dy = radius * std::sin(rad);
    return QPointF(m_center.x() + dx, m_center.y() - dy);
}

void ODAnnular::ShowShape()
{
    UpdateCurData();
    const double s = -m_sweepAngle;
    const QRectF inner(m_center.x() - m_innerRadius, m_center.y() - m_innerRadius, 2 * m_innerRadius,
                       2 * m_innerRadius);
    const QRectF outer(m_center.x() - m_outerRadius, m_center.y() - m_outerRadius, 2 * m_outerRadius,
                       2 * m_outerRadius);
    const QPointF p1 = GetPoint(float(m_innerRadius), m_startAngle);
    const QPointF p2 = GetPoint(float(m_outerRadius), m_startAngle + s);
    // Along the inner arc from the start, out to the outer arc, back along it
    // and in again.
    QPainterPath path;
    path.moveTo(m_center);
    const float start = ConvertAngle(float(m_startAngle));
    path.arcMoveTo(inner, start);
    path.arcTo(inner, start, s);
    path.lineTo(p2);
    path.arcTo(outer, ConvertAngle(float(m_startAngle + s)), -s);
    path.lineTo(p1);

    const QPen& pen = currentPen();
    m_annularItem->setPen(pen);
    m_searchLineItem->setPen(pen);
    m_annularItem->setPath(path);
    m_annularItem->setBrush(solidBrush());
    m_searchLineItem->setPath(GenSearchline());
}

void ODAnnular::HideShape()
{
    m_annularItem->setPath(QPainterPath());
    m_searchLineItem->setPath(QPainterPath());
}

void ODAnnular::UpdateHandles()
{
    const float mid = float((m_innerRadius + m_outerRadius) / 2);
    QVector<QPointF> points(KeyCount);
    points[StartKey] = GetPoint(mid, m_startAngle);
    points[EndKey] = GetPoint(mid, m_startAngle - m_sweepAngle);
    points[InnerKey] = GetPoint(float(m_innerRadius), m_startAngle - m_sweepAngle / 2);
    points[OuterKey] = GetPoint(float(m_outerRadius), m_startAngle - m_sweepAngle / 2);
    setHandles(points);
}

int ODAnnular::HitTest(QPointF point, bool handles)
{
    if (!handles)
        return m_annularItem->contains(point) ? 1 : 0;
    // From the highest key down: on a new sector, whose handles all lie on the
    // centre, the outer radius is the one grabbed.
    for (int key = m_handles.size() - 1; key >= 0; --key) {
        if (m_handles.value(key).contains(point))
            return key + 1;
    }
    return 0;
}

void ODAnnular::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    switch (number) {
    case Start: {
        // The end stays; the sweep stays zero or negative.
        const float end = ConvertAngle(float(m_startAngle - m_sweepAngle));
        m_startAngle = ConvertAngle(CalculateAngle(pos, m_center));
        m_sweepAngle = m_startAngle - end;
        if (m_sweepAngle > kSingleEpsilon)
            m_sweepAngle -= kFullTurn;
        break;
    }
    case End: {
        const float a = ConvertAngle(CalculateAngle(pos, m_center));
        const double d = a - m_startAngle;
        m_sweepAngle = d > kSingleEpsilon ? -d : -(kFullTurn + d);
        break;
    }
    case Inner: {
        const float r = Distance(pos, m_center);
        m_innerRadius = r - m_outerRadius > kSingleEpsilon ? m_outerRadius - kRadiusGap : double(r);
        break;
    }
    case Outer: {
        const float r = Distance(pos, m_center);
        m_outerRadius = kDoubleEpsilon > r - m_innerRadius ? m_innerRadius + kRadiusGap : double(r);
        if (m_innerRadius <= kThinInnerRadius)
            m_innerRadius = kHoleShare * m_outerRadius;
        break;
    }
    default:
        break;
    }
    if (std::isnan(m_sweepAngle))
        m_sweepAngle = kNaNSweepAngle;
    UpdateOrgData(number);
}

void ODAnnular::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_center += delta;
    UpdateOrgData(kMovedCentreX);
    UpdateOrgData(kMovedCentreYAndInner);
}

void ODAnnular::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(number, {m_center.x(), m_center.y(), m_innerRadius, m_outerRadius}, kOwnedSlots);
}

void ODAnnular::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_center = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
    m_innerRadius = m_orgData[InnerRadius];
    m_outerRadius = m_orgData[OuterRadius];
}

void ODAnnular::setHandleCursor(QPointF point)
{
    static const QVector<Qt::CursorShape> cursors = {Qt::ArrowCursor, Qt::CrossCursor, Qt::CrossCursor,
                                                     Qt::CrossCursor, Qt::CrossCursor};
    setViewportCursor(point, cursors);
}

void ODAnnular::SetTours(double x, double y, double inner, double outer, double start, double sweep)
{
    shownStateChanged();
    m_orgData = {x, y, inner, outer};
    m_startAngle = start;
    m_sweepAngle = sweep;
}

void ODAnnular::SetStartAngle(float angle)
{
    shownStateChanged();
    m_startAngle = angle;
}

void ODAnnular::SetSweepAngle(float angle)
{
    shownStateChanged();
    m_sweepAngle = angle;
}

void ODAnnular::SetSearchLine(SEARCHLINEDIRECTION direction, int count)
{
    shownStateChanged();
    m_searchDirection = direction;
    m_searchCount = count;
}

void ODAnnular::SetSearchLineFlag(bool flag)
{
    shownStateChanged();
    m_searchLineFlag = flag;
}

bool ODAnnular::HaveSearchLine() const
{
    return m_searchLineFlag;
}

bool ODAnnular::GetParam(double* x, double* y, double* inner, double* outer, double* start, double* sweep,
                         int* direction, int* count) const
{
    if (!readOrgData({x, y, inner, outer}))
        return false;
    if (start)
        *start = m_startAngle;
    if (sweep)
        *sweep = -m_sweepAngle;
    if (direction)
        *direction = m_searchDirection;
    if (count)
        *count = m_searchCount;
    return true;
}

void ODAnnular::setZValue(long z)
{
    setItemsZValue(z, {m_searchLineItem, m_annularItem});
}

QPainterPath ODAnnular::GenSearchline()
{
    QPainterPath result;
    if (m_searchCount < 2)
        return result;
    const int count = qMin(m_searchCount, SearchLine::kMaximumLines);
    const float step = float(std::abs(m_sweepAngle) / (count - 1));
    const float head = float(m_outerRadius / kHeadDivisor);
    const double pi = double(kPi);
    const double cx = m_center.x();
    const double cy = m_center.y();
    for (int i = 0; i < count; ++i) {
        // Always counter-clockwise from the start, whatever the sign of the sweep.
        const float a = ConvertAngle(float(m_startAngle + float(float(i) * step)));
        const double rad = double(a * kPi / 180.0f);
        const float ix = float(cx + m_innerRadius * std::cos(rad));
        const float iy = float(cy - m_innerRadius * std::sin(rad));
        const float ox = float(cx + m_outerRadius * std::cos(rad));
        const float oy = float(cy - m_outerRadius * std::sin(rad));
        QPainterPath line;
        line.moveTo(ix, iy);
        line.lineTo(ox, oy);

        const double b1 = rad + pi + kWingAngle;
        const double b2 = rad + pi - kWingAngle;
        QPainterPath arrow;
        if (m_searchDirection == SL_INNER_TO_OUTER) {
            arrow.moveTo(ox + head * std::cos(b1), oy - head * std::sin(b1));
            arrow.lineTo(ox, oy);
            arrow.lineTo(ox + head * std::cos(b2), oy - head * std::sin(b2));
        } else if (m_searchDirection == SL_OUTER_TO_INNER) {
            arrow.moveTo(ix - head * std::cos(b1), iy + head * std::sin(b1));
            arrow.lineTo(ix, iy);
            arrow.lineTo(ix - head * std::cos(b2), iy + head * std::sin(b2));
        }
        result.addPath(line);
        result.addPath(arrow);
    }
    return result;
}
