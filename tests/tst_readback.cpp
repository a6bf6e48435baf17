// Shapes read back by id as data: every ROI and overlay type code shown
// through the layer and read back field by field, the lopsided conversions
// that are kept on purpose, and the calls by id on the shapes of a layer.

#include "testkit.h"
#include "kitregions.h"
#include "kitshapedata.h"

#include "HandleItem.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odimage.h"
#include "oditemregion.h"
#include "odrect1.h"
#include "odselecttool.h"
#include "odshapetoolmanage.h"
#include "odtext.h"
#include "shapeoperator.h"

#include "IVorOverlay.h"
#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorROI.h"
#include "VorRegion.h"

#include <QtTest>

using namespace Kit;

namespace {

// The window's look while the rows run: a pen with its own alpha and a
// width that truncates.
const QColor kScenePen(10, 20, 30, 200);
const QColor kSceneBrush(40, 50, 60, 70);
constexpr float kSceneLineWidth = 3.7f;
constexpr int kTruncatedWidth = 3;

// A scene with its layers in the look above.
class LookScene : public LayerScene
{
public:
    LookScene()
    {
        scene.setPenColor(kScenePen);
        scene.setBrushColor(kSceneBrush);
        scene.setLineWidth(kSceneLineWidth);
    }
};

// A ROI that no row produces, to see whether a call wrote to it.
VorROI untouchedROI()
{
    VorROI roi;
    roi.GenCircle(VorPoint(-7, -7), 7);
    return roi;
}

VorOverlay untouchedOverlay()
{
    VorOverlay ov;
    ov.GenCircle(VorPoint(-7, -7), 7);
    return ov;
}

Params penOf(const VorOverlay& ov)
{
    long r = -1, g = -1, b = -1, w = -1;
    ov.GetPen(&r, &g, &b, &w);
    return {double(r), double(g), double(b), double(w)};
}

Params brushOf(const VorOverlay& ov)
{
    long r = -1, g = -1, b = -1, a = -1;
    ov.GetBrush(&r, &g, &b, &a);
    return {double(r), double(g), double(b), double(a)};
}

constexpr double kExact = 0.0;

// Whether a rectangle's handle squares are painted: its handle item's map.
bool handlesShown(ODShape* shape)
{
    auto* item = dynamic_cast<HandleItem*>(shape->handleItem());
    return item && !item->handleMap().isEmpty();
}

} // namespace

class tst_ReadBack : public QObject
{
    Q_OBJECT

private slots:
    void roiRoundTrip_data();
    void roiRoundTrip();
    void overlayRoundTrip_data();
    void overlayRoundTrip();

    void overlayShapeReadsAsROIAndROIShapeAsOverlay();
    void torusFromAROIReadsBackAsASpokeOverlay();
    void shapeWithoutROIFormAnswersZeroAndLeavesROI();
    void unknownIdAnswersMinusOneAndWritesNothing();
    void overlayColoursComeBackWithoutThePensAlpha();
    void staticShapeIsFoundOnlyThroughTheStaticLayer();
    void editedShapeReadsBackItsNewParameters();
    void nullDataObjectsAreNotWritten();

    void maskROIReadsBackAsItCameInUnderTheRegionsId();
    void textOverlayReadsBackWithoutColoursAsUTF8_data();
    void textOverlayReadsBackWithoutColoursAsUTF8();
    void regionOverlayNeverReadsBack();
    void imageReadsBackThePictureItShows();

    void hiddenShapeAnswersZeroAndShowsNothing();
    void shownAgainShapeComesBackWithoutHandles();
    void visibilityOfUnknownIdAnswersMinusOne();
    void movableAndSelectableFlagsByIdWithUnknownIds();
    void shapeIdsComeInOrderOfInsertion();
    void hostSelectionShowsHandlesOfThatShapeAlone();
};

