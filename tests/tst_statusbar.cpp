// The status line under the picture: its text for positions inside and outside
// the picture, what clearing the background does to it, and the bar itself.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "statusbar.h"
#include "testkit.h"

#include <QTranslator>
#include <QVBoxLayout>

#include <opencv2/core.hpp>

namespace {

// The worked example: 640 x 480, pixel (12, 30) is red 10, green 20, blue 30.
VorImage examplePicture()
{
    cv::Mat mat(480, 640, CV_8UC3, cv::Scalar(1, 2, 3));
    mat.at<cv::Vec3b>(30, 12) = cv::Vec3b(30, 20, 10); // blue, green, red
    return VorImage(mat);
}

QImage exampleQImage()
{
    QImage image(640, 480, QImage::Format_RGB32);
    image.fill(qRgb(3, 2, 1));
    image.setPixel(12, 30, qRgb(10, 20, 30));
    return image;
}

// Translates every text, to show that the line does not go through tr.
class EverythingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char*, const char*, int) const override
    {
        return QStringLiteral("translated");
    }
};

} // namespace

class StatusbarTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void readsInfoBeforeAnyMouseEventOverAPicture();
    void workedExampleLine();
    void operatorMoveOverThePixelReadsIt();
    void outsideThePictureShowsPositionAsItIsAndGrey();
    void zoomIsPrintedWithThreeDecimals();
    void lineStaysUntilTheNextMouseEvent();
    void lineIsWrittenAfterTheHostHearsTheMove();
    void clearInVorImageModeFreezesTheLine();
    void clearInQImageModeShowsOnePixelPicture();
    void sixteenBitPictureReadsDisplayValues();
    void sizeComesFromThePictureOfTheMode();
    void updateInformationTruncatesAndPrintsRedGreenBlue();
    void lineIsNotTranslated();
    void barGeometryFollowsTheWindow();
    void barLooksAsBuilt();
    void destroyRemovesTheInnerLabel();
};

void StatusbarTest::init()
{
    CMainWindow::s_scale = 1.0f;
}

void StatusbarTest::readsInfoBeforeAnyMouseEventOverAPicture()
{
    EmbeddedWindow fixture(QSize(900, 700));
    Statusbar* bar = fixture.window()->GetStatusbar();
    QCOMPARE(bar->infoText(), QString("Info:"));
    QCOMPARE(bar->infoLabel()->text(), QString("Info:"));

    // Moves without a picture do not count.
    Kit::moveToViewport(fixture.view(), QPoint(20, 20));
    QCOMPARE(bar->infoText(), QString("Info:"));

    // A VorImage background alone does not write the line either.
    QCOMPARE(fixture.setPicture(examplePicture()), 0L);
    QCOMPARE(bar->infoText(), QString("Info:"));
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    QCOMPARE(bar->infoText(), QString("Info:"));

    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QVERIFY(bar->infoText() != QString("Info:"));
}

void StatusbarTest::workedExampleLine()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.0), 0L);
    // The view reports a position between pixels as a move over (12.5, 30).
    emit fixture.view()->updateMousePosition(QPointF(12.5, 30.0));
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(),
             QString("Information: 640X480 POS(12.5, 30.0) RGB(10, 20, 30) ZOOM:1.000"));
}

void StatusbarTest::operatorMoveOverThePixelReadsIt()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.0), 0L);
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(),
             QString("Information: 640X480 POS(12.0, 30.0) RGB(10, 20, 30) ZOOM:1.000"));

    // The same from a QImage background.
    QCOMPARE(fixture.showPicture(exampleQImage(), 1.0), 0L);
    Kit::moveTo(fixture.view(), QPointF(13, 30));
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(),
             QString("Information: 640X480 POS(12.0, 30.0) RGB(10, 20, 30) ZOOM:1.000"));
}

