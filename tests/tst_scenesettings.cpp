// The scene's drawing settings, draw mode and overlay flags, its shape layer
// list, the unused point helper and the region background pixmap.

#include "testkit.h"

#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "geometryhelpers.h"
#include "imagectrlscene.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace Kit;

class tst_SceneSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void freshSceneHasTheLookOfNewShapes();
    void freshSceneIsInSelectModeWithoutOverlay();
    void lookSettersStoreWhatTheyAreGiven();
    void moveFlagsAreStoredAndReturnedOnly();
    void overlayFlagsAreStoredAndReturned();
    void setDrawModeStoresEveryMode();
    void selectModeEndsOverlayMode();
    void drawModeLeavesOverlayModeAlone();
    void overlayDrawEndsInSelectModeWithoutOverlay();
    void setDrawModeRepaintsTheWholeScene();
    void layerAccessorsAreNullBeforeLayersExist();
    void mouseEventsBeforeLayersReachNoTool();
    void movesAndDoubleClicksBeforeLayersReachNoTool();
    void paintingBeforeLayersIsHarmless();
    void createLayersMakesActiveThenStaticLayerWithIndexZero();
    void createLayersWithCountAppendsIndexesFromOne();
    void createLayersWithCountBelowTwoAddsNothing();
    void windowSceneHasTwoShapeLayers();
    void getPointWorksInSinglePrecisionWithTruncatedPi_data();
    void getPointWorksInSinglePrecisionWithTruncatedPi();
    void getPointUsesTheTruncatedPiConstant();
    void regionBackgroundIsDrawnAtTheOrigin();
    void nullRegionBackgroundDrawsNothing();
    void regionBackgroundLeavesThePainterAsItWas();
    void regionBackgroundIsNeverPaintedWithTheScene();
    void sceneNeverEmitsItsPressSignal();
};

void tst_SceneSettings::init()
{
    forgetCurrentShape();
}

void tst_SceneSettings::cleanup()
{
    forgetCurrentShape();
}

void tst_SceneSettings::freshSceneHasTheLookOfNewShapes()
{
    ImageCtrlScene scene;
    QCOMPARE(scene.getPenColor(), QColor(0, 0, 255, 255));
    QCOMPARE(scene.getPenColor().alpha(), 255);
    QCOMPARE(scene.getBrushColor(), QColor(0, 255, 0, 0));
    QCOMPARE(scene.getBrushColor().alpha(), 0);
    QCOMPARE(scene.getBrushColor().green(), 255);
    QCOMPARE(scene.getLineWidth(), 1.0f);
    QCOMPARE(scene.getCrossSize(), 5);
    QCOMPARE(scene.getFont().family(), QString("Times"));
    QCOMPARE(scene.getFont().pointSize(), 18);
}

void tst_SceneSettings::freshSceneIsInSelectModeWithoutOverlay()
{
    ImageCtrlScene scene;
    QCOMPARE(scene.GetDrawMode(), DM_SELECT);
    QVERIFY(!scene.isOverlay());
    QVERIFY(!scene.isStaticOverlay());
    QVERIFY(scene.isEnableMoveROI());
    QVERIFY(scene.isEnableMoveOverlay());
    QVERIFY(scene.isEnableMoveStaticOverlay());
}

void tst_SceneSettings::lookSettersStoreWhatTheyAreGiven()
{
    ImageCtrlScene scene;
    scene.setPenColor(QColor(10, 20, 30, 40));
    QCOMPARE(scene.getPenColor(), QColor(10, 20, 30, 40));
    scene.setBrushColor(QColor(1, 2, 3, 4));
    QCOMPARE(scene.getBrushColor(), QColor(1, 2, 3, 4));
    for (float width : {2.75f, 0.0f}) {
        scene.setLineWidth(width);
        QCOMPARE(scene.getLineWidth(), width);
    }
    // The scene stores any size; raising values below 1 is the facade's job.
    for (int size : {0, -3, 12}) {
        scene.setCrossSize(size);
        QCOMPARE(scene.getCrossSize(), size);
    }
    QFont font("Courier", 9);
    font.setBold(true);
    scene.setFont(font);
    QCOMPARE(scene.getFont(), font);
    QCOMPARE(scene.getFont().family(), QString("Courier"));
    QCOMPARE(scene.getFont().pointSize(), 9);
}

