// The static records of LAYER_IMAGE: made from ROIs, overlays and paths in
// the scene's look or their own colours, ids from the shared counter, the
// worker's form with its region image, visibility, removal and clearing, and
// how they paint on the picture in image pixels.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "kitregions.h"
#include "kitshapedata.h"
#include "kitwindow.h"
#include "odregion.h"
#include "odshape.h"

#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"
#include "VorRegion.h"

using Kit::Params;

namespace {

constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kGreenRegion = 0xff00ff00;
const QRgb kPictureGrey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);

VorOverlay regionOverlay(const QRect& block, QSize size = QSize(200, 150))
{
    VorRegion region(Kit::blockMask(size, block));
    VorOverlay overlay;
    overlay.GenRegion(region);
    return overlay;
}

VorOverlay penOverlay(int code, const Params& values, QRgb colour)
{
    VorOverlay overlay = Kit::makeOverlay(code, values);
    overlay.SetPen(qRed(colour), qGreen(colour), qBlue(colour), 1);
    return overlay;
}

} // namespace

class TestImageLayerShapes : public QObject
{
    Q_OBJECT

private slots:
    void roiTakesTheScenesLook();
    void roiPaintsOnThePictureInImagePixels_data();
    void roiPaintsOnThePictureInImagePixels();
    void maskROIIsRefusedButStillRepaints();
    void overlayKeepsOnlyItsOwnColours();
    void idsComeFromTheSharedCounter();
    void pathReturnsTheLastValidIdWhereTheShapeLayerGivesTheFirst();
    void pathPointKeepsACrossOfHalfSizeFive();
    void pathOverlaysOwnColoursWinOverTheScenes();
    void runPathWithOnlyARegionMakesNoIdAndChangesTheRegionImage();
    void runPathGivesItsIdsInOrderWithoutRepainting();
    void runPathRegionReplacesTheRegionBefore();
    void rotatedRectangleTurnsAboutTheCentreOfItsStoredRectangle();
    void rectangleTurnedThirtyDegreesTurnsCounterClockwiseAboutAWholePixelCentre_data();
    void rectangleTurnedThirtyDegreesTurnsCounterClockwiseAboutAWholePixelCentre();
    void ellipseTurnsAboutItsCentre();
    void freeLineIsFilledWithItsBrush();
    void freeLineOverlayWithoutABrushIsFilledOpaqueBlack();
    void penWidthIsTheLineWidthTruncated();
    void textIsPaintedInItsBoxWithoutLowerCaseL();
    void clearShapeAlsoRemovesTheRegionImage();
    void shapeVisibleKeepsTheIdAndTheOrder();
    void shapeVisibleOfAnUnknownIdIsRefusedAndRepaints();
    void removedIdIsNoLongerListed();
    void removeShapeListRemovesOnlyWhatItHolds();
    void recordsPaintOverTheRegionAndUnderLiveShapes();
    void recordsStillPaintAfterARegionOfNoSize();
    void recordsAreNotFoundByTheShapeLayersReadBack();
};

void TestImageLayerShapes::roiTakesTheScenesLook()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(10, 20, 30));
    w.scene()->setBrushColor(QColor(40, 50, 60, 70));
    w.scene()->setCrossSize(7);
    w.scene()->setLineWidth(2.5f);
    QFont font("DejaVu Sans", 9);
    w.scene()->setFont(font);
    VorROI roi = Kit::makeROI(VorROI::ROI_POINT, Params{50, 40});
    const long id = w.imageLayer()->DrawROI(roi);
    QVERIFY(id >= 0);
    const BackGroundItem record = w.imageLayer()->backGroundItems().value(id);
    QCOMPARE(record.GetPenColor(), QColor(10, 20, 30));
    QCOMPARE(record.GetBrushColor(), QColor(40, 50, 60, 70));
    QCOMPARE(record.getCrossSize(), 7);
    QCOMPARE(record.getLineWidth(), 2.5f);
    QCOMPARE(record.getFont(), font);
    // The cross was built with the scene's size.
    QCOMPARE(record.GetPainterPath().boundingRect(), QRectF(43, 33, 14, 14));
}

