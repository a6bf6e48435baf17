#include "odrect1.h"
#include "odshape.h"
#include "Rect1HandleItem.h"
#include "ShapeLayer.h"

#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QSet>
#include <QtTest>

#include <memory>

namespace {

// A shape with the base behaviour wherever the base has one: it overrides only
// the operations every shape must define, counts how often its handles are
// rebuilt, and can be lent a plain handle item that the test keeps owning.
class ProbeShape : public ODShape
{
public:
    explicit ProbeShape(QGraphicsScene* scene, DrawMode mode = DM_POLYGON)
        : ODShape(scene, mode)
    {
    }
    ~ProbeShape() override
    {
        // The lent item belongs to the test.
        m_handleItem = nullptr;
    }

    void lendHandleItem(QGraphicsPathItem* item) { m_handleItem = item; }
    void setHandleCentres(const QVector<QPointF>& centres) { m_centres = centres; }

    void UpdateHandles() override
    {
        ++updateHandlesCalls;
        m_handles.clear();
        for (int key = 0; key < m_centres.size(); ++key)
            m_handles.insert(key, MakeElpHandle(m_centres[key]));
    }
    void ShowShape() override {}
    void HideShape() override {}
    void MoveHandleTo(int, const QPointF&) override {}
    void MoveShape(const QPointF&) override {}
    void UpdateOrgData(int) override {}
    void UpdateCurData() override {}

    const QPen& workingPen() const { return m_pen; }
    const QBrush& keptBrush() const { return m_brush; }
    QGraphicsPathItem* rawHandleItem() const { return m_handleItem; }

    int updateHandlesCalls = 0;

private:
    QVector<QPointF> m_centres;
};

QSet<QGraphicsItem*> itemSet(QGraphicsScene& scene)
{
    const QList<QGraphicsItem*> items = scene.items();
    return QSet<QGraphicsItem*>(items.begin(), items.end());
}

} // namespace

using Kit::pathOfRects;

// The shape base: process-wide ids, the defaults of a new shape, the size of
// handles at different view scales, the working pen, the base handle display
// and cursor, the reference-and-current update protocol, and the ownership of
// graphics items.
class tst_ODShape : public QObject
{
    Q_OBJECT

private slots:
    // Must stay the first test: it needs a process in which no shape was made.
    void firstShapeOfTheProcessHasIdZeroAndTheNextOne();
    void idsNeverRepeatAfterRemoval();
    void idsAreSharedAcrossScenes();

    void newShapeHasDocumentedDefaults();
    void settersAreReadBack();
    void rectangleShapeStartsWithBlueRect1HandleItem();

    void handleScaleFollowsViewScale_data();
    void handleScaleFollowsViewScale();
    void makeElpHandleIsSixHandleUnitsCentredOnPoint_data();
    void makeElpHandleIsSixHandleUnitsCentredOnPoint();
    void plainHandleItemGrowsWithZoom_data();
    void plainHandleItemGrowsWithZoom();

    void lineWidthIsTruncatedIntoPenWidth_data();
    void lineWidthIsTruncatedIntoPenWidth();

    void handleTestFindsNothingBeforeHandlesAreBuilt();
    void handleTestReturnsKeyPlusOneAndFirstKeyWins();
    void baseHitTestFindsNothing();

    void showHandleMarksAndPathsEveryHandle();
    void hideHandleEmptiesPathAndKeepsMap();
    void handleOperationsTolerateMissingHandleItem();
    void baseAdjustParameterRebuildsHandles();
    void baseHandleCursorIsArrowOnViewWidget();

    void numberOutsideRangeChangesNoGeometryButStillUpdatesReference();
    void moveShapeFillsReferenceOfFreshShape();

    void deletingShapeRemovesItsItemsFromScene();
    void removingShapeFromLayerRemovesItsItems();
};

