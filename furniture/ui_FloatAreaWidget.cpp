#include "ui_FloatAreaWidget.h"

QToolButton* Ui_FloatAreaWidget::makeButton(QWidget* form, const char* name, QSizePolicy::Policy policy,
                                            const char* iconPath, int iconSize)
{
    auto* button = new QToolButton(form);
    button->setObjectName(QString::fromUtf8(name));
    QSizePolicy sizePolicy(policy, policy);
    sizePolicy.setHorizontalStretch(0);
    sizePolicy.setVerticalStretch(0);
    sizePolicy.setHeightForWidth(button->sizePolicy().hasHeightForWidth());
    button->setSizePolicy(sizePolicy);
    button->setMinimumSize(QSize(0, 0));
    button->setMaximumSize(QSize(64, 64));
    QIcon icon;
    icon.addFile(QString::fromUtf8(iconPath), QSize(), QIcon::Normal, QIcon::Off);
    button->setIcon(icon);
    button->setIconSize(QSize(iconSize, iconSize));
    // The strip lies on the picture: a raised button panel would cover it with
    // the style's opaque button colour, whatever the style sheet says.
    button->setAutoRaise(true);
    return button;
}

void Ui_FloatAreaWidget::setupUi(QWidget* form)
{
    if (form->objectName().isEmpty())
        form->setObjectName(QString::fromUtf8("FloatAreaWidget"));
    form->resize(535, 68);
    form->setStyleSheet(QString::fromUtf8("background-color: transparent"));

    horizontalLayout_5 = new QHBoxLayout(form);
    horizontalLayout_5->setSpacing(6);
    horizontalLayout_5->setContentsMargins(11, 11, 11, 11);
    horizontalLayout_5->setObjectName(QString::fromUtf8("horizontalLayout_5"));
    horizontalLayout_5->setContentsMargins(0, 0, 0, 0);
    horizontalLayout_4 = new QHBoxLayout();
    horizontalLayout_4->setSpacing(6);
    horizontalLayout_4->setObjectName(QString::fromUtf8("horizontalLayout_4"));
    horizontalLayout = new QHBoxLayout();
    horizontalLayout->setSpacing(0);
    horizontalLayout->setObjectName(QString::fromUtf8("horizontalLayout"));

    floatBtn = makeButton(form, "floatBtn", QSizePolicy::Preferred, ":/res/图像窗口关闭.png", 66);
    floatBtn->setStyleSheet(QString::fromUtf8("background-color: transparent"));
    horizontalLayout->addWidget(floatBtn);

    intoBtn = makeButton(form, "intoBtn", QSizePolicy::Expanding, ":/res/图像窗口回归.png", 66);
    intoBtn->setPopupMode(QToolButton::DelayedPopup);
    intoBtn->setToolButtonStyle(Qt::ToolButtonIconOnly);
    horizontalLayout->addWidget(intoBtn);
    horizontalLayout_4->addLayout(horizontalLayout);

    horizontalLayout_2 = new QHBoxLayout();
    horizontalLayout_2->setSpacing(0);
    horizontalLayout_2->setObjectName(QString::fromUtf8("horizontalLayout_2"));
    zoominBtn = makeButton(form, "zoominBtn", QSizePolicy::Preferred, ":/res/放大.png", 66);
    horizontalLayout_2->addWidget(zoominBtn);
    zoomoutBtn = makeButton(form, "zoomoutBtn", QSizePolicy::Preferred, ":/res/缩小.png", 66);
    horizontalLayout_2->addWidget(zoomoutBtn);
    horizontalLayout_4->addLayout(horizontalLayout_2);

    horizontalLayout_3 = new QHBoxLayout();
    horizontalLayout_3->setSpacing(6);
    horizontalLayout_3->setObjectName(QString::fromUtf8("horizontalLayout_3"));
    adaptBtn = makeButton(form, "adaptBtn", QSizePolicy::Preferred, ":/res/自适应.png", 64);
    horizontalLayout_3->addWidget(adaptBtn);
    picturesizeBtn = makeButton(form, "picturesizeBtn", QSizePolicy::Preferred, ":/res/1：1.png", 64);
    horizontalLayout_3->addWidget(picturesizeBtn);
    horizontalLayout_4->addLayout(horizontalLayout_3);

    horizontalLayout_5->addLayout(horizontalLayout_4);
    horizontalSpacer = new QSpacerItem(196, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);
    horizontalLayout_5->addItem(horizontalSpacer);
    tipLabel = new QLabel(form);
    tipLabel->setObjectName(QString::fromUtf8("tipLabel"));
    horizontalLayout_5->addWidget(tipLabel);

    retranslateUi(form);
    QMetaObject::connectSlotsByName(form);
}

void Ui_FloatAreaWidget::retranslateUi(QWidget* form)
{
    form->setWindowTitle(QCoreApplication::translate("FloatAreaWidget", "FloatAreaWidget", nullptr));
    floatBtn->setText(QCoreApplication::translate("FloatAreaWidget", "...", nullptr));
    intoBtn->setText(QCoreApplication::translate("FloatAreaWidget", "...", nullptr));
    zoominBtn->setText(QCoreApplication::translate("FloatAreaWidget", "...", nullptr));
    zoomoutBtn->setText(QCoreApplication::translate("FloatAreaWidget", "...", nullptr));
    adaptBtn->setText(QString());
    picturesizeBtn->setText(QString());
    tipLabel->setText(QString());
}
