// The facade's calls on shapes as a host makes them: regions of interest and
// overlays displayed and read back by id, removed, hidden, locked, cleared,
// selected by a signal, and the draw calls that put the window in a draw mode
// for the operator's next shape.

#include "testkit.h"

#include "odtexttool.h"

#include <QSignalSpy>
#include <QTest>

using namespace Kit;

namespace {

VorROI rectangleROI(double left, double top, double right, double bottom)
{
    VorROI roi;
    roi.GenRect1(VorPoint(left, top), VorPoint(right, bottom));
    return roi;
}

VorOverlay lineOverlay(double x1, double y1, double x2, double y2)
{
    VorOverlay overlay;
    overlay.GenLine(VorPoint(x1, y1), VorPoint(x2, y2));
    return overlay;
}

int textModel()
{
    return int(ODTextTool::GetODTextTool()->model());
}

} // namespace

class tst_FacadeShapeCalls : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void displayedROIReadsBackByItsId();
    void displayedOverlayReadsBackByItsId();
    void displayOnALayerValueOutsideTheLayersIsRefused_data();
    void displayOnALayerValueOutsideTheLayersIsRefused();
    void displayBeforeAnyPictureInVorImageModeIsRefused();
    void displayWithoutAPictureInQImageModeIsTaken();
    void pathGivesTheFirstIdMade();
    void unknownIdReadsBackMinusOne();
    void getShapeIDSListsTheShapeLayer();
    void removeShapeRemovesAndEndsTheSelection();
    void removeShapeWithAnUnknownIdAnswersZeroAndEndsTheSelection();
    void removeShapeListLeavesEveryShapeInPlace();
    void visibleShapeHidesAndShowsByIdAndAnswersMinusOneForAnUnknownId();
    void movableAndSelectableByIdAndUnknownIdsAreNoError();
    void activeLayerFlagsReachTheShapeLayer();
    void clearLayerEmptiesTheShapeLayerAndAnswersZeroForAnyValue();
    void clearEmptiesEverything();
    void selectShapeSignalSelectsWhenTheLayerAllowsIt();
    void drawCallsPutTheWindowInTheirMode_data();
    void drawCallsPutTheWindowInTheirMode();
    void drawRectWhileAPolygonIsUnderWayKeepsThePolygonMode();
    void drawArrowLineAfterDrawTextLeavesThePlacementArmed();
    void drawTextWithATextArmsItsPlacement();
    void drawPointWithoutAPictureAnswersZeroAndChangesNoMode();
    void everyShapeCallWithoutAWindowAnswersItsRefusal();
};

void tst_FacadeShapeCalls::init()
{
    forgetCurrentShape();
    ODTextTool::GetODTextTool()->setModel(ODTextTool::PickText);
}

void tst_FacadeShapeCalls::cleanup()
{
    forgetCurrentShape();
    ODTextTool::GetODTextTool()->setModel(ODTextTool::PickText);
}

void tst_FacadeShapeCalls::displayedROIReadsBackByItsId()
{
    PictureWindow w;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = w.wnd->displayROI(roi);
    QVERIFY(id >= 0);
    QVERIFY(layerHasId(w.active(), id));
    VorROI back;
    QCOMPARE(w.wnd->getROIShape(id, &back), 0L);
    QCOMPARE(FromROIType(back.ROIType()), DM_RECT1);
    VorPoint a, b;
    QVERIFY(back.GetRect1(&a, &b));
    QCOMPARE(a, VorPoint(10, 20));
    QCOMPARE(b, VorPoint(60, 70));
}

void tst_FacadeShapeCalls::displayedOverlayReadsBackByItsId()
{
    PictureWindow w;
    VorOverlay overlay = lineOverlay(5, 6, 70, 80);
    const long id = w.wnd->displayOverlay(overlay, KESImageWnd::LAYER_SHAPE);
    QVERIFY(id >= 0);
    VorOverlay back;
    QCOMPARE(w.wnd->getOverlayShape(id, &back), 0L);
    QCOMPARE(back.OverlayType(), overlay.OverlayType());
}

