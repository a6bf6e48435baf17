// The worker's picture path through the facade: setRunBackground queues a
// picture from a worker thread, and only repaint() (the window's Update(true))
// puts it on screen. What shows is checked on the grabbed viewport.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "testkit.h"

#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

namespace {

constexpr int kPictureWidth = 60;
constexpr int kPictureHeight = 40;
const QPointF kPictureCentre(kPictureWidth / 2.0, kPictureHeight / 2.0);

constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kGreen = 0xff00ff00;
constexpr QRgb kBlue = 0xff0000ff;

constexpr int kWorkerTimeoutMs = 10000;
constexpr double kCellZoom = 4.0;

VorImage colourPicture(QRgb colour, int width = kPictureWidth, int height = kPictureHeight)
{
    return Kit::colourPicture(width, height, qRed(colour), qGreen(colour), qBlue(colour));
}

// Runs a host's worker to its end while the window's thread keeps its event
// loop going, as a repaint() from the worker needs.
bool runOnWorker(const std::function<void()>& work)
{
    // The worker's end is told through an atomic: QThread's own ordering of
    // it lies inside Qt, where ThreadSanitizer cannot see it.
    std::atomic<bool> done{false};
    std::unique_ptr<QThread> worker(QThread::create([&] {
        work();
        done = true;
    }));
    worker->start();
    bool finished = false;
    [&] { QTRY_VERIFY_WITH_TIMEOUT((finished = done), kWorkerTimeoutMs); }();
    return finished && worker->wait(kWorkerTimeoutMs);
}

// Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    std::atomic<int> paints{0};

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

// The fit of a picture of the given size into the view, as a repaint computes it.
double fitOf(ImageCtrlScene* scene, QSize picture)
{
    double viewWidth = 0.0;
    double viewHeight = 0.0;
    scene->getViewSize(viewWidth, viewHeight);
    const double rw = viewWidth / picture.width();
    const double rh = viewHeight / picture.height();
    return rw - rh > double(0.000001f) ? rh : rw;
}

// A host window showing a red picture through setBackground.
class RedWindow : public EmbeddedWindow
{
public:
    RedWindow()
        : shownRed(setPicture(colourPicture(kRed)))
    {
    }

    QRgb colourAtCentre() const { return Kit::viewportColourAt(view(), kPictureCentre); }

    long shownRed;
};

} // namespace

class RunPathTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void queuedPictureStaysOffScreenUntilRepaint();
    void resizeDoesNotTakeTheQueuedPicture();
    void twoQueuedPicturesAndOneRepaintShowTheSecond();
    void qImageBackgroundKeepsItsFlagWhileRepaintFitsTheNewPicture();
    void zoomedInScaleIsKeptAndOnlyTheSceneRectFollows();
    void invalidPictureIsRefusedAndDropsTheQueuedOne_data();
    void invalidPictureIsRefusedAndDropsTheQueuedOne();
    void repaintWithNothingQueuedStillRepaints();
    void runShapesShowWithTheirFrame();
    void fitWaitsForRepaintAndGetBackgroundGivesTheNewerPicture();
    void streamPaintsEachFrameAsItsPlainColours_data();
    void streamPaintsEachFrameAsItsPlainColours();
    void largeGreyPicturePaintsAsItsConvertedColours();
    void steadyStreamWritesOverTheBuffersOfAReplacedPicture();
    void pictureHeldByTheHostIsNeverWrittenOver();
};

void RunPathTest::init()
{
    CMainWindow::s_scale = 1.0f;
}

