// What the operator sees on the screen during and after a drag must be, pixel
// for pixel, what a repaint of the whole window gives with every item painted
// by Qt itself. The screen is read from the window's backing store, which
// keeps whatever earlier repaints left, and compared with a render of the
// viewport with the cache of settled shapes off. A repaint of only the areas
// that the dragged items changed fails here: the antialiased fringe of a
// neighbour whose extent stays outside those areas is then blended anew
// without the neighbour, a few levels off. So does a cached picture that
// keeps a shape from before a change, or stacks a run in the wrong place.

#include "testkit.h"

#include "kitshapedata.h"


using Kit::differingPixels;
using Kit::onScreen;
using Kit::Params;

namespace {

struct Dressed
{
    int code;
    Params values;
    QColor pen;
    int width;
    QColor brush;
};

// Overlapping shapes of every kind around the middle of the picture, with
// opaque and translucent brushes and pens of several widths.
const QVector<Dressed>& crowd()
{
    static const QVector<Dressed> shapes = {
        {VorROI::ROI_RECT1, {150, 110, 250, 190}, Qt::red, 1, QColor(0, 0, 255, 60)},
        {VorROI::ROI_RECT2, {200, 150, 90, 50, 25}, Qt::green, 2, QColor(255, 255, 0, 90)},
        {VorROI::ROI_CIRCLE, {190, 140, 40}, Qt::yellow, 3, QColor(255, 0, 255, 255)},
        {VorROI::ROI_ELLIPSE, {215, 160, 60, 25, 30}, Qt::cyan, 1, QColor(0, 0, 0, 0)},
        {VorROI::ROI_TORUS, {170, 170, 20, 45, 30, 250}, Qt::magenta, 2, QColor(0, 255, 0, 120)},
        {VorROI::ROI_ARC, {230, 130, 35, 10, 200}, Qt::white, 2, QColor(0, 0, 0, 0)},
        {VorROI::ROI_LINE, {140, 200, 260, 100}, Qt::blue, 4, QColor(0, 0, 0, 0)},
        {VorROI::ROI_POINT, {205, 145}, Qt::red, 1, QColor(0, 0, 0, 0)},
        {VorROI::ROI_POLYGON, {160, 120, 240, 115, 250, 185, 175, 195}, Qt::black, 1, QColor(255, 128, 0, 70)},
        {VorROI::ROI_IRREGULAR, {150, 150, 180, 120, 210, 170, 240, 125, 255, 160}, Qt::darkGreen, 2,
         QColor(0, 0, 0, 0)},
    };
    return shapes;
}

} // namespace

class tst_DragRepaint : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void screenMatchesAFullRepaintBeforeAnyDrag();
    void handleDragShowsWhatAFullRepaintShows_data();
    void handleDragShowsWhatAFullRepaintShows();
    void bodyDragShowsWhatAFullRepaintShows_data();
    void bodyDragShowsWhatAFullRepaintShows();
    void dragRepaintsTheDraggedShapeOnScreen();

private:
    void showCrowd(EmbeddedWindow& w, double zoom);
    // Presses at from, moves in steps to from + way and releases there; after
    // each step, and after the release, the screen is compared with a full
    // repaint.
    void dragAndCompare(EmbeddedWindow& w, const QPointF& from, const QPointF& way);

    QVector<long> m_ids;
};

void tst_DragRepaint::init()
{
    m_ids.clear();
}

void tst_DragRepaint::showCrowd(EmbeddedWindow& w, double zoom)
{
    Kit::cacheEveryItem(w.view());
    QCOMPARE(w.showPicture(Kit::gradientPicture(), 1.0), 0L);
    for (const Dressed& d : crowd()) {
        w.wnd->setPen(uchar(d.pen.red()), uchar(d.pen.green()), uchar(d.pen.blue()), ulong(d.width));
        w.wnd->setBrush(uchar(d.brush.red()), uchar(d.brush.green()), uchar(d.brush.blue()), uchar(d.brush.alpha()));
        VorROI roi = Kit::makeROI(d.code, d.values);
        const long id = w.wnd->displayROI(roi);
        QVERIFY2(id >= 0, qPrintable(QString("kind %1 was refused").arg(d.code)));
        m_ids.append(id);
    }
    w.showAt(zoom, QPointF(200, 150));
}

