#pragma once

#include "vorimagewnd_global.h"

#include <QList>

class ImageCtrlScene;
class ODPolygonTool;
class ODSelectTool;
class ODShape;
class ODShapeTool;
class QGraphicsSceneMouseEvent;

// The tools of the process, one per draw mode, indexed by DrawMode from
// DM_SELECT to DM_ANYCLOSELINE, and the dispatch of the scene's mouse events
// to the tool of the scene's current mode. Every mode from DM_SELECT to
// DM_ANYCLOSELINE has its tool; a mode beyond the list (DM_MASK and the rake
// rectangles, which are made by calls only) makes the dispatch do nothing.
class KESIMAGEWND_TESTS_EXPORT ODShapeToolManage
{
public:
    ODShapeToolManage();
    ~ODShapeToolManage();

    ODShapeToolManage(const ODShapeToolManage&) = delete;
    ODShapeToolManage& operator=(const ODShapeToolManage&) = delete;

    static ODShapeToolManage* GetODShapeToolManage();

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);
    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);
    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);
    void mouseDoubleClickEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);

    // The tool of a mode; null for a mode beyond the list.
    ODShapeTool* GetShapeTool(DrawMode mode);
    // The tool of DM_SELECT, which every drawing tool hands its drag to.
    ODSelectTool* selectTool();
    // The tool of DM_POLYGON, whose unfinished polygon the window throws away
    // before a polygon mode begins.
    ODPolygonTool* polygonTool();
    void clearSelectedShape();
    void setCurSelectedShape(ODShape* shape);
    void FreeShapeList();
    int toolCount() const { return m_toolList.size(); }
    // The shapes the tools keep between events, in tool order; nulls left out.
    QList<ODShape*> heldShapes() const;

private:
    void InitShapeList();
    ODShapeTool* toolOf(ImageCtrlScene* scene);

    QList<ODShapeTool*> m_toolList;

    static ODShapeToolManage s_pODShapeToolManage;
};
