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
// The target always receives a new matrix: pixels it shared with other images
// are left as they were. A null target does nothing.
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
// - a ROI of no kind, or with a coordinate, size or angle that is not
//   finite: nothing.
//
// The figures in detail. Angles are degrees, counter-clockwise on the screen
// (y down), 0 at three o'clock: the point at angle a and distance r from c is
// (c.x + r cos a, c.y - r sin a). Negative sizes and radii count as their
// absolute values.
// - rectangle: the two corners in any order;
// - rotated rectangle: centre, full width along its own x axis, full height,
//   angle of its own x axis;
// - ellipse: centre, radius along its own x axis, radius along its own y axis,
//   angle of its own x axis; a radius of zero leaves the segment along the
//   other axis;
// - annulus sector: centre, the two radii in either order, start angle and
//   sweep; a positive sweep turns counter-clockwise, a sweep of a full turn or
//   more gives the whole ring. The sector is closed: its apex and both sides
//   belong to it; a sweep of zero keeps the start ray alone;
// - polygon: closed from the last vertex back to the first; where sides cross,
//   the even-odd rule decides; pixel centres on a side are inside. One vertex
//   or two enclose no area and leave a point or a segment instead, with the
//   pixels of a point or a line;
// - line and free line: a line from each vertex to the next (a free line is
//   not closed). Along the longer axis of each line every pixel between the
//   ends is taken, across it the pixel nearest to the ideal line; where the
//   ideal line passes exactly between two pixels, the one with the smaller
//   coordinate. A line and its reverse thus have the same pixels;
// - arc: centre, radius, start angle and sweep from the start; a sweep beyond
//   a full turn draws the circle once;
// - mask: every pixel that is non-zero in any channel.
//
// A region is painted run by run, cut in the same way as a ROI.
namespace VORMV {

VORDATACONVERT_EXPORT void VorROIToBinImage(VorImage* image, VorROI& roi);
VORDATACONVERT_EXPORT void VorRegionToBinImage(VorImage* image, VorRegion& region);
// The pixels of a ROI as a region, by the rules above.
VORDATACONVERT_EXPORT void VorROIToRegion(VorRegion* region, VorROI& roi);

}  // namespace VORMV
