#include "RoiRasterizer.h"

#include "VorImage.h"
#include "VorPointArray.h"
#include "VorROI.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace VorRaster {

SpanSink::~SpanSink() = default;

namespace {

constexpr int kLimit = kCoordinateLimit;
constexpr double kPi = 3.14159265358979323846;

// Line vertices are cut to this box before the integer stepping, which keeps
// every product of the stepping inside 64 bits.
constexpr double kLineBox = 268435456.0;  // 2^28

// Arcs with more steps than this are followed only where they come near the
// picture.
constexpr long long kArcDirectSteps = 1LL << 18;
// Largest step count of an arc: keeps the step index exact in a double.
constexpr double kArcMaxSteps = 4503599627370496.0;  // 2^52

using Index = long long;

// v cut to [-1, kLimit] and made an integer index; v must be an integer value
// or infinite. NaN gives -1.
Index clampIndex(double v)
{
    if (!(v > -1.0))
        return -1;
    if (v > static_cast<double>(kLimit))
        return kLimit;
    return static_cast<Index>(v);
}

// The pixel indices whose centres (i + 0.5) lie in [lo, hi], widened by margin
// on either side and cut to the picture. False when none is left.
bool centreRange(double lo, double hi, int margin, int& first, int& last)
{
    if (std::isnan(lo) || std::isnan(hi))
        return false;
    Index f = clampIndex(std::ceil(lo - 0.5)) - margin;
    Index l = clampIndex(std::floor(hi - 0.5)) + margin;
    f = std::max<Index>(f, 0);
    l = std::min<Index>(l, kLimit - 1);
    if (f > l)
        return false;
    first = static_cast<int>(f);
    last = static_cast<int>(l);
    return true;
}

// Emits the pixels of a row whose centres lie in [xa, xb].
void emitCentres(SpanSink& sink, int row, double xa, double xb)
{
    int first = 0;
    int last = 0;
    if (centreRange(xa, xb, 0, first, last))
        sink.addSpan(row, first, last + 1);
}

// Sine and cosine of an angle in degrees, exact at the multiples of 90 so that
// axis-parallel figures stay exactly axis-parallel.
void sinCosDegrees(double degrees, double& s, double& c)
{
    double r = std::fmod(degrees, 360.0);
    if (r < 0.0)
        r += 360.0;
    if (r >= 360.0)
        r -= 360.0;
    if (r == 0.0) {
        s = 0.0;
        c = 1.0;
    } else if (r == 90.0) {
        s = 1.0;
        c = 0.0;
    } else if (r == 180.0) {
        s = 0.0;
        c = -1.0;
    } else if (r == 270.0) {
        s = -1.0;
        c = 0.0;
    } else {
        const double a = r * kPi / 180.0;
        s = std::sin(a);
        c = std::cos(a);
    }
}

// Where a convex figure meets one pixel row, as computed in closed form. The
// closed form only guides the search: the figure's own inside test decides
// every boundary pixel.
struct RowEstimate
{
    enum class Kind {
        Chord,  // centres in [a, b] are inside, up to rounding
        Miss,   // no centre inside, up to rounding; guess is the closest x
        Unknown // the closed form failed (overflow): test every pixel
    };
    Kind kind;
    double a;
    double b;
    double guess;

    static RowEstimate chord(double a, double b) { return {Kind::Chord, a, b, 0.0}; }
    static RowEstimate miss(double guess) { return {Kind::Miss, 0.0, 0.0, guess}; }
    static RowEstimate unknown() { return {Kind::Unknown, 0.0, 0.0, 0.0}; }
};

// The end of the run of inside pixels that holds seed, searched from guess:
// leftwards (step -1) or rightwards (step +1). The inside pixels of the row form
// one run, so the search gallops from the guess and then halves the interval,
// a few tests whatever the guess.
template <typename Inside>
int runEnd(const Inside& inside, int seed, Index guess, int direction)
{
    const int limit = direction < 0 ? 0 : kLimit - 1;
    // Positions along the search: p(k) = seed + direction * k, k in [0, reach].
    const int reach = direction < 0 ? seed : limit - seed;
    Index g = direction < 0 ? seed - guess : guess - seed;
    const int start = static_cast<int>(std::min<Index>(std::max<Index>(g, 0), reach));
    auto at = [&](int k) { return inside(seed + direction * k); };

    int good = 0;   // inside
    int bad = -1;   // outside, beyond good; -1 while unknown
    if (at(start)) {
        good = start;
        int step = 1;
        while (good < reach) {
            const int k = std::min(good + step, reach);
            if (!at(k)) {
                bad = k;
                break;
            }
            good = k;
            step *= 2;
        }
        if (bad < 0)
            return seed + direction * good;
    } else {
        bad = start;  // start > 0 here, since the seed is inside
        int step = 1;
        good = 0;
        while (bad - step > 0) {
            const int k = bad - step;
            if (at(k)) {
                good = k;
                break;
            }
            bad = k;
            step *= 2;
        }
    }
    while (bad - good > 1) {
        const int mid = good + (bad - good) / 2;
        if (at(mid))
            good = mid;
        else
            bad = mid;
    }
    return seed + direction * good;
}

// Finds, row by row, the one run of pixels that a convex figure covers.
// Columns [scanFirst, scanLast] bound the figure; they are tested one by one
// on a row whose estimate failed (an overflow far beyond the picture), within
// a fixed budget of tests for the whole figure.
class ConvexRows
{
public:
    ConvexRows(int scanFirst, int scanLast)
        : m_scanFirst(std::max(scanFirst, 0)), m_scanLast(std::min(scanLast, kLimit - 1))
    {
    }

