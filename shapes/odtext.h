#pragma once

#include "kesimagewnd_export.h"

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QString>

class QGraphicsPathItem;
class QGraphicsScene;
class QGraphicsTextItem;

// A text on the scene. It is no shape: layers keep texts in lists of their
// own, and a text has no handles to drag. It shares the id counter of the
// shapes and their idea of a reference position (Pos, what the host reads
// back) and a current one (where the item stands): ShowText puts the item at
// the reference, and MoveTo moves both by a difference. Positions are scene
// coordinates, the item's top left; the font size is in points on the scene,
// so the text scales with the zoom.
//
// The text owns its two items and takes them out of the scene when it goes,
// telling every ODShapeWatcher. Once its scene is gone, so are the items, and
// the text touches them no more.
class KESIMAGEWND_TESTS_EXPORT ODText
{
public:
    // The scene is an ImageCtrlScene, whose pen colour the text takes; any
    // other scene leaves it green.
    explicit ODText(QGraphicsScene* scene);
    // The item's position at point; the reference stays at (0, 0).
    ODText(QGraphicsScene* scene, QPointF point);
    ~ODText();

    ODText(const ODText&) = delete;
    ODText& operator=(const ODText&) = delete;

    // True when point (scene coordinates) lies in the item's scene rectangle,
    // without tolerance.
    bool HitTest(QPointF point);
    // The reference position, colour, font and text onto the item.
    void ShowText();
    // Empties the item's text; the text itself is kept.
    void HideText();
    // A text shows no handles: nothing to do.
    void ShowHandle();
    void HideHandle();
    // A relative move despite the name: delta (scene units) moves the current
    // position and the reference with it.
    void MoveTo(QPointF delta);
    void UpdateOrgData();
    void UpdateCurData();
    // A 6 by 6 rectangle centred on p, whatever the scale.
    QRectF MakeElpHandle(const QPointF& p) const;
    void setZValue(long z);

    long GetID() const { return m_id; }
    void SetColor(QColor color) { m_color = color; }
    QColor GetColor() const { return m_color; }
    void SetMoveEnable(bool enable) { m_moveEnable = enable; }
    bool MoveEnable() const { return m_moveEnable; }
    void SetFont(QFont font) { m_font = font; }
    QFont GetFont() const { return m_font; }
    // The reference position.
    void SetPos(QPointF pos) { m_orgPos = pos; }
    QPointF Pos() const { return m_orgPos; }
    QPointF curPos() const { return m_curPos; }
    // Stored only.
    void SetOffset(float x, float y);
    void GetOffset(float& x, float& y) const;
    void SetScale(float scale) { m_scale = scale; }
    float GetScale() const { return m_scale; }
    void SetText(QString text) { m_text = text; }
    QString Text() const { return m_text; }
    bool isOverlay() const { return m_isOverlay; }
    void setIsOverlay(bool overlay) { m_isOverlay = overlay; }
    // Whether the host lets the operator move the text.
    bool IsMovable() const { return m_movable; }
    void SetMovable(bool movable) { m_movable = movable; }

    // Null once the scene is gone.
    QGraphicsScene* getScene() const { return m_scene; }
    QGraphicsTextItem* textItem() const;
    QGraphicsPathItem* handleItem() const;

private:
    // False once the scene, and with it the items, are gone.
    bool hasItems() const { return !m_scene.isNull(); }

    QPointer<QGraphicsScene> m_scene;
    QGraphicsTextItem* m_textItem;
    QGraphicsPathItem* m_handleItem;
    long m_id;
    QColor m_color;
    bool m_moveEnable;
    QFont m_font;
    QPointF m_orgPos;
    QPointF m_curPos;
    float m_offsetX;
    float m_offsetY;
    float m_scale;
    QString m_text;
    bool m_isOverlay;
    bool m_movable;
};
