#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include "testkit.h"

#include <QtTest>

#include <QPaintEngine>
#include <QRegularExpression>
#include <QScrollBar>

#include <opencv2/core.hpp>

#include <chrono>
#include <future>
#include <thread>

// Pixel value labels: the texts per picture format, the cells they stand in
// (stepping by whole cells from the first pixel at the viewport's corner), the
// scale threshold, pictures without pixels, and painting on top of the view.
// Texts are caught by a paint device that records each line of text drawn,
// with its position and the pen it was drawn with.
class tst_PixelLabels : public QObject
{
    Q_OBJECT

private slots:
    void greyLabelShowsIndexByte_data();
    void greyLabelShowsIndexByte();
    void rgb888LabelShowsThreeDigits_data();
    void rgb888LabelShowsThreeDigits();
    void rgb32LabelShowsMemoryOrderBytes_data();
    void rgb32LabelShowsMemoryOrderBytes();
    void otherFormatsGetNoCell_data();
    void otherFormatsGetNoCell();
    void cellsStepByWholeCellsFromStart();
    void loopsStopAtPictureEdge();
    void negativeFirstRowAndColumnGetNoLabel();
    void onlyTextIsDrawnWithPaintersPen();
    void clearedPictureGivesOneCell();
    void emptyPictureGivesNoCellAndReleasesLock();
    void unsupportedChannelsGiveNoCellAndReleaseLock();

    void thresholdIsScaleOneHundred();
    void thresholdIsOnStoredScale();
    void wheelZoomPassesOneHundredAtAScaleThatDependsOnTheStart();
    void enablePixelVisibleStoresFlag();
    void viewCellsFollowSceneMapping();
    void nonWholeScaleLabelsStepByWholeCells();
    void smallPictureInsideViewportLabelsOnlyItsPixels();
    void viewLabelsUseDefaultPenAndFont();
    void clearedPictureInViewGivesOneLabel();
    void emptyPictureInViewGivesNoLabel();
    void labelsPaintOnTopOfPicture();
    void labelsVanishOnBlackPixels();
    void windowShowsLabelsFromScaleOneHundred();
};

namespace {

// One line of text as it reached the paint engine.
struct TextLine
{
    QString text;
    QPointF pos;   // baseline start, device coordinates
    qreal width = 0;
    qreal ascent = 0;
    QPen pen;
    QFont font;
    qreal centreX() const { return pos.x() + width / 2.0; }
};

class RecordingEngine;

// A paint device that keeps the lines of text painted on it and counts
// everything else that is painted.
class TextRecorder : public QPaintDevice
{
public:
    explicit TextRecorder(QSize size);
    ~TextRecorder() override;
    QPaintEngine* paintEngine() const override;
    int metric(PaintDeviceMetric metric) const override;

    QList<TextLine> lines;
    int otherDrawings = 0;

private:
    QSize m_size;
    RecordingEngine* m_engine;
};

class RecordingEngine : public QPaintEngine
{
public:
    explicit RecordingEngine(TextRecorder* recorder)
        : QPaintEngine(QPaintEngine::AllFeatures)
        , m_recorder(recorder)
    {
    }
    bool begin(QPaintDevice*) override
    {
        m_transform = QTransform();
        m_pen = QPen();
        return true;
    }
    bool end() override { return true; }
    Type type() const override { return QPaintEngine::User; }
    void updateState(const QPaintEngineState& state) override
    {
        if (state.state() & DirtyTransform)
            m_transform = state.transform();
        if (state.state() & DirtyPen)
            m_pen = state.pen();
        if (state.state() & DirtyFont)
            m_font = state.font();
    }
    void drawTextItem(const QPointF& p, const QTextItem& item) override
    {
        TextLine line;
        line.text = item.text();
        line.pos = m_transform.map(p);
        line.width = item.width();
        line.ascent = item.ascent();
        line.pen = m_pen;
        line.font = item.font();
        m_recorder->lines.append(line);
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { ++m_recorder->otherDrawings; }
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
    {
        ++m_recorder->otherDrawings;
    }
    void drawTiledPixmap(const QRectF&, const QPixmap&, const QPointF&) override { ++m_recorder->otherDrawings; }
    void drawRects(const QRectF*, int) override { ++m_recorder->otherDrawings; }
    void drawRects(const QRect*, int) override { ++m_recorder->otherDrawings; }
    void drawLines(const QLineF*, int) override { ++m_recorder->otherDrawings; }
    void drawLines(const QLine*, int) override { ++m_recorder->otherDrawings; }
    void drawEllipse(const QRectF&) override { ++m_recorder->otherDrawings; }
    void drawPath(const QPainterPath&) override { ++m_recorder->otherDrawings; }
    void drawPoints(const QPointF*, int) override { ++m_recorder->otherDrawings; }
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override { ++m_recorder->otherDrawings; }

private:
    TextRecorder* m_recorder;
    QTransform m_transform;
    QPen m_pen;
    QFont m_font;
};

TextRecorder::TextRecorder(QSize size)
    : m_size(size)
    , m_engine(new RecordingEngine(this))
{
}

TextRecorder::~TextRecorder()
{
    delete m_engine;
}

QPaintEngine* TextRecorder::paintEngine() const
{
    return m_engine;
}

int TextRecorder::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth: return m_size.width();
    case PdmHeight: return m_size.height();
    case PdmWidthMM: return m_size.width() * 254 / 960;
    case PdmHeightMM: return m_size.height() * 254 / 960;
    case PdmNumColors: return 0;
    case PdmDepth: return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY: return 96;
    case PdmDevicePixelRatio: return 1;
    case PdmDevicePixelRatioScaled: return int(QPaintDevice::devicePixelRatioFScale());
    }
    return 0;
}

