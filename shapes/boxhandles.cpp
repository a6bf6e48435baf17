#include "boxhandles.h"

namespace BoxHandles {

namespace {

constexpr int kRoundness = 100;

} // namespace

QVector<QPointF> boxPoints(const QRectF& box, const QPointF& centre)
{
    return {box.topLeft(),
            QPointF(centre.x(), box.top()),
            box.topRight(),
            QPointF(box.right(), centre.y()),
            box.bottomRight(),
            QPointF(centre.x(), box.bottom()),
            box.bottomLeft(),
            QPointF(box.left(), centre.y())};
}

QVector<QPointF> turnedBoxPoints(const QRectF& box, const QPointF& centre, double rotationX, float handleScale)
{
    QVector<QPointF> points = boxPoints(box, centre);
    points.append(QPointF(rotationX, box.top() - kRotationLift * handleScale));
    return points;
}

QPointF stemPoint(const QRectF& box, double stemX, float lift, float handleScale)
{
    return QPointF(stemX, box.top() - lift * handleScale);
}

QPainterPath turnedExtent(const QMap<int, QRectF>& handles, RotationShape rotation, const QPointF& stemFromScene,
                          const QPointF& stemToScene)
{
    QPainterPath path;
    // Every handle but the last, the rotation handle.
    for (int key = 0; key <= handles.size() - 2; ++key)
        path.addRect(handles.value(key));
    if (rotation == RotationShape::RoundRect)
        path.addRoundRect(handles.value(Rotation), kRoundness);
    else
        path.addEllipse(handles.value(Rotation));
    path.moveTo(stemFromScene);
    path.lineTo(stemToScene);
    return path;
}

} // namespace BoxHandles
