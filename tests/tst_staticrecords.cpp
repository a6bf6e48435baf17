// The static records of the image layer and the foreground: the painter path a
// ROI or an overlay becomes once, the type code each record keeps, the colour
// locks, the text readings, and the arrow's whole-pixel barbs.

#include <QtTest/QtTest>

#include "BackGroundItem.h"
#include "ForeGroundItem.h"
#include "geometryhelpers.h"
#include "imagectrlscene.h"
#include "kitregions.h"
#include "kitshapedata.h"
#include "staticshape.h"

#include "VorFont.h"
#include "VorOverlay.h"
#include "VorROI.h"

#include <QTextCodec>

#include <cmath>

using Kit::Params;

namespace {

// A path as the list of its elements: kind, x, y for each.
QList<QVector<double>> elementsOf(const QPainterPath& path)
{
    QList<QVector<double>> elements;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        elements.append({double(e.type), e.x, e.y});
    }
    return elements;
}

VorOverlay textOverlay(const char* bytes, double x = 10, double y = 20)
{
    VorOverlay overlay;
    VorFont font("DejaVu Sans", 12);
    overlay.GenText(VorPoint(x, y), bytes, font);
    return overlay;
}

constexpr double kMove = QPainterPath::MoveToElement;
constexpr double kLine = QPainterPath::LineToElement;

} // namespace

class TestStaticRecords : public QObject
{
    Q_OBJECT

private slots:
    void roiPathsFollowTheirKind_data();
    void roiPathsFollowTheirKind();
    void overlayTypeCodesOfTheImageLayer_data();
    void overlayTypeCodesOfTheImageLayer();
    void foregroundKeepsTheOverlaysOwnCode();
    void polygonWithoutPointsIsAnEmptyValidPath();
    void polygonIsClosedByItsFirstPoint();
    void rotatedRectangleIsStoredUprightWithItsTurn();
    void pointCrossTakesTheScenesSizeOnTheImageLayerOnly();
    void crossSizeSetLaterDoesNotRebuildThePath();
    void torusPathRunsOuterArcThenInnerArcBack();
    void arcPathStartsAtTheCentre();
    void arrowOfLengthZeroStillGetsItsBarbs();
    void arrowBarbsLandOnWholePixels();
    void diagonalArrowBarbsTruncateEachOffsetBeforeTheSum();
    void overlaysOwnPenIsLockedOnTheImageLayerOnly();
    void overlaysOwnBrushIsLockedOnTheImageLayerOnly();
    void copyKeepsEverythingItShows();
    void imageLayerTextDropsLineBreaksAndLowerCaseL();
    void foregroundTextStaysAsGiven();
    void imageLayerReadsGb18030WhateverTheLocale();
    void textBoxFollowsTheFontMetrics();
    void textFontCarriesNoUnderline();
    void textFarOffKeepsItsBoxWithinInt();
    void getPointTurnsCounterClockwiseInSinglePrecision();
};

void TestStaticRecords::roiPathsFollowTheirKind_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Params>("values");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QRectF>("bounds");

    QTest::newRow("0 rectangle from its corners") << int(VorROI::ROI_RECT1) << Params{10, 20, 50, 60} << true
                                                  << QRectF(10, 20, 40, 40);
    QTest::newRow("1 circle") << int(VorROI::ROI_CIRCLE) << Params{50, 40, 10} << true << QRectF(40, 30, 20, 20);
    QTest::newRow("6 rotated rectangle, upright") << int(VorROI::ROI_RECT2) << Params{50, 40, 30, 10, 45} << true
                                                  << QRectF(35, 35, 30, 10);
    QTest::newRow("8 ellipse, upright") << int(VorROI::ROI_ELLIPSE) << Params{50, 40, 20, 10, 30} << true
                                        << QRectF(30, 30, 40, 20);
    QTest::newRow("7 line") << int(VorROI::ROI_LINE) << Params{1, 2, 31, 42} << true << QRectF(1, 2, 30, 40);
    QTest::newRow("5 free line") << int(VorROI::ROI_IRREGULAR) << Params{0, 0, 10, 0, 10, 5} << true
                                 << QRectF(0, 0, 10, 5);
    QTest::newRow("11 mask is no static kind") << int(VorROI::ROI_MASK) << Params{} << false << QRectF();
    QTest::newRow("3 no kind") << int(VorROI::ROI_NONE) << Params{} << false << QRectF();
    QTest::newRow("12 closed free line is no static kind") << int(VorROI::ROI_POLYLINE) << Params{0, 0, 10, 0, 10, 5}
                                                           << false << QRectF();
}

