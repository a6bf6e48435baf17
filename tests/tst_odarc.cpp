// The arc: an open stretch of a circle from a start angle over a sweep. Its two
// handles at the ends both set the radius; no drag changes the angles.

#include "odarc.h"
#include "geometryhelpers.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <cmath>

using Kit::CursorView;
using Kit::Params;
using Kit::near;
using Kit::verifyZValueReaches;

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

// An arc shown from its reference, with handle rectangles made.
void place(ODARC& shape, double x, double y, double r, double start, double sweep)
{
    shape.SetCircle(x, y, r, start, sweep);
    shape.ShowShape();
    shape.UpdateHandles();
}

// The point at angle degrees (counter-clockwise on the screen) on the circle.
QPointF onCircle(QPointF centre, double r, double angle)
{
    return QPointF(centre.x() + r * std::cos(angle * kDegree), centre.y() - r * std::sin(angle * kDegree));
}

// Where a path stands after arcMoveTo on the circle's square: Qt reaches the
// angle along its curve approximation, within a thousandth of the radius of
// the true circle point.
QPointF pathPoint(QPointF centre, double r, double angle)
{
    QPainterPath path;
    path.arcMoveTo(QRectF(centre.x() - r, centre.y() - r, 2 * r, 2 * r), angle);
    return path.currentPosition();
}

double curveTolerance(double r)
{
    return 1e-3 * r;
}

// An arc whose reference a test can give any length, as a host's data may.
bool exactlyEqual(const QPointF& a, const QPointF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}

class LongReferenceArc : public ODARC
{
public:
    using ODARC::ODARC;
    void setReference(const QVector<double>& values) { m_orgData = values; }
};

} // namespace

class tst_ODARC : public QObject
{
    Q_OBJECT

private slots:
    void newArcHasRadiusFiveFromZeroOverThirtyDegrees();
    void arcAtAPointKeepsItsHandlesOutOfReachOfTheCentre_data();
    void arcAtAPointKeepsItsHandlesOutOfReachOfTheCentre();
    void handlesSitAtTheTwoEndsOfTheArc_data();
    void handlesSitAtTheTwoEndsOfTheArc();
    void arcOfNoRadiusHasItsHandlesOnTheCentre();
    void eitherHandleSetsOnlyTheRadius_data();
    void eitherHandleSetsOnlyTheRadius();
    void noDragTouchesTheAngles();
    void updateOrgDataWritesTheSlotsOfTheNumber_data();
    void updateOrgDataWritesTheSlotsOfTheNumber();
    void updateOrgDataRebuildsAReferenceOfAnotherLength();
    void updateCurDataCopiesAllFiveSlots();
    void showShapeDrawsAnOpenArc_data();
    void showShapeDrawsAnOpenArc();
    void hideShapeEmptiesThePath();
    void showHandleKeepsTheBaseHandlesInSceneUnits();
    void bodyHitIsTheAreaOfTheArcsPath_data();
    void bodyHitIsTheAreaOfTheArcsPath();
    void handleHitGivesTheHandleNumber();
    void moveShapeMovesOnlyTheCentre();
    void getParamNeedsAtLeastFiveSlots();
    void setZValueReachesBothItems();
    void handleCursorOnViewportFollowsTheCircleTable_data();
    void handleCursorOnViewportFollowsTheCircleTable();
    void itemsLeaveTheSceneWithTheShape();
    void shownArcIsPaintedWithItsTwoHandles();
};

void tst_ODARC::newArcHasRadiusFiveFromZeroOverThirtyDegrees()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    QCOMPARE(shape.GetDrawMode(), DM_ARC);
    QCOMPARE(shape.center(), QPointF(0, 0));
    QCOMPARE(shape.radius(), 5.0f);
    QCOMPARE(shape.startAngle(), 0.0);
    QCOMPARE(shape.sweepAngle(), 30.0);
    QVERIFY(shape.orgData().isEmpty());
    QVERIFY(shape.handles().isEmpty());
    QCOMPARE(shape.arcItem()->scene(), &scene);
    // A plain path item, blue, with no cursor of its own.
    QCOMPARE(typeid(*shape.handleItem()), typeid(QGraphicsPathItem));
    QCOMPARE(shape.handleItem()->scene(), &scene);
    QCOMPARE(shape.handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    QVERIFY(!shape.handleItem()->hasCursor());
}

void tst_ODARC::arcAtAPointKeepsItsHandlesOutOfReachOfTheCentre_data()
{
    Kit::addZoomRows({1.0, 4.0});
}

