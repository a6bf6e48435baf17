#include <QtTest/QtTest>

#include "IVorOverlay.h"
#include "VorFont.h"
#include "VorOverlay.h"
#include "VorPointArray.h"
#include "VorRegion.h"
#include "VorVar.h"

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
const int kDirection = 1;
const int kCount = 23;
const char kText[] = "OK \xC4\xE3\xBA\xC3 \xE4\xBD\xA0";

VorPointArray samplePoints()
{
    VorPointArray pts;
    pts.Append(VorPoint(1.5, 2.5));
    pts.Append(VorPoint(100.25, 3.0));
    pts.Append(VorPoint(55.0, 80.125));
    return pts;
}

VorFont sampleFont()
{
    VorFont f("\xCB\xCE\xCC\xE5", 17);
    f.weight = 63;
    f.bold = 1;
    f.italic = 0;
    f.underline = 1;
    f.strikeOut = 1;
    return f;
}

VorRegion sampleRegion()
{
    VorRegion r;
    r.SetRuns({{2, 3, 9}, {4, 0, 1}, {7, 5, 6}});
    return r;
}

void genKind(VorOverlay& ov, int kind)
{
    switch (kind) {
    case VorOverlay::OV_POINT: ov.GenPoint(kA); break;
    case VorOverlay::OV_ARROWLINE: ov.GenArrowLine(kA, kB); break;
    case VorOverlay::OV_LINE: ov.GenLine(kA, kB); break;
    case VorOverlay::OV_RECT1: ov.GenRect1(kA, kB); break;
    case VorOverlay::OV_RAKERECT1: ov.GenRakeRect1(kA, kB, kDirection, kCount); break;
    case VorOverlay::OV_CIRCLE: ov.GenCircle(kA, kV1); break;
    case VorOverlay::OV_ELLIPSE: ov.GenEllipse(kA, kV1, kV2, kV3); break;
    case VorOverlay::OV_POLYGON: ov.GenPolygon(samplePoints()); break;
    case VorOverlay::OV_POLYLINE: ov.GenPolyLine(samplePoints()); break;
    case VorOverlay::OV_RECT2: ov.GenRect2(kA, kV1, kV2, kV3); break;
    case VorOverlay::OV_RAKERECT2: ov.GenRakeRect2(kA, kV1, kV2, kV3, kDirection, kCount); break;
    case VorOverlay::OV_TORUS: ov.GenTorus(kA, kV1, kV2, kV3, kV4); break;
    case VorOverlay::OV_SPOKETORUS: ov.GenSpokeTorus(kA, kV1, kV2, kV3, kV4, kDirection, kCount); break;
    case VorOverlay::OV_ARC: ov.GenArc(kA, kV1, kV3, kV4); break;
    case VorOverlay::OV_IRREGULAR: ov.GenIrregular(samplePoints()); break;
    case VorOverlay::OV_TEXT: ov.GenText(kB, kText, sampleFont()); break;
    case VorOverlay::OV_REGION: ov.GenRegion(sampleRegion()); break;
    default: QFAIL("unknown kind");
    }
}

// Outputs of a Get call, preset to values no Gen call in this file uses.
struct Outputs
{
    VorPoint a{-999.0, -999.0};
    VorPoint b{-888.0, -888.0};
    double d[4] = {-1.0, -2.0, -3.0, -4.0};
    int i[2] = {-5, -6};
    VorPointArray points;
    VorVar text{"untouched"};
    VorFont font{"untouched", 3};
    VorRegion region;

    Outputs()
    {
        points.Append(VorPoint(-7.0, -7.0));
        region.SetRuns({{100, 100, 101}});
    }

    bool untouched() const
    {
        VorRegion presetRegion;
        presetRegion.SetRuns({{100, 100, 101}});
        return a == VorPoint(-999.0, -999.0) && b == VorPoint(-888.0, -888.0) && d[0] == -1.0
            && d[1] == -2.0 && d[2] == -3.0 && d[3] == -4.0 && i[0] == -5 && i[1] == -6
            && points.Length() == 1 && points[0] == VorPoint(-7.0, -7.0)
            && QByteArray(text.S()) == "untouched" && QByteArray(font.S()) == "untouched"
            && font.size == 3 && region == presetRegion;
    }
};

