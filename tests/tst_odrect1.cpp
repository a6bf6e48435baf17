#include "odrect1.h"
#include "Rect1HandleItem.h"
#include "ShapeLayer.h"

#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainterPath>
#include <QtTest>

#include <cmath>

namespace {

using Params = QVector<double>;

constexpr double kPi = 3.14159265358979323846;

// One arrow of a search line as the rectangle draws it: single-precision
// length, angle and head, double-precision wings 0.25 radian off the line.
QPainterPath expectedArrow(const QLine& line)
{
    const QPointF p1 = line.p1();
    const QPointF p2 = line.p2();
    const double dx = double(line.dx());
    const double dy = double(line.dy());
    const float length = float(std::sqrt(dx * dx + dy * dy));
    const int head = int(length / 15.0f);
    float angle = std::acos(float(line.dx()) / length);
    if (line.y1() <= line.y2() && line.x1() >= line.x2())
        angle = -angle;
    const double h = double(head);
    const QPointF a1(p2.x() - h * std::cos(angle + 0.25), p2.y() + h * std::sin(angle + 0.25));
    const QPointF a2(p2.x() - h * std::cos(angle - 0.25), p2.y() + h * std::sin(angle - 0.25));
    QPainterPath path;
    path.moveTo(a1);
    path.lineTo(p2);
    path.lineTo(a2);
    path.moveTo(p1);
    path.lineTo(p2);
    return path;
}

// The lines across a rectangle: offsets in float, every coordinate truncated.
QVector<QLine> expectedLines(const QRectF& rect, int direction, int count)
{
    QVector<QLine> lines;
    if (count < 2)
        return lines;
    const QRectF r = rect.normalized();
    const float stepX = float(r.width()) / float(count - 1);
    const float stepY = float(r.height()) / float(count - 1);
    for (int i = 0; i < count; ++i) {
        const int x = int(r.left() + stepX * i);
        const int y = int(r.top() + stepY * i);
        switch (direction) {
        case 0: lines << QLine(x, int(r.top()), x, int(r.bottom())); break;
        case 1: lines << QLine(x, int(r.bottom()), x, int(r.top())); break;
        case 2: lines << QLine(int(r.left()), y, int(r.right()), y); break;
        case 3: lines << QLine(int(r.right()), y, int(r.left()), y); break;
        default: return {};
        }
    }
    return lines;
}

QPainterPath expectedSearchlines(const QRectF& rect, int direction, int count)
{
    QPainterPath path;
    for (const QLine& line : expectedLines(rect, direction, count))
        path.addPath(expectedArrow(line));
    return path;
}

// Element by element, bit for bit.
bool samePath(const QPainterPath& actual, const QPainterPath& expected, QString* why)
{
    if (actual.elementCount() != expected.elementCount()) {
        *why = QString("%1 elements, expected %2").arg(actual.elementCount()).arg(expected.elementCount());
        return false;
    }
    for (int i = 0; i < actual.elementCount(); ++i) {
        const QPainterPath::Element a = actual.elementAt(i);
        const QPainterPath::Element e = expected.elementAt(i);
        if (a.type != e.type || a.x != e.x || a.y != e.y) {
            *why = QString("element %1: type %2 (%3, %4), expected type %5 (%6, %7)")
                       .arg(i)
                       .arg(a.type)
                       .arg(a.x, 0, 'g', 17)
                       .arg(a.y, 0, 'g', 17)
                       .arg(e.type)
                       .arg(e.x, 0, 'g', 17)
                       .arg(e.y, 0, 'g', 17);
            return false;
        }
    }
    return true;
}

struct Arrow
{
    QPointF wing1;
    QPointF tip;
    QPointF wing2;
    QPointF start;
    QPointF end;
};

// Splits a search-line path of headed arrows: moveTo wing, lineTo tip, lineTo
// wing, moveTo start, lineTo end, per arrow.
QVector<Arrow> arrowsOf(const QPainterPath& path)
{
    QVector<Arrow> arrows;
    for (int i = 0; i + 4 < path.elementCount(); i += 5) {
        Arrow arrow;
        arrow.wing1 = path.elementAt(i);
        arrow.tip = path.elementAt(i + 1);
        arrow.wing2 = path.elementAt(i + 2);
        arrow.start = path.elementAt(i + 3);
        arrow.end = path.elementAt(i + 4);
        arrows << arrow;
    }
    return arrows;
}

} // namespace

using Kit::edgesOf;
using Kit::paramsOf;
using Kit::pathOfRects;
using Kit::addBoxHandleCursorRows;
using Kit::CursorView;
using Kit::verifyZValueReaches;

Q_DECLARE_METATYPE(Params)

// The axis-parallel rectangle: its reference parameters and current geometry,
// handle drags that cross over, moves, display items, hit tests, cursors and
// the search-line arrows.
class tst_ODRect1 : public QObject
{
    Q_OBJECT

private slots:
    void pointConstructorMakesZeroSizeRectangleWithHandles();
    void defaultsOfSearchLinesAndMode();
    void setRectReplacesReferenceAndShowsNothing();
    void showShapeNormalisesCurrentAndKeepsReference();
    void showShapeGivesPenAndBrushToItems();
    void updateCurDataNeedsFourSlots();

    void updateOrgDataWritesSlotsOfNumber_data();
    void updateOrgDataWritesSlotsOfNumber();
    void updateOrgDataRebuildsFreshReference_data();
    void updateOrgDataRebuildsFreshReference();
    void moveHandleToMovesCornerOrEdge_data();
    void moveHandleToMovesCornerOrEdge();

    void crossingDragKeepsFarCornerInReference();
    void adjustParameterNormalisesCurrentRectangleIntoAllSlots();
    void getParamReportsCrossedReferenceUntilRelease();
    void getParamFalseUntilFirstMoveHandleTo();
    void getParamFalseUntilFirstMoveShape();
    void getParamReturnsDirectionAndCountAsStored();

