// Life cycle of the facade as a host drives it: create, destory, re-parenting,
// bounds, the return-code convention without a window, the background calls,
// the zoom calls and the frame of the view and the scene.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "buttontoolbar.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "statusbar.h"
#include "testkit.h"

#include <QGenericArgument>
#include <QMetaMethod>
#include <QPointer>

#include <opencv2/core.hpp>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

ImageLayer* layerOf(KESImageWnd& wnd)
{
    return wnd.mainWindow()->GetImageCtrlView()->GetImageCtrlScene()->GetImageLayer();
}

// Storage for one argument of a slot invoked through the meta-object system.
struct ArgHolder
{
    virtual ~ArgHolder() = default;
    void* data = nullptr;
};

template <class T>
struct ValueHolder : ArgHolder
{
    T value{};
    ValueHolder() { data = &value; }
};

struct MetaTypeHolder : ArgHolder
{
    explicit MetaTypeHolder(int id)
        : typeId(id)
    {
        data = QMetaType::create(typeId);
    }
    ~MetaTypeHolder() override { QMetaType::destroy(typeId, data); }
    int typeId;
};

// A default value for a parameter of the given normalized type name: a null
// pointer for pointer types, a default-constructed object otherwise. Null when
// the type is not known here.
std::unique_ptr<ArgHolder> defaultArgument(const QByteArray& typeName)
{
    if (typeName.endsWith('*'))
        return std::make_unique<ValueHolder<void*>>();

    QByteArray base = typeName;
    if (base.startsWith("const "))
        base = base.mid(6);
    if (base.endsWith('&'))
        base.chop(1);

    // Plain numbers and flags get a zero of their own: QMetaType::create leaves
    // them uninitialised.
    if (base == "bool")
        return std::make_unique<ValueHolder<bool>>();
    if (base == "int")
        return std::make_unique<ValueHolder<int>>();
    if (base == "long")
        return std::make_unique<ValueHolder<long>>();
    if (base == "qlonglong")
        return std::make_unique<ValueHolder<qlonglong>>();
    if (base == "double")
        return std::make_unique<ValueHolder<double>>();
    if (base == "float")
        return std::make_unique<ValueHolder<float>>();
    if (base == "QImage")
        return std::make_unique<ValueHolder<QImage>>();
    if (base == "VorImage")
        return std::make_unique<ValueHolder<VorImage>>();
    if (base == "VorROI")
        return std::make_unique<ValueHolder<VorROI>>();
    if (base == "VorOverlay")
        return std::make_unique<ValueHolder<VorOverlay>>();
    if (base == "VorOverlayPath")
        return std::make_unique<ValueHolder<VorOverlayPath>>();
    if (base == "VorFont")
        return std::make_unique<ValueHolder<VorFont>>();
    if (base == "VorVar")
        return std::make_unique<ValueHolder<VorVar>>();
    if (base == "VorPoint")
        return std::make_unique<ValueHolder<VorPoint>>();
    if (base == "VorPointArray")
        return std::make_unique<ValueHolder<VorPointArray>>();
    if (base == "VorRegion")
        return std::make_unique<ValueHolder<VorRegion>>();
    if (base == "QList<long>")
        return std::make_unique<ValueHolder<QList<long>>>();
    if (base == "QList<qlonglong>" || base == "QList<long long>")
        return std::make_unique<ValueHolder<QList<qlonglong>>>();

    // An enum of the facade, such as KESImageWnd::Layer, travels as an int.
    const int colon = base.lastIndexOf("::");
    if (colon >= 0) {
        const QByteArray scope = base.left(colon);
        const QByteArray name = base.mid(colon + 2);
        if (scope == "KESImageWnd" && KESImageWnd::staticMetaObject.indexOfEnumerator(name) >= 0)
            return std::make_unique<ValueHolder<int>>();
    }

    const int id = QMetaType::type(base.constData());
    if (id != QMetaType::UnknownType && id != QMetaType::Void)
        return std::make_unique<MetaTypeHolder>(id);
    return nullptr;
}

// Notes, at the moment a CMainWindow is shown, what the facade and the window
// look like.
class ShowProbe : public QObject
{
public:
    explicit ShowProbe(KESImageWnd* wnd)
        : m_wnd(wnd)
    {
        qApp->installEventFilter(this);
    }
    ~ShowProbe() override { qApp->removeEventFilter(this); }

    int shows = 0;
    bool facadeHeldWindow = true;
    QRect geometry;
    int frameStyle = -1;
    Qt::WindowFlags flags;
    long long relayWindowID = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* window = qobject_cast<CMainWindow*>(watched);
        if (window && event->type() == QEvent::Show) {
            ++shows;
            facadeHeldWindow = m_wnd->mainWindow() != nullptr;
            geometry = window->geometry();
            frameStyle = window->frameStyle();
            flags = window->windowFlags();
            relayWindowID = window->GetImageCtrlView()->GetImageCtrlScene()->GetEventThread()->mainWindowID();
        }
        return false;
    }

private:
    KESImageWnd* m_wnd;
};

} // namespace

using Kit::colourPicture;
using Kit::qtPicture;

class FacadeLifecycleTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    // create
    void createFromParentFillsTheParentAndShowsAChild();
    void createWithBoundsUsesParentCoordinates();
    void createAssemblesToolbarViewAndStatusbarInOrder();
    void createHandsTheWindowAddressToTheRelay();
    void secondCreateIsRefusedAndKeepsParentAndBounds();
    void createFromParentRefusesNullAndNonWidgetHandles();
    void createWithBoundsAndNoParentMakesTopLevelWindow();
    void createShowsTheWindowLastAndStoresItOnlyThen();
    void enumAndFlagValues();
    void destroyedConnectionOfTheWindowIsCutByItsDestructor();

    // destory
    void destoryDeletesTheWindowAndLeavesTheHostAlone();
    void createDestoryCreateWorksAndHostConnectionsDoNotSurvive();
    void destoryWithoutWindowReturnsMinusOneAndCutsConnections();
    void destoryDropsTheFacadeParent();
    void deletingTheFacadeDeletesTheWindow();
    void toDestroyRemovesFurnitureOnceAndTwiceIsHarmless();
    void scaleAndIdCounterOutliveDestory();

    // placement
    void setParentWndMovesAndFillsTheNewParent();
    void moveSetsGeometryFromEdges();
    void setViewRectSetsTheViewSceneRect();

    // return codes without a window
    void callsWithoutWindowReturnFailure();
    void everySlotWithoutWindowReturnsFailureAndCreatesNothing();

    // background
    void emptyQImageIsRefusedAndLeavesThePicture();
    void onePixelQImageIsAccepted();
    void emptyVorImageIsRefusedAndLeavesThePicture();
    void vorImageBackgroundIsStoredAndShown();
    void getBackgroundCopiesWhatIsShown();
    void clearBackgroundLeavesOnePixelAndNoVorImage();
    void windowBackgroundSlotsReachTheLayer();
    void invalidStoredVorImageIsNotHandedBack();
    void repaintWndTakesOverTheQueuedPicture();

    // zoom
    void zoomSetsScaleMatrixAndSharedScaleInFloat();
    void zoomLeavesTheZoomModelAlone();
    void viewZoomBelowMinimumChangesNothing();
    void sharedScaleIsCommonToAllWindows();

    // frame of view and scene
    void sceneStoresNonPositiveScaleAsOne();
    void sceneWidensViewSizeOnRead();
    void viewSizeIsZeroUntilFirstResize();
    void viewAssemblyGivesGreyBrushAndLayers();
    void viewPaintsGreyAroundThePicture();
    void resizeRefitsVorImageWhateverTheZoomModel();
    void resizeKeepsScaleWithOnlyQImageBackgrounds();
};

void FacadeLifecycleTest::init()
{
    CMainWindow::s_scale = 1.0f;
}

void FacadeLifecycleTest::createFromParentFillsTheParentAndShowsAChild()
{
    Kit::HostWidget host(QSize(520, 410));
    KESImageWnd wnd;
    QCOMPARE(wnd.mainWindow(), static_cast<CMainWindow*>(nullptr));

    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host)), 0L);
    CMainWindow* window = wnd.mainWindow();
    QVERIFY(window);
    QCOMPARE(window->parentWidget(), &host);
    QVERIFY(!window->isWindow());
    QCOMPARE(window->geometry(), QRect(0, 0, 520, 410));
    QVERIFY(window->isVisible());
    QCOMPARE(window->frameStyle(), 50);
    QVERIFY(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::createWithBoundsUsesParentCoordinates()
{
    Kit::HostWidget host(QSize(640, 480));
    KESImageWnd wnd;
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host), 10, 20, 310, 220), 0L);
    QCOMPARE(wnd.mainWindow()->geometry(), QRect(10, 20, 300, 200));
    QCOMPARE(wnd.mainWindow()->parentWidget(), &host);
    QVERIFY(wnd.mainWindow()->isVisible());
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::createAssemblesToolbarViewAndStatusbarInOrder()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.created, 0L);
    CMainWindow* window = fixture.window();
    QVERIFY(window->GetButtonToolbar());
    QVERIFY(window->GetImageCtrlView());
    QVERIFY(window->GetStatusbar());
    QVERIFY(window->GetImageCtrlView()->GetImageCtrlScene());
    QVERIFY(window->GetImageCtrlView()->GetImageCtrlScene()->GetImageLayer());

    // Children keep the order of their creation.
    QList<QWidget*> furniture;
    for (QObject* child : window->children()) {
        if (child == window->GetButtonToolbar() || child == window->GetImageCtrlView()
            || child == window->GetStatusbar())
            furniture.append(static_cast<QWidget*>(child));
    }
    QCOMPARE(furniture.size(), 3);
    QCOMPARE(furniture.at(0), static_cast<QWidget*>(window->GetButtonToolbar()));
    QCOMPARE(furniture.at(1), static_cast<QWidget*>(window->GetImageCtrlView()));
    QCOMPARE(furniture.at(2), static_cast<QWidget*>(window->GetStatusbar()));

    // A new window shows all three parts: the flag word starts at 7.
    QCOMPARE(window->widgetFlag(), 7);
    QVERIFY(window->GetButtonToolbar()->isVisible());
    QVERIFY(window->GetStatusbar()->isVisible());
    QVERIFY(window->GetImageCtrlView()->isVisible());
    QCOMPARE(window->pushButtonFlag(), int(0xFFFE0000));
    QVERIFY(window->scrollbarVisible());
    QVERIFY(!window->isWidgetParent());
    window->setWidgetParent(true);
    QVERIFY(window->isWidgetParent());
}

void FacadeLifecycleTest::createHandsTheWindowAddressToTheRelay()
{
    EmbeddedWindow fixture;
    EventThread* relay = fixture.scene()->GetEventThread();
    QVERIFY(relay);
    QCOMPARE(relay->mainWindowID(), reinterpret_cast<long long>(fixture.window()));
    QCOMPARE(relay->parent(), static_cast<QObject*>(nullptr));
}

void FacadeLifecycleTest::secondCreateIsRefusedAndKeepsParentAndBounds()
{
    Kit::HostWidget host(QSize(640, 480));
    Kit::HostWidget other(QSize(200, 100));
    KESImageWnd wnd;
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host), 10, 20, 310, 220), 0L);
    QPointer<CMainWindow> first = wnd.mainWindow();

    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&other), 0, 0, 50, 50), -1L);
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&other)), -1L);
    QCOMPARE(wnd.create(0, 0, 0, 640, 480), -1L);

    QCOMPARE(wnd.mainWindow(), first.data());
    QCOMPARE(first->parentWidget(), &host);
    QCOMPARE(first->geometry(), QRect(10, 20, 300, 200));
    QVERIFY(other.findChildren<CMainWindow*>().isEmpty());
    QCOMPARE(host.findChildren<CMainWindow*>().size(), 1);
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::createFromParentRefusesNullAndNonWidgetHandles()
{
    KESImageWnd wnd;
    QCOMPARE(wnd.create(0), -1L);
    QCOMPARE(wnd.mainWindow(), static_cast<CMainWindow*>(nullptr));

    QObject notAWidget;
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&notAWidget)), -1L);
    QCOMPARE(wnd.mainWindow(), static_cast<CMainWindow*>(nullptr));
    QVERIFY(notAWidget.children().isEmpty());
}

