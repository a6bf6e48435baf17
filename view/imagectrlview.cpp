#include "imagectrlview.h"

#include "ImageLayer.h"
#include "datainterface.h"
#include "eventthread.h"
#include "imagectrlscene.h"

#include "VorImage.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMatrix>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>
#include <QtMath>

namespace {

constexpr double kZoomStep = 1.25;
constexpr double kMinimumScale = 0.03;
// Pixel values are written into the pixels from this scale on.
constexpr double kPixelLabelScale = 100.0;

} // namespace

ImageCtrlView::ImageCtrlView(QWidget* parent)
    : QGraphicsView(parent)
    , m_scene(nullptr)
    , m_scrollVisible(true)
    , m_rightDown(false)
    , m_rightMoved(false)
    , m_lastPos(0, 0)
    , m_limitMousePos(false)
    , m_pixelVisible(false)
{
    setAcceptDrops(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setMouseTracking(true);
    // Antialiasing alone: no smoothing of the picture, and no anchors, since
    // pan and cursor-anchored zoom are done by hand.
    setRenderHint(QPainter::Antialiasing, true);
    m_imageRect = viewport()->rect();

    // What paints in viewport pixels must repaint with every scroll.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { viewport()->update(); });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { viewport()->update(); });
}

ImageCtrlView::~ImageCtrlView()
{
    delete m_scene;
    m_scene = nullptr;
}

void ImageCtrlView::CreateScene()
{
    m_scene = new ImageCtrlScene(nullptr);
    m_scene->setImageCtrlView(this);
    setScene(m_scene);
    // The grey of an empty area, also what GetPixel reports outside the picture.
    m_scene->setBackgroundBrush(QBrush(QColor(153, 153, 153, 255), Qt::SolidPattern));
    m_scene->CreateLayers();
}

ImageCtrlScene* ImageCtrlView::GetImageCtrlScene() const
{
    return m_scene;
}

void ImageCtrlView::finishDisplay()
{
    ImageLayer* layer = m_scene->GetImageLayer();
    layer->Update(true);
    layer->show();
}

long ImageCtrlView::DisplayImage(QImage& image)
{
    if (!m_scene->GetImageLayer()->LoadVorImage(image))
        return -1;
    m_imageRect = QRect(0, 0, image.width(), image.height());
    finishDisplay();
    // The read-out refreshes under a resting mouse.
    emit updateMousePosition(mapToScene(mapFromGlobal(QCursor::pos())));
    return 0;
}

long ImageCtrlView::DisplayImage(VorImage* image)
{
    if (!m_scene->GetImageLayer()->LoadVorImage(image))
        return -1;
    m_imageRect = QRect(0, 0, image ? image->Width() : 0, image ? image->Height() : 0);
    finishDisplay();
    return 0;
}

long ImageCtrlView::RefreshLayers()
{
    finishDisplay();
    // The repaint is done before the call returns; a worker blocked in
    // repaint() thus finds the picture on screen.
    QCoreApplication::processEvents();
    return 0;
}

void ImageCtrlView::setScaleMatrix(double scale)
{
    QMatrix matrix;
    matrix.scale(scale, scale);
    matrix.rotate(0.0);
    setMatrix(matrix, false);
}

long ImageCtrlView::Zoom(double scale)
{
    if (!(scale >= kMinimumScale))
        return 0;
    m_scene->setScale(scale);
    setScaleMatrix(scale);
    m_scene->setScale(scale);
    return 0;
}

void ImageCtrlView::SetScrollVisible(bool visible)
{
    m_scrollVisible = visible;
}

void ImageCtrlView::setLimitMousePos(bool limit)
{
    m_limitMousePos = limit;
    emit limitMouseChanged();
}

bool ImageCtrlView::limitMousePos() const
{
    return m_limitMousePos;
}

void ImageCtrlView::setDrawModeCursorIcon(DrawMode mode)
{
    const bool drawing = mode >= DM_POINT && mode <= DM_ANYCLOSELINE;
    viewport()->setCursor(drawing ? Qt::CrossCursor : Qt::ArrowCursor);
}

void ImageCtrlView::resetDrawModeCursorIcon()
{
    viewport()->setCursor(Qt::ArrowCursor);
}

QWidget* ImageCtrlView::parentWidget() const
{
    return QWidget::parentWidget();
}

void ImageCtrlView::enablePixelVisible(bool visible)
{
    m_pixelVisible = visible;
    viewport()->update();
}

bool ImageCtrlView::PixelVisible() const
{
    return m_pixelVisible;
}

void ImageCtrlView::updateScene()
{
    m_scene->update(QRectF());
}

void ImageCtrlView::mousePressEvent(QMouseEvent* event)
{
    const QPointF sp = mapToScene(event->pos());
    if (event->button() & Qt::LeftButton)
        emit sigMousePress(sp.x(), sp.y());

    QGraphicsView::mousePressEvent(event);

    if (event->button() & Qt::RightButton) {
        m_rightDown = true;
        setCursor(Qt::OpenHandCursor);
        m_lastPos = event->pos();
        emit sigMouseRightPress(sp.x(), sp.y());
    }
}

void ImageCtrlView::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF sp = mapToScene(event->pos());
    emit updateMousePosition(sp);

    if (m_rightDown) {
        setCursor(Qt::ClosedHandCursor);
        const QPoint d = event->pos() - m_lastPos;
        QScrollBar* h = horizontalScrollBar();
        h->setValue(h->value() + (isRightToLeft() ? d.x() : -d.x()));
        QScrollBar* v = verticalScrollBar();
        v->setValue(v->value() - d.y());
        m_scene->update(QRectF());
        m_lastPos = event->pos();
        m_rightMoved = true;
    }

    QGraphicsView::mouseMoveEvent(event);

    // The host's move callback comes last, and only over a picture or in
    // QImage mode.
    ImageLayer* layer = m_scene->GetImageLayer();
    if (!layer->isVorImg() || IsValidVorImage(layer->GetVorImage()))
        m_scene->GetEventThread()->sendMouseMove(float(sp.x()), float(sp.y()));
}

