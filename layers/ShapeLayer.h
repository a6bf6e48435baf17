#pragma once

#include "odshapelayer.h"

// A layer of live shapes in the scene. The scene makes two with index 0, the
// active layer that operator-drawn and host-drawn shapes go to, and the static
// layer; each counts its z values up from index * 3000.
class KESIMAGEWND_TESTS_EXPORT ShaperLayer : public ODShapeLayer
{
public:
    ShaperLayer(ImageCtrlScene* scene, int layerIndex);
    ~ShaperLayer() override;

    int layerIndex() const { return m_layerIndex; }

private:
    int m_layerIndex;

    // Texts. A layer keeps its texts beside its shapes, in lists of their own,
    // and owns them: they go with the layer, while its scene is still whole.
public:
    // Takes ownership; marks the text as an overlay when the scene is in
    // overlay mode. No repaint.
    void AddText(class ODText* text);
    // Appends to the selected texts, duplicates allowed.
    void AddSelectedText(ODText* text);
    // Deletes every text; the selected list is left as it is.
    void ClearAllText();
    // Deletes the first text of the id; an unknown id changes nothing. The
    // selected list is not touched.
    void removeText(long id);
    // Empties the selected list; handles are not hidden.
    void ClearAllSelectedText();
    // The oldest text whose item contains point (scene coordinates), or null.
    ODText* GetTextAtPoint(QPointF const& point) const;
    // Every text takes the scene's present scale and pen colour, whatever
    // colour it had.
    void UpdateText();
    void ShowText();
    void ShowTextHandle();
    const QVector<ODText*>& texts() const { return m_texts; }
    const QVector<ODText*>& selectedTexts() const { return m_selectedTexts; }

private:
    // Deletes the layer's texts once the layer's own destructor has run.
    struct TextOwner
    {
        ~TextOwner();
        ShaperLayer* layer;
    };

    QVector<ODText*> m_texts;
    QVector<ODText*> m_selectedTexts;
    // Last of the text members, so the lists are still whole when it goes.
    TextOwner m_textOwner{this};
};
