#pragma once

#include "vorimagewnd_global.h"

#include <QList>

class ImageCtrlScene;
class ODSelectTool;
class ODShape;
class ODShapeTool;
class QGraphicsSceneMouseEvent;

// The tools of the process, one per draw mode, indexed by DrawMode from
// DM_SELECT to DM_ANYCLOSELINE, and the dispatch of the scene's mouse events
// to the tool of the scene's current mode. A mode whose row holds no tool, or
// a mode beyond the list, makes the dispatch do nothing.
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

    // The tool of a mode; null for a mode without one.
    ODShapeTool* GetShapeTool(DrawMode mode);
    // The tool of DM_SELECT, which every drawing tool hands its drag to.
    ODSelectTool* selectTool();
    void clearSelectedShape();
    void setCurSelectedShape(ODShape* shape);
    void FreeShapeList();
    int toolCount() const { return m_toolList.size(); }

private:
    void InitShapeList();
    ODShapeTool* toolOf(ImageCtrlScene* scene);

    QList<ODShapeTool*> m_toolList;

    static ODShapeToolManage s_pODShapeToolManage;
};