void TestStaticRecords::roiPathsFollowTheirKind()
{
    QFETCH(int, code);
    QFETCH(Params, values);
    QFETCH(bool, valid);
    QFETCH(QRectF, bounds);

    VorROI roi;
    if (code == VorROI::ROI_MASK) {
        roi.GenMask(Kit::blockMask(QSize(8, 8), QRect(2, 2, 4, 4)));
    } else {
        roi = Kit::makeROI(code, values);
    }
    QCOMPARE(roi.ROIType(), code);

    const BackGroundItem back(roi, nullptr);
    const ForeGroundItem fore(roi, nullptr);
    QCOMPARE(back.isValid(), valid);
    QCOMPARE(fore.isValid(), valid);
    QCOMPARE(back.type(), code);
    QCOMPARE(fore.type(), code);
    if (valid) {
        QCOMPARE(back.GetPainterPath().boundingRect(), bounds);
        QCOMPARE(elementsOf(fore.GetPainterPath()), elementsOf(back.GetPainterPath()));
    } else {
        QVERIFY(back.GetPainterPath().isEmpty());
    }
}

void TestStaticRecords::overlayTypeCodesOfTheImageLayer_data()
{
    QTest::addColumn<int>("overlayCode");
    QTest::addColumn<Params>("values");
    QTest::addColumn<int>("expectedType");

    QTest::newRow("4 rectangle as 0") << int(VorOverlay::OV_RECT1) << Params{0, 0, 10, 10} << 0;
    QTest::newRow("10 rotated rectangle as 6") << int(VorOverlay::OV_RECT2) << Params{5, 5, 4, 2, 0} << 6;
    QTest::newRow("7 ellipse as 8") << int(VorOverlay::OV_ELLIPSE) << Params{5, 5, 4, 2, 0} << 8;
    QTest::newRow("6 circle as 1") << int(VorOverlay::OV_CIRCLE) << Params{5, 5, 4} << 1;
    QTest::newRow("8 polygon as 4") << int(VorOverlay::OV_POLYGON) << Params{0, 0, 5, 0, 5, 5} << 4;
    QTest::newRow("15 free line as 5") << int(VorOverlay::OV_IRREGULAR) << Params{0, 0, 5, 0, 5, 5} << 5;
    QTest::newRow("3 line as 7") << int(VorOverlay::OV_LINE) << Params{0, 0, 5, 5} << 7;
    QTest::newRow("1 point as 10") << int(VorOverlay::OV_POINT) << Params{5, 5} << 10;
    QTest::newRow("12 torus as 2") << int(VorOverlay::OV_TORUS) << Params{20, 20, 10, 5, 0, 90} << 2;
    QTest::newRow("2 arrow as a line, 7") << int(VorOverlay::OV_ARROWLINE) << Params{0, 0, 20, 0} << 7;
    QTest::newRow("14 arc as 9") << int(VorOverlay::OV_ARC) << Params{20, 20, 10, 0, 90} << 9;
    QTest::newRow("5 rake rectangle refused") << int(VorOverlay::OV_RAKERECT1) << Params{0, 0, 10, 10, 0, 3} << -1;
    QTest::newRow("11 rotated rake refused") << int(VorOverlay::OV_RAKERECT2) << Params{5, 5, 4, 2, 0, 0, 3} << -1;
    QTest::newRow("13 spoke torus refused") << int(VorOverlay::OV_SPOKETORUS) << Params{20, 20, 10, 5, 0, 90, 0, 3}
                                            << -1;
    QTest::newRow("9 closed line refused") << int(VorOverlay::OV_POLYLINE) << Params{0, 0, 5, 0, 5, 5} << -1;
    QTest::newRow("0 no kind refused") << int(VorOverlay::OV_NONE) << Params{} << -1;
    QTest::newRow("17 cross refused") << int(VorOverlay::OV_CROSS) << Params{5, 5, 4, 0} << -1;
    QTest::newRow("18 arrowed line refused") << int(VorOverlay::OV_POLYARROW) << Params{0, 0, 5, 5} << -1;
}

