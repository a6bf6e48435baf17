#include "odtext.h"
#include "odrect1.h"
#include "odshapewatcher.h"

#include "testkit.h"

#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>
#include <QtTest>

#include <memory>

using namespace Kit;

namespace {

// Notes every text whose destruction it hears of.
class TextWatcher : public ODShapeWatcher
{
public:
    void shapeDestroyed(ODShape*) override {}
    void sceneDestroyed(QGraphicsScene*) override {}
    void textDestroyed(ODText* text) override { destroyed << text->GetID(); }

    // The ids, read while each text was still whole.
    QList<long> destroyed;
};

QSet<QGraphicsItem*> itemsOf(const QGraphicsScene& scene)
{
    const QList<QGraphicsItem*> items = scene.items();
    return QSet<QGraphicsItem*>(items.begin(), items.end());
}

// The scene rectangle of an item of this text, font and position: what a
// text's hit test compares with.
QRectF sceneRectOf(const QString& text, const QFont& font, const QPointF& pos)
{
    QGraphicsScene scene;
    QGraphicsTextItem* item = scene.addText(text, font);
    item->setPos(pos);
    return item->sceneBoundingRect();
}

// The viewport pixels of a colour near colour within area.
Blob nearColour(const QImage& image, const QRect& area, QRgb colour, int tolerance)
{
    Blob blob;
    const QRect clipped = area.intersected(image.rect());
    for (int y = clipped.top(); y <= clipped.bottom(); ++y) {
        for (int x = clipped.left(); x <= clipped.right(); ++x) {
            if (channelDifference(image.pixel(x, y), colour) <= tolerance) {
                ++blob.count;
                blob.bounds = blob.bounds.isNull() ? QRect(x, y, 1, 1) : blob.bounds.united(QRect(x, y, 1, 1));
            }
        }
    }
    return blob;
}

} // namespace

// The text on the scene: its fields and their defaults, its items, reference
// and current position, hit test, and how it paints.
class tst_ODText : public QObject
{
    Q_OBJECT

private slots:
    void defaultsOfEveryField();
    void takesThePenColourOfItsImageScene();
    void anotherSceneLeavesItGreen();
    void pointConstructorSetsOnlyTheCurrentPosition();
    void constructorAddsAnEmptyTextItemAndAnEmptyHandleItem();
    void documentIsAlignedToTheTopLeft();
    void destructorRemovesBothItemsAndTellsTheWatchers();
    void showTextPutsReferencePositionColourFontAndText();
    void showTextWithoutUpdateOrgDataGoesToTheReference();
    void hideTextKeepsTheTextAndShowTextRestoresIt();
    void hitTestIsTheItemsSceneRectangleWithoutTolerance();
    void hitTestAfterHideTextSeesTheEmptyDocument();
    void moveToIsRelativeAndPosFollows_data();
    void moveToIsRelativeAndPosFollows();
    void showHandleDoesNothingAndHideHandleEmptiesThePath();
    void makeElpHandleIsSixBySixWhateverTheScale();
    void zValueReachesBothItems();
    void movableAndMoveEnableAreSeparateFlags();
    void idsOfTextsAndShapesNeverCollide();
    void textOutlivingItsSceneTouchesNoItem();
    void textIsPaintedInItsFontAndColourAtEveryZoom_data();
    void textIsPaintedInItsFontAndColourAtEveryZoom();

    void layerTakesTextsAndMarksThemInOverlayMode();
    void layerSelectsTextsWithoutADuplicateTest();
    void clearAllTextDeletesTheTextsAndLeavesTheSelection();
    void removeTextDeletesTheFirstOfTheIdOnly();
    void textAtAPointIsTheOldestHit();
    void updateTextGivesEveryTextTheScenesScaleAndPen();
    void showTextShowsEveryTextOfTheLayer();
    void textsGoWithTheirLayerWhileTheSceneIsWhole();
};

