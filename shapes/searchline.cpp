#include "searchline.h"

#include "geometryhelpers.h"
#include "numericguards.h"

#include <cmath>

namespace SearchLine {

QPainterPath GenSearchlines(const QRectF& rect, int direction, int count)
{
    QPainterPath result;
    if (count < 2 || direction < SL_TOP_TO_BOTTOM || direction > SL_RIGHT_TO_LEFT)
        return result;
    count = qMin(count, kMaximumLines);
    QRectF r = rect.normalized();
    AdjustRect(r);
    const float stepX = float(r.width()) / float(count - 1);
    const float stepY = float(r.height()) / float(count - 1);
    for (int i = 0; i < count; ++i) {
        const double x = r.left() + double(stepX * float(i));
        const double y = r.top() + double(stepY * float(i));
        QLine line;
        switch (direction) {
        case SL_TOP_TO_BOTTOM:
            line = QLine(TruncateToInt(x), TruncateToInt(r.top()), TruncateToInt(x), TruncateToInt(r.bottom()));
            break;
        case SL_BOTTOM_TO_TOP:
            line = QLine(TruncateToInt(x), TruncateToInt(r.bottom()), TruncateToInt(x), TruncateToInt(r.top()));
            break;
        case SL_LEFT_TO_RIGHT:
            line = QLine(TruncateToInt(r.left()), TruncateToInt(y), TruncateToInt(r.right()), TruncateToInt(y));
            break;
        default:
            line = QLine(TruncateToInt(r.right()), TruncateToInt(y), TruncateToInt(r.left()), TruncateToInt(y));
            break;
        }
        result.addPath(GenSearchlineItem(line));
    }
    return result;
}

QPainterPath GenSearchlineItem(QLine line)
{
    const QPointF p1 = line.p1();
    const QPointF p2 = line.p2();
    const float length = Distance(p1, p2);
    const int head = TruncateToInt(length / 15.0f);
    float angle = std::acos(float(line.dx()) / length);
    if (line.y1() <= line.y2() && line.x1() >= line.x2())
        angle = -angle;
    const double h = double(head);
    QPointF a1 = p2;
    QPointF a2 = p2;
    // Without a head both wings lie on the end point; a line of no length has
    // no angle at all.
    if (head != 0) {
        a1 = QPointF(p2.x() - h * std::cos(angle + 0.25), p2.y() + h * std::sin(angle + 0.25));
        a2 = QPointF(p2.x() - h * std::cos(angle - 0.25), p2.y() + h * std::sin(angle - 0.25));
    }
    QPainterPath path;
    path.moveTo(a1);
    path.lineTo(p2);
    path.lineTo(a2);
    path.moveTo(p1);
    path.lineTo(p2);
    return path;
}

} // namespace SearchLine
