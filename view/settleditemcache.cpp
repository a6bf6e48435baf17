#include "settleditemcache.h"

#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odshape.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <QStyleOptionGraphicsItem>
#include <QWidget>

#include <algorithm>

namespace {

// Qt treats an opacity below this as none at all.
constexpr qreal kNoOpacity = 0.001;
// How far, in device pixels, an item may paint beyond its bounding rectangle:
// antialiasing reaches a pixel past a cosmetic pen's geometry, and Qt itself
// repaints two pixels around an item with antialiasing on.
constexpr int kPaintMargin = 3;

QRect deviceExtent(const QGraphicsItem* item, const QTransform& transform)
{
    const QRectF bounds = item->sceneBoundingRect();
    if (bounds.isEmpty() && bounds.isNull())
        return QRect();
    return transform.mapRect(bounds).toAlignedRect().adjusted(-kPaintMargin, -kPaintMargin, kPaintMargin, kPaintMargin);
}

// The parent of every settled item. Its opacity of 0 makes Qt skip it and all
// its children at once when it paints, hit-tests, hovers or sends updates,
// while each child keeps its own visibility and opacity.
class Holder : public QGraphicsItem
{
public:
    Holder()
    {
        setOpacity(0.0);
        setFlag(ItemHasNoContents);
        setAcceptedMouseButtons(Qt::NoButton);
    }
    QRectF boundingRect() const override { return QRectF(); }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}
};

// The style option Qt gives an item it paints without the extended option.
void initStyleOption(const QGraphicsItem* item, QStyleOptionGraphicsItem* option)
{
    const QRectF bounds = item->boundingRect();
    option->state = QStyle::State_None;
    option->rect = bounds.toRect();
    option->exposedRect = bounds;
    if (item->isSelected())
        option->state |= QStyle::State_Selected;
    if (item->isEnabled())
        option->state |= QStyle::State_Enabled;
    if (item->hasFocus())
        option->state |= QStyle::State_HasFocus;
}

} // namespace

// Paints one run of settled items. It is never hit: its shape is empty and it
// takes no buttons. Its extent is that of its run's items, so that the scene
// grows around them as it would around the items themselves.
class SettledItemCache::Painter : public QGraphicsItem
{
public:
    Painter(SettledItemCache* cache, Run run)
        : m_cache(cache)
        , m_run(run)
        , m_boundsStale(true)
    {
        setAcceptedMouseButtons(Qt::NoButton);
    }

    QRectF boundingRect() const override
    {
        if (m_boundsStale) {
            m_bounds = m_cache->runExtent(m_run);
            m_boundsStale = false;
        }
        return m_bounds;
    }
    QPainterPath shape() const override { return QPainterPath(); }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) override
    {
        m_cache->paintRun(m_run, painter, widget);
    }

    // The run's items may have moved: the extent is found again when next
    // asked for, and the painter repaints.
    void runChanged()
    {
        prepareGeometryChange();
        m_boundsStale = true;
        update();
    }

private:
    SettledItemCache* m_cache;
    Run m_run;
    mutable QRectF m_bounds;
    mutable bool m_boundsStale;
};

SettledItemCache::SettledItemCache(QGraphicsScene* scene)
    : m_scene(scene)
    , m_holder(new Holder)
    , m_below(new Painter(this, Run::Below))
    , m_above(new Painter(this, Run::Above))
    , m_nextSeq(0)
    , m_orderDirty(false)
    , m_sliceBegin(0)
    , m_sliceEnd(0)
    , m_picturesRendered(0)
    , m_enabled(true)
{
    m_scene->addItem(m_holder);
    m_scene->addItem(m_below);
    m_scene->addItem(m_above);
}

SettledItemCache::~SettledItemCache() = default;

SettledItemCache* SettledItemCache::of(QGraphicsScene* scene)
{
    auto* imageScene = qobject_cast<ImageCtrlScene*>(scene);
    return imageScene ? imageScene->settledItems() : nullptr;
}

void SettledItemCache::addShapeItem(QGraphicsItem* item)
{
    m_seq.insert(item, Entry{m_nextSeq++, -1});
    item->setParentItem(m_holder);
    m_orderDirty = true;
    dropPictures();
}

void SettledItemCache::addForeignItem(QGraphicsItem* item)
{
    m_seq.insert(item, Entry{m_nextSeq++, -1});
    m_foreign.insert(item);
    m_orderDirty = true;
    dropPictures();
}

void SettledItemCache::removeItem(QGraphicsItem* item)
{
    const auto entry = m_seq.constFind(item);
    if (entry == m_seq.cend())
        return;
    // The order keeps a hole until it is made again, so that a paint before
    // the next prepare() never meets a deleted item.
    if (entry->index >= 0 && entry->index < m_order.size() && m_order[entry->index] == item)
        m_order[entry->index] = nullptr;
    m_seq.erase(entry);
    m_foreign.remove(item);
    m_liveItems.remove(item);
    m_slice.removeOne(item);
    m_orderDirty = true;
    dropPictures();
}

void SettledItemCache::shapeChanged(const ODShape* shape)
{
    if (!m_liveShapes.contains(shape))
        dropPictures();
}

