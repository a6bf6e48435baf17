#include "kitpictures.h"

#include <QtTest/QtTest>

#include "VorImage.h"

#include <opencv2/core.hpp>

class TestVorImage : public QObject
{
    Q_OBJECT

private slots:
    void defaultImageIsEmpty();
    void geometryFollowsTheMatrix_data();
    void geometryFollowsTheMatrix();
    void imageDataPointsAtFirstPixel();
    void copySharesPixels();
    void copyStaysReadableAfterSourceIsGone();
    void assignmentSharesPixels();
    void assignmentFromMatrixSharesPixels();
    void selfAssignmentKeepsImage();
    void cloneIsIndependent();
    void cloneOfEmptyIsEmpty();
    void objectIsOneMatrixPointer();
};

void TestVorImage::defaultImageIsEmpty()
{
    const VorImage img;
    QCOMPARE(img.Width(), 0);
    QCOMPARE(img.Height(), 0);
    QCOMPARE(img.Channels(), 0);
    QCOMPARE(img.Step(), 0);
    QVERIFY(img.ImageData() == nullptr);
    QVERIFY(img.Mat().empty());
}

void TestVorImage::geometryFollowsTheMatrix_data()
{
    QTest::addColumn<int>("cvType");
    QTest::addColumn<int>("cols");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("step");

    QTest::newRow("8-bit one channel") << CV_8UC1 << 13 << 7 << 1 << 0 << 13;
    QTest::newRow("8-bit three channels") << CV_8UC3 << 13 << 7 << 3 << 0 << 39;
    QTest::newRow("16-bit one channel") << CV_16UC1 << 13 << 7 << 1 << 2 << 26;
    QTest::newRow("16-bit three channels") << CV_16UC3 << 13 << 7 << 3 << 2 << 78;
    QTest::newRow("8-bit four channels") << CV_8UC4 << 5 << 2 << 4 << 0 << 20;
    QTest::newRow("single pixel") << CV_8UC1 << 1 << 1 << 1 << 0 << 1;
}

void TestVorImage::geometryFollowsTheMatrix()
{
    QFETCH(int, cvType);
    QFETCH(int, cols);
    QFETCH(int, rows);
    QFETCH(int, channels);
    QFETCH(int, depth);
    QFETCH(int, step);

    const VorImage img(cv::Mat(rows, cols, cvType, cv::Scalar::all(0)));
    QCOMPARE(img.Width(), cols);
    QCOMPARE(img.Height(), rows);
    QCOMPARE(img.Channels(), channels);
    QCOMPARE(img.BitDepth(), depth);
    QCOMPARE(img.Step(), step);
}

void TestVorImage::imageDataPointsAtFirstPixel()
{
    cv::Mat mat(4, 6, CV_8UC1, cv::Scalar(0));
    mat.at<unsigned char>(0, 0) = 42;
    mat.at<unsigned char>(1, 2) = 77;
    VorImage img(mat);
    QVERIFY(img.ImageData() == mat.data);
    QCOMPARE(int(img.ImageData()[0]), 42);
    QCOMPARE(int(img.ImageData()[img.Step() * 1 + 2]), 77);

    // A row of a larger matrix keeps the parent's row stride.
    cv::Mat big(10, 20, CV_8UC1, cv::Scalar(0));
    const VorImage part(big(cv::Rect(2, 3, 5, 4)));
    QCOMPARE(part.Width(), 5);
    QCOMPARE(part.Height(), 4);
    QCOMPARE(part.Step(), 20);
    QVERIFY(part.ImageData() == big.ptr<unsigned char>(3) + 2);
}

void TestVorImage::copySharesPixels()
{
    VorImage a = Kit::greyPicture(3, 3, 0);
    const VorImage b(a);
    QVERIFY(b.ImageData() == a.ImageData());
    a.ImageData()[4] = 9;
    QCOMPARE(int(b.ImageData()[4]), 9);
}