bool callGet(const VorOverlay& ov, int kind, Outputs& o)
{
    switch (kind) {
    case VorOverlay::OV_POINT: return ov.GetPoint(&o.a);
    case VorOverlay::OV_ARROWLINE: return ov.GetArrowLine(&o.a, &o.b);
    case VorOverlay::OV_LINE: return ov.GetLine(&o.a, &o.b);
    case VorOverlay::OV_RECT1: return ov.GetRect1(&o.a, &o.b);
    case VorOverlay::OV_RAKERECT1: return ov.GetRakeRect1(&o.a, &o.b, &o.i[0], &o.i[1]);
    case VorOverlay::OV_CIRCLE: return ov.GetCircle(&o.a, &o.d[0]);
    case VorOverlay::OV_ELLIPSE: return ov.GetEllipse(&o.a, &o.d[0], &o.d[1], &o.d[2]);
    case VorOverlay::OV_POLYGON: return ov.GetPolygon(&o.points);
    case VorOverlay::OV_POLYLINE: return ov.GetPolyLine(&o.points);
    case VorOverlay::OV_RECT2: return ov.GetRect2(&o.a, &o.d[0], &o.d[1], &o.d[2]);
    case VorOverlay::OV_RAKERECT2:
        return ov.GetRakeRect2(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.i[0], &o.i[1]);
    case VorOverlay::OV_TORUS: return ov.GetTorus(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.d[3]);
    case VorOverlay::OV_SPOKETORUS:
        return ov.GetSpokeTorus(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.d[3], &o.i[0], &o.i[1]);
    case VorOverlay::OV_ARC: return ov.GetArc(&o.a, &o.d[0], &o.d[1], &o.d[2]);
    case VorOverlay::OV_IRREGULAR: return ov.GetIrregular(&o.points);
    case VorOverlay::OV_TEXT: return ov.GetText(&o.a, &o.text, &o.font);
    case VorOverlay::OV_REGION: return ov.GetRegion(&o.region);
    default: return false;
    }
}

