// kesview: a small inspection host built on the image window. It shows picture
// files named on the command line, or a generated inspection picture, in a
// KESImageWnd, runs a hole check on each with OpenCV and shows the result: the
// outlines found as live overlays, crosses and diameters painted on the
// picture, a legend fixed on the screen. The operator draws regions of
// interest with the tool bar; --events prints each one read back by id.
//
//   kesview [--events] [--threshold T] [--no-inspection]
//           [--size WxH] [--cross JSON] [--grid JSON] [--float TEXT]
//           [--zoom S] [--draw-rect X1,Y1,X2,Y2] [--draw KIND:X1,Y1,...]...
//           [--text X,Y,WORDS]... [--click X,Y]... [--shapes FILE] [--camera] [--camera-colour]
//           [--screenshot FILE] [PICTURE...]
//
// Keys: PageDown/N and PageUp/P step through the pictures, + and - zoom, F fits
// the picture to the window, 1 shows it at one pixel per pixel, L turns the
// pixel values shown at high zoom off and on, R starts drawing a rectangle, Q
// or Esc quits. The tool bar's load button opens a picture of the host's choice.

#include "camerasimulation.h"
#include "picturefile.h"
#include "shapefile.h"
#include "viewerwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QMainWindow>
#include <QPixmap>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

bool parseSize(const QString& text, QSize* size)
{
    const QRegularExpressionMatch m = QRegularExpression(QStringLiteral("^(\\d+)[xX](\\d+)$")).match(text);
    if (!m.hasMatch())
        return false;
    const int w = m.captured(1).toInt();
    const int h = m.captured(2).toInt();
    if (w < 160 || h < 120 || w > 16384 || h > 16384)
        return false;
    *size = QSize(w, h);
    return true;
}

// "X1,Y1,X2,Y2": two corners in picture pixels.
bool parseCorners(const QString& text, QPointF* from, QPointF* to)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4)
        return false;
    double v[4];
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        v[i] = parts.at(i).trimmed().toDouble(&ok);
        if (!ok)
            return false;
    }
    *from = QPointF(v[0], v[1]);
    *to = QPointF(v[2], v[3]);
    return true;
}

// "X1,Y1,X2,Y2,...": points in picture pixels, at least one.
bool parsePoints(const QString& text, QVector<QPointF>* points)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() < 2 || parts.size() % 2 != 0)
        return false;
    points->clear();
    for (int i = 0; i < parts.size(); i += 2) {
        bool okX = false;
        bool okY = false;
        const double x = parts.at(i).trimmed().toDouble(&okX);
        const double y = parts.at(i + 1).trimmed().toDouble(&okY);
        if (!okX || !okY)
            return false;
        points->append(QPointF(x, y));
    }
    return true;
}

// One --draw: a kind and its points.
struct DrawRequest
{
    QString kind;
    QVector<QPointF> points;
};

// "KIND:X1,Y1,...".
bool parseDraw(const QString& text, DrawRequest* request)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    if (colon <= 0)
        return false;
    request->kind = text.left(colon).trimmed();
    return parsePoints(text.mid(colon + 1), &request->points);
}

// The window takes any text for its reticles and ignores what it cannot use;
// kesview says so instead.
bool isJsonObject(const QString& text, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = parseError.errorString();
        return false;
    }
    if (!document.isObject()) {
        *error = QStringLiteral("not a JSON object");
        return false;
    }
    return true;
}

// How often the camera's frame rate is shown.
constexpr int kFrameRateIntervalMs = 500;
// With --screenshot, how long the camera runs before the window is saved.
constexpr int kCameraShotDelayMs = 2000;

// Shows the camera's frames per second of the last interval in the title and
// the status line of the host's window.
void showFrameRate(QMainWindow* window, const CameraSimulation* camera)
{
    auto* timer = new QTimer(window);
    auto clock = std::make_shared<QElapsedTimer>();
    auto lastFrames = std::make_shared<qint64>(0);
    clock->start();
    QObject::connect(timer, &QTimer::timeout, window, [=] {
        const qint64 frames = camera->frames();
        const double seconds = clock->nsecsElapsed() / 1e9;
        const double fps = seconds > 0.0 ? double(frames - *lastFrames) / seconds : 0.0;
        clock->restart();
        *lastFrames = frames;
        const QString text = QStringLiteral("camera %1: %2 fps, %3 frames; check %4 ms: %5 holes, %6 others")
                                 .arg(camera->description())
                                 .arg(fps, 0, 'f', 1)
                                 .arg(frames)
                                 .arg(camera->inspectionMilliseconds(), 0, 'f', 1)
                                 .arg(camera->holes())
                                 .arg(camera->others());
        window->setWindowTitle(text + QStringLiteral(" - kesview"));
        window->statusBar()->showMessage(text);
    });
    timer->start(kFrameRateIntervalMs);
}

