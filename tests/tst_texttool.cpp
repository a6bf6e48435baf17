// The text tool as the operator uses it: mouse input to the viewport at scene
// points places a text in the placing model and drags texts in the picking
// model, in any draw mode, beside the tool of that mode; the host hears of it
// in order. The tool is an object of the process: a window torn down before,
// during or after a text drag leaves nothing behind in it, and the next window
// works.

#include "odtext.h"
#include "odtexttool.h"

#include "testkit.h"

#include <QGraphicsRectItem>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsTextItem>
#include <QtTest>

#include <functional>
#include <memory>

using namespace Kit;

namespace {

ODTextTool* textTool()
{
    return ODTextTool::GetODTextTool();
}

// A text put straight into a layer and shown, as the host's display call
// leaves one.
ODText* addText(ShaperLayer* layer, const QString& content, const QPointF& pos)
{
    auto* text = new ODText(layer->scene());
    text->SetText(content);
    text->SetPos(pos);
    layer->AddText(text);
    text->ShowText();
    return text;
}

// Where the operator grabs a text: the middle of its item.
QPointF middleOf(const ODText* text)
{
    return text->textItem()->sceneBoundingRect().center();
}

// Arms the placing of a text with this content, as the window's text call does.
void armPlacing(const QString& content)
{
    textTool()->setModel(ODTextTool::PlaceText);
    textTool()->setText(content);
}

const QPointF kPress(40, 30);
const QPointF kDragTo(90, 70);
const QPointF kEmptyGround(150, 120);

// When a window goes, measured against the operator's text drag there.
enum class Moment { BeforeDrag, MidDrag, AfterDrag };

void addDrawModeRows()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("select mode") << int(DM_SELECT);
    QTest::newRow("rectangle mode") << int(DM_RECT1);
    QTest::newRow("ellipse mode") << int(DM_ELLIPSE);
    QTest::newRow("point mode") << int(DM_POINT);
}

// Enters a draw mode as the tool bar does; the select mode is the window's own.
void enterMode(PictureWindow& w, DrawMode mode)
{
    if (mode != DM_SELECT)
        w.window()->SelectDrawROIMode(mode);
    QCOMPARE(w.scene()->GetDrawMode(), mode);
}

// What the tool of the mode reports of its own shape at a press and release
// on empty ground, before the text tool reports: the drawing tools' new shape
// was made just before the text at the press, the point tool's is made after
// it at the release.
QStringList modeToolReports(DrawMode mode, long textId)
{
    switch (mode) {
    case DM_RECT1:
    case DM_ELLIPSE: return {clickedText(textId - 1)};
    case DM_POINT: return {clickedText(textId + 1)};
    default: return {};
    }
}

// An item under the mouse that notes, at the press the scene hands it, what
// the text tool has done by then.
class PressWitness : public QGraphicsRectItem
{
public:
    explicit PressWitness(const QRectF& rect)
        : QGraphicsRectItem(rect)
    {
    }
    int textsAtPress = -1;
    ODText* textInHandAtPress = nullptr;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override
    {
        auto* scene = static_cast<ImageCtrlScene*>(this->scene());
        textsAtPress = scene->GetActiveLayer()->texts().size();
        textInHandAtPress = textTool()->text();
        event->accept();
    }
};

} // namespace

class tst_TextTool : public QObject
{
    Q_OBJECT

private slots:
    void startsInThePickingModelWithTheContentText();
    void init();
    void cleanup();

    void isOneObjectOfTheProcess();
    void pressInThePlacingModelMakesATextAtThePressPoint_data();
    void pressInThePlacingModelMakesATextAtThePressPoint();
    void placedTextTakesTheScenesLookAtThePress_data();
    void placedTextTakesTheScenesLookAtThePress();
    void dragOfANewTextMovesItAndReportsMoved_data();
    void dragOfANewTextMovesItAndReportsMoved();
    void pressOnAMovableTextPicksItAndReleaseReportsClicked();
    void dragOfAPickedTextMovesItWithTheMouse_data();
    void dragOfAPickedTextMovesItWithTheMouse();
    void oldestTextUnderTheMouseIsPicked();
    void pressOnAnImmovableTextSelectsNothingAndReportsNothing();
    void pressOnEmptyGroundClearsTheSelectedTexts();
    void pressOnATextInADrawModeAlsoReachesTheDrawTool();
    void rightButtonNeverReachesTheTextTool();
    void middleButtonPlacesAText();
    void doubleClickAloneReachesNoTextTool();
    void textToolComesAfterTheModesToolAndBeforeTheItems();
    void pressWhileATextIsInHandPlacesNoSecondText();

