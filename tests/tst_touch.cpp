#include "kitshapedata.h"
#include "kittouch.h"
#include "testkit.h"

#include "KESImageWnd.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "VorROI.h"

#include <QtTest>

#include <QScrollArea>
#include <QSignalSpy>

// Touch on the window: a two-finger pinch on the viewport steps the zoom as
// the zoom buttons do, measured against the distance the fingers began at;
// a touch event sent to the scene drives the tools as a mouse of no button.
// The window sets no touch attribute itself: the viewport takes touch as Qt
// made it, and a host turns it on or off there.
class tst_Touch : public QObject
{
    Q_OBJECT

private slots:
    void theWindowSetsNoTouchAttributeOfItsOwn();
    void touchOnAViewportTheHostTurnedOffDoesNothing();

    void twoFingersPressedAndHeldDoNotZoom();
    void pinchStepsOncePerUpdateAgainstTheStartDistance_data();
    void pinchStepsOncePerUpdateAgainstTheStartDistance();
    void liftingTwoFingersStepsOnceMore_data();
    void liftingTwoFingersStepsOnceMore();
    void threeFingersNeverZoomAndAreConsumed();
    void pinchInAndOutIsSeenOnTheScreen();
    void pinchFromThePlatformZooms();
    void oneFingerOnTheViewportDoesNotDraw();

    void oneFingerSentToTheSceneDrawsARectangle_data();
    void oneFingerSentToTheSceneDrawsARectangle();
    void oneFingerSentToTheSceneMovesAShape();
    void stationaryPointReachesNoTool_data();
    void stationaryPointReachesNoTool();
    void everyFingerIsAStreamOfItsOwn();
};

namespace {


// Where the fingers of a pinch sit: level, about the viewport's middle, a
// distance apart in viewport pixels.
QList<QPointF> fingersApart(QGraphicsView* view, double distance)
{
    const QPointF centre(view->viewport()->width() / 2.0, view->viewport()->height() / 2.0);
    return {centre - QPointF(distance / 2, 0), centre + QPointF(distance / 2, 0)};
}

double facadeZoom(KESImageWnd* wnd)
{
    double scale = 0;
    wnd->getZoomRatio(&scale);
    return scale;
}

// The scale the zoom buttons give after the steps, pressed in order.
double scaleAfterSteps(const QList<int>& buttons, double start)
{
    double scale = start;
    for (int button : buttons)
        scale = double(float(double(float(scale)) * (button == Kit::ZoomInButton ? Kit::kZoomStep
                                                                                 : 1.0 / Kit::kZoomStep)));
    return scale;
}

QList<int> clickedButtons(const QSignalSpy& spy)
{
    QList<int> buttons;
    for (const QList<QVariant>& args : spy)
        buttons << args.at(0).toInt();
    return buttons;
}

// The run of the picture's grey along the viewport row through a scene point:
// how wide the picture is on the screen.
int pictureRunOnScreen(Kit::PictureWindow& w, const QPointF& scenePoint)
{
    const QImage grab = w.grabViewport();
    const int row = w.view()->mapFromScene(scenePoint).y();
    int run = 0;
    for (int x = 0; x < grab.width(); ++x)
        if (qAbs(qGray(grab.pixel(x, row)) - Kit::PictureWindow::kGrey) <= 1)
            ++run;
    return run;
}

void enableTouch(Kit::PictureWindow& w)
{
    w.view()->viewport()->setAttribute(Qt::WA_AcceptTouchEvents);
}

// A picture window whose host enabled touch on the viewport, with the zoom
// buttons the host hears and the zoom it started at.
struct PinchWindow : Kit::PictureWindow
{
    PinchWindow()
        : buttons(wnd.get(), SIGNAL(buttonClicked(long)))
    {
        enableTouch(*this);
        startZoom = facadeZoom(wnd.get());
    }
    QSignalSpy buttons;
    double startZoom = 0;
};

VorROI roiOf(KESImageWnd* wnd, long id)
{
    VorROI roi;
    wnd->getROIShape(id, &roi);
    return roi;
}

} // namespace

