// The shape operator: each creator builds its kind of shape from numbers,
// with the colours, width and z value it is given, into the scene's active or
// static layer, shown and not selected.

#include "testkit.h"
#include "kitshapedata.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odannular.h"
#include "odanycloseline.h"
#include "odanyline.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odimage.h"
#include "oditemregion.h"
#include "odline.h"
#include "odpoint.h"
#include "odpolygon.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odtext.h"
#include "shapeoperator.h"

#include "VorImage.h"

#include <QFont>
#include <opencv2/core.hpp>

#include <QtTest>

#include <functional>

using namespace Kit;

namespace {

const QColor kPen(200, 10, 20, 250);
const QColor kBrush(30, 40, 50, 60);
constexpr int kWidth = 3;
constexpr long kZ = 4321;

ShapeOperator* opOf(const LayerScene& s)
{
    return s.active()->shapeOperator();
}

using Creator = std::function<long(ShapeOperator&)>;

struct Kind
{
    const char* name;
    Creator create;
    DrawMode mode;
    Params params;
    bool zSet;
};

QVector<double> flatPolygon()
{
    return {10, 10, 100, 10, 60, 80};
}

const QVector<Kind>& kinds()
{
    static const QVector<Kind> all = {
        {"point", [](ShapeOperator& o) { return o.DrawPoint(50, 60, 7, kZ, kPen, kBrush, kWidth); }, DM_POINT,
         {50, 60}, true},
        {"line", [](ShapeOperator& o) { return o.DrawLine(10, 20, 150, 90, kZ, kPen, kBrush, kWidth); }, DM_LINE,
         {10, 20, 150, 90}, true},
        {"arrow line", [](ShapeOperator& o) { return o.DrawArrowLine(10, 20, 150, 90, kZ, kPen, kBrush, kWidth); },
         DM_ARROWLINE, {10, 20, 150, 90}, true},
        {"rectangle", [](ShapeOperator& o) { return o.DrawRect(10, 20, 110, 70, kZ, kPen, kBrush, kWidth); },
         DM_RECT1, {10, 20, 110, 70}, true},
        {"rotated rectangle",
         [](ShapeOperator& o) { return o.DrawRect2(100, 80, 60, 30, 45, kZ, kPen, kBrush, kWidth); }, DM_RECT2,
         {100, 80, 60, 30, 45}, true},
        {"rectangle with search lines",
         [](ShapeOperator& o) {
             return o.DrawRectEx(10, 20, 110, 70, SL_LEFT_TO_RIGHT, 9, kZ, kPen, kBrush, kWidth);
         },
         DM_RAKERECT1, {10, 20, 110, 70, 2, 9}, false},
        {"rotated rectangle with search lines",
         [](ShapeOperator& o) {
             return o.DrawRect2Ex(100, 80, 60, 30, 45, SL_BOTTOM_TO_TOP, 6, kZ, kPen, kBrush, kWidth);
         },
         DM_RAKERECT2, {100, 80, 60, 30, 45, 1, 6}, false},
        {"circle", [](ShapeOperator& o) { return o.DrawCircle(100, 80, 40, kZ, kPen, kBrush, kWidth); }, DM_CIRCLE,
         {100, 80, 40}, true},
        {"ellipse", [](ShapeOperator& o) { return o.DrawEllipse(100, 80, 50, 20, 30, kZ, kPen, kBrush, kWidth); },
         DM_ELLIPSE, {100, 80, 50, 20, 30}, true},
        {"polygon",
         [](ShapeOperator& o) {
             QVector<double> p = flatPolygon();
             return o.DrawPolygon(p, kZ, kPen, kBrush, kWidth);
         },
         DM_POLYGON, flatPolygon(), true},
        {"free line",
         [](ShapeOperator& o) {
             QVector<double> p = flatPolygon();
             return o.DrawAnyLine(p, kZ, kPen, kBrush, kWidth);
         },
         DM_ANYLINE, flatPolygon(), true},
        {"closed free line",
         [](ShapeOperator& o) {
             QVector<double> p = flatPolygon();
             return o.DrawClosedAnyLine(p, kZ, kPen, kBrush, kWidth);
         },
         DM_ANYCLOSELINE, flatPolygon(), true},
        {"annulus",
         [](ShapeOperator& o) {
             return o.DrawAnnular(100, 80, 20, 40, 30, -90, SL_OUTER_TO_INNER, 12, kZ, kPen, kBrush, kWidth);
         },
         DM_ANNULAR, {100, 80, 20, 40, 30, 90, 5, 12, 1}, true},
        {"arc", [](ShapeOperator& o) { return o.DrawArc(100, 80, 40, 30, 120, kZ, kPen, kBrush, kWidth); }, DM_ARC,
         {100, 80, 40, 30, 120}, true},
    };
    return all;
}

} // namespace