    void nextWindowWorksAfterTeardown_data();
    void nextWindowWorksAfterTeardown();
    void otherWindowKeepsWorkingAfterTeardown_data();
    void otherWindowKeepsWorkingAfterTeardown();
    void textRemovedWhileInHandIsForgotten();
};

// First of all, before any test changed the process's tool.
void tst_TextTool::startsInThePickingModelWithTheContentText()
{
    QCOMPARE(textTool()->model(), ODTextTool::PickText);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressNone));
    QCOMPARE(textTool()->text(), nullptr);
    QCOMPARE(textTool()->newText(), QString("text"));
    QCOMPARE(textTool()->lastPoint(), QPointF(0, 0));
}

void tst_TextTool::init()
{
    forgetCurrentShape();
    textTool()->setModel(ODTextTool::PickText);
    textTool()->setText("text");
}

void tst_TextTool::cleanup()
{
    forgetCurrentShape();
    textTool()->setModel(ODTextTool::PickText);
}

void tst_TextTool::isOneObjectOfTheProcess()
{
    QVERIFY(textTool());
    QCOMPARE(ODTextTool::GetODTextTool(), textTool());
    textTool()->setModel(ODTextTool::PlaceText);
    QCOMPARE(ODTextTool::GetODTextTool()->model(), ODTextTool::PlaceText);
    QCOMPARE(sizeof(ODTextTool::Model), size_t(4));
}

void tst_TextTool::pressInThePlacingModelMakesATextAtThePressPoint_data()
{
    addDrawModeRows();
}

void tst_TextTool::pressInThePlacingModelMakesATextAtThePressPoint()
{
    QFETCH(int, mode);
    PictureWindow w;
    enterMode(w, DrawMode(mode));
    HostLog log(w.wnd.get());
    armPlacing("Messpunkt 3");
    const long before = ODShape::s_ID;

    w.press(kPress);
    QCOMPARE(w.active()->texts().size(), 1);
    ODText* text = w.active()->texts().first();
    QCOMPARE(textTool()->text(), text);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressedText));
    QCOMPARE(textTool()->model(), ODTextTool::PlaceText);
    QCOMPARE(textTool()->lastPoint(), w.seen(kPress));
    QCOMPARE(text->Text(), QString("Messpunkt 3"));
    QCOMPARE(text->Pos(), w.seen(kPress));
    QCOMPARE(text->textItem()->pos(), w.seen(kPress));
    QCOMPARE(text->textItem()->toPlainText(), QString("Messpunkt 3"));
    // A placed text is not selected.
    QVERIFY(w.active()->selectedTexts().isEmpty());
    // The drawing tools made their shape first.
    const long drawnFirst = mode == DM_RECT1 || mode == DM_ELLIPSE ? 1 : 0;
    QCOMPARE(text->GetID(), before + drawnFirst);

    w.release(kPress);
    QCOMPARE(log.shapeEvents(), modeToolReports(DrawMode(mode), text->GetID()) + QStringList{clickedText(text->GetID())});
    QCOMPARE(textTool()->model(), ODTextTool::PickText);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressNone));
    QCOMPARE(textTool()->text(), nullptr);
    // The text stays where it was placed; the content is kept for the next.
    QCOMPARE(w.active()->texts(), QVector<ODText*>({text}));
    QCOMPARE(text->Pos(), w.seen(kPress));
    QCOMPARE(textTool()->newText(), QString("Messpunkt 3"));
    // The next press picks: no second text.
    w.click(kEmptyGround);
    QCOMPARE(w.active()->texts().size(), 1);
}

void tst_TextTool::placedTextTakesTheScenesLookAtThePress_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("zoom 1") << 1.0;
    QTest::newRow("zoom 2") << 2.0;
    QTest::newRow("zoom 0.5") << 0.5;
}

