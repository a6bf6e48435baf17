#include "staticshape.h"

#include "geometryhelpers.h"
#include "numericguards.h"

#include "VorFont.h"
#include "VorOverlay.h"
#include "VorPoint.h"
#include "VorPointArray.h"
#include "VorROI.h"
#include "VorVar.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QRegExp>
#include <QTextCodec>

#include <cmath>
#include <string>

namespace {

constexpr float kPi = 3.141592f;
constexpr float kHalfTurnDegrees = 180.0f;
// The length of an arrow's barbs along the line, in pixels.
constexpr double kArrowLength = 7.0;
constexpr int kMaximumFontWeight = 99;
constexpr int kFarOff = 1 << 30;

QPointF toQPoint(const VorPoint& p)
{
    return QPointF(p.x, p.y);
}

void addCross(QPainterPath& path, const VorPoint& p, int halfSize)
{
    const double s = halfSize;
    path.moveTo(p.x - s, p.y);
    path.lineTo(p.x + s, p.y);
    path.moveTo(p.x, p.y - s);
    path.lineTo(p.x, p.y + s);
}

void addRect1(QPainterPath& path, const VorPoint& a, const VorPoint& b)
{
    QRectF rect;
    rect.setLeft(a.x);
    rect.setTop(a.y);
    rect.setRight(b.x);
    rect.setBottom(b.y);
    path.addRect(rect);
}

void addPolygon(QPainterPath& path, const VorPointArray& points)
{
    QPolygonF polygon;
    for (int i = 0; i < points.Length(); ++i)
        polygon.append(toQPoint(points[i]));
    // Closed by the first point once more, when there is one.
    if (!polygon.isEmpty())
        polygon.append(polygon.first());
    path.addPolygon(polygon);
}

void addIrregular(QPainterPath& path, const VorPointArray& points)
{
    for (int i = 0; i < points.Length(); ++i) {
        if (i == 0)
            path.moveTo(toQPoint(points[i]));
        else
            path.lineTo(toQPoint(points[i]));
    }
}

void addTorus(QPainterPath& path, const VorPoint& c, double r1, double r2, double angle, double sweep)
{
    const QRectF outer = QRectF(c.x - r1, c.y - r1, 2 * r1, 2 * r1).normalized();
    const QRectF inner = QRectF(c.x - r2, c.y - r2, 2 * r2, 2 * r2).normalized();
    const QPointF p1 = StaticShape::GetPoint(c.x, c.y, float(r1), float(angle));
    const QPointF p2 = StaticShape::GetPoint(c.x, c.y, float(r2), float(angle + sweep));
    // The sweep's sign is used as given: a static torus is not mirrored.
    path.arcMoveTo(outer, ConvertAngle(float(angle)));
    path.arcTo(outer, ConvertAngle(float(angle)), sweep);
    path.lineTo(p2);
    path.arcTo(inner, ConvertAngle(float(angle + sweep)), -sweep);
    path.lineTo(p1);
}

void addArc(QPainterPath& path, const VorPoint& c, double r, double start, double end)
{
    // Drawn from the centre, so a line runs out to the arc; the end angle is
    // taken as the sweep length.
    path.moveTo(toQPoint(c));
    path.arcTo(QRectF(c.x - r, c.y - r, 2 * r, 2 * r), start, end);
}

// Barb ends land on whole pixels: each offset is truncated, then the sum.
void addArrow(QPainterPath& path, const VorPoint& a, const VorPoint& b)
{
    path.moveTo(toQPoint(a));
    path.lineTo(toQPoint(b));
    const double t = std::atan2(b.y - a.y, b.x - a.x);
    const double c = std::cos(t);
    const double s = std::sin(t);
    const double L = kArrowLength;
    const QPointF first(TruncateToInt(b.x + std::trunc(-L / 2 * s - L * c)),
                        TruncateToInt(b.y + std::trunc(L / 2 * c - L * s)));
    const QPointF second(TruncateToInt(b.x + std::trunc(L / 2 * s - L * c)),
                         TruncateToInt(b.y - std::trunc(L / 2 * c + L * s)));
    path.moveTo(first);
    path.lineTo(toQPoint(b));
    path.lineTo(second);
}

QString decodeText(const char* bytes, StaticShape::TextDecoding decoding)
{
    if (decoding == StaticShape::TextLocal8Bit)
        return QString::fromLocal8Bit(bytes);
    QTextCodec* codec = QTextCodec::codecForName("GB18030");
    QString text = codec ? codec->toUnicode(bytes) : QString::fromLocal8Bit(bytes);
    // The image layer drops line breaks, and with them every lower-case l:
    // hosts see "hello" shown as "heo" there and rely on nothing else.
    text.remove(QRegExp("[\n\rl]", Qt::CaseSensitive, QRegExp::RegExp));
    return text;
}

void addText(StaticShape& shape, VorOverlay& overlay, StaticShape::TextDecoding decoding)
{
    VorPoint p;
    p.x = 0;
    p.y = 0;
    VorVar var;
    VorFont font;
    overlay.GetText(&p, &var, &font);
    shape.font.setFamily(QString::fromStdString(std::string(font.S())));
    shape.font.setWeight(qBound(0, font.weight, kMaximumFontWeight));
    shape.font.setItalic(font.italic != 0);
    shape.font.setStrikeOut(font.strikeOut != 0);
    // A size the toolkit cannot take leaves the font's own.
    if (font.size > 0)
        shape.font.setPointSize(font.size);
    const QString text = decodeText(var.S(), decoding);
    const QFontMetrics metrics(shape.font);
    // A corner far beyond any screen is held where the box's far edges still
    // fit an int.
    const int x = qBound(-kFarOff, TruncateToInt(p.x), kFarOff);
    const int y = qBound(-kFarOff, TruncateToInt(p.y), kFarOff);
    shape.textRect = QRect(x, y, metrics.width(text), metrics.height());
    shape.text = text;
    shape.path.addText(p.x, p.y, shape.font, text);
    shape.type = StaticShape::PathText;
}

// The path of each kind that a ROI and an overlay share; both data types read
// these kinds with the same calls. False for a kind without a static form.
template <typename Source>
bool addGeometry(StaticShape& shape, Source& source, int kind, int crossSize)
{
    VorPoint a, b, c;
    double l1 = 0, l2 = 0, angle = 0, r = 0, sweep = 0;
    VorPointArray points;
    switch (kind) {
    case VorROI::ROI_RECT1:
        source.GetRect1(&a, &b);
        addRect1(shape.path, a, b);
        return true;
    case VorROI::ROI_RECT2:
        // Stored upright; the painter turns it about its centre.
        source.GetRect2(&c, &l1, &l2, &angle);
        shape.path.addRect(QRectF(c.x - l1 / 2, c.y - l2 / 2, l1, l2));
        shape.point = toQPoint(c);
        shape.rotation = -angle;
        return true;
    case VorROI::ROI_ELLIPSE:
        source.GetEllipse(&c, &l1, &l2, &angle);
        shape.path.addEllipse(toQPoint(c), l1, l2);
        shape.rotation = -angle;
        return true;
    case VorROI::ROI_CIRCLE:
        source.GetCircle(&c, &r);
        shape.path.addEllipse(toQPoint(c), r, r);
        return true;
    case VorROI::ROI_POLYGON:
        source.GetPolygon(&points);
        addPolygon(shape.path, points);
        return true;
    case VorROI::ROI_IRREGULAR:
        source.GetIrregular(&points);
        addIrregular(shape.path, points);
        return true;
    case VorROI::ROI_LINE:
        source.GetLine(&a, &b);
        shape.path.moveTo(toQPoint(a));
        shape.path.lineTo(toQPoint(b));
        return true;
    case VorROI::ROI_POINT:
        source.GetPoint(&a);
        addCross(shape.path, a, crossSize);
        return true;
    case VorROI::ROI_TORUS:
        source.GetTorus(&c, &l1, &l2, &angle, &sweep);
        addTorus(shape.path, c, l1, l2, angle, sweep);
        return true;
    case VorROI::ROI_ARC:
        source.GetArc(&c, &r, &angle, &sweep);
        addArc(shape.path, c, r, angle, sweep);
        return true;
    default:
        return false;
    }
}

} // namespace

