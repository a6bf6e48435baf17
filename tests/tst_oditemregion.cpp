#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odrect1.h"
#include "odregion.h"
#include "oditemregion.h"

#include "kitregions.h"
#include "testkit.h"

#include "VorImage.h"

#include <QGraphicsPixmapItem>
#include <QtTest>

#include <opencv2/core.hpp>

#include <memory>

// The region of a shape layer: a pixmap item of the scene that shows a mask
// coloured with its own alpha, its id from the shapes' counter, the mask it
// keeps, the item following z value and visibility, the colour picture made
// from the mask, and the item painted over the picture and under the shapes.
class tst_ODItemRegion : public QObject
{
    Q_OBJECT

private slots:
    void addsAnEmptyPixmapItemAndTakesTheNextId();
    void newRegionHoldsNothingAndIsVisible();
    void destructionTakesTheItemOutOfTheScene();

    void colouringMatchesTheImageLayerRegion_data();
    void colouringMatchesTheImageLayerRegion();
    void maskOfAnotherTypeOrSizeZeroShowsNothing_data();
    void maskOfAnotherTypeOrSizeZeroShowsNothing();

    void updateBeforeAnyLoadDoesNothing();
    void updateLeavesTheItemUntilShow();
    void showHandsThePictureToTheItem();
    void secondLoadReplacesTheMask();
    void secondLoadAndUpdateReplaceWhatIsShown();
    void loadKeepsItsOwnCopyOfTheMask();
    void loadOfNullIsRefusedAndKeepsTheMask();

    void zValueGoesToTheItem();
    void visibilityGoesToTheItem();

    void setColorMakesColourPictureOfTheMask();
    void setColorCutsChannelsToEightBits();
    void setColorWithoutMaskDoesNothing();
    void plainConversionKeepsRgb32AndOpaqueGreys();
    void plainConversionRefusesDeepPictures();

    void paintsOverThePictureAndUnderShapes_data();
    void paintsOverThePictureAndUnderShapes();
    void zeroAlphaRegionIsInvisibleThoughItsItemExists();
    void hiddenRegionShowsThePicture();
};

namespace {

const QRgb kPictureGrey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);

// A region of the active layer's scene made as a shape layer makes it: mask
// loaded, under every shape, coloured and shown.
std::unique_ptr<ODItemRegion> shownRegion(ImageCtrlScene* scene, VorImage mask, QRgb colour)
{
    auto region = std::make_unique<ODItemRegion>(scene);
    region->LoadVorRegion(&mask);
    region->setZValue(-1);
    region->Update(uchar(qRed(colour)), uchar(qGreen(colour)), uchar(qBlue(colour)), uchar(qAlpha(colour)));
    region->show();
    return region;
}

} // namespace

void tst_ODItemRegion::addsAnEmptyPixmapItemAndTakesTheNextId()
{
    ImageCtrlScene scene;
    ODRect1 before(&scene);
    const int itemsBefore = scene.items().size();
    ODItemRegion region(&scene);
    QCOMPARE(region.GetID(), before.GetShapeID() + 1);
    QCOMPARE(ODShape::s_ID, region.GetID() + 1);
    QVERIFY(region.item() != nullptr);
    QCOMPARE(region.item()->scene(), &scene);
    QVERIFY(region.item()->pixmap().isNull());
    QCOMPARE(scene.items().size(), itemsBefore + 1);
    // Pixel (x, y) of the picture lands on scene point (x, y).
    QCOMPARE(region.item()->pos(), QPointF(0, 0));
    QCOMPARE(region.item()->offset(), QPointF(0, 0));
}

void tst_ODItemRegion::newRegionHoldsNothingAndIsVisible()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    QVERIFY(region.mask() == nullptr);
    QVERIFY(region.regionImage().isNull());
    QVERIFY(region.isVisible());
    QVERIFY(region.item()->isVisible());
}

void tst_ODItemRegion::destructionTakesTheItemOutOfTheScene()
{
    ImageCtrlScene scene;
    const int itemsBefore = scene.items().size();
    auto region = std::make_unique<ODItemRegion>(&scene);
    VorImage mask = Kit::rowMask({255});
    region->LoadVorRegion(&mask);
    QGraphicsItem* item = region->item();
    QVERIFY(scene.items().contains(item));
    region.reset();
    QVERIFY(!scene.items().contains(item));
    QCOMPARE(scene.items().size(), itemsBefore);
}

