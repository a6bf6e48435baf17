// The facade's calls on shapes and layers as a host uses them, end to end:
// every display, read-back, removal, visibility and clearing call walked over
// the image, the shape and the fore layer and a layer value that is none of
// them; every slot of the facade called through the meta-object on a facade
// that has no window; and the draw calls followed by the operator's mouse.
// What the window did is read back the way a host can: the ids the calls
// answer, the id lists of the layers, shapes read back by id, and the pixels
// of a grab of the window.

#include "testkit.h"

#include "kitregions.h"
#include "kitshapedata.h"

#include "odtexttool.h"

#include <QByteArray>
#include <QHash>
#include <QMetaMethod>
#include <QMetaType>
#include <QSet>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

Q_DECLARE_METATYPE(VorImage)
Q_DECLARE_METATYPE(VorROI)
Q_DECLARE_METATYPE(VorOverlay)
Q_DECLARE_METATYPE(VorOverlayPath)
Q_DECLARE_METATYPE(VorFont)

using Kit::Params;

namespace {

constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kPictureGrey = qRgb(Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey, Kit::PictureWindow::kGrey);

// At zoom 2 a picture of this size is larger than the viewport, so the
// window scrolled to its top left shows image pixel (x, y) at viewport pixel
// (2x, 2y), and the fore layer's viewport pixels lie over other image pixels.
constexpr double kZoom = 2.0;
const QSize kPictureSize(400, 300);

constexpr KESImageWnd::Layer kImage = KESImageWnd::LAYER_IMAGE;
constexpr KESImageWnd::Layer kShape = KESImageWnd::LAYER_SHAPE;
constexpr KESImageWnd::Layer kFore = KESImageWnd::LAYER_FORE;
const QList<KESImageWnd::Layer> kLayers{kImage, kShape, kFore};

bool isLayer(int value)
{
    return value == kImage || value == kShape || value == kFore;
}

const char* layerName(int value)
{
    switch (value) {
    case KESImageWnd::LAYER_IMAGE: return "the image layer";
    case KESImageWnd::LAYER_SHAPE: return "the shape layer";
    case KESImageWnd::LAYER_FORE: return "the fore layer";
    default: return "a value that is no layer";
    }
}

// A host's window: a grey picture at zoom 2, scrolled to its top left, and a
// red pen one pixel wide for the shapes the host shows.
class HostWindow : public Kit::PictureWindow
{
public:
    HostWindow()
        : Kit::PictureWindow(kZoom, kPictureSize)
    {
        wnd->setPen(255, 0, 0, 1);
        Kit::flushPaints();
    }
};

// Where each layer's shapes go in these tests. The image and the shape layer
// take image pixels and get spots of their own; the fore layer takes viewport
// pixels, left of both. The image pixels end in a quarter, the viewport
// pixels in a half, so that every line, one image pixel wide at zoom 2 or one
// viewport pixel wide, covers whole viewport pixels and paints its own colour.
double leftOf(KESImageWnd::Layer layer)
{
    return layer == kFore ? 10.5 : layer == kImage ? 20.25 : 120.25;
}

double fractionOf(KESImageWnd::Layer layer)
{
    return layer == kFore ? 0.5 : 0.25;
}

double widthOf(KESImageWnd::Layer layer)
{
    return layer == kFore ? 20.0 : 60.0;
}

// Left, top, right, bottom of a layer's rectangle.
Params rectOn(KESImageWnd::Layer layer)
{
    const double left = leftOf(layer);
    const double top = 20.0 + fractionOf(layer);
    return {left, top, left + widthOf(layer), top + (layer == kFore ? 15.0 : 40.0)};
}

// The middle of the rectangle's top edge, in the layer's coordinates.
QPointF rectProbe(KESImageWnd::Layer layer)
{
    const Params r = rectOn(layer);
    return QPointF((r[0] + r[2]) / 2.0, r[1]);
}

// A horizontal line of a layer; the row puts lines of one layer apart.
Params lineOn(KESImageWnd::Layer layer, int row)
{
    const double left = leftOf(layer);
    const double y = 70.0 + 10.0 * row + fractionOf(layer);
    return {left, y, left + widthOf(layer), y};
}

QPointF lineProbe(KESImageWnd::Layer layer, int row)
{
    const Params l = lineOn(layer, row);
    return QPointF((l[0] + l[2]) / 2.0, l[1]);
}

VorROI rectROI(KESImageWnd::Layer layer)
{
    return Kit::makeROI(VorROI::ROI_RECT1, rectOn(layer));
}

VorOverlay redLine(KESImageWnd::Layer layer, int row)
{
    VorOverlay overlay = Kit::makeOverlay(VorOverlay::OV_LINE, lineOn(layer, row));
    overlay.SetPen(255, 0, 0, 1);
    return overlay;
}

// The viewport pixel that shows a point of a layer: the fore layer paints in
// viewport pixels, the other two in image pixels.
QPoint pixelOf(ImageCtrlView* view, KESImageWnd::Layer layer, const QPointF& point)
{
    if (layer == kFore)
        return QPoint(int(std::floor(point.x())), int(std::floor(point.y())));
    return Kit::viewportPixelOf(view, point);
}

// Pixels within the tolerance of a colour, in the whole grab.
int pixelsNear(const QImage& grab, QRgb colour)
{
    int count = 0;
    for (int y = 0; y < grab.height(); ++y)
        for (int x = 0; x < grab.width(); ++x)
            count += Kit::colourNear(grab.pixel(x, y), colour) ? 1 : 0;
    return count;
}

// One rectangle on each layer, at each layer's spot, as a host shows them.
struct ThreeShapes
{
    explicit ThreeShapes(KESImageWnd* wnd)
    {
        for (KESImageWnd::Layer layer : kLayers) {
            VorROI roi = rectROI(layer);
            ids[layer] = wnd->displayROI(roi, layer);
        }
    }
    long of(KESImageWnd::Layer layer) const { return ids[layer]; }
    long unknown() const { return std::max({ids[0], ids[1], ids[2]}) + 1000; }

