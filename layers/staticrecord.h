#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPointF>

class VorOverlay;
struct StaticShape;

// What the image layer's and the foreground's records have in common: a
// painter path made once from a ROI or an overlay, its colours, its type
// code, the centre and turn of an upright rectangle or ellipse, visibility,
// the cross size and font it was made with. Records have no handles and no
// hit test. The classes built on it add what differs: the colour locks and
// the text of the image layer's records.
class KESIMAGEWND_TESTS_EXPORT StaticRecord
{
public:
    QColor GetPenColor() const { return m_penColor; }
    QColor GetBrushColor() const { return m_brushColor; }
    void SetVisible(bool visible) { m_visible = visible; }
    bool GetVisible() const { return m_visible; }
    QPainterPath GetPainterPath() const { return m_path; }
    bool isValid() const { return m_valid; }
    int type() const { return m_type; }
    double rotation() const { return m_rotation; }
    // These change the stored value, not the path.
    void setCrossSize(int size) { m_crossSize = size; }
    int getCrossSize() const { return m_crossSize; }
    void setFont(QFont font) { m_font = font; }

protected:
    StaticRecord();
    // Takes the path, type, centre, turn and validity of a made shape.
    void takeGeometry(const StaticShape& shape);
    // The colours an overlay brings: the pen's colour opaque (its width is
    // not used), the brush's with its alpha. Each says whether there was one.
    bool takeOverlayPen(VorOverlay& overlay);
    bool takeOverlayBrush(VorOverlay& overlay);

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
