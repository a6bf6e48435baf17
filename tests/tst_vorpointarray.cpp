#include "kitkinds.h"

#include <QtTest/QtTest>

#include "VorPoint.h"
#include "VorPointArray.h"

#include <limits>

class TestVorPointArray : public QObject
{
    Q_OBJECT

private slots:
    void pointIsTwoDoubles();
    void defaultArrayIsEmpty();
    void appendKeepsOrderAndValues();
    void clearEmptiesTheArray();
    void indexWritesThrough();
    void outOfRangeGivesResetSparePoint_data();
    void outOfRangeGivesResetSparePoint();
    void constOutOfRangeGivesOrigin();
    void equalityComparesEveryPoint();
    void copyIsIndependent();
};

void TestVorPointArray::pointIsTwoDoubles()
{
    QCOMPARE(sizeof(VorPoint), 2 * sizeof(double));
    const VorPoint p(1.25, -7.5);
    const double* raw = reinterpret_cast<const double*>(&p);
    QCOMPARE(raw[0], 1.25);
    QCOMPARE(raw[1], -7.5);
    QCOMPARE(VorPoint().x, 0.0);
    QCOMPARE(VorPoint().y, 0.0);
}

void TestVorPointArray::defaultArrayIsEmpty()
{
    const VorPointArray a;
    QCOMPARE(a.Length(), 0);
}

void TestVorPointArray::appendKeepsOrderAndValues()
{
    VorPointArray a;
    for (int i = 0; i < 100; ++i)
        a.Append(VorPoint(i + 0.5, -i - 0.25));
    QCOMPARE(a.Length(), 100);
    for (int i = 0; i < 100; ++i) {
        QCOMPARE(a[i].x, i + 0.5);
        QCOMPARE(a[i].y, -i - 0.25);
    }
}

void TestVorPointArray::clearEmptiesTheArray()
{
    VorPointArray a;
    a.Append(VorPoint(1, 2));
    a.Append(VorPoint(3, 4));
    a.Clear();
    QCOMPARE(a.Length(), 0);
    a.Append(VorPoint(5, 6));
    QCOMPARE(a.Length(), 1);
    QCOMPARE(a[0].x, 5.0);
    QCOMPARE(a[0].y, 6.0);
}

void TestVorPointArray::indexWritesThrough()
{
    VorPointArray a;
    a.Append(VorPoint(1, 2));
    a[0].x = 9.0;
    a[0] = VorPoint(a[0].x, 8.0);
    QCOMPARE(a[0].x, 9.0);
    QCOMPARE(a[0].y, 8.0);
}

void TestVorPointArray::outOfRangeGivesResetSparePoint_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("negative") << -1;
    QTest::newRow("most negative") << std::numeric_limits<int>::min();
    QTest::newRow("length") << 3;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void TestVorPointArray::outOfRangeGivesResetSparePoint()
{
    QFETCH(int, index);
    VorPointArray a;
    a.Append(VorPoint(1, 1));
    a.Append(VorPoint(2, 2));
    a.Append(VorPoint(3, 3));

    VorPoint& spare = a[index];
    QCOMPARE(spare.x, 0.0);
    QCOMPARE(spare.y, 0.0);
    spare = VorPoint(42, 43);

    // The next access resets the spare point; the array neither grows nor changes.
    const VorPoint& again = a[index];
    QCOMPARE(again.x, 0.0);
    QCOMPARE(again.y, 0.0);
    QCOMPARE(a.Length(), 3);
    QCOMPARE(a[0].x, 1.0);
    QCOMPARE(a[2].y, 3.0);
}

void TestVorPointArray::constOutOfRangeGivesOrigin()
{
    VorPointArray a;
    a[5] = VorPoint(7, 7);
    const VorPointArray& ca = a;
    QCOMPARE(ca[5].x, 0.0);
    QCOMPARE(ca[-2].y, 0.0);
    QCOMPARE(ca.Length(), 0);
}

void TestVorPointArray::equalityComparesEveryPoint()
{
    VorPointArray a;
    a.Append(VorPoint(1, 2));
    a.Append(VorPoint(3, 4));
    VorPointArray b;
    b.Append(VorPoint(1, 2));
    b.Append(VorPoint(3, 4));
    QVERIFY(a == b);
    QVERIFY(!(a != b));

    b[1].y = 4.5;
    QVERIFY(!(a == b));
    QVERIFY(a != b);

    VorPointArray c;
    c.Append(VorPoint(1, 2));
    QVERIFY(a != c);
    QVERIFY(VorPointArray() == VorPointArray());
}

void TestVorPointArray::copyIsIndependent()
{
    VorPointArray a;
    a.Append(VorPoint(1, 2));
    VorPointArray b(a);
    VorPointArray c;
    c = a;
    a[0] = VorPoint(9, 9);
    a.Append(VorPoint(5, 5));
    QCOMPARE(b.Length(), 1);
    QCOMPARE(b[0].x, 1.0);
    QCOMPARE(c.Length(), 1);
    QCOMPARE(c[0].y, 2.0);
}

QTEST_APPLESS_MAIN(TestVorPointArray)
#include "tst_vorpointarray.moc"
