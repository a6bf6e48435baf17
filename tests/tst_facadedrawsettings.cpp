// The facade's drawing settings and the host's way into a draw mode: the look
// of the next shapes goes to the scene with its unit conversions and reads
// back as the scene holds it; a draw mode from the host puts the scene in
// overlay mode and leaves the mouse free.

#include "testkit.h"

#include "odpolygon.h"

#include <QTest>

#include <limits>

using namespace Kit;

class tst_FacadeDrawSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void penSetReadsBackAsGiven();
    void penWidthReadsBackTruncated_data();
    void penWidthReadsBackTruncated();
    void brushKeepsItsAlpha();
    void pointSizeBelowOneBecomesOne_data();
    void pointSizeBelowOneBecomesOne();
    void fontReadsBackWithoutItsWeight();
    void fontFlagsAreTheNonZeroBytes();
    void nullOutputsAreLeftAlone();
    void everySettingWithoutAWindowAnswersMinusOne();
    void overlayModeIsTakenWithThePictureThere();
    void overlayModeIsRefusedWithoutAPictureInVorImageMode();
    void overlayModeIsTakenWithoutAPictureInQImageMode();
    void polygonUnderWayCannotBeInterrupted();
    void overlayPolygonModeStartsAFreshPolygon();
    void overlayModeDropsTheSelection();
    void selectModeFromTheHostClearsTheOverlayFlag();
};

void tst_FacadeDrawSettings::init()
{
    forgetCurrentShape();
}

void tst_FacadeDrawSettings::cleanup()
{
    forgetCurrentShape();
}

void tst_FacadeDrawSettings::penSetReadsBackAsGiven()
{
    PictureWindow w;
    QCOMPARE(w.wnd->setPen(255, 0, 0, 3), 0L);
    QCOMPARE(w.scene()->getPenColor(), QColor(255, 0, 0, 255));
    QCOMPARE(w.scene()->getLineWidth(), 3.0f);
    unsigned char r = 1, g = 1, b = 1;
    unsigned long width = 99;
    QCOMPARE(w.wnd->getPen(&r, &g, &b, &width), 0L);
    QCOMPARE(int(r), 255);
    QCOMPARE(int(g), 0);
    QCOMPARE(int(b), 0);
    QCOMPARE(width, 3UL);
}

void tst_FacadeDrawSettings::penWidthReadsBackTruncated_data()
{
    QTest::addColumn<float>("sceneWidth");
    QTest::addColumn<unsigned long>("read");
    QTest::newRow("1.5 reads 1") << 1.5f << 1UL;
    QTest::newRow("0.9 reads 0") << 0.9f << 0UL;
    QTest::newRow("7.99 reads 7") << 7.99f << 7UL;
    QTest::newRow("below 0 reads 0") << -2.5f << 0UL;
    QTest::newRow("not a number reads 0") << std::numeric_limits<float>::quiet_NaN() << 0UL;
}

void tst_FacadeDrawSettings::penWidthReadsBackTruncated()
{
    QFETCH(float, sceneWidth);
    QFETCH(unsigned long, read);
    PictureWindow w;
    // A width set elsewhere than through the facade.
    w.scene()->setLineWidth(sceneWidth);
    unsigned long width = 12345;
    QCOMPARE(w.wnd->getPen(nullptr, nullptr, nullptr, &width), 0L);
    QCOMPARE(width, read);
}

void tst_FacadeDrawSettings::brushKeepsItsAlpha()
{
    PictureWindow w;
    QCOMPARE(w.wnd->setBrush(10, 20, 30, 40), 0L);
    QCOMPARE(w.scene()->getBrushColor(), QColor(10, 20, 30, 40));
    unsigned char r = 0, g = 0, b = 0, a = 0;
    QCOMPARE(w.wnd->getBrush(&r, &g, &b, &a), 0L);
    QCOMPARE(QList<int>({r, g, b, a}), QList<int>({10, 20, 30, 40}));
    // The next shape drawn takes it.
    w.window()->SelectDrawROIMode(DM_RECT1);
    w.drag(QPointF(20, 20), QPointF(60, 50));
    QCOMPARE(w.active()->shapes().last()->GetBrushColor(), QColor(10, 20, 30, 40));
}