void TestImageLayerShapes::roiPaintsOnThePictureInImagePixels_data()
{
    Kit::addZoomRows({1.0, 4.0});
}

void TestImageLayerShapes::roiPaintsOnThePictureInImagePixels()
{
    QFETCH(double, zoom);
    Kit::PictureWindow w(zoom);
    w.scene()->setPenColor(QColor(kRed));
    // Edges through pixel centres, so that the smoothed line covers whole
    // pixels at zoom 1.
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, Params{10.5, 10.5, 30.5, 20.5});
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE) >= 0);
    const QImage grab = w.grabViewport();
    // The top edge runs along row 10 between the corners; inside is picture.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 10.5)), kRed, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(30.5, 15.5)), kRed, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 15.5)), kPictureGrey, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(40.5, 15.5)), kPictureGrey, 1);
}

void TestImageLayerShapes::maskROIIsRefusedButStillRepaints()
{
    Kit::PictureWindow w;
    VorROI roi;
    roi.GenMask(Kit::blockMask(QSize(20, 20), QRect(2, 2, 5, 5)));
    Kit::PaintCounter paints(w.view()->viewport());
    QCOMPARE(w.imageLayer()->DrawROI(roi), -1L);
    QTRY_VERIFY(paints.paints > 0);
    QVERIFY(w.imageLayer()->getShapeIDS().isEmpty());
    // The facade passes the refusal on.
    QCOMPARE(w.wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE), -1L);
}

void TestImageLayerShapes::overlayKeepsOnlyItsOwnColours()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    w.scene()->setLineWidth(4.0f);
    VorOverlay plain = Kit::makeOverlay(VorOverlay::OV_LINE, Params{0, 0, 10, 10});
    const long plainId = w.imageLayer()->DrawOverlay(plain);
    const BackGroundItem record = w.imageLayer()->backGroundItems().value(plainId);
    // No setting of the scene applies: the look of a new shape and a hairline.
    QCOMPARE(record.GetPenColor(), QColor(0, 0, 255, 255));
    QCOMPARE(record.getLineWidth(), 0.0f);

    VorOverlay own = penOverlay(VorOverlay::OV_LINE, Params{0, 0, 10, 10}, qRgb(1, 2, 3));
    own.SetBrush(4, 5, 6, 7);
    const long ownId = w.imageLayer()->DrawOverlay(own);
    QCOMPARE(w.imageLayer()->backGroundItems().value(ownId).GetPenColor(), QColor(1, 2, 3));
    QCOMPARE(w.imageLayer()->backGroundItems().value(ownId).GetBrushColor(), QColor(4, 5, 6, 7));
}

void TestImageLayerShapes::idsComeFromTheSharedCounter()
{
    Kit::PictureWindow w;
    VorROI roi = Kit::makeROI(VorROI::ROI_CIRCLE, Params{50, 40, 10});
    const long first = w.imageLayer()->DrawROI(roi);
    QCOMPARE(ODShape::s_ID, first + 1);
    const long shape = w.wnd->displayROI(roi, KESImageWnd::LAYER_SHAPE);
    QCOMPARE(shape, first + 1);
    const long second = w.imageLayer()->DrawROI(roi);
    QCOMPARE(second, first + 2);
    // A refused record takes no id.
    VorROI none;
    QCOMPARE(w.imageLayer()->DrawROI(none), -1L);
    QCOMPARE(ODShape::s_ID, second + 1);
    QCOMPARE(w.imageLayer()->getShapeIDS(), (QList<long>{first, second}));
}

