#include "ImageLayer.h"

#include "datainterface.h"
#include "imageconversion.h"
#include "imagectrlscene.h"
#include "odshape.h"
#include "staticshape.h"
#include "viewpainter.h"
#include "odregion.h"
#include "regionmask.h"
#include "threadannotations.h"

#include "VORMV.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorROI.h"
#include "VorRegion.h"

#include <QGraphicsView>
#include <QMatrix>
#include <QMutexLocker>
#include <QPainter>
#include <QPen>

#include <cmath>
#include <utility>

namespace {

// The single-precision tolerance of the fit, as a double: 9.999999974752427e-07.
const double kFitTolerance = double(0.000001f);

// The smaller ratio wins; within the tolerance the width ratio is preferred.
double fitRatio(double rw, double rh)
{
    return rw - rh > kFitTolerance ? rh : rw;
}

// The largest indexed picture that gets a 32-bit paint form, in pixels (that
// form is then 128 MB). A larger one is painted as it is: the paint engine
// reads only the pixels the view shows through the colour table, slower per
// pixel but without a copy four times the picture's size.
constexpr qint64 kLargestPaintForm = qint64(1) << 25;

bool wantsPaintForm(const QImage& image)
{
    return image.format() == QImage::Format_Indexed8 && qint64(image.width()) * image.height() <= kLargestPaintForm;
}

// The colour of a run's region, whatever its overlay brings.
constexpr uchar kRunRegionBlue = 0;
constexpr uchar kRunRegionGreen = 255;
constexpr uchar kRunRegionRed = 0;

} // namespace

ImageLayer::ImageLayer(ImageCtrlScene* scene)
    : m_scene(scene)
    , m_zoomModel(VOR_ZOOM_FIT)
    , m_vorImage(nullptr)
    , m_region(new ODRegion(scene))
    , m_isVorImg(true)
    , m_paintImageKey(0)
{
}

// The stored VorImage copy is not freed here: the layer hands it out by pointer
// (GetVorImage) and the host may still read it while the window goes down.
ImageLayer::~ImageLayer()
{
    m_backGroundItems.clear();
    delete m_region;
    m_region = nullptr;
}

bool ImageLayer::LoadVorImage(QImage& image)
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    // The host's picture brings its own buffer: nothing is kept to write over.
    recycleQueueLocked();
    releaseSpareLocked();
    if (image.isNull())
        return false;
    m_pendingImages.append(image);
    if (wantsPaintForm(image))
        m_pendingPaintImage = ConvertIndexedToPaintImage(image);
    return true;
}

bool ImageLayer::LoadVorImage(VorImage* image)
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    if (!storeCopyLocked(image))
        return false;
    if (m_zoomModel == VOR_ZOOM_FIT)
        m_scene->setScale(GetFitImageScaledValue());
    queueConvertedLocked();
    return true;
}

bool ImageLayer::runLoadVorImage(VorImage* image)
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    if (!storeCopyLocked(image) || m_vorImage->Height() < 0 || m_vorImage->Width() < 0)
        return false;
    queueConvertedLocked();
    return true;
}

bool ImageLayer::storeCopyLocked(VorImage* image)
{
    // The queue is emptied first: a refused picture also loses the one that
    // was waiting, and an invalid copy stays stored.
    recycleQueueLocked();
    if (!m_vorImage)
        m_vorImage = new VorImage;
    if (image)
        *m_vorImage = *image;
    else
        *m_vorImage = VorImage();
    noteStoredSizeLocked();
    return IsValidVorImage(m_vorImage);
}

void ImageLayer::noteStoredSizeLocked()
{
    m_storedWidth = m_vorImage ? m_vorImage->Width() : 0;
    m_storedHeight = m_vorImage ? m_vorImage->Height() : 0;
    m_storedVorImage = m_vorImage != nullptr;
}

void ImageLayer::recycleQueueLocked()
{
    if (m_pendingImages.isEmpty())
        return;
    m_spareImage = m_pendingImages.takeFirst();
    m_sparePaintImage = std::move(m_pendingPaintImage);
    m_pendingPaintImage = QImage();
    m_pendingImages.clear();
}

void ImageLayer::releaseSpareLocked()
{
    m_spareImage = QImage();
    m_sparePaintImage = QImage();
}

