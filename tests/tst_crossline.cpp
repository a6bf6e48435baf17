// The cross-line reticle of the image view: its JSON text in both directions,
// the drag with the left button and its hit test, and what it paints, checked on
// the pixels of a grab of the viewport: arms, the gap around the centre, the
// thick stubs, the circle, the limits to the picture in the picture mode, and
// its place in the paint order between the scene items and the pixel labels.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "testkit.h"

#include <QGraphicsRectItem>
#include <QGraphicsSceneMouseEvent>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QSize kViewport(400, 300);
const QRgb kGrey = qRgb(153, 153, 153);
const QRgb kBlue = qRgb(0, 0, 255);
const QRgb kGreen = qRgb(0, 160, 0);
const QRgb kYellow = qRgb(255, 255, 0);
const QString kBlueText = "0,0,255,255";

QString crossText(ImageCtrlView* view)
{
    QString text;
    view->getCrossLineInfo(text);
    return text;
}

QJsonObject crossObject(ImageCtrlView* view)
{
    return QJsonDocument::fromJson(crossText(view).toUtf8()).object();
}

// The text of the untouched reticle, with the given point text.
QString defaultText(const QString& point)
{
    return QString("{\"circleRadius\":10,\"color\":\"255,0,0,128\",\"emphasisColor\":\"255,0,0,255\","
                   "\"emphasisLength\":20,\"lineWidth\":1,\"mode\":false,\"point\":\"%1\",\"visible\":false}")
        .arg(point);
}

QImage grab(ImageCtrlView* view)
{
    return Kit::grabViewport(view);
}

// Pixels of exactly the colour on a segment through p across the given axis
// (horizontal arms are measured down a column, vertical arms along a row).
int thickness(const QImage& image, const QPoint& p, bool armIsHorizontal, QRgb colour, int reach = 2)
{
    int count = 0;
    for (int k = -reach; k <= reach; ++k) {
        const QPoint q = armIsHorizontal ? QPoint(p.x(), p.y() + k) : QPoint(p.x() + k, p.y());
        if (image.rect().contains(q) && image.pixel(q) == colour)
            ++count;
    }
    return count;
}

// A view whose viewport is exactly 400 by 300.
std::unique_ptr<StandaloneView> makeView()
{
    auto v = std::make_unique<StandaloneView>(QSize(640, 480));
    v->setViewportSize(kViewport);
    return v;
}

// A 200 by 100 green picture shown at scale 1, centred in the 400 by 300
// viewport: on screen it covers x 100..299 and y 100..199.
void showPicture(StandaloneView& v)
{
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(kGreen);
    QCOMPARE(v.view->DisplayImage(picture), 0L);
    v.view->Zoom(1.0);
    QApplication::processEvents();
}

// The picture's rectangle as the reticle's limits see it.
QRect pictureOnScreen(ImageCtrlView* view)
{
    return view->mapFromScene(view->GetImageCtrlScene()->sceneRect()).boundingRect();
}

} // namespace

using Kit::countColour;

class tst_CrossLine : public QObject
{
    Q_OBJECT

private slots:
    // The text
    void defaultTextCarriesCentreOfViewportAtConstruction();
    void defaultTextOnViewportOf400By300();
    void visibleTrueShowsReticleAtConstructionCentreKeepingOtherSettings();
    void visibleAloneKeepsEarlierSettings();
    void farPointInViewportModeIsBoundedToViewport_data();
    void farPointInViewportModeIsBoundedToViewport();
    void colourNeedsExactlyFourParts_data();
    void colourNeedsExactlyFourParts();
    void pointNeedsExactlyTwoParts_data();
    void pointNeedsExactlyTwoParts();
    void emphasisColourIsTakenFromColourKey();
    void emphasisColourAloneChangesNothing();
    void modeTrueReadsAsViewportMode();
    void modeOfAnyNonZeroNumberIsPictureMode();
    void keysOfWrongTypeStoreTheirDefaults();
    void pointOfWrongTypeIsIgnored();
    void visibleAsNumberHides();
    void numbersAreStoredWithoutRangeCheck();
    void pictureModeReadsAndWritesPointInSceneCoordinates();
    void pictureModePointIsNotBounded();
    void textGotInPictureModeAndSetBackTurnsModeOff();
    void nonObjectTextChangesNothingAndDoesNotRepaint_data();
    void nonObjectTextChangesNothingAndDoesNotRepaint();
    void objectTextRepaints();
    void settingsAreKeptAcrossPictures();
    void repeatedKeyTakesItsLastValue_data();
    void repeatedKeyTakesItsLastValue();

    // The drag
    void pressOnCentreOfHiddenReticleGrabsAndDragsIt();
    void dragIsBoundedToViewport();
    void pressHitTest_data();
    void pressHitTest();
    void pressMissingReticleLeavesCursorAlone();
    void rightPressDoesNotGrab();

    // Painting
    void hiddenReticlePaintsNothing();
    void viewportModePaintsArmsGapStubsAndCircle_data();
    void viewportModePaintsArmsGapStubsAndCircle();
    void armsRunToViewportEdges();
    void circleIsDrawnWithoutFill();
    void lineWidthWidensArmsStubsAndCircle();
    void translucentColourBlendsOverBackground();
    void stubsUseLineColourNotEmphasisColour();
    void radiusBeyondHalfViewportMakesArmsRunBackward();
    void pictureModeLimitsArmsToPictureOnScreen();
    void pictureModeCutsStubAtPictureEdge_data();
    void pictureModeCutsStubAtPictureEdge();
    void pictureModeOmitsStubWhoseInnerEndLiesOutside_data();
    void pictureModeOmitsStubWhoseInnerEndLiesOutside();
    void pictureModeArmRunsBackwardPastPictureEdge();
    void pictureModePaintPullsPointIntoPictureForGood();
    void heldPointDoesNotFollowZoom();
    void reticleIsPaintedAboveSceneItems();
    void reticleIsPaintedUnderPixelLabels();

    // The facade
    void facadeCallsWithoutWindowReturnMinusOne();
    void facadeCallsForwardToViewAndReturnZero();
};

// ---------------------------------------------------------------------------
// The text

void tst_CrossLine::defaultTextCarriesCentreOfViewportAtConstruction()
{
    // The point is the centre that the viewport had while the view was being
    // constructed. A view is built at the toolkit's default size for a child
    // widget (100 by 30 less the frame) or for a window (640 by 480 less the
    // frame), and no size can be given before its constructor runs, so a view
    // whose viewport is 400 by 300 at construction cannot be had; the text of
    // such a view, point 200,150, is checked in the next test. A plain graphics
    // view built the same way has the same viewport at that moment: 98 by 28
    // with the default style, centre 49,14.
    QWidget twinHost;
    QGraphicsView twin(&twinHost);
    const QPoint centre = QRectF(twin.viewport()->rect()).center().toPoint();

    StandaloneView v(QSize(640, 480));
    const QString expected = defaultText(QString("%1,%2").arg(centre.x()).arg(centre.y()));
    QCOMPARE(crossText(v.view), expected);
    QCOMPARE(v.view->crossPoint(), centre);
    QVERIFY(!v.view->isCrossDragging());

    // A later resize leaves the point where it was.
    v.setViewportSize(kViewport);
    QCOMPARE(crossText(v.view), expected);
}

