// The ellipse: centre, two radii and an angle. Handles resize it symmetrically
// about a fixed centre, the ninth turns it, and the body and handles follow the
// turn.

#include "odellipse.h"
#include "Rect2HandleItem.h"
#include "geometryhelpers.h"
#include "testkit.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <cmath>

using Kit::near;
using Kit::Params;
using Kit::place;
using Kit::addBoxHandleCursorRows;
using Kit::CursorView;
using Kit::verifyZValueReaches;

namespace {

// The unturned positions of the nine handles of an ellipse.
QVector<QPointF> unturnedHandlePoints(QPointF c, double rx, double ry, double s)
{
    const double l = c.x() - rx, r = c.x() + rx, t = c.y() - ry, b = c.y() + ry;
    return {QPointF(l, t), QPointF(c.x(), t), QPointF(r, t),      QPointF(r, c.y()),     QPointF(r, b),
            QPointF(c.x(), b), QPointF(l, b), QPointF(l, c.y()), QPointF(c.x(), t - 10 * s)};
}

} // namespace

class tst_ODEllipse : public QObject
{
    Q_OBJECT

private slots:
    void newEllipseIsEmptyAndUnturned();
    void negativeRadiiKeepTheRotationHandleAboveTheTop();
    void ellipseAtAPointGrowsFromItsCentre();
    void unturnedEllipseLeavesPointsExactlyInPlace();
    void rotationHandleAngleFromTheCentre_data();
    void rotationHandleAngleFromTheCentre();
    void rotationHandleStraightAboveReportsThreeSixty();
    void smallRadiusIsReadBackAsStoredAndShownInSinglePrecision();
    void updateOrgDataWritesTheSlotsOfTheNumber_data();
    void updateOrgDataWritesTheSlotsOfTheNumber();
    void updateOrgDataRebuildsAMissingReference();
    void updateCurDataCopiesAllFourSlots();
    void handleDragChangesTheRadiiAboutAFixedCentre_data();
    void handleDragChangesTheRadiiAboutAFixedCentre();
    void edgeHandleTakesTheFullDistanceToTheCentre();
    void handleDragOnATurnedEllipseWorksInItsOwnFrame();
    void handlesLieOnTheBoundingRectangle_data();
    void handlesLieOnTheBoundingRectangle();
    void handlesTurnWithTheEllipse_data();
    void handlesTurnWithTheEllipse();
    void showShapeDrawsTheTurnedEllipse();
    void hideShapeEmptiesTheEllipse();
    void showHandleBuildsPathMapAndAngle_data();
    void showHandleBuildsPathMapAndAngle();
    void hideHandleClearsThePathAndTheMark();
    void bodyHitIsTestedInTheTurnedFrame_data();
    void bodyHitIsTestedInTheTurnedFrame();
    void handleHitGivesTheHandleNumber();
    void moveShapeMovesOnlyTheCentre();
    void getParamNeedsFourSlots();
    void setZValueReachesBothItems();
    void handleCursorOnViewport_data();
    void handleCursorOnViewport();
    void itemsLeaveTheSceneWithTheShape();
    void unturnedEllipseGivesPointsBackBitForBit();
};

void tst_ODEllipse::negativeRadiiKeepTheRotationHandleAboveTheTop()
{
    QGraphicsScene scene;
    ODEllipse ellipse(&scene);
    ellipse.SetEllipse(100, 100, -20, -10, 0);
    ellipse.ShowShape();
    ellipse.ShowHandle();
    // Handles lie on the normalised rectangle: top left at (80, 90), the
    // rotation handle ten units above the top edge.
    QCOMPARE(ellipse.handles().value(0).center(), QPointF(80, 90));
    QCOMPARE(ellipse.handles().value(4).center(), QPointF(120, 110));
    QCOMPARE(ellipse.handles().value(8).center(), QPointF(100, 80));
}

