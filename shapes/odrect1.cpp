#include "odrect1.h"

#include "Rect1HandleItem.h"
#include "boxhandles.h"
#include "geometryhelpers.h"
#include "numericguards.h"
#include "searchline.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>

ODRect1::ODRect1(QGraphicsScene* scene)
    : ODBoxShape(scene, DM_RECT1)
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
    startAt(point);
}

ODRect1::~ODRect1()
{
    deleteItems({m_rectItem, m_searchLineItem});
}

void ODRect1::createItems()
{
    m_rectItem = own(m_scene->addRect(QRectF()));
    m_searchLineItem = own(m_scene->addPath(QPainterPath()));
    adoptHandleItem(new Rect1HandleItem(nullptr));
}

Rect1HandleItem* ODRect1::rect1HandleItem() const
{
    return static_cast<Rect1HandleItem*>(m_handleItem);
}

void ODRect1::UpdateHandles()
{
    setHandles(BoxHandles::boxPoints(m_rect, m_rect.center()));
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
    m_rectItem->setBrush(solidBrush());
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
    raiseHandlesAbove(z);
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

void ODRect1::SetRect(double x1, double y1, double x2, double y2)
{
    shownStateChanged();
    setSides(x1, y1, x2, y2);
}

void ODRect1::SetSearchLine(SEARCHLINEDIRECTION direction, int count)
{
    shownStateChanged();
    m_searchDirection = direction;
    m_searchCount = count;
}

void ODRect1::SetSearchLineFlag(bool flag)
{
    shownStateChanged();
    m_searchLineFlag = flag;
}

bool ODRect1::HaveSearchLine() const
{
    return m_searchLineFlag;
}

bool ODRect1::GetParam(double* x1, double* y1, double* x2, double* y2, int* direction, int* count) const
{
    if (!readSides(x1, y1, x2, y2))
        return false;
    if (direction)
        *direction = m_searchDirection;
    if (count)
        *count = m_searchCount;
    return true;
}

bool ODRect1::isTooSmallToKeep() const
{
    // A drawn rectangle is judged by its whole-pixel sides, each truncated
    // toward zero; a parameter set that cannot be read keeps the shape.
    if (GetDrawMode() != DM_RECT1)
        return false;
    double p0 = -1.0, p1 = -1.0, p2 = -1.0, p3 = -1.0;
    int direction = -1, count = -1;
    if (!GetParam(&p0, &p1, &p2, &p3, &direction, &count))
        return false;
    const int dx = TruncateToInt(p0 - p2);
    const int dy = TruncateToInt(p3 - p1);
    return qAbs(dx) < kMinimumDrawnSide || qAbs(dy) < kMinimumDrawnSide;
}

void ODRect1::setZValue(long z)
{
    setItemsZValue(z, {m_searchLineItem, m_rectItem});
}

QPainterPath ODRect1::GenSearchline()
{
    return SearchLine::GenSearchlines(m_rect, m_searchDirection, m_searchCount);
}

QPainterPath ODRect1::GenSearchlineItem(QLine line)
{
    return SearchLine::GenSearchlineItem(line);
}
