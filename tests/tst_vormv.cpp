// Conversions of ROIs and regions to binary pictures (VORMV).

#include "kitpictures.h"

#include "VORMV.h"
#include "VorImage.h"
#include "VorPoint.h"
#include "VorPointArray.h"
#include "VorROI.h"
#include "VorRegion.h"

#include <QString>
#include <QStringList>
#include <QtTest>

#include <opencv2/core.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

using Pixel = std::pair<int, int>;  // (x, y)
using PixelRule = std::function<bool(int x, int y)>;

VorImage pictureOf(VorROI& roi)
{
    VorImage image;
    VORMV::VorROIToBinImage(&image, roi);
    return image;
}

VorImage pictureOf(VorRegion& region)
{
    VorImage image;
    VORMV::VorRegionToBinImage(&image, region);
    return image;
}

// Empty, or one channel of 8 bits with packed rows and only 0 and 255; and
// the picture reaches exactly to its last column and row inside.
QString formatProblem(const VorImage& image)
{
    const cv::Mat& m = image.Mat();
    if (m.empty())
        return (image.Width() == 0 && image.Height() == 0) ? QString() : QStringLiteral("empty but sized");
    if (m.type() != CV_8UC1)
        return QStringLiteral("type %1").arg(m.type());
    if (static_cast<int>(m.step[0]) != m.cols || !m.isContinuous())
        return QStringLiteral("step %1 for width %2").arg(static_cast<int>(m.step[0])).arg(m.cols);
    if (image.Step() != image.Width())
        return QStringLiteral("Step() %1 for Width() %2").arg(image.Step()).arg(image.Width());
    bool lastColumnUsed = false;
    bool lastRowUsed = false;
    for (int y = 0; y < m.rows; ++y) {
        for (int x = 0; x < m.cols; ++x) {
            const unsigned char v = m.at<unsigned char>(y, x);
            if (v != 0 && v != 255)
                return QStringLiteral("value %1 at (%2, %3)").arg(v).arg(x).arg(y);
            if (v == 255 && x == m.cols - 1)
                lastColumnUsed = true;
            if (v == 255 && y == m.rows - 1)
                lastRowUsed = true;
        }
    }
    if (!lastColumnUsed || !lastRowUsed)
        return QStringLiteral("picture larger than its pixels");
    return QString();
}

bool isSet(const VorImage& image, int x, int y)
{
    const cv::Mat& m = image.Mat();
    if (x < 0 || y < 0 || x >= m.cols || y >= m.rows)
        return false;
    return m.at<unsigned char>(y, x) != 0;
}

long long countSet(const VorImage& image)
{
    const cv::Mat& m = image.Mat();
    long long n = 0;
    for (int y = 0; y < m.rows; ++y) {
        const unsigned char* row = m.ptr<unsigned char>(y);
        for (int x = 0; x < m.cols; ++x)
            n += row[x] != 0 ? 1 : 0;
    }
    return n;
}

std::vector<Pixel> setPixels(const VorImage& image)
{
    std::vector<Pixel> pixels;
    const cv::Mat& m = image.Mat();
    for (int y = 0; y < m.rows; ++y) {
        for (int x = 0; x < m.cols; ++x) {
            if (m.at<unsigned char>(y, x) != 0)
                pixels.emplace_back(x, y);
        }
    }
    return pixels;
}

// "x,y x,y ..." in doubles.
std::vector<VorPoint> verticesOf(const QString& text)
{
    std::vector<VorPoint> list;
    for (const QString& item : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList xy = item.split(QLatin1Char(','));
        list.emplace_back(xy.at(0).toDouble(), xy.at(1).toDouble());
    }
    return list;
}

// "x,y x,y ..." in any order.
std::vector<Pixel> parsePixels(const QString& text)
{
    std::vector<Pixel> pixels;
    for (const QString& item : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList xy = item.split(QLatin1Char(','));
        pixels.emplace_back(xy.at(0).toInt(), xy.at(1).toInt());
    }
    std::sort(pixels.begin(), pixels.end(), [](const Pixel& a, const Pixel& b) {
        return a.second != b.second ? a.second < b.second : a.first < b.first;
    });
    return pixels;
}

QString describe(const std::vector<Pixel>& pixels)
{
    QStringList items;
    for (const Pixel& p : pixels)
        items << QStringLiteral("%1,%2").arg(p.first).arg(p.second);
    return items.join(QLatin1Char(' '));
}

// Compares a picture with a pixel rule over the box [0, boxWidth) x [0,
// boxHeight), which must hold every pixel of the rule; also checks that the
// picture is no larger than the rule's pixels. Empty when they agree.
QString compareWithRule(const VorImage& image, int boxWidth, int boxHeight, const PixelRule& rule)
{
    int width = 0;
    int height = 0;
    for (int y = 0; y < boxHeight; ++y) {
        for (int x = 0; x < boxWidth; ++x) {
            const bool expected = rule(x, y);
            if (expected) {
                width = std::max(width, x + 1);
                height = std::max(height, y + 1);
            }
            if (isSet(image, x, y) != expected)
                return QStringLiteral("pixel (%1, %2): expected %3").arg(x).arg(y).arg(expected ? "inside" : "outside");
        }
    }
    if (image.Width() != width || image.Height() != height)
        return QStringLiteral("size %1x%2, expected %3x%4").arg(image.Width()).arg(image.Height()).arg(width).arg(height);
    return QString();
}

QString comparePictures(const VorImage& a, const VorImage& b)
{
    if (a.Width() != b.Width() || a.Height() != b.Height())
        return QStringLiteral("sizes %1x%2 and %3x%4").arg(a.Width()).arg(a.Height()).arg(b.Width()).arg(b.Height());
    for (int y = 0; y < a.Height(); ++y) {
        for (int x = 0; x < a.Width(); ++x) {
            if (isSet(a, x, y) != isSet(b, x, y))
                return QStringLiteral("pixel (%1, %2) differs").arg(x).arg(y);
        }
    }
    return QString();
}

// Number of 8-connected groups of set pixels.
int componentCount(const VorImage& image)
{
    const int w = image.Width();
    const int h = image.Height();
    std::vector<char> seen(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), 0);
    int groups = 0;
    std::vector<Pixel> stack;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            if (!isSet(image, x, y) || seen[static_cast<std::size_t>(y) * w + x])
                continue;
            ++groups;
            stack.emplace_back(x, y);
            seen[static_cast<std::size_t>(y) * w + x] = 1;
            while (!stack.empty()) {
                const Pixel p = stack.back();
                stack.pop_back();
                for (int dy = -1; dy <= 1; ++dy) {
                    for (int dx = -1; dx <= 1; ++dx) {
                        const int nx = p.first + dx;
                        const int ny = p.second + dy;
                        if (isSet(image, nx, ny) && !seen[static_cast<std::size_t>(ny) * w + nx]) {
                            seen[static_cast<std::size_t>(ny) * w + nx] = 1;
                            stack.emplace_back(nx, ny);
                        }
                    }
                }
            }
        }
    }
    return groups;
}

VorROI rect1(double ax, double ay, double bx, double by)
{
    VorROI roi;
    roi.GenRect1(VorPoint(ax, ay), VorPoint(bx, by));
    return roi;
}

VorROI rect2(double cx, double cy, double l1, double l2, double angle)
{
    VorROI roi;
    roi.GenRect2(VorPoint(cx, cy), l1, l2, angle);
    return roi;
}

VorROI circle(double cx, double cy, double r)
{
    VorROI roi;
    roi.GenCircle(VorPoint(cx, cy), r);
    return roi;
}

VorROI ellipse(double cx, double cy, double r1, double r2, double angle)
{
    VorROI roi;
    roi.GenEllipse(VorPoint(cx, cy), r1, r2, angle);
    return roi;
}

VorROI torus(double cx, double cy, double r1, double r2, double start, double sweep)
{
    VorROI roi;
    roi.GenTorus(VorPoint(cx, cy), r1, r2, start, sweep);
    return roi;
}

VorROI arc(double cx, double cy, double r, double start, double sweep)
{
    VorROI roi;
    roi.GenArc(VorPoint(cx, cy), r, start, sweep);
    return roi;
}

VorROI line(double ax, double ay, double bx, double by)
{
    VorROI roi;
    roi.GenLine(VorPoint(ax, ay), VorPoint(bx, by));
    return roi;
}

VorROI point(double x, double y)
{
    VorROI roi;
    roi.GenPoint(VorPoint(x, y));
    return roi;
}

VorPointArray points(const std::vector<VorPoint>& list)
{
    VorPointArray array;
    array.Clear();
    for (const VorPoint& p : list)
        array.Append(p);
    return array;
}

VorROI polygon(const std::vector<VorPoint>& list)
{
    VorROI roi;
    roi.GenPolygon(points(list));
    return roi;
}

VorROI polyline(const std::vector<VorPoint>& list)
{
    VorROI roi;
    roi.GenIrregular(points(list));
    return roi;
}

}  // namespace

#define VERIFY_FORMAT(image)                                                   \
    do {                                                                       \
        const QString problem_ = formatProblem(image);                         \
        QVERIFY2(problem_.isEmpty(), qPrintable(problem_));                    \
    } while (false)