void tst_ODARC::arcAtAPointKeepsItsHandlesOutOfReachOfTheCentre()
{
    QFETCH(double, zoom);
    QGraphicsScene scene;
    const QPointF c(50, 40);
    ODARC shape(&scene, c);
    shape.SetScale(float(zoom));
    shape.UpdateHandles();
    QCOMPARE(shape.center(), c);
    QCOMPARE(shape.handles().size(), 2);
    QCOMPARE(shape.handles().value(0), shape.MakeElpHandle(pathPoint(c, 5, 0)));
    QCOMPARE(shape.handles().value(1), shape.MakeElpHandle(pathPoint(c, 5, 30)));
    QVERIFY(near(shape.handles().value(0).center(), QPointF(55, 40), 1e-9));
    QVERIFY(near(shape.handles().value(1).center(), onCircle(c, 5, 30), curveTolerance(5)));
    QCOMPARE(shape.HitTest(c, true), 0);
    QCOMPARE(shape.HitTest(QPointF(55, 40), true), 1);
}

void tst_ODARC::handlesSitAtTheTwoEndsOfTheArc_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("sweep");
    QTest::addColumn<double>("zoom");
    QTest::newRow("quarter from 0") << 0.0 << 90.0 << 1.0;
    QTest::newRow("clockwise from 90") << 90.0 << -45.0 << 1.0;
    QTest::newRow("from 200 over 100, zoomed out") << 200.0 << 100.0 << 0.5;
    QTest::newRow("negative start, more than a turn") << -30.0 << 400.0 << 4.0;
}

void tst_ODARC::handlesSitAtTheTwoEndsOfTheArc()
{
    QFETCH(double, start);
    QFETCH(double, sweep);
    QFETCH(double, zoom);
    Kit::ZoomedShape<ODARC> zoomed(zoom);
    ODARC& shape = zoomed.shape;
    const QPointF c(100, 80);
    place(shape, c.x(), c.y(), 40, start, sweep);
    QCOMPARE(shape.handles().size(), 2);
    const double side = 6.0 * qMax(1.0, 1.0 / zoom);
    for (int key = 0; key < 2; ++key) {
        const QRectF handle = shape.handles().value(key);
        QVERIFY(std::abs(handle.width() - side) < 1e-12 && std::abs(handle.height() - side) < 1e-12);
        const double angle = key == 0 ? start : start + sweep;
        QCOMPARE(handle, shape.MakeElpHandle(pathPoint(c, 40, angle)));
        const QPointF onArc = onCircle(c, 40, angle);
        QVERIFY2(near(handle.center(), onArc, curveTolerance(40)),
                 qPrintable(Kit::mismatch(handle.center(), onArc, curveTolerance(40))));
    }
}

void tst_ODARC::arcOfNoRadiusHasItsHandlesOnTheCentre()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    place(shape, 30, 20, 0, 45, 90);
    QCOMPARE(shape.handles().value(0).center(), QPointF(30, 20));
    QCOMPARE(shape.handles().value(1).center(), QPointF(30, 20));
    QVERIFY(shape.arcItem()->path().isEmpty());
    // Handle 1 grows it from there.
    shape.MoveHandleTo(1, QPointF(30, 10));
    QCOMPARE(shape.orgData(), (Params{30, 20, 10, 45, 90}));
    shape.ShowShape();
    QVERIFY(!shape.arcItem()->path().isEmpty());
}

void tst_ODARC::eitherHandleSetsOnlyTheRadius_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<float>("radius");
    // Centre (100, 100), radius 20, from 30 over 60 degrees.
    QTest::newRow("1 start, outward") << 1 << QPointF(130, 60) << 50.0f;
    QTest::newRow("2 end, inward") << 2 << QPointF(100, 90) << 10.0f;
    QTest::newRow("2 end, onto the centre") << 2 << QPointF(100, 100) << 0.0f;
    QTest::newRow("1 start, off the grid") << 1 << QPointF(107, 93) << Distance(QPointF(107, 93), QPointF(100, 100));
    QTest::newRow("3 beyond the handles") << 3 << QPointF(100, 140) << 40.0f;
    QTest::newRow("0 nothing") << 0 << QPointF(300, 300) << 20.0f;
    QTest::newRow("-1 nothing") << -1 << QPointF(300, 300) << 20.0f;
}