void tst_ODShape::firstShapeOfTheProcessHasIdZeroAndTheNextOne()
{
    QGraphicsScene scene;
    ODRect1 first(&scene);
    QCOMPARE(first.GetShapeID(), 0L);
    ODRect1 second(&scene, QPointF(3, 4));
    QCOMPARE(second.GetShapeID(), 1L);
    ProbeShape third(&scene);
    QCOMPARE(third.GetShapeID(), 2L);
    QCOMPARE(ODShape::s_ID, 3L);
}

void tst_ODShape::idsNeverRepeatAfterRemoval()
{
    QGraphicsScene scene;
    QSet<long> seen;
    long previous = -1;
    for (int round = 0; round < 5; ++round) {
        auto* shape = new ODRect1(&scene);
        const long id = shape->GetShapeID();
        QVERIFY2(!seen.contains(id), qPrintable(QString("id %1 given twice").arg(id)));
        QVERIFY(id > previous);
        seen.insert(id);
        previous = id;
        delete shape;
    }
    // The counter is never wound back by a removal.
    QCOMPARE(ODShape::s_ID, previous + 1);
}

void tst_ODShape::idsAreSharedAcrossScenes()
{
    QGraphicsScene sceneA;
    QGraphicsScene sceneB;
    ODRect1 a(&sceneA);
    ODRect1 b(&sceneB);
    ProbeShape c(&sceneA);
    QCOMPARE(b.GetShapeID(), a.GetShapeID() + 1);
    QCOMPARE(c.GetShapeID(), b.GetShapeID() + 1);
}

void tst_ODShape::newShapeHasDocumentedDefaults()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene, DM_ANYLINE);
    QCOMPARE(shape.GetDrawMode(), DM_ANYLINE);
    QCOMPARE(shape.workingPen().width(), 0);
    QVERIFY(!shape.GetPenColor().isValid());
    QVERIFY(!shape.GetBrushColor().isValid());
    QCOMPARE(shape.GetLineWidth(), 1.0f);
    QCOMPARE(shape.keptBrush(), QBrush());
    QVERIFY(shape.orgData().isEmpty());
    float x = -1.0f;
    float y = -1.0f;
    shape.GetOffset(x, y);
    QCOMPARE(x, 0.0f);
    QCOMPARE(y, 0.0f);
    QCOMPARE(shape.GetScale(), 1.0f);
    QVERIFY(shape.handles().isEmpty());
    QCOMPARE(shape.rawHandleItem(), static_cast<QGraphicsPathItem*>(nullptr));
    QCOMPARE(shape.getSence(), &scene);
    QVERIFY(!shape.isVisiblehandleMark());
    QCOMPARE(shape.shaperLayer(), static_cast<ShaperLayer*>(nullptr));
    QVERIFY(shape.isVisible());
    QVERIFY(shape.isMovable());
    QVERIFY(shape.isSelectble());
    QVERIFY(!shape.isOverlay());
    // The constructor adds nothing to the scene of its own.
    QVERIFY(scene.items().isEmpty());
    QCOMPARE(shape.updateHandlesCalls, 0);
}

void tst_ODShape::settersAreReadBack()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    shape.setDrawMode(DM_RAKERECT1);
    QCOMPARE(shape.GetDrawMode(), DM_RAKERECT1);
    shape.SetPenColor(QColor(10, 20, 30, 40));
    QCOMPARE(shape.GetPenColor(), QColor(10, 20, 30, 40));
    shape.SetBrushColor(QColor(1, 2, 3, 4));
    QCOMPARE(shape.GetBrushColor(), QColor(1, 2, 3, 4));
    shape.SetLineWidth(2.75f);
    QCOMPARE(shape.GetLineWidth(), 2.75f);
    shape.SetOffset(-4.5f, 7.25f);
    float x = 0.0f;
    float y = 0.0f;
    shape.GetOffset(x, y);
    QCOMPARE(x, -4.5f);
    QCOMPARE(y, 7.25f);
    shape.SetScale(0.125f);
    QCOMPARE(shape.GetScale(), 0.125f);
    shape.setIsVisiblehandleMark(true);
    QVERIFY(shape.isVisiblehandleMark());
    shape.setVisible(false);
    QVERIFY(!shape.isVisible());
    shape.setMovable(false);
    QVERIFY(!shape.isMovable());
    shape.setSelectble(false);
    QVERIFY(!shape.isSelectble());
    shape.setIsOverlay(true);
    QVERIFY(shape.isOverlay());
    // The offset is stored only: no coordinate follows it.
    shape.setHandleCentres({QPointF(10, 10)});
    shape.SetScale(1.0f);
    shape.UpdateHandles();
    QCOMPARE(shape.handles().value(0), QRectF(7, 7, 6, 6));
}

