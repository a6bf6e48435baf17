#pragma once

// Pictures a test hands to the window: uniform colour pictures in the host's
// OpenCV layout (blue, green, red in memory) and in Qt's, and grey ones.

#include "VorImage.h"

#include <QImage>
#include <QRgb>
#include <QtTest/QTest>

#include <opencv2/core.hpp>

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
// holds the mark and its value, each row named by them.
inline void addMarkedPictureRows()
{
    QTest::addColumn<int>("cvType");
    QTest::addColumn<int>("channel");
    QTest::addColumn<double>("value");
    const struct
    {
        const char* name;
        int cvType;
        int channel;
        double value;
    } rows[] = {
        {"8-bit, one channel", CV_8UC1, 0, 1.0},
        {"8-bit, one channel, value 255", CV_8UC1, 0, 255.0},
        {"16-bit, low byte zero", CV_16UC1, 0, 256.0},
        {"16-bit, high value", CV_16UC1, 0, 65535.0},
        {"8-bit, three channels, blue only", CV_8UC3, 0, 3.0},
        {"8-bit, three channels, red only", CV_8UC3, 2, 128.0},
        {"8-bit, three channels, red only, value 1", CV_8UC3, 2, 1.0},
        {"16-bit, three channels, middle only", CV_16UC3, 1, 4096.0},
        {"16-bit, three channels, last only", CV_16UC3, 2, 512.0},
        {"8-bit, four channels, alpha only", CV_8UC4, 3, 9.0},
        {"8-bit, four channels, alpha only, value 200", CV_8UC4, 3, 200.0},
        {"8-bit, two channels, second only", CV_8UC2, 1, 1.0},
        {"16-bit, four channels, second only", CV_16UC4, 1, 1.0},
    };
    for (const auto& row : rows)
        QTest::newRow(row.name) << row.cvType << row.channel << row.value;
}

// A Qt picture of one colour.
inline QImage qtPicture(int width, int height, QRgb colour, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(width, height, format);
    image.fill(colour);
    return image;
}

} // namespace Kit
