// The foreground layer, LAYER_FORE: records painted in viewport pixels over
// every scene item and under the reticles, whatever the zoom and scroll; what
// it refuses; visibility, removal, and a clear that keeps the ids listed.

#include <QtTest/QtTest>

#include "BackGroundItem.h"
#include "ForeGroundItem.h"
#include "ForeLayer.h"
#include "kitregions.h"
#include "kitshapedata.h"
#include "kitwindow.h"
#include "odshape.h"

#include "VorFont.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"

#include <QScrollBar>

using Kit::Params;

namespace {

constexpr QRgb kRed = 0xffff0000;
const QRgb kPictureGrey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);

// Pixels of an area that are mostly red: smoothed hairlines blend into what
// lies beneath.
int reddish(const QImage& image, const QRect& area)
{
    int count = 0;
    const QRect inside = area.intersected(image.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const QRgb c = image.pixel(x, y);
            count += qRed(c) > 120 && qRed(c) > qGreen(c) + 40 && qRed(c) > qBlue(c) + 40;
        }
    return count;
}

VorOverlay redOverlay(int code, const Params& values)
{
    VorOverlay overlay = Kit::makeOverlay(code, values);
    overlay.SetPen(255, 0, 0, 1);
    return overlay;
}

} // namespace

class TestForeLayer : public QObject
{
    Q_OBJECT

private slots:
    void sceneHasItsForeLayerInItsView();
    void kindsWithoutAStaticFormAreRefused_data();
    void kindsWithoutAStaticFormAreRefused();
    void roiTakesTheScenesColoursButNotItsCrossSize();
    void pointCrossHasHalfSizeFiveInViewportPixelsAtAnyZoom_data();
    void pointCrossHasHalfSizeFiveInViewportPixelsAtAnyZoom();
    void recordStaysInPlaceWhenTheViewScrolls();
    void rotatedRectangleOfARoiTurnsAboutItsCentre();
    void rectangleTurnedThirtyDegreesTurnsCounterClockwiseOnTheScreen_data();
    void rectangleTurnedThirtyDegreesTurnsCounterClockwiseOnTheScreen();
    void circleOverlayIsPaintedAsTheSquareAroundItAndACircleRoiAsACircle();
    void ellipseRoiIsPaintedUprightWhateverItsAngle();
    void textKeepsItsLowerCaseLWhereThePictureDropsIt();
    void pathReturnsTheLastValidId();
    void shapeVisibleOfAnUnknownIdIsRefusedAndRepaints();
    void hiddenRecordIsNotPainted();
    void removeShapeDeletesTheRecord();
    void clearShapeKeepsTheIdsListedAndPaintsNothing();
    void recordsPaintOverLiveShapesAndUnderTheCrossLine();
    void gridPaintsOverTheRecords();
};

void TestForeLayer::sceneHasItsForeLayerInItsView()
{
    Kit::PictureWindow w;
    QVERIFY(w.scene()->GetForeLayer() != nullptr);
    QVERIFY(w.scene()->GetForeLayer()->getShapeIDS().isEmpty());
}

void TestForeLayer::kindsWithoutAStaticFormAreRefused_data()
{
    QTest::addColumn<int>("overlayCode");
    QTest::addColumn<Params>("values");
    QTest::newRow("5 rake rectangle") << int(VorOverlay::OV_RAKERECT1) << Params{0, 0, 10, 10, 0, 3};
    QTest::newRow("11 rotated rake") << int(VorOverlay::OV_RAKERECT2) << Params{5, 5, 4, 2, 0, 0, 3};
    QTest::newRow("13 spoke torus") << int(VorOverlay::OV_SPOKETORUS) << Params{20, 20, 10, 5, 0, 90, 0, 3};
    QTest::newRow("9 closed line") << int(VorOverlay::OV_POLYLINE) << Params{0, 0, 5, 0, 5, 5};
    QTest::newRow("19 region") << int(VorOverlay::OV_REGION) << Params{};
}