    std::array<long, 3> ids{{-1, -1, -1}};
};

// Fails the running test unless each layer's rectangle is painted in red at
// its spot (shown true) or the picture's grey shows there (shown false).
void verifyShown(HostWindow& w, const QMap<KESImageWnd::Layer, bool>& shown)
{
    const QImage grab = w.grabViewport();
    for (auto it = shown.cbegin(); it != shown.cend(); ++it) {
        const QRgb pixel = grab.pixel(pixelOf(w.view(), it.key(), rectProbe(it.key())));
        const QRgb expected = it.value() ? kRed : kPictureGrey;
        QVERIFY2(Kit::colourNear(pixel, expected),
                 qPrintable(QString("%1: %2, expected %3")
                                .arg(layerName(it.key()), Kit::colourText(pixel), Kit::colourText(expected))));
    }
}

QMap<KESImageWnd::Layer, bool> allShown()
{
    return {{kImage, true}, {kShape, true}, {kFore, true}};
}

// The rows of a walk over the calls that take an id: an id of each layer and
// one that no layer holds (-1).
void addIdRows()
{
    QTest::addColumn<int>("holder");
    QTest::newRow("id of the image layer") << int(kImage);
    QTest::newRow("id of the shape layer") << int(kShape);
    QTest::newRow("id of the fore layer") << int(kFore);
    QTest::newRow("id no layer holds") << -1;
}

long idOfRow(const ThreeShapes& shapes, int holder)
{
    return isLayer(holder) ? shapes.of(KESImageWnd::Layer(holder)) : shapes.unknown();
}

// The id lists of the three layers.
QList<QList<long>> idLists(KESImageWnd* wnd)
{
    return {wnd->getShapeIDS(kImage), wnd->getShapeIDS(kShape), wnd->getShapeIDS(kFore)};
}

// What a slot of the facade answers when the facade has no window.
enum class Refusal {
    MinusOne,            // a long call: -1
    False,               // a bool call: false
    EmptyList,           // the id list: empty
    Nothing,             // a void call: does nothing, and makes no window
    MakesATopLevelWindow // create with bounds: a handle of 0 gives a top-level window, 0
};

struct SlotAnswer
{
    const char* signature;
    Refusal answer;
};

// Every slot of the facade with its answer without a window. A slot that is
// missing here has no defined answer yet and fails the sweep.
const SlotAnswer kAnswersWithoutAWindow[] = {
    // Life cycle, background, zoom and bars.
    {"create(qlonglong,int,int,int,int)", Refusal::MakesATopLevelWindow},
    {"create(qlonglong)", Refusal::MinusOne},
    {"setParentWnd(qlonglong)", Refusal::MinusOne},
    {"destory()", Refusal::MinusOne},
    {"move(int,int,int,int)", Refusal::MinusOne},
    {"setViewRect(int,int,int,int)", Refusal::Nothing},
    {"setBackground(QImage&)", Refusal::MinusOne},
    {"setBackground(VorImage&)", Refusal::MinusOne},
    {"getBackground(QImage*)", Refusal::MinusOne},
    {"getBackground(VorImage*)", Refusal::MinusOne},
    {"clearBackground()", Refusal::MinusOne},
    {"zoom(double)", Refusal::MinusOne},
    {"zoomIn()", Refusal::MinusOne},
    {"zoomOut()", Refusal::MinusOne},
    {"zoomFitWnd()", Refusal::MinusOne},
    {"zoomReset()", Refusal::MinusOne},
    {"showStatusbar(bool)", Refusal::False},
    {"showScrollbar(bool)", Refusal::False},
    // The worker's frame cycle.
    {"setRunBackground(VorImage&)", Refusal::Nothing},
    {"displayRunShapes(VorOverlayPath&)", Refusal::Nothing},
    {"repaint()", Refusal::MinusOne},
    // Shapes and layers.
    {"displayROI(VorROI&,KESImageWnd::Layer)", Refusal::MinusOne},
    {"displayROI(VorROI&)", Refusal::MinusOne},
    {"displayOverlay(VorOverlay&,KESImageWnd::Layer)", Refusal::MinusOne},
    {"displayOverlay(VorOverlay&)", Refusal::MinusOne},
    {"displayOverlayPath(VorOverlayPath&,KESImageWnd::Layer)", Refusal::MinusOne},
    {"displayOverlayPath(VorOverlayPath&)", Refusal::MinusOne},
    {"clearLayer(KESImageWnd::Layer)", Refusal::MinusOne},
    {"getShapeIDS(KESImageWnd::Layer)", Refusal::EmptyList},
    {"getShapeIDS()", Refusal::EmptyList},
    {"getROIShape(long,VorROI*)", Refusal::MinusOne},
    {"getOverlayShape(long,VorOverlay*)", Refusal::MinusOne},
    {"removeShape(qlonglong)", Refusal::MinusOne},
    {"removeShapeList(QList<long>)", Refusal::Nothing},
    {"visibleShape(qlonglong,bool)", Refusal::MinusOne},
    {"visibleShape(qlonglong)", Refusal::MinusOne},
    {"isShapeMovable(qlonglong)", Refusal::False},
    {"setShapeMovable(qlonglong,bool)", Refusal::MinusOne},
    {"isShapeSelectable(qlonglong)", Refusal::False},
    {"setShapeSelectable(qlonglong,bool)", Refusal::MinusOne},
    {"clear()", Refusal::MinusOne},
    {"setActiveLayerMovable(bool)", Refusal::Nothing},
    {"activeLayerMovable()", Refusal::False},
    {"setActiveLayerSelectable(bool)", Refusal::Nothing},
    {"activeLayerSelectable()", Refusal::False},
    {"enableMoveROI(bool)", Refusal::MinusOne},
    // Draw modes.
    {"resetDraw()", Refusal::MinusOne},
    {"drawPoint()", Refusal::MinusOne},
    {"drawLine()", Refusal::MinusOne},
    {"drawRect()", Refusal::MinusOne},
    {"drawRotateRect()", Refusal::MinusOne},
    {"drawEllipse()", Refusal::MinusOne},
    {"drawCircle()", Refusal::MinusOne},
    {"drawPolygon()", Refusal::MinusOne},
    {"drawIrregular()", Refusal::MinusOne},
    {"drawTorus()", Refusal::MinusOne},
    {"drawArrowLine()", Refusal::MinusOne},
    {"drawClosedAnyLine()", Refusal::MinusOne},
    {"drawText()", Refusal::MinusOne},
    {"drawText(QString&)", Refusal::MinusOne},
    // Pixel values and drawing settings.
    {"enablePixelVisible(bool)", Refusal::MinusOne},
    {"setPen(uchar,uchar,uchar,ulong)", Refusal::MinusOne},
    {"getPen(unsigned char*,unsigned char*,unsigned char*,ulong*)", Refusal::MinusOne},
    {"setBrush(uchar,uchar,uchar,uchar)", Refusal::MinusOne},
    {"getBrush(unsigned char*,unsigned char*,unsigned char*,unsigned char*)", Refusal::MinusOne},
    {"setPointSize(int)", Refusal::MinusOne},
    {"getPointSize(int*)", Refusal::MinusOne},
    {"setFont(VorFont)", Refusal::MinusOne},
    {"getFont(VorFont*)", Refusal::MinusOne},
    // Tool bar, screenshots, reticles.
    {"showToolbutton(long,bool)", Refusal::MinusOne},
    {"showToolbar(bool)", Refusal::MinusOne},
    {"screenshot(const char*)", Refusal::MinusOne},
    {"screenshot(VorImage*)", Refusal::MinusOne},
    {"setCrossLineInfo(QString)", Refusal::MinusOne},
    {"getCrossLineInfo(QString&)", Refusal::MinusOne},
    {"setGridLineInfo(QString)", Refusal::MinusOne},
    {"getGridLineInfo(QString&)", Refusal::MinusOne},
    // The floating area and the number label.
    {"SetFloatFlag(bool)", Refusal::Nothing},
    {"isFloat()", Refusal::False},
    {"SetFloatAreaVisible(bool)", Refusal::Nothing},
    {"SetFloatAreaVisible()", Refusal::Nothing},
    {"SetIntoBtnVisible(bool)", Refusal::Nothing},
    {"SetIntoBtnVisible()", Refusal::Nothing},
    {"SetFloatTipText(QString)", Refusal::Nothing},
    {"setNum(QString)", Refusal::Nothing},
    {"setNumVisible(bool)", Refusal::Nothing},
    {"setNumVisible()", Refusal::Nothing},
};

// A call through the meta-object with a default value of each parameter type
// (a null pointer for a pointer) and what it answered. The values are made by
// QVariant from the meta-type, which zeroes numbers where QMetaType::create
// would leave them unset.
struct MetaCall
{
    bool called = false;
    QVariant answer; // invalid for a void slot
    QString problem; // why the call could not be made
};

MetaCall invokeWithDefaults(QObject* object, const QMetaMethod& method)
{
    constexpr std::size_t kMostArguments = 10;
    MetaCall call;
    const QList<QByteArray> types = method.parameterTypes();
    if (std::size_t(types.size()) > kMostArguments) {
        call.problem = "more than ten parameters";
        return call;
    }
    std::array<void*, kMostArguments> nullPointers{};
    std::array<QVariant, kMostArguments> values;
    std::array<QGenericArgument, kMostArguments> arguments{};
    for (std::size_t i = 0; i < std::size_t(types.size()); ++i) {
        const QByteArray& type = types.at(int(i));
        if (type.endsWith('*')) {
            arguments[i] = QGenericArgument(type.constData(), &nullPointers[i]);
            continue;
        }
        QByteArray base = type;
        if (base.endsWith('&'))
            base.chop(1);
        const int id = QMetaType::type(base.constData());
        if (id == QMetaType::UnknownType) {
            call.problem = QString("parameter type %1 has no meta-type").arg(QString::fromLatin1(type));
            return call;
        }
        values[i] = QVariant(id, nullptr);
        arguments[i] = QGenericArgument(type.constData(), values[i].data());
    }
    const int returnType = method.returnType();
    QGenericReturnArgument back;
    if (returnType != QMetaType::Void) {
        if (returnType == QMetaType::UnknownType) {
            call.problem = QString("return type %1 has no meta-type").arg(QString::fromLatin1(method.typeName()));
            return call;
        }
        call.answer = QVariant(returnType, nullptr);
        back = QGenericReturnArgument(method.typeName(), call.answer.data());
    }
    call.called = method.invoke(object, Qt::DirectConnection, back, arguments[0], arguments[1], arguments[2],
                                arguments[3], arguments[4], arguments[5], arguments[6], arguments[7], arguments[8],
                                arguments[9]);
    return call;
}

QString answerText(const QVariant& answer)
{
    if (!answer.isValid())
        return "nothing";
    if (answer.userType() == qMetaTypeId<QList<long>>()) {
        QStringList ids;
        for (long id : answer.value<QList<long>>())
            ids << QString::number(id);
        return "[" + ids.join(", ") + "]";
    }
    return QString("%1 %2").arg(QString::fromLatin1(answer.typeName()), answer.toString());
}

// Whether an answer is the refusal of its kind.
bool isRefusal(const QVariant& answer, Refusal refusal)
{
    switch (refusal) {
    case Refusal::MinusOne: return answer.userType() == QMetaType::Long && answer.value<long>() == -1;
    case Refusal::False: return answer.userType() == QMetaType::Bool && !answer.toBool();
    case Refusal::EmptyList:
        return answer.userType() == qMetaTypeId<QList<long>>() && answer.value<QList<long>>().isEmpty();
    case Refusal::Nothing: return !answer.isValid();
    case Refusal::MakesATopLevelWindow: return answer.userType() == QMetaType::Long && answer.value<long>() == 0;
    }
    return false;
}

// A facade in one of the two states without a window.
enum class NoWindow { NeverCreated, AfterDestory };

void addNoWindowRows()
{
    QTest::addColumn<int>("state");
    QTest::newRow("never created") << int(NoWindow::NeverCreated);
    QTest::newRow("after destory") << int(NoWindow::AfterDestory);
}

// A facade that had a window in a host widget, with a shape on every layer,
// and has torn it down; or one that never had a window.
std::unique_ptr<KESImageWnd> facadeWithoutAWindow(NoWindow state)
{
    auto wnd = std::make_unique<KESImageWnd>();
    if (state == NoWindow::NeverCreated)
        return wnd;
    QWidget host;
    host.resize(320, 240);
    Kit::showExposed(&host);
    if (wnd->create(reinterpret_cast<qlonglong>(&host)) != 0) {
        QTest::qFail("the window was not created", __FILE__, __LINE__);
        return wnd;
    }
    VorImage picture = Kit::greyPicture(64, 48, 90);
    wnd->setBackground(picture);
    for (KESImageWnd::Layer layer : kLayers) {
        VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, Params{2, 2, 30, 20});
        if (wnd->displayROI(roi, layer) < 0)
            QTest::qFail("a shape was refused before the window went", __FILE__, __LINE__);
    }
    if (wnd->destory() != 0)
        QTest::qFail("the window was not torn down", __FILE__, __LINE__);
    return wnd;
}

} // namespace

