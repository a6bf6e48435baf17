// Fuzzes the cross-line reticle's JSON text: any bytes, read as UTF-8, go to
// setCrossLineInfo, the view is painted, and the text is read back. Neither
// may crash, hang, leak or reach undefined behaviour. The text read back is a
// JSON object, and the held point stays where the reticle may be: inside the
// viewport in the viewport mode, and after a paint inside the picture's
// on-screen rectangle in the picture mode.

#include "fuzzview.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 1 << 16)
        return 0;
    KesFuzz::Harness& harness = KesFuzz::Harness::instance();
    ImageCtrlView* view = harness.view();
    harness.resetCross();

    view->setCrossLineInfo(KesFuzz::textOf(data, size));
    const QImage painted = harness.paint();
    if (painted.size() != harness.viewportSize)
        abort();

    QString info;
    view->getCrossLineInfo(info);
    const QJsonObject object = KesFuzz::Harness::parseReported(info);
    const bool pictureMode = object.value("mode").toBool();
    const bool visible = object.value("visible").toBool();
    if (!pictureMode && !view->viewport()->rect().contains(view->crossPoint()))
        abort();
    if (pictureMode && visible) {
        const QRect onScreen = view->mapFromScene(view->scene()->sceneRect()).boundingRect();
        if (!onScreen.contains(view->crossPoint()))
            abort();
    }
    return 0;
}
