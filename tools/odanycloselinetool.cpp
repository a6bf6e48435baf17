#include "odanycloselinetool.h"

ODAnyCloseLineTool::ODAnyCloseLineTool() = default;

ODAnyCloseLineTool::~ODAnyCloseLineTool() = default;

void ODAnyCloseLineTool::showWhileDrawing(ImageCtrlScene*)
{
    m_shape->ShowMoveShape();
}
