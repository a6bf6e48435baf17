// The point: a cross of arms in scene units and one handle, grabbed only
// within its handle rectangle, whose handle numbers and store numbers are all
// the same to it.

#include "odpoint.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <cmath>
#include <typeinfo>

using Kit::CursorView;
using Kit::Params;
using Kit::verifyZValueReaches;

namespace {

// A point shown from its reference.
void place(ODPoint& point, double x, double y)
{
    point.SetPoint(x, y);
    point.ShowShape();
}

// The cross a point at (x, y) with arms of size shows.
QPainterPath crossAt(double x, double y, int size)
{
    QPainterPath path;
    path.moveTo(x - size, y);
    path.lineTo(x + size, y);
    path.moveTo(x, y - size);
    path.lineTo(x, y + size);
    return path;
}

} // namespace

class tst_ODPoint : public QObject
{
    Q_OBJECT

private slots:
    void newPointHasItsHandleOnTheOrigin();
    void pointAtAPressHasItsHandleThere();
    void pointShownBeforeAnyReferenceStaysWhereItIs();
    void hitReachesThreeUnitsNotFour_data();
    void hitReachesThreeUnitsNotFour();
    void hitMakesTheHandleAnewBeforeItLooks();
    void showShapeDrawsACrossWithoutBrush_data();
    void showShapeDrawsACrossWithoutBrush();
    void crossArmsStayInSceneUnitsAtAnyZoom();
    void hideShapeEmptiesTheCross();
    void updateOrgDataIgnoresTheNumberAndRewritesBothSlots_data();
    void updateOrgDataIgnoresTheNumberAndRewritesBothSlots();
    void handleDragMovesThePointWhateverTheNumber_data();
    void handleDragMovesThePointWhateverTheNumber();
    void moveShapeAddsTheDelta();
    void adjustParameterStoresThePointAndLeavesTheHandle();
    void getParamNeedsExactlyTwoSlots();
    void setZValueReachesBothItems();
    void showHandlePutsTheSquareInSceneUnits();
    void handleCursorIsTheBases();
    void crossIsPaintedWithArmsOfItsSize();
};

void tst_ODPoint::newPointHasItsHandleOnTheOrigin()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    QCOMPARE(point.GetDrawMode(), DM_POINT);
    QCOMPARE(point.crossSize(), 5);
    QCOMPARE(point.point(), QPointF(0, 0));
    QVERIFY(point.orgData().isEmpty());
    QCOMPARE(point.handles().size(), 1);
    QCOMPARE(point.handles().value(0), QRectF(-3, -3, 6, 6));
    QVERIFY(point.crossItem() != nullptr);
    QCOMPARE(point.crossItem()->scene(), &scene);
    QVERIFY(point.crossItem()->path().isEmpty());
    QGraphicsPathItem* handle = point.handleItem();
    QVERIFY(handle != nullptr);
    QVERIFY(typeid(*handle) == typeid(QGraphicsPathItem));
    QCOMPARE(handle->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    // No cursor of its own: the point keeps the base's.
    QVERIFY(!handle->hasCursor());
    QCOMPARE(scene.items(Qt::AscendingOrder).last(), handle);
}

void tst_ODPoint::pointAtAPressHasItsHandleThere()
{
    QGraphicsScene scene;
    const QPointF p(12.5, 7.25);
    ODPoint point(&scene, p);
    QCOMPARE(point.point(), p);
    QVERIFY(point.orgData().isEmpty());
    QCOMPARE(point.handles().size(), 1);
    QCOMPARE(point.handles().value(0), point.MakeElpHandle(p));
}

// Without a reference there is nothing to read: the point shows where it
// stands, and a drag or AdjustParameter gives it its reference.
void tst_ODPoint::pointShownBeforeAnyReferenceStaysWhereItIs()
{
    QGraphicsScene scene;
    ODPoint point(&scene, QPointF(20, 30));
    point.ShowShape();
    QCOMPARE(point.point(), QPointF(20, 30));
    QVERIFY(point.orgData().isEmpty());
    QCOMPARE(point.crossItem()->path(), crossAt(20, 30, 5));
    double x = -1, y = -1;
    QVERIFY(!point.GetParam(&x, &y));

    ODPoint plain(&scene);
    plain.ShowShape();
    QCOMPARE(plain.point(), QPointF(0, 0));
    QCOMPARE(plain.crossItem()->path(), crossAt(0, 0, 5));

    point.AdjustParameter();
    QCOMPARE(point.orgData(), (Params{20, 30}));
}

