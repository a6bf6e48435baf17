#include "odtext.h"

#include "imagectrlscene.h"
#include "odshape.h"
#include "odshapewatcher.h"
#include "settleditemcache.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QPainterPath>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace {

const QColor kFirstColour(0, 255, 0, 255);
const char* const kDefaultFamily = "Arial";
constexpr int kDefaultPointSize = 12;
const char* const kDefaultText = "text";
// Half the side of the rectangle MakeElpHandle makes, in scene units.
constexpr double kHandleHalfSide = 3.0;

} // namespace

ODText::ODText(QGraphicsScene* scene)
    : m_scene(scene)
    , m_textItem(scene->addText(QString(), QFont()))
    , m_handleItem(scene->addPath(QPainterPath()))
    , m_id(ODShape::NextID())
    , m_color(kFirstColour)
    , m_moveEnable(true)
    , m_font(kDefaultFamily, kDefaultPointSize)
    , m_offsetX(0.0f)
    , m_offsetY(0.0f)
    , m_scale(1.0f)
    , m_text(kDefaultText)
    , m_isOverlay(false)
    , m_movable(true)
{
    if (auto* imageScene = qobject_cast<ImageCtrlScene*>(scene))
        m_color = imageScene->getPenColor();
    if (SettledItemCache* cache = SettledItemCache::of(scene)) {
        cache->addForeignItem(m_textItem);
        cache->addForeignItem(m_handleItem);
    }

    // Every block of the item's document aligned to the top left.
    QTextCursor cursor = m_textItem->textCursor();
    cursor.select(QTextCursor::Document);
    QTextBlockFormat format;
    format.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    cursor.mergeBlockFormat(format);
    cursor.clearSelection();
    m_textItem->setTextCursor(cursor);
}

ODText::ODText(QGraphicsScene* scene, QPointF point)
    : ODText(scene)
{
    m_curPos = point;
}

ODText::~ODText()
{
    ODShapeWatcher::notifyTextDestroyed(this);
    if (!hasItems())
        return;
    SettledItemCache* cache = SettledItemCache::of(m_scene);
    for (QGraphicsItem* item : {static_cast<QGraphicsItem*>(m_textItem), static_cast<QGraphicsItem*>(m_handleItem)}) {
        if (cache)
            cache->removeItem(item);
        m_scene->removeItem(item);
        delete item;
    }
    m_textItem = nullptr;
    m_handleItem = nullptr;
}

QGraphicsTextItem* ODText::textItem() const
{
    return hasItems() ? m_textItem : nullptr;
}

QGraphicsPathItem* ODText::handleItem() const
{
    return hasItems() ? m_handleItem : nullptr;
}

bool ODText::HitTest(QPointF point)
{
    return hasItems() && m_textItem->sceneBoundingRect().contains(point);
}

void ODText::ShowText()
{
    UpdateCurData();
    if (!hasItems())
        return;
    m_textItem->setPos(m_curPos);
    m_textItem->setDefaultTextColor(m_color);
    m_textItem->setFont(m_font);
    m_textItem->setPlainText(m_text);
    m_scene->update();
}

void ODText::HideText()
{
    if (hasItems())
        m_textItem->setPlainText(QString());
}

void ODText::ShowHandle()
{
}

void ODText::HideHandle()
{
    if (hasItems())
        m_handleItem->setPath(QPainterPath());
}

void ODText::MoveTo(QPointF delta)
{
    m_curPos += delta;
    UpdateOrgData();
}

void ODText::UpdateOrgData()
{
    m_orgPos = m_curPos;
}

void ODText::UpdateCurData()
{
    m_curPos = m_orgPos;
}

QRectF ODText::MakeElpHandle(const QPointF& p) const
{
    return QRectF(p.x() - kHandleHalfSide, p.y() - kHandleHalfSide, 2 * kHandleHalfSide, 2 * kHandleHalfSide);
}

void ODText::setZValue(long z)
{
    if (!hasItems())
        return;
    if (SettledItemCache* cache = SettledItemCache::of(m_scene)) {
        cache->restack(m_handleItem, qreal(z));
        cache->restack(m_textItem, qreal(z));
    }
    m_handleItem->setZValue(z);
    m_textItem->setZValue(z);
}

void ODText::SetOffset(float x, float y)
{
    m_offsetX = x;
    m_offsetY = y;
}

void ODText::GetOffset(float& x, float& y) const
{
    x = m_offsetX;
    y = m_offsetY;
}
