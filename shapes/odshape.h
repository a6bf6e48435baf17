#pragma once

#include "vorimagewnd_global.h"

#include <QBrush>
#include <QColor>
#include <QMap>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QVector>

#include <array>
#include <cstddef>
#include <initializer_list>

class QGraphicsItem;
class QGraphicsPathItem;
class QGraphicsScene;
class SettledItemCache;
class ShaperLayer;

// The base of every editable shape. A shape keeps its geometry twice: the
// reference parameters in m_orgData, which the host reads back, and the current
// geometry in fields of the subclass, which the items are drawn from. A drag
// edits the current geometry through MoveHandleTo or MoveShape, and each of
// those copies just the slots it owns back with UpdateOrgData; ShowShape
// reloads the current geometry from the reference (UpdateCurData) and
// normalises it for display; AdjustParameter makes the reference canonical at
// the end of a handle drag. Handles are rectangles keyed from 0; HitTest with
// handles reports the key plus 1, the number that MoveHandleTo takes.
//
// All coordinates are scene coordinates, image pixels with y down. A shape
// owns its graphics items: it creates them, adds them to the scene, and
// removes and deletes them in its destructor, which also tells every
// ODShapeWatcher. A class adds its items, its slot enum with a table of the
// slots each handle owns, and its geometry; the protected helpers carry the
// rest of the protocol.
class KESIMAGEWND_TESTS_EXPORT ODShape
{
public:
    // One counter for the process, shared with texts, regions and static
    // records; never reset, so ids are never reused.
    static long s_ID;
    // Takes the next id. The worker's static records take ids too, so the
    // counter is stepped atomically.
    static long NextID();

    ODShape(QGraphicsScene* scene, DrawMode mode);
    virtual ~ODShape();

    ODShape(const ODShape&) = delete;
    ODShape& operator=(const ODShape&) = delete;

    // Fills m_handles from the current geometry, each rectangle made by
    // MakeElpHandle, keys from 0 in the class's order.
    virtual void UpdateHandles() = 0;
    // Reloads the current geometry from the reference (UpdateCurData), puts
    // pen, brush and geometry into the display items, normalised for display;
    // the reference stays as it is.
    virtual void ShowShape() = 0;
    // Gives every display item empty geometry; the items stay in the scene and
    // the handles are left alone.
    virtual void HideShape() = 0;
    // Marks the handles as shown, updates them and sets the handle item's pen
    // and path (the squares of m_handles). An override keeps those steps and
    // adds the class's own: its extent path, z value and handle map.
    virtual void ShowHandle();
    // Marks the handles as hidden and empties the handle item's path. An
    // override hides in its class's way.
    virtual void HideHandle();
    // handles false: 1 when the point (scene coordinates) is on the body, else
    // 0; the body test carries the class's tolerance. handles true: the number
    // (key + 1) of the first handle that contains the point, else 0. The base
    // finds nothing.
    virtual int HitTest(QPointF point, bool handles);
    // Every scene point where HitTest, with or without handles, may find the
    // shape lies inside. The base unites the bounding rectangles of the items,
    // in scene and in item coordinates (some classes hand a scene point to an
    // item unmapped), and the handles. A class whose HitTest reads its own
    // geometry rather than its items also unites the reach of that test.
    virtual QRectF hitReach() const;
    // hitReach(), computed again after anything that may move it.
    QRectF cachedHitReach() const;
    void hitReachMayHaveChanged() { m_hitReachStale = true; }
    // Moves handle number (key + 1) to pos (scene coordinates) in the current
    // geometry, then calls UpdateOrgData(number), also for a number outside the
    // class's range, which moves nothing.
    virtual void MoveHandleTo(int number, const QPointF& pos) = 0;
    // Adds delta, the mouse's move since the last position in scene units, to
    // the current geometry and stores every position slot in the reference.
    virtual void MoveShape(const QPointF& delta) = 0;
    // Copies the slots that handle number owns from the current geometry to
    // the reference; a fresh reference (not the class's slot count) is rebuilt
    // from all of the current geometry whatever the number. See storeOrgData.
    virtual void UpdateOrgData(int number) = 0;
    // Copies every reference slot to the current geometry when the reference
    // holds the class's slot count; does nothing otherwise.
    virtual void UpdateCurData() = 0;
    // Makes the reference canonical at the end of a handle drag (not after a
    // body move). The base updates the handles.
    virtual void AdjustParameter();
    // Sets the cursor of the handle under point (scene coordinates) on the
    // view's viewport while handles are shown, else the arrow. The base sets
    // the arrow on the view itself.
    virtual void setHandleCursor(QPointF point);