// Columns: the ROI code and the values of its Gen call; whether a shape is
// made, its mode and parameters; the ROI type and values read back.
void tst_ReadBack::roiRoundTrip_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Params>("in");
    QTest::addColumn<bool>("made");
    QTest::addColumn<int>("mode");
    QTest::addColumn<Params>("shape");
    QTest::addColumn<int>("backType");
    QTest::addColumn<Params>("back");

    const Params poly{10, 10, 100, 10, 60, 80};
    QTest::newRow("0 rectangle") << 0 << Params{10, 20, 110, 70} << true << int(DM_RECT1)
                                 << Params{10, 20, 110, 70} << 0 << Params{10, 20, 110, 70};
    QTest::newRow("0 rectangle of no width reads back 0.01 wide")
        << 0 << Params{10, 20, 10, 70} << true << int(DM_RECT1) << Params{10, 20, 10, 70} << 0
        << Params{10, 20, 10.01, 70};
    QTest::newRow("0 rectangle of no height reads back 0.01 high")
        << 0 << Params{10, 20, 110, 20} << true << int(DM_RECT1) << Params{10, 20, 110, 20} << 0
        << Params{10, 20, 110, 20.01};
    QTest::newRow("0 rectangle 1 by 50 keeps its true corners")
        << 0 << Params{10, 20, 11, 70} << true << int(DM_RECT1) << Params{10, 20, 11, 70} << 0
        << Params{10, 20, 11, 70};
    QTest::newRow("1 circle") << 1 << Params{100, 80, 40} << true << int(DM_CIRCLE) << Params{100, 80, 40} << 1
                              << Params{100, 80, 40};
    QTest::newRow("2 torus: angle into range, sweep keeps the host's sign")
        << 2 << Params{100, 80, 20, 40, -30, 90} << true << int(DM_ANNULAR)
        << Params{100, 80, 20, 40, 330, 90, 0, 0, 1} << 2 << Params{100, 80, 20, 40, 330, 90};
    QTest::newRow("3 no kind, refused") << 3 << Params{} << false << 0 << Params{} << 0 << Params{};
    QTest::newRow("4 polygon") << 4 << poly << true << int(DM_POLYGON) << poly << 4 << poly;
    QTest::newRow("5 free line") << 5 << poly << true << int(DM_ANYLINE) << poly << 5 << poly;
    QTest::newRow("6 rotated rectangle: -30 comes back as 330")
        << 6 << Params{100, 80, 60, 30, -30} << true << int(DM_RECT2) << Params{100, 80, 60, 30, 330} << 6
        << Params{100, 80, 60, 30, 330};
    QTest::newRow("7 line") << 7 << Params{10, 20, 150, 90} << true << int(DM_LINE) << Params{10, 20, 150, 90} << 7
                            << Params{10, 20, 150, 90};
    QTest::newRow("8 ellipse: angle in single precision")
        << 8 << Params{100, 80, 50, 20, 33.3} << true << int(DM_ELLIPSE)
        << Params{100, 80, 50, 20, double(33.3f)} << 8 << Params{100, 80, 50, 20, double(33.3f)};
    QTest::newRow("8 ellipse: -30 comes back as 330")
        << 8 << Params{100, 80, 50, 20, -30} << true << int(DM_ELLIPSE) << Params{100, 80, 50, 20, 330} << 8
        << Params{100, 80, 50, 20, 330};
    QTest::newRow("9 arc: angles as they stand") << 9 << Params{100, 80, 40, -30, 120} << true << int(DM_ARC)
                                                 << Params{100, 80, 40, -30, 120} << 9
                                                 << Params{100, 80, 40, -30, 120};
    QTest::newRow("10 point") << 10 << Params{50, 60} << true << int(DM_POINT) << Params{50, 60} << 10
                              << Params{50, 60};
    QTest::newRow("12 closed free line refused") << 12 << Params{10, 10, 100, 10, 60, 80} << false << 0 << Params{} << 0
                                                 << Params{};
}

void tst_ReadBack::roiRoundTrip()
{
    QFETCH(int, code);
    QFETCH(Params, in);
    QFETCH(bool, made);
    QFETCH(int, mode);
    QFETCH(Params, shape);
    QFETCH(int, backType);
    QFETCH(Params, back);

    LookScene s;
    VorROI roi = makeROI(code, in);
    QCOMPARE(roi.ROIType(), code);
    const long nextId = ODShape::s_ID;
    const long zBefore = s.active()->zValue();
    const QSet<QGraphicsItem*> before = itemSet(&s.scene);

    const long id = s.active()->DrawROI(roi, false);
    if (!made) {
        QCOMPARE(id, -1L);
        QVERIFY(s.active()->shapes().isEmpty());
        QCOMPARE(s.active()->zValue(), zBefore);
        QCOMPARE(ODShape::s_ID, nextId);
        return;
    }
    QCOMPARE(id, nextId);
    QCOMPARE(s.active()->shapes().size(), 1);
    ODShape* made_ = s.active()->shapes().first();
    QCOMPARE(made_->GetShapeID(), id);
    QCOMPARE(int(made_->GetDrawMode()), mode);
    KIT_COMPARE_NEAR(shapeParams(made_), shape, kExact);
    QCOMPARE(made_->GetPenColor(), kScenePen);
    QCOMPARE(made_->GetBrushColor(), kSceneBrush);
    QCOMPARE(made_->GetLineWidth(), float(kTruncatedWidth));
    QVERIFY(!made_->isOverlay());
    QCOMPARE(s.active()->zValue(), zBefore + 1);
    QCOMPARE(lowestZ(itemsAddedSince(&s.scene, before)), double(zBefore + 1));

    VorROI readBack = untouchedROI();
    QCOMPARE(s.active()->GetROIShape(id, &readBack), 0L);
    QCOMPARE(readBack.ROIType(), backType);
    KIT_COMPARE_NEAR(valuesOf(readBack), back, kExact);
}

