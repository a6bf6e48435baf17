// The facade's calls on the three layers as a host makes them: display,
// ids, clearing, removal and visibility on LAYER_IMAGE, LAYER_SHAPE and
// LAYER_FORE and on a value that is none of them; the window's own slots that
// reach every layer; and the worker's displayRunShapes.

#include <QtTest/QtTest>

#include "ForeGroundItem.h"
#include "ForeLayer.h"
#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "kitpictures.h"
#include "kitregions.h"
#include "kitshapedata.h"
#include "kitwindow.h"
#include "odshape.h"

#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"

#include <QThread>

#include <atomic>

using Kit::Params;

namespace {

constexpr QRgb kRed = 0xffff0000;
const KESImageWnd::Layer kNoLayer = static_cast<KESImageWnd::Layer>(3);

VorROI rectangle()
{
    return Kit::makeROI(VorROI::ROI_RECT1, Params{10.5, 10.5, 40.5, 30.5});
}

// One of each layer's shapes, as a host would make them.
struct ThreeLayers
{
    explicit ThreeLayers(KESImageWnd* wnd)
    {
        VorROI roi = rectangle();
        image = wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE);
        shape = wnd->displayROI(roi, KESImageWnd::LAYER_SHAPE);
        fore = wnd->displayROI(roi, KESImageWnd::LAYER_FORE);
    }
    long image = -1;
    long shape = -1;
    long fore = -1;
};

} // namespace

class TestFacadeLayers : public QObject
{
    Q_OBJECT

private slots:
    void displayOnEachLayerGivesItsId_data();
    void displayOnEachLayerGivesItsId();
    void layerValueOutsideTheEnumIsRefused();
    void imageAndForeLayersDoNotTestThePicture();
    void callsWithoutAWindowAnswerMinusOneOrNothing();
    void getShapeIDSListsEachLayersOwnIds();
    void readBackDoesNotFindImageOrForeIds();
    void removeShapeLooksOnEveryLayer();
    void removeShapeEndsTheSelectionWhateverLayerHoldsTheId();
    void removeShapeListLeavesEveryLayerAsItWas();
    void visibleShapeFallsBackToTheImageLayer();
    void visibleShapeOfAForeIdIsRefusedAndLeavesItVisible();
    void clearEmptiesShapeAndImageAndKeepsForeIdsListed();
    void clearLayerOfOneLayerLeavesTheOthers();
    void windowSlotsReachEveryLayer();
    void runShapesFromAWorkerShowAfterRepaint();
};

void TestFacadeLayers::displayOnEachLayerGivesItsId_data()
{
    QTest::addColumn<int>("layer");
    QTest::newRow("image") << int(KESImageWnd::LAYER_IMAGE);
    QTest::newRow("shape") << int(KESImageWnd::LAYER_SHAPE);
    QTest::newRow("fore") << int(KESImageWnd::LAYER_FORE);
}

void TestFacadeLayers::displayOnEachLayerGivesItsId()
{
    QFETCH(int, layer);
    Kit::PictureWindow w;
    const auto which = static_cast<KESImageWnd::Layer>(layer);
    VorROI roi = rectangle();
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_CIRCLE, Params{50, 50, 10});
    VorOverlayPath path;
    path.Append(Kit::makeOverlay(VorOverlay::OV_LINE, Params{0, 0, 9, 9}));
    path.Append(Kit::makeOverlay(VorOverlay::OV_POINT, Params{5, 5}));
    const long start = ODShape::s_ID;
    QCOMPARE(w.wnd->displayROI(roi, which), start);
    QCOMPARE(w.wnd->displayOverlay(overlay, which), start + 1);
    // The shape layer gives a path's first id, the other two its last.
    QCOMPARE(w.wnd->displayOverlayPath(path, which), which == KESImageWnd::LAYER_SHAPE ? start + 2 : start + 3);
    QCOMPARE(w.wnd->getShapeIDS(which), (QList<long>{start, start + 1, start + 2, start + 3}));
}

void TestFacadeLayers::layerValueOutsideTheEnumIsRefused()
{
    Kit::PictureWindow w;
    VorROI roi = rectangle();
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_CIRCLE, Params{50, 50, 10});
    VorOverlayPath path;
    path.Append(overlay);
    const long before = ODShape::s_ID;
    QCOMPARE(w.wnd->displayROI(roi, kNoLayer), -1L);
    QCOMPARE(w.wnd->displayOverlay(overlay, kNoLayer), -1L);
    QCOMPARE(w.wnd->displayOverlayPath(path, kNoLayer), -1L);
    QCOMPARE(ODShape::s_ID, before);
    QVERIFY(w.wnd->getShapeIDS(kNoLayer).isEmpty());
    ThreeLayers made(w.wnd.get());
    QCOMPARE(w.wnd->clearLayer(kNoLayer), 0L);
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE), (QList<long>{made.image}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), (QList<long>{made.shape}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{made.fore}));
}