class tst_FacadeHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    // The dispatch by layer.
    void displayCallsReachTheLayerAsked_data();
    void displayCallsReachTheLayerAsked();
    void getShapeIDSListsTheLayerAskedAlone_data();
    void getShapeIDSListsTheLayerAskedAlone();
    void clearLayerEmptiesTheLayerAskedAlone_data();
    void clearLayerEmptiesTheLayerAskedAlone();
    void clearEmptiesEveryLayerAndKeepsForeIdsListed();
    void readBackFindsOnlyShapesOfTheShapeLayer_data();
    void readBackFindsOnlyShapesOfTheShapeLayer();
    void visibleShapeAnswersByTheLayerThatHoldsTheId_data();
    void visibleShapeAnswersByTheLayerThatHoldsTheId();
    void removeShapeTakesTheIdFromTheLayerThatHoldsIt_data();
    void removeShapeTakesTheIdFromTheLayerThatHoldsIt();
    void removeShapeListLeavesEveryShapeInPlace_data();
    void removeShapeListLeavesEveryShapeInPlace();
    void movableAndSelectableAreAskedOfTheShapeLayerAlone_data();
    void movableAndSelectableAreAskedOfTheShapeLayerAlone();

    // Refusals, the selection, the drawing settings and what the draw calls leave armed.
    void refusedLayerValueAddsNoShapeAndUsesNoId_data();
    void refusedLayerValueAddsNoShapeAndUsesNoId();
    void shapeLayerWaitsForAPictureWhereTheImageLayerDoesNot();
    void removeShapeWithAnUnknownIdEndsTheSelection();
    void pointSizeBelowOneReadsBackAsOne_data();
    void pointSizeBelowOneReadsBackAsOne();
    void penReadsBackAsSetAndDressesTheNextShape();
    void drawRectWhileAPolygonIsUnderWayLeavesThePolygonToFinish();
    void drawCallAfterDrawTextKeepsOrEndsTheTextPlacement_data();
    void drawCallAfterDrawTextKeepsOrEndsTheTextPlacement();
    void drawPointInAWindowThatNeverHadAPictureMakesNoPoint();
    void drawPointAfterThePictureIsClearedKeepsTheArmedMode();

    // Without a window.
    void getShapeIDSWithoutAWindowIsEmptyOnEveryLayer_data();
    void getShapeIDSWithoutAWindowIsEmptyOnEveryLayer();
    void everySlotWithoutAWindowGivesItsRefusal_data();
    void everySlotWithoutAWindowGivesItsRefusal();
};

