#pragma once

#include <opencv2/core.hpp>

#include <QString>

// Reads a picture file (PNG, BMP, JPEG, TIFF and whatever else OpenCV reads)
// unchanged, then brings it into a form the window shows: one or three
// channels of 8 or 16 bits. An alpha channel is dropped, a grey-and-alpha
// picture keeps its grey, and other depths (signed, 32-bit, floating point)
// are stretched from their minimum to their maximum onto 8 bits.
struct PictureFile
{
    cv::Mat mat;       // empty when the file could not be read
    QString error;     // why, when mat is empty
    QString describe;  // e.g. "2448 x 2048, 16-bit grey"
};

PictureFile readPictureFile(const QString& path);
