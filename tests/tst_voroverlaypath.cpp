#include "kitkinds.h"

#include <QtTest/QtTest>

#include "VorOverlay.h"
#include "VorOverlayPath.h"

namespace {

VorOverlay circleOverlay(double r)
{
    VorOverlay ov;
    ov.GenCircle(VorPoint(r, r + 1.0), r);
    return ov;
}

double radiusOf(const VorOverlay& ov)
{
    double r = -1.0;
    if (!ov.GetCircle(nullptr, &r))
        return -1.0;
    return r;
}

} // namespace

class TestVorOverlayPath : public QObject
{
    Q_OBJECT

private slots:
    void defaultPathIsEmpty();
    void appendKeepsOrder();
    void appendStoresACopy();
    void clearEmptiesThePath();
    void writableIndexChangesTheElement();
    void constIndexReturnsACopy();
    void outOfRangeIndex_data();
    void outOfRangeIndex();
    void writableOutOfRangeIsResetOnEveryAccess();
    void copyAndAssignmentAreIndependent();
    void appendOwnElement();
};

void TestVorOverlayPath::defaultPathIsEmpty()
{
    const VorOverlayPath path;
    QCOMPARE(path.Length(), 0);
    QCOMPARE(path[0].OverlayType(), int(VorOverlay::OV_NONE));
}

void TestVorOverlayPath::appendKeepsOrder()
{
    VorOverlayPath path;
    for (int i = 1; i <= 5; ++i)
        path.Append(circleOverlay(i));
    QCOMPARE(path.Length(), 5);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(radiusOf(path[i]), double(i + 1));
}

void TestVorOverlayPath::appendStoresACopy()
{
    VorOverlay ov = circleOverlay(3.0);
    ov.SetPen(10, 20, 30, 2);
    VorOverlayPath path;
    path.Append(ov);
    ov.GenPoint(VorPoint(0, 0));
    ov.SetPen(0, 0, 0, 9);

    const VorOverlayPath& cpath = path;
    const VorOverlay stored = cpath[0];
    QCOMPARE(stored.OverlayType(), int(VorOverlay::OV_CIRCLE));
    QCOMPARE(radiusOf(stored), 3.0);
    long r = 0, w = 0;
    QVERIFY(stored.GetPen(&r, nullptr, nullptr, &w));
    QCOMPARE(r, 10L);
    QCOMPARE(w, 2L);
    QVERIFY(stored.GetIVorOverlay() != ov.GetIVorOverlay());
}

void TestVorOverlayPath::clearEmptiesThePath()
{
    VorOverlayPath path;
    path.Append(circleOverlay(1));
    path.Append(circleOverlay(2));
    path.Clear();
    QCOMPARE(path.Length(), 0);
    path.Append(circleOverlay(7));
    QCOMPARE(path.Length(), 1);
    QCOMPARE(radiusOf(path[0]), 7.0);
}

void TestVorOverlayPath::writableIndexChangesTheElement()
{
    VorOverlayPath path;
    path.Append(circleOverlay(1));
    path.Append(circleOverlay(2));
    path[1].GenPoint(VorPoint(4, 5));
    path[0].SetBrush(1, 2, 3, 4);

    const VorOverlayPath& cpath = path;
    VorPoint p;
    QVERIFY(cpath[1].GetPoint(&p));
    QCOMPARE(p.x, 4.0);
    QCOMPARE(p.y, 5.0);
    long a = 0;
    QVERIFY(cpath[0].GetBrush(nullptr, nullptr, nullptr, &a));
    QCOMPARE(a, 4L);
    QCOMPARE(radiusOf(cpath[0]), 1.0);
}

