#include "imageconversion.h"

#include "VorImage.h"

#include <opencv2/core.hpp>

#include <QVector>

#include <cstring>
#include <utility>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#include <tmmintrin.h>
#endif

namespace {

// The display byte of a 16-bit value is (float)v / 65535.0f * 255.0f,
// truncated. For every 16-bit v that equals v / 257 rounded down, and that in
// turn is (v * 65281) >> 24 exactly: the fractional part of v / 257 never
// exceeds 256 / 257, far from the error of the multiplier, which stays below
// 2e-5 over the whole range. The test suite compares all 65536 values with
// the float formula.
inline uchar displayByte(ushort v)
{
    return uchar((quint32(v) * 65281u) >> 24);
}

// Display bytes of `count` 16-bit values, eight or sixteen at a time where the
// processor allows: the high half of v * 65281, shifted right by 8.
void displayBytes(const ushort* src, uchar* dst, size_t count)
{
    size_t i = 0;
#if defined(__SSE2__)
    const __m128i multiplier = _mm_set1_epi16(short(0xFF01));
    for (; i + 16 <= count; i += 16) {
        __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i));
        __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i + 8));
        low = _mm_srli_epi16(_mm_mulhi_epu16(low, multiplier), 8);
        high = _mm_srli_epi16(_mm_mulhi_epu16(high, multiplier), 8);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), _mm_packus_epi16(low, high));
    }
#endif
    for (; i < count; ++i)
        dst[i] = displayByte(src[i]);
}

// Element x of a row taken as 16 bits, for depths other than 8 and 16 bits: its
// first two bytes (its value when the element is one byte wide), so that no
// depth reads past its row.
inline ushort sixteenBitElement(const uchar* row, int x, size_t elemSize1)
{
    const uchar* e = row + size_t(x) * elemSize1;
    if (elemSize1 < 2)
        return e[0];
    ushort v;
    std::memcpy(&v, e, sizeof v);
    return v;
}

// Stores of whole frames bypass the caches where the processor allows: a
// converted frame is far larger than the caches and is read back only when it
// is painted, so writing it through the caches would first read every line of
// it from memory for nothing. Such stores are weakly ordered: a converter that
// used them ends with storesDone(), before it hands the picture on.
#if defined(__SSE2__)
inline bool streamable(const void* dst)
{
    return (reinterpret_cast<quintptr>(dst) & 15u) == 0;
}

inline void storesDone()
{
    _mm_sfence();
}
#else
inline void storesDone() {}
#endif

// One row of `width` blue, green, red byte triplets to RGB32 in memory order
// blue, green, red, 255: plain form, one pixel at a time.
void packTripletsPlain(const uchar* src, uchar* dst, int width)
{
    for (int x = 0; x < width; ++x, src += 3, dst += 4) {
        dst[0] = src[0];
        dst[1] = src[1];
        dst[2] = src[2];
        dst[3] = 255;
    }
}

#if defined(__SSE2__) && defined(__GNUC__)
// The same with the byte shuffle of SSSE3: sixteen pixels from three 16-byte
// loads, each four pixels spread to 16 bytes and given their alpha. Chosen at
// run time where the processor has SSSE3. (Stores past the caches measured no
// faster here: the source is read at the same time.)
__attribute__((target("ssse3"))) void packTripletsShuffled(const uchar* src, uchar* dst, int width)
{
    int x = 0;
    for (; x < width && !streamable(dst); ++x, src += 3, dst += 4) {
        dst[0] = src[0];
        dst[1] = src[1];
        dst[2] = src[2];
        dst[3] = 255;
    }
    // Bytes 0-11 to four pixels; -1 clears the alpha byte, set by the OR.
    const __m128i spread = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
    const __m128i alpha = _mm_set1_epi32(int(0xFF000000u));
    for (; x + 16 <= width; x += 16, src += 48, dst += 64) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + 16));
        const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + 32));
        __m128i* out = reinterpret_cast<__m128i*>(dst);
        _mm_store_si128(out, _mm_or_si128(_mm_shuffle_epi8(a, spread), alpha));
        _mm_store_si128(out + 1, _mm_or_si128(_mm_shuffle_epi8(_mm_alignr_epi8(b, a, 12), spread), alpha));
        _mm_store_si128(out + 2, _mm_or_si128(_mm_shuffle_epi8(_mm_alignr_epi8(c, b, 8), spread), alpha));
        _mm_store_si128(out + 3, _mm_or_si128(_mm_shuffle_epi8(_mm_srli_si128(c, 4), spread), alpha));
    }
    packTripletsPlain(src, dst, width - x);
}