#define VERIFY_SAME(problemExpression)                                         \
    do {                                                                       \
        const QString problem_ = (problemExpression);                          \
        QVERIFY2(problem_.isEmpty(), qPrintable(problem_));                    \
    } while (false)

// ---------------------------------------------------------------------------

class RectangleRaster : public QObject
{
    Q_OBJECT
private slots:
    void pixelCountAndSize_data()
    {
        QTest::addColumn<double>("ax");
        QTest::addColumn<double>("ay");
        QTest::addColumn<double>("bx");
        QTest::addColumn<double>("by");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("whole corners") << 10.0 << 10.0 << 20.0 << 15.0 << 50 << 20 << 15;
        QTest::newRow("corners swapped") << 20.0 << 15.0 << 10.0 << 10.0 << 50 << 20 << 15;
        QTest::newRow("other diagonal") << 20.0 << 10.0 << 10.0 << 15.0 << 50 << 20 << 15;
        QTest::newRow("corners on pixel centres") << 10.5 << 10.5 << 12.5 << 12.5 << 9 << 13 << 13;
        QTest::newRow("one column of centres") << 3.5 << 2.5 << 3.5 << 7.5 << 6 << 4 << 8;
        QTest::newRow("between two centres") << 3.6 << 2.0 << 4.4 << 9.0 << 0 << 0 << 0;
        QTest::newRow("cut at the origin") << -5.0 << -5.0 << 3.0 << 2.0 << 6 << 3 << 2;
        QTest::newRow("left of the image") << -10.0 << -10.0 << -1.0 << 5.0 << 0 << 0 << 0;
        QTest::newRow("odd width") << 0.0 << 0.0 << 13.0 << 3.0 << 39 << 13 << 3;
    }
    void pixelCountAndSize()
    {
        QFETCH(double, ax);
        QFETCH(double, ay);
        QFETCH(double, bx);
        QFETCH(double, by);
        QFETCH(int, count);
        QFETCH(int, width);
        QFETCH(int, height);
        VorROI roi = rect1(ax, ay, bx, by);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), static_cast<long long>(count));
        QCOMPARE(image.Width(), width);
        QCOMPARE(image.Height(), height);
        const double x0 = std::min(ax, bx), x1 = std::max(ax, bx), y0 = std::min(ay, by), y1 = std::max(ay, by);
        VERIFY_SAME(compareWithRule(image, 40, 40, [&](int x, int y) {
            return x + 0.5 >= x0 && x + 0.5 <= x1 && y + 0.5 >= y0 && y + 0.5 <= y1;
        }));
    }

    void edgePixels()
    {
        VorROI roi = rect1(10, 10, 20, 15);
        const VorImage image = pictureOf(roi);
        QVERIFY(isSet(image, 10, 10));
        QVERIFY(isSet(image, 19, 14));
        QVERIFY(isSet(image, 19, 10));
        QVERIFY(!isSet(image, 9, 10));
        QVERIFY(!isSet(image, 10, 9));
        QVERIFY(!isSet(image, 9, 9));
        QCOMPARE(static_cast<int>(image.Mat().at<unsigned char>(12, 12)), 255);
        QCOMPARE(static_cast<int>(image.Mat().at<unsigned char>(5, 5)), 0);
    }

    void packedRows()
    {
        VorROI roi = rect1(2, 1, 13, 3);
        const VorImage image = pictureOf(roi);
        QCOMPARE(image.Width(), 13);
        QCOMPARE(image.Step(), 13);
        QCOMPARE(static_cast<int>(image.Mat().step[0]), 13);
        QVERIFY(image.Mat().isContinuous());
        QCOMPARE(image.Channels(), 1);
        QCOMPARE(image.BitDepth(), CV_8U);
    }
};

// ---------------------------------------------------------------------------

class RotatedRectangleRaster : public QObject
{
    Q_OBJECT
private slots:
    void fullWidthAndHeight()
    {
        VorROI roi = rect2(50, 50, 20, 10, 0);
        VorROI reference = rect1(40, 45, 60, 55);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 200LL);
        QCOMPARE(image.Width(), 60);
        QCOMPARE(image.Height(), 55);
        VERIFY_SAME(comparePictures(image, pictureOf(reference)));
    }

    void quarterTurns_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<bool>("swapped");
        QTest::newRow("0") << 0.0 << false;
        QTest::newRow("90") << 90.0 << true;
        QTest::newRow("180") << 180.0 << false;
        QTest::newRow("270") << 270.0 << true;
        QTest::newRow("-90") << -90.0 << true;
        QTest::newRow("450") << 450.0 << true;
        QTest::newRow("-360") << -360.0 << false;
    }
    void quarterTurns()
    {
        QFETCH(double, angle);
        QFETCH(bool, swapped);
        VorROI roi = rect2(50, 50, 20, 10, angle);
        VorROI reference = swapped ? rect1(45, 40, 55, 60) : rect1(40, 45, 60, 55);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 200LL);
        VERIFY_SAME(comparePictures(image, pictureOf(reference)));
    }

    void negativeSizesCountAsPositive()
    {
        VorROI negative = rect2(30.25, 20.75, -12, -7, 25);
        VorROI positive = rect2(30.25, 20.75, 12, 7, 25);
        const VorImage image = pictureOf(negative);
        QVERIFY(countSet(image) > 0);
        VERIFY_SAME(comparePictures(image, pictureOf(positive)));
    }

    void squareAtFortyFiveDegrees()
    {
        // Own axes along the diagonals: |dx - dy| and |dx + dy| at most 10 * sqrt(2).
        // With the centre on a pixel corner both sums are whole numbers of opposite
        // parity in [-14, 14]: 15 * 14 + 14 * 15 = 420 pixels.
        VorROI roi = rect2(50, 50, 20, 20, 45);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 420LL);
        const double limit = 10.0 * std::sqrt(2.0);
        VERIFY_SAME(compareWithRule(image, 100, 100, [&](int x, int y) {
            const double dx = x + 0.5 - 50.0;
            const double dy = y + 0.5 - 50.0;
            return std::abs(dx - dy) <= limit && std::abs(dx + dy) <= limit;
        }));
        QVERIFY(isSet(image, 63, 49));
        QVERIFY(!isSet(image, 60, 60));
    }

    void angleTurnsCounterClockwiseOnScreen()
    {
        // A long thin bar turned by 30 degrees rises to the right on the screen.
        VorROI roi = rect2(50, 50, 40, 2, 30);
        const VorImage image = pictureOf(roi);
        QVERIFY(isSet(image, 62, 42));
        QVERIFY(isSet(image, 37, 57));
        QVERIFY(!isSet(image, 62, 57));
        QVERIFY(!isSet(image, 37, 42));
    }
};

// ---------------------------------------------------------------------------

class CircleRaster : public QObject
{
    Q_OBJECT
private slots:
    void followsCentreRule_data()
    {
        QTest::addColumn<double>("cx");
        QTest::addColumn<double>("cy");
        QTest::addColumn<double>("r");
        QTest::newRow("centre on a pixel centre") << 50.5 << 50.5 << 10.0;
        QTest::newRow("centre on a pixel corner") << 50.0 << 50.0 << 10.0;
        QTest::newRow("odd centre and radius") << 20.25 << 30.75 << 7.3;
        QTest::newRow("cut at the origin") << 5.0 << 3.0 << 12.0;
        QTest::newRow("tiny") << 7.4 << 7.6 << 0.3;
        QTest::newRow("large") << 200.5 << 180.0 << 150.0;
    }
    void followsCentreRule()
    {
        QFETCH(double, cx);
        QFETCH(double, cy);
        QFETCH(double, r);
        VorROI roi = circle(cx, cy, r);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        const int box = static_cast<int>(std::ceil(std::max(cx, cy) + r)) + 3;
        VERIFY_SAME(compareWithRule(image, box, box, [&](int x, int y) {
            const double dx = x + 0.5 - cx;
            const double dy = y + 0.5 - cy;
            return dx * dx + dy * dy <= r * r;
        }));
    }

    void radiusTenOnPixelCentre()
    {
        // Whole offsets (i, j) with i^2 + j^2 <= 100: 317 of them.
        VorROI roi = circle(50.5, 50.5, 10);
        const VorImage image = pictureOf(roi);
        QCOMPARE(countSet(image), 317LL);
        QCOMPARE(image.Width(), 61);
        QCOMPARE(image.Height(), 61);
        QVERIFY(isSet(image, 50, 50));
        QVERIFY(isSet(image, 60, 50));   // on the boundary
        QVERIFY(isSet(image, 50, 40));   // on the boundary
        QVERIFY(isSet(image, 56, 58));   // 6^2 + 8^2 = 100
        QVERIFY(isSet(image, 57, 57));
        QVERIFY(!isSet(image, 61, 50));
        QVERIFY(!isSet(image, 58, 57));
    }

    void zeroRadius()
    {
        VorROI onCentre = circle(5.5, 5.5, 0);
        const VorImage image = pictureOf(onCentre);
        QCOMPARE(countSet(image), 1LL);
        QVERIFY(isSet(image, 5, 5));
        QCOMPARE(image.Width(), 6);
        VorROI offCentre = circle(5, 5, 0);
        QVERIFY(pictureOf(offCentre).Mat().empty());
    }

