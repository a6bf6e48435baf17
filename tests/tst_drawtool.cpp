// Drawing a rectangle with the mouse: the tool of DM_RECT1 builds the shape at
// the press, lets the select tool drag its corner, ends the draw mode at the
// release, tells the host the id, and throws away a rectangle that is too
// small. Also the routing of the mouse buttons to the tools.

#include "testkit.h"

#include "Rect1HandleItem.h"
#include "geometryhelpers.h"
#include "odannular.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odline.h"
#include "odrect2.h"

#include <QGraphicsRectItem>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace Kit;

class tst_DrawTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyModeHasItsTool();
    void drawingEachOneDragShapeAsTheOperatorDoes_data();
    void drawingEachOneDragShapeAsTheOperatorDoes();
    void arcDrawnWithTheMouseKeepsItsFirstRadius_data();
    void arcDrawnWithTheMouseKeepsItsFirstRadius();
    void pressAndReleaseOnOneSpotDiscardsEveryOneDragShape_data();
    void pressAndReleaseOnOneSpotDiscardsEveryOneDragShape();
    void onePixelDragKeepsEveryShapeButTheRectangles_data();
    void onePixelDragKeepsEveryShapeButTheRectangles();
    void drawingARectangleAsTheOperatorDoes_data();
    void drawingARectangleAsTheOperatorDoes();
    void newShapeTakesTheLookAtThePress();
    void drawnShapeGoesToTheActiveLayerEvenForStaticOverlays();
    void shapeDrawnInOverlayModeIsAnOverlay();
    void pressOnAnExistingShapeStartsANewOne();
    void dragBackPastThePressPointFlipsTheRectangle();
    void pressAndReleaseOnOneSpotDiscardsRectangle_data();
    void pressAndReleaseOnOneSpotDiscardsRectangle();
    void hostHearsOfADiscardedShapeWhileItStillExists();
    void rectangleNarrowerOrLowerThanTwoPixelsIsDiscarded_data();
    void rectangleNarrowerOrLowerThanTwoPixelsIsDiscarded();
    void rotatedRectangleShorterThanTwoIsDiscarded_data();
    void rotatedRectangleShorterThanTwoIsDiscarded();
    void sizeTestUsesTheLastMoveNotTheReleasePosition();
    void drawModeLastsForOneShape();
    void secondPressBeforeReleaseDeletesTheUnfinishedShape();
    void rightClickReachesNoTool();
    void rightClickLeavesTheSelectionAlone();
    void rightDoubleClickReachesTheScenesToolDispatch();
    void movesReachTheToolsDuringARightButtonPan();
    void hoverInADrawModeOnlyNotesThePoint();
    void middleButtonDrawsLikeTheLeft();
    void middleClickOnEmptyGroundReportsNoLeftClick();
    void modeBeyondTheToolListIgnoresTheMouse();
    void ellipseDraggedByOnePixelStays();
};

void tst_DrawTool::init()
{
    forgetCurrentShape();
}

void tst_DrawTool::cleanup()
{
    forgetCurrentShape();
}

