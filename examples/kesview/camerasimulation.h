#pragma once

#include <KESImageWnd.h>

#include <opencv2/core.hpp>

#include <QString>
#include <QThread>

#include <atomic>

// A camera on a worker thread, as a live inspection host has one: it makes
// moving frames of the generated inspection picture and hands each to the image
// window with setRunBackground, the frame's inspection marks (in picture
// pixels) with displayRunShapes, then repaint(), which returns once the frame
// is on screen, so the window's pace sets the frame rate. The marks of the
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

protected:
    void run() override;

private:
    void makeFrame(qint64 number, cv::Mat& frame) const;
    // What an inspection finds in the frame: marks that move with the parts.
    VorOverlayPath frameMarks(qint64 number) const;

    KESImageWnd* m_window;
    cv::Mat m_scene;
    std::atomic<bool> m_stopping{false};
    std::atomic<qint64> m_frames{0};
};
