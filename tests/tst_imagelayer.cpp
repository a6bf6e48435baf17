#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "testkit.h"

#include <QtTest>

#include <opencv2/core.hpp>

#include <cmath>
#include <limits>

// The image layer: the queue of at most one picture, taking a picture over
// into the scene (scene rectangle, fit and view matrix), the fit ratio, pixel
// reads, clearing, and the painting of the picture into the scene background,
// checked on the pixels of the viewport.
class tst_ImageLayer : public QObject
{
    Q_OBJECT

private slots:
    void indexedPictureWithSeeThroughEntriesShowsTheGreyBeneath();
    void newLayerStartsEmptyInFitModel();
    void zoomModelIsPlainStore();
    void backgroundKindSetsVorImageFlag();

    void loadQImageQueuesSharedCopy();
    void loadQImageReplacesWaitingPicture();
    void loadNullQImageFailsAndDropsWaitingPicture();
    void loadQImageLeavesVorImageAndScaleAlone();
    void loadVorImageStoresCopyThatOutlivesSource();
    void loadVorImageReusesStoredCopy();
    void loadVorImageInFitModelSetsFitScaleBeforeUpdate();
    void loadVorImageOutsideFitModelKeepsScale();
    void loadInvalidVorImageFailsKeepsCopyAndDropsWaitingPicture();
    void loadVorImageOfUnsupportedChannelsQueuesNullPicture_data();
    void loadVorImageOfUnsupportedChannelsQueuesNullPicture();
    void unsupportedChannelsInFitModelGiveInfiniteScale();
    void unsupportedChannelsShowOnlyGreyThroughWindow_data();
    void unsupportedChannelsShowOnlyGreyThroughWindow();

    void updateTakesQueuedPictureAndSetsSceneRects();
    void updateInFitModelFitsInDoublePrecision();
    void fitChoosesRatioWithSinglePrecisionTolerance_data();
    void fitChoosesRatioWithSinglePrecisionTolerance();
    void updateOutsideFitModelKeepsScale();
    void updateWithEmptyQueueChangesNothing();
    void updateFalseReappliesCurrentPicture();
    void updateFalseOutsideFitModelUsesStoredScale();
    void fitAtZeroViewSizeStoresOneButMatrixGetsZero();

    void fitValueWithoutVorImageIsOne();
    void fitValueUsesStoredVorImageSize();
    void fitValueOfQImageBackgroundUsesShownPicture();
    void fitValueOfEmptyQImageBackgroundIsOne();
    void fitValueAfterClearIsOne();
    void fitValueIsNarrowedToFloat();

    void getPixelTestsRoundedAndReadsTruncated();
    void getPixelAtPictureBorders_data();
    void getPixelAtPictureBorders();
    void getPixelOfIndexedPictureReadsColourTable();
    void getPixelWithoutPictureIsBackgroundGrey();

    void clearLeavesOnePixelInUnchangedScene();
    void clearRepaintsWithoutOldPicture();

    void sixteenBitValuesShowScaledDown();
    void paddedEightBitRowsShowSheared();
    void paddedSixteenBitRowsShowStraight();
    void paintsPictureAtSceneCoordinates();
    void magnifiedPixelsStaySharpAtScaleEight();
    void indexedPicturePaintsItsColourTable();
    void paintedIndexedPictureFollowsNewPicture();
    void paintedGreyVorImageFollowsNewPicture();
    void nothingButGreyBeforeFirstPicture();

    void refreshLayersTakesWaitingPicture();
    void refusedDisplayLeavesPictureOnShow();

    void resizeRefitsVorImageBackground();
    void resizeKeepsScaleOfQImageBackground();

    void qImageToKesImagePacksIndexedRows();
    void qImageToKesImageKeepsFourBytesOfThirtyTwoBitFormats_data();
    void qImageToKesImageKeepsFourBytesOfThirtyTwoBitFormats();
    void qImageToKesImageLeavesOtherFormatsEmpty_data();
    void qImageToKesImageLeavesOtherFormatsEmpty();
};

namespace {

const QRgb kGrey = qRgb(153, 153, 153);

// A 32-bit picture whose pixels all differ.
QImage colourPicture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb((17 + 37 * x) % 256, (29 + 53 * y) % 256, (x * 11 + y * 23 + 5) % 256));
    return image;
}

QImage indexedPicture(int width, int height, int seed)
{
    QImage image(width, height, QImage::Format_Indexed8);
    image.setColorCount(256);
    for (int i = 0; i < 256; ++i)
        image.setColor(i, qRgb((i * 7 + seed) % 256, (255 - i + seed) % 256, (i * 3) % 256));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, uint((x * 31 + y * 17 + seed) % 256));
    return image;
}

VorImage greyVorImage(int width, int height, int seed)
{
    cv::Mat mat(height, width, CV_8UC1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            mat.at<uchar>(y, x) = uchar((x * 29 + y * 41 + seed) % 256);
    return VorImage(mat);
}

QImage grabViewport(QGraphicsView* view)
{
    return view->viewport()->grab().toImage();
}

QRgb paintedAt(const QImage& grab, QGraphicsView* view, const QPointF& scenePos)
{
    const QPoint p = view->mapFromScene(scenePos);
    return grab.pixel(p) | 0xFF000000u;
}

QString rgbText(QRgb c)
{
    return QStringLiteral("(%1, %2, %3)").arg(qRed(c)).arg(qGreen(c)).arg(qBlue(c));
}

bool isOnlyGrey(const QImage& grab)
{
    for (int y = 0; y < grab.height(); ++y)
        for (int x = 0; x < grab.width(); ++x)
            if ((grab.pixel(x, y) | 0xFF000000u) != kGrey)
                return false;
    return true;
}

double matrixScale(QGraphicsView* view)
{
    return view->matrix().m11();
}

} // namespace

void tst_ImageLayer::newLayerStartsEmptyInFitModel()
{
    StandaloneView v;
    ImageLayer* layer = v.layer();
    QVERIFY(layer->GetQImage()->isNull());
    QVERIFY(!layer->GetVorImage());
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    QVERIFY(layer->isVorImg());
    QCOMPARE(layer->pendingCount(), 0);
    QCOMPARE(v.scene()->getScale(), 1.0);
}