    void moveShapeAddsDeltaToAllSides();
    void moveShapeKeepsCrossedReferenceCrossed();

    void handlesSitAtCornersAndEdgeCentres_data();
    void handlesSitAtCornersAndEdgeCentres();
    void showHandleRaisesHandleItemAndPassesMap();
    void hideHandleOnlyEmptiesMap();
    void hideShapeEmptiesDisplayItems();
    void bodyHitTestUsesBoundingRectOfRectItem();
    void setZValueReachesAllThreeItems();
    void handleCursorOnViewport_data();
    void handleCursorOnViewport();
    void handleCursorNeedsVisibleHandleMark();

    void searchLineCountOneShowsNoLines();
    void searchLineCountTwoDrawsArrowsOnBothEdges();
    void searchLinesAreTruncatedNotRounded();
    void searchLinesTruncateTowardZero();
    void shortSearchLinesHaveNoHeads();
    void searchLineDirections_data();
    void searchLineDirections();
    void searchLineInvalidDirectionShowsNothing_data();
    void searchLineInvalidDirectionShowsNothing();
    void searchLinesFollowTheRectangleWhileDragging();
    void searchlineItemMatchesArrowFormula_data();
    void searchlineItemMatchesArrowFormula();

    void selectedRectangleShowsFixedSizeHandlesAtZoomFour();
};

void tst_ODRect1::pointConstructorMakesZeroSizeRectangleWithHandles()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene, QPointF(12.5, 7));
    QCOMPARE(shape.currentRect(), QRectF(QPointF(12.5, 7), QSizeF(0, 0)));
    QVERIFY(shape.orgData().isEmpty());
    QCOMPARE(shape.handles().size(), 8);
    for (int key = 0; key < 8; ++key)
        QCOMPARE(shape.handles().value(key), QRectF(9.5, 4, 6, 6));
    // Everything a zero-size shape has is at the point: the first key wins.
    QCOMPARE(shape.HitTest(QPointF(12.5, 7), true), 1);

    ODRect1 plain(&scene);
    QVERIFY(plain.currentRect().isNull());
    QVERIFY(plain.handles().isEmpty());
}

void tst_ODRect1::defaultsOfSearchLinesAndMode()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    QCOMPARE(shape.GetDrawMode(), DM_RECT1);
    QVERIFY(!shape.HaveSearchLine());
    shape.SetRect(0, 0, 1, 1);
    int direction = -1;
    int count = -1;
    bool ok = false;
    paramsOf(shape, &ok, &direction, &count);
    QVERIFY(ok);
    QCOMPARE(direction, 2);
    QCOMPARE(count, 0);
    shape.SetSearchLineFlag(true);
    QVERIFY(shape.HaveSearchLine());
    shape.SetSearchLineFlag(false);
    QVERIFY(!shape.HaveSearchLine());
    shape.setDrawMode(DM_RAKERECT1);
    QCOMPARE(shape.GetDrawMode(), DM_RAKERECT1);
    // The items are in the scene from the start, with nothing to show.
    QCOMPARE(shape.rectItem()->scene(), &scene);
    QCOMPARE(shape.searchLineItem()->scene(), &scene);
    QVERIFY(shape.rectItem()->rect().isNull());
    QVERIFY(shape.searchLineItem()->path().isEmpty());
}

void tst_ODRect1::setRectReplacesReferenceAndShowsNothing()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene, QPointF(1, 1));
    shape.SetRect(30, 40, 10, 20);
    QCOMPARE(shape.orgData(), (Params{30, 40, 10, 20}));
    QCOMPARE(shape.currentRect(), QRectF(1, 1, 0, 0));
    QVERIFY(shape.rectItem()->rect().isNull());
    shape.SetRect(-1.5, 2.25, 3, 4);
    QCOMPARE(shape.orgData(), (Params{-1.5, 2.25, 3, 4}));
}

void tst_ODRect1::showShapeNormalisesCurrentAndKeepsReference()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(30, 40, 10, 20);
    shape.ShowShape();
    QCOMPARE(shape.orgData(), (Params{30, 40, 10, 20}));
    QCOMPARE(edgesOf(shape.currentRect()), (Params{10, 20, 30, 40}));
    QCOMPARE(shape.rectItem()->rect(), QRectF(10, 20, 20, 20));
}

void tst_ODRect1::showShapeGivesPenAndBrushToItems()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetPenColor(QColor(0, 0, 255, 255));
    shape.SetBrushColor(QColor(0, 255, 0, 0));
    shape.SetLineWidth(3.7f);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SL_TOP_TO_BOTTOM, 3);
    shape.ShowShape();
    const QPen pen = shape.rectItem()->pen();
    QCOMPARE(pen.color(), QColor(0, 0, 255, 255));
    QCOMPARE(pen.width(), 3);
    QCOMPARE(shape.rectItem()->brush(), QBrush(QColor(0, 255, 0, 0), Qt::SolidPattern));
    QCOMPARE(shape.searchLineItem()->pen(), pen);
    QCOMPARE(shape.searchLineItem()->brush().style(), Qt::NoBrush);
    QVERIFY(!shape.searchLineItem()->path().isEmpty());

    // The colours are read again at every show.
    shape.SetPenColor(QColor(255, 0, 0));
    shape.SetBrushColor(QColor(1, 2, 3, 4));
    shape.SetLineWidth(0.5f);
    shape.ShowShape();
    QCOMPARE(shape.rectItem()->pen().color(), QColor(255, 0, 0));
    QCOMPARE(shape.rectItem()->pen().width(), 0);
    QCOMPARE(shape.rectItem()->brush(), QBrush(QColor(1, 2, 3, 4), Qt::SolidPattern));
    QCOMPARE(shape.searchLineItem()->pen().color(), QColor(255, 0, 0));
}