void TestForeLayer::kindsWithoutAStaticFormAreRefused()
{
    QFETCH(int, overlayCode);
    QFETCH(Params, values);
    Kit::PictureWindow w;
    VorOverlay overlay = Kit::makeOverlay(overlayCode, values);
    if (overlayCode == VorOverlay::OV_REGION)
        overlay.GenRegion(VorRegion(Kit::blockMask(QSize(10, 10), QRect(0, 0, 4, 4))));
    QCOMPARE(overlay.OverlayType(), overlayCode);
    const long before = ODShape::s_ID;
    QCOMPARE(w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_FORE), -1L);
    QCOMPARE(ODShape::s_ID, before);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE).isEmpty());

    VorROI mask;
    mask.GenMask(Kit::blockMask(QSize(10, 10), QRect(0, 0, 4, 4)));
    QCOMPARE(w.wnd->displayROI(mask, KESImageWnd::LAYER_FORE), -1L);
}

void TestForeLayer::roiTakesTheScenesColoursButNotItsCrossSize()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(1, 2, 3));
    w.scene()->setBrushColor(QColor(4, 5, 6, 7));
    w.scene()->setCrossSize(12);
    VorROI roi = Kit::makeROI(VorROI::ROI_POINT, Params{50, 40});
    const long id = w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE);
    QVERIFY(id >= 0);
    const ForeGroundItem* item = w.scene()->GetForeLayer()->items().value(id);
    QVERIFY(item);
    QCOMPARE(item->GetPenColor(), QColor(1, 2, 3));
    QCOMPARE(item->GetBrushColor(), QColor(4, 5, 6, 7));
    QCOMPARE(item->getCrossSize(), 12);
    QCOMPARE(item->GetPainterPath().boundingRect(), QRectF(45, 35, 10, 10));
}

void TestForeLayer::pointCrossHasHalfSizeFiveInViewportPixelsAtAnyZoom_data()
{
    Kit::addZoomRows({1.0, 4.0});
}

void TestForeLayer::pointCrossHasHalfSizeFiveInViewportPixelsAtAnyZoom()
{
    QFETCH(double, zoom);
    Kit::PictureWindow w(zoom);
    w.scene()->setCrossSize(20);
    VorOverlay point = redOverlay(VorOverlay::OV_POINT, Params{100.5, 80.5});
    QVERIFY(w.wnd->displayOverlay(point, KESImageWnd::LAYER_FORE) >= 0);
    const QImage grab = w.grabViewport();
    // The arms end 5 viewport pixels from the centre, whatever the zoom.
    KIT_COMPARE_COLOUR(grab.pixel(100, 80), kRed, 1);
    KIT_COMPARE_COLOUR(grab.pixel(95, 80), kRed, 1);
    KIT_COMPARE_COLOUR(grab.pixel(105, 80), kRed, 1);
    KIT_COMPARE_COLOUR(grab.pixel(100, 75), kRed, 1);
    KIT_COMPARE_COLOUR(grab.pixel(100, 85), kRed, 1);
    QVERIFY(!Kit::colourNear(grab.pixel(93, 80), kRed));
    QVERIFY(!Kit::colourNear(grab.pixel(100, 87), kRed));
    QCOMPARE(Kit::countColour(grab, kRed), Kit::countColour(grab, QRect(94, 74, 13, 13), kRed));
}

void TestForeLayer::recordStaysInPlaceWhenTheViewScrolls()
{
    Kit::PictureWindow w(4.0);
    VorOverlay rect = redOverlay(VorOverlay::OV_RECT1, Params{20.5, 20.5, 60.5, 40.5});
    QVERIFY(w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE) >= 0);
    const QImage before = w.grabViewport();
    KIT_COMPARE_COLOUR(before.pixel(40, 20), kRed, 1);
    w.view()->horizontalScrollBar()->setValue(w.view()->horizontalScrollBar()->value() + 37);
    w.view()->verticalScrollBar()->setValue(w.view()->verticalScrollBar()->value() + 23);
    const QImage after = w.grabViewport();
    KIT_COMPARE_COLOUR(after.pixel(40, 20), kRed, 1);
    KIT_COMPARE_COLOUR(after.pixel(60, 30), kRed, 1);
    QCOMPARE(Kit::countColour(after, kRed), Kit::countColour(before, kRed));
}

