#include "ShapeLayer.h"

#include "ImageLayer.h"
#include "datainterface.h"
#include "imagectrlscene.h"
#include "numericguards.h"
#include "odshape.h"
#include "odimage.h"
#include "oditemregion.h"
#include "odtext.h"
#include "shapeconversion.h"
#include "shapeoperator.h"

#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"

ShaperLayer::ShaperLayer(ImageCtrlScene* scene, int layerIndex)
    : ODShapeLayer(scene)
    , m_roi(nullptr)
    , m_region(nullptr)
    , m_layerIndex(layerIndex)
    , m_zValue(long(layerIndex) * s_zBandPerLayer)
{
}

// The layer goes with its scene, which is still whole at this point, so the
// shapes, texts and region can take their items out of it.
ShaperLayer::~ShaperLayer()
{
    clearSelectedShape();
    clearShape();
    ClearAllSelectedText();
    ClearAllText();
    ClearRegion();
}

ShapeLook ShaperLayer::sceneLook() const
{
    ShapeLook look;
    look.pen = m_scene->getPenColor();
    look.brush = m_scene->getBrushColor();
    look.width = TruncateToInt(m_scene->getLineWidth());
    look.crossSize = m_scene->getCrossSize();
    return look;
}

bool ShaperLayer::imageAccepts(bool checkImage) const
{
    if (!checkImage)
        return true;
    ImageLayer* imageLayer = m_scene->GetImageLayer();
    return imageLayer && imageLayer->hasValidVorImage();
}

// ---- display ---------------------------------------------------------------

long ShaperLayer::DrawROI(VorROI& roi, bool checkImage)
{
    if (!imageAccepts(checkImage))
        return -1;
    m_roi = &roi;
    const DrawMode mode = FromROIType(roi.ROIType());
    m_shapeOperator->UpdateData();
    long id = -1;
    if (ShapeConversion::roiRowOfMode(mode))
        id = drawROIOfMode(mode);
    // A mask ROI reads back as it came in, under the id of its region.
    if (mode == DM_MASK && id != -1)
        m_maskROIs.insert(id, roi);
    Update();
    return id;
}

long ShaperLayer::drawROIOfMode(DrawMode mode)
{
    ++m_zValue;
    const ShapeConversion::ROIRow* row = ShapeConversion::roiRowOfMode(mode);
    if (!row || !m_roi || m_roi->ROIType() != row->code)
        return -1;
    return row->draw(*m_roi, *m_shapeOperator, m_zValue, sceneLook());
}

long ShaperLayer::DrawROIPoint() { return drawROIOfMode(DM_POINT); }
long ShaperLayer::DrawROILine() { return drawROIOfMode(DM_LINE); }
long ShaperLayer::DrawROIRectangle() { return drawROIOfMode(DM_RECT1); }
long ShaperLayer::DrawROIRectangle2() { return drawROIOfMode(DM_RECT2); }
long ShaperLayer::DrawROIEllipse() { return drawROIOfMode(DM_ELLIPSE); }
long ShaperLayer::DrawROICircle() { return drawROIOfMode(DM_CIRCLE); }
long ShaperLayer::DrawROIPolygon() { return drawROIOfMode(DM_POLYGON); }
long ShaperLayer::DrawROIAnyLine() { return drawROIOfMode(DM_ANYLINE); }
long ShaperLayer::DrawROITourse() { return drawROIOfMode(DM_ANNULAR); }
long ShaperLayer::DrawROIArc() { return drawROIOfMode(DM_ARC); }
long ShaperLayer::DrawROIMask() { return drawROIOfMode(DM_MASK); }

// Unlike DrawROI no walk over the layer follows: the new shape has shown itself.
long ShaperLayer::DrawOverlay(VorOverlay& overlay, bool checkImage)
{
    if (!imageAccepts(checkImage))
        return -1;
    m_scene->setIsOverlay(true);
    const long id = drawOverlayByType(overlay);
    m_scene->setIsOverlay(false);
    return id;
}

