#pragma once

#include "odanyline.h"
#include "odfreelinetool.h"

// The tool of DM_ANYLINE: an open free line, a point per mouse move while the
// button is down, shown with the layer's handles as it grows.
class KESIMAGEWND_TESTS_EXPORT ODAnyLineTool : public ODFreeLineTool<ODAnyLine>
{
    Q_OBJECT

public:
    ODAnyLineTool();
    ~ODAnyLineTool() override;

protected:
    void showWhileDrawing(ImageCtrlScene* scene) override;
};