// A label as found: the cell it stands in and its lines joined by "\n".
struct Label
{
    QRect cell;
    QString text;
};

// Sorts the recorded lines into the given cells, in the order the cells were
// first drawn; lines that fall in no cell go to strays.
QList<Label> labelsIn(const QList<TextLine>& lines, const QList<QRect>& cells, int* strays = nullptr)
{
    QList<Label> labels;
    QHash<int, int> labelOfCell;
    QHash<int, QList<TextLine>> linesOfCell;
    int outside = 0;
    for (const TextLine& line : lines) {
        const QPointF anchor(line.centreX(), line.pos.y() - line.ascent / 2.0);
        int found = -1;
        for (int i = 0; i < cells.size() && found < 0; ++i)
            if (QRectF(cells[i]).contains(anchor))
                found = i;
        if (found < 0) {
            ++outside;
            continue;
        }
        if (!labelOfCell.contains(found)) {
            labelOfCell.insert(found, labels.size());
            labels.append(Label{cells[found], QString()});
        }
        linesOfCell[found].append(line);
    }
    for (auto it = labelOfCell.constBegin(); it != labelOfCell.constEnd(); ++it) {
        QList<TextLine> cellLines = linesOfCell.value(it.key());
        std::stable_sort(cellLines.begin(), cellLines.end(), [](const TextLine& a, const TextLine& b) {
            return qRound(a.pos.y()) != qRound(b.pos.y()) ? a.pos.y() < b.pos.y() : a.pos.x() < b.pos.x();
        });
        QStringList texts;
        int lastBaseline = INT_MIN;
        for (const TextLine& line : cellLines) {
            if (qRound(line.pos.y()) == lastBaseline)
                texts.last() += line.text;
            else
                texts << line.text;
            lastBaseline = qRound(line.pos.y());
        }
        labels[it.value()].text = texts.join('\n');
    }
    if (strays)
        *strays = outside;
    return labels;
}

// The labels the layer draws for the given stepping, painted on a recorder.
TextRecorder* drawLabels(ImageLayer* layer, QPoint start, QPoint end, int cellWidth, int cellHeight, QPoint first,
                         const QPen& pen = QPen())
{
    auto* recorder = new TextRecorder(QSize(2000, 2000));
    QPainter painter(recorder);
    painter.setPen(pen);
    layer->drawDisplayPixel(&painter, start, end, cellWidth, cellHeight, first);
    painter.end();
    return recorder;
}

void showPicture(ImageLayer* layer, QImage picture)
{
    QVERIFY(layer->LoadVorImage(picture));
    layer->Update(true);
}

// What the view hands to the layer, worked out from the view's mapping.
struct Stepping
{
    explicit Stepping(QGraphicsView* view)
    {
        const QPoint p0 = view->mapFromScene(0.0, 0.0);
        const QPoint p1 = view->mapFromScene(1.0, 1.0);
        cellWidth = p1.x() - p0.x();
        cellHeight = p1.y() - p0.y();
        const QPointF t = view->mapToScene(0, 0);
        first = QPoint(qFloor(t.x()), qFloor(t.y()));
        start = view->mapFromScene(QPointF(first));
        end = start + QPoint(view->viewport()->width() + cellWidth, view->viewport()->height() + cellHeight);
    }
    // The cells of the pixels of a picture of the given size, in drawing order.
    QList<QRect> cells(QSize picture) const
    {
        QList<QRect> result;
        for (int row = first.y(), y = start.y(); y < end.y() && row < picture.height(); ++row, y += cellHeight)
            for (int col = first.x(), x = start.x(); x < end.x() && col < picture.width(); ++col, x += cellWidth)
                if (row >= 0 && col >= 0)
                    result << QRect(x, y, cellWidth, cellHeight);
        return result;
    }
    QList<QPoint> pixels(QSize picture) const
    {
        QList<QPoint> result;
        for (int row = first.y(), y = start.y(); y < end.y() && row < picture.height(); ++row, y += cellHeight)
            for (int col = first.x(), x = start.x(); x < end.x() && col < picture.width(); ++col, x += cellWidth)
                if (row >= 0 && col >= 0)
                    result << QPoint(col, row);
        return result;
    }
    int cellWidth;
    int cellHeight;
    QPoint first;
    QPoint start;
    QPoint end;
};