void tst_ODRect1::updateCurDataNeedsFourSlots()
{
    QGraphicsScene scene;
    ODRect1 fresh(&scene, QPointF(5, 5));
    fresh.UpdateCurData();
    QCOMPARE(fresh.currentRect(), QRectF(5, 5, 0, 0));
    fresh.ShowShape();
    QCOMPARE(fresh.rectItem()->rect(), QRectF(5, 5, 0, 0));
    QVERIFY(fresh.orgData().isEmpty());

    ODRect1 shape(&scene);
    shape.SetRect(10, 12, 0, 1);
    shape.UpdateCurData();
    // All four sides as they stand: no normalising here.
    QCOMPARE(edgesOf(shape.currentRect()), (Params{10, 12, 0, 1}));
}

void tst_ODRect1::updateOrgDataWritesSlotsOfNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Params>("expected");
    // Current 1, 2, 3, 4 over a reference of 10, 20, 30, 40.
    QTest::newRow("1: left, top") << 1 << Params{1, 2, 30, 40};
    QTest::newRow("2: top") << 2 << Params{10, 2, 30, 40};
    QTest::newRow("3: right, top") << 3 << Params{10, 2, 3, 40};
    QTest::newRow("4: right") << 4 << Params{10, 20, 3, 40};
    QTest::newRow("5: right, bottom") << 5 << Params{10, 20, 3, 4};
    QTest::newRow("6: bottom") << 6 << Params{10, 20, 30, 4};
    QTest::newRow("7: left, bottom") << 7 << Params{1, 20, 30, 4};
    QTest::newRow("8: left") << 8 << Params{1, 20, 30, 40};
    QTest::newRow("0: none") << 0 << Params{10, 20, 30, 40};
    QTest::newRow("9: none") << 9 << Params{10, 20, 30, 40};
    QTest::newRow("-1: none") << -1 << Params{10, 20, 30, 40};
}

void tst_ODRect1::updateOrgDataWritesSlotsOfNumber()
{
    QFETCH(int, number);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(1, 2, 3, 4);
    shape.ShowShape();
    shape.SetRect(10, 20, 30, 40);
    QCOMPARE(edgesOf(shape.currentRect()), (Params{1, 2, 3, 4}));
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), expected);
    QCOMPARE(edgesOf(shape.currentRect()), (Params{1, 2, 3, 4}));
}

void tst_ODRect1::updateOrgDataRebuildsFreshReference_data()
{
    QTest::addColumn<int>("number");
    for (int number : {0, 1, 2, 4, 5, 8, 9, -3})
        QTest::addRow("number %d", number) << number;
}

void tst_ODRect1::updateOrgDataRebuildsFreshReference()
{
    QFETCH(int, number);
    QGraphicsScene scene;
    ODRect1 shape(&scene, QPointF(3, 4));
    shape.UpdateOrgData(number);
    QCOMPARE(shape.orgData(), (Params{3, 4, 3, 4}));
}

void tst_ODRect1::moveHandleToMovesCornerOrEdge_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("pos");
    QTest::addColumn<Params>("expected");  // current and reference, from 0, 0, 10, 10
    QTest::newRow("1 top left") << 1 << QPointF(4, 6) << Params{4, 6, 10, 10};
    QTest::newRow("2 top") << 2 << QPointF(4, 6) << Params{0, 6, 10, 10};
    QTest::newRow("3 top right") << 3 << QPointF(4, 6) << Params{0, 6, 4, 10};
    QTest::newRow("4 right") << 4 << QPointF(4, 6) << Params{0, 0, 4, 10};
    QTest::newRow("5 bottom right") << 5 << QPointF(4, 6) << Params{0, 0, 4, 6};
    QTest::newRow("6 bottom") << 6 << QPointF(4, 6) << Params{0, 0, 10, 6};
    QTest::newRow("7 bottom left") << 7 << QPointF(4, 6) << Params{4, 0, 10, 6};
    QTest::newRow("8 left") << 8 << QPointF(4, 6) << Params{4, 0, 10, 10};
    QTest::newRow("0 changes nothing") << 0 << QPointF(4, 6) << Params{0, 0, 10, 10};
    QTest::newRow("9 changes nothing") << 9 << QPointF(4, 6) << Params{0, 0, 10, 10};
    QTest::newRow("1 across the far corner") << 1 << QPointF(15, -5) << Params{15, -5, 10, 10};
    QTest::newRow("4 across the left side") << 4 << QPointF(-3, 99) << Params{0, 0, -3, 10};
    QTest::newRow("6 onto the top: zero height") << 6 << QPointF(7, 0) << Params{0, 0, 10, 0};
    QTest::newRow("5 out of the image") << 5 << QPointF(-1000, 5000) << Params{0, 0, -1000, 5000};
}

void tst_ODRect1::moveHandleToMovesCornerOrEdge()
{
    QFETCH(int, number);
    QFETCH(QPointF, pos);
    QFETCH(Params, expected);
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    shape.MoveHandleTo(number, pos);
    QCOMPARE(edgesOf(shape.currentRect()), expected);
    QCOMPARE(shape.orgData(), expected);
}