// The camera's legend, fixed at the view's top left: the counts change every
// frame and stand in the status line.
void showCameraLegend(KESImageWnd* window)
{
    const QStringList lines{QStringLiteral("Hole check per frame, on the worker"),
                            QStringLiteral("green: round holes, + centres"),
                            QStringLiteral("red: other dark marks")};
    for (VorOverlay record : legendRecords(lines))
        window->displayOverlay(record, KESImageWnd::LAYER_FORE);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kesview"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Shows pictures in the KESImageWnd image window; with no picture, a generated inspection picture.\n"
        "Keys: PageDown/N, PageUp/P step through the pictures; + and - zoom; F fits; 1 is one to one;\n"
        "L turns the pixel values at high zoom off and on; R starts drawing a rectangle; Q or Esc quits.\n"
        "The tool bar's load button opens a picture; the other options apply before --screenshot grabs."));
    parser.addHelpOption();
    const QCommandLineOption eventsOption(
        QStringLiteral("events"),
        QStringLiteral("Print every signal of the image window to stdout, each shape the operator draws, moves "
                       "or resizes as the window reads it back by id, and the hole check's counts."));
    const QCommandLineOption thresholdOption(
        QStringLiteral("threshold"),
        QStringLiteral("Grey level (1..255) below which the hole check takes a pixel as dark; by default half "
                       "of Otsu's level of the picture."),
        QStringLiteral("T"));
    const QCommandLineOption noInspectionOption(QStringLiteral("no-inspection"),
                                                QStringLiteral("Show the pictures without the hole check."));
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"), QStringLiteral("Save the window to FILE once it has painted, then quit."),
        QStringLiteral("FILE"));
    const QCommandLineOption sizeOption(QStringLiteral("size"),
                                        QStringLiteral("Size of the main window (default 1280x900)."),
                                        QStringLiteral("WxH"), QStringLiteral("1280x900"));
    const QCommandLineOption crossOption(
        QStringLiteral("cross"),
        QStringLiteral("Cross-line reticle as JSON, e.g. "
                       "{\"visible\":true,\"color\":\"0,255,0,255\",\"circleRadius\":30}."),
        QStringLiteral("JSON"));
    const QCommandLineOption gridOption(
        QStringLiteral("grid"),
        QStringLiteral("Grid reticle as JSON, e.g. {\"visible\":true,\"gap\":64,\"color\":\"255,255,0,120\"}."),
        QStringLiteral("JSON"));
    const QCommandLineOption floatOption(
        QStringLiteral("float"),
        QStringLiteral("Show the floating button strip over the picture with TEXT as its tip, "
                       "and the number label."),
        QStringLiteral("TEXT"));
    const QCommandLineOption zoomOption(QStringLiteral("zoom"),
                                        QStringLiteral("Zoom to scale S (1 is one to one) once the picture is shown."),
                                        QStringLiteral("S"));
    const QCommandLineOption drawRectOption(
        QStringLiteral("draw-rect"),
        QStringLiteral("Draw a rectangle with the mouse from corner X1,Y1 to X2,Y2 (picture pixels) once the "
                       "picture is shown, then click it to select it."),
        QStringLiteral("X1,Y1,X2,Y2"));
    const QCommandLineOption drawOption(
        QStringLiteral("draw"),
        QStringLiteral("Draw a shape with the mouse after a click on its tool bar button, once the picture is "
                       "shown (picture pixels; may be given again, drawn in order). KIND is line, rect, rect2, "
                       "ellipse, circle or annulus with two points (a drag; round shapes from the centre), "
                       "point with one, polygon with three or more corners."),
        QStringLiteral("KIND:X1,Y1,..."));
    const QCommandLineOption textOption(
        QStringLiteral("text"),
        QStringLiteral("Place a text with the window's text tool: drawText with the words, then a click at X,Y "
                       "(picture pixels), after the drawing and before the clicks (may be given again)."),
        QStringLiteral("X,Y,WORDS"));
    const QCommandLineOption clickOption(
        QStringLiteral("click"),
        QStringLiteral("Click the picture at X,Y after the drawing, e.g. to select a shape (may be given again)."),
        QStringLiteral("X,Y"));
    const QCommandLineOption shapesOption(
        QStringLiteral("shapes"),
        QStringLiteral("Show the regions of interest and overlays of FILE, one a line (see shapefile.h or the "
                       "README), once the picture is shown; prints the id each one got."),
        QStringLiteral("FILE"));
    const QCommandLineOption cameraOption(
        QStringLiteral("camera"),
        QStringLiteral("Simulate a camera: a worker thread feeds moving 2448 x 2048 grey frames through "
                       "setRunBackground and repaint() as fast as the window shows them; the frame rate "
                       "shows in the title and the status line."));
    const QCommandLineOption cameraColourOption(QStringLiteral("camera-colour"),
                                                QStringLiteral("As --camera, with 8-bit colour frames."));
    parser.addOption(cameraOption);
    parser.addOption(cameraColourOption);
    parser.addOption(eventsOption);
    parser.addOption(thresholdOption);
    parser.addOption(noInspectionOption);
    parser.addOption(shapesOption);
    parser.addOption(drawOption);
    parser.addOption(textOption);
    parser.addOption(clickOption);
    parser.addOption(screenshotOption);
    parser.addOption(sizeOption);
    parser.addOption(crossOption);
    parser.addOption(gridOption);
    parser.addOption(floatOption);
    parser.addOption(zoomOption);
    parser.addOption(drawRectOption);
    parser.addPositionalArgument(QStringLiteral("pictures"), QStringLiteral("PNG, BMP, JPEG or TIFF files."),
                                 QStringLiteral("[PICTURE...]"));
    parser.process(app);

    QSize size;
    if (!parseSize(parser.value(sizeOption), &size)) {
        std::fprintf(stderr, "kesview: --size wants WIDTHxHEIGHT, e.g. 1280x900, not \"%s\"\n",
                     qPrintable(parser.value(sizeOption)));
        return 2;
    }
    for (const QCommandLineOption* option : {&crossOption, &gridOption}) {
        QString error;
        if (parser.isSet(*option) && !isJsonObject(parser.value(*option), &error)) {
            std::fprintf(stderr, "kesview: --%s: %s\n", qPrintable(option->names().first()), qPrintable(error));
            return 2;
        }
    }
    double zoomScale = 0.0;
    if (parser.isSet(zoomOption)) {
        bool ok = false;
        zoomScale = parser.value(zoomOption).toDouble(&ok);
        if (!ok || !(zoomScale > 0.0)) {
            std::fprintf(stderr, "kesview: --zoom wants a scale above 0, e.g. 2 or 0.5, not \"%s\"\n",
                         qPrintable(parser.value(zoomOption)));
            return 2;
        }
    }
    QPointF rectFrom;
    QPointF rectTo;
    const bool drawRect = parser.isSet(drawRectOption);
    if (drawRect && !parseCorners(parser.value(drawRectOption), &rectFrom, &rectTo)) {
        std::fprintf(stderr, "kesview: --draw-rect wants X1,Y1,X2,Y2 in picture pixels, not \"%s\"\n",
                     qPrintable(parser.value(drawRectOption)));
        return 2;
    }
    QVector<DrawRequest> draws;
    for (const QString& text : parser.values(drawOption)) {
        DrawRequest request;
        if (!parseDraw(text, &request)) {
            std::fprintf(stderr, "kesview: --draw wants KIND:X1,Y1,... in picture pixels, not \"%s\"\n",
                         qPrintable(text));
            return 2;
        }
        draws.append(request);
    }
    QVector<QPair<QPointF, QString>> texts;
    for (const QString& text : parser.values(textOption)) {
        const QStringList parts = text.split(QLatin1Char(','));
        QVector<QPointF> point;
        if (parts.size() < 3 || !parsePoints(parts.mid(0, 2).join(QLatin1Char(',')), &point)) {
            std::fprintf(stderr, "kesview: --text wants X,Y,WORDS in picture pixels, not \"%s\"\n",
                         qPrintable(text));
            return 2;
        }
        texts.append({point.first(), parts.mid(2).join(QLatin1Char(','))});
    }
    QVector<QPointF> clicks;
    for (const QString& text : parser.values(clickOption)) {
        QVector<QPointF> point;
        if (!parsePoints(text, &point) || point.size() != 1) {
            std::fprintf(stderr, "kesview: --click wants X,Y in picture pixels, not \"%s\"\n", qPrintable(text));
            return 2;
        }
        clicks.append(point.first());
    }
    InspectionSettings inspection;
    if (parser.isSet(thresholdOption)) {
        bool ok = false;
        inspection.threshold = parser.value(thresholdOption).toInt(&ok);
        if (!ok || inspection.threshold < 1 || inspection.threshold > 255) {
            std::fprintf(stderr, "kesview: --threshold wants a grey level from 1 to 255, not \"%s\"\n",
                         qPrintable(parser.value(thresholdOption)));
            return 2;
        }
    }
    QVector<ShapeFileEntry> shapes;
    if (parser.isSet(shapesOption)) {
        QString error;
        if (!readShapeFile(parser.value(shapesOption), &shapes, &error)) {
            std::fprintf(stderr, "kesview: --shapes %s: %s\n", qPrintable(parser.value(shapesOption)),
                         qPrintable(error));
            return 2;
        }
    }
    const QStringList files = parser.positionalArguments();
    const bool screenshot = parser.isSet(screenshotOption);
    const QString shotFile = parser.value(screenshotOption);

    const bool cameraRuns = parser.isSet(cameraOption) || parser.isSet(cameraColourOption);
    ViewerWindow window(files);
    if (parser.isSet(eventsOption))
        window.reportEvents();
    // With a camera the check runs per frame on its worker instead.
    window.setInspection(!parser.isSet(noInspectionOption) && !cameraRuns, inspection);
    window.resize(size);
    window.show();

    bool readable = window.showPicture(0);

    // The camera goes before the window: its worker may be inside repaint().
    std::unique_ptr<CameraSimulation> camera;
    if (cameraRuns) {
        camera.reset(new CameraSimulation(window.imageWindow(), parser.isSet(cameraColourOption)));
        showCameraLegend(window.imageWindow());
        window.statusBar()->showMessage(QStringLiteral("camera %1").arg(camera->description()));
        showFrameRate(&window, camera.get());
        camera->start();
    }

    KESImageWnd* imageWnd = window.imageWindow();
    if (parser.isSet(crossOption))
        imageWnd->setCrossLineInfo(parser.value(crossOption));
    if (parser.isSet(gridOption))
        imageWnd->setGridLineInfo(parser.value(gridOption));
    if (parser.isSet(floatOption)) {
        imageWnd->SetFloatAreaVisible(true);
        imageWnd->SetIntoBtnVisible(true);
        imageWnd->SetFloatTipText(parser.value(floatOption));
        imageWnd->setNum(QStringLiteral("1"));
        imageWnd->setNumVisible(true);
    }

    // Zoom and drawing wait until the window has laid itself out and shows
    // the picture at its size.
    bool drawn = true;
    auto applyShown = [&] {
        QApplication::processEvents();
        if (zoomScale > 0.0)
            imageWnd->zoom(zoomScale);
        for (ShapeFileEntry& entry : shapes) {
            const long id = entry.isROI ? imageWnd->displayROI(entry.roi, entry.layer)
                                        : imageWnd->displayOverlay(entry.overlay, entry.layer);
            if (id < 0) {
                drawn = false;
                std::fprintf(stderr, "kesview: --shapes line %d: the window refused the shape\n", entry.line);
            } else {
                std::printf("shapes line %d: id %ld\n", entry.line, id);
                std::fflush(stdout);
            }
        }
        if (drawRect && readable) {
            QApplication::processEvents();
            QString error;
            drawn = window.drawRectangle(rectFrom, rectTo, &error);
            if (!drawn)
                std::fprintf(stderr, "kesview: --draw-rect: %s\n", qPrintable(error));
        }
        for (const DrawRequest& request : draws) {
            if (!readable)
                break;
            QString error;
            if (!window.drawShape(request.kind, request.points, &error)) {
                drawn = false;
                std::fprintf(stderr, "kesview: --draw %s: %s\n", qPrintable(request.kind), qPrintable(error));
            }
        }
        for (auto& text : texts) {
            QString error;
            imageWnd->drawText(text.second);
            if (readable && !window.clickPicture(text.first, &error)) {
                drawn = false;
                std::fprintf(stderr, "kesview: --text: %s\n", qPrintable(error));
            }
        }
        for (const QPointF& point : clicks) {
            QString error;
            if (readable && !window.clickPicture(point, &error)) {
                drawn = false;
                std::fprintf(stderr, "kesview: --click: %s\n", qPrintable(error));
            }
        }
    };
    if (screenshot) {
        // In a batch run every named file must be readable, not only the one shown.
        for (int i = 1; i < files.size(); ++i) {
            const PictureFile file = readPictureFile(files.at(i));
            if (file.mat.empty()) {
                std::fprintf(stderr, "kesview: %s: %s\n", qPrintable(files.at(i)), qPrintable(file.error));
                readable = false;
            }
        }
        if (!readable)
            return 1;
        int exitCode = 0;
        QTimer::singleShot(100, &window, [&] {
            applyShown();
            QTimer::singleShot(camera ? kCameraShotDelayMs : 300, &window, [&] {
                // The camera ends its frame first, so that the picture shows
                // a frame with its marks.
                if (camera)
                    camera->stop();
                QApplication::processEvents();
                const QPixmap pixels = window.grab();
                if (!pixels.save(shotFile)) {
                    std::fprintf(stderr, "kesview: cannot write %s\n", qPrintable(shotFile));
                    exitCode = 1;
                }
                if (!drawn)
                    exitCode = 1;
                QApplication::exit(exitCode);
            });
        });
        app.exec();
        if (camera)
            camera->stop();
        return exitCode;
    }
    QTimer::singleShot(100, &window, applyShown);
    const int exitCode = app.exec();
    if (camera)
        camera->stop();
    return exitCode;
}
