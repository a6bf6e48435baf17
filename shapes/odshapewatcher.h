#pragma once

#include "kesimagewnd_export.h"

class ODShape;
class ODText;
class QGraphicsScene;

// An object of the process that keeps pointers to shapes or texts across
// events, such as a tool, is a watcher. Watchers register themselves on
// construction, and every watcher is told when a shape or a text is being
// destroyed and when a scene is being destroyed, before its items go, so that
// a window torn down under a process-wide object leaves nothing dangling in
// it. Calls come on the GUI thread only.
class KESIMAGEWND_TESTS_EXPORT ODShapeWatcher
{
public:
    ODShapeWatcher();
    virtual ~ODShapeWatcher();

    ODShapeWatcher(const ODShapeWatcher&) = delete;
    ODShapeWatcher& operator=(const ODShapeWatcher&) = delete;

    // A shape is being destroyed: an override drops every pointer it holds to
    // it. The shape is half gone, so only its address may be compared.
    virtual void shapeDestroyed(ODShape* shape) = 0;
    // A scene is being destroyed: an override drops every pointer it holds to
    // the scene and to any shape of it, also shapes whose layer is never freed.
    // The scene and its shapes are still whole during the call.
    virtual void sceneDestroyed(QGraphicsScene* scene) = 0;
    // A text is being destroyed: an override drops every pointer it holds to
    // it. The text is still whole during the call. Watchers that keep no text
    // leave it be.
    virtual void textDestroyed(ODText* text);

    static void notifyShapeDestroyed(ODShape* shape);
    static void notifySceneDestroyed(QGraphicsScene* scene);
    static void notifyTextDestroyed(ODText* text);
};