bool hasByteShuffle()
{
    static const bool has = __builtin_cpu_supports("ssse3");
    return has;
}
#endif

void packTriplets(const uchar* src, uchar* dst, int width)
{
#if defined(__SSE2__) && defined(__GNUC__)
    if (hasByteShuffle()) {
        packTripletsShuffled(src, dst, width);
        return;
    }
#endif
    int x = 0;
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    // Four pixels from three 32-bit words; a pixel is the 32-bit value
    // 0xFF000000 | red << 16 | green << 8 | blue.
    constexpr quint32 alpha = 0xFF000000u;
    for (; x + 4 <= width; x += 4, src += 12, dst += 16) {
        quint32 a, b, c;
        std::memcpy(&a, src, 4);
        std::memcpy(&b, src + 4, 4);
        std::memcpy(&c, src + 8, 4);
        const quint32 out[4] = {a | alpha, (a >> 24) | (b << 8) | alpha, (b >> 16) | (c << 16) | alpha,
                                (c >> 8) | alpha};
        std::memcpy(dst, out, sizeof out);
    }
#endif
    packTripletsPlain(src, dst, width - x);
}

// `recycled` itself when nobody else shares its pixels and it has the size
// and format asked for, so that its buffer is written over; otherwise a new
// picture. The pixels are left as they are: every caller writes them all.
QImage pictureFor(QImage recycled, int width, int height, QImage::Format format)
{
    if (!recycled.isNull() && recycled.isDetached() && recycled.width() == width && recycled.height() == height
        && recycled.format() == format)
        return recycled;
    // Let go of the unusable buffer before the new one is taken.
    recycled = QImage();
    QImage result(width, height, format);
    return result.isNull() ? QImage() : result;
}

const QVector<QRgb>& greyTable()
{
    static const QVector<QRgb> greys = [] {
        QVector<QRgb> table(256);
        for (int i = 0; i < 256; ++i)
            table[i] = qRgb(i, i, i);
        return table;
    }();
    return greys;
}

QImage indexed8(QImage recycled, int width, int height)
{
    QImage result = pictureFor(std::move(recycled), width, height, QImage::Format_Indexed8);
    if (result.isNull())
        return result;
    if (result.colorTable() != greyTable())
        result.setColorTable(greyTable());
    return result;
}

QImage indexed8FromPackedRows(QImage recycled, const uchar* data, int width, int height)
{
    QImage result = indexed8(std::move(recycled), width, height);
    if (result.isNull())
        return result;
    for (int y = 0; y < height; ++y)
        std::memcpy(result.scanLine(y), data + size_t(width) * size_t(y), size_t(width));
    return result;
}

QImage grayFromSixteenBit(QImage recycled, const cv::Mat& mat)
{
    QImage result = indexed8(std::move(recycled), mat.cols, mat.rows);
    if (result.isNull())
        return result;
    const size_t elemSize1 = mat.elemSize1();
    for (int y = 0; y < mat.rows; ++y) {
        uchar* dst = result.scanLine(y);
        if (elemSize1 == 2) {
            displayBytes(mat.ptr<ushort>(y), dst, size_t(mat.cols));
        } else {
            const uchar* src = mat.ptr<uchar>(y);
            for (int x = 0; x < mat.cols; ++x)
                dst[x] = displayByte(sixteenBitElement(src, x, elemSize1));
        }
    }
    return result;
}