void TestFacadeLayers::imageAndForeLayersDoNotTestThePicture()
{
    EmbeddedWindow w;
    QVERIFY(w.window()->isVorImg());
    VorROI roi = rectangle();
    QCOMPARE(w.wnd->displayROI(roi, KESImageWnd::LAYER_SHAPE), -1L);
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE) >= 0);
    QVERIFY(w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE) >= 0);
}

void TestFacadeLayers::callsWithoutAWindowAnswerMinusOneOrNothing()
{
    KESImageWnd wnd;
    VorROI roi = rectangle();
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_CIRCLE, Params{50, 50, 10});
    VorOverlayPath path;
    path.Append(overlay);
    for (KESImageWnd::Layer layer : {KESImageWnd::LAYER_IMAGE, KESImageWnd::LAYER_FORE}) {
        QCOMPARE(wnd.displayROI(roi, layer), -1L);
        QCOMPARE(wnd.displayOverlay(overlay, layer), -1L);
        QCOMPARE(wnd.displayOverlayPath(path, layer), -1L);
        QCOMPARE(wnd.clearLayer(layer), -1L);
        QVERIFY(wnd.getShapeIDS(layer).isEmpty());
    }
    VorImage picture = Kit::greyPicture(8, 8, 1);
    wnd.setRunBackground(picture);
    wnd.displayRunShapes(path);
    QCOMPARE(wnd.repaint(), -1L);
}

void TestFacadeLayers::getShapeIDSListsEachLayersOwnIds()
{
    Kit::PictureWindow w;
    ThreeLayers made(w.wnd.get());
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE), (QList<long>{made.image}));
    QCOMPARE(w.wnd->getShapeIDS(), (QList<long>{made.shape}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{made.fore}));
}

void TestFacadeLayers::readBackDoesNotFindImageOrForeIds()
{
    Kit::PictureWindow w;
    ThreeLayers made(w.wnd.get());
    VorROI roi;
    VorOverlay overlay;
    QCOMPARE(w.wnd->getROIShape(made.shape, &roi), 0L);
    for (long id : {made.image, made.fore}) {
        QCOMPARE(w.wnd->getROIShape(id, &roi), -1L);
        QCOMPARE(w.wnd->getOverlayShape(id, &overlay), -1L);
    }
}

void TestFacadeLayers::removeShapeLooksOnEveryLayer()
{
    Kit::PictureWindow w;
    ThreeLayers first(w.wnd.get());
    ThreeLayers second(w.wnd.get());
    QCOMPARE(w.wnd->removeShape(first.image), 0L);
    QCOMPARE(w.wnd->removeShape(first.fore), 0L);
    QCOMPARE(w.wnd->removeShape(first.shape), 0L);
    QCOMPARE(w.wnd->removeShape(987654321), 0L);
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE), (QList<long>{second.image}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), (QList<long>{second.shape}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{second.fore}));
}

void TestFacadeLayers::removeShapeEndsTheSelectionWhateverLayerHoldsTheId()
{
    Kit::PictureWindow w;
    ThreeLayers made(w.wnd.get());
    w.active()->ShowShapeHandle(made.shape);
    QVERIFY(!w.active()->selectedShapes().isEmpty());
    QCOMPARE(w.wnd->removeShape(made.fore), 0L);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QCOMPARE(w.wnd->getShapeIDS(), (QList<long>{made.shape}));
}

void TestFacadeLayers::removeShapeListLeavesEveryLayerAsItWas()
{
    Kit::PictureWindow w;
    ThreeLayers made(w.wnd.get());
    w.wnd->removeShapeList({made.image, made.shape, made.fore});
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE), (QList<long>{made.image}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), (QList<long>{made.shape}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{made.fore}));
}

void TestFacadeLayers::visibleShapeFallsBackToTheImageLayer()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = rectangle();
    const long image = w.wnd->displayROI(roi, KESImageWnd::LAYER_IMAGE);
    QCOMPARE(w.wnd->visibleShape(image, false), image);
    QVERIFY(!w.imageLayer()->backGroundItems().value(image).GetVisible());
    QCOMPARE(Kit::countColour(w.grabViewport(), kRed), 0);
    QCOMPARE(w.wnd->visibleShape(image), image);
    QVERIFY(Kit::countColour(w.grabViewport(), kRed) > 0);
    QCOMPARE(w.wnd->visibleShape(55555555, false), -1L);
}

