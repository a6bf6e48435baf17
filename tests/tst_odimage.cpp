#include "odimage.h"
#include "odrect1.h"

#include "testkit.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPixmap>
#include <QtTest>

#include <opencv2/core.hpp>

#include <cmath>
#include <limits>
#include <memory>

using namespace Kit;

namespace {

// The picture a fresh shape shows: one transparent pixel.
constexpr QRgb kNoPicture = 0x00000000;

// A grey picture whose pixels hold distinct values: x + 10 * y.
VorImage greyRamp(int width, int height)
{
    cv::Mat mat(height, width, CV_8UC1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            mat.at<uchar>(y, x) = uchar(x + 10 * y);
    return VorImage(mat);
}

// A three-channel picture of one colour a row, given as red, green, blue and
// laid out in memory as the host's OpenCV pictures are: blue, green, red.
VorImage colourRows(const QVector<QRgb>& rows, int width)
{
    cv::Mat mat(rows.size(), width, CV_8UC3);
    for (int y = 0; y < rows.size(); ++y)
        for (int x = 0; x < width; ++x)
            mat.at<cv::Vec3b>(y, x) = cv::Vec3b(uchar(qBlue(rows[y])), uchar(qGreen(rows[y])), uchar(qRed(rows[y])));
    return VorImage(mat);
}

QImage shownPixels(const ODImage& shape)
{
    return shape.pixmapItem()->pixmap().toImage().convertToFormat(QImage::Format_ARGB32);
}

// Every pixel of the image is colour.
bool allPixels(const QImage& image, QRgb colour)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != colour)
                return false;
    return !image.isNull();
}

Params paramsOf(const ODImage& shape)
{
    double l = -1, t = -1, r = -1, b = -1;
    if (!shape.GetParam(&l, &t, &r, &b))
        return {};
    return {l, t, r, b};
}

} // namespace

class tst_ODImage : public QObject
{
    Q_OBJECT

private slots:
    void freshShapeShowsOneTransparentPixelAndHasNoHandleItem();
    void pointConstructorMakesZeroSizeRectangleWithHandles();
    void setRectReplacesTheReferenceAndGetParamReadsIt();
    void greyPictureBecomesIndexedWithAGreyRamp();
    void greyPictureRowsAreReadAtTheWidthNotTheStep();
    void colourPictureLiesOneRowLowWithItsFirstRowTwice();
    void unsupportedPictureKeepsTheOnePixel_data();
    void unsupportedPictureKeepsTheOnePixel();
    void unsupportedPictureAfterAGoodOneKeepsTheGoodOne();
    void showShapeScalesThePictureIntoTheNormalisedRectangle();
    void showShapeLeavesTheCurrentRectangleUnnormalised();
    void rectangleNarrowerThanOneGivesANullPixmap_data();
    void rectangleNarrowerThanOneGivesANullPixmap();
    void resizingRescalesFromThePictureEachTime();
    void hideShapeKeepsThePictureForTheNextShow();
    void bodyHitTestIsThePixmapsSceneRectangle();
    void threeEdgeMiddlesStandOnWholePixels();
    void geometryFollowsTheRectangleStepByStep_data();
    void geometryFollowsTheRectangleStepByStep();
    void crossingDragKeepsTheFarCornerUntilTheRelease();
    void handleCursorsAreTheRectangles_data();
    void handleCursorsAreTheRectangles();
    void handlesAndZValueWorkWithoutAHandleItem();
    void penBrushAndLineWidthChangeNoPixel();
    void pictureIsPaintedScaledIntoItsRectangle_data();
    void pictureIsPaintedScaledIntoItsRectangle();
    void badCoordinatesGiveAnEmptyPixmap_data();
    void badCoordinatesGiveAnEmptyPixmap();
};

void tst_ODImage::freshShapeShowsOneTransparentPixelAndHasNoHandleItem()
{
    QGraphicsScene scene;
    const long firstId = ODShape::s_ID;
    ODImage shape(&scene);
    QCOMPARE(shape.GetShapeID(), firstId);
    QCOMPARE(shape.GetDrawMode(), DM_RECT1);
    QCOMPARE(shape.handleItem(), nullptr);
    QCOMPARE(shape.image(), nullptr);
    QCOMPARE(shape.picture().size(), QSize(1, 1));
    QCOMPARE(shape.picture().format(), QImage::Format_ARGB32);
    QCOMPARE(shape.picture().pixel(0, 0), kNoPicture);
    // One item in the scene, the pixmap item.
    QCOMPARE(scene.items().size(), 1);
    QCOMPARE(scene.items().first(), static_cast<QGraphicsItem*>(shape.pixmapItem()));
    QVERIFY(shape.orgData().isEmpty());
}

