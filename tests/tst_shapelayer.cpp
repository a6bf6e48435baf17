// The shape layer: its list of shapes and of selected shapes, repaint calls,
// and the hit test that decides which shapes lie under a point.

#include "testkit.h"

#include "Rect1HandleItem.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odrect1.h"
#include "odselecttool.h"
#include "odshapetoolmanage.h"

#include <QGraphicsRectItem>
#include <QSignalSpy>
#include <QTest>

using namespace Kit;

namespace {

// A scene with its layers and no view, as the layer sees it.
class LayerScene
{
public:
    LayerScene() { scene.CreateLayers(); }
    // The scene deletes the active layer only: the static layer's shapes go here.
    ~LayerScene()
    {
        fixed()->clearSelectedShape();
        fixed()->clearShape();
    }
    ShaperLayer* active() const { return scene.GetActiveLayer(); }
    ShaperLayer* fixed() const { return scene.GetStaticActiveLayer(); }
    ImageCtrlScene scene;
};

quintptr address(const ODShape* shape)
{
    return reinterpret_cast<quintptr>(shape);
}

QList<ODShape*> listOf(std::initializer_list<ODShape*> shapes)
{
    return QList<ODShape*>(shapes);
}

// A layer that notes which of its repaint steps run, in order.
class TracingLayer : public ShaperLayer
{
public:
    explicit TracingLayer(ImageCtrlScene* scene)
        : ShaperLayer(scene, 0)
    {
    }
    void ShowShapePath() override
    {
        calls << "shapes";
        ShaperLayer::ShowShapePath();
    }
    void ShowHandlePath() override
    {
        calls << "handles";
        ShaperLayer::ShowHandlePath();
    }
    QStringList calls;
};

// Two rectangles, a at (0, 0) and b at (20, 20), both 10 by 10, shown once;
// then their items are set by hand behind the shapes' backs, a to (1, 1, 1, 1)
// and b to (2, 2, 2, 2). A walk that visits a shape puts its geometry back.
void showPairThenSetItemsByHand(LayerScene& s, ODRect1*& a, ODRect1*& b)
{
    a = addRect(s.active(), 0, 0, 10, 10);
    b = addRect(s.active(), 20, 20, 30, 30);
    s.active()->ShowShapePath();
    a->rectItem()->setRect(QRectF(1, 1, 1, 1));
    b->rectItem()->setRect(QRectF(2, 2, 2, 2));
}

} // namespace

class tst_ShapeLayer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newLayerIsEmptyAndAllowsSelectAndMove();
    void addShapeCopiesTheSceneOverlayFlag();
    void addShapeTellsTheShapeItsLayerAndAppends();
    void addShapeNeitherSelectsNorRepaints();
    void addSelectedShapeMakesItTheSelectToolsCurrentShape();
    void addSelectedShapeKeepsDuplicates();
    void moveSelectedShapeMovesEachEntryWithoutRepaint();
    void removeShapeByPointerDeletesIt();
    void removeShapeRefusesNullAndStrangers();
    void removeShapeLeavesTheSelectedListAlone();
    void removeShapeByIdTakesTheFirstMatch();
    void removeShapeWithUnknownIdChangesNothing();
    void removeSelectedShapeKeepsTheShape();
    void removeSelectedShapeByIdAndUnknownId();
    void clearShapeDeletesAllButLeavesSelectedPointers();
    void clearSelectedShapeHidesHandlesAndKeepsShapes();
    void clearSelectedShapeToleratesNullEntries();
    void clearCurrentShapeEmptiesOnlyTheToolsCurrentShape();
    void updateGivesEveryShapeTheSceneScale();
    void updateRepaintsTheWholeScene();
    void showShapePathShowsVisibleAndHidesHiddenShapes();
    void showWalkLeavesShapesThatDidNotChangeAlone();
    void showWalkShowsEveryChangeOfAShape_data();
    void showWalkShowsEveryChangeOfAShape();
    void showWalkShowsTheShapeAToolKeeps();
    void showWalkAfterTheWholeListWasHandedOutVisitsEveryShape();
    void showHandlePathWorksOnSelectedShapesOnly();
    void showWithoutHandlesLeavesHandlesAlone();
    void showRunsShapeThenHandleStepThroughTheLayer();
    void emptyLayerHasNothingAtAnyPoint();
    void bodiesAreListedOldestFirst();
    void bodyListIgnoresZOrder();
    void handleOfYoungerShapeOverTwoOlderBodiesWins();
    void earliestHandleWinsAmongHandles();
    void hiddenShapeIsNeverListedButCanBeFoundSingly();
    void shapeAtPointTakesTheFirstShapeHitByHandleOrBody();
    void enableSelectShapeDropsTheCurrentSelection_data();
    void enableSelectShapeDropsTheCurrentSelection();
    void enableMoveShapeOnlySetsTheFlag();
};