void tst_SceneSettings::moveFlagsAreStoredAndReturnedOnly()
{
    PictureWindow w;
    ImageCtrlScene* scene = w.scene();
    scene->enableMoveROI(false);
    QCOMPARE(scene->isEnableMoveROI(), false);
    QCOMPARE(scene->isEnableMoveOverlay(), true);
    QCOMPARE(scene->isEnableMoveStaticOverlay(), true);
    scene->enableMoveOverlay(false);
    QCOMPARE(scene->isEnableMoveOverlay(), false);
    scene->enableMoveStaticOverlay(false);
    QCOMPARE(scene->isEnableMoveStaticOverlay(), false);

    // None of the three governs moving: a shape still follows a body drag.
    ODRect1* shape = addRect(w.active(), 20, 20, 60, 50);
    w.drag(QPointF(40, 30), QPointF(50, 35));
    QCOMPARE(paramsOf(shape), (QVector<double>{30, 25, 70, 55}));
    QCOMPARE(w.active()->isEnableMoveShape(), true);

    scene->enableMoveROI(true);
    scene->enableMoveOverlay(true);
    scene->enableMoveStaticOverlay(true);
    QCOMPARE(scene->isEnableMoveROI(), true);
    QCOMPARE(scene->isEnableMoveOverlay(), true);
    QCOMPARE(scene->isEnableMoveStaticOverlay(), true);
}

void tst_SceneSettings::overlayFlagsAreStoredAndReturned()
{
    ImageCtrlScene scene;
    scene.setIsOverlay(true);
    QCOMPARE(scene.isOverlay(), true);
    QCOMPARE(scene.isStaticOverlay(), false);
    scene.setIsStaticOverlay(true);
    QCOMPARE(scene.isStaticOverlay(), true);
    scene.setIsOverlay(false);
    QCOMPARE(scene.isOverlay(), false);
    QCOMPARE(scene.isStaticOverlay(), true);
    // Select mode ends overlay mode only, not static overlay mode.
    scene.SetDrawMode(DM_SELECT);
    QCOMPARE(scene.isStaticOverlay(), true);
    scene.setIsStaticOverlay(false);
    QCOMPARE(scene.isStaticOverlay(), false);
}

void tst_SceneSettings::setDrawModeStoresEveryMode()
{
    ImageCtrlScene scene;
    for (int mode = DM_SELECT; mode <= DM_ANYCLOSELINE; ++mode) {
        scene.SetDrawMode(DrawMode(mode));
        QCOMPARE(int(scene.GetDrawMode()), mode);
    }
    scene.SetDrawMode(DM_SELECT);
    QCOMPARE(scene.GetDrawMode(), DM_SELECT);
}

void tst_SceneSettings::selectModeEndsOverlayMode()
{
    ImageCtrlScene scene;
    scene.setIsOverlay(true);
    scene.SetDrawMode(DM_RECT1);
    QCOMPARE(scene.isOverlay(), true);
    scene.SetDrawMode(DM_SELECT);
    QCOMPARE(scene.isOverlay(), false);
    QCOMPARE(scene.GetDrawMode(), DM_SELECT);

    // Also when the scene is already in select mode.
    scene.setIsOverlay(true);
    scene.SetDrawMode(DM_SELECT);
    QCOMPARE(scene.isOverlay(), false);
}

