// The annulus: a sector of a ring. Handles 1 and 2 set the start and the end
// angle, 3 and 4 the inner and the outer radius, each pushed back by 5 when it
// crosses the other; the sweep is held with the sign opposite to
// QPainterPath::arcTo; search lines run along radii.

#include "odannular.h"
#include "geometryhelpers.h"
#include "searchline.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <climits>
#include <cmath>
#include <limits>

using Kit::CursorView;
using Kit::Params;
using Kit::near;
using Kit::verifyZValueReaches;

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;
// The share of the outer radius a thin hole is given: 0.382 as a float.
constexpr double kHoleShare = 0.38200002908706665;
// A difference that lies between 1e-6 as a float (9.999999974752427e-07) and
// 1e-6 as a double.
constexpr double kBetweenEpsilons = 9.999999987e-07;

const QPointF kCentre(100, 100);
// Mouse positions straight out from kCentre, where CalculateAngle is exact.
const QPointF kEast(150, 100);
const QPointF kNorth(100, 50);
const QPointF kWest(50, 100);
const QPointF kSouth(100, 150);

// An annulus shown from its reference, with handle rectangles made.
void place(ODAnnular& shape, double x, double y, double inner, double outer, double start, double sweep)
{
    shape.SetTours(x, y, inner, outer, start, sweep);
    shape.ShowShape();
    shape.UpdateHandles();
}

// The point at angle degrees (counter-clockwise on the screen) and radius r.
QPointF polar(QPointF centre, double r, double angle)
{
    return QPointF(centre.x() + r * std::cos(angle * kDegree), centre.y() - r * std::sin(angle * kDegree));
}

bool exactlyEqual(const QPointF& a, const QPointF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}

Params paramsOf(const ODAnnular& shape)
{
    double x = 0, y = 0, inner = 0, outer = 0, start = 0, sweep = 0;
    int direction = 0, count = 0;
    if (!shape.GetParam(&x, &y, &inner, &outer, &start, &sweep, &direction, &count))
        return {};
    return {x, y, inner, outer, start, sweep, double(direction), double(count)};
}

bool hasNaN(const QVector<double>& values)
{
    for (double v : values) {
        if (std::isnan(v))
            return true;
    }
    return false;
}

// The search lines as the straightforward formula gives them, one stretch of
// elements a line: inner end, outer end, then the head's wing, tip and wing.
struct Radial
{
    QPointF inner, outer, wing1, tip, wing2;
};

QVector<Radial> referenceSearchLines(QPointF c, double inner, double outer, double start, double sweep, int direction,
                                    int count)
{
    QVector<Radial> lines;
    const float step = float(std::abs(sweep) / (count - 1));
    const float head = float(outer / 15);
    const double pi = double(3.141592f);
    for (int i = 0; i < count; ++i) {
        const float a = ConvertAngle(float(start + float(i * step)));
        const double rad = double(a * 3.141592f / 180);
        Radial line;
        line.inner = QPointF(float(c.x() + inner * std::cos(rad)), float(c.y() - inner * std::sin(rad)));
        line.outer = QPointF(float(c.x() + outer * std::cos(rad)), float(c.y() - outer * std::sin(rad)));
        const double b1 = rad + pi + 0.25, b2 = rad + pi - 0.25;
        if (direction == SL_INNER_TO_OUTER) {
            line.tip = line.outer;
            line.wing1 = QPointF(line.outer.x() + head * std::cos(b1), line.outer.y() - head * std::sin(b1));
            line.wing2 = QPointF(line.outer.x() + head * std::cos(b2), line.outer.y() - head * std::sin(b2));
        } else {
            line.tip = line.inner;
            line.wing1 = QPointF(line.inner.x() - head * std::cos(b1), line.inner.y() + head * std::sin(b1));
            line.wing2 = QPointF(line.inner.x() - head * std::cos(b2), line.inner.y() + head * std::sin(b2));
        }
        lines.append(line);
    }
    return lines;
}

// A point in the ring at the given angle, half-way between the radii.
QPointF inRing(const ODAnnular& shape, double angle)
{
    return polar(shape.center(), (shape.innerRadius() + shape.outerRadius()) / 2, angle);
}

} // namespace

class tst_ODAnnular : public QObject
{
    Q_OBJECT

private slots:
    void newAnnulusStartsAtTenOverThreeHundredFifty();
    void annulusAtAPointHasEveryHandleOnTheCentreAndGrabsTheOuter();
    void drawingANewAnnulusGivesItAHoleOfAFixedShare();
    void innerRadiusFollowsTheOuterOnlyUpToFive();
    void outerHandleStopsFiveOutsideTheInner_data();
    void outerHandleStopsFiveOutsideTheInner();
    void innerHandleStopsFiveInsideTheOuter_data();
    void innerHandleStopsFiveInsideTheOuter();
    void radiusAndAngleTestsUseTheirOwnTolerances();
    void startHandleKeepsTheEndWhereItIs_data();
    void startHandleKeepsTheEndWhereItIs();
    void endHandleSetsTheSweepFromTheStart_data();
    void endHandleSetsTheSweepFromTheStart();
    void sweepThatComesOutNaNFallsBackToTheDefault_data();
    void sweepThatComesOutNaNFallsBackToTheDefault();
    void outerDraggedAcrossTheHoleKeepsARing();
    void innerDraggedPastTheOuterKeepsARing();
    void innerOfASmallRingDraggedPastTheOuterGoesBelowZero();
    void updateOrgDataWritesTheSlotsOfTheNumber_data();
    void updateOrgDataWritesTheSlotsOfTheNumber();
    void updateOrgDataRebuildsAMissingReference();
    void updateCurDataCopiesTheFourSlotsAndLeavesTheAngles();
    void moveShapeShiftsTheCentreAndRewritesTheInnerRadius();
    void getPointWorksInSinglePrecision_data();
    void getPointWorksInSinglePrecision();
    void handlesSitAtMidRadiusAndMidAngle_data();
    void handlesSitAtMidRadiusAndMidAngle();
    void handleHitWalksFromTheHighestKey();
    void showShapeDrawsTheSectorInPenAndBrush();
    void heldSweepHasTheSignOppositeToArcTo_data();
    void heldSweepHasTheSignOppositeToArcTo();
    void getParamNeedsFourSlotsAndNegatesTheSweep();
    void twoSearchLinesOnTheDefaultSweepPointOutward();
    void searchLinesPointInwardFromOuterToInner();
    void searchLinesFollowTheStraightforwardFormula_data();
    void searchLinesFollowTheStraightforwardFormula();
    void searchLinesBelowTwoAreEmpty_data();
    void searchLinesBelowTwoAreEmpty();
    void otherDirectionsDrawLinesWithoutHeads_data();
    void otherDirectionsDrawLinesWithoutHeads();
    void searchLinesRunCounterClockwiseEvenOnAPositiveSweep();
    void aHostsHugeSearchLineCountIsCapped();
    void searchLineFlagIsKeptForTheHost();
    void hideShapeEmptiesBothPaths();
    void showHandleKeepsTheBaseHandlesInSceneUnits();
    void setZValueReachesAllThreeItems();
    void anyHandleGivesTheCrossCursor_data();
    void anyHandleGivesTheCrossCursor();
    void itemsLeaveTheSceneWithTheShape();
    void shownAnnulusIsPaintedWithSearchLinesAndHandles();
};