void tst_ODText::defaultsOfEveryField()
{
    QGraphicsScene scene;
    const long next = ODShape::s_ID;
    ODText text(&scene);
    QCOMPARE(text.GetID(), next);
    QCOMPARE(ODShape::s_ID, next + 1);
    QCOMPARE(text.getScene(), &scene);
    QCOMPARE(text.GetFont().family(), QString("Arial"));
    QCOMPARE(text.GetFont().pointSize(), 12);
    QCOMPARE(text.Text(), QString("text"));
    QCOMPARE(text.Pos(), QPointF(0, 0));
    QCOMPARE(text.curPos(), QPointF(0, 0));
    QVERIFY(text.MoveEnable());
    QVERIFY(text.IsMovable());
    QVERIFY(!text.isOverlay());
    QCOMPARE(text.GetScale(), 1.0f);
    float x = -1, y = -1;
    text.GetOffset(x, y);
    QCOMPARE(x, 0.0f);
    QCOMPARE(y, 0.0f);
    // Offset and scale are stored and read by nothing else.
    text.SetOffset(3.5f, -2.0f);
    text.SetScale(4.0f);
    text.GetOffset(x, y);
    QCOMPARE(x, 3.5f);
    QCOMPARE(y, -2.0f);
    QCOMPARE(text.GetScale(), 4.0f);
}

void tst_ODText::takesThePenColourOfItsImageScene()
{
    ImageCtrlScene scene;
    QCOMPARE(ODText(&scene).GetColor(), QColor(0, 0, 255, 255));
    scene.setPenColor(QColor(200, 30, 40, 128));
    QCOMPARE(ODText(&scene).GetColor(), QColor(200, 30, 40, 128));
}

void tst_ODText::anotherSceneLeavesItGreen()
{
    QGraphicsScene scene;
    QCOMPARE(ODText(&scene).GetColor(), QColor(0, 255, 0, 255));
}

void tst_ODText::pointConstructorSetsOnlyTheCurrentPosition()
{
    QGraphicsScene scene;
    ODText text(&scene, QPointF(40.5, 30.25));
    QCOMPARE(text.curPos(), QPointF(40.5, 30.25));
    QCOMPARE(text.Pos(), QPointF(0, 0));
}

void tst_ODText::constructorAddsAnEmptyTextItemAndAnEmptyHandleItem()
{
    QGraphicsScene scene;
    ODText text(&scene);
    QCOMPARE(scene.items().size(), 2);
    QVERIFY(text.textItem());
    QVERIFY(text.handleItem());
    QCOMPARE(text.textItem()->scene(), &scene);
    QCOMPARE(text.handleItem()->scene(), &scene);
    QCOMPARE(text.textItem()->toPlainText(), QString());
    QCOMPARE(text.textItem()->font(), QFont());
    QVERIFY(text.handleItem()->path().isEmpty());
}

void tst_ODText::documentIsAlignedToTheTopLeft()
{
    QGraphicsScene scene;
    ODText text(&scene);
    QTextDocument* document = text.textItem()->document();
    QCOMPARE(document->firstBlock().blockFormat().alignment(), Qt::AlignLeft | Qt::AlignTop);
    // The cursor was set back with nothing selected.
    QVERIFY(!text.textItem()->textCursor().hasSelection());
}

void tst_ODText::destructorRemovesBothItemsAndTellsTheWatchers()
{
    QGraphicsScene scene;
    QGraphicsRectItem* neighbour = scene.addRect(QRectF(0, 0, 5, 5));
    const QSet<QGraphicsItem*> before = itemsOf(scene);
    TextWatcher watcher;
    auto text = std::make_unique<ODText>(&scene, QPointF(10, 10));
    const long id = text->GetID();
    text->ShowText();
    QCOMPARE(scene.items().size(), before.size() + 2);
    text.reset();
    QCOMPARE(itemsOf(scene), before);
    QCOMPARE(neighbour->scene(), &scene);
    QCOMPARE(watcher.destroyed, QList<long>({id}));
}

void tst_ODText::showTextPutsReferencePositionColourFontAndText()
{
    QGraphicsScene scene;
    ODText text(&scene);
    const QFont font("DejaVu Sans", 20);
    text.SetColor(QColor(10, 200, 30));
    text.SetFont(font);
    text.SetText("Öffnung 7");
    text.SetPos(QPointF(15.5, 25.75));
    text.ShowText();
    QCOMPARE(text.curPos(), QPointF(15.5, 25.75));
    QCOMPARE(text.textItem()->pos(), QPointF(15.5, 25.75));
    QCOMPARE(text.textItem()->defaultTextColor(), QColor(10, 200, 30));
    QCOMPARE(text.textItem()->font(), font);
    QCOMPARE(text.textItem()->toPlainText(), QString("Öffnung 7"));
}

