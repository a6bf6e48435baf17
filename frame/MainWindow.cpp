#include "MainWindow.h"

#include "ForeLayer.h"
#include "ImageLayer.h"
#include "buttontoolbar.h"
#include "datainterface.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "numericguards.h"
#include "statusbar.h"
#include "threadannotations.h"

#include "ShapeLayer.h"
#include "imageconversion.h"
#include "odpolygontool.h"
#include "odshapetoolmanage.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPixmap>
#include <QResizeEvent>
#include <QTimer>

float CMainWindow::s_scale = 1.0f;
QList<long long> CMainWindow::m_wndList;

namespace {

// The heights of the tool bar and the status bar.
constexpr int kToolbarHeight = 40;
constexpr int kStatusbarHeight = 30;
constexpr double kZoomStep = 1.25;

// connect() by name takes a signature after the code of its kind, as SIGNAL()
// and SLOT() write it; these build that text for signatures made at run time.
QByteArray signalOf(const QByteArray& signature)
{
    return QByteArray::number(QSIGNAL_CODE) + signature;
}

QByteArray slotOf(const QByteArray& signature)
{
    return QByteArray::number(QSLOT_CODE) + signature;
}

} // namespace

CMainWindow::CMainWindow(QWidget* parent)
    : QLabel(parent)
    , m_spareFlag(false)
    , m_isAlive(false)
    , m_toolbar(nullptr)
    , m_statusbar(nullptr)
    , m_imageView(nullptr)
    , m_spareMode(2)
    , m_widgetFlag(WF_TOOLBAR | WF_SCROLLBAR | WF_STATUSBAR)
    , m_pushButtonFlag(int(0xFFFE0000))
    , m_scrollbarVisible(true)
    , m_isWidgetParent(false)
{
    // The one connection that crosses threads: a worker's repaint() waits here
    // until the window has painted.
    connect(this, SIGNAL(sendRepaint()), this, SLOT(repaintWnd()), Qt::BlockingQueuedConnection);
    m_isAlive = true;
}

CMainWindow::~CMainWindow()
{
    QObject::disconnect(this, nullptr, nullptr, nullptr);
    setParent(nullptr);
    disconnect(this, SIGNAL(sendRepaint()), this, SLOT(repaintWnd()));
    toDestroy(true, true);
    m_isAlive = false;
}

void CMainWindow::create(unsigned long long, bool, bool)
{
    createButtonToolbar();
    createView();
    createStatusbar();
    connectSigs();
}

void CMainWindow::createButtonToolbar()
{
    m_toolbar = new ButtonToolbar(this);
    m_toolbar->create(0, true, true);
}

void CMainWindow::createView()
{
    m_imageView = new ImageCtrlView(this);
    m_imageView->CreateScene();
    connect(m_imageView, SIGNAL(floatBtnClicked(bool)), this, SIGNAL(floatBtnClicked(bool)));
    connect(m_imageView, SIGNAL(intoBtnClicked(bool)), this, SIGNAL(intoBtnClicked(bool)));
    connect(m_imageView, SIGNAL(limitMouseChanged()), this, SLOT(limtMouseChanged()));
}

void CMainWindow::createStatusbar()
{
    m_statusbar = new Statusbar(this);
    m_statusbar->create(0, true, true);
}

