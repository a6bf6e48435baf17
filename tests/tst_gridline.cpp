// The grid-line reticle of the image view: its JSON text in both directions,
// and the mesh it paints in viewport pixels, checked on the pixels of a grab of
// the viewport: where the lines lie, their colour and width, gaps that paint
// nothing, and its place in the paint order above the scene items and under the
// cross-line reticle.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "testkit.h"

#include <QElapsedTimer>
#include <QGraphicsRectItem>

#include <QJsonDocument>
#include <QJsonObject>
#include <QScrollBar>

#include <climits>

namespace {

const QRgb kGrey = qRgb(153, 153, 153);
const QRgb kRed = qRgb(255, 0, 0);
const QRgb kBlue = qRgb(0, 0, 255);
const QRgb kYellow = qRgb(255, 255, 0);
const QString kDefaultText = "{\"color\":\"255,0,0,255\",\"gap\":10,\"lineWidth\":1,\"visible\":false}";

QString gridText(ImageCtrlView* view)
{
    QString text;
    view->getGridLineInfo(text);
    return text;
}

QJsonObject gridObject(ImageCtrlView* view)
{
    return QJsonDocument::fromJson(gridText(view).toUtf8()).object();
}

QImage grab(ImageCtrlView* view)
{
    return Kit::grabViewport(view);
}

std::unique_ptr<StandaloneView> makeView(QSize viewport)
{
    auto v = std::make_unique<StandaloneView>(QSize(640, 480));
    v->setViewportSize(viewport);
    return v;
}

bool columnIs(const QImage& image, int x, QRgb colour)
{
    for (int y = 0; y < image.height(); ++y)
        if (image.pixel(x, y) != colour)
            return false;
    return true;
}

bool rowIs(const QImage& image, int y, QRgb colour)
{
    for (int x = 0; x < image.width(); ++x)
        if (image.pixel(x, y) != colour)
            return false;
    return true;
}

// The columns whose every pixel has the colour, and likewise the rows.
QList<int> fullColumns(const QImage& image, QRgb colour)
{
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x)
        if (columnIs(image, x, colour))
            columns << x;
    return columns;
}

QList<int> fullRows(const QImage& image, QRgb colour)
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y)
        if (rowIs(image, y, colour))
            rows << y;
    return rows;
}

} // namespace

using Kit::countColour;

class tst_GridLine : public QObject
{
    Q_OBJECT

private slots:
    // The text
    void defaultTextReadsColourGapWidthAndVisibility();
    void textGoesRoundToSameState_data();
    void textGoesRoundToSameState();
    void eachKeyAloneChangesOnlyItself();
    void colourNeedsExactlyFourParts_data();
    void colourNeedsExactlyFourParts();
    void keysOfWrongTypeStoreTheirDefaults();
    void visibleAsNumberHides();
    void gapOfZeroOrBelowIsStoredAndReported_data();
    void gapOfZeroOrBelowIsStoredAndReported();
    void nonObjectTextChangesNothingAndDoesNotRepaint_data();
    void nonObjectTextChangesNothingAndDoesNotRepaint();
    void objectTextRepaints();
    void repeatedKeyTakesItsLastValue();

    // Painting
    void hiddenGridPaintsNothing();
    void linesLieEveryGapFromTopLeftAndNotOnEdges();
    void gapWiderThanViewportPaintsNothing_data();
    void gapWiderThanViewportPaintsNothing();
    void gapOfOnePaintsEveryRowAndColumn();
    void gapOfZeroOrBelowPaintsNoLinesAndEnds_data();
    void gapOfZeroOrBelowPaintsNoLinesAndEnds();
    void lineWidthWidensLines();
    void translucentColourBlendsOverBackground();
    void gridStaysOnViewportWhenPictureScrollsAndZooms();
    void gridIsPaintedAboveSceneItems();
    void gridIsPaintedUnderCrossLineReticle();

    // The facade
    void facadeCallsWithoutWindowReturnMinusOne();
    void facadeCallsForwardToViewAndReturnZero();
};

// ---------------------------------------------------------------------------
// The text

void tst_GridLine::defaultTextReadsColourGapWidthAndVisibility()
{
    auto v = makeView(QSize(100, 50));
    QCOMPARE(gridText(v->view), kDefaultText);
}