void tst_SceneSettings::drawModeLeavesOverlayModeAlone()
{
    ImageCtrlScene scene;
    scene.setIsOverlay(true);
    scene.SetDrawMode(DM_RECT1);
    QCOMPARE(scene.isOverlay(), true);
    scene.SetDrawMode(DM_ELLIPSE);
    QCOMPARE(scene.isOverlay(), true);

    scene.setIsOverlay(false);
    scene.SetDrawMode(DM_RECT1);
    QCOMPARE(scene.isOverlay(), false);
    QCOMPARE(scene.GetDrawMode(), DM_RECT1);
}

void tst_SceneSettings::overlayDrawEndsInSelectModeWithoutOverlay()
{
    PictureWindow w;
    ImageCtrlScene* scene = w.scene();
    scene->setIsOverlay(true);
    scene->SetDrawMode(DM_RECT1);
    const long id = ODShape::s_ID;
    w.press(QPointF(20, 20));
    QCOMPARE(scene->isOverlay(), true);
    w.move(QPointF(60, 50));
    QCOMPARE(scene->isOverlay(), true);
    w.release(QPointF(60, 50));

    QCOMPARE(scene->GetDrawMode(), DM_SELECT);
    QCOMPARE(scene->isOverlay(), false);
    QVERIFY(layerHasId(w.active(), id));
    QCOMPARE(w.active()->shapes().last()->GetShapeID(), id);
    QCOMPARE(w.active()->shapes().last()->isOverlay(), true);

    // The next draw without the flag makes a region of interest.
    scene->SetDrawMode(DM_RECT1);
    w.drag(QPointF(80, 20), QPointF(120, 60));
    QCOMPARE(w.active()->shapes().last()->GetShapeID(), id + 1);
    QCOMPARE(w.active()->shapes().last()->isOverlay(), false);
}

void tst_SceneSettings::setDrawModeRepaintsTheWholeScene()
{
    ImageCtrlScene scene;
    scene.setSceneRect(0, 0, 30, 20);
    QApplication::processEvents();
    QSignalSpy changed(&scene, &QGraphicsScene::changed);
    QApplication::processEvents();
    QCOMPARE(changed.count(), 0);

    scene.SetDrawMode(DM_RECT1);
    QTRY_COMPARE(changed.count(), 1);
    const auto rects = changed.takeFirst().at(0).value<QList<QRectF>>();
    QCOMPARE(rects, QList<QRectF>{QRectF(0, 0, 30, 20)});

    scene.SetDrawMode(DM_SELECT);
    QTRY_COMPARE(changed.count(), 1);
}

void tst_SceneSettings::layerAccessorsAreNullBeforeLayersExist()
{
    ImageCtrlScene scene;
    QVERIFY(scene.GetImageLayer() == nullptr);
    QVERIFY(scene.GetActiveLayer() == nullptr);
    QVERIFY(scene.GetStaticActiveLayer() == nullptr);
    QVERIFY(scene.getShaperLayperList().isEmpty());
    QCOMPARE(scene.GetLayerCount(), 0);
    // The relay exists from the start.
    QVERIFY(scene.GetEventThread() != nullptr);
}

void tst_SceneSettings::mouseEventsBeforeLayersReachNoTool()
{
    ImageCtrlScene scene;
    scene.SetDrawMode(DM_RECT1);
    const int itemsBefore = scene.items().size();
    const long nextId = ODShape::s_ID;
    const QPointF before = rectTool()->pressPoint();
    const QPointF press(before.x() + 17.0, before.y() + 9.0);

    SceneMouse down(QEvent::GraphicsSceneMousePress, press);
    QApplication::sendEvent(&scene, down.get());
    SceneMouse up(QEvent::GraphicsSceneMouseRelease, press);
    QApplication::sendEvent(&scene, up.get());

    QCOMPARE(ODShape::s_ID, nextId);
    QCOMPARE(rectTool()->pressPoint(), before);
    QVERIFY(rectTool()->shape() == nullptr);
    QCOMPARE(scene.GetDrawMode(), DM_RECT1);
    QCOMPARE(scene.items().size(), itemsBefore);
}

