#include "CircleHandleItem.h"
#include "GraphicsHandleItem.h"
#include "Rect1HandleItem.h"
#include "Rect2HandleItem.h"

#include "testkit.h"

#include <QGraphicsSceneHoverEvent>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>
#include <QtTest>

#include <memory>

namespace {

enum class ItemKind { Graphics, Circle, Rect1, Rect2 };

// One drawing call as it reached the paint engine, with the painter's world
// matrix, pen and brush at that moment.
struct PaintCall
{
    enum Kind { Rects, Path, Lines, Other };
    Kind kind = Other;
    QTransform transform;
    QPen pen;
    QBrush brush;
    QVector<QRectF> rects;
    QPainterPath path;
    QVector<QLineF> lines;
};

// A paint engine that draws nothing and remembers every call. It claims every
// feature, so the painter hands it each primitive untransformed together with
// the matrix in force.
class RecordingEngine : public QPaintEngine
{
public:
    RecordingEngine()
        : QPaintEngine(QPaintEngine::AllFeatures)
    {
    }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return QPaintEngine::User; }

    void drawRects(const QRectF* rects, int count) override
    {
        PaintCall call = snapshot(PaintCall::Rects);
        for (int i = 0; i < count; ++i)
            call.rects << rects[i];
        calls << call;
    }
    void drawRects(const QRect* rects, int count) override
    {
        PaintCall call = snapshot(PaintCall::Rects);
        for (int i = 0; i < count; ++i)
            call.rects << QRectF(rects[i]);
        calls << call;
    }
    void drawLines(const QLineF* lines, int count) override
    {
        PaintCall call = snapshot(PaintCall::Lines);
        for (int i = 0; i < count; ++i)
            call.lines << lines[i];
        calls << call;
    }
    void drawLines(const QLine* lines, int count) override
    {
        PaintCall call = snapshot(PaintCall::Lines);
        for (int i = 0; i < count; ++i)
            call.lines << QLineF(lines[i]);
        calls << call;
    }
    void drawPath(const QPainterPath& path) override
    {
        PaintCall call = snapshot(PaintCall::Path);
        call.path = path;
        calls << call;
    }
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override { calls << snapshot(PaintCall::Other); }
    void drawPolygon(const QPoint*, int, PolygonDrawMode) override { calls << snapshot(PaintCall::Other); }
    void drawEllipse(const QRectF&) override { calls << snapshot(PaintCall::Other); }
    void drawPoints(const QPointF*, int) override { calls << snapshot(PaintCall::Other); }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { calls << snapshot(PaintCall::Other); }
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
    {
        calls << snapshot(PaintCall::Other);
    }
    void drawTextItem(const QPointF&, const QTextItem&) override { calls << snapshot(PaintCall::Other); }

    QList<PaintCall> calls;

private:
    PaintCall snapshot(PaintCall::Kind kind) const
    {
        PaintCall call;
        call.kind = kind;
        call.transform = painter()->transform();
        call.pen = painter()->pen();
        call.brush = painter()->brush();
        return call;
    }
};

class RecordingDevice : public QPaintDevice
{
public:
    QPaintEngine* paintEngine() const override { return &engine; }
    mutable RecordingEngine engine;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 2000;
        case PdmWidthMM:
        case PdmHeightMM:
            return 500;
        case PdmNumColors:
            return INT_MAX;
        case PdmDepth:
            return 32;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(QPaintDevice::devicePixelRatioFScale());
        }
        return 0;
    }
};

// The hover handlers made callable, to reach an item that Qt would not send
// hover events to.
template <class Item>
class HoverCallable : public Item
{
public:
    using Item::hoverEnterEvent;
    using Item::hoverLeaveEvent;
    using Item::hoverMoveEvent;
};

QGraphicsPathItem* makeItem(ItemKind kind)
{
    switch (kind) {
    case ItemKind::Graphics: return new GraphicsHandleItem(nullptr);
    case ItemKind::Circle: return new CircleHandleItem(nullptr);
    case ItemKind::Rect1: return new Rect1HandleItem(nullptr);
    case ItemKind::Rect2: return new Rect2HandleItem(nullptr);
    }
    return nullptr;
}

void setMap(QGraphicsPathItem* item, ItemKind kind, const QMap<int, QRectF>& handles)
{
    switch (kind) {
    case ItemKind::Graphics: static_cast<GraphicsHandleItem*>(item)->setHandleMap(handles); break;
    case ItemKind::Circle: static_cast<CircleHandleItem*>(item)->setHandleMap(handles); break;
    case ItemKind::Rect1: static_cast<Rect1HandleItem*>(item)->setHandleMap(handles); break;
    case ItemKind::Rect2: static_cast<Rect2HandleItem*>(item)->setHandleMap(handles); break;
    }
}

// Handle rectangles of side `side` centred on the points, keyed from 0.
QMap<int, QRectF> handlesAt(const QVector<QPointF>& centres, double side = 6.0)
{
    QMap<int, QRectF> handles;
    for (int key = 0; key < centres.size(); ++key)
        handles.insert(key, QRectF(centres[key].x() - side / 2, centres[key].y() - side / 2, side, side));
    return handles;
}


// As a shape's ShowHandle leaves it: map and path from the same handles.
void showHandles(QGraphicsPathItem* item, ItemKind kind, const QMap<int, QRectF>& handles)
{
    setMap(item, kind, handles);
    item->setPath(Kit::pathOfRects(handles));
}

// The eight handles of a rectangle from (100, 100) to (200, 160), keys 0 to 7,
// and a rotation handle 20 above the top centre as key 8.
QVector<QPointF> rectangleCentres(bool withRotation)
{
    QVector<QPointF> centres = {QPointF(100, 100), QPointF(150, 100), QPointF(200, 100), QPointF(200, 130),
                                QPointF(200, 160), QPointF(150, 160), QPointF(100, 160), QPointF(100, 130)};
    if (withRotation)
        centres << QPointF(150, 80);
    return centres;
}

QVector<QPointF> circleCentres()
{
    return {QPointF(150, 100), QPointF(200, 130), QPointF(150, 160), QPointF(100, 130)};
}

void sendHover(QGraphicsScene* scene, QGraphicsItem* item, QEvent::Type type, const QPointF& scenePos)
{
    QGraphicsSceneHoverEvent event(type);
    event.setScenePos(scenePos);
    event.setPos(item->mapFromScene(scenePos));
    event.setLastScenePos(scenePos);
    scene->sendEvent(item, &event);
}

// For an item without parent or transform, at its scene position.
void placeHover(QGraphicsSceneHoverEvent& event, const QPointF& scenePos)
{
    event.setScenePos(scenePos);
    event.setPos(scenePos);
}

