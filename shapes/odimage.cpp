#include "odimage.h"

#include "geometryhelpers.h"
#include "numericguards.h"

#include "VorImage.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPixmap>
#include <QPoint>

#include <climits>
#include <cmath>
#include <cstring>

namespace {

// VorImage's depth code of 8 bits a channel.
constexpr int kEightBitDepth = 0;
constexpr int kGreyChannels = 1;
constexpr int kColourChannels = 3;
constexpr int kGreyLevels = 256;
// Bytes of a colour pixel that are copied; the fourth of the RGB32 pixel is not.
constexpr int kCopiedBytes = 3;
constexpr int kRgb32Bytes = 4;
// The most pixels a shown picture may have: what a 32-bit picture of at most
// INT_MAX bytes holds.
constexpr qint64 kLargestShownPixels = qint64(INT_MAX) / kRgb32Bytes;

// A rectangle with a side that is no number or infinite, or one whose picture
// would be too large to hold, shows an empty pixmap where it was.
bool isShowable(const QRectF& shown, int width, int height)
{
    const bool finite = std::isfinite(shown.left()) && std::isfinite(shown.top()) && std::isfinite(shown.right())
                        && std::isfinite(shown.bottom());
    return finite && qint64(width) * qint64(height) <= kLargestShownPixels;
}

} // namespace

ODImage::ODImage(QGraphicsScene* scene)
    : ODBoxShape(scene, DM_RECT1)
    , m_qImage(new QImage(1, 1, QImage::Format_ARGB32))
    , m_pixmapItem(nullptr)
    , m_image(nullptr)
{
    // Until a picture is set the shape shows one transparent pixel.
    m_qImage->fill(Qt::transparent);
    m_pixmapItem = own(m_scene->addPixmap(QPixmap::fromImage(*m_qImage)));
}

ODImage::ODImage(QGraphicsScene* scene, QPointF point)
    : ODImage(scene)
{
    startAt(point);
}

ODImage::~ODImage()
{
    deleteItems({m_pixmapItem});
    delete m_qImage;
    m_qImage = nullptr;
}

void ODImage::UpdateHandles()
{
    const QPointF centre = m_rect.center();
    // Three of the edge middles pass through whole pixels; the right one
    // keeps its fraction.
    const QPoint topCentre(TruncateToInt(centre.x()), TruncateToInt(m_rect.top()));
    const QPoint bottomCentre(TruncateToInt(centre.x()), TruncateToInt(m_rect.bottom()));
    const QPoint leftCentre(TruncateToInt(m_rect.left()), TruncateToInt(centre.y()));
    setHandles({m_rect.topLeft(), topCentre, m_rect.topRight(), QPointF(m_rect.right(), centre.y()),
                m_rect.bottomRight(), bottomCentre, m_rect.bottomLeft(), leftCentre});
}

void ODImage::ShowShape()
{
    UpdateCurData();
    QRectF shown = m_rect;
    AdjustRect(shown);
    const int width = TruncateToInt(shown.width());
    const int height = TruncateToInt(shown.height());
    if (!isShowable(shown, width, height)) {
        m_pixmapItem->setPixmap(QPixmap());
        m_pixmapItem->show();
        return;
    }
    const QPixmap pixmap = QPixmap::fromImage(*m_qImage);
    m_pixmapItem->setPixmap(pixmap.scaled(width, height, Qt::IgnoreAspectRatio, Qt::FastTransformation));
    m_pixmapItem->setPos(shown.x(), shown.y());
    m_pixmapItem->show();
}

void ODImage::HideShape()
{
    m_pixmapItem->hide();
}

int ODImage::HitTest(QPointF point, bool handles)
{
    if (handles)
        return hitHandle(point);
    return m_pixmapItem->sceneBoundingRect().contains(point) ? 1 : 0;
}

void ODImage::SetRect(float x1, float y1, float x2, float y2)
{
    shownStateChanged();
    setSides(x1, y1, x2, y2);
}

void ODImage::setImage(VorImage* image)
{
    shownStateChanged();
    m_image = image;
    KESImageToQImage(image);
}

VorImage* ODImage::image() const
{
    return m_image;
}

bool ODImage::GetParam(double* x1, double* y1, double* x2, double* y2) const
{
    return readSides(x1, y1, x2, y2);
}

void ODImage::setZValue(long z)
{
    setItemsZValue(z, {m_pixmapItem});
}

void ODImage::KESImageToQImage(VorImage* image)
{
    if (!image)
        return;
    const int channels = image->Channels();
    if (channels < 1)
        return;
    const int width = image->Width();
    const int height = image->Height();
    const int depth = image->BitDepth();
    const int step = image->Step();
    const unsigned char* data = image->ImageData();
    if (!data || width < 1 || height < 1 || depth != kEightBitDepth)
        return;

    if (channels == kGreyChannels) {
        // Rows are read at a stride of the width, not of the picture's step.
        auto* grey = new QImage(width, height, QImage::Format_Indexed8);
        if (grey->isNull()) {
            // Too large to hold: the picture shown so far stays.
            delete grey;
            return;
        }
        for (int y = 0; y < height; ++y)
            std::memcpy(grey->scanLine(y), data + qsizetype(y) * width, size_t(width));
        grey->setColorCount(kGreyLevels);
        for (int i = 0; i < kGreyLevels; ++i)
            grey->setColor(i, qRgb(i, i, i));
        delete m_qImage;
        m_qImage = grey;
        return;
    }
    if (channels == kColourChannels) {
        auto* colour = new QImage(width, height, QImage::Format_RGB32);
        if (colour->isNull()) {
            delete colour;
            return;
        }
        // The fourth byte of each pixel is never copied; it is opaque from here.
        colour->fill(QColor(Qt::black));
        for (int y = 0; y < height; ++y) {
            // Row y shows the source row above it, and row 0 the first row: the
            // picture lies one row low and its first row shows twice.
            const unsigned char* source = data + qsizetype(y > 0 ? y - 1 : 0) * step;
            uchar* target = colour->scanLine(y);
            for (int x = 0; x < width; ++x)
                std::memcpy(target + x * kRgb32Bytes, source + x * kColourChannels, kCopiedBytes);
        }
        delete m_qImage;
        m_qImage = colour;
    }
}
