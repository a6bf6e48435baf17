// The tool bar: its row of 13 buttons, how buttons and the whole bar are shown
// and hidden through the push-button flag word, what each button does and what
// the host hears of it, and the open dialog of the load button.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "ShapeLayer.h"
#include "buttontoolbar.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odrect1.h"
#include "odselecttool.h"
#include "odshapetoolmanage.h"
#include "testkit.h"

#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>

#include <opencv2/core.hpp>

#include <functional>

namespace {

struct ButtonRow
{
    int number;
    unsigned flag;
    const char* icon;
};

const ButtonRow kRows[13] = {
    {0, 0x80000000u, ":/res/open.bmp"},      {1, 0x40000000u, ":/res/zoom in.bmp"},
    {2, 0x20000000u, ":/res/zoom out.bmp"},  {3, 0x10000000u, ":/res/zoom fit.bmp"},
    {4, 0x08000000u, ":/res/zoom 11.bmp"},   {5, 0x00800000u, ":/res/line.bmp"},
    {6, 0x04000000u, ":/res/rectangle.bmp"}, {7, 0x00040000u, ":/res/rectangle2.bmp"},
    {8, 0x01000000u, ":/res/Oval.bmp"},      {9, 0x00020000u, ":/res/Circle.bmp"},
    {10, 0x02000000u, ":/res/Bicyclic.bmp"}, {11, 0x00400000u, ":/res/polygon.bmp"},
    {12, 0x00100000u, ":/res/point.bmp"},
};

constexpr int kInitialFlag = int(0xFFFE0000u);
constexpr int kReservedBits = int(0x00200000u | 0x00080000u);

// The tool-bar signals of the facade in one log, so that order shows.
class ButtonLog : public QObject
{
public:
    explicit ButtonLog(KESImageWnd* wnd)
        : downs(wnd, &KESImageWnd::mouseButtonDown)
        , ups(wnd, &KESImageWnd::mouseButtonUp)
        , clicks(wnd, &KESImageWnd::buttonClicked)
    {
        connect(wnd, &KESImageWnd::mouseButtonDown, this, [this](long n) { log << QString("down(%1)").arg(n); });
        connect(wnd, &KESImageWnd::mouseButtonUp, this, [this](long n) { log << QString("up(%1)").arg(n); });
        connect(wnd, &KESImageWnd::buttonClicked, this, [this](long n) { log << QString("clicked(%1)").arg(n); });
    }
    QStringList log;
    // The same signals with their arguments.
    QSignalSpy downs;
    QSignalSpy ups;
    QSignalSpy clicks;
};

// Waits for the modal open dialog, notes how it came up, and answers it. Should
// the answer leave a modal window open (the dialog itself, or a message box of
// it), the driver notes that and closes it, so that a test fails, not hangs.
class DialogDriver : public QObject
{
public:
    explicit DialogDriver(std::function<void(QFileDialog*)> answer)
        : m_answer(std::move(answer))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { poll(); });
        m_timer.start(20);
    }

    bool seen = false;
    bool stuck = false;
    QString title;
    QString directory;
    QStringList nameFilters;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    QWidget* dialogParent = nullptr;

private:
    void poll()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (seen) {
            // After the answer: only what belongs to that dialog is ours.
            const bool ours = modal && m_dialog && (modal == m_dialog || m_dialog->isAncestorOf(modal));
            if (!ours) {
                m_timer.stop();
                return;
            }
            if (++m_pollsSinceAnswer < 50)
                return;
            stuck = true;
            if (auto* d = qobject_cast<QDialog*>(modal))
                d->reject();
            else
                modal->close();
            return;
        }
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        if (!dialog)
            return;
        seen = true;
        m_dialog = dialog;
        title = dialog->windowTitle();
        directory = dialog->directory().absolutePath();
        nameFilters = dialog->nameFilters();
        fileMode = dialog->fileMode();
        dialogParent = dialog->parentWidget();
        m_answer(dialog);
    }

    QTimer m_timer;
    QPointer<QFileDialog> m_dialog;
    int m_pollsSinceAnswer = 0;
    std::function<void(QFileDialog*)> m_answer;
};

// Chooses a file in the open dialog and accepts it. The dialog takes a chosen
// name into its name field only while that field has no focus.
void chooseFile(QFileDialog* dialog, const QString& file)
{
    if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();
    dialog->selectFile(file);
    static_cast<QDialog*>(dialog)->accept();
}

} // namespace

