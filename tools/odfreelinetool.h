#pragma once

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odselecttool.h"
#include "odshapeholdingtool.h"

#include <QGraphicsSceneMouseEvent>

// The common tool of the free lines, T being ODAnyLine or ODAnyCloseLine. The
// press starts a line at the point (or goes on with the one held), every move
// with the button down adds a point, unthinned, and the release ends the mode
// and lets the select tool report the line. There is no size test: a line of
// one point stays. The two tools differ only in how the line shows while it
// is drawn.
template <class T>
class ODFreeLineTool : public ODShapeHoldingTool<T>
{
protected:
    using ODShapeHoldingTool<T>::m_shape;

    // Shows the line after a move has added a point; the layer has been
    // updated. An override shows the line as the operator should see it
    // while drawing.
    virtual void showWhileDrawing(ImageCtrlScene* scene) = 0;

public:
    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mousePressEvent(scene, event, nullptr);
        if (!m_shape) {
            m_shape = new T(scene);
            this->dressShape(m_shape);
            ODShapeTool::enterActiveLayer(scene, m_shape);
            m_shape->AddPoint(event->scenePos());
        }
        ShaperLayer* layer = scene->GetActiveLayer();
        layer->Update();
        layer->Show(true);
        ODShapeTool::selectTool()->mousePressEvent(scene, event, m_shape);
    }

    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mouseMoveEvent(scene, event, nullptr);
        if (!m_shape)
            return;
        m_shape->AddPoint(event->scenePos());
        scene->GetActiveLayer()->Update();
        showWhileDrawing(scene);
    }

    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mouseReleaseEvent(scene, event, nullptr);
        ODShapeTool::selectTool()->mouseReleaseEvent(scene, event, nullptr);
        m_shape = nullptr;
        scene->SetDrawMode(DM_SELECT);
        ShaperLayer* layer = scene->GetActiveLayer();
        layer->Update();
        layer->Show(true);
    }
};
