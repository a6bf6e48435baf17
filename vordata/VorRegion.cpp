#include "VorRegion.h"

#include "VorImage.h"

#include <opencv2/core.hpp>

#include <algorithm>
#include <climits>
#include <cstddef>

namespace {

// One-channel 8-bit picture, 255 where any channel of src is non-zero and 0
// elsewhere. Works for every depth and channel count; a picture that is empty
// or not two-dimensional gives an empty result.
cv::Mat nonZeroMask(const cv::Mat& src)
{
    if (src.empty() || src.dims != 2)
        return cv::Mat();
    cv::Mat mask;
    if (src.channels() == 1) {
        cv::compare(src, cv::Scalar::all(0), mask, cv::CMP_NE);
        return mask;
    }
    std::vector<cv::Mat> planes;
    cv::split(src, planes);
    cv::compare(planes[0], cv::Scalar::all(0), mask, cv::CMP_NE);
    cv::Mat plane;
    for (std::size_t c = 1; c < planes.size(); ++c) {
        cv::compare(planes[c], cv::Scalar::all(0), plane, cv::CMP_NE);
        cv::bitwise_or(mask, plane, mask);
    }
    return mask;
}

bool runBefore(const VorRegion::Run& a, const VorRegion::Run& b)
{
    if (a.row != b.row)
        return a.row < b.row;
    if (a.columnBegin != b.columnBegin)
        return a.columnBegin < b.columnBegin;
    return a.columnEnd < b.columnEnd;
}

} // namespace

VorRegion::VorRegion() = default;

VorRegion::VorRegion(const VorImage& binaryImage)
{
    const cv::Mat mask = nonZeroMask(binaryImage.Mat());
    for (int y = 0; y < mask.rows; ++y) {
        const unsigned char* row = mask.ptr<unsigned char>(y);
        int x = 0;
        while (x < mask.cols) {
            while (x < mask.cols && row[x] == 0)
                ++x;
            if (x >= mask.cols)
                break;
            const int begin = x;
            while (x < mask.cols && row[x] != 0)
                ++x;
            m_runs.push_back(Run{y, begin, x});
        }
    }
}

VorRegion::VorRegion(const VorRegion& other) = default;

VorRegion& VorRegion::operator=(const VorRegion& other) = default;

VorRegion::~VorRegion() = default;

bool VorRegion::IsEmpty() const
{
    return m_runs.empty();
}

long long VorRegion::Area() const
{
    long long area = 0;
    for (const Run& run : m_runs)
        area += static_cast<long long>(run.columnEnd) - run.columnBegin;
    return area;
}

bool VorRegion::Contains(int x, int y) const
{
    if (x < 0 || y < 0)
        return false;
    // The last run that starts at or before (x, y) is the only candidate,
    // because runs of a row are disjoint and sorted.
    const Run probe{y, x, INT_MAX};
    auto it = std::upper_bound(m_runs.begin(), m_runs.end(), probe, runBefore);
    if (it == m_runs.begin())
        return false;
    --it;
    return it->row == y && x >= it->columnBegin && x < it->columnEnd;
}

int VorRegion::Width() const
{
    int width = 0;
    for (const Run& run : m_runs)
        width = std::max(width, run.columnEnd);
    return width;
}

int VorRegion::Height() const
{
    if (m_runs.empty())
        return 0;
    // Runs are sorted by row, so the last one has the largest row.
    const int lastRow = m_runs.back().row;
    return lastRow == INT_MAX ? INT_MAX : lastRow + 1;
}

const std::vector<VorRegion::Run>& VorRegion::Runs() const
{
    return m_runs;
}

void VorRegion::SetRuns(const std::vector<Run>& runs)
{
    std::vector<Run> kept;
    kept.reserve(runs.size());
    for (Run run : runs) {
        if (run.row < 0)
            continue;
        if (run.columnBegin < 0)
            run.columnBegin = 0;
        if (run.columnEnd <= run.columnBegin)
            continue;
        kept.push_back(run);
    }
    std::sort(kept.begin(), kept.end(), runBefore);

    std::vector<Run> merged;
    merged.reserve(kept.size());
    for (const Run& run : kept) {
        if (!merged.empty() && merged.back().row == run.row && run.columnBegin <= merged.back().columnEnd) {
            merged.back().columnEnd = std::max(merged.back().columnEnd, run.columnEnd);
            continue;
        }
        merged.push_back(run);
    }
    m_runs.swap(merged);
}

bool VorRegion::operator==(const VorRegion& other) const
{
    return m_runs == other.m_runs;
}
