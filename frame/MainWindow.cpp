#include "MainWindow.h"

#include "ImageLayer.h"
#include "buttontoolbar.h"
#include "datainterface.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "statusbar.h"

#include <QResizeEvent>
#include <QTimer>

float CMainWindow::s_scale = 1.0f;
QList<long long> CMainWindow::m_wndList;

namespace {

// The heights of the tool bar and the status bar.
constexpr int kToolbarHeight = 40;
constexpr int kStatusbarHeight = 30;
constexpr double kZoomStep = 1.25;

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
    m_toolbar->setFrameStyle(QFrame::Panel | QFrame::Raised);
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
    connect(m_imageView, SIGNAL(ZoomInPushButtonClicked(bool)), this, SLOT(OnZoomInPushButtonClicked(bool)));
    connect(m_imageView, SIGNAL(ZoomOutPushButtonClicked(bool)), this, SLOT(OnZoomOutPushButtonClicked(bool)));
    connect(m_imageView, SIGNAL(ZoomFitPushButtonClicked(bool)), this, SLOT(OnZoomFitPushButtonClicked(bool)));
    connect(m_imageView, SIGNAL(ZoomOrgPushButtonClicked(bool)), this, SLOT(OnZoomOrgPushButtonClicked(bool)));

    EventThread* relay = m_imageView->GetImageCtrlScene()->GetEventThread();
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

void CMainWindow::setIsVorImg(bool isVorImg)
{
    m_imageView->GetImageCtrlScene()->GetImageLayer()->setIsVorImg(isVorImg);
}

bool CMainWindow::isVorImg()
{
    return m_imageView->GetImageCtrlScene()->GetImageLayer()->isVorImg();
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
    m_imageView->RefreshLayers();
}

void CMainWindow::setBackground(qlonglong image)
{
    m_imageView->DisplayImage(reinterpret_cast<VorImage*>(image));
}

void CMainWindow::clearBackground()
{
    m_imageView->GetImageCtrlScene()->GetImageLayer()->ClearVorImage();
}

void CMainWindow::clickZoomButton(int button)
{
    m_imageView->GetImageCtrlScene()->GetEventThread()->sendButtonClick(ButtonToolbar::PUSHBUTTON(button));
    emit buttonClicked(button);
}

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
    ImageCtrlScene* scene = m_imageView->GetImageCtrlScene();
    ImageLayer* layer = scene->GetImageLayer();
    if (layer->isVorImg() && !IsValidVorImage(layer->GetVorImage()))
        return;
    switch (model) {
    case ButtonToolbar::PB_ZOOM_IN:
        layer->SetZoomModel(VOR_ZOOM_IN);
        s_scale = float(scene->getScale());
        Zoom(float(double(s_scale) * kZoomStep));
        break;
    case ButtonToolbar::PB_ZOOM_OUT:
        layer->SetZoomModel(VOR_ZOOM_OUT);
        s_scale = float(scene->getScale());
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
    ImageCtrlScene* scene = m_imageView->GetImageCtrlScene();
    ImageLayer* layer = scene->GetImageLayer();
    VorImage* vorImage = layer->GetVorImage();
    QImage* image = layer->GetQImage();
    // Without a picture the host hears of no movement and the bar stands still.
    if (layer->isVorImg()) {
        if (!IsValidVorImage(vorImage))
            return;
    } else if (image->width() == 0 || image->height() == 0) {
        return;
    }

    const float zoom = float(scene->getScale());
    double r = 0.0, g = 0.0, b = 0.0;
    layer->GetPixel(pos, &r, &g, &b);

    Statusbar::StatusInformation info;
    info.imageSize = layer->isVorImg() ? QSize(vorImage->Width(), vorImage->Height()) : image->size();
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
    QTimer::singleShot(1, this, SLOT(setLimitRect()));
}

void CMainWindow::setLimitRect()
{
    // The pointer is not confined: positions outside the picture reach every
    // signal and tool as they are.
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
    // The tool bar is on while any push-button bit is set.
    setInnerVisible(WF_TOOLBAR, m_pushButtonFlag != 0);
}