void tst_ODPoint::hitReachesThreeUnitsNotFour_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<int>("hit");
    for (double zoom : {1.0, 4.0}) {
        const struct
        {
            const char* name;
            QPointF offset;
            int hit;
        } rows[] = {
            {"on the point", {0, 0}, 1},
            {"3 right", {3, 0}, 1},
            {"3 above", {0, -3}, 1},
            {"3 left and 3 below", {-3, 3}, 1},
            {"4 right", {4, 0}, 0},
            {"4 below", {0, 4}, 0},
            {"on the arm, 5 left", {-5, 0}, 0},
        };
        for (const auto& row : rows)
            QTest::addRow("zoom %g, %s", zoom, row.name) << zoom << row.offset << row.hit;
    }
    // Zoomed out the handle keeps its screen size: 3 device pixels are 12 units.
    QTest::newRow("zoom 0.25, 12 right") << 0.25 << QPointF(12, 0) << 1;
    QTest::newRow("zoom 0.25, 13 right") << 0.25 << QPointF(13, 0) << 0;
}

void tst_ODPoint::hitReachesThreeUnitsNotFour()
{
    QFETCH(double, zoom);
    QFETCH(QPointF, offset);
    QFETCH(int, hit);
    Kit::ZoomedShape<ODPoint> zoomed(zoom);
    ODPoint& point = zoomed.shape;
    place(point, 50, 40);
    // Body and handle tests give the same answer.
    QCOMPARE(point.HitTest(QPointF(50, 40) + offset, false), hit);
    QCOMPARE(point.HitTest(QPointF(50, 40) + offset, true), hit);
}

void tst_ODPoint::hitMakesTheHandleAnewBeforeItLooks()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    place(point, 50, 40);
    // Shown, but the handle still stands where the point was made.
    QCOMPARE(point.handles().value(0).center(), QPointF(0, 0));
    QCOMPARE(point.HitTest(QPointF(51, 41), false), 1);
    QCOMPARE(point.handles().value(0).center(), QPointF(50, 40));
    QCOMPARE(point.HitTest(QPointF(0, 0), true), 0);

    // A scale set since is taken at the next hit.
    point.SetScale(0.5f);
    QCOMPARE(point.HitTest(QPointF(55, 40), true), 1);
    QCOMPARE(point.handles().value(0), QRectF(44, 34, 12, 12));
}

void tst_ODPoint::showShapeDrawsACrossWithoutBrush_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("the default 5") << 5;
    QTest::newRow("12") << 12;
    QTest::newRow("0, a dot") << 0;
}

void tst_ODPoint::showShapeDrawsACrossWithoutBrush()
{
    QFETCH(int, size);
    QGraphicsScene scene;
    ODPoint point(&scene);
    if (size != 5)
        point.SetCrossSize(size);
    QCOMPARE(point.crossSize(), size);
    point.SetPenColor(QColor(200, 10, 20));
    point.SetBrushColor(QColor(1, 2, 3));
    point.SetLineWidth(2.9f);
    place(point, 30.5, 40.25);
    QCOMPARE(point.crossItem()->path(), crossAt(30.5, 40.25, size));
    QCOMPARE(point.crossItem()->pen().color(), QColor(200, 10, 20));
    QCOMPARE(point.crossItem()->pen().width(), 2);
    QCOMPARE(point.crossItem()->brush().style(), Qt::NoBrush);

    point.SetLineWidth(0.9f);
    point.ShowShape();
    QCOMPARE(point.crossItem()->pen().width(), 0);
}

void tst_ODPoint::crossArmsStayInSceneUnitsAtAnyZoom()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    for (float scale : {0.25f, 1.0f, 4.0f}) {
        point.SetScale(scale);
        place(point, 10, 10);
        QCOMPARE(point.crossItem()->path(), crossAt(10, 10, 5));
    }
}

void tst_ODPoint::hideShapeEmptiesTheCross()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    place(point, 10, 10);
    point.ShowHandle();
    point.HideShape();
    QVERIFY(point.crossItem()->path().isEmpty());
    QCOMPARE(point.crossItem()->scene(), &scene);
    QVERIFY(!point.handleItem()->path().isEmpty());
    QCOMPARE(point.orgData(), (Params{10, 10}));
}

void tst_ODPoint::updateOrgDataIgnoresTheNumberAndRewritesBothSlots_data()
{
    QTest::addColumn<int>("number");
    for (int number : {-1, 0, 1, 2, 99})
        QTest::addRow("%d", number) << number;
}

void tst_ODPoint::updateOrgDataIgnoresTheNumberAndRewritesBothSlots()
{
    QFETCH(int, number);
    QGraphicsScene scene;
    ODPoint point(&scene);
    place(point, 10, 20);
    point.SetPoint(1, 2);
    point.UpdateOrgData(number);
    QCOMPARE(point.orgData(), (Params{10, 20}));

    ODPoint fresh(&scene, QPointF(5.5, 6.25));
    fresh.UpdateOrgData(number);
    QCOMPARE(fresh.orgData(), (Params{5.5, 6.25}));
}

void tst_ODPoint::handleDragMovesThePointWhateverTheNumber_data()
{
    QTest::addColumn<int>("number");
    for (int number : {1, 0, 2, -3})
        QTest::addRow("%d", number) << number;
}

