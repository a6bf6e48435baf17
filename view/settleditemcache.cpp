#include "settleditemcache.h"

#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odshape.h"

#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>
#include <QWidget>
#include <QtMath>

#include <algorithm>
#include <functional>
#include <limits>

namespace {

// Qt treats an opacity below this as none at all.
constexpr qreal kNoOpacity = 0.001;
// How far, in device pixels, an item may paint beyond its bounding rectangle:
// antialiasing reaches a pixel past a cosmetic pen's geometry, and Qt itself
// repaints two pixels around an item with antialiasing on.
constexpr int kPaintMargin = 3;
// Beyond this many items placed one by one, the order is sorted anew.
constexpr int kMostSinglePlacements = 64;
// Beyond this many changed items, or this many rectangles left behind by
// items that left, the whole picture is rendered anew rather than patched.
constexpr int kMostChangedItems = 4096;
constexpr int kMostLeftRects = 256;
// The holder and the painter; the chunks are counted apart.
constexpr int kOwnItems = 2;
// Waiting items deleted per look at the clock, and the time a slice of
// deleting may take before the event loop has its turn.
constexpr int kDisposalsPerCheck = 64;
constexpr qint64 kDisposalSliceMs = 4;
// The side of a cell of the extent grid, in device pixels.
constexpr int kGridCell = 64;
// Settled items per chunk. Qt finds a child in its parent's list by walking
// the list, so short lists keep an item's move in or out cheap in any order.
constexpr int kChunkSize = 64;

bool stacksBefore(qreal z1, quint64 seq1, qreal z2, quint64 seq2)
{
    return z1 != z2 ? z1 < z2 : seq1 < seq2;
}

// Whether the item shows: the holder hides its chunks and their children
// from Qt, so a settled item counts as shown unless hidden itself.
bool isShown(const QGraphicsItem* item)
{
    const QGraphicsItem* parent = item->parentItem();
    return parent ? item->isVisibleTo(parent) : item->isVisible();
}

QRect deviceExtent(const QGraphicsItem* item, const QTransform& transform)
{
    if (!isShown(item))
        return QRect();
    const QRectF bounds = item->sceneBoundingRect();
    if (bounds.isNull())
        return QRect();
    return transform.mapRect(bounds).toAlignedRect().adjusted(-kPaintMargin, -kPaintMargin, kPaintMargin, kPaintMargin);
}

// The parent of every settled item. Hidden, it makes Qt skip it and all its
// children at one test when it paints, hit-tests, hovers or sends updates
// (an opacity of 0 would do the same, but Qt then asks every child whether it
// ignores its parent's opacity, on every paint). A child keeps its own flag:
// isVisibleTo(holder) says whether it shows.
class Holder : public QGraphicsItem
{
public:
    Holder()
    {
        setVisible(false);
        setFlag(ItemHasNoContents);
        setAcceptedMouseButtons(Qt::NoButton);
    }
    QRectF boundingRect() const override { return QRectF(); }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}
};

} // namespace

// A child of the holder that holds up to kChunkSize settled items. It is never
// hidden itself, so isVisibleTo(chunk) is the settled item's own flag.
class SettledItemCache::Chunk : public QGraphicsItem
{
public:
    Chunk()
    {
        setFlag(ItemHasNoContents);
        setAcceptedMouseButtons(Qt::NoButton);
    }
    QRectF boundingRect() const override { return QRectF(); }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}

    int used = 0;
    bool roomy = false; // a member of m_roomyChunks
};

namespace {

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

// Paints the window's items, above every other item. It is never hit: its
// shape is empty and it takes no buttons. Its extent holds every registered
// item's, so that it is asked to paint wherever an item may paint; it never
// shrinks, as the scene's own grows only.
class SettledItemCache::Painter : public QGraphicsItem
{
public:
    explicit Painter(SettledItemCache* cache)
        : m_cache(cache)
    {
        setAcceptedMouseButtons(Qt::NoButton);
        setZValue(std::numeric_limits<qreal>::max());
    }

