#pragma once

#include "kesimagewnd_export.h"

// The chief header of the image window: the export macro and the enums that
// every subsystem shares.

#define VORIMAGEWND_EXPORT KESIMAGEWND_EXPORT

// The kind of a shape and, at the same time, the index of the tool that draws
// it. The last three kinds have no tool.
enum DrawMode : int {
    DM_SELECT = 0,        // no drawing, the select tool
    DM_POINT = 1,
    DM_LINE = 2,
    DM_RECT1 = 3,         // axis-parallel rectangle
    DM_RECT2 = 4,         // rotated rectangle
    DM_ELLIPSE = 5,
    DM_CIRCLE = 6,
    DM_POLYGON = 7,
    DM_ANYLINE = 8,       // free line, open
    DM_ANNULAR = 9,
    DM_ARC = 10,
    DM_ARROWLINE = 11,
    DM_ANYCLOSELINE = 12, // free line, closed
    DM_MASK = 13,         // mask ROI, reached only from FromROIType
    DM_RAKERECT1 = 14,    // ODRect1 with search lines
    DM_RAKERECT2 = 15     // ODRect2 with search lines
};

// The direction in which the search lines of a rectangle or an annulus run.
enum SEARCHLINEDIRECTION : int {
    SL_TOP_TO_BOTTOM = 0,
    SL_BOTTOM_TO_TOP = 1,
    SL_LEFT_TO_RIGHT = 2,
    SL_RIGHT_TO_LEFT = 3,
    SL_INNER_TO_OUTER = 4, // annulus default
    SL_OUTER_TO_INNER = 5
};