void tst_ODRect1::crossingDragKeepsFarCornerInReference()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    shape.UpdateHandles();
    QCOMPARE(shape.HitTest(QPointF(0, 0), true), 1);

    // Handle 1 to (12, 12): the reference takes left and top only.
    shape.MoveHandleTo(1, QPointF(12, 12));
    QCOMPARE(edgesOf(shape.currentRect()), (Params{12, 12, 10, 10}));
    QCOMPARE(shape.orgData(), (Params{12, 12, 10, 10}));
    // The show reloads it and normalises the shown copy.
    shape.ShowShape();
    QCOMPARE(edgesOf(shape.currentRect()), (Params{10, 10, 12, 12}));
    QCOMPARE(shape.rectItem()->rect(), QRectF(10, 10, 2, 2));
    QCOMPARE(shape.orgData(), (Params{12, 12, 10, 10}));

    // Still handle 1, to (13, 13): the far corner stays at (10, 10).
    shape.MoveHandleTo(1, QPointF(13, 13));
    QCOMPARE(shape.orgData(), (Params{13, 13, 10, 10}));
    shape.ShowShape();
    QCOMPARE(edgesOf(shape.currentRect()), (Params{10, 10, 13, 13}));
    QCOMPARE(shape.rectItem()->rect(), QRectF(10, 10, 3, 3));

    // The release makes all four slots canonical.
    shape.AdjustParameter();
    QCOMPARE(shape.orgData(), (Params{10, 10, 13, 13}));
    QCOMPARE(edgesOf(shape.currentRect()), (Params{10, 10, 13, 13}));
}

void tst_ODRect1::adjustParameterNormalisesCurrentRectangleIntoAllSlots()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    shape.MoveHandleTo(1, QPointF(12, 12));
    shape.ShowShape();
    // A second move without a show in between: the current rectangle runs
    // from (13, 13) to (12, 12), and that is what the release normalises.
    shape.MoveHandleTo(1, QPointF(13, 13));
    QCOMPARE(edgesOf(shape.currentRect()), (Params{13, 13, 12, 12}));
    shape.AdjustParameter();
    QCOMPARE(edgesOf(shape.currentRect()), (Params{12, 12, 13, 13}));
    QCOMPARE(shape.orgData(), (Params{12, 12, 13, 13}));
}

void tst_ODRect1::getParamReportsCrossedReferenceUntilRelease()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    shape.MoveHandleTo(1, QPointF(12, 12));
    shape.ShowShape();
    bool ok = false;
    Params params = paramsOf(shape, &ok);
    QVERIFY(ok);
    QVERIFY(params[0] > params[2]);
    QVERIFY(params[1] > params[3]);
    QCOMPARE(params, (Params{12, 12, 10, 10}));

    shape.AdjustParameter();
    params = paramsOf(shape, &ok);
    QVERIFY(ok);
    QVERIFY(params[0] <= params[2]);
    QVERIFY(params[1] <= params[3]);
    QCOMPARE(params, (Params{10, 10, 12, 12}));
}

void tst_ODRect1::getParamFalseUntilFirstMoveHandleTo()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene, QPointF(5, 5));
    double x1 = -7, y1 = -7, x2 = -7, y2 = -7;
    int direction = -7, count = -7;
    QVERIFY(!shape.GetParam(&x1, &y1, &x2, &y2, &direction, &count));
    shape.ShowShape();
    shape.ShowHandle();
    QVERIFY(!shape.GetParam(&x1, &y1, &x2, &y2, &direction, &count));
    // Nothing is written on failure.
    QCOMPARE(x1, -7.0);
    QCOMPARE(y1, -7.0);
    QCOMPARE(x2, -7.0);
    QCOMPARE(y2, -7.0);
    QCOMPARE(direction, -7);
    QCOMPARE(count, -7);

    shape.MoveHandleTo(5, QPointF(20, 30));
    QVERIFY(shape.GetParam(&x1, &y1, &x2, &y2, &direction, &count));
    QCOMPARE((Params{x1, y1, x2, y2}), (Params{5, 5, 20, 30}));
    QCOMPARE(direction, 2);
    QCOMPARE(count, 0);
}

void tst_ODRect1::getParamFalseUntilFirstMoveShape()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene, QPointF(5, 5));
    bool ok = true;
    paramsOf(shape, &ok);
    QVERIFY(!ok);
    shape.MoveShape(QPointF(1, 2));
    const Params params = paramsOf(shape, &ok);
    QVERIFY(ok);
    QCOMPARE(params, (Params{6, 7, 6, 7}));
}

void tst_ODRect1::getParamReturnsDirectionAndCountAsStored()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    const QList<QPair<int, int>> settings = {{0, 4}, {3, 2}, {7, 1}, {-2, -5}, {5, 100}};
    for (const auto& setting : settings) {
        shape.SetSearchLine(SEARCHLINEDIRECTION(setting.first), setting.second);
        int direction = 0;
        int count = 0;
        bool ok = false;
        paramsOf(shape, &ok, &direction, &count);
        QVERIFY(ok);
        QCOMPARE(direction, setting.first);
        QCOMPARE(count, setting.second);
    }
}

void tst_ODRect1::moveShapeAddsDeltaToAllSides()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 10, 10);
    shape.ShowShape();
    shape.MoveShape(QPointF(3, -2));
    QCOMPARE(edgesOf(shape.currentRect()), (Params{3, -2, 13, 8}));
    QCOMPARE(shape.orgData(), (Params{3, -2, 13, 8}));
    // A delta, not a position: moves add up.
    shape.MoveShape(QPointF(0.5, 0.5));
    QCOMPARE(shape.orgData(), (Params{3.5, -1.5, 13.5, 8.5}));
    shape.ShowShape();
    QCOMPARE(shape.rectItem()->rect(), QRectF(3.5, -1.5, 10, 10));
}

void tst_ODRect1::moveShapeKeepsCrossedReferenceCrossed()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(12, 12, 10, 10);
    shape.UpdateCurData();
    shape.MoveShape(QPointF(1, 1));
    QCOMPARE(shape.orgData(), (Params{13, 13, 11, 11}));
}

void tst_ODRect1::handlesSitAtCornersAndEdgeCentres_data()
{
    Kit::addZoomRows({1.0, 4.0, 0.25});
}