void tst_FacadeHost::initTestCase()
{
    // The types of the facade's parameters, so that the meta-object can make
    // a default value of each.
    qRegisterMetaType<VorImage>("VorImage");
    qRegisterMetaType<VorROI>("VorROI");
    qRegisterMetaType<VorOverlay>("VorOverlay");
    qRegisterMetaType<VorOverlayPath>("VorOverlayPath");
    qRegisterMetaType<VorFont>("VorFont");
    qRegisterMetaType<QList<long>>("QList<long>");
    qRegisterMetaType<KESImageWnd::Layer>("KESImageWnd::Layer");
}

// The tools and the text tool belong to the process: nothing a test leaves in
// them reaches the next.
void tst_FacadeHost::init()
{
    Kit::forgetCurrentShape();
    ODTextTool::GetODTextTool()->setModel(ODTextTool::PickText);
}

void tst_FacadeHost::cleanup()
{
    Kit::forgetCurrentShape();
    ODTextTool::GetODTextTool()->setModel(ODTextTool::PickText);
}

// ---------------------------------------------------------------------------
// The dispatch by layer

enum DisplayCall { DisplayROI, DisplayOverlay, DisplayPath };

void tst_FacadeHost::displayCallsReachTheLayerAsked_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<int>("layer");
    const struct
    {
        DisplayCall call;
        const char* what;
    } calls[] = {{DisplayROI, "ROI"}, {DisplayOverlay, "overlay"}, {DisplayPath, "overlay path"}};
    for (const auto& call : calls) {
        QTest::addRow("%s on the image layer", call.what) << int(call.call) << int(kImage);
        QTest::addRow("%s on the shape layer", call.what) << int(call.call) << int(kShape);
        QTest::addRow("%s on the fore layer", call.what) << int(call.call) << int(kFore);
        QTest::addRow("%s on layer value 7", call.what) << int(call.call) << 7;
    }
}

