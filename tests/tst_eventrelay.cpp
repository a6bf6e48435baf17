// How the operator's actions reach the host: the facade's signals with their
// arguments and their order, the zoom commands, and the callbacks and signals
// of the event relay.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "buttontoolbar.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "statusbar.h"
#include "testkit.h"

#include <QCursor>
#include <QGraphicsSceneMouseEvent>
#include <QScrollBar>

#include <opencv2/core.hpp>

namespace {

QString num(double value)
{
    return QString::number(value, 'g', 17);
}

// Writes every facade signal into one log, so that order across signals shows.
class SignalLog : public QObject
{
public:
    explicit SignalLog(KESImageWnd* wnd)
    {
        connect(wnd, &KESImageWnd::mouseMove, this,
                [this](double x, double y) { log << QString("mouseMove(%1,%2)").arg(num(x), num(y)); });
        connect(wnd, &KESImageWnd::imgInfo, this, [this](double x, double y, int r, int g, int b, float s) {
            log << QString("imgInfo(%1,%2,%3,%4,%5,%6)").arg(num(x), num(y)).arg(r).arg(g).arg(b).arg(num(s));
        });
        connect(wnd, &KESImageWnd::mouseClicked, this,
                [this](double x, double y) { log << QString("mouseClicked(%1,%2)").arg(num(x), num(y)); });
        connect(wnd, &KESImageWnd::mouseButtonDown, this,
                [this](long n) { log << QString("mouseButtonDown(%1)").arg(n); });
        connect(wnd, &KESImageWnd::mouseButtonUp, this, [this](long n) { log << QString("mouseButtonUp(%1)").arg(n); });
        connect(wnd, &KESImageWnd::buttonClicked, this, [this](long n) { log << QString("buttonClicked(%1)").arg(n); });
        connect(wnd, &KESImageWnd::shapeResized, this, [this](long id) { log << QString("shapeResized(%1)").arg(id); });
        connect(wnd, &KESImageWnd::shapeMoved, this, [this](long id) { log << QString("shapeMoved(%1)").arg(id); });
        connect(wnd, &KESImageWnd::shapeClicked, this, [this](long id) { log << QString("shapeClicked(%1)").arg(id); });
        connect(wnd, &KESImageWnd::floatBtnClicked, this,
                [this](bool on) { log << QString("floatBtnClicked(%1)").arg(on); });
        connect(wnd, &KESImageWnd::intoBtnClicked, this,
                [this](bool on) { log << QString("intoBtnClicked(%1)").arg(on); });
        connect(wnd, &KESImageWnd::mouseDoubleClick, this, [this] { log << "mouseDoubleClick()"; });
        connect(wnd, &KESImageWnd::sigMousePress, this, [this](double, double) { log << "sigMousePress"; });
        connect(wnd, &KESImageWnd::sigMouseRelease, this, [this](double, double) { log << "sigMouseRelease"; });
        connect(wnd, &KESImageWnd::sigMouseRightPress, this, [this](double, double) { log << "sigMouseRightPress"; });
        connect(wnd, &KESImageWnd::sigMouseRightRelease, this,
                [this](double, double) { log << "sigMouseRightRelease"; });
        connect(wnd, &KESImageWnd::sigMouseRightMoveRelease, this,
                [this](double, double) { log << "sigMouseRightMoveRelease"; });
    }

    QStringList log;
};

// Notes the mouse events that reach the scene, for the order against signals.
class SceneEventLog : public QObject
{
public:
    SceneEventLog(QObject* scene, QStringList* log)
        : m_log(log)
    {
        scene->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::GraphicsSceneMouseMove: *m_log << "scene move"; break;
        case QEvent::GraphicsSceneMouseDoubleClick: *m_log << "scene double click"; break;
        default: break;
        }
        return false;
    }

private:
    QStringList* m_log;
};

struct MouseRecord
{
    int calls = 0;
    long long windowID = 0;
    float x = 0.0f;
    float y = 0.0f;
    void* data = nullptr;
    QStringList* log = nullptr;
};

struct ShapeRecord
{
    int calls = 0;
    long long windowID = 0;
    long shapeID = 0;
    void* data = nullptr;
    QStringList* log = nullptr;
};

MouseRecord* g_mouseRecord = nullptr;
ShapeRecord* g_shapeRecord = nullptr;

void onMouseEvent(long long windowID, float x, float y, void* data)
{
    MouseRecord* record = g_mouseRecord;
    ++record->calls;
    record->windowID = windowID;
    record->x = x;
    record->y = y;
    record->data = data;
    if (record->log)
        *record->log << "mouse callback";
}

void onOtherMouseEvent(long long, float, float, void*)
{
    QFAIL("a replaced callback was called");
}

void onShapeEvent(long long windowID, long shapeID, void* data)
{
    ShapeRecord* record = g_shapeRecord;
    ++record->calls;
    record->windowID = windowID;
    record->shapeID = shapeID;
    record->data = data;
    if (record->log)
        *record->log << "shape callback";
}

void onOtherShapeEvent(long long, long, void*)
{
    QFAIL("a replaced callback was called");
}

} // namespace

using Kit::colourPicture;

class EventRelayTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // declarations
    void facadeSignalsAreDeclaredInOrder();
    void relayAndWindowSignalsAreDeclared();
    void windowCommandSignalsStayUnconnected();

    // mouse road
    void moveOverPictureGivesMouseMoveThenImgInfo();
    void moveInsidePictureReportsItsPixel();
    void moveWithoutPictureIsSilentButReleaseIsNot();
    void moveInQImageModeReachesCallbackAndSignals();
    void qimageModeWithoutPictureCallsBackButIsSilent();
    void releaseOfAnyButtonGivesExactlyOneMouseClicked_data();
    void releaseOfAnyButtonGivesExactlyOneMouseClicked();
    void mouseClickedComesFirstOfTheReleaseSignals();
    void negativePositionsReachTheHostUnclamped();
    void moveIsReportedBeforePanning();
    void wheelStepReportsThePositionAtTheNewScale();
    void qimageBackgroundReportsThePositionUnderTheCursor();
    void vorImageBackgroundReportsNothing();
    void doubleClickGivesMouseDoubleClickOnce();
    void pressSignalsStopAtTheWindow();

    // callbacks through the scene's relay
    void moveCallbackGetsWindowAddressAndFloatCoordinates();
    void moveCallbackIsSilentWithoutPicture();
    void relayShapeSignalsReachTheFacade();
    void windowSignalsReachTheFacade();

    // zoom commands
    void zoomInWithoutPictureStillClicksButKeepsScale();
    void zoomCommandsStepThroughTheSharedFloat();
    void zoomFitUsesTheFitOfThePicture();
    void zoomIsDoneWhenTheHostHearsTheClick();
    void zoomOutBelowMinimumIsRefusedByTheView();
    void zoomInHasNoUpperLimit();
    void zoomCommandsWorkInQImageMode();
    void relayZoomOutsideOneToFourDoesNothing();
    void viewZoomSignalsRunTheCommands();

    // the relay on its own
    void relayStartsEmpty();
    void shapeSendsStoreEmitAndCall_data();
    void shapeSendsStoreEmitAndCall();
    void mouseSendsStoreAndCallWithoutSignal_data();
    void mouseSendsStoreAndCallWithoutSignal();
    void buttonClickEmitsZoomOnlyForZoomButtons_data();
    void buttonClickEmitsZoomOnlyForZoomButtons();
    void newRegistrationReplacesTheOld();

private:
    MouseRecord m_mouse;
    ShapeRecord m_shape;
};

void EventRelayTest::init()
{
    CMainWindow::s_scale = 1.0f;
    m_mouse = MouseRecord();
    m_shape = ShapeRecord();
    g_mouseRecord = &m_mouse;
    g_shapeRecord = &m_shape;
}

void EventRelayTest::cleanup()
{
    g_mouseRecord = nullptr;
    g_shapeRecord = nullptr;
}

void EventRelayTest::facadeSignalsAreDeclaredInOrder()
{
    const QMetaObject& meta = KESImageWnd::staticMetaObject;
    QStringList signalList;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            signalList << QString::fromLatin1(meta.method(i).methodSignature());
    }
    QCOMPARE(signalList, QStringList({"mouseMove(double,double)",
                                      "imgInfo(double,double,int,int,int,float)",
                                      "mouseButtonDown(long)",
                                      "mouseButtonUp(long)",
                                      "shapeResized(long)",
                                      "shapeMoved(long)",
                                      "shapeClicked(long)",
                                      "buttonClicked(long)",
                                      "floatBtnClicked(bool)",
                                      "intoBtnClicked(bool)",
                                      "mouseDoubleClick()",
                                      "mouseClicked(double,double)",
                                      "sigMousePress(double,double)",
                                      "sigMouseRelease(double,double)",
                                      "sigMouseRightPress(double,double)",
                                      "sigMouseRightRelease(double,double)",
                                      "sigMouseRightMoveRelease(double,double)",
                                      "selectShape(qlonglong)"}));
}

void EventRelayTest::relayAndWindowSignalsAreDeclared()
{
    const QMetaObject& relay = EventThread::staticMetaObject;
    for (const char* signature : {"Zoom(int)", "shapeResized(long)", "shapeMoved(long)", "shapeClicked(long)"})
        QVERIFY2(relay.indexOfSignal(signature) >= 0, signature);

    const QMetaObject& window = CMainWindow::staticMetaObject;
    for (const char* signature :
         {"sendShowToolbutton(long,bool)", "sendShowToolbar(bool)", "sendShowStatusbar(bool)",
          "sendShowScrollbar(bool)", "sendZoom(float)", "sendZoomFitWnd(bool)", "sendZoomReset(bool)",
          "sendZoomIn(bool)", "sendZoomOut(bool)", "sendRepaint()", "sendScreenshot(const char*)",
          "sendRemoveShape(qlonglong)", "sendRemoveShapeList(QList<long>)", "sendVisibleShape(qlonglong,bool)",
          "sendClear()", "sendClearBackground()", "sendClearLayer(KESImageWnd::Layer)",
          "sendSetBackground(qlonglong)", "sendDisplayRunShape(qlonglong)", "sigMousePress(double,double)",
          "sigMouseRelease(double,double)", "sigMouseRightPress(double,double)",
          "sigMouseRightRelease(double,double)", "sigMouseRightMoveRelease(double,double)"}) {
        QVERIFY2(window.indexOfSignal(QMetaObject::normalizedSignature(signature)) >= 0, signature);
    }
}

void EventRelayTest::windowCommandSignalsStayUnconnected()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 2.0), 0L);
    CMainWindow* window = fixture.window();
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    SignalLog log(fixture.wnd.get());
    VorImage other = colourPicture(30, 30, 9, 9, 9);

    emit window->sendShowToolbar(false);
    emit window->sendShowStatusbar(false);
    emit window->sendShowScrollbar(false);
    emit window->sendZoom(3.0f);
    emit window->sendZoomIn(false);
    emit window->sendZoomOut(false);
    emit window->sendZoomFitWnd(false);
    emit window->sendZoomReset(false);
    emit window->sendClearBackground();
    emit window->sendSetBackground(reinterpret_cast<qlonglong>(&other));
    emit window->sendClear();
    emit window->sendClearLayer(KESImageWnd::LAYER_IMAGE);
    QCoreApplication::processEvents();

    QCOMPARE(window->widgetFlag(), 7);
    QVERIFY(window->GetButtonToolbar()->isVisible());
    QVERIFY(window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(fixture.scene()->getScale(), 2.0);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    QVERIFY(layer->GetVorImage());
    QCOMPARE(layer->GetVorImage()->Width(), 200);
    QCOMPARE(layer->GetQImage()->size(), QSize(200, 100));
    QVERIFY(log.log.isEmpty());
}

