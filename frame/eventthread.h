#pragma once

#include "buttontoolbar.h"
#include "kesimagewnd_export.h"

#include <QObject>
#include <QPointF>

// The relay of the operator's actions to the host. Despite its name it is a
// plain QObject in the GUI thread: each send notes the event, emits a signal and
// calls a registered callback, all in the caller's stack. Callbacks receive the
// CMainWindow's address as the window id; coordinates are scene coordinates.
class KESIMAGEWND_TESTS_EXPORT EventThread : public QObject
{
    Q_OBJECT

public:
    enum EventKind {
        EV_NONE = -1,
        EV_SHAPE_RESIZE = 0,
        EV_SHAPE_MOVE = 1,
        EV_MOUSE_MOVE = 2,
        EV_MOUSE_LCLICK = 3,
        EV_SHAPE_CLICK = 4,
        EV_BUTTON_CLICK = 5
    };

    typedef void (*ShapeEventFunc)(long long windowID, long shapeID, void* data);
    typedef void (*MouseEventFunc)(long long windowID, float x, float y, void* data);

    explicit EventThread(QObject* parent = nullptr);

    void setCurrentMainWindowID(long long windowID);

    // A new registration replaces the old one; a null function removes it.
    void RegisterShapeMoveEvent(void (*func)(long long, long, void*), void* data);
    void RegisterShapeResizeEvent(void (*func)(long long, long, void*), void* data);
    void RegisterShapeClickEvent(void (*func)(long long, long, void*), void* data);
    void RegisterMouseLClickEvent(void (*func)(long long, float, float, void*), void* data);
    void RegisterMouseMoveEvent(void (*func)(long long, float, float, void*), void* data);

    void sendShapeResize(long long id);
    void sendShapeMove(long long id);
    void sendShapeClicked(long long id);
    void sendMouseMove(float x, float y);
    void sendMosueLClick(float x, float y);
    // The zoom buttons 1 to 4 also emit Zoom(button).
    void sendButtonClick(ButtonToolbar::PUSHBUTTON button);

    // The trace of the last event, for those who hold the relay.
    int eventKind() const { return m_eventKind; }
    QPointF mousePos() const { return m_mousePos; }
    long long shapeID() const { return m_shapeID; }
    long long mainWindowID() const { return m_mainWindowID; }
    ButtonToolbar::PUSHBUTTON pushButton() const { return m_pushButton; }

signals:
    void Zoom(int model);
    void shapeResized(long id);
    void shapeMoved(long id);
    void shapeClicked(long id);

private:
    void sendShapeEvent(EventKind kind, long long id, ShapeEventFunc func, void* data);
    void sendMouseEvent(EventKind kind, float x, float y, MouseEventFunc func, void* data);

    int m_eventKind;
    ShapeEventFunc m_shapeResizeEvent;
    ShapeEventFunc m_shapeMoveEvent;
    MouseEventFunc m_mouseLClickEvent;
    MouseEventFunc m_mouseMoveEvent;
    ShapeEventFunc m_shapeClickEvent;
    void* m_shapeResizeData;
    void* m_shapeMoveData;
    void* m_shapeClickData;
    void* m_mouseLClickData;
    void* m_mouseMoveData;
    QPointF m_mousePos;
    long long m_shapeID;
    long long m_mainWindowID;
    ButtonToolbar::PUSHBUTTON m_pushButton;
};