void RunPathTest::queuedPictureStaysOffScreenUntilRepaint()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    QCOMPARE(fixture.colourAtCentre(), kRed);

    VorImage green = colourPicture(kGreen);
    QVERIFY(runOnWorker([&] { fixture.wnd->setRunBackground(green); }));
    QCOMPARE(fixture.imageLayer()->pendingCount(), 1);

    // Whatever the window's thread paints meanwhile, the queued picture stays
    // off screen.
    for (int round = 0; round < 3; ++round) {
        fixture.view()->viewport()->update();
        Kit::letQueuedCallsRun();
        QCOMPARE(fixture.colourAtCentre(), kRed);
    }
    QCOMPARE(fixture.imageLayer()->pendingCount(), 1);

    QVERIFY(runOnWorker([&] { QCOMPARE(fixture.wnd->repaint(), 0L); }));
    QCOMPARE(fixture.imageLayer()->pendingCount(), 0);
    QCOMPARE(fixture.colourAtCentre(), kGreen);
}

void RunPathTest::resizeDoesNotTakeTheQueuedPicture()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    VorImage blue = colourPicture(kBlue, 2 * kPictureWidth, 2 * kPictureHeight);
    QVERIFY(runOnWorker([&] { fixture.wnd->setRunBackground(blue); }));

    const QSize before = fixture.view()->size();
    fixture.window()->resize(fixture.window()->size() + QSize(120, 90));
    QTRY_VERIFY(fixture.view()->size() != before);
    QCOMPARE(fixture.imageLayer()->pendingCount(), 1);
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, kPictureWidth, kPictureHeight));
    QCOMPARE(fixture.colourAtCentre(), kRed);

    QVERIFY(runOnWorker([&] { fixture.wnd->repaint(); }));
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, 2 * kPictureWidth, 2 * kPictureHeight));
    QCOMPARE(fixture.colourAtCentre(), kBlue);
}

void RunPathTest::twoQueuedPicturesAndOneRepaintShowTheSecond()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    VorImage green = colourPicture(kGreen);
    VorImage blue = colourPicture(kBlue);
    int pendingBetween = -1;
    long result = -1;
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(green);
        fixture.wnd->setRunBackground(blue);
        pendingBetween = fixture.imageLayer()->pendingCount();
        result = fixture.wnd->repaint();
    }));
    QCOMPARE(pendingBetween, 1);
    QCOMPARE(result, 0L);
    QCOMPARE(fixture.imageLayer()->pendingCount(), 0);
    QCOMPARE(fixture.colourAtCentre(), kBlue);
}

void RunPathTest::qImageBackgroundKeepsItsFlagWhileRepaintFitsTheNewPicture()
{
    EmbeddedWindow fixture;
    const QSize qtSize(100, 50);
    QCOMPARE(fixture.setPicture(Kit::qtPicture(qtSize.width(), qtSize.height(), kRed)), 0L);
    QVERIFY(!fixture.window()->isVorImg());
    ImageLayer* layer = fixture.imageLayer();
    const float qtFit = layer->GetFitImageScaledValue();
    QCOMPARE(double(qtFit), double(float(fitOf(fixture.scene(), qtSize))));

    const QSize runSize(200, 300);
    VorImage tall = colourPicture(kGreen, runSize.width(), runSize.height());
    QVERIFY(runOnWorker([&] { fixture.wnd->setRunBackground(tall); }));
    QVERIFY(!fixture.window()->isVorImg());
    // The fit still reads the picture on show, not the stored VorImage.
    QCOMPARE(layer->GetFitImageScaledValue(), qtFit);
    QVERIFY(double(qtFit) != double(float(fitOf(fixture.scene(), runSize))));

    QVERIFY(runOnWorker([&] { fixture.wnd->repaint(); }));
    QVERIFY(!fixture.window()->isVorImg());
    const double runFit = fitOf(fixture.scene(), runSize);
    QCOMPARE(fixture.scene()->getScale(), runFit);
    QCOMPARE(fixture.view()->matrix().m11(), runFit);
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(QPointF(0, 0), runSize));
}

