// A live inspection station under load: a host's worker thread runs the
// frame cycle setRunBackground, displayRunShapes, repaint() as fast as the
// window takes the frames, pictures of changing size and type, while on the
// GUI thread the operator zooms, pans, resizes the host, moves the reticle and
// edits a region of interest with the mouse. Every frame must be shown, the
// operator's edits must stick, and neither thread may wait for ever.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odshape.h"
#include "testkit.h"

#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"
#include "VorRegion.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScrollBar>
#include <QThread>

#include <opencv2/core.hpp>

#include <algorithm>
#include <atomic>
#include <vector>

namespace {

// How many frames the worker shows, and how many of them are large.
constexpr int kFrameCount = 10000;
constexpr int kLargeFrameEvery = 2000;
const QSize kLargeFrame(1600, 1200);
// Small frames range over these sizes.
const QSize kSmallestFrame(16, 16);
const QSize kLargestSmallFrame(320, 240);

// The last frame: one colour, so that a grab shows whether it is on show.
const QSize kLastFrame(64, 48);
const QRgb kLastFrameColour = qRgb(200, 40, 90);
// A pixel of the last frame that no shape covers.
const QPointF kLastFrameProbe(50.5, 40.5);

// A run's overlays lie within this many pixels of a frame's top-left corner
// (less than the smallest frame), and carry a region once in so many frames.
constexpr int kOverlayCorner = 8;
constexpr int kRegionEvery = 50;
// The operator stops emptying the image layer this many frames before the
// end, so that the last frame's records are still there to be listed.
constexpr int kKeepRecordsFrames = 100;

// The operator acts once in so many frames.
constexpr int kFramesPerOperatorStep = 20;
// Without a new frame for this long, the two threads are taken to wait on
// each other.
constexpr int kStallLimitMs = 60000;
// How often the GUI thread wakes to look at the worker's progress.
constexpr int kWatchIntervalMs = 50;

// The two sizes the host widget takes in turn.
const QSize kHostSizes[] = {QSize(360, 280), QSize(420, 320)};

// The region of interest the operator edits: its top-left corner stays, its
// bottom-right corner is dragged to each target in turn. All of it lies inside
// the smallest frame.
const QPointF kRoiTopLeft(2, 2);
const QPointF kRoiBottomRight(12, 12);
const QPointF kRoiCornerTargets[] = {QPointF(14, 13), QPointF(11, 12), QPointF(15, 15), QPointF(13, 11)};
// The zoom at which the operator edits it.
constexpr double kEditZoom = 4.0;
// How far from it, in viewport pixels, the reticle is pressed.
constexpr int kRoiMargin = 40;

// The kinds of frame a camera delivers, in turn.
enum FrameKind { Grey8, Colour8, Grey16, Colour16, FrameKindCount };

int cvTypeOf(FrameKind kind)
{
    switch (kind) {
    case Grey8: return CV_8UC1;
    case Colour8: return CV_8UC3;
    case Grey16: return CV_16UC1;
    default: return CV_16UC3;
    }
}

// Frame i of the run: its kind by turn, its size stepping through the small
// range, now and then a large one, and the one colour of the last frame.
VorImage frameAt(int index)
{
    if (index == kFrameCount - 1)
        return Kit::colourPicture(kLastFrame.width(), kLastFrame.height(), qRed(kLastFrameColour),
                                  qGreen(kLastFrameColour), qBlue(kLastFrameColour));
    const FrameKind kind = FrameKind(index % FrameKindCount);
    QSize size(kSmallestFrame.width() + (index * 37) % (kLargestSmallFrame.width() - kSmallestFrame.width() + 1),
               kSmallestFrame.height() + (index * 53) % (kLargestSmallFrame.height() - kSmallestFrame.height() + 1));
    if (index % kLargeFrameEvery == kLargeFrameEvery - 1)
        size = kLargeFrame;
    const double level = (kind == Grey16 || kind == Colour16) ? double((index * 977) % 65536) : double(index % 256);
    return VorImage(cv::Mat(size.height(), size.width(), cvTypeOf(kind), cv::Scalar::all(level)));
}

QSize sizeOf(const VorImage& frame)
{
    return QSize(frame.Width(), frame.Height());
}

// The overlays of frame i, in a corner of every frame and away from the
// probe of the last frame: always a rectangle, by turns a line, a point and a
// text, now and then a region; the last frame has all of them. Counts the
// records that the image layer makes of them (a region makes none).
VorOverlayPath overlaysAt(int index, int* records)
{
    const bool last = index == kFrameCount - 1;
    const double step = index % 4;
    VorOverlayPath path;
    *records = 0;
    VorOverlay rect;
    rect.GenRect1(VorPoint(1, 1), VorPoint(4 + step, 7 - step));
    rect.SetPen(0, 255, 0, 1);
    path.Append(rect);
    ++*records;
    if (last || index % 2 == 0) {
        VorOverlay line;
        line.GenLine(VorPoint(0, step), VorPoint(kOverlayCorner, kOverlayCorner - step));
        line.SetPen(255, 0, 0, 2);
        path.Append(line);
        ++*records;
    }
    if (last || index % 3 == 0) {
        VorOverlay point;
        point.GenPoint(VorPoint(2 + step, 5));
        path.Append(point);
        ++*records;
    }
    if (last || index % 5 == 0) {
        VorOverlay text;
        text.GenText(VorPoint(2, 2), QByteArray::number(index % 100).constData(), VorFont("Sans", 6));
        path.Append(text);
        ++*records;
    }
    if (last || index % kRegionEvery == 0) {
        std::vector<VorRegion::Run> runs;
        for (int row = 1; row < kOverlayCorner; ++row)
            runs.push_back({row, 1, 3 + index % 4});
        VorRegion region;
        region.SetRuns(runs);
        VorOverlay overlay;
        overlay.GenRegion(region);
        path.Append(overlay);
    }
    return path;
}

// The host's worker: the frame cycle, noting what each repaint() answered and
// whether the frame was the one on show when it returned.
class FrameWorker : public QThread
{
public:
    FrameWorker(KESImageWnd* wnd, ImageLayer* layer)
        : m_wnd(wnd)
        , m_layer(layer)
    {
    }