void tst_ODEllipse::newEllipseIsEmptyAndUnturned()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    QCOMPARE(shape.GetDrawMode(), DM_ELLIPSE);
    QCOMPARE(shape.center(), QPointF(0, 0));
    QCOMPARE(shape.radiusX(), 0.0f);
    QCOMPARE(shape.radiusY(), 0.0f);
    QCOMPARE(shape.rotateAngle(), 0.0f);
    QVERIFY(shape.orgData().isEmpty());
    QVERIFY(shape.handles().isEmpty());
    QVERIFY(shape.ellipseItem() != nullptr);
    QVERIFY(shape.ellipseItem()->scene() == &scene);
    QVERIFY(dynamic_cast<Rect2HandleItem*>(shape.handleItem()) != nullptr);
    QVERIFY(shape.handleItem()->scene() == &scene);
    QCOMPARE(shape.handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
}

void tst_ODEllipse::ellipseAtAPointGrowsFromItsCentre()
{
    QGraphicsScene scene;
    const QPointF c(50, 40);
    ODEllipse shape(&scene, c);
    QCOMPARE(shape.center(), c);
    QCOMPARE(shape.handles().size(), 9);
    for (int key = 0; key < 8; ++key)
        QCOMPARE(shape.handles().value(key), shape.MakeElpHandle(c));
    QCOMPARE(shape.handles().value(8), shape.MakeElpHandle(QPointF(50, 30)));
    QCOMPARE(shape.HitTest(c, true), 1);

    // The drag of the first handle sets both radii from the mouse; the centre stays.
    shape.MoveHandleTo(1, QPointF(70, 55));
    QCOMPARE(shape.radiusX(), 20.0f);
    QCOMPARE(shape.radiusY(), 15.0f);
    QCOMPARE(shape.orgData(), (Params{50, 40, 20, 15}));
    shape.MoveHandleTo(1, QPointF(35, 36));
    QCOMPARE(shape.orgData(), (Params{50, 40, 15, 4}));
    shape.ShowShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(35, 36, 30, 8));
}

void tst_ODEllipse::unturnedEllipseLeavesPointsExactlyInPlace()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100.3f, 50.7f, 33.3f, 12.1f, 0.0f);
    const QPointF p(12.345678, -67.891011);
    QCOMPARE(shape.RotatePoint(p), p);
    shape.SetRoateAngle(-0.0f);
    QCOMPARE(shape.RotatePoint(p), p);
    // Handles sit exactly on the unturned rectangle.
    shape.UpdateHandles();
    const QRectF r(shape.center().x() - shape.radiusX(), shape.center().y() - shape.radiusY(),
                   2 * shape.radiusX(), 2 * shape.radiusY());
    QCOMPARE(shape.handles().value(0), shape.MakeElpHandle(r.topLeft()));
    QCOMPARE(shape.handles().value(4), shape.MakeElpHandle(r.bottomRight()));
}

void tst_ODEllipse::rotationHandleAngleFromTheCentre_data()
{
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<float>("angle");
    QTest::newRow("above") << QPointF(100, 40) << 360.0f;
    QTest::newRow("right") << QPointF(160, 100) << 270.0f;
    QTest::newRow("below") << QPointF(100, 160) << 180.0f;
    QTest::newRow("left") << QPointF(40, 100) << 90.0f;
}

void tst_ODEllipse::rotationHandleAngleFromTheCentre()
{
    QFETCH(QPointF, mouse);
    QFETCH(float, angle);
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 30);
    shape.MoveHandleTo(9, mouse);
    QCOMPARE(shape.rotateAngle(), angle);
    // The turn touches neither the centre nor the radii.
    QCOMPARE(shape.orgData(), (Params{100, 100, 40, 20}));
    QCOMPARE(shape.center(), QPointF(100, 100));
}

void tst_ODEllipse::rotationHandleStraightAboveReportsThreeSixty()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 45);
    shape.MoveHandleTo(9, QPointF(100, 70));
    double x = 0, y = 0, rx = 0, ry = 0, angle = -1;
    QVERIFY(shape.GetParam(&x, &y, &rx, &ry, &angle));
    QCOMPARE(angle, 360.0);
    QVERIFY(angle != 0.0);
}

