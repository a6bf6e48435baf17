#include "odrect2.h"

#include "Rect2HandleItem.h"
#include "boxhandles.h"
#include "geometryhelpers.h"
#include "searchline.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>

namespace {

enum Slot { CenterX = 0, CenterY = 1, Width = 2, Height = 3, SlotCount = 4 };

constexpr unsigned kAllSlots = 1u << CenterX | 1u << CenterY | 1u << Width | 1u << Height;
constexpr unsigned kVertical = 1u << CenterY | 1u << Height;
constexpr unsigned kHorizontal = 1u << CenterX | 1u << Width;
// What each handle number writes back; index = number. A corner moves the
// centre both ways, an edge one way; the rotation handle (9) owns no slot, the
// angle having no second copy.
constexpr std::array<unsigned, 10> kOwnedSlots = {
    0, kAllSlots, kVertical, kAllSlots, kHorizontal, kAllSlots, kVertical, kAllSlots, kHorizontal, 0,
};
// The stem of the handle item's extent stands half a unit left of the centre line.
constexpr double kStemShift = 0.5;
// handlePath's stem, without the handle scale.
constexpr double kPlainStemLength = 8.0;

} // namespace

ODRect2::ODRect2(QGraphicsScene* scene)
    : ODShape(scene, DM_RECT2)
    , m_center(0, 0)
    , m_width(0)
    , m_height(0)
    , m_searchDirection(SL_LEFT_TO_RIGHT)
    , m_searchCount(0)
    , m_searchLineFlag(true)
    , m_followCenter(true)
    , m_rotateAngle(0)
    , m_rotateCenter(0, 0)
    , m_rectItem(nullptr)
    , m_searchLineItem(nullptr)
{
    createItems();
}

ODRect2::ODRect2(QGraphicsScene* scene, QPointF point)
    : ODRect2(scene)
{
    m_center = point;
    UpdateHandles();
}

ODRect2::~ODRect2()
{
    deleteItems({m_rectItem, m_searchLineItem});
}

void ODRect2::createItems()
{
    m_rectItem = own(m_scene->addRect(QRectF()));
    m_searchLineItem = own(m_scene->addPath(QPainterPath()));
    adoptHandleItem(new Rect2HandleItem(nullptr));
}

Rect2HandleItem* ODRect2::rect2HandleItem() const
{
    return static_cast<Rect2HandleItem*>(m_handleItem);
}

QRectF ODRect2::shownRect() const
{
    QRectF r(m_center.x() - m_width / 2, m_center.y() - m_height / 2, m_width, m_height);
    AdjustRect(r);
    return r;
}

QPointF ODRect2::RotatePoint(QPointF p)
{
    return ::RotatePoint(p, m_rotateCenter, float(360 - m_rotateAngle));
}

void ODRect2::UpdateHandles()
{
    QVector<QPointF> points = BoxHandles::turnedBoxPoints(shownRect(), m_center, m_center.x(), handleScale());
    for (QPointF& point : points)
        point = RotatePoint(point);
    setHandles(points);
}

void ODRect2::ShowShape()
{
    UpdateCurData();
    const QRectF r = shownRect();
    const QPen& pen = currentPen();
    m_rectItem->setPen(pen);
    m_rectItem->setBrush(solidBrush());
    m_rectItem->setRect(r);
    m_searchLineItem->setPath(GenSearchline());
    m_searchLineItem->setPen(pen);
    if (m_followCenter)
        m_rotateCenter = m_center;
    for (QGraphicsItem* item : {static_cast<QGraphicsItem*>(m_rectItem), static_cast<QGraphicsItem*>(m_searchLineItem)}) {
        item->setTransformOriginPoint(m_rotateCenter);
        item->setRotation(-m_rotateAngle);
    }
}

void ODRect2::HideShape()
{
    m_rectItem->setRect(QRectF());
    m_searchLineItem->setPath(QPainterPath());
}

void ODRect2::ShowHandle()
{
    beginShowHandle();
    const float s = handleScale();
    const QRectF r = shownRect();
    const double stemX = m_center.x() - kStemShift;
    m_handleItem->setPath(BoxHandles::turnedExtent(m_handles, BoxHandles::RotationShape::RoundRect,
                                                   RotatePoint(BoxHandles::stemPoint(r, stemX, BoxHandles::kStemNear, s)),
                                                   RotatePoint(BoxHandles::stemPoint(r, stemX, BoxHandles::kStemFar, s))));
    raiseHandlesAbove(m_rectItem->zValue());
    rect2HandleItem()->setRotateAngle(float(-m_rotateAngle));
}

QPainterPath ODRect2::handlePath()
{
    const QRectF r = shownRect();
    return BoxHandles::turnedExtent(m_handles, BoxHandles::RotationShape::Ellipse,
                                    RotatePoint(QPointF(m_center.x(), r.top())),
                                    RotatePoint(QPointF(m_center.x(), r.top() - kPlainStemLength)));
}

void ODRect2::HideHandle()
{
    // Only the map goes: the path stays, and so does the visible mark.
    rect2HandleItem()->setHandleMap(QMap<int, QRectF>());
}

