#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPoint>
#include <QPointF>
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
class KESIMAGEWND_TESTS_EXPORT BackGroundItem
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

    void SetPenColor(QColor color);
    QColor GetPenColor() const;
    void SetBrushColor(QColor color);
    QColor GetBrushColor() const;
    void SetVisible(bool visible);
    bool GetVisible() const;
    QPainterPath GetPainterPath() const;
    bool isValid() const;
    int type() const;
    double rotation() const;
    // Changes the stored value, not the path.
    void setCrossSize(int size);
    int getCrossSize() const;
    void setFont(QFont font);
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

    bool m_valid;
    QPainterPath m_path;
    QColor m_penColor;
    QColor m_brushColor;
    int m_type;
    QPointF m_point;
    double m_rotation;
    bool m_visible;
    int m_crossSize;
    QFont m_font;
    QString m_text;
    QRect m_textRect;
    bool m_penSettable;
    bool m_brushSettable;
    float m_lineWidth;
};
