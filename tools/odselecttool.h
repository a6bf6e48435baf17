#pragma once

#include "odshapetool.h"

#include <QList>

class QMenu;

// The tool of DM_SELECT and the engine of all dragging. A press picks the shape
// under the mouse (the current shape stays current without a new hit test) and
// decides between moving its body and dragging a handle; moves carry the drag
// out; the release tells the host what happened: shapeClicked after a click or
// a newly drawn shape, shapeMoved after a body drag or a point's handle drag,
// shapeResized after any other handle drag, and a left click on empty ground.
// The drawing tools hand it their new shape, so drawing is dragging a handle.
class KESIMAGEWND_TESTS_EXPORT ODSelectTool : public ODShapeTool
{
    Q_OBJECT

public:
    // What a move does.
    enum SelectMode { SelectNone = 0, SelectMoveBody = 1, SelectDragHandle = 2 };
    // What the current press has become, read at the release.
    enum DragState {
        DragNothing = 0,
        DragNewShape = 1,
        PressedBody = 2,
        PressedHandle = 3,
        MovedBody = 4,
        ResizedHandle = 5,
        ClickOnly = 6
    };

    ODSelectTool();
    ~ODSelectTool() override;

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;
    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape) override;

    // The current shape, or the scene it lives in, going away ends the
    // selection and any drag of it; the menu loses the shape's entry.
    void shapeDestroyed(ODShape* shape) override;
    void sceneDestroyed(QGraphicsScene* scene) override;

    void clearCurrentShape();
    void setCurrentShape(ODShape* shape);
    // 1 when a shape is current afterwards, else 0.
    int selectShape(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);
    void setSelectShapeMode(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape);

    ODShape* currentShape() const { return m_currentShape; }
    ODShape* heldShape() const override { return m_currentShape; }
    int selectMode() const { return m_selectMode; }
    int handleIndex() const { return m_handleIndex; }
    int dragState() const { return m_dragState; }
    QMenu* shapeMenu() const { return m_shapeMenu; }

private slots:
    void createShapeMenu(QList<ODShape*> shapeList);
    void selectedShape();

private:
    void clearAllSelections(ImageCtrlScene* scene);
    void forgetCurrentShape();
    // Takes the menu entries of the shapes that pass out of the menu.
    template <class Test>
    void dropMenuEntries(Test isGoing);

    int m_selectMode;
    int m_handleIndex;
    ODShape* m_currentShape;
    QMenu* m_shapeMenu;
    int m_dragState;
};
