#pragma once

#include "odpolygon.h"
#include "odshapeholdingtool.h"

#include <QPointF>

class QTimer;

// The tool of DM_POLYGON: corners by click, the end by a double click. A press
// only notes the point and starts the click timer; its tick adds the corner, so
// that a double click that comes before the tick can cancel the click. The last
// point of the polygon is a rubber band that follows the mouse, which is why a
// new polygon starts with its first point twice. A double click on a polygon
// of more than two points drops the rubber band, ends the mode and reports the
// polygon; on a smaller one it adds a corner and drawing goes on. Mode and
// polygon outlive the release: the polygon is thrown away by ResetObject, which
// the window calls before a polygon mode begins.
class KESIMAGEWND_TESTS_EXPORT ODPolygonTool : public ODShapeHoldingTool<ODPolygon>
{
    Q_OBJECT

public:
    ODPolygonTool();
    ~ODPolygonTool() override;

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    // Does nothing: the mode stays until the double click.
    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    void mouseDoubleClickEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event) override;

    // Throws away an unfinished polygon; does nothing when there is none.
    void ResetObject();

    // The window of the last press goes: its polygon, scene and event with it.
    void sceneDestroyed(QGraphicsScene* scene) override;

    bool polygonAdded() const { return m_polygonAdded; }
    QTimer* clickTimer() const { return m_clickTimer; }
    ImageCtrlScene* lastScene() const { return m_scene; }
    QPointF clickPoint() const { return m_clickPoint; }

private slots:
    void singleMouseClicked();
    void deleteObj();

private:
    bool m_polygonAdded;
    QTimer* m_clickTimer;
    ImageCtrlScene* m_scene;
    QGraphicsSceneMouseEvent* m_event;
    QPointF m_clickPoint;
};