    // inside(x) tells whether pixel x of the row is inside.
    template <typename Inside>
    bool span(const RowEstimate& est, const Inside& inside, int& left, int& right)
    {
        Index lo = 0;
        Index hi = -1;
        if (est.kind == RowEstimate::Kind::Chord && !std::isnan(est.a) && !std::isnan(est.b) && est.a <= est.b) {
            lo = clampIndex(std::ceil(est.a - 0.5));
            hi = clampIndex(std::floor(est.b - 0.5));
        } else if (est.kind == RowEstimate::Kind::Miss && !std::isnan(est.guess)) {
            lo = clampIndex(std::ceil(est.guess - 0.5));
            hi = lo - 1;
        } else {
            return scan(inside, left, right);
        }

        // A pixel inside: the middle of the estimate, or next to its ends when
        // the estimate is off by rounding.
        const Index candidates[] = {lo + (hi - lo) / 2, lo, hi, lo - 1, hi + 1};
        int seed = -1;
        for (Index c : candidates) {
            if (c >= 0 && c < kLimit && inside(static_cast<int>(c))) {
                seed = static_cast<int>(c);
                break;
            }
        }
        if (seed < 0)
            return false;
        left = runEnd(inside, seed, lo, -1);
        right = runEnd(inside, seed, hi, +1);
        return true;
    }

    template <typename Inside>
    void emit(SpanSink& sink, int row, const RowEstimate& est, const Inside& inside)
    {
        int left = 0;
        int right = 0;
        if (span(est, inside, left, right))
            sink.addSpan(row, left, right + 1);
    }

private:
    static constexpr long long kScanBudget = 1LL << 22;

    template <typename Inside>
    bool scan(const Inside& inside, int& left, int& right)
    {
        const long long width = static_cast<long long>(m_scanLast) - m_scanFirst + 1;
        if (width <= 0 || width > m_scanBudget)
            return false;
        m_scanBudget -= width;
        int first = -1;
        int last = -1;
        for (int x = m_scanFirst; x <= m_scanLast; ++x) {
            if (inside(x)) {
                if (first < 0)
                    first = x;
                last = x;
            }
        }
        if (first < 0)
            return false;
        left = first;
        right = last;
        return true;
    }

    int m_scanFirst;
    int m_scanLast;
    long long m_scanBudget = kScanBudget;
};

// A row estimate from linear constraints alpha * t + beta >= 0 on the offset t
// of a pixel centre from x0.
class HalfLines
{
public:
    void add(double alpha, double beta)
    {
        if (alpha == 0.0) {
            if (!(beta >= 0.0))
                m_none = true;
            return;
        }
        const double t = -beta / alpha;
        if (alpha > 0.0)
            m_lo = std::max(m_lo, t);
        else
            m_hi = std::min(m_hi, t);
    }

