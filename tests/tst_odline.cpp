// The straight line: two ends with a handle each, shown on whole pixels, hit
// within a strip of 15 scene units with square ends, and a first handle hit
// that takes the end of a line being drawn.

#include "odline.h"
#include "testkit.h"

#include <QGraphicsLineItem>
#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <climits>
#include <cmath>
#include <limits>
#include <typeinfo>

using Kit::CursorView;
using Kit::Params;
using Kit::verifyZValueReaches;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A line shown from its reference, with handle rectangles made.
void place(ODLine& line, float x1, float y1, float x2, float y2)
{
    line.SetLine(x1, y1, x2, y2);
    line.ShowShape();
    line.UpdateHandles();
}

} // namespace

class tst_ODLine : public QObject
{
    Q_OBJECT

private slots:
    void newLineHasBothEndsAtTheOriginAndNoReference();
    void lineAtAPointHasBothEndsAndHandlesThere();
    void firstHandleHitOfADrawnLineTakesTheEnd();
    void missBeforeTheFirstHitKeepsTheMark();
    void endHitWhileTheMarkIsSetGivesANumberNoHandleHas();
    void nearLineIsAStripWithSquareEnds_data();
    void nearLineIsAStripWithSquareEnds();
    void nearLineOfNoLengthIsNeverNear_data();
    void nearLineOfNoLengthIsNeverNear();
    void bodyHitUsesTheLineOnWholePixels_data();
    void bodyHitUsesTheLineOnWholePixels();
    void showShapeDrawsOnWholePixelsWhileTheParametersKeepTheirFractions();
    void wholePixelRoundsAsToPointAndStaysWithinInt_data();
    void wholePixelRoundsAsToPointAndStaysWithinInt();
    void endsBeyondIntAreShownAtTheLimitsAndNaNAtZero();
    void hideShapeEmptiesTheLine();
    void handleDragMovesThatEnd_data();
    void handleDragMovesThatEnd();
    void updateOrgDataWritesTheSlotsOfTheNumber_data();
    void updateOrgDataWritesTheSlotsOfTheNumber();
    void updateOrgDataRebuildsAMissingReference();
    void updateCurDataNeedsFourSlots();
    void moveShapeShiftsBothEnds();
    void getParamNeedsFourSlots();
    void setZValueReachesBothItems();
    void showHandlePutsTheSquaresInSceneUnits();
    void handleCursorOnViewport_data();
    void handleCursorOnViewport();
    void drawnLineIsPaintedOnWholePixels();
};

void tst_ODLine::newLineHasBothEndsAtTheOriginAndNoReference()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    QCOMPARE(line.GetDrawMode(), DM_LINE);
    QCOMPARE(line.startPoint(), QPointF(0, 0));
    QCOMPARE(line.endPoint(), QPointF(0, 0));
    QVERIFY(!line.firstHit());
    QVERIFY(line.orgData().isEmpty());
    QVERIFY(line.handles().isEmpty());
    QVERIFY(line.lineItem() != nullptr);
    QCOMPARE(line.lineItem()->scene(), &scene);
    QVERIFY(line.lineItem()->line().isNull());
    // A plain handle item: blue, the cross cursor, above the line by order.
    QGraphicsPathItem* handle = line.handleItem();
    QVERIFY(handle != nullptr);
    QVERIFY(typeid(*handle) == typeid(QGraphicsPathItem));
    QCOMPARE(handle->scene(), &scene);
    QCOMPARE(handle->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    QVERIFY(handle->hasCursor());
    QCOMPARE(handle->cursor().shape(), Qt::CrossCursor);
    QVERIFY(handle->path().isEmpty());
    QCOMPARE(scene.items(Qt::AscendingOrder).last(), handle);
}