void tst_DrawTool::everyModeHasItsTool()
{
    ODShapeToolManage* manage = ODShapeToolManage::GetODShapeToolManage();
    QVERIFY(manage == tools());
    QCOMPARE(manage->toolCount(), int(DM_ANYCLOSELINE) + 1);
    QVERIFY(qobject_cast<ODSelectTool*>(manage->GetShapeTool(DM_SELECT)) != nullptr);
    QVERIFY(qobject_cast<ODPointTool*>(manage->GetShapeTool(DM_POINT)) != nullptr);
    QVERIFY(qobject_cast<ODPolygonTool*>(manage->GetShapeTool(DM_POLYGON)) != nullptr);
    QVERIFY(qobject_cast<ODAnyLineTool*>(manage->GetShapeTool(DM_ANYLINE)) != nullptr);
    QVERIFY(qobject_cast<ODAnyCloseLineTool*>(manage->GetShapeTool(DM_ANYCLOSELINE)) != nullptr);
    QCOMPARE(manage->polygonTool(), static_cast<ODPolygonTool*>(manage->GetShapeTool(DM_POLYGON)));
    // The tools of one drag: each its own object of the draw tool template.
    QVERIFY(dynamic_cast<ODDrawTool<ODLine>*>(manage->GetShapeTool(DM_LINE)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODRect1>*>(manage->GetShapeTool(DM_RECT1)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODRect2>*>(manage->GetShapeTool(DM_RECT2)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODEllipse>*>(manage->GetShapeTool(DM_ELLIPSE)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODCircle>*>(manage->GetShapeTool(DM_CIRCLE)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODAnnular>*>(manage->GetShapeTool(DM_ANNULAR)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODARC>*>(manage->GetShapeTool(DM_ARC)) != nullptr);
    QVERIFY(dynamic_cast<ODDrawTool<ODArrowLine>*>(manage->GetShapeTool(DM_ARROWLINE)) != nullptr);
    QSet<ODShapeTool*> distinct;
    for (int mode = DM_SELECT; mode <= DM_ANYCLOSELINE; ++mode)
        distinct.insert(manage->GetShapeTool(DrawMode(mode)));
    QCOMPARE(distinct.size(), int(DM_ANYCLOSELINE) + 1);
    QVERIFY(rectTool()->shape() == nullptr);
}

namespace {

// The parameters GetParam gives for a shape of a one-drag mode drawn from the
// press point p over the first move first to the last move m (all as the
// tools see them), with the class's extras after the slots.
Params drawnParams(DrawMode mode, QPointF p, QPointF first, QPointF m)
{
    switch (mode) {
    case DM_LINE:
    case DM_ARROWLINE:
        // The press takes the second end, so the line runs from the press.
        return {p.x(), p.y(), m.x(), m.y()};
    case DM_CIRCLE:
        return {p.x(), p.y(), double(Distance(m, p))};
    case DM_ANNULAR: {
        // The outer handle is grabbed. The first move fills the whole
        // reference, the hole a share of that move's radius; later moves
        // write the outer radius alone, so the hole keeps its first size.
        const double outer = double(Distance(m, p));
        const double firstOuter = double(Distance(first, p));
        return {p.x(), p.y(), 0.38200002908706665 * firstOuter, outer, 10, 350, 4, 0};
    }
    default:
        return {};
    }
}

Params paramsOfDrawn(ODShape* shape)
{
    switch (shape->GetDrawMode()) {
    case DM_LINE: {
        double x1 = -1, y1 = -1, x2 = -1, y2 = -1;
        if (!static_cast<ODLine*>(shape)->GetParam(&x1, &y1, &x2, &y2))
            return {};
        return {x1, y1, x2, y2};
    }
    case DM_ARROWLINE: {
        double x1 = -1, y1 = -1, x2 = -1, y2 = -1;
        if (!static_cast<ODArrowLine*>(shape)->GetParam(&x1, &y1, &x2, &y2))
            return {};
        return {x1, y1, x2, y2};
    }
    case DM_CIRCLE: {
        double x = -1, y = -1, r = -1;
        if (!static_cast<ODCircle*>(shape)->GetParam(&x, &y, &r))
            return {};
        return {x, y, r};
    }
    case DM_ARC: {
        double x = -1, y = -1, r = -1, start = -1, sweep = -1;
        if (!static_cast<ODARC*>(shape)->GetParam(&x, &y, &r, &start, &sweep))
            return {};
        return {x, y, r, start, sweep};
    }
    case DM_ANNULAR: {
        double x = -1, y = -1, inner = -1, outer = -1, start = -1, sweep = -1;
        int direction = -1, count = -1;
        if (!static_cast<ODAnnular*>(shape)->GetParam(&x, &y, &inner, &outer, &start, &sweep, &direction, &count))
            return {};
        return {x, y, inner, outer, start, sweep, double(direction), double(count)};
    }
    default:
        return {};
    }
}

// The shape the tool of a one-drag mode holds while it draws.
ODShape* heldByDrawTool(DrawMode mode)
{
    switch (mode) {
    case DM_LINE: return drawToolOf<ODLine>(mode)->shape();
    case DM_ARROWLINE: return drawToolOf<ODArrowLine>(mode)->shape();
    case DM_CIRCLE: return drawToolOf<ODCircle>(mode)->shape();
    case DM_ARC: return drawToolOf<ODARC>(mode)->shape();
    case DM_ANNULAR: return drawToolOf<ODAnnular>(mode)->shape();
    default: return nullptr;
    }
}

const QList<QPair<const char*, DrawMode>> kOneDragKinds = {{"line", DM_LINE},
                                                           {"arrow line", DM_ARROWLINE},
                                                           {"circle", DM_CIRCLE},
                                                           {"annulus", DM_ANNULAR},
                                                           {"arc", DM_ARC}};

} // namespace

void tst_DrawTool::drawingEachOneDragShapeAsTheOperatorDoes_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("zoom");
    for (const auto& kind : kOneDragKinds) {
        if (kind.second == DM_ARC)
            continue;
        for (double zoom : {0.25, 1.0, 4.0})
            QTest::addRow("%s, zoom %g", kind.first, zoom) << int(kind.second) << zoom;
    }
}

void tst_DrawTool::drawingEachOneDragShapeAsTheOperatorDoes()
{
    QFETCH(int, mode);
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    w.window()->SelectDrawROIMode(DrawMode(mode));
    const long id = ODShape::s_ID;
    const QPointF p = w.seen(QPointF(40, 30));
    const QPointF m1 = w.seen(QPointF(52, 41));
    const QPointF m2 = w.seen(QPointF(70, 55));

    w.press(QPointF(40, 30));
    ODShape* shape = heldByDrawTool(DrawMode(mode));
    QVERIFY(shape != nullptr);
    QCOMPARE(shape->GetShapeID(), id);
    QCOMPARE(shape->GetDrawMode(), DrawMode(mode));
    QCOMPARE(selectTool()->currentShape(), shape);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNewShape);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectDragHandle);
    QVERIFY(log.shapeEvents().isEmpty());

    w.move(QPointF(52, 41));
    QVERIFY2(near(paramsOfDrawn(shape), drawnParams(DrawMode(mode), p, m1, m1), 1e-9),
             qPrintable(text(paramsOfDrawn(shape)) + " instead of " + text(drawnParams(DrawMode(mode), p, m1, m1))));
    w.move(QPointF(70, 55));
    w.release(QPointF(70, 55));

    const Params expected = drawnParams(DrawMode(mode), p, m1, m2);
    QVERIFY2(near(paramsOfDrawn(shape), expected, 1e-9),
             qPrintable(text(paramsOfDrawn(shape)) + " instead of " + text(expected)));
    QCOMPARE(heldByDrawTool(DrawMode(mode)), nullptr);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(!w.view()->limitMousePos());
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(selectTool()->currentShape(), shape);
    QVERIFY(shape->isVisiblehandleMark());
    QCOMPARE(shape->GetScale(), float(zoom));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
}

void tst_DrawTool::arcDrawnWithTheMouseKeepsItsFirstRadius_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 0.25") << 0.25;
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

// A new arc's handles lie 5 units from its centre, made at the scale of one
// before the tool gives the arc the view's scale: the press on the centre
// grabs none of them at any zoom.
void tst_DrawTool::arcDrawnWithTheMouseKeepsItsFirstRadius()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    w.window()->SelectDrawROIMode(DM_ARC);
    const long id = ODShape::s_ID;
    const QPointF p = w.seen(QPointF(40, 30));
    w.press(QPointF(40, 30));
    auto* arc = drawToolOf<ODARC>(DM_ARC)->shape();
    QVERIFY(arc != nullptr);
    // No handle under the press: nothing to drag.
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    w.move(QPointF(60, 45));
    w.release(QPointF(60, 45));

    // The arc stays as it was made: radius 5 about the press point, and no
    // reference parameters, since no drag ever wrote them.
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(arc->center(), p);
    QCOMPARE(arc->radius(), 5.0f);
    QVERIFY(paramsOfDrawn(arc).isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(log.shapeEvents().isEmpty());
}

void tst_DrawTool::pressAndReleaseOnOneSpotDiscardsEveryOneDragShape_data()
{
    QTest::addColumn<int>("mode");
    for (const auto& kind : kOneDragKinds)
        QTest::newRow(kind.first) << int(kind.second);
}

void tst_DrawTool::pressAndReleaseOnOneSpotDiscardsEveryOneDragShape()
{
    QFETCH(int, mode);
    PictureWindow w(0.25);
    HostLog log(w.wnd.get());
    w.window()->SelectDrawROIMode(DrawMode(mode));
    const long id = ODShape::s_ID;
    w.click(QPointF(40, 40));
    QCOMPARE(ODShape::s_ID, id + 1);
    QVERIFY(!layerHasId(w.active(), id));
    QVERIFY(w.active()->shapes().isEmpty());
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QCOMPARE(heldByDrawTool(DrawMode(mode)), nullptr);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    // Reported by its id before it went, but for the arc, whose handles the
    // press did not reach.
    QCOMPARE(log.shapeEvents(), mode == DM_ARC ? QStringList() : QStringList{clickedText(id)});
}

void tst_DrawTool::onePixelDragKeepsEveryShapeButTheRectangles_data()
{
    pressAndReleaseOnOneSpotDiscardsEveryOneDragShape_data();
}

void tst_DrawTool::onePixelDragKeepsEveryShapeButTheRectangles()
{
    QFETCH(int, mode);
    PictureWindow w(0.25);
    HostLog log(w.wnd.get());
    w.window()->SelectDrawROIMode(DrawMode(mode));
    const long id = ODShape::s_ID;
    const QPointF p = w.seen(QPointF(40, 40));
    // One viewport pixel: four scene units at this zoom, the smallest drag.
    const QPointF m = w.seen(QPointF(44, 40));
    QVERIFY(m != p);
    w.drag(QPointF(40, 40), QPointF(44, 40));
    QVERIFY(layerHasId(w.active(), id));
    if (mode == DM_ARC) {
        // Nothing was dragged: the arc stays as it was made.
        QCOMPARE(static_cast<ODARC*>(w.active()->shapes().last())->radius(), 5.0f);
        return;
    }
    ODShape* shape = w.active()->shapes().last();
    QVERIFY(near(paramsOfDrawn(shape), drawnParams(DrawMode(mode), p, m, m), 1e-9));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
}

void tst_DrawTool::drawingARectangleAsTheOperatorDoes_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 0.25") << 0.25;
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

void tst_DrawTool::drawingARectangleAsTheOperatorDoes()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    QSignalSpy moved(w.wnd.get(), &KESImageWnd::shapeMoved);
    QSignalSpy resized(w.wnd.get(), &KESImageWnd::shapeResized);
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODSelectTool* select = selectTool();

    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    const int before = w.active()->shapes().size();
    const QPointF p = w.seen(QPointF(20, 20));
    const QPointF m1 = w.seen(QPointF(40, 30));
    const QPointF m2 = w.seen(QPointF(60, 45));
    QVERIFY(m2.x() - p.x() >= 2 && m2.y() - p.y() >= 2);

    // Press: a new rectangle, taken by the select tool with its first handle.
    w.press(QPointF(20, 20));
    QCOMPARE(ODShape::s_ID, id + 1);
    ODRect1* shape = rectTool()->shape();
    QVERIFY(shape != nullptr);
    QCOMPARE(shape->GetShapeID(), id);
    QCOMPARE(shape->GetDrawMode(), DM_RECT1);
    QCOMPARE(w.active()->shapes().size(), before + 1);
    QVERIFY(w.active()->shapes().last() == shape);
    QVERIFY(shape->shaperLayer() == w.active());
    QVERIFY(shape->getSence() == w.scene());
    // Selected once by the draw tool and once by the select tool.
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{shape, shape}));
    QVERIFY(select->currentShape() == shape);
    QCOMPARE(Kit::dragState(select), ODSelectTool::DragNewShape);
    QCOMPARE(Kit::selectMode(select), ODSelectTool::SelectDragHandle);
    QCOMPARE(select->handleIndex(), 1);
    QCOMPARE(rectTool()->pressPoint(), p);
    QCOMPARE(rectTool()->curPoint(), p);
    QCOMPARE(shape->currentRect(), QRectF(p, QSizeF(0, 0)));
    // Nothing has a size yet, so there are no parameters to read.
    QVERIFY(paramsOf(shape).isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_RECT1);
    QVERIFY(log.shapeEvents().isEmpty());

    // Moves: the first handle follows the mouse; the press point stays in the
    // right and bottom slots until the release.
    w.move(QPointF(40, 30));
    QCOMPARE(Kit::dragState(select), ODSelectTool::DragNewShape);
    QCOMPARE(Kit::selectMode(select), ODSelectTool::SelectDragHandle);
    QCOMPARE(rectTool()->curPoint(), m1);
    QCOMPARE(paramsOf(shape), (QVector<double>{m1.x(), m1.y(), p.x(), p.y()}));
    QCOMPARE(shape->rectItem()->rect(), QRectF(p, m1));
    w.move(QPointF(60, 45));
    QCOMPARE(Kit::dragState(select), ODSelectTool::DragNewShape);
    QCOMPARE(Kit::selectMode(select), ODSelectTool::SelectDragHandle);
    QCOMPARE(paramsOf(shape), (QVector<double>{m2.x(), m2.y(), p.x(), p.y()}));
    QCOMPARE(shape->rectItem()->rect(), QRectF(p, m2));
    QCOMPARE(shape->rect1HandleItem()->handleMap().size(), 8);
    QVERIFY(log.shapeEvents().isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_RECT1);

    // Release: select mode again, the parameters in order, the host told.
    w.release(QPointF(60, 45));
    QCOMPARE(Kit::dragState(select), ODSelectTool::DragNothing);
    QCOMPARE(Kit::selectMode(select), ODSelectTool::SelectNone);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(rectTool()->shape() == nullptr);
    QCOMPARE(paramsOf(shape), (QVector<double>{p.x(), p.y(), m2.x(), m2.y()}));
    double l = 0, t = 0, r = 0, b = 0;
    int direction = -1, count = -1;
    QVERIFY(shape->GetParam(&l, &t, &r, &b, &direction, &count));
    QCOMPARE(direction, 2);
    QCOMPARE(count, 0);
    QVERIFY(layerHasId(w.active(), id));
    QVERIFY(!layerHasId(w.staticLayer(), id));
    QVERIFY(select->currentShape() == shape);
    QCOMPARE(shape->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(shape->GetScale(), float(zoom));

    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(moved.count(), 0);
    QCOMPARE(resized.count(), 0);
    const QPointF releaseAt = w.seen(QPointF(60, 45));
    QCOMPARE(log.entries, (QStringList{clickedText(id),
                                       QString("mouseClicked %1,%2").arg(releaseAt.x()).arg(releaseAt.y())}));
    QVERIFY(leftClicks.calls.isEmpty());
}

void tst_DrawTool::newShapeTakesTheLookAtThePress()
{
    PictureWindow w(2.0);
    ImageCtrlScene* scene = w.scene();
    scene->setPenColor(QColor(200, 10, 20, 255));
    scene->setBrushColor(QColor(1, 2, 3, 4));
    scene->setLineWidth(2.75f);
    scene->SetDrawMode(DM_RECT1);

    w.press(QPointF(20, 20));
    ODRect1* shape = rectTool()->shape();
    QVERIFY(shape);
    // Later changes do not reach the shape being drawn.
    scene->setPenColor(QColor(0, 0, 0, 255));
    scene->setBrushColor(QColor(9, 9, 9, 9));
    scene->setLineWidth(5.0f);
    w.move(QPointF(50, 40));
    w.release(QPointF(50, 40));

    QCOMPARE(shape->GetPenColor(), QColor(200, 10, 20, 255));
    QCOMPARE(shape->GetBrushColor(), QColor(1, 2, 3, 4));
    QCOMPARE(shape->GetLineWidth(), 2.75f);
    QCOMPARE(shape->GetScale(), 2.0f);
    float ox = -1.0f, oy = -1.0f;
    shape->GetOffset(ox, oy);
    QCOMPARE(ox, 0.0f);
    QCOMPARE(oy, 0.0f);
    // A pen's width is the line width truncated.
    QCOMPARE(shape->rectItem()->pen().width(), 2);
    QCOMPARE(shape->rectItem()->pen().color(), QColor(200, 10, 20, 255));
    QCOMPARE(shape->rectItem()->brush().color(), QColor(1, 2, 3, 4));
}

void tst_DrawTool::drawnShapeGoesToTheActiveLayerEvenForStaticOverlays()
{
    PictureWindow w;
    w.scene()->setIsStaticOverlay(true);
    w.scene()->setIsOverlay(true);
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    w.drag(QPointF(20, 20), QPointF(50, 50));
    QVERIFY(layerHasId(w.active(), id));
    QVERIFY(w.staticLayer()->shapes().isEmpty());
    QVERIFY(w.staticLayer()->selectedShapes().isEmpty());
    // Only the overlay flag ends with the draw mode.
    QCOMPARE(w.scene()->isStaticOverlay(), true);
    QCOMPARE(w.scene()->isOverlay(), false);
}

void tst_DrawTool::shapeDrawnInOverlayModeIsAnOverlay()
{
    PictureWindow w;
    w.scene()->setIsOverlay(true);
    w.scene()->SetDrawMode(DM_RECT1);
    w.drag(QPointF(20, 20), QPointF(50, 50));
    QCOMPARE(w.active()->shapes().last()->isOverlay(), true);
    QCOMPARE(w.scene()->isOverlay(), false);

    w.scene()->SetDrawMode(DM_RECT1);
    w.drag(QPointF(60, 20), QPointF(90, 50));
    QCOMPARE(w.active()->shapes().last()->isOverlay(), false);
}

void tst_DrawTool::pressOnAnExistingShapeStartsANewOne()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* old = addRect(w.active(), 10, 10, 150, 120);
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    // The press lies on the old shape's body.
    w.drag(QPointF(30, 30), QPointF(60, 70));
    QCOMPARE(w.active()->shapes().size(), 2);
    ODRect1* drawn = static_cast<ODRect1*>(w.active()->shapes().last());
    QCOMPARE(drawn->GetShapeID(), id);
    QCOMPARE(paramsOf(drawn), (QVector<double>{30, 30, 60, 70}));
    QCOMPARE(paramsOf(old), (QVector<double>{10, 10, 150, 120}));
    QVERIFY(selectTool()->currentShape() == drawn);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
}