    RowEstimate estimate(double x0) const
    {
        if (m_none)
            return RowEstimate::miss(x0);
        if (m_lo <= m_hi)
            return RowEstimate::chord(x0 + m_lo, x0 + m_hi);
        const double mid = 0.5 * (m_lo + m_hi);
        return RowEstimate::miss(std::isnan(mid) ? x0 : x0 + mid);
    }

private:
    double m_lo = -std::numeric_limits<double>::infinity();
    double m_hi = std::numeric_limits<double>::infinity();
    bool m_none = false;
};

// The chord of a circle of radius r about cx on a row at vertical distance dy.
RowEstimate circleChord(double cx, double r, double dy)
{
    const double ady = std::abs(dy);
    const double q = (r - ady) * (r + ady);
    if (std::isnan(q))
        return RowEstimate::unknown();
    if (q < 0.0)
        return RowEstimate::miss(cx);
    const double h = std::sqrt(q);
    return RowEstimate::chord(cx - h, cx + h);
}

// Narrows the steps [first, last] of a walk along the longer axis to those
// whose pixels can lie within [0, kLimit) across it. Across the axis the walk
// takes the pixel nearest the ideal line through the integer ends (m0, n0) and
// (m0 + dm, n0 + dn), never more than half a pixel away, so a pixel inside has
// its ideal point within [-0.5, kLimit - 0.5] there. The bounds are widened by
// a margin for the rounding of the division; the walk still tests every
// pixel. False when no step is left.
bool narrowToPicture(Index m0, Index n0, Index dm, Index dn, Index& first, Index& last)
{
    if (dn == 0)
        return n0 >= 0 && n0 < kLimit;
    constexpr Index kMargin = 2;
    const double slope = static_cast<double>(dm) / static_cast<double>(dn);
    const double a = static_cast<double>(m0) + (-0.5 - static_cast<double>(n0)) * slope;
    const double b = static_cast<double>(m0) + (static_cast<double>(kLimit) - 0.5 - static_cast<double>(n0)) * slope;
    // Ends within 2^28 and a slope up to 2^29 keep both below 2^58.
    first = std::max<Index>(first, static_cast<Index>(std::floor(std::min(a, b))) - kMargin);
    last = std::min<Index>(last, static_cast<Index>(std::ceil(std::max(a, b))) + kMargin);
    return first <= last;
}

// The 8-connected line between the pixels holding a and b. Along the longer
// axis every pixel from one end to the other is taken; across it the pixel
// nearest the ideal line, and where the line passes exactly between two, the
// one with the smaller coordinate, so that a line and its reverse are equal.
// Only the part that can meet the picture is walked, so the work follows the
// pixels inside, not the length of the line.
void drawSegment(SpanSink& sink, double ax, double ay, double bx, double by)
{
    // Cut the segment to the far box (Liang-Barsky). Where the difference of
    // the ends overflows, the cut runs at half scale, which gives the same
    // parameters with every term finite.
    double scale = 1.0;
    double dxr = bx - ax;
    double dyr = by - ay;
    if (!std::isfinite(dxr) || !std::isfinite(dyr)) {
        scale = 0.5;
        dxr = bx * scale - ax * scale;
        dyr = by * scale - ay * scale;
    }
    const double box = kLineBox * scale;
    const double sax = ax * scale;
    const double say = ay * scale;
    double t0 = 0.0;
    double t1 = 1.0;
    const double p[4] = {-dxr, dxr, -dyr, dyr};
    const double q[4] = {sax + box, box - sax, say + box, box - say};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0.0)
                return;
        } else {
            const double t = q[i] / p[i];
            if (p[i] < 0.0)
                t0 = std::max(t0, t);
            else
                t1 = std::min(t1, t);
        }
    }
    if (!(t0 <= t1))
        return;
    double x0r = ax;
    double y0r = ay;
    double x1r = bx;
    double y1r = by;
    if (t0 > 0.0) {
        x0r = (sax + t0 * dxr) / scale;
        y0r = (say + t0 * dyr) / scale;
    }
    if (t1 < 1.0) {
        x1r = (sax + t1 * dxr) / scale;
        y1r = (say + t1 * dyr) / scale;
    }
    auto toBox = [](double v) { return std::min(std::max(std::floor(v), -kLineBox), kLineBox); };
    Index x0 = static_cast<Index>(toBox(x0r));
    Index y0 = static_cast<Index>(toBox(y0r));
    Index x1 = static_cast<Index>(toBox(x1r));
    Index y1 = static_cast<Index>(toBox(y1r));

    // ceil(n / d) for d > 0.
    auto ceilDiv = [](Index n, Index d) {
        const Index q = n / d;
        return (n % d != 0 && n > 0) ? q + 1 : q;
    };

    if (std::abs(x1 - x0) >= std::abs(y1 - y0)) {
        if (x1 < x0) {
            std::swap(x0, x1);
            std::swap(y0, y1);
        }
        const Index dx = x1 - x0;
        const Index dy = y1 - y0;
        Index first = std::max<Index>(x0, 0);
        Index last = std::min<Index>(x1, kLimit - 1);
        if (first > last || !narrowToPicture(x0, y0, dx, dy, first, last))
            return;
        for (Index x = first; x <= last; ++x) {
            const Index y = dx == 0 ? y0 : y0 + ceilDiv(2 * (x - x0) * dy - dx, 2 * dx);
            if (y >= 0 && y < kLimit)
                sink.addSpan(static_cast<int>(y), static_cast<int>(x), static_cast<int>(x) + 1);
        }
    } else {
        if (y1 < y0) {
            std::swap(x0, x1);
            std::swap(y0, y1);
        }
        const Index dx = x1 - x0;
        const Index dy = y1 - y0;
        Index first = std::max<Index>(y0, 0);
        Index last = std::min<Index>(y1, kLimit - 1);
        if (first > last || !narrowToPicture(y0, x0, dy, dx, first, last))
            return;
        for (Index y = first; y <= last; ++y) {
            const Index x = x0 + ceilDiv(2 * (y - y0) * dx - dy, 2 * dy);
            if (x >= 0 && x < kLimit)
                sink.addSpan(static_cast<int>(y), static_cast<int>(x), static_cast<int>(x) + 1);
        }
    }
}

// The angle a mod 2*pi in [0, 2*pi).
double wrapRadians(double a)
{
    const double full = 2.0 * kPi;
    double r = std::fmod(a, full);
    if (r < 0.0)
        r += full;
    if (r >= full)
        r -= full;
    return r;
}

// For an arc of n steps whose circle reaches far beyond the picture: the step
// ranges [from, to] whose samples can lie near the picture. The circle is cut
// by the lines of a box two pixels wider than the picture on every side; a
// step of at most one pixel with both ends outside that box cannot touch the
// picture.
std::vector<std::pair<Index, Index>> arcStepsNearPicture(double cx, double cy, double r, double startDeg,
                                                         double sweepDeg, Index n)
{
    const double boxLo = -2.0;
    const double boxHi = static_cast<double>(kLimit) + 2.0;
    const double full = 2.0 * kPi;

    std::vector<double> cuts = {0.0, full};
    for (double bound : {boxLo, boxHi}) {
        const double u = (bound - cx) / r;  // cos of the angle where x == bound
        if (std::abs(u) <= 1.0) {
            const double a = std::acos(u);
            cuts.push_back(wrapRadians(a));
            cuts.push_back(wrapRadians(-a));
        }
        const double v = (cy - bound) / r;  // sin of the angle where y == bound
        if (std::abs(v) <= 1.0) {
            const double a = std::asin(v);
            cuts.push_back(wrapRadians(a));
            cuts.push_back(wrapRadians(kPi - a));
        }
    }
    std::sort(cuts.begin(), cuts.end());

    const double sweep = std::abs(sweepDeg) * kPi / 180.0;
    const double startMod = std::fmod(startDeg, 360.0);
    const double start = startMod * kPi / 180.0;
    const bool forward = sweepDeg >= 0.0;
    const double steps = static_cast<double>(n);

    std::vector<std::pair<Index, Index>> ranges;
    auto addParameterRange = [&](double ta, double tb) {
        if (ta > sweep)
            return;
        tb = std::min(tb, sweep);
        const double kLo = std::floor(ta / sweep * steps) - 2.0;
        const double kHi = std::ceil(tb / sweep * steps) + 2.0;
        const Index from = static_cast<Index>(std::max(kLo, 0.0));
        const Index to = static_cast<Index>(std::min(kHi, steps));
        if (from <= to)
            ranges.emplace_back(from, to);
    };

    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const double a = cuts[i];
        const double b = cuts[i + 1];
        if (!(b > a))
            continue;
        const double mid = 0.5 * (a + b);
        const double mx = cx + r * std::cos(mid);
        const double my = cy - r * std::sin(mid);
        if (!(mx >= boxLo && mx <= boxHi && my >= boxLo && my <= boxHi))
            continue;
        // The parameter of an angle: its distance from the start along the sweep.
        const double ta = forward ? wrapRadians(a - start) : wrapRadians(start - b);
        const double tb = ta + (b - a);
        addParameterRange(ta, std::min(tb, full));
        if (tb > full)
            addParameterRange(0.0, tb - full);
    }

    std::sort(ranges.begin(), ranges.end());
    std::vector<std::pair<Index, Index>> merged;
    for (const auto& range : ranges) {
        if (!merged.empty() && range.first <= merged.back().second)
            merged.back().second = std::max(merged.back().second, range.second);
        else
            merged.push_back(range);
    }
    return merged;
}

