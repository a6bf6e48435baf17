// The window paints shapes nobody is editing from a cached picture and keeps
// their items out of Qt's walk. What the operator sees must stay what Qt
// gives when it paints every item itself, whatever the host does to the
// shapes; a change of selection must not render the picture again; and an
// item the window does not know must still be seen.

#include "testkit.h"

#include "kitshapedata.h"

#include <QGraphicsRectItem>

using Kit::differingPixels;
using Kit::onScreen;

namespace {

// Rectangles in a grid, each overlapping its neighbours, with a translucent
// brush so that the order of painting shows.
QVector<long> showGrid(EmbeddedWindow& w, int columns, int rows)
{
    QVector<long> ids;
    w.wnd->setBrush(0, 0, 255, 70);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            w.wnd->setPen(uchar(40 * column), uchar(255 - 30 * row), 0, ulong(1 + (row + column) % 3));
            const double x = 40 + column * 30;
            const double y = 40 + row * 25;
            VorROI roi = Kit::makeROI(VorROI::ROI_RECT1, {x, y, x + 45, y + 38});
            ids.append(w.wnd->displayROI(roi));
        }
    }
    return ids;
}

// A window whose cache takes over however few items it has, showing the
// gradient picture.
bool openPicture(EmbeddedWindow& w)
{
    Kit::cacheEveryItem(w.view());
    return w.showPicture(Kit::gradientPicture(), 1.0) == 0;
}

// The same with the grid on the picture.
QVector<long> openGrid(EmbeddedWindow& w)
{
    if (!openPicture(w))
        return {};
    return showGrid(w, 4, 3);
}

} // namespace

class tst_SettledItemCache : public QObject
{
    Q_OBJECT

private slots:
    void settledShapesLeaveQtsWalkAndSelectedOnesJoinIt();
    void selectingAnotherShapeKeepsTheWholePicture();
    void hostChangesToSettledShapesAreSeen_data();
    void hostChangesToSettledShapesAreSeen();
    void anItemTheWindowDoesNotKnowIsPaintedInItsPlace();
    void aWindowWithFewItemsLeavesEveryItemToQt();
    void clearingALargeLayerDeletesItsItemsWhileTheEventLoopIsIdle();
    void aLayerFilledAgainDeletesTheWaitingItemsFirst();
    void aWindowClosedWhileItemsWaitTakesThemAlong();
    void theBackgroundIsLeftToThePictureOnlyWhereItCoversTheViewport_data();
    void theBackgroundIsLeftToThePictureOnlyWhereItCoversTheViewport();
    void aViewportThatDoesNotFillItselfShowsWhatQtPaints();
};

void tst_SettledItemCache::settledShapesLeaveQtsWalkAndSelectedOnesJoinIt()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    const QVector<long> ids = openGrid(w);
    QCOMPARE(ids.size(), 12);
    Kit::flushPaints();
    const SettledItemCache* cache = Kit::settledItemsOf(w.view());
    // A rectangle owns its frame, its search line and its handle item.
    QCOMPARE(cache->itemCount(), 12 * 3);
    QCOMPARE(cache->liveItemCount(), 0);
    w.window()->selectShape(ids.at(5));
    Kit::flushPaints();
    QCOMPARE(cache->liveItemCount(), 3);
    QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
}

void tst_SettledItemCache::selectingAnotherShapeKeepsTheWholePicture()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    const QVector<long> ids = openGrid(w);
    QCOMPARE(ids.size(), 12);
    w.showAt(1.5, QPointF(110, 80));
    Kit::flushPaints();
    const SettledItemCache* cache = Kit::settledItemsOf(w.view());
    QVERIFY(cache->picturesRendered() > 0);
    for (int index : {2, 7, 0, 11}) {
        Kit::flushPaints();
        const int rendered = cache->picturesRendered();
        w.window()->selectShape(ids.at(index));
        Kit::flushPaints();
        QCOMPARE(cache->picturesRendered(), rendered);
        QCOMPARE(cache->liveItemCount(), 3);
        QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
    }
}

void tst_SettledItemCache::hostChangesToSettledShapesAreSeen_data()
{
    QTest::addColumn<QString>("change");
    for (const char* change : {"hidden", "removed", "one more shown", "pen changed by id", "layer cleared"})
        QTest::newRow(change) << QString(change);
}