void tst_ImageLayer::zoomModelIsPlainStore()
{
    StandaloneView v;
    QImage picture = colourPicture(40, 30);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    const double scale = v.scene()->getScale();
    const QMatrix matrix = v.view->matrix();

    const VOR_ZOOM_MODEL models[] = {VOR_ZOOM_IN, VOR_ZOOM_OUT, VOR_ZOOM_ORG, VOR_ZOOM_FIT};
    for (VOR_ZOOM_MODEL model : models) {
        v.layer()->SetZoomModel(model);
        QCOMPARE(v.layer()->GetZoomModel(), model);
        QCOMPARE(v.scene()->getScale(), scale);
        QCOMPARE(v.view->matrix(), matrix);
    }
}

void tst_ImageLayer::backgroundKindSetsVorImageFlag()
{
    EmbeddedWindow w;
    QCOMPARE(w.created, 0L);
    ImageLayer* layer = w.scene()->GetImageLayer();
    QCOMPARE(w.setPicture(colourPicture(20, 10)), 0L);
    QVERIFY(!layer->isVorImg());
    QVERIFY(!w.window()->isVorImg());
    QCOMPARE(w.setPicture(greyVorImage(20, 10, 3)), 0L);
    QVERIFY(layer->isVorImg());

    layer->setIsVorImg(false);
    QVERIFY(!layer->isVorImg());
    layer->setIsVorImg(true);
    QVERIFY(layer->isVorImg());
}

void tst_ImageLayer::loadQImageQueuesSharedCopy()
{
    StandaloneView v;
    QImage picture = colourPicture(30, 20);
    QVERIFY(v.layer()->LoadVorImage(picture));
    QCOMPARE(v.layer()->pendingCount(), 1);
    // Queued, not yet on show.
    QVERIFY(v.layer()->GetQImage()->isNull());
    v.layer()->Update(true);
    QCOMPARE(v.layer()->pendingCount(), 0);
    // A shared copy: the very pixel buffer of the caller's picture.
    QCOMPARE(v.layer()->GetQImage()->cacheKey(), picture.cacheKey());
    QCOMPARE(*v.layer()->GetQImage(), picture);
}

void tst_ImageLayer::loadQImageReplacesWaitingPicture()
{
    StandaloneView v;
    QImage first = colourPicture(30, 20);
    QImage second = colourPicture(12, 9);
    QVERIFY(v.layer()->LoadVorImage(first));
    QVERIFY(v.layer()->LoadVorImage(second));
    QCOMPARE(v.layer()->pendingCount(), 1);
    v.layer()->Update(true);
    QCOMPARE(*v.layer()->GetQImage(), second);
    QCOMPARE(v.layer()->pendingCount(), 0);
}

void tst_ImageLayer::loadNullQImageFailsAndDropsWaitingPicture()
{
    StandaloneView v;
    QImage shown = colourPicture(30, 20);
    QVERIFY(v.layer()->LoadVorImage(shown));
    v.layer()->Update(true);

    QImage waiting = colourPicture(8, 8);
    QVERIFY(v.layer()->LoadVorImage(waiting));
    QImage null;
    QVERIFY(!v.layer()->LoadVorImage(null));
    QCOMPARE(v.layer()->pendingCount(), 0);
    // The waiting picture is lost; the one on show remains.
    v.layer()->Update(true);
    QCOMPARE(*v.layer()->GetQImage(), shown);
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 30, 20));
}

void tst_ImageLayer::loadQImageLeavesVorImageAndScaleAlone()
{
    StandaloneView v;
    VorImage grey = greyVorImage(50, 40, 1);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    VorImage* stored = v.layer()->GetVorImage();
    QVERIFY(stored);
    v.scene()->setScale(3.5);

    QImage picture = colourPicture(200, 100);
    QVERIFY(v.layer()->LoadVorImage(picture));
    QCOMPARE(v.layer()->GetVorImage(), stored);
    QCOMPARE(stored->Width(), 50);
    QCOMPARE(v.layer()->GetZoomModel(), VOR_ZOOM_FIT);
    QCOMPARE(v.scene()->getScale(), 3.5);
}

void tst_ImageLayer::loadVorImageStoresCopyThatOutlivesSource()
{
    StandaloneView v;
    {
        VorImage grey = greyVorImage(7, 5, 9);
        QVERIFY(v.layer()->LoadVorImage(&grey));
        QVERIFY(v.layer()->GetVorImage());
        QVERIFY(v.layer()->GetVorImage() != &grey);
    }
    VorImage* stored = v.layer()->GetVorImage();
    QCOMPARE(stored->Width(), 7);
    QCOMPARE(stored->Height(), 5);
    QCOMPARE(stored->Channels(), 1);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            QCOMPARE(int(stored->Mat().at<uchar>(y, x)), (x * 29 + y * 41 + 9) % 256);
    QCOMPARE(v.layer()->pendingCount(), 1);
    v.layer()->Update(true);
    const QImage* shown = v.layer()->GetQImage();
    QCOMPARE(shown->format(), QImage::Format_Indexed8);
    QCOMPARE(shown->size(), QSize(7, 5));
    QCOMPARE(shown->pixelIndex(6, 4), (6 * 29 + 4 * 41 + 9) % 256);
}

void tst_ImageLayer::loadVorImageReusesStoredCopy()
{
    StandaloneView v;
    VorImage first = greyVorImage(7, 5, 1);
    QVERIFY(v.layer()->LoadVorImage(&first));
    VorImage* stored = v.layer()->GetVorImage();
    VorImage second = greyVorImage(11, 3, 2);
    QVERIFY(v.layer()->LoadVorImage(&second));
    QCOMPARE(v.layer()->GetVorImage(), stored);
    QCOMPARE(stored->Width(), 11);
    QCOMPARE(stored->Height(), 3);
}

void tst_ImageLayer::loadVorImageInFitModelSetsFitScaleBeforeUpdate()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    v.scene()->setScale(9.0);
    VorImage grey = greyVorImage(100, 200, 1);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    // rw = 4, rh = 1.5: the smaller wins, set on load, before any Update.
    QCOMPARE(v.scene()->getScale(), 1.5);
    QVERIFY(v.layer()->GetQImage()->isNull());
}

