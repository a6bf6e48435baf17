// Regions of interest and overlays shown through the shape layer: each call
// makes a new shape with the next z value of the layer, refusals, the colour
// rule of overlays, paths of overlays, the static layer, the walk that keeps
// every shape at the scene's scale, and the pixels of each kind on screen.

#include "testkit.h"
#include "kitregions.h"
#include "kitshapedata.h"

#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "oditemregion.h"
#include "odtext.h"
#include "odannular.h"
#include "shapeoperator.h"

#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"
#include "VorRegion.h"

#include <QRandomGenerator>
#include <QtTest>

#include <limits>

using namespace Kit;

namespace {

VorROI circleROI()
{
    return makeROI(VorROI::ROI_CIRCLE, {100, 80, 40});
}

VorOverlay lineOverlay()
{
    return makeOverlay(VorOverlay::OV_LINE, {10, 20, 150, 90});
}

// A code that no kind has, as an overlay: the holder's own "no kind".
VorOverlay unknownOverlay()
{
    return VorOverlay();
}

// How many pixels within the window are dominated by the one channel that
// a pure pen colour has: a thin pen is blended with what lies beside it, so
// its pixels are told by the channel that stands out, not by the exact colour.
int countPenPixels(const QImage& image, const QRect& window, const QColor& pen)
{
    constexpr int kLead = 40;
    int count = 0;
    const QRect area = window.intersected(image.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QRgb c = image.pixel(x, y);
            const int lead = pen.red() > 0 ? qRed(c) - std::max(qGreen(c), qBlue(c))
                                           : qBlue(c) - std::max(qRed(c), qGreen(c));
            count += lead >= kLead ? 1 : 0;
        }
    }
    return count;
}

const QColor kRed(255, 0, 0);
const QColor kGreenFill(0, 160, 0);
const QColor kOverlayBlue(0, 0, 160);

} // namespace

class tst_DisplayROI : public QObject
{
    Q_OBJECT

private slots:
    void zCounterStartsAtTheLayersBand();
    void everyDrawRoutineTakesTheNextZValueAlsoWhenItRefuses();
    void typeWithoutRoutineTakesNoZValue_data();
    void typeWithoutRoutineTakesNoZValue();
    void sameROITwiceGivesTwoShapes();
    void shapesFromDataAreNotSelected();
    void overlayFlagMarksOverlaysAlone();

    void dataPictureMustBeValidWhenChecked();
    void staticOverlayGoesToTheStaticLayerWithThisLayersCounter();
    void staticOverlayRefusedOverAnInvalidDataPicture();

    void emptyPathAnswersMinusOne();
    void pathAnswersTheFirstDrawnIdAndDrawsAfterAFailure();

    void torusSweepIsStoredNegated();
    void overlayWithoutOwnColoursTakesTheWindowsLookOfThisMoment();
    void overlayPenReplacesColourAndWidthButKeepsTheAlpha();
    void overlayBrushReplacesAllFourChannels();
    void overlayChannelsOutsideTheRangeAreHeldAtItsEnds();

    void roiDisplayBringsEveryShapeToTheScenesScale();
    void overlayDisplayLeavesOtherShapesScalesAlone();
    void walkReachesShapesWhoseScaleWasSetElsewhere();
    void walkGivesWhatAPlainWalkGivesOnRandomEdits();

    void badValuesAreRefusedOrShownAndPaintedWithoutHarm_data();
    void badValuesAreRefusedOrShownAndPaintedWithoutHarm();

    void eachKindIsPaintedInItsColours_data();
    void eachKindIsPaintedInItsColours();
    void regionsArePaintedInTheirColours_data();
    void regionsArePaintedInTheirColours();
    void textIsPaintedInItsPen_data();
    void textIsPaintedInItsPen();
    void textFontOutOfRangeKeepsWhatAFontCanTake();
    void emptyRegionsAreTakenAndShowNothing();
};

void tst_DisplayROI::zCounterStartsAtTheLayersBand()
{
    LayerScene s;
    QCOMPARE(s.active()->zValue(), 0L);
    QCOMPARE(s.fixed()->zValue(), 0L);
    s.scene.CreateLayers(3);
    ShaperLayer* third = s.scene.getShaperLayperList().value(3);
    QVERIFY(third);
    QCOMPARE(third->layerIndex(), 2);
    QCOMPARE(third->zValue(), 2 * ShaperLayer::s_zBandPerLayer);

    // Shapes go to the active layer whichever layer's counter they take.
    VorROI roi = circleROI();
    const QSet<QGraphicsItem*> before = itemSet(&s.scene);
    const long id = third->DrawROI(roi, false);
    QVERIFY(s.active()->shapeById(id));
    QCOMPARE(third->zValue(), 6001L);
    QCOMPARE(lowestZ(itemsAddedSince(&s.scene, before)), 6001.0);
}