void tst_DrawTool::dragBackPastThePressPointFlipsTheRectangle()
{
    PictureWindow w;
    w.scene()->SetDrawMode(DM_RECT1);
    w.press(QPointF(60, 50));
    ODRect1* shape = rectTool()->shape();
    w.move(QPointF(20, 20));
    QCOMPARE(paramsOf(shape), (QVector<double>{20, 20, 60, 50}));
    w.move(QPointF(80, 70));
    // The grabbed corner crossed the press point: left above right until the release.
    QCOMPARE(paramsOf(shape), (QVector<double>{80, 70, 60, 50}));
    QCOMPARE(shape->rectItem()->rect(), QRectF(60, 50, 20, 20));
    w.release(QPointF(80, 70));
    QCOMPARE(paramsOf(shape), (QVector<double>{60, 50, 80, 70}));
    QVERIFY(layerHasId(w.active(), shape->GetShapeID()));
}

void tst_DrawTool::pressAndReleaseOnOneSpotDiscardsRectangle_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 0.25") << 0.25;
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

void tst_DrawTool::pressAndReleaseOnOneSpotDiscardsRectangle()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    const int items = w.scene()->items().size();
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;

    w.click(QPointF(30, 30));

    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QVERIFY(!layerHasId(w.active(), id));
    QVERIFY(!layerHasId(w.staticLayer(), id));
    QVERIFY(w.active()->shapes().isEmpty());
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QCOMPARE(w.scene()->items().size(), items);
    QVERIFY(selectTool()->currentShape() == nullptr);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    QVERIFY(rectTool()->shape() == nullptr);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    // The id is used up.
    QCOMPARE(ODShape::s_ID, id + 1);
    QVERIFY(leftClicks.calls.isEmpty());
}

