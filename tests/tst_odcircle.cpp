// The circle: centre and radius. Every handle sets the radius to the mouse's
// distance from the centre; only a body move shifts the centre.

#include "odcircle.h"
#include "CircleHandleItem.h"
#include "geometryhelpers.h"
#include "testkit.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <cmath>

using Kit::CursorView;
using Kit::Params;
using Kit::verifyZValueReaches;

namespace {

// A circle shown from its reference, with handle rectangles made.
void place(ODCircle& shape, double x, double y, double r)
{
    shape.SetCircle(x, y, r);
    shape.ShowShape();
    shape.UpdateHandles();
}

// A circle whose reference a test can give any length, as a host's data may.
class LongReferenceCircle : public ODCircle
{
public:
    using ODCircle::ODCircle;
    void setReference(const QVector<double>& values) { m_orgData = values; }
};

} // namespace

class tst_ODCircle : public QObject
{
    Q_OBJECT

private slots:
    void newCircleIsEmpty();
    void circleAtAPointHasEveryHandleOnTheCentreAndGrowsByTheFirst();
    void handlesSitOnTopRightBottomAndLeft_data();
    void handlesSitOnTopRightBottomAndLeft();
    void negativeRadiusIsShownAndHandledAsItsSize();
    void everyHandleSetsTheRadiusFromTheCentre_data();
    void everyHandleSetsTheRadiusFromTheCentre();
    void updateOrgDataWritesTheSlotsOfTheNumber_data();
    void updateOrgDataWritesTheSlotsOfTheNumber();
    void updateOrgDataRebuildsAReferenceOfAnotherLength_data();
    void updateOrgDataRebuildsAReferenceOfAnotherLength();
    void updateCurDataCopiesAllThreeSlotsOnly();
    void showShapeDrawsTheCircleInPenAndBrush();
    void hideShapeEmptiesTheEllipse();
    void showHandleRaisesTheHandleItemAndHandsItTheMap();
    void hideHandleEmptiesThePathAndKeepsTheMap();
    void bodyHitIsTheInsideOfTheCircle_data();
    void bodyHitIsTheInsideOfTheCircle();
    void handleHitGivesTheHandleNumber();
    void moveShapeMovesOnlyTheCentre();
    void getParamNeedsAtLeastThreeSlots();
    void setZValueReachesBothItems();
    void handleCursorOnViewport_data();
    void handleCursorOnViewport();
    void itemsLeaveTheSceneWithTheShape();
    void shownCircleIsPaintedWithItsFourHandles();
};

void tst_ODCircle::newCircleIsEmpty()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    QCOMPARE(shape.GetDrawMode(), DM_CIRCLE);
    QCOMPARE(shape.center(), QPointF(0, 0));
    QCOMPARE(shape.radius(), 0.0f);
    QVERIFY(shape.orgData().isEmpty());
    QVERIFY(shape.handles().isEmpty());
    QVERIFY(shape.ellipseItem() != nullptr);
    QCOMPARE(shape.ellipseItem()->scene(), &scene);
    QVERIFY(shape.circleHandleItem() != nullptr);
    QVERIFY(dynamic_cast<CircleHandleItem*>(shape.handleItem()) != nullptr);
    QCOMPARE(shape.handleItem()->scene(), &scene);
    QCOMPARE(shape.handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
}

void tst_ODCircle::circleAtAPointHasEveryHandleOnTheCentreAndGrowsByTheFirst()
{
    QGraphicsScene scene;
    const QPointF c(50, 40);
    ODCircle shape(&scene, c);
    QCOMPARE(shape.center(), c);
    QCOMPARE(shape.radius(), 0.0f);
    QCOMPARE(shape.handles().size(), 4);
    for (int key = 0; key < 4; ++key)
        QCOMPARE(shape.handles().value(key), shape.MakeElpHandle(c));
    QCOMPARE(shape.HitTest(c, true), 1);

    // The drag from there sets the radius; the reference is made on the way.
    shape.MoveHandleTo(1, QPointF(53, 44));
    QCOMPARE(shape.radius(), 5.0f);
    QCOMPARE(shape.orgData(), (Params{50, 40, 5}));
    shape.MoveHandleTo(1, QPointF(50, 28));
    QCOMPARE(shape.orgData(), (Params{50, 40, 12}));
    shape.ShowShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(38, 28, 24, 24));
}

void tst_ODCircle::handlesSitOnTopRightBottomAndLeft_data()
{
    Kit::addZoomRows({1.0, 0.5, 4.0});
}

