// Drawing a polygon with the mouse: a click adds a corner once the tool's
// click timer ticks, the last point follows the mouse as a rubber band, and a
// double click ends the polygon, drops the rubber band and tells the host.
// The mode outlives each release; an unfinished polygon goes when a new
// polygon mode begins.

#include "testkit.h"

#include "odpolygon.h"

#include <QGraphicsPolygonItem>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Kit;

namespace {

// The corners an operator clicks, in scene points.
const QPointF kA(20, 20);
const QPointF kB(80, 24);
const QPointF kC(70, 70);
const QPointF kD(24, 60);

// Only the shape events and the double click, in their order.
QStringList shapeEventsAndDoubleClicks(const HostLog& log)
{
    QStringList out;
    for (const QString& e : log.entries) {
        if (!e.startsWith("mouseClicked"))
            out << e;
    }
    return out;
}

void startPolygonMode(PictureWindow& w)
{
    QVERIFY(QMetaObject::invokeMethod(w.window(), "OnDrawPolygonPushButtonClicked", Q_ARG(bool, false)));
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
}

} // namespace

class tst_PolygonTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void threeClicksAndADoubleClickMakeAPolygon_data();
    void threeClicksAndADoubleClickMakeAPolygon();
    void firstClickAddsItsPointTwice();
    void movesDragOnlyTheRubberBandPoint();
    void releaseKeepsThePolygonMode();
    void newPolygonTakesTheLookAtThePress();
    void doubleClickAsTheVeryFirstActionAddsAPointAndDrawingGoesOn();
    void doubleClickBeforeTheTickCancelsTheClick();
    void clickTimerTicksAfterOneMillisecondAndRunsOn();
    void resetObjectWithoutAPolygonDoesNothing();
    void resetObjectThrowsAwayTheUnfinishedPolygon();
    void polygonButtonThrowsAwayTheUnfinishedPolygon();
    void polygonRemovedElsewhereIsLetGo();
    void finishedPolygonIsSelectedAndEditable();
};

void tst_PolygonTool::init()
{
    forgetCurrentShape();
}

void tst_PolygonTool::cleanup()
{
    forgetCurrentShape();
}

void tst_PolygonTool::threeClicksAndADoubleClickMakeAPolygon_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 0.25") << 0.25;
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

void tst_PolygonTool::threeClicksAndADoubleClickMakeAPolygon()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    startPolygonMode(w);
    const long id = ODShape::s_ID;
    const QPointF a = w.seen(kA), b = w.seen(kB), c = w.seen(kC), d = w.seen(kD);

    clickCorner(w.view(), kA);
    ODPolygon* polygon = polygonTool()->shape();
    QVERIFY(polygon != nullptr);
    QCOMPARE(polygon->GetShapeID(), id);
    QCOMPARE(polygon->GetDrawMode(), DM_POLYGON);
    clickCorner(w.view(), kB);
    clickCorner(w.view(), kC);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, b, c, c}));
    QVERIFY(log.shapeEvents().isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);

    // The double click's own first click adds the last corner; the double
    // click drops the rubber band behind it.
    doubleClickCorner(w.view(), kD);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, b, c, d}));
    QCOMPARE(polygon->pointSize(), 4);
    QCOMPARE(polygon->orgData(), (QVector<double>{a.x(), a.y(), b.x(), b.y(), c.x(), c.y(), d.x(), d.y()}));
    QCOMPARE(polygonTool()->shape(), nullptr);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(!w.view()->limitMousePos());
    QVERIFY(!polygonTool()->polygonAdded());
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(w.active()->shapes().last(), static_cast<ODShape*>(polygon));

    // The host hears of the polygon before the scene's double click, and
    // again at the double click's release: the mode is select by then, and
    // the select tool selects the polygon under the mouse.
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(clicked.at(1).at(0).value<long>(), id);
    QCOMPARE(shapeEventsAndDoubleClicks(log), (QStringList{clickedText(id), "doubleClick", clickedText(id)}));

    // The polygon is shown through its four corners.
    QCOMPARE(polygon->handles().size(), 4);
    const QGraphicsPolygonItem* item = nullptr;
    for (QGraphicsItem* i : w.scene()->items()) {
        if (auto* p = qgraphicsitem_cast<QGraphicsPolygonItem*>(i))
            item = p;
    }
    QVERIFY(item != nullptr);
    QCOMPARE(item->polygon(), QPolygonF({a, b, c, d}));
}

