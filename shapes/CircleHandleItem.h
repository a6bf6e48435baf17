#pragma once

#include "HandleItem.h"

// The four handles of a circle, with a vertical or horizontal resize cursor
// under the mouse. Its brush is the handle blue from the start. Its hover test
// looks at each handle moved one unit up and to the left, and that offset is
// part of its behaviour.
class KESIMAGEWND_TESTS_EXPORT CircleHandleItem : public HoverHandleItem
{
public:
    explicit CircleHandleItem(QGraphicsItem* parent = nullptr);
    ~CircleHandleItem() override;

protected:
    int hoverNumberAt(const QPointF& scenePos) const override;
    // 1 and 3 vertical, 2 and 4 horizontal, anything else the arrow.
    Qt::CursorShape cursorOf(int number) const override;
};