void TestImageLayerShapes::pathReturnsTheLastValidIdWhereTheShapeLayerGivesTheFirst()
{
    Kit::PictureWindow w;
    VorOverlayPath path;
    path.Append(Kit::makeOverlay(VorOverlay::OV_RECT1, Params{0, 0, 10, 10}));
    path.Append(Kit::makeOverlay(VorOverlay::OV_CIRCLE, Params{20, 20, 5}));
    path.Append(Kit::makeOverlay(VorOverlay::OV_POLYLINE, Params{0, 0, 5, 0, 5, 5}));
    const long start = ODShape::s_ID;
    QCOMPARE(w.wnd->displayOverlayPath(path, KESImageWnd::LAYER_IMAGE), start + 1);
    QCOMPARE(w.imageLayer()->getShapeIDS(), (QList<long>{start, start + 1}));
    QCOMPARE(w.wnd->displayOverlayPath(path, KESImageWnd::LAYER_SHAPE), start + 2);

    VorOverlayPath refused;
    refused.Append(Kit::makeOverlay(VorOverlay::OV_POLYLINE, Params{0, 0, 5, 0, 5, 5}));
    QCOMPARE(w.imageLayer()->DrawOverlayPath(refused), -1L);
    VorOverlayPath empty;
    QCOMPARE(w.imageLayer()->DrawOverlayPath(empty), -1L);
}

void TestImageLayerShapes::pathPointKeepsACrossOfHalfSizeFive()
{
    Kit::PictureWindow w;
    w.scene()->setCrossSize(11);
    VorOverlayPath path;
    path.Append(Kit::makeOverlay(VorOverlay::OV_POINT, Params{50, 40}));
    const long id = w.imageLayer()->DrawOverlayPath(path);
    const BackGroundItem record = w.imageLayer()->backGroundItems().value(id);
    QCOMPARE(record.GetPainterPath().boundingRect(), QRectF(45, 35, 10, 10));
    // The scene's size is stored afterwards, and changes nothing drawn.
    QCOMPARE(record.getCrossSize(), 11);
    VorOverlay single = Kit::makeOverlay(VorOverlay::OV_POINT, Params{50, 40});
    const long alone = w.imageLayer()->DrawOverlay(single);
    QCOMPARE(w.imageLayer()->backGroundItems().value(alone).GetPainterPath().boundingRect(),
             QRectF(39, 29, 22, 22));
}

void TestImageLayerShapes::pathOverlaysOwnColoursWinOverTheScenes()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    w.scene()->setLineWidth(3.0f);
    VorOverlayPath path;
    path.Append(penOverlay(VorOverlay::OV_LINE, Params{0, 0, 10, 10}, qRgb(9, 8, 7)));
    path.Append(Kit::makeOverlay(VorOverlay::OV_LINE, Params{0, 0, 10, 10}));
    const long last = w.imageLayer()->DrawOverlayPath(path);
    const QMap<long long, BackGroundItem> records = w.imageLayer()->backGroundItems();
    QCOMPARE(records.value(last - 1).GetPenColor(), QColor(9, 8, 7));
    QCOMPARE(records.value(last).GetPenColor(), QColor(kRed));
    QCOMPARE(records.value(last - 1).getLineWidth(), 3.0f);
}

void TestImageLayerShapes::runPathWithOnlyARegionMakesNoIdAndChangesTheRegionImage()
{
    Kit::PictureWindow w;
    QVERIFY(w.imageLayer()->GetRegion()->regionImage().isNull()
            || w.imageLayer()->GetRegion()->regionImage().width() == 0);
    VorOverlayPath path;
    path.Append(regionOverlay(QRect(20, 20, 30, 10)));
    const long before = ODShape::s_ID;
    QVERIFY(w.imageLayer()->runDrawShape(path).isEmpty());
    QCOMPARE(ODShape::s_ID, before);
    const QImage region = w.imageLayer()->GetRegion()->regionImage();
    QVERIFY(region.width() >= 50 && region.height() >= 30);
    QCOMPARE(QColor::fromRgba(region.pixel(25, 25)).rgba(), kGreenRegion);
    QCOMPARE(qAlpha(region.pixel(5, 5)), 0);
    QVERIFY(w.imageLayer()->getShapeIDS().isEmpty());
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(25.5, 25.5)), kGreenRegion, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(5.5, 5.5)), kPictureGrey, 1);
}