void tst_GridLine::textGoesRoundToSameState_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("defaults") << kDefaultText;
    QTest::newRow("all set") << "{\"color\":\"1,2,3,4\",\"gap\":17,\"lineWidth\":3,\"visible\":true}";
    QTest::newRow("gap 0") << "{\"color\":\"0,0,0,255\",\"gap\":0,\"lineWidth\":1,\"visible\":true}";
    QTest::newRow("negative numbers") << "{\"color\":\"9,8,7,6\",\"gap\":-5,\"lineWidth\":-2,\"visible\":false}";
}

void tst_GridLine::textGoesRoundToSameState()
{
    QFETCH(QString, text);
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo(text);
    const QString first = gridText(v->view);
    QCOMPARE(first, text);

    auto w = makeView(QSize(100, 50));
    w->view->setGridLineInfo(first);
    QCOMPARE(gridText(w->view), first);
    w->view->setGridLineInfo(first);
    QCOMPARE(gridText(w->view), first);
}

void tst_GridLine::eachKeyAloneChangesOnlyItself()
{
    auto v = makeView(QSize(100, 50));
    QJsonObject expected = gridObject(v->view);

    v->view->setGridLineInfo("{\"visible\":true}");
    expected["visible"] = true;
    QCOMPARE(gridObject(v->view), expected);

    v->view->setGridLineInfo("{\"color\":\"10,20,30,40\"}");
    expected["color"] = "10,20,30,40";
    QCOMPARE(gridObject(v->view), expected);

    v->view->setGridLineInfo("{\"lineWidth\":4}");
    expected["lineWidth"] = 4;
    QCOMPARE(gridObject(v->view), expected);

    v->view->setGridLineInfo("{\"gap\":25}");
    expected["gap"] = 25;
    QCOMPARE(gridObject(v->view), expected);

    // Unknown keys are no concern of the grid.
    v->view->setGridLineInfo("{\"mode\":1,\"point\":\"1,2\",\"circleRadius\":3}");
    QCOMPARE(gridObject(v->view), expected);
}

void tst_GridLine::colourNeedsExactlyFourParts_data()
{
    QTest::addColumn<QString>("colour");
    QTest::addColumn<QString>("stored");
    QTest::newRow("three parts") << "0,0,0" << "255,0,0,255";
    QTest::newRow("five parts") << "0,0,0,0,0" << "255,0,0,255";
    QTest::newRow("empty") << "" << "255,0,0,255";
    QTest::newRow("four parts") << "0,0,0,255" << "0,0,0,255";
    QTest::newRow("words count 0") << "x,y,z,w" << "0,0,0,0";
    QTest::newRow("empty parts count 0") << ",,," << "0,0,0,0";
}

void tst_GridLine::colourNeedsExactlyFourParts()
{
    QFETCH(QString, colour);
    QFETCH(QString, stored);
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo(QString("{\"color\":\"%1\"}").arg(colour));
    QCOMPARE(gridObject(v->view).value("color").toString(), stored);
}

void tst_GridLine::keysOfWrongTypeStoreTheirDefaults()
{
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true,\"lineWidth\":3,\"gap\":7}");
    v->view->setGridLineInfo("{\"visible\":\"true\",\"lineWidth\":\"3\",\"gap\":[7],\"color\":255}");
    const QJsonObject object = gridObject(v->view);
    QCOMPARE(object.value("visible"), QJsonValue(false));
    QCOMPARE(object.value("lineWidth"), QJsonValue(0));
    QCOMPARE(object.value("gap"), QJsonValue(0));
    QCOMPARE(object.value("color").toString(), QString("255,0,0,255"));
}

void tst_GridLine::visibleAsNumberHides()
{
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true}");
    QCOMPARE(gridObject(v->view).value("visible"), QJsonValue(true));
    v->view->setGridLineInfo("{\"visible\":1}");
    QCOMPARE(gridObject(v->view).value("visible"), QJsonValue(false));
}

void tst_GridLine::gapOfZeroOrBelowIsStoredAndReported_data()
{
    QTest::addColumn<int>("gap");
    QTest::newRow("zero") << 0;
    QTest::newRow("minus one") << -1;
    QTest::newRow("minus ten") << -10;
    QTest::newRow("most negative") << int(INT_MIN);
}

