#include "odanycloseline.h"

#include <QGraphicsPathItem>

ODAnyCloseLine::ODAnyCloseLine(QGraphicsScene* scene)
    : ODFreeLine(scene, DM_ANYCLOSELINE)
{
}

ODAnyCloseLine::~ODAnyCloseLine() = default;

void ODAnyCloseLine::ShowShape()
{
    showLine(true);
}

void ODAnyCloseLine::ShowMoveShape()
{
    shownStateChanged();
    UpdateCurData();
    const QPainterPath path = linePath(false);
    m_pen.setColor(m_penColor);
    m_pathItem->setPen(m_pen);
    m_pathItem->setPath(path);
}
