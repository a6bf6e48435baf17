#pragma once

#include "vorimagewnd_global.h"

#include <QList>
#include <QMap>

class ForeGroundItem;
class ImageCtrlScene;
class ImageCtrlView;
class QPainter;
class VorOverlay;
class VorOverlayPath;
class VorROI;

// The foreground layer: records that the view paints over all scene items and
// under the reticles, in viewport pixels, so that they keep their place and
// size on the screen whatever the zoom. Ids come from the process-wide shape
// counter. Every change ends with a repaint of all scene layers (show()).
// GUI thread only; no lock.
class KESIMAGEWND_TESTS_EXPORT ForeLayer
{
public:
    // The scene must already be in a view: the first one is kept.
    explicit ForeLayer(ImageCtrlScene* scene);
    ~ForeLayer();

    ForeLayer(const ForeLayer&) = delete;
    ForeLayer& operator=(const ForeLayer&) = delete;

    void show();
    // The new record's id, or -1 for a kind without a static form.
    long DrawROI(VorROI& roi);
    long DrawOverlay(VorOverlay& overlay);
    // The id of the last valid record, or -1.
    long DrawOverlayPath(VorOverlayPath& path);
    // The id, or -1 for an unknown one; repaints either way.
    long ShapeVisible(long long id, bool visible);
    long removeShape(long id);
    void removeShapeList(QList<long> idList);
    // Deletes every record but keeps the ids listed: getShapeIDS() still
    // gives them, and painting skips them.
    void clearShape();
    QList<long> getShapeIDS();

    // Paints the visible records in ascending id, in viewport pixels, with a
    // painter already reset to them.
    void paint(QPainter* painter);

    const QMap<long long, ForeGroundItem*>& items() const { return m_items; }

private:
    long insertIfValid(ForeGroundItem* item);

    ImageCtrlScene* m_scene;
    // Owning; a cleared record stays as a null entry under its id.
    QMap<long long, ForeGroundItem*> m_items;
    ImageCtrlView* m_view;
};
