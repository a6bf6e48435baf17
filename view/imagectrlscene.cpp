#include "imagectrlscene.h"

#include "ForeLayer.h"

#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "eventthread.h"
#include "geometryhelpers.h"
#include "odshapetoolmanage.h"
#include "odshapewatcher.h"
#include "odtexttool.h"
#include "odshape.h"
#include "settleditemcache.h"

#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QTouchDevice>
#include <QTouchEvent>

#include <cmath>

namespace {

constexpr float kPi = 3.141592f;

} // namespace

ImageCtrlScene::ImageCtrlScene(QObject* parent)
    : QGraphicsScene(parent)
    , m_view(nullptr)
    , m_imageLayer(nullptr)
    , m_foreLayer(nullptr)
    , m_activeLayer(nullptr)
    , m_staticActiveLayer(nullptr)
    , m_scale(1.0)
    , m_viewWidth(0.0f)
    , m_viewHeight(0.0f)
    , m_eventThread(new EventThread(nullptr))
    , m_penColor(0, 0, 255, 255)
    , m_brushColor(0, 255, 0, 0)
    , m_lineWidth(1.0f)
    , m_enableMoveROI(true)
    , m_enableMoveOverlay(true)
    , m_enableMoveStaticOverlay(true)
    , m_crossSize(5)
    , m_drawMode(DM_SELECT)
    , m_settledItems(new SettledItemCache(this))
    , m_isOverlay(false)
    , m_isStaticOverlay(false)
{
    // No item index. A shape owns several items, most of them with empty
    // geometry while they show nothing, and moves or reshapes its items on
    // every step of a drag; a BSP tree re-files every such item and removes
    // items slowly in bulk, while the window never asks the scene for items
    // by position: hit tests walk the layers' shapes, and every repaint walks
    // the scene's top-level items whatever the index. Measured with 10^5
    // shapes of every kind: a painted handle move at fit takes 286 ms without
    // an index against 548 ms with the tree, a press on a shape 540 against
    // 730 ms, emptying the layer 3.8 against 6.0 s.
    setItemIndexMethod(QGraphicsScene::NoIndex);
    m_font.setFamily("Times");
    m_font.setPointSize(18);
    update(QRectF());
}

// The static layer and any layer added by CreateLayers(int) stay: only the
// list of them goes. The process-wide tools hear first, while every shape of
// this scene is still whole, and forget what they hold of it.
ImageCtrlScene::~ImageCtrlScene()
{
    ODShapeWatcher::notifySceneDestroyed(this);
    delete m_imageLayer;
    m_imageLayer = nullptr;
    delete m_activeLayer;
    m_activeLayer = nullptr;
    delete m_eventThread;
    m_eventThread = nullptr;
    delete m_foreLayer;
    m_foreLayer = nullptr;
}

void ImageCtrlScene::prepareSettledItems()
{
    QList<ODShape*> live;
    for (ODShape* shape : ODShapeToolManage::GetODShapeToolManage()->heldShapes()) {
        if (shape->getSence() == this)
            live.append(shape);
    }
    for (ShaperLayer* layer : qAsConst(m_shaperLayers)) {
        for (ODShape* shape : layer->selectedShapes()) {
            if (layer->contains(shape))
                live.append(shape);
        }
    }
    m_settledItems->prepare(live);
}

void ImageCtrlScene::setImageCtrlView(ImageCtrlView* view)
{
    m_view = view;
}

ImageCtrlView* ImageCtrlScene::getCtrlView() const
{
    return m_view;
}

void ImageCtrlScene::setScale(double scale)
{
    m_scale = scale > 0.0 ? scale : 1.0;
}

double ImageCtrlScene::getScale() const
{
    return m_scale;
}

void ImageCtrlScene::setViewSize(float width, float height)
{
    m_viewWidth = width;
    m_viewHeight = height;
}

void ImageCtrlScene::getViewSize(double& width, double& height) const
{
    width = m_viewWidth;
    height = m_viewHeight;
}

void ImageCtrlScene::CreateLayers()
{
    m_imageLayer = new ImageLayer(this);
    m_activeLayer = new ShaperLayer(this, 0);
    m_staticActiveLayer = new ShaperLayer(this, 0);
    m_shaperLayers.append(m_activeLayer);
    m_shaperLayers.append(m_staticActiveLayer);
    m_foreLayer = new ForeLayer(this);
}

