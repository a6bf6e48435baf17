#include "odpolygontool.h"

#include "ShapeLayer.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include <QGraphicsSceneMouseEvent>
#include <QTimer>

namespace {

// The click timer's interval: the corner is added on the next turn of the
// event loop, out of the press.
constexpr int kClickDelayMs = 1;
// A double click ends a polygon that has more than this many points, the
// rubber band included.
constexpr int kOpenPolygonPoints = 2;

} // namespace

// The click timer lives as long as the tool, the life of the process; as the
// tool's child it goes with it at exit.
ODPolygonTool::ODPolygonTool()
    : m_polygonAdded(false)
    , m_clickTimer(new QTimer(this))
    , m_scene(nullptr)
    , m_event(nullptr)
{
}

ODPolygonTool::~ODPolygonTool() = default;

void ODPolygonTool::mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*)
{
    ODShapeTool::mousePressEvent(scene, event, nullptr);
    m_scene = scene;
    m_event = event;
    m_clickPoint = event->scenePos();
    connect(m_clickTimer, SIGNAL(timeout()), this, SLOT(singleMouseClicked()));
    // Not single-shot: after the tick it runs on with nothing connected.
    m_clickTimer->start(kClickDelayMs);
}

void ODPolygonTool::singleMouseClicked()
{
    QObject::disconnect(sender(), nullptr, nullptr, nullptr);
    // The window of the press may have gone before the tick.
    if (!m_scene)
        return;
    if (!m_shape) {
        m_shape = new ODPolygon(m_scene);
        connect(m_shape, SIGNAL(destroyed(QObject*)), this, SLOT(deleteObj()));
        dressShape(m_shape);
        enterActiveLayer(m_scene, m_shape);
        m_shape->AddPoint(m_clickPoint);
    }
    // The new corner; the point added last is the rubber band.
    m_shape->AddPoint(m_clickPoint);
    ShaperLayer* layer = m_scene->GetActiveLayer();
    layer->Update();
    layer->Show(true);
    m_polygonAdded = true;
}

void ODPolygonTool::mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*)
{
    ODShapeTool::mouseMoveEvent(scene, event, nullptr);
    if (!m_shape)
        return;
    m_shape->ChangeLastPoint(event->scenePos());
    ShaperLayer* layer = scene->GetActiveLayer();
    layer->Update();
    layer->Show(true);
}

void ODPolygonTool::mouseReleaseEvent(ImageCtrlScene*, QGraphicsSceneMouseEvent*, ODShape*)
{
}

void ODPolygonTool::mouseDoubleClickEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent*)
{
    m_clickTimer->stop();
    disconnect(m_clickTimer, SIGNAL(timeout()), this, SLOT(singleMouseClicked()));
    if (!m_shape)
        return;
    ShaperLayer* layer = scene->GetActiveLayer();
    if (m_shape->pointSize() <= kOpenPolygonPoints) {
        // Too few corners to end on: the double click adds one and the
        // polygon stays open for more clicks.
        m_shape->AddPoint(m_clickPoint);
        layer->Update();
        layer->Show(true);
        return;
    }
    m_shape->removePoint(m_shape->length() - 2);
    const long id = m_shape->GetShapeID();
    m_shape = nullptr;
    scene->SetDrawMode(DM_SELECT);
    layer->Update();
    layer->Show(true);
    EventThread* relay = scene->GetEventThread();
    if (m_polygonAdded) {
        m_polygonAdded = false;
        relay->sendShapeClicked(id);
        if (ImageCtrlView* view = scene->getCtrlView())
            view->setLimitMousePos(false);
    } else {
        m_polygonAdded = false;
        relay->sendShapeResize(id);
    }
}

void ODPolygonTool::ResetObject()
{
    if (!m_shape)
        return;
    // Taken from the layer that holds it, which is the active layer of the
    // last press unless another window was pressed since.
    ODShapeLayer* layer = m_shape->shaperLayer();
    ODPolygon* unfinished = m_shape;
    m_shape = nullptr;
    if (layer) {
        layer->clearCurrentShape();
        layer->clearSelectedShape();
        layer->removeShape(unfinished);
    } else {
        delete unfinished;
    }
}

void ODPolygonTool::deleteObj()
{
    m_shape = nullptr;
}

void ODPolygonTool::sceneDestroyed(QGraphicsScene* scene)
{
    ODShapeHoldingTool<ODPolygon>::sceneDestroyed(scene);
    if (m_scene != scene)
        return;
    m_scene = nullptr;
    m_event = nullptr;
    // A click pressed in the window that went must not tick into the next one.
    m_clickTimer->stop();
    disconnect(m_clickTimer, SIGNAL(timeout()), this, SLOT(singleMouseClicked()));
}
