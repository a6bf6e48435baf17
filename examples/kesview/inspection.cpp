#include "inspection.h"

#include <opencv2/imgproc.hpp>

#include <QElapsedTimer>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
// How far a simplified outline may stray from the traced one, in pixels.
constexpr double kOutlineTolerance = 0.75;
// Holes at least this wide get their diameter written beside them.
constexpr double kLabelledDiameter = 40.0;
// The cross on a hole's centre reaches this share of its radius each way,
// at least kSmallestCrossArm pixels.
constexpr double kCrossShare = 0.6;
constexpr double kSmallestCrossArm = 4.0;
// Text sizes of the records: on the picture, in picture pixels; the legend
// in screen points.
constexpr int kLabelSize = 28;
constexpr int kLegendSize = 12;
constexpr int kLegendLine = 22;
constexpr int kLegendLeft = 8;
constexpr int kLegendTop = 8;
constexpr int kLegendWidth = 440;

struct Colour
{
    long r, g, b;
};
constexpr Colour kHoleColour{0, 230, 0};
constexpr Colour kOtherColour{255, 40, 40};
constexpr Colour kCrossColour{255, 255, 0};
constexpr Colour kLegendColour{255, 255, 0};
constexpr long kFillAlpha = 45;

// The picture as 8-bit grey: colour through its luminance, 16 bits stretched
// from its darkest to its brightest pixel.
cv::Mat greyOf(const cv::Mat& picture)
{
    cv::Mat grey;
    switch (picture.channels()) {
    case 3: cv::cvtColor(picture, grey, cv::COLOR_BGR2GRAY); break;
    case 4: cv::cvtColor(picture, grey, cv::COLOR_BGRA2GRAY); break;
    default: grey = picture; break;
    }
    if (grey.depth() != CV_8U) {
        cv::Mat stretched;
        cv::normalize(grey, stretched, 0, 255, cv::NORM_MINMAX, CV_8U);
        grey = stretched;
    }
    return grey;
}

VorPoint vorPoint(const cv::Point2d& p)
{
    return VorPoint(p.x, p.y);
}

VorOverlay outlineOf(const InspectionMark& mark)
{
    VorPointArray points;
    for (const cv::Point& p : mark.outline)
        points.Append(VorPoint(p.x, p.y));
    VorOverlay overlay;
    overlay.GenPolygon(points);
    const Colour c = mark.round ? kHoleColour : kOtherColour;
    overlay.SetPen(c.r, c.g, c.b, 1);
    overlay.SetBrush(c.r, c.g, c.b, kFillAlpha);
    return overlay;
}

// A cross of two lines: the window draws lines on every layer.
void appendCross(const InspectionMark& mark, QVector<VorOverlay>* records)
{
    const double arm = std::max(kSmallestCrossArm, mark.diameter / 2 * kCrossShare);
    const cv::Point2d c = mark.centre;
    VorOverlay across;
    across.GenLine(vorPoint(c - cv::Point2d(arm, 0)), vorPoint(c + cv::Point2d(arm, 0)));
    VorOverlay down;
    down.GenLine(vorPoint(c - cv::Point2d(0, arm)), vorPoint(c + cv::Point2d(0, arm)));
    for (VorOverlay* line : {&across, &down}) {
        line->SetPen(kCrossColour.r, kCrossColour.g, kCrossColour.b, 1);
        records->append(*line);
    }
}

VorOverlay textAt(double x, double y, const QString& text, int size, const Colour& colour)
{
    VorOverlay overlay;
    const QByteArray bytes = text.toLocal8Bit();
    overlay.GenText(VorPoint(x, y), bytes.constData(), VorFont("", size));
    overlay.SetPen(colour.r, colour.g, colour.b, 1);
    return overlay;
}

} // namespace

