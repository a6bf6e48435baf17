#pragma once

// The viewport's pixels after pending paints, and a paint counter, under
// their first names; the kit holds them.

#include "kitpixels.h"

inline QImage grabViewportArgb(QGraphicsView* view)
{
    return Kit::grabViewport(view);
}

using PaintCounter = Kit::PaintCounter;
