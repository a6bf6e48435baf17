#pragma once

#include "vorimagewnd_global.h"

#include <QLine>
#include <QPainterPath>
#include <QRectF>

// Search lines: a row of parallel arrows across a rectangle, which show the
// direction in which a host's algorithm searches. Display only.
namespace SearchLine {

// More arrows than this cannot be told apart on any screen; a host's count
// beyond it draws this many, so that a wild count cannot hang a paint.
constexpr int kMaximumLines = 65536;

// The arrows across rect (normalised first) in one of the directions 0 to 3,
// count of them including the two on the edges; fewer than 2, or another
// direction, give the empty path. Coordinates are truncated to whole units.
KESIMAGEWND_TESTS_EXPORT QPainterPath GenSearchlines(const QRectF& rect, int direction, int count);

// One arrow from the line's first point to its second, with a head of one
// fifteenth of its length and wings 0.25 radian off the line.
KESIMAGEWND_TESTS_EXPORT QPainterPath GenSearchlineItem(QLine line);

} // namespace SearchLine