    QRectF boundingRect() const override { return m_bounds; }
    QPainterPath shape() const override { return QPainterPath(); }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) override
    {
        m_cache->paintViewport(painter, widget);
    }

    // Grows the extent to hold bounds (scene coordinates).
    void include(const QRectF& bounds)
    {
        const QRectF grown = m_bounds | bounds;
        if (grown == m_bounds)
            return;
        prepareGeometryChange();
        m_bounds = grown;
    }

private:
    SettledItemCache* m_cache;
    QRectF m_bounds;
};

SettledItemCache::SettledItemCache(QGraphicsScene* scene)
    : m_scene(scene)
    , m_holder(new Holder)
    , m_painter(new Painter(this))
    , m_nextSeq(0)
    , m_holes(0)
    , m_chunkCount(0)
    , m_enabled(true)
    , m_everyItemKnown(true)
    , m_everyItemTopLevel(true)
    , m_minimumItemCount(kDefaultMinimumItemCount)
    , m_picturesRendered(0)
{
    m_scene->addItem(m_holder);
    m_scene->addItem(m_painter);
    m_disposalTimer.setInterval(0);
    QObject::connect(&m_disposalTimer, &QTimer::timeout, &m_disposalTimer, [this] { disposeSlice(); });
}

SettledItemCache::~SettledItemCache() = default;

SettledItemCache* SettledItemCache::of(QGraphicsScene* scene)
{
    auto* imageScene = qobject_cast<ImageCtrlScene*>(scene);
    return imageScene ? imageScene->settledItems() : nullptr;
}

void SettledItemCache::addShapeItem(QGraphicsItem* item)
{
    // A layer filled again while old items wait: they all go first, in one
    // run. Qt's index sorts its new items before each removal that follows an
    // addition, so removals between additions would cost the whole index
    // each; and new items then take the memory the old ones free.
    while (!m_disposals.isEmpty())
        disposeLast();
    Entry entry;
    entry.seq = m_nextSeq++;
    m_entries.insert(item, entry);
    m_unplaced.insert(item);
    if (!m_everyItemTopLevel) {
        settle(item);
    } else {
        m_topLevel.insert(item);
        // A layer filled in one go settles as it crosses the minimum, not
        // all at once at the next paint.
        if (isActive())
            settleEveryItem();
    }
    itemChanged(item);
}

void SettledItemCache::addForeignItem(QGraphicsItem* item)
{
    Entry entry;
    entry.seq = m_nextSeq++;
    entry.foreign = true;
    m_entries.insert(item, entry);
    m_foreign.insert(item);
    m_unplaced.insert(item);
    m_topLevel.insert(item);
    itemChanged(item);
}

int SettledItemCache::findSlot(QGraphicsItem* item, const Entry& entry) const
{
    const int index = placeFor(entry);
    return index < m_order.size() && m_order[index].item == item ? index : -1;
}

// The first place that does not stack before the entry's key.
int SettledItemCache::placeFor(const Entry& entry) const
{
    const auto place = std::lower_bound(m_order.cbegin(), m_order.cend(), entry, [](const Slot& slot, const Entry& e) {
        return stacksBefore(slot.z, slot.seq, e.placedZ, e.seq);
    });
    return int(place - m_order.cbegin());
}

// The item's place becomes a hole; where it painted in the whole picture must
// be painted afresh.
void SettledItemCache::unplace(QGraphicsItem* item, Entry& entry)
{
    if (!entry.placed)
        return;
    const int index = findSlot(item, entry);
    if (index >= 0) {
        Slot& slot = m_order[index];
        if (m_whole.valid && !slot.extent.isEmpty()) {
            m_leftArea += slot.extent;
            if (m_leftArea.rectCount() > kMostLeftRects)
                m_whole.valid = false;
        }
        slot.item = nullptr;
        ++m_holes;
    }
    entry.placed = false;
}

void SettledItemCache::removeItem(QGraphicsItem* item)
{
    auto entry = m_entries.find(item);
    if (entry == m_entries.end())
        return;
    // Qt takes the item out of its chunk as it leaves the scene.
    leaveChunk(*entry);
    unplace(item, *entry);
    m_entries.erase(entry);
    m_unplaced.remove(item);
    m_foreign.remove(item);
    m_topLevel.remove(item);
    m_changed.remove(item);
    m_painter->update();
}

