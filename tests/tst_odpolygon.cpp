// The polygon: corners in the order given, two reference slots each, a handle
// on every corner that moves it, the rubber band of the polygon tool, removal
// of a corner, and a body that is the whole bounding box.

#include "odpolygon.h"
#include "GraphicsHandleItem.h"
#include "VorPointArray.h"
#include "kitpointlists.h"
#include "testkit.h"

#include <QGraphicsPolygonItem>
#include <QGraphicsScene>
#include <QSignalSpy>
#include <QtTest>

using Kit::CursorView;
using Kit::HostLog;
using Kit::Params;
using Kit::PictureWindow;
using Kit::place;
using Kit::pointsOf;
using Kit::slotsOf;
using Kit::verifyZValueReaches;

namespace {

// A concave polygon like a U opening upwards: the notch is the rectangle
// from (60, 40) to (100, 90), inside the bounding box (40, 40) to (120, 110).
const QVector<QPointF> kU = {QPointF(40, 40),  QPointF(60, 40),   QPointF(60, 90),  QPointF(100, 90),
                             QPointF(100, 40), QPointF(120, 40), QPointF(120, 110), QPointF(40, 110)};
const QPointF kInTheNotch(80, 60);
const QPointF kInTheLeftArm(50, 70);

} // namespace

class tst_ODPolygon : public QObject
{
    Q_OBJECT

private slots:
    void newPolygonIsEmptyWithItsTwoItems();
    void polygonIsAQObjectBehindItsShapePart();
    void destroyedReachesAConnectionBySignature();
    void cornersAreStoredInTheOrderGiven();
    void settingPointsKeepsTheOldReferenceAhead();
    void settingValuesReplacesTheReference();
    void oddValueCountKeepsTheLoneValueInTheReference_data();
    void oddValueCountKeepsTheLoneValueInTheReference();
    void addPointAppendsToListAndReference();
    void getParamOnAnEmptyPolygonIsTrueWithAnEmptyArray();
    void getParamClearsTheArrayAndWritesEveryPair();
    void lengthAndPointSizeCountTheCorners();
    void changeLastPointOnAnEmptyPolygonDoesNothing();
    void changeLastPointMovesTheRubberBandCorner();
    void removePointOnTheLastButOneRebuildsTheHandlesAtOnce();
    void removePointRebuildsTheReferenceFromTheCorners();
    void removePointOutsideTheListChangesNothing_data();
    void removePointOutsideTheListChangesNothing();
    void updateOrgDataWritesTheSlotsOfTheNumber_data();
    void updateOrgDataWritesTheSlotsOfTheNumber();
    void updateCurDataNeedsTwoSlotsPerCorner();
    void handleDragMovesItsCorner_data();
    void handleDragMovesItsCorner();
    void moveShapeMovesEveryCorner();
    void handlesSitOnEveryCornerInOrder_data();
    void handlesSitOnEveryCornerInOrder();
    void firstHandleWinsWhereCornersMeet();
    void showShapeGivesPenBrushAndCorners();
    void hideShapeEmptiesThePolygonAndKeepsTheHandles();
    void showHandleGivesPathPenAndMapAtTheSameZValue();
    void bodyIsTheWholeBoundingBox_data();
    void bodyIsTheWholeBoundingBox();
    void clickInTheNotchSelectsThePolygon();
    void handleCursorIsSizeAllOverAnyCorner_data();
    void handleCursorIsSizeAllOverAnyCorner();
    void setZValueReachesBothItems();
    void concavePolygonIsPaintedWithItsNotchOpen();
};

void tst_ODPolygon::newPolygonIsEmptyWithItsTwoItems()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    QCOMPARE(polygon.GetDrawMode(), DM_POLYGON);
    QVERIFY(polygon.polygonItem()->polygon().isEmpty());
    Kit::verifyNewPointListShape(polygon, scene, polygon.polygonItem());
}

