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
