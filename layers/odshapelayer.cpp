#include "odshapelayer.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odshape.h"
#include "odshapetoolmanage.h"
#include "settleditemcache.h"
#include "shapeoperator.h"

ODShapeLayer::ODShapeLayer(ImageCtrlScene* scene)
    : m_scene(scene)
    , m_shapeOperator(new ShapeOperator(scene))
    , m_enableMove(true)
    , m_enableSelect(true)
    , m_walkedScale(1.0f)
    , m_allMayHaveChanged(false)
{
}

ODShapeLayer::~ODShapeLayer() = default;

void ODShapeLayer::updateScene()
{
    m_scene->update(QRectF());
}

void ODShapeLayer::addShape(ODShape* shape)
{
    shape->setIsOverlay(m_scene->isOverlay());
    // Every shape layer is a ShaperLayer; this base exists for its list-keeping.
    shape->setShapeLayer(static_cast<ShaperLayer*>(this));
    m_shapes.append(shape);
    m_shapeById.insert(shape->GetShapeID(), shape);
    m_members.insert(shape);
    shapeScaleChanged(shape);
    shapeMayHaveChanged(shape);
}

// The selected list may still hold a shape that was removed (removal leaves
// it alone), so only a member of the layer is marked, and nothing is read
// through a pointer before that test.
void ODShapeLayer::shapeMayHaveChanged(ODShape* shape) const
{
    if (!contains(shape))
        return;
    shape->hitReachMayHaveChanged();
    if (!m_allMayHaveChanged)
        m_mayHaveChanged.insert(shape);
}

ODShape* ODShapeLayer::shapeById(long id) const
{
    ODShape* shape = m_shapeById.value(id, nullptr);
    shapeMayHaveChanged(shape);
    return shape;
}

const QVector<ODShape*>& ODShapeLayer::selectedShapes() const
{
    for (ODShape* shape : m_selectedShapes)
        shapeMayHaveChanged(shape);
    return m_selectedShapes;
}

const QVector<ODShape*>& ODShapeLayer::shapes() const
{
    for (ODShape* shape : m_shapes) {
        if (shape)
            shape->hitReachMayHaveChanged();
    }
    m_allMayHaveChanged = true;
    m_mayHaveChanged.clear();
    return m_shapes;
}

void ODShapeLayer::shapeScaleChanged(ODShape* shape)
{
    if (shape->GetScale() != m_walkedScale)
        m_scaleChanged.insert(shape);
}

void ODShapeLayer::addSelectedShape(ODShape* shape)
{
    shapeMayHaveChanged(shape);
    m_selectedShapes.append(shape);
    ODShapeToolManage::GetODShapeToolManage()->setCurSelectedShape(shape);
}

void ODShapeLayer::moveSelectedShape(QPointF delta) const
{
    for (ODShape* shape : m_selectedShapes) {
        if (shape)
            shape->MoveShape(delta);
    }
}

bool ODShapeLayer::removeShape(ODShape* shape)
{
    if (!shape)
        return false;
    const int index = m_shapes.indexOf(shape);
    if (index < 0)
        return false;
    m_shapes.remove(index);
    m_members.remove(shape);
    if (m_shapeById.value(shape->GetShapeID()) == shape)
        m_shapeById.remove(shape->GetShapeID());
    m_scaleChanged.remove(shape);
    m_mayHaveChanged.remove(shape);
    delete shape;
    return true;
}

// Ids are never reused, so the shape of the index is the first one with it.
bool ODShapeLayer::removeShape(long id)
{
    ODShape* shape = shapeById(id);
    if (!shape)
        return false;
    removeShape(shape);
    return true;
}

bool ODShapeLayer::removeSelectedShape(ODShape* shape)
{
    if (!shape)
        return false;
    const int index = m_selectedShapes.indexOf(shape);
    if (index < 0)
        return false;
    m_selectedShapes.remove(index);
    return true;
}

bool ODShapeLayer::removeSelectedShape(long id)
{
    for (ODShape* shape : m_selectedShapes) {
        if (shape && shape->GetShapeID() == id) {
            removeSelectedShape(shape);
            return true;
        }
    }
    return false;
}

// The whole scene is marked for repaint first: a view then no longer
// gathers the area of each item that leaves, which grows a region by one
// rectangle an item and costs time of the square of the count. The window
// deletes the shapes' items together once the shapes are gone, which is
// where a tool that hears of a deleted shape may still read them.
void ODShapeLayer::clearShape()
{
    updateScene();
    QVector<QGraphicsItem*> items;
    for (ODShape* shape : qAsConst(m_shapes)) {
        if (!shape)
            continue;
        items += shape->graphicsItems();
        shape->disownItems();
    }
    for (ODShape* shape : m_shapes)
        delete shape;
    m_shapes.clear();
    m_shapeById.clear();
    m_members.clear();
    m_scaleChanged.clear();
    m_mayHaveChanged.clear();
    m_allMayHaveChanged = false;
    m_scene->settledItems()->disposeItems(items);
}

