#include "odshapelayer.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odshape.h"
#include "odshapetoolmanage.h"

ODShapeLayer::ODShapeLayer(ImageCtrlScene* scene)
    : m_scene(scene)
    , m_enableMove(true)
    , m_enableSelect(true)
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
}

void ODShapeLayer::addSelectedShape(ODShape* shape)
{
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
    delete shape;
    return true;
}

bool ODShapeLayer::removeShape(long id)
{
    for (ODShape* shape : m_shapes) {
        if (shape && shape->GetShapeID() == id) {
            removeShape(shape);
            return true;
        }
    }
    return false;
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

void ODShapeLayer::clearShape()
{
    for (ODShape* shape : m_shapes)
        delete shape;
    m_shapes.clear();
}

void ODShapeLayer::clearSelectedShape()
{
    for (ODShape* shape : m_selectedShapes) {
        if (shape)
            shape->HideHandle();
    }
    m_selectedShapes.clear();
}

void ODShapeLayer::clearCurrentShape()
{
    ODShapeToolManage::GetODShapeToolManage()->clearSelectedShape();
}

void ODShapeLayer::Update()
{
    const float scale = float(m_scene->getScale());
    for (ODShape* shape : m_shapes) {
        if (shape)
            shape->SetScale(scale);
    }
    updateScene();
}

void ODShapeLayer::ShowShapePath()
{
    for (ODShape* shape : m_shapes) {
        if (!shape)
            continue;
        if (shape->isVisible())
            shape->ShowShape();
        else
            shape->HideShape();
    }
    updateScene();
}

void ODShapeLayer::ShowHandlePath()
{
    for (ODShape* shape : m_selectedShapes) {
        if (!shape)
            continue;
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

ODShape* ODShapeLayer::GetShapeAtPoint(QPointF const& point)
{
    for (ODShape* shape : m_shapes) {
        if (shape && (shape->HitTest(point, true) > 0 || shape->HitTest(point, false) > 0))
            return shape;
    }
    return nullptr;
}

QList<ODShape*> ODShapeLayer::GetShapeListAtPoint(QPointF const& point)
{
    QList<ODShape*> bodies;
    for (ODShape* shape : m_shapes) {
        if (!shape || !shape->isVisible())
            continue;
        // A handle wins over every body found so far.
        if (shape->HitTest(point, true) > 0)
            return QList<ODShape*>{shape};
        if (shape->HitTest(point, false) > 0 && !bodies.contains(shape))
            bodies.append(shape);
    }
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
