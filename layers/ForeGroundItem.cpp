#include "ForeGroundItem.h"

#include "staticshape.h"

#include "VorOverlay.h"
#include "VorROI.h"

ForeGroundItem::ForeGroundItem(VorROI& roi, ImageCtrlView*)
{
    convertPainterPath(roi);
}

ForeGroundItem::ForeGroundItem(VorOverlay& overlay, ImageCtrlView*)
{
    convertPainterPath(overlay);
}

void ForeGroundItem::convertPainterPath(VorROI& roi)
{
    takeGeometry(StaticShape::fromROI(roi, m_crossSize));
}

void ForeGroundItem::convertPainterPath(VorOverlay& overlay)
{
    takeOverlayPen(overlay);
    takeOverlayBrush(overlay);
    const StaticShape shape = StaticShape::fromOverlay(overlay, m_crossSize, StaticShape::TextLocal8Bit);
    takeGeometry(shape);
    // The foreground keeps the overlay's own code, whatever path it shares.
    m_type = overlay.OverlayType();
    if (shape.type == StaticShape::PathText)
        m_font = shape.font;
}
