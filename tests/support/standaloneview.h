#pragma once

// The bare image view of the kit under its first header name.

#include "kitwindow.h"