void tst_ODCircle::handlesSitOnTopRightBottomAndLeft()
{
    QFETCH(double, zoom);
    Kit::ZoomedShape<ODCircle> zoomed(zoom);
    ODCircle& shape = zoomed.shape;
    place(shape, 100, 80, 30);
    const QMap<int, QRectF>& h = shape.handles();
    QCOMPARE(h.size(), 4);
    QCOMPARE(h.value(0), shape.MakeElpHandle(QPointF(100, 50)));
    QCOMPARE(h.value(1), shape.MakeElpHandle(QPointF(130, 80)));
    QCOMPARE(h.value(2), shape.MakeElpHandle(QPointF(100, 110)));
    QCOMPARE(h.value(3), shape.MakeElpHandle(QPointF(70, 80)));
    QCOMPARE(h.value(0).width(), 6.0 * qMax(1.0, 1.0 / zoom));
}

void tst_ODCircle::negativeRadiusIsShownAndHandledAsItsSize()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    place(shape, 100, 80, -30);
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(70, 50, 60, 60));
    QCOMPARE(shape.handles().value(0).center(), QPointF(100, 50));
    QCOMPARE(shape.handles().value(1).center(), QPointF(130, 80));
    // The reference keeps the host's value until a handle moves.
    QCOMPARE(shape.orgData(), (Params{100, 80, -30}));
    shape.MoveHandleTo(3, QPointF(60, 80));
    QCOMPARE(shape.orgData(), (Params{100, 80, 40}));
}

void tst_ODCircle::everyHandleSetsTheRadiusFromTheCentre_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<float>("radius");
    // Centre (100, 100), radius 20.
    QTest::newRow("1 top, outward") << 1 << QPointF(100, 70) << 30.0f;
    QTest::newRow("1 top, sideways") << 1 << QPointF(130, 60) << 50.0f;
    QTest::newRow("2 right, inward") << 2 << QPointF(110, 100) << 10.0f;
    QTest::newRow("3 bottom, past the centre") << 3 << QPointF(100, 85) << 15.0f;
    QTest::newRow("4 left, onto the centre") << 4 << QPointF(100, 100) << 0.0f;
    QTest::newRow("4 left, off the grid") << 4 << QPointF(101, 101) << Distance(QPointF(101, 101), QPointF(100, 100));
    QTest::newRow("5 beyond the handles") << 5 << QPointF(100, 140) << 40.0f;
    QTest::newRow("0 nothing") << 0 << QPointF(300, 300) << 20.0f;
    QTest::newRow("-1 nothing") << -1 << QPointF(300, 300) << 20.0f;
}

void tst_ODCircle::everyHandleSetsTheRadiusFromTheCentre()
{
    QFETCH(int, number);
    QFETCH(QPointF, mouse);
    QFETCH(float, radius);
    QGraphicsScene scene;
    ODCircle shape(&scene);
    place(shape, 100, 100, 20);
    shape.MoveHandleTo(number, mouse);
    QCOMPARE(shape.radius(), radius);
    QCOMPARE(shape.center(), QPointF(100, 100));
    QCOMPARE(shape.orgData(), (Params{100, 100, radius}));
    shape.ShowShape();
    const double r = radius;
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(100 - r, 100 - r, 2 * r, 2 * r));
}

void tst_ODCircle::updateOrgDataWritesTheSlotsOfTheNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference 1, 2, 3; current geometry 10, 20, 30.
    QTest::newRow("0 the centre") << 0 << Params{10, 20, 3};
    for (int number : {1, 2, 3, 4, 5, 1000})
        QTest::addRow("%d the radius", number) << number << Params{1, 2, 30};
    for (int number : {-1, -1000})
        QTest::addRow("%d nothing", number) << number << Params{1, 2, 3};
}

void tst_ODCircle::updateOrgDataWritesTheSlotsOfTheNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODCircle shape(&scene);
    shape.SetCircle(10, 20, 30);
    shape.ShowShape();
    shape.SetCircle(1, 2, 3);
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), expected);
}

void tst_ODCircle::updateOrgDataRebuildsAReferenceOfAnotherLength_data()
{
    QTest::addColumn<Params>("reference");
    QTest::addColumn<int>("number");
    QTest::newRow("none, number -1") << Params{} << -1;
    QTest::newRow("none, number 0") << Params{} << 0;
    QTest::newRow("two, number 2") << Params{1, 2} << 2;
    QTest::newRow("four, number 1") << Params{1, 2, 3, 4} << 1;
    QTest::newRow("four, number -1") << Params{1, 2, 3, 4} << -1;
}

void tst_ODCircle::updateOrgDataRebuildsAReferenceOfAnotherLength()
{
    QFETCH(Params, reference);
    QFETCH(int, number);
    QGraphicsScene scene;
    LongReferenceCircle shape(&scene, QPointF(5.5, 6.25));
    shape.setReference(reference);
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), (Params{5.5, 6.25, 0}));
}

