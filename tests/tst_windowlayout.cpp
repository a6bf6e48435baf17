// Layout of the window by its widget flag: where the tool bar, the view and the
// status bar sit, which of them show, and how the scroll bars are set, for each
// of the eight flag words and for both ways of changing the flag.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "buttontoolbar.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "statusbar.h"
#include "testkit.h"

#include <QScrollBar>

namespace {

constexpr int kWidth = 500;
constexpr int kHeight = 300;
const QRect kToolbarRect(0, 1, kWidth, 40);
const QRect kStatusbarRect(0, kHeight - 1 - 30, kWidth, 30);
// Geometry a part keeps when its row gives it none.
const QRect kToolbarMarker(3, 5, 7, 11);
const QRect kStatusbarMarker(13, 17, 19, 23);

// Records the order in which the view is resized and the bars are shown or
// hidden, and what the view's scroll-bar policies were at its resize.
class LayoutRecorder : public QObject
{
public:
    LayoutRecorder(CMainWindow* window)
        : m_window(window)
    {
        window->GetImageCtrlView()->installEventFilter(this);
        window->GetButtonToolbar()->installEventFilter(this);
        window->GetStatusbar()->installEventFilter(this);
    }

    QStringList log;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        ImageCtrlView* view = m_window->GetImageCtrlView();
        QString who;
        if (watched == view)
            who = "view";
        else if (watched == m_window->GetButtonToolbar())
            who = "toolbar";
        else if (watched == m_window->GetStatusbar())
            who = "statusbar";
        if (event->type() == QEvent::Resize && watched == view) {
            log << QString("view resize, policy %1, scroll %2")
                       .arg(view->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn ? "on" : "off")
                       .arg(view->scrollVisible() ? "on" : "off");
        } else if (event->type() == QEvent::Show && watched != view) {
            log << who + " show";
        } else if (event->type() == QEvent::Hide && watched != view) {
            log << who + " hide";
        }
        return false;
    }

private:
    CMainWindow* m_window;
};

} // namespace

class WindowLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void newWindowShowsAllThreeParts();
    void layoutOfEachFlag_data();
    void layoutOfEachFlag();
    void flagWordChanges();
    void flagAboveSevenChangesNothingElse();
    void scrollPoliciesAreSetBeforeTheViewIsPlaced();
    void barsAreShownAndHiddenLastToolbarFirst();
    void setVisibleAtFlagSixLeavesFiftyPixels();
    void setInnerVisibleAtFlagSixLeavesThirty();
    void resizeAfterFlagSixClosesTheStripOnceTheBarIsOff();
    void resizeBringsTheToolbarBackWhileButtonsAreOn();
    void resizePlacesHiddenStatusbarToo();
    void resizeDoesNotTouchScrollPolicies();
    void hidingAllPartsGivesFlagZeroAndFullView();
    void hostHidingToolbarStatusbarAndScrollbarGivesFlagZeroAndFullView();
    void facadeShowStatusbarAndShowScrollbar();
    void windowShowStatusbarAndShowScrollbar();
    void statusbarHiddenStillFollowsTheMouse();
};

void WindowLayoutTest::init()
{
    CMainWindow::s_scale = 1.0f;
}

void WindowLayoutTest::newWindowShowsAllThreeParts()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    QCOMPARE(window->widgetFlag(), 7);
    QCOMPARE(window->GetButtonToolbar()->geometry(), kToolbarRect);
    QCOMPARE(window->GetStatusbar()->geometry(), kStatusbarRect);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, kWidth, kHeight - 70));
    QVERIFY(window->GetButtonToolbar()->isVisible());
    QVERIFY(window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QVERIFY(fixture.view()->horizontalScrollBar()->isVisibleTo(fixture.view()));
    QVERIFY(fixture.view()->verticalScrollBar()->isVisibleTo(fixture.view()));
}