void tst_DrawTool::hostHearsOfADiscardedShapeWhileItStillExists()
{
    PictureWindow w;
    ShaperLayer* layer = w.active();
    QList<bool> presentAtSignal;
    connect(w.wnd.get(), &KESImageWnd::shapeClicked, this,
            [&](long id) { presentAtSignal << layerHasId(layer, id); });
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    w.drag(QPointF(30, 30), QPointF(31, 60));
    QCOMPARE(presentAtSignal, QList<bool>{true});
    QVERIFY(!layerHasId(layer, id));
}

void tst_DrawTool::rectangleNarrowerOrLowerThanTwoPixelsIsDiscarded_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<bool>("kept");

    const QPointF p(20, 20);
    QTest::newRow("1 by 5, zoom 1") << 1.0 << p << QPointF(21, 25) << false;
    QTest::newRow("5 by 1, zoom 1") << 1.0 << p << QPointF(25, 21) << false;
    QTest::newRow("1 by 1, zoom 1") << 1.0 << p << QPointF(21, 21) << false;
    QTest::newRow("0 by 7, zoom 1") << 1.0 << p << QPointF(20, 27) << false;
    QTest::newRow("2 by 2, zoom 1") << 1.0 << p << QPointF(22, 22) << true;
    QTest::newRow("2 by 2 up and left, zoom 1") << 1.0 << p << QPointF(18, 18) << true;
    QTest::newRow("1 by 5 left, zoom 1") << 1.0 << p << QPointF(19, 25) << false;
    QTest::newRow("1 by 5, zoom 4") << 4.0 << p << QPointF(21, 25) << false;
    QTest::newRow("2 by 2, zoom 4") << 4.0 << p << QPointF(22, 22) << true;
    // Differences are truncated toward zero, not rounded.
    QTest::newRow("1.75 by 5, zoom 4") << 4.0 << p << QPointF(21.75, 25) << false;
    QTest::newRow("5 by 1.75, zoom 4") << 4.0 << p << QPointF(25, 21.75) << false;
    QTest::newRow("1.75 by 5 leftward, zoom 4") << 4.0 << p << QPointF(18.25, 25) << false;
    QTest::newRow("2.25 by 2, zoom 4") << 4.0 << p << QPointF(22.25, 22) << true;
    QTest::newRow("0.25 by 0.25, zoom 4") << 4.0 << p << QPointF(20.25, 20.25) << false;
    // The view's scale plays no part: one viewport pixel is four image pixels.
    QTest::newRow("one viewport pixel, zoom 0.25") << 0.25 << QPointF(40, 40) << QPointF(44, 44) << true;
}