void tst_ODRect1::handlesSitAtCornersAndEdgeCentres()
{
    QFETCH(double, zoom);
    const double side = Kit::handleSideInScene(zoom);
    Kit::ZoomedShape<ODRect1> zoomed(zoom);
    ODRect1& shape = zoomed.shape;
    shape.SetRect(0, 0, 100, 60);
    shape.ShowShape();
    shape.UpdateHandles();
    const QPointF centres[8] = {QPointF(0, 0),    QPointF(50, 0),  QPointF(100, 0), QPointF(100, 30),
                                QPointF(100, 60), QPointF(50, 60), QPointF(0, 60),  QPointF(0, 30)};
    QCOMPARE(shape.handles().size(), 8);
    for (int key = 0; key < 8; ++key) {
        const QRectF handle = shape.handles().value(key);
        QCOMPARE(handle, QRectF(centres[key] - QPointF(side / 2, side / 2), QSizeF(side, side)));
        QCOMPARE(shape.HitTest(centres[key], true), key + 1);
    }
    QCOMPARE(shape.HitTest(QPointF(50, 30), true), 0);
}

void tst_ODRect1::showHandleRaisesHandleItemAndPassesMap()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetPenColor(QColor(10, 200, 30));
    shape.SetRect(0, 0, 100, 60);
    shape.ShowShape();
    shape.setZValue(7);
    shape.ShowHandle();
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.rectItem()->zValue(), 7.0);
    QCOMPARE(shape.handleItem()->zValue(), 8.0);
    QCOMPARE(shape.rect1HandleItem()->handleMap(), shape.handles());
    QCOMPARE(shape.handles().size(), 8);
    QCOMPARE(shape.handleItem()->path(), pathOfRects(shape.handles()));
    QCOMPARE(shape.handleItem()->pen().width(), 0);
    QCOMPARE(shape.handleItem()->pen().color(), QColor(10, 200, 30));

    // The raise follows the rectangle item's own z value.
    shape.rectItem()->setZValue(20);
    shape.SetRect(10, 10, 50, 50);
    shape.ShowShape();
    shape.ShowHandle();
    QCOMPARE(shape.handleItem()->zValue(), 21.0);
    QCOMPARE(shape.rect1HandleItem()->handleMap().value(0), QRectF(7, 7, 6, 6));
    QCOMPARE(shape.rect1HandleItem()->handleMap(), shape.handles());
}

void tst_ODRect1::hideHandleOnlyEmptiesMap()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.ShowShape();
    shape.ShowHandle();
    const QPainterPath shownPath = shape.handleItem()->path();
    const QMap<int, QRectF> handles = shape.handles();
    QVERIFY(!shownPath.isEmpty());

    shape.HideHandle();
    QVERIFY(shape.rect1HandleItem()->handleMap().isEmpty());
    QCOMPARE(shape.handleItem()->path(), shownPath);
    QVERIFY(shape.isVisiblehandleMark());
    QCOMPARE(shape.handles(), handles);
    // The handles still answer hit tests.
    QCOMPARE(shape.HitTest(QPointF(0, 0), true), 1);
}

void tst_ODRect1::hideShapeEmptiesDisplayItems()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SL_LEFT_TO_RIGHT, 3);
    shape.ShowShape();
    shape.ShowHandle();
    QVERIFY(!shape.searchLineItem()->path().isEmpty());
    const QPainterPath handlePath = shape.handleItem()->path();

    shape.HideShape();
    QCOMPARE(shape.rectItem()->rect(), QRectF());
    QVERIFY(shape.searchLineItem()->path().isEmpty());
    // Handles and parameters are left alone, and the items stay in the scene.
    QCOMPARE(shape.handleItem()->path(), handlePath);
    QCOMPARE(shape.rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(shape.orgData(), (Params{0, 0, 100, 60}));
    QCOMPARE(shape.rectItem()->scene(), &scene);
    QCOMPARE(shape.searchLineItem()->scene(), &scene);
    QCOMPARE(shape.HitTest(QPointF(50, 30), false), 0);

    shape.ShowShape();
    QCOMPARE(shape.rectItem()->rect(), QRectF(0, 0, 100, 60));
}

void tst_ODRect1::bodyHitTestUsesBoundingRectOfRectItem()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetBrushColor(QColor(0, 255, 0, 0));  // fully transparent
    shape.SetRect(10, 10, 50, 40);
    // Nothing is shown yet: the reference alone is no body.
    QCOMPARE(shape.HitTest(QPointF(30, 25), false), 0);

    shape.SetLineWidth(4.0f);
    shape.ShowShape();
    QCOMPARE(shape.HitTest(QPointF(30, 25), false), 1);  // inside, whatever the brush
    QCOMPARE(shape.HitTest(QPointF(8.5, 20), false), 1);  // within half the pen width
    QCOMPARE(shape.HitTest(QPointF(8, 8), false), 1);
    QCOMPARE(shape.HitTest(QPointF(52, 42), false), 1);
    QCOMPARE(shape.HitTest(QPointF(7.5, 20), false), 0);
    QCOMPARE(shape.HitTest(QPointF(52.5, 20), false), 0);
    QCOMPARE(shape.HitTest(QPointF(30, 42.5), false), 0);

    shape.SetLineWidth(0.9f);  // cosmetic pen: no margin
    shape.ShowShape();
    QCOMPARE(shape.HitTest(QPointF(10, 20), false), 1);
    QCOMPARE(shape.HitTest(QPointF(9.5, 20), false), 0);
}

void tst_ODRect1::setZValueReachesAllThreeItems()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    verifyZValueReaches(shape, {shape.rectItem(), shape.searchLineItem(), shape.handleItem()});
}

void tst_ODRect1::handleCursorOnViewport_data()
{
    addBoxHandleCursorRows();
    QTest::newRow("edge of handle 1") << QPointF(3, 3) << Qt::SizeFDiagCursor;
}