bool callGetWithNulls(const VorOverlay& ov, int kind)
{
    switch (kind) {
    case VorOverlay::OV_POINT: return ov.GetPoint(nullptr);
    case VorOverlay::OV_ARROWLINE: return ov.GetArrowLine(nullptr, nullptr);
    case VorOverlay::OV_LINE: return ov.GetLine(nullptr, nullptr);
    case VorOverlay::OV_RECT1: return ov.GetRect1(nullptr, nullptr);
    case VorOverlay::OV_RAKERECT1: return ov.GetRakeRect1(nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_CIRCLE: return ov.GetCircle(nullptr, nullptr);
    case VorOverlay::OV_ELLIPSE: return ov.GetEllipse(nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_POLYGON: return ov.GetPolygon(nullptr);
    case VorOverlay::OV_POLYLINE: return ov.GetPolyLine(nullptr);
    case VorOverlay::OV_RECT2: return ov.GetRect2(nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_RAKERECT2:
        return ov.GetRakeRect2(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_TORUS: return ov.GetTorus(nullptr, nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_SPOKETORUS:
        return ov.GetSpokeTorus(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_ARC: return ov.GetArc(nullptr, nullptr, nullptr, nullptr);
    case VorOverlay::OV_IRREGULAR: return ov.GetIrregular(nullptr);
    case VorOverlay::OV_TEXT: return ov.GetText(nullptr, nullptr, nullptr);
    case VorOverlay::OV_REGION: return ov.GetRegion(nullptr);
    default: return false;
    }
}

const int kAllKinds[] = {
    VorOverlay::OV_POINT,     VorOverlay::OV_ARROWLINE,  VorOverlay::OV_LINE,
    VorOverlay::OV_RECT1,     VorOverlay::OV_RAKERECT1,  VorOverlay::OV_CIRCLE,
    VorOverlay::OV_ELLIPSE,   VorOverlay::OV_POLYGON,    VorOverlay::OV_POLYLINE,
    VorOverlay::OV_RECT2,     VorOverlay::OV_RAKERECT2,  VorOverlay::OV_TORUS,
    VorOverlay::OV_SPOKETORUS, VorOverlay::OV_ARC,       VorOverlay::OV_IRREGULAR,
    VorOverlay::OV_TEXT,      VorOverlay::OV_REGION,
};

// Checks that the outputs hold exactly what genKind() put in for this kind.
void verifyRoundTrip(int kind, const Outputs& o)
{
    switch (kind) {
    case VorOverlay::OV_POINT:
        QCOMPARE(o.a, kA);
        break;
    case VorOverlay::OV_ARROWLINE:
    case VorOverlay::OV_LINE:
    case VorOverlay::OV_RECT1:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.b, kB);
        break;
    case VorOverlay::OV_RAKERECT1:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.b, kB);
        QCOMPARE(o.i[0], kDirection);
        QCOMPARE(o.i[1], kCount);
        break;
    case VorOverlay::OV_CIRCLE:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        break;
    case VorOverlay::OV_ELLIPSE:
    case VorOverlay::OV_RECT2:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV2);
        QCOMPARE(o.d[2], kV3);
        break;
    case VorOverlay::OV_RAKERECT2:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV2);
        QCOMPARE(o.d[2], kV3);
        QCOMPARE(o.i[0], kDirection);
        QCOMPARE(o.i[1], kCount);
        break;
    case VorOverlay::OV_POLYGON:
    case VorOverlay::OV_POLYLINE:
    case VorOverlay::OV_IRREGULAR:
        QVERIFY(o.points == samplePoints());
        break;
    case VorOverlay::OV_TORUS:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV2);
        QCOMPARE(o.d[2], kV3);
        QCOMPARE(o.d[3], kV4);
        break;
    case VorOverlay::OV_SPOKETORUS:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV2);
        QCOMPARE(o.d[2], kV3);
        QCOMPARE(o.d[3], kV4);
        QCOMPARE(o.i[0], kDirection);
        QCOMPARE(o.i[1], kCount);
        break;
    case VorOverlay::OV_ARC:
        QCOMPARE(o.a, kA);
        QCOMPARE(o.d[0], kV1);
        QCOMPARE(o.d[1], kV3);
        QCOMPARE(o.d[2], kV4);
        break;
    case VorOverlay::OV_TEXT: {
        QCOMPARE(o.a, kB);
        QCOMPARE(o.text.ValType(), int(VorVar::VT_TEXT));
        QCOMPARE(QByteArray(o.text.S()), QByteArray(kText));
        const VorFont f = sampleFont();
        QCOMPARE(QByteArray(o.font.S()), QByteArray(f.S()));
        QCOMPARE(o.font.size, f.size);
        QCOMPARE(o.font.weight, f.weight);
        QCOMPARE(o.font.bold, f.bold);
        QCOMPARE(o.font.italic, f.italic);
        QCOMPARE(o.font.underline, f.underline);
        QCOMPARE(o.font.strikeOut, f.strikeOut);
        break;
    }
    case VorOverlay::OV_REGION:
        QVERIFY(o.region == sampleRegion());
        QCOMPARE(o.region.Area(), 8LL);
        break;
    default:
        QFAIL("unknown kind");
    }
}

IVorOverlay* drawingOf(const VorOverlay& overlay)
{
    return *reinterpret_cast<IVorOverlay* const*>(&overlay);
}

} // namespace

class TestVorOverlay : public QObject
{
    Q_OBJECT

private slots:
    void typeCodes();
    void defaultIsOfNoKindWithoutPenOrBrush();
    void defaultAnswersNoGet();
    void genThenGetRoundTrips_data();
    void genThenGetRoundTrips();
    void getOfAnotherKindWritesNothing_data();
    void getOfAnotherKindWritesNothing();
    void getSkipsNullOutputs_data();
    void getSkipsNullOutputs();
    void newGenReplacesPreviousGeometry();
    void textWithNullPointerIsEmptyText();
    void textIsCopiedFromCallersBuffer();
    void setPenMarksDrawingPart();
    void setBrushMarksDrawingPart();
    void penAndBrushSurviveGenCalls();
    void drawingPartIsFirstMember();
    void copyDeepCopiesDrawingPart();
    void assignmentDeepCopiesDrawingPart();
    void copyKeepsGeometry_data();
    void copyKeepsGeometry();
};

