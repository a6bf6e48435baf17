#pragma once

#include "odshape.h"
#include "odshapetool.h"

#include <QGraphicsScene>

// A tool that keeps the shape it is making, m_shape, from one event to the
// next (null when idle). The tool outlives every window, so it lets go of the
// shape when the shape or its scene is destroyed; an override of either call
// runs this one and then drops its own pointers into the window.
template <class T>
class ODShapeHoldingTool : public ODShapeTool
{
public:
    void shapeDestroyed(ODShape* shape) override
    {
        if (m_shape && static_cast<ODShape*>(m_shape) == shape)
            m_shape = nullptr;
    }

    void sceneDestroyed(QGraphicsScene* scene) override
    {
        if (m_shape && m_shape->getSence() == scene)
            m_shape = nullptr;
    }

    T* shape() const { return m_shape; }
    ODShape* heldShape() const override { return m_shape; }

protected:
    T* m_shape = nullptr;
};