void TestImageLayerShapes::runPathGivesItsIdsInOrderWithoutRepainting()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    VorOverlayPath path;
    path.Append(Kit::makeOverlay(VorOverlay::OV_RECT1, Params{10, 10, 30, 30}));
    path.Append(Kit::makeOverlay(VorOverlay::OV_POLYLINE, Params{0, 0, 5, 0, 5, 5}));
    path.Append(regionOverlay(QRect(0, 0, 4, 4)));
    path.Append(penOverlay(VorOverlay::OV_LINE, Params{0, 0, 10, 10}, qRgb(1, 2, 3)));
    Kit::flushPaints();
    QSignalSpy changed(w.scene(), &QGraphicsScene::changed);
    Kit::PaintCounter paints(w.view()->viewport());
    const long start = ODShape::s_ID;
    const QList<long> ids = w.imageLayer()->runDrawShape(path);
    QCOMPARE(ids, (QList<long>{start, start + 1}));
    Kit::flushPaints();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(paints.paints, 0);
    // In the overlays' own colours: the scene's pen does not apply.
    const QMap<long long, BackGroundItem> records = w.imageLayer()->backGroundItems();
    QCOMPARE(records.value(start).GetPenColor(), QColor(0, 0, 255));
    QCOMPARE(records.value(start + 1).GetPenColor(), QColor(1, 2, 3));
}

void TestImageLayerShapes::runPathRegionReplacesTheRegionBefore()
{
    Kit::PictureWindow w;
    VorOverlayPath first;
    first.Append(regionOverlay(QRect(0, 0, 10, 10)));
    w.imageLayer()->runDrawShape(first);
    VorOverlayPath second;
    second.Append(regionOverlay(QRect(50, 50, 10, 10)));
    w.imageLayer()->runDrawShape(second);
    const QImage region = w.imageLayer()->GetRegion()->regionImage();
    QCOMPARE(qAlpha(region.pixel(5, 5)), 0);
    QCOMPARE(qAlpha(region.pixel(55, 55)), 255);
}

void TestImageLayerShapes::rotatedRectangleTurnsAboutTheCentreOfItsStoredRectangle()
{
    Kit::PictureWindow w(2.0);
    w.scene()->setPenColor(QColor(kRed));
    // 60 long and 10 wide about (50, 40), turned a quarter: it stands upright.
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT2, Params{50, 40, 60, 10, 90});
    QVERIFY(w.imageLayer()->DrawROI(roi) >= 0);
    const QImage grab = w.grabViewport();
    // The short edges now lie 30 above and below the centre, the long ones 5
    // to its sides.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(50.2, 10.2)), kRed, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(50.2, 70.2)), kRed, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(45.2, 30.2)), kRed, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(55.2, 50.2)), kRed, 1);
    // Where the upright rectangle's ends would be is picture.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(20.2, 35.2)), kPictureGrey, 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(80.2, 45.2)), kPictureGrey, 1);
}

void TestImageLayerShapes::rectangleTurnedThirtyDegreesTurnsCounterClockwiseAboutAWholePixelCentre_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<float>("lineWidth");
    // Three image pixels wide at zoom 1, so that a pixel on an edge is wholly
    // covered; one at zoom 4, four viewport pixels.
    QTest::newRow("zoom 1") << 1.0 << 3.0f;
    QTest::newRow("zoom 4") << 4.0 << 1.0f;
}