class tst_Toolbar : public QObject
{
    Q_OBJECT

private:
    static ButtonToolbar* bar(const EmbeddedWindow& e) { return e.window()->GetButtonToolbar(); }
    static void press(QPushButton* b) { QTest::mousePress(b, Qt::LeftButton, Qt::NoModifier, b->rect().center()); }
    static void release(QPushButton* b)
    {
        QTest::mouseRelease(b, Qt::LeftButton, Qt::NoModifier, b->rect().center());
    }
    // The buttons of the list take the places of the row in this order, the
    // others are hidden.
    static void verifyRow(ButtonToolbar* toolbar, const QVector<int>& shown, int size = 40);

private slots:
    void newWindowShowsThirteenButtonsInARow();
    void barIsAPanelOfPlainButtons();
    void buttonIconsComeFromTheirResourcePaths();
    void resourceFileHoldsTheOtherIcons();
    void ellipsePressGoesOutTwiceAndItsReleaseNotAtAll();
    void linePressReleaseAndClickReachTheHost();
    void everyOtherButtonReportsItsNumber_data();
    void everyOtherButtonReportsItsNumber();
    void hiddenLineButtonClosesUpTheRow();
    void reservedBitIsClearedWithoutHidingAButton();
    void oneCallCanHideSeveralButtons();
    void buttonsSwitchWithCircleBeforeEllipseAndPointBeforePolygon();
    void hiddenToolbarHandsItsPlaceToTheView();
    void shownToolbarBringsAllButtonsBack();
    void allThirteenButtonsHiddenLeaveAnEmptyBar();
    void resizeDoesNotBringBackAButtonTheHostHid();
    void resizeShowsAButtonWhoseBitIsStillSet();
    void buttonSizeFollowsTheBarHeight();
    void setVisibleIgnoresUnknownButtons();
    void destroyDeletesEveryButton();
    void toolbarCallsWithoutWindowReturnMinusOne();
    void zoomButtonsZoomBeforeTheHostHearsTheClick_data();
    void zoomButtonsZoomBeforeTheHostHearsTheClick();
    void zoomButtonsWithoutPictureStillReportTheClick();
    void drawButtonsSelectTheirModeBeforeTheHostHearsTheClick_data();
    void drawButtonsSelectTheirModeBeforeTheHostHearsTheClick();
    void everyDrawButtonMakesItsShape_data();
    void everyDrawButtonMakesItsShape();
    void drawModeWithoutPictureInVorImageModeOnlyLimitsTheMouse();
    void drawModeWithoutPictureInQImageModeIsTaken();
    void freeLineSignalsReachEmptySlots();
    void loadDialogRejectedChangesNothingFurther();
    void loadDialogWithChosenFileEmptiesTheVorImageAndReportsTheClick();
};

void tst_Toolbar::verifyRow(ButtonToolbar* toolbar, const QVector<int>& shown, int size)
{
    for (int i = 0; i < 13; ++i) {
        QPushButton* b = toolbar->button(i);
        QVERIFY(b);
        const int place = shown.indexOf(i);
        if (place < 0) {
            QVERIFY2(b->isHidden(), qPrintable(QString("button %1 should be hidden").arg(i)));
            QVERIFY(!toolbar->buttonVisible(i));
            continue;
        }
        QVERIFY2(!b->isHidden(), qPrintable(QString("button %1 should be shown").arg(i)));
        QVERIFY(toolbar->buttonVisible(i));
        QCOMPARE(b->geometry(), QRect(place * size + 1, 1, size, size - 3));
    }
}

void tst_Toolbar::newWindowShowsThirteenButtonsInARow()
{
    EmbeddedWindow e;
    QCOMPARE(e.created, 0L);
    ButtonToolbar* toolbar = bar(e);
    QVERIFY(toolbar);
    QVERIFY(toolbar->isVisible());
    QCOMPARE(toolbar->geometry(), QRect(0, 1, e.window()->width(), 40));
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag);
    for (int i = 0; i < 13; ++i) {
        QPushButton* b = toolbar->button(i);
        QVERIFY(b);
        QVERIFY(b->isVisible());
        QCOMPARE(b->parentWidget(), static_cast<QWidget*>(toolbar));
        QCOMPARE(b->geometry(), QRect(40 * i + 1, 1, 40, 37));
        QCOMPARE(b->iconSize(), QSize(40, 40));
    }
    QVERIFY(!toolbar->button(13));
    QVERIFY(!toolbar->button(-1));
}

void tst_Toolbar::barIsAPanelOfPlainButtons()
{
    EmbeddedWindow e;
    ButtonToolbar* toolbar = bar(e);
    QCOMPARE(toolbar->frameStyle(), 50);
    QCOMPARE(toolbar->frameShape(), QFrame::Panel);
    for (int i = 0; i < 13; ++i) {
        QPushButton* b = toolbar->button(i);
        QVERIFY(b->text().isEmpty());
        QVERIFY(b->toolTip().isEmpty());
        QVERIFY(b->styleSheet().isEmpty());
        QVERIFY(!b->isCheckable());
    }
    // A draw button does not stay down after a click.
    QPushButton* rect = toolbar->button(ButtonToolbar::PB_DRAW_RECT);
    QTest::mouseClick(rect, Qt::LeftButton, Qt::NoModifier, rect->rect().center());
    QVERIFY(!rect->isDown());
    QVERIFY(!rect->isChecked());
}