void StatusbarTest::outsideThePictureShowsPositionAsItIsAndGrey()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.0), 0L);
    Statusbar* bar = fixture.window()->GetStatusbar();
    Kit::moveTo(fixture.view(), QPointF(-5, -7));
    QCOMPARE(bar->infoText(), QString("Information: 640X480 POS(-5.0, -7.0) RGB(153, 153, 153) ZOOM:1.000"));
    Kit::moveTo(fixture.view(), QPointF(645, 100));
    QCOMPARE(bar->infoText(), QString("Information: 640X480 POS(645.0, 100.0) RGB(153, 153, 153) ZOOM:1.000"));
}

void StatusbarTest::zoomIsPrintedWithThreeDecimals()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.1), 0L);
    emit fixture.view()->updateMousePosition(QPointF(12.5, 30.0));
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(),
             QString("Information: 640X480 POS(12.5, 30.0) RGB(10, 20, 30) ZOOM:1.100"));
    QCOMPARE(fixture.wnd->zoom(0.5), 0L);
    emit fixture.view()->updateMousePosition(QPointF(-0.24, 700.76));
    QCOMPARE(fixture.window()->GetStatusbar()->infoText(),
             QString("Information: 640X480 POS(-0.2, 700.8) RGB(153, 153, 153) ZOOM:0.500"));
}

void StatusbarTest::lineStaysUntilTheNextMouseEvent()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.0), 0L);
    Statusbar* bar = fixture.window()->GetStatusbar();
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    const QString line = bar->infoText();
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(fixture.wnd->zoom(3.0), 0L);
    Kit::pressAt(fixture.view(), QPointF(1, 1));
    Kit::releaseAt(fixture.view(), QPointF(1, 1));
    // The scene repaint a millisecond after the release writes no line.
    Kit::letQueuedCallsRun();
    QCOMPARE(bar->infoText(), line);
}

void StatusbarTest::lineIsWrittenAfterTheHostHearsTheMove()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.0), 0L);
    Statusbar* bar = fixture.window()->GetStatusbar();
    QString atMove;
    QString atInfo;
    connect(fixture.wnd.get(), &KESImageWnd::mouseMove, this, [&] { atMove = bar->infoText(); });
    connect(fixture.wnd.get(), &KESImageWnd::imgInfo, this, [&] { atInfo = bar->infoText(); });
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QCOMPARE(atMove, QString("Info:"));
    QCOMPARE(atInfo, QString("Info:"));
    QCOMPARE(bar->infoText(), QString("Information: 640X480 POS(12.0, 30.0) RGB(10, 20, 30) ZOOM:1.000"));
}

void StatusbarTest::clearInVorImageModeFreezesTheLine()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(examplePicture(), 1.0), 0L);
    Statusbar* bar = fixture.window()->GetStatusbar();
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    const QString line("Information: 640X480 POS(12.0, 30.0) RGB(10, 20, 30) ZOOM:1.000");
    QCOMPARE(bar->infoText(), line);

    QSignalSpy moves(fixture.wnd.get(), &KESImageWnd::mouseMove);
    QCOMPARE(fixture.wnd->clearBackground(), 0L);
    QCOMPARE(bar->infoText(), line);
    Kit::moveTo(fixture.view(), QPointF(100, 200));
    Kit::moveTo(fixture.view(), QPointF(-3, 4));
    QCOMPARE(bar->infoText(), line);
    QCOMPARE(moves.count(), 0);
}

void StatusbarTest::clearInQImageModeShowsOnePixelPicture()
{
    EmbeddedWindow fixture(QSize(900, 700));
    QCOMPARE(fixture.showPicture(exampleQImage(), 1.0), 0L);
    Statusbar* bar = fixture.window()->GetStatusbar();
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QCOMPARE(bar->infoText(), QString("Information: 640X480 POS(12.0, 30.0) RGB(10, 20, 30) ZOOM:1.000"));

    QCOMPARE(fixture.wnd->clearBackground(), 0L);
    Kit::moveTo(fixture.view(), QPointF(5, 5));
    QCOMPARE(bar->infoText(), QString("Information: 1X1 POS(5.0, 5.0) RGB(153, 153, 153) ZOOM:1.000"));
    // The one pixel may hold any value.
    Kit::moveTo(fixture.view(), QPointF(0, 0));
    QVERIFY2(QRegularExpression("^Information: 1X1 POS\\(0\\.0, 0\\.0\\) RGB\\(\\d+, \\d+, \\d+\\) ZOOM:1\\.000$")
                 .match(bar->infoText())
                 .hasMatch(),
             qPrintable(bar->infoText()));
}