void tst_CrossLine::defaultTextOnViewportOf400By300()
{
    auto v = makeView();
    QCOMPARE(v->view->viewport()->size(), kViewport);
    v->view->setCrossLineInfo("{\"point\":\"200,150\"}");
    QCOMPARE(crossText(v->view),
             QString("{\"circleRadius\":10,\"color\":\"255,0,0,128\",\"emphasisColor\":\"255,0,0,255\","
                     "\"emphasisLength\":20,\"lineWidth\":1,\"mode\":false,\"point\":\"200,150\","
                     "\"visible\":false}"));
}

void tst_CrossLine::visibleTrueShowsReticleAtConstructionCentreKeepingOtherSettings()
{
    StandaloneView v(QSize(640, 480));
    const QPoint centre = v.view->crossPoint();
    const QJsonObject before = crossObject(v.view);
    v.setViewportSize(kViewport);

    v.view->setCrossLineInfo("{\"visible\":true}");
    QCOMPARE(v.view->crossPoint(), centre);
    QJsonObject expected = before;
    expected["visible"] = true;
    QCOMPARE(crossObject(v.view), expected);
    QCOMPARE(crossText(v.view), defaultText(QString("%1,%2").arg(centre.x()).arg(centre.y()))
                                    .replace("\"visible\":false", "\"visible\":true"));
}

void tst_CrossLine::visibleAloneKeepsEarlierSettings()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"mode\":0,\"color\":\"10,20,30,40\",\"point\":\"12,34\",\"lineWidth\":3,"
                              "\"circleRadius\":7,\"emphasisLength\":9}");
    const QJsonObject before = crossObject(v->view);
    v->view->setCrossLineInfo("{\"visible\":true}");
    QJsonObject expected = before;
    expected["visible"] = true;
    QCOMPARE(crossObject(v->view), expected);
    QCOMPARE(v->view->crossPoint(), QPoint(12, 34));
    v->view->setCrossLineInfo("{\"visible\":false}");
    QCOMPARE(crossObject(v->view), before);
}

void tst_CrossLine::farPointInViewportModeIsBoundedToViewport_data()
{
    QTest::addColumn<QString>("point");
    QTest::addColumn<QPoint>("stored");
    QTest::newRow("far bottom right") << "5000,5000" << QPoint(399, 299);
    QTest::newRow("far top left") << "-5,-7" << QPoint(0, 0);
    QTest::newRow("x only beyond") << "400,10" << QPoint(399, 10);
    QTest::newRow("y only beyond") << "10,300" << QPoint(10, 299);
    QTest::newRow("last pixel") << "399,299" << QPoint(399, 299);
    QTest::newRow("first pixel") << "0,0" << QPoint(0, 0);
    QTest::newRow("inside") << "12,34" << QPoint(12, 34);
}

void tst_CrossLine::farPointInViewportModeIsBoundedToViewport()
{
    QFETCH(QString, point);
    QFETCH(QPoint, stored);
    auto v = makeView();
    v->view->setCrossLineInfo(QString("{\"point\":\"%1\"}").arg(point));
    QCOMPARE(v->view->crossPoint(), stored);
    QCOMPARE(crossObject(v->view).value("point").toString(), QString("%1,%2").arg(stored.x()).arg(stored.y()));
}

void tst_CrossLine::colourNeedsExactlyFourParts_data()
{
    QTest::addColumn<QString>("colour");
    QTest::addColumn<QString>("stored");
    QTest::newRow("three parts") << "1,2,3" << "255,0,0,128";
    QTest::newRow("five parts") << "1,2,3,4,5" << "255,0,0,128";
    QTest::newRow("one part") << "1" << "255,0,0,128";
    QTest::newRow("empty") << "" << "255,0,0,128";
    QTest::newRow("four parts") << "1,2,3,4" << "1,2,3,4";
    QTest::newRow("words count 0") << "a,b,c,d" << "0,0,0,0";
    QTest::newRow("empty parts count") << ",,," << "0,0,0,0";
    QTest::newRow("semicolons are no separators") << "1;2;3;4" << "255,0,0,128";
    QTest::newRow("hex is no number") << "0x10,2,3,4" << "0,2,3,4";
}

void tst_CrossLine::colourNeedsExactlyFourParts()
{
    QFETCH(QString, colour);
    QFETCH(QString, stored);
    auto v = makeView();
    v->view->setCrossLineInfo(QString("{\"color\":\"%1\"}").arg(colour));
    QCOMPARE(crossObject(v->view).value("color").toString(), stored);
    // The emphasis colour is not touched by "color" alone.
    QCOMPARE(crossObject(v->view).value("emphasisColor").toString(), QString("255,0,0,255"));
}

void tst_CrossLine::pointNeedsExactlyTwoParts_data()
{
    QTest::addColumn<QString>("point");
    QTest::addColumn<QPoint>("stored");
    QTest::newRow("one part") << "1" << QPoint(77, 88);
    QTest::newRow("three parts") << "1,2,3" << QPoint(77, 88);
    QTest::newRow("empty") << "" << QPoint(77, 88);
    QTest::newRow("words count 0") << "a,9" << QPoint(0, 9);
    QTest::newRow("empty parts count 0") << "," << QPoint(0, 0);
}

void tst_CrossLine::pointNeedsExactlyTwoParts()
{
    QFETCH(QString, point);
    QFETCH(QPoint, stored);
    auto v = makeView();
    v->view->setCrossLineInfo("{\"point\":\"77,88\"}");
    v->view->setCrossLineInfo(QString("{\"point\":\"%1\"}").arg(point));
    QCOMPARE(v->view->crossPoint(), stored);
}

void tst_CrossLine::emphasisColourIsTakenFromColourKey()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"emphasisColor\":\"0,255,0,255\",\"color\":\"1,2,3,4\"}");
    const QJsonObject object = crossObject(v->view);
    QCOMPARE(object.value("color").toString(), QString("1,2,3,4"));
    QCOMPARE(object.value("emphasisColor").toString(), QString("1,2,3,4"));

    // With a "color" of the wrong part count, neither changes.
    v->view->setCrossLineInfo("{\"emphasisColor\":\"0,255,0,255\",\"color\":\"9,9,9\"}");
    QCOMPARE(crossObject(v->view).value("color").toString(), QString("1,2,3,4"));
    QCOMPARE(crossObject(v->view).value("emphasisColor").toString(), QString("1,2,3,4"));
}

