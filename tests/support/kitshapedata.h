#pragma once

// Regions of interest and overlays as flat lists of numbers, and shapes'
// parameters the same way, so that a data-driven test can state what goes in
// and what comes back as one row: the values of a ROI or an overlay in the
// order of its Gen call (search-line direction and count last), a shape's in
// the order of its GetParam.

#include "kitcompare.h"

#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "odannular.h"
#include "odarc.h"
#include "odcircle.h"
#include "odellipse.h"
#include "odpoint.h"
#include "odpointlistshape.h"
#include "odrect1.h"
#include "odrect2.h"
#include "odsegmentshape.h"

#include "VorOverlay.h"
#include "VorPointArray.h"
#include "VorROI.h"

#include <QGraphicsItem>
#include <QSet>
#include <QTextCodec>

#include <algorithm>

namespace Kit {

// A scene with its layers and no view, as a shape layer sees it. The scene
// deletes its active layer alone: the shapes of the other layers go here.
class LayerScene
{
public:
    LayerScene() { scene.CreateLayers(); }
    ~LayerScene()
    {
        for (ShaperLayer* layer : scene.getShaperLayperList()) {
            if (layer != active()) {
                layer->clearSelectedShape();
                layer->clearShape();
            }
        }
    }
    ShaperLayer* active() const { return scene.GetActiveLayer(); }
    ShaperLayer* fixed() const { return scene.GetStaticActiveLayer(); }
    ImageCtrlScene scene;
};

inline VorPointArray pointsOf(const Params& flat)
{
    VorPointArray points;
    for (int i = 0; i + 1 < flat.size(); i += 2)
        points.Append(VorPoint(flat[i], flat[i + 1]));
    return points;
}

inline Params flatOf(const VorPointArray& points)
{
    Params flat;
    for (int i = 0; i < points.Length(); ++i)
        flat << points[i].x << points[i].y;
    return flat;
}

inline double at(const Params& v, int i)
{
    return i < v.size() ? v[i] : 0.0;
}

inline VorPoint pointAt(const Params& v, int i)
{
    return VorPoint(at(v, i), at(v, i + 1));
}

// A ROI of the type code with the values of its Gen call; a code without a
// Gen call gives a ROI of no kind.
inline VorROI makeROI(int code, const Params& v)
{
    VorROI roi;
    switch (code) {
    case VorROI::ROI_RECT1: roi.GenRect1(pointAt(v, 0), pointAt(v, 2)); break;
    case VorROI::ROI_CIRCLE: roi.GenCircle(pointAt(v, 0), at(v, 2)); break;
    case VorROI::ROI_TORUS: roi.GenTorus(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4), at(v, 5)); break;
    case VorROI::ROI_POLYGON: roi.GenPolygon(pointsOf(v)); break;
    case VorROI::ROI_IRREGULAR: roi.GenIrregular(pointsOf(v)); break;
    case VorROI::ROI_RECT2: roi.GenRect2(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4)); break;
    case VorROI::ROI_LINE: roi.GenLine(pointAt(v, 0), pointAt(v, 2)); break;
    case VorROI::ROI_ELLIPSE: roi.GenEllipse(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4)); break;
    case VorROI::ROI_ARC: roi.GenArc(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4)); break;
    case VorROI::ROI_POINT: roi.GenPoint(pointAt(v, 0)); break;
    case VorROI::ROI_POLYLINE: roi.GenPolyLine(pointsOf(v)); break;
    default: break;
    }
    return roi;
}

// The values of a ROI in the order of its Gen call; empty for a kind without one.
inline Params valuesOf(const VorROI& roi)
{
    VorPoint a, b;
    double d1 = 0, d2 = 0, d3 = 0, d4 = 0;
    VorPointArray points;
    switch (roi.ROIType()) {
    case VorROI::ROI_RECT1: roi.GetRect1(&a, &b); return {a.x, a.y, b.x, b.y};
    case VorROI::ROI_CIRCLE: roi.GetCircle(&a, &d1); return {a.x, a.y, d1};
    case VorROI::ROI_TORUS: roi.GetTorus(&a, &d1, &d2, &d3, &d4); return {a.x, a.y, d1, d2, d3, d4};
    case VorROI::ROI_POLYGON: roi.GetPolygon(&points); return flatOf(points);
    case VorROI::ROI_IRREGULAR: roi.GetIrregular(&points); return flatOf(points);
    case VorROI::ROI_RECT2: roi.GetRect2(&a, &d1, &d2, &d3); return {a.x, a.y, d1, d2, d3};
    case VorROI::ROI_LINE: roi.GetLine(&a, &b); return {a.x, a.y, b.x, b.y};
    case VorROI::ROI_ELLIPSE: roi.GetEllipse(&a, &d1, &d2, &d3); return {a.x, a.y, d1, d2, d3};
    case VorROI::ROI_ARC: roi.GetArc(&a, &d1, &d2, &d3); return {a.x, a.y, d1, d2, d3};
    case VorROI::ROI_POINT: roi.GetPoint(&a); return {a.x, a.y};
    case VorROI::ROI_POLYLINE: roi.GetPolyLine(&points); return flatOf(points);
    default: return {};
    }
}

