#pragma once

// What reaches the host, in the order it arrives: the facade's signals as one
// log of short texts ("clicked 7", "moved 7", "resized 7", "mouseClicked 10,20",
// "doubleClick"), which also proves what was not emitted, and the event
// relay's left-click callback with what it received.

#include "KESImageWnd.h"
#include "eventthread.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Kit {

inline QString clickedText(long id)
{
    return QString("clicked %1").arg(id);
}
inline QString movedText(long id)
{
    return QString("moved %1").arg(id);
}
inline QString resizedText(long id)
{
    return QString("resized %1").arg(id);
}

class HostLog : public QObject
{
public:
    explicit HostLog(KESImageWnd* wnd)
    {
        connect(wnd, &KESImageWnd::shapeClicked, this, [this](long id) { entries << clickedText(id); });
        connect(wnd, &KESImageWnd::shapeMoved, this, [this](long id) { entries << movedText(id); });
        connect(wnd, &KESImageWnd::shapeResized, this, [this](long id) { entries << resizedText(id); });
        connect(wnd, &KESImageWnd::mouseClicked, this,
                [this](double x, double y) { entries << QString("mouseClicked %1,%2").arg(x).arg(y); });
        connect(wnd, &KESImageWnd::mouseDoubleClick, this, [this] { entries << QString("doubleClick"); });
    }

    // Only the shape events, in order.
    QStringList shapeEvents() const
    {
        QStringList out;
        for (const QString& e : entries) {
            if (e.startsWith("clicked") || e.startsWith("moved") || e.startsWith("resized"))
                out << e;
        }
        return out;
    }

    QStringList entries;
};

// A left-click callback of the event relay, and what it received.
struct LeftClicks
{
    struct Call
    {
        long long window;
        float x;
        float y;
    };
    QList<Call> calls;

    static void record(long long window, float x, float y, void* data)
    {
        static_cast<LeftClicks*>(data)->calls.append({window, x, y});
    }
    void attach(EventThread* relay) { relay->RegisterMouseLClickEvent(&LeftClicks::record, this); }
    static void detach(EventThread* relay) { relay->RegisterMouseLClickEvent(nullptr, nullptr); }
};

} // namespace Kit