// Text and region fall out of the mode mapping and are told by their raw codes.
long ShaperLayer::drawOverlayByType(VorOverlay& overlay)
{
    const DrawMode mode = FromOverlayType(overlay.OverlayType());
    m_shapeOperator->UpdateData();
    if (ShapeConversion::hasOverlayRoutine(mode))
        return drawOverlayOfMode(mode, overlay);
    if (ShapeConversion::overlayRowByCode(overlay.OverlayType()))
        return drawOverlayOfCode(overlay.OverlayType(), overlay);
    return -1;
}

long ShaperLayer::drawOverlayOfMode(DrawMode mode, VorOverlay& overlay)
{
    ++m_zValue;
    const ShapeConversion::OverlayRow* row = ShapeConversion::overlayRow(mode, overlay.OverlayType());
    if (!row)
        return -1;
    const ShapeLook look = ShapeConversion::overlayLook(sceneLook(), overlay);
    return row->draw(overlay, *m_shapeOperator, m_zValue, look);
}

long ShaperLayer::DrawOverlayPoint(VorOverlay& overlay) { return drawOverlayOfMode(DM_POINT, overlay); }
long ShaperLayer::DrawOverlayLine(VorOverlay& overlay) { return drawOverlayOfMode(DM_LINE, overlay); }
long ShaperLayer::DrawOverlayArrowLine(VorOverlay& overlay) { return drawOverlayOfMode(DM_ARROWLINE, overlay); }
long ShaperLayer::DrawOverlayRectangle(VorOverlay& overlay) { return drawOverlayOfMode(DM_RECT1, overlay); }
long ShaperLayer::DrawOverlayRectangle2(VorOverlay& overlay) { return drawOverlayOfMode(DM_RECT2, overlay); }
long ShaperLayer::DrawOverlayEllipse(VorOverlay& overlay) { return drawOverlayOfMode(DM_ELLIPSE, overlay); }
long ShaperLayer::DrawOverlayCircle(VorOverlay& overlay) { return drawOverlayOfMode(DM_CIRCLE, overlay); }
long ShaperLayer::DrawOverlayPolygon(VorOverlay& overlay) { return drawOverlayOfMode(DM_POLYGON, overlay); }
long ShaperLayer::DrawOverlayAnyLine(VorOverlay& overlay) { return drawOverlayOfMode(DM_ANYLINE, overlay); }
long ShaperLayer::DrawOverlayAnyClosedLine(VorOverlay& overlay) { return drawOverlayOfMode(DM_ANYCLOSELINE, overlay); }
long ShaperLayer::DrawOverlayTourse(VorOverlay& overlay) { return drawOverlayOfMode(DM_ANNULAR, overlay); }
long ShaperLayer::DrawOverlayArc(VorOverlay& overlay) { return drawOverlayOfMode(DM_ARC, overlay); }
long ShaperLayer::DrawOverlayText(VorOverlay& overlay) { return drawOverlayOfCode(VorOverlay::OV_TEXT, overlay); }
long ShaperLayer::DrawOverlayRegion(VorOverlay& overlay) { return drawOverlayOfCode(VorOverlay::OV_REGION, overlay); }

long ShaperLayer::drawOverlayOfCode(int code, VorOverlay& overlay)
{
    ++m_zValue;
    const ShapeConversion::OverlayRow* row = ShapeConversion::overlayRowByCode(code);
    if (!row || overlay.OverlayType() != code)
        return -1;
    const ShapeLook look = ShapeConversion::overlayLook(sceneLook(), overlay);
    return row->draw(overlay, *m_shapeOperator, m_zValue, look);
}

long ShaperLayer::DrawImage(VorImage& image, VorPoint& point)
{
    ++m_zValue;
    m_shapeOperator->UpdateData();
    const ShapeLook look = sceneLook();
    return m_shapeOperator->DrawImage(image, point, m_zValue, look.pen, look.brush, look.width);
}

