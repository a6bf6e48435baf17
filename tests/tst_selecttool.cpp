// The select tool: picking the shape under the mouse, moving its body,
// dragging its handles, and what the host hears at the release; also the menu
// of shapes that the tool keeps for hosts that call it.

#include "testkit.h"

#include "MainWindow.h"
#include "Rect1HandleItem.h"

#include <QAction>
#include <QFile>
#include <QIcon>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Kit;

Q_DECLARE_METATYPE(ODShape*)

namespace {

// Watches for a popup menu while a call runs its own event loop: notes what
// the menu holds and closes it.
class PopupCloser : public QObject
{
public:
    void arm() { QTimer::singleShot(5, this, [this] { poll(); }); }

    bool seen = false;
    QMenu* menu = nullptr;
    QStringList texts;
    QList<qlonglong> data;
    QList<QImage> icons;
    QList<bool> iconNull;

private:
    void poll()
    {
        if (auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            seen = true;
            menu = popup;
            for (QAction* action : popup->actions()) {
                texts << action->text();
                data << action->data().toLongLong();
                iconNull << action->icon().isNull();
                icons << action->icon().pixmap(16, 16).toImage();
            }
            popup->hide();
            return;
        }
        if (++m_tries < 400)
            arm();
    }
    int m_tries = 0;
};

QImage iconImage(const QString& path)
{
    return QIcon(path).pixmap(16, 16).toImage();
}

long long windowIdOf(const PictureWindow& w)
{
    return reinterpret_cast<long long>(w.window());
}

} // namespace

class tst_SelectTool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void clickSelectsShapeAndShowsItsHandles();
    void movesWithoutAPressDoNothing();
    void clickOnAnotherShapeTakesEffectAtTheRelease();
    void dragOfTheBodyMovesByTheDeltaOfEachMove_data();
    void dragOfTheBodyMovesByTheDeltaOfEachMove();
    void dragOfEachHandleResizes_data();
    void dragOfEachHandleResizes();
    void handleDragAcrossTheOppositeSideEndsNormalised();
    void handleDragOfAPointReportsAMove();
    void releaseResetsTheViewportCursor();
    void pressAndReleaseOnCurrentShapeKeepsItCurrent();
    void pressAndReleaseOnAHandleIsAClick();
    void twoOverlappingBodiesSelectTheOlderWithoutMenu();
    void handleOfYoungerShapeOverOlderBodySelectsTheYounger();
    void activeLayerShapeWinsOverStaticLayerShape();
    void staticLayerShapeCanBeSelectedAndMoved();
    void pressOnTwoBodiesInADrawModeSelectsNothing();
    void pressOnOneBodyInADrawModeSelectsIt();
    void nonSelectableShapeOnTopIsSkipped();
    void onlyNonSelectableShapesGiveALeftClick();
    void disabledSelectionOnActiveLayerGovernsAllLayers();
    void disabledSelectionOnStaticLayerAloneChangesNothing();
    void immovableShapeGivesAClickAndIsDropped_data();
    void immovableShapeGivesAClickAndIsDropped();
    void activeLayerFlagStopsTheDragOfAStaticShape();
    void rightButtonNeverReachesTheTool();
    void leftClickOnEmptyGroundIsReportedAndDropsTheSelection();
    void mouseLimitEndsWithAClickOrANewShapeOnly();
    void selectedRectangleShowsItsHandles();
    void shapeMenuListsShapesWithTheirIcons();
    void shapeMenuIsMadeOnceAndRefilled();
    void menuActionMakesItsShapeCurrent();
};

void tst_SelectTool::initTestCase()
{
    qRegisterMetaType<ODShape*>();
    qRegisterMetaType<QList<ODShape*>>();
}

void tst_SelectTool::init()
{
    forgetCurrentShape();
}

void tst_SelectTool::cleanup()
{
    forgetCurrentShape();
}

void tst_SelectTool::clickSelectsShapeAndShowsItsHandles()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODSelectTool* tool = selectTool();
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());

    w.press(QPointF(70, 60));
    QVERIFY(tool->currentShape() == a);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::PressedBody);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectMoveBody);
    QCOMPARE(tool->handleIndex(), 1);
    QCOMPARE(tool->pressPoint(), QPointF(70, 60));
    QVERIFY(log.shapeEvents().isEmpty());

    w.release(QPointF(70, 60));
    QVERIFY(tool->currentShape() == a);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::DragNothing);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectNone);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(log.entries, (QStringList{clickedText(a->GetShapeID()), QString("mouseClicked 70,60")}));
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
    QVERIFY(leftClicks.calls.isEmpty());
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
}

