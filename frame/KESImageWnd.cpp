#include "KESImageWnd.h"

#include "ForeLayer.h"
#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "MainWindow.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odtexttool.h"
#include "threadannotations.h"

#include <QFont>
#include <QWidget>

#include <limits>

namespace {

ImageCtrlView* viewOf(CMainWindow* window)
{
    return window->GetImageCtrlView();
}

ImageCtrlScene* sceneOf(CMainWindow* window)
{
    return viewOf(window)->GetImageCtrlScene();
}

// The one shape layer a host addresses: the scene's active layer.
ShaperLayer* shapeLayerOf(CMainWindow* window)
{
    return sceneOf(window)->GetActiveLayer();
}

ImageLayer* imageLayerOf(CMainWindow* window)
{
    return sceneOf(window)->GetImageLayer();
}

ForeLayer* foreLayerOf(CMainWindow* window)
{
    return sceneOf(window)->GetForeLayer();
}

// The window's geometry from the host's bounds: (left, top, right - left,
// bottom - top). A widget is at most QWIDGETSIZE_MAX wide and high and never
// negative, so the size is cut to that range, as the toolkit would; the corner
// is held within the same distance of the origin, so that no edge lies beyond
// int.
QRect windowGeometry(int left, int top, int right, int bottom)
{
    const qint64 limit = QWIDGETSIZE_MAX;
    auto size = [limit](int from, int to) { return int(qBound<qint64>(0, qint64(to) - from, limit)); };
    auto corner = [limit](int at) { return int(qBound<qint64>(-limit, at, limit)); };
    return QRect(corner(left), corner(top), size(left, right), size(top, bottom));
}

} // namespace

KESImageWnd::KESImageWnd(QObject* parent)
    : QObject(parent)
    , m_mainWindow(nullptr)
{
}

KESImageWnd::~KESImageWnd()
{
    QObject::setParent(nullptr);
    QObject::disconnect(this, nullptr, nullptr, nullptr);
    if (m_mainWindow)
        destory();
}

long KESImageWnd::create(qlonglong parentWndHandle, int left, int top, int right, int bottom)
{
    if (m_mainWindow)
        return -1;
    // A handle of 0 makes a top-level window.
    auto* window = new CMainWindow(reinterpret_cast<QWidget*>(parentWndHandle));
    window->create(0, true, true);
    window->setGeometry(windowGeometry(left, top, right, bottom));
    // Frame style 50: a panel (2) with the shadow bits 0x30.
    window->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    // No window-type bits: a child stays a child; a top-level window stays on
    // top. setWindowFlags hides the widget, hence the show() below.
    window->setWindowFlags(Qt::WindowStaysOnTopHint);
    connectWindow(window);
    connect(window, &QObject::destroyed, this, [this] { m_mainWindow = nullptr; });
    window->show();
    m_mainWindow = window;
    return 0;
}

long KESImageWnd::create(qlonglong parentWndHandle)
{
    if (parentWndHandle == 0)
        return -1;
    QWidget* parent = qobject_cast<QWidget*>(reinterpret_cast<QObject*>(parentWndHandle));
    if (!parent)
        return -1;
    const QRect bounds = parent->geometry();
    return create(parentWndHandle, 0, 0, bounds.width(), bounds.height());
}

