#include <QtTest/QtTest>

#include "VorImage.h"
#include "VorPointArray.h"
#include "VorROI.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <vector>

namespace QTest {
template <>
char* toString(const VorPoint& p)
{
    return QTest::toString(QStringLiteral("(%1, %2)").arg(p.x, 0, 'g', 17).arg(p.y, 0, 'g', 17));
}
} // namespace QTest

namespace {

// Values that survive only an exact copy.
const VorPoint kA(12.25, -3.5);
const VorPoint kB(640.125, 480.0625);
const double kV1 = 37.4375;
const double kV2 = 0.001;
const double kV3 = -271.828125;
const double kV4 = 359.875;

VorPointArray samplePoints()
{
    VorPointArray pts;
    pts.Append(VorPoint(1.5, 2.5));
    pts.Append(VorPoint(100.25, 3.0));
    pts.Append(VorPoint(55.0, 80.125));
    pts.Append(VorPoint(-4.0, 7.75));
    return pts;
}

cv::Mat sampleMaskSource()
{
    cv::Mat m(4, 5, CV_8UC1, cv::Scalar(0));
    m.at<unsigned char>(0, 0) = 1;
    m.at<unsigned char>(2, 3) = 200;
    m.at<unsigned char>(3, 4) = 255;
    return m;
}

void genKind(VorROI& roi, int kind)
{
    switch (kind) {
    case VorROI::ROI_POINT: roi.GenPoint(kA); break;
    case VorROI::ROI_LINE: roi.GenLine(kA, kB); break;
    case VorROI::ROI_RECT1: roi.GenRect1(kA, kB); break;
    case VorROI::ROI_RECT2: roi.GenRect2(kA, kV1, kV2, kV3); break;
    case VorROI::ROI_ELLIPSE: roi.GenEllipse(kA, kV1, kV2, kV3); break;
    case VorROI::ROI_CIRCLE: roi.GenCircle(kA, kV1); break;
    case VorROI::ROI_POLYGON: roi.GenPolygon(samplePoints()); break;
    case VorROI::ROI_IRREGULAR: roi.GenIrregular(samplePoints()); break;
    case VorROI::ROI_TORUS: roi.GenTorus(kA, kV1, kV2, kV3, kV4); break;
    case VorROI::ROI_ARC: roi.GenArc(kA, kV1, kV3, kV4); break;
    case VorROI::ROI_MASK: roi.GenMask(VorImage(sampleMaskSource())); break;
    default: QFAIL("unknown kind");
    }
}

// Outputs of a Get call, preset to values no Gen call in this file uses.
struct Outputs
{
    VorPoint a{-999.0, -999.0};
    VorPoint b{-888.0, -888.0};
    double d[4] = {-1.0, -2.0, -3.0, -4.0};
    VorPointArray points;
    VorImage mask;

    Outputs()
    {
        points.Append(VorPoint(-7.0, -7.0));
        mask = VorImage(cv::Mat(1, 1, CV_8UC1, cv::Scalar(99)));
    }

