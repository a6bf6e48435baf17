#pragma once

#include "odshapewatcher.h"

#include <QColor>
#include <QObject>
#include <QPointF>

class ImageCtrlScene;
class ODSelectTool;
class ODShape;
class QGraphicsSceneMouseEvent;

// A mouse tool of the scene. The tools are single objects of the process,
// shared by all windows, so each call names the scene it works on. The base
// notes the press and the latest position (scene coordinates) and the scene's
// drawing settings at the press, and ends the draw mode at the release. The
// shape argument is null from the dispatch; a drawing tool passes its new
// shape when it hands the drag to the select tool.
//
// A tool outlives every window, so it watches the shapes: a tool that keeps a
// shape between events forgets it when the shape or its scene is destroyed.
class KESIMAGEWND_TESTS_EXPORT ODShapeTool : public QObject, public ODShapeWatcher
{
    Q_OBJECT

public:
    ODShapeTool();
    ~ODShapeTool() override;

    // Notes the press (m_curPoint, then m_pressPoint, scene coordinates, as
    // the event gives them) and the scene's pen, brush, line width and scale.
    // An override that draws runs the base first.
    virtual void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    // Puts the scene back into DM_SELECT: each draw mode lasts for one shape.
    // An override runs the base before anything that reports to the host.
    virtual void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    // Notes the position in m_curPoint and nothing else.
    virtual void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    // Does nothing; a tool that builds on clicks overrides it.
    virtual void mouseDoubleClickEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);

    // The shape the tool keeps from one event to the next and changes on the
    // next one, or null. The base keeps none; a tool that keeps a shape
    // returns it, so that its layer shows it afresh on every walk.
    virtual ODShape* heldShape() const { return nullptr; }

    // The base keeps no shape; an override drops its own pointers.
    void shapeDestroyed(ODShape* shape) override;
    void sceneDestroyed(QGraphicsScene* scene) override;

    QPointF pressPoint() const { return m_pressPoint; }
    QPointF curPoint() const { return m_curPoint; }

protected:
    // The select tool of the process, to which the drawing tools hand drags.
    static ODSelectTool* selectTool();
    // Gives a new shape the settings noted at the last press: scale, offset,
    // pen colour, line width and brush colour.
    void dressShape(ODShape* shape) const;
    // Puts a new shape into the scene's active layer and its selected list,
    // which also makes it the select tool's current shape.
    static void enterActiveLayer(ImageCtrlScene* scene, ODShape* shape);

    QPointF m_pressPoint;
    QPointF m_curPoint;
    float m_offsetX;
    float m_offsetY;
    double m_scale;
    QColor m_penColor;
    float m_lineWidth;
    QColor m_brushColor;
};