void tst_Toolbar::buttonIconsComeFromTheirResourcePaths()
{
    EmbeddedWindow e;
    ButtonToolbar* toolbar = bar(e);
    QList<QImage> seen;
    for (const ButtonRow& row : kRows) {
        const QString path = QString::fromUtf8(row.icon);
        QCOMPARE(ButtonToolbar::iconPath(row.number), path);
        QCOMPARE(ButtonToolbar::flagBit(row.number), long(row.flag));
        QVERIFY2(QFile::exists(path), qPrintable(path));

        // A bitmap of 32 by 32 pixels in 24 bits.
        const QImage image(path);
        QVERIFY2(!image.isNull(), qPrintable(path));
        QCOMPARE(image.size(), QSize(32, 32));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray header = file.read(30);
        QCOMPARE(header.left(2), QByteArray("BM"));
        QCOMPARE(int(uchar(header[28])) | (int(uchar(header[29])) << 8), 24);

        // The button shows that very bitmap.
        const QIcon icon = toolbar->button(row.number)->icon();
        QVERIFY2(!icon.isNull(), qPrintable(path));
        const QImage shown = icon.pixmap(QSize(32, 32)).toImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(shown.size(), QSize(32, 32));
        QCOMPARE(shown, image.convertToFormat(QImage::Format_RGB32));
        seen << shown;
    }
    // Thirteen different pictures.
    for (int i = 0; i < seen.size(); ++i)
        for (int j = i + 1; j < seen.size(); ++j)
            QVERIFY2(seen[i] != seen[j], qPrintable(QString("icons %1 and %2 are alike").arg(i).arg(j)));
}

void tst_Toolbar::resourceFileHoldsTheOtherIcons()
{
    for (const char* name : {"anyshape.bmp", "anycloseshape.bmp"}) {
        const QString path = QString(":/res/") + name;
        QVERIFY2(QFile::exists(path), qPrintable(path));
        QCOMPARE(QImage(path).size(), QSize(32, 32));
    }
    const char* const pngs[] = {"adapt.png",      "arrowRight.png",      "checked.png",   "close.png",
                                "hoverArrowRight.png", "hoverClose.png", "imagelabel.png", "pictureSize.png",
                                "pressArrowRight.png", "pressClose.png", "roi1.png",      "roi2.png",
                                "roi3.png",       "roi4.png",            "roi5.png",      "roi6.png",
                                "roi7.png",       "start.png",           "stop.png",      "uncheck.png",
                                "zoomIn.png",     "zoomOut.png"};
    for (const char* name : pngs) {
        const QString path = QString(":/res/") + name;
        QVERIFY2(QFile::exists(path), qPrintable(path));
        QVERIFY2(!QImage(path).isNull(), qPrintable(path));
    }
}

void tst_Toolbar::ellipsePressGoesOutTwiceAndItsReleaseNotAtAll()
{
    EmbeddedWindow e;
    ButtonLog log(e.wnd.get());
    QPushButton* ellipse = bar(e)->button(ButtonToolbar::PB_DRAW_ELLIPSE);

    press(ellipse);
    QCOMPARE(log.log, QStringList({"down(8)", "down(8)"}));
    release(ellipse);
    QCOMPARE(log.log, QStringList({"down(8)", "down(8)", "clicked(8)"}));
    QCOMPARE(log.downs.count(), 2);
    QCOMPARE(log.downs.at(0).at(0).value<long>(), 8L);
    QCOMPARE(log.downs.at(1).at(0).value<long>(), 8L);
    QCOMPARE(log.ups.count(), 0);
    QCOMPARE(log.clicks.count(), 1);
    QCOMPARE(log.clicks.at(0).at(0).value<long>(), 8L);
}

void tst_Toolbar::linePressReleaseAndClickReachTheHost()
{
    EmbeddedWindow e;
    ButtonLog log(e.wnd.get());
    QPushButton* line = bar(e)->button(ButtonToolbar::PB_DRAW_LINE);

    press(line);
    QCOMPARE(log.log, QStringList({"down(5)"}));
    release(line);
    QCOMPARE(log.log, QStringList({"down(5)", "up(5)", "clicked(5)"}));
    QCOMPARE(log.downs.count(), 1);
    QCOMPARE(log.ups.count(), 1);
    QCOMPARE(log.ups.at(0).at(0).value<long>(), 5L);
    QCOMPARE(log.clicks.count(), 1);
    QCOMPARE(log.clicks.at(0).at(0).value<long>(), 5L);
}

void tst_Toolbar::everyOtherButtonReportsItsNumber_data()
{
    QTest::addColumn<int>("number");
    for (int n : {1, 2, 3, 4, 6, 7, 9, 10, 11, 12})
        QTest::newRow(qPrintable(QString("button %1").arg(n))) << n;
}