void TestForeLayer::rotatedRectangleOfARoiTurnsAboutItsCentre()
{
    Kit::PictureWindow w(1.0);
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT2, Params{100, 80, 60, 10, 90});
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE) >= 0);
    const QImage grab = w.grabViewport();
    // Upright after the turn: 60 high, 10 wide about (100, 80).
    QVERIFY(reddish(grab, QRect(97, 48, 7, 5)) > 0);
    QVERIFY(reddish(grab, QRect(97, 108, 7, 5)) > 0);
    QCOMPARE(reddish(grab, QRect(68, 74, 6, 12)), 0);
    // An overlay keeps its own code, 10, and is drawn as its upright path.
    VorOverlay overlay = redOverlay(VorOverlay::OV_RECT2, Params{300, 80, 60, 10, 90});
    QVERIFY(w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_FORE) >= 0);
    const QImage again = w.grabViewport();
    QVERIFY(reddish(again, QRect(268, 74, 6, 12)) > 0);
    QCOMPARE(reddish(again, QRect(297, 48, 7, 5)), 0);
}

void TestForeLayer::rectangleTurnedThirtyDegreesTurnsCounterClockwiseOnTheScreen_data()
{
    Kit::addZoomRows({1.0, 4.0});
}

void TestForeLayer::rectangleTurnedThirtyDegreesTurnsCounterClockwiseOnTheScreen()
{
    QFETCH(double, zoom);
    Kit::PictureWindow w(zoom);
    w.scene()->setPenColor(QColor(kRed));
    // 40 by 20 about (50.7, 40.7) in viewport pixels, turned 30 degrees: the
    // box from (-20, -10) to (20, 10) about the whole pixel (50, 40), turned
    // counter-clockwise on the screen, whatever the zoom.
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT2, Params{50.7, 40.7, 40, 20, 30});
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE) >= 0);
    const QImage grab = w.grabViewport();
    // Beside points of the top edge, the bottom edge and the left end.
    for (const QPoint& onEdge : {QPoint(36, 36), QPoint(63, 43), QPoint(35, 54)})
        QVERIFY2(reddish(grab, Kit::around(onEdge, 1)) > 0,
                 qPrintable(QString("at %1, %2").arg(onEdge.x()).arg(onEdge.y())));
    // The same points turned clockwise instead, and the upright box's bottom
    // edge, stay clear.
    for (const QPoint& off : {QPoint(46, 26), QPoint(53, 53), QPoint(30, 34), QPoint(40, 50)})
        QVERIFY2(reddish(grab, Kit::around(off, 1)) == 0, qPrintable(QString("at %1, %2").arg(off.x()).arg(off.y())));
}

void TestForeLayer::circleOverlayIsPaintedAsTheSquareAroundItAndACircleRoiAsACircle()
{
    Kit::PictureWindow w(1.0);
    // A circle overlay keeps its own code, 6, which painting turns as a
    // rectangle: the bounds of the circle, not turned.
    VorOverlay overlay = redOverlay(VorOverlay::OV_CIRCLE, Params{100, 80, 20});
    QVERIFY(w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_FORE) >= 0);
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = Kit::makeROI(VorROI::ROI_CIRCLE, Params{200, 80, 20});
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE) >= 0);
    const QImage grab = w.grabViewport();
    // The square's top left corner, and the circle's point up and to the
    // right, each about its own centre.
    QVERIFY(reddish(grab, Kit::around(QPoint(80, 60), 1)) > 0);
    QCOMPARE(reddish(grab, Kit::around(QPoint(114, 65), 1)), 0);
    QCOMPARE(reddish(grab, Kit::around(QPoint(180, 60), 1)), 0);
    QVERIFY(reddish(grab, Kit::around(QPoint(214, 65), 1)) > 0);
}

void TestForeLayer::ellipseRoiIsPaintedUprightWhateverItsAngle()
{
    Kit::PictureWindow w(1.0);
    w.scene()->setPenColor(QColor(kRed));
    // Only code 6 turns: the ellipse keeps its turn of -30 and is drawn as
    // its upright path, 40 to each side and 15 up and down.
    VorROI roi = Kit::makeROI(VorROI::ROI_ELLIPSE, Params{100, 80, 40, 15, 30});
    const long id = w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE);
    QVERIFY(id >= 0);
    QCOMPARE(w.scene()->GetForeLayer()->items().value(id)->rotation(), -30.0);
    const QImage grab = w.grabViewport();
    QVERIFY(reddish(grab, Kit::around(QPoint(140, 80), 1)) > 0);
    QVERIFY(reddish(grab, Kit::around(QPoint(60, 80), 1)) > 0);
    QVERIFY(reddish(grab, Kit::around(QPoint(100, 65), 1)) > 0);
    // The ends of the major axis turned 30 degrees counter-clockwise.
    QCOMPARE(reddish(grab, Kit::around(QPoint(134, 60), 1)), 0);
    QCOMPARE(reddish(grab, Kit::around(QPoint(65, 100), 1)), 0);
}