void CMainWindow::connectSigs()
{
    // The tool bar first: clicks, then presses, then releases, each in the
    // order of the stems.
    static const char* const clickStems[] = {"LoadImage", "ZoomIn",     "ZoomOut",     "ZoomFit",     "ZoomOrg",
                                             "DrawLine",  "DrawRect",   "DrawRect2",   "DrawEllipse", "DrawCircle",
                                             "DrawAnnular", "DrawPolygon", "DrawAnyline", "DrawAnyCloseline",
                                             "DrawPoint"};
    for (const char* clickStem : clickStems) {
        const QByteArray stem(clickStem);
        // The closed free line's slot has its words the other way round.
        const QByteArray slotStem = stem == "DrawAnyCloseline" ? QByteArray("DrawCloseAnyline") : stem;
        connect(m_toolbar, signalOf(stem + "PushButtonClicked(bool)"), this,
                slotOf("On" + slotStem + "PushButtonClicked(bool)"));
    }
    static const char* const pressStems[] = {"LoadImage", "ZoomIn",   "ZoomOut",   "ZoomFit",     "ZoomOrg",
                                             "DrawLine",  "DrawRect", "DrawRect2", "DrawEllipse", "DrawCircle",
                                             "DrawAnnular", "DrawPolygon", "DrawAnyline", "DrawPoint"};
    for (const char* pressStem : pressStems) {
        const QByteArray stem(pressStem);
        connect(m_toolbar, signalOf(stem + "PushButtonPressed()"), this, slotOf("On" + stem + "PushButtonPressed()"));
    }
    for (const char* pressStem : pressStems) {
        const QByteArray stem(pressStem);
        // In the ellipse's place its press is connected a second time: a press
        // on the ellipse button goes out twice and its release not at all.
        const QByteArray suffix = stem == "DrawEllipse" ? "PushButtonPressed()" : "PushButtonReleased()";
        connect(m_toolbar, signalOf(stem + suffix), this, slotOf("On" + stem + suffix));
    }

    // The floating area's zoom buttons come back from the view into the tool
    // bar's click slots: the host hears buttonClicked with the tool bar's
    // numbers, and the zoom goes through the event relay, as for the tool bar.
    connect(m_imageView, SIGNAL(ZoomInPushButtonClicked(bool)), this, SLOT(OnZoomInPushButtonClicked(bool)));
    connect(m_imageView, SIGNAL(ZoomOutPushButtonClicked(bool)), this, SLOT(OnZoomOutPushButtonClicked(bool)));
    connect(m_imageView, SIGNAL(ZoomFitPushButtonClicked(bool)), this, SLOT(OnZoomFitPushButtonClicked(bool)));
    connect(m_imageView, SIGNAL(ZoomOrgPushButtonClicked(bool)), this, SLOT(OnZoomOrgPushButtonClicked(bool)));

    EventThread* relay = scene()->GetEventThread();
    connect(relay, SIGNAL(Zoom(int)), this, SLOT(OnZoom(int)));

    connect(m_imageView, SIGNAL(updateMousePosition(QPointF)), this, SLOT(OnUpdateMousePosition(QPointF)));
    connect(m_imageView, SIGNAL(mouseClicked(QPointF)), this, SLOT(onMouseClicked(QPointF)));

    connect(m_imageView, SIGNAL(sigMousePress(double, double)), this, SIGNAL(sigMousePress(double, double)));
    connect(m_imageView, SIGNAL(sigMouseRelease(double, double)), this, SIGNAL(sigMouseRelease(double, double)));
    connect(m_imageView, SIGNAL(sigMouseRightPress(double, double)), this,
            SIGNAL(sigMouseRightPress(double, double)));
    connect(m_imageView, SIGNAL(sigMouseRightRelease(double, double)), this,
            SIGNAL(sigMouseRightRelease(double, double)));
    connect(m_imageView, SIGNAL(sigMouseRightMoveRelease(double, double)), this,
            SIGNAL(sigMouseRightMoveRelease(double, double)));
}

void CMainWindow::toDestroy(bool, bool)
{
    if (m_toolbar) {
        m_toolbar->destroy(true, true);
        m_toolbar->setParent(nullptr);
        delete m_toolbar;
        m_toolbar = nullptr;
    }
    if (m_statusbar) {
        m_statusbar->destroy(true, true);
        m_statusbar->setParent(nullptr);
        delete m_statusbar;
        m_statusbar = nullptr;
    }
    if (m_imageView) {
        m_imageView->setParent(nullptr);
        delete m_imageView;
        m_imageView = nullptr;
    }
}

ImageCtrlView* CMainWindow::GetImageCtrlView() const
{
    return m_imageView;
}

ImageCtrlScene* CMainWindow::scene() const
{
    return m_imageView->GetImageCtrlScene();
}