void tst_ODLine::lineAtAPointHasBothEndsAndHandlesThere()
{
    QGraphicsScene scene;
    const QPointF p(12.5, 7.25);
    ODLine line(&scene, p);
    QCOMPARE(line.startPoint(), p);
    QCOMPARE(line.endPoint(), p);
    QVERIFY(line.firstHit());
    QVERIFY(line.orgData().isEmpty());
    QCOMPARE(line.handles().size(), 2);
    QCOMPARE(line.handles().value(0), line.MakeElpHandle(p));
    QCOMPARE(line.handles().value(1), line.MakeElpHandle(p));
    QCOMPARE(line.handleItem()->cursor().shape(), Qt::CrossCursor);
}

void tst_ODLine::firstHandleHitOfADrawnLineTakesTheEnd()
{
    QGraphicsScene scene;
    const QPointF press(40, 30);
    ODLine line(&scene, press);
    QCOMPARE(line.HitTest(press, true), 2);
    QVERIFY(!line.firstHit());

    // The drag draws the line from its start.
    line.MoveHandleTo(2, QPointF(90, 60));
    QCOMPARE(line.orgData(), (Params{40, 30, 90, 60}));
    line.ShowShape();
    line.UpdateHandles();
    // Later hits on the same end, once the ends have parted, give its own number.
    QCOMPARE(line.HitTest(press, true), 1);
    QCOMPARE(line.HitTest(press, true), 1);
    QCOMPARE(line.HitTest(QPointF(90, 60), true), 2);
    QCOMPARE(line.HitTest(QPointF(65, 45), true), 0);
}

void tst_ODLine::missBeforeTheFirstHitKeepsTheMark()
{
    QGraphicsScene scene;
    ODLine line(&scene, QPointF(40, 30));
    QCOMPARE(line.HitTest(QPointF(50, 30), true), 0);
    QVERIFY(line.firstHit());
    // The body test leaves the mark alone too.
    QCOMPARE(line.HitTest(QPointF(40, 30), false), 0);
    QVERIFY(line.firstHit());
    QCOMPARE(line.HitTest(QPointF(42, 32), true), 2);
    QVERIFY(!line.firstHit());
}

void tst_ODLine::endHitWhileTheMarkIsSetGivesANumberNoHandleHas()
{
    QGraphicsScene scene;
    ODLine line(&scene, QPointF(0, 0));
    place(line, 10, 10, 50, 10);
    QCOMPARE(line.HitTest(QPointF(50, 10), true), 3);
    QVERIFY(!line.firstHit());
    // A drag with that number moves nothing.
    line.MoveHandleTo(3, QPointF(70, 70));
    QCOMPARE(line.orgData(), (Params{10, 10, 50, 10}));
    QCOMPARE(line.startPoint(), QPointF(10, 10));
    QCOMPARE(line.endPoint(), QPointF(50, 10));
}

