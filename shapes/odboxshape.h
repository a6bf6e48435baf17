#pragma once

#include "odshape.h"

#include <QPointF>
#include <QRectF>

// The geometry that the axis-parallel rectangle and the image shape share: the
// current geometry is a rectangle, the reference holds left, top, right,
// bottom, and each of the eight handles (corners and edge middles, clockwise
// from the top left) owns the sides it moves, so a drag that crosses the
// opposite side keeps that side anchored in the reference; AdjustParameter
// normalises the reference at the release. A subclass adds its items, how it
// shows itself, where exactly its handles sit and its hit tests. All
// coordinates are scene coordinates.
class KESIMAGEWND_TESTS_EXPORT ODBoxShape : public ODShape
{
public:
    ~ODBoxShape() override = default;

    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void UpdateCurData() override;
    void AdjustParameter() override;
    // Corner handles the diagonal cursors, edge middles the vertical and
    // horizontal ones.
    void setHandleCursor(QPointF point) override;

    QRectF currentRect() const { return m_rect; }

protected:
    // Reference slots.
    enum Slot { Left = 0, Top = 1, Right = 2, Bottom = 3, SlotCount = 4 };

    ODBoxShape(QGraphicsScene* scene, DrawMode mode);

    // A zero-size rectangle at point (scene coordinates) with its handles
    // made, as a drawing tool starts the shape at the press point; the
    // reference stays empty until the first UpdateOrgData.
    void startAt(QPointF point);
    // Replaces the reference: left, top, right, bottom.
    void setSides(double left, double top, double right, double bottom);
    // The four reference slots into the non-null outputs; false, writing
    // nothing, unless the reference holds exactly four values.
    bool readSides(double* left, double* top, double* right, double* bottom) const;

    QRectF m_rect;
};