void tst_ODRect1::handleCursorOnViewport()
{
    QFETCH(QPointF, point);
    QFETCH(Qt::CursorShape, cursor);
    CursorView v;
    ODRect1 shape(&v.scene);
    shape.SetRect(0, 0, 100, 60);
    shape.ShowShape();
    shape.ShowHandle();
    shape.setHandleCursor(point);
    QCOMPARE(v.viewportCursor(), cursor);
    QCOMPARE(v.viewCursor(), Qt::WaitCursor);
}

void tst_ODRect1::handleCursorNeedsVisibleHandleMark()
{
    QGraphicsScene scene;
    QGraphicsView view(&scene);
    ODRect1 shape(&scene, QPointF(0, 0));  // handles built, never shown
    shape.SetRect(0, 0, 100, 60);
    shape.ShowShape();
    shape.UpdateHandles();
    view.viewport()->setCursor(Qt::WaitCursor);
    shape.setHandleCursor(QPointF(0, 0));
    QCOMPARE(view.viewport()->cursor().shape(), Qt::ArrowCursor);

    shape.ShowHandle();
    shape.setHandleCursor(QPointF(100, 0));
    QCOMPARE(view.viewport()->cursor().shape(), Qt::SizeBDiagCursor);
    // Hiding the handles of this class keeps the mark: cursors still follow.
    shape.HideHandle();
    shape.setHandleCursor(QPointF(50, 60));
    QCOMPARE(view.viewport()->cursor().shape(), Qt::SizeVerCursor);
    shape.setIsVisiblehandleMark(false);
    shape.setHandleCursor(QPointF(50, 60));
    QCOMPARE(view.viewport()->cursor().shape(), Qt::ArrowCursor);
}

void tst_ODRect1::searchLineCountOneShowsNoLines()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SL_LEFT_TO_RIGHT, 1);
    shape.ShowShape();
    QVERIFY(shape.searchLineItem()->path().isEmpty());
    shape.SetSearchLine(SL_LEFT_TO_RIGHT, 0);
    shape.ShowShape();
    QVERIFY(shape.searchLineItem()->path().isEmpty());
    QVERIFY(shape.GenSearchline().isEmpty());
}

void tst_ODRect1::searchLineCountTwoDrawsArrowsOnBothEdges()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SL_LEFT_TO_RIGHT, 2);
    shape.ShowShape();
    const QPainterPath path = shape.searchLineItem()->path();
    QCOMPARE(path.elementCount(), 10);
    const QVector<Arrow> arrows = arrowsOf(path);
    QCOMPARE(arrows.size(), 2);
    QCOMPARE(arrows[0].start, QPointF(0, 0));
    QCOMPARE(arrows[0].end, QPointF(100, 0));
    QCOMPARE(arrows[1].start, QPointF(0, 60));
    QCOMPARE(arrows[1].end, QPointF(100, 60));
    for (const Arrow& arrow : arrows) {
        QCOMPARE(arrow.tip, arrow.end);
        // Head of int(100 / 15) = 6, pointing right.
        QVERIFY(qAbs(QLineF(arrow.tip, arrow.wing1).length() - 6.0) < 1e-9);
        QVERIFY(qAbs(QLineF(arrow.tip, arrow.wing2).length() - 6.0) < 1e-9);
        QVERIFY(arrow.wing1.x() < arrow.tip.x());
        QVERIFY(arrow.wing2.x() < arrow.tip.x());
        QVERIFY((arrow.wing1.y() - arrow.tip.y()) * (arrow.wing2.y() - arrow.tip.y()) < 0);
    }
    QString why;
    QVERIFY2(samePath(path, expectedSearchlines(QRectF(0, 0, 100, 60), 2, 2), &why), qPrintable(why));
}

void tst_ODRect1::searchLinesAreTruncatedNotRounded()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SL_TOP_TO_BOTTOM, 4);
    shape.ShowShape();
    const QPainterPath path = shape.searchLineItem()->path();
    const QVector<Arrow> arrows = arrowsOf(path);
    QCOMPARE(path.elementCount(), 20);
    QCOMPARE(arrows.size(), 4);
    const int xs[4] = {0, 33, 66, 100};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(arrows[i].start, QPointF(xs[i], 0));
        QCOMPARE(arrows[i].end, QPointF(xs[i], 60));
        QCOMPARE(arrows[i].tip, QPointF(xs[i], 60));
        // Head of 60 / 15 = 4, pointing down.
        QVERIFY(qAbs(QLineF(arrows[i].tip, arrows[i].wing1).length() - 4.0) < 1e-9);
        QVERIFY(qAbs(QLineF(arrows[i].tip, arrows[i].wing2).length() - 4.0) < 1e-9);
        QVERIFY(arrows[i].wing1.y() < 60);
        QVERIFY(arrows[i].wing2.y() < 60);
        QVERIFY((arrows[i].wing1.x() - xs[i]) * (arrows[i].wing2.x() - xs[i]) < 0);
    }
    QString why;
    QVERIFY2(samePath(path, expectedSearchlines(QRectF(0, 0, 100, 60), 0, 4), &why), qPrintable(why));
    QVERIFY2(samePath(shape.GenSearchline(), path, &why), qPrintable(why));
}

void tst_ODRect1::searchLinesTruncateTowardZero()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(-10.5, -5.5, 50.7, 60.9);
    shape.SetSearchLine(SL_TOP_TO_BOTTOM, 2);
    shape.ShowShape();
    const QVector<Arrow> arrows = arrowsOf(shape.searchLineItem()->path());
    QCOMPARE(arrows.size(), 2);
    QCOMPARE(arrows[0].start, QPointF(-10, -5));
    QCOMPARE(arrows[0].end, QPointF(-10, 60));
    QCOMPARE(arrows[1].start, QPointF(50, -5));
    QCOMPARE(arrows[1].end, QPointF(50, 60));
    QString why;
    QVERIFY2(samePath(shape.searchLineItem()->path(), expectedSearchlines(QRectF(QPointF(-10.5, -5.5), QPointF(50.7, 60.9)), 0, 2), &why),
             qPrintable(why));
}