void tst_ODEllipse::smallRadiusIsReadBackAsStoredAndShownInSinglePrecision()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    shape.SetEllipse(10, 20, 0.1f, 5, 0);
    double x = 0, y = 0, rx = 0, ry = 0, angle = -1;
    QVERIFY(shape.GetParam(&x, &y, &rx, &ry, &angle));
    QCOMPARE(rx, double(0.1f));
    QVERIFY(rx != 0.1);
    QCOMPARE(x, 10.0);
    QCOMPARE(y, 20.0);
    QCOMPARE(ry, 5.0);
    QCOMPARE(angle, 0.0);
    shape.ShowShape();
    QCOMPARE(shape.radiusX(), 0.1f);
    const QRectF r = shape.ellipseItem()->rect();
    QCOMPARE(r.left(), 10.0 - double(0.1f));
    QCOMPARE(r.width(), double(2 * 0.1f));
}

void tst_ODEllipse::updateOrgDataWritesTheSlotsOfTheNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference 1, 2, 3, 4; current geometry 10, 20, 30, 40. The corner
    // handles write both radii, the edge handles one, the body the centre.
    const struct
    {
        const char* written;
        Params expected;
        std::initializer_list<int> numbers;
    } groups[] = {
        {"centre", {10, 20, 3, 4}, {0}},
        {"both radii", {1, 2, 30, 40}, {1, 3, 5, 7}},
        {"radius y", {1, 2, 3, 40}, {2, 6}},
        {"radius x", {1, 2, 30, 4}, {4, 8}},
        {"nothing", {1, 2, 3, 4}, {9, 10, -1}},
    };
    for (const auto& group : groups) {
        for (int number : group.numbers)
            QTest::addRow("%d %s", number, group.written) << number << group.expected;
    }
}

void tst_ODEllipse::updateOrgDataWritesTheSlotsOfTheNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    shape.SetEllipse(10, 20, 30, 40, 0);
    shape.ShowShape();
    shape.SetEllipse(1, 2, 3, 4, 0);
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), expected);
}

void tst_ODEllipse::updateOrgDataRebuildsAMissingReference()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene, QPointF(5.5, 6.25));
    QVERIFY(shape.orgData().isEmpty());
    shape.UpdateOrgData(9);
    QCOMPARE(shape.orgData(), (Params{5.5, 6.25, 0, 0}));

    ODEllipse moved(&scene, QPointF(1, 2));
    moved.MoveShape(QPointF(3, 4));
    QCOMPARE(moved.orgData(), (Params{4, 6, 0, 0}));
}

void tst_ODEllipse::updateCurDataCopiesAllFourSlots()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene, QPointF(7, 8));
    shape.UpdateCurData();  // no reference: nothing changes
    QCOMPARE(shape.center(), QPointF(7, 8));
    shape.SetEllipse(11, 12, 13, 14, 15);
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(11, 12));
    QCOMPARE(shape.radiusX(), 13.0f);
    QCOMPARE(shape.radiusY(), 14.0f);
    QCOMPARE(shape.rotateAngle(), 15.0f);
}

void tst_ODEllipse::handleDragChangesTheRadiiAboutAFixedCentre_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<float>("rx");
    QTest::addColumn<float>("ry");
    // Centre (100, 100), radii 40 and 20, unturned.
    QTest::newRow("1 top left") << 1 << QPointF(70, 90) << 30.0f << 10.0f;
    QTest::newRow("1 past the centre") << 1 << QPointF(125, 135) << 25.0f << 35.0f;
    QTest::newRow("2 top") << 2 << QPointF(100, 60) << 40.0f << 40.0f;
    QTest::newRow("3 top right") << 3 << QPointF(130, 75) << 30.0f << 25.0f;
    QTest::newRow("4 right") << 4 << QPointF(150, 100) << 50.0f << 20.0f;
    QTest::newRow("5 bottom right") << 5 << QPointF(80, 130) << 20.0f << 30.0f;
    QTest::newRow("6 bottom") << 6 << QPointF(100, 125) << 40.0f << 25.0f;
    QTest::newRow("7 bottom left") << 7 << QPointF(90, 101) << 10.0f << 1.0f;
    QTest::newRow("8 left") << 8 << QPointF(70, 100) << 30.0f << 20.0f;
    QTest::newRow("8 onto the centre") << 8 << QPointF(100, 100) << 0.0f << 20.0f;
    QTest::newRow("2 across the centre") << 2 << QPointF(100, 110) << 40.0f << 10.0f;
    QTest::newRow("0 nothing") << 0 << QPointF(0, 0) << 40.0f << 20.0f;
    QTest::newRow("10 nothing") << 10 << QPointF(0, 0) << 40.0f << 20.0f;
}

