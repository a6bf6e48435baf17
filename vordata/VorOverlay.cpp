#include "VorOverlay.h"

#include <string>

namespace {

void give(double value, double* out)
{
    if (out)
        *out = value;
}

void give(int value, int* out)
{
    if (out)
        *out = value;
}

void give(double x, double y, VorPoint* out)
{
    if (out)
        *out = VorPoint(x, y);
}

} // namespace

VorOverlay::VorOverlay()
    : m_drawing(nullptr)
    , m_type(OV_NONE)
    , m_direction(0)
    , m_count(0)
{
    m_drawing = new IVorOverlay();
}

// The drawing part is allocated last so that nothing leaks if copying one of
// the other members throws.
VorOverlay::VorOverlay(const VorOverlay& other)
    : m_drawing(nullptr)
    , m_type(other.m_type)
    , m_values(other.m_values)
    , m_direction(other.m_direction)
    , m_count(other.m_count)
    , m_points(other.m_points)
    , m_text(other.m_text)
    , m_font(other.m_font)
    , m_region(other.m_region)
{
    m_drawing = new IVorOverlay(*other.m_drawing);
}

VorOverlay& VorOverlay::operator=(const VorOverlay& other)
{
    if (this == &other)
        return *this;
    *m_drawing = *other.m_drawing;
    m_type = other.m_type;
    m_values = other.m_values;
    m_direction = other.m_direction;
    m_count = other.m_count;
    m_points = other.m_points;
    m_text = other.m_text;
    m_font = other.m_font;
    m_region = other.m_region;
    return *this;
}

VorOverlay::~VorOverlay()
{
    delete m_drawing;
}

int VorOverlay::OverlayType() const
{
    return m_type;
}

IVorOverlay* VorOverlay::GetIVorOverlay() const
{
    return m_drawing;
}

void VorOverlay::SetPen(long r, long g, long b, long width)
{
    m_drawing->SetPen(r, g, b, width);
}

void VorOverlay::SetBrush(long r, long g, long b, long a)
{
    m_drawing->SetBrush(r, g, b, a);
}

bool VorOverlay::GetPen(long* r, long* g, long* b, long* width) const
{
    return m_drawing->GetPen(r, g, b, width);
}

bool VorOverlay::GetBrush(long* r, long* g, long* b, long* a) const
{
    return m_drawing->GetBrush(r, g, b, a);
}

// Drops the geometry of the previous kind; the pen and brush stay.
void VorOverlay::reset(int type)
{
    m_type = type;
    m_values.clear();
    m_direction = 0;
    m_count = 0;
    m_points.Clear();
    m_text = VorVar();
    m_font = VorFont();
    m_region = VorRegion();
}

void VorOverlay::GenPoint(const VorPoint& p)
{
    const VorPoint q = p;
    reset(OV_POINT);
    m_values = {q.x, q.y};
}

void VorOverlay::GenLine(const VorPoint& a, const VorPoint& b)
{
    const VorPoint pa = a, pb = b;
    reset(OV_LINE);
    m_values = {pa.x, pa.y, pb.x, pb.y};
}

void VorOverlay::GenArrowLine(const VorPoint& a, const VorPoint& b)
{
    const VorPoint pa = a, pb = b;
    reset(OV_ARROWLINE);
    m_values = {pa.x, pa.y, pb.x, pb.y};
}

void VorOverlay::GenRect1(const VorPoint& a, const VorPoint& b)
{
    const VorPoint pa = a, pb = b;
    reset(OV_RECT1);
    m_values = {pa.x, pa.y, pb.x, pb.y};
}

void VorOverlay::GenRakeRect1(const VorPoint& a, const VorPoint& b, int direction, int count)
{
    const VorPoint pa = a, pb = b;
    reset(OV_RAKERECT1);
    m_values = {pa.x, pa.y, pb.x, pb.y};
    m_direction = direction;
    m_count = count;
}