void tst_ODRect1::shortSearchLinesHaveNoHeads()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 14);
    shape.SetSearchLine(SL_TOP_TO_BOTTOM, 3);
    shape.ShowShape();
    const QPainterPath path = shape.searchLineItem()->path();
    // The wings fall on the end point: each arrow is its line alone.
    QCOMPARE(path.elementCount(), 6);
    const int xs[3] = {0, 50, 100};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(path.elementAt(2 * i).type, QPainterPath::MoveToElement);
        QCOMPARE(QPointF(path.elementAt(2 * i)), QPointF(xs[i], 0));
        QCOMPARE(path.elementAt(2 * i + 1).type, QPainterPath::LineToElement);
        QCOMPARE(QPointF(path.elementAt(2 * i + 1)), QPointF(xs[i], 14));
    }
    QString why;
    QVERIFY2(samePath(path, expectedSearchlines(QRectF(0, 0, 100, 14), 0, 3), &why), qPrintable(why));

    // A height of exactly 15 has a head of 1.
    shape.SetRect(0, 0, 100, 15);
    shape.ShowShape();
    QCOMPARE(shape.searchLineItem()->path().elementCount(), 15);
    QVERIFY2(samePath(shape.searchLineItem()->path(), expectedSearchlines(QRectF(0, 0, 100, 15), 0, 3), &why),
             qPrintable(why));
}

void tst_ODRect1::searchLineDirections_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QVector<QLine>>("lines");
    QTest::addColumn<int>("head");
    QTest::newRow("0 top to bottom") << 0
                                     << QVector<QLine>{QLine(0, 0, 0, 60), QLine(50, 0, 50, 60), QLine(100, 0, 100, 60)}
                                     << 4;
    QTest::newRow("1 bottom to top") << 1
                                     << QVector<QLine>{QLine(0, 60, 0, 0), QLine(50, 60, 50, 0), QLine(100, 60, 100, 0)}
                                     << 4;
    QTest::newRow("2 left to right") << 2
                                     << QVector<QLine>{QLine(0, 0, 100, 0), QLine(0, 30, 100, 30), QLine(0, 60, 100, 60)}
                                     << 6;
    QTest::newRow("3 right to left") << 3
                                     << QVector<QLine>{QLine(100, 0, 0, 0), QLine(100, 30, 0, 30), QLine(100, 60, 0, 60)}
                                     << 6;
}

void tst_ODRect1::searchLineDirections()
{
    QFETCH(int, direction);
    QFETCH(QVector<QLine>, lines);
    QFETCH(int, head);
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    // A reference with crossed sides: lines follow the normalised rectangle.
    shape.SetRect(100, 60, 0, 0);
    shape.SetSearchLine(SEARCHLINEDIRECTION(direction), 3);
    shape.ShowShape();
    const QPainterPath path = shape.searchLineItem()->path();
    const QVector<Arrow> arrows = arrowsOf(path);
    QCOMPARE(path.elementCount(), 15);
    QCOMPARE(arrows.size(), lines.size());
    for (int i = 0; i < lines.size(); ++i) {
        const Arrow& arrow = arrows[i];
        QCOMPARE(arrow.start, QPointF(lines[i].p1()));
        QCOMPARE(arrow.end, QPointF(lines[i].p2()));
        QCOMPARE(arrow.tip, QPointF(lines[i].p2()));
        const QPointF along = QPointF(lines[i].p2() - lines[i].p1()) / QLineF(lines[i]).length();
        for (const QPointF& wing : {arrow.wing1, arrow.wing2}) {
            QVERIFY(qAbs(QLineF(arrow.tip, wing).length() - head) < 1e-9);
            // The wings trail behind the tip: the arrow points along the line.
            const QPointF back = wing - arrow.tip;
            QVERIFY(back.x() * along.x() + back.y() * along.y() < 0);
        }
        // One wing on each side of the line.
        const QPointF b1 = arrow.wing1 - arrow.tip;
        const QPointF b2 = arrow.wing2 - arrow.tip;
        const double side1 = along.x() * b1.y() - along.y() * b1.x();
        const double side2 = along.x() * b2.y() - along.y() * b2.x();
        QVERIFY(side1 * side2 < 0);
    }
    QString why;
    QVERIFY2(samePath(path, expectedSearchlines(QRectF(0, 0, 100, 60), direction, 3), &why), qPrintable(why));
}

void tst_ODRect1::searchLineInvalidDirectionShowsNothing_data()
{
    QTest::addColumn<int>("direction");
    QTest::newRow("4, an annulus direction") << 4;
    QTest::newRow("5, an annulus direction") << 5;
    QTest::newRow("-1") << -1;
    QTest::newRow("99") << 99;
}

void tst_ODRect1::searchLineInvalidDirectionShowsNothing()
{
    QFETCH(int, direction);
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SEARCHLINEDIRECTION(direction), 5);
    shape.ShowShape();
    QVERIFY(shape.searchLineItem()->path().isEmpty());
    int storedDirection = 0;
    int storedCount = 0;
    bool ok = false;
    paramsOf(shape, &ok, &storedDirection, &storedCount);
    QVERIFY(ok);
    QCOMPARE(storedDirection, direction);
    QCOMPARE(storedCount, 5);
}

