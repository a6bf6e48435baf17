#include "shapeconversion.h"

#include "geometryhelpers.h"
#include "numericguards.h"
#include "odannular.h"
#include "odarc.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odimage.h"
#include "odpoint.h"
#include "odpointlistshape.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odsegmentshape.h"
#include "shapeoperator.h"

#include "IVorOverlay.h"
#include "VorOverlay.h"
#include "VORMV.h"
#include "VorFont.h"
#include "VorImage.h"
#include "VorROI.h"
#include "VorRegion.h"
#include "VorVar.h"

#include <QFont>
#include <QString>

#include <QtGlobal>

#include <cmath>

namespace {

// The smallest side, in whole pixels, of a rectangle that reads back as an
// overlay; a thinner one comes back as an empty rectangle at the origin.
constexpr int kMinimumOverlaySide = 2;
// What a degenerate rectangle is widened by when it reads back as a ROI.
constexpr double kDegenerateRectWidening = 0.01;
// What every read-back output holds before the shape writes it.
constexpr double kUnreadValue = -1.0;
constexpr int kUnreadCount = -1;
// The heaviest weight a font takes.
constexpr int kMaximumFontWeight = 99;
constexpr int kOpaque = 255;
// The colour of a region overlay that brings no brush of its own.
const QColor kDefaultRegionColour(0, 255, 0, 255);

// The flat x0, y0, x1, y1, ... form that the point-list creators take.
QVector<double> flatten(const VorPointArray& points)
{
    QVector<double> values;
    values.reserve(2 * points.Length());
    for (int i = 0; i < points.Length(); ++i) {
        values.append(points[i].x);
        values.append(points[i].y);
    }
    return values;
}

SEARCHLINEDIRECTION direction(int value)
{
    return SEARCHLINEDIRECTION(value);
}

// ---- ROI to shape ----------------------------------------------------------

long drawROIPoint(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint p;
    roi.GetPoint(&p);
    return op.DrawPoint(p.x, p.y, look.crossSize, z, look.pen, look.brush, look.width);
}

long drawROILine(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint a, b;
    roi.GetLine(&a, &b);
    return op.DrawLine(a.x, a.y, b.x, b.y, z, look.pen, look.brush, look.width);
}

long drawROIRectangle(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint a, b;
    roi.GetRect1(&a, &b);
    return op.DrawRect(a.x, a.y, b.x, b.y, z, look.pen, look.brush, look.width);
}

long drawROIRectangle2(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double l1 = 0, l2 = 0, angle = 0;
    roi.GetRect2(&c, &l1, &l2, &angle);
    return op.DrawRect2(c.x, c.y, l1, l2, ConvertAngle(float(angle)), z, look.pen, look.brush, look.width);
}

long drawROIEllipse(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0;
    roi.GetEllipse(&c, &r1, &r2, &angle);
    return op.DrawEllipse(c.x, c.y, r1, r2, ConvertAngle(float(angle)), z, look.pen, look.brush, look.width);
}

long drawROICircle(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r = 0;
    roi.GetCircle(&c, &r);
    return op.DrawCircle(c.x, c.y, r, z, look.pen, look.brush, look.width);
}

long drawROIPolygon(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPointArray points;
    roi.GetPolygon(&points);
    QVector<double> values = flatten(points);
    return op.DrawPolygon(values, z, look.pen, look.brush, look.width);
}

long drawROIAnyLine(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPointArray points;
    roi.GetIrregular(&points);
    QVector<double> values = flatten(points);
    return op.DrawAnyLine(values, z, look.pen, look.brush, look.width);
}

// The torus's sweep changes sign: the annulus holds it the other way round.
long drawROITourse(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0, sweep = 0;
    roi.GetTorus(&c, &r1, &r2, &angle, &sweep);
    return op.DrawAnnular(c.x, c.y, r1, r2, ConvertAngle(float(angle)), -sweep, direction(0), 0, z, look.pen,
                          look.brush, look.width);
}

// An arc's angles are taken as they stand.
long drawROIArc(const VorROI& roi, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r = 0, start = 0, end = 0;
    roi.GetArc(&c, &r, &start, &end);
    return op.DrawArc(c.x, c.y, r, start, end, z, look.pen, look.brush, look.width);
}

// The mask becomes the layer's region in the four channels of the brush.
long drawROIMask(const VorROI& roi, ShapeOperator& op, long, const ShapeLook& look)
{
    VorROI mask = roi;
    VorImage image;
    VORMV::VorROIToBinImage(&image, mask);
    return op.DrawRegion(image, 0, look.brush.red(), look.brush.green(), look.brush.blue(), look.brush.alpha());
}

// ---- overlay to shape ------------------------------------------------------

long drawOverlayPoint(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint p;
    ov.GetPoint(&p);
    return op.DrawPoint(p.x, p.y, look.crossSize, z, look.pen, look.brush, look.width);
}

long drawOverlayLine(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint a, b;
    ov.GetLine(&a, &b);
    return op.DrawLine(a.x, a.y, b.x, b.y, z, look.pen, look.brush, look.width);
}

long drawOverlayArrowLine(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint a, b;
    ov.GetArrowLine(&a, &b);
    return op.DrawArrowLine(a.x, a.y, b.x, b.y, z, look.pen, look.brush, look.width);
}

long drawOverlayRectangle(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint a, b;
    ov.GetRect1(&a, &b);
    return op.DrawRect(a.x, a.y, b.x, b.y, z, look.pen, look.brush, look.width);
}

long drawOverlayRakeRectangle(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint a, b;
    int dir = 0, count = 0;
    ov.GetRakeRect1(&a, &b, &dir, &count);
    return op.DrawRectEx(a.x, a.y, b.x, b.y, direction(dir), count, z, look.pen, look.brush, look.width);
}

long drawOverlayRectangle2(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double l1 = 0, l2 = 0, angle = 0;
    ov.GetRect2(&c, &l1, &l2, &angle);
    return op.DrawRect2(c.x, c.y, l1, l2, ConvertAngle(float(angle)), z, look.pen, look.brush, look.width);
}

long drawOverlayRakeRectangle2(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double l1 = 0, l2 = 0, angle = 0;
    int dir = 0, count = 0;
    ov.GetRakeRect2(&c, &l1, &l2, &angle, &dir, &count);
    return op.DrawRect2Ex(c.x, c.y, l1, l2, ConvertAngle(float(angle)), direction(dir), count, z, look.pen,
                          look.brush, look.width);
}

long drawOverlayEllipse(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0;
    ov.GetEllipse(&c, &r1, &r2, &angle);
    return op.DrawEllipse(c.x, c.y, r1, r2, ConvertAngle(float(angle)), z, look.pen, look.brush, look.width);
}

long drawOverlayCircle(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r = 0;
    ov.GetCircle(&c, &r);
    return op.DrawCircle(c.x, c.y, r, z, look.pen, look.brush, look.width);
}

long drawOverlayPolygon(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPointArray points;
    ov.GetPolygon(&points);
    QVector<double> values = flatten(points);
    return op.DrawPolygon(values, z, look.pen, look.brush, look.width);
}

long drawOverlayAnyLine(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPointArray points;
    ov.GetIrregular(&points);
    QVector<double> values = flatten(points);
    return op.DrawAnyLine(values, z, look.pen, look.brush, look.width);
}

long drawOverlayAnyClosedLine(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPointArray points;
    ov.GetPolyLine(&points);
    QVector<double> values = flatten(points);
    return op.DrawClosedAnyLine(values, z, look.pen, look.brush, look.width);
}

long drawOverlayTourse(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0, sweep = 0;
    ov.GetTorus(&c, &r1, &r2, &angle, &sweep);
    return op.DrawAnnular(c.x, c.y, r1, r2, ConvertAngle(float(angle)), -sweep, direction(0), 0, z, look.pen,
                          look.brush, look.width);
}

long drawOverlaySpokeTourse(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0, sweep = 0;
    int dir = 0, count = 0;
    ov.GetSpokeTorus(&c, &r1, &r2, &angle, &sweep, &dir, &count);
    return op.DrawAnnular(c.x, c.y, r1, r2, ConvertAngle(float(angle)), -sweep, direction(dir), count, z, look.pen,
                          look.brush, look.width);
}

long drawOverlayArc(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint c;
    double r = 0, start = 0, end = 0;
    ov.GetArc(&c, &r, &start, &end);
    return op.DrawArc(c.x, c.y, r, start, end, z, look.pen, look.brush, look.width);
}

// The font is built in a fixed order from the data model's font; the text is
// taken in the local eight-bit encoding. Pen colour only: texts have no brush.
long drawOverlayText(VorOverlay& ov, ShapeOperator& op, long z, const ShapeLook& look)
{
    VorPoint p;
    VorVar text;
    VorFont vorFont;
    if (!ov.GetText(&p, &text, &vorFont))
        return -1;
    QFont font(QString(vorFont.S()), -1, -1, false);
    font.setStrikeOut(vorFont.strikeOut != 0);
    font.setUnderline(vorFont.underline != 0);
    font.setWeight(qBound(0, vorFont.weight, kMaximumFontWeight));
    font.setItalic(vorFont.italic != 0);
    if (vorFont.size > 0)
        font.setPointSize(vorFont.size);
    return op.DrawText(p.x, p.y, QString::fromLocal8Bit(text.S()), font, z, look.pen, look.brush, look.width);
}

// A region does not follow the window's look: its own pen and brush go to the
// operator, and it is coloured by its own brush or else opaque green.
long drawOverlayRegion(VorOverlay& ov, ShapeOperator& op, long, const ShapeLook&)
{
    VorRegion region;
    if (!ov.GetRegion(&region))
        return -1;
    const IVorOverlay* drawing = ov.GetIVorOverlay();
    if (drawing->isRedrawPen()) {
        long r = 0, g = 0, b = 0, width = 0;
        drawing->GetPen(&r, &g, &b, &width);
        op.SetPen(QColor(r & 0xff, g & 0xff, b & 0xff, kOpaque), int(width));
    }
    long r = kDefaultRegionColour.red(), g = kDefaultRegionColour.green();
    long b = kDefaultRegionColour.blue(), a = kDefaultRegionColour.alpha();
    if (drawing->isRedrawBrush()) {
        drawing->GetBrush(&r, &g, &b, &a);
        op.SetBrush(QColor(r & 0xff, g & 0xff, b & 0xff, a & 0xff));
    }
    VorImage image;
    VORMV::VorRegionToBinImage(&image, region);
    return op.DrawRegion(image, 0, r, g, b, a);
}

// ---- shape to ROI ----------------------------------------------------------

bool PointROIConversion(ODShape* shape, VorROI* roi)
{
    double x = kUnreadValue, y = kUnreadValue;
    if (!static_cast<ODPoint*>(shape)->GetParam(&x, &y))
        return false;
    roi->GenPoint(VorPoint(x, y));
    return true;
}

bool LineROIConversion(ODShape* shape, VorROI* roi)
{
    double x1 = kUnreadValue, y1 = kUnreadValue, x2 = kUnreadValue, y2 = kUnreadValue;
    if (!static_cast<ODSegmentShape*>(shape)->GetParam(&x1, &y1, &x2, &y2))
        return false;
    roi->GenLine(VorPoint(x1, y1), VorPoint(x2, y2));
    return true;
}

// The corners of a shape of the plain rectangle's mode: a rectangle, or a
// placed picture, which shares the mode and has no search lines.
bool readRect1(ODShape* shape, double* x1, double* y1, double* x2, double* y2, int* dir, int* count)
{
    if (auto* picture = dynamic_cast<ODImage*>(shape))
        return picture->GetParam(x1, y1, x2, y2);
    return static_cast<ODRect1*>(shape)->GetParam(x1, y1, x2, y2, dir, count);
}

// A degenerate rectangle is made a hair wide rather than refused.
bool RectROIConversion(ODShape* shape, VorROI* roi)
{
    double x1 = kUnreadValue, y1 = kUnreadValue, x2 = kUnreadValue, y2 = kUnreadValue;
    int dir = kUnreadCount, count = kUnreadCount;
    if (!readRect1(shape, &x1, &y1, &x2, &y2, &dir, &count))
        return false;
    if (x1 == x2)
        x2 = x1 + kDegenerateRectWidening;
    if (y1 == y2)
        y2 = y1 + kDegenerateRectWidening;
    roi->GenRect1(VorPoint(x1, y1), VorPoint(x2, y2));
    return true;
}

bool Rect2ROIConversion(ODShape* shape, VorROI* roi)
{
    double x = kUnreadValue, y = kUnreadValue, l1 = kUnreadValue, l2 = kUnreadValue, angle = kUnreadValue;
    int dir = kUnreadCount, count = kUnreadCount;
    if (!static_cast<ODRect2*>(shape)->GetParam(&x, &y, &l1, &l2, &angle, &dir, &count))
        return false;
    roi->GenRect2(VorPoint(x, y), l1, l2, angle);
    return true;
}

bool EllipseROIConversion(ODShape* shape, VorROI* roi)
{
    double x = kUnreadValue, y = kUnreadValue, r1 = kUnreadValue, r2 = kUnreadValue, angle = kUnreadValue;
    if (!static_cast<ODEllipse*>(shape)->GetParam(&x, &y, &r1, &r2, &angle))
        return false;
    roi->GenEllipse(VorPoint(x, y), r1, r2, angle);
    return true;
}

bool CircleROIConversion(ODShape* shape, VorROI* roi)
{
    double x = kUnreadValue, y = kUnreadValue, r = kUnreadValue;
    if (!static_cast<ODCircle*>(shape)->GetParam(&x, &y, &r))
        return false;
    roi->GenCircle(VorPoint(x, y), r);
    return true;
}

bool PolygonROIConversion(ODShape* shape, VorROI* roi)
{
    VorPointArray points;
    if (!static_cast<ODPointListShape*>(shape)->GetParam(&points))
        return false;
    roi->GenPolygon(points);
    return true;
}

// A free line is read as the polygon is: its flat coordinates in pairs.
bool IrregularROIConversion(ODShape* shape, VorROI* roi)
{
    VorPointArray points;
    if (!static_cast<ODPointListShape*>(shape)->GetParam(&points))
        return false;
    roi->GenIrregular(points);
    return true;
}

bool ToursROIConversion(ODShape* shape, VorROI* roi)
{
    double x = kUnreadValue, y = kUnreadValue, r1 = kUnreadValue, r2 = kUnreadValue;
    double angle = kUnreadValue, sweep = kUnreadValue;
    int dir = kUnreadCount, count = kUnreadCount;
    if (!static_cast<ODAnnular*>(shape)->GetParam(&x, &y, &r1, &r2, &angle, &sweep, &dir, &count))
        return false;
    roi->GenTorus(VorPoint(x, y), r1, r2, angle, sweep);
    return true;
}

bool ArcROIConversion(ODShape* shape, VorROI* roi)
{
    double x = kUnreadValue, y = kUnreadValue, r = kUnreadValue, start = kUnreadValue, end = kUnreadValue;
    if (!static_cast<ODARC*>(shape)->GetParam(&x, &y, &r, &start, &end))
        return false;
    roi->GenArc(VorPoint(x, y), r, start, end);
    return true;
}

// ---- shape to overlay ------------------------------------------------------

// The shape's colours go with every overlay form; the pen's alpha does not,
// and the width is truncated.
void copyColours(ODShape* shape, VorOverlay* overlay)
{
    const QColor pen = shape->GetPenColor();
    const QColor brush = shape->GetBrushColor();
    overlay->SetPen(pen.red(), pen.green(), pen.blue(), long(TruncateToInt(shape->GetLineWidth())));
    overlay->SetBrush(brush.red(), brush.green(), brush.blue(), brush.alpha());
}

// The empty rectangle at the origin that too thin a rectangle reads back as.
void genEmptyRect(VorOverlay* overlay)
{
    overlay->GenRect1(VorPoint(0, 0), VorPoint(0, 0));
}

bool tooThin(double side)
{
    return std::fabs(side) < kMinimumOverlaySide;
}

bool PointOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    double x = kUnreadValue, y = kUnreadValue;
    if (!static_cast<ODPoint*>(shape)->GetParam(&x, &y))
        return false;
    copyColours(shape, overlay);
    overlay->GenPoint(VorPoint(x, y));
    return true;
}

