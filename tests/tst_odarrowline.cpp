// The arrow line: a head of constant size on the second end with its wings on
// whole offsets from the tip, a body stroke of 15 scene units, and handle hits
// that take the end while both ends coincide. The end handling it shares with
// the straight line (slots per handle number, cursors, reading back) is tested
// with the line.

#include "odarrowline.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <climits>
#include <cmath>
#include <typeinfo>

using Kit::Params;
using Kit::verifyZValueReaches;

namespace {

// An arrow shown from its reference, with handle rectangles made.
void place(ODArrowLine& arrow, float x1, float y1, float x2, float y2)
{
    arrow.SetLine(x1, y1, x2, y2);
    arrow.ShowShape();
    arrow.UpdateHandles();
}

QPointF elementAt(const QPainterPath& path, int i)
{
    return QPointF(path.elementAt(i).x, path.elementAt(i).y);
}

} // namespace

class tst_ODArrowLine : public QObject
{
    Q_OBJECT

private slots:
    void newArrowHasBothEndsAtTheOriginAndNoReference();
    void arrowAtAPointHasBothEndsAndHandlesThere();
    void handleHitOnCoincidingEndsTakesTheEnd();
    void handleHitOnPartedEndsGivesTheirNumbers();
    void wingsSitOnWholeOffsetsFromTheTip_data();
    void wingsSitOnWholeOffsetsFromTheTip();
    void showShapeDrawsTheLineAndTheHead();
    void hideShapeEmptiesThePath();
    void bodyHitIsAStrokeOfFifteenAlongTheLine_data();
    void bodyHitIsAStrokeOfFifteenAlongTheLine();
    void arrowOfNoLengthHasNoBody();
    void handleDragMovesThatEnd_data();
    void handleDragMovesThatEnd();
    void moveShapeShiftsBothEndsAndTheHead();
    void setZValueReachesBothItems();
    void arrowHeadIsPaintedAtTheTip();
};