void tst_SelectTool::movesWithoutAPressDoNothing()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    w.click(QPointF(70, 60));
    log.entries.clear();
    // Hovering over the current shape after the release.
    w.move(QPointF(72, 61), Qt::NoButton);
    w.move(QPointF(90, 75), Qt::NoButton);
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    QVERIFY(log.shapeEvents().isEmpty());
}

void tst_SelectTool::clickOnAnotherShapeTakesEffectAtTheRelease()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* a = addRect(w.active(), 20, 20, 60, 60);
    ODRect1* b = addRect(w.active(), 100, 20, 140, 60);
    w.click(QPointF(40, 40));
    QVERIFY(selectTool()->currentShape() == a);

    w.press(QPointF(120, 40));
    // The current shape keeps the selection until the release.
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    w.release(QPointF(120, 40));
    QVERIFY(selectTool()->currentShape() == b);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{b}));
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
    // The press armed no drag, so the selection at the release is shown
    // without handles; they appear with the next click on the shape.
    QVERIFY(b->rect1HandleItem()->handleMap().isEmpty());
    QCOMPARE(log.shapeEvents(), (QStringList{clickedText(a->GetShapeID()), clickedText(b->GetShapeID())}));

    w.click(QPointF(120, 40));
    QVERIFY(selectTool()->currentShape() == b);
    QCOMPARE(b->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(log.shapeEvents().size(), 3);
}

void tst_SelectTool::dragOfTheBodyMovesByTheDeltaOfEachMove_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

void tst_SelectTool::dragOfTheBodyMovesByTheDeltaOfEachMove()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy moved(w.wnd.get(), &KESImageWnd::shapeMoved);
    ODSelectTool* tool = selectTool();
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();

    w.press(QPointF(70, 60));
    QCOMPARE(Kit::dragState(tool), ODSelectTool::PressedBody);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectMoveBody);
    w.move(QPointF(75, 62));
    QCOMPARE(Kit::dragState(tool), ODSelectTool::MovedBody);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectMoveBody);
    QCOMPARE(paramsOf(a), (QVector<double>{45, 42, 105, 82}));
    QCOMPARE(a->rectItem()->rect(), QRectF(45, 42, 60, 40));
    QCOMPARE(tool->curPoint(), QPointF(75, 62));
    // The second delta runs from the first move, not from the press.
    w.move(QPointF(80, 70));
    QCOMPARE(paramsOf(a), (QVector<double>{50, 50, 110, 90}));
    QCOMPARE(Kit::dragState(tool), ODSelectTool::MovedBody);
    w.move(QPointF(80.25, 70.5));
    QCOMPARE(moved.count(), 0);
    QVERIFY(log.shapeEvents().isEmpty());

    w.release(QPointF(80.25, 70.5));
    const QPointF last = w.seen(QPointF(80.25, 70.5));
    const QPointF d = last - QPointF(80, 70);
    QCOMPARE(paramsOf(a), (QVector<double>{50 + d.x(), 50 + d.y(), 110 + d.x(), 90 + d.y()}));
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{movedText(id)});
    QVERIFY(tool->currentShape() == a);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::DragNothing);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectNone);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
}

void tst_SelectTool::dragOfEachHandleResizes_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("handle");
    QTest::addColumn<QPointF>("grab");
    QTest::addColumn<QPointF>("target");
    QTest::addColumn<QVector<double>>("expected");

    // The rectangle 40, 40, 100, 80 and its handles, numbered from 1.
    const struct {
        int handle;
        QPointF grab;
        QPointF target;
        QVector<double> expected;
    } rows[] = {
        {1, {40, 40}, {35, 33}, {35, 33, 100, 80}},  {2, {70, 40}, {65, 33}, {40, 33, 100, 80}},
        {3, {100, 40}, {105, 33}, {40, 33, 105, 80}}, {4, {100, 60}, {105, 53}, {40, 40, 105, 80}},
        {5, {100, 80}, {105, 87}, {40, 40, 105, 87}}, {6, {70, 80}, {65, 87}, {40, 40, 100, 87}},
        {7, {40, 80}, {35, 87}, {35, 40, 100, 87}},   {8, {40, 60}, {35, 53}, {35, 40, 100, 80}},
    };
    for (double zoom : {1.0, 4.0}) {
        for (const auto& row : rows) {
            QTest::addRow("handle %d, zoom %g", row.handle, zoom)
                << zoom << row.handle << row.grab << row.target << row.expected;
        }
    }
}