void EventRelayTest::moveOverPictureGivesMouseMoveThenImgInfo()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(100, 100, 10, 20, 30), 2.0), 0L);
    ImageCtrlView* view = fixture.view();
    QCOMPARE(view->mapToScene(view->mapFromScene(QPointF(150, 10))), QPointF(150, 10));

    SignalLog log(fixture.wnd.get());
    SceneEventLog sceneLog(fixture.scene(), &log.log);
    m_mouse.log = &log.log;
    fixture.scene()->GetEventThread()->RegisterMouseMoveEvent(onMouseEvent, nullptr);
    QSignalSpy moves(fixture.wnd.get(), &KESImageWnd::mouseMove);
    QSignalSpy infos(fixture.wnd.get(), &KESImageWnd::imgInfo);

    Kit::moveTo(view, QPointF(150, 10));

    QCOMPARE(moves.count(), 1);
    QCOMPARE(moves.at(0).at(0).toDouble(), 150.0);
    QCOMPARE(moves.at(0).at(1).toDouble(), 10.0);
    QCOMPARE(infos.count(), 1);
    const QList<QVariant> info = infos.at(0);
    QCOMPARE(info.at(0).toDouble(), 150.0);
    QCOMPARE(info.at(1).toDouble(), 10.0);
    QCOMPARE(info.at(2).toInt(), 153);
    QCOMPARE(info.at(3).toInt(), 153);
    QCOMPARE(info.at(4).toInt(), 153);
    QCOMPARE(info.at(5).toFloat(), 2.0f);
    QCOMPARE(log.log, QStringList({"mouseMove(150,10)", "imgInfo(150,10,153,153,153,2)", "scene move",
                                   "mouse callback"}));
}

void EventRelayTest::moveInsidePictureReportsItsPixel()
{
    EmbeddedWindow fixture;
    cv::Mat mat(100, 100, CV_8UC3, cv::Scalar(0, 0, 0));
    mat.at<cv::Vec3b>(30, 20) = cv::Vec3b(50, 100, 200); // blue, green, red
    VorImage picture(mat);
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    QSignalSpy infos(fixture.wnd.get(), &KESImageWnd::imgInfo);
    Kit::moveTo(fixture.view(), QPointF(20, 30));
    QCOMPARE(infos.count(), 1);
    QCOMPARE(infos.at(0),
             QList<QVariant>({20.0, 30.0, 200, 100, 50, QVariant::fromValue(1.0f)}));
}

void EventRelayTest::moveWithoutPictureIsSilentButReleaseIsNot()
{
    EmbeddedWindow fixture;
    QVERIFY(fixture.window()->isVorImg());
    SignalLog log(fixture.wnd.get());
    ImageCtrlView* view = fixture.view();
    const QPoint at(40, 30);
    const QPointF sceneAt = view->mapToScene(at);

    Kit::moveToViewport(view, at);
    Kit::moveToViewport(view, at + QPoint(5, 5));
    QVERIFY(log.log.isEmpty());
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(), QString("Info:"));

    Kit::pressAtViewport(view, at);
    Kit::releaseAtViewport(view, at);
    QCOMPARE(log.log, QStringList({QString("mouseClicked(%1,%2)").arg(num(sceneAt.x()), num(sceneAt.y()))}));
}

void EventRelayTest::moveInQImageModeReachesCallbackAndSignals()
{
    EmbeddedWindow fixture;
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(qRgb(1, 2, 3));
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    fixture.scene()->GetEventThread()->RegisterMouseMoveEvent(onMouseEvent, &m_mouse);
    QSignalSpy moves(fixture.wnd.get(), &KESImageWnd::mouseMove);
    Kit::moveTo(fixture.view(), QPointF(7, 8));
    QCOMPARE(moves.count(), 1);
    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(m_mouse.x, 7.0f);
    QCOMPARE(m_mouse.y, 8.0f);
    QCOMPARE(m_mouse.data, static_cast<void*>(&m_mouse));
}

void EventRelayTest::qimageModeWithoutPictureCallsBackButIsSilent()
{
    EmbeddedWindow fixture;
    // QImage mode with no QImage yet: the signals wait for a picture, the
    // callback looks at the mode alone.
    fixture.window()->setIsVorImg(false);
    fixture.scene()->GetEventThread()->RegisterMouseMoveEvent(onMouseEvent, nullptr);
    SignalLog log(fixture.wnd.get());
    Kit::moveToViewport(fixture.view(), QPoint(20, 25));
    QVERIFY(log.log.isEmpty());
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(), QString("Info:"));
    QCOMPARE(m_mouse.calls, 1);
    const QPointF at = fixture.view()->mapToScene(QPoint(20, 25));
    QCOMPARE(m_mouse.x, float(at.x()));
    QCOMPARE(m_mouse.y, float(at.y()));
}

void EventRelayTest::releaseOfAnyButtonGivesExactlyOneMouseClicked_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("withPicture");
    QTest::newRow("left") << int(Qt::LeftButton) << true;
    QTest::newRow("right") << int(Qt::RightButton) << true;
    QTest::newRow("middle") << int(Qt::MiddleButton) << true;
    QTest::newRow("left, no picture") << int(Qt::LeftButton) << false;
    QTest::newRow("right, no picture") << int(Qt::RightButton) << false;
}

void EventRelayTest::releaseOfAnyButtonGivesExactlyOneMouseClicked()
{
    QFETCH(int, button);
    QFETCH(bool, withPicture);
    EmbeddedWindow fixture;
    if (withPicture) {
        VorImage picture = colourPicture(100, 100, 1, 2, 3);
        QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    }
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    QSignalSpy clicks(fixture.wnd.get(), &KESImageWnd::mouseClicked);
    const auto mouseButton = Qt::MouseButton(button);
    Kit::pressAt(fixture.view(), QPointF(12, 34), mouseButton);
    QCOMPARE(clicks.count(), 0);
    Kit::releaseAt(fixture.view(), QPointF(12, 34), mouseButton);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).toDouble(), 12.0);
    QCOMPARE(clicks.at(0).at(1).toDouble(), 34.0);
    // The repaint a millisecond later adds no click.
    Kit::letQueuedCallsRun();
    QCOMPARE(clicks.count(), 1);
}