class tst_ShapeOperator : public QObject
{
    Q_OBJECT

private slots:
    void startsWithItsOwnLookAndScaleOne();
    void heldLookIsSetAndReadButNotUsedByCreators();
    void updateDataTakesTheScenesScale();
    void eachLayerHasAnOperatorOfItsScene();

    void creatorBuildsItsKind_data();
    void creatorBuildsItsKind();
    void creatorAddsToTheStaticLayerInStaticOverlayMode_data();
    void creatorAddsToTheStaticLayerInStaticOverlayMode();
    void annulusKeepsSearchLineFlagWithNoLines();
    void shapesTakeTheOperatorsScale();

    void imageCreatorPlacesThePictureAtItsOwnSize_data();
    void imageCreatorPlacesThePictureAtItsOwnSize();
    void textCreatorAddsATextInThePensColour_data();
    void textCreatorAddsATextInThePensColour();
    void regionCreatorLiesUnderAllShapesInTheLowBytes_data();
    void regionCreatorLiesUnderAllShapesInTheLowBytes();
};

void tst_ShapeOperator::startsWithItsOwnLookAndScaleOne()
{
    LayerScene s;
    ShapeOperator op(&s.scene);
    QCOMPARE(op.GetPenColor(), QColor(0, 255, 0, 255));
    QCOMPARE(op.GetBrushColor(), QColor(0, 255, 0, 0));
    QCOMPARE(op.GetLineWidth(), 1);
    QCOMPARE(op.scale(), 1.0f);
}

void tst_ShapeOperator::heldLookIsSetAndReadButNotUsedByCreators()
{
    LayerScene s;
    opOf(s)->SetPen(QColor(1, 2, 3, 4), 9);
    opOf(s)->SetBrush(QColor(5, 6, 7, 8));
    QCOMPARE(opOf(s)->GetPenColor(), QColor(1, 2, 3, 4));
    QCOMPARE(opOf(s)->GetLineWidth(), 9);
    QCOMPARE(opOf(s)->GetBrushColor(), QColor(5, 6, 7, 8));
    const long id = opOf(s)->DrawCircle(10, 10, 5, 1, kPen, kBrush, kWidth);
    ODShape* shape = s.active()->shapeById(id);
    QCOMPARE(shape->GetPenColor(), kPen);
    QCOMPARE(shape->GetBrushColor(), kBrush);
    QCOMPARE(shape->GetLineWidth(), float(kWidth));
}

void tst_ShapeOperator::updateDataTakesTheScenesScale()
{
    LayerScene s;
    s.scene.setScale(2.5);
    QCOMPARE(opOf(s)->scale(), 1.0f);
    opOf(s)->UpdateData();
    QCOMPARE(opOf(s)->scale(), 2.5f);
}

void tst_ShapeOperator::eachLayerHasAnOperatorOfItsScene()
{
    LayerScene s;
    QVERIFY(s.active()->shapeOperator());
    QVERIFY(s.fixed()->shapeOperator());
    QVERIFY(s.active()->shapeOperator() != s.fixed()->shapeOperator());
    // The operator of any layer puts its shapes in the scene's active layer.
    const long id = s.fixed()->shapeOperator()->DrawCircle(10, 10, 5, 1, kPen, kBrush, kWidth);
    QVERIFY(s.active()->shapeById(id));
    QVERIFY(!s.fixed()->shapeById(id));
}

void tst_ShapeOperator::creatorBuildsItsKind_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < kinds().size(); ++i)
        QTest::newRow(kinds()[i].name) << i;
}