void tst_SelectTool::dragOfEachHandleResizes()
{
    QFETCH(double, zoom);
    QFETCH(int, handle);
    QFETCH(QPointF, grab);
    QFETCH(QPointF, target);
    QFETCH(QVector<double>, expected);

    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy resized(w.wnd.get(), &KESImageWnd::shapeResized);
    ODSelectTool* tool = selectTool();
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();
    w.click(QPointF(55, 55));
    QVERIFY(tool->currentShape() == a);
    log.entries.clear();

    w.press(grab);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::PressedHandle);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectDragHandle);
    QCOMPARE(tool->handleIndex(), handle);
    // Half way first: the handle goes where the mouse is, not by a delta.
    w.move((grab + target) / 2);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::ResizedHandle);
    w.move(target);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::ResizedHandle);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectDragHandle);
    QCOMPARE(paramsOf(a), expected);
    QCOMPARE(resized.count(), 0);
    QVERIFY(log.shapeEvents().isEmpty());

    w.release(target);
    QCOMPARE(paramsOf(a), expected);
    QCOMPARE(resized.count(), 1);
    QCOMPARE(resized.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{resizedText(id)});
    QVERIFY(tool->currentShape() == a);
    QCOMPARE(Kit::dragState(tool), ODSelectTool::DragNothing);
    QCOMPARE(Kit::selectMode(tool), ODSelectTool::SelectNone);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
}

void tst_SelectTool::handleDragAcrossTheOppositeSideEndsNormalised()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    w.click(QPointF(55, 55));
    log.entries.clear();

    w.press(QPointF(40, 40));
    w.move(QPointF(120, 90));
    // Between the drag and the release the grabbed corner's slots hold it.
    QCOMPARE(paramsOf(a), (QVector<double>{120, 90, 100, 80}));
    QCOMPARE(a->rectItem()->rect(), QRectF(100, 80, 20, 10));
    w.release(QPointF(120, 90));
    QCOMPARE(paramsOf(a), (QVector<double>{100, 80, 120, 90}));
    QCOMPARE(log.shapeEvents(), QStringList{resizedText(a->GetShapeID())});
}

void tst_SelectTool::handleDragOfAPointReportsAMove()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    // A shape of the point kind: the event depends on the kind alone.
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    a->setDrawMode(DM_POINT);
    const long id = a->GetShapeID();
    w.click(QPointF(55, 55));
    log.entries.clear();

    w.drag(QPointF(100, 80), QPointF(110, 90));
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 110, 90}));
    QCOMPARE(log.shapeEvents(), QStringList{movedText(id)});
}

void tst_SelectTool::releaseResetsTheViewportCursor()
{
    PictureWindow w;
    QWidget* viewport = w.view()->viewport();
    viewport->setCursor(Qt::CrossCursor);
    // The right button's release does not reach the tool.
    w.click(QPointF(150, 120), Qt::RightButton);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);
    w.click(QPointF(150, 120));
    QCOMPARE(viewport->cursor().shape(), Qt::ArrowCursor);

    w.view()->setDrawModeCursorIcon(DM_RECT1);
    w.scene()->SetDrawMode(DM_RECT1);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);
    w.drag(QPointF(20, 20), QPointF(60, 50));
    QCOMPARE(viewport->cursor().shape(), Qt::ArrowCursor);
}

void tst_SelectTool::pressAndReleaseOnCurrentShapeKeepsItCurrent()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();
    w.click(QPointF(70, 60));
    QVERIFY(selectTool()->currentShape() == a);

    w.press(QPointF(50, 70));
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedBody);
    w.release(QPointF(50, 70));
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{a}));
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(clicked.at(1).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), (QStringList{clickedText(id), clickedText(id)}));
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
}

void tst_SelectTool::pressAndReleaseOnAHandleIsAClick()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();
    w.click(QPointF(70, 60));
    log.entries.clear();

    w.press(QPointF(100, 80));
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedHandle);
    QCOMPARE(selectTool()->handleIndex(), 5);
    w.release(QPointF(100, 80));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
}

