// Fuzzes the way a host's shape data enters the window: the bytes become a
// run of regions of interest and overlays of any type code, with numbers that
// may be NaN, infinite, negative or huge, point lists of any length, colours
// of any value and small masks of any type, which go to the shape layer as
// display calls on the shape layer, the image layer's static records (also
// in the worker's form) and the foreground. Each shape made is painted, and
// on the shape layer read back by id. Nothing may crash, hang, leak or reach
// undefined behaviour; an id is -1 or a shape of the layer it was given to,
// and a known id always reads back.

#include "fuzzview.h"

#include "ForeLayer.h"
#include "ImageLayer.h"
#include "ShapeLayer.h"
#include "oditemregion.h"

#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"
#include "VorRegion.h"

#include <opencv2/core.hpp>

#include <cstdlib>
#include <cstring>

namespace {

// Reads the fuzzer's bytes in order; past the end it gives zeros.
class Reader
{
public:
    Reader(const uint8_t* data, size_t size)
        : m_data(data)
        , m_size(size)
    {
    }

    bool atEnd() const { return m_pos >= m_size; }

    uint8_t byte()
    {
        return m_pos < m_size ? m_data[m_pos++] : 0;
    }

    // Any double, NaN and infinities included: eight raw bytes. With
    // KES_FUZZ_TRACE set, each is printed, to see what a finding drew.
    double number()
    {
        uint8_t raw[sizeof(double)] = {};
        for (uint8_t& b : raw)
            b = byte();
        double value;
        std::memcpy(&value, raw, sizeof value);
        if (std::getenv("KES_FUZZ_TRACE"))
            fprintf(stderr, "  number %.17g\n", value);
        return value;
    }

    VorPoint point() { return VorPoint(number(), number()); }

    VorPointArray points()
    {
        VorPointArray array;
        const int count = byte() % 40;
        for (int i = 0; i < count; ++i)
            array.Append(point());
        return array;
    }