void tst_TextTool::placedTextTakesTheScenesLookAtThePress()
{
    QFETCH(double, zoom);
    PictureWindow w(zoom);
    w.scene()->setPenColor(QColor(200, 30, 40, 255));
    w.view()->setLimitMousePos(true);
    armPlacing("look");
    w.press(kPress);
    ODText* text = textTool()->text();
    QVERIFY(text);
    QCOMPARE(text->GetColor(), QColor(200, 30, 40, 255));
    QCOMPARE(text->textItem()->defaultTextColor(), QColor(200, 30, 40, 255));
    QCOMPARE(text->GetScale(), float(w.scene()->getScale()));
    QCOMPARE(double(text->GetScale()), zoom);
    float x = -1, y = -1;
    text->GetOffset(x, y);
    QCOMPARE(x, 0.0f);
    QCOMPARE(y, 0.0f);
    QVERIFY(!text->isOverlay());
    QVERIFY(!w.view()->limitMousePos());
    w.release(kPress);
    // A later pen colour does not reach the text by itself.
    w.scene()->setPenColor(Qt::green);
    QCOMPARE(text->GetColor(), QColor(200, 30, 40, 255));
}

void tst_TextTool::dragOfANewTextMovesItAndReportsMoved_data()
{
    addDrawModeRows();
}

void tst_TextTool::dragOfANewTextMovesItAndReportsMoved()
{
    QFETCH(int, mode);
    PictureWindow w;
    enterMode(w, DrawMode(mode));
    HostLog log(w.wnd.get());
    armPlacing("dragged");
    w.press(kPress);
    ODText* text = textTool()->text();
    QVERIFY(text);
    w.move(kDragTo);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::MovedText));
    QCOMPARE(text->Pos(), w.seen(kDragTo));
    QCOMPARE(text->textItem()->pos(), w.seen(kDragTo));
    QCOMPARE(textTool()->lastPoint(), w.seen(kDragTo));
    w.release(kDragTo);
    QStringList expected;
    if (mode == DM_RECT1 || mode == DM_ELLIPSE)
        expected << clickedText(text->GetID() - 1);
    if (mode == DM_POINT)
        expected << clickedText(text->GetID() + 1);
    expected << movedText(text->GetID());
    QCOMPARE(log.shapeEvents(), expected);
    QCOMPARE(textTool()->model(), ODTextTool::PickText);
    QCOMPARE(text->Pos(), w.seen(kDragTo));
}

void tst_TextTool::pressOnAMovableTextPicksItAndReleaseReportsClicked()
{
    PictureWindow w;
    ODText* text = addText(w.active(), "pick me", kPress);
    HostLog log(w.wnd.get());
    const QPointF grab = middleOf(text);
    w.press(grab);
    QCOMPARE(textTool()->text(), text);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressedText));
    QCOMPARE(w.active()->selectedTexts(), QVector<ODText*>({text}));
    QCOMPARE(textTool()->lastPoint(), w.seen(grab));
    w.release(grab);
    QCOMPARE(log.shapeEvents(), QStringList({clickedText(text->GetID())}));
    QCOMPARE(text->Pos(), kPress);
    // Picked again: the selected list takes it twice.
    w.click(grab);
    QCOMPARE(w.active()->selectedTexts(), QVector<ODText*>({text, text}));
}

void tst_TextTool::dragOfAPickedTextMovesItWithTheMouse_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("mode");
    QTest::newRow("select mode at zoom 1") << 1.0 << int(DM_SELECT);
    QTest::newRow("select mode at zoom 2") << 2.0 << int(DM_SELECT);
    QTest::newRow("select mode at zoom 0.5") << 0.5 << int(DM_SELECT);
    QTest::newRow("line mode at zoom 1") << 1.0 << int(DM_LINE);
}