void tst_DrawTool::rectangleNarrowerOrLowerThanTwoPixelsIsDiscarded()
{
    QFETCH(double, zoom);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(bool, kept);

    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    const QPointF seenFrom = w.seen(from);
    const QPointF seenTo = w.seen(to);
    if (zoom >= 1.0) {
        QCOMPARE(seenFrom, from);
        QCOMPARE(seenTo, to);
    } else {
        QCOMPARE(std::abs(seenTo.x() - seenFrom.x()), 4.0);
    }
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    w.drag(from, to);

    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QCOMPARE(layerHasId(w.active(), id), kept);
    QVERIFY(rectTool()->shape() == nullptr);
    if (kept) {
        auto* shape = static_cast<ODRect1*>(w.active()->shapes().last());
        QCOMPARE(paramsOf(shape), (QVector<double>{qMin(seenFrom.x(), seenTo.x()), qMin(seenFrom.y(), seenTo.y()),
                                                   qMax(seenFrom.x(), seenTo.x()), qMax(seenFrom.y(), seenTo.y())}));
        QVERIFY(selectTool()->currentShape() == shape);
    } else {
        QVERIFY(w.active()->shapes().isEmpty());
        QVERIFY(w.active()->selectedShapes().isEmpty());
        QVERIFY(selectTool()->currentShape() == nullptr);
    }
}