    long GetShapeID() const { return m_id; }
    DrawMode GetDrawMode() const { return m_drawMode; }
    void setDrawMode(DrawMode mode) { m_drawMode = mode; }

    void SetPenColor(QColor color) { m_penColor = color; shownStateChanged(); }
    QColor GetPenColor() const { return m_penColor; }
    void SetBrushColor(QColor color) { m_brushColor = color; shownStateChanged(); }
    QColor GetBrushColor() const { return m_brushColor; }
    void SetLineWidth(float width) { m_lineWidth = width; shownStateChanged(); }
    float GetLineWidth() const { return m_lineWidth; }
    void SetOffset(float x, float y);
    void GetOffset(float& x, float& y) const;
    // The view scale, read by handleScale() alone. A shape in a layer tells
    // the layer, which keeps the scales of its shapes current.
    void SetScale(float scale);
    float GetScale() const { return m_scale; }

    const QVector<double>& orgData() const { return m_orgData; }
    const QMap<int, QRectF>& handles() const { return m_handles; }
    QGraphicsPathItem* handleItem() const { return m_handleItem; }
    // Every graphics item of the shape, in the order the shape made them.
    const QVector<QGraphicsItem*>& graphicsItems() const { return m_items; }
    // For a shape about to be deleted whose items someone else deletes (a
    // layer that is emptied hands them to the window, which deletes them in
    // one go): the shape forgets its items and its destructor leaves them.
    void disownItems();

    QGraphicsScene* getSence() const { return m_scene; }
    bool isVisiblehandleMark() const { return m_isVisiblehandleMark; }
    void setIsVisiblehandleMark(bool visible) { m_isVisiblehandleMark = visible; }
    ShaperLayer* shaperLayer() const { return m_shaperLayer; }
    void setShapeLayer(ShaperLayer* layer) { m_shaperLayer = layer; }
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; shownStateChanged(); }
    bool isMovable() const { return m_movable; }
    void setMovable(bool movable) { m_movable = movable; }
    bool isSelectble() const { return m_selectble; }
    void setSelectble(bool selectable) { m_selectble = selectable; }
    bool isOverlay() const { return m_overlay; }
    void setIsOverlay(bool overlay) { m_overlay = overlay; shownStateChanged(); }

    // Tells the shape's layer that what ShowShape would put into the items
    // may differ from what they show. Every operation that changes the
    // reference, the current geometry or the look calls it first.
    void shownStateChanged();

    // Whether the drawing tool throws the shape away at the release. Called
    // through the drawn class, whose own rule hides this one: every class
    // without a rule keeps its shape, however small.
    bool isTooSmallToKeep() const { return false; }

    // Handles keep their screen size when zoomed out and their scene size when
    // zoomed in: 1 / scale above 1, else 1.
    float handleScale() const;
    // A handle rectangle of 6 by 6 handle units centred on p.
    QRectF MakeElpHandle(const QPointF& p) const;

