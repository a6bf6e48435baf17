#pragma once

#include "kesimagewnd_export.h"
#include "ui_FloatAreaWidget.h"

#include <QWidget>

// A small transparent strip of buttons that lies over the picture at the top
// left of the view, for hosts that run without the tool bar: float and into
// buttons (the host does the floating), zoom in and out, fit and one-to-one,
// and a tip text. It only reports its buttons.
class KESIMAGEWND_TESTS_EXPORT FloatAreaWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FloatAreaWidget(QWidget* parent = nullptr);
    ~FloatAreaWidget() override;

    const Ui_FloatAreaWidget& ui() const { return m_ui; }

signals:
    void floatBtnClicked(bool checked);
    void intoBtnClicked(bool checked);
    void zoomInClicked(bool checked);
    void zoomOutClicked(bool checked);
    // Fit the picture to the window.
    void adaptClicked(bool checked);
    // One-to-one, from the picture-size button.
    void fitClicked(bool checked);

public slots:
    void setTipText(QString text);
    void setIntoBtnVisible(bool visiable);

    void on_floatBtn_clicked(bool checked);
    void on_intoBtn_clicked(bool checked);
    void on_zoominBtn_clicked(bool checked);
    void on_zoomoutBtn_clicked(bool checked);
    void on_adaptBtn_clicked(bool checked);
    void on_picturesizeBtn_clicked(bool checked);

private:
    Ui_FloatAreaWidget m_ui;
};
