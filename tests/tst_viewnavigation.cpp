#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "qimagectrlscrollbar.h"

#include "testkit.h"

#include <QtTest>

#include <QScrollBar>

#include <opencv2/core.hpp>

#include <cmath>

// Navigation in the image view as the operator does it: wheel zoom about the
// cursor with its limits, right-button panning with its cursors and signals,
// mouse reports in scene coordinates (image pixels, outside the picture too),
// absolute zoom, the zoom commands, resizing and the draw-mode cursor.
class tst_ViewNavigation : public QObject
{
    Q_OBJECT

private slots:
    void wheelZoomKeepsScenePointUnderCursor_data();
    void wheelZoomKeepsScenePointUnderCursor();
    void wheelReportsMousePositionAfterStep();
    void wheelDownStepsOnceBelowMinimumThenStops();
    void wheelStopsAboveViewportSize();
    void refusedWheelStepIsAcceptedAndDoesNotScroll();
    void wheelIsRefusedAboveViewportWidthToo();

    void zoomSetsAbsoluteScaleAboutViewportCentre();
    void zoomBelowMinimumChangesNothing();
    void zoomCommandsSetModelAndNarrowScale();
    void zoomOutCommandBelowMinimumKeepsScale();

    void rightDragPansByMouseDistance();
    void rightDragPansMirroredRightToLeft();
    void rightDragCursorsAreOnView();
    void rightClickWithoutMoveGivesRightRelease();
    void rightDragGivesMoveRelease();
    void leftReleaseDuringRightDragEndsDrag();
    void everyReleaseReportsMouseClicked_data();
    void everyReleaseReportsMouseClicked();
    void leftPressAndReleaseReportSceneCoordinates();
    void mouseMoveReportsScenePosition();
    void negativeCoordinatesOverLeftMarginReachSignals();
    void limitFlagDoesNotConfinePositions();

    void displayQImageReportsMousePosition();
    void displayVorImageReportsNoMousePosition();

    void resizeSetsViewSizeLessScrollBars();
    void resizeToNoWidthKeepsViewSize();
    void resizeInZoomInModelFitsAndKeepsModel();

    void drawModeCursorOnViewport_data();
    void drawModeCursorOnViewport();
    void resetDrawModeCursorGivesArrow();
    void setLimitMousePosEmitsChange();
    void parentWidgetIsHost();

    void scrollBarAnnouncesValueChangeFirst();
    void scrollBarIgnoresOtherChanges();
    void viewKeepsDefaultScrollBars();
    void sceneFrameIsAssembled();
    void sceneStoresOnlyPositiveScale();
};

