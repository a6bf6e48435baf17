#pragma once

#include "KESImageWnd.h"

#include <QLabel>
#include <QList>
#include <QPointF>
#include <QString>

class ButtonToolbar;
class ImageCtrlView;
class Statusbar;

// The window a host embeds: a QLabel that assembles tool bar, view and status
// bar in this order and lays them out by hand from two flag words, the widget
// flag (WF_*) and the push-button flag. It relays the view's and the tool
// bar's events to the facade as signals, and runs the zoom commands.
class CMainWindow : public QLabel
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

public slots:
    void Zoom(float scale);
    void setVisible(int widgetFlag, bool isVisible);
    void showStatusbar(bool visible);
    void showScrollbar(bool visible);
    void repaintWnd();
    void setBackground(qlonglong image);
    void clearBackground();

    void OnZoomInPushButtonClicked(bool checked = false);
    void OnZoomOutPushButtonClicked(bool checked = false);
    void OnZoomFitPushButtonClicked(bool checked = false);
    void OnZoomOrgPushButtonClicked(bool checked = false);

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
    void createButtonToolbar();
    void createView();
    void createStatusbar();
    void connectSigs();
    void applyWidgetFlag(int widgetFlag, bool isVisible, bool fromSetVisible);
    void clickZoomButton(int button);

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