void tst_CrossLine::emphasisColourAloneChangesNothing()
{
    auto v = makeView();
    const QString before = crossText(v->view);
    v->view->setCrossLineInfo("{\"emphasisColor\":\"0,255,0,255\"}");
    QCOMPARE(crossText(v->view), before);
    // The lookup of "color" inside the setter does not add the key anywhere:
    // a following text without "color" leaves the colour too.
    v->view->setCrossLineInfo("{\"visible\":true}");
    QCOMPARE(crossObject(v->view).value("color").toString(), QString("255,0,0,128"));
    QCOMPARE(crossObject(v->view).value("emphasisColor").toString(), QString("255,0,0,255"));
}

void tst_CrossLine::modeTrueReadsAsViewportMode()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"mode\":1}");
    QCOMPARE(crossObject(v->view).value("mode"), QJsonValue(true));
    v->view->setCrossLineInfo("{\"mode\":true}");
    QCOMPARE(crossObject(v->view).value("mode"), QJsonValue(false));
}

void tst_CrossLine::modeOfAnyNonZeroNumberIsPictureMode()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"mode\":-3}");
    QCOMPARE(crossObject(v->view).value("mode"), QJsonValue(true));
    v->view->setCrossLineInfo("{\"mode\":0}");
    QCOMPARE(crossObject(v->view).value("mode"), QJsonValue(false));
    v->view->setCrossLineInfo("{\"mode\":2}");
    QCOMPARE(crossObject(v->view).value("mode"), QJsonValue(true));
    // A string reads as 0.
    v->view->setCrossLineInfo("{\"mode\":\"1\"}");
    QCOMPARE(crossObject(v->view).value("mode"), QJsonValue(false));
}

void tst_CrossLine::keysOfWrongTypeStoreTheirDefaults()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"visible\":true,\"lineWidth\":4,\"circleRadius\":5,\"emphasisLength\":6}");
    v->view->setCrossLineInfo("{\"visible\":\"yes\",\"lineWidth\":\"4\",\"circleRadius\":true,"
                              "\"emphasisLength\":null,\"color\":7,\"point\":[1,2]}");
    const QJsonObject object = crossObject(v->view);
    QCOMPARE(object.value("visible"), QJsonValue(false));
    QCOMPARE(object.value("lineWidth"), QJsonValue(0));
    QCOMPARE(object.value("circleRadius"), QJsonValue(0));
    QCOMPARE(object.value("emphasisLength"), QJsonValue(0));
    // The colour and point strings are rejected by their part count.
    QCOMPARE(object.value("color").toString(), QString("255,0,0,128"));
}

void tst_CrossLine::pointOfWrongTypeIsIgnored()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"point\":\"77,88\"}");
    v->view->setCrossLineInfo("{\"point\":[1,2]}");
    QCOMPARE(v->view->crossPoint(), QPoint(77, 88));
    v->view->setCrossLineInfo("{\"point\":12}");
    QCOMPARE(v->view->crossPoint(), QPoint(77, 88));
}

void tst_CrossLine::visibleAsNumberHides()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"visible\":true}");
    QCOMPARE(crossObject(v->view).value("visible"), QJsonValue(true));
    v->view->setCrossLineInfo("{\"visible\":1}");
    QCOMPARE(crossObject(v->view).value("visible"), QJsonValue(false));
}

void tst_CrossLine::numbersAreStoredWithoutRangeCheck()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"lineWidth\":-2,\"circleRadius\":-10,\"emphasisLength\":0,"
                              "\"color\":\"300,-1,1000,256\"}");
    const QJsonObject object = crossObject(v->view);
    QCOMPARE(object.value("lineWidth"), QJsonValue(-2));
    QCOMPARE(object.value("circleRadius"), QJsonValue(-10));
    QCOMPARE(object.value("emphasisLength"), QJsonValue(0));
    // QColor itself takes what the text holds; out of range it becomes invalid
    // and reads as 0,0,0,255.
    const QColor colour(300, -1, 1000, 256);
    QCOMPARE(object.value("color").toString(), QString("%1,%2,%3,%4")
                                                   .arg(colour.red())
                                                   .arg(colour.green())
                                                   .arg(colour.blue())
                                                   .arg(colour.alpha()));
    // Painting such values ends and paints inside the viewport only.
    v->view->setCrossLineInfo("{\"visible\":true}");
    const QImage image = grab(v->view);
    QCOMPARE(image.size(), kViewport);
}

void tst_CrossLine::pictureModeReadsAndWritesPointInSceneCoordinates()
{
    auto v = makeView();
    showPicture(*v);
    v->view->setCrossLineInfo("{\"mode\":1,\"point\":\"10,20\"}");
    QCOMPARE(v->view->crossPoint(), v->view->mapFromScene(QPointF(10, 20)));
    QCOMPARE(v->view->crossPoint(), QPoint(110, 120));
    QCOMPARE(crossObject(v->view).value("point").toString(), QString("10,20"));

    // The mode comes before the point, whatever the key order of the text.
    v->view->setCrossLineInfo("{\"mode\":0}");
    v->view->setCrossLineInfo("{\"point\":\"30,40\",\"mode\":1}");
    QCOMPARE(v->view->crossPoint(), QPoint(130, 140));

    // In the viewport mode the same numbers are viewport pixels.
    v->view->setCrossLineInfo("{\"point\":\"30,40\",\"mode\":0}");
    QCOMPARE(v->view->crossPoint(), QPoint(30, 40));
    QCOMPARE(crossObject(v->view).value("point").toString(), QString("30,40"));
}

void tst_CrossLine::pictureModePointIsNotBounded()
{
    auto v = makeView();
    showPicture(*v);
    v->view->setCrossLineInfo("{\"mode\":1,\"point\":\"-500,900\"}");
    QCOMPARE(v->view->crossPoint(), v->view->mapFromScene(QPointF(-500, 900)));
    QCOMPARE(v->view->crossPoint(), QPoint(-400, 1000));
}

void tst_CrossLine::textGotInPictureModeAndSetBackTurnsModeOff()
{
    auto v = makeView();
    showPicture(*v);
    v->view->setCrossLineInfo("{\"mode\":1,\"point\":\"150,60\",\"visible\":true,\"lineWidth\":2}");
    const QString text = crossText(v->view);
    QCOMPARE(QJsonDocument::fromJson(text.toUtf8()).object().value("mode"), QJsonValue(true));
    QCOMPARE(QJsonDocument::fromJson(text.toUtf8()).object().value("point").toString(), QString("150,60"));

    v->view->setCrossLineInfo(text);
    const QJsonObject after = crossObject(v->view);
    QCOMPARE(after.value("mode"), QJsonValue(false));
    // The scene numbers now stand for viewport pixels.
    QCOMPARE(v->view->crossPoint(), QPoint(150, 60));
    QCOMPARE(after.value("point").toString(), QString("150,60"));
    QCOMPARE(after.value("visible"), QJsonValue(true));
    QCOMPARE(after.value("lineWidth"), QJsonValue(2));
}