namespace {

VorImage greyVorImage(int width, int height)
{
    cv::Mat mat(height, width, CV_8UC1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            mat.at<uchar>(y, x) = uchar((x + 3 * y) % 256);
    return VorImage(mat);
}

// A 400 by 300 picture in a 640 by 480 view, with a scene rectangle so large
// that no scroll bar value is clamped.
struct NavigationView
{
    NavigationView()
        : picture(greyVorImage(400, 300))
    {
        v.view->DisplayImage(&picture);
        v.view->setSceneRect(-100000, -100000, 200000, 200000);
        v.view->centerOn(200, 150);
    }
    ImageCtrlView* view() const { return v.view; }
    ImageCtrlScene* scene() const { return v.scene(); }
    ImageLayer* layer() const { return v.layer(); }
    QScrollBar* h() const { return v.view->horizontalScrollBar(); }
    QScrollBar* vbar() const { return v.view->verticalScrollBar(); }

    StandaloneView v;
    VorImage picture;
};

// What the wheel sets the scroll bars to: the scene point under the cursor,
// mapped by the new matrix, less the cursor's share of the viewport.
QPoint expectedScroll(QGraphicsView* view, const QPointF& scenePoint, const QPoint& cursor)
{
    const double w = view->viewport()->width();
    const double h = view->viewport()->height();
    const double fx = cursor.x() / w;
    const double fy = cursor.y() / h;
    const QPointF m = view->matrix().map(scenePoint);
    return QPoint(int(m.x() - w * fx), int(m.y() - h * fy));
}

QPoint scrollValues(QGraphicsView* view)
{
    return QPoint(view->horizontalScrollBar()->value(), view->verticalScrollBar()->value());
}

// Signals of the view in the order they come, by name.
struct SignalLog
{
    explicit SignalLog(ImageCtrlView* view)
    {
        QObject::connect(view, &ImageCtrlView::mouseClicked, [this](QPointF p) { add("mouseClicked", p); });
        QObject::connect(view, &ImageCtrlView::sigMousePress,
                         [this](double x, double y) { add("sigMousePress", QPointF(x, y)); });
        QObject::connect(view, &ImageCtrlView::sigMouseRelease,
                         [this](double x, double y) { add("sigMouseRelease", QPointF(x, y)); });
        QObject::connect(view, &ImageCtrlView::sigMouseRightPress,
                         [this](double x, double y) { add("sigMouseRightPress", QPointF(x, y)); });
        QObject::connect(view, &ImageCtrlView::sigMouseRightRelease,
                         [this](double x, double y) { add("sigMouseRightRelease", QPointF(x, y)); });
        QObject::connect(view, &ImageCtrlView::sigMouseRightMoveRelease,
                         [this](double x, double y) { add("sigMouseRightMoveRelease", QPointF(x, y)); });
    }
    void add(const QString& name, const QPointF& p)
    {
        names << name;
        points << p;
    }
    void clear()
    {
        names.clear();
        points.clear();
    }
    QStringList names;
    QList<QPointF> points;
};

// The signal without arguments, beside the protected override of that name.
const auto announced = static_cast<void (QImageCtrlScrollBar::*)()>(&QImageCtrlScrollBar::sliderChange);

bool within(const QPoint& a, const QPoint& b, int tolerance)
{
    return qAbs(a.x() - b.x()) <= tolerance && qAbs(a.y() - b.y()) <= tolerance;
}

} // namespace

void tst_ViewNavigation::wheelZoomKeepsScenePointUnderCursor_data()
{
    QTest::addColumn<QPointF>("scenePoint");
    QTest::addColumn<QList<int>>("deltas");

    QTest::newRow("up at a picture point") << QPointF(100.3, 80.7) << QList<int>{120};
    QTest::newRow("down at a picture point") << QPointF(250.5, 40.2) << QList<int>{-120};
    QTest::newRow("delta 0 counts as down") << QPointF(120.0, 150.0) << QList<int>{0};
    QTest::newRow("up, up, down, up") << QPointF(390.1, 290.9) << QList<int>{120, 120, -120, 240};
    QTest::newRow("down three times") << QPointF(10.0, 10.0) << QList<int>{-120, -1, -120};
}

void tst_ViewNavigation::wheelZoomKeepsScenePointUnderCursor()
{
    QFETCH(QPointF, scenePoint);
    QFETCH(QList<int>, deltas);
    NavigationView n;
    const QPoint cursor = n.view()->mapFromScene(scenePoint);
    QVERIFY(n.view()->viewport()->rect().contains(cursor));

    for (int delta : deltas) {
        const QPointF before = n.view()->mapToScene(cursor);
        const double scale = n.scene()->getScale();
        n.layer()->SetZoomModel(VOR_ZOOM_FIT);
        Kit::wheelAtViewport(n.view(), cursor, delta);

        const bool up = delta >= 1;
        const double expectedScale = up ? scale * 1.25 : scale / 1.25;
        QVERIFY2(n.scene()->getScale() == expectedScale, qPrintable(QString::number(n.scene()->getScale())));
        QVERIFY(n.view()->matrix().m11() == expectedScale);
        QVERIFY(n.view()->matrix().m22() == expectedScale);
        QCOMPARE(n.layer()->GetZoomModel(), up ? VOR_ZOOM_IN : VOR_ZOOM_OUT);
        QCOMPARE(scrollValues(n.view()), expectedScroll(n.view(), before, cursor));
        // The scene point that was under the cursor still is, to a pixel.
        const QPoint now = n.view()->mapFromScene(before);
        QVERIFY2(within(now, cursor, 1), qPrintable(QStringLiteral("%1,%2 vs %3,%4")
                                                        .arg(now.x()).arg(now.y()).arg(cursor.x()).arg(cursor.y())));
    }
}

void tst_ViewNavigation::wheelReportsMousePositionAfterStep()
{
    NavigationView n;
    QSignalSpy spy(n.view(), &ImageCtrlView::updateMousePosition);
    const QPoint cursor(157, 203);
    Kit::wheelAtViewport(n.view(), cursor, 120);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toPointF(), n.view()->mapToScene(cursor));
    Kit::wheelAtViewport(n.view(), cursor, -120);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toPointF(), n.view()->mapToScene(cursor));
}

void tst_ViewNavigation::wheelDownStepsOnceBelowMinimumThenStops()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(0.03), 0L);
    QCOMPARE(n.scene()->getScale(), 0.03);
    const QPoint cursor(300, 200);

    n.layer()->SetZoomModel(VOR_ZOOM_IN);
    Kit::wheelAtViewport(n.view(), cursor, -120);
    // The test is on the scale before the step: 0.03 still steps, to 0.024.
    QVERIFY(n.scene()->getScale() == 0.03 / 1.25);
    QVERIFY(qFuzzyCompare(n.scene()->getScale(), 0.024));
    QVERIFY(n.view()->matrix().m11() == 0.03 / 1.25);
    QCOMPARE(n.layer()->GetZoomModel(), VOR_ZOOM_OUT);

    // The next step changes nothing but the model, and still sets the scroll
    // bars and reports the position.
    n.layer()->SetZoomModel(VOR_ZOOM_IN);
    n.h()->setValue(n.h()->value() + 37);
    n.vbar()->setValue(n.vbar()->value() - 23);
    // With the matrix unchanged, the bars are set to where they stand except
    // where the truncation of the formula moves them by one: find a cursor
    // position of that kind, so that setting them shows.
    QPoint probe;
    for (int x = 1; x < n.view()->viewport()->width() && probe.isNull(); ++x) {
        for (int y = 1; y < n.view()->viewport()->height() && probe.isNull(); y += 7) {
            const QPoint c(x, y);
            if (expectedScroll(n.view(), n.view()->mapToScene(c), c) != scrollValues(n.view()))
                probe = c;
        }
    }
    QVERIFY(!probe.isNull());
    const QPointF before = n.view()->mapToScene(probe);
    const QPoint expected = expectedScroll(n.view(), before, probe);
    QSignalSpy spy(n.view(), &ImageCtrlView::updateMousePosition);
    Kit::wheelAtViewport(n.view(), probe, -120);
    QVERIFY(n.scene()->getScale() == 0.03 / 1.25);
    QVERIFY(n.view()->matrix().m11() == 0.03 / 1.25);
    QCOMPARE(n.layer()->GetZoomModel(), VOR_ZOOM_OUT);
    QCOMPARE(scrollValues(n.view()), expected);
    QCOMPARE(spy.count(), 1);

    // Wheel up from there works as usual.
    Kit::wheelAtViewport(n.view(), cursor, 120);
    QVERIFY(n.scene()->getScale() == 0.03 / 1.25 * 1.25);
}