void tst_TextTool::dragOfAPickedTextMovesItWithTheMouse()
{
    QFETCH(double, zoom);
    QFETCH(int, mode);
    PictureWindow w(zoom, QSize(400, 300));
    ODText* text = addText(w.active(), "drag me", kPress);
    enterMode(w, DrawMode(mode));
    HostLog log(w.wnd.get());
    const QPointF grab = middleOf(text);
    const QPointF halfWay = grab + QPointF(20, 10);
    const QPointF end = grab + QPointF(35, 25);
    w.press(grab);
    w.move(halfWay);
    QCOMPARE(text->Pos(), kPress + w.seen(halfWay) - w.seen(grab));
    w.move(end);
    w.release(end);
    const QPointF moved = kPress + w.seen(end) - w.seen(grab);
    QCOMPARE(text->Pos(), moved);
    QCOMPARE(text->textItem()->pos(), moved);
    QStringList expected;
    if (mode == DM_LINE)
        expected << clickedText(text->GetID() + 1);
    expected << movedText(text->GetID());
    QCOMPARE(log.shapeEvents(), expected);
}

void tst_TextTool::oldestTextUnderTheMouseIsPicked()
{
    PictureWindow w;
    ODText* older = addText(w.active(), "older", kPress);
    ODText* younger = addText(w.active(), "younger", kPress + QPointF(4, 3));
    younger->setZValue(10);
    // Both lie under the mouse, the younger one painted on top.
    QVERIFY(younger->HitTest(w.seen(middleOf(older))));
    w.press(middleOf(older));
    QCOMPARE(textTool()->text(), older);
    QCOMPARE(w.active()->selectedTexts(), QVector<ODText*>({older}));
    w.release(middleOf(older));
}

void tst_TextTool::pressOnAnImmovableTextSelectsNothingAndReportsNothing()
{
    PictureWindow w;
    ODText* text = addText(w.active(), "held", kPress);
    text->SetMovable(false);
    HostLog log(w.wnd.get());
    w.click(kEmptyGround);
    QCOMPARE(textTool()->lastPoint(), w.seen(kEmptyGround));

    const QPointF grab = middleOf(text);
    w.press(grab);
    QCOMPARE(textTool()->text(), nullptr);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressNone));
    QVERIFY(w.active()->selectedTexts().isEmpty());
    // The last point stays where the earlier press left it.
    QCOMPARE(textTool()->lastPoint(), w.seen(kEmptyGround));
    w.move(grab + QPointF(30, 30));
    w.release(grab + QPointF(30, 30));
    QCOMPARE(text->Pos(), kPress);
    QCOMPARE(log.shapeEvents(), QStringList());
}

void tst_TextTool::pressOnEmptyGroundClearsTheSelectedTexts()
{
    PictureWindow w;
    ODText* first = addText(w.active(), "one", kPress);
    ODText* second = addText(w.active(), "two", kDragTo);
    w.click(middleOf(first));
    w.click(middleOf(second));
    QCOMPARE(w.active()->selectedTexts(), QVector<ODText*>({first, second}));
    HostLog log(w.wnd.get());
    w.press(kEmptyGround);
    QVERIFY(w.active()->selectedTexts().isEmpty());
    QCOMPARE(w.active()->texts(), QVector<ODText*>({first, second}));
    QCOMPARE(textTool()->text(), nullptr);
    w.release(kEmptyGround);
    QCOMPARE(log.shapeEvents(), QStringList());
}

void tst_TextTool::pressOnATextInADrawModeAlsoReachesTheDrawTool()
{
    PictureWindow w;
    ODText* text = addText(w.active(), "under the pen", kPress);
    const QPointF grab = middleOf(text);
    w.window()->SelectDrawROIMode(DM_RECT1);
    HostLog log(w.wnd.get());
    const long rectId = ODShape::s_ID;
    w.drag(grab, grab + QPointF(40, 30));
    // The rectangle is drawn from the press, and the text dragged with it.
    QVERIFY(layerHasId(w.active(), rectId));
    ODRect1* rect = static_cast<ODRect1*>(w.active()->shapes().last());
    QCOMPARE(rect->GetShapeID(), rectId);
    QCOMPARE(paramsOf(rect), Params({w.seen(grab).x(), w.seen(grab).y(), w.seen(grab + QPointF(40, 30)).x(),
                                     w.seen(grab + QPointF(40, 30)).y()}));
    QCOMPARE(text->Pos(), kPress + w.seen(grab + QPointF(40, 30)) - w.seen(grab));
    QCOMPARE(log.shapeEvents(), QStringList({clickedText(rectId), movedText(text->GetID())}));
    QCOMPARE(w.scene()->GetDrawMode(), DM_SELECT);
}