void TestStaticRecords::overlayTypeCodesOfTheImageLayer()
{
    QFETCH(int, overlayCode);
    QFETCH(Params, values);
    QFETCH(int, expectedType);

    VorOverlay overlay = Kit::makeOverlay(overlayCode, values);
    QCOMPARE(overlay.OverlayType(), overlayCode);
    const BackGroundItem back(overlay, nullptr);
    QCOMPARE(back.type(), expectedType);
    QCOMPARE(back.isValid(), expectedType != -1);
    const ForeGroundItem fore(overlay, nullptr);
    QCOMPARE(fore.isValid(), expectedType != -1);
}

void TestStaticRecords::foregroundKeepsTheOverlaysOwnCode()
{
    for (int code : {int(VorOverlay::OV_RECT1), int(VorOverlay::OV_RECT2), int(VorOverlay::OV_CIRCLE),
                     int(VorOverlay::OV_ARROWLINE), int(VorOverlay::OV_POLYLINE)}) {
        VorOverlay overlay = Kit::makeOverlay(code, Params{5, 5, 9, 9, 0, 0, 0, 0});
        QCOMPARE(ForeGroundItem(overlay, nullptr).type(), code);
    }
    VorOverlay region;
    region.GenRegion(VorRegion());
    const ForeGroundItem fore(region, nullptr);
    QCOMPARE(fore.type(), int(VorOverlay::OV_REGION));
    QVERIFY(!fore.isValid());
    QCOMPARE(BackGroundItem(region, nullptr).type(), -1);
}

void TestStaticRecords::polygonWithoutPointsIsAnEmptyValidPath()
{
    VorROI roi;
    roi.GenPolygon(VorPointArray());
    const BackGroundItem back(roi, nullptr);
    QVERIFY(back.isValid());
    QVERIFY(back.GetPainterPath().isEmpty());
    QCOMPARE(back.GetPainterPath().elementCount(), 0);
    const ForeGroundItem fore(roi, nullptr);
    QVERIFY(fore.isValid());
    QCOMPARE(fore.type(), int(VorROI::ROI_POLYGON));
    QVERIFY(fore.GetPainterPath().isEmpty());
    QCOMPARE(fore.GetPainterPath().elementCount(), 0);
}

void TestStaticRecords::polygonIsClosedByItsFirstPoint()
{
    VorROI roi = Kit::makeROI(VorROI::ROI_POLYGON, Params{0, 0, 10, 0, 10, 10});
    const QList<QVector<double>> elements = elementsOf(BackGroundItem(roi, nullptr).GetPainterPath());
    const QList<QVector<double>> expected{{kMove, 0, 0}, {kLine, 10, 0}, {kLine, 10, 10}, {kLine, 0, 0}};
    QCOMPARE(elements, expected);
}

void TestStaticRecords::rotatedRectangleIsStoredUprightWithItsTurn()
{
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT2, Params{50.4, 40.6, 30, 10, 30});
    const BackGroundItem back(roi, nullptr);
    QCOMPARE(back.rotation(), -30.0);
    QCOMPARE(back.getPoint(), QPoint(50, 41));
    QCOMPARE(back.GetPainterPath().boundingRect(), QRectF(50.4 - 15, 40.6 - 5, 30, 10));
    QCOMPARE(ForeGroundItem(roi, nullptr).rotation(), -30.0);

    VorROI ellipse = Kit::makeROI(VorROI::ROI_ELLIPSE, Params{50, 40, 20, 10, -60});
    QCOMPARE(BackGroundItem(ellipse, nullptr).rotation(), 60.0);
    VorROI circle = Kit::makeROI(VorROI::ROI_CIRCLE, Params{50, 40, 20});
    QCOMPARE(BackGroundItem(circle, nullptr).rotation(), 0.0);
}