protected:
    // The smallest side, in whole pixels, of a rectangle the operator draws.
    static constexpr int kMinimumDrawnSide = 2;

    // Bit i stands for reference slot i.
    using SlotMask = unsigned;
    static constexpr SlotMask slotBit(int slot) { return 1u << slot; }
    // What GetParam needs: exactly the class's slot count, or at least it.
    enum class SlotRule { Exactly, AtLeast };

    // The reference/current rule of every class. current is the current
    // geometry in slot order, and ownership[n] the slots that handle number n
    // owns (numbers beyond the table own none). A reference without exactly
    // current.size() slots is fresh and is rebuilt from all of current,
    // whatever the number; otherwise only the owned slots are written.
    template <std::size_t N>
    void storeOrgData(int number, std::initializer_list<double> current, const std::array<SlotMask, N>& ownership)
    {
        storeOrgData(number, current, ownership.data(), int(N));
    }
    void storeOrgData(int number, std::initializer_list<double> current, const SlotMask* ownership, int numbers);
    // True when the reference holds the class's slot count, the one test before
    // UpdateCurData copies anything.
    bool hasOrgData(int slotCount) const { return m_orgData.size() == slotCount; }
    // GetParam's reading: when the reference satisfies the rule for
    // outputs.size() slots, each non-null output gets its slot and the result
    // is true; otherwise nothing is written and the result is false.
    bool readOrgData(std::initializer_list<double*> outputs, SlotRule rule = SlotRule::Exactly) const;

    // m_handles anew: key i a handle made by MakeElpHandle at points[i]
    // (scene coordinates).
    void setHandles(const QVector<QPointF>& points);
    // The first steps of every ShowHandle: handles marked as shown, a cosmetic
    // pen of the shape's colour on the handle item, handles updated.
    void beginShowHandle();
    // Takes a handle item of the class: the handle blue brush, into the scene,
    // kept in m_handleItem and deleted by the base destructor.
    void adoptHandleItem(QGraphicsPathItem* item);
    // Every display item a class makes passes through here as it enters the
    // scene, so that the window knows the item's place in the stacking
    // order and which shape it shows: m_items = scene->addPath(...) becomes
    // m_items = own(scene->addPath(...)).
    template <class Item>
    Item* own(Item* item)
    {
        ownItem(item);
        return item;
    }
    // The same z value for the handle item and every display item.
    void setItemsZValue(long z, std::initializer_list<QGraphicsItem*> displayItems);
    // Every z value of a shape's item is set here, so that the window
    // restacks the item in its cache.
    void setItemZValue(QGraphicsItem* item, qreal z);
    // For the classes whose handle item paints from a map: the handle item
    // stands above the main display item (its z value plus 1) and gets a copy
    // of m_handles.
    void raiseHandlesAbove(qreal mainZValue);
    // Takes items out of their scene and deletes them; null entries are
    // skipped, and so is every item once the shape has disowned its items.
    void deleteItems(std::initializer_list<QGraphicsItem*> items);
    // The number of the first handle that contains point, walking keys from 0.
    int hitHandle(const QPointF& point) const;
    // The working pen with this shape's colour and truncated width.
    const QPen& currentPen();
    // The solid brush of this shape's brush colour, as every filled item gets it.
    QBrush solidBrush() const { return QBrush(m_brushColor, Qt::SolidPattern); }
    // Cursor of the view's viewport for a handle number, by a table of the
    // subclass (index = number; number 0 and beyond the table: arrow).
    void setViewportCursor(QPointF point, const QVector<Qt::CursorShape>& cursorByNumber);

    long m_id;
    DrawMode m_drawMode;
    QPen m_pen;
    QColor m_penColor;
    QColor m_brushColor;
    float m_lineWidth;
    QBrush m_brush;
    QVector<double> m_orgData;
    float m_offsetX;
    float m_offsetY;
    float m_scale;
    QMap<int, QRectF> m_handles;
    QGraphicsPathItem* m_handleItem;
    QGraphicsScene* m_scene;
    // The window's cache of settled items, null on any other scene.
    SettledItemCache* m_itemCache;
    QVector<QGraphicsItem*> m_items;
    bool m_isVisiblehandleMark;
    ShaperLayer* m_shaperLayer;
    bool m_visible;
    bool m_movable;
    bool m_selectble;
    bool m_overlay;

private:
    void ownItem(QGraphicsItem* item);

    mutable QRectF m_hitReach;
    mutable bool m_hitReachStale = true;
    bool m_itemsDisowned = false;
};