void VorOverlay::GenRect2(const VorPoint& centre, double l1, double l2, double angle)
{
    const VorPoint c = centre;
    reset(OV_RECT2);
    m_values = {c.x, c.y, l1, l2, angle};
}

void VorOverlay::GenRakeRect2(const VorPoint& centre, double l1, double l2, double angle, int direction,
                              int count)
{
    const VorPoint c = centre;
    reset(OV_RAKERECT2);
    m_values = {c.x, c.y, l1, l2, angle};
    m_direction = direction;
    m_count = count;
}

void VorOverlay::GenEllipse(const VorPoint& centre, double r1, double r2, double angle)
{
    const VorPoint c = centre;
    reset(OV_ELLIPSE);
    m_values = {c.x, c.y, r1, r2, angle};
}

void VorOverlay::GenCircle(const VorPoint& centre, double r)
{
    const VorPoint c = centre;
    reset(OV_CIRCLE);
    m_values = {c.x, c.y, r};
}

void VorOverlay::GenArc(const VorPoint& centre, double r, double start, double end)
{
    const VorPoint c = centre;
    reset(OV_ARC);
    m_values = {c.x, c.y, r, start, end};
}

void VorOverlay::GenTorus(const VorPoint& centre, double r1, double r2, double angle, double sweep)
{
    const VorPoint c = centre;
    reset(OV_TORUS);
    m_values = {c.x, c.y, r1, r2, angle, sweep};
}

void VorOverlay::GenSpokeTorus(const VorPoint& centre, double r1, double r2, double angle, double sweep,
                               int direction, int count)
{
    const VorPoint c = centre;
    reset(OV_SPOKETORUS);
    m_values = {c.x, c.y, r1, r2, angle, sweep};
    m_direction = direction;
    m_count = count;
}

void VorOverlay::GenPolygon(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(OV_POLYGON);
    m_points = copy;
}

void VorOverlay::GenIrregular(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(OV_IRREGULAR);
    m_points = copy;
}

void VorOverlay::GenPolyLine(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(OV_POLYLINE);
    m_points = copy;
}

void VorOverlay::GenText(const VorPoint& pos, const char* text, const VorFont& font)
{
    // Copies first: the arguments may point into this overlay's own text or font.
    const VorPoint p = pos;
    const std::string bytes = text ? text : "";
    const VorFont fontCopy = font;
    reset(OV_TEXT);
    m_values = {p.x, p.y};
    m_text = VorVar(bytes.c_str());
    m_font = fontCopy;
}

void VorOverlay::GenRegion(const VorRegion& region)
{
    const VorRegion copy = region;
    reset(OV_REGION);
    m_region = copy;
}

bool VorOverlay::getTwoPoints(int type, VorPoint* a, VorPoint* b) const
{
    if (m_type != type || m_values.size() != 4)
        return false;
    give(m_values[0], m_values[1], a);
    give(m_values[2], m_values[3], b);
    return true;
}

bool VorOverlay::getPoints(int type, VorPointArray* points) const
{
    if (m_type != type)
        return false;
    if (points)
        *points = m_points;
    return true;
}

bool VorOverlay::GetPoint(VorPoint* p) const
{
    if (m_type != OV_POINT || m_values.size() != 2)
        return false;
    give(m_values[0], m_values[1], p);
    return true;
}

bool VorOverlay::GetLine(VorPoint* a, VorPoint* b) const
{
    return getTwoPoints(OV_LINE, a, b);
}

bool VorOverlay::GetArrowLine(VorPoint* a, VorPoint* b) const
{
    return getTwoPoints(OV_ARROWLINE, a, b);
}

bool VorOverlay::GetRect1(VorPoint* a, VorPoint* b) const
{
    return getTwoPoints(OV_RECT1, a, b);
}

