#pragma once

// The test kit of the window's tests, in one include: windows and views
// exposed at a zoom, mouse input at scene points, viewport grabs and pixel
// checks, near-comparisons, shape parameters, the host's event log and the
// tools of the process. Data-model tests include kitcompare.h and
// kitpictures.h alone.

#include "kitcompare.h"
#include "kithostlog.h"
#include "kitinput.h"
#include "kitpictures.h"
#include "kitpixels.h"
#include "kitscreen.h"
#include "kitshapes.h"
#include "kittools.h"
#include "kitwindow.h"
