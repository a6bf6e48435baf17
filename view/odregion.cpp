#include "odregion.h"

#include "imagectrlscene.h"
#include "odshape.h"
#include "regionmask.h"

#include "VorImage.h"

#include <QGraphicsView>
#include <QMatrix>

#include <cmath>

ODRegion::ODRegion(ImageCtrlScene* scene)
    : m_mask(nullptr)
    , m_id(ODShape::NextID())
    , m_scene(scene)
    , m_visible(true)
{
}

ODRegion::~ODRegion()
{
    delete m_mask;
    m_mask = nullptr;
    if (m_scene)
        m_scene->setRegionBackGroudImage(QImage(0, 0, QImage::Format_ARGB32));
}

long ODRegion::GetID() const
{
    return m_id;
}

bool ODRegion::LoadVorRegion(VorImage* mask)
{
    return KeepMaskCopy(&m_mask, mask);
}

void ODRegion::Update(unsigned char r, unsigned char g, unsigned char b, unsigned char a)
{
    if (!m_mask)
        return;
    const double scale = m_scene ? m_scene->getScale() : 1.0;
    VorImageToRegionImg(m_mask, r, g, b, a, &m_image);
    // The current scale applied again; the zoom does not change. A scale of no
    // finite value has no matrix.
    if (!m_scene || m_scene->views().isEmpty() || !std::isfinite(scale))
        return;
    QMatrix matrix;
    matrix.scale(scale, scale);
    matrix.rotate(0.0);
    m_scene->views().at(0)->setMatrix(matrix, false);
}

void ODRegion::show()
{
    if (m_scene)
        m_scene->invalidate(m_scene->sceneRect(), QGraphicsScene::BackgroundLayer);
}

void ODRegion::setZValue(long)
{
}

void ODRegion::VorImageToRegionImg(VorImage* mask, uchar r, uchar g, uchar b, uchar a, QImage* target)
{
    MaskToRegionImage(mask, qRgba(r, g, b, a), target);
}

QImage ODRegion::VorImageToQImage(VorImage* image)
{
    QImage result = EightBitPictureToQImage(image);
    // The same bytes with their alpha byte of 255 read as alpha.
    if (result.format() == QImage::Format_RGB32)
        result.reinterpretAsFormat(QImage::Format_ARGB32);
    return result;
}

void ODRegion::clearRegion()
{
    delete m_mask;
    m_mask = nullptr;
}

void ODRegion::setRegionImage(QImage& image)
{
    m_image = image;
}

void ODRegion::setRegionVorImage(VorImage* mask)
{
    const QColor colour = m_scene ? m_scene->getBrushColor() : QColor();
    VorImageToRegionImg(mask, uchar(colour.red()), uchar(colour.green()), uchar(colour.blue()),
                        uchar(colour.alpha() & 0xff), &m_image);
}

void ODRegion::setVorRegion(VorRegion& region)
{
    m_vorRegion = region;
}

VorRegion ODRegion::getVorRegion()
{
    return m_vorRegion;
}

void ODRegion::setVisible(bool visible)
{
    m_visible = visible;
}

bool ODRegion::getVisible() const
{
    return m_visible;
}

QImage ODRegion::regionImage() const
{
    return m_image;
}

const VorImage* ODRegion::mask() const
{
    return m_mask;
}