QImage colourFromThreeChannels(QImage recycled, const cv::Mat& mat, bool eightBit)
{
    QImage result = pictureFor(std::move(recycled), mat.cols, mat.rows, QImage::Format_RGB32);
    if (result.isNull())
        return result;
    const size_t elemSize1 = mat.elemSize1();
    // Display bytes of one row of a 16-bit picture, blue, green, red.
    std::vector<uchar> triplets(eightBit ? 0 : size_t(mat.cols) * 3);
    for (int y = 0; y < mat.rows; ++y) {
        uchar* dst = result.scanLine(y);
        if (eightBit) {
            packTriplets(mat.ptr<uchar>(y), dst, mat.cols);
            continue;
        }
        if (elemSize1 == 2) {
            displayBytes(mat.ptr<ushort>(y), triplets.data(), triplets.size());
        } else {
            const uchar* src = mat.ptr<uchar>(y);
            for (size_t i = 0; i < triplets.size(); ++i)
                triplets[i] = displayByte(sixteenBitElement(src, int(i), elemSize1));
        }
        packTriplets(triplets.data(), dst, mat.cols);
    }
    return result;
}

// One row of grey index bytes to RGB32: value v becomes 0xFF000000 | v * 0x010101.
void expandGreys(const uchar* src, quint32* dst, int width)
{
    int x = 0;
#if defined(__SSE2__)
    for (; x < width && !streamable(dst + x); ++x)
        dst[x] = 0xFF000000u | quint32(src[x]) * 0x010101u;
    const __m128i alpha = _mm_set1_epi32(int(0xFF000000u));
    for (; x + 16 <= width; x += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + x));
        const __m128i low = _mm_unpacklo_epi8(v, v);
        const __m128i high = _mm_unpackhi_epi8(v, v);
        __m128i* out = reinterpret_cast<__m128i*>(dst + x);
        _mm_stream_si128(out, _mm_or_si128(_mm_unpacklo_epi16(low, low), alpha));
        _mm_stream_si128(out + 1, _mm_or_si128(_mm_unpackhi_epi16(low, low), alpha));
        _mm_stream_si128(out + 2, _mm_or_si128(_mm_unpacklo_epi16(high, high), alpha));
        _mm_stream_si128(out + 3, _mm_or_si128(_mm_unpackhi_epi16(high, high), alpha));
    }
#endif
    for (; x < width; ++x)
        dst[x] = 0xFF000000u | quint32(src[x]) * 0x010101u;
}

// One row of index bytes through a full opaque colour table.
void lookUpColours(const uchar* src, quint32* dst, int width, const QRgb* table)
{
    for (int x = 0; x < width; ++x)
        dst[x] = table[src[x]];
}

} // namespace

QImage ConvertVorImageToQImage(VorImage* image)
{
    return ConvertVorImageToQImage(image, QImage());
}

QImage ConvertVorImageToQImage(VorImage* image, QImage recycled)
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
            return indexed8FromPackedRows(std::move(recycled), image->ImageData(), width, height);
        return grayFromSixteenBit(std::move(recycled), mat);
    case 3:
        return colourFromThreeChannels(std::move(recycled), mat, eightBit);
    default:
        return QImage();
    }
}

QImage ConvertIndexedToPaintImage(const QImage& image, QImage recycled)
{
    if (image.format() != QImage::Format_Indexed8)
        return QImage();
    const QVector<QRgb> table = image.colorTable();
    const bool grey = table == greyTable();
    bool opaqueFullTable = table.size() == 256;
    for (int i = 0; opaqueFullTable && i < table.size(); ++i)
        opaqueFullTable = qAlpha(table[i]) == 255;
    if (!grey && !opaqueFullTable) {
        // Short tables and see-through entries: Qt's own conversion, as the
        // paint engine would make it.
        return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                             : QImage::Format_RGB32);
    }
    QImage result = pictureFor(std::move(recycled), image.width(), image.height(), QImage::Format_RGB32);
    if (result.isNull())
        return result;
    for (int y = 0; y < image.height(); ++y) {
        quint32* dst = reinterpret_cast<quint32*>(result.scanLine(y));
        if (grey)
            expandGreys(image.constScanLine(y), dst, image.width());
        else
            lookUpColours(image.constScanLine(y), dst, image.width(), table.constData());
    }
    storesDone();
    return result;
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