void tst_FacadeShapeCalls::displayOnALayerValueOutsideTheLayersIsRefused_data()
{
    QTest::addColumn<int>("layer");
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
    QTest::newRow("1000") << 1000;
}

void tst_FacadeShapeCalls::displayOnALayerValueOutsideTheLayersIsRefused()
{
    QFETCH(int, layer);
    PictureWindow w;
    const long id = ODShape::s_ID;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    VorOverlay overlay = lineOverlay(1, 2, 3, 4);
    VorOverlayPath path;
    path.Append(overlay);
    QCOMPARE(w.wnd->displayROI(roi, KESImageWnd::Layer(layer)), -1L);
    QCOMPARE(w.wnd->displayOverlay(overlay, KESImageWnd::Layer(layer)), -1L);
    QCOMPARE(w.wnd->displayOverlayPath(path, KESImageWnd::Layer(layer)), -1L);
    QVERIFY(w.active()->shapes().isEmpty());
    QCOMPARE(ODShape::s_ID, id);
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::Layer(layer)).isEmpty());
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::Layer(layer)), 0L);
}

void tst_FacadeShapeCalls::displayBeforeAnyPictureInVorImageModeIsRefused()
{
    EmbeddedWindow e;
    QVERIFY(e.window()->isVorImg());
    VorROI roi = rectangleROI(10, 20, 60, 70);
    QCOMPARE(e.wnd->displayROI(roi), -1L);
    VorOverlay overlay = lineOverlay(1, 2, 3, 4);
    QCOMPARE(e.wnd->displayOverlay(overlay), -1L);
    QVERIFY(e.scene()->GetActiveLayer()->shapes().isEmpty());
}

void tst_FacadeShapeCalls::displayWithoutAPictureInQImageModeIsTaken()
{
    EmbeddedWindow e;
    e.window()->setIsVorImg(false);
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = e.wnd->displayROI(roi);
    QVERIFY(id >= 0);
    QVERIFY(layerHasId(e.scene()->GetActiveLayer(), id));
}

void tst_FacadeShapeCalls::pathGivesTheFirstIdMade()
{
    PictureWindow w;
    VorOverlayPath path;
    path.Append(lineOverlay(1, 2, 30, 40));
    path.Append(lineOverlay(5, 6, 50, 60));
    const long first = ODShape::s_ID;
    const long id = w.wnd->displayOverlayPath(path);
    QCOMPARE(id, first);
    QCOMPARE(w.active()->shapes().size(), 2);
}

void tst_FacadeShapeCalls::unknownIdReadsBackMinusOne()
{
    PictureWindow w;
    VorROI roi;
    VorOverlay overlay;
    QCOMPARE(w.wnd->getROIShape(123456, &roi), -1L);
    QCOMPARE(w.wnd->getOverlayShape(123456, &overlay), -1L);
    QCOMPARE(w.wnd->getROIShape(-1, &roi), -1L);
}

void tst_FacadeShapeCalls::getShapeIDSListsTheShapeLayer()
{
    PictureWindow w;
    VorROI a = rectangleROI(10, 20, 60, 70);
    VorROI b = rectangleROI(80, 20, 120, 70);
    const long idA = w.wnd->displayROI(a);
    const long idB = w.wnd->displayROI(b);
    const QList<long> ids = w.wnd->getShapeIDS();
    QVERIFY(ids.contains(idA));
    QVERIFY(ids.contains(idB));
    QCOMPARE(w.wnd->getShapeIDS(KESImageWnd::LAYER_SHAPE), ids);
}

