#pragma once

#include "kesimagewnd_export.h"

#include <QLabel>
#include <QPointF>
#include <QSize>

// The strip at the bottom of the window: one line of text for the position
// under the mouse, with picture size, position, pixel value and zoom. A passive
// label, fed by the window; the line stays until the next update.
class KESIMAGEWND_TESTS_EXPORT Statusbar : public QLabel
{
    Q_OBJECT

public:
    // Blue stands ahead of green here; the line prints red, green, blue.
    struct StatusInformation
    {
        QSize imageSize;
        QPointF pos;
        double red = 0.0;
        double blue = 0.0;
        double green = 0.0;
        float zoom = 0.0f;
    };

    explicit Statusbar(QWidget* parent = nullptr);
    ~Statusbar() override;

    // The three arguments are ignored.
    void create(unsigned long long, bool, bool);
    void destroy(bool, bool);

    void updateInformation(Statusbar::StatusInformation info);

    // The line as shown.
    QString infoText() const;
    QLabel* infoLabel() const { return m_infoLabel; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* m_infoLabel;
};