void tst_ShapeLayer::init()
{
    forgetCurrentShape();
}

void tst_ShapeLayer::cleanup()
{
    forgetCurrentShape();
}

void tst_ShapeLayer::newLayerIsEmptyAndAllowsSelectAndMove()
{
    LayerScene s;
    QVERIFY(s.active()->shapes().isEmpty());
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QCOMPARE(s.active()->isEnableSelectShape(), true);
    QCOMPARE(s.active()->isEnableMoveShape(), true);
    QVERIFY(s.active()->scene() == &s.scene);
}

void tst_ShapeLayer::addShapeCopiesTheSceneOverlayFlag()
{
    LayerScene s;
    s.scene.setIsOverlay(true);
    auto* overlay = new ODRect1(&s.scene);
    s.active()->addShape(overlay);
    QCOMPARE(overlay->isOverlay(), true);

    // The scene's flag wins over what the shape held before.
    s.scene.setIsOverlay(false);
    auto* roi = new ODRect1(&s.scene);
    roi->setIsOverlay(true);
    s.active()->addShape(roi);
    QCOMPARE(roi->isOverlay(), false);
    // A later change of the scene's flag does not reach shapes already added.
    s.scene.setIsOverlay(true);
    QCOMPARE(roi->isOverlay(), false);
    QCOMPARE(overlay->isOverlay(), true);
}

void tst_ShapeLayer::addShapeTellsTheShapeItsLayerAndAppends()
{
    LayerScene s;
    auto* a = new ODRect1(&s.scene);
    auto* b = new ODRect1(&s.scene);
    auto* c = new ODRect1(&s.scene);
    QVERIFY(a->shaperLayer() == nullptr);
    s.active()->addShape(a);
    s.fixed()->addShape(b);
    s.active()->addShape(c);
    QVERIFY(a->shaperLayer() == s.active());
    QVERIFY(b->shaperLayer() == s.fixed());
    QVERIFY(c->shaperLayer() == s.active());
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, c}));
    QCOMPARE(s.fixed()->shapes(), (QVector<ODShape*>{b}));
}

void tst_ShapeLayer::addShapeNeitherSelectsNorRepaints()
{
    LayerScene s;
    auto* a = new ODRect1(&s.scene);
    a->SetRect(1, 2, 30, 40);
    const qreal z = a->rectItem()->zValue();
    s.active()->addShape(a);
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QVERIFY(selectTool()->currentShape() == nullptr);
    // Not shown: the item keeps its empty rectangle and its z value.
    QVERIFY(a->rectItem()->rect().isEmpty());
    QCOMPARE(a->rectItem()->zValue(), z);
}

void tst_ShapeLayer::addSelectedShapeMakesItTheSelectToolsCurrentShape()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 10, 10, 50, 40);
    ODRect1* b = addRect(s.active(), 60, 10, 90, 40);
    ODSelectTool* tool = selectTool();
    QVERIFY(tool);

    s.active()->addSelectedShape(a);
    QVERIFY(tool->currentShape() == a);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a}));
    s.active()->addSelectedShape(b);
    QVERIFY(tool->currentShape() == b);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a, b}));
    // Selecting does not show handles.
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
}

