#include "geometryhelpers.h"

#include "numericguards.h"

#include <QImage>

#include <climits>
#include <cmath>

namespace {

// The pi of the shapes: part of their results, not an approximation to fix.
constexpr float kPi = 3.141592f;

} // namespace

float ConvertAngle(float angle)
{
    if (!std::isfinite(angle))
        return angle;
    // Beyond the range of int the whole turns cannot be counted by the cast;
    // there fmod gives the remainder exactly.
    const bool fitsInt = std::fabs(angle) < 2147483520.0f;
    if (angle < 0.0f) {
        if (angle < -360.0f)
            angle = fitsInt ? angle - float((int(angle) / 360) * 360) : std::fmod(angle, 360.0f);
        angle += 360.0f;
    } else if (angle > 360.0f) {
        angle = fitsInt ? angle - float((int(angle) / 360) * 360) : std::fmod(angle, 360.0f);
    }
    return angle;
}

float Distance(QPointF a, QPointF b)
{
    return float(std::sqrt(std::pow(a.x() - b.x(), 2) + std::pow(a.y() - b.y(), 2)));
}

float CalculateAngle(QPointF a, QPointF b)
{
    const float d = Distance(a, b);
    // Everything within one pixel of the same height is level; this test comes
    // first, so two equal points never reach the division.
    const int dy = TruncateToInt(a.y() - b.y());
    if (dy == 0)
        return a.x() >= b.x() ? 0.0f : 180.0f;

    if (dy > 0) {
        // a lies below b.
        const float t = float(std::asin((a.y() - b.y()) / double(d)));
        if (a.x() > b.x())
            return 360.0f - (180.0f * t) / kPi;
        if (a.x() == b.x())
            return 270.0f;
        return 180.0f + (180.0f * t) / kPi;
    }

    // a lies above b.
    const float t = float(std::asin((b.y() - a.y()) / double(d)));
    if (a.x() > b.x())
        return (180.0f * t) / kPi;
    if (a.x() == b.x())
        return 90.0f;
    return 180.0f - (180.0f * t) / kPi;
}

void AdjustRect(QRectF& rect)
{
    qreal x1, y1, x2, y2;
    rect.getCoords(&x1, &y1, &x2, &y2);
    if (x1 > x2)
        std::swap(x1, x2);
    if (y1 > y2)
        std::swap(y1, y2);
    rect.setCoords(x1, y1, x2, y2);
}

QPointF RotatePoint(QPointF point, QPointF center, float angle)
{
    if (std::fabs(double(angle)) <= 0.000001)
        return point;

    const QPointF p = point - center;
    const float r = angle / 180.0f * kPi;
    const float c = std::cos(r);
    const float s = std::sin(r);
    return QPointF(p.x() * c - p.y() * s, p.x() * s + p.y() * c) + center;
}

bool IsValidQImage(QImage* image)
{
    if (!image)
        return false;
    return image->width() != 0 && image->height() != 0;
}

int convertToButtonIndex(long flag)
{
    // Exact comparison: a word with more than one bit set matches nothing. This
    // numbering is older than the tool bar's for the last two bits.
    switch (flag) {
    case 0x80000000L: return 0;
    case 0x40000000L: return 1;
    case 0x20000000L: return 2;
    case 0x10000000L: return 3;
    case 0x08000000L: return 4;
    case 0x04000000L: return 6;
    case 0x00040000L: return 7;
    case 0x02000000L: return 10;
    case 0x01000000L: return 8;
    case 0x00800000L: return 5;
    case 0x00400000L: return 11;
    case 0x00200000L: return 12;
    case 0x00100000L: return 13;
    case 0x00020000L: return 9;
    default: return kUnknownButtonIndex;
    }
}
