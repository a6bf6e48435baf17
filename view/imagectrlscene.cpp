#include "imagectrlscene.h"

#include "ImageLayer.h"
#include "eventthread.h"

#include <QGraphicsSceneMouseEvent>

ImageCtrlScene::ImageCtrlScene(QObject* parent)
    : QGraphicsScene(parent)
    , m_view(nullptr)
    , m_imageLayer(nullptr)
    , m_scale(1.0)
    , m_viewWidth(0.0f)
    , m_viewHeight(0.0f)
    , m_eventThread(new EventThread(nullptr))
{
    update(QRectF());
}

ImageCtrlScene::~ImageCtrlScene()
{
    delete m_imageLayer;
    m_imageLayer = nullptr;
    delete m_eventThread;
    m_eventThread = nullptr;
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
}

ImageLayer* ImageCtrlScene::GetImageLayer() const
{
    return m_imageLayer;
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

void ImageCtrlScene::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mousePressEvent(event);
}

void ImageCtrlScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseMoveEvent(event);
}

void ImageCtrlScene::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseReleaseEvent(event);
    update(QRectF());
}

void ImageCtrlScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseDoubleClickEvent(event);
    emit mouseDoubleClick();
}

void ImageCtrlScene::drawBackground(QPainter* painter, const QRectF& rect)
{
    QGraphicsScene::drawBackground(painter, rect);
    if (m_imageLayer)
        m_imageLayer->drawBackground(painter, rect);
}
