#include "ForeLayer.h"

#include "ForeGroundItem.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odshape.h"
#include "staticshape.h"

#include "VorOverlayPath.h"

#include <QPainter>
#include <QPen>

ForeLayer::ForeLayer(ImageCtrlScene* scene)
    : m_scene(scene)
    , m_view(scene->views().isEmpty() ? nullptr : static_cast<ImageCtrlView*>(scene->views().at(0)))
{
}

// The records go with the layer; entries that clearShape() emptied are null.
ForeLayer::~ForeLayer()
{
    qDeleteAll(m_items);
    m_items.clear();
}

void ForeLayer::show()
{
    m_scene->invalidate(QRectF(), QGraphicsScene::AllLayers);
}

long ForeLayer::insertIfValid(ForeGroundItem* item)
{
    if (!item->isValid()) {
        delete item;
        return -1;
    }
    const long id = ODShape::NextID();
    m_items.insert(id, item);
    return id;
}

long ForeLayer::DrawROI(VorROI& roi)
{
    ForeGroundItem* item = new ForeGroundItem(roi, m_view);
    item->SetPenColor(m_scene->getPenColor());
    item->SetBrushColor(m_scene->getBrushColor());
    // Stored only: the cross was built with half size 5 and stays so.
    item->setCrossSize(m_scene->getCrossSize());
    item->setFont(m_scene->getFont());
    const long id = insertIfValid(item);
    show();
    return id;
}

long ForeLayer::DrawOverlay(VorOverlay& overlay)
{
    const long id = insertIfValid(new ForeGroundItem(overlay, m_view));
    show();
    return id;
}

long ForeLayer::DrawOverlayPath(VorOverlayPath& path)
{
    long last = -1;
    for (int i = 0; i < path.Length(); ++i) {
        const long id = insertIfValid(new ForeGroundItem(path[i], m_view));
        if (id != -1)
            last = id;
    }
    show();
    return last;
}

long ForeLayer::ShapeVisible(long long id, bool visible)
{
    long result = -1;
    if (ForeGroundItem* item = m_items.value(id, nullptr)) {
        item->SetVisible(visible);
        result = long(id);
    }
    show();
    return result;
}

long ForeLayer::removeShape(long id)
{
    long result = -1;
    ForeGroundItem* item = m_items.value(id, nullptr);
    m_items.remove(id);
    if (item) {
        delete item;
        result = id;
    }
    show();
    return result;
}

void ForeLayer::removeShapeList(QList<long> idList)
{
    for (long id : qAsConst(idList)) {
        ForeGroundItem* item = m_items.value(id, nullptr);
        m_items.remove(id);
        delete item;
    }
    show();
}

void ForeLayer::clearShape()
{
    // The ids stay listed, as hosts see them after a clear; their records are
    // gone, and a null entry is what painting and removal skip.
    for (auto it = m_items.begin(); it != m_items.end(); ++it) {
        delete it.value();
        it.value() = nullptr;
    }
}

QList<long> ForeLayer::getShapeIDS()
{
    QList<long> ids;
    for (long long id : m_items.keys())
        ids.append(long(id));
    return ids;
}

void ForeLayer::paint(QPainter* painter)
{
    // A copy: what painting walks cannot change under it.
    const QMap<long long, ForeGroundItem*> items = m_items;
    for (ForeGroundItem* item : items) {
        if (!item || !item->GetVisible())
            continue;
        QPen pen = painter->pen();
        pen.setWidth(0);
        pen.setColor(item->GetPenColor());
        // Only the rotated rectangle's own code turns; an overlay keeps its
        // overlay code here, so its shapes are drawn as their upright paths.
        if (item->type() == StaticShape::TurnedRectCode) {
            StaticShape::paintTurned(painter, pen, item->GetPainterPath(), item->rotation(),
                                     StaticShape::TurnedRect);
            continue;
        }
        painter->setPen(pen);
        painter->drawPath(item->GetPainterPath());
    }
}