void TestStaticRecords::pointCrossTakesTheScenesSizeOnTheImageLayerOnly()
{
    ImageCtrlScene scene;
    scene.setCrossSize(9);
    VorROI roi = Kit::makeROI(VorROI::ROI_POINT, Params{20, 30});

    const BackGroundItem back(roi, &scene);
    QCOMPARE(back.getCrossSize(), 9);
    const QList<QVector<double>> nine{{kMove, 11, 30}, {kLine, 29, 30}, {kMove, 20, 21}, {kLine, 20, 39}};
    QCOMPARE(elementsOf(back.GetPainterPath()), nine);

    const BackGroundItem withoutScene(roi, nullptr);
    QCOMPARE(withoutScene.getCrossSize(), 5);
    const QList<QVector<double>> five{{kMove, 15, 30}, {kLine, 25, 30}, {kMove, 20, 25}, {kLine, 20, 35}};
    QCOMPARE(elementsOf(withoutScene.GetPainterPath()), five);

    const ForeGroundItem fore(roi, nullptr);
    QCOMPARE(fore.getCrossSize(), 5);
    QCOMPARE(elementsOf(fore.GetPainterPath()), five);
}

void TestStaticRecords::crossSizeSetLaterDoesNotRebuildThePath()
{
    VorROI roi = Kit::makeROI(VorROI::ROI_POINT, Params{20, 30});
    BackGroundItem back(roi, nullptr);
    const QPainterPath before = back.GetPainterPath();
    back.setCrossSize(12);
    QCOMPARE(back.getCrossSize(), 12);
    QCOMPARE(back.GetPainterPath(), before);
    ForeGroundItem fore(roi, nullptr);
    fore.setCrossSize(12);
    QCOMPARE(fore.getCrossSize(), 12);
    QCOMPARE(fore.GetPainterPath(), before);
}

void TestStaticRecords::torusPathRunsOuterArcThenInnerArcBack()
{
    const double cx = 50, cy = 40, r1 = 20, r2 = 10, angle = 30, sweep = 60;
    VorROI roi = Kit::makeROI(VorROI::ROI_TORUS, Params{cx, cy, r1, r2, angle, sweep});
    const BackGroundItem back(roi, nullptr);
    QVERIFY(back.isValid());

    QPainterPath expected;
    const QRectF outer(cx - r1, cy - r1, 2 * r1, 2 * r1);
    const QRectF inner(cx - r2, cy - r2, 2 * r2, 2 * r2);
    expected.arcMoveTo(outer, 30.0f);
    expected.arcTo(outer, 30.0f, sweep);
    expected.lineTo(BackGroundItem::GetPoint(cx, cy, float(r2), float(angle + sweep)));
    expected.arcTo(inner, 90.0f, -sweep);
    expected.lineTo(BackGroundItem::GetPoint(cx, cy, float(r1), float(angle)));
    QCOMPARE(elementsOf(back.GetPainterPath()), elementsOf(expected));

    // The outer arc starts at 30 degrees, counter-clockwise on the screen:
    // up and to the right of the centre.
    const QPointF start = back.GetPainterPath().elementAt(0);
    QVERIFY(std::fabs(start.x() - (cx + r1 * std::cos(M_PI / 6))) < 0.01);
    QVERIFY(std::fabs(start.y() - (cy - r1 * std::sin(M_PI / 6))) < 0.01);

    // A negative sweep is used as it is given.
    VorROI negative = Kit::makeROI(VorROI::ROI_TORUS, Params{cx, cy, r1, r2, angle, -sweep});
    QPainterPath mirrored;
    mirrored.arcMoveTo(outer, 30.0f);
    mirrored.arcTo(outer, 30.0f, -sweep);
    QCOMPARE(BackGroundItem(negative, nullptr).GetPainterPath().elementAt(1).x, mirrored.elementAt(1).x);
}