// Columns as for ROIs, with zSet false where the shape keeps the z value of
// a new shape; the overlay brings no colours of its own, so the window's come
// back with it.
void tst_ReadBack::overlayRoundTrip_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Params>("in");
    QTest::addColumn<bool>("made");
    QTest::addColumn<int>("mode");
    QTest::addColumn<Params>("shape");
    QTest::addColumn<bool>("zSet");
    QTest::addColumn<int>("backType");
    QTest::addColumn<Params>("back");

    const Params poly{10, 10, 100, 10, 60, 80};
    const Params none;
    QTest::newRow("0 no kind, refused") << 0 << none << false << 0 << none << false << 0 << none;
    QTest::newRow("1 point") << 1 << Params{50, 60} << true << int(DM_POINT) << Params{50, 60} << true << 1
                             << Params{50, 60};
    QTest::newRow("2 arrow line") << 2 << Params{10, 20, 150, 90} << true << int(DM_ARROWLINE)
                                  << Params{10, 20, 150, 90} << true << 2 << Params{10, 20, 150, 90};
    QTest::newRow("3 line") << 3 << Params{10, 20, 150, 90} << true << int(DM_LINE) << Params{10, 20, 150, 90}
                            << true << 3 << Params{10, 20, 150, 90};
    QTest::newRow("4 rectangle") << 4 << Params{10, 20, 110, 70} << true << int(DM_RECT1)
                                 << Params{10, 20, 110, 70} << true << 4 << Params{10, 20, 110, 70};
    QTest::newRow("4 rectangle 1 by 50 reads back empty at the origin")
        << 4 << Params{10, 20, 11, 70} << true << int(DM_RECT1) << Params{10, 20, 11, 70} << true << 4
        << Params{0, 0, 0, 0};
    QTest::newRow("4 rectangle 1.9 wide: whole pixels, truncated")
        << 4 << Params{10, 20, 11.9, 70} << true << int(DM_RECT1) << Params{10, 20, 11.9, 70} << true << 4
        << Params{0, 0, 0, 0};
    QTest::newRow("4 rectangle 2 wide is kept")
        << 4 << Params{10, 20, 12, 70} << true << int(DM_RECT1) << Params{10, 20, 12, 70} << true << 4
        << Params{10, 20, 12, 70};
    QTest::newRow("5 rectangle with search lines, z value not set")
        << 5 << Params{10, 20, 110, 70, 2, 7} << true << int(DM_RAKERECT1) << Params{10, 20, 110, 70, 2, 7}
        << false << 5 << Params{10, 20, 110, 70, 2, 7};
    QTest::newRow("6 circle") << 6 << Params{100, 80, 40} << true << int(DM_CIRCLE) << Params{100, 80, 40} << true
                              << 6 << Params{100, 80, 40};
    QTest::newRow("7 ellipse: -30 comes back as 330")
        << 7 << Params{100, 80, 50, 20, -30} << true << int(DM_ELLIPSE) << Params{100, 80, 50, 20, 330} << true
        << 7 << Params{100, 80, 50, 20, 330};
    QTest::newRow("8 polygon") << 8 << poly << true << int(DM_POLYGON) << poly << true << 8 << poly;
    QTest::newRow("9 closed free line") << 9 << poly << true << int(DM_ANYCLOSELINE) << poly << true << 9 << poly;
    QTest::newRow("10 rotated rectangle") << 10 << Params{100, 80, 60, 30, -30} << true << int(DM_RECT2)
                                          << Params{100, 80, 60, 30, 330} << true << 10
                                          << Params{100, 80, 60, 30, 330};
    QTest::newRow("10 rotated rectangle under 2 long reads back as the plain rectangle at the origin")
        << 10 << Params{100, 80, 1.5, 30, 10} << true << int(DM_RECT2) << Params{100, 80, 1.5, 30, 10} << true
        << 4 << Params{0, 0, 0, 0};
    QTest::newRow("11 rotated rectangle with search lines, z value not set")
        << 11 << Params{100, 80, 60, 30, 45, 1, 5} << true << int(DM_RAKERECT2) << Params{100, 80, 60, 30, 45, 1, 5}
        << false << 11 << Params{100, 80, 60, 30, 45, 1, 5};
    QTest::newRow("12 torus reads back in the spoke form")
        << 12 << Params{100, 80, 20, 40, -30, 90} << true << int(DM_ANNULAR)
        << Params{100, 80, 20, 40, 330, 90, 0, 0, 1} << true << 13 << Params{100, 80, 20, 40, 330, 90, 0, 0};
    QTest::newRow("13 spoke torus") << 13 << Params{100, 80, 20, 40, 45, -60, 4, 8} << true << int(DM_ANNULAR)
                                    << Params{100, 80, 20, 40, 45, -60, 4, 8, 1} << true << 13
                                    << Params{100, 80, 20, 40, 45, -60, 4, 8};
    QTest::newRow("14 arc") << 14 << Params{100, 80, 40, -30, 120} << true << int(DM_ARC)
                            << Params{100, 80, 40, -30, 120} << true << 14 << Params{100, 80, 40, -30, 120};
    QTest::newRow("15 free line") << 15 << poly << true << int(DM_ANYLINE) << poly << true << 15 << poly;
    QTest::newRow("17 cross refused") << 17 << Params{10, 20, 5, 30} << false << 0 << none << false << 0 << none;
    QTest::newRow("18 arrowed line refused") << 18 << Params{0, 0, 10, 10} << false << 0 << none << false << 0
                                             << none;
    QTest::newRow("20 refused") << 20 << none << false << 0 << none << false << 0 << none;
}