bool segmentToOverlay(ODShape* shape, VorOverlay* overlay, bool arrow)
{
    double x1 = kUnreadValue, y1 = kUnreadValue, x2 = kUnreadValue, y2 = kUnreadValue;
    if (!static_cast<ODSegmentShape*>(shape)->GetParam(&x1, &y1, &x2, &y2))
        return false;
    copyColours(shape, overlay);
    if (arrow)
        overlay->GenArrowLine(VorPoint(x1, y1), VorPoint(x2, y2));
    else
        overlay->GenLine(VorPoint(x1, y1), VorPoint(x2, y2));
    return true;
}

bool LineOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    return segmentToOverlay(shape, overlay, false);
}

bool ArrowLineOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    return segmentToOverlay(shape, overlay, true);
}

// The sides are measured in whole pixels, truncated toward zero.
bool RectOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    double x1 = kUnreadValue, y1 = kUnreadValue, x2 = kUnreadValue, y2 = kUnreadValue;
    int dir = kUnreadCount, count = kUnreadCount;
    if (!readRect1(shape, &x1, &y1, &x2, &y2, &dir, &count))
        return false;
    copyColours(shape, overlay);
    const int dx = TruncateToInt(x2 - x1);
    const int dy = TruncateToInt(y2 - y1);
    if (tooThin(dx) || tooThin(dy))
        genEmptyRect(overlay);
    else if (shape->GetDrawMode() == DM_RAKERECT1)
        overlay->GenRakeRect1(VorPoint(x1, y1), VorPoint(x2, y2), dir, count);
    else
        overlay->GenRect1(VorPoint(x1, y1), VorPoint(x2, y2));
    return true;
}