bool VorOverlay::GetRakeRect1(VorPoint* a, VorPoint* b, int* direction, int* count) const
{
    if (!getTwoPoints(OV_RAKERECT1, a, b))
        return false;
    give(m_direction, direction);
    give(m_count, count);
    return true;
}

bool VorOverlay::GetRect2(VorPoint* centre, double* l1, double* l2, double* angle) const
{
    if (m_type != OV_RECT2 || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], l1);
    give(m_values[3], l2);
    give(m_values[4], angle);
    return true;
}

bool VorOverlay::GetRakeRect2(VorPoint* centre, double* l1, double* l2, double* angle, int* direction,
                              int* count) const
{
    if (m_type != OV_RAKERECT2 || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], l1);
    give(m_values[3], l2);
    give(m_values[4], angle);
    give(m_direction, direction);
    give(m_count, count);
    return true;
}

bool VorOverlay::GetEllipse(VorPoint* centre, double* r1, double* r2, double* angle) const
{
    if (m_type != OV_ELLIPSE || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r1);
    give(m_values[3], r2);
    give(m_values[4], angle);
    return true;
}

bool VorOverlay::GetCircle(VorPoint* centre, double* r) const
{
    if (m_type != OV_CIRCLE || m_values.size() != 3)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r);
    return true;
}

bool VorOverlay::GetArc(VorPoint* centre, double* r, double* start, double* end) const
{
    if (m_type != OV_ARC || m_values.size() != 5)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r);
    give(m_values[3], start);
    give(m_values[4], end);
    return true;
}

bool VorOverlay::GetTorus(VorPoint* centre, double* r1, double* r2, double* angle, double* sweep) const
{
    if (m_type != OV_TORUS || m_values.size() != 6)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r1);
    give(m_values[3], r2);
    give(m_values[4], angle);
    give(m_values[5], sweep);
    return true;
}

bool VorOverlay::GetSpokeTorus(VorPoint* centre, double* r1, double* r2, double* angle, double* sweep,
                               int* direction, int* count) const
{
    if (m_type != OV_SPOKETORUS || m_values.size() != 6)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], r1);
    give(m_values[3], r2);
    give(m_values[4], angle);
    give(m_values[5], sweep);
    give(m_direction, direction);
    give(m_count, count);
    return true;
}

bool VorOverlay::GetPolygon(VorPointArray* points) const
{
    return getPoints(OV_POLYGON, points);
}

bool VorOverlay::GetIrregular(VorPointArray* points) const
{
    return getPoints(OV_IRREGULAR, points);
}

bool VorOverlay::GetPolyLine(VorPointArray* points) const
{
    return getPoints(OV_POLYLINE, points);
}

void VorOverlay::GenCross(const VorPoint& centre, double size, double angle)
{
    const VorPoint c = centre;
    reset(OV_CROSS);
    m_values = {c.x, c.y, size, angle};
}

bool VorOverlay::GetCross(VorPoint* centre, double* size, double* angle) const
{
    if (m_type != OV_CROSS || m_values.size() != 4)
        return false;
    give(m_values[0], m_values[1], centre);
    give(m_values[2], size);
    give(m_values[3], angle);
    return true;
}

void VorOverlay::GenPolyArrow(const VorPointArray& points)
{
    const VorPointArray copy = points;
    reset(OV_POLYARROW);
    m_points = copy;
}

bool VorOverlay::GetPolyArrow(VorPointArray* points) const
{
    return getPoints(OV_POLYARROW, points);
}

bool VorOverlay::GetText(VorPoint* pos, VorVar* text, VorFont* font) const
{
    if (m_type != OV_TEXT || m_values.size() != 2)
        return false;
    give(m_values[0], m_values[1], pos);
    if (text)
        *text = m_text;
    if (font)
        *font = m_font;
    return true;
}

bool VorOverlay::GetRegion(VorRegion* region) const
{
    if (m_type != OV_REGION)
        return false;
    if (region)
        *region = m_region;
    return true;
}
