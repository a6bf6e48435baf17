#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "oditemregion.h"
#include "odregion.h"
#include "odshape.h"
#include "regionmask.h"

#include "kitregions.h"
#include "testkit.h"

#include "VorImage.h"
#include "VorRegion.h"

#include <QtTest>

#include <opencv2/core.hpp>

#include <atomic>
#include <memory>
#include <thread>

// The region image of the image layer: painted over the picture and under
// every graphics item, at its own size from image pixel (0, 0), only while a
// picture of some size is on show; a region of a run shown in opaque green
// whatever its colour, replacing the region before, and emptied again.
class tst_ImageLayerRegion : public QObject
{
    Q_OBJECT

private slots:
    void layerCreatesItsRegionWithTheNextId();

    void regionPaintsOverThePictureAndUnderItems_data();
    void regionPaintsOverThePictureAndUnderItems();
    void maskLargerThanThePicturePaintsBeyondIt();
    void maskSmallerThanThePictureCoversItsOwnPart();
    void regionOfNoSizePaintsNothing();
    void pictureOfNoSizePaintsNoRegion();

    void runRegionShowsOpaqueGreenWhereTheRegionIs_data();
    void runRegionShowsOpaqueGreenWhereTheRegionIs();
    void runRegionTableTakesAnyNonZeroByteAsInside();
    void runRegionTableReadsPaddedRowsAtTheirStep();
    void runRegionTableRefusesOtherMasks();
    void runRegionReplacesTheRegionBefore();
    void emptyRunRegionLeavesNothingToPaint();
    void resetRegionRemovesTheRegionImage();
    void runRegionFromAWorkerWhilePainting();
};

namespace {

const QRgb kPictureGrey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);
const QRgb kBackgroundGrey = qRgb(153, 153, 153);
const QRgb kRunGreen = qRgb(0, 255, 0);

// Loads a mask into the image layer's region, colours it and repaints.
void showLayerRegion(ImageLayer* layer, VorImage mask, QRgb colour)
{
    ODRegion* region = layer->GetRegion();
    QVERIFY(region->LoadVorRegion(&mask));
    region->Update(uchar(qRed(colour)), uchar(qGreen(colour)), uchar(qBlue(colour)), uchar(qAlpha(colour)));
    region->show();
}

VorRegion regionOfRuns(const std::vector<VorRegion::Run>& runs)
{
    VorRegion region;
    region.SetRuns(runs);
    return region;
}

} // namespace

void tst_ImageLayerRegion::layerCreatesItsRegionWithTheNextId()
{
    ImageCtrlScene scene;
    const long next = ODShape::s_ID;
    ImageLayer layer(&scene);
    QVERIFY(layer.GetRegion() != nullptr);
    QCOMPARE(layer.GetRegion()->GetID(), next);
    QCOMPARE(ODShape::s_ID, next + 1);
    QVERIFY(layer.GetRegion()->regionImage().isNull());
    QVERIFY(layer.GetRegion()->mask() == nullptr);
}

void tst_ImageLayerRegion::regionPaintsOverThePictureAndUnderItems_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("one to one") << 1.0;
    QTest::newRow("four times") << 4.0;
}