// Qt's index keeps the scene's items sorted by address and erases a removed
// one by moving the items on the shorter side of it; taken in falling order
// of address, each is the last, where emptying a large layer in any other
// order moves half the index per item.
void SettledItemCache::removeItemsFromScene(QVector<QGraphicsItem*> items)
{
    for (QGraphicsItem* item : qAsConst(items))
        removeItem(item);
    std::sort(items.begin(), items.end(), std::greater<QGraphicsItem*>());
    for (QGraphicsItem* item : qAsConst(items)) {
        if (item->scene() == m_scene)
            m_scene->removeItem(item);
    }
}

void SettledItemCache::disposeItems(const QVector<QGraphicsItem*>& items)
{
    if (items.size() <= kMostChangedItems || !isActive() || m_everyItemTopLevel) {
        removeItemsFromScene(items);
        qDeleteAll(items);
        return;
    }
    // So many items change that the whole picture is rendered anew, and the
    // stacking order is sorted anew from the items that stay.
    m_whole.valid = false;
    m_order.clear();
    m_holes = 0;
    m_unplaced.clear();
    m_changed.clear();
    m_leftArea = QRegion();
    QVector<QGraphicsItem*> now;
    m_disposals.reserve(m_disposals.size() + items.size());
    // Held at its size while it empties: a hash that shrinks as it goes
    // rehashes itself again and again.
    m_entries.reserve(m_entries.size());
    for (QGraphicsItem* item : items) {
        const auto entry = m_entries.constFind(item);
        if (entry == m_entries.cend()) {
            now.append(item);
            continue;
        }
        if (entry->chunk && item->scene() == m_scene) {
            m_disposals.append(Disposal{item, entry->chunk});
        } else {
            m_topLevel.remove(item);
            m_foreign.remove(item);
            now.append(item);
        }
        // Not erase(): it looks for the next entry, which in a hash that is
        // emptied walks ever more empty buckets.
        m_entries.remove(item);
    }
    m_entries.squeeze();
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
        it->placed = false;
        m_unplaced.insert(it.key());
    }
    m_disposalsSorted = m_disposals.size() <= 1;
    for (QGraphicsItem* item : qAsConst(now)) {
        if (item->scene())
            item->scene()->removeItem(item);
    }
    qDeleteAll(now);
    m_painter->update();
    m_disposalTimer.start();
}

// The waiting items are sorted by address only when the first of them goes,
// which keeps the sort out of the emptying of the layer.
void SettledItemCache::disposeLast()
{
    if (!m_disposalsSorted) {
        std::sort(m_disposals.begin(), m_disposals.end(),
                  [](const Disposal& a, const Disposal& b) { return a.item < b.item; });
        m_disposalsSorted = true;
    }
    const Disposal disposal = m_disposals.takeLast();
    freePlaceIn(disposal.chunk);
    m_scene->removeItem(disposal.item);
    delete disposal.item;
}

void SettledItemCache::disposeSlice()
{
    QElapsedTimer clock;
    clock.start();
    while (!m_disposals.isEmpty() && clock.elapsed() < kDisposalSliceMs) {
        for (int i = 0; i < kDisposalsPerCheck && !m_disposals.isEmpty(); ++i)
            disposeLast();
    }
    if (m_disposals.isEmpty())
        m_disposalTimer.stop();
}

void SettledItemCache::restack(QGraphicsItem* item, qreal z)
{
    auto entry = m_entries.find(item);
    if (entry == m_entries.end() || (entry->placed && entry->placedZ == z))
        return;
    unplace(item, *entry);
    m_unplaced.insert(item);
    itemChanged(item);
}

void SettledItemCache::shapeChanged(const ODShape* shape)
{
    if (m_liveShapes.contains(shape))
        return;
    for (QGraphicsItem* item : shape->graphicsItems()) {
        if (m_entries.contains(item))
            itemChanged(item);
    }
}

