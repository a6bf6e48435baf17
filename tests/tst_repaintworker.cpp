// repaint() called from a worker thread: the call waits until the window's
// thread has taken over the queued picture and painted, while that thread keeps
// running its event loop.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "testkit.h"

#include <QProcess>
#include <QThread>

#include <atomic>
#include <cstdio>

namespace {

constexpr int kPictureWidth = 60;
constexpr int kPictureHeight = 40;
const QPointF kPictureCentre(kPictureWidth / 2.0, kPictureHeight / 2.0);

VorImage colourPicture(int red, int green, int blue)
{
    return Kit::colourPicture(kPictureWidth, kPictureHeight, red, green, blue);
}

// Notes whether the viewport has been painted while the layer showed a picture
// of the given colour.
class PaintWatcher : public QObject
{
public:
    PaintWatcher(QWidget* viewport, ImageLayer* layer, QRgb colour)
        : m_layer(layer)
        , m_colour(colour)
    {
        viewport->installEventFilter(this);
    }

    std::atomic<int> paints{0};
    std::atomic<bool> paintedColour{false};

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            const QImage* image = m_layer->GetQImage();
            if (image->width() == kPictureWidth
                && QColor(image->pixel(kPictureWidth / 2, kPictureHeight / 2)).rgb() == m_colour)
                paintedColour = true;
        }
        return false;
    }

private:
    ImageLayer* m_layer;
    QRgb m_colour;
};

// Delivers the window's queued calls itself, so as to note what has been
// painted at the moment the call ends, before the waiting worker is released.
class CallWatcher : public QObject
{
public:
    CallWatcher(QObject* window, PaintWatcher* paints)
        : m_paints(paints)
    {
        window->installEventFilter(this);
    }

    int calls = 0;
    bool paintedAtCallEnd = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::MetaCall)
            return false;
        watched->event(event);
        ++calls;
        paintedAtCallEnd = m_paints->paintedColour;
        return true;
    }

private:
    PaintWatcher* m_paints;
};

// A host's worker: calls repaint() and notes what holds at the moment it
// returns.
class RepaintWorker : public QThread
{
public:
    RepaintWorker(KESImageWnd* wnd, ImageLayer* layer, PaintWatcher* watcher, int calls = 1)
        : m_wnd(wnd)
        , m_layer(layer)
        , m_watcher(watcher)
        , m_calls(calls)
    {
    }

    std::atomic<bool> done{false};
    long result = 12345;
    long lastResult = 12345;
    int pendingAtReturn = -1;
    QRgb shownAtReturn = 0;
    bool paintedAtReturn = false;

protected:
    void run() override
    {
        result = m_wnd->repaint();
        lastResult = result;
        for (int i = 1; i < m_calls; ++i)
            lastResult = m_wnd->repaint();
        if (m_layer) {
            pendingAtReturn = m_layer->pendingCount();
            const QImage* image = m_layer->GetQImage();
            if (image->width() == kPictureWidth)
                shownAtReturn = QColor(image->pixel(kPictureWidth / 2, kPictureHeight / 2)).rgb();
        }
        if (m_watcher)
            paintedAtReturn = m_watcher->paintedColour;
        done = true;
    }

private:
    KESImageWnd* m_wnd;
    ImageLayer* m_layer;
    PaintWatcher* m_watcher;
    int m_calls;
};

using Kit::viewportColourAt;

// A host window showing a red picture, which the tests queue others behind.
class RedWindow : public EmbeddedWindow
{
public:
    RedWindow()
        : shownRed(setPicture(colourPicture(255, 0, 0)))
    {
    }

    long shownRed;
};

} // namespace

class RepaintWorkerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void repaintFromWorkerReturnsOnceThePictureIsShown();
    void repaintWaitsWhileTheWindowThreadIsBusy();
    void repaintWithNothingQueuedLeavesThePicture();
    void repaintWithoutWindowReturnsAtOnce();
    void repaintOnTheWindowThreadReportsADeadLockAndNeverReturns();
};