void tst_CrossLine::nonObjectTextChangesNothingAndDoesNotRepaint_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("garbage") << "not json at all";
    QTest::newRow("empty") << "";
    QTest::newRow("array") << "[{\"visible\":true}]";
    QTest::newRow("number") << "42";
    QTest::newRow("string") << "\"{\\\"visible\\\":true}\"";
    QTest::newRow("cut short") << "{\"visible\":true";
    QTest::newRow("trailing comma") << "{\"visible\":true,}";
}

void tst_CrossLine::nonObjectTextChangesNothingAndDoesNotRepaint()
{
    QFETCH(QString, text);
    auto v = makeView();
    const QString before = crossText(v->view);
    grab(v->view);
    Kit::flushPaints();
    Kit::PaintCounter counter(v->view->viewport());
    v->view->setCrossLineInfo(text);
    Kit::letQueuedCallsRun();
    QCOMPARE(counter.paints, 0);
    QCOMPARE(crossText(v->view), before);
}

void tst_CrossLine::objectTextRepaints()
{
    auto v = makeView();
    grab(v->view);
    Kit::flushPaints();
    Kit::PaintCounter counter(v->view->viewport());
    // An empty object changes no setting and still repaints.
    v->view->setCrossLineInfo("{}");
    QTRY_VERIFY(counter.paints > 0);
}

void tst_CrossLine::settingsAreKeptAcrossPictures()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"visible\":true,\"point\":\"33,44\",\"circleRadius\":4}");
    const QString before = crossText(v->view);
    showPicture(*v);
    QImage other(50, 60, QImage::Format_RGB32);
    other.fill(Qt::white);
    QCOMPARE(v->view->DisplayImage(other), 0L);
    QApplication::processEvents();
    QCOMPARE(crossText(v->view), before);
}

void tst_CrossLine::repeatedKeyTakesItsLastValue_data()
{
    // Earlier values that are arrays or objects are dropped without a leak,
    // which the sanitizer build checks.
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("array, then true") << "{\"visible\":[1],\"visible\":true}" << "visible" << QJsonValue(true);
    QTest::newRow("true, then array") << "{\"visible\":true,\"visible\":[1]}" << "visible" << QJsonValue(false);
    QTest::newRow("object, then number") << "{\"circleRadius\":{\"a\":1},\"circleRadius\":4}" << "circleRadius"
                                         << QJsonValue(4);
    QTest::newRow("three times") << "{\"lineWidth\":[2],\"lineWidth\":{\"b\":[3]},\"lineWidth\":5}" << "lineWidth"
                                 << QJsonValue(5);
    QTest::newRow("key written with an escape") << "{\"lineWidth\":[2],\"line\\u0057idth\":6}" << "lineWidth"
                                                 << QJsonValue(6);
    QTest::newRow("repeated inside a nested object")
        << "{\"x\":{\"a\":[1],\"a\":2},\"x\":[{\"b\":[1],\"b\":[2]}],\"emphasisLength\":7}" << "emphasisLength"
        << QJsonValue(7);
    QTest::newRow("colour string last") << "{\"color\":[\"1,2,3,4\"],\"color\":\"5,6,7,8\"}" << "color"
                                        << QJsonValue("5,6,7,8");
}

void tst_CrossLine::repeatedKeyTakesItsLastValue()
{
    QFETCH(QString, text);
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    auto v = makeView();
    v->view->setCrossLineInfo("{\"visible\":true,\"lineWidth\":3,\"circleRadius\":9,\"emphasisLength\":8}");
    v->view->setCrossLineInfo(text);
    QCOMPARE(crossObject(v->view).value(key), value);

    // A repeated key in a text that is no JSON object still changes nothing.
    const QString before = crossText(v->view);
    v->view->setCrossLineInfo(text + ",");
    v->view->setCrossLineInfo("[" + text + "]");
    QCOMPARE(crossText(v->view), before);
}

// ---------------------------------------------------------------------------
// The drag

void tst_CrossLine::pressOnCentreOfHiddenReticleGrabsAndDragsIt()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"point\":\"200,150\"}");
    QCOMPARE(crossObject(v->view).value("visible"), QJsonValue(false));
    v->view->setCursor(Qt::PointingHandCursor);
    v->view->viewport()->setCursor(Qt::IBeamCursor);
    // The mouse presses that reach the scene.
    Kit::EventCounter scenePresses(v->scene(), QEvent::GraphicsSceneMousePress);

    Kit::pressAtViewport(v->view, QPoint(200, 150));
    QVERIFY(v->view->isCrossDragging());
    QCOMPARE(v->view->viewport()->cursor().shape(), Qt::ClosedHandCursor);
    // The press is not swallowed: the scene and its tools see it too.
    QCOMPARE(scenePresses.count, 1);

    Kit::moveToViewport(v->view, QPoint(60, 70), Qt::LeftButton);
    QCOMPARE(v->view->crossPoint(), QPoint(60, 70));
    Kit::moveToViewport(v->view, QPoint(61, 75), Qt::LeftButton);
    QCOMPARE(v->view->crossPoint(), QPoint(61, 75));
    // Still hidden.
    QCOMPARE(crossObject(v->view).value("visible"), QJsonValue(false));
    QCOMPARE(crossObject(v->view).value("point").toString(), QString("61,75"));

    Kit::releaseAtViewport(v->view, QPoint(61, 75));
    QVERIFY(!v->view->isCrossDragging());
    // The cursor saved from the view goes onto the viewport.
    QCOMPARE(v->view->viewport()->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(v->view->cursor().shape(), Qt::PointingHandCursor);

    // Moves after the release leave the point.
    Kit::moveToViewport(v->view, QPoint(90, 90));
    QCOMPARE(v->view->crossPoint(), QPoint(61, 75));
}

void tst_CrossLine::dragIsBoundedToViewport()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"point\":\"200,150\",\"visible\":true}");
    Kit::pressAtViewport(v->view, QPoint(201, 149));
    QVERIFY(v->view->isCrossDragging());
    Kit::moveToViewport(v->view, QPoint(-40, 5000), Qt::LeftButton);
    QCOMPARE(v->view->crossPoint(), QPoint(0, 299));
    Kit::moveToViewport(v->view, QPoint(400, -1), Qt::LeftButton);
    QCOMPARE(v->view->crossPoint(), QPoint(399, 0));
    Kit::moveToViewport(v->view, QPoint(399, 299), Qt::LeftButton);
    QCOMPARE(v->view->crossPoint(), QPoint(399, 299));
    Kit::releaseAtViewport(v->view, QPoint(399, 299));
    QCOMPARE(v->view->crossPoint(), QPoint(399, 299));

    // The dragged reticle paints where the mouse left it.
    v->view->setCrossLineInfo(QString("{\"color\":\"%1\"}").arg(kBlueText));
    Kit::pressAtViewport(v->view, QPoint(399, 299));
    Kit::moveToViewport(v->view, QPoint(120, 80), Qt::LeftButton);
    Kit::releaseAtViewport(v->view, QPoint(120, 80));
    const QImage image = grab(v->view);
    QCOMPARE(image.pixel(50, 80), kBlue);
    QCOMPARE(image.pixel(120, 30), kBlue);
    QCOMPARE(image.pixel(50, 200), kGrey);
}

