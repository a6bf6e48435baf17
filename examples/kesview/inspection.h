#pragma once

#include <KESImageWnd.h>

#include <opencv2/core.hpp>

#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

// kesview's inspection: a hole check with OpenCV's imgproc. The picture is
// made grey and smoothed, its dark marks are cut out by a threshold, and each
// mark's outline is found and judged: round enough and it is a drilled hole,
// measured by its centre and diameter; anything else dark (a slot, print, a
// scratch) is a mark to look at. The pass only computes; what the window
// shows of it is made by the functions below, one per layer.
struct InspectionSettings
{
    // Grey level (0..255) below which a pixel is dark; 0 picks it from the
    // picture (half of Otsu's level, which on a lit part separates the
    // shadows of holes from the metal and the plate).
    int threshold = 0;
    // Marks smaller than this many pixels are noise.
    double minimumArea = 40.0;
    // 4 pi area / perimeter^2 from this on is a hole; a perfect disc is 1.
    double minimumRoundness = 0.80;
    // The outlines shown at most, largest first: a pass over a noisy picture
    // should not bury the operator.
    int maximumMarks = 1500;
};

struct InspectionMark
{
    std::vector<cv::Point> outline; // picture pixels, simplified
    cv::Point2d centre;             // of the area
    double diameter = 0.0;          // of the circle of the same area
    double area = 0.0;
    bool round = false;
};

struct InspectionResult
{
    std::vector<InspectionMark> marks; // largest first
    int threshold = 0;                 // the level used
    int holes = 0;
    int others = 0;
    double milliseconds = 0.0; // the pass alone
    cv::Size pictureSize;
};

// The pass over a picture of 8 or 16 bits, grey or colour; an empty result for
// an empty picture.
InspectionResult inspectPicture(const cv::Mat& picture, const InspectionSettings& settings = InspectionSettings());

// The outlines as live overlays for the shape layer: holes green, other marks
// red, each filled faintly, so that the operator can select one and read it.
VorOverlayPath outlineOverlays(const InspectionResult& result);
// Records painted on the picture: a cross on each hole's centre and the
// diameter of the large ones beside them.
QVector<VorOverlay> pictureRecords(const InspectionResult& result);
// A legend fixed at the view's top left, in screen pixels: a box and its
// lines of text.
QVector<VorOverlay> legendRecords(const QStringList& lines);
// The legend of a result: what was checked, the level, the counts and the time.
QVector<VorOverlay> legendRecords(const InspectionResult& result, const QString& source);
// What a worker hands the window per frame: the outlines and the crosses as
// static records of the picture.
VorOverlayPath frameRecords(const InspectionResult& result);

// Shows a result on a window as a host does between two pictures: the three
// layers emptied of the last result, then the outlines, the records and the
// legend. The operator's own regions of interest on the shape layer stay.
// Answers how many of the window's display calls refused their shape.
int showInspection(KESImageWnd* window, const InspectionResult& result, const QString& source,
                   QVector<long>* outlineIds);