void tst_ODItemRegion::colouringMatchesTheImageLayerRegion_data()
{
    QTest::addColumn<QRgb>("colour");
    QTest::newRow("opaque blue") << qRgba(0, 0, 255, 255);
    QTest::newRow("half-transparent mixed") << qRgba(10, 200, 77, 128);
    QTest::newRow("invisible red") << qRgba(255, 0, 0, 0);
}

void tst_ODItemRegion::colouringMatchesTheImageLayerRegion()
{
    QFETCH(QRgb, colour);
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    ODRegion background(&scene);
    VorImage mask = Kit::rowMask({0, 1, 2, 3, 127, 128, 254, 255});
    const uchar r = uchar(qRed(colour)), g = uchar(qGreen(colour)), b = uchar(qBlue(colour)), a = uchar(qAlpha(colour));
    QImage itemImage;
    QImage backgroundImage;
    region.VorRegionToQImage(&mask, r, g, b, a, &itemImage);
    background.VorImageToRegionImg(&mask, r, g, b, a, &backgroundImage);
    QCOMPARE(itemImage, backgroundImage);
    QCOMPARE(itemImage.format(), QImage::Format_ARGB32);
    // The low bit decides: 1, 3, 127, 255 inside; 0, 2, 128, 254 outside.
    const bool inside[] = {false, true, false, true, true, false, false, true};
    for (int x = 0; x < 8; ++x)
        QCOMPARE(itemImage.pixel(x, 0), inside[x] ? colour : 0u);
}

void tst_ODItemRegion::maskOfAnotherTypeOrSizeZeroShowsNothing_data()
{
    QTest::addColumn<int>("cvType");
    QTest::addColumn<QSize>("size");
    QTest::newRow("three 8-bit channels") << CV_8UC3 << QSize(4, 3);
    QTest::newRow("one 16-bit channel") << CV_16UC1 << QSize(4, 3);
    QTest::newRow("no width") << CV_8UC1 << QSize(0, 3);
    QTest::newRow("no height") << CV_8UC1 << QSize(4, 0);
}

void tst_ODItemRegion::maskOfAnotherTypeOrSizeZeroShowsNothing()
{
    QFETCH(int, cvType);
    QFETCH(QSize, size);
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage mask(cv::Mat(size.height(), size.width(), cvType, cv::Scalar::all(255)));
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(255, 0, 0, 255);
    region.show();
    QVERIFY(region.regionImage().isNull());
    QVERIFY(region.item()->pixmap().isNull());
    QVERIFY(region.item()->boundingRect().isEmpty());
}

void tst_ODItemRegion::updateBeforeAnyLoadDoesNothing()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    region.Update(255, 0, 0, 255);
    region.show();
    QVERIFY(region.regionImage().isNull());
    QVERIFY(region.item()->pixmap().isNull());
}

void tst_ODItemRegion::updateLeavesTheItemUntilShow()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage mask = Kit::blockMask(QSize(5, 4), QRect(1, 1, 2, 2));
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(255, 0, 0, 255);
    QCOMPARE(region.regionImage().pixel(1, 1), qRgba(255, 0, 0, 255));
    QVERIFY(region.item()->pixmap().isNull());
    region.show();
    QCOMPARE(region.item()->pixmap().size(), QSize(5, 4));

    region.Update(0, 0, 255, 255);
    QCOMPARE(region.item()->pixmap().toImage().pixel(1, 1), qRgba(255, 0, 0, 255));
    region.show();
    QCOMPARE(region.item()->pixmap().toImage().pixel(1, 1), qRgba(0, 0, 255, 255));
}

void tst_ODItemRegion::showHandsThePictureToTheItem()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage mask = Kit::blockMask(QSize(6, 5), QRect(2, 1, 3, 3));
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(30, 60, 90, 120);
    region.show();
    const QImage shown = region.item()->pixmap().toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(Kit::imageDifference(shown, Kit::asShownByPixmap(region.regionImage())), 0);
    KIT_COMPARE_COLOUR(shown.pixel(3, 2), qRgba(30, 60, 90, 120), Kit::kChannelTolerance);
    QCOMPARE(qAlpha(shown.pixel(0, 0)), 0);
    QCOMPARE(region.item()->boundingRect(), QRectF(0, 0, 6, 5));
}

