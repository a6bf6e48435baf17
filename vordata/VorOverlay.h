#pragma once

#include "IVorOverlay.h"
#include "VorFont.h"
#include "VorPoint.h"
#include "VorPointArray.h"
#include "VorRegion.h"
#include "VorVar.h"
#include "vordata_export.h"

#include <vector>

// A piece of a result to be drawn, with an optional pen and brush of its own.
// A VorOverlay is a handle: its first data member is the IVorOverlay that holds
// the drawing flags and colours, and the window reads that pointer directly.
// OverlayType() tells the kind by the overlay code table; each Gen call makes
// the overlay that kind (colours are kept), and the Get call of the same kind
// gives back exactly what went in. A Get of another kind returns false and
// writes nothing; null output pointers are skipped. Units as for VorROI.
class VORDATA_EXPORT VorOverlay
{
public:
    // OverlayType() codes.
    enum Type {
        OV_NONE = 0,
        OV_POINT = 1,
        OV_ARROWLINE = 2,
        OV_LINE = 3,
        OV_RECT1 = 4,
        OV_RAKERECT1 = 5,
        OV_CIRCLE = 6,
        OV_ELLIPSE = 7,
        OV_POLYGON = 8,
        OV_POLYLINE = 9,
        OV_RECT2 = 10,
        OV_RAKERECT2 = 11,
        OV_TORUS = 12,
        OV_SPOKETORUS = 13,
        OV_ARC = 14,
        OV_IRREGULAR = 15,
        OV_TEXT = 16,
        OV_CROSS = 17,
        OV_POLYARROW = 18,
        OV_REGION = 19
    };

    VorOverlay();  // of no kind, OV_NONE, without pen or brush
    VorOverlay(const VorOverlay& other);
    VorOverlay& operator=(const VorOverlay& other);
    ~VorOverlay();

    int OverlayType() const;

    // The drawing part; never null on a live object.
    IVorOverlay* GetIVorOverlay() const;

    void SetPen(long r, long g, long b, long width);
    void SetBrush(long r, long g, long b, long a);
    bool GetPen(long* r, long* g, long* b, long* width) const;
    bool GetBrush(long* r, long* g, long* b, long* a) const;

    void GenPoint(const VorPoint& p);
    void GenLine(const VorPoint& a, const VorPoint& b);
    void GenArrowLine(const VorPoint& a, const VorPoint& b);
    void GenRect1(const VorPoint& a, const VorPoint& b);
    void GenRakeRect1(const VorPoint& a, const VorPoint& b, int direction, int count);
    void GenRect2(const VorPoint& centre, double l1, double l2, double angle);
    void GenRakeRect2(const VorPoint& centre, double l1, double l2, double angle, int direction, int count);
    void GenEllipse(const VorPoint& centre, double r1, double r2, double angle);
    void GenCircle(const VorPoint& centre, double r);
    void GenArc(const VorPoint& centre, double r, double start, double end);
    void GenTorus(const VorPoint& centre, double r1, double r2, double angle, double sweep);
    void GenSpokeTorus(const VorPoint& centre, double r1, double r2, double angle, double sweep,
                       int direction, int count);
    void GenPolygon(const VorPointArray& points);
    void GenIrregular(const VorPointArray& points);
    void GenPolyLine(const VorPointArray& points);  // closed free line
    // The text's bytes are kept as given (a null pointer keeps ""), with a copy
    // of the font.
    void GenText(const VorPoint& pos, const char* text, const VorFont& font);
    void GenRegion(const VorRegion& region);
    // Kinds the data model knows and the window does not draw: a cross marker
    // of a size and a turn, and an open line with an arrow head at its end.
    void GenCross(const VorPoint& centre, double size, double angle);
    void GenPolyArrow(const VorPointArray& points);

    bool GetPoint(VorPoint* p) const;
    bool GetLine(VorPoint* a, VorPoint* b) const;
    bool GetArrowLine(VorPoint* a, VorPoint* b) const;
    bool GetRect1(VorPoint* a, VorPoint* b) const;
    bool GetRakeRect1(VorPoint* a, VorPoint* b, int* direction, int* count) const;
    bool GetRect2(VorPoint* centre, double* l1, double* l2, double* angle) const;
    bool GetRakeRect2(VorPoint* centre, double* l1, double* l2, double* angle, int* direction,
                      int* count) const;
    bool GetEllipse(VorPoint* centre, double* r1, double* r2, double* angle) const;
    bool GetCircle(VorPoint* centre, double* r) const;
    bool GetArc(VorPoint* centre, double* r, double* start, double* end) const;
    bool GetTorus(VorPoint* centre, double* r1, double* r2, double* angle, double* sweep) const;
    bool GetSpokeTorus(VorPoint* centre, double* r1, double* r2, double* angle, double* sweep,
                       int* direction, int* count) const;
    bool GetPolygon(VorPointArray* points) const;
    bool GetIrregular(VorPointArray* points) const;
    bool GetPolyLine(VorPointArray* points) const;
    bool GetText(VorPoint* pos, VorVar* text, VorFont* font) const;
    bool GetRegion(VorRegion* region) const;
    bool GetCross(VorPoint* centre, double* size, double* angle) const;
    bool GetPolyArrow(VorPointArray* points) const;

private:
    void reset(int type);
    bool getTwoPoints(int type, VorPoint* a, VorPoint* b) const;
    bool getPoints(int type, VorPointArray* points) const;

    IVorOverlay* m_drawing;  // first member: read directly by the window
    int m_type;
    std::vector<double> m_values;
    int m_direction;
    int m_count;
    VorPointArray m_points;
    VorVar m_text;
    VorFont m_font;
    VorRegion m_region;
};