void tst_FacadeDrawSettings::pointSizeBelowOneBecomesOne_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("read");
    QTest::newRow("0 reads 1") << 0 << 1;
    QTest::newRow("-5 reads 1") << -5 << 1;
    QTest::newRow("1 reads 1") << 1 << 1;
    QTest::newRow("9 reads 9") << 9 << 9;
}

void tst_FacadeDrawSettings::pointSizeBelowOneBecomesOne()
{
    QFETCH(int, size);
    QFETCH(int, read);
    PictureWindow w;
    QCOMPARE(w.wnd->setPointSize(size), 0L);
    int got = -1;
    QCOMPARE(w.wnd->getPointSize(&got), 0L);
    QCOMPARE(got, read);
    QCOMPARE(w.scene()->getCrossSize(), read);
}

void tst_FacadeDrawSettings::fontReadsBackWithoutItsWeight()
{
    PictureWindow w;
    VorFont font("Courier", 23);
    font.weight = 75;
    font.bold = 1;
    font.italic = 1;
    QCOMPARE(w.wnd->setFont(font), 0L);
    const QFont scene = w.scene()->getFont();
    QCOMPARE(scene.family(), QString("Courier"));
    QCOMPARE(scene.pointSize(), 23);
    QVERIFY(scene.italic());
    // The weight is not read: the scene's font keeps the default weight.
    QCOMPARE(scene.weight(), QFont().weight());

    VorFont back;
    back.weight = 33;
    back.bold = 7;
    QCOMPARE(w.wnd->getFont(&back), 0L);
    QCOMPARE(QString(back.S()), QString("Courier"));
    QCOMPARE(back.size, 23);
    QCOMPARE(int(back.italic), 1);
    QCOMPARE(int(back.underline), 0);
    QCOMPARE(int(back.strikeOut), 0);
    // Weight and bold stay as the host had them.
    QCOMPARE(back.weight, 33);
    QCOMPARE(int(back.bold), 7);
}

void tst_FacadeDrawSettings::fontFlagsAreTheNonZeroBytes()
{
    PictureWindow w;
    VorFont font("Times", 11);
    font.italic = 0;
    font.underline = 200;
    font.strikeOut = 2;
    QCOMPARE(w.wnd->setFont(font), 0L);
    const QFont scene = w.scene()->getFont();
    QVERIFY(!scene.italic());
    QVERIFY(scene.underline());
    QVERIFY(scene.strikeOut());
    VorFont back;
    QCOMPARE(w.wnd->getFont(&back), 0L);
    QCOMPARE(int(back.underline), 1);
    QCOMPARE(int(back.strikeOut), 1);
}

void tst_FacadeDrawSettings::nullOutputsAreLeftAlone()
{
    PictureWindow w;
    QCOMPARE(w.wnd->getPen(nullptr, nullptr, nullptr, nullptr), 0L);
    QCOMPARE(w.wnd->getBrush(nullptr, nullptr, nullptr, nullptr), 0L);
    QCOMPARE(w.wnd->getPointSize(nullptr), 0L);
    QCOMPARE(w.wnd->getFont(nullptr), 0L);
}

void tst_FacadeDrawSettings::everySettingWithoutAWindowAnswersMinusOne()
{
    KESImageWnd wnd;
    unsigned char r = 7, g = 7, b = 7, a = 7;
    unsigned long width = 7;
    int size = 7;
    VorFont font("Keep", 7);
    QCOMPARE(wnd.setPen(1, 2, 3, 4), -1L);
    QCOMPARE(wnd.getPen(&r, &g, &b, &width), -1L);
    QCOMPARE(wnd.setBrush(1, 2, 3, 4), -1L);
    QCOMPARE(wnd.getBrush(&r, &g, &b, &a), -1L);
    QCOMPARE(wnd.setPointSize(3), -1L);
    QCOMPARE(wnd.getPointSize(&size), -1L);
    QCOMPARE(wnd.setFont(font), -1L);
    QCOMPARE(wnd.getFont(&font), -1L);
    QCOMPARE(QList<int>({r, g, b, a, int(width), size}), QList<int>({7, 7, 7, 7, 7, 7}));
    QCOMPARE(QString(font.S()), QString("Keep"));
}

