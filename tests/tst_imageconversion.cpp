#include "kitpictures.h"

#include "KESImageWnd.h"

#include <QRandomGenerator>
#include <QtTest>

#include <opencv2/core.hpp>

#include <random>
#include <utility>
#include <vector>

// Pictures of the data model turned into the QImage the window paints, and
// back. Every fast path is compared with a plain transcription of the
// per-pixel rules on random pictures of odd sizes.
class tst_ImageConversion : public QObject
{
    Q_OBJECT

private slots:
    void emptyImageGivesNullQImage();
    void nullPointerGivesNullQImage();
    void eightBitGrayIsIndexedWithGreyTable();
    void threeChannelEightBitShowsInColour();
    void unsupportedChannelCountsGiveNullQImage_data();
    void unsupportedChannelCountsGiveNullQImage();
    void sixteenBitValuesScaleBySinglePrecisionFormula_data();
    void sixteenBitValuesScaleBySinglePrecisionFormula();
    void everySixteenBitValueScalesBySinglePrecisionFormula();
    void paddedEightBitRowsAreReadAsPacked();
    void paddedSixteenBitRowsRespectTheStep();
    void otherDepthsTakeTheSixteenBitPath();

    void randomPicturesMatchPlainRules_data();
    void randomPicturesMatchPlainRules();
    void recycledPicturesMatchPlainRules_data();
    void recycledPicturesMatchPlainRules();
    void recyclingNeedsTheSameSizeAndFormat();
    void recyclingLeavesASharedPictureAlone();
    void paintFormMatchesQtConversion_data();
    void paintFormMatchesQtConversion();
    void paintFormOfOtherFormatsIsNull();

    void indexed8GoesBackPacked();
    void rgb32GoesBackAsFourChannels();
    void otherFormatsGoBackEmpty();
};

namespace {

// Colour tables of an indexed picture, and the size of a short one.
enum ColourTable { GreyTable, OpaqueColourTable, SeeThroughTable, ShortTable };
constexpr int kShortTableSize = 200;

uchar plainScale(ushort v)
{
    return uchar((float)v / 65535.0f * 255.0f);
}

// The per-pixel rules, written out the long way.
QImage plainConversion(VorImage& image)
{
    QImage result;
    if (image.Channels() < 1)
        return result;
    const int width = image.Width();
    const int height = image.Height();
    const bool eight = image.BitDepth() == 0;
    if (image.Channels() == 1) {
        cv::Mat gray;
        const uchar* data = image.ImageData();
        if (!eight) {
            gray = cv::Mat::zeros(image.Mat().rows, image.Mat().cols, CV_8U);
            for (int y = 0; y < gray.rows; ++y)
                for (int x = 0; x < gray.cols; ++x)
                    gray.at<uchar>(y, x) = plainScale(image.Mat().at<ushort>(y, x));
            data = gray.data;
        }
        result = QImage(width, height, QImage::Format_Indexed8);
        for (int y = 0; y < height; ++y)
            memcpy(result.scanLine(y), data + width * y, width);
        result.setColorCount(256);
        for (int i = 0; i < 256; ++i)
            result.setColor(i, qRgb(i, i, i));
    } else if (image.Channels() == 3) {
        std::vector<cv::Mat> planes;
        cv::split(image.Mat(), planes);
        result = QImage(width, height, QImage::Format_RGB32);
        for (int y = 0; y < height; ++y) {
            uchar* line = result.scanLine(y);
            for (int x = 0; x < width; ++x) {
                const int i = width * y + x;
                line[4 * x + 3] = 255;
                for (int c = 0; c < 3; ++c) {
                    line[4 * x + 2 - c] = eight ? planes[2 - c].data[i]
                                                : plainScale(reinterpret_cast<const ushort*>(planes[2 - c].data)[i]);
                }
            }
        }
    }
    return result;
}

} // namespace

void tst_ImageConversion::emptyImageGivesNullQImage()
{
    VorImage empty;
    QVERIFY(ConvertVorImageToQImage(&empty).isNull());
}

void tst_ImageConversion::nullPointerGivesNullQImage()
{
    QVERIFY(ConvertVorImageToQImage(nullptr).isNull());
}

