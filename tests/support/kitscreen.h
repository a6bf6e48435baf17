#pragma once

// The screen as the operator sees it, against the window painted with no
// cached pictures: what a change of the painting must keep equal.

#include "kitpixels.h"

#include "imagectrlscene.h"
#include "settleditemcache.h"

#include <QDebug>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace Kit {

// The viewport as the backing store holds it now: what is on the screen,
// whatever earlier repaints left there.
inline QImage onScreen(QGraphicsView* view)
{
    flushPaints();
    QWidget* top = view->window();
    const QPoint origin = view->viewport()->mapTo(top, QPoint(0, 0));
    const QSize size = view->viewport()->size();
    QScreen* screen = top->windowHandle()->screen();
    return screen->grabWindow(top->winId(), origin.x(), origin.y(), size.width(), size.height())
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

// The number of pixels in which two pictures of one size differ by more than
// kChannelTolerance in a channel, -1 for pictures of different sizes: the
// screen and a render may convert colours on different paths.
inline int differingPixels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return -1;
    int count = 0;
    int most = 0;
    QRect box;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const int difference = channelDifference(a.pixel(x, y), b.pixel(x, y));
            if (difference > kChannelTolerance) {
                ++count;
                most = std::max(most, difference);
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    if (count > 0)
        qWarning() << count << "pixels differ, by up to" << most << "within" << box;
    return count;
}

inline SettledItemCache* settledItemsOf(QGraphicsView* view)
{
    return SettledItemCache::of(view->scene());
}

// The cache takes over however few items the window has, so that a test of a
// few shapes exercises it.
inline SettledItemCache* cacheEveryItem(QGraphicsView* view)
{
    SettledItemCache* cache = settledItemsOf(view);
    cache->setMinimumItemCount(0);
    return cache;
}

// The viewport painted with every item a top-level item that Qt paints
// itself, as with no cache; the cache is on again afterwards.
inline QImage grabViewportPaintingEveryItem(QGraphicsView* view)
{
    SettledItemCache* cache = settledItemsOf(view);
    cache->setEnabled(false);
    const QImage every = grabViewport(view);
    cache->setEnabled(true);
    return every;
}

// The pixels in which the screen differs from the viewport with every item
// painted by Qt: 0 when the operator sees what a full repaint gives.
inline int screenAgainstEveryItemPainted(QGraphicsView* view)
{
    return differingPixels(onScreen(view), grabViewportPaintingEveryItem(view));
}

// A picture with a gradient in both directions, so that a stale pixel of the
// background shows.
inline QImage gradientPicture()
{
    QImage picture(400, 300, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 255 / 400, y * 255 / 300, 96));
    return picture;
}

} // namespace Kit
