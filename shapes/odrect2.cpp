#include "odrect2.h"

#include "Rect2HandleItem.h"
#include "geometryhelpers.h"
#include "searchline.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>

namespace {

constexpr int kSlots = 4; // centre x, centre y, width, height
enum Slot { CenterX = 0, CenterY = 1, Width = 2, Height = 3 };
constexpr int kRotationKey = 8;

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
    m_rectItem = m_scene->addRect(QRectF());
    m_searchLineItem = m_scene->addPath(QPainterPath());
    auto* handleItem = new Rect2HandleItem(nullptr);
    handleItem->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    m_scene->addItem(handleItem);
    m_handleItem = handleItem;
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
    const float s = handleScale();
    const QRectF r = shownRect();
    const double cx = m_center.x();
    const double cy = m_center.y();
    const QPointF points[9] = {r.topLeft(),
                               QPointF(cx, r.top()),
                               r.topRight(),
                               QPointF(r.right(), cy),
                               r.bottomRight(),
                               QPointF(cx, r.bottom()),
                               r.bottomLeft(),
                               QPointF(r.left(), cy),
                               QPointF(cx, r.top() - 10 * s)};
    m_handles.clear();
    for (int key = 0; key < 9; ++key)
        m_handles.insert(key, MakeElpHandle(RotatePoint(points[key])));
}

void ODRect2::ShowShape()
{
    UpdateCurData();
    const QRectF r = shownRect();
    const QPen& pen = currentPen();
    m_rectItem->setPen(pen);
    m_rectItem->setBrush(QBrush(m_brushColor, Qt::SolidPattern));
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
    m_isVisiblehandleMark = true;
    const float s = handleScale();
    QPen pen;
    pen.setWidth(0);
    pen.setColor(m_penColor);
    m_handleItem->setPen(pen);
    UpdateHandles();

    QPainterPath path;
    for (int i = 0; i <= m_handles.size() - 2; ++i)
        path.addRect(m_handles.value(i));
    path.addRoundRect(m_handles.value(kRotationKey), 100);
    const QRectF r = shownRect();
    path.moveTo(RotatePoint(QPointF(m_center.x() - 0.5, r.top() - 3 * s)));
    path.lineTo(RotatePoint(QPointF(m_center.x() - 0.5, r.top() - 7 * s)));

    m_handleItem->setPath(path);
    m_handleItem->setZValue(m_rectItem->zValue() + 1.0);
    rect2HandleItem()->setRotateAngle(float(-m_rotateAngle));
    rect2HandleItem()->setHandleMap(m_handles);
}

QPainterPath ODRect2::handlePath()
{
    QPainterPath path;
    for (int i = 0; i <= m_handles.size() - 2; ++i)
        path.addRect(m_handles.value(i));
    path.addEllipse(m_handles.value(kRotationKey));
    const QRectF r = shownRect();
    path.moveTo(RotatePoint(QPointF(m_center.x(), r.top())));
    path.lineTo(RotatePoint(QPointF(m_center.x(), r.top() - 8)));
    return path;
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
    case 9: {
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
    m_center += delta;
    if (m_orgData.size() != kSlots)
        return;
    m_orgData[CenterX] = m_center.x();
    m_orgData[CenterY] = m_center.y();
    m_rotateCenter = m_center;
}

void ODRect2::UpdateOrgData(int number)
{
    if (m_orgData.size() != kSlots) {
        m_orgData = {m_center.x(), m_center.y(), m_width, m_height};
        return;
    }
    switch (number) {
    case 1:
    case 3:
    case 5:
    case 7:
        m_orgData = {m_center.x(), m_center.y(), m_width, m_height};
        break;
    case 2:
    case 6:
        m_orgData[CenterY] = m_center.y();
        m_orgData[Height] = m_height;
        break;
    case 4:
    case 8:
        m_orgData[CenterX] = m_center.x();
        m_orgData[Width] = m_width;
        break;
    default: break;
    }
}

void ODRect2::UpdateCurData()
{
    if (m_orgData.size() != kSlots)
        return;
    m_center = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
    m_width = m_orgData[Width];
    m_height = m_orgData[Height];
}

void ODRect2::AdjustParameter()
{
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
    m_orgData = {x, y, w, h};
}

void ODRect2::SetRoateAngle(double angle)
{
    m_rotateAngle = angle;
}

void ODRect2::UpdateRotateCenter()
{
    if (m_orgData.size() == kSlots)
        m_rotateCenter = QPointF(m_orgData[CenterX], m_orgData[CenterY]);
}

void ODRect2::SetSearchLine(SEARCHLINEDIRECTION direction, int count)
{
    m_searchDirection = direction;
    m_searchCount = count;
}

void ODRect2::SetSearchLineFlag(bool flag)
{
    m_searchLineFlag = flag;
}

bool ODRect2::HaveSearchLine() const
{
    return m_searchLineFlag;
}

bool ODRect2::GetParam(double* x, double* y, double* w, double* h, double* angle, int* direction, int* count) const
{
    if (m_orgData.size() != kSlots)
        return false;
    if (x)
        *x = m_orgData[CenterX];
    if (y)
        *y = m_orgData[CenterY];
    if (w)
        *w = m_orgData[Width];
    if (h)
        *h = m_orgData[Height];
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

void ODRect2::setZValue(long z)
{
    m_handleItem->setZValue(z);
    m_searchLineItem->setZValue(z);
    m_rectItem->setZValue(z);
}

QPainterPath ODRect2::GenSearchline()
{
    return SearchLine::GenSearchlines(shownRect(), m_searchDirection, m_searchCount);
}

QPainterPath ODRect2::GenSearchlineItem(QLine line)
{
    return SearchLine::GenSearchlineItem(line);
}