void tst_ReadBack::overlayRoundTrip()
{
    QFETCH(int, code);
    QFETCH(Params, in);
    QFETCH(bool, made);
    QFETCH(int, mode);
    QFETCH(Params, shape);
    QFETCH(bool, zSet);
    QFETCH(int, backType);
    QFETCH(Params, back);

    LookScene s;
    VorOverlay ov = makeOverlay(code, in);
    // Codes without a Gen call here (20) stand as an overlay of no kind.
    const long nextId = ODShape::s_ID;
    const long zBefore = s.active()->zValue();
    const QSet<QGraphicsItem*> before = itemSet(&s.scene);

    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(!s.scene.isOverlay());
    if (!made) {
        QCOMPARE(ov.OverlayType(), code == 20 ? int(VorOverlay::OV_NONE) : code);
        QCOMPARE(id, -1L);
        QVERIFY(s.active()->shapes().isEmpty());
        QCOMPARE(ODShape::s_ID, nextId);
        return;
    }
    QCOMPARE(ov.OverlayType(), code);
    QCOMPARE(id, nextId);
    QCOMPARE(s.active()->shapes().size(), 1);
    ODShape* made_ = s.active()->shapes().first();
    QCOMPARE(made_->GetShapeID(), id);
    QCOMPARE(int(made_->GetDrawMode()), mode);
    KIT_COMPARE_NEAR(shapeParams(made_), shape, kExact);
    QCOMPARE(made_->GetPenColor(), kScenePen);
    QCOMPARE(made_->GetBrushColor(), kSceneBrush);
    QCOMPARE(made_->GetLineWidth(), float(kTruncatedWidth));
    QVERIFY(made_->isOverlay());
    QCOMPARE(s.active()->zValue(), zBefore + 1);
    QCOMPARE(lowestZ(itemsAddedSince(&s.scene, before)), zSet ? double(zBefore + 1) : 0.0);

    VorOverlay readBack = untouchedOverlay();
    QCOMPARE(s.active()->GetOverlay(id, &readBack), 0L);
    QCOMPARE(readBack.OverlayType(), backType);
    KIT_COMPARE_NEAR(valuesOf(readBack), back, kExact);
    KIT_COMPARE_NEAR(penOf(readBack), (Params{10, 20, 30, kTruncatedWidth}), kExact);
    KIT_COMPARE_NEAR(brushOf(readBack), (Params{40, 50, 60, 70}), kExact);
}

// DrawROI's torus has the search-line flag, so as an overlay it takes the
// spoke form, with no lines.
void tst_ReadBack::torusFromAROIReadsBackAsASpokeOverlay()
{
    LookScene s;
    VorROI torus = makeROI(VorROI::ROI_TORUS, {100, 80, 20, 40, -30, 90});
    const long id = s.active()->DrawROI(torus, false);
    QVERIFY(id >= 0);
    VorOverlay back;
    QCOMPARE(s.active()->GetOverlay(id, &back), 0L);
    QCOMPARE(back.OverlayType(), int(VorOverlay::OV_SPOKETORUS));
    VorPoint centre;
    double r1 = -1, r2 = -1, angle = -1, sweep = -1;
    int direction = -1, count = -1;
    QVERIFY(back.GetSpokeTorus(&centre, &r1, &r2, &angle, &sweep, &direction, &count));
    QCOMPARE(centre, VorPoint(100, 80));
    QCOMPARE(count, 0);
    QVERIFY(back.GetTorus(&centre, &r1, &r2, &angle, &sweep) == false);
}

void tst_ReadBack::overlayShapeReadsAsROIAndROIShapeAsOverlay()
{
    LookScene s;
    VorOverlay ov = makeOverlay(VorOverlay::OV_RECT1, {10, 20, 110, 70});
    const long overlayId = s.active()->DrawOverlay(ov, false);
    VorROI roi;
    QCOMPARE(s.active()->GetROIShape(overlayId, &roi), 0L);
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_RECT1));
    KIT_COMPARE_NEAR(valuesOf(roi), (Params{10, 20, 110, 70}), kExact);

    VorROI circle = makeROI(VorROI::ROI_CIRCLE, {100, 80, 40});
    const long roiId = s.active()->DrawROI(circle, false);
    VorOverlay asOverlay;
    QCOMPARE(s.active()->GetOverlay(roiId, &asOverlay), 0L);
    QCOMPARE(asOverlay.OverlayType(), int(VorOverlay::OV_CIRCLE));
    KIT_COMPARE_NEAR(valuesOf(asOverlay), (Params{100, 80, 40}), kExact);
}

