// The two geometry holders of the data model, the region of interest and the
// overlay, keep one contract kind by kind: a holder is of the kind of its last
// Gen call and gives that call's values back through the Get of the kind,
// which takes null for any output; the Get of any other kind answers no and
// writes nothing; copies keep the geometry. Each row is one kind of one
// holder.

#include "kitholders.h"

#include <QtTest/QtTest>

namespace {

enum Holder { RegionOfInterest, Overlay };

// The row's holder and kind, handed to a check that takes the holder's kind
// table and the kind's code.
template <class Check>
void onRow(Check check)
{
    QFETCH_GLOBAL(int, holder);
    QFETCH_GLOBAL(int, kind);
    if (holder == RegionOfInterest)
        check(Kit::roiKinds(), kind);
    else
        check(Kit::overlayKinds(), kind);
}

template <class Kinds>
void addRows(const char* holderName, Holder holder, const Kinds& kinds)
{
    for (const auto& kind : kinds.kinds())
        QTest::addRow("%s: %s", holderName, kind.name) << int(holder) << kind.code;
}

// One row a kind of each holder, named "holder: kind".
void addHolderKindRows()
{
    QTest::addColumn<int>("holder");
    QTest::addColumn<int>("kind");
    addRows("region of interest", RegionOfInterest, Kit::roiKinds());
    addRows("overlay", Overlay, Kit::overlayKinds());
}

} // namespace

class tst_GeometryKinds : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { addHolderKindRows(); }

    void defaultAnswersNoGet()
    {
        onRow([](const auto& kinds, int kind) { kinds.verifyDefaultAnswersNoGet(kind); });
    }
    void genThenGetRoundTrips()
    {
        onRow([](const auto& kinds, int kind) { kinds.verifyGenThenGet(kind); });
    }
    void getOfAnotherKindWritesNothing()
    {
        onRow([](const auto& kinds, int kind) { kinds.verifyGetOfAnotherKindWritesNothing(kind); });
    }
    void getSkipsNullOutputs()
    {
        onRow([](const auto& kinds, int kind) { kinds.verifyGetSkipsNullOutputs(kind); });
    }
    void copyKeepsGeometry()
    {
        onRow([](const auto& kinds, int kind) { kinds.verifyCopiesKeepGeometry(kind); });
    }
};

QTEST_APPLESS_MAIN(tst_GeometryKinds)
#include "tst_geometrykinds.moc"