void tst_DisplayROI::everyDrawRoutineTakesTheNextZValueAlsoWhenItRefuses()
{
    LayerScene s;
    ShaperLayer* layer = s.active();
    VorROI point = makeROI(VorROI::ROI_POINT, {5, 6});
    QVERIFY(layer->DrawROI(point, false) >= 0);
    QCOMPARE(layer->zValue(), 1L);

    // The routine of another kind, on the ROI of the last call, refuses it.
    QCOMPARE(layer->DrawROILine(), -1L);
    QCOMPARE(layer->zValue(), 2L);
    QCOMPARE(layer->DrawROIPoint() >= 0, true);
    QCOMPARE(layer->zValue(), 3L);

    VorOverlay circle = makeOverlay(VorOverlay::OV_CIRCLE, {1, 2, 3});
    QCOMPARE(layer->DrawOverlayRectangle(circle), -1L);
    QCOMPARE(layer->zValue(), 4L);
    QVERIFY(layer->DrawOverlay(circle, false) >= 0);
    QCOMPARE(layer->zValue(), 5L);
    QCOMPARE(layer->shapes().size(), 3);
}

void tst_DisplayROI::typeWithoutRoutineTakesNoZValue_data()
{
    QTest::addColumn<bool>("overlay");
    QTest::addColumn<int>("code");
    QTest::newRow("ROI 3, no kind") << false << 3;
    QTest::newRow("ROI 12, a closed free line") << false << 12;
    QTest::newRow("overlay 0") << true << 0;
    QTest::newRow("overlay 17, a cross") << true << 17;
    QTest::newRow("overlay 18, an arrowed line") << true << 18;
}

// Only a routine takes a z value; a code that reaches none takes nothing.
void tst_DisplayROI::typeWithoutRoutineTakesNoZValue()
{
    QFETCH(bool, overlay);
    QFETCH(int, code);
    LayerScene s;
    long id = 0;
    if (overlay) {
        VorOverlay ov = makeOverlay(code, {10, 20, 30, 40});
        QCOMPARE(ov.OverlayType(), code);
        id = s.active()->DrawOverlay(ov, false);
    } else {
        VorROI roi = makeROI(code, {10, 20, 30, 40});
        QCOMPARE(roi.ROIType(), code);
        id = s.active()->DrawROI(roi, false);
    }
    QCOMPARE(id, -1L);
    QCOMPARE(s.active()->zValue(), 0L);
    QVERIFY(s.active()->shapes().isEmpty());
}

void tst_DisplayROI::sameROITwiceGivesTwoShapes()
{
    LayerScene s;
    VorROI roi = circleROI();
    const long first = s.active()->DrawROI(roi, false);
    const long second = s.active()->DrawROI(roi, false);
    QVERIFY(first >= 0);
    QVERIFY(second > first);
    QCOMPARE(s.active()->shapes().size(), 2);
    KIT_COMPARE_NEAR(shapeParams(s.active()->shapeById(second)), shapeParams(s.active()->shapeById(first)), 0.0);
}

void tst_DisplayROI::shapesFromDataAreNotSelected()
{
    LayerScene s;
    VorROI roi = circleROI();
    VorOverlay ov = lineOverlay();
    s.active()->DrawROI(roi, false);
    s.active()->DrawOverlay(ov, false);
    QVERIFY(s.active()->selectedShapes().isEmpty());
    for (ODShape* shape : s.active()->shapes())
        QVERIFY(!shape->isVisiblehandleMark());
}

void tst_DisplayROI::overlayFlagMarksOverlaysAlone()
{
    LayerScene s;
    s.scene.GetImageLayer()->setIsVorImg(false);
    VorROI roi = circleROI();
    VorOverlay ov = lineOverlay();
    const long roiId = s.active()->DrawROI(roi, false);
    const long overlayId = s.active()->DrawOverlay(ov, false);
    QVERIFY(!s.scene.isOverlay());
    const long staticId = s.active()->DrawStaticOverlay(ov);
    QVERIFY(!s.scene.isOverlay());
    QVERIFY(!s.scene.isStaticOverlay());
    QVERIFY(!s.active()->shapeById(roiId)->isOverlay());
    QVERIFY(s.active()->shapeById(overlayId)->isOverlay());
    QVERIFY(!s.fixed()->shapeById(staticId)->isOverlay());
}