void tst_ODText::showTextWithoutUpdateOrgDataGoesToTheReference()
{
    QGraphicsScene scene;
    ODText dropped(&scene, QPointF(50, 60));
    dropped.ShowText();
    QCOMPARE(dropped.textItem()->pos(), QPointF(0, 0));

    // As the text tool does it: the press point becomes the reference first.
    ODText placed(&scene, QPointF(50, 60));
    placed.UpdateOrgData();
    placed.ShowText();
    QCOMPARE(placed.textItem()->pos(), QPointF(50, 60));
    QCOMPARE(placed.Pos(), QPointF(50, 60));
}

void tst_ODText::hideTextKeepsTheTextAndShowTextRestoresIt()
{
    QGraphicsScene scene;
    ODText text(&scene);
    text.SetText("kept");
    text.ShowText();
    text.HideText();
    QCOMPARE(text.textItem()->toPlainText(), QString());
    QCOMPARE(text.Text(), QString("kept"));
    text.ShowText();
    QCOMPARE(text.textItem()->toPlainText(), QString("kept"));
}

void tst_ODText::hitTestIsTheItemsSceneRectangleWithoutTolerance()
{
    QGraphicsScene scene;
    ODText text(&scene);
    text.SetText("a longer line of text");
    text.SetPos(QPointF(20, 30));
    text.ShowText();
    const QRectF rect = text.textItem()->sceneBoundingRect();
    QCOMPARE(rect, sceneRectOf("a longer line of text", text.GetFont(), QPointF(20, 30)));
    QVERIFY(rect.width() > 20 && rect.height() > 5);
    QVERIFY(text.HitTest(rect.center()));
    QVERIFY(text.HitTest(rect.topLeft()));
    QVERIFY(text.HitTest(rect.bottomRight() - QPointF(0.01, 0.01)));
    QVERIFY(!text.HitTest(rect.topLeft() - QPointF(0.01, 0)));
    QVERIFY(!text.HitTest(rect.topLeft() - QPointF(0, 0.01)));
    QVERIFY(!text.HitTest(QPointF(rect.right() + 0.5, rect.center().y())));
    QVERIFY(!text.HitTest(QPointF(rect.center().x(), rect.bottom() + 0.5)));
}

void tst_ODText::hitTestAfterHideTextSeesTheEmptyDocument()
{
    QGraphicsScene scene;
    ODText text(&scene);
    text.SetText("a longer line of text");
    text.SetPos(QPointF(20, 30));
    text.ShowText();
    const QRectF shown = text.textItem()->sceneBoundingRect();
    text.HideText();
    const QRectF empty = text.textItem()->sceneBoundingRect();
    QCOMPARE(empty, sceneRectOf(QString(), text.GetFont(), QPointF(20, 30)));
    QVERIFY(empty.width() < shown.width());
    // Where the end of the text was, nothing is found any more; the empty
    // document's own corner still is.
    const QPointF endOfText(shown.right() - 2, shown.center().y());
    QVERIFY(!text.HitTest(endOfText));
    QVERIFY(text.HitTest(empty.center()));
}

void tst_ODText::moveToIsRelativeAndPosFollows_data()
{
    QTest::addColumn<QPointF>("start");
    QTest::addColumn<QPointF>("delta");
    QTest::newRow("right and down") << QPointF(10, 20) << QPointF(5.5, 7.25);
    QTest::newRow("left and up, off the picture") << QPointF(10, 20) << QPointF(-30, -40);
    QTest::newRow("no move") << QPointF(10, 20) << QPointF(0, 0);
}

void tst_ODText::moveToIsRelativeAndPosFollows()
{
    QFETCH(QPointF, start);
    QFETCH(QPointF, delta);
    QGraphicsScene scene;
    ODText text(&scene);
    text.SetPos(start);
    text.ShowText();
    text.MoveTo(delta);
    QCOMPARE(text.curPos(), start + delta);
    QCOMPARE(text.Pos(), start + delta);
    text.MoveTo(delta);
    QCOMPARE(text.Pos(), start + 2 * delta);
    text.ShowText();
    QCOMPARE(text.textItem()->pos(), start + 2 * delta);
}

