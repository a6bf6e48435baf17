#pragma once

#include "staticrecord.h"

class ImageCtrlView;
class VorOverlay;
class VorROI;

// A record of the foreground layer: a region of interest or an overlay turned
// into a painter path once, at construction, painted in viewport pixels over
// everything, whatever the zoom. It is built as the image layer's records are,
// with three differences: a point's cross always has half size 5 while the
// path is built, the colour setters always set, and a text is read in the
// local eight-bit encoding and kept only as its path.
class KESIMAGEWND_TESTS_EXPORT ForeGroundItem : public StaticRecord
{
public:
    // The view is not used.
    ForeGroundItem(VorROI& roi, ImageCtrlView* view);
    ForeGroundItem(VorOverlay& overlay, ImageCtrlView* view);

    void SetPenColor(QColor color) { m_penColor = color; }
    void SetBrushColor(QColor color) { m_brushColor = color; }

private:
    void convertPainterPath(VorROI& roi);
    void convertPainterPath(VorOverlay& overlay);
};