void tst_DisplayROI::dataPictureMustBeValidWhenChecked()
{
    LayerScene s;
    QVERIFY(s.scene.GetImageLayer()->isVorImg());
    VorROI roi = circleROI();
    VorOverlay ov = lineOverlay();
    VorOverlayPath path;
    path.Append(ov);

    QCOMPARE(s.active()->DrawROI(roi, true), -1L);
    QCOMPARE(s.active()->DrawOverlay(ov, true), -1L);
    QCOMPARE(s.active()->DrawOverlayPath(path, true), -1L);
    QVERIFY(!s.scene.isOverlay());
    QCOMPARE(s.active()->zValue(), 0L);
    QVERIFY(s.active()->shapes().isEmpty());

    QVERIFY(s.active()->DrawROI(roi, false) >= 0);
    QVERIFY(s.active()->DrawOverlay(ov, false) >= 0);

    VorImage picture = greyPicture(40, 30, 90);
    QVERIFY(s.scene.GetImageLayer()->LoadVorImage(&picture));
    QVERIFY(s.active()->DrawROI(roi, true) >= 0);
    QVERIFY(s.active()->DrawOverlay(ov, true) >= 0);
    QVERIFY(s.active()->DrawOverlayPath(path, true) >= 0);
    QCOMPARE(s.active()->shapes().size(), 5);
}

void tst_DisplayROI::staticOverlayGoesToTheStaticLayerWithThisLayersCounter()
{
    LayerScene s;
    s.scene.GetImageLayer()->setIsVorImg(false);
    VorOverlay ov = lineOverlay();
    const QSet<QGraphicsItem*> before = itemSet(&s.scene);
    const long id = s.active()->DrawStaticOverlay(ov);
    QVERIFY(id >= 0);
    QVERIFY(s.active()->shapes().isEmpty());
    QCOMPARE(s.fixed()->shapes().size(), 1);
    QCOMPARE(s.active()->zValue(), 1L);
    QCOMPARE(s.fixed()->zValue(), 0L);
    QCOMPARE(lowestZ(itemsAddedSince(&s.scene, before)), 1.0);
}

void tst_DisplayROI::staticOverlayRefusedOverAnInvalidDataPicture()
{
    LayerScene s;
    QVERIFY(s.scene.GetImageLayer()->isVorImg());
    VorOverlay ov = lineOverlay();
    QCOMPARE(s.active()->DrawStaticOverlay(ov), -1L);
    QVERIFY(!s.scene.isStaticOverlay());
    QVERIFY(s.fixed()->shapes().isEmpty());
    VorImage picture = greyPicture(40, 30, 90);
    QVERIFY(s.scene.GetImageLayer()->LoadVorImage(&picture));
    QVERIFY(s.active()->DrawStaticOverlay(ov) >= 0);
    QCOMPARE(s.fixed()->shapes().size(), 1);
}

void tst_DisplayROI::emptyPathAnswersMinusOne()
{
    LayerScene s;
    VorOverlayPath path;
    QCOMPARE(s.active()->DrawOverlayPath(path, false), -1L);
    QVERIFY(s.active()->shapes().isEmpty());
}

void tst_DisplayROI::pathAnswersTheFirstDrawnIdAndDrawsAfterAFailure()
{
    LayerScene s;
    VorOverlayPath path;
    path.Append(unknownOverlay());
    path.Append(lineOverlay());
    path.Append(unknownOverlay());
    path.Append(makeOverlay(VorOverlay::OV_CIRCLE, {5, 5, 5}));
    const long nextId = ODShape::s_ID;
    const long id = s.active()->DrawOverlayPath(path, false);
    QCOMPARE(id, nextId);
    QCOMPARE(s.active()->shapes().size(), 2);
    QCOMPARE(s.active()->shapes().at(0)->GetDrawMode(), DM_LINE);
    QCOMPARE(s.active()->shapes().at(1)->GetDrawMode(), DM_CIRCLE);
    QVERIFY(s.active()->shapes().at(1)->isOverlay());

    VorOverlayPath unknownOnly;
    unknownOnly.Append(unknownOverlay());
    unknownOnly.Append(unknownOverlay());
    QCOMPARE(s.active()->DrawOverlayPath(unknownOnly, false), -1L);
}