void tst_ImageLayer::loadVorImageOutsideFitModelKeepsScale()
{
    const VOR_ZOOM_MODEL models[] = {VOR_ZOOM_IN, VOR_ZOOM_OUT, VOR_ZOOM_ORG};
    for (VOR_ZOOM_MODEL model : models) {
        StandaloneView v;
        v.scene()->setViewSize(400.0f, 300.0f);
        v.layer()->SetZoomModel(model);
        v.scene()->setScale(9.0);
        VorImage grey = greyVorImage(100, 200, 1);
        QVERIFY(v.layer()->LoadVorImage(&grey));
        QCOMPARE(v.scene()->getScale(), 9.0);
        v.layer()->Update(true);
        QCOMPARE(v.scene()->getScale(), 9.0);
        QCOMPARE(matrixScale(v.view), 9.0);
        QCOMPARE(v.layer()->GetZoomModel(), model);
    }
}

void tst_ImageLayer::loadInvalidVorImageFailsKeepsCopyAndDropsWaitingPicture()
{
    StandaloneView v;
    VorImage shown = greyVorImage(30, 20, 1);
    QVERIFY(v.layer()->LoadVorImage(&shown));
    v.layer()->Update(true);
    VorImage waiting = greyVorImage(8, 8, 2);
    QVERIFY(v.layer()->LoadVorImage(&waiting));
    QCOMPARE(v.layer()->pendingCount(), 1);

    v.scene()->setScale(4.25);
    VorImage empty;
    QVERIFY(!v.layer()->LoadVorImage(&empty));
    QCOMPARE(v.layer()->pendingCount(), 0);
    // The invalid copy stays stored; the scale is not refitted.
    QVERIFY(v.layer()->GetVorImage());
    QCOMPARE(v.layer()->GetVorImage()->Width(), 0);
    QCOMPARE(v.layer()->GetVorImage()->Height(), 0);
    QCOMPARE(v.scene()->getScale(), 4.25);
    // The picture on show remains.
    v.layer()->Update(true);
    QCOMPARE(v.layer()->GetQImage()->size(), QSize(30, 20));
}

void tst_ImageLayer::loadVorImageOfUnsupportedChannelsQueuesNullPicture_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("two channels") << int(CV_8UC2);
    QTest::newRow("four channels") << int(CV_8UC4);
    QTest::newRow("two channels, 16 bits") << int(CV_16UC2);
}

void tst_ImageLayer::loadVorImageOfUnsupportedChannelsQueuesNullPicture()
{
    QFETCH(int, type);
    StandaloneView v;
    v.layer()->SetZoomModel(VOR_ZOOM_ORG);
    v.scene()->setScale(2.0);
    cv::Mat mat(20, 30, type, cv::Scalar::all(200));
    VorImage image(mat);
    QVERIFY(v.layer()->LoadVorImage(&image));
    QCOMPARE(v.layer()->pendingCount(), 1);
    v.layer()->Update(true);
    QVERIFY(v.layer()->GetQImage()->isNull());
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 0, 0));
    QCOMPARE(v.view->sceneRect(), QRectF(0, 0, 0, 0));
    QCOMPARE(v.scene()->getScale(), 2.0);
    QVERIFY(isOnlyGrey(grabViewport(v.view)));
}

void tst_ImageLayer::unsupportedChannelsInFitModelGiveInfiniteScale()
{
    StandaloneView v;
    cv::Mat mat(20, 30, CV_8UC4, cv::Scalar::all(200));
    VorImage image(mat);
    QVERIFY(v.layer()->LoadVorImage(&image));
    // The load fits the stored VorImage's size.
    double vw = 0.0, vh = 0.0;
    v.scene()->getViewSize(vw, vh);
    QVERIFY(vw > 0.0 && vh > 0.0);
    const double rw = vw / 30.0;
    const double rh = vh / 20.0;
    const float fitted = float(rw - rh > double(0.000001f) ? rh : rw);
    QVERIFY(v.scene()->getScale() == double(fitted));
    // Update divides by the null picture's width: the infinite ratio goes on
    // into the scene's scale, while the view keeps the matrix it had.
    const QMatrix before = v.view->matrix();
    v.layer()->Update(true);
    QVERIFY(qIsInf(v.scene()->getScale()));
    QVERIFY(std::isfinite(matrixScale(v.view)));
    QCOMPARE(v.view->matrix(), before);
}

void tst_ImageLayer::unsupportedChannelsShowOnlyGreyThroughWindow_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("model");
    QTest::newRow("two channels, one-to-one") << int(CV_8UC2) << int(VOR_ZOOM_ORG);
    QTest::newRow("four channels, one-to-one") << int(CV_8UC4) << int(VOR_ZOOM_ORG);
    QTest::newRow("two channels, fit") << int(CV_8UC2) << int(VOR_ZOOM_FIT);
    QTest::newRow("four channels, fit") << int(CV_8UC4) << int(VOR_ZOOM_FIT);
}

void tst_ImageLayer::unsupportedChannelsShowOnlyGreyThroughWindow()
{
    QFETCH(int, type);
    QFETCH(int, model);
    EmbeddedWindow w;
    // First a real picture, so that a failure to replace it would show.
    QCOMPARE(w.setPicture(greyVorImage(40, 30, 1)), 0L);
    QVERIFY(!isOnlyGrey(grabViewport(w.view())));

    w.scene()->GetImageLayer()->SetZoomModel(VOR_ZOOM_MODEL(model));
    cv::Mat mat(30, 40, type, cv::Scalar::all(255));
    VorImage image(mat);
    QCOMPARE(w.wnd->setBackground(image), 0L);
    QVERIFY(w.scene()->GetImageLayer()->GetQImage()->isNull());
    QCOMPARE(w.scene()->sceneRect(), QRectF(0, 0, 0, 0));
    const QImage grab = grabViewport(w.view());
    // Under the fit the scale becomes infinite; the view keeps a finite
    // matrix and shows the grey background all the same.
    if (model == VOR_ZOOM_FIT)
        QVERIFY(qIsInf(w.scene()->getScale()));
    QVERIFY(isOnlyGrey(grab));
}

void tst_ImageLayer::updateTakesQueuedPictureAndSetsSceneRects()
{
    StandaloneView v;
    v.view->setSceneRect(-500, -500, 10, 10);
    QImage picture = colourPicture(123, 45);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 123, 45));
    QCOMPARE(v.view->sceneRect(), QRectF(0, 0, 123, 45));
    QCOMPARE(v.layer()->GetQImage()->size(), QSize(123, 45));
    QCOMPARE(v.layer()->pendingCount(), 0);
}