void ImageCtrlView::mouseReleaseEvent(QMouseEvent* event)
{
    QGraphicsView::mouseReleaseEvent(event);

    const QPointF sp = mapToScene(event->pos());
    emit mouseClicked(sp);

    // The flag decides, not the button: releasing the left button during a
    // right drag ends the drag.
    if (m_rightDown) {
        m_rightDown = false;
        setCursor(Qt::ArrowCursor);
        if (m_rightMoved) {
            emit sigMouseRightMoveRelease(sp.x(), sp.y());
            m_rightMoved = false;
        } else {
            emit sigMouseRightRelease(sp.x(), sp.y());
        }
    }
    if (event->button() & Qt::LeftButton)
        emit sigMouseRelease(sp.x(), sp.y());

    QTimer::singleShot(1, this, SLOT(updateScene()));
}

void ImageCtrlView::wheelEvent(QWheelEvent* event)
{
    const QPoint p = event->pos();
    const QPointF sp = mapToScene(p);
    const double w = viewport()->width();
    const double h = viewport()->height();
    const double fx = p.x() / w;
    const double fy = p.y() / h;
    ImageLayer* layer = m_scene->GetImageLayer();

    if (event->angleDelta().y() >= 1) {
        const double scale = m_scene->getScale();
        if (scale > w || scale > h) {
            event->accept();
            return;
        }
        layer->SetZoomModel(VOR_ZOOM_IN);
        const double next = scale * kZoomStep;
        setScaleMatrix(next);
        m_scene->setScale(next);
    } else {
        layer->SetZoomModel(VOR_ZOOM_OUT);
        const double scale = m_scene->getScale();
        // The test is on the scale before the step, which can end just below
        // the limit.
        if (scale >= kMinimumScale) {
            const double next = scale / kZoomStep;
            setScaleMatrix(next);
            m_scene->setScale(next);
        }
    }

    // Keep the scene point under the cursor.
    const QPointF m = matrix().map(sp);
    horizontalScrollBar()->setValue(int(m.x() - w * fx));
    verticalScrollBar()->setValue(int(m.y() - h * fy));

    emit updateMousePosition(mapToScene(p));
    event->accept();
}

void ImageCtrlView::paintEvent(QPaintEvent* event)
{
    QGraphicsView::paintEvent(event);
    drawDisplayPixel();
}

void ImageCtrlView::drawDisplayPixel()
{
    if (!m_pixelVisible || !(m_scene->getScale() >= kPixelLabelScale))
        return;
    QPainter painter(viewport());
    const QPoint p0 = mapFromScene(0.0, 0.0);
    const QPoint p1 = mapFromScene(1.0, 1.0);
    const int cellWidth = p1.x() - p0.x();
    const int cellHeight = p1.y() - p0.y();
    const QPointF t = mapToScene(0, 0);
    QPoint first(qFloor(t.x()), qFloor(t.y()));
    QPoint start = mapFromScene(QPointF(first));
    QPoint end = start + QPoint(viewport()->width() + cellWidth, viewport()->height() + cellHeight);
    m_scene->drawDisplayPixel(&painter, start, end, cellWidth, cellHeight, first);
}

void ImageCtrlView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    if (width() <= 0 || height() <= 0)
        return;
    // The view widget's sizes, less what scroll bars and frame take.
    const int margin = m_scrollVisible ? 19 : 2;
    m_scene->setViewSize(float(width() - margin), float(height() - margin));
    ImageLayer* layer = m_scene->GetImageLayer();
    if (layer->GetVorImage()) {
        // Any resize re-fits the picture, whatever the zoom model says.
        m_scene->setScale(layer->GetFitImageScaledValue());
        layer->Update(false);
        layer->show();
    }
}