void tst_SceneSettings::movesAndDoubleClicksBeforeLayersReachNoTool()
{
    ImageCtrlScene scene;
    scene.SetDrawMode(DM_RECT1);
    const int itemsBefore = scene.items().size();
    const long nextId = ODShape::s_ID;
    const QPointF pressBefore = rectTool()->pressPoint();
    const QPointF curBefore = rectTool()->curPoint();
    const QPointF at(curBefore.x() + 23.0, curBefore.y() + 11.0);

    // A move that reached the tool would note the point.
    SceneMouse move(QEvent::GraphicsSceneMouseMove, at, Qt::NoButton);
    QApplication::sendEvent(&scene, move.get());
    QCOMPARE(rectTool()->curPoint(), curBefore);

    QSignalSpy doubles(&scene, &ImageCtrlScene::mouseDoubleClick);
    SceneMouse twice(QEvent::GraphicsSceneMouseDoubleClick, at);
    QApplication::sendEvent(&scene, twice.get());
    QCOMPARE(doubles.count(), 1);

    QCOMPARE(rectTool()->curPoint(), curBefore);
    QCOMPARE(rectTool()->pressPoint(), pressBefore);
    QVERIFY(rectTool()->shape() == nullptr);
    QCOMPARE(ODShape::s_ID, nextId);
    QCOMPARE(scene.GetDrawMode(), DM_RECT1);
    QCOMPARE(scene.items().size(), itemsBefore);
}

void tst_SceneSettings::paintingBeforeLayersIsHarmless()
{
    ImageCtrlScene scene;
    scene.setSceneRect(0, 0, 8, 8);
    scene.setBackgroundBrush(QColor(153, 153, 153));
    QImage target(8, 8, QImage::Format_ARGB32);
    target.fill(Qt::white);
    QPainter painter(&target);
    scene.render(&painter, QRectF(0, 0, 8, 8), QRectF(0, 0, 8, 8));
    painter.end();
    QCOMPARE(target.pixel(4, 4), qRgb(153, 153, 153));
}

void tst_SceneSettings::createLayersMakesActiveThenStaticLayerWithIndexZero()
{
    ImageCtrlScene scene;
    scene.CreateLayers();
    QVERIFY(scene.GetImageLayer() != nullptr);
    ShaperLayer* active = scene.GetActiveLayer();
    ShaperLayer* fixed = scene.GetStaticActiveLayer();
    QVERIFY(active != nullptr);
    QVERIFY(fixed != nullptr);
    QVERIFY(active != fixed);
    QCOMPARE(active->layerIndex(), 0);
    QCOMPARE(fixed->layerIndex(), 0);
    QCOMPARE(scene.GetLayerCount(), 2);
    const QList<ShaperLayer*> list = scene.getShaperLayperList();
    QCOMPARE(list.size(), 2);
    QVERIFY(list.at(0) == active);
    QVERIFY(list.at(1) == fixed);
    QVERIFY(active->scene() == &scene);
    QVERIFY(fixed->scene() == &scene);
}

void tst_SceneSettings::createLayersWithCountAppendsIndexesFromOne()
{
    ImageCtrlScene scene;
    scene.CreateLayers();
    ShaperLayer* active = scene.GetActiveLayer();
    ShaperLayer* fixed = scene.GetStaticActiveLayer();
    scene.CreateLayers(4);
    QCOMPARE(scene.GetLayerCount(), 5);
    const QList<ShaperLayer*> list = scene.getShaperLayperList();
    QVERIFY(list.at(0) == active);
    QVERIFY(list.at(1) == fixed);
    for (int i = 2; i < 5; ++i) {
        QCOMPARE(list.at(i)->layerIndex(), i - 1);
        QVERIFY(list.at(i)->scene() == &scene);
    }
    // The active and static layers stay what they were.
    QVERIFY(scene.GetActiveLayer() == active);
    QVERIFY(scene.GetStaticActiveLayer() == fixed);

    // A second call appends again, indexes from 1.
    scene.CreateLayers(2);
    QCOMPARE(scene.GetLayerCount(), 6);
    QCOMPARE(scene.getShaperLayperList().at(5)->layerIndex(), 1);
}

