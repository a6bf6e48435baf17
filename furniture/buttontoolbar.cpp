#include "buttontoolbar.h"

#include <QIcon>
#include <QPushButton>

namespace {

struct ButtonDef
{
    const char* stem;
    long flag;
    const char* icon;
};

// By PUSHBUTTON number. The flag bits are not in the order of the numbers.
const ButtonDef kButtons[ButtonToolbar::kButtonCount] = {
    {"LoadImage", 0x80000000L, ":/res/open.bmp"},
    {"ZoomIn", 0x40000000L, ":/res/zoom in.bmp"},
    {"ZoomOut", 0x20000000L, ":/res/zoom out.bmp"},
    {"ZoomFit", 0x10000000L, ":/res/zoom fit.bmp"},
    {"ZoomOrg", 0x08000000L, ":/res/zoom 11.bmp"},
    {"DrawLine", 0x00800000L, ":/res/line.bmp"},
    {"DrawRect", 0x04000000L, ":/res/rectangle.bmp"},
    {"DrawRect2", 0x00040000L, ":/res/rectangle2.bmp"},
    {"DrawEllipse", 0x01000000L, ":/res/Oval.bmp"},
    {"DrawCircle", 0x00020000L, ":/res/Circle.bmp"},
    {"DrawAnnular", 0x02000000L, ":/res/Bicyclic.bmp"},
    {"DrawPolygon", 0x00400000L, ":/res/polygon.bmp"},
    {"DrawPoint", 0x00100000L, ":/res/point.bmp"},
};

QByteArray signalOf(const char* stem, const char* suffix)
{
    // The form SIGNAL() produces: a "2" before the signature.
    return QByteArray("2") + stem + suffix;
}

} // namespace

long ButtonToolbar::flagBit(int button)
{
    return button >= 0 && button < kButtonCount ? kButtons[button].flag : 0;
}

QString ButtonToolbar::iconPath(int button)
{
    return button >= 0 && button < kButtonCount ? QString(kButtons[button].icon) : QString();
}

ButtonToolbar::ButtonToolbar(QWidget* parent)
    : QLabel(parent)
{
    for (int i = 0; i < kButtonCount; ++i) {
        m_buttons[i] = nullptr;
        m_buttonVisible[i] = true;
    }
}

ButtonToolbar::~ButtonToolbar()
{
    destroy(true, true);
}

void ButtonToolbar::create(unsigned long long, bool, bool)
{
    // Frame style 50, as the window and the status bar: a panel (2) with the
    // shadow bits 0x30.
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    for (int i = 0; i < kButtonCount; ++i)
        m_buttons[i] = CreateButton(i, kButtons[i].icon);
    for (int i = 0; i < kButtonCount; ++i) {
        connect(m_buttons[i], SIGNAL(clicked(bool)), this, signalOf(kButtons[i].stem, "PushButtonClicked(bool)"));
        connect(m_buttons[i], SIGNAL(pressed()), this, signalOf(kButtons[i].stem, "PushButtonPressed()"));
        connect(m_buttons[i], SIGNAL(released()), this, signalOf(kButtons[i].stem, "PushButtonReleased()"));
    }
}

QPushButton* ButtonToolbar::CreateButton(int, QString iconPath)
{
    // No text, no tool tip, not checkable: a draw button does not stay down.
    return new QPushButton(QIcon(iconPath), QString(), this);
}

void ButtonToolbar::destroy(bool, bool)
{
    for (int i = 0; i < kButtonCount; ++i) {
        if (m_buttons[i]) {
            m_buttons[i]->setParent(nullptr);
            delete m_buttons[i];
            m_buttons[i] = nullptr;
        }
    }
}

QPushButton* ButtonToolbar::button(int index) const
{
    return index >= 0 && index < kButtonCount ? m_buttons[index] : nullptr;
}

bool ButtonToolbar::buttonVisible(int index) const
{
    return index >= 0 && index < kButtonCount && m_buttonVisible[index];
}

void ButtonToolbar::resizeEvent(QResizeEvent*)
{
    const int s = height();
    for (QPushButton* b : m_buttons) {
        if (b)
            b->setIconSize(QSize(s, s));
    }
    placeButtons();
}

void ButtonToolbar::placeButtons()
{
    const int s = height();
    int n = 0;
    for (int i = 0; i < kButtonCount; ++i) {
        if (!m_buttonVisible[i])
            continue;
        if (m_buttons[i])
            m_buttons[i]->setGeometry(n * s + 1, 1, s, s - 3);
        ++n;
    }
}

void ButtonToolbar::SetVisible(ButtonToolbar::PUSHBUTTON button, bool visible)
{
    const int index = int(button);
    if (index < 0 || index >= kButtonCount || !m_buttons[index])
        return;
    m_buttons[index]->setVisible(visible);
    m_buttonVisible[index] = visible;
    placeButtons();
}
