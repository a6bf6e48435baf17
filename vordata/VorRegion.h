#pragma once

#include "vordata_export.h"

#include <vector>

class VorImage;

// A set of image pixels with value semantics, kept as horizontal runs sorted by
// row and then by column. Pixels with negative coordinates cannot be held.
// VORMV::VorRegionToBinImage paints a region into a binary picture.
class VORDATA_EXPORT VorRegion
{
public:
    struct Run
    {
        int row;
        int columnBegin;  // first column inside
        int columnEnd;    // one past the last column inside
        bool operator==(const Run& other) const
        {
            return row == other.row && columnBegin == other.columnBegin && columnEnd == other.columnEnd;
        }
    };

    VorRegion();
    // Every pixel of the picture with a non-zero value in any channel, the
    // picture's pixel (x, y) becoming region pixel (x, y). An empty picture
    // gives an empty region.
    explicit VorRegion(const VorImage& binaryImage);
    VorRegion(const VorRegion& other);
    VorRegion& operator=(const VorRegion& other);
    ~VorRegion();

    bool IsEmpty() const;
    long long Area() const;            // number of pixels
    bool Contains(int x, int y) const;
    // One past the largest column and row that hold a pixel: (0, 0) when empty.
    int Width() const;
    int Height() const;

    const std::vector<Run>& Runs() const;
    // Replaces the content; runs may come in any order and may overlap, and
    // runs that are empty or lie at negative coordinates are cut away.
    void SetRuns(const std::vector<Run>& runs);

    bool operator==(const VorRegion& other) const;
    bool operator!=(const VorRegion& other) const { return !(*this == other); }

private:
    std::vector<Run> m_runs;
};