// An overlay of the type code with the values of its Gen call, search-line
// direction and count last; a code without a Gen call here gives an overlay
// of no kind.
inline VorOverlay makeOverlay(int code, const Params& v)
{
    VorOverlay ov;
    const int n = v.size();
    switch (code) {
    case VorOverlay::OV_POINT: ov.GenPoint(pointAt(v, 0)); break;
    case VorOverlay::OV_ARROWLINE: ov.GenArrowLine(pointAt(v, 0), pointAt(v, 2)); break;
    case VorOverlay::OV_LINE: ov.GenLine(pointAt(v, 0), pointAt(v, 2)); break;
    case VorOverlay::OV_RECT1: ov.GenRect1(pointAt(v, 0), pointAt(v, 2)); break;
    case VorOverlay::OV_RAKERECT1: ov.GenRakeRect1(pointAt(v, 0), pointAt(v, 2), int(at(v, 4)), int(at(v, 5))); break;
    case VorOverlay::OV_CIRCLE: ov.GenCircle(pointAt(v, 0), at(v, 2)); break;
    case VorOverlay::OV_ELLIPSE: ov.GenEllipse(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4)); break;
    case VorOverlay::OV_POLYGON: ov.GenPolygon(pointsOf(v)); break;
    case VorOverlay::OV_POLYLINE: ov.GenPolyLine(pointsOf(v)); break;
    case VorOverlay::OV_RECT2: ov.GenRect2(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4)); break;
    case VorOverlay::OV_RAKERECT2:
        ov.GenRakeRect2(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4), int(at(v, 5)), int(at(v, 6)));
        break;
    case VorOverlay::OV_TORUS: ov.GenTorus(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4), at(v, 5)); break;
    case VorOverlay::OV_SPOKETORUS:
        ov.GenSpokeTorus(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4), at(v, 5), int(at(v, 6)), int(at(v, 7)));
        break;
    case VorOverlay::OV_ARC: ov.GenArc(pointAt(v, 0), at(v, 2), at(v, 3), at(v, 4)); break;
    case VorOverlay::OV_IRREGULAR: ov.GenIrregular(pointsOf(v)); break;
    case VorOverlay::OV_CROSS: ov.GenCross(pointAt(v, 0), at(v, 2), at(v, 3)); break;
    case VorOverlay::OV_POLYARROW: ov.GenPolyArrow(pointsOf(v)); break;
    default: Q_UNUSED(n); break;
    }
    return ov;
}

// The values of an overlay in the order of its Gen call; empty for a kind
// without geometry here.
inline Params valuesOf(const VorOverlay& ov)
{
    VorPoint a, b;
    double d1 = 0, d2 = 0, d3 = 0, d4 = 0;
    int i1 = 0, i2 = 0;
    VorPointArray points;
    switch (ov.OverlayType()) {
    case VorOverlay::OV_POINT: ov.GetPoint(&a); return {a.x, a.y};
    case VorOverlay::OV_ARROWLINE: ov.GetArrowLine(&a, &b); return {a.x, a.y, b.x, b.y};
    case VorOverlay::OV_LINE: ov.GetLine(&a, &b); return {a.x, a.y, b.x, b.y};
    case VorOverlay::OV_RECT1: ov.GetRect1(&a, &b); return {a.x, a.y, b.x, b.y};
    case VorOverlay::OV_RAKERECT1: ov.GetRakeRect1(&a, &b, &i1, &i2); return {a.x, a.y, b.x, b.y, double(i1), double(i2)};
    case VorOverlay::OV_CIRCLE: ov.GetCircle(&a, &d1); return {a.x, a.y, d1};
    case VorOverlay::OV_ELLIPSE: ov.GetEllipse(&a, &d1, &d2, &d3); return {a.x, a.y, d1, d2, d3};
    case VorOverlay::OV_POLYGON: ov.GetPolygon(&points); return flatOf(points);
    case VorOverlay::OV_POLYLINE: ov.GetPolyLine(&points); return flatOf(points);
    case VorOverlay::OV_RECT2: ov.GetRect2(&a, &d1, &d2, &d3); return {a.x, a.y, d1, d2, d3};
    case VorOverlay::OV_RAKERECT2:
        ov.GetRakeRect2(&a, &d1, &d2, &d3, &i1, &i2);
        return {a.x, a.y, d1, d2, d3, double(i1), double(i2)};
    case VorOverlay::OV_TORUS: ov.GetTorus(&a, &d1, &d2, &d3, &d4); return {a.x, a.y, d1, d2, d3, d4};
    case VorOverlay::OV_SPOKETORUS:
        ov.GetSpokeTorus(&a, &d1, &d2, &d3, &d4, &i1, &i2);
        return {a.x, a.y, d1, d2, d3, d4, double(i1), double(i2)};
    case VorOverlay::OV_ARC: ov.GetArc(&a, &d1, &d2, &d3); return {a.x, a.y, d1, d2, d3};
    case VorOverlay::OV_IRREGULAR: ov.GetIrregular(&points); return flatOf(points);
    default: return {};
    }
}

