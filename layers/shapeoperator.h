#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QVector>

#include <initializer_list>

class ImageCtrlScene;
class ODShape;
class ShaperLayer;
class QFont;
class QString;
class VorImage;
class VorPoint;

// The factory of the layers: one call builds one shape from plain numbers in
// scene coordinates (image pixels, y down), gives it the colours, width and z
// value passed in, adds it to the scene's static layer while the scene is in
// static-overlay mode and to its active layer otherwise, shows it, and returns
// its id. The shape is not selected and no tool is touched. The pen, brush and
// width held here are kept for callers to read; the creators take theirs as
// arguments.
class KESIMAGEWND_TESTS_EXPORT ShapeOperator
{
public:
    // The z value of every region: under all shapes.
    static constexpr long s_regionZValue = -1;

    explicit ShapeOperator(ImageCtrlScene* scene);

    ShapeOperator(const ShapeOperator&) = delete;
    ShapeOperator& operator=(const ShapeOperator&) = delete;

    void SetPen(QColor color, int width);
    void SetBrush(QColor color);
    QColor GetPenColor() const { return m_penColor; }
    QColor GetBrushColor() const { return m_brushColor; }
    int GetLineWidth() const { return m_lineWidth; }
    // Takes the scene's present scale for the shapes made next.
    void UpdateData();
    float scale() const { return m_scale; }

    // A shape is painted from its numbers: one with a number that is not
    // finite, or that lies more than ten million pixels from the origin,
    // cannot be painted, and its creator makes nothing and answers -1.
    static bool isPaintable(std::initializer_list<double> values);
    static bool isPaintable(const QVector<double>& values);

    long DrawPoint(double x, double y, int crossSize, long z, QColor pen, QColor brush, int width);
    long DrawLine(double x1, double y1, double x2, double y2, long z, QColor pen, QColor brush, int width);
    long DrawArrowLine(double x1, double y1, double x2, double y2, long z, QColor pen, QColor brush, int width);
    long DrawRect(double x1, double y1, double x2, double y2, long z, QColor pen, QColor brush, int width);
    // Centre, full width, full height, angle in degrees counter-clockwise.
    long DrawRect2(double x, double y, double l1, double l2, double angle, long z, QColor pen, QColor brush,
                   int width);
    // A rectangle with search lines, marked DM_RAKERECT1 for the read-back;
    // its z value is left as a new shape has it, z is not used.
    long DrawRectEx(double x1, double y1, double x2, double y2, SEARCHLINEDIRECTION direction, int count, long z,
                    QColor pen, QColor brush, int width);
    // A rotated rectangle with search lines, marked DM_RAKERECT2; z is not used.
    long DrawRect2Ex(double x, double y, double l1, double l2, double angle, SEARCHLINEDIRECTION direction,
                     int count, long z, QColor pen, QColor brush, int width);
    long DrawCircle(double x, double y, double r, long z, QColor pen, QColor brush, int width);
    long DrawEllipse(double x, double y, double r1, double r2, double angle, long z, QColor pen, QColor brush,
                     int width);
    // points: x0, y0, x1, y1, ... in turns.
    long DrawPolygon(QVector<double>& points, long z, QColor pen, QColor brush, int width);
    long DrawAnyLine(QVector<double>& points, long z, QColor pen, QColor brush, int width);
    long DrawClosedAnyLine(QVector<double>& points, long z, QColor pen, QColor brush, int width);
    // Sweep in the annulus's held sign. The search-line flag is set whatever
    // the count, also for none.
    long DrawAnnular(double x, double y, double r1, double r2, double angle, double sweep,
                     SEARCHLINEDIRECTION direction, int count, long z, QColor pen, QColor brush, int width);
    long DrawArc(double x, double y, double r, double start, double end, long z, QColor pen, QColor brush, int width);
    // The picture with its top left at point, its size the picture's own. The
    // shape keeps a pointer to image, which must outlive it.
    long DrawImage(VorImage& image, VorPoint& point, long z, QColor pen, QColor brush, int width);
    // A text at (x, y) in the pen's colour; brush and width are not used. The
    // text goes to the target layer's texts; its id.
    long DrawText(double x, double y, QString text, QFont font, long z, QColor pen, QColor brush, int width);
    // The mask as the layer's one region, replacing the one it held, coloured
    // with the low bytes of red, green, blue and alpha, under every shape
    // (z value -1). The second argument is not used.
    long DrawRegion(VorImage& image, long, long red, long green, long blue, long alpha);

private:
    // The first common steps: offset, scale, pen, width, brush.
    void dress(ODShape* shape, const QColor& pen, const QColor& brush, int width) const;
    // The last common steps: into the target layer, shown; the new id.
    long deliver(ODShape* shape) const;
    // Every creator's steps: nothing for values that cannot be painted (-1),
    // else a new T, dressed, set up by setUp (its data and, where the
    // creator gives one, its z value), and delivered.
    template <class T, class SetUp>
    long create(bool paintable, const QColor& pen, const QColor& brush, int width, SetUp setUp);
    // The static layer while the scene is in static-overlay mode, else the active one.
    ShaperLayer* targetLayer() const;

    ImageCtrlScene* m_scene;
    float m_offsetX;
    float m_offsetY;
    float m_scale;
    QColor m_penColor;
    QColor m_brushColor;
    int m_lineWidth;
};