void tst_ODRect1::searchLinesFollowTheRectangleWhileDragging()
{
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    shape.SetRect(0, 0, 100, 60);
    shape.SetSearchLine(SL_TOP_TO_BOTTOM, 2);
    shape.ShowShape();
    shape.MoveHandleTo(5, QPointF(50, 30));
    shape.ShowShape();
    QVector<Arrow> arrows = arrowsOf(shape.searchLineItem()->path());
    QCOMPARE(arrows.size(), 2);
    QCOMPARE(arrows[1].start, QPointF(50, 0));
    QCOMPARE(arrows[1].end, QPointF(50, 30));
    QVERIFY(qAbs(QLineF(arrows[1].tip, arrows[1].wing1).length() - 2.0) < 1e-9);

    // Crossed during the drag: drawn on the shown, normalised rectangle.
    shape.MoveHandleTo(5, QPointF(-40, -30));
    shape.ShowShape();
    arrows = arrowsOf(shape.searchLineItem()->path());
    QCOMPARE(arrows.size(), 2);
    QCOMPARE(arrows[0].start, QPointF(-40, -30));
    QCOMPARE(arrows[0].end, QPointF(-40, 0));
    QCOMPARE(arrows[1].start, QPointF(0, -30));
    QCOMPARE(arrows[1].end, QPointF(0, 0));
}

void tst_ODRect1::searchlineItemMatchesArrowFormula_data()
{
    QTest::addColumn<QLine>("line");
    QTest::newRow("down") << QLine(10, 20, 10, 95);
    QTest::newRow("up") << QLine(10, 95, 10, 20);
    QTest::newRow("right") << QLine(3, 7, 240, 7);
    QTest::newRow("left") << QLine(240, 7, 3, 7);
    QTest::newRow("long down") << QLine(-50, -60, -50, 1000);
    QTest::newRow("just 15") << QLine(0, 0, 15, 0);
    QTest::newRow("just under 15") << QLine(0, 0, 0, 14);
    QTest::newRow("29 gives a head of 1") << QLine(0, 0, 0, 29);
    QTest::newRow("30 gives a head of 2") << QLine(0, 30, 0, 0);
}

void tst_ODRect1::searchlineItemMatchesArrowFormula()
{
    QFETCH(QLine, line);
    QGraphicsScene scene;
    ODRect1 shape(&scene);
    const QPainterPath path = shape.GenSearchlineItem(line);
    QString why;
    QVERIFY2(samePath(path, expectedArrow(line), &why), qPrintable(why));
    const int head = int(float(QLineF(line).length()) / 15.0f);
    if (head > 0) {
        QCOMPARE(path.elementCount(), 5);
        QCOMPARE(QPointF(path.elementAt(1)), QPointF(line.p2()));
        QCOMPARE(QPointF(path.elementAt(3)), QPointF(line.p1()));
        QVERIFY(qAbs(QLineF(path.elementAt(0), line.p2()).length() - head) < 1e-9);
        // Each wing stands 0.25 radian off the line.
        const double lineAngle = std::atan2(double(-line.dy()), double(-line.dx()));
        for (int i : {0, 2}) {
            const QPointF back = QPointF(path.elementAt(i)) - QPointF(line.p2());
            double off = std::atan2(back.y(), back.x()) - lineAngle;
            while (off > kPi)
                off -= 2 * kPi;
            while (off < -kPi)
                off += 2 * kPi;
            QVERIFY2(qAbs(qAbs(off) - 0.25) < 1e-6, qPrintable(QString("wing %1 off by %2").arg(i).arg(off)));
        }
    } else {
        QCOMPARE(path.elementCount(), 2);
    }
}

// The look of a selected rectangle at zoom 4, as a layer shows it: the outline
// in the pen, and eight handles of 6 by 6 device pixels on top.
void tst_ODRect1::selectedRectangleShowsFixedSizeHandlesAtZoomFour()
{
    EmbeddedWindow embedded;
    QCOMPARE(embedded.created, 0L);
    QImage picture(200, 150, QImage::Format_RGB32);
    picture.fill(QColor(230, 230, 230));
    QCOMPARE(embedded.wnd->setBackground(picture), 0L);
    ImageCtrlView* view = embedded.view();
    ImageCtrlScene* scene = embedded.scene();
    ShaperLayer* layer = scene->GetActiveLayer();
    QVERIFY(layer);

    auto* shape = new ODRect1(scene);
    shape->SetPenColor(QColor(255, 0, 0));
    shape->SetBrushColor(scene->getBrushColor());
    shape->SetLineWidth(scene->getLineWidth());
    shape->SetRect(20, 20, 60, 45);
    layer->addShape(shape);
    layer->addSelectedShape(shape);
    view->Zoom(4.0);
    view->centerOn(QPointF(40, 32.5));
    layer->Update();
    QCOMPARE(shape->GetScale(), 4.0f);
    layer->Show(true);
    QVERIFY(shape->isVisiblehandleMark());
    QCOMPARE(shape->handles().value(0).width(), 6.0);

    const QImage image = Kit::grabViewport(view);
    const QPointF centres[8] = {QPointF(20, 20), QPointF(40, 20), QPointF(60, 20), QPointF(60, 32.5),
                                QPointF(60, 45), QPointF(40, 45), QPointF(20, 45), QPointF(20, 32.5)};
    for (const QPointF& centre : centres) {
        QVERIFY(Kit::mapsToWholePixel(view, centre));
        const QPoint device = view->mapFromScene(centre);
        const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 20));
        QCOMPARE(blob.count, 36);
        QCOMPARE(blob.bounds, QRect(device.x() - 3, device.y() - 3, 6, 6));
    }
    // The outline between the handles is the pen's, 4 device pixels thick.
    const QPoint onTopEdge = view->mapFromScene(QPointF(30, 20));
    int red = 0;
    for (int dy = -4; dy <= 4; ++dy)
        red += image.pixel(onTopEdge.x(), onTopEdge.y() + dy) == qRgb(255, 0, 0) ? 1 : 0;
    QVERIFY2(red >= 3 && red <= 4, qPrintable(QString("%1 red pixels across the edge").arg(red)));

    layer->clearSelectedShape();
    layer->clearCurrentShape();
    QVERIFY(layer->removeShape(shape));
}

QTEST_MAIN(tst_ODRect1)
#include "tst_odrect1.moc"
