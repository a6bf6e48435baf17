// A host that uses the installed package: one header, one target. It checks
// the data model alone, then embeds a window and makes the shape calls a host
// makes: display, read back, settings, a draw mode, removal.
#include <KESImageWnd.h>

#include <opencv2/core.hpp>

#include <QApplication>
#include <QWidget>

#include <cstdio>

namespace {

int checkDataModel()
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
    return 0;
}

int checkShapeCalls()
{
    QWidget host;
    host.resize(320, 240);
    KESImageWnd wnd;
    if (wnd.create(reinterpret_cast<qlonglong>(&host)) != 0)
        return 10;
    VorImage picture(cv::Mat(120, 160, CV_8UC1, cv::Scalar(90)));
    if (wnd.setBackground(picture) != 0)
        return 11;

    VorROI roi;
    roi.GenRect1(VorPoint(10, 20), VorPoint(60, 70));
    const long roiId = wnd.displayROI(roi);
    VorROI back;
    VorPoint a, b;
    if (roiId < 0 || wnd.getROIShape(roiId, &back) != 0 || !back.GetRect1(&a, &b) || a != VorPoint(10, 20)
        || b != VorPoint(60, 70))
        return 12;

    VorOverlay overlay;
    overlay.GenCircle(VorPoint(80, 60), 15);
    overlay.SetPen(255, 0, 0, 2);
    const long overlayId = wnd.displayOverlay(overlay, KESImageWnd::LAYER_SHAPE);
    VorOverlay overlayBack;
    if (overlayId < 0 || wnd.getOverlayShape(overlayId, &overlayBack) != 0
        || overlayBack.OverlayType() != overlay.OverlayType())
        return 13;
    if (wnd.getShapeIDS().size() != 2)
        return 14;

    unsigned char r = 0, g = 0, bl = 0;
    unsigned long width = 0;
    if (wnd.setPen(0, 128, 255, 3) != 0 || wnd.getPen(&r, &g, &bl, &width) != 0 || g != 128 || width != 3)
        return 15;
    if (wnd.drawRect() != 0 || wnd.resetDraw() != 0)
        return 16;

    // A path of results, records on the picture and on the screen, and the
    // host's selection: every type these calls take comes with the one header.
    VorOverlayPath path;
    path.Append(overlay);
    VorOverlay legend;
    legend.GenText(VorPoint(8, 20), "legend", VorFont("", 12));
    const long pathId = wnd.displayOverlayPath(path, KESImageWnd::LAYER_SHAPE);
    if (pathId < 0 || wnd.displayOverlay(overlay, KESImageWnd::LAYER_IMAGE) < 0
        || wnd.displayOverlay(legend, KESImageWnd::LAYER_FORE) < 0
        || wnd.getShapeIDS(KESImageWnd::LAYER_FORE).size() != 1)
        return 19;
    emit wnd.selectShape(qlonglong(pathId));
    double scale = 0;
    if (wnd.getZoomRatio(&scale) != 0 || !(scale > 0))
        return 20;
    if (wnd.removeShape(roiId) != 0 || wnd.getROIShape(roiId, &back) != -1 || wnd.clear() != 0
        || !wnd.getShapeIDS().isEmpty())
        return 17;
    return wnd.destory() == 0 ? 0 : 18;
}

} // namespace

int main(int argc, char** argv)
{
    if (const int failed = checkDataModel())
        return failed;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (const int failed = checkShapeCalls())
        return failed;
    std::puts("consumer ok");
    return 0;
}
