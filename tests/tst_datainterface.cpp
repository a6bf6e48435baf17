#include "kitpictures.h"

#include "KESImageWnd.h"

#include <QtTest>

#include <opencv2/core.hpp>

// The window's side of the data model: validity of pictures and the mapping of
// ROI and overlay type codes to draw modes.
class tst_DataInterface : public QObject
{
    Q_OBJECT

private slots:
    void defaultVorImageIsInvalid();
    void nullVorImageIsInvalid();
    void vorImageWithPixelsIsValid();

    void fromROIType_data();
    void fromROIType();
    void fromOverlayType_data();
    void fromOverlayType();
    void overlayRectangleAndRakeRectangleShareMode();
};

void tst_DataInterface::defaultVorImageIsInvalid()
{
    VorImage image;
    QCOMPARE(image.Width(), 0);
    QCOMPARE(image.Height(), 0);
    QCOMPARE(IsValidVorImage(&image), false);
}

void tst_DataInterface::nullVorImageIsInvalid()
{
    QCOMPARE(IsValidVorImage(nullptr), false);
}

void tst_DataInterface::vorImageWithPixelsIsValid()
{
    VorImage one = Kit::greyPicture(1, 1, 0);
    QCOMPARE(IsValidVorImage(&one), true);
    VorImage row(cv::Mat(1, 7, CV_16UC3, cv::Scalar(0)));
    QCOMPARE(IsValidVorImage(&row), true);
}

void tst_DataInterface::fromROIType_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("mode");

    QTest::newRow("0 rectangle") << 0 << int(DM_RECT1);
    QTest::newRow("1 circle") << 1 << int(DM_CIRCLE);
    QTest::newRow("2 annulus") << 2 << int(DM_ANNULAR);
    QTest::newRow("3 no kind") << 3 << int(DM_SELECT);
    QTest::newRow("4 polygon") << 4 << int(DM_POLYGON);
    QTest::newRow("5 free line") << 5 << int(DM_ANYLINE);
    QTest::newRow("6 rotated rectangle") << 6 << int(DM_RECT2);
    QTest::newRow("7 line") << 7 << int(DM_LINE);
    QTest::newRow("8 ellipse") << 8 << int(DM_ELLIPSE);
    QTest::newRow("9 arc") << 9 << int(DM_ARC);
    QTest::newRow("10 point") << 10 << int(DM_POINT);
    QTest::newRow("11 mask") << 11 << int(DM_MASK);
    QTest::newRow("12 outside the table") << 12 << int(DM_SELECT);
    QTest::newRow("-1") << -1 << int(DM_SELECT);
    QTest::newRow("100") << 100 << int(DM_SELECT);
}

void tst_DataInterface::fromROIType()
{
    QFETCH(int, code);
    QFETCH(int, mode);
    QCOMPARE(int(::FromROIType(code)), mode);
}

void tst_DataInterface::fromOverlayType_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("mode");

    QTest::newRow("0 below the table") << 0 << int(DM_SELECT);
    QTest::newRow("1 point") << 1 << int(DM_POINT);
    QTest::newRow("2 arrow line") << 2 << int(DM_ARROWLINE);
    QTest::newRow("3 line") << 3 << int(DM_LINE);
    QTest::newRow("4 rectangle") << 4 << int(DM_RECT1);
    QTest::newRow("5 rectangle with search lines") << 5 << int(DM_RECT1);
    QTest::newRow("6 circle") << 6 << int(DM_CIRCLE);
    QTest::newRow("7 ellipse") << 7 << int(DM_ELLIPSE);
    QTest::newRow("8 polygon") << 8 << int(DM_POLYGON);
    QTest::newRow("9 closed free line") << 9 << int(DM_ANYCLOSELINE);
    QTest::newRow("10 rotated rectangle") << 10 << int(DM_RECT2);
    QTest::newRow("11 rotated rectangle with search lines") << 11 << int(DM_RECT2);
    QTest::newRow("12 annulus") << 12 << int(DM_ANNULAR);
    QTest::newRow("13 annulus with search lines") << 13 << int(DM_ANNULAR);
    QTest::newRow("14 arc") << 14 << int(DM_ARC);
    QTest::newRow("15 free line") << 15 << int(DM_ANYLINE);
    QTest::newRow("16 text") << 16 << int(DM_SELECT);
    QTest::newRow("17") << 17 << int(DM_SELECT);
    QTest::newRow("18") << 18 << int(DM_SELECT);
    QTest::newRow("19 region") << 19 << int(DM_SELECT);
    QTest::newRow("-1") << -1 << int(DM_SELECT);
    QTest::newRow("100") << 100 << int(DM_SELECT);
}

void tst_DataInterface::fromOverlayType()
{
    QFETCH(int, code);
    QFETCH(int, mode);
    QCOMPARE(int(::FromOverlayType(code)), mode);
}

void tst_DataInterface::overlayRectangleAndRakeRectangleShareMode()
{
    // The mode alone does not tell the two apart; the overlay's own type does.
    VorOverlay plain;
    plain.GenRect1(VorPoint(0, 0), VorPoint(10, 10));
    VorOverlay rake;
    rake.GenRakeRect1(VorPoint(0, 0), VorPoint(10, 10), SL_TOP_TO_BOTTOM, 3);
    QCOMPARE(FromOverlayType(plain.OverlayType()), DM_RECT1);
    QCOMPARE(FromOverlayType(rake.OverlayType()), DM_RECT1);
    QCOMPARE(plain.OverlayType(), 4);
    QCOMPARE(rake.OverlayType(), 5);
}

QTEST_APPLESS_MAIN(tst_DataInterface)
#include "tst_datainterface.moc"
