#pragma once

#include "vordata_export.h"

// What concerns the drawing of an overlay: whether it brings a pen and a brush
// of its own, and their values. Pen values are red, green, blue (0 .. 255) and a
// width in pixels; brush values are red, green, blue, alpha (0 .. 255).
class VORDATA_EXPORT IVorOverlay
{
public:
    IVorOverlay();
    IVorOverlay(const IVorOverlay& other);
    IVorOverlay& operator=(const IVorOverlay& other);
    ~IVorOverlay();

    bool isRedrawPen() const;
    bool isRedrawBrush() const;
    // Both give the stored values and true when the overlay has them; without
    // them they write nothing and return false. Null pointers are skipped.
    bool GetPen(long* r, long* g, long* b, long* width) const;
    bool GetBrush(long* r, long* g, long* b, long* a) const;

    void SetPen(long r, long g, long b, long width);
    void SetBrush(long r, long g, long b, long a);
    void ClearPen();
    void ClearBrush();

private:
    bool m_redrawPen;
    bool m_redrawBrush;
    long m_pen[4];
    long m_brush[4];
};
