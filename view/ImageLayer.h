#pragma once

#include "BackGroundItem.h"
#include "kesimagewnd_export.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QPointF>
#include <QRectF>

#include <atomic>

class ImageCtrlScene;
class ODRegion;
class QPainter;
class VorImage;
class VorOverlay;
class VorOverlayPath;
class VorROI;
class VorRegion;

// What the last zoom step was. Only VOR_ZOOM_FIT changes behaviour: a new
// picture is then fitted to the view; the other three keep the scale.
enum VOR_ZOOM_MODEL {
    VOR_ZOOM_IN = 0,
    VOR_ZOOM_OUT = 1,
    VOR_ZOOM_FIT = 2,
    VOR_ZOOM_ORG = 3
};

// The bottom layer of the scene: it keeps the picture on show, turns VorImage
// data into a QImage, paints the picture into the scene background and works
// out the scale that fits the picture to the view. A picture passes from the
// stored VorImage copy through a queue of at most one converted QImage to the
// QImage on show. Over the picture it paints the region image and the static
// records of LAYER_IMAGE (BackGroundItem by value, keyed by id, in image
// pixels). m_imageMutex guards the picture, the queue, the records and the
// region image against a worker thread.
class KESIMAGEWND_TESTS_EXPORT ImageLayer
{
public:
    explicit ImageLayer(ImageCtrlScene* scene);
    ~ImageLayer();

    ImageLayer(const ImageLayer&) = delete;
    ImageLayer& operator=(const ImageLayer&) = delete;

    // Queue a shared copy of a QImage; false for a null image.
    bool LoadVorImage(QImage& image);
    // Store a copy of a VorImage, convert it and queue the result; false, with
    // the invalid copy stored, when the picture has no width or height.
    bool LoadVorImage(VorImage* image);
    // The worker's form of the load: copy, convert and queue, touching neither
    // the scene nor the view, and with no fit; false also for negative sizes.
    bool runLoadVorImage(VorImage* image);

    QImage VorImageToQImage(VorImage* image);
    void QImageToKesImage(const QImage& image, VorImage* target);

    // true: take over a queued picture; false: re-apply the current one.
    void Update(bool takeQueued);
    void show();
    // Paints the picture, then the region image over it, in scene coordinates.
    void drawBackground(QPainter* painter, const QRectF& exposed);

    // The region image, created with the layer and owned by it.
    ODRegion* GetRegion() const;
    // Shows a region of a run as the region image, green where the region is
    // and see-through elsewhere, whatever colour its overlay brings; it
    // replaces the region before. Takes m_imageMutex and does not repaint.
    void runDrawRegion(VorRegion& region);
    // Empties the region image, so that painting skips it. Takes m_imageMutex
    // and does not repaint.
    void resetRegion();

    // Static records. Each valid record takes an id from the process-wide
    // counter; a kind without a static form is refused with -1. Every call but
    // runDrawShape repaints the whole scene, whatever its result.
    // A ROI in the scene's look (pen, brush, cross size, font, line width).
    long DrawROI(VorROI& roi);
    // An overlay in its own colours only; no setting of the scene applies.
    long DrawOverlay(VorOverlay& overlay);
    // Each overlay with the scene's look where it brings no colour of its
    // own; a point's cross keeps half size 5. The id of the last valid record.
    long DrawOverlayPath(VorOverlayPath& path);
    // The worker's form: records in the overlays' own colours, and a region
    // overlay becomes the region image (no id). The ids made, in order. Takes
    // m_imageMutex throughout and does not repaint.
    QList<long> runDrawShape(VorOverlayPath& path);
    // The id, or -1 for an unknown one; the record keeps its id and place.
    long ShapeVisible(long long id, bool visible);
    long removeShape(long id);
    void removeShapeList(QList<long> idList);
    // Removes every record and the region image.
    void clearShape();
    // The ids of the records, ascending.
    QList<long> getShapeIDS();
    // A copy of the records, for those who read them.
    QMap<long long, BackGroundItem> backGroundItems();

