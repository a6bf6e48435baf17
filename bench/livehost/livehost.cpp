// A live camera host of the installed package. A worker thread hands 2448 x 2048
// frames to an image window of 1280 x 1024 with setRunBackground and repaint(),
// as fast as the window takes them; then the same frames go to OpenCV's own
// window of the same size, one imshow and waitKey(1) each. The host hides the
// window's tool bar, status bar and scroll bars, so that its view shows the
// frame on the whole 1280 x 1024, as OpenCV's window does. Every frame of the
// image window must have been painted: its viewport's paint events are
// counted. Prints the frames per second of both and their ratio, for 8-bit
// gray and 8-bit colour frames, and what the window holds for a stream: the
// growth of the resident memory from before the first frame to the end of the
// stream, and from the end of the warm-up to the end, in frames of the host.
//
//   livehost [--frames N] [--only window|imshow] [--size WxH]
//
// --size streams frames of another size; run_livehost.sh --memory runs the
// window alone once per size, each in a process of its own, for a table of
// what the window holds.

#include <KESImageWnd.h>

#include <opencv2/core.hpp>
#include <opencv2/highgui.hpp>

#include <QApplication>
#include <QFile>
#include <QElapsedTimer>
#include <QEvent>
#include <QGraphicsView>
#include <QThread>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

int s_frameWidth = 2448;
int s_frameHeight = 2048;
constexpr int kWindowWidth = 1280;
constexpr int kWindowHeight = 1024;
// Distinct frames handed out in turn: more than the caches hold.
constexpr int kPoolSize = 8;
// Frames shown before the clock starts.
constexpr int kWarmUpFrames = 10;

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

std::vector<cv::Mat> makeFrames(int type)
{
    std::vector<cv::Mat> frames;
    cv::RNG rng(0x11fe);
    for (int i = 0; i < kPoolSize; ++i) {
        cv::Mat frame(s_frameHeight, s_frameWidth, type);
        rng.fill(frame, cv::RNG::UNIFORM, 0, 256);
        frames.push_back(frame);
    }
    return frames;
}

void waitUntilExposed(QWidget* widget)
{
    widget->show();
    QElapsedTimer waited;
    waited.start();
    while ((!widget->windowHandle() || !widget->windowHandle()->isExposed()) && waited.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

// Resident memory of this process, in bytes.
qint64 residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toLongLong() * 4096 : 0;
}

struct WindowRun
{
    double fps = 0.0;
    int frames = 0;
    int paints = 0;
    qint64 heldBytes = 0;
    qint64 growthBytes = 0;
};

// The image window fed by a worker thread.
WindowRun runImageWindow(const std::vector<cv::Mat>& mats, int frames)
{
    QWidget host;
    host.resize(kWindowWidth, kWindowHeight);
    waitUntilExposed(&host);
    KESImageWnd wnd;
    wnd.create(reinterpret_cast<qlonglong>(&host));
    wnd.showToolbar(false);
    wnd.showStatusbar(false);
    wnd.showScrollbar(false);
    QCoreApplication::processEvents();
    QGraphicsView* view = host.findChild<QGraphicsView*>();
    if (!view) {
        std::fprintf(stderr, "livehost: the image window has no view\n");
        return {};
    }
    PaintCounter counter(view->viewport());
    std::vector<VorImage> images(mats.begin(), mats.end());

    WindowRun run;
    const qint64 residentBefore = residentBytes();
    std::unique_ptr<QThread> worker(QThread::create([&] {
        for (int i = 0; i < kWarmUpFrames; ++i) {
            wnd.setRunBackground(images[size_t(i) % images.size()]);
            wnd.repaint();
        }
        const int paintsBefore = counter.paints;
        const qint64 residentWarm = residentBytes();
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < frames; ++i) {
            wnd.setRunBackground(images[size_t(i) % images.size()]);
            wnd.repaint();
        }
        const qint64 nanoseconds = clock.nsecsElapsed();
        run.frames = frames;
        run.paints = counter.paints - paintsBefore;
        run.fps = frames * 1e9 / double(nanoseconds);
        run.heldBytes = residentBytes() - residentBefore;
        run.growthBytes = residentBytes() - residentWarm;
    }));
    QObject::connect(worker.get(), &QThread::finished, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    worker->start();
    QApplication::exec();
    worker->wait();
    wnd.destory();
    return run;
}

// OpenCV's own window, on this thread: one imshow and waitKey(1) a frame.
double runImshow(const std::vector<cv::Mat>& mats, int frames)
{
    const std::string name = "imshow";
    cv::namedWindow(name, cv::WINDOW_NORMAL | cv::WINDOW_KEEPRATIO);
    cv::resizeWindow(name, kWindowWidth, kWindowHeight);
    for (int i = 0; i < kWarmUpFrames; ++i) {
        cv::imshow(name, mats[size_t(i) % mats.size()]);
        cv::waitKey(1);
    }
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < frames; ++i) {
        cv::imshow(name, mats[size_t(i) % mats.size()]);
        cv::waitKey(1);
    }
    const qint64 nanoseconds = clock.nsecsElapsed();
    cv::destroyWindow(name);
    cv::waitKey(1);
    return frames * 1e9 / double(nanoseconds);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int frames = 200;
    std::string only;
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--frames") == 0)
            frames = std::max(1, std::atoi(argv[++i]));
        else if (std::strcmp(argv[i], "--only") == 0)
            only = argv[++i];
        else if (std::strcmp(argv[i], "--size") == 0
                 && std::sscanf(argv[++i], "%dx%d", &s_frameWidth, &s_frameHeight) != 2)
            return 2;
    }
    if (s_frameWidth < 1 || s_frameHeight < 1)
        return 2;

    std::printf("%d frames of %d x %d into windows of %d x %d\n", frames, s_frameWidth, s_frameHeight, kWindowWidth,
                kWindowHeight);
    bool allPainted = true;
    const struct {
        const char* name;
        int type;
    } kinds[] = {{"gray8", CV_8UC1}, {"colour8", CV_8UC3}};
    for (const auto& kind : kinds) {
        const std::vector<cv::Mat> mats = makeFrames(kind.type);
        WindowRun window;
        double imshowFps = 0.0;
        if (only != "imshow")
            window = runImageWindow(mats, frames);
        if (only != "window")
            imshowFps = runImshow(mats, frames);
        std::printf("%-8s image window %7.1f fps (%d paints for %d frames)   imshow %7.1f fps   ratio %.2f\n",
                    kind.name, window.fps, window.paints, window.frames, imshowFps,
                    imshowFps > 0.0 ? window.fps / imshowFps : 0.0);
        std::fflush(stdout);
        if (only != "imshow") {
            const double frameBytes = double(mats.front().total() * mats.front().elemSize());
            std::printf("%-8s held by the window after the stream %.1f MB, %.1f frames; grown since the warm-up "
                        "%.2f frames\n",
                        kind.name, window.heldBytes / 1e6, window.heldBytes / frameBytes,
                        window.growthBytes / frameBytes);
        }
        if (only != "imshow" && window.paints < window.frames)
            allPainted = false;
    }
    if (!allPainted)
        std::printf("not every frame was painted\n");
    return allPainted ? 0 : 1;
}