long ShaperLayer::DrawOverlayPath(VorOverlayPath const& path, bool checkImage)
{
    long first = -1;
    for (int i = 0; i < path.Length(); ++i) {
        VorOverlay overlay = path[i];
        const long id = DrawOverlay(overlay, checkImage);
        if (first == -1)
            first = id;
    }
    return first;
}

// The shape goes to the static layer but is not marked as an overlay, so
// GetOverlay of the active layer does not find it.
long ShaperLayer::DrawStaticOverlay(VorOverlay& overlay)
{
    ImageLayer* imageLayer = m_scene->GetImageLayer();
    if (imageLayer && imageLayer->isVorImg() && !imageLayer->hasValidVorImage())
        return -1;
    m_scene->setIsStaticOverlay(true);
    const long id = drawOverlayByType(overlay);
    m_scene->setIsStaticOverlay(false);
    return id;
}

// ---- read-back -------------------------------------------------------------

// Texts and the region are not looked at.
long ShaperLayer::GetROIShape(long id, VorROI* roi)
{
    if (m_maskROIs.contains(id)) {
        if (roi)
            *roi = m_maskROIs.value(id);
        return 0;
    }
    if (ODShape* shape = shapeById(id)) {
        TypeROIConversion(shape, roi);
        return 0;
    }
    return -1;
}

// A text reads back without colours, its text in UTF-8. The region is not
// looked at, so a region overlay reads back as unknown.
long ShaperLayer::GetOverlay(long long id, VorOverlay* overlay)
{
    if (ODShape* shape = shapeById(long(id))) {
        if (overlay)
            TypeOverlayConversion(shape, *overlay);
        return 0;
    }
    if (ODText* text = textById(long(id))) {
        if (overlay)
            textToOverlay(*text, overlay);
        return 0;
    }
    return -1;
}

void ShaperLayer::textToOverlay(const ODText& text, VorOverlay* overlay)
{
    const QFont qfont = text.GetFont();
    VorFont font(qfont.family().toUtf8().constData(), qfont.pointSize());
    font.strikeOut = qfont.strikeOut();
    font.underline = qfont.underline();
    font.weight = qfont.weight();
    font.italic = qfont.italic();
    const QPointF pos = text.Pos();
    overlay->GenText(VorPoint(pos.x(), pos.y()), text.Text().toUtf8().constData(), font);
}

long ShaperLayer::GetImage(long id, VorImage* image)
{
    ODShape* shape = shapeById(id);
    if (!shape)
        return -1;
    auto* picture = dynamic_cast<ODImage*>(shape);
    if (picture && picture->image() && image)
        *image = *picture->image();
    return 0;
}

long ShaperLayer::GetStaticOverlay(long long id, VorOverlay* overlay)
{
    return GetOverlay(id, overlay);
}

bool ShaperLayer::TypeOverlayConversion(ODShape* shape, VorOverlay& overlay)
{
    return ShapeConversion::toOverlay(shape, &overlay);
}

bool ShaperLayer::TypeROIConversion(ODShape* shape, VorROI* roi)
{
    return ShapeConversion::toROI(shape, roi);
}

// ---- calls by id -----------------------------------------------------------

long ShaperLayer::ShapeVisible(long id, bool visible)
{
    ODShape* shape = shapeById(id);
    if (!shape) {
        // The region is hidden or shown, yet the answer stays -1: the window
        // then asks the image layer too.
        if (m_region && m_region->GetID() == id)
            m_region->setVisible(visible);
        return -1;
    }
    shape->setVisible(visible);
    if (!visible) {
        shape->HideHandle();
        shape->HideShape();
    } else {
        m_shapeOperator->UpdateData();
        shape->ShowShape();
    }
    return 0;
}

