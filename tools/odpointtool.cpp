#include "odpointtool.h"

#include "ShapeLayer.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odselecttool.h"

#include <QGraphicsSceneMouseEvent>

ODPointTool::ODPointTool() = default;

ODPointTool::~ODPointTool() = default;

void ODPointTool::mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*)
{
    ODShapeTool::mousePressEvent(scene, event, nullptr);
    selectTool()->mousePressEvent(scene, event, nullptr);
}

void ODPointTool::mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*)
{
    ODShapeTool::mouseMoveEvent(scene, event, nullptr);
    selectTool()->mouseMoveEvent(scene, event, nullptr);
}

void ODPointTool::mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*)
{
    ODShapeTool::mouseReleaseEvent(scene, event, nullptr);
    if (m_shape)
        return;
    // The select tool's release does not run here: a shape caught at the press
    // keeps its drag state until the next press starts over.
    m_shape = new ODPoint(scene, event->scenePos());
    dressShape(m_shape);
    m_shape->AdjustParameter();
    enterActiveLayer(scene, m_shape);
    ShaperLayer* layer = scene->GetActiveLayer();
    layer->Update();
    layer->Show(true);
    const long id = m_shape->GetShapeID();
    m_shape = nullptr;
    scene->GetEventThread()->sendShapeClicked(id);
    if (ImageCtrlView* view = scene->getCtrlView())
        view->setLimitMousePos(false);
}