void TestVorOverlayPath::constIndexReturnsACopy()
{
    VorOverlayPath path;
    path.Append(circleOverlay(6));
    const VorOverlayPath& cpath = path;

    VorOverlay copy = cpath[0];
    copy.GenLine(VorPoint(0, 0), VorPoint(1, 1));
    copy.SetPen(1, 1, 1, 1);
    QCOMPARE(cpath[0].OverlayType(), int(VorOverlay::OV_CIRCLE));
    QVERIFY(!cpath[0].GetPen(nullptr, nullptr, nullptr, nullptr));

    // Two reads give two distinct objects with distinct drawing parts.
    const VorOverlay first = cpath[0];
    const VorOverlay second = cpath[0];
    QVERIFY(first.GetIVorOverlay() != second.GetIVorOverlay());
    QVERIFY(first.GetIVorOverlay() != path[0].GetIVorOverlay());
}

void TestVorOverlayPath::outOfRangeIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("negative") << -1;
    QTest::newRow("very negative") << std::numeric_limits<int>::min();
    QTest::newRow("length") << 2;
    QTest::newRow("far past the end") << std::numeric_limits<int>::max();
}

void TestVorOverlayPath::outOfRangeIndex()
{
    QFETCH(int, index);
    VorOverlayPath path;
    path.Append(circleOverlay(1));
    path.Append(circleOverlay(2));

    const VorOverlayPath& cpath = path;
    const VorOverlay constRead = cpath[index];
    QCOMPARE(constRead.OverlayType(), int(VorOverlay::OV_NONE));
    QVERIFY(!constRead.GetPen(nullptr, nullptr, nullptr, nullptr));

    VorOverlay& spare = path[index];
    QCOMPARE(spare.OverlayType(), int(VorOverlay::OV_NONE));
    spare.GenCircle(VorPoint(0, 0), 50);
    QCOMPARE(path.Length(), 2);
    QCOMPARE(radiusOf(cpath[0]), 1.0);
    QCOMPARE(radiusOf(cpath[1]), 2.0);
}

void TestVorOverlayPath::writableOutOfRangeIsResetOnEveryAccess()
{
    VorOverlayPath path;
    VorOverlay& spare = path[3];
    spare.GenCircle(VorPoint(1, 1), 9);
    spare.SetPen(1, 2, 3, 4);
    spare.SetBrush(5, 6, 7, 8);

    VorOverlay& again = path[3];
    QCOMPARE(again.OverlayType(), int(VorOverlay::OV_NONE));
    QVERIFY(!again.GetPen(nullptr, nullptr, nullptr, nullptr));
    QVERIFY(!again.GetBrush(nullptr, nullptr, nullptr, nullptr));
    QVERIFY(!again.GetCircle(nullptr, nullptr));
    QCOMPARE(path.Length(), 0);
}

void TestVorOverlayPath::copyAndAssignmentAreIndependent()
{
    VorOverlayPath a;
    a.Append(circleOverlay(1));
    a.Append(circleOverlay(2));

    VorOverlayPath b(a);
    VorOverlayPath c;
    c.Append(circleOverlay(99));
    c = a;

    a[0].GenPoint(VorPoint(0, 0));
    a.Append(circleOverlay(3));

    QCOMPARE(b.Length(), 2);
    QCOMPARE(c.Length(), 2);
    QCOMPARE(radiusOf(b[0]), 1.0);
    QCOMPARE(radiusOf(c[0]), 1.0);
    QCOMPARE(radiusOf(c[1]), 2.0);

    VorOverlayPath& same = c;
    c = same;
    QCOMPARE(c.Length(), 2);
    QCOMPARE(radiusOf(c[1]), 2.0);
}

void TestVorOverlayPath::appendOwnElement()
{
    VorOverlayPath path;
    path.Append(circleOverlay(4));
    for (int i = 0; i < 10; ++i)
        path.Append(path[0]);
    QCOMPARE(path.Length(), 11);
    for (int i = 0; i < path.Length(); ++i)
        QCOMPARE(radiusOf(path[i]), 4.0);
}

QTEST_APPLESS_MAIN(TestVorOverlayPath)
#include "tst_voroverlaypath.moc"
