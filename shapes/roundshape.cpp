#include "roundshape.h"

#include "geometryhelpers.h"

namespace RoundShape {

QRectF boundingSquare(const QPointF& centre, double radius)
{
    QRectF r(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    AdjustRect(r);
    return r;
}

int ownerOf(int number)
{
    if (number < 0)
        return -1;
    return number == 0 ? 0 : 1;
}

const QVector<Qt::CursorShape>& handleCursors()
{
    static const QVector<Qt::CursorShape> cursors = {Qt::ArrowCursor, Qt::SizeVerCursor, Qt::SizeHorCursor,
                                                     Qt::SizeVerCursor, Qt::SizeHorCursor};
    return cursors;
}

} // namespace RoundShape