void TestForeLayer::textKeepsItsLowerCaseLWhereThePictureDropsIt()
{
    KIT_REQUIRE_FONTS();
    Kit::PictureWindow w(1.0);
    VorOverlay overlay;
    overlay.GenText(VorPoint(20, 60), "hello", VorFont("DejaVu Sans", 20));
    overlay.SetPen(255, 0, 0, 1);
    QVERIFY(w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_FORE) >= 0);
    const long pictureId = w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_IMAGE);
    QVERIFY(pictureId >= 0);
    const BackGroundItem onPicture = w.imageLayer()->backGroundItems().value(pictureId);
    QCOMPARE(onPicture.getText(), QString("heo"));

    // Where the two l's stand, above the height of the small letters: of
    // "hello" only they reach there, and of "heo" nothing does.
    const QFontMetrics metrics(onPicture.getFont());
    const int left = metrics.horizontalAdvance("he") + 1;
    const QSize band(metrics.horizontalAdvance("hell") - left - 1, metrics.ascent() - metrics.xHeight() - 2);
    QVERIFY(band.width() > 2 && band.height() > 2);
    const QImage grab = w.grabViewport();
    // The foreground paints the path of the text from its baseline, in
    // viewport pixels.
    const QRect foreBand(QPoint(20 + left, 60 - metrics.ascent()), band);
    QVERIFY2(reddish(grab, foreBand) > 3, "the foreground dropped its l's");
    // The picture draws the string in its box, the top left corner at the
    // point, in image pixels.
    const QRect box(Kit::viewportPixelOf(w.view(), onPicture.getTextRect().topLeft()), onPicture.getTextRect().size());
    QVERIFY(reddish(grab, box) > 10);
    QCOMPARE(reddish(grab, QRect(box.topLeft() + QPoint(left, 0), band)), 0);
}

void TestForeLayer::pathReturnsTheLastValidId()
{
    Kit::PictureWindow w;
    VorOverlayPath path;
    path.Append(Kit::makeOverlay(VorOverlay::OV_RECT1, Params{0, 0, 10, 10}));
    path.Append(Kit::makeOverlay(VorOverlay::OV_LINE, Params{0, 0, 10, 10}));
    path.Append(Kit::makeOverlay(VorOverlay::OV_POLYLINE, Params{0, 0, 5, 0, 5, 5}));
    const long start = ODShape::s_ID;
    QCOMPARE(w.wnd->displayOverlayPath(path, KESImageWnd::LAYER_FORE), start + 1);
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{start, start + 1}));
}

void TestForeLayer::shapeVisibleOfAnUnknownIdIsRefusedAndRepaints()
{
    Kit::PictureWindow w;
    Kit::PaintCounter paints(w.view()->viewport());
    QCOMPARE(w.scene()->GetForeLayer()->ShapeVisible(424242424, false), -1L);
    QTRY_VERIFY(paints.paints > 0);
}

void TestForeLayer::hiddenRecordIsNotPainted()
{
    Kit::PictureWindow w;
    VorOverlay rect = redOverlay(VorOverlay::OV_RECT1, Params{20.5, 20.5, 60.5, 40.5});
    const long id = w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE);
    QCOMPARE(w.scene()->GetForeLayer()->ShapeVisible(id, false), id);
    QCOMPARE(Kit::countColour(w.grabViewport(), kRed), 0);
    QCOMPARE(w.scene()->GetForeLayer()->ShapeVisible(id, true), id);
    QVERIFY(Kit::countColour(w.grabViewport(), kRed) > 0);
}

void TestForeLayer::removeShapeDeletesTheRecord()
{
    Kit::PictureWindow w;
    VorOverlay rect = redOverlay(VorOverlay::OV_RECT1, Params{20.5, 20.5, 60.5, 40.5});
    const long id = w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE);
    ForeLayer* fore = w.scene()->GetForeLayer();
    QCOMPARE(fore->removeShape(id), id);
    QVERIFY(fore->getShapeIDS().isEmpty());
    QCOMPARE(fore->removeShape(id), -1L);
    QCOMPARE(Kit::countColour(w.grabViewport(), kRed), 0);
    const long a = w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE);
    const long b = w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE);
    fore->removeShapeList({a, 999999999});
    QCOMPARE(fore->getShapeIDS(), (QList<long>{b}));
}

