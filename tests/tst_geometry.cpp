#include "kitcompare.h"

#include "geometryhelpers.h"

#include <QImage>
#include <QtTest>

#include <cmath>
#include <limits>

// The stateless helpers that shapes and layers share: angle normalisation,
// distance, direction between two points, rectangle normalising, rotation and
// the flag-to-button table. Results are compared bit for bit where the helpers
// promise single-precision arithmetic.
class tst_Geometry : public QObject
{
    Q_OBJECT

private slots:
    void convertAngle_data();
    void convertAngle();
    void convertAngleKeepsNonFiniteValues();
    void convertAngleOfHugeValuesStaysInRange();

    void distanceIsRoundedToFloat();

    void calculateAngle_data();
    void calculateAngle();
    void calculateAngleUsesSinglePrecisionFormula_data();
    void calculateAngleUsesSinglePrecisionFormula();
    void calculateAngleOfEqualPointsIsZero();
    void calculateAngleTreatsSubPixelHeightAsLevel();
    void calculateAngleOfNonFinitePointsIsDefined();

    void adjustRect_data();
    void adjustRect();

    void rotatePointBelowThresholdIsUnchanged_data();
    void rotatePointBelowThresholdIsUnchanged();
    void rotatePointByQuarterTurn();
    void rotatePointMatchesFloatFormula_data();
    void rotatePointMatchesFloatFormula();

    void isValidQImage_data();
    void isValidQImage();

    void convertToButtonIndex_data();
    void convertToButtonIndex();
};

void tst_Geometry::convertAngle_data()
{
    QTest::addColumn<float>("angle");
    QTest::addColumn<float>("expected");

    QTest::newRow("-30 gives 330") << -30.0f << 330.0f;
    QTest::newRow("-360 gives 0") << -360.0f << 0.0f;
    QTest::newRow("-390 gives 330") << -390.0f << 330.0f;
    QTest::newRow("-720 gives 360") << -720.0f << 360.0f;
    QTest::newRow("-1080 gives 360") << -1080.0f << 360.0f;
    QTest::newRow("-0.5 gives 359.5") << -0.5f << 359.5f;
    QTest::newRow("0 stays") << 0.0f << 0.0f;
    QTest::newRow("45.25 stays") << 45.25f << 45.25f;
    QTest::newRow("360 stays") << 360.0f << 360.0f;
    QTest::newRow("390 gives 30") << 390.0f << 30.0f;
    QTest::newRow("720 gives 0") << 720.0f << 0.0f;
    QTest::newRow("360.5 gives 0.5") << 360.5f << 0.5f;
    QTest::newRow("-400.25 keeps fraction") << -400.25f << 319.75f;
    QTest::newRow("1000 gives 280") << 1000.0f << 280.0f;
}

void tst_Geometry::convertAngle()
{
    QFETCH(float, angle);
    QFETCH(float, expected);
    QCOMPARE(ConvertAngle(angle), expected);
}

void tst_Geometry::convertAngleKeepsNonFiniteValues()
{
    QVERIFY(std::isnan(ConvertAngle(std::numeric_limits<float>::quiet_NaN())));
    QCOMPARE(ConvertAngle(std::numeric_limits<float>::infinity()), std::numeric_limits<float>::infinity());
}

void tst_Geometry::convertAngleOfHugeValuesStaysInRange()
{
    // 1e10 = 27777777 * 360 + 280; beyond int, so no cast may be taken.
    const float result = ConvertAngle(1e10f);
    QVERIFY(result >= 0.0f && result <= 360.0f);
    QCOMPARE(result, std::fmod(1e10f, 360.0f));
    const float negative = ConvertAngle(-1e10f);
    QVERIFY(negative >= 0.0f && negative <= 360.0f);
}

void tst_Geometry::distanceIsRoundedToFloat()
{
    QCOMPARE(Distance(QPointF(0, 0), QPointF(3, 4)), 5.0f);
    QCOMPARE(Distance(QPointF(1, 1), QPointF(1, 1)), 0.0f);
    const double exact = std::sqrt(2.0);
    QCOMPARE(Distance(QPointF(0, 0), QPointF(1, 1)), float(exact));
}

void tst_Geometry::calculateAngle_data()
{
    QTest::addColumn<QPointF>("a");
    QTest::addColumn<QPointF>("b");
    QTest::addColumn<float>("expected");

    const QPointF o(100, 100);
    QTest::newRow("east") << QPointF(110, 100) << o << 0.0f;
    QTest::newRow("west") << QPointF(90, 100) << o << 180.0f;
    QTest::newRow("north, straight above") << QPointF(100, 90) << o << 90.0f;
    QTest::newRow("south, straight below") << QPointF(100, 110) << o << 270.0f;
    QTest::newRow("quadrant north-east") << QPointF(110, 90) << o << 45.0f;
    QTest::newRow("quadrant north-west") << QPointF(90, 90) << o << 135.0f;
    QTest::newRow("quadrant south-west") << QPointF(90, 110) << o << 225.0f;
    QTest::newRow("quadrant south-east") << QPointF(110, 110) << o << 315.0f;
}

