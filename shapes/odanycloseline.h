#pragma once

#include "odfreeline.h"

// A closed freehand line: the same point list as the open one, shown with a
// line from the last point back to the first. While the drawing tool collects
// points, ShowMoveShape shows it open.
class KESIMAGEWND_TESTS_EXPORT ODAnyCloseLine : public ODFreeLine
{
public:
    explicit ODAnyCloseLine(QGraphicsScene* scene);
    ~ODAnyCloseLine() override;

    void ShowShape() override;
    // The open form of ShowShape, for the mouse moves of drawing: the points
    // reloaded, the path without the closing line, the pen's colour renewed.
    // The pen keeps the width of the last ShowShape and the brush is not set.
    void ShowMoveShape();
};
