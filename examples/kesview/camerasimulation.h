#pragma once

#include "inspection.h"

#include <KESImageWnd.h>

#include <opencv2/core.hpp>

#include <QString>
#include <QThread>

#include <atomic>

// A camera on a worker thread, as a live inspection host has one: it makes
// moving frames of the generated inspection picture and hands each to the image
// window with setRunBackground, the result of the hole check on that frame
// (outlines and centre crosses, in picture pixels, found on this thread) with
// displayRunShapes, then repaint(), which returns once the frame is on
// screen, so the window's pace sets the frame rate. The marks of the
// frame before are cleared on the window's thread first. Frames are written
// into two buffers in turn: the window keeps the last frame it was given, and
// the camera writes the next one into the other buffer.
class CameraSimulation : public QThread
{
public:
    CameraSimulation(KESImageWnd* window, bool colour, QObject* parent = nullptr);
    ~CameraSimulation() override;

    // Asks the worker to end and waits for it while this thread goes on
    // delivering events, which a repaint() under way needs.
    void stop();

    // Frames on screen so far.
    qint64 frames() const { return m_frames; }
    // What the camera delivers, e.g. "2448 x 2048, 8-bit grey".
    QString description() const;
    // What the check found in the last frame shown.
    int holes() const { return m_holes; }
    int others() const { return m_others; }
    double inspectionMilliseconds() const { return m_inspectionMs; }

protected:
    void run() override;

private:
    void makeFrame(qint64 number, cv::Mat& frame) const;

    KESImageWnd* m_window;
    cv::Mat m_scene;
    std::atomic<bool> m_stopping{false};
    std::atomic<qint64> m_frames{0};
    std::atomic<int> m_holes{0};
    std::atomic<int> m_others{0};
    std::atomic<double> m_inspectionMs{0.0};
};