void tst_TextTool::rightButtonNeverReachesTheTextTool()
{
    PictureWindow w;
    ODText* text = addText(w.active(), "right", kPress);
    HostLog log(w.wnd.get());
    // A right press and release in the placing model makes no text.
    armPlacing("not placed");
    w.click(kEmptyGround, Qt::RightButton);
    QCOMPARE(w.active()->texts().size(), 1);
    QCOMPARE(textTool()->model(), ODTextTool::PlaceText);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressNone));
    // Nor does it pick a text.
    textTool()->setModel(ODTextTool::PickText);
    w.press(middleOf(text), Qt::RightButton);
    QCOMPARE(textTool()->text(), nullptr);
    QVERIFY(w.active()->selectedTexts().isEmpty());
    w.release(middleOf(text), Qt::RightButton);
    QCOMPARE(log.shapeEvents(), QStringList());
}

void tst_TextTool::middleButtonPlacesAText()
{
    PictureWindow w;
    HostLog log(w.wnd.get());
    armPlacing("middle");
    w.click(kPress, Qt::MiddleButton);
    QCOMPARE(w.active()->texts().size(), 1);
    ODText* text = w.active()->texts().first();
    QCOMPARE(text->Pos(), w.seen(kPress));
    QCOMPARE(log.shapeEvents(), QStringList({clickedText(text->GetID())}));
}

void tst_TextTool::doubleClickAloneReachesNoTextTool()
{
    PictureWindow w;
    armPlacing("double");
    HostLog log(w.wnd.get());
    sendMouse(w.view(), QEvent::MouseButtonDblClick, viewportPos(w.view(), kPress), Qt::LeftButton, Qt::LeftButton);
    QVERIFY(w.active()->texts().isEmpty());
    QCOMPARE(textTool()->model(), ODTextTool::PlaceText);
    QCOMPARE(log.entries, QStringList({"doubleClick"}));
}

void tst_TextTool::textToolComesAfterTheModesToolAndBeforeTheItems()
{
    PictureWindow w;
    auto* witness = new PressWitness(QRectF(0, 0, 200, 150));
    w.scene()->addItem(witness);
    witness->setZValue(-10);
    w.window()->SelectDrawROIMode(DM_RECT1);
    armPlacing("order");
    const long first = ODShape::s_ID;
    w.press(kPress);
    // The rectangle tool took the first id, the text tool the next, and the
    // item under the mouse saw the text in hand.
    QVERIFY(layerHasId(w.active(), first));
    QCOMPARE(w.active()->texts().first()->GetID(), first + 1);
    QCOMPARE(witness->textsAtPress, 1);
    QCOMPARE(witness->textInHandAtPress, w.active()->texts().first());
    w.release(kPress);
    w.scene()->removeItem(witness);
    delete witness;
}

void tst_TextTool::pressWhileATextIsInHandPlacesNoSecondText()
{
    PictureWindow w;
    armPlacing("once");
    w.press(kPress);
    ODText* text = textTool()->text();
    QVERIFY(text);
    // A second press before any release, as a second button gives it.
    w.press(kDragTo, Qt::MiddleButton);
    QCOMPARE(w.active()->texts(), QVector<ODText*>({text}));
    QCOMPARE(textTool()->text(), text);
    QCOMPARE(textTool()->lastPoint(), w.seen(kDragTo));
    w.release(kDragTo, Qt::MiddleButton);
    QCOMPARE(textTool()->text(), nullptr);
    w.release(kDragTo);
}

namespace {

void addTeardownRows()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("moment");
    const QList<QPair<const char*, ODTextTool::Model>> models = {{"placing", ODTextTool::PlaceText},
                                                                 {"picking", ODTextTool::PickText}};
    const QList<QPair<const char*, Moment>> moments = {{"before the drag", Moment::BeforeDrag},
                                                       {"mid-drag", Moment::MidDrag},
                                                       {"after the drag", Moment::AfterDrag}};
    for (const auto& model : models) {
        for (const auto& moment : moments) {
            QTest::newRow(qPrintable(QString("%1 a text, torn down %2").arg(model.first, moment.first)))
                << int(model.second) << int(moment.second);
        }
    }
}