void RepaintWorkerTest::init()
{
    CMainWindow::s_scale = 1.0f;
}

void RepaintWorkerTest::repaintFromWorkerReturnsOnceThePictureIsShown()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    ImageLayer* layer = fixture.imageLayer();
    QCoreApplication::processEvents();
    QCOMPARE(viewportColourAt(fixture.view(), kPictureCentre), qRgb(255, 0, 0));

    // The window's thread queues the next picture without taking it over.
    VorImage green = colourPicture(0, 255, 0);
    QVERIFY(layer->LoadVorImage(&green));
    QCOMPARE(layer->pendingCount(), 1);
    QCOMPARE(QColor(layer->GetQImage()->pixel(5, 5)).rgb(), qRgb(255, 0, 0));
    QCOMPARE(viewportColourAt(fixture.view(), kPictureCentre), qRgb(255, 0, 0));

    PaintWatcher watcher(fixture.view()->viewport(), layer, qRgb(0, 255, 0));
    CallWatcher call(fixture.window(), &watcher);
    RepaintWorker worker(fixture.wnd.get(), layer, &watcher);
    worker.start();
    QTRY_VERIFY_WITH_TIMEOUT(worker.done, 5000);
    QVERIFY(worker.wait(5000));

    QCOMPARE(worker.result, 0L);
    QCOMPARE(worker.pendingAtReturn, 0);
    QCOMPARE(worker.shownAtReturn, qRgb(0, 255, 0));
    QVERIFY(worker.paintedAtReturn);
    // The viewport was painted with the new picture inside the window's call.
    QCOMPARE(call.calls, 1);
    QVERIFY(call.paintedAtCallEnd);
    QCOMPARE(viewportColourAt(fixture.view(), kPictureCentre), qRgb(0, 255, 0));
}

void RepaintWorkerTest::repaintWaitsWhileTheWindowThreadIsBusy()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    ImageLayer* layer = fixture.imageLayer();
    VorImage blue = colourPicture(0, 0, 255);
    QVERIFY(layer->LoadVorImage(&blue));

    RepaintWorker worker(fixture.wnd.get(), layer, nullptr);
    worker.start();
    // The window's thread does not run its loop while it waits for the
    // worker: the worker cannot finish, and the picture stays queued.
    QVERIFY(!worker.wait(150));
    QVERIFY(!worker.done);
    QCOMPARE(layer->pendingCount(), 1);

    QTRY_VERIFY_WITH_TIMEOUT(worker.done, 5000);
    QVERIFY(worker.wait(5000));
    QCOMPARE(worker.result, 0L);
    QCOMPARE(worker.pendingAtReturn, 0);
    QCOMPARE(worker.shownAtReturn, qRgb(0, 0, 255));
    QCOMPARE(viewportColourAt(fixture.view(), kPictureCentre), qRgb(0, 0, 255));
}

void RepaintWorkerTest::repaintWithNothingQueuedLeavesThePicture()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    ImageLayer* layer = fixture.imageLayer();
    QCOMPARE(fixture.wnd->zoom(2.0), 0L);

    RepaintWorker worker(fixture.wnd.get(), layer, nullptr, 2);
    worker.start();
    QTRY_VERIFY_WITH_TIMEOUT(worker.done, 5000);
    QVERIFY(worker.wait(5000));
    QCOMPARE(worker.result, 0L);
    QCOMPARE(worker.lastResult, 0L);
    QCOMPARE(worker.pendingAtReturn, 0);
    QCOMPARE(worker.shownAtReturn, qRgb(255, 0, 0));
    // An empty queue changes nothing, not even the scale.
    QCOMPARE(fixture.scene()->getScale(), 2.0);
    QCOMPARE(viewportColourAt(fixture.view(), kPictureCentre), qRgb(255, 0, 0));
}