void EventRelayTest::mouseClickedComesFirstOfTheReleaseSignals()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    CMainWindow* window = fixture.window();
    QStringList log;
    connect(fixture.wnd.get(), &KESImageWnd::mouseClicked, this, [&log](double, double) { log << "mouseClicked"; });
    connect(window, &CMainWindow::sigMouseRelease, this, [&log](double, double) { log << "sigMouseRelease"; });
    connect(window, &CMainWindow::sigMouseRightRelease, this,
            [&log](double, double) { log << "sigMouseRightRelease"; });
    connect(window, &CMainWindow::sigMouseRightMoveRelease, this,
            [&log](double, double) { log << "sigMouseRightMoveRelease"; });

    ImageCtrlView* view = fixture.view();
    Kit::pressAt(view, QPointF(5, 5));
    Kit::releaseAt(view, QPointF(5, 5));
    QCOMPARE(log, QStringList({"mouseClicked", "sigMouseRelease"}));

    log.clear();
    Kit::pressAt(view, QPointF(5, 5), Qt::RightButton);
    Kit::releaseAt(view, QPointF(5, 5), Qt::RightButton);
    QCOMPARE(log, QStringList({"mouseClicked", "sigMouseRightRelease"}));

    log.clear();
    Kit::pressAt(view, QPointF(5, 5), Qt::RightButton);
    Kit::moveTo(view, QPointF(9, 9), Qt::RightButton);
    Kit::releaseAt(view, QPointF(9, 9), Qt::RightButton);
    QCOMPARE(log, QStringList({"mouseClicked", "sigMouseRightMoveRelease"}));
}

void EventRelayTest::negativePositionsReachTheHostUnclamped()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(100, 100, 1, 2, 3), 1.0), 0L);
    SignalLog log(fixture.wnd.get());
    Kit::moveTo(fixture.view(), QPointF(-5, -7));
    Kit::pressAt(fixture.view(), QPointF(-5, -7));
    Kit::releaseAt(fixture.view(), QPointF(-5, -7));
    QCOMPARE(log.log, QStringList({"mouseMove(-5,-7)", "imgInfo(-5,-7,153,153,153,1)", "mouseClicked(-5,-7)"}));
}

void EventRelayTest::moveIsReportedBeforePanning()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 8.0), 0L);
    ImageCtrlView* view = fixture.view();
    QScrollBar* bar = view->horizontalScrollBar();
    bar->setValue((bar->minimum() + bar->maximum()) / 2);
    const int before = bar->value();
    int seen = -1;
    connect(fixture.wnd.get(), &KESImageWnd::mouseMove, this, [&seen, bar](double, double) { seen = bar->value(); });

    const QPoint start(200, 150);
    Kit::pressAtViewport(view, start, Qt::RightButton);
    Kit::moveToViewport(view, start + QPoint(30, 0), Qt::RightButton);
    QCOMPARE(seen, before);
    QCOMPARE(bar->value(), before - 30);
    Kit::releaseAtViewport(view, start + QPoint(30, 0), Qt::RightButton);
}

void EventRelayTest::wheelStepReportsThePositionAtTheNewScale()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(100, 100, 1, 2, 3), 2.0), 0L);
    SignalLog log(fixture.wnd.get());
    QSignalSpy infos(fixture.wnd.get(), &KESImageWnd::imgInfo);
    const QPoint at = Kit::viewportPos(fixture.view(), QPointF(50, 50));
    Kit::wheelAtViewport(fixture.view(), at, 120);
    QCOMPARE(fixture.scene()->getScale(), 2.5);
    QCOMPARE(infos.count(), 1);
    QCOMPARE(infos.at(0).at(5).toFloat(), 2.5f);
    const QPointF expected = fixture.view()->mapToScene(at);
    QCOMPARE(infos.at(0).at(0).toDouble(), expected.x());
    QCOMPARE(infos.at(0).at(1).toDouble(), expected.y());
    QCOMPARE(log.log.size(), 2);
    QVERIFY(log.log.at(0).startsWith("mouseMove("));
    QVERIFY(log.log.at(1).startsWith("imgInfo("));
}

void EventRelayTest::qimageBackgroundReportsThePositionUnderTheCursor()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    SignalLog log(fixture.wnd.get());
    QImage picture(100, 100, QImage::Format_RGB32);
    picture.fill(qRgb(9, 8, 7));
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    ImageCtrlView* view = fixture.view();
    const QPointF at = view->mapToScene(view->mapFromGlobal(QCursor::pos()));
    QCOMPARE(log.log.size(), 2);
    QCOMPARE(log.log.at(0), QString("mouseMove(%1,%2)").arg(num(at.x()), num(at.y())));
    QVERIFY(log.log.at(1).startsWith(QString("imgInfo(%1,%2,").arg(num(at.x()), num(at.y()))));
}

void EventRelayTest::vorImageBackgroundReportsNothing()
{
    EmbeddedWindow fixture;
    SignalLog log(fixture.wnd.get());
    QCOMPARE(fixture.setPicture(colourPicture(100, 100, 1, 2, 3)), 0L);
    QVERIFY(log.log.isEmpty());
}

void EventRelayTest::doubleClickGivesMouseDoubleClickOnce()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    SignalLog log(fixture.wnd.get());
    SceneEventLog sceneLog(fixture.scene(), &log.log);
    QSignalSpy doubles(fixture.wnd.get(), &KESImageWnd::mouseDoubleClick);
    QSignalSpy sceneDoubles(fixture.scene(), &ImageCtrlScene::mouseDoubleClick);
    Kit::doubleClickAt(fixture.view(), QPointF(10, 10));
    QCOMPARE(doubles.count(), 1);
    QCOMPARE(sceneDoubles.count(), 1);
    QVERIFY(doubles.at(0).isEmpty());
    QCOMPARE(log.log, QStringList({"mouseClicked(10,10)", "scene double click", "mouseDoubleClick()",
                                   "mouseClicked(10,10)"}));
}