void tst_ShapeOperator::creatorBuildsItsKind()
{
    QFETCH(int, index);
    const Kind& kind = kinds()[index];
    LayerScene s;
    const long nextId = ODShape::s_ID;
    const QSet<QGraphicsItem*> before = itemSet(&s.scene);

    const long id = kind.create(*opOf(s));

    QCOMPARE(id, nextId);
    QCOMPARE(s.active()->shapes().size(), 1);
    QVERIFY(s.fixed()->shapes().isEmpty());
    ODShape* shape = s.active()->shapes().first();
    QCOMPARE(shape->GetShapeID(), id);
    QCOMPARE(shape->GetDrawMode(), kind.mode);
    KIT_COMPARE_NEAR(shapeParams(shape), kind.params, 1e-4);
    QCOMPARE(shape->GetPenColor(), kPen);
    QCOMPARE(shape->GetBrushColor(), kBrush);
    QCOMPARE(shape->GetLineWidth(), float(kWidth));
    QCOMPARE(shape->shaperLayer(), s.active());
    const QList<QGraphicsItem*> items = itemsAddedSince(&s.scene, before);
    QVERIFY(!items.isEmpty());
    QCOMPARE(lowestZ(items), kind.zSet ? double(kZ) : 0.0);
    // Shown: the items carry the geometry; not selected: no handles.
    QVERIFY(!s.scene.itemsBoundingRect().isEmpty());
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QVERIFY(!shape->isVisiblehandleMark());
}

void tst_ShapeOperator::creatorAddsToTheStaticLayerInStaticOverlayMode_data()
{
    creatorBuildsItsKind_data();
}

void tst_ShapeOperator::creatorAddsToTheStaticLayerInStaticOverlayMode()
{
    QFETCH(int, index);
    LayerScene s;
    s.scene.setIsStaticOverlay(true);
    const long id = kinds()[index].create(*opOf(s));
    s.scene.setIsStaticOverlay(false);
    QVERIFY(s.active()->shapes().isEmpty());
    QCOMPARE(s.fixed()->shapes().size(), 1);
    QCOMPARE(s.fixed()->shapes().first()->GetShapeID(), id);
    QCOMPARE(s.fixed()->shapes().first()->shaperLayer(), s.fixed());
}

void tst_ShapeOperator::annulusKeepsSearchLineFlagWithNoLines()
{
    LayerScene s;
    const long id = opOf(s)->DrawAnnular(100, 80, 20, 40, 30, -90, SL_TOP_TO_BOTTOM, 0, kZ, kPen, kBrush, kWidth);
    auto* annulus = dynamic_cast<ODAnnular*>(s.active()->shapeById(id));
    QVERIFY(annulus);
    QVERIFY(annulus->HaveSearchLine());
    QCOMPARE(annulus->searchCount(), 0);
    QCOMPARE(annulus->sweepAngle(), -90.0);
}

void tst_ShapeOperator::shapesTakeTheOperatorsScale()
{
    LayerScene s;
    s.scene.setScale(0.5);
    const long before = opOf(s)->DrawCircle(10, 10, 5, 1, kPen, kBrush, kWidth);
    opOf(s)->UpdateData();
    const long after = opOf(s)->DrawCircle(10, 10, 5, 1, kPen, kBrush, kWidth);
    QCOMPARE(s.active()->shapeById(before)->GetScale(), 1.0f);
    QCOMPARE(s.active()->shapeById(after)->GetScale(), 0.5f);
}

// Rows for the creators whose content may go to either layer.
void addTargetRows()
{
    QTest::addColumn<bool>("staticMode");
    QTest::newRow("active layer") << false;
    QTest::newRow("static layer in static-overlay mode") << true;
}

void tst_ShapeOperator::imageCreatorPlacesThePictureAtItsOwnSize_data()
{
    addTargetRows();
}

void tst_ShapeOperator::imageCreatorPlacesThePictureAtItsOwnSize()
{
    QFETCH(bool, staticMode);
    // The shape keeps a pointer to the picture, which outlives it.
    VorImage picture(cv::Mat(10, 20, CV_8UC1, cv::Scalar(90)));
    LayerScene s;
    VorPoint topLeft(5.5, 6);
    const long nextId = ODShape::s_ID;
    s.scene.setIsStaticOverlay(staticMode);
    const long id = opOf(s)->DrawImage(picture, topLeft, kZ, kPen, kBrush, kWidth);
    s.scene.setIsStaticOverlay(false);

    QCOMPARE(id, nextId);
    ShaperLayer* target = staticMode ? s.fixed() : s.active();
    ShaperLayer* other = staticMode ? s.active() : s.fixed();
    QVERIFY(other->shapes().isEmpty());
    QCOMPARE(target->shapes().size(), 1);
    auto* shape = dynamic_cast<ODImage*>(target->shapes().first());
    QVERIFY(shape);
    QCOMPARE(shape->GetShapeID(), id);
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    QVERIFY(shape->GetParam(&x1, &y1, &x2, &y2));
    KIT_COMPARE_NEAR(Params({x1, y1, x2, y2}), Params({5.5, 6, 25.5, 16}), 1e-6);
    QCOMPARE(shape->image(), &picture);
    QCOMPARE(shape->GetPenColor(), kPen);
    QCOMPARE(shape->GetBrushColor(), kBrush);
    QCOMPARE(shape->GetLineWidth(), float(kWidth));
    QCOMPARE(shape->pixmapItem()->zValue(), double(kZ));
    QVERIFY(shape->pixmapItem()->isVisible());
    QVERIFY(target->selectedShapes().isEmpty());
}

