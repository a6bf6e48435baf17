#include "samplepicture.h"

#include <opencv2/imgproc.hpp>

#include <QFont>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>
#include <QtMath>

#include <algorithm>

namespace {

// The scene is laid out on a 2448 x 2048 canvas; other sizes scale it.
constexpr double kCanvasWidth = 2448.0;
constexpr double kCanvasHeight = 2048.0;

// Light falls from the upper left throughout.
QColor grey(int v, int alpha = 255)
{
    v = std::clamp(v, 0, 255);
    return QColor(v, v, v, alpha);
}

QFont sans(int pixelSize, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

QFont mono(int pixelSize, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

QPainterPath circlePath(QPointF centre, double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

// A soft shadow cast down and to the right by a part lying on the fixture.
void castShadow(QPainter& p, const QPainterPath& outline, QPointF offset, int spread)
{
    p.save();
    p.translate(offset);
    p.setBrush(Qt::NoBrush);
    for (int i = spread; i >= 1; --i) {
        p.setPen(QPen(QColor(0, 0, 0, 13), 2.0 * i, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPath(outline);
    }
    p.fillPath(outline, QColor(0, 0, 0, 120));
    p.restore();
}

// Fine straight grinding or brushing marks along x, clipped to a part.
void brushMarks(QPainter& p, const QPainterPath& clip, QRandomGenerator& rng, int count, int base, int spreadOfGrey)
{
    p.save();
    p.setClipPath(clip);
    const QRectF box = clip.boundingRect();
    for (int i = 0; i < count; ++i) {
        const double y = box.top() + rng.bounded(box.height());
        const double x = box.left() - 200 + rng.bounded(box.width() + 200);
        const double length = 80 + rng.bounded(900.0);
        const int v = base - spreadOfGrey + int(rng.bounded(2 * spreadOfGrey + 1));
        p.setPen(QPen(grey(v, 26 + int(rng.bounded(30))), 1.0));
        p.drawLine(QPointF(x, y), QPointF(x + length, y + rng.bounded(2.0) - 1.0));
    }
    p.restore();
}

// Concentric marks of a turned face.
void turningMarks(QPainter& p, const QPainterPath& clip, QPointF centre, double r0, double r1,
                  QRandomGenerator& rng, int count, int base, int spreadOfGrey)
{
    p.save();
    p.setClipPath(clip);
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i < count; ++i) {
        const double r = r0 + rng.bounded(r1 - r0);
        const int v = base - spreadOfGrey + int(rng.bounded(2 * spreadOfGrey + 1));
        p.setPen(QPen(grey(v, 30 + int(rng.bounded(40))), 0.8 + rng.bounded(1.2)));
        p.drawEllipse(centre, r, r);
    }
    p.restore();
}

// A drilled through-hole with a chamfered edge: the chamfer catches the light
// on its lower right, the bore shows a sliver of its wall, then darkness.
void drillHole(QPainter& p, QPointF c, double r, double chamfer)
{
    p.save();
    p.setPen(Qt::NoPen);
    const double outer = r + chamfer;
    QLinearGradient lit(c + QPointF(-outer, -outer), c + QPointF(outer, outer));
    lit.setColorAt(0.0, grey(105));
    lit.setColorAt(0.55, grey(190));
    lit.setColorAt(1.0, grey(248));
    p.setBrush(lit);
    p.drawEllipse(c, outer, outer);
    QLinearGradient wall(c + QPointF(-r, -r), c + QPointF(r, r));
    wall.setColorAt(0.0, grey(30));
    wall.setColorAt(1.0, grey(112));
    p.setBrush(wall);
    p.drawEllipse(c, r, r);
    p.setBrush(grey(14));
    p.drawEllipse(c + QPointF(-0.07 * r, -0.07 * r), 0.87 * r, 0.87 * r);
    p.restore();
}

// A tapped hole: a small chamfer, then the crests of the thread as rings.
void tappedHole(QPainter& p, QPointF c, double r)
{
    drillHole(p, c, r, 3.5);
    p.save();
    p.setBrush(Qt::NoBrush);
    for (double k = 0.55; k < 0.95; k += 0.13) {
        p.setPen(QPen(grey(78, 200), 1.0));
        p.drawEllipse(c + QPointF(0.05 * r, 0.05 * r), k * r, k * r);
    }
    p.restore();
}

// Laser-etched text: a dark groove with a light lip below and to the right.
void engrave(QPainter& p, QPointF at, const QString& text, const QFont& font, int dark = 62, int lip = 236)
{
    p.save();
    p.setFont(font);
    p.setPen(grey(lip, 150));
    p.drawText(at + QPointF(0.9, 0.9), text);
    p.setPen(grey(dark));
    p.drawText(at, text);
    p.restore();
}

// A square two-dimensional code of the laser-marked kind: an L of solid
// modules on the left and bottom, a clock track on the top and right.
void matrixCode(QPainter& p, QPointF origin, int modules, double moduleSize, quint32 seed)
{
    QRandomGenerator rng(seed);
    p.save();
    p.setPen(Qt::NoPen);
    const double quiet = 2 * moduleSize;
    p.setBrush(grey(226));
    p.drawRect(QRectF(origin - QPointF(quiet, quiet),
                      QSizeF(modules * moduleSize + 2 * quiet, modules * moduleSize + 2 * quiet)));
    p.setBrush(grey(38));
    for (int row = 0; row < modules; ++row) {
        for (int col = 0; col < modules; ++col) {
            bool dark;
            if (col == 0 || row == modules - 1)
                dark = true;
            else if (row == 0)
                dark = col % 2 == 0;
            else if (col == modules - 1)
                dark = row % 2 == 1;
            else
                dark = rng.bounded(100) < 48;
            if (dark)
                p.drawRect(QRectF(origin.x() + col * moduleSize, origin.y() + row * moduleSize, moduleSize,
                                  moduleSize));
        }
    }
    p.restore();
}

void fixturePlate(QPainter& p)
{
    // Anodised fixture plate under diffuse ring light: brighter in the middle.
    QRadialGradient light(QPointF(1224, 1000), 1750);
    light.setColorAt(0.0, grey(122));
    light.setColorAt(0.7, grey(96));
    light.setColorAt(1.0, grey(70));
    p.fillRect(QRectF(0, 0, kCanvasWidth, kCanvasHeight), light);
    // The grid of tapped holes, 16 mm apart.
    for (int y = 80; y < kCanvasHeight; y += 160)
        for (int x = 64; x < kCanvasWidth; x += 160) {
            p.setPen(Qt::NoPen);
            p.setBrush(grey(60, 160));
            p.drawEllipse(QPointF(x, y), 15, 15);
            p.setBrush(grey(24));
            p.drawEllipse(QPointF(x, y), 11, 11);
        }
}

void cameraHeader(QPainter& p)
{
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(grey(18, 190));
    p.drawRect(QRectF(24, 22, 1450, 40));
    p.drawRect(QRectF(1990, 22, 434, 40));
    p.setFont(mono(19));
    p.setPen(grey(228));
    p.drawText(QPointF(36, 49),
               QStringLiteral("CAM 2 | 2448 x 2048 MONO8 | EXP 1200 us | GAIN 0.0 dB | FRAME 000417"));
    p.drawText(QPointF(2002, 49), QStringLiteral("STATION 3  LINE B"));
    p.restore();
}

void machinedPlate(QPainter& p, QRandomGenerator& rng)
{
    const QRectF body(110, 130, 1060, 720);
    QPainterPath outline;
    outline.addRoundedRect(body, 28, 28);
    castShadow(p, outline, QPointF(16, 18), 16);

    QLinearGradient face(body.topLeft(), body.bottomRight());
    face.setColorAt(0.0, grey(214));
    face.setColorAt(1.0, grey(184));
    p.fillPath(outline, face);
    brushMarks(p, outline, rng, 3200, 200, 26);

    // Chamfered outer edge.
    p.save();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grey(246), 6));
    p.drawPath(outline);
    p.setPen(QPen(grey(140, 170), 2));
    p.drawRoundedRect(body.adjusted(5, 5, -5, -5), 23, 23);
    p.restore();

    // Four mounting holes, a row of tapped holes.
    for (const QPointF c : {QPointF(180, 200), QPointF(1100, 200), QPointF(180, 780), QPointF(1100, 780)})
        drillHole(p, c, 32, 6);
    for (int i = 0; i < 6; ++i)
        tappedHole(p, QPointF(360 + 112 * i, 240), 13);

    // Counterbore with its turned floor, and the bore through.
    const QPointF bore(645, 520);
    QPainterPath counterbore = circlePath(bore, 150);
    p.fillPath(counterbore, grey(166));
    turningMarks(p, counterbore, bore, 95, 150, rng, 160, 166, 30);
    p.save();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grey(98), 4));
    p.drawEllipse(bore, 148, 148);
    p.setPen(QPen(grey(242), 2));
    p.drawEllipse(bore, 152, 152);
    p.restore();
    drillHole(p, bore, 92, 5);

    // A through slot.
    const QRectF slot(1000, 340, 50, 300);
    QPainterPath slotPath;
    slotPath.addRoundedRect(slot, 25, 25);
    p.save();
    p.setPen(QPen(grey(238), 5));
    p.setBrush(grey(16));
    p.drawPath(slotPath);
    p.setPen(QPen(grey(110), 2));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(slot.adjusted(3, 3, -3, -3), 22, 22);
    p.restore();

    // Dowel holes beside the slot.
    drillHole(p, QPointF(890, 420), 10, 2.5);
    drillHole(p, QPointF(890, 620), 10, 2.5);
    engrave(p, QPointF(858, 460), QStringLiteral("\u00D82 H7"), sans(13));
    engrave(p, QPointF(858, 660), QStringLiteral("\u00D82 H7"), sans(13));

    // Markings.
    engrave(p, QPointF(160, 345), QStringLiteral("KES-PL-2048"), sans(34, true));
    engrave(p, QPointF(162, 378), QStringLiteral("REV C   1:1"), sans(20));
    engrave(p, QPointF(162, 420), QStringLiteral("LOT 24-0871"), mono(17));
    engrave(p, QPointF(162, 442), QStringLiteral("S/N 0001573"), mono(17));
    engrave(p, QPointF(162, 464), QStringLiteral("2024-06-14 06:52"), mono(17));
    engrave(p, QPointF(162, 490), QStringLiteral("MAT AlMg4.5Mn  Ra 0.8 \u00B5m"), sans(11));
    engrave(p, QPointF(162, 505), QStringLiteral("TOL \u00B10.02  GEN ISO 2768-f"), sans(11));
    engrave(p, QPointF(162, 518), QStringLiteral("0123456789 ABCDEFGHIJKLMNOPQRSTUVWXYZ"), sans(8));
    matrixCode(p, QPointF(180, 570), 18, 7.0, 0x0871u);
    engrave(p, QPointF(325, 640), QStringLiteral("ID 24087101573"), mono(12));
    engrave(p, QPointF(325, 656), QStringLiteral("CHK 7F3A"), mono(12));

    // A small pit near the lower edge, the kind of flaw the station looks for.
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(grey(70));
    p.drawEllipse(QPointF(812, 792), 3.2, 2.4);
    p.setBrush(grey(245, 180));
    p.drawEllipse(QPointF(814.5, 794), 1.6, 1.2);
    p.restore();
}

void gear(QPainter& p, QRandomGenerator& rng)
{
    const QPointF c(1790, 500);
    const int teeth = 26;
    const double tip = 348;
    const double root = 296;
    const double pitch = 2 * M_PI / teeth;
    QPainterPath outline;
    bool first = true;
    auto addPoint = [&](double angle, double radius) {
        const QPointF point(c.x() + radius * std::cos(angle), c.y() + radius * std::sin(angle));
        if (first) {
            outline.moveTo(point);
            first = false;
        } else {
            outline.lineTo(point);
        }
    };
    for (int t = 0; t < teeth; ++t) {
        const double a = t * pitch;
        addPoint(a, root);
        addPoint(a + 0.12 * pitch, root);
        // Rising flank, curved like an involute.
        for (int k = 1; k <= 5; ++k) {
            const double f = k / 5.0;
            addPoint(a + (0.12 + 0.14 * std::sqrt(f)) * pitch, root + (tip - root) * f);
        }
        if (t == 7) {
            // A chipped tooth.
            addPoint(a + 0.33 * pitch, tip - 4);
            addPoint(a + 0.41 * pitch, tip - 19);
            addPoint(a + 0.50 * pitch, tip - 15);
        } else {
            addPoint(a + 0.42 * pitch, tip);
        }
        for (int k = 5; k >= 1; --k) {
            const double f = k / 5.0;
            addPoint(a + (0.72 - 0.14 * std::sqrt(f)) * pitch, root + (tip - root) * f);
        }
        addPoint(a + 0.72 * pitch, root);
    }
    outline.closeSubpath();

    castShadow(p, outline, QPointF(14, 16), 14);
    QRadialGradient face(c + QPointF(-90, -110), 460);
    face.setColorAt(0.0, grey(214));
    face.setColorAt(1.0, grey(164));
    p.fillPath(outline, face);
    turningMarks(p, outline, c, 150, 300, rng, 260, 190, 30);
    p.save();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grey(238, 170), 3));
    p.drawPath(outline);
    p.restore();

    // Raised hub.
    QPainterPath hub = circlePath(c, 140);
    QRadialGradient hubFace(c + QPointF(-40, -50), 200);
    hubFace.setColorAt(0.0, grey(226));
    hubFace.setColorAt(1.0, grey(182));
    p.fillPath(hub, hubFace);
    turningMarks(p, hub, c, 74, 140, rng, 110, 200, 28);
    p.save();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grey(104), 3));
    p.drawEllipse(c, 141, 141);
    p.setPen(QPen(grey(244), 1.5));
    p.drawEllipse(c, 138, 138);
    p.restore();

    // Lightening holes.
    for (int i = 0; i < 6; ++i) {
        const double a = i * M_PI / 3.0;
        drillHole(p, c + QPointF(222 * std::cos(a), 222 * std::sin(a)), 42, 4);
    }

    // Bore with keyway.
    QPainterPath bore = circlePath(c, 66);
    QPainterPath key;
    key.addRect(QRectF(c.x() - 12, c.y() - 86, 24, 40));
    bore = bore.united(key);
    p.save();
    p.setPen(QPen(grey(240), 5));
    p.setBrush(grey(14));
    p.drawPath(bore);
    p.restore();

    engrave(p, c + QPointF(-52, 262), QStringLiteral("z26 m2.5"), sans(16, true));
    engrave(p, c + QPointF(-44, 280), QStringLiteral("20\u00B0  16MnCr5"), sans(11));
}