    void negativeRadiusCountsAsPositive()
    {
        VorROI negative = circle(30.5, 30.5, -10);
        VorROI positive = circle(30.5, 30.5, 10);
        const VorImage image = pictureOf(negative);
        QCOMPARE(countSet(image), 317LL);
        VERIFY_SAME(comparePictures(image, pictureOf(positive)));
    }
};

// ---------------------------------------------------------------------------

class EllipseRaster : public QObject
{
    Q_OBJECT
private slots:
    void axisParallel_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<bool>("turned");
        QTest::newRow("0") << 0.0 << false;
        QTest::newRow("90") << 90.0 << true;
        QTest::newRow("180") << 180.0 << false;
        QTest::newRow("-90") << -90.0 << true;
        QTest::newRow("270") << 270.0 << true;
    }
    void axisParallel()
    {
        // r1 = 20, r2 = 10 about a pixel centre: whole offsets with
        // i^2 + 4 j^2 <= 400 (or 4 i^2 + j^2 turned), 629 of them.
        QFETCH(double, angle);
        QFETCH(bool, turned);
        VorROI roi = ellipse(50.5, 50.5, 20, 10, angle);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 629LL);
        VERIFY_SAME(compareWithRule(image, 100, 100, [&](int x, int y) {
            const long long i = x - 50;
            const long long j = y - 50;
            return turned ? 4 * i * i + j * j <= 400 : i * i + 4 * j * j <= 400;
        }));
        QCOMPARE(image.Width(), turned ? 61 : 71);
        QCOMPARE(image.Height(), turned ? 71 : 61);
    }

    void equalRadiiMakeACircle()
    {
        VorROI roi = ellipse(50.5, 50.5, 10.2, 10.2, 33);
        VorROI reference = circle(50.5, 50.5, 10.2);
        VERIFY_SAME(comparePictures(pictureOf(roi), pictureOf(reference)));
    }

    void angleTurnsCounterClockwiseOnScreen()
    {
        VorROI roi = ellipse(50, 50, 20, 2, 30);
        const VorImage image = pictureOf(roi);
        QVERIFY(isSet(image, 62, 42));
        QVERIFY(isSet(image, 37, 57));
        QVERIFY(!isSet(image, 62, 57));
        QVERIFY(!isSet(image, 37, 42));
    }

    void zeroRadiusLeavesASegment()
    {
        VorROI flat = ellipse(10.5, 10.5, 5, 0, 0);
        const VorImage image = pictureOf(flat);
        VERIFY_FORMAT(image);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(QStringLiteral(
            "5,10 6,10 7,10 8,10 9,10 10,10 11,10 12,10 13,10 14,10 15,10"))));
        VorROI upright = ellipse(10.5, 10.5, 5, 0, 90);
        const VorImage turned = pictureOf(upright);
        QCOMPARE(countSet(turned), 11LL);
        QVERIFY(isSet(turned, 10, 5));
        QVERIFY(isSet(turned, 10, 15));
        VorROI negative = ellipse(50.5, 50.5, -20, -10, 0);
        QCOMPARE(countSet(pictureOf(negative)), 629LL);
    }
};

// ---------------------------------------------------------------------------

class AnnulusSectorRaster : public QObject
{
    Q_OBJECT
private:
    // The ring 10 <= d <= 20 about (50, 50); no pixel centre lies on an axis.
    static bool inRing(int x, int y)
    {
        const double dx = x + 0.5 - 50.0;
        const double dy = y + 0.5 - 50.0;
        const double dd = dx * dx + dy * dy;
        return dd >= 100.0 && dd <= 400.0;
    }
    static long long ringCount()
    {
        long long n = 0;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 100; ++x)
                n += inRing(x, y) ? 1 : 0;
        return n;
    }

private slots:
    void fullRing()
    {
        VorROI roi = torus(50, 50, 10, 20, 0, 360);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        VERIFY_SAME(compareWithRule(image, 100, 100, inRing));
        QCOMPARE(countSet(image), ringCount());
        QVERIFY(!isSet(image, 50, 50));
    }

    void sectors_data()
    {
        // Which side of the centre the sector keeps: right / above on the screen.
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("sweep");
        QTest::addColumn<QString>("quadrants");  // any of R (upper right), L (upper left), l, r (lower)
        QTest::newRow("0 +90") << 0.0 << 90.0 << "R";
        QTest::newRow("90 +90") << 90.0 << 90.0 << "L";
        QTest::newRow("180 +90") << 180.0 << 90.0 << "l";
        QTest::newRow("270 +90") << 270.0 << 90.0 << "r";
        QTest::newRow("0 -90") << 0.0 << -90.0 << "r";
        QTest::newRow("-90 +90") << -90.0 << 90.0 << "r";
        QTest::newRow("450 +90") << 450.0 << 90.0 << "L";
        QTest::newRow("0 +180") << 0.0 << 180.0 << "RL";
        QTest::newRow("0 +270") << 0.0 << 270.0 << "RLl";
        QTest::newRow("0 -270") << 0.0 << -270.0 << "rlL";
        QTest::newRow("90 -180") << 90.0 << -180.0 << "Rr";
        QTest::newRow("0 +360") << 0.0 << 360.0 << "RLlr";
        QTest::newRow("33 -360") << 33.0 << -360.0 << "RLlr";
        QTest::newRow("10 +720") << 10.0 << 720.0 << "RLlr";
    }
    void sectors()
    {
        QFETCH(double, start);
        QFETCH(double, sweep);
        QFETCH(QString, quadrants);
        VorROI roi = torus(50, 50, 10, 20, start, sweep);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        auto quadrantOf = [](int x, int y) {
            const bool right = x + 0.5 > 50.0;
            const bool above = y + 0.5 < 50.0;
            return above ? (right ? QLatin1Char('R') : QLatin1Char('L')) : (right ? QLatin1Char('r') : QLatin1Char('l'));
        };
        VERIFY_SAME(compareWithRule(image, 100, 100, [&](int x, int y) {
            return inRing(x, y) && quadrants.contains(quadrantOf(x, y));
        }));
        QCOMPARE(countSet(image) * 4, ringCount() * quadrants.size());
        // A pixel well inside each quadrant of the ring.
        QCOMPARE(isSet(image, 65, 40), quadrants.contains(QLatin1Char('R')));
        QCOMPARE(isSet(image, 34, 40), quadrants.contains(QLatin1Char('L')));
        QCOMPARE(isSet(image, 34, 59), quadrants.contains(QLatin1Char('l')));
        QCOMPARE(isSet(image, 65, 59), quadrants.contains(QLatin1Char('r')));
    }

    void radiiInEitherOrder()
    {
        VorROI swapped = torus(50, 50, 20, 10, 0, 360);
        const VorImage image = pictureOf(swapped);
        VERIFY_SAME(compareWithRule(image, 100, 100, inRing));
        VorROI negative = torus(50, 50, -10, -20, 0, 360);
        VERIFY_SAME(compareWithRule(pictureOf(negative), 100, 100, inRing));
    }

    void closedSectorKeepsApexAndSides()
    {
        // Quarter disc about a pixel centre with its sides: whole offsets i >= 0,
        // j >= 0 (upwards), i^2 + j^2 <= 100: (317 - 41) / 4 + 21 = 90.
        VorROI roi = torus(50.5, 50.5, 0, 10, 0, 90);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 90LL);
        QVERIFY(isSet(image, 50, 50));   // apex
        QVERIFY(isSet(image, 60, 50));   // start side, on the circle
        QVERIFY(isSet(image, 50, 40));   // end side, on the circle
        QVERIFY(!isSet(image, 49, 50));
        QVERIFY(!isSet(image, 50, 51));
        QCOMPARE(image.Width(), 61);
        QCOMPARE(image.Height(), 51);
    }

    void zeroSweepKeepsTheStartRay()
    {
        VorROI roi = torus(50.5, 50.5, 0, 10, 0, 0);
        const VorImage image = pictureOf(roi);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(QStringLiteral(
            "50,50 51,50 52,50 53,50 54,50 55,50 56,50 57,50 58,50 59,50 60,50"))));
    }
};

// ---------------------------------------------------------------------------

