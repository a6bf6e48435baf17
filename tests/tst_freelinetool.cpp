// Drawing free lines with the mouse: the press starts the line, every move
// with the button down adds a point, unthinned, and the release ends the mode
// and reports the line. The closed line shows open while it is drawn.

#include "testkit.h"

#include "odanycloseline.h"
#include "odanyline.h"

#include <QGraphicsPathItem>
#include <QSignalSpy>
#include <QTest>

using namespace Kit;

namespace {

const QPointF kStart(20, 20);
const QVector<QPointF> kWay = {{26, 22}, {33, 27}, {41, 30}, {48, 38}, {52, 47}, {50, 55}};

// The free line held by the tool of mode, whichever of the two it is.
ODShape* heldLine(DrawMode mode)
{
    if (mode == DM_ANYLINE)
        return anyLineTool()->shape();
    return anyCloseLineTool()->shape();
}

QVector<QPointF> linePoints(ODShape* shape)
{
    if (!shape)
        return {};
    if (shape->GetDrawMode() == DM_ANYLINE)
        return pointsOf(static_cast<ODAnyLine*>(shape));
    return pointsOf(static_cast<ODAnyCloseLine*>(shape));
}

// The display item of a free line: the path item of its scene that is not its
// handle item.
QGraphicsPathItem* pathItemOf(ODShape* shape)
{
    for (QGraphicsItem* item : shape->getSence()->items()) {
        auto* path = dynamic_cast<QGraphicsPathItem*>(item);
        if (path && path != shape->handleItem() && !path->path().isEmpty())
            return path;
    }
    return nullptr;
}

// Whether a path ends where it starts.
bool isClosed(const QPainterPath& path)
{
    if (path.elementCount() < 2)
        return false;
    const QPainterPath::Element first = path.elementAt(0);
    const QPainterPath::Element last = path.elementAt(path.elementCount() - 1);
    return QPointF(first) == QPointF(last);
}

} // namespace

class tst_FreeLineTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void dragAddsAPointPerMove_data();
    void dragAddsAPointPerMove();
    void closedLineShowsOpenWhileDrawnAndClosedAfterTheRelease();
    void openLineShowsOpenThroughout();
    void pressAndReleaseLeaveALineOfOnePoint_data();
    void pressAndReleaseLeaveALineOfOnePoint();
    void drawnLineTakesTheLookAtThePress();
};

void tst_FreeLineTool::init()
{
    forgetCurrentShape();
}

void tst_FreeLineTool::cleanup()
{
    forgetCurrentShape();
}

void tst_FreeLineTool::dragAddsAPointPerMove_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("zoom");
    const QList<QPair<const char*, DrawMode>> kinds = {{"open line", DM_ANYLINE}, {"closed line", DM_ANYCLOSELINE}};
    for (const auto& kind : kinds) {
        for (double zoom : {0.25, 1.0, 4.0})
            QTest::addRow("%s, zoom %g", kind.first, zoom) << int(kind.second) << zoom;
    }
}

void tst_FreeLineTool::dragAddsAPointPerMove()
{
    QFETCH(int, mode);
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    HostLog log(w.wnd.get());
    QSignalSpy clicked(w.wnd.get(), &KESImageWnd::shapeClicked);
    w.scene()->SetDrawMode(DrawMode(mode));
    const long id = ODShape::s_ID;

    w.press(kStart);
    ODShape* line = heldLine(DrawMode(mode));
    QVERIFY(line != nullptr);
    QCOMPARE(line->GetShapeID(), id);
    QCOMPARE(line->GetDrawMode(), DrawMode(mode));
    QCOMPARE(linePoints(line), QVector<QPointF>{w.seen(kStart)});
    QCOMPARE(selectTool()->currentShape(), line);
    QCOMPARE(Kit::dragState(), ODSelectTool::DragNewShape);

    QVector<QPointF> expected = {w.seen(kStart)};
    for (const QPointF& p : kWay) {
        w.move(p);
        expected.append(w.seen(p));
        // In the order of the moves, also where two moves meet one pixel.
        QCOMPARE(linePoints(line), expected);
    }
    QCOMPARE(w.scene()->GetDrawMode(), DrawMode(mode));
    QVERIFY(log.shapeEvents().isEmpty());

    w.release(kWay.last());
    QCOMPARE(linePoints(line), expected);
    QCOMPARE(heldLine(DrawMode(mode)), nullptr);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(layerHasId(w.active(), id));
    QVERIFY(!w.view()->limitMousePos());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<long>(), id);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
    // Handles on the two ends only.
    QCOMPARE(line->handles().size(), 2);
    QVERIFY(near(line->handles().value(0).center(), expected.first()));
    QVERIFY(near(line->handles().value(1).center(), expected.last()));
}

