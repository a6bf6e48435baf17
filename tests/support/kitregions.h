#pragma once

// Region masks as the data model hands them over (one 8-bit channel, 0
// outside), the colour a partly transparent region shows over what lies
// beneath it, worked out through the same painting the window does, and the
// checks of how both region classes keep their mask.

#include "kitpixels.h"

#include "imagectrlscene.h"

#include "VorImage.h"

#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <QRgb>
#include <QSize>

#include <opencv2/core.hpp>

#include <cmath>
#include <initializer_list>

namespace Kit {

// A mask of the given size, 0 everywhere but inside block, which holds value.
inline VorImage blockMask(QSize size, const QRect& block, uchar value = 255)
{
    cv::Mat mat(size.height(), size.width(), CV_8UC1, cv::Scalar(0));
    const QRect inside = block.intersected(QRect(QPoint(0, 0), size));
    if (!inside.isEmpty())
        mat(cv::Rect(inside.x(), inside.y(), inside.width(), inside.height())).setTo(cv::Scalar(value));
    return VorImage(mat);
}

// A mask of one row holding the given bytes.
inline VorImage rowMask(std::initializer_list<uchar> bytes)
{
    cv::Mat mat(1, int(bytes.size()), CV_8UC1);
    int x = 0;
    for (uchar byte : bytes)
        mat.at<uchar>(0, x++) = byte;
    return VorImage(mat);
}

// The colour that a region pixel (not premultiplied) shows when painted over an
// opaque colour, by the same painting of a picture over another.
inline QRgb regionOver(QRgb below, QRgb region)
{
    QImage target(1, 1, QImage::Format_ARGB32_Premultiplied);
    target.fill(below);
    QImage source(1, 1, QImage::Format_ARGB32);
    source.setPixel(0, 0, region);
    {
        QPainter painter(&target);
        painter.drawImage(QPoint(0, 0), source);
    }
    return target.convertToFormat(QImage::Format_ARGB32).pixel(0, 0);
}

// The viewport pixel that holds a scene point: the pixel it falls in, where
// mapFromScene would round to the nearest pixel corner.
inline QPoint viewportPixelOf(QGraphicsView* view, const QPointF& scenePos)
{
    const QPointF exact = view->viewportTransform().map(scenePos);
    return QPoint(int(std::floor(exact.x())), int(std::floor(exact.y())));
}

// The colour of a grab at the viewport pixel that holds a scene point.
inline QRgb grabbedAt(const QImage& grab, QGraphicsView* view, const QPointF& scenePos)
{
    return grab.pixel(viewportPixelOf(view, scenePos));
}

// A null mask is refused and leaves the mask held, none or the last one.
template <class Region>
void verifyNullMaskIsRefused()
{
    ImageCtrlScene scene;
    Region region(&scene);
    QVERIFY(!region.LoadVorRegion(nullptr));
    QVERIFY(region.mask() == nullptr);
    VorImage mask = rowMask({255, 255, 0});
    QVERIFY(region.LoadVorRegion(&mask));
    QVERIFY(!region.LoadVorRegion(nullptr));
    QVERIFY(region.mask() != nullptr);
    QCOMPARE(region.mask()->Width(), 3);
}

// The region colours the mask as it was loaded, whatever the host writes into
// its own pixels afterwards.
template <class Region>
void verifyLoadKeepsItsOwnCopy()
{
    ImageCtrlScene scene;
    Region region(&scene);
    VorImage mask = rowMask({255, 0});
    QVERIFY(region.LoadVorRegion(&mask));
    mask.ImageData()[0] = 0;
    mask.ImageData()[1] = 255;
    region.Update(255, 0, 0, 255);
    QCOMPARE(region.regionImage().pixel(0, 0), qRgba(255, 0, 0, 255));
    QCOMPARE(region.regionImage().pixel(1, 0), 0u);
    QVERIFY(region.mask() != nullptr);
    QVERIFY(region.mask()->ImageData() != mask.ImageData());
}

// A second mask takes the place of the first in the same held picture.
template <class Region>
void verifySecondLoadReplacesTheMask()
{
    ImageCtrlScene scene;
    Region region(&scene);
    VorImage first = blockMask(QSize(8, 8), QRect(0, 0, 8, 8));
    VorImage second = blockMask(QSize(3, 2), QRect(2, 1, 1, 1));
    QVERIFY(region.LoadVorRegion(&first));
    const VorImage* held = region.mask();
    QVERIFY(region.LoadVorRegion(&second));
    QCOMPARE(region.mask(), held);
    region.Update(0, 0, 255, 255);
    const QImage image = region.regionImage();
    QCOMPARE(image.size(), QSize(3, 2));
    QCOMPARE(image.pixel(2, 1), qRgba(0, 0, 255, 255));
    QCOMPARE(image.pixel(0, 0), 0u);
}

} // namespace Kit