// Too short a side turns the overlay into the plain rectangle's empty form.
bool Rect2OverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    double x = kUnreadValue, y = kUnreadValue, l1 = kUnreadValue, l2 = kUnreadValue, angle = kUnreadValue;
    int dir = kUnreadCount, count = kUnreadCount;
    if (!static_cast<ODRect2*>(shape)->GetParam(&x, &y, &l1, &l2, &angle, &dir, &count))
        return false;
    copyColours(shape, overlay);
    if (tooThin(l1) || tooThin(l2))
        genEmptyRect(overlay);
    else if (shape->GetDrawMode() == DM_RAKERECT2)
        overlay->GenRakeRect2(VorPoint(x, y), l1, l2, angle, dir, count);
    else
        overlay->GenRect2(VorPoint(x, y), l1, l2, angle);
    return true;
}

bool EllipseOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    double x = kUnreadValue, y = kUnreadValue, r1 = kUnreadValue, r2 = kUnreadValue, angle = kUnreadValue;
    if (!static_cast<ODEllipse*>(shape)->GetParam(&x, &y, &r1, &r2, &angle))
        return false;
    copyColours(shape, overlay);
    overlay->GenEllipse(VorPoint(x, y), r1, r2, angle);
    return true;
}

bool CircleOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    double x = kUnreadValue, y = kUnreadValue, r = kUnreadValue;
    if (!static_cast<ODCircle*>(shape)->GetParam(&x, &y, &r))
        return false;
    copyColours(shape, overlay);
    overlay->GenCircle(VorPoint(x, y), r);
    return true;
}