void KESImageWnd::connectWindow(CMainWindow* window)
{
    ImageCtrlScene* scene = viewOf(window)->GetImageCtrlScene();
    EventThread* relay = scene->GetEventThread();
    // The window's address is the id that registered callbacks receive.
    relay->setCurrentMainWindowID(reinterpret_cast<long long>(window));

    connect(window, SIGNAL(mouseClicked(double, double)), this, SIGNAL(mouseClicked(double, double)));
    connect(window, &CMainWindow::mouseMove, this, &KESImageWnd::mouseMove);
    connect(window, &CMainWindow::imgInfo, this, &KESImageWnd::imgInfo);
    connect(window, SIGNAL(mouseButtonDown(long)), this, SIGNAL(mouseButtonDown(long)));
    connect(window, SIGNAL(mouseButtonUp(long)), this, SIGNAL(mouseButtonUp(long)));
    connect(window, SIGNAL(buttonClicked(long)), this, SIGNAL(buttonClicked(long)));
    connect(relay, SIGNAL(shapeMoved(long)), this, SIGNAL(shapeMoved(long)));
    connect(relay, SIGNAL(shapeResized(long)), this, SIGNAL(shapeResized(long)));
    connect(relay, SIGNAL(shapeClicked(long)), this, SIGNAL(shapeClicked(long)));
    connect(scene, SIGNAL(mouseDoubleClick()), this, SIGNAL(mouseDoubleClick()));
    connect(window, SIGNAL(floatBtnClicked(bool)), this, SIGNAL(floatBtnClicked(bool)));
    connect(window, SIGNAL(intoBtnClicked(bool)), this, SIGNAL(intoBtnClicked(bool)));
    connect(this, SIGNAL(selectShape(qlonglong)), window, SLOT(selectShape(qlonglong)));
}

long KESImageWnd::setParentWnd(qlonglong parentWndHandle)
{
    if (!m_mainWindow)
        return -1;
    auto* parent = reinterpret_cast<QWidget*>(parentWndHandle);
    m_mainWindow->setParent(parent);
    const QRect bounds = parent ? parent->geometry() : QRect();
    m_mainWindow->setGeometry(0, 0, bounds.width(), bounds.height());
    m_mainWindow->show();
    return 0;
}

long KESImageWnd::destory()
{
    // These two happen also without a window: the host's own connections to
    // the facade go too, and must be made again after the next create.
    QObject::setParent(nullptr);
    QObject::disconnect(this, nullptr, nullptr, nullptr);
    if (!m_mainWindow)
        return -1;
    CMainWindow* window = m_mainWindow;
    QObject::disconnect(window, nullptr, nullptr, nullptr);
    window->QWidget::setParent(nullptr);
    window->toDestroy(true, true);
    delete window;
    m_mainWindow = nullptr;
    return 0;
}

long KESImageWnd::move(int left, int top, int right, int bottom)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->setGeometry(windowGeometry(left, top, right, bottom));
    return 0;
}

void KESImageWnd::setViewRect(int x, int y, int w, int h)
{
    if (!m_mainWindow)
        return;
    viewOf(m_mainWindow)->setSceneRect(double(x), double(y), double(w), double(h));
}

long KESImageWnd::setBackground(QImage& image)
{
    if (!m_mainWindow || image.width() < 1 || image.height() < 1)
        return -1;
    m_mainWindow->setIsVorImg(false);
    return viewOf(m_mainWindow)->DisplayImage(image);
}

long KESImageWnd::setBackground(VorImage& image)
{
    if (!m_mainWindow || image.Width() < 1 || image.Height() < 1)
        return -1;
    m_mainWindow->setIsVorImg(true);
    return viewOf(m_mainWindow)->DisplayImage(&image);
}

long KESImageWnd::getBackground(QImage* image)
{
    if (!m_mainWindow || !image)
        return -1;
    QImage* shown = imageLayerOf(m_mainWindow)->GetQImage();
    if (shown->isNull())
        return -1;
    *image = shown->copy();
    if (image->width() == 0 || image->height() == 0)
        return -1;
    return 0;
}

long KESImageWnd::getBackground(VorImage* image)
{
    if (!m_mainWindow || !image)
        return -1;
    // Under the layer's lock: a worker may be storing a newer picture.
    if (!imageLayerOf(m_mainWindow)->copyVorImage(image))
        return -1;
    return IsValidVorImage(image) ? 0 : -1;
}

long KESImageWnd::clearBackground()
{
    if (!m_mainWindow)
        return -1;
    imageLayerOf(m_mainWindow)->ClearVorImage();
    return 0;
}

void KESImageWnd::setRunBackground(VorImage& image)
{
    if (!m_mainWindow)
        return;
    viewOf(m_mainWindow)->runDisplayImage(&image);
}

