#include "handleitempaint.h"

#include <QMatrix>
#include <QPainter>
#include <QPainterPath>

namespace HandleItemPaint {

void paintHandles(QPainter* painter, const QMap<int, QRectF>& handles, const QBrush& brush, int roundKey)
{
    const QMatrix m = painter->matrix();
    for (int i = 0; i < handles.size(); ++i) {
        const QPointF c = handles.value(i).center();
        // m12 serves in both lines and m21 in neither; the view never turns or
        // shears, so this is the plain mapping of the centre to the device.
        const double x = m.m11() * c.x() + m.m12() * c.y() + m.dx();
        const double y = m.m22() * c.y() + m.m12() * c.x() + m.dy();
        const QMatrix unscaled(1.0, m.m12(), m.m21(), 1.0, x - c.x(), y - c.y());
        painter->setMatrix(unscaled, false);
        const QRectF square(c.x() - 3, c.y() - 3, 6, 6);
        if (i == roundKey) {
            QPainterPath disc;
            disc.addRoundRect(square, 100);
            painter->fillPath(disc, brush);
        } else {
            painter->fillRect(square, brush);
        }
    }
}

int handleNumberAt(const QMap<int, QRectF>& handles, const QPointF& scenePos, const QPointF& offset)
{
    for (int i = 0; i < handles.size(); ++i) {
        if (handles.value(i).translated(offset).contains(scenePos))
            return i + 1;
    }
    return 0;
}

Qt::CursorShape rectangleCursor(int number)
{
    switch (number) {
    case 1:
    case 5: return Qt::SizeFDiagCursor;
    case 2:
    case 6: return Qt::SizeVerCursor;
    case 3:
    case 7: return Qt::SizeBDiagCursor;
    case 4:
    case 8: return Qt::SizeHorCursor;
    case 9: return Qt::CrossCursor;
    default: return Qt::ArrowCursor;
    }
}

} // namespace HandleItemPaint
