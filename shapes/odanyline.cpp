#include "odanyline.h"

#include <QGraphicsPathItem>

ODAnyLine::ODAnyLine(QGraphicsScene* scene)
    : ODFreeLine(scene, DM_ANYLINE)
{
}

ODAnyLine::~ODAnyLine() = default;

void ODAnyLine::ShowShape()
{
    showLine(false);
    // The open line alone brings its item back into view, should a layer or
    // a host have hidden it; the closed line leaves visibility to its owner.
    m_pathItem->show();
}