void tst_FacadeHost::displayCallsReachTheLayerAsked()
{
    QFETCH(int, call);
    QFETCH(int, layer);
    HostWindow w;
    const auto asked = static_cast<KESImageWnd::Layer>(layer);
    const bool known = isLayer(layer);
    // A value that is no layer gets the shape layer's data.
    const KESImageWnd::Layer spot = known ? asked : kShape;

    long answer = 0;
    QList<QPointF> probes;
    VorROI roi = rectROI(spot);
    VorOverlayPath path;
    path.Append(redLine(spot, 0));
    path.Append(redLine(spot, 1));
    switch (DisplayCall(call)) {
    case DisplayROI:
        answer = w.wnd->displayROI(roi, asked);
        probes << rectProbe(spot);
        break;
    case DisplayOverlay: {
        VorOverlay line = redLine(spot, 0);
        answer = w.wnd->displayOverlay(line, asked);
        probes << lineProbe(spot, 0);
        break;
    }
    case DisplayPath:
        answer = w.wnd->displayOverlayPath(path, asked);
        probes << lineProbe(spot, 0) << lineProbe(spot, 1);
        break;
    }
    const QImage grab = w.grabViewport();

    if (!known) {
        QCOMPARE(answer, -1L);
        QVERIFY(w.wnd->getShapeIDS(asked).isEmpty());
        QCOMPARE(idLists(w.wnd.get()), (QList<QList<long>>{{}, {}, {}}));
        QCOMPARE(pixelsNear(grab, kRed), 0);
        return;
    }

    const QList<long> ids = w.wnd->getShapeIDS(asked);
    QCOMPARE(ids.size(), probes.size());
    QVERIFY(ids.first() >= 0);
    if (ids.size() == 2)
        QVERIFY(ids.last() > ids.first());
    // A path on the shape layer answers its first id, on the other two its last.
    const bool lastOfPath = DisplayCall(call) == DisplayPath && asked != kShape;
    QCOMPARE(answer, lastOfPath ? ids.last() : ids.first());
    for (KESImageWnd::Layer other : kLayers) {
        if (other != asked)
            QVERIFY2(w.wnd->getShapeIDS(other).isEmpty(), layerName(other));
    }

    // Only the shape layer reads back by id, and gives back what went in.
    for (int i = 0; i < ids.size(); ++i) {
        VorROI roiBack;
        VorOverlay overlayBack;
        const long roiAnswer = w.wnd->getROIShape(ids.at(i), &roiBack);
        const long overlayAnswer = w.wnd->getOverlayShape(ids.at(i), &overlayBack);
        if (asked != kShape) {
            QCOMPARE(roiAnswer, -1L);
            QCOMPARE(overlayAnswer, -1L);
            continue;
        }
        QCOMPARE(roiAnswer, 0L);
        QCOMPARE(overlayAnswer, 0L);
        if (DisplayCall(call) == DisplayROI) {
            QCOMPARE(roiBack.ROIType(), int(VorROI::ROI_RECT1));
            KIT_COMPARE_NEAR(Kit::valuesOf(roiBack), rectOn(spot), 1e-9);
        } else {
            QCOMPARE(overlayBack.OverlayType(), int(VorOverlay::OV_LINE));
            KIT_COMPARE_NEAR(Kit::valuesOf(overlayBack), lineOn(spot, i), 1e-9);
            long r = 0, g = 0, b = 0, width = 0;
            QVERIFY(overlayBack.GetPen(&r, &g, &b, &width));
            QCOMPARE((QList<long>{r, g, b, width}), (QList<long>{255, 0, 0, 1}));
        }
    }

    // Painted where the layer paints: image pixels for the picture's layers,
    // viewport pixels for the fore layer.
    for (const QPointF& probe : probes)
        KIT_COMPARE_COLOUR(grab.pixel(pixelOf(w.view(), asked, probe)), kRed, Kit::kChannelTolerance);
}

void tst_FacadeHost::getShapeIDSListsTheLayerAskedAlone_data()
{
    QTest::addColumn<int>("layer");
    QTest::newRow("ids of the image layer") << int(kImage);
    QTest::newRow("ids of the shape layer") << int(kShape);
    QTest::newRow("ids of the fore layer") << int(kFore);
    QTest::newRow("ids of layer value 7") << 7;
}

void tst_FacadeHost::getShapeIDSListsTheLayerAskedAlone()
{
    QFETCH(int, layer);
    HostWindow w;
    const ThreeShapes first(w.wnd.get());
    const ThreeShapes second(w.wnd.get());
    const QList<long> listed = w.wnd->getShapeIDS(KESImageWnd::Layer(layer));
    if (!isLayer(layer)) {
        QVERIFY(listed.isEmpty());
        return;
    }
    const auto asked = KESImageWnd::Layer(layer);
    QCOMPARE(listed, (QList<long>{first.of(asked), second.of(asked)}));
    // Without a layer the call lists the shape layer.
    QCOMPARE(w.wnd->getShapeIDS(), (QList<long>{first.of(kShape), second.of(kShape)}));
}

void tst_FacadeHost::clearLayerEmptiesTheLayerAskedAlone_data()
{
    QTest::addColumn<int>("layer");
    QTest::newRow("clear the image layer") << int(kImage);
    QTest::newRow("clear the shape layer") << int(kShape);
    QTest::newRow("clear the fore layer") << int(kFore);
    QTest::newRow("clear layer value 7") << 7;
}

void tst_FacadeHost::clearLayerEmptiesTheLayerAskedAlone()
{
    QFETCH(int, layer);
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    verifyShown(w, allShown());
    const QList<QList<long>> before = idLists(w.wnd.get());

    QCOMPARE(w.wnd->clearLayer(KESImageWnd::Layer(layer)), 0L);

    QMap<KESImageWnd::Layer, bool> shown = allShown();
    QList<QList<long>> expected = before;
    if (isLayer(layer)) {
        shown[KESImageWnd::Layer(layer)] = false;
        // The fore layer's cleared ids stay listed; the other two forget theirs.
        if (layer != kFore)
            expected[layer].clear();
    }
    QCOMPARE(idLists(w.wnd.get()), expected);
    verifyShown(w, shown);
}

void tst_FacadeHost::clearEmptiesEveryLayerAndKeepsForeIdsListed()
{
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    verifyShown(w, allShown());
    QCOMPARE(w.wnd->clear(), 0L);
    QCOMPARE(idLists(w.wnd.get()), (QList<QList<long>>{{}, {}, {shapes.of(kFore)}}));
    verifyShown(w, {{kImage, false}, {kShape, false}, {kFore, false}});
}

void tst_FacadeHost::readBackFindsOnlyShapesOfTheShapeLayer_data()
{
    addIdRows();
}