void tst_Toolbar::everyOtherButtonReportsItsNumber()
{
    QFETCH(int, number);
    EmbeddedWindow e;
    QCOMPARE(e.setPicture(Kit::patternPicture(100, 80)), 0L);
    ButtonLog log(e.wnd.get());
    QPushButton* b = bar(e)->button(number);
    press(b);
    release(b);
    QCOMPARE(log.log, QStringList({QString("down(%1)").arg(number), QString("up(%1)").arg(number),
                                   QString("clicked(%1)").arg(number)}));
    EventThread* relay = e.scene()->GetEventThread();
    QCOMPARE(relay->eventKind(), int(EventThread::EV_BUTTON_CLICK));
    QCOMPARE(int(relay->pushButton()), number);
}

void tst_Toolbar::hiddenLineButtonClosesUpTheRow()
{
    EmbeddedWindow e;
    QCOMPARE(e.wnd->showToolbutton(0x00800000L, false), 0L);
    QVERIFY(bar(e)->button(ButtonToolbar::PB_DRAW_LINE)->isHidden());
    verifyRow(bar(e), {0, 1, 2, 3, 4, 6, 7, 8, 9, 10, 11, 12});
    // The buttons after it moved left by 40 pixels.
    for (int i = 6; i < 13; ++i)
        QCOMPARE(bar(e)->button(i)->x(), 40 * i + 1 - 40);
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag & ~0x00800000);
    QVERIFY(bar(e)->isVisible());

    // Shown again, it takes its place back.
    QCOMPARE(e.wnd->showToolbutton(0x00800000L, true), 0L);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag);
}

void tst_Toolbar::reservedBitIsClearedWithoutHidingAButton()
{
    EmbeddedWindow e;
    QCOMPARE(e.wnd->showToolbutton(0x00200000L, false), 0L);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag & ~0x00200000);
    QCOMPARE(e.wnd->showToolbutton(0x00080000L, false), 0L);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag & ~kReservedBits);
    QVERIFY(bar(e)->isVisible());
}

void tst_Toolbar::oneCallCanHideSeveralButtons()
{
    EmbeddedWindow e;
    // The index is a flag word: the rectangle and the point go together.
    QCOMPARE(e.wnd->showToolbutton(long(0x04000000u | 0x00100000u), false), 0L);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11});
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag & ~int(0x04000000u | 0x00100000u));
}

void tst_Toolbar::buttonsSwitchWithCircleBeforeEllipseAndPointBeforePolygon()
{
    EmbeddedWindow e;
    // Notes the order in which the buttons hide and show.
    class Order : public QObject
    {
    public:
        QList<int> hidden, shown;
        QHash<QObject*, int> numbers;
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::Hide)
                hidden << numbers.value(watched, -1);
            else if (event->type() == QEvent::Show)
                shown << numbers.value(watched, -1);
            return false;
        }
    } order;
    for (int i = 0; i < 13; ++i) {
        order.numbers.insert(bar(e)->button(i), i);
        bar(e)->button(i)->installEventFilter(&order);
    }
    const QList<int> expected = {0, 1, 2, 3, 4, 5, 6, 7, 9, 8, 10, 12, 11};
    // The thirteen bits without the reserved ones: the bar stays on.
    const long buttonBits = long(0xFFFE0000u) & ~long(kReservedBits);
    QCOMPARE(e.wnd->showToolbutton(buttonBits, false), 0L);
    QVERIFY(bar(e)->isVisible());
    QCOMPARE(order.hidden, expected);
    QCOMPARE(e.wnd->showToolbutton(buttonBits, true), 0L);
    QCOMPARE(order.shown, expected);
}

void tst_Toolbar::hiddenToolbarHandsItsPlaceToTheView()
{
    EmbeddedWindow e;
    CMainWindow* w = e.window();
    const int width = w->width();
    const int height = w->height();
    QCOMPARE(e.view()->geometry(), QRect(0, 40, width, height - 70));

    QCOMPARE(e.wnd->showToolbar(false), 0L);
    QVERIFY(bar(e)->isHidden());
    QCOMPARE(w->pushButtonFlag(), 0);
    QCOMPARE(w->widgetFlag(), int(CMainWindow::WF_SCROLLBAR | CMainWindow::WF_STATUSBAR));
    for (int i = 0; i < 13; ++i)
        QVERIFY(bar(e)->button(i)->isHidden());
    // The view starts at the top now; right after the call its bottom leaves
    // the strip of the status-bar layout with the scroll bars on.
    QCOMPARE(e.view()->geometry(), QRect(0, 0, width, height - 50));

    // At the next resize the view holds the 40 pixels of the bar.
    w->resize(width, height + 10);
    QCOMPARE(e.view()->geometry(), QRect(0, 0, width, height + 10 - 30));
    QVERIFY(bar(e)->isHidden());
    w->resize(width, height);
    QCOMPARE(e.view()->geometry(), QRect(0, 0, width, height - 30));
    QCOMPARE(e.view()->height(), (height - 70) + 40);
}

