#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QMatrix>
#include <QPoint>
#include <QRect>

class ForeLayer;
class QPainter;

// How the grid is drawn: a line every gap viewport pixels.
struct GridLook
{
    int gap = 0;
    QColor colour;
    int lineWidth = 1;
};

// How the cross-line reticle is drawn. In picture mode it keeps to the
// picture's rectangle as it lies on the screen, else to the viewport.
struct CrossLook
{
    bool pictureMode = false;
    QPoint centre;
    int radius = 0;
    int lineWidth = 1;
    QColor colour;
    int emphasisLength = 0;
};

// One repaint of the window's view, in one place, from back to front:
//   1. the grey background brush, and 2. in image pixels the picture, its
//      region image and the static records (ImageLayer::drawBackground, which
//      the scene's drawBackground calls after the brush);
//   3. the scene's graphics items: live shapes, handles, region items;
//   4. in viewport pixels the foreground records, 5. the grid, 6. the
//      cross-line reticle (paintForeground, from the view's drawForeground);
//   7. the pixel value labels, after the view's own paint has finished.
// Zoom lives in one matrix only, viewMatrix(), which every zoom step and
// every new picture sets on the view.
class KESIMAGEWND_TESTS_EXPORT ViewPainter
{
public:
    // The view's matrix at a scale: scale(s, s), then a turn of 0 degrees.
    static QMatrix viewMatrix(double scale);

    // Steps 4 to 6 on the painter of the view's foreground, reset here to
    // viewport pixels. Null or hidden parts are skipped. The cross's centre
    // may be bounded to the picture in picture mode; the bounded centre is
    // written back into cross.
    static void paintForeground(QPainter* painter, ForeLayer* fore, const GridLook* grid, CrossLook* cross,
                                const QRect& viewportRect, const QRect& pictureOnScreen);

    // The grid in viewport pixels; a gap of 0 or below paints nothing.
    static void paintGrid(QPainter* painter, const GridLook& grid, const QRect& viewportRect);
    // The cross-line reticle in viewport pixels; returns the centre it used.
    static QPoint paintCrossLine(QPainter* painter, const CrossLook& cross, const QRect& viewportRect,
                                 const QRect& pictureOnScreen);
};
