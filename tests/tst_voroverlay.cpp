#include "kitholders.h"

#include <QtTest/QtTest>

#include "IVorOverlay.h"
#include "VorFont.h"
#include "VorOverlay.h"
#include "VorPointArray.h"
#include "VorRegion.h"
#include "VorVar.h"

#include <vector>

using namespace Kit;

namespace {

IVorOverlay* drawingOf(const VorOverlay& overlay)
{
    return *reinterpret_cast<IVorOverlay* const*>(&overlay);
}

// The four numbers of a pen (red, green, blue, width) or a brush (red, green,
// blue, alpha), or none when the Get call answers no; the outputs start at
// -1, so that what a call leaves unwritten shows.
using Numbers = QVector<long>;

template <class Drawing>
Numbers penOf(const Drawing& drawing)
{
    long v[4] = {-1, -1, -1, -1};
    return drawing.GetPen(&v[0], &v[1], &v[2], &v[3]) ? Numbers{v[0], v[1], v[2], v[3]} : Numbers{};
}

template <class Drawing>
Numbers brushOf(const Drawing& drawing)
{
    long v[4] = {-1, -1, -1, -1};
    return drawing.GetBrush(&v[0], &v[1], &v[2], &v[3]) ? Numbers{v[0], v[1], v[2], v[3]} : Numbers{};
}

} // namespace

class TestVorOverlay : public QObject
{
    Q_OBJECT

private slots:
    void typeCodes();
    void defaultIsOfNoKindWithoutPenOrBrush();
    void newGenReplacesPreviousGeometry();
    void textWithNullPointerIsEmptyText();
    void textIsCopiedFromCallersBuffer();
    void setPenMarksDrawingPart();
    void setBrushMarksDrawingPart();
    void penAndBrushSurviveGenCalls();
    void drawingPartIsFirstMember();
    void copyDeepCopiesDrawingPart();
    void assignmentDeepCopiesDrawingPart();
};

void TestVorOverlay::typeCodes()
{
    verifyCodesCountUp(0, {VorOverlay::OV_NONE, VorOverlay::OV_POINT, VorOverlay::OV_ARROWLINE, VorOverlay::OV_LINE,
                           VorOverlay::OV_RECT1, VorOverlay::OV_RAKERECT1, VorOverlay::OV_CIRCLE,
                           VorOverlay::OV_ELLIPSE, VorOverlay::OV_POLYGON, VorOverlay::OV_POLYLINE,
                           VorOverlay::OV_RECT2, VorOverlay::OV_RAKERECT2, VorOverlay::OV_TORUS,
                           VorOverlay::OV_SPOKETORUS, VorOverlay::OV_ARC, VorOverlay::OV_IRREGULAR,
                           VorOverlay::OV_TEXT, VorOverlay::OV_CROSS, VorOverlay::OV_POLYARROW,
                           VorOverlay::OV_REGION});
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
    QCOMPARE(Numbers(v, v + 4), Numbers({-1, -2, -3, -4}));
}

void TestVorOverlay::newGenReplacesPreviousGeometry()
{
    VorOverlay ov;
    overlayKinds().gen(ov, VorOverlay::OV_TEXT);
    overlayKinds().gen(ov, VorOverlay::OV_REGION);
    QCOMPARE(ov.OverlayType(), int(VorOverlay::OV_REGION));
    OverlayOutputs o;
    QVERIFY(!ov.GetText(&o.a, &o.text, &o.font));
    QVERIFY(o.untouched());

    ov.GenSpokeTorus(VorPoint(1, 2), 3, 4, 5, 6, 0, 8);
    ov.GenTorus(VorPoint(9, 8), 7, 6, 5, 4);
    QVERIFY(!ov.GetSpokeTorus(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    VorPoint c;
    double r1 = 0, r2 = 0, angle = 0, sweep = 0;
    QVERIFY(ov.GetTorus(&c, &r1, &r2, &angle, &sweep));
    QCOMPARE(c, VorPoint(9, 8));
    QCOMPARE(Params({r1, r2, angle, sweep}), Params({7.0, 6.0, 5.0, 4.0}));

    ov.GenPolyLine(points());
    ov.GenPolyLine(pointArray({VorPoint(3, 3)}));
    VorPointArray out;
    QVERIFY(ov.GetPolyLine(&out));
    QCOMPARE(out, pointArray({VorPoint(3, 3)}));
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

    QCOMPARE(penOf(*p), Numbers({255, 128, 3, 4}));
    QCOMPARE(penOf(ov), Numbers({255, 128, 3, 4}));
    long b = 0;
    QVERIFY(ov.GetPen(nullptr, nullptr, &b, nullptr));
    QCOMPARE(b, 3L);

    long untouched[4] = {-1, -1, -1, -1};
    QVERIFY(!ov.GetBrush(&untouched[0], &untouched[1], &untouched[2], &untouched[3]));
    QCOMPARE(Numbers(untouched, untouched + 4), Numbers({-1, -1, -1, -1}));

    p->ClearPen();
    QCOMPARE(penOf(ov), Numbers());
    QVERIFY(!p->isRedrawPen());
}

void TestVorOverlay::setBrushMarksDrawingPart()
{
    VorOverlay ov;
    ov.SetBrush(10, 20, 30, 40);

    IVorOverlay* p = *reinterpret_cast<IVorOverlay* const*>(&ov);
    QVERIFY(p->isRedrawBrush());
    QVERIFY(!p->isRedrawPen());

    QCOMPARE(brushOf(*p), Numbers({10, 20, 30, 40}));

    ov.SetBrush(1, 2, 3, 0);
    QCOMPARE(brushOf(ov), Numbers({1, 2, 3, 0}));

    p->ClearBrush();
    QVERIFY(!p->isRedrawBrush());
    long r = -9;
    QVERIFY(!ov.GetBrush(&r, nullptr, nullptr, nullptr));
    QCOMPARE(r, -9L);
}

void TestVorOverlay::penAndBrushSurviveGenCalls()
{
    VorOverlay ov;
    ov.SetPen(1, 2, 3, 5);
    ov.SetBrush(6, 7, 8, 9);
    for (const OverlayKinds::Kind& kind : overlayKinds().kinds())
        kind.gen(ov);

    QCOMPARE(penOf(ov), Numbers({1, 2, 3, 5}));
    QCOMPARE(brushOf(ov), Numbers({6, 7, 8, 9}));
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
    QCOMPARE(penOf(b), Numbers({9, 8, 7, 6}));
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
    QCOMPARE(brushOf(b), Numbers({5, 6, 7, 8}));
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

QTEST_APPLESS_MAIN(TestVorOverlay)
#include "tst_voroverlay.moc"