void tst_ODArrowLine::newArrowHasBothEndsAtTheOriginAndNoReference()
{
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    QCOMPARE(arrow.GetDrawMode(), DM_ARROWLINE);
    QCOMPARE(arrow.startPoint(), QPointF(0, 0));
    QCOMPARE(arrow.endPoint(), QPointF(0, 0));
    QVERIFY(arrow.orgData().isEmpty());
    QVERIFY(arrow.handles().isEmpty());
    QVERIFY(arrow.arrowItem() != nullptr);
    QCOMPARE(arrow.arrowItem()->scene(), &scene);
    QVERIFY(arrow.arrowItem()->path().isEmpty());
    QGraphicsPathItem* handle = arrow.handleItem();
    QVERIFY(handle != nullptr);
    QVERIFY(typeid(*handle) == typeid(QGraphicsPathItem));
    QCOMPARE(handle->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    QCOMPARE(handle->cursor().shape(), Qt::CrossCursor);
    QCOMPARE(scene.items(Qt::AscendingOrder).last(), handle);
}

void tst_ODArrowLine::arrowAtAPointHasBothEndsAndHandlesThere()
{
    QGraphicsScene scene;
    const QPointF p(12.5, 7.25);
    ODArrowLine arrow(&scene, p);
    QCOMPARE(arrow.startPoint(), p);
    QCOMPARE(arrow.endPoint(), p);
    QVERIFY(arrow.orgData().isEmpty());
    QCOMPARE(arrow.handles().size(), 2);
    QCOMPARE(arrow.handles().value(0), arrow.MakeElpHandle(p));
    QCOMPARE(arrow.handles().value(1), arrow.MakeElpHandle(p));
}

void tst_ODArrowLine::handleHitOnCoincidingEndsTakesTheEnd()
{
    QGraphicsScene scene;
    const QPointF press(40, 30);
    ODArrowLine arrow(&scene, press);
    // Every hit, not just the first, while the ends coincide.
    QCOMPARE(arrow.HitTest(press, true), 2);
    QCOMPARE(arrow.HitTest(press + QPointF(-3, 3), true), 2);
    QCOMPARE(arrow.HitTest(press, true), 2);
    QCOMPARE(arrow.HitTest(press + QPointF(4, 0), true), 0);

    // Ends set to coincide elsewhere behave the same.
    place(arrow, 70, 80, 70, 80);
    QCOMPARE(arrow.HitTest(QPointF(70, 80), true), 2);
    QCOMPARE(arrow.HitTest(QPointF(40, 30), true), 0);
}

void tst_ODArrowLine::handleHitOnPartedEndsGivesTheirNumbers()
{
    QGraphicsScene scene;
    const QPointF press(40, 30);
    ODArrowLine arrow(&scene, press);
    QCOMPARE(arrow.HitTest(press, true), 2);
    arrow.MoveHandleTo(2, QPointF(90, 60));
    arrow.ShowShape();
    arrow.UpdateHandles();
    QCOMPARE(arrow.HitTest(press, true), 1);
    QCOMPARE(arrow.HitTest(QPointF(90, 60), true), 2);
    QCOMPARE(arrow.HitTest(QPointF(65, 45), true), 0);
}

void tst_ODArrowLine::wingsSitOnWholeOffsetsFromTheTip_data()
{
    QTest::addColumn<QPointF>("start");
    QTest::addColumn<QPointF>("tip");
    QTest::addColumn<QPointF>("firstWing");
    QTest::addColumn<QPointF>("secondWing");
    // 7 back along the line and 3.5 to each side, each offset truncated.
    QTest::newRow("pointing right") << QPointF(0, 50) << QPointF(40, 50) << QPointF(33, 53) << QPointF(33, 47);
    QTest::newRow("length 0 points right") << QPointF(40, 50) << QPointF(40, 50) << QPointF(33, 53)
                                           << QPointF(33, 47);
    QTest::newRow("pointing down") << QPointF(40, 10) << QPointF(40, 50) << QPointF(37, 43) << QPointF(43, 43);
    QTest::newRow("pointing left") << QPointF(40, 50) << QPointF(0, 50) << QPointF(7, 47) << QPointF(7, 53);
    QTest::newRow("pointing up") << QPointF(40, 50) << QPointF(40, 10) << QPointF(43, 17) << QPointF(37, 17);
    QTest::newRow("45 degrees down right") << QPointF(0, 0) << QPointF(50, 50) << QPointF(43, 48)
                                           << QPointF(48, 43);
    QTest::newRow("30 degrees down right") << QPointF(-86.6, -50) << QPointF(0, 0) << QPointF(-7, 0)
                                           << QPointF(-4, -6);
    // -2.47 becomes -2 before it meets 10.2: 8, where one cast of the sum gives 7.
    QTest::newRow("fractional tip: the offset is truncated first") << QPointF(0.2, 0.2) << QPointF(10.2, 10.2)
                                                                   << QPointF(3, 8) << QPointF(8, 3);
    QTest::newRow("tip beyond int: the wings stop at its limit") << QPointF(0, 0) << QPointF(3e9, 0)
                                                                 << QPointF(INT_MAX, 3) << QPointF(INT_MAX, -3);
    QTest::newRow("negative sums truncate toward zero") << QPointF(-20, 0) << QPointF(-10.5, 0)
                                                        << QPointF(-17, 3) << QPointF(-17, -3);
}

void tst_ODArrowLine::wingsSitOnWholeOffsetsFromTheTip()
{
    QFETCH(QPointF, start);
    QFETCH(QPointF, tip);
    QFETCH(QPointF, firstWing);
    QFETCH(QPointF, secondWing);
    // The head is the last three elements: first wing, tip, second wing. A line
    // of no length adds nothing before them, the path dropping a line to where
    // it stands and a move followed by another.
    const QPainterPath path = ODArrowLine::arrowPath(start, tip);
    QCOMPARE(path.elementCount(), start == tip ? 3 : 5);
    const int n = path.elementCount();
    QCOMPARE(elementAt(path, n - 3), firstWing);
    QCOMPARE(path.elementAt(n - 3).type, QPainterPath::MoveToElement);
    QCOMPARE(elementAt(path, n - 2), tip);
    QCOMPARE(elementAt(path, n - 1), secondWing);
    // Through the shape, from its reference.
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    place(arrow, float(start.x()), float(start.y()), float(tip.x()), float(tip.y()));
    const QPainterPath shown = arrow.arrowItem()->path();
    const int m = shown.elementCount();
    QCOMPARE(elementAt(shown, m - 3), firstWing);
    QCOMPARE(elementAt(shown, m - 1), secondWing);
}

void tst_ODArrowLine::showShapeDrawsTheLineAndTheHead()
{
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    arrow.SetPenColor(QColor(200, 10, 20));
    arrow.SetBrushColor(QColor(1, 2, 3, 4));
    arrow.SetLineWidth(2.9f);
    arrow.SetLine(10.5f, 20.25f, 60.5f, 20.25f);
    arrow.ShowShape();
    const QPainterPath path = arrow.arrowItem()->path();
    QCOMPARE(path.elementCount(), 5);
    const QPainterPath::ElementType types[] = {QPainterPath::MoveToElement, QPainterPath::LineToElement,
                                               QPainterPath::MoveToElement, QPainterPath::LineToElement,
                                               QPainterPath::LineToElement};
    const QPointF points[] = {QPointF(10.5, 20.25), QPointF(60.5, 20.25), QPointF(53, 23), QPointF(60.5, 20.25),
                              QPointF(53, 17)};
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(path.elementAt(i).type, types[i]);
        QCOMPARE(elementAt(path, i), points[i]);
    }
    QCOMPARE(arrow.arrowItem()->pen().color(), QColor(200, 10, 20));
    QCOMPARE(arrow.arrowItem()->pen().width(), 2);
    QCOMPARE(arrow.arrowItem()->brush(), QBrush(QColor(1, 2, 3, 4), Qt::SolidPattern));

    arrow.SetLineWidth(0.9f);
    arrow.ShowShape();
    QCOMPARE(arrow.arrowItem()->pen().width(), 0);
}