void tst_ODItemRegion::secondLoadReplacesTheMask()
{
    Kit::verifySecondLoadReplacesTheMask<ODItemRegion>();
}

void tst_ODItemRegion::secondLoadAndUpdateReplaceWhatIsShown()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage first = Kit::blockMask(QSize(8, 8), QRect(0, 0, 8, 8));
    VorImage second = Kit::blockMask(QSize(3, 2), QRect(0, 0, 1, 1));
    QVERIFY(region.LoadVorRegion(&first));
    region.Update(255, 0, 0, 255);
    region.show();
    QVERIFY(region.LoadVorRegion(&second));
    region.Update(0, 255, 0, 255);
    region.show();
    QCOMPARE(region.item()->pixmap().size(), QSize(3, 2));
    QCOMPARE(region.item()->pixmap().toImage().pixel(0, 0), qRgba(0, 255, 0, 255));
    QCOMPARE(qAlpha(region.item()->pixmap().toImage().pixel(2, 1)), 0);
}

void tst_ODItemRegion::loadKeepsItsOwnCopyOfTheMask()
{
    Kit::verifyLoadKeepsItsOwnCopy<ODItemRegion>();
}

void tst_ODItemRegion::loadOfNullIsRefusedAndKeepsTheMask()
{
    Kit::verifyNullMaskIsRefused<ODItemRegion>();
}

void tst_ODItemRegion::zValueGoesToTheItem()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    region.setZValue(-1);
    QCOMPARE(region.item()->zValue(), -1.0);
    region.setZValue(3000);
    QCOMPARE(region.item()->zValue(), 3000.0);
}

void tst_ODItemRegion::visibilityGoesToTheItem()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    region.setVisible(false);
    QVERIFY(!region.isVisible());
    QVERIFY(!region.item()->isVisible());
    region.setVisible(true);
    QVERIFY(region.isVisible());
    QVERIFY(region.item()->isVisible());
}

void tst_ODItemRegion::setColorMakesColourPictureOfTheMask()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage mask = Kit::rowMask({0, 1, 254, 255});
    QVERIFY(region.LoadVorRegion(&mask));
    VorImage unused = Kit::greyPicture(2, 2, 9);
    region.SetColor(&unused, 10, 20, 30);
    const VorImage* held = region.mask();
    QCOMPARE(held->Mat().type(), CV_8UC3);
    QCOMPARE(held->Width(), 4);
    QCOMPARE(held->Height(), 1);
    // Any byte but 0 is inside here, 254 included; bytes go blue, green, red.
    const cv::Vec3b black(0, 0, 0);
    const cv::Vec3b colour(30, 20, 10);
    QVERIFY(held->Mat().at<cv::Vec3b>(0, 0) == black);
    QVERIFY(held->Mat().at<cv::Vec3b>(0, 1) == colour);
    QVERIFY(held->Mat().at<cv::Vec3b>(0, 2) == colour);
    QVERIFY(held->Mat().at<cv::Vec3b>(0, 3) == colour);
    QCOMPARE(unused.Mat().at<uchar>(1, 1), uchar(9));
    QCOMPARE(unused.Channels(), 1);
}

void tst_ODItemRegion::setColorCutsChannelsToEightBits()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage mask = Kit::rowMask({255});
    QVERIFY(region.LoadVorRegion(&mask));
    region.SetColor(nullptr, 256 + 7, -1, 512);
    QVERIFY(region.mask()->Mat().at<cv::Vec3b>(0, 0) == cv::Vec3b(0, 255, 7));
}

void tst_ODItemRegion::setColorWithoutMaskDoesNothing()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage picture = Kit::greyPicture(2, 2, 255);
    region.SetColor(&picture, 255, 0, 0);
    QVERIFY(region.mask() == nullptr);
    QCOMPARE(picture.Channels(), 1);
}

