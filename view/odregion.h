#pragma once

#include "kesimagewnd_export.h"

#include "VorRegion.h"

#include <QImage>

class ImageCtrlScene;
class VorImage;

// The region image of the image layer: a mask turned into a coloured, partly
// transparent picture that ImageLayer::drawBackground paints over the picture
// and under every graphics item, at image pixel (0, 0). The layer creates one
// with itself and only its content changes: a mask is loaded, then Update
// colours it, or a finished picture is handed in with setRegionImage. Readers
// and writers inside the image layer hold its m_imageMutex.
class KESIMAGEWND_TESTS_EXPORT ODRegion
{
public:
    // Takes the next id of the process-wide counter.
    explicit ODRegion(ImageCtrlScene* scene);
    // Frees the mask and clears the scene's region background pixmap.
    ~ODRegion();

    ODRegion(const ODRegion&) = delete;
    ODRegion& operator=(const ODRegion&) = delete;

    long GetID() const;

    // Keeps a copy of the mask, created on first use; false for a null mask,
    // which leaves the one held.
    bool LoadVorRegion(VorImage* mask);
    // Colours the held mask into the region image and sets the view's matrix
    // again at the scene's scale; nothing without a mask.
    void Update(unsigned char r, unsigned char g, unsigned char b, unsigned char a);
    // Repaints the scene background, where the region image is painted.
    void show();
    // The region image lies in the background, under every item: no z value.
    void setZValue(long z);

    // The mask coloured: r, g, b, a where its low bit is set, transparent
    // elsewhere, as Format_ARGB32.
    void VorImageToRegionImg(VorImage* mask, uchar r, uchar g, uchar b, uchar a, QImage* target);
    // A plain picture conversion: three 8-bit channels give Format_ARGB32, one
    // gives grey Format_Indexed8, deeper pictures a null image.
    QImage VorImageToQImage(VorImage* image);

    // Frees the mask; the region image stays as it is.
    void clearRegion();
    void setRegionImage(QImage& image);
    // Colours a mask into the region image with the scene's brush colour.
    void setRegionVorImage(VorImage* mask);
    void setVorRegion(VorRegion& region);
    VorRegion getVorRegion();
    // Stored and read only: painting does not look at it.
    void setVisible(bool visible);
    bool getVisible() const;

    // The picture that the image layer paints, and the mask held (null when
    // none).
    QImage regionImage() const;
    const VorImage* mask() const;

private:
    QImage m_image;
    VorImage* m_mask;
    long m_id;
    ImageCtrlScene* m_scene;
    bool m_visible;
    VorRegion m_vorRegion;
};