Qt::CursorShape rectangleCursorOf(int number)
{
    switch (number) {
    case 1:
    case 5: return Qt::SizeFDiagCursor;
    case 2:
    case 6: return Qt::SizeVerCursor;
    case 3:
    case 7: return Qt::SizeBDiagCursor;
    case 4:
    case 8: return Qt::SizeHorCursor;
    default: return Qt::ArrowCursor;
    }
}

// The cursor's handle number of a turned item, computed as the item does: in
// float, 360 added once to a negative angle, truncated, 0 read as 8.
int turnedNumber(int number, float itemAngle)
{
    if (number < 1 || number > 8)
        return number;
    float a = itemAngle;
    if (a < 0.0f)
        a += 360.0f;
    const float turned = float(number) + (22.5f + a) / 45.0f;
    const int result = int(turned) % 8;
    return result == 0 ? 8 : result;
}

const QPointF kFarAway(380, 280);

} // namespace

Q_DECLARE_METATYPE(ItemKind)

// The four handle items: squares of 6 by 6 device pixels at every zoom in the
// item's brush, the round rotation handle and its connecting line, and the
// cursors that hovering over a handle gives.
class tst_HandleItems : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void constructionSetsHoverAcceptanceAndBrush_data();
    void constructionSetsHoverAcceptanceAndBrush();
    void setHandleMapReplacesTheCopy();

    void handleIsSixDevicePixelsAtEveryZoom_data();
    void handleIsSixDevicePixelsAtEveryZoom();
    void plainPathItemHandleGrowsWithZoom_data();
    void plainPathItemHandleGrowsWithZoom();
    void rotationHandleIsDisc();
    void connectingLineIsPaintedOnlyWithNineHandles();

    void paintFillsEachHandleCentreInDevicePixels_data();
    void paintFillsEachHandleCentreInDevicePixels();
    void paintMapsCentreWithM12InBothLines();
    void paintLeavesPainterInDevicePixelsOfLastHandle();
    void rotationHandleIsFilledAsRoundPath();
    void connectingLineNeedsExactlyNineEntries_data();
    void connectingLineNeedsExactlyNineEntries();
    void connectingLineOfZeroLengthIsStillDrawn();
    void otherItemsDrawNoLineAndNoDisc_data();
    void otherItemsDrawNoLineAndNoDisc();

    void hoverCursorFollowsHandleNumber_data();
    void hoverCursorFollowsHandleNumber();
    void hoverOnOverlappingHandlesTakesLowestKey();
    void turnedRectangleHandleCursor_data();
    void turnedRectangleHandleCursor();
    void turnedCursorMatchesFloatFormulaAtManyAngles();
    void circleHoverLooksAtRectanglesMovedUpAndLeft();
    void rectangleHoverUsesRectanglesAsTheyStand();
    void hoverLeaveRestoresArrow_data();
    void hoverLeaveRestoresArrow();
    void invisibleItemIgnoresHover_data();
    void invisibleItemIgnoresHover();
    void hoverEnterAloneSetsCursor_data();
    void hoverEnterAloneSetsCursor();
    void graphicsHandleItemKeepsItsCursor();
    void handlesShowOnlyWithMapAndPath_data();
    void handlesShowOnlyWithMapAndPath();

private:
    // Adds the item to the window's scene, where cleanup() takes it out.
    QGraphicsPathItem* addToScene(QGraphicsPathItem* item);
    void showZoomed(double zoom, const QPointF& centre);
    void hoverViaView(const QPointF& scenePos);

    std::unique_ptr<EmbeddedWindow> m_window;
    ImageCtrlView* m_view = nullptr;
    ImageCtrlScene* m_scene = nullptr;
    QList<QGraphicsItem*> m_items;
};

void tst_HandleItems::initTestCase()
{
    m_window = std::make_unique<EmbeddedWindow>();
    QCOMPARE(m_window->created, 0L);
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QCOMPARE(m_window->wnd->setBackground(picture), 0L);
    m_view = m_window->view();
    m_scene = m_window->scene();
    QVERIFY(m_view->viewport()->width() > 300);
    QVERIFY(m_view->viewport()->height() > 200);
}

void tst_HandleItems::cleanupTestCase()
{
    m_window.reset();
}

void tst_HandleItems::cleanup()
{
    hoverViaView(kFarAway);
    for (QGraphicsItem* item : m_items) {
        m_scene->removeItem(item);
        delete item;
    }
    m_items.clear();
}

QGraphicsPathItem* tst_HandleItems::addToScene(QGraphicsPathItem* item)
{
    m_scene->addItem(item);
    m_items << item;
    return item;
}

void tst_HandleItems::showZoomed(double zoom, const QPointF& centre)
{
    m_view->Zoom(zoom);
    m_view->centerOn(centre);
    QApplication::processEvents();
}

void tst_HandleItems::hoverViaView(const QPointF& scenePos)
{
    Kit::moveTo(m_view, scenePos);
}

void tst_HandleItems::constructionSetsHoverAcceptanceAndBrush_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::addColumn<bool>("acceptsHover");
    QTest::addColumn<QBrush>("brush");
    QTest::newRow("GraphicsHandleItem") << ItemKind::Graphics << false << QBrush();
    QTest::newRow("CircleHandleItem") << ItemKind::Circle << true << QBrush(Qt::blue, Qt::SolidPattern);
    QTest::newRow("Rect1HandleItem") << ItemKind::Rect1 << true << QBrush();
    QTest::newRow("Rect2HandleItem") << ItemKind::Rect2 << true << QBrush();
}

void tst_HandleItems::constructionSetsHoverAcceptanceAndBrush()
{
    QFETCH(ItemKind, kind);
    QFETCH(bool, acceptsHover);
    QFETCH(QBrush, brush);
    std::unique_ptr<QGraphicsPathItem> item(makeItem(kind));
    QCOMPARE(item->acceptHoverEvents(), acceptsHover);
    QCOMPARE(item->brush(), brush);
    QVERIFY(!item->hasCursor());
    QVERIFY(item->path().isEmpty());
    QCOMPARE(item->parentItem(), static_cast<QGraphicsItem*>(nullptr));
}

void tst_HandleItems::setHandleMapReplacesTheCopy()
{
    QMap<int, QRectF> handles = handlesAt({QPointF(10, 10), QPointF(20, 20)});
    Rect1HandleItem rect1;
    rect1.setHandleMap(handles);
    QCOMPARE(rect1.handleMap(), handles);
    handles.insert(2, QRectF(0, 0, 1, 1));
    QCOMPARE(rect1.handleMap().size(), 2);
    rect1.setHandleMap(QMap<int, QRectF>());
    QVERIFY(rect1.handleMap().isEmpty());

    GraphicsHandleItem graphics;
    graphics.setHandleMap(handles);
    QCOMPARE(graphics.handleMap(), handles);
    CircleHandleItem circle;
    circle.setHandleMap(handles);
    QCOMPARE(circle.handleMap(), handles);
    Rect2HandleItem rect2;
    rect2.setHandleMap(handles);
    QCOMPARE(rect2.handleMap(), handles);
}

