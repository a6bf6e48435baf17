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
// The same conversion, written into `recycled` when nobody else shares its
// pixels and it has the size and format of the result; otherwise into a new
// picture. A stream of frames thus reuses its buffers instead of allocating a
// fresh picture, and taking fresh pages, for every frame.
KESIMAGEWND_EXPORT QImage ConvertVorImageToQImage(VorImage* image, QImage recycled);

// The 32-bit picture that painting draws for a Format_Indexed8 picture: every
// index through the colour table, pixel for pixel what
// convertToFormat(Format_RGB32) gives, or Format_ARGB32_Premultiplied when the
// table holds see-through entries. Written into `recycled` under the same
// rule as above. A null picture for any other format, which paints as it is.
KESIMAGEWND_EXPORT QImage ConvertIndexedToPaintImage(const QImage& image, QImage recycled = QImage());

// Format_Indexed8 gives a packed one-channel copy of the index bytes; the
// 32-bit formats (RGB32, ARGB32, ARGB32_Premultiplied) a four-channel copy in
// memory order; any other format leaves the target empty.
KESIMAGEWND_EXPORT void ConvertQImageToVorImage(const QImage& image, VorImage* target);
