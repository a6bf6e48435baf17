#include "VORMV.h"

#include "RoiRasterizer.h"
#include "VorImage.h"
#include "VorROI.h"
#include "VorRegion.h"

namespace VORMV {

void VorROIToBinImage(VorImage* image, VorROI& roi)
{
    if (!image)
        return;
    const VorRaster::RoiRasterizer rasterizer(roi);
    // A new matrix: pixels the image may share with other images stay untouched.
    image->Mat() = VorRaster::renderPicture([&](VorRaster::SpanSink& sink) { rasterizer.rasterize(sink); });
}

void VorRegionToBinImage(VorImage* image, VorRegion& region)
{
    if (!image)
        return;
    image->Mat() = VorRaster::renderPicture([&](VorRaster::SpanSink& sink) { VorRaster::emitRegion(region, sink); });
}

void VorROIToRegion(VorRegion* region, VorROI& roi)
{
    if (!region)
        return;
    const VorRaster::RoiRasterizer rasterizer(roi);
    region->SetRuns(VorRaster::collectRuns([&](VorRaster::SpanSink& sink) { rasterizer.rasterize(sink); }));
}

}  // namespace VORMV
