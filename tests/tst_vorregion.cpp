#include "kitpictures.h"

#include <QtTest/QtTest>

#include "VorImage.h"
#include "VorRegion.h"

#include <opencv2/core.hpp>

#include <climits>
#include <vector>

using Runs = std::vector<VorRegion::Run>;
Q_DECLARE_METATYPE(Runs)

namespace QTest {
template <>
char* toString(const Runs& runs)
{
    QString s;
    for (const VorRegion::Run& r : runs)
        s += QStringLiteral("{%1,%2,%3}").arg(r.row).arg(r.columnBegin).arg(r.columnEnd);
    return QTest::toString(s);
}
} // namespace QTest

namespace {

VorRegion regionOf(const Runs& runs)
{
    VorRegion r;
    r.SetRuns(runs);
    return r;
}

} // namespace

class TestVorRegion : public QObject
{
    Q_OBJECT

private slots:
    void defaultRegionIsEmpty();
    void setRunsSortsMergesAndClips_data();
    void setRunsSortsMergesAndClips();
    void setRunsReplacesContent();
    void areaCountsPixels();
    void containsFollowsRuns_data();
    void containsFollowsRuns();
    void widthAndHeightFromExtremes();
    void fromBinaryImage_data();
    void fromBinaryImage();
    void fromEmptyImageIsEmpty();
    void fromPartOfLargerImage();
    void fromImageMatchesEveryPixel();
    void equality();
    void copyAndAssignment();
};

void TestVorRegion::defaultRegionIsEmpty()
{
    const VorRegion r;
    QVERIFY(r.IsEmpty());
    QCOMPARE(r.Area(), 0LL);
    QCOMPARE(r.Width(), 0);
    QCOMPARE(r.Height(), 0);
    QVERIFY(r.Runs().empty());
    QVERIFY(!r.Contains(0, 0));
}

void TestVorRegion::setRunsSortsMergesAndClips_data()
{
    QTest::addColumn<Runs>("input");
    QTest::addColumn<Runs>("expected");

    QTest::newRow("empty") << Runs{} << Runs{};
    QTest::newRow("single") << Runs{{3, 4, 8}} << Runs{{3, 4, 8}};
    QTest::newRow("sorted by row then column")
        << Runs{{5, 1, 2}, {1, 9, 10}, {1, 0, 3}, {0, 7, 8}}
        << Runs{{0, 7, 8}, {1, 0, 3}, {1, 9, 10}, {5, 1, 2}};
    QTest::newRow("overlapping merged") << Runs{{2, 0, 5}, {2, 3, 9}} << Runs{{2, 0, 9}};
    QTest::newRow("adjacent merged") << Runs{{2, 0, 5}, {2, 5, 7}} << Runs{{2, 0, 7}};
    QTest::newRow("contained merged") << Runs{{2, 0, 10}, {2, 3, 4}} << Runs{{2, 0, 10}};
    QTest::newRow("gap of one kept apart") << Runs{{2, 0, 5}, {2, 6, 7}} << Runs{{2, 0, 5}, {2, 6, 7}};
    QTest::newRow("same columns on other rows kept apart")
        << Runs{{1, 0, 5}, {2, 0, 5}} << Runs{{1, 0, 5}, {2, 0, 5}};
    QTest::newRow("chain merged out of order")
        << Runs{{4, 8, 12}, {4, 0, 3}, {4, 3, 8}} << Runs{{4, 0, 12}};
    QTest::newRow("duplicates merged") << Runs{{0, 1, 2}, {0, 1, 2}} << Runs{{0, 1, 2}};
    QTest::newRow("empty run dropped") << Runs{{0, 4, 4}, {1, 2, 3}} << Runs{{1, 2, 3}};
    QTest::newRow("reversed run dropped") << Runs{{0, 6, 2}} << Runs{};
    QTest::newRow("negative row dropped") << Runs{{-1, 0, 5}, {0, 0, 1}} << Runs{{0, 0, 1}};
    QTest::newRow("negative begin clipped") << Runs{{0, -5, 3}} << Runs{{0, 0, 3}};
    QTest::newRow("wholly negative columns dropped") << Runs{{0, -5, -1}, {0, -3, 0}} << Runs{};
    QTest::newRow("large values")
        << Runs{{INT_MAX, INT_MAX - 1, INT_MAX}, {INT_MIN, 0, 1}} << Runs{{INT_MAX, INT_MAX - 1, INT_MAX}};
}

