#pragma once

// The one header a host includes: the facade KESImageWnd, and with it every
// data type its calls use and the window's common definitions.

#include "IVorOverlay.h"
#include "VORMV.h"
#include "VorFont.h"
#include "VorImage.h"
#include "VorOverlay.h"
#include "VorOverlayPath.h"
#include "VorPoint.h"
#include "VorPointArray.h"
#include "VorROI.h"
#include "VorRegion.h"
#include "VorVar.h"
#include "datainterface.h"
#include "geometryhelpers.h"
#include "imageconversion.h"
#include "vorimagewnd_global.h"

#include <QImage>
#include <QList>
#include <QString>
#include <QObject>

class CMainWindow;

// The image window as a host sees it. Build it, call create() with a widget of
// your own (its address as a qlonglong), and talk to it through calls and
// signals; call destory() before you delete that widget. Calls return 0 on
// success and -1 when there is no window or the call is refused; bool calls
// return false without a window. Coordinates in signals are image pixels.
// All calls are for the GUI thread, except repaint(), which is for a worker.
class KESIMAGEWND_EXPORT KESImageWnd : public QObject
{
    Q_OBJECT

public:
    enum Layer {
        LAYER_IMAGE = 0,
        LAYER_SHAPE = 1,
        LAYER_FORE = 2
    };
    Q_ENUM(Layer)

    explicit KESImageWnd(QObject* parent = nullptr);
    ~KESImageWnd() override;

    long getZoomRatio(double* scale);

    // The window, for code that needs to reach past the facade.
    CMainWindow* mainWindow() const { return m_mainWindow; }

public slots:
    long create(qlonglong parentWndHandle, int left, int top, int right, int bottom);
    long create(qlonglong parentWndHandle);
    long setParentWnd(qlonglong parentWndHandle);
    long destory();
    long move(int left, int top, int right, int bottom);
    void setViewRect(int x, int y, int w, int h);

    long setBackground(QImage& image);
    long setBackground(VorImage& image);
    long getBackground(QImage* image);
    long getBackground(VorImage* image);
    long clearBackground();
    // For a worker thread: converts and queues the picture there; the next
    // repaint() shows it. A refused picture is dropped without a word.
    void setRunBackground(VorImage& image);
    // For a worker thread: returns once the window has painted. Never call it
    // on the GUI thread: the call would wait on itself.
    long repaint();

    // Regions of interest and overlays from the host, on a layer (the shape
    // layer by default): the new shape's id, or -1 when the layer refuses the
    // type, when the layer value is not one of Layer, or when the shape layer
    // in VorImage mode has no picture yet. A path gives the first id made.
    long displayROI(VorROI& shape, KESImageWnd::Layer layerIndex = LAYER_SHAPE);
    long displayOverlay(VorOverlay& shape, KESImageWnd::Layer layerIndex = LAYER_SHAPE);
    long displayOverlayPath(VorOverlayPath& overlayPath, KESImageWnd::Layer layerIndex = LAYER_SHAPE);
    // For a worker thread, between setRunBackground and repaint(): the path's
    // overlays become static records of LAYER_IMAGE in their own colours, and
    // a region overlay the layer's region image. Shown by the next repaint().
    void displayRunShapes(VorOverlayPath& overlayPath);
    // Empties a layer: shapes, texts and region on the shape layer; 0 also for
    // a layer value that is not one of Layer.
    long clearLayer(KESImageWnd::Layer layerIndex);
    QList<long> getShapeIDS(KESImageWnd::Layer layerIndex = LAYER_SHAPE);
    // A shape of the shape layer read back by id: 0, or -1 for an unknown id.
    long getROIShape(long id, VorROI* shape);
    long getOverlayShape(long id, VorOverlay* shape);
    // Removes the id from every layer and ends the selection; 0 whether or
    // not the id was there.
    long removeShape(qlonglong id);
    // Has no effect: the request goes out on a signal that nothing takes up.
    // Remove shapes one by one with removeShape.
    void removeShapeList(QList<long> idList);
    // Shows or hides by id on the shape layer, else on the image layer: the
    // answer of the layer asked last, -1 for an id neither has.
    long visibleShape(qlonglong id, bool visible = true);
    bool isShapeMovable(qlonglong id);
    long setShapeMovable(qlonglong id, bool movable);
    bool isShapeSelectable(qlonglong id);
    long setShapeSelectable(qlonglong id, bool Selectable);
    // Empties the fore, the shape and the image layer, in that order.
    long clear();

