#pragma once

// What the reticle tests share: the viewport's pixels after pending paints,
// and a count of the paint events a widget receives.

#include <QApplication>
#include <QEvent>
#include <QGraphicsView>
#include <QImage>
#include <QObject>
#include <QWidget>

inline QImage grabViewportArgb(QGraphicsView* view)
{
    QApplication::processEvents();
    return view->viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};
