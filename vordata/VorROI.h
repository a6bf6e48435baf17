#pragma once

#include "VorImage.h"
#include "VorPoint.h"
#include "VorPointArray.h"
#include "vordata_export.h"

#include <vector>

// A region of interest in image pixels. ROIType() tells the kind by the ROI
// code table; each Gen call makes the ROI that kind, and the Get call of the
// same kind gives back exactly what went in. A Get of another kind returns
// false and writes nothing; null output pointers are skipped.
//
// Angles are degrees, counter-clockwise on the screen (y axis down), 0 at three
// o'clock. Rect2 takes full width and full height; an arc and a torus sweep
// counter-clockwise from their start for a positive sweep.
class VORDATA_EXPORT VorROI
{
public:
    // ROIType() codes.
    enum Type {
        ROI_RECT1 = 0,
        ROI_CIRCLE = 1,
        ROI_TORUS = 2,
        ROI_NONE = 3,
        ROI_POLYGON = 4,
        ROI_IRREGULAR = 5,
        ROI_RECT2 = 6,
        ROI_LINE = 7,
        ROI_ELLIPSE = 8,
        ROI_ARC = 9,
        ROI_POINT = 10,
        ROI_MASK = 11,
        ROI_POLYLINE = 12
    };

    VorROI();  // of no kind, ROI_NONE
    VorROI(const VorROI& other);
    VorROI& operator=(const VorROI& other);
    ~VorROI();

    int ROIType() const;

    void GenPoint(const VorPoint& p);
    void GenLine(const VorPoint& a, const VorPoint& b);
    void GenRect1(const VorPoint& a, const VorPoint& b);
    void GenRect2(const VorPoint& centre, double l1, double l2, double angle);
    void GenEllipse(const VorPoint& centre, double r1, double r2, double angle);
    void GenCircle(const VorPoint& centre, double r);
    void GenPolygon(const VorPointArray& points);
    void GenIrregular(const VorPointArray& points);
    void GenTorus(const VorPoint& centre, double r1, double r2, double angle, double sweep);
    // The fourth value is read as the sweep from start, as the window's arc shape
    // holds it.
    void GenArc(const VorPoint& centre, double r, double start, double end);
    // A mask ROI: every pixel of the picture that is non-zero in any channel is
    // inside. The mask is kept as its own one-channel 8-bit copy, 255 inside.
    void GenMask(const VorImage& binaryImage);
    // A kind the data model knows and the window does not draw: a closed free
    // line through the points, the last joined to the first.
    void GenPolyLine(const VorPointArray& points);

    bool GetPoint(VorPoint* p) const;
    bool GetLine(VorPoint* a, VorPoint* b) const;
    bool GetRect1(VorPoint* a, VorPoint* b) const;
    bool GetRect2(VorPoint* centre, double* l1, double* l2, double* angle) const;
    bool GetEllipse(VorPoint* centre, double* r1, double* r2, double* angle) const;
    bool GetCircle(VorPoint* centre, double* r) const;
    bool GetPolygon(VorPointArray* points) const;
    bool GetIrregular(VorPointArray* points) const;
    bool GetTorus(VorPoint* centre, double* r1, double* r2, double* angle, double* sweep) const;
    bool GetArc(VorPoint* centre, double* r, double* start, double* end) const;
    // The mask as a new one-channel picture of its own (not shared).
    bool GetMask(VorImage* mask) const;
    bool GetPolyLine(VorPointArray* points) const;

private:
    void reset(int type);

    int m_type;
    std::vector<double> m_values;
    VorPointArray m_points;
    VorImage m_mask;
};