void TestVorOverlay::typeCodes()
{
    QCOMPARE(int(VorOverlay::OV_NONE), 0);
    QCOMPARE(int(VorOverlay::OV_POINT), 1);
    QCOMPARE(int(VorOverlay::OV_ARROWLINE), 2);
    QCOMPARE(int(VorOverlay::OV_LINE), 3);
    QCOMPARE(int(VorOverlay::OV_RECT1), 4);
    QCOMPARE(int(VorOverlay::OV_RAKERECT1), 5);
    QCOMPARE(int(VorOverlay::OV_CIRCLE), 6);
    QCOMPARE(int(VorOverlay::OV_ELLIPSE), 7);
    QCOMPARE(int(VorOverlay::OV_POLYGON), 8);
    QCOMPARE(int(VorOverlay::OV_POLYLINE), 9);
    QCOMPARE(int(VorOverlay::OV_RECT2), 10);
    QCOMPARE(int(VorOverlay::OV_RAKERECT2), 11);
    QCOMPARE(int(VorOverlay::OV_TORUS), 12);
    QCOMPARE(int(VorOverlay::OV_SPOKETORUS), 13);
    QCOMPARE(int(VorOverlay::OV_ARC), 14);
    QCOMPARE(int(VorOverlay::OV_IRREGULAR), 15);
    QCOMPARE(int(VorOverlay::OV_TEXT), 16);
    QCOMPARE(int(VorOverlay::OV_REGION), 19);
}

void TestVorOverlay::defaultIsOfNoKindWithoutPenOrBrush()
{
    const VorOverlay ov;
    QCOMPARE(ov.OverlayType(), 0);
    QVERIFY(ov.GetIVorOverlay() != nullptr);
    QVERIFY(!ov.GetIVorOverlay()->isRedrawPen());
    QVERIFY(!ov.GetIVorOverlay()->isRedrawBrush());

    long v[4] = {-1, -2, -3, -4};
    QVERIFY(!ov.GetPen(&v[0], &v[1], &v[2], &v[3]));
    QVERIFY(!ov.GetBrush(&v[0], &v[1], &v[2], &v[3]));
    QCOMPARE(v[0], -1L);
    QCOMPARE(v[1], -2L);
    QCOMPARE(v[2], -3L);
    QCOMPARE(v[3], -4L);
}

void TestVorOverlay::defaultAnswersNoGet()
{
    const VorOverlay ov;
    for (int kind : kAllKinds) {
        Outputs o;
        QVERIFY2(!callGet(ov, kind, o), qPrintable(QString::number(kind)));
        QVERIFY(o.untouched());
    }
}

void TestVorOverlay::genThenGetRoundTrips_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("point") << int(VorOverlay::OV_POINT);
    QTest::newRow("arrow line") << int(VorOverlay::OV_ARROWLINE);
    QTest::newRow("line") << int(VorOverlay::OV_LINE);
    QTest::newRow("rect1") << int(VorOverlay::OV_RECT1);
    QTest::newRow("rake rect1") << int(VorOverlay::OV_RAKERECT1);
    QTest::newRow("circle") << int(VorOverlay::OV_CIRCLE);
    QTest::newRow("ellipse") << int(VorOverlay::OV_ELLIPSE);
    QTest::newRow("polygon") << int(VorOverlay::OV_POLYGON);
    QTest::newRow("polyline") << int(VorOverlay::OV_POLYLINE);
    QTest::newRow("rect2") << int(VorOverlay::OV_RECT2);
    QTest::newRow("rake rect2") << int(VorOverlay::OV_RAKERECT2);
    QTest::newRow("torus") << int(VorOverlay::OV_TORUS);
    QTest::newRow("spoke torus") << int(VorOverlay::OV_SPOKETORUS);
    QTest::newRow("arc") << int(VorOverlay::OV_ARC);
    QTest::newRow("irregular") << int(VorOverlay::OV_IRREGULAR);
    QTest::newRow("text") << int(VorOverlay::OV_TEXT);
    QTest::newRow("region") << int(VorOverlay::OV_REGION);
}

