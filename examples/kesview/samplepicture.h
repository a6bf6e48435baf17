#pragma once

#include <opencv2/core.hpp>

// A generated inspection picture, 8-bit grey, of the size a 5-megapixel
// machine-vision camera delivers (2448 x 2048 by default): machined parts on a
// fixture plate (a plate with drilled and tapped holes, a gear, a flange), a
// calibration dot grid, a grey wedge and a resolution star, a steel rule with
// a millimetre scale, and fine print to read at high zoom, with the slight
// blur of a lens and the noise of a sensor. The same every run.
cv::Mat makeSamplePicture(int width = 2448, int height = 2048);