void RunPathTest::zoomedInScaleIsKeptAndOnlyTheSceneRectFollows()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(fixture.imageLayer()->GetZoomModel(), VOR_ZOOM_IN);
    const double zoomed = fixture.scene()->getScale();
    const QMatrix matrix = fixture.view()->matrix();

    const QRectF otherRect(0, 0, 3 * kPictureWidth, kPictureHeight / 2);
    VorImage other = colourPicture(kBlue, int(otherRect.width()), int(otherRect.height()));
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(other);
        fixture.wnd->repaint();
    }));
    QCOMPARE(fixture.scene()->sceneRect(), otherRect);
    QCOMPARE(fixture.view()->sceneRect(), otherRect);
    QCOMPARE(fixture.scene()->getScale(), zoomed);
    QCOMPARE(fixture.view()->matrix(), matrix);
    QCOMPARE(Kit::viewportColourAt(fixture.view(), QPointF(5, 5)), kBlue);
}

void RunPathTest::invalidPictureIsRefusedAndDropsTheQueuedOne_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::newRow("empty picture") << 0 << 0;
    QTest::newRow("no rows") << 0 << kPictureWidth;
    QTest::newRow("no columns") << kPictureHeight << 0;
}

void RunPathTest::invalidPictureIsRefusedAndDropsTheQueuedOne()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    VorImage green = colourPicture(kGreen);
    VorImage invalid(cv::Mat(rows, columns, CV_8UC3));
    QCOMPARE(invalid.Width() * invalid.Height(), 0);

    int pendingBefore = -1;
    long refused = 0;
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(green);
        pendingBefore = fixture.imageLayer()->pendingCount();
        refused = fixture.view()->runDisplayImage(&invalid);
    }));
    QCOMPARE(pendingBefore, 1);
    QCOMPARE(refused, -1L);
    QCOMPARE(fixture.imageLayer()->pendingCount(), 0);

    // The facade's form is refused alike, silently.
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(invalid);
        fixture.wnd->repaint();
    }));
    QCOMPARE(fixture.colourAtCentre(), kRed);
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, kPictureWidth, kPictureHeight));
}

void RunPathTest::repaintWithNothingQueuedStillRepaints()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    QCOMPARE(fixture.wnd->zoom(2.0), 0L);
    Kit::flushPaints();
    PaintCounter counter(fixture.view()->viewport());
    int paintsAtReturn = -1;
    QVERIFY(runOnWorker([&] {
        fixture.wnd->repaint();
        paintsAtReturn = counter.paints;
    }));
    QVERIFY(paintsAtReturn >= 1);
    QCOMPARE(fixture.scene()->getScale(), 2.0);
    QCOMPARE(fixture.colourAtCentre(), kRed);
}

// The worker's whole cycle: the frame and the marks given with it appear
// together at the repaint.
void RunPathTest::runShapesShowWithTheirFrame()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    const QRectF box(10, 8, 40, 24);
    VorOverlay mark;
    mark.GenRect1(VorPoint(box.left(), box.top()), VorPoint(box.right(), box.bottom()));
    mark.SetPen(0, 255, 0, 3);
    VorOverlayPath marks;
    marks.Append(mark);
    VorImage blue = colourPicture(kBlue);
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(blue);
        fixture.wnd->displayRunShapes(marks);
        fixture.wnd->repaint();
    }));
    QCOMPARE(fixture.colourAtCentre(), kBlue);
    QCOMPARE(fixture.imageLayer()->getShapeIDS().size(), 1);
    // A record of a run is drawn with a hairline pen: along the box's left
    // edge some pixel turns from the frame's blue towards the mark's green.
    const QImage grabbed = fixture.grabViewport();
    const QPoint edge = fixture.view()->mapFromScene(QPointF(box.left(), box.center().y()));
    int greenish = 0;
    for (int dx = -3; dx <= 3; ++dx) {
        const QRgb pixel = grabbed.pixel(edge + QPoint(dx, 0));
        if (qGreen(pixel) > qBlue(pixel))
            ++greenish;
    }
    QVERIFY(greenish > 0);
    // Away from the edges the frame's own colour.
    QCOMPARE(Kit::viewportColourAt(fixture.view(), box.center()), kBlue);
}