void tst_ODLine::nearLineIsAStripWithSquareEnds_data()
{
    QTest::addColumn<QPointF>("start");
    QTest::addColumn<QPointF>("end");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<bool>("near");
    const QPointF a(10, 20), b(110, 20);
    QTest::newRow("on the line") << a << b << QPointF(60, 20) << 15 << true;
    QTest::newRow("exactly 15 above") << a << b << QPointF(60, 5) << 15 << true;
    QTest::newRow("exactly 15 below") << a << b << QPointF(60, 35) << 15 << true;
    QTest::newRow("15.5 below") << a << b << QPointF(60, 35.5) << 15 << false;
    QTest::newRow("15.5 above") << a << b << QPointF(60, 4.5) << 15 << false;
    QTest::newRow("on the start") << a << b << a << 15 << true;
    QTest::newRow("on the end") << a << b << b << 15 << true;
    QTest::newRow("1 beyond the end on the axis") << a << b << QPointF(111, 20) << 15 << false;
    QTest::newRow("1 before the start on the axis") << a << b << QPointF(9, 20) << 15 << false;
    QTest::newRow("square end: 15 off the end") << a << b << QPointF(110, 35) << 15 << true;
    QTest::newRow("square end: a little beyond, 15 off") << a << b << QPointF(110.5, 35) << 15 << false;
    QTest::newRow("far beyond the end on the axis") << a << b << QPointF(1000, 20) << 15 << false;
    QTest::newRow("reversed line, exactly 15") << b << a << QPointF(60, 5) << 15 << true;
    QTest::newRow("reversed line, 15.5") << b << a << QPointF(60, 4.5) << 15 << false;
    QTest::newRow("upright, exactly 15") << QPointF(0, 0) << QPointF(0, 100) << QPointF(15, 50) << 15 << true;
    QTest::newRow("upright, 15.5") << QPointF(0, 0) << QPointF(0, 100) << QPointF(-15.5, 50) << 15 << false;
    // 30 by 40: length 50, unit normal (-0.8, 0.6).
    QTest::newRow("slanted, 14.9 across") << QPointF(0, 0) << QPointF(30, 40)
                                          << QPointF(15 - 0.8 * 14.9, 20 + 0.6 * 14.9) << 15 << true;
    QTest::newRow("slanted, 15.1 across") << QPointF(0, 0) << QPointF(30, 40)
                                          << QPointF(15 - 0.8 * 15.1, 20 + 0.6 * 15.1) << 15 << false;
    QTest::newRow("slanted, beyond the end") << QPointF(0, 0) << QPointF(30, 40) << QPointF(30.6, 40.8) << 15
                                             << false;
    QTest::newRow("tolerance 0, on the line") << a << b << QPointF(30, 20) << 0 << true;
    QTest::newRow("tolerance 0, off by a tenth") << a << b << QPointF(30, 20.1) << 0 << false;
    QTest::newRow("NaN point") << a << b << QPointF(kNaN, 20) << 15 << false;
}

void tst_ODLine::nearLineIsAStripWithSquareEnds()
{
    QFETCH(QPointF, start);
    QFETCH(QPointF, end);
    QFETCH(QPointF, point);
    QFETCH(int, tolerance);
    QFETCH(bool, near);
    QCOMPARE(isPointNearLine(point, start, end, tolerance), near);
}

void tst_ODLine::nearLineOfNoLengthIsNeverNear_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::newRow("on the point") << QPointF(25, 25);
    QTest::newRow("1 away") << QPointF(26, 25);
    QTest::newRow("far away") << QPointF(500, -500);
    QTest::newRow("NaN") << QPointF(kNaN, kNaN);
}

void tst_ODLine::nearLineOfNoLengthIsNeverNear()
{
    QFETCH(QPointF, point);
    const QPointF p(25, 25);
    QVERIFY(!isPointNearLine(point, p, p, 15));
    QVERIFY(!isPointNearLine(point, p, p, INT_MAX));

    // The same through a line whose ends coincide.
    QGraphicsScene scene;
    ODLine line(&scene, p);
    line.ShowShape();
    QCOMPARE(line.HitTest(point, false), 0);
}

void tst_ODLine::bodyHitUsesTheLineOnWholePixels_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    // Reference (10.4, 20.4) to (100.4, 20.4), shown from (10, 20) to (100, 20).
    QTest::newRow("on the line") << QPointF(50, 20.4) << 1;
    QTest::newRow("15 above the shown line, 15.4 above the reference") << QPointF(50, 5) << 1;
    QTest::newRow("15.5 above the shown line") << QPointF(50, 4.5) << 0;
    QTest::newRow("15 below the shown line, 14.6 below the reference") << QPointF(50, 35) << 1;
    QTest::newRow("15.3 below the shown line, 14.9 below the reference") << QPointF(50, 35.3) << 0;
    QTest::newRow("on the shown end") << QPointF(100, 20) << 1;
    QTest::newRow("beyond the shown end, within the reference") << QPointF(100.3, 20) << 0;
    QTest::newRow("before the reference start, on the shown line") << QPointF(10.2, 20) << 1;
    QTest::newRow("1 beyond the end on the axis") << QPointF(101, 20) << 0;
}