void tst_CrossLine::pressHitTest_data()
{
    QTest::addColumn<int>("radius");
    QTest::addColumn<QPoint>("offset");
    QTest::addColumn<bool>("grabbed");
    // Near the centre: Manhattan distance at most 2r.
    QTest::newRow("centre") << 10 << QPoint(0, 0) << true;
    QTest::newRow("manhattan 2r") << 10 << QPoint(10, 10) << true;
    QTest::newRow("manhattan 2r+1") << 10 << QPoint(10, 11) << false;
    QTest::newRow("manhattan 2r on axis") << 10 << QPoint(-20, 0) << true;
    // Near the horizontal arm: |dy| below 6 and x outside [c.x - r, c.x + r].
    QTest::newRow("horizontal arm dy 5") << 10 << QPoint(80, 5) << true;
    QTest::newRow("horizontal arm dy -5") << 10 << QPoint(-150, -5) << true;
    QTest::newRow("horizontal arm dy 6") << 10 << QPoint(80, 6) << false;
    QTest::newRow("horizontal arm dy -6") << 10 << QPoint(-80, -6) << false;
    // Near the vertical arm: |dx| below 6 and y outside [c.y - r, c.y + r].
    QTest::newRow("vertical arm dx 5") << 10 << QPoint(5, 100) << true;
    QTest::newRow("vertical arm dx -5") << 10 << QPoint(-5, -120) << true;
    QTest::newRow("vertical arm dx 6") << 10 << QPoint(6, 100) << false;
    // Just outside the circle band on the horizontal arm, small radius.
    QTest::newRow("x just outside band") << 2 << QPoint(3, 5) << true;
    // Within the band of the horizontal arm the vertical test is not made,
    // although |dx| is below 6 and y lies outside [c.y - r, c.y + r].
    QTest::newRow("x on band edge") << 2 << QPoint(2, 5) << false;
    QTest::newRow("x on band edge, left") << 2 << QPoint(-2, -5) << false;
    QTest::newRow("vertical arm small radius") << 2 << QPoint(2, 6) << true;
    QTest::newRow("far off") << 10 << QPoint(100, 100) << false;
    // A radius of 0 grabs at the centre and on the arms only.
    QTest::newRow("radius 0 centre") << 0 << QPoint(0, 0) << true;
    QTest::newRow("radius 0 beside the centre") << 0 << QPoint(1, 1) << true;
    QTest::newRow("radius 0 in the band on the centre line") << 0 << QPoint(0, 5) << false;
    QTest::newRow("radius 0 on the vertical arm") << 0 << QPoint(1, 6) << true;
}

void tst_CrossLine::pressHitTest()
{
    QFETCH(int, radius);
    QFETCH(QPoint, offset);
    QFETCH(bool, grabbed);
    auto v = makeView();
    const QPoint c(200, 150);
    v->view->setCrossLineInfo(QString("{\"point\":\"200,150\",\"circleRadius\":%1}").arg(radius));
    Kit::pressAtViewport(v->view, c + offset);
    QCOMPARE(v->view->isCrossDragging(), grabbed);
    QCOMPARE(v->view->viewport()->cursor().shape() == Qt::ClosedHandCursor, grabbed);
    Kit::releaseAtViewport(v->view, c + offset);
    QVERIFY(!v->view->isCrossDragging());
}

void tst_CrossLine::pressMissingReticleLeavesCursorAlone()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"point\":\"200,150\",\"visible\":true}");
    v->view->viewport()->setCursor(Qt::IBeamCursor);
    v->view->setCursor(Qt::PointingHandCursor);
    Kit::pressAtViewport(v->view, QPoint(20, 20));
    QVERIFY(!v->view->isCrossDragging());
    QCOMPARE(v->view->viewport()->cursor().shape(), Qt::IBeamCursor);
    Kit::moveToViewport(v->view, QPoint(30, 30), Qt::LeftButton);
    QCOMPARE(v->view->crossPoint(), QPoint(200, 150));
    Kit::releaseAtViewport(v->view, QPoint(30, 30));
    QVERIFY(!v->view->isCrossDragging());
    QCOMPARE(v->view->crossPoint(), QPoint(200, 150));
}

void tst_CrossLine::rightPressDoesNotGrab()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"point\":\"200,150\",\"visible\":true}");
    Kit::pressAtViewport(v->view, QPoint(200, 150), Qt::RightButton);
    QVERIFY(!v->view->isCrossDragging());
    Kit::releaseAtViewport(v->view, QPoint(200, 150), Qt::RightButton);
}

// ---------------------------------------------------------------------------
// Painting