ForeLayer* ImageCtrlScene::GetForeLayer() const
{
    return m_foreLayer;
}

void ImageCtrlScene::CreateLayers(int count)
{
    for (int i = 1; i < count; ++i)
        m_shaperLayers.append(new ShaperLayer(this, i));
}

int ImageCtrlScene::GetLayerCount()
{
    return m_shaperLayers.size();
}

QList<ShaperLayer*> ImageCtrlScene::getShaperLayperList() const
{
    return m_shaperLayers;
}

ImageLayer* ImageCtrlScene::GetImageLayer() const
{
    return m_imageLayer;
}

ShaperLayer* ImageCtrlScene::GetActiveLayer() const
{
    return m_activeLayer;
}

ShaperLayer* ImageCtrlScene::GetStaticActiveLayer() const
{
    return m_staticActiveLayer;
}

void ImageCtrlScene::setPenColor(QColor color)
{
    m_penColor = color;
}

QColor ImageCtrlScene::getPenColor() const
{
    return m_penColor;
}

void ImageCtrlScene::setBrushColor(QColor color)
{
    m_brushColor = color;
}

QColor ImageCtrlScene::getBrushColor() const
{
    return m_brushColor;
}

void ImageCtrlScene::setLineWidth(float width)
{
    m_lineWidth = width;
}

float ImageCtrlScene::getLineWidth() const
{
    return m_lineWidth;
}

void ImageCtrlScene::setCrossSize(int size)
{
    m_crossSize = size;
}

int ImageCtrlScene::getCrossSize()
{
    return m_crossSize;
}

void ImageCtrlScene::setFont(QFont font)
{
    m_font = font;
}

QFont ImageCtrlScene::getFont()
{
    return m_font;
}

void ImageCtrlScene::enableMoveROI(bool enable)
{
    m_enableMoveROI = enable;
}

bool ImageCtrlScene::isEnableMoveROI() const
{
    return m_enableMoveROI;
}

void ImageCtrlScene::enableMoveOverlay(bool enable)
{
    m_enableMoveOverlay = enable;
}

bool ImageCtrlScene::isEnableMoveOverlay() const
{
    return m_enableMoveOverlay;
}

void ImageCtrlScene::enableMoveStaticOverlay(bool enable)
{
    m_enableMoveStaticOverlay = enable;
}

bool ImageCtrlScene::isEnableMoveStaticOverlay() const
{
    return m_enableMoveStaticOverlay;
}

void ImageCtrlScene::SetDrawMode(DrawMode mode)
{
    if (mode == DM_SELECT)
        m_isOverlay = false;
    m_drawMode = mode;
    update(QRectF());
}

DrawMode ImageCtrlScene::GetDrawMode() const
{
    return m_drawMode;
}

void ImageCtrlScene::setIsOverlay(bool isOverlay)
{
    m_isOverlay = isOverlay;
}

bool ImageCtrlScene::isOverlay() const
{
    return m_isOverlay;
}

void ImageCtrlScene::setIsStaticOverlay(bool isStaticOverlay)
{
    m_isStaticOverlay = isStaticOverlay;
}

bool ImageCtrlScene::isStaticOverlay()
{
    return m_isStaticOverlay;
}

void ImageCtrlScene::setRegionBackGroudImage(QImage image)
{
    m_regionBackground = QPixmap::fromImage(image);
}

void ImageCtrlScene::drawBackgroundRegion(QPainter* painter, const QRectF&)
{
    painter->save();
    if (m_regionBackground.width() != 0)
        painter->drawPixmap(QRect(0, 0, m_regionBackground.width(), m_regionBackground.height()),
                            m_regionBackground);
    painter->restore();
}

QPointF ImageCtrlScene::GetPoint(double x, double y, float length, float angle)
{
    const float a = ConvertAngle(angle);
    const float radians = a * kPi / 180.0f;
    return QPointF(x + double(length * std::cos(radians)), y - double(length * std::sin(radians)));
}

EventThread* ImageCtrlScene::GetEventThread() const
{
    return m_eventThread;
}

void ImageCtrlScene::drawDisplayPixel(QPainter* painter, QPoint& start, QPoint& end, int cellWidth, int cellHeight,
                                      QPoint& first)
{
    if (m_imageLayer)
        m_imageLayer->drawDisplayPixel(painter, start, end, cellWidth, cellHeight, first);
}

