#include "ShapeLayer.h"

ShaperLayer::ShaperLayer(ImageCtrlScene* scene, int layerIndex)
    : ODShapeLayer(scene)
    , m_layerIndex(layerIndex)
{
}

// The layer goes with its scene, which is still whole at this point, so the
// shapes can take their items out of it.
ShaperLayer::~ShaperLayer()
{
    clearSelectedShape();
    clearShape();
}

// Texts

#include "imagectrlscene.h"
#include "odtext.h"

ShaperLayer::TextOwner::~TextOwner()
{
    layer->ClearAllText();
}

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