void tst_Geometry::calculateAngle()
{
    QFETCH(QPointF, a);
    QFETCH(QPointF, b);
    QFETCH(float, expected);
    // The float pi of 3.141592 leaves the diagonals a few ulps off 45 degrees.
    QVERIFY2(std::fabs(CalculateAngle(a, b) - expected) < 1e-4f,
             qPrintable(QString::number(CalculateAngle(a, b), 'g', 10)));
}

void tst_Geometry::calculateAngleUsesSinglePrecisionFormula_data()
{
    QTest::addColumn<QPointF>("a");
    QTest::addColumn<QPointF>("b");

    QTest::newRow("below right") << QPointF(13.7, 29.2) << QPointF(2.1, 3.3);
    QTest::newRow("below left") << QPointF(-7.25, 18.5) << QPointF(4.0, 1.0);
    QTest::newRow("above right") << QPointF(50.5, -20.75) << QPointF(3.0, 9.0);
    QTest::newRow("above left") << QPointF(-3.3, -44.4) << QPointF(8.8, 1.1);
}

void tst_Geometry::calculateAngleUsesSinglePrecisionFormula()
{
    QFETCH(QPointF, a);
    QFETCH(QPointF, b);
    // A plain transcription of the rule, kept apart from the implementation.
    const float d = float(std::sqrt(std::pow(a.x() - b.x(), 2) + std::pow(a.y() - b.y(), 2)));
    float expected;
    if (a.y() - b.y() > 0) {
        const float t = float(std::asin((a.y() - b.y()) / double(d)));
        expected = a.x() > b.x() ? 360.0f - (180.0f * t) / 3.141592f : 180.0f + (180.0f * t) / 3.141592f;
    } else {
        const float t = float(std::asin((b.y() - a.y()) / double(d)));
        expected = a.x() > b.x() ? (180.0f * t) / 3.141592f : 180.0f - (180.0f * t) / 3.141592f;
    }
    QCOMPARE(CalculateAngle(a, b), expected);
}

void tst_Geometry::calculateAngleOfEqualPointsIsZero()
{
    QCOMPARE(CalculateAngle(QPointF(5, 5), QPointF(5, 5)), 0.0f);
    QCOMPARE(CalculateAngle(QPointF(0, 0), QPointF(0, 0)), 0.0f);
}

void tst_Geometry::calculateAngleTreatsSubPixelHeightAsLevel()
{
    QCOMPARE(CalculateAngle(QPointF(10, 10.5), QPointF(0, 10)), 0.0f);
    QCOMPARE(CalculateAngle(QPointF(-10, 10.9), QPointF(0, 10)), 180.0f);
    QCOMPARE(CalculateAngle(QPointF(0.1, 9.2), QPointF(0, 10)), 0.0f);
    // One whole pixel of height is no longer level.
    QVERIFY(CalculateAngle(QPointF(10, 11), QPointF(0, 10)) > 300.0f);
}

void tst_Geometry::calculateAngleOfNonFinitePointsIsDefined()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(CalculateAngle(QPointF(nan, nan), QPointF(0, 0)), 180.0f);
    // A height beyond int saturates instead of overflowing the cast.
    QCOMPARE(CalculateAngle(QPointF(1e300, 5e299), QPointF(0, 0)), 360.0f);
    QVERIFY(CalculateAngle(QPointF(0, 1e20), QPointF(0, 0)) == 270.0f);
}

void tst_Geometry::adjustRect_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QRectF>("expected");

    QTest::newRow("reversed corners") << QRectF(QPointF(10, 10), QPointF(0, 0)) << QRectF(0, 0, 10, 10);
    QTest::newRow("negative width") << QRectF(20, 5, -8, 4) << QRectF(12, 5, 8, 4);
    QTest::newRow("negative height") << QRectF(1, 9, 3, -6) << QRectF(1, 3, 3, 6);
    QTest::newRow("already normal") << QRectF(2, 3, 4, 5) << QRectF(2, 3, 4, 5);
    QTest::newRow("empty") << QRectF(7, 7, 0, 0) << QRectF(7, 7, 0, 0);
}

void tst_Geometry::adjustRect()
{
    QFETCH(QRectF, rect);
    QFETCH(QRectF, expected);
    AdjustRect(rect);
    QCOMPARE(rect, expected);
    QVERIFY(rect.width() >= 0 && rect.height() >= 0);
}

void tst_Geometry::rotatePointBelowThresholdIsUnchanged_data()
{
    QTest::addColumn<float>("angle");
    QTest::newRow("0") << 0.0f;
    QTest::newRow("0.0000005") << 0.0000005f;
    QTest::newRow("0.000001") << 0.000001f;
    QTest::newRow("-0.000001") << -0.000001f;
    QTest::newRow("-0") << -0.0f;
}