void tst_ImageLayerRegion::regionPaintsOverThePictureAndUnderItems()
{
    QFETCH(double, zoom);
    Kit::PictureWindow w(zoom, QSize(120, 90));
    const QSize size(120, 90);
    const QRgb layerColour = qRgba(0, 0, 255, 128);
    const QRgb itemColour = qRgba(255, 0, 0, 100);
    showLayerRegion(w.imageLayer(), Kit::blockMask(size, QRect(10, 10, 40, 30)), layerColour);
    // A region item and a shape lie over it, as a shape layer puts them.
    ODItemRegion item(w.scene());
    VorImage itemMask = Kit::blockMask(size, QRect(30, 20, 40, 30));
    item.LoadVorRegion(&itemMask);
    item.setZValue(-1);
    item.Update(uchar(qRed(itemColour)), uchar(qGreen(itemColour)), uchar(qBlue(itemColour)), uchar(qAlpha(itemColour)));
    item.show();
    const QRgb shapeFill = qRgb(255, 255, 0);
    w.scene()->setBrushColor(QColor(shapeFill));
    Kit::addRect(w.active(), 40, 25, 46, 31);

    const QImage grab = w.grabViewport();
    if (qEnvironmentVariableIsSet("KES_SAVE_GRABS"))
        grab.save(qEnvironmentVariable("KES_SAVE_GRABS") + QString("/imagelayerregion-zoom%1.png").arg(zoom));
    const QRgb layerOnly = Kit::regionOver(kPictureGrey, layerColour);
    const QRgb both = Kit::regionOver(layerOnly, itemColour);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(10.5, 10.5)), layerOnly, Kit::kChannelTolerance);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(29.5, 39.5)), layerOnly, Kit::kChannelTolerance);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(35.5, 22.5)), both, Kit::kChannelTolerance);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(60.5, 45.5)),
                       Kit::regionOver(kPictureGrey, itemColour), Kit::kChannelTolerance);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(43.5, 28.5)), shapeFill);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(9.5, 10.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 40.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(100.5, 80.5)), kPictureGrey);

    // A magnified region pixel is a sharp square of its colour.
    const QPoint corner = Kit::viewportPixelOf(w.view(), QPointF(10, 10));
    for (int dy = 0; dy < int(zoom); ++dy)
        for (int dx = 0; dx < int(zoom); ++dx)
            KIT_COMPARE_COLOUR(grab.pixel(corner + QPoint(dx, dy)), layerOnly, Kit::kChannelTolerance);
    QCOMPARE(grab.pixel(corner - QPoint(1, 1)), kPictureGrey);
}

void tst_ImageLayerRegion::maskLargerThanThePicturePaintsBeyondIt()
{
    Kit::PictureWindow w(1.0, QSize(60, 40));
    const QRgb colour = qRgba(255, 0, 0, 128);
    showLayerRegion(w.imageLayer(), Kit::blockMask(QSize(100, 60), QRect(0, 0, 100, 60)), colour);
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(30.5, 20.5)), Kit::regionOver(kPictureGrey, colour),
                       Kit::kChannelTolerance);
    // Beyond the picture the region lies over the scene's grey.
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(80.5, 50.5)), Kit::regionOver(kBackgroundGrey, colour),
                       Kit::kChannelTolerance);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(100.5, 30.5)), kBackgroundGrey);
}

void tst_ImageLayerRegion::maskSmallerThanThePictureCoversItsOwnPart()
{
    Kit::PictureWindow w(2.0, QSize(60, 40));
    showLayerRegion(w.imageLayer(), Kit::blockMask(QSize(20, 10), QRect(0, 0, 20, 10)), qRgba(0, 0, 255, 255));
    const QImage grab = w.grabViewport();
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(0.5, 0.5)), qRgb(0, 0, 255));
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(19.5, 9.5)), qRgb(0, 0, 255));
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 5.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(5.5, 10.5)), kPictureGrey);
}

void tst_ImageLayerRegion::regionOfNoSizePaintsNothing()
{
    Kit::PictureWindow w(1.0, QSize(60, 40));
    const QImage before = w.grabViewport();
    showLayerRegion(w.imageLayer(), Kit::blockMask(QSize(60, 40), QRect(0, 0, 60, 40)), qRgba(255, 0, 0, 255));
    QCOMPARE(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(30.5, 20.5)), qRgb(255, 0, 0));
    QImage none(0, 0, QImage::Format_ARGB32);
    w.imageLayer()->GetRegion()->setRegionImage(none);
    w.imageLayer()->show();
    QCOMPARE(Kit::imageDifference(w.grabViewport(), before), 0);
}

void tst_ImageLayerRegion::pictureOfNoSizePaintsNoRegion()
{
    StandaloneView v(QSize(200, 150));
    showLayerRegion(v.layer(), Kit::blockMask(QSize(50, 50), QRect(0, 0, 50, 50)), qRgba(255, 0, 0, 255));
    const QImage grab = Kit::grabViewport(v.view);
    QCOMPARE(Kit::countColour(grab, kBackgroundGrey), grab.width() * grab.height());
}

