#include "ImageLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odrect1.h"
#include "odregion.h"

#include "kitregions.h"
#include "testkit.h"

#include "VorImage.h"
#include "VorRegion.h"

#include <QtTest>

#include <opencv2/core.hpp>

#include <cstring>
#include <iterator>

// The region image of the image layer: its id from the shapes' counter, the
// colouring of a mask into a partly transparent picture byte by byte, the
// mask it keeps, the plain picture conversion, the scene's brush as its
// colour, and what it leaves behind when it goes.
class tst_ODRegion : public QObject
{
    Q_OBJECT

private slots:
    void takesTheNextIdBetweenShapes();
    void newRegionHoldsNothingAndIsVisible();

    void maskBecomesColourWhereItsLowBitIsSet_data();
    void maskBecomesColourWhereItsLowBitIsSet();
    void colourIsStoredUnpremultipliedInMemoryOrder_data();
    void colourIsStoredUnpremultipliedInMemoryOrder();
    void paddedMaskRowsAreReadAtTheirStep();
    void maskOfAnotherTypeGivesNullImage_data();
    void maskOfAnotherTypeGivesNullImage();
    void emptyOrMissingMaskGivesNullImage();
    void randomMasksFollowThePixelRule();

    void updateBeforeAnyLoadDoesNothing();
    void updateColoursTheLoadedMask();
    void updateAppliesTheSceneScaleToTheViewAgain();
    void loadKeepsItsOwnCopyOfTheMask();
    void loadOfNullIsRefusedAndKeepsTheMask();
    void secondLoadReplacesTheMask();
    void clearRegionDropsTheMaskButKeepsTheImage();
    void setRegionImageTakesThePicture();
    void setRegionVorImageColoursWithTheBrush();

    void vorRegionIsStoredAndCopiedOut();
    void visibleFlagIsStoredOnly();
    void zValueChangesNothing();
    void showRepaintsTheBackground();

    void plainConversionOfColourGivesArgb32();
    void plainConversionOfGreyGivesGreyTable();
    void plainConversionRefusesDeepPictures_data();
    void plainConversionRefusesDeepPictures();

    void destructionClearsTheSceneRegionPixmap();
};

namespace {

// The colours the rows of the conversion tests paint with.
void addColourRows()
{
    QTest::addColumn<int>("r");
    QTest::addColumn<int>("g");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("a");
    QTest::newRow("opaque red") << 255 << 0 << 0 << 255;
    QTest::newRow("half-transparent mixed") << 10 << 200 << 77 << 128;
    QTest::newRow("invisible green") << 0 << 255 << 0 << 0;
    QTest::newRow("faint white") << 255 << 255 << 255 << 1;
}

} // namespace

void tst_ODRegion::takesTheNextIdBetweenShapes()
{
    ImageCtrlScene scene;
    ODRect1 before(&scene);
    ODRegion region(&scene);
    ODRect1 after(&scene);
    QCOMPARE(region.GetID(), before.GetShapeID() + 1);
    QCOMPARE(after.GetShapeID(), region.GetID() + 1);
    QCOMPARE(ODShape::s_ID, after.GetShapeID() + 1);
}

void tst_ODRegion::newRegionHoldsNothingAndIsVisible()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    QVERIFY(region.regionImage().isNull());
    QVERIFY(region.mask() == nullptr);
    QVERIFY(region.getVisible());
    QVERIFY(region.getVorRegion().IsEmpty());
}

void tst_ODRegion::maskBecomesColourWhereItsLowBitIsSet_data()
{
    QTest::addColumn<int>("maskByte");
    QTest::addColumn<bool>("inside");
    QTest::newRow("0: outside") << 0 << false;
    QTest::newRow("1: inside") << 1 << true;
    QTest::newRow("2: outside, low bit clear") << 2 << false;
    QTest::newRow("3: inside") << 3 << true;
    QTest::newRow("128: outside") << 128 << false;
    QTest::newRow("127: inside") << 127 << true;
    QTest::newRow("254: outside, low bit clear") << 254 << false;
    QTest::newRow("255: inside") << 255 << true;
}

void tst_ODRegion::maskBecomesColourWhereItsLowBitIsSet()
{
    QFETCH(int, maskByte);
    QFETCH(bool, inside);
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage mask = Kit::rowMask({0, uchar(maskByte), 0});
    QImage image;
    region.VorImageToRegionImg(&mask, 40, 50, 60, 70, &image);
    QCOMPARE(image.size(), QSize(3, 1));
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    QCOMPARE(image.pixel(1, 0), inside ? qRgba(40, 50, 60, 70) : 0u);
    QCOMPARE(image.pixel(0, 0), 0u);
    QCOMPARE(image.pixel(2, 0), 0u);
}

