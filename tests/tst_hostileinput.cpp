// Input that no careful host and no platform sends, answered with defined
// values: window bounds at the ends of int, scales that are no finite number,
// and mouse and wheel positions that are no number or lie beyond int, sent as
// real events to the view's viewport. Each case checks what the window reports
// or keeps afterwards, and that it still answers ordinary input.

#include "testkit.h"

#include <QtTest/QtTest>

#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QWidget>

#include <climits>
#include <limits>
#include <memory>

using namespace Kit;

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();
// A scale at which the picture of the fixture is larger than its view.
const double kPanScale = 8.0;
// The widest and highest a widget can be.
const int kWidgetMax = QWIDGETSIZE_MAX;

// A host widget with a window made in it through the facade, a picture shown.
class HostWithWindow : public EmbeddedWindow
{
public:
    HostWithWindow()
    {
        if (created == 0)
            shown = setPicture(Kit::qtPicture(200, 100, qRgb(40, 80, 120)));
    }

    QScrollBar* horizontal() const { return view()->horizontalScrollBar(); }
    QScrollBar* vertical() const { return view()->verticalScrollBar(); }

    // Zooms in until the picture is larger than the view: both scroll bars
    // then have a range to pan over.
    bool zoomInToScroll()
    {
        const QScrollBar* h = horizontal();
        const QScrollBar* v = vertical();
        return created == 0 && wnd->zoom(kPanScale) == 0 && h->maximum() > h->minimum() && v->maximum() > v->minimum();
    }

    long shown = -1;
};

QString crossPointText(KESImageWnd& wnd)
{
    QString info;
    wnd.getCrossLineInfo(info);
    return QJsonDocument::fromJson(info.toUtf8()).object().value("point").toString();
}

// Positions that no platform delivers: no number, or beyond what a widget can
// reach on any side.
void unsentPositions()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("not a number") << kNaN << kNaN;
    QTest::newRow("x not a number") << kNaN << 20.0;
    QTest::newRow("infinite") << kInf << -kInf;
    QTest::newRow("below the lowest int") << -3e9 << -3e9;
    QTest::newRow("just below the lowest int") << -2147483649.0 << 20.0;
    QTest::newRow("beyond the largest int") << 30.0 << 3e9;
    QTest::newRow("beyond the widest widget") << -2e7 << 20.0;
}

} // namespace