void tst_ShapeLayer::addSelectedShapeKeepsDuplicates()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 10, 10, 50, 40);
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(a);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a, a}));
    QCOMPARE(s.active()->shapes().size(), 1);
}

void tst_ShapeLayer::moveSelectedShapeMovesEachEntryWithoutRepaint()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    ODRect1* c = addRect(s.active(), 40, 40, 50, 50);
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(c);
    s.active()->addSelectedShape(a);
    const QRectF shownA = a->rectItem()->rect();

    s.active()->moveSelectedShape(QPointF(5, 1));
    // a is listed twice and moves twice; b is not selected.
    QCOMPARE(paramsOf(a), (QVector<double>{10, 2, 20, 12}));
    QCOMPARE(paramsOf(b), (QVector<double>{20, 20, 30, 30}));
    QCOMPARE(paramsOf(c), (QVector<double>{45, 41, 55, 51}));
    QCOMPARE(a->rectItem()->rect(), shownA);
}

void tst_ShapeLayer::removeShapeByPointerDeletesIt()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    const int items = s.scene.items().size();
    QGraphicsRectItem* bItem = b->rectItem();
    QVERIFY(s.scene.items().contains(bItem));

    QCOMPARE(s.active()->removeShape(b), true);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a}));
    // The shape's three items left the scene with it.
    QCOMPARE(s.scene.items().size(), items - 3);
    QVERIFY(!s.scene.items().contains(bItem));
}

void tst_ShapeLayer::removeShapeRefusesNullAndStrangers()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* other = addRect(s.fixed(), 20, 20, 30, 30);
    const int items = s.scene.items().size();

    QCOMPARE(s.active()->removeShape(static_cast<ODShape*>(nullptr)), false);
    QCOMPARE(s.active()->removeShape(other), false);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a}));
    QCOMPARE(s.fixed()->shapes(), (QVector<ODShape*>{other}));
    QCOMPARE(s.scene.items().size(), items);
    QCOMPARE(paramsOf(other), (QVector<double>{20, 20, 30, 30}));
}

void tst_ShapeLayer::removeShapeLeavesTheSelectedListAlone()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(b);
    const quintptr gone = address(b);

    QCOMPARE(s.active()->removeShape(b), true);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a}));
    // The selected list still names the deleted shape; only its address is
    // compared here.
    QCOMPARE(s.active()->selectedShapes().size(), 2);
    QCOMPARE(address(s.active()->selectedShapes().at(0)), address(a));
    QCOMPARE(address(s.active()->selectedShapes().at(1)), gone);

    // The callers' way: drop the stale entry by address.
    QVERIFY(s.active()->removeSelectedShape(s.active()->selectedShapes().at(1)));
    forgetCurrentShape();
}

void tst_ShapeLayer::removeShapeByIdTakesTheFirstMatch()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    ODRect1* c = addRect(s.active(), 40, 40, 50, 50);
    const long idB = b->GetShapeID();
    const int items = s.scene.items().size();

    QCOMPARE(s.active()->removeShape(idB), true);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, c}));
    QCOMPARE(s.scene.items().size(), items - 3);
    QCOMPARE(s.active()->removeShape(idB), false);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, c}));
    QCOMPARE(s.active()->removeShape(a->GetShapeID()), true);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{c}));
}

void tst_ShapeLayer::removeShapeWithUnknownIdChangesNothing()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    ODRect1* elsewhere = addRect(s.fixed(), 40, 40, 50, 50);
    s.active()->addSelectedShape(b);
    const int items = s.scene.items().size();

    QCOMPARE(s.active()->removeShape(ODShape::s_ID + 100), false);
    QCOMPARE(s.active()->removeShape(-1L), false);
    // An id of another layer is unknown to this one.
    QCOMPARE(s.active()->removeShape(elsewhere->GetShapeID()), false);

    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, b}));
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{b}));
    QCOMPARE(s.fixed()->shapes(), (QVector<ODShape*>{elsewhere}));
    QCOMPARE(s.scene.items().size(), items);
    QVERIFY(selectTool()->currentShape() == b);
}

