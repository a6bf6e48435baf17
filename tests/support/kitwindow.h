#pragma once

// Windows and views a test works in. EmbeddedWindow is a host widget of a
// given size with a window created in it, shown and awaited until the
// platform has exposed it; PictureWindow adds a grey picture at a chosen zoom
// and the operator's mouse, in scene points. StandaloneView is a bare view
// with its scene and layers for tests that need exact control of its size.

#include "kitinput.h"
#include "kitpixels.h"

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "ShapeLayer.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "VorImage.h"

#include <QApplication>
#include <QScrollBar>
#include <QSize>
#include <QTimer>
#include <QWidget>
#include <QtTest/QTest>

#include <opencv2/core.hpp>

#include <memory>

namespace Kit {

// Shows a top-level widget and waits until the platform has exposed it; a
// window that never appears fails the running test.
inline bool showExposed(QWidget* widget)
{
    widget->show();
    const bool exposed = QTest::qWaitForWindowExposed(widget);
    if (!exposed)
        QTest::qFail("the window was not exposed", __FILE__, __LINE__);
    return exposed;
}

// Lets the calls that the window queued for a moment later (single-shot
// timers of a few milliseconds) run: a timer of our own, started after them
// and due after them, fires after them.
inline void letQueuedCallsRun(int queuedDelayMs = 1)
{
    bool fired = false;
    QTimer::singleShot(queuedDelayMs + 1, [&fired] { fired = true; });
    QTRY_VERIFY_WITH_TIMEOUT(fired, 5000);
    flushPaints();
}

// Brings a view to a zoom with a scene point in the middle of its viewport.
inline void showAt(ImageCtrlView* view, double zoom, const QPointF& sceneCentre)
{
    view->Zoom(zoom);
    view->centerOn(sceneCentre);
    flushPaints();
}

// The window's zoom buttons, by the number the host hears in buttonClicked.
enum ZoomButton { ZoomInButton = 1, ZoomOutButton = 2, FitButton = 3, OneToOneButton = 4 };

// One step of the zoom in and zoom out buttons.
constexpr double kZoomStep = 1.25;

// The scale a zoom button gives the scene from its present scale: a step in
// single precision, the fit of the picture, or one to one.
inline double scaleAfterZoomButton(int number, ImageCtrlScene* scene)
{
    const double before = scene->getScale();
    switch (number) {
    case ZoomInButton: return double(float(double(float(before)) * kZoomStep));
    case ZoomOutButton: return double(float(double(float(before)) / kZoomStep));
    case FitButton: return double(scene->GetImageLayer()->GetFitImageScaledValue());
    default: return 1.0;
    }
}

// A host's own top-level widget of a given size, shown and exposed.
class HostWidget : public QWidget
{
public:
    explicit HostWidget(QSize size = QSize(640, 480))
    {
        resize(size);
        showExposed(this);
    }
};

} // namespace Kit

class EmbeddedWindow
{
public:
    explicit EmbeddedWindow(QSize hostSize = QSize(640, 480))
        : host(new QWidget)
        , wnd(new KESImageWnd)
    {
        host->resize(hostSize);
        exposed = Kit::showExposed(host.get());
        created = wnd->create(reinterpret_cast<qlonglong>(host.get()));
        Kit::flushPaints();
    }
    ~EmbeddedWindow()
    {
        wnd->destory();
        wnd.reset();
        host.reset();
    }

    CMainWindow* window() const { return wnd->mainWindow(); }
    ImageCtrlView* view() const { return window()->GetImageCtrlView(); }
    ImageCtrlScene* scene() const { return view()->GetImageCtrlScene(); }
    ImageLayer* imageLayer() const { return scene()->GetImageLayer(); }

    // Hands the window a picture as a host does, kept alive here, and brings
    // it to a zoom: the first refusal's answer, or 0.
    long showPicture(const VorImage& picture, double zoom)
    {
        const long shown = setPicture(picture);
        return shown != 0 ? shown : wnd->zoom(zoom);
    }
    long showPicture(const QImage& picture, double zoom)
    {
        const long shown = setPicture(picture);
        return shown != 0 ? shown : wnd->zoom(zoom);
    }
    long setPicture(const VorImage& picture)
    {
        m_vorPicture = picture;
        return wnd->setBackground(m_vorPicture);
    }
    long setPicture(const QImage& picture)
    {
        m_qtPicture = picture;
        return wnd->setBackground(m_qtPicture);
    }