void tst_PolygonTool::firstClickAddsItsPointTwice()
{
    PictureWindow w;
    startPolygonMode(w);
    const QPointF a = w.seen(kA);
    moveTo(w.view(), kA);
    w.press(kA);
    // The press only notes the point: the corner comes with the tick.
    QCOMPARE(polygonTool()->shape(), nullptr);
    QCOMPARE(polygonTool()->clickPoint(), a);
    QCOMPARE(polygonTool()->lastScene(), w.scene());
    QTRY_VERIFY(polygonTool()->shape() != nullptr);
    ODPolygon* polygon = polygonTool()->shape();
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, a}));
    QVERIFY(polygonTool()->polygonAdded());
    // Drawn in the active layer, selected and current.
    QCOMPARE(polygon->shaperLayer(), static_cast<ODShapeLayer*>(w.active()));
    QVERIFY(w.active()->selectedShapes().contains(polygon));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(polygon));
    w.release(kA);
}

void tst_PolygonTool::movesDragOnlyTheRubberBandPoint()
{
    PictureWindow w;
    startPolygonMode(w);
    const QPointF a = w.seen(kA), b = w.seen(kB), c = w.seen(kC);
    clickCorner(w.view(), kA);
    ODPolygon* polygon = polygonTool()->shape();
    moveTo(w.view(), kC);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, c}));
    clickCorner(w.view(), kB);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, b, b}));
    moveTo(w.view(), kC, Qt::LeftButton);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, b, c}));
    QCOMPARE(polygon->orgData(), (QVector<double>{a.x(), a.y(), b.x(), b.y(), c.x(), c.y()}));
    // The rubber band is painted where the mouse is.
    QCOMPARE(polygon->handles().size(), 3);
    QVERIFY(near(polygon->handles().value(2).center(), c));
}

void tst_PolygonTool::releaseKeepsThePolygonMode()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    startPolygonMode(w);
    clickCorner(w.view(), kA);
    clickCorner(w.view(), kB);
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
    QVERIFY(polygonTool()->shape() != nullptr);
    QVERIFY(log.shapeEvents().isEmpty());
}

void tst_PolygonTool::newPolygonTakesTheLookAtThePress()
{
    PictureWindow w(2.0);
    w.scene()->setPenColor(QColor(200, 10, 20));
    w.scene()->setBrushColor(QColor(1, 2, 3, 4));
    w.scene()->setLineWidth(3.5f);
    startPolygonMode(w);
    clickCorner(w.view(), kA);
    ODPolygon* polygon = polygonTool()->shape();
    QVERIFY(polygon != nullptr);
    QCOMPARE(polygon->GetPenColor(), QColor(200, 10, 20));
    QCOMPARE(polygon->GetBrushColor(), QColor(1, 2, 3, 4));
    QCOMPARE(polygon->GetLineWidth(), 3.5f);
    QCOMPARE(polygon->GetScale(), 2.0f);
    QCOMPARE(polygon->isOverlay(), false);
}

void tst_PolygonTool::doubleClickAsTheVeryFirstActionAddsAPointAndDrawingGoesOn()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    startPolygonMode(w);
    const QPointF a = w.seen(kA), b = w.seen(kB), c = w.seen(kC);

    // Two points from the press of the first click, one from the double click.
    doubleClickCorner(w.view(), kA);
    ODPolygon* polygon = polygonTool()->shape();
    QVERIFY(polygon != nullptr);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, a, a}));
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
    QVERIFY(log.shapeEvents().isEmpty());

    // Drawing goes on from there; the next double click ends it.
    moveTo(w.view(), kB);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, a, b}));
    clickCorner(w.view(), kB);
    doubleClickCorner(w.view(), kC);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{a, a, b, c}));
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QCOMPARE(log.shapeEvents().value(0), clickedText(polygon->GetShapeID()));
}

void tst_PolygonTool::doubleClickBeforeTheTickCancelsTheClick()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    startPolygonMode(w);
    const long id = ODShape::s_ID;
    // Press, release and double click in one go: the timer has not ticked.
    doubleClickAt(w.view(), kA);
    QVERIFY(!polygonTool()->clickTimer()->isActive());
    letQueuedCallsRun(5);
    QCOMPARE(polygonTool()->shape(), nullptr);
    QCOMPARE(ODShape::s_ID, id);
    QVERIFY(w.active()->shapes().isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
    QVERIFY(log.shapeEvents().isEmpty());
}