void tst_ODAnnular::newAnnulusStartsAtTenOverThreeHundredFifty()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    QCOMPARE(shape.GetDrawMode(), DM_ANNULAR);
    QCOMPARE(shape.center(), QPointF(0, 0));
    QCOMPARE(shape.innerRadius(), 0.0);
    QCOMPARE(shape.outerRadius(), 0.0);
    QCOMPARE(shape.startAngle(), 10.0);
    QCOMPARE(shape.sweepAngle(), -350.0);
    QCOMPARE(shape.searchDirection(), SL_INNER_TO_OUTER);
    QCOMPARE(shape.searchCount(), 0);
    QVERIFY(!shape.HaveSearchLine());
    QVERIFY(shape.orgData().isEmpty());
    QVERIFY(shape.handles().isEmpty());
    QCOMPARE(shape.annularItem()->scene(), &scene);
    QCOMPARE(shape.searchLineItem()->scene(), &scene);
    QCOMPARE(typeid(*shape.handleItem()), typeid(QGraphicsPathItem));
    QCOMPARE(shape.handleItem()->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    QVERIFY(shape.handleItem()->hasCursor());
    QCOMPARE(shape.handleItem()->cursor().shape(), Qt::CrossCursor);
}

void tst_ODAnnular::annulusAtAPointHasEveryHandleOnTheCentreAndGrabsTheOuter()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene, kCentre);
    QCOMPARE(shape.center(), kCentre);
    QCOMPARE(shape.handles().size(), 4);
    for (int key = 0; key < 4; ++key)
        QCOMPARE(shape.handles().value(key), shape.MakeElpHandle(kCentre));
    QCOMPARE(shape.HitTest(kCentre, true), 4);
}

// A new annulus drawn from its centre, as the layer shows it after every
// move: the outer handle follows the mouse and the inner radius is 0.382 of
// it after each move. The reference takes the inner radius once, when the
// first move builds it; handle 4 writes only the outer slot afterwards, so the
// shown hole keeps the share of the first move's radius.
void tst_ODAnnular::drawingANewAnnulusGivesItAHoleOfAFixedShare()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene, kCentre);
    const int grabbed = shape.HitTest(kCentre, true);
    QCOMPARE(grabbed, 4);
    const struct
    {
        QPointF mouse;
        double outer;
    } steps[] = {
        {QPointF(103, 104), 5}, {QPointF(106, 108), 10}, {QPointF(100, 87), 13},
        {QPointF(100, 86), 14}, {QPointF(100, 80), 20},  {QPointF(140, 130), 50},
    };
    const double firstHole = kHoleShare * 5;
    for (const auto& step : steps) {
        const QString where = QString("outer %1").arg(step.outer);
        shape.MoveHandleTo(grabbed, step.mouse);
        QCOMPARE(shape.outerRadius(), step.outer);
        QVERIFY2(shape.innerRadius() == kHoleShare * step.outer, qPrintable(where));
        QCOMPARE(shape.orgData(), (Params{100, 100, firstHole, step.outer}));
        shape.ShowShape();
        QVERIFY2(shape.innerRadius() == firstHole, qPrintable(where));
        QCOMPARE(shape.outerRadius(), step.outer);
        // The angles stay the default ones.
        QCOMPARE(shape.startAngle(), 10.0);
        QCOMPARE(shape.sweepAngle(), -350.0);
    }
    QCOMPARE(firstHole, 1.9100001454353333);
    QVERIFY(!shape.annularItem()->path().contains(kCentre));
    QVERIFY(shape.annularItem()->path().contains(polar(kCentre, 3, 180)));
}

// Without a show between the moves, the current inner radius follows the
// outer one while it is 5 or less, and stays once it has passed 5.
void tst_ODAnnular::innerRadiusFollowsTheOuterOnlyUpToFive()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 4, 10, 10, -350);
    shape.MoveHandleTo(4, QPointF(113, 100));
    QCOMPARE(shape.innerRadius(), kHoleShare * 13);
    shape.MoveHandleTo(4, QPointF(114, 100));
    QCOMPARE(shape.innerRadius(), kHoleShare * 14);
    shape.MoveHandleTo(4, QPointF(130, 100));
    QCOMPARE(shape.innerRadius(), kHoleShare * 14);
    QCOMPARE(shape.outerRadius(), 30.0);
    QCOMPARE(kHoleShare * 13, 4.9660003781318665);
    QCOMPARE(kHoleShare * 14, 5.3480004072189331);

    ODAnnular thick(&scene);
    place(thick, 100, 100, 5.5, 10, 10, -350);
    thick.MoveHandleTo(4, QPointF(130, 100));
    QCOMPARE(thick.innerRadius(), 5.5);
}

void tst_ODAnnular::outerHandleStopsFiveOutsideTheInner_data()
{
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<double>("outer");
    // Centre (100, 100), inner radius 20, outer 50.
    QTest::newRow("outward") << QPointF(100, 40) << 60.0;
    QTest::newRow("inward, outside the inner") << QPointF(100, 75) << 25.0;
    QTest::newRow("just outside the inner") << QPointF(100, 79) << 21.0;
    QTest::newRow("onto the inner") << QPointF(120, 100) << 25.0;
    QTest::newRow("into the hole") << QPointF(110, 100) << 25.0;
    QTest::newRow("onto the centre") << kCentre << 25.0;
    QTest::newRow("past the centre, in the hole") << QPointF(100, 110) << 25.0;
    QTest::newRow("past the centre, beyond the inner") << QPointF(100, 140) << 40.0;
}