void tst_ODEllipse::handleDragChangesTheRadiiAboutAFixedCentre()
{
    QFETCH(int, number);
    QFETCH(QPointF, mouse);
    QFETCH(float, rx);
    QFETCH(float, ry);
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    shape.MoveHandleTo(number, mouse);
    QCOMPARE(shape.radiusX(), rx);
    QCOMPARE(shape.radiusY(), ry);
    QVERIFY(shape.radiusX() >= 0 && shape.radiusY() >= 0);
    QCOMPARE(shape.center(), QPointF(100, 100));
    QCOMPARE(shape.rotateAngle(), 0.0f);
    QCOMPARE(shape.orgData(), (Params{100, 100, rx, ry}));
    shape.ShowShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(100 - rx, 100 - ry, 2 * rx, 2 * ry));
}

void tst_ODEllipse::edgeHandleTakesTheFullDistanceToTheCentre()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    // Sideways from the top handle: the radius y grows to the full distance.
    shape.MoveHandleTo(2, QPointF(130, 60));
    QCOMPARE(shape.radiusY(), 50.0f);
    QCOMPARE(shape.radiusX(), 40.0f);
    QCOMPARE(shape.orgData(), (Params{100, 100, 40, 50}));
    shape.MoveHandleTo(4, QPointF(150, 130));
    QCOMPARE(shape.radiusX(), Distance(QPointF(150, 130), QPointF(100, 100)));
    QCOMPARE(shape.radiusX(), float(std::sqrt(3400.0)));
    shape.MoveHandleTo(6, QPointF(88, 109));
    QCOMPARE(shape.radiusY(), 15.0f);
    shape.MoveHandleTo(8, QPointF(100, 130));
    QCOMPARE(shape.radiusX(), 30.0f);
    QCOMPARE(shape.center(), QPointF(100, 100));
}

void tst_ODEllipse::handleDragOnATurnedEllipseWorksInItsOwnFrame()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 90);
    // Turned a quarter counter-clockwise, the ellipse's top is on the left.
    const QPointF top = shape.handles().value(1).center();
    QVERIFY(near(top, QPointF(80, 100)));
    shape.MoveHandleTo(2, QPointF(60, 100));
    QVERIFY(std::abs(shape.radiusY() - 40.0f) < 1e-3f);
    QCOMPARE(shape.radiusX(), 40.0f);
    // A corner 10 right of and 30 below the centre on the screen is 30 along
    // the own x axis and 10 along the own y axis.
    shape.MoveHandleTo(5, QPointF(110, 130));
    QVERIFY(std::abs(shape.radiusX() - 30.0f) < 1e-3f);
    QVERIFY(std::abs(shape.radiusY() - 10.0f) < 1e-3f);
    const QPointF own = RotatePoint(QPointF(110, 130), QPointF(100, 100), 90.0f);
    QCOMPARE(shape.radiusX(), float(std::abs(own.x() - 100)));
    QCOMPARE(shape.radiusY(), float(std::abs(own.y() - 100)));
    QCOMPARE(shape.center(), QPointF(100, 100));
    QCOMPARE(shape.rotateAngle(), 90.0f);
}

void tst_ODEllipse::handlesLieOnTheBoundingRectangle_data()
{
    Kit::addZoomRows({1.0, 0.5, 4.0});
}

void tst_ODEllipse::handlesLieOnTheBoundingRectangle()
{
    QFETCH(double, zoom);
    Kit::ZoomedShape<ODEllipse> zoomed(zoom);
    ODEllipse& shape = zoomed.shape;
    place(shape, 100, 100, 40, 20, 0);
    const double s = shape.handleScale();
    const QVector<QPointF> points = unturnedHandlePoints(QPointF(100, 100), 40, 20, s);
    QCOMPARE(shape.handles().size(), 9);
    for (int key = 0; key < 9; ++key)
        QCOMPARE(shape.handles().value(key), shape.MakeElpHandle(points[key]));
    QCOMPARE(shape.handles().value(8).center(), QPointF(100, 80 - 10 * s));
}

