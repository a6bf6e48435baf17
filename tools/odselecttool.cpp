#include "odselecttool.h"

#include "ShapeLayer.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odshape.h"

#include <QCursor>
#include <QGraphicsSceneMouseEvent>
#include <QIcon>
#include <QMenu>

ODSelectTool::ODSelectTool()
    : m_selectMode(SelectNone)
    , m_handleIndex(0)
    , m_currentShape(nullptr)
    , m_shapeMenu(nullptr)
    , m_dragState(DragNothing)
{
}

// The shape menu is kept for the life of the process.
ODSelectTool::~ODSelectTool() = default;

void ODSelectTool::clearCurrentShape()
{
    m_currentShape = nullptr;
    m_selectMode = SelectNone;
}

void ODSelectTool::forgetCurrentShape()
{
    clearCurrentShape();
    m_handleIndex = 0;
    m_dragState = DragNothing;
}

template <class Test>
void ODSelectTool::dropMenuEntries(Test isGoing)
{
    if (!m_shapeMenu)
        return;
    for (QAction* action : m_shapeMenu->actions()) {
        if (isGoing(reinterpret_cast<ODShape*>(quintptr(action->data().toLongLong()))))
            delete action;
    }
}

void ODSelectTool::shapeDestroyed(ODShape* shape)
{
    if (shape == m_currentShape)
        forgetCurrentShape();
    dropMenuEntries([shape](ODShape* entry) { return entry == shape; });
}

void ODSelectTool::sceneDestroyed(QGraphicsScene* scene)
{
    if (m_currentShape && m_currentShape->getSence() == scene)
        forgetCurrentShape();
    dropMenuEntries([scene](ODShape* entry) { return entry && entry->getSence() == scene; });
}

void ODSelectTool::setCurrentShape(ODShape* shape)
{
    m_currentShape = shape;
}

void ODSelectTool::clearAllSelections(ImageCtrlScene* scene)
{
    for (ShaperLayer* layer : scene->getShaperLayperList())
        layer->clearSelectedShape();
    scene->update(QRectF());
}

int ODSelectTool::selectShape(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape)
{
    if (shape) {
        m_currentShape = shape;
        shape->shaperLayer()->addSelectedShape(shape);
    } else if (!m_currentShape) {
        // A shape that is already current keeps the selection without a new
        // hit test; otherwise select anew from what lies under the point.
        clearAllSelections(scene);
        QList<ODShape*> found;
        for (ShaperLayer* layer : scene->getShaperLayperList())
            found += layer->GetShapeListAtPoint(event->scenePos());
        // The active layer's flag governs all layers.
        if (!scene->GetActiveLayer()->isEnableSelectShape())
            found.clear();
        // Only leading entries that refuse selection are dropped.
        while (!found.isEmpty() && !found.first()->isSelectble())
            found.removeFirst();
        if ((scene->GetDrawMode() == DM_SELECT && found.size() > 1) || found.size() == 1) {
            m_currentShape = found.first();
            m_currentShape->shaperLayer()->addSelectedShape(m_currentShape);
        } else {
            m_currentShape = nullptr;
            m_selectMode = SelectNone;
            clearAllSelections(scene);
            return 0;
        }
    }
    if (!m_currentShape)
        return 0;
    ShaperLayer* layer = m_currentShape->shaperLayer();
    layer->Update();
    layer->Show(m_selectMode != SelectNone);
    return 1;
}

void ODSelectTool::setSelectShapeMode(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape)
{
    if (!m_currentShape) {
        m_dragState = DragNothing;
        return;
    }
    if (!m_currentShape->shaperLayer()->isEnableMoveShape() || !m_currentShape->isMovable())
        m_dragState = ClickOnly;
    // An immovable shape gets no handle test in select mode.
    if (m_dragState == ClickOnly && scene->GetDrawMode() == DM_SELECT && !shape)
        return;
    m_handleIndex = m_currentShape->HitTest(event->scenePos(), true);
    if (m_handleIndex > 0) {
        m_selectMode = SelectDragHandle;
        m_dragState = shape ? DragNewShape : PressedHandle;
        return;
    }
    m_handleIndex = m_currentShape->HitTest(event->scenePos(), false);
    if (m_handleIndex > 0) {
        m_selectMode = SelectMoveBody;
        m_dragState = PressedBody;
    }
}

void ODSelectTool::mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape)
{
    m_dragState = DragNothing;
    selectShape(scene, event, shape);
    // The tool is shared by all windows: the current shape may be another's.
    if (m_currentShape && m_currentShape->getSence() == scene) {
        setSelectShapeMode(scene, event, shape);
        ODShapeTool::mousePressEvent(scene, event, shape);
        return;
    }
    m_selectMode = SelectNone;
    clearAllSelections(scene);
}

