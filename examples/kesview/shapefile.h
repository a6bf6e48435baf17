#pragma once

#include <KESImageWnd.h>

#include <QString>
#include <QVector>

// A file of regions of interest and overlays for kesview to show, one shape a
// line, in picture pixels:
//
//   # an inspection result
//   roi rect1 40 40 400 300
//   roi rect2 700 300 200 80 30
//   overlay circle 500 500 60 pen 255,0,0,2 brush 255,0,0,60
//   overlay text 60 60 24 Lot 24-0871 passed
//
// A line is "roi" or "overlay", a kind, its numbers, and for an overlay an
// optional "pen R,G,B,WIDTH" and "brush R,G,B,ALPHA". It goes to the window's
// shape layer, where the operator can edit it, unless it starts with "image"
// (a static record painted on the picture) or "fore" (a static record in
// screen pixels over everything, whatever the zoom):
//
//   fore overlay text 12 28 12 Legend: green passed, red failed
//
// The kinds and their numbers:
//   point X Y                      line X1 Y1 X2 Y2
//   rect1 LEFT TOP RIGHT BOTTOM    rect2 CX CY LENGTH1 LENGTH2 ANGLE
//   ellipse CX CY R1 R2 ANGLE      circle CX CY R
//   arc CX CY R START END          torus CX CY R1 R2 ANGLE SWEEP
//   polygon X1 Y1 X2 Y2 ...        irregular X1 Y1 X2 Y2 ...
// and for overlays only:
//   arrowline X1 Y1 X2 Y2          polyline X1 Y1 X2 Y2 ... (closed)
//   rakerect1 LEFT TOP RIGHT BOTTOM DIRECTION COUNT
//   rakerect2 CX CY LENGTH1 LENGTH2 ANGLE DIRECTION COUNT
//   spoketorus CX CY R1 R2 ANGLE SWEEP DIRECTION COUNT
//   text X Y SIZE WORDS...         (a pen or brush may stand anywhere after SIZE)
//   region CX CY R                 a disc of pixels, coloured by the brush
// Blank lines and lines from "#" on are skipped.
struct ShapeFileEntry
{
    int line = 0;
    KESImageWnd::Layer layer = KESImageWnd::LAYER_SHAPE;
    bool isROI = true;
    VorROI roi;
    VorOverlay overlay;
};

// The entries of the file in order; false, and why (with the line number) in
// error, when the file cannot be read or a line does not fit the format.
bool readShapeFile(const QString& path, QVector<ShapeFileEntry>* entries, QString* error);

// A region of interest as a line of such a file ("roi rect1 40 40 400 300"),
// so that what an operator drew can be kept and shown again; "roi ?" for a
// ROI of no kind the file knows.
QString shapeFileLine(const VorROI& roi);