void tst_ODImage::pointConstructorMakesZeroSizeRectangleWithHandles()
{
    QGraphicsScene scene;
    ODImage shape(&scene, QPointF(30.5, 40.25));
    QCOMPARE(shape.currentRect(), QRectF(QPointF(30.5, 40.25), QSizeF(0, 0)));
    QCOMPARE(shape.handles().size(), 8);
    QVERIFY(shape.orgData().isEmpty());
    double preset = -7.5;
    QVERIFY(!shape.GetParam(&preset, &preset, &preset, &preset));
    QCOMPARE(preset, -7.5);
    // The first drag fills the reference.
    shape.MoveHandleTo(5, QPointF(60, 70));
    QCOMPARE(paramsOf(shape), Params({30.5, 40.25, 60, 70}));
}

void tst_ODImage::setRectReplacesTheReferenceAndGetParamReadsIt()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.SetRect(10.5f, 20.25f, 110.75f, 80.0f);
    QCOMPARE(shape.orgData(), QVector<double>({10.5, 20.25, 110.75, 80.0}));
    QCOMPARE(paramsOf(shape), Params({10.5, 20.25, 110.75, 80.0}));
    // Single precision on the way in.
    shape.SetRect(0.1f, 0, 1, 1);
    QCOMPARE(shape.orgData().first(), double(0.1f));
    // Null outputs are skipped.
    double right = 0;
    QVERIFY(shape.GetParam(nullptr, nullptr, &right, nullptr));
    QCOMPARE(right, 1.0);
}

void tst_ODImage::greyPictureBecomesIndexedWithAGreyRamp()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(5, 3);
    shape.setImage(&picture);
    QCOMPARE(shape.image(), &picture);
    const QImage& converted = shape.picture();
    QCOMPARE(converted.format(), QImage::Format_Indexed8);
    QCOMPARE(converted.size(), QSize(5, 3));
    QCOMPARE(converted.colorCount(), 256);
    for (int i = 0; i < 256; ++i)
        QCOMPARE(converted.color(i), qRgb(i, i, i));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            QCOMPARE(converted.pixelIndex(x, y), x + 10 * y);
}

void tst_ODImage::greyPictureRowsAreReadAtTheWidthNotTheStep()
{
    // A picture cut out of a wider one: its rows lie 8 bytes apart, but the
    // conversion reads them 3 bytes apart, from the first pixel on.
    cv::Mat wide(4, 8, CV_8UC1);
    for (int i = 0; i < 32; ++i)
        wide.data[i] = uchar(i);
    VorImage picture(wide(cv::Rect(0, 0, 3, 4)));
    QCOMPARE(picture.Step(), 8);
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.setImage(&picture);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 3; ++x)
            QCOMPARE(shape.picture().pixelIndex(x, y), 3 * y + x);
}

void tst_ODImage::colourPictureLiesOneRowLowWithItsFirstRowTwice()
{
    const QRgb red = qRgb(200, 10, 20);
    const QRgb green = qRgb(30, 180, 40);
    const QRgb blue = qRgb(5, 60, 220);
    VorImage picture = colourRows({red, green, blue}, 4);
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.setImage(&picture);
    const QImage& converted = shape.picture();
    QCOMPARE(converted.format(), QImage::Format_RGB32);
    QCOMPARE(converted.size(), QSize(4, 3));
    // Bytes go across unswapped: the host's blue, green, red is Qt's too.
    const QVector<QRgb> expectedRows = {red, red, green};
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            QCOMPARE(converted.pixel(x, y), expectedRows[y]);
}

void tst_ODImage::unsupportedPictureKeepsTheOnePixel_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("16-bit grey") << CV_16UC1;
    QTest::newRow("two channels") << CV_8UC2;
    QTest::newRow("four channels") << CV_8UC4;
    QTest::newRow("16-bit colour") << CV_16UC3;
    QTest::newRow("float grey") << CV_32FC1;
}

