#pragma once

#include <KESImageWnd.h>

#include <QMainWindow>
#include <QStringList>

class QWidget;

// The demo host's main window: one KESImageWnd embedded in the central widget,
// kept filling it, and a list of picture files to step through.
class ViewerWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit ViewerWindow(const QStringList& files, QWidget* parent = nullptr);
    ~ViewerWindow() override;

    // Prints every signal of the image window to stdout, one line each.
    void reportEvents();

    // Shows the picture at `index` of the list, or the generated picture when
    // the list is empty. False when the file cannot be read.
    bool showPicture(int index);
    int pictureCount() const { return m_files.size(); }

    KESImageWnd* imageWindow() const { return m_imageWnd; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addShortcuts();
    void step(int delta);
    void togglePixelValues();
    void setTitle(const QString& what);

    QStringList m_files;
    int m_current;
    QWidget* m_central;
    KESImageWnd* m_imageWnd;
    bool m_pixelValues;
};