void EventRelayTest::pressSignalsStopAtTheWindow()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(100, 100, 1, 2, 3), 1.0), 0L);
    CMainWindow* window = fixture.window();
    QSignalSpy wndPress(window, &CMainWindow::sigMousePress);
    QSignalSpy wndRelease(window, &CMainWindow::sigMouseRelease);
    QSignalSpy wndRightPress(window, &CMainWindow::sigMouseRightPress);
    QSignalSpy wndRightRelease(window, &CMainWindow::sigMouseRightRelease);
    QSignalSpy wndRightMoveRelease(window, &CMainWindow::sigMouseRightMoveRelease);
    SignalLog log(fixture.wnd.get());

    ImageCtrlView* view = fixture.view();
    Kit::pressAt(view, QPointF(10, 20));
    Kit::releaseAt(view, QPointF(10, 20));
    Kit::pressAt(view, QPointF(11, 21), Qt::RightButton);
    Kit::releaseAt(view, QPointF(11, 21), Qt::RightButton);
    Kit::pressAt(view, QPointF(12, 22), Qt::RightButton);
    Kit::moveTo(view, QPointF(14, 24), Qt::RightButton);
    Kit::releaseAt(view, QPointF(14, 24), Qt::RightButton);

    // The window re-emits them ...
    QCOMPARE(wndPress.count(), 1);
    QCOMPARE(wndPress.at(0), QList<QVariant>({10.0, 20.0}));
    QCOMPARE(wndRelease.count(), 1);
    QCOMPARE(wndRelease.at(0), QList<QVariant>({10.0, 20.0}));
    QCOMPARE(wndRightPress.count(), 2);
    QCOMPARE(wndRightRelease.count(), 1);
    QCOMPARE(wndRightRelease.at(0), QList<QVariant>({11.0, 21.0}));
    QCOMPARE(wndRightMoveRelease.count(), 1);
    QCOMPARE(wndRightMoveRelease.at(0), QList<QVariant>({14.0, 24.0}));
    // ... and the facade's signals of those names are never emitted.
    for (const QString& entry : log.log)
        QVERIFY2(!entry.startsWith("sig"), qPrintable(entry));
    QCOMPARE(log.log.filter("mouseClicked").size(), 3);
}

void EventRelayTest::moveCallbackGetsWindowAddressAndFloatCoordinates()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(100, 100, 1, 2, 3), 3.0), 0L);
    EventThread* relay = fixture.scene()->GetEventThread();
    int userData = 7;
    relay->RegisterMouseMoveEvent(onMouseEvent, &userData);
    QSignalSpy moves(fixture.wnd.get(), &KESImageWnd::mouseMove);

    // At a scale of 3 a viewport pixel lands between image pixels.
    const QPoint at = Kit::viewportPos(fixture.view(), QPointF(50, 50)) + QPoint(1, 2);
    const QPointF sceneAt = fixture.view()->mapToScene(at);
    QVERIFY(double(float(sceneAt.x())) != sceneAt.x() || double(float(sceneAt.y())) != sceneAt.y());
    Kit::moveToViewport(fixture.view(), at);

    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(m_mouse.windowID, reinterpret_cast<long long>(fixture.window()));
    QCOMPARE(m_mouse.x, float(sceneAt.x()));
    QCOMPARE(m_mouse.y, float(sceneAt.y()));
    QCOMPARE(m_mouse.data, static_cast<void*>(&userData));
    QCOMPARE(moves.count(), 1);
    QCOMPARE(moves.at(0).at(0).toDouble(), sceneAt.x());
    QCOMPARE(moves.at(0).at(1).toDouble(), sceneAt.y());
    QCOMPARE(relay->eventKind(), int(EventThread::EV_MOUSE_MOVE));
    QCOMPARE(relay->mousePos(), QPointF(float(sceneAt.x()), float(sceneAt.y())));

    // A null function removes the registration.
    relay->RegisterMouseMoveEvent(nullptr, nullptr);
    Kit::moveToViewport(fixture.view(), at + QPoint(1, 1));
    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(moves.count(), 2);
}

void EventRelayTest::moveCallbackIsSilentWithoutPicture()
{
    EmbeddedWindow fixture;
    EventThread* relay = fixture.scene()->GetEventThread();
    relay->RegisterMouseMoveEvent(onMouseEvent, nullptr);
    Kit::moveToViewport(fixture.view(), QPoint(30, 30));
    QCOMPARE(m_mouse.calls, 0);
    QCOMPARE(relay->eventKind(), int(EventThread::EV_NONE));

    // So is a cleared VorImage background.
    QCOMPARE(fixture.setPicture(colourPicture(100, 100, 1, 2, 3)), 0L);
    Kit::moveToViewport(fixture.view(), QPoint(31, 31));
    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(fixture.wnd->clearBackground(), 0L);
    Kit::moveToViewport(fixture.view(), QPoint(32, 32));
    QCOMPARE(m_mouse.calls, 1);
}

void EventRelayTest::relayShapeSignalsReachTheFacade()
{
    EmbeddedWindow fixture;
    SignalLog log(fixture.wnd.get());
    EventThread* relay = fixture.scene()->GetEventThread();
    relay->RegisterShapeMoveEvent(onShapeEvent, &m_shape);
    relay->sendShapeMove(7);
    relay->sendShapeResize(8);
    relay->sendShapeClicked(0);
    QCOMPARE(log.log, QStringList({"shapeMoved(7)", "shapeResized(8)", "shapeClicked(0)"}));
    QCOMPARE(m_shape.calls, 1);
    QCOMPARE(m_shape.windowID, reinterpret_cast<long long>(fixture.window()));
    QCOMPARE(m_shape.shapeID, 7L);
    QCOMPARE(m_shape.data, static_cast<void*>(&m_shape));

    // The mouse sends have no signal, and a button send reaches no facade signal.
    log.log.clear();
    relay->sendMouseMove(1.0f, 2.0f);
    relay->sendMosueLClick(1.0f, 2.0f);
    relay->sendButtonClick(ButtonToolbar::PB_DRAW_RECT);
    QVERIFY(log.log.isEmpty());
}

void EventRelayTest::windowSignalsReachTheFacade()
{
    EmbeddedWindow fixture;
    SignalLog log(fixture.wnd.get());
    CMainWindow* window = fixture.window();
    emit window->mouseButtonDown(6);
    emit window->mouseButtonUp(6);
    emit window->buttonClicked(12);
    emit window->mouseClicked(1.5, -2.5);
    emit fixture.view()->floatBtnClicked(true);
    emit fixture.view()->intoBtnClicked(false);
    emit fixture.scene()->mouseDoubleClick();
    QCOMPARE(log.log, QStringList({"mouseButtonDown(6)", "mouseButtonUp(6)", "buttonClicked(12)",
                                   "mouseClicked(1.5,-2.5)", "floatBtnClicked(1)", "intoBtnClicked(0)",
                                   "mouseDoubleClick()"}));

    // The window's sig* signals are not relayed.
    log.log.clear();
    emit window->sigMousePress(1, 2);
    emit window->sigMouseRelease(1, 2);
    emit window->sigMouseRightPress(1, 2);
    emit window->sigMouseRightRelease(1, 2);
    emit window->sigMouseRightMoveRelease(1, 2);
    QVERIFY(log.log.isEmpty());
}

