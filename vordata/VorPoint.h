#pragma once

#include "vordata_export.h"

// A point in image pixels: two doubles, x then y, and nothing else. The window
// reads the two fields directly, so the layout is part of the interface.
class VORDATA_EXPORT VorPoint
{
public:
    VorPoint() : x(0.0), y(0.0) {}
    VorPoint(double px, double py) : x(px), y(py) {}
    ~VorPoint() = default;

    bool operator==(const VorPoint& other) const { return x == other.x && y == other.y; }
    bool operator!=(const VorPoint& other) const { return !(*this == other); }

    double x;
    double y;
};