void TestVorRegion::setRunsSortsMergesAndClips()
{
    QFETCH(Runs, input);
    QFETCH(Runs, expected);
    VorRegion r;
    r.SetRuns(input);
    QCOMPARE(r.Runs(), expected);
    QCOMPARE(r.IsEmpty(), expected.empty());
}

void TestVorRegion::setRunsReplacesContent()
{
    VorRegion r = regionOf({{0, 0, 10}, {1, 0, 10}});
    r.SetRuns({{5, 5, 6}});
    QCOMPARE(r.Runs(), (Runs{{5, 5, 6}}));
    r.SetRuns({});
    QVERIFY(r.IsEmpty());
}

void TestVorRegion::areaCountsPixels()
{
    QCOMPARE(regionOf({{0, 0, 10}}).Area(), 10LL);
    QCOMPARE(regionOf({{0, 0, 10}, {0, 5, 15}, {3, 2, 4}}).Area(), 17LL);
    QCOMPARE(regionOf({{0, -4, 2}}).Area(), 2LL);

    // Larger than an int can count.
    Runs wide;
    for (int row = 0; row < 4; ++row)
        wide.push_back({row, 0, INT_MAX});
    QCOMPARE(regionOf(wide).Area(), 4LL * INT_MAX);
}

void TestVorRegion::containsFollowsRuns_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("inside");

    // Region: row 1 columns 2..4, row 1 columns 8..8, row 3 columns 0..1.
    QTest::newRow("first of a run") << 2 << 1 << true;
    QTest::newRow("last of a run") << 4 << 1 << true;
    QTest::newRow("one past a run") << 5 << 1 << false;
    QTest::newRow("before a run") << 1 << 1 << false;
    QTest::newRow("second run") << 8 << 1 << true;
    QTest::newRow("between rows") << 2 << 2 << false;
    QTest::newRow("row without runs before") << 0 << 0 << false;
    QTest::newRow("origin of last row") << 0 << 3 << true;
    QTest::newRow("past last row") << 0 << 4 << false;
    QTest::newRow("negative x") << -1 << 3 << false;
    QTest::newRow("negative y") << 2 << -1 << false;
    QTest::newRow("extremes") << INT_MAX << INT_MAX << false;
}

void TestVorRegion::containsFollowsRuns()
{
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(bool, inside);
    const VorRegion r = regionOf({{3, 0, 2}, {1, 8, 9}, {1, 2, 5}});
    QCOMPARE(r.Contains(x, y), inside);
}

void TestVorRegion::widthAndHeightFromExtremes()
{
    const VorRegion r = regionOf({{2, 3, 7}, {9, 0, 1}, {4, 10, 12}});
    QCOMPARE(r.Width(), 12);
    QCOMPARE(r.Height(), 10);

    const VorRegion origin = regionOf({{0, 0, 1}});
    QCOMPARE(origin.Width(), 1);
    QCOMPARE(origin.Height(), 1);
}

void TestVorRegion::fromBinaryImage_data()
{
    Kit::addMarkedPictureRows();
}