void tst_ShapeLayer::removeSelectedShapeKeepsTheShape()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(b);
    s.active()->addSelectedShape(a);
    const int items = s.scene.items().size();

    QCOMPARE(s.active()->removeSelectedShape(static_cast<ODShape*>(nullptr)), false);
    QCOMPARE(s.active()->removeSelectedShape(a), true);
    // The first entry goes; the second a stays.
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{b, a}));
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, b}));
    QCOMPARE(s.scene.items().size(), items);
    QCOMPARE(paramsOf(a), (QVector<double>{0, 0, 10, 10}));

    ODRect1* unselected = addRect(s.active(), 40, 40, 50, 50);
    QCOMPARE(s.active()->removeSelectedShape(unselected), false);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{b, a}));
}

void tst_ShapeLayer::removeSelectedShapeByIdAndUnknownId()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(b);

    QCOMPARE(s.active()->removeSelectedShape(b->GetShapeID()), true);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QCOMPARE(s.active()->removeSelectedShape(b->GetShapeID()), false);
    QCOMPARE(s.active()->removeSelectedShape(ODShape::s_ID + 5), false);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, b}));
}

void tst_ShapeLayer::clearShapeDeletesAllButLeavesSelectedPointers()
{
    LayerScene s;
    const int itemsBefore = s.scene.items().size();
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    addRect(s.fixed(), 40, 40, 50, 50);
    s.active()->addSelectedShape(b);
    s.active()->addSelectedShape(a);
    const quintptr oldA = address(a);
    const quintptr oldB = address(b);

    s.active()->clearShape();
    QVERIFY(s.active()->shapes().isEmpty());
    QCOMPARE(s.scene.items().size(), itemsBefore + 3);
    QCOMPARE(s.fixed()->shapes().size(), 1);

    // Only the addresses are looked at: the shapes are gone.
    QCOMPARE(s.active()->selectedShapes().size(), 2);
    QCOMPARE(address(s.active()->selectedShapes().at(0)), oldB);
    QCOMPARE(address(s.active()->selectedShapes().at(1)), oldA);

    // Drop the stale entries by address before the layer goes.
    while (!s.active()->selectedShapes().isEmpty())
        s.active()->removeSelectedShape(s.active()->selectedShapes().first());
    forgetCurrentShape();
}

void tst_ShapeLayer::clearSelectedShapeHidesHandlesAndKeepsShapes()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    ODRect1* c = addRect(s.active(), 40, 40, 50, 50);
    a->ShowHandle();
    b->ShowHandle();
    c->ShowHandle();
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(b);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);

    s.active()->clearSelectedShape();
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
    QVERIFY(b->rect1HandleItem()->handleMap().isEmpty());
    // Not selected, not touched.
    QCOMPARE(c->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, b, c}));
    // The layer's lists only: the tool keeps its current shape.
    QVERIFY(selectTool()->currentShape() == b);
}

void tst_ShapeLayer::clearSelectedShapeToleratesNullEntries()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    a->ShowHandle();
    s.active()->addSelectedShape(nullptr);
    s.active()->addSelectedShape(a);
    QCOMPARE(s.active()->selectedShapes().size(), 2);
    s.active()->clearSelectedShape();
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
}

void tst_ShapeLayer::clearCurrentShapeEmptiesOnlyTheToolsCurrentShape()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 10, 10, 50, 50);
    // Make the tool's select mode non-zero: a press on the body of a.
    SceneMouse press(QEvent::GraphicsSceneMousePress, QPointF(30, 30));
    selectTool()->mousePressEvent(&s.scene, press.get(), nullptr);
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectMoveBody);
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedBody);

    s.active()->clearCurrentShape();
    QVERIFY(selectTool()->currentShape() == nullptr);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a}));
}