InspectionResult inspectPicture(const cv::Mat& picture, const InspectionSettings& settings)
{
    InspectionResult result;
    if (picture.empty())
        return result;
    QElapsedTimer clock;
    clock.start();
    result.pictureSize = picture.size();

    cv::Mat grey = greyOf(picture);
    cv::Mat smooth;
    cv::GaussianBlur(grey, smooth, cv::Size(5, 5), 0);
    cv::Mat dark;
    if (settings.threshold > 0) {
        result.threshold = settings.threshold;
    } else {
        cv::Mat unused;
        result.threshold = int(cv::threshold(smooth, unused, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU) / 2);
    }
    cv::threshold(smooth, dark, result.threshold, 255, cv::THRESH_BINARY_INV);

    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(dark, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_NONE);
    for (const std::vector<cv::Point>& contour : contours) {
        const double area = cv::contourArea(contour);
        if (area < settings.minimumArea)
            continue;
        InspectionMark mark;
        mark.area = area;
        const double perimeter = cv::arcLength(contour, true);
        mark.round = perimeter > 0 && 4 * kPi * area / (perimeter * perimeter) >= settings.minimumRoundness;
        const cv::Moments m = cv::moments(contour);
        mark.centre = cv::Point2d(m.m10 / m.m00, m.m01 / m.m00);
        mark.diameter = 2 * std::sqrt(area / kPi);
        cv::approxPolyDP(contour, mark.outline, kOutlineTolerance, true);
        result.marks.push_back(std::move(mark));
    }
    std::sort(result.marks.begin(), result.marks.end(),
              [](const InspectionMark& a, const InspectionMark& b) { return a.area > b.area; });
    if (int(result.marks.size()) > settings.maximumMarks)
        result.marks.resize(size_t(settings.maximumMarks));
    for (const InspectionMark& mark : result.marks)
        ++(mark.round ? result.holes : result.others);
    result.milliseconds = clock.nsecsElapsed() / 1e6;
    return result;
}

VorOverlayPath outlineOverlays(const InspectionResult& result)
{
    VorOverlayPath path;
    for (const InspectionMark& mark : result.marks)
        path.Append(outlineOf(mark));
    return path;
}

QVector<VorOverlay> pictureRecords(const InspectionResult& result)
{
    QVector<VorOverlay> records;
    for (const InspectionMark& mark : result.marks) {
        if (!mark.round)
            continue;
        appendCross(mark, &records);
        if (mark.diameter >= kLabelledDiameter)
            records.append(textAt(mark.centre.x + mark.diameter / 2 + 6, mark.centre.y - mark.diameter / 2,
                                  QStringLiteral("d %1").arg(mark.diameter, 0, 'f', 1), kLabelSize,
                                  kCrossColour));
    }
    return records;
}

QVector<VorOverlay> legendRecords(const QStringList& lines)
{
    QVector<VorOverlay> records;
    VorOverlay box;
    box.GenRect1(VorPoint(kLegendLeft, kLegendTop),
                 VorPoint(kLegendLeft + kLegendWidth, kLegendTop + kLegendLine * lines.size() + 8));
    box.SetPen(kLegendColour.r, kLegendColour.g, kLegendColour.b, 1);
    records.append(box);
    for (int i = 0; i < lines.size(); ++i)
        records.append(textAt(kLegendLeft + 8, kLegendTop + kLegendLine * (i + 1), lines.at(i), kLegendSize,
                              kLegendColour));
    return records;
}

QVector<VorOverlay> legendRecords(const InspectionResult& result, const QString& source)
{
    return legendRecords({
        QStringLiteral("Hole check: %1, %2 x %3").arg(source).arg(result.pictureSize.width).arg(result.pictureSize.height),
        QStringLiteral("dark below %1; took %2 ms").arg(result.threshold).arg(result.milliseconds, 0, 'f', 1),
        QStringLiteral("green: %1 round holes, + centres").arg(result.holes),
        QStringLiteral("red: %1 other dark marks").arg(result.others),
    });
}

VorOverlayPath frameRecords(const InspectionResult& result)
{
    VorOverlayPath path = outlineOverlays(result);
    for (const VorOverlay& record : pictureRecords(result))
        path.Append(record);
    return path;
}

int showInspection(KESImageWnd* window, const InspectionResult& result, const QString& source,
                   QVector<long>* outlineIds)
{
    int refused = 0;
    // The last result's outlines go by id, so that the operator's regions of
    // interest on the same layer stay.
    for (long id : *outlineIds)
        window->removeShape(id);
    outlineIds->clear();
    window->clearLayer(KESImageWnd::LAYER_IMAGE);
    window->clearLayer(KESImageWnd::LAYER_FORE);

    const QList<long> listed = window->getShapeIDS(KESImageWnd::LAYER_SHAPE);
    const QSet<long> before(listed.begin(), listed.end());
    VorOverlayPath outlines = outlineOverlays(result);
    if (outlines.Length() > 0 && window->displayOverlayPath(outlines, KESImageWnd::LAYER_SHAPE) < 0)
        ++refused;
    for (long id : window->getShapeIDS(KESImageWnd::LAYER_SHAPE))
        if (!before.contains(id))
            outlineIds->append(id);
    for (VorOverlay record : pictureRecords(result))
        if (window->displayOverlay(record, KESImageWnd::LAYER_IMAGE) < 0)
            ++refused;
    for (VorOverlay record : legendRecords(result, source))
        if (window->displayOverlay(record, KESImageWnd::LAYER_FORE) < 0)
            ++refused;
    return refused;
}