void tst_ODRegion::colourIsStoredUnpremultipliedInMemoryOrder_data()
{
    addColourRows();
}

void tst_ODRegion::colourIsStoredUnpremultipliedInMemoryOrder()
{
    QFETCH(int, r);
    QFETCH(int, g);
    QFETCH(int, b);
    QFETCH(int, a);
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage mask = Kit::rowMask({255, 0});
    QImage image;
    region.VorImageToRegionImg(&mask, uchar(r), uchar(g), uchar(b), uchar(a), &image);
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    // Inside: the 32-bit value with blue in its lowest byte, alpha in its
    // highest, untouched by the alpha; outside: all four bytes 0.
    quint32 inside = 0;
    quint32 outside = 1;
    std::memcpy(&inside, image.constScanLine(0), sizeof inside);
    std::memcpy(&outside, image.constScanLine(0) + sizeof inside, sizeof outside);
    QCOMPARE(inside, quint32(b) | quint32(g) << 8 | quint32(r) << 16 | quint32(a) << 24);
    QCOMPARE(outside, 0u);
}

void tst_ODRegion::paddedMaskRowsAreReadAtTheirStep()
{
    // Three rows of two pixels, each row padded to five bytes.
    uchar bytes[15] = {255, 0, 7, 7, 7, /**/ 0, 255, 7, 7, 7, /**/ 255, 255, 7, 7, 7};
    VorImage mask(cv::Mat(3, 2, CV_8UC1, bytes, 5));
    ImageCtrlScene scene;
    ODRegion region(&scene);
    QImage image;
    region.VorImageToRegionImg(&mask, 1, 2, 3, 4, &image);
    QCOMPARE(image.size(), QSize(2, 3));
    const QRgb in = qRgba(1, 2, 3, 4);
    QCOMPARE(image.pixel(0, 0), in);
    QCOMPARE(image.pixel(1, 0), 0u);
    QCOMPARE(image.pixel(0, 1), 0u);
    QCOMPARE(image.pixel(1, 1), in);
    QCOMPARE(image.pixel(0, 2), in);
    QCOMPARE(image.pixel(1, 2), in);
}

void tst_ODRegion::maskOfAnotherTypeGivesNullImage_data()
{
    QTest::addColumn<int>("cvType");
    QTest::newRow("three 8-bit channels") << CV_8UC3;
    QTest::newRow("four 8-bit channels") << CV_8UC4;
    QTest::newRow("one 16-bit channel") << CV_16UC1;
    QTest::newRow("one float channel") << CV_32FC1;
}

void tst_ODRegion::maskOfAnotherTypeGivesNullImage()
{
    QFETCH(int, cvType);
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage mask(cv::Mat(4, 5, cvType, cv::Scalar::all(255)));
    QImage image(2, 2, QImage::Format_ARGB32);
    region.VorImageToRegionImg(&mask, 255, 0, 0, 255, &image);
    QVERIFY(image.isNull());

    // Loaded and coloured, it leaves nothing to paint.
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(255, 0, 0, 255);
    QVERIFY(region.regionImage().isNull());
}

void tst_ODRegion::emptyOrMissingMaskGivesNullImage()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage empty;
    QImage image(2, 2, QImage::Format_ARGB32);
    region.VorImageToRegionImg(&empty, 255, 0, 0, 255, &image);
    QVERIFY(image.isNull());

    image = QImage(2, 2, QImage::Format_ARGB32);
    region.VorImageToRegionImg(nullptr, 255, 0, 0, 255, &image);
    QVERIFY(image.isNull());

    // No target: the call has nowhere to write and leaves the region alone.
    VorImage mask = Kit::rowMask({255});
    region.VorImageToRegionImg(&mask, 255, 0, 0, 255, nullptr);
    QVERIFY(region.regionImage().isNull());
}

