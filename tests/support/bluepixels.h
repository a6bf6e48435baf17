#pragma once

// Pixel read-back for handle painting: a view is brought to a zoom with a scene
// point in its middle, its viewport is grabbed, and the pixels of one exact
// colour are counted in a window around a viewport position.

#include <QApplication>
#include <QGraphicsView>
#include <QImage>
#include <QRect>
#include <QRgb>

namespace BluePixels {

// The blue of every handle brush.
constexpr QRgb kHandleBlue = 0xff0000ff;

struct Blob
{
    int count = 0;  // pixels of exactly the colour
    QRect bounds;   // their bounding box, empty for none
};

inline bool isColour(const QImage& image, int x, int y, QRgb colour = kHandleBlue)
{
    return image.pixel(x, y) == colour;
}

// Pixels of exactly colour inside window (clipped to the image).
inline Blob findColour(const QImage& image, const QRect& window, QRgb colour = kHandleBlue)
{
    Blob blob;
    const QRect area = window.intersected(image.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) == colour) {
                ++blob.count;
                blob.bounds = blob.bounds.isNull() ? QRect(x, y, 1, 1) : blob.bounds.united(QRect(x, y, 1, 1));
            }
        }
    }
    return blob;
}

// A square window of the given half size around a viewport position.
inline QRect around(const QPoint& centre, int halfSize)
{
    return QRect(centre.x() - halfSize, centre.y() - halfSize, 2 * halfSize + 1, 2 * halfSize + 1);
}

// The viewport as it is painted now, in viewport pixels (those of mapFromScene).
inline QImage grabViewport(QGraphicsView* view)
{
    QApplication::processEvents();
    return view->viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

// True when the scene point lands on a whole viewport pixel position, so that a
// square of whole device pixels around it is painted without partial edges.
inline bool mapsToWholePixel(QGraphicsView* view, const QPointF& scenePoint)
{
    const QPointF exact = view->viewportTransform().map(scenePoint);
    return exact == QPointF(exact.toPoint());
}

} // namespace BluePixels
