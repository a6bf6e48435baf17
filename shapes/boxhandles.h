#pragma once

#include <QMap>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QVector>

// The handles that the box shapes share: the axis-parallel rectangle, the
// rotated rectangle and the ellipse put eight handles on a box (its corners and
// the middles of its edges) and the turned ones a ninth, the rotation handle,
// above the top edge. Positions come out in the shape's own unturned frame, in
// scene units; a turned shape carries them into the scene itself.
namespace BoxHandles {

// Keys of m_handles, in their order around the box.
enum Key {
    TopLeft = 0,
    TopCentre = 1,
    TopRight = 2,
    RightCentre = 3,
    BottomRight = 4,
    BottomCentre = 5,
    BottomLeft = 6,
    LeftCentre = 7,
    Rotation = 8,
};
constexpr int kBoxCount = 8;     // keys 0 to 7
constexpr int kTurnedCount = 9;  // with the rotation handle

// How far above the top edge, in handle units (see ODShape::handleScale), the
// rotation handle stands and the stem of the handle item's extent runs. The
// products with the scale are taken in float, as the scale is a float.
constexpr float kRotationLift = 10.0f;
constexpr float kStemNear = 3.0f;
constexpr float kStemFar = 7.0f;

// The eight box handles of box in key order; the edge middles lie on the lines
// through centre.
QVector<QPointF> boxPoints(const QRectF& box, const QPointF& centre);
// The eight box handles and the rotation handle, which stands at rotationX,
// kRotationLift handle units above the top edge.
QVector<QPointF> turnedBoxPoints(const QRectF& box, const QPointF& centre, double rotationX, float handleScale);
// One end of the stem at stemX, lift handle units above the top edge.
QPointF stemPoint(const QRectF& box, double stemX, float lift, float handleScale);

// How the rotation handle enters the handle item's extent.
enum class RotationShape { RoundRect, Ellipse };
// The extent of a turned box's handle item: the squares of keys 0 to 7, the
// rotation handle, and the stem between two scene points. It is never painted:
// Rect2HandleItem paints from the map.
QPainterPath turnedExtent(const QMap<int, QRectF>& handles, RotationShape rotation, const QPointF& stemFromScene,
                          const QPointF& stemToScene);

} // namespace BoxHandles
