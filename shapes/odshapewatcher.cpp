#include "odshapewatcher.h"

#include <QVector>

namespace {

// Made on first use, by the first watcher, so it outlives every watcher of the
// process whatever the order of static construction.
QVector<ODShapeWatcher*>& watchers()
{
    static QVector<ODShapeWatcher*> s_watchers;
    return s_watchers;
}

} // namespace

ODShapeWatcher::ODShapeWatcher()
{
    watchers().append(this);
}

ODShapeWatcher::~ODShapeWatcher()
{
    watchers().removeAll(this);
}

void ODShapeWatcher::notifyShapeDestroyed(ODShape* shape)
{
    // A copy: a watcher may register or remove watchers while it is told.
    const QVector<ODShapeWatcher*> current = watchers();
    for (ODShapeWatcher* watcher : current)
        watcher->shapeDestroyed(shape);
}

void ODShapeWatcher::notifySceneDestroyed(QGraphicsScene* scene)
{
    const QVector<ODShapeWatcher*> current = watchers();
    for (ODShapeWatcher* watcher : current)
        watcher->sceneDestroyed(scene);
}

void ODShapeWatcher::textDestroyed(ODText*)
{
}

void ODShapeWatcher::notifyTextDestroyed(ODText* text)
{
    const QVector<ODShapeWatcher*> current = watchers();
    for (ODShapeWatcher* watcher : current)
        watcher->textDestroyed(text);
}