void tst_ODLine::bodyHitUsesTheLineOnWholePixels()
{
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODLine line(&scene);
    place(line, 10.4f, 20.4f, 100.4f, 20.4f);
    QCOMPARE(line.HitTest(point, false), hit);
    QCOMPARE(line.HitTest(point, false),
             isPointNearLine(point, QPointF(10, 20), QPointF(100, 20), 15) ? 1 : 0);
}

void tst_ODLine::showShapeDrawsOnWholePixelsWhileTheParametersKeepTheirFractions()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    line.SetPenColor(QColor(200, 10, 20));
    line.SetBrushColor(QColor(1, 2, 3));
    line.SetLineWidth(2.9f);
    line.SetLine(10.4f, 20.6f, 99.5f, -30.5f);
    line.ShowShape();
    QCOMPARE(line.lineItem()->line(), QLineF(10, 21, 100, -30));
    QCOMPARE(line.lineItem()->line(), QLineF(line.startPoint().toPoint(), line.endPoint().toPoint()));
    // The current ends and the reference keep the fractions.
    QCOMPARE(line.startPoint(), QPointF(double(10.4f), double(20.6f)));
    QCOMPARE(line.endPoint(), QPointF(99.5, -30.5));
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    QVERIFY(line.GetParam(&x1, &y1, &x2, &y2));
    QCOMPARE((Params{x1, y1, x2, y2}), (Params{double(10.4f), double(20.6f), 99.5, -30.5}));
    QCOMPARE(line.lineItem()->pen().color(), QColor(200, 10, 20));
    QCOMPARE(line.lineItem()->pen().width(), 2);

    line.SetLineWidth(0.9f);
    line.ShowShape();
    QCOMPARE(line.lineItem()->pen().width(), 0);
}

void tst_ODLine::wholePixelRoundsAsToPointAndStaysWithinInt_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPoint>("pixel");
    const double values[] = {0.0, 0.49, 0.5, 1.5, 2.5, -0.5, -1.5, -2.5, -2.51, 1e9, -1e9, 123.456};
    for (double v : values)
        QTest::addRow("%g", v) << QPointF(v, -v) << QPointF(v, -v).toPoint();
    QTest::newRow("NaN") << QPointF(kNaN, 3.6) << QPoint(0, 4);
    QTest::newRow("beyond int") << QPointF(1e300, -1e300) << QPoint(INT_MAX, INT_MIN);
}

void tst_ODLine::wholePixelRoundsAsToPointAndStaysWithinInt()
{
    QFETCH(QPointF, point);
    QFETCH(QPoint, pixel);
    QCOMPARE(WholePixel(point), pixel);
}

void tst_ODLine::endsBeyondIntAreShownAtTheLimitsAndNaNAtZero()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    place(line, float(kNaN), 10, 3e9f, -3e9f);
    QCOMPARE(line.lineItem()->line(), QLineF(0, 10, INT_MAX, INT_MIN));
    // The body test runs on the shown ends.
    QCOMPARE(line.HitTest(QPointF(0, 10), false), 1);
    QCOMPARE(line.HitTest(QPointF(-20, 10), false), 0);
}

void tst_ODLine::hideShapeEmptiesTheLine()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    place(line, 1, 2, 30, 40);
    QVERIFY(!line.lineItem()->line().isNull());
    line.ShowHandle();
    line.HideShape();
    QVERIFY(line.lineItem()->line().isNull());
    QCOMPARE(line.lineItem()->scene(), &scene);
    // The handles and the reference stay.
    QVERIFY(!line.handleItem()->path().isEmpty());
    QCOMPARE(line.orgData(), (Params{1, 2, 30, 40}));
}