void ImageLayer::queueConvertedLocked()
{
    // All the pixel work of a picture happens here, in the loading thread: the
    // conversion and, for an indexed picture, the 32-bit form that painting
    // draws. Both write over the buffers of the picture last replaced when
    // nobody else holds them.
    QImage picture = ConvertVorImageToQImage(m_vorImage, std::move(m_spareImage));
    m_spareImage = QImage();
    if (wantsPaintForm(picture))
        m_pendingPaintImage = ConvertIndexedToPaintImage(picture, std::move(m_sparePaintImage));
    m_sparePaintImage = QImage();
    m_pendingImages.append(picture);
}

QImage ImageLayer::VorImageToQImage(VorImage* image)
{
    return ConvertVorImageToQImage(image);
}

void ImageLayer::QImageToKesImage(const QImage& image, VorImage* target)
{
    ConvertQImageToVorImage(image, target);
}

double ImageLayer::applyScale(double scale, double viewWidth, double viewHeight, bool fitToView)
{
    m_scene->setSceneRect(QRectF(m_image.rect()));
    if (!m_scene->views().isEmpty())
        m_scene->views().at(0)->setSceneRect(m_scene->sceneRect());
    if (fitToView) {
        // No zero test on this path: a picture of no size gives an infinite or
        // undefined ratio, and the scale takes it as it is.
        const double rw = viewWidth / double(m_image.width());
        const double rh = viewHeight / double(m_image.height());
        scale = fitRatio(rw, rh);
        m_scene->setScale(scale);
    }
    return scale;
}

void ImageLayer::setViewMatrix(double scale)
{
    // The matrix takes the computed scale, not the stored one; the two differ
    // only for a scale not above 0, which the scene stores as 1.0. A picture
    // of no size fits to no finite scale: the view then keeps its matrix, so
    // that it goes on painting the grey background.
    if (!std::isfinite(scale))
        return;
    if (!m_scene->views().isEmpty())
        m_scene->views().at(0)->setMatrix(ViewPainter::viewMatrix(scale), false);
}

void ImageLayer::Update(bool takeQueued)
{
    m_imageMutex.lock();
    // Told to ThreadSanitizer: the lock orders this take-over after the worker's load.
    ThreadOrder::takeOver(&m_imageMutex);
    if (takeQueued && m_pendingImages.isEmpty()) {
        ThreadOrder::handOver(&m_imageMutex);
        m_imageMutex.unlock();
        return;
    }
    const double scale = m_scene->getScale();
    double viewWidth = 0.0;
    double viewHeight = 0.0;
    m_scene->getViewSize(viewWidth, viewHeight);
    if (takeQueued) {
        // The picture that leaves the screen keeps its buffers for the next
        // load to write over when a stream goes on at the same size; it takes
        // the place of the queued one, so the layer never holds more than two
        // pictures. A picture of another size, or one too large to keep a
        // second of, is let go at once.
        QImage leaving = std::move(m_image);
        QImage leavingPaint = std::move(m_paintImage);
        m_image = m_pendingImages.takeFirst();
        releaseSpareLocked();
        if (leaving.size() == m_image.size() && leaving.format() == m_image.format()
            && qint64(leaving.width()) * leaving.height() <= kLargestPaintForm) {
            m_spareImage = std::move(leaving);
            m_sparePaintImage = std::move(leavingPaint);
        }
        m_paintImage = std::move(m_pendingPaintImage);
        m_pendingPaintImage = QImage();
        m_paintImageKey = m_image.cacheKey();
    }
    const double matrixScale = applyScale(scale, viewWidth, viewHeight, m_zoomModel == VOR_ZOOM_FIT);
    if (takeQueued) {
        // A queued picture is taken over with the matrix set under the lock.
        setViewMatrix(matrixScale);
        ThreadOrder::handOver(&m_imageMutex);
        m_imageMutex.unlock();
    } else {
        ThreadOrder::handOver(&m_imageMutex);
        m_imageMutex.unlock();
        setViewMatrix(matrixScale);
    }
}

void ImageLayer::show()
{
    m_scene->update(QRectF());
}

