#include "BackGroundItem.h"

#include "imagectrlscene.h"
#include "staticshape.h"

#include "VorOverlay.h"
#include "VorROI.h"

BackGroundItem::BackGroundItem()
    : m_penSettable(true)
    , m_brushSettable(true)
    // Records of overlays are painted without a line width of the scene's;
    // they draw hairlines in the look of a new shape unless the overlay
    // brings its own colours.
    , m_lineWidth(0.0f)
{
    m_penColor = QColor(0, 0, 255, 255);
    // Without a brush of its own or the scene's the brush stays invalid: a free line is filled opaque black.
}

BackGroundItem::BackGroundItem(VorROI& roi, ImageCtrlScene* scene)
    : BackGroundItem()
{
    if (scene)
        m_crossSize = scene->getCrossSize();
    convertPainterPath(roi);
}

BackGroundItem::BackGroundItem(VorOverlay& overlay, ImageCtrlScene* scene)
    : BackGroundItem()
{
    if (scene)
        m_crossSize = scene->getCrossSize();
    convertPainterPath(overlay);
}

BackGroundItem::BackGroundItem(const BackGroundItem& other)
    : m_penSettable(true)
    , m_brushSettable(true)
{
    copyFrom(other);
}

BackGroundItem& BackGroundItem::operator=(const BackGroundItem& other)
{
    if (this != &other)
        copyFrom(other);
    return *this;
}

void BackGroundItem::copyFrom(const BackGroundItem& other)
{
    StaticRecord::operator=(other);
    m_text = other.m_text;
    m_textRect = other.m_textRect;
    m_lineWidth = other.m_lineWidth;
}

QPointF BackGroundItem::GetPoint(double cx, double cy, float r, float angle)
{
    return StaticShape::GetPoint(cx, cy, r, angle);
}

void BackGroundItem::convertPainterPath(VorROI& roi)
{
    takeGeometry(StaticShape::fromROI(roi, m_crossSize));
}

void BackGroundItem::convertPainterPath(VorOverlay& overlay)
{
    // A colour the overlay brings is locked against the layer's setters.
    if (takeOverlayPen(overlay))
        m_penSettable = false;
    if (takeOverlayBrush(overlay))
        m_brushSettable = false;
    const StaticShape shape = StaticShape::fromOverlay(overlay, m_crossSize, StaticShape::TextGb18030Cleaned);
    takeGeometry(shape);
    if (shape.type == StaticShape::PathText) {
        m_font = shape.font;
        m_text = shape.text;
        m_textRect = shape.textRect;
    }
}

void BackGroundItem::SetPenColor(QColor color)
{
    if (m_penSettable)
        m_penColor = color;
}

void BackGroundItem::SetBrushColor(QColor color)
{
    if (m_brushSettable)
        m_brushColor = color;
}

QFont BackGroundItem::getFont() const
{
    return m_font;
}

QPoint BackGroundItem::getPoint() const
{
    return m_point.toPoint();
}

QString BackGroundItem::getText() const
{
    return m_text;
}

QRect BackGroundItem::getTextRect() const
{
    return m_textRect;
}

void BackGroundItem::setLineWidth(float width)
{
    m_lineWidth = width;
}

float BackGroundItem::getLineWidth() const
{
    return m_lineWidth;
}