void tst_Toolbar::shownToolbarBringsAllButtonsBack()
{
    EmbeddedWindow e;
    CMainWindow* w = e.window();
    QCOMPARE(e.wnd->showToolbutton(0x00800000L, false), 0L);
    QCOMPARE(e.wnd->showToolbar(false), 0L);
    QVERIFY(bar(e)->isHidden());
    QCOMPARE(e.wnd->showToolbar(true), 0L);
    QVERIFY(bar(e)->isVisible());
    QCOMPARE(w->pushButtonFlag(), kInitialFlag);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    for (int i = 0; i < 13; ++i)
        QVERIFY(bar(e)->button(i)->isVisible());
    QCOMPARE(e.view()->geometry(), QRect(0, 40, w->width(), w->height() - 70));
    QCOMPARE(bar(e)->geometry(), QRect(0, 1, w->width(), 40));
}

void tst_Toolbar::allThirteenButtonsHiddenLeaveAnEmptyBar()
{
    EmbeddedWindow e;
    for (const ButtonRow& row : kRows)
        QCOMPARE(e.wnd->showToolbutton(long(row.flag), false), 0L);
    // The two reserved bits stay, so the bar stays, empty.
    QCOMPARE(e.window()->pushButtonFlag(), kReservedBits);
    verifyRow(bar(e), {});
    QVERIFY(bar(e)->isVisible());
    QCOMPARE(e.view()->y(), 40);

    // Clearing the reserved bits takes the bar away.
    QCOMPARE(e.wnd->showToolbutton(long(kReservedBits), false), 0L);
    QCOMPARE(e.window()->pushButtonFlag(), 0);
    QVERIFY(bar(e)->isHidden());
    QCOMPARE(e.view()->y(), 0);
}

void tst_Toolbar::resizeDoesNotBringBackAButtonTheHostHid()
{
    EmbeddedWindow e;
    QCOMPARE(e.wnd->showToolbutton(0x04000000L, false), 0L);
    QCOMPARE(e.window()->pushButtonFlag() & 0x04000000, 0);
    e.window()->resize(700, 500);
    QCOMPARE(e.window()->size(), QSize(700, 500));
    QVERIFY(bar(e)->button(ButtonToolbar::PB_DRAW_RECT)->isHidden());
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12});
    e.window()->resize(650, 450);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12});
}

void tst_Toolbar::resizeShowsAButtonWhoseBitIsStillSet()
{
    EmbeddedWindow e;
    // Hidden on the bar alone, its bit still set in the window's word.
    bar(e)->SetVisible(ButtonToolbar::PB_DRAW_RECT, false);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12});
    QCOMPARE(e.window()->pushButtonFlag(), kInitialFlag);
    e.window()->resize(700, 500);
    verifyRow(bar(e), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    QVERIFY(bar(e)->button(ButtonToolbar::PB_DRAW_RECT)->isVisible());
}

void tst_Toolbar::buttonSizeFollowsTheBarHeight()
{
    QWidget host;
    auto* toolbar = new ButtonToolbar(&host);
    toolbar->create(0, true, true);
    toolbar->SetVisible(ButtonToolbar::PB_ZOOM_OUT, false);
    toolbar->setGeometry(0, 0, 900, 50);
    host.resize(900, 60);
    QVERIFY(Kit::showExposed(&host));
    // Every button gets the icon size, the hidden one too.
    for (int i = 0; i < 13; ++i)
        QCOMPARE(toolbar->button(i)->iconSize(), QSize(50, 50));
    verifyRow(toolbar, {0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 50);

    // No wrapping: a short bar keeps the row going past its end.
    toolbar->setGeometry(0, 0, 100, 30);
    verifyRow(toolbar, {0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 30);
    QCOMPARE(toolbar->button(12)->geometry(), QRect(11 * 30 + 1, 1, 30, 27));
}

void tst_Toolbar::setVisibleIgnoresUnknownButtons()
{
    ButtonToolbar empty;
    // No buttons yet: nothing happens.
    empty.SetVisible(ButtonToolbar::PB_DRAW_LINE, false);
    QVERIFY(empty.buttonVisible(ButtonToolbar::PB_DRAW_LINE));

    ButtonToolbar toolbar;
    toolbar.create(0, true, true);
    toolbar.resize(600, 40);
    toolbar.SetVisible(ButtonToolbar::PUSHBUTTON(-1), false);
    toolbar.SetVisible(ButtonToolbar::PUSHBUTTON(13), false);
    for (int i = 0; i < 13; ++i)
        QVERIFY(toolbar.buttonVisible(i));
}

void tst_Toolbar::destroyDeletesEveryButton()
{
    ButtonToolbar toolbar;
    toolbar.create(0, true, true);
    QList<QPointer<QPushButton>> buttons;
    for (int i = 0; i < 13; ++i)
        buttons << QPointer<QPushButton>(toolbar.button(i));
    toolbar.destroy(true, true);
    for (int i = 0; i < 13; ++i) {
        QVERIFY(!toolbar.button(i));
        QVERIFY(buttons[i].isNull());
    }
    toolbar.destroy(true, true);
}

void tst_Toolbar::toolbarCallsWithoutWindowReturnMinusOne()
{
    KESImageWnd wnd;
    QCOMPARE(wnd.showToolbutton(0x00800000L, false), -1L);
    QCOMPARE(wnd.showToolbar(false), -1L);
    QCOMPARE(wnd.showToolbar(true), -1L);
}

void tst_Toolbar::zoomButtonsZoomBeforeTheHostHearsTheClick_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("zoom in") << 1;
    QTest::newRow("zoom out") << 2;
    QTest::newRow("fit") << 3;
    QTest::newRow("one to one") << 4;
}

void tst_Toolbar::zoomButtonsZoomBeforeTheHostHearsTheClick()
{
    QFETCH(int, number);
    EmbeddedWindow e;
    QCOMPARE(e.showPicture(Kit::patternPicture(100, 80), 0.8), 0L);
    ImageCtrlScene* scene = e.scene();
    const double before = scene->getScale();
    QCOMPARE(before, double(0.8f));

    const double expected = Kit::scaleAfterZoomButton(number, scene);
    QVERIFY(expected != before);

    QList<double> scaleAtClick;
    connect(e.wnd.get(), &KESImageWnd::buttonClicked, this,
            [&](long) { scaleAtClick << scene->getScale(); });
    QSignalSpy clicks(e.wnd.get(), &KESImageWnd::buttonClicked);
    QTest::mouseClick(bar(e)->button(number), Qt::LeftButton);

    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).value<long>(), long(number));
    QCOMPARE(scaleAtClick.size(), 1);
    QCOMPARE(scaleAtClick.at(0), expected);
    QCOMPARE(scene->getScale(), expected);
    QCOMPARE(double(e.view()->matrix().m11()), expected);
    QCOMPARE(double(CMainWindow::s_scale), expected);
}