const QImage& ImageLayer::paintableImage()
{
    if (!wantsPaintForm(m_image))
        return m_image;
    if (m_paintImageKey != m_image.cacheKey() || m_paintImage.isNull()) {
        // A load makes this form beside the picture; only a picture changed
        // since, through its address, is converted here.
        m_paintImage = ConvertIndexedToPaintImage(m_image, std::move(m_paintImage));
        m_paintImageKey = m_image.cacheKey();
    }
    return m_paintImage;
}

void ImageLayer::drawBackground(QPainter* painter, const QRectF& exposed)
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    const QRectF rect(0, 0, m_image.width(), m_image.height());
    if (rect.width() <= 0 || rect.height() <= 0)
        return;
    // Only the exposed part is drawn; no smoothing, so magnified pixels stay
    // sharp squares.
    painter->drawImage(exposed, paintableImage(), exposed);
    if (m_region) {
        const QImage region = m_region->regionImage();
        if (region.width() > 0 && region.height() > 0)
            painter->drawImage(QRect(0, 0, region.width(), region.height()), region);
    }
    paintBackGroundItems(painter);
}

void ImageLayer::paintBackGroundItems(QPainter* painter)
{
    const QMap<long long, BackGroundItem> items = m_backGroundItems;
    for (const BackGroundItem& item : items) {
        if (!item.GetVisible())
            continue;
        QPen pen = painter->pen();
        pen.setWidth(int(item.getLineWidth()));
        pen.setColor(item.GetPenColor());
        switch (item.type()) {
        case StaticShape::TurnedRectCode:
            StaticShape::paintTurned(painter, pen, item.GetPainterPath(), item.rotation(), StaticShape::TurnedRect);
            break;
        case StaticShape::TurnedEllipseCode:
            StaticShape::paintTurned(painter, pen, item.GetPainterPath(), item.rotation(),
                                     StaticShape::TurnedEllipse);
            break;
        case VorROI::ROI_IRREGULAR:
            // An open free line is filled with its brush on this layer; no
            // other kind gets a brush.
            painter->save();
            painter->setPen(pen);
            painter->setBrush(QBrush(item.GetBrushColor(), Qt::SolidPattern));
            painter->drawPath(item.GetPainterPath());
            painter->restore();
            break;
        case StaticShape::PathText:
            painter->save();
            painter->setPen(pen);
            painter->setFont(item.getFont());
            painter->drawText(item.getTextRect(), Qt::AlignTop | Qt::AlignLeft, item.getText());
            painter->restore();
            break;
        default:
            // Without save: the pen stays set for the next record, which sets
            // its own.
            painter->setPen(pen);
            painter->drawPath(item.GetPainterPath());
            break;
        }
    }
}

long ImageLayer::insertIfValidLocked(const BackGroundItem& item)
{
    if (!item.isValid())
        return -1;
    const long id = ODShape::NextID();
    m_backGroundItems.insert(id, item);
    return id;
}

void ImageLayer::dressInSceneLook(BackGroundItem& item)
{
    item.SetPenColor(m_scene->getPenColor());
    item.SetBrushColor(m_scene->getBrushColor());
    item.setCrossSize(m_scene->getCrossSize());
    item.setFont(m_scene->getFont());
    item.setLineWidth(m_scene->getLineWidth());
}

// The GUI-thread calls take the lock too: a worker's runDrawShape may be
// writing the records at the same moment. Each lock ends before show().
long ImageLayer::insertAndShow(const BackGroundItem& item)
{
    long id = -1;
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        id = insertIfValidLocked(item);
    }
    show();
    return id;
}

long ImageLayer::DrawROI(VorROI& roi)
{
    BackGroundItem item(roi, m_scene);
    dressInSceneLook(item);
    return insertAndShow(item);
}

long ImageLayer::DrawOverlay(VorOverlay& overlay)
{
    return insertAndShow(BackGroundItem(overlay, m_scene));
}

long ImageLayer::DrawOverlayPath(VorOverlayPath& path)
{
    long last = -1;
    for (int i = 0; i < path.Length(); ++i) {
        // Built without the scene: a point's cross has half size 5, and the
        // cross size set afterwards does not rebuild it.
        BackGroundItem item(path[i], nullptr);
        dressInSceneLook(item);
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        const long id = insertIfValidLocked(item);
        if (id != -1)
            last = id;
    }
    show();
    return last;
}

