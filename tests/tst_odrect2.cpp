// The rotated rectangle: centre, full sizes and an angle; handles turned with
// it; resizes worked in the unturned frame around a fixed rotation centre and
// carried into the scene at the release.

#include "odrect2.h"
#include "Rect2HandleItem.h"
#include "geometryhelpers.h"
#include "searchline.h"
#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QtTest>

#include <cmath>

using Kit::near;
using Kit::Params;
using Kit::paramsOf;
using Kit::place;
using Kit::text;

class tst_ODRect2 : public QObject
{
    Q_OBJECT

private slots:
    void newShapeIsAZeroSizeRectangleAtThePoint();
    void searchLinesAreOnFromTheStart();
    void getParamFailsWithoutFourValuesAndWritesNothing();
    void getParamGivesTheSameInBothForms();
    void handlesOfARectangleTurnedBy90_data();
    void handlesOfARectangleTurnedBy90();
    void topEdgeOfTheUnturnedFrameIsTheLeftEdgeAtAngle90();
    void rotationHandleAngles_data();
    void rotationHandleAngles();
    void rotationDragKeepsTheCentreFollowed();
    void cornerDragOnATurnedRectangleKeepsTheFarCornerOnScreen();
    void edgeDragPastTheOppositeEdgeGivesNegativeWidthUntilRelease();
    void edgeHandlesStoreOnlyTheirSlots();
    void moveShapeWithoutReferenceMovesOnlyTheCentre();
    void moveShapeWithReferenceMovesCentreAndRotationCentre();
    void memberRotatePointAtAngleZeroIsATinyDistanceOff();
    void showShapeTurnsTheItemsAroundTheRotationCentre();
    void searchLinesAreDrawnInTheUnturnedFrame();
    void bodyHitTestIsInTheTurnedRectangle();
    void handleHitTestFindsTheRotationHandle();
    void showHandleGivesTheItemMapAngleAndZ();
    void hideHandleOnlyEmptiesTheMap();
    void handlePathHasARoundRotationHandle();
    void zValueGoesToAllItems();
    void itemsLeaveTheSceneWithTheShape();
};

void tst_ODRect2::newShapeIsAZeroSizeRectangleAtThePoint()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene, QPointF(30, 40));
    QCOMPARE(shape.GetDrawMode(), DM_RECT2);
    QCOMPARE(shape.center(), QPointF(30, 40));
    QCOMPARE(shape.width(), 0.0);
    QCOMPARE(shape.height(), 0.0);
    QCOMPARE(shape.rotateAngle(), 0.0);
    QVERIFY(shape.followCenter());
    QVERIFY(shape.orgData().isEmpty());
    QCOMPARE(shape.handles().size(), 9);
    for (int key = 0; key < 8; ++key)
        QVERIFY2(near(shape.handles().value(key).center(), QPointF(30, 40)), qPrintable(QString::number(key)));
    QVERIFY(near(shape.handles().value(8).center(), QPointF(30, 30)));
    QCOMPARE(shape.handles().value(0).size(), QSizeF(6, 6));
}

void tst_ODRect2::searchLinesAreOnFromTheStart()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    QVERIFY(shape.HaveSearchLine());
    shape.SetSearchLineFlag(false);
    QVERIFY(!shape.HaveSearchLine());
}

void tst_ODRect2::getParamFailsWithoutFourValuesAndWritesNothing()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene, QPointF(5, 5));
    double x = -1.0, y = -1.0, w = -1.0, h = -1.0, a = -1.0;
    int d = -1, c = -1;
    QVERIFY(!shape.GetParam(&x, &y, &w, &h, &a, &d, &c));
    QCOMPARE((Params{x, y, w, h, a}), (Params{-1, -1, -1, -1, -1}));
    QCOMPARE(d, -1);
    QCOMPARE(c, -1);
}