void TestImageLayerShapes::rectangleTurnedThirtyDegreesTurnsCounterClockwiseAboutAWholePixelCentre()
{
    QFETCH(double, zoom);
    QFETCH(float, lineWidth);
    Kit::PictureWindow w(zoom);
    w.scene()->setPenColor(QColor(kRed));
    w.scene()->setLineWidth(lineWidth);
    // 40 by 20 about (50.7, 40.7), turned 30 degrees: the painter draws the
    // box from (-20, -10) to (20, 10) about the whole pixel (50, 40), turned
    // 30 degrees counter-clockwise on the screen.
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT2, Params{50.7, 40.7, 40, 20, 30});
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE) >= 0);
    const QImage grab = w.grabViewport();
    // Points of the top edge, the bottom edge and the left end.
    for (const QPointF& onEdge : {QPointF(36.34, 36.34), QPointF(63.66, 43.66), QPointF(35.18, 54.33)})
        KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), onEdge), kRed, 1);
    // The same points turned clockwise instead, and the upright box's bottom
    // edge, are picture.
    for (const QPointF& off : {QPointF(46.34, 26.34), QPointF(53.66, 53.66), QPointF(30.18, 34.33), QPointF(40, 50)})
        KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), off), kPictureGrey, 1);
    if (zoom == 4.0) {
        // The edges of a box about (50.7, 40.7) would lie 0.96 image pixels
        // further out, beyond the four viewport pixels of the line.
        for (const QPointF& shifted : {QPointF(37.04, 37.04), QPointF(64.36, 44.36)})
            KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), shifted), kPictureGrey, 1);
    }
}

void TestImageLayerShapes::ellipseTurnsAboutItsCentre()
{
    Kit::PictureWindow w(2.0);
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = Kit::makeROI(VorROI::ROI_ELLIPSE, Params{60, 50, 30, 10, 90});
    QVERIFY(w.imageLayer()->DrawROI(roi) >= 0);
    const QImage grab = w.grabViewport();
    QCOMPARE(Kit::countColour(grab, QRect(Kit::viewportPixelOf(w.view(), QPointF(55, 18)), QSize(20, 6)), kRed) > 0,
             true);
    QCOMPARE(Kit::countColour(grab, QRect(Kit::viewportPixelOf(w.view(), QPointF(26, 45)), QSize(6, 20)), kRed), 0);
}

void TestImageLayerShapes::freeLineIsFilledWithItsBrush()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    w.scene()->setBrushColor(QColor(0, 0, 255, 255));
    VorROI roi = Kit::makeROI(VorROI::ROI_IRREGULAR, Params{10, 10, 60, 10, 60, 60});
    QVERIFY(w.imageLayer()->DrawROI(roi) >= 0);
    // A polygon of the same points is not filled.
    VorROI polygon = Kit::makeROI(VorROI::ROI_POLYGON, Params{100, 10, 150, 10, 150, 60});
    QVERIFY(w.imageLayer()->DrawROI(polygon) >= 0);
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(50.5, 20.5)), qRgb(0, 0, 255), 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(140.5, 20.5)), kPictureGrey, 1);
}

void TestImageLayerShapes::freeLineOverlayWithoutABrushIsFilledOpaqueBlack()
{
    Kit::PictureWindow w;
    // The scene's brush does not reach an overlay's record.
    w.scene()->setBrushColor(QColor(0, 0, 255, 255));
    const Params triangle{10, 10, 60, 10, 60, 60};
    VorOverlay plain = penOverlay(VorOverlay::OV_IRREGULAR, triangle, kRed);
    const long plainId = w.wnd->displayOverlay(plain, KESImageWnd::LAYER_IMAGE);
    QVERIFY(plainId >= 0);
    QVERIFY(!w.imageLayer()->backGroundItems().value(plainId).GetBrushColor().isValid());
    KIT_COMPARE_COLOUR(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(50.5, 20.5)), qRgb(0, 0, 0), 1);

    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_IMAGE), 0L);
    VorOverlay brushed = penOverlay(VorOverlay::OV_IRREGULAR, triangle, kRed);
    brushed.SetBrush(0, 255, 0, 255);
    QVERIFY(w.wnd->displayOverlay(brushed, KESImageWnd::LAYER_IMAGE) >= 0);
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(50.5, 20.5)), qRgb(0, 255, 0), 1);
    // Outside the triangle the picture shows.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 50.5)), kPictureGrey, 1);
}

