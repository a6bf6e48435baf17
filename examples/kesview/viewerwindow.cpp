#include "viewerwindow.h"

#include "picturefile.h"
#include "samplepicture.h"
#include "shapefile.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsView>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPushButton>
#include <QResizeEvent>
#include <QTimer>
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

// A draw button and the points its shape is drawn through.
struct DrawKind
{
    const char* name;
    int button;
    int minPoints;
    int maxPoints;
};

constexpr int kAnyNumber = 1 << 20;

const DrawKind kDrawKinds[] = {
    {"line", 5, 2, 2},    {"rect", 6, 2, 2},   {"rect2", 7, 2, 2},       {"ellipse", 8, 2, 2},
    {"circle", 9, 2, 2},  {"annulus", 10, 2, 2}, {"polygon", 11, 3, kAnyNumber}, {"point", 12, 1, 1},
};

// Mouse moves on the way of a drag, as a hand makes them.
constexpr int kDragMoves = 4;

// Lets the window's own timers run: the polygon tool takes a click on the
// next tick of its timer, and an operator's double click never comes sooner.
void letTheWindowCatchUp()
{
    QEventLoop loop;
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

ViewerWindow::ViewerWindow(const QStringList& files, QWidget* parent)
    : QMainWindow(parent)
    , m_files(files)
    , m_current(-1)
    , m_central(new QWidget(this))
    , m_imageWnd(new KESImageWnd(this))
    , m_pixelValues(true)
    , m_inspect(false)
    , m_reporting(false)
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

bool ViewerWindow::reachable(const QVector<QPointF>& points, QString* error) const
{
    QGraphicsView* view = pictureView();
    if (!view) {
        *error = QStringLiteral("the window has no view");
        return false;
    }
    // An operator reaches only what the view shows.
    const QRect shown = view->viewport()->rect();
    for (const QPointF& point : points) {
        if (!shown.contains(view->mapFromScene(point))) {
            *error = QStringLiteral("%1,%2 lies outside what the view shows").arg(point.x()).arg(point.y());
            return false;
        }
    }
    return true;
}

bool ViewerWindow::drawRectangle(const QPointF& from, const QPointF& to, QString* error)
{
    if (!drawShape(QStringLiteral("rect"), {from, to}, error))
        return false;
    // A click in the middle selects the new rectangle.
    return clickPicture((from + to) / 2.0, error);
}

QStringList ViewerWindow::drawKinds()
{
    QStringList names;
    for (const DrawKind& kind : kDrawKinds)
        names << QString::fromLatin1(kind.name);
    return names;
}

bool ViewerWindow::drawShape(const QString& kindName, const QVector<QPointF>& points, QString* error)
{
    const DrawKind* kind = nullptr;
    for (const DrawKind& k : kDrawKinds) {
        if (kindName == QLatin1String(k.name))
            kind = &k;
    }
    if (!kind) {
        *error = QStringLiteral("no draw button makes a \"%1\"; the kinds are %2")
                     .arg(kindName, drawKinds().join(QStringLiteral(", ")));
        return false;
    }
    if (points.size() < kind->minPoints || points.size() > kind->maxPoints) {
        *error = kind->minPoints == kind->maxPoints
                     ? QStringLiteral("a %1 takes %2 point(s), not %3").arg(kindName).arg(kind->minPoints).arg(points.size())
                     : QStringLiteral("a %1 takes %2 points or more, not %3")
                           .arg(kindName)
                           .arg(kind->minPoints)
                           .arg(points.size());
        return false;
    }
    if (!reachable(points, error))
        return false;
    QPushButton* button = toolbarButton(kind->button);
    if (!button) {
        *error = QStringLiteral("the tool bar has no %1 button").arg(kindName);
        return false;
    }
    button->click();
    QApplication::processEvents();

    if (kind->maxPoints == 1) {
        clickPicture(points.first(), error);
    } else if (kind->maxPoints == 2) {
        // The drag: press at the first point, a few moves on the way, release
        // at the second.
        const QPointF from = points.first();
        const QPointF to = points.last();
        sendMouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        for (int i = 1; i <= kDragMoves; ++i)
            sendMouse(QEvent::MouseMove, from + (to - from) * (double(i) / kDragMoves), Qt::NoButton, Qt::LeftButton);
        sendMouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    } else {
        // A click on every corner, the mouse moving between them; the last
        // click is the first half of a double click.
        for (const QPointF& corner : points) {
            sendMouse(QEvent::MouseMove, corner, Qt::NoButton, Qt::NoButton);
            sendMouse(QEvent::MouseButtonPress, corner, Qt::LeftButton, Qt::LeftButton);
            sendMouse(QEvent::MouseButtonRelease, corner, Qt::LeftButton, Qt::NoButton);
            letTheWindowCatchUp();
        }
        sendMouse(QEvent::MouseButtonDblClick, points.last(), Qt::LeftButton, Qt::LeftButton);
        sendMouse(QEvent::MouseButtonRelease, points.last(), Qt::LeftButton, Qt::NoButton);
    }
    QApplication::processEvents();
    return true;
}

bool ViewerWindow::clickPicture(const QPointF& point, QString* error)
{
    if (!reachable({point}, error))
        return false;
    sendMouse(QEvent::MouseButtonPress, point, Qt::LeftButton, Qt::LeftButton);
    sendMouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton);
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
        const cv::Mat mat = makeSamplePicture();
        VorImage sample(mat);
        m_imageWnd->setBackground(sample);
        setTitle(QStringLiteral("generated inspection picture, %1 x %2, 8-bit grey")
                     .arg(sample.Width())
                     .arg(sample.Height()));
        inspect(mat, QStringLiteral("generated picture"));
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
    inspect(file.mat, name);
    return true;
}