void TestStaticRecords::arcPathStartsAtTheCentre()
{
    VorROI roi = Kit::makeROI(VorROI::ROI_ARC, Params{50, 40, 20, 0, 90});
    const QPainterPath path = BackGroundItem(roi, nullptr).GetPainterPath();
    QCOMPARE(QPointF(path.elementAt(0)), QPointF(50, 40));
    QCOMPARE(int(path.elementAt(0).type), int(QPainterPath::MoveToElement));
    // A line from the centre to the arc's start at 0 degrees, then the arc
    // over the end value taken as its sweep, up to the top.
    QCOMPARE(QPointF(path.elementAt(1)), QPointF(70, 40));
    QCOMPARE(path.currentPosition(), QPointF(50, 20));
}

void TestStaticRecords::arrowOfLengthZeroStillGetsItsBarbs()
{
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_ARROWLINE, Params{10, 10, 10, 10});
    // atan2(0, 0) is 0: the barbs point back along x. The line of no length
    // and its move are folded away by the path itself.
    QPainterPath barbs;
    barbs.moveTo(10, 10);
    barbs.lineTo(10, 10);
    barbs.moveTo(3, 13);
    barbs.lineTo(10, 10);
    barbs.lineTo(3, 7);
    const QList<QVector<double>> expected = elementsOf(barbs);
    QCOMPARE(expected.size(), 3);
    QCOMPARE(elementsOf(BackGroundItem(overlay, nullptr).GetPainterPath()), expected);
    QCOMPARE(elementsOf(ForeGroundItem(overlay, nullptr).GetPainterPath()), expected);
}

void TestStaticRecords::arrowBarbsLandOnWholePixels()
{
    // Straight down: t = 90 degrees, c = 0 (within rounding), s = 1; the
    // second barb's 3.5 less a rounding error truncates to 3.
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_ARROWLINE, Params{20.5, 0, 20.5, 30.7});
    const QPainterPath path = BackGroundItem(overlay, nullptr).GetPainterPath();
    const double t = std::atan2(30.7, 0.0);
    const double c = std::cos(t), s = std::sin(t);
    const QPointF first(int(20.5 + std::trunc(-3.5 * s - 7 * c)), int(30.7 + std::trunc(3.5 * c - 7 * s)));
    const QPointF second(int(20.5 + std::trunc(3.5 * s - 7 * c)), int(30.7 - std::trunc(3.5 * c + 7 * s)));
    QCOMPARE(QPointF(path.elementAt(2)), first);
    QCOMPARE(QPointF(path.elementAt(4)), second);
    QCOMPARE(first, QPointF(17, 23));
    QCOMPARE(second, QPointF(23, 23));
}

void TestStaticRecords::diagonalArrowBarbsTruncateEachOffsetBeforeTheSum()
{
    // From (0, 0) to (10.3, 10.3): t = 45 degrees, c = s = 0.7071. The
    // offsets are -10.5 * 0.7071 = -7.42 and -3.5 * 0.7071 = -2.47, which
    // truncate to -7 and -2 before they are added to 10.3: the barbs end at
    // (3, 8) and (8, 3). Summed first and truncated once they would end at
    // (2, 7) and (7, 2).
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_ARROWLINE, Params{0, 0, 10.3, 10.3});
    const QList<QVector<double>> expected{
        {kMove, 0, 0}, {kLine, 10.3, 10.3}, {kMove, 3, 8}, {kLine, 10.3, 10.3}, {kLine, 8, 3}};
    QCOMPARE(elementsOf(BackGroundItem(overlay, nullptr).GetPainterPath()), expected);
    QCOMPARE(elementsOf(ForeGroundItem(overlay, nullptr).GetPainterPath()), expected);
}

