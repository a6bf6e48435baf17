#pragma once

#include "vorimagewnd_global.h"

#include <QBrush>
#include <QColor>
#include <QMap>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QVector>

#include <initializer_list>

class QGraphicsItem;
class QGraphicsPathItem;
class QGraphicsScene;
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
// removes and deletes them in its destructor.
class KESIMAGEWND_TESTS_EXPORT ODShape
{
public:
    // One counter for the process, shared with texts, regions and static
    // records; never reset, so ids are never reused.
    static long s_ID;

    ODShape(QGraphicsScene* scene, DrawMode mode);
    virtual ~ODShape();

    ODShape(const ODShape&) = delete;
    ODShape& operator=(const ODShape&) = delete;

    virtual void UpdateHandles() = 0;
    virtual void ShowShape() = 0;
    virtual void HideShape() = 0;
    virtual void ShowHandle();
    virtual void HideHandle();
    // handles false: 1 when the point is on the body, else 0. handles true: the
    // number (key + 1) of the first handle that contains the point, else 0.
    virtual int HitTest(QPointF point, bool handles);
    virtual void MoveHandleTo(int number, const QPointF& pos) = 0;
    // delta: the mouse's move since the last position, in scene units.
    virtual void MoveShape(const QPointF& delta) = 0;
    virtual void UpdateOrgData(int number) = 0;
    virtual void UpdateCurData() = 0;
    virtual void AdjustParameter();
    // Sets the cursor for the handle under point (scene coordinates).
    virtual void setHandleCursor(QPointF point);

    long GetShapeID() const { return m_id; }
    DrawMode GetDrawMode() const { return m_drawMode; }
    void setDrawMode(DrawMode mode) { m_drawMode = mode; }

    void SetPenColor(QColor color) { m_penColor = color; }
    QColor GetPenColor() const { return m_penColor; }
    void SetBrushColor(QColor color) { m_brushColor = color; }
    QColor GetBrushColor() const { return m_brushColor; }
    void SetLineWidth(float width) { m_lineWidth = width; }
    float GetLineWidth() const { return m_lineWidth; }
    void SetOffset(float x, float y);
    void GetOffset(float& x, float& y) const;
    // The view scale, read by handleScale() alone.
    void SetScale(float scale) { m_scale = scale; }
    float GetScale() const { return m_scale; }

    const QVector<double>& orgData() const { return m_orgData; }
    const QMap<int, QRectF>& handles() const { return m_handles; }
    QGraphicsPathItem* handleItem() const { return m_handleItem; }

    QGraphicsScene* getSence() const { return m_scene; }
    bool isVisiblehandleMark() const { return m_isVisiblehandleMark; }
    void setIsVisiblehandleMark(bool visible) { m_isVisiblehandleMark = visible; }
    ShaperLayer* shaperLayer() const { return m_shaperLayer; }
    void setShapeLayer(ShaperLayer* layer) { m_shaperLayer = layer; }
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; }
    bool isMovable() const { return m_movable; }
    void setMovable(bool movable) { m_movable = movable; }
    bool isSelectble() const { return m_selectble; }
    void setSelectble(bool selectable) { m_selectble = selectable; }
    bool isOverlay() const { return m_overlay; }
    void setIsOverlay(bool overlay) { m_overlay = overlay; }

    // Handles keep their screen size when zoomed out and their scene size when
    // zoomed in: 1 / scale above 1, else 1.
    float handleScale() const;
    // A handle rectangle of 6 by 6 handle units centred on p.
    QRectF MakeElpHandle(const QPointF& p) const;

protected:
    // Takes items out of their scene and deletes them; null entries are skipped.
    static void deleteItems(std::initializer_list<QGraphicsItem*> items);
    // The number of the first handle that contains point, walking keys from 0.
    int hitHandle(const QPointF& point) const;
    // The working pen with this shape's colour and truncated width.
    const QPen& currentPen();
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
    bool m_isVisiblehandleMark;
    ShaperLayer* m_shaperLayer;
    bool m_visible;
    bool m_movable;
    bool m_selectble;
    bool m_overlay;
};