void tst_Toolbar::zoomButtonsWithoutPictureStillReportTheClick()
{
    EmbeddedWindow e;
    const double before = e.scene()->getScale();
    ButtonLog log(e.wnd.get());
    for (int n = 1; n <= 4; ++n)
        QTest::mouseClick(bar(e)->button(n), Qt::LeftButton);
    QCOMPARE(log.log, QStringList({"down(1)", "up(1)", "clicked(1)", "down(2)", "up(2)", "clicked(2)", "down(3)",
                                   "up(3)", "clicked(3)", "down(4)", "up(4)", "clicked(4)"}));
    QCOMPARE(e.scene()->getScale(), before);
}

void tst_Toolbar::drawButtonsSelectTheirModeBeforeTheHostHearsTheClick_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("mode");
    QTest::newRow("line") << 5 << int(DM_LINE);
    QTest::newRow("rectangle") << 6 << int(DM_RECT1);
    QTest::newRow("rotated rectangle") << 7 << int(DM_RECT2);
    QTest::newRow("ellipse") << 8 << int(DM_ELLIPSE);
    QTest::newRow("circle") << 9 << int(DM_CIRCLE);
    QTest::newRow("annulus") << 10 << int(DM_ANNULAR);
    QTest::newRow("polygon") << 11 << int(DM_POLYGON);
    QTest::newRow("point") << 12 << int(DM_POINT);
}

void tst_Toolbar::drawButtonsSelectTheirModeBeforeTheHostHearsTheClick()
{
    QFETCH(int, number);
    QFETCH(int, mode);
    EmbeddedWindow e;
    QCOMPARE(e.setPicture(Kit::patternPicture(100, 80)), 0L);
    ImageCtrlScene* scene = e.scene();
    ShaperLayer* layer = scene->GetActiveLayer();
    ODSelectTool* select = Kit::selectTool();
    QVERIFY(select);

    // A selected, current shape on the layer, and the mouse not limited.
    auto* shape = new ODRect1(scene, QPointF(10, 10));
    layer->addShape(shape);
    layer->addSelectedShape(shape);
    ODShapeToolManage::GetODShapeToolManage()->setCurSelectedShape(shape);
    QCOMPARE(layer->selectedShapes().size(), 1);
    QCOMPARE(select->currentShape(), static_cast<ODShape*>(shape));
    e.view()->setLimitMousePos(false);
    QCOMPARE(scene->GetDrawMode(), DM_SELECT);

    QList<int> modeAtClick;
    connect(e.wnd.get(), &KESImageWnd::buttonClicked, this,
            [&](long) { modeAtClick << int(scene->GetDrawMode()); });
    QTest::mouseClick(bar(e)->button(number), Qt::LeftButton);

    QCOMPARE(modeAtClick, QList<int>({mode}));
    QCOMPARE(int(scene->GetDrawMode()), mode);
    QVERIFY(e.view()->limitMousePos());
    QVERIFY(layer->selectedShapes().isEmpty());
    QVERIFY(!select->currentShape());
    // The shape itself stays on the layer.
    QCOMPARE(layer->shapes().size(), 1);
    QCOMPARE(int(scene->GetEventThread()->pushButton()), number);

    scene->SetDrawMode(DM_SELECT);
}