void tst_ViewNavigation::wheelStopsAboveViewportSize()
{
    EmbeddedWindow w;
    const QSize extra = w.view()->size() - w.view()->viewport()->size();
    // Tool bar 40 and status bar 30 around the view.
    QCOMPARE(w.wnd->move(0, 0, 800 + extra.width(), 600 + extra.height() + 70), 0L);
    QApplication::processEvents();
    QCOMPARE(w.view()->viewport()->size(), QSize(800, 600));
    QCOMPARE(w.setPicture(greyVorImage(2, 2)), 0L);
    ImageLayer* layer = w.scene()->GetImageLayer();
    const QPoint cursor(400, 300);

    // At 600 the scale is not above the height: one more step.
    QCOMPARE(w.wnd->zoom(600.0), 0L);
    QCOMPARE(w.scene()->getScale(), 600.0);
    Kit::wheelAtViewport(w.view(), cursor, 120);
    QCOMPARE(w.scene()->getScale(), 750.0);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);

    // At 750 the wheel stops: no step, no model, no scroll, no signal.
    layer->SetZoomModel(VOR_ZOOM_ORG);
    const QPoint scroll = scrollValues(w.view());
    QSignalSpy spy(w.view(), &ImageCtrlView::updateMousePosition);
    Kit::wheelAtViewport(w.view(), cursor, 120);
    QCOMPARE(w.scene()->getScale(), 750.0);
    QCOMPARE(w.view()->matrix().m11(), 750.0);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_ORG);
    QCOMPARE(scrollValues(w.view()), scroll);
    QCOMPARE(spy.count(), 0);

    // The commands and Zoom know no upper limit.
    QCOMPARE(w.wnd->zoomIn(), 0L);
    QCOMPARE(w.scene()->getScale(), 937.5);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    QCOMPARE(w.wnd->zoom(2000.0), 0L);
    QCOMPARE(w.scene()->getScale(), 2000.0);
    QCOMPARE(w.view()->matrix().m11(), 2000.0);
    // Nor does the fit: it applies from above the limit too.
    const float fit = layer->GetFitImageScaledValue();
    QCOMPARE(w.wnd->zoomFitWnd(), 0L);
    QVERIFY(w.scene()->getScale() == double(fit));
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);

    // Wheel down is never stopped from above.
    QCOMPARE(w.wnd->zoom(2000.0), 0L);
    Kit::wheelAtViewport(w.view(), cursor, -120);
    QCOMPARE(w.scene()->getScale(), 1600.0);
}

