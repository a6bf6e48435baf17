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
};
