// The closed freehand line: shown with a line from the last point back to the
// first, and open while it is being drawn (ShowMoveShape). Its point list and
// body are those of the open line, tested with it; here its handles are checked
// to add points at the ends all the same.

#include "odanycloseline.h"
#include "GraphicsHandleItem.h"
#include "kitpointlists.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QtTest>

using Kit::elementPoints;
using Kit::kInsideTheL;
using Kit::kOnTheClosingSide;
using Kit::Params;
using Kit::PictureWindow;
using Kit::place;
using Kit::slotsOf;

namespace {

const QVector<QPointF>& kL = Kit::kLinePoints;

// True when the path is one move followed by lines only.
bool isOneMoveThenLines(const QPainterPath& path)
{
    if (path.elementCount() == 0 || !path.elementAt(0).isMoveTo())
        return false;
    for (int i = 1; i < path.elementCount(); ++i) {
        if (!path.elementAt(i).isLineTo())
            return false;
    }
    return true;
}

} // namespace

class tst_ODAnyCloseLine : public QObject
{
    Q_OBJECT

private slots:
    void newCloseLineIsEmptyWithItsTwoItems();
    void showShapeClosesTheLineBackToTheFirstPoint();
    void showShapeLeavesAHiddenItemHidden();
    void onePointDrawsALineFromThatPointToItself();
    void noPointsShowAnEmptyPath();
    void showMoveShapeDrawsTheOpenLine();
    void showMoveShapeKeepsPenWidthAndBrush();
    void showMoveShapeReloadsThePointsFromTheReference();
    void handlesOnTheEndsAddPointsThere();
    void lineWithoutPointsHasNoHandles();
    void closedLineIsPaintedWithItsClosingSide();
    void lineBeingDrawnIsPaintedOpen();
};

void tst_ODAnyCloseLine::newCloseLineIsEmptyWithItsTwoItems()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    QCOMPARE(line.GetDrawMode(), DM_ANYCLOSELINE);
    QVERIFY(line.pathItem()->path().isEmpty());
    Kit::verifyNewPointListShape(line, scene, line.pathItem());
}

void tst_ODAnyCloseLine::showShapeClosesTheLineBackToTheFirstPoint()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.SetPenColor(QColor(200, 10, 20));
    line.SetBrushColor(QColor(1, 2, 3, 4));
    line.SetLineWidth(3.99f);
    Params values = slotsOf(kL);
    line.SetAnyLinePoints(values);
    line.ShowShape();
    const QPainterPath path = line.pathItem()->path();
    QVERIFY(isOneMoveThenLines(path));
    // A line to every point and back to the first; lines of no length leave
    // no element of their own.
    QCOMPARE(elementPoints(path), kL + QVector<QPointF>{kL.first()});
    QCOMPARE(path.currentPosition(), kL.first());
    QCOMPARE(line.pathItem()->pen().color(), QColor(200, 10, 20));
    QCOMPARE(line.pathItem()->pen().width(), 3);
    QCOMPARE(line.pathItem()->brush(), QBrush(QColor(1, 2, 3, 4), Qt::SolidPattern));
}

void tst_ODAnyCloseLine::showShapeLeavesAHiddenItemHidden()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.AddPoint(QPointF(1, 1));
    line.AddPoint(QPointF(9, 1));
    line.pathItem()->hide();
    line.ShowShape();
    QVERIFY(!line.pathItem()->isVisible());
    QVERIFY(!line.pathItem()->path().isEmpty());
}

void tst_ODAnyCloseLine::onePointDrawsALineFromThatPointToItself()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.AddPoint(QPointF(25, 35));
    line.ShowShape();
    // The line from the point to itself has no length: the path starts and
    // ends on the point and covers nothing.
    const QPainterPath path = line.pathItem()->path();
    QCOMPARE(elementPoints(path), QVector<QPointF>{QPointF(25, 35)});
    QVERIFY(path.elementAt(0).isMoveTo());
    QCOMPARE(path.currentPosition(), QPointF(25, 35));
    QCOMPARE(path.boundingRect(), QRectF(25, 35, 0, 0));
    // The stroke of a line of no length covers nothing either; the handles
    // on the point are what the mouse finds.
    QCOMPARE(line.HitTest(QPointF(25, 35), false), 0);
    line.UpdateHandles();
    QCOMPARE(line.HitTest(QPointF(25, 35), true), 1);
}

void tst_ODAnyCloseLine::noPointsShowAnEmptyPath()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.ShowShape();
    QVERIFY(line.pathItem()->path().isEmpty());
    line.ShowMoveShape();
    QVERIFY(line.pathItem()->path().isEmpty());
}

