#pragma once

#include "vorimagewnd_global.h"

class VorImage;

// The window's side of the data model: validity of pictures and the mapping of
// the ROI and overlay type codes to draw modes.

// False for null, or a Width() or Height() of 0. The test is for zero, so a
// negative size would pass.
KESIMAGEWND_EXPORT bool IsValidVorImage(VorImage* image);

// The draw mode of a ROI type code; DM_SELECT for 3 and every code outside the
// table.
KESIMAGEWND_EXPORT DrawMode FromROIType(int code);

// The draw mode of an overlay type code; DM_SELECT for anything below 1 or
// above 15, so text (16) and region (19) fall out of the mapping.
KESIMAGEWND_EXPORT DrawMode FromOverlayType(int code);