void tst_ODLine::handleDragMovesThatEnd_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference (10, 20) to (30, 40); the drag goes to (55.5, 66.25).
    QTest::newRow("1 moves the start") << 1 << Params{55.5, 66.25, 30, 40};
    QTest::newRow("2 moves the end") << 2 << Params{10, 20, 55.5, 66.25};
    QTest::newRow("0 moves nothing") << 0 << Params{10, 20, 30, 40};
    QTest::newRow("3 moves nothing") << 3 << Params{10, 20, 30, 40};
    QTest::newRow("-1 moves nothing") << -1 << Params{10, 20, 30, 40};
}

void tst_ODLine::handleDragMovesThatEnd()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODLine line(&scene);
    place(line, 10, 20, 30, 40);
    line.MoveHandleTo(number, QPointF(55.5, 66.25));
    QCOMPARE(line.orgData(), expected);
    QCOMPARE(line.startPoint(), QPointF(expected[0], expected[1]));
    QCOMPARE(line.endPoint(), QPointF(expected[2], expected[3]));
}

void tst_ODLine::updateOrgDataWritesTheSlotsOfTheNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference 1, 2, 3, 4; current ends (10, 20) and (30, 40).
    QTest::newRow("1 the start") << 1 << Params{10, 20, 3, 4};
    QTest::newRow("2 the end") << 2 << Params{1, 2, 30, 40};
    QTest::newRow("0 nothing") << 0 << Params{1, 2, 3, 4};
    QTest::newRow("3 nothing") << 3 << Params{1, 2, 3, 4};
    QTest::newRow("-1 nothing") << -1 << Params{1, 2, 3, 4};
}

void tst_ODLine::updateOrgDataWritesTheSlotsOfTheNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODLine line(&scene);
    place(line, 10, 20, 30, 40);
    line.SetLine(1, 2, 3, 4);
    line.UpdateOrgData(number);
    QCOMPARE(line.orgData(), expected);
}

void tst_ODLine::updateOrgDataRebuildsAMissingReference()
{
    QGraphicsScene scene;
    ODLine line(&scene, QPointF(5.5, 6.25));
    line.UpdateOrgData(0);
    QCOMPARE(line.orgData(), (Params{5.5, 6.25, 5.5, 6.25}));

    ODLine moved(&scene, QPointF(1, 2));
    moved.MoveShape(QPointF(3, 4));
    QCOMPARE(moved.orgData(), (Params{4, 6, 4, 6}));
}

void tst_ODLine::updateCurDataNeedsFourSlots()
{
    QGraphicsScene scene;
    ODLine line(&scene, QPointF(7, 8));
    line.UpdateCurData();
    QCOMPARE(line.startPoint(), QPointF(7, 8));
    QCOMPARE(line.endPoint(), QPointF(7, 8));
    line.SetLine(1, 2, 3, 4);
    line.UpdateCurData();
    QCOMPARE(line.startPoint(), QPointF(1, 2));
    QCOMPARE(line.endPoint(), QPointF(3, 4));
}

void tst_ODLine::moveShapeShiftsBothEnds()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    place(line, 10, 20, 30, 40);
    line.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(line.startPoint(), QPointF(10.5, 17.75));
    QCOMPARE(line.endPoint(), QPointF(30.5, 37.75));
    QCOMPARE(line.orgData(), (Params{10.5, 17.75, 30.5, 37.75}));
    line.ShowShape();
    QCOMPARE(line.lineItem()->line(), QLineF(11, 18, 31, 38));
}

void tst_ODLine::getParamNeedsFourSlots()
{
    QGraphicsScene scene;
    ODLine line(&scene, QPointF(3, 4));
    double x1 = -1, y1 = -2, x2 = -3, y2 = -4;
    QVERIFY(!line.GetParam(&x1, &y1, &x2, &y2));
    QCOMPARE((Params{x1, y1, x2, y2}), (Params{-1, -2, -3, -4}));
    line.SetLine(5, 6, 7, 8.5f);
    QVERIFY(line.GetParam(&x1, &y1, &x2, &y2));
    QCOMPARE((Params{x1, y1, x2, y2}), (Params{5, 6, 7, 8.5}));
    QVERIFY(line.GetParam(nullptr, nullptr, nullptr, nullptr));
}