void tst_FacadeDrawSettings::overlayModeIsTakenWithThePictureThere()
{
    PictureWindow w;
    w.view()->setLimitMousePos(false);
    QVERIFY(!w.scene()->isOverlay());
    w.window()->SelectDrawOverlayMode(DM_CIRCLE);
    QCOMPARE(w.scene()->GetDrawMode(), DM_CIRCLE);
    QVERIFY(w.scene()->isOverlay());
    // The host's form leaves the mouse free and shows the drawing cursor.
    QVERIFY(!w.view()->limitMousePos());
    QCOMPARE(w.view()->viewport()->cursor().shape(), Qt::CrossCursor);

    // The overlay flag outlives the shape drawn.
    const long id = ODShape::s_ID;
    w.drag(QPointF(50, 50), QPointF(70, 50));
    QVERIFY(layerHasId(w.active(), id));
    QVERIFY(w.active()->shapes().last()->isOverlay());
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(!w.scene()->isOverlay());
}

void tst_FacadeDrawSettings::overlayModeIsRefusedWithoutAPictureInVorImageMode()
{
    EmbeddedWindow e;
    QVERIFY(e.window()->isVorImg());
    e.view()->viewport()->setCursor(Qt::ArrowCursor);
    e.window()->SelectDrawOverlayMode(DM_POINT);
    QCOMPARE(e.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(!e.scene()->isOverlay());
    QCOMPARE(e.view()->viewport()->cursor().shape(), Qt::ArrowCursor);
}

void tst_FacadeDrawSettings::overlayModeIsTakenWithoutAPictureInQImageMode()
{
    EmbeddedWindow e;
    e.window()->setIsVorImg(false);
    e.window()->SelectDrawOverlayMode(DM_LINE);
    QCOMPARE(e.scene()->GetDrawMode(), DM_LINE);
    e.scene()->SetDrawMode(DM_SELECT);
}

void tst_FacadeDrawSettings::polygonUnderWayCannotBeInterrupted()
{
    PictureWindow w;
    w.window()->SelectDrawOverlayMode(DM_POLYGON);
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
    clickCorner(w.view(), QPointF(20, 20));
    ODPolygon* polygon = polygonTool()->shape();
    QVERIFY(polygon != nullptr);
    for (DrawMode mode : {DM_RECT1, DM_SELECT, DM_POLYGON}) {
        w.window()->SelectDrawOverlayMode(mode);
        QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
        QCOMPARE(polygonTool()->shape(), polygon);
    }
}

void tst_FacadeDrawSettings::overlayPolygonModeStartsAFreshPolygon()
{
    PictureWindow w;
    w.window()->SelectDrawROIMode(DM_POLYGON);
    clickCorner(w.view(), QPointF(20, 20));
    const long unfinished = polygonTool()->shape()->GetShapeID();
    // The tool bar's select mode leaves the polygon as it is; the host's
    // polygon mode throws it away.
    w.scene()->SetDrawMode(DM_SELECT);
    QVERIFY(polygonTool()->shape() != nullptr);
    w.window()->SelectDrawOverlayMode(DM_POLYGON);
    QCOMPARE(polygonTool()->shape(), nullptr);
    QVERIFY(!layerHasId(w.active(), unfinished));
    QCOMPARE(w.scene()->GetDrawMode(), DM_POLYGON);
}

void tst_FacadeDrawSettings::overlayModeDropsTheSelection()
{
    PictureWindow w;
    ODRect1* rect = addRect(w.active(), 20, 20, 60, 60);
    w.click(QPointF(40, 40));
    QCOMPARE(selectTool()->currentShape(), static_cast<ODShape*>(rect));
    QVERIFY(!w.active()->selectedShapes().isEmpty());
    w.window()->SelectDrawOverlayMode(DM_ELLIPSE);
    QCOMPARE(selectTool()->currentShape(), nullptr);
    QVERIFY(w.active()->selectedShapes().isEmpty());
    QCOMPARE(w.active()->shapes(), (QVector<ODShape*>{rect}));
    w.scene()->SetDrawMode(DM_SELECT);
}

void tst_FacadeDrawSettings::selectModeFromTheHostClearsTheOverlayFlag()
{
    PictureWindow w;
    w.window()->SelectDrawOverlayMode(DM_RECT1);
    QVERIFY(w.scene()->isOverlay());
    // The select mode sets the flag and then, being the select mode, clears it.
    w.window()->SelectDrawOverlayMode(DM_SELECT);
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
    QVERIFY(!w.scene()->isOverlay());
}

QTEST_MAIN(tst_FacadeDrawSettings)
#include "tst_facadedrawsettings.moc"