void tst_ODImage::unsupportedPictureKeepsTheOnePixel()
{
    QFETCH(int, type);
    VorImage picture(cv::Mat(6, 9, type, cv::Scalar(99, 99, 99, 99)));
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.setImage(&picture);
    QCOMPARE(shape.image(), &picture);
    QCOMPARE(shape.picture().size(), QSize(1, 1));
    QCOMPARE(shape.picture().format(), QImage::Format_ARGB32);

    // The rectangle shows that single pixel, stretched over all of it.
    shape.SetRect(10, 20, 50, 45);
    shape.ShowShape();
    const QImage shown = shownPixels(shape);
    QCOMPARE(shown.size(), QSize(40, 25));
    QVERIFY(allPixels(shown, kNoPicture));
}

void tst_ODImage::unsupportedPictureAfterAGoodOneKeepsTheGoodOne()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage good = greyRamp(4, 2);
    shape.setImage(&good);
    VorImage deep(cv::Mat(3, 3, CV_16UC1, cv::Scalar(1000)));
    shape.setImage(&deep);
    QCOMPARE(shape.image(), &deep);
    QCOMPARE(shape.picture().format(), QImage::Format_Indexed8);
    QCOMPARE(shape.picture().size(), QSize(4, 2));
    // An empty picture and none at all change nothing either.
    VorImage empty;
    shape.setImage(&empty);
    shape.setImage(nullptr);
    QCOMPARE(shape.image(), nullptr);
    QCOMPARE(shape.picture().size(), QSize(4, 2));
    QCOMPARE(shape.picture().pixelIndex(3, 1), 13);
}

void tst_ODImage::showShapeScalesThePictureIntoTheNormalisedRectangle()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(2, 2);
    shape.setImage(&picture);
    // Given right to left and bottom to top, with fractions.
    shape.SetRect(70.75f, 60.5f, 30.25f, 20.0f);
    shape.ShowShape();
    QVERIFY(shape.pixmapItem()->isVisible());
    QCOMPARE(shape.pixmapItem()->pos(), QPointF(30.25, 20.0));
    // Whole pixels of the normalised size, truncated: 40.5 by 40.5.
    const QImage shown = shownPixels(shape);
    QCOMPARE(shown.size(), QSize(40, 40));
    // Nearest-neighbour scaling: each source pixel fills a quarter.
    QCOMPARE(shown.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(shown.pixel(39, 0), qRgb(1, 1, 1));
    QCOMPARE(shown.pixel(0, 39), qRgb(10, 10, 10));
    QCOMPARE(shown.pixel(39, 39), qRgb(11, 11, 11));
    QCOMPARE(shown, QPixmap::fromImage(shape.picture())
                        .scaled(40, 40, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                        .toImage()
                        .convertToFormat(QImage::Format_ARGB32));
}

void tst_ODImage::showShapeLeavesTheCurrentRectangleUnnormalised()
{
    QGraphicsScene scene;
    ODImage image(&scene);
    ODRect1 rect(&scene);
    image.SetRect(70, 60, 30, 20);
    rect.SetRect(70, 60, 30, 20);
    image.ShowShape();
    rect.ShowShape();
    // The rectangle shape normalises its current geometry; the image shape
    // normalises only what it shows.
    QCOMPARE(rect.currentRect(), QRectF(QPointF(30, 20), QPointF(70, 60)));
    QCOMPARE(image.currentRect(), QRectF(QPointF(70, 60), QPointF(30, 20)));
    QCOMPARE(image.orgData(), QVector<double>({70, 60, 30, 20}));
}

void tst_ODImage::rectangleNarrowerThanOneGivesANullPixmap_data()
{
    QTest::addColumn<QRectF>("sides");
    QTest::newRow("0.9 wide") << QRectF(QPointF(10, 10), QPointF(10.9, 50));
    QTest::newRow("0.5 high") << QRectF(QPointF(10, 10), QPointF(50, 10.5));
    QTest::newRow("zero size") << QRectF(QPointF(10, 10), QPointF(10, 10));
}

void tst_ODImage::rectangleNarrowerThanOneGivesANullPixmap()
{
    QFETCH(QRectF, sides);
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(4, 4);
    shape.setImage(&picture);
    shape.SetRect(float(sides.left()), float(sides.top()), float(sides.right()), float(sides.bottom()));
    shape.ShowShape();
    QVERIFY(shape.pixmapItem()->pixmap().isNull());
    // Its scene rectangle is empty: the body is found nowhere.
    QCOMPARE(shape.HitTest(sides.center(), false), 0);
}

void tst_ODImage::resizingRescalesFromThePictureEachTime()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(8, 8);
    shape.setImage(&picture);
    shape.SetRect(0, 0, 64, 64);
    shape.ShowShape();
    // Shrink to 2 by 2 by the bottom-right handle, then grow back.
    shape.MoveHandleTo(5, QPointF(2, 2));
    shape.ShowShape();
    QCOMPARE(shownPixels(shape).size(), QSize(2, 2));
    shape.MoveHandleTo(5, QPointF(64, 64));
    shape.ShowShape();
    const QImage regrown = shownPixels(shape);
    // Every one of the 64 grey values is back, as scaled from the picture.
    const QImage direct = QPixmap::fromImage(shape.picture())
                              .scaled(64, 64, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                              .toImage()
                              .convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(regrown, direct);
    QCOMPARE(regrown.pixel(63, 63), qRgb(77, 77, 77));
    QCOMPARE(regrown.pixel(8, 0), qRgb(1, 1, 1));
}

void tst_ODImage::hideShapeKeepsThePictureForTheNextShow()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(3, 3);
    shape.setImage(&picture);
    shape.SetRect(10, 10, 40, 40);
    shape.ShowShape();
    const QImage before = shownPixels(shape);
    shape.HideShape();
    QVERIFY(!shape.pixmapItem()->isVisible());
    QCOMPARE(shape.pixmapItem()->scene(), &scene);
    QCOMPARE(shownPixels(shape), before);
    shape.ShowShape();
    QVERIFY(shape.pixmapItem()->isVisible());
    QCOMPARE(shownPixels(shape), before);
}