void tst_GridLine::gapOfZeroOrBelowIsStoredAndReported()
{
    QFETCH(int, gap);
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo(QString("{\"visible\":true,\"gap\":%1}").arg(gap));
    QCOMPARE(gridObject(v->view).value("gap"), QJsonValue(gap));
    QCOMPARE(gridText(v->view),
             QString("{\"color\":\"255,0,0,255\",\"gap\":%1,\"lineWidth\":1,\"visible\":true}").arg(gap));
}

void tst_GridLine::nonObjectTextChangesNothingAndDoesNotRepaint_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("garbage") << "gap=5";
    QTest::newRow("empty") << "";
    QTest::newRow("array") << "[{\"visible\":true}]";
    QTest::newRow("null") << "null";
    QTest::newRow("cut short") << "{\"visible\":true,\"gap\":";
}

void tst_GridLine::nonObjectTextChangesNothingAndDoesNotRepaint()
{
    QFETCH(QString, text);
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"gap\":13}");
    const QString before = gridText(v->view);
    grab(v->view);
    Kit::flushPaints();
    Kit::PaintCounter counter(v->view->viewport());
    v->view->setGridLineInfo(text);
    Kit::letQueuedCallsRun();
    QCOMPARE(counter.paints, 0);
    QCOMPARE(gridText(v->view), before);
}

void tst_GridLine::objectTextRepaints()
{
    auto v = makeView(QSize(100, 50));
    grab(v->view);
    Kit::flushPaints();
    Kit::PaintCounter counter(v->view->viewport());
    v->view->setGridLineInfo("{}");
    QTRY_VERIFY(counter.paints > 0);
}

void tst_GridLine::repeatedKeyTakesItsLastValue()
{
    // Earlier values that are arrays or objects are dropped without a leak,
    // which the sanitizer build checks.
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"gap\":[1,2],\"gap\":{\"a\":[3],\"a\":4},\"gap\":12,\"visible\":{\"c\":1},"
                             "\"visible\":true}");
    QCOMPARE(gridText(v->view), QString("{\"color\":\"255,0,0,255\",\"gap\":12,\"lineWidth\":1,\"visible\":true}"));
    v->view->setGridLineInfo("{\"gap\":7,\"gap\":[7]}");
    QCOMPARE(gridObject(v->view).value("gap"), QJsonValue(0));
}

// ---------------------------------------------------------------------------
// Painting

void tst_GridLine::hiddenGridPaintsNothing()
{
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"gap\":5}");
    const QImage image = grab(v->view);
    QCOMPARE(countColour(image, kGrey), 100 * 50);
}

void tst_GridLine::linesLieEveryGapFromTopLeftAndNotOnEdges()
{
    auto v = makeView(QSize(100, 50));
    QCOMPARE(v->view->viewport()->size(), QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":10}");
    const QImage image = grab(v->view);
    QCOMPARE(image.size(), QSize(100, 50));

    QCOMPARE(fullColumns(image, kRed), (QList<int>{10, 20, 30, 40, 50, 60, 70, 80, 90}));
    QCOMPARE(fullRows(image, kRed), (QList<int>{10, 20, 30, 40}));
    // Nothing on the edges, nothing between the lines.
    QCOMPARE(image.pixel(0, 5), kGrey);
    QCOMPARE(image.pixel(5, 0), kGrey);
    QCOMPARE(image.pixel(99, 5), kGrey);
    QCOMPARE(image.pixel(5, 49), kGrey);
    QCOMPARE(image.pixel(0, 0), kGrey);
    for (int y = 0; y < 50; ++y)
        for (int x = 0; x < 100; ++x) {
            const bool onLine = (x % 10 == 0 && x != 0) || (y % 10 == 0 && y != 0);
            QCOMPARE(image.pixel(x, y), onLine ? kRed : kGrey);
        }
}

void tst_GridLine::gapWiderThanViewportPaintsNothing_data()
{
    QTest::addColumn<int>("gap");
    QTest::newRow("just wider than the viewport") << 101;
    QTest::newRow("the viewport's width") << 100;
    QTest::newRow("huge") << 1000000;
    QTest::newRow("largest") << int(INT_MAX);
}