void WindowLayoutTest::layoutOfEachFlag_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("inner");
    QTest::addColumn<bool>("toolbarPlaced");
    QTest::addColumn<bool>("statusbarPlaced");
    QTest::addColumn<QRect>("viewRect");
    QTest::addColumn<bool>("toolbarShown");
    QTest::addColumn<bool>("statusbarShown");
    QTest::addColumn<bool>("scrollOn");

    const int w = kWidth;
    const int h = kHeight;
    for (int inner = 0; inner < 2; ++inner) {
        const char* how = inner ? "setInnerVisible" : "setVisible";
        auto row = [&](int flag, bool t, bool s, QRect v, bool scroll) {
            QTest::newRow(qPrintable(QString("%1 flag %2").arg(how).arg(flag)))
                << flag << bool(inner) << t << s << v << t << s << scroll;
        };
        row(0, false, false, QRect(0, 0, w, h), false);
        row(1, true, false, QRect(0, 40, w, h - 40), false);
        row(2, false, false, QRect(0, 0, w, h), true);
        row(3, true, false, QRect(0, 40, w, h - 40), true);
        row(4, false, true, QRect(0, 0, w, h - 30), false);
        row(5, true, true, QRect(0, 40, w, h - 70), false);
        row(6, false, true, QRect(0, 0, w, h - (inner ? 30 : 50)), true);
        row(7, true, true, QRect(0, 40, w, h - 70), true);
    }
}

void WindowLayoutTest::layoutOfEachFlag()
{
    QFETCH(int, flag);
    QFETCH(bool, inner);
    QFETCH(bool, toolbarPlaced);
    QFETCH(bool, statusbarPlaced);
    QFETCH(QRect, viewRect);
    QFETCH(bool, toolbarShown);
    QFETCH(bool, statusbarShown);
    QFETCH(bool, scrollOn);

    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    ImageCtrlView* view = fixture.view();
    ButtonToolbar* toolbar = window->GetButtonToolbar();
    Statusbar* statusbar = window->GetStatusbar();

    // From flag 0, mark the geometries and policies so that a row that leaves
    // them alone can be told from one that sets them.
    window->setVisible(0, false);
    QCOMPARE(window->widgetFlag(), 0);
    toolbar->setGeometry(kToolbarMarker);
    statusbar->setGeometry(kStatusbarMarker);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    const bool scrollVisibleBefore = window->scrollbarVisible();
    const bool viewScrollBefore = view->scrollVisible();

    if (inner)
        window->setInnerVisible(flag, true);
    else
        window->setVisible(flag, true);

    QCOMPARE(window->widgetFlag(), flag);
    QCOMPARE(toolbar->geometry(), toolbarPlaced ? kToolbarRect : kToolbarMarker);
    QCOMPARE(statusbar->geometry(), statusbarPlaced ? kStatusbarRect : kStatusbarMarker);
    QCOMPARE(view->geometry(), viewRect);
    QCOMPARE(toolbar->isVisible(), toolbarShown);
    QCOMPARE(statusbar->isVisible(), statusbarShown);
    QVERIFY(view->isVisible());

    if (inner) {
        // The inner form touches no scroll bar.
        QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QCOMPARE(view->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QCOMPARE(window->scrollbarVisible(), scrollVisibleBefore);
        QCOMPARE(view->scrollVisible(), viewScrollBefore);
    } else {
        const Qt::ScrollBarPolicy policy = scrollOn ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
        QCOMPARE(view->horizontalScrollBarPolicy(), policy);
        QCOMPARE(view->verticalScrollBarPolicy(), policy);
        QCOMPARE(window->scrollbarVisible(), scrollOn);
        QCOMPARE(view->scrollVisible(), scrollOn);
        QCOMPARE(view->horizontalScrollBar()->isVisibleTo(view), scrollOn);
        QCOMPARE(view->verticalScrollBar()->isVisibleTo(view), scrollOn);
    }
}

void WindowLayoutTest::flagWordChanges()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    QCOMPARE(window->widgetFlag(), 7);
    // 0 and true: the word stays.
    window->setVisible(0, true);
    QCOMPARE(window->widgetFlag(), 7);
    window->setVisible(CMainWindow::WF_SCROLLBAR, false);
    QCOMPARE(window->widgetFlag(), 5);
    window->setVisible(CMainWindow::WF_TOOLBAR | CMainWindow::WF_STATUSBAR, false);
    QCOMPARE(window->widgetFlag(), 0);
    window->setVisible(CMainWindow::WF_STATUSBAR, true);
    QCOMPARE(window->widgetFlag(), 4);
    window->setVisible(CMainWindow::WF_TOOLBAR, true);
    QCOMPARE(window->widgetFlag(), 5);
    // 0 and false: the word becomes 0.
    window->setVisible(0, false);
    QCOMPARE(window->widgetFlag(), 0);
    window->setVisible(0, true);
    QCOMPARE(window->widgetFlag(), 0);
    window->setInnerVisible(6, true);
    QCOMPARE(window->widgetFlag(), 6);
    window->setInnerVisible(0, false);
    QCOMPARE(window->widgetFlag(), 0);
}