void SettledItemCache::itemChanged(QGraphicsItem* item)
{
    m_painter->update();
    if (!m_whole.valid || m_changed.contains(item))
        return;
    m_changed.insert(item);
    markSlot(item, true);
    if (m_changed.size() > kMostChangedItems)
        m_whole.valid = false;
}

void SettledItemCache::markSlot(QGraphicsItem* item, bool changed)
{
    const auto entry = m_entries.constFind(item);
    if (entry == m_entries.cend() || !entry->placed)
        return;
    const int index = findSlot(item, *entry);
    if (index >= 0)
        m_order[index].changed = changed;
}

// After a render of the whole picture only the items Qt walks may paint
// otherwise, since they change without telling.
void SettledItemCache::forgetChanges()
{
    m_changed = m_topLevel;
    for (QGraphicsItem* item : qAsConst(m_changed))
        markSlot(item, true);
    m_leftArea = QRegion();
}

void SettledItemCache::setTopLevel(QGraphicsItem* item, bool topLevel)
{
    if (topLevel) {
        lift(item);
        m_topLevel.insert(item);
    } else {
        settle(item);
        m_topLevel.remove(item);
    }
    itemChanged(item);
}

void SettledItemCache::settle(QGraphicsItem* item)
{
    Entry& entry = m_entries[item];
    if (entry.chunk)
        return;
    while (!m_roomyChunks.isEmpty() && m_roomyChunks.last()->used >= kChunkSize) {
        m_roomyChunks.last()->roomy = false;
        m_roomyChunks.removeLast();
    }
    if (m_roomyChunks.isEmpty()) {
        auto* chunk = new Chunk;
        chunk->setParentItem(m_holder);
        chunk->roomy = true;
        m_roomyChunks.append(chunk);
        ++m_chunkCount;
    }
    entry.chunk = m_roomyChunks.last();
    ++entry.chunk->used;
    item->setParentItem(entry.chunk);
}

void SettledItemCache::lift(QGraphicsItem* item)
{
    leaveChunk(m_entries[item]);
    item->setParentItem(nullptr);
}

void SettledItemCache::leaveChunk(Entry& entry)
{
    if (!entry.chunk)
        return;
    freePlaceIn(entry.chunk);
    entry.chunk = nullptr;
}

void SettledItemCache::freePlaceIn(Chunk* chunk)
{
    --chunk->used;
    if (!chunk->roomy) {
        chunk->roomy = true;
        m_roomyChunks.append(chunk);
    }
}

void SettledItemCache::setMinimumItemCount(int count)
{
    m_minimumItemCount = count;
    m_whole.valid = false;
    m_painter->update();
}

// Every shape's item settles; the next prepare() lifts the live ones back.
void SettledItemCache::settleEveryItem()
{
    const QSet<QGraphicsItem*> topLevel = m_topLevel;
    for (QGraphicsItem* item : topLevel) {
        if (!m_foreign.contains(item))
            setTopLevel(item, false);
    }
    m_everyItemTopLevel = false;
}

void SettledItemCache::setEnabled(bool enabled)
{
    m_enabled = enabled;
    m_whole.valid = false;
    m_painter->update();
}

// Qt stacks top-level items of one z value in the order they became
// top-level, so every item settles first and then comes back in stacking
// order.
void SettledItemCache::makeEveryItemTopLevel()
{
    ensureOrder();
    for (QGraphicsItem* item : qAsConst(m_topLevel))
        settle(item);
    for (const Slot& slot : qAsConst(m_order)) {
        if (slot.item)
            lift(slot.item);
    }
    m_topLevel.clear();
    for (auto it = m_entries.cbegin(); it != m_entries.cend(); ++it)
        m_topLevel.insert(it.key());
    m_everyItemTopLevel = true;
    m_whole.valid = false;
}