int ODRect2::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    // mapFromScene takes the turn out, so this is containment in the unturned
    // rectangle with the half pen widths of both items as margin.
    QGraphicsRectItem temp(m_rectItem->boundingRect());
    temp.setTransformOriginPoint(m_rotateCenter);
    temp.setRotation(-m_rotateAngle);
    const QPointF local = m_rectItem->mapFromScene(point);
    return temp.contains(local) ? 1 : 0;
}

void ODRect2::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    m_followCenter = false;
    const QPointF local = ::RotatePoint(pos, m_rotateCenter, float(m_rotateAngle));
    QRectF r(m_center.x() - m_width / 2, m_center.y() - m_height / 2, m_width, m_height);
    const auto storeBoth = [&]() {
        m_center = r.center();
        m_width = r.width();
        m_height = r.height();
    };
    switch (number) {
    case 1: r.setTopLeft(local); storeBoth(); break;
    case 2:
        r.setTop(local.y());
        m_center.setY(r.center().y());
        m_height = r.height();
        break;
    case 3: r.setTopRight(local); storeBoth(); break;
    case 4:
        r.setRight(local.x());
        m_center.setX(r.center().x());
        m_width = r.width();
        break;
    case 5: r.setBottomRight(local); storeBoth(); break;
    case 6:
        r.setBottom(local.y());
        m_center.setY(r.center().y());
        m_height = r.height();
        break;
    case 7: r.setBottomLeft(local); storeBoth(); break;
    case 8:
        r.setLeft(local.x());
        m_center.setX(r.center().x());
        m_width = r.width();
        break;
    case BoxHandles::Rotation + 1: {
        m_followCenter = true;
        const float towards = CalculateAngle(pos, m_rotateCenter);
        m_rotateAngle = ConvertAngle(360.0f - (90.0f - towards));
        m_rotateCenter = m_center;
        break;
    }
    default: break;
    }
    UpdateOrgData(number);
}

void ODRect2::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_center += delta;
    if (!hasOrgData(SlotCount))
        return;
    m_orgData[CenterX] = m_center.x();
    m_orgData[CenterY] = m_center.y();
    m_rotateCenter = m_center;
}

void ODRect2::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(number, {m_center.x(), m_center.y(), m_width, m_height}, kOwnedSlots);
}

void ODRect2::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_center = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
    m_width = m_orgData[Width];
    m_height = m_orgData[Height];
}

void ODRect2::AdjustParameter()
{
    shownStateChanged();
    m_followCenter = true;
    m_height = qAbs(m_height);
    m_width = qAbs(m_width);
    m_center = ::RotatePoint(m_center, m_rotateCenter, float(-m_rotateAngle));
    m_rotateCenter = m_center;
    UpdateOrgData(1);
}

void ODRect2::setHandleCursor(QPointF point)
{
    static const QVector<Qt::CursorShape> cursors = {
        Qt::ArrowCursor,     Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor,
        Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor,   Qt::CrossCursor};
    setViewportCursor(point, cursors);
}

void ODRect2::SetRect(double x, double y, double w, double h)
{
    shownStateChanged();
    m_orgData = {x, y, w, h};
}

void ODRect2::SetRoateAngle(double angle)
{
    shownStateChanged();
    m_rotateAngle = angle;
}

void ODRect2::UpdateRotateCenter()
{
    shownStateChanged();
    if (hasOrgData(SlotCount))
        m_rotateCenter = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
}

void ODRect2::SetSearchLine(SEARCHLINEDIRECTION direction, int count)
{
    shownStateChanged();
    m_searchDirection = direction;
    m_searchCount = count;
}

void ODRect2::SetSearchLineFlag(bool flag)
{
    shownStateChanged();
    m_searchLineFlag = flag;
}

bool ODRect2::HaveSearchLine() const
{
    return m_searchLineFlag;
}

bool ODRect2::GetParam(double* x, double* y, double* w, double* h, double* angle, int* direction, int* count) const
{
    if (!readOrgData({x, y, w, h}))
        return false;
    if (angle)
        *angle = m_rotateAngle;
    if (direction)
        *direction = m_searchDirection;
    if (count)
        *count = m_searchCount;
    return true;
}

bool ODRect2::GetParam(double* x, double* y, double* w, double* h, double* angle, SEARCHLINEDIRECTION* direction,
                       int* count) const
{
    int d = 0;
    if (!GetParam(x, y, w, h, angle, &d, count))
        return false;
    if (direction)
        *direction = SEARCHLINEDIRECTION(d);
    return true;
}

bool ODRect2::isTooSmallToKeep() const
{
    // Judged on the full lengths as stored: exactly 2.0 stays.
    if (GetDrawMode() != DM_RECT2)
        return false;
    double x = -1.0, y = -1.0, l1 = -1.0, l2 = -1.0, angle = -1.0;
    int direction = -1, count = -1;
    if (!GetParam(&x, &y, &l1, &l2, &angle, &direction, &count))
        return false;
    return qAbs(l1) < kMinimumDrawnSide || qAbs(l2) < kMinimumDrawnSide;
}

void ODRect2::setZValue(long z)
{
    setItemsZValue(z, {m_searchLineItem, m_rectItem});
}

QPainterPath ODRect2::GenSearchline()
{
    return SearchLine::GenSearchlines(shownRect(), m_searchDirection, m_searchCount);
}

QPainterPath ODRect2::GenSearchlineItem(QLine line)
{
    return SearchLine::GenSearchlineItem(line);
}