void tst_SceneSettings::createLayersWithCountBelowTwoAddsNothing()
{
    ImageCtrlScene scene;
    scene.CreateLayers(1);
    QCOMPARE(scene.GetLayerCount(), 0);
    scene.CreateLayers(0);
    scene.CreateLayers(-4);
    QCOMPARE(scene.GetLayerCount(), 0);
    // Without CreateLayers() the appended layers have no active layer before them.
    scene.CreateLayers(3);
    QCOMPARE(scene.GetLayerCount(), 2);
    QCOMPARE(scene.getShaperLayperList().at(0)->layerIndex(), 1);
    QCOMPARE(scene.getShaperLayperList().at(1)->layerIndex(), 2);
    QVERIFY(scene.GetActiveLayer() == nullptr);
}

void tst_SceneSettings::windowSceneHasTwoShapeLayers()
{
    PictureWindow w;
    QCOMPARE(w.scene()->GetLayerCount(), 2);
    QVERIFY(w.scene()->getShaperLayperList().at(0) == w.active());
    QVERIFY(w.scene()->getShaperLayperList().at(1) == w.staticLayer());
}

void tst_SceneSettings::getPointWorksInSinglePrecisionWithTruncatedPi_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("angle");

    QTest::newRow("east") << QPointF(10.0, 20.0) << 5.0f << 0.0f;
    QTest::newRow("north") << QPointF(10.0, 20.0) << 5.0f << 90.0f;
    QTest::newRow("west") << QPointF(-3.5, 7.25) << 12.0f << 180.0f;
    QTest::newRow("slanted") << QPointF(100.0, 50.0) << 33.3f << 37.0f;
    QTest::newRow("negative angle") << QPointF(0.0, 0.0) << 10.0f << -30.0f;
    QTest::newRow("beyond a turn") << QPointF(1.0, 2.0) << 7.0f << 725.0f;
    QTest::newRow("zero length") << QPointF(4.0, 5.0) << 0.0f << 60.0f;
}

void tst_SceneSettings::getPointWorksInSinglePrecisionWithTruncatedPi()
{
    QFETCH(QPointF, from);
    QFETCH(float, length);
    QFETCH(float, angle);

    ImageCtrlScene scene;
    const float a = ConvertAngle(angle);
    const float radians = a * 3.141592f / 180.0f;
    const float dx = length * std::cos(radians);
    const float dy = length * std::sin(radians);
    const QPointF expected(from.x() + double(dx), from.y() - double(dy));

    const QPointF got = scene.GetPoint(from.x(), from.y(), length, angle);
    QVERIFY2(got.x() == expected.x(), qPrintable(QString::number(got.x(), 'g', 17)));
    QVERIFY2(got.y() == expected.y(), qPrintable(QString::number(got.y(), 'g', 17)));
}

void tst_SceneSettings::getPointUsesTheTruncatedPiConstant()
{
    ImageCtrlScene scene;
    // With the exact pi the x offset of a point due north would be about
    // 3e-16; the truncated single precision constant leaves about 1.6e-6.
    const QPointF north = scene.GetPoint(10.0, 20.0, 5.0f, 90.0f);
    QVERIFY(north.x() > 10.000001);
    QVERIFY(north.x() < 10.00001);
    QVERIFY(std::fabs(north.y() - 15.0) < 1e-6);
    // y grows downward: angle 270 is below the start point.
    const QPointF south = scene.GetPoint(0.0, 0.0, 10.0f, 270.0f);
    QVERIFY(south.y() > 9.99);
    // A negative angle is brought into 0 .. 360 first: -90 is 270.
    QCOMPARE(scene.GetPoint(0.0, 0.0, 10.0f, -90.0f), south);
}

