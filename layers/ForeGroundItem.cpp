#include "ForeGroundItem.h"

#include "staticshape.h"

#include "IVorOverlay.h"
#include "VorOverlay.h"
#include "VorROI.h"

namespace {

constexpr int kDefaultCrossSize = 5;

} // namespace

ForeGroundItem::ForeGroundItem(VorROI& roi, ImageCtrlView*)
    : m_valid(false)
    , m_type(-1)
    , m_rotation(0.0)
    , m_visible(true)
    , m_crossSize(kDefaultCrossSize)
    , m_font("Times", 18)
{
    convertPainterPath(roi);
}

ForeGroundItem::ForeGroundItem(VorOverlay& overlay, ImageCtrlView*)
    : m_valid(false)
    , m_type(-1)
    , m_rotation(0.0)
    , m_visible(true)
    , m_crossSize(kDefaultCrossSize)
    , m_font("Times", 18)
{
    convertPainterPath(overlay);
}

void ForeGroundItem::convertPainterPath(VorROI& roi)
{
    const StaticShape shape = StaticShape::fromROI(roi, m_crossSize);
    m_type = shape.type;
    m_path = shape.path;
    m_point = shape.point;
    m_rotation = shape.rotation;
    m_valid = shape.valid;
}

void ForeGroundItem::convertPainterPath(VorOverlay& overlay)
{
    long r = 0, g = 0, b = 0, a = 0;
    if (overlay.GetIVorOverlay() && overlay.GetIVorOverlay()->isRedrawPen()) {
        overlay.GetPen(&r, &g, &b, &a);
        m_penColor = QColor(int(r), int(g), int(b), 255);
    }
    if (overlay.GetIVorOverlay() && overlay.GetIVorOverlay()->isRedrawBrush()) {
        overlay.GetBrush(&r, &g, &b, &a);
        m_brushColor = QColor(int(r), int(g), int(b), int(a));
    }
    const StaticShape shape = StaticShape::fromOverlay(overlay, m_crossSize, StaticShape::TextLocal8Bit);
    // The foreground keeps the overlay's own code, whatever path it shares.
    m_type = overlay.OverlayType();
    m_path = shape.path;
    m_point = shape.point;
    m_rotation = shape.rotation;
    m_valid = shape.valid;
    if (shape.type == StaticShape::PathText)
        m_font = shape.font;
}

void ForeGroundItem::SetPenColor(QColor color)
{
    m_penColor = color;
}

QColor ForeGroundItem::GetPenColor() const
{
    return m_penColor;
}

void ForeGroundItem::SetBrushColor(QColor color)
{
    m_brushColor = color;
}

QColor ForeGroundItem::GetBrushColor() const
{
    return m_brushColor;
}

void ForeGroundItem::SetVisible(bool visible)
{
    m_visible = visible;
}

bool ForeGroundItem::GetVisible() const
{
    return m_visible;
}

QPainterPath ForeGroundItem::GetPainterPath() const
{
    return m_path;
}

bool ForeGroundItem::isValid() const
{
    return m_valid;
}

int ForeGroundItem::type() const
{
    return m_type;
}

double ForeGroundItem::rotation() const
{
    return m_rotation;
}

void ForeGroundItem::setCrossSize(int size)
{
    m_crossSize = size;
}

int ForeGroundItem::getCrossSize() const
{
    return m_crossSize;
}

void ForeGroundItem::setFont(QFont font)
{
    m_font = font;
}