void EventRelayTest::zoomInWithoutPictureStillClicksButKeepsScale()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    QVERIFY(layer->isVorImg());
    QCOMPARE(fixture.wnd->zoom(1.5), 0L);
    QSignalSpy buttons(fixture.wnd.get(), &KESImageWnd::buttonClicked);
    const QTransform before = fixture.view()->transform();

    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(buttons.count(), 1);
    QCOMPARE(buttons.at(0).at(0).value<long>(), 1L);
    QCOMPARE(fixture.scene()->getScale(), 1.5);
    QCOMPARE(fixture.view()->transform(), before);
    QCOMPARE(CMainWindow::s_scale, 1.5f);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);

    QCOMPARE(fixture.wnd->zoomOut(), 0L);
    QCOMPARE(fixture.wnd->zoomFitWnd(), 0L);
    QCOMPARE(fixture.wnd->zoomReset(), 0L);
    QCOMPARE(buttons.count(), 4);
    QCOMPARE(buttons.at(1).at(0).value<long>(), 2L);
    QCOMPARE(buttons.at(2).at(0).value<long>(), 3L);
    QCOMPARE(buttons.at(3).at(0).value<long>(), 4L);
    QCOMPARE(fixture.scene()->getScale(), 1.5);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);

    // The relay still notes the button.
    EventThread* relay = fixture.scene()->GetEventThread();
    QCOMPARE(relay->eventKind(), int(EventThread::EV_BUTTON_CLICK));
    QCOMPARE(relay->pushButton(), ButtonToolbar::PB_ZOOM_ORG);
}

void EventRelayTest::zoomCommandsStepThroughTheSharedFloat()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    QCOMPARE(fixture.setPicture(colourPicture(200, 100, 1, 2, 3)), 0L);

    QCOMPARE(fixture.wnd->zoomReset(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_ORG);
    QCOMPARE(fixture.scene()->getScale(), 1.0);
    QCOMPARE(CMainWindow::s_scale, 1.0f);
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(1.0, 1.0));

    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    QCOMPARE(fixture.scene()->getScale(), 1.25);
    QCOMPARE(CMainWindow::s_scale, 1.25f);
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(1.25, 1.25));
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(fixture.scene()->getScale(), 1.5625);

    QCOMPARE(fixture.wnd->zoomOut(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_OUT);
    QCOMPARE(fixture.scene()->getScale(), 1.25);
    QCOMPARE(CMainWindow::s_scale, 1.25f);

    // Each step goes through float: from 1.1 the results are not the double ones.
    QCOMPARE(fixture.wnd->zoom(1.1), 0L);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    const double stepIn = double(float(double(float(double(1.1f))) * 1.25));
    QCOMPARE(fixture.scene()->getScale(), stepIn);
    QCOMPARE(CMainWindow::s_scale, float(stepIn));
    QCOMPARE(fixture.wnd->zoom(1.1), 0L);
    QCOMPARE(fixture.wnd->zoomOut(), 0L);
    const double stepOut = double(float(double(1.1f) / 1.25));
    QCOMPARE(fixture.scene()->getScale(), stepOut);
    QVERIFY(stepOut != double(1.1f) / 1.25);
}

void EventRelayTest::zoomFitUsesTheFitOfThePicture()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 4.0), 0L);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);

    // 640 x 480: the view is 640 x 410, its size 621 x 391; the width decides.
    double width = 0.0;
    double height = 0.0;
    fixture.scene()->getViewSize(width, height);
    QCOMPARE(width, 621.0);
    QCOMPARE(height, 391.0);
    QCOMPARE(fixture.wnd->zoomFitWnd(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    const float fit = float(621.0 / 200.0);
    QCOMPARE(layer->GetFitImageScaledValue(), fit);
    QCOMPARE(CMainWindow::s_scale, fit);
    QCOMPARE(fixture.scene()->getScale(), double(fit));
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(double(fit), double(fit)));
}

void EventRelayTest::zoomIsDoneWhenTheHostHearsTheClick()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 2.0), 0L);
    double heardScale = 0.0;
    int heardKind = 0;
    int heardButton = -1;
    ImageCtrlScene* scene = fixture.scene();
    EventThread* relay = scene->GetEventThread();
    connect(fixture.wnd.get(), &KESImageWnd::buttonClicked, this,
            [&heardScale, &heardKind, &heardButton, scene, relay](long) {
                heardScale = scene->getScale();
                heardKind = relay->eventKind();
                heardButton = int(relay->pushButton());
            });
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(heardScale, 2.5);
    // The relay has been told first.
    QCOMPARE(heardKind, int(EventThread::EV_BUTTON_CLICK));
    QCOMPARE(heardButton, 1);
    QCOMPARE(fixture.wnd->zoomReset(), 0L);
    QCOMPARE(heardScale, 1.0);
}

void EventRelayTest::zoomOutBelowMinimumIsRefusedByTheView()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 0.035), 0L);
    QCOMPARE(fixture.wnd->zoomOut(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_OUT);
    QCOMPARE(fixture.scene()->getScale(), double(0.035f));
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(double(0.035f), double(0.035f)));
    // The shared value has taken the refused step.
    QCOMPARE(CMainWindow::s_scale, float(double(0.035f) / 1.25));
}

void EventRelayTest::zoomInHasNoUpperLimit()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(20, 10, 1, 2, 3), 1000.0), 0L);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(fixture.scene()->getScale(), 1250.0);
}

void EventRelayTest::zoomCommandsWorkInQImageMode()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    QImage picture(100, 50, QImage::Format_RGB32);
    picture.fill(qRgb(1, 2, 3));
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(fixture.scene()->getScale(), 1.25);
    QCOMPARE(fixture.wnd->zoomFitWnd(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    QCOMPARE(fixture.scene()->getScale(), double(float(621.0 / 100.0)));

    // After a clear in QImage mode the one-pixel picture still counts.
    QCOMPARE(fixture.wnd->clearBackground(), 0L);
    QCOMPARE(fixture.wnd->zoomReset(), 0L);
    QCOMPARE(fixture.scene()->getScale(), 1.0);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_ORG);
}