void tst_ImageConversion::eightBitGrayIsIndexedWithGreyTable()
{
    cv::Mat mat(2, 3, CV_8UC1);
    for (int i = 0; i < 6; ++i)
        mat.data[i] = uchar(i * 40);
    VorImage image(mat);
    const QImage result = ConvertVorImageToQImage(&image);
    QCOMPARE(result.format(), QImage::Format_Indexed8);
    QCOMPARE(result.size(), QSize(3, 2));
    QCOMPARE(result.colorCount(), 256);
    QCOMPARE(result.color(0), qRgb(0, 0, 0));
    QCOMPARE(result.color(200), qRgb(200, 200, 200));
    QCOMPARE(result.pixelIndex(2, 1), 200);
    QCOMPARE(QColor(result.pixel(1, 0)), QColor(40, 40, 40));
}

void tst_ImageConversion::threeChannelEightBitShowsInColour()
{
    cv::Mat mat(1, 2, CV_8UC3);
    mat.at<cv::Vec3b>(0, 0) = cv::Vec3b(10, 20, 30); // blue, green, red
    mat.at<cv::Vec3b>(0, 1) = cv::Vec3b(255, 0, 7);
    VorImage image(mat);
    QCOMPARE(image.Channels(), 3);
    QCOMPARE(image.BitDepth(), 0);
    const QImage result = ConvertVorImageToQImage(&image);
    QCOMPARE(result.format(), QImage::Format_RGB32);
    QCOMPARE(QColor(result.pixel(0, 0)), QColor(30, 20, 10));
    QCOMPARE(QColor(result.pixel(1, 0)), QColor(7, 0, 255));
    QCOMPARE(qAlpha(result.pixel(1, 0)), 255);
}

void tst_ImageConversion::unsupportedChannelCountsGiveNullQImage_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("two channels") << int(CV_8UC2);
    QTest::newRow("four channels") << int(CV_8UC4);
    QTest::newRow("two channels, 16 bit") << int(CV_16UC2);
    QTest::newRow("four channels, 16 bit") << int(CV_16UC4);
}

void tst_ImageConversion::unsupportedChannelCountsGiveNullQImage()
{
    QFETCH(int, type);
    VorImage image(cv::Mat(4, 5, type, cv::Scalar::all(9)));
    QVERIFY(ConvertVorImageToQImage(&image).isNull());
}

void tst_ImageConversion::sixteenBitValuesScaleBySinglePrecisionFormula_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("shown");
    QTest::newRow("65535 shows 255") << 65535 << 255;
    QTest::newRow("65534 shows 254") << 65534 << 254;
    QTest::newRow("257 shows 1") << 257 << 1;
    QTest::newRow("256 shows 0") << 256 << 0;
    QTest::newRow("128 shows 0") << 128 << 0;
    QTest::newRow("0 shows 0") << 0 << 0;
    QTest::newRow("32768 shows 127") << 32768 << 127;
}

void tst_ImageConversion::sixteenBitValuesScaleBySinglePrecisionFormula()
{
    QFETCH(int, value);
    QFETCH(int, shown);
    VorImage gray(cv::Mat(1, 1, CV_16UC1, cv::Scalar(value)));
    QCOMPARE(ConvertVorImageToQImage(&gray).pixelIndex(0, 0), shown);
    VorImage colour(cv::Mat(1, 1, CV_16UC3, cv::Scalar(value, 0, value)));
    const QImage c = ConvertVorImageToQImage(&colour);
    QCOMPARE(qBlue(c.pixel(0, 0)), shown);
    QCOMPARE(qGreen(c.pixel(0, 0)), 0);
    QCOMPARE(qRed(c.pixel(0, 0)), shown);
}