void tst_ODEllipse::handlesTurnWithTheEllipse_data()
{
    QTest::addColumn<float>("angle");
    QTest::addColumn<double>("scale");
    QTest::newRow("90") << 90.0f << 1.0;
    QTest::newRow("30") << 30.0f << 1.0;
    QTest::newRow("-45 zoomed in") << -45.0f << 2.0;
    QTest::newRow("200 zoomed out") << 200.0f << 0.25;
}

void tst_ODEllipse::handlesTurnWithTheEllipse()
{
    QFETCH(float, angle);
    QFETCH(double, scale);
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    shape.SetScale(float(scale));
    place(shape, 100, 100, 40, 20, angle);
    const QPointF c(100, 100);
    const double s = shape.handleScale();
    const QVector<QPointF> points = unturnedHandlePoints(c, 40, 20, s);
    for (int key = 0; key < 9; ++key) {
        const QPointF turned = RotatePoint(points[key], c, -angle);
        QCOMPARE(shape.handles().value(key), shape.MakeElpHandle(turned));
        QCOMPARE(shape.RotatePoint(points[key]), turned);
        // Counter-clockwise on the screen by the angle, as a true turn.
        const double a = double(angle) * 3.14159265358979323846 / 180.0;
        const QPointF d = points[key] - c;
        const QPointF exact(c.x() + d.x() * std::cos(a) + d.y() * std::sin(a),
                            c.y() - d.x() * std::sin(a) + d.y() * std::cos(a));
        QVERIFY2(near(turned, exact, 1e-3), qPrintable(QString::number(key)));
    }
    if (angle == 90.0f) {
        QVERIFY(near(shape.handles().value(8).center(), QPointF(70, 100)));
        QVERIFY(near(shape.handles().value(0).center(), QPointF(80, 140)));
    }
}

void tst_ODEllipse::showShapeDrawsTheTurnedEllipse()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    shape.SetPenColor(Qt::red);
    shape.SetBrushColor(QColor(1, 2, 3));
    shape.SetLineWidth(2.9f);
    shape.SetEllipse(100, 50, 30, 10, 25);
    shape.ShowShape();
    QGraphicsEllipseItem* item = shape.ellipseItem();
    QCOMPARE(item->rect(), QRectF(70, 40, 60, 20));
    QCOMPARE(item->transformOriginPoint(), QPointF(100, 50));
    QCOMPARE(item->rotation(), -25.0);
    QCOMPARE(item->pen().color(), QColor(Qt::red));
    QCOMPARE(item->pen().width(), 2);
    QCOMPARE(item->brush(), QBrush(QColor(1, 2, 3), Qt::SolidPattern));

    shape.SetLineWidth(0.7f);
    shape.SetRoateAngle(-10);
    shape.ShowShape();
    QCOMPARE(item->pen().width(), 0);
    QCOMPARE(item->rotation(), 10.0);
}

void tst_ODEllipse::hideShapeEmptiesTheEllipse()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 50, 30, 10, 0);
    shape.HideShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF());
    QCOMPARE(shape.orgData(), (Params{100, 50, 30, 10}));
}

void tst_ODEllipse::showHandleBuildsPathMapAndAngle_data()
{
    QTest::addColumn<float>("angle");
    QTest::addColumn<double>("scale");
    QTest::newRow("unturned") << 0.0f << 1.0;
    QTest::newRow("30, zoomed in") << 30.0f << 4.0;
    QTest::newRow("90, zoomed out") << 90.0f << 0.5;
}