void tst_DrawTool::rotatedRectangleShorterThanTwoIsDiscarded_data()
{
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<bool>("kept");

    // The press is at (20, 20); the drag takes the top-left corner of the
    // zero-size rectangle there, so width and height are the distances moved.
    QTest::newRow("1.9 wide") << QPointF(21.9, 25) << false;
    QTest::newRow("1.9 high") << QPointF(25, 21.9) << false;
    QTest::newRow("1.9 wide, leftward") << QPointF(18.1, 25) << false;
    QTest::newRow("2.0 by 2.0") << QPointF(22, 22) << true;
    QTest::newRow("2.0 by 2.0, up and left") << QPointF(18, 18) << true;
}

void tst_DrawTool::rotatedRectangleShorterThanTwoIsDiscarded()
{
    QFETCH(QPointF, to);
    QFETCH(bool, kept);

    PictureWindow w;
    HostLog log(w.wnd.get());
    w.scene()->SetDrawMode(DM_RECT2);
    const long id = ODShape::s_ID;
    const QPointF from(20, 20);
    // Scene events carry exact positions, which the view's pixels could not.
    SceneMouse press(QEvent::GraphicsSceneMousePress, from);
    QApplication::sendEvent(w.scene(), press.get());
    auto* tool = static_cast<ODDrawTool<ODRect2>*>(tools()->GetShapeTool(DM_RECT2));
    QVERIFY(tool->shape() != nullptr);
    QCOMPARE(tool->shape()->GetShapeID(), id);
    SceneMouse move(QEvent::GraphicsSceneMouseMove, to);
    QApplication::sendEvent(w.scene(), move.get());
    SceneMouse release(QEvent::GraphicsSceneMouseRelease, to);
    QApplication::sendEvent(w.scene(), release.get());

    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(tool->shape() == nullptr);
    QCOMPARE(layerHasId(w.active(), id), kept);
    if (kept) {
        auto* shape = static_cast<ODRect2*>(w.active()->shapes().last());
        QCOMPARE(shape->GetDrawMode(), DM_RECT2);
        double x = -1.0, y = -1.0, l1 = -1.0, l2 = -1.0, angle = -1.0;
        int direction = -1, count = -1;
        QVERIFY(shape->GetParam(&x, &y, &l1, &l2, &angle, &direction, &count));
        QCOMPARE(l1, 2.0);
        QCOMPARE(l2, 2.0);
        QCOMPARE(QPointF(x, y), (from + to) / 2);
        QCOMPARE(angle, 0.0);
        QVERIFY(selectTool()->currentShape() == shape);
    } else {
        QVERIFY(w.active()->shapes().isEmpty());
        QVERIFY(w.active()->selectedShapes().isEmpty());
        QVERIFY(selectTool()->currentShape() == nullptr);
    }
}

void tst_DrawTool::sizeTestUsesTheLastMoveNotTheReleasePosition()
{
    PictureWindow w;
    w.scene()->SetDrawMode(DM_RECT1);
    long id = ODShape::s_ID;
    // One pixel wide at the last move, released far away: discarded.
    w.press(QPointF(20, 20));
    w.move(QPointF(21, 40));
    w.release(QPointF(80, 80));
    QVERIFY(!layerHasId(w.active(), id));

    // Dragged out, released where the press was: kept as the moves left it.
    w.scene()->SetDrawMode(DM_RECT1);
    id = ODShape::s_ID;
    w.press(QPointF(20, 20));
    w.move(QPointF(50, 40));
    w.release(QPointF(20, 20));
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(paramsOf(static_cast<ODRect1*>(w.active()->shapes().last())), (QVector<double>{20, 20, 50, 40}));
}

