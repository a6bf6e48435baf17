#pragma once

#include <QBrush>
#include <QCursor>
#include <QMap>
#include <QPointF>
#include <QRectF>

class QPainter;

// What the handle items share: painting handles at a fixed screen size, and
// finding the handle under the mouse while it hovers.
namespace HandleItemPaint {

// Paints every handle of the map, keys 0 upward, as a filled 6 by 6
// device-pixel square centred on the handle's position, in brush and without
// outline; the key roundKey is filled as a disc instead. Each handle drops the
// zoom from the painter's matrix and keeps the position, so the painter is
// left in device units; the caller restores the matrix if it draws on.
void paintHandles(QPainter* painter, const QMap<int, QRectF>& handles, const QBrush& brush, int roundKey = -1);

// The number (key + 1) of the first handle, keys from 0, whose rectangle,
// moved by offset, contains scenePos; 0 for none.
int handleNumberAt(const QMap<int, QRectF>& handles, const QPointF& scenePos, const QPointF& offset = QPointF());

// Hover cursors of the rectangle handles: 1 and 5 diagonal down, 3 and 7
// diagonal up, 2 and 6 vertical, 4 and 8 horizontal, 9 cross; else arrow.
Qt::CursorShape rectangleCursor(int number);

} // namespace HandleItemPaint
