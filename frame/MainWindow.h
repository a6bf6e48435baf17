#pragma once

#include "KESImageWnd.h"

#include <QLabel>
#include <QList>
#include <QPointF>
#include <QString>

class ButtonToolbar;
class ImageCtrlScene;
class ImageCtrlView;
class Statusbar;

// The window a host embeds: a QLabel that assembles tool bar, view and status
// bar in this order and lays them out by hand from two flag words, the widget
// flag (WF_*) and the push-button flag. It relays the view's and the tool
// bar's events to the facade as signals, and runs the zoom commands.
class KESIMAGEWND_TESTS_EXPORT CMainWindow : public QLabel
{
    Q_OBJECT

public:
    enum WidgetFlag {
        WF_TOOLBAR = 1,
        WF_SCROLLBAR = 2,
        WF_STATUSBAR = 4
    };

    // Every zoom value of the process passes through this one float.
    static float s_scale;
    // Constructed at load; no operation uses it.
    static QList<long long> m_wndList;

    explicit CMainWindow(QWidget* parent = nullptr);
    ~CMainWindow() override;

    using QLabel::setVisible;

    // The three arguments are ignored.
    void create(unsigned long long, bool, bool);
    void toDestroy(bool, bool);

    ImageCtrlView* GetImageCtrlView() const;
    ButtonToolbar* GetButtonToolbar() const { return m_toolbar; }
    Statusbar* GetStatusbar() const { return m_statusbar; }

    void setIsVorImg(bool isVorImg);
    bool isVorImg();

    void setInnerVisible(int widgetFlag, bool isVisible);
    int widgetFlag() const { return m_widgetFlag; }
    int pushButtonFlag() const { return m_pushButtonFlag; }
    bool scrollbarVisible() const { return m_scrollbarVisible; }

    void setWidgetParent(bool isWidgetParent);
    bool isWidgetParent() const;
    // The folder of the last file chosen in the open dialog.
    QString lastDir() const { return m_lastDir; }

    // Shows or hides the buttons of the bits set in the flag word, then keeps
    // the bar on while any bit of the word is on. The inner form lays out
    // without touching the scroll bars.
    void setToolbarVisible(long pushButtonFlag, bool isVisible);
    void setInnerToolbarVisible(int pushButtonFlag, bool isVisible);
    // A draw button's mode: the mouse limit goes on, and with a picture (or in
    // QImage mode) the selection is dropped and the mode set.
    void SelectDrawROIMode(DrawMode mode);
    // The host's way into a draw mode: refused without a picture in VorImage
    // mode and while a polygon is under way; otherwise the mode's cursor, a
    // fresh polygon for DM_POLYGON, the selection dropped, and the scene in
    // overlay mode, which lasts until an overlay is displayed. The mouse is
    // not limited, unlike the tool bar's form.
    void SelectDrawOverlayMode(DrawMode mode);

    // Saves what the view shows of the picture, at the current zoom with all
    // that lies on it: to a file (JPEG without a suffix) or into a VorImage.
    // -1 without a valid VorImage background.
    Q_SLOT long GrabWindow(const char* fileName) const;
    Q_SLOT long GrabWindow(VorImage* image) const;
    // The rectangle of the view that holds the picture, in view pixels.
    QRect grabRect() const;

    void SetFloatFlag(bool isFloat);
    bool isFloat() const;
    void SetFloatAreaVisible(bool visible);
    void SetIntoBtnVisible(bool visible);
    void SetFloatTipText(QString text);

public slots:
    void Zoom(float scale);
    void setVisible(int widgetFlag, bool isVisible);
    void showStatusbar(bool visible);
    void showScrollbar(bool visible);
    void repaintWnd();
    void setBackground(qlonglong image);
    void clearBackground();

    void showToolbar(bool visible);

    void OnLoadImagePushButtonClicked(bool checked = false);
    void OnZoomInPushButtonClicked(bool checked = false);
    void OnZoomOutPushButtonClicked(bool checked = false);
    void OnZoomFitPushButtonClicked(bool checked = false);
    void OnZoomOrgPushButtonClicked(bool checked = false);
    void OnDrawLinePushButtonClicked(bool checked = false);
    void OnDrawRectPushButtonClicked(bool checked = false);
    void OnDrawRect2PushButtonClicked(bool checked = false);
    void OnDrawEllipsePushButtonClicked(bool checked = false);
    void OnDrawCirclePushButtonClicked(bool checked = false);
    void OnDrawAnnularPushButtonClicked(bool checked = false);
    void OnDrawPolygonPushButtonClicked(bool checked = false);
    void OnDrawAnylinePushButtonClicked(bool checked = false);
    void OnDrawCloseAnylinePushButtonClicked(bool checked = false);
    void OnDrawPointPushButtonClicked(bool checked = false);