TextRecorder* renderViewport(QGraphicsView* view)
{
    auto* recorder = new TextRecorder(view->viewport()->size());
    view->viewport()->render(recorder);
    return recorder;
}

QString rgb888Text(int r, int g, int b)
{
    return QStringLiteral("r: %1\ng: %2\nb: %3")
        .arg(r, 3, 10, QChar('0'))
        .arg(g, 3, 10, QChar('0'))
        .arg(b, 3, 10, QChar('0'));
}

// A picture whose every pixel has its own label text.
QImage rgb888Picture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB888);
    for (int y = 0; y < height; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < width; ++x) {
            line[3 * x] = uchar(x);
            line[3 * x + 1] = uchar(y);
            line[3 * x + 2] = uchar(x * 3 + y * 5);
        }
    }
    return image;
}

QString rgb888TextOf(QPoint pixel)
{
    return rgb888Text(pixel.x(), pixel.y(), (pixel.x() * 3 + pixel.y() * 5) % 256);
}

bool waitsForLock(ImageLayer* layer)
{
    // Loading from another thread takes the layer's lock; a lock left held
    // would block it.
    auto done = std::make_shared<std::promise<bool>>();
    std::future<bool> result = done->get_future();
    QImage picture(3, 3, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    std::thread worker([layer, done, picture]() mutable { done->set_value(layer->LoadVorImage(picture)); });
    if (result.wait_for(std::chrono::seconds(5)) != std::future_status::ready) {
        worker.detach();
        return false;
    }
    worker.join();
    return result.get();
}

} // namespace

void tst_PixelLabels::greyLabelShowsIndexByte_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << "gray: 0";
    QTest::newRow("7") << 7 << "gray: 7";
    QTest::newRow("128") << 128 << "gray: 128";
    QTest::newRow("255") << 255 << "gray: 255";
}

void tst_PixelLabels::greyLabelShowsIndexByte()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    StandaloneView v;
    cv::Mat mat(1, 1, CV_8UC1, cv::Scalar(value));
    VorImage grey(mat);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    v.layer()->Update(true);
    QCOMPARE(v.layer()->GetQImage()->format(), QImage::Format_Indexed8);

    QScopedPointer<TextRecorder> rec(drawLabels(v.layer(), QPoint(0, 0), QPoint(200, 200), 120, 120, QPoint(0, 0)));
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, {QRect(0, 0, 120, 120)}, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels[0].text, text);

    // The byte, not the colour it stands for.
    QImage indexed(1, 1, QImage::Format_Indexed8);
    indexed.setColorCount(256);
    for (int i = 0; i < 256; ++i)
        indexed.setColor(i, qRgb(255 - i, 40, 90));
    indexed.setPixel(0, 0, uint(value));
    showPicture(v.layer(), indexed);
    rec.reset(drawLabels(v.layer(), QPoint(0, 0), QPoint(200, 200), 120, 120, QPoint(0, 0)));
    QCOMPARE(labelsIn(rec->lines, {QRect(0, 0, 120, 120)}).value(0).text, text);
}

void tst_PixelLabels::rgb888LabelShowsThreeDigits_data()
{
    QTest::addColumn<int>("r");
    QTest::addColumn<int>("g");
    QTest::addColumn<int>("b");
    QTest::addColumn<QString>("text");
    QTest::newRow("7, 8, 9") << 7 << 8 << 9 << "r: 007\ng: 008\nb: 009";
    QTest::newRow("255, 100, 0") << 255 << 100 << 0 << "r: 255\ng: 100\nb: 000";
    QTest::newRow("0, 42, 250") << 0 << 42 << 250 << "r: 000\ng: 042\nb: 250";
}

void tst_PixelLabels::rgb888LabelShowsThreeDigits()
{
    QFETCH(int, r);
    QFETCH(int, g);
    QFETCH(int, b);
    QFETCH(QString, text);
    StandaloneView v;
    QImage picture(2, 1, QImage::Format_RGB888);
    picture.setPixel(0, 0, qRgb(r, g, b));
    picture.setPixel(1, 0, qRgb(1, 2, 3));
    QCOMPARE(int(picture.constScanLine(0)[0]), r);
    showPicture(v.layer(), picture);

    QScopedPointer<TextRecorder> rec(drawLabels(v.layer(), QPoint(0, 0), QPoint(300, 150), 130, 130, QPoint(0, 0)));
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, {QRect(0, 0, 130, 130), QRect(130, 0, 130, 130)}, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 2);
    QCOMPARE(labels[0].text, text);
    QCOMPARE(labels[1].text, QStringLiteral("r: 001\ng: 002\nb: 003"));
}