// A shape's parameters in the order of its GetParam: the rectangles' search
// direction and count only in their search-line modes, and for the annulus
// direction, count and 1 or 0 for its search-line flag at the end.
inline Params shapeParams(ODShape* shape)
{
    double v[6] = {0, 0, 0, 0, 0, 0};
    int direction = 0, count = 0;
    switch (shape->GetDrawMode()) {
    case DM_POINT:
        static_cast<ODPoint*>(shape)->GetParam(&v[0], &v[1]);
        return {v[0], v[1]};
    case DM_LINE:
    case DM_ARROWLINE:
        static_cast<ODSegmentShape*>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3]);
        return {v[0], v[1], v[2], v[3]};
    case DM_RECT1:
    case DM_RAKERECT1: {
        static_cast<ODRect1*>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3], &direction, &count);
        Params p{v[0], v[1], v[2], v[3]};
        if (shape->GetDrawMode() == DM_RAKERECT1)
            p << direction << count;
        return p;
    }
    case DM_RECT2:
    case DM_RAKERECT2: {
        static_cast<ODRect2*>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3], &v[4], &direction, &count);
        Params p{v[0], v[1], v[2], v[3], v[4]};
        if (shape->GetDrawMode() == DM_RAKERECT2)
            p << direction << count;
        return p;
    }
    case DM_ELLIPSE:
        static_cast<ODEllipse*>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3], &v[4]);
        return {v[0], v[1], v[2], v[3], v[4]};
    case DM_CIRCLE:
        static_cast<ODCircle*>(shape)->GetParam(&v[0], &v[1], &v[2]);
        return {v[0], v[1], v[2]};
    case DM_POLYGON:
    case DM_ANYLINE:
    case DM_ANYCLOSELINE: {
        VorPointArray points;
        static_cast<ODPointListShape*>(shape)->GetParam(&points);
        return flatOf(points);
    }
    case DM_ANNULAR: {
        auto* annulus = static_cast<ODAnnular*>(shape);
        annulus->GetParam(&v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &direction, &count);
        return {v[0], v[1], v[2], v[3], v[4], v[5], double(direction), double(count),
                annulus->HaveSearchLine() ? 1.0 : 0.0};
    }
    case DM_ARC:
        static_cast<ODARC*>(shape)->GetParam(&v[0], &v[1], &v[2], &v[3], &v[4]);
        return {v[0], v[1], v[2], v[3], v[4]};
    default: return {};
    }
}

// The graphics items that appeared in a scene since a set taken before.
inline QList<QGraphicsItem*> itemsAddedSince(QGraphicsScene* scene, const QSet<QGraphicsItem*>& before)
{
    QList<QGraphicsItem*> added;
    for (QGraphicsItem* item : scene->items()) {
        if (!before.contains(item))
            added << item;
    }
    return added;
}

inline QSet<QGraphicsItem*> itemSet(QGraphicsScene* scene)
{
    const QList<QGraphicsItem*> items = scene->items();
    return QSet<QGraphicsItem*>(items.begin(), items.end());
}

// The lowest z value among items: the shape's own, below its raised handles.
inline double lowestZ(const QList<QGraphicsItem*>& items)
{
    double z = items.isEmpty() ? 0.0 : items.first()->zValue();
    for (QGraphicsItem* item : items)
        z = std::min(z, item->zValue());
    return z;
}

// The locale's eight-bit encoding set to a codec for one test, and put back
// when the test ends, failed or not. An empty name changes nothing.
class LocalCodecScope
{
public:
    explicit LocalCodecScope(const QByteArray& codecName) : m_before(QTextCodec::codecForLocale())
    {
        if (!codecName.isEmpty())
            QTextCodec::setCodecForLocale(QTextCodec::codecForName(codecName));
    }
    ~LocalCodecScope() { QTextCodec::setCodecForLocale(m_before); }
    LocalCodecScope(const LocalCodecScope&) = delete;
    LocalCodecScope& operator=(const LocalCodecScope&) = delete;

private:
    QTextCodec* m_before;
};

} // namespace Kit