void StatusbarTest::sixteenBitPictureReadsDisplayValues()
{
    EmbeddedWindow fixture(QSize(900, 700));
    cv::Mat mat(40, 50, CV_16UC1, cv::Scalar(0));
    mat.at<ushort>(3, 4) = 65534;
    mat.at<ushort>(3, 5) = 65535;
    mat.at<ushort>(3, 6) = 128;
    VorImage picture(mat);
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    Statusbar* bar = fixture.window()->GetStatusbar();
    Kit::moveTo(fixture.view(), QPointF(4, 3));
    QCOMPARE(bar->infoText(), QString("Information: 50X40 POS(4.0, 3.0) RGB(254, 254, 254) ZOOM:1.000"));
    Kit::moveTo(fixture.view(), QPointF(5, 3));
    QCOMPARE(bar->infoText(), QString("Information: 50X40 POS(5.0, 3.0) RGB(255, 255, 255) ZOOM:1.000"));
    Kit::moveTo(fixture.view(), QPointF(6, 3));
    QCOMPARE(bar->infoText(), QString("Information: 50X40 POS(6.0, 3.0) RGB(0, 0, 0) ZOOM:1.000"));

    // Three channels of 16 bits, in blue, green, red order.
    cv::Mat colour(20, 30, CV_16UC3, cv::Scalar(0, 0, 0));
    colour.at<cv::Vec3w>(2, 3) = cv::Vec3w(65535, 65534, 128);
    VorImage colourPicture(colour);
    QCOMPARE(fixture.wnd->setBackground(colourPicture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    Kit::moveTo(fixture.view(), QPointF(3, 2));
    QCOMPARE(bar->infoText(), QString("Information: 30X20 POS(3.0, 2.0) RGB(0, 254, 255) ZOOM:1.000"));
}

void StatusbarTest::sizeComesFromThePictureOfTheMode()
{
    EmbeddedWindow fixture(QSize(900, 700));
    ImageLayer* layer = fixture.scene()->GetImageLayer();
    Statusbar* bar = fixture.window()->GetStatusbar();
    VorImage picture = examplePicture();
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);

    // VorImage mode: the size is the stored VorImage's, here one still queued,
    // while the pixel comes from the picture on show.
    VorImage queued(cv::Mat(40, 50, CV_8UC3, cv::Scalar(0, 0, 0)));
    QVERIFY(layer->LoadVorImage(&queued));
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QCOMPARE(bar->infoText(), QString("Information: 50X40 POS(12.0, 30.0) RGB(10, 20, 30) ZOOM:1.000"));

    // QImage mode: the size is the shown QImage's; the stored VorImage stays.
    QImage image(70, 60, QImage::Format_RGB32);
    image.fill(qRgb(4, 5, 6));
    QCOMPARE(fixture.wnd->setBackground(image), 0L);
    QVERIFY(layer->GetVorImage());
    QCOMPARE(fixture.wnd->zoom(1.0), 0L);
    Kit::moveTo(fixture.view(), QPointF(12, 30));
    QCOMPARE(bar->infoText(), QString("Information: 70X60 POS(12.0, 30.0) RGB(4, 5, 6) ZOOM:1.000"));
}

void StatusbarTest::updateInformationTruncatesAndPrintsRedGreenBlue()
{
    Statusbar bar(nullptr);
    bar.create(0, true, true);
    // Fields in declaration order: size, position, red, blue, green, zoom.
    Statusbar::StatusInformation info{QSize(7, 9), QPointF(1.26, -2.74), 10.9, 30.9, 20.9, 2.0f};
    QCOMPARE(info.blue, 30.9);
    QCOMPARE(info.green, 20.9);
    bar.updateInformation(info);
    QCOMPARE(bar.infoText(), QString("Information: 7X9 POS(1.3, -2.7) RGB(10, 20, 30) ZOOM:2.000"));

    info.red = -0.9;
    info.green = 255.99;
    info.blue = 0.0;
    info.zoom = 0.0006f;
    bar.updateInformation(info);
    QCOMPARE(bar.infoText(), QString("Information: 7X9 POS(1.3, -2.7) RGB(0, 255, 0) ZOOM:0.001"));
}

void StatusbarTest::lineIsNotTranslated()
{
    EverythingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(QCoreApplication::translate("Statusbar", "Information"), QString("translated"));
    Statusbar bar(nullptr);
    bar.create(0, true, true);
    Statusbar::StatusInformation info;
    info.imageSize = QSize(2, 3);
    info.pos = QPointF(1, 1);
    info.zoom = 1.0f;
    bar.updateInformation(info);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(bar.infoText(), QString("Information: 2X3 POS(1.0, 1.0) RGB(0, 0, 0) ZOOM:1.000"));
}

void StatusbarTest::barGeometryFollowsTheWindow()
{
    EmbeddedWindow fixture(QSize(640, 480));
    Statusbar* bar = fixture.window()->GetStatusbar();
    QCOMPARE(bar->parentWidget(), static_cast<QWidget*>(fixture.window()));
    QCOMPARE(bar->geometry(), QRect(0, 479 - 30, 640, 30));
    QVERIFY(bar->isVisible());
    QCOMPARE(fixture.wnd->move(0, 0, 333, 222), 0L);
    QCOMPARE(bar->geometry(), QRect(0, 221 - 30, 333, 30));

    QCOMPARE(fixture.wnd->showStatusbar(false), true);
    QVERIFY(!bar->isVisible());
    QCOMPARE(fixture.wnd->showStatusbar(true), true);
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->geometry(), QRect(0, 221 - 30, 333, 30));
}