void tst_ODText::showHandleDoesNothingAndHideHandleEmptiesThePath()
{
    QGraphicsScene scene;
    ODText text(&scene);
    QPainterPath path;
    path.addRect(0, 0, 6, 6);
    text.handleItem()->setPath(path);
    text.ShowHandle();
    QCOMPARE(text.handleItem()->path(), path);
    text.HideHandle();
    QVERIFY(text.handleItem()->path().isEmpty());
}

void tst_ODText::makeElpHandleIsSixBySixWhateverTheScale()
{
    QGraphicsScene scene;
    ODText text(&scene);
    for (float scale : {0.25f, 1.0f, 4.0f}) {
        text.SetScale(scale);
        QCOMPARE(text.MakeElpHandle(QPointF(10, 20)), QRectF(7, 17, 6, 6));
    }
}

void tst_ODText::zValueReachesBothItems()
{
    QGraphicsScene scene;
    ODText text(&scene);
    verifyZValueReaches(text, {text.textItem(), text.handleItem()});
}

void tst_ODText::movableAndMoveEnableAreSeparateFlags()
{
    QGraphicsScene scene;
    ODText text(&scene);
    text.SetMovable(false);
    QVERIFY(!text.IsMovable());
    QVERIFY(text.MoveEnable());
    text.SetMovable(true);
    text.SetMoveEnable(false);
    QVERIFY(text.IsMovable());
    QVERIFY(!text.MoveEnable());
}

void tst_ODText::idsOfTextsAndShapesNeverCollide()
{
    QGraphicsScene scene;
    QSet<long> ids;
    std::vector<std::unique_ptr<ODText>> texts;
    std::vector<std::unique_ptr<ODRect1>> shapes;
    for (int i = 0; i < 5; ++i) {
        texts.emplace_back(new ODText(&scene));
        shapes.emplace_back(new ODRect1(&scene));
        QVERIFY(!ids.contains(texts.back()->GetID()));
        ids.insert(texts.back()->GetID());
        QVERIFY(!ids.contains(shapes.back()->GetShapeID()));
        ids.insert(shapes.back()->GetShapeID());
        // One after the other from the one counter.
        QCOMPARE(shapes.back()->GetShapeID(), texts.back()->GetID() + 1);
    }
    // Ids are not reused after the texts go.
    const long last = shapes.back()->GetShapeID();
    texts.clear();
    QCOMPARE(ODText(&scene).GetID(), last + 1);
}

void tst_ODText::textOutlivingItsSceneTouchesNoItem()
{
    auto scene = std::make_unique<QGraphicsScene>();
    auto text = std::make_unique<ODText>(scene.get(), QPointF(10, 10));
    text->SetText("orphan");
    text->UpdateOrgData();
    text->ShowText();
    QVERIFY(text->HitTest(QPointF(12, 12)));
    scene.reset();

    QCOMPARE(text->getScene(), nullptr);
    QCOMPARE(text->textItem(), nullptr);
    QCOMPARE(text->handleItem(), nullptr);
    // What the text holds itself still answers; its items are gone.
    text->ShowText();
    text->HideText();
    text->HideHandle();
    text->setZValue(5);
    text->MoveTo(QPointF(1, 1));
    QCOMPARE(text->Pos(), QPointF(11, 11));
    QCOMPARE(text->Text(), QString("orphan"));
    QVERIFY(!text->HitTest(QPointF(12, 12)));
    TextWatcher watcher;
    const long id = text->GetID();
    text.reset();
    QCOMPARE(watcher.destroyed, QList<long>({id}));
}

void tst_ODText::textIsPaintedInItsFontAndColourAtEveryZoom_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 4") << 4.0;
}