void tst_SettledItemCache::hostChangesToSettledShapesAreSeen()
{
    QFETCH(QString, change);
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    const QVector<long> ids = openGrid(w);
    QCOMPARE(ids.size(), 12);
    w.showAt(1.25, QPointF(110, 80));
    const QImage before = onScreen(w.view());
    const long id = ids.at(6);
    if (change == "hidden") {
        QCOMPARE(w.wnd->visibleShape(id, false), 0L);
    } else if (change == "removed") {
        QCOMPARE(w.wnd->removeShape(id), 0L);
    } else if (change == "one more shown") {
        w.wnd->setPen(255, 255, 255, 3);
        VorROI roi = Kit::makeROI(VorROI::ROI_CIRCLE, {100, 80, 30});
        QVERIFY(w.wnd->displayROI(roi) >= 0);
    } else if (change == "pen changed by id") {
        ODShape* shape = w.scene()->GetActiveLayer()->shapeById(id);
        QVERIFY(shape);
        shape->SetPenColor(Qt::white);
        w.scene()->GetActiveLayer()->Show(false);
    } else {
        QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_SHAPE), 0L);
    }
    const QImage after = onScreen(w.view());
    QVERIFY2(differingPixels(after, before) > 0, "the change was not seen");
    QCOMPARE(differingPixels(after, Kit::grabViewportPaintingEveryItem(w.view())), 0);
}

void tst_SettledItemCache::anItemTheWindowDoesNotKnowIsPaintedInItsPlace()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    QCOMPARE(openGrid(w).size(), 12);
    Kit::flushPaints();
    const SettledItemCache* cache = Kit::settledItemsOf(w.view());
    QCOMPARE(cache->liveItemCount(), 0);

    auto* stranger = new QGraphicsRectItem(60, 50, 40, 30);
    stranger->setBrush(QColor(255, 255, 0));
    stranger->setPen(Qt::NoPen);
    stranger->setZValue(1.5);
    w.scene()->addItem(stranger);
    const QImage shown = onScreen(w.view());
    QCOMPARE(cache->liveItemCount(), cache->itemCount());
    QCOMPARE(differingPixels(shown, Kit::grabViewportPaintingEveryItem(w.view())), 0);
    // Above the first rectangle (z 1) and under the second (z 2).
    const QPoint inside = w.view()->mapFromScene(QPointF(62, 52));
    QCOMPARE(shown.pixel(inside), qRgb(255, 255, 0));

    w.scene()->removeItem(stranger);
    delete stranger;
    Kit::flushPaints();
    QCOMPARE(cache->liveItemCount(), 0);
    QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
}

void tst_SettledItemCache::aWindowWithFewItemsLeavesEveryItemToQt()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    QCOMPARE(w.showPicture(Kit::gradientPicture(), 1.0), 0L);
    showGrid(w, 4, 3);
    Kit::flushPaints();
    const SettledItemCache* cache = Kit::settledItemsOf(w.view());
    QCOMPARE(cache->itemCount(), 36);
    QVERIFY(cache->itemCount() < SettledItemCache::kDefaultMinimumItemCount);
    QCOMPARE(cache->liveItemCount(), cache->itemCount());
    QCOMPARE(cache->picturesRendered(), 0);
    // Past the minimum the same window settles its shapes.
    Kit::settledItemsOf(w.view())->setMinimumItemCount(36);
    Kit::flushPaints();
    QCOMPARE(cache->liveItemCount(), 0);
    QVERIFY(cache->picturesRendered() > 0);
    QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
}

namespace {

// A grid of rectangles with more items than a layer's shapes may change one
// by one: three items a rectangle.
constexpr int kLargeColumns = 50;
constexpr int kLargeRows = 30;
constexpr int kLargeItems = kLargeColumns * kLargeRows * 3;

bool showLargeGrid(EmbeddedWindow& w)
{
    return showGrid(w, kLargeColumns, kLargeRows).size() == kLargeColumns * kLargeRows;
}

} // namespace