void tst_ImageLayer::updateInFitModelFitsInDoublePrecision()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    QImage picture = colourPicture(3, 7);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    // rw = 133.3, rh = 42.86: rh, in double precision and not narrowed.
    QCOMPARE(v.scene()->getScale(), 300.0 / 7.0);
    QVERIFY(v.scene()->getScale() != double(float(300.0 / 7.0)));
    const QMatrix m = v.view->matrix();
    const double scale = 300.0 / 7.0;
    QCOMPARE((QList<double>{m.m11(), m.m22(), m.m12(), m.m21()}), (QList<double>{scale, scale, 0.0, 0.0}));
}

void tst_ImageLayer::fitChoosesRatioWithSinglePrecisionTolerance_data()
{
    // The view's size in single precision, held exactly by QSizeF.
    QTest::addColumn<QSizeF>("view");
    QTest::addColumn<QSize>("image");
    QTest::addColumn<bool>("widthRatioWins");

    QTest::newRow("width ratio smaller") << QSizeF(200.0f, 300.0f) << QSize(100, 100) << true;
    QTest::newRow("height ratio smaller") << QSizeF(300.0f, 200.0f) << QSize(100, 100) << false;
    QTest::newRow("equal ratios") << QSizeF(200.0f, 100.0f) << QSize(100, 50) << true;
    // rw - rh = 7.6e-8 lies within the tolerance: the larger width ratio wins.
    QTest::newRow("width ratio larger by far less than tolerance")
        << QSizeF(std::nextafter(100.0f, 200.0f), 100.0f) << QSize(100, 100) << true;
    // 1.000001f - 1 = 9.54e-7, below 0.000001f as a double (9.99999997e-7).
    QTest::newRow("width ratio larger just within tolerance") << QSizeF(1.000001f, 1.0f) << QSize(1, 1) << true;
    // The next float is 1.07e-6 above 1: beyond the tolerance.
    QTest::newRow("width ratio larger just beyond tolerance")
        << QSizeF(std::nextafter(1.000001f, 2.0f), 1.0f) << QSize(1, 1) << false;
    QTest::newRow("width ratio larger by 0.5") << QSizeF(150.0f, 100.0f) << QSize(100, 100) << false;
}

void tst_ImageLayer::fitChoosesRatioWithSinglePrecisionTolerance()
{
    QFETCH(QSizeF, view);
    QFETCH(QSize, image);
    QFETCH(bool, widthRatioWins);
    const float viewWidth = float(view.width());
    const float viewHeight = float(view.height());
    const int imageWidth = image.width();
    const int imageHeight = image.height();

    StandaloneView v;
    v.scene()->setViewSize(viewWidth, viewHeight);
    v.layer()->setIsVorImg(false);
    QImage picture = colourPicture(imageWidth, imageHeight);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);

    const double rw = double(viewWidth) / imageWidth;
    const double rh = double(viewHeight) / imageHeight;
    const double expected = widthRatioWins ? rw : rh;
    QVERIFY2(v.scene()->getScale() == expected, qPrintable(QString::number(v.scene()->getScale(), 'g', 17)));
    QVERIFY(matrixScale(v.view) == expected);
    QVERIFY(v.layer()->GetFitImageScaledValue() == float(expected));

    // The same choice for a VorImage of that size.
    StandaloneView w;
    w.scene()->setViewSize(viewWidth, viewHeight);
    VorImage grey = greyVorImage(imageWidth, imageHeight, 0);
    QVERIFY(w.layer()->LoadVorImage(&grey));
    QVERIFY(w.layer()->GetFitImageScaledValue() == float(expected));
    QVERIFY(w.scene()->getScale() == double(float(expected)));
}

void tst_ImageLayer::updateOutsideFitModelKeepsScale()
{
    StandaloneView v;
    v.layer()->SetZoomModel(VOR_ZOOM_IN);
    v.scene()->setScale(2.5);
    QImage picture = colourPicture(300, 200);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    QCOMPARE(v.scene()->getScale(), 2.5);
    QCOMPARE(matrixScale(v.view), 2.5);
    QCOMPARE(v.view->matrix().m22(), 2.5);
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 300, 200));
}

void tst_ImageLayer::updateWithEmptyQueueChangesNothing()
{
    StandaloneView v;
    QImage picture = colourPicture(300, 200);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    const QMatrix matrix = v.view->matrix();

    // Everything that a take-over would change is now different.
    v.scene()->setViewSize(50.0f, 50.0f);
    v.scene()->setScale(7.0);
    v.view->setSceneRect(-20, -20, 40, 40);
    v.scene()->setSceneRect(-30, -30, 60, 60);
    v.layer()->Update(true);
    QCOMPARE(v.scene()->getScale(), 7.0);
    QCOMPARE(v.view->matrix(), matrix);
    QCOMPARE(v.view->sceneRect(), QRectF(-20, -20, 40, 40));
    QCOMPARE(v.scene()->sceneRect(), QRectF(-30, -30, 60, 60));
    QCOMPARE(*v.layer()->GetQImage(), picture);
}

void tst_ImageLayer::updateFalseReappliesCurrentPicture()
{
    StandaloneView v;
    QImage picture = colourPicture(300, 200);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    QImage waiting = colourPicture(10, 10);
    QVERIFY(v.layer()->LoadVorImage(waiting));

    v.view->setSceneRect(-20, -20, 40, 40);
    v.scene()->setViewSize(150.0f, 50.0f);
    v.layer()->Update(false);
    QCOMPARE(v.view->sceneRect(), QRectF(0, 0, 300, 200));
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 300, 200));
    QCOMPARE(v.scene()->getScale(), 0.25);
    QCOMPARE(matrixScale(v.view), 0.25);
    // The queue is not involved.
    QCOMPARE(*v.layer()->GetQImage(), picture);
    QCOMPARE(v.layer()->pendingCount(), 1);
}

void tst_ImageLayer::updateFalseOutsideFitModelUsesStoredScale()
{
    StandaloneView v;
    QImage picture = colourPicture(300, 200);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    v.layer()->SetZoomModel(VOR_ZOOM_OUT);
    v.scene()->setScale(3.0);
    v.layer()->Update(false);
    QCOMPARE(v.scene()->getScale(), 3.0);
    QCOMPARE(matrixScale(v.view), 3.0);
}