void tst_ODAnnular::outerHandleStopsFiveOutsideTheInner()
{
    QFETCH(QPointF, mouse);
    QFETCH(double, outer);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 50, 10, -350);
    shape.MoveHandleTo(4, mouse);
    QCOMPARE(shape.outerRadius(), outer);
    // An inner radius above 5 stays.
    QCOMPARE(shape.innerRadius(), 20.0);
    QCOMPARE(shape.orgData(), (Params{100, 100, 20, outer}));
}

void tst_ODAnnular::innerHandleStopsFiveInsideTheOuter_data()
{
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<double>("inner");
    // Centre (100, 100), inner radius 20, outer 50.
    QTest::newRow("outward, inside the outer") << QPointF(100, 70) << 30.0;
    QTest::newRow("within 5 of the outer") << QPointF(148, 100) << 48.0;
    QTest::newRow("onto the outer: a ring of no width") << QPointF(100, 50) << 50.0;
    QTest::newRow("past the outer") << QPointF(100, 45) << 45.0;
    QTest::newRow("far past the outer") << QPointF(400, 400) << 45.0;
    QTest::newRow("onto the centre: no hole") << kCentre << 0.0;
    QTest::newRow("past the centre") << QPointF(100, 140) << 40.0;
}

void tst_ODAnnular::innerHandleStopsFiveInsideTheOuter()
{
    QFETCH(QPointF, mouse);
    QFETCH(double, inner);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 50, 10, -350);
    shape.MoveHandleTo(3, mouse);
    QCOMPARE(shape.innerRadius(), inner);
    QCOMPARE(shape.outerRadius(), 50.0);
    QCOMPARE(shape.orgData(), (Params{100, 100, inner, 50}));
}

void tst_ODAnnular::radiusAndAngleTestsUseTheirOwnTolerances()
{
    QCOMPARE(double(1e-6f), 9.999999974752427e-07);
    QVERIFY(kBetweenEpsilons > double(1e-6f) && kBetweenEpsilons < 1e-6);
    QGraphicsScene scene;
    const QPointF oneRight(101, 100);

    // The inner test takes 1e-6 as a float: an excess just above it counts
    // as past the outer.
    ODAnnular inner(&scene);
    place(inner, 100, 100, 0.5, 1 - kBetweenEpsilons, 10, -350);
    inner.MoveHandleTo(3, oneRight);
    QCOMPARE(inner.innerRadius(), (1 - kBetweenEpsilons) - 5);

    // The outer test takes 1e-6 as a double: the same excess counts as not
    // past the inner.
    ODAnnular outer(&scene);
    place(outer, 100, 100, 1 - kBetweenEpsilons, 50, 10, -350);
    outer.MoveHandleTo(4, oneRight);
    QCOMPARE(outer.outerRadius(), (1 - kBetweenEpsilons) + 5);
    QCOMPARE(outer.innerRadius(), kHoleShare * ((1 - kBetweenEpsilons) + 5));

    // The end handle's test takes 1e-6 as a float: an angle just above the
    // start is a sweep of that much, not a full turn more.
    ODAnnular end(&scene);
    place(end, 100, 100, 20, 50, -kBetweenEpsilons, -350);
    end.MoveHandleTo(2, kEast);
    QCOMPARE(end.sweepAngle(), -kBetweenEpsilons);
}

void tst_ODAnnular::startHandleKeepsTheEndWhereItIs_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("sweep");
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<double>("newStart");
    QTest::addColumn<double>("newSweep");
    QTest::newRow("default, start to 90") << 10.0 << -350.0 << kNorth << 90.0 << -270.0;
    QTest::newRow("end 90, start past it to 180") << 30.0 << -60.0 << kWest << 180.0 << -270.0;
    QTest::newRow("end 90, start back to 0") << 30.0 << -60.0 << kEast << 0.0 << -90.0;
    QTest::newRow("start onto the end: no sweep") << 30.0 << -60.0 << kNorth << 90.0 << 0.0;
    QTest::newRow("end beyond 360 wraps to 10") << 350.0 << -20.0 << kSouth << 270.0 << -100.0;
    QTest::newRow("held positive sweep") << 0.0 << 90.0 << kNorth << 90.0 << -180.0;
}

void tst_ODAnnular::startHandleKeepsTheEndWhereItIs()
{
    QFETCH(double, start);
    QFETCH(double, sweep);
    QFETCH(QPointF, mouse);
    QFETCH(double, newStart);
    QFETCH(double, newSweep);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 50, start, sweep);
    shape.MoveHandleTo(1, mouse);
    QCOMPARE(shape.startAngle(), newStart);
    QCOMPARE(shape.sweepAngle(), newSweep);
    QVERIFY(shape.sweepAngle() <= 0);
    // The end, start minus sweep, is where it was, up to whole turns.
    QCOMPARE(std::fmod(newStart - newSweep + 720, 360.0), std::fmod(start - sweep + 720, 360.0));
    QCOMPARE(shape.orgData(), (Params{100, 100, 20, 50}));
}

void tst_ODAnnular::endHandleSetsTheSweepFromTheStart_data()
{
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<double>("sweep");
    // Start 90.
    QTest::newRow("onto the start: a full ring") << kNorth << -360.0;
    QTest::newRow("a quarter on") << kWest << -90.0;
    QTest::newRow("a half on") << kSouth << -180.0;
    QTest::newRow("three quarters on") << kEast << -270.0;
}

void tst_ODAnnular::endHandleSetsTheSweepFromTheStart()
{
    QFETCH(QPointF, mouse);
    QFETCH(double, sweep);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 50, 90, -10);
    shape.MoveHandleTo(2, mouse);
    QCOMPARE(shape.sweepAngle(), sweep);
    QCOMPARE(shape.startAngle(), 90.0);
    double x, y, inner, outer, start, reported;
    int direction, count;
    QVERIFY(shape.GetParam(&x, &y, &inner, &outer, &start, &reported, &direction, &count));
    QCOMPARE(reported, -sweep);
}

