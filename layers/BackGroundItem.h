#pragma once

#include "staticrecord.h"

#include <QPoint>
#include <QRect>
#include <QString>

class ImageCtrlScene;
class VorOverlay;
class VorROI;

// A static shape of the image layer: a region of interest or an overlay turned
// into a painter path once, at construction, and kept by value with its
// colours, in image pixels. It has no handles and no hit test. An overlay that
// brings its own pen or brush locks that colour: the setters then leave it.
// Rotated rectangles and ellipses are kept upright, with the turn beside them
// for the painter; a text keeps its string, font and box for drawText.
class KESIMAGEWND_TESTS_EXPORT BackGroundItem : public StaticRecord
{
public:
    BackGroundItem();
    // The scene, if any, gives the cross size of a point.
    BackGroundItem(VorROI& roi, ImageCtrlScene* scene);
    BackGroundItem(VorOverlay& overlay, ImageCtrlScene* scene);
    // Copies everything but the two colour locks, which a copy leaves as they
    // were: nothing sets a colour on a copy.
    BackGroundItem(const BackGroundItem& other);
    BackGroundItem& operator=(const BackGroundItem& other);

    // The same point as GetPoint of the foreground records and the scene.
    static QPointF GetPoint(double cx, double cy, float r, float angle);

    // Each sets its colour unless the overlay brought that colour.
    void SetPenColor(QColor color);
    void SetBrushColor(QColor color);
    QFont getFont() const;
    QPoint getPoint() const;
    QString getText() const;
    QRect getTextRect() const;
    void setLineWidth(float width);
    float getLineWidth() const;

private:
    void convertPainterPath(VorROI& roi);
    void convertPainterPath(VorOverlay& overlay);
    void copyFrom(const BackGroundItem& other);

    QString m_text;
    QRect m_textRect;
    bool m_penSettable;
    bool m_brushSettable;
    float m_lineWidth;
};