void ODShapeLayer::clearSelectedShape()
{
    for (ODShape* shape : m_selectedShapes) {
        if (!shape)
            continue;
        m_scene->settledItems()->shapeChanged(shape);
        shape->HideHandle();
    }
    m_selectedShapes.clear();
}

void ODShapeLayer::clearCurrentShape()
{
    ODShapeToolManage::GetODShapeToolManage()->clearSelectedShape();
}

// A new scale reaches every shape; at the scale of the last walk only the
// shapes whose scale was set since can differ, so only they are visited.
void ODShapeLayer::Update()
{
    const float scale = float(m_scene->getScale());
    if (scale != m_walkedScale) {
        m_walkedScale = scale;
        for (ODShape* shape : m_shapes) {
            if (shape)
                shape->SetScale(scale);
        }
    } else {
        QSet<ODShape*> changed;
        changed.swap(m_scaleChanged);
        for (ODShape* shape : qAsConst(changed))
            shape->SetScale(scale);
    }
    m_scaleChanged.clear();
    updateScene();
}

// The window's picture of settled shapes hears of a change from the shape
// itself (shownStateChanged); showing a shape that did not change leaves its
// items as they are, so the visit tells the picture nothing.
void ODShapeLayer::showOrHide(ODShape* shape)
{
    shape->hitReachMayHaveChanged();
    if (shape->isVisible())
        shape->ShowShape();
    else
        shape->HideShape();
}

// Each shape's showing touches its own items only, so the order of the
// visits does not change what is shown.
void ODShapeLayer::ShowShapePath()
{
    if (m_allMayHaveChanged) {
        for (ODShape* shape : m_shapes) {
            if (shape)
                showOrHide(shape);
        }
    } else {
        QSet<ODShape*> visit;
        visit.swap(m_mayHaveChanged);
        for (ODShape* shape : ODShapeToolManage::GetODShapeToolManage()->heldShapes()) {
            if (contains(shape))
                visit.insert(shape);
        }
        for (ODShape* shape : qAsConst(visit)) {
            if (shape)
                showOrHide(shape);
        }
    }
    m_mayHaveChanged.clear();
    m_allMayHaveChanged = false;
    updateScene();
}

void ODShapeLayer::ShowHandlePath()
{
    for (ODShape* shape : m_selectedShapes) {
        if (!shape)
            continue;
        m_scene->settledItems()->shapeChanged(shape);
        if (shape->isVisible())
            shape->ShowHandle();
        else
            shape->HideHandle();
    }
    updateScene();
}

void ODShapeLayer::Show(bool withHandles)
{
    ShowShapePath();
    if (withHandles)
        ShowHandlePath();
    updateScene();
}

// A shape whose reach misses the point cannot be hit, so skipping it keeps
// the walk's answer; the shapes the tools keep may have changed unseen.
bool ODShapeLayer::mayHit(ODShape* shape, const QPointF& point) const
{
    if (!m_skipByReach)
        return true;
    const QRectF reach = shape->cachedHitReach().adjusted(-kReachMargin, -kReachMargin, kReachMargin, kReachMargin);
    return reach.contains(point);
}

void ODShapeLayer::heldShapesMayHaveMoved() const
{
    for (ODShape* shape : ODShapeToolManage::GetODShapeToolManage()->heldShapes())
        shape->hitReachMayHaveChanged();
}

ODShape* ODShapeLayer::GetShapeAtPoint(QPointF const& point)
{
    heldShapesMayHaveMoved();
    for (ODShape* shape : m_shapes) {
        if (shape && mayHit(shape, point) && (shape->HitTest(point, true) > 0 || shape->HitTest(point, false) > 0)) {
            shapeMayHaveChanged(shape);
            return shape;
        }
    }
    return nullptr;
}

QList<ODShape*> ODShapeLayer::GetShapeListAtPoint(QPointF const& point)
{
    heldShapesMayHaveMoved();
    QList<ODShape*> bodies;
    for (ODShape* shape : m_shapes) {
        if (!shape || !shape->isVisible() || !mayHit(shape, point))
            continue;
        // A handle wins over every body found so far.
        if (shape->HitTest(point, true) > 0) {
            shapeMayHaveChanged(shape);
            return QList<ODShape*>{shape};
        }
        if (shape->HitTest(point, false) > 0 && !bodies.contains(shape))
            bodies.append(shape);
    }
    for (ODShape* shape : qAsConst(bodies))
        shapeMayHaveChanged(shape);
    return bodies;
}

void ODShapeLayer::enableMoveShape(bool enable)
{
    m_enableMove = enable;
}

bool ODShapeLayer::isEnableMoveShape()
{
    return m_enableMove;
}

void ODShapeLayer::enableSelectShape(bool enable)
{
    m_enableSelect = enable;
    clearCurrentShape();
    clearSelectedShape();
}

bool ODShapeLayer::isEnableSelectShape()
{
    return m_enableSelect;
}
