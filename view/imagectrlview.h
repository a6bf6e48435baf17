#pragma once

#include "vorimagewnd_global.h"

#include <QGraphicsView>
#include <QPoint>
#include <QPointF>
#include <QRect>

class ImageCtrlScene;
class QImage;
class VorImage;

// The graphics view the operator looks at. It owns the scene, zooms about the
// cursor with the wheel and pans with the right button by hand through the
// scroll bars, and reports mouse activity in scene coordinates (image pixels).
// What paints in viewport pixels lives here too: the pixel value labels at a
// scale of 100 and above, drawn after everything else.
class ImageCtrlView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit ImageCtrlView(QWidget* parent = nullptr);
    ~ImageCtrlView() override;

    void CreateScene();
    ImageCtrlScene* GetImageCtrlScene() const;

    long DisplayImage(QImage& image);
    long DisplayImage(VorImage* image);
    long RefreshLayers();
    // Sets an absolute scale; a value below 0.03 changes nothing. Always 0.
    long Zoom(double scale);
    void SetScrollVisible(bool visible);
    bool scrollVisible() const { return m_scrollVisible; }
    QRect imageRect() const { return m_imageRect; }

    void setLimitMousePos(bool limit);
    bool limitMousePos() const;
    void setDrawModeCursorIcon(DrawMode mode);
    void resetDrawModeCursorIcon();
    QWidget* parentWidget() const;

    void enablePixelVisible(bool visible);
    bool PixelVisible() const;
    void drawDisplayPixel();

    bool isRightDown() const { return m_rightDown; }
    bool isRightMoved() const { return m_rightMoved; }

public slots:
    void updateScene();

signals:
    void updateMousePosition(QPointF pos);
    void mouseClicked(QPointF pos);
    void sigMousePress(double pointX, double pointY);
    void sigMouseRelease(double pointX, double pointY);
    void sigMouseRightPress(double pointX, double pointY);
    void sigMouseRightRelease(double pointX, double pointY);
    void sigMouseRightMoveRelease(double pointX, double pointY);
    void ZoomInPushButtonClicked(bool checked = false);
    void ZoomOutPushButtonClicked(bool checked = false);
    void ZoomFitPushButtonClicked(bool checked = false);
    void ZoomOrgPushButtonClicked(bool checked = false);
    void floatBtnClicked(bool checked);
    void intoBtnClicked(bool checked);
    void limitMouseChanged();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setScaleMatrix(double scale);
    void finishDisplay();

    ImageCtrlScene* m_scene;
    bool m_scrollVisible;
    QRect m_imageRect;
    bool m_rightDown;
    bool m_rightMoved;
    QPoint m_lastPos;
    bool m_limitMousePos;
    bool m_pixelVisible;
};