void FacadeLifecycleTest::createWithBoundsAndNoParentMakesTopLevelWindow()
{
    KESImageWnd wnd;
    QCOMPARE(wnd.create(0, 0, 0, 640, 480), 0L);
    CMainWindow* window = wnd.mainWindow();
    QVERIFY(window);
    QVERIFY(window->isWindow());
    QCOMPARE(window->windowType(), Qt::Window);
    QCOMPARE(window->parentWidget(), static_cast<QWidget*>(nullptr));
    QVERIFY(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(window->size(), QSize(640, 480));
    QVERIFY(window->isVisible());
    QCOMPARE(wnd.destory(), 0L);
    QCOMPARE(wnd.mainWindow(), static_cast<CMainWindow*>(nullptr));
}

void FacadeLifecycleTest::createShowsTheWindowLastAndStoresItOnlyThen()
{
    Kit::HostWidget host(QSize(400, 300));
    KESImageWnd wnd;
    ShowProbe probe(&wnd);
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host), 1, 2, 201, 102), 0L);
    QCOMPARE(probe.shows, 1);
    QVERIFY(!probe.facadeHeldWindow);
    QCOMPARE(probe.geometry, QRect(1, 2, 200, 100));
    QCOMPARE(probe.frameStyle, 50);
    QVERIFY(probe.flags.testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(probe.relayWindowID, reinterpret_cast<long long>(wnd.mainWindow()));
    // A child keeps no window-type bits.
    QCOMPARE(wnd.mainWindow()->windowType(), Qt::Widget);
    QVERIFY(CMainWindow::m_wndList.isEmpty());
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::enumAndFlagValues()
{
    Kit::verifyCodesCountUp(0, {KESImageWnd::LAYER_IMAGE, KESImageWnd::LAYER_SHAPE, KESImageWnd::LAYER_FORE});
    QCOMPARE(int(CMainWindow::WF_TOOLBAR), 1);
    QCOMPARE(int(CMainWindow::WF_SCROLLBAR), 2);
    QCOMPARE(int(CMainWindow::WF_STATUSBAR), 4);
    Kit::verifyCodesCountUp(0, {VOR_ZOOM_IN, VOR_ZOOM_OUT, VOR_ZOOM_FIT, VOR_ZOOM_ORG});
}

void FacadeLifecycleTest::destroyedConnectionOfTheWindowIsCutByItsDestructor()
{
    // The window's destructor disconnects its signals first, so no receiver of
    // destroyed() hears of it; the facade's own lambda cannot run either.
    auto* window = new CMainWindow(nullptr);
    window->create(0, true, true);
    int heard = 0;
    QObject context;
    connect(window, &QObject::destroyed, &context, [&heard] { ++heard; });
    delete window;
    QCOMPARE(heard, 0);
}

void FacadeLifecycleTest::destoryDeletesTheWindowAndLeavesTheHostAlone()
{
    Kit::HostWidget host(QSize(640, 480));
    const QRect hostGeometry = host.geometry();
    const int hostChildren = host.children().size();
    KESImageWnd wnd;
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host)), 0L);
    QPointer<CMainWindow> window = wnd.mainWindow();
    QPointer<ImageCtrlView> view = window->GetImageCtrlView();
    QPointer<Statusbar> statusbar = window->GetStatusbar();
    QPointer<ButtonToolbar> toolbar = window->GetButtonToolbar();
    QPointer<ImageCtrlScene> scene = view->GetImageCtrlScene();
    QPointer<EventThread> relay = scene->GetEventThread();
    QCOMPARE(host.children().size(), hostChildren + 1);

    QCOMPARE(wnd.destory(), 0L);
    QVERIFY(window.isNull());
    QVERIFY(view.isNull());
    QVERIFY(statusbar.isNull());
    QVERIFY(toolbar.isNull());
    QVERIFY(scene.isNull());
    QVERIFY(relay.isNull());
    QCOMPARE(wnd.mainWindow(), static_cast<CMainWindow*>(nullptr));
    QCOMPARE(host.children().size(), hostChildren);
    QCOMPARE(host.geometry(), hostGeometry);
    QVERIFY(host.isVisible());

    // A second destory has nothing left to tear down.
    QCOMPARE(wnd.destory(), -1L);
}

void FacadeLifecycleTest::createDestoryCreateWorksAndHostConnectionsDoNotSurvive()
{
    Kit::HostWidget host(QSize(640, 480));
    KESImageWnd wnd;
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host)), 0L);

    QSignalSpy oldButtons(&wnd, &KESImageWnd::buttonClicked);
    int lambdaCalls = 0;
    connect(&wnd, &KESImageWnd::mouseClicked, this, [&lambdaCalls](double, double) { ++lambdaCalls; });
    QCOMPARE(wnd.zoomReset(), 0L);
    QCOMPARE(oldButtons.count(), 1);

    QCOMPARE(wnd.destory(), 0L);
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host)), 0L);
    QVERIFY(wnd.mainWindow());
    QCOMPARE(host.findChildren<CMainWindow*>().size(), 1);

    // The internal connections are made again ...
    QSignalSpy newButtons(&wnd, &KESImageWnd::buttonClicked);
    QSignalSpy newClicks(&wnd, &KESImageWnd::mouseClicked);
    QCOMPARE(wnd.zoomReset(), 0L);
    QCOMPARE(newButtons.count(), 1);
    QCOMPARE(newButtons.at(0).at(0).value<long>(), long(ButtonToolbar::PB_ZOOM_ORG));
    ImageCtrlView* view = wnd.mainWindow()->GetImageCtrlView();
    Kit::pressAt(view, QPointF(3, 4));
    Kit::releaseAt(view, QPointF(3, 4));
    QCOMPARE(newClicks.count(), 1);

    // ... the host's own are gone.
    QCOMPARE(oldButtons.count(), 1);
    QCOMPARE(lambdaCalls, 0);
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::destoryWithoutWindowReturnsMinusOneAndCutsConnections()
{
    QObject owner;
    KESImageWnd wnd(&owner);
    int calls = 0;
    connect(&wnd, &KESImageWnd::mouseClicked, this, [&calls](double, double) { ++calls; });
    QSignalSpy spy(&wnd, &KESImageWnd::shapeClicked);
    emit wnd.mouseClicked(1.0, 2.0);
    QCOMPARE(calls, 1);

    QCOMPARE(wnd.destory(), -1L);
    QCOMPARE(wnd.parent(), static_cast<QObject*>(nullptr));
    emit wnd.mouseClicked(1.0, 2.0);
    emit wnd.shapeClicked(5);
    QCOMPARE(calls, 1);
    QCOMPARE(spy.count(), 0);
}

