#pragma once

// The kind tables of the two geometry holders of the data model, with the
// samples of their own kinds: a region of interest (a mask besides the shared
// kinds) and an overlay (lines with an arrow or a rake, spoked tori, text,
// regions). roiKinds() and overlayKinds() are built once a process.

#include "kitkinds.h"
#include "kitpictures.h"

#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorROI.h"
#include "VorRegion.h"
#include "VorVar.h"

#include <QByteArray>
#include <QtTest/QTest>

#include <opencv2/core.hpp>

namespace Kit {

using namespace Sample;

inline cv::Mat sampleMaskSource()
{
    cv::Mat m(4, 5, CV_8UC1, cv::Scalar(0));
    m.at<unsigned char>(0, 0) = 1;
    m.at<unsigned char>(2, 3) = 200;
    m.at<unsigned char>(3, 4) = 255;
    return m;
}

// The outputs of a Get call, the mask among them.
struct RoiOutputs : KindOutputs
{
    VorImage mask = greyPicture(1, 1, 99);

    bool untouched() const
    {
        return sharedUntouched() && mask.Width() == 1 && mask.Mat().at<unsigned char>(0, 0) == 99;
    }
};

// The mask from sampleMaskSource(): its size, one 8-bit channel, 255 where the
// source is not 0.
inline void verifySampleMask(const RoiOutputs& o)
{
    QCOMPARE(o.mask.Width(), 5);
    QCOMPARE(o.mask.Height(), 4);
    QCOMPARE(o.mask.Channels(), 1);
    QCOMPARE(o.mask.BitDepth(), int(CV_8U));
    const cv::Mat expected = sampleMaskSource() != 0;
    QCOMPARE(cv::countNonZero(o.mask.Mat() != expected), 0);
}

using RoiKinds = KindTable<VorROI, RoiOutputs>;

inline RoiKinds makeRoiKinds()
{
    RoiKinds t(&VorROI::ROIType, VorROI::ROI_POINT, VorROI::ROI_LINE, VorROI::ROI_RECT1, VorROI::ROI_RECT2,
               VorROI::ROI_ELLIPSE, VorROI::ROI_CIRCLE, VorROI::ROI_POLYGON, VorROI::ROI_IRREGULAR, VorROI::ROI_TORUS,
               VorROI::ROI_ARC);
    t.add({"mask", VorROI::ROI_MASK, [](VorROI& roi) { roi.GenMask(VorImage(sampleMaskSource())); },
           [](const VorROI& roi, RoiOutputs& o) { return roi.GetMask(&o.mask); },
           [](const VorROI& roi) { return roi.GetMask(nullptr); }, nullptr, &verifySampleMask});
    t.add({"closed free line", VorROI::ROI_POLYLINE, [](VorROI& roi) { roi.GenPolyLine(points()); },
           [](const VorROI& roi, RoiOutputs& o) { return roi.GetPolyLine(&o.points); },
           [](const VorROI& roi) { return roi.GetPolyLine(nullptr); }, &RoiKinds::expectPoints});
    t.setVerifySomeNulls(VorROI::ROI_LINE, [](const VorROI& roi) {
        VorPoint end;
        QVERIFY(roi.GetLine(nullptr, &end));
        QCOMPARE(end, kB);
    });
    t.setVerifySomeNulls(VorROI::ROI_TORUS, [](const VorROI& roi) {
        double sweep = 0.0;
        QVERIFY(roi.GetTorus(nullptr, nullptr, nullptr, nullptr, &sweep));
        QCOMPARE(sweep, kV4);
    });
    t.setVerifySomeNulls(VorROI::ROI_ARC, [](const VorROI& roi) {
        VorPoint centre;
        double end = 0.0;
        QVERIFY(roi.GetArc(&centre, nullptr, nullptr, &end));
        QCOMPARE(centre, kA);
        QCOMPARE(end, kV4);
    });
    t.setVerifySomeNulls(VorROI::ROI_RECT2, [](const VorROI& roi) {
        double l2 = 0.0;
        QVERIFY(roi.GetRect2(nullptr, nullptr, &l2, nullptr));
        QCOMPARE(l2, kV2);
    });
    return t;
}

inline const RoiKinds& roiKinds()
{
    static const RoiKinds table = makeRoiKinds();
    return table;
}

const char kSampleText[] = "OK \xC4\xE3\xBA\xC3 \xE4\xBD\xA0";

// A font with every field given.
inline VorFont fontOf(const char* family, int size, int weight, int bold, int italic, int underline, int strikeOut)
{
    VorFont f(family, size);
    f.weight = weight;
    f.bold = decltype(f.bold)(bold);
    f.italic = decltype(f.italic)(italic);
    f.underline = decltype(f.underline)(underline);
    f.strikeOut = decltype(f.strikeOut)(strikeOut);
    return f;
}

// Every field of a font in declaration order, the family's bytes as they are:
// "family size weight bold italic underline strikeOut".
inline QByteArray fieldsOf(const VorFont& f)
{
    QByteArray text(f.S());
    for (int field : {f.size, int(f.weight), int(f.bold), int(f.italic), int(f.underline), int(f.strikeOut)})
        text += ' ' + QByteArray::number(field);
    return text;
}

inline VorFont sampleFont()
{
    return fontOf("\xCB\xCE\xCC\xE5", 17, 63, 1, 0, 1, 1);
}

inline VorRegion sampleRegion()
{
    VorRegion r;
    r.SetRuns({{2, 3, 9}, {4, 0, 1}, {7, 5, 6}});
    return r;
}

inline VorRegion presetRegion()
{
    VorRegion r;
    r.SetRuns({{100, 100, 101}});
    return r;
}

// The outputs of a Get call, the text, its font and the region among them.
struct OverlayOutputs : KindOutputs
{
    VorVar text{"untouched"};
    VorFont font{"untouched", 3};
    VorRegion region = presetRegion();

