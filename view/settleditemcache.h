#pragma once

#include "kesimagewnd_export.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QRect>
#include <QRectF>
#include <QRegion>
#include <QSet>
#include <QTimer>
#include <QTransform>
#include <QVector>

class ImageCtrlView;
class ODShape;
class QGraphicsItem;
class QGraphicsScene;
class QPainter;
class QWidget;

// Keeps the items of the shapes nobody is editing out of Qt's walk over the
// scene on every paint, hit test and hover, and paints the window's items from
// one picture. Every item of a shape, a text or an item region is registered
// here as it enters the scene, so the cache knows Qt's stacking order: z
// value, then the order of entering. The items of live shapes (selected, or
// kept by a tool) and of texts and regions stay ordinary top-level items, which
// Qt hits and hovers as before; every other item sits in a chunk under a
// holder that Qt skips whole.
//
// One painter item above all others paints the viewport: the whole picture,
// rendered once per view transform over the view's background with every
// item, except in the area where an item may paint otherwise than it did
// then. That area it paints afresh: the background, then every item that
// reaches the area, in stacking order. The pixels are those of painting every
// item in turn. An item may paint otherwise when it is live, was added,
// removed or restacked, or its shape said so through shapeChanged().
class KESIMAGEWND_TESTS_EXPORT SettledItemCache
{
public:
    explicit SettledItemCache(QGraphicsScene* scene);
    // Leaves the holder, the painter and every item to the scene, which
    // deletes them, items still waiting to be deleted among them.
    ~SettledItemCache();

    SettledItemCache(const SettledItemCache&) = delete;
    SettledItemCache& operator=(const SettledItemCache&) = delete;

    // The cache of the scene of a window, null for any other scene.
    static SettledItemCache* of(QGraphicsScene* scene);

    // A shape's item that has just entered the scene: it is stacked after
    // every item registered before it, and settles.
    void addShapeItem(QGraphicsItem* item);
    // A text's or a region's item that has just entered the scene: stacked
    // like a shape's item, it always stays live, since those change without
    // telling anyone.
    void addForeignItem(QGraphicsItem* item);
    // An item about to leave the scene.
    void removeItem(QGraphicsItem* item);
    // Takes over the items of shapes that are deleted together, as those of
    // a layer that is emptied, and deletes them. Few items, or any live
    // ones, go at once; many settled ones are forgotten at once and deleted
    // a slice at a time while the event loop is idle, or all in one run when
    // a new shape's item arrives first. Until then they sit hidden in their
    // chunks, where nothing paints, hits or hovers them: Qt takes about a
    // microsecond to take an item out of a scene, and a layer of 10^5 shapes
    // holds over 2 * 10^5 items.
    void disposeItems(const QVector<QGraphicsItem*>& items);
    // Items waiting to be deleted.
    int pendingDisposals() const { return m_disposals.size(); }
    // Called just before item's z value becomes z.
    void restack(QGraphicsItem* item, qreal z);
    // The items of shape may show otherwise now.
    void shapeChanged(const ODShape* shape);

    // Before the view paints: the items of liveShapes become top-level items,
    // the items of shapes that are no longer live settle. Costs the number of
    // items whose state changes.
    void prepare(const QList<ODShape*>& liveShapes);

    // Disabled, every registered item is a top-level item that Qt paints
    // itself in stacking order, as if there were no cache: the form the
    // cached painting must equal. Takes effect at the next prepare(). The
    // cache also stands aside while the scene holds an item it does not know,
    // and while it has few items.
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_enabled; }
    // Below this many registered items Qt paints every item itself, which
    // then costs less than keeping the picture.
    static constexpr int kDefaultMinimumItemCount = 2048;
    void setMinimumItemCount(int count);
    // Enabled, with enough items, every one of them registered.
    bool isActive() const
    {
        return m_enabled && m_everyItemKnown && m_entries.size() >= m_minimumItemCount;
    }

    // Whether, after prepare(), the painter item paints its opaque picture
    // over every part of a viewport that shows sceneRect (scene
    // coordinates): whatever is painted under it there cannot be seen.
    bool paintsOver(const QRectF& sceneRect) const;

    // Items registered, and how many of them Qt walks now.
    int itemCount() const { return m_entries.size(); }
    int liveItemCount() const { return m_topLevel.size(); }
    // The chunks made so far; they stay, empty or not, to be filled again.
    int chunkCount() const { return m_chunkCount; }
    // How often the whole picture was rendered since the cache was made.
    int picturesRendered() const { return m_picturesRendered; }