void FacadeLifecycleTest::destoryDropsTheFacadeParent()
{
    Kit::HostWidget host(QSize(300, 200));
    QObject owner;
    auto* wnd = new KESImageWnd(&owner);
    QCOMPARE(wnd->parent(), &owner);
    QCOMPARE(wnd->create(reinterpret_cast<qlonglong>(&host)), 0L);
    QCOMPARE(wnd->destory(), 0L);
    QCOMPARE(wnd->parent(), static_cast<QObject*>(nullptr));
    QVERIFY(owner.children().isEmpty());
    delete wnd;
}

void FacadeLifecycleTest::deletingTheFacadeDeletesTheWindow()
{
    Kit::HostWidget host(QSize(300, 200));
    QObject owner;
    auto* wnd = new KESImageWnd(&owner);
    QCOMPARE(wnd->create(reinterpret_cast<qlonglong>(&host)), 0L);
    QPointer<CMainWindow> window = wnd->mainWindow();
    QVERIFY(window);
    delete wnd;
    QVERIFY(window.isNull());
    QVERIFY(host.findChildren<CMainWindow*>().isEmpty());
    QVERIFY(owner.children().isEmpty());
}

void FacadeLifecycleTest::toDestroyRemovesFurnitureOnceAndTwiceIsHarmless()
{
    CMainWindow window(nullptr);
    QCOMPARE(window.GetImageCtrlView(), static_cast<ImageCtrlView*>(nullptr));
    window.create(0, true, true);
    QPointer<ImageCtrlView> view = window.GetImageCtrlView();
    QPointer<Statusbar> statusbar = window.GetStatusbar();
    QPointer<ButtonToolbar> toolbar = window.GetButtonToolbar();
    QPointer<QLabel> info = statusbar->infoLabel();
    QVERIFY(view && statusbar && toolbar && info);

    window.toDestroy(true, true);
    QVERIFY(view.isNull());
    QVERIFY(statusbar.isNull());
    QVERIFY(toolbar.isNull());
    QVERIFY(info.isNull());
    QCOMPARE(window.GetImageCtrlView(), static_cast<ImageCtrlView*>(nullptr));
    QCOMPARE(window.GetStatusbar(), static_cast<Statusbar*>(nullptr));
    QCOMPARE(window.GetButtonToolbar(), static_cast<ButtonToolbar*>(nullptr));
    QVERIFY(window.findChildren<QWidget*>().isEmpty());
    window.toDestroy(true, true);
    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

void FacadeLifecycleTest::scaleAndIdCounterOutliveDestory()
{
    Kit::HostWidget host(QSize(400, 300));
    KESImageWnd wnd;
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host)), 0L);
    QCOMPARE(wnd.zoom(2.0), 0L);
    QCOMPARE(CMainWindow::s_scale, 2.0f);
    QCOMPARE(wnd.destory(), 0L);
    QCOMPARE(CMainWindow::s_scale, 2.0f);
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host)), 0L);
    QCOMPARE(CMainWindow::s_scale, 2.0f);
    // The new scene starts at its own scale of 1.
    double ratio = 0.0;
    QCOMPARE(wnd.getZoomRatio(&ratio), 0L);
    QCOMPARE(ratio, 1.0);
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::setParentWndMovesAndFillsTheNewParent()
{
    Kit::HostWidget host(QSize(640, 480));
    Kit::HostWidget other(QSize(300, 200));
    KESImageWnd wnd;
    QCOMPARE(wnd.setParentWnd(reinterpret_cast<qlonglong>(&other)), -1L);
    QCOMPARE(wnd.create(reinterpret_cast<qlonglong>(&host), 5, 5, 105, 105), 0L);
    CMainWindow* window = wnd.mainWindow();

    QCOMPARE(wnd.setParentWnd(reinterpret_cast<qlonglong>(&other)), 0L);
    QCOMPARE(wnd.mainWindow(), window);
    QCOMPARE(window->parentWidget(), &other);
    QCOMPARE(window->geometry(), QRect(0, 0, 300, 200));
    QVERIFY(window->isVisible());
    QVERIFY(host.findChildren<CMainWindow*>().isEmpty());
    // The window lays itself out for the new size.
    QCOMPARE(window->GetImageCtrlView()->geometry(), QRect(0, 40, 300, 130));
    QCOMPARE(wnd.destory(), 0L);
}

void FacadeLifecycleTest::moveSetsGeometryFromEdges()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.wnd->move(30, 40, 330, 290), 0L);
    QCOMPARE(fixture.window()->geometry(), QRect(30, 40, 300, 250));
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, 300, 180));

    KESImageWnd bare;
    QCOMPARE(bare.move(0, 0, 10, 10), -1L);
}

void FacadeLifecycleTest::setViewRectSetsTheViewSceneRect()
{
    EmbeddedWindow fixture;
    fixture.wnd->setViewRect(-10, 20, 300, 150);
    QCOMPARE(fixture.view()->sceneRect(), QRectF(-10.0, 20.0, 300.0, 150.0));
    fixture.wnd->setViewRect(0, 0, 7, 9);
    QCOMPARE(fixture.view()->sceneRect(), QRectF(0.0, 0.0, 7.0, 9.0));

    KESImageWnd bare;
    bare.setViewRect(1, 2, 3, 4); // does nothing, and does not crash
    QCOMPARE(bare.mainWindow(), static_cast<CMainWindow*>(nullptr));
}