void tst_SceneSettings::regionBackgroundIsDrawnAtTheOrigin()
{
    ImageCtrlScene scene;
    QImage region(4, 3, QImage::Format_ARGB32);
    region.fill(qRgb(200, 0, 0));
    scene.setRegionBackGroudImage(region);

    QImage target(10, 10, QImage::Format_ARGB32);
    target.fill(Qt::white);
    QPainter painter(&target);
    scene.drawBackgroundRegion(&painter, QRectF(5, 5, 2, 2));
    painter.end();

    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 10; ++x) {
            const QRgb want = (x < 4 && y < 3) ? qRgb(200, 0, 0) : qRgb(255, 255, 255);
            QVERIFY2(target.pixel(x, y) == want, qPrintable(QString("pixel %1,%2").arg(x).arg(y)));
        }
    }
}

void tst_SceneSettings::nullRegionBackgroundDrawsNothing()
{
    ImageCtrlScene scene;
    QImage target(6, 6, QImage::Format_ARGB32);
    target.fill(Qt::white);
    {
        QPainter painter(&target);
        scene.drawBackgroundRegion(&painter, QRectF(0, 0, 6, 6));
    }
    QCOMPARE(target.pixel(0, 0), qRgb(255, 255, 255));

    // An image that was there is cleared by an empty one.
    QImage region(3, 3, QImage::Format_ARGB32);
    region.fill(qRgb(0, 0, 200));
    scene.setRegionBackGroudImage(region);
    scene.setRegionBackGroudImage(QImage(0, 0, QImage::Format_ARGB32));
    {
        QPainter painter(&target);
        scene.drawBackgroundRegion(&painter, QRectF(0, 0, 6, 6));
    }
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x)
            QCOMPARE(target.pixel(x, y), qRgb(255, 255, 255));
}

void tst_SceneSettings::regionBackgroundLeavesThePainterAsItWas()
{
    ImageCtrlScene scene;
    QImage region(2, 2, QImage::Format_ARGB32);
    region.fill(qRgb(0, 200, 0));
    scene.setRegionBackGroudImage(region);

    QImage target(8, 8, QImage::Format_ARGB32);
    target.fill(Qt::white);
    QPainter painter(&target);
    painter.translate(3, 3);
    painter.setPen(QPen(Qt::red, 3));
    painter.setOpacity(0.5);
    scene.drawBackgroundRegion(&painter, QRectF());
    QCOMPARE(painter.transform(), QTransform::fromTranslate(3, 3));
    QCOMPARE(painter.pen(), QPen(Qt::red, 3));
    QCOMPARE(painter.opacity(), 0.5);
    painter.end();
    // Drawn at the painter's origin, so at (3, 3) of the target, half opaque.
    QCOMPARE(target.pixel(2, 2), qRgb(255, 255, 255));
    QVERIFY(target.pixel(3, 3) != qRgb(255, 255, 255));
}

void tst_SceneSettings::regionBackgroundIsNeverPaintedWithTheScene()
{
    PictureWindow w;
    QImage region(200, 150, QImage::Format_ARGB32);
    region.fill(qRgb(255, 0, 0));
    w.scene()->setRegionBackGroudImage(region);

    QImage target(20, 20, QImage::Format_ARGB32);
    target.fill(Qt::white);
    QPainter painter(&target);
    w.scene()->render(&painter, QRectF(0, 0, 20, 20), QRectF(0, 0, 20, 20));
    painter.end();
    // The picture's grey, not the region background's red.
    QCOMPARE(target.pixel(10, 10), qRgb(60, 60, 60));
}

void tst_SceneSettings::sceneNeverEmitsItsPressSignal()
{
    PictureWindow w;
    QSignalSpy press(w.scene(), &ImageCtrlScene::sigMousePress);
    w.click(QPointF(30, 30));
    w.scene()->SetDrawMode(DM_RECT1);
    w.drag(QPointF(30, 30), QPointF(60, 60));
    w.click(QPointF(10, 10), Qt::RightButton);
    QCOMPARE(press.count(), 0);
}

QTEST_MAIN(tst_SceneSettings)
#include "tst_scenesettings.moc"