void tst_ODEllipse::showHandleBuildsPathMapAndAngle()
{
    QFETCH(float, angle);
    QFETCH(double, scale);
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    shape.SetScale(float(scale));
    shape.SetPenColor(QColor(10, 20, 30));
    shape.SetLineWidth(3);
    shape.SetEllipse(100, 100, 40, 20, angle);
    shape.ShowShape();
    shape.setZValue(7);
    QVERIFY(!shape.isVisiblehandleMark());
    shape.ShowHandle();

    QVERIFY(shape.isVisiblehandleMark());
    const float s = shape.handleScale();
    const QMap<int, QRectF>& h = shape.handles();
    QCOMPARE(h.size(), 9);
    QPainterPath expected;
    for (int key = 0; key < 8; ++key)
        expected.addRect(h.value(key));
    expected.addEllipse(h.value(8));
    const QPointF stemFrom = RotatePoint(QPointF(100, 80 - 3 * s), QPointF(100, 100), -angle);
    const QPointF stemTo = RotatePoint(QPointF(100, 80 - 7 * s), QPointF(100, 100), -angle);
    expected.moveTo(stemFrom);
    expected.lineTo(stemTo);
    const QPainterPath path = shape.handleItem()->path();
    QCOMPARE(path, expected);
    // The stem is the last stretch: on the centre line, no shift.
    const int n = path.elementCount();
    QCOMPARE(QPointF(path.elementAt(n - 2)), stemFrom);
    QCOMPARE(QPointF(path.elementAt(n - 1)), stemTo);
    if (angle == 0.0f) {
        QCOMPARE(stemFrom, QPointF(100, 80 - 3 * s));
        QCOMPARE(stemTo, QPointF(100, 80 - 7 * s));
    }

    QCOMPARE(shape.handleItem()->pen().width(), 0);
    QCOMPARE(shape.handleItem()->pen().color(), QColor(10, 20, 30));
    QCOMPARE(shape.handleItem()->zValue(), 8.0);
    Rect2HandleItem* item = shape.rect2HandleItem();
    QCOMPARE(item->rotateAngle(), -angle);
    QCOMPARE(item->handleMap(), h);
}

void tst_ODEllipse::hideHandleClearsThePathAndTheMark()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    shape.ShowHandle();
    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
    QVERIFY(shape.handleItem()->path().isEmpty());
}

void tst_ODEllipse::bodyHitIsTestedInTheTurnedFrame_data()
{
    QTest::addColumn<float>("angle");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    // Centre (100, 100), radius x 40, radius y 10.
    QTest::newRow("unturned, centre") << 0.0f << QPointF(100, 100) << 1;
    QTest::newRow("unturned, along x") << 0.0f << QPointF(135, 100) << 1;
    QTest::newRow("unturned, along y") << 0.0f << QPointF(100, 130) << 0;
    QTest::newRow("unturned, bounding corner") << 0.0f << QPointF(138, 108) << 0;
    QTest::newRow("90, along screen y") << 90.0f << QPointF(100, 135) << 1;
    QTest::newRow("90, along screen x") << 90.0f << QPointF(135, 100) << 0;
    QTest::newRow("45, on the diagonal up right") << 45.0f << QPointF(120, 80) << 1;
    QTest::newRow("45, on the diagonal down right") << 45.0f << QPointF(120, 120) << 0;
    QTest::newRow("far away") << 30.0f << QPointF(300, 300) << 0;
}

void tst_ODEllipse::bodyHitIsTestedInTheTurnedFrame()
{
    QFETCH(float, angle);
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 10, angle);
    QCOMPARE(shape.HitTest(point, false), hit);
    QCOMPARE(shape.HitTest(point, false),
             shape.ellipseItem()->contains(RotatePoint(point, QPointF(100, 100), angle)) ? 1 : 0);
}

void tst_ODEllipse::handleHitGivesTheHandleNumber()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100, 100, 40, 20, 90);
    for (int key = 0; key < 9; ++key)
        QCOMPARE(shape.HitTest(shape.handles().value(key).center(), true), key + 1);
    QCOMPARE(shape.HitTest(QPointF(100, 100), true), 0);
    QCOMPARE(shape.HitTest(QPointF(100, 70), true), 0);  // the unturned place of 9
}