void TestStaticRecords::overlaysOwnPenIsLockedOnTheImageLayerOnly()
{
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_RECT1, Params{0, 0, 10, 10});
    overlay.SetPen(200, 100, 50, 7);
    BackGroundItem back(overlay, nullptr);
    QCOMPARE(back.GetPenColor(), QColor(200, 100, 50, 255));
    back.SetPenColor(Qt::red);
    QCOMPARE(back.GetPenColor(), QColor(200, 100, 50, 255));
    // The brush was not brought: it stays settable.
    back.SetBrushColor(QColor(1, 2, 3, 4));
    QCOMPARE(back.GetBrushColor(), QColor(1, 2, 3, 4));

    ForeGroundItem fore(overlay, nullptr);
    QCOMPARE(fore.GetPenColor(), QColor(200, 100, 50, 255));
    fore.SetPenColor(Qt::red);
    QCOMPARE(fore.GetPenColor(), QColor(Qt::red));
}

void TestStaticRecords::overlaysOwnBrushIsLockedOnTheImageLayerOnly()
{
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_RECT1, Params{0, 0, 10, 10});
    overlay.SetBrush(10, 20, 30, 40);
    BackGroundItem back(overlay, nullptr);
    back.SetBrushColor(Qt::red);
    QCOMPARE(back.GetBrushColor(), QColor(10, 20, 30, 40));
    ForeGroundItem fore(overlay, nullptr);
    QCOMPARE(fore.GetBrushColor(), QColor(10, 20, 30, 40));
    fore.SetBrushColor(Qt::red);
    QCOMPARE(fore.GetBrushColor(), QColor(Qt::red));
    // Without colours of its own, the foreground record's colour is invalid.
    VorOverlay plain = Kit::makeOverlay(VorOverlay::OV_RECT1, Params{0, 0, 10, 10});
    QVERIFY(!ForeGroundItem(plain, nullptr).GetPenColor().isValid());
}

void TestStaticRecords::copyKeepsEverythingItShows()
{
    VorOverlay overlay = textOverlay("abc", 4, 5);
    overlay.SetPen(1, 2, 3, 1);
    BackGroundItem original(overlay, nullptr);
    original.SetVisible(false);
    original.setLineWidth(3.5f);
    original.setCrossSize(8);
    const BackGroundItem copy(original);
    QCOMPARE(copy.isValid(), original.isValid());
    QCOMPARE(copy.GetPainterPath(), original.GetPainterPath());
    QCOMPARE(copy.GetPenColor(), original.GetPenColor());
    QCOMPARE(copy.GetBrushColor(), original.GetBrushColor());
    QCOMPARE(copy.type(), 16);
    QCOMPARE(copy.GetVisible(), false);
    QCOMPARE(copy.getLineWidth(), 3.5f);
    QCOMPARE(copy.getCrossSize(), 8);
    QCOMPARE(copy.getText(), QString("abc"));
    QCOMPARE(copy.getTextRect(), original.getTextRect());
    QCOMPARE(copy.getFont(), original.getFont());
    BackGroundItem assigned;
    assigned = original;
    QCOMPARE(assigned.getText(), QString("abc"));
    QCOMPARE(assigned.GetPenColor(), QColor(1, 2, 3));
}

void TestStaticRecords::imageLayerTextDropsLineBreaksAndLowerCaseL()
{
    VorOverlay overlay = textOverlay("hel\nlo\r World L");
    const BackGroundItem back(overlay, nullptr);
    QVERIFY(back.isValid());
    QCOMPARE(back.type(), 16);
    QCOMPARE(back.getText(), QString("heo Word L"));
    VorOverlay hello = textOverlay("hello");
    QCOMPARE(BackGroundItem(hello, nullptr).getText(), QString("heo"));
}

void TestStaticRecords::foregroundTextStaysAsGiven()
{
    VorOverlay hello = textOverlay("hello", 10, 20);
    const ForeGroundItem fore(hello, nullptr);
    QVERIFY(fore.isValid());
    QCOMPARE(fore.type(), 16);
    const BackGroundItem back(hello, nullptr);
    QPainterPath expected;
    expected.addText(10, 20, back.getFont(), "hello");
    QCOMPARE(elementsOf(fore.GetPainterPath()), elementsOf(expected));
    QPainterPath heo;
    heo.addText(10, 20, back.getFont(), "heo");
    QCOMPARE(elementsOf(back.GetPainterPath()), elementsOf(heo));
}