    bool untouched() const
    {
        return a == VorPoint(-999.0, -999.0) && b == VorPoint(-888.0, -888.0) && d[0] == -1.0
            && d[1] == -2.0 && d[2] == -3.0 && d[3] == -4.0 && points.Length() == 1
            && points[0] == VorPoint(-7.0, -7.0) && mask.Width() == 1
            && mask.Mat().at<unsigned char>(0, 0) == 99;
    }
};

bool callGet(const VorROI& roi, int kind, Outputs& o)
{
    switch (kind) {
    case VorROI::ROI_POINT: return roi.GetPoint(&o.a);
    case VorROI::ROI_LINE: return roi.GetLine(&o.a, &o.b);
    case VorROI::ROI_RECT1: return roi.GetRect1(&o.a, &o.b);
    case VorROI::ROI_RECT2: return roi.GetRect2(&o.a, &o.d[0], &o.d[1], &o.d[2]);
    case VorROI::ROI_ELLIPSE: return roi.GetEllipse(&o.a, &o.d[0], &o.d[1], &o.d[2]);
    case VorROI::ROI_CIRCLE: return roi.GetCircle(&o.a, &o.d[0]);
    case VorROI::ROI_POLYGON: return roi.GetPolygon(&o.points);
    case VorROI::ROI_IRREGULAR: return roi.GetIrregular(&o.points);
    case VorROI::ROI_TORUS: return roi.GetTorus(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.d[3]);
    case VorROI::ROI_ARC: return roi.GetArc(&o.a, &o.d[0], &o.d[1], &o.d[2]);
    case VorROI::ROI_MASK: return roi.GetMask(&o.mask);
    default: return false;
    }
}

bool callGetWithNulls(const VorROI& roi, int kind)
{
    switch (kind) {
    case VorROI::ROI_POINT: return roi.GetPoint(nullptr);
    case VorROI::ROI_LINE: return roi.GetLine(nullptr, nullptr);
    case VorROI::ROI_RECT1: return roi.GetRect1(nullptr, nullptr);
    case VorROI::ROI_RECT2: return roi.GetRect2(nullptr, nullptr, nullptr, nullptr);
    case VorROI::ROI_ELLIPSE: return roi.GetEllipse(nullptr, nullptr, nullptr, nullptr);
    case VorROI::ROI_CIRCLE: return roi.GetCircle(nullptr, nullptr);
    case VorROI::ROI_POLYGON: return roi.GetPolygon(nullptr);
    case VorROI::ROI_IRREGULAR: return roi.GetIrregular(nullptr);
    case VorROI::ROI_TORUS: return roi.GetTorus(nullptr, nullptr, nullptr, nullptr, nullptr);
    case VorROI::ROI_ARC: return roi.GetArc(nullptr, nullptr, nullptr, nullptr);
    case VorROI::ROI_MASK: return roi.GetMask(nullptr);
    default: return false;
    }
}

const int kAllKinds[] = {
    VorROI::ROI_RECT1, VorROI::ROI_CIRCLE, VorROI::ROI_TORUS, VorROI::ROI_POLYGON,
    VorROI::ROI_IRREGULAR, VorROI::ROI_RECT2, VorROI::ROI_LINE, VorROI::ROI_ELLIPSE,
    VorROI::ROI_ARC, VorROI::ROI_POINT, VorROI::ROI_MASK,
};

// Checks that the outputs hold exactly what genKind() put in for this kind.
void verifyRoundTrip(int kind, const Outputs& o)
{
    switch (kind) {
    case VorROI::ROI_POINT:
        QCOMPARE(o.a, kA);
        break;
    case VorROI::ROI_LINE:
    case VorROI::ROI_RECT1:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.b, kB);
        break;
    case VorROI::ROI_RECT2:
    case VorROI::ROI_ELLIPSE:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV2);
        QCOMPARE(o.d[2], kV3);
        break;
    case VorROI::ROI_CIRCLE:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        break;
    case VorROI::ROI_POLYGON:
    case VorROI::ROI_IRREGULAR:
        QCOMPARE(o.points, samplePoints());
        break;
    case VorROI::ROI_TORUS:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV2);
        QCOMPARE(o.d[2], kV3);
        QCOMPARE(o.d[3], kV4);
        break;
    case VorROI::ROI_ARC:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV3);
        QCOMPARE(o.d[2], kV4);
        break;
    case VorROI::ROI_MASK: {
        QCOMPARE(o.mask.Width(), 5);
        QCOMPARE(o.mask.Height(), 4);
        QCOMPARE(o.mask.Channels(), 1);
        QCOMPARE(o.mask.BitDepth(), int(CV_8U));
        const cv::Mat expected = sampleMaskSource() != 0;
        QCOMPARE(cv::countNonZero(o.mask.Mat() != expected), 0);
        break;
    }
    default:
        QFAIL("unknown kind");
    }
}

} // namespace

class TestVorROI : public QObject
{
    Q_OBJECT

private slots:
    void typeCodes();
    void defaultIsOfNoKind();
    void defaultAnswersNoGet();
    void genThenGetRoundTrips_data();
    void genThenGetRoundTrips();
    void getOfAnotherKindWritesNothing_data();
    void getOfAnotherKindWritesNothing();
    void getSkipsNullOutputs_data();
    void getSkipsNullOutputs();
    void newGenReplacesPreviousGeometry();
    void polygonReplacedByShorterPolygon();
    void copyAndAssignmentKeepGeometry();
    void maskMarksNonZeroPixels_data();
    void maskMarksNonZeroPixels();
    void maskFromEmptyPictureIsEmpty();
    void maskIsIndependentOfSource();
    void getMaskGivesDeepCopy();
    void maskFromPartOfLargerPicture();
};