void tst_PixelLabels::rgb32LabelShowsMemoryOrderBytes_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QRgb>("colour");
    QTest::addColumn<QString>("text");
    QTest::newRow("RGB32, blue 255") << int(QImage::Format_RGB32) << qRgb(9, 1, 255) << "r: 255\ng: 1\nb: 257";
    QTest::newRow("RGB32, red only") << int(QImage::Format_RGB32) << qRgb(200, 50, 0) << "r: 0\ng: 50\nb: 2";
    QTest::newRow("ARGB32, blue 255") << int(QImage::Format_ARGB32) << qRgba(9, 1, 255, 255) << "r: 255\ng: 1\nb: 257";
    QTest::newRow("ARGB32, blue 17") << int(QImage::Format_ARGB32) << qRgba(100, 200, 17, 80) << "r: 17\ng: 200\nb: 19";
}

void tst_PixelLabels::rgb32LabelShowsMemoryOrderBytes()
{
    QFETCH(int, format);
    QFETCH(QRgb, colour);
    QFETCH(QString, text);
    StandaloneView v;
    QImage picture(1, 1, QImage::Format(format));
    picture.setPixel(0, 0, colour);
    showPicture(v.layer(), picture);

    QScopedPointer<TextRecorder> rec(drawLabels(v.layer(), QPoint(10, 20), QPoint(200, 200), 130, 130, QPoint(0, 0)));
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, {QRect(10, 20, 130, 130)}, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels[0].text, text);
}

void tst_PixelLabels::otherFormatsGetNoCell_data()
{
    Kit::addFormatRows({QImage::Format_ARGB32_Premultiplied, QImage::Format_Grayscale8, QImage::Format_RGB16,
                        QImage::Format_RGBA8888, QImage::Format_BGR888});
}

void tst_PixelLabels::otherFormatsGetNoCell()
{
    QFETCH(int, format);
    StandaloneView v;
    QImage picture(3, 3, QImage::Format(format));
    picture.fill(Qt::white);
    showPicture(v.layer(), picture);
    QCOMPARE(int(v.layer()->GetQImage()->format()), format);
    QScopedPointer<TextRecorder> rec(drawLabels(v.layer(), QPoint(0, 0), QPoint(500, 500), 120, 120, QPoint(0, 0)));
    QCOMPARE(rec->lines.size(), 0);
    QCOMPARE(rec->otherDrawings, 0);
}

void tst_PixelLabels::cellsStepByWholeCellsFromStart()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(10, 10));
    // Columns at x = -30, 70, 170 (270 reaches the end), rows at y = -10, 90.
    QScopedPointer<TextRecorder> rec(
        drawLabels(v.layer(), QPoint(-30, -10), QPoint(250, 150), 100, 100, QPoint(2, 3)));
    const QList<QRect> cells = {QRect(-30, -10, 100, 100), QRect(70, -10, 100, 100), QRect(170, -10, 100, 100),
                                QRect(-30, 90, 100, 100),  QRect(70, 90, 100, 100),  QRect(170, 90, 100, 100)};
    const QList<QPoint> pixels = {QPoint(2, 3), QPoint(3, 3), QPoint(4, 3), QPoint(2, 4), QPoint(3, 4), QPoint(4, 4)};
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 6);
    for (int i = 0; i < 6; ++i) {
        // Row by row, left to right.
        QCOMPARE(labels[i].cell, cells[i]);
        QCOMPARE(labels[i].text, rgb888TextOf(pixels[i]));
    }
    // Each text is centred in its cell.
    for (const TextLine& line : rec->lines) {
        bool centred = false;
        for (const QRect& cell : cells)
            centred = centred || qAbs(line.centreX() - (cell.x() + cell.width() / 2.0)) <= 1.0;
        QVERIFY2(centred, qPrintable(line.text));
    }
}

void tst_PixelLabels::loopsStopAtPictureEdge()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(3, 2));
    QScopedPointer<TextRecorder> rec(
        drawLabels(v.layer(), QPoint(0, 0), QPoint(1000, 1000), 100, 100, QPoint(1, 0)));
    const QList<QRect> cells = {QRect(0, 0, 100, 100), QRect(100, 0, 100, 100), QRect(0, 100, 100, 100),
                                QRect(100, 100, 100, 100)};
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 4);
    QCOMPARE(labels[0].text, rgb888TextOf(QPoint(1, 0)));
    QCOMPARE(labels[1].text, rgb888TextOf(QPoint(2, 0)));
    QCOMPARE(labels[2].text, rgb888TextOf(QPoint(1, 1)));
    QCOMPARE(labels[3].text, rgb888TextOf(QPoint(2, 1)));
}

