#include "shapeoperator.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odannular.h"
#include "odanycloseline.h"
#include "odanyline.h"
#include "odarc.h"
#include "odarrowline.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odimage.h"
#include "oditemregion.h"
#include "odline.h"
#include "odpoint.h"
#include "odpolygon.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odtext.h"

#include "VorImage.h"
#include "VorPoint.h"

#include <algorithm>
#include <cmath>

ShapeOperator::ShapeOperator(ImageCtrlScene* scene)
    : m_scene(scene)
    , m_offsetX(0.0f)
    , m_offsetY(0.0f)
    , m_scale(1.0f)
    , m_penColor(0, 255, 0, 255)
    , m_brushColor(0, 255, 0, 0)
    , m_lineWidth(1)
{
}

void ShapeOperator::SetPen(QColor color, int width)
{
    m_penColor = color;
    m_lineWidth = width;
}

void ShapeOperator::SetBrush(QColor color)
{
    m_brushColor = color;
}

void ShapeOperator::UpdateData()
{
    m_scale = float(m_scene->getScale());
}

void ShapeOperator::dress(ODShape* shape, const QColor& pen, const QColor& brush, int width) const
{
    shape->SetOffset(m_offsetX, m_offsetY);
    shape->SetScale(m_scale);
    shape->SetPenColor(pen);
    shape->SetLineWidth(float(width));
    shape->SetBrushColor(brush);
}

ShaperLayer* ShapeOperator::targetLayer() const
{
    return m_scene->isStaticOverlay() ? m_scene->GetStaticActiveLayer() : m_scene->GetActiveLayer();
}

long ShapeOperator::deliver(ODShape* shape) const
{
    targetLayer()->addShape(shape);
    shape->ShowShape();
    return shape->GetShapeID();
}

template <class T, class SetUp>
long ShapeOperator::create(bool paintable, const QColor& pen, const QColor& brush, int width, SetUp setUp)
{
    if (!paintable)
        return -1;
    auto* shape = new T(m_scene);
    dress(shape, pen, brush, width);
    setUp(shape);
    return deliver(shape);
}

namespace {

using Values = std::initializer_list<double>;

// The farthest a number of a shape from data may lie from the origin, in
// pixels: far beyond any picture, yet well within what the painting can take.
constexpr double kFarthestValue = 1e7;

bool isPaintableValue(double value)
{
    return std::isfinite(value) && std::abs(value) <= kFarthestValue;
}

} // namespace

bool ShapeOperator::isPaintable(std::initializer_list<double> values)
{
    return std::all_of(values.begin(), values.end(), isPaintableValue);
}

bool ShapeOperator::isPaintable(const QVector<double>& values)
{
    return std::all_of(values.begin(), values.end(), isPaintableValue);
}