void RepaintWorkerTest::repaintWithoutWindowReturnsAtOnce()
{
    KESImageWnd wnd;
    RepaintWorker worker(&wnd, nullptr, nullptr);
    worker.start();
    // No window: nothing crosses threads, so waiting here cannot block.
    QVERIFY(worker.wait(5000));
    QVERIFY(worker.done);
    QCOMPARE(worker.result, -1L);
}

// repaint() on the window's own thread: the blocking queued call would wait for
// the thread that is making it, so Qt reports a dead lock and the call never
// returns. The call runs in a child process of this binary, which is left
// hanging and then killed.

namespace {

// The argument that makes this binary the child that calls repaint() on the
// window's thread.
const char* const kRepaintOnWindowThreadArgument = "--repaint-on-the-window-thread";
// What the child prints just before the call and after it.
const QByteArray kCallingMarker = "calling repaint on the window thread";
const QByteArray kReturnedMarker = "repaint returned";
// Qt's report of a blocking queued call within one thread.
const QByteArray kDeadLockReport = "Dead lock detected while activating a BlockingQueuedConnection";

// Time for the child to start, make its window and reach the call, also in a
// sanitizer build on a loaded machine.
constexpr int kChildStartTimeoutMs = 60000;
// How long the child must stay inside the call after Qt's report.
constexpr int kHangingMs = 3000;

// The child: a host widget with a window and a picture, then repaint() from
// the window's thread.
int repaintOnTheWindowThread()
{
    QWidget host;
    host.resize(320, 240);
    host.show();
    KESImageWnd wnd;
    if (wnd.create(reinterpret_cast<qlonglong>(&host)) != 0)
        return 2;
    VorImage picture = colourPicture(255, 0, 0);
    wnd.setBackground(picture);
    QCoreApplication::processEvents();

    std::printf("%s\n", kCallingMarker.constData());
    std::fflush(stdout);
    const long result = wnd.repaint();
    std::printf("%s %ld\n", kReturnedMarker.constData(), result);
    std::fflush(stdout);
    wnd.destory();
    return 0;
}

} // namespace

void RepaintWorkerTest::repaintOnTheWindowThreadReportsADeadLockAndNeverReturns()
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    child.setProcessEnvironment(environment);
    QByteArray output;
    QByteArray errors;
    connect(&child, &QProcess::readyReadStandardOutput, &child, [&] { output += child.readAllStandardOutput(); });
    connect(&child, &QProcess::readyReadStandardError, &child, [&] { errors += child.readAllStandardError(); });

    child.start(QCoreApplication::applicationFilePath(), {QString(kRepaintOnWindowThreadArgument)});
    QVERIFY2(child.waitForStarted(kChildStartTimeoutMs), qPrintable(child.errorString()));
    // The child reaches the call and Qt reports the dead lock, unless the
    // child ends first.
    QTRY_VERIFY_WITH_TIMEOUT((output.contains(kCallingMarker) && errors.contains(kDeadLockReport))
                                 || child.state() == QProcess::NotRunning,
                             kChildStartTimeoutMs);
    QVERIFY2(output.contains(kCallingMarker), qPrintable(output + errors));
    QVERIFY2(errors.contains(kDeadLockReport), errors.constData());

    // Still inside the call: the bounded wait for the child's end runs out.
    QVERIFY2(!child.waitForFinished(kHangingMs), qPrintable(output));
    QCOMPARE(child.state(), QProcess::Running);
    child.kill();
    QVERIFY(child.waitForFinished(kChildStartTimeoutMs));
    output += child.readAllStandardOutput();
    QVERIFY2(!output.contains(kReturnedMarker), output.constData());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
}

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    if (app.arguments().contains(QString(kRepaintOnWindowThreadArgument)))
        return repaintOnTheWindowThread();
    RepaintWorkerTest test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_repaintworker.moc"
