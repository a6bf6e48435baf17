// The open freehand line, and with it what both free lines share: points in
// the order drawn, a handle on each end only, handle drags that add a point at
// their end and never move or remove one, the reference written only while it
// holds two slots a point, and a body that is the closed line stroked 15 wide
// with its inside.

#include "odanyline.h"
#include "GraphicsHandleItem.h"
#include "kitpointlists.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QtTest>

using Kit::CursorView;
using Kit::elementPoints;
using Kit::HostLog;
using Kit::kInsideTheL;
using Kit::kOnTheClosingSide;
using Kit::Params;
using Kit::PictureWindow;
using Kit::place;
using Kit::pointsReadBack;
using Kit::slotsOf;
using Kit::verifyZValueReaches;

namespace {

const QVector<QPointF>& kL = Kit::kLinePoints;

} // namespace

class tst_ODAnyLine : public QObject
{
    Q_OBJECT

private slots:
    void newLineIsEmptyWithItsTwoItems();
    void pointsAreStoredInTheOrderGiven();
    void settingPointsKeepsTheOldReferenceAheadAndStopsWriting();
    void oddValueCountKeepsTheLoneValueInTheReference();
    void lineWithoutPointsHasNoHandles();
    void handlesSitOnTheFirstAndTheLastPointOnly_data();
    void handlesSitOnTheFirstAndTheLastPointOnly();
    void bothHandlesOfAOnePointLineSitOnIt();
    void endHandleAddsThePointAtItsEnd_data();
    void endHandleAddsThePointAtItsEnd();
    void frontInsertPutsXThenYAheadOfEveryOldSlot();
    void tenMovesOfTheSecondHandleAddTenPoints();
    void updateOrgDataNeedsExactlyTwoSlotsAPoint();
    void updateCurDataNeedsTwoSlotsAPoint();
    void moveShapeMovesEveryPointOnlyWhileTheReferenceMatches();
    void bodyIsTheClosedLineStrokedFifteenWide_data();
    void bodyIsTheClosedLineStrokedFifteenWide();
    void showShapeDrawsTheOpenPathAndShowsTheItem();
    void hideShapeEmptiesThePathAndKeepsTheHandles();
    void showHandleGivesPathPenAndMapAtTheSameZValue();
    void handleCursorIsCrossOverEitherEnd_data();
    void handleCursorIsCrossOverEitherEnd();
    void setZValueReachesBothItems();
    void openLineIsPaintedWithoutItsClosingSide();
    void opaqueBrushFillsTheOpenLineAsAClosedOne();
};

void tst_ODAnyLine::newLineIsEmptyWithItsTwoItems()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    QCOMPARE(line.GetDrawMode(), DM_ANYLINE);
    QVERIFY(line.pathItem()->path().isEmpty());
    Kit::verifyNewPointListShape(line, scene, line.pathItem());
}

void tst_ODAnyLine::pointsAreStoredInTheOrderGiven()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.SetAnyLinePoints(kL);
    QCOMPARE(line.points(), QPolygonF(kL));
    QCOMPARE(line.orgData(), (Params{40, 40, 80, 40, 120, 40, 120, 100}));
    bool ok = false;
    QCOMPARE(pointsReadBack(line, &ok), kL);
    QVERIFY(ok);
}

void tst_ODAnyLine::settingPointsKeepsTheOldReferenceAheadAndStopsWriting()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.SetAnyLinePoints(QVector<QPointF>{QPointF(1, 2)});
    line.SetAnyLinePoints(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40)});
    QCOMPARE(line.points(), QPolygonF(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40)}));
    QCOMPARE(line.orgData(), (Params{1, 2, 10, 20, 30, 40}));
    QCOMPARE(pointsReadBack(line).size(), 3);
    // Three pairs for two points: a body move changes nothing.
    line.MoveShape(QPointF(5, 5));
    QCOMPARE(line.points(), QPolygonF(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40)}));
    QCOMPARE(line.orgData(), (Params{1, 2, 10, 20, 30, 40}));
    // A handle still adds its point to both, but writes nothing else.
    line.MoveHandleTo(2, QPointF(50, 60));
    QCOMPARE(line.orgData(), (Params{1, 2, 10, 20, 30, 40, 50, 60}));
    QCOMPARE(line.points().size(), 3);
}

void tst_ODAnyLine::oddValueCountKeepsTheLoneValueInTheReference()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    Params values = {1, 2, 3, 4, 5};
    line.SetAnyLinePoints(values);
    QCOMPARE(values.size(), 5);
    QCOMPARE(line.orgData(), (Params{1, 2, 3, 4, 5}));
    QCOMPARE(line.points(), QPolygonF(QVector<QPointF>{QPointF(1, 2), QPointF(3, 4)}));
    // An end handle still adds its point to list and reference; the reference
    // no longer holds exactly two slots a point, so nothing rewrites it.
    line.MoveHandleTo(2, QPointF(9, 9));
    QCOMPARE(line.orgData(), (Params{1, 2, 3, 4, 5, 9, 9}));
    QCOMPARE(line.points().size(), 3);
    line.MoveShape(QPointF(1, 0));
    QCOMPARE(line.orgData(), (Params{1, 2, 3, 4, 5, 9, 9}));
    QCOMPARE(line.points().first(), QPointF(2, 2));
}