void tst_ReadBack::shapeWithoutROIFormAnswersZeroAndLeavesROI()
{
    LookScene s;
    const struct
    {
        int code;
        Params values;
    } kinds[] = {
        {VorOverlay::OV_ARROWLINE, {10, 20, 150, 90}},
        {VorOverlay::OV_POLYLINE, {10, 10, 100, 10, 60, 80}},
        {VorOverlay::OV_RAKERECT1, {10, 20, 110, 70, 2, 7}},
        {VorOverlay::OV_RAKERECT2, {100, 80, 60, 30, 45, 1, 5}},
    };
    for (const auto& kind : kinds) {
        VorOverlay ov = makeOverlay(kind.code, kind.values);
        const long id = s.active()->DrawOverlay(ov, false);
        QVERIFY(id >= 0);
        VorROI roi = untouchedROI();
        QCOMPARE(s.active()->GetROIShape(id, &roi), 0L);
        QCOMPARE(roi.ROIType(), int(VorROI::ROI_CIRCLE));
        KIT_COMPARE_NEAR(valuesOf(roi), (Params{-7, -7, 7}), kExact);
        QVERIFY(!s.active()->TypeROIConversion(s.active()->shapeById(id), &roi));
    }
    VorROI roi;
    QVERIFY(!s.active()->TypeROIConversion(nullptr, &roi));
    VorOverlay ov;
    QVERIFY(!s.active()->TypeOverlayConversion(nullptr, ov));
}

void tst_ReadBack::unknownIdAnswersMinusOneAndWritesNothing()
{
    LookScene s;
    VorROI line = makeROI(VorROI::ROI_LINE, {1, 2, 3, 4});
    const long id = s.active()->DrawROI(line, false);
    for (long unknown : {id + 1000, -1L, -123456789L}) {
        VorROI roi = untouchedROI();
        QCOMPARE(s.active()->GetROIShape(unknown, &roi), -1L);
        KIT_COMPARE_NEAR(valuesOf(roi), (Params{-7, -7, 7}), kExact);
        VorOverlay ov = untouchedOverlay();
        QCOMPARE(s.active()->GetOverlay(unknown, &ov), -1L);
        QCOMPARE(s.active()->GetStaticOverlay(unknown, &ov), -1L);
        KIT_COMPARE_NEAR(valuesOf(ov), (Params{-7, -7, 7}), kExact);
    }
}

void tst_ReadBack::overlayColoursComeBackWithoutThePensAlpha()
{
    LookScene s;
    VorOverlay ov = makeOverlay(VorOverlay::OV_CIRCLE, {100, 80, 40});
    ov.SetPen(1, 2, 3, 4);
    ov.SetBrush(5, 6, 7, 8);
    const long id = s.active()->DrawOverlay(ov, false);
    ODShape* shape = s.active()->shapeById(id);
    QVERIFY(shape);
    QCOMPARE(shape->GetPenColor(), QColor(1, 2, 3, kScenePen.alpha()));
    QCOMPARE(shape->GetLineWidth(), 4.0f);
    QCOMPARE(shape->GetBrushColor(), QColor(5, 6, 7, 8));

    VorOverlay readBack;
    QCOMPARE(s.active()->GetOverlay(id, &readBack), 0L);
    KIT_COMPARE_NEAR(penOf(readBack), (Params{1, 2, 3, 4}), kExact);
    KIT_COMPARE_NEAR(brushOf(readBack), (Params{5, 6, 7, 8}), kExact);
}

void tst_ReadBack::staticShapeIsFoundOnlyThroughTheStaticLayer()
{
    LookScene s;
    s.scene.GetImageLayer()->setIsVorImg(false);
    VorOverlay ov = makeOverlay(VorOverlay::OV_LINE, {10, 20, 150, 90});
    const long id = s.active()->DrawStaticOverlay(ov);
    QVERIFY(id >= 0);
    VorOverlay readBack = untouchedOverlay();
    QCOMPARE(s.active()->GetOverlay(id, &readBack), -1L);
    QCOMPARE(s.active()->GetStaticOverlay(id, &readBack), -1L);
    QCOMPARE(readBack.OverlayType(), int(VorOverlay::OV_CIRCLE));
    QCOMPARE(s.fixed()->GetStaticOverlay(id, &readBack), 0L);
    QCOMPARE(readBack.OverlayType(), int(VorOverlay::OV_LINE));
    KIT_COMPARE_NEAR(valuesOf(readBack), (Params{10, 20, 150, 90}), kExact);
    QCOMPARE(s.fixed()->GetOverlay(id, &readBack), 0L);
    VorROI roi;
    QCOMPARE(s.active()->GetROIShape(id, &roi), -1L);
}