class PolygonRaster : public QObject
{
    Q_OBJECT
private slots:
    void squareEqualsRectangle()
    {
        VorROI clockwise = polygon({{10, 10}, {20, 10}, {20, 15}, {10, 15}});
        VorROI counter = polygon({{10, 15}, {20, 15}, {20, 10}, {10, 10}});
        VorROI reference = rect1(10, 10, 20, 15);
        const VorImage image = pictureOf(clockwise);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 50LL);
        VERIFY_SAME(comparePictures(image, pictureOf(reference)));
        VERIFY_SAME(comparePictures(pictureOf(counter), pictureOf(reference)));
    }

    void centresOnEdgesAreInside()
    {
        // Right triangle with its corners on pixel centres: pixel (i, j) is
        // inside exactly when i + j <= 10, 66 pixels.
        VorROI roi = polygon({{0.5, 0.5}, {10.5, 0.5}, {0.5, 10.5}});
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 66LL);
        VERIFY_SAME(compareWithRule(image, 20, 20, [](int x, int y) { return x + y <= 10; }));
    }

    void concaveShape()
    {
        VorROI roi = polygon({{0, 0}, {30, 0}, {30, 10}, {10, 10}, {10, 30}, {0, 30}});
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 500LL);
        QCOMPARE(image.Width(), 30);
        QCOMPARE(image.Height(), 30);
        QVERIFY(!isSet(image, 20, 20));
        QVERIFY(!isSet(image, 10, 10));
        QVERIFY(isSet(image, 9, 10));
        QVERIFY(isSet(image, 5, 25));
        QVERIFY(isSet(image, 25, 5));
    }

    void crossedEdges()
    {
        // A bow tie: two triangles touching at (5, 5), 30 pixels each.
        VorROI roi = polygon({{0, 0}, {10, 10}, {10, 0}, {0, 10}});
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 60LL);
        VERIFY_SAME(compareWithRule(image, 20, 20, [](int x, int y) {
            const double px = x + 0.5;
            const double py = y + 0.5;
            return (px <= std::min(py, 10.0 - py)) || (px >= std::max(py, 10.0 - py) && px <= 10.0);
        }));
    }

    void starLeavesItsCoreOut()
    {
        // A five-pointed star drawn in one stroke: the core pentagon is crossed
        // twice and is outside by the even-odd rule.
        std::vector<VorPoint> star;
        const double pi = 3.14159265358979323846;
        for (int k = 0; k < 5; ++k) {
            const double a = (90.0 + 144.0 * k) * pi / 180.0;
            star.emplace_back(50.0 + 40.0 * std::cos(a), 50.0 - 40.0 * std::sin(a));
        }
        VorROI roi = polygon(star);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QVERIFY(!isSet(image, 50, 50));
        QVERIFY(!isSet(image, 50, 45));
        QVERIFY(isSet(image, 50, 30));
        QVERIFY(isSet(image, 50, 12));
        QVERIFY(!isSet(image, 50, 8));
    }

    void fewVertices_data()
    {
        QTest::addColumn<QString>("vertices");  // "x,y x,y ..." in doubles
        QTest::addColumn<QString>("pixels");
        QTest::newRow("none") << "" << "";
        QTest::newRow("one on a centre") << "3.5,4.5" << "3,4";
        QTest::newRow("one off centre") << "3.2,4.5" << "3,4";
        QTest::newRow("two: a segment") << "0.5,0.5 5.5,0.5" << "0,0 1,0 2,0 3,0 4,0 5,0";
        QTest::newRow("collinear three") << "0.5,0.5 2.5,2.5 4.5,4.5" << "0,0 1,1 2,2 3,3 4,4";
    }
    void fewVertices()
    {
        QFETCH(QString, vertices);
        QFETCH(QString, pixels);
        VorROI roi = polygon(verticesOf(vertices));
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(pixels)));
    }
};

// ---------------------------------------------------------------------------

class LineRaster : public QObject
{
    Q_OBJECT
private slots:
    void pixels_data()
    {
        QTest::addColumn<double>("ax");
        QTest::addColumn<double>("ay");
        QTest::addColumn<double>("bx");
        QTest::addColumn<double>("by");
        QTest::addColumn<QString>("pixels");
        QTest::newRow("horizontal") << 0.5 << 0.5 << 10.2 << 0.9
                                    << "0,0 1,0 2,0 3,0 4,0 5,0 6,0 7,0 8,0 9,0 10,0";
        QTest::newRow("diagonal") << 0.0 << 0.0 << 10.0 << 10.0
                                  << "0,0 1,1 2,2 3,3 4,4 5,5 6,6 7,7 8,8 9,9 10,10";
        QTest::newRow("falling diagonal") << 0.0 << 10.0 << 10.0 << 0.0
                                          << "0,10 1,9 2,8 3,7 4,6 5,5 6,4 7,3 8,2 9,1 10,0";
        // Exactly between two rows the lower row number is taken.
        QTest::newRow("shallow") << 0.9 << 0.9 << 10.2 << 5.7
                                 << "0,0 1,0 2,1 3,1 4,2 5,2 6,3 7,3 8,4 9,4 10,5";
        QTest::newRow("shallow reversed") << 10.2 << 5.7 << 0.9 << 0.9
                                          << "0,0 1,0 2,1 3,1 4,2 5,2 6,3 7,3 8,4 9,4 10,5";
        QTest::newRow("steep") << 2.3 << 0.1 << 4.7 << 10.5
                               << "2,0 2,1 2,2 3,3 3,4 3,5 3,6 3,7 4,8 4,9 4,10";
        QTest::newRow("steep reversed") << 4.7 << 10.5 << 2.3 << 0.1
                                        << "2,0 2,1 2,2 3,3 3,4 3,5 3,6 3,7 4,8 4,9 4,10";
        QTest::newRow("steep tie") << 0.0 << 0.0 << 1.0 << 2.0 << "0,0 0,1 1,2";
        QTest::newRow("cut at the origin") << -10.5 << -10.5 << 10.5 << 10.5
                                           << "0,0 1,1 2,2 3,3 4,4 5,5 6,6 7,7 8,8 9,9 10,10";
        QTest::newRow("both ends in one pixel") << 3.9 << 4.1 << 3.2 << 4.8 << "3,4";
        QTest::newRow("left of the image") << -5.0 << 0.0 << -1.0 << 8.0 << "";
    }
    void pixels()
    {
        QFETCH(double, ax);
        QFETCH(double, ay);
        QFETCH(double, bx);
        QFETCH(double, by);
        QFETCH(QString, pixels);
        VorROI roi = line(ax, ay, bx, by);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(pixels)));
    }

    void farEnds()
    {
        VorROI along = line(0.5, 5.5, 1e12, 5.5);
        const VorImage row = pictureOf(along);
        VERIFY_FORMAT(row);
        QCOMPARE(row.Width(), 16384);
        QCOMPARE(row.Height(), 6);
        QCOMPARE(countSet(row), 16384LL);

        VorROI down = line(5.5, 0.5, 5.5, 1e12);
        const VorImage column = pictureOf(down);
        QCOMPARE(column.Width(), 6);
        QCOMPARE(column.Height(), 16384);
        QCOMPARE(countSet(column), 16384LL);

        // A shallow slope towards a far end: one pixel per column, on the line.
        VorROI slope = line(0, 0, 2e9, 1e6);
        const VorImage sloped = pictureOf(slope);
        VERIFY_FORMAT(sloped);
        QCOMPARE(sloped.Width(), 16384);
        QCOMPARE(countSet(sloped), 16384LL);
        for (int x = 0; x < 16384; x += 97) {
            int hits = 0;
            for (int y = 0; y < sloped.Height(); ++y) {
                if (isSet(sloped, x, y)) {
                    ++hits;
                    QVERIFY(std::abs(y - x / 2000.0) <= 1.0);
                }
            }
            QCOMPARE(hits, 1);
        }
    }
};

// ---------------------------------------------------------------------------

class FreeLineRaster : public QObject
{
    Q_OBJECT
private slots:
    void openPolyline()
    {
        VorROI roi = polyline({{0, 0}, {10, 0}, {10, 10}});
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(countSet(image), 21LL);
        QCOMPARE(image.Width(), 11);
        QCOMPARE(image.Height(), 11);
        QVERIFY(isSet(image, 0, 0));
        QVERIFY(isSet(image, 10, 0));
        QVERIFY(isSet(image, 10, 10));
        QVERIFY(!isSet(image, 5, 5));  // no closing side
        QCOMPARE(componentCount(image), 1);
    }

    void zigzag()
    {
        VorROI roi = polyline({{0.5, 0.5}, {4.5, 4.5}, {8.5, 0.5}, {8.5, 3.5}});
        const VorImage image = pictureOf(roi);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(QStringLiteral(
            "0,0 1,1 2,2 3,3 4,4 5,3 6,2 7,1 8,0 8,1 8,2 8,3"))));
    }

    void oneOrNoVertex()
    {
        VorROI single = polyline({{3.5, 4.5}});
        QCOMPARE(describe(setPixels(pictureOf(single))), QStringLiteral("3,4"));
        VorROI none = polyline({});
        QVERIFY(pictureOf(none).Mat().empty());
    }
};

// ---------------------------------------------------------------------------