// Non-zero in any channel, as one channel of 8 bits.
cv::Mat nonZeroMask(const cv::Mat& picture)
{
    if (picture.empty())
        return cv::Mat();
    if (picture.type() == CV_8UC1)
        return picture;
    std::vector<cv::Mat> planes;
    cv::split(picture, planes);
    cv::Mat any = cv::Mat::zeros(picture.rows, picture.cols, CV_8UC1);
    for (const cv::Mat& plane : planes) {
        cv::Mat nz;
        cv::compare(plane, 0, nz, cv::CMP_NE);
        cv::bitwise_or(any, nz, any);
    }
    return any;
}

}  // namespace

RoiRasterizer::RoiRasterizer(const VorROI& roi) : m_kind(Kind::Void)
{
    VorPoint a;
    VorPoint b;
    double v[4] = {0.0, 0.0, 0.0, 0.0};
    VorPointArray points;
    auto takePoints = [&]() {
        for (int i = 0; i < points.Length(); ++i)
            m_points.push_back(points[i]);
    };

    switch (roi.ROIType()) {
    case VorROI::ROI_RECT1:
        if (roi.GetRect1(&a, &b)) {
            m_kind = Kind::Rect1;
            m_points = {a, b};
        }
        break;
    case VorROI::ROI_RECT2:
        if (roi.GetRect2(&a, &v[0], &v[1], &v[2])) {
            m_kind = Kind::Rect2;
            m_points = {a};
            m_values.assign(v, v + 3);
        }
        break;
    case VorROI::ROI_CIRCLE:
        if (roi.GetCircle(&a, &v[0])) {
            m_kind = Kind::Circle;
            m_points = {a};
            m_values.assign(v, v + 1);
        }
        break;
    case VorROI::ROI_ELLIPSE:
        if (roi.GetEllipse(&a, &v[0], &v[1], &v[2])) {
            m_kind = Kind::Ellipse;
            m_points = {a};
            m_values.assign(v, v + 3);
        }
        break;
    case VorROI::ROI_TORUS:
        if (roi.GetTorus(&a, &v[0], &v[1], &v[2], &v[3])) {
            m_kind = Kind::Torus;
            m_points = {a};
            m_values.assign(v, v + 4);
        }
        break;
    case VorROI::ROI_POLYGON:
        if (roi.GetPolygon(&points)) {
            m_kind = Kind::Polygon;
            takePoints();
        }
        break;
    case VorROI::ROI_IRREGULAR:
        if (roi.GetIrregular(&points)) {
            m_kind = Kind::Polyline;
            takePoints();
        }
        break;
    case VorROI::ROI_LINE:
        if (roi.GetLine(&a, &b)) {
            m_kind = Kind::Polyline;
            m_points = {a, b};
        }
        break;
    case VorROI::ROI_POINT:
        if (roi.GetPoint(&a)) {
            m_kind = Kind::Polyline;
            m_points = {a};
        }
        break;
    case VorROI::ROI_ARC:
        if (roi.GetArc(&a, &v[0], &v[1], &v[2])) {
            m_kind = Kind::Arc;
            m_points = {a};
            m_values.assign(v, v + 3);
        }
        break;
    case VorROI::ROI_MASK: {
        VorImage mask;
        if (roi.GetMask(&mask)) {
            m_kind = Kind::Mask;
            m_mask = nonZeroMask(mask.Mat());
        }
        break;
    }
    default:
        break;
    }

    if (!numbersFinite()) {
        m_kind = Kind::Void;
        m_points.clear();
        m_values.clear();
        m_mask = cv::Mat();
    }
}

bool RoiRasterizer::numbersFinite() const
{
    for (const VorPoint& p : m_points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y))
            return false;
    }
    for (double v : m_values) {
        if (!std::isfinite(v))
            return false;
    }
    return true;
}