void WindowLayoutTest::flagAboveSevenChangesNothingElse()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    ImageCtrlView* view = fixture.view();
    view->setGeometry(1, 2, 30, 40);
    window->GetButtonToolbar()->setGeometry(kToolbarMarker);

    window->setVisible(8 | CMainWindow::WF_SCROLLBAR, false);
    QCOMPARE(window->widgetFlag(), 7 & ~CMainWindow::WF_SCROLLBAR);
    QCOMPARE(view->geometry(), QRect(0, 40, kWidth, kHeight - 70));

    view->setGeometry(1, 2, 30, 40);
    window->GetButtonToolbar()->setGeometry(kToolbarMarker);
    window->setVisible(8, true);
    QCOMPARE(window->widgetFlag(), 13);
    QCOMPARE(view->geometry(), QRect(1, 2, 30, 40));
    QCOMPARE(window->GetButtonToolbar()->geometry(), kToolbarMarker);
    QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    window->setVisible(CMainWindow::WF_SCROLLBAR, true);
    QCOMPARE(window->widgetFlag(), 15);
    QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QVERIFY(!window->scrollbarVisible());
    QCOMPARE(view->geometry(), QRect(1, 2, 30, 40));

    window->setVisible(8, false);
    QCOMPARE(window->widgetFlag(), 7);
    QCOMPARE(view->geometry(), QRect(0, 40, kWidth, kHeight - 70));
    QCOMPARE(window->GetButtonToolbar()->geometry(), kToolbarRect);
    QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

void WindowLayoutTest::scrollPoliciesAreSetBeforeTheViewIsPlaced()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    ImageCtrlScene* scene = fixture.scene();
    double width = 0.0;
    double height = 0.0;
    scene->getViewSize(width, height);
    QCOMPARE(width, double(kWidth - 19));
    QCOMPARE(height, double(kHeight - 70 - 19));

    // The view's resize already sees the scroll bars off: its size loses 2.
    window->setVisible(CMainWindow::WF_SCROLLBAR | CMainWindow::WF_TOOLBAR, false);
    QCOMPARE(window->widgetFlag(), 4);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, kWidth, kHeight - 30));
    scene->getViewSize(width, height);
    QCOMPARE(width, double(kWidth - 2));
    QCOMPARE(height, double(kHeight - 30 - 2));

    window->setVisible(CMainWindow::WF_SCROLLBAR | CMainWindow::WF_TOOLBAR, true);
    QCOMPARE(window->widgetFlag(), 7);
    scene->getViewSize(width, height);
    QCOMPARE(width, double(kWidth - 19));
    QCOMPARE(height, double(kHeight - 70 - 19));
}

