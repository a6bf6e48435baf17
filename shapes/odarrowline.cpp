#include "odarrowline.h"

#include "numericguards.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPen>

#include <cmath>

namespace {

// The length of the head along the line, in scene units; it reaches half of
// it to each side.
constexpr double kHeadSize = 7.0;
// The width of the stroke that the body test uses, in scene units.
constexpr int kBodyStrokeWidth = 15;

} // namespace

ODArrowLine::ODArrowLine(QGraphicsScene* scene)
    : ODSegmentShape(scene, DM_ARROWLINE)
    , m_arrowItem(nullptr)
{
    m_arrowItem = own(m_scene->addPath(QPainterPath()));
    adoptCrossHandleItem();
}

ODArrowLine::ODArrowLine(QGraphicsScene* scene, QPointF point)
    : ODArrowLine(scene)
{
    startAt(point);
}

ODArrowLine::~ODArrowLine()
{
    deleteItems({m_arrowItem});
    m_arrowItem = nullptr;
}

QPainterPath ODArrowLine::arrowPath(const QPointF& start, const QPointF& tip)
{
    const double x2 = tip.x();
    const double y2 = tip.y();
    // A line of no length has the angle 0: its head points right.
    const double angle = std::atan2(y2 - start.y(), x2 - start.x());
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    // The offsets are truncated before they are added to the tip, and the sums
    // again: the wings sit on whole offsets from the tip.
    const QPointF firstWing(TruncateToInt(x2 + TruncateToInt(kHeadSize / -2 * s - kHeadSize * c)),
                            TruncateToInt(y2 + TruncateToInt(kHeadSize / 2 * c - kHeadSize * s)));
    const QPointF secondWing(TruncateToInt(x2 + TruncateToInt(kHeadSize / 2 * s - kHeadSize * c)),
                             TruncateToInt(y2 - TruncateToInt(kHeadSize / 2 * c + kHeadSize * s)));
    QPainterPath path;
    path.moveTo(start);
    path.lineTo(tip);
    path.moveTo(firstWing);
    path.lineTo(tip);
    path.lineTo(secondWing);
    return path;
}

void ODArrowLine::ShowShape()
{
    UpdateCurData();
    m_arrowItem->setPen(currentPen());
    m_arrowItem->setPath(arrowPath(m_startPoint, m_endPoint));
    m_arrowItem->setBrush(solidBrush());
}

void ODArrowLine::HideShape()
{
    m_arrowItem->setPath(QPainterPath());
}

// The body test strokes the line between the ends with a wide pen.
QRectF ODArrowLine::hitReach() const
{
    const QRectF line = QRectF(m_startPoint, m_endPoint).normalized();
    return ODShape::hitReach() | line.adjusted(-kBodyStrokeWidth, -kBodyStrokeWidth, kBodyStrokeWidth, kBodyStrokeWidth);
}

int ODArrowLine::HitTest(QPointF point, bool handles)
{
    if (handles) {
        const int number = hitHandle(point);
        // Ends that coincide belong to an arrow being drawn: the end is grabbed.
        return number != 0 && m_startPoint == m_endPoint ? EndHandle : number;
    }
    QPainterPath line;
    line.moveTo(m_startPoint);
    line.lineTo(m_endPoint);
    line.closeSubpath();
    QGraphicsPathItem probe(line);
    QPen pen;
    pen.setWidth(kBodyStrokeWidth);
    probe.setPen(pen);
    return probe.contains(point) ? 1 : 0;
}

void ODArrowLine::setZValue(long z)
{
    setItemsZValue(z, {m_arrowItem});
}