long KESImageWnd::repaint()
{
    CMainWindow* window = m_mainWindow;
    if (!window)
        return -1;
    // The blocking connection orders the worker's frame before the window's
    // paint, and the paint before the worker's next frame. Once the window
    // has painted, the worker reads nothing of the facade any more: the host
    // may tear the window down as soon as it sees the worker done.
    ThreadOrder::handOver(window);
    emit window->sendRepaint();
    ThreadOrder::takeOver(window);
    return 0;
}

long KESImageWnd::zoom(double scaleValue)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->Zoom(float(scaleValue));
    return 0;
}

long KESImageWnd::getZoomRatio(double* scale)
{
    if (!m_mainWindow || !scale)
        return -1;
    *scale = viewOf(m_mainWindow)->GetImageCtrlScene()->getScale();
    return 0;
}

long KESImageWnd::zoomIn()
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->OnZoomInPushButtonClicked(false);
    return 0;
}

long KESImageWnd::zoomOut()
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->OnZoomOutPushButtonClicked(false);
    return 0;
}

long KESImageWnd::zoomFitWnd()
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->OnZoomFitPushButtonClicked(false);
    return 0;
}

long KESImageWnd::zoomReset()
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->OnZoomOrgPushButtonClicked(false);
    return 0;
}

bool KESImageWnd::showStatusbar(bool bVisible)
{
    if (!m_mainWindow)
        return false;
    m_mainWindow->setVisible(CMainWindow::WF_STATUSBAR, bVisible);
    return true;
}

bool KESImageWnd::showScrollbar(bool bVisible)
{
    if (!m_mainWindow)
        return false;
    m_mainWindow->setVisible(CMainWindow::WF_SCROLLBAR, bVisible);
    return true;
}

long KESImageWnd::enablePixelVisible(bool visible)
{
    if (!m_mainWindow)
        return -1;
    viewOf(m_mainWindow)->enablePixelVisible(visible);
    return 0;
}

namespace {

// Writes value through output unless the host passed null.
template <typename T, typename V>
void put(T* output, V value)
{
    if (output)
        *output = T(value);
}

// A line width as a whole number of pixels: truncated, within the range of
// the host's type (a width below 0 reads 0).
unsigned long wholeWidth(float width)
{
    if (!(width > 0.0f))
        return 0;
    if (double(width) >= double(std::numeric_limits<unsigned long>::max()))
        return std::numeric_limits<unsigned long>::max();
    return static_cast<unsigned long>(width);
}

// The smallest arm of a point's cross.
constexpr int kMinimumPointSize = 1;

} // namespace

long KESImageWnd::setPen(unsigned char r, unsigned char g, unsigned char b, unsigned long width)
{
    if (!m_mainWindow)
        return -1;
    ImageCtrlScene* scene = sceneOf(m_mainWindow);
    scene->setPenColor(QColor(r, g, b, 255));
    scene->setLineWidth(float(width));
    return 0;
}

long KESImageWnd::getPen(unsigned char* r, unsigned char* g, unsigned char* b, unsigned long* width)
{
    if (!m_mainWindow)
        return -1;
    ImageCtrlScene* scene = sceneOf(m_mainWindow);
    const QColor pen = scene->getPenColor();
    put(r, pen.red());
    put(g, pen.green());
    put(b, pen.blue());
    put(width, wholeWidth(scene->getLineWidth()));
    return 0;
}

long KESImageWnd::setBrush(unsigned char r, unsigned char g, unsigned char b, unsigned char a)
{
    if (!m_mainWindow)
        return -1;
    sceneOf(m_mainWindow)->setBrushColor(QColor(r, g, b, a));
    return 0;
}

long KESImageWnd::getBrush(unsigned char* r, unsigned char* g, unsigned char* b, unsigned char* a)
{
    if (!m_mainWindow)
        return -1;
    const QColor brush = sceneOf(m_mainWindow)->getBrushColor();
    put(r, brush.red());
    put(g, brush.green());
    put(b, brush.blue());
    put(a, brush.alpha());
    return 0;
}

