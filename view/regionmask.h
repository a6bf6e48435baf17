#pragma once

#include "kesimagewnd_export.h"

#include <QImage>
#include <QRgb>

#include <opencv2/core/mat.hpp>

class VorImage;

// The pixel rules that turn a region mask into pictures. A mask is one channel
// of 8 bits, rows at the step of its matrix, its pixel (x, y) at image pixel
// (x, y). Masks of another type, and empty ones, give empty results: nothing
// of them is shown.

// Stores a deep copy of mask in *held, creating it on first use, so that the
// caller may go on writing into its own pixels; false for a null mask, which
// leaves *held as it is.
KESIMAGEWND_TESTS_EXPORT bool KeepMaskCopy(VorImage** held, const VorImage* mask);

// True for a mask of one 8-bit channel with a width and a height.
KESIMAGEWND_TESTS_EXPORT bool IsRegionMask(const VorImage* mask);

// The coloured region image: Format_ARGB32, not premultiplied, pixel x of row y
// taken from a two-entry table by the low bit of the mask byte, so that 1 and
// 255 are inside and 0 and 254 outside. Entry 0 is 0, fully transparent; entry
// 1 is inside. The target becomes a null image for anything but a region mask.
KESIMAGEWND_TESTS_EXPORT void MaskToRegionImage(const VorImage* mask, QRgb inside, QImage* target);

// A three-channel picture of the mask's size whose bytes come from three
// tables, one per channel in memory order: 0 where the mask byte is 0, the
// channel's value wherever it is not. Rows are taken at the mask's step and
// written packed. An empty matrix for anything but a region mask.
KESIMAGEWND_TESTS_EXPORT cv::Mat MaskToColourPicture(const VorImage* mask, uchar first, uchar second, uchar third);

// The picture conversion of the region classes: as the image layer's for 8-bit
// pictures of one or three channels, and a null image for any deeper picture.
KESIMAGEWND_TESTS_EXPORT QImage EightBitPictureToQImage(VorImage* image);