    // Draw modes for the operator's next shape, as the tool bar's buttons
    // give them but in overlay mode and with the mouse free. Each but the
    // arrow line and the closed free line first puts the text tool back to
    // picking texts; drawText arms it to place one. All answer 0, also when
    // the window refuses the mode (no picture, or a polygon under way).
    long resetDraw();
    long drawPoint();
    long drawLine();
    long drawRect();
    long drawRotateRect();
    long drawEllipse();
    long drawCircle();
    long drawPolygon();
    long drawIrregular();
    long drawTorus();
    long drawArrowLine();
    long drawClosedAnyLine();
    long drawText();
    long drawText(QString& text);

    long zoom(double scaleValue);
    long zoomIn();
    long zoomOut();
    long zoomFitWnd();
    long zoomReset();

    bool showStatusbar(bool bVisible);
    bool showScrollbar(bool bVisible);

    long enablePixelVisible(bool visible);

    // Whether the operator may move and select the shapes of the shape layer.
    void setActiveLayerMovable(bool movable);
    bool activeLayerMovable();
    void setActiveLayerSelectable(bool selectable);
    bool activeLayerSelectable();
    long enableMoveROI(bool enable);

    // The look of the shapes drawn next, kept by the scene: pen colour (opaque)
    // and whole width, brush colour with its alpha, the arm length of a point's
    // cross (at least 1), and the font of a text. Reading gives back what the
    // scene holds, the width truncated to whole pixels, the font without its
    // weight. A null output is left alone.
    long setPen(unsigned char r, unsigned char g, unsigned char b, unsigned long width);
    long getPen(unsigned char* r, unsigned char* g, unsigned char* b, unsigned long* width);
    long setBrush(unsigned char r, unsigned char g, unsigned char b, unsigned char a);
    long getBrush(unsigned char* r, unsigned char* g, unsigned char* b, unsigned char* a);
    long setPointSize(int size);
    long getPointSize(int* size);
    long setFont(VorFont font);
    long getFont(VorFont* font);

    // The tool bar. The index is a flag word of button bits, more than one bit
    // allowed; showToolbar switches all of them.
    long showToolbutton(long index, bool visable);
    long showToolbar(bool bVisible);

    // Screenshots of what the view shows of the picture: to a file (the suffix
    // names the format, JPEG without one) or into a VorImage of four channels.
    // They need a VorImage background; with a window the result is 0.
    long screenshot(const char* filePath);
    long screenshot(VorImage* image);

    // The cross-line and grid reticles as JSON texts; 0 also for text that
    // cannot be used.
    long setCrossLineInfo(QString info);
    long getCrossLineInfo(QString& info);
    long setGridLineInfo(QString info);
    long getGridLineInfo(QString& info);

    // The floating area over the picture, for hosts without the tool bar, and
    // the round number label at the same place. Floating itself is the host's
    // business: the flag is only kept for it.
    void SetFloatFlag(bool isFloat);
    bool isFloat();
    void SetFloatAreaVisible(bool visible = false);
    void SetIntoBtnVisible(bool visible = false);
    void SetFloatTipText(QString text);
    void setNum(QString numStr);
    void setNumVisible(bool visible = false);

signals:
    void mouseMove(double pointX, double pointY);
    void imgInfo(double pointX, double pointY, int r, int g, int b, float scale);
    void mouseButtonDown(long indexButton);
    void mouseButtonUp(long indexButton);
    void shapeResized(long id);
    void shapeMoved(long id);
    void shapeClicked(long id);
    void buttonClicked(long indexButton);
    void floatBtnClicked(bool checked);
    void intoBtnClicked(bool checked);
    void mouseDoubleClick();
    void mouseClicked(double pointX, double pointY);
    // Declared and never emitted; a host hears of a left press only by
    // mouseClicked at the release.
    void sigMousePress(double pointX, double pointY);
    void sigMouseRelease(double pointX, double pointY);
    void sigMouseRightPress(double pointX, double pointY);
    void sigMouseRightRelease(double pointX, double pointY);
    void sigMouseRightMoveRelease(double pointX, double pointY);
    // An input: a host emits it to select the shape of that id.
    void selectShape(qlonglong id);

private:
    void connectWindow(CMainWindow* window);
    // A draw call: the text tool back to picking texts when asked, then the
    // window's overlay form of the mode.
    long drawMode(DrawMode mode, bool pickTextsFirst);

    CMainWindow* m_mainWindow;
};