void tst_ODAnnular::sweepThatComesOutNaNFallsBackToTheDefault_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("sweep");
    QTest::addColumn<int>("number");
    QTest::addColumn<double>("newStart");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("NaN sweep, inner handle") << 10.0 << nan << 3 << 10.0;
    QTest::newRow("NaN sweep, outer handle") << 10.0 << nan << 4 << 10.0;
    QTest::newRow("NaN sweep, number 0") << 10.0 << nan << 0 << 10.0;
    QTest::newRow("NaN sweep, number 7") << 10.0 << nan << 7 << 10.0;
    QTest::newRow("NaN start, end handle") << nan << -90.0 << 2 << nan;
    QTest::newRow("NaN start, start handle") << nan << -90.0 << 1 << 90.0;
}

void tst_ODAnnular::sweepThatComesOutNaNFallsBackToTheDefault()
{
    QFETCH(double, start);
    QFETCH(double, sweep);
    QFETCH(int, number);
    QFETCH(double, newStart);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 50, start, sweep);
    shape.MoveHandleTo(number, kNorth);
    QCOMPARE(shape.sweepAngle(), -350.0);
    if (std::isnan(newStart))
        QVERIFY(std::isnan(shape.startAngle()));
    else
        QCOMPARE(shape.startAngle(), newStart);
    QVERIFY(!hasNaN(shape.orgData()));
}

// The outer handle dragged from outside, across the hole and the centre, and
// out on the far side: the ring never loses its width, the reference never
// holds NaN, and the sector is drawn at every step.
void tst_ODAnnular::outerDraggedAcrossTheHoleKeepsARing()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetBrushColor(QColor(0, 200, 0));
    place(shape, 100, 100, 20, 50, 10, -350);
    for (int y = 40; y <= 170; y += 5) {
        shape.MoveHandleTo(4, QPointF(100, y));
        const double r = std::abs(y - 100.0);
        const double outer = r - 20 >= 1e-6 ? r : 25.0;
        const QString where = QString("mouse at y %1").arg(y);
        QVERIFY2(shape.outerRadius() == outer, qPrintable(where));
        QCOMPARE(shape.innerRadius(), 20.0);
        QVERIFY2(!hasNaN(shape.orgData()), qPrintable(where));
        shape.ShowShape();
        shape.UpdateHandles();
        QVERIFY2(shape.HitTest(inRing(shape, 180), false) == 1, qPrintable(where));
        QVERIFY2(shape.HitTest(kCentre, false) == 0, qPrintable(where));
        // The outer handle lies on the outer radius at mid angle, on the
        // far side of the ring from the gap, whichever side the mouse is.
        QVERIFY2(near(shape.handles().value(3).center(), polar(kCentre, outer, 185)), qPrintable(where));
    }
}

// The inner handle dragged out past the outer and back: the ring keeps a
// width of 5 while the mouse is outside it, and is drawn at every step.
void tst_ODAnnular::innerDraggedPastTheOuterKeepsARing()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetBrushColor(QColor(0, 200, 0));
    place(shape, 100, 100, 20, 50, 10, -350);
    for (int x = 120; x <= 200; x += 10) {
        shape.MoveHandleTo(3, QPointF(x, 100));
        const double r = x - 100.0;
        const double inner = r - 50 > 1e-6 ? 45.0 : r;
        const QString where = QString("mouse at x %1").arg(x);
        QVERIFY2(shape.innerRadius() == inner, qPrintable(where));
        QCOMPARE(shape.outerRadius(), 50.0);
        QVERIFY2(!hasNaN(shape.orgData()), qPrintable(where));
        shape.ShowShape();
        if (inner < 50)
            QVERIFY2(shape.HitTest(inRing(shape, 180), false) == 1, qPrintable(where));
        QVERIFY2(shape.HitTest(kCentre, false) == 0, qPrintable(where));
    }
}

// On a ring thinner than 5 the rule "5 inside the outer" leaves the inner
// radius below zero. The reference says so and the host reads it back; the
// sector is still drawn, its hole closed, and the inner handle's next move
// gives it a hole again. The outer handle's move does not: it writes only the
// outer slot.
void tst_ODAnnular::innerOfASmallRingDraggedPastTheOuterGoesBelowZero()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetBrushColor(QColor(0, 200, 0));
    place(shape, 100, 100, 1, 3, 10, -350);
    shape.MoveHandleTo(3, QPointF(110, 100));
    QCOMPARE(shape.innerRadius(), -2.0);
    QCOMPARE(paramsOf(shape), (Params{100, 100, -2, 3, 10, 350, SL_INNER_TO_OUTER, 0}));
    shape.ShowShape();
    QVERIFY(!shape.annularItem()->path().isEmpty());
    QVERIFY(shape.annularItem()->path().boundingRect().width() <= 6.0 + 1e-9);
    QCOMPARE(shape.HitTest(polar(kCentre, 2.5, 180), false), 1);

    shape.MoveHandleTo(4, QPointF(100, 60));
    QCOMPARE(shape.outerRadius(), 40.0);
    QCOMPARE(shape.innerRadius(), kHoleShare * 40);
    QCOMPARE(shape.orgData(), (Params{100, 100, -2, 40}));
    shape.ShowShape();
    QCOMPARE(shape.innerRadius(), -2.0);
    QCOMPARE(shape.HitTest(polar(kCentre, 20, 180), false), 1);
    QCOMPARE(shape.HitTest(polar(kCentre, 20, 5), false), 0);

    shape.MoveHandleTo(3, QPointF(100, 85));
    QCOMPARE(shape.orgData(), (Params{100, 100, 15, 40}));
    shape.ShowShape();
    QCOMPARE(shape.HitTest(kCentre, false), 0);
    QCOMPARE(shape.HitTest(polar(kCentre, 20, 180), false), 1);
}

void tst_ODAnnular::updateOrgDataWritesTheSlotsOfTheNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference 1, 2, 3, 4; current geometry 10, 20, 30, 40.
    QTest::newRow("0 nothing") << 0 << Params{1, 2, 3, 4};
    QTest::newRow("1 centre x") << 1 << Params{10, 2, 3, 4};
    QTest::newRow("2 centre y and inner radius") << 2 << Params{1, 20, 30, 4};
    QTest::newRow("3 inner radius") << 3 << Params{1, 2, 30, 4};
    QTest::newRow("4 outer radius") << 4 << Params{1, 2, 3, 40};
    QTest::newRow("5 nothing") << 5 << Params{1, 2, 3, 4};
    QTest::newRow("-1 nothing") << -1 << Params{1, 2, 3, 4};
}

