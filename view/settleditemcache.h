#pragma once

#include "kesimagewnd_export.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QRect>
#include <QRectF>
#include <QRegion>
#include <QSet>
#include <QTransform>
#include <QVector>

class ImageCtrlView;
class ODShape;
class QGraphicsItem;
class QGraphicsScene;
class QPainter;
class QWidget;

// Keeps the items of the shapes nobody is editing out of Qt's walk over the
// scene on every paint, hit test and hover. Qt stacks the scene's items by z
// value, then by the order they entered the scene; every item of a shape, a
// text or an item region is registered here as it enters, so this class knows
// that order too. The live slice is the shortest run of it that holds every
// item of the live shapes (selected, or kept by a tool between events) and
// every item of a text or a region: those are ordinary top-level items, which
// Qt paints, hits and hovers as before. Every other item is a child of a
// holder that Qt skips whole, and two painter items paint them, one for the
// run below the slice and one for the run above it, each from a picture of
// its run rendered once per view transform. Painting the lower picture, the
// slice and the upper picture gives the pixels of painting every item in turn,
// so the pictures must be dropped whenever one of their items may show
// otherwise: a settled shape says so through shapeChanged().
class KESIMAGEWND_TESTS_EXPORT SettledItemCache
{
public:
    explicit SettledItemCache(QGraphicsScene* scene);
    // Leaves the holder, the painters and every item to the scene, which
    // deletes them.
    ~SettledItemCache();

    SettledItemCache(const SettledItemCache&) = delete;
    SettledItemCache& operator=(const SettledItemCache&) = delete;

    // The cache of the scene of a window, null for any other scene.
    static SettledItemCache* of(QGraphicsScene* scene);

    // A shape's item that has just entered the scene: it is stacked after
    // every item registered before it, and settles.
    void addShapeItem(QGraphicsItem* item);
    // A text's or a region's item that has just entered the scene: it is
    // stacked like a shape's item and always stays live, since those change
    // without telling anyone.
    void addForeignItem(QGraphicsItem* item);
    // An item about to leave the scene.
    void removeItem(QGraphicsItem* item);
    // The items of shape may show otherwise now.
    void shapeChanged(const ODShape* shape);
    // A registered item's z value changed, or is about to.
    void stackingChanged();

    // Before anything paints the scene: the live slice is made to hold the
    // items of live shapes, and the order is brought up to date. Cheap when
    // neither changed since the last call.
    void prepare(const QList<ODShape*>& liveShapes);

    // Disabled, every registered item is an ordinary top-level item that Qt
    // paints itself, as if there were no cache: the form the pictures must
    // equal. Takes effect at the next prepare().
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_enabled; }

    // Items registered, and how many of them Qt walks on a paint now.
    int itemCount() const { return m_seq.size(); }
    int liveItemCount() const { return m_slice.size(); }
    // How often a run's picture was rendered since the cache was made.
    int picturesRendered() const { return m_picturesRendered; }

    // Used by the painters: paints the run below (or above) the live slice
    // with the painter's current transform, from the picture when painting a
    // view's viewport.
    enum class Run { Below, Above };
    void paintRun(Run run, QPainter* painter, QWidget* widget);

private:
    class Painter;
    struct Entry
    {
        quint64 seq;  // order of entering the scene
        int index;    // place in m_order, -1 before the first ordering
    };
    // The pictures of one viewport at one view transform, in device pixels,
    // every one opaque: they are painted as the view paints, over the
    // viewport's background, so that copying one gives exactly the pixels
    // that painting its items in turn would.
    struct Pictures
    {
        const QWidget* viewport = nullptr;
        QTransform transform;
        QSize size;
        int renderHints = 0;
        bool valid = false;
        // The viewport's fill and the view's background.
        QImage background;
        // The background, then the run below the slice.
        QImage below;
        // The below picture, then the slice as it was then, then the run above.
        QImage whole;
        // Where the slice painted in whole, and where each item of the run
        // above paints, with a margin for antialiasing.
        QRegion sliceThen;
        QVector<QRect> aboveExtents;
    };

    void dropPictures();
    void ensureOrder();
    void resplit(const QSet<QGraphicsItem*>& liveItems);
    void paintItems(QPainter* painter, int begin, int end, QWidget* widget) const;
    void paintItem(QPainter* painter, QGraphicsItem* item, QWidget* widget) const;
    // The pictures for a paint of view's viewport with painter's transform,
    // rendered again when anything they show may differ.
    void ensurePictures(QPainter* painter, ImageCtrlView* view);
    QRegion sliceExtent(const QTransform& transform) const;
    void runBounds(Run run, int& begin, int& end) const;
    QRectF runExtent(Run run) const;

    QGraphicsScene* m_scene;
    QGraphicsItem* m_holder;
    Painter* m_below;
    Painter* m_above;
    // The order of entering the scene of every registered item, and which of
    // them are foreign (texts and regions).
    QHash<QGraphicsItem*, Entry> m_seq;
    QSet<QGraphicsItem*> m_foreign;
    quint64 m_nextSeq;
    // Every registered item in stacking order, valid while !m_orderDirty.
    QVector<QGraphicsItem*> m_order;
    bool m_orderDirty;
    // The top-level items: m_order[m_sliceBegin, m_sliceEnd).
    QVector<QGraphicsItem*> m_slice;
    int m_sliceBegin;
    int m_sliceEnd;
    // The live shapes the slice was made for.
    QSet<QGraphicsItem*> m_liveItems;
    QSet<const ODShape*> m_liveShapes;
    Pictures m_pictures;
    // Where the upper painter repaints the slice's area, kept between paints.
    QImage m_scratch;
    int m_picturesRendered;
    bool m_enabled;
};