void SettledItemCache::stackingChanged()
{
    m_orderDirty = true;
    dropPictures();
}

void SettledItemCache::dropPictures()
{
    m_pictures.valid = false;
    m_below->runChanged();
    m_above->runChanged();
}

void SettledItemCache::setEnabled(bool enabled)
{
    m_enabled = enabled;
    dropPictures();
}

void SettledItemCache::prepare(const QList<ODShape*>& liveShapes)
{
    QSet<QGraphicsItem*> live = m_foreign;
    if (!m_enabled) {
        for (auto it = m_seq.cbegin(); it != m_seq.cend(); ++it)
            live.insert(it.key());
    }
    QSet<const ODShape*> shapes;
    for (const ODShape* shape : liveShapes) {
        shapes.insert(shape);
        for (QGraphicsItem* item : shape->graphicsItems()) {
            if (m_seq.contains(item))
                live.insert(item);
        }
    }
    m_liveShapes = shapes;
    if (!m_orderDirty && live == m_liveItems)
        return;
    ensureOrder();
    resplit(live);
}

void SettledItemCache::ensureOrder()
{
    if (!m_orderDirty)
        return;
    struct Key
    {
        qreal z;
        quint64 seq;
        QGraphicsItem* item;
    };
    QVector<Key> keys;
    keys.reserve(m_seq.size());
    for (auto it = m_seq.cbegin(); it != m_seq.cend(); ++it)
        keys.append(Key{it.key()->zValue(), it->seq, it.key()});
    std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) {
        return a.z != b.z ? a.z < b.z : a.seq < b.seq;
    });
    m_order.resize(keys.size());
    for (int i = 0; i < keys.size(); ++i) {
        m_order[i] = keys[i].item;
        m_seq[keys[i].item].index = i;
    }
    m_orderDirty = false;
}

// Qt stacks top-level items of one z value in the order they became top-level,
// so the lower painter enters first, then the slice in stacking order, then
// the upper painter; each painter takes the z value of the slice's end it
// stands at.
void SettledItemCache::resplit(const QSet<QGraphicsItem*>& liveItems)
{
    int first = -1;
    int last = -1;
    if (!liveItems.isEmpty()) {
        for (int i = 0; i < m_order.size(); ++i) {
            if (liveItems.contains(m_order[i])) {
                if (first < 0)
                    first = i;
                last = i;
            }
        }
    }
    for (QGraphicsItem* item : qAsConst(m_slice))
        item->setParentItem(m_holder);
    m_slice.clear();

    m_sliceBegin = first < 0 ? m_order.size() : first;
    m_sliceEnd = first < 0 ? m_order.size() : last + 1;
    const bool empty = m_sliceBegin == m_sliceEnd;

    m_scene->removeItem(m_below);
    m_below->setZValue(empty ? 0.0 : m_order[m_sliceBegin]->zValue());
    m_scene->addItem(m_below);
    for (int i = m_sliceBegin; i < m_sliceEnd; ++i) {
        m_order[i]->setParentItem(nullptr);
        m_slice.append(m_order[i]);
    }
    m_scene->removeItem(m_above);
    m_above->setZValue(empty ? 0.0 : m_order[m_sliceEnd - 1]->zValue());
    m_scene->addItem(m_above);

    m_liveItems = liveItems;
    dropPictures();
}

void SettledItemCache::runBounds(Run run, int& begin, int& end) const
{
    begin = run == Run::Below ? 0 : m_sliceEnd;
    end = run == Run::Below ? m_sliceBegin : m_order.size();
    end = std::min(end, int(m_order.size()));
    begin = std::min(begin, end);
}

QRectF SettledItemCache::runExtent(Run run) const
{
    int begin = 0;
    int end = 0;
    runBounds(run, begin, end);
    QRectF extent;
    for (int i = begin; i < end; ++i) {
        if (const QGraphicsItem* item = m_order[i])
            extent |= item->sceneBoundingRect();
    }
    return extent;
}

