#include "FloatAreaWidget.h"

FloatAreaWidget::FloatAreaWidget(QWidget* parent)
    : QWidget(parent)
{
    m_ui.setupUi(this);
    m_ui.floatBtn->setVisible(false);
    m_ui.intoBtn->setVisible(false);
    // No button is checkable, so toggled never fires: clicks arrive through the
    // on_..._clicked slots. A checkable button would report twice.
    connect(m_ui.floatBtn, SIGNAL(toggled(bool)), this, SIGNAL(floatBtnClicked(bool)));
    connect(m_ui.intoBtn, SIGNAL(toggled(bool)), this, SIGNAL(intoBtnClicked(bool)));
    connect(m_ui.zoominBtn, SIGNAL(toggled(bool)), this, SIGNAL(zoomInClicked(bool)));
    connect(m_ui.zoomoutBtn, SIGNAL(toggled(bool)), this, SIGNAL(zoomOutClicked(bool)));
    connect(m_ui.adaptBtn, SIGNAL(toggled(bool)), this, SIGNAL(adaptClicked(bool)));
    connect(m_ui.picturesizeBtn, SIGNAL(toggled(bool)), this, SIGNAL(fitClicked(bool)));
}

FloatAreaWidget::~FloatAreaWidget() = default;

void FloatAreaWidget::setTipText(QString text)
{
    m_ui.tipLabel->setText(text);
}

void FloatAreaWidget::setIntoBtnVisible(bool visiable)
{
    m_ui.intoBtn->setVisible(visiable);
}

void FloatAreaWidget::on_floatBtn_clicked(bool checked)
{
    emit floatBtnClicked(checked);
}

void FloatAreaWidget::on_intoBtn_clicked(bool checked)
{
    emit intoBtnClicked(checked);
}

void FloatAreaWidget::on_zoominBtn_clicked(bool checked)
{
    emit zoomInClicked(checked);
}

void FloatAreaWidget::on_zoomoutBtn_clicked(bool checked)
{
    emit zoomOutClicked(checked);
}

void FloatAreaWidget::on_adaptBtn_clicked(bool checked)
{
    emit adaptClicked(checked);
}

void FloatAreaWidget::on_picturesizeBtn_clicked(bool checked)
{
    emit fitClicked(checked);
}