    bool untouched() const
    {
        return sharedUntouched() && QByteArray(text.S()) == "untouched" && QByteArray(font.S()) == "untouched"
            && font.size == 3 && region == presetRegion();
    }
};

inline void verifySampleText(const OverlayOutputs& o)
{
    QCOMPARE(o.text.ValType(), int(VorVar::VT_TEXT));
    QCOMPARE(QByteArray(o.text.S()), QByteArray(kSampleText));
    QCOMPARE(fieldsOf(o.font), fieldsOf(sampleFont()));
}

inline void verifySampleRegion(const OverlayOutputs& o)
{
    QVERIFY(o.region == sampleRegion());
    QCOMPARE(o.region.Area(), 8LL);
}

using OverlayKinds = KindTable<VorOverlay, OverlayOutputs>;

// The kinds of an overlay: those it shares with a region of interest, and
// its own lines with an arrow or a rake, spoked tori, text, the cross and the
// arrowed line, and regions.
OverlayKinds makeOverlayKinds()
{
    OverlayKinds t(&VorOverlay::OverlayType, VorOverlay::OV_POINT, VorOverlay::OV_LINE, VorOverlay::OV_RECT1, VorOverlay::OV_RECT2,
            VorOverlay::OV_ELLIPSE, VorOverlay::OV_CIRCLE, VorOverlay::OV_POLYGON, VorOverlay::OV_IRREGULAR,
            VorOverlay::OV_TORUS, VorOverlay::OV_ARC);
    t.add({"arrow line", VorOverlay::OV_ARROWLINE, [](VorOverlay& ov) { ov.GenArrowLine(kA, kB); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetArrowLine(&o.a, &o.b); },
           [](const VorOverlay& ov) { return ov.GetArrowLine(nullptr, nullptr); }, &OverlayKinds::expectTwoPoints});
    t.add({"rake rect1", VorOverlay::OV_RAKERECT1,
           [](VorOverlay& ov) { ov.GenRakeRect1(kA, kB, kDirection, kCount); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetRakeRect1(&o.a, &o.b, &o.i[0], &o.i[1]); },
           [](const VorOverlay& ov) { return ov.GetRakeRect1(nullptr, nullptr, nullptr, nullptr); },
           [](KindOutputs& e) { OverlayKinds::expectTwoPoints(e), OverlayKinds::expectCount(e); }});
    t.add({"polyline", VorOverlay::OV_POLYLINE, [](VorOverlay& ov) { ov.GenPolyLine(points()); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetPolyLine(&o.points); },
           [](const VorOverlay& ov) { return ov.GetPolyLine(nullptr); }, &OverlayKinds::expectPoints});
    t.add({"rake rect2", VorOverlay::OV_RAKERECT2,
           [](VorOverlay& ov) { ov.GenRakeRect2(kA, kV1, kV2, kV3, kDirection, kCount); },
           [](const VorOverlay& ov, OverlayOutputs& o) {
               return ov.GetRakeRect2(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.i[0], &o.i[1]);
           },
           [](const VorOverlay& ov) { return ov.GetRakeRect2(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); },
           [](KindOutputs& e) { OverlayKinds::expectTurned(e), OverlayKinds::expectCount(e); }});
    t.add({"spoke torus", VorOverlay::OV_SPOKETORUS,
           [](VorOverlay& ov) { ov.GenSpokeTorus(kA, kV1, kV2, kV3, kV4, kDirection, kCount); },
           [](const VorOverlay& ov, OverlayOutputs& o) {
               return ov.GetSpokeTorus(&o.a, &o.d[0], &o.d[1], &o.d[2], &o.d[3], &o.i[0], &o.i[1]);
           },
           [](const VorOverlay& ov) {
               return ov.GetSpokeTorus(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
           },
           [](KindOutputs& e) { OverlayKinds::expectTorus(e), OverlayKinds::expectCount(e); }});
    t.add({"text", VorOverlay::OV_TEXT, [](VorOverlay& ov) { ov.GenText(kB, kSampleText, sampleFont()); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetText(&o.a, &o.text, &o.font); },
           [](const VorOverlay& ov) { return ov.GetText(nullptr, nullptr, nullptr); },
           [](KindOutputs& e) { e.a = kB; }, &verifySampleText});
    t.add({"cross", VorOverlay::OV_CROSS, [](VorOverlay& ov) { ov.GenCross(kA, kV1, kV2); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetCross(&o.a, &o.d[0], &o.d[1]); },
           [](const VorOverlay& ov) { return ov.GetCross(nullptr, nullptr, nullptr); },
           [](KindOutputs& e) { e.a = kA, e.d[0] = kV1, e.d[1] = kV2; }});
    t.add({"arrowed line", VorOverlay::OV_POLYARROW, [](VorOverlay& ov) { ov.GenPolyArrow(points()); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetPolyArrow(&o.points); },
           [](const VorOverlay& ov) { return ov.GetPolyArrow(nullptr); }, &OverlayKinds::expectPoints});
    t.add({"region", VorOverlay::OV_REGION, [](VorOverlay& ov) { ov.GenRegion(sampleRegion()); },
           [](const VorOverlay& ov, OverlayOutputs& o) { return ov.GetRegion(&o.region); },
           [](const VorOverlay& ov) { return ov.GetRegion(nullptr); }, nullptr, &verifySampleRegion});
    t.setVerifySomeNulls(VorOverlay::OV_SPOKETORUS, [](const VorOverlay& ov) {
        int count = 0;
        double sweep = 0.0;
        QVERIFY(ov.GetSpokeTorus(nullptr, nullptr, nullptr, nullptr, &sweep, nullptr, &count));
        QCOMPARE(sweep, kV4);
        QCOMPARE(count, kCount);
    });
    t.setVerifySomeNulls(VorOverlay::OV_RAKERECT1, [](const VorOverlay& ov) {
        int count = 0;
        QVERIFY(ov.GetRakeRect1(nullptr, nullptr, nullptr, &count));
        QCOMPARE(count, kCount);
    });
    t.setVerifySomeNulls(VorOverlay::OV_TEXT, [](const VorOverlay& ov) {
        VorVar text;
        QVERIFY(ov.GetText(nullptr, &text, nullptr));
        QCOMPARE(QByteArray(text.S()), QByteArray(kSampleText));
    });
    return t;
}

inline const OverlayKinds& overlayKinds()
{
    static const OverlayKinds table = makeOverlayKinds();
    return table;
}

} // namespace Kit