void tst_ShapeOperator::textCreatorAddsATextInThePensColour_data()
{
    addTargetRows();
}

void tst_ShapeOperator::textCreatorAddsATextInThePensColour()
{
    QFETCH(bool, staticMode);
    LayerScene s;
    s.scene.setScale(2.0);
    opOf(s)->UpdateData();
    QFont font("Serif");
    font.setPointSize(15);
    s.scene.setIsStaticOverlay(staticMode);
    const long id = opOf(s)->DrawText(12, 34, "lot 7", font, kZ, kPen, kBrush, kWidth);
    s.scene.setIsStaticOverlay(false);

    ShaperLayer* target = staticMode ? s.fixed() : s.active();
    ShaperLayer* other = staticMode ? s.active() : s.fixed();
    QVERIFY(other->texts().isEmpty());
    QVERIFY(target->shapes().isEmpty());
    QCOMPARE(target->texts().size(), 1);
    ODText* text = target->texts().first();
    QCOMPARE(text->GetID(), id);
    QCOMPARE(text->Text(), QString("lot 7"));
    QCOMPARE(text->Pos(), QPointF(12, 34));
    QCOMPARE(text->GetColor(), kPen);
    QCOMPARE(text->GetFont().family(), QString("Serif"));
    QCOMPARE(text->GetFont().pointSize(), 15);
    QCOMPARE(text->GetScale(), 2.0f);
    QCOMPARE(text->textItem()->zValue(), double(kZ));
    QVERIFY(text->textItem()->isVisible());
    QVERIFY(!text->isOverlay());
    if (staticMode)
        target->ClearAllText();
}

void tst_ShapeOperator::regionCreatorLiesUnderAllShapesInTheLowBytes_data()
{
    addTargetRows();
}

// The channels are cut to their low bytes: 256 + 10 is 10, -1 is 255.
void tst_ShapeOperator::regionCreatorLiesUnderAllShapesInTheLowBytes()
{
    QFETCH(bool, staticMode);
    LayerScene s;
    VorImage mask(cv::Mat(4, 6, CV_8UC1, cv::Scalar(0)));
    mask.Mat().at<uchar>(1, 2) = 255;
    s.scene.setIsStaticOverlay(staticMode);
    const long id = opOf(s)->DrawRegion(mask, 77, 256 + 10, 20, -1, 512 + 128);
    s.scene.setIsStaticOverlay(false);

    ShaperLayer* target = staticMode ? s.fixed() : s.active();
    ShaperLayer* other = staticMode ? s.active() : s.fixed();
    QVERIFY(!other->region());
    QVERIFY(target->shapes().isEmpty());
    ODItemRegion* region = target->region();
    QVERIFY(region);
    QCOMPARE(region->GetID(), id);
    QCOMPARE(region->item()->zValue(), double(ShapeOperator::s_regionZValue));
    QCOMPARE(region->item()->zValue(), -1.0);
    QVERIFY(region->isVisible());
    const QImage shown = region->item()->pixmap().toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(shown.size(), QSize(6, 4));
    QCOMPARE(QColor::fromRgba(region->regionImage().pixel(2, 1)), QColor(10, 20, 255, 128));
    QCOMPARE(qAlpha(shown.pixel(0, 0)), 0);
    QVERIFY(qAlpha(shown.pixel(2, 1)) > 0);
    if (staticMode)
        target->ClearRegion();
}

QTEST_MAIN(tst_ShapeOperator)
#include "tst_shapeoperator.moc"