long KESImageWnd::setPointSize(int size)
{
    if (!m_mainWindow)
        return -1;
    sceneOf(m_mainWindow)->setCrossSize(qMax(size, kMinimumPointSize));
    return 0;
}

long KESImageWnd::getPointSize(int* size)
{
    if (!m_mainWindow)
        return -1;
    put(size, sceneOf(m_mainWindow)->getCrossSize());
    return 0;
}

long KESImageWnd::setFont(VorFont font)
{
    if (!m_mainWindow)
        return -1;
    // In this order, from a default font; the weight is not read.
    QFont qfont;
    qfont.setPointSize(font.size);
    qfont.setFamily(QString(font.S()));
    qfont.setItalic(font.italic != 0);
    qfont.setUnderline(font.underline != 0);
    qfont.setStrikeOut(font.strikeOut != 0);
    sceneOf(m_mainWindow)->setFont(qfont);
    return 0;
}

long KESImageWnd::getFont(VorFont* font)
{
    if (!m_mainWindow)
        return -1;
    if (!font)
        return 0;
    // Weight and bold stay as the host had them.
    const QFont qfont = sceneOf(m_mainWindow)->getFont();
    static_cast<VorVar&>(*font) = VorVar(qfont.family().toLocal8Bit().constData());
    font->size = qfont.pointSize();
    font->italic = qfont.italic() ? 1 : 0;
    font->strikeOut = qfont.strikeOut() ? 1 : 0;
    font->underline = qfont.underline() ? 1 : 0;
    return 0;
}

long KESImageWnd::showToolbutton(long index, bool visable)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->setToolbarVisible(index, visable);
    return 0;
}

long KESImageWnd::showToolbar(bool bVisible)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->showToolbar(bVisible);
    return 0;
}

long KESImageWnd::screenshot(const char* filePath)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->GrabWindow(filePath);
    return 0;
}

long KESImageWnd::screenshot(VorImage* image)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->GrabWindow(image);
    return 0;
}

long KESImageWnd::setCrossLineInfo(QString info)
{
    if (!m_mainWindow)
        return -1;
    viewOf(m_mainWindow)->setCrossLineInfo(info);
    return 0;
}

long KESImageWnd::getCrossLineInfo(QString& info)
{
    if (!m_mainWindow)
        return -1;
    viewOf(m_mainWindow)->getCrossLineInfo(info);
    return 0;
}

long KESImageWnd::setGridLineInfo(QString info)
{
    if (!m_mainWindow)
        return -1;
    viewOf(m_mainWindow)->setGridLineInfo(info);
    return 0;
}

long KESImageWnd::getGridLineInfo(QString& info)
{
    if (!m_mainWindow)
        return -1;
    viewOf(m_mainWindow)->getGridLineInfo(info);
    return 0;
}

void KESImageWnd::SetFloatFlag(bool isFloat)
{
    if (m_mainWindow)
        m_mainWindow->SetFloatFlag(isFloat);
}

bool KESImageWnd::isFloat()
{
    return m_mainWindow ? m_mainWindow->isFloat() : false;
}

void KESImageWnd::SetFloatAreaVisible(bool visible)
{
    if (m_mainWindow)
        m_mainWindow->SetFloatAreaVisible(visible);
}

void KESImageWnd::SetIntoBtnVisible(bool visible)
{
    if (m_mainWindow)
        m_mainWindow->SetIntoBtnVisible(visible);
}

void KESImageWnd::SetFloatTipText(QString text)
{
    if (m_mainWindow)
        m_mainWindow->SetFloatTipText(text);
}

void KESImageWnd::setNum(QString numStr)
{
    if (m_mainWindow)
        viewOf(m_mainWindow)->SetNum(numStr);
}

void KESImageWnd::setNumVisible(bool visible)
{
    if (m_mainWindow)
        viewOf(m_mainWindow)->SetNumVisible(visible);
}

// The layer dispatch: the shape layer checks the picture first in VorImage
// mode; the image and fore layers take any picture state; any other layer
// value is refused.

