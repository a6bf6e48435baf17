#pragma once

// Mouse and wheel input at scene points and the host widget with an embedded
// window, under their first names; the kit holds them.

#include "kitinput.h"
#include "kitwindow.h"

namespace ViewInput {
using namespace Kit;
} // namespace ViewInput
