#pragma once

// Region masks as the data model hands them over (one 8-bit channel, 0
// outside), and the colour a partly transparent region shows over what lies
// beneath it, worked out through the same painting the window does.

#include "kitpixels.h"

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

} // namespace Kit