void tst_DisplayROI::torusSweepIsStoredNegated()
{
    LayerScene s;
    VorROI roi = makeROI(VorROI::ROI_TORUS, {100, 80, 20, 40, -30, 90});
    auto* annulus = dynamic_cast<ODAnnular*>(s.active()->shapeById(s.active()->DrawROI(roi, false)));
    QVERIFY(annulus);
    QCOMPARE(annulus->sweepAngle(), -90.0);
    QCOMPARE(annulus->startAngle(), 330.0);
    QVERIFY(annulus->HaveSearchLine());
    QCOMPARE(annulus->searchCount(), 0);

    VorOverlay spokes = makeOverlay(VorOverlay::OV_SPOKETORUS, {100, 80, 20, 40, 10, -45, 3, 6});
    annulus = dynamic_cast<ODAnnular*>(s.active()->shapeById(s.active()->DrawOverlay(spokes, false)));
    QVERIFY(annulus);
    QCOMPARE(annulus->sweepAngle(), 45.0);
    QCOMPARE(int(annulus->searchDirection()), 3);
    QCOMPARE(annulus->searchCount(), 6);
}

void tst_DisplayROI::overlayWithoutOwnColoursTakesTheWindowsLookOfThisMoment()
{
    LayerScene s;
    VorOverlay ov = lineOverlay();
    s.scene.setPenColor(QColor(1, 2, 3, 4));
    s.scene.setBrushColor(QColor(5, 6, 7, 8));
    s.scene.setLineWidth(2.9f);
    ODShape* first = s.active()->shapeById(s.active()->DrawOverlay(ov, false));
    s.scene.setPenColor(QColor(9, 10, 11, 12));
    ODShape* second = s.active()->shapeById(s.active()->DrawOverlay(ov, false));
    QCOMPARE(first->GetPenColor(), QColor(1, 2, 3, 4));
    QCOMPARE(first->GetBrushColor(), QColor(5, 6, 7, 8));
    QCOMPARE(first->GetLineWidth(), 2.0f);
    QCOMPARE(second->GetPenColor(), QColor(9, 10, 11, 12));
}

void tst_DisplayROI::overlayPenReplacesColourAndWidthButKeepsTheAlpha()
{
    LayerScene s;
    s.scene.setPenColor(QColor(1, 2, 3, 44));
    s.scene.setBrushColor(QColor(5, 6, 7, 8));
    VorOverlay ov = lineOverlay();
    ov.SetPen(100, 110, 120, 6);
    ODShape* shape = s.active()->shapeById(s.active()->DrawOverlay(ov, false));
    QCOMPARE(shape->GetPenColor(), QColor(100, 110, 120, 44));
    QCOMPARE(shape->GetLineWidth(), 6.0f);
    QCOMPARE(shape->GetBrushColor(), QColor(5, 6, 7, 8));
}

void tst_DisplayROI::overlayBrushReplacesAllFourChannels()
{
    LayerScene s;
    s.scene.setPenColor(QColor(1, 2, 3, 44));
    s.scene.setLineWidth(2.0f);
    VorOverlay ov = makeOverlay(VorOverlay::OV_RECT1, {1, 2, 30, 40});
    ov.SetBrush(100, 110, 120, 130);
    ODShape* shape = s.active()->shapeById(s.active()->DrawOverlay(ov, false));
    QCOMPARE(shape->GetBrushColor(), QColor(100, 110, 120, 130));
    QCOMPARE(shape->GetPenColor(), QColor(1, 2, 3, 44));
    QCOMPARE(shape->GetLineWidth(), 2.0f);
}

void tst_DisplayROI::overlayChannelsOutsideTheRangeAreHeldAtItsEnds()
{
    LayerScene s;
    VorOverlay ov = lineOverlay();
    ov.SetPen(300, -5, 255, 1);
    ov.SetBrush(-1, 256, 7, 1000);
    ODShape* shape = s.active()->shapeById(s.active()->DrawOverlay(ov, false));
    QCOMPARE(shape->GetPenColor().rgb(), QColor(255, 0, 255).rgb());
    QCOMPARE(shape->GetBrushColor(), QColor(0, 255, 7, 255));
}