void tst_ImageConversion::everySixteenBitValueScalesBySinglePrecisionFormula()
{
    // All 65536 values, in a grey picture and in each plane of a colour one.
    cv::Mat gray(256, 256, CV_16UC1);
    cv::Mat colour(256, 256, CV_16UC3);
    for (int v = 0; v < 65536; ++v) {
        gray.at<ushort>(v / 256, v % 256) = ushort(v);
        colour.at<cv::Vec3w>(v / 256, v % 256) = cv::Vec3w(ushort(v), ushort(65535 - v), ushort(v ^ 0x5a5a));
    }
    VorImage grayImage(gray);
    VorImage colourImage(colour);
    const QImage g = ConvertVorImageToQImage(&grayImage);
    const QImage c = ConvertVorImageToQImage(&colourImage);
    int mismatches = 0;
    for (int v = 0; v < 65536; ++v) {
        const int x = v % 256;
        const int y = v / 256;
        const QRgb px = c.pixel(x, y);
        if (g.pixelIndex(x, y) != plainScale(ushort(v)) || qBlue(px) != plainScale(ushort(v))
            || qGreen(px) != plainScale(ushort(65535 - v)) || qRed(px) != plainScale(ushort(v ^ 0x5a5a)))
            ++mismatches;
    }
    QCOMPARE(mismatches, 0);
}

void tst_ImageConversion::paddedEightBitRowsAreReadAsPacked()
{
    // A 3-wide picture in a 4-byte row: row 1 is read from byte 3, so it shears.
    cv::Mat storage(2, 4, CV_8UC1);
    const uchar bytes[] = {1, 2, 3, 99, 4, 5, 6, 99};
    memcpy(storage.data, bytes, sizeof bytes);
    VorImage image(storage(cv::Rect(0, 0, 3, 2)));
    QCOMPARE(image.Step(), 4);
    const QImage result = ConvertVorImageToQImage(&image);
    QCOMPARE(result.pixelIndex(0, 1), 99);
    QCOMPARE(result.pixelIndex(1, 1), 4);
    QCOMPARE(result.pixelIndex(2, 1), 5);
}

void tst_ImageConversion::paddedSixteenBitRowsRespectTheStep()
{
    cv::Mat storage(2, 4, CV_16UC1, cv::Scalar(65535));
    storage.at<ushort>(1, 0) = 0;
    VorImage image(storage(cv::Rect(0, 0, 3, 2)));
    const QImage result = ConvertVorImageToQImage(&image);
    QCOMPARE(result.pixelIndex(0, 1), 0);
    QCOMPARE(result.pixelIndex(1, 1), 255);
    QCOMPARE(result.pixelIndex(2, 0), 255);
}

void tst_ImageConversion::otherDepthsTakeTheSixteenBitPath()
{
    // A one-byte signed depth is not 8-bit unsigned: it is scaled like 16 bits.
    VorImage image(cv::Mat(2, 2, CV_8SC1, cv::Scalar(100)));
    const QImage result = ConvertVorImageToQImage(&image);
    QCOMPARE(result.format(), QImage::Format_Indexed8);
    QCOMPARE(result.pixelIndex(1, 1), 0);
}

void tst_ImageConversion::randomPicturesMatchPlainRules_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("8-bit gray 37 x 23") << int(CV_8UC1) << 37 << 23;
    QTest::newRow("8-bit gray 1 x 101") << int(CV_8UC1) << 1 << 101;
    QTest::newRow("8-bit colour 33 x 17") << int(CV_8UC3) << 33 << 17;
    QTest::newRow("16-bit gray 41 x 19") << int(CV_16UC1) << 41 << 19;
    QTest::newRow("16-bit colour 29 x 31") << int(CV_16UC3) << 29 << 31;
}

void tst_ImageConversion::randomPicturesMatchPlainRules()
{
    QFETCH(int, type);
    QFETCH(int, width);
    QFETCH(int, height);
    cv::Mat mat(height, width, type);
    cv::RNG rng(0x5eed + width);
    rng.fill(mat, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_8U ? 256 : 65536);
    VorImage image(mat);
    const QImage fast = ConvertVorImageToQImage(&image);
    const QImage plain = plainConversion(image);
    QCOMPARE(fast.format(), plain.format());
    QCOMPARE(fast.size(), plain.size());
    QCOMPARE(fast.colorTable(), plain.colorTable());
    // Compare the pixels of each row; the padding at a row's end holds nothing.
    const size_t rowBytes = size_t(width) * size_t(fast.depth() / 8);
    for (int y = 0; y < height; ++y)
        QVERIFY(memcmp(fast.constScanLine(y), plain.constScanLine(y), rowBytes) == 0);
}

