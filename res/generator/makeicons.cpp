// makeicons - draws the image window's tool-bar bitmaps and icons.
//
// Usage: makeicons <target folder> [--sheet <contact-sheet.png>]
//
// Every pictogram is described on a 32 x 32 unit grid and painted with an
// antialiased QPainter.  The same drawing serves three looks:
//   * tool-bar bitmaps: 32 x 32, 24-bit BMP, light gray background,
//     dark-blue 2 px strokes, light-blue fills and one orange accent;
//   * small icons: 32 x 32 RGBA PNG on a transparent background;
//   * floating-area icons: 64 x 64 RGBA PNG, a white pictogram with a dark
//     outline and a soft shadow, so that it stays readable over any picture.
// On the 32 x 32 grid, 2 unit strokes on integer coordinates land on whole
// pixels, which keeps the small sizes crisp.

#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPen>
#include <QtGui/QPolygonF>
#include <QtGui/QRadialGradient>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <QtCore/QtMath>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

// ---------------------------------------------------------------- style --

struct Style
{
    QColor ink;         // outlines and signs
    QColor fill;        // light fill inside shapes (transparent for overlays)
    QColor accent;      // handles, arrows, vertex dots
    QColor accentFill;  // light companion of the accent
    QColor accentInk;   // outline around accent parts
    bool overlay = false;
};

Style toolStyle()
{
    Style s;
    s.ink = QColor(0x1b, 0x33, 0x57);
    s.fill = QColor(0xcf, 0xe2, 0xf6);
    s.accent = QColor(0xf0, 0x84, 0x1c);
    s.accentFill = QColor(0xfb, 0xd5, 0x8f);
    s.accentInk = QColor(0x8a, 0x42, 0x06);
    return s;
}

Style overlayStyle()
{
    Style s;
    s.ink = Qt::white;
    s.fill = Qt::transparent;
    s.accent = Qt::white;
    s.accentFill = Qt::transparent;
    s.accentInk = Qt::transparent;
    s.overlay = true;
    return s;
}

QPen strokePen(const QColor &c, qreal w = 2.0, Qt::PenCapStyle cap = Qt::RoundCap)
{
    return QPen(c, w, Qt::SolidLine, cap, Qt::RoundJoin);
}

using Pictogram = std::function<void(QPainter &, const Style &)>;

// ------------------------------------------------------------- helpers --

QPointF unit(QPointF v)
{
    const qreal len = std::hypot(v.x(), v.y());
    return len > 0 ? v / len : v;
}

