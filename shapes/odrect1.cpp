#include "odrect1.h"

#include "Rect1HandleItem.h"
#include "geometryhelpers.h"
#include "searchline.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>

namespace {

constexpr int kSlots = 4; // left, top, right, bottom
enum Slot { Left = 0, Top = 1, Right = 2, Bottom = 3 };

} // namespace

ODRect1::ODRect1(QGraphicsScene* scene)
    : ODShape(scene, DM_RECT1)
    , m_searchDirection(SL_LEFT_TO_RIGHT)
    , m_searchCount(0)
    , m_searchLineFlag(false)
    , m_rectItem(nullptr)
    , m_searchLineItem(nullptr)
{
    createItems();
}

ODRect1::ODRect1(QGraphicsScene* scene, QPointF point)
    : ODRect1(scene)
{
    m_rect = QRectF(point, QSizeF(0, 0));
    UpdateHandles();
}

ODRect1::~ODRect1()
{
    deleteItems({m_rectItem, m_searchLineItem});
}

void ODRect1::createItems()
{
    m_rectItem = m_scene->addRect(QRectF());
    m_searchLineItem = m_scene->addPath(QPainterPath());
    auto* handleItem = new Rect1HandleItem(nullptr);
    handleItem->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    m_scene->addItem(handleItem);
    m_handleItem = handleItem;
}

Rect1HandleItem* ODRect1::rect1HandleItem() const
{
    return static_cast<Rect1HandleItem*>(m_handleItem);
}

void ODRect1::UpdateHandles()
{
    const QRectF& r = m_rect;
    const QPointF centre = r.center();
    const QPointF points[8] = {r.topLeft(),     QPointF(centre.x(), r.top()),    r.topRight(),
                               QPointF(r.right(), centre.y()), r.bottomRight(), QPointF(centre.x(), r.bottom()),
                               r.bottomLeft(),  QPointF(r.left(), centre.y())};
    m_handles.clear();
    for (int key = 0; key < 8; ++key)
        m_handles.insert(key, MakeElpHandle(points[key]));
}

void ODRect1::ShowShape()
{
    UpdateCurData();
    QRectF shown = m_rect;
    AdjustRect(shown);
    m_rect = shown;
    m_rectItem->setRect(m_rect);
    const QPen& pen = currentPen();
    m_rectItem->setPen(pen);
    m_rectItem->setBrush(QBrush(m_brushColor, Qt::SolidPattern));
    m_searchLineItem->setPath(GenSearchline());
    m_searchLineItem->setPen(pen);
}

void ODRect1::HideShape()
{
    m_rectItem->setRect(QRectF());
    m_searchLineItem->setPath(QPainterPath());
}

void ODRect1::ShowHandle()
{
    const qreal z = m_rectItem->zValue();
    ODShape::ShowHandle();
    m_handleItem->setZValue(z + 1.0);
    rect1HandleItem()->setHandleMap(m_handles);
}

void ODRect1::HideHandle()
{
    // Only the map goes: the path stays, and so does the visible mark.
    rect1HandleItem()->setHandleMap(QMap<int, QRectF>());
}

int ODRect1::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    // The half pen width counts as body, and so does the inside whatever its brush.
    return m_rectItem->boundingRect().contains(point) ? 1 : 0;
}

void ODRect1::MoveHandleTo(int number, const QPointF& pos)
{
    switch (number) {
    case 1: m_rect.setTopLeft(pos); break;
    case 2: m_rect.setTop(pos.y()); break;
    case 3: m_rect.setTopRight(pos); break;
    case 4: m_rect.setRight(pos.x()); break;
    case 5: m_rect.setBottomRight(pos); break;
    case 6: m_rect.setBottom(pos.y()); break;
    case 7: m_rect.setBottomLeft(pos); break;
    case 8: m_rect.setLeft(pos.x()); break;
    default: break;
    }
    UpdateOrgData(number);
}

void ODRect1::MoveShape(const QPointF& delta)
{
    m_rect.setTopLeft(m_rect.topLeft() + delta);
    m_rect.setBottomRight(m_rect.bottomRight() + delta);
    for (int number : {1, 3, 5, 7})
        UpdateOrgData(number);
}

void ODRect1::UpdateOrgData(int number)
{
    if (m_orgData.size() != kSlots) {
        m_orgData = {m_rect.left(), m_rect.top(), m_rect.right(), m_rect.bottom()};
        return;
    }
    const bool left = number == 1 || number == 7 || number == 8;
    const bool top = number == 1 || number == 2 || number == 3;
    const bool right = number == 3 || number == 4 || number == 5;
    const bool bottom = number == 5 || number == 6 || number == 7;
    if (left)
        m_orgData[Left] = m_rect.left();
    if (top)
        m_orgData[Top] = m_rect.top();
    if (right)
        m_orgData[Right] = m_rect.right();
    if (bottom)
        m_orgData[Bottom] = m_rect.bottom();
}

void ODRect1::UpdateCurData()
{
    if (m_orgData.size() != kSlots)
        return;
    m_rect.setLeft(m_orgData[Left]);
    m_rect.setTop(m_orgData[Top]);
    m_rect.setRight(m_orgData[Right]);
    m_rect.setBottom(m_orgData[Bottom]);
}

void ODRect1::AdjustParameter()
{
    AdjustRect(m_rect);
    UpdateOrgData(1);
    UpdateOrgData(5);
}

void ODRect1::setHandleCursor(QPointF point)
{
    static const QVector<Qt::CursorShape> cursors = {
        Qt::ArrowCursor,     Qt::SizeFDiagCursor, Qt::SizeVerCursor, Qt::SizeBDiagCursor, Qt::SizeHorCursor,
        Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor};
    setViewportCursor(point, cursors);
}

void ODRect1::SetRect(double x1, double y1, double x2, double y2)
{
    m_orgData = {x1, y1, x2, y2};
}

void ODRect1::SetSearchLine(SEARCHLINEDIRECTION direction, int count)
{
    m_searchDirection = direction;
    m_searchCount = count;
}

void ODRect1::SetSearchLineFlag(bool flag)
{
    m_searchLineFlag = flag;
}

bool ODRect1::HaveSearchLine() const
{
    return m_searchLineFlag;
}

bool ODRect1::GetParam(double* x1, double* y1, double* x2, double* y2, int* direction, int* count) const
{
    if (m_orgData.size() != kSlots)
        return false;
    if (x1)
        *x1 = m_orgData[Left];
    if (y1)
        *y1 = m_orgData[Top];
    if (x2)
        *x2 = m_orgData[Right];
    if (y2)
        *y2 = m_orgData[Bottom];
    if (direction)
        *direction = m_searchDirection;
    if (count)
        *count = m_searchCount;
    return true;
}

void ODRect1::setZValue(long z)
{
    m_handleItem->setZValue(z);
    m_searchLineItem->setZValue(z);
    m_rectItem->setZValue(z);
}

QPainterPath ODRect1::GenSearchline()
{
    return SearchLine::GenSearchlines(m_rect, m_searchDirection, m_searchCount);
}

QPainterPath ODRect1::GenSearchlineItem(QLine line)
{
    return SearchLine::GenSearchlineItem(line);
}
