#pragma once

#include "HandleItem.h"

// The eight handles of an axis-parallel rectangle, with the rectangle's resize
// cursor for the handle under the mouse.
class KESIMAGEWND_TESTS_EXPORT Rect1HandleItem : public HoverHandleItem
{
public:
    explicit Rect1HandleItem(QGraphicsItem* parent = nullptr);
    ~Rect1HandleItem() override;
};
