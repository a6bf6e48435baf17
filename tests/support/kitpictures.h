#pragma once

// Pictures a test hands to the window: uniform colour pictures in the host's
// OpenCV layout (blue, green, red in memory) and in Qt's, and grey ones.

#include "VorImage.h"

#include <QImage>
#include <QRgb>
#include <QtTest/QTest>

#include <opencv2/core.hpp>
#include <opencv2/core/check.hpp>

#include <cstddef>
#include <initializer_list>
#include <vector>

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

// A picture of an OpenCV type, 0 everywhere but at the given pixels (x, y),
// which hold value in one channel: the source of a mask or a region.
inline cv::Mat markedPicture(int width, int height, int cvType, int channel, double value,
                             std::initializer_list<cv::Point> pixels)
{
    std::vector<cv::Mat> planes(std::size_t(CV_MAT_CN(cvType)),
                                cv::Mat(height, width, CV_MAKETYPE(CV_MAT_DEPTH(cvType), 1), cv::Scalar(0)));
    cv::Mat& plane = planes[std::size_t(channel)];
    plane = plane.clone();
    for (const cv::Point& p : pixels) {
        if (plane.depth() == CV_8U)
            plane.at<unsigned char>(p) = static_cast<unsigned char>(value);
        else
            plane.at<unsigned short>(p) = static_cast<unsigned short>(value);
    }
    cv::Mat picture;
    cv::merge(planes, picture);
    return picture;
}

// The rows of a test over marked pictures: the OpenCV type, the channel that
// holds the mark and its value, each row named by them ("CV_16UC3, channel 2,
// value 512"): small and large values, a low byte of zero, any one channel.
inline void addMarkedPictureRows()
{
    QTest::addColumn<int>("cvType");
    QTest::addColumn<int>("channel");
    QTest::addColumn<double>("value");
    const struct
    {
        int cvType;
        int channel;
        double value;
    } rows[] = {
        {CV_8UC1, 0, 1.0},   {CV_8UC1, 0, 255.0},   {CV_16UC1, 0, 256.0}, {CV_16UC1, 0, 65535.0},
        {CV_8UC3, 0, 3.0},   {CV_8UC3, 2, 128.0},   {CV_8UC3, 2, 1.0},    {CV_16UC3, 1, 4096.0},
        {CV_16UC3, 2, 512.0}, {CV_8UC4, 3, 9.0},    {CV_8UC4, 3, 200.0},  {CV_8UC2, 1, 1.0},
        {CV_16UC4, 1, 1.0},
    };
    for (const auto& row : rows) {
        QTest::addRow("%s, channel %d, value %g", cv::typeToString(row.cvType).c_str(), row.channel, row.value)
            << row.cvType << row.channel << row.value;
    }
}

// A Qt picture of one colour.
inline QImage qtPicture(int width, int height, QRgb colour, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(width, height, format);
    image.fill(colour);
    return image;
}

} // namespace Kit
