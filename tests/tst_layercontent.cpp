// What a shape layer holds beside its shapes, reached by id: its texts and
// its one region, and how the calls by id treat each kind of content.

#include "testkit.h"
#include "kitregions.h"
#include "kitshapedata.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "oditemregion.h"
#include "odtext.h"

#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorRegion.h"

#include <QtTest>

using namespace Kit;

namespace {

// A region overlay of a block of pixels.
VorOverlay regionOverlay(const QRect& block)
{
    VorOverlay ov;
    ov.GenRegion(VorRegion(blockMask(QSize(64, 48), block)));
    return ov;
}

VorOverlay textOverlay(const char* text)
{
    VorOverlay ov;
    ov.GenText(VorPoint(30, 40), text, VorFont("Sans", 14));
    return ov;
}

} // namespace

class tst_LayerContent : public QObject
{
    Q_OBJECT

private slots:
    void shapeIdsLeaveTheRegionOut();
    void textIdIsMovableButNotSelectable();
    void hidingTheRegionByIdHidesItAndAnswersMinusOne();
    void secondRegionOverlayReplacesTheFirst();
    void removingAnotherIdLeavesTheRegion();
    void removingTheRegionsIdDeletesIt();
    void replacedRegionsIdRemovesNothing();
};

void tst_LayerContent::shapeIdsLeaveTheRegionOut()
{
    LayerScene s;
    VorROI circle = makeROI(VorROI::ROI_CIRCLE, {100, 80, 40});
    const long shapeId = s.active()->DrawROI(circle, false);
    VorOverlay region = regionOverlay(QRect(4, 4, 10, 10));
    const long regionId = s.active()->DrawOverlay(region, false);
    VorOverlay text = textOverlay("label");
    const long textId = s.active()->DrawOverlay(text, false);
    QVERIFY(shapeId >= 0);
    QVERIFY(regionId >= 0);
    QVERIFY(textId >= 0);
    QVERIFY(s.active()->region());
    QCOMPARE(s.active()->region()->GetID(), regionId);

    QCOMPARE(s.active()->getShapeIDS(), (QList<long>{shapeId, textId}));
}

void tst_LayerContent::textIdIsMovableButNotSelectable()
{
    LayerScene s;
    VorOverlay ov = textOverlay("label");
    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(id >= 0);
    QCOMPARE(s.active()->texts().size(), 1);

    QCOMPARE(s.active()->setShapeSelectable(id, true), -1L);
    QVERIFY(!s.active()->isShapeSelectable(id));
    QCOMPARE(s.active()->setShapeMovable(id, false), 0L);
    QVERIFY(!s.active()->isShapeMovable(id));
    QVERIFY(!s.active()->texts().first()->IsMovable());
    QCOMPARE(s.active()->setShapeMovable(id, true), 0L);
    QVERIFY(s.active()->isShapeMovable(id));
}

void tst_LayerContent::hidingTheRegionByIdHidesItAndAnswersMinusOne()
{
    LayerScene s;
    VorOverlay ov = regionOverlay(QRect(4, 4, 10, 10));
    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(id >= 0);
    ODItemRegion* region = s.active()->region();
    QVERIFY(region);
    QVERIFY(region->isVisible());

    QCOMPARE(s.active()->ShapeVisible(id, false), -1L);
    QCOMPARE(s.active()->region(), region);
    QVERIFY(!region->isVisible());
    QVERIFY(!region->item()->isVisible());
    QCOMPARE(s.active()->ShapeVisible(id, true), -1L);
    QVERIFY(region->isVisible());
}

void tst_LayerContent::secondRegionOverlayReplacesTheFirst()
{
    LayerScene s;
    VorOverlay first = regionOverlay(QRect(4, 4, 10, 10));
    VorOverlay second = regionOverlay(QRect(20, 8, 6, 6));
    const long firstId = s.active()->DrawOverlay(first, false);
    const int itemsWithOne = s.scene.items().size();
    const long secondId = s.active()->DrawOverlay(second, false);
    QVERIFY(firstId >= 0);
    QVERIFY(secondId >= 0);
    QVERIFY(firstId != secondId);

    QVERIFY(s.active()->region());
    QCOMPARE(s.active()->region()->GetID(), secondId);
    // The first region's item left the scene with it.
    QCOMPARE(s.scene.items().size(), itemsWithOne);
    const QImage shown = s.active()->region()->regionImage();
    QVERIFY(qAlpha(shown.pixel(22, 10)) > 0);
    QCOMPARE(qAlpha(shown.pixel(6, 6)), 0);
    QVERIFY(s.active()->shapes().isEmpty());
}

// The first region's id went with it: removing by that id leaves the second.
void tst_LayerContent::replacedRegionsIdRemovesNothing()
{
    LayerScene s;
    VorOverlay first = regionOverlay(QRect(4, 4, 10, 10));
    VorOverlay second = regionOverlay(QRect(20, 8, 6, 6));
    const long firstId = s.active()->DrawOverlay(first, false);
    const long secondId = s.active()->DrawOverlay(second, false);
    QVERIFY(firstId >= 0 && secondId > firstId);
    s.active()->removeRegion(firstId);
    QVERIFY(s.active()->region());
    QCOMPARE(s.active()->region()->GetID(), secondId);
    QCOMPARE(s.active()->ShapeVisible(firstId, false), -1L);
    QVERIFY(s.active()->region()->isVisible());
}

void tst_LayerContent::removingAnotherIdLeavesTheRegion()
{
    LayerScene s;
    VorOverlay ov = regionOverlay(QRect(4, 4, 10, 10));
    const long id = s.active()->DrawOverlay(ov, false);
    QVERIFY(id >= 0);
    ODItemRegion* region = s.active()->region();

    s.active()->removeRegion(id + 1);
    s.active()->removeRegion(-1);
    QCOMPARE(s.active()->region(), region);
    QCOMPARE(region->GetID(), id);
    QVERIFY(region->isVisible());
}

void tst_LayerContent::removingTheRegionsIdDeletesIt()
{
    LayerScene s;
    VorOverlay ov = regionOverlay(QRect(4, 4, 10, 10));
    const int itemsBefore = s.scene.items().size();
    const long id = s.active()->DrawOverlay(ov, false);
    QCOMPARE(s.scene.items().size(), itemsBefore + 1);

    s.active()->removeRegion(id);
    QVERIFY(!s.active()->region());
    QCOMPARE(s.scene.items().size(), itemsBefore);
}

QTEST_MAIN(tst_LayerContent)
#include "tst_layercontent.moc"