void tst_ViewNavigation::refusedWheelStepIsAcceptedAndDoesNotScroll()
{
    NavigationView n;
    n.v.setViewportSize(QSize(300, 200));
    QCOMPARE(n.view()->viewport()->size(), QSize(300, 200));
    QCOMPARE(n.view()->Zoom(250.0), 0L);
    const QPoint scroll = scrollValues(n.view());
    const QPoint pos(100, 100);
    QWheelEvent event(QPointF(pos), QPointF(n.view()->viewport()->mapToGlobal(pos)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    event.ignore();
    QApplication::sendEvent(n.view()->viewport(), &event);
    QVERIFY(event.isAccepted());
    QCOMPARE(n.scene()->getScale(), 250.0);
    QCOMPARE(scrollValues(n.view()), scroll);

    // An accepted step accepts the event too.
    QWheelEvent down(QPointF(pos), QPointF(n.view()->viewport()->mapToGlobal(pos)), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    down.ignore();
    QApplication::sendEvent(n.view()->viewport(), &down);
    QVERIFY(down.isAccepted());
    QCOMPARE(n.scene()->getScale(), 200.0);
}

void tst_ViewNavigation::wheelIsRefusedAboveViewportWidthToo()
{
    NavigationView n;
    n.v.setViewportSize(QSize(200, 500));
    QCOMPARE(n.view()->viewport()->size(), QSize(200, 500));
    QCOMPARE(n.view()->Zoom(200.0), 0L);
    Kit::wheelAtViewport(n.view(), QPoint(50, 50), 120);
    QCOMPARE(n.scene()->getScale(), 250.0);
    Kit::wheelAtViewport(n.view(), QPoint(50, 50), 120);
    QCOMPARE(n.scene()->getScale(), 250.0);
}

void tst_ViewNavigation::zoomSetsAbsoluteScaleAboutViewportCentre()
{
    NavigationView n;
    n.layer()->SetZoomModel(VOR_ZOOM_OUT);
    const QPoint centre = n.view()->viewport()->rect().center();
    const QPointF before = n.view()->mapToScene(centre);
    QCOMPARE(n.view()->Zoom(2.5), 0L);
    QCOMPARE(n.scene()->getScale(), 2.5);
    QCOMPARE(n.view()->matrix().m11(), 2.5);
    QCOMPARE(n.view()->matrix().m22(), 2.5);
    QCOMPARE(n.view()->matrix().m12(), 0.0);
    QCOMPARE(n.layer()->GetZoomModel(), VOR_ZOOM_OUT);
    QVERIFY(within(n.view()->mapFromScene(before), centre, 1));
    QCOMPARE(n.view()->Zoom(0.03), 0L);
    QCOMPARE(n.scene()->getScale(), 0.03);
}

void tst_ViewNavigation::zoomBelowMinimumChangesNothing()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(1.5), 0L);
    const QMatrix matrix = n.view()->matrix();
    QCOMPARE(n.view()->Zoom(0.02), 0L);
    QCOMPARE(n.view()->Zoom(0.0299), 0L);
    QCOMPARE(n.view()->Zoom(-3.0), 0L);
    QCOMPARE(n.view()->Zoom(std::nan("")), 0L);
    QCOMPARE(n.scene()->getScale(), 1.5);
    QCOMPARE(n.view()->matrix(), matrix);
}

void tst_ViewNavigation::zoomCommandsSetModelAndNarrowScale()
{
    EmbeddedWindow w;
    QCOMPARE(w.setPicture(greyVorImage(300, 200)), 0L);
    ImageLayer* layer = w.scene()->GetImageLayer();
    // Fitted in double precision: 391 / 200.
    QVERIFY(w.scene()->getScale() == 391.0 / 200.0);

    double scale = w.scene()->getScale();
    QCOMPARE(w.wnd->zoomIn(), 0L);
    double expected = double(float(double(float(scale)) * 1.25));
    QVERIFY(w.scene()->getScale() == expected);
    QVERIFY(w.view()->matrix().m11() == expected);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    QVERIFY(CMainWindow::s_scale == float(expected));

    scale = w.scene()->getScale();
    QCOMPARE(w.wnd->zoomOut(), 0L);
    expected = double(float(double(float(scale)) / 1.25));
    QVERIFY(w.scene()->getScale() == expected);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_OUT);

    QCOMPARE(w.wnd->zoomReset(), 0L);
    QCOMPARE(w.scene()->getScale(), 1.0);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_ORG);

    QCOMPARE(w.wnd->zoomFitWnd(), 0L);
    QVERIFY(w.scene()->getScale() == double(float(391.0 / 200.0)));
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);

    // The facade's zoom narrows to float as well and leaves the model alone.
    QCOMPARE(w.wnd->zoom(1.1), 0L);
    QVERIFY(w.scene()->getScale() == double(1.1f));
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
}

void tst_ViewNavigation::zoomOutCommandBelowMinimumKeepsScale()
{
    EmbeddedWindow w;
    QCOMPARE(w.showPicture(greyVorImage(300, 200), 0.035), 0L);
    QVERIFY(w.scene()->getScale() == double(0.035f));
    QCOMPARE(w.wnd->zoomOut(), 0L);
    // 0.028 is below 0.03: Zoom ignores it, the model still changes.
    QVERIFY(w.scene()->getScale() == double(0.035f));
    QCOMPARE(w.scene()->GetImageLayer()->GetZoomModel(), VOR_ZOOM_OUT);
}

void tst_ViewNavigation::rightDragPansByMouseDistance()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(4.0), 0L);
    const QPoint start = scrollValues(n.view());
    QSignalSpy moves(n.view(), &ImageCtrlView::updateMousePosition);

    Kit::pressAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    QCOMPARE(scrollValues(n.view()), start);
    Kit::moveToViewport(n.view(), QPoint(330, 220), Qt::RightButton);
    QCOMPARE(scrollValues(n.view()), start - QPoint(30, 20));
    Kit::moveToViewport(n.view(), QPoint(310, 260), Qt::RightButton);
    QCOMPARE(scrollValues(n.view()), start - QPoint(30, 20) - QPoint(-20, 40));
    QCOMPARE(moves.count(), 2);
    Kit::releaseAtViewport(n.view(), QPoint(310, 260), Qt::RightButton);
    QCOMPARE(scrollValues(n.view()), start - QPoint(10, 60));

    // After the release a move pans no more.
    Kit::moveToViewport(n.view(), QPoint(200, 100), Qt::NoButton);
    QCOMPARE(scrollValues(n.view()), start - QPoint(10, 60));
}

void tst_ViewNavigation::rightDragPansMirroredRightToLeft()
{
    NavigationView n;
    n.view()->setLayoutDirection(Qt::RightToLeft);
    QApplication::processEvents();
    QCOMPARE(n.view()->Zoom(4.0), 0L);
    const QPoint start = scrollValues(n.view());
    Kit::pressAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    Kit::moveToViewport(n.view(), QPoint(330, 220), Qt::RightButton);
    QCOMPARE(scrollValues(n.view()), start + QPoint(30, -20));
    Kit::releaseAtViewport(n.view(), QPoint(330, 220), Qt::RightButton);
}