void TestVorROI::typeCodes()
{
    QCOMPARE(int(VorROI::ROI_RECT1), 0);
    QCOMPARE(int(VorROI::ROI_CIRCLE), 1);
    QCOMPARE(int(VorROI::ROI_TORUS), 2);
    QCOMPARE(int(VorROI::ROI_NONE), 3);
    QCOMPARE(int(VorROI::ROI_POLYGON), 4);
    QCOMPARE(int(VorROI::ROI_IRREGULAR), 5);
    QCOMPARE(int(VorROI::ROI_RECT2), 6);
    QCOMPARE(int(VorROI::ROI_LINE), 7);
    QCOMPARE(int(VorROI::ROI_ELLIPSE), 8);
    QCOMPARE(int(VorROI::ROI_ARC), 9);
    QCOMPARE(int(VorROI::ROI_POINT), 10);
    QCOMPARE(int(VorROI::ROI_MASK), 11);
}

void TestVorROI::defaultIsOfNoKind()
{
    const VorROI roi;
    QCOMPARE(roi.ROIType(), 3);
}

void TestVorROI::defaultAnswersNoGet()
{
    const VorROI roi;
    for (int kind : kAllKinds) {
        Outputs o;
        QVERIFY2(!callGet(roi, kind, o), qPrintable(QString::number(kind)));
        QVERIFY(o.untouched());
    }
}

void TestVorROI::genThenGetRoundTrips_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("rect1") << int(VorROI::ROI_RECT1);
    QTest::newRow("circle") << int(VorROI::ROI_CIRCLE);
    QTest::newRow("torus") << int(VorROI::ROI_TORUS);
    QTest::newRow("polygon") << int(VorROI::ROI_POLYGON);
    QTest::newRow("irregular") << int(VorROI::ROI_IRREGULAR);
    QTest::newRow("rect2") << int(VorROI::ROI_RECT2);
    QTest::newRow("line") << int(VorROI::ROI_LINE);
    QTest::newRow("ellipse") << int(VorROI::ROI_ELLIPSE);
    QTest::newRow("arc") << int(VorROI::ROI_ARC);
    QTest::newRow("point") << int(VorROI::ROI_POINT);
    QTest::newRow("mask") << int(VorROI::ROI_MASK);
}

void TestVorROI::genThenGetRoundTrips()
{
    QFETCH(int, kind);
    VorROI roi;
    genKind(roi, kind);
    QCOMPARE(roi.ROIType(), kind);

    Outputs o;
    QVERIFY(callGet(roi, kind, o));
    verifyRoundTrip(kind, o);
}

void TestVorROI::getOfAnotherKindWritesNothing_data()
{
    genThenGetRoundTrips_data();
}

void TestVorROI::getOfAnotherKindWritesNothing()
{
    QFETCH(int, kind);
    VorROI roi;
    genKind(roi, kind);

    for (int other : kAllKinds) {
        if (other == kind)
            continue;
        Outputs o;
        QVERIFY2(!callGet(roi, other, o), qPrintable(QStringLiteral("Get of kind %1").arg(other)));
        QVERIFY2(o.untouched(), qPrintable(QStringLiteral("Get of kind %1").arg(other)));
        QVERIFY(!callGetWithNulls(roi, other));
    }
    QCOMPARE(roi.ROIType(), kind);
}

void TestVorROI::getSkipsNullOutputs_data()
{
    genThenGetRoundTrips_data();
}

void TestVorROI::getSkipsNullOutputs()
{
    QFETCH(int, kind);
    VorROI roi;
    genKind(roi, kind);
    QVERIFY(callGetWithNulls(roi, kind));

    // Some outputs null, the others still filled.
    double r = 0.0;
    VorPoint centre;
    switch (kind) {
    case VorROI::ROI_LINE:
        QVERIFY(roi.GetLine(nullptr, &centre));
        QCOMPARE(centre, kB);
        break;
    case VorROI::ROI_TORUS:
        QVERIFY(roi.GetTorus(nullptr, nullptr, nullptr, nullptr, &r));
        QCOMPARE(r, kV4);
        break;
    case VorROI::ROI_ARC:
        QVERIFY(roi.GetArc(&centre, nullptr, nullptr, &r));
        QCOMPARE(centre, kA);
        QCOMPARE(r, kV4);
        break;
    case VorROI::ROI_RECT2:
        QVERIFY(roi.GetRect2(nullptr, nullptr, &r, nullptr));
        QCOMPARE(r, kV2);
        break;
    default:
        break;
    }
}