void TestImageLayerShapes::penWidthIsTheLineWidthTruncated()
{
    Kit::PictureWindow w(1.0);
    w.scene()->setPenColor(QColor(kRed));
    w.scene()->setLineWidth(3.9f);
    VorROI roi = Kit::makeROI(VorROI::ROI_LINE, Params{10, 50.5, 150, 50.5});
    QVERIFY(w.imageLayer()->DrawROI(roi) >= 0);
    const QImage grab = w.grabViewport();
    const QPoint column = Kit::viewportPixelOf(w.view(), QPointF(80, 40));
    const int red = Kit::countColour(grab, QRect(column, QSize(1, 20)), kRed);
    QVERIFY2(red == 3, qPrintable(QString("a line %1 pixels thick").arg(red)));
}

void TestImageLayerShapes::textIsPaintedInItsBoxWithoutLowerCaseL()
{
    KIT_REQUIRE_FONTS();
    Kit::PictureWindow w(2.0);
    VorOverlay overlay;
    VorFont font("DejaVu Sans", 10);
    overlay.GenText(VorPoint(20, 30), "Hello", font);
    overlay.SetPen(255, 0, 0, 1);
    const long id = w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_IMAGE);
    QVERIFY(id >= 0);
    const BackGroundItem record = w.imageLayer()->backGroundItems().value(id);
    QCOMPARE(record.getText(), QString("Heo"));
    const QRect box = record.getTextRect();
    QCOMPARE(box.topLeft(), QPoint(20, 30));
    const QImage grab = w.grabViewport();
    const QRect shown(Kit::viewportPixelOf(w.view(), box.topLeft()), box.size() * 2);
    QVERIFY(Kit::countColour(grab, shown, kRed) > 10);
    // Nothing red outside the box.
    QCOMPARE(Kit::countColour(grab, kRed), Kit::countColour(grab, shown, kRed));
}

void TestImageLayerShapes::clearShapeAlsoRemovesTheRegionImage()
{
    Kit::PictureWindow w;
    VorOverlayPath path;
    path.Append(regionOverlay(QRect(20, 20, 30, 10)));
    path.Append(Kit::makeOverlay(VorOverlay::OV_RECT1, Params{0, 0, 10, 10}));
    w.imageLayer()->runDrawShape(path);
    QCOMPARE(w.imageLayer()->getShapeIDS().size(), 1);
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_IMAGE), 0L);
    QVERIFY(w.imageLayer()->getShapeIDS().isEmpty());
    QCOMPARE(w.imageLayer()->GetRegion()->regionImage().width(), 0);
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(25.5, 25.5)), kPictureGrey, 1);
}

void TestImageLayerShapes::shapeVisibleKeepsTheIdAndTheOrder()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, Params{10.5, 10.5, 30.5, 20.5});
    const long a = w.imageLayer()->DrawROI(roi);
    const long b = w.imageLayer()->DrawROI(roi);
    const long c = w.imageLayer()->DrawROI(roi);
    QCOMPARE(w.imageLayer()->ShapeVisible(b, false), b);
    QCOMPARE(w.imageLayer()->getShapeIDS(), (QList<long>{a, b, c}));
    QVERIFY(!w.imageLayer()->backGroundItems().value(b).GetVisible());
    QCOMPARE(w.imageLayer()->ShapeVisible(a, false), a);
    QCOMPARE(w.imageLayer()->ShapeVisible(c, false), c);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(20.5, 10.5)), kPictureGrey, 1);
    QCOMPARE(w.wnd->visibleShape(b, true), long(b));
    KIT_COMPARE_COLOUR(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(20.5, 10.5)), kRed, 1);
}

