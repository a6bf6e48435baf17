#include "odshapetool.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odselecttool.h"
#include "odshape.h"
#include "odshapetoolmanage.h"

#include <QGraphicsSceneMouseEvent>

ODShapeTool::ODShapeTool()
    : m_offsetX(0.0f)
    , m_offsetY(0.0f)
    , m_scale(1.0)
    , m_lineWidth(1.0f)
{
}

ODShapeTool::~ODShapeTool() = default;

void ODShapeTool::mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*)
{
    // The point stays as the event gives it: nothing limits it to the picture.
    m_curPoint = event->scenePos();
    m_pressPoint = event->scenePos();
    m_penColor = scene->getPenColor();
    m_brushColor = scene->getBrushColor();
    m_lineWidth = scene->getLineWidth();
    m_scale = scene->getScale();
}

void ODShapeTool::mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent*, ODShape*)
{
    // Each draw mode lasts for one shape.
    scene->SetDrawMode(DM_SELECT);
}

void ODShapeTool::mouseMoveEvent(ImageCtrlScene*, QGraphicsSceneMouseEvent* event, ODShape*)
{
    m_curPoint = event->scenePos();
}

void ODShapeTool::mouseDoubleClickEvent(ImageCtrlScene*, QGraphicsSceneMouseEvent*)
{
}

void ODShapeTool::shapeDestroyed(ODShape*)
{
}

void ODShapeTool::sceneDestroyed(QGraphicsScene*)
{
}

ODSelectTool* ODShapeTool::selectTool()
{
    return ODShapeToolManage::GetODShapeToolManage()->selectTool();
}

void ODShapeTool::dressShape(ODShape* shape) const
{
    shape->SetScale(float(m_scale));
    shape->SetOffset(m_offsetX, m_offsetY);
    shape->SetPenColor(m_penColor);
    shape->SetLineWidth(m_lineWidth);
    shape->SetBrushColor(m_brushColor);
}

void ODShapeTool::enterActiveLayer(ImageCtrlScene* scene, ODShape* shape)
{
    ShaperLayer* layer = scene->GetActiveLayer();
    layer->addShape(shape);
    layer->addSelectedShape(shape);
}
