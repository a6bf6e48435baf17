#pragma once

// The kit's pixel read-back under its first namespace, BluePixels: handle
// blue, exact-colour blobs around a viewport position, viewport grabs.

#include "kitpixels.h"

namespace BluePixels {
using namespace Kit;
} // namespace BluePixels