    void showAt(double zoom, const QPointF& sceneCentre) { Kit::showAt(view(), zoom, sceneCentre); }
    QImage grabViewport() const { return Kit::grabViewport(view()); }

    std::unique_ptr<QWidget> host;
    std::unique_ptr<KESImageWnd> wnd;
    long created = -1;
    bool exposed = false;

private:
    VorImage m_vorPicture;
    QImage m_qtPicture;
};

class StandaloneView
{
public:
    // The view fills a host widget of the given size; with show false nothing
    // is shown, so no resizeEvent has run and the view size stays 0 by 0.
    explicit StandaloneView(QSize viewSize = QSize(640, 480), bool show = true)
        : host(new QWidget)
        , view(new ImageCtrlView(host.get()))
    {
        view->CreateScene();
        host->resize(viewSize);
        view->setGeometry(0, 0, viewSize.width(), viewSize.height());
        if (show)
            Kit::showExposed(host.get());
    }

    ImageCtrlScene* scene() const { return view->GetImageCtrlScene(); }
    ImageLayer* layer() const { return scene()->GetImageLayer(); }

    // Resizes the view so that its viewport gets exactly this size.
    void setViewportSize(QSize viewportSize)
    {
        const QSize extra = view->size() - view->viewport()->size();
        const QSize viewSize = viewportSize + extra;
        host->resize(host->size().expandedTo(viewSize));
        view->resize(viewSize);
        Kit::flushPaints();
    }

    std::unique_ptr<QWidget> host;
    ImageCtrlView* view;
};

namespace Kit {

// A host window showing a grey picture at a fixed zoom, scrolled to its top
// left corner, so that scene points of the picture's upper left part are on
// the viewport; the mouse acts at scene points.
class PictureWindow : public EmbeddedWindow
{
public:
    static constexpr int kGrey = 60;

    explicit PictureWindow(double zoom = 1.0, QSize picture = QSize(200, 150), QSize hostSize = QSize(640, 480))
        : EmbeddedWindow(hostSize)
        , image(cv::Mat(picture.height(), picture.width(), CV_8UC1, cv::Scalar(kGrey)))
    {
        wnd->setBackground(image);
        flushPaints();
        setZoom(zoom);
    }
    // The scene never deletes its static layer; the shapes a test put there
    // go here, so that nothing outlives the window.
    ~PictureWindow()
    {
        if (ShaperLayer* layer = staticLayer()) {
            layer->clearSelectedShape();
            layer->clearShape();
        }
    }

    void setZoom(double zoom)
    {
        view()->Zoom(zoom);
        view()->horizontalScrollBar()->setValue(0);
        view()->verticalScrollBar()->setValue(0);
        flushPaints();
    }

    ShaperLayer* active() const { return scene()->GetActiveLayer(); }
    ShaperLayer* staticLayer() const { return scene()->GetStaticActiveLayer(); }
    EventThread* relay() const { return scene()->GetEventThread(); }

    void press(const QPointF& p, Qt::MouseButton button = Qt::LeftButton) { pressAt(view(), p, button); }
    void move(const QPointF& p, Qt::MouseButtons buttons = Qt::LeftButton) { moveTo(view(), p, buttons); }
    void release(const QPointF& p, Qt::MouseButton button = Qt::LeftButton) { releaseAt(view(), p, button); }
    void click(const QPointF& p, Qt::MouseButton button = Qt::LeftButton) { clickAt(view(), p, button); }
    void drag(const QPointF& from, const QPointF& to, Qt::MouseButton button = Qt::LeftButton)
    {
        dragAlong(view(), from, to, button);
    }
    QPointF seen(const QPointF& p) const { return seenAt(view(), p); }

    VorImage image;
};

} // namespace Kit