void TestFacadeLayers::visibleShapeOfAForeIdIsRefusedAndLeavesItVisible()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    VorROI roi = rectangle();
    const long fore = w.wnd->displayROI(roi, KESImageWnd::LAYER_FORE);
    QCOMPARE(w.wnd->visibleShape(fore, false), -1L);
    QVERIFY(w.scene()->GetForeLayer()->items().value(fore)->GetVisible());
    QVERIFY(Kit::countColour(w.grabViewport(), kRed) > 0);
}

void TestFacadeLayers::clearEmptiesShapeAndImageAndKeepsForeIdsListed()
{
    Kit::PictureWindow w;
    w.scene()->setPenColor(QColor(kRed));
    ThreeLayers made(w.wnd.get());
    QVERIFY(Kit::countColour(w.grabViewport(), kRed) > 0);
    QCOMPARE(w.wnd->clear(), 0L);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE).isEmpty());
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE).isEmpty());
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{made.fore}));
    QCOMPARE(Kit::countColour(w.grabViewport(), kRed), 0);
}

void TestFacadeLayers::clearLayerOfOneLayerLeavesTheOthers()
{
    Kit::PictureWindow w;
    ThreeLayers made(w.wnd.get());
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_IMAGE), 0L);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE).isEmpty());
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), (QList<long>{made.shape}));
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_SHAPE), 0L);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE).isEmpty());
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{made.fore}));
}

void TestFacadeLayers::windowSlotsReachEveryLayer()
{
    Kit::PictureWindow w;
    ThreeLayers first(w.wnd.get());
    ThreeLayers second(w.wnd.get());
    CMainWindow* window = w.window();

    // Visibility: every layer is asked, the fore layer included.
    QVERIFY(QMetaObject::invokeMethod(window, "visibleShape", Q_ARG(qlonglong, first.fore), Q_ARG(bool, false)));
    QVERIFY(!w.scene()->GetForeLayer()->items().value(first.fore)->GetVisible());
    QVERIFY(QMetaObject::invokeMethod(window, "visibleShape", Q_ARG(qlonglong, first.image), Q_ARG(bool, false)));
    QVERIFY(!w.imageLayer()->backGroundItems().value(first.image).GetVisible());

    // A list is removed from every layer.
    QVERIFY(QMetaObject::invokeMethod(window, "removeShapeList",
                                      Q_ARG(QList<long>, (QList<long>{first.image, first.shape, first.fore}))));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE), (QList<long>{second.image}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), (QList<long>{second.shape}));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{second.fore}));

    QVERIFY(QMetaObject::invokeMethod(window, "removeShape", Q_ARG(qlonglong, second.image)));
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE).isEmpty());

    ThreeLayers third(w.wnd.get());
    QVERIFY(QMetaObject::invokeMethod(window, "clearLayer", Q_ARG(KESImageWnd::Layer, KESImageWnd::LAYER_FORE)));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_FORE), (QList<long>{second.fore, third.fore}));
    QVERIFY(QMetaObject::invokeMethod(window, "clear"));
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE).isEmpty());
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE).isEmpty());
}

void TestFacadeLayers::runShapesFromAWorkerShowAfterRepaint()
{
    Kit::PictureWindow w;
    VorOverlayPath path;
    VorOverlay rect = Kit::makeOverlay(VorOverlay::OV_RECT1, Params{10.5, 10.5, 60.5, 40.5});
    rect.SetPen(255, 0, 0, 1);
    path.Append(rect);
    path.Append(Kit::makeOverlay(VorOverlay::OV_POINT, Params{80, 80}));
    const long start = ODShape::s_ID;
    VorImage frame = Kit::greyPicture(200, 150, Kit::PictureWindow::kGrey);
    std::atomic<long> repainted{-1};
    QThread* worker = QThread::create([&] {
        w.wnd->setRunBackground(frame);
        w.wnd->displayRunShapes(path);
        repainted = w.wnd->repaint();
    });
    worker->start();
    QTRY_VERIFY(worker->isFinished());
    delete worker;
    QCOMPARE(repainted.load(), 0L);
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE), (QList<long>{start, start + 1}));
    // The new frame is fitted to the view, so the hairline falls between
    // viewport pixels and is smoothed: red by far, not pure.
    const QImage grab = w.grabViewport();
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(30.5, 10.5)), kRed, 40);
    KIT_COMPARE_COLOUR(Kit::grabbedAt(grab, w.view(), QPointF(30.5, 20.5)),
                       qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey), 1);
}

QTEST_MAIN(TestFacadeLayers)
#include "tst_facadelayers.moc"
