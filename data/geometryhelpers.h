#pragma once

#include "vorimagewnd_global.h"

#include <QPointF>
#include <QRectF>

class QImage;

// Stateless helpers that all shape and layer code shares. Several work in
// single precision on purpose, with the float 3.141592 for pi: shapes and the
// values read back by hosts depend on those exact last places.

// Brings an angle in degrees into 0 .. 360, both ends possible: -30 gives 330,
// -360 gives 0, -720 gives 360, 390 gives 30.
KESIMAGEWND_EXPORT float ConvertAngle(float angle);

// Euclidean distance in double, rounded to float.
KESIMAGEWND_EXPORT float Distance(QPointF a, QPointF b);

// Direction of a as seen from b in degrees 0 .. 360, counter-clockwise on a
// screen whose y axis points down: east 0, north 90, west 180, south 270. A
// height difference of less than one pixel counts as level.
KESIMAGEWND_EXPORT float CalculateAngle(QPointF a, QPointF b);

// Swaps the coordinates so that the rectangle has a non-negative width and
// height and the same corners.
KESIMAGEWND_EXPORT void AdjustRect(QRectF& rect);

// Turns point about center by angle degrees, clockwise on a y-down screen. An
// angle of size up to 0.000001 returns the point unchanged.
KESIMAGEWND_EXPORT QPointF RotatePoint(QPointF point, QPointF center, float angle);

// False for null, or a width or height of 0.
KESIMAGEWND_EXPORT bool IsValidQImage(QImage* image);

// The button number of one push-button flag bit. A word that is not exactly one
// of the bits in the table gives kUnknownButtonIndex.
KESIMAGEWND_EXPORT int convertToButtonIndex(long flag);
constexpr int kUnknownButtonIndex = -1;