void CMainWindow::setIsVorImg(bool isVorImg)
{
    scene()->GetImageLayer()->setIsVorImg(isVorImg);
}

bool CMainWindow::isVorImg()
{
    return scene()->GetImageLayer()->isVorImg();
}

void CMainWindow::setWidgetParent(bool isWidgetParent)
{
    m_isWidgetParent = isWidgetParent;
}

bool CMainWindow::isWidgetParent() const
{
    return m_isWidgetParent;
}

void CMainWindow::Zoom(float scale)
{
    s_scale = scale;
    m_imageView->Zoom(s_scale);
}

void CMainWindow::setVisible(int widgetFlag, bool isVisible)
{
    applyWidgetFlag(widgetFlag, isVisible, true);
}

void CMainWindow::setInnerVisible(int widgetFlag, bool isVisible)
{
    applyWidgetFlag(widgetFlag, isVisible, false);
}

void CMainWindow::applyWidgetFlag(int widgetFlag, bool isVisible, bool fromSetVisible)
{
    if (widgetFlag == 0)
        m_widgetFlag = isVisible ? m_widgetFlag : 0;
    else
        m_widgetFlag = isVisible ? (m_widgetFlag | widgetFlag) : (m_widgetFlag & ~widgetFlag);
    if (m_widgetFlag > 7 || m_widgetFlag < 0)
        return;

    const int w = rect().width();
    const int h = rect().height();
    const int bottom = rect().bottom();
    const bool toolbarOn = m_widgetFlag & WF_TOOLBAR;
    const bool statusbarOn = m_widgetFlag & WF_STATUSBAR;
    const bool scrollOn = m_widgetFlag & WF_SCROLLBAR;

    if (toolbarOn && m_toolbar)
        m_toolbar->setGeometry(0, 1, w, kToolbarHeight);
    if (statusbarOn && m_statusbar)
        m_statusbar->setGeometry(0, bottom - kStatusbarHeight, w, kStatusbarHeight);

    if (fromSetVisible && m_imageView) {
        m_scrollbarVisible = scrollOn;
        m_imageView->SetScrollVisible(scrollOn);
        const Qt::ScrollBarPolicy policy = scrollOn ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
        m_imageView->setVerticalScrollBarPolicy(policy);
        m_imageView->setHorizontalScrollBarPolicy(policy);
    }

    QRect viewGeometry;
    if (toolbarOn && statusbarOn)
        viewGeometry = QRect(0, kToolbarHeight, w, h - kToolbarHeight - kStatusbarHeight);
    else if (toolbarOn)
        viewGeometry = QRect(0, kToolbarHeight, w, h - kToolbarHeight);
    else if (statusbarOn)
        // Right after setVisible with the flag 6 the view leaves 20 pixels more;
        // the next resize closes the strip.
        viewGeometry = QRect(0, 0, w, h - (m_widgetFlag == 6 && fromSetVisible ? 50 : kStatusbarHeight));
    else
        viewGeometry = QRect(0, 0, w, h);
    if (m_imageView)
        m_imageView->setGeometry(viewGeometry);

    if (m_toolbar)
        m_toolbar->setVisible(toolbarOn);
    if (m_statusbar)
        m_statusbar->setVisible(statusbarOn);
}

void CMainWindow::showStatusbar(bool visible)
{
    setVisible(WF_STATUSBAR, visible);
}

void CMainWindow::showScrollbar(bool visible)
{
    setVisible(WF_SCROLLBAR, visible);
}

void CMainWindow::repaintWnd()
{
    // The waiting worker's repaint() hands over here and takes back on return.
    ThreadOrder::takeOver(this);
    m_imageView->RefreshLayers();
    ThreadOrder::handOver(this);
}

void CMainWindow::setBackground(qlonglong image)
{
    m_imageView->DisplayImage(reinterpret_cast<VorImage*>(image));
}

void CMainWindow::clearBackground()
{
    scene()->GetImageLayer()->ClearVorImage();
}

