#pragma once

#include "odboxshape.h"

#include <QPointF>

class QGraphicsPixmapItem;
class QImage;
class VorImage;

// A picture placed on the scene as a shape: a VorImage, converted once when it
// is set, shown scaled to fill the rectangle, which is the axis-parallel box
// geometry (reference left, top, right, bottom; eight handles). Every show
// scales the converted picture afresh, so resizing never degrades it. The
// shape has no handle item: its handles serve the hit test and are never
// painted, and pen, brush and line width have no visible effect. All
// coordinates are scene coordinates.
class KESIMAGEWND_TESTS_EXPORT ODImage : public ODBoxShape
{
public:
    explicit ODImage(QGraphicsScene* scene);
    // A zero-size rectangle at the press point.
    ODImage(QGraphicsScene* scene, QPointF point);
    ~ODImage() override;

    // The handles of the box; the top and bottom middles and the left middle
    // stand on whole pixels (truncated), the right middle does not.
    void UpdateHandles() override;
    // The picture scaled to the normalised rectangle's whole-pixel size, placed
    // at its top left and shown; the current rectangle itself stays as it is.
    void ShowShape() override;
    // Hides the picture item; the picture is kept for the next ShowShape.
    void HideShape() override;
    int HitTest(QPointF point, bool handles) override;

    // Replaces the reference: left, top, right, bottom.
    void SetRect(float x1, float y1, float x2, float y2);
    // Keeps the pointer (not owned) and converts the picture: 8-bit grey and
    // 8-bit three-channel pictures are taken, anything else leaves the
    // picture shown so far. Null keeps the picture too.
    void setImage(VorImage* image);
    VorImage* image() const;
    // The reference; false, writing nothing, unless it holds four values.
    bool GetParam(double* x1, double* y1, double* x2, double* y2) const;
    void setZValue(long z);

    QGraphicsPixmapItem* pixmapItem() const { return m_pixmapItem; }
    // The converted picture that every show scales.
    const QImage& picture() const { return *m_qImage; }

private:
    void KESImageToQImage(VorImage* image);

    QImage* m_qImage;
    QGraphicsPixmapItem* m_pixmapItem;
    VorImage* m_image;
};