void tst_Toolbar::everyDrawButtonMakesItsShape_data()
{
    drawButtonsSelectTheirModeBeforeTheHostHearsTheClick_data();
}

void tst_Toolbar::everyDrawButtonMakesItsShape()
{
    QFETCH(int, number);
    QFETCH(int, mode);
    Kit::PictureWindow w;
    Kit::HostLog log(w.wnd.get());
    const long id = ODShape::s_ID;
    QTest::mouseClick(bar(w)->button(number), Qt::LeftButton);
    QCOMPARE(int(w.scene()->GetDrawMode()), mode);

    // The operator's gesture of the mode: corners clicked for a polygon, a
    // click for a point, a drag from the centre or first corner for the rest.
    const QPointF from(40, 30);
    const QPointF to(90, 70);
    if (mode == DM_POLYGON) {
        Kit::clickCorner(w.view(), from);
        Kit::clickCorner(w.view(), to);
        Kit::doubleClickCorner(w.view(), QPointF(40, 70));
    } else if (mode == DM_POINT) {
        w.click(to);
    } else {
        w.drag(from, to);
    }

    QCOMPARE(w.active()->shapes().size(), 1);
    ODShape* shape = w.active()->shapes().first();
    QCOMPARE(int(shape->GetDrawMode()), mode);
    QCOMPARE(shape->GetShapeID(), id);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QCOMPARE(log.shapeEvents().value(0), Kit::clickedText(id));
}

void tst_Toolbar::drawModeWithoutPictureInVorImageModeOnlyLimitsTheMouse()
{
    EmbeddedWindow e;
    ImageCtrlScene* scene = e.scene();
    QVERIFY(e.window()->isVorImg());
    e.view()->setLimitMousePos(false);

    e.window()->SelectDrawROIMode(DM_RECT1);
    QVERIFY(e.view()->limitMousePos());
    QCOMPARE(scene->GetDrawMode(), DM_SELECT);

    // The button itself: no mode, but the host still hears the click.
    e.view()->setLimitMousePos(false);
    QSignalSpy clicks(e.wnd.get(), &KESImageWnd::buttonClicked);
    QTest::mouseClick(bar(e)->button(ButtonToolbar::PB_DRAW_CIRCLE), Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).value<long>(), 9L);
    QVERIFY(e.view()->limitMousePos());
    QCOMPARE(scene->GetDrawMode(), DM_SELECT);
}

void tst_Toolbar::drawModeWithoutPictureInQImageModeIsTaken()
{
    EmbeddedWindow e;
    ImageCtrlScene* scene = e.scene();
    e.window()->setIsVorImg(false);
    e.view()->setLimitMousePos(false);
    e.window()->SelectDrawROIMode(DM_ANNULAR);
    QVERIFY(e.view()->limitMousePos());
    QCOMPARE(scene->GetDrawMode(), DM_ANNULAR);
    scene->SetDrawMode(DM_SELECT);
}

void tst_Toolbar::freeLineSignalsReachEmptySlots()
{
    EmbeddedWindow e;
    QCOMPARE(e.setPicture(Kit::patternPicture(100, 80)), 0L);
    ButtonToolbar* toolbar = bar(e);
    ImageCtrlScene* scene = e.scene();
    const double scale = scene->getScale();
    e.view()->setLimitMousePos(false);
    ButtonLog log(e.wnd.get());

    emit toolbar->DrawAnylinePushButtonPressed();
    emit toolbar->DrawAnylinePushButtonReleased();
    emit toolbar->DrawAnylinePushButtonClicked(false);
    emit toolbar->DrawAnylinePushButtonClicked();
    emit toolbar->DrawAnyCloselinePushButtonClicked(true);
    emit toolbar->DrawAnyCloselinePushButtonClicked();

    QCOMPARE(log.downs.count(), 0);
    QCOMPARE(log.ups.count(), 0);
    QCOMPARE(log.clicks.count(), 0);
    QCOMPARE(scene->GetDrawMode(), DM_SELECT);
    QVERIFY(!e.view()->limitMousePos());
    QCOMPARE(scene->getScale(), scale);

    // The slots are there, and do nothing when called directly.
    CMainWindow* w = e.window();
    QVERIFY(QMetaObject::invokeMethod(w, "OnDrawAnylinePushButtonClicked", Q_ARG(bool, false)));
    QVERIFY(QMetaObject::invokeMethod(w, "OnDrawCloseAnylinePushButtonClicked", Q_ARG(bool, false)));
    QVERIFY(QMetaObject::invokeMethod(w, "OnDrawAnylinePushButtonPressed"));
    QVERIFY(QMetaObject::invokeMethod(w, "OnDrawAnylinePushButtonReleased"));
    QCOMPARE(log.downs.count() + log.ups.count() + log.clicks.count(), 0);
    QCOMPARE(scene->GetDrawMode(), DM_SELECT);
}