void tst_SettledItemCache::clearingALargeLayerDeletesItsItemsWhileTheEventLoopIsIdle()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    QVERIFY(openPicture(w));
    Kit::flushPaints();
    const QImage bare = onScreen(w.view());
    const int sceneItemsBefore = w.scene()->items().size();
    SettledItemCache* cache = Kit::settledItemsOf(w.view());
    const int chunksBefore = cache->chunkCount();

    const QVector<long> ids = showGrid(w, kLargeColumns, kLargeRows);
    QCOMPARE(ids.size(), kLargeColumns * kLargeRows);
    w.window()->selectShape(ids.at(7));
    Kit::flushPaints();
    QCOMPARE(cache->itemCount(), kLargeItems);
    QCOMPARE(cache->liveItemCount(), 3);

    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_SHAPE), 0L);
    // The selected shape's items go at once; the settled ones wait.
    QCOMPARE(cache->itemCount(), 0);
    QCOMPARE(cache->liveItemCount(), 0);
    QCOMPARE(cache->pendingDisposals(), kLargeItems - 3);
    QCOMPARE(w.scene()->items().size(), sceneItemsBefore + cache->chunkCount() - chunksBefore + kLargeItems - 3);
    QCOMPARE(w.scene()->GetActiveLayer()->shapeCount(), 0);

    // Nothing of them shows, and the window still knows every item.
    QCOMPARE(differingPixels(onScreen(w.view()), bare), 0);
    QVERIFY(cache->isActive());
    QTRY_COMPARE(cache->pendingDisposals(), 0);
    QCOMPARE(w.scene()->items().size(), sceneItemsBefore + cache->chunkCount() - chunksBefore);
    QCOMPARE(differingPixels(onScreen(w.view()), bare), 0);
}

void tst_SettledItemCache::aLayerFilledAgainDeletesTheWaitingItemsFirst()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    QVERIFY(openPicture(w));
    QVERIFY(showLargeGrid(w));
    Kit::flushPaints();
    SettledItemCache* cache = Kit::settledItemsOf(w.view());

    const int sceneItemsAfterFill = w.scene()->items().size();
    QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_SHAPE), 0L);
    QCOMPARE(cache->pendingDisposals(), kLargeItems);
    // Before any event: the first new item takes the waiting ones along.
    const QVector<long> ids = showGrid(w, 4, 3);
    QCOMPARE(ids.size(), 12);
    QCOMPARE(cache->pendingDisposals(), 0);
    QCOMPARE(w.scene()->items().size(), sceneItemsAfterFill - kLargeItems + 12 * 3);
    w.window()->selectShape(ids.at(4));
    QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
    QVERIFY(cache->isActive());
    QCOMPARE(cache->itemCount(), 12 * 3);
    QCOMPARE(cache->liveItemCount(), 3);
}

void tst_SettledItemCache::aWindowClosedWhileItemsWaitTakesThemAlong()
{
    {
        EmbeddedWindow w;
        QVERIFY(w.exposed);
        QVERIFY(openPicture(w));
        QVERIFY(showLargeGrid(w));
        Kit::flushPaints();
        QCOMPARE(w.wnd->clearLayer(KESImageWnd::LAYER_SHAPE), 0L);
        QCOMPARE(Kit::settledItemsOf(w.view())->pendingDisposals(), kLargeItems);
    }
    // The timer went with the window; a new window works as ever.
    Kit::flushPaints();
    EmbeddedWindow again;
    QVERIFY(again.exposed);
    QCOMPARE(openGrid(again).size(), 12);
    Kit::flushPaints();
    QCOMPARE(Kit::screenAgainstEveryItemPainted(again.view()), 0);
}

void tst_SettledItemCache::theBackgroundIsLeftToThePictureOnlyWhereItCoversTheViewport_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<bool>("covered");
    // The grid spans scene x 40 to 175 and y 40 to 128.
    QTest::newRow("whole grid in view") << 1.0 << false;
    QTest::newRow("view inside the grid") << 8.0 << true;
}

void tst_SettledItemCache::theBackgroundIsLeftToThePictureOnlyWhereItCoversTheViewport()
{
    QFETCH(double, zoom);
    QFETCH(bool, covered);
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    QCOMPARE(openGrid(w).size(), 12);
    w.showAt(zoom, QPointF(110, 80));
    Kit::flushPaints();
    QCOMPARE(w.view()->backgroundLeftToItemCache(), covered);
    QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
    // With the cache off the view paints the background itself.
    SettledItemCache* cache = Kit::settledItemsOf(w.view());
    cache->setEnabled(false);
    Kit::flushPaints();
    QVERIFY(!w.view()->backgroundLeftToItemCache());
    cache->setEnabled(true);
}

void tst_SettledItemCache::aViewportThatDoesNotFillItselfShowsWhatQtPaints()
{
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    w.view()->viewport()->setAutoFillBackground(false);
    const QVector<long> ids = openGrid(w);
    QCOMPARE(ids.size(), 12);
    w.showAt(1.5, QPointF(110, 80));
    Kit::flushPaints();
    QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
    for (int index : {3, 8}) {
        w.window()->selectShape(ids.at(index));
        QCOMPARE(Kit::screenAgainstEveryItemPainted(w.view()), 0);
    }
}

QTEST_MAIN(tst_SettledItemCache)
#include "tst_settleditemcache.moc"