void SettledItemCache::prepare(const QList<ODShape*>& liveShapes)
{
    QSet<const ODShape*> shapes;
    for (const ODShape* shape : liveShapes)
        shapes.insert(shape);
    m_liveShapes = shapes;
    // An item that some other code put into the scene is unknown here and
    // would be painted over; while there is one, Qt paints every item. The
    // scene's linear index counts its items at no cost.
    m_everyItemKnown =
        m_scene->items().size() == m_entries.size() + kOwnItems + m_chunkCount + m_disposals.size();
    if (!isActive()) {
        if (!m_everyItemTopLevel)
            makeEveryItemTopLevel();
        return;
    }
    m_everyItemTopLevel = false;
    QSet<QGraphicsItem*> wanted = m_foreign;
    for (const ODShape* shape : liveShapes) {
        for (QGraphicsItem* item : shape->graphicsItems()) {
            if (m_entries.contains(item))
                wanted.insert(item);
        }
    }
    if (wanted != m_topLevel) {
        const QSet<QGraphicsItem*> current = m_topLevel;
        for (QGraphicsItem* item : current) {
            if (!wanted.contains(item))
                setTopLevel(item, false);
        }
        for (QGraphicsItem* item : qAsConst(wanted)) {
            if (!current.contains(item))
                setTopLevel(item, true);
        }
    }
    // The painter's extent must hold every item before the paint asks it.
    QRectF bounds;
    if (m_whole.valid) {
        for (const QGraphicsItem* item : qAsConst(m_changed))
            bounds |= item->sceneBoundingRect();
    } else {
        for (auto it = m_entries.cbegin(); it != m_entries.cend(); ++it)
            bounds |= it.key()->sceneBoundingRect();
    }
    m_painter->include(bounds);
}

void SettledItemCache::ExtentGrid::reset(const QSize& size)
{
    m_size = size;
    m_columns = (size.width() + kGridCell - 1) / kGridCell;
    const int rows = (size.height() + kGridCell - 1) / kGridCell;
    m_cells = QVector<QVector<SlotKey>>(m_columns * rows);
}

QRect SettledItemCache::ExtentGrid::cellsOf(const QRect& extent) const
{
    const QRect inside = extent & QRect(QPoint(0, 0), m_size);
    if (inside.isEmpty())
        return QRect();
    return QRect(QPoint(inside.left() / kGridCell, inside.top() / kGridCell),
                 QPoint(inside.right() / kGridCell, inside.bottom() / kGridCell));
}

void SettledItemCache::ExtentGrid::add(const QRect& extent, const SlotKey& key)
{
    const QRect cells = cellsOf(extent);
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column)
            m_cells[row * m_columns + column].append(key);
    }
}

void SettledItemCache::ExtentGrid::collect(const QRect& area, QVector<SlotKey>* keys) const
{
    const QRect cells = cellsOf(area);
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column)
            *keys += m_cells[row * m_columns + column];
    }
}

// Qt asks the painter to paint wherever its extent meets the area to paint,
// and it then fills that whole area.
bool SettledItemCache::paintsOver(const QRectF& sceneRect) const
{
    return !m_everyItemTopLevel && m_painter->isVisible() && m_painter->boundingRect().contains(sceneRect);
}

void SettledItemCache::ensureOrder()
{
    if (m_unplaced.isEmpty() && m_holes <= m_order.size() / 2)
        return;
    if (m_unplaced.size() <= kMostSinglePlacements && m_holes <= m_order.size() / 2) {
        for (QGraphicsItem* item : qAsConst(m_unplaced)) {
            Entry& entry = m_entries[item];
            entry.placedZ = item->zValue();
            entry.placed = true;
            m_order.insert(placeFor(entry), Slot{entry.placedZ, entry.seq, item, QRect(), m_changed.contains(item)});
        }
        m_unplaced.clear();
        return;
    }
    // Many moved: sorted anew, and the whole picture with it, since the
    // extents it painted are kept by place.
    m_order.clear();
    m_order.reserve(m_entries.size());
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
        it->placedZ = it.key()->zValue();
        it->placed = true;
        m_order.append(Slot{it->placedZ, it->seq, it.key(), QRect(), false});
    }
    std::sort(m_order.begin(), m_order.end(),
              [](const Slot& a, const Slot& b) { return stacksBefore(a.z, a.seq, b.z, b.seq); });
    m_unplaced.clear();
    m_holes = 0;
    m_whole.valid = false;
}

