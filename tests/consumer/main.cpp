// A host that uses the installed package: one header, one target.
#include <KESImageWnd.h>

#include <opencv2/core.hpp>

#include <cstdio>

int main()
{
    VorImage image(cv::Mat(4, 6, CV_8UC1, cv::Scalar(7)));
    if (!IsValidVorImage(&image) || image.Width() != 6)
        return 1;

    VorROI roi;
    roi.GenRect1(VorPoint(1, 1), VorPoint(3, 2));
    VorImage mask;
    VORMV::VorROIToBinImage(&mask, roi);
    if (mask.Width() != 3 || mask.Height() != 2)
        return 2;

    if (FromROIType(roi.ROIType()) != DM_RECT1 || ConvertAngle(-30.0f) != 330.0f)
        return 3;

    std::puts("consumer ok");
    return 0;
}
