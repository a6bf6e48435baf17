#pragma once

#include "kesimagewnd_export.h"

#include <QScrollBar>

// A scroll bar that announces every change of its value by a signal without
// arguments, before the base class handles it. The view keeps the default
// scroll bars; this one is for hosts that install it themselves.
class KESIMAGEWND_TESTS_EXPORT QImageCtrlScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    QImageCtrlScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

signals:
    void sliderChange();

protected:
    void sliderChange(QAbstractSlider::SliderChange change) override;
};