void tst_ReadBack::editedShapeReadsBackItsNewParameters()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long id = s.active()->DrawROI(rect, false);
    ODShape* shape = s.active()->shapeById(id);
    shape->MoveShape(QPointF(5, -3));
    VorROI roi;
    QCOMPARE(s.active()->GetROIShape(id, &roi), 0L);
    KIT_COMPARE_NEAR(valuesOf(roi), (Params{15, 17, 115, 67}), kExact);
}

void tst_ReadBack::nullDataObjectsAreNotWritten()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long id = s.active()->DrawROI(rect, false);
    QCOMPARE(s.active()->GetROIShape(id, nullptr), 0L);
    QCOMPARE(s.active()->GetOverlay(id, nullptr), 0L);
    QCOMPARE(s.active()->GetROIShape(id + 1, nullptr), -1L);
}

// Code 11: the mask becomes the layer's region in the window's brush, and the
// ROI comes back as it went in, under the region's id.
void tst_ReadBack::maskROIReadsBackAsItCameInUnderTheRegionsId()
{
    LookScene s;
    const VorImage mask = blockMask(QSize(40, 30), QRect(5, 6, 10, 8));
    VorROI roi;
    roi.GenMask(mask);
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_MASK));
    const long zBefore = s.active()->zValue();

    const long id = s.active()->DrawROI(roi, false);
    QVERIFY(id >= 0);
    QVERIFY(s.active()->shapes().isEmpty());
    QCOMPARE(s.active()->zValue(), zBefore + 1);
    ODItemRegion* region = s.active()->region();
    QVERIFY(region);
    QCOMPARE(region->GetID(), id);
    QCOMPARE(region->item()->zValue(), -1.0);
    const QImage shown = region->regionImage();
    QCOMPARE(QColor::fromRgba(shown.pixel(7, 8)), kSceneBrush);
    QCOMPARE(qAlpha(shown.pixel(2, 2)), 0);
    QVERIFY(s.active()->maskROIs().contains(id));

    VorROI readBack = untouchedROI();
    QCOMPARE(s.active()->GetROIShape(id, &readBack), 0L);
    QCOMPARE(readBack.ROIType(), int(VorROI::ROI_MASK));
    VorImage back;
    QVERIFY(readBack.GetMask(&back));
    QCOMPARE(back.Width(), 40);
    QCOMPARE(back.Height(), 30);
    QCOMPARE(cv::countNonZero(back.Mat() != mask.Mat()), 0);

    // A mask ROI has no overlay form.
    VorOverlay overlay = untouchedOverlay();
    QCOMPARE(s.active()->GetOverlay(id, &overlay), -1L);
    QCOMPARE(overlay.OverlayType(), int(VorOverlay::OV_CIRCLE));
}

void tst_ReadBack::textOverlayReadsBackWithoutColoursAsUTF8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ownPen");
    QTest::addColumn<QByteArray>("localCodec");
    QTest::newRow("plain text in the window's pen") << QString("Lot 42") << false << QByteArray();
    QTest::newRow("accented text in its own pen") << QString::fromUtf8("Gr\u00fc\u00dfe") << true << QByteArray();
    QTest::newRow("Latin-1 bytes under a Latin-1 locale")
        << QString::fromUtf8("Gr\u00fc\u00dfe") << false << QByteArray("ISO-8859-1");
}