void tst_ViewNavigation::rightDragCursorsAreOnView()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(4.0), 0L);
    QWidget* viewport = n.view()->viewport();
    n.view()->setDrawModeCursorIcon(DM_RECT1);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);

    Kit::pressAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    QVERIFY(n.view()->testAttribute(Qt::WA_SetCursor));
    QCOMPARE(n.view()->cursor().shape(), Qt::OpenHandCursor);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);

    Kit::moveToViewport(n.view(), QPoint(310, 205), Qt::RightButton);
    QCOMPARE(n.view()->cursor().shape(), Qt::ClosedHandCursor);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);

    Kit::releaseAtViewport(n.view(), QPoint(310, 205), Qt::RightButton);
    QCOMPARE(n.view()->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);

    // A press and release without a move: open hand, then arrow.
    Kit::pressAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    QCOMPARE(n.view()->cursor().shape(), Qt::OpenHandCursor);
    Kit::releaseAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    QCOMPARE(n.view()->cursor().shape(), Qt::ArrowCursor);

    // A move without the right button held leaves the cursor alone.
    Kit::moveToViewport(n.view(), QPoint(320, 210), Qt::NoButton);
    QCOMPARE(n.view()->cursor().shape(), Qt::ArrowCursor);
}

void tst_ViewNavigation::rightClickWithoutMoveGivesRightRelease()
{
    NavigationView n;
    SignalLog log(n.view());
    const QPointF at(120.25, 75.5);
    const QPointF sp = n.view()->mapToScene(n.view()->mapFromScene(at));
    Kit::pressAt(n.view(), at, Qt::RightButton);
    QCOMPARE(log.names, QStringList{"sigMouseRightPress"});
    QCOMPARE(log.points.at(0), sp);
    QVERIFY(n.view()->isRightDown());

    log.clear();
    Kit::releaseAt(n.view(), at, Qt::RightButton);
    QCOMPARE(log.names, (QStringList{"mouseClicked", "sigMouseRightRelease"}));
    QCOMPARE(log.points.at(0), sp);
    QCOMPARE(log.points.at(1), sp);
    QVERIFY(!n.view()->isRightDown());
    QVERIFY(!n.view()->isRightMoved());
}

void tst_ViewNavigation::rightDragGivesMoveRelease()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(4.0), 0L);
    SignalLog log(n.view());
    Kit::pressAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    Kit::moveToViewport(n.view(), QPoint(301, 200), Qt::RightButton);
    QVERIFY(n.view()->isRightMoved());
    log.clear();
    const QPoint end(301, 200);
    Kit::releaseAtViewport(n.view(), end, Qt::RightButton);
    QCOMPARE(log.names, (QStringList{"mouseClicked", "sigMouseRightMoveRelease"}));
    QCOMPARE(log.points.at(1), n.view()->mapToScene(end));
    QVERIFY(!n.view()->isRightDown());
    QVERIFY(!n.view()->isRightMoved());

    // The next click without a move is a plain right release again.
    log.clear();
    Kit::pressAtViewport(n.view(), end, Qt::RightButton);
    Kit::releaseAtViewport(n.view(), end, Qt::RightButton);
    QCOMPARE(log.names, (QStringList{"sigMouseRightPress", "mouseClicked", "sigMouseRightRelease"}));
}

void tst_ViewNavigation::leftReleaseDuringRightDragEndsDrag()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(4.0), 0L);
    SignalLog log(n.view());
    Kit::pressAtViewport(n.view(), QPoint(300, 200), Qt::RightButton);
    Kit::moveToViewport(n.view(), QPoint(320, 200), Qt::RightButton);
    log.clear();
    Kit::releaseAtViewport(n.view(), QPoint(320, 200), Qt::LeftButton);
    QCOMPARE(log.names, (QStringList{"mouseClicked", "sigMouseRightMoveRelease", "sigMouseRelease"}));
    QCOMPARE(n.view()->cursor().shape(), Qt::ArrowCursor);
    QVERIFY(!n.view()->isRightDown());

    // The drag is over: moves do not pan, the right release has no drag to end.
    const QPoint scroll = scrollValues(n.view());
    Kit::moveToViewport(n.view(), QPoint(360, 240), Qt::RightButton);
    QCOMPARE(scrollValues(n.view()), scroll);
    log.clear();
    Kit::releaseAtViewport(n.view(), QPoint(360, 240), Qt::RightButton);
    QCOMPARE(log.names, QStringList{"mouseClicked"});
}

void tst_ViewNavigation::everyReleaseReportsMouseClicked_data()
{
    Kit::addButtonRows({Qt::LeftButton, Qt::RightButton, Qt::MiddleButton});
}

void tst_ViewNavigation::everyReleaseReportsMouseClicked()
{
    QFETCH(int, button);
    NavigationView n;
    QSignalSpy spy(n.view(), &ImageCtrlView::mouseClicked);
    const QPoint pos(211, 133);
    Kit::pressAtViewport(n.view(), pos, Qt::MouseButton(button));
    QCOMPARE(spy.count(), 0);
    Kit::releaseAtViewport(n.view(), pos, Qt::MouseButton(button));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toPointF(), n.view()->mapToScene(pos));
}

void tst_ViewNavigation::leftPressAndReleaseReportSceneCoordinates()
{
    NavigationView n;
    QCOMPARE(n.view()->Zoom(3.0), 0L);
    SignalLog log(n.view());
    const QPoint press(100, 90);
    const QPoint release(140, 95);
    Kit::pressAtViewport(n.view(), press, Qt::LeftButton);
    QCOMPARE(log.names, QStringList{"sigMousePress"});
    QCOMPARE(log.points.at(0), n.view()->mapToScene(press));
    Kit::moveToViewport(n.view(), release, Qt::LeftButton);
    Kit::releaseAtViewport(n.view(), release, Qt::LeftButton);
    QCOMPARE(log.names, (QStringList{"sigMousePress", "mouseClicked", "sigMouseRelease"}));
    QCOMPARE(log.points.at(1), n.view()->mapToScene(release));
    QCOMPARE(log.points.at(2), n.view()->mapToScene(release));
    // A left drag does not pan.
    QVERIFY(!n.view()->isRightDown());
}