void FacadeLifecycleTest::callsWithoutWindowReturnFailure()
{
    KESImageWnd wnd;
    QImage image = qtPicture(4, 4, qRgb(1, 2, 3));
    VorImage vorImage = colourPicture(4, 4, 1, 2, 3);
    QImage imageOut;
    VorImage vorOut;

    QCOMPARE(wnd.setParentWnd(0), -1L);
    QCOMPARE(wnd.destory(), -1L);
    QCOMPARE(wnd.move(0, 0, 10, 10), -1L);
    QCOMPARE(wnd.setBackground(image), -1L);
    QCOMPARE(wnd.setBackground(vorImage), -1L);
    QCOMPARE(wnd.getBackground(&imageOut), -1L);
    QCOMPARE(wnd.getBackground(&vorOut), -1L);
    QVERIFY(imageOut.isNull());
    QCOMPARE(vorOut.Width(), 0);
    QCOMPARE(wnd.clearBackground(), -1L);
    QCOMPARE(wnd.repaint(), -1L);
    QCOMPARE(wnd.zoom(2.0), -1L);
    QCOMPARE(wnd.zoomIn(), -1L);
    QCOMPARE(wnd.zoomOut(), -1L);
    QCOMPARE(wnd.zoomFitWnd(), -1L);
    QCOMPARE(wnd.zoomReset(), -1L);
    double ratio = 42.0;
    QCOMPARE(wnd.getZoomRatio(&ratio), -1L);
    QCOMPARE(ratio, 42.0);
    QCOMPARE(wnd.showStatusbar(true), false);
    QCOMPARE(wnd.showStatusbar(false), false);
    QCOMPARE(wnd.showScrollbar(true), false);
    QCOMPARE(wnd.showScrollbar(false), false);
    wnd.setViewRect(0, 0, 10, 10);
    QCOMPARE(wnd.mainWindow(), static_cast<CMainWindow*>(nullptr));
    // The zoom value of the process is not touched without a window.
    QCOMPARE(CMainWindow::s_scale, 1.0f);
}

void FacadeLifecycleTest::everySlotWithoutWindowReturnsFailureAndCreatesNothing()
{
    const QMetaObject& meta = KESImageWnd::staticMetaObject;
    int longSlots = 0;
    int boolSlots = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Slot || method.access() != QMetaMethod::Public)
            continue;
        // create is the one call that makes a window where there is none.
        if (method.name() == "create")
            continue;
        const QByteArray signature = method.methodSignature();

        KESImageWnd wnd;
        const QList<QByteArray> types = method.parameterTypes();
        QVERIFY2(types.size() <= 10, signature.constData());
        std::vector<std::unique_ptr<ArgHolder>> storage;
        QGenericArgument args[10];
        for (int a = 0; a < types.size(); ++a) {
            std::unique_ptr<ArgHolder> holder = defaultArgument(types.at(a));
            QVERIFY2(holder, (QByteArray("no default value for ") + types.at(a) + " of " + signature).constData());
            args[a] = QGenericArgument(types.at(a).constData(), holder->data);
            storage.push_back(std::move(holder));
        }

        const QByteArray returnType = method.typeName();
        long longResult = 12345;
        bool boolResult = true;
        QGenericReturnArgument result;
        if (returnType == "long")
            result = QGenericReturnArgument("long", &longResult);
        else if (returnType == "bool")
            result = QGenericReturnArgument("bool", &boolResult);

        const bool invoked = method.invoke(&wnd, Qt::DirectConnection, result, args[0], args[1], args[2], args[3],
                                           args[4], args[5], args[6], args[7], args[8], args[9]);
        QVERIFY2(invoked, signature.constData());
        if (returnType == "long") {
            ++longSlots;
            QVERIFY2(longResult == -1, signature.constData());
        } else if (returnType == "bool") {
            ++boolSlots;
            QVERIFY2(!boolResult, signature.constData());
        }
        QVERIFY2(wnd.mainWindow() == nullptr, signature.constData());
    }
    // The life-cycle, background and zoom calls at least.
    QVERIFY(longSlots >= 13);
    QVERIFY(boolSlots >= 2);
}

void FacadeLifecycleTest::emptyQImageIsRefusedAndLeavesThePicture()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(qtPicture(8, 6, qRgb(200, 10, 20))), 0L);
    QVERIFY(!layer->isVorImg());

    QImage empty;
    QCOMPARE(fixture.wnd->setBackground(empty), -1L);
    QImage zeroWide(0, 5, QImage::Format_RGB32);
    QCOMPARE(fixture.wnd->setBackground(zeroWide), -1L);
    QCOMPARE(layer->GetQImage()->size(), QSize(8, 6));
    QCOMPARE(layer->GetQImage()->pixel(3, 3), qRgb(200, 10, 20));
    QCOMPARE(layer->pendingCount(), 0);
    QCOMPARE(fixture.view()->imageRect(), QRect(0, 0, 8, 6));

    // A refused QImage does not change the mode of a VorImage window either.
    QCOMPARE(fixture.setPicture(colourPicture(5, 5, 1, 2, 3)), 0L);
    QVERIFY(layer->isVorImg());
    QCOMPARE(fixture.wnd->setBackground(empty), -1L);
    QVERIFY(layer->isVorImg());
    QCOMPARE(layer->GetQImage()->size(), QSize(5, 5));
}

void FacadeLifecycleTest::onePixelQImageIsAccepted()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QVERIFY(layer->isVorImg());
    QCOMPARE(fixture.setPicture(qtPicture(1, 1, qRgb(9, 8, 7))), 0L);
    QVERIFY(!layer->isVorImg());
    QCOMPARE(layer->GetQImage()->size(), QSize(1, 1));
    QCOMPARE(layer->GetQImage()->pixel(0, 0), qRgb(9, 8, 7));
    QCOMPARE(layer->pendingCount(), 0);
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, 1, 1));
    QCOMPARE(fixture.view()->sceneRect(), QRectF(0, 0, 1, 1));
    QCOMPARE(fixture.view()->imageRect(), QRect(0, 0, 1, 1));
    // A QImage leaves the stored VorImage as it was: there was none.
    QCOMPARE(layer->GetVorImage(), static_cast<VorImage*>(nullptr));
}

