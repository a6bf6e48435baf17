#include "statusbar.h"

#include <QVBoxLayout>

Statusbar::Statusbar(QWidget* parent)
    : QLabel(parent)
    , m_infoLabel(nullptr)
{
}

Statusbar::~Statusbar()
{
    destroy(true, true);
}

void Statusbar::create(unsigned long long, bool, bool)
{
    // Frame style 50: a panel (2) with the shadow bits 0x30.
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    m_infoLabel = new QLabel(this);
    m_infoLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_infoLabel->setFont(QFont("Arial"));
    m_infoLabel->setText("Info:");
    auto* layout = new QVBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_infoLabel);
    setLayout(layout);
}

void Statusbar::destroy(bool, bool)
{
    if (m_infoLabel) {
        m_infoLabel->setParent(nullptr);
        delete m_infoLabel;
        m_infoLabel = nullptr;
    }
}

void Statusbar::updateInformation(Statusbar::StatusInformation info)
{
    if (!m_infoLabel)
        return;
    // Not passed through tr: the line is the same in every language.
    QString line;
    line.sprintf("Information: %dX%d POS(%.1f, %.1f) RGB(%d, %d, %d) ZOOM:%.3f",
                 info.imageSize.width(), info.imageSize.height(), info.pos.x(), info.pos.y(),
                 int(info.red), int(info.green), int(info.blue), double(info.zoom));
    m_infoLabel->setText(line);
}

QString Statusbar::infoText() const
{
    return m_infoLabel ? m_infoLabel->text() : QString();
}

void Statusbar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
}
