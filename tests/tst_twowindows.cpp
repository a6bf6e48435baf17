// Two windows in one process share the tool objects: the select tool's current
// shape may belong to the other window, and each press must work on the scene
// it comes from.

#include "testkit.h"

#include "Rect1HandleItem.h"

#include <QSignalSpy>
#include <QTest>

using namespace Kit;

class tst_TwoWindows : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bothWindowsUseTheSameToolObjects();
    void pressInOtherWindowDoesNotDragTheCurrentShape();
    void clickOnShapeInOtherWindowSelectsItThere();
    void dragInFirstWindowAfterSelectionInSecondMovesNothing();
    void drawingInOneWindowLeavesTheOtherAlone();
    void eventsGoToTheWindowOfTheGesture();
};

void tst_TwoWindows::init()
{
    forgetCurrentShape();
}

void tst_TwoWindows::cleanup()
{
    forgetCurrentShape();
}

void tst_TwoWindows::bothWindowsUseTheSameToolObjects()
{
    PictureWindow a;
    PictureWindow b;
    QVERIFY(a.scene() != b.scene());
    ODRect1* sa = addRect(a.active(), 20, 20, 80, 60);
    a.click(QPointF(50, 40));
    // The current shape is a property of the process, not of a window.
    QVERIFY(selectTool()->currentShape() == sa);
    QVERIFY(sa->getSence() == a.scene());
}

void tst_TwoWindows::pressInOtherWindowDoesNotDragTheCurrentShape()
{
    PictureWindow a;
    PictureWindow b;
    HostLog logA(a.wnd.get());
    HostLog logB(b.wnd.get());
    LeftClicks clicksA;
    LeftClicks clicksB;
    clicksA.attach(a.relay());
    clicksB.attach(b.relay());
    ODRect1* sa = addRect(a.active(), 20, 20, 80, 60);
    a.click(QPointF(50, 40));
    QVERIFY(selectTool()->currentShape() == sa);
    const QPointF curBefore = selectTool()->curPoint();
    logA.entries.clear();

    // In the other window, at a point that lies on the body of sa in its
    // own scene coordinates, then a drag.
    b.press(QPointF(60, 45));
    QVERIFY(selectTool()->currentShape() == sa);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    QCOMPARE(Kit::selectMode(), ODSelectTool::SelectNone);
    // The tool's own press did not run for the foreign shape.
    QCOMPARE(selectTool()->curPoint(), curBefore);
    b.move(QPointF(70, 60));
    b.move(QPointF(90, 80));
    QCOMPARE(paramsOf(sa), (QVector<double>{20, 20, 80, 60}));
    QCOMPARE(sa->rectItem()->rect(), QRectF(20, 20, 60, 40));
    b.release(QPointF(90, 80));

    QCOMPARE(paramsOf(sa), (QVector<double>{20, 20, 80, 60}));
    QVERIFY(logA.shapeEvents().isEmpty());
    QVERIFY(logB.shapeEvents().isEmpty());
    QVERIFY(clicksA.calls.isEmpty());
    // Nothing under the release in the second window: its own left click,
    // and the current shape is dropped.
    QCOMPARE(clicksB.calls.size(), 1);
    QCOMPARE(clicksB.calls.at(0).window, reinterpret_cast<long long>(b.window()));
    QCOMPARE(clicksB.calls.at(0).x, 90.0f);
    QVERIFY(selectTool()->currentShape() == nullptr);
    // The first window's layer still shows sa selected: only the second
    // window's layers were cleared.
    QCOMPARE(a.active()->selectedShapes(), (QVector<ODShape*>{sa}));
    QCOMPARE(sa->rect1HandleItem()->handleMap().size(), 8);
    QVERIFY(b.active()->selectedShapes().isEmpty());
}

void tst_TwoWindows::clickOnShapeInOtherWindowSelectsItThere()
{
    PictureWindow a;
    PictureWindow b;
    HostLog logA(a.wnd.get());
    HostLog logB(b.wnd.get());
    ODRect1* sa = addRect(a.active(), 20, 20, 80, 60);
    ODRect1* sb = addRect(b.active(), 30, 30, 90, 70);
    a.click(QPointF(50, 40));
    logA.entries.clear();

    b.press(QPointF(50, 40));
    QVERIFY(selectTool()->currentShape() == sa);
    b.release(QPointF(50, 40));
    QVERIFY(selectTool()->currentShape() == sb);
    QCOMPARE(logB.shapeEvents(), QStringList{clickedText(sb->GetShapeID())});
    QVERIFY(logA.shapeEvents().isEmpty());
    QCOMPARE(b.active()->selectedShapes(), (QVector<ODShape*>{sb}));
    // The press in the second window armed nothing, so the new selection
    // shows no handles yet; the first window keeps its own list.
    QVERIFY(sb->rect1HandleItem()->handleMap().isEmpty());
    QCOMPARE(a.active()->selectedShapes(), (QVector<ODShape*>{sa}));
    QCOMPARE(sa->rect1HandleItem()->handleMap().size(), 8);

    b.click(QPointF(50, 40));
    QCOMPARE(sb->rect1HandleItem()->handleMap().size(), 8);
    QCOMPARE(logB.shapeEvents().size(), 2);
    QVERIFY(logA.shapeEvents().isEmpty());
}