    std::atomic<int> framesDone{0};
    std::atomic<int> failedRepaints{0};
    std::atomic<int> framesNotShown{0};
    std::atomic<bool> stop{false};
    // The ids the last frame's overlays took, set before the run ends.
    QList<long> lastFrameIds;
    int lastFrameRecords = 0;

protected:
    void run() override
    {
        for (int i = 0; i < kFrameCount && !stop; ++i) {
            VorImage frame = frameAt(i);
            m_wnd->setRunBackground(frame);
            int records = 0;
            VorOverlayPath overlays = overlaysAt(i, &records);
            // Ids come from the one counter; the GUI thread makes none meanwhile.
            const long firstId = ODShape::s_ID;
            m_wnd->displayRunShapes(overlays);
            if (i == kFrameCount - 1) {
                lastFrameRecords = records;
                for (long id = firstId; id < ODShape::s_ID; ++id)
                    lastFrameIds.append(id);
            }
            if (m_wnd->repaint() != 0)
                ++failedRepaints;
            // repaint() has returned: the window has taken the frame over.
            if (m_layer->GetQImage()->size() != sizeOf(frame))
                ++framesNotShown;
            ++framesDone;
        }
    }

private:
    KESImageWnd* m_wnd;
    ImageLayer* m_layer;
};

// The reticle's centre in viewport pixels, as the window reports it.
QPoint reticlePoint(KESImageWnd* wnd)
{
    QString info;
    wnd->getCrossLineInfo(info);
    const QStringList parts =
        QJsonDocument::fromJson(info.toUtf8()).object().value("point").toString().split(QLatin1Char(','));
    return parts.size() == 2 ? QPoint(parts.at(0).toInt(), parts.at(1).toInt()) : QPoint(-1, -1);
}

VorROI rectangleROI(const QPointF& topLeft, const QPointF& bottomRight)
{
    VorROI roi;
    roi.GenRect1(VorPoint(topLeft.x(), topLeft.y()), VorPoint(bottomRight.x(), bottomRight.y()));
    return roi;
}

// What the operator does between frames, one step at a time and in turn.
enum OperatorStep {
    WheelZoom,
    FacadeZoom,
    Pan,
    ResizeHost,
    SetReticle,
    DragReticle,
    DragRoiCorner,
    ClearImageLayer,
    OperatorStepCount
};

} // namespace