void tst_ODAnnular::updateOrgDataWritesTheSlotsOfTheNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetTours(10, 20, 30, 40, 0, -90);
    shape.ShowShape();
    shape.SetTours(1, 2, 3, 4, 0, -90);
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), expected);
}

void tst_ODAnnular::updateOrgDataRebuildsAMissingReference()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene, QPointF(5.5, 6.25));
    shape.UpdateOrgData(0);
    QCOMPARE(shape.orgData(), (Params{5.5, 6.25, 0, 0}));

    ODAnnular moved(&scene, QPointF(1, 2));
    moved.MoveShape(QPointF(3, 4));
    QCOMPARE(moved.orgData(), (Params{4, 6, 0, 0}));
}

void tst_ODAnnular::updateCurDataCopiesTheFourSlotsAndLeavesTheAngles()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene, QPointF(7, 8));
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(7, 8));
    shape.SetTours(11, 12, 13.5, 14.25, 15, -16);
    shape.SetStartAngle(20);
    shape.SetSweepAngle(-30);
    shape.UpdateCurData();
    QCOMPARE(shape.center(), QPointF(11, 12));
    QCOMPARE(shape.innerRadius(), 13.5);
    QCOMPARE(shape.outerRadius(), 14.25);
    QCOMPARE(shape.startAngle(), 20.0);
    QCOMPARE(shape.sweepAngle(), -30.0);
}

void tst_ODAnnular::moveShapeShiftsTheCentreAndRewritesTheInnerRadius()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetTours(10, 20, 30, 40, 0, -90);
    shape.ShowShape();
    shape.SetTours(1, 2, 3, 4, 0, -90);
    shape.MoveShape(QPointF(0.5, -2.25));
    QCOMPARE(shape.center(), QPointF(10.5, 17.75));
    // The body move writes with numbers 1 and 2, and 2 owns the inner radius too.
    QCOMPARE(shape.orgData(), (Params{10.5, 17.75, 30, 4}));
}

void tst_ODAnnular::getPointWorksInSinglePrecision_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    // Centre (100, 100), radius 10. The float pi and the float sine and
    // cosine leave their traces where the exact values are whole.
    QTest::newRow("90") << 90.0 << 100.00000313916462 << 90.0;
    QTest::newRow("10") << 10.0 << 109.84807777404785 << 98.263518571853638;
    QTest::newRow("360") << 360.0 << 110.0 << 100.00001255665848;
    QTest::newRow("180") << 180.0 << 90.0 << 99.999993721670762;
    QTest::newRow("-30 is 330") << -30.0 << 108.66024875640869 << 105.00001001358032;
    QTest::newRow("370 is 10") << 370.0 << 109.84807777404785 << 98.263518571853638;
}

void tst_ODAnnular::getPointWorksInSinglePrecision()
{
    QFETCH(double, angle);
    QFETCH(double, x);
    QFETCH(double, y);
    QGraphicsScene scene;
    ODAnnular shape(&scene, kCentre);
    const QPointF p = shape.GetPoint(10.0f, angle);
    QVERIFY2(exactlyEqual(p, QPointF(x, y)), qPrintable(Kit::text(p)));
    QVERIFY(near(p, polar(kCentre, 10, angle), 1e-4));
}

void tst_ODAnnular::handlesSitAtMidRadiusAndMidAngle_data()
{
    Kit::addZoomRows({1.0, 0.5, 4.0});
}

void tst_ODAnnular::handlesSitAtMidRadiusAndMidAngle()
{
    QFETCH(double, zoom);
    Kit::ZoomedShape<ODAnnular> zoomed(zoom);
    ODAnnular& shape = zoomed.shape;
    place(shape, 100, 100, 20, 60, 30, -120);
    QCOMPARE(shape.handles().size(), 4);
    const QPointF expected[4] = {shape.GetPoint(40, 30), shape.GetPoint(40, 150), shape.GetPoint(20, 90),
                                 shape.GetPoint(60, 90)};
    const QPointF exact[4] = {polar(kCentre, 40, 30), polar(kCentre, 40, 150), polar(kCentre, 20, 90),
                              polar(kCentre, 60, 90)};
    for (int key = 0; key < 4; ++key) {
        QCOMPARE(shape.handles().value(key), shape.MakeElpHandle(expected[key]));
        QVERIFY(near(shape.handles().value(key).center(), exact[key], 1e-4));
    }
    QCOMPARE(shape.handles().value(0).width(), 6.0 * qMax(1.0, 1.0 / zoom));
}

void tst_ODAnnular::handleHitWalksFromTheHighestKey()
{
    QGraphicsScene scene;
    // A full ring: the start and end handles lie on one another, and the end wins.
    ODAnnular full(&scene);
    place(full, 100, 100, 20, 60, 0, -360);
    QVERIFY(near(full.handles().value(0).center(), full.handles().value(1).center(), 1e-3));
    QCOMPARE(full.HitTest(full.handles().value(0).center(), true), 2);
    QCOMPARE(full.HitTest(full.handles().value(2).center(), true), 3);
    QCOMPARE(full.HitTest(full.handles().value(3).center(), true), 4);
    // A thin ring: inner and outer handles overlap, and the outer wins.
    ODAnnular thin(&scene);
    place(thin, 100, 100, 20, 22, 0, -180);
    const QPointF between = (thin.handles().value(2).center() + thin.handles().value(3).center()) / 2;
    QCOMPARE(thin.HitTest(between, true), 4);
    QCOMPARE(thin.HitTest(thin.handles().value(2).center() + QPointF(0, 2.5), true), 3);
    QCOMPARE(thin.HitTest(kCentre, true), 0);
}

