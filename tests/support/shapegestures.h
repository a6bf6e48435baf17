#pragma once

// The kit's shape, tool, window and host-log helpers under their first
// namespace, ShapeKit.

#include "viewinput.h"

#include "kithostlog.h"
#include "kitshapes.h"
#include "kittools.h"
#include "kitwindow.h"

namespace ShapeKit {
using namespace Kit;
} // namespace ShapeKit