void tst_ShapeLayer::updateGivesEveryShapeTheSceneScale()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    ODRect1* elsewhere = addRect(s.fixed(), 40, 40, 50, 50);
    s.active()->addSelectedShape(a);
    s.scene.setScale(4.0);
    s.active()->Update();
    QCOMPARE(a->GetScale(), 4.0f);
    QCOMPARE(b->GetScale(), 4.0f);
    QCOMPARE(elsewhere->GetScale(), 1.0f);

    s.scene.setScale(0.3);
    s.active()->Update();
    QCOMPARE(a->GetScale(), float(0.3));
    QCOMPARE(b->GetScale(), float(0.3));
    // Hidden shapes take the scale as well.
    b->setVisible(false);
    s.scene.setScale(2.5);
    s.active()->Update();
    QCOMPARE(b->GetScale(), 2.5f);
}

void tst_ShapeLayer::updateRepaintsTheWholeScene()
{
    LayerScene s;
    s.scene.setSceneRect(0, 0, 40, 30);
    addRect(s.active(), 0, 0, 10, 10);
    QApplication::processEvents();
    QSignalSpy changed(&s.scene, &QGraphicsScene::changed);
    QApplication::processEvents();
    changed.clear();

    s.active()->Update();
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<QList<QRectF>>(), QList<QRectF>{QRectF(0, 0, 40, 30)});
}

void tst_ShapeLayer::showShapePathShowsVisibleAndHidesHiddenShapes()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    // New reference data that is not shown yet, given with left above right.
    a->SetRect(15, 12, 5, 2);
    b->setVisible(false);
    QVERIFY(!b->rectItem()->rect().isEmpty());

    s.active()->ShowShapePath();
    QCOMPARE(a->rectItem()->rect(), QRectF(5, 2, 10, 10));
    QVERIFY(b->rectItem()->rect().isEmpty());
    // Handles are not part of this step.
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());

    b->setVisible(true);
    s.active()->ShowShapePath();
    QCOMPARE(b->rectItem()->rect(), QRectF(20, 20, 10, 10));
}

// An item set by hand, behind its shape's back, shows that the walk did not
// visit the shape: nothing of it changed, so showing it would set the same.
void tst_ShapeLayer::showWalkLeavesShapesThatDidNotChangeAlone()
{
    LayerScene s;
    ODRect1* a = nullptr;
    ODRect1* b = nullptr;
    showPairThenSetItemsByHand(s, a, b);
    b->SetRect(20, 20, 40, 40);

    s.active()->ShowShapePath();
    QCOMPARE(a->rectItem()->rect(), QRectF(1, 1, 1, 1));
    QCOMPARE(b->rectItem()->rect(), QRectF(20, 20, 20, 20));
}

void tst_ShapeLayer::showWalkShowsEveryChangeOfAShape_data()
{
    QTest::addColumn<int>("change");
    QTest::addColumn<QRectF>("shownRect");
    QTest::addColumn<QColor>("shownPen");
    QTest::addColumn<int>("shownWidth");
    const QRectF same(20, 20, 10, 10);
    QTest::newRow("new reference by SetRect") << 0 << QRectF(20, 20, 30, 5) << QColor(Qt::red) << 1;
    QTest::newRow("body moved") << 1 << QRectF(25, 17, 10, 10) << QColor(Qt::red) << 1;
    QTest::newRow("corner handle moved") << 2 << QRectF(12, 20, 18, 10) << QColor(Qt::red) << 1;
    QTest::newRow("pen colour") << 3 << same << QColor(Qt::green) << 1;
    QTest::newRow("line width") << 4 << same << QColor(Qt::red) << 3;
    QTest::newRow("shown again after hiding") << 5 << same << QColor(Qt::red) << 1;
    QTest::newRow("handed out by id") << 6 << QRectF(0, 0, 10, 10) << QColor(Qt::red) << 1;
}