void tst_ODARC::eitherHandleSetsOnlyTheRadius()
{
    QFETCH(int, number);
    QFETCH(QPointF, mouse);
    QFETCH(float, radius);
    QGraphicsScene scene;
    ODARC shape(&scene);
    place(shape, 100, 100, 20, 30, 60);
    shape.MoveHandleTo(number, mouse);
    QCOMPARE(shape.radius(), radius);
    QCOMPARE(shape.center(), QPointF(100, 100));
    QCOMPARE(shape.startAngle(), 30.0);
    QCOMPARE(shape.sweepAngle(), 60.0);
    QCOMPARE(shape.orgData(), (Params{100, 100, radius, 30, 60}));
}

void tst_ODARC::noDragTouchesTheAngles()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    place(shape, 100, 100, 20, 30, 60);
    // The arc slides in and out along its radii, whatever way the mouse goes.
    const QPointF moves[] = {QPointF(0, 0), QPointF(200, 100), QPointF(100, 300), QPointF(-50, -50)};
    for (const QPointF& mouse : moves) {
        shape.MoveHandleTo(1, mouse);
        shape.MoveHandleTo(2, mouse + QPointF(1, 2));
        shape.MoveShape(QPointF(3, -4));
        shape.AdjustParameter();
        shape.ShowShape();
    }
    double x = 0, y = 0, r = 0, start = 0, sweep = 0;
    QVERIFY(shape.GetParam(&x, &y, &r, &start, &sweep));
    QCOMPARE(start, 30.0);
    QCOMPARE(sweep, 60.0);
    QCOMPARE(QPointF(x, y), QPointF(112, 84));
}

void tst_ODARC::updateOrgDataWritesTheSlotsOfTheNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference 1 to 5; current geometry 10, 20, 30, 40, 50.
    QTest::newRow("0 the centre") << 0 << Params{10, 20, 3, 4, 5};
    for (int number : {1, 2, 3, 1000})
        QTest::addRow("%d the radius", number) << number << Params{1, 2, 30, 4, 5};
    QTest::newRow("-1 nothing") << -1 << Params{1, 2, 3, 4, 5};
}

void tst_ODARC::updateOrgDataWritesTheSlotsOfTheNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODARC shape(&scene);
    shape.SetCircle(10, 20, 30, 40, 50);
    shape.ShowShape();
    shape.SetCircle(1, 2, 3, 4, 5);
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), expected);
}

void tst_ODARC::updateOrgDataRebuildsAReferenceOfAnotherLength()
{
    QGraphicsScene scene;
    LongReferenceArc shape(&scene, QPointF(5.5, 6.25));
    shape.UpdateOrgData(-1);
    QCOMPARE(shape.orgData(), (Params{5.5, 6.25, 5, 0, 30}));
    shape.SetCircle(1, 2, 3, 4, 5);
    shape.ShowShape();
    shape.setReference({9, 9, 9, 9, 9, 9});
    shape.UpdateOrgData(1);
    QCOMPARE(shape.orgData(), (Params{1, 2, 3, 4, 5}));
}

void tst_ODARC::updateCurDataCopiesAllFiveSlots()
{
    QGraphicsScene scene;
    LongReferenceArc shape(&scene, QPointF(7, 8));
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(7, 8));
    QCOMPARE(shape.radius(), 5.0f);
    shape.SetCircle(11, 12, 13.5, -20, 250);
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(11, 12));
    QCOMPARE(shape.radius(), 13.5f);
    QCOMPARE(shape.startAngle(), -20.0);
    QCOMPARE(shape.sweepAngle(), 250.0);
    shape.setReference({1, 2, 3, 4, 5, 6});
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(11, 12));
    QCOMPARE(shape.sweepAngle(), 250.0);
}

void tst_ODARC::showShapeDrawsAnOpenArc_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("sweep");
    QTest::newRow("counter-clockwise") << 30.0 << 120.0;
    QTest::newRow("clockwise") << 30.0 << -120.0;
    QTest::newRow("negative start") << -90.0 << 45.0;
}

