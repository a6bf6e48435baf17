#include "eventthread.h"

EventThread::EventThread(QObject* parent)
    : QObject(parent)
    , m_eventKind(EV_NONE)
    , m_shapeResizeEvent(nullptr)
    , m_shapeMoveEvent(nullptr)
    , m_mouseLClickEvent(nullptr)
    , m_mouseMoveEvent(nullptr)
    , m_shapeClickEvent(nullptr)
    , m_shapeResizeData(nullptr)
    , m_shapeMoveData(nullptr)
    , m_shapeClickData(nullptr)
    , m_mouseLClickData(nullptr)
    , m_mouseMoveData(nullptr)
    , m_mousePos(0, 0)
    , m_shapeID(0)
    , m_mainWindowID(0)
    , m_pushButton(ButtonToolbar::PB_LOAD_IMAGE)
{
}

void EventThread::setCurrentMainWindowID(long long windowID)
{
    m_mainWindowID = windowID;
}

void EventThread::RegisterShapeMoveEvent(void (*func)(long long, long, void*), void* data)
{
    m_shapeMoveEvent = func;
    m_shapeMoveData = data;
}

void EventThread::RegisterShapeResizeEvent(void (*func)(long long, long, void*), void* data)
{
    m_shapeResizeEvent = func;
    m_shapeResizeData = data;
}

void EventThread::RegisterShapeClickEvent(void (*func)(long long, long, void*), void* data)
{
    m_shapeClickEvent = func;
    m_shapeClickData = data;
}

void EventThread::RegisterMouseLClickEvent(void (*func)(long long, float, float, void*), void* data)
{
    m_mouseLClickEvent = func;
    m_mouseLClickData = data;
}

void EventThread::RegisterMouseMoveEvent(void (*func)(long long, float, float, void*), void* data)
{
    m_mouseMoveEvent = func;
    m_mouseMoveData = data;
}

void EventThread::sendShapeEvent(EventKind kind, long long id, ShapeEventFunc func, void* data)
{
    m_eventKind = kind;
    m_shapeID = id;
    switch (kind) {
    case EV_SHAPE_RESIZE: emit shapeResized(long(id)); break;
    case EV_SHAPE_MOVE: emit shapeMoved(long(id)); break;
    default: emit shapeClicked(long(id)); break;
    }
    if (func)
        func(m_mainWindowID, long(m_shapeID), data);
}

void EventThread::sendMouseEvent(EventKind kind, float x, float y, MouseEventFunc func, void* data)
{
    m_eventKind = kind;
    m_mousePos = QPointF(x, y);
    if (func)
        func(m_mainWindowID, float(m_mousePos.x()), float(m_mousePos.y()), data);
}

void EventThread::sendShapeResize(long long id)
{
    sendShapeEvent(EV_SHAPE_RESIZE, id, m_shapeResizeEvent, m_shapeResizeData);
}

void EventThread::sendShapeMove(long long id)
{
    sendShapeEvent(EV_SHAPE_MOVE, id, m_shapeMoveEvent, m_shapeMoveData);
}

void EventThread::sendShapeClicked(long long id)
{
    sendShapeEvent(EV_SHAPE_CLICK, id, m_shapeClickEvent, m_shapeClickData);
}

void EventThread::sendMouseMove(float x, float y)
{
    sendMouseEvent(EV_MOUSE_MOVE, x, y, m_mouseMoveEvent, m_mouseMoveData);
}

void EventThread::sendMosueLClick(float x, float y)
{
    sendMouseEvent(EV_MOUSE_LCLICK, x, y, m_mouseLClickEvent, m_mouseLClickData);
}

void EventThread::sendButtonClick(ButtonToolbar::PUSHBUTTON button)
{
    m_eventKind = EV_BUTTON_CLICK;
    m_pushButton = button;
    if (button >= ButtonToolbar::PB_ZOOM_IN && button <= ButtonToolbar::PB_ZOOM_ORG)
        emit Zoom(int(button));
}