bool pointListToOverlay(ODShape* shape, VorOverlay* overlay, void (VorOverlay::*gen)(const VorPointArray&))
{
    VorPointArray points;
    if (!static_cast<ODPointListShape*>(shape)->GetParam(&points))
        return false;
    copyColours(shape, overlay);
    (overlay->*gen)(points);
    return true;
}

bool PolygonOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    return pointListToOverlay(shape, overlay, &VorOverlay::GenPolygon);
}

bool AnylineOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    return pointListToOverlay(shape, overlay, &VorOverlay::GenIrregular);
}

bool PolyLineOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    return pointListToOverlay(shape, overlay, &VorOverlay::GenPolyLine);
}

// An annulus with its search-line flag comes back in the spoke form.
bool ToursOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    auto* annulus = static_cast<ODAnnular*>(shape);
    double x = kUnreadValue, y = kUnreadValue, r1 = kUnreadValue, r2 = kUnreadValue;
    double angle = kUnreadValue, sweep = kUnreadValue;
    int dir = kUnreadCount, count = kUnreadCount;
    if (!annulus->GetParam(&x, &y, &r1, &r2, &angle, &sweep, &dir, &count))
        return false;
    copyColours(shape, overlay);
    if (annulus->HaveSearchLine())
        overlay->GenSpokeTorus(VorPoint(x, y), r1, r2, angle, sweep, dir, count);
    else
        overlay->GenTorus(VorPoint(x, y), r1, r2, angle, sweep);
    return true;
}