class ArcRaster : public QObject
{
    Q_OBJECT
private slots:
    void endsAndSides_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("sweep");
        QTest::addColumn<int>("ax");
        QTest::addColumn<int>("ay");
        QTest::addColumn<int>("bx");
        QTest::addColumn<int>("by");
        QTest::addColumn<QString>("absent");
        QTest::newRow("0 +90") << 0.0 << 90.0 << 70 << 50 << 50 << 30 << "30,50 50,70";
        QTest::newRow("0 -90") << 0.0 << -90.0 << 70 << 50 << 50 << 70 << "30,50 50,30";
        QTest::newRow("90 +180") << 90.0 << 180.0 << 50 << 30 << 50 << 70 << "70,50";
        QTest::newRow("180 +90") << 180.0 << 90.0 << 30 << 50 << 50 << 70 << "70,50 50,30";
        QTest::newRow("270 -270") << 270.0 << -270.0 << 50 << 70 << 70 << 50 << "64,64";
    }
    void endsAndSides()
    {
        QFETCH(double, start);
        QFETCH(double, sweep);
        QFETCH(int, ax);
        QFETCH(int, ay);
        QFETCH(int, bx);
        QFETCH(int, by);
        QFETCH(QString, absent);
        VorROI roi = arc(50, 50, 20, start, sweep);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QVERIFY(isSet(image, ax, ay));
        QVERIFY(isSet(image, bx, by));
        for (const Pixel& p : parsePixels(absent))
            QVERIFY2(!isSet(image, p.first, p.second), qPrintable(QStringLiteral("%1,%2").arg(p.first).arg(p.second)));
        QCOMPARE(componentCount(image), 1);
        // Every pixel lies on the circle, up to the pixel grid.
        for (const Pixel& p : setPixels(image)) {
            const double d = std::hypot(p.first + 0.5 - 50.0, p.second + 0.5 - 50.0);
            QVERIFY(std::abs(d - 20.0) <= 1.5);
        }
    }

    void fullTurnClosesTheCircle()
    {
        VorROI roi = arc(50, 50, 20, 0, 360);
        const VorImage image = pictureOf(roi);
        QCOMPARE(componentCount(image), 1);
        for (int x = 31; x <= 69; ++x) {
            bool top = false;
            bool bottom = false;
            for (int y = 0; y < 50; ++y)
                top = top || isSet(image, x, y);
            for (int y = 50; y < image.Height(); ++y)
                bottom = bottom || isSet(image, x, y);
            QVERIFY(top);
            QVERIFY(bottom);
        }
        QVERIFY(!isSet(image, 50, 50));
    }

    void quarterFollowsItsCircle()
    {
        // Upper right quarter: each column between the ends holds pixels only
        // where the circle crosses it.
        VorROI roi = arc(50, 50, 20, 0, 90);
        const VorImage image = pictureOf(roi);
        for (int x = 51; x <= 69; ++x) {
            const double yLeft = 50.0 - std::sqrt(400.0 - (x - 50.0) * (x - 50.0));
            const double yRight = 50.0 - std::sqrt(std::max(0.0, 400.0 - (x + 1 - 50.0) * (x + 1 - 50.0)));
            int hits = 0;
            for (int y = 0; y < image.Height(); ++y) {
                if (isSet(image, x, y)) {
                    ++hits;
                    QVERIFY(y >= std::floor(yLeft) - 1 && y <= std::floor(yRight) + 1);
                }
            }
            QVERIFY(hits > 0);
        }
    }

    void zeroRadius()
    {
        VorROI roi = arc(7.5, 3.2, 0, 10, 90);
        QCOMPARE(describe(setPixels(pictureOf(roi))), QStringLiteral("7,3"));
    }

    void farCentres_data()
    {
        QTest::addColumn<double>("r");
        QTest::newRow("1e8") << 1e8;
        QTest::newRow("1e9") << 1e9;
        QTest::newRow("1e12") << 1e12;
    }
    void farCentres()
    {
        // The right half of a circle whose rightmost point is (100, 500): in the
        // picture it runs down near column 100 through every row.
        QFETCH(double, r);
        VorROI roi = arc(100.0 - r, 500.0, r, -90, 180);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Height(), 16384);
        QVERIFY(image.Width() == 100 || image.Width() == 101);
        const double cx = 100.0 - r;
        for (int y = 0; y < image.Height(); ++y) {
            const double dy = y + 0.5 - 500.0;
            const double x = cx + std::sqrt(r * r - dy * dy);
            int hits = 0;
            for (int c = 0; c < image.Width(); ++c) {
                if (isSet(image, c, y)) {
                    ++hits;
                    QVERIFY2(std::abs(c + 0.5 - x) <= 1.5, qPrintable(QStringLiteral("row %1 column %2").arg(y).arg(c)));
                }
            }
            QVERIFY2(hits > 0, qPrintable(QStringLiteral("row %1").arg(y)));
        }
        QCOMPARE(componentCount(image), 1);
    }
};

// ---------------------------------------------------------------------------

class PointRaster : public QObject
{
    Q_OBJECT
private slots:
    void pixelHoldingThePoint_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("inside a pixel") << 3.7 << 4.2 << 4 << 5;
        QTest::newRow("origin") << 0.0 << 0.0 << 1 << 1;
        QTest::newRow("on a pixel corner") << 6.0 << 2.0 << 7 << 3;
        QTest::newRow("last pixel") << 16383.9 << 0.1 << 16384 << 1;
        QTest::newRow("negative") << -0.5 << 3.0 << 0 << 0;
        QTest::newRow("beyond the limit") << 16384.0 << 1.0 << 0 << 0;
    }
    void pixelHoldingThePoint()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(int, width);
        QFETCH(int, height);
        VorROI roi = point(x, y);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Width(), width);
        QCOMPARE(image.Height(), height);
        QCOMPARE(countSet(image), width > 0 ? 1LL : 0LL);
        if (width > 0)
            QVERIFY(isSet(image, width - 1, height - 1));
    }
};

// ---------------------------------------------------------------------------

class MaskRaster : public QObject
{
    Q_OBJECT
private slots:
    void nonZeroPixelsCropped()
    {
        cv::Mat mask = cv::Mat::zeros(80, 100, CV_8UC1);
        mask.at<unsigned char>(20, 10) = 1;
        mask.at<unsigned char>(40, 30) = 128;
        mask.at<unsigned char>(5, 5) = 255;
        VorROI roi;
        roi.GenMask(VorImage(mask));
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Width(), 31);
        QCOMPARE(image.Height(), 41);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(QStringLiteral("10,20 30,40 5,5"))));
    }

    void anyChannel()
    {
        cv::Mat mask = cv::Mat::zeros(10, 10, CV_8UC3);
        mask.at<cv::Vec3b>(3, 7) = cv::Vec3b(0, 9, 0);
        VorROI roi;
        roi.GenMask(VorImage(mask));
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(describe(setPixels(image)), QStringLiteral("7,3"));
    }

    void nothingSet()
    {
        VorROI roi;
        roi.GenMask(VorImage(cv::Mat::zeros(10, 10, CV_8UC1)));
        QVERIFY(pictureOf(roi).Mat().empty());
        VorROI empty;
        empty.GenMask(VorImage());
        QVERIFY(pictureOf(empty).Mat().empty());
    }

    void cutAtTheLimit()
    {
        cv::Mat mask = cv::Mat::zeros(1, 16400, CV_8UC1);
        mask.at<unsigned char>(0, 100) = 255;
        mask.at<unsigned char>(0, 16390) = 255;
        VorROI roi;
        roi.GenMask(VorImage(mask));
        const VorImage image = pictureOf(roi);
        QCOMPARE(image.Width(), 101);
        QCOMPARE(countSet(image), 1LL);
        mask.at<unsigned char>(0, 16383) = 255;
        roi.GenMask(VorImage(mask));
        const VorImage wide = pictureOf(roi);
        QCOMPARE(wide.Width(), 16384);
        QCOMPARE(countSet(wide), 2LL);
    }
};

// ---------------------------------------------------------------------------

class RegionConversion : public QObject
{
    Q_OBJECT
private slots:
    void paintsRuns()
    {
        VorRegion region;
        region.SetRuns({{2, 3, 6}, {5, 0, 1}});
        const VorImage image = pictureOf(region);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Width(), 6);
        QCOMPARE(image.Height(), 6);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(QStringLiteral("3,2 4,2 5,2 0,5"))));
    }

    void pictureRoundTrip()
    {
        cv::Mat source = cv::Mat::zeros(30, 40, CV_8UC1);
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                source.at<unsigned char>(y, x) = ((x * 7 + y * 13) % 5 == 0 || x == 39 || y == 29) ? 255 : 0;
        const VorImage original(source);
        VorRegion region(original);
        const VorImage painted = pictureOf(region);
        VERIFY_FORMAT(painted);
        VERIFY_SAME(comparePictures(painted, original));
    }

    void roiToRegionMatchesPicture_data()
    {
        QTest::addColumn<int>("kind");
        for (int kind = 0; kind <= 11; ++kind)
            QTest::newRow(qPrintable(QStringLiteral("kind %1").arg(kind))) << kind;
    }
    void roiToRegionMatchesPicture()
    {
        QFETCH(int, kind);
        VorROI roi;
        switch (kind) {
        case VorROI::ROI_RECT1: roi = rect1(3, 4, 20, 9); break;
        case VorROI::ROI_CIRCLE: roi = circle(30.5, 20.5, 10); break;
        case VorROI::ROI_TORUS: roi = torus(40, 40, 5, 15, 30, 200); break;
        case VorROI::ROI_NONE: break;
        case VorROI::ROI_POLYGON: roi = polygon({{0, 0}, {30, 0}, {30, 10}, {10, 10}, {10, 30}, {0, 30}}); break;
        case VorROI::ROI_IRREGULAR: roi = polyline({{1, 1}, {20, 5}, {3, 17}}); break;
        case VorROI::ROI_RECT2: roi = rect2(30, 30, 25, 8, 20); break;
        case VorROI::ROI_LINE: roi = line(2, 30, 40, 3); break;
        case VorROI::ROI_ELLIPSE: roi = ellipse(30, 30, 20, 6, -35); break;
        case VorROI::ROI_ARC: roi = arc(30, 30, 12, 45, 250); break;
        case VorROI::ROI_POINT: roi = point(9.5, 2.5); break;
        case VorROI::ROI_MASK: {
            cv::Mat mask = cv::Mat::zeros(20, 20, CV_8UC1);
            cv::Mat(mask, cv::Rect(2, 3, 5, 4)).setTo(200);
            roi.GenMask(VorImage(mask));
            break;
        }
        default: break;
        }
        QCOMPARE(roi.ROIType(), kind);
        const VorImage image = pictureOf(roi);
        VorRegion region;
        region.SetRuns({{0, 0, 3}});
        VORMV::VorROIToRegion(&region, roi);
        QVERIFY(region == VorRegion(image));
        QCOMPARE(region.Area(), countSet(image));
        QCOMPARE(region.Width(), image.Width());
        QCOMPARE(region.Height(), image.Height());
        QCOMPARE(region.IsEmpty(), kind == VorROI::ROI_NONE);
        VERIFY_SAME(comparePictures(pictureOf(region), image));
    }

    void runsBeyondTheLimitCut()
    {
        VorRegion region;
        region.SetRuns({{0, 16380, 16400}, {16390, 0, 5}});
        const VorImage image = pictureOf(region);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Width(), 16384);
        QCOMPARE(image.Height(), 1);
        QCOMPARE(countSet(image), 4LL);
    }

    void emptyRegion()
    {
        VorRegion region;
        VorImage image = Kit::greyPicture(4, 4, 255);
        VORMV::VorRegionToBinImage(&image, region);
        QVERIFY(image.Mat().empty());
        QCOMPARE(image.Width(), 0);
        QCOMPARE(image.Height(), 0);
    }
};

