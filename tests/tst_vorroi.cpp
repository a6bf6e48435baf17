#include "kitholders.h"

#include <QtTest/QtTest>

#include "VorImage.h"
#include "VorPointArray.h"
#include "VorROI.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <vector>

using namespace Kit;

class TestVorROI : public QObject
{
    Q_OBJECT

private slots:
    void typeCodes();
    void defaultIsOfNoKind();
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
    verifyCodesCountUp(0, {VorROI::ROI_RECT1, VorROI::ROI_CIRCLE, VorROI::ROI_TORUS, VorROI::ROI_NONE, VorROI::ROI_POLYGON,
                           VorROI::ROI_IRREGULAR, VorROI::ROI_RECT2, VorROI::ROI_LINE, VorROI::ROI_ELLIPSE,
                           VorROI::ROI_ARC, VorROI::ROI_POINT, VorROI::ROI_MASK, VorROI::ROI_POLYLINE});
}

void TestVorROI::defaultIsOfNoKind()
{
    const VorROI roi;
    QCOMPARE(roi.ROIType(), 3);
}

void TestVorROI::newGenReplacesPreviousGeometry()
{
    VorROI roi;
    roi.GenMask(VorImage(sampleMaskSource()));
    roi.GenPolygon(points());
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_POLYGON));
    RoiOutputs o;
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
    roi.GenPolygon(points());
    const VorPointArray two = pointArray({VorPoint(9.0, 8.0), VorPoint(7.0, 6.0)});
    roi.GenPolygon(two);

    VorPointArray out;
    QVERIFY(roi.GetPolygon(&out));
    QCOMPARE(out, two);

    roi.GenIrregular(VorPointArray());
    QVERIFY(roi.GetIrregular(&out));
    QCOMPARE(out.Length(), 0);
}

void TestVorROI::copyAndAssignmentKeepGeometry()
{
    VorROI a;
    roiKinds().gen(a, VorROI::ROI_TORUS);
    const VorROI b(a);
    roiKinds().verifyHolds(b, VorROI::ROI_TORUS);

    VorROI c;
    roiKinds().gen(c, VorROI::ROI_POLYGON);
    c = a;
    QCOMPARE(c.ROIType(), int(VorROI::ROI_TORUS));
    QVERIFY(!c.GetPolygon(nullptr));

    // Changing the source afterwards does not reach the copies.
    a.GenPoint(VorPoint(0.5, 0.5));
    roiKinds().verifyHolds(c, VorROI::ROI_TORUS);

    VorROI m;
    roiKinds().gen(m, VorROI::ROI_MASK);
    VorROI mc;
    mc = m;
    roiKinds().verifyHolds(mc, VorROI::ROI_MASK);

    VorROI& same = mc;
    mc = same;
    QCOMPARE(mc.ROIType(), int(VorROI::ROI_MASK));
}

void TestVorROI::maskMarksNonZeroPixels_data()
{
    addMarkedPictureRows();
}

void TestVorROI::maskMarksNonZeroPixels()
{
    QFETCH(int, cvType);
    QFETCH(int, channel);
    QFETCH(double, value);

    const int rows = 6;
    const int cols = 9;
    const std::initializer_list<cv::Point> inside = {{0, 0}, {8, 0}, {3, 2}, {4, 2}, {8, 5}, {0, 5}};
    const cv::Mat src = markedPicture(cols, rows, cvType, channel, value, inside);
    QCOMPARE(src.type(), cvType);

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

    VorImage mask = Kit::greyPicture(2, 2, 1);
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