QList<long> ImageLayer::runDrawShape(VorOverlayPath& path)
{
    QList<long> ids;
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    for (int i = 0; i < path.Length(); ++i) {
        VorOverlay overlay = path[i];
        if (overlay.OverlayType() == VorOverlay::OV_REGION) {
            // A region replaces the region image before it and takes no id.
            VorRegion region;
            overlay.GetRegion(&region);
            loadRegionOverlayLocked(region);
            continue;
        }
        const long id = insertIfValidLocked(BackGroundItem(overlay, nullptr));
        if (id != -1)
            ids.append(id);
    }
    return ids;
}

long ImageLayer::ShapeVisible(long long id, bool visible)
{
    long result = -1;
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        if (m_backGroundItems.contains(id)) {
            BackGroundItem copy = m_backGroundItems.value(id);
            copy.SetVisible(visible);
            m_backGroundItems.remove(id);
            m_backGroundItems.insert(id, copy);
            result = long(id);
        }
    }
    show();
    return result;
}

long ImageLayer::removeShape(long id)
{
    long result = -1;
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        if (m_backGroundItems.remove(id) > 0)
            result = id;
    }
    show();
    return result;
}

void ImageLayer::removeShapeList(QList<long> idList)
{
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        for (long id : qAsConst(idList))
            m_backGroundItems.remove(id);
    }
    show();
}

void ImageLayer::clearShape()
{
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        m_backGroundItems.clear();
        resetRegionLocked();
    }
    m_scene->update(QRectF());
}

QList<long> ImageLayer::getShapeIDS()
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    QList<long> ids;
    for (long long id : m_backGroundItems.keys())
        ids.append(long(id));
    return ids;
}

QMap<long long, BackGroundItem> ImageLayer::backGroundItems()
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    return m_backGroundItems;
}

ODRegion* ImageLayer::GetRegion() const
{
    return m_region;
}

void ImageLayer::runDrawRegion(VorRegion& region)
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    loadRegionOverlayLocked(region);
}

void ImageLayer::resetRegion()
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    resetRegionLocked();
}

void ImageLayer::loadRegionOverlayLocked(VorRegion& region)
{
    // The mask becomes a colour picture, green wherever a byte is not 0 and
    // black elsewhere, then a QImage whose black is made see-through.
    VorImage binary;
    VORMV::VorRegionToBinImage(&binary, region);
    binary = MaskToColourPicture(&binary, kRunRegionBlue, kRunRegionGreen, kRunRegionRed);
    m_region->LoadVorRegion(&binary);
    QImage image = VorImageToQImage(&binary);
    const QImage seeThrough = image.createMaskFromColor(QColor(0, 0, 0, 255).rgb(), Qt::MaskOutColor);
    image.setAlphaChannel(seeThrough);
    m_region->setRegionImage(image);
}

void ImageLayer::resetRegionLocked()
{
    VorImage empty;
    m_region->LoadVorRegion(&empty);
    QImage none(0, 0, QImage::Format_RGB32);
    m_region->setRegionImage(none);
}

float ImageLayer::GetFitImageScaledValue() const
{
    double viewWidth = 0.0;
    double viewHeight = 0.0;
    m_scene->getViewSize(viewWidth, viewHeight);
    double width = 0.0;
    double height = 0.0;
    if (m_isVorImg) {
        if (!hasVorImage())
            return 1.0f;
        width = storedWidth();
        height = storedHeight();
    } else {
        width = m_image.width();
        height = m_image.height();
        if (width == 0.0 || height == 0.0)
            return 1.0f;
    }
    return float(fitRatio(viewWidth / width, viewHeight / height));
}

void ImageLayer::GetPixel(QPointF point, double* r, double* g, double* b) const
{
    // The test rounds and the read truncates: x = width - 0.4 rounds to width and
    // lies outside, x = -0.4 rounds to 0 and reads column 0.
    bool inside = std::isfinite(point.x()) && std::isfinite(point.y())
                  && std::fabs(point.x()) < 1e9 && std::fabs(point.y()) < 1e9
                  && m_image.rect().contains(point.toPoint(), false);
    double red = 153.0, green = 153.0, blue = 153.0;
    if (inside) {
        const QColor colour(m_image.pixel(int(point.x()), int(point.y())));
        red = colour.red();
        green = colour.green();
        blue = colour.blue();
    }
    if (r)
        *r = red;
    if (g)
        *g = green;
    if (b)
        *b = blue;
}