bool ArcOverlayConversion(ODShape* shape, VorOverlay* overlay)
{
    double x = kUnreadValue, y = kUnreadValue, r = kUnreadValue, start = kUnreadValue, end = kUnreadValue;
    if (!static_cast<ODARC*>(shape)->GetParam(&x, &y, &r, &start, &end))
        return false;
    copyColours(shape, overlay);
    overlay->GenArc(VorPoint(x, y), r, start, end);
    return true;
}

int channel(long value)
{
    return int(qBound(0L, value, 255L));
}

} // namespace

const QVector<ShapeConversion::ROIRow>& ShapeConversion::roiRows()
{
    static const QVector<ROIRow> rows = {
        {VorROI::ROI_RECT1, DM_RECT1, &drawROIRectangle, &RectROIConversion},
        {VorROI::ROI_CIRCLE, DM_CIRCLE, &drawROICircle, &CircleROIConversion},
        {VorROI::ROI_TORUS, DM_ANNULAR, &drawROITourse, &ToursROIConversion},
        {VorROI::ROI_POLYGON, DM_POLYGON, &drawROIPolygon, &PolygonROIConversion},
        {VorROI::ROI_IRREGULAR, DM_ANYLINE, &drawROIAnyLine, &IrregularROIConversion},
        {VorROI::ROI_RECT2, DM_RECT2, &drawROIRectangle2, &Rect2ROIConversion},
        {VorROI::ROI_LINE, DM_LINE, &drawROILine, &LineROIConversion},
        {VorROI::ROI_ELLIPSE, DM_ELLIPSE, &drawROIEllipse, &EllipseROIConversion},
        {VorROI::ROI_ARC, DM_ARC, &drawROIArc, &ArcROIConversion},
        {VorROI::ROI_POINT, DM_POINT, &drawROIPoint, &PointROIConversion},
        // Read back from the copy the layer keeps, not from the region.
        {VorROI::ROI_MASK, DM_MASK, &drawROIMask, nullptr},
    };
    return rows;
}