void tst_ODCircle::updateCurDataCopiesAllThreeSlotsOnly()
{
    QGraphicsScene scene;
    LongReferenceCircle shape(&scene, QPointF(7, 8));
    shape.UpdateCurData();  // no reference: nothing changes
    QCOMPARE(shape.center(), QPointF(7, 8));
    shape.SetCircle(11, 12, 13.5);
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(11, 12));
    QCOMPARE(shape.radius(), 13.5f);
    // A reference of four values is no circle's: nothing is copied.
    shape.setReference({1, 2, 3, 4});
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(11, 12));
    QCOMPARE(shape.radius(), 13.5f);
}

void tst_ODCircle::showShapeDrawsTheCircleInPenAndBrush()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    shape.SetPenColor(Qt::red);
    shape.SetBrushColor(QColor(1, 2, 3, 40));
    shape.SetLineWidth(2.9f);
    shape.SetCircle(100, 50, 0.1);
    shape.ShowShape();
    QGraphicsEllipseItem* item = shape.ellipseItem();
    // The radius passes through float on its way to the item.
    QCOMPARE(shape.radius(), 0.1f);
    QCOMPARE(item->rect(), QRectF(100 - double(0.1f), 50 - double(0.1f), double(2 * 0.1f), double(2 * 0.1f)));
    QCOMPARE(item->pen().color(), QColor(Qt::red));
    QCOMPARE(item->pen().width(), 2);
    QCOMPARE(item->brush(), QBrush(QColor(1, 2, 3, 40), Qt::SolidPattern));
    double x = 0, y = 0, r = 0;
    QVERIFY(shape.GetParam(&x, &y, &r));
    QCOMPARE(r, 0.1);

    shape.SetLineWidth(0.9f);
    shape.ShowShape();
    QCOMPARE(item->pen().width(), 0);
}

void tst_ODCircle::hideShapeEmptiesTheEllipse()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    place(shape, 100, 50, 30);
    shape.ShowHandle();
    shape.HideShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF());
    QCOMPARE(shape.ellipseItem()->scene(), &scene);
    QCOMPARE(shape.orgData(), (Params{100, 50, 30}));
    // The handles are left alone.
    QVERIFY(shape.isVisiblehandleMark());
    QVERIFY(!shape.handleItem()->path().isEmpty());
}

void tst_ODCircle::showHandleRaisesTheHandleItemAndHandsItTheMap()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    shape.SetPenColor(QColor(10, 20, 30));
    shape.SetLineWidth(3);
    place(shape, 100, 100, 40);
    shape.setZValue(7);
    QVERIFY(!shape.isVisiblehandleMark());
    shape.ShowHandle();

    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.handleItem()->path(), Kit::pathOfRects(shape.handles()));
    QCOMPARE(shape.handleItem()->pen().width(), 0);
    QCOMPARE(shape.handleItem()->pen().color(), QColor(10, 20, 30));
    QCOMPARE(shape.ellipseItem()->zValue(), 7.0);
    QCOMPARE(shape.handleItem()->zValue(), 8.0);
    QCOMPARE(shape.circleHandleItem()->handleMap(), shape.handles());
    QCOMPARE(shape.circleHandleItem()->handleMap().size(), 4);
}

void tst_ODCircle::hideHandleEmptiesThePathAndKeepsTheMap()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    place(shape, 100, 100, 40);
    shape.ShowHandle();
    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
    QVERIFY(shape.handleItem()->path().isEmpty());
    QCOMPARE(shape.circleHandleItem()->handleMap().size(), 4);
}

void tst_ODCircle::bodyHitIsTheInsideOfTheCircle_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    // Centre (100, 100), radius 40.
    QTest::newRow("centre") << QPointF(100, 100) << 1;
    QTest::newRow("inside near the edge") << QPointF(138, 100) << 1;
    QTest::newRow("inside diagonally") << QPointF(127, 127) << 1;
    QTest::newRow("bounding corner") << QPointF(135, 135) << 0;
    QTest::newRow("outside") << QPointF(145, 100) << 0;
    QTest::newRow("far away") << QPointF(-300, 300) << 0;
}

void tst_ODCircle::bodyHitIsTheInsideOfTheCircle()
{
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODCircle shape(&scene);
    shape.SetBrushColor(QColor(0, 0, 0, 0));
    place(shape, 100, 100, 40);
    QCOMPARE(shape.HitTest(point, false), hit);
}

void tst_ODCircle::handleHitGivesTheHandleNumber()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    place(shape, 100, 100, 40);
    for (int key = 0; key < 4; ++key) {
        const QRectF handle = shape.handles().value(key);
        QCOMPARE(shape.HitTest(handle.center(), true), key + 1);
        QCOMPARE(shape.HitTest(handle.topLeft(), true), key + 1);
        QCOMPARE(shape.HitTest(handle.center() + QPointF(3.5, 0), true), 0);
    }
    QCOMPARE(shape.HitTest(QPointF(100, 100), true), 0);
}

