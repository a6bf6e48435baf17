// The floating area over the picture and the round number label: both hidden
// in a new view, shown by the host; the area's zoom buttons act like the tool
// bar's, the into button reports to the host, the float flag is only kept. And
// the form the area is built from, number by number.

#include <QtTest/QtTest>

#include "FloatAreaWidget.h"
#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "ui_FloatAreaWidget.h"
#include "testkit.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpacerItem>
#include <QToolButton>

#include <opencv2/core.hpp>

namespace {

const char* const kNumberStyle = "min-width: 28px; min-height: 28px;max-width:28px; max-height: 28px;"
                                 "border-radius: 14px;  border:1px solid black;background:grey";

// A widget's show switch of the facade, whose call without an argument hides:
// true shows it, no argument and false hide it.
template <class Show, class ShowByDefault>
void verifyShowSwitch(const QWidget* widget, Show show, ShowByDefault showByDefault)
{
    show(true);
    QVERIFY(widget->isVisible());
    showByDefault();
    QVERIFY(widget->isHidden());
    show(true);
    QVERIFY(widget->isVisible());
    show(false);
    QVERIFY(widget->isHidden());
}

} // namespace

class tst_FloatArea : public QObject
{
    Q_OBJECT

private:
    static const Ui_FloatAreaWidget& ui(const EmbeddedWindow& e) { return e.view()->floatArea()->ui(); }
    static void click(QToolButton* button)
    {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
    }

private slots:
    void newViewShowsNeitherAreaNorNumber();
    void floatAreaVisibleWithoutArgumentHides();
    void zoomButtonsActLikeTheToolbarButtons_data();
    void zoomButtonsActLikeTheToolbarButtons();
    void intoButtonShownOnRequestReportsItsClick();
    void floatButtonStaysHidden();
    void floatFlagIsOnlyKept();
    void floatCallsWithoutWindowDoNothing();
    void tipTextReachesTheLabel();
    void numberLabelHoldsOneUntilSetNum();
    void areaKeepsItsPlaceAndSizeWhenTheViewResizes();
    void formSizesSpacingsAndStyles();
    void formNamesAndTexts();
    void formLayoutNesting();
    void formKeepsAnObjectNameItAlreadyHas();
    void buttonIconsLoadFromTheirPaths();
    void eachButtonEmitsItsOwnSignal();
    void checkableButtonWouldReportTwice();
};

void tst_FloatArea::newViewShowsNeitherAreaNorNumber()
{
    EmbeddedWindow e;
    ImageCtrlView* view = e.view();
    FloatAreaWidget* area = view->floatArea();
    QLabel* number = view->numLabel();
    QVERIFY(area);
    QVERIFY(number);
    QCOMPARE(area->parentWidget(), static_cast<QWidget*>(view));
    QCOMPARE(number->parentWidget(), static_cast<QWidget*>(view));
    QVERIFY(view->isVisible());
    QVERIFY(area->isHidden());
    QVERIFY(!area->isVisible());
    QVERIFY(number->isHidden());
    QVERIFY(!number->isVisible());
    QVERIFY(!view->isFloat());
    QVERIFY(!e.wnd->isFloat());
}

void tst_FloatArea::floatAreaVisibleWithoutArgumentHides()
{
    EmbeddedWindow e;
    FloatAreaWidget* area = e.view()->floatArea();
    verifyShowSwitch(area, [&e](bool show) { e.wnd->SetFloatAreaVisible(show); },
                     [&e] { e.wnd->SetFloatAreaVisible(); });
}

void tst_FloatArea::zoomButtonsActLikeTheToolbarButtons_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("number");
    QTest::newRow("zoom in") << "zoominBtn" << 1;
    QTest::newRow("zoom out") << "zoomoutBtn" << 2;
    QTest::newRow("adapt fits") << "adaptBtn" << 3;
    QTest::newRow("picture size is one to one") << "picturesizeBtn" << 4;
}