    float GetFitImageScaledValue() const;
    // Colour at a scene point; 153 on all channels outside the picture.
    void GetPixel(QPointF point, double* r, double* g, double* b) const;
    void ClearVorImage();

    void SetZoomModel(VOR_ZOOM_MODEL model);
    VOR_ZOOM_MODEL GetZoomModel() const;
    VorImage* GetVorImage() const;
    // What the GUI thread asks of the stored VorImage while a worker may be
    // storing a newer one: whether one is stored, its size, and whether it is
    // valid (IsValidVorImage). Kept beside the copy at each store, so that
    // the asker never reads the copy itself.
    bool hasVorImage() const { return m_storedVorImage.load(); }
    int storedWidth() const { return m_storedWidth.load(); }
    int storedHeight() const { return m_storedHeight.load(); }
    bool hasValidVorImage() const { return hasVorImage() && storedWidth() != 0 && storedHeight() != 0; }
    // Assigns the stored VorImage to target under m_imageMutex, so that a
    // worker's load cannot change it halfway; false when none is stored.
    bool copyVorImage(VorImage* target);
    QImage* GetQImage();
    void setIsVorImg(bool isVorImg);
    bool isVorImg() const;

    // Pixel value labels: one cell per image pixel from first, stepping by
    // whole cells from start to end, in viewport pixels.
    void drawDisplayPixel(QPainter* painter, QPoint& start, QPoint& end, int cellWidth, int cellHeight,
                          QPoint& first);

    // Pictures waiting for Update(true); at most one.
    int pendingCount();

private:
    double applyScale(double scale, double viewWidth, double viewHeight, bool fitToView);
    void setViewMatrix(double scale);
    const QImage& paintableImage();
    // Empties the queue, stores a copy of the picture; whether it is valid.
    bool storeCopyLocked(VorImage* image);
    void noteStoredSizeLocked();
    // The queue's picture and its paint form become the spare buffers.
    void recycleQueueLocked();
    void releaseSpareLocked();
    // Converts m_vorImage and queues it with its paint form.
    void queueConvertedLocked();
    // The two region steps with m_imageMutex already held by the caller.
    void loadRegionOverlayLocked(VorRegion& region);
    void resetRegionLocked();
    // Inserts a copy of a valid record under a new id; -1 for an invalid one.
    long insertIfValidLocked(const BackGroundItem& item);
    // The same under the lock, then a repaint of the whole scene.
    long insertAndShow(const BackGroundItem& item);
    void dressInSceneLook(BackGroundItem& item);
    void paintBackGroundItems(QPainter* painter);

    ImageCtrlScene* m_scene;
    VOR_ZOOM_MODEL m_zoomModel;
    QImage m_image;
    VorImage* m_vorImage;
    QMap<long long, BackGroundItem> m_backGroundItems;
    ODRegion* m_region;
    mutable QMutex m_imageMutex;
    QList<QImage> m_pendingImages;
    bool m_isVorImg;

    // What painting blits: m_image itself, or for an indexed picture a 32-bit
    // copy made once per picture, so that a paint does not convert the whole
    // picture again. Readers of pixels keep seeing m_image in its own format.
    QImage m_paintImage;
    qint64 m_paintImageKey;
    // The paint form of the queued picture, made by the load beside it.
    QImage m_pendingPaintImage;
    // The buffers of the picture last replaced, on screen or in the queue,
    // which the next load writes over when nobody else shares them. They take
    // the queued picture's place: at most two pictures and their paint forms
    // are held. Guarded by m_imageMutex.
    QImage m_spareImage;
    // The stored VorImage's presence and size, for readers without the lock.
    std::atomic<bool> m_storedVorImage{false};
    std::atomic<int> m_storedWidth{0};
    std::atomic<int> m_storedHeight{0};
    QImage m_sparePaintImage;
};