void tst_ODAnyLine::lineWithoutPointsHasNoHandles()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.UpdateHandles();
    QVERIFY(line.handles().isEmpty());
    line.ShowHandle();
    QVERIFY(line.isVisiblehandleMark());
    QVERIFY(line.handleItem()->path().isEmpty());
    QVERIFY(line.graphicsHandleItem()->handleMap().isEmpty());
    QCOMPARE(line.HitTest(QPointF(0, 0), true), 0);

    // Emptied after it had handles: they go.
    place(line, kL);
    QCOMPARE(line.handles().size(), 2);
    Params none;
    line.SetAnyLinePoints(none);
    line.UpdateHandles();
    QVERIFY(line.handles().isEmpty());
    QCOMPARE(line.HitTest(kL.first(), true), 0);
}

void tst_ODAnyLine::handlesSitOnTheFirstAndTheLastPointOnly_data()
{
    Kit::addZoomRows();
}

void tst_ODAnyLine::handlesSitOnTheFirstAndTheLastPointOnly()
{
    QFETCH(double, zoom);
    Kit::ZoomedShape<ODAnyLine> zoomed(zoom);
    ODAnyLine& line = zoomed.shape;
    place(line, kL);
    QCOMPARE(line.handles().size(), 2);
    QCOMPARE(line.handles().value(0), line.MakeElpHandle(kL.first()));
    QCOMPARE(line.handles().value(1), line.MakeElpHandle(kL.last()));
    QCOMPARE(line.handles().value(0).width(), Kit::handleSideInScene(zoom));
    QCOMPARE(line.HitTest(kL.first(), true), 1);
    QCOMPARE(line.HitTest(kL.last(), true), 2);
    QCOMPARE(line.HitTest(kL[1], true), 0);
    QCOMPARE(line.HitTest(kL[2], true), 0);
}

void tst_ODAnyLine::bothHandlesOfAOnePointLineSitOnIt()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.AddPoint(QPointF(30, 30));
    line.UpdateHandles();
    QCOMPARE(line.handles().size(), 2);
    QCOMPARE(line.handles().value(0), line.MakeElpHandle(QPointF(30, 30)));
    QCOMPARE(line.handles().value(1), line.MakeElpHandle(QPointF(30, 30)));
    // The first key wins.
    QCOMPARE(line.HitTest(QPointF(30, 30), true), 1);
}

void tst_ODAnyLine::endHandleAddsThePointAtItsEnd_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QVector<QPointF>>("points");
    const QPointF a(10, 20), b(30, 40), to(1, 2);
    QTest::newRow("1 at the front") << 1 << QVector<QPointF>{to, a, b};
    QTest::newRow("2 at the end") << 2 << QVector<QPointF>{a, b, to};
    QTest::newRow("0 nothing") << 0 << QVector<QPointF>{a, b};
    QTest::newRow("3 nothing") << 3 << QVector<QPointF>{a, b};
    QTest::newRow("-1 nothing") << -1 << QVector<QPointF>{a, b};
}

void tst_ODAnyLine::endHandleAddsThePointAtItsEnd()
{
    QFETCH(int, number);
    QFETCH(QVector<QPointF>, points);
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    place(line, {QPointF(10, 20), QPointF(30, 40)});
    line.MoveHandleTo(number, QPointF(1, 2));
    QCOMPARE(line.points(), QPolygonF(points));
    QCOMPARE(line.orgData(), slotsOf(points));
    // The handles follow the ends.
    line.UpdateHandles();
    QCOMPARE(line.handles().value(0), line.MakeElpHandle(points.first()));
    QCOMPARE(line.handles().value(1), line.MakeElpHandle(points.last()));
}

void tst_ODAnyLine::frontInsertPutsXThenYAheadOfEveryOldSlot()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.SetAnyLinePoints(QVector<QPointF>{QPointF(7, 8)});
    line.SetAnyLinePoints(QVector<QPointF>{QPointF(10, 20)});
    line.MoveHandleTo(1, QPointF(1, 2));
    QCOMPARE(line.orgData(), (Params{1, 2, 7, 8, 10, 20}));
    QCOMPARE(line.points(), QPolygonF(QVector<QPointF>{QPointF(1, 2), QPointF(10, 20)}));
    line.MoveHandleTo(1, QPointF(-3, -4));
    QCOMPARE(line.orgData(), (Params{-3, -4, 1, 2, 7, 8, 10, 20}));
}