void tst_FacadeHost::readBackFindsOnlyShapesOfTheShapeLayer()
{
    QFETCH(int, holder);
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    const long id = idOfRow(shapes, holder);
    VorROI roi;
    VorOverlay overlay;
    const long expected = holder == kShape ? 0 : -1;
    QCOMPARE(w.wnd->getROIShape(id, &roi), expected);
    QCOMPARE(w.wnd->getOverlayShape(id, &overlay), expected);
    if (holder != kShape) {
        QCOMPARE(roi.ROIType(), VorROI().ROIType());
        QCOMPARE(overlay.OverlayType(), VorOverlay().OverlayType());
        return;
    }
    QCOMPARE(roi.ROIType(), int(VorROI::ROI_RECT1));
    KIT_COMPARE_NEAR(Kit::valuesOf(roi), rectOn(kShape), 1e-9);
    QCOMPARE(overlay.OverlayType(), int(VorOverlay::OV_RECT1));
    KIT_COMPARE_NEAR(Kit::valuesOf(overlay), rectOn(kShape), 1e-9);
}

void tst_FacadeHost::visibleShapeAnswersByTheLayerThatHoldsTheId_data()
{
    addIdRows();
}

void tst_FacadeHost::visibleShapeAnswersByTheLayerThatHoldsTheId()
{
    QFETCH(int, holder);
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    const long id = idOfRow(shapes, holder);
    // The shape layer answers 0, the image layer the id; a fore id and an
    // unknown one are refused, and the fore layer's shape stays on screen.
    const long expected = holder == kShape ? 0 : holder == kImage ? id : -1;
    const bool hides = holder == kShape || holder == kImage;

    QCOMPARE(w.wnd->visibleShape(id, false), expected);
    QMap<KESImageWnd::Layer, bool> shown = allShown();
    if (hides)
        shown[KESImageWnd::Layer(holder)] = false;
    verifyShown(w, shown);

    QCOMPARE(w.wnd->visibleShape(id), expected);
    verifyShown(w, allShown());
    // Hiding keeps the id where it was.
    QCOMPARE(idLists(w.wnd.get()),
             (QList<QList<long>>{{shapes.of(kImage)}, {shapes.of(kShape)}, {shapes.of(kFore)}}));
}

void tst_FacadeHost::removeShapeTakesTheIdFromTheLayerThatHoldsIt_data()
{
    addIdRows();
}

void tst_FacadeHost::removeShapeTakesTheIdFromTheLayerThatHoldsIt()
{
    QFETCH(int, holder);
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    const long id = idOfRow(shapes, holder);
    QList<QList<long>> expected = idLists(w.wnd.get());
    QMap<KESImageWnd::Layer, bool> shown = allShown();
    if (isLayer(holder)) {
        expected[holder].removeAll(id);
        shown[KESImageWnd::Layer(holder)] = false;
    }

    QCOMPARE(w.wnd->removeShape(id), 0L);

    QCOMPARE(idLists(w.wnd.get()), expected);
    verifyShown(w, shown);
    VorROI roi;
    QCOMPARE(w.wnd->getROIShape(id, &roi), -1L);
}

void tst_FacadeHost::removeShapeListLeavesEveryShapeInPlace_data()
{
    addIdRows();
    QTest::newRow("ids of all three layers") << -2;
}

void tst_FacadeHost::removeShapeListLeavesEveryShapeInPlace()
{
    QFETCH(int, holder);
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    const QList<QList<long>> before = idLists(w.wnd.get());
    const QList<long> list = holder == -2 ? QList<long>{shapes.of(kImage), shapes.of(kShape), shapes.of(kFore)}
                                          : QList<long>{idOfRow(shapes, holder)};

    w.wnd->removeShapeList(list);

    QCOMPARE(idLists(w.wnd.get()), before);
    verifyShown(w, allShown());
    VorROI roi;
    QCOMPARE(w.wnd->getROIShape(shapes.of(kShape), &roi), 0L);
}

void tst_FacadeHost::movableAndSelectableAreAskedOfTheShapeLayerAlone_data()
{
    addIdRows();
}

void tst_FacadeHost::movableAndSelectableAreAskedOfTheShapeLayerAlone()
{
    QFETCH(int, holder);
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    const long id = idOfRow(shapes, holder);
    const bool onShapeLayer = holder == kShape;

    QCOMPARE(w.wnd->isShapeMovable(id), onShapeLayer);
    QCOMPARE(w.wnd->isShapeSelectable(id), onShapeLayer);
    // Setting is no error for any id; only a shape of the shape layer takes it.
    QCOMPARE(w.wnd->setShapeMovable(id, false), 0L);
    QCOMPARE(w.wnd->setShapeSelectable(id, false), 0L);
    QVERIFY(!w.wnd->isShapeMovable(id));
    QVERIFY(!w.wnd->isShapeSelectable(id));
    QCOMPARE(w.wnd->setShapeMovable(id, true), 0L);
    QCOMPARE(w.wnd->setShapeSelectable(id, true), 0L);
    QCOMPARE(w.wnd->isShapeMovable(id), onShapeLayer);
    QCOMPARE(w.wnd->isShapeSelectable(id), onShapeLayer);
    // The shape layer's own shape keeps its flags whatever the other ids got.
    QVERIFY(w.wnd->isShapeMovable(shapes.of(kShape)));
    QVERIFY(w.wnd->isShapeSelectable(shapes.of(kShape)));
}

// ---------------------------------------------------------------------------
// Refusals, the selection, the drawing settings and what the draw calls leave armed

void tst_FacadeHost::refusedLayerValueAddsNoShapeAndUsesNoId_data()
{
    QTest::addColumn<int>("layer");
    QTest::newRow("layer value 3") << 3;
    QTest::newRow("layer value -1") << -1;
    QTest::newRow("layer value 1000") << 1000;
}

void tst_FacadeHost::refusedLayerValueAddsNoShapeAndUsesNoId()
{
    QFETCH(int, layer);
    HostWindow w;
    VorROI onShape = rectROI(kShape);
    const long first = w.wnd->displayROI(onShape, kShape);
    QVERIFY(first >= 0);

    VorROI refused = rectROI(kImage);
    QCOMPARE(w.wnd->displayROI(refused, KESImageWnd::Layer(layer)), -1L);
    QCOMPARE(idLists(w.wnd.get()), (QList<QList<long>>{{}, {first}, {}}));
    QVERIFY(w.wnd->getShapeIDS(KESImageWnd::Layer(layer)).isEmpty());
    verifyShown(w, {{kImage, false}, {kShape, true}});

    // Ids come from one counter: the next shape takes the id after the first,
    // so the refused call used none.
    VorROI next = rectROI(kImage);
    QCOMPARE(w.wnd->displayROI(next, kImage), first + 1);
    verifyShown(w, {{kImage, true}, {kShape, true}});
}