void tst_Touch::theWindowSetsNoTouchAttributeOfItsOwn()
{
    // Qt itself lets a scroll area's viewport take touch; every other widget
    // starts without. The window leaves both as Qt made them.
    QScrollArea bare;
    const bool viewportDefault = bare.viewport()->testAttribute(Qt::WA_AcceptTouchEvents);
    Kit::PictureWindow w;
    QList<QWidget*> widgets = w.window()->findChildren<QWidget*>();
    widgets << w.window() << w.host.get();
    for (QWidget* widget : widgets) {
        auto* area = qobject_cast<QAbstractScrollArea*>(widget->parentWidget());
        const bool isViewport = area && area->viewport() == widget;
        QVERIFY2(widget->testAttribute(Qt::WA_AcceptTouchEvents) == (isViewport && viewportDefault),
                 widget->metaObject()->className());
    }
    QVERIFY(w.view()->viewport()->testAttribute(Qt::WA_AcceptTouchEvents) == viewportDefault);
}

void tst_Touch::touchOnAViewportTheHostTurnedOffDoesNothing()
{
    Kit::PictureWindow w;
    w.view()->viewport()->setAttribute(Qt::WA_AcceptTouchEvents, false);
    w.wnd->drawRect();
    QSignalSpy buttons(w.wnd.get(), SIGNAL(buttonClicked(long)));
    const double before = facadeZoom(w.wnd.get());

    Kit::Touch pinch(w.view());
    QVERIFY(!pinch.press(fingersApart(w.view(), 100)));
    QVERIFY(!pinch.move(fingersApart(w.view(), 150)));
    QVERIFY(!pinch.release());

    Kit::Touch finger(w.view());
    finger.drag({w.view()->mapFromScene(QPointF(20, 20)), w.view()->mapFromScene(QPointF(120, 90))});

    QCOMPARE(buttons.count(), 0);
    QCOMPARE(facadeZoom(w.wnd.get()), before);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE).isEmpty());
}

void tst_Touch::twoFingersPressedAndHeldDoNotZoom()
{
    PinchWindow w;

    Kit::Touch pinch(w.view());
    QVERIFY(pinch.press(fingersApart(w.view(), 100)));
    QVERIFY(pinch.move(fingersApart(w.view(), 100)));
    QVERIFY(pinch.move(fingersApart(w.view(), 100)));

    QCOMPARE(w.buttons.count(), 0);
    QCOMPARE(facadeZoom(w.wnd.get()), w.startZoom);
}

void tst_Touch::pinchStepsOncePerUpdateAgainstTheStartDistance_data()
{
    QTest::addColumn<double>("startDistance");
    QTest::addColumn<QList<double>>("distances");
    QTest::addColumn<QList<int>>("steps");

    const int in = Kit::ZoomInButton;
    const int out = Kit::ZoomOutButton;
    QTest::newRow("spread from 100 to 120 over four updates")
        << 100.0 << QList<double>{105, 110, 115, 120} << QList<int>{in, in, in, in};
    QTest::newRow("pinched from 120 to 100 over four updates")
        << 120.0 << QList<double>{115, 110, 105, 100} << QList<int>{out, out, out, out};
    QTest::newRow("spread and back to the start distance") << 100.0 << QList<double>{110, 100} << QList<int>{in, out};
    QTest::newRow("closing but still wider than at the start")
        << 100.0 << QList<double>{140, 120, 101} << QList<int>{in, in, in};
    QTest::newRow("opening but still narrower than at the start")
        << 120.0 << QList<double>{60, 90, 119} << QList<int>{out, out, out};
    QTest::newRow("pressed on one point and moved apart") << 0.0 << QList<double>{10, 20} << QList<int>{in, in};
}

void tst_Touch::pinchStepsOncePerUpdateAgainstTheStartDistance()
{
    QFETCH(double, startDistance);
    QFETCH(QList<double>, distances);
    QFETCH(QList<int>, steps);

    PinchWindow w;

    Kit::Touch pinch(w.view());
    QVERIFY(pinch.press(fingersApart(w.view(), startDistance)));
    for (double distance : distances)
        QVERIFY(pinch.move(fingersApart(w.view(), distance)));

    QCOMPARE(clickedButtons(w.buttons), steps);
    QCOMPARE(facadeZoom(w.wnd.get()), scaleAfterSteps(steps, w.startZoom));
}

