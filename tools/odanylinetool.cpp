#include "odanylinetool.h"

ODAnyLineTool::ODAnyLineTool() = default;

ODAnyLineTool::~ODAnyLineTool() = default;

void ODAnyLineTool::showWhileDrawing(ImageCtrlScene* scene)
{
    scene->GetActiveLayer()->Show(true);
}
