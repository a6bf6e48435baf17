#pragma once

// Small helpers for tests that drive the window as an operator and a host do:
// mouse and wheel input sent to the view's viewport at the viewport position of
// a scene point, and a host widget with an embedded window.

#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <memory>

namespace ViewInput {

inline QPoint viewportPos(QGraphicsView* view, const QPointF& scenePos)
{
    return view->mapFromScene(scenePos);
}

inline void sendMouse(QGraphicsView* view, QEvent::Type type, const QPoint& pos, Qt::MouseButton button,
                      Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget* viewport = view->viewport();
    QMouseEvent event(type, QPointF(pos), QPointF(viewport->mapToGlobal(pos)), button, buttons, modifiers);
    QApplication::sendEvent(viewport, &event);
}

// Press, move and release at scene points (image pixels).
inline void pressAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(view, QEvent::MouseButtonPress, viewportPos(view, scenePos), button, button);
}

inline void moveTo(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButtons buttons = Qt::NoButton)
{
    sendMouse(view, QEvent::MouseMove, viewportPos(view, scenePos), Qt::NoButton, buttons);
}

inline void releaseAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(view, QEvent::MouseButtonRelease, viewportPos(view, scenePos), button, Qt::NoButton);
}

inline void doubleClickAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton)
{
    const QPoint pos = viewportPos(view, scenePos);
    sendMouse(view, QEvent::MouseButtonPress, pos, button, button);
    sendMouse(view, QEvent::MouseButtonRelease, pos, button, Qt::NoButton);
    sendMouse(view, QEvent::MouseButtonDblClick, pos, button, button);
    sendMouse(view, QEvent::MouseButtonRelease, pos, button, Qt::NoButton);
}

// The same at viewport pixels, for input that does not start from the scene.
inline void pressAtViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(view, QEvent::MouseButtonPress, pos, button, button);
}

inline void moveToViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButtons buttons = Qt::NoButton)
{
    sendMouse(view, QEvent::MouseMove, pos, Qt::NoButton, buttons);
}

inline void releaseAtViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(view, QEvent::MouseButtonRelease, pos, button, Qt::NoButton);
}

// One wheel step (120 = one notch up, -120 one notch down) at a viewport position.
inline void wheelAtViewport(QGraphicsView* view, const QPoint& pos, int delta)
{
    QWidget* viewport = view->viewport();
    QWheelEvent event(QPointF(pos), QPointF(viewport->mapToGlobal(pos)), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &event);
}

inline void wheelAt(QGraphicsView* view, const QPointF& scenePos, int delta)
{
    wheelAtViewport(view, viewportPos(view, scenePos), delta);
}

} // namespace ViewInput

// A host widget of a given size with a window created in it, shown and laid
// out; the window is destroyed before the host widget goes.
class EmbeddedWindow
{
public:
    explicit EmbeddedWindow(QSize hostSize = QSize(640, 480))
        : host(new QWidget)
        , wnd(new KESImageWnd)
    {
        host->resize(hostSize);
        host->show();
        created = wnd->create(reinterpret_cast<qlonglong>(host.get()));
        QApplication::processEvents();
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

    std::unique_ptr<QWidget> host;
    std::unique_ptr<KESImageWnd> wnd;
    long created = -1;
};