// ---------------------------------------------------------------------------

class DegenerateInput : public QObject
{
    Q_OBJECT
private slots:
    void noKind()
    {
        VorROI roi;
        VorImage image = Kit::greyPicture(5, 5, 255);
        VORMV::VorROIToBinImage(&image, roi);
        QVERIFY(image.Mat().empty());
        QCOMPARE(image.Width(), 0);
        VorRegion region;
        region.SetRuns({{1, 1, 4}});
        VORMV::VorROIToRegion(&region, roi);
        QVERIFY(region.IsEmpty());
    }

    void notFinite_data()
    {
        QTest::addColumn<int>("which");
        const char* names[] = {"rect NaN corner", "rect infinite corner", "rotated rect NaN angle",
                               "rotated rect infinite width", "circle infinite radius", "circle NaN centre",
                               "ellipse NaN radius", "torus NaN sweep", "torus infinite start",
                               "polygon NaN vertex", "free line infinite vertex", "line NaN end",
                               "arc infinite start", "arc NaN radius", "point NaN"};
        for (int i = 0; i < static_cast<int>(sizeof(names) / sizeof(names[0])); ++i)
            QTest::newRow(names[i]) << i;
    }
    void notFinite()
    {
        QFETCH(int, which);
        VorROI roi;
        switch (which) {
        case 0: roi = rect1(0, 0, kNaN, 10); break;
        case 1: roi = rect1(0, 0, kInf, 10); break;
        case 2: roi = rect2(10, 10, 5, 5, kNaN); break;
        case 3: roi = rect2(10, 10, kInf, 5, 0); break;
        case 4: roi = circle(10, 10, kInf); break;
        case 5: roi = circle(kNaN, 10, 5); break;
        case 6: roi = ellipse(10, 10, kNaN, 5, 0); break;
        case 7: roi = torus(10, 10, 2, 5, 0, kNaN); break;
        case 8: roi = torus(10, 10, 2, 5, -kInf, 90); break;
        case 9: roi = polygon({{0, 0}, {10, 0}, {kNaN, 10}}); break;
        case 10: roi = polyline({{0, 0}, {10, 0}, {10, kInf}}); break;
        case 11: roi = line(0, 0, kNaN, 5); break;
        case 12: roi = arc(10, 10, 5, kInf, 90); break;
        case 13: roi = arc(10, 10, kNaN, 0, 90); break;
        case 14: roi = point(kNaN, 1); break;
        default: break;
        }
        VorImage image = Kit::greyPicture(5, 5, 255);
        VORMV::VorROIToBinImage(&image, roi);
        QVERIFY(image.Mat().empty());
        VorRegion region;
        region.SetRuns({{1, 1, 4}});
        VORMV::VorROIToRegion(&region, roi);
        QVERIFY(region.IsEmpty());
    }

    void farFigures_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<qlonglong>("count");
        QTest::newRow("rectangle from far away") << 0 << 16384 << 3 << 49152LL;
        QTest::newRow("circle far away") << 1 << 0 << 0 << 0LL;
        QTest::newRow("circle with a far centre") << 2 << 10 << 16384 << 163840LL;
        QTest::newRow("ring with a far centre") << 3 << 10 << 16384 << 163840LL;
        QTest::newRow("polygon with a far vertex") << 4 << 16384 << 10 << 163840LL;
        QTest::newRow("polygon with a very far vertex") << 5 << 16384 << 10 << 163840LL;
        QTest::newRow("long rotated rectangle") << 6 << 16384 << 3 << 49152LL;
        QTest::newRow("long ellipse") << 7 << 16384 << 3 << 49152LL;
        QTest::newRow("ellipse far away") << 8 << 0 << 0 << 0LL;
        QTest::newRow("huge rotated rectangle") << 9 << 16384 << 2 << 32768LL;
    }
    void farFigures()
    {
        QFETCH(int, which);
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(qlonglong, count);
        VorROI roi;
        switch (which) {
        case 0: roi = rect1(-1e12, -1e12, 1e12, 3); break;
        case 1: roi = circle(1e12, 1e12, 5); break;
        case 2: roi = circle(-1e12, 5, 1e12 + 10); break;
        case 3: roi = torus(-1e12, 5, 0, 1e12 + 10, 0, 360); break;
        case 4: roi = polygon({{0, 0}, {1e12, 0}, {0, 10}}); break;
        case 5: roi = polygon({{0, 0}, {1e300, 0}, {0, 10}}); break;
        case 6: roi = rect2(0, 0, 2e12, 6, 0); break;
        case 7: roi = ellipse(0, 0, 1e12, 3, 0); break;
        case 8: roi = ellipse(-1e12, -1e12, 1e6, 1e6, 17); break;
        case 9: roi = rect2(0, 0, 1e300, 4, 180); break;
        default: break;
        }
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Width(), width);
        QCOMPARE(image.Height(), height);
        QCOMPARE(countSet(image), static_cast<long long>(count));
        VorRegion region;
        VORMV::VorROIToRegion(&region, roi);
        QCOMPARE(region.Area(), static_cast<long long>(count));
    }

    void nullTargets()
    {
        VorROI roi = rect1(0, 0, 5, 5);
        VORMV::VorROIToBinImage(nullptr, roi);
        VORMV::VorROIToRegion(nullptr, roi);
        VorRegion region;
        region.SetRuns({{0, 0, 3}});
        VORMV::VorRegionToBinImage(nullptr, region);
        QCOMPARE(region.Area(), 3LL);
    }

    void sharedPixelsUntouched()
    {
        VorImage first = Kit::greyPicture(5, 5, 7);
        VorImage second = first;
        VorROI roi = rect1(0, 0, 2, 2);
        VORMV::VorROIToBinImage(&second, roi);
        QCOMPARE(second.Width(), 2);
        QCOMPARE(countSet(second), 4LL);
        QCOMPARE(first.Width(), 5);
        QCOMPARE(cv::countNonZero(first.Mat() != 7), 0);
    }
};

// ---------------------------------------------------------------------------

namespace {

// The straightforward walk of a line, the reference for the walk that skips
// what cannot meet the picture: the ends are cut to a box of 2^28 pixels about
// the origin, floored, and then every step along the longer axis between them
// is taken and tested against the picture.
std::vector<Pixel> fullWalk(double ax, double ay, double bx, double by)
{
    using Index = long long;
    const double box = 268435456.0;
    const Index limit = 16384;
    std::vector<Pixel> pixels;
    double t0 = 0.0;
    double t1 = 1.0;
    const double dxr = bx - ax;
    const double dyr = by - ay;
    const double p[4] = {-dxr, dxr, -dyr, dyr};
    const double q[4] = {ax + box, box - ax, ay + box, box - ay};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0.0)
                return pixels;
        } else {
            const double t = q[i] / p[i];
            if (p[i] < 0.0)
                t0 = std::max(t0, t);
            else
                t1 = std::min(t1, t);
        }
    }
    if (!(t0 <= t1))
        return pixels;
    double x0r = ax;
    double y0r = ay;
    double x1r = bx;
    double y1r = by;
    if (t0 > 0.0) {
        x0r = ax + t0 * dxr;
        y0r = ay + t0 * dyr;
    }
    if (t1 < 1.0) {
        x1r = ax + t1 * dxr;
        y1r = ay + t1 * dyr;
    }
    auto toBox = [box](double v) { return std::min(std::max(std::floor(v), -box), box); };
    Index x0 = static_cast<Index>(toBox(x0r));
    Index y0 = static_cast<Index>(toBox(y0r));
    Index x1 = static_cast<Index>(toBox(x1r));
    Index y1 = static_cast<Index>(toBox(y1r));
    auto ceilDiv = [](Index n, Index d) {
        const Index quotient = n / d;
        return (n % d != 0 && n > 0) ? quotient + 1 : quotient;
    };
    if (std::abs(x1 - x0) >= std::abs(y1 - y0)) {
        if (x1 < x0) {
            std::swap(x0, x1);
            std::swap(y0, y1);
        }
        const Index dx = x1 - x0;
        const Index dy = y1 - y0;
        for (Index x = std::max<Index>(x0, 0); x <= std::min<Index>(x1, limit - 1); ++x) {
            const Index y = dx == 0 ? y0 : y0 + ceilDiv(2 * (x - x0) * dy - dx, 2 * dx);
            if (y >= 0 && y < limit)
                pixels.emplace_back(static_cast<int>(x), static_cast<int>(y));
        }
    } else {
        if (y1 < y0) {
            std::swap(x0, x1);
            std::swap(y0, y1);
        }
        const Index dx = x1 - x0;
        const Index dy = y1 - y0;
        for (Index y = std::max<Index>(y0, 0); y <= std::min<Index>(y1, limit - 1); ++y) {
            const Index x = x0 + ceilDiv(2 * (y - y0) * dx - dy, 2 * dy);
            if (x >= 0 && x < limit)
                pixels.emplace_back(static_cast<int>(x), static_cast<int>(y));
        }
    }
    return pixels;
}