void tst_PolygonTool::clickTimerTicksAfterOneMillisecondAndRunsOn()
{
    PictureWindow w;
    startPolygonMode(w);
    QTimer* timer = polygonTool()->clickTimer();
    QVERIFY(timer != nullptr);
    w.press(kA);
    QCOMPARE(timer->interval(), 1);
    QVERIFY(!timer->isSingleShot());
    QVERIFY(timer->isActive());
    QSignalSpy ticks(timer, &QTimer::timeout);
    QTRY_VERIFY(polygonTool()->shape() != nullptr);
    // The tick takes every connection off the timer, this spy's too before it
    // hears the tick, and the timer runs on with nothing connected: later
    // ticks add nothing.
    letQueuedCallsRun(10);
    QCOMPARE(ticks.count(), 0);
    QVERIFY(timer->isActive());
    QCOMPARE(polygonTool()->shape()->pointSize(), 2);
    w.release(kA);

    doubleClickCorner(w.view(), kB);
    doubleClickCorner(w.view(), kC);
    QVERIFY(!timer->isActive());
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
}

void tst_PolygonTool::resetObjectWithoutAPolygonDoesNothing()
{
    PictureWindow w;
    ODRect1* rect = addRect(w.active(), 10, 10, 40, 40);
    w.click(QPointF(20, 20));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(rect));
    const long id = ODShape::s_ID;
    QCOMPARE(polygonTool()->shape(), nullptr);
    polygonTool()->ResetObject();
    QCOMPARE(polygonTool()->shape(), nullptr);
    QCOMPARE(ODShape::s_ID, id);
    QCOMPARE(w.active()->shapes(), (QVector<ODShape*>{rect}));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(rect));
}

void tst_PolygonTool::resetObjectThrowsAwayTheUnfinishedPolygon()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* rect = addRect(w.active(), 100, 100, 140, 140);
    startPolygonMode(w);
    clickCorner(w.view(), kA);
    clickCorner(w.view(), kB);
    const long id = polygonTool()->shape()->GetShapeID();
    polygonTool()->ResetObject();
    QCOMPARE(polygonTool()->shape(), nullptr);
    QVERIFY(!layerHasId(w.active(), id));
    QCOMPARE(w.active()->shapes(), (QVector<ODShape*>{rect}));
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QVERIFY(log.shapeEvents().isEmpty());
}

void tst_PolygonTool::polygonButtonThrowsAwayTheUnfinishedPolygon()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    startPolygonMode(w);
    clickCorner(w.view(), kA);
    clickCorner(w.view(), kB);
    const long unfinished = polygonTool()->shape()->GetShapeID();

    startPolygonMode(w);
    QCOMPARE(polygonTool()->shape(), nullptr);
    QVERIFY(!layerHasId(w.active(), unfinished));
    QVERIFY(w.active()->shapes().isEmpty());

    // The next polygon starts from nothing.
    clickCorner(w.view(), kB);
    clickCorner(w.view(), kC);
    doubleClickCorner(w.view(), kD);
    QCOMPARE(w.active()->shapes().size(), 1);
    auto* polygon = static_cast<ODPolygon*>(w.active()->shapes().first());
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{w.seen(kB), w.seen(kC), w.seen(kD)}));
    QCOMPARE(log.shapeEvents().value(0), clickedText(polygon->GetShapeID()));
}

void tst_PolygonTool::polygonRemovedElsewhereIsLetGo()
{
    PictureWindow w;
    startPolygonMode(w);
    clickCorner(w.view(), kA);
    ODPolygon* polygon = polygonTool()->shape();
    QVERIFY(polygon != nullptr);
    w.active()->clearSelectedShape();
    QVERIFY(w.active()->removeShape(polygon));
    QCOMPARE(polygonTool()->shape(), nullptr);

    // The next click starts a new polygon.
    clickCorner(w.view(), kB);
    QVERIFY(polygonTool()->shape() != nullptr);
    QCOMPARE(pointsOf(polygonTool()->shape()), (QVector<QPointF>{w.seen(kB), w.seen(kB)}));
}

void tst_PolygonTool::finishedPolygonIsSelectedAndEditable()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    startPolygonMode(w);
    clickCorner(w.view(), kA);
    clickCorner(w.view(), kB);
    doubleClickCorner(w.view(), kC);
    auto* polygon = static_cast<ODPolygon*>(w.active()->shapes().last());
    const long id = polygon->GetShapeID();
    log.entries.clear();

    // Its second corner dragged with the select tool.
    const QPointF to(90, 40);
    w.drag(kB, to);
    QCOMPARE(pointsOf(polygon), (QVector<QPointF>{w.seen(kA), w.seen(to), w.seen(kC)}));
    QCOMPARE(log.shapeEvents(), (QStringList{resizedText(id)}));
}

QTEST_MAIN(tst_PolygonTool)
#include "tst_polygontool.moc"