void tst_ODImage::bodyHitTestIsThePixmapsSceneRectangle()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.SetRect(10, 20, 50, 45);
    // Before the first show the pixmap is the one pixel at the origin.
    QCOMPARE(shape.HitTest(QPointF(0.5, 0.5), false), 1);
    QCOMPARE(shape.HitTest(QPointF(30, 30), false), 0);
    shape.ShowShape();
    QCOMPARE(shape.pixmapItem()->sceneBoundingRect(), QRectF(10, 20, 40, 25));
    QCOMPARE(shape.HitTest(QPointF(30, 30), false), 1);
    QCOMPARE(shape.HitTest(QPointF(10, 20), false), 1);
    QCOMPARE(shape.HitTest(QPointF(49.9, 44.9), false), 1);
    QCOMPARE(shape.HitTest(QPointF(9.9, 30), false), 0);
    QCOMPARE(shape.HitTest(QPointF(30, 45.1), false), 0);
    QCOMPARE(shape.HitTest(QPointF(0.5, 0.5), false), 0);
    // A hidden picture is still hit: its item keeps its rectangle.
    shape.HideShape();
    QCOMPARE(shape.HitTest(QPointF(30, 30), false), 1);
}

void tst_ODImage::threeEdgeMiddlesStandOnWholePixels()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.SetRect(10.6f, 20.7f, 31.9f, 41.8f);
    shape.ShowShape();
    shape.UpdateHandles();
    const QRectF r(QPointF(double(10.6f), double(20.7f)), QPointF(double(31.9f), double(41.8f)));
    const QPointF c = r.center();
    const QVector<QPointF> expected = {r.topLeft(),
                                       QPointF(int(c.x()), int(r.top())),
                                       r.topRight(),
                                       QPointF(r.right(), c.y()),
                                       r.bottomRight(),
                                       QPointF(int(c.x()), int(r.bottom())),
                                       r.bottomLeft(),
                                       QPointF(int(r.left()), int(c.y()))};
    QCOMPARE(shape.handles().size(), 8);
    for (int key = 0; key < 8; ++key)
        QVERIFY2(near(shape.handles().value(key).center(), expected[key], 1e-9),
                 qPrintable(QString("key %1 at %2").arg(key).arg(text(shape.handles().value(key).center()))));
    QCOMPARE(shape.handles().value(1).center(), QPointF(21, 20));
    QCOMPARE(shape.handles().value(7).center(), QPointF(10, 31));
}