void tst_ODAnnular::showShapeDrawsTheSectorInPenAndBrush()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetPenColor(Qt::red);
    shape.SetBrushColor(QColor(1, 2, 3, 40));
    shape.SetLineWidth(2.5f);
    shape.SetTours(100, 100, 20, 60, 10, -350);
    shape.SetSearchLine(SL_INNER_TO_OUTER, 2);
    shape.ShowShape();
    QGraphicsPathItem* item = shape.annularItem();
    QCOMPARE(item->pen().color(), QColor(Qt::red));
    QCOMPARE(item->pen().width(), 2);
    QCOMPARE(item->brush(), QBrush(QColor(1, 2, 3, 40), Qt::SolidPattern));
    QCOMPARE(shape.searchLineItem()->pen().color(), QColor(Qt::red));
    QCOMPARE(shape.searchLineItem()->pen().width(), 2);
    QCOMPARE(shape.searchLineItem()->path(), shape.GenSearchline());

    // From the inner arc at the start, out and back along the outer arc, and
    // in again to the start of the inner arc.
    const QPainterPath path = item->path();
    QVERIFY(near(QPointF(path.elementAt(0)), polar(kCentre, 20, 10), 1e-3 * 20));
    QVERIFY(exactlyEqual(path.elementAt(path.elementCount() - 1), shape.GetPoint(20, 10)));
    QVERIFY(path.contains(polar(kCentre, 40, 185)));
    QVERIFY(path.contains(polar(kCentre, 40, 15)));
    QVERIFY(path.contains(polar(kCentre, 40, 355)));
    QVERIFY(!path.contains(polar(kCentre, 40, 5)));  // the gap from 0 to 10
    QVERIFY(!path.contains(kCentre));
    QVERIFY(!path.contains(polar(kCentre, 70, 185)));
    QCOMPARE(shape.HitTest(polar(kCentre, 40, 185), false), 1);
    QCOMPARE(shape.HitTest(polar(kCentre, 40, 5), false), 0);
    QCOMPARE(shape.HitTest(kCentre, false), 0);
}

void tst_ODAnnular::heldSweepHasTheSignOppositeToArcTo_data()
{
    QTest::addColumn<double>("sweep");
    QTest::addColumn<double>("inside");
    QTest::addColumn<double>("outside");
    QTest::newRow("-90 runs counter-clockwise") << -90.0 << 45.0 << 315.0;
    QTest::newRow("90 runs clockwise") << 90.0 << 315.0 << 45.0;
}

void tst_ODAnnular::heldSweepHasTheSignOppositeToArcTo()
{
    QFETCH(double, sweep);
    QFETCH(double, inside);
    QFETCH(double, outside);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 60, 0, sweep);
    QCOMPARE(shape.sweepAngle(), sweep);
    QCOMPARE(shape.HitTest(polar(kCentre, 40, inside), false), 1);
    QCOMPARE(shape.HitTest(polar(kCentre, 40, outside), false), 0);
    // GetParam gives arcTo's sign; SetTours and SetSweepAngle store as given.
    QCOMPARE(paramsOf(shape).value(5), -sweep);
    shape.SetSweepAngle(float(-sweep));
    QCOMPARE(shape.sweepAngle(), -sweep);
    QCOMPARE(paramsOf(shape).value(5), sweep);
}

void tst_ODAnnular::getParamNeedsFourSlotsAndNegatesTheSweep()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene, QPointF(3, 4));
    double v[6] = {-1, -2, -3, -4, -5, -6};
    int direction = -7, count = -8;
    QVERIFY(!shape.GetParam(&v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &direction, &count));
    QCOMPARE((Params{v[0], v[1], v[2], v[3], v[4], v[5]}), (Params{-1, -2, -3, -4, -5, -6}));
    QCOMPARE(direction, -7);
    QCOMPARE(count, -8);

    shape.SetTours(5, 6, 7, 8, 9.5, -300);
    shape.SetSearchLine(SL_OUTER_TO_INNER, 12);
    QVERIFY(shape.GetParam(&v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &direction, &count));
    QCOMPARE((Params{v[0], v[1], v[2], v[3], v[4], v[5]}), (Params{5, 6, 7, 8, 9.5, 300}));
    QCOMPARE(direction, int(SL_OUTER_TO_INNER));
    QCOMPARE(count, 12);
    QVERIFY(shape.GetParam(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
}

// Two lines on the default sector, 350 degrees apart at 10 and 360, each with
// its head at the outer end.
void tst_ODAnnular::twoSearchLinesOnTheDefaultSweepPointOutward()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 60, 10, -350);
    shape.SetSearchLine(SL_INNER_TO_OUTER, 2);
    const QPainterPath path = shape.GenSearchline();
    QCOMPARE(path.elementCount(), 10);
    const QPointF ends[4] = {QPointF(119.696152f, 96.5270386f), QPointF(159.08847f, 89.5811081f),
                             QPointF(120.0f, 100.000023f), QPointF(160.0f, 100.000076f)};
    for (int line = 0; line < 2; ++line) {
        const int first = 5 * line;
        QCOMPARE(path.elementAt(first).type, QPainterPath::MoveToElement);
        QVERIFY(exactlyEqual(path.elementAt(first), ends[2 * line]));
        QVERIFY(exactlyEqual(path.elementAt(first + 1), ends[2 * line + 1]));
        // The head: wing, tip on the outer end, wing.
        QCOMPARE(path.elementAt(first + 2).type, QPainterPath::MoveToElement);
        QVERIFY(exactlyEqual(path.elementAt(first + 3), ends[2 * line + 1]));
        const QPointF tip = ends[2 * line + 1];
        const QPointF back = ends[2 * line] - tip;
        for (int wing : {first + 2, first + 4}) {
            const QPointF w = QPointF(path.elementAt(wing)) - tip;
            // A fifteenth of the outer radius long, 0.25 radian off the line,
            // on the side of the centre: the arrow points outward.
            QVERIFY(near(std::hypot(w.x(), w.y()), 4.0, 1e-4));
            const double cosine = QPointF::dotProduct(w, back) / (std::hypot(w.x(), w.y()) * 40.0);
            QVERIFY(near(std::acos(qBound(-1.0, cosine, 1.0)), 0.25, 1e-3));
        }
    }
    QVERIFY(near(QPointF(path.elementAt(2)), QPointF(155.443544, 91.2286865), 1e-5));
    QVERIFY(near(QPointF(path.elementAt(4)), QPointF(155.099856, 89.2795236), 1e-5));
    QVERIFY(near(QPointF(path.elementAt(7)), QPointF(156.124348, 100.989685), 1e-5));
    QVERIFY(near(QPointF(path.elementAt(9)), QPointF(156.124352, 99.0104532), 1e-5));
    // The second line sits at 360, which the float pi puts a little below the
    // axis through the centre.
    QVERIFY(path.elementAt(5).y > 100.0);
}