// On a view's viewport the lower painter copies the below picture over the
// whole viewport. The upper painter copies the whole picture except where the
// slice paints now or painted then; that area it paints afresh in a scratch
// picture of the viewport's size: the below picture, the slice, and the items
// of the run above that reach the area. Every pixel is then what painting
// every item in turn over the whole viewport gives. The scratch picture is
// painted unclipped because Qt's antialiased cosmetic strokes step along a
// line from where a clip cuts it, so a clipped line lands a few levels off.
// Anywhere else, and with the cache off, the runs are painted item by item.
void SettledItemCache::paintRun(Run run, QPainter* painter, QWidget* widget)
{
    int begin = 0;
    int end = 0;
    runBounds(run, begin, end);
    auto* view = widget && painter->device() == widget ? qobject_cast<ImageCtrlView*>(widget->parentWidget()) : nullptr;
    if (!m_enabled || !view || view->viewport() != widget) {
        paintItems(painter, begin, end, widget);
        return;
    }
    ensurePictures(painter, view);
    const QTransform transform = painter->worldTransform();
    const QRect all(QPoint(0, 0), widget->size());
    painter->save();
    painter->resetTransform();
    painter->setOpacity(1.0);
    if (run == Run::Below) {
        painter->drawImage(QPointF(0.0, 0.0), m_pictures.below);
        painter->restore();
        return;
    }
    const QRect touched = (m_pictures.sliceThen + sliceExtent(transform)).boundingRect() & all;
    painter->setClipRegion(QRegion(all) - touched, Qt::IntersectClip);
    painter->drawImage(QPointF(0.0, 0.0), m_pictures.whole);
    painter->restore();
    if (touched.isEmpty())
        return;

    const qreal ratio = m_pictures.below.devicePixelRatio();
    const QRectF source(QPointF(touched.topLeft()) * ratio, QSizeF(touched.size()) * ratio);
    if (m_scratch.size() != m_pictures.below.size()) {
        m_scratch = QImage(m_pictures.below.size(), QImage::Format_ARGB32_Premultiplied);
        m_scratch.setDevicePixelRatio(ratio);
    }
    {
        QPainter scratchPainter(&m_scratch);
        scratchPainter.setCompositionMode(QPainter::CompositionMode_Source);
        scratchPainter.drawImage(QRectF(touched), m_pictures.below, source);
        scratchPainter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        scratchPainter.setRenderHints(painter->renderHints());
        scratchPainter.setWorldTransform(transform);
        paintItems(&scratchPainter, m_sliceBegin, m_sliceEnd, widget);
        for (int i = begin; i < end; ++i) {
            if (touched.intersects(m_pictures.aboveExtents.value(i - begin)))
                paintItem(&scratchPainter, m_order[i], widget);
        }
    }
    painter->save();
    painter->resetTransform();
    painter->setOpacity(1.0);
    painter->setClipRect(touched, Qt::IntersectClip);
    painter->drawImage(QRectF(touched), m_scratch, source);
    painter->restore();
}

QRegion SettledItemCache::sliceExtent(const QTransform& transform) const
{
    QRegion extent;
    for (const QGraphicsItem* item : m_slice) {
        if (item->isVisible())
            extent += deviceExtent(item, transform);
    }
    return extent;
}

void SettledItemCache::ensurePictures(QPainter* painter, ImageCtrlView* view)
{
    const QWidget* port = view->viewport();
    const qreal ratio = port->devicePixelRatioF();
    const QSize size(qCeil(port->width() * ratio), qCeil(port->height() * ratio));
    const QTransform transform = painter->worldTransform();
    const int hints = int(painter->renderHints());

    // The background is not the cache's to watch: a new frame, region or
    // static record changes it. It is painted anew for each paint and
    // compared, a small price beside the items.
    QImage background(size, QImage::Format_ARGB32_Premultiplied);
    background.setDevicePixelRatio(ratio);
    background.fill(Qt::transparent);
    {
        QPainter backgroundPainter(&background);
        view->paintBackgroundOfViewport(&backgroundPainter);
    }
    Pictures& p = m_pictures;
    if (p.valid && p.viewport == port && p.transform == transform && p.size == size && p.renderHints == hints
        && p.background == background)
        return;

    int begin = 0;
    int end = 0;
    p.below = background;
    {
        QPainter belowPainter(&p.below);
        belowPainter.setRenderHints(painter->renderHints());
        belowPainter.setWorldTransform(transform);
        runBounds(Run::Below, begin, end);
        paintItems(&belowPainter, begin, end, view->viewport());
    }
    p.whole = p.below;
    p.aboveExtents.clear();
    {
        QPainter wholePainter(&p.whole);
        wholePainter.setRenderHints(painter->renderHints());
        wholePainter.setWorldTransform(transform);
        paintItems(&wholePainter, m_sliceBegin, m_sliceEnd, view->viewport());
        runBounds(Run::Above, begin, end);
        paintItems(&wholePainter, begin, end, view->viewport());
        p.aboveExtents.reserve(end - begin);
        for (int i = begin; i < end; ++i)
            p.aboveExtents.append(m_order[i] ? deviceExtent(m_order[i], transform) : QRect());
    }
    p.sliceThen = sliceExtent(transform);
    p.background = background;
    p.viewport = port;
    p.transform = transform;
    p.size = size;
    p.renderHints = hints;
    p.valid = true;
    ++m_picturesRendered;
}

void SettledItemCache::paintItems(QPainter* painter, int begin, int end, QWidget* widget) const
{
    for (int i = begin; i < end; ++i)
        paintItem(painter, m_order[i], widget);
}

void SettledItemCache::paintItem(QPainter* painter, QGraphicsItem* item, QWidget* widget) const
{
    if (!item || !item->isVisible() || (item->flags() & QGraphicsItem::ItemHasNoContents))
        return;
    const qreal opacity = painter->opacity() * item->opacity();
    if (opacity < kNoOpacity)
        return;
    QStyleOptionGraphicsItem option;
    initStyleOption(item, &option);
    const QTransform base = painter->worldTransform();
    painter->save();
    painter->setWorldTransform(item->sceneTransform() * base);
    painter->setOpacity(opacity);
    item->paint(painter, &option, widget);
    painter->restore();
}