void tst_FacadeShapeCalls::removeShapeRemovesAndEndsTheSelection()
{
    PictureWindow w;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = w.wnd->displayROI(roi);
    w.click(QPointF(30, 40));
    QVERIFY(selectTool()->currentShape() != nullptr);
    QCOMPARE(w.wnd->removeShape(id), 0L);
    QVERIFY(!layerHasId(w.active(), id));
    QCOMPARE(selectTool()->currentShape(), nullptr);
    VorROI back;
    QCOMPARE(w.wnd->getROIShape(id, &back), -1L);
}

void tst_FacadeShapeCalls::removeShapeWithAnUnknownIdAnswersZeroAndEndsTheSelection()
{
    PictureWindow w;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = w.wnd->displayROI(roi);
    w.click(QPointF(30, 40));
    QVERIFY(selectTool()->currentShape() != nullptr);
    QVERIFY(!w.active()->selectedShapes().isEmpty());
    QCOMPARE(w.wnd->removeShape(id + 1000), 0L);
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QVERIFY(layerHasId(w.active(), id));
}

void tst_FacadeShapeCalls::removeShapeListLeavesEveryShapeInPlace()
{
    PictureWindow w;
    VorROI a = rectangleROI(10, 20, 60, 70);
    VorROI b = rectangleROI(80, 20, 120, 70);
    const long idA = w.wnd->displayROI(a);
    const long idB = w.wnd->displayROI(b);
    QSignalSpy requests(w.window(), &CMainWindow::sendRemoveShapeList);
    w.wnd->removeShapeList({idA, idB});
    QCOMPARE(requests.count(), 1);
    QCOMPARE(requests.at(0).at(0).value<QList<long>>(), (QList<long>{idA, idB}));
    QVERIFY(layerHasId(w.active(), idA));
    QVERIFY(layerHasId(w.active(), idB));
}

void tst_FacadeShapeCalls::visibleShapeHidesAndShowsByIdAndAnswersMinusOneForAnUnknownId()
{
    PictureWindow w;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = w.wnd->displayROI(roi);
    ODShape* shape = w.active()->shapes().last();
    QCOMPARE(w.wnd->visibleShape(id, false), 0L);
    QVERIFY(!shape->isVisible());
    QCOMPARE(w.wnd->visibleShape(id), 0L);
    QVERIFY(shape->isVisible());
    QCOMPARE(w.wnd->visibleShape(id + 1000, false), -1L);
}

void tst_FacadeShapeCalls::movableAndSelectableByIdAndUnknownIdsAreNoError()
{
    PictureWindow w;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = w.wnd->displayROI(roi);
    QVERIFY(w.wnd->isShapeMovable(id));
    QCOMPARE(w.wnd->setShapeMovable(id, false), 0L);
    QVERIFY(!w.wnd->isShapeMovable(id));
    QVERIFY(w.wnd->isShapeSelectable(id));
    QCOMPARE(w.wnd->setShapeSelectable(id, false), 0L);
    QVERIFY(!w.wnd->isShapeSelectable(id));
    // An unknown id: no error for the setters, false for the questions.
    QCOMPARE(w.wnd->setShapeMovable(id + 1000, true), 0L);
    QCOMPARE(w.wnd->setShapeSelectable(id + 1000, true), 0L);
    QVERIFY(!w.wnd->isShapeMovable(id + 1000));
    QVERIFY(!w.wnd->isShapeSelectable(id + 1000));
}

void tst_FacadeShapeCalls::activeLayerFlagsReachTheShapeLayer()
{
    PictureWindow w;
    QVERIFY(w.wnd->activeLayerMovable());
    w.wnd->setActiveLayerMovable(false);
    QVERIFY(!w.active()->isEnableMoveShape());
    QVERIFY(!w.wnd->activeLayerMovable());
    QVERIFY(w.wnd->activeLayerSelectable());
    w.wnd->setActiveLayerSelectable(false);
    QVERIFY(!w.active()->isEnableSelectShape());
    QVERIFY(!w.wnd->activeLayerSelectable());
    QCOMPARE(w.wnd->enableMoveROI(false), 0L);
}

