#pragma once

#include "VorPoint.h"
#include "VorRegion.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <functional>
#include <vector>

class VorROI;

// Rasterisation of ROIs into horizontal pixel spans, and the two consumers of
// spans that VORMV builds on: binary pictures and region runs. Internal to
// VorDataConvert.
namespace VorRaster {

// Pictures and regions produced here reach from the origin up to this limit,
// excluded, in both directions; everything beyond is cut away.
constexpr int kCoordinateLimit = 16384;

// Receives pixels as spans [begin, end) of one row, already cut to
// [0, kCoordinateLimit) in both directions, begin < end. Spans may come in any
// order and may overlap.
class SpanSink
{
public:
    virtual ~SpanSink();
    virtual void addSpan(int row, int begin, int end) = 0;
};

// Produces the spans of a sink; called once per pass.
using SpanSource = std::function<void(SpanSink&)>;

// Reads a ROI once (its kind, numbers and, for a mask ROI, its mask) and then
// emits its pixels as often as asked, each time the same.
class RoiRasterizer
{
public:
    explicit RoiRasterizer(const VorROI& roi);

    // True when the ROI holds no pixel by construction: no kind, an unknown
    // kind, or a number that is not finite.
    bool isVoid() const { return m_kind == Kind::Void; }

    void rasterize(SpanSink& sink) const;

private:
    enum class Kind { Void, Rect1, Rect2, Circle, Ellipse, Torus, Polygon, Polyline, Arc, Mask };

    bool numbersFinite() const;
    void rasterizeRect1(SpanSink& sink) const;
    void rasterizeRect2(SpanSink& sink) const;
    void rasterizeCircle(SpanSink& sink) const;
    void rasterizeEllipse(SpanSink& sink) const;
    void rasterizeTorus(SpanSink& sink) const;
    void rasterizePolygon(SpanSink& sink) const;
    void rasterizePolyline(SpanSink& sink) const;
    void rasterizeArc(SpanSink& sink) const;
    void rasterizeMask(SpanSink& sink) const;

    Kind m_kind;
    std::vector<double> m_values;   // the kind's numbers, in the order of its Gen call
    std::vector<VorPoint> m_points; // corners, centre or vertices
    cv::Mat m_mask;                 // mask ROI: one channel, 8 bits, non-zero inside
};

// The binary picture of a span source: CV_8UC1, 255 inside, 0 outside, rows
// packed, one past the largest column and row inside; an empty matrix when
// the source gives no span. The source is run twice: once to measure, once to
// paint, so the picture is allocated at its final size.
cv::Mat renderPicture(const SpanSource& source);

// The spans of a source as region runs: sorted by row and column, overlapping
// and touching spans merged.
std::vector<VorRegion::Run> collectRuns(const SpanSource& source);

// Emits the runs of a region, cut to [0, kCoordinateLimit).
void emitRegion(const VorRegion& region, SpanSink& sink);

}  // namespace VorRaster
