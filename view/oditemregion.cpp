#include "oditemregion.h"

#include "imagectrlscene.h"
#include "odshape.h"
#include "regionmask.h"
#include "settleditemcache.h"

#include "VorImage.h"

#include <QGraphicsPixmapItem>
#include <QPixmap>

ODItemRegion::ODItemRegion(ImageCtrlScene* scene)
    : m_id(ODShape::NextID())
    , m_scene(scene)
    , m_item(scene ? scene->addPixmap(QPixmap()) : nullptr)
    , m_mask(nullptr)
    , m_visible(true)
{
    if (m_item)
        m_scene->settledItems()->addForeignItem(m_item);
}

ODItemRegion::~ODItemRegion()
{
    if (m_item) {
        if (SettledItemCache* cache = SettledItemCache::of(m_item->scene()))
            cache->removeItem(m_item);
        if (m_item->scene())
            m_item->scene()->removeItem(m_item);
        delete m_item;
        m_item = nullptr;
    }
    delete m_mask;
    m_mask = nullptr;
}

long ODItemRegion::GetID() const
{
    return m_id;
}

bool ODItemRegion::LoadVorRegion(VorImage* mask)
{
    return KeepMaskCopy(&m_mask, mask);
}

void ODItemRegion::Update(unsigned char r, unsigned char g, unsigned char b, unsigned char a)
{
    if (!m_mask)
        return;
    VorRegionToQImage(m_mask, r, g, b, a, &m_image);
}

void ODItemRegion::show()
{
    if (m_item)
        m_item->setPixmap(QPixmap::fromImage(m_image));
}

void ODItemRegion::setZValue(long z)
{
    if (!m_item)
        return;
    if (SettledItemCache* cache = SettledItemCache::of(m_item->scene()))
        cache->restack(m_item, qreal(z));
    m_item->setZValue(qreal(z));
}

void ODItemRegion::VorRegionToQImage(VorImage* mask, uchar r, uchar g, uchar b, uchar a, QImage* target)
{
    MaskToRegionImage(mask, qRgba(r, g, b, a), target);
}

QImage ODItemRegion::VorImageToQImage(VorImage* image)
{
    return EightBitPictureToQImage(image);
}

void ODItemRegion::SetColor(VorImage*, long r, long g, long b)
{
    if (!m_mask || !IsRegionMask(m_mask))
        return;
    *m_mask = MaskToColourPicture(m_mask, uchar(b), uchar(g), uchar(r));
}

void ODItemRegion::setVisible(bool visible)
{
    m_visible = visible;
    if (m_item)
        m_item->setVisible(visible);
}

bool ODItemRegion::isVisible() const
{
    return m_visible;
}

QGraphicsPixmapItem* ODItemRegion::item() const
{
    return m_item;
}

QImage ODItemRegion::regionImage() const
{
    return m_image;
}

const VorImage* ODItemRegion::mask() const
{
    return m_mask;
}