void tst_GridLine::gapWiderThanViewportPaintsNothing()
{
    QFETCH(int, gap);
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo(QString("{\"visible\":true,\"gap\":%1}").arg(gap));
    const QImage image = grab(v->view);
    QCOMPARE(countColour(image, kGrey), 100 * 50);

    // A gap between the two sides of the viewport paints vertical lines only.
    v->view->setGridLineInfo("{\"gap\":60}");
    const QImage between = grab(v->view);
    QCOMPARE(fullColumns(between, kRed), QList<int>{60});
    QCOMPARE(fullRows(between, kRed), QList<int>{});
    QCOMPARE(countColour(between, kRed), 50);
}

void tst_GridLine::gapOfOnePaintsEveryRowAndColumn()
{
    // Lines at 1, 2, ... in both directions: every row and every column carries
    // line pixels, and only the corner pixel (0, 0), on neither line, is left.
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":1}");
    const QImage image = grab(v->view);
    QCOMPARE(fullColumns(image, kRed).size(), 99);
    QCOMPARE(fullRows(image, kRed).size(), 49);
    QCOMPARE(image.pixel(0, 0), kGrey);
    QCOMPARE(countColour(image, kRed), 100 * 50 - 1);
}

void tst_GridLine::gapOfZeroOrBelowPaintsNoLinesAndEnds_data()
{
    QTest::addColumn<int>("gap");
    QTest::newRow("zero") << 0;
    QTest::newRow("minus one") << -1;
    QTest::newRow("minus seven") << -7;
    QTest::newRow("most negative") << int(INT_MIN);
}

void tst_GridLine::gapOfZeroOrBelowPaintsNoLinesAndEnds()
{
    QFETCH(int, gap);
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo(QString("{\"visible\":true,\"lineWidth\":3,\"gap\":%1}").arg(gap));
    QElapsedTimer timer;
    timer.start();
    const QImage image = grab(v->view);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(countColour(image, kGrey), 100 * 50);
    QCOMPARE(gridObject(v->view).value("gap"), QJsonValue(gap));

    // The cross-line reticle, painted after the grid, is still painted.
    v->view->setCrossLineInfo("{\"visible\":true,\"point\":\"50,25\",\"color\":\"0,0,255,255\"}");
    const QImage withCross = grab(v->view);
    QCOMPARE(withCross.pixel(5, 25), kBlue);
    QCOMPARE(withCross.pixel(50, 2), kBlue);
}

void tst_GridLine::lineWidthWidensLines()
{
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":20,\"lineWidth\":3}");
    const QImage image = grab(v->view);
    // Three pixels wide about each line position.
    QCOMPARE(fullColumns(image, kRed), (QList<int>{19, 20, 21, 39, 40, 41, 59, 60, 61, 79, 80, 81}));
    QCOMPARE(fullRows(image, kRed), (QList<int>{19, 20, 21, 39, 40, 41}));
    QCOMPARE(image.pixel(10, 10), kGrey);
}

void tst_GridLine::translucentColourBlendsOverBackground()
{
    // Blue at alpha 128 over grey 153: 153 * 127/255 = 76.2, 255 * 128/255 +
    // 76.2 = 204.2.
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":10,\"color\":\"0,0,255,128\"}");
    const QImage image = grab(v->view);
    const QRgb line = image.pixel(10, 5);
    QVERIFY2(qAbs(qRed(line) - 76) <= 1 && qAbs(qGreen(line) - 76) <= 1 && qAbs(qBlue(line) - 204) <= 1,
             qPrintable(QColor(line).name()));
    // Where two lines cross the colour is laid twice.
    const QRgb crossing = image.pixel(10, 10);
    QVERIFY(qBlue(crossing) > qBlue(line));
    QCOMPARE(image.pixel(5, 5), kGrey);
}

void tst_GridLine::gridStaysOnViewportWhenPictureScrollsAndZooms()
{
    auto v = makeView(QSize(200, 150));
    QImage picture(800, 600, QImage::Format_RGB32);
    picture.fill(qRgb(0, 160, 0));
    QCOMPARE(v->view->DisplayImage(picture), 0L);
    v->view->Zoom(1.0);
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":30}");
    const QList<int> columns = {30, 60, 90, 120, 150, 180};
    const QList<int> rows = {30, 60, 90, 120};
    QCOMPARE(fullColumns(grab(v->view), kRed), columns);
    QCOMPARE(fullRows(grab(v->view), kRed), rows);

    v->view->horizontalScrollBar()->setValue(v->view->horizontalScrollBar()->value() + 17);
    v->view->verticalScrollBar()->setValue(v->view->verticalScrollBar()->value() + 11);
    QCOMPARE(fullColumns(grab(v->view), kRed), columns);
    QCOMPARE(fullRows(grab(v->view), kRed), rows);

    v->view->Zoom(2.5);
    QCOMPARE(fullColumns(grab(v->view), kRed), columns);
    QCOMPARE(fullRows(grab(v->view), kRed), rows);
}

