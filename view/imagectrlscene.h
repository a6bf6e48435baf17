#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QFont>
#include <QGraphicsScene>
#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QRectF>
#include <QTransform>

#include <memory>

class EventThread;
class ForeLayer;
class ImageCtrlView;
class ImageLayer;
class ShaperLayer;
class QTouchEvent;
class SettledItemCache;

// The scene of the window, less a container of items than a hub: it holds the
// layers, the current scale and view size, the event relay, the settings that
// new shapes take their look from, and the current draw mode, which picks the
// tool that every mouse event but the right button's goes to; presses, moves
// and releases go to the text tool as well. Scene coordinates are image
// pixels; zoom lives only in the view's matrix.
class KESIMAGEWND_TESTS_EXPORT ImageCtrlScene : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit ImageCtrlScene(QObject* parent = nullptr);
    ~ImageCtrlScene() override;

    void setImageCtrlView(ImageCtrlView* view);
    ImageCtrlView* getCtrlView() const;

    // A scale not above 0 is stored as 1.0; nothing is repainted.
    void setScale(double scale);
    double getScale() const;
    void setViewSize(float width, float height);
    void getViewSize(double& width, double& height) const;

    // Creates the image layer and the active and static shape layers; until
    // then the layer accessors give null.
    void CreateLayers();
    // Appends shape layers with the indexes 1 .. count - 1.
    void CreateLayers(int count);
    int GetLayerCount();
    QList<ShaperLayer*> getShaperLayperList() const;
    ImageLayer* GetImageLayer() const;
    ShaperLayer* GetActiveLayer() const;
    ShaperLayer* GetStaticActiveLayer() const;
    ForeLayer* GetForeLayer() const;
    EventThread* GetEventThread() const;

    // The look of new shapes.
    void setPenColor(QColor color);
    QColor getPenColor() const;
    void setBrushColor(QColor color);
    QColor getBrushColor() const;
    void setLineWidth(float width);
    float getLineWidth() const;
    void setCrossSize(int size);
    int getCrossSize();
    void setFont(QFont font);
    QFont getFont();

    // Stored and returned only: moving is governed by the shape layer's flag.
    void enableMoveROI(bool enable);
    bool isEnableMoveROI() const;
    void enableMoveOverlay(bool enable);
    bool isEnableMoveOverlay() const;
    void enableMoveStaticOverlay(bool enable);
    bool isEnableMoveStaticOverlay() const;

    // DM_SELECT also ends overlay mode; other modes leave it to the caller.
    void SetDrawMode(DrawMode mode);
    DrawMode GetDrawMode() const;
    void setIsOverlay(bool isOverlay);
    bool isOverlay() const;
    void setIsStaticOverlay(bool isStaticOverlay);
    bool isStaticOverlay();

    void setRegionBackGroudImage(QImage image);
    void drawBackgroundRegion(QPainter* painter, const QRectF& rect);
    // The point at length and angle (degrees, counter-clockwise on the screen)
    // from (x, y), in single precision.
    QPointF GetPoint(double x, double y, float length, float angle);

    void drawDisplayPixel(QPainter* painter, QPoint& start, QPoint& end, int cellWidth, int cellHeight,
                          QPoint& first);

    // The items of the shapes nobody is editing, painted from pictures.
    SettledItemCache* settledItems() const { return m_settledItems.get(); }
    // Before the scene is painted: the shapes selected in any shape layer or
    // kept by a tool become live, all others settle.
    void prepareSettledItems();
    // Paints again, with painter, the background that the scene's last
    // background paint gave painter, if it was painter's; for the cache,
    // which paints every item over the background away from the viewport.
    void repaintLastBackground(QPainter* painter);

    // TouchBegin, TouchUpdate or TouchEnd.
    static bool isTouchEvent(const QEvent* event);
    // Each touch point in turn becomes a mouse event of no button for the
    // scene's own handlers, and so for the tools: pressed, moved and
    // released points press, move and release; a stationary point is dropped.
    // Every finger makes its own stream, with no grouping by touch id.
    void touchEventHandler(QTouchEvent* event);

signals:
    void mouseDoubleClick();
    // Declared for hosts of the scene; nothing emits it.
    void sigMousePress(double pointX, double pointY);

protected:
    // Touch events go to touchEventHandler and are consumed; the rest to the
    // base.
    bool event(QEvent* event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;

private:
    bool routesToTools(QGraphicsSceneMouseEvent* event) const;

    ImageCtrlView* m_view;
    ImageLayer* m_imageLayer;
    ForeLayer* m_foreLayer;
    ShaperLayer* m_activeLayer;
    ShaperLayer* m_staticActiveLayer;
    double m_scale;
    float m_viewWidth;
    float m_viewHeight;
    EventThread* m_eventThread;

    QColor m_penColor;
    QColor m_brushColor;
    float m_lineWidth;
    bool m_enableMoveROI;
    bool m_enableMoveOverlay;
    bool m_enableMoveStaticOverlay;
    int m_crossSize;
    QFont m_font;
    QList<ShaperLayer*> m_shaperLayers;
    QPixmap m_regionBackground;
    DrawMode m_drawMode;
    // Made before any shape and destroyed after every layer, before the base
    // deletes the scene's items.
    std::unique_ptr<SettledItemCache> m_settledItems;
    // What the last background paint was given.
    const QPainter* m_backgroundPainter = nullptr;
    QTransform m_backgroundTransform;
    QRectF m_backgroundRect;
    bool m_isOverlay;
    bool m_isStaticOverlay;
};
