#pragma once

#include "kesimagewnd_export.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QSpacerItem>
#include <QToolButton>
#include <QWidget>

// The form of the floating area: a transparent strip with the float and into
// buttons, the zoom buttons, the fit and one-to-one buttons, and a tip label on
// the right. Object names are those of the fields, so that the area's
// on_<name>_clicked slots find their buttons.
class KESIMAGEWND_TESTS_EXPORT Ui_FloatAreaWidget
{
public:
    QHBoxLayout* horizontalLayout_5 = nullptr;
    QHBoxLayout* horizontalLayout_4 = nullptr;
    QHBoxLayout* horizontalLayout = nullptr;
    QToolButton* floatBtn = nullptr;
    QToolButton* intoBtn = nullptr;
    QHBoxLayout* horizontalLayout_2 = nullptr;
    QToolButton* zoominBtn = nullptr;
    QToolButton* zoomoutBtn = nullptr;
    QHBoxLayout* horizontalLayout_3 = nullptr;
    QToolButton* adaptBtn = nullptr;
    QToolButton* picturesizeBtn = nullptr;
    QSpacerItem* horizontalSpacer = nullptr;
    QLabel* tipLabel = nullptr;

    void setupUi(QWidget* form);
    void retranslateUi(QWidget* form);

private:
    static QToolButton* makeButton(QWidget* form, const char* name, QSizePolicy::Policy policy,
                                   const char* iconPath, int iconSize);
};