void tst_HandleItems::handleIsSixDevicePixelsAtEveryZoom_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::addColumn<double>("zoom");
    const QList<QPair<const char*, ItemKind>> kinds = {{"GraphicsHandleItem", ItemKind::Graphics},
                                                       {"CircleHandleItem", ItemKind::Circle},
                                                       {"Rect1HandleItem", ItemKind::Rect1},
                                                       {"Rect2HandleItem", ItemKind::Rect2}};
    for (const auto& kind : kinds) {
        for (double zoom : {0.25, 1.0, 4.0})
            QTest::addRow("%s at zoom %g", kind.first, zoom) << kind.second << zoom;
    }
}

void tst_HandleItems::handleIsSixDevicePixelsAtEveryZoom()
{
    QFETCH(ItemKind, kind);
    QFETCH(double, zoom);

    // Handle rectangles as a shape makes them at this zoom: 6 scene units, or
    // 6 device pixels' worth when zoomed out.
    const double side = Kit::handleSideInScene(zoom);
    const QPointF first(100, 100);
    const QPointF second = first + QPointF(60.0 / zoom, 40.0 / zoom);
    const QMap<int, QRectF> handles = handlesAt({first, second}, side);
    QGraphicsPathItem* item = addToScene(makeItem(kind));
    if (kind != ItemKind::Circle)
        item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(item, kind, handles);

    showZoomed(zoom, first);
    const QImage image = Kit::grabViewport(m_view);
    for (const QPointF& centre : {first, second}) {
        QVERIFY(Kit::mapsToWholePixel(m_view, centre));
        const QPoint device = m_view->mapFromScene(centre);
        const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 15));
        QCOMPARE(blob.count, 36);
        QCOMPARE(blob.bounds, QRect(device.x() - 3, device.y() - 3, 6, 6));
    }
}

void tst_HandleItems::plainPathItemHandleGrowsWithZoom_data()
{
    Kit::addZoomRows();
}

// For comparison: a plain path item paints the same rectangles in scene units.
void tst_HandleItems::plainPathItemHandleGrowsWithZoom()
{
    QFETCH(double, zoom);
    const int side = Kit::handleSideOnScreen(zoom);
    const double sceneSide = Kit::handleSideInScene(zoom);
    const QPointF centre(100, 100);
    auto* item = addToScene(new QGraphicsPathItem(Kit::pathOfRects(handlesAt({centre}, sceneSide))));
    item->setPen(QPen(Qt::NoPen));
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));

    showZoomed(zoom, centre);
    const QImage image = Kit::grabViewport(m_view);
    const QPoint device = m_view->mapFromScene(centre);
    const Kit::Blob blob = Kit::findColour(image, Kit::around(device, 30));
    QCOMPARE(blob.count, side * side);
    QCOMPARE(blob.bounds, QRect(device.x() - side / 2, device.y() - side / 2, side, side));
}

void tst_HandleItems::rotationHandleIsDisc()
{
    const QMap<int, QRectF> handles = handlesAt(rectangleCentres(true));
    QGraphicsPathItem* item = addToScene(new Rect2HandleItem(nullptr));
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(item, ItemKind::Rect2, handles);
    showZoomed(1.0, QPointF(150, 120));
    const QImage image = Kit::grabViewport(m_view);

    QVERIFY(Kit::mapsToWholePixel(m_view, QPointF(150, 80)));
    const QPoint disc = m_view->mapFromScene(QPointF(150, 80));
    // The corners of the disc's 6 by 6 square stay unfilled ...
    for (const QPoint& corner : {QPoint(-3, -3), QPoint(2, -3), QPoint(-3, 2), QPoint(2, 2)})
        QVERIFY2(!Kit::isColour(image, disc.x() + corner.x(), disc.y() + corner.y()),
                 qPrintable(QString("corner %1,%2 is filled").arg(corner.x()).arg(corner.y())));
    // ... the 4 by 4 pixels well inside the circle are filled, and nothing of
    // it reaches past the square.
    for (int dy = -2; dy <= 1; ++dy) {
        for (int dx = -2; dx <= 1; ++dx)
            QVERIFY2(Kit::isColour(image, disc.x() + dx, disc.y() + dy),
                     qPrintable(QString("pixel %1,%2 is not filled").arg(dx).arg(dy)));
    }
    const Kit::Blob blob = Kit::findColour(image, QRect(disc.x() - 6, disc.y() - 6, 12, 9));
    QVERIFY(blob.count < 36 - 4);
    QVERIFY(blob.count >= 16);
    QVERIFY(QRect(disc.x() - 3, disc.y() - 3, 6, 6).contains(blob.bounds));

    // The squares around it stay squares.
    const QPoint topCentre = m_view->mapFromScene(QPointF(150, 100));
    for (const QPoint& corner : {QPoint(-3, -3), QPoint(2, -3), QPoint(-3, 2), QPoint(2, 2)})
        QVERIFY(Kit::isColour(image, topCentre.x() + corner.x(), topCentre.y() + corner.y()));
}

void tst_HandleItems::connectingLineIsPaintedOnlyWithNineHandles()
{
    const QRgb white = qRgb(255, 255, 255);
    showZoomed(1.0, QPointF(150, 120));

    auto* eight = addToScene(new Rect2HandleItem(nullptr));
    eight->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(eight, ItemKind::Rect2, handlesAt(rectangleCentres(false)));
    // The path alone reaches up to where a rotation handle would be; the
    // missing ninth entry means no line.
    QPainterPath tall = Kit::pathOfRects(handlesAt(rectangleCentres(true)));
    eight->setPath(tall);
    QImage image = Kit::grabViewport(m_view);
    const QPoint midway = m_view->mapFromScene(QPointF(150, 90));
    for (int dx = -2; dx <= 2; ++dx)
        QCOMPARE(image.pixel(midway.x() + dx, midway.y()), white);
    cleanup();

    showZoomed(1.0, QPointF(150, 120));
    auto* nine = addToScene(new Rect2HandleItem(nullptr));
    nine->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(nine, ItemKind::Rect2, handlesAt(rectangleCentres(true)));
    image = Kit::grabViewport(m_view);
    int bluish = 0;
    for (int dx = -2; dx <= 2; ++dx) {
        const QColor pixel(image.pixel(midway.x() + dx, midway.y()));
        if (pixel.rgb() != white && pixel.blue() > 200 && pixel.red() < pixel.blue() && pixel.green() < pixel.blue())
            ++bluish;
    }
    QVERIFY2(bluish >= 1 && bluish <= 2, qPrintable(QString("%1 line pixels").arg(bluish)));
    // The line joins the two centres and no more: nothing beside it.
    QCOMPARE(image.pixel(midway.x() - 3, midway.y()), white);
    QCOMPARE(image.pixel(midway.x() + 3, midway.y()), white);
}