void tst_ODPolygon::polygonIsAQObjectBehindItsShapePart()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    QCOMPARE(polygon.metaObject()->className(), "ODPolygon");
    QCOMPARE(polygon.metaObject()->superClass(), &QObject::staticMetaObject);
    // No signals or slots of its own.
    QCOMPARE(polygon.metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
    QVERIFY(polygon.inherits("QObject"));
    // The shape part comes first in the object, the QObject part after it.
    ODShape* shape = &polygon;
    QObject* object = &polygon;
    QCOMPARE(static_cast<void*>(shape), static_cast<void*>(&polygon));
    QVERIFY(static_cast<void*>(object) != static_cast<void*>(&polygon));
    QCOMPARE(polygon.qt_metacast("ODPolygon"), static_cast<void*>(&polygon));
    QCOMPARE(polygon.qt_metacast("QObject"), static_cast<void*>(object));
}

void tst_ODPolygon::destroyedReachesAConnectionBySignature()
{
    QGraphicsScene scene;
    ODShape* shape = new ODPolygon(&scene);
    auto* polygon = static_cast<ODPolygon*>(shape);
    QObject* object = polygon;
    QSignalSpy destroyed(object, SIGNAL(destroyed(QObject*)));
    QVERIFY(destroyed.isValid());
    // Deleted as a layer deletes it, through the shape base.
    delete shape;
    QCOMPARE(destroyed.count(), 1);
    QCOMPARE(destroyed.at(0).at(0).value<QObject*>(), object);
    QVERIFY(scene.items().isEmpty());
}

void tst_ODPolygon::cornersAreStoredInTheOrderGiven()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    const QVector<QPointF> corners = {QPointF(1.5, 2), QPointF(30, 4.25), QPointF(-5, 60)};
    polygon.SetPolygonPoints(corners);
    QCOMPARE(polygon.points(), QPolygonF(corners));
    QCOMPARE(polygon.orgData(), (Params{1.5, 2, 30, 4.25, -5, 60}));
    VorPointArray array;
    QVERIFY(polygon.GetParam(&array));
    QCOMPARE(pointsOf(array), corners);
}

void tst_ODPolygon::settingPointsKeepsTheOldReferenceAhead()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(1, 2), QPointF(3, 4)});
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40), QPointF(50, 60)});
    // The list is the new corners; the reference keeps the old slots first.
    QCOMPARE(polygon.points(), QPolygonF(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40), QPointF(50, 60)}));
    QCOMPARE(polygon.orgData(), (Params{1, 2, 3, 4, 10, 20, 30, 40, 50, 60}));
    VorPointArray array;
    QVERIFY(polygon.GetParam(&array));
    QCOMPARE(array.Length(), 5);
    QCOMPARE(pointsOf(array).first(), QPointF(1, 2));

    // Five pairs for three corners: showing reloads nothing and shows the list.
    polygon.ShowShape();
    QCOMPARE(polygon.polygonItem()->polygon(), polygon.points());
    // A body move writes the moved corners into the front slots.
    polygon.MoveShape(QPointF(1, 1));
    QCOMPARE(polygon.orgData(), (Params{11, 21, 31, 41, 51, 61, 30, 40, 50, 60}));
}

void tst_ODPolygon::settingValuesReplacesTheReference()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(1, 2), QPointF(3, 4)});
    Params values = {5, 6, 7, 8, 9, 10};
    polygon.SetPolygonPoints(values);
    QCOMPARE(polygon.orgData(), values);
    QCOMPARE(polygon.points(), QPolygonF(QVector<QPointF>{QPointF(5, 6), QPointF(7, 8), QPointF(9, 10)}));
    QCOMPARE(values, (Params{5, 6, 7, 8, 9, 10}));
}

void tst_ODPolygon::oddValueCountKeepsTheLoneValueInTheReference_data()
{
    QTest::addColumn<Params>("values");
    QTest::newRow("one value") << Params{7};
    QTest::newRow("three values") << Params{1, 2, 3};
    QTest::newRow("five values") << Params{1, 2, 3, 4, 5};
    QTest::newRow("none") << Params{};
}

void tst_ODPolygon::oddValueCountKeepsTheLoneValueInTheReference()
{
    QFETCH(Params, values);
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(-1, -1)});
    const Params given = values;
    polygon.SetPolygonPoints(values);
    QCOMPARE(values, given);
    // The values become the reference as they are; whole pairs make corners.
    Params reference = values;
    const int corners = values.size() / 2;
    QCOMPARE(polygon.orgData(), reference);
    QCOMPARE(polygon.pointSize(), corners);
    VorPointArray array;
    QVERIFY(polygon.GetParam(&array));
    QCOMPARE(array.Length(), corners);
    // The reference holds two slots a corner and more, so a move writes every
    // corner and leaves the lone value behind them.
    polygon.ShowShape();
    polygon.MoveShape(QPointF(10, 0));
    for (int i = 0; i < 2 * corners; i += 2)
        reference[i] += 10;
    QCOMPARE(polygon.orgData(), reference);
}