// Code 16: a text decoded from the local eight-bit encoding, shown in the pen
// of the overlay or the window, read back as UTF-8 with its font and no pen
// or brush.
void tst_ReadBack::textOverlayReadsBackWithoutColoursAsUTF8()
{
    QFETCH(QString, text);
    QFETCH(bool, ownPen);
    QFETCH(QByteArray, localCodec);
    const LocalCodecScope codecScope(localCodec);
    const QByteArray bytes = text.toLocal8Bit();
    const QString decoded = QString::fromLocal8Bit(bytes);
    if (!localCodec.isEmpty()) {
        // One byte a character: the window decoded them as the locale says,
        // not as UTF-8, and hands back UTF-8.
        QCOMPARE(bytes, QByteArray("Gr\xFC\xDF" "e"));
        QCOMPARE(decoded, text);
    }
    LookScene s;
    VorFont font("Serif", 17);
    font.weight = 75;
    font.italic = 1;
    font.underline = 1;
    font.strikeOut = 0;
    VorOverlay ov;
    ov.GenText(VorPoint(30.5, 40.25), bytes.constData(), font);
    if (ownPen)
        ov.SetPen(1, 2, 3, 9);
    const long zBefore = s.active()->zValue();

    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(id >= 0);
    QVERIFY(s.active()->shapes().isEmpty());
    QCOMPARE(s.active()->texts().size(), 1);
    ODText* shown = s.active()->texts().first();
    QCOMPARE(shown->GetID(), id);
    QCOMPARE(shown->Text(), decoded);
    QCOMPARE(shown->Pos(), QPointF(30.5, 40.25));
    QCOMPARE(shown->GetColor(), ownPen ? QColor(1, 2, 3, kScenePen.alpha()) : kScenePen);
    QCOMPARE(shown->GetFont().family(), QString("Serif"));
    QCOMPARE(shown->GetFont().pointSize(), 17);
    QCOMPARE(shown->GetFont().weight(), 75);
    QVERIFY(shown->GetFont().italic());
    QVERIFY(shown->GetFont().underline());
    QVERIFY(!shown->GetFont().strikeOut());
    QVERIFY(shown->isOverlay());
    QCOMPARE(s.active()->zValue(), zBefore + 1);
    QCOMPARE(shown->textItem()->zValue(), double(zBefore + 1));

    VorOverlay readBack;
    QCOMPARE(s.active()->GetOverlay(id, &readBack), 0L);
    QCOMPARE(readBack.OverlayType(), int(VorOverlay::OV_TEXT));
    VorPoint pos;
    VorVar backText;
    VorFont backFont;
    QVERIFY(readBack.GetText(&pos, &backText, &backFont));
    QCOMPARE(pos.x, 30.5);
    QCOMPARE(pos.y, 40.25);
    QCOMPARE(QByteArray(backText.S()), decoded.toUtf8());
    QCOMPARE(QByteArray(backFont.S()), QByteArray("Serif"));
    QCOMPARE(backFont.size, 17);
    QCOMPARE(backFont.weight, 75);
    QCOMPARE(int(backFont.italic), 1);
    QCOMPARE(int(backFont.underline), 1);
    QCOMPARE(int(backFont.strikeOut), 0);
    QVERIFY(!readBack.GetIVorOverlay()->isRedrawPen());
    QVERIFY(!readBack.GetIVorOverlay()->isRedrawBrush());

    // A text has no ROI form.
    VorROI roi = untouchedROI();
    QCOMPARE(s.active()->GetROIShape(id, &roi), -1L);
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_CIRCLE));
}

// Code 19: the region is shown but reads back as neither ROI nor overlay.
void tst_ReadBack::regionOverlayNeverReadsBack()
{
    LookScene s;
    VorOverlay ov;
    ov.GenRegion(VorRegion(blockMask(QSize(40, 30), QRect(5, 6, 10, 8))));
    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(id >= 0);
    QVERIFY(s.active()->region());
    QCOMPARE(s.active()->region()->GetID(), id);
    QVERIFY(s.active()->shapes().isEmpty());

    VorOverlay overlay = untouchedOverlay();
    QCOMPARE(s.active()->GetOverlay(id, &overlay), -1L);
    QCOMPARE(overlay.OverlayType(), int(VorOverlay::OV_CIRCLE));
    VorROI roi = untouchedROI();
    QCOMPARE(s.active()->GetROIShape(id, &roi), -1L);
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_CIRCLE));
}

// A picture placed as a shape comes back by id; other shapes answer 0 and
// write nothing, unknown ids -1.
void tst_ReadBack::imageReadsBackThePictureItShows()
{
    // The shape keeps a pointer to the picture, which outlives it.
    VorImage picture(cv::Mat(10, 20, CV_8UC1, cv::Scalar(77)));
    LookScene s;
    VorPoint topLeft(5, 6);
    const long zBefore = s.active()->zValue();
    const long id = s.active()->DrawImage(picture, topLeft);
    QVERIFY(id >= 0);
    QCOMPARE(s.active()->zValue(), zBefore + 1);
    QCOMPARE(s.active()->shapes().size(), 1);
    auto* shape = dynamic_cast<ODImage*>(s.active()->shapes().first());
    QVERIFY(shape);
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    QVERIFY(shape->GetParam(&x1, &y1, &x2, &y2));
    QCOMPARE(Params({x1, y1, x2, y2}), Params({5, 6, 25, 16}));
    QCOMPARE(shape->GetPenColor(), kScenePen);
    QCOMPARE(shape->GetLineWidth(), float(kTruncatedWidth));

    VorImage back;
    QCOMPARE(s.active()->GetImage(id, &back), 0L);
    QCOMPARE(back.Width(), 20);
    QCOMPARE(back.Height(), 10);
    QCOMPARE(int(back.ImageData()[0]), 77);
    // The picture shares the plain rectangle's mode and reads back as one.
    VorROI asROI = untouchedROI();
    QCOMPARE(s.active()->GetROIShape(id, &asROI), 0L);
    QCOMPARE(asROI.ROIType(), int(VorROI::ROI_RECT1));
    KIT_COMPARE_NEAR(valuesOf(asROI), Params({5, 6, 25, 16}), kExact);

    VorROI circle = makeROI(VorROI::ROI_CIRCLE, {100, 80, 40});
    const long circleId = s.active()->DrawROI(circle, false);
    VorImage untouched;
    QCOMPARE(s.active()->GetImage(circleId, &untouched), 0L);
    QCOMPARE(untouched.Width(), 0);
    QCOMPARE(s.active()->GetImage(circleId + 1000, &untouched), -1L);
    QCOMPARE(s.active()->GetImage(id, nullptr), 0L);
}

