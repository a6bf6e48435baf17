#include "IVorOverlay.h"

IVorOverlay::IVorOverlay()
    : m_redrawPen(false)
    , m_redrawBrush(false)
    , m_pen{0, 0, 0, 0}
    , m_brush{0, 0, 0, 0}
{
}

IVorOverlay::IVorOverlay(const IVorOverlay& other) = default;

IVorOverlay& IVorOverlay::operator=(const IVorOverlay& other) = default;

IVorOverlay::~IVorOverlay() = default;

bool IVorOverlay::isRedrawPen() const
{
    return m_redrawPen;
}

bool IVorOverlay::isRedrawBrush() const
{
    return m_redrawBrush;
}

namespace {

bool giveFour(bool present, const long (&values)[4], long* v0, long* v1, long* v2, long* v3)
{
    if (!present)
        return false;
    if (v0)
        *v0 = values[0];
    if (v1)
        *v1 = values[1];
    if (v2)
        *v2 = values[2];
    if (v3)
        *v3 = values[3];
    return true;
}

} // namespace

bool IVorOverlay::GetPen(long* r, long* g, long* b, long* width) const
{
    return giveFour(m_redrawPen, m_pen, r, g, b, width);
}

bool IVorOverlay::GetBrush(long* r, long* g, long* b, long* a) const
{
    return giveFour(m_redrawBrush, m_brush, r, g, b, a);
}

void IVorOverlay::SetPen(long r, long g, long b, long width)
{
    m_redrawPen = true;
    m_pen[0] = r;
    m_pen[1] = g;
    m_pen[2] = b;
    m_pen[3] = width;
}

void IVorOverlay::SetBrush(long r, long g, long b, long a)
{
    m_redrawBrush = true;
    m_brush[0] = r;
    m_brush[1] = g;
    m_brush[2] = b;
    m_brush[3] = a;
}

void IVorOverlay::ClearPen()
{
    m_redrawPen = false;
    m_pen[0] = m_pen[1] = m_pen[2] = m_pen[3] = 0;
}

void IVorOverlay::ClearBrush()
{
    m_redrawBrush = false;
    m_brush[0] = m_brush[1] = m_brush[2] = m_brush[3] = 0;
}