void tst_ODPolygon::addPointAppendsToListAndReference()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.AddPoint(QPointF(3, 4));
    polygon.AddPoint(QPointF(5.5, -6));
    polygon.AddPoint(QPointF(3, 4));
    QCOMPARE(polygon.points(), QPolygonF(QVector<QPointF>{QPointF(3, 4), QPointF(5.5, -6), QPointF(3, 4)}));
    QCOMPARE(polygon.orgData(), (Params{3, 4, 5.5, -6, 3, 4}));
}

void tst_ODPolygon::getParamOnAnEmptyPolygonIsTrueWithAnEmptyArray()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    VorPointArray array;
    array.Append(VorPoint(1, 2));
    QVERIFY(polygon.GetParam(&array));
    QCOMPARE(array.Length(), 0);
    QVERIFY(polygon.GetParam(nullptr));
}

void tst_ODPolygon::getParamClearsTheArrayAndWritesEveryPair()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    place(polygon, {QPointF(10, 20), QPointF(30, 40)});
    VorPointArray array;
    for (int i = 0; i < 5; ++i)
        array.Append(VorPoint(-i, -i));
    QVERIFY(polygon.GetParam(&array));
    QCOMPARE(pointsOf(array), (QVector<QPointF>{QPointF(10, 20), QPointF(30, 40)}));
}

void tst_ODPolygon::lengthAndPointSizeCountTheCorners()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    QCOMPARE(polygon.length(), 0);
    QCOMPARE(polygon.pointSize(), 0);
    place(polygon, kU);
    QCOMPARE(polygon.length(), 8);
    QCOMPARE(polygon.pointSize(), 8);
}

void tst_ODPolygon::changeLastPointOnAnEmptyPolygonDoesNothing()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.ChangeLastPoint(QPointF(5, 5));
    QVERIFY(polygon.points().isEmpty());
    QVERIFY(polygon.orgData().isEmpty());
}

void tst_ODPolygon::changeLastPointMovesTheRubberBandCorner()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    // As the polygon tool starts: the first click's point twice, the second
    // following the mouse.
    polygon.AddPoint(QPointF(10, 10));
    polygon.AddPoint(QPointF(10, 10));
    polygon.ChangeLastPoint(QPointF(50, 12));
    QCOMPARE(polygon.points(), QPolygonF(QVector<QPointF>{QPointF(10, 10), QPointF(50, 12)}));
    QCOMPARE(polygon.orgData(), (Params{10, 10, 50, 12}));
    polygon.AddPoint(QPointF(50, 12));
    polygon.ChangeLastPoint(QPointF(30, 40));
    QCOMPARE(polygon.orgData(), (Params{10, 10, 50, 12, 30, 40}));
    polygon.ShowShape();
    QCOMPARE(polygon.polygonItem()->polygon(), QPolygonF(QVector<QPointF>{QPointF(10, 10), QPointF(50, 12), QPointF(30, 40)}));
}

void tst_ODPolygon::removePointOnTheLastButOneRebuildsTheHandlesAtOnce()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    // Three corners and the rubber-band point, as a double click finds them.
    place(polygon, {QPointF(10, 10), QPointF(50, 10), QPointF(30, 40), QPointF(31, 41)});
    QVERIFY(!polygon.isVisiblehandleMark());
    polygon.removePoint(polygon.length() - 2);

    const QVector<QPointF> left = {QPointF(10, 10), QPointF(50, 10), QPointF(31, 41)};
    QCOMPARE(polygon.points(), QPolygonF(left));
    QCOMPARE(polygon.orgData(), slotsOf(left));
    QVERIFY(polygon.isVisiblehandleMark());
    QCOMPARE(polygon.handles().size(), 3);
    for (int key = 0; key < 3; ++key)
        QCOMPARE(polygon.handles().value(key), polygon.MakeElpHandle(left[key]));
    QCOMPARE(polygon.graphicsHandleItem()->handleMap(), polygon.handles());
    QCOMPARE(polygon.handleItem()->path(), Kit::pathOfRects(polygon.handles()));
}