void ImageLayer::ClearVorImage()
{
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        delete m_vorImage;
        m_vorImage = nullptr;
        noteStoredSizeLocked();
        // A one-pixel picture in the unchanged scene rectangle; its pixel is
        // transparent black.
        m_image = QImage(1, 1, QImage::Format_ARGB32);
        m_image.fill(0);
        m_paintImage = QImage();
        releaseSpareLocked();
    }
    show();
}

void ImageLayer::SetZoomModel(VOR_ZOOM_MODEL model)
{
    m_zoomModel = model;
}

VOR_ZOOM_MODEL ImageLayer::GetZoomModel() const
{
    return m_zoomModel;
}

VorImage* ImageLayer::GetVorImage() const
{
    return m_vorImage;
}

bool ImageLayer::copyVorImage(VorImage* target)
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    if (!m_vorImage)
        return false;
    *target = *m_vorImage;
    return true;
}

QImage* ImageLayer::GetQImage()
{
    return &m_image;
}

void ImageLayer::setIsVorImg(bool isVorImg)
{
    m_isVorImg = isVorImg;
}

bool ImageLayer::isVorImg() const
{
    return m_isVorImg;
}

int ImageLayer::pendingCount()
{
    QMutexLocker lock(&m_imageMutex);
    ThreadOrder::Held held(&m_imageMutex);
    return m_pendingImages.size();
}

void ImageLayer::drawDisplayPixel(QPainter* painter, QPoint& start, QPoint& end, int cellWidth, int cellHeight,
                                  QPoint& first)
{
    QList<QRect> rects;
    QList<QString> texts;
    {
        QMutexLocker lock(&m_imageMutex);
        ThreadOrder::Held held(&m_imageMutex);
        const int width = m_image.width();
        const int height = m_image.height();
        const QImage::Format format = m_image.format();
        int bytesPerPixel = 0;
        switch (format) {
        case QImage::Format_Indexed8: bytesPerPixel = 1; break;
        case QImage::Format_RGB32:
        case QImage::Format_ARGB32: bytesPerPixel = 4; break;
        case QImage::Format_RGB888: bytesPerPixel = 3; break;
        default: break;
        }
        // Cells of no size would never step forward.
        if (bytesPerPixel == 0 || cellWidth <= 0 || cellHeight <= 0)
            return;

        for (qint64 row = first.y(), y = start.y(); y < end.y() && row < height; ++row, y += cellHeight) {
            // A picture smaller than the viewport starts at a negative row or
            // column: those cells hold no pixel and get no label.
            if (row < 0)
                continue;
            const uchar* line = m_image.constScanLine(int(row));
            for (qint64 column = first.x(), x = start.x(); x < end.x() && column < width; ++column, x += cellWidth) {
                if (column < 0)
                    continue;
                const uchar* p = line + column * bytesPerPixel;
                QString text;
                if (bytesPerPixel == 1) {
                    text = "gray: " + QString::number(p[0]);
                } else if (bytesPerPixel == 4) {
                    // In memory order b0 is blue on a little-endian machine: "r:"
                    // shows blue and "b:" blue plus 2. Kept as hosts know it.
                    text = "r: " + QString::number(p[0]) + "\ng: " + QString::number(p[1]) + "\nb: "
                           + QString::number(p[0] + 2);
                } else {
                    text = "r: " + QString("%1").arg(p[0], 3, 10, QChar('0')) + "\ng: "
                           + QString("%1").arg(p[1], 3, 10, QChar('0')) + "\nb: "
                           + QString("%1").arg(p[2], 3, 10, QChar('0'));
                }
                rects.append(QRect(int(x), int(y), cellWidth, cellHeight));
                texts.append(text);
            }
        }
    }
    for (int i = 0; i < rects.size(); ++i)
        painter->drawText(rects[i], Qt::AlignCenter, texts[i]);
}