void tst_SelectTool::twoOverlappingBodiesSelectTheOlderWithoutMenu()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    PopupCloser closer;
    closer.arm();
    ODRect1* older = addRect(w.active(), 30, 30, 90, 90);
    ODRect1* younger = addRect(w.active(), 50, 50, 120, 120);
    // Painted on top, yet the order of insertion decides.
    younger->setZValue(100);
    QCOMPARE(w.active()->GetShapeListAtPoint(QPointF(70, 70)).size(), 2);

    w.click(QPointF(70, 70));
    QVERIFY(selectTool()->currentShape() == older);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{older}));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(older->GetShapeID())});
    QApplication::processEvents();
    QVERIFY(!closer.seen);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QVERIFY(!selectTool()->shapeMenu() || !selectTool()->shapeMenu()->isVisible());
}

void tst_SelectTool::handleOfYoungerShapeOverOlderBodySelectsTheYounger()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* older = addRect(w.active(), 30, 30, 90, 90);
    ODRect1* younger = addRect(w.active(), 60, 60, 120, 120);
    Q_UNUSED(older);

    w.press(QPointF(60, 60));
    QVERIFY(selectTool()->currentShape() == younger);
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedHandle);
    QCOMPARE(selectTool()->handleIndex(), 1);
    w.release(QPointF(60, 60));
    QVERIFY(selectTool()->currentShape() == younger);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(younger->GetShapeID())});
}

void tst_SelectTool::activeLayerShapeWinsOverStaticLayerShape()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    // The static shape is the older one, but the active layer comes first.
    ODRect1* fixedShape = addRect(w.staticLayer(), 30, 30, 90, 90);
    ODRect1* activeShape = addRect(w.active(), 50, 50, 120, 120);
    Q_UNUSED(fixedShape);
    w.click(QPointF(70, 70));
    QVERIFY(selectTool()->currentShape() == activeShape);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(activeShape->GetShapeID())});
}

void tst_SelectTool::staticLayerShapeCanBeSelectedAndMoved()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* s = addRect(w.staticLayer(), 30, 30, 90, 90);
    const long id = s->GetShapeID();
    w.click(QPointF(60, 60));
    QVERIFY(selectTool()->currentShape() == s);
    QCOMPARE(w.staticLayer()->selectedShapes(), (QVector<ODShape*>{s}));
    QVERIFY(w.active()->selectedShapes().isEmpty());
    w.drag(QPointF(60, 60), QPointF(70, 65));
    QCOMPARE(paramsOf(s), (QVector<double>{40, 35, 100, 95}));
    QCOMPARE(log.shapeEvents(), (QStringList{clickedText(id), movedText(id)}));
}

void tst_SelectTool::pressOnTwoBodiesInADrawModeSelectsNothing()
{
    PictureWindow w;
    ODRect1* a = addRect(w.active(), 30, 30, 90, 90);
    ODRect1* b = addRect(w.active(), 50, 50, 120, 120);
    // a is shown selected, but no shape is the tool's current one.
    w.active()->addSelectedShape(a);
    a->ShowHandle();
    forgetCurrentShape();
    w.scene()->SetDrawMode(DM_RECT1);

    SceneMouse press(QEvent::GraphicsSceneMousePress, QPointF(70, 70));
    QCOMPARE(selectTool()->selectShape(w.scene(), press.get(), nullptr), 0);
    QVERIFY(selectTool()->currentShape() == nullptr);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());

    // The tool's press in the draw mode: nothing to drag either.
    w.active()->addSelectedShape(b);
    b->ShowHandle();
    forgetCurrentShape();
    selectTool()->mousePressEvent(w.scene(), press.get(), nullptr);
    QVERIFY(selectTool()->currentShape() == nullptr);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QVERIFY(b->rect1HandleItem()->handleMap().isEmpty());

    // The same point in select mode selects the older shape.
    w.scene()->SetDrawMode(DM_SELECT);
    QCOMPARE(selectTool()->selectShape(w.scene(), press.get(), nullptr), 1);
    QVERIFY(selectTool()->currentShape() == a);
}