void tst_FloatArea::zoomButtonsActLikeTheToolbarButtons()
{
    QFETCH(QString, button);
    QFETCH(int, number);
    EmbeddedWindow e;
    QCOMPARE(e.showPicture(Kit::patternPicture(100, 80), 0.8), 0L);
    ImageCtrlScene* scene = e.scene();
    const double before = scene->getScale();
    const double expected = Kit::scaleAfterZoomButton(number, scene);
    QVERIFY(expected != before);

    e.wnd->SetFloatAreaVisible(true);
    auto* toolButton = e.view()->floatArea()->findChild<QToolButton*>(button);
    QVERIFY(toolButton);
    QVERIFY(toolButton->isVisible());

    QList<double> scaleAtClick;
    connect(e.wnd.get(), &KESImageWnd::buttonClicked, this, [&](long) { scaleAtClick << scene->getScale(); });
    QSignalSpy clicks(e.wnd.get(), &KESImageWnd::buttonClicked);
    QSignalSpy downs(e.wnd.get(), &KESImageWnd::mouseButtonDown);
    QSignalSpy ups(e.wnd.get(), &KESImageWnd::mouseButtonUp);
    click(toolButton);

    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).value<long>(), long(number));
    // The zoom is done when the host hears the click.
    QCOMPARE(scaleAtClick, QList<double>({expected}));
    QCOMPARE(scene->getScale(), expected);
    QCOMPARE(double(e.view()->matrix().m11()), expected);
    // The area's buttons have no press and release reports.
    QCOMPARE(downs.count(), 0);
    QCOMPARE(ups.count(), 0);
    QCOMPARE(int(scene->GetEventThread()->pushButton()), number);
}

void tst_FloatArea::intoButtonShownOnRequestReportsItsClick()
{
    EmbeddedWindow e;
    const Ui_FloatAreaWidget& form = ui(e);
    QVERIFY(form.intoBtn->isHidden());
    e.wnd->SetFloatAreaVisible(true);
    QVERIFY(!form.intoBtn->isVisible());
    e.wnd->SetIntoBtnVisible(true);
    QVERIFY(form.intoBtn->isVisible());

    QSignalSpy into(e.wnd.get(), &KESImageWnd::intoBtnClicked);
    QSignalSpy floating(e.wnd.get(), &KESImageWnd::floatBtnClicked);
    QSignalSpy clicks(e.wnd.get(), &KESImageWnd::buttonClicked);
    click(form.intoBtn);
    QCOMPARE(into.count(), 1);
    QCOMPARE(into.at(0).at(0).toBool(), false);
    QCOMPARE(floating.count(), 0);
    QCOMPARE(clicks.count(), 0);

    e.wnd->SetIntoBtnVisible();
    QVERIFY(form.intoBtn->isHidden());
    e.wnd->SetIntoBtnVisible(true);
    QVERIFY(form.intoBtn->isVisible());
    e.wnd->SetIntoBtnVisible(false);
    QVERIFY(form.intoBtn->isHidden());
}

void tst_FloatArea::floatButtonStaysHidden()
{
    EmbeddedWindow e;
    const Ui_FloatAreaWidget& form = ui(e);
    e.wnd->SetFloatAreaVisible(true);
    e.wnd->SetIntoBtnVisible(true);
    e.wnd->SetFloatFlag(true);
    e.wnd->SetFloatTipText("tip");
    e.window()->resize(700, 500);
    QVERIFY(form.floatBtn->isHidden());
    QVERIFY(!form.floatBtn->isVisible());

    // Its road to the host stands, though no operator can reach it.
    QSignalSpy floating(e.wnd.get(), &KESImageWnd::floatBtnClicked);
    form.floatBtn->click();
    QCOMPARE(floating.count(), 1);
    QCOMPARE(floating.at(0).at(0).toBool(), false);
}

