#include "odshape.h"

#include "HandleItem.h"
#include "ShapeLayer.h"
#include "numericguards.h"
#include "odshapewatcher.h"
#include "settleditemcache.h"

#include <QCursor>
#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>

long ODShape::s_ID = 0;

long ODShape::NextID()
{
    return __atomic_fetch_add(&s_ID, 1, __ATOMIC_RELAXED);
}

ODShape::ODShape(QGraphicsScene* scene, DrawMode mode)
    : m_id(NextID())
    , m_drawMode(mode)
    , m_lineWidth(1.0f)
    , m_offsetX(0.0f)
    , m_offsetY(0.0f)
    , m_scale(1.0f)
    , m_handleItem(nullptr)
    , m_scene(scene)
    , m_itemCache(SettledItemCache::of(scene))
    , m_isVisiblehandleMark(false)
    , m_shaperLayer(nullptr)
    , m_visible(true)
    , m_movable(true)
    , m_selectble(true)
    , m_overlay(false)
{
    m_pen.setWidth(0);
}

// The handle item is deleted here; the subclasses delete their display items.
ODShape::~ODShape()
{
    ODShapeWatcher::notifyShapeDestroyed(this);
    deleteItems({m_handleItem});
    m_handleItem = nullptr;
}

void ODShape::disownItems()
{
    m_itemsDisowned = true;
    m_items.clear();
}

void ODShape::deleteItems(std::initializer_list<QGraphicsItem*> items)
{
    if (m_itemsDisowned)
        return;
    for (QGraphicsItem* item : items) {
        if (!item)
            continue;
        if (SettledItemCache* cache = SettledItemCache::of(item->scene()))
            cache->removeItem(item);
        if (item->scene())
            item->scene()->removeItem(item);
        delete item;
    }
}

void ODShape::shownStateChanged()
{
    m_hitReachStale = true;
    if (m_shaperLayer)
        m_shaperLayer->shapeMayHaveChanged(this);
    if (m_itemCache)
        m_itemCache->shapeChanged(this);
}

void ODShape::ownItem(QGraphicsItem* item)
{
    m_items.append(item);
    if (m_itemCache)
        m_itemCache->addShapeItem(item);
}

void ODShape::SetOffset(float x, float y)
{
    shownStateChanged();
    m_offsetX = x;
    m_offsetY = y;
}

void ODShape::GetOffset(float& x, float& y) const
{
    x = m_offsetX;
    y = m_offsetY;
}

void ODShape::SetScale(float scale)
{
    m_scale = scale;
    m_hitReachStale = true;
    if (m_shaperLayer)
        m_shaperLayer->shapeScaleChanged(this);
}

void ODShape::ShowHandle()
{
    beginShowHandle();
    if (!m_handleItem)
        return;
    QPainterPath path;
    for (int i = 0; i < m_handles.size(); ++i)
        path.addRect(m_handles.value(i));
    m_handleItem->setPath(path);
}

void ODShape::beginShowHandle()
{
    m_isVisiblehandleMark = true;
    if (m_handleItem) {
        QPen pen;
        pen.setWidth(0);
        pen.setColor(m_penColor);
        m_handleItem->setPen(pen);
    }
    UpdateHandles();
}

void ODShape::setHandles(const QVector<QPointF>& points)
{
    m_hitReachStale = true;
    m_handles.clear();
    for (int key = 0; key < points.size(); ++key)
        m_handles.insert(key, MakeElpHandle(points[key]));
}

void ODShape::HideHandle()
{
    m_isVisiblehandleMark = false;
    if (m_handleItem)
        m_handleItem->setPath(QPainterPath());
}

QRectF ODShape::hitReach() const
{
    QRectF reach;
    for (const QGraphicsItem* item : m_items)
        reach |= item->boundingRect() | item->sceneBoundingRect();
    for (const QRectF& handle : m_handles)
        reach |= handle;
    return reach;
}

QRectF ODShape::cachedHitReach() const
{
    if (m_hitReachStale) {
        m_hitReach = hitReach();
        m_hitReachStale = false;
    }
    return m_hitReach;
}

int ODShape::HitTest(QPointF, bool)
{
    return 0;
}

void ODShape::AdjustParameter()
{
    shownStateChanged();
    UpdateHandles();
}

void ODShape::setHandleCursor(QPointF)
{
    if (m_scene && !m_scene->views().isEmpty())
        m_scene->views().at(0)->setCursor(Qt::ArrowCursor);
}

float ODShape::handleScale() const
{
    const float inverse = 1.0f / m_scale;
    return inverse > 1.0f ? inverse : 1.0f;
}

QRectF ODShape::MakeElpHandle(const QPointF& p) const
{
    const float s = handleScale();
    return QRectF(p.x() - 3 * s, p.y() - 3 * s, 6 * s, 6 * s);
}

void ODShape::storeOrgData(int number, std::initializer_list<double> current, const SlotMask* ownership, int numbers)
{
    shownStateChanged();
    if (m_orgData.size() != int(current.size())) {
        m_orgData = QVector<double>(current);
        return;
    }
    const SlotMask owned = number >= 0 && number < numbers ? ownership[number] : 0;
    int slot = 0;
    for (double value : current) {
        if (owned & slotBit(slot))
            m_orgData[slot] = value;
        ++slot;
    }
}

bool ODShape::readOrgData(std::initializer_list<double*> outputs, SlotRule rule) const
{
    const int needed = int(outputs.size());
    const bool enough = rule == SlotRule::Exactly ? m_orgData.size() == needed : m_orgData.size() >= needed;
    if (!enough)
        return false;
    int slot = 0;
    for (double* output : outputs) {
        if (output)
            *output = m_orgData[slot];
        ++slot;
    }
    return true;
}

void ODShape::adoptHandleItem(QGraphicsPathItem* item)
{
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    m_scene->addItem(item);
    m_handleItem = own(item);
}

void ODShape::setItemsZValue(long z, std::initializer_list<QGraphicsItem*> displayItems)
{
    if (m_handleItem)
        setItemZValue(m_handleItem, qreal(z));
    for (QGraphicsItem* item : displayItems)
        setItemZValue(item, qreal(z));
}

void ODShape::setItemZValue(QGraphicsItem* item, qreal z)
{
    if (m_itemCache)
        m_itemCache->restack(item, z);
    item->setZValue(z);
}

void ODShape::raiseHandlesAbove(qreal mainZValue)
{
    if (!m_handleItem)
        return;
    setItemZValue(m_handleItem, mainZValue + 1.0);
    if (auto* item = dynamic_cast<HandleItem*>(m_handleItem))
        item->setHandleMap(m_handles);
}

int ODShape::hitHandle(const QPointF& point) const
{
    for (int i = 0; i < m_handles.size(); ++i) {
        if (m_handles.value(i).contains(point))
            return i + 1;
    }
    return 0;
}

const QPen& ODShape::currentPen()
{
    // A width from 0 to just under 1 truncates to 0, the cosmetic pen.
    m_pen.setColor(m_penColor);
    m_pen.setWidth(qMax(0, TruncateToInt(m_lineWidth)));
    return m_pen;
}

void ODShape::setViewportCursor(QPointF point, const QVector<Qt::CursorShape>& cursorByNumber)
{
    if (!m_scene || m_scene->views().isEmpty())
        return;
    int number = 0;
    if (m_isVisiblehandleMark)
        number = hitHandle(point);
    const Qt::CursorShape shape = number > 0 && number < cursorByNumber.size() ? cursorByNumber[number]
                                                                                : Qt::ArrowCursor;
    m_scene->views().at(0)->viewport()->setCursor(shape);
}