void tst_ImageLayer::fitAtZeroViewSizeStoresOneButMatrixGetsZero()
{
    StandaloneView v(QSize(640, 480), false);
    double vw = -1.0, vh = -1.0;
    v.scene()->getViewSize(vw, vh);
    QCOMPARE(vw, 0.0);
    QCOMPARE(vh, 0.0);

    VorImage grey = greyVorImage(100, 50, 1);
    v.scene()->setScale(5.0);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    // The fit of a 0 by 0 view is 0, which the scene stores as 1.0.
    QVERIFY(v.layer()->GetFitImageScaledValue() == 0.0f);
    QCOMPARE(v.scene()->getScale(), 1.0);

    v.scene()->setScale(5.0);
    v.layer()->Update(true);
    QCOMPARE(v.scene()->getScale(), 1.0);
    QCOMPARE(v.view->matrix().m11(), 0.0);
    QCOMPARE(v.view->matrix().m22(), 0.0);
}

void tst_ImageLayer::fitValueWithoutVorImageIsOne()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    // A QImage on show does not count while the layer is in VorImage mode.
    QImage picture = colourPicture(10, 10);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    QVERIFY(v.layer()->isVorImg());
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 1.0f);
}

void tst_ImageLayer::fitValueUsesStoredVorImageSize()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    QImage picture = colourPicture(10, 10);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    // Stored but not yet on show: its size decides.
    VorImage grey = greyVorImage(200, 50, 1);
    v.layer()->SetZoomModel(VOR_ZOOM_IN);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 2.0f);
}

void tst_ImageLayer::fitValueOfQImageBackgroundUsesShownPicture()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    VorImage grey = greyVorImage(200, 50, 1);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    v.layer()->setIsVorImg(false);
    QImage picture = colourPicture(40, 60);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    // The VorImage stays stored, but in QImage mode the picture on show decides.
    QVERIFY(v.layer()->GetVorImage());
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 5.0f);
}

void tst_ImageLayer::fitValueOfEmptyQImageBackgroundIsOne()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    v.layer()->setIsVorImg(false);
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 1.0f);
}

void tst_ImageLayer::fitValueAfterClearIsOne()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 300.0f);
    VorImage grey = greyVorImage(200, 50, 1);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    v.layer()->Update(true);
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 2.0f);
    v.layer()->ClearVorImage();
    QVERIFY(v.layer()->isVorImg());
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 1.0f);
    // In QImage mode the cleared picture is 1 by 1: the view's own size.
    v.layer()->setIsVorImg(false);
    QCOMPARE(v.layer()->GetFitImageScaledValue(), 300.0f);
}

void tst_ImageLayer::fitValueIsNarrowedToFloat()
{
    StandaloneView v;
    v.scene()->setViewSize(400.0f, 700.0f);
    VorImage grey = greyVorImage(3, 3, 1);
    v.layer()->SetZoomModel(VOR_ZOOM_ORG);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    QVERIFY(v.layer()->GetFitImageScaledValue() == float(400.0 / 3.0));
}

void tst_ImageLayer::getPixelTestsRoundedAndReadsTruncated()
{
    StandaloneView v;
    const QImage picture = colourPicture(10, 6);
    QImage copy = picture;
    QVERIFY(v.layer()->LoadVorImage(copy));
    v.layer()->Update(true);

    double r = 0, g = 0, b = 0;
    // Rounds to (3, 1) for the test, reads (2, 1).
    v.layer()->GetPixel(QPointF(2.9, 1.2), &r, &g, &b);
    QColor expected(picture.pixel(2, 1));
    QCOMPARE(r, double(expected.red()));
    QCOMPARE(g, double(expected.green()));
    QCOMPARE(b, double(expected.blue()));
    // Rounds to (2, 2), reads (2, 1).
    v.layer()->GetPixel(QPointF(2.4, 1.6), &r, &g, &b);
    QCOMPARE(r, double(expected.red()));
    QCOMPARE(g, double(expected.green()));
    QCOMPARE(b, double(expected.blue()));
}

void tst_ImageLayer::getPixelAtPictureBorders_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPoint>("readPixel"); // (-1, -1): outside, grey

    QTest::newRow("x = width - 0.4 rounds to width") << QPointF(10 - 0.4, 2.0) << QPoint(-1, -1);
    QTest::newRow("x = -0.4 reads column 0") << QPointF(-0.4, 2.0) << QPoint(0, 2);
    QTest::newRow("x = width - 0.6 reads last column") << QPointF(10 - 0.6, 2.0) << QPoint(9, 2);
    QTest::newRow("x = -0.6 rounds to -1") << QPointF(-0.6, 2.0) << QPoint(-1, -1);
    QTest::newRow("y = height - 0.4 rounds to height") << QPointF(3.0, 6 - 0.4) << QPoint(-1, -1);
    QTest::newRow("y = -0.4 reads row 0") << QPointF(3.0, -0.4) << QPoint(3, 0);
    QTest::newRow("far outside") << QPointF(-500.0, 900.0) << QPoint(-1, -1);
    QTest::newRow("origin") << QPointF(0.0, 0.0) << QPoint(0, 0);
}

void tst_ImageLayer::getPixelAtPictureBorders()
{
    QFETCH(QPointF, point);
    QFETCH(QPoint, readPixel);
    StandaloneView v;
    const QImage picture = colourPicture(10, 6);
    QImage copy = picture;
    QVERIFY(v.layer()->LoadVorImage(copy));
    v.layer()->Update(true);

    double r = -1, g = -1, b = -1;
    v.layer()->GetPixel(point, &r, &g, &b);
    if (readPixel.x() < 0) {
        QCOMPARE(r, 153.0);
        QCOMPARE(g, 153.0);
        QCOMPARE(b, 153.0);
    } else {
        const QColor expected(picture.pixel(readPixel));
        QCOMPARE(r, double(expected.red()));
        QCOMPARE(g, double(expected.green()));
        QCOMPARE(b, double(expected.blue()));
    }
}

void tst_ImageLayer::getPixelOfIndexedPictureReadsColourTable()
{
    StandaloneView v;
    QImage picture = indexedPicture(5, 4, 40);
    QVERIFY(v.layer()->LoadVorImage(picture));
    v.layer()->Update(true);
    QCOMPARE(v.layer()->GetQImage()->format(), QImage::Format_Indexed8);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            const QColor expected(picture.color(picture.pixelIndex(x, y)));
            QVERIFY(expected.red() != picture.pixelIndex(x, y) || expected.green() != picture.pixelIndex(x, y));
            double r = 0, g = 0, b = 0;
            v.layer()->GetPixel(QPointF(x + 0.25, y + 0.25), &r, &g, &b);
            QCOMPARE(r, double(expected.red()));
            QCOMPARE(g, double(expected.green()));
            QCOMPARE(b, double(expected.blue()));
        }
    }
}

