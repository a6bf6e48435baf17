// The shape layer answers which shapes lie at a point by walking its shapes
// in order, and skips every shape whose hit reach misses the point. The
// answer must be the walk's over every shape, for every kind, zoom, selection
// and visibility: compared here with the skipping off on random shapes and
// random points.

#include "testkit.h"

#include "kitshapedata.h"

#include <QRandomGenerator>

using Kit::Params;

namespace {

struct Kind
{
    int code;
    Params values;
};

// Every kind a host can show, with parameters that a random offset and scale
// spread over the picture.
const QVector<Kind>& kinds()
{
    static const QVector<Kind> all = {
        {VorROI::ROI_RECT1, {0, 0, 40, 30}},
        {VorROI::ROI_RECT2, {0, 0, 30, 14, 25}},
        {VorROI::ROI_CIRCLE, {0, 0, 18}},
        {VorROI::ROI_ELLIPSE, {0, 0, 25, 10, 30}},
        {VorROI::ROI_TORUS, {0, 0, 8, 20, 30, 250}},
        {VorROI::ROI_ARC, {0, 0, 16, 10, 200}},
        {VorROI::ROI_LINE, {-20, 10, 25, -15}},
        {VorROI::ROI_POINT, {0, 0}},
        {VorROI::ROI_POLYGON, {-15, -10, 20, -12, 25, 15, -10, 18}},
        {VorROI::ROI_IRREGULAR, {-20, 0, -5, -15, 5, 10, 20, -12, 25, 5}},
    };
    return all;
}

// The kind's parameters moved to centre; angles and radii stay.
Params placed(const Kind& kind, const QPointF& centre)
{
    Params values = kind.values;
    switch (kind.code) {
    case VorROI::ROI_RECT1:
    case VorROI::ROI_LINE:
    case VorROI::ROI_POLYGON:
    case VorROI::ROI_IRREGULAR:
        for (int i = 0; i + 1 < values.size(); i += 2) {
            values[i] += centre.x();
            values[i + 1] += centre.y();
        }
        break;
    default:
        values[0] += centre.x();
        values[1] += centre.y();
        break;
    }
    return values;
}

QStringList idsOf(const QList<ODShape*>& shapes)
{
    QStringList ids;
    for (const ODShape* shape : shapes)
        ids << QString::number(shape->GetShapeID());
    return ids;
}

} // namespace

class tst_HitReach : public QObject
{
    Q_OBJECT

private slots:
    void hitWalkSkippingByReachGivesTheFullWalksAnswer_data();
    void hitWalkSkippingByReachGivesTheFullWalksAnswer();
};

void tst_HitReach::hitWalkSkippingByReachGivesTheFullWalksAnswer_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("zoomed out") << 0.5 << 11u;
    QTest::newRow("one to one") << 1.0 << 23u;
    QTest::newRow("zoomed in") << 3.0 << 37u;
    QTest::newRow("far in") << 8.0 << 41u;
}

void tst_HitReach::hitWalkSkippingByReachGivesTheFullWalksAnswer()
{
    QFETCH(double, zoom);
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    EmbeddedWindow w;
    QVERIFY(w.exposed);
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(qRgb(90, 90, 90));
    QCOMPARE(w.showPicture(picture, 1.0), 0L);

    QVector<long> ids;
    for (int i = 0; i < 120; ++i) {
        const Kind& kind = kinds().at(int(random.bounded(kinds().size())));
        const QPointF centre(30 + random.bounded(340.0), 30 + random.bounded(240.0));
        w.wnd->setPen(255, 0, 0, ulong(random.bounded(1, 5)));
        VorROI roi = Kit::makeROI(kind.code, placed(kind, centre));
        const long id = w.wnd->displayROI(roi);
        QVERIFY(id >= 0);
        ids.append(id);
    }
    for (int i = 0; i < 10; ++i)
        QCOMPARE(w.wnd->visibleShape(ids.at(int(random.bounded(ids.size()))), false), 0L);
    w.showAt(zoom, QPointF(200, 150));
    w.window()->selectShape(ids.at(int(random.bounded(ids.size()))));
    Kit::flushPaints();

    ShaperLayer* layer = w.scene()->GetActiveLayer();
    int hits = 0;
    for (int i = 0; i < 1200; ++i) {
        const QPointF point(random.bounded(400.0), random.bounded(300.0));
        layer->setHitReachUsed(false);
        const QStringList walked = idsOf(layer->GetShapeListAtPoint(point));
        const ODShape* walkedFirst = layer->GetShapeAtPoint(point);
        layer->setHitReachUsed(true);
        const QStringList skipped = idsOf(layer->GetShapeListAtPoint(point));
        const ODShape* skippedFirst = layer->GetShapeAtPoint(point);
        QCOMPARE(skipped, walked);
        QCOMPARE(skippedFirst, walkedFirst);
        hits += walked.isEmpty() ? 0 : 1;
    }
    // The points fell on shapes often enough for the comparison to mean something.
    QVERIFY2(hits > 120, qPrintable(QString("only %1 points hit a shape").arg(hits)));
}

QTEST_MAIN(tst_HitReach)
#include "tst_hitreach.moc"
