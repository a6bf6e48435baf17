#pragma once

// The geometry holders of the data model (a region of interest, an overlay)
// kind by kind, as a test fills and reads them: sample values that survive
// only an exact copy, outputs preset to values no sample uses, and a table of
// kinds that knows, for each, its Gen call, its Get call with and without
// outputs, and what its Get gives back. The checks run over such a table:
// the kind filled answers its Get with the sample, every other kind answers
// no and writes nothing.

#include "kitcompare.h"

#include "VorPointArray.h"

#include <QString>
#include <QVector>
#include <QtTest/QTest>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <utility>

namespace QTest {
template <>
inline char* toString(const VorPoint& p)
{
    return QTest::toString(QStringLiteral("(%1, %2)").arg(p.x, 0, 'g', 17).arg(p.y, 0, 'g', 17));
}
} // namespace QTest

namespace Kit {

inline VorPointArray pointArray(std::initializer_list<VorPoint> points)
{
    VorPointArray array;
    for (const VorPoint& p : points)
        array.Append(p);
    return array;
}

// Values that survive only an exact copy.
namespace Sample {
const VorPoint kA(12.25, -3.5);
const VorPoint kB(640.125, 480.0625);
const double kV1 = 37.4375;
const double kV2 = 0.001;
const double kV3 = -271.828125;
const double kV4 = 359.875;
const int kDirection = 1;
const int kCount = 23;

inline VorPointArray points()
{
    return pointArray({VorPoint(1.5, 2.5), VorPoint(100.25, 3.0), VorPoint(55.0, 80.125), VorPoint(-4.0, 7.75)});
}
} // namespace Sample

// The outputs of a Get call that every holder shares: points, numbers,
// counts and a point list, preset to values no sample uses. A holder with
// outputs of its own (a mask, a text) derives from it.
struct KindOutputs
{
    VorPoint a{-999.0, -999.0};
    VorPoint b{-888.0, -888.0};
    double d[4] = {-1.0, -2.0, -3.0, -4.0};
    int i[2] = {-5, -6};
    VorPointArray points;

    KindOutputs() { points.Append(VorPoint(-7.0, -7.0)); }

    bool sharedUntouched() const { return same(*this, KindOutputs()); }

    static bool same(const KindOutputs& x, const KindOutputs& y)
    {
        return x.a == y.a && x.b == y.b && std::equal(x.d, x.d + 4, y.d) && std::equal(x.i, x.i + 2, y.i)
            && x.points == y.points;
    }
};

// Fails the running test unless the shared outputs equal the expected ones.
inline void compareShared(const KindOutputs& actual, const KindOutputs& expected)
{
    QCOMPARE(actual.a, expected.a);
    QCOMPARE(actual.b, expected.b);
    for (int k = 0; k < 4; ++k)
        QCOMPARE(actual.d[k], expected.d[k]);
    for (int k = 0; k < 2; ++k)
        QCOMPARE(actual.i[k], expected.i[k]);
    QVERIFY(actual.points == expected.points);
}

// The kinds of a holder: the holder's class, and its outputs, derived from
// KindOutputs with an untouched() of its own.
template <class Holder, class Outputs>
class KindTable
{
public:
    struct Kind
    {
        const char* name;
        int code;
        std::function<void(Holder&)> gen;
        std::function<bool(const Holder&, Outputs&)> get;
        std::function<bool(const Holder&)> getWithNulls;
        // Writes what the Get of the sample gives into preset outputs.
        std::function<void(KindOutputs&)> expect = nullptr;
        // Checks a holder's own outputs; none for the shared ones alone.
        std::function<void(const Outputs&)> verifyOwn = nullptr;
        // Checks a Get with some outputs null and the others filled; none
        // where only all or none are tried.
        std::function<void(const Holder&)> verifySomeNulls = nullptr;
    };