void CMainWindow::clickZoomButton(int button)
{
    scene()->GetEventThread()->sendButtonClick(ButtonToolbar::PUSHBUTTON(button));
    emit buttonClicked(button);
}

void CMainWindow::showToolbar(bool visible)
{
    setToolbarVisible(long(0xFFFE0000L), visible);
}

void CMainWindow::applyToolbarFlag(long pushButtonFlag, bool isVisible)
{
    // The buttons in the order of their numbers, but 9 before 8 and 12 before 11.
    static const int order[] = {0, 1, 2, 3, 4, 5, 6, 7, 9, 8, 10, 12, 11};
    for (int button : order) {
        if ((pushButtonFlag & ButtonToolbar::flagBit(button)) && m_toolbar)
            m_toolbar->SetVisible(ButtonToolbar::PUSHBUTTON(button), isVisible);
    }
    // All bits change, those without a button too.
    const int bits = int(pushButtonFlag);
    m_pushButtonFlag = isVisible ? (m_pushButtonFlag | bits) : (m_pushButtonFlag & ~bits);
}

void CMainWindow::setToolbarVisible(long pushButtonFlag, bool isVisible)
{
    applyToolbarFlag(pushButtonFlag, isVisible);
    setVisible(WF_TOOLBAR, m_pushButtonFlag != 0);
}

void CMainWindow::setInnerToolbarVisible(int pushButtonFlag, bool isVisible)
{
    applyToolbarFlag(long(unsigned(pushButtonFlag)), isVisible);
    setInnerVisible(WF_TOOLBAR, m_pushButtonFlag != 0);
}

void CMainWindow::SelectDrawROIMode(DrawMode mode)
{
    ImageLayer* layer = scene()->GetImageLayer();
    m_imageView->setLimitMousePos(true);
    if (layer->hasValidVorImage() || !layer->isVorImg()) {
        scene()->GetActiveLayer()->clearCurrentShape();
        scene()->GetActiveLayer()->clearSelectedShape();
        scene()->SetDrawMode(mode);
    }
}

void CMainWindow::SelectDrawOverlayMode(DrawMode mode)
{
    ImageLayer* layer = scene()->GetImageLayer();
    if (layer->isVorImg() && !layer->hasValidVorImage())
        return;
    // A polygon under way cannot be interrupted from here, not even to select.
    if (scene()->GetDrawMode() == DM_POLYGON)
        return;
    m_imageView->setDrawModeCursorIcon(mode);
    if (mode == DM_POLYGON) {
        if (ODPolygonTool* polygon = ODShapeToolManage::GetODShapeToolManage()->polygonTool())
            polygon->ResetObject();
    }
    ShaperLayer* shapes = scene()->GetActiveLayer();
    shapes->clearCurrentShape();
    shapes->clearSelectedShape();
    scene()->setIsOverlay(true);
    scene()->SetDrawMode(mode);
    scene()->update(QRectF());
}

void CMainWindow::removeFromShapeLayer(qlonglong id)
{
    ShaperLayer* layer = scene()->GetActiveLayer();
    layer->clearCurrentShape();
    layer->clearSelectedShape();
    layer->removeShape(long(id));
    layer->ClearAllSelectedText();
    layer->removeText(long(id));
    layer->removeRegion(long(id));
    layer->Show(true);
}

void CMainWindow::clearShapeLayer()
{
    ShaperLayer* layer = scene()->GetActiveLayer();
    layer->clearCurrentShape();
    layer->clearSelectedShape();
    layer->clearShape();
    layer->ClearAllSelectedText();
    layer->ClearAllText();
    layer->ClearRegion();
    layer->Show(true);
}

// The id is looked for on every layer; nothing stops at the first find.
void CMainWindow::removeShape(qlonglong id)
{
    removeFromShapeLayer(id);
    scene()->GetImageLayer()->removeShape(long(id));
    scene()->GetForeLayer()->removeShape(long(id));
}