void tst_ReadBack::hiddenShapeAnswersZeroAndShowsNothing()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long id = s.active()->DrawROI(rect, false);
    ODShape* shape = s.active()->shapeById(id);
    s.active()->ShowShapeHandle(id);
    QVERIFY(handlesShown(shape));
    QVERIFY(!static_cast<ODRect1*>(shape)->rectItem()->rect().isEmpty());

    QCOMPARE(s.active()->ShapeVisible(id, false), 0L);
    QVERIFY(!shape->isVisible());
    QVERIFY(!handlesShown(shape));
    QVERIFY(static_cast<ODRect1*>(shape)->rectItem()->rect().isEmpty());
    QVERIFY(s.active()->GetShapeListAtPoint(QPointF(10, 20)).isEmpty());
}

void tst_ReadBack::shownAgainShapeComesBackWithoutHandles()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long id = s.active()->DrawROI(rect, false);
    ODShape* shape = s.active()->shapeById(id);
    s.active()->ShowShapeHandle(id);
    s.active()->ShapeVisible(id, false);
    s.scene.setScale(3.0);
    QCOMPARE(s.active()->ShapeVisible(id, true), 0L);
    QVERIFY(shape->isVisible());
    QVERIFY(!handlesShown(shape));
    QCOMPARE(s.active()->shapeOperator()->scale(), 3.0f);
    KIT_COMPARE_NEAR(static_cast<ODRect1*>(shape)->rectItem()->rect(), QRectF(QPointF(10, 20), QPointF(110, 70)), 0.0);
}

void tst_ReadBack::visibilityOfUnknownIdAnswersMinusOne()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long id = s.active()->DrawROI(rect, false);
    QCOMPARE(s.active()->ShapeVisible(id + 1, false), -1L);
    QVERIFY(s.active()->shapeById(id)->isVisible());
}

void tst_ReadBack::movableAndSelectableFlagsByIdWithUnknownIds()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long id = s.active()->DrawROI(rect, false);
    ODShape* shape = s.active()->shapeById(id);
    QVERIFY(s.active()->isShapeMovable(id));
    QVERIFY(s.active()->isShapeSelectable(id));
    QCOMPARE(s.active()->setShapeMovable(id, false), 0L);
    QCOMPARE(s.active()->setShapeSelectable(id, false), 0L);
    QVERIFY(!shape->isMovable());
    QVERIFY(!shape->isSelectble());
    QVERIFY(!s.active()->isShapeMovable(id));
    QVERIFY(!s.active()->isShapeSelectable(id));

    QCOMPARE(s.active()->setShapeMovable(id + 1, true), -1L);
    QCOMPARE(s.active()->setShapeSelectable(id + 1, true), -1L);
    QVERIFY(!s.active()->isShapeMovable(id + 1));
    QVERIFY(!s.active()->isShapeSelectable(id + 1));
    QVERIFY(!shape->isMovable());
}

void tst_ReadBack::shapeIdsComeInOrderOfInsertion()
{
    LookScene s;
    QCOMPARE(s.active()->getShapeIDS(), QList<long>());
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    VorOverlay line = makeOverlay(VorOverlay::OV_LINE, {1, 2, 3, 4});
    const long first = s.active()->DrawROI(rect, false);
    const long second = s.active()->DrawOverlay(line, false);
    const long third = s.active()->DrawROI(rect, false);
    QCOMPARE(s.active()->getShapeIDS(), (QList<long>{first, second, third}));
    s.active()->removeShape(second);
    QCOMPARE(s.active()->getShapeIDS(), (QList<long>{first, third}));
}

void tst_ReadBack::hostSelectionShowsHandlesOfThatShapeAlone()
{
    LookScene s;
    VorROI rect = makeROI(VorROI::ROI_RECT1, {10, 20, 110, 70});
    const long first = s.active()->DrawROI(rect, false);
    const long second = s.active()->DrawROI(rect, false);
    ODShape* a = s.active()->shapeById(first);
    ODShape* b = s.active()->shapeById(second);
    s.active()->ShowShapeHandle(first);
    QCOMPARE(s.active()->selectedShapes(), QVector<ODShape*>{a});
    QVERIFY(handlesShown(a));
    QCOMPARE(ODShapeToolManage::GetODShapeToolManage()->selectTool()->currentShape(), a);

    s.active()->ShowShapeHandle(second);
    QCOMPARE(s.active()->selectedShapes(), QVector<ODShape*>{b});
    QVERIFY(!handlesShown(a));
    QVERIFY(handlesShown(b));
    QCOMPARE(ODShapeToolManage::GetODShapeToolManage()->selectTool()->currentShape(), b);

    s.active()->ShowShapeHandle(second + 1000);
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QVERIFY(!handlesShown(b));
    s.active()->clearCurrentShape();
}

QTEST_MAIN(tst_ReadBack)
#include "tst_readback.moc"