void tst_TwoWindows::dragInFirstWindowAfterSelectionInSecondMovesNothing()
{
    PictureWindow a;
    PictureWindow b;
    HostLog logA(a.wnd.get());
    HostLog logB(b.wnd.get());
    ODRect1* sa = addRect(a.active(), 20, 20, 80, 60);
    ODRect1* sb = addRect(b.active(), 20, 20, 80, 60);
    b.click(QPointF(50, 40));
    QVERIFY(selectTool()->currentShape() == sb);
    logB.entries.clear();

    // The press lies on sa in the first window; the current shape is sb.
    a.press(QPointF(50, 40));
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
    a.move(QPointF(60, 50));
    QCOMPARE(paramsOf(sa), (QVector<double>{20, 20, 80, 60}));
    QCOMPARE(paramsOf(sb), (QVector<double>{20, 20, 80, 60}));
    a.release(QPointF(60, 50));
    // The release selects anew in the first window.
    QVERIFY(selectTool()->currentShape() == sa);
    QCOMPARE(logA.shapeEvents(), QStringList{clickedText(sa->GetShapeID())});
    QVERIFY(logB.shapeEvents().isEmpty());
    QCOMPARE(paramsOf(sb), (QVector<double>{20, 20, 80, 60}));

    // Now sa is current: the next drag in the first window moves it.
    a.drag(QPointF(50, 40), QPointF(55, 45));
    QCOMPARE(paramsOf(sa), (QVector<double>{25, 25, 85, 65}));
    QCOMPARE(paramsOf(sb), (QVector<double>{20, 20, 80, 60}));
    QCOMPARE(logA.shapeEvents(), (QStringList{clickedText(sa->GetShapeID()), movedText(sa->GetShapeID())}));
}

void tst_TwoWindows::drawingInOneWindowLeavesTheOtherAlone()
{
    PictureWindow a;
    PictureWindow b;
    HostLog logA(a.wnd.get());
    HostLog logB(b.wnd.get());
    ODRect1* sa = addRect(a.active(), 20, 20, 80, 60);
    a.click(QPointF(50, 40));
    logA.entries.clear();

    b.scene()->SetDrawMode(DM_RECT1);
    QCOMPARE(a.scene()->GetDrawMode(), DM_SELECT);
    const long id = ODShape::s_ID;
    b.drag(QPointF(50, 40), QPointF(100, 90));
    QCOMPARE(b.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(layerHasId(b.active(), id));
    QCOMPARE(a.active()->shapes(), (QVector<ODShape*>{sa}));
    QCOMPARE(paramsOf(sa), (QVector<double>{20, 20, 80, 60}));
    QCOMPARE(logB.shapeEvents(), QStringList{clickedText(id)});
    QVERIFY(logA.shapeEvents().isEmpty());
    QVERIFY(selectTool()->currentShape()->getSence() == b.scene());

    // The draw mode belongs to the scene: the first window stays in select mode.
    a.scene()->SetDrawMode(DM_RECT1);
    QCOMPARE(b.scene()->GetDrawMode(), DM_SELECT);
    a.scene()->SetDrawMode(DM_SELECT);
}

void tst_TwoWindows::eventsGoToTheWindowOfTheGesture()
{
    PictureWindow a;
    PictureWindow b;
    QSignalSpy movedA(a.wnd.get(), &KESImageWnd::shapeMoved);
    QSignalSpy movedB(b.wnd.get(), &KESImageWnd::shapeMoved);
    QSignalSpy resizedA(a.wnd.get(), &KESImageWnd::shapeResized);
    QSignalSpy resizedB(b.wnd.get(), &KESImageWnd::shapeResized);
    ODRect1* sa = addRect(a.active(), 20, 20, 80, 60);
    ODRect1* sb = addRect(b.active(), 100, 20, 150, 60);

    a.drag(QPointF(50, 40), QPointF(52, 43));
    // The first press in the second window meets a current shape of the first.
    b.click(QPointF(120, 40));
    QCOMPARE(movedB.count(), 0);
    QVERIFY(selectTool()->currentShape() == sb);
    b.drag(QPointF(120, 40), QPointF(125, 41));
    b.drag(QPointF(155, 61), QPointF(160, 70));
    QCOMPARE(movedA.count(), 1);
    QCOMPARE(movedA.at(0).at(0).value<long>(), sa->GetShapeID());
    QCOMPARE(movedB.count(), 1);
    QCOMPARE(movedB.at(0).at(0).value<long>(), sb->GetShapeID());
    QCOMPARE(resizedA.count(), 0);
    QCOMPARE(resizedB.count(), 1);
    QCOMPARE(resizedB.at(0).at(0).value<long>(), sb->GetShapeID());
    QCOMPARE(paramsOf(sa), (QVector<double>{22, 23, 82, 63}));
    QCOMPARE(paramsOf(sb), (QVector<double>{105, 21, 160, 70}));
}

QTEST_MAIN(tst_TwoWindows)
#include "tst_twowindows.moc"