void tst_ODPolygon::removePointRebuildsTheReferenceFromTheCorners()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(1, 2)});
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40), QPointF(50, 60)});
    QCOMPARE(polygon.orgData().size(), 8);
    polygon.removePoint(0);
    // The old slots ahead are gone: the reference is the corners left.
    QCOMPARE(polygon.orgData(), (Params{30, 40, 50, 60}));
}

void tst_ODPolygon::removePointOutsideTheListChangesNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("the count") << 3;
    QTest::newRow("far beyond") << 1000;
}

void tst_ODPolygon::removePointOutsideTheListChangesNothing()
{
    QFETCH(int, index);
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    const QVector<QPointF> corners = {QPointF(10, 10), QPointF(50, 10), QPointF(30, 40)};
    place(polygon, corners);
    const QMap<int, QRectF> handles = polygon.handles();
    polygon.removePoint(index);
    QCOMPARE(polygon.points(), QPolygonF(corners));
    QCOMPARE(polygon.orgData(), slotsOf(corners));
    QCOMPARE(polygon.handles(), handles);
    QVERIFY(!polygon.isVisiblehandleMark());
    QVERIFY(polygon.handleItem()->path().isEmpty());

    ODPolygon empty(&scene);
    empty.removePoint(0);
    QVERIFY(empty.points().isEmpty());
    QVERIFY(empty.orgData().isEmpty());
}

void tst_ODPolygon::updateOrgDataWritesTheSlotsOfTheNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Reference 1, 2, 3, 4, 10, 20, 30, 40 (old slots ahead of new ones);
    // corners (10, 20), (30, 40).
    QTest::newRow("0 every corner to the front slots") << 0 << Params{10, 20, 30, 40, 10, 20, 30, 40};
    QTest::newRow("1 the first corner") << 1 << Params{10, 20, 3, 4, 10, 20, 30, 40};
    QTest::newRow("2 the second corner") << 2 << Params{1, 2, 30, 40, 10, 20, 30, 40};
    QTest::newRow("3 beyond the corners") << 3 << Params{1, 2, 3, 4, 10, 20, 30, 40};
    QTest::newRow("-1 nothing") << -1 << Params{1, 2, 3, 4, 10, 20, 30, 40};
}

void tst_ODPolygon::updateOrgDataWritesTheSlotsOfTheNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(1, 2), QPointF(3, 4)});
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(10, 20), QPointF(30, 40)});
    polygon.UpdateOrgData(number);
    QCOMPARE(polygon.orgData(), expected);
}

void tst_ODPolygon::updateCurDataNeedsTwoSlotsPerCorner()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    Params values = {1, 2, 3, 4};
    polygon.SetPolygonPoints(values);
    polygon.MoveHandleTo(1, QPointF(9, 9));
    polygon.UpdateCurData();
    QCOMPARE(polygon.points(), QPolygonF(QVector<QPointF>{QPointF(9, 9), QPointF(3, 4)}));
    // Old slots ahead: the counts differ and the list stays as it is.
    polygon.SetPolygonPoints(QVector<QPointF>{QPointF(7, 7)});
    polygon.UpdateCurData();
    QCOMPARE(polygon.points(), QPolygonF(QVector<QPointF>{QPointF(7, 7)}));
}

void tst_ODPolygon::handleDragMovesItsCorner_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QVector<QPointF>>("corners");
    const QPointF to(200, 5);
    QTest::newRow("1") << 1 << QVector<QPointF>{to, QPointF(50, 10), QPointF(30, 40)};
    QTest::newRow("2") << 2 << QVector<QPointF>{QPointF(10, 10), to, QPointF(30, 40)};
    QTest::newRow("3") << 3 << QVector<QPointF>{QPointF(10, 10), QPointF(50, 10), to};
    QTest::newRow("0 nothing") << 0 << QVector<QPointF>{QPointF(10, 10), QPointF(50, 10), QPointF(30, 40)};
    QTest::newRow("4 nothing") << 4 << QVector<QPointF>{QPointF(10, 10), QPointF(50, 10), QPointF(30, 40)};
    QTest::newRow("-2 nothing") << -2 << QVector<QPointF>{QPointF(10, 10), QPointF(50, 10), QPointF(30, 40)};
}