void TestVorOverlay::genThenGetRoundTrips()
{
    QFETCH(int, kind);
    VorOverlay ov;
    genKind(ov, kind);
    QCOMPARE(ov.OverlayType(), kind);

    Outputs o;
    QVERIFY(callGet(ov, kind, o));
    verifyRoundTrip(kind, o);
}

void TestVorOverlay::getOfAnotherKindWritesNothing_data()
{
    genThenGetRoundTrips_data();
}

void TestVorOverlay::getOfAnotherKindWritesNothing()
{
    QFETCH(int, kind);
    VorOverlay ov;
    genKind(ov, kind);

    for (int other : kAllKinds) {
        if (other == kind)
            continue;
        Outputs o;
        QVERIFY2(!callGet(ov, other, o), qPrintable(QStringLiteral("Get of kind %1").arg(other)));
        QVERIFY2(o.untouched(), qPrintable(QStringLiteral("Get of kind %1").arg(other)));
        QVERIFY(!callGetWithNulls(ov, other));
    }
    QCOMPARE(ov.OverlayType(), kind);
}

void TestVorOverlay::getSkipsNullOutputs_data()
{
    genThenGetRoundTrips_data();
}

void TestVorOverlay::getSkipsNullOutputs()
{
    QFETCH(int, kind);
    VorOverlay ov;
    genKind(ov, kind);
    QVERIFY(callGetWithNulls(ov, kind));

    // Some outputs null, the others still filled.
    int count = 0;
    double sweep = 0.0;
    VorVar text;
    switch (kind) {
    case VorOverlay::OV_SPOKETORUS:
        QVERIFY(ov.GetSpokeTorus(nullptr, nullptr, nullptr, nullptr, &sweep, nullptr, &count));
        QCOMPARE(sweep, kV4);
        QCOMPARE(count, kCount);
        break;
    case VorOverlay::OV_RAKERECT1:
        QVERIFY(ov.GetRakeRect1(nullptr, nullptr, nullptr, &count));
        QCOMPARE(count, kCount);
        break;
    case VorOverlay::OV_TEXT:
        QVERIFY(ov.GetText(nullptr, &text, nullptr));
        QCOMPARE(QByteArray(text.S()), QByteArray(kText));
        break;
    default:
        break;
    }
}