void tst_ViewNavigation::mouseMoveReportsScenePosition()
{
    NavigationView n;
    QSignalSpy spy(n.view(), &ImageCtrlView::updateMousePosition);
    const QPoint points[] = {QPoint(10, 10), QPoint(300, 250), QPoint(5, 400)};
    for (const QPoint& p : points)
        Kit::moveToViewport(n.view(), p, Qt::NoButton);
    QCOMPARE(spy.count(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(spy.at(i).at(0).toPointF(), n.view()->mapToScene(points[i]));
}

void tst_ViewNavigation::negativeCoordinatesOverLeftMarginReachSignals()
{
    EmbeddedWindow w;
    VorImage picture = greyVorImage(50, 300);
    QCOMPARE(w.wnd->setBackground(picture), 0L);
    ImageCtrlView* view = w.view();
    const QPoint left = view->mapFromScene(QPointF(0, 150));
    QVERIFY2(left.x() > 20, "the picture is fitted by height, with a margin to its left");
    const QPoint margin(left.x() / 2, left.y());
    const QPointF sp = view->mapToScene(margin);
    QVERIFY(sp.x() < -1.0);

    SignalLog log(view);
    QSignalSpy viewMoves(view, &ImageCtrlView::updateMousePosition);
    QSignalSpy hostMoves(w.wnd.get(), &KESImageWnd::mouseMove);
    QSignalSpy hostInfo(w.wnd.get(), &KESImageWnd::imgInfo);
    QSignalSpy hostClicks(w.wnd.get(), &KESImageWnd::mouseClicked);

    Kit::moveToViewport(view, margin, Qt::NoButton);
    QCOMPARE(viewMoves.count(), 1);
    QCOMPARE(viewMoves.at(0).at(0).toPointF(), sp);
    QCOMPARE(hostMoves.count(), 1);
    QCOMPARE(hostMoves.at(0).at(0).toDouble(), sp.x());
    QCOMPARE(hostMoves.at(0).at(1).toDouble(), sp.y());
    QCOMPARE(hostInfo.count(), 1);
    QCOMPARE(hostInfo.at(0).at(2).toInt(), 153);

    Kit::pressAtViewport(view, margin, Qt::LeftButton);
    Kit::releaseAtViewport(view, margin, Qt::LeftButton);
    Kit::pressAtViewport(view, margin, Qt::RightButton);
    Kit::releaseAtViewport(view, margin, Qt::RightButton);
    QCOMPARE(log.names, (QStringList{"sigMousePress", "mouseClicked", "sigMouseRelease", "sigMouseRightPress",
                                     "mouseClicked", "sigMouseRightRelease"}));
    for (const QPointF& p : log.points)
        QCOMPARE(p, sp);
    QCOMPARE(hostClicks.count(), 2);
    QCOMPARE(hostClicks.at(0).at(0).toDouble(), sp.x());
    QCOMPARE(hostClicks.at(0).at(1).toDouble(), sp.y());
}

void tst_ViewNavigation::limitFlagDoesNotConfinePositions()
{
    EmbeddedWindow w;
    QCOMPARE(w.setPicture(greyVorImage(50, 300)), 0L);
    ImageCtrlView* view = w.view();
    view->setLimitMousePos(true);
    // The window applies the limit a millisecond later.
    Kit::letQueuedCallsRun();
    QVERIFY(view->limitMousePos());
    QSignalSpy moves(view, &ImageCtrlView::updateMousePosition);
    QSignalSpy clicks(view, &ImageCtrlView::mouseClicked);
    const QPoint corner(2, 2);
    const QPointF sp = view->mapToScene(corner);
    QVERIFY(sp.x() < 0.0);
    Kit::moveToViewport(view, corner, Qt::NoButton);
    Kit::pressAtViewport(view, corner, Qt::LeftButton);
    Kit::releaseAtViewport(view, corner, Qt::LeftButton);
    QCOMPARE(moves.count(), 1);
    QCOMPARE(moves.at(0).at(0).toPointF(), sp);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).toPointF(), sp);
}

void tst_ViewNavigation::displayQImageReportsMousePosition()
{
    StandaloneView v;
    QSignalSpy spy(v.view, &ImageCtrlView::updateMousePosition);
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QCOMPARE(v.view->DisplayImage(picture), 0L);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toPointF(), v.view->mapToScene(v.view->mapFromGlobal(QCursor::pos())));
    QCOMPARE(v.view->imageRect(), QRect(0, 0, 40, 30));

    QImage null;
    QCOMPARE(v.view->DisplayImage(null), -1L);
    QCOMPARE(spy.count(), 1);
}

void tst_ViewNavigation::displayVorImageReportsNoMousePosition()
{
    StandaloneView v;
    QSignalSpy spy(v.view, &ImageCtrlView::updateMousePosition);
    VorImage picture = greyVorImage(40, 30);
    QCOMPARE(v.view->DisplayImage(&picture), 0L);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(v.view->imageRect(), QRect(0, 0, 40, 30));
    QCOMPARE(v.layer()->GetQImage()->size(), QSize(40, 30));
}