bool ImageCtrlScene::isTouchEvent(const QEvent* event)
{
    const QEvent::Type type = event->type();
    return type == QEvent::TouchBegin || type == QEvent::TouchUpdate || type == QEvent::TouchEnd;
}

bool ImageCtrlScene::event(QEvent* event)
{
    if (isTouchEvent(event)) {
        touchEventHandler(static_cast<QTouchEvent*>(event));
        return true;
    }
    return QGraphicsScene::event(event);
}

void ImageCtrlScene::touchEventHandler(QTouchEvent* event)
{
    const QTouchDevice* device = event->device();
    // A press needs a device that is a screen or a pad; an event made without
    // a device has no type and presses nothing.
    const bool devicePresses = device
        && (device->type() == QTouchDevice::TouchScreen || device->type() == QTouchDevice::TouchPad);

    const QList<QTouchEvent::TouchPoint> points = event->touchPoints();
    for (const QTouchEvent::TouchPoint& point : points) {
        // Button, buttons and modifiers stay unset: the tools take a touch
        // for a button that is not the right one.
        QGraphicsSceneMouseEvent mouse(QEvent::None);
        mouse.setPos(point.pos());
        mouse.setScenePos(point.scenePos());
        mouse.setScreenPos(point.screenPos().toPoint());
        mouse.setLastPos(point.lastPos());
        mouse.setLastScenePos(point.lastScenePos());
        mouse.setLastScreenPos(point.lastScreenPos().toPoint());
        switch (point.state()) {
        case Qt::TouchPointPressed:
            if (devicePresses)
                mousePressEvent(&mouse);
            break;
        case Qt::TouchPointMoved:
            mouseMoveEvent(&mouse);
            break;
        case Qt::TouchPointReleased:
            mouseReleaseEvent(&mouse);
            break;
        case Qt::TouchPointStationary:
            break;
        }
    }
}

bool ImageCtrlScene::routesToTools(QGraphicsSceneMouseEvent* event) const
{
    // The right button belongs to the view's panning. A move has no button, so
    // moves reach the tools even during a pan.
    return !(event->button() & Qt::RightButton) && m_activeLayer;
}

// The tool of the draw mode first, then the text tool, which acts in every
// mode, then the base.
void ImageCtrlScene::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    if (routesToTools(event)) {
        ODShapeToolManage::GetODShapeToolManage()->mousePressEvent(this, event);
        ODTextTool::GetODTextTool()->mousePressEvent(this, event);
    }
    QGraphicsScene::mousePressEvent(event);
}

void ImageCtrlScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (routesToTools(event)) {
        ODShapeToolManage::GetODShapeToolManage()->mouseMoveEvent(this, event);
        ODTextTool::GetODTextTool()->mouseMoveEvent(this, event);
    }
    QGraphicsScene::mouseMoveEvent(event);
}

void ImageCtrlScene::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    if (!routesToTools(event)) {
        QGraphicsScene::mouseReleaseEvent(event);
        return;
    }
    ODShapeToolManage::GetODShapeToolManage()->mouseReleaseEvent(this, event);
    ODTextTool::GetODTextTool()->mouseReleaseEvent(this, event);
    QGraphicsScene::mouseReleaseEvent(event);
    update(QRectF());
}

void ImageCtrlScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event)
{
    // No button test here: a right double click reaches the tool too. The
    // text tool has no double-click step.
    if (m_activeLayer)
        ODShapeToolManage::GetODShapeToolManage()->mouseDoubleClickEvent(this, event);
    QGraphicsScene::mouseDoubleClickEvent(event);
    emit mouseDoubleClick();
}

void ImageCtrlScene::repaintLastBackground(QPainter* painter)
{
    if (painter != m_backgroundPainter)
        return;
    painter->save();
    painter->setWorldTransform(m_backgroundTransform);
    drawBackground(painter, m_backgroundRect);
    painter->restore();
}

// Steps 1 and 2 of the view's paint order (ViewPainter): the grey brush, then
// the image layer's picture, region image and static records.
void ImageCtrlScene::drawBackground(QPainter* painter, const QRectF& rect)
{
    m_backgroundPainter = painter;
    m_backgroundTransform = painter->worldTransform();
    m_backgroundRect = rect;
    QGraphicsScene::drawBackground(painter, rect);
    if (m_imageLayer)
        m_imageLayer->drawBackground(painter, rect);
}