void tst_FloatArea::floatFlagIsOnlyKept()
{
    EmbeddedWindow e;
    QVERIFY(!e.wnd->isFloat());
    e.wnd->SetFloatFlag(true);
    QVERIFY(e.wnd->isFloat());
    QVERIFY(e.window()->isFloat());
    QVERIFY(e.view()->isFloat());
    // Nothing else follows from it.
    QVERIFY(e.view()->floatArea()->isHidden());
    QVERIFY(e.view()->numLabel()->isHidden());
    QVERIFY(e.window()->isVisible());
    e.wnd->SetFloatFlag(false);
    QVERIFY(!e.wnd->isFloat());
}

void tst_FloatArea::floatCallsWithoutWindowDoNothing()
{
    KESImageWnd wnd;
    wnd.SetFloatFlag(true);
    QVERIFY(!wnd.isFloat());
    wnd.SetFloatAreaVisible(true);
    wnd.SetFloatAreaVisible();
    wnd.SetIntoBtnVisible(true);
    wnd.SetIntoBtnVisible();
    wnd.SetFloatTipText("tip");
    wnd.setNum("3");
    wnd.setNumVisible(true);
    wnd.setNumVisible();
    QVERIFY(!wnd.isFloat());

    // After destory the flag reads false again.
    EmbeddedWindow e;
    e.wnd->SetFloatFlag(true);
    QVERIFY(e.wnd->isFloat());
    QCOMPARE(e.wnd->destory(), 0L);
    QVERIFY(!e.wnd->isFloat());
}

void tst_FloatArea::tipTextReachesTheLabel()
{
    EmbeddedWindow e;
    QVERIFY(ui(e).tipLabel->text().isEmpty());
    e.wnd->SetFloatTipText(QString::fromUtf8("Kamera 2 – live"));
    QCOMPARE(ui(e).tipLabel->text(), QString::fromUtf8("Kamera 2 – live"));
    e.window()->SetFloatTipText("second");
    QCOMPARE(ui(e).tipLabel->text(), QString("second"));
}

void tst_FloatArea::numberLabelHoldsOneUntilSetNum()
{
    EmbeddedWindow e;
    QLabel* number = e.view()->numLabel();
    QCOMPARE(number->pos(), QPoint(10, 2));
    QCOMPARE(number->text(), QString("1"));
    QCOMPARE(number->alignment(), Qt::AlignCenter);
    QCOMPARE(number->styleSheet(), QString(kNumberStyle));

    e.wnd->setNumVisible(true);
    QVERIFY(number->isVisible());
    QCOMPARE(number->text(), QString("1"));
    // By its style sheet a disc of 28 pixels inside a border of one.
    QCOMPARE(number->minimumSize(), QSize(30, 30));
    QCOMPARE(number->maximumSize(), QSize(30, 30));
    QCOMPARE(number->size(), QSize(30, 30));
    e.wnd->setNum("12");
    QCOMPARE(number->text(), QString("12"));
    verifyShowSwitch(number, [&e](bool show) { e.wnd->setNumVisible(show); }, [&e] { e.wnd->setNumVisible(); });

    // Area and label lie at the same point.
    QCOMPARE(e.view()->floatArea()->pos(), number->pos());
}

void tst_FloatArea::areaKeepsItsPlaceAndSizeWhenTheViewResizes()
{
    EmbeddedWindow e;
    FloatAreaWidget* area = e.view()->floatArea();
    QCOMPARE(area->pos(), QPoint(10, 2));
    QCOMPARE(area->size(), QSize(535, 68));
    e.wnd->SetFloatAreaVisible(true);
    e.wnd->setNumVisible(true);
    QApplication::processEvents();
    QCOMPARE(area->geometry(), QRect(10, 2, 535, 68));
    e.window()->resize(900, 700);
    QApplication::processEvents();
    QCOMPARE(area->geometry(), QRect(10, 2, 535, 68));
    QCOMPARE(e.view()->numLabel()->pos(), QPoint(10, 2));
    e.window()->resize(300, 200);
    QApplication::processEvents();
    QCOMPARE(area->geometry(), QRect(10, 2, 535, 68));
}