void tst_PixelLabels::negativeFirstRowAndColumnGetNoLabel()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(3, 2));
    // Columns -2 and -1 and row -1 hold no pixel; the real pixels keep their
    // places in the stepping.
    QScopedPointer<TextRecorder> rec(
        drawLabels(v.layer(), QPoint(10, 20), QPoint(610, 420), 90, 90, QPoint(-2, -1)));
    const QList<QRect> cells = {QRect(190, 110, 90, 90), QRect(280, 110, 90, 90), QRect(370, 110, 90, 90),
                                QRect(190, 200, 90, 90), QRect(280, 200, 90, 90), QRect(370, 200, 90, 90)};
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 6);
    int i = 0;
    for (int row = 0; row < 2; ++row) {
        for (int col = 0; col < 3; ++col, ++i) {
            QCOMPARE(labels[i].cell, cells[i]);
            QCOMPARE(labels[i].text, rgb888TextOf(QPoint(col, row)));
        }
    }

    // A grey picture of one column far to the right of a negative first column.
    cv::Mat mat(2, 1, CV_8UC1, cv::Scalar(33));
    VorImage grey(mat);
    QVERIFY(v.layer()->LoadVorImage(&grey));
    v.layer()->Update(true);
    rec.reset(drawLabels(v.layer(), QPoint(0, 0), QPoint(1500, 1500), 100, 100, QPoint(-7, -3)));
    const QList<Label> greyLabels = labelsIn(rec->lines, {QRect(700, 300, 100, 100), QRect(700, 400, 100, 100)},
                                             &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(greyLabels.size(), 2);
    QCOMPARE(greyLabels[0].text, QStringLiteral("gray: 33"));
}

void tst_PixelLabels::onlyTextIsDrawnWithPaintersPen()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(4, 4));
    const QPen red(QColor(200, 0, 0), 3);
    QScopedPointer<TextRecorder> rec(
        drawLabels(v.layer(), QPoint(0, 0), QPoint(400, 400), 100, 100, QPoint(0, 0), red));
    QCOMPARE(rec->lines.size(), 16 * 3);
    // No grid, no cell borders, no background.
    QCOMPARE(rec->otherDrawings, 0);
    for (const TextLine& line : rec->lines)
        QCOMPARE(line.pen.color(), QColor(200, 0, 0));
}

void tst_PixelLabels::clearedPictureGivesOneCell()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(5, 5));
    v.layer()->ClearVorImage();
    QScopedPointer<TextRecorder> rec(
        drawLabels(v.layer(), QPoint(0, 0), QPoint(1000, 1000), 120, 120, QPoint(0, 0)));
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, {QRect(0, 0, 120, 120)}, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 1);
    const QRegularExpressionMatch m = QRegularExpression("^r: (\\d+)\ng: (\\d+)\nb: (\\d+)$").match(labels[0].text);
    QVERIFY2(m.hasMatch(), qPrintable(labels[0].text));
    QCOMPARE(m.captured(3).toInt(), m.captured(1).toInt() + 2);
}

void tst_PixelLabels::emptyPictureGivesNoCellAndReleasesLock()
{
    auto* v = new StandaloneView;
    QVERIFY(v->layer()->GetQImage()->isNull());
    QScopedPointer<TextRecorder> rec(
        drawLabels(v->layer(), QPoint(0, 0), QPoint(1000, 1000), 100, 100, QPoint(0, 0)));
    QCOMPARE(rec->lines.size(), 0);
    QCOMPARE(rec->otherDrawings, 0);
    if (!waitsForLock(v->layer()))
        QFAIL("the layer's lock is still held"); // the view is left alive for the blocked thread
    QCOMPARE(v->layer()->pendingCount(), 1);
    v->layer()->Update(true);
    QCOMPARE(v->layer()->GetQImage()->size(), QSize(3, 3));
    delete v;
}

void tst_PixelLabels::unsupportedChannelsGiveNoCellAndReleaseLock()
{
    auto* v = new StandaloneView;
    cv::Mat mat(4, 4, CV_8UC2, cv::Scalar::all(9));
    VorImage image(mat);
    v->layer()->SetZoomModel(VOR_ZOOM_ORG);
    QVERIFY(v->layer()->LoadVorImage(&image));
    v->layer()->Update(true);
    QVERIFY(v->layer()->GetQImage()->isNull());
    QCOMPARE(v->layer()->GetQImage()->width(), 0);
    QScopedPointer<TextRecorder> rec(
        drawLabels(v->layer(), QPoint(0, 0), QPoint(1000, 1000), 100, 100, QPoint(0, 0)));
    QCOMPARE(rec->lines.size(), 0);
    if (!waitsForLock(v->layer()))
        QFAIL("the layer's lock is still held");
    delete v;
}