void flange(QPainter& p, QRandomGenerator& rng)
{
    const QPointF c(1290, 1360);
    QPainterPath outline = circlePath(c, 290);
    castShadow(p, outline, QPointF(14, 16), 14);
    QRadialGradient face(c + QPointF(-80, -90), 420);
    face.setColorAt(0.0, grey(222));
    face.setColorAt(1.0, grey(176));
    p.fillPath(outline, face);
    turningMarks(p, outline, c, 110, 290, rng, 380, 196, 32);
    p.save();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grey(246), 4));
    p.drawEllipse(c, 288, 288);
    // Raised face.
    p.setPen(QPen(grey(118), 3));
    p.drawEllipse(c, 176, 176);
    p.setPen(QPen(grey(244), 1.5));
    p.drawEllipse(c, 173, 173);
    p.restore();

    for (int i = 0; i < 8; ++i) {
        const double a = (i + 0.5) * M_PI / 4.0;
        drillHole(p, c + QPointF(236 * std::cos(a), 236 * std::sin(a)), 22, 4);
    }
    drillHole(p, c, 104, 6);

    engrave(p, c + QPointF(-52, -200), QStringLiteral("F58-21  PN 16"), sans(15, true));
    engrave(p, c + QPointF(-40, -183), QStringLiteral("HEAT 4417-B"), mono(11));
    engrave(p, c + QPointF(-46, 214), QStringLiteral("1.4404  EN 10222"), sans(11));

    // A scratch across the face.
    QPainterPath scratch;
    scratch.moveTo(c + QPointF(-240, 60));
    scratch.cubicTo(c + QPointF(-200, 82), c + QPointF(-160, 94), c + QPointF(-122, 128));
    p.save();
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(grey(250, 210), 1.6));
    p.drawPath(scratch);
    p.translate(0.8, 1.2);
    p.setPen(QPen(grey(92, 150), 1.0));
    p.drawPath(scratch);
    p.restore();
}

