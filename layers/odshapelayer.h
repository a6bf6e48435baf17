#pragma once

#include "kesimagewnd_export.h"

#include <QHash>
#include <QList>
#include <QPointF>
#include <QSet>
#include <QVector>

class ImageCtrlScene;
class ODShape;
class ShapeOperator;

// The list-keeper under every editable shape: it owns the shapes of one layer,
// remembers which of them show their handles, asks them to repaint, and
// answers which shapes lie at a point. Selection and hit order is the order of
// insertion, oldest first, whatever the z order; a handle beats a body.
// Update() brings every shape to the scene's scale; the layer remembers the
// scale of its last walk and which shapes have another one since, so that a
// walk over an unchanged layer touches only those.
//
// ShowShapePath() shows every shape as it is now. Showing a shape that has not
// changed since it was last shown leaves its items as they are, so the walk
// visits only the shapes that may have changed: those that said so
// (ODShape::shownStateChanged, called by every change of a shape), those
// added since, those whose pointer the layer has handed out or taken in (by
// id, at a point, selected, or the whole list) and the ones the tools keep
// between events.
class KESIMAGEWND_TESTS_EXPORT ODShapeLayer
{
public:
    // Creates the layer's shape operator, which the layer never frees.
    explicit ODShapeLayer(ImageCtrlScene* scene);
    // Destroys the two lists only: shapes are freed by clearShape().
    virtual ~ODShapeLayer();

    ODShapeLayer(const ODShapeLayer&) = delete;
    ODShapeLayer& operator=(const ODShapeLayer&) = delete;

    // Takes ownership; marks the shape as an overlay when the scene is in
    // overlay mode. No repaint.
    virtual void addShape(ODShape* shape);
    // Appends to the selected list (duplicates allowed) and makes the shape the
    // select tool's current shape.
    virtual void addSelectedShape(ODShape* shape);
    virtual void moveSelectedShape(QPointF delta) const;
    // Deletes the shape; false for null or a shape not in this layer. The
    // selected list is not touched.
    virtual bool removeShape(ODShape* shape);
    virtual bool removeShape(long id);
    virtual void clearShape();
    virtual void clearSelectedShape();
    // Every shape to the scene's scale, then the whole scene repainted.
    virtual void Update();
    virtual void Show(bool withHandles);
    virtual void ShowHandlePath();
    virtual void ShowShapePath();
    // Both walk the shapes in order, skipping those whose hit reach misses
    // the point.
    virtual ODShape* GetShapeAtPoint(QPointF const& point);
    virtual QList<ODShape*> GetShapeListAtPoint(QPointF const& point);

    bool removeSelectedShape(ODShape* shape);
    bool removeSelectedShape(long id);
    // Empties the select tool's current shape; the layer's lists stay.
    void clearCurrentShape();
    void enableMoveShape(bool enable);
    bool isEnableMoveShape();
    // Also drops the current selection, whichever value is given.
    void enableSelectShape(bool enable);
    bool isEnableSelectShape();

    // The shape of that id in this layer, null for none; ids are never reused.
    // The caller may change it, so the next walk shows it afresh.
    ODShape* shapeById(long id) const;
    // A shape of this layer, or the layer itself on handing a shape out, says
    // that the shape may show otherwise now.
    void shapeMayHaveChanged(ODShape* shape) const;
    // A shape of this layer tells its layer that its scale was set.
    void shapeScaleChanged(ODShape* shape);
    ShapeOperator* shapeOperator() const { return m_shapeOperator; }
    // Off, the hit walks test every shape: the form the skipping must equal.
    void setHitReachUsed(bool used) { m_skipByReach = used; }

    // Every shape; the caller may change any, so the next walk shows all.
    const QVector<ODShape*>& shapes() const;
    int shapeCount() const { return m_shapes.size(); }
    // Whether shape is one of this layer's, without reading through it: the
    // selected list may hold removed shapes.
    bool contains(const ODShape* shape) const { return shape && m_members.contains(shape); }
    // The selected shapes; the caller may change them, as shapes() says.
    const QVector<ODShape*>& selectedShapes() const;
    ImageCtrlScene* scene() const { return m_scene; }

protected:
    void updateScene();

    ImageCtrlScene* m_scene;
    ShapeOperator* m_shapeOperator;
    QVector<ODShape*> m_shapes;
    QVector<ODShape*> m_selectedShapes;
    bool m_enableMove;
    bool m_enableSelect;

private:
    // The members of m_shapes by id and as a set, kept with the vector.
    QHash<long, ODShape*> m_shapeById;
    QSet<const ODShape*> m_members;
    // The scale that the last Update() gave every shape, and the shapes whose
    // scale may differ from it since: every other shape holds it.
    float m_walkedScale;
    QSet<ODShape*> m_scaleChanged;
    // The shapes that ShowShapePath must visit, or all of them: see the class
    // comment. Handing out a pointer is a const act, hence mutable.
    mutable QSet<ODShape*> m_mayHaveChanged;
    mutable bool m_allMayHaveChanged;
    void showOrHide(ODShape* shape);
    bool mayHit(ODShape* shape, const QPointF& point) const;
    void heldShapesMayHaveMoved() const;
    // Scene units around a reach that still count: a rectangle of no width
    // contains no point.
    static constexpr qreal kReachMargin = 1.0;
    bool m_skipByReach = true;
};