void tst_ODRect2::getParamGivesTheSameInBothForms()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    shape.SetRect(10, 20, 30, 40);
    shape.SetRoateAngle(33.5);
    shape.SetSearchLine(SL_BOTTOM_TO_TOP, 7);
    double v[5] = {};
    int d = -1, c = -1;
    QVERIFY(shape.GetParam(&v[0], &v[1], &v[2], &v[3], &v[4], &d, &c));
    QCOMPARE((Params{v[0], v[1], v[2], v[3], v[4]}), (Params{10, 20, 30, 40, 33.5}));
    QCOMPARE(d, int(SL_BOTTOM_TO_TOP));
    QCOMPARE(c, 7);
    double u[5] = {};
    SEARCHLINEDIRECTION e = SL_LEFT_TO_RIGHT;
    int c2 = -1;
    QVERIFY(shape.GetParam(&u[0], &u[1], &u[2], &u[3], &u[4], &e, &c2));
    QCOMPARE((Params{u[0], u[1], u[2], u[3], u[4]}), (Params{10, 20, 30, 40, 33.5}));
    QCOMPARE(e, SL_BOTTOM_TO_TOP);
    QCOMPARE(c2, 7);
}

void tst_ODRect2::handlesOfARectangleTurnedBy90_data()
{
    Kit::addZoomRows({1.0, 4.0, 0.5});
}

void tst_ODRect2::handlesOfARectangleTurnedBy90()
{
    QFETCH(double, zoom);
    const double s = Kit::handleScale(zoom);
    Kit::ZoomedShape<ODRect2> zoomed(zoom);
    ODRect2& shape = zoomed.shape;
    place(shape, 100, 100, 40, 20, 90);

    // Turned a quarter counter-clockwise on the screen about (100, 100).
    const QPointF expected[9] = {QPointF(90, 120),  QPointF(90, 100),  QPointF(90, 80),
                                 QPointF(100, 80),  QPointF(110, 80),  QPointF(110, 100),
                                 QPointF(110, 120), QPointF(100, 120), QPointF(100 - 10 - 10 * s, 100)};
    QCOMPARE(shape.handles().size(), 9);
    for (int key = 0; key < 9; ++key) {
        const QRectF handle = shape.handles().value(key);
        QVERIFY2(near(handle.center(), expected[key]),
                 qPrintable(QString("key %1 at %2").arg(key).arg(text(handle.center()))));
        QVERIFY(std::abs(handle.width() - 6 * s) < 1e-9);
    }
}

void tst_ODRect2::topEdgeOfTheUnturnedFrameIsTheLeftEdgeAtAngle90()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 90);
    // The rotation handle is left of the centre, and so is the top-centre handle.
    const QPointF rotation = shape.handles().value(8).center();
    const QPointF topCentre = shape.handles().value(1).center();
    QVERIFY(rotation.x() < 100 && std::abs(rotation.y() - 100) < 1e-3);
    QVERIFY(topCentre.x() < 100 && std::abs(topCentre.y() - 100) < 1e-3);
    QVERIFY(near(shape.RotatePoint(QPointF(100, 90)), QPointF(90, 100)));
}

void tst_ODRect2::rotationHandleAngles_data()
{
    QTest::addColumn<QPointF>("mouse");
    QTest::addColumn<double>("angle");
    QTest::newRow("straight above: 360, not 0") << QPointF(100, 40) << 360.0;
    QTest::newRow("straight right") << QPointF(170, 100) << 270.0;
    QTest::newRow("straight left") << QPointF(30, 100) << 90.0;
    QTest::newRow("straight below") << QPointF(100, 160) << 180.0;
}

void tst_ODRect2::rotationHandleAngles()
{
    QFETCH(QPointF, mouse);
    QFETCH(double, angle);
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    shape.MoveHandleTo(9, mouse);
    QCOMPARE(shape.rotateAngle(), angle);
    const Params p = paramsOf(shape);
    QCOMPARE(p.value(4), angle);
    // The rotation writes no slot.
    QCOMPARE(p.mid(0, 4), (Params{100, 100, 40, 20}));
}