void tst_ODPolygon::handleDragMovesItsCorner()
{
    QFETCH(int, number);
    QFETCH(QVector<QPointF>, corners);
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    place(polygon, {QPointF(10, 10), QPointF(50, 10), QPointF(30, 40)});
    polygon.MoveHandleTo(number, QPointF(200, 5));
    QCOMPARE(polygon.points(), QPolygonF(corners));
    QCOMPARE(polygon.orgData(), slotsOf(corners));
    // Handle work never adds or removes a corner.
    QCOMPARE(polygon.pointSize(), 3);
}

void tst_ODPolygon::moveShapeMovesEveryCorner()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    place(polygon, {QPointF(10, 10), QPointF(50, 10), QPointF(30, 40)});
    polygon.MoveShape(QPointF(2.5, -1));
    const QVector<QPointF> moved = {QPointF(12.5, 9), QPointF(52.5, 9), QPointF(32.5, 39)};
    QCOMPARE(polygon.points(), QPolygonF(moved));
    QCOMPARE(polygon.orgData(), slotsOf(moved));
}

void tst_ODPolygon::handlesSitOnEveryCornerInOrder_data()
{
    Kit::addZoomRows();
}

void tst_ODPolygon::handlesSitOnEveryCornerInOrder()
{
    QFETCH(double, zoom);
    Kit::ZoomedShape<ODPolygon> zoomed(zoom);
    ODPolygon& polygon = zoomed.shape;
    place(polygon, kU);
    QCOMPARE(polygon.handles().size(), kU.size());
    for (int key = 0; key < kU.size(); ++key) {
        QCOMPARE(polygon.handles().value(key), polygon.MakeElpHandle(kU[key]));
        QCOMPARE(polygon.handles().value(key).width(), Kit::handleSideInScene(zoom));
        QCOMPARE(polygon.HitTest(kU[key], true), key + 1);
    }
}

void tst_ODPolygon::firstHandleWinsWhereCornersMeet()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    place(polygon, {QPointF(10, 10), QPointF(50, 10), QPointF(10, 10)});
    QCOMPARE(polygon.HitTest(QPointF(10, 10), true), 1);
    QCOMPARE(polygon.HitTest(QPointF(52, 12), true), 2);
    QCOMPARE(polygon.HitTest(QPointF(30, 10), true), 0);
}

void tst_ODPolygon::showShapeGivesPenBrushAndCorners()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPenColor(QColor(200, 10, 20));
    polygon.SetBrushColor(QColor(1, 2, 3, 40));
    polygon.SetLineWidth(2.9f);
    Params values = slotsOf(kU);
    polygon.SetPolygonPoints(values);
    polygon.ShowShape();
    QGraphicsPolygonItem* item = polygon.polygonItem();
    QCOMPARE(item->polygon(), QPolygonF(kU));
    QCOMPARE(item->pen().color(), QColor(200, 10, 20));
    QCOMPARE(item->pen().width(), 2);
    QCOMPARE(item->brush(), QBrush(QColor(1, 2, 3, 40), Qt::SolidPattern));
}

void tst_ODPolygon::hideShapeEmptiesThePolygonAndKeepsTheHandles()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    place(polygon, kU);
    polygon.ShowHandle();
    const QPainterPath handlePath = polygon.handleItem()->path();
    polygon.HideShape();
    QVERIFY(polygon.polygonItem()->polygon().isEmpty());
    QCOMPARE(polygon.polygonItem()->scene(), &scene);
    QCOMPARE(polygon.handleItem()->path(), handlePath);
    QCOMPARE(polygon.handles().size(), kU.size());
    QCOMPARE(polygon.orgData(), slotsOf(kU));
}