void tst_FacadeShapeCalls::clearLayerEmptiesTheShapeLayerAndAnswersZeroForAnyValue()
{
    PictureWindow w;
    VorROI a = rectangleROI(10, 20, 60, 70);
    VorROI b = rectangleROI(80, 20, 120, 70);
    w.wnd->displayROI(a);
    w.wnd->displayROI(b);
    w.click(QPointF(30, 40));
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_SHAPE), 0L);
    QVERIFY(w.active()->shapes().isEmpty());
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QVERIFY(w.wnd->getShapeIDS().isEmpty());
}

void tst_FacadeShapeCalls::clearEmptiesEverything()
{
    PictureWindow w;
    VorROI a = rectangleROI(10, 20, 60, 70);
    w.wnd->displayROI(a);
    QCOMPARE(w.wnd->clear(), 0L);
    QVERIFY(w.active()->shapes().isEmpty());
}

void tst_FacadeShapeCalls::selectShapeSignalSelectsWhenTheLayerAllowsIt()
{
    PictureWindow w;
    VorROI roi = rectangleROI(10, 20, 60, 70);
    const long id = w.wnd->displayROI(roi);
    ODShape* shape = w.active()->shapes().last();
    emit w.wnd->selectShape(id);
    QVERIFY(w.active()->selectedShapes().contains(shape));
    QVERIFY(shape->isVisiblehandleMark());

    w.active()->clearSelectedShape();
    w.wnd->setActiveLayerSelectable(false);
    emit w.wnd->selectShape(id);
    QVERIFY(w.active()->selectedShapes().isEmpty());
}

void tst_FacadeShapeCalls::drawCallsPutTheWindowInTheirMode_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("textModel");
    QTest::newRow("resetDraw") << "resetDraw" << int(DM_SELECT) << 0;
    QTest::newRow("drawPoint") << "drawPoint" << int(DM_POINT) << 0;
    QTest::newRow("drawLine") << "drawLine" << int(DM_LINE) << 0;
    QTest::newRow("drawRect") << "drawRect" << int(DM_RECT1) << 0;
    QTest::newRow("drawRotateRect") << "drawRotateRect" << int(DM_RECT2) << 0;
    QTest::newRow("drawEllipse") << "drawEllipse" << int(DM_ELLIPSE) << 0;
    QTest::newRow("drawCircle") << "drawCircle" << int(DM_CIRCLE) << 0;
    QTest::newRow("drawPolygon") << "drawPolygon" << int(DM_POLYGON) << 0;
    QTest::newRow("drawIrregular") << "drawIrregular" << int(DM_ANYLINE) << 0;
    QTest::newRow("drawTorus") << "drawTorus" << int(DM_ANNULAR) << 0;
    QTest::newRow("drawArrowLine keeps the text model") << "drawArrowLine" << int(DM_ARROWLINE) << 1;
    QTest::newRow("drawClosedAnyLine keeps the text model") << "drawClosedAnyLine" << int(DM_ANYCLOSELINE) << 1;
    QTest::newRow("drawText") << "drawText" << int(DM_SELECT) << 1;
}

