#pragma once

#include "vorimagewnd_global.h"

#include <QColor>
#include <QCursor>
#include <QGraphicsView>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QString>

#include "viewpainter.h"

class FloatAreaWidget;
class ImageCtrlScene;
class QImage;
class QLabel;
class VorImage;

// The graphics view the operator looks at. It owns the scene, zooms about the
// cursor with the wheel and pans with the right button by hand through the
// scroll bars, and reports mouse activity in scene coordinates (image pixels).
// It keeps the settings of what paints in viewport pixels over all scene
// items: the grid and the cross-line reticle, each set and read as a JSON
// text, and the pixel value labels at a scale of 100 and above; ViewPainter
// paints them, in the one paint order of the view. The cross can be dragged with
// the left button. The floating area and the number label lie over the picture
// at the top left, hidden until a host shows them.
class KESIMAGEWND_TESTS_EXPORT ImageCtrlView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit ImageCtrlView(QWidget* parent = nullptr);
    ~ImageCtrlView() override;

    // What a paint of the whole viewport puts under the items: the viewport's
    // own fill and the view's background, with the painter in viewport
    // pixels on entry.
    void paintBackgroundOfViewport(QPainter* painter);
    // Whether the last paint of the viewport left the background to the item
    // cache's picture.
    bool backgroundLeftToItemCache() const { return m_cacheCoversViewport; }

    void CreateScene();
    ImageCtrlScene* GetImageCtrlScene() const;

    long DisplayImage(QImage& image);
    long DisplayImage(VorImage* image);
    // The worker's half of a new picture: queued, shown by the next
    // RefreshLayers. 0, or -1 for a picture the layer refuses.
    long runDisplayImage(VorImage* image);
    // The GUI thread's half: takes over the queued picture and paints before
    // returning. Always 0.
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

    // The cross-line reticle: a JSON text with the keys "visible", "mode",
    // "color", "emphasisColor", "point", "lineWidth", "circleRadius",
    // "emphasisLength". Text that is no JSON object changes nothing.
    void setCrossLineInfo(QString info);
    void getCrossLineInfo(QString& info);
    void drawCrossLine();
    // Its held point, in viewport pixels, and the drag state.
    QPoint crossPoint() const { return m_crossPoint; }
    bool isCrossDragging() const { return m_crossDragging; }

    // The grid: a JSON text with the keys "visible", "color", "lineWidth",
    // "gap" (viewport pixels). A gap of 0 or below is kept and reported, and
    // paints nothing.
    void setGridLineInfo(QString info);
    void getGridLineInfo(QString& info);
    void drawGridLine();

    void SetFloatFlag(bool isFloat);
    bool isFloat() const;
    void SetFloatAreaVisible(bool visible);
    void SetIntoBtnVisible(bool visible);
    void SetFloatTipText(QString text);
    void SetNum(QString text);
    void SetNumVisible(bool visible);
    FloatAreaWidget* floatArea() const { return m_floatArea; }
    QLabel* numLabel() const { return m_numLabel; }

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
    // A two-finger touch is read as a pinch: one zoom step per event with a
    // moved or released finger, in when the fingers are wider apart than
    // they began. Every touch event is consumed here and never reaches the
    // scene; other events go to the base.
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    // Paints the background, except in a paint of the viewport that the
    // window's item cache covers whole: its picture holds the background
    // already and hides whatever is under it.
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    void setScaleMatrix(double scale);
    void finishDisplay();
    void crossPressTest(const QPoint& pos);
    // The painter of the current paint, set to viewport pixels without
    // smoothing, as a painter of its own on the viewport would be.
    void drawCrossLine(QPainter* painter);
    void drawGridLine(QPainter* painter);
    GridLook gridLook() const;
    CrossLook crossLook() const;
    // The picture's rectangle as it lies on the screen, in viewport pixels.
    QRect pictureOnScreen() const;

    ImageCtrlScene* m_scene;
    bool m_scrollVisible;
    QRect m_imageRect;
    bool m_rightDown;
    bool m_rightMoved;
    QPoint m_lastPos;
    bool m_limitMousePos;
    bool m_pixelVisible;

    bool m_crossVisible;
    int m_crossRadius;
    bool m_crossMode;
    QPoint m_crossPoint;
    int m_crossLineWidth;
    QColor m_crossColor;
    QColor m_crossEmphasisColor;
    int m_crossEmphasisLength;
    QCursor m_savedCursor;
    bool m_crossDragging;

    bool m_gridVisible;
    int m_gridGap;
    QColor m_gridColor;
    int m_gridLineWidth;

    bool m_isFloat;
    FloatAreaWidget* m_floatArea;
    QLabel* m_numLabel;
    // The painter that drawForeground was given, while it runs.
    QPainter* m_foregroundPainter;
    // Whether the item cache covers the viewport in the paint under way, or
    // in the last one.
    bool m_cacheCoversViewport;
};
