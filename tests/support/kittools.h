#pragma once

// The tools of the process as a test reaches them: the tool manager, the
// select tool and the rectangle drawing tool, and the select tool's drag state
// and select mode as their named enum values, printable in failure messages.
// The tools outlive every window of a test binary, so each test forgets the
// current shape before and after it runs (forgetCurrentShape in init and
// cleanup).

#include "kitinput.h"
#include "kitwindow.h"

#include "VorPointArray.h"
#include "odanycloselinetool.h"
#include "odanylinetool.h"
#include "oddrawtool.h"
#include "odpointtool.h"
#include "odpolygontool.h"
#include "odrect1.h"
#include "odselecttool.h"
#include "odshapetoolmanage.h"

#include <QtTest/QTest>

namespace Kit {

inline ODShapeToolManage* tools()
{
    return ODShapeToolManage::GetODShapeToolManage();
}

inline ODSelectTool* selectTool()
{
    return tools()->selectTool();
}

inline ODDrawTool<ODRect1>* rectTool()
{
    return static_cast<ODDrawTool<ODRect1>*>(tools()->GetShapeTool(DM_RECT1));
}

// The tool of a mode as its own class.
template <class Tool>
Tool* toolOf(DrawMode mode)
{
    return static_cast<Tool*>(tools()->GetShapeTool(mode));
}

template <class Shape>
ODDrawTool<Shape>* drawToolOf(DrawMode mode)
{
    return toolOf<ODDrawTool<Shape>>(mode);
}

inline ODPointTool* pointTool()
{
    return toolOf<ODPointTool>(DM_POINT);
}

inline ODPolygonTool* polygonTool()
{
    return toolOf<ODPolygonTool>(DM_POLYGON);
}

inline ODAnyLineTool* anyLineTool()
{
    return toolOf<ODAnyLineTool>(DM_ANYLINE);
}

inline ODAnyCloseLineTool* anyCloseLineTool()
{
    return toolOf<ODAnyCloseLineTool>(DM_ANYCLOSELINE);
}

// The points of a point-list shape (polygon or free line) in the order its
// GetParam reports them.
template <class Shape>
QVector<QPointF> pointsOf(Shape* shape)
{
    VorPointArray array;
    QVector<QPointF> points;
    if (!shape || !shape->GetParam(&array))
        return points;
    for (int i = 0; i < array.Length(); ++i)
        points.append(QPointF(array[i].x, array[i].y));
    return points;
}

// A click of the polygon tool as an operator makes it: the mouse comes to the
// point, presses and lets go, and the tool's click timer ticks before anything
// else happens.
inline void clickCorner(QGraphicsView* view, const QPointF& scenePos)
{
    moveTo(view, scenePos);
    clickAt(view, scenePos);
    letQueuedCallsRun();
}

// The double click that ends a polygon: its first click ticks, as it does for
// an operator, before the double click arrives.
inline void doubleClickCorner(QGraphicsView* view, const QPointF& scenePos)
{
    clickCorner(view, scenePos);
    sendMouse(view, QEvent::MouseButtonDblClick, viewportPos(view, scenePos), Qt::LeftButton, Qt::LeftButton);
    releaseAt(view, scenePos);
}

// A current shape left from an earlier test would point into a scene that is
// gone.
inline void forgetCurrentShape()
{
    tools()->clearSelectedShape();
    polygonTool()->ResetObject();
}

inline ODSelectTool::DragState dragState(const ODSelectTool* tool = selectTool())
{
    return ODSelectTool::DragState(tool->dragState());
}

inline ODSelectTool::SelectMode selectMode(const ODSelectTool* tool = selectTool())
{
    return ODSelectTool::SelectMode(tool->selectMode());
}

inline const char* nameOf(ODSelectTool::DragState state)
{
    switch (state) {
    case ODSelectTool::DragNothing: return "DragNothing";
    case ODSelectTool::DragNewShape: return "DragNewShape";
    case ODSelectTool::PressedBody: return "PressedBody";
    case ODSelectTool::PressedHandle: return "PressedHandle";
    case ODSelectTool::MovedBody: return "MovedBody";
    case ODSelectTool::ResizedHandle: return "ResizedHandle";
    case ODSelectTool::ClickOnly: return "ClickOnly";
    }
    return nullptr;
}

inline const char* nameOf(ODSelectTool::SelectMode mode)
{
    switch (mode) {
    case ODSelectTool::SelectNone: return "SelectNone";
    case ODSelectTool::SelectMoveBody: return "SelectMoveBody";
    case ODSelectTool::SelectDragHandle: return "SelectDragHandle";
    }
    return nullptr;
}

template <class Enum>
char* enumText(Enum value)
{
    const char* name = nameOf(value);
    return name ? qstrdup(name) : QTest::toString(int(value));
}

} // namespace Kit

// QCOMPARE prints the select tool's states by name (found by argument-dependent
// lookup, the enums being members of a class of the global namespace).
inline char* toString(ODSelectTool::DragState state)
{
    return Kit::enumText(state);
}

inline char* toString(ODSelectTool::SelectMode mode)
{
    return Kit::enumText(mode);
}