    // The kinds that both holders have, with the same Gen and Get calls, each
    // by the holder's code; typeOf tells the code of a holder's kind.
    KindTable(int (Holder::*typeOf)() const, int point, int line, int rect1, int rect2, int ellipse, int circle, int polygon, int irregular,
              int torus, int arc)
        : m_typeOf(typeOf)
    {
        using namespace Sample;
        add({"point", point, [](Holder& h) { h.GenPoint(kA); },
             [](const Holder& h, Outputs& o) { return h.GetPoint(&o.a); },
             [](const Holder& h) { return h.GetPoint(nullptr); }, [](KindOutputs& e) { e.a = kA; }});
        add({"line", line, [](Holder& h) { h.GenLine(kA, kB); },
             [](const Holder& h, Outputs& o) { return h.GetLine(&o.a, &o.b); },
             [](const Holder& h) { return h.GetLine(nullptr, nullptr); }, &expectTwoPoints});
        add({"rect1", rect1, [](Holder& h) { h.GenRect1(kA, kB); },
             [](const Holder& h, Outputs& o) { return h.GetRect1(&o.a, &o.b); },
             [](const Holder& h) { return h.GetRect1(nullptr, nullptr); }, &expectTwoPoints});
        add({"rect2", rect2, [](Holder& h) { h.GenRect2(kA, kV1, kV2, kV3); },
             [](const Holder& h, Outputs& o) { return h.GetRect2(&o.a, &o.d[0], &o.d[1], &o.d[2]); },
             [](const Holder& h) { return h.GetRect2(nullptr, nullptr, nullptr, nullptr); }, &expectTurned});
        add({"ellipse", ellipse, [](Holder& h) { h.GenEllipse(kA, kV1, kV2, kV3); },
             [](const Holder& h, Outputs& o) { return h.GetEllipse(&o.a, &o.d[0], &o.d[1], &o.d[2]); },
             [](const Holder& h) { return h.GetEllipse(nullptr, nullptr, nullptr, nullptr); }, &expectTurned});
        add({"circle", circle, [](Holder& h) { h.GenCircle(kA, kV1); },
             [](const Holder& h, Outputs& o) { return h.GetCircle(&o.a, &o.d[0]); },
             [](const Holder& h) { return h.GetCircle(nullptr, nullptr); },
             [](KindOutputs& e) { e.a = kA, e.d[0] = kV1; }});
        add({"polygon", polygon, [](Holder& h) { h.GenPolygon(Sample::points()); },
             [](const Holder& h, Outputs& o) { return h.GetPolygon(&o.points); },
             [](const Holder& h) { return h.GetPolygon(nullptr); }, &expectPoints});
        add({"irregular", irregular, [](Holder& h) { h.GenIrregular(Sample::points()); },
             [](const Holder& h, Outputs& o) { return h.GetIrregular(&o.points); },
             [](const Holder& h) { return h.GetIrregular(nullptr); }, &expectPoints});
        add({"torus", torus, [](Holder& h) { h.GenTorus(kA, kV1, kV2, kV3, kV4); },
             [](const Holder& h, Outputs& o) { return h.GetTorus(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.d[3]); },
             [](const Holder& h) { return h.GetTorus(nullptr, nullptr, nullptr, nullptr, nullptr); },
             &expectTorus});
        add({"arc", arc, [](Holder& h) { h.GenArc(kA, kV1, kV3, kV4); },
             [](const Holder& h, Outputs& o) { return h.GetArc(&o.a, &o.d[0], &o.d[1], &o.d[2]); },
             [](const Holder& h) { return h.GetArc(nullptr, nullptr, nullptr, nullptr); },
             [](KindOutputs& e) { e.a = kA, e.d[0] = kV1, e.d[1] = kV3, e.d[2] = kV4; }});
    }

    // A kind of this holder alone.
    void add(const Kind& kind) { m_kinds.append(kind); }

    void setVerifySomeNulls(int code, std::function<void(const Holder&)> verify)
    {
        for (Kind& kind : m_kinds) {
            if (kind.code == code)
                kind.verifySomeNulls = std::move(verify);
        }
    }

    const QVector<Kind>& kinds() const { return m_kinds; }