private:
    class Painter;
    class Chunk;
    struct Entry
    {
        Chunk* chunk = nullptr; // the chunk of a settled item
        quint64 seq = 0;        // order of entering the scene
        qreal placedZ = 0.0;    // the z value of its place in m_order
        bool placed = false;    // whether it has a place in m_order
        bool foreign = false;   // a text's or a region's item
    };
    // A place in the stacking order; item is null once the item has left.
    struct Slot
    {
        qreal z;
        quint64 seq;
        QGraphicsItem* item;
        QRect extent;         // device pixels it painted in the whole picture
        bool changed = false; // a member of m_changed
    };

    // Where in the stacking order a slot was when the whole picture was
    // rendered: the key of its place, which stays valid as others come and go.
    struct SlotKey
    {
        qreal z;
        quint64 seq;
    };
    // The slots of the whole picture by the device pixels they painted in,
    // in square cells, so that a paint of a small area visits the slots near
    // it rather than every slot.
    class ExtentGrid
    {
    public:
        void reset(const QSize& size);
        void add(const QRect& extent, const SlotKey& key);
        // Appends the key of every slot whose extent may meet area.
        void collect(const QRect& area, QVector<SlotKey>* keys) const;

    private:
        QRect cellsOf(const QRect& extent) const;
        QSize m_size;
        int m_columns = 0;
        QVector<QVector<SlotKey>> m_cells;
    };

    void paintViewport(QPainter* painter, QWidget* widget);
    void paintDirectly(QPainter* painter, QWidget* widget);
    // The whole picture for a paint of view's viewport with painter's
    // transform, rendered again when it no longer fits.
    void ensureWhole(QPainter* painter, ImageCtrlView* view);
    void renderWhole(QPainter* painter, ImageCtrlView* view, const QImage& background);
    // Gives every unplaced item its place; sorts anew when many moved.
    void ensureOrder();
    int findSlot(QGraphicsItem* item, const Entry& entry) const;
    int placeFor(const Entry& entry) const;
    void unplace(QGraphicsItem* item, Entry& entry);
    // The item may paint otherwise than in the whole picture from now on.
    void itemChanged(QGraphicsItem* item);
    void forgetChanges();
    void markSlot(QGraphicsItem* item, bool changed);
    void setTopLevel(QGraphicsItem* item, bool topLevel);
    // Into a chunk with room, and out of its chunk to the top level.
    void settle(QGraphicsItem* item);
    void lift(QGraphicsItem* item);
    void leaveChunk(Entry& entry);
    // One item fewer in chunk, which then has room.
    void freePlaceIn(Chunk* chunk);
    // Items of this scene that leave it together: each is forgotten as by
    // removeItem(), then taken out of the scene, in the order that costs Qt
    // least. The caller deletes them.
    void removeItemsFromScene(QVector<QGraphicsItem*> items);
    // Deletes waiting items, the last of m_disposals first, for a slice of
    // the event loop's time.
    void disposeSlice();
    void disposeLast();
    void makeEveryItemTopLevel();
    void settleEveryItem();
    QRegion changedArea(const QTransform& transform) const;
    void paintItem(QPainter* painter, QGraphicsItem* item, QWidget* widget) const;

    QGraphicsScene* m_scene;
    QGraphicsItem* m_holder;
    Painter* m_painter;
    QHash<QGraphicsItem*, Entry> m_entries;
    quint64 m_nextSeq;
    // Every placed item in stacking order, with holes where items left.
    QVector<Slot> m_order;
    int m_holes;
    // Chunks with room for one more settled item, the last one filled first.
    QVector<Chunk*> m_roomyChunks;
    int m_chunkCount;
    // Settled items waiting to be deleted, each with its chunk; sorted in
    // rising order of address before the first goes, and deleted from the
    // end.
    struct Disposal
    {
        QGraphicsItem* item;
        Chunk* chunk;
    };
    QVector<Disposal> m_disposals;
    bool m_disposalsSorted = true;
    QTimer m_disposalTimer;
    QSet<QGraphicsItem*> m_unplaced;
    QSet<QGraphicsItem*> m_foreign;
    // The registered items Qt walks: live and foreign ones.
    QSet<QGraphicsItem*> m_topLevel;
    QSet<const ODShape*> m_liveShapes;
    bool m_enabled;
    bool m_everyItemKnown;
    bool m_everyItemTopLevel;
    int m_minimumItemCount;

    // The whole picture and what it was rendered for.
    struct Whole
    {
        const QWidget* viewport = nullptr;
        QTransform transform;
        QSize size;
        int renderHints = 0;
        bool valid = false;
        QImage background;
        QImage picture;
    } m_whole;
    // Items that may paint otherwise than in the whole picture, and the area
    // where items that have left painted in it.
    QSet<QGraphicsItem*> m_changed;
    QRegion m_leftArea;
    ExtentGrid m_grid;
    // Where the changed area is painted afresh, and where the background is
    // painted for the comparison; both kept between paints.
    QImage m_scratch;
    QImage m_probe;
    // Whether the viewport's own opaque fill covers the probe, and with it
    // every picture painted over that background.
    bool m_probeOpaque = false;
    int m_picturesRendered;
};