void tst_CrossLine::hiddenReticlePaintsNothing()
{
    auto v = makeView();
    v->view->setCrossLineInfo(QString("{\"point\":\"200,150\",\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    QCOMPARE(countColour(image, image.rect(), kGrey), 400 * 300);
}

void tst_CrossLine::viewportModePaintsArmsGapStubsAndCircle_data()
{
    QTest::addColumn<QPoint>("direction");
    QTest::newRow("left") << QPoint(-1, 0);
    QTest::newRow("right") << QPoint(1, 0);
    QTest::newRow("up") << QPoint(0, -1);
    QTest::newRow("down") << QPoint(0, 1);
}

void tst_CrossLine::viewportModePaintsArmsGapStubsAndCircle()
{
    QFETCH(QPoint, direction);
    auto v = makeView();
    const QPoint c(200, 150);
    const int R = 10;
    const int E = 20;
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"point\":\"200,150\",\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    const bool horizontal = direction.y() == 0;
    auto at = [&](int t) { return c + direction * t; };

    // The gap: inside the circle nothing is painted on the arm.
    for (int t = 0; t <= R - 3; ++t)
        QCOMPARE(thickness(image, at(t), horizontal, kBlue, 0), 0);
    // The circle crosses the arm at R.
    QCOMPARE(image.pixel(at(R)), kBlue);
    // The stub: width W + 1 = 2 from R out to R + E.
    for (int t = R + 2; t <= R + E; ++t) {
        QVERIFY2(thickness(image, at(t), horizontal, kBlue) == 2, qPrintable(QString("t %1").arg(t)));
    }
    // Beyond it the thin arm, width W = 1, on the reticle's own row or column.
    const int reach = horizontal ? (direction.x() < 0 ? c.x() : 399 - c.x()) : (direction.y() < 0 ? c.y() : 299 - c.y());
    for (int t = R + E + 2; t <= reach; ++t) {
        QVERIFY2(thickness(image, at(t), horizontal, kBlue) == 1, qPrintable(QString("t %1").arg(t)));
        QCOMPARE(image.pixel(at(t)), kBlue);
    }
    // And the rest of that row or column, off the arm, keeps the background.
    const QPoint side = horizontal ? QPoint(0, 5) : QPoint(5, 0);
    for (int t = R + E + 2; t <= reach; ++t)
        QCOMPARE(image.pixel(at(t) + side), kGrey);
}

void tst_CrossLine::armsRunToViewportEdges()
{
    auto v = makeView();
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"point\":\"100,80\",\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    QCOMPARE(image.pixel(0, 80), kBlue);
    QCOMPARE(image.pixel(399, 80), kBlue);
    QCOMPARE(image.pixel(100, 0), kBlue);
    QCOMPARE(image.pixel(100, 299), kBlue);
    // Exactly one row and one column of the viewport carry the thin arms.
    QCOMPARE(countColour(image, QRect(10, 0, 1, 300), kBlue), 1);
    QCOMPARE(countColour(image, QRect(0, 10, 400, 1), kBlue), 1);
}

void tst_CrossLine::circleIsDrawnWithoutFill()
{
    auto v = makeView();
    const QPoint c(200, 150);
    v->view->setCrossLineInfo(
        QString("{\"visible\":true,\"point\":\"200,150\",\"circleRadius\":40,\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    // On the diagonals, off the arms and stubs: the ring at distance 40, and
    // the background inside and outside it.
    const QPoint diagonals[] = {QPoint(1, 1), QPoint(1, -1), QPoint(-1, 1), QPoint(-1, -1)};
    for (const QPoint& d : diagonals) {
        const QPoint onRing = c + d * 28; // 28 * sqrt(2) = 39.6
        QVERIFY(countColour(image, QRect(onRing - QPoint(1, 1), QSize(3, 3)), kBlue) > 0);
        QCOMPARE(image.pixel(c + d * 20), kGrey);
        QCOMPARE(image.pixel(c + d * 36), kGrey);
    }
    QCOMPARE(image.pixel(c), kGrey);
    QCOMPARE(countColour(image, QRect(c - QPoint(25, 25), QSize(51, 51)), kBlue), 0);
    // The ring is two pixels wide (W + 1) where it crosses the diagonal row.
    const int y = c.y() - 28;
    int ring = 0;
    for (int x = c.x(); x < c.x() + 40; ++x)
        ring += image.pixel(x, y) == kBlue ? 1 : 0;
    QVERIFY2(ring >= 2 && ring <= 3, qPrintable(QString::number(ring)));
}

void tst_CrossLine::lineWidthWidensArmsStubsAndCircle()
{
    auto v = makeView();
    const QPoint c(200, 150);
    v->view->setCrossLineInfo(
        QString("{\"visible\":true,\"point\":\"200,150\",\"lineWidth\":3,\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    QCOMPARE(thickness(image, QPoint(60, c.y()), true, kBlue, 4), 3);
    QCOMPARE(thickness(image, QPoint(340, c.y()), true, kBlue, 4), 3);
    QCOMPARE(thickness(image, QPoint(c.x(), 40), false, kBlue, 4), 3);
    QCOMPARE(thickness(image, QPoint(c.x() - 20, c.y()), true, kBlue, 4), 4);
    QCOMPARE(thickness(image, QPoint(c.x(), c.y() + 20), false, kBlue, 4), 4);

    v->view->setCrossLineInfo("{\"lineWidth\":1}");
    const QImage thin = grab(v->view);
    QCOMPARE(thickness(thin, QPoint(60, c.y()), true, kBlue, 4), 1);
    QCOMPARE(thickness(thin, QPoint(c.x() - 20, c.y()), true, kBlue, 4), 2);
    // The wider circle pen covers more pixels.
    const QRect ringArea(c.x() + 4, c.y() - 14, 10, 10);
    QVERIFY(countColour(image, ringArea, kBlue) > countColour(thin, ringArea, kBlue));
}

void tst_CrossLine::translucentColourBlendsOverBackground()
{
    // The default colour, red at alpha 128, over the grey 153 background:
    // 255 * 128/255 + 153 * 127/255 = 204.2 and 153 * 127/255 = 76.2.
    auto v = makeView();
    v->view->setCrossLineInfo("{\"visible\":true,\"point\":\"200,150\"}");
    const QImage image = grab(v->view);
    const QRgb arm = image.pixel(60, 150);
    QVERIFY2(qAbs(qRed(arm) - 204) <= 1 && qAbs(qGreen(arm) - 76) <= 1 && qAbs(qBlue(arm) - 76) <= 1,
             qPrintable(QColor(arm).name()));
    QCOMPARE(image.pixel(60, 149), kGrey);
    QCOMPARE(image.pixel(60, 151), kGrey);
}

void tst_CrossLine::stubsUseLineColourNotEmphasisColour()
{
    auto v = makeView();
    v->view->setCrossLineInfo("{\"color\":\"0,255,0,255\",\"emphasisColor\":\"\"}");
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"point\":\"200,150\",\"color\":\"%1\"}").arg(kBlueText));
    QCOMPARE(crossObject(v->view).value("emphasisColor").toString(), QString("0,255,0,255"));
    const QImage image = grab(v->view);
    QCOMPARE(countColour(image, image.rect(), qRgb(0, 255, 0)), 0);
    QCOMPARE(thickness(image, QPoint(180, 150), true, kBlue), 2);
}

void tst_CrossLine::radiusBeyondHalfViewportMakesArmsRunBackward()
{
    // Centre 200,150 and R 260: each arm runs from the viewport edge outward,
    // away from the centre. Only the first pixel of the left and top arms lies
    // on the viewport; the right and bottom arms, the stubs and the circle lie
    // off it. Nothing is painted across the middle.
    auto v = makeView();
    v->view->setCrossLineInfo(
        QString("{\"visible\":true,\"point\":\"200,150\",\"circleRadius\":260,\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    QCOMPARE(image.pixel(0, 150), kBlue);
    QCOMPARE(image.pixel(200, 0), kBlue);
    QCOMPARE(countColour(image, image.rect(), kBlue), 2);
    QCOMPARE(countColour(image, image.rect(), kGrey), 400 * 300 - 2);

    // A radius just below the half-width still paints both horizontal arms.
    v->view->setCrossLineInfo("{\"circleRadius\":140}");
    const QImage inside = grab(v->view);
    QCOMPARE(inside.pixel(30, 150), kBlue);
    QCOMPARE(inside.pixel(370, 150), kBlue);
}

void tst_CrossLine::pictureModeLimitsArmsToPictureOnScreen()
{
    auto v = makeView();
    showPicture(*v);
    const QRect r = pictureOnScreen(v->view);
    QCOMPARE(r, QRect(QPoint(100, 100), QPoint(300, 200)));
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"mode\":1,\"point\":\"100,50\",\"color\":\"%1\"}").arg(kBlueText));
    const QPoint c = v->view->crossPoint();
    QCOMPARE(c, QPoint(200, 150));
    const QImage image = grab(v->view);

    // Horizontal arm from r.left() to r.right(), nothing beyond.
    QCOMPARE(image.pixel(r.left(), c.y()), kBlue);
    QCOMPARE(image.pixel(r.right(), c.y()), kBlue);
    QCOMPARE(image.pixel(r.left() - 1, c.y()), kGrey);
    QCOMPARE(image.pixel(r.right() + 1, c.y()), kGrey);
    QCOMPARE(image.pixel(20, c.y()), kGrey);
    QCOMPARE(image.pixel(380, c.y()), kGrey);
    // Vertical arm from r.top() to r.bottom().
    QCOMPARE(image.pixel(c.x(), r.top()), kBlue);
    QCOMPARE(image.pixel(c.x(), r.bottom()), kBlue);
    QCOMPARE(image.pixel(c.x(), r.top() - 1), kGrey);
    QCOMPARE(image.pixel(c.x(), r.bottom() + 1), kGrey);
    // The arms lie over the picture.
    QCOMPARE(image.pixel(c.x() - 50, c.y() + 3), kGreen);
    QCOMPARE(image.pixel(c.x() - 50, c.y()), kBlue);
    // Gap and stubs as in the viewport mode, well inside the picture.
    QCOMPARE(image.pixel(c.x() - 5, c.y()), kGreen);
    QCOMPARE(thickness(image, QPoint(c.x() - 20, c.y()), true, kBlue), 2);
    QCOMPARE(thickness(image, QPoint(c.x() + 20, c.y()), true, kBlue), 2);
    QCOMPARE(thickness(image, QPoint(c.x(), c.y() - 20), false, kBlue), 2);
    QCOMPARE(thickness(image, QPoint(c.x(), c.y() + 20), false, kBlue), 2);
    QCOMPARE(thickness(image, QPoint(c.x() - 40, c.y()), true, kBlue), 1);
    // Nothing of the reticle outside the rectangle r, one pixel of slack.
    int outside = 0;
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x)
            if (!r.adjusted(-1, -1, 1, 1).contains(x, y) && image.pixel(x, y) == kBlue)
                ++outside;
    QCOMPARE(outside, 0);
}

namespace {

struct Side
{
    QPoint direction;
    // The distance from the centre to the picture's edge on this side.
    int distanceToEdge;
};

// A reticle centre in viewport pixels, at the given distance from one edge of
// the picture rectangle 100..300 by 100..200, and in the middle otherwise.
QPoint centreNearEdge(const QPoint& direction, int distance)
{
    QPoint c(200, 150);
    if (direction.x() < 0)
        c.setX(100 + distance);
    else if (direction.x() > 0)
        c.setX(300 - distance);
    else if (direction.y() < 0)
        c.setY(100 + distance);
    else
        c.setY(200 - distance);
    return c;
}

void addSides()
{
    QTest::addColumn<QPoint>("direction");
    QTest::newRow("left") << QPoint(-1, 0);
    QTest::newRow("right") << QPoint(1, 0);
    QTest::newRow("top") << QPoint(0, -1);
    QTest::newRow("bottom") << QPoint(0, 1);
}

} // namespace

void tst_CrossLine::pictureModeCutsStubAtPictureEdge_data()
{
    addSides();
}

void tst_CrossLine::pictureModeCutsStubAtPictureEdge()
{
    // R 10, E 20, edge 15 from the centre: the stub ends at the edge.
    QFETCH(QPoint, direction);
    auto v = makeView();
    showPicture(*v);
    const int D = 15;
    const QPoint c = centreNearEdge(direction, D);
    const QPointF scenePoint = v->view->mapToScene(c);
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"mode\":1,\"point\":\"%1,%2\",\"color\":\"%3\"}")
                                  .arg(scenePoint.x())
                                  .arg(scenePoint.y())
                                  .arg(kBlueText));
    QCOMPARE(v->view->crossPoint(), c);
    const QImage image = grab(v->view);
    const bool horizontal = direction.y() == 0;
    for (int t = 12; t <= D - 1; ++t)
        QVERIFY2(thickness(image, c + direction * t, horizontal, kBlue) == 2, qPrintable(QString("t %1").arg(t)));
    // Beyond the edge neither stub nor arm.
    for (int t = D + 2; t <= 40; ++t)
        QVERIFY2(thickness(image, c + direction * t, horizontal, kBlue) == 0, qPrintable(QString("t %1").arg(t)));
}

void tst_CrossLine::pictureModeOmitsStubWhoseInnerEndLiesOutside_data()
{
    addSides();
}

void tst_CrossLine::pictureModeOmitsStubWhoseInnerEndLiesOutside()
{
    // R 10, edge 7 from the centre: the stub's inner end lies outside the
    // picture and the stub is left out; the thin arm runs backward from the
    // edge to the circle.
    QFETCH(QPoint, direction);
    auto v = makeView();
    showPicture(*v);
    const int D = 7;
    const QPoint c = centreNearEdge(direction, D);
    const QPointF scenePoint = v->view->mapToScene(c);
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"mode\":1,\"point\":\"%1,%2\",\"color\":\"%3\"}")
                                  .arg(scenePoint.x())
                                  .arg(scenePoint.y())
                                  .arg(kBlueText));
    const QImage image = grab(v->view);
    const bool horizontal = direction.y() == 0;
    // The thin arm alone between the edge and the circle: width 1, not 2.
    QCOMPARE(thickness(image, c + direction * 8, horizontal, kBlue), 1);
    QCOMPARE(image.pixel(c + direction * 8), kBlue);
    // Where the stub would lie in the viewport mode, nothing.
    for (int t = 13; t <= 32; ++t)
        QVERIFY2(thickness(image, c + direction * t, horizontal, kBlue) == 0, qPrintable(QString("t %1").arg(t)));

    // The stub on the opposite side is whole.
    for (int t = 12; t <= 30; ++t)
        QVERIFY2(thickness(image, c - direction * t, horizontal, kBlue) == 2, qPrintable(QString("t %1").arg(t)));
}