void tst_ODARC::showShapeDrawsAnOpenArc()
{
    QFETCH(double, start);
    QFETCH(double, sweep);
    QGraphicsScene scene;
    ODARC shape(&scene);
    shape.SetPenColor(Qt::red);
    shape.SetBrushColor(QColor(1, 2, 3, 40));
    shape.SetLineWidth(2.5f);
    shape.SetCircle(100, 50, 30, start, sweep);
    shape.ShowShape();
    QGraphicsPathItem* item = shape.arcItem();
    QCOMPARE(item->pen().color(), QColor(Qt::red));
    QCOMPARE(item->pen().width(), 2);
    QCOMPARE(item->brush(), QBrush(QColor(1, 2, 3, 40), Qt::SolidPattern));

    const QPainterPath path = item->path();
    QVERIFY(path.elementCount() >= 4);
    // One stretch from the start to the end, not closed.
    QCOMPARE(path.elementAt(0).type, QPainterPath::MoveToElement);
    for (int i = 1; i < path.elementCount(); ++i)
        QVERIFY(path.elementAt(i).type != QPainterPath::MoveToElement);
    const QPointF first = path.elementAt(0);
    const QPointF last = path.elementAt(path.elementCount() - 1);
    const QPointF c(100, 50);
    QVERIFY(exactlyEqual(first, pathPoint(c, 30, start)));
    QVERIFY(near(first, onCircle(c, 30, start), curveTolerance(30)));
    QVERIFY(near(last, onCircle(c, 30, start + sweep), curveTolerance(30)));
    QVERIFY(!near(first, last, 1.0));
    // On the way it keeps to the circle and to the side of the sweep.
    for (double t : {0.25, 0.5, 0.75}) {
        const QPointF p = path.pointAtPercent(t);
        QVERIFY(near(QLineF(c, p).length(), 30, 0.05));
        const QPointF outside = onCircle(c, 30, start + sweep + (360 - std::abs(sweep)) / 2 * (sweep > 0 ? 1 : -1));
        QVERIFY(QLineF(p, outside).length() > 30);
    }
}

void tst_ODARC::hideShapeEmptiesThePath()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    place(shape, 100, 50, 30, 0, 90);
    QVERIFY(!shape.arcItem()->path().isEmpty());
    shape.HideShape();
    QVERIFY(shape.arcItem()->path().isEmpty());
    QCOMPARE(shape.arcItem()->scene(), &scene);
    QCOMPARE(shape.orgData(), (Params{100, 50, 30, 0, 90}));
}

void tst_ODARC::showHandleKeepsTheBaseHandlesInSceneUnits()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    shape.SetPenColor(QColor(10, 20, 30));
    shape.SetScale(0.5f);
    place(shape, 100, 100, 40, 0, 90);
    shape.setZValue(7);
    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.handleItem()->path(), Kit::pathOfRects(shape.handles()));
    QCOMPARE(shape.handles().value(0).width(), 12.0);
    QCOMPARE(shape.handleItem()->pen().width(), 0);
    QCOMPARE(shape.handleItem()->pen().color(), QColor(10, 20, 30));
    // Not raised: the handle item keeps the shape's z value.
    QCOMPARE(shape.handleItem()->zValue(), 7.0);
    QCOMPARE(shape.arcItem()->zValue(), 7.0);

    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
    QVERIFY(shape.handleItem()->path().isEmpty());
}

void tst_ODARC::bodyHitIsTheAreaOfTheArcsPath_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    // Centre (100, 100), radius 40, from 30 over 120 degrees: the chord runs
    // at y = 80 from x = 65.4 to 134.6.
    QTest::newRow("between chord and arc") << QPointF(100, 70) << 1;
    QTest::newRow("near the arc") << QPointF(100, 62) << 1;
    QTest::newRow("below the chord") << QPointF(100, 85) << 0;
    QTest::newRow("centre") << QPointF(100, 100) << 0;
    QTest::newRow("rest of the circle") << QPointF(100, 130) << 0;
    QTest::newRow("above the arc") << QPointF(100, 55) << 0;
}

void tst_ODARC::bodyHitIsTheAreaOfTheArcsPath()
{
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODARC shape(&scene);
    shape.SetBrushColor(QColor(0, 0, 0, 0));
    place(shape, 100, 100, 40, 30, 120);
    QCOMPARE(shape.HitTest(point, false), hit);
}

void tst_ODARC::handleHitGivesTheHandleNumber()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    place(shape, 100, 100, 40, 30, 120);
    QCOMPARE(shape.HitTest(shape.handles().value(0).center(), true), 1);
    QCOMPARE(shape.HitTest(shape.handles().value(1).center(), true), 2);
    QCOMPARE(shape.HitTest(QPointF(100, 60), true), 0);
    QCOMPARE(shape.HitTest(QPointF(100, 100), true), 0);
}

