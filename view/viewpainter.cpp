#include "viewpainter.h"

#include "ForeLayer.h"

#include <QPainter>
#include <QPen>

#include <climits>

namespace {

// Coordinates beyond this lie far off any screen; lines are cut there so that
// values a host sets at will cannot overflow.
constexpr qint64 kFarOff = 1 << 24;

void drawClampedLine(QPainter* painter, qint64 x1, qint64 y1, qint64 x2, qint64 y2)
{
    painter->drawLine(int(qBound(-kFarOff, x1, kFarOff)), int(qBound(-kFarOff, y1, kFarOff)),
                      int(qBound(-kFarOff, x2, kFarOff)), int(qBound(-kFarOff, y2, kFarOff)));
}

} // namespace

QMatrix ViewPainter::viewMatrix(double scale)
{
    QMatrix matrix;
    matrix.scale(scale, scale);
    matrix.rotate(0.0);
    return matrix;
}

void ViewPainter::paintForeground(QPainter* painter, ForeLayer* fore, const GridLook* grid, CrossLook* cross,
                                  const QRect& viewportRect, const QRect& pictureOnScreen)
{
    if (fore) {
        painter->save();
        painter->resetTransform();
        fore->paint(painter);
        painter->restore();
    }
    if (grid)
        paintGrid(painter, *grid, viewportRect);
    if (cross)
        cross->centre = paintCrossLine(painter, *cross, viewportRect, pictureOnScreen);
}

void ViewPainter::paintGrid(QPainter* painter, const GridLook& grid, const QRect& viewportRect)
{
    const int gap = grid.gap;
    // A gap of 0 or below cannot be stepped: nothing is painted.
    if (gap <= 0)
        return;
    painter->save();
    painter->resetTransform();
    painter->setRenderHint(QPainter::Antialiasing, false);
    QPen pen(grid.colour);
    pen.setWidth(grid.lineWidth);
    pen.setCosmetic(true);
    painter->setPen(pen);
    const QRect& r = viewportRect;
    const int x0 = r.left() + (gap - r.left() % gap);
    const int y0 = r.top() + (gap - r.top() % gap);
    for (qint64 x = x0; x <= r.right(); x += gap)
        painter->drawLine(int(x), r.top(), int(x), r.bottom());
    for (qint64 y = y0; y <= r.bottom(); y += gap)
        painter->drawLine(r.left(), int(y), r.right(), int(y));
    painter->restore();
}

QPoint ViewPainter::paintCrossLine(QPainter* painter, const CrossLook& cross, const QRect& viewportRect,
                                   const QRect& pictureOnScreen)
{
    painter->save();
    painter->resetTransform();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setBrush(Qt::NoBrush);

    QPoint c = cross.centre;
    qint64 left = 0, top = 0, right = 0, bottom = 0;
    QRect r;
    if (cross.pictureMode) {
        // The reticle stays on the picture as it lies on the screen; the
        // bounded point is kept by the caller.
        r = pictureOnScreen;
        c.setX(qBound(r.left(), c.x(), r.right()));
        c.setY(qBound(r.top(), c.y(), r.bottom()));
        left = r.left();
        right = r.right();
        top = r.top();
        bottom = r.bottom();
    } else {
        r = viewportRect;
        right = r.width();
        bottom = r.height();
    }
    const qint64 cx = c.x();
    const qint64 cy = c.y();
    const qint64 R = cross.radius;
    const qint64 E = cross.emphasisLength;
    const int W = cross.lineWidth;

    // A radius wider than half the viewport makes the thin arms run backward.
    QPen thin(QBrush(cross.colour, Qt::SolidPattern), W, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    thin.setCosmetic(true);
    painter->setPen(thin);
    drawClampedLine(painter, left, cy, cx - R, cy);
    drawClampedLine(painter, cx + R, cy, right, cy);
    drawClampedLine(painter, cx, top, cx, cy - R);
    drawClampedLine(painter, cx, cy + R, cx, bottom);

    // The emphasis colour is kept and reported; the stubs use the line colour.
    QPen thick(QBrush(cross.colour, Qt::SolidPattern), W < INT_MAX ? W + 1 : W, Qt::SolidLine, Qt::SquareCap,
               Qt::BevelJoin);
    thick.setCosmetic(true);
    painter->setPen(thick);
    if (!cross.pictureMode) {
        drawClampedLine(painter, cx - R, cy, cx - R - E, cy);
        drawClampedLine(painter, cx + R, cy, cx + R + E, cy);
        drawClampedLine(painter, cx, cy - R, cx, cy - R - E);
        drawClampedLine(painter, cx, cy + R, cx, cy + R + E);
    } else {
        // Each stub stays inside the picture; one whose inner end lies outside
        // is left out.
        if (r.left() < cx - R)
            drawClampedLine(painter, cx - R, cy, qMax<qint64>(r.left(), cx - R - E), cy);
        if (cx + R < r.right())
            drawClampedLine(painter, cx + R, cy, qMin<qint64>(r.right(), cx + R + E), cy);
        if (r.top() < cy - R)
            drawClampedLine(painter, cx, cy - R, cx, qMax<qint64>(r.top(), cy - R - E));
        if (cy + R < r.bottom())
            drawClampedLine(painter, cx, cy + R, cx, qMin<qint64>(r.bottom(), cy + R + E));
    }

    QPen circle = thick;
    circle.setCosmetic(false);
    painter->setPen(circle);
    const qreal radius = qreal(qBound(-kFarOff, R, kFarOff));
    painter->drawEllipse(QPointF(c), radius, radius);
    painter->restore();
    return c;
}