void tst_DragRepaint::dragAndCompare(EmbeddedWindow& w, const QPointF& from, const QPointF& way)
{
    QGraphicsView* view = w.view();
    const SettledItemCache* cache = Kit::settledItemsOf(view);
    const QImage before = onScreen(view);
    Kit::pressAt(view, from);
    QCOMPARE(Kit::screenAgainstEveryItemPainted(view), 0);
    constexpr int kSteps = 5;
    for (int step = 1; step <= kSteps; ++step) {
        Kit::moveTo(view, from + way * (double(step) / kSteps), Qt::LeftButton);
        const QImage shown = onScreen(view);
        // The screen came from the pictures: only the dragged shape was live.
        QVERIFY(cache->liveItemCount() > 0);
        QVERIFY(cache->liveItemCount() <= 3);
        QCOMPARE(differingPixels(shown, Kit::grabViewportPaintingEveryItem(view)), 0);
    }
    QVERIFY2(differingPixels(onScreen(view), before) > 0, "the drag changed nothing on the screen");
    Kit::releaseAt(view, from + way);
    QCOMPARE(Kit::screenAgainstEveryItemPainted(view), 0);
}

void tst_DragRepaint::screenMatchesAFullRepaintBeforeAnyDrag()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    showCrowd(w, 2.0);
    const QImage shown = onScreen(w.view());
    QVERIFY(!shown.isNull());
    QCOMPARE(Kit::settledItemsOf(w.view())->liveItemCount(), 0);
    QCOMPARE(differingPixels(shown, Kit::grabViewportPaintingEveryItem(w.view())), 0);
}

void tst_DragRepaint::handleDragShowsWhatAFullRepaintShows_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("zoom");
    const char* names[] = {"rectangle",   "turned rectangle", "circle", "ellipse",   "annulus",  "arc",
                           "line",        "point",            "polygon", "free line"};
    for (double zoom : {0.75, 1.0, 3.0}) {
        for (int kind = 0; kind < crowd().size(); ++kind)
            QTest::addRow("%s at zoom %g", names[kind], zoom) << kind << zoom;
    }
}

// The first handle of each kind is dragged across its neighbours.
void tst_DragRepaint::handleDragShowsWhatAFullRepaintShows()
{
    QFETCH(int, kind);
    QFETCH(double, zoom);
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    showCrowd(w, zoom);
    const long id = m_ids.at(kind);
    w.window()->selectShape(id);
    ODShape* shape = w.scene()->GetActiveLayer()->shapeById(id);
    QVERIFY(shape);
    QVERIFY(!shape->handles().isEmpty());
    const QPointF handle = shape->handles().value(0).center();
    dragAndCompare(w, handle, QPointF(23, 17));
}

void tst_DragRepaint::bodyDragShowsWhatAFullRepaintShows_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QPointF>("grip");
    QTest::addColumn<double>("zoom");
    for (double zoom : {0.75, 1.0, 3.0}) {
        QTest::addRow("rectangle at zoom %g", zoom) << 0 << QPointF(155, 185) << zoom;
        QTest::addRow("circle at zoom %g", zoom) << 2 << QPointF(190, 140) << zoom;
    }
}

// A click selects the shape under the point; the next press there moves it.
void tst_DragRepaint::bodyDragShowsWhatAFullRepaintShows()
{
    QFETCH(int, kind);
    QFETCH(QPointF, grip);
    QFETCH(double, zoom);
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    showCrowd(w, zoom);
    w.window()->selectShape(m_ids.at(kind));
    dragAndCompare(w, grip, QPointF(-31, 26));
    ODShape* shape = w.scene()->GetActiveLayer()->shapeById(m_ids.at(kind));
    QVERIFY(shape);
}

// The drag itself is seen: the dragged rectangle's pen leaves its old corner
// on the screen and reaches the new one.
void tst_DragRepaint::dragRepaintsTheDraggedShapeOnScreen()
{
    EmbeddedWindow w(QSize(640, 480));
    QVERIFY(w.exposed);
    Kit::cacheEveryItem(w.view());
    QCOMPARE(w.showPicture(Kit::gradientPicture(), 1.0), 0L);
    w.wnd->setPen(255, 0, 0, 1);
    VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, {100, 100, 200, 180});
    const long id = w.wnd->displayROI(roi);
    QVERIFY(id >= 0);
    w.showAt(2.0, QPointF(200, 150));
    QGraphicsView* view = w.view();
    constexpr QRgb kRed = 0xffff0000;
    const QRect oldEdge = Kit::around(view->mapFromScene(QPointF(150, 180)), 3);
    const QRect newEdge = Kit::around(view->mapFromScene(QPointF(150, 190)), 3);
    QImage shown = onScreen(view);
    QVERIFY(Kit::countColour(shown, oldEdge, kRed) > 0);
    QCOMPARE(Kit::countColour(shown, newEdge, kRed), 0);
    w.window()->selectShape(id);
    Kit::pressAt(view, QPointF(150, 140));
    Kit::moveTo(view, QPointF(150, 150), Qt::LeftButton);
    shown = onScreen(view);
    QCOMPARE(Kit::countColour(shown, oldEdge, kRed), 0);
    QVERIFY(Kit::countColour(shown, newEdge, kRed) > 0);
    Kit::releaseAt(view, QPointF(150, 150));
}

QTEST_MAIN(tst_DragRepaint)
#include "tst_dragrepaint.moc"
