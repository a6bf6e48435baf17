#pragma once

#include "vorimagewnd_global.h"

#include <QFont>
#include <QPainterPath>
#include <QPointF>
#include <QRect>
#include <QString>

class QPainter;
class QPen;
class VorOverlay;
class VorROI;

// What a static record makes of a region of interest or an overlay, once, at
// construction: a painter path in image pixels (or viewport pixels, for the
// foreground), the centre and turn of an upright rectangle or ellipse that the
// painter rotates, and for a text its font, string and box. The image layer's
// BackGroundItem and the foreground's ForeGroundItem both build through here
// and differ only in how a text's bytes are decoded and in which type code
// they keep.
struct KESIMAGEWND_TESTS_EXPORT StaticShape
{
    // How the bytes of an overlay's text become a string.
    enum TextDecoding {
        // GB18030 whatever the locale, then every line feed, carriage return
        // and lower-case l removed; the image layer's reading.
        TextGb18030Cleaned,
        // The local eight-bit encoding, as given; the foreground's reading.
        TextLocal8Bit
    };

    // Codes of the path kinds that are not ROI codes.
    enum PathKind {
        PathNone = -1,
        PathArrow = 100,
        PathText = 16
    };

    bool valid = false;
    QPainterPath path;
    // The ROI type code of the path's kind; 16 for a text; -1 for none.
    int type = -1;
    QPointF point;
    double rotation = 0.0;
    QFont font = QFont("Times", 18);
    QString text;
    QRect textRect;

    // The path of a ROI; a cross of a point has half size crossSize.
    static StaticShape fromROI(VorROI& roi, int crossSize);
    // The path of an overlay: every kind with a static form; the colours are
    // the caller's business.
    static StaticShape fromOverlay(VorOverlay& overlay, int crossSize, TextDecoding decoding);
    // The codes that painting turns about their centre.
    enum TurnedCode {
        TurnedRectCode = 6,
        TurnedEllipseCode = 8
    };
    enum TurnedKind {
        TurnedRect,
        TurnedEllipse
    };

    // The ROI code whose path an overlay code shares, PathArrow or PathText,
    // or PathNone for the kinds without a static form (rakes, spoke torus,
    // closed line, region).
    static int pathKindOfOverlay(int overlayType);

    // A point at distance r from (cx, cy) in the direction angle, counter-
    // clockwise on the screen; computed in float with pi as 3.141592.
    static QPointF GetPoint(double cx, double cy, float r, float angle);

    // Draws an upright rectangle or ellipse, the bounds of path, turned by
    // rotation degrees about its centre; sizes and centre truncated to whole
    // pixels. The painter is saved and restored around it.
    static void paintTurned(QPainter* painter, const QPen& pen, const QPainterPath& path, double rotation,
                            TurnedKind kind);
};
