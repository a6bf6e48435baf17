#include "odshapetoolmanage.h"

#include "imagectrlscene.h"
#include "oddrawtool.h"
#include "odanycloselinetool.h"
#include "odanylinetool.h"
#include "odannular.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odline.h"
#include "odpointtool.h"
#include "odpolygontool.h"
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
    // Index = DrawMode.
    m_toolList = {
        new ODSelectTool,              // DM_SELECT
        new ODPointTool,               // DM_POINT
        new ODDrawTool<ODLine>,        // DM_LINE
        new ODDrawTool<ODRect1>,       // DM_RECT1
        new ODDrawTool<ODRect2>,       // DM_RECT2
        new ODDrawTool<ODEllipse>,     // DM_ELLIPSE
        new ODDrawTool<ODCircle>,      // DM_CIRCLE
        new ODPolygonTool,             // DM_POLYGON
        new ODAnyLineTool,             // DM_ANYLINE
        new ODDrawTool<ODAnnular>,     // DM_ANNULAR
        new ODDrawTool<ODARC>,         // DM_ARC
        new ODDrawTool<ODArrowLine>,   // DM_ARROWLINE
        new ODAnyCloseLineTool,        // DM_ANYCLOSELINE
    };
}

void ODShapeToolManage::FreeShapeList()
{
    for (ODShapeTool* tool : m_toolList)
        delete tool;
    m_toolList.clear();
}

QList<ODShape*> ODShapeToolManage::heldShapes() const
{
    QList<ODShape*> held;
    for (ODShapeTool* tool : m_toolList) {
        if (ODShape* shape = tool ? tool->heldShape() : nullptr)
            held.append(shape);
    }
    return held;
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

ODPolygonTool* ODShapeToolManage::polygonTool()
{
    // Row DM_POLYGON is made an ODPolygonTool by InitShapeList and never replaced.
    return static_cast<ODPolygonTool*>(GetShapeTool(DM_POLYGON));
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