void tst_ODAnyLine::tenMovesOfTheSecondHandleAddTenPoints()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    auto* line = new ODAnyLine(w.scene());
    line->SetPenColor(w.scene()->getPenColor());
    place(*line, kL);
    w.active()->addShape(line);
    w.click(kL[1]);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{line}));
    log.entries.clear();

    // The operator grabs the end handle and drags it ten steps further down.
    w.press(kL.last());
    QVector<QPointF> expected = kL;
    for (int step = 1; step <= 10; ++step) {
        const QPointF to = kL.last() + QPointF(0, 3 * step);
        w.move(to);
        expected.append(to);
        QCOMPARE(line->points().size(), kL.size() + step);
    }
    w.release(kL.last() + QPointF(0, 30));
    QCOMPARE(line->points(), QPolygonF(expected));
    QCOMPARE(pointsReadBack(*line), expected);
    QCOMPARE(log.shapeEvents(), QStringList{Kit::resizedText(line->GetShapeID())});
    // Its handles now sit on the old first and the new last point.
    QCOMPARE(line->graphicsHandleItem()->handleMap().size(), 2);
    QCOMPARE(line->handles().value(1), line->MakeElpHandle(expected.last()));

    // Dragging back towards the start adds points too: handle work never
    // shrinks the line.
    w.press(expected.last());
    w.move(kL.first() + QPointF(5, 5));
    w.move(kL.first() + QPointF(6, 6));
    w.release(kL.first() + QPointF(6, 6));
    QCOMPARE(line->points().size(), expected.size() + 2);
}

void tst_ODAnyLine::updateOrgDataNeedsExactlyTwoSlotsAPoint()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    place(line, {QPointF(10, 20), QPointF(30, 40)});
    line.MoveShape(QPointF(1, 1));
    // Whatever the number, every point is written.
    for (int number : {0, 1, 2, 99, -5}) {
        line.UpdateOrgData(number);
        QCOMPARE(line.orgData(), (Params{11, 21, 31, 41}));
    }
    // More slots than points: nothing is written.
    line.SetAnyLinePoints(QVector<QPointF>{QPointF(50, 50)});
    line.UpdateOrgData(0);
    QCOMPARE(line.orgData(), (Params{11, 21, 31, 41, 50, 50}));
}

void tst_ODAnyLine::updateCurDataNeedsTwoSlotsAPoint()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    Params values = {1, 2, 3, 4};
    line.SetAnyLinePoints(values);
    line.UpdateCurData();
    QCOMPARE(line.points(), QPolygonF(QVector<QPointF>{QPointF(1, 2), QPointF(3, 4)}));
    line.SetAnyLinePoints(QVector<QPointF>{QPointF(7, 7)});
    line.UpdateCurData();
    QCOMPARE(line.points(), QPolygonF(QVector<QPointF>{QPointF(7, 7)}));
}

void tst_ODAnyLine::moveShapeMovesEveryPointOnlyWhileTheReferenceMatches()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    place(line, kL);
    line.MoveShape(QPointF(2.5, -1));
    QVector<QPointF> moved;
    for (const QPointF& p : kL)
        moved.append(p + QPointF(2.5, -1));
    QCOMPARE(line.points(), QPolygonF(moved));
    QCOMPARE(line.orgData(), slotsOf(moved));

    ODAnyLine empty(&scene);
    empty.MoveShape(QPointF(1, 1));
    QVERIFY(empty.points().isEmpty());
    QVERIFY(empty.orgData().isEmpty());
}

void tst_ODAnyLine::bodyIsTheClosedLineStrokedFifteenWide_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    QTest::newRow("on the top") << QPointF(60, 40) << 1;
    QTest::newRow("7 above the top") << QPointF(60, 33) << 1;
    QTest::newRow("8 above the top") << QPointF(60, 32) << 0;
    QTest::newRow("7 right of the side") << QPointF(127, 70) << 1;
    QTest::newRow("9 right of the side") << QPointF(129, 70) << 0;
    QTest::newRow("inside the closed line") << kInsideTheL << 1;
    QTest::newRow("on the closing side") << kOnTheClosingSide << 1;
    QTest::newRow("below the closing side") << QPointF(70, 90) << 0;
    QTest::newRow("far away") << QPointF(300, 300) << 0;
}

void tst_ODAnyLine::bodyIsTheClosedLineStrokedFifteenWide()
{
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    place(line, kL);
    QCOMPARE(line.HitTest(point, false), hit);
    // The line's own item, open and with the pen of width 1, has no say.
    line.SetLineWidth(40);
    line.ShowShape();
    QCOMPARE(line.HitTest(point, false), hit);

    ODAnyLine empty(&scene);
    QCOMPARE(empty.HitTest(point, false), 0);
}