void TestForeLayer::clearShapeKeepsTheIdsListedAndPaintsNothing()
{
    Kit::PictureWindow w;
    VorOverlay rect = redOverlay(VorOverlay::OV_RECT1, Params{20.5, 20.5, 60.5, 40.5});
    const long a = w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE);
    const long b = w.wnd->displayOverlay(rect, KESImageWnd::LAYER_FORE);
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_FORE), 0L);
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{a, b}));
    // The kept ids are harmless: painting, visibility and removal skip them.
    w.view()->viewport()->update();
    QCOMPARE(Kit::countColour(w.grabViewport(), kRed), 0);
    QCOMPARE(w.scene()->GetForeLayer()->ShapeVisible(a, true), -1L);
    QCOMPARE(w.scene()->GetForeLayer()->removeShape(a), -1L);
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{b}));
}

void TestForeLayer::recordsPaintOverLiveShapesAndUnderTheCrossLine()
{
    Kit::PictureWindow w(1.0);
    w.scene()->setPenColor(QColor(0, 255, 0));
    w.scene()->setBrushColor(QColor(0, 255, 0, 255));
    VorROI live = Kit::makeROI(VorROI::ROI_RECT1, Params{10, 10, 90, 90});
    QVERIFY(w.wnd->displayROI(live, KESImageWnd::LAYER_SHAPE) >= 0);
    // The picture lies centred in the viewport: the record is placed in
    // viewport pixels across the live shape's middle.
    const QPoint middle = Kit::viewportPixelOf(w.view(), QPointF(50.5, 50.5));
    VorOverlay line = redOverlay(VorOverlay::OV_LINE, Params{0.5, middle.y() + 0.5, 639.5, middle.y() + 0.5});
    QVERIFY(w.wnd->displayOverlay(line, KESImageWnd::LAYER_FORE) >= 0);
    const int crossX = middle.x() - 20;
    QCOMPARE(w.wnd->setCrossLineInfo(QString("{\"visible\":true,\"point\":\"%1,%2\",\"color\":\"0,0,255,255\","
                                             "\"circleRadius\":5,\"lineWidth\":1}")
                                         .arg(crossX)
                                         .arg(middle.y() + 100)),
             0L);
    const QImage grab = w.grabViewport();
    // The record over the live shape's fill.
    KIT_COMPARE_COLOUR(grab.pixel(middle), kRed, 1);
    KIT_COMPARE_COLOUR(grab.pixel(middle + QPoint(0, -10)), qRgb(0, 255, 0), 1);
    // The reticle's vertical arm over the record.
    KIT_COMPARE_COLOUR(grab.pixel(crossX, middle.y()), qRgb(0, 0, 255), 1);
    // Beside the picture, over the grey background, the record still paints.
    KIT_COMPARE_COLOUR(grab.pixel(2, middle.y()), kRed, 1);
}

void TestForeLayer::gridPaintsOverTheRecords()
{
    Kit::PictureWindow w(1.0);
    QCOMPARE(w.wnd->setGridLineInfo("{\"visible\":true,\"gap\":50,\"color\":\"255,255,0,255\",\"lineWidth\":1}"),
             0L);
    // Along row 75, across the grid's columns at 50, 100, ...
    VorOverlay line = redOverlay(VorOverlay::OV_LINE, Params{0.5, 75.5, 639.5, 75.5});
    QVERIFY(w.wnd->displayOverlay(line, KESImageWnd::LAYER_FORE) >= 0);
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(grab.pixel(55, 75), kRed, 1);
    KIT_COMPARE_COLOUR(grab.pixel(50, 70), qRgb(255, 255, 0), 1);
    // Where they cross, the grid.
    KIT_COMPARE_COLOUR(grab.pixel(50, 75), qRgb(255, 255, 0), 1);
    KIT_COMPARE_COLOUR(grab.pixel(300, 75), qRgb(255, 255, 0), 1);
}

QTEST_MAIN(TestForeLayer)
#include "tst_forelayer.moc"