void tst_PixelLabels::thresholdIsScaleOneHundred()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(20, 20));
    v.view->enablePixelVisible(true);

    QCOMPARE(v.view->Zoom(99.99), 0L);
    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    QCOMPARE(rec->lines.size(), 0);

    QCOMPARE(v.view->Zoom(100.0), 0L);
    rec.reset(renderViewport(v.view));
    QVERIFY(rec->lines.size() > 0);

    v.view->enablePixelVisible(false);
    rec.reset(renderViewport(v.view));
    QCOMPARE(rec->lines.size(), 0);
}

void tst_PixelLabels::thresholdIsOnStoredScale()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(20, 20));
    v.view->enablePixelVisible(true);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    v.scene()->setScale(99.99);
    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    QCOMPARE(rec->lines.size(), 0);

    QCOMPARE(v.view->Zoom(99.99), 0L);
    v.scene()->setScale(100.0);
    rec.reset(renderViewport(v.view));
    QVERIFY(rec->lines.size() > 0);
}

void tst_PixelLabels::wheelZoomPassesOneHundredAtAScaleThatDependsOnTheStart()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(20, 20));
    v.view->enablePixelVisible(true);
    const QPoint cursor = v.view->viewport()->rect().center();

    struct Start
    {
        double scale;
        int stepsBelow; // wheel steps that stay below 100
    };
    // From 1 the steps of 1.25 go 86.7, 108.4; from 3 they go 85.3, 106.6.
    const Start starts[] = {{1.0, 20}, {3.0, 15}};
    QList<double> firstAbove;
    for (const Start& start : starts) {
        QCOMPARE(v.view->Zoom(start.scale), 0L);
        double expected = start.scale;
        for (int step = 0; step < start.stepsBelow; ++step) {
            Kit::wheelAtViewport(v.view, cursor, 120);
            expected *= 1.25;
        }
        QCOMPARE(v.scene()->getScale(), expected);
        QVERIFY(v.scene()->getScale() < 100.0);
        QScopedPointer<TextRecorder> rec(renderViewport(v.view));
        QCOMPARE(rec->lines.size(), 0);

        Kit::wheelAtViewport(v.view, cursor, 120);
        expected *= 1.25;
        QCOMPARE(v.scene()->getScale(), expected);
        QVERIFY(v.scene()->getScale() > 100.0);
        rec.reset(renderViewport(v.view));
        QVERIFY(rec->lines.size() > 0);
        firstAbove << v.scene()->getScale();
    }
    QVERIFY(qAbs(firstAbove[0] - 108.420217) < 1e-5);
    QVERIFY(qAbs(firstAbove[1] - 106.581410) < 1e-5);
}

void tst_PixelLabels::enablePixelVisibleStoresFlag()
{
    StandaloneView v;
    QVERIFY(!v.view->PixelVisible());
    v.view->enablePixelVisible(true);
    QVERIFY(v.view->PixelVisible());
    v.view->enablePixelVisible(false);
    QVERIFY(!v.view->PixelVisible());

    EmbeddedWindow w;
    QCOMPARE(w.wnd->enablePixelVisible(true), 0L);
    QVERIFY(w.view()->PixelVisible());
    QCOMPARE(w.wnd->enablePixelVisible(false), 0L);
    QVERIFY(!w.view()->PixelVisible());
    KESImageWnd noWindow;
    QCOMPARE(noWindow.enablePixelVisible(true), -1L);
}

void tst_PixelLabels::viewCellsFollowSceneMapping()
{
    StandaloneView v;
    const QImage picture = rgb888Picture(40, 30);
    showPicture(v.layer(), picture);
    v.view->enablePixelVisible(true);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    // Scroll so that the viewport's corner lies inside a pixel.
    v.view->horizontalScrollBar()->setValue(1237);
    v.view->verticalScrollBar()->setValue(861);
    const Stepping s(v.view);
    QCOMPARE(s.cellWidth, 100);
    QCOMPARE(s.cellHeight, 100);
    QCOMPARE(s.first, QPoint(12, 8));
    QVERIFY(s.start.x() < 0 && s.start.y() < 0);

    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    const QList<QRect> cells = s.cells(picture.size());
    const QList<QPoint> pixels = s.pixels(picture.size());
    QVERIFY(cells.size() >= 35);
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), cells.size());
    for (int i = 0; i < labels.size(); ++i) {
        QCOMPARE(labels[i].cell, cells[i]);
        QCOMPARE(labels[i].text, rgb888TextOf(pixels[i]));
        // At a whole scale the cells are the pixels' squares.
        QCOMPARE(labels[i].cell.topLeft(), v.view->mapFromScene(QPointF(pixels[i])));
    }
}