void tst_DisplayROI::roiDisplayBringsEveryShapeToTheScenesScale()
{
    LayerScene s;
    VorROI roi = circleROI();
    const long old = s.active()->DrawROI(roi, false);
    s.scene.setScale(2.0);
    const long fresh = s.active()->DrawROI(roi, false);
    QCOMPARE(s.active()->shapeById(old)->GetScale(), 2.0f);
    QCOMPARE(s.active()->shapeById(fresh)->GetScale(), 2.0f);
}

void tst_DisplayROI::overlayDisplayLeavesOtherShapesScalesAlone()
{
    LayerScene s;
    VorOverlay ov = lineOverlay();
    const long old = s.active()->DrawOverlay(ov, false);
    s.scene.setScale(2.0);
    const long fresh = s.active()->DrawOverlay(ov, false);
    QCOMPARE(s.active()->shapeById(old)->GetScale(), 1.0f);
    QCOMPARE(s.active()->shapeById(fresh)->GetScale(), 2.0f);
}

void tst_DisplayROI::walkReachesShapesWhoseScaleWasSetElsewhere()
{
    LayerScene s;
    VorROI roi = circleROI();
    const long a = s.active()->DrawROI(roi, false);
    const long b = s.active()->DrawROI(roi, false);
    s.active()->shapeById(a)->SetScale(7.0f);
    s.active()->Update();
    QCOMPARE(s.active()->shapeById(a)->GetScale(), 1.0f);
    QCOMPARE(s.active()->shapeById(b)->GetScale(), 1.0f);

    // A shape removed while its scale was pending is simply forgotten.
    s.active()->shapeById(b)->SetScale(3.0f);
    QVERIFY(s.active()->removeShape(b));
    s.active()->Update();
    QCOMPARE(s.active()->shapes().size(), 1);
}

// The walk that skips unchanged shapes against the plain one of the layer's
// definition: after every Update each shape holds the scene's scale.
void tst_DisplayROI::walkGivesWhatAPlainWalkGivesOnRandomEdits()
{
    LayerScene s;
    QRandomGenerator random(20240611);
    VorROI roi = circleROI();
    const float scales[] = {0.25f, 1.0f, 2.0f, 4.0f};
    for (int step = 0; step < 400; ++step) {
        const QVector<ODShape*> shapes = s.active()->shapes();
        switch (random.bounded(6)) {
        case 0: s.active()->DrawROI(roi, false); break;
        case 1: {
            VorOverlay ov = lineOverlay();
            s.active()->DrawOverlay(ov, false);
            break;
        }
        case 2:
            if (!shapes.isEmpty())
                shapes[random.bounded(shapes.size())]->SetScale(scales[random.bounded(4)]);
            break;
        case 3:
            if (!shapes.isEmpty())
                s.active()->removeShape(shapes[random.bounded(shapes.size())]);
            break;
        case 4: s.scene.setScale(double(scales[random.bounded(4)])); break;
        default: {
            s.active()->Update();
            const float expected = float(s.scene.getScale());
            for (ODShape* shape : s.active()->shapes())
                QCOMPARE(shape->GetScale(), expected);
            break;
        }
        }
    }
}

void tst_DisplayROI::badValuesAreRefusedOrShownAndPaintedWithoutHarm_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("paintable");
    QTest::newRow("NaN is refused") << std::numeric_limits<double>::quiet_NaN() << false;
    QTest::newRow("infinity is refused") << std::numeric_limits<double>::infinity() << false;
    QTest::newRow("minus infinity is refused") << -std::numeric_limits<double>::infinity() << false;
    QTest::newRow("beyond ten million is refused") << 1.0000001e7 << false;
    QTest::newRow("beyond int is refused") << 1e12 << false;
    QTest::newRow("negative is shown") << -1e6 << true;
    QTest::newRow("ten million is shown") << 1e7 << true;
}