const QVector<ShapeConversion::OverlayRow>& ShapeConversion::overlayRows()
{
    static const QVector<OverlayRow> rows = {
        {VorOverlay::OV_POINT, DM_POINT, DM_POINT, &drawOverlayPoint, &PointOverlayConversion},
        {VorOverlay::OV_ARROWLINE, DM_ARROWLINE, DM_ARROWLINE, &drawOverlayArrowLine, &ArrowLineOverlayConversion},
        {VorOverlay::OV_LINE, DM_LINE, DM_LINE, &drawOverlayLine, &LineOverlayConversion},
        {VorOverlay::OV_RECT1, DM_RECT1, DM_RECT1, &drawOverlayRectangle, &RectOverlayConversion},
        {VorOverlay::OV_RAKERECT1, DM_RECT1, DM_RAKERECT1, &drawOverlayRakeRectangle, &RectOverlayConversion},
        {VorOverlay::OV_CIRCLE, DM_CIRCLE, DM_CIRCLE, &drawOverlayCircle, &CircleOverlayConversion},
        {VorOverlay::OV_ELLIPSE, DM_ELLIPSE, DM_ELLIPSE, &drawOverlayEllipse, &EllipseOverlayConversion},
        {VorOverlay::OV_POLYGON, DM_POLYGON, DM_POLYGON, &drawOverlayPolygon, &PolygonOverlayConversion},
        {VorOverlay::OV_POLYLINE, DM_ANYCLOSELINE, DM_ANYCLOSELINE, &drawOverlayAnyClosedLine, &PolyLineOverlayConversion},
        {VorOverlay::OV_RECT2, DM_RECT2, DM_RECT2, &drawOverlayRectangle2, &Rect2OverlayConversion},
        {VorOverlay::OV_RAKERECT2, DM_RECT2, DM_RAKERECT2, &drawOverlayRakeRectangle2, &Rect2OverlayConversion},
        {VorOverlay::OV_TORUS, DM_ANNULAR, DM_ANNULAR, &drawOverlayTourse, &ToursOverlayConversion},
        // Read back by the torus row, which picks the spoke form by the shape's flag.
        {VorOverlay::OV_SPOKETORUS, DM_ANNULAR, DM_ANNULAR, &drawOverlaySpokeTourse, nullptr},
        {VorOverlay::OV_ARC, DM_ARC, DM_ARC, &drawOverlayArc, &ArcOverlayConversion},
        {VorOverlay::OV_IRREGULAR, DM_ANYLINE, DM_ANYLINE, &drawOverlayAnyLine, &AnylineOverlayConversion},
        // Without a draw mode: told by their codes, kept by the layer beside
        // its shapes, the text read back by the layer, the region never.
        {VorOverlay::OV_TEXT, s_byCode, s_byCode, &drawOverlayText, nullptr},
        {VorOverlay::OV_REGION, s_byCode, s_byCode, &drawOverlayRegion, nullptr},
    };
    return rows;
}