void tst_FacadeHost::shapeLayerWaitsForAPictureWhereTheImageLayerDoesNot()
{
    // A new window shows VorImage pictures and has none yet.
    EmbeddedWindow e;
    QCOMPARE(e.created, 0L);
    VorROI roi = rectROI(kShape);
    QCOMPARE(e.wnd->displayROI(roi, kShape), -1L);
    QVERIFY(e.wnd->getShapeIDS(kShape).isEmpty());
    const long onImage = e.wnd->displayROI(roi, kImage);
    QVERIFY(onImage >= 0);
    QCOMPARE(e.wnd->getShapeIDS(kImage), QList<long>{onImage});

    // Once the picture is there the shape layer takes the same ROI.
    QCOMPARE(e.setPicture(Kit::greyPicture(kPictureSize.width(), kPictureSize.height(), Kit::PictureWindow::kGrey)),
             0L);
    const long onShape = e.wnd->displayROI(roi, kShape);
    QVERIFY(onShape > onImage);
    QCOMPARE(e.wnd->getShapeIDS(kShape), QList<long>{onShape});
    VorROI back;
    QCOMPARE(e.wnd->getROIShape(onShape, &back), 0L);
    KIT_COMPARE_NEAR(Kit::valuesOf(back), rectOn(kShape), 1e-9);
}

void tst_FacadeHost::removeShapeWithAnUnknownIdEndsTheSelection()
{
    HostWindow w;
    const ThreeShapes shapes(w.wnd.get());
    // The host selects the shape layer's rectangle: its blue handles show.
    emit w.wnd->selectShape(shapes.of(kShape));
    QVERIFY(pixelsNear(w.grabViewport(), Kit::kHandleBlue) > 0);

    QCOMPARE(w.wnd->removeShape(shapes.unknown()), 0L);

    // The handles are gone, the shapes stay.
    QCOMPARE(pixelsNear(w.grabViewport(), Kit::kHandleBlue), 0);
    QCOMPARE(idLists(w.wnd.get()),
             (QList<QList<long>>{{shapes.of(kImage)}, {shapes.of(kShape)}, {shapes.of(kFore)}}));
    verifyShown(w, allShown());
}

void tst_FacadeHost::pointSizeBelowOneReadsBackAsOne_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("readBack");
    QTest::newRow("0") << 0 << 1;
    QTest::newRow("-4") << -4 << 1;
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("7") << 7 << 7;
}

void tst_FacadeHost::pointSizeBelowOneReadsBackAsOne()
{
    QFETCH(int, size);
    QFETCH(int, readBack);
    HostWindow w;
    QCOMPARE(w.wnd->setPointSize(9), 0L);
    QCOMPARE(w.wnd->setPointSize(size), 0L);
    int got = -100;
    QCOMPARE(w.wnd->getPointSize(&got), 0L);
    QCOMPARE(got, readBack);
}

void tst_FacadeHost::penReadsBackAsSetAndDressesTheNextShape()
{
    HostWindow w;
    QCOMPARE(w.wnd->setPen(0, 255, 0, 1), 0L);
    QCOMPARE(w.wnd->setPen(255, 0, 0, 3), 0L);
    unsigned char r = 1, g = 1, b = 1;
    unsigned long width = 0;
    QCOMPARE(w.wnd->getPen(&r, &g, &b, &width), 0L);
    QCOMPARE((QList<int>{r, g, b, int(width)}), (QList<int>{255, 0, 0, 3}));

    // A ROI shown next takes that pen: it reads back as an overlay with it,
    // and paints in red.
    VorROI roi = rectROI(kShape);
    const long id = w.wnd->displayROI(roi, kShape);
    VorOverlay back;
    QCOMPARE(w.wnd->getOverlayShape(id, &back), 0L);
    long pr = 0, pg = 0, pb = 0, pwidth = 0;
    QVERIFY(back.GetPen(&pr, &pg, &pb, &pwidth));
    QCOMPARE((QList<long>{pr, pg, pb, pwidth}), (QList<long>{255, 0, 0, 3}));
    verifyShown(w, {{kShape, true}});
}

void tst_FacadeHost::drawRectWhileAPolygonIsUnderWayLeavesThePolygonToFinish()
{
    HostWindow w;
    Kit::HostLog log(w.wnd.get());
    const QPointF a(30, 30), b(90, 30), c(60, 80);
    QCOMPARE(w.wnd->drawPolygon(), 0L);
    Kit::clickCorner(w.view(), a);

    // Neither a rectangle nor the select mode can interrupt the polygon.
    QCOMPARE(w.wnd->drawRect(), 0L);
    QCOMPARE(w.wnd->resetDraw(), 0L);

    Kit::clickCorner(w.view(), b);
    Kit::doubleClickCorner(w.view(), c);

    const QList<long> ids = w.wnd->getShapeIDS();
    QCOMPARE(ids.size(), 1);
    // The host hears of the polygon, and of no other shape.
    QVERIFY(!log.shapeEvents().isEmpty());
    for (const QString& event : log.shapeEvents())
        QCOMPARE(event, Kit::clickedText(ids.first()));
    VorROI back;
    QCOMPARE(w.wnd->getROIShape(ids.first(), &back), 0L);
    QCOMPARE(back.ROIType(), int(VorROI::ROI_POLYGON));
    const QPointF sa = w.seen(a), sb = w.seen(b), sc = w.seen(c);
    KIT_COMPARE_NEAR(Kit::valuesOf(back), (Params{sa.x(), sa.y(), sb.x(), sb.y(), sc.x(), sc.y()}), 1e-9);
}

void tst_FacadeHost::drawCallAfterDrawTextKeepsOrEndsTheTextPlacement_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<bool>("placesText");
    QTest::newRow("arrow line keeps the text placement armed") << "drawArrowLine" << true;
    QTest::newRow("line ends the text placement") << "drawLine" << false;
}