void FacadeLifecycleTest::emptyVorImageIsRefusedAndLeavesThePicture()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(qtPicture(8, 6, qRgb(200, 10, 20))), 0L);

    VorImage empty;
    QCOMPARE(fixture.wnd->setBackground(empty), -1L);
    QVERIFY(!layer->isVorImg());
    QCOMPARE(layer->GetQImage()->size(), QSize(8, 6));
    QCOMPARE(layer->GetVorImage(), static_cast<VorImage*>(nullptr));
}

void FacadeLifecycleTest::vorImageBackgroundIsStoredAndShown()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(colourPicture(30, 20, 11, 22, 33)), 0L);
    QVERIFY(layer->isVorImg());
    QVERIFY(fixture.window()->isVorImg());
    QVERIFY(layer->GetVorImage());
    QCOMPARE(layer->GetVorImage()->Width(), 30);
    QCOMPARE(layer->GetVorImage()->Height(), 20);
    QCOMPARE(layer->GetQImage()->size(), QSize(30, 20));
    QCOMPARE(QColor(layer->GetQImage()->pixel(4, 5)), QColor(11, 22, 33));
    QCOMPARE(layer->pendingCount(), 0);
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, 30, 20));
    QCOMPARE(fixture.view()->imageRect(), QRect(0, 0, 30, 20));

    // CMainWindow's mode calls pass on to the layer.
    fixture.window()->setIsVorImg(false);
    QVERIFY(!layer->isVorImg());
    QVERIFY(!fixture.window()->isVorImg());
    fixture.window()->setIsVorImg(true);
    QVERIFY(layer->isVorImg());
}

void FacadeLifecycleTest::getBackgroundCopiesWhatIsShown()
{
    EmbeddedWindow fixture;
    QImage qOut;
    VorImage vOut;
    QCOMPARE(fixture.wnd->getBackground(&qOut), -1L);
    QCOMPARE(fixture.wnd->getBackground(&vOut), -1L);

    QImage picture = qtPicture(8, 6, qRgb(200, 10, 20));
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    QCOMPARE(fixture.wnd->getBackground(&qOut), 0L);
    QCOMPARE(qOut, picture);
    // Only a QImage has been given: there is no VorImage to hand back.
    QCOMPARE(fixture.wnd->getBackground(&vOut), -1L);

    QCOMPARE(fixture.setPicture(colourPicture(12, 7, 40, 50, 60)), 0L);
    QCOMPARE(fixture.wnd->getBackground(&vOut), 0L);
    QCOMPARE(vOut.Width(), 12);
    QCOMPARE(vOut.Height(), 7);
    QCOMPARE(vOut.Channels(), 3);
    const cv::Vec3b px = vOut.Mat().at<cv::Vec3b>(3, 5);
    QCOMPARE(int(px[0]), 60);
    QCOMPARE(int(px[1]), 50);
    QCOMPARE(int(px[2]), 40);
    QCOMPARE(fixture.wnd->getBackground(&qOut), 0L);
    QCOMPARE(qOut.size(), QSize(12, 7));
    QCOMPARE(QColor(qOut.pixel(5, 3)), QColor(40, 50, 60));
}

void FacadeLifecycleTest::clearBackgroundLeavesOnePixelAndNoVorImage()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(colourPicture(12, 7, 40, 50, 60)), 0L);
    QCOMPARE(fixture.wnd->clearBackground(), 0L);
    QCOMPARE(layer->GetVorImage(), static_cast<VorImage*>(nullptr));
    QCOMPARE(layer->GetQImage()->size(), QSize(1, 1));
    // The scene rectangle stays that of the last picture.
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, 12, 7));

    VorImage vOut;
    QImage qOut;
    QCOMPARE(fixture.wnd->getBackground(&vOut), -1L);
    QCOMPARE(fixture.wnd->getBackground(&qOut), 0L);
    QCOMPARE(qOut.size(), QSize(1, 1));
}

void FacadeLifecycleTest::windowBackgroundSlotsReachTheLayer()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(qtPicture(8, 6, qRgb(1, 1, 1))), 0L);
    QVERIFY(!layer->isVorImg());

    // The integer is taken as the VorImage's address; the mode is not touched.
    VorImage vorPicture = colourPicture(9, 4, 70, 80, 90);
    fixture.window()->setBackground(reinterpret_cast<qlonglong>(&vorPicture));
    QVERIFY(!layer->isVorImg());
    QVERIFY(layer->GetVorImage());
    QCOMPARE(layer->GetVorImage()->Width(), 9);
    QCOMPARE(layer->GetQImage()->size(), QSize(9, 4));

    fixture.window()->clearBackground();
    QCOMPARE(layer->GetVorImage(), static_cast<VorImage*>(nullptr));
    QCOMPARE(layer->GetQImage()->size(), QSize(1, 1));
}

void FacadeLifecycleTest::invalidStoredVorImageIsNotHandedBack()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    VorImage picture = colourPicture(12, 7, 40, 50, 60);
    QCOMPARE(fixture.wnd->setBackground(picture), 0L);
    // The window's own slot passes an empty picture on; the layer keeps the
    // invalid copy while the old picture stays on show.
    VorImage empty;
    fixture.window()->setBackground(reinterpret_cast<qlonglong>(&empty));
    QVERIFY(layer->GetVorImage());
    QCOMPARE(layer->GetVorImage()->Width(), 0);
    QCOMPARE(layer->GetQImage()->size(), QSize(12, 7));
    VorImage out = colourPicture(3, 3, 0, 0, 0);
    QCOMPARE(fixture.wnd->getBackground(&out), -1L);
}

