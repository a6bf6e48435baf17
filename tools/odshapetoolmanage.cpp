#include "odshapetoolmanage.h"

#include "imagectrlscene.h"
#include "oddrawtool.h"
#include "odellipse.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odselecttool.h"

ODShapeToolManage ODShapeToolManage::s_pODShapeToolManage;

ODShapeToolManage::ODShapeToolManage()
{
    InitShapeList();
}

ODShapeToolManage::~ODShapeToolManage()
{
    FreeShapeList();
}

ODShapeToolManage* ODShapeToolManage::GetODShapeToolManage()
{
    return &s_pODShapeToolManage;
}

void ODShapeToolManage::InitShapeList()
{
    // Index = DrawMode. A row without a tool takes no part in the dispatch.
    m_toolList = {
        new ODSelectTool,           // DM_SELECT
        nullptr,                    // DM_POINT
        nullptr,                    // DM_LINE
        new ODDrawTool<ODRect1>,    // DM_RECT1
        new ODDrawTool<ODRect2>,    // DM_RECT2
        new ODDrawTool<ODEllipse>,  // DM_ELLIPSE
        nullptr,                    // DM_CIRCLE
        nullptr,                    // DM_POLYGON
        nullptr,                    // DM_ANYLINE
        nullptr,                    // DM_ANNULAR
        nullptr,                    // DM_ARC
        nullptr,                    // DM_ARROWLINE
        nullptr,                    // DM_ANYCLOSELINE
    };
}

void ODShapeToolManage::FreeShapeList()
{
    for (ODShapeTool* tool : m_toolList)
        delete tool;
    m_toolList.clear();
}

ODShapeTool* ODShapeToolManage::GetShapeTool(DrawMode mode)
{
    const int index = int(mode);
    return index >= 0 && index < m_toolList.size() ? m_toolList[index] : nullptr;
}

ODSelectTool* ODShapeToolManage::selectTool()
{
    // Row 0 is made an ODSelectTool by InitShapeList and never replaced.
    return static_cast<ODSelectTool*>(GetShapeTool(DM_SELECT));
}

ODShapeTool* ODShapeToolManage::toolOf(ImageCtrlScene* scene)
{
    return GetShapeTool(scene->GetDrawMode());
}

void ODShapeToolManage::mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event)
{
    if (ODShapeTool* tool = toolOf(scene))
        tool->mousePressEvent(scene, event, nullptr);
}

void ODShapeToolManage::mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event)
{
    if (ODShapeTool* tool = toolOf(scene))
        tool->mouseReleaseEvent(scene, event, nullptr);
}

void ODShapeToolManage::mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event)
{
    if (ODShapeTool* tool = toolOf(scene))
        tool->mouseMoveEvent(scene, event, nullptr);
}

void ODShapeToolManage::mouseDoubleClickEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event)
{
    if (ODShapeTool* tool = toolOf(scene))
        tool->mouseDoubleClickEvent(scene, event);
}

void ODShapeToolManage::clearSelectedShape()
{
    if (ODSelectTool* select = selectTool())
        select->clearCurrentShape();
}

void ODShapeToolManage::setCurSelectedShape(ODShape* shape)
{
    if (ODSelectTool* select = selectTool())
        select->setCurrentShape(shape);
}