void tst_ODRegion::randomMasksFollowThePixelRule()
{
    // Masks of random sizes, types and row steps (windows into larger
    // pictures), against the rule read pixel by pixel.
    const int types[] = {CV_8UC1, CV_8UC1, CV_8UC1, CV_8UC3, CV_16UC1, CV_8UC2};
    cv::RNG rng(0x5e91u);
    ImageCtrlScene scene;
    ODRegion region(&scene);
    for (int round = 0; round < 200; ++round) {
        const int type = types[rng.uniform(0, int(std::size(types)))];
        const int width = rng.uniform(0, 40);
        const int height = rng.uniform(0, 30);
        const int padding = rng.uniform(0, 5);
        cv::Mat whole(height, width + padding, type);
        if (!whole.empty())
            rng.fill(whole, cv::RNG::UNIFORM, 0, 256);
        VorImage mask(whole(cv::Rect(padding, 0, width, height)));
        const QRgb colour = qRgba(rng.uniform(0, 256), rng.uniform(0, 256), rng.uniform(0, 256), rng.uniform(0, 256));
        QImage image(1, 1, QImage::Format_ARGB32);
        region.VorImageToRegionImg(&mask, uchar(qRed(colour)), uchar(qGreen(colour)), uchar(qBlue(colour)),
                                   uchar(qAlpha(colour)), &image);
        const QString row = QString("round %1: %2 x %3, type %4").arg(round).arg(width).arg(height).arg(type);
        if (type != CV_8UC1 || width == 0 || height == 0) {
            QVERIFY2(image.isNull(), qPrintable(row));
            continue;
        }
        QVERIFY2(image.size() == QSize(width, height), qPrintable(row));
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const QRgb expected = (mask.Mat().at<uchar>(y, x) & 1) ? colour : 0u;
                QVERIFY2(image.pixel(x, y) == expected, qPrintable(row + QString(" at (%1, %2)").arg(x).arg(y)));
            }
        }
    }
}

void tst_ODRegion::updateBeforeAnyLoadDoesNothing()
{
    StandaloneView v(QSize(200, 150));
    ODRegion region(v.scene());
    QImage picture = Kit::qtPicture(3, 3, qRgba(1, 2, 3, 4), QImage::Format_ARGB32);
    region.setRegionImage(picture);
    v.scene()->setScale(3.0);
    const QTransform matrixBefore = v.view->transform();
    region.Update(255, 0, 0, 255);
    QCOMPARE(region.regionImage(), picture);
    QCOMPARE(v.view->transform(), matrixBefore);
}

void tst_ODRegion::updateColoursTheLoadedMask()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage mask = Kit::blockMask(QSize(6, 4), QRect(1, 1, 2, 2));
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(9, 8, 7, 6);
    const QImage image = region.regionImage();
    QCOMPARE(image.size(), QSize(6, 4));
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x)
            QCOMPARE(image.pixel(x, y), QRect(1, 1, 2, 2).contains(x, y) ? qRgba(9, 8, 7, 6) : 0u);
}

void tst_ODRegion::updateAppliesTheSceneScaleToTheViewAgain()
{
    StandaloneView v(QSize(200, 150));
    ODRegion region(v.scene());
    VorImage mask = Kit::blockMask(QSize(4, 4), QRect(0, 0, 2, 2));
    QVERIFY(region.LoadVorRegion(&mask));
    v.scene()->setScale(2.5);
    v.view->setTransform(QTransform());
    region.Update(255, 0, 0, 255);
    QCOMPARE(v.view->transform(), QTransform::fromScale(2.5, 2.5));
    QCOMPARE(v.scene()->getScale(), 2.5);
}

void tst_ODRegion::loadKeepsItsOwnCopyOfTheMask()
{
    Kit::verifyLoadKeepsItsOwnCopy<ODRegion>();
}

void tst_ODRegion::loadOfNullIsRefusedAndKeepsTheMask()
{
    Kit::verifyNullMaskIsRefused<ODRegion>();
}

void tst_ODRegion::secondLoadReplacesTheMask()
{
    Kit::verifySecondLoadReplacesTheMask<ODRegion>();
}

void tst_ODRegion::clearRegionDropsTheMaskButKeepsTheImage()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage mask = Kit::rowMask({255});
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(255, 0, 0, 255);
    region.clearRegion();
    QVERIFY(region.mask() == nullptr);
    QCOMPARE(region.regionImage().pixel(0, 0), qRgba(255, 0, 0, 255));
    // Without a mask a new colour has nothing to colour.
    region.Update(0, 255, 0, 255);
    QCOMPARE(region.regionImage().pixel(0, 0), qRgba(255, 0, 0, 255));
    region.clearRegion();
    QVERIFY(region.mask() == nullptr);
}

void tst_ODRegion::setRegionImageTakesThePicture()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    QImage picture = Kit::qtPicture(5, 4, qRgba(10, 20, 30, 40), QImage::Format_ARGB32);
    region.setRegionImage(picture);
    QCOMPARE(region.regionImage(), picture);
    QImage none(0, 0, QImage::Format_RGB32);
    region.setRegionImage(none);
    QCOMPARE(region.regionImage().size(), QSize(0, 0));
}

