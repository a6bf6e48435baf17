#pragma once

#include <QLabel>

// The row of push buttons at the top of the window. Each button has a fixed
// number, its PUSHBUTTON value, which is also the indexButton the host hears in
// mouseButtonDown, mouseButtonUp and buttonClicked.
class ButtonToolbar : public QLabel
{
    Q_OBJECT

public:
    enum PUSHBUTTON {
        PB_LOAD_IMAGE = 0,
        PB_ZOOM_IN = 1,
        PB_ZOOM_OUT = 2,
        PB_ZOOM_FIT = 3,
        PB_ZOOM_ORG = 4,
        PB_DRAW_LINE = 5,
        PB_DRAW_RECT = 6,
        PB_DRAW_RECT2 = 7,
        PB_DRAW_ELLIPSE = 8,
        PB_DRAW_CIRCLE = 9,
        PB_DRAW_ANNULAR = 10,
        PB_DRAW_POLYGON = 11,
        PB_DRAW_POINT = 12
    };
    Q_ENUM(PUSHBUTTON)

    explicit ButtonToolbar(QWidget* parent = nullptr);
};