void tst_ODRect2::rotationDragKeepsTheCentreFollowed()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    shape.MoveHandleTo(9, QPointF(30, 100));
    QVERIFY(shape.followCenter());
    QCOMPARE(shape.rotateCenter(), QPointF(100, 100));
    shape.AdjustParameter();
    QVERIFY(near(shape.center(), QPointF(100, 100), 1e-9));
    QCOMPARE(paramsOf(shape).mid(0, 4), (Params{shape.center().x(), shape.center().y(), 40, 20}));
}

void tst_ODRect2::cornerDragOnATurnedRectangleKeepsTheFarCornerOnScreen()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 90);
    const QPointF farCorner = shape.handles().value(4).center();
    QVERIFY(near(farCorner, QPointF(110, 80)));

    // The top-left corner, bottom left on the screen, dragged down and left.
    const QPointF mouse(85, 130);
    shape.MoveHandleTo(1, mouse);
    QVERIFY(!shape.followCenter());
    QCOMPARE(shape.rotateCenter(), QPointF(100, 100));
    // During the drag the centre is in the unturned frame around the old centre.
    const QPointF local = RotatePoint(mouse, QPointF(100, 100), 90.0f);
    const QPointF unturnedCentre = (local + QPointF(120, 110)) / 2;
    const Params during = paramsOf(shape);
    QCOMPARE(during.mid(0, 4),
             (Params{unturnedCentre.x(), unturnedCentre.y(), 120 - local.x(), 110 - local.y()}));
    // The items still turn about the old centre.
    shape.ShowShape();
    QCOMPARE(shape.rotateCenter(), QPointF(100, 100));
    QCOMPARE(shape.rectItem()->transformOriginPoint(), QPointF(100, 100));

    shape.AdjustParameter();
    QVERIFY(shape.followCenter());
    const QPointF sceneCentre = RotatePoint(unturnedCentre, QPointF(100, 100), -90.0f);
    QCOMPARE(shape.center(), sceneCentre);
    QCOMPARE(shape.rotateCenter(), sceneCentre);
    QCOMPARE(paramsOf(shape).mid(0, 2), (Params{sceneCentre.x(), sceneCentre.y()}));
    QVERIFY(!near(sceneCentre, unturnedCentre));

    shape.ShowShape();
    shape.UpdateHandles();
    QVERIFY2(near(shape.handles().value(4).center(), farCorner), qPrintable(text(shape.handles().value(4).center())));
    QVERIFY2(near(shape.handles().value(0).center(), mouse), qPrintable(text(shape.handles().value(0).center())));
    // On the screen the rectangle spans from the mouse to the far corner.
    const QRectF seen = shape.rectItem()->sceneBoundingRect();
    QVERIFY(std::abs(seen.left() - 85) < 1.0 && std::abs(seen.right() - 110) < 1.0);
    QVERIFY(std::abs(seen.top() - 80) < 1.0 && std::abs(seen.bottom() - 130) < 1.0);
}

void tst_ODRect2::edgeDragPastTheOppositeEdgeGivesNegativeWidthUntilRelease()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    // The right edge, handle 4, dragged 10 past the left edge at 80.
    shape.MoveHandleTo(4, QPointF(70, 100));
    QCOMPARE(shape.width(), -10.0);
    QCOMPARE(shape.center(), QPointF(75, 100));
    QCOMPARE(paramsOf(shape).mid(0, 4), (Params{75, 100, -10, 20}));
    // Shown normalised.
    shape.ShowShape();
    QCOMPARE(shape.rectItem()->rect(), QRectF(70, 90, 10, 20));

    shape.AdjustParameter();
    QCOMPARE(shape.width(), 10.0);
    QCOMPARE(shape.orgData(), (QVector<double>{75, 100, 10, 20}));
}

