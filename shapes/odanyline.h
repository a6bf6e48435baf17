#pragma once

#include "odfreeline.h"

// An open freehand line, drawn point by point while the mouse button is down.
// It shows as an open path; its solid brush fills the path as Qt fills an
// open subpath, and showing makes the path item visible again.
class KESIMAGEWND_TESTS_EXPORT ODAnyLine : public ODFreeLine
{
public:
    explicit ODAnyLine(QGraphicsScene* scene);
    ~ODAnyLine() override;

    void ShowShape() override;
};