void tst_DrawTool::drawModeLastsForOneShape()
{
    PictureWindow w;
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    w.drag(QPointF(20, 20), QPointF(50, 50));
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    // The next drag is a select tool gesture: it moves the new shape.
    w.drag(QPointF(30, 30), QPointF(40, 35));
    QCOMPARE(ODShape::s_ID, id + 1);
    QCOMPARE(w.active()->shapes().size(), 1);
    QCOMPARE(paramsOf(static_cast<ODRect1*>(w.active()->shapes().first())), (QVector<double>{30, 25, 60, 55}));
}

void tst_DrawTool::secondPressBeforeReleaseDeletesTheUnfinishedShape()
{
    PictureWindow a;
    PictureWindow b;
    HostLog logB(b.wnd.get());
    a.scene()->SetDrawMode(DM_RECT1);
    b.scene()->SetDrawMode(DM_RECT1);

    const int itemsA = a.scene()->items().size();
    const long id = ODShape::s_ID;
    a.press(QPointF(20, 20));
    ODRect1* first = rectTool()->shape();
    QVERIFY(first);
    QCOMPARE(first->GetShapeID(), id);
    QCOMPARE(a.scene()->items().size(), itemsA + 3);
    const quintptr firstAddress = reinterpret_cast<quintptr>(first);

    // A second press reaches the same tool, still drawing; it is sent to the
    // other window's scene, so that the window whose layer keeps the stale
    // entry gets no further events.
    SceneMouse press(QEvent::GraphicsSceneMousePress, QPointF(30, 30));
    QApplication::sendEvent(b.scene(), press.get());

    // The unfinished shape is gone, items and all, at once.
    QCOMPARE(a.scene()->items().size(), itemsA);
    ODRect1* second = rectTool()->shape();
    QVERIFY(second);
    QCOMPARE(second->GetShapeID(), id + 1);
    QVERIFY(layerHasId(b.active(), id + 1));
    QVERIFY(selectTool()->currentShape() == second);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNewShape);
    // It left its layer's lists before it went: no address of it remains.
    QVERIFY(a.active()->shapes().isEmpty());
    QVERIFY(a.active()->selectedShapes().isEmpty());
    for (ODShape* shape : b.active()->shapes())
        QVERIFY(reinterpret_cast<quintptr>(shape) != firstAddress || shape == second);
    a.scene()->SetDrawMode(DM_SELECT);

    SceneMouse release(QEvent::GraphicsSceneMouseRelease, QPointF(30, 30));
    QApplication::sendEvent(b.scene(), release.get());
    QCOMPARE(logB.shapeEvents(), QStringList{clickedText(id + 1)});
    QCOMPARE(b.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(rectTool()->shape() == nullptr);
    // Pressed and released on one spot: discarded.
    QVERIFY(!layerHasId(b.active(), id + 1));
}

void tst_DrawTool::rightClickReachesNoTool()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    const QPointF pressBefore = rectTool()->pressPoint();

    w.press(QPointF(33, 27), Qt::RightButton);
    QCOMPARE(ODShape::s_ID, id);
    QVERIFY(rectTool()->shape() == nullptr);
    QCOMPARE(rectTool()->pressPoint(), pressBefore);
    w.release(QPointF(33, 27), Qt::RightButton);

    // A release that reached the tool would have ended the draw mode.
    QCOMPARE(w.scene()->GetDrawMode(), DM_RECT1);
    QVERIFY(w.active()->shapes().isEmpty());
    QVERIFY(log.shapeEvents().isEmpty());
    QVERIFY(leftClicks.calls.isEmpty());
    // The view still reports the release.
    QCOMPARE(log.entries, QStringList{QString("mouseClicked 33,27")});

    // The draw mode is still there for the left button.
    w.drag(QPointF(20, 20), QPointF(50, 50));
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
}

void tst_DrawTool::rightClickLeavesTheSelectionAlone()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODRect1* a = addRect(w.active(), 20, 20, 60, 60);
    ODRect1* other = addRect(w.active(), 100, 20, 140, 60);
    w.click(QPointF(40, 40));
    QVERIFY(selectTool()->currentShape() == a);
    log.entries.clear();

    // On empty ground and on another shape: neither drops nor changes the selection.
    w.click(QPointF(80, 100), Qt::RightButton);
    w.click(QPointF(120, 40), Qt::RightButton);
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QVERIFY(other->rect1HandleItem()->handleMap().isEmpty());
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QVERIFY(log.shapeEvents().isEmpty());
    QVERIFY(leftClicks.calls.isEmpty());
}