void calibrationTarget(QPainter& p)
{
    const QRectF card(110, 960, 780, 700);
    QPainterPath outline;
    outline.addRect(card);
    castShadow(p, outline, QPointF(10, 12), 10);
    p.fillPath(outline, grey(233));
    p.save();
    p.setPen(QPen(grey(204), 2));
    p.setBrush(Qt::NoBrush);
    p.drawRect(card.adjusted(1, 1, -1, -1));

    // 13 x 11 dots, 5 mm apart; the hollow ones mark the orientation.
    const int cols = 13;
    const int rows = 11;
    const double step = 50;
    const QPointF origin(card.left() + (card.width() - (cols - 1) * step) / 2, card.top() + 62);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col) {
            const QPointF c = origin + QPointF(col * step, row * step);
            const bool hollow = (row == 5 && (col == 6 || col == 7)) || (row == 4 && col == 6);
            p.setPen(Qt::NoPen);
            p.setBrush(grey(20));
            p.drawEllipse(c, 12.5, 12.5);
            if (hollow) {
                p.setBrush(grey(233));
                p.drawEllipse(c, 6.25, 6.25);
            }
        }
    }
    p.restore();
    p.save();
    p.setPen(grey(30));
    p.setFont(sans(15, true));
    p.drawText(QPointF(card.left() + 92, card.bottom() - 58),
               QStringLiteral("CAL 13 x 11   PITCH 5.000 mm   DOT \u00D8 2.500 mm"));
    p.setFont(sans(10));
    p.drawText(QPointF(card.left() + 92, card.bottom() - 40),
               QStringLiteral("CERAMIC  CERT 24-117  UNCERTAINTY \u00B10.5 \u00B5m AT 20 \u00B0C  DO NOT TOUCH SURFACE"));
    p.setFont(sans(7));
    p.drawText(QPointF(card.left() + 92, card.bottom() - 27),
               QStringLiteral("the quick brown fox jumps over the lazy dog 0123456789  THE QUICK BROWN FOX"));
    p.restore();
}