void RoiRasterizer::rasterize(SpanSink& sink) const
{
    switch (m_kind) {
    case Kind::Void:
        break;
    case Kind::Rect1:
        rasterizeRect1(sink);
        break;
    case Kind::Rect2:
        rasterizeRect2(sink);
        break;
    case Kind::Circle:
        rasterizeCircle(sink);
        break;
    case Kind::Ellipse:
        rasterizeEllipse(sink);
        break;
    case Kind::Torus:
        rasterizeTorus(sink);
        break;
    case Kind::Polygon:
        rasterizePolygon(sink);
        break;
    case Kind::Polyline:
        rasterizePolyline(sink);
        break;
    case Kind::Arc:
        rasterizeArc(sink);
        break;
    case Kind::Mask:
        rasterizeMask(sink);
        break;
    }
}

void RoiRasterizer::rasterizeRect1(SpanSink& sink) const
{
    const VorPoint& a = m_points[0];
    const VorPoint& b = m_points[1];
    int x0 = 0;
    int x1 = 0;
    int y0 = 0;
    int y1 = 0;
    if (!centreRange(std::min(a.x, b.x), std::max(a.x, b.x), 0, x0, x1))
        return;
    if (!centreRange(std::min(a.y, b.y), std::max(a.y, b.y), 0, y0, y1))
        return;
    for (int y = y0; y <= y1; ++y)
        sink.addSpan(y, x0, x1 + 1);
}

void RoiRasterizer::rasterizeRect2(SpanSink& sink) const
{
    const double cx = m_points[0].x;
    const double cy = m_points[0].y;
    const double h1 = std::abs(m_values[0]) / 2.0;
    const double h2 = std::abs(m_values[1]) / 2.0;
    double s = 0.0;
    double c = 1.0;
    sinCosDegrees(m_values[2], s, c);

    // Own axes on the screen: x along (c, -s), y along (s, c). A pixel centre at
    // offset (dx, dy) from the centre has own coordinates u and v.
    auto inside = [=](double dx, double dy) {
        const double u = dx * c - dy * s;
        const double v = dx * s + dy * c;
        return std::abs(u) <= h1 && std::abs(v) <= h2;
    };

    const double hx = std::abs(h1 * c) + std::abs(h2 * s);
    const double hy = std::abs(h1 * s) + std::abs(h2 * c);
    int rowFirst = 0;
    int rowLast = 0;
    int colFirst = 0;
    int colLast = 0;
    if (!centreRange(cy - hy, cy + hy, 1, rowFirst, rowLast) || !centreRange(cx - hx, cx + hx, 1, colFirst, colLast))
        return;

    ConvexRows rows(colFirst, colLast);
    for (int y = rowFirst; y <= rowLast; ++y) {
        const double dy = y + 0.5 - cy;
        // Offsets t = dx with |coef * t + offset| <= half on both axes.
        HalfLines lines;
        auto slab = [&](double coef, double offset, double half) {
            lines.add(-coef, half - offset);  // coef * t + offset <= half
            lines.add(coef, half + offset);   // coef * t + offset >= -half
        };
        slab(c, -dy * s, h1);
        slab(s, dy * c, h2);
        rows.emit(sink, y, lines.estimate(cx), [&](int x) { return inside(x + 0.5 - cx, dy); });
    }
}

void RoiRasterizer::rasterizeCircle(SpanSink& sink) const
{
    const double cx = m_points[0].x;
    const double cy = m_points[0].y;
    const double r = std::abs(m_values[0]);
    const double rr = r * r;
    int rowFirst = 0;
    int rowLast = 0;
    int colFirst = 0;
    int colLast = 0;
    if (!centreRange(cy - r, cy + r, 1, rowFirst, rowLast) || !centreRange(cx - r, cx + r, 1, colFirst, colLast))
        return;
    ConvexRows rows(colFirst, colLast);
    for (int y = rowFirst; y <= rowLast; ++y) {
        const double dy = y + 0.5 - cy;
        const double dyy = dy * dy;
        auto inside = [&](int x) {
            const double dx = x + 0.5 - cx;
            return dx * dx + dyy <= rr;
        };
        rows.emit(sink, y, circleChord(cx, r, dy), inside);
    }
}