void TestVorROI::newGenReplacesPreviousGeometry()
{
    VorROI roi;
    roi.GenMask(VorImage(sampleMaskSource()));
    roi.GenPolygon(samplePoints());
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_POLYGON));
    Outputs o;
    QVERIFY(!roi.GetMask(&o.mask));
    QVERIFY(o.untouched());

    roi.GenCircle(VorPoint(1.0, 2.0), 3.0);
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_CIRCLE));
    QVERIFY(!roi.GetPolygon(&o.points));
    QVERIFY(o.untouched());
    VorPoint c;
    double r = 0.0;
    QVERIFY(roi.GetCircle(&c, &r));
    QCOMPARE(c, VorPoint(1.0, 2.0));
    QCOMPARE(r, 3.0);

    roi.GenCircle(VorPoint(4.0, 5.0), 6.0);
    QVERIFY(roi.GetCircle(&c, &r));
    QCOMPARE(c, VorPoint(4.0, 5.0));
    QCOMPARE(r, 6.0);
}

void TestVorROI::polygonReplacedByShorterPolygon()
{
    VorROI roi;
    roi.GenPolygon(samplePoints());
    VorPointArray two;
    two.Append(VorPoint(9.0, 8.0));
    two.Append(VorPoint(7.0, 6.0));
    roi.GenPolygon(two);

    VorPointArray out;
    QVERIFY(roi.GetPolygon(&out));
    QCOMPARE(out.Length(), 2);
    QCOMPARE(out[0], VorPoint(9.0, 8.0));
    QCOMPARE(out[1], VorPoint(7.0, 6.0));

    roi.GenIrregular(VorPointArray());
    QVERIFY(roi.GetIrregular(&out));
    QCOMPARE(out.Length(), 0);
}

void TestVorROI::copyAndAssignmentKeepGeometry()
{
    VorROI a;
    genKind(a, VorROI::ROI_TORUS);
    const VorROI b(a);
    Outputs o;
    QVERIFY(callGet(b, VorROI::ROI_TORUS, o));
    verifyRoundTrip(VorROI::ROI_TORUS, o);

    VorROI c;
    genKind(c, VorROI::ROI_POLYGON);
    c = a;
    QCOMPARE(c.ROIType(), int(VorROI::ROI_TORUS));
    QVERIFY(!c.GetPolygon(nullptr));

    // Changing the source afterwards does not reach the copies.
    a.GenPoint(VorPoint(0.5, 0.5));
    Outputs o2;
    QVERIFY(callGet(c, VorROI::ROI_TORUS, o2));
    verifyRoundTrip(VorROI::ROI_TORUS, o2);

    VorROI m;
    genKind(m, VorROI::ROI_MASK);
    VorROI mc;
    mc = m;
    Outputs o3;
    QVERIFY(callGet(mc, VorROI::ROI_MASK, o3));
    verifyRoundTrip(VorROI::ROI_MASK, o3);

    VorROI& same = mc;
    mc = same;
    QCOMPARE(mc.ROIType(), int(VorROI::ROI_MASK));
}

void TestVorROI::maskMarksNonZeroPixels_data()
{
    QTest::addColumn<int>("cvType");
    QTest::addColumn<int>("channel");
    QTest::addColumn<double>("value");

    QTest::newRow("8-bit, one channel") << CV_8UC1 << 0 << 1.0;
    QTest::newRow("16-bit, low byte zero") << CV_16UC1 << 0 << 256.0;
    QTest::newRow("16-bit, high value") << CV_16UC1 << 0 << 65535.0;
    QTest::newRow("8-bit, three channels, blue only") << CV_8UC3 << 0 << 3.0;
    QTest::newRow("8-bit, three channels, red only") << CV_8UC3 << 2 << 128.0;
    QTest::newRow("16-bit, three channels, last only") << CV_16UC3 << 2 << 512.0;
    QTest::newRow("8-bit, four channels, alpha only") << CV_8UC4 << 3 << 9.0;
    QTest::newRow("8-bit, two channels, second only") << CV_8UC2 << 1 << 1.0;
    QTest::newRow("16-bit, four channels, second only") << CV_16UC4 << 1 << 1.0;
}