QRegion SettledItemCache::changedArea(const QTransform& transform) const
{
    QRegion area = m_leftArea;
    for (QGraphicsItem* item : qAsConst(m_changed)) {
        const auto entry = m_entries.constFind(item);
        if (entry == m_entries.cend())
            continue;
        const int index = entry->placed ? findSlot(item, *entry) : -1;
        if (index >= 0)
            area += m_order[index].extent;
        area += deviceExtent(item, transform);
    }
    return area;
}

// On a view's viewport the whole picture is copied except where an item may
// paint otherwise than it did then. That area is painted afresh in a scratch
// picture of the viewport's size, unclipped: Qt's antialiased cosmetic strokes
// step along a line from where a clip cuts it, so a clipped line lands a few
// levels off. The scratch picture gets the background, then every item that
// reaches the area, in stacking order, and is copied into the area.
void SettledItemCache::paintViewport(QPainter* painter, QWidget* widget)
{
    if (m_everyItemTopLevel)
        return;
    ensureOrder();
    auto* view = widget && painter->device() == widget ? qobject_cast<ImageCtrlView*>(widget->parentWidget()) : nullptr;
    if (!view || view->viewport() != widget) {
        paintDirectly(painter, widget);
        return;
    }
    ensureWhole(painter, view);
    const QTransform transform = painter->worldTransform();
    const QRect all(QPoint(0, 0), widget->size());
    const QRegion area = changedArea(transform) & all;

    painter->save();
    painter->resetTransform();
    painter->setOpacity(1.0);
    // Over an opaque background the fresh area, opaque too, replaces what the
    // picture leaves there, and an unclipped copy is the quicker one.
    if (!m_probeOpaque)
        painter->setClipRegion(QRegion(all) - area, Qt::IntersectClip);
    painter->drawImage(QPointF(0.0, 0.0), m_whole.picture);
    painter->restore();
    if (area.isEmpty())
        return;

    const QRect bounds = area.boundingRect();
    // The slots that may reach the area: those the whole picture has near
    // it, and the changed ones; visited in stacking order.
    QVector<SlotKey> keys;
    m_grid.collect(bounds, &keys);
    for (QGraphicsItem* item : qAsConst(m_changed)) {
        const auto entry = m_entries.constFind(item);
        if (entry != m_entries.cend() && entry->placed)
            keys.append(SlotKey{entry->placedZ, entry->seq});
    }
    std::sort(keys.begin(), keys.end(),
              [](const SlotKey& a, const SlotKey& b) { return stacksBefore(a.z, a.seq, b.z, b.seq); });
    keys.erase(std::unique(keys.begin(), keys.end(), [](const SlotKey& a, const SlotKey& b) { return a.seq == b.seq; }),
               keys.end());
    const qreal ratio = m_whole.picture.devicePixelRatio();
    if (m_scratch.size() != m_whole.picture.size()) {
        m_scratch = QImage(m_whole.picture.size(), QImage::Format_ARGB32_Premultiplied);
        m_scratch.setDevicePixelRatio(ratio);
    }
    {
        QPainter scratch(&m_scratch);
        scratch.setCompositionMode(QPainter::CompositionMode_Source);
        scratch.setClipRegion(area);
        scratch.drawImage(QPointF(0.0, 0.0), m_whole.background);
        scratch.setClipping(false);
        scratch.setCompositionMode(QPainter::CompositionMode_SourceOver);
        scratch.setRenderHints(painter->renderHints());
        scratch.setWorldTransform(transform);
        for (const SlotKey& key : qAsConst(keys)) {
            Entry probe;
            probe.placedZ = key.z;
            probe.seq = key.seq;
            const int index = placeFor(probe);
            if (index >= m_order.size() || m_order[index].seq != key.seq || !m_order[index].item)
                continue;
            const Slot& slot = m_order[index];
            const bool reachedThen = slot.extent.intersects(bounds) && area.intersects(slot.extent);
            if (reachedThen || (slot.changed && area.intersects(deviceExtent(slot.item, transform))))
                paintItem(&scratch, slot.item, widget);
        }
    }
    painter->save();
    painter->resetTransform();
    painter->setOpacity(1.0);
    painter->setClipRegion(area, Qt::IntersectClip);
    painter->drawImage(QPointF(0.0, 0.0), m_scratch);
    painter->restore();
}

