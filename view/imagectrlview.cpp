#include "imagectrlview.h"

#include "FloatAreaWidget.h"
#include "ImageLayer.h"
#include "datainterface.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "jsontext.h"
#include "numericguards.h"
#include "settleditemcache.h"
#include "viewpainter.h"

#include "VorImage.h"

#include <QCoreApplication>
#include <QCursor>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMatrix>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QtMath>

#include <climits>
#include <cmath>

namespace {

constexpr double kZoomStep = 1.25;
constexpr double kMinimumScale = 0.03;
// Pixel values are written into the pixels from this scale on.
constexpr double kPixelLabelScale = 100.0;
// How near the cross's arms a press grabs it, in viewport pixels.
constexpr int kCrossArmReach = 6;

// "r,g,b,a" with exactly four parts; a part that is no number counts 0.
bool colourFromText(const QString& text, QColor* colour)
{
    const QStringList parts = text.split(",", QString::KeepEmptyParts, Qt::CaseSensitive);
    if (parts.size() != 4)
        return false;
    *colour = QColor(parts[0].toInt(nullptr, 10), parts[1].toInt(nullptr, 10), parts[2].toInt(nullptr, 10),
                     parts[3].toInt(nullptr, 10));
    return true;
}

// A mouse position in viewport pixels, rounded as QMouseEvent::pos() rounds.
// False for one that is no number or lies farther from the viewport than a
// widget can reach: no platform sends such a position, and the view ignores
// the event instead of turning it into a pixel.
bool viewportPixel(const QPointF& position, QPoint* pixel)
{
    const double farthest = QWIDGETSIZE_MAX;
    if (!(std::abs(position.x()) <= farthest && std::abs(position.y()) <= farthest))
        return false;
    *pixel = position.toPoint();
    return true;
}

// A scroll bar value moved by a distance, held within int.
int scrolledBy(int value, qint64 distance)
{
    return int(qBound<qint64>(INT_MIN, qint64(value) + distance, INT_MAX));
}

QString colourText(const QColor& colour)
{
    return QString("%1,%2,%3,%4")
        .arg(colour.red(), 0, 10, QChar(' '))
        .arg(colour.green(), 0, 10, QChar(' '))
        .arg(colour.blue(), 0, 10, QChar(' '))
        .arg(colour.alpha(), 0, 10, QChar(' '));
}

} // namespace