void tst_HandleItems::paintFillsEachHandleCentreInDevicePixels_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QPointF>("shift");
    const QList<QPair<const char*, ItemKind>> kinds = {{"GraphicsHandleItem", ItemKind::Graphics},
                                                       {"CircleHandleItem", ItemKind::Circle},
                                                       {"Rect1HandleItem", ItemKind::Rect1},
                                                       {"Rect2HandleItem", ItemKind::Rect2}};
    for (const auto& kind : kinds) {
        QTest::addRow("%s zoom 0.25", kind.first) << kind.second << 0.25 << QPointF(-13, 7);
        QTest::addRow("%s zoom 1", kind.first) << kind.second << 1.0 << QPointF(0, 0);
        QTest::addRow("%s zoom 4", kind.first) << kind.second << 4.0 << QPointF(-250.5, -99.25);
    }
}

// Each handle drops the zoom and keeps the position: one fill of the 6 by 6
// square around the centre, in the item's brush, with a matrix of unit scale
// that takes the centre to where the view's matrix takes it.
void tst_HandleItems::paintFillsEachHandleCentreInDevicePixels()
{
    QFETCH(ItemKind, kind);
    QFETCH(double, zoom);
    QFETCH(QPointF, shift);

    std::unique_ptr<QGraphicsPathItem> item(makeItem(kind));
    const QBrush brush(QColor(200, 30, 40), Qt::SolidPattern);
    item->setBrush(brush);
    const QVector<QPointF> centres = {QPointF(10, 20), QPointF(33.5, 7.25), QPointF(-4, 100)};
    const QMap<int, QRectF> handles = handlesAt(centres, 6.0 * qMax(1.0, 1.0 / zoom));
    showHandles(item.get(), kind, handles);

    RecordingDevice device;
    QPainter painter(&device);
    const QTransform view(zoom, 0, 0, zoom, shift.x(), shift.y());
    painter.setWorldTransform(view);
    QStyleOptionGraphicsItem option;
    item->paint(&painter, &option, nullptr);
    painter.end();

    const QList<PaintCall>& calls = device.engine.calls;
    QCOMPARE(calls.size(), centres.size());
    for (int key = 0; key < centres.size(); ++key) {
        const PaintCall& call = calls[key];
        const QPointF c = centres[key];
        QCOMPARE(call.kind, PaintCall::Rects);
        QCOMPARE(call.rects.size(), 1);
        QCOMPARE(call.rects[0], QRectF(c.x() - 3, c.y() - 3, 6, 6));
        QCOMPARE(call.brush.color(), brush.color());
        QCOMPARE(call.brush.style(), Qt::SolidPattern);
        QCOMPARE(call.pen.style(), Qt::NoPen);
        QCOMPARE(call.transform.m11(), 1.0);
        QCOMPARE(call.transform.m22(), 1.0);
        // The centre lands where the view's matrix puts it, in device pixels.
        QCOMPARE(call.transform.map(c), view.map(c));
        QCOMPARE(call.transform.mapRect(call.rects[0]),
                 QRectF(view.map(c) - QPointF(3, 3), QSizeF(6, 6)));
    }
}

void tst_HandleItems::paintMapsCentreWithM12InBothLines()
{
    Rect1HandleItem item;
    item.setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    const QVector<QPointF> centres = {QPointF(10, 20), QPointF(-7, 3.5)};
    showHandles(&item, ItemKind::Rect1, handlesAt(centres));

    RecordingDevice device;
    QPainter painter(&device);
    const double m11 = 2.0, m12 = 0.5, m21 = 0.25, m22 = 3.0, dx = 10.0, dy = 20.0;
    painter.setWorldTransform(QTransform(m11, m12, m21, m22, dx, dy));
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    painter.end();

    const QList<PaintCall>& calls = device.engine.calls;
    QCOMPARE(calls.size(), 2);
    for (int key = 0; key < 2; ++key) {
        const QPointF c = centres[key];
        const double x = m11 * c.x() + m12 * c.y() + dx;
        const double y = m22 * c.y() + m12 * c.x() + dy;
        const QTransform& t = calls[key].transform;
        QCOMPARE(t.m11(), 1.0);
        QCOMPARE(t.m12(), m12);
        QCOMPARE(t.m21(), m21);
        QCOMPARE(t.m22(), 1.0);
        QCOMPARE(t.dx(), x - c.x());
        QCOMPARE(t.dy(), y - c.y());
    }
}

void tst_HandleItems::paintLeavesPainterInDevicePixelsOfLastHandle()
{
    Rect1HandleItem item;
    item.setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(&item, ItemKind::Rect1, handlesAt({QPointF(10, 20), QPointF(30, 40)}));
    QImage target(200, 200, QImage::Format_ARGB32);
    QPainter painter(&target);
    painter.setWorldTransform(QTransform::fromScale(4, 4));
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    // The last handle's matrix: unit scale, its centre (30, 40) at (120, 160).
    QCOMPARE(painter.transform(), QTransform(1, 0, 0, 1, 90, 120));
}

void tst_HandleItems::rotationHandleIsFilledAsRoundPath()
{
    Rect2HandleItem item;
    item.setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    const QVector<QPointF> centres = rectangleCentres(true);
    showHandles(&item, ItemKind::Rect2, handlesAt(centres));

    RecordingDevice device;
    QPainter painter(&device);
    const QTransform view(2, 0, 0, 2, 5, -3);
    painter.setWorldTransform(view);
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    painter.end();

    const QList<PaintCall>& calls = device.engine.calls;
    QCOMPARE(calls.size(), 10);  // eight squares, the disc, the line
    for (int key = 0; key < 8; ++key)
        QCOMPARE(calls[key].kind, PaintCall::Rects);
    const PaintCall& disc = calls[8];
    QCOMPARE(disc.kind, PaintCall::Path);
    QPainterPath expected;
    const QPointF c = centres[8];
    expected.addRoundRect(QRectF(c.x() - 3, c.y() - 3, 6, 6), 100);
    QCOMPARE(disc.path, expected);
    QCOMPARE(disc.brush.color(), QColor(Qt::blue));
    QCOMPARE(disc.pen.style(), Qt::NoPen);
    QCOMPARE(disc.transform.map(c), view.map(c));
    QCOMPARE(disc.transform.m11(), 1.0);
}

void tst_HandleItems::connectingLineNeedsExactlyNineEntries_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<bool>("line");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("eight") << 8 << false;
    QTest::newRow("nine") << 9 << true;
    QTest::newRow("ten") << 10 << false;
}

