#pragma once

// Touch input as a touch screen gives it: fingers pressed, moved and lifted,
// sent as QTouchEvents either to the view's viewport, as the platform
// delivers them, or straight to the scene, as a host that forwards touch
// would. Positions are viewport pixels; each point carries its scene and
// screen positions too, mapped through the view as the platform would.

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QList>
#include <QPointF>
#include <QTouchDevice>
#include <QTouchEvent>
#include <QtTest/QTest>

namespace Kit {

// The process's one simulated touch screen.
inline QTouchDevice* touchScreen()
{
    static QTouchDevice* const device = QTest::createTouchDevice(QTouchDevice::TouchScreen);
    return device;
}

class Touch
{
public:
    enum Target { ToViewport, ToScene };

    explicit Touch(QGraphicsView* view, Target target = ToViewport, QTouchDevice* device = touchScreen())
        : m_view(view)
        , m_target(target)
        , m_device(device)
    {
    }

    // Puts one finger down per position (TouchBegin). The answer is whether
    // the receiver consumed the event.
    bool press(const QList<QPointF>& viewportPositions)
    {
        m_fingers.clear();
        for (int i = 0; i < viewportPositions.size(); ++i) {
            Finger finger;
            finger.start = finger.last = finger.now = viewportPositions.at(i);
            finger.state = Qt::TouchPointPressed;
            m_fingers.append(finger);
        }
        return send(QEvent::TouchBegin);
    }

    // Moves the fingers to new positions (TouchUpdate): a finger whose
    // position changed has moved, the others are stationary.
    bool move(const QList<QPointF>& viewportPositions)
    {
        for (int i = 0; i < m_fingers.size() && i < viewportPositions.size(); ++i)
            step(m_fingers[i], viewportPositions.at(i),
                 viewportPositions.at(i) == m_fingers[i].now ? Qt::TouchPointStationary : Qt::TouchPointMoved);
        return send(QEvent::TouchUpdate);
    }

    // A TouchUpdate with each finger at a position and in a state given
    // outright, for states a well-behaved screen would not report there.
    bool update(const QList<QPointF>& viewportPositions, const QList<Qt::TouchPointState>& states)
    {
        for (int i = 0; i < m_fingers.size() && i < viewportPositions.size() && i < states.size(); ++i)
            step(m_fingers[i], viewportPositions.at(i), states.at(i));
        return send(QEvent::TouchUpdate);
    }

    // Lifts every finger where it is now (TouchEnd).
    bool release()
    {
        for (Finger& finger : m_fingers)
            step(finger, finger.now, Qt::TouchPointReleased);
        return send(QEvent::TouchEnd);
    }

    // Lifts every finger at new positions (TouchEnd).
    bool release(const QList<QPointF>& viewportPositions)
    {
        for (int i = 0; i < m_fingers.size() && i < viewportPositions.size(); ++i)
            step(m_fingers[i], viewportPositions.at(i), Qt::TouchPointReleased);
        return send(QEvent::TouchEnd);
    }

    // A whole one-finger drag: down, one move per position, up at the last.
    void drag(const QList<QPointF>& viewportPath)
    {
        if (viewportPath.isEmpty())
            return;
        press({viewportPath.first()});
        for (int i = 1; i < viewportPath.size(); ++i)
            move({viewportPath.at(i)});
        release();
    }

private:
    struct Finger
    {
        QPointF start;
        QPointF last;
        QPointF now;
        Qt::TouchPointState state = Qt::TouchPointPressed;
    };

    static void step(Finger& finger, const QPointF& to, Qt::TouchPointState state)
    {
        finger.last = finger.now;
        finger.now = to;
        finger.state = state;
    }

    QPointF sceneOf(const QPointF& viewportPos) const { return m_view->mapToScene(viewportPos.toPoint()); }
    QPointF screenOf(const QPointF& viewportPos) const
    {
        return m_view->viewport()->mapToGlobal(viewportPos.toPoint());
    }

    bool send(QEvent::Type type)
    {
        QList<QTouchEvent::TouchPoint> points;
        Qt::TouchPointStates states;
        for (int i = 0; i < m_fingers.size(); ++i) {
            const Finger& finger = m_fingers.at(i);
            QTouchEvent::TouchPoint point(i);
            point.setState(finger.state);
            point.setPos(finger.now);
            point.setStartPos(finger.start);
            point.setLastPos(finger.last);
            point.setScenePos(sceneOf(finger.now));
            point.setStartScenePos(sceneOf(finger.start));
            point.setLastScenePos(sceneOf(finger.last));
            point.setScreenPos(screenOf(finger.now));
            point.setStartScreenPos(screenOf(finger.start));
            point.setLastScreenPos(screenOf(finger.last));
            point.setPressure(finger.state == Qt::TouchPointReleased ? 0.0 : 1.0);
            points.append(point);
            states |= finger.state;
        }
        QTouchEvent event(type, m_device, Qt::NoModifier, states, points);
        QObject* receiver = m_target == ToViewport ? static_cast<QObject*>(m_view->viewport())
                                                   : static_cast<QObject*>(m_view->scene());
        event.setAccepted(false);
        return QApplication::sendEvent(receiver, &event);
    }

    QGraphicsView* m_view;
    Target m_target;
    QTouchDevice* m_device;
    QList<Finger> m_fingers;
};

} // namespace Kit