void tst_ImageLayerRegion::runRegionShowsOpaqueGreenWhereTheRegionIs_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("one to one") << 1.0;
    QTest::newRow("four times") << 4.0;
}

void tst_ImageLayerRegion::runRegionShowsOpaqueGreenWhereTheRegionIs()
{
    QFETCH(double, zoom);
    Kit::PictureWindow w(zoom, QSize(80, 60));
    VorRegion region = regionOfRuns({{5, 10, 20}, {6, 12, 14}});
    w.imageLayer()->runDrawRegion(region);

    const ODRegion* held = w.imageLayer()->GetRegion();
    const QImage image = held->regionImage();
    QCOMPARE(image.size(), QSize(20, 7));
    QCOMPARE(image.pixel(10, 5), qRgba(0, 255, 0, 255));
    QCOMPARE(image.pixel(13, 6), qRgba(0, 255, 0, 255));
    QCOMPARE(qAlpha(image.pixel(9, 5)), 0);
    QCOMPARE(qAlpha(image.pixel(14, 6)), 0);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    // The region keeps the colour picture as its mask: green, blue, red bytes.
    QVERIFY(held->mask() != nullptr);
    QCOMPARE(held->mask()->Mat().type(), CV_8UC3);
    QVERIFY(held->mask()->Mat().at<cv::Vec3b>(5, 10) == cv::Vec3b(0, 255, 0));
    QVERIFY(held->mask()->Mat().at<cv::Vec3b>(5, 9) == cv::Vec3b(0, 0, 0));

    // Drawing a region does not repaint; the caller does.
    w.imageLayer()->show();
    const QImage grab = w.grabViewport();
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(10.5, 5.5)), kRunGreen);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(19.5, 5.5)), kRunGreen);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(12.5, 6.5)), kRunGreen);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 5.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(14.5, 6.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(10.5, 4.5)), kPictureGrey);
    QCOMPARE(Kit::countColour(grab, kRunGreen), 12 * int(zoom * zoom));
}

void tst_ImageLayerRegion::runRegionTableTakesAnyNonZeroByteAsInside()
{
    VorImage mask = Kit::rowMask({0, 1, 2, 128, 254, 255});
    const cv::Mat picture = MaskToColourPicture(&mask, 0, 255, 0);
    QCOMPARE(picture.type(), CV_8UC3);
    QCOMPARE(picture.cols, 6);
    QVERIFY(picture.at<cv::Vec3b>(0, 0) == cv::Vec3b(0, 0, 0));
    for (int x = 1; x < 6; ++x)
        QVERIFY2(picture.at<cv::Vec3b>(0, x) == cv::Vec3b(0, 255, 0), qPrintable(QString("column %1").arg(x)));
}

void tst_ImageLayerRegion::runRegionTableReadsPaddedRowsAtTheirStep()
{
    // Two rows of three pixels, each padded to eight bytes of non-zero filler.
    uchar bytes[16] = {0, 9, 0, 1, 1, 1, 1, 1, /**/ 7, 0, 0, 1, 1, 1, 1, 1};
    VorImage mask(cv::Mat(2, 3, CV_8UC1, bytes, 8));
    const cv::Mat picture = MaskToColourPicture(&mask, 1, 2, 3);
    QCOMPARE(picture.rows, 2);
    QCOMPARE(picture.cols, 3);
    QVERIFY(picture.isContinuous());
    const cv::Vec3b in(1, 2, 3), out(0, 0, 0);
    QVERIFY(picture.at<cv::Vec3b>(0, 0) == out);
    QVERIFY(picture.at<cv::Vec3b>(0, 1) == in);
    QVERIFY(picture.at<cv::Vec3b>(0, 2) == out);
    QVERIFY(picture.at<cv::Vec3b>(1, 0) == in);
    QVERIFY(picture.at<cv::Vec3b>(1, 1) == out);
    QVERIFY(picture.at<cv::Vec3b>(1, 2) == out);
}