void tst_SelectTool::pressOnOneBodyInADrawModeSelectsIt()
{
    PictureWindow w;
    ODRect1* a = addRect(w.active(), 30, 30, 90, 90);
    addRect(w.active(), 100, 100, 150, 140);
    w.scene()->SetDrawMode(DM_RECT1);
    SceneMouse press(QEvent::GraphicsSceneMousePress, QPointF(50, 50));
    QCOMPARE(selectTool()->selectShape(w.scene(), press.get(), nullptr), 1);
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(w.active()->selectedShapes(), (QVector<ODShape*>{a}));
    // With a current shape no new hit test is made, whatever lies there.
    SceneMouse elsewhere(QEvent::GraphicsSceneMousePress, QPointF(120, 120));
    QCOMPARE(selectTool()->selectShape(w.scene(), elsewhere.get(), nullptr), 1);
    QVERIFY(selectTool()->currentShape() == a);
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_SelectTool::nonSelectableShapeOnTopIsSkipped()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* refusing = addRect(w.active(), 30, 30, 90, 90);
    ODRect1* b = addRect(w.active(), 50, 50, 120, 120);
    refusing->setSelectble(false);
    w.click(QPointF(70, 70));
    QVERIFY(selectTool()->currentShape() == b);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(b->GetShapeID())});
}

void tst_SelectTool::onlyNonSelectableShapesGiveALeftClick()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODRect1* first = addRect(w.active(), 30, 30, 90, 90);
    ODRect1* second = addRect(w.staticLayer(), 40, 40, 100, 100);
    first->setSelectble(false);
    second->setSelectble(false);

    w.click(QPointF(60, 60));
    QVERIFY(selectTool()->currentShape() == nullptr);
    QVERIFY(log.shapeEvents().isEmpty());
    QCOMPARE(leftClicks.calls.size(), 1);
    QCOMPARE(leftClicks.calls.at(0).x, 60.0f);
    QCOMPARE(leftClicks.calls.at(0).y, 60.0f);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QVERIFY(w.staticLayer()->selectedShapes().isEmpty());
}

void tst_SelectTool::disabledSelectionOnActiveLayerGovernsAllLayers()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODRect1* a = addRect(w.active(), 20, 20, 60, 60);
    ODRect1* s = addRect(w.staticLayer(), 100, 20, 140, 60);
    w.active()->enableSelectShape(false);

    w.click(QPointF(40, 40));
    w.click(QPointF(120.5, 45.25));
    QVERIFY(selectTool()->currentShape() == nullptr);
    QVERIFY(log.shapeEvents().isEmpty());
    QCOMPARE(leftClicks.calls.size(), 2);
    const QPointF second = w.seen(QPointF(120.5, 45.25));
    QCOMPARE(leftClicks.calls.at(0).window, windowIdOf(w));
    QCOMPARE(leftClicks.calls.at(0).x, 40.0f);
    QCOMPARE(leftClicks.calls.at(0).y, 40.0f);
    QCOMPARE(leftClicks.calls.at(1).window, windowIdOf(w));
    QCOMPARE(leftClicks.calls.at(1).x, float(second.x()));
    QCOMPARE(leftClicks.calls.at(1).y, float(second.y()));
    QCOMPARE(w.relay()->eventKind(), int(EventThread::EV_MOUSE_LCLICK));
    QCOMPARE(w.relay()->mousePos(), QPointF(second.x(), second.y()));

    w.active()->enableSelectShape(true);
    w.click(QPointF(120, 40));
    QVERIFY(selectTool()->currentShape() == s);
    w.click(QPointF(40, 40));
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(leftClicks.calls.size(), 2);
}

void tst_SelectTool::disabledSelectionOnStaticLayerAloneChangesNothing()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* s = addRect(w.staticLayer(), 100, 20, 140, 60);
    w.staticLayer()->enableSelectShape(false);
    w.click(QPointF(120, 40));
    QVERIFY(selectTool()->currentShape() == s);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(s->GetShapeID())});
}

void tst_SelectTool::immovableShapeGivesAClickAndIsDropped_data()
{
    QTest::addColumn<bool>("layerRefuses");
    QTest::addColumn<QPointF>("grab");
    QTest::newRow("layer refuses, body") << true << QPointF(70, 60);
    QTest::newRow("layer refuses, handle") << true << QPointF(100, 80);
    QTest::newRow("shape refuses, body") << false << QPointF(70, 60);
    QTest::newRow("shape refuses, handle") << false << QPointF(100, 80);
}