void tst_FreeLineTool::closedLineShowsOpenWhileDrawnAndClosedAfterTheRelease()
{
    PictureWindow w;
    w.scene()->SetDrawMode(DM_ANYCLOSELINE);
    w.press(kStart);
    ODShape* line = heldLine(DM_ANYCLOSELINE);
    for (const QPointF& p : kWay) {
        w.move(p);
        QGraphicsPathItem* item = pathItemOf(line);
        QVERIFY(item != nullptr);
        QVERIFY(!isClosed(item->path()));
        QCOMPARE(QPointF(item->path().elementAt(item->path().elementCount() - 1)), p);
    }
    w.release(kWay.last());
    QGraphicsPathItem* item = pathItemOf(line);
    QVERIFY(item != nullptr);
    QVERIFY(isClosed(item->path()));
    QCOMPARE(item->path().elementCount(), kWay.size() + 2);
}

void tst_FreeLineTool::openLineShowsOpenThroughout()
{
    PictureWindow w;
    w.scene()->SetDrawMode(DM_ANYLINE);
    w.press(kStart);
    ODShape* line = heldLine(DM_ANYLINE);
    for (const QPointF& p : kWay) {
        w.move(p);
        QGraphicsPathItem* item = pathItemOf(line);
        QVERIFY(item != nullptr);
        QVERIFY(!isClosed(item->path()));
    }
    w.release(kWay.last());
    QGraphicsPathItem* item = pathItemOf(line);
    QVERIFY(item != nullptr);
    QVERIFY(!isClosed(item->path()));
    QCOMPARE(QPointF(item->path().elementAt(item->path().elementCount() - 1)), kWay.last());
}

void tst_FreeLineTool::pressAndReleaseLeaveALineOfOnePoint_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("open line") << int(DM_ANYLINE);
    QTest::newRow("closed line") << int(DM_ANYCLOSELINE);
}

void tst_FreeLineTool::pressAndReleaseLeaveALineOfOnePoint()
{
    QFETCH(int, mode);
    PictureWindow w;
    HostLog log(w.wnd.get());
    w.scene()->SetDrawMode(DrawMode(mode));
    const long id = ODShape::s_ID;
    w.click(kStart);
    QVERIFY(layerHasId(w.active(), id));
    ODShape* line = w.active()->shapes().last();
    QCOMPARE(linePoints(line), QVector<QPointF>{kStart});
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QCOMPARE(log.shapeEvents(), QStringList{clickedText(id)});
}

void tst_FreeLineTool::drawnLineTakesTheLookAtThePress()
{
    PictureWindow w(2.0);
    w.scene()->setPenColor(QColor(200, 10, 20));
    w.scene()->setBrushColor(QColor(1, 2, 3, 4));
    w.scene()->setLineWidth(3.5f);
    w.scene()->SetDrawMode(DM_ANYLINE);
    w.press(kStart);
    ODShape* line = heldLine(DM_ANYLINE);
    QVERIFY(line != nullptr);
    QCOMPARE(line->GetPenColor(), QColor(200, 10, 20));
    QCOMPARE(line->GetBrushColor(), QColor(1, 2, 3, 4));
    QCOMPARE(line->GetLineWidth(), 3.5f);
    QCOMPARE(line->GetScale(), 2.0f);
    w.release(kStart);
}

QTEST_MAIN(tst_FreeLineTool)
#include "tst_freelinetool.moc"
