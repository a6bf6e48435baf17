#include "qimagectrlscrollbar.h"

QImageCtrlScrollBar::QImageCtrlScrollBar(Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent)
{
}

void QImageCtrlScrollBar::sliderChange(QAbstractSlider::SliderChange change)
{
    if (change == QAbstractSlider::SliderValueChange)
        emit sliderChange();
    QScrollBar::sliderChange(change);
}
