#pragma once

#include "HandleItem.h"

// Handles of the point-list shapes: any number of squares. It takes no hover
// events and keeps, for the whole item, the one cursor its shape gave it.
class KESIMAGEWND_TESTS_EXPORT GraphicsHandleItem : public HandleItem
{
public:
    explicit GraphicsHandleItem(QGraphicsItem* parent = nullptr);
    ~GraphicsHandleItem() override;
};