void tst_ODAnyCloseLine::showMoveShapeDrawsTheOpenLine()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.SetPenColor(QColor(9, 8, 7));
    for (const QPointF& p : kL)
        line.AddPoint(p);
    line.ShowMoveShape();
    const QPainterPath path = line.pathItem()->path();
    QVERIFY(isOneMoveThenLines(path));
    QCOMPARE(elementPoints(path), kL);
    QCOMPARE(line.pathItem()->pen().color(), QColor(9, 8, 7));
    // Never shown before: the working pen still has its width of 0.
    QCOMPARE(line.pathItem()->pen().width(), 0);
}

void tst_ODAnyCloseLine::showMoveShapeKeepsPenWidthAndBrush()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.SetPenColor(QColor(1, 1, 1));
    line.SetBrushColor(QColor(2, 2, 2));
    line.SetLineWidth(3);
    line.AddPoint(QPointF(10, 10));
    line.ShowShape();

    line.SetPenColor(QColor(200, 0, 0));
    line.SetBrushColor(QColor(0, 200, 0));
    line.SetLineWidth(7);
    line.AddPoint(QPointF(20, 10));
    line.ShowMoveShape();
    QCOMPARE(line.pathItem()->pen().color(), QColor(200, 0, 0));
    QCOMPARE(line.pathItem()->pen().width(), 3);
    QCOMPARE(line.pathItem()->brush(), QBrush(QColor(2, 2, 2), Qt::SolidPattern));
    QCOMPARE(elementPoints(line.pathItem()->path()), (QVector<QPointF>{QPointF(10, 10), QPointF(20, 10)}));
}

void tst_ODAnyCloseLine::showMoveShapeReloadsThePointsFromTheReference()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    place(line, kL);
    Params values = {1, 2, 3, 4};
    line.SetAnyLinePoints(values);
    line.MoveHandleTo(2, QPointF(5, 6));
    line.ShowMoveShape();
    QCOMPARE(elementPoints(line.pathItem()->path()),
             (QVector<QPointF>{QPointF(1, 2), QPointF(3, 4), QPointF(5, 6)}));
}

void tst_ODAnyCloseLine::handlesOnTheEndsAddPointsThere()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    place(line, kL);
    QCOMPARE(line.handles().size(), 2);
    QCOMPARE(line.HitTest(kL.first(), true), 1);
    QCOMPARE(line.HitTest(kL.last(), true), 2);
    line.MoveHandleTo(1, QPointF(1, 2));
    line.MoveHandleTo(2, QPointF(3, 4));
    QCOMPARE(line.orgData(), (Params{1, 2} + slotsOf(kL) + Params{3, 4}));
    line.ShowShape();
    const QVector<QPointF> shown = elementPoints(line.pathItem()->path());
    QCOMPARE(shown.first(), QPointF(1, 2));
    QCOMPARE(shown.last(), QPointF(1, 2));
    QCOMPARE(shown.size(), kL.size() + 3);
}

void tst_ODAnyCloseLine::lineWithoutPointsHasNoHandles()
{
    QGraphicsScene scene;
    ODAnyCloseLine line(&scene);
    line.ShowHandle();
    QVERIFY(line.handles().isEmpty());
    QVERIFY(line.handleItem()->path().isEmpty());
    QCOMPARE(line.HitTest(QPointF(0, 0), true), 0);
}

void tst_ODAnyCloseLine::closedLineIsPaintedWithItsClosingSide()
{
    PictureWindow w;
    const QColor red(230, 20, 20);
    auto* line = Kit::addPointListShape<ODAnyCloseLine>(w, red, QColor(0, 255, 0, 0));
    place(*line, kL);
    line->ShowHandle();

    const QImage image = w.grabViewport();
    ImageCtrlView* view = w.view();
    Kit::verifyColourAt(view, image, {QPointF(60, 40), kOnTheClosingSide}, red.rgb());
    Kit::verifyColourAt(view, image, {kInsideTheL}, Kit::pictureGrey());
    Kit::verifyHandleSquaresOnlyAt(view, image, {kL.first(), kL.last()});
}

void tst_ODAnyCloseLine::lineBeingDrawnIsPaintedOpen()
{
    PictureWindow w;
    const QColor red(230, 20, 20);
    auto* line = Kit::addPointListShape<ODAnyCloseLine>(w, red, QColor(0, 255, 0, 0));
    line->AddPoint(kL.first());
    line->ShowShape();
    for (int i = 1; i < kL.size(); ++i) {
        line->AddPoint(kL[i]);
        line->ShowMoveShape();
    }

    const QImage image = w.grabViewport();
    Kit::verifyColourAt(w.view(), image, {QPointF(120, 70)}, red.rgb());
    Kit::verifyColourAt(w.view(), image, {kOnTheClosingSide}, Kit::pictureGrey());
}

QTEST_MAIN(tst_ODAnyCloseLine)
#include "tst_odanycloseline.moc"