// The operator's text drag in w, cut off at moment: a new text placed at
// kPress and dragged to kDragTo, or a text of the host picked and dragged.
void textGesture(PictureWindow& w, ODTextTool::Model model, Moment moment)
{
    QPointF start = kPress;
    if (model == ODTextTool::PlaceText)
        armPlacing("going");
    else
        start = middleOf(addText(w.active(), "going", kPress));
    if (moment == Moment::BeforeDrag)
        return;
    w.press(start);
    w.move(kDragTo);
    QVERIFY(textTool()->text());
    if (moment == Moment::MidDrag)
        return;
    w.release(kDragTo);
}

// What the tool holds once the window of its text is gone.
void verifyToolHoldsNothing()
{
    QCOMPARE(textTool()->text(), nullptr);
    QCOMPARE(textTool()->getModeValue(), int(ODTextTool::PressNone));
}

// The operator's first text work in a window after another went: a text
// placed, picked and dragged, each reported with its id.
void verifyTextToolWorks(PictureWindow& w)
{
    HostLog log(w.wnd.get());
    textTool()->setModel(ODTextTool::PickText);
    armPlacing("next");
    w.click(kPress);
    QCOMPARE(w.active()->texts().size(), 1);
    ODText* text = w.active()->texts().first();
    QCOMPARE(text->Text(), QString("next"));
    QCOMPARE(log.shapeEvents(), QStringList({clickedText(text->GetID())}));

    log.entries.clear();
    const QPointF grab = middleOf(text);
    w.drag(grab, grab + QPointF(25, 15));
    QCOMPARE(text->Pos(), w.seen(kPress) + w.seen(grab + QPointF(25, 15)) - w.seen(grab));
    w.click(middleOf(text));
    QCOMPARE(log.shapeEvents(), QStringList({movedText(text->GetID()), clickedText(text->GetID())}));
    QCOMPARE(textTool()->model(), ODTextTool::PickText);
}

} // namespace

void tst_TextTool::nextWindowWorksAfterTeardown_data()
{
    addTeardownRows();
}

void tst_TextTool::nextWindowWorksAfterTeardown()
{
    QFETCH(int, model);
    QFETCH(int, moment);
    {
        PictureWindow first;
        textGesture(first, ODTextTool::Model(model), Moment(moment));
    }
    verifyToolHoldsNothing();
    // A placement armed and not yet made survives the window: the tool
    // belongs to the process.
    const bool stillPlacing = model == ODTextTool::PlaceText && moment != int(Moment::AfterDrag);
    QCOMPARE(textTool()->model(), stillPlacing ? ODTextTool::PlaceText : ODTextTool::PickText);

    PictureWindow next;
    HostLog log(next.wnd.get());
    // The drag's next move and release reach the new window: nothing is in
    // hand, so nothing moves and nothing is reported.
    next.move(kDragTo + QPointF(10, 10), Qt::LeftButton);
    next.release(kDragTo + QPointF(10, 10));
    QCOMPARE(log.shapeEvents(), QStringList());
    QVERIFY(next.active()->texts().isEmpty());
    QCOMPARE(textTool()->model(), ODTextTool::PickText);
    verifyTextToolWorks(next);
}

void tst_TextTool::otherWindowKeepsWorkingAfterTeardown_data()
{
    addTeardownRows();
}

void tst_TextTool::otherWindowKeepsWorkingAfterTeardown()
{
    QFETCH(int, model);
    QFETCH(int, moment);
    PictureWindow stays;
    auto goes = std::make_unique<PictureWindow>();
    textGesture(*goes, ODTextTool::Model(model), Moment(moment));
    goes.reset();
    verifyToolHoldsNothing();
    verifyTextToolWorks(stays);
}

void tst_TextTool::textRemovedWhileInHandIsForgotten()
{
    PictureWindow w;
    ODText* text = addText(w.active(), "removed", kPress);
    const long id = text->GetID();
    HostLog log(w.wnd.get());
    w.press(middleOf(text));
    QCOMPARE(textTool()->text(), text);
    w.active()->ClearAllSelectedText();
    w.active()->removeText(id);
    verifyToolHoldsNothing();
    w.move(kDragTo);
    w.release(kDragTo);
    QCOMPARE(log.shapeEvents(), QStringList());
    verifyTextToolWorks(w);
}

QTEST_MAIN(tst_TextTool)
#include "tst_texttool.moc"