void tst_HandleItems::connectingLineNeedsExactlyNineEntries()
{
    QFETCH(int, entries);
    QFETCH(bool, line);
    QVector<QPointF> centres = rectangleCentres(true);
    centres << QPointF(0, 0);
    centres.resize(entries);
    Rect2HandleItem item;
    item.setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    item.setHandleMap(handlesAt(centres));
    item.setPath(Kit::pathOfRects(handlesAt(rectangleCentres(true))));

    RecordingDevice device;
    QPainter painter(&device);
    painter.setPen(QPen(Qt::red, 5, Qt::DashLine));
    const QTransform view(3, 0, 0, 3, -20, 11);
    painter.setWorldTransform(view);
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);

    const QList<PaintCall>& calls = device.engine.calls;
    int lines = 0;
    for (const PaintCall& call : calls)
        lines += call.kind == PaintCall::Lines ? 1 : 0;
    QCOMPARE(lines, line ? 1 : 0);
    QCOMPARE(calls.size(), entries + (line ? 1 : 0));
    if (!line)
        return;
    const PaintCall& drawn = calls.last();
    QCOMPARE(drawn.kind, PaintCall::Lines);
    QCOMPARE(drawn.lines.size(), 1);
    QCOMPARE(drawn.lines[0], QLineF(centres[8], centres[1]));
    // Drawn in scene units again, with a cosmetic blue copy of the painter's pen.
    QCOMPARE(drawn.transform, view);
    QCOMPARE(painter.transform(), view);
    QCOMPARE(drawn.pen.width(), 0);
    QVERIFY(drawn.pen.isCosmetic());
    QCOMPARE(drawn.pen.color(), QColor(Qt::blue));
    QCOMPARE(drawn.pen.style(), Qt::DashLine);
}

void tst_HandleItems::connectingLineOfZeroLengthIsStillDrawn()
{
    QVector<QPointF> centres = rectangleCentres(true);
    centres[8] = centres[1];
    Rect2HandleItem item;
    item.setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(&item, ItemKind::Rect2, handlesAt(centres));

    RecordingDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    painter.end();

    const PaintCall& drawn = device.engine.calls.last();
    QCOMPARE(drawn.kind, PaintCall::Lines);
    QCOMPARE(drawn.lines.size(), 1);
    QCOMPARE(drawn.lines[0].p1(), centres[1]);
    QCOMPARE(drawn.lines[0].p2(), centres[1]);
}

void tst_HandleItems::otherItemsDrawNoLineAndNoDisc_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::newRow("GraphicsHandleItem") << ItemKind::Graphics;
    QTest::newRow("CircleHandleItem") << ItemKind::Circle;
    QTest::newRow("Rect1HandleItem") << ItemKind::Rect1;
}

// Nine entries mean nothing special outside the rotated rectangle's item: key
// 8 is one more square, and no line is drawn.
void tst_HandleItems::otherItemsDrawNoLineAndNoDisc()
{
    QFETCH(ItemKind, kind);
    std::unique_ptr<QGraphicsPathItem> item(makeItem(kind));
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(item.get(), kind, handlesAt(rectangleCentres(true)));

    RecordingDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    item->paint(&painter, &option, nullptr);
    painter.end();

    const QList<PaintCall>& calls = device.engine.calls;
    QCOMPARE(calls.size(), 9);
    for (const PaintCall& call : calls)
        QCOMPARE(call.kind, PaintCall::Rects);
}

void tst_HandleItems::hoverCursorFollowsHandleNumber_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("number");
    QTest::addColumn<Qt::CursorShape>("cursor");

    const Qt::CursorShape rectangle[] = {Qt::SizeFDiagCursor, Qt::SizeVerCursor, Qt::SizeBDiagCursor,
                                         Qt::SizeHorCursor,   Qt::SizeFDiagCursor, Qt::SizeVerCursor,
                                         Qt::SizeBDiagCursor, Qt::SizeHorCursor};
    for (int number = 1; number <= 8; ++number) {
        QTest::addRow("Rect1HandleItem handle %d", number)
            << ItemKind::Rect1 << 8 << number << rectangle[number - 1];
        QTest::addRow("Rect2HandleItem handle %d", number)
            << ItemKind::Rect2 << 9 << number << rectangle[number - 1];
    }
    QTest::newRow("Rect2HandleItem rotation handle 9") << ItemKind::Rect2 << 9 << 9 << Qt::CrossCursor;
    QTest::newRow("Rect1HandleItem ninth handle is no number of its own")
        << ItemKind::Rect1 << 9 << 9 << Qt::ArrowCursor;
    QTest::newRow("Rect1HandleItem tenth handle") << ItemKind::Rect1 << 10 << 10 << Qt::ArrowCursor;
    QTest::newRow("Rect2HandleItem tenth handle") << ItemKind::Rect2 << 10 << 10 << Qt::ArrowCursor;
    QTest::newRow("Rect1HandleItem off the handles") << ItemKind::Rect1 << 8 << 0 << Qt::ArrowCursor;
    QTest::newRow("Rect2HandleItem off the handles") << ItemKind::Rect2 << 9 << 0 << Qt::ArrowCursor;

    const Qt::CursorShape circle[] = {Qt::SizeVerCursor, Qt::SizeHorCursor, Qt::SizeVerCursor, Qt::SizeHorCursor};
    for (int number = 1; number <= 4; ++number)
        QTest::addRow("CircleHandleItem handle %d", number) << ItemKind::Circle << 4 << number << circle[number - 1];
    QTest::newRow("CircleHandleItem fifth handle") << ItemKind::Circle << 5 << 5 << Qt::ArrowCursor;
    QTest::newRow("CircleHandleItem off the handles") << ItemKind::Circle << 4 << 0 << Qt::ArrowCursor;
}

// The mouse moves over the viewport onto the centre of one handle; the item
// sets its cursor for the number of that handle.
void tst_HandleItems::hoverCursorFollowsHandleNumber()
{
    QFETCH(ItemKind, kind);
    QFETCH(int, entries);
    QFETCH(int, number);
    QFETCH(Qt::CursorShape, cursor);

    QVector<QPointF> centres = kind == ItemKind::Circle ? circleCentres() : rectangleCentres(true);
    centres << QPointF(250, 200) << QPointF(260, 210);
    centres.resize(entries);
    QMap<int, QRectF> handles = handlesAt(centres);
    QGraphicsPathItem* item = addToScene(makeItem(kind));
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    QPainterPath path = Kit::pathOfRects(handles);
    // A point of the item that lies on no handle, for the row without one.
    const QPointF offHandle(300, 250);
    path.addRect(QRectF(offHandle - QPointF(5, 5), QSizeF(10, 10)));
    setMap(item, kind, handles);
    item->setPath(path);
    item->setCursor(Qt::WaitCursor);

    showZoomed(1.0, QPointF(180, 150));
    const QPointF target = number == 0 ? offHandle : centres[number - 1];
    hoverViaView(target);
    QCOMPARE(item->cursor().shape(), cursor);
}

