#include "viewerwindow.h"

#include "picturefile.h"
#include "samplepicture.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsView>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPushButton>
#include <QResizeEvent>
#include <QWidget>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

// One line on stdout, flushed at once so that a pipe sees each event as it happens.
__attribute__((format(printf, 1, 2))) void printLine(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::vprintf(format, args);
    va_end(args);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// The tool bar's buttons, by number.
constexpr int kLoadButton = 0;
constexpr int kRectangleButton = 6;
constexpr int kToolbarButtons = 13;

} // namespace

ViewerWindow::ViewerWindow(const QStringList& files, QWidget* parent)
    : QMainWindow(parent)
    , m_files(files)
    , m_current(-1)
    , m_central(new QWidget(this))
    , m_imageWnd(new KESImageWnd(this))
    , m_pixelValues(true)
{
    setCentralWidget(m_central);
    m_central->setMinimumSize(160, 120);
    m_imageWnd->create(reinterpret_cast<qlonglong>(m_central));
    // An operator zooms in to read pixel values: have them shown from the start.
    m_imageWnd->enablePixelVisible(m_pixelValues);
    m_central->installEventFilter(this);
    // Queued: the host's own dialog opens once the window has finished its
    // click, not in the middle of it.
    connect(m_imageWnd, &KESImageWnd::buttonClicked, this, &ViewerWindow::onButtonClicked, Qt::QueuedConnection);
    addShortcuts();
    setTitle(QString());
}

ViewerWindow::~ViewerWindow()
{
    // The image window goes before the widget it lives in.
    m_central->removeEventFilter(this);
    m_imageWnd->destory();
}

bool ViewerWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_central && event->type() == QEvent::Resize) {
        const QSize size = static_cast<QResizeEvent*>(event)->size();
        m_imageWnd->move(0, 0, size.width(), size.height());
    }
    return QMainWindow::eventFilter(watched, event);
}

void ViewerWindow::addShortcuts()
{
    auto add = [this](const QList<QKeySequence>& keys, auto slot) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WindowShortcut);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
    };
    add({QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::Key_N)}, [this] { step(+1); });
    add({QKeySequence(Qt::Key_PageUp), QKeySequence(Qt::Key_P)}, [this] { step(-1); });
    add({QKeySequence(Qt::Key_Plus), QKeySequence(Qt::Key_Equal), QKeySequence(Qt::SHIFT + Qt::Key_Plus)},
        [this] { m_imageWnd->zoomIn(); });
    add({QKeySequence(Qt::Key_Minus), QKeySequence(Qt::Key_Underscore)}, [this] { m_imageWnd->zoomOut(); });
    add({QKeySequence(Qt::Key_F)}, [this] { m_imageWnd->zoomFitWnd(); });
    add({QKeySequence(Qt::Key_1)}, [this] { m_imageWnd->zoomReset(); });
    add({QKeySequence(Qt::Key_L)}, [this] { togglePixelValues(); });
    add({QKeySequence(Qt::Key_R)}, [this] { startRectangleDrawing(); });
    add({QKeySequence(Qt::Key_Q), QKeySequence(Qt::Key_Escape)}, [this] { close(); });
}

void ViewerWindow::onButtonClicked(long button)
{
    if (button == kLoadButton)
        openPictureDialog();
}

void ViewerWindow::openPictureDialog()
{
    // The window's load button shows the window's own open dialog, but the
    // window reads no file and does not say which one was chosen: it empties
    // its picture and reports only the click, as buttonClicked(0). The host
    // asks for the file itself and shows it.
    const QString folder =
        m_current >= 0 && m_current < m_files.size() ? QFileInfo(m_files.at(m_current)).absolutePath()
                                                     : QDir::currentPath();
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open picture"), folder,
        QStringLiteral("Pictures (*.png *.bmp *.jpg *.jpeg *.tif *.tiff);;"
                       "PNG (*.png);;BMP (*.bmp);;JPEG (*.jpg *.jpeg);;TIFF (*.tif *.tiff);;"
                       "All files (*)"));
    if (path.isEmpty()) {
        // The window has emptied its picture: put the one shown back.
        showPicture(qMax(m_current, 0));
        return;
    }
    const QString absolute = QFileInfo(path).absoluteFilePath();
    int index = -1;
    for (int i = 0; i < m_files.size(); ++i) {
        if (QFileInfo(m_files.at(i)).absoluteFilePath() == absolute) {
            index = i;
            break;
        }
    }
    if (index < 0) {
        m_files.append(path);
        index = m_files.size() - 1;
    }
    showPicture(index);
}

QGraphicsView* ViewerWindow::pictureView() const
{
    return m_central->findChild<QGraphicsView*>();
}

QPushButton* ViewerWindow::toolbarButton(int number) const
{
    if (number < 0 || number >= kToolbarButtons)
        return nullptr;
    // The tool bar is the widget that holds the 13 push buttons. Shown, they
    // stand in one row, left to right in the order of their numbers.
    const QList<QWidget*> widgets = m_central->findChildren<QWidget*>();
    for (QWidget* bar : widgets) {
        QList<QPushButton*> buttons = bar->findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly);
        if (buttons.size() != kToolbarButtons)
            continue;
        std::stable_sort(buttons.begin(), buttons.end(),
                         [](const QPushButton* a, const QPushButton* b) { return a->x() < b->x(); });
        return buttons.at(number);
    }
    return nullptr;
}

bool ViewerWindow::startRectangleDrawing()
{
    QPushButton* button = toolbarButton(kRectangleButton);
    if (!button)
        return false;
    button->click();
    return true;
}