void tst_ViewNavigation::resizeSetsViewSizeLessScrollBars()
{
    StandaloneView v(QSize(500, 400));
    double w = 0, h = 0;
    v.scene()->getViewSize(w, h);
    QCOMPARE(w, 481.0);
    QCOMPARE(h, 381.0);

    v.view->SetScrollVisible(false);
    QVERIFY(!v.view->scrollVisible());
    v.view->resize(450, 301);
    QApplication::processEvents();
    v.scene()->getViewSize(w, h);
    QCOMPARE(w, 448.0);
    QCOMPARE(h, 299.0);

    // Through the window: the scroll-bar flag reaches the view and counts at
    // its next resize.
    EmbeddedWindow win;
    QCOMPARE(win.wnd->showScrollbar(false), true);
    QApplication::processEvents();
    QVERIFY(!win.view()->scrollVisible());
    QCOMPARE(win.wnd->move(0, 0, 600, 450), 0L);
    QApplication::processEvents();
    QCOMPARE(win.view()->size(), QSize(600, 380));
    win.scene()->getViewSize(w, h);
    QCOMPARE(w, 598.0);
    QCOMPARE(h, 378.0);
    QCOMPARE(win.wnd->showScrollbar(true), true);
    QCOMPARE(win.wnd->move(0, 0, 640, 480), 0L);
    QApplication::processEvents();
    win.scene()->getViewSize(w, h);
    QCOMPARE(w, 621.0);
    QCOMPARE(h, 391.0);
}

void tst_ViewNavigation::resizeToNoWidthKeepsViewSize()
{
    StandaloneView v(QSize(500, 400));
    VorImage picture = greyVorImage(100, 100);
    QCOMPARE(v.view->DisplayImage(&picture), 0L);
    const double scale = v.scene()->getScale();
    v.view->resize(0, 300);
    QApplication::processEvents();
    double w = 0, h = 0;
    v.scene()->getViewSize(w, h);
    QCOMPARE(w, 481.0);
    QCOMPARE(h, 381.0);
    QCOMPARE(v.scene()->getScale(), scale);
}

void tst_ViewNavigation::resizeInZoomInModelFitsAndKeepsModel()
{
    EmbeddedWindow w;
    QCOMPARE(w.setPicture(greyVorImage(200, 100)), 0L);
    ImageLayer* layer = w.scene()->GetImageLayer();
    Kit::wheelAtViewport(w.view(), QPoint(100, 100), 120);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    const double zoomed = w.scene()->getScale();

    // The view becomes 500 by 330: view size 481 by 311.
    QCOMPARE(w.wnd->move(0, 0, 500, 400), 0L);
    QApplication::processEvents();
    QCOMPARE(w.view()->size(), QSize(500, 330));
    const float fit = float(311.0 / 100.0 < 481.0 / 200.0 ? 311.0 / 100.0 : 481.0 / 200.0);
    QVERIFY(w.scene()->getScale() != zoomed);
    QVERIFY(w.scene()->getScale() == double(fit));
    QVERIFY(w.view()->matrix().m11() == double(fit));
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    QCOMPARE(layer->GetFitImageScaledValue(), fit);
}

void tst_ViewNavigation::drawModeCursorOnViewport_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("shape");
    QTest::newRow("DM_SELECT") << int(DM_SELECT) << int(Qt::ArrowCursor);
    const char* names[] = {"DM_POINT", "DM_LINE",  "DM_RECT1",   "DM_RECT2",      "DM_ELLIPSE",     "DM_CIRCLE",
                           "DM_POLYGON", "DM_ANYLINE", "DM_ANNULAR", "DM_ARC", "DM_ARROWLINE", "DM_ANYCLOSELINE"};
    for (int mode = DM_POINT; mode <= DM_ANYCLOSELINE; ++mode)
        QTest::newRow(names[mode - 1]) << mode << int(Qt::CrossCursor);
    QTest::newRow("DM_MASK") << int(DM_MASK) << int(Qt::ArrowCursor);
    QTest::newRow("DM_RAKERECT1") << int(DM_RAKERECT1) << int(Qt::ArrowCursor);
    QTest::newRow("DM_RAKERECT2") << int(DM_RAKERECT2) << int(Qt::ArrowCursor);
    QTest::newRow("99") << 99 << int(Qt::ArrowCursor);
}

void tst_ViewNavigation::drawModeCursorOnViewport()
{
    QFETCH(int, mode);
    QFETCH(int, shape);
    StandaloneView v;
    // Start from the other cursor, so that each row changes something.
    v.view->viewport()->setCursor(shape == Qt::ArrowCursor ? Qt::CrossCursor : Qt::ArrowCursor);
    v.view->setDrawModeCursorIcon(DrawMode(mode));
    QCOMPARE(int(v.view->viewport()->cursor().shape()), shape);
    QVERIFY(!v.view->testAttribute(Qt::WA_SetCursor));
}

void tst_ViewNavigation::resetDrawModeCursorGivesArrow()
{
    StandaloneView v;
    v.view->setDrawModeCursorIcon(DM_POLYGON);
    QCOMPARE(v.view->viewport()->cursor().shape(), Qt::CrossCursor);
    v.view->resetDrawModeCursorIcon();
    QCOMPARE(v.view->viewport()->cursor().shape(), Qt::ArrowCursor);
    QVERIFY(v.view->viewport()->testAttribute(Qt::WA_SetCursor));
}

