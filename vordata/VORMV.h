#pragma once

#include "vordataconvert_export.h"

class VorImage;
class VorROI;
class VorRegion;

// Conversions of regions and ROIs to binary pictures.
//
// The picture: one channel of 8 bits, 255 inside and 0 outside, rows packed
// (step equals width). Its pixel (x, y) is image pixel (x, y): the picture starts
// at the image origin and reaches to the right and lower end of the region, so
// its width is one past the largest column inside and its height one past the
// largest row inside. Pixels at negative coordinates and beyond 16384 in either
// direction are cut away. Nothing inside gives an empty picture (0 by 0).
//
// Which pixels are inside:
// - areas (rectangle, rotated rectangle, circle, ellipse, annulus sector,
//   polygon): a pixel is inside when its centre (x + 0.5, y + 0.5) lies inside
//   the figure, the boundary included;
// - lines (line, free line, arc): the pixels that an 8-connected line through
//   the pixels holding the vertices passes; an arc is followed in steps of at
//   most one pixel along its circle;
// - a point: the pixel that holds it;
// - a mask ROI: its mask;
// - a ROI of no kind, or with a coordinate that is not finite: nothing.
namespace VORMV {

VORDATACONVERT_EXPORT void VorROIToBinImage(VorImage* image, VorROI& roi);
VORDATACONVERT_EXPORT void VorRegionToBinImage(VorImage* image, VorRegion& region);
// The pixels of a ROI as a region, by the rules above.
VORDATACONVERT_EXPORT void VorROIToRegion(VorRegion* region, VorROI& roi);

}  // namespace VORMV