void tst_ImageLayer::getPixelWithoutPictureIsBackgroundGrey()
{
    StandaloneView v;
    double r = 0, g = 0, b = 0;
    v.layer()->GetPixel(QPointF(0.0, 0.0), &r, &g, &b);
    QCOMPARE(r, 153.0);
    QCOMPARE(g, 153.0);
    QCOMPARE(b, 153.0);
}

void tst_ImageLayer::clearLeavesOnePixelInUnchangedScene()
{
    StandaloneView v;
    VorImage grey = greyVorImage(200, 100, 1);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    v.layer()->Update(true);
    const double scale = v.scene()->getScale();
    const QMatrix matrix = v.view->matrix();
    QImage waiting = colourPicture(10, 10);
    QVERIFY(v.layer()->LoadVorImage(waiting));

    v.layer()->ClearVorImage();
    QVERIFY(!v.layer()->GetVorImage());
    QCOMPARE(v.layer()->GetQImage()->size(), QSize(1, 1));
    QCOMPARE(v.layer()->GetQImage()->format(), QImage::Format_ARGB32);
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 200, 100));
    QCOMPARE(v.view->sceneRect(), QRectF(0, 0, 200, 100));
    QCOMPARE(v.view->matrix(), matrix);
    QCOMPARE(v.scene()->getScale(), scale);
    QCOMPARE(v.layer()->pendingCount(), 1);
}

void tst_ImageLayer::clearRepaintsWithoutOldPicture()
{
    StandaloneView v;
    VorImage grey = greyVorImage(200, 100, 1);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    v.layer()->Update(true);
    QImage before = grabViewport(v.view);
    QCOMPARE(paintedAt(before, v.view, QPointF(100.5, 50.5)), qRgb((100 * 29 + 50 * 41 + 1) % 256,
                                                                     (100 * 29 + 50 * 41 + 1) % 256,
                                                                     (100 * 29 + 50 * 41 + 1) % 256));

    QSignalSpy changed(v.scene(), &QGraphicsScene::changed);
    v.layer()->ClearVorImage();
    // show(): the whole scene is scheduled for a repaint.
    QTRY_VERIFY(changed.count() > 0);
    const QImage after = grabViewport(v.view);
    QCOMPARE(paintedAt(after, v.view, QPointF(100.5, 50.5)), kGrey);
    QCOMPARE(paintedAt(after, v.view, QPointF(199.5, 99.5)), kGrey);
    QCOMPARE(paintedAt(after, v.view, QPointF(1.5, 0.5)), kGrey);
}

void tst_ImageLayer::sixteenBitValuesShowScaledDown()
{
    EmbeddedWindow w;
    cv::Mat mat(1, 4, CV_16UC1);
    mat.at<ushort>(0, 0) = 65535;
    mat.at<ushort>(0, 1) = 65534;
    mat.at<ushort>(0, 2) = 128;
    mat.at<ushort>(0, 3) = 257;
    VorImage image(mat);
    QCOMPARE(w.wnd->setBackground(image), 0L);
    ImageLayer* layer = w.scene()->GetImageLayer();
    const int expected[] = {255, 254, 0, 1};
    const QImage grab = grabViewport(w.view());
    for (int x = 0; x < 4; ++x) {
        double r = 0, g = 0, b = 0;
        layer->GetPixel(QPointF(x, 0), &r, &g, &b);
        QCOMPARE(r, double(expected[x]));
        QCOMPARE(b, double(expected[x]));
        QCOMPARE(rgbText(paintedAt(grab, w.view(), QPointF(x + 0.5, 0.5))),
                 rgbText(qRgb(expected[x], expected[x], expected[x])));
    }
}

void tst_ImageLayer::paddedEightBitRowsShowSheared()
{
    // A 5 by 4 window into rows of 8 bytes: the step is 8, the width 5.
    cv::Mat parent(4, 8, CV_8UC1);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 8; ++x)
            parent.at<uchar>(y, x) = uchar(y * 60 + x * 7);
    cv::Mat roi = parent(cv::Rect(0, 0, 5, 4));
    QCOMPARE(int(roi.step), 8);
    VorImage image(roi);

    EmbeddedWindow w;
    QCOMPARE(w.wnd->setBackground(image), 0L);
    const QImage grab = grabViewport(w.view());
    // Row y is read from byte 5 * y of the packed sequence, which wraps into
    // the padding of the rows above.
    const uchar* data = parent.data;
    bool differsFromStraight = false;
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            const int i = 5 * y + x;
            const int shown = data[(i / 8) * 8 + i % 8];
            const QRgb painted = paintedAt(grab, w.view(), QPointF(x + 0.5, y + 0.5));
            QCOMPARE(rgbText(painted), rgbText(qRgb(shown, shown, shown)));
            if (shown != parent.at<uchar>(y, x))
                differsFromStraight = true;
        }
    }
    QVERIFY(differsFromStraight);
    // Row 1 starts with the padding of row 0.
    QCOMPARE(qRed(paintedAt(grab, w.view(), QPointF(0.5, 1.5))), int(parent.at<uchar>(0, 5)));
}

void tst_ImageLayer::paddedSixteenBitRowsShowStraight()
{
    cv::Mat parent(4, 8, CV_16UC1);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 8; ++x)
            parent.at<ushort>(y, x) = ushort((y * 60 + x * 7) * 257);
    cv::Mat roi = parent(cv::Rect(0, 0, 5, 4));
    VorImage image(roi);

    EmbeddedWindow w;
    QCOMPARE(w.wnd->setBackground(image), 0L);
    const QImage grab = grabViewport(w.view());
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            const int v = y * 60 + x * 7;
            const QRgb painted = paintedAt(grab, w.view(), QPointF(x + 0.5, y + 0.5));
            QCOMPARE(rgbText(painted), rgbText(qRgb(v, v, v)));
        }
    }
}