void tst_ViewNavigation::setLimitMousePosEmitsChange()
{
    StandaloneView v;
    QVERIFY(!v.view->limitMousePos());
    QSignalSpy spy(v.view, &ImageCtrlView::limitMouseChanged);
    v.view->setLimitMousePos(true);
    QCOMPARE(spy.count(), 1);
    QVERIFY(v.view->limitMousePos());
    v.view->setLimitMousePos(true);
    QCOMPARE(spy.count(), 2);
    v.view->setLimitMousePos(false);
    QCOMPARE(spy.count(), 3);
    QVERIFY(!v.view->limitMousePos());
}

void tst_ViewNavigation::parentWidgetIsHost()
{
    StandaloneView v;
    QCOMPARE(v.view->parentWidget(), v.host.get());
    EmbeddedWindow w;
    QCOMPARE(w.view()->parentWidget(), static_cast<QWidget*>(w.window()));
}

void tst_ViewNavigation::scrollBarAnnouncesValueChangeFirst()
{
    QImageCtrlScrollBar bar(Qt::Horizontal);
    bar.setRange(0, 100);
    QStringList order;
    QList<int> valuesSeen;
    connect(&bar, announced, this, [&] {
        order << "sliderChange";
        valuesSeen << bar.value();
    });
    connect(&bar, &QScrollBar::valueChanged, this, [&](int) { order << "valueChanged"; });
    bar.setValue(40);
    QCOMPARE(order, (QStringList{"sliderChange", "valueChanged"}));
    QCOMPARE(valuesSeen, QList<int>{40});
    bar.setValue(40);
    QCOMPARE(order.size(), 2);
    bar.setValue(7);
    QCOMPARE(order, (QStringList{"sliderChange", "valueChanged", "sliderChange", "valueChanged"}));
    QCOMPARE(bar.orientation(), Qt::Horizontal);

    QWidget parent;
    QImageCtrlScrollBar vertical(Qt::Vertical, &parent);
    QCOMPARE(vertical.orientation(), Qt::Vertical);
    QCOMPARE(vertical.parentWidget(), &parent);
}

void tst_ViewNavigation::scrollBarIgnoresOtherChanges()
{
    QImageCtrlScrollBar bar(Qt::Vertical);
    bar.setRange(0, 100);
    bar.setValue(50);
    QSignalSpy spy(&bar, announced);
    bar.setSingleStep(5);
    bar.setPageStep(30);
    bar.setOrientation(Qt::Horizontal);
    bar.setRange(0, 200);
    QCOMPARE(spy.count(), 0);
    // A range that cuts the value changes it: that is a value change.
    bar.setRange(0, 20);
    QCOMPARE(bar.value(), 20);
    QCOMPARE(spy.count(), 1);
}

void tst_ViewNavigation::viewKeepsDefaultScrollBars()
{
    StandaloneView v;
    QVERIFY(!qobject_cast<QImageCtrlScrollBar*>(v.view->horizontalScrollBar()));
    QVERIFY(!qobject_cast<QImageCtrlScrollBar*>(v.view->verticalScrollBar()));
    QCOMPARE(v.view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(v.view->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QVERIFY(v.view->hasMouseTracking());
    QCOMPARE(v.view->transformationAnchor(), QGraphicsView::AnchorViewCenter);
    QCOMPARE(v.view->dragMode(), QGraphicsView::NoDrag);
}

void tst_ViewNavigation::sceneFrameIsAssembled()
{
    StandaloneView v;
    QCOMPARE(v.view->GetImageCtrlScene(), v.scene());
    QCOMPARE(v.view->scene(), static_cast<QGraphicsScene*>(v.scene()));
    QCOMPARE(v.scene()->getCtrlView(), v.view);
    QVERIFY(v.scene()->GetImageLayer());
    QCOMPARE(v.scene()->backgroundBrush().style(), Qt::SolidPattern);
    QCOMPARE(v.scene()->backgroundBrush().color(), QColor(153, 153, 153, 255));
    QVERIFY(!v.view->acceptDrops());
    QVERIFY(v.view->renderHints() & QPainter::Antialiasing);
    QVERIFY(!(v.view->renderHints() & QPainter::SmoothPixmapTransform));
    QCOMPARE(v.scene()->getScale(), 1.0);
}

void tst_ViewNavigation::sceneStoresOnlyPositiveScale()
{
    StandaloneView v;
    v.scene()->setScale(0.0);
    QCOMPARE(v.scene()->getScale(), 1.0);
    v.scene()->setScale(2.5);
    v.scene()->setScale(-2.0);
    QCOMPARE(v.scene()->getScale(), 1.0);
    v.scene()->setScale(1e-9);
    QCOMPARE(v.scene()->getScale(), 1e-9);
    // The view size is stored as floats and widened on reading.
    v.scene()->setViewSize(100.3f, 7.1f);
    double w = 0, h = 0;
    v.scene()->getViewSize(w, h);
    QVERIFY(w == double(100.3f));
    QVERIFY(h == double(7.1f));
}

QTEST_MAIN(tst_ViewNavigation)
#include "tst_viewnavigation.moc"