void tst_ODShape::rectangleShapeStartsWithBlueRect1HandleItem()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    QCOMPARE(shape.GetDrawMode(), DM_RECT1);
    QVERIFY(dynamic_cast<Rect1HandleItem*>(shape.handleItem()) != nullptr);
    QCOMPARE(shape.handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    QCOMPARE(shape.handleItem()->scene(), &scene);
}

void tst_ODShape::handleScaleFollowsViewScale_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<float>("expected");
    QTest::newRow("zoomed in 4") << 4.0f << 1.0f;
    QTest::newRow("zoom 2") << 2.0f << 1.0f;
    QTest::newRow("zoom 1") << 1.0f << 1.0f;
    QTest::newRow("zoomed out 0.5") << 0.5f << 2.0f;
    QTest::newRow("zoomed out 0.25") << 0.25f << 4.0f;
    QTest::newRow("zoomed out 0.3") << 0.3f << 1.0f / 0.3f;
}

void tst_ODShape::handleScaleFollowsViewScale()
{
    QFETCH(float, scale);
    QFETCH(float, expected);
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    shape.SetScale(scale);
    QCOMPARE(shape.handleScale(), expected);
}

void tst_ODShape::makeElpHandleIsSixHandleUnitsCentredOnPoint_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("scale 4: 6 scene units") << 4.0f << QPointF(10, 20) << QRectF(7, 17, 6, 6);
    QTest::newRow("scale 1: 6 scene units") << 1.0f << QPointF(10, 20) << QRectF(7, 17, 6, 6);
    QTest::newRow("scale 0.25: 24 scene units") << 0.25f << QPointF(10, 20) << QRectF(-2, 8, 24, 24);
    QTest::newRow("scale 0.5, fractional point") << 0.5f << QPointF(2.5, -1.5) << QRectF(-3.5, -7.5, 12, 12);
}

void tst_ODShape::makeElpHandleIsSixHandleUnitsCentredOnPoint()
{
    QFETCH(float, scale);
    QFETCH(QPointF, point);
    QFETCH(QRectF, expected);
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    shape.SetScale(scale);
    const QRectF handle = shape.MakeElpHandle(point);
    QCOMPARE(handle.x(), expected.x());
    QCOMPARE(handle.y(), expected.y());
    QCOMPARE(handle.width(), expected.width());
    QCOMPARE(handle.height(), expected.height());
    QCOMPARE(handle.center(), point);
}

// Zoom 4: 6 units are 24 pixels; zoom 1: 6 units are 6 pixels; zoom 0.25: 24
// units are 6 pixels.
void tst_ODShape::plainHandleItemGrowsWithZoom_data()
{
    Kit::addZoomRows({4.0, 1.0, 0.25});
}

