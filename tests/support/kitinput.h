#pragma once

// Mouse and wheel input as an operator gives it: events sent to the view's
// viewport at the viewport position (mapFromScene) of a scene point, in image
// pixels, with a button and keyboard modifiers. The *Viewport variants take
// viewport pixels for input that does not start from the scene.

#include "kitcompare.h"

#include <QApplication>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPoint>
#include <QPointF>
#include <QWheelEvent>
#include <QWidget>
#include <QtTest/QTest>

#include <initializer_list>

namespace Kit {

// One wheel notch, as a mouse wheel reports it.
constexpr int kWheelNotch = 120;

inline QPoint viewportPos(QGraphicsView* view, const QPointF& scenePos)
{
    return view->mapFromScene(scenePos);
}

// The scene position that a viewport event at the pixel nearest to scenePos
// carries: what the tools really see.
inline QPointF seenAt(QGraphicsView* view, const QPointF& scenePos)
{
    return view->mapToScene(view->mapFromScene(scenePos));
}

// A mouse event at a viewport position with the screen position given.
inline void sendMouseEvent(QGraphicsView* view, QEvent::Type type, const QPointF& pos, const QPointF& screenPos,
                           Qt::MouseButton button, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(type, pos, pos, screenPos, button, buttons, modifiers);
    QApplication::sendEvent(view->viewport(), &event);
}

inline void sendMouse(QGraphicsView* view, QEvent::Type type, const QPoint& pos, Qt::MouseButton button,
                      Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    sendMouseEvent(view, type, pos, view->viewport()->mapToGlobal(pos), button, buttons, modifiers);
}

// A mouse event at a viewport position that no platform sends (no whole
// pixel, no number, beyond int): no mapping holds for it, so it stands as it
// is for the screen position too.
inline void sendMouseAsIs(QGraphicsView* view, QEvent::Type type, const QPointF& pos, Qt::MouseButton button,
                          Qt::MouseButtons buttons)
{
    sendMouseEvent(view, type, pos, pos, button, buttons, Qt::NoModifier);
}

inline void pressAtViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                            Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    sendMouse(view, QEvent::MouseButtonPress, pos, button, button, modifiers);
}

inline void moveToViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButtons buttons = Qt::NoButton,
                           Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    sendMouse(view, QEvent::MouseMove, pos, Qt::NoButton, buttons, modifiers);
}

inline void releaseAtViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    sendMouse(view, QEvent::MouseButtonRelease, pos, button, Qt::NoButton, modifiers);
}

inline void clickAtViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                            Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    pressAtViewport(view, pos, button, modifiers);
    releaseAtViewport(view, pos, button, modifiers);
}

// Press, release, the double click and its release, as Qt delivers a double
// click.
inline void doubleClickAtViewport(QGraphicsView* view, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                                  Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    clickAtViewport(view, pos, button, modifiers);
    sendMouse(view, QEvent::MouseButtonDblClick, pos, button, button, modifiers);
    releaseAtViewport(view, pos, button, modifiers);
}

// The same at scene points (image pixels).
inline void pressAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    pressAtViewport(view, viewportPos(view, scenePos), button, modifiers);
}

inline void moveTo(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButtons buttons = Qt::NoButton,
                   Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    moveToViewport(view, viewportPos(view, scenePos), buttons, modifiers);
}

inline void releaseAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    releaseAtViewport(view, viewportPos(view, scenePos), button, modifiers);
}

inline void clickAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    clickAtViewport(view, viewportPos(view, scenePos), button, modifiers);
}

inline void doubleClickAt(QGraphicsView* view, const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton,
                          Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    doubleClickAtViewport(view, viewportPos(view, scenePos), button, modifiers);
}

// Press at from, one move to to with the button held, release at to.
inline void dragAlong(QGraphicsView* view, const QPointF& from, const QPointF& to,
                      Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    pressAt(view, from, button, modifiers);
    moveTo(view, to, button, modifiers);
    releaseAt(view, to, button, modifiers);
}

inline const char* buttonName(Qt::MouseButton button)
{
    return button == Qt::LeftButton ? "left"
        : button == Qt::RightButton ? "right"
        : button == Qt::MiddleButton ? "middle"
                                     : "another button";
}

// One row a mouse button, in a column "button" of ints named by the button.
inline void addButtonRows(std::initializer_list<Qt::MouseButton> buttons)
{
    addEnumRows("button", buttons, &buttonName);
}

// One wheel step (kWheelNotch up, -kWheelNotch down) at a viewport position.
inline void sendWheelEvent(QGraphicsView* view, const QPointF& pos, const QPointF& screenPos, int delta,
                           Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(pos, screenPos, QPoint(), QPoint(0, delta), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view->viewport(), &event);
}

inline void wheelAtViewport(QGraphicsView* view, const QPoint& pos, int delta,
                            Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    sendWheelEvent(view, pos, view->viewport()->mapToGlobal(pos), delta, modifiers);
}

// A wheel step at a viewport position that no platform sends, as sendMouseAsIs.
inline void wheelAsIs(QGraphicsView* view, const QPointF& pos, int delta)
{
    sendWheelEvent(view, pos, pos, delta, Qt::NoModifier);
}

inline void wheelAt(QGraphicsView* view, const QPointF& scenePos, int delta,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    wheelAtViewport(view, viewportPos(view, scenePos), delta, modifiers);
}

} // namespace Kit