void tst_FacadeShapeCalls::drawCallsPutTheWindowInTheirMode()
{
    QFETCH(QString, call);
    QFETCH(int, mode);
    QFETCH(int, textModel);
    PictureWindow w;
    // An armed text placement before the call.
    ODTextTool::GetODTextTool()->setModel(ODTextTool::PlaceText);
    long result = -1;
    QVERIFY(QMetaObject::invokeMethod(w.wnd.get(), qPrintable(call), Q_RETURN_ARG(long, result)));
    QCOMPARE(result, 0L);
    QCOMPARE(int(w.scene()->GetDrawMode()), mode);
    QCOMPARE(::textModel(), textModel);
    // Every mode but select keeps the overlay flag until an overlay is shown.
    QCOMPARE(w.scene()->isOverlay(), mode != DM_SELECT);
    QVERIFY(!w.view()->limitMousePos());
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_FacadeShapeCalls::drawRectWhileAPolygonIsUnderWayKeepsThePolygonMode()
{
    PictureWindow w;
    QCOMPARE(w.wnd->drawPolygon(), 0L);
    clickCorner(w.view(), QPointF(20, 20));
    QCOMPARE(w.wnd->drawRect(), 0L);
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
    QCOMPARE(w.wnd->resetDraw(), 0L);
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
}

void tst_FacadeShapeCalls::drawArrowLineAfterDrawTextLeavesThePlacementArmed()
{
    PictureWindow w;
    QCOMPARE(w.wnd->drawText(), 0L);
    QCOMPARE(::textModel(), 1);
    QCOMPARE(w.wnd->drawArrowLine(), 0L);
    QCOMPARE(::textModel(), 1);
    QCOMPARE(w.scene()->GetDrawMode(), DM_ARROWLINE);
    QCOMPARE(w.wnd->drawLine(), 0L);
    QCOMPARE(::textModel(), 0);
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_FacadeShapeCalls::drawTextWithATextArmsItsPlacement()
{
    PictureWindow w;
    QString text("OK 12");
    QCOMPARE(w.wnd->drawText(text), 0L);
    QCOMPARE(::textModel(), 1);
    QCOMPARE(ODTextTool::GetODTextTool()->newText(), QString("OK 12"));
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
}

void tst_FacadeShapeCalls::drawPointWithoutAPictureAnswersZeroAndChangesNoMode()
{
    EmbeddedWindow e;
    QVERIFY(e.window()->isVorImg());
    QCOMPARE(e.wnd->drawPoint(), 0L);
    QCOMPARE(e.scene()->GetDrawMode(), DM_SELECT);
}

void tst_FacadeShapeCalls::everyShapeCallWithoutAWindowAnswersItsRefusal()
{
    KESImageWnd wnd;
    VorROI roi = rectangleROI(1, 2, 3, 4);
    VorOverlay overlay = lineOverlay(1, 2, 3, 4);
    VorOverlayPath path;
    QString text("x");
    QCOMPARE(wnd.displayROI(roi), -1L);
    QCOMPARE(wnd.displayOverlay(overlay), -1L);
    QCOMPARE(wnd.displayOverlayPath(path), -1L);
    QCOMPARE(wnd.clearLayer(KESImageWnd::LAYER_SHAPE), -1L);
    QVERIFY(wnd.getShapeIDS().isEmpty());
    QCOMPARE(wnd.getROIShape(0, &roi), -1L);
    QCOMPARE(wnd.getOverlayShape(0, &overlay), -1L);
    QCOMPARE(wnd.removeShape(0), -1L);
    wnd.removeShapeList({0, 1});
    QCOMPARE(wnd.visibleShape(0), -1L);
    QVERIFY(!wnd.isShapeMovable(0));
    QCOMPARE(wnd.setShapeMovable(0, true), -1L);
    QVERIFY(!wnd.isShapeSelectable(0));
    QCOMPARE(wnd.setShapeSelectable(0, true), -1L);
    wnd.setActiveLayerMovable(false);
    QVERIFY(!wnd.activeLayerMovable());
    wnd.setActiveLayerSelectable(false);
    QVERIFY(!wnd.activeLayerSelectable());
    QCOMPARE(wnd.clear(), -1L);
    QCOMPARE(wnd.enableMoveROI(true), -1L);
    for (long result : {wnd.resetDraw(), wnd.drawPoint(), wnd.drawLine(), wnd.drawRect(), wnd.drawRotateRect(),
                        wnd.drawEllipse(), wnd.drawCircle(), wnd.drawPolygon(), wnd.drawIrregular(), wnd.drawTorus(),
                        wnd.drawArrowLine(), wnd.drawClosedAnyLine(), wnd.drawText(), wnd.drawText(text)})
        QCOMPARE(result, -1L);
}

QTEST_MAIN(tst_FacadeShapeCalls)
#include "tst_facadeshapecalls.moc"