// A stream of random frames of one kind, each converted into the buffer of the
// one before last, as the window's loads do.
void tst_ImageConversion::recycledPicturesMatchPlainRules_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("8-bit gray, odd width") << int(CV_8UC1) << 37 << 23;
    QTest::newRow("8-bit gray, 16 and a tail") << int(CV_8UC1) << 53 << 7;
    QTest::newRow("16-bit gray, odd width") << int(CV_16UC1) << 41 << 19;
    QTest::newRow("8-bit colour, odd width") << int(CV_8UC3) << 33 << 17;
    QTest::newRow("16-bit colour, odd width") << int(CV_16UC3) << 29 << 31;
    QTest::newRow("8-bit colour, one column") << int(CV_8UC3) << 1 << 9;
}

void tst_ImageConversion::recycledPicturesMatchPlainRules()
{
    QFETCH(int, type);
    QFETCH(int, width);
    QFETCH(int, height);
    cv::RNG rng(0xf4a3e + width * height);
    QImage spare;
    QImage previous;
    for (int frame = 0; frame < 4; ++frame) {
        cv::Mat mat(height, width, type);
        rng.fill(mat, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_8U ? 256 : 65536);
        VorImage image(mat);
        const QImage recycled = ConvertVorImageToQImage(&image, std::move(spare));
        const QImage plain = plainConversion(image);
        QCOMPARE(recycled.format(), plain.format());
        QCOMPARE(recycled.size(), plain.size());
        QCOMPARE(recycled.colorTable(), plain.colorTable());
        const size_t rowBytes = size_t(width) * size_t(recycled.depth() / 8);
        for (int y = 0; y < height; ++y)
            QVERIFY(memcmp(recycled.constScanLine(y), plain.constScanLine(y), rowBytes) == 0);
        if (plain.format() == QImage::Format_Indexed8) {
            const QImage paint = ConvertIndexedToPaintImage(recycled);
            QCOMPARE(paint, plain.convertToFormat(QImage::Format_RGB32));
        }
        spare = previous;
        previous = recycled;
    }
}

void tst_ImageConversion::recyclingNeedsTheSameSizeAndFormat()
{
    VorImage gray(cv::Mat(6, 8, CV_8UC1, cv::Scalar(9)));
    VorImage wider(cv::Mat(6, 9, CV_8UC1, cv::Scalar(7)));
    VorImage colour(cv::Mat(6, 8, CV_8UC3, cv::Scalar(1, 2, 3)));

    const QImage fromWrongSize = ConvertVorImageToQImage(&wider, ConvertVorImageToQImage(&gray));
    QCOMPARE(fromWrongSize.size(), QSize(9, 6));
    QCOMPARE(fromWrongSize.pixelIndex(8, 5), 7);

    const QImage fromWrongFormat = ConvertVorImageToQImage(&colour, ConvertVorImageToQImage(&gray));
    QCOMPARE(fromWrongFormat.format(), QImage::Format_RGB32);
    QCOMPARE(fromWrongFormat.pixel(7, 5), qRgb(3, 2, 1));

    QImage spare = ConvertVorImageToQImage(&wider);
    const uchar* spareBits = spare.constBits();
    VorImage widerAgain(cv::Mat(6, 9, CV_8UC1, cv::Scalar(4)));
    const QImage written = ConvertVorImageToQImage(&widerAgain, std::move(spare));
    QCOMPARE(written.constBits(), spareBits);
    QCOMPARE(written.pixelIndex(8, 5), 4);
}

void tst_ImageConversion::recyclingLeavesASharedPictureAlone()
{
    VorImage first(cv::Mat(5, 7, CV_8UC3, cv::Scalar(10, 20, 30)));
    VorImage second(cv::Mat(5, 7, CV_8UC3, cv::Scalar(40, 50, 60)));
    QImage spare = ConvertVorImageToQImage(&first);
    const QImage heldElsewhere = spare;
    const QImage converted = ConvertVorImageToQImage(&second, std::move(spare));
    QVERIFY(converted.constBits() != heldElsewhere.constBits());
    QCOMPARE(heldElsewhere.pixel(3, 3), qRgb(30, 20, 10));
    QCOMPARE(converted.pixel(3, 3), qRgb(60, 50, 40));
}