void tst_SelectTool::immovableShapeGivesAClickAndIsDropped()
{
    QFETCH(bool, layerRefuses);
    QFETCH(QPointF, grab);
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();
    w.click(QPointF(55, 55));
    QVERIFY(selectTool()->currentShape() == a);
    log.entries.clear();
    if (layerRefuses)
        w.active()->enableMoveShape(false);
    else
        a->setMovable(false);

    w.press(grab);
    QCOMPARE(Kit::dragState(), ODSelectTool::ClickOnly);
    // No handle test and no body test for a shape that refuses moving.
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    w.move(grab + QPointF(15, 12));
    w.move(grab + QPointF(25, 20));
    QCOMPARE(Kit::dragState(), ODSelectTool::ClickOnly);
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
    // A layer that refuses moving hides the handles of the dragged shape.
    QCOMPARE(a->rect1HandleItem()->handleMap().isEmpty(), layerRefuses);
    w.release(grab + QPointF(25, 20));

    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QVERIFY(selectTool()->currentShape() == nullptr);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    QCOMPARE(paramsOf(a), (QVector<double>{40, 40, 100, 80}));
    QVERIFY(layerHasId(w.active(), id));
}

void tst_SelectTool::activeLayerFlagStopsTheDragOfAStaticShape()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* s = addRect(w.staticLayer(), 40, 40, 100, 80);
    const long id = s->GetShapeID();
    w.click(QPointF(55, 55));
    QVERIFY(selectTool()->currentShape() == s);
    log.entries.clear();
    w.active()->enableMoveShape(false);

    // The shape's own layer allows moving, so the press arms a body drag ...
    w.press(QPointF(70, 60));
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedBody);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectMoveBody);
    // ... but the moves obey the active layer: no move, handles hidden.
    w.move(QPointF(80, 70));
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedBody);
    QCOMPARE(paramsOf(s), (QVector<double>{40, 40, 100, 80}));
    QVERIFY(s->rect1HandleItem()->handleMap().isEmpty());
    w.release(QPointF(80, 70));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    QVERIFY(selectTool()->currentShape() == s);
}

void tst_SelectTool::rightButtonNeverReachesTheTool()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    const long id = a->GetShapeID();

    w.press(QPointF(70, 60));
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedBody);
    // A right click in the middle of the left press changes nothing for the tool.
    w.press(QPointF(150, 120), Qt::RightButton);
    w.release(QPointF(150, 120), Qt::RightButton);
    QCOMPARE(Kit::dragState(), ODSelectTool::PressedBody);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectMoveBody);
    QVERIFY(selectTool()->currentShape() == a);
    QVERIFY(log.shapeEvents().isEmpty());
    QVERIFY(leftClicks.calls.isEmpty());

    w.release(QPointF(70, 60));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});

    // On empty ground the right button neither drops the selection nor reports a click.
    w.click(QPointF(150, 120), Qt::RightButton);
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QVERIFY(leftClicks.calls.isEmpty());
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
}

void tst_SelectTool::leftClickOnEmptyGroundIsReportedAndDropsTheSelection()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    LeftClicks leftClicks;
    leftClicks.attach(w.relay());
    ODRect1* a = addRect(w.active(), 40, 40, 100, 80);
    w.click(QPointF(70, 60));
    log.entries.clear();

    w.press(QPointF(150, 120));
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(a->rect1HandleItem()->handleMap().size(), 8);
    QVERIFY(leftClicks.calls.isEmpty());
    w.release(QPointF(150, 120));

    QVERIFY(selectTool()->currentShape() == nullptr);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QVERIFY(a->rect1HandleItem()->handleMap().isEmpty());
    QVERIFY(log.shapeEvents().isEmpty());
    QCOMPARE(leftClicks.calls.size(), 1);
    QCOMPARE(leftClicks.calls.at(0).window, windowIdOf(w));
    QCOMPARE(leftClicks.calls.at(0).x, 150.0f);
    QCOMPARE(leftClicks.calls.at(0).y, 120.0f);
    // The view reports the release as well.
    QCOMPARE(log.entries, QStringList{QString("mouseClicked 150,120")});

    // Outside the picture too: positions are not clamped.
    w.click(QPointF(-20, 170));
    QCOMPARE(leftClicks.calls.size(), 2);
    QCOMPARE(leftClicks.calls.at(1).x, -20.0f);
    QCOMPARE(leftClicks.calls.at(1).y, 170.0f);
}

