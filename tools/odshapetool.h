#pragma once

#include "kesimagewnd_export.h"

#include <QColor>
#include <QObject>
#include <QPointF>

class ImageCtrlScene;
class ODShape;
class QGraphicsSceneMouseEvent;

// A mouse tool of the scene. The tools are single objects of the process,
// shared by all windows, so each call names the scene it works on. The base
// notes the press and the latest position (scene coordinates) and the scene's
// drawing settings at the press, and ends the draw mode at the release. The
// shape argument is null from the dispatch; a drawing tool passes its new
// shape when it hands the drag to the select tool.
class KESIMAGEWND_TESTS_EXPORT ODShapeTool : public QObject
{
    Q_OBJECT

public:
    ODShapeTool();
    ~ODShapeTool() override;

    virtual void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    virtual void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    virtual void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    virtual void mouseDoubleClickEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);

    QPointF pressPoint() const { return m_pressPoint; }
    QPointF curPoint() const { return m_curPoint; }

protected:
    QPointF m_pressPoint;
    QPointF m_curPoint;
    float m_offsetX;
    float m_offsetY;
    double m_scale;
    QColor m_penColor;
    float m_lineWidth;
    QColor m_brushColor;
};