void TestVorROI::maskMarksNonZeroPixels()
{
    QFETCH(int, cvType);
    QFETCH(int, channel);
    QFETCH(double, value);

    const int rows = 6;
    const int cols = 9;
    cv::Mat src(rows, cols, cvType, cv::Scalar::all(0));
    std::vector<cv::Mat> planes;
    cv::split(src, planes);
    const cv::Point inside[] = {{0, 0}, {8, 0}, {3, 2}, {4, 2}, {8, 5}, {0, 5}};
    for (const cv::Point& p : inside) {
        cv::Mat& plane = planes[static_cast<std::size_t>(channel)];
        if (plane.depth() == CV_8U)
            plane.at<unsigned char>(p) = static_cast<unsigned char>(value);
        else
            plane.at<unsigned short>(p) = static_cast<unsigned short>(value);
    }
    cv::merge(planes, src);

    VorROI roi;
    roi.GenMask(VorImage(src));
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_MASK));

    VorImage mask;
    QVERIFY(roi.GetMask(&mask));
    QCOMPARE(mask.Width(), cols);
    QCOMPARE(mask.Height(), rows);
    QCOMPARE(mask.Channels(), 1);
    QCOMPARE(mask.BitDepth(), int(CV_8U));

    int count = 0;
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < cols; ++x) {
            bool expected = false;
            for (const cv::Point& p : inside)
                expected = expected || (p.x == x && p.y == y);
            const int v = mask.Mat().at<unsigned char>(y, x);
            QCOMPARE(v, expected ? 255 : 0);
            count += v != 0;
        }
    }
    QCOMPARE(count, 6);
}

void TestVorROI::maskFromEmptyPictureIsEmpty()
{
    VorROI roi;
    roi.GenCircle(VorPoint(1.0, 1.0), 2.0);
    roi.GenMask(VorImage());
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_MASK));

    VorImage mask(cv::Mat(2, 2, CV_8UC1, cv::Scalar(1)));
    QVERIFY(roi.GetMask(&mask));
    QCOMPARE(mask.Width(), 0);
    QCOMPARE(mask.Height(), 0);
    QCOMPARE(mask.Channels(), 0);
}

void TestVorROI::maskIsIndependentOfSource()
{
    // Already one channel, 8 bits and 0/255: still copied, not shared.
    cv::Mat src(3, 3, CV_8UC1, cv::Scalar(0));
    src.at<unsigned char>(1, 1) = 255;
    VorROI roi;
    roi.GenMask(VorImage(src));
    src.setTo(cv::Scalar(255));

    VorImage mask;
    QVERIFY(roi.GetMask(&mask));
    QCOMPARE(cv::countNonZero(mask.Mat()), 1);
    QCOMPARE(int(mask.Mat().at<unsigned char>(1, 1)), 255);
}

void TestVorROI::getMaskGivesDeepCopy()
{
    VorROI roi;
    roi.GenMask(VorImage(sampleMaskSource()));

    VorImage first;
    QVERIFY(roi.GetMask(&first));
    first.Mat().setTo(cv::Scalar(0));

    VorImage second;
    QVERIFY(roi.GetMask(&second));
    QVERIFY(second.ImageData() != first.ImageData());
    QCOMPARE(cv::countNonZero(second.Mat()), 3);

    // A copy of the ROI is not disturbed by writes to a mask taken from it.
    const VorROI copy(roi);
    VorImage third;
    QVERIFY(copy.GetMask(&third));
    QCOMPARE(cv::countNonZero(third.Mat()), 3);
}

void TestVorROI::maskFromPartOfLargerPicture()
{
    cv::Mat big(20, 30, CV_16UC1, cv::Scalar(0));
    big.at<unsigned short>(5, 10) = 300;  // (0, 0) of the part
    big.at<unsigned short>(8, 14) = 1;    // (4, 3) of the part
    big.at<unsigned short>(4, 10) = 7;    // outside the part
    VorROI roi;
    roi.GenMask(VorImage(big(cv::Rect(10, 5, 6, 4))));

    VorImage mask;
    QVERIFY(roi.GetMask(&mask));
    QCOMPARE(mask.Width(), 6);
    QCOMPARE(mask.Height(), 4);
    QCOMPARE(cv::countNonZero(mask.Mat()), 2);
    QCOMPARE(int(mask.Mat().at<unsigned char>(0, 0)), 255);
    QCOMPARE(int(mask.Mat().at<unsigned char>(3, 4)), 255);
}

QTEST_APPLESS_MAIN(TestVorROI)
#include "tst_vorroi.moc"