void tst_ODRect2::edgeHandlesStoreOnlyTheirSlots()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    shape.MoveHandleTo(2, QPointF(500, 80));
    QCOMPARE(shape.orgData(), (QVector<double>{100, 95, 40, 30}));
    shape.MoveHandleTo(6, QPointF(500, 120));
    QCOMPARE(shape.orgData(), (QVector<double>{100, 100, 40, 40}));
    shape.MoveHandleTo(8, QPointF(60, 500));
    QCOMPARE(shape.orgData(), (QVector<double>{90, 100, 60, 40}));
    shape.MoveHandleTo(5, QPointF(130, 130));
    QCOMPARE(shape.orgData(), (QVector<double>{95, 105, 70, 50}));
    shape.MoveHandleTo(3, QPointF(140, 70));
    QCOMPARE(shape.orgData(), (QVector<double>{100, 100, 80, 60}));
    shape.MoveHandleTo(7, QPointF(50, 140));
    QCOMPARE(shape.orgData(), (QVector<double>{95, 105, 90, 70}));
    // Number 9 and unknown numbers write nothing.
    shape.UpdateOrgData(9);
    shape.UpdateOrgData(0);
    QCOMPARE(shape.orgData(), (QVector<double>{95, 105, 90, 70}));
}

void tst_ODRect2::moveShapeWithoutReferenceMovesOnlyTheCentre()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene, QPointF(10, 20));
    shape.MoveShape(QPointF(5, -3));
    QCOMPARE(shape.center(), QPointF(15, 17));
    QVERIFY(shape.orgData().isEmpty());
    QCOMPARE(shape.rotateCenter(), QPointF(0, 0));
    // No slots to reload from: the move stays.
    shape.ShowShape();
    QCOMPARE(shape.center(), QPointF(15, 17));
    QVERIFY(shape.orgData().isEmpty());
}

void tst_ODRect2::moveShapeWithReferenceMovesCentreAndRotationCentre()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 30);
    shape.MoveShape(QPointF(5, -3));
    QCOMPARE(shape.center(), QPointF(105, 97));
    QCOMPARE(shape.rotateCenter(), QPointF(105, 97));
    QCOMPARE(shape.orgData(), (QVector<double>{105, 97, 40, 20}));
    QCOMPARE(shape.rotateAngle(), 30.0);
}

void tst_ODRect2::memberRotatePointAtAngleZeroIsATinyDistanceOff()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    const QPointF corner(120, 110);
    // The common function returns the point untouched at angle 0.
    QCOMPARE(RotatePoint(corner, QPointF(100, 100), 0.0f), corner);
    // The member turns by 360 through the trigonometry.
    const QPointF turned = shape.RotatePoint(corner);
    QVERIFY2(turned != corner, qPrintable(text(turned)));
    QVERIFY(near(turned, corner, 1e-3));
    QCOMPARE(turned, RotatePoint(corner, QPointF(100, 100), 360.0f));
    const QPointF handle = shape.handles().value(4).center();
    QVERIFY2(handle != corner, qPrintable(text(handle)));
    QVERIFY(near(handle, corner, 1e-3));
}

void tst_ODRect2::showShapeTurnsTheItemsAroundTheRotationCentre()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    shape.SetPenColor(Qt::red);
    shape.SetLineWidth(2.7f);
    shape.SetBrushColor(QColor(0, 0, 255, 40));
    place(shape, 100, 100, 40, 20, 30);
    QCOMPARE(shape.rectItem()->rect(), QRectF(80, 90, 40, 20));
    QCOMPARE(shape.rectItem()->rotation(), -30.0);
    QCOMPARE(shape.searchLineItem()->rotation(), -30.0);
    QCOMPARE(shape.rectItem()->transformOriginPoint(), QPointF(100, 100));
    QCOMPARE(shape.searchLineItem()->transformOriginPoint(), QPointF(100, 100));
    QCOMPARE(shape.rectItem()->pen().color(), QColor(Qt::red));
    QCOMPARE(shape.rectItem()->pen().width(), 2);
    QCOMPARE(shape.searchLineItem()->pen().width(), 2);
    QCOMPARE(shape.rectItem()->brush(), QBrush(QColor(0, 0, 255, 40), Qt::SolidPattern));
    QCOMPARE(shape.rotateCenter(), QPointF(100, 100));
}

