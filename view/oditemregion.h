#pragma once

#include "kesimagewnd_export.h"

#include <QImage>

class ImageCtrlScene;
class QGraphicsPixmapItem;
class VorImage;

// The region of a shape layer: a mask turned into a coloured, partly
// transparent picture held in a pixmap item of the scene, its pixel (x, y) at
// scene point (x, y). A mask is loaded, Update colours it, and only show hands
// the picture to the item. The layer that holds the region owns it; it lives on
// the GUI thread, as the scene's items do.
class KESIMAGEWND_TESTS_EXPORT ODItemRegion
{
public:
    // Takes the next id of the process-wide counter and adds an empty pixmap
    // item to the scene.
    explicit ODItemRegion(ImageCtrlScene* scene);
    // Takes the item out of the scene and deletes it, and frees the mask.
    ~ODItemRegion();

    ODItemRegion(const ODItemRegion&) = delete;
    ODItemRegion& operator=(const ODItemRegion&) = delete;

    long GetID() const;

    // Keeps a copy of the mask, created on first use; false for a null mask,
    // which leaves the one held.
    bool LoadVorRegion(VorImage* mask);
    // Colours the held mask into the region picture; nothing without a mask.
    // The item keeps what it showed until show().
    void Update(unsigned char r, unsigned char g, unsigned char b, unsigned char a);
    // Hands the region picture to the item.
    void show();
    void setZValue(long z);

    // The mask coloured: r, g, b, a where its low bit is set, transparent
    // elsewhere, as Format_ARGB32.
    void VorRegionToQImage(VorImage* mask, uchar r, uchar g, uchar b, uchar a, QImage* target);
    // A plain picture conversion: three 8-bit channels give Format_RGB32, one
    // gives grey Format_Indexed8, deeper pictures a null image.
    QImage VorImageToQImage(VorImage* image);
    // Replaces the held mask by a three-channel picture: blue, green, red
    // wherever the mask is not 0, black elsewhere. The first argument is not
    // used; without a held mask nothing happens.
    void SetColor(VorImage* image, long r, long g, long b);

    void setVisible(bool visible);
    bool isVisible() const;

    QGraphicsPixmapItem* item() const;
    QImage regionImage() const;
    // The mask held, null when none.
    const VorImage* mask() const;

private:
    long m_id;
    ImageCtrlScene* m_scene;
    QGraphicsPixmapItem* m_item;
    VorImage* m_mask;
    QImage m_image;
    bool m_visible;
};