    void OnLoadImagePushButtonPressed();
    void OnZoomInPushButtonPressed();
    void OnZoomOutPushButtonPressed();
    void OnZoomFitPushButtonPressed();
    void OnZoomOrgPushButtonPressed();
    void OnDrawLinePushButtonPressed();
    void OnDrawRectPushButtonPressed();
    void OnDrawRect2PushButtonPressed();
    void OnDrawEllipsePushButtonPressed();
    void OnDrawCirclePushButtonPressed();
    void OnDrawAnnularPushButtonPressed();
    void OnDrawPolygonPushButtonPressed();
    void OnDrawAnylinePushButtonPressed();
    void OnDrawPointPushButtonPressed();

    void OnLoadImagePushButtonReleased();
    void OnZoomInPushButtonReleased();
    void OnZoomOutPushButtonReleased();
    void OnZoomFitPushButtonReleased();
    void OnZoomOrgPushButtonReleased();
    void OnDrawLinePushButtonReleased();
    void OnDrawRectPushButtonReleased();
    void OnDrawRect2PushButtonReleased();
    void OnDrawEllipsePushButtonReleased();
    void OnDrawCirclePushButtonReleased();
    void OnDrawAnnularPushButtonReleased();
    void OnDrawPolygonPushButtonReleased();
    void OnDrawAnylinePushButtonReleased();
    void OnDrawPointPushButtonReleased();

    // The shape calls of the facade on the window's layers. removeShape and
    // removeShapeList take the ids off every layer and end the selection;
    // visibleShape asks every layer; clear and clearLayer empty them.
    void removeShape(qlonglong id);
    void removeShapeList(QList<long> idList);
    void visibleShape(qlonglong id, bool visible);
    void clear();
    void clearLayer(KESImageWnd::Layer layerIndex);
    // Selects a shape of the shape layer by id and shows its handles, when
    // the layer lets the operator select.
    void selectShape(qlonglong id);

    void OnUpdateMousePosition(QPointF pos);
    void onMouseClicked(QPointF pos);
    void limtMouseChanged();
    void setLimitRect();

signals:
    void mouseMove(double pointX, double pointY);
    void imgInfo(double pointX, double pointY, int r, int g, int b, float scale);
    void mouseButtonDown(long indexButton);
    void mouseButtonUp(long indexButton);
    void buttonClicked(long indexButton);
    void floatBtnClicked(bool checked);
    void intoBtnClicked(bool checked);
    void mouseClicked(double pointX, double pointY);
    void sigMousePress(double pointX, double pointY);
    void sigMouseRelease(double pointX, double pointY);
    void sigMouseRightPress(double pointX, double pointY);
    void sigMouseRightRelease(double pointX, double pointY);
    void sigMouseRightMoveRelease(double pointX, double pointY);

    // Declared for the facade's calls; of these only sendRepaint is connected.
    void sendShowToolbutton(long index, bool visable);
    void sendShowToolbar(bool bVisible);
    void sendShowStatusbar(bool bVisible);
    void sendShowScrollbar(bool bVisible);
    void sendZoom(float scaleValue);
    void sendZoomFitWnd(bool checked);
    void sendZoomReset(bool checked);
    void sendZoomIn(bool checked);
    void sendZoomOut(bool checked);
    void sendRepaint();
    void sendScreenshot(const char* fileName);
    void sendRemoveShape(qlonglong id);
    void sendRemoveShapeList(QList<long> idList);
    void sendVisibleShape(qlonglong id, bool visible);
    void sendClear();
    void sendClearBackground();
    void sendClearLayer(KESImageWnd::Layer layerIndex);
    void sendSetBackground(qlonglong image);
    void sendDisplayRunShape(qlonglong shapes);

protected:
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void OnZoom(int model);

private:
    // The shape layer's part of removeShape and of clearLayer.
    void removeFromShapeLayer(qlonglong id);
    void clearShapeLayer();

    void createButtonToolbar();
    void createView();
    void createStatusbar();
    void connectSigs();
    void applyWidgetFlag(int widgetFlag, bool isVisible, bool fromSetVisible);
    void applyToolbarFlag(long pushButtonFlag, bool isVisible);
    void clickZoomButton(int button);
    void clickDrawButton(int button, DrawMode mode);
    // The view's scene, where the layers, the relay and the scale live.
    ImageCtrlScene* scene() const;

    VorImage m_spareImage;
    bool m_spareFlag;
    bool m_isAlive;
    ButtonToolbar* m_toolbar;
    Statusbar* m_statusbar;
    ImageCtrlView* m_imageView;
    int m_spareMode;
    int m_widgetFlag;
    int m_pushButtonFlag;
    QString m_lastDir;
    bool m_scrollbarVisible;
    bool m_isWidgetParent;
};