class tst_RunStress : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void workerFramesAndOperatorEditsGoOnTogether();

private:
    void operatorStep(int step, int frames);
    void wheelZoom(int step);
    void facadeZoom(int step);
    void pan(int step);
    void resizeHost(int step);
    void setReticle(int step);
    void dragReticle(int step);
    void dragRoiCorner(int step);
    void clearImageLayer(int frames);
    // The region of interest on the screen, with a margin, in viewport pixels.
    QRect roiOnScreen() const;
    // A viewport point outside roiOnScreen(), near one of the viewport's
    // corners.
    QPoint awayFromRoi(int step) const;

    EmbeddedWindow* m_window = nullptr;
    long m_roiId = -1;
    QPointF m_roiCorner;
};

void tst_RunStress::init()
{
    CMainWindow::s_scale = 1.0f;
}

void tst_RunStress::workerFramesAndOperatorEditsGoOnTogether()
{
    EmbeddedWindow window(kHostSizes[0]);
    QCOMPARE(window.created, 0L);
    m_window = &window;
    window.wnd->move(0, 0, kHostSizes[0].width(), kHostSizes[0].height());
    // A first picture, so that the shape layer takes the region of interest.
    QCOMPARE(window.setPicture(frameAt(0)), 0L);
    VorROI roi = rectangleROI(kRoiTopLeft, kRoiBottomRight);
    m_roiId = window.wnd->displayROI(roi);
    QVERIFY(m_roiId >= 0);
    m_roiCorner = kRoiBottomRight;
    QCOMPARE(window.wnd->setCrossLineInfo("{\"visible\":true,\"mode\":0}"), 0L);

    FrameWorker worker(window.wnd.get(), window.imageLayer());
    bool finished = false;
    connect(&worker, &QThread::finished, this, [&finished] { finished = true; });
    // Wakes the GUI thread now and then, also when no frame arrives.
    QTimer watch;
    watch.start(kWatchIntervalMs);

    worker.start();
    int nextStepAt = kFramesPerOperatorStep;
    int step = 0;
    int lastFrames = 0;
    QDeadlineTimer stall(kStallLimitMs);
    bool stalled = false;
    while (!finished) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const int frames = worker.framesDone;
        if (frames != lastFrames) {
            lastFrames = frames;
            stall.setRemainingTime(kStallLimitMs);
        } else if (stall.hasExpired() && !stalled) {
            stalled = true;
            break;
        }
        if (!worker.stop && frames >= nextStepAt) {
            nextStepAt += kFramesPerOperatorStep;
            operatorStep(step++, frames);
            // A failed check ends the run: the worker stops after its frame,
            // and the loop keeps serving its repaint() until then.
            if (QTest::currentTestFailed())
                worker.stop = true;
        }
    }
    if (stalled) {
        // The threads wait on each other: nothing more can be checked, and
        // the worker cannot be ended.
        QFAIL(qPrintable(QString("no frame for %1 ms after frame %2").arg(kStallLimitMs).arg(lastFrames)));
    }
    QVERIFY(worker.wait(kStallLimitMs));
    if (QTest::currentTestFailed())
        return;

    QCOMPARE(worker.framesDone.load(), kFrameCount);
    QCOMPARE(worker.failedRepaints.load(), 0);
    QCOMPARE(worker.framesNotShown.load(), 0);
    QVERIFY2(step >= OperatorStepCount, qPrintable(QString("only %1 operator steps").arg(step)));

    // The last frame is on show: the whole picture fitted into the view, with
    // the reticle out of the way.
    QCOMPARE(window.imageLayer()->GetQImage()->size(), kLastFrame);
    QCOMPARE(window.wnd->setCrossLineInfo("{\"visible\":false}"), 0L);
    QCOMPARE(window.wnd->zoomFitWnd(), 0L);
    QCOMPARE(Kit::viewportColourAt(window.view(), kLastFrameProbe), kLastFrameColour);

    // The image layer lists the records of the last frame's overlays.
    QCOMPARE(worker.lastFrameIds.size(), worker.lastFrameRecords);
    const QList<long> imageIds = window.wnd->getShapeIDS(KESImageWnd::LAYER_IMAGE);
    for (long id : worker.lastFrameIds)
        QVERIFY2(imageIds.contains(id), qPrintable(QString("id %1 not listed").arg(id)));

    // The region of interest reads back where the operator left it.
    VorROI back;
    QCOMPARE(window.wnd->getROIShape(m_roiId, &back), 0L);
    VorPoint topLeft, bottomRight;
    QVERIFY(back.GetRect1(&topLeft, &bottomRight));
    QCOMPARE(QPointF(topLeft.x, topLeft.y), kRoiTopLeft);
    QCOMPARE(QPointF(bottomRight.x, bottomRight.y), m_roiCorner);
    m_window = nullptr;
}