void tst_HandleItems::hoverOnOverlappingHandlesTakesLowestKey()
{
    // Keys 0 and 1 overlap; keys 2 and 3 overlap the other way round.
    const QMap<int, QRectF> handles = {{0, QRectF(100, 100, 6, 6)},
                                       {1, QRectF(103, 100, 6, 6)},
                                       {2, QRectF(153, 100, 6, 6)},
                                       {3, QRectF(150, 100, 6, 6)}};
    QGraphicsPathItem* item = addToScene(new Rect1HandleItem(nullptr));
    showHandles(item, ItemKind::Rect1, handles);
    showZoomed(1.0, QPointF(150, 120));
    hoverViaView(QPointF(104, 103));
    QCOMPARE(item->cursor().shape(), Qt::SizeFDiagCursor);  // 1, not 2
    hoverViaView(QPointF(154, 103));
    QCOMPARE(item->cursor().shape(), Qt::SizeBDiagCursor);  // 3, not 4
    hoverViaView(QPointF(108, 103));
    QCOMPARE(item->cursor().shape(), Qt::SizeVerCursor);    // 2 alone
}

void tst_HandleItems::turnedRectangleHandleCursor_data()
{
    QTest::addColumn<float>("itemAngle");
    QTest::addColumn<int>("number");
    QTest::addColumn<Qt::CursorShape>("cursor");

    QTest::newRow("angle 0, handle 1: int(1 + 0.5) % 8 = 1") << 0.0f << 1 << Qt::SizeFDiagCursor;
    QTest::newRow("angle 0, handle 2") << 0.0f << 2 << Qt::SizeVerCursor;
    QTest::newRow("angle 0, handle 3") << 0.0f << 3 << Qt::SizeBDiagCursor;
    QTest::newRow("angle 0, handle 4") << 0.0f << 4 << Qt::SizeHorCursor;
    QTest::newRow("angle 0, handle 8") << 0.0f << 8 << Qt::SizeHorCursor;
    QTest::newRow("stored 45 is -45, 315: handle 1 gives 0, hence 8") << -45.0f << 1 << Qt::SizeHorCursor;
    QTest::newRow("-45, handle 2 gives 1") << -45.0f << 2 << Qt::SizeFDiagCursor;
    QTest::newRow("-45, handle 3 gives 2") << -45.0f << 3 << Qt::SizeVerCursor;
    QTest::newRow("-45, handle 8 gives 7") << -45.0f << 8 << Qt::SizeBDiagCursor;
    QTest::newRow("-45, rotation handle stays") << -45.0f << 9 << Qt::CrossCursor;
    QTest::newRow("45, handle 1 gives 2") << 45.0f << 1 << Qt::SizeVerCursor;
    QTest::newRow("45, handle 7 gives 8") << 45.0f << 7 << Qt::SizeHorCursor;
    QTest::newRow("45, handle 8 gives 1") << 45.0f << 8 << Qt::SizeFDiagCursor;
    QTest::newRow("90, handle 1 gives 3") << 90.0f << 1 << Qt::SizeBDiagCursor;
    QTest::newRow("90, handle 6 gives 8") << 90.0f << 6 << Qt::SizeHorCursor;
    QTest::newRow("180, handle 1 gives 5") << 180.0f << 1 << Qt::SizeFDiagCursor;
    QTest::newRow("180, handle 4 gives 8") << 180.0f << 4 << Qt::SizeHorCursor;
    QTest::newRow("22.4 stays below the half-way step") << 22.4f << 1 << Qt::SizeFDiagCursor;
    QTest::newRow("22.5 changes at the half-way step") << 22.5f << 1 << Qt::SizeVerCursor;
    QTest::newRow("-22.5 gives 337.5: back to 1") << -22.5f << 1 << Qt::SizeFDiagCursor;
    QTest::newRow("-22.6 gives 337.4: 8") << -22.6f << 1 << Qt::SizeHorCursor;
    QTest::newRow("360 is a full turn") << 360.0f << 1 << Qt::SizeFDiagCursor;
    QTest::newRow("-360 becomes 0") << -360.0f << 3 << Qt::SizeBDiagCursor;
    QTest::newRow("-400 stays negative after one 360: handle 1 gives 0, hence 8") << -400.0f << 1
                                                                                   << Qt::SizeHorCursor;
    QTest::newRow("-400, handle 2 gives 1") << -400.0f << 2 << Qt::SizeFDiagCursor;
    QTest::newRow("-710 stays negative after one 360: handle 1 gives -6, no resize cursor") << -710.0f << 1
                                                                                              << Qt::ArrowCursor;
    QTest::newRow("-710, handle 8 gives 0, hence 8") << -710.0f << 8 << Qt::SizeHorCursor;
    QTest::newRow("rotation handle at 90") << 90.0f << 9 << Qt::CrossCursor;
    QTest::newRow("rotation handle at -710") << -710.0f << 9 << Qt::CrossCursor;
}

void tst_HandleItems::turnedRectangleHandleCursor()
{
    QFETCH(float, itemAngle);
    QFETCH(int, number);
    QFETCH(Qt::CursorShape, cursor);

    const QVector<QPointF> centres = rectangleCentres(true);
    auto* item = static_cast<Rect2HandleItem*>(addToScene(new Rect2HandleItem(nullptr)));
    showHandles(item, ItemKind::Rect2, handlesAt(centres));
    item->setRotateAngle(itemAngle);
    showZoomed(1.0, QPointF(150, 120));
    hoverViaView(centres[number - 1]);
    QCOMPARE(item->cursor().shape(), cursor);
}

void tst_HandleItems::turnedCursorMatchesFloatFormulaAtManyAngles()
{
    const QVector<QPointF> centres = rectangleCentres(true);
    auto* item = static_cast<Rect2HandleItem*>(addToScene(new Rect2HandleItem(nullptr)));
    showHandles(item, ItemKind::Rect2, handlesAt(centres));
    showZoomed(1.0, QPointF(150, 120));
    const QMap<int, QRectF> handles = handlesAt(centres);
    for (float angle = -740.0f; angle <= 740.0f; angle += 7.5f) {
        item->setRotateAngle(angle);
        for (int number = 1; number <= 9; ++number) {
            // Through the scene, straight to the item: a move within it.
            item->setCursor(Qt::WaitCursor);
            sendHover(m_scene, item, QEvent::GraphicsSceneHoverMove, centres[number - 1]);
            const Qt::CursorShape expected = number == 9 ? Qt::CrossCursor
                                                         : rectangleCursorOf(turnedNumber(number, angle));
            QVERIFY2(item->cursor().shape() == expected,
                     qPrintable(QString("angle %1 handle %2: cursor %3, expected %4")
                                    .arg(angle)
                                    .arg(number)
                                    .arg(item->cursor().shape())
                                    .arg(expected)));
        }
    }
}