// Row by row, then column by column, each pixel once.
std::vector<Pixel> normalised(std::vector<Pixel> pixels)
{
    std::sort(pixels.begin(), pixels.end(), [](const Pixel& a, const Pixel& b) {
        return a.second != b.second ? a.second < b.second : a.first < b.first;
    });
    pixels.erase(std::unique(pixels.begin(), pixels.end()), pixels.end());
    return pixels;
}

std::vector<Pixel> regionPixels(const VorRegion& region)
{
    std::vector<Pixel> pixels;
    for (const VorRegion::Run& run : region.Runs()) {
        for (int x = run.columnBegin; x < run.columnEnd; ++x)
            pixels.emplace_back(x, run.row);
    }
    return pixels;
}

std::vector<Pixel> walkedPixels(VorROI& roi)
{
    VorRegion region;
    VORMV::VorROIToRegion(&region, roi);
    return regionPixels(region);
}

// A small fixed-seed generator (splitmix64), so that every run tests the same
// segments.
class SegmentRandom
{
public:
    explicit SegmentRandom(unsigned long long seed) : m_state(seed) {}

    double uniform(double low, double high)
    {
        const double unit = static_cast<double>(next() >> 11) * (1.0 / 9007199254740992.0);
        return low + (high - low) * unit;
    }

    // Whole, half or any: the walk treats ends on pixel borders and centres
    // with care, so they come often.
    double coordinate(double low, double high)
    {
        const double v = uniform(low, high);
        switch (next() % 3) {
        case 0: return std::floor(v);
        case 1: return std::floor(v) + 0.5;
        default: return v;
        }
    }

    bool coin() { return (next() & 1) != 0; }

private:
    unsigned long long next()
    {
        unsigned long long z = (m_state += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    unsigned long long m_state;
};

enum class SegmentKind { Near, Crossing, FarOutside, AtOneBillion, InsideToOneBillion, SteepOrShallow };

// One end of a segment of the kind.
void randomSegment(SegmentRandom& random, SegmentKind kind, double* ends)
{
    const double picture = 16384.0;
    const double billion = 1e9;
    switch (kind) {
    case SegmentKind::Near:
        ends[0] = random.coordinate(-40.0, picture + 40.0);
        ends[1] = random.coordinate(-40.0, picture + 40.0);
        ends[2] = ends[0] + random.coordinate(-60.0, 60.0);
        ends[3] = ends[1] + random.coordinate(-60.0, 60.0);
        break;
    case SegmentKind::Crossing:
        for (int i = 0; i < 4; ++i)
            ends[i] = random.coordinate(-50000.0, 50000.0);
        break;
    case SegmentKind::FarOutside:
        for (int i = 0; i < 4; ++i)
            ends[i] = random.coordinate(-2e6, 2e6);
        break;
    case SegmentKind::AtOneBillion:
        for (int i = 0; i < 4; ++i)
            ends[i] = random.coin() ? (random.coin() ? billion : -billion) : random.coordinate(-billion, billion);
        break;
    case SegmentKind::InsideToOneBillion:
        ends[0] = random.coordinate(0.0, picture);
        ends[1] = random.coordinate(0.0, picture);
        ends[2] = random.coin() ? billion : -billion;
        ends[3] = random.coordinate(-billion, billion);
        if (random.coin()) {
            std::swap(ends[0], ends[2]);
            std::swap(ends[1], ends[3]);
        }
        break;
    case SegmentKind::SteepOrShallow: {
        // Through a pixel of the picture, nearly along an axis, out to 1e9.
        const double cx = random.coordinate(0.0, picture);
        const double cy = random.coordinate(0.0, picture);
        const double across = random.uniform(-1e-3, 1e-3);
        const double ux = random.coin() ? 1.0 : across;
        const double uy = ux == 1.0 ? across : 1.0;
        ends[0] = cx - ux * billion;
        ends[1] = cy - uy * billion;
        ends[2] = cx + ux * billion;
        ends[3] = cy + uy * billion;
        break;
    }
    }
}

QString segmentText(const double* ends)
{
    return QStringLiteral("(%1, %2) to (%3, %4)")
        .arg(ends[0], 0, 'g', 17)
        .arg(ends[1], 0, 'g', 17)
        .arg(ends[2], 0, 'g', 17)
        .arg(ends[3], 0, 'g', 17);
}

// The ends of a line as the given text says: "max" and "-max" are the largest
// finite doubles, anything else a number.
double endValue(const QString& text)
{
    const double largest = std::numeric_limits<double>::max();
    if (text == QLatin1String("max"))
        return largest;
    if (text == QLatin1String("-max"))
        return -largest;
    return text.toDouble();
}

}  // namespace

class LineWalk : public QObject
{
    Q_OBJECT
private slots:
    void matchesTheFullWalk_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("count");  // fewer where most segments cross the whole picture
        QTest::newRow("short, near the picture") << int(SegmentKind::Near) << 300;
        QTest::newRow("crossing the picture") << int(SegmentKind::Crossing) << 120;
        QTest::newRow("mostly far outside") << int(SegmentKind::FarOutside) << 300;
        QTest::newRow("ends at 1e9") << int(SegmentKind::AtOneBillion) << 120;
        QTest::newRow("one end inside, one at 1e9") << int(SegmentKind::InsideToOneBillion) << 60;
        QTest::newRow("nearly along an axis through the picture") << int(SegmentKind::SteepOrShallow) << 40;
    }
    void matchesTheFullWalk()
    {
        QFETCH(int, kind);
        QFETCH(int, count);
        SegmentRandom random(0x5EED0000ULL + static_cast<unsigned long long>(kind));
        long long inside = 0;
        for (int i = 0; i < count; ++i) {
            double ends[4];
            randomSegment(random, static_cast<SegmentKind>(kind), ends);
            VorROI roi = line(ends[0], ends[1], ends[2], ends[3]);
            const std::vector<Pixel> expected = normalised(fullWalk(ends[0], ends[1], ends[2], ends[3]));
            const std::vector<Pixel> walked = walkedPixels(roi);
            if (walked != expected)
                QFAIL(qPrintable(QStringLiteral("%1: %2 pixels, the full walk %3")
                                     .arg(segmentText(ends))
                                     .arg(walked.size())
                                     .arg(expected.size())));
            inside += static_cast<long long>(expected.size());
        }
        // The segments of every kind do reach into the picture.
        QVERIFY(inside > 0);
    }

    // Where the ideal line leaves the last row or column exactly between two
    // pixels, the pixel with the smaller coordinate is still inside.
    void leavesThePictureOnATie_data()
    {
        QTest::addColumn<double>("ax");
        QTest::addColumn<double>("ay");
        QTest::addColumn<double>("bx");
        QTest::addColumn<double>("by");
        QTest::addColumn<int>("lastX");
        QTest::addColumn<int>("lastY");
        QTest::newRow("through the bottom") << 0.5 << 8300.5 << 20000.5 << 18300.5 << 16167 << 16383;
        QTest::newRow("through the right side") << 8300.5 << 0.5 << 18300.5 << 20000.5 << 16383 << 16167;
        QTest::newRow("through the bottom, reversed") << 20000.5 << 18300.5 << 0.5 << 8300.5 << 16167 << 16383;
        QTest::newRow("through the top") << 0.5 << 8000.5 << 20000.5 << -1999.5 << 16000 << 0;
        QTest::newRow("through the left side") << 8000.5 << 0.5 << -1999.5 << 20000.5 << 0 << 16000;
    }
    void leavesThePictureOnATie()
    {
        QFETCH(double, ax);
        QFETCH(double, ay);
        QFETCH(double, bx);
        QFETCH(double, by);
        QFETCH(int, lastX);
        QFETCH(int, lastY);
        VorROI roi = line(ax, ay, bx, by);
        const std::vector<Pixel> walked = walkedPixels(roi);
        QVERIFY(std::find(walked.begin(), walked.end(), Pixel(lastX, lastY)) != walked.end());
        QCOMPARE(walked.size(), normalised(fullWalk(ax, ay, bx, by)).size());
        QVERIFY(walked == normalised(fullWalk(ax, ay, bx, by)));
    }