long KESImageWnd::displayROI(VorROI& shape, KESImageWnd::Layer layerIndex)
{
    if (!m_mainWindow)
        return -1;
    switch (layerIndex) {
    case LAYER_SHAPE: return shapeLayerOf(m_mainWindow)->DrawROI(shape, m_mainWindow->isVorImg());
    case LAYER_IMAGE: return imageLayerOf(m_mainWindow)->DrawROI(shape);
    case LAYER_FORE: return foreLayerOf(m_mainWindow)->DrawROI(shape);
    }
    return -1;
}

long KESImageWnd::displayOverlay(VorOverlay& shape, KESImageWnd::Layer layerIndex)
{
    if (!m_mainWindow)
        return -1;
    switch (layerIndex) {
    case LAYER_SHAPE: return shapeLayerOf(m_mainWindow)->DrawOverlay(shape, m_mainWindow->isVorImg());
    case LAYER_IMAGE: return imageLayerOf(m_mainWindow)->DrawOverlay(shape);
    case LAYER_FORE: return foreLayerOf(m_mainWindow)->DrawOverlay(shape);
    }
    return -1;
}

long KESImageWnd::displayOverlayPath(VorOverlayPath& overlayPath, KESImageWnd::Layer layerIndex)
{
    if (!m_mainWindow)
        return -1;
    switch (layerIndex) {
    case LAYER_SHAPE: return shapeLayerOf(m_mainWindow)->DrawOverlayPath(overlayPath, m_mainWindow->isVorImg());
    case LAYER_IMAGE: return imageLayerOf(m_mainWindow)->DrawOverlayPath(overlayPath);
    case LAYER_FORE: return foreLayerOf(m_mainWindow)->DrawOverlayPath(overlayPath);
    }
    return -1;
}

void KESImageWnd::displayRunShapes(VorOverlayPath& overlayPath)
{
    if (!m_mainWindow)
        return;
    imageLayerOf(m_mainWindow)->runDrawShape(overlayPath);
}

long KESImageWnd::clearLayer(KESImageWnd::Layer layerIndex)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->clearLayer(layerIndex);
    return 0;
}

QList<long> KESImageWnd::getShapeIDS(KESImageWnd::Layer layerIndex)
{
    if (!m_mainWindow)
        return {};
    switch (layerIndex) {
    case LAYER_SHAPE: return shapeLayerOf(m_mainWindow)->getShapeIDS();
    case LAYER_IMAGE: return imageLayerOf(m_mainWindow)->getShapeIDS();
    case LAYER_FORE: return foreLayerOf(m_mainWindow)->getShapeIDS();
    }
    return {};
}

long KESImageWnd::getROIShape(long id, VorROI* shape)
{
    if (!m_mainWindow || !shape)
        return -1;
    return shapeLayerOf(m_mainWindow)->GetROIShape(id, shape);
}

long KESImageWnd::getOverlayShape(long id, VorOverlay* shape)
{
    if (!m_mainWindow || !shape)
        return -1;
    return shapeLayerOf(m_mainWindow)->GetOverlay(id, shape);
}

long KESImageWnd::removeShape(qlonglong id)
{
    if (!m_mainWindow)
        return -1;
    m_mainWindow->removeShape(id);
    return 0;
}

void KESImageWnd::removeShapeList(QList<long> idList)
{
    if (!m_mainWindow)
        return;
    // Nothing is connected to this signal, so nothing is removed.
    emit m_mainWindow->sendRemoveShapeList(idList);
}

long KESImageWnd::visibleShape(qlonglong id, bool visible)
{
    if (!m_mainWindow)
        return -1;
    // The image layer is asked only when the shape layer says -1; the fore
    // layer is never asked, so its records answer -1 and stay as they are.
    int result = shapeLayerOf(m_mainWindow)->ShapeVisible(long(id), visible);
    if (result == -1)
        result = int(imageLayerOf(m_mainWindow)->ShapeVisible(id, visible));
    return long(result);
}