// A handle item made by addPath paints the handle rectangle as it stands in
// scene units, so it grows on the screen when the view zooms in.
void tst_ODShape::plainHandleItemGrowsWithZoom()
{
    QFETCH(double, zoom);
    const int expectedSide = Kit::handleSideOnScreen(zoom);

    EmbeddedWindow embedded;
    QCOMPARE(embedded.created, 0L);
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QCOMPARE(embedded.wnd->setBackground(picture), 0L);
    ImageCtrlView* view = embedded.view();
    ImageCtrlScene* scene = embedded.scene();

    const QPointF centre(200, 152);
    ProbeShape shape(scene);
    shape.SetScale(float(zoom));
    shape.setHandleCentres({centre});
    std::unique_ptr<QGraphicsPathItem> item(scene->addPath(QPainterPath(), QPen(Qt::NoPen),
                                                           QBrush(Qt::blue, Qt::SolidPattern)));
    shape.lendHandleItem(item.get());
    shape.ShowHandle();
    item->setPen(QPen(Qt::NoPen));  // measure the fill alone
    QCOMPARE(shape.handles().value(0).width(), 6.0 * shape.handleScale());

    view->Zoom(zoom);
    view->centerOn(centre);
    QVERIFY(Kit::mapsToWholePixel(view, centre));
    const QImage image = Kit::grabViewport(view);
    const QPoint device = view->mapFromScene(centre);
    const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 40));
    QCOMPARE(blob.bounds.width(), expectedSide);
    QCOMPARE(blob.bounds.height(), expectedSide);
    QCOMPARE(blob.count, expectedSide * expectedSide);
    QCOMPARE(blob.bounds.center() + QPoint(1, 1), device);  // centred: the even square's middle
    scene->removeItem(item.get());
}

void tst_ODShape::lineWidthIsTruncatedIntoPenWidth_data()
{
    QTest::addColumn<float>("lineWidth");
    QTest::addColumn<int>("penWidth");
    QTest::newRow("0 is cosmetic") << 0.0f << 0;
    QTest::newRow("0.9 truncates to 0") << 0.9f << 0;
    QTest::newRow("1") << 1.0f << 1;
    QTest::newRow("1.9 truncates to 1") << 1.9f << 1;
    QTest::newRow("2.5 truncates to 2") << 2.5f << 2;
    QTest::newRow("7") << 7.0f << 7;
}

void tst_ODShape::lineWidthIsTruncatedIntoPenWidth()
{
    QFETCH(float, lineWidth);
    QFETCH(int, penWidth);
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetPenColor(QColor(200, 10, 20));
    shape.SetBrushColor(QColor(0, 255, 0, 0));
    shape.SetLineWidth(lineWidth);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    QCOMPARE(shape.rectItem()->pen().width(), penWidth);
    QCOMPARE(shape.rectItem()->pen().color(), QColor(200, 10, 20));
    QCOMPARE(shape.searchLineItem()->pen().width(), penWidth);
    // The line width itself is kept as given.
    QCOMPARE(shape.GetLineWidth(), lineWidth);
}

void tst_ODShape::handleTestFindsNothingBeforeHandlesAreBuilt()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();  // shows the body, builds no handles
    QVERIFY(shape.handles().isEmpty());
    QCOMPARE(shape.HitTest(QPointF(0, 0), true), 0);
    QCOMPARE(shape.HitTest(QPointF(10, 10), true), 0);
    QCOMPARE(shape.HitTest(QPointF(5, 0), true), 0);
    // The body is there all the same.
    QCOMPARE(shape.HitTest(QPointF(5, 5), false), 1);
    shape.UpdateHandles();
    QCOMPARE(shape.HitTest(QPointF(0, 0), true), 1);
}

void tst_ODShape::handleTestReturnsKeyPlusOneAndFirstKeyWins()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    // A rectangle 4 wide: the top-left and top-centre handles (6 units) overlap.
    shape.SetRect(0, 0, 4, 40);
    shape.ShowShape();
    shape.UpdateHandles();
    QCOMPARE(shape.HitTest(QPointF(1, 0), true), 1);   // in keys 0 and 1: key 0 wins
    QCOMPARE(shape.HitTest(QPointF(4.5, 0), true), 2); // in keys 1 and 2: key 1 wins
    QCOMPARE(shape.HitTest(QPointF(5.5, 0), true), 3); // only key 2
    QCOMPARE(shape.HitTest(QPointF(4, 20), true), 4);
    QCOMPARE(shape.HitTest(QPointF(0, 20), true), 8);
    QCOMPARE(shape.HitTest(QPointF(2, 40), true), 5); // in keys 4, 5 and 6: key 4 wins
    // The test uses the handle rectangles as they stand: 3 units to each side,
    // edges included.
    QCOMPARE(shape.HitTest(QPointF(-3, -3), true), 1);
    QCOMPARE(shape.HitTest(QPointF(-3.01, 0), true), 0);
    QCOMPARE(shape.HitTest(QPointF(2, 10), true), 0);
}