void tst_ImageLayer::paintsPictureAtSceneCoordinates()
{
    EmbeddedWindow w;
    const QImage picture = colourPicture(8, 6);
    QCOMPARE(w.setPicture(picture), 0L);
    const QImage grab = grabViewport(w.view());
    QCOMPARE(grab.size(), w.view()->viewport()->size());
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 8; ++x)
            QCOMPARE(rgbText(paintedAt(grab, w.view(), QPointF(x + 0.5, y + 0.5))), rgbText(picture.pixel(x, y)));
    // The picture is fitted by height: grey margins left and right of it.
    const QPoint left = w.view()->mapFromScene(QPointF(-0.5, 3.0));
    const QPoint right = w.view()->mapFromScene(QPointF(8.5, 3.0));
    QVERIFY(left.x() >= 0);
    QVERIFY(right.x() < grab.width());
    QCOMPARE(rgbText(grab.pixel(left) | 0xFF000000u), rgbText(kGrey));
    QCOMPARE(rgbText(grab.pixel(right) | 0xFF000000u), rgbText(kGrey));
}

void tst_ImageLayer::magnifiedPixelsStaySharpAtScaleEight()
{
    StandaloneView v(QSize(400, 300));
    QVERIFY(!(v.view->renderHints() & QPainter::SmoothPixmapTransform));
    const QImage picture = colourPicture(16, 12);
    QImage copy = picture;
    v.layer()->SetZoomModel(VOR_ZOOM_ORG);
    QVERIFY(v.layer()->LoadVorImage(copy));
    v.layer()->Update(true);
    QCOMPARE(v.view->Zoom(8.0), 0L);
    QCOMPARE(v.scene()->getScale(), 8.0);
    const QImage grab = grabViewport(v.view);

    int squares = 0;
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 16; ++x) {
            const QPoint corner = v.view->mapFromScene(QPointF(x, y));
            if (!grab.rect().contains(QRect(corner, QSize(8, 8))))
                continue;
            ++squares;
            const QString expected = rgbText(picture.pixel(x, y));
            for (int dy = 0; dy < 8; ++dy)
                for (int dx = 0; dx < 8; ++dx)
                    QCOMPARE(rgbText(grab.pixel(corner + QPoint(dx, dy)) | 0xFF000000u), expected);
        }
    }
    QCOMPARE(squares, 16 * 12);
}

void tst_ImageLayer::indexedPicturePaintsItsColourTable()
{
    StandaloneView v;
    const QImage picture = indexedPicture(9, 7, 5);
    QImage copy = picture;
    QVERIFY(v.layer()->LoadVorImage(copy));
    v.layer()->Update(true);
    const QImage grab = grabViewport(v.view);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x)
            QCOMPARE(rgbText(paintedAt(grab, v.view, QPointF(x + 0.5, y + 0.5))),
                     rgbText(picture.color(picture.pixelIndex(x, y))));
    // Readers keep seeing the picture in its own format.
    QCOMPARE(v.layer()->GetQImage()->format(), QImage::Format_Indexed8);
    QCOMPARE(v.layer()->GetQImage()->pixelIndex(4, 3), picture.pixelIndex(4, 3));
}

void tst_ImageLayer::paintedIndexedPictureFollowsNewPicture()
{
    StandaloneView v;
    QImage first = indexedPicture(9, 7, 5);
    QVERIFY(v.layer()->LoadVorImage(first));
    v.layer()->Update(true);
    QImage grab = grabViewport(v.view);
    QCOMPARE(rgbText(paintedAt(grab, v.view, QPointF(2.5, 3.5))), rgbText(first.color(first.pixelIndex(2, 3))));

    // Same size, same indices, another colour table; then other indices.
    QImage second = first.copy();
    for (int i = 0; i < 256; ++i)
        second.setColor(i, qRgb(255 - i, i, 128));
    QVERIFY(v.layer()->LoadVorImage(second));
    v.layer()->Update(true);
    grab = grabViewport(v.view);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x)
            QCOMPARE(rgbText(paintedAt(grab, v.view, QPointF(x + 0.5, y + 0.5))),
                     rgbText(second.color(second.pixelIndex(x, y))));

    QImage third = indexedPicture(9, 7, 77);
    QVERIFY(v.layer()->LoadVorImage(third));
    v.layer()->Update(true);
    grab = grabViewport(v.view);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x)
            QCOMPARE(rgbText(paintedAt(grab, v.view, QPointF(x + 0.5, y + 0.5))),
                     rgbText(third.color(third.pixelIndex(x, y))));
}

void tst_ImageLayer::paintedGreyVorImageFollowsNewPicture()
{
    EmbeddedWindow w;
    for (int seed : {0, 100, 200}) {
        VorImage grey = greyVorImage(6, 4, seed);
        QCOMPARE(w.wnd->setBackground(grey), 0L);
        const QImage grab = grabViewport(w.view());
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 6; ++x) {
                const int v = (x * 29 + y * 41 + seed) % 256;
                QCOMPARE(rgbText(paintedAt(grab, w.view(), QPointF(x + 0.5, y + 0.5))), rgbText(qRgb(v, v, v)));
            }
        }
    }
}

void tst_ImageLayer::nothingButGreyBeforeFirstPicture()
{
    EmbeddedWindow w;
    QVERIFY(isOnlyGrey(grabViewport(w.view())));
    // A picture waiting in the queue is not painted either.
    QImage picture = colourPicture(50, 50);
    QVERIFY(w.scene()->GetImageLayer()->LoadVorImage(picture));
    QVERIFY(isOnlyGrey(grabViewport(w.view())));
}

void tst_ImageLayer::refreshLayersTakesWaitingPicture()
{
    StandaloneView v;
    QCOMPARE(v.view->RefreshLayers(), 0L);
    QVERIFY(v.layer()->GetQImage()->isNull());
    QImage picture = colourPicture(12, 8);
    QVERIFY(v.layer()->LoadVorImage(picture));
    QCOMPARE(v.view->RefreshLayers(), 0L);
    QCOMPARE(*v.layer()->GetQImage(), picture);
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 12, 8));
    QCOMPARE(v.layer()->pendingCount(), 0);
    const QImage grab = grabViewport(v.view);
    QCOMPARE(rgbText(paintedAt(grab, v.view, QPointF(11.5, 7.5))), rgbText(picture.pixel(11, 7)));
}