// Every kind of ROI and overlay filled with one bad value either is refused,
// with nothing made, or becomes a shape that reads back and is painted on a
// zoomed view; every point list empty is shown too.
void tst_DisplayROI::badValuesAreRefusedOrShownAndPaintedWithoutHarm()
{
    QFETCH(double, value);
    QFETCH(bool, paintable);
    Kit::PictureWindow w(4.0);
    ShaperLayer* layer = w.active();
    const Params bad(8, value);
    for (int code = VorROI::ROI_RECT1; code <= VorROI::ROI_POINT; ++code) {
        if (code == VorROI::ROI_NONE)
            continue;
        for (const Params& values : {bad, Params{}}) {
            VorROI roi = makeROI(code, values);
            const int before = layer->shapes().size();
            const long id = layer->DrawROI(roi, false);
            const bool emptyList = values.isEmpty();
            if (!paintable && !emptyList) {
                QVERIFY2(id == -1, qPrintable(QString("ROI code %1").arg(code)));
                QCOMPARE(layer->shapes().size(), before);
                continue;
            }
            QVERIFY2(id >= 0 || emptyList, qPrintable(QString("ROI code %1").arg(code)));
            if (id < 0)
                continue;
            VorROI back;
            QCOMPARE(layer->GetROIShape(id, &back), 0L);
            VorOverlay asOverlay;
            QCOMPARE(layer->GetOverlay(id, &asOverlay), 0L);
        }
    }
    for (int code = VorOverlay::OV_POINT; code <= VorOverlay::OV_IRREGULAR; ++code) {
        for (const Params& values : {bad, Params{}}) {
            VorOverlay ov = makeOverlay(code, values);
            ov.SetPen(long(1e12), -1, 7, long(-5));
            const int before = layer->shapes().size();
            const long id = layer->DrawOverlay(ov, false);
            const bool emptyList = values.isEmpty();
            if (!paintable && !emptyList) {
                QVERIFY2(id == -1, qPrintable(QString("overlay code %1").arg(code)));
                QCOMPARE(layer->shapes().size(), before);
                continue;
            }
            QVERIFY2(id >= 0 || emptyList, qPrintable(QString("overlay code %1").arg(code)));
            if (id < 0)
                continue;
            VorOverlay back;
            QCOMPARE(layer->GetOverlay(id, &back), 0L);
            VorROI asROI;
            QCOMPARE(layer->GetROIShape(id, &asROI), 0L);
        }
    }
    layer->Update();
    layer->Show(true);
    // Painted at zoom 4 with every shape selected: nothing breaks the painting.
    for (ODShape* shape : layer->shapes())
        layer->addSelectedShape(shape);
    layer->Show(true);
    const QImage painted = Kit::grabViewport(w.view());
    QVERIFY(!painted.isNull());
    Kit::forgetCurrentShape();
}

void tst_DisplayROI::eachKindIsPaintedInItsColours_data()
{
    QTest::addColumn<bool>("overlay");
    QTest::addColumn<int>("code");
    QTest::addColumn<Params>("values");
    QTest::addColumn<QPointF>("onPen");
    QTest::addColumn<QPointF>("inBrush");  // null: no fill to check
    QTest::addColumn<double>("zoom");

    const QPointF noFill;
    for (double zoom : {1.0, 4.0}) {
        const QByteArray z = QByteArray(" at zoom ") + QByteArray::number(zoom);
        auto row = [&](const char* name) -> QTestData& { return QTest::newRow((QByteArray(name) + z).constData()); };
        row("ROI rectangle") << false << 0 << Params{20, 20, 80, 60} << QPointF(20, 40) << QPointF(50, 40) << zoom;
        row("ROI circle") << false << 1 << Params{50, 40, 20} << QPointF(70, 40) << QPointF(50, 40) << zoom;
        row("ROI ring") << false << 2 << Params{50, 40, 15, 30, 0, 360} << QPointF(80, 40) << QPointF(50, 62.5)
                        << zoom;
        row("ROI polygon") << false << 4 << Params{20, 20, 80, 20, 50, 70} << QPointF(50, 20) << QPointF(50, 35)
                           << zoom;
        row("ROI free line") << false << 5 << Params{20, 20, 80, 20, 80, 60} << QPointF(50, 20) << noFill << zoom;
        row("ROI rotated rectangle") << false << 6 << Params{50, 40, 60, 30, 0} << QPointF(20, 40)
                                     << QPointF(50, 40) << zoom;
        row("ROI line") << false << 7 << Params{20, 50, 90, 50} << QPointF(55, 50) << noFill << zoom;
        row("ROI ellipse") << false << 8 << Params{50, 40, 30, 15, 0} << QPointF(80, 40) << QPointF(50, 40) << zoom;
        row("ROI arc") << false << 9 << Params{50, 40, 30, 0, 90} << QPointF(50 + 30 * 0.7071, 40 - 30 * 0.7071)
                       << noFill << zoom;
        row("ROI point") << false << 10 << Params{50, 40} << QPointF(50, 40) << noFill << zoom;
        row("overlay arrow line") << true << 2 << Params{20, 50, 90, 50} << QPointF(55, 50) << noFill << zoom;
        row("overlay closed free line") << true << 9 << Params{20, 20, 80, 20, 80, 60} << QPointF(80, 40) << noFill
                                        << zoom;
        row("overlay rectangle with search lines") << true << 5 << Params{20, 20, 80, 60, 2, 5} << QPointF(20, 40)
                                                   << noFill << zoom;
    }
}

