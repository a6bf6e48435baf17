#pragma once

// What both reticle fuzz targets share: one application on the offscreen
// platform and one image view with a picture, made on the first input and kept
// for the whole run, and the paint of the view that follows each input.
//
// The view's viewport is 200 by 150 pixels; the picture, 64 by 48 pixels at
// scale 2, lies in its middle, so that the picture mode of the cross-line
// reticle has a rectangle to keep to and both modes paint.

#include "ImageLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include <QApplication>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace KesFuzz {

// Qt's warnings about odd values (an invalid colour, a negative pen width) are
// expected for such input; they would only slow the run down.
inline void quietMessages(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg) {
        fprintf(stderr, "Qt fatal: %s\n", qPrintable(message));
        abort();
    }
}

class Harness
{
public:
    static Harness& instance()
    {
        // Made once and never freed: the application and the widgets live as
        // long as the fuzzing process.
        static Harness* harness = new Harness;
        return *harness;
    }

    ImageCtrlView* view() const { return m_view; }
    const QSize viewportSize{200, 150};

    // The view as it is painted now.
    QImage paint() const { return m_view->viewport()->grab().toImage(); }

    // Back to the settings of a new view, so that every input starts alike.
    void resetCross()
    {
        m_view->setCrossLineInfo("{\"color\":\"255,0,0,255\",\"emphasisColor\":\"\"}");
        m_view->setCrossLineInfo("{\"visible\":false,\"mode\":0,\"color\":\"255,0,0,128\",\"point\":\"100,75\","
                                 "\"lineWidth\":1,\"circleRadius\":10,\"emphasisLength\":20}");
    }

    void resetGrid()
    {
        m_view->setGridLineInfo("{\"visible\":false,\"color\":\"255,0,0,255\",\"lineWidth\":1,\"gap\":10}");
    }

    // A text the view reports must always be one JSON object.
    static QJsonObject parseReported(const QString& text)
    {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
        if (error.error != QJsonParseError::NoError || !document.isObject()) {
            fprintf(stderr, "reported text is no JSON object: %s\n", qPrintable(text));
            abort();
        }
        return document.object();
    }

private:
    Harness()
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(quietMessages);
        static int argc = 1;
        static char name[] = "kes-fuzz";
        static char* argv[] = {name, nullptr};
        m_app = new QApplication(argc, argv);

        m_host = new QWidget;
        m_view = new ImageCtrlView(m_host);
        m_view->CreateScene();
        m_host->resize(400, 300);
        m_view->setGeometry(0, 0, 300, 200);
        m_host->show();
        QApplication::processEvents();
        // Size the view so that the viewport has exactly the wanted size.
        const QSize extra = m_view->size() - m_view->viewport()->size();
        m_view->resize(viewportSize + extra);
        QApplication::processEvents();

        QImage picture(64, 48, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, qRgb(x * 4, y * 5, 128));
        m_view->DisplayImage(picture);
        m_view->Zoom(2.0);
        QApplication::processEvents();
    }

    QApplication* m_app = nullptr;
    QWidget* m_host = nullptr;
    ImageCtrlView* m_view = nullptr;
};

inline QString textOf(const uint8_t* data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
}

} // namespace KesFuzz