void tst_ODCircle::moveShapeMovesOnlyTheCentre()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    shape.SetCircle(10, 20, 30);
    shape.ShowShape();
    shape.SetCircle(1, 2, 3);
    shape.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(shape.center(), QPointF(10.5, 17.75));
    // The radius slot keeps the reference.
    QCOMPARE(shape.orgData(), (Params{10.5, 17.75, 3}));
    shape.ShowShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(7.5, 14.75, 6, 6));
}

void tst_ODCircle::getParamNeedsAtLeastThreeSlots()
{
    QGraphicsScene scene;
    LongReferenceCircle shape(&scene, QPointF(3, 4));
    double x = -1, y = -2, r = -3;
    QVERIFY(!shape.GetParam(&x, &y, &r));
    shape.setReference({5, 6});
    QVERIFY(!shape.GetParam(&x, &y, &r));
    QCOMPARE((Params{x, y, r}), (Params{-1, -2, -3}));

    shape.SetCircle(5, 6, 7.25);
    QVERIFY(shape.GetParam(&x, &y, &r));
    QCOMPARE((Params{x, y, r}), (Params{5, 6, 7.25}));
    // More than three values are accepted, and the first three read.
    shape.setReference({8, 9, 10, 11, 12});
    QVERIFY(shape.GetParam(&x, &y, &r));
    QCOMPARE((Params{x, y, r}), (Params{8, 9, 10}));
    QVERIFY(shape.GetParam(nullptr, nullptr, nullptr));
}

void tst_ODCircle::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODCircle shape(&scene);
    verifyZValueReaches(shape, {shape.ellipseItem(), shape.handleItem()});
}

void tst_ODCircle::handleCursorOnViewport_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<Qt::CursorShape>("cursor");
    // Centre (50, 50), radius 30.
    QTest::newRow("1 top") << QPointF(50, 20) << Qt::SizeVerCursor;
    QTest::newRow("2 right") << QPointF(80, 50) << Qt::SizeHorCursor;
    QTest::newRow("3 bottom") << QPointF(50, 80) << Qt::SizeVerCursor;
    QTest::newRow("4 left") << QPointF(20, 50) << Qt::SizeHorCursor;
    QTest::newRow("inside, off the handles") << QPointF(50, 50) << Qt::ArrowCursor;
    QTest::newRow("outside") << QPointF(-20, -20) << Qt::ArrowCursor;
}

void tst_ODCircle::handleCursorOnViewport()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODCircle shape(&v.scene);
    place(shape, 50, 50, 30);
    Kit::verifyHandleCursor(v, shape, point, cursor);
}

void tst_ODCircle::itemsLeaveTheSceneWithTheShape()
{
    Kit::verifyItemsLeaveWithTheShape<ODCircle>(2);
}

// A selected circle at zoom 2: its fill, its outline in the pen, and four
// handles of 6 by 6 device pixels on top.
void tst_ODCircle::shownCircleIsPaintedWithItsFourHandles()
{
    Kit::PictureWindow window(2.0);
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    ODCircle shape(window.scene());
    Kit::dressForPixels(shape, 2.0, QColor(0, 200, 0));
    shape.SetCircle(60, 50, 30);
    shape.ShowShape();
    shape.ShowHandle();

    const QImage image = Kit::grabViewport(view);
    QCOMPARE(image.pixel(view->mapFromScene(QPointF(60, 50))), qRgb(0, 200, 0));
    QCOMPARE(image.pixel(view->mapFromScene(QPointF(75, 60))), qRgb(0, 200, 0));
    // The bounding box's corner is outside: the picture shows there.
    const QRgb grey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);
    QCOMPARE(image.pixel(view->mapFromScene(QPointF(35, 25))), grey);
    // The outline, one scene unit wide, crosses the diagonal at 45 degrees.
    const double d = 30 / std::sqrt(2.0);
    const QPoint onOutline = view->mapFromScene(QPointF(60 + d, 50 + d));
    QVERIFY2(Kit::findColour(image, Kit::around(onOutline, 1), qRgb(255, 0, 0)).count >= 2,
             qPrintable(Kit::colourText(image.pixel(onOutline))));

    const QPointF centres[4] = {QPointF(60, 20), QPointF(90, 50), QPointF(60, 80), QPointF(30, 50)};
    for (const QPointF& centre : centres) {
        QVERIFY(Kit::mapsToWholePixel(view, centre));
        const QPoint device = view->mapFromScene(centre);
        const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 12));
        QCOMPARE(blob.count, 36);
        QCOMPARE(blob.bounds, QRect(device.x() - 3, device.y() - 3, 6, 6));
    }
}

QTEST_MAIN(tst_ODCircle)
#include "tst_odcircle.moc"
