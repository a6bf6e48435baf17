#pragma once

// The tools of the process as a test reaches them: the tool manager, the
// select tool and the rectangle drawing tool, and the select tool's drag state
// and select mode as their named enum values, printable in failure messages.
// The tools outlive every window of a test binary, so each test forgets the
// current shape before and after it runs (forgetCurrentShape in init and
// cleanup).

#include "oddrawtool.h"
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

// A current shape left from an earlier test would point into a scene that is
// gone.
inline void forgetCurrentShape()
{
    tools()->clearSelectedShape();
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