// ROIs in the window's red pen and green brush, overlays in a blue pen of
// their own; each is checked where its pen and its fill put colour.
void tst_DisplayROI::eachKindIsPaintedInItsColours()
{
    QFETCH(bool, overlay);
    QFETCH(int, code);
    QFETCH(Params, values);
    QFETCH(QPointF, onPen);
    QFETCH(QPointF, inBrush);
    QFETCH(double, zoom);

    PictureWindow w(zoom);
    ImageCtrlScene* scene = w.scene();
    scene->setPenColor(kRed);
    scene->setBrushColor(kGreenFill);
    scene->setLineWidth(1.0f);
    long id = -1;
    QColor pen = kRed;
    if (overlay) {
        VorOverlay ov = makeOverlay(code, values);
        ov.SetPen(kOverlayBlue.red(), kOverlayBlue.green(), kOverlayBlue.blue(), 1);
        id = w.active()->DrawOverlay(ov, w.imageLayer()->isVorImg());
        pen = kOverlayBlue;
    } else {
        VorROI roi = makeROI(code, values);
        id = w.active()->DrawROI(roi, w.imageLayer()->isVorImg());
    }
    QVERIFY(id >= 0);

    const QImage grab = w.grabViewport();
    const int reach = 2 + int(zoom);
    const QPoint penAt = w.view()->mapFromScene(onPen);
    QVERIFY2(countPenPixels(grab, around(penAt, reach), pen) > 0,
             qPrintable(QString("no pen colour near %1").arg(text(onPen))));
    if (!inBrush.isNull()) {
        const QPoint fillAt = w.view()->mapFromScene(inBrush);
        KIT_COMPARE_COLOUR(grab.pixel(fillAt), kGreenFill.rgb(), kChannelTolerance);
    }
    // Away from the shape the picture shows through.
    KIT_COMPARE_COLOUR(grab.pixel(w.view()->mapFromScene(QPointF(95, 90))), qRgb(PictureWindow::kGrey,
                       PictureWindow::kGrey, PictureWindow::kGrey), kChannelTolerance);
}

// How a region comes in: a mask ROI, or a region overlay with or without
// its own brush.
enum class RegionSource { MaskROI, OverlayOwnBrush, OverlayNoBrush };

void tst_DisplayROI::regionsArePaintedInTheirColours_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QColor>("colour");
    const QColor sceneBrush(0, 160, 0, 255);
    const QColor ownBrush(200, 30, 0, 255);
    const QColor green(0, 255, 0, 255);
    for (double zoom : {1.0, 4.0}) {
        const QString at = QString(" at zoom %1").arg(zoom);
        QTest::newRow(qPrintable("mask ROI in the window's brush" + at))
            << int(RegionSource::MaskROI) << zoom << sceneBrush;
        QTest::newRow(qPrintable("region overlay in its own brush" + at))
            << int(RegionSource::OverlayOwnBrush) << zoom << ownBrush;
        QTest::newRow(qPrintable("region overlay without a brush, opaque green" + at))
            << int(RegionSource::OverlayNoBrush) << zoom << green;
    }
}

void tst_DisplayROI::regionsArePaintedInTheirColours()
{
    QFETCH(int, source);
    QFETCH(double, zoom);
    QFETCH(QColor, colour);

    PictureWindow w(zoom);
    w.scene()->setBrushColor(QColor(0, 160, 0, 255));
    const VorImage mask = blockMask(QSize(200, 150), QRect(10, 12, 20, 15));
    long id = -1;
    if (RegionSource(source) == RegionSource::MaskROI) {
        VorROI roi;
        roi.GenMask(mask);
        id = w.active()->DrawROI(roi, w.imageLayer()->isVorImg());
    } else {
        VorOverlay ov;
        ov.GenRegion(VorRegion(mask));
        if (RegionSource(source) == RegionSource::OverlayOwnBrush)
            ov.SetBrush(colour.red(), colour.green(), colour.blue(), colour.alpha());
        id = w.active()->DrawOverlay(ov, w.imageLayer()->isVorImg());
    }
    QVERIFY(id >= 0);
    QVERIFY(w.active()->region());
    QCOMPARE(w.active()->region()->GetID(), id);
    flushPaints();

    const QImage grab = w.grabViewport();
    const QRgb grey = qRgb(PictureWindow::kGrey, PictureWindow::kGrey, PictureWindow::kGrey);
    for (const QPointF& inside : {QPointF(10.5, 12.5), QPointF(20.5, 20.5), QPointF(29.5, 26.5)})
        KIT_COMPARE_COLOUR(grabbedAt(grab, w.view(), inside), colour.rgb(), kChannelTolerance);
    for (const QPointF& outside : {QPointF(9.5, 12.5), QPointF(30.5, 20.5), QPointF(20.5, 27.5)})
        KIT_COMPARE_COLOUR(grabbedAt(grab, w.view(), outside), grey, kChannelTolerance);
}