void tst_ODAnnular::searchLinesPointInwardFromOuterToInner()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 60, 10, -350);
    shape.SetSearchLine(SL_OUTER_TO_INNER, 2);
    const QPainterPath path = shape.GenSearchline();
    QCOMPARE(path.elementCount(), 10);
    QVERIFY(near(QPointF(path.elementAt(2)), QPointF(123.341078, 94.8794601), 1e-5));
    QVERIFY(exactlyEqual(path.elementAt(3), QPointF(119.696152f, 96.5270386f)));
    QVERIFY(near(QPointF(path.elementAt(4)), QPointF(123.684766, 96.8286231), 1e-5));
    QVERIFY(near(QPointF(path.elementAt(7)), QPointF(123.875652, 99.0104144), 1e-5));
    QVERIFY(exactlyEqual(path.elementAt(8), QPointF(120.0f, 100.000023f)));
    QVERIFY(near(QPointF(path.elementAt(9)), QPointF(123.875648, 100.989646), 1e-5));
    // Both wings lie outside the inner end, away from the centre.
    for (int wing : {2, 4, 7, 9})
        QVERIFY(QLineF(kCentre, path.elementAt(wing)).length() > 20.0);
}

void tst_ODAnnular::searchLinesFollowTheStraightforwardFormula_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("sweep");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("count");
    QTest::newRow("outward, 5 on a quarter") << 30.0 << -90.0 << int(SL_INNER_TO_OUTER) << 5;
    QTest::newRow("inward, 7 on a default sector") << 10.0 << -350.0 << int(SL_OUTER_TO_INNER) << 7;
    QTest::newRow("outward, 3 from 300 across 0") << 300.0 << -120.0 << int(SL_INNER_TO_OUTER) << 3;
    QTest::newRow("inward, 4 on a held positive sweep") << 45.0 << 200.0 << int(SL_OUTER_TO_INNER) << 4;
}

void tst_ODAnnular::searchLinesFollowTheStraightforwardFormula()
{
    QFETCH(double, start);
    QFETCH(double, sweep);
    QFETCH(int, direction);
    QFETCH(int, count);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 80.25, 60.5, 17.5, 45, start, sweep);
    shape.SetSearchLine(SEARCHLINEDIRECTION(direction), count);
    const QPainterPath path = shape.GenSearchline();
    const QVector<Radial> lines =
        referenceSearchLines(QPointF(80.25, 60.5), 17.5, 45, start, sweep, direction, count);
    QCOMPARE(path.elementCount(), 5 * count);
    for (int i = 0; i < count; ++i) {
        const Radial& line = lines[i];
        const QPointF points[5] = {line.inner, line.outer, line.wing1, line.tip, line.wing2};
        for (int k = 0; k < 5; ++k)
            QVERIFY2(exactlyEqual(path.elementAt(5 * i + k), points[k]),
                     qPrintable(QString("line %1, point %2: %3 instead of %4")
                                    .arg(i)
                                    .arg(k)
                                    .arg(Kit::text(QPointF(path.elementAt(5 * i + k))), Kit::text(points[k]))));
    }
}

void tst_ODAnnular::searchLinesBelowTwoAreEmpty_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("1") << 1;
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << -1;
    QTest::newRow("lowest int") << INT_MIN;
}

void tst_ODAnnular::searchLinesBelowTwoAreEmpty()
{
    QFETCH(int, count);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetSearchLine(SL_INNER_TO_OUTER, count);
    place(shape, 100, 100, 20, 60, 10, -350);
    QVERIFY(shape.GenSearchline().isEmpty());
    QVERIFY(shape.searchLineItem()->path().isEmpty());
    QVERIFY(!shape.annularItem()->path().isEmpty());
}

void tst_ODAnnular::otherDirectionsDrawLinesWithoutHeads_data()
{
    QTest::addColumn<int>("direction");
    for (int direction : {int(SL_TOP_TO_BOTTOM), int(SL_BOTTOM_TO_TOP), int(SL_LEFT_TO_RIGHT),
                          int(SL_RIGHT_TO_LEFT), 6, -1})
        QTest::addRow("direction %d", direction) << direction;
}

void tst_ODAnnular::otherDirectionsDrawLinesWithoutHeads()
{
    QFETCH(int, direction);
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 60, 0, -90);
    shape.SetSearchLine(SEARCHLINEDIRECTION(direction), 3);
    const QPainterPath path = shape.GenSearchline();
    QCOMPARE(path.elementCount(), 6);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(path.elementAt(2 * i).type, QPainterPath::MoveToElement);
        QCOMPARE(path.elementAt(2 * i + 1).type, QPainterPath::LineToElement);
        QVERIFY(near(QPointF(path.elementAt(2 * i + 1)), polar(kCentre, 60, 45 * i), 1e-3));
    }
}

// A held sweep of +90 draws the sector clockwise from 0 to -90, while the
// lines still go counter-clockwise from the start, outside the sector.
void tst_ODAnnular::searchLinesRunCounterClockwiseEvenOnAPositiveSweep()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetSearchLine(SL_INNER_TO_OUTER, 3);
    place(shape, 100, 100, 20, 60, 0, 90);
    const QPainterPath path = shape.searchLineItem()->path();
    QCOMPARE(path.elementCount(), 15);
    for (int i = 0; i < 3; ++i)
        QVERIFY(near(QPointF(path.elementAt(5 * i + 1)), polar(kCentre, 60, 45 * i), 1e-3));
    QCOMPARE(shape.HitTest(polar(kCentre, 40, 45), false), 0);
    QCOMPARE(shape.HitTest(polar(kCentre, 40, 315), false), 1);
}

void tst_ODAnnular::aHostsHugeSearchLineCountIsCapped()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    place(shape, 100, 100, 20, 60, 10, -350);
    shape.SetSearchLine(SL_INNER_TO_OUTER, INT_MAX);
    const QPainterPath path = shape.GenSearchline();
    QCOMPARE(path.elementCount(), 5 * SearchLine::kMaximumLines);
    // The count is the host's, as it gave it.
    QCOMPARE(shape.searchCount(), INT_MAX);
}

