#pragma once

#include "odboxshape.h"

#include <QPainterPath>
#include <QRectF>

class QGraphicsPathItem;
class QGraphicsRectItem;
class Rect1HandleItem;

// The rectangle with sides parallel to the image axes. Reference data: left,
// top, right, bottom. Each of its eight handles owns the sides it moves, so a
// drag that crosses the opposite side keeps that side anchored in the
// reference while the shown rectangle is normalised; AdjustParameter
// normalises the reference at the release. Optional search lines across it are
// display only.
class KESIMAGEWND_TESTS_EXPORT ODRect1 : public ODBoxShape
{
public:
    explicit ODRect1(QGraphicsScene* scene);
    // A zero-size rectangle at the press point, as a drawing tool makes it.
    ODRect1(QGraphicsScene* scene, QPointF point);
    ~ODRect1() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    void ShowHandle() override;
    void HideHandle() override;
    int HitTest(QPointF point, bool handles) override;

    // Replaces the reference: left, top, right, bottom. Shown at ShowShape.
    void SetRect(double x1, double y1, double x2, double y2);
    void SetSearchLine(SEARCHLINEDIRECTION direction, int count);
    void SetSearchLineFlag(bool flag);
    bool HaveSearchLine() const;
    // The reference as the operator left it, then direction and count; false,
    // writing nothing, unless the reference holds four values.
    bool GetParam(double* x1, double* y1, double* x2, double* y2, int* direction, int* count) const;
    void setZValue(long z);
    // The drawing tool's rule at the release: a rectangle drawn in DM_RECT1
    // whose whole-pixel width or height is below 2 is thrown away.
    bool isTooSmallToKeep() const;

    QPainterPath GenSearchline();
    QPainterPath GenSearchlineItem(QLine line);

    QGraphicsRectItem* rectItem() const { return m_rectItem; }
    QGraphicsPathItem* searchLineItem() const { return m_searchLineItem; }
    Rect1HandleItem* rect1HandleItem() const;

private:
    void createItems();

    SEARCHLINEDIRECTION m_searchDirection;
    int m_searchCount;
    bool m_searchLineFlag;
    QGraphicsRectItem* m_rectItem;
    QGraphicsPathItem* m_searchLineItem;
};
