#pragma once

#include "vorimagewnd_global.h"

#include <QImage>

class VorImage;

// Conversions between the data model's pictures and QImage, with the exact
// per-pixel rules the window paints by:
// - one channel, 8 bits: Format_Indexed8 with a grey colour table; rows are
//   read as tightly packed (the row step is not used);
// - one channel, 16 bits: each value v becomes (float)v / 65535.0f * 255.0f,
//   truncated, then as above; this path respects the row step;
// - three channels, 8 or 16 bits: Format_RGB32 with plane 0 blue, plane 1 green,
//   plane 2 red and alpha 255, 16-bit values scaled as above.
// Any depth code but 8-bit unsigned takes the 16-bit path. Channel counts other
// than 1 and 3, and empty pictures, give a null QImage.
KESIMAGEWND_EXPORT QImage ConvertVorImageToQImage(VorImage* image);

// Format_Indexed8 gives a packed one-channel copy of the index bytes; the
// 32-bit formats (RGB32, ARGB32, ARGB32_Premultiplied) a four-channel copy in
// memory order; any other format leaves the target empty.
KESIMAGEWND_EXPORT void ConvertQImageToVorImage(const QImage& image, VorImage* target);
