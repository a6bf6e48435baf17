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
#include "odline.h"
#include "odpoint.h"
#include "odpolygon.h"
#include "odrect1.h"
#include "odrect2.h"
#include "shapeoperator.h"

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

QTEST_MAIN(tst_ShapeOperator)
#include "tst_shapeoperator.moc"