void tst_ODImage::geometryFollowsTheRectangleStepByStep_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("target");
    for (int number = 1; number <= 8; ++number)
        QTest::addRow("handle %d", number) << number << QPointF(13, 13);
    QTest::newRow("handle 1 across the far corner") << 1 << QPointF(12, 12);
    QTest::newRow("number 0 moves nothing") << 0 << QPointF(50, 50);
    QTest::newRow("number 9 moves nothing") << 9 << QPointF(50, 50);
    QTest::newRow("number -3 moves nothing") << -3 << QPointF(50, 50);
}

void tst_ODImage::geometryFollowsTheRectangleStepByStep()
{
    QFETCH(int, number);
    QFETCH(QPointF, target);
    QGraphicsScene scene;
    ODImage image(&scene);
    ODRect1 rect(&scene);
    image.SetRect(0, 0, 10, 10);
    rect.SetRect(0, 0, 10, 10);
    // Every step of the geometry alike, the current rectangle included; only
    // showing differs (see showShapeLeavesTheCurrentRectangleUnnormalised).
    auto both = [&](auto step) {
        step(static_cast<ODShape&>(image));
        step(static_cast<ODShape&>(rect));
        QCOMPARE(image.orgData(), rect.orgData());
        QCOMPARE(image.currentRect(), rect.currentRect());
    };
    both([](ODShape& s) { s.UpdateCurData(); });
    both([&](ODShape& s) { s.MoveHandleTo(number, target); });
    both([&](ODShape& s) { s.MoveHandleTo(number, target + QPointF(1, 1)); });
    both([](ODShape& s) { s.MoveShape(QPointF(2.5, -1.25)); });
    both([&](ODShape& s) { s.UpdateOrgData(number); });
    both([](ODShape& s) { s.AdjustParameter(); });
    // After the release the reference is normalised.
    const QVector<double> sides = image.orgData();
    QVERIFY(sides[0] <= sides[2] && sides[1] <= sides[3]);
}

void tst_ODImage::crossingDragKeepsTheFarCornerUntilTheRelease()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(2, 2);
    shape.setImage(&picture);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    shape.MoveHandleTo(1, QPointF(12, 12));
    QCOMPARE(paramsOf(shape), Params({12, 12, 10, 10}));
    shape.ShowShape();
    // Shown normalised, two by two at the far corner.
    QCOMPARE(shape.pixmapItem()->pos(), QPointF(10, 10));
    QCOMPARE(shape.pixmapItem()->pixmap().size(), QSize(2, 2));
    shape.MoveHandleTo(1, QPointF(13, 13));
    QCOMPARE(paramsOf(shape), Params({13, 13, 10, 10}));
    shape.AdjustParameter();
    QCOMPARE(paramsOf(shape), Params({10, 10, 13, 13}));
}

void tst_ODImage::handleCursorsAreTheRectangles_data()
{
    addBoxHandleCursorRows();
}

void tst_ODImage::handleCursorsAreTheRectangles()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODImage shape(&v.scene);
    shape.SetRect(0, 0, 100, 60);
    shape.ShowShape();
    shape.ShowHandle();
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);
    // With the handles hidden, every point gives the arrow.
    shape.HideHandle();
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), Qt::ArrowCursor);
}

void tst_ODImage::handlesAndZValueWorkWithoutAHandleItem()
{
    QGraphicsScene scene;
    ODImage shape(&scene);
    shape.SetRect(10, 10, 90, 50);
    shape.ShowShape();
    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.handles().size(), 8);
    QCOMPARE(shape.HitTest(QPointF(90, 50), true), 5);
    // Nothing is painted for them: the scene still holds the pixmap item alone.
    QCOMPARE(scene.items().size(), 1);
    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
    QCOMPARE(shape.HitTest(QPointF(90, 50), true), 5);
    shape.setZValue(3001);
    QCOMPARE(shape.pixmapItem()->zValue(), 3001.0);
    QCOMPARE(shape.handleItem(), nullptr);
}

void tst_ODImage::penBrushAndLineWidthChangeNoPixel()
{
    PictureWindow w;
    auto* shape = new ODImage(w.scene());
    VorImage picture = greyRamp(4, 4);
    shape->setImage(&picture);
    shape->SetRect(20, 20, 100, 100);
    w.active()->addShape(shape);
    shape->ShowShape();
    const QImage plain = w.grabViewport();
    shape->SetPenColor(Qt::red);
    shape->SetBrushColor(Qt::yellow);
    shape->SetLineWidth(7.0f);
    shape->ShowShape();
    shape->ShowHandle();
    QCOMPARE(w.grabViewport(), plain);
}