void StatusbarTest::barLooksAsBuilt()
{
    EmbeddedWindow fixture(QSize(640, 480));
    Statusbar* bar = fixture.window()->GetStatusbar();
    QCOMPARE(bar->frameStyle(), 50);
    QLabel* label = bar->infoLabel();
    QVERIFY(label);
    QCOMPARE(label->parentWidget(), static_cast<QWidget*>(bar));
    QCOMPARE(label->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(label->font().family(), QString("Arial"));
    // Size and weight are those the label would have without the font.
    QCOMPARE(label->font().pointSizeF(), bar->font().pointSizeF());
    QCOMPARE(label->font().weight(), bar->font().weight());
    QCOMPARE(label->font().italic(), false);

    auto* layout = qobject_cast<QVBoxLayout*>(bar->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->spacing(), 0);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0)->widget(), static_cast<QWidget*>(label));
    layout->activate();
    QCOMPARE(label->geometry(), bar->contentsRect());

    // A fresh bar has no label until create.
    Statusbar fresh(nullptr);
    QCOMPARE(fresh.infoLabel(), static_cast<QLabel*>(nullptr));
    QCOMPARE(fresh.infoText(), QString());
}

void StatusbarTest::destroyRemovesTheInnerLabel()
{
    Statusbar bar(nullptr);
    bar.create(0, true, true);
    QPointer<QLabel> label = bar.infoLabel();
    QVERIFY(label);
    bar.destroy(true, true);
    QVERIFY(label.isNull());
    QCOMPARE(bar.infoLabel(), static_cast<QLabel*>(nullptr));
    bar.destroy(true, true);
    QCOMPARE(bar.infoLabel(), static_cast<QLabel*>(nullptr));
}

QTEST_MAIN(StatusbarTest)
#include "tst_statusbar.moc"