void tst_ODText::textIsPaintedInItsFontAndColourAtEveryZoom()
{
    KIT_REQUIRE_FONTS();
    QFETCH(double, zoom);
    PictureWindow w(zoom, QSize(200, 150), QSize(900, 700));
    const QRgb red = qRgb(230, 20, 30);
    QFont font("DejaVu Sans");
    font.setPointSize(14);
    auto* text = new ODText(w.scene());
    text->SetColor(QColor(red));
    text->SetFont(font);
    text->SetText("HH");
    text->SetPos(QPointF(20, 15));
    w.active()->AddText(text);
    text->ShowText();

    const QImage grab = w.grabViewport();
    const QRectF sceneRect = text->textItem()->sceneBoundingRect();
    const QRect device = w.view()->mapFromScene(sceneRect).boundingRect();
    QVERIFY(grab.rect().contains(device));
    // The glyphs' cores are the text's colour exactly; smoothed edges blend.
    const Blob inside = nearColour(grab, device, red, kChannelTolerance);
    const Blob anywhere = nearColour(grab, grab.rect(), red, kChannelTolerance);
    QVERIFY2(inside.count > 0, "no pixel of the text's colour");
    QCOMPARE(anywhere.count, inside.count);
    // The glyphs' height in device pixels is that of the font at this zoom:
    // the cap height of 14 points, in scene units, times the zoom.
    const QFontMetricsF metrics(font);
    const double capHeight = metrics.capHeight() * zoom;
    QVERIFY2(near(inside.bounds.height(), capHeight, 1.5 * zoom),
             qPrintable(QString("%1 device pixels high, the cap height is %2").arg(inside.bounds.height()).arg(capHeight)));
    const double advance = metrics.horizontalAdvance("HH") * zoom;
    QVERIFY2(inside.bounds.width() <= advance && inside.bounds.width() >= advance / 2,
             qPrintable(QString("%1 device pixels wide, the advance is %2").arg(inside.bounds.width()).arg(advance)));
    // The glyphs stand within the item's top-left aligned document, left and
    // top margins included.
    QVERIFY(inside.bounds.left() >= device.left());
    QVERIFY(inside.bounds.top() >= device.top());
}

namespace {

ODText* newText(ShaperLayer* layer, const QString& content, const QPointF& pos)
{
    auto* text = new ODText(layer->scene());
    text->SetText(content);
    text->SetPos(pos);
    return text;
}

} // namespace

void tst_ODText::layerTakesTextsAndMarksThemInOverlayMode()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    ODText* roi = newText(layer, "roi", QPointF(10, 10));
    layer->AddText(roi);
    v.scene()->setIsOverlay(true);
    ODText* overlay = newText(layer, "overlay", QPointF(10, 40));
    layer->AddText(overlay);
    QCOMPARE(layer->texts(), QVector<ODText*>({roi, overlay}));
    QVERIFY(!roi->isOverlay());
    QVERIFY(overlay->isOverlay());
    // Texts are no shapes, and adding does not show them.
    QVERIFY(layer->shapes().isEmpty());
    QCOMPARE(overlay->textItem()->toPlainText(), QString());
}

void tst_ODText::layerSelectsTextsWithoutADuplicateTest()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    ODText* text = newText(layer, "a", QPointF(10, 10));
    layer->AddText(text);
    layer->AddSelectedText(text);
    layer->AddSelectedText(text);
    QCOMPARE(layer->selectedTexts(), QVector<ODText*>({text, text}));
    // Handles of texts show nothing; clearing the selection keeps the text.
    layer->ShowTextHandle();
    QVERIFY(text->handleItem()->path().isEmpty());
    layer->ClearAllSelectedText();
    QVERIFY(layer->selectedTexts().isEmpty());
    QCOMPARE(layer->texts(), QVector<ODText*>({text}));
}

void tst_ODText::clearAllTextDeletesTheTextsAndLeavesTheSelection()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    const int itemsBefore = v.scene()->items().size();
    TextWatcher watcher;
    ODText* first = newText(layer, "1", QPointF(10, 10));
    ODText* second = newText(layer, "2", QPointF(10, 40));
    const QList<long> ids = {first->GetID(), second->GetID()};
    layer->AddText(first);
    layer->AddText(second);
    layer->AddSelectedText(second);
    layer->ClearAllText();
    QVERIFY(layer->texts().isEmpty());
    QCOMPARE(watcher.destroyed, ids);
    QCOMPARE(v.scene()->items().size(), itemsBefore);
    // The selected list still holds its old entry: callers clear it first.
    QCOMPARE(layer->selectedTexts().size(), 1);
    layer->ClearAllSelectedText();
}

