#pragma once

#include <QPointF>
#include <QRectF>
#include <QVector>
#include <Qt>

// What the circle and the arc share: a centre and a radius that every handle
// sets, the square around them, and the reference rule that number 0 (the body
// move) writes the centre and any number above 0 the radius.
namespace RoundShape {

// The reference slots both classes start with.
enum Slot { CenterX = 0, CenterY = 1, Radius = 2 };

// The square of side 2 * radius centred on centre (scene coordinates),
// normalised, so that a negative radius set by a host draws and places its
// handles like the positive one.
QRectF boundingSquare(const QPointF& centre, double radius);

// The row of the ownership table that handle number writes: 0 the centre, 1
// the radius (every number above 0), -1 none (a negative number).
int ownerOf(int number);

// The cursors by handle number: 1 and 3 vertical, 2 and 4 horizontal. The arc
// has the same table, though it has two handles.
const QVector<Qt::CursorShape>& handleCursors();

} // namespace RoundShape