void tst_DrawTool::rightDoubleClickReachesTheScenesToolDispatch()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    QSignalSpy sceneDouble(w.scene(), &ImageCtrlScene::mouseDoubleClick);
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;

    Kit::doubleClickAt(w.view(), QPointF(40, 40), Qt::RightButton);

    // The double click is handled by the scene's dispatch whatever the
    // button; the tools' own double click does nothing, and the press and
    // releases around it reach no tool.
    QCOMPARE(sceneDouble.count(), 1);
    QCOMPARE(log.entries.count(QString("doubleClick")), 1);
    QCOMPARE(ODShape::s_ID, id);
    QCOMPARE(w.scene()->GetDrawMode(), DM_RECT1);
    QVERIFY(w.active()->shapes().isEmpty());
    QVERIFY(log.shapeEvents().isEmpty());
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_DrawTool::movesReachTheToolsDuringARightButtonPan()
{
    // The picture fits the viewport, so the pan cannot scroll.
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();
    w.press(QPointF(70, 60));
    w.press(QPointF(70, 60), Qt::RightButton);
    QVERIFY(w.view()->isRightDown());
    w.move(QPointF(80, 65), Qt::LeftButton | Qt::RightButton);
    QVERIFY(w.view()->isRightMoved());
    QCOMPARE(Kit::dragState(), ODSelectTool::MovedBody);
    QCOMPARE(paramsOf(a), (QVector<double>{50, 45, 110, 85}));
    w.release(QPointF(80, 65), Qt::RightButton);
    QCOMPARE(Kit::dragState(), ODSelectTool::MovedBody);
    QVERIFY(log.shapeEvents().isEmpty());
    w.release(QPointF(80, 65));
    QCOMPARE(log.shapeEvents(), QStringList{movedText(id)});
}

void tst_DrawTool::hoverInADrawModeOnlyNotesThePoint()
{
    PictureWindow w;
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    w.click(QPointF(70, 60));
    QVERIFY(selectTool()->currentShape() == a);
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;

    w.move(QPointF(77, 66), Qt::NoButton);
    QCOMPARE(rectTool()->curPoint(), QPointF(77, 66));
    QVERIFY(rectTool()->shape() == nullptr);
    QCOMPARE(ODShape::s_ID, id);
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
    QCOMPARE(w.scene()->GetDrawMode(), DM_RECT1);
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_DrawTool::middleButtonDrawsLikeTheLeft()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    w.scene()->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;

    w.press(QPointF(20, 20), Qt::MiddleButton);
    QVERIFY(rectTool()->shape() != nullptr);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNewShape);
    w.move(QPointF(70, 60), Qt::MiddleButton);
    w.release(QPointF(70, 60), Qt::MiddleButton);

    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(paramsOf(static_cast<ODRect1*>(w.active()->shapes().last())), (QVector<double>{20, 20, 70, 60}));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QVERIFY(leftClicks.calls.isEmpty());
}

void tst_DrawTool::middleClickOnEmptyGroundReportsNoLeftClick()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODRect1* a = addRect(w.active(), 20, 20, 60, 60);
    w.click(QPointF(40, 40));
    QVERIFY(selectTool()->currentShape() == a);
    log.entries.clear();

    // The middle button reaches the select tool: the selection goes.
    w.click(QPointF(120, 100), Qt::MiddleButton);
    QVERIFY(selectTool()->currentShape() == nullptr);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
    // The left-click report is for the left button only.
    QVERIFY(leftClicks.calls.isEmpty());
    QVERIFY(log.shapeEvents().isEmpty());

    w.click(QPointF(120, 100));
    QCOMPARE(leftClicks.calls.size(), 1);
}

void tst_DrawTool::modeBeyondTheToolListIgnoresTheMouse()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    w.scene()->SetDrawMode(DM_MASK);
    const long id = ODShape::s_ID;
    w.drag(QPointF(20, 20), QPointF(60, 60));
    QCOMPARE(ODShape::s_ID, id);
    QCOMPARE(w.scene()->GetDrawMode(), DM_MASK);
    QVERIFY(w.active()->shapes().isEmpty());
    QVERIFY(log.shapeEvents().isEmpty());
    QVERIFY(leftClicks.calls.isEmpty());
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_DrawTool::ellipseDraggedByOnePixelStays()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    auto* tool = static_cast<ODDrawTool<ODEllipse>*>(tools()->GetShapeTool(DM_ELLIPSE));
    QVERIFY(tool != nullptr);
    QVERIFY(qobject_cast<ODSelectTool*>(tools()->GetShapeTool(DM_ELLIPSE)) == nullptr);
    w.scene()->SetDrawMode(DM_ELLIPSE);
    const long id = ODShape::s_ID;
    const QPointF p = w.seen(QPointF(30, 30));
    const QPointF m = w.seen(QPointF(31, 31));

    w.press(QPointF(30, 30));
    ODEllipse* shape = tool->shape();
    QVERIFY(shape != nullptr);
    QCOMPARE(shape->GetShapeID(), id);
    QCOMPARE(shape->GetDrawMode(), DM_ELLIPSE);
    QCOMPARE(shape->center(), p);
    QCOMPARE(selectTool()->handleIndex(), 1);
    w.move(QPointF(31, 31));
    w.release(QPointF(31, 31));

    // Only rectangles have a minimum size: the small ellipse stays.
    QVERIFY(tool->shape() == nullptr);
    QVERIFY(layerHasId(w.active(), id));
    QVERIFY(w.active()->shapes().last() == shape);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    // It grew from the press point as its centre.
    double x = 0, y = 0, rx = 0, ry = 0, angle = -1;
    QVERIFY(shape->GetParam(&x, &y, &rx, &ry, &angle));
    QCOMPARE(QPointF(x, y), p);
    QCOMPARE(rx, std::abs(m.x() - p.x()));
    QCOMPARE(ry, std::abs(m.y() - p.y()));
    QCOMPARE(angle, 0.0);
}

QTEST_MAIN(tst_DrawTool)
#include "tst_drawtool.moc"