void tst_FloatArea::formSizesSpacingsAndStyles()
{
    FloatAreaWidget area;
    const Ui_FloatAreaWidget& form = area.ui();
    QCOMPARE(area.size(), QSize(535, 68));
    QCOMPARE(area.styleSheet(), QString("background-color: transparent"));

    QCOMPARE(area.layout(), static_cast<QLayout*>(form.horizontalLayout_5));
    QCOMPARE(form.horizontalLayout_5->spacing(), 6);
    QCOMPARE(form.horizontalLayout_5->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(form.horizontalLayout_4->spacing(), 6);
    QCOMPARE(form.horizontalLayout->spacing(), 0);
    QCOMPARE(form.horizontalLayout_2->spacing(), 0);
    QCOMPARE(form.horizontalLayout_3->spacing(), 6);

    const QList<QToolButton*> buttons = {form.floatBtn, form.intoBtn,  form.zoominBtn,
                                         form.zoomoutBtn, form.adaptBtn, form.picturesizeBtn};
    const QList<int> iconSizes = {66, 66, 66, 66, 64, 64};
    for (int i = 0; i < buttons.size(); ++i) {
        QToolButton* b = buttons[i];
        QCOMPARE(b->parentWidget(), static_cast<QWidget*>(&area));
        QCOMPARE(b->minimumSize(), QSize(0, 0));
        QCOMPARE(b->maximumSize(), QSize(64, 64));
        QCOMPARE(b->iconSize(), QSize(iconSizes[i], iconSizes[i]));
        QVERIFY(!b->isCheckable());
        const QSizePolicy::Policy policy = b == form.intoBtn ? QSizePolicy::Expanding : QSizePolicy::Preferred;
        QCOMPARE(b->sizePolicy().horizontalPolicy(), policy);
        QCOMPARE(b->sizePolicy().verticalPolicy(), policy);
        QCOMPARE(b->sizePolicy().horizontalStretch(), 0);
        QCOMPARE(b->sizePolicy().verticalStretch(), 0);
        QCOMPARE(b->styleSheet(),
                 b == form.floatBtn ? QString("background-color: transparent") : QString());
    }
    QCOMPARE(form.intoBtn->popupMode(), QToolButton::DelayedPopup);
    QCOMPARE(form.intoBtn->toolButtonStyle(), Qt::ToolButtonIconOnly);

    QCOMPARE(form.horizontalSpacer->sizeHint(), QSize(196, 20));
    QCOMPARE(form.horizontalSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(form.horizontalSpacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(form.tipLabel->parentWidget(), static_cast<QWidget*>(&area));

    // The constructor hides the float and into buttons, and only those.
    QVERIFY(form.floatBtn->isHidden());
    QVERIFY(form.intoBtn->isHidden());
    QVERIFY(!form.zoominBtn->isHidden());
    QVERIFY(!form.zoomoutBtn->isHidden());
    QVERIFY(!form.adaptBtn->isHidden());
    QVERIFY(!form.picturesizeBtn->isHidden());
    QVERIFY(!form.tipLabel->isHidden());
}

void tst_FloatArea::formNamesAndTexts()
{
    FloatAreaWidget area;
    const Ui_FloatAreaWidget& form = area.ui();
    QCOMPARE(area.objectName(), QString("FloatAreaWidget"));
    QCOMPARE(area.windowTitle(), QString("FloatAreaWidget"));
    QCOMPARE(form.horizontalLayout_5->objectName(), QString("horizontalLayout_5"));
    QCOMPARE(form.horizontalLayout_4->objectName(), QString("horizontalLayout_4"));
    QCOMPARE(form.horizontalLayout->objectName(), QString("horizontalLayout"));
    QCOMPARE(form.horizontalLayout_2->objectName(), QString("horizontalLayout_2"));
    QCOMPARE(form.horizontalLayout_3->objectName(), QString("horizontalLayout_3"));
    QCOMPARE(form.floatBtn->objectName(), QString("floatBtn"));
    QCOMPARE(form.intoBtn->objectName(), QString("intoBtn"));
    QCOMPARE(form.zoominBtn->objectName(), QString("zoominBtn"));
    QCOMPARE(form.zoomoutBtn->objectName(), QString("zoomoutBtn"));
    QCOMPARE(form.adaptBtn->objectName(), QString("adaptBtn"));
    QCOMPARE(form.picturesizeBtn->objectName(), QString("picturesizeBtn"));
    QCOMPARE(form.tipLabel->objectName(), QString("tipLabel"));

    QCOMPARE(form.floatBtn->text(), QString("..."));
    QCOMPARE(form.intoBtn->text(), QString("..."));
    QCOMPARE(form.zoominBtn->text(), QString("..."));
    QCOMPARE(form.zoomoutBtn->text(), QString("..."));
    QCOMPARE(form.adaptBtn->text(), QString());
    QCOMPARE(form.picturesizeBtn->text(), QString());
    QCOMPARE(form.tipLabel->text(), QString());
    QVERIFY(form.floatBtn->toolTip().isEmpty());
}

void tst_FloatArea::formLayoutNesting()
{
    FloatAreaWidget area;
    const Ui_FloatAreaWidget& form = area.ui();
    QHBoxLayout* outer = form.horizontalLayout_5;
    QCOMPARE(outer->count(), 3);
    QCOMPARE(outer->itemAt(0)->layout(), static_cast<QLayout*>(form.horizontalLayout_4));
    QCOMPARE(outer->itemAt(1)->spacerItem(), form.horizontalSpacer);
    QCOMPARE(outer->itemAt(2)->widget(), static_cast<QWidget*>(form.tipLabel));

    QHBoxLayout* buttons = form.horizontalLayout_4;
    QCOMPARE(buttons->count(), 3);
    QCOMPARE(buttons->itemAt(0)->layout(), static_cast<QLayout*>(form.horizontalLayout));
    QCOMPARE(buttons->itemAt(1)->layout(), static_cast<QLayout*>(form.horizontalLayout_2));
    QCOMPARE(buttons->itemAt(2)->layout(), static_cast<QLayout*>(form.horizontalLayout_3));

    QCOMPARE(form.horizontalLayout->count(), 2);
    QCOMPARE(form.horizontalLayout->itemAt(0)->widget(), static_cast<QWidget*>(form.floatBtn));
    QCOMPARE(form.horizontalLayout->itemAt(1)->widget(), static_cast<QWidget*>(form.intoBtn));
    QCOMPARE(form.horizontalLayout_2->count(), 2);
    QCOMPARE(form.horizontalLayout_2->itemAt(0)->widget(), static_cast<QWidget*>(form.zoominBtn));
    QCOMPARE(form.horizontalLayout_2->itemAt(1)->widget(), static_cast<QWidget*>(form.zoomoutBtn));
    QCOMPARE(form.horizontalLayout_3->count(), 2);
    QCOMPARE(form.horizontalLayout_3->itemAt(0)->widget(), static_cast<QWidget*>(form.adaptBtn));
    QCOMPARE(form.horizontalLayout_3->itemAt(1)->widget(), static_cast<QWidget*>(form.picturesizeBtn));
}

void tst_FloatArea::formKeepsAnObjectNameItAlreadyHas()
{
    QWidget named;
    named.setObjectName("host");
    Ui_FloatAreaWidget form;
    form.setupUi(&named);
    QCOMPARE(named.objectName(), QString("host"));
    QCOMPARE(named.size(), QSize(535, 68));
    QCOMPARE(form.zoominBtn->parentWidget(), &named);
}

void tst_FloatArea::buttonIconsLoadFromTheirPaths()
{
    FloatAreaWidget area;
    const Ui_FloatAreaWidget& form = area.ui();
    const QList<QPair<QToolButton*, QString>> icons = {
        {form.floatBtn, QString::fromUtf8(":/res/图像窗口关闭.png")},
        {form.intoBtn, QString::fromUtf8(":/res/图像窗口回归.png")},
        {form.zoominBtn, QString::fromUtf8(":/res/放大.png")},
        {form.zoomoutBtn, QString::fromUtf8(":/res/缩小.png")},
        {form.adaptBtn, QString::fromUtf8(":/res/自适应.png")},
        {form.picturesizeBtn, QString::fromUtf8(":/res/1：1.png")},
    };
    QList<QImage> seen;
    for (const auto& entry : icons) {
        QToolButton* button = entry.first;
        const QString& path = entry.second;
        QVERIFY2(QFile::exists(path), qPrintable(path));
        const QImage file(path);
        QVERIFY2(!file.isNull(), qPrintable(path));

        const QIcon icon = button->icon();
        QVERIFY2(!icon.isNull(), qPrintable(button->objectName()));
        QVERIFY2(!icon.availableSizes().isEmpty(), qPrintable(button->objectName()));
        QVERIFY(icon.availableSizes().contains(file.size()));
        // The button shows that very file. An icon keeps its picture as a
        // pixmap (premultiplied alpha), and the rounding of that round trip
        // depends on the CPU's conversion path; so the file goes through the
        // same pixmap round trip before the bit-exact comparison.
        const QImage shown = icon.pixmap(file.size()).toImage().convertToFormat(QImage::Format_ARGB32);
        const QImage fileAsPixmap = QPixmap::fromImage(file).toImage().convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(shown, fileAsPixmap);
        seen << shown;
    }
    for (int i = 0; i < seen.size(); ++i)
        for (int j = i + 1; j < seen.size(); ++j)
            QVERIFY2(seen[i] != seen[j], qPrintable(QString("icons %1 and %2 are alike").arg(i).arg(j)));
}

void tst_FloatArea::eachButtonEmitsItsOwnSignal()
{
    FloatAreaWidget area;
    const Ui_FloatAreaWidget& form = area.ui();
    area.show();
    QStringList log;
    connect(&area, &FloatAreaWidget::floatBtnClicked, this, [&](bool c) { log << QString("float(%1)").arg(c); });
    connect(&area, &FloatAreaWidget::intoBtnClicked, this, [&](bool c) { log << QString("into(%1)").arg(c); });
    connect(&area, &FloatAreaWidget::zoomInClicked, this, [&](bool c) { log << QString("zoomIn(%1)").arg(c); });
    connect(&area, &FloatAreaWidget::zoomOutClicked, this, [&](bool c) { log << QString("zoomOut(%1)").arg(c); });
    connect(&area, &FloatAreaWidget::adaptClicked, this, [&](bool c) { log << QString("adapt(%1)").arg(c); });
    connect(&area, &FloatAreaWidget::fitClicked, this, [&](bool c) { log << QString("fit(%1)").arg(c); });

    area.setIntoBtnVisible(true);
    click(form.intoBtn);
    click(form.zoominBtn);
    click(form.zoomoutBtn);
    click(form.adaptBtn);
    click(form.picturesizeBtn);
    form.floatBtn->click();
    QCOMPARE(log, QStringList({"into(0)", "zoomIn(0)", "zoomOut(0)", "adapt(0)", "fit(0)", "float(0)"}));
}

void tst_FloatArea::checkableButtonWouldReportTwice()
{
    FloatAreaWidget area;
    area.show();
    QSignalSpy zoomIn(&area, &FloatAreaWidget::zoomInClicked);
    click(area.ui().zoominBtn);
    QCOMPARE(zoomIn.count(), 1);

    // Its toggled signal is wired to the same signal as its click.
    area.ui().zoominBtn->setCheckable(true);
    zoomIn.clear();
    click(area.ui().zoominBtn);
    QCOMPARE(zoomIn.count(), 2);
    QCOMPARE(zoomIn.at(0).at(0).toBool(), true);
    QCOMPARE(zoomIn.at(1).at(0).toBool(), true);
}

QTEST_MAIN(tst_FloatArea)
#include "tst_floatarea.moc"