void tst_ODArrowLine::hideShapeEmptiesThePath()
{
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    place(arrow, 1, 2, 30, 40);
    arrow.ShowHandle();
    arrow.HideShape();
    QVERIFY(arrow.arrowItem()->path().isEmpty());
    QCOMPARE(arrow.arrowItem()->scene(), &scene);
    QVERIFY(!arrow.handleItem()->path().isEmpty());
    QCOMPARE(arrow.orgData(), (Params{1, 2, 30, 40}));
}

void tst_ODArrowLine::bodyHitIsAStrokeOfFifteenAlongTheLine_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    // From (20, 50) to (120, 50); the stroke reaches 7.5 to each side, and the
    // line closed back on itself has no caps.
    QTest::newRow("on the line") << QPointF(70, 50) << 1;
    QTest::newRow("7 below") << QPointF(70, 57) << 1;
    QTest::newRow("7.4 above") << QPointF(70, 42.6) << 1;
    QTest::newRow("7.6 below") << QPointF(70, 57.6) << 0;
    QTest::newRow("8 above") << QPointF(70, 42) << 0;
    QTest::newRow("half a unit beyond the tip") << QPointF(120.5, 50) << 0;
    QTest::newRow("half a unit before the start") << QPointF(19.5, 50) << 0;
    QTest::newRow("on a wing of the head, 3 off the line") << QPointF(113, 53) << 1;
    QTest::newRow("far away") << QPointF(500, 500) << 0;
}

void tst_ODArrowLine::bodyHitIsAStrokeOfFifteenAlongTheLine()
{
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    place(arrow, 20, 50, 120, 50);
    QCOMPARE(arrow.HitTest(point, false), hit);
    // The hit test is no handle test and leaves the handles alone.
    QCOMPARE(arrow.handles().size(), 2);
}

void tst_ODArrowLine::arrowOfNoLengthHasNoBody()
{
    QGraphicsScene scene;
    ODArrowLine arrow(&scene, QPointF(30, 30));
    arrow.ShowShape();
    QCOMPARE(arrow.HitTest(QPointF(30, 30), false), 0);
    QCOMPARE(arrow.HitTest(QPointF(33, 30), false), 0);
    // Its handle still takes it, by the end.
    QCOMPARE(arrow.HitTest(QPointF(30, 30), true), 2);
}

void tst_ODArrowLine::handleDragMovesThatEnd_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    QTest::newRow("1 moves the start") << 1 << Params{55.5, 66.25, 30, 40};
    QTest::newRow("2 moves the tip") << 2 << Params{10, 20, 55.5, 66.25};
    QTest::newRow("0 moves nothing") << 0 << Params{10, 20, 30, 40};
    QTest::newRow("3 moves nothing") << 3 << Params{10, 20, 30, 40};
}

