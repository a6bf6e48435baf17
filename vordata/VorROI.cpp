#include "VorROI.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <vector>

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

void give(double value, double* out)
{
    if (out)
        *out = value;
}

void give(double x, double y, VorPoint* out)
{
    if (out)
        *out = VorPoint(x, y);
}

} // namespace

VorROI::VorROI()
    : m_type(ROI_NONE)
{
}

// The mask picture is shared between copies: it is never changed in place
// (GenMask installs a new picture, GetMask hands out a deep copy).
VorROI::VorROI(const VorROI& other) = default;

VorROI& VorROI::operator=(const VorROI& other) = default;

VorROI::~VorROI() = default;

int VorROI::ROIType() const
{
    return m_type;
}

void VorROI::reset(int type)
{
    m_type = type;
    m_values.clear();
    m_points.Clear();
    m_mask = VorImage();
}

void VorROI::GenPoint(const VorPoint& p)
{
    const VorPoint q = p;
    reset(ROI_POINT);
    m_values = {q.x, q.y};
}

void VorROI::GenLine(const VorPoint& a, const VorPoint& b)
{
    const VorPoint pa = a, pb = b;
    reset(ROI_LINE);
    m_values = {pa.x, pa.y, pb.x, pb.y};
}

void VorROI::GenRect1(const VorPoint& a, const VorPoint& b)
{
    const VorPoint pa = a, pb = b;
    reset(ROI_RECT1);
    m_values = {pa.x, pa.y, pb.x, pb.y};
}

void VorROI::GenRect2(const VorPoint& centre, double l1, double l2, double angle)
{
    const VorPoint c = centre;
    reset(ROI_RECT2);
    m_values = {c.x, c.y, l1, l2, angle};
}

void VorROI::GenEllipse(const VorPoint& centre, double r1, double r2, double angle)
{
    const VorPoint c = centre;
    reset(ROI_ELLIPSE);
    m_values = {c.x, c.y, r1, r2, angle};
}

void VorROI::GenCircle(const VorPoint& centre, double r)
{
    const VorPoint c = centre;
    reset(ROI_CIRCLE);
    m_values = {c.x, c.y, r};
}

void VorROI::GenPolygon(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(ROI_POLYGON);
    m_points = copy;
}

void VorROI::GenIrregular(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(ROI_IRREGULAR);
    m_points = copy;
}

void VorROI::GenPolyLine(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(ROI_POLYLINE);
    m_points = copy;
}

void VorROI::GenTorus(const VorPoint& centre, double r1, double r2, double angle, double sweep)
{
    const VorPoint c = centre;
    reset(ROI_TORUS);
    m_values = {c.x, c.y, r1, r2, angle, sweep};
}

void VorROI::GenArc(const VorPoint& centre, double r, double start, double end)
{
    const VorPoint c = centre;
    reset(ROI_ARC);
    m_values = {c.x, c.y, r, start, end};
}

void VorROI::GenMask(const VorImage& binaryImage)
{
    cv::Mat mask = nonZeroMask(binaryImage.Mat());
    reset(ROI_MASK);
    m_mask = mask;
}

bool VorROI::GetPoint(VorPoint* p) const
{
    if (m_type != ROI_POINT || m_values.size() != 2)
        return false;
    give(m_values[0], m_values[1], p);
    return true;
}

bool VorROI::GetLine(VorPoint* a, VorPoint* b) const
{
    if (m_type != ROI_LINE || m_values.size() != 4)
        return false;
    give(m_values[0], m_values[1], a);
    give(m_values[2], m_values[3], b);
    return true;
}

bool VorROI::GetRect1(VorPoint* a, VorPoint* b) const
{
    if (m_type != ROI_RECT1 || m_values.size() != 4)
        return false;
    give(m_values[0], m_values[1], a);
    give(m_values[2], m_values[3], b);
    return true;
}

bool VorROI::GetRect2(VorPoint* centre, double* l1, double* l2, double* angle) const
{
    if (m_type != ROI_RECT2 || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], l1);
    give(m_values[3], l2);
    give(m_values[4], angle);
    return true;
}

bool VorROI::GetEllipse(VorPoint* centre, double* r1, double* r2, double* angle) const
{
    if (m_type != ROI_ELLIPSE || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r1);
    give(m_values[3], r2);
    give(m_values[4], angle);
    return true;
}

bool VorROI::GetCircle(VorPoint* centre, double* r) const
{
    if (m_type != ROI_CIRCLE || m_values.size() != 3)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r);
    return true;
}

bool VorROI::GetPolygon(VorPointArray* points) const
{
    if (m_type != ROI_POLYGON)
        return false;
    if (points)
        *points = m_points;
    return true;
}

bool VorROI::GetIrregular(VorPointArray* points) const
{
    if (m_type != ROI_IRREGULAR)
        return false;
    if (points)
        *points = m_points;
    return true;
}

bool VorROI::GetPolyLine(VorPointArray* points) const
{
    if (m_type != ROI_POLYLINE)
        return false;
    if (points)
        *points = m_points;
    return true;
}

bool VorROI::GetTorus(VorPoint* centre, double* r1, double* r2, double* angle, double* sweep) const
{
    if (m_type != ROI_TORUS || m_values.size() != 6)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r1);
    give(m_values[3], r2);
    give(m_values[4], angle);
    give(m_values[5], sweep);
    return true;
}

bool VorROI::GetArc(VorPoint* centre, double* r, double* start, double* end) const
{
    if (m_type != ROI_ARC || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r);
    give(m_values[3], start);
    give(m_values[4], end);
    return true;
}

bool VorROI::GetMask(VorImage* mask) const
{
    if (m_type != ROI_MASK)
        return false;
    if (mask)
        *mask = m_mask.Clone();
    return true;
}