ImageCtrlView::ImageCtrlView(QWidget* parent)
    : QGraphicsView(parent)
    , m_scene(nullptr)
    , m_scrollVisible(true)
    , m_rightDown(false)
    , m_rightMoved(false)
    , m_lastPos(0, 0)
    , m_limitMousePos(false)
    , m_pixelVisible(false)
    , m_crossVisible(false)
    , m_crossRadius(10)
    , m_crossMode(false)
    , m_crossLineWidth(1)
    , m_crossColor(255, 0, 0, 128)
    , m_crossEmphasisColor(Qt::red)
    , m_crossEmphasisLength(20)
    , m_savedCursor(Qt::ArrowCursor)
    , m_crossDragging(false)
    , m_gridVisible(false)
    , m_gridGap(10)
    , m_gridColor(Qt::red)
    , m_gridLineWidth(1)
    , m_isFloat(false)
    , m_floatArea(nullptr)
    , m_numLabel(nullptr)
    , m_foregroundPainter(nullptr)
    , m_cacheCoversViewport(false)
{
    setAcceptDrops(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setMouseTracking(true);
    // Antialiasing alone: no smoothing of the picture, and no anchors, since
    // pan and cursor-anchored zoom are done by hand.
    setRenderHint(QPainter::Antialiasing, true);
    m_imageRect = viewport()->rect();
    m_crossPoint = QRectF(viewport()->rect()).center().toPoint();

    // What paints in viewport pixels must repaint with every scroll.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { viewport()->update(); });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { viewport()->update(); });

    m_floatArea = new FloatAreaWidget(this);
    m_numLabel = new QLabel(this);
    m_numLabel->move(10, 2);
    m_numLabel->setAlignment(Qt::AlignCenter);
    m_numLabel->setText("1");
    m_numLabel->setStyleSheet("min-width: 28px; min-height: 28px;max-width:28px; max-height: 28px;"
                              "border-radius: 14px;  border:1px solid black;background:grey");
    m_floatArea->move(10, 2);
    connect(m_floatArea, SIGNAL(floatBtnClicked(bool)), this, SIGNAL(floatBtnClicked(bool)));
    connect(m_floatArea, SIGNAL(intoBtnClicked(bool)), this, SIGNAL(intoBtnClicked(bool)));
    // The zoom buttons leave as the view's signals and come back into the
    // window's tool-bar slots, so the host hears them as tool-bar clicks.
    connect(m_floatArea, SIGNAL(zoomInClicked(bool)), this, SIGNAL(ZoomInPushButtonClicked(bool)));
    connect(m_floatArea, SIGNAL(zoomOutClicked(bool)), this, SIGNAL(ZoomOutPushButtonClicked(bool)));
    connect(m_floatArea, SIGNAL(adaptClicked(bool)), this, SIGNAL(ZoomFitPushButtonClicked(bool)));
    connect(m_floatArea, SIGNAL(fitClicked(bool)), this, SIGNAL(ZoomOrgPushButtonClicked(bool)));
    m_floatArea->hide();
    m_numLabel->hide();
}

ImageCtrlView::~ImageCtrlView()
{
    delete m_scene;
    m_scene = nullptr;
}

void ImageCtrlView::CreateScene()
{
    m_scene = new ImageCtrlScene(nullptr);
    m_scene->setImageCtrlView(this);
    setScene(m_scene);
    // The grey of an empty area, also what GetPixel reports outside the picture.
    m_scene->setBackgroundBrush(QBrush(QColor(153, 153, 153, 255), Qt::SolidPattern));
    m_scene->CreateLayers();
}

ImageCtrlScene* ImageCtrlView::GetImageCtrlScene() const
{
    return m_scene;
}

void ImageCtrlView::finishDisplay()
{
    ImageLayer* layer = m_scene->GetImageLayer();
    layer->Update(true);
    layer->show();
}

long ImageCtrlView::DisplayImage(QImage& image)
{
    if (!m_scene->GetImageLayer()->LoadVorImage(image))
        return -1;
    m_imageRect = QRect(0, 0, image.width(), image.height());
    finishDisplay();
    // The read-out refreshes under a resting mouse.
    emit updateMousePosition(mapToScene(mapFromGlobal(QCursor::pos())));
    return 0;
}

long ImageCtrlView::DisplayImage(VorImage* image)
{
    if (!m_scene->GetImageLayer()->LoadVorImage(image))
        return -1;
    m_imageRect = QRect(0, 0, image ? image->Width() : 0, image ? image->Height() : 0);
    finishDisplay();
    return 0;
}

long ImageCtrlView::runDisplayImage(VorImage* image)
{
    if (!m_scene->GetImageLayer()->runLoadVorImage(image))
        return -1;
    // Stored for the record only; nothing reads it, so the worker may write it.
    m_imageRect = QRect(0, 0, image->Width(), image->Height());
    return 0;
}

long ImageCtrlView::RefreshLayers()
{
    finishDisplay();
    // The repaint is done before the call returns; a worker blocked in
    // repaint() thus finds the picture on screen.
    QCoreApplication::processEvents();
    return 0;
}

void ImageCtrlView::setScaleMatrix(double scale)
{
    setMatrix(ViewPainter::viewMatrix(scale), false);
}

long ImageCtrlView::Zoom(double scale)
{
    // An infinite scale has no inverse matrix: like one below the minimum, it
    // changes nothing.
    if (!(scale >= kMinimumScale) || std::isinf(scale))
        return 0;
    // The scale is stored on both sides of the matrix: a host's slot on the
    // scroll bars, run while the matrix is set, reads the new scale, and
    // whatever that slot stores, this zoom's value is the one that stays.
    m_scene->setScale(scale);
    setScaleMatrix(scale);
    m_scene->setScale(scale);
    return 0;
}

void ImageCtrlView::SetScrollVisible(bool visible)
{
    m_scrollVisible = visible;
}

void ImageCtrlView::setLimitMousePos(bool limit)
{
    // The flag only tells the window, whose limit rectangle confines nothing.
    m_limitMousePos = limit;
    emit limitMouseChanged();
}

bool ImageCtrlView::limitMousePos() const
{
    return m_limitMousePos;
}

void ImageCtrlView::setDrawModeCursorIcon(DrawMode mode)
{
    const bool drawing = mode >= DM_POINT && mode <= DM_ANYCLOSELINE;
    viewport()->setCursor(drawing ? Qt::CrossCursor : Qt::ArrowCursor);
}

void ImageCtrlView::resetDrawModeCursorIcon()
{
    viewport()->setCursor(Qt::ArrowCursor);
}

QWidget* ImageCtrlView::parentWidget() const
{
    return QWidget::parentWidget();
}

void ImageCtrlView::enablePixelVisible(bool visible)
{
    m_pixelVisible = visible;
    viewport()->update();
}

bool ImageCtrlView::PixelVisible() const
{
    return m_pixelVisible;
}

void ImageCtrlView::updateScene()
{
    m_scene->update(QRectF());
}

void ImageCtrlView::mousePressEvent(QMouseEvent* event)
{
    QPoint pos;
    if (!viewportPixel(event->localPos(), &pos)) {
        event->accept();
        return;
    }
    const QPointF sp = mapToScene(pos);
    if (event->button() & Qt::LeftButton) {
        emit sigMousePress(sp.x(), sp.y());
        crossPressTest(pos);
    }

    QGraphicsView::mousePressEvent(event);

    if (event->button() & Qt::RightButton) {
        m_rightDown = true;
        setCursor(Qt::OpenHandCursor);
        m_lastPos = pos;
        emit sigMouseRightPress(sp.x(), sp.y());
    }
}

void ImageCtrlView::mouseMoveEvent(QMouseEvent* event)
{
    QPoint pos;
    if (!viewportPixel(event->localPos(), &pos)) {
        event->accept();
        return;
    }
    const QPointF sp = mapToScene(pos);
    emit updateMousePosition(sp);

    if (m_crossDragging) {
        m_crossPoint = pos;
        const QRect bounds = viewport()->rect();
        if (!bounds.contains(m_crossPoint)) {
            m_crossPoint.setX(qBound(bounds.left(), m_crossPoint.x(), bounds.right()));
            m_crossPoint.setY(qBound(bounds.top(), m_crossPoint.y(), bounds.bottom()));
        }
        viewport()->update();
    }

    if (m_rightDown) {
        setCursor(Qt::ClosedHandCursor);
        const qint64 dx = qint64(pos.x()) - m_lastPos.x();
        const qint64 dy = qint64(pos.y()) - m_lastPos.y();
        QScrollBar* h = horizontalScrollBar();
        h->setValue(scrolledBy(h->value(), isRightToLeft() ? dx : -dx));
        QScrollBar* v = verticalScrollBar();
        v->setValue(scrolledBy(v->value(), -dy));
        m_scene->update(QRectF());
        m_lastPos = pos;
        m_rightMoved = true;
    }

    QGraphicsView::mouseMoveEvent(event);

    // The host's move callback comes last, and only over a picture or in
    // QImage mode.
    ImageLayer* layer = m_scene->GetImageLayer();
    if (!layer->isVorImg() || layer->hasValidVorImage())
        m_scene->GetEventThread()->sendMouseMove(float(sp.x()), float(sp.y()));
}

void ImageCtrlView::mouseReleaseEvent(QMouseEvent* event)
{
    QPoint pos;
    if (!viewportPixel(event->localPos(), &pos)) {
        event->accept();
        return;
    }
    QGraphicsView::mouseReleaseEvent(event);

    const QPointF sp = mapToScene(pos);
    emit mouseClicked(sp);

    // The flag decides, not the button: releasing the left button during a
    // right drag ends the drag.
    if (m_rightDown) {
        m_rightDown = false;
        setCursor(Qt::ArrowCursor);
        if (m_rightMoved) {
            emit sigMouseRightMoveRelease(sp.x(), sp.y());
            m_rightMoved = false;
        } else {
            emit sigMouseRightRelease(sp.x(), sp.y());
        }
    }
    if (event->button() & Qt::LeftButton) {
        emit sigMouseRelease(sp.x(), sp.y());
        if (m_crossDragging) {
            m_crossDragging = false;
            // Saved from the view, given back to the viewport.
            viewport()->setCursor(m_savedCursor);
        }
    }

    QTimer::singleShot(1, this, SLOT(updateScene()));
}

bool ImageCtrlView::viewportEvent(QEvent* event)
{
    if (!ImageCtrlScene::isTouchEvent(event))
        return QGraphicsView::viewportEvent(event);

    // The base is not called for touch: it would hand the points on to the
    // scene, and a finger on the picture is not meant to draw.
    const QList<QTouchEvent::TouchPoint> points = static_cast<QTouchEvent*>(event)->touchPoints();
    if (points.size() != 2)
        return true;
    const QTouchEvent::TouchPoint& first = points.first();
    const QTouchEvent::TouchPoint& last = points.last();
    const auto movedOrReleased = [](const QTouchEvent::TouchPoint& point) {
        return point.state() == Qt::TouchPointMoved || point.state() == Qt::TouchPointReleased;
    };
    if (!movedOrReleased(first) && !movedOrReleased(last))
        return true;

    // Against the distance the fingers began at, with no dead zone: every
    // event of a spread pinch is one more step in. An unchanged distance, and
    // 0 / 0 for fingers that began and stay on one point, step out.
    const qreal current = QLineF(first.pos(), last.pos()).length();
    const qreal start = QLineF(first.startPos(), last.startPos()).length();
    if (current / start > 1.0)
        emit ZoomInPushButtonClicked(true);
    else
        emit ZoomOutPushButtonClicked(true);
    return true;
}

void ImageCtrlView::wheelEvent(QWheelEvent* event)
{
    QPoint p;
    if (!viewportPixel(event->position(), &p)) {
        event->accept();
        return;
    }
    const QPointF sp = mapToScene(p);
    const double w = viewport()->width();
    const double h = viewport()->height();
    const double fx = p.x() / w;
    const double fy = p.y() / h;
    ImageLayer* layer = m_scene->GetImageLayer();

    if (event->angleDelta().y() >= 1) {
        const double scale = m_scene->getScale();
        if (scale > w || scale > h) {
            event->accept();
            return;
        }
        layer->SetZoomModel(VOR_ZOOM_IN);
        const double next = scale * kZoomStep;
        setScaleMatrix(next);
        m_scene->setScale(next);
    } else {
        layer->SetZoomModel(VOR_ZOOM_OUT);
        const double scale = m_scene->getScale();
        // The test is on the scale before the step, which can end just below
        // the limit.
        if (scale >= kMinimumScale) {
            const double next = scale / kZoomStep;
            setScaleMatrix(next);
            m_scene->setScale(next);
        }
    }

    // Keep the scene point under the cursor.
    const QPointF m = matrix().map(sp);
    horizontalScrollBar()->setValue(TruncateToInt(m.x() - w * fx));
    verticalScrollBar()->setValue(TruncateToInt(m.y() - h * fy));

    emit updateMousePosition(mapToScene(p));
    event->accept();
}

// The steps of QGraphicsView's paint before the items, for the whole
// viewport: the viewport's fill, the view's render hints and matrix, the
// background of the scene rectangle the viewport shows.
void ImageCtrlView::paintBackgroundOfViewport(QPainter* painter)
{
    QWidget* port = viewport();
    if (port->autoFillBackground())
        painter->fillRect(port->rect(), port->palette().brush(port->backgroundRole()));
    painter->save();
    painter->setRenderHints(painter->renderHints(), false);
    painter->setRenderHints(renderHints(), true);
    painter->setWorldTransform(viewportTransform());
    drawBackground(painter, mapToScene(port->rect()).boundingRect());
    painter->restore();
}

void ImageCtrlView::paintEvent(QPaintEvent* event)
{
    m_cacheCoversViewport = false;
    if (m_scene) {
        m_scene->prepareSettledItems();
        m_cacheCoversViewport =
            m_scene->settledItems()->paintsOver(mapToScene(viewport()->rect()).boundingRect());
    }
    QGraphicsView::paintEvent(event);
    drawDisplayPixel();
}

void ImageCtrlView::drawBackground(QPainter* painter, const QRectF& rect)
{
    if (m_cacheCoversViewport && painter->device() == viewport())
        return;
    QGraphicsView::drawBackground(painter, rect);
}

void ImageCtrlView::drawDisplayPixel()
{
    if (!m_pixelVisible || !(m_scene->getScale() >= kPixelLabelScale))
        return;
    QPainter painter(viewport());
    const QPoint p0 = mapFromScene(0.0, 0.0);
    const QPoint p1 = mapFromScene(1.0, 1.0);
    const int cellWidth = p1.x() - p0.x();
    const int cellHeight = p1.y() - p0.y();
    const QPointF t = mapToScene(0, 0);
    QPoint first(qFloor(t.x()), qFloor(t.y()));
    QPoint start = mapFromScene(QPointF(first));
    QPoint end = start + QPoint(viewport()->width() + cellWidth, viewport()->height() + cellHeight);
    m_scene->drawDisplayPixel(&painter, start, end, cellWidth, cellHeight, first);
}

void ImageCtrlView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    if (width() <= 0 || height() <= 0)
        return;
    // The view widget's sizes, less what scroll bars and frame take.
    const int margin = m_scrollVisible ? 19 : 2;
    m_scene->setViewSize(float(width() - margin), float(height() - margin));
    ImageLayer* layer = m_scene->GetImageLayer();
    if (layer->hasVorImage()) {
        // Any resize re-fits the picture, whatever the zoom model says.
        m_scene->setScale(layer->GetFitImageScaledValue());
        layer->Update(false);
        layer->show();
    }
}

