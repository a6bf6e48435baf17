#pragma once

// Pictures a test hands to the window: uniform colour pictures in the host's
// OpenCV layout (blue, green, red in memory) and in Qt's, and grey ones.

#include "VorImage.h"

#include <QImage>
#include <QRgb>

#include <opencv2/core.hpp>

namespace Kit {

// A three-channel picture of one colour, given as red, green, blue.
inline VorImage colourPicture(int width, int height, int red, int green, int blue)
{
    return VorImage(cv::Mat(height, width, CV_8UC3, cv::Scalar(blue, green, red)));
}

// A one-channel picture of one grey value.
inline VorImage greyPicture(int width, int height, int value)
{
    return VorImage(cv::Mat(height, width, CV_8UC1, cv::Scalar(value)));
}

// A three-channel picture whose pixels all differ from their neighbours:
// blue x, green y, red x ^ y (each modulo 256).
inline VorImage patternPicture(int width, int height)
{
    cv::Mat mat(height, width, CV_8UC3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            mat.at<cv::Vec3b>(y, x) = cv::Vec3b(uchar(x), uchar(y), uchar(x ^ y));
    return VorImage(mat);
}

// A Qt picture of one colour.
inline QImage qtPicture(int width, int height, QRgb colour, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(width, height, format);
    image.fill(colour);
    return image;
}

} // namespace Kit