// Every way a shape changes reaches the screen at the next walk.
void tst_ShapeLayer::showWalkShowsEveryChangeOfAShape()
{
    QFETCH(int, change);
    QFETCH(QRectF, shownRect);
    QFETCH(QColor, shownPen);
    QFETCH(int, shownWidth);
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    b->SetPenColor(Qt::red);
    s.active()->ShowShapePath();
    a->rectItem()->setRect(QRectF(1, 1, 1, 1));
    switch (change) {
    case 0: b->SetRect(20, 20, 50, 25); break;
    case 1: b->MoveShape(QPointF(5, -3)); break;
    case 2: b->MoveHandleTo(1, QPointF(12, 20)); break;
    case 3: b->SetPenColor(Qt::green); break;
    case 4: b->SetLineWidth(3.0f); break;
    case 5:
        b->setVisible(false);
        s.active()->ShowShapePath();
        QVERIFY(b->rectItem()->rect().isEmpty());
        b->setVisible(true);
        break;
    default:
        b->rectItem()->setRect(QRectF(2, 2, 2, 2));
        QCOMPARE(s.active()->shapeById(a->GetShapeID()), static_cast<ODShape*>(a));
        break;
    }
    s.active()->ShowShapePath();
    QCOMPARE(change == 6 ? a->rectItem()->rect() : b->rectItem()->rect(), shownRect);
    QCOMPARE(b->rectItem()->pen().color(), shownPen);
    QCOMPARE(b->rectItem()->pen().width(), shownWidth);
    if (change != 6)
        QCOMPARE(a->rectItem()->rect(), QRectF(1, 1, 1, 1));
}

// The select tool's current shape is changed by the tool between walks.
void tst_ShapeLayer::showWalkShowsTheShapeAToolKeeps()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    s.active()->ShowShapePath();
    ODSelectTool* tool = ODShapeToolManage::GetODShapeToolManage()->selectTool();
    tool->setCurrentShape(a);
    a->rectItem()->setRect(QRectF(1, 1, 1, 1));
    s.active()->ShowShapePath();
    QCOMPARE(a->rectItem()->rect(), QRectF(0, 0, 10, 10));
    tool->clearCurrentShape();
}

void tst_ShapeLayer::showWalkAfterTheWholeListWasHandedOutVisitsEveryShape()
{
    LayerScene s;
    ODRect1* a = nullptr;
    ODRect1* b = nullptr;
    showPairThenSetItemsByHand(s, a, b);
    QCOMPARE(s.active()->shapes().size(), 2);
    s.active()->ShowShapePath();
    QCOMPARE(a->rectItem()->rect(), QRectF(0, 0, 10, 10));
    QCOMPARE(b->rectItem()->rect(), QRectF(20, 20, 10, 10));
    // Once shown, they are left alone again.
    a->rectItem()->setRect(QRectF(1, 1, 1, 1));
    s.active()->ShowShapePath();
    QCOMPARE(a->rectItem()->rect(), QRectF(1, 1, 1, 1));
}

void tst_ShapeLayer::showHandlePathWorksOnSelectedShapesOnly()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    ODRect1* b = addRect(s.active(), 20, 20, 30, 30);
    ODRect1* c = addRect(s.active(), 40, 40, 50, 50);
    b->ShowHandle();
    b->setVisible(false);
    s.active()->addSelectedShape(a);
    s.active()->addSelectedShape(b);
    // New reference data for a: the handle step does not reload the shape.
    a->SetRect(100, 100, 120, 120);

    s.active()->ShowHandlePath();
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(a->isVisiblehandleMark(), true);
    QCOMPARE(a->handles().value(0), QRectF(-3, -3, 6, 6));
    QCOMPARE(a->rectItem()->rect(), QRectF(0, 0, 10, 10));
    // Hidden and selected: handles hidden.
    QVERIFY(b->rect1HandleItem()->handleMap().isEmpty());
    // Not selected: not shown.
    QVERIFY(c->rect1HandleItem()->handleMap().isEmpty());
    QCOMPARE(c->isVisiblehandleMark(), false);
}