void tst_ODImage::pictureIsPaintedScaledIntoItsRectangle_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 2") << 2.0;
}

void tst_ODImage::pictureIsPaintedScaledIntoItsRectangle()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    // A two by two picture of four greys, put over a rectangle of 60 by 40.
    cv::Mat quarters(2, 2, CV_8UC1);
    quarters.at<uchar>(0, 0) = 10;
    quarters.at<uchar>(0, 1) = 100;
    quarters.at<uchar>(1, 0) = 180;
    quarters.at<uchar>(1, 1) = 250;
    VorImage picture(quarters);
    auto* shape = new ODImage(w.scene());
    shape->setImage(&picture);
    shape->SetRect(20, 30, 80, 70);
    w.active()->addShape(shape);
    shape->ShowShape();

    const QImage grab = w.grabViewport();
    auto at = [&](double x, double y) { return grab.pixel(w.view()->mapFromScene(QPointF(x, y))); };
    const QRgb grey = qRgb(PictureWindow::kGrey, PictureWindow::kGrey, PictureWindow::kGrey);
    // Each quarter of the rectangle in its grey, the picture's grey around it.
    KIT_COMPARE_COLOUR(at(25, 35), qRgb(10, 10, 10), kChannelTolerance);
    KIT_COMPARE_COLOUR(at(75, 35), qRgb(100, 100, 100), kChannelTolerance);
    KIT_COMPARE_COLOUR(at(25, 65), qRgb(180, 180, 180), kChannelTolerance);
    KIT_COMPARE_COLOUR(at(75, 65), qRgb(250, 250, 250), kChannelTolerance);
    KIT_COMPARE_COLOUR(at(49, 49), qRgb(10, 10, 10), kChannelTolerance);
    KIT_COMPARE_COLOUR(at(51, 51), qRgb(250, 250, 250), kChannelTolerance);
    KIT_COMPARE_COLOUR(at(19, 50), grey, kChannelTolerance);
    KIT_COMPARE_COLOUR(at(81, 50), grey, kChannelTolerance);
    KIT_COMPARE_COLOUR(at(50, 29), grey, kChannelTolerance);
    KIT_COMPARE_COLOUR(at(50, 71), grey, kChannelTolerance);
    // The painted extent is the rectangle's, in device pixels of this zoom.
    const QRect device = w.view()->mapFromScene(QRectF(20, 30, 60, 40)).boundingRect();
    const Blob dark = findColour(grab, device.adjusted(-4, -4, 4, 4), at(25, 35));
    QVERIFY(near(dark.bounds.width(), 30 * zoom, 1.0));
    QVERIFY(near(dark.bounds.height(), 20 * zoom, 1.0));
}

void tst_ODImage::badCoordinatesGiveAnEmptyPixmap_data()
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    QTest::addColumn<QVector<float>>("sides");
    QTest::newRow("NaN right") << QVector<float>{10, 10, nan, 40};
    QTest::newRow("NaN left") << QVector<float>{nan, 10, 40, 40};
    QTest::newRow("infinite right") << QVector<float>{10, 10, inf, 40};
    QTest::newRow("infinite top") << QVector<float>{10, -inf, 40, 40};
    QTest::newRow("too large to hold") << QVector<float>{0, 0, 1e6f, 1e6f};
}

void tst_ODImage::badCoordinatesGiveAnEmptyPixmap()
{
    QFETCH(QVector<float>, sides);
    QGraphicsScene scene;
    ODImage shape(&scene);
    VorImage picture = greyRamp(2, 2);
    shape.setImage(&picture);
    shape.SetRect(10, 10, 40, 40);
    shape.ShowShape();
    QCOMPARE(shape.HitTest(QPointF(20, 20), false), 1);

    shape.SetRect(sides[0], sides[1], sides[2], sides[3]);
    shape.ShowShape();
    QVERIFY(shape.pixmapItem()->pixmap().isNull());
    QCOMPARE(shape.HitTest(QPointF(20, 20), false), 0);
    // The reference keeps what was given.
    QCOMPARE(shape.orgData().size(), 4);
}

QTEST_MAIN(tst_ODImage)
#include "tst_odimage.moc"