void CMainWindow::removeShapeList(QList<long> idList)
{
    for (long id : idList)
        removeFromShapeLayer(id);
    scene()->GetImageLayer()->removeShapeList(idList);
    scene()->GetForeLayer()->removeShapeList(idList);
}

// Unlike the facade's call, every layer is asked, whatever the one before said.
void CMainWindow::visibleShape(qlonglong id, bool visible)
{
    scene()->GetActiveLayer()->ShapeVisible(long(id), visible);
    scene()->GetImageLayer()->ShapeVisible(id, visible);
    scene()->GetForeLayer()->ShapeVisible(id, visible);
}

void CMainWindow::clear()
{
    clearShapeLayer();
    scene()->GetImageLayer()->clearShape();
    scene()->GetForeLayer()->clearShape();
}

void CMainWindow::clearLayer(KESImageWnd::Layer layerIndex)
{
    switch (layerIndex) {
    case KESImageWnd::LAYER_SHAPE: clearShapeLayer(); break;
    case KESImageWnd::LAYER_IMAGE: scene()->GetImageLayer()->clearShape(); break;
    case KESImageWnd::LAYER_FORE: scene()->GetForeLayer()->clearShape(); break;
    }
}

void CMainWindow::selectShape(qlonglong id)
{
    ShaperLayer* layer = scene()->GetActiveLayer();
    if (layer->isEnableSelectShape())
        layer->ShowShapeHandle(id);
}

void CMainWindow::clickDrawButton(int button, DrawMode mode)
{
    // The mode is chosen before the host hears of the click.
    SelectDrawROIMode(mode);
    scene()->GetEventThread()->sendButtonClick(ButtonToolbar::PUSHBUTTON(button));
    emit buttonClicked(button);
}

void CMainWindow::OnLoadImagePushButtonClicked(bool)
{
    if (m_lastDir.isEmpty())
        m_lastDir = QDir::rootPath();
    const QString file = QFileDialog::getOpenFileName(this, tr("Open File"), m_lastDir, tr("Image (*.png *.bmp *.jpg)"));
    if (file.isEmpty())
        return;
    m_lastDir = QFileInfo(file).dir().path();
    // The component reads no file: the host hears the click and sets the
    // background itself. The layer's VorImage becomes empty meanwhile.
    VorImage empty;
    m_imageView->DisplayImage(&empty);
    m_imageView->RefreshLayers();
    scene()->GetEventThread()->sendButtonClick(ButtonToolbar::PB_LOAD_IMAGE);
    emit buttonClicked(ButtonToolbar::PB_LOAD_IMAGE);
}

void CMainWindow::OnDrawLinePushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_LINE, DM_LINE);
}

void CMainWindow::OnDrawRectPushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_RECT, DM_RECT1);
}

void CMainWindow::OnDrawRect2PushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_RECT2, DM_RECT2);
}

void CMainWindow::OnDrawEllipsePushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_ELLIPSE, DM_ELLIPSE);
}

void CMainWindow::OnDrawCirclePushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_CIRCLE, DM_CIRCLE);
}

void CMainWindow::OnDrawAnnularPushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_ANNULAR, DM_ANNULAR);
}

void CMainWindow::OnDrawPolygonPushButtonClicked(bool)
{
    // A polygon left unfinished by an earlier polygon mode is thrown away.
    if (ODPolygonTool* polygon = ODShapeToolManage::GetODShapeToolManage()->polygonTool())
        polygon->ResetObject();
    clickDrawButton(ButtonToolbar::PB_DRAW_POLYGON, DM_POLYGON);
}

void CMainWindow::OnDrawPointPushButtonClicked(bool)
{
    clickDrawButton(ButtonToolbar::PB_DRAW_POINT, DM_POINT);
}

// No button leads to the free lines; their slots take the signals and do nothing.
void CMainWindow::OnDrawAnylinePushButtonClicked(bool) {}
void CMainWindow::OnDrawCloseAnylinePushButtonClicked(bool) {}
void CMainWindow::OnDrawAnylinePushButtonPressed() {}
void CMainWindow::OnDrawAnylinePushButtonReleased() {}