void EventRelayTest::relayZoomOutsideOneToFourDoesNothing()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 2.0), 0L);
    EventThread* relay = fixture.scene()->GetEventThread();
    emit relay->Zoom(0);
    emit relay->Zoom(5);
    emit relay->Zoom(-1);
    QCOMPARE(fixture.scene()->getScale(), 2.0);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    QCOMPARE(CMainWindow::s_scale, 2.0f);

    // 1 to 4 run the commands, without a click to the host.
    QSignalSpy buttons(fixture.wnd.get(), &KESImageWnd::buttonClicked);
    emit relay->Zoom(1);
    QCOMPARE(fixture.scene()->getScale(), 2.5);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    relay->sendButtonClick(ButtonToolbar::PB_ZOOM_ORG);
    QCOMPARE(fixture.scene()->getScale(), 1.0);
    QCOMPARE(buttons.count(), 0);
}

void EventRelayTest::viewZoomSignalsRunTheCommands()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(200, 100, 1, 2, 3), 2.0), 0L);
    SignalLog log(fixture.wnd.get());
    ImageCtrlView* view = fixture.view();
    emit view->ZoomInPushButtonClicked(false);
    QCOMPARE(fixture.scene()->getScale(), 2.5);
    emit view->ZoomOutPushButtonClicked(false);
    QCOMPARE(fixture.scene()->getScale(), 2.0);
    emit view->ZoomOrgPushButtonClicked(false);
    QCOMPARE(fixture.scene()->getScale(), 1.0);
    emit view->ZoomFitPushButtonClicked(false);
    QCOMPARE(fixture.scene()->getScale(), double(float(621.0 / 200.0)));
    QCOMPARE(log.log, QStringList({"buttonClicked(1)", "buttonClicked(2)", "buttonClicked(4)", "buttonClicked(3)"}));
}

void EventRelayTest::relayStartsEmpty()
{
    EventThread relay;
    QCOMPARE(relay.parent(), static_cast<QObject*>(nullptr));
    QCOMPARE(relay.eventKind(), int(EventThread::EV_NONE));
    QCOMPARE(relay.eventKind(), -1);
    QCOMPARE(relay.mousePos(), QPointF(0, 0));
    QCOMPARE(relay.shapeID(), 0LL);
    QCOMPARE(relay.mainWindowID(), 0LL);
    QCOMPARE(relay.pushButton(), ButtonToolbar::PUSHBUTTON(0));
    QCOMPARE(int(EventThread::EV_SHAPE_RESIZE), 0);
    QCOMPARE(int(EventThread::EV_SHAPE_MOVE), 1);
    QCOMPARE(int(EventThread::EV_MOUSE_MOVE), 2);
    QCOMPARE(int(EventThread::EV_MOUSE_LCLICK), 3);
    QCOMPARE(int(EventThread::EV_SHAPE_CLICK), 4);
    QCOMPARE(int(EventThread::EV_BUTTON_CLICK), 5);

    // Sends without registrations call nothing and still note the event.
    relay.sendShapeMove(3);
    QCOMPARE(relay.eventKind(), 1);
    relay.sendMouseMove(1.0f, 2.0f);
    QCOMPARE(relay.eventKind(), 2);
}

void EventRelayTest::shapeSendsStoreEmitAndCall_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("resize") << 0 << int(EventThread::EV_SHAPE_RESIZE) << QByteArray(SIGNAL(shapeResized(long)));
    QTest::newRow("move") << 1 << int(EventThread::EV_SHAPE_MOVE) << QByteArray(SIGNAL(shapeMoved(long)));
    QTest::newRow("click") << 2 << int(EventThread::EV_SHAPE_CLICK) << QByteArray(SIGNAL(shapeClicked(long)));
}

void EventRelayTest::shapeSendsStoreEmitAndCall()
{
    QFETCH(int, which);
    QFETCH(int, kind);
    QFETCH(QByteArray, signal);

    EventThread relay;
    relay.setCurrentMainWindowID(0x1234567890LL);
    QCOMPARE(relay.mainWindowID(), 0x1234567890LL);
    QStringList log;
    m_shape.log = &log;
    QSignalSpy zooms(&relay, &EventThread::Zoom);
    QSignalSpy resized(&relay, &EventThread::shapeResized);
    QSignalSpy moved(&relay, &EventThread::shapeMoved);
    QSignalSpy clicked(&relay, &EventThread::shapeClicked);
    QSignalSpy* spies[3] = {&resized, &moved, &clicked};
    QSignalSpy named(&relay, signal.constData());
    // Order between signal and callback: record the signal in the same log.
    QObject context;
    auto note = [&log](long id) { log << QString("signal %1").arg(id); };
    switch (which) {
    case 0: connect(&relay, &EventThread::shapeResized, &context, note); break;
    case 1: connect(&relay, &EventThread::shapeMoved, &context, note); break;
    default: connect(&relay, &EventThread::shapeClicked, &context, note); break;
    }

    int data = 0;
    auto registerCallback = [&relay, which](EventThread::ShapeEventFunc func, void* user) {
        switch (which) {
        case 0: relay.RegisterShapeResizeEvent(func, user); break;
        case 1: relay.RegisterShapeMoveEvent(func, user); break;
        default: relay.RegisterShapeClickEvent(func, user); break;
        }
    };
    auto send = [&relay, which](long long id) {
        switch (which) {
        case 0: relay.sendShapeResize(id); break;
        case 1: relay.sendShapeMove(id); break;
        default: relay.sendShapeClicked(id); break;
        }
    };

    registerCallback(onShapeEvent, &data);
    send(42);
    QCOMPARE(relay.eventKind(), kind);
    QCOMPARE(relay.shapeID(), 42LL);
    QCOMPARE(spies[which]->count(), 1);
    QCOMPARE(spies[which]->at(0).at(0).value<long>(), 42L);
    for (int other = 0; other < 3; ++other) {
        if (other != which)
            QCOMPARE(spies[other]->count(), 0);
    }
    QCOMPARE(named.count(), 1);
    QCOMPARE(zooms.count(), 0);
    QCOMPARE(m_shape.calls, 1);
    QCOMPARE(m_shape.windowID, 0x1234567890LL);
    QCOMPARE(m_shape.shapeID, 42L);
    QCOMPARE(m_shape.data, static_cast<void*>(&data));
    QCOMPARE(log, QStringList({"signal 42", "shape callback"}));

    // The other shape callbacks are not called by this send.
    registerCallback(nullptr, nullptr);
    send(0);
    QCOMPARE(relay.shapeID(), 0LL);
    QCOMPARE(spies[which]->count(), 2);
    QCOMPARE(m_shape.calls, 1);

    // The mouse callbacks are not called by a shape send.
    relay.RegisterMouseMoveEvent(onMouseEvent, nullptr);
    relay.RegisterMouseLClickEvent(onMouseEvent, nullptr);
    send(5);
    QCOMPARE(m_mouse.calls, 0);
}