void tst_RunStress::operatorStep(int step, int frames)
{
    const int round = step / OperatorStepCount;
    switch (OperatorStep(step % OperatorStepCount)) {
    case WheelZoom: wheelZoom(round); break;
    case FacadeZoom: facadeZoom(round); break;
    case Pan: pan(round); break;
    case ResizeHost: resizeHost(round); break;
    case SetReticle: setReticle(round); break;
    case DragReticle: dragReticle(round); break;
    case DragRoiCorner: dragRoiCorner(round); break;
    case ClearImageLayer: clearImageLayer(frames); break;
    default: break;
    }
}

void tst_RunStress::wheelZoom(int round)
{
    ImageCtrlView* view = m_window->view();
    const QPoint centre = view->viewport()->rect().center();
    // Up and down in turn, so that the zoom stays in a sensible range.
    Kit::wheelAtViewport(view, centre, round % 2 == 0 ? Kit::kWheelNotch : -Kit::kWheelNotch);
}

void tst_RunStress::facadeZoom(int round)
{
    KESImageWnd* wnd = m_window->wnd.get();
    switch (round % 5) {
    case 0: QCOMPARE(wnd->zoomIn(), 0L); break;
    case 1: QCOMPARE(wnd->zoomOut(), 0L); break;
    case 2: QCOMPARE(wnd->zoomFitWnd(), 0L); break;
    case 3: QCOMPARE(wnd->zoomReset(), 0L); break;
    default: QCOMPARE(wnd->zoom(2.5), 0L); break;
    }
}

void tst_RunStress::pan(int round)
{
    ImageCtrlView* view = m_window->view();
    const QPoint from = view->viewport()->rect().center();
    const QPoint to = from + (round % 2 == 0 ? QPoint(-30, -20) : QPoint(30, 20));
    Kit::pressAtViewport(view, from, Qt::RightButton);
    Kit::moveToViewport(view, to, Qt::RightButton);
    Kit::releaseAtViewport(view, to, Qt::RightButton);
}

void tst_RunStress::resizeHost(int round)
{
    const QSize size = kHostSizes[(round + 1) % 2];
    m_window->host->resize(size);
    QCOMPARE(m_window->wnd->move(0, 0, size.width(), size.height()), 0L);
    QCOMPARE(m_window->window()->size(), size);
}