void tst_SelectTool::mouseLimitEndsWithAClickOrANewShapeOnly()
{
    PictureWindow w;
    ImageCtrlView* view = w.view();
    QSignalSpy changed(view, &ImageCtrlView::limitMouseChanged);

    view->setLimitMousePos(true);
    w.scene()->SetDrawMode(DM_RECT1);
    w.drag(QPointF(20, 20), QPointF(60, 50));
    QCOMPARE(view->limitMousePos(), false);
    QCOMPARE(changed.count(), 2);
    ODRect1* drawn = static_cast<ODRect1*>(w.active()->shapes().last());

    // A body drag and a handle drag leave the flag alone.
    view->setLimitMousePos(true);
    w.drag(QPointF(40, 35), QPointF(45, 40));
    QCOMPARE(view->limitMousePos(), true);
    QCOMPARE(paramsOf(drawn), (QVector<double>{25, 25, 65, 55}));
    w.drag(QPointF(65, 55), QPointF(70, 60));
    QCOMPARE(view->limitMousePos(), true);
    QCOMPARE(paramsOf(drawn), (QVector<double>{25, 25, 70, 60}));
    // A click on empty ground too.
    w.click(QPointF(150, 120));
    QCOMPARE(view->limitMousePos(), true);
    QCOMPARE(changed.count(), 3);

    // A click on a shape ends it.
    w.click(QPointF(40, 40));
    QCOMPARE(view->limitMousePos(), false);
    QCOMPARE(changed.count(), 4);
}

void tst_SelectTool::selectedRectangleShowsItsHandles()
{
    PictureWindow w(2.0);
    w.scene()->setPenColor(QColor(255, 0, 0, 255));
    w.scene()->SetDrawMode(DM_RECT1);
    w.drag(QPointF(20, 20), QPointF(70, 50));
    ODRect1* shape = static_cast<ODRect1*>(w.active()->shapes().last());
    QVERIFY(selectTool()->currentShape() == shape);
    QCOMPARE(shape->rect1HandleItem()->handleMap().size(), 8);
    QApplication::processEvents();
    w.view()->viewport()->repaint();

    CMainWindow* window = w.window();
    const QImage shot = window->grab().toImage().convertToFormat(QImage::Format_ARGB32);

    auto at = [&](const QPointF& scenePoint) {
        return w.view()->viewport()->mapTo(window, w.view()->mapFromScene(scenePoint));
    };
    const QRgb blue = qRgb(0, 0, 255);
    const QRgb red = qRgb(255, 0, 0);
    const QRgb picture = qRgb(60, 60, 60);
    const QPointF handles[] = {{20, 20}, {45, 20}, {70, 20}, {70, 35}, {70, 50}, {45, 50}, {20, 50}, {20, 35}};
    for (const QPointF& h : handles) {
        const QPoint c = at(h);
        QVERIFY2(shot.pixel(c) == blue, qPrintable(QString("handle at %1,%2").arg(h.x()).arg(h.y())));
        // A square of 6 device pixels, whatever the zoom: blue just inside, not beyond.
        QCOMPARE(shot.pixel(c + QPoint(-3, -3)), blue);
        QCOMPARE(shot.pixel(c + QPoint(2, 2)), blue);
        QVERIFY(shot.pixel(c + QPoint(4, 4)) != blue);
        QVERIFY(shot.pixel(c + QPoint(-5, 0)) != blue);
    }
    // The outline in the pen colour between the handles, the picture inside
    // through the transparent brush and outside.
    QCOMPARE(shot.pixel(at(QPointF(32.5, 20))), red);
    QCOMPARE(shot.pixel(at(QPointF(70, 27.5))), red);
    QCOMPARE(shot.pixel(at(QPointF(45, 35))), picture);
    QCOMPARE(shot.pixel(at(QPointF(90, 35))), picture);
}