void tst_GridLine::gridIsPaintedAboveSceneItems()
{
    auto v = makeView(QSize(100, 50));
    QImage picture(100, 50, QImage::Format_RGB32);
    picture.fill(qRgb(0, 160, 0));
    QCOMPARE(v->view->DisplayImage(picture), 0L);
    v->view->Zoom(1.0);
    auto* item = new QGraphicsRectItem(-1000, -1000, 3000, 3000);
    item->setBrush(QColor(kYellow));
    item->setPen(Qt::NoPen);
    item->setZValue(100000);
    v->scene()->addItem(item);
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":10}");
    const QImage image = grab(v->view);
    QCOMPARE(fullColumns(image, kRed), (QList<int>{10, 20, 30, 40, 50, 60, 70, 80, 90}));
    QCOMPARE(fullRows(image, kRed), (QList<int>{10, 20, 30, 40}));
    QCOMPARE(image.pixel(5, 5), kYellow);
    QCOMPARE(countColour(image, kYellow) + countColour(image, kRed), 100 * 50);
    v->scene()->removeItem(item);
    delete item;
}

void tst_GridLine::gridIsPaintedUnderCrossLineReticle()
{
    auto v = makeView(QSize(100, 50));
    v->view->setGridLineInfo("{\"visible\":true,\"gap\":10}");
    v->view->setCrossLineInfo("{\"visible\":true,\"point\":\"55,25\",\"color\":\"0,0,255,255\","
                              "\"circleRadius\":3,\"emphasisLength\":4}");
    const QImage image = grab(v->view);
    // The cross's horizontal arm, row 25, crosses the grid's columns in blue;
    // its vertical arm, column 55, crosses the grid's rows in blue.
    for (int x : {10, 20, 30, 70, 80, 90})
        QCOMPARE(image.pixel(x, 25), kBlue);
    for (int y : {10, 40})
        QCOMPARE(image.pixel(55, y), kBlue);
    // Elsewhere the grid lines are whole.
    QCOMPARE(image.pixel(10, 5), kRed);
    QCOMPARE(image.pixel(5, 10), kRed);
    QCOMPARE(image.pixel(10, 24), kRed);
}

// ---------------------------------------------------------------------------
// The facade

void tst_GridLine::facadeCallsWithoutWindowReturnMinusOne()
{
    KESImageWnd wnd;
    QString text = "untouched";
    QCOMPARE(wnd.setGridLineInfo("{\"visible\":true}"), -1L);
    QCOMPARE(wnd.setGridLineInfo("garbage"), -1L);
    QCOMPARE(wnd.getGridLineInfo(text), -1L);
    QCOMPARE(text, QString("untouched"));
}

void tst_GridLine::facadeCallsForwardToViewAndReturnZero()
{
    EmbeddedWindow w(QSize(640, 480));
    QCOMPARE(w.created, 0L);
    QString text;
    QCOMPARE(w.wnd->getGridLineInfo(text), 0L);
    QCOMPARE(text, kDefaultText);
    QCOMPARE(w.wnd->setGridLineInfo("{\"visible\":true,\"gap\":0}"), 0L);
    QCOMPARE(w.wnd->setGridLineInfo("garbage"), 0L);
    QCOMPARE(w.wnd->setGridLineInfo(""), 0L);
    QCOMPARE(w.wnd->getGridLineInfo(text), 0L);
    QCOMPARE(text, QString("{\"color\":\"255,0,0,255\",\"gap\":0,\"lineWidth\":1,\"visible\":true}"));
    QString fromView;
    w.view()->getGridLineInfo(fromView);
    QCOMPARE(text, fromView);
    // The window with a gap of 0 repaints and returns.
    QApplication::processEvents();
    w.window()->repaint();

    w.wnd->destory();
    QCOMPARE(w.wnd->setGridLineInfo("{}"), -1L);
    QCOMPARE(w.wnd->getGridLineInfo(text), -1L);
}

QTEST_MAIN(tst_GridLine)
#include "tst_gridline.moc"