void tst_RunStress::setReticle(int round)
{
    const QPoint point = awayFromRoi(round);
    const QString info = QString("{\"visible\":true,\"mode\":0,\"point\":\"%1,%2\"}").arg(point.x()).arg(point.y());
    QCOMPARE(m_window->wnd->setCrossLineInfo(info), 0L);
    QCOMPARE(reticlePoint(m_window->wnd.get()), point);
}

void tst_RunStress::dragReticle(int round)
{
    ImageCtrlView* view = m_window->view();
    // The press reaches the tools as well: where frames of another size have
    // moved the region of interest under the reticle, the reticle moves first.
    QPoint from = reticlePoint(m_window->wnd.get());
    if (roiOnScreen().contains(from)) {
        setReticle(round);
        from = reticlePoint(m_window->wnd.get());
    }
    const QPoint to = awayFromRoi(round + 1);
    Kit::pressAtViewport(view, from);
    Kit::moveToViewport(view, to, Qt::LeftButton);
    Kit::releaseAtViewport(view, to);
    QCOMPARE(reticlePoint(m_window->wnd.get()), to);
}

void tst_RunStress::dragRoiCorner(int round)
{
    ImageCtrlView* view = m_window->view();
    QCOMPARE(m_window->wnd->zoom(kEditZoom), 0L);
    view->centerOn((kRoiTopLeft + m_roiCorner) / 2);
    const QPointF target = kRoiCornerTargets[round % (sizeof(kRoiCornerTargets) / sizeof(kRoiCornerTargets[0]))];
    // Select the rectangle by its body, then drag its bottom-right handle.
    Kit::clickAt(view, (kRoiTopLeft + m_roiCorner) / 2);
    Kit::dragAlong(view, m_roiCorner, target);
    m_roiCorner = Kit::seenAt(view, target);

    VorROI back;
    QCOMPARE(m_window->wnd->getROIShape(m_roiId, &back), 0L);
    VorPoint topLeft, bottomRight;
    QVERIFY(back.GetRect1(&topLeft, &bottomRight));
    QCOMPARE(QPointF(topLeft.x, topLeft.y), kRoiTopLeft);
    QCOMPARE(QPointF(bottomRight.x, bottomRight.y), m_roiCorner);
}

void tst_RunStress::clearImageLayer(int frames)
{
    // A host empties the image layer of the records of earlier frames now and
    // then, while the worker goes on adding those of the next.
    if (frames >= kFrameCount - kKeepRecordsFrames)
        return;
    QCOMPARE(m_window->wnd->clearLayer(KESImageWnd::LAYER_IMAGE), 0L);
}

QRect tst_RunStress::roiOnScreen() const
{
    ImageCtrlView* view = m_window->view();
    return view->mapFromScene(QRectF(kRoiTopLeft, m_roiCorner))
        .boundingRect()
        .adjusted(-kRoiMargin, -kRoiMargin, kRoiMargin, kRoiMargin);
}

QPoint tst_RunStress::awayFromRoi(int step) const
{
    const QRect viewport = m_window->view()->viewport()->rect();
    const QRect roi = roiOnScreen();
    const QPoint corners[] = {
        viewport.topLeft() + QPoint(kRoiMargin, kRoiMargin),
        viewport.topRight() + QPoint(-kRoiMargin, kRoiMargin),
        viewport.bottomRight() + QPoint(-kRoiMargin, -kRoiMargin),
        viewport.bottomLeft() + QPoint(kRoiMargin, -kRoiMargin),
    };
    for (int i = 0; i < 4; ++i) {
        const QPoint candidate = corners[(step + i) % 4];
        if (!roi.contains(candidate))
            return candidate;
    }
    return corners[step % 4];
}

QTEST_MAIN(tst_RunStress)
#include "tst_runstress.moc"
