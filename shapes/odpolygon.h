#pragma once

#include "odpointlistshape.h"

#include <QObject>
#include <QPointF>
#include <QVector>

class QGraphicsPolygonItem;

// A closed polygon with a handle on every vertex, built click by click: the
// polygon tool adds each corner with AddPoint and drags the last one along as
// a rubber band with ChangeLastPoint. A handle drag moves its vertex. The
// whole bounding box counts as body, also outside a concave outline. It is a
// QObject only so that the polygon tool hears of its destruction (destroyed).
//
// moc takes the first base class for the meta-object's parent, so it is shown
// QObject first; the compiler sees the shape part first, as the object is laid
// out.
#ifdef Q_MOC_RUN
class KESIMAGEWND_TESTS_EXPORT ODPolygon : public QObject, public ODPointListShape
#else
class KESIMAGEWND_TESTS_EXPORT ODPolygon : public ODPointListShape, public QObject
#endif
{
    Q_OBJECT

public:
    explicit ODPolygon(QGraphicsScene* scene);
    ~ODPolygon() override;

    void UpdateHandles() override;
    void ShowShape() override;
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;
    void MoveHandleTo(int number, const QPointF& pos) override;
    void MoveShape(const QPointF& delta) override;
    void UpdateOrgData(int number) override;
    void setHandleCursor(QPointF point) override;

    // The vertices anew (scene coordinates), appended to the reference, which
    // keeps whatever it held before.
    void SetPolygonPoints(QVector<QPointF> points);
    // The vertices from pairs x0, y0, x1, y1, ..., which also become the
    // reference; a lone last value is dropped.
    void SetPolygonPoints(QVector<double>& values);
    void setZValue(long z);

    // Removes vertex index, rebuilds the reference from the remaining
    // vertices and shows the handles again. An index outside the list changes
    // nothing.
    void removePoint(int index);
    // The number of vertices, both.
    int length() const;
    int pointSize() const;
    // Moves the last vertex to point (scene coordinates) and stores every
    // vertex in the reference; nothing without vertices.
    void ChangeLastPoint(QPointF point);

    QGraphicsPolygonItem* polygonItem() const { return m_polygonItem; }

private:
    QGraphicsPolygonItem* m_polygonItem;
};
