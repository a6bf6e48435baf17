#pragma once

#include "odpoint.h"
#include "odshapeholdingtool.h"

// The tool of DM_POINT. Press and moves go to the select tool, so a press may
// catch and drag a shape that is already there; the release, wherever it
// happens, makes a new point at the release position, shows it selected and
// reports it to the host with shapeClicked. There is no size test: every
// release in this mode leaves a point.
class KESIMAGEWND_TESTS_EXPORT ODPointTool : public ODShapeHoldingTool<ODPoint>
{
    Q_OBJECT

public:
    ODPointTool();
    ~ODPointTool() override;

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
};
