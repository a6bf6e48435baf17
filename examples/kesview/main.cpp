// kesview: a small host for the image window. It shows picture files named on
// the command line, or a generated inspection picture, in a KESImageWnd.
//
//   kesview [--events] [--size WxH] [--screenshot FILE] [PICTURE...]
//
// Keys: PageDown/N and PageUp/P step through the pictures, + and - zoom, F fits
// the picture to the window, 1 shows it at one pixel per pixel, L turns the
// pixel values shown at high zoom off and on, Q or Esc quits.

#include "picturefile.h"
#include "viewerwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPixmap>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>

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

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kesview"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Shows pictures in the KESImageWnd image window; with no picture, a generated inspection picture.\n"
        "Keys: PageDown/N, PageUp/P step through the pictures; + and - zoom; F fits; 1 is one to one;\n"
        "L turns the pixel values at high zoom off and on; Q or Esc quits."));
    parser.addHelpOption();
    const QCommandLineOption eventsOption(QStringLiteral("events"),
                                          QStringLiteral("Print every signal of the image window to stdout."));
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"), QStringLiteral("Save the window to FILE once it has painted, then quit."),
        QStringLiteral("FILE"));
    const QCommandLineOption sizeOption(QStringLiteral("size"),
                                        QStringLiteral("Size of the main window (default 1280x900)."),
                                        QStringLiteral("WxH"), QStringLiteral("1280x900"));
    parser.addOption(eventsOption);
    parser.addOption(screenshotOption);
    parser.addOption(sizeOption);
    parser.addPositionalArgument(QStringLiteral("pictures"), QStringLiteral("PNG, BMP, JPEG or TIFF files."),
                                 QStringLiteral("[PICTURE...]"));
    parser.process(app);

    QSize size;
    if (!parseSize(parser.value(sizeOption), &size)) {
        std::fprintf(stderr, "kesview: --size wants WIDTHxHEIGHT, e.g. 1280x900, not \"%s\"\n",
                     qPrintable(parser.value(sizeOption)));
        return 2;
    }
    const QStringList files = parser.positionalArguments();
    const bool screenshot = parser.isSet(screenshotOption);
    const QString shotFile = parser.value(screenshotOption);

    ViewerWindow window(files);
    if (parser.isSet(eventsOption))
        window.reportEvents();
    window.resize(size);
    window.show();

    bool readable = window.showPicture(0);
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
        QTimer::singleShot(300, &window, [&] {
            QApplication::processEvents();
            const QPixmap pixels = window.grab();
            if (!pixels.save(shotFile)) {
                std::fprintf(stderr, "kesview: cannot write %s\n", qPrintable(shotFile));
                exitCode = 1;
            }
            QApplication::exit(exitCode);
        });
        app.exec();
        return exitCode;
    }
    return app.exec();
}