void tst_Touch::liftingTwoFingersStepsOnceMore_data()
{
    QTest::addColumn<double>("startDistance");
    QTest::addColumn<double>("movedTo");
    QTest::addColumn<QList<int>>("steps");

    const int in = Kit::ZoomInButton;
    const int out = Kit::ZoomOutButton;
    QTest::newRow("lifted at once at the start distance") << 100.0 << 100.0 << QList<int>{out};
    QTest::newRow("lifted after a spread") << 100.0 << 130.0 << QList<int>{in, in};
    QTest::newRow("pressed and lifted on one point: 0 over 0") << 0.0 << 0.0 << QList<int>{out};
}

void tst_Touch::liftingTwoFingersStepsOnceMore()
{
    QFETCH(double, startDistance);
    QFETCH(double, movedTo);
    QFETCH(QList<int>, steps);

    PinchWindow w;

    Kit::Touch pinch(w.view());
    QVERIFY(pinch.press(fingersApart(w.view(), startDistance)));
    if (movedTo != startDistance)
        QVERIFY(pinch.move(fingersApart(w.view(), movedTo)));
    QVERIFY(pinch.release());

    QCOMPARE(clickedButtons(w.buttons), steps);
    QCOMPARE(facadeZoom(w.wnd.get()), scaleAfterSteps(steps, w.startZoom));
}

void tst_Touch::threeFingersNeverZoomAndAreConsumed()
{
    Kit::PictureWindow w;
    enableTouch(w);
    w.wnd->drawRect();
    QSignalSpy buttons(w.wnd.get(), SIGNAL(buttonClicked(long)));
    const double before = facadeZoom(w.wnd.get());
    const QPointF c(w.view()->viewport()->width() / 2.0, w.view()->viewport()->height() / 2.0);

    Kit::Touch three(w.view());
    QVERIFY(three.press({c - QPointF(50, 0), c, c + QPointF(50, 0)}));
    QVERIFY(three.move({c - QPointF(90, 0), c + QPointF(0, 40), c + QPointF(90, 0)}));
    QVERIFY(three.release());

    QCOMPARE(buttons.count(), 0);
    QCOMPARE(facadeZoom(w.wnd.get()), before);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE).isEmpty());
}

void tst_Touch::pinchInAndOutIsSeenOnTheScreen()
{
    Kit::PictureWindow w(1.0, QSize(200, 150), QSize(800, 600));
    enableTouch(w);
    const QPointF middle(100, 75);
    QCOMPARE(facadeZoom(w.wnd.get()), 1.0);
    QVERIFY(qAbs(pictureRunOnScreen(w, middle) - 200) <= 1);

    Kit::Touch pinch(w.view());
    QVERIFY(pinch.press(fingersApart(w.view(), 100)));
    QVERIFY(pinch.move(fingersApart(w.view(), 110)));
    QVERIFY(pinch.move(fingersApart(w.view(), 120)));
    QVERIFY(pinch.release());
    const double in = facadeZoom(w.wnd.get());
    QCOMPARE(in, scaleAfterSteps({Kit::ZoomInButton, Kit::ZoomInButton, Kit::ZoomInButton}, 1.0));
    QVERIFY2(qAbs(pictureRunOnScreen(w, middle) - 200 * in) <= 2, qPrintable(QString::number(in)));

    Kit::Touch pinchOut(w.view());
    QVERIFY(pinchOut.press(fingersApart(w.view(), 200)));
    for (int distance : {180, 160, 140, 120})
        QVERIFY(pinchOut.move(fingersApart(w.view(), distance)));
    const double out = facadeZoom(w.wnd.get());
    QVERIFY(out < 1.0);
    QCOMPARE(out, scaleAfterSteps((QList<int>{Kit::ZoomOutButton, Kit::ZoomOutButton, Kit::ZoomOutButton, Kit::ZoomOutButton}), in));
    QVERIFY2(qAbs(pictureRunOnScreen(w, middle) - 200 * out) <= 2, qPrintable(QString::number(out)));
}