void TestStaticRecords::imageLayerReadsGb18030WhateverTheLocale()
{
    const Kit::LocalCodecScope latin1("ISO-8859-1");
    // Two characters in GB18030 bytes.
    const char bytes[] = "\xC4\xE3\xBA\xC3";
    VorOverlay overlay = textOverlay(bytes);
    const BackGroundItem back(overlay, nullptr);
    const QString expected = QString::fromUtf8("\xE4\xBD\xA0\xE5\xA5\xBD");
    QCOMPARE(back.getText(), expected);
    // The foreground reads the same bytes in the local encoding, here Latin-1.
    const ForeGroundItem fore(overlay, nullptr);
    QPainterPath latin;
    latin.addText(10, 20, back.getFont(), QString::fromLatin1(bytes));
    QCOMPARE(elementsOf(fore.GetPainterPath()), elementsOf(latin));
}

void TestStaticRecords::textBoxFollowsTheFontMetrics()
{
    VorOverlay overlay = textOverlay("Mark", 12.7, 30.2);
    const BackGroundItem back(overlay, nullptr);
    QFont font("Times", 18);
    font.setFamily("DejaVu Sans");
    font.setWeight(50);
    font.setItalic(false);
    font.setStrikeOut(false);
    font.setPointSize(12);
    QCOMPARE(back.getFont(), font);
    const QFontMetrics metrics(font);
    QCOMPARE(back.getTextRect(), QRect(12, 30, metrics.width("Mark"), metrics.height()));
}

void TestStaticRecords::textFontCarriesNoUnderline()
{
    VorOverlay overlay;
    VorFont font("DejaVu Sans", 14);
    font.italic = 1;
    font.underline = 1;
    font.strikeOut = 1;
    font.weight = 75;
    overlay.GenText(VorPoint(0, 0), "x", font);
    const QFont made = BackGroundItem(overlay, nullptr).getFont();
    QVERIFY(made.italic());
    QVERIFY(made.strikeOut());
    QVERIFY(!made.underline());
    QCOMPARE(made.weight(), 75);
    QCOMPARE(made.pointSize(), 14);
    QCOMPARE(made.family(), QString("DejaVu Sans"));
}

void TestStaticRecords::textFarOffKeepsItsBoxWithinInt()
{
    VorOverlay far = textOverlay("far", 1e300, -1e300);
    const QRect box = BackGroundItem(far, nullptr).getTextRect();
    QCOMPARE(box.left(), 1 << 30);
    QCOMPARE(box.top(), -(1 << 30));
    QVERIFY(box.right() > box.left());
    VorOverlay nan = textOverlay("nan", std::nan(""), 5);
    QCOMPARE(BackGroundItem(nan, nullptr).getTextRect().left(), 0);
}

void TestStaticRecords::getPointTurnsCounterClockwiseInSinglePrecision()
{
    const float a = ConvertAngle(30.0f);
    const float radians = a * 3.141592f / 180.0f;
    const QPointF expected(100.0 + double(10.0f * std::cos(radians)), 50.0 - double(10.0f * std::sin(radians)));
    QCOMPARE(BackGroundItem::GetPoint(100.0, 50.0, 10.0f, 30.0f), expected);
    QCOMPARE(StaticShape::GetPoint(100.0, 50.0, 10.0f, 30.0f), expected);
    // -90 turns to 270: straight down on the screen.
    const QPointF down = BackGroundItem::GetPoint(0.0, 0.0, 10.0f, -90.0f);
    QVERIFY(std::fabs(down.x()) < 1e-4);
    QVERIFY(std::fabs(down.y() - 10.0) < 1e-4);
}

QTEST_MAIN(TestStaticRecords)
#include "tst_staticrecords.moc"