// Each handle rectangle is looked at one unit up and to the left of where it
// stands, with its size kept.
void tst_HandleItems::circleHoverLooksAtRectanglesMovedUpAndLeft()
{
    const QVector<QPointF> centres = circleCentres();
    const QMap<int, QRectF> handles = handlesAt(centres);
    QGraphicsPathItem* item = addToScene(new CircleHandleItem(nullptr));
    showHandles(item, ItemKind::Circle, handles);
    const QRectF top = handles.value(0);  // (147, 97) to (153, 103)

    struct Probe
    {
        QPointF pos;
        Qt::CursorShape cursor;
        const char* what;
    };
    const Probe probes[] = {
        {top.bottomRight() - QPointF(0.5, 0.5), Qt::ArrowCursor, "rightmost, lowest pixel of the rectangle"},
        {QPointF(top.right() - 0.5, top.center().y()), Qt::ArrowCursor, "rightmost pixel column"},
        {QPointF(top.center().x(), top.bottom() - 0.5), Qt::ArrowCursor, "lowest pixel row"},
        {QPointF(top.left() - 0.5, top.center().y()), Qt::SizeVerCursor, "half a unit left of it"},
        {QPointF(top.left() - 1.0, top.center().y()), Qt::SizeVerCursor, "one unit left of it"},
        {QPointF(top.center().x(), top.top() - 1.0), Qt::SizeVerCursor, "one unit above it"},
        {top.topLeft() - QPointF(1, 1), Qt::SizeVerCursor, "one unit left of and above its corner"},
        {QPointF(top.left() - 1.5, top.center().y()), Qt::ArrowCursor, "more than one unit left of it"},
        {top.center(), Qt::SizeVerCursor, "its centre"},
        {QPointF(top.right() - 1.0, top.bottom() - 1.0), Qt::SizeVerCursor, "one unit in from the far corner"},
    };
    for (const Probe& probe : probes) {
        item->setCursor(Qt::WaitCursor);
        sendHover(m_scene, item, QEvent::GraphicsSceneHoverMove, probe.pos);
        QVERIFY2(item->cursor().shape() == probe.cursor, probe.what);
    }
    // The right handle (number 2) likewise.
    const QRectF right = handles.value(1);
    sendHover(m_scene, item, QEvent::GraphicsSceneHoverMove, QPointF(right.left() - 1.0, right.center().y()));
    QCOMPARE(item->cursor().shape(), Qt::SizeHorCursor);
    sendHover(m_scene, item, QEvent::GraphicsSceneHoverMove, right.bottomRight() - QPointF(0.5, 0.5));
    QCOMPARE(item->cursor().shape(), Qt::ArrowCursor);
}

void tst_HandleItems::rectangleHoverUsesRectanglesAsTheyStand()
{
    const QMap<int, QRectF> handles = handlesAt(rectangleCentres(false));
    QGraphicsPathItem* rect1 = addToScene(new Rect1HandleItem(nullptr));
    showHandles(rect1, ItemKind::Rect1, handles);
    const QRectF first = handles.value(0);
    sendHover(m_scene, rect1, QEvent::GraphicsSceneHoverMove, first.bottomRight() - QPointF(0.5, 0.5));
    QCOMPARE(rect1->cursor().shape(), Qt::SizeFDiagCursor);
    sendHover(m_scene, rect1, QEvent::GraphicsSceneHoverMove, first.bottomRight());
    QCOMPARE(rect1->cursor().shape(), Qt::SizeFDiagCursor);
    sendHover(m_scene, rect1, QEvent::GraphicsSceneHoverMove, first.topLeft() - QPointF(0.5, 0));
    QCOMPARE(rect1->cursor().shape(), Qt::ArrowCursor);

    QGraphicsPathItem* rect2 = addToScene(new Rect2HandleItem(nullptr));
    showHandles(rect2, ItemKind::Rect2, handles);
    sendHover(m_scene, rect2, QEvent::GraphicsSceneHoverMove, first.bottomRight() - QPointF(0.5, 0.5));
    QCOMPARE(rect2->cursor().shape(), Qt::SizeFDiagCursor);
    sendHover(m_scene, rect2, QEvent::GraphicsSceneHoverMove, first.topLeft() - QPointF(0, 0.5));
    QCOMPARE(rect2->cursor().shape(), Qt::ArrowCursor);
}

void tst_HandleItems::hoverLeaveRestoresArrow_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::newRow("CircleHandleItem") << ItemKind::Circle;
    QTest::newRow("Rect1HandleItem") << ItemKind::Rect1;
    QTest::newRow("Rect2HandleItem") << ItemKind::Rect2;
}

void tst_HandleItems::hoverLeaveRestoresArrow()
{
    QFETCH(ItemKind, kind);
    const QVector<QPointF> centres = kind == ItemKind::Circle ? circleCentres() : rectangleCentres(true);
    QGraphicsPathItem* item = addToScene(makeItem(kind));
    showHandles(item, kind, handlesAt(centres));
    showZoomed(1.0, QPointF(150, 120));

    hoverViaView(centres[1]);
    QVERIFY(item->cursor().shape() != Qt::ArrowCursor);
    hoverViaView(kFarAway);
    QCOMPARE(item->cursor().shape(), Qt::ArrowCursor);

    // A leave sets the arrow whatever the item was showing, visible or not.
    auto callable = [kind]() -> std::unique_ptr<QGraphicsPathItem> {
        switch (kind) {
        case ItemKind::Circle: return std::make_unique<HoverCallable<CircleHandleItem>>();
        case ItemKind::Rect1: return std::make_unique<HoverCallable<Rect1HandleItem>>();
        default: return std::make_unique<HoverCallable<Rect2HandleItem>>();
        }
    }();
    callable->setCursor(Qt::WaitCursor);
    callable->hide();
    QGraphicsSceneHoverEvent leave(QEvent::GraphicsSceneHoverLeave);
    placeHover(leave, centres[0]);
    switch (kind) {
    case ItemKind::Circle:
        static_cast<HoverCallable<CircleHandleItem>*>(callable.get())->hoverLeaveEvent(&leave);
        break;
    case ItemKind::Rect1:
        static_cast<HoverCallable<Rect1HandleItem>*>(callable.get())->hoverLeaveEvent(&leave);
        break;
    default:
        static_cast<HoverCallable<Rect2HandleItem>*>(callable.get())->hoverLeaveEvent(&leave);
        break;
    }
    QCOMPARE(callable->cursor().shape(), Qt::ArrowCursor);
}