void CMainWindow::OnLoadImagePushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_LOAD_IMAGE); }
void CMainWindow::OnZoomInPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_ZOOM_IN); }
void CMainWindow::OnZoomOutPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_ZOOM_OUT); }
void CMainWindow::OnZoomFitPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_ZOOM_FIT); }
void CMainWindow::OnZoomOrgPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_ZOOM_ORG); }
void CMainWindow::OnDrawLinePushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_LINE); }
void CMainWindow::OnDrawRectPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_RECT); }
void CMainWindow::OnDrawRect2PushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_RECT2); }
void CMainWindow::OnDrawEllipsePushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_ELLIPSE); }
void CMainWindow::OnDrawCirclePushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_CIRCLE); }
void CMainWindow::OnDrawAnnularPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_ANNULAR); }
void CMainWindow::OnDrawPolygonPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_POLYGON); }
void CMainWindow::OnDrawPointPushButtonPressed() { emit mouseButtonDown(ButtonToolbar::PB_DRAW_POINT); }

void CMainWindow::OnLoadImagePushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_LOAD_IMAGE); }
void CMainWindow::OnZoomInPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_ZOOM_IN); }
void CMainWindow::OnZoomOutPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_ZOOM_OUT); }
void CMainWindow::OnZoomFitPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_ZOOM_FIT); }
void CMainWindow::OnZoomOrgPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_ZOOM_ORG); }
void CMainWindow::OnDrawLinePushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_LINE); }
void CMainWindow::OnDrawRectPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_RECT); }
void CMainWindow::OnDrawRect2PushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_RECT2); }
void CMainWindow::OnDrawEllipsePushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_ELLIPSE); }
void CMainWindow::OnDrawCirclePushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_CIRCLE); }
void CMainWindow::OnDrawAnnularPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_ANNULAR); }
void CMainWindow::OnDrawPolygonPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_POLYGON); }
void CMainWindow::OnDrawPointPushButtonReleased() { emit mouseButtonUp(ButtonToolbar::PB_DRAW_POINT); }

void CMainWindow::OnZoomInPushButtonClicked(bool)
{
    clickZoomButton(ButtonToolbar::PB_ZOOM_IN);
}

void CMainWindow::OnZoomOutPushButtonClicked(bool)
{
    clickZoomButton(ButtonToolbar::PB_ZOOM_OUT);
}

void CMainWindow::OnZoomFitPushButtonClicked(bool)
{
    clickZoomButton(ButtonToolbar::PB_ZOOM_FIT);
}

void CMainWindow::OnZoomOrgPushButtonClicked(bool)
{
    clickZoomButton(ButtonToolbar::PB_ZOOM_ORG);
}

void CMainWindow::OnZoom(int model)
{
    ImageLayer* layer = scene()->GetImageLayer();
    if (layer->isVorImg() && !layer->hasValidVorImage())
        return;
    switch (model) {
    case ButtonToolbar::PB_ZOOM_IN:
        layer->SetZoomModel(VOR_ZOOM_IN);
        s_scale = float(scene()->getScale());
        Zoom(float(double(s_scale) * kZoomStep));
        break;
    case ButtonToolbar::PB_ZOOM_OUT:
        layer->SetZoomModel(VOR_ZOOM_OUT);
        s_scale = float(scene()->getScale());
        Zoom(float(double(s_scale) / kZoomStep));
        break;
    case ButtonToolbar::PB_ZOOM_FIT:
        layer->SetZoomModel(VOR_ZOOM_FIT);
        s_scale = layer->GetFitImageScaledValue();
        Zoom(s_scale);
        break;
    case ButtonToolbar::PB_ZOOM_ORG:
        layer->SetZoomModel(VOR_ZOOM_ORG);
        s_scale = 1.0f;
        Zoom(s_scale);
        break;
    default:
        break;
    }
}