// Away from the viewport (a render of the scene into a picture) every item is
// painted in turn over the background Qt painted, which is painted again
// since Qt painted the live items on it already.
void SettledItemCache::paintDirectly(QPainter* painter, QWidget* widget)
{
    auto* scene = qobject_cast<ImageCtrlScene*>(m_scene);
    if (scene)
        scene->repaintLastBackground(painter);
    for (const Slot& slot : qAsConst(m_order)) {
        if (slot.item)
            paintItem(painter, slot.item, widget);
    }
}

void SettledItemCache::ensureWhole(QPainter* painter, ImageCtrlView* view)
{
    const QWidget* port = view->viewport();
    const qreal ratio = port->devicePixelRatioF();
    const QSize size(qCeil(port->width() * ratio), qCeil(port->height() * ratio));
    const QTransform transform = painter->worldTransform();
    const int hints = int(painter->renderHints());

    // The background is not the cache's to watch: a new frame, region or
    // static record changes it. It is painted anew for each paint and
    // compared, a small price beside the items.
    // The probe is kept between paints: once the whole picture stops sharing
    // it, filling it again allocates nothing.
    if (m_probe.size() != size || m_probe.devicePixelRatio() != ratio) {
        m_probe = QImage(size, QImage::Format_ARGB32_Premultiplied);
        m_probe.setDevicePixelRatio(ratio);
    }
    // A viewport that fills itself with an opaque brush covers every pixel
    // of the probe first, whatever the last paint left there.
    m_probeOpaque = port->autoFillBackground() && port->palette().brush(port->backgroundRole()).isOpaque();
    if (!m_probeOpaque)
        m_probe.fill(Qt::transparent);
    {
        QPainter backgroundPainter(&m_probe);
        view->paintBackgroundOfViewport(&backgroundPainter);
    }
    Whole& w = m_whole;
    if (w.valid && w.viewport == port && w.transform == transform && w.size == size && w.renderHints == hints
        && w.background == m_probe)
        return;
    renderWhole(painter, view, m_probe);
}

void SettledItemCache::renderWhole(QPainter* painter, ImageCtrlView* view, const QImage& background)
{
    if (m_holes > 0) {
        m_order.erase(std::remove_if(m_order.begin(), m_order.end(), [](const Slot& slot) { return !slot.item; }),
                      m_order.end());
        m_holes = 0;
    }
    const QTransform transform = painter->worldTransform();
    Whole& w = m_whole;
    w.picture = background;
    m_grid.reset(background.size());
    const QRect pictureRect(QPoint(0, 0), background.size());
    QRectF bounds;
    {
        QPainter wholePainter(&w.picture);
        wholePainter.setRenderHints(painter->renderHints());
        wholePainter.setWorldTransform(transform);
        for (Slot& slot : m_order) {
            slot.extent = deviceExtent(slot.item, transform);
            slot.changed = false;
            bounds |= slot.item->sceneBoundingRect();
            // An item that paints nowhere in the picture is left out of it.
            if (!slot.extent.intersects(pictureRect))
                continue;
            m_grid.add(slot.extent, SlotKey{slot.z, slot.seq});
            paintItem(&wholePainter, slot.item, view->viewport());
        }
    }
    m_painter->include(bounds);
    w.background = background;
    w.viewport = view->viewport();
    w.transform = transform;
    w.size = background.size();
    w.renderHints = int(painter->renderHints());
    w.valid = true;
    forgetChanges();
    ++m_picturesRendered;
}

void SettledItemCache::paintItem(QPainter* painter, QGraphicsItem* item, QWidget* widget) const
{
    if (!isShown(item) || (item->flags() & QGraphicsItem::ItemHasNoContents))
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