void tst_PixelLabels::nonWholeScaleLabelsStepByWholeCells()
{
    StandaloneView v;
    const QImage picture = rgb888Picture(40, 30);
    showPicture(v.layer(), picture);
    v.view->enablePixelVisible(true);
    QCOMPARE(v.view->Zoom(100.45), 0L);
    v.view->horizontalScrollBar()->setValue(1000);
    v.view->verticalScrollBar()->setValue(800);
    const Stepping s(v.view);
    QVERIFY(s.cellWidth == 100 || s.cellWidth == 101);

    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    const QList<QRect> cells = s.cells(picture.size());
    const QList<QPoint> pixels = s.pixels(picture.size());
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), cells.size());
    for (int i = 0; i < labels.size(); ++i)
        QCOMPARE(labels[i].text, rgb888TextOf(pixels[i]));

    // The first line of the last label of the first row: centred in its
    // stepped cell, which has drifted from the pixel's true square.
    int lastInRow = 0;
    while (lastInRow + 1 < cells.size() && cells[lastInRow + 1].y() == cells[0].y())
        ++lastInRow;
    QVERIFY(lastInRow >= 5);
    const QRect cell = cells[lastInRow];
    const QPoint pixel = pixels[lastInRow];
    const double trueCentre = v.view->mapFromScene(QPointF(pixel.x() + 0.5, pixel.y())).x();
    const double cellCentre = cell.x() + cell.width() / 2.0;
    QVERIFY2(qAbs(trueCentre - cellCentre) > 2.0, qPrintable(QString::number(trueCentre - cellCentre)));
    const QString firstLine = rgb888TextOf(pixel).section('\n', 0, 0);
    bool found = false;
    for (const TextLine& line : rec->lines) {
        if (line.text == firstLine && QRectF(cell).contains(QPointF(line.centreX(), line.pos.y()))) {
            QVERIFY(qAbs(line.centreX() - cellCentre) <= 1.0);
            found = true;
        }
    }
    QVERIFY(found);
}

void tst_PixelLabels::smallPictureInsideViewportLabelsOnlyItsPixels()
{
    StandaloneView v;
    v.setViewportSize(QSize(800, 600));
    QCOMPARE(v.view->viewport()->size(), QSize(800, 600));
    const QImage picture = rgb888Picture(3, 2);
    v.layer()->SetZoomModel(VOR_ZOOM_ORG);
    showPicture(v.layer(), picture);
    v.view->enablePixelVisible(true);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    const Stepping s(v.view);
    // The picture is centred: the viewport's corner lies left of and above it.
    QVERIFY(s.first.x() < 0);
    QVERIFY(s.first.y() < 0);

    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    QList<QRect> cells;
    for (int row = 0; row < 2; ++row)
        for (int col = 0; col < 3; ++col)
            cells << QRect(s.start + QPoint((col - s.first.x()) * s.cellWidth, (row - s.first.y()) * s.cellHeight),
                           QSize(s.cellWidth, s.cellHeight));
    QCOMPARE(cells, s.cells(picture.size()));
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 6);
    int i = 0;
    for (int row = 0; row < 2; ++row) {
        for (int col = 0; col < 3; ++col, ++i) {
            QCOMPARE(labels[i].text, rgb888TextOf(QPoint(col, row)));
            QCOMPARE(labels[i].cell.topLeft(), v.view->mapFromScene(QPointF(col, row)));
        }
    }
}

void tst_PixelLabels::viewLabelsUseDefaultPenAndFont()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(10, 10));
    v.view->enablePixelVisible(true);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    QVERIFY(rec->lines.size() > 0);
    const QFont font = v.view->viewport()->font();
    for (const TextLine& line : rec->lines) {
        QCOMPARE(line.pen.color(), QPen().color());
        QCOMPARE(line.pen.style(), Qt::SolidLine);
        QCOMPARE(line.font.family(), font.family());
        QCOMPARE(line.font.pointSizeF(), font.pointSizeF());
    }
}

void tst_PixelLabels::clearedPictureInViewGivesOneLabel()
{
    StandaloneView v;
    showPicture(v.layer(), rgb888Picture(10, 10));
    v.view->enablePixelVisible(true);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    v.layer()->ClearVorImage();
    const Stepping s(v.view);
    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    const QList<QRect> cells = s.cells(QSize(1, 1));
    QCOMPARE(cells.size(), 1);
    int strays = -1;
    const QList<Label> labels = labelsIn(rec->lines, cells, &strays);
    QCOMPARE(strays, 0);
    QCOMPARE(labels.size(), 1);
    QVERIFY(labels[0].text.startsWith("r: "));
}