void tst_ODShape::baseHitTestFindsNothing()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    shape.setHandleCentres({QPointF(5, 5), QPointF(50, 50)});
    shape.UpdateHandles();
    QCOMPARE(shape.handles().size(), 2);
    QCOMPARE(shape.HitTest(QPointF(5, 5), true), 0);
    QCOMPARE(shape.HitTest(QPointF(50, 50), true), 0);
    QCOMPARE(shape.HitTest(QPointF(5, 5), false), 0);
}

void tst_ODShape::showHandleMarksAndPathsEveryHandle()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    std::unique_ptr<QGraphicsPathItem> item(scene.addPath(QPainterPath()));
    item->setPen(QPen(Qt::green, 5));
    shape.lendHandleItem(item.get());
    shape.SetPenColor(QColor(250, 20, 30));
    shape.SetScale(0.5f);
    shape.setHandleCentres({QPointF(10, 10), QPointF(40, 10), QPointF(40, 30)});

    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.updateHandlesCalls, 1);
    QCOMPARE(shape.handles().size(), 3);
    QCOMPARE(shape.handles().value(0), QRectF(4, 4, 12, 12));
    QCOMPARE(item->path(), pathOfRects(shape.handles()));
    QCOMPARE(item->path().boundingRect(), QRectF(4, 4, 42, 32));
    QCOMPARE(item->pen().width(), 0);
    QCOMPARE(item->pen().color(), QColor(250, 20, 30));

    // Handles follow the geometry at the next show.
    shape.setHandleCentres({QPointF(0, 0)});
    shape.ShowHandle();
    QCOMPARE(shape.updateHandlesCalls, 2);
    QCOMPARE(item->path(), pathOfRects(shape.handles()));
    QCOMPARE(item->path().boundingRect(), QRectF(-6, -6, 12, 12));
    scene.removeItem(item.get());
}

void tst_ODShape::hideHandleEmptiesPathAndKeepsMap()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    std::unique_ptr<QGraphicsPathItem> item(scene.addPath(QPainterPath()));
    shape.lendHandleItem(item.get());
    shape.setHandleCentres({QPointF(10, 10), QPointF(40, 10)});
    shape.ShowHandle();
    QVERIFY(!item->path().isEmpty());

    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
    QVERIFY(item->path().isEmpty());
    QVERIFY(item->boundingRect().isEmpty());
    QCOMPARE(shape.handles().size(), 2);
    QCOMPARE(shape.updateHandlesCalls, 1);
    scene.removeItem(item.get());
}

void tst_ODShape::handleOperationsTolerateMissingHandleItem()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    shape.setHandleCentres({QPointF(1, 1)});
    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.handles().size(), 1);
    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
}

void tst_ODShape::baseAdjustParameterRebuildsHandles()
{
    QGraphicsScene scene;
    ProbeShape shape(&scene);
    shape.setHandleCentres({QPointF(1, 1), QPointF(2, 2)});
    QCOMPARE(shape.updateHandlesCalls, 0);
    shape.AdjustParameter();
    QCOMPARE(shape.updateHandlesCalls, 1);
    QCOMPARE(shape.handles().size(), 2);
}

void tst_ODShape::baseHandleCursorIsArrowOnViewWidget()
{
    QGraphicsScene scene;
    QGraphicsView view(&scene);
    QGraphicsView otherView(&scene);
    view.setCursor(Qt::CrossCursor);
    view.viewport()->setCursor(Qt::WaitCursor);
    otherView.setCursor(Qt::CrossCursor);
    ProbeShape shape(&scene);
    shape.setHandleCentres({QPointF(10, 10)});
    shape.ShowHandle();

    shape.setHandleCursor(QPointF(10, 10));
    QCOMPARE(view.cursor().shape(), Qt::ArrowCursor);
    // The view widget itself, not its viewport, and only the first view.
    QCOMPARE(view.viewport()->cursor().shape(), Qt::WaitCursor);
    QCOMPARE(otherView.cursor().shape(), Qt::CrossCursor);
}

