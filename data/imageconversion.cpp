#include "imageconversion.h"

#include "VorImage.h"

#include <opencv2/core.hpp>

#include <array>
#include <cstring>
#include <vector>

namespace {

// The display byte of a 16-bit value, exactly (float)v / 65535.0f * 255.0f
// truncated; a table of all 65536 values gives the very same bits.
const std::array<uchar, 65536>& sixteenBitTable()
{
    static const std::array<uchar, 65536> table = [] {
        std::array<uchar, 65536> t{};
        for (int v = 0; v < 65536; ++v)
            t[size_t(v)] = uchar((float)v / 65535.0f * 255.0f);
        return t;
    }();
    return table;
}

// Element x of a row taken as 16 bits: its first two bytes (its value when the
// element is one byte wide), so that no depth reads past its row.
inline ushort sixteenBitElement(const uchar* row, int x, size_t elemSize1)
{
    const uchar* e = row + size_t(x) * elemSize1;
    if (elemSize1 < 2)
        return e[0];
    ushort v;
    std::memcpy(&v, e, sizeof v);
    return v;
}

QImage indexed8FromPackedRows(const uchar* data, int width, int height)
{
    QImage result(width, height, QImage::Format_Indexed8);
    if (result.isNull())
        return QImage();
    for (int y = 0; y < height; ++y)
        std::memcpy(result.scanLine(y), data + size_t(width) * size_t(y), size_t(width));
    result.setColorCount(256);
    for (int i = 0; i < 256; ++i)
        result.setColor(i, qRgb(i, i, i));
    return result;
}

QImage grayFromSixteenBit(const cv::Mat& mat)
{
    const auto& table = sixteenBitTable();
    cv::Mat eight = cv::Mat::zeros(mat.rows, mat.cols, CV_8U);
    const size_t elemSize1 = mat.elemSize1();
    for (int y = 0; y < mat.rows; ++y) {
        const uchar* src = mat.ptr<uchar>(y);
        uchar* dst = eight.ptr<uchar>(y);
        for (int x = 0; x < mat.cols; ++x)
            dst[x] = table[sixteenBitElement(src, x, elemSize1)];
    }
    return indexed8FromPackedRows(eight.data, eight.cols, eight.rows);
}

QImage colourFromThreeChannels(const cv::Mat& mat, bool eightBit)
{
    QImage result(mat.cols, mat.rows, QImage::Format_RGB32);
    if (result.isNull())
        return QImage();
    const auto& table = sixteenBitTable();
    const size_t elemSize1 = mat.elemSize1();
    const size_t pixelSize = mat.elemSize();
    for (int y = 0; y < mat.rows; ++y) {
        const uchar* src = mat.ptr<uchar>(y);
        uchar* dst = result.scanLine(y);
        if (eightBit) {
            for (int x = 0; x < mat.cols; ++x) {
                const uchar* p = src + size_t(x) * 3;
                dst[4 * x] = p[0];
                dst[4 * x + 1] = p[1];
                dst[4 * x + 2] = p[2];
                dst[4 * x + 3] = 255;
            }
        } else {
            for (int x = 0; x < mat.cols; ++x) {
                const uchar* p = src + size_t(x) * pixelSize;
                dst[4 * x] = table[sixteenBitElement(p, 0, elemSize1)];
                dst[4 * x + 1] = table[sixteenBitElement(p, 1, elemSize1)];
                dst[4 * x + 2] = table[sixteenBitElement(p, 2, elemSize1)];
                dst[4 * x + 3] = 255;
            }
        }
    }
    return result;
}

} // namespace

QImage ConvertVorImageToQImage(VorImage* image)
{
    if (!image || image->Channels() < 1)
        return QImage();
    const cv::Mat& mat = image->Mat();
    const int width = image->Width();
    const int height = image->Height();
    const bool eightBit = image->BitDepth() == 0;
    if (width < 1 || height < 1)
        return QImage();

    switch (image->Channels()) {
    case 1:
        if (eightBit)
            return indexed8FromPackedRows(image->ImageData(), width, height);
        return grayFromSixteenBit(mat);
    case 3:
        return colourFromThreeChannels(mat, eightBit);
    default:
        return QImage();
    }
}

void ConvertQImageToVorImage(const QImage& image, VorImage* target)
{
    if (!target)
        return;
    switch (image.format()) {
    case QImage::Format_Indexed8: {
        const int width = image.width();
        const int height = image.height();
        std::vector<uchar> packed(size_t(width) * size_t(height));
        for (int y = 0; y < height; ++y)
            std::memcpy(packed.data() + size_t(width) * size_t(y), image.constScanLine(y), size_t(width));
        target->Mat() = cv::Mat(height, width, CV_8UC1, packed.data()).clone();
        break;
    }
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        target->Mat() = cv::Mat(image.height(), image.width(), CV_8UC4, const_cast<uchar*>(image.constBits()),
                                size_t(image.bytesPerLine()))
                            .clone();
        break;
    default:
        target->Mat() = cv::Mat().clone();
        break;
    }
}