void RoiRasterizer::rasterizeEllipse(SpanSink& sink) const
{
    const double cx = m_points[0].x;
    const double cy = m_points[0].y;
    double r1 = std::abs(m_values[0]);
    double r2 = std::abs(m_values[1]);
    double s = 0.0;
    double c = 1.0;
    sinCosDegrees(m_values[2], s, c);

    // A radius this small counts as zero: no pixel centre comes that close to
    // an axis of the ellipse without lying on it. Radii are also taken
    // relative to the larger one, a and b in [0, 1], so that nothing below
    // overflows; a ratio too small for a double flattens the ellipse as well.
    constexpr double kNegligible = 1e-100;
    if (r1 < kNegligible)
        r1 = 0.0;
    if (r2 < kNegligible)
        r2 = 0.0;
    const double m = std::max(r1, r2);
    const double a = m > 0.0 ? r1 / m : 0.0;
    const double b = m > 0.0 ? r2 / m : 0.0;
    if (a == 0.0)
        r1 = 0.0;
    if (b == 0.0)
        r2 = 0.0;
    const bool flat = r1 == 0.0 || r2 == 0.0;

    const double hx = m * std::hypot(a * c, b * s);  // half extents of the bounding box
    const double hy = m * std::hypot(a * s, b * c);
    int rowFirst = 0;
    int rowLast = 0;
    int colFirst = 0;
    int colLast = 0;
    if (!centreRange(cy - hy, cy + hy, 1, rowFirst, rowLast) || !centreRange(cx - hx, cx + hx, 1, colFirst, colLast))
        return;

    // Own coordinates u (along the r1 axis) and v of a pixel centre offset.
    // The test is (u * r2)^2 + (v * r1)^2 <= (r1 * r2)^2, exact for whole and
    // half numbers; the divided form takes over where the products overflow or
    // vanish. A radius of zero leaves a segment (or the centre), whose pixels
    // are those with centres on it.
    const double k = (r1 * r2) * (r1 * r2);
    const bool multiplied = std::isfinite(k) && k > 0.0;
    auto inside = [=](double dx, double dy) {
        const double u = dx * c - dy * s;
        const double v = dx * s + dy * c;
        if (flat)
            return std::abs(u) <= r1 && std::abs(v) <= r2;
        if (multiplied)
            return (u * r2) * (u * r2) + (v * r1) * (v * r1) <= k;
        return (u / r1) * (u / r1) + (v / r2) * (v / r2) <= 1.0;
    };

    // Horizontal chords: their midpoints lie on a line through the centre,
    // t0 = dy * slope, and the half chord is w * sqrt(1 - (dy / hy)^2), w being
    // the horizontal half diameter.
    const double d = std::hypot(c * b, s * a);
    const double w = flat ? 0.0 : m * ((a / d) * b);
    const double slope = (flat || s == 0.0 || c == 0.0) ? 0.0 : s * c * ((b - a) / d) * ((b + a) / d);

    ConvexRows rows(colFirst, colLast);
    for (int y = rowFirst; y <= rowLast; ++y) {
        const double dy = y + 0.5 - cy;
        RowEstimate est = RowEstimate::unknown();
        if (!flat) {
            const double q = dy / hy;
            const double t0 = dy * slope;
            if (!std::isnan(q) && !std::isnan(t0)) {
                if (std::abs(q) > 1.0) {
                    est = RowEstimate::miss(cx + t0);
                } else {
                    const double h = w * std::sqrt((1.0 - q) * (1.0 + q));
                    est = RowEstimate::chord(cx + t0 - h, cx + t0 + h);
                }
            }
        } else {
            // The segment along the non-zero axis: one point of each row, or the
            // whole segment on the row it lies along.
            const double half = r1 == 0.0 ? r2 : r1;
            const double ex = r1 == 0.0 ? s : c;  // its direction on the screen
            const double ey = r1 == 0.0 ? c : -s;
            if (ey == 0.0) {
                est = dy == 0.0 ? RowEstimate::chord(cx - half * std::abs(ex), cx + half * std::abs(ex))
                                : RowEstimate::miss(cx);
            } else {
                const double t = dy / ey;
                est = std::abs(t) <= half ? RowEstimate::chord(cx + t * ex, cx + t * ex) : RowEstimate::miss(cx);
            }
        }
        rows.emit(sink, y, est, [&](int x) { return inside(x + 0.5 - cx, dy); });
    }
}

void RoiRasterizer::rasterizeTorus(SpanSink& sink) const
{
    const double cx = m_points[0].x;
    const double cy = m_points[0].y;
    double rIn = std::abs(m_values[0]);
    double rOut = std::abs(m_values[1]);
    if (rIn > rOut)
        std::swap(rIn, rOut);
    double start = m_values[2];
    double sweep = m_values[3];
    const bool ring = std::abs(sweep) >= 360.0;
    if (sweep < 0.0) {
        start += sweep;
        sweep = -sweep;
    }

    // Sector sides in mathematical orientation (y up): a pixel centre offset
    // (dx, dy) on the screen is (dx, -dy) there. Up to a half turn the sector
    // is the closed wedge from the start side S round to the end side E (the
    // start ray alone for no sweep); beyond, everything but the open wedge
    // from E round to S. Either wedge meets a row in one run.
    double ss = 0.0;
    double sc = 1.0;
    double es = 0.0;
    double ec = 1.0;
    sinCosDegrees(start, ss, sc);
    sinCosDegrees(start + sweep, es, ec);
    const bool convex = sweep <= 180.0;
    auto cross = [](double ax, double ay, double bx, double by) { return ax * by - ay * bx; };
    auto inWedge = [=](double dx, double dy) {
        const double mx = dx;
        const double my = -dy;
        if (sweep == 0.0)
            return cross(sc, ss, mx, my) == 0.0 && sc * mx + ss * my >= 0.0;
        return cross(sc, ss, mx, my) >= 0.0 && cross(mx, my, ec, es) >= 0.0;
    };
    auto inOpenWedge = [=](double dx, double dy) {
        const double mx = dx;
        const double my = -dy;
        return cross(ec, es, mx, my) > 0.0 && cross(mx, my, sc, ss) > 0.0;
    };

    const double rrOut = rOut * rOut;
    const double rrIn = rIn * rIn;
    int rowFirst = 0;
    int rowLast = 0;
    int colFirst = 0;
    int colLast = 0;
    if (!centreRange(cy - rOut, cy + rOut, 1, rowFirst, rowLast)
        || !centreRange(cx - rOut, cx + rOut, 1, colFirst, colLast))
        return;

    ConvexRows outerRows(colFirst, colLast);
    ConvexRows holeRows(colFirst, colLast);
    ConvexRows wedgeRows(colFirst, colLast);
    for (int y = rowFirst; y <= rowLast; ++y) {
        const double dy = y + 0.5 - cy;
        const double dyy = dy * dy;
        auto inOuter = [&](int x) {
            const double dx = x + 0.5 - cx;
            return dx * dx + dyy <= rrOut;
        };
        auto inHole = [&](int x) {
            const double dx = x + 0.5 - cx;
            return dx * dx + dyy < rrIn;
        };

        // The ring on this row: up to two runs.
        int ringRuns[2][2] = {{0, -1}, {0, -1}};
        int lo = 0;
        int hi = 0;
        if (!outerRows.span(circleChord(cx, rOut, dy), inOuter, lo, hi))
            continue;
        int holeLo = 0;
        int holeHi = 0;
        if (rIn > 0.0 && holeRows.span(circleChord(cx, rIn, dy), inHole, holeLo, holeHi)) {
            ringRuns[0][0] = lo;
            ringRuns[0][1] = std::min(hi, holeLo - 1);
            ringRuns[1][0] = std::max(lo, holeHi + 1);
            ringRuns[1][1] = hi;
        } else {
            ringRuns[0][0] = lo;
            ringRuns[0][1] = hi;
        }

        // The sector on this row: up to two runs. Offsets t = dx meet the
        // wedge sides where alpha * t + beta >= 0.
        int sectorRuns[2][2] = {{0, kLimit - 1}, {0, -1}};
        if (!ring) {
            HalfLines lines;
            int wl = 0;
            int wr = 0;
            if (convex) {
                lines.add(-ss, -sc * dy);  // left of S
                if (sweep == 0.0) {
                    lines.add(ss, sc * dy);   // on S
                    lines.add(sc, -ss * dy);  // ahead of the apex
                } else {
                    lines.add(es, ec * dy);   // right of E
                }
                if (!wedgeRows.span(lines.estimate(cx), [&](int x) { return inWedge(x + 0.5 - cx, dy); }, wl, wr))
                    continue;
                sectorRuns[0][0] = wl;
                sectorRuns[0][1] = wr;
            } else {
                lines.add(-es, -ec * dy);  // left of E
                lines.add(ss, sc * dy);    // right of S
                if (wedgeRows.span(lines.estimate(cx), [&](int x) { return inOpenWedge(x + 0.5 - cx, dy); }, wl,
                                   wr)) {
                    sectorRuns[0][1] = wl - 1;
                    sectorRuns[1][0] = wr + 1;
                    sectorRuns[1][1] = kLimit - 1;
                }
            }
        }

        for (const auto& ringRun : ringRuns) {
            for (const auto& sectorRun : sectorRuns) {
                const int first = std::max(ringRun[0], sectorRun[0]);
                const int last = std::min(ringRun[1], sectorRun[1]);
                if (first <= last)
                    sink.addSpan(y, first, last + 1);
            }
        }
    }
}

