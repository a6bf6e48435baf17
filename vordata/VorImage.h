#pragma once

#include "vordata_export.h"

namespace cv {
class Mat;
}

// A picture: a thin holder of one OpenCV matrix. The object has exactly one data
// member, the matrix pointer, in first place and never null on a live object;
// the window reaches into that matrix directly.
//
// Sharing: like cv::Mat itself, copies share the pixels. Construction from a
// cv::Mat, the copy constructor and operator= take a new header on the same
// reference-counted pixel buffer, so they are cheap and the copy stays readable
// after the source has gone. Use Clone() for an independent deep copy.
class VORDATA_EXPORT VorImage
{
public:
    VorImage();                       // empty: Width() and Height() are 0
    explicit VorImage(const cv::Mat& mat);
    VorImage(const VorImage& other);
    VorImage& operator=(const VorImage& other);
    VorImage& operator=(const cv::Mat& mat);
    ~VorImage();

    VorImage Clone() const;

    int Width() const;                // columns
    int Height() const;               // rows
    int Channels() const;             // 0 for an empty image
    int BitDepth() const;             // OpenCV depth code: CV_8U is 0, CV_16U is 2
    // Bytes of one row, so that Step() * Height() counts the storage of a
    // one-channel 8-bit image. 0 for an empty image.
    int Step() const;
    unsigned char* ImageData();       // first byte of the pixels; null when empty
    const unsigned char* ImageData() const;

    cv::Mat& Mat();
    const cv::Mat& Mat() const;

private:
    cv::Mat* m_mat;
};