void tst_ODLine::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    verifyZValueReaches(line, {line.lineItem(), line.handleItem()});
    // Showing the handles leaves the z value alone.
    line.setZValue(12);
    place(line, 1, 1, 9, 9);
    line.ShowHandle();
    QCOMPARE(line.handleItem()->zValue(), 12.0);
}

void tst_ODLine::showHandlePutsTheSquaresInSceneUnits()
{
    QGraphicsScene scene;
    ODLine line(&scene);
    line.SetScale(0.5f);
    line.SetPenColor(QColor(9, 8, 7));
    place(line, 10, 20, 110, 20);
    line.ShowHandle();
    QVERIFY(line.isVisiblehandleMark());
    QPainterPath expected;
    expected.addRect(QRectF(4, 14, 12, 12));
    expected.addRect(QRectF(104, 14, 12, 12));
    QCOMPARE(line.handleItem()->path(), expected);
    QCOMPARE(line.handleItem()->pen().width(), 0);
    QCOMPARE(line.handleItem()->pen().color(), QColor(9, 8, 7));
    line.HideHandle();
    QVERIFY(!line.isVisiblehandleMark());
    QVERIFY(line.handleItem()->path().isEmpty());
}

void tst_ODLine::handleCursorOnViewport_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<Qt::CursorShape>("cursor");
    QTest::newRow("start") << QPointF(10, 20) << Qt::CrossCursor;
    QTest::newRow("end, 3 off") << QPointF(113, 17) << Qt::CrossCursor;
    QTest::newRow("on the line between") << QPointF(60, 20) << Qt::ArrowCursor;
    QTest::newRow("outside") << QPointF(-50, -50) << Qt::ArrowCursor;
}

void tst_ODLine::handleCursorOnViewport()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODLine line(&v.scene, QPointF(10, 20));
    line.SetLine(10, 20, 110, 20);
    line.ShowShape();
    line.ShowHandle();
    line.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);
    // Asking for the cursor is no hit: the first hit still takes the end.
    QVERIFY(line.firstHit());

    line.HideHandle();
    v.view.viewport()->setCursor(Qt::WaitCursor);
    line.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), Qt::ArrowCursor);
}


// At zoom 4 a pen of width 1 is a band of 4 device pixels. Shown from
// (10.4, 30.4) to (60.4, 30.4), the line lies on y 30 from x 10 to x 60, and its
// square caps reach half a unit beyond each end.
void tst_ODLine::drawnLineIsPaintedOnWholePixels()
{
    Kit::PictureWindow window(4.0);
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    const QRgb red = qRgb(230, 20, 20);
    ODLine line(window.scene());
    line.SetPenColor(QColor(red));
    line.SetLineWidth(1.0f);
    line.SetLine(10.4f, 30.4f, 60.4f, 30.4f);
    line.ShowShape();
    QVERIFY(Kit::mapsToWholePixel(view, QPointF(10, 30)));

    const QImage image = Kit::grabViewport(view);
    const QTransform toDevice = view->viewportTransform();
    const QPoint topLeft = toDevice.map(QPointF(9.5, 29.5)).toPoint();
    const QPoint bottomRight = toDevice.map(QPointF(60.5, 30.5)).toPoint();
    const QRect band(topLeft, QSize(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y()));
    QCOMPARE(band.height(), 4);
    QCOMPARE(band.width(), 51 * 4);
    const Kit::Blob blob = Kit::findColour(image, band.adjusted(-12, -12, 12, 12), red);
    QCOMPARE(blob.bounds, band);
    QCOMPARE(blob.count, band.width() * band.height());
}

QTEST_MAIN(tst_ODLine)
#include "tst_odline.moc"