void RoiRasterizer::rasterizePolygon(SpanSink& sink) const
{
    const std::size_t n = m_points.size();
    // One vertex or two enclose no area; they leave the point or the segment,
    // with the pixels a point or a line has.
    if (n <= 2) {
        rasterizePolyline(sink);
        return;
    }

    struct Edge
    {
        double x0, y0, x1, y1;  // y0 <= y1
    };
    std::vector<Edge> edges;
    edges.reserve(n);
    double yMin = m_points[0].y;
    double yMax = m_points[0].y;
    for (std::size_t i = 0; i < n; ++i) {
        const VorPoint& a = m_points[i];
        const VorPoint& b = m_points[(i + 1) % n];
        if (a.y <= b.y)
            edges.push_back({a.x, a.y, b.x, b.y});
        else
            edges.push_back({b.x, b.y, a.x, a.y});
        yMin = std::min(yMin, a.y);
        yMax = std::max(yMax, a.y);
    }
    int rowFirst = 0;
    int rowLast = 0;
    if (!centreRange(yMin, yMax, 0, rowFirst, rowLast))
        return;
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.y0 < b.y0; });

    // x of an edge at height py, y0 <= py <= y1, exact at the vertices.
    auto edgeX = [](const Edge& e, double py) {
        if (py == e.y0)
            return e.x0;
        if (py == e.y1)
            return e.x1;
        double x = e.x0 + (py - e.y0) * (e.x1 - e.x0) / (e.y1 - e.y0);
        if (!std::isfinite(x)) {
            // Far vertices: blend, which cannot overflow.
            const double t = std::min(std::max((py - e.y0) / (e.y1 - e.y0), 0.0), 1.0);
            x = e.x0 * (1.0 - t) + e.x1 * t;
            if (std::isnan(x))
                x = e.x0;
        }
        return x;
    };

    std::vector<Edge> active;
    std::vector<double> crossings;
    std::size_t next = 0;
    for (int y = rowFirst; y <= rowLast; ++y) {
        const double py = y + 0.5;
        while (next < edges.size() && edges[next].y0 <= py)
            active.push_back(edges[next++]);
        active.erase(std::remove_if(active.begin(), active.end(), [py](const Edge& e) { return e.y1 < py; }),
                     active.end());

        crossings.clear();
        for (const Edge& e : active) {
            if (e.y0 == e.y1) {
                // A horizontal edge on the pixel centres of this row.
                emitCentres(sink, y, std::min(e.x0, e.x1), std::max(e.x0, e.x1));
                continue;
            }
            const double x = edgeX(e, py);
            if (py < e.y1)
                crossings.push_back(x);  // each edge counts over [y0, y1)
            // A pixel centre on the edge is on the boundary, and so inside.
            const double k = x - 0.5;
            if (k == std::floor(k) && k >= 0.0 && k < static_cast<double>(kLimit)) {
                const int col = static_cast<int>(k);
                sink.addSpan(y, col, col + 1);
            }
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
            emitCentres(sink, y, crossings[i], crossings[i + 1]);
    }
}