void tst_DisplayROI::textIsPaintedInItsPen_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

// The text shows in the overlay's pen within the text's own box, and the
// picture shows around it.
void tst_DisplayROI::textIsPaintedInItsPen()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    VorOverlay ov;
    ov.GenText(VorPoint(12, 10), "WMW", VorFont("Sans", 12));
    ov.SetPen(kOverlayBlue.red(), kOverlayBlue.green(), kOverlayBlue.blue(), 1);
    const long id = w.active()->DrawOverlay(ov, w.imageLayer()->isVorImg());
    QVERIFY(id >= 0);
    QCOMPARE(w.active()->texts().size(), 1);
    ODText* text = w.active()->texts().first();
    flushPaints();

    const QImage grab = w.grabViewport();
    const QRect box = w.view()->mapFromScene(text->textItem()->sceneBoundingRect()).boundingRect();
    QVERIFY(!box.isEmpty());
    QVERIFY2(countPenPixels(grab, box, kOverlayBlue) > 10, qPrintable(QString("too few pen pixels in the text box")));
    QCOMPARE(countPenPixels(grab, grab.rect(), kOverlayBlue), countPenPixels(grab, box.adjusted(-1, -1, 1, 1), kOverlayBlue));
    KIT_COMPARE_COLOUR(grab.pixel(w.view()->mapFromScene(QPointF(95, 90))), qRgb(PictureWindow::kGrey,
                       PictureWindow::kGrey, PictureWindow::kGrey), kChannelTolerance);
}

// A weight above the heaviest is held at it, a size of no points leaves the
// font's own size.
void tst_DisplayROI::textFontOutOfRangeKeepsWhatAFontCanTake()
{
    LayerScene s;
    VorFont font("Sans", 0);
    font.weight = 500;
    VorOverlay ov;
    ov.GenText(VorPoint(1, 2), "x", font);
    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(id >= 0);
    QCOMPARE(s.active()->texts().size(), 1);
    const QFont shown = s.active()->texts().first()->GetFont();
    QCOMPARE(shown.weight(), 99);
    QVERIFY(shown.pointSize() > 0);

    font.size = -4;
    font.weight = -3;
    VorOverlay negative;
    negative.GenText(VorPoint(1, 2), "y", font);
    QVERIFY(s.active()->DrawOverlay(negative, false) >= 0);
    QCOMPARE(s.active()->texts().last()->GetFont().weight(), 0);
    QVERIFY(s.active()->texts().last()->GetFont().pointSize() > 0);
}

// An empty mask or region still makes the layer's region, which shows no pixel.
void tst_DisplayROI::emptyRegionsAreTakenAndShowNothing()
{
    LayerScene s;
    VorROI roi;
    roi.GenMask(VorImage());
    const long maskId = s.active()->DrawROI(roi, false);
    QVERIFY(maskId >= 0);
    QVERIFY(s.active()->region());
    QCOMPARE(s.active()->region()->GetID(), maskId);
    QVERIFY(s.active()->region()->item()->boundingRect().isEmpty());

    VorOverlay ov;
    ov.GenRegion(VorRegion());
    const long regionId = s.active()->DrawOverlay(ov, false);
    QVERIFY(regionId >= 0);
    QCOMPARE(s.active()->region()->GetID(), regionId);
    QVERIFY(s.active()->region()->item()->boundingRect().isEmpty());
    QVERIFY(s.active()->shapes().isEmpty());
}

QTEST_MAIN(tst_DisplayROI)
#include "tst_displayroi.moc"
