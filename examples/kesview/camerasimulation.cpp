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
    // The window's thread goes on delivering events, which the worker's
    // blocking calls need, until the worker has ended.
    QEventLoop loop;
    connect(this, &QThread::finished, &loop, &QEventLoop::quit);
    if (isRunning())
        loop.exec();
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

void CameraSimulation::run()
{
    cv::Mat buffers[2];
    KESImageWnd* window = m_window;
    for (qint64 number = 0; !m_stopping; ++number) {
        cv::Mat& frame = buffers[number % 2];
        makeFrame(number, frame);
        VorImage image(frame);
        // The check runs here, on the worker, as a camera host's would: the
        // window's thread only paints.
        const InspectionResult found = inspectPicture(frame);
        VorOverlayPath marks = frameRecords(found);
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
        m_holes = found.holes;
        m_others = found.others;
        m_inspectionMs = found.milliseconds;
    }
}
