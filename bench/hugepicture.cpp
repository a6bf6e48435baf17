// A very large picture through the host's call: a side x side 8-bit grey frame
// (50000 x 50000 by default, 2.5 GB) handed to a window of 1280 x 1024 with
// setBackground, then painted fitted, at scales from 0.05 to 4 and panned. Prints the time of
// the load, the peak memory the window added beyond the host's own frame (in
// bytes per picture pixel), and the time of each repaint of the viewport.
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise.
//
//   build/bench/hugepicture [--side N]

#include <KESImageWnd.h>

#include <opencv2/core.hpp>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGraphicsView>
#include <QScrollBar>
#include <QWidget>

#include <cstdio>
#include <cstring>
#include <cstdlib>

namespace {

// A field of /proc/self/status in bytes: "VmRSS" now, "VmHWM" the peak.
qint64 statusBytes(const char* field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray prefix = QByteArray(field) + ':';
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

double repaintMilliseconds(QWidget* viewport)
{
    QElapsedTimer clock;
    clock.start();
    viewport->repaint();
    return clock.nsecsElapsed() / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int side = 50000;
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--side") == 0)
            side = std::atoi(argv[++i]);
    }
    if (side < 1)
        return 2;

    // The host's frame: a ramp across, a stripe every 1000 rows, written row
    // by row so that every page is resident before the window sees it.
    cv::Mat frame(side, side, CV_8UC1);
    for (int y = 0; y < side; ++y) {
        uchar* row = frame.ptr<uchar>(y);
        for (int x = 0; x < side; ++x)
            row[x] = uchar((x >> 8) + ((y / 1000) % 2) * 64);
    }
    VorImage picture(frame);

    QWidget host;
    host.resize(1280, 1024);
    KESImageWnd wnd;
    wnd.create(reinterpret_cast<qlonglong>(&host));
    host.show();
    QApplication::processEvents();
    auto* view = host.findChild<QGraphicsView*>();
    if (!view)
        return 1;

    const qint64 before = statusBytes("VmRSS");
    QElapsedTimer clock;
    clock.start();
    const long loaded = wnd.setBackground(picture);
    const double loadSeconds = clock.nsecsElapsed() / 1e9;
    QApplication::processEvents();
    const double fitted = repaintMilliseconds(view->viewport());
    const qint64 peak = statusBytes("VmHWM");
    const qint64 held = statusBytes("VmRSS");
    const double pixels = double(side) * side;

    std::printf("%d x %d 8-bit grey, %.2f GB: setBackground %ld in %.2f s\n", side, side, pixels / 1e9, loaded,
                loadSeconds);
    std::printf("peak beyond the host's frame %.2f bytes a pixel, held after the first paint %.2f bytes a pixel\n",
                (peak - before) / pixels, (held - before) / pixels);
    double firstScale = 0.0;
    wnd.getZoomRatio(&firstScale);
    std::printf("first repaint, fitted at scale %.4f, %.1f ms\n", firstScale, fitted);

    // Zoom in by steps, then pan by a viewport width at a time.
    for (double scale : {0.05, 0.1, 0.25, 1.0, 4.0}) {
        wnd.zoom(scale);
        QApplication::processEvents();
        double shown = 0.0;
        wnd.getZoomRatio(&shown);
        std::printf("repaint at scale %.4f %.1f ms\n", shown, repaintMilliseconds(view->viewport()));
    }
    for (int step = 0; step < 3; ++step) {
        QScrollBar* bar = view->horizontalScrollBar();
        bar->setValue(bar->value() + view->viewport()->width());
        QApplication::processEvents();
        std::printf("repaint after a pan %.1f ms\n", repaintMilliseconds(view->viewport()));
    }
    std::printf("peak beyond the host's frame at the end %.2f bytes a pixel\n",
                (statusBytes("VmHWM") - before) / pixels);
    wnd.destory();
    return 0;
}