void ViewerWindow::setInspection(bool on, const InspectionSettings& settings)
{
    m_inspect = on;
    m_inspectionSettings = settings;
}

void ViewerWindow::inspect(const cv::Mat& picture, const QString& source)
{
    if (!m_inspect)
        return;
    m_inspection = inspectPicture(picture, m_inspectionSettings);
    const int refused = showInspection(m_imageWnd, m_inspection, source, &m_outlineIds);
    if (refused > 0)
        std::fprintf(stderr, "kesview: the window refused %d shapes of the hole check\n", refused);
    if (m_reporting)
        printLine("inspection %d holes %d others threshold %d %.1f ms", m_inspection.holes, m_inspection.others,
                  m_inspection.threshold, m_inspection.milliseconds);
}

void ViewerWindow::printReadBack(long id)
{
    VorROI roi;
    if (m_imageWnd->getROIShape(id, &roi) == 0 && roi.ROIType() >= 0) {
        printLine("shape %ld: %s", id, qPrintable(shapeFileLine(roi)));
        return;
    }
    VorOverlay overlay;
    if (m_imageWnd->getOverlayShape(id, &overlay) == 0) {
        printLine("shape %ld: overlay of type %d", id, overlay.OverlayType());
        return;
    }
    // A shape drawn too small is thrown away at the end of its gesture.
    printLine("shape %ld: gone", id);
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
    m_reporting = true;
    connect(w, &KESImageWnd::shapeResized, this, [](long id) { printLine("shapeResized %ld", id); });
    connect(w, &KESImageWnd::shapeMoved, this, [](long id) { printLine("shapeMoved %ld", id); });
    connect(w, &KESImageWnd::shapeClicked, this, [](long id) { printLine("shapeClicked %ld", id); });
    // The shape is read back once the operator's gesture has ended: the
    // signal comes before the window's last word on it (a new shape drawn
    // too small is dropped after its shapeClicked).
    for (auto signal : {&KESImageWnd::shapeResized, &KESImageWnd::shapeMoved, &KESImageWnd::shapeClicked})
        connect(w, signal, this, &ViewerWindow::printReadBack, Qt::QueuedConnection);
    connect(w, &KESImageWnd::buttonClicked, this, [](long button) { printLine("buttonClicked %ld", button); });
    connect(w, &KESImageWnd::floatBtnClicked, this,
            [](bool checked) { printLine("floatBtnClicked %s", checked ? "true" : "false"); });
    connect(w, &KESImageWnd::intoBtnClicked, this,
            [](bool checked) { printLine("intoBtnClicked %s", checked ? "true" : "false"); });
    connect(w, &KESImageWnd::mouseDoubleClick, this, [] { printLine("mouseDoubleClick"); });
    connect(w, &KESImageWnd::mouseClicked, this, [](double x, double y) { printLine("mouseClicked %g %g", x, y); });
}