void TestVorRegion::fromBinaryImage()
{
    QFETCH(int, cvType);
    QFETCH(int, channel);
    QFETCH(double, value);

    // Pixels: row 0 columns 1..3, row 0 column 6, row 2 column 0, row 3 columns 5..7.
    const cv::Mat src = Kit::markedPicture(8, 5, cvType, channel, value,
                                           {{1, 0}, {2, 0}, {3, 0}, {6, 0}, {0, 2}, {5, 3}, {6, 3}, {7, 3}});
    QCOMPARE(src.type(), cvType);

    const VorRegion r{VorImage(src)};
    QCOMPARE(r.Runs(), (Runs{{0, 1, 4}, {0, 6, 7}, {2, 0, 1}, {3, 5, 8}}));
    QCOMPARE(r.Area(), 8LL);
    QCOMPARE(r.Width(), 8);
    QCOMPARE(r.Height(), 4);
    QVERIFY(r.Contains(6, 0));
    QVERIFY(!r.Contains(4, 0));
}

void TestVorRegion::fromEmptyImageIsEmpty()
{
    const VorRegion r{VorImage()};
    QVERIFY(r.IsEmpty());
    QCOMPARE(r.Area(), 0LL);

    const VorRegion blank{VorImage(cv::Mat(4, 4, CV_8UC3, cv::Scalar::all(0)))};
    QVERIFY(blank.IsEmpty());
}

void TestVorRegion::fromPartOfLargerImage()
{
    cv::Mat big(10, 10, CV_8UC1, cv::Scalar(0));
    big.at<unsigned char>(2, 3) = 1;  // pixel (0, 0) of the part
    big.at<unsigned char>(4, 5) = 1;  // pixel (2, 2) of the part
    big.at<unsigned char>(2, 2) = 1;  // left of the part
    big.at<unsigned char>(2, 6) = 1;  // right of the part
    const VorRegion r{VorImage(big(cv::Rect(3, 2, 3, 3)))};
    QCOMPARE(r.Runs(), (Runs{{0, 0, 1}, {2, 2, 3}}));
}

void TestVorRegion::fromImageMatchesEveryPixel()
{
    cv::Mat src(37, 53, CV_8UC1);
    cv::RNG rng(1234);
    rng.fill(src, cv::RNG::UNIFORM, 0, 3);  // about a third of the pixels are zero
    const VorRegion r{VorImage(src)};

    long long count = 0;
    for (int y = 0; y < src.rows; ++y) {
        for (int x = 0; x < src.cols; ++x) {
            const bool set = src.at<unsigned char>(y, x) != 0;
            count += set;
            QCOMPARE(r.Contains(x, y), set);
        }
    }
    QCOMPARE(r.Area(), count);
    for (std::size_t i = 1; i < r.Runs().size(); ++i) {
        const VorRegion::Run& a = r.Runs()[i - 1];
        const VorRegion::Run& b = r.Runs()[i];
        QVERIFY(a.row < b.row || (a.row == b.row && a.columnEnd < b.columnBegin));
    }
}

void TestVorRegion::equality()
{
    const VorRegion a = regionOf({{0, 0, 3}, {0, 3, 5}});
    const VorRegion b = regionOf({{0, 0, 5}});
    const VorRegion c = regionOf({{0, 0, 4}});
    QVERIFY(a == b);
    QVERIFY(!(a != b));
    QVERIFY(a != c);
    QVERIFY(!(a == c));
    QVERIFY(VorRegion() == regionOf({{1, 5, 5}}));

    cv::Mat m(1, 5, CV_8UC1, cv::Scalar(7));
    QVERIFY(VorRegion(VorImage(m)) == b);
}

void TestVorRegion::copyAndAssignment()
{
    VorRegion a = regionOf({{1, 2, 3}, {4, 5, 6}});
    const VorRegion b(a);
    VorRegion c;
    c = a;
    a.SetRuns({{0, 0, 1}});
    QCOMPARE(b.Runs(), (Runs{{1, 2, 3}, {4, 5, 6}}));
    QCOMPARE(c.Runs(), (Runs{{1, 2, 3}, {4, 5, 6}}));

    VorRegion& same = c;
    c = same;
    QCOMPARE(c.Area(), 2LL);
}

QTEST_APPLESS_MAIN(TestVorRegion)
#include "tst_vorregion.moc"