void ViewerWindow::sendMouse(QEvent::Type type, const QPointF& picturePos, Qt::MouseButton button,
                             Qt::MouseButtons buttons)
{
    QGraphicsView* view = pictureView();
    QWidget* viewport = view->viewport();
    // Scene coordinates are picture pixels.
    const QPoint local = view->mapFromScene(picturePos);
    QMouseEvent event(type, QPointF(local), QPointF(viewport->mapTo(this, local)),
                      QPointF(viewport->mapToGlobal(local)), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(viewport, &event);
}

bool ViewerWindow::drawRectangle(const QPointF& from, const QPointF& to, QString* error)
{
    QGraphicsView* view = pictureView();
    if (!view) {
        *error = QStringLiteral("the window has no view");
        return false;
    }
    // An operator reaches only what the view shows.
    const QRect shown = view->viewport()->rect();
    for (const QPointF& corner : {from, to}) {
        if (!shown.contains(view->mapFromScene(corner))) {
            *error = QStringLiteral("%1,%2 lies outside what the view shows").arg(corner.x()).arg(corner.y());
            return false;
        }
    }
    if (!startRectangleDrawing()) {
        *error = QStringLiteral("the tool bar has no rectangle button");
        return false;
    }
    QApplication::processEvents();

    // The drag: press at one corner, a few moves on the way, release at the other.
    sendMouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    constexpr int kMoves = 4;
    for (int i = 1; i <= kMoves; ++i) {
        const QPointF p = from + (to - from) * (double(i) / kMoves);
        sendMouse(QEvent::MouseMove, p, Qt::NoButton, Qt::LeftButton);
    }
    sendMouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    QApplication::processEvents();

    // A click in the middle selects the new rectangle.
    const QPointF middle = (from + to) / 2.0;
    sendMouse(QEvent::MouseButtonPress, middle, Qt::LeftButton, Qt::LeftButton);
    sendMouse(QEvent::MouseButtonRelease, middle, Qt::LeftButton, Qt::NoButton);
    QApplication::processEvents();
    return true;
}

void ViewerWindow::step(int delta)
{
    if (m_files.size() < 2)
        return;
    const int next = (m_current + delta + m_files.size()) % m_files.size();
    showPicture(next);
}

void ViewerWindow::togglePixelValues()
{
    m_pixelValues = !m_pixelValues;
    m_imageWnd->enablePixelVisible(m_pixelValues);
}

void ViewerWindow::setTitle(const QString& what)
{
    setWindowTitle(what.isEmpty() ? QStringLiteral("kesview") : QStringLiteral("%1 - kesview").arg(what));
}

bool ViewerWindow::showPicture(int index)
{
    if (m_files.isEmpty()) {
        VorImage sample(makeSamplePicture());
        m_imageWnd->setBackground(sample);
        setTitle(QStringLiteral("generated inspection picture, %1 x %2, 8-bit grey")
                     .arg(sample.Width())
                     .arg(sample.Height()));
        return true;
    }
    if (index < 0 || index >= m_files.size())
        return false;
    m_current = index;
    const QString& path = m_files.at(index);
    const QString name = QFileInfo(path).fileName();
    const QString position =
        m_files.size() > 1 ? QStringLiteral(" (%1/%2)").arg(index + 1).arg(m_files.size()) : QString();

    const PictureFile file = readPictureFile(path);
    if (file.mat.empty()) {
        std::fprintf(stderr, "kesview: %s: %s\n", qPrintable(path), qPrintable(file.error));
        std::fflush(stderr);
        m_imageWnd->clearBackground();
        setTitle(QStringLiteral("%1%2 - unreadable").arg(name, position));
        return false;
    }
    VorImage picture(file.mat);
    m_imageWnd->setBackground(picture);
    setTitle(QStringLiteral("%1%2 - %3").arg(name, position, file.describe));
    return true;
}

void ViewerWindow::reportEvents()
{
    KESImageWnd* w = m_imageWnd;
    connect(w, &KESImageWnd::mouseMove, this, [](double x, double y) { printLine("mouseMove %g %g", x, y); });
    connect(w, &KESImageWnd::imgInfo, this, [](double x, double y, int r, int g, int b, float scale) {
        printLine("imgInfo %g %g %d %d %d %.3f", x, y, r, g, b, double(scale));
    });
    connect(w, &KESImageWnd::mouseButtonDown, this, [](long button) { printLine("mouseButtonDown %ld", button); });
    connect(w, &KESImageWnd::mouseButtonUp, this, [](long button) { printLine("mouseButtonUp %ld", button); });
    connect(w, &KESImageWnd::shapeResized, this, [](long id) { printLine("shapeResized %ld", id); });
    connect(w, &KESImageWnd::shapeMoved, this, [](long id) { printLine("shapeMoved %ld", id); });
    connect(w, &KESImageWnd::shapeClicked, this, [](long id) { printLine("shapeClicked %ld", id); });
    connect(w, &KESImageWnd::buttonClicked, this, [](long button) { printLine("buttonClicked %ld", button); });
    connect(w, &KESImageWnd::floatBtnClicked, this,
            [](bool checked) { printLine("floatBtnClicked %s", checked ? "true" : "false"); });
    connect(w, &KESImageWnd::intoBtnClicked, this,
            [](bool checked) { printLine("intoBtnClicked %s", checked ? "true" : "false"); });
    connect(w, &KESImageWnd::mouseDoubleClick, this, [] { printLine("mouseDoubleClick"); });
    connect(w, &KESImageWnd::mouseClicked, this, [](double x, double y) { printLine("mouseClicked %g %g", x, y); });
}
