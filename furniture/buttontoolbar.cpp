#include "buttontoolbar.h"

ButtonToolbar::ButtonToolbar(QWidget* parent)
    : QLabel(parent)
{
}