void tst_ShapeLayer::showWithoutHandlesLeavesHandlesAlone()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 10, 10);
    s.active()->addSelectedShape(a);
    a->SetRect(2, 3, 12, 13);

    s.active()->Show(false);
    QCOMPARE(a->rectItem()->rect(), QRectF(2, 3, 10, 10));
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());

    s.active()->Show(true);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(a->rect1HandleItem()->handleMap().value(0), QRectF(-1, 0, 6, 6));
}

void tst_ShapeLayer::showRunsShapeThenHandleStepThroughTheLayer()
{
    ImageCtrlScene scene;
    TracingLayer layer(&scene);
    auto* a = new ODRect1(&scene);
    a->SetRect(0, 0, 10, 10);
    layer.addShape(a);
    layer.addSelectedShape(a);

    layer.Show(true);
    QCOMPARE(layer.calls, (QStringList{"shapes", "handles"}));
    layer.calls.clear();
    layer.Show(false);
    QCOMPARE(layer.calls, (QStringList{"shapes"}));
    layer.clearSelectedShape();
    forgetCurrentShape();
}

void tst_ShapeLayer::emptyLayerHasNothingAtAnyPoint()
{
    LayerScene s;
    QVERIFY(s.active()->GetShapeListAtPoint(QPointF(5, 5)).isEmpty());
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(5, 5)) == nullptr);
    QVERIFY(s.active()->GetShapeListAtPoint(QPointF(-5, 1e6)).isEmpty());
    // A shape elsewhere does not change that.
    addRect(s.active(), 100, 100, 120, 120);
    QVERIFY(s.active()->GetShapeListAtPoint(QPointF(5, 5)).isEmpty());
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(5, 5)) == nullptr);
}

void tst_ShapeLayer::bodiesAreListedOldestFirst()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 100, 100);
    ODRect1* b = addRect(s.active(), 10, 10, 90, 90);
    ODRect1* c = addRect(s.active(), 50, 50, 80, 80);
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(20, 20)), listOf({a, b}));
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(60, 60)), listOf({a, b, c}));
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(95, 5)), listOf({a}));
    // The half pen width counts as body.
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(100.5, 20)), listOf({a}));
    QVERIFY(s.active()->GetShapeListAtPoint(QPointF(100.6, 20)).isEmpty());
}

void tst_ShapeLayer::bodyListIgnoresZOrder()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 100, 100);
    ODRect1* b = addRect(s.active(), 10, 10, 90, 90);
    a->setZValue(50);
    b->setZValue(-50);
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(20, 20)), listOf({a, b}));
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(20, 20)) == a);
}

void tst_ShapeLayer::handleOfYoungerShapeOverTwoOlderBodiesWins()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 100, 100);
    ODRect1* b = addRect(s.active(), 10, 10, 90, 90);
    ODRect1* c = addRect(s.active(), 50, 50, 80, 80);
    Q_UNUSED(a);
    Q_UNUSED(b);
    // (50, 50) is the top left handle of c, over the bodies of a and b.
    QCOMPARE(c->HitTest(QPointF(50, 50), true), 1);
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(50, 50)), listOf({c}));
    // Anywhere on the handle square.
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(47, 53)), listOf({c}));
    // Its right centre handle likewise.
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(80, 65)), listOf({c}));
}

void tst_ShapeLayer::earliestHandleWinsAmongHandles()
{
    LayerScene s;
    ODRect1* big = addRect(s.active(), 0, 0, 40, 40);
    ODRect1* small = addRect(s.active(), 0, 0, 20, 20);
    Q_UNUSED(small);
    // Both have their top left handle at (0, 0).
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(0, 0)), listOf({big}));
    // A body found before a later handle is dropped.
    ODRect1* body = addRect(s.fixed(), 0, 0, 100, 100);
    ODRect1* handle = addRect(s.fixed(), 30, 30, 60, 60);
    QCOMPARE(s.fixed()->GetShapeListAtPoint(QPointF(60, 60)), listOf({handle}));
    QCOMPARE(s.fixed()->GetShapeListAtPoint(QPointF(45, 45)), listOf({body, handle}));
}