void testCard(QPainter& p)
{
    const QRectF card(1640, 940, 720, 560);
    QPainterPath outline;
    outline.addRect(card);
    castShadow(p, outline, QPointF(10, 12), 10);
    p.fillPath(outline, grey(238));

    p.save();
    p.setPen(grey(25));
    p.setFont(sans(12, true));
    p.drawText(QPointF(1664, 962), QStringLiteral("GREY WEDGE  16 STEPS  LINEAR"));

    // Sixteen steps from black to white, and their values.
    p.setFont(sans(10));
    for (int i = 0; i < 16; ++i) {
        const int v = i * 17;
        const QRectF step(1664 + 42 * i, 972, 42, 90);
        p.fillRect(step, grey(v));
        p.setPen(grey(25));
        p.drawText(QRectF(step.left(), 1064, 42, 16), Qt::AlignHCenter | Qt::AlignTop, QString::number(v));
    }
    p.setPen(QPen(grey(25), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(1663.5, 971.5, 673, 91));
    // A continuous ramp with ticks.
    QLinearGradient ramp(QPointF(1664, 0), QPointF(2336, 0));
    ramp.setColorAt(0.0, grey(0));
    ramp.setColorAt(1.0, grey(255));
    p.fillRect(QRectF(1664, 1094, 672, 34), ramp);
    for (int k = 0; k <= 8; ++k) {
        const double x = 1664 + 84.0 * k;
        p.setPen(QPen(grey(25), 1));
        p.drawLine(QPointF(x, 1128), QPointF(x, 1136));
        p.drawText(QRectF(x - 20, 1137, 40, 14), Qt::AlignHCenter | Qt::AlignTop,
                   QString::number(std::min(255, 32 * k)));
    }

    // A resolution star of 36 spokes.
    const QPointF star(1800, 1320);
    const double r = 140;
    p.setPen(Qt::NoPen);
    p.setBrush(grey(22));
    for (int i = 0; i < 36; i += 2)
        p.drawPie(QRectF(star.x() - r, star.y() - r, 2 * r, 2 * r), i * 10 * 16, 10 * 16);
    p.setPen(grey(25));
    p.setFont(sans(10));
    p.drawText(QPointF(1740, 1482), QStringLiteral("STAR 36  \u00D8 28 mm"));

    // Line pairs of 1, 2, 3, 4 and 6 pixels, upright and lying.
    p.setRenderHint(QPainter::Antialiasing, false);
    int x = 1980;
    for (const int w : {1, 2, 3, 4, 6}) {
        for (int bar = 0; bar < 5; ++bar)
            p.fillRect(QRect(x + 2 * w * bar, 1200, w, 80), grey(22));
        for (int bar = 0; bar < 5; ++bar)
            p.fillRect(QRect(x, 1310 + 2 * w * bar, 9 * w, w), grey(22));
        p.setPen(grey(25));
        p.drawText(QPointF(x, 1395), QString::number(w));
        x += 10 * w + 18;
    }
    p.setRenderHint(QPainter::Antialiasing, true);
    p.drawText(QPointF(1980, 1420), QStringLiteral("LINE PAIRS, px"));
    p.setFont(sans(8));
    p.drawText(QPointF(1980, 1440), QStringLiteral("FIELD 244.8 x 204.8 mm  10 px/mm"));
    p.restore();
}

void steelRule(QPainter& p, QRandomGenerator& rng)
{
    const QRectF body(110, 1780, 2230, 120);
    QPainterPath outline;
    outline.addRect(body);
    castShadow(p, outline, QPointF(8, 10), 8);
    QLinearGradient satin(body.topLeft(), body.bottomLeft());
    satin.setColorAt(0.0, grey(224));
    satin.setColorAt(0.5, grey(200));
    satin.setColorAt(1.0, grey(188));
    p.fillPath(outline, satin);
    brushMarks(p, outline, rng, 900, 205, 24);

    p.save();
    p.setPen(QPen(grey(248), 2));
    p.drawLine(body.topLeft(), body.topRight());
    // Millimetres from the top edge, half millimetres from the bottom edge.
    const double x0 = 150;
    const double pxPerMm = 10;
    p.setFont(sans(15, true));
    for (int mm = 0; mm <= 215; ++mm) {
        const double x = x0 + mm * pxPerMm;
        const double length = mm % 10 == 0 ? 34 : (mm % 5 == 0 ? 24 : 15);
        p.setPen(QPen(grey(34), 1.6));
        p.drawLine(QPointF(x, body.top()), QPointF(x, body.top() + length));
        if (mm % 10 == 0) {
            p.setPen(grey(30));
            p.drawText(QRectF(x - 30, body.top() + 36, 60, 20), Qt::AlignHCenter | Qt::AlignTop,
                       QString::number(mm));
        }
    }
    for (int half = 0; half <= 430; ++half) {
        const double x = x0 + half * pxPerMm / 2;
        const double length = half % 2 == 0 ? 12 : 7;
        p.setPen(QPen(grey(40), 1.0));
        p.drawLine(QPointF(x, body.bottom()), QPointF(x, body.bottom() - length));
    }
    p.setPen(grey(40));
    p.setFont(sans(11));
    p.drawText(QPointF(160, body.top() + 84), QStringLiteral("mm"));
    p.drawText(QPointF(1030, body.top() + 84),
               QStringLiteral("STAINLESS  HARDENED  0 \u2013 215 mm  ACCURACY CLASS I  20 \u00B0C"));
    p.setFont(sans(7));
    p.drawText(QPointF(160, body.top() + 98), QStringLiteral("0.5 mm"));
    p.restore();
}

void fixtureNote(QPainter& p)
{
    p.save();
    p.setFont(sans(12));
    p.setPen(grey(200));
    p.drawText(QPointF(1720, 2010), QStringLiteral("FIXTURE PLATE  M3 / 16 mm GRID  NEST 3-B"));
    p.drawText(QPointF(110, 2010), QStringLiteral("RING LIGHT 660 nm  WD 310 mm  f 25 mm  F/8"));
    p.restore();
}

cv::Mat toGrey(const QImage& canvas)
{
    const QImage grey8 = canvas.convertToFormat(QImage::Format_Grayscale8);
    cv::Mat mat(grey8.height(), grey8.width(), CV_8UC1);
    for (int y = 0; y < grey8.height(); ++y)
        std::copy_n(grey8.constScanLine(y), grey8.width(), mat.ptr<uchar>(y));
    return mat;
}

} // namespace