void tst_ODEllipse::moveShapeMovesOnlyTheCentre()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    shape.SetEllipse(10, 20, 30, 40, 50);
    shape.ShowShape();
    shape.SetEllipse(1, 2, 3, 4, 50);
    shape.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(shape.center(), QPointF(10.5, 17.75));
    // The radius slots keep the reference.
    QCOMPARE(shape.orgData(), (Params{10.5, 17.75, 3, 4}));
    QCOMPARE(shape.rotateAngle(), 50.0f);
    shape.ShowShape();
    QCOMPARE(shape.ellipseItem()->rect(), QRectF(7.5, 13.75, 6, 8));
    QCOMPARE(shape.ellipseItem()->transformOriginPoint(), QPointF(10.5, 17.75));
}

void tst_ODEllipse::getParamNeedsFourSlots()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene, QPointF(3, 4));
    double x = -1, y = -2, rx = -3, ry = -4, angle = -5;
    QVERIFY(!shape.GetParam(&x, &y, &rx, &ry, &angle));
    QCOMPARE(x, -1.0);
    QCOMPARE(y, -2.0);
    QCOMPARE(rx, -3.0);
    QCOMPARE(ry, -4.0);
    QCOMPARE(angle, -5.0);
    shape.SetEllipse(5, 6, 7, 8, 9.5f);
    QVERIFY(shape.GetParam(&x, &y, &rx, &ry, &angle));
    QCOMPARE((Params{x, y, rx, ry, angle}), (Params{5, 6, 7, 8, 9.5}));
    QVERIFY(shape.GetParam(nullptr, nullptr, nullptr, nullptr, nullptr));
}

void tst_ODEllipse::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    verifyZValueReaches(shape, {shape.ellipseItem(), shape.handleItem()});
}

void tst_ODEllipse::handleCursorOnViewport_data()
{
    // Centre (50, 30), radii 50 and 30, unturned.
    addBoxHandleCursorRows();
    QTest::newRow("9 rotation") << QPointF(50, -10) << Qt::CrossCursor;
}

void tst_ODEllipse::handleCursorOnViewport()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODEllipse shape(&v.scene);
    place(shape, 50, 30, 50, 30, 0);
    shape.ShowHandle();
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);

    // Without the visible mark, no handle counts.
    shape.HideHandle();
    v.view.viewport()->setCursor(Qt::WaitCursor);
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), Qt::ArrowCursor);
}

void tst_ODEllipse::itemsLeaveTheSceneWithTheShape()
{
    QGraphicsScene scene;
    const int before = scene.items().size();
    auto* shape = new ODEllipse(&scene, QPointF(1, 1));
    QCOMPARE(scene.items().size(), before + 2);
    delete shape;
    QCOMPARE(scene.items().size(), before);
}

// Exact comparisons: QCOMPARE and QPointF's == forgive differences far larger
// than the rounding that a turn by 0 through the trigonometry leaves.
void tst_ODEllipse::unturnedEllipseGivesPointsBackBitForBit()
{
    QGraphicsScene scene;
    ODEllipse shape(&scene);
    place(shape, 100.3f, 50.7f, 33.3f, 12.1f, 0.0f);
    const QPointF c = shape.center();
    // Taken to the centre and back, these coordinates round: only a point
    // that skips the turn comes back as it was.
    const QPointF p(0.1, 0.3);
    QVERIFY((p.x() - c.x()) + c.x() != p.x());
    QVERIFY((p.y() - c.y()) + c.y() != p.y());

    for (float angle : {0.0f, -0.0f}) {
        shape.SetRoateAngle(angle);
        const QPointF back = shape.RotatePoint(p);
        QVERIFY2(back.x() == p.x() && back.y() == p.y(),
                 qPrintable(QString("angle %1: (%2, %3)").arg(double(angle)).arg(back.x(), 0, 'g', 17)
                                .arg(back.y(), 0, 'g', 17)));
    }
    // A turn that is not 0 does go through the trigonometry.
    shape.SetRoateAngle(0.001f);
    const QPointF turned = shape.RotatePoint(p);
    QVERIFY(turned.x() != p.x() || turned.y() != p.y());
}

QTEST_MAIN(tst_ODEllipse)
#include "tst_odellipse.moc"