void TestVorOverlay::newGenReplacesPreviousGeometry()
{
    VorOverlay ov;
    genKind(ov, VorOverlay::OV_TEXT);
    genKind(ov, VorOverlay::OV_REGION);
    QCOMPARE(ov.OverlayType(), int(VorOverlay::OV_REGION));
    Outputs o;
    QVERIFY(!ov.GetText(&o.a, &o.text, &o.font));
    QVERIFY(o.untouched());

    ov.GenSpokeTorus(VorPoint(1, 2), 3, 4, 5, 6, 0, 8);
    ov.GenTorus(VorPoint(9, 8), 7, 6, 5, 4);
    QVERIFY(!ov.GetSpokeTorus(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0, sweep = 0;
    QVERIFY(ov.GetTorus(&c, &r1, &r2, &angle, &sweep));
    QCOMPARE(c, VorPoint(9, 8));
    QCOMPARE(r1, 7.0);
    QCOMPARE(r2, 6.0);
    QCOMPARE(angle, 5.0);
    QCOMPARE(sweep, 4.0);

    ov.GenPolyLine(samplePoints());
    VorPointArray one;
    one.Append(VorPoint(3, 3));
    ov.GenPolyLine(one);
    VorPointArray out;
    QVERIFY(ov.GetPolyLine(&out));
    QCOMPARE(out.Length(), 1);
    QCOMPARE(out[0], VorPoint(3, 3));
}

void TestVorOverlay::textWithNullPointerIsEmptyText()
{
    VorOverlay ov;
    ov.GenText(VorPoint(4, 5), nullptr, VorFont("Sans", 9));
    QCOMPARE(ov.OverlayType(), int(VorOverlay::OV_TEXT));

    VorPoint pos;
    VorVar text(77);
    VorFont font;
    QVERIFY(ov.GetText(&pos, &text, &font));
    QCOMPARE(pos, VorPoint(4, 5));
    QCOMPARE(text.ValType(), int(VorVar::VT_TEXT));
    QCOMPARE(QByteArray(text.S()), QByteArray());
    QCOMPARE(QByteArray(font.S()), QByteArray("Sans"));
    QCOMPARE(font.size, 9);
}

void TestVorOverlay::textIsCopiedFromCallersBuffer()
{
    QByteArray buffer("\xE4\xBD\xA0\xE5\xA5\xBD");
    VorFont font("Serif", 11);
    VorOverlay ov;
    ov.GenText(VorPoint(0, 0), buffer.constData(), font);
    buffer.fill('z');
    font = VorFont("Other", 40);

    VorVar text;
    VorFont got;
    QVERIFY(ov.GetText(nullptr, &text, &got));
    QCOMPARE(QByteArray(text.S()), QByteArray("\xE4\xBD\xA0\xE5\xA5\xBD"));
    QCOMPARE(QByteArray(got.S()), QByteArray("Serif"));
    QCOMPARE(got.size, 11);

    // Text taken from the overlay's own output can be fed back in.
    ov.GenText(VorPoint(1, 1), text.S(), got);
    VorVar again;
    QVERIFY(ov.GetText(nullptr, &again, nullptr));
    QCOMPARE(QByteArray(again.S()), QByteArray("\xE4\xBD\xA0\xE5\xA5\xBD"));
}

void TestVorOverlay::setPenMarksDrawingPart()
{
    VorOverlay ov;
    ov.GenCircle(VorPoint(1, 1), 2);
    ov.SetPen(255, 128, 3, 4);

    IVorOverlay* p = *reinterpret_cast<IVorOverlay* const*>(&ov);
    QVERIFY(p != nullptr);
    QVERIFY(p->isRedrawPen());
    QVERIFY(!p->isRedrawBrush());

    long r = 0, g = 0, b = 0, w = 0;
    QVERIFY(p->GetPen(&r, &g, &b, &w));
    QCOMPARE(r, 255L);
    QCOMPARE(g, 128L);
    QCOMPARE(b, 3L);
    QCOMPARE(w, 4L);

    r = g = b = w = 0;
    QVERIFY(ov.GetPen(&r, &g, &b, &w));
    QCOMPARE(r, 255L);
    QCOMPARE(w, 4L);
    QVERIFY(ov.GetPen(nullptr, nullptr, &b, nullptr));
    QCOMPARE(b, 3L);

    long untouched[4] = {-1, -1, -1, -1};
    QVERIFY(!ov.GetBrush(&untouched[0], &untouched[1], &untouched[2], &untouched[3]));
    QCOMPARE(untouched[0], -1L);
    QCOMPARE(untouched[3], -1L);

    p->ClearPen();
    QVERIFY(!ov.GetPen(&r, &g, &b, &w));
    QVERIFY(!p->isRedrawPen());
}

void TestVorOverlay::setBrushMarksDrawingPart()
{
    VorOverlay ov;
    ov.SetBrush(10, 20, 30, 40);

    IVorOverlay* p = *reinterpret_cast<IVorOverlay* const*>(&ov);
    QVERIFY(p->isRedrawBrush());
    QVERIFY(!p->isRedrawPen());

    long r = 0, g = 0, b = 0, a = 0;
    QVERIFY(p->GetBrush(&r, &g, &b, &a));
    QCOMPARE(r, 10L);
    QCOMPARE(g, 20L);
    QCOMPARE(b, 30L);
    QCOMPARE(a, 40L);

    ov.SetBrush(1, 2, 3, 0);
    QVERIFY(ov.GetBrush(&r, &g, &b, &a));
    QCOMPARE(r, 1L);
    QCOMPARE(a, 0L);

    p->ClearBrush();
    QVERIFY(!p->isRedrawBrush());
    r = -9;
    QVERIFY(!ov.GetBrush(&r, nullptr, nullptr, nullptr));
    QCOMPARE(r, -9L);
}

void TestVorOverlay::penAndBrushSurviveGenCalls()
{
    VorOverlay ov;
    ov.SetPen(1, 2, 3, 5);
    ov.SetBrush(6, 7, 8, 9);
    for (int kind : kAllKinds)
        genKind(ov, kind);

    long v[4] = {0, 0, 0, 0};
    QVERIFY(ov.GetPen(&v[0], &v[1], &v[2], &v[3]));
    QCOMPARE(v[0], 1L);
    QCOMPARE(v[1], 2L);
    QCOMPARE(v[2], 3L);
    QCOMPARE(v[3], 5L);
    QVERIFY(ov.GetBrush(&v[0], &v[1], &v[2], &v[3]));
    QCOMPARE(v[0], 6L);
    QCOMPARE(v[1], 7L);
    QCOMPARE(v[2], 8L);
    QCOMPARE(v[3], 9L);
}

void TestVorOverlay::drawingPartIsFirstMember()
{
    VorOverlay ov;
    QVERIFY(drawingOf(ov) != nullptr);
    QVERIFY(drawingOf(ov) == ov.GetIVorOverlay());
    ov.GenArc(VorPoint(0, 0), 1, 2, 3);
    QVERIFY(drawingOf(ov) == ov.GetIVorOverlay());
}

void TestVorOverlay::copyDeepCopiesDrawingPart()
{
    VorOverlay a;
    a.SetPen(9, 8, 7, 6);
    const VorOverlay b(a);
    QVERIFY(drawingOf(b) != nullptr);
    QVERIFY(drawingOf(b) != drawingOf(a));
    QVERIFY(drawingOf(b)->isRedrawPen());
    QVERIFY(!drawingOf(b)->isRedrawBrush());

    a.SetPen(1, 1, 1, 1);
    a.SetBrush(2, 2, 2, 2);
    long r = 0, g = 0, bl = 0, w = 0;
    QVERIFY(b.GetPen(&r, &g, &bl, &w));
    QCOMPARE(r, 9L);
    QCOMPARE(g, 8L);
    QCOMPARE(bl, 7L);
    QCOMPARE(w, 6L);
    QVERIFY(!b.GetBrush(nullptr, nullptr, nullptr, nullptr));
}

void TestVorOverlay::assignmentDeepCopiesDrawingPart()
{
    VorOverlay a;
    a.SetBrush(5, 6, 7, 8);
    a.GenPoint(VorPoint(2, 3));

    VorOverlay b;
    b.SetPen(1, 2, 3, 4);
    IVorOverlay* const before = drawingOf(b);
    b = a;
    QVERIFY(drawingOf(b) != drawingOf(a));
    QVERIFY(drawingOf(b) == before);
    QVERIFY(!b.GetPen(nullptr, nullptr, nullptr, nullptr));
    long r = 0, g = 0, bl = 0, al = 0;
    QVERIFY(b.GetBrush(&r, &g, &bl, &al));
    QCOMPARE(r, 5L);
    QCOMPARE(al, 8L);
    VorPoint p;
    QVERIFY(b.GetPoint(&p));
    QCOMPARE(p, VorPoint(2, 3));

    a.GetIVorOverlay()->ClearBrush();
    QVERIFY(b.GetBrush(nullptr, nullptr, nullptr, nullptr));

    VorOverlay& same = b;
    b = same;
    QVERIFY(drawingOf(b) == before);
    QVERIFY(b.GetBrush(nullptr, nullptr, nullptr, nullptr));
    QVERIFY(b.GetPoint(&p));
}

void TestVorOverlay::copyKeepsGeometry_data()
{
    genThenGetRoundTrips_data();
}

void TestVorOverlay::copyKeepsGeometry()
{
    QFETCH(int, kind);
    VorOverlay source;
    genKind(source, kind);
    VorOverlay copy(source);
    VorOverlay assigned;
    assigned = source;
    source.GenPoint(VorPoint(-1, -1));

    Outputs o1;
    QVERIFY(callGet(copy, kind, o1));
    verifyRoundTrip(kind, o1);
    Outputs o2;
    QVERIFY(callGet(assigned, kind, o2));
    verifyRoundTrip(kind, o2);
}

QTEST_APPLESS_MAIN(TestVorOverlay)
#include "tst_voroverlay.moc"
