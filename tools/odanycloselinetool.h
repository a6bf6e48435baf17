#pragma once

#include "odanycloseline.h"
#include "odfreelinetool.h"

// The tool of DM_ANYCLOSELINE: a closed free line, a point per mouse move
// while the button is down. While it is drawn the line shows open, without
// its closing stroke; the release shows it closed.
class KESIMAGEWND_TESTS_EXPORT ODAnyCloseLineTool : public ODFreeLineTool<ODAnyCloseLine>
{
    Q_OBJECT

public:
    ODAnyCloseLineTool();
    ~ODAnyCloseLineTool() override;

protected:
    void showWhileDrawing(ImageCtrlScene* scene) override;
};