void tst_ODArrowLine::handleDragMovesThatEnd()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    place(arrow, 10, 20, 30, 40);
    arrow.MoveHandleTo(number, QPointF(55.5, 66.25));
    QCOMPARE(arrow.orgData(), expected);
    arrow.ShowShape();
    QCOMPARE(elementAt(arrow.arrowItem()->path(), 0), QPointF(expected[0], expected[1]));
    QCOMPARE(elementAt(arrow.arrowItem()->path(), 1), QPointF(expected[2], expected[3]));
}



void tst_ODArrowLine::moveShapeShiftsBothEndsAndTheHead()
{
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    place(arrow, 10, 20, 50, 20);
    arrow.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(arrow.orgData(), (Params{10.5, 17.75, 50.5, 17.75}));
    arrow.ShowShape();
    QCOMPARE(arrow.arrowItem()->path(), ODArrowLine::arrowPath(QPointF(10.5, 17.75), QPointF(50.5, 17.75)));
    QCOMPARE(elementAt(arrow.arrowItem()->path(), 2), QPointF(43, 20));
}


void tst_ODArrowLine::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODArrowLine arrow(&scene);
    verifyZValueReaches(arrow, {arrow.arrowItem(), arrow.handleItem()});
}




// At zoom 4, a cosmetic pen and an opaque brush: the head from (33, 33) and
// (33, 27) to the tip (40, 30.125) is filled, in scene units whatever the zoom.
void tst_ODArrowLine::arrowHeadIsPaintedAtTheTip()
{
    Kit::PictureWindow window(4.0);
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    const QRgb red = qRgb(230, 20, 20);
    const QRgb green = qRgb(20, 200, 40);
    const QRgb grey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);
    ODArrowLine arrow(window.scene());
    arrow.SetPenColor(QColor(red));
    arrow.SetBrushColor(QColor(green));
    arrow.SetLineWidth(0.0f);
    arrow.SetLine(10, 30.125f, 40, 30.125f);
    arrow.ShowShape();
    QCOMPARE(elementAt(arrow.arrowItem()->path(), 2), QPointF(33, 33));
    QCOMPARE(elementAt(arrow.arrowItem()->path(), 4), QPointF(33, 27));

    const QImage image = Kit::grabViewport(view);
    // The device pixel that holds a scene point.
    auto pixelOf = [view](double x, double y) {
        const QPointF device = view->viewportTransform().map(QPointF(x, y));
        return QPoint(int(std::floor(device.x())), int(std::floor(device.y())));
    };
    auto colourAt = [&](double x, double y) { return image.pixel(pixelOf(x, y)); };
    // The line in the pen, one device pixel thick on a row of its own.
    KIT_COMPARE_COLOUR(colourAt(20, 30.125), red, 1);
    KIT_COMPARE_COLOUR(colourAt(20, 29.6), grey, 1);
    // The head's inside, above and below the line, in the brush.
    KIT_COMPARE_COLOUR(colourAt(35, 29), green, 1);
    KIT_COMPARE_COLOUR(colourAt(35, 31), green, 1);
    KIT_COMPARE_COLOUR(colourAt(37, 30.6), green, 1);
    // Nothing beyond the tip, before the wings or outside them.
    KIT_COMPARE_COLOUR(colourAt(41, 30.125), grey, 1);
    KIT_COMPARE_COLOUR(colourAt(32, 28), grey, 1);
    KIT_COMPARE_COLOUR(colourAt(35, 33.5), grey, 1);
    KIT_COMPARE_COLOUR(colourAt(35, 26.5), grey, 1);
    // Along a row just below the line, green from the wings almost to the tip.
    const int row = pixelOf(0, 30.75).y();
    const Kit::Blob head = Kit::findColour(image, QRect(0, row, image.width(), 1), green);
    QVERIFY2(head.bounds.left() >= pixelOf(33, 0).x() && head.bounds.left() <= pixelOf(33.5, 0).x(),
             qPrintable(QString::number(head.bounds.left())));
    QVERIFY2(head.bounds.right() >= pixelOf(37, 0).x() && head.bounds.right() < pixelOf(40, 0).x(),
             qPrintable(QString::number(head.bounds.right())));
}

QTEST_MAIN(tst_ODArrowLine)
#include "tst_odarrowline.moc"
