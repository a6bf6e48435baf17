#include "VorImage.h"

#include <opencv2/core.hpp>

VorImage::VorImage()
    : m_mat(new cv::Mat())
{
}

VorImage::VorImage(const cv::Mat& mat)
    : m_mat(new cv::Mat(mat))
{
}

VorImage::VorImage(const VorImage& other)
    : m_mat(new cv::Mat(*other.m_mat))
{
}

VorImage& VorImage::operator=(const VorImage& other)
{
    // cv::Mat's own assignment handles self-assignment and the reference count.
    *m_mat = *other.m_mat;
    return *this;
}

VorImage& VorImage::operator=(const cv::Mat& mat)
{
    *m_mat = mat;
    return *this;
}

VorImage::~VorImage()
{
    delete m_mat;
}

VorImage VorImage::Clone() const
{
    return VorImage(m_mat->clone());
}

int VorImage::Width() const
{
    return m_mat->cols;
}

int VorImage::Height() const
{
    return m_mat->rows;
}

int VorImage::Channels() const
{
    return m_mat->empty() ? 0 : m_mat->channels();
}

int VorImage::BitDepth() const
{
    return m_mat->depth();
}

int VorImage::Step() const
{
    return m_mat->empty() ? 0 : static_cast<int>(m_mat->step[0]);
}

unsigned char* VorImage::ImageData()
{
    return m_mat->empty() ? nullptr : m_mat->data;
}

const unsigned char* VorImage::ImageData() const
{
    return m_mat->empty() ? nullptr : m_mat->data;
}

cv::Mat& VorImage::Mat()
{
    return *m_mat;
}

const cv::Mat& VorImage::Mat() const
{
    return *m_mat;
}
