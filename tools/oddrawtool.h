#pragma once

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odselecttool.h"
#include "odshape.h"
#include "odshapeholdingtool.h"
#include "odshapetoolmanage.h"

#include <QGraphicsSceneMouseEvent>

// The tool for shapes made by one drag. A press builds a shape of class T at
// the point with the scene's settings, puts it in the active layer, selects it
// and hands the select tool a drag of the handle under the point; the release
// ends the mode and throws away a shape that did not move, or one that T's own
// rule (T::isTooSmallToKeep) finds too small. The host has heard the shape's
// id before that test.
template <class T>
class ODDrawTool : public ODShapeHoldingTool<T>
{
    using ODShapeHoldingTool<T>::m_shape;
    using ODShapeTool::m_curPoint;
    using ODShapeTool::m_pressPoint;
    using ODShapeTool::selectTool;

public:
    ODDrawTool() = default;
    ~ODDrawTool() override = default;

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mousePressEvent(scene, event, nullptr);
        // A shape left by an unfinished drag goes at once. It leaves its layer's
        // lists and the select tool first, so that nothing keeps its address.
        dropUnfinishedShape();
        m_shape = new T(scene, event->scenePos());
        this->dressShape(m_shape);
        ODShapeTool::enterActiveLayer(scene, m_shape);
        selectTool()->mousePressEvent(scene, event, m_shape);
    }

    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mouseMoveEvent(scene, event, nullptr);
        if (!m_shape)
            return;
        // The base move runs a second time, as drawing has it; it only notes
        // the position, so the drag sees the same point either way.
        ODShapeTool::mouseMoveEvent(scene, event, nullptr);
        selectTool()->mouseMoveEvent(scene, event, nullptr);
    }

    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mouseReleaseEvent(scene, event, nullptr);
        selectTool()->mouseReleaseEvent(scene, event, nullptr);
        // Judged on the stored parameters, so the view's scale plays no part.
        if (m_shape && (m_curPoint == m_pressPoint || m_shape->isTooSmallToKeep()))
            discard(scene);
        m_shape = nullptr;
    }

private:
    void dropUnfinishedShape()
    {
        if (!m_shape)
            return;
        if (selectTool()->currentShape() == m_shape)
            selectTool()->clearCurrentShape();
        if (ODShapeLayer* layer = m_shape->shaperLayer()) {
            while (layer->removeSelectedShape(m_shape)) {
            }
            layer->removeShape(m_shape);
        } else {
            delete m_shape;
        }
        m_shape = nullptr;
    }

    void discard(ImageCtrlScene* scene)
    {
        ShaperLayer* layer = scene->GetActiveLayer();
        layer->clearCurrentShape();
        layer->clearSelectedShape();
        layer->removeShape(m_shape);
    }
};
