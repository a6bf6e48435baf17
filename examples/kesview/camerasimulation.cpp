#include "camerasimulation.h"

#include "samplepicture.h"

#include <opencv2/imgproc.hpp>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>

namespace {

// How far the scene slides to the left each frame, in picture pixels.
constexpr int kSlidePerFrame = 6;
// The bright bar that sweeps down the frame, as a part passes a light.
constexpr int kSweepHeight = 24;
constexpr int kSweepPerFrame = 9;
constexpr int kSweepLift = 60;
// How long stop() lets events run between looks at the worker.
constexpr int kStopPollMs = 10;

// Parts of the generated picture (picture pixels of the unmoved scene) that the
// simulated inspection marks in every frame: the flange, found in green, and
// the calibration grid, measured in orange.
constexpr double kFlangeX = 1290.0;
constexpr double kFlangeY = 1368.0;
constexpr double kFlangeRadius = 300.0;
constexpr double kGridLeft = 111.0;
constexpr double kGridTop = 966.0;
constexpr double kGridWidth = 779.0;
constexpr double kGridHeight = 701.0;
// Records of a run are drawn as hairlines whatever width their pen names;
// the colour is theirs.
constexpr long kMarkPenWidth = 1;

} // namespace

CameraSimulation::CameraSimulation(KESImageWnd* window, bool colour, QObject* parent)
    : QThread(parent)
    , m_window(window)
{
    const cv::Mat grey = makeSamplePicture();
    if (colour) {
        // Warm light from the left, cool from the right, so the colour path
        // has something to show.
        cv::Mat bgr;
        cv::cvtColor(grey, bgr, cv::COLOR_GRAY2BGR);
        std::vector<cv::Mat> planes;
        cv::split(bgr, planes);
        cv::Mat ramp(1, grey.cols, CV_32F);
        for (int x = 0; x < grey.cols; ++x)
            ramp.at<float>(0, x) = float(x) / float(grey.cols);
        cv::Mat rampRows = cv::repeat(ramp, grey.rows, 1);
        cv::Mat blue;
        cv::Mat red;
        planes[0].convertTo(blue, CV_32F);
        planes[2].convertTo(red, CV_32F);
        blue = blue.mul(0.7f + 0.3f * rampRows);
        red = red.mul(1.0f - 0.3f * rampRows);
        blue.convertTo(planes[0], CV_8U);
        red.convertTo(planes[2], CV_8U);
        cv::merge(planes, m_scene);
    } else {
        m_scene = grey;
    }
}

CameraSimulation::~CameraSimulation()
{
    stop();
}

void CameraSimulation::stop()
{
    m_stopping = true;
    while (isRunning())
        QCoreApplication::processEvents(QEventLoop::AllEvents, kStopPollMs);
    wait();
}

QString CameraSimulation::description() const
{
    return QStringLiteral("%1 x %2, 8-bit %3")
        .arg(m_scene.cols)
        .arg(m_scene.rows)
        .arg(m_scene.channels() == 3 ? QStringLiteral("colour") : QStringLiteral("grey"));
}

void CameraSimulation::makeFrame(qint64 number, cv::Mat& frame) const
{
    // The scene slides to the left and comes in again from the right.
    const int width = m_scene.cols;
    const int shift = int((number * kSlidePerFrame) % width);
    frame.create(m_scene.size(), m_scene.type());
    m_scene.colRange(shift, width).copyTo(frame.colRange(0, width - shift));
    if (shift > 0)
        m_scene.colRange(0, shift).copyTo(frame.colRange(width - shift, width));
    const int top = int((number * kSweepPerFrame) % (m_scene.rows - kSweepHeight));
    cv::Mat sweep = frame.rowRange(top, top + kSweepHeight);
    cv::add(sweep, cv::Scalar::all(kSweepLift), sweep);
}

VorOverlayPath CameraSimulation::frameMarks(qint64 number) const
{
    // Where a point of the unmoved scene is in this frame.
    const int width = m_scene.cols;
    const int shift = int((number * kSlidePerFrame) % width);
    auto slid = [&](double x) {
        const double moved = x - shift;
        return moved < 0.0 ? moved + width : moved;
    };
    VorOverlayPath path;
    VorOverlay flange;
    flange.GenCircle(VorPoint(slid(kFlangeX), kFlangeY), kFlangeRadius);
    flange.SetPen(0, 255, 0, kMarkPenWidth);
    path.Append(flange);
    VorOverlay grid;
    const double left = slid(kGridLeft);
    grid.GenRect1(VorPoint(left, kGridTop), VorPoint(left + kGridWidth, kGridTop + kGridHeight));
    grid.SetPen(255, 128, 0, kMarkPenWidth);
    path.Append(grid);
    return path;
}

void CameraSimulation::run()
{
    cv::Mat buffers[2];
    KESImageWnd* window = m_window;
    for (qint64 number = 0; !m_stopping; ++number) {
        cv::Mat& frame = buffers[number % 2];
        makeFrame(number, frame);
        VorImage image(frame);
        VorOverlayPath marks = frameMarks(number);
        window->setRunBackground(image);
        // The marks of the frame before go just before the new ones come. The
        // layer's calls other than the three of the worker's cycle belong to
        // the window's thread, and a clear there asks for a repaint of its
        // own: the window may show the frame before without marks for one
        // paint before repaint() brings this one.
        QMetaObject::invokeMethod(
            window, [window] { window->clearLayer(KESImageWnd::LAYER_IMAGE); }, Qt::BlockingQueuedConnection);
        window->displayRunShapes(marks);
        if (window->repaint() != 0)
            break;
        ++m_frames;
    }
}