void RunPathTest::fitWaitsForRepaintAndGetBackgroundGivesTheNewerPicture()
{
    RedWindow fixture;
    QCOMPARE(fixture.shownRed, 0L);
    const double redFit = fixture.scene()->getScale();
    QCOMPARE(redFit, fitOf(fixture.scene(), QSize(kPictureWidth, kPictureHeight)));

    const QSize wide(8 * kPictureWidth, kPictureHeight);
    VorImage green = colourPicture(kGreen, wide.width(), wide.height());
    QVERIFY(runOnWorker([&] { fixture.wnd->setRunBackground(green); }));
    // No fit at load: the scale waits for the repaint.
    QCOMPARE(fixture.scene()->getScale(), redFit);
    VorImage between;
    QCOMPARE(fixture.wnd->getBackground(&between), 0L);
    QCOMPARE(QSize(between.Width(), between.Height()), wide);
    QCOMPARE(fixture.imageLayer()->GetQImage()->size(), QSize(kPictureWidth, kPictureHeight));

    QVERIFY(runOnWorker([&] { fixture.wnd->repaint(); }));
    QCOMPARE(fixture.scene()->getScale(), fitOf(fixture.scene(), wide));
    QVERIFY(fixture.scene()->getScale() != redFit);
}

// Frames of a grey stream, each painted with its own grey values: the paint
// form queued with a frame is the one painted with it.
void RunPathTest::streamPaintsEachFrameAsItsPlainColours_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("indexed");
    QTest::newRow("8-bit grey") << int(CV_8UC1) << true;
    QTest::newRow("8-bit colour") << int(CV_8UC3) << false;
    QTest::newRow("16-bit grey") << int(CV_16UC1) << true;
    QTest::newRow("16-bit colour") << int(CV_16UC3) << false;
}

// Random frames of every kind a camera delivers, one after the other through
// the worker's path: every picture pixel is painted in the colour the plain
// per-pixel rule gives it (16-bit values scaled to 8 in single precision,
// colour frames from blue-green-red).
void RunPathTest::streamPaintsEachFrameAsItsPlainColours()
{
    QFETCH(int, type);
    QFETCH(bool, indexed);
    EmbeddedWindow fixture;
    constexpr int kFrames = 3;
    cv::Mat mats[kFrames];
    const bool sixteen = CV_MAT_DEPTH(type) == CV_16U;
    for (int i = 0; i < kFrames; ++i) {
        mats[i].create(kPictureHeight, kPictureWidth + 1, type);
        cv::RNG(0x6e7 + i).fill(mats[i], cv::RNG::UNIFORM, 0, sixteen ? 65536 : 256);
    }
    const auto plainScale = [](ushort v) { return uchar(float(v) / 65535.0f * 255.0f); };
    const auto plainColour = [&](const cv::Mat& m, int x, int y) {
        int channel[3];
        for (int c = 0; c < m.channels(); ++c) {
            channel[c] = sixteen ? plainScale(m.ptr<ushort>(y)[x * m.channels() + c])
                                 : m.ptr<uchar>(y)[x * m.channels() + c];
        }
        return m.channels() == 1 ? qRgb(channel[0], channel[0], channel[0]) : qRgb(channel[2], channel[1], channel[0]);
    };
    for (int i = 0; i < kFrames; ++i) {
        VorImage frame(mats[i]);
        QVERIFY(runOnWorker([&] {
            fixture.wnd->setRunBackground(frame);
            fixture.wnd->repaint();
        }));
        if (i == 0) {
            // Each picture pixel a square of several viewport pixels, read at
            // its middle; the later frames keep that zoom.
            fixture.showAt(kCellZoom, kPictureCentre);
            fixture.imageLayer()->SetZoomModel(VOR_ZOOM_IN);
        }
        QCOMPARE(fixture.imageLayer()->GetQImage()->format() == QImage::Format_Indexed8, indexed);
        const QImage grabbed = fixture.grabViewport();
        int compared = 0;
        for (int y = 0; y < mats[i].rows; ++y) {
            for (int x = 0; x < mats[i].cols; ++x) {
                const QPoint at = fixture.view()->mapFromScene(QPointF(x + 0.5, y + 0.5));
                QCOMPARE(Kit::colourText(grabbed.pixel(at)), Kit::colourText(plainColour(mats[i], x, y)));
                ++compared;
            }
        }
        QCOMPARE(compared, mats[i].rows * mats[i].cols);
    }
}

