#include "regionmask.h"

#include "imageconversion.h"

#include "VorImage.h"

#include <opencv2/core.hpp>

#include <array>

namespace {

// Mask bytes are read by their low bit, the index into the colour table.
constexpr uchar kLowBit = 0x01;

constexpr int kTableSize = 256;

} // namespace

bool KeepMaskCopy(VorImage** held, const VorImage* mask)
{
    if (!held || !mask)
        return false;
    if (!*held)
        *held = new VorImage;
    **held = mask->Clone();
    return true;
}

bool IsRegionMask(const VorImage* mask)
{
    return mask && mask->Mat().type() == CV_8UC1 && mask->Width() > 0 && mask->Height() > 0;
}

void MaskToRegionImage(const VorImage* mask, QRgb inside, QImage* target)
{
    if (!target)
        return;
    if (!IsRegionMask(mask)) {
        *target = QImage();
        return;
    }
    const std::array<QRgb, 2> table = {0u, inside};
    const cv::Mat& mat = mask->Mat();
    *target = QImage(mat.cols, mat.rows, QImage::Format_ARGB32);
    // A picture too large to allocate stays null: nothing to fill.
    if (target->isNull())
        return;
    for (int y = 0; y < mat.rows; ++y) {
        const uchar* source = mat.ptr<uchar>(y);
        QRgb* line = reinterpret_cast<QRgb*>(target->scanLine(y));
        for (int x = 0; x < mat.cols; ++x)
            line[x] = table[source[x] & kLowBit];
    }
}

cv::Mat MaskToColourPicture(const VorImage* mask, uchar first, uchar second, uchar third)
{
    if (!IsRegionMask(mask))
        return cv::Mat();
    std::array<std::array<uchar, kTableSize>, 3> tables;
    const uchar values[3] = {first, second, third};
    for (size_t channel = 0; channel < tables.size(); ++channel) {
        tables[channel].fill(values[channel]);
        tables[channel][0] = 0;
    }
    const cv::Mat& mat = mask->Mat();
    cv::Mat picture(mat.rows, mat.cols, CV_8UC3);
    // Row by row at the mask's step: a padded row gives its width and no more.
    for (int y = 0; y < mat.rows; ++y) {
        const uchar* source = mat.ptr<uchar>(y);
        uchar* target = picture.ptr<uchar>(y);
        for (int x = 0; x < mat.cols; ++x, target += 3) {
            target[0] = tables[0][source[x]];
            target[1] = tables[1][source[x]];
            target[2] = tables[2][source[x]];
        }
    }
    return picture;
}

QImage EightBitPictureToQImage(VorImage* image)
{
    // Any depth code but 8 bits counts as 16 bits, which the region classes do
    // not convert.
    if (!image || image->Channels() < 1 || image->BitDepth() != CV_8U)
        return QImage();
    return ConvertVorImageToQImage(image);
}