void WindowLayoutTest::barsAreShownAndHiddenLastToolbarFirst()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    LayoutRecorder recorder(window);

    window->setVisible(0, false);
    QCOMPARE(recorder.log,
             QStringList({"view resize, policy off, scroll off", "toolbar hide", "statusbar hide"}));

    recorder.log.clear();
    window->setVisible(7, true);
    QCOMPARE(recorder.log,
             QStringList({"view resize, policy on, scroll on", "toolbar show", "statusbar show"}));
}

void WindowLayoutTest::setVisibleAtFlagSixLeavesFiftyPixels()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    window->setVisible(CMainWindow::WF_TOOLBAR, false);
    QCOMPARE(window->widgetFlag(), 6);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, kWidth, kHeight - 50));
    QCOMPARE(window->GetStatusbar()->geometry(), kStatusbarRect);
    QVERIFY(!window->GetButtonToolbar()->isVisible());
    QVERIFY(window->GetStatusbar()->isVisible());
}

void WindowLayoutTest::setInnerVisibleAtFlagSixLeavesThirty()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    window->setInnerVisible(CMainWindow::WF_TOOLBAR, false);
    QCOMPARE(window->widgetFlag(), 6);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, kWidth, kHeight - 30));
    QVERIFY(!window->GetButtonToolbar()->isVisible());
}

void WindowLayoutTest::resizeAfterFlagSixClosesTheStripOnceTheBarIsOff()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    // The tool bar stays off across a resize only once no push-button bit is
    // left on; the window's showToolbar(false) clears them all.
    if (!QMetaObject::invokeMethod(window, "showToolbar", Qt::DirectConnection, Q_ARG(bool, false)))
        QSKIP("the window has no showToolbar(bool) slot");
    QCOMPARE(window->pushButtonFlag(), 0);
    QCOMPARE(window->widgetFlag(), 6);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, kWidth, kHeight - 50));

    QCOMPARE(fixture.wnd->move(0, 0, 420, 260), 0L);
    QCOMPARE(window->widgetFlag(), 6);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, 420, 260 - 30));
    QCOMPARE(window->GetStatusbar()->geometry(), QRect(0, 259 - 30, 420, 30));
    QVERIFY(!window->GetButtonToolbar()->isVisible());
}

void WindowLayoutTest::resizeBringsTheToolbarBackWhileButtonsAreOn()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    window->setVisible(CMainWindow::WF_TOOLBAR, false);
    QCOMPARE(window->widgetFlag(), 6);
    QVERIFY(window->pushButtonFlag() != 0);

    QCOMPARE(fixture.wnd->move(0, 0, 420, 260), 0L);
    QCOMPARE(window->widgetFlag(), 7);
    QCOMPARE(window->GetButtonToolbar()->geometry(), QRect(0, 1, 420, 40));
    QCOMPARE(window->GetStatusbar()->geometry(), QRect(0, 259 - 30, 420, 30));
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, 420, 260 - 70));
    QVERIFY(window->GetButtonToolbar()->isVisible());
}

void WindowLayoutTest::resizePlacesHiddenStatusbarToo()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    window->setVisible(CMainWindow::WF_STATUSBAR, false);
    QCOMPARE(window->widgetFlag(), 3);
    QCOMPARE(window->GetStatusbar()->geometry(), kStatusbarRect);

    QCOMPARE(fixture.wnd->move(0, 0, 420, 260), 0L);
    QCOMPARE(window->widgetFlag(), 3);
    QCOMPARE(window->GetStatusbar()->geometry(), QRect(0, 229, 420, 30));
    QVERIFY(!window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, 420, 220));
}

