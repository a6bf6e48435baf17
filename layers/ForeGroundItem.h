#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPointF>

class ImageCtrlView;
class VorOverlay;
class VorROI;

// A record of the foreground layer: a region of interest or an overlay turned
// into a painter path once, at construction, painted in viewport pixels over
// everything, whatever the zoom. It is built as the image layer's records are,
// with three differences: a point's cross always has half size 5 while the
// path is built, the colour setters always set, and a text is read in the
// local eight-bit encoding and kept only as its path.
class KESIMAGEWND_TESTS_EXPORT ForeGroundItem
{
public:
    // The view is not used.
    ForeGroundItem(VorROI& roi, ImageCtrlView* view);
    ForeGroundItem(VorOverlay& overlay, ImageCtrlView* view);

    void SetPenColor(QColor color);
    QColor GetPenColor() const;
    void SetBrushColor(QColor color);
    QColor GetBrushColor() const;
    void SetVisible(bool visible);
    bool GetVisible() const;
    QPainterPath GetPainterPath() const;
    bool isValid() const;
    // The ROI code, or for an overlay the overlay's own code.
    int type() const;
    double rotation() const;
    // These change the stored value, not the path.
    void setCrossSize(int size);
    int getCrossSize() const;
    void setFont(QFont font);

private:
    void convertPainterPath(VorROI& roi);
    void convertPainterPath(VorOverlay& overlay);

    bool m_valid;
    QPainterPath m_path;
    QColor m_penColor;
    QColor m_brushColor;
    int m_type;
    QPointF m_point;
    double m_rotation;
    bool m_visible;
    int m_crossSize;
    QFont m_font;
};