void tst_ODRect2::searchLinesAreDrawnInTheUnturnedFrame()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    shape.SetSearchLine(SL_TOP_TO_BOTTOM, 4);
    place(shape, 100, 100, 40, 20, 45);
    const QPainterPath expected = SearchLine::GenSearchlines(QRectF(80, 90, 40, 20), SL_TOP_TO_BOTTOM, 4);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(shape.searchLineItem()->path(), expected);
    QCOMPARE(shape.GenSearchlineItem(QLine(0, 0, 30, 0)), SearchLine::GenSearchlineItem(QLine(0, 0, 30, 0)));
}

void tst_ODRect2::bodyHitTestIsInTheTurnedRectangle()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 90);
    // On the screen it spans x 90 .. 110 and y 80 .. 120.
    QCOMPARE(shape.HitTest(QPointF(100, 100), false), 1);
    QCOMPARE(shape.HitTest(QPointF(105, 117), false), 1);
    QCOMPARE(shape.HitTest(QPointF(117, 100), false), 0);
    QCOMPARE(shape.HitTest(QPointF(100, 125), false), 0);
}

void tst_ODRect2::handleHitTestFindsTheRotationHandle()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 90);
    QCOMPARE(shape.HitTest(QPointF(80, 100), true), 9);
    QCOMPARE(shape.HitTest(QPointF(90, 120), true), 1);
    QCOMPARE(shape.HitTest(QPointF(110, 100), true), 6);
    QCOMPARE(shape.HitTest(QPointF(100, 100), true), 0);
}

void tst_ODRect2::showHandleGivesTheItemMapAngleAndZ()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    shape.setZValue(5);
    place(shape, 100, 100, 40, 20, 90);
    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    Rect2HandleItem* item = shape.rect2HandleItem();
    QCOMPARE(item->handleMap(), shape.handles());
    QCOMPARE(item->handleMap().size(), 9);
    QCOMPARE(item->rotateAngle(), -90.0f);
    QCOMPARE(item->zValue(), 6.0);
    QCOMPARE(item->pen().width(), 0);
    QCOMPARE(item->brush(), QBrush(Qt::blue, Qt::SolidPattern));
    // The path covers every handle and the stem above the top edge.
    const QRectF extent = item->path().boundingRect();
    for (const QRectF& handle : shape.handles())
        QVERIFY(extent.contains(handle.center()));
    QVERIFY(item->path().contains(shape.handles().value(8).center()));
}

void tst_ODRect2::hideHandleOnlyEmptiesTheMap()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    shape.ShowHandle();
    const QPainterPath path = shape.handleItem()->path();
    shape.HideHandle();
    QVERIFY(shape.rect2HandleItem()->handleMap().isEmpty());
    QCOMPARE(shape.handleItem()->path(), path);
    QVERIFY(shape.isVisiblehandleMark());
}

void tst_ODRect2::handlePathHasARoundRotationHandle()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    place(shape, 100, 100, 40, 20, 0);
    const QPainterPath path = shape.handlePath();
    const QRectF rotation = shape.handles().value(8);
    QVERIFY(path.contains(rotation.center()));
    // A disc: the corner of its square is outside.
    QVERIFY(!path.contains(rotation.topLeft() + QPointF(0.2, 0.2)));
    QVERIFY(path.boundingRect().contains(shape.handles().value(0).center()));
}

void tst_ODRect2::zValueGoesToAllItems()
{
    QGraphicsScene scene;
    ODRect2 shape(&scene);
    shape.setZValue(12);
    QCOMPARE(shape.rectItem()->zValue(), 12.0);
    QCOMPARE(shape.searchLineItem()->zValue(), 12.0);
    QCOMPARE(shape.handleItem()->zValue(), 12.0);
}

void tst_ODRect2::itemsLeaveTheSceneWithTheShape()
{
    QGraphicsScene scene;
    {
        ODRect2 shape(&scene, QPointF(1, 1));
        QCOMPARE(scene.items().size(), 3);
    }
    QCOMPARE(scene.items().size(), 0);
}

QTEST_MAIN(tst_ODRect2)
#include "tst_odrect2.moc"