void ODSelectTool::mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape)
{
    if (!m_currentShape || m_dragState == DragNothing)
        return;
    if (scene->GetActiveLayer()->isEnableMoveShape()) {
        if (m_selectMode == SelectMoveBody) {
            m_dragState = MovedBody;
            // The delta runs from the last move, not from the press.
            m_currentShape->MoveShape(event->scenePos() - m_curPoint);
        } else if (m_selectMode == SelectDragHandle) {
            if (m_dragState != DragNewShape)
                m_dragState = ResizedHandle;
            m_currentShape->MoveHandleTo(m_handleIndex, event->scenePos());
        }
        ShaperLayer* layer = m_currentShape->shaperLayer();
        layer->Update();
        layer->Show(m_selectMode != SelectNone);
    } else {
        m_currentShape->HideHandle();
    }
    scene->update(QRectF());
    ODShapeTool::mouseMoveEvent(scene, event, shape);
}

void ODSelectTool::mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event, ODShape* shape)
{
    if (m_currentShape && m_selectMode == SelectDragHandle)
        m_currentShape->AdjustParameter();
    if (!m_currentShape)
        m_dragState = DragNothing;
    // A press that moved nothing takes effect here: select anew at the release.
    if (m_dragState != DragNewShape && m_dragState != MovedBody && m_dragState != ResizedHandle
        && m_dragState != ClickOnly) {
        m_currentShape = nullptr;
        selectShape(scene, event, shape);
        setSelectShapeMode(scene, event, shape);
    }
    m_selectMode = SelectNone;
    ImageCtrlView* view = scene->getCtrlView();
    if (view)
        view->viewport()->setCursor(Qt::ArrowCursor);
    ODShapeTool::mouseReleaseEvent(scene, event, shape);

    EventThread* relay = scene->GetEventThread();
    if (!m_currentShape || m_dragState == DragNothing) {
        if (event->button() == Qt::LeftButton)
            relay->sendMosueLClick(float(event->scenePos().x()), float(event->scenePos().y()));
    } else if (m_dragState == DragNewShape || m_dragState == PressedBody || m_dragState == PressedHandle) {
        if (view)
            view->setLimitMousePos(false);
        relay->sendShapeClicked(m_currentShape->GetShapeID());
    } else if (m_dragState == ClickOnly) {
        relay->sendShapeClicked(m_currentShape->GetShapeID());
        m_currentShape = nullptr;
    } else if (m_dragState == MovedBody) {
        relay->sendShapeMove(m_currentShape->GetShapeID());
    } else if (m_dragState == ResizedHandle) {
        if (m_currentShape->GetDrawMode() == DM_POINT)
            relay->sendShapeMove(m_currentShape->GetShapeID());
        else
            relay->sendShapeResize(m_currentShape->GetShapeID());
    }
    m_dragState = DragNothing;
}

void ODSelectTool::createShapeMenu(QList<ODShape*> shapeList)
{
    if (!m_shapeMenu)
        m_shapeMenu = new QMenu;
    m_shapeMenu->clear();
    int counter = 1;
    for (ODShape* shape : shapeList) {
        QString icon;
        switch (shape->GetDrawMode()) {
        case DM_POINT: icon = ":/res/point.bmp"; break;
        case DM_LINE: icon = ":/res/line.bmp"; break;
        case DM_RECT1: icon = ":/res/rectangle.bmp"; break;
        case DM_RECT2: icon = ":/res/rectangle2.bmp"; break;
        case DM_ELLIPSE: icon = ":/res/Oval.bmp"; break;
        case DM_CIRCLE: icon = ":/res/Circle.bmp"; break;
        case DM_POLYGON: icon = ":/res/polygon.bmp"; break;
        case DM_ANYLINE: icon = ":/res/anyshape.bmp"; break;
        case DM_ANNULAR: icon = ":/res/Bicyclic.bmp"; break;
        default: break;
        }
        QAction* action = m_shapeMenu->addAction(QIcon(icon), "shape_" + QString::number(counter++), this,
                                                 SLOT(selectedShape()));
        action->setData(qlonglong(reinterpret_cast<quintptr>(shape)));
    }
    m_shapeMenu->exec(QCursor::pos());
}

void ODSelectTool::selectedShape()
{
    auto* action = qobject_cast<QAction*>(sender());
    if (!action)
        return;
    m_currentShape = reinterpret_cast<ODShape*>(quintptr(action->data().toLongLong()));
}