long ShaperLayer::setShapeMovable(long long id, bool movable)
{
    if (ODShape* shape = shapeById(long(id))) {
        shape->setMovable(movable);
        return 0;
    }
    if (ODText* text = textById(long(id))) {
        text->SetMovable(movable);
        return 0;
    }
    return -1;
}

bool ShaperLayer::isShapeMovable(long long id)
{
    if (ODShape* shape = shapeById(long(id)))
        return shape->isMovable();
    if (ODText* text = textById(long(id)))
        return text->IsMovable();
    return false;
}

long ShaperLayer::setShapeSelectable(long long id, bool selectable)
{
    if (ODShape* shape = shapeById(long(id))) {
        shape->setSelectble(selectable);
        return 0;
    }
    return -1;
}

bool ShaperLayer::isShapeSelectable(long long id)
{
    if (ODShape* shape = shapeById(long(id)))
        return shape->isSelectble();
    return false;
}

QList<long> ShaperLayer::getShapeIDS()
{
    QList<long> ids;
    ids.reserve(m_shapes.size());
    for (ODShape* shape : qAsConst(m_shapes)) {
        if (shape)
            ids.append(shape->GetShapeID());
    }
    // The texts follow the shapes; the region has no id in the list.
    for (ODText* text : qAsConst(m_texts)) {
        if (text)
            ids.append(text->GetID());
    }
    return ids;
}

void ShaperLayer::ShowShapeHandle(long long id)
{
    clearSelectedShape();
    if (ODShape* shape = shapeById(long(id))) {
        shape->ShowHandle();
        addSelectedShape(shape);
    }
    for (ODText* text : qAsConst(m_texts)) {
        if (text && text->GetID() == id)
            text->ShowHandle();
    }
}

ODText* ShaperLayer::textById(long id) const
{
    for (ODText* text : m_texts) {
        if (text && text->GetID() == id)
            return text;
    }
    return nullptr;
}

// Region

void ShaperLayer::AddRegion(ODItemRegion* region)
{
    // One region a layer: the new one replaces the old, whose id is gone.
    delete m_region;
    m_region = region;
}

void ShaperLayer::ClearRegion()
{
    delete m_region;
    m_region = nullptr;
}

void ShaperLayer::removeRegion(long id)
{
    if (m_region && m_region->GetID() == id)
        ClearRegion();
}

// The region keeps itself up to date and shows itself when it is loaded.
void ShaperLayer::UpdateRegion() {}
void ShaperLayer::ShowRegion() {}

// Texts

void ShaperLayer::AddText(ODText* text)
{
    text->setIsOverlay(m_scene->isOverlay());
    m_texts.append(text);
}

void ShaperLayer::AddSelectedText(ODText* text)
{
    m_selectedTexts.append(text);
}

void ShaperLayer::ClearAllText()
{
    for (ODText* text : m_texts)
        delete text;
    m_texts.clear();
}

void ShaperLayer::removeText(long id)
{
    for (int i = 0; i < m_texts.size(); ++i) {
        ODText* text = m_texts[i];
        if (text && text->GetID() == id) {
            m_texts.remove(i);
            delete text;
            return;
        }
    }
}

void ShaperLayer::ClearAllSelectedText()
{
    m_selectedTexts.clear();
}

ODText* ShaperLayer::GetTextAtPoint(QPointF const& point) const
{
    for (ODText* text : m_texts) {
        if (text && text->HitTest(point))
            return text;
    }
    return nullptr;
}

void ShaperLayer::UpdateText()
{
    const QColor pen = m_scene->getPenColor();
    const float scale = float(m_scene->getScale());
    for (ODText* text : m_texts) {
        if (!text)
            continue;
        text->SetScale(scale);
        text->SetColor(pen);
    }
}

void ShaperLayer::ShowText()
{
    for (ODText* text : m_texts) {
        if (text)
            text->ShowText();
    }
}

void ShaperLayer::ShowTextHandle()
{
    for (ODText* text : m_selectedTexts) {
        if (text)
            text->ShowHandle();
    }
}