void tst_Toolbar::loadDialogRejectedChangesNothingFurther()
{
    EmbeddedWindow e;
    QCOMPARE(e.setPicture(Kit::patternPicture(100, 80)), 0L);
    ImageLayer* layer = e.scene()->GetImageLayer();
    QCOMPARE(layer->GetVorImage()->Width(), 100);
    QCOMPARE(layer->GetQImage()->size(), QSize(100, 80));
    QVERIFY(e.window()->lastDir().isEmpty());
    const double scale = e.scene()->getScale();
    ButtonLog log(e.wnd.get());

    DialogDriver driver([](QFileDialog* dialog) { dialog->reject(); });
    QTest::mouseClick(bar(e)->button(ButtonToolbar::PB_LOAD_IMAGE), Qt::LeftButton);

    QVERIFY(driver.seen);
    QVERIFY(!driver.stuck);
    QCOMPARE(driver.title, QString("Open File"));
    QCOMPARE(driver.nameFilters, QStringList({"Image (*.png *.bmp *.jpg)"}));
    QCOMPARE(driver.fileMode, QFileDialog::ExistingFile);
    QCOMPARE(driver.dialogParent, static_cast<QWidget*>(e.window()));
    // The first open starts at the root.
    QCOMPARE(driver.directory, QDir(QDir::rootPath()).absolutePath());
    QCOMPARE(e.window()->lastDir(), QDir::rootPath());

    // Pressed and released, but no click reaches the host.
    QCOMPARE(log.log, QStringList({"down(0)", "up(0)"}));
    QCOMPARE(layer->GetVorImage()->Width(), 100);
    QCOMPARE(layer->GetVorImage()->Height(), 80);
    QCOMPARE(layer->GetQImage()->size(), QSize(100, 80));
    QCOMPARE(e.scene()->getScale(), scale);
    QCOMPARE(e.scene()->GetEventThread()->eventKind(), int(EventThread::EV_NONE));
}

void tst_Toolbar::loadDialogWithChosenFileEmptiesTheVorImageAndReportsTheClick()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    // A real picture of another size: it must not be read.
    const QString file = dir.filePath("other.png");
    QImage other(7, 5, QImage::Format_RGB32);
    other.fill(Qt::red);
    QVERIFY(other.save(file));

    EmbeddedWindow e;
    QCOMPARE(e.setPicture(Kit::patternPicture(100, 80)), 0L);
    ImageLayer* layer = e.scene()->GetImageLayer();
    const QImage shown = *layer->GetQImage();
    ButtonLog log(e.wnd.get());
    QList<int> widthAtClick;
    connect(e.wnd.get(), &KESImageWnd::buttonClicked, this,
            [&](long) { widthAtClick << layer->GetVorImage()->Width(); });

    {
        DialogDriver driver([&](QFileDialog* dialog) { chooseFile(dialog, file); });
        QTest::mouseClick(bar(e)->button(ButtonToolbar::PB_LOAD_IMAGE), Qt::LeftButton);
        QVERIFY(driver.seen);
        QVERIFY(!driver.stuck);
        QCOMPARE(driver.directory, QDir(QDir::rootPath()).absolutePath());
    }
    QCOMPARE(log.log, QStringList({"down(0)", "up(0)", "clicked(0)"}));
    QCOMPARE(widthAtClick, QList<int>({0}));
    QCOMPARE(layer->GetVorImage()->Width(), 0);
    QCOMPARE(layer->GetVorImage()->Height(), 0);
    QVERIFY(!IsValidVorImage(layer->GetVorImage()));
    // The picture on show stays as it was.
    QCOMPARE(layer->GetQImage()->size(), QSize(100, 80));
    QCOMPARE(*layer->GetQImage(), shown);
    QCOMPARE(e.window()->lastDir(), QFileInfo(file).dir().path());
    QCOMPARE(e.scene()->GetEventThread()->eventKind(), int(EventThread::EV_BUTTON_CLICK));
    QCOMPARE(int(e.scene()->GetEventThread()->pushButton()), int(ButtonToolbar::PB_LOAD_IMAGE));

    // The next open starts in the folder of that file.
    DialogDriver again([](QFileDialog* dialog) { dialog->reject(); });
    QTest::mouseClick(bar(e)->button(ButtonToolbar::PB_LOAD_IMAGE), Qt::LeftButton);
    QVERIFY(again.seen);
    QVERIFY(!again.stuck);
    QCOMPARE(again.directory, QDir(QFileInfo(file).dir().path()).absolutePath());
    QCOMPARE(e.window()->lastDir(), QFileInfo(file).dir().path());
    QCOMPARE(log.log, QStringList({"down(0)", "up(0)", "clicked(0)", "down(0)", "up(0)"}));
}

QTEST_MAIN(tst_Toolbar)
#include "tst_toolbar.moc"
