#include "BackGroundItem.h"

#include "imagectrlscene.h"
#include "staticshape.h"

#include "IVorOverlay.h"
#include "VorOverlay.h"
#include "VorROI.h"

namespace {

constexpr int kDefaultCrossSize = 5;

} // namespace

BackGroundItem::BackGroundItem()
    : m_valid(false)
    , m_type(-1)
    , m_rotation(0.0)
    , m_visible(true)
    , m_crossSize(kDefaultCrossSize)
    , m_font("Times", 18)
    , m_penSettable(true)
    , m_brushSettable(true)
    // Records of overlays are painted without a line width of the scene's;
    // they draw hairlines in the look of a new shape unless the overlay
    // brings its own colours.
    , m_lineWidth(0.0f)
{
    m_penColor = QColor(0, 0, 255, 255);
    m_brushColor = QColor(0, 255, 0, 0);
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
    m_valid = other.m_valid;
    m_path = other.m_path;
    m_penColor = other.m_penColor;
    m_brushColor = other.m_brushColor;
    m_type = other.m_type;
    m_point = other.m_point;
    m_rotation = other.m_rotation;
    m_visible = other.m_visible;
    m_crossSize = other.m_crossSize;
    m_font = other.m_font;
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
    const StaticShape shape = StaticShape::fromROI(roi, m_crossSize);
    m_type = shape.type;
    m_path = shape.path;
    m_point = shape.point;
    m_rotation = shape.rotation;
    m_valid = shape.valid;
}

void BackGroundItem::convertPainterPath(VorOverlay& overlay)
{
    long r = 0, g = 0, b = 0, a = 0;
    if (overlay.GetIVorOverlay() && overlay.GetIVorOverlay()->isRedrawPen()) {
        // The overlay's width is not used; the layer sets the width.
        overlay.GetPen(&r, &g, &b, &a);
        m_penColor = QColor(int(r), int(g), int(b), 255);
        m_penSettable = false;
    }
    if (overlay.GetIVorOverlay() && overlay.GetIVorOverlay()->isRedrawBrush()) {
        overlay.GetBrush(&r, &g, &b, &a);
        m_brushColor = QColor(int(r), int(g), int(b), int(a));
        m_brushSettable = false;
    }
    const StaticShape shape = StaticShape::fromOverlay(overlay, m_crossSize, StaticShape::TextGb18030Cleaned);
    m_type = shape.type;
    m_path = shape.path;
    m_point = shape.point;
    m_rotation = shape.rotation;
    m_valid = shape.valid;
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

QColor BackGroundItem::GetPenColor() const
{
    return m_penColor;
}

void BackGroundItem::SetBrushColor(QColor color)
{
    if (m_brushSettable)
        m_brushColor = color;
}

QColor BackGroundItem::GetBrushColor() const
{
    return m_brushColor;
}

void BackGroundItem::SetVisible(bool visible)
{
    m_visible = visible;
}

bool BackGroundItem::GetVisible() const
{
    return m_visible;
}

QPainterPath BackGroundItem::GetPainterPath() const
{
    return m_path;
}

bool BackGroundItem::isValid() const
{
    return m_valid;
}

int BackGroundItem::type() const
{
    return m_type;
}

double BackGroundItem::rotation() const
{
    return m_rotation;
}

void BackGroundItem::setCrossSize(int size)
{
    m_crossSize = size;
}

int BackGroundItem::getCrossSize() const
{
    return m_crossSize;
}

void BackGroundItem::setFont(QFont font)
{
    m_font = font;
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