void tst_Touch::pinchFromThePlatformZooms()
{
    Kit::PictureWindow w;
    enableTouch(w);
    QSignalSpy buttons(w.wnd.get(), SIGNAL(buttonClicked(long)));
    QWidget* viewport = w.view()->viewport();
    const QList<QPointF> start = fingersApart(w.view(), 100);
    const QList<QPointF> wider = fingersApart(w.view(), 140);

    QTest::touchEvent(viewport, Kit::touchScreen())
        .press(0, start.at(0).toPoint(), viewport)
        .press(1, start.at(1).toPoint(), viewport);
    QTest::touchEvent(viewport, Kit::touchScreen())
        .move(0, wider.at(0).toPoint(), viewport)
        .move(1, wider.at(1).toPoint(), viewport);

    QCOMPARE(clickedButtons(buttons), QList<int>{Kit::ZoomInButton});
    QTest::touchEvent(viewport, Kit::touchScreen())
        .release(0, wider.at(0).toPoint(), viewport)
        .release(1, wider.at(1).toPoint(), viewport);
    QCOMPARE(clickedButtons(buttons), (QList<int>{Kit::ZoomInButton, Kit::ZoomInButton}));
}

void tst_Touch::oneFingerOnTheViewportDoesNotDraw()
{
    Kit::PictureWindow w;
    enableTouch(w);
    w.wnd->drawRect();
    QSignalSpy buttons(w.wnd.get(), SIGNAL(buttonClicked(long)));
    QSignalSpy moves(w.wnd.get(), SIGNAL(mouseMove(double, double)));
    const double before = facadeZoom(w.wnd.get());

    Kit::Touch finger(w.view());
    QVERIFY(finger.press({w.view()->mapFromScene(QPointF(20, 20))}));
    QVERIFY(finger.move({w.view()->mapFromScene(QPointF(70, 60))}));
    QVERIFY(finger.move({w.view()->mapFromScene(QPointF(120, 90))}));
    QVERIFY(finger.release());

    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE).isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_RECT1);
    QCOMPARE(buttons.count(), 0);
    QCOMPARE(moves.count(), 0);
    QCOMPARE(facadeZoom(w.wnd.get()), before);
}

void tst_Touch::oneFingerSentToTheSceneDrawsARectangle_data()
{
    QTest::addColumn<int>("deviceType");
    QTest::newRow("touch screen") << int(QTouchDevice::TouchScreen);
    QTest::newRow("touch pad") << int(QTouchDevice::TouchPad);
}

void tst_Touch::oneFingerSentToTheSceneDrawsARectangle()
{
    QFETCH(int, deviceType);
    static QTouchDevice* const pad = QTest::createTouchDevice(QTouchDevice::TouchPad);
    QTouchDevice* device = deviceType == QTouchDevice::TouchPad ? pad : Kit::touchScreen();

    Kit::PictureWindow w(2.0);
    enableTouch(w);
    w.wnd->drawRect();
    const QPointF from(20, 15);
    const QPointF to(70, 45);

    Kit::Touch finger(w.view(), Kit::Touch::ToScene, device);
    finger.drag({w.view()->mapFromScene(from), w.view()->mapFromScene((from + to) / 2), w.view()->mapFromScene(to)});

    const QList<long> ids = w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE);
    QCOMPARE(ids.size(), 1);
    const VorROI roi = roiOf(w.wnd.get(), ids.first());
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_RECT1));
    const Kit::Params expected{w.seen(from).x(), w.seen(from).y(), w.seen(to).x(), w.seen(to).y()};
    KIT_COMPARE_NEAR(Kit::valuesOf(roi), expected, Kit::kGeometryTolerance);
}