void FacadeLifecycleTest::repaintWndTakesOverTheQueuedPicture()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(colourPicture(12, 7, 40, 50, 60)), 0L);
    VorImage second = colourPicture(20, 10, 1, 2, 3);
    QVERIFY(layer->LoadVorImage(&second));
    QCOMPARE(layer->pendingCount(), 1);
    QCOMPARE(layer->GetQImage()->size(), QSize(12, 7));
    fixture.window()->repaintWnd();
    QCOMPARE(layer->pendingCount(), 0);
    QCOMPARE(layer->GetQImage()->size(), QSize(20, 10));
    QCOMPARE(fixture.scene()->sceneRect(), QRectF(0, 0, 20, 10));

    VorImage third = colourPicture(30, 15, 1, 2, 3);
    QVERIFY(layer->LoadVorImage(&third));
    QCOMPARE(fixture.view()->RefreshLayers(), 0L);
    QCOMPARE(layer->pendingCount(), 0);
    QCOMPARE(layer->GetQImage()->size(), QSize(30, 15));
    // Nothing queued: still 0, nothing changes.
    QCOMPARE(fixture.view()->RefreshLayers(), 0L);
    QCOMPARE(layer->GetQImage()->size(), QSize(30, 15));
}

void FacadeLifecycleTest::zoomSetsScaleMatrixAndSharedScaleInFloat()
{
    EmbeddedWindow fixture;
    QSignalSpy buttons(fixture.wnd.get(), &KESImageWnd::buttonClicked);
    QCOMPARE(fixture.wnd->zoom(2.0), 0L);
    double ratio = 0.0;
    QCOMPARE(fixture.wnd->getZoomRatio(&ratio), 0L);
    QCOMPARE(ratio, 2.0);
    QCOMPARE(CMainWindow::s_scale, 2.0f);
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(2.0, 2.0));

    // The value is narrowed to float on its way.
    QCOMPARE(fixture.wnd->zoom(1.1), 0L);
    QCOMPARE(fixture.wnd->getZoomRatio(&ratio), 0L);
    QCOMPARE(ratio, double(1.1f));
    QVERIFY(ratio != 1.1);
    QCOMPARE(fixture.view()->transform().m11(), double(1.1f));
    QCOMPARE(fixture.view()->transform().m22(), double(1.1f));
    QCOMPARE(fixture.view()->transform().m12(), 0.0);
    QCOMPARE(fixture.view()->transform().m21(), 0.0);

    // zoom is not a tool-bar command: the host hears no click.
    QCOMPARE(buttons.count(), 0);

    // Below 0.03 the view refuses; the shared value has still taken it.
    QCOMPARE(fixture.wnd->zoom(0.02), 0L);
    QCOMPARE(fixture.wnd->getZoomRatio(&ratio), 0L);
    QCOMPARE(ratio, double(1.1f));
    QCOMPARE(fixture.view()->transform().m11(), double(1.1f));
    QCOMPARE(CMainWindow::s_scale, 0.02f);

    // CMainWindow::Zoom is the same path.
    fixture.window()->Zoom(3.0f);
    QCOMPARE(fixture.scene()->getScale(), 3.0);
    QCOMPARE(CMainWindow::s_scale, 3.0f);
}

void FacadeLifecycleTest::zoomLeavesTheZoomModelAlone()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(colourPicture(50, 40, 1, 2, 3)), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    QCOMPARE(fixture.wnd->zoom(2.0), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_FIT);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    QCOMPARE(fixture.wnd->zoom(0.5), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
}

void FacadeLifecycleTest::viewZoomBelowMinimumChangesNothing()
{
    EmbeddedWindow fixture;
    ImageCtrlView* view = fixture.view();
    QCOMPARE(view->Zoom(1.5), 0L);
    const QTransform before = view->transform();
    QCOMPARE(before, QTransform::fromScale(1.5, 1.5));

    QCOMPARE(view->Zoom(0.02), 0L);
    QCOMPARE(fixture.scene()->getScale(), 1.5);
    QCOMPARE(view->transform(), before);
    QCOMPARE(view->Zoom(0.0), 0L);
    QCOMPARE(view->Zoom(-3.0), 0L);
    QCOMPARE(view->Zoom(std::numeric_limits<double>::quiet_NaN()), 0L);
    QCOMPARE(fixture.scene()->getScale(), 1.5);
    QCOMPARE(view->transform(), before);

    // 0.03 itself is accepted.
    QCOMPARE(view->Zoom(0.03), 0L);
    QCOMPARE(fixture.scene()->getScale(), 0.03);
    QCOMPARE(view->transform(), QTransform::fromScale(0.03, 0.03));
}

void FacadeLifecycleTest::sharedScaleIsCommonToAllWindows()
{
    EmbeddedWindow first;
    EmbeddedWindow second;
    QCOMPARE(first.wnd->zoom(3.0), 0L);
    QCOMPARE(CMainWindow::s_scale, 3.0f);
    QCOMPARE(second.wnd->zoom(1.5), 0L);
    QCOMPARE(CMainWindow::s_scale, 1.5f);
    double ratio = 0.0;
    QCOMPARE(first.wnd->getZoomRatio(&ratio), 0L);
    QCOMPARE(ratio, 3.0);
    QCOMPARE(second.wnd->getZoomRatio(&ratio), 0L);
    QCOMPARE(ratio, 1.5);
}

void FacadeLifecycleTest::sceneStoresNonPositiveScaleAsOne()
{
    ImageCtrlScene scene(nullptr);
    QCOMPARE(scene.getScale(), 1.0);
    scene.setScale(2.5);
    QCOMPARE(scene.getScale(), 2.5);
    scene.setScale(0.0);
    QCOMPARE(scene.getScale(), 1.0);
    scene.setScale(0.25);
    scene.setScale(-2.0);
    QCOMPARE(scene.getScale(), 1.0);
    scene.setScale(1e-9);
    QCOMPARE(scene.getScale(), 1e-9);

    // The scene alone has a relay and no view yet.
    QVERIFY(scene.GetEventThread());
    QCOMPARE(scene.getCtrlView(), static_cast<ImageCtrlView*>(nullptr));
    QCOMPARE(scene.GetImageLayer(), static_cast<ImageLayer*>(nullptr));
}

