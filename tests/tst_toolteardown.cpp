// The tools are objects of the process and outlive every window. A window torn
// down before, during or after a gesture must leave no pointer into it behind:
// the next window, or another window that stays, works as if the first had
// never been.

#include "testkit.h"

#include "odellipse.h"
#include "odrect2.h"

#include <QTest>

#include <memory>

using namespace Kit;

namespace {

// When the first window goes, measured against the operator's gesture there.
enum class Moment { BeforeGesture, MidGesture, AfterGesture };

const QPointF kFrom(40, 30);
const QPointF kTo(90, 70);
const QPointF kEmptyGround(150, 120);

// The operator's gesture with the tool of mode, cut off at moment: a drawing
// mode draws from kFrom to kTo; the select mode drags the body of a rectangle
// that was drawn before.
void gesture(PictureWindow& w, DrawMode mode, Moment moment)
{
    if (mode == DM_SELECT) {
        addRect(w.active(), kFrom.x(), kFrom.y(), kTo.x(), kTo.y());
        w.scene()->SetDrawMode(DM_SELECT);
    } else {
        w.window()->SelectDrawROIMode(mode);
    }
    if (moment == Moment::BeforeGesture)
        return;
    const QPointF start = mode == DM_SELECT ? (kFrom + kTo) / 2 : kFrom;
    w.press(start);
    w.move(start + QPointF(12, 9));
    if (moment == Moment::MidGesture)
        return;
    w.release(start + QPointF(12, 9));
    // A second click leaves the shape current with its handles on show.
    w.click(start + QPointF(12, 9));
}

// Draws a shape with the tool of mode in w, from kFrom to kTo, and returns the
// id the host heard; a rectangle for the select mode.
long drawWith(PictureWindow& w, DrawMode mode)
{
    HostLog log(w.wnd.get());
    w.window()->SelectDrawROIMode(mode == DM_SELECT ? DM_RECT1 : mode);
    w.drag(kFrom, kTo);
    if (log.shapeEvents().size() != 1 || !log.shapeEvents().first().startsWith("clicked "))
        return -1;
    return log.shapeEvents().first().mid(QString("clicked ").size()).toLong();
}

ODShape* shapeOf(ShaperLayer* layer, long id)
{
    for (ODShape* shape : layer->shapes()) {
        if (shape && shape->GetShapeID() == id)
            return shape;
    }
    return nullptr;
}

} // namespace

class TestToolTeardown : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nextWindowWorksAfterTeardown_data();
    void nextWindowWorksAfterTeardown();
    void otherWindowKeepsWorkingAfterTeardown_data();
    void otherWindowKeepsWorkingAfterTeardown();
    void recreatedFacadeWorksAfterTeardown_data();
    void recreatedFacadeWorksAfterTeardown();
    void currentShapeOfLivingWindowStaysAcrossWindows();
    void staticLayerShapeIsForgottenWithItsScene();
    void shapeRemovedFromLayerIsForgotten();
};

void TestToolTeardown::init()
{
    forgetCurrentShape();
}

void TestToolTeardown::cleanup()
{
    forgetCurrentShape();
}

namespace {

void addRows()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("moment");
    const QList<QPair<const char*, DrawMode>> modes = {
        {"select", DM_SELECT}, {"rectangle", DM_RECT1}, {"rotated rectangle", DM_RECT2}, {"ellipse", DM_ELLIPSE}};
    const QList<QPair<const char*, Moment>> moments = {{"before the gesture", Moment::BeforeGesture},
                                                       {"mid-gesture", Moment::MidGesture},
                                                       {"after the gesture", Moment::AfterGesture}};
    for (const auto& mode : modes) {
        for (const auto& moment : moments) {
            QTest::newRow(qPrintable(QString("%1 tool, torn down %2").arg(mode.first, moment.first)))
                << int(mode.second) << int(moment.second);
        }
    }
}

// What every tool must hold once the window of its shape is gone.
void verifyToolsHoldNothing()
{
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QCOMPARE(selectTool()->dragState(), int(ODSelectTool::DragNothing));
    QCOMPARE(static_cast<ODDrawTool<ODRect1>*>(tools()->GetShapeTool(DM_RECT1))->shape(), nullptr);
    QCOMPARE(static_cast<ODDrawTool<ODRect2>*>(tools()->GetShapeTool(DM_RECT2))->shape(), nullptr);
    QCOMPARE(static_cast<ODDrawTool<ODEllipse>*>(tools()->GetShapeTool(DM_ELLIPSE))->shape(), nullptr);
}

// The operator's first actions in a window after another went: a press on
// empty ground is a plain left click, and the tool then draws, selects and
// moves a shape there.
void verifyWindowWorks(PictureWindow& w, DrawMode mode)
{
    HostLog log(w.wnd.get());
    w.move(kEmptyGround, Qt::NoButton);
    w.click(kEmptyGround);
    QCOMPARE(log.shapeEvents(), QStringList());
    QCOMPARE(log.entries.filter("mouseClicked").size(), 1);

    const long id = drawWith(w, mode);
    QVERIFY(id >= 0);
    ODShape* shape = shapeOf(w.active(), id);
    QVERIFY(shape);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);

    log.entries.clear();
    const QPointF body = (kFrom + kTo) / 2;
    w.click(body);
    QCOMPARE(selectTool()->currentShape(), shape);
    w.drag(body, body + QPointF(5, 4));
    QCOMPARE(log.shapeEvents(), QStringList({clickedText(id), movedText(id)}));
}

} // namespace

