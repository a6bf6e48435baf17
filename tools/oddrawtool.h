#pragma once

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "numericguards.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odselecttool.h"
#include "odshapetool.h"
#include "odshapetoolmanage.h"

#include <QGraphicsSceneMouseEvent>
#include <QtGlobal>

// The tool for shapes made by one drag. A press builds a shape of class T at
// the point with the scene's settings, puts it in the active layer, selects it
// and hands the select tool a drag of the handle under the point; the release
// ends the mode and throws away a shape that did not move, or a rectangle with
// a side below 2. The host has heard the shape's id before that test.
template <class T>
class ODDrawTool : public ODShapeTool
{
public:
    ODDrawTool()
        : m_shape(nullptr)
    {
    }
    ~ODDrawTool() override = default;

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mousePressEvent(scene, event, nullptr);
        // A shape left by an unfinished drag goes at once. It leaves its layer's
        // lists and the select tool first, so that nothing keeps its address.
        dropUnfinishedShape();
        m_shape = new T(scene, event->scenePos());
        m_shape->SetScale(float(m_scale));
        m_shape->SetOffset(m_offsetX, m_offsetY);
        m_shape->SetPenColor(m_penColor);
        m_shape->SetLineWidth(m_lineWidth);
        m_shape->SetBrushColor(m_brushColor);
        scene->GetActiveLayer()->addShape(m_shape);
        scene->GetActiveLayer()->addSelectedShape(m_shape);
        selectTool()->mousePressEvent(scene, event, m_shape);
    }

    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mouseMoveEvent(scene, event, nullptr);
        if (!m_shape)
            return;
        ODShapeTool::mouseMoveEvent(scene, event, nullptr);
        selectTool()->mouseMoveEvent(scene, event, nullptr);
    }

    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape*) override
    {
        ODShapeTool::mouseReleaseEvent(scene, event, nullptr);
        selectTool()->mouseReleaseEvent(scene, event, nullptr);
        if (m_shape && (m_curPoint == m_pressPoint || isTooSmall(m_shape)))
            discard(scene);
        m_shape = nullptr;
    }

    T* shape() const { return m_shape; }

private:
    static ODSelectTool* selectTool()
    {
        return static_cast<ODSelectTool*>(ODShapeToolManage::GetODShapeToolManage()->GetShapeTool(DM_SELECT));
    }

    // Judged on the stored parameters, so the view's scale plays no part.
    static bool isTooSmall(ODShape* shape)
    {
        if (shape->GetDrawMode() == DM_RECT1) {
            double p0 = -1.0, p1 = -1.0, p2 = -1.0, p3 = -1.0;
            int direction = -1, count = -1;
            if (!static_cast<ODRect1*>(shape)->GetParam(&p0, &p1, &p2, &p3, &direction, &count))
                return false;
            const int dx = TruncateToInt(p0 - p2);
            const int dy = TruncateToInt(p3 - p1);
            return qAbs(dx) < 2 || qAbs(dy) < 2;
        }
        if (shape->GetDrawMode() == DM_RECT2) {
            double x = -1.0, y = -1.0, l1 = -1.0, l2 = -1.0, angle = -1.0;
            int direction = -1, count = -1;
            if (!static_cast<ODRect2*>(shape)->GetParam(&x, &y, &l1, &l2, &angle, &direction, &count))
                return false;
            return qAbs(l1) < 2.0 || qAbs(l2) < 2.0;
        }
        return false;
    }

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

    T* m_shape;
};