void tst_ODText::removeTextDeletesTheFirstOfTheIdOnly()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    ODText* keep = newText(layer, "keep", QPointF(10, 10));
    ODText* go = newText(layer, "go", QPointF(10, 40));
    layer->AddText(keep);
    layer->AddText(go);
    TextWatcher watcher;
    // Unknown ids change nothing.
    layer->removeText(-1);
    layer->removeText(ODShape::s_ID + 100);
    QCOMPARE(layer->texts(), QVector<ODText*>({keep, go}));
    QVERIFY(watcher.destroyed.isEmpty());
    const long id = go->GetID();
    layer->removeText(id);
    QCOMPARE(layer->texts(), QVector<ODText*>({keep}));
    QCOMPARE(watcher.destroyed, QList<long>({id}));
    layer->removeText(id);
    QCOMPARE(layer->texts(), QVector<ODText*>({keep}));
}

void tst_ODText::textAtAPointIsTheOldestHit()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    QVERIFY(!layer->GetTextAtPoint(QPointF(20, 20)));
    ODText* older = newText(layer, "older text", QPointF(10, 10));
    ODText* younger = newText(layer, "younger text", QPointF(14, 12));
    layer->AddText(older);
    layer->AddText(younger);
    layer->ShowText();
    younger->setZValue(100);
    const QPointF both(20, 20);
    QVERIFY(older->HitTest(both) && younger->HitTest(both));
    QCOMPARE(layer->GetTextAtPoint(both), older);
    const QPointF youngerOnly = younger->textItem()->sceneBoundingRect().bottomRight() - QPointF(1, 1);
    QVERIFY(!older->HitTest(youngerOnly));
    QCOMPARE(layer->GetTextAtPoint(youngerOnly), younger);
    QCOMPARE(layer->GetTextAtPoint(QPointF(500, 500)), nullptr);
}

void tst_ODText::updateTextGivesEveryTextTheScenesScaleAndPen()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    ODText* red = newText(layer, "red", QPointF(10, 10));
    red->SetColor(Qt::red);
    ODText* green = newText(layer, "green", QPointF(10, 40));
    green->SetColor(Qt::green);
    layer->AddText(red);
    layer->AddText(green);
    v.scene()->setScale(2.5);
    v.scene()->setPenColor(QColor(12, 34, 56, 78));
    layer->UpdateText();
    for (ODText* text : {red, green}) {
        QCOMPARE(text->GetColor(), QColor(12, 34, 56, 78));
        QCOMPARE(text->GetScale(), 2.5f);
    }
    // Shown again, the items take the colour.
    layer->ShowText();
    QCOMPARE(red->textItem()->defaultTextColor(), QColor(12, 34, 56, 78));
}

void tst_ODText::showTextShowsEveryTextOfTheLayer()
{
    StandaloneView v;
    ShaperLayer* layer = v.scene()->GetActiveLayer();
    ODText* first = newText(layer, "first", QPointF(10, 10));
    ODText* second = newText(layer, "second", QPointF(30, 40));
    layer->AddText(first);
    layer->AddText(second);
    layer->ShowText();
    QCOMPARE(first->textItem()->toPlainText(), QString("first"));
    QCOMPARE(second->textItem()->toPlainText(), QString("second"));
    QCOMPARE(second->textItem()->pos(), QPointF(30, 40));
}

void tst_ODText::textsGoWithTheirLayerWhileTheSceneIsWhole()
{
    TextWatcher watcher;
    QList<long> ids;
    {
        StandaloneView v;
        ShaperLayer* layer = v.scene()->GetActiveLayer();
        for (const char* content : {"a", "b"}) {
            ODText* text = newText(layer, content, QPointF(10, 10));
            ids << text->GetID();
            layer->AddText(text);
        }
        layer->ShowText();
        QVERIFY(watcher.destroyed.isEmpty());
    }
    QCOMPARE(watcher.destroyed, ids);
}

QTEST_MAIN(tst_ODText)
#include "tst_odtext.moc"