void RoiRasterizer::rasterizePolyline(SpanSink& sink) const
{
    if (m_points.empty())
        return;
    if (m_points.size() == 1) {
        drawSegment(sink, m_points[0].x, m_points[0].y, m_points[0].x, m_points[0].y);
        return;
    }
    for (std::size_t i = 0; i + 1 < m_points.size(); ++i)
        drawSegment(sink, m_points[i].x, m_points[i].y, m_points[i + 1].x, m_points[i + 1].y);
}

void RoiRasterizer::rasterizeArc(SpanSink& sink) const
{
    const double cx = m_points[0].x;
    const double cy = m_points[0].y;
    const double r = std::abs(m_values[0]);
    const double start = m_values[1];
    const double sweep = std::min(std::max(m_values[2], -360.0), 360.0);

    // Steps of at most one pixel of arc length.
    const double length = std::abs(sweep) * kPi / 180.0 * r;
    const double steps = std::min(std::max(std::ceil(length), 1.0), kArcMaxSteps);
    const Index n = static_cast<Index>(steps);

    auto sample = [&](Index k, double& x, double& y) {
        const double degrees = k == n ? start + sweep : start + sweep * (static_cast<double>(k) / steps);
        double s = 0.0;
        double c = 1.0;
        sinCosDegrees(degrees, s, c);
        x = cx + r * c;
        y = cy - r * s;
    };
    auto drawSteps = [&](Index from, Index to) {
        double px = 0.0;
        double py = 0.0;
        sample(from, px, py);
        if (from == to) {
            drawSegment(sink, px, py, px, py);
            return;
        }
        for (Index k = from; k < to; ++k) {
            double qx = 0.0;
            double qy = 0.0;
            sample(k + 1, qx, qy);
            drawSegment(sink, px, py, qx, qy);
            px = qx;
            py = qy;
        }
    };

    if (n <= kArcDirectSteps) {
        drawSteps(0, n);
        return;
    }
    for (const auto& range : arcStepsNearPicture(cx, cy, r, start, sweep, n))
        drawSteps(range.first, range.second);
}

void RoiRasterizer::rasterizeMask(SpanSink& sink) const
{
    const int rows = std::min(m_mask.rows, kLimit);
    const int cols = std::min(m_mask.cols, kLimit);
    for (int y = 0; y < rows; ++y) {
        const unsigned char* row = m_mask.ptr<unsigned char>(y);
        int x = 0;
        while (x < cols) {
            while (x < cols && row[x] == 0)
                ++x;
            if (x == cols)
                break;
            const int begin = x;
            while (x < cols && row[x] != 0)
                ++x;
            sink.addSpan(y, begin, x);
        }
    }
}

namespace {

class ExtentSink : public SpanSink
{
public:
    void addSpan(int row, int /*begin*/, int end) override
    {
        width = std::max(width, end);
        height = std::max(height, row + 1);
    }
    int width = 0;
    int height = 0;
};

class PictureSink : public SpanSink
{
public:
    explicit PictureSink(cv::Mat& picture) : m_picture(picture) {}
    void addSpan(int row, int begin, int end) override
    {
        if (row < 0 || row >= m_picture.rows)
            return;
        begin = std::max(begin, 0);
        end = std::min(end, m_picture.cols);
        if (begin < end)
            std::memset(m_picture.ptr<unsigned char>(row) + begin, 255, static_cast<std::size_t>(end - begin));
    }

private:
    cv::Mat& m_picture;
};

class RunSink : public SpanSink
{
public:
    void addSpan(int row, int begin, int end) override
    {
        m_runs.push_back({row, begin, end});
        if (m_runs.size() >= m_threshold) {
            normalise();
            m_threshold = std::max(m_runs.size() + kBatch, 2 * m_runs.size());
        }
    }

    std::vector<VorRegion::Run> take()
    {
        normalise();
        return std::move(m_runs);
    }

private:
    static constexpr std::size_t kBatch = std::size_t(1) << 20;

    // Sorts and merges overlapping or touching runs of a row.
    void normalise()
    {
        std::sort(m_runs.begin(), m_runs.end(), [](const VorRegion::Run& a, const VorRegion::Run& b) {
            return a.row != b.row ? a.row < b.row : a.columnBegin < b.columnBegin;
        });
        std::size_t out = 0;
        for (std::size_t i = 0; i < m_runs.size(); ++i) {
            if (out > 0 && m_runs[out - 1].row == m_runs[i].row && m_runs[i].columnBegin <= m_runs[out - 1].columnEnd)
                m_runs[out - 1].columnEnd = std::max(m_runs[out - 1].columnEnd, m_runs[i].columnEnd);
            else
                m_runs[out++] = m_runs[i];
        }
        m_runs.resize(out);
    }

    std::vector<VorRegion::Run> m_runs;
    std::size_t m_threshold = kBatch;
};

}  // namespace

cv::Mat renderPicture(const SpanSource& source)
{
    ExtentSink extent;
    source(extent);
    if (extent.width <= 0 || extent.height <= 0)
        return cv::Mat();
    cv::Mat picture = cv::Mat::zeros(extent.height, extent.width, CV_8UC1);
    PictureSink painter(picture);
    source(painter);
    return picture;
}

std::vector<VorRegion::Run> collectRuns(const SpanSource& source)
{
    RunSink runs;
    source(runs);
    return runs.take();
}

void emitRegion(const VorRegion& region, SpanSink& sink)
{
    for (const VorRegion::Run& run : region.Runs()) {
        if (run.row < 0 || run.row >= kLimit)
            continue;
        const int begin = std::max(run.columnBegin, 0);
        const int end = std::min(run.columnEnd, kLimit);
        if (begin < end)
            sink.addSpan(run.row, begin, end);
    }
}

}  // namespace VorRaster