    void gen(Holder& holder, int code) const { kindOf(code).gen(holder); }
    bool get(const Holder& holder, int code, Outputs& o) const { return kindOf(code).get(holder, o); }
    bool getWithNulls(const Holder& holder, int code) const { return kindOf(code).getWithNulls(holder); }

    // Fails the running test unless the outputs hold exactly what the Gen
    // call of the kind put in, and nothing else is written.
    void verifyRoundTrip(int code, const Outputs& o) const
    {
        const Kind& kind = kindOf(code);
        KindOutputs expected;
        if (kind.expect)
            kind.expect(expected);
        compareShared(o, expected);
        if (kind.verifyOwn && !QTest::currentTestFailed())
            kind.verifyOwn(o);
    }

    // Fails the running test unless the holder answers the Get of its kind
    // with the sample of that kind.
    void verifyHolds(const Holder& holder, int code) const
    {
        Outputs o;
        QVERIFY2(get(holder, code, o), kindOf(code).name);
        verifyRoundTrip(code, o);
    }

    // Fails the running test unless the Get of every kind but except answers
    // no, with outputs or without, and writes nothing.
    void verifyNoGetBut(const Holder& holder, int except) const
    {
        for (const Kind& kind : m_kinds) {
            if (kind.code == except)
                continue;
            Outputs o;
            QVERIFY2(!kind.get(holder, o), kind.name);
            QVERIFY2(o.untouched(), kind.name);
            QVERIFY2(!kind.getWithNulls(holder), kind.name);
        }
    }

    // A holder never filled answers no to the Get of the kind, with outputs
    // or without, and writes nothing.
    void verifyDefaultAnswersNoGet(int code) const
    {
        const Holder holder;
        Outputs o;
        QVERIFY(!get(holder, code, o));
        QVERIFY(o.untouched());
        QVERIFY(!getWithNulls(holder, code));
    }

    // After the Gen call of the kind the holder is of that kind and its Get
    // gives the sample back.
    void verifyGenThenGet(int code) const
    {
        Holder holder;
        gen(holder, code);
        QCOMPARE((holder.*m_typeOf)(), code);
        verifyHolds(holder, code);
    }

    // After the Gen call of the kind every other kind's Get answers no and
    // writes nothing, and the holder stays of its kind.
    void verifyGetOfAnotherKindWritesNothing(int code) const
    {
        Holder holder;
        gen(holder, code);
        verifyNoGetBut(holder, code);
        QCOMPARE((holder.*m_typeOf)(), code);
    }

    // The Get of the kind takes null for any output: all null, or some.
    void verifyGetSkipsNullOutputs(int code) const
    {
        Holder holder;
        gen(holder, code);
        QVERIFY(getWithNulls(holder, code));
        if (kindOf(code).verifySomeNulls)
            kindOf(code).verifySomeNulls(holder);
    }

    // A copy and an assigned holder keep the geometry when the source
    // changes afterwards.
    void verifyCopiesKeepGeometry(int code) const
    {
        Holder source;
        gen(source, code);
        Holder copy(source);
        Holder assigned;
        assigned = source;
        source.GenPoint(VorPoint(-1, -1));
        verifyHolds(copy, code);
        verifyHolds(assigned, code);
    }

    static void expectTwoPoints(KindOutputs& e) { e.a = Sample::kA, e.b = Sample::kB; }
    static void expectTurned(KindOutputs& e)
    {
        e.a = Sample::kA, e.d[0] = Sample::kV1, e.d[1] = Sample::kV2, e.d[2] = Sample::kV3;
    }
    static void expectTorus(KindOutputs& e) { expectTurned(e), e.d[3] = Sample::kV4; }
    static void expectPoints(KindOutputs& e) { e.points = Sample::points(); }
    static void expectCount(KindOutputs& e) { e.i[0] = Sample::kDirection, e.i[1] = Sample::kCount; }

private:
    const Kind& kindOf(int code) const
    {
        for (const Kind& kind : m_kinds) {
            if (kind.code == code)
                return kind;
        }
        qFatal("no kind of code %d", code);
    }

    int (Holder::*m_typeOf)() const;
    QVector<Kind> m_kinds;
};

} // namespace Kit