void ImageCtrlView::crossPressTest(const QPoint& pos)
{
    m_savedCursor = cursor();
    // In 64 bits: a host may set any radius.
    const qint64 cx = m_crossPoint.x();
    const qint64 cy = m_crossPoint.y();
    const qint64 r = m_crossRadius;
    // Visible or not, the reticle is grabbed near its centre or its arms.
    bool nearArm = false;
    if (qAbs(pos.y() - cy) < kCrossArmReach)
        nearArm = pos.x() < cx - r || pos.x() > cx + r;
    else if (qAbs(pos.x() - cx) < kCrossArmReach)
        nearArm = pos.y() < cy - r || pos.y() > cy + r;
    const qint64 manhattan = qAbs(pos.x() - cx) + qAbs(pos.y() - cy);
    if (manhattan <= 2 * r || nearArm) {
        m_crossDragging = true;
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
}

void ImageCtrlView::setCrossLineInfo(QString info)
{
    const QJsonDocument document = JsonText::parse(info.toUtf8());
    if (!document.isObject())
        return;
    QJsonObject object = document.object();
    // The mode has to come before the point.
    if (!object.value("visible").isUndefined())
        m_crossVisible = object.value("visible").toBool();
    if (!object.value("mode").isUndefined())
        m_crossMode = object.value("mode").toInt() != 0;
    if (!object.value("color").isUndefined())
        colourFromText(object.value("color").toString(), &m_crossColor);
    if (!object.value("emphasisColor").isUndefined()) {
        // The emphasis colour is read from "color": with both keys it equals the
        // colour, with "emphasisColor" alone it stays as it was.
        colourFromText(object["color"].toString(), &m_crossEmphasisColor);
    }
    if (!object.value("point").isUndefined()) {
        const QStringList parts = object.value("point").toString().split(",");
        if (parts.size() == 2) {
            const QPoint p(parts[0].toInt(), parts[1].toInt());
            if (m_crossMode) {
                m_crossPoint = mapFromScene(QPointF(p));
            } else {
                m_crossPoint = p;
                const QRect bounds = viewport()->rect();
                if (!bounds.contains(m_crossPoint)) {
                    m_crossPoint.setX(qBound(bounds.left(), m_crossPoint.x(), bounds.right()));
                    m_crossPoint.setY(qBound(bounds.top(), m_crossPoint.y(), bounds.bottom()));
                }
            }
        }
    }
    if (!object.value("lineWidth").isUndefined())
        m_crossLineWidth = object.value("lineWidth").toInt();
    if (!object.value("circleRadius").isUndefined())
        m_crossRadius = object.value("circleRadius").toInt();
    if (!object.value("emphasisLength").isUndefined())
        m_crossEmphasisLength = object.value("emphasisLength").toInt();
    viewport()->update();
}

void ImageCtrlView::getCrossLineInfo(QString& info)
{
    QJsonObject object;
    object.insert("visible", m_crossVisible);
    // Out as a JSON boolean; on the way in a boolean reads as 0.
    object.insert("mode", m_crossMode);
    object.insert("color", colourText(m_crossColor));
    object.insert("emphasisColor", colourText(m_crossEmphasisColor));
    object.insert("lineWidth", m_crossLineWidth);
    object.insert("circleRadius", m_crossRadius);
    object.insert("emphasisLength", m_crossEmphasisLength);
    QPoint point = m_crossPoint;
    if (m_crossMode) {
        // Rounded as toPoint() rounds, but held within int: a view whose matrix
        // cannot be inverted maps to no number.
        const QPointF scenePoint = mapToScene(m_crossPoint);
        point = QPoint(RoundToInt(scenePoint.x()), RoundToInt(scenePoint.y()));
    }
    object.insert("point", QString("%1,%2").arg(point.x(), 0, 10, QChar(' ')).arg(point.y(), 0, 10, QChar(' ')));
    QJsonDocument document;
    document.setObject(object);
    info = document.toJson(QJsonDocument::Compact);
}

void ImageCtrlView::setGridLineInfo(QString info)
{
    const QJsonDocument document = JsonText::parse(info.toUtf8());
    if (!document.isObject())
        return;
    const QJsonObject object = document.object();
    if (!object.value("visible").isUndefined())
        m_gridVisible = object.value("visible").toBool();
    if (!object.value("color").isUndefined())
        colourFromText(object.value("color").toString(), &m_gridColor);
    if (!object.value("lineWidth").isUndefined())
        m_gridLineWidth = object.value("lineWidth").toInt();
    if (!object.value("gap").isUndefined())
        m_gridGap = object.value("gap").toInt();
    viewport()->update();
}

void ImageCtrlView::getGridLineInfo(QString& info)
{
    QJsonObject object;
    object.insert("visible", m_gridVisible);
    object.insert("color", colourText(m_gridColor));
    object.insert("lineWidth", m_gridLineWidth);
    object.insert("gap", m_gridGap);
    info = QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void ImageCtrlView::drawForeground(QPainter* painter, const QRectF& rect)
{
    QGraphicsView::drawForeground(painter, rect);
    // The toolkit refuses a second painter on the viewport during its paint,
    // so what follows draws through this one, reset to viewport pixels.
    m_foregroundPainter = painter;
    const GridLook grid = gridLook();
    CrossLook cross = crossLook();
    ViewPainter::paintForeground(painter, m_scene->GetForeLayer(), m_gridVisible ? &grid : nullptr,
                                 m_crossVisible ? &cross : nullptr, viewport()->rect(), pictureOnScreen());
    if (m_crossVisible && m_crossMode)
        m_crossPoint = cross.centre;
    m_foregroundPainter = nullptr;
}

void ImageCtrlView::drawGridLine()
{
    if (m_foregroundPainter) {
        drawGridLine(m_foregroundPainter);
        return;
    }
    QPainter painter(viewport());
    drawGridLine(&painter);
}

void ImageCtrlView::drawCrossLine()
{
    if (m_foregroundPainter) {
        drawCrossLine(m_foregroundPainter);
        return;
    }
    QPainter painter(viewport());
    drawCrossLine(&painter);
}

GridLook ImageCtrlView::gridLook() const
{
    GridLook look;
    look.gap = m_gridGap;
    look.colour = m_gridColor;
    look.lineWidth = m_gridLineWidth;
    return look;
}

CrossLook ImageCtrlView::crossLook() const
{
    CrossLook look;
    look.pictureMode = m_crossMode;
    look.centre = m_crossPoint;
    look.radius = m_crossRadius;
    look.lineWidth = m_crossLineWidth;
    look.colour = m_crossColor;
    look.emphasisLength = m_crossEmphasisLength;
    return look;
}

QRect ImageCtrlView::pictureOnScreen() const
{
    return mapFromScene(scene()->sceneRect()).boundingRect();
}

void ImageCtrlView::drawGridLine(QPainter* painter)
{
    ViewPainter::paintGrid(painter, gridLook(), viewport()->rect());
}

void ImageCtrlView::drawCrossLine(QPainter* painter)
{
    const QPoint used = ViewPainter::paintCrossLine(painter, crossLook(), viewport()->rect(), pictureOnScreen());
    // In picture mode the bounded point is kept: a zoom out may pull the
    // reticle into the smaller picture for good.
    if (m_crossMode)
        m_crossPoint = used;
}

void ImageCtrlView::SetFloatFlag(bool isFloat)
{
    m_isFloat = isFloat;
}

bool ImageCtrlView::isFloat() const
{
    return m_isFloat;
}

void ImageCtrlView::SetFloatAreaVisible(bool visible)
{
    m_floatArea->setVisible(visible);
}

void ImageCtrlView::SetIntoBtnVisible(bool visible)
{
    m_floatArea->setIntoBtnVisible(visible);
}

void ImageCtrlView::SetFloatTipText(QString text)
{
    m_floatArea->setTipText(text);
}

void ImageCtrlView::SetNum(QString text)
{
    m_numLabel->setText(text);
}

void ImageCtrlView::SetNumVisible(bool visible)
{
    m_numLabel->setVisible(visible);
}
