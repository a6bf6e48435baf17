#pragma once

#include <QGraphicsScene>
#include <QPoint>

class EventThread;
class ImageCtrlView;
class ImageLayer;

// The scene of the window, less a container of items than a hub: it holds the
// layers, the current scale and view size, and the event relay. Scene
// coordinates are image pixels; zoom lives only in the view's matrix.
class ImageCtrlScene : public QGraphicsScene
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

    // Creates the layers; until then the layer accessors give null.
    void CreateLayers();
    ImageLayer* GetImageLayer() const;
    EventThread* GetEventThread() const;

    void drawDisplayPixel(QPainter* painter, QPoint& start, QPoint& end, int cellWidth, int cellHeight,
                          QPoint& first);

signals:
    void mouseDoubleClick();
    // Declared for hosts of the scene; nothing emits it.
    void sigMousePress(double pointX, double pointY);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;

private:
    ImageCtrlView* m_view;
    ImageLayer* m_imageLayer;
    double m_scale;
    float m_viewWidth;
    float m_viewHeight;
    EventThread* m_eventThread;
};