void tst_SelectTool::shapeMenuListsShapesWithTheirIcons()
{
    ImageCtrlScene scene;
    scene.CreateLayers();
    const QList<DrawMode> modes = {DM_POINT,   DM_LINE,    DM_RECT1,    DM_RECT2,       DM_ELLIPSE,     DM_CIRCLE,
                                   DM_POLYGON, DM_ANYLINE, DM_ANNULAR, DM_ARC,         DM_ARROWLINE,   DM_ANYCLOSELINE};
    const QStringList paths = {":/res/point.bmp",   ":/res/line.bmp",    ":/res/rectangle.bmp", ":/res/rectangle2.bmp",
                               ":/res/Oval.bmp",    ":/res/Circle.bmp",  ":/res/polygon.bmp",   ":/res/anyshape.bmp",
                               ":/res/Bicyclic.bmp", QString(),          QString(),             QString()};
    QList<ODShape*> shapes;
    for (DrawMode mode : modes) {
        ODRect1* shape = addRect(scene.GetActiveLayer(), 0, 0, 10, 10);
        shape->setDrawMode(mode);
        shapes << shape;
    }

    PopupCloser closer;
    closer.arm();
    QVERIFY(QMetaObject::invokeMethod(selectTool(), "createShapeMenu", Qt::DirectConnection,
                                      Q_ARG(QList<ODShape*>, shapes)));
    QVERIFY(closer.seen);
    QVERIFY(closer.menu == selectTool()->shapeMenu());
    QVERIFY(closer.menu->parent() == nullptr);
    QCOMPARE(closer.texts.size(), shapes.size());
    for (int i = 0; i < shapes.size(); ++i) {
        QCOMPARE(closer.texts.at(i), QString("shape_%1").arg(i + 1));
        QCOMPARE(closer.data.at(i), qlonglong(reinterpret_cast<quintptr>(shapes.at(i))));
        if (paths.at(i).isEmpty()) {
            QVERIFY2(closer.iconNull.at(i), qPrintable(closer.texts.at(i)));
        } else {
            QVERIFY2(QFile::exists(paths.at(i)), qPrintable(paths.at(i)));
            QVERIFY(!closer.iconNull.at(i));
            QCOMPARE(closer.icons.at(i), iconImage(paths.at(i)));
        }
    }
    // The icons tell the kinds apart.
    QVERIFY(closer.icons.at(0) != closer.icons.at(2));
    QVERIFY(closer.icons.at(2) != closer.icons.at(3));
    // Choosing nothing changes nothing.
    QVERIFY(selectTool()->currentShape() == nullptr);
}

void tst_SelectTool::shapeMenuIsMadeOnceAndRefilled()
{
    ImageCtrlScene scene;
    scene.CreateLayers();
    ODRect1* a = addRect(scene.GetActiveLayer(), 0, 0, 10, 10);
    ODRect1* b = addRect(scene.GetActiveLayer(), 0, 0, 20, 20);

    PopupCloser first;
    first.arm();
    QVERIFY(QMetaObject::invokeMethod(selectTool(), "createShapeMenu", Qt::DirectConnection,
                                      Q_ARG(QList<ODShape*>, (QList<ODShape*>{a, b}))));
    QMenu* menu = selectTool()->shapeMenu();
    QVERIFY(menu);
    QCOMPARE(first.texts, (QStringList{"shape_1", "shape_2"}));

    PopupCloser second;
    second.arm();
    QVERIFY(QMetaObject::invokeMethod(selectTool(), "createShapeMenu", Qt::DirectConnection,
                                      Q_ARG(QList<ODShape*>, (QList<ODShape*>{b}))));
    QVERIFY(selectTool()->shapeMenu() == menu);
    QCOMPARE(second.texts, QStringList{"shape_1"});
    QCOMPARE(second.data, QList<qlonglong>{qlonglong(reinterpret_cast<quintptr>(b))});
    QCOMPARE(menu->actions().size(), 1);
}

void tst_SelectTool::menuActionMakesItsShapeCurrent()
{
    ImageCtrlScene scene;
    scene.CreateLayers();
    ODRect1* a = addRect(scene.GetActiveLayer(), 0, 0, 10, 10);
    ODRect1* b = addRect(scene.GetActiveLayer(), 0, 0, 20, 20);

    PopupCloser closer;
    closer.arm();
    QVERIFY(QMetaObject::invokeMethod(selectTool(), "createShapeMenu", Qt::DirectConnection,
                                      Q_ARG(QList<ODShape*>, (QList<ODShape*>{a, b}))));
    QMenu* menu = selectTool()->shapeMenu();
    QCOMPARE(menu->actions().size(), 2);

    menu->actions().at(1)->trigger();
    QVERIFY(selectTool()->currentShape() == b);
    // Only the current shape: no selected list, no handles.
    QVERIFY(scene.GetActiveLayer()->selectedShapes().isEmpty());
    QVERIFY(b->rect1HandleItem()->handleMap().isEmpty());
    menu->actions().at(0)->trigger();
    QVERIFY(selectTool()->currentShape() == a);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
}

QTEST_MAIN(tst_SelectTool)
#include "tst_selecttool.moc"