    void freeLineMatchesTheFullWalk()
    {
        SegmentRandom random(0xF4EE11EULL);
        for (int i = 0; i < 20; ++i) {
            std::vector<VorPoint> vertices;
            std::vector<Pixel> expected;
            double ends[4];
            randomSegment(random, static_cast<SegmentKind>(i % 6), ends);
            vertices.emplace_back(ends[0], ends[1]);
            for (int k = 0; k < 8; ++k) {
                randomSegment(random, static_cast<SegmentKind>((i + k) % 6), ends);
                const VorPoint& last = vertices.back();
                const std::vector<Pixel> step = fullWalk(last.x, last.y, ends[2], ends[3]);
                expected.insert(expected.end(), step.begin(), step.end());
                vertices.emplace_back(ends[2], ends[3]);
            }
            VorROI roi = polyline(vertices);
            const std::vector<Pixel> walked = walkedPixels(roi);
            expected = normalised(expected);
            if (walked != expected) {
                const auto differs = std::mismatch(walked.begin(), walked.end(), expected.begin(), expected.end());
                const Pixel at = differs.first != walked.end() ? *differs.first : *differs.second;
                QFAIL(qPrintable(QStringLiteral("free line %1: first difference at (%2, %3)")
                                     .arg(i)
                                     .arg(at.first)
                                     .arg(at.second)));
            }
        }
    }

    void farFreeLineFinishes()
    {
        // Back and forth between two far corners: each segment crosses the
        // picture's diagonal only at the origin, then once along row 3.
        const double far = 1e9;
        const VorPoint a(-far, far);
        const VorPoint b(far, -far);
        const VorPoint rowEnd(far, 3.5);
        const VorPoint rowStart(-far, 3.5);
        std::vector<VorPoint> vertices;
        for (int i = 0; i < 199998; ++i)
            vertices.push_back(i % 2 == 0 ? a : b);
        vertices.push_back(rowEnd);
        vertices.push_back(rowStart);
        QCOMPARE(vertices.size(), std::size_t(200000));

        std::vector<Pixel> expected = fullWalk(a.x, a.y, b.x, b.y);
        for (const std::vector<Pixel>& step :
             {fullWalk(b.x, b.y, a.x, a.y), fullWalk(b.x, b.y, rowEnd.x, rowEnd.y),
              fullWalk(rowEnd.x, rowEnd.y, rowStart.x, rowStart.y)})
            expected.insert(expected.end(), step.begin(), step.end());
        expected = normalised(expected);
        QCOMPARE(static_cast<long long>(expected.size()), 16385LL);

        VorROI roi = polyline(vertices);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(image.Width(), 16384);
        QCOMPARE(image.Height(), 4);
        QCOMPARE(cv::countNonZero(image.Mat().row(3)), 16384);
        QCOMPARE(describe(setPixels(image)), describe(expected));
    }

    void endsAtTheLargestDouble_data()
    {
        QTest::addColumn<QString>("ax");
        QTest::addColumn<QString>("ay");
        QTest::addColumn<QString>("bx");
        QTest::addColumn<QString>("by");
        QTest::addColumn<QString>("pixels");  // "x,y x,y ...", or "columns FIRST-LAST of row Y"
        QTest::newRow("from a pixel to the largest x") << "5.5" << "5.5" << "max" << "5.5" << "row 5 from 5";
        QTest::newRow("from the lowest x to a pixel") << "-max" << "5.5" << "5.5" << "5.5" << "row 5 from 0 to 5";
        QTest::newRow("from a pixel to the largest y") << "3.5" << "2.5" << "3.5" << "max" << "column 3 from 2";
        QTest::newRow("between the two largest corners") << "max" << "max" << "max" << "max" << "";
        QTest::newRow("between the two lowest corners") << "-max" << "-max" << "-max" << "-max" << "";
        QTest::newRow("along the lowest row") << "-max" << "-max" << "max" << "-max" << "";
    }
    void endsAtTheLargestDouble()
    {
        QFETCH(QString, ax);
        QFETCH(QString, ay);
        QFETCH(QString, bx);
        QFETCH(QString, by);
        QFETCH(QString, pixels);
        VorROI roi = line(endValue(ax), endValue(ay), endValue(bx), endValue(by));
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        const QStringList words = pixels.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.size() >= 4 && (words[0] == QLatin1String("row") || words[0] == QLatin1String("column"))) {
            // A run of pixels along a row or a column, to its end or to a given one.
            const bool row = words[0] == QLatin1String("row");
            const int at = words[1].toInt();
            const int first = words[3].toInt();
            const int last = words.size() >= 6 ? words[5].toInt() : 16383;
            QCOMPARE(countSet(image), static_cast<long long>(last - first + 1));
            for (int k = first; k <= last; ++k)
                QVERIFY(row ? isSet(image, k, at) : isSet(image, at, k));
        } else {
            QCOMPARE(describe(setPixels(image)), describe(parsePixels(pixels)));
        }
    }

    // Opposite ends at the largest doubles are as far apart as a double can
    // say: the line is cut as the same line with ends at 1e300 is.
    void oppositeEndsAtTheLargestDouble_data()
    {
        QTest::addColumn<double>("ax");
        QTest::addColumn<double>("ay");
        QTest::addColumn<double>("bx");
        QTest::addColumn<double>("by");
        QTest::addColumn<int>("direction");  // 0 along a row, 1 down a column, 2 diagonal, 3 the other diagonal
        const double m = std::numeric_limits<double>::max();
        QTest::newRow("along row 5") << -m << 5.5 << m << 5.5 << 0;
        QTest::newRow("down column 3") << 3.5 << m << 3.5 << -m << 1;
        QTest::newRow("along the diagonal") << -m << -m << m << m << 2;
        QTest::newRow("along the other diagonal") << -m << m << m << -m << 3;
    }
    void oppositeEndsAtTheLargestDouble()
    {
        QFETCH(double, ax);
        QFETCH(double, ay);
        QFETCH(double, bx);
        QFETCH(double, by);
        QFETCH(int, direction);
        const double m = std::numeric_limits<double>::max();
        auto nearer = [m](double v) { return v == m ? 1e300 : (v == -m ? -1e300 : v); };
        VorROI largest = line(ax, ay, bx, by);
        VorROI nearerEnds = line(nearer(ax), nearer(ay), nearer(bx), nearer(by));
        const VorImage image = pictureOf(largest);
        VERIFY_FORMAT(image);
        VERIFY_SAME(comparePictures(image, pictureOf(nearerEnds)));
        const std::vector<Pixel> pixels = setPixels(image);
        QVERIFY(!pixels.empty());
        for (const Pixel& p : pixels) {
            switch (direction) {
            case 0: QCOMPARE(p.second, 5); break;
            case 1: QCOMPARE(p.first, 3); break;
            case 2: QCOMPARE(p.first, p.second); break;
            default: QCOMPARE(p.first + p.second, 0); break;
            }
        }
    }

    void polygonOfOneOrTwoVertices_data()
    {
        QTest::addColumn<QString>("vertices");  // "x,y x,y" in doubles
        QTest::addColumn<QString>("pixels");
        QTest::newRow("one whole-number vertex") << "3,4" << "3,4";
        QTest::newRow("one fractional vertex") << "3.7,4.2" << "3,4";
        QTest::newRow("two whole-number vertices along a row") << "1,2 6,2" << "1,2 2,2 3,2 4,2 5,2 6,2";
        QTest::newRow("two whole-number vertices down a column") << "4,1 4,4" << "4,1 4,2 4,3 4,4";
        QTest::newRow("two whole-number vertices on a slope") << "0,0 4,2" << "0,0 1,0 2,1 3,1 4,2";
        QTest::newRow("two fractional vertices")
            << "0.9,0.9 10.2,5.7" << "0,0 1,0 2,1 3,1 4,2 5,2 6,3 7,3 8,4 9,4 10,5";
        QTest::newRow("two equal vertices") << "2,3 2,3" << "2,3";
    }
    void polygonOfOneOrTwoVertices()
    {
        QFETCH(QString, vertices);
        QFETCH(QString, pixels);
        const std::vector<VorPoint> list = verticesOf(vertices);
        VorROI roi = polygon(list);
        const VorImage image = pictureOf(roi);
        VERIFY_FORMAT(image);
        QCOMPARE(describe(setPixels(image)), describe(parsePixels(pixels)));
        // The same pixels as the point or the line through the vertices.
        VorROI same = list.size() == 1 ? point(list[0].x, list[0].y) : line(list[0].x, list[0].y, list[1].x, list[1].y);
        VERIFY_SAME(comparePictures(image, pictureOf(same)));
    }
};

int main(int argc, char** argv)
{
    int status = 0;
    auto run = [&](QObject&& test) { status |= QTest::qExec(&test, argc, argv); };
    run(RectangleRaster());
    run(RotatedRectangleRaster());
    run(CircleRaster());
    run(EllipseRaster());
    run(AnnulusSectorRaster());
    run(PolygonRaster());
    run(LineRaster());
    run(FreeLineRaster());
    run(ArcRaster());
    run(PointRaster());
    run(MaskRaster());
    run(RegionConversion());
    run(DegenerateInput());
    run(LineWalk());
    return status;
}

#include "tst_vormv.moc"