void tst_ODPoint::handleDragMovesThePointWhateverTheNumber()
{
    QFETCH(int, number);
    QGraphicsScene scene;
    ODPoint point(&scene);
    place(point, 10, 20);
    point.MoveHandleTo(number, QPointF(55.5, 66.25));
    QCOMPARE(point.point(), QPointF(55.5, 66.25));
    QCOMPARE(point.orgData(), (Params{55.5, 66.25}));
}

void tst_ODPoint::moveShapeAddsTheDelta()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    place(point, 10, 20);
    point.MoveShape(QPointF(0.5, -2.25));
    point.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(point.point(), QPointF(11, 15.5));
    QCOMPARE(point.orgData(), (Params{11, 15.5}));
    point.ShowShape();
    QCOMPARE(point.crossItem()->path(), crossAt(11, 15.5, 5));
}

void tst_ODPoint::adjustParameterStoresThePointAndLeavesTheHandle()
{
    QGraphicsScene scene;
    ODPoint point(&scene, QPointF(5, 5));
    place(point, 1, 2);
    point.SetPoint(7, 8);
    point.AdjustParameter();
    // The current point, not the reference just set, and no handle update.
    QCOMPARE(point.orgData(), (Params{1, 2}));
    QCOMPARE(point.handles().value(0).center(), QPointF(5, 5));
}

void tst_ODPoint::getParamNeedsExactlyTwoSlots()
{
    QGraphicsScene scene;
    ODPoint point(&scene, QPointF(3, 4));
    double x = -1, y = -2;
    QVERIFY(!point.GetParam(&x, &y));
    QCOMPARE(x, -1.0);
    QCOMPARE(y, -2.0);
    point.SetPoint(5.25, 6.5);
    QVERIFY(point.GetParam(&x, &y));
    QCOMPARE(x, 5.25);
    QCOMPARE(y, 6.5);
    QVERIFY(point.GetParam(nullptr, nullptr));
}

void tst_ODPoint::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    verifyZValueReaches(point, {point.crossItem(), point.handleItem()});
}

void tst_ODPoint::showHandlePutsTheSquareInSceneUnits()
{
    QGraphicsScene scene;
    ODPoint point(&scene);
    point.SetScale(4.0f);
    point.SetPenColor(QColor(9, 8, 7));
    place(point, 10, 20);
    point.ShowHandle();
    QVERIFY(point.isVisiblehandleMark());
    QPainterPath expected;
    expected.addRect(QRectF(7, 17, 6, 6));
    QCOMPARE(point.handleItem()->path(), expected);
    QCOMPARE(point.handleItem()->pen().width(), 0);
    QCOMPARE(point.handleItem()->pen().color(), QColor(9, 8, 7));
    point.HideHandle();
    QVERIFY(point.handleItem()->path().isEmpty());
}

void tst_ODPoint::handleCursorIsTheBases()
{
    CursorView v;
    ODPoint point(&v.scene);
    place(point, 10, 20);
    point.ShowHandle();
    point.setHandleCursor(QPointF(10, 20));
    // The arrow on the view itself; the viewport keeps its cursor.
    QCOMPARE(v.viewCursor(), Qt::ArrowCursor);
    QCOMPARE(v.viewportCursor(), Qt::WaitCursor);
}


// At zoom 4 a pen of width 1 is 4 device pixels thick, and arms of 5 units
// reach 20 device pixels, 22 with the square caps.
void tst_ODPoint::crossIsPaintedWithArmsOfItsSize()
{
    Kit::PictureWindow window(4.0);
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    const QRgb red = qRgb(230, 20, 20);
    ODPoint point(window.scene());
    point.SetPenColor(QColor(red));
    point.SetLineWidth(1.0f);
    place(point, 30, 25);
    QVERIFY(Kit::mapsToWholePixel(view, QPointF(30, 25)));

    const QImage image = Kit::grabViewport(view);
    const QPoint centre = view->mapFromScene(QPointF(30, 25));
    const int reach = 5 * 4 + 2;
    const QRect across(centre.x() - reach, centre.y() - 2, 2 * reach, 4);
    const QRect upright(centre.x() - 2, centre.y() - reach, 4, 2 * reach);
    const Kit::Blob blob = Kit::findColour(image, Kit::around(centre, 40), red);
    QCOMPARE(blob.bounds, across.united(upright));
    QCOMPARE(blob.count, 2 * (2 * reach * 4) - 16);
    QCOMPARE(Kit::countColour(image, across, red), 2 * reach * 4);
    QCOMPARE(Kit::countColour(image, upright, red), 2 * reach * 4);
    // Nothing but the cross: the quarter between the arms stays the picture's.
    QCOMPARE(Kit::countColour(image, QRect(centre + QPoint(3, 3), QSize(18, 18)), red), 0);
}

QTEST_MAIN(tst_ODPoint)
#include "tst_odpoint.moc"
