// Making a point with the mouse: the press and the moves belong to the select
// tool, and the release makes a point where it happens, shows it selected and
// tells the host, whatever lies under it.

#include "testkit.h"

#include "odpoint.h"

#include <QSignalSpy>
#include <QTest>

using namespace Kit;

namespace {

ODPoint* lastPoint(ShaperLayer* layer)
{
    if (layer->shapes().isEmpty() || layer->shapes().last()->GetDrawMode() != DM_POINT)
        return nullptr;
    return static_cast<ODPoint*>(layer->shapes().last());
}

QPointF paramsPoint(ODPoint* point)
{
    double x = -1, y = -1;
    if (!point->GetParam(&x, &y))
        return QPointF(-1, -1);
    return QPointF(x, y);
}

} // namespace

class tst_PointTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void clickMakesAPointAtTheRelease_data();
    void clickMakesAPointAtTheRelease();
    void pointGoesWhereTheReleaseIsNotThePress();
    void clickOnAnExistingShapeStillMakesANewPoint();
    void pressOnAShapeDragsItAndTheReleaseStillMakesAPoint();
    void everyReleaseLeavesAPointWithoutASizeTest();
    void newPointTakesTheLookAtThePress();
};

void tst_PointTool::init()
{
    forgetCurrentShape();
}

void tst_PointTool::cleanup()
{
    forgetCurrentShape();
}

void tst_PointTool::clickMakesAPointAtTheRelease_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 0.25") << 0.25;
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

void tst_PointTool::clickMakesAPointAtTheRelease()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    w.window()->SelectDrawROIMode(DM_POINT);
    QVERIFY(w.view()->limitMousePos());
    const long id = ODShape::s_ID;
    const QPointF p = w.seen(QPointF(30, 25));

    w.press(QPointF(30, 25));
    QVERIFY(w.active()->shapes().isEmpty());
    QCOMPARE(ODShape::s_ID, id);
    w.release(QPointF(30, 25));

    ODPoint* point = lastPoint(w.active());
    QVERIFY(point != nullptr);
    QCOMPARE(point->GetShapeID(), id);
    QCOMPARE(paramsPoint(point), p);
    QCOMPARE(point->orgData(), (QVector<double>{p.x(), p.y()}));
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QCOMPARE(pointTool()->shape(), nullptr);
    QVERIFY(!w.view()->limitMousePos());
    // Shown selected, with its handle on the point.
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(point));
    QVERIFY(w.active()->selectedShapes().contains(point));
    QVERIFY(point->isVisiblehandleMark());
    QCOMPARE(point->handles().size(), 1);
    QCOMPARE(point->handles().value(0).center(), p);
    QCOMPARE(point->GetScale(), float(zoom));

    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
}

void tst_PointTool::pointGoesWhereTheReleaseIsNotThePress()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    w.window()->SelectDrawROIMode(DM_POINT);
    w.press(QPointF(20, 20));
    w.move(QPointF(35, 28));
    w.move(QPointF(50, 40));
    w.release(QPointF(50, 40));
    ODPoint* point = lastPoint(w.active());
    QVERIFY(point != nullptr);
    QCOMPARE(paramsPoint(point), QPointF(50, 40));
    QCOMPARE(w.active()->shapes().size(), 1);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(point->GetShapeID())});
}

void tst_PointTool::clickOnAnExistingShapeStillMakesANewPoint()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* rect = addRect(w.active(), 20, 20, 60, 60);
    w.window()->SelectDrawROIMode(DM_POINT);
    w.click(QPointF(40, 40));

    QCOMPARE(w.active()->shapes().size(), 2);
    QCOMPARE(w.active()->shapes().first(), static_cast<ODShape*>(rect));
    QCOMPARE(paramsOf(rect), (Params{20, 20, 60, 60}));
    ODPoint* point = lastPoint(w.active());
    QVERIFY(point != nullptr);
    QCOMPARE(paramsPoint(point), QPointF(40, 40));
    // Only the point is reported: the select tool's release does not run.
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(point->GetShapeID())});
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(point));
}

void tst_PointTool::pressOnAShapeDragsItAndTheReleaseStillMakesAPoint()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    ODRect1* rect = addRect(w.active(), 20, 20, 60, 60);
    w.window()->SelectDrawROIMode(DM_POINT);
    w.press(QPointF(40, 40));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(rect));
    w.move(QPointF(50, 45));
    w.release(QPointF(50, 45));

    // The select tool moved the body while the button was down.
    QCOMPARE(paramsOf(rect), (Params{30, 25, 70, 65}));
    ODPoint* point = lastPoint(w.active());
    QVERIFY(point != nullptr);
    QCOMPARE(paramsPoint(point), QPointF(50, 45));
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(point->GetShapeID())});
    // The drag state of the caught shape is left for the next press to reset.
    QCOMPARE(Kit::dragState(), ODSelectTool::MovedBody);
    w.click(QPointF(120, 120));
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNothing);
}

void tst_PointTool::everyReleaseLeavesAPointWithoutASizeTest()
{
    PictureWindow w(4.0);
    for (int i = 0; i < 3; ++i) {
        w.window()->SelectDrawROIMode(DM_POINT);
        w.click(QPointF(10 + i, 10));
    }
    QCOMPARE(w.active()->shapes().size(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(paramsPoint(static_cast<ODPoint*>(w.active()->shapes().at(i))), QPointF(10 + i, 10));
}

void tst_PointTool::newPointTakesTheLookAtThePress()
{
    PictureWindow w(2.0);
    w.scene()->setPenColor(QColor(200, 10, 20));
    w.scene()->setBrushColor(QColor(1, 2, 3, 4));
    w.scene()->setLineWidth(2.5f);
    w.window()->SelectDrawROIMode(DM_POINT);
    w.click(QPointF(30, 30));
    ODPoint* point = lastPoint(w.active());
    QVERIFY(point != nullptr);
    QCOMPARE(point->GetPenColor(), QColor(200, 10, 20));
    QCOMPARE(point->GetBrushColor(), QColor(1, 2, 3, 4));
    QCOMPARE(point->GetLineWidth(), 2.5f);
    QCOMPARE(point->GetScale(), 2.0f);
}

QTEST_MAIN(tst_PointTool)
#include "tst_pointtool.moc"
