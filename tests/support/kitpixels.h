#pragma once

// Pixels read back from painting. A viewport is grabbed in viewport pixels
// (those of mapFromScene) as ARGB32; exact colours are counted where the
// painting is exact (opaque fills of whole pixels), and colours that went
// through blending or a premultiplied round trip are compared within a
// tolerance of one per channel or through the same conversion, since Qt picks
// its conversion code by CPU.

#include "kitcompare.h"

#include <QApplication>
#include <QColor>
#include <QEvent>
#include <QFontDatabase>
#include <QGraphicsView>
#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QRect>
#include <QRgb>
#include <QString>
#include <QWidget>
#include <QtTest/QTest>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace Kit {

// The blue of every handle brush.
constexpr QRgb kHandleBlue = 0xff0000ff;

// What lossy conversions may change in one channel.
constexpr int kChannelTolerance = 1;

// Delivers pending posted events, repaints among them, so that what a widget
// shows afterwards is what was asked of it so far.
inline void flushPaints()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// The viewport as it is painted now, in viewport pixels.
inline QImage grabViewport(QGraphicsView* view)
{
    flushPaints();
    return view->viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

// The colour of the viewport pixel where a scene point lands.
inline QRgb viewportColourAt(QGraphicsView* view, const QPointF& scenePos)
{
    return grabViewport(view).pixel(view->mapFromScene(scenePos));
}

inline bool isColour(const QImage& image, int x, int y, QRgb colour = kHandleBlue)
{
    return image.pixel(x, y) == colour;
}

struct Blob
{
    int count = 0;  // pixels of exactly the colour
    QRect bounds;   // their bounding box, empty for none
};

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

// How many pixels of exactly colour lie inside area (clipped to the image).
inline int countColour(const QImage& image, const QRect& area, QRgb colour)
{
    return findColour(image, area, colour).count;
}

inline int countColour(const QImage& image, QRgb colour)
{
    return countColour(image, image.rect(), colour);
}

// A square window of the given half size around a viewport position.
inline QRect around(const QPoint& centre, int halfSize)
{
    return QRect(centre.x() - halfSize, centre.y() - halfSize, 2 * halfSize + 1, 2 * halfSize + 1);
}

// True when the scene point lands on a whole viewport pixel position, so that a
// square of whole device pixels around it is painted without partial edges.
inline bool mapsToWholePixel(QGraphicsView* view, const QPointF& scenePoint)
{
    const QPointF exact = view->viewportTransform().map(scenePoint);
    return exact == QPointF(exact.toPoint());
}

// The largest difference of one channel, alpha included.
inline int channelDifference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b)),
                     std::abs(qAlpha(a) - qAlpha(b))});
}

inline bool colourNear(QRgb actual, QRgb expected, int tolerance = kChannelTolerance)
{
    return channelDifference(actual, expected) <= tolerance;
}

inline QString colourText(QRgb colour)
{
    return QString("rgba(%1, %2, %3, %4)").arg(qRed(colour)).arg(qGreen(colour)).arg(qBlue(colour)).arg(qAlpha(colour));
}

// The largest channel difference of two images of one size, or 256 when their
// sizes differ; both are read as ARGB32.
inline int imageDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 256;
    const QImage x = a.convertToFormat(QImage::Format_ARGB32);
    const QImage y = b.convertToFormat(QImage::Format_ARGB32);
    int most = 0;
    for (int row = 0; row < x.height(); ++row)
        for (int col = 0; col < x.width(); ++col)
            most = std::max(most, channelDifference(x.pixel(col, row), y.pixel(col, row)));
    return most;
}

// A picture as a pixmap shows it, read back as ARGB32: the round trip that an
// icon or a pixmap item puts a file through.
inline QImage asShownByPixmap(const QImage& image)
{
    return QPixmap::fromImage(image).toImage().convertToFormat(QImage::Format_ARGB32);
}

inline const char* formatName(QImage::Format format)
{
    switch (format) {
    case QImage::Format_RGB32: return "RGB32";
    case QImage::Format_ARGB32: return "ARGB32";
    case QImage::Format_ARGB32_Premultiplied: return "ARGB32 premultiplied";
    case QImage::Format_RGB888: return "RGB888";
    case QImage::Format_BGR888: return "BGR888";
    case QImage::Format_RGBA8888: return "RGBA8888";
    case QImage::Format_Grayscale8: return "Grayscale8";
    case QImage::Format_Grayscale16: return "Grayscale16";
    case QImage::Format_Indexed8: return "Indexed8";
    case QImage::Format_RGB16: return "RGB16";
    default: return "another format";
    }
}

// One row a picture format, in a column "format" of ints named by the format.
inline void addFormatRows(std::initializer_list<QImage::Format> formats)
{
    addEnumRows("format", formats, &formatName);
}

// Counts the events of one type that an object receives, and lets them pass.
class EventCounter : public QObject
{
public:
    EventCounter(QObject* watched, QEvent::Type type)
        : m_type(type)
    {
        watched->installEventFilter(this);
    }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == m_type)
            ++count;
        return false;
    }

private:
    QEvent::Type m_type;
};

// Counts the paint events a widget receives.
class PaintCounter : public EventCounter
{
public:
    explicit PaintCounter(QWidget* widget)
        : EventCounter(widget, QEvent::Paint)
    {
    }
    const int& paints = count;
};

} // namespace Kit

// Fails the test function unless the colour lies within tolerance of expected
// in every channel.
#define KIT_COMPARE_COLOUR(actual, expected, tolerance)                                                                \
    do {                                                                                                               \
        const QRgb kitActual_ = (actual);                                                                              \
        const QRgb kitExpected_ = (expected);                                                                          \
        QVERIFY2(Kit::colourNear(kitActual_, kitExpected_, (tolerance)),                                               \
                 qPrintable(Kit::colourText(kitActual_) + ", expected " + Kit::colourText(kitExpected_)));            \
    } while (false)

// Fails the test function when no font is installed: text would paint nothing.
#define KIT_REQUIRE_FONTS()                                                                                            \
    QVERIFY2(!QFontDatabase().families().isEmpty(), "no font is installed; text paints nothing (install fonts-dejavu-core)")