void tst_ODAnnular::searchLineFlagIsKeptForTheHost()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetSearchLine(SL_INNER_TO_OUTER, 3);
    place(shape, 100, 100, 20, 60, 10, -350);
    const QPainterPath drawn = shape.searchLineItem()->path();
    QVERIFY(!drawn.isEmpty());
    QVERIFY(!shape.HaveSearchLine());
    shape.SetSearchLineFlag(true);
    QVERIFY(shape.HaveSearchLine());
    shape.ShowShape();
    QCOMPARE(shape.searchLineItem()->path(), drawn);
    shape.SetSearchLineFlag(false);
    QVERIFY(!shape.HaveSearchLine());
}

void tst_ODAnnular::hideShapeEmptiesBothPaths()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetSearchLine(SL_INNER_TO_OUTER, 3);
    place(shape, 100, 100, 20, 60, 10, -350);
    shape.ShowHandle();
    shape.HideShape();
    QVERIFY(shape.annularItem()->path().isEmpty());
    QVERIFY(shape.searchLineItem()->path().isEmpty());
    QCOMPARE(shape.annularItem()->scene(), &scene);
    QVERIFY(!shape.handleItem()->path().isEmpty());
    QCOMPARE(shape.orgData(), (Params{100, 100, 20, 60}));
}

void tst_ODAnnular::showHandleKeepsTheBaseHandlesInSceneUnits()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    shape.SetPenColor(QColor(10, 20, 30));
    shape.SetScale(0.25f);
    place(shape, 100, 100, 20, 60, 10, -350);
    shape.setZValue(7);
    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.handleItem()->path(), Kit::pathOfRects(shape.handles()));
    QCOMPARE(shape.handles().value(0).width(), 24.0);
    QCOMPARE(shape.handleItem()->pen().width(), 0);
    QCOMPARE(shape.handleItem()->pen().color(), QColor(10, 20, 30));
    QCOMPARE(shape.handleItem()->zValue(), 7.0);

    shape.HideHandle();
    QVERIFY(!shape.isVisiblehandleMark());
    QVERIFY(shape.handleItem()->path().isEmpty());
}

void tst_ODAnnular::setZValueReachesAllThreeItems()
{
    QGraphicsScene scene;
    ODAnnular shape(&scene);
    verifyZValueReaches(shape, {shape.annularItem(), shape.searchLineItem(), shape.handleItem()});
}

void tst_ODAnnular::anyHandleGivesTheCrossCursor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::CursorShape>("cursor");
    for (int key = 0; key < 4; ++key)
        QTest::addRow("%d", key + 1) << key << Qt::CrossCursor;
    QTest::newRow("off the handles") << -1 << Qt::ArrowCursor;
}

void tst_ODAnnular::anyHandleGivesTheCrossCursor()
{
    QFETCH(int, key);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODAnnular shape(&v.scene);
    place(shape, 100, 100, 20, 60, 10, -350);
    const QPointF point = key >= 0 ? shape.handles().value(key).center() : kCentre;
    Kit::verifyHandleCursor(v, shape, point, cursor);
}

void tst_ODAnnular::itemsLeaveTheSceneWithTheShape()
{
    Kit::verifyItemsLeaveWithTheShape<ODAnnular>(3);
}

// A selected annulus at zoom 2 with three search lines: the sector in the brush,
// the hole and the gap showing the picture, the lines and heads in the pen on
// top, and four handles of 6 scene units, 12 device pixels.
void tst_ODAnnular::shownAnnulusIsPaintedWithSearchLinesAndHandles()
{
    Kit::PictureWindow window(2.0);
    QVERIFY(QTest::qWaitForWindowExposed(window.host.get()));
    ImageCtrlView* view = window.view();
    ODAnnular shape(window.scene());
    Kit::dressForPixels(shape, 2.0, QColor(0, 200, 0));
    shape.SetTours(80, 70, 20, 50, 30, -300);
    shape.SetSearchLine(SL_INNER_TO_OUTER, 3);
    shape.ShowShape();
    shape.ShowHandle();

    const QImage image = Kit::grabViewport(view);
    const QPointF c(80, 70);
    const QRgb red = qRgb(255, 0, 0);
    const QRgb green = qRgb(0, 200, 0);
    const QRgb grey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);
    auto at = [&](const QPointF& scenePoint) { return image.pixel(view->mapFromScene(scenePoint)); };
    QCOMPARE(at(polar(c, 35, 100)), green);
    QCOMPARE(at(polar(c, 35, 270)), green);
    QCOMPARE(at(c), grey);
    QCOMPARE(at(polar(c, 10, 100)), grey);
    QCOMPARE(at(polar(c, 60, 100)), grey);
    QCOMPARE(at(polar(c, 40, 0)), grey);  // the gap from 330 to 30
    // The three lines at 30, 180 and 330, and a head at the outer end of the
    // first one.
    for (double angle : {30.0, 180.0, 330.0}) {
        const QPoint onLine = view->mapFromScene(polar(c, 30, angle));
        QVERIFY2(Kit::countColour(image, Kit::around(onLine, 1), red) >= 2, qPrintable(QString::number(angle)));
    }
    const QPointF tip = polar(c, 50, 30);
    const QPointF wing = polar(tip, 50.0 / 15, 30 + 180 + 0.25 / kDegree);
    QVERIFY(Kit::countColour(image, Kit::around(view->mapFromScene((tip + wing) / 2), 1), red) >= 2);
    // Between the lines, none.
    QCOMPARE(Kit::countColour(image, Kit::around(view->mapFromScene(polar(c, 35, 100)), 3), red), 0);

    for (int key = 0; key < 4; ++key) {
        const QPoint device = view->mapFromScene(shape.handles().value(key).center());
        const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 12));
        QVERIFY2(blob.count >= 10 * 10 && blob.count <= 12 * 12, qPrintable(QString::number(blob.count)));
        QVERIFY(QRect(device.x() - 7, device.y() - 7, 14, 14).contains(blob.bounds));
    }
}

QTEST_MAIN(tst_ODAnnular)
#include "tst_odannular.moc"