void WindowLayoutTest::resizeDoesNotTouchScrollPolicies()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    ImageCtrlView* view = fixture.view();
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QCOMPARE(fixture.wnd->move(0, 0, 420, 260), 0L);
    QCOMPARE(window->widgetFlag(), 7);
    QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(view->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void WindowLayoutTest::hidingAllPartsGivesFlagZeroAndFullView()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    window->setVisible(CMainWindow::WF_TOOLBAR, false);
    QCOMPARE(fixture.wnd->showStatusbar(false), true);
    QCOMPARE(fixture.wnd->showScrollbar(false), true);
    QCOMPARE(window->widgetFlag(), 0);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, kWidth, kHeight));
    QCOMPARE(fixture.view()->geometry(), window->rect());
    QVERIFY(!window->GetButtonToolbar()->isVisible());
    QVERIFY(!window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QVERIFY(!fixture.view()->horizontalScrollBar()->isVisibleTo(fixture.view()));
    QVERIFY(!fixture.view()->verticalScrollBar()->isVisibleTo(fixture.view()));
    double width = 0.0;
    double height = 0.0;
    fixture.scene()->getViewSize(width, height);
    QCOMPARE(width, double(kWidth - 2));
    QCOMPARE(height, double(kHeight - 2));
}

void WindowLayoutTest::hostHidingToolbarStatusbarAndScrollbarGivesFlagZeroAndFullView()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    // The host's own three calls, in this order.
    QCOMPARE(fixture.wnd->showToolbar(false), 0L);
    QCOMPARE(window->widgetFlag(), 6);
    QCOMPARE(fixture.wnd->showStatusbar(false), true);
    QCOMPARE(window->widgetFlag(), 2);
    QCOMPARE(fixture.wnd->showScrollbar(false), true);
    QCOMPARE(window->widgetFlag(), 0);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, kWidth, kHeight));
    QCOMPARE(fixture.view()->geometry(), window->rect());
    QVERIFY(!window->GetButtonToolbar()->isVisible());
    QVERIFY(!window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);

    // With no push-button bit left, a resize keeps the view filling the window.
    QCOMPARE(fixture.wnd->move(0, 0, 420, 260), 0L);
    QCOMPARE(window->widgetFlag(), 0);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 0, 420, 260));
    QVERIFY(!window->GetButtonToolbar()->isVisible());
}

void WindowLayoutTest::facadeShowStatusbarAndShowScrollbar()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    QCOMPARE(fixture.wnd->showStatusbar(false), true);
    QCOMPARE(window->widgetFlag(), 3);
    QVERIFY(!window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, kWidth, kHeight - 40));
    QCOMPARE(fixture.wnd->showStatusbar(true), true);
    QCOMPARE(window->widgetFlag(), 7);
    QVERIFY(window->GetStatusbar()->isVisible());
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, kWidth, kHeight - 70));

    QCOMPARE(fixture.wnd->showScrollbar(false), true);
    QCOMPARE(window->widgetFlag(), 5);
    QVERIFY(!window->scrollbarVisible());
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(fixture.view()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(fixture.wnd->showScrollbar(true), true);
    QCOMPARE(window->widgetFlag(), 7);
    QVERIFY(window->scrollbarVisible());
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(fixture.view()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

void WindowLayoutTest::windowShowStatusbarAndShowScrollbar()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    CMainWindow* window = fixture.window();
    window->showStatusbar(false);
    QCOMPARE(window->widgetFlag(), 3);
    window->showScrollbar(false);
    QCOMPARE(window->widgetFlag(), 1);
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    window->showStatusbar(true);
    window->showScrollbar(true);
    QCOMPARE(window->widgetFlag(), 7);
    QCOMPARE(fixture.view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

void WindowLayoutTest::statusbarHiddenStillFollowsTheMouse()
{
    EmbeddedWindow fixture(QSize(kWidth, kHeight));
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(qRgb(5, 6, 7));
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    QCOMPARE(fixture.wnd->showStatusbar(false), true);
    Kit::moveTo(fixture.view(), QPointF(4, 3));
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(),
             QString("Information: 20X10 POS(4.0, 3.0) RGB(5, 6, 7) ZOOM:1.000"));
}

QTEST_MAIN(WindowLayoutTest)
#include "tst_windowlayout.moc"