void tst_Touch::oneFingerSentToTheSceneMovesAShape()
{
    Kit::PictureWindow w(2.0);
    enableTouch(w);
    VorROI rect = Kit::makeROI(VorROI::ROI_RECT1, {20, 20, 60, 50});
    const long id = w.wnd->displayROI(rect);
    QVERIFY(id > 0);
    QSignalSpy moved(w.wnd.get(), SIGNAL(shapeMoved(long)));

    const QPointF grip(40, 35);
    const QPointF dropped(75, 60);
    Kit::Touch finger(w.view(), Kit::Touch::ToScene);
    finger.drag({w.view()->mapFromScene(grip), w.view()->mapFromScene((grip + dropped) / 2),
                 w.view()->mapFromScene(dropped)});

    const QPointF by = w.seen(dropped) - w.seen(grip);
    KIT_COMPARE_NEAR(Kit::valuesOf(roiOf(w.wnd.get(), id)),
                       (Kit::Params{20 + by.x(), 20 + by.y(), 60 + by.x(), 50 + by.y()}), Kit::kGeometryTolerance);
    QVERIFY(!moved.isEmpty());
    QCOMPARE(moved.last().at(0).toLongLong(), qlonglong(id));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), QList<long>{id});
}

void tst_Touch::stationaryPointReachesNoTool_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("mouseMoves");
    QTest::newRow("moved point acts as a mouse move") << int(Qt::TouchPointMoved) << true;
    QTest::newRow("stationary point is dropped") << int(Qt::TouchPointStationary) << false;
}

void tst_Touch::stationaryPointReachesNoTool()
{
    QFETCH(int, state);
    QFETCH(bool, mouseMoves);
    const QPointF from(20, 15);
    const QPointF to(70, 45);

    // The rectangle under way, before its release, as the mouse leaves it:
    // pressed, and moved or not.
    Kit::Params byMouse;
    {
        Kit::PictureWindow w(2.0);
        w.wnd->drawRect();
        w.press(from);
        if (mouseMoves)
            w.move(to);
        QCOMPARE(w.active()->shapes().size(), 1);
        byMouse = Kit::shapeParams(w.active()->shapes().first());
        w.release(mouseMoves ? to : from);
    }

    Kit::PictureWindow w(2.0);
    w.wnd->drawRect();
    Kit::Touch finger(w.view(), Kit::Touch::ToScene);
    QVERIFY(finger.press({w.view()->mapFromScene(from)}));
    QVERIFY(finger.update({w.view()->mapFromScene(to)}, {Qt::TouchPointState(state)}));

    QCOMPARE(w.active()->shapes().size(), 1);
    KIT_COMPARE_NEAR(Kit::shapeParams(w.active()->shapes().first()), byMouse, Kit::kGeometryTolerance);
    QVERIFY(finger.release());
}

void tst_Touch::everyFingerIsAStreamOfItsOwn()
{
    // Two fingers on the scene while drawing a rectangle: the second finger's
    // press comes after the first's in the same event and starts a rectangle
    // of its own; the first is dropped as the draw tool drops an unfinished
    // shape, and the one kept runs from the second finger's press to its lift.
    Kit::PictureWindow w(2.0);
    w.wnd->drawRect();
    const QPointF firstFrom(20, 15);
    const QPointF secondFrom(80, 50);
    const QPointF secondTo(110, 70);

    Kit::Touch fingers(w.view(), Kit::Touch::ToScene);
    QVERIFY(fingers.press({w.view()->mapFromScene(firstFrom), w.view()->mapFromScene(secondFrom)}));
    QVERIFY(fingers.update({w.view()->mapFromScene(firstFrom), w.view()->mapFromScene(secondTo)},
                           {Qt::TouchPointStationary, Qt::TouchPointMoved}));
    QVERIFY(fingers.update({w.view()->mapFromScene(firstFrom), w.view()->mapFromScene(secondTo)},
                           {Qt::TouchPointStationary, Qt::TouchPointReleased}));

    const QList<long> ids = w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE);
    QCOMPARE(ids.size(), 1);
    KIT_COMPARE_NEAR(Kit::valuesOf(roiOf(w.wnd.get(), ids.first())),
                       (Kit::Params{w.seen(secondFrom).x(), w.seen(secondFrom).y(), w.seen(secondTo).x(),
                                    w.seen(secondTo).y()}), Kit::kGeometryTolerance);
}

QTEST_MAIN(tst_Touch)
#include "tst_touch.moc"