cv::Mat makeSamplePicture(int width, int height)
{
    width = std::max(width, 16);
    height = std::max(height, 16);
    QImage canvas(width, height, QImage::Format_RGB32);
    {
        QPainter p(&canvas);
        p.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
        p.scale(width / kCanvasWidth, height / kCanvasHeight);
        QRandomGenerator rng(0x4b45u);
        fixturePlate(p);
        machinedPlate(p, rng);
        gear(p, rng);
        calibrationTarget(p);
        flange(p, rng);
        testCard(p);
        steelRule(p, rng);
        fixtureNote(p);
        cameraHeader(p);
    }

    // What the lens and the sensor add: a slight blur, a faint uneven
    // illumination, and noise. Seeded, so that every run gives the same bytes.
    cv::Mat grey = toGrey(canvas);
    cv::GaussianBlur(grey, grey, cv::Size(0, 0), 0.7);
    cv::Mat picture;
    grey.convertTo(picture, CV_32F);
    cv::RNG rng(20240614);
    cv::Mat shading(std::max(2, height / 96), std::max(2, width / 96), CV_32F);
    rng.fill(shading, cv::RNG::NORMAL, 0.0, 2.5);
    cv::resize(shading, shading, picture.size(), 0, 0, cv::INTER_CUBIC);
    cv::Mat noise(picture.size(), CV_32F);
    rng.fill(noise, cv::RNG::NORMAL, 0.0, 2.2);
    picture += shading + noise;
    cv::Mat result;
    picture.convertTo(result, CV_8U);
    return result;
}