void tst_ImageLayerRegion::runRegionTableRefusesOtherMasks()
{
    VorImage colour(cv::Mat(2, 2, CV_8UC3, cv::Scalar::all(255)));
    VorImage deep(cv::Mat(2, 2, CV_16UC1, cv::Scalar(255)));
    VorImage empty;
    QVERIFY(MaskToColourPicture(&colour, 0, 255, 0).empty());
    QVERIFY(MaskToColourPicture(&deep, 0, 255, 0).empty());
    QVERIFY(MaskToColourPicture(&empty, 0, 255, 0).empty());
    QVERIFY(MaskToColourPicture(nullptr, 0, 255, 0).empty());
}

void tst_ImageLayerRegion::runRegionReplacesTheRegionBefore()
{
    Kit::PictureWindow w(2.0, QSize(60, 40));
    VorRegion first = regionOfRuns({{2, 2, 30}, {3, 2, 30}});
    VorRegion second = regionOfRuns({{10, 5, 8}});
    w.imageLayer()->runDrawRegion(first);
    w.imageLayer()->runDrawRegion(second);
    QCOMPARE(w.imageLayer()->GetRegion()->regionImage().size(), QSize(8, 11));
    w.imageLayer()->show();
    const QImage grab = w.grabViewport();
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(20.5, 2.5)), kPictureGrey);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(5.5, 10.5)), kRunGreen);
    QCOMPARE(Kit::countColour(grab, kRunGreen), 3 * 4);
}

void tst_ImageLayerRegion::emptyRunRegionLeavesNothingToPaint()
{
    Kit::PictureWindow w(1.0, QSize(60, 40));
    const QImage before = w.grabViewport();
    VorRegion first = regionOfRuns({{2, 2, 30}});
    w.imageLayer()->runDrawRegion(first);
    VorRegion empty;
    w.imageLayer()->runDrawRegion(empty);
    QVERIFY(w.imageLayer()->GetRegion()->regionImage().isNull());
    w.imageLayer()->show();
    QCOMPARE(Kit::imageDifference(w.grabViewport(), before), 0);
}

void tst_ImageLayerRegion::resetRegionRemovesTheRegionImage()
{
    Kit::PictureWindow w(1.0, QSize(60, 40));
    const QImage before = w.grabViewport();
    VorRegion region = regionOfRuns({{2, 2, 30}, {20, 0, 60}});
    w.imageLayer()->runDrawRegion(region);
    w.imageLayer()->show();
    QCOMPARE(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(2.5, 2.5)), kRunGreen);

    w.imageLayer()->resetRegion();
    const ODRegion* held = w.imageLayer()->GetRegion();
    QCOMPARE(held->regionImage().size(), QSize(0, 0));
    QVERIFY(held->mask() != nullptr);
    QCOMPARE(held->mask()->Width(), 0);
    QCOMPARE(held->mask()->Height(), 0);
    w.imageLayer()->show();
    QCOMPARE(Kit::imageDifference(w.grabViewport(), before), 0);

    // The region works again afterwards.
    w.imageLayer()->runDrawRegion(region);
    w.imageLayer()->show();
    QCOMPARE(Kit::grabbedAt(w.grabViewport(), w.view(), QPointF(59.5, 20.5)), kRunGreen);
}

void tst_ImageLayerRegion::runRegionFromAWorkerWhilePainting()
{
    Kit::PictureWindow w(1.0, QSize(80, 60));
    constexpr int kRounds = 40;
    std::atomic<int> done{0};
    std::thread worker([&] {
        for (int i = 0; i < kRounds; ++i) {
            VorRegion region = regionOfRuns({{i % 50, 0, 10 + i}});
            w.imageLayer()->runDrawRegion(region);
            ++done;
        }
    });
    while (done.load() < kRounds) {
        w.imageLayer()->show();
        Kit::grabViewport(w.view());
    }
    worker.join();
    w.imageLayer()->show();
    const QImage grab = w.grabViewport();
    // The last region: row 39, columns 0 to 48.
    QCOMPARE(Kit::countColour(grab, kRunGreen), 10 + kRounds - 1);
    QCOMPARE(Kit::grabbedAt(grab, w.view(), QPointF(48.5, 39.5)), kRunGreen);
}

QTEST_MAIN(tst_ImageLayerRegion)
#include "tst_imagelayerregion.moc"