    // A small picture of a type the window may or may not take.
    VorImage mask()
    {
        static const int types[] = {CV_8UC1, CV_8UC3, CV_16UC1, CV_8UC4, CV_32FC1};
        const int width = byte() % 48;
        const int height = byte() % 48;
        const int type = types[byte() % 5];
        if (width == 0 || height == 0)
            return VorImage();
        cv::Mat mat(height, width, type);
        uint8_t* bytes = mat.data;
        const size_t total = mat.total() * mat.elemSize();
        for (size_t i = 0; i < total; ++i)
            bytes[i] = byte();
        return VorImage(mat);
    }

private:
    const uint8_t* m_data;
    size_t m_size;
    size_t m_pos = 0;
};

VorROI makeROI(Reader& in)
{
    VorROI roi;
    switch (in.byte() % 14) {
    case 0: roi.GenPoint(in.point()); break;
    case 1: roi.GenLine(in.point(), in.point()); break;
    case 2: roi.GenRect1(in.point(), in.point()); break;
    case 3: roi.GenRect2(in.point(), in.number(), in.number(), in.number()); break;
    case 4: roi.GenEllipse(in.point(), in.number(), in.number(), in.number()); break;
    case 5: roi.GenCircle(in.point(), in.number()); break;
    case 6: roi.GenPolygon(in.points()); break;
    case 7: roi.GenIrregular(in.points()); break;
    case 8: roi.GenTorus(in.point(), in.number(), in.number(), in.number(), in.number()); break;
    case 9: roi.GenArc(in.point(), in.number(), in.number(), in.number()); break;
    case 10: roi.GenMask(in.mask()); break;
    case 11: roi.GenPolyLine(in.points()); break;
    default: break; // a ROI of no kind
    }
    return roi;
}

VorOverlay makeOverlay(Reader& in)
{
    VorOverlay overlay;
    switch (in.byte() % 20) {
    case 0: overlay.GenPoint(in.point()); break;
    case 1: overlay.GenLine(in.point(), in.point()); break;
    case 2: overlay.GenArrowLine(in.point(), in.point()); break;
    case 3: overlay.GenRect1(in.point(), in.point()); break;
    case 4: overlay.GenRakeRect1(in.point(), in.point(), int(in.byte()) - 8, int(in.byte()) * 300); break;
    case 5: overlay.GenRect2(in.point(), in.number(), in.number(), in.number()); break;
    case 6:
        overlay.GenRakeRect2(in.point(), in.number(), in.number(), in.number(), int(in.byte()) - 8,
                             int(in.byte()) * 300);
        break;
    case 7: overlay.GenEllipse(in.point(), in.number(), in.number(), in.number()); break;
    case 8: overlay.GenCircle(in.point(), in.number()); break;
    case 9: overlay.GenArc(in.point(), in.number(), in.number(), in.number()); break;
    case 10: overlay.GenTorus(in.point(), in.number(), in.number(), in.number(), in.number()); break;
    case 11:
        overlay.GenSpokeTorus(in.point(), in.number(), in.number(), in.number(), in.number(), int(in.byte()) - 8,
                              int(in.byte()) * 300);
        break;
    case 12: overlay.GenPolygon(in.points()); break;
    case 13: overlay.GenIrregular(in.points()); break;
    case 14: overlay.GenPolyLine(in.points()); break;
    case 15: {
        char text[16] = {};
        for (int i = 0; i < 15; ++i)
            text[i] = char(in.byte());
        VorFont font("", int(in.byte()) - 20);
        overlay.GenText(in.point(), text, font);
        break;
    }
    case 16: overlay.GenRegion(VorRegion(in.mask())); break;
    case 17: overlay.GenCross(in.point(), in.number(), in.number()); break;
    case 18: overlay.GenPolyArrow(in.points()); break;
    default: break; // an overlay of no kind
    }
    if (in.byte() & 1)
        overlay.SetPen(long(in.byte()) * 2 - 100, long(in.byte()) - 100, 300, long(in.byte()) - 10);
    if (in.byte() & 1)
        overlay.SetBrush(long(in.byte()) * 3 - 200, 0, 255, long(in.byte()) - 50);
    return overlay;
}

// A shape that the layer says it made must be there and read back. The first
// id of a path may be a region that a later region of the same path replaced,
// and so be gone.
void checkMade(ShaperLayer* layer, long id, bool isROI, bool fromPath = false)
{
    if (id < 0)
        return;
    const bool isRegion = layer->region() && layer->region()->GetID() == id;
    if (!fromPath && !layer->getShapeIDS().contains(id) && !isRegion) {
        fprintf(stderr, "id %ld was given but the layer does not hold it\n", id);
        abort();
    }
    VorROI roi;
    VorOverlay overlay;
    if (isROI)
        layer->GetROIShape(id, &roi);
    else
        layer->GetOverlay(id, &overlay);
}

// A record that a static layer says it made must be listed there.
template <typename Layer>
void checkListed(Layer* layer, long id)
{
    if (id >= 0 && !layer->getShapeIDS().contains(id)) {
        fprintf(stderr, "id %ld was given but the static layer does not hold it\n", id);
        abort();
    }
}

// The same data as static records of the image layer, in the worker's form
// for a path as well, and of the foreground.
void drawStatic(Reader& in, ImageLayer* image, ForeLayer* fore, int kind)
{
    const bool onImage = in.byte() & 1;
    switch (kind) {
    case 0: {
        VorROI roi = makeROI(in);
        if (onImage)
            checkListed(image, image->DrawROI(roi));
        else
            checkListed(fore, fore->DrawROI(roi));
        break;
    }
    case 1: {
        VorOverlay overlay = makeOverlay(in);
        if (onImage)
            checkListed(image, image->DrawOverlay(overlay));
        else
            checkListed(fore, fore->DrawOverlay(overlay));
        break;
    }
    default: {
        VorOverlayPath path;
        const int count = in.byte() % 4;
        for (int k = 0; k < count; ++k)
            path.Append(makeOverlay(in));
        if (!onImage) {
            checkListed(fore, fore->DrawOverlayPath(path));
        } else if (in.byte() & 1) {
            for (long id : image->runDrawShape(path))
                checkListed(image, id);
        } else {
            checkListed(image, image->DrawOverlayPath(path));
        }
        break;
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 1 << 14)
        return 0;
    KesFuzz::Harness& harness = KesFuzz::Harness::instance();
    ImageCtrlScene* scene = harness.view()->GetImageCtrlScene();
    ShaperLayer* layer = scene->GetActiveLayer();
    ImageLayer* image = scene->GetImageLayer();
    ForeLayer* fore = scene->GetForeLayer();

    Reader in(data, size);
    for (int i = 0; i < 12 && !in.atEnd(); ++i) {
        const int step = in.byte() % 6;
        if (step >= 3) {
            drawStatic(in, image, fore, step - 3);
            continue;
        }
        switch (step) {
        case 0: {
            VorROI roi = makeROI(in);
            checkMade(layer, layer->DrawROI(roi, false), true);
            break;
        }
        case 1: {
            VorOverlay overlay = makeOverlay(in);
            checkMade(layer, layer->DrawOverlay(overlay, false), false);
            break;
        }
        default: {
            VorOverlayPath path;
            const int count = in.byte() % 4;
            for (int k = 0; k < count; ++k)
                path.Append(makeOverlay(in));
            checkMade(layer, layer->DrawOverlayPath(path, false), false, true);
            break;
        }
        }
    }
    layer->Update();
    layer->Show(true);
    harness.paint();

    // Every input starts from an empty layer.
    layer->clearCurrentShape();
    layer->clearSelectedShape();
    layer->clearShape();
    layer->ClearAllSelectedText();
    layer->ClearAllText();
    layer->ClearRegion();
    image->clearShape();
    // The foreground's clear keeps its ids listed; removal lets them go.
    fore->removeShapeList(fore->getShapeIDS());
    return 0;
}