void tst_ImageConversion::paintFormMatchesQtConversion_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("table");
    QTest::newRow("grey table, odd width") << 37 << 5 << int(GreyTable);
    QTest::newRow("grey table, 16 and a tail") << 35 << 3 << int(GreyTable);
    QTest::newRow("grey table, one column") << 1 << 4 << int(GreyTable);
    QTest::newRow("opaque colour table") << 21 << 6 << int(OpaqueColourTable);
    QTest::newRow("table with see-through entries") << 19 << 4 << int(SeeThroughTable);
    QTest::newRow("short table") << 17 << 4 << int(ShortTable);
}

void tst_ImageConversion::paintFormMatchesQtConversion()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, table);
    QImage indexed(width, height, QImage::Format_Indexed8);
    QRandomGenerator random(0x9a1e7 + quint32(width));
    QVector<QRgb> colours(table == ShortTable ? kShortTableSize : 256);
    for (int i = 0; i < colours.size(); ++i) {
        switch (table) {
        case GreyTable: colours[i] = qRgb(i, i, i); break;
        case SeeThroughTable: colours[i] = qRgba(i, 255 - i, i / 2, i); break;
        default: colours[i] = 0xff000000u | (random.generate() & 0xffffffu); break;
        }
    }
    indexed.setColorTable(colours);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            indexed.scanLine(y)[x] = uchar(random.bounded(colours.size()));
    const QImage expected = indexed.convertToFormat(indexed.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                              : QImage::Format_RGB32);
    const QImage paint = ConvertIndexedToPaintImage(indexed);
    QCOMPARE(paint.format(), expected.format());
    QCOMPARE(paint, expected);
    // Again into a buffer of the same size, written over.
    QImage spare(width, height, expected.format());
    spare.fill(0x12345678u);
    const uchar* spareBits = spare.constBits();
    const QImage recycled = ConvertIndexedToPaintImage(indexed, std::move(spare));
    QCOMPARE(recycled, expected);
    // Only full opaque tables are converted here; the others go through Qt.
    if (table == GreyTable || table == OpaqueColourTable)
        QCOMPARE(recycled.constBits(), spareBits);
}

void tst_ImageConversion::paintFormOfOtherFormatsIsNull()
{
    QVERIFY(ConvertIndexedToPaintImage(QImage(4, 4, QImage::Format_RGB32)).isNull());
    QVERIFY(ConvertIndexedToPaintImage(QImage(4, 4, QImage::Format_Grayscale8)).isNull());
    QVERIFY(ConvertIndexedToPaintImage(QImage()).isNull());
}

void tst_ImageConversion::indexed8GoesBackPacked()
{
    QImage image(3, 2, QImage::Format_Indexed8); // rows padded to 4 bytes
    image.setColorCount(256);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            image.setPixel(x, y, uint(10 * y + x));
    VorImage target;
    ConvertQImageToVorImage(image, &target);
    QCOMPARE(target.Channels(), 1);
    QCOMPARE(target.Step(), 3);
    QCOMPARE(int(target.Mat().at<uchar>(1, 2)), 12);
}

void tst_ImageConversion::rgb32GoesBackAsFourChannels()
{
    QImage image(2, 2, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3, 4));
    VorImage target;
    ConvertQImageToVorImage(image, &target);
    QCOMPARE(target.Channels(), 4);
    const cv::Vec4b px = target.Mat().at<cv::Vec4b>(1, 1);
    QCOMPARE(int(px[0]), 3); // memory order of a little-endian ARGB32: blue first
    QCOMPARE(int(px[3]), 4);
    // The copy is its own: changing the QImage leaves it alone.
    image.fill(Qt::black);
    QCOMPARE(int(target.Mat().at<cv::Vec4b>(1, 1)[0]), 3);
}

void tst_ImageConversion::otherFormatsGoBackEmpty()
{
    QImage image(2, 2, QImage::Format_RGB888);
    image.fill(Qt::red);
    VorImage target = Kit::greyPicture(3, 3, 1);
    ConvertQImageToVorImage(image, &target);
    QCOMPARE(target.Width(), 0);
    QCOMPARE(target.Height(), 0);
}

QTEST_APPLESS_MAIN(tst_ImageConversion)
#include "tst_imageconversion.moc"