void TestImageLayerShapes::shapeVisibleOfAnUnknownIdIsRefusedAndRepaints()
{
    Kit::PictureWindow w;
    Kit::PaintCounter paints(w.view()->viewport());
    QCOMPARE(w.imageLayer()->ShapeVisible(123456789, false), -1L);
    QTRY_VERIFY(paints.paints > 0);
}

void TestImageLayerShapes::removedIdIsNoLongerListed()
{
    Kit::PictureWindow w;
    VorROI roi = Kit::makeROI(VorROI::ROI_CIRCLE, Params{50, 40, 10});
    const long a = w.imageLayer()->DrawROI(roi);
    const long b = w.imageLayer()->DrawROI(roi);
    QCOMPARE(w.imageLayer()->getShapeIDS(), (QList<long>{a, b}));
    QCOMPARE(w.imageLayer()->removeShape(a), a);
    QCOMPARE(w.imageLayer()->getShapeIDS(), (QList<long>{b}));
    QCOMPARE(w.imageLayer()->removeShape(a), -1L);
    // Through the facade, which looks on every layer and answers 0.
    QCOMPARE(w.wnd->removeShape(b), 0L);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE).isEmpty());
}

void TestImageLayerShapes::removeShapeListRemovesOnlyWhatItHolds()
{
    Kit::PictureWindow w;
    VorROI roi = Kit::makeROI(VorROI::ROI_CIRCLE, Params{50, 40, 10});
    const long a = w.imageLayer()->DrawROI(roi);
    const long b = w.imageLayer()->DrawROI(roi);
    const long c = w.imageLayer()->DrawROI(roi);
    w.imageLayer()->removeShapeList({a, c, 987654321});
    QCOMPARE(w.imageLayer()->getShapeIDS(), (QList<long>{b}));
}

void TestImageLayerShapes::recordsPaintOverTheRegionAndUnderLiveShapes()
{
    Kit::PictureWindow w;
    VorOverlayPath path;
    path.Append(regionOverlay(QRect(0, 0, 100, 100)));
    path.Append(penOverlay(VorOverlay::OV_RECT1, Params{10.5, 10.5, 80.5, 80.5}, kRed));
    w.imageLayer()->runDrawShape(path);
    w.imageLayer()->Update(true);
    w.scene()->setPenColor(QColor(0, 0, 255));
    w.scene()->setBrushColor(QColor(0, 0, 255, 255));
    VorROI live = Kit::makeROI(VorROI::ROI_RECT1, Params{30, 5, 50, 30});
    QVERIFY(w.wnd->displayROI(live, KESImageWnd::LAYER_SHAPE) >= 0);
    const QImage grab = w.grabViewport();
    // The record over the region.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 10.5)), kRed, 1);
    // The live shape's fill over the record.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(40.5, 10.5)), qRgb(0, 0, 255), 1);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 20.5)), kGreenRegion, 1);
}

void TestImageLayerShapes::recordsStillPaintAfterARegionOfNoSize()
{
    Kit::PictureWindow w;
    w.imageLayer()->resetRegion();
    QCOMPARE(w.imageLayer()->GetRegion()->regionImage().width(), 0);
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, Params{10.5, 10.5, 30.5, 20.5});
    QVERIFY(w.imageLayer()->DrawROI(roi) >= 0);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(20.5, 10.5)), kRed, 1);
}

void TestImageLayerShapes::recordsAreNotFoundByTheShapeLayersReadBack()
{
    Kit::PictureWindow w;
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, Params{10, 10, 30, 20});
    const long id = w.wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE);
    QVERIFY(id >= 0);
    VorROI back;
    QCOMPARE(w.wnd->getROIShape(id, &back), -1L);
    VorOverlay overlay;
    QCOMPARE(w.wnd->getOverlayShape(id, &overlay), -1L);
    QCOMPARE(w.active()->GetROIShape(id, &back), -1L);
}

QTEST_MAIN(TestImageLayerShapes)
#include "tst_imagelayershapes.moc"