QPointF StaticShape::GetPoint(double cx, double cy, float r, float angle)
{
    const float a = ConvertAngle(angle);
    const float radians = a * kPi / kHalfTurnDegrees;
    return QPointF(cx + double(r * std::cos(radians)), cy - double(r * std::sin(radians)));
}

StaticShape StaticShape::fromROI(VorROI& roi, int crossSize)
{
    StaticShape shape;
    shape.type = roi.ROIType();
    shape.valid = addGeometry(shape, roi, shape.type, crossSize);
    return shape;
}

int StaticShape::pathKindOfOverlay(int overlayType)
{
    switch (overlayType) {
    case VorOverlay::OV_RECT1: return VorROI::ROI_RECT1;
    case VorOverlay::OV_RECT2: return VorROI::ROI_RECT2;
    case VorOverlay::OV_ELLIPSE: return VorROI::ROI_ELLIPSE;
    case VorOverlay::OV_CIRCLE: return VorROI::ROI_CIRCLE;
    case VorOverlay::OV_POLYGON: return VorROI::ROI_POLYGON;
    case VorOverlay::OV_IRREGULAR: return VorROI::ROI_IRREGULAR;
    case VorOverlay::OV_LINE: return VorROI::ROI_LINE;
    case VorOverlay::OV_POINT: return VorROI::ROI_POINT;
    case VorOverlay::OV_TORUS: return VorROI::ROI_TORUS;
    case VorOverlay::OV_ARROWLINE: return PathArrow;
    case VorOverlay::OV_ARC: return VorROI::ROI_ARC;
    case VorOverlay::OV_TEXT: return PathText;
    default: return PathNone;
    }
}

StaticShape StaticShape::fromOverlay(VorOverlay& overlay, int crossSize, TextDecoding decoding)
{
    StaticShape shape;
    const int kind = pathKindOfOverlay(overlay.OverlayType());
    if (kind == PathArrow) {
        VorPoint a, b;
        overlay.GetArrowLine(&a, &b);
        addArrow(shape.path, a, b);
        // An arrow keeps the code of a line.
        shape.type = VorROI::ROI_LINE;
        shape.valid = true;
    } else if (kind == PathText) {
        addText(shape, overlay, decoding);
        shape.valid = true;
    } else {
        shape.valid = addGeometry(shape, overlay, kind, crossSize);
        if (shape.valid)
            shape.type = kind;
    }
    return shape;
}

void StaticShape::paintTurned(QPainter* painter, const QPen& pen, const QPainterPath& path, double rotation,
                              TurnedKind kind)
{
    painter->save();
    painter->setPen(pen);
    const QRectF bounds = path.boundingRect();
    const double w = bounds.width();
    const double h = bounds.height();
    const QRect box(TruncateToInt(-w / 2), TruncateToInt(-h / 2), TruncateToInt(w), TruncateToInt(h));
    painter->translate(TruncateToInt(bounds.x() + w / 2), TruncateToInt(bounds.y() + h / 2));
    painter->rotate(rotation);
    if (kind == TurnedEllipse)
        painter->drawEllipse(box);
    else
        painter->drawRect(box);
    painter->restore();
}
