#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QVector>

class ODShape;
class ShapeOperator;
class VorOverlay;
class VorROI;

// The look a shape made from data gets: pen and brush colours, the pen's width
// in whole pixels, and the arm length of a point's cross.
struct KESIMAGEWND_TESTS_EXPORT ShapeLook
{
    QColor pen;
    QColor brush;
    int width = 1;
    int crossSize = 5;
};

// The one table between the data model's type codes and live shapes, used in
// both directions: a row per ROI code and a row per overlay code names the draw
// mode the code maps to, how its values become a shape through the
// ShapeOperator, and, for the row that reads a shape mode back, how that
// shape's parameters become data again. Values cross unchanged in scene
// coordinates (image pixels); the exceptions (angles brought into range, the
// negated sweep of a torus, the guards of degenerate rectangles) live in the
// rows. Texts, the region and the copies of mask ROIs are kept by the layer,
// which reads them back itself.
class KESIMAGEWND_TESTS_EXPORT ShapeConversion
{
public:
    using DrawROIFn = long (*)(const VorROI& roi, ShapeOperator& shapeOperator, long z, const ShapeLook& look);
    using ROIReadFn = bool (*)(ODShape* shape, VorROI* roi);
    using DrawOverlayFn = long (*)(VorOverlay& overlay, ShapeOperator& shapeOperator, long z, const ShapeLook& look);
    using OverlayReadFn = bool (*)(ODShape* shape, VorOverlay* overlay);

    struct ROIRow
    {
        int code;            // VorROI::ROIType()
        DrawMode mode;       // FromROIType(code), also the mode of the shape made
        DrawROIFn draw;
        ROIReadFn read;      // the ROI form of shapes of that mode
    };

    struct OverlayRow
    {
        int code;            // VorOverlay::OverlayType()
        DrawMode mode;       // FromOverlayType(code): the routine that draws it
        DrawMode shapeMode;  // the mode of the shape made
        DrawOverlayFn draw;
        OverlayReadFn read;  // the overlay form of shapes of shapeMode; null
                             // where an earlier row of that shape mode reads it
    };

    // The mode of the rows that no mode reaches, told by their codes alone:
    // text and region overlays.
    static constexpr DrawMode s_byCode = DM_SELECT;

    static const QVector<ROIRow>& roiRows();
    static const QVector<OverlayRow>& overlayRows();

    // The row of a ROI routine's mode; null for modes without one.
    static const ROIRow* roiRowOfMode(DrawMode mode);
    // True when some overlay routine draws that mode.
    static bool hasOverlayRoutine(DrawMode mode);
    // The row that the routine of mode accepts for code; null when it refuses
    // the code.
    static const OverlayRow* overlayRow(DrawMode mode, int code);
    // The row of a code without a draw mode (text, region); null for others.
    static const OverlayRow* overlayRowByCode(int code);

    // A shape's parameters as a ROI, chosen by the shape's mode; false for a
    // null shape, a mode without a ROI form, or a shape without parameters.
    static bool toROI(ODShape* shape, VorROI* roi);
    // A shape's parameters, colours included, as an overlay, chosen by the
    // shape's mode; false as for toROI.
    static bool toOverlay(ODShape* shape, VorOverlay* overlay);

    // The look of an overlay: the given look, with red, green, blue and the
    // width of the overlay's own pen if it brings one (the pen's alpha stays),
    // and all four channels of its own brush if it brings one. Channels
    // outside 0 to 255 are held at the nearer end.
    static ShapeLook overlayLook(const ShapeLook& windowLook, VorOverlay& overlay);
};