// A picture too large for a 32-bit copy is painted as it stands, through its
// colour table, with the same colours.
void RunPathTest::largeGreyPicturePaintsAsItsConvertedColours()
{
    EmbeddedWindow fixture;
    constexpr int kSide = 6000;
    cv::Mat mat(kSide, kSide, CV_8UC1);
    cv::RNG(0x1a7).fill(mat, cv::RNG::UNIFORM, 0, 256);
    VorImage grey(mat);
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(grey);
        fixture.wnd->repaint();
    }));
    const QPointF corner(kSide - 20, kSide - 12);
    fixture.showAt(kCellZoom, corner);
    const QImage grabbed = fixture.grabViewport();
    int compared = 0;
    for (int y = int(corner.y()) - 8; y < int(corner.y()) + 8; ++y) {
        for (int x = int(corner.x()) - 8; x < int(corner.x()) + 8; ++x) {
            const QPoint at = fixture.view()->mapFromScene(QPointF(x + 0.5, y + 0.5));
            const int value = mat.at<uchar>(y, x);
            QCOMPARE(Kit::colourText(grabbed.pixel(at)), Kit::colourText(qRgb(value, value, value)));
            ++compared;
        }
    }
    QCOMPARE(compared, 16 * 16);
}

void RunPathTest::steadyStreamWritesOverTheBuffersOfAReplacedPicture()
{
    EmbeddedWindow fixture;
    VorImage frames[] = {colourPicture(kRed), colourPicture(kGreen), colourPicture(kBlue)};
    const uchar* buffers[3] = {};
    QVERIFY(runOnWorker([&] {
        for (int i = 0; i < 3; ++i) {
            fixture.wnd->setRunBackground(frames[i]);
            fixture.wnd->repaint();
            buffers[i] = fixture.imageLayer()->GetQImage()->constBits();
        }
    }));
    QVERIFY(buffers[0] != buffers[1]);
    // The third frame went into the first frame's buffer.
    QCOMPARE(buffers[2], buffers[0]);
    QCOMPARE(Kit::viewportColourAt(fixture.view(), kPictureCentre), kBlue);
}

void RunPathTest::pictureHeldByTheHostIsNeverWrittenOver()
{
    EmbeddedWindow fixture;
    VorImage red = colourPicture(kRed);
    VorImage green = colourPicture(kGreen);
    VorImage blue = colourPicture(kBlue);
    QImage kept;
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(red);
        fixture.wnd->repaint();
    }));
    kept = *fixture.imageLayer()->GetQImage();
    QVERIFY(runOnWorker([&] {
        fixture.wnd->setRunBackground(green);
        fixture.wnd->repaint();
        fixture.wnd->setRunBackground(blue);
        fixture.wnd->repaint();
    }));
    QCOMPARE(kept.pixel(kPictureWidth / 2, kPictureHeight / 2), kRed);
    QVERIFY(kept.constBits() != fixture.imageLayer()->GetQImage()->constBits());
    QCOMPARE(Kit::viewportColourAt(fixture.view(), kPictureCentre), kBlue);
}

QTEST_MAIN(RunPathTest)

#include "tst_runpath.moc"