void tst_FacadeHost::drawCallAfterDrawTextKeepsOrEndsTheTextPlacement()
{
    QFETCH(QString, call);
    QFETCH(bool, placesText);
    HostWindow w;
    Kit::HostLog log(w.wnd.get());
    QCOMPARE(w.wnd->drawText(), 0L);
    long answer = -1;
    QVERIFY(QMetaObject::invokeMethod(w.wnd.get(), qPrintable(call), Q_RETURN_ARG(long, answer)));
    QCOMPARE(answer, 0L);

    // The operator clicks once: the drawing tool throws its shape of no size
    // away, and an armed text placement puts a text there.
    const QPointF at(150, 100);
    w.click(at);

    const QList<long> ids = w.wnd->getShapeIDS();
    if (!placesText) {
        QVERIFY(ids.isEmpty());
        return;
    }
    QCOMPARE(ids.size(), 1);
    QVERIFY(log.shapeEvents().contains(Kit::clickedText(ids.first())));
    VorOverlay back;
    QCOMPARE(w.wnd->getOverlayShape(ids.first(), &back), 0L);
    QCOMPARE(back.OverlayType(), int(VorOverlay::OV_TEXT));
    VorPoint position;
    VorVar text;
    VorFont font;
    QVERIFY(back.GetText(&position, &text, &font));
    KIT_COMPARE_NEAR(QPointF(position.x, position.y), w.seen(at), 1e-9);
}

void tst_FacadeHost::drawPointInAWindowThatNeverHadAPictureMakesNoPoint()
{
    EmbeddedWindow e;
    QCOMPARE(e.created, 0L);
    Kit::HostLog log(e.wnd.get());
    QCOMPARE(e.wnd->drawPoint(), 0L);
    // In the point mode this click would leave a point and report it.
    Kit::clickAtViewport(e.view(), e.view()->viewport()->rect().center());
    QVERIFY(log.shapeEvents().isEmpty());
    QVERIFY(e.wnd->getShapeIDS().isEmpty());
}

void tst_FacadeHost::drawPointAfterThePictureIsClearedKeepsTheArmedMode()
{
    HostWindow w;
    Kit::HostLog log(w.wnd.get());
    QCOMPARE(w.wnd->drawRect(), 0L);
    QCOMPARE(w.wnd->clearBackground(), 0L);
    QCOMPARE(w.wnd->drawPoint(), 0L);

    // The drag draws the rectangle that was armed, not a point.
    const QPointF from(40, 30), to(100, 70);
    w.drag(from, to);
    const QList<long> ids = w.wnd->getShapeIDS();
    QCOMPARE(ids.size(), 1);
    QCOMPARE(log.shapeEvents(), QStringList{Kit::clickedText(ids.first())});
    VorROI back;
    QCOMPARE(w.wnd->getROIShape(ids.first(), &back), 0L);
    QCOMPARE(back.ROIType(), int(VorROI::ROI_RECT1));
    const QPointF sf = w.seen(from), st = w.seen(to);
    KIT_COMPARE_NEAR(Kit::valuesOf(back), (Params{sf.x(), sf.y(), st.x(), st.y()}), 1e-9);
}

// ---------------------------------------------------------------------------
// Without a window

void tst_FacadeHost::getShapeIDSWithoutAWindowIsEmptyOnEveryLayer_data()
{
    addNoWindowRows();
}

void tst_FacadeHost::getShapeIDSWithoutAWindowIsEmptyOnEveryLayer()
{
    QFETCH(int, state);
    const std::unique_ptr<KESImageWnd> wnd = facadeWithoutAWindow(NoWindow(state));
    for (int layer : {int(kImage), int(kShape), int(kFore), 7})
        QVERIFY2(wnd->getShapeIDS(KESImageWnd::Layer(layer)).isEmpty(), layerName(layer));
    QVERIFY(wnd->getShapeIDS().isEmpty());
}

void tst_FacadeHost::everySlotWithoutAWindowGivesItsRefusal_data()
{
    addNoWindowRows();
}

void tst_FacadeHost::everySlotWithoutAWindowGivesItsRefusal()
{
    QFETCH(int, state);
    const std::unique_ptr<KESImageWnd> wnd = facadeWithoutAWindow(NoWindow(state));
    QVERIFY(!wnd->mainWindow());

    QHash<QByteArray, Refusal> table;
    for (const SlotAnswer& row : kAnswersWithoutAWindow)
        table.insert(QByteArray(row.signature), row.answer);

    QSet<QByteArray> called;
    const QMetaObject& meta = KESImageWnd::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const bool isSlot = method.methodType() == QMetaMethod::Slot;
        const bool isInvokable = method.methodType() == QMetaMethod::Method && method.access() == QMetaMethod::Public;
        if (!isSlot && !isInvokable)
            continue;
        const QByteArray signature = method.methodSignature();
        QVERIFY2(table.contains(signature),
                 qPrintable(QString("%1 has no defined answer without a window").arg(QString::fromLatin1(signature))));
        const Refusal expected = table.value(signature);

        const MetaCall call = invokeWithDefaults(wnd.get(), method);
        QVERIFY2(call.problem.isEmpty(), qPrintable(QString::fromLatin1(signature) + ": " + call.problem));
        QVERIFY2(call.called, signature.constData());
        QVERIFY2(isRefusal(call.answer, expected),
                 qPrintable(QString("%1 answered %2").arg(QString::fromLatin1(signature), answerText(call.answer))));
        if (expected == Refusal::MakesATopLevelWindow) {
            // The window is real: it goes again, back to no window.
            QVERIFY2(wnd->mainWindow() != nullptr, signature.constData());
            QCOMPARE(wnd->destory(), 0L);
        }
        QVERIFY2(!wnd->mainWindow(), qPrintable(QString::fromLatin1(signature) + " left a window"));
        called.insert(signature);
    }
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        QVERIFY2(called.contains(it.key()), qPrintable(QString("the facade has no slot %1")
                                                          .arg(QString::fromLatin1(it.key()))));

    // The zoom ratio is a plain call, not a slot: refused the same way, and
    // the output left alone.
    double ratio = 5.0;
    QCOMPARE(wnd->getZoomRatio(&ratio), -1L);
    QCOMPARE(ratio, 5.0);
}

QTEST_MAIN(tst_FacadeHost)
#include "tst_facadehost.moc"