class tst_HostileInput : public QObject
{
    Q_OBJECT

private slots:
    // Bounds at the ends of int: both calls return 0, and the window's size is
    // cut to what a widget can have, its corner held as far from the origin.
    void extremeBoundsGiveTheCutGeometry_data()
    {
        QTest::addColumn<bool>("move");  // through move() after an ordinary create, or create() itself
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("top");
        QTest::addColumn<int>("right");
        QTest::addColumn<int>("bottom");
        QTest::addColumn<QRect>("geometry");
        for (const bool move : {false, true}) {
            const char* call = move ? "move" : "create";
            QTest::addRow("%s: the whole int range", call)
                << move << INT_MIN << INT_MIN << INT_MAX << INT_MAX
                << QRect(-kWidgetMax, -kWidgetMax, kWidgetMax, kWidgetMax);
            QTest::addRow("%s: the whole range reversed", call)
                << move << INT_MAX << INT_MAX << INT_MIN << INT_MIN << QRect(kWidgetMax, kWidgetMax, 0, 0);
            QTest::addRow("%s: right and bottom at the lowest int", call)
                << move << 0 << 0 << INT_MIN << INT_MIN << QRect(0, 0, 0, 0);
            QTest::addRow("%s: left and top at the lowest int", call)
                << move << INT_MIN << INT_MIN << 0 << 0 << QRect(-kWidgetMax, -kWidgetMax, kWidgetMax, kWidgetMax);
            QTest::addRow("%s: wider than a widget", call)
                << move << -10 << 5 << 20000000 << 105 << QRect(-10, 5, kWidgetMax, 100);
            QTest::addRow("%s: ordinary bounds", call) << move << 10 << 20 << 330 << 260 << QRect(10, 20, 320, 240);
        }
    }
    void extremeBoundsGiveTheCutGeometry()
    {
        QFETCH(bool, move);
        QFETCH(int, left);
        QFETCH(int, top);
        QFETCH(int, right);
        QFETCH(int, bottom);
        QFETCH(QRect, geometry);
        HostWidget host;
        KESImageWnd wnd;
        if (move) {
            QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host), 0, 0, 400, 300), 0L);
            QCOMPARE(wnd.move(left, top, right, bottom), 0L);
        } else {
            QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host), left, top, right, bottom), 0L);
        }
        QCOMPARE(wnd.mainWindow()->geometry(), geometry);
        QCOMPARE(wnd.mainWindow()->parentWidget(), &host);
        // Back to ordinary bounds, the window follows again.
        QCOMPARE(wnd.move(5, 6, 405, 306), 0L);
        QCOMPARE(wnd.mainWindow()->geometry(), QRect(5, 6, 400, 300));
        QCOMPARE(wnd.destory(), 0L);
    }

    void zoomToNoFiniteScaleChangesNothing_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("infinity") << kInf;
        QTest::newRow("beyond the largest float") << 1e300;
        QTest::newRow("below the lowest float") << -1e300;
        QTest::newRow("not a number") << kNaN;
    }
    void zoomToNoFiniteScaleChangesNothing()
    {
        QFETCH(double, scale);
        HostWithWindow fixture;
        QCOMPARE(fixture.created, 0L);
        QCOMPARE(fixture.shown, 0L);
        KESImageWnd& wnd = *fixture.wnd;
        QCOMPARE(wnd.zoom(2.0), 0L);
        // The reticle in the picture mode reports its point in image pixels,
        // through the view's matrix.
        QCOMPARE(wnd.setCrossLineInfo(R"({"mode":1,"point":"50,40"})"), 0L);
        QCOMPARE(crossPointText(wnd), QString("50,40"));
        const QPoint heldPoint = fixture.view()->crossPoint();

        QCOMPARE(wnd.zoom(scale), 0L);
        double ratio = 0.0;
        QCOMPARE(wnd.getZoomRatio(&ratio), 0L);
        QCOMPARE(ratio, 2.0);
        QCOMPARE(fixture.view()->matrix().m11(), 2.0);
        QString info;
        QCOMPARE(wnd.getCrossLineInfo(info), 0L);
        QCOMPARE(crossPointText(wnd), QString("50,40"));
        QCOMPARE(fixture.view()->crossPoint(), heldPoint);

        // An ordinary scale still takes.
        QCOMPARE(wnd.zoom(4.0), 0L);
        QCOMPARE(wnd.getZoomRatio(&ratio), 0L);
        QCOMPARE(ratio, 4.0);
    }

    void pressAtAnUnsentPositionIsIgnored_data() { unsentPositions(); }
    void pressAtAnUnsentPositionIsIgnored()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        HostWithWindow fixture;
        QCOMPARE(fixture.created, 0L);
        ImageCtrlView* view = fixture.view();
        QSignalSpy presses(view, &ImageCtrlView::sigMousePress);
        QSignalSpy rightPresses(view, &ImageCtrlView::sigMouseRightPress);
        QSignalSpy clicks(view, &ImageCtrlView::mouseClicked);
        QSignalSpy hostClicks(fixture.wnd.get(), SIGNAL(mouseClicked(double, double)));
        const QPointF unsent(x, y);

        sendMouseAsIs(view, QEvent::MouseButtonPress, unsent, Qt::LeftButton, Qt::LeftButton);
        sendMouseAsIs(view, QEvent::MouseButtonRelease, unsent, Qt::LeftButton, Qt::NoButton);
        sendMouseAsIs(view, QEvent::MouseButtonPress, unsent, Qt::RightButton, Qt::RightButton);
        QCOMPARE(presses.count(), 0);
        QCOMPARE(rightPresses.count(), 0);
        QVERIFY(!view->isRightDown());
        QVERIFY(!view->isCrossDragging());
        sendMouseAsIs(view, QEvent::MouseButtonRelease, unsent, Qt::RightButton, Qt::NoButton);
        QCOMPARE(clicks.count(), 0);
        QCOMPARE(hostClicks.count(), 0);

        // The next ordinary press is reported where it happens.
        const QPoint ordinary(120, 90);
        sendMouseAsIs(view, QEvent::MouseButtonPress, ordinary, Qt::LeftButton, Qt::LeftButton);
        QCOMPARE(presses.count(), 1);
        const QPointF scenePos = view->mapToScene(ordinary);
        const QPointF reported = reportedPoint(presses.first());
        QCOMPARE(reported.x(), scenePos.x());
        QCOMPARE(reported.y(), scenePos.y());
        sendMouseAsIs(view, QEvent::MouseButtonRelease, ordinary, Qt::LeftButton, Qt::NoButton);
        QCOMPARE(clicks.count(), 1);
        QCOMPARE(hostClicks.count(), 1);
    }

    void moveAndPanToAnUnsentPositionAreIgnored_data() { unsentPositions(); }
    void moveAndPanToAnUnsentPositionAreIgnored()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        HostWithWindow fixture;
        QVERIFY(fixture.zoomInToScroll());
        ImageCtrlView* view = fixture.view();
        QScrollBar* h = fixture.horizontal();
        QScrollBar* v = fixture.vertical();
        h->setValue((h->minimum() + h->maximum()) / 2);
        v->setValue((v->minimum() + v->maximum()) / 2);
        const int hBefore = h->value();
        const int vBefore = v->value();
        QSignalSpy positions(view, &ImageCtrlView::updateMousePosition);
        QSignalSpy moveReleases(view, &ImageCtrlView::sigMouseRightMoveRelease);
        QSignalSpy plainReleases(view, &ImageCtrlView::sigMouseRightRelease);
        const QPointF unsent(x, y);

        // A pan: right press at an ordinary position, a move to the unsent one.
        const QPoint start(200, 150);
        sendMouseAsIs(view, QEvent::MouseButtonPress, start, Qt::RightButton, Qt::RightButton);
        QVERIFY(view->isRightDown());
        sendMouseAsIs(view, QEvent::MouseMove, unsent, Qt::NoButton, Qt::RightButton);
        QCOMPARE(positions.count(), 0);
        QCOMPARE(h->value(), hBefore);
        QCOMPARE(v->value(), vBefore);
        QVERIFY(!view->isRightMoved());
        sendMouseAsIs(view, QEvent::MouseButtonRelease, start, Qt::RightButton, Qt::NoButton);
        QCOMPARE(plainReleases.count(), 1);
        QCOMPARE(moveReleases.count(), 0);

        // A drag of the reticle: the held point stays where it was.
        const QPoint cross = view->crossPoint();
        sendMouseAsIs(view, QEvent::MouseButtonPress, cross, Qt::LeftButton, Qt::LeftButton);
        QVERIFY(view->isCrossDragging());
        sendMouseAsIs(view, QEvent::MouseMove, unsent, Qt::NoButton, Qt::LeftButton);
        QCOMPARE(view->crossPoint(), cross);
        sendMouseAsIs(view, QEvent::MouseButtonRelease, cross, Qt::LeftButton, Qt::NoButton);
        QVERIFY(!view->isCrossDragging());

        // A wheel step there changes no scale and reports no position.
        double ratio = 0.0;
        wheelAsIs(view, unsent, kWheelNotch);
        wheelAsIs(view, unsent, -kWheelNotch);
        QCOMPARE(fixture.wnd->getZoomRatio(&ratio), 0L);
        QCOMPARE(ratio, kPanScale);
        QCOMPARE(h->value(), hBefore);
        QCOMPARE(v->value(), vBefore);

        // Ordinary moves are reported again.
        positions.clear();
        sendMouseAsIs(view, QEvent::MouseMove, QPointF(30, 40), Qt::NoButton, Qt::NoButton);
        QCOMPARE(positions.count(), 1);
        QCOMPARE(positions.at(0).at(0).toPointF(), view->mapToScene(QPoint(30, 40)));
    }

    // The farthest positions a widget can see, one jump from one side to the
    // other: the pan is cut at the ends of the scroll range.
    void panByTheWidestJumpStopsAtTheScrollEnds()
    {
        HostWithWindow fixture;
        QVERIFY(fixture.zoomInToScroll());
        ImageCtrlView* view = fixture.view();
        QScrollBar* h = fixture.horizontal();
        QScrollBar* v = fixture.vertical();
        QSignalSpy moveReleases(view, &ImageCtrlView::sigMouseRightMoveRelease);
        const QPointF nearCorner(-kWidgetMax, -kWidgetMax);
        const QPointF farCorner(kWidgetMax, kWidgetMax);

        sendMouseAsIs(view, QEvent::MouseButtonPress, nearCorner, Qt::RightButton, Qt::RightButton);
        sendMouseAsIs(view, QEvent::MouseMove, farCorner, Qt::NoButton, Qt::RightButton);
        QVERIFY(view->isRightMoved());
        QCOMPARE(h->value(), h->minimum());
        QCOMPARE(v->value(), v->minimum());
        sendMouseAsIs(view, QEvent::MouseMove, nearCorner, Qt::NoButton, Qt::RightButton);
        QCOMPARE(h->value(), h->maximum());
        QCOMPARE(v->value(), v->maximum());
        sendMouseAsIs(view, QEvent::MouseButtonRelease, nearCorner, Qt::RightButton, Qt::NoButton);
        QCOMPARE(moveReleases.count(), 1);
        const QPointF scenePos = view->mapToScene(QPoint(-kWidgetMax, -kWidgetMax));
        const QPointF reported = reportedPoint(moveReleases.first());
        QCOMPARE(reported.x(), scenePos.x());
        QCOMPARE(reported.y(), scenePos.y());
    }
};

QTEST_MAIN(tst_HostileInput)
#include "tst_hostileinput.moc"