void tst_PixelLabels::emptyPictureInViewGivesNoLabel()
{
    auto* v = new StandaloneView;
    v->view->enablePixelVisible(true);
    QCOMPARE(v->view->Zoom(100.0), 0L);
    QScopedPointer<TextRecorder> rec(renderViewport(v->view));
    QCOMPARE(rec->lines.size(), 0);
    if (!waitsForLock(v->layer()))
        QFAIL("the layer's lock is still held");
    v->layer()->Update(true);
    rec.reset(renderViewport(v->view));
    QVERIFY(rec->lines.size() > 0);
    delete v;
}

void tst_PixelLabels::labelsPaintOnTopOfPicture()
{
    KIT_REQUIRE_FONTS();
    StandaloneView v;
    QImage white(6, 6, QImage::Format_RGB888);
    white.fill(Qt::white);
    showPicture(v.layer(), white);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    const QImage plain = v.view->viewport()->grab().toImage();
    v.view->enablePixelVisible(true);
    const QImage labelled = v.view->viewport()->grab().toImage();
    QCOMPARE(labelled.size(), plain.size());

    const Stepping s(v.view);
    const QList<QRect> cells = s.cells(white.size());
    QVERIFY(!cells.isEmpty());
    int dark = 0;
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            if (plain.pixel(x, y) == labelled.pixel(x, y))
                continue;
            // Text only, inside the cells, over the white picture.
            bool inCell = false;
            for (const QRect& cell : cells)
                inCell = inCell || cell.contains(x, y);
            QVERIFY2(inCell, qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
            QCOMPARE(QColor(plain.pixel(x, y)), QColor(Qt::white));
            if (qGray(labelled.pixel(x, y)) < 64)
                ++dark;
        }
    }
    QVERIFY(dark > 50);
    // Every cell in view holds some text.
    for (const QRect& cell : cells) {
        const QRect visible = cell & labelled.rect();
        if (visible.width() < cell.width() || visible.height() < cell.height())
            continue;
        bool written = false;
        for (int y = visible.top(); y <= visible.bottom() && !written; ++y)
            for (int x = visible.left(); x <= visible.right() && !written; ++x)
                written = labelled.pixel(x, y) != plain.pixel(x, y);
        QVERIFY(written);
    }
}

void tst_PixelLabels::labelsVanishOnBlackPixels()
{
    StandaloneView v;
    cv::Mat mat(6, 6, CV_8UC1, cv::Scalar(0));
    VorImage black(mat);
    QVERIFY(v.layer()->LoadVorImage(&black));
    v.layer()->Update(true);
    QCOMPARE(v.view->Zoom(100.0), 0L);
    const QImage plain = v.view->viewport()->grab().toImage();
    v.view->enablePixelVisible(true);
    QScopedPointer<TextRecorder> rec(renderViewport(v.view));
    QVERIFY(rec->lines.size() > 0);
    QCOMPARE(rec->lines.first().text, QStringLiteral("gray: 0"));
    // Black text on black pixels: nothing to see.
    const QImage labelled = v.view->viewport()->grab().toImage();
    QCOMPARE(labelled, plain);
}

void tst_PixelLabels::windowShowsLabelsFromScaleOneHundred()
{
    KIT_REQUIRE_FONTS();
    EmbeddedWindow w;
    cv::Mat mat(8, 8, CV_8UC1, cv::Scalar(255));
    VorImage white(mat);
    QCOMPARE(w.wnd->setBackground(white), 0L);
    QCOMPARE(w.wnd->enablePixelVisible(true), 0L);
    QCOMPARE(w.wnd->zoom(99.9), 0L);
    QImage before = w.view()->viewport()->grab().toImage();
    QCOMPARE(w.wnd->enablePixelVisible(false), 0L);
    QCOMPARE(w.view()->viewport()->grab().toImage(), before);

    QCOMPARE(w.wnd->enablePixelVisible(true), 0L);
    QCOMPARE(w.wnd->zoom(100.0), 0L);
    const QImage labelled = w.view()->viewport()->grab().toImage();
    QCOMPARE(w.wnd->enablePixelVisible(false), 0L);
    const QImage plain = w.view()->viewport()->grab().toImage();
    QVERIFY(labelled != plain);
    QScopedPointer<TextRecorder> rec(nullptr);
    QCOMPARE(w.wnd->enablePixelVisible(true), 0L);
    rec.reset(renderViewport(w.view()));
    QVERIFY(rec->lines.size() > 0);
    QCOMPARE(rec->lines.first().text, QStringLiteral("gray: 255"));
}

QTEST_MAIN(tst_PixelLabels)
#include "tst_pixellabels.moc"