void tst_ShapeLayer::hiddenShapeIsNeverListedButCanBeFoundSingly()
{
    LayerScene s;
    ODRect1* hidden = addRect(s.active(), 30, 30, 60, 60);
    ODRect1* visible = addRect(s.active(), 0, 0, 100, 100);
    hidden->setVisible(false);

    // On the hidden shape's handle: only the visible body below is listed.
    QCOMPARE(hidden->HitTest(QPointF(30, 30), true), 1);
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(30, 30)), listOf({visible}));
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(45, 45)), listOf({visible}));
    // The single form does not look at visibility.
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(30, 30)) == hidden);
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(45, 45)) == hidden);

    // Alone under the point: the list is empty.
    ODRect1* alone = addRect(s.fixed(), 200, 200, 220, 220);
    alone->setVisible(false);
    QVERIFY(s.fixed()->GetShapeListAtPoint(QPointF(200, 200)).isEmpty());
    QVERIFY(s.fixed()->GetShapeListAtPoint(QPointF(210, 210)).isEmpty());
    QVERIFY(s.fixed()->GetShapeAtPoint(QPointF(200, 200)) == alone);
}

void tst_ShapeLayer::shapeAtPointTakesTheFirstShapeHitByHandleOrBody()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 0, 0, 100, 100);
    ODRect1* c = addRect(s.active(), 50, 50, 80, 80);
    // The list prefers c's handle; the single form takes the first shape.
    QCOMPARE(s.active()->GetShapeListAtPoint(QPointF(50, 50)), listOf({c}));
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(50, 50)) == a);
    // Handle outside every body.
    ODRect1* d = addRect(s.active(), 200, 200, 240, 240);
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(197.5, 197.5)) == d);
    QVERIFY(s.active()->GetShapeAtPoint(QPointF(300, 300)) == nullptr);
}

void tst_ShapeLayer::enableSelectShapeDropsTheCurrentSelection_data()
{
    QTest::addColumn<bool>("enable");
    QTest::newRow("enable") << true;
    QTest::newRow("disable") << false;
}

void tst_ShapeLayer::enableSelectShapeDropsTheCurrentSelection()
{
    QFETCH(bool, enable);
    LayerScene s;
    ODRect1* a = addRect(s.active(), 10, 10, 50, 50);
    ODRect1* b = addRect(s.active(), 60, 10, 90, 50);
    // A press on a's handle selects a and arms a handle drag.
    a->ShowHandle();
    SceneMouse press(QEvent::GraphicsSceneMousePress, QPointF(10, 10));
    selectTool()->mousePressEvent(&s.scene, press.get(), nullptr);
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectDragHandle);
    s.active()->addSelectedShape(b);
    b->ShowHandle();
    QVERIFY(!s.active()->selectedShapes().isEmpty());

    s.active()->enableSelectShape(enable);
    QCOMPARE(s.active()->isEnableSelectShape(), enable);
    QVERIFY(selectTool()->currentShape() == nullptr);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    QVERIFY(s.active()->selectedShapes().isEmpty());
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
    QVERIFY(b->rect1HandleItem()->handleMap().isEmpty());
    QCOMPARE(s.active()->shapes(), (QVector<ODShape*>{a, b}));
}

void tst_ShapeLayer::enableMoveShapeOnlySetsTheFlag()
{
    LayerScene s;
    ODRect1* a = addRect(s.active(), 10, 10, 50, 50);
    a->ShowHandle();
    s.active()->addSelectedShape(a);

    s.active()->enableMoveShape(false);
    QCOMPARE(s.active()->isEnableMoveShape(), false);
    QCOMPARE(s.active()->isEnableSelectShape(), true);
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(s.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    // The other layer keeps its own flag.
    QCOMPARE(s.fixed()->isEnableMoveShape(), true);

    s.active()->enableMoveShape(true);
    QCOMPARE(s.active()->isEnableMoveShape(), true);
    QVERIFY(selectTool()->currentShape() == a);
}

QTEST_MAIN(tst_ShapeLayer)
#include "tst_shapelayer.moc"
