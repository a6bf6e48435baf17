#pragma once

#include "kesimagewnd_export.h"

#include <QLabel>
#include <QString>

class QPushButton;

// The row of 13 push buttons at the top of the window: load, four zoom
// commands and seven draw commands. Each button has a fixed number, its
// PUSHBUTTON value, which is also the indexButton the host hears, and a flag
// bit by which a host shows or hides it. The bar places its buttons by hand:
// square buttons as high as the bar, from x = 1, closing up over hidden ones.
class KESIMAGEWND_TESTS_EXPORT ButtonToolbar : public QLabel
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

    static constexpr int kButtonCount = 13;

    // The flag bit of a button in the push-button flag word.
    static long flagBit(int button);
    // The resource path of a button's icon.
    static QString iconPath(int button);

    explicit ButtonToolbar(QWidget* parent = nullptr);
    ~ButtonToolbar() override;

    // The three arguments are ignored.
    void create(unsigned long long, bool, bool);
    // The int is ignored; the caller keeps the button.
    QPushButton* CreateButton(int, QString iconPath);
    void destroy(bool, bool);
    void SetVisible(ButtonToolbar::PUSHBUTTON button, bool visible);

    QPushButton* button(int index) const;
    bool buttonVisible(int index) const;

signals:
    void LoadImagePushButtonClicked(bool checked = false);
    void ZoomInPushButtonClicked(bool checked = false);
    void ZoomOutPushButtonClicked(bool checked = false);
    void ZoomFitPushButtonClicked(bool checked = false);
    void ZoomOrgPushButtonClicked(bool checked = false);
    void DrawLinePushButtonClicked(bool checked = false);
    void DrawRectPushButtonClicked(bool checked = false);
    void DrawRect2PushButtonClicked(bool checked = false);
    void DrawEllipsePushButtonClicked(bool checked = false);
    void DrawCirclePushButtonClicked(bool checked = false);
    void DrawAnnularPushButtonClicked(bool checked = false);
    void DrawPolygonPushButtonClicked(bool checked = false);
    void DrawAnylinePushButtonClicked(bool checked = false);
    void DrawAnyCloselinePushButtonClicked(bool checked = false);
    void DrawPointPushButtonClicked(bool checked = false);

    void LoadImagePushButtonPressed();
    void ZoomInPushButtonPressed();
    void ZoomOutPushButtonPressed();
    void ZoomFitPushButtonPressed();
    void ZoomOrgPushButtonPressed();
    void DrawLinePushButtonPressed();
    void DrawRectPushButtonPressed();
    void DrawRect2PushButtonPressed();
    void DrawEllipsePushButtonPressed();
    void DrawCirclePushButtonPressed();
    void DrawAnnularPushButtonPressed();
    void DrawPolygonPushButtonPressed();
    void DrawAnylinePushButtonPressed();
    void DrawPointPushButtonPressed();

    void LoadImagePushButtonReleased();
    void ZoomInPushButtonReleased();
    void ZoomOutPushButtonReleased();
    void ZoomFitPushButtonReleased();
    void ZoomOrgPushButtonReleased();
    void DrawLinePushButtonReleased();
    void DrawRectPushButtonReleased();
    void DrawRect2PushButtonReleased();
    void DrawEllipsePushButtonReleased();
    void DrawCirclePushButtonReleased();
    void DrawAnnularPushButtonReleased();
    void DrawPolygonPushButtonReleased();
    void DrawAnylinePushButtonReleased();
    void DrawPointPushButtonReleased();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeButtons();

    QPushButton* m_buttons[kButtonCount];
    bool m_buttonVisible[kButtonCount];
};