void tst_HandleItems::invisibleItemIgnoresHover_data()
{
    hoverLeaveRestoresArrow_data();
}

namespace {

template <class Item>
void checkInvisibleIgnoresHover(const QVector<QPointF>& centres, Qt::CursorShape onFirstHandle)
{
    HoverCallable<Item> item;
    item.setHandleMap(handlesAt(centres));
    item.setPath(Kit::pathOfRects(handlesAt(centres)));
    item.setCursor(Qt::WaitCursor);
    item.hide();
    QGraphicsSceneHoverEvent enter(QEvent::GraphicsSceneHoverEnter);
    placeHover(enter, centres[0]);
    item.hoverEnterEvent(&enter);
    QCOMPARE(item.cursor().shape(), Qt::WaitCursor);
    QGraphicsSceneHoverEvent move(QEvent::GraphicsSceneHoverMove);
    placeHover(move, centres[0]);
    item.hoverMoveEvent(&move);
    QCOMPARE(item.cursor().shape(), Qt::WaitCursor);
    item.show();
    item.hoverMoveEvent(&move);
    QCOMPARE(item.cursor().shape(), onFirstHandle);
}

} // namespace

void tst_HandleItems::invisibleItemIgnoresHover()
{
    QFETCH(ItemKind, kind);
    switch (kind) {
    case ItemKind::Circle:
        checkInvisibleIgnoresHover<CircleHandleItem>(circleCentres(), Qt::SizeVerCursor);
        break;
    case ItemKind::Rect1:
        checkInvisibleIgnoresHover<Rect1HandleItem>(rectangleCentres(false), Qt::SizeFDiagCursor);
        break;
    default:
        checkInvisibleIgnoresHover<Rect2HandleItem>(rectangleCentres(true), Qt::SizeFDiagCursor);
        break;
    }
}

void tst_HandleItems::hoverEnterAloneSetsCursor_data()
{
    hoverLeaveRestoresArrow_data();
}

namespace {

template <class Item>
void checkEnterSetsCursor(const QVector<QPointF>& centres, Qt::CursorShape onSecondHandle)
{
    HoverCallable<Item> item;
    item.setHandleMap(handlesAt(centres));
    item.setCursor(Qt::WaitCursor);
    QGraphicsSceneHoverEvent enter(QEvent::GraphicsSceneHoverEnter);
    placeHover(enter, centres[1]);
    item.hoverEnterEvent(&enter);
    QCOMPARE(item.cursor().shape(), onSecondHandle);
    QGraphicsSceneHoverEvent away(QEvent::GraphicsSceneHoverEnter);
    placeHover(away, QPointF(-50, -50));
    item.hoverEnterEvent(&away);
    QCOMPARE(item.cursor().shape(), Qt::ArrowCursor);
}

} // namespace

void tst_HandleItems::hoverEnterAloneSetsCursor()
{
    QFETCH(ItemKind, kind);
    switch (kind) {
    case ItemKind::Circle:
        checkEnterSetsCursor<CircleHandleItem>(circleCentres(), Qt::SizeHorCursor);
        break;
    case ItemKind::Rect1:
        checkEnterSetsCursor<Rect1HandleItem>(rectangleCentres(false), Qt::SizeVerCursor);
        break;
    default:
        checkEnterSetsCursor<Rect2HandleItem>(rectangleCentres(true), Qt::SizeVerCursor);
        break;
    }
}

void tst_HandleItems::graphicsHandleItemKeepsItsCursor()
{
    const QVector<QPointF> centres = {QPointF(120, 120), QPointF(160, 140), QPointF(200, 120)};
    QGraphicsPathItem* item = addToScene(new GraphicsHandleItem(nullptr));
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showHandles(item, ItemKind::Graphics, handlesAt(centres));
    item->setCursor(Qt::CrossCursor);
    QVERIFY(!item->acceptHoverEvents());
    showZoomed(1.0, QPointF(160, 130));

    for (const QPointF& centre : centres) {
        hoverViaView(centre);
        QCOMPARE(item->cursor().shape(), Qt::CrossCursor);
    }
    hoverViaView(kFarAway);
    QCOMPARE(item->cursor().shape(), Qt::CrossCursor);
    // Sent to it directly, hover changes nothing either.
    sendHover(m_scene, item, QEvent::GraphicsSceneHoverEnter, centres[0]);
    sendHover(m_scene, item, QEvent::GraphicsSceneHoverMove, centres[0]);
    sendHover(m_scene, item, QEvent::GraphicsSceneHoverLeave, centres[0]);
    QCOMPARE(item->cursor().shape(), Qt::CrossCursor);
}

void tst_HandleItems::handlesShowOnlyWithMapAndPath_data()
{
    QTest::addColumn<ItemKind>("kind");
    QTest::newRow("GraphicsHandleItem") << ItemKind::Graphics;
    QTest::newRow("CircleHandleItem") << ItemKind::Circle;
    QTest::newRow("Rect1HandleItem") << ItemKind::Rect1;
    QTest::newRow("Rect2HandleItem") << ItemKind::Rect2;
}

// The path gives the item its extent and the map gives what it paints: with
// either of them empty, no handle is on the screen and hovering finds none.
void tst_HandleItems::handlesShowOnlyWithMapAndPath()
{
    QFETCH(ItemKind, kind);
    const QVector<QPointF> centres = kind == ItemKind::Circle ? circleCentres() : rectangleCentres(false);
    const QMap<int, QRectF> handles = handlesAt(centres);
    QGraphicsPathItem* item = addToScene(makeItem(kind));
    item->setBrush(QBrush(Qt::blue, Qt::SolidPattern));
    showZoomed(1.0, QPointF(150, 130));
    const QRect everywhere = m_view->viewport()->rect();

    setMap(item, kind, handles);
    item->setPen(QPen(QColor(Qt::red), 0));
    item->setPath(QPainterPath());
    QCOMPARE(Kit::findColour(Kit::grabViewport(m_view), everywhere).count, 0);
    item->setCursor(Qt::WaitCursor);
    hoverViaView(centres[0]);
    QCOMPARE(item->cursor().shape(), Qt::WaitCursor);
    hoverViaView(kFarAway);

    item->setPath(Kit::pathOfRects(handles));
    QCOMPARE(Kit::findColour(Kit::grabViewport(m_view), everywhere).count, 36 * centres.size());

    setMap(item, kind, QMap<int, QRectF>());
    QCOMPARE(Kit::findColour(Kit::grabViewport(m_view), everywhere).count, 0);
}

QTEST_MAIN(tst_HandleItems)
#include "tst_handleitems.moc"