void EventRelayTest::mouseSendsStoreAndCallWithoutSignal_data()
{
    QTest::addColumn<bool>("click");
    QTest::addColumn<int>("kind");
    QTest::newRow("move") << false << int(EventThread::EV_MOUSE_MOVE);
    QTest::newRow("left click") << true << int(EventThread::EV_MOUSE_LCLICK);
}

void EventRelayTest::mouseSendsStoreAndCallWithoutSignal()
{
    QFETCH(bool, click);
    QFETCH(int, kind);
    EventThread relay;
    relay.setCurrentMainWindowID(77);
    QSignalSpy zooms(&relay, &EventThread::Zoom);
    QSignalSpy resized(&relay, &EventThread::shapeResized);
    QSignalSpy moved(&relay, &EventThread::shapeMoved);
    QSignalSpy clicked(&relay, &EventThread::shapeClicked);
    int data = 0;
    if (click)
        relay.RegisterMouseLClickEvent(onMouseEvent, &data);
    else
        relay.RegisterMouseMoveEvent(onMouseEvent, &data);
    relay.RegisterShapeMoveEvent(onShapeEvent, nullptr);
    relay.RegisterShapeResizeEvent(onShapeEvent, nullptr);
    relay.RegisterShapeClickEvent(onShapeEvent, nullptr);

    auto send = [&relay, click](float x, float y) {
        if (click)
            relay.sendMosueLClick(x, y);
        else
            relay.sendMouseMove(x, y);
    };
    send(-3.25f, 1e6f);
    QCOMPARE(relay.eventKind(), kind);
    QCOMPARE(relay.mousePos(), QPointF(-3.25, 1e6));
    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(m_mouse.windowID, 77LL);
    QCOMPARE(m_mouse.x, -3.25f);
    QCOMPARE(m_mouse.y, 1e6f);
    QCOMPARE(m_mouse.data, static_cast<void*>(&data));
    QCOMPARE(zooms.count() + resized.count() + moved.count() + clicked.count(), 0);
    QCOMPARE(m_shape.calls, 0);

    // The other mouse callback is not called; a null one removes this one.
    if (click) {
        relay.sendMouseMove(1, 1);
        relay.RegisterMouseLClickEvent(nullptr, nullptr);
    } else {
        relay.sendMosueLClick(1, 1);
        relay.RegisterMouseMoveEvent(nullptr, nullptr);
    }
    QCOMPARE(m_mouse.calls, 1);
    send(4.0f, 5.0f);
    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(relay.mousePos(), QPointF(4, 5));
}

void EventRelayTest::buttonClickEmitsZoomOnlyForZoomButtons_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("zooms");
    for (int button = 0; button <= 12; ++button)
        QTest::newRow(qPrintable(QString("button %1").arg(button))) << button << (button >= 1 && button <= 4);
}

void EventRelayTest::buttonClickEmitsZoomOnlyForZoomButtons()
{
    QFETCH(int, button);
    QFETCH(bool, zooms);
    EventThread relay;
    QSignalSpy zoom(&relay, &EventThread::Zoom);
    QSignalSpy resized(&relay, &EventThread::shapeResized);
    QSignalSpy moved(&relay, &EventThread::shapeMoved);
    QSignalSpy clicked(&relay, &EventThread::shapeClicked);
    relay.RegisterShapeClickEvent(onShapeEvent, nullptr);
    relay.RegisterMouseLClickEvent(onMouseEvent, nullptr);
    relay.sendButtonClick(ButtonToolbar::PUSHBUTTON(button));
    QCOMPARE(relay.eventKind(), int(EventThread::EV_BUTTON_CLICK));
    QCOMPARE(int(relay.pushButton()), button);
    QCOMPARE(zoom.count(), zooms ? 1 : 0);
    if (zooms)
        QCOMPARE(zoom.at(0).at(0).toInt(), button);
    QCOMPARE(resized.count() + moved.count() + clicked.count(), 0);
    QCOMPARE(m_shape.calls + m_mouse.calls, 0);
}

void EventRelayTest::newRegistrationReplacesTheOld()
{
    EventThread relay;
    int first = 1;
    int second = 2;
    relay.RegisterMouseMoveEvent(onOtherMouseEvent, &first);
    relay.RegisterMouseMoveEvent(onMouseEvent, &second);
    relay.sendMouseMove(1, 2);
    QCOMPARE(m_mouse.calls, 1);
    QCOMPARE(m_mouse.data, static_cast<void*>(&second));

    relay.RegisterShapeResizeEvent(onOtherShapeEvent, &first);
    relay.RegisterShapeResizeEvent(onShapeEvent, &second);
    relay.sendShapeResize(9);
    QCOMPARE(m_shape.calls, 1);
    QCOMPARE(m_shape.data, static_cast<void*>(&second));

    relay.RegisterShapeClickEvent(onOtherShapeEvent, &first);
    relay.RegisterShapeClickEvent(onShapeEvent, &second);
    relay.sendShapeClicked(10);
    QCOMPARE(m_shape.calls, 2);

    relay.RegisterShapeMoveEvent(onOtherShapeEvent, &first);
    relay.RegisterShapeMoveEvent(onShapeEvent, &second);
    relay.sendShapeMove(11);
    QCOMPARE(m_shape.calls, 3);
    QCOMPARE(m_shape.shapeID, 11L);

    relay.RegisterMouseLClickEvent(onOtherMouseEvent, &first);
    relay.RegisterMouseLClickEvent(onMouseEvent, &second);
    relay.sendMosueLClick(3, 4);
    QCOMPARE(m_mouse.calls, 2);
    QCOMPARE(m_mouse.x, 3.0f);
}

QTEST_MAIN(EventRelayTest)
#include "tst_eventrelay.moc"