void tst_ODItemRegion::plainConversionKeepsRgb32AndOpaqueGreys()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage colour = Kit::colourPicture(3, 2, 200, 100, 50);
    const QImage fromColour = region.VorImageToQImage(&colour);
    QCOMPARE(fromColour.format(), QImage::Format_RGB32);
    QCOMPARE(fromColour.pixel(1, 1), qRgb(200, 100, 50));

    VorImage grey = Kit::greyPicture(3, 2, 33);
    const QImage fromGrey = region.VorImageToQImage(&grey);
    QCOMPARE(fromGrey.format(), QImage::Format_Indexed8);
    QCOMPARE(fromGrey.colorCount(), 256);
    for (int i = 0; i < 256; ++i)
        QCOMPARE(fromGrey.color(i), qRgba(i, i, i, 255));
    QCOMPARE(fromGrey.pixelIndex(2, 1), 33);
}

void tst_ODItemRegion::plainConversionRefusesDeepPictures()
{
    ImageCtrlScene scene;
    ODItemRegion region(&scene);
    VorImage grey(cv::Mat(2, 2, CV_16UC1, cv::Scalar(65535)));
    VorImage colour(cv::Mat(2, 2, CV_16UC3, cv::Scalar::all(65535)));
    QVERIFY(region.VorImageToQImage(&grey).isNull());
    QVERIFY(region.VorImageToQImage(&colour).isNull());
    QVERIFY(region.VorImageToQImage(nullptr).isNull());
}

void tst_ODItemRegion::paintsOverThePictureAndUnderShapes_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("one to one") << 1.0;
    QTest::newRow("four times") << 4.0;
}

void tst_ODItemRegion::paintsOverThePictureAndUnderShapes()
{
    QFETCH(double, zoom);
    Kit::PictureWindow w(zoom, QSize(120, 90));
    const QRgb regionColour = qRgba(255, 0, 0, 128);
    const QRect block(10, 10, 40, 30);
    auto region = shownRegion(w.scene(), Kit::blockMask(QSize(120, 90), block), regionColour);
    // A shape over the region, filled opaque so that its inside is exact.
    const QRgb shapeFill = qRgb(0, 255, 255);
    w.scene()->setBrushColor(QColor(shapeFill));
    Kit::addRect(w.active(), 30, 20, 45, 35);

    const QImage grab = w.grabViewport();
    const QRgb expected = Kit::regionOver(kPictureGrey, regionColour);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(12.5, 12.5)), expected, Kit::kChannelTolerance);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(49.5, 39.5)), expected, Kit::kChannelTolerance);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(50.5, 39.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(9.5, 20.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(80.5, 60.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(38.5, 28.5)), shapeFill);

    // Every viewport pixel of one magnified region pixel has its colour.
    const QPoint corner = Kit::viewportPixelOf(w.view(), QPointF(20, 20));
    for (int dy = 0; dy < int(zoom); ++dy)
        for (int dx = 0; dx < int(zoom); ++dx)
            KIT_COMPARE_COLOUR(grab.pixel(corner + QPoint(dx, dy)), expected, Kit::kChannelTolerance);
    if (qEnvironmentVariableIsSet("KES_SAVE_GRABS"))
        grab.save(qEnvironmentVariable("KES_SAVE_GRABS") + QString("/oditemregion-zoom%1.png").arg(zoom));
}

void tst_ODItemRegion::zeroAlphaRegionIsInvisibleThoughItsItemExists()
{
    Kit::PictureWindow w(1.0, QSize(60, 40));
    const QImage before = w.grabViewport();
    auto region = shownRegion(w.scene(), Kit::blockMask(QSize(60, 40), QRect(0, 0, 60, 40)), qRgba(255, 0, 0, 0));
    QVERIFY(w.scene()->items().contains(region->item()));
    QCOMPARE(region->item()->pixmap().size(), QSize(60, 40));
    QCOMPARE(Kit::imageDifference(w.grabViewport(), before), 0);
}

void tst_ODItemRegion::hiddenRegionShowsThePicture()
{
    Kit::PictureWindow w(2.0, QSize(60, 40));
    const QImage before = w.grabViewport();
    auto region = shownRegion(w.scene(), Kit::blockMask(QSize(60, 40), QRect(5, 5, 10, 10)), qRgba(0, 0, 255, 255));
    QCOMPARE(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(7.5, 7.5)), qRgb(0, 0, 255));
    region->setVisible(false);
    QCOMPARE(Kit::imageDifference(w.grabViewport(), before), 0);
    region->setVisible(true);
    QCOMPARE(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(7.5, 7.5)), qRgb(0, 0, 255));
}

QTEST_MAIN(tst_ODItemRegion)
#include "tst_oditemregion.moc"
