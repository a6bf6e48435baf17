// The tools are objects of the process and outlive every window. A window torn
// down before, during or after a gesture must leave no pointer into it behind:
// the next window, or another window that stays, works as if the first had
// never been.

#include "testkit.h"

#include "odannular.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odline.h"
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

// The polygon's corners: kFrom, kTo and this one.
const QPointF kThirdCorner(40, 70);

// Draws a polygon through kFrom, kTo and kThirdCorner, cut off at moment: the
// first corner's tick is mid-gesture, the double click ends it.
void polygonGesture(PictureWindow& w, Moment moment)
{
    clickCorner(w.view(), kFrom);
    if (moment == Moment::MidGesture) {
        // The second corner's press, whose tick is still to come.
        moveTo(w.view(), kTo);
        w.press(kTo);
        return;
    }
    clickCorner(w.view(), kTo);
    doubleClickCorner(w.view(), kThirdCorner);
}

// The operator's gesture with the tool of mode, cut off at moment: a drawing
// mode draws from kFrom to kTo (a polygon clicks its corners); the select mode
// drags the body of a rectangle that was drawn before.
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
    if (mode == DM_POLYGON) {
        polygonGesture(w, moment);
        return;
    }
    const QPointF start = mode == DM_SELECT ? (kFrom + kTo) / 2 : kFrom;
    w.press(start);
    w.move(start + QPointF(12, 9));
    if (moment == Moment::MidGesture)
        return;
    w.release(start + QPointF(12, 9));
    // A second click leaves the shape current with its handles on show.
    w.click(start + QPointF(12, 9));
}

ODShape* shapeOf(ShaperLayer* layer, long id)
{
    for (ODShape* shape : layer->shapes()) {
        if (shape && shape->GetShapeID() == id)
            return shape;
    }
    return nullptr;
}

// Draws a shape with the tool of mode in w, from kFrom to kTo, and returns the
// id the host heard; a rectangle for the select mode.
long drawWith(PictureWindow& w, DrawMode mode)
{
    HostLog log(w.wnd.get());
    w.window()->SelectDrawROIMode(mode == DM_SELECT ? DM_RECT1 : mode);
    if (mode == DM_POLYGON) {
        clickCorner(w.view(), kFrom);
        clickCorner(w.view(), kTo);
        doubleClickCorner(w.view(), kThirdCorner);
    } else if (mode == DM_POINT) {
        // The point goes where the release is: kFrom, away from kTo, where a
        // release in a point mode may have left one before.
        w.click(kFrom);
    } else if (mode == DM_ARC) {
        // A new arc's handles are out of reach of the press on its centre: it
        // keeps its first radius, and the host hears nothing of it.
        const long id = ODShape::s_ID;
        w.drag(kFrom, kTo);
        return shapeOf(w.active(), id) ? id : -1;
    } else {
        w.drag(kFrom, kTo);
    }
    if (log.shapeEvents().isEmpty() || !log.shapeEvents().first().startsWith("clicked "))
        return -1;
    return log.shapeEvents().first().mid(QString("clicked ").size()).toLong();
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
        {"select", DM_SELECT},        {"point", DM_POINT},         {"line", DM_LINE},
        {"rectangle", DM_RECT1},      {"rotated rectangle", DM_RECT2}, {"ellipse", DM_ELLIPSE},
        {"circle", DM_CIRCLE},        {"polygon", DM_POLYGON},     {"free line", DM_ANYLINE},
        {"annulus", DM_ANNULAR},      {"arc", DM_ARC},             {"arrow line", DM_ARROWLINE},
        {"closed free line", DM_ANYCLOSELINE}};
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
    QCOMPARE(pointTool()->shape(), nullptr);
    QCOMPARE(drawToolOf<ODLine>(DM_LINE)->shape(), nullptr);
    QCOMPARE(drawToolOf<ODRect1>(DM_RECT1)->shape(), nullptr);
    QCOMPARE(drawToolOf<ODRect2>(DM_RECT2)->shape(), nullptr);
    QCOMPARE(drawToolOf<ODEllipse>(DM_ELLIPSE)->shape(), nullptr);
    QCOMPARE(drawToolOf<ODCircle>(DM_CIRCLE)->shape(), nullptr);
    QCOMPARE(polygonTool()->shape(), nullptr);
    QCOMPARE(polygonTool()->lastScene(), nullptr);
    QCOMPARE(anyLineTool()->shape(), nullptr);
    QCOMPARE(drawToolOf<ODAnnular>(DM_ANNULAR)->shape(), nullptr);
    QCOMPARE(drawToolOf<ODARC>(DM_ARC)->shape(), nullptr);
    QCOMPARE(drawToolOf<ODArrowLine>(DM_ARROWLINE)->shape(), nullptr);
    QCOMPARE(anyCloseLineTool()->shape(), nullptr);
}

// A point on the body of the shape drawWith makes in mode, where a click
// selects it and a drag moves it.
QPointF bodyPointOf(DrawMode mode)
{
    switch (mode) {
    case DM_POINT:
        // A point is grabbed by its handle, on the release position.
        return kFrom;
    case DM_ARC:
        // The handle at the start of the arc, 5 units right of its centre:
        // the arc's own body is a sliver too thin for a click.
        return kFrom + QPointF(5, 0);
    default:
        return (kFrom + kTo) / 2;
    }
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
    const QPointF body = bodyPointOf(mode);
    w.click(body);
    QCOMPARE(selectTool()->currentShape(), shape);
    w.drag(body, body + QPointF(5, 4));
    // The arc is dragged by its handle, which resizes it; a point's handle
    // moves it.
    const QString dragged = mode == DM_ARC ? resizedText(id) : movedText(id);
    QCOMPARE(log.shapeEvents(), QStringList({clickedText(id), dragged}));
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
    // The gesture's next move and release reach the new window first; the
    // polygon mode lasts past a release, and its double click ends it.
    if (mode != DM_SELECT)
        next.window()->SelectDrawROIMode(DrawMode(mode));
    next.move(kTo, Qt::LeftButton);
    next.release(kTo);
    // Any release in a point mode makes a point.
    if (mode == DM_POINT)
        QCOMPARE(next.active()->shapes().size(), 1);
    if (mode == DM_POLYGON) {
        letQueuedCallsRun();
        QCOMPARE(next.scene()->GetDrawMode(), DM_POLYGON);
        polygonTool()->ResetObject();
        next.scene()->SetDrawMode(DM_SELECT);
    }
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