void tst_ImageLayer::refusedDisplayLeavesPictureOnShow()
{
    StandaloneView v;
    VorImage grey = greyVorImage(30, 20, 4);
    QCOMPARE(v.view->DisplayImage(&grey), 0L);
    QCOMPARE(v.view->imageRect(), QRect(0, 0, 30, 20));
    const double scale = v.scene()->getScale();

    QImage null;
    QCOMPARE(v.view->DisplayImage(null), -1L);
    VorImage empty;
    QCOMPARE(v.view->DisplayImage(&empty), -1L);
    QCOMPARE(v.view->imageRect(), QRect(0, 0, 30, 20));
    QCOMPARE(v.layer()->GetQImage()->size(), QSize(30, 20));
    QCOMPARE(v.scene()->sceneRect(), QRectF(0, 0, 30, 20));
    QCOMPARE(v.scene()->getScale(), scale);
    const QImage grab = grabViewport(v.view);
    const int value = (29 * 29 + 19 * 41 + 4) % 256;
    QCOMPARE(rgbText(paintedAt(grab, v.view, QPointF(29.5, 19.5))), rgbText(qRgb(value, value, value)));

    // Through the facade a picture below 1 by 1 is refused before it reaches
    // the view.
    EmbeddedWindow w;
    QImage picture = colourPicture(5, 5);
    QCOMPARE(w.wnd->setBackground(picture), 0L);
    QImage none(0, 0, QImage::Format_RGB32);
    QCOMPARE(w.wnd->setBackground(none), -1L);
    QCOMPARE(*w.scene()->GetImageLayer()->GetQImage(), picture);
}

void tst_ImageLayer::resizeRefitsVorImageBackground()
{
    EmbeddedWindow w;
    QCOMPARE(w.showPicture(greyVorImage(100, 100, 1), 3.0), 0L);
    QCOMPARE(w.scene()->getScale(), 3.0);
    // The view gets 500 by 340 (less tool bar and status bar).
    QCOMPARE(w.wnd->move(0, 0, 500, 410), 0L);
    QApplication::processEvents();
    QCOMPARE(w.view()->size(), QSize(500, 340));
    // (500 - 19) / 100 and (340 - 19) / 100: the height ratio, here in the
    // fit model recomputed in double precision by the update.
    QVERIFY(w.scene()->getScale() == 321.0 / 100.0);
    QVERIFY(matrixScale(w.view()) == 321.0 / 100.0);
}

void tst_ImageLayer::resizeKeepsScaleOfQImageBackground()
{
    EmbeddedWindow w;
    QCOMPARE(w.showPicture(colourPicture(100, 100), 3.0), 0L);
    QCOMPARE(w.wnd->move(0, 0, 500, 410), 0L);
    QApplication::processEvents();
    QCOMPARE(w.view()->size(), QSize(500, 340));
    QCOMPARE(w.scene()->getScale(), 3.0);
    QCOMPARE(matrixScale(w.view()), 3.0);
    double vw = 0, vh = 0;
    w.scene()->getViewSize(vw, vh);
    QCOMPARE(vw, 481.0);
    QCOMPARE(vh, 321.0);
}

void tst_ImageLayer::qImageToKesImagePacksIndexedRows()
{
    StandaloneView v;
    QImage picture = indexedPicture(5, 3, 9);
    QVERIFY(picture.bytesPerLine() > 5);
    VorImage target;
    v.layer()->QImageToKesImage(picture, &target);
    QCOMPARE(target.Width(), 5);
    QCOMPARE(target.Height(), 3);
    QCOMPARE(target.Channels(), 1);
    QCOMPARE(target.BitDepth(), int(CV_8U));
    const cv::Mat& mat = target.Mat();
    QVERIFY(mat.isContinuous());
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            // The index itself; the colour table is ignored.
            QCOMPARE(int(mat.data[5 * y + x]), picture.pixelIndex(x, y));
}

void tst_ImageLayer::qImageToKesImageKeepsFourBytesOfThirtyTwoBitFormats_data()
{
    Kit::addFormatRows({QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied});
}

void tst_ImageLayer::qImageToKesImageKeepsFourBytesOfThirtyTwoBitFormats()
{
    QFETCH(int, format);
    StandaloneView v;
    QImage picture(3, 2, QImage::Format(format));
    for (int y = 0; y < 2; ++y) {
        uchar* line = picture.scanLine(y);
        for (int i = 0; i < 12; ++i)
            line[i] = uchar(10 * y + i + (i % 4 == 3 ? 200 : 0));
    }
    VorImage target;
    v.layer()->QImageToKesImage(picture, &target);
    QCOMPARE(target.Width(), 3);
    QCOMPARE(target.Height(), 2);
    QCOMPARE(target.Channels(), 4);
    const cv::Mat& mat = target.Mat();
    QCOMPARE(mat.type(), CV_8UC4);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            for (int c = 0; c < 4; ++c)
                QCOMPARE(int(mat.at<cv::Vec4b>(y, x)[c]), int(picture.constScanLine(y)[4 * x + c]));
    // The copy is independent of the picture.
    QVERIFY(mat.data != picture.constBits());
}

void tst_ImageLayer::qImageToKesImageLeavesOtherFormatsEmpty_data()
{
    Kit::addFormatRows({QImage::Format_RGB888, QImage::Format_Grayscale8, QImage::Format_RGB16});
}

void tst_ImageLayer::qImageToKesImageLeavesOtherFormatsEmpty()
{
    QFETCH(int, format);
    StandaloneView v;
    QImage picture(4, 4, QImage::Format(format));
    picture.fill(Qt::white);
    VorImage target = greyVorImage(6, 6, 1);
    v.layer()->QImageToKesImage(picture, &target);
    QCOMPARE(target.Width(), 0);
    QCOMPARE(target.Height(), 0);
    QCOMPARE(target.Channels(), 0);
}

QTEST_MAIN(tst_ImageLayer)
#include "tst_imagelayer.moc"

void tst_ImageLayer::indexedPictureWithSeeThroughEntriesShowsTheGreyBeneath()
{
    EmbeddedWindow w;
    // Left half index 0 (see-through), right half index 1 (opaque red).
    QImage picture(40, 30, QImage::Format_Indexed8);
    picture.setColorTable({qRgba(200, 200, 200, 0), qRgba(255, 0, 0, 255)});
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            picture.setPixel(x, y, x < 20 ? 0 : 1);
    QCOMPARE(w.wnd->setBackground(picture), 0L);
    const QImage grab = grabViewport(w.view());
    QCOMPARE(paintedAt(grab, w.view(), QPointF(5.5, 15.5)), qRgb(153, 153, 153));
    QCOMPARE(paintedAt(grab, w.view(), QPointF(35.5, 15.5)), qRgb(255, 0, 0));
    // Readers still see the indexed picture.
    QCOMPARE(w.scene()->GetImageLayer()->GetQImage()->format(), QImage::Format_Indexed8);
}