void tst_ODPolygon::showHandleGivesPathPenAndMapAtTheSameZValue()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    polygon.SetPenColor(QColor(10, 20, 30));
    polygon.SetLineWidth(4);
    polygon.setZValue(12);
    Params values = slotsOf(kU);
    polygon.SetPolygonPoints(values);
    polygon.ShowShape();
    polygon.ShowHandle();
    QVERIFY(polygon.isVisiblehandleMark());
    QCOMPARE(polygon.handles().size(), kU.size());
    QCOMPARE(polygon.handleItem()->path(), Kit::pathOfRects(polygon.handles()));
    QCOMPARE(polygon.graphicsHandleItem()->handleMap(), polygon.handles());
    QCOMPARE(polygon.handleItem()->pen().width(), 0);
    QCOMPARE(polygon.handleItem()->pen().color(), QColor(10, 20, 30));
    // Not raised: the handle item keeps the polygon's z value.
    QCOMPARE(polygon.handleItem()->zValue(), 12.0);

    polygon.HideHandle();
    QVERIFY(!polygon.isVisiblehandleMark());
    QVERIFY(polygon.handleItem()->path().isEmpty());
    QCOMPARE(polygon.graphicsHandleItem()->handleMap().size(), kU.size());
}

void tst_ODPolygon::bodyIsTheWholeBoundingBox_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("hit");
    QTest::newRow("in the notch") << kInTheNotch << 1;
    QTest::newRow("in an arm") << kInTheLeftArm << 1;
    QTest::newRow("top of the notch's opening") << QPointF(80, 40) << 1;
    QTest::newRow("a corner") << QPointF(120, 110) << 1;
    QTest::newRow("left of the box") << QPointF(30, 70) << 0;
    QTest::newRow("below the box") << QPointF(80, 120) << 0;
}

void tst_ODPolygon::bodyIsTheWholeBoundingBox()
{
    QFETCH(QPointF, point);
    QFETCH(int, hit);
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    place(polygon, kU);
    QCOMPARE(polygon.HitTest(point, false), hit);
    QCOMPARE(polygon.HitTest(point, false), polygon.polygonItem()->boundingRect().contains(point) ? 1 : 0);
    if (point == kInTheNotch)
        QVERIFY(!polygon.polygonItem()->contains(point));
}

void tst_ODPolygon::clickInTheNotchSelectsThePolygon()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    auto* polygon = new ODPolygon(w.scene());
    polygon->SetPenColor(w.scene()->getPenColor());
    place(*polygon, kU);
    w.active()->addShape(polygon);

    w.click(kInTheNotch);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{polygon}));
    QCOMPARE(polygon->graphicsHandleItem()->handleMap().size(), kU.size());
    QCOMPARE(log.shapeEvents(), QStringList{Kit::clickedText(polygon->GetShapeID())});
}

void tst_ODPolygon::handleCursorIsSizeAllOverAnyCorner_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<Qt::CursorShape>("cursor");
    QTest::newRow("first corner") << kU[0] << Qt::SizeAllCursor;
    QTest::newRow("last corner, off centre") << kU[7] + QPointF(2, -2) << Qt::SizeAllCursor;
    QTest::newRow("in the notch") << kInTheNotch << Qt::ArrowCursor;
    QTest::newRow("outside") << QPointF(0, 0) << Qt::ArrowCursor;
}

void tst_ODPolygon::handleCursorIsSizeAllOverAnyCorner()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODPolygon polygon(&v.scene);
    place(polygon, kU);
    polygon.ShowHandle();
    polygon.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);

    polygon.HideHandle();
    v.view.viewport()->setCursor(Qt::WaitCursor);
    polygon.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), Qt::ArrowCursor);
}

void tst_ODPolygon::setZValueReachesBothItems()
{
    QGraphicsScene scene;
    ODPolygon polygon(&scene);
    verifyZValueReaches(polygon, {polygon.polygonItem(), polygon.handleItem()});
}

void tst_ODPolygon::concavePolygonIsPaintedWithItsNotchOpen()
{
    PictureWindow w;
    const QColor red(230, 20, 20);
    auto* polygon = Kit::addPointListShape<ODPolygon>(w, red, red, 1);
    place(*polygon, kU);
    polygon->ShowHandle();

    const QImage image = w.grabViewport();
    Kit::verifyColourAt(w.view(), image, {kInTheLeftArm, QPointF(80, 100)}, red.rgb());
    // The notch shows the picture's grey, inside the bounding box.
    Kit::verifyColourAt(w.view(), image, {kInTheNotch}, Kit::pictureGrey());
    // A blue square on every corner, above the fill.
    Kit::verifyHandleSquaresOnlyAt(w.view(), image, kU);
}

QTEST_MAIN(tst_ODPolygon)
#include "tst_odpolygon.moc"