bool KESImageWnd::isShapeMovable(qlonglong id)
{
    return m_mainWindow && shapeLayerOf(m_mainWindow)->isShapeMovable(id);
}

long KESImageWnd::setShapeMovable(qlonglong id, bool movable)
{
    if (!m_mainWindow)
        return -1;
    // An unknown id is no error here.
    shapeLayerOf(m_mainWindow)->setShapeMovable(id, movable);
    return 0;
}

bool KESImageWnd::isShapeSelectable(qlonglong id)
{
    return m_mainWindow && shapeLayerOf(m_mainWindow)->isShapeSelectable(id);
}

long KESImageWnd::setShapeSelectable(qlonglong id, bool Selectable)
{
    if (!m_mainWindow)
        return -1;
    shapeLayerOf(m_mainWindow)->setShapeSelectable(id, Selectable);
    return 0;
}

long KESImageWnd::clear()
{
    if (!m_mainWindow)
        return -1;
    clearLayer(LAYER_FORE);
    clearLayer(LAYER_SHAPE);
    clearLayer(LAYER_IMAGE);
    return 0;
}

void KESImageWnd::setActiveLayerMovable(bool movable)
{
    if (m_mainWindow)
        shapeLayerOf(m_mainWindow)->enableMoveShape(movable);
}

bool KESImageWnd::activeLayerMovable()
{
    return m_mainWindow && shapeLayerOf(m_mainWindow)->isEnableMoveShape();
}

void KESImageWnd::setActiveLayerSelectable(bool selectable)
{
    if (m_mainWindow)
        shapeLayerOf(m_mainWindow)->enableSelectShape(selectable);
}

bool KESImageWnd::activeLayerSelectable()
{
    return m_mainWindow && shapeLayerOf(m_mainWindow)->isEnableSelectShape();
}

long KESImageWnd::enableMoveROI(bool enable)
{
    if (!m_mainWindow)
        return -1;
    sceneOf(m_mainWindow)->enableMoveROI(enable);
    return 0;
}

long KESImageWnd::drawMode(DrawMode mode, bool pickTextsFirst)
{
    if (!m_mainWindow)
        return -1;
    if (pickTextsFirst)
        ODTextTool::GetODTextTool()->setModel(ODTextTool::PickText);
    m_mainWindow->SelectDrawOverlayMode(mode);
    return 0;
}

long KESImageWnd::resetDraw() { return drawMode(DM_SELECT, true); }
long KESImageWnd::drawPoint() { return drawMode(DM_POINT, true); }
long KESImageWnd::drawLine() { return drawMode(DM_LINE, true); }
long KESImageWnd::drawRect() { return drawMode(DM_RECT1, true); }
long KESImageWnd::drawRotateRect() { return drawMode(DM_RECT2, true); }
long KESImageWnd::drawEllipse() { return drawMode(DM_ELLIPSE, true); }
long KESImageWnd::drawCircle() { return drawMode(DM_CIRCLE, true); }
long KESImageWnd::drawPolygon() { return drawMode(DM_POLYGON, true); }
long KESImageWnd::drawIrregular() { return drawMode(DM_ANYLINE, true); }
long KESImageWnd::drawTorus() { return drawMode(DM_ANNULAR, true); }
// These two leave an armed text placement armed.
long KESImageWnd::drawArrowLine() { return drawMode(DM_ARROWLINE, false); }
long KESImageWnd::drawClosedAnyLine() { return drawMode(DM_ANYCLOSELINE, false); }

long KESImageWnd::drawText()
{
    if (!m_mainWindow)
        return -1;
    // The mode first, then the text tool: the reverse of the other draw calls.
    m_mainWindow->SelectDrawOverlayMode(DM_SELECT);
    ODTextTool::GetODTextTool()->setModel(ODTextTool::PlaceText);
    return 0;
}

long KESImageWnd::drawText(QString& text)
{
    if (!m_mainWindow)
        return -1;
    drawText();
    ODTextTool::GetODTextTool()->setText(QString(text));
    return 0;
}
