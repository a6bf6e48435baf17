#pragma once

#include "VorPoint.h"
#include "vordata_export.h"

#include <vector>

// An ordered sequence of points in image pixels. Writers call Clear() and then
// Append() for each point; readers index from 0 to Length() - 1.
class VORDATA_EXPORT VorPointArray
{
public:
    VorPointArray();
    ~VorPointArray();

    void Clear();
    void Append(const VorPoint& point);
    int Length() const;

    // An index outside 0 .. Length() - 1 gives a reference to a spare point
    // of this array, reset to (0, 0) on every such access; the array is not read
    // out of bounds and does not grow.
    VorPoint& operator[](int index);
    const VorPoint& operator[](int index) const;

    bool operator==(const VorPointArray& other) const;
    bool operator!=(const VorPointArray& other) const { return !(*this == other); }

private:
    std::vector<VorPoint> m_points;
    mutable VorPoint m_outside;
};