long ShapeOperator::DrawPoint(double x, double y, int crossSize, long z, QColor pen, QColor brush, int width)
{
    return create<ODPoint>(isPaintable(Values{x, y}), pen, brush, width, [&](ODPoint* shape) {
        shape->SetPoint(x, y);
        shape->SetCrossSize(crossSize);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawLine(double x1, double y1, double x2, double y2, long z, QColor pen, QColor brush, int width)
{
    return create<ODLine>(isPaintable(Values{x1, y1, x2, y2}), pen, brush, width, [&](ODLine* shape) {
        shape->SetLine(float(x1), float(y1), float(x2), float(y2));
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawArrowLine(double x1, double y1, double x2, double y2, long z, QColor pen, QColor brush,
                                  int width)
{
    return create<ODArrowLine>(isPaintable(Values{x1, y1, x2, y2}), pen, brush, width, [&](ODArrowLine* shape) {
        shape->SetLine(float(x1), float(y1), float(x2), float(y2));
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawRect(double x1, double y1, double x2, double y2, long z, QColor pen, QColor brush, int width)
{
    return create<ODRect1>(isPaintable(Values{x1, y1, x2, y2}), pen, brush, width, [&](ODRect1* shape) {
        shape->SetRect(x1, y1, x2, y2);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawRect2(double x, double y, double l1, double l2, double angle, long z, QColor pen,
                              QColor brush, int width)
{
    return create<ODRect2>(isPaintable(Values{x, y, l1, l2, angle}), pen, brush, width, [&](ODRect2* shape) {
        shape->SetRect(x, y, l1, l2);
        shape->SetRoateAngle(angle);
        shape->UpdateRotateCenter();
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawRectEx(double x1, double y1, double x2, double y2, SEARCHLINEDIRECTION direction, int count,
                               long, QColor pen, QColor brush, int width)
{
    // The search-line forms take no z value.
    return create<ODRect1>(isPaintable(Values{x1, y1, x2, y2}), pen, brush, width, [&](ODRect1* shape) {
        shape->setDrawMode(DM_RAKERECT1);
        shape->SetRect(x1, y1, x2, y2);
        shape->SetSearchLine(direction, count);
        shape->SetSearchLineFlag(true);
    });
}

long ShapeOperator::DrawRect2Ex(double x, double y, double l1, double l2, double angle, SEARCHLINEDIRECTION direction,
                                int count, long, QColor pen, QColor brush, int width)
{
    return create<ODRect2>(isPaintable(Values{x, y, l1, l2, angle}), pen, brush, width, [&](ODRect2* shape) {
        shape->setDrawMode(DM_RAKERECT2);
        shape->SetRect(x, y, l1, l2);
        shape->SetRoateAngle(angle);
        shape->SetSearchLine(direction, count);
        shape->UpdateRotateCenter();
        shape->SetSearchLineFlag(true);
    });
}

long ShapeOperator::DrawCircle(double x, double y, double r, long z, QColor pen, QColor brush, int width)
{
    return create<ODCircle>(isPaintable(Values{x, y, r}), pen, brush, width, [&](ODCircle* shape) {
        shape->SetCircle(x, y, r);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawEllipse(double x, double y, double r1, double r2, double angle, long z, QColor pen,
                                QColor brush, int width)
{
    return create<ODEllipse>(isPaintable(Values{x, y, r1, r2, angle}), pen, brush, width, [&](ODEllipse* shape) {
        shape->SetEllipse(float(x), float(y), float(r1), float(r2), float(angle));
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawPolygon(QVector<double>& points, long z, QColor pen, QColor brush, int width)
{
    return create<ODPolygon>(isPaintable(points), pen, brush, width, [&](ODPolygon* shape) {
        shape->SetPolygonPoints(points);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawAnyLine(QVector<double>& points, long z, QColor pen, QColor brush, int width)
{
    return create<ODAnyLine>(isPaintable(points), pen, brush, width, [&](ODAnyLine* shape) {
        shape->SetAnyLinePoints(points);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawClosedAnyLine(QVector<double>& points, long z, QColor pen, QColor brush, int width)
{
    return create<ODAnyCloseLine>(isPaintable(points), pen, brush, width, [&](ODAnyCloseLine* shape) {
        shape->SetAnyLinePoints(points);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawAnnular(double x, double y, double r1, double r2, double angle, double sweep,
                                SEARCHLINEDIRECTION direction, int count, long z, QColor pen, QColor brush, int width)
{
    return create<ODAnnular>(isPaintable(Values{x, y, r1, r2, angle, sweep}), pen, brush, width, [&](ODAnnular* shape) {
        shape->SetTours(x, y, r1, r2, angle, sweep);
        shape->SetSearchLine(direction, count);
        shape->SetSearchLineFlag(true);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawArc(double x, double y, double r, double start, double end, long z, QColor pen, QColor brush,
                            int width)
{
    return create<ODARC>(isPaintable(Values{x, y, r, start, end}), pen, brush, width, [&](ODARC* shape) {
        shape->SetCircle(x, y, r, start, end);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawImage(VorImage& image, VorPoint& point, long z, QColor pen, QColor brush, int width)
{
    return create<ODImage>(isPaintable(Values{point.x, point.y}), pen, brush, width, [&](ODImage* shape) {
        const double right = point.x + double(image.Width());
        const double bottom = point.y + double(image.Height());
        shape->SetRect(float(point.x), float(point.y), float(right), float(bottom));
        shape->setImage(&image);
        shape->setZValue(z);
    });
}

long ShapeOperator::DrawText(double x, double y, QString text, QFont font, long z, QColor pen, QColor, int)
{
    if (!isPaintable(Values{x, y}))
        return -1;
    auto* item = new ODText(m_scene);
    item->SetOffset(m_offsetX, m_offsetY);
    item->SetScale(m_scale);
    item->SetColor(pen);
    item->SetPos(QPointF(x, y));
    item->SetText(text);
    item->SetFont(font);
    item->setZValue(z);
    targetLayer()->AddText(item);
    item->ShowText();
    return item->GetID();
}

// Regions lie under all shapes, whatever the layer's z counter.
long ShapeOperator::DrawRegion(VorImage& image, long, long red, long green, long blue, long alpha)
{
    auto* region = new ODItemRegion(m_scene);
    region->LoadVorRegion(&image);
    region->setZValue(s_regionZValue);
    targetLayer()->AddRegion(region);
    region->Update(uchar(red & 0xff), uchar(green & 0xff), uchar(blue & 0xff), uchar(alpha & 0xff));
    region->show();
    return region->GetID();
}