void CMainWindow::OnUpdateMousePosition(QPointF pos)
{
    ImageLayer* layer = scene()->GetImageLayer();
    QImage* image = layer->GetQImage();
    // Without a picture the host hears of no movement and the bar stands still.
    if (layer->isVorImg()) {
        if (!layer->hasValidVorImage())
            return;
    } else if (image->width() == 0 || image->height() == 0) {
        return;
    }

    const float zoom = float(scene()->getScale());
    double r = 0.0, g = 0.0, b = 0.0;
    layer->GetPixel(pos, &r, &g, &b);

    Statusbar::StatusInformation info;
    info.imageSize = layer->isVorImg() ? QSize(layer->storedWidth(), layer->storedHeight()) : image->size();
    info.pos = pos;
    info.red = r;
    info.green = g;
    info.blue = b;
    info.zoom = zoom;

    emit mouseMove(pos.x(), pos.y());
    emit imgInfo(pos.x(), pos.y(), int(r), int(g), int(b), zoom);
    if (m_statusbar)
        m_statusbar->updateInformation(info);
}

void CMainWindow::onMouseClicked(QPointF pos)
{
    emit mouseClicked(pos.x(), pos.y());
}

void CMainWindow::limtMouseChanged()
{
    // A draw mode's limit flag ends here, one turn of the event loop later, in
    // a rectangle that confines nothing.
    QTimer::singleShot(1, this, SLOT(setLimitRect()));
}

void CMainWindow::setLimitRect()
{
    // The pointer is not confined, and no position is clamped: scene positions
    // outside the picture, negative ones included, reach every signal, tool and
    // host as they are.
}

void CMainWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int w = rect().width();
    if (m_toolbar)
        m_toolbar->setGeometry(0, 1, w, kToolbarHeight);
    if (m_statusbar)
        m_statusbar->setGeometry(0, rect().bottom() - kStatusbarHeight, w, kStatusbarHeight);
    setInnerVisible(m_widgetFlag, true);
    setInnerToolbarVisible(m_pushButtonFlag, true);
}

QRect CMainWindow::grabRect() const
{
    const float scale = float(scene()->getScale());
    const ImageLayer* layer = scene()->GetImageLayer();
    const int iw = TruncateToInt(float(layer->storedWidth()) * scale);
    const int ih = TruncateToInt(float(layer->storedHeight()) * scale);
    const int vw = m_imageView->width();
    const int vh = m_imageView->height();
    // A picture smaller than the view is cut out of the centre, where the view
    // shows it; a larger one gives the whole view, scroll bars included.
    const int x = iw < vw ? (vw - iw) / 2 : 0;
    const int y = ih < vh ? (vh - ih) / 2 : 0;
    return QRect(x, y, iw < vw ? iw : vw, ih < vh ? ih : vh);
}

long CMainWindow::GrabWindow(const char* fileName) const
{
    if (!scene()->GetImageLayer()->hasValidVorImage())
        return -1;
    const QString name = QString(fileName);
    const QPixmap pixmap = m_imageView->grab(grabRect());
    // The result of save is not looked at.
    if (QFileInfo(name).suffix().isEmpty())
        pixmap.save(name, "JPG");
    else
        pixmap.save(name);
    return 0;
}

long CMainWindow::GrabWindow(VorImage* image) const
{
    ImageLayer* layer = scene()->GetImageLayer();
    if (!layer->hasValidVorImage())
        return -1;
    const QImage grabbed = m_imageView->grab(grabRect()).toImage();
    layer->QImageToKesImage(grabbed, image);
    return 0;
}

void CMainWindow::SetFloatFlag(bool isFloat)
{
    m_imageView->SetFloatFlag(isFloat);
}

bool CMainWindow::isFloat() const
{
    return m_imageView->isFloat();
}

void CMainWindow::SetFloatAreaVisible(bool visible)
{
    m_imageView->SetFloatAreaVisible(visible);
}

void CMainWindow::SetIntoBtnVisible(bool visible)
{
    m_imageView->SetIntoBtnVisible(visible);
}

void CMainWindow::SetFloatTipText(QString text)
{
    m_imageView->SetFloatTipText(text);
}