void tst_CrossLine::pictureModeArmRunsBackwardPastPictureEdge()
{
    // Centre 5 pixels inside the left edge and R 30: the left arm runs from the
    // edge x = 100 outward to 75, over the grey beside the picture.
    auto v = makeView();
    showPicture(*v);
    v->view->setCrossLineInfo(
        QString("{\"visible\":true,\"mode\":1,\"point\":\"5,50\",\"circleRadius\":30,\"color\":\"%1\"}")
            .arg(kBlueText));
    const QPoint c = v->view->crossPoint();
    QCOMPARE(c, QPoint(105, 150));
    const QImage image = grab(v->view);
    for (int x = 78; x <= 99; ++x)
        QCOMPARE(image.pixel(x, 150), kBlue);
    QCOMPARE(image.pixel(70, 150), kGrey);
    QCOMPARE(image.pixel(20, 150), kGrey);
    // Inside the circle, on the picture, the gap.
    QCOMPARE(image.pixel(110, 150), kGreen);
}

void tst_CrossLine::pictureModePaintPullsPointIntoPictureForGood()
{
    auto v = makeView();
    showPicture(*v);
    v->view->setCrossLineInfo("{\"mode\":1,\"point\":\"-50,500\"}");
    QCOMPARE(v->view->crossPoint(), QPoint(50, 600));
    // Hidden: no paint of the reticle, so no bounding.
    grab(v->view);
    QCOMPARE(v->view->crossPoint(), QPoint(50, 600));

    v->view->setCrossLineInfo(QString("{\"visible\":true,\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    QCOMPARE(v->view->crossPoint(), QPoint(100, 200));
    QCOMPARE(crossObject(v->view).value("point").toString(), QString("0,100"));
    QCOMPARE(image.pixel(200, 200), kBlue);
    QCOMPARE(image.pixel(100, 150), kBlue);

    // It stays there after a switch back to the viewport mode.
    v->view->setCrossLineInfo("{\"mode\":0}");
    QCOMPARE(v->view->crossPoint(), QPoint(100, 200));
}

void tst_CrossLine::heldPointDoesNotFollowZoom()
{
    auto v = makeView();
    showPicture(*v);
    v->view->setCrossLineInfo("{\"mode\":1,\"point\":\"50,50\"}");
    const QPoint held = v->view->crossPoint();
    QCOMPARE(held, QPoint(150, 150));
    v->view->Zoom(1.5);
    QApplication::processEvents();
    QCOMPARE(v->view->crossPoint(), held);
    // The point read back is where the held viewport pixel now lies.
    QCOMPARE(crossObject(v->view).value("point").toString(),
             QString("%1,%2").arg(v->view->mapToScene(held).toPoint().x()).arg(v->view->mapToScene(held).toPoint().y()));
    QVERIFY(crossObject(v->view).value("point").toString() != QString("50,50"));
}

void tst_CrossLine::reticleIsPaintedAboveSceneItems()
{
    auto v = makeView();
    showPicture(*v);
    auto* item = new QGraphicsRectItem(0, 0, 200, 100);
    item->setBrush(QColor(kYellow));
    item->setPen(Qt::NoPen);
    item->setZValue(100000);
    v->scene()->addItem(item);
    v->view->setCrossLineInfo(QString("{\"visible\":true,\"point\":\"200,150\",\"color\":\"%1\"}").arg(kBlueText));
    const QImage image = grab(v->view);
    QCOMPARE(image.pixel(150, 150), kBlue);
    QCOMPARE(image.pixel(200, 120), kBlue);
    QCOMPARE(thickness(image, QPoint(180, 150), true, kBlue), 2);
    // Off the reticle, the item covers the picture.
    QCOMPARE(image.pixel(150, 153), kYellow);
    QCOMPARE(image.pixel(200, 150), kYellow);
    v->scene()->removeItem(item);
    delete item;
}

void tst_CrossLine::reticleIsPaintedUnderPixelLabels()
{
    // At scale 100 a picture pixel is a 100 by 100 cell with a black text of
    // three lines in its middle. A wide horizontal arm is laid through the
    // middle line of a cell left of the reticle's centre.
    StandaloneView v(QSize(640, 480));
    v.setViewportSize(kViewport);
    QImage picture(8, 6, QImage::Format_RGB32);
    picture.fill(qRgb(255, 255, 255));
    QCOMPARE(v.view->DisplayImage(picture), 0L);
    v.view->Zoom(100.0);
    QApplication::processEvents();
    const QPointF under = v.view->mapToScene(QPoint(100, 150));
    const QPoint cell = v.view->mapFromScene(QPointF(qFloor(under.x()), qFloor(under.y())));
    const QPoint cellCentre = cell + QPoint(50, 50);
    QVERIFY(QRect(QPoint(0, 0), kViewport).contains(cellCentre));
    const QPoint c(cellCentre.x() + 150, cellCentre.y());
    v.view->setCrossLineInfo(QString("{\"visible\":true,\"point\":\"%1,%2\",\"lineWidth\":14,\"color\":\"%3\"}")
                                 .arg(c.x())
                                 .arg(c.y())
                                 .arg(kBlueText));
    const QRect band(cellCentre.x() - 45, cellCentre.y() - 4, 90, 9);

    const QImage withoutLabels = grab(v.view);
    QCOMPARE(countColour(withoutLabels, band, kBlue), band.width() * band.height());

    v.view->enablePixelVisible(true);
    const QImage withLabels = grab(v.view);
    // Where the text lies it covers the arm.
    const int covered = band.width() * band.height() - countColour(withLabels, band, kBlue);
    QVERIFY2(covered > 0, "the label text shows on the reticle's arm");
    QVERIFY(countColour(withLabels, band, kBlue) > band.width() * band.height() / 2);
}

// ---------------------------------------------------------------------------
// The facade

void tst_CrossLine::facadeCallsWithoutWindowReturnMinusOne()
{
    KESImageWnd wnd;
    QString text = "untouched";
    QCOMPARE(wnd.setCrossLineInfo("{\"visible\":true}"), -1L);
    QCOMPARE(wnd.setCrossLineInfo("garbage"), -1L);
    QCOMPARE(wnd.getCrossLineInfo(text), -1L);
    QCOMPARE(text, QString("untouched"));
}

void tst_CrossLine::facadeCallsForwardToViewAndReturnZero()
{
    EmbeddedWindow w(QSize(640, 480));
    QCOMPARE(w.created, 0L);
    QCOMPARE(w.wnd->setCrossLineInfo("{\"visible\":true,\"circleRadius\":6}"), 0L);
    QCOMPARE(w.wnd->setCrossLineInfo("garbage"), 0L);
    QCOMPARE(w.wnd->setCrossLineInfo(""), 0L);
    QString text;
    QCOMPARE(w.wnd->getCrossLineInfo(text), 0L);
    QString fromView;
    w.view()->getCrossLineInfo(fromView);
    QCOMPARE(text, fromView);
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    QCOMPARE(object.value("visible"), QJsonValue(true));
    QCOMPARE(object.value("circleRadius"), QJsonValue(6));

    w.wnd->destory();
    QCOMPARE(w.wnd->setCrossLineInfo("{}"), -1L);
    QCOMPARE(w.wnd->getCrossLineInfo(text), -1L);
}

QTEST_MAIN(tst_CrossLine)
#include "tst_crossline.moc"