void TestVorImage::copyStaysReadableAfterSourceIsGone()
{
    VorImage* source = new VorImage(cv::Mat(8, 8, CV_16UC1, cv::Scalar(1234)));
    const VorImage copy(*source);
    VorImage assigned;
    assigned = *source;
    delete source;

    QCOMPARE(copy.Width(), 8);
    QCOMPARE(copy.Mat().at<unsigned short>(7, 7), static_cast<unsigned short>(1234));
    QCOMPARE(assigned.Mat().at<unsigned short>(0, 0), static_cast<unsigned short>(1234));

    VorImage fromMat;
    {
        cv::Mat temp(2, 2, CV_8UC3, cv::Scalar(1, 2, 3));
        fromMat = VorImage(temp);
    }
    QCOMPARE(fromMat.Mat().at<cv::Vec3b>(1, 1)[2], static_cast<unsigned char>(3));
}

void TestVorImage::assignmentSharesPixels()
{
    VorImage a = Kit::greyPicture(5, 2, 0);
    VorImage b = Kit::colourPicture(9, 9, 1, 1, 1);
    b = a;
    QCOMPARE(b.Width(), 5);
    QCOMPARE(b.Height(), 2);
    QCOMPARE(b.Channels(), 1);
    QVERIFY(b.ImageData() == a.ImageData());
}

void TestVorImage::assignmentFromMatrixSharesPixels()
{
    cv::Mat mat(3, 4, CV_16UC3, cv::Scalar::all(0));
    VorImage img;
    img = mat;
    QVERIFY(img.ImageData() == mat.data);
    QCOMPARE(img.Channels(), 3);
    QCOMPARE(img.BitDepth(), int(CV_16U));
    QCOMPARE(img.Step(), 4 * 3 * 2);
}

void TestVorImage::selfAssignmentKeepsImage()
{
    VorImage img = Kit::greyPicture(7, 6, 5);
    const unsigned char* data = img.ImageData();
    VorImage& same = img;
    img = same;
    QCOMPARE(img.Width(), 7);
    QCOMPARE(img.Height(), 6);
    QVERIFY(img.ImageData() == data);
    QCOMPARE(int(img.ImageData()[0]), 5);

    img = img.Mat();
    QCOMPARE(img.Width(), 7);
    QVERIFY(img.ImageData() == data);
}

void TestVorImage::cloneIsIndependent()
{
    VorImage a = Kit::greyPicture(3, 3, 7);
    const VorImage c = a.Clone();
    QVERIFY(c.ImageData() != a.ImageData());
    QCOMPARE(c.Width(), 3);
    QCOMPARE(c.Height(), 3);
    a.ImageData()[0] = 100;
    QCOMPARE(int(c.ImageData()[0]), 7);
}

void TestVorImage::cloneOfEmptyIsEmpty()
{
    const VorImage empty;
    const VorImage c = empty.Clone();
    QCOMPARE(c.Width(), 0);
    QCOMPARE(c.Height(), 0);
    QCOMPARE(c.Channels(), 0);
    QVERIFY(c.ImageData() == nullptr);
}

void TestVorImage::objectIsOneMatrixPointer()
{
    QCOMPARE(sizeof(VorImage), sizeof(void*));

    VorImage img = Kit::colourPicture(4, 5, 0, 0, 0);
    cv::Mat* inner = *reinterpret_cast<cv::Mat**>(&img);
    QVERIFY(inner != nullptr);
    QVERIFY(inner == &img.Mat());
    QVERIFY(inner->data == img.ImageData());
    QCOMPARE(inner->cols, 4);
    QCOMPARE(inner->rows, 5);

    const VorImage empty;
    cv::Mat* const emptyInner = *reinterpret_cast<cv::Mat* const*>(&empty);
    QVERIFY(emptyInner != nullptr);
    QVERIFY(emptyInner->empty());
}

QTEST_APPLESS_MAIN(TestVorImage)
#include "tst_vorimage.moc"