void FacadeLifecycleTest::sceneWidensViewSizeOnRead()
{
    ImageCtrlScene scene(nullptr);
    double width = -1.0;
    double height = -1.0;
    scene.getViewSize(width, height);
    QCOMPARE(width, 0.0);
    QCOMPARE(height, 0.0);
    scene.setViewSize(1.1f, 2.2f);
    scene.getViewSize(width, height);
    QCOMPARE(width, double(1.1f));
    QCOMPARE(height, double(2.2f));
}

void FacadeLifecycleTest::viewSizeIsZeroUntilFirstResize()
{
    ImageCtrlView view(nullptr);
    QCOMPARE(view.GetImageCtrlScene(), static_cast<ImageCtrlScene*>(nullptr));
    view.CreateScene();
    ImageCtrlScene* scene = view.GetImageCtrlScene();
    QCOMPARE(scene->getCtrlView(), &view);
    double width = -1.0;
    double height = -1.0;
    view.resize(300, 200);
    scene->getViewSize(width, height);
    QCOMPARE(width, 0.0);
    QCOMPARE(height, 0.0);

    view.show(); // delivers the first resize
    scene->getViewSize(width, height);
    QCOMPARE(width, 281.0);
    QCOMPARE(height, 181.0);

    view.SetScrollVisible(false);
    QVERIFY(!view.scrollVisible());
    view.resize(400, 250);
    scene->getViewSize(width, height);
    QCOMPARE(width, 398.0);
    QCOMPARE(height, 248.0);
}

void FacadeLifecycleTest::viewAssemblyGivesGreyBrushAndLayers()
{
    ImageCtrlView view(nullptr);
    QCOMPARE(view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(view.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QVERIFY(view.hasMouseTracking());
    QVERIFY(!view.acceptDrops());
    QVERIFY(view.renderHints().testFlag(QPainter::Antialiasing));
    QVERIFY(!view.renderHints().testFlag(QPainter::SmoothPixmapTransform));
    QCOMPARE(view.dragMode(), QGraphicsView::NoDrag);
    // No anchor is set: the defaults stand.
    QCOMPARE(view.transformationAnchor(), QGraphicsView::AnchorViewCenter);
    QCOMPARE(view.resizeAnchor(), QGraphicsView::NoAnchor);
    QVERIFY(view.scrollVisible());
    QCOMPARE(view.imageRect(), view.viewport()->rect());

    view.CreateScene();
    ImageCtrlScene* scene = view.GetImageCtrlScene();
    QCOMPARE(view.scene(), static_cast<QGraphicsScene*>(scene));
    QCOMPARE(scene->parent(), static_cast<QObject*>(nullptr));
    QCOMPARE(scene->backgroundBrush(), QBrush(QColor(153, 153, 153, 255), Qt::SolidPattern));
    QVERIFY(scene->GetImageLayer());
    QCOMPARE(scene->GetImageLayer()->GetZoomModel(), VOR_ZOOM_FIT);
    QVERIFY(scene->GetImageLayer()->isVorImg());
    QVERIFY(scene->GetImageLayer()->GetQImage()->isNull());
}

void FacadeLifecycleTest::viewPaintsGreyAroundThePicture()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(colourPicture(40, 30, 200, 100, 50), 2.0), 0L);
    ImageCtrlView* view = fixture.view();
    const QImage shot = view->viewport()->grab().toImage();
    QCOMPARE(QColor(shot.pixel(view->mapFromScene(QPointF(20, 15)))), QColor(200, 100, 50));
    QCOMPARE(QColor(shot.pixel(view->mapFromScene(QPointF(-5, -5)))), QColor(153, 153, 153));
    QCOMPARE(QColor(shot.pixel(view->mapFromScene(QPointF(45, 20)))), QColor(153, 153, 153));
}

void FacadeLifecycleTest::resizeRefitsVorImageWhateverTheZoomModel()
{
    EmbeddedWindow fixture;
    ImageLayer* layer = layerOf(*fixture.wnd);
    QCOMPARE(fixture.setPicture(colourPicture(200, 100, 1, 2, 3)), 0L);
    QCOMPARE(fixture.wnd->zoomIn(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);
    QCOMPARE(fixture.wnd->zoom(7.0), 0L);

    // 500 x 400: the view is (0, 40, 500, 330), its size 481 x 311.
    QCOMPARE(fixture.wnd->move(0, 0, 500, 400), 0L);
    QCOMPARE(fixture.view()->geometry(), QRect(0, 40, 500, 330));
    double width = 0.0;
    double height = 0.0;
    fixture.scene()->getViewSize(width, height);
    QCOMPARE(width, 481.0);
    QCOMPARE(height, 311.0);
    const double fit = double(float(481.0 / 200.0));
    QCOMPARE(fixture.scene()->getScale(), fit);
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(fit, fit));
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_IN);

    // Here the height decides: 200 x 100 in a view of 781 x 171.
    QCOMPARE(fixture.wnd->zoomReset(), 0L);
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_ORG);
    QCOMPARE(fixture.wnd->move(0, 0, 800, 260), 0L);
    fixture.scene()->getViewSize(width, height);
    QCOMPARE(width, 781.0);
    QCOMPARE(height, 171.0);
    QCOMPARE(fixture.scene()->getScale(), double(float(171.0 / 100.0)));
    QCOMPARE(layer->GetZoomModel(), VOR_ZOOM_ORG);
}

void FacadeLifecycleTest::resizeKeepsScaleWithOnlyQImageBackgrounds()
{
    EmbeddedWindow fixture;
    QCOMPARE(fixture.showPicture(qtPicture(200, 100, qRgb(1, 2, 3)), 2.0), 0L);
    QCOMPARE(fixture.wnd->move(0, 0, 500, 400), 0L);
    double width = 0.0;
    double height = 0.0;
    fixture.scene()->getViewSize(width, height);
    QCOMPARE(width, 481.0);
    QCOMPARE(fixture.scene()->getScale(), 2.0);
    QCOMPARE(fixture.view()->transform(), QTransform::fromScale(2.0, 2.0));
}

QTEST_MAIN(FacadeLifecycleTest)
#include "tst_facadelifecycle.moc"