void TestToolTeardown::nextWindowWorksAfterTeardown_data()
{
    addRows();
}

void TestToolTeardown::nextWindowWorksAfterTeardown()
{
    QFETCH(int, mode);
    QFETCH(int, moment);
    {
        PictureWindow first;
        gesture(first, DrawMode(mode), Moment(moment));
    }
    verifyToolsHoldNothing();

    PictureWindow next;
    // The gesture's next move and release reach the new window first.
    if (mode != DM_SELECT)
        next.window()->SelectDrawROIMode(DrawMode(mode));
    next.move(kTo, Qt::LeftButton);
    next.release(kTo);
    QCOMPARE(next.scene()->GetDrawMode(), DM_SELECT);
    verifyWindowWorks(next, DrawMode(mode));
}

void TestToolTeardown::otherWindowKeepsWorkingAfterTeardown_data()
{
    addRows();
}

void TestToolTeardown::otherWindowKeepsWorkingAfterTeardown()
{
    QFETCH(int, mode);
    QFETCH(int, moment);
    PictureWindow stays;
    auto goes = std::make_unique<PictureWindow>();
    gesture(*goes, DrawMode(mode), Moment(moment));
    goes.reset();
    verifyToolsHoldNothing();
    verifyWindowWorks(stays, DrawMode(mode));
}

void TestToolTeardown::recreatedFacadeWorksAfterTeardown_data()
{
    addRows();
}

void TestToolTeardown::recreatedFacadeWorksAfterTeardown()
{
    QFETCH(int, mode);
    QFETCH(int, moment);
    PictureWindow w;
    gesture(w, DrawMode(mode), Moment(moment));
    QCOMPARE(w.wnd->destory(), 0L);
    verifyToolsHoldNothing();

    QCOMPARE(w.wnd->create(reinterpret_cast<qlonglong>(w.host.get())), 0L);
    QVERIFY(QTest::qWaitForWindowExposed(w.host.get()));
    w.wnd->setBackground(w.image);
    w.setZoom(1.0);
    verifyWindowWorks(w, DrawMode(mode));
}

// Two living windows still share the select tool as they always have: a
// press in the other window leaves the current shape as it is, and the release
// there, having found nothing under the mouse, drops it. Only then does the
// other window's own shape become current.
void TestToolTeardown::currentShapeOfLivingWindowStaysAcrossWindows()
{
    PictureWindow a;
    PictureWindow b;
    ODRect1* inA = addRect(a.active(), 10, 10, 60, 50);
    a.click(QPointF(30, 30));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(inA));

    HostLog logB(b.wnd.get());
    b.press(kEmptyGround);
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(inA));
    b.release(kEmptyGround);
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QCOMPARE(logB.entries.filter("mouseClicked").size(), 1);

    ODRect1* inB = addRect(b.active(), 10, 10, 60, 50);
    b.click(QPointF(30, 30));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(inB));
    QCOMPARE(logB.shapeEvents(), QStringList({clickedText(inB->GetShapeID())}));
}

// Shapes of the static layer are never freed with their scene, yet their items
// go with it: the tools forget them when the scene goes.
void TestToolTeardown::staticLayerShapeIsForgottenWithItsScene()
{
    {
        // A bare window: the static layer and its shape must outlive the scene.
        EmbeddedWindow first;
        VorImage picture(cv::Mat(150, 200, CV_8UC1, cv::Scalar(60)));
        first.wnd->setBackground(picture);
        first.view()->Zoom(1.0);
        first.view()->horizontalScrollBar()->setValue(0);
        first.view()->verticalScrollBar()->setValue(0);
        ODRect1* onStatic = addRect(first.scene()->GetStaticActiveLayer(), 10, 10, 60, 50);
        pressAt(first.view(), QPointF(30, 30));
        releaseAt(first.view(), QPointF(30, 30));
        QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(onStatic));
        QCOMPARE(first.wnd->destory(), 0L);
        QCOMPARE(selectTool()->currentShape(), nullptr);
    }
    PictureWindow next;
    verifyWindowWorks(next, DM_RECT1);
}

void TestToolTeardown::shapeRemovedFromLayerIsForgotten()
{
    PictureWindow w;
    ODRect1* shape = addRect(w.active(), 10, 10, 60, 50);
    w.click(QPointF(30, 30));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(shape));
    w.active()->clearSelectedShape();
    QVERIFY(w.active()->removeShape(shape));
    QCOMPARE(selectTool()->currentShape(), nullptr);

    HostLog log(w.wnd.get());
    w.click(QPointF(30, 30));
    QCOMPARE(log.shapeEvents(), QStringList());
    QCOMPARE(log.entries.filter("mouseClicked").size(), 1);
}

QTEST_MAIN(TestToolTeardown)
#include "tst_toolteardown.moc"