void tst_Geometry::rotatePointBelowThresholdIsUnchanged()
{
    QFETCH(float, angle);
    const QPointF p(12.345678901234, -98.7654321);
    const QPointF result = RotatePoint(p, QPointF(3.3, 4.4), angle);
    QCOMPARE(result.x(), p.x());
    QCOMPARE(result.y(), p.y());
}

void tst_Geometry::rotatePointByQuarterTurn()
{
    const QPointF result = RotatePoint(QPointF(1, 0), QPointF(0, 0), 90.0f);
    QVERIFY(std::fabs(result.x()) < 1e-6);
    QVERIFY(std::fabs(result.y() - 1.0) < 1e-6);
    // With y down, a positive angle turns clockwise on the screen: right goes down.
    const QPointF about = RotatePoint(QPointF(110, 100), QPointF(100, 100), 90.0f);
    QVERIFY(std::fabs(about.x() - 100.0) < 1e-4);
    QVERIFY(std::fabs(about.y() - 110.0) < 1e-4);
    // The float pi leaves a trace: a quarter turn of (1, 0) does not land on 0 exactly.
    QVERIFY(result.x() != 0.0);
}

void tst_Geometry::rotatePointMatchesFloatFormula_data()
{
    QTest::addColumn<float>("angle");
    QTest::newRow("30") << 30.0f;
    QTest::newRow("-45.5") << -45.5f;
    QTest::newRow("359") << 359.0f;
    QTest::newRow("0.000002") << 0.000002f;
}

void tst_Geometry::rotatePointMatchesFloatFormula()
{
    QFETCH(float, angle);
    const QPointF point(17.25, -3.5);
    const QPointF center(2.0, 9.0);
    const QPointF p = point - center;
    const float r = angle / 180.0f * 3.141592f;
    const float c = std::cos(r);
    const float s = std::sin(r);
    const QPointF expected = QPointF(p.x() * c - p.y() * s, p.x() * s + p.y() * c) + center;
    const QPointF result = RotatePoint(point, center, angle);
    QCOMPARE(result.x(), expected.x());
    QCOMPARE(result.y(), expected.y());
}

void tst_Geometry::isValidQImage_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("valid");
    QTest::newRow("1 x 1") << QSize(1, 1) << true;
    QTest::newRow("640 x 480") << QSize(640, 480) << true;
    QTest::newRow("null image") << QSize(0, 0) << false;
}

void tst_Geometry::isValidQImage()
{
    QFETCH(QSize, size);
    QFETCH(bool, valid);
    QImage image = size.isEmpty() ? QImage() : QImage(size, QImage::Format_RGB32);
    QCOMPARE(IsValidQImage(&image), valid);
    QCOMPARE(IsValidQImage(nullptr), false);
}

void tst_Geometry::convertToButtonIndex_data()
{
    QTest::addColumn<qint64>("flag");
    QTest::addColumn<int>("expected");

    QTest::newRow("0x80000000") << qint64(0x80000000) << 0;
    QTest::newRow("0x40000000") << qint64(0x40000000) << 1;
    QTest::newRow("0x20000000") << qint64(0x20000000) << 2;
    QTest::newRow("0x10000000") << qint64(0x10000000) << 3;
    QTest::newRow("0x08000000") << qint64(0x08000000) << 4;
    QTest::newRow("0x04000000") << qint64(0x04000000) << 6;
    QTest::newRow("0x00040000") << qint64(0x00040000) << 7;
    QTest::newRow("0x02000000") << qint64(0x02000000) << 10;
    QTest::newRow("0x01000000") << qint64(0x01000000) << 8;
    QTest::newRow("0x00800000") << qint64(0x00800000) << 5;
    QTest::newRow("0x00400000") << qint64(0x00400000) << 11;
    QTest::newRow("0x00200000") << qint64(0x00200000) << 12;
    QTest::newRow("0x00100000") << qint64(0x00100000) << 13;
    QTest::newRow("0x00020000") << qint64(0x00020000) << 9;
    QTest::newRow("two bits match nothing") << qint64(0x80000000 | 0x40000000) << kUnknownButtonIndex;
    QTest::newRow("zero") << qint64(0) << kUnknownButtonIndex;
    QTest::newRow("reserved bit 0x00080000") << qint64(0x00080000) << kUnknownButtonIndex;
    QTest::newRow("negative") << qint64(-1) << kUnknownButtonIndex;
}

void tst_Geometry::convertToButtonIndex()
{
    QFETCH(qint64, flag);
    QFETCH(int, expected);
    QCOMPARE(::convertToButtonIndex(long(flag)), expected);
}

QTEST_APPLESS_MAIN(tst_Geometry)
#include "tst_geometry.moc"