void tst_ODRegion::setRegionVorImageColoursWithTheBrush()
{
    ImageCtrlScene scene;
    scene.setBrushColor(QColor(10, 20, 30, 40));
    ODRegion region(&scene);
    VorImage mask = Kit::rowMask({0, 1, 254, 255});
    region.setRegionVorImage(&mask);
    const QImage image = region.regionImage();
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    QCOMPARE(image.pixel(0, 0), 0u);
    QCOMPARE(image.pixel(1, 0), qRgba(10, 20, 30, 40));
    QCOMPARE(image.pixel(2, 0), 0u);
    QCOMPARE(image.pixel(3, 0), qRgba(10, 20, 30, 40));
    // The mask is coloured, not kept.
    QVERIFY(region.mask() == nullptr);

    // The default brush is green with alpha 0: present, and invisible.
    ImageCtrlScene plain;
    ODRegion byDefault(&plain);
    byDefault.setRegionVorImage(&mask);
    QCOMPARE(byDefault.regionImage().pixel(1, 0), qRgba(0, 255, 0, 0));
}

void tst_ODRegion::vorRegionIsStoredAndCopiedOut()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorRegion runs;
    runs.SetRuns({{1, 2, 5}, {3, 0, 1}});
    region.setVorRegion(runs);
    runs.SetRuns({});
    VorRegion copy = region.getVorRegion();
    QCOMPARE(copy.Area(), 4LL);
    QVERIFY(copy.Contains(4, 1));
    copy.SetRuns({});
    QCOMPARE(region.getVorRegion().Area(), 4LL);
}

void tst_ODRegion::visibleFlagIsStoredOnly()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    region.setVisible(false);
    QVERIFY(!region.getVisible());
    region.setVisible(true);
    QVERIFY(region.getVisible());
}

void tst_ODRegion::zValueChangesNothing()
{
    ImageCtrlScene scene;
    const int itemsBefore = scene.items().size();
    ODRegion region(&scene);
    VorImage mask = Kit::rowMask({255});
    QVERIFY(region.LoadVorRegion(&mask));
    region.Update(1, 2, 3, 4);
    const QImage before = region.regionImage();
    region.setZValue(-1);
    region.setZValue(5000);
    QCOMPARE(region.regionImage(), before);
    QCOMPARE(scene.items().size(), itemsBefore);
}

void tst_ODRegion::showRepaintsTheBackground()
{
    StandaloneView v(QSize(200, 150));
    ODRegion region(v.scene());
    Kit::flushPaints();
    Kit::PaintCounter counter(v.view->viewport());
    region.show();
    QTRY_VERIFY(counter.paints > 0);
}

void tst_ODRegion::plainConversionOfColourGivesArgb32()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage picture = Kit::colourPicture(3, 2, 200, 100, 50);
    const QImage image = region.VorImageToQImage(&picture);
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    QCOMPARE(image.size(), QSize(3, 2));
    QCOMPARE(image.pixel(2, 1), qRgba(200, 100, 50, 255));
}

void tst_ODRegion::plainConversionOfGreyGivesGreyTable()
{
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage picture = Kit::greyPicture(4, 3, 77);
    const QImage image = region.VorImageToQImage(&picture);
    QCOMPARE(image.format(), QImage::Format_Indexed8);
    QCOMPARE(image.colorCount(), 256);
    for (int i = 0; i < 256; ++i)
        QCOMPARE(image.color(i), qRgb(i, i, i));
    QCOMPARE(image.pixelIndex(3, 2), 77);
}

void tst_ODRegion::plainConversionRefusesDeepPictures_data()
{
    QTest::addColumn<int>("cvType");
    QTest::newRow("one 16-bit channel") << CV_16UC1;
    QTest::newRow("three 16-bit channels") << CV_16UC3;
    QTest::newRow("two 8-bit channels") << CV_8UC2;
    QTest::newRow("four 8-bit channels") << CV_8UC4;
}

void tst_ODRegion::plainConversionRefusesDeepPictures()
{
    QFETCH(int, cvType);
    ImageCtrlScene scene;
    ODRegion region(&scene);
    VorImage picture(cv::Mat(2, 2, cvType, cv::Scalar::all(65535)));
    QVERIFY(region.VorImageToQImage(&picture).isNull());
    QVERIFY(region.VorImageToQImage(nullptr).isNull());
}

void tst_ODRegion::destructionClearsTheSceneRegionPixmap()
{
    ImageCtrlScene scene;
    scene.setRegionBackGroudImage(Kit::qtPicture(4, 4, qRgb(255, 0, 0)));
    auto paintedRegionBackground = [&scene] {
        QImage target = Kit::qtPicture(4, 4, qRgb(0, 0, 0));
        QPainter painter(&target);
        scene.drawBackgroundRegion(&painter, QRectF(0, 0, 4, 4));
        painter.end();
        return target.pixel(2, 2);
    };
    QCOMPARE(paintedRegionBackground(), qRgb(255, 0, 0));
    delete new ODRegion(&scene);
    QCOMPARE(paintedRegionBackground(), qRgb(0, 0, 0));
}

QTEST_MAIN(tst_ODRegion)
#include "tst_odregion.moc"