void tst_ODAnyLine::showShapeDrawsTheOpenPathAndShowsTheItem()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.SetPenColor(QColor(200, 10, 20));
    line.SetBrushColor(QColor(1, 2, 3, 0));
    line.SetLineWidth(2.5f);
    Params values = slotsOf(kL);
    line.SetAnyLinePoints(values);
    line.pathItem()->hide();
    line.ShowShape();

    QGraphicsPathItem* item = line.pathItem();
    QVERIFY(item->isVisible());
    // A move to the first point, then a line to every point; the line to the
    // first point, of no length, leaves no element of its own.
    const QPainterPath path = item->path();
    QCOMPARE(path.elementCount(), kL.size());
    QVERIFY(path.elementAt(0).isMoveTo());
    for (int i = 1; i < path.elementCount(); ++i)
        QVERIFY(path.elementAt(i).isLineTo());
    QCOMPARE(elementPoints(path), kL);
    QCOMPARE(path.currentPosition(), kL.last());
    QCOMPARE(item->pen().color(), QColor(200, 10, 20));
    QCOMPARE(item->pen().width(), 2);
    QCOMPARE(item->brush(), QBrush(QColor(1, 2, 3, 0), Qt::SolidPattern));
}

void tst_ODAnyLine::hideShapeEmptiesThePathAndKeepsTheHandles()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    place(line, kL);
    line.ShowHandle();
    const QPainterPath handlePath = line.handleItem()->path();
    line.HideShape();
    QVERIFY(line.pathItem()->path().isEmpty());
    QCOMPARE(line.handleItem()->path(), handlePath);
    QCOMPARE(line.orgData(), slotsOf(kL));
}

void tst_ODAnyLine::showHandleGivesPathPenAndMapAtTheSameZValue()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    line.SetPenColor(QColor(10, 20, 30));
    line.SetLineWidth(3);
    line.setZValue(5);
    place(line, kL);
    line.ShowHandle();
    QVERIFY(line.isVisiblehandleMark());
    QCOMPARE(line.handleItem()->path(), Kit::pathOfRects(line.handles()));
    QCOMPARE(line.graphicsHandleItem()->handleMap(), line.handles());
    QCOMPARE(line.handleItem()->pen().width(), 0);
    QCOMPARE(line.handleItem()->pen().color(), QColor(10, 20, 30));
    QCOMPARE(line.handleItem()->zValue(), 5.0);
    line.HideHandle();
    QVERIFY(line.handleItem()->path().isEmpty());
}

void tst_ODAnyLine::handleCursorIsCrossOverEitherEnd_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<Qt::CursorShape>("cursor");
    QTest::newRow("first point") << kL.first() << Qt::CrossCursor;
    QTest::newRow("last point") << kL.last() + QPointF(-2, 2) << Qt::CrossCursor;
    QTest::newRow("a middle point") << kL[1] << Qt::ArrowCursor;
    QTest::newRow("outside") << QPointF(0, 0) << Qt::ArrowCursor;
}

void tst_ODAnyLine::handleCursorIsCrossOverEitherEnd()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODAnyLine line(&v.scene);
    place(line, kL);
    line.ShowHandle();
    line.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);
}

void tst_ODAnyLine::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODAnyLine line(&scene);
    verifyZValueReaches(line, {line.pathItem(), line.handleItem()});
}

void tst_ODAnyLine::openLineIsPaintedWithoutItsClosingSide()
{
    PictureWindow w;
    const QColor red(230, 20, 20);
    auto* line = Kit::addPointListShape<ODAnyLine>(w, red, QColor(0, 255, 0, 0));
    place(*line, kL);
    line->ShowHandle();

    const QImage image = w.grabViewport();
    ImageCtrlView* view = w.view();
    Kit::verifyColourAt(view, image, {QPointF(60, 40), QPointF(120, 70)}, red.rgb());
    Kit::verifyColourAt(view, image, {kOnTheClosingSide, kInsideTheL}, Kit::pictureGrey());
    // Handle squares at the two ends alone, none at the points between.
    Kit::verifyHandleSquaresOnlyAt(view, image, {kL.first(), kL.last()});
}

void tst_ODAnyLine::opaqueBrushFillsTheOpenLineAsAClosedOne()
{
    PictureWindow w;
    const QColor red(230, 20, 20);
    const QColor green(20, 200, 40);
    auto* line = Kit::addPointListShape<ODAnyLine>(w, red, green);
    place(*line, kL);

    const QImage image = w.grabViewport();
    // Inside, and on the open side, which has no outline: fill, not pen.
    Kit::verifyColourAt(w.view(), image, {kInsideTheL, kOnTheClosingSide + QPointF(1, -1)}, green.rgb());
}

QTEST_MAIN(tst_ODAnyLine)
#include "tst_odanyline.moc"
