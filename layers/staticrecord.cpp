#include "staticrecord.h"

#include "staticshape.h"

#include "IVorOverlay.h"
#include "VorOverlay.h"

namespace {

constexpr int kDefaultCrossSize = 5;

} // namespace

StaticRecord::StaticRecord()
    : m_valid(false)
    , m_type(-1)
    , m_rotation(0.0)
    , m_visible(true)
    , m_crossSize(kDefaultCrossSize)
    , m_font("Times", 18)
{
}

void StaticRecord::takeGeometry(const StaticShape& shape)
{
    m_type = shape.type;
    m_path = shape.path;
    m_point = shape.point;
    m_rotation = shape.rotation;
    m_valid = shape.valid;
}

bool StaticRecord::takeOverlayPen(VorOverlay& overlay)
{
    if (!overlay.GetIVorOverlay() || !overlay.GetIVorOverlay()->isRedrawPen())
        return false;
    long r = 0, g = 0, b = 0, width = 0;
    overlay.GetPen(&r, &g, &b, &width);
    m_penColor = QColor(int(r), int(g), int(b), 255);
    return true;
}

bool StaticRecord::takeOverlayBrush(VorOverlay& overlay)
{
    if (!overlay.GetIVorOverlay() || !overlay.GetIVorOverlay()->isRedrawBrush())
        return false;
    long r = 0, g = 0, b = 0, a = 0;
    overlay.GetBrush(&r, &g, &b, &a);
    m_brushColor = QColor(int(r), int(g), int(b), int(a));
    return true;
}