void tst_ODShape::numberOutsideRangeChangesNoGeometryButStillUpdatesReference()
{
    QGraphicsScene scene;
    // A fresh shape: the reference is filled from the current geometry by
    // whatever number the move carries.
    ODRect1 fresh(&scene, QPointF(5, 6));
    QVERIFY(fresh.orgData().isEmpty());
    fresh.MoveHandleTo(0, QPointF(100, 100));
    QCOMPARE(fresh.currentRect(), QRectF(5, 6, 0, 0));
    QCOMPARE(fresh.orgData(), (QVector<double>{5, 6, 5, 6}));

    ODRect1 other(&scene, QPointF(1, 2));
    other.MoveHandleTo(9, QPointF(100, 100));
    QCOMPARE(other.currentRect(), QRectF(1, 2, 0, 0));
    QCOMPARE(other.orgData(), (QVector<double>{1, 2, 1, 2}));

    // A shape with a reference: neither the geometry nor the reference moves.
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    for (int number : {0, 9, -1, 100}) {
        shape.MoveHandleTo(number, QPointF(50, 60));
        QCOMPARE(shape.currentRect(), QRectF(0, 0, 10, 10));
        QCOMPARE(shape.orgData(), (QVector<double>{0, 0, 10, 10}));
    }
    for (int number : {0, 9, -1, 100}) {
        shape.UpdateOrgData(number);
        QCOMPARE(shape.orgData(), (QVector<double>{0, 0, 10, 10}));
    }
}

void tst_ODShape::moveShapeFillsReferenceOfFreshShape()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene, QPointF(5, 6));
    shape.MoveShape(QPointF(2, -1));
    QCOMPARE(shape.currentRect(), QRectF(7, 5, 0, 0));
    QCOMPARE(shape.orgData(), (QVector<double>{7, 5, 7, 5}));
}

void tst_ODShape::deletingShapeRemovesItsItemsFromScene()
{
    QGraphicsScene scene;
    QGraphicsRectItem* bystander = scene.addRect(QRectF(0, 0, 1, 1));
    const QSet<QGraphicsItem*> before = itemSet(scene);

    auto* shape = new ODRect1(&scene, QPointF(1, 1));
    shape->SetRect(0, 0, 10, 10);
    shape->ShowShape();
    shape->ShowHandle();
    const QSet<QGraphicsItem*> owned = itemSet(scene) - before;
    QCOMPARE(owned.size(), 3);
    QVERIFY(owned.contains(shape->rectItem()));
    QVERIFY(owned.contains(shape->searchLineItem()));
    QVERIFY(owned.contains(shape->handleItem()));

    delete shape;
    QCOMPARE(itemSet(scene), before);
    QVERIFY(scene.items().contains(bystander));
}

void tst_ODShape::removingShapeFromLayerRemovesItsItems()
{
    EmbeddedWindow embedded;
    QCOMPARE(embedded.created, 0L);
    ImageCtrlScene* scene = embedded.scene();
    ShaperLayer* layer = scene->GetActiveLayer();
    QVERIFY(layer);
    const QSet<QGraphicsItem*> before = itemSet(*scene);

    auto* shape = new ODRect1(scene, QPointF(3, 3));
    const long id = shape->GetShapeID();
    layer->addShape(shape);
    QCOMPARE((itemSet(*scene) - before).size(), 3);
    QVERIFY(layer->removeShape(id));
    QCOMPARE(itemSet(*scene), before);

    auto* next = new ODRect1(scene, QPointF(3, 3));
    QVERIFY(next->GetShapeID() > id);
    layer->addShape(next);
    QVERIFY(layer->removeShape(next));
    QCOMPARE(itemSet(*scene), before);
}

QTEST_MAIN(tst_ODShape)
#include "tst_odshape.moc"