const ShapeConversion::ROIRow* ShapeConversion::roiRowOfMode(DrawMode mode)
{
    for (const ROIRow& row : roiRows()) {
        if (row.mode == mode)
            return &row;
    }
    return nullptr;
}

bool ShapeConversion::hasOverlayRoutine(DrawMode mode)
{
    if (mode == s_byCode)
        return false;
    for (const OverlayRow& row : overlayRows()) {
        if (row.mode == mode)
            return true;
    }
    return false;
}

const ShapeConversion::OverlayRow* ShapeConversion::overlayRow(DrawMode mode, int code)
{
    for (const OverlayRow& row : overlayRows()) {
        if (row.mode == mode && row.code == code)
            return &row;
    }
    return nullptr;
}

const ShapeConversion::OverlayRow* ShapeConversion::overlayRowByCode(int code)
{
    return overlayRow(s_byCode, code);
}

bool ShapeConversion::toROI(ODShape* shape, VorROI* roi)
{
    if (!shape || !roi)
        return false;
    const ROIRow* row = roiRowOfMode(shape->GetDrawMode());
    return row && row->read && row->read(shape, roi);
}

bool ShapeConversion::toOverlay(ODShape* shape, VorOverlay* overlay)
{
    if (!shape || !overlay)
        return false;
    for (const OverlayRow& row : overlayRows()) {
        if (row.shapeMode == shape->GetDrawMode() && row.read)
            return row.read(shape, overlay);
    }
    return false;
}

ShapeLook ShapeConversion::overlayLook(const ShapeLook& windowLook, VorOverlay& overlay)
{
    ShapeLook look = windowLook;
    const IVorOverlay* drawing = overlay.GetIVorOverlay();
    if (drawing->isRedrawPen()) {
        long r = 0, g = 0, b = 0, width = 0;
        drawing->GetPen(&r, &g, &b, &width);
        look.pen = QColor(channel(r), channel(g), channel(b), windowLook.pen.alpha());
        look.width = int(width);
    }
    if (drawing->isRedrawBrush()) {
        long r = 0, g = 0, b = 0, a = 0;
        drawing->GetBrush(&r, &g, &b, &a);
        look.brush = QColor(channel(r), channel(g), channel(b), channel(a));
    }
    return look;
}