// A filled arrow head whose tip lies at tip, pointing along dir.
void arrowHead(QPainter &p, QPointF tip, QPointF dir, qreal length, qreal halfWidth,
               const QColor &c)
{
    const QPointF d = unit(dir);
    const QPointF n(-d.y(), d.x());
    const QPointF base = tip - d * length;
    QPolygonF tri;
    tri << tip << base + n * halfWidth << base - n * halfWidth;
    p.save();
    p.setPen(QPen(c, 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(c);
    p.drawPolygon(tri);
    p.restore();
}

// A straight arrow from 'from' to the tip 'to'.
void arrow(QPainter &p, QPointF from, QPointF to, qreal width, qreal headLength,
           qreal headHalfWidth, const QColor &c)
{
    const QPointF d = unit(to - from);
    p.save();
    p.setPen(strokePen(c, width, Qt::FlatCap));
    p.drawLine(from, to - d * (headLength - 0.5));
    p.restore();
    arrowHead(p, to, d, headLength, headHalfWidth, c);
}

// A round dot with an outline: vertex markers and end points.
void dot(QPainter &p, QPointF c, qreal r, const Style &s)
{
    p.save();
    if (s.overlay) {
        p.setPen(Qt::NoPen);
        p.setBrush(s.accent);
        p.drawEllipse(c, r + 0.5, r + 0.5);
    } else {
        p.setPen(strokePen(s.ink, 1.2));
        p.setBrush(s.accent);
        p.drawEllipse(c, r, r);
    }
    p.restore();
}

// Smooth curve through the points (Catmull-Rom turned into cubic Béziers).
QPainterPath smoothPath(const QVector<QPointF> &pts, bool closed, qreal tension = 1.0 / 6.0)
{
    QPainterPath path;
    const int n = pts.size();
    if (n < 2)
        return path;
    auto at = [&](int i) {
        if (closed)
            return pts[(i % n + n) % n];
        return pts[std::clamp(i, 0, n - 1)];
    };
    path.moveTo(pts[0]);
    const int segments = closed ? n : n - 1;
    for (int i = 0; i < segments; ++i) {
        const QPointF p0 = at(i - 1), p1 = at(i), p2 = at(i + 1), p3 = at(i + 2);
        const QPointF c1 = p1 + (p2 - p0) * tension;
        const QPointF c2 = p2 - (p3 - p1) * tension;
        path.cubicTo(c1, c2, p2);
    }
    if (closed)
        path.closeSubpath();
    return path;
}

// The characters "1:1" drawn with strokes, centred on c, glyph height h.
void drawOneToOne(QPainter &p, QPointF c, qreal h, qreal w, const QColor &col)
{
    const qreal top = c.y() - h / 2;
    const qreal bottom = c.y() + h / 2;
    const qreal gap = std::round(h * 0.46);
    p.save();
    p.setPen(strokePen(col, w, Qt::FlatCap));
    for (int side : {-1, 1}) {
        const qreal x = std::round(c.x() + side * gap);
        QPainterPath one;
        one.moveTo(x - h * 0.30, top + h * 0.24);
        one.lineTo(x, top);
        one.lineTo(x, bottom);
        p.drawPath(one);
        p.drawLine(QPointF(x - h * 0.24, bottom - w / 2), QPointF(x + h * 0.24, bottom - w / 2));
    }
    p.setPen(Qt::NoPen);
    p.setBrush(col);
    const qreal r = std::max(1.5, h * 0.10);
    p.drawEllipse(QPointF(c.x(), top + h * 0.36), r, r);
    p.drawEllipse(QPointF(c.x(), bottom - r), r, r);
    p.restore();
}

// ----------------------------------------------------------- pictograms --

void drawOpenFolder(QPainter &p, const Style &s)
{
    // Back of the folder with its tab.
    QPainterPath back;
    back.moveTo(4, 26);
    back.lineTo(4, 7);
    back.lineTo(11, 7);
    back.lineTo(13, 10);
    back.lineTo(25, 10);
    back.lineTo(25, 14);
    QPainterPath backFill = back;
    backFill.lineTo(25, 26);
    backFill.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(s.overlay ? QColor(Qt::transparent) : s.accentFill);
    p.drawPath(backFill);
    p.setPen(strokePen(s.ink));
    p.setBrush(Qt::NoBrush);
    p.drawPath(back);
    // A sheet of paper peeking out.
    if (!s.overlay) {
        p.setPen(strokePen(s.ink, 1.0));
        p.setBrush(Qt::white);
        p.drawRect(QRectF(8.5, 12.5, 14, 6));
    }
    // The front flap, swung open.
    QPolygonF front;
    front << QPointF(4, 26) << QPointF(9, 15) << QPointF(30, 15) << QPointF(25, 26);
    p.setPen(strokePen(s.ink));
    p.setBrush(s.overlay ? QColor(Qt::transparent) : s.accent);
    p.drawPolygon(front);
}

enum class LensSign { None, Plus, Minus };

void drawMagnifier(QPainter &p, const Style &s, LensSign sign)
{
    const QPointF c(13, 13);
    const qreal r = 8.5;
    // Handle.
    const qreal k = M_SQRT1_2;
    p.setPen(strokePen(s.ink, 5.0, Qt::RoundCap));
    p.drawLine(c + QPointF(k, k) * (r + 2.0), QPointF(26.5, 26.5));
    p.setPen(strokePen(s.ink, 3.0, Qt::FlatCap));
    p.drawLine(c + QPointF(k, k) * (r + 0.5), c + QPointF(k, k) * (r + 2.5));
    // Lens.
    if (!s.overlay) {
        QRadialGradient glass(c - QPointF(3, 3), r * 1.6);
        glass.setColorAt(0.0, Qt::white);
        glass.setColorAt(1.0, s.fill);
        p.setBrush(glass);
    } else {
        p.setBrush(Qt::NoBrush);
    }
    p.setPen(strokePen(s.ink));
    p.drawEllipse(c, r, r);
    // Sign.
    p.setPen(strokePen(s.ink, 2.0, Qt::FlatCap));
    if (sign != LensSign::None)
        p.drawLine(QPointF(9, 13), QPointF(17, 13));
    if (sign == LensSign::Plus)
        p.drawLine(QPointF(13, 9), QPointF(13, 17));
}

// An arrow pointing diagonally into a corner; its head is a triangle whose
// legs run along the axes, which stays crisp at small sizes.
void cornerArrow(QPainter &p, QPointF corner, QPointF toward, qreal leg, qreal shaftEnd,
                 qreal width, const QColor &c)
{
    const qreal sx = toward.x() > 0 ? 1 : -1, sy = toward.y() > 0 ? 1 : -1;
    QPolygonF head;
    head << corner << corner + QPointF(sx * leg, 0) << corner + QPointF(0, sy * leg);
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawPolygon(head);
    p.setPen(strokePen(c, width, Qt::FlatCap));
    p.drawLine(corner + QPointF(sx, sy) * (leg * 0.4), corner + QPointF(sx, sy) * shaftEnd);
    p.restore();
}

void drawFitToWindow(QPainter &p, const Style &s)
{
    if (s.overlay) {
        // Over the picture: the window's corners only, so that the dark rims
        // of frame and arrows do not run together.
        p.setPen(strokePen(s.ink, 2.4, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        const qreal lo = 2.5, hi = 29.5, l = 7;
        QPainterPath corners;
        corners.moveTo(lo, lo + l); corners.lineTo(lo, lo); corners.lineTo(lo + l, lo);
        corners.moveTo(hi - l, lo); corners.lineTo(hi, lo); corners.lineTo(hi, lo + l);
        corners.moveTo(hi, hi - l); corners.lineTo(hi, hi); corners.lineTo(hi - l, hi);
        corners.moveTo(lo + l, hi); corners.lineTo(lo, hi); corners.lineTo(lo, hi - l);
        p.drawPath(corners);
        const qreal in = 8.0, leg = 5.5, shaft = 12.5 - in;
        cornerArrow(p, QPointF(in, in), QPointF(1, 1), leg, shaft, 2.4, s.ink);
        cornerArrow(p, QPointF(32 - in, in), QPointF(-1, 1), leg, shaft, 2.4, s.ink);
        cornerArrow(p, QPointF(32 - in, 32 - in), QPointF(-1, -1), leg, shaft, 2.4, s.ink);
        cornerArrow(p, QPointF(in, 32 - in), QPointF(1, -1), leg, shaft, 2.4, s.ink);
        return;
    }
    // The window frame.
    p.setPen(strokePen(s.ink, 2.0, Qt::SquareCap));
    p.setBrush(s.fill);
    p.drawRect(QRectF(4, 4, 24, 24));
    // Four arrows pushing the picture out into the corners.
    const qreal in = 7.0, leg = 6.0, shaft = 7.5;
    cornerArrow(p, QPointF(in, in), QPointF(1, 1), leg, shaft, 2.0, s.ink);
    cornerArrow(p, QPointF(32 - in, in), QPointF(-1, 1), leg, shaft, 2.0, s.ink);
    cornerArrow(p, QPointF(32 - in, 32 - in), QPointF(-1, -1), leg, shaft, 2.0, s.ink);
    cornerArrow(p, QPointF(in, 32 - in), QPointF(1, -1), leg, shaft, 2.0, s.ink);
}

// The "1:1" sign in a picture frame.
void drawOriginalSize(QPainter &p, const Style &s)
{
    p.setPen(strokePen(s.ink, 2.0, Qt::SquareCap));
    p.setBrush(s.overlay ? QColor(Qt::transparent) : s.fill);
    if (s.overlay)
        p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(2, 5, 28, 22));
    drawOneToOne(p, QPointF(16, 16), 14, 2.0, s.ink);
}

void drawLine(QPainter &p, const Style &s)
{
    const QPointF a(7, 25), b(25, 7);
    p.setPen(strokePen(s.ink));
    p.drawLine(a, b);
    dot(p, a, 3.0, s);
    dot(p, b, 3.0, s);
}

void drawRectangle(QPainter &p, const Style &s)
{
    p.setPen(strokePen(s.ink, 2.0, Qt::SquareCap));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawRect(QRectF(5, 8, 22, 16));
}

void drawTurnedRectangle(QPainter &p, const Style &s)
{
    const QPointF c(16, 19);
    p.save();
    p.translate(c);
    p.rotate(-30);
    p.setPen(strokePen(s.ink, 2.0, Qt::SquareCap));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawRect(QRectF(-9, -5, 18, 10));
    p.restore();
    // The turning arrow sweeping over the upper long side.
    const qreal r = 12.5;
    const qreal a0 = 78, a1 = 168;
    const qreal headDeg = 24;
    const QRectF box(c.x() - r, c.y() - r, 2 * r, 2 * r);
    QPainterPath arc;
    arc.arcMoveTo(box, a0);
    arc.arcTo(box, a0, a1 - headDeg * 0.8 - a0);
    p.setPen(strokePen(s.ink, 2.0, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(arc);
    auto onArc = [&](qreal deg) {
        const qreal t = qDegreesToRadians(deg);
        return QPointF(c.x() + r * std::cos(t), c.y() - r * std::sin(t));
    };
    const QPointF tip = onArc(a1);
    arrowHead(p, tip, tip - onArc(a1 - headDeg), 5.5, 3.6, s.ink);
}

void drawOval(QPainter &p, const Style &s)
{
    p.setPen(strokePen(s.ink));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawEllipse(QRectF(3, 8, 26, 16));
}

void drawCircle(QPainter &p, const Style &s)
{
    p.setPen(strokePen(s.ink));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawEllipse(QPointF(16, 16), 11.5, 11.5);
}

void drawAnnulus(QPainter &p, const Style &s)
{
    QPainterPath ring;
    ring.setFillRule(Qt::OddEvenFill);
    ring.addEllipse(QPointF(16, 16), 12.5, 12.5);
    ring.addEllipse(QPointF(16, 16), 6.0, 6.0);
    p.setPen(strokePen(s.ink));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawPath(ring);
}

const QVector<QPointF> &pentagonPoints()
{
    static const QVector<QPointF> pts = {
        {6, 13}, {16, 5}, {27, 10}, {25, 26}, {9, 24},
    };
    return pts;
}

void drawPolygon(QPainter &p, const Style &s)
{
    p.setPen(strokePen(s.ink));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawPolygon(QPolygonF(pentagonPoints()));
    for (const QPointF &pt : pentagonPoints())
        dot(p, pt, 2.5, s);
}

void drawPoint(QPainter &p, const Style &s)
{
    p.setPen(strokePen(s.ink, 2.0, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(16, 16), 7.0, 7.0);
    p.drawLine(QPointF(16, 3), QPointF(16, 11));
    p.drawLine(QPointF(16, 21), QPointF(16, 29));
    p.drawLine(QPointF(3, 16), QPointF(11, 16));
    p.drawLine(QPointF(21, 16), QPointF(29, 16));
    dot(p, QPointF(16, 16), 2.5, s);
}

void drawFreeLine(QPainter &p, const Style &s)
{
    const QVector<QPointF> pts = {
        {4, 22}, {8, 11}, {13, 9}, {15, 17}, {18, 24}, {23, 22}, {25, 12}, {28, 7},
    };
    p.setPen(strokePen(s.ink));
    p.setBrush(Qt::NoBrush);
    p.drawPath(smoothPath(pts, false, 0.22));
    dot(p, pts.front(), 2.5, s);
    dot(p, pts.back(), 2.5, s);
}

void drawFreeClosed(QPainter &p, const Style &s)
{
    const QVector<QPointF> pts = {
        {14, 5}, {21, 7}, {27, 6}, {28, 15}, {24, 21}, {25, 27}, {15, 26},
        {6, 25}, {7, 17}, {4, 10},
    };
    p.setPen(strokePen(s.ink));
    p.setBrush(s.overlay ? QBrush(Qt::NoBrush) : QBrush(s.fill));
    p.drawPath(smoothPath(pts, true, 0.2));
}

// ---- small interface icons ----

QColor tint(const QColor &c, int variant)
{
    // variant 0: normal, 1: hover (lighter), 2: pressed (darker)
    if (variant == 1)
        return c.lighter(130);
    if (variant == 2)
        return c.darker(140);
    return c;
}

void drawArrowRight(QPainter &p, const QColor &base)
{
    p.setPen(strokePen(base.darker(130), 1.0));
    QLinearGradient g(0, 3, 0, 29);
    g.setColorAt(0, base.lighter(112));
    g.setColorAt(1, base);
    p.setBrush(g);
    p.drawEllipse(QPointF(16, 16), 13, 13);
    p.setPen(strokePen(Qt::white, 3.5));
    p.setBrush(Qt::NoBrush);
    QPainterPath chevron;
    chevron.moveTo(13, 9);
    chevron.lineTo(20, 16);
    chevron.lineTo(13, 23);
    p.drawPath(chevron);
}

void drawClose(QPainter &p, const QColor &base)
{
    p.setPen(strokePen(base.darker(130), 1.0));
    QLinearGradient g(0, 3, 0, 29);
    g.setColorAt(0, base.lighter(112));
    g.setColorAt(1, base);
    p.setBrush(g);
    p.drawEllipse(QPointF(16, 16), 13, 13);
    p.setPen(strokePen(Qt::white, 3.5));
    p.drawLine(QPointF(11, 11), QPointF(21, 21));
    p.drawLine(QPointF(21, 11), QPointF(11, 21));
}

void drawCheckBox(QPainter &p, bool checked)
{
    const QRectF box(5, 5, 22, 22);
    if (checked) {
        QLinearGradient g(0, 5, 0, 27);
        g.setColorAt(0, QColor(0x3f, 0x86, 0xd8));
        g.setColorAt(1, QColor(0x23, 0x62, 0xb3));
        p.setPen(strokePen(QColor(0x1b, 0x4b, 0x8c), 1.0));
        p.setBrush(g);
        p.drawRoundedRect(box, 4, 4);
        p.setPen(strokePen(Qt::white, 3.2));
        p.setBrush(Qt::NoBrush);
        QPainterPath tick;
        tick.moveTo(10, 16.5);
        tick.lineTo(14, 20.5);
        tick.lineTo(22, 11.5);
        p.drawPath(tick);
    } else {
        QLinearGradient g(0, 5, 0, 27);
        g.setColorAt(0, QColor(0xff, 0xff, 0xff));
        g.setColorAt(1, QColor(0xe8, 0xec, 0xf1));
        p.setPen(strokePen(QColor(0x6d, 0x78, 0x86), 2.0));
        p.setBrush(g);
        p.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 3.5, 3.5);
    }
}

void drawImageLabel(QPainter &p, const Style &s)
{
    const QRectF frame(3, 6, 26, 20);
    QLinearGradient sky(0, 6, 0, 26);
    sky.setColorAt(0, QColor(0xbf, 0xdc, 0xf8));
    sky.setColorAt(1, QColor(0xee, 0xf5, 0xfd));
    p.setPen(Qt::NoPen);
    p.setBrush(sky);
    p.drawRect(frame);
    p.save();
    p.setClipRect(frame);
    p.setBrush(QColor(0x3e, 0x8e, 0x5a));
    QPolygonF hills;
    hills << QPointF(3, 26) << QPointF(3, 22) << QPointF(11, 13) << QPointF(17, 20)
          << QPointF(21, 16) << QPointF(29, 23) << QPointF(29, 26);
    p.drawPolygon(hills);
    p.setBrush(QColor(0x2c, 0x6b, 0x43));
    QPolygonF near;
    near << QPointF(13, 26) << QPointF(21, 16) << QPointF(29, 23) << QPointF(29, 26);
    p.drawPolygon(near);
    p.restore();
    p.setPen(strokePen(s.accentInk, 1.0));
    p.setBrush(s.accent);
    p.drawEllipse(QPointF(22, 11.5), 2.6, 2.6);
    p.setPen(strokePen(s.ink, 2.0, Qt::SquareCap));
    p.setBrush(Qt::NoBrush);
    p.drawRect(frame);
}

void drawStart(QPainter &p)
{
    const QColor green(0x2e, 0x9e, 0x4f);
    QPolygonF tri;
    tri << QPointF(10, 7) << QPointF(25, 16) << QPointF(10, 25);
    QLinearGradient g(0, 7, 0, 25);
    g.setColorAt(0, green.lighter(120));
    g.setColorAt(1, green);
    p.setPen(QPen(green.darker(115), 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(g);
    p.drawPolygon(tri);
}

void drawStop(QPainter &p)
{
    const QColor red(0xd0, 0x3b, 0x2f);
    QLinearGradient g(0, 8, 0, 24);
    g.setColorAt(0, red.lighter(120));
    g.setColorAt(1, red);
    p.setPen(strokePen(red.darker(120), 1.0));
    p.setBrush(g);
    p.drawRoundedRect(QRectF(8.5, 8.5, 15, 15), 2.5, 2.5);
}

// ---- floating-area pictograms ----

// A window whose upper right corner is left open for an arrow to pass.
void openCornerWindow(QPainter &p, const Style &s)
{
    QPainterPath frame;
    frame.moveTo(14, 8);
    frame.lineTo(4, 8);
    frame.lineTo(4, 28);
    frame.lineTo(24, 28);
    frame.lineTo(24, 18);
    p.setPen(strokePen(s.ink, 2.6, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(frame);
}

void drawFloatOut(QPainter &p, const Style &s)
{
    openCornerWindow(p, s);
    arrow(p, QPointF(12, 20), QPointF(28.5, 3.5), 2.6, 8.0, 5.0, s.ink);
}

void drawFloatInto(QPainter &p, const Style &s)
{
    openCornerWindow(p, s);
    arrow(p, QPointF(28.5, 3.5), QPointF(10, 22), 2.6, 8.0, 5.0, s.ink);
}

// ------------------------------------------------------------ rendering --

// White pictogram -> white pictogram with a dark rim and a soft shadow.
QImage outlined(const QImage &src, qreal rim, QPointF shadowOffset)
{
    const int w = src.width(), h = src.height();
    std::vector<float> a(size_t(w) * h), dil(size_t(w) * h, 0.f);
    for (int y = 0; y < h; ++y) {
        const QRgb *line = reinterpret_cast<const QRgb *>(src.constScanLine(y));
        for (int x = 0; x < w; ++x)
            a[size_t(y) * w + x] = qAlpha(line[x]) / 255.f;
    }
    const int R = int(std::ceil(rim)) + 1;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            float m = 0.f;
            for (int dy = -R; dy <= R; ++dy) {
                const int yy = y + dy;
                if (yy < 0 || yy >= h)
                    continue;
                for (int dx = -R; dx <= R; ++dx) {
                    const int xx = x + dx;
                    if (xx < 0 || xx >= w)
                        continue;
                    const float weight = std::clamp(float(rim + 0.5 - std::hypot(dx, dy)), 0.f, 1.f);
                    m = std::max(m, a[size_t(yy) * w + xx] * weight);
                }
            }
            dil[size_t(y) * w + x] = m;
        }
    }
    // Shadow: the rim blurred a little (three box passes) and shifted.
    std::vector<float> blur = dil, tmp(blur.size());
    const int br = 1;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                float sum = 0.f;
                for (int d = -br; d <= br; ++d)
                    sum += blur[size_t(y) * w + std::clamp(x + d, 0, w - 1)];
                tmp[size_t(y) * w + x] = sum / (2 * br + 1);
            }
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                float sum = 0.f;
                for (int d = -br; d <= br; ++d)
                    sum += tmp[size_t(std::clamp(y + d, 0, h - 1)) * w + x];
                blur[size_t(y) * w + x] = sum / (2 * br + 1);
            }
    }
    QImage shadow(w, h, QImage::Format_ARGB32);
    QImage rimImg(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y) {
        QRgb *sl = reinterpret_cast<QRgb *>(shadow.scanLine(y));
        QRgb *rl = reinterpret_cast<QRgb *>(rimImg.scanLine(y));
        for (int x = 0; x < w; ++x) {
            sl[x] = qRgba(0, 0, 0, int(std::lround(blur[size_t(y) * w + x] * 110)));
            rl[x] = qRgba(0x16, 0x1c, 0x26, int(std::lround(dil[size_t(y) * w + x] * 225)));
        }
    }
    QImage out(w, h, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter p(&out);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(shadowOffset, shadow);
    p.drawImage(0, 0, rimImg);
    p.drawImage(0, 0, src);
    p.end();
    return out.convertToFormat(QImage::Format_ARGB32);
}

QImage paintOn(int size, const QColor &background, const Pictogram &draw, const Style &style,
               qreal margin = 0)
{
    QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
    img.fill(background);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(margin, margin);
    p.scale((size - 2 * margin) / 32.0, (size - 2 * margin) / 32.0);
    draw(p, style);
    p.end();
    return img;
}

QImage toolBitmap(const Pictogram &draw)
{
    QImage img(32, 32, QImage::Format_ARGB32_Premultiplied);
    QPainter p(&img);
    QLinearGradient bg(0, 0, 0, 32);
    bg.setColorAt(0, QColor(0xfb, 0xfc, 0xfd));
    bg.setColorAt(1, QColor(0xe2, 0xe6, 0xeb));
    p.fillRect(img.rect(), bg);
    p.setRenderHint(QPainter::Antialiasing);
    draw(p, toolStyle());
    p.end();
    return img.convertToFormat(QImage::Format_RGB888);
}

QImage smallIcon(const Pictogram &draw)
{
    return paintOn(32, Qt::transparent, draw, toolStyle()).convertToFormat(QImage::Format_ARGB32);
}

QImage overlayIcon(const Pictogram &draw)
{
    const QImage white = paintOn(64, Qt::transparent, draw, overlayStyle(), 4.0);
    return outlined(white, 2.2, QPointF(1.0, 1.5));
}

struct Output
{
    QString file;
    QImage image;
};

std::vector<Output> buildAll()
{
    std::vector<Output> out;
    auto bmp = [&](const char *name, Pictogram d) { out.push_back({name, toolBitmap(d)}); };
    auto png = [&](const char *name, Pictogram d) { out.push_back({name, smallIcon(d)}); };
    auto ovl = [&](const char *name, Pictogram d) { out.push_back({name, overlayIcon(d)}); };

    const Pictogram zoomIn = [](QPainter &p, const Style &s) { drawMagnifier(p, s, LensSign::Plus); };
    const Pictogram zoomOut = [](QPainter &p, const Style &s) { drawMagnifier(p, s, LensSign::Minus); };

    // Tool-bar bitmaps.
    bmp("open.bmp", drawOpenFolder);
    bmp("zoom in.bmp", zoomIn);
    bmp("zoom out.bmp", zoomOut);
    bmp("zoom fit.bmp", drawFitToWindow);
    bmp("zoom 11.bmp", drawOriginalSize);
    bmp("line.bmp", drawLine);
    bmp("rectangle.bmp", drawRectangle);
    bmp("rectangle2.bmp", drawTurnedRectangle);
    bmp("Oval.bmp", drawOval);
    bmp("Circle.bmp", drawCircle);
    bmp("Bicyclic.bmp", drawAnnulus);
    bmp("polygon.bmp", drawPolygon);
    bmp("point.bmp", drawPoint);
    bmp("anyshape.bmp", drawFreeLine);
    bmp("anycloseshape.bmp", drawFreeClosed);

    // Small interface icons.
    png("adapt.png", drawFitToWindow);
    const QColor arrowBlue(0x3d, 0x72, 0xb8);
    const QColor closeRed(0xc8, 0x45, 0x3c);
    const char *arrowNames[] = {"arrowRight.png", "hoverArrowRight.png", "pressArrowRight.png"};
    const char *closeNames[] = {"close.png", "hoverClose.png", "pressClose.png"};
    for (int v = 0; v < 3; ++v) {
        const QColor a = tint(arrowBlue, v), c = tint(closeRed, v);
        png(arrowNames[v], [a](QPainter &p, const Style &) { drawArrowRight(p, a); });
        png(closeNames[v], [c](QPainter &p, const Style &) { drawClose(p, c); });
    }
    png("checked.png", [](QPainter &p, const Style &) { drawCheckBox(p, true); });
    png("uncheck.png", [](QPainter &p, const Style &) { drawCheckBox(p, false); });
    png("imagelabel.png", drawImageLabel);
    png("pictureSize.png", drawOriginalSize);
    png("roi1.png", drawRectangle);
    png("roi2.png", drawTurnedRectangle);
    png("roi3.png", drawOval);
    png("roi4.png", drawCircle);
    png("roi5.png", drawAnnulus);
    png("roi6.png", drawPolygon);
    png("roi7.png", drawPoint);
    png("start.png", [](QPainter &p, const Style &) { drawStart(p); });
    png("stop.png", [](QPainter &p, const Style &) { drawStop(p); });
    png("zoomIn.png", zoomIn);
    png("zoomOut.png", zoomOut);

    // Floating-area icons, shown over the picture.
    ovl("float_out.png", drawFloatOut);
    ovl("float_into.png", drawFloatInto);
    ovl("float_zoomin.png", zoomIn);
    ovl("float_zoomout.png", zoomOut);
    ovl("float_fit.png", drawFitToWindow);
    ovl("float_original.png", [](QPainter &p, const Style &s) {
        drawOneToOne(p, QPointF(16, 16), 18, 2.4, s.ink);
    });
    return out;
}

// ---------------------------------------------------------- contact sheet --

// A stand-in for a camera picture: soft gradients and some texture.
QImage cameraLikePatch(int w, int h)
{
    QImage img(w, h, QImage::Format_ARGB32_Premultiplied);
    QPainter p(&img);
    QLinearGradient g(0, 0, w, h);
    g.setColorAt(0, QColor(30, 30, 30));
    g.setColorAt(0.5, QColor(150, 150, 150));
    g.setColorAt(1, QColor(235, 235, 235));
    p.fillRect(img.rect(), g);
    p.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 9; ++i) {
        const int v = (i * 73) % 255;
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(v, v, v, 150));
        p.drawEllipse(QPointF((i * 37) % w, (i * 53) % h), 10 + (i * 7) % 20, 8 + (i * 11) % 16);
    }
    p.end();
    return img;
}

bool writeSheet(const QString &dir, const std::vector<Output> &outs, const QString &sheetFile)
{
    // Each icon at 3x (nearest neighbour) and at 1x, its file name below.
    // Floating-area icons also lie on a stand-in camera picture.
    const int width = 960, label = 18, pad = 8;
    struct Cell { QImage img; QString name; bool overlay; QSize size; };
    std::vector<Cell> cells;
    for (const Output &o : outs) {
        const QImage img(QDir(dir).filePath(o.file));
        if (img.isNull())
            return false;
        const bool overlay = o.file.startsWith("float_");
        const QSize size(img.width() * 3 + 2 * img.width() + 3 * pad,
                         img.height() * 3 + label + 2 * pad);
        cells.push_back({img, o.file, overlay, size});
    }
    // Lay out in rows.
    std::vector<QPoint> at(cells.size());
    int x = 0, y = 0, rowH = 0, height = 0;
    for (size_t i = 0; i < cells.size(); ++i) {
        const QSize sz = cells[i].size;
        const bool newSection = i > 0 && cells[i].overlay != cells[i - 1].overlay;
        if (x + sz.width() > width || newSection) {
            x = 0;
            y += rowH;
            rowH = 0;
        }
        at[i] = QPoint(x, y);
        x += sz.width();
        rowH = std::max(rowH, sz.height());
        height = y + rowH;
    }
    QImage sheet(width, height, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(QColor(0x80, 0x80, 0x80));
    QPainter p(&sheet);
    QFont font("DejaVu Sans");
    font.setPixelSize(11);
    p.setFont(font);
    for (size_t i = 0; i < cells.size(); ++i) {
        const Cell &c = cells[i];
        const int w = c.img.width(), h = c.img.height();
        const QRect big(at[i] + QPoint(pad, pad), QSize(w * 3, h * 3));
        const QRect small1(big.right() + 1 + pad, big.top(), w, h);
        const QRect small2(small1.left(), small1.bottom() + 1 + pad, w, h);
        if (c.overlay) {
            p.drawImage(big, cameraLikePatch(big.width(), big.height()));
            p.drawImage(small2, cameraLikePatch(w, h).mirrored(true, false));
        } else {
            p.fillRect(small2, QColor(0xf4, 0xf4, 0xf4));
        }
        p.drawImage(big, c.img);
        p.drawImage(small1, c.img);
        p.drawImage(small2, c.img);
        p.setPen(Qt::black);
        p.drawText(QRect(at[i].x() + pad, big.bottom() + 2, c.size.width() - pad, label),
                   Qt::AlignLeft | Qt::AlignVCenter,
                   QString("%1 %2x%3").arg(c.name).arg(w).arg(h));
    }
    p.end();
    return sheet.save(sheetFile, "PNG");
}

} // namespace

int main(int argc, char **argv)
{
    bool platformGiven = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    for (int i = 1; i < argc; ++i)
        if (qstrcmp(argv[i], "-platform") == 0)
            platformGiven = true;
    if (!platformGiven)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);

    QString target, sheet;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == "--sheet" && i + 1 < args.size())
            sheet = args[++i];
        else if (target.isEmpty())
            target = args[i];
    }
    if (target.isEmpty()) {
        std::fprintf(stderr, "usage: makeicons <target folder> [--sheet <file.png>]\n");
        return 2;
    }
    if (!QDir().mkpath(target)) {
        std::fprintf(stderr, "makeicons: cannot create %s\n", qPrintable(target));
        return 1;
    }

    const std::vector<Output> outs = buildAll();
    int failures = 0;
    for (const Output &o : outs) {
        const QString path = QDir(target).filePath(o.file);
        const char *format = o.file.endsWith(".bmp") ? "BMP" : "PNG";
        if (!o.image.save(path, format)) {
            std::fprintf(stderr, "makeicons: cannot write %s\n", qPrintable(path));
            ++failures;
        }
    }
    std::printf("makeicons: %d files written to %s\n", int(outs.size()) - failures,
                qPrintable(QFileInfo(target).absoluteFilePath()));
    if (!sheet.isEmpty() && failures == 0) {
        if (!writeSheet(target, outs, sheet)) {
            std::fprintf(stderr, "makeicons: cannot write the contact sheet %s\n", qPrintable(sheet));
            return 1;
        }
        std::printf("makeicons: contact sheet %s\n", qPrintable(sheet));
    }
    return failures == 0 ? 0 : 1;
}