void tst_ODARC::moveShapeMovesOnlyTheCentre()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    shape.SetCircle(10, 20, 30, 40, 50);
    shape.ShowShape();
    shape.SetCircle(1, 2, 3, 4, 5);
    shape.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(shape.center(), QPointF(10.5, 17.75));
    QCOMPARE(shape.orgData(), (Params{10.5, 17.75, 3, 4, 5}));
}

void tst_ODARC::getParamNeedsAtLeastFiveSlots()
{
    QGraphicsScene scene;
    LongReferenceArc shape(&scene, QPointF(3, 4));
    Params out{-1, -2, -3, -4, -5};
    QVERIFY(!shape.GetParam(&out[0], &out[1], &out[2], &out[3], &out[4]));
    shape.setReference({1, 2, 3, 4});
    QVERIFY(!shape.GetParam(&out[0], &out[1], &out[2], &out[3], &out[4]));
    QCOMPARE(out, (Params{-1, -2, -3, -4, -5}));
    shape.SetCircle(5, 6, 7, 8, 9.5);
    QVERIFY(shape.GetParam(&out[0], &out[1], &out[2], &out[3], &out[4]));
    QCOMPARE(out, (Params{5, 6, 7, 8, 9.5}));
    shape.setReference({11, 12, 13, 14, 15, 16});
    QVERIFY(shape.GetParam(&out[0], &out[1], &out[2], &out[3], &out[4]));
    QCOMPARE(out, (Params{11, 12, 13, 14, 15}));
    QVERIFY(shape.GetParam(nullptr, nullptr, nullptr, nullptr, nullptr));
}

void tst_ODARC::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODARC shape(&scene);
    verifyZValueReaches(shape, {shape.arcItem(), shape.handleItem()});
}

void tst_ODARC::handleCursorOnViewportFollowsTheCircleTable_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<Qt::CursorShape>("cursor");
    // Centre (50, 50), radius 30, from 0 over 90 degrees: handle 1 on the
    // right, handle 2 on the top, where a circle's numbers 1 and 2 would be
    // the other way round.
    QTest::newRow("1 start") << QPointF(80, 50) << Qt::SizeVerCursor;
    QTest::newRow("2 end") << QPointF(50, 20) << Qt::SizeHorCursor;
    QTest::newRow("off the handles") << QPointF(50, 50) << Qt::ArrowCursor;
}

void tst_ODARC::handleCursorOnViewportFollowsTheCircleTable()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODARC shape(&v.scene);
    place(shape, 50, 50, 30, 0, 90);
    Kit::verifyHandleCursor(v, shape, point, cursor);
}

void tst_ODARC::itemsLeaveTheSceneWithTheShape()
{
    Kit::verifyItemsLeaveWithTheShape<ODARC>(2);
}

// A selected arc at zoom 2: the arc in the pen, nothing on the rest of the
// circle, and its two handles as squares of 6 scene units, 12 device pixels.
void tst_ODARC::shownArcIsPaintedWithItsTwoHandles()
{
    Kit::PictureWindow window(2.0);
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    ODARC shape(window.scene());
    Kit::dressForPixels(shape, 2.0, QColor(0, 0, 0, 0));
    shape.SetCircle(60, 50, 30, 0, 90);
    shape.ShowShape();
    shape.ShowHandle();

    const QImage image = Kit::grabViewport(view);
    const QRgb red = qRgb(255, 0, 0);
    const QRgb grey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);
    // On the arc at 45 degrees: the pen; on the circle at 225 degrees: nothing.
    QVERIFY(Kit::findColour(image, Kit::around(view->mapFromScene(onCircle(QPointF(60, 50), 30, 45)), 1), red).count
            >= 2);
    QCOMPARE(Kit::countColour(image, Kit::around(view->mapFromScene(onCircle(QPointF(60, 50), 30, 225)), 3), red), 0);
    QCOMPARE(image.pixel(view->mapFromScene(QPointF(60, 50))), grey);

    const QPointF centres[2] = {QPointF(90, 50), QPointF(60, 20)};
    for (const QPointF& centre : centres) {
        const QPoint device = view->mapFromScene(centre);
        const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 12));
        // Filled blue inside an outline in the shape's pen colour.
        QVERIFY2(blob.count >= 10 * 10 && blob.count <= 12 * 12, qPrintable(QString::number(blob.count)));
        QVERIFY(QRect(device.x() - 6, device.y() - 6, 12, 12).contains(blob.bounds));
    }
}

QTEST_MAIN(tst_ODARC)
#include "tst_odarc.moc"
