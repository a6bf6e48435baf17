// Fuzzes the grid-line reticle's JSON text: any bytes, read as UTF-8, go to
// setGridLineInfo, the view is painted, and the text is read back. Neither
// may crash, hang, leak or reach undefined behaviour, whatever the gap and the
// line width. The text read back is a JSON object, and it goes round: set
// again, it reads back the same.

#include "fuzzview.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 1 << 16)
        return 0;
    KesFuzz::Harness& harness = KesFuzz::Harness::instance();
    ImageCtrlView* view = harness.view();
    harness.resetGrid();

    view->setGridLineInfo(KesFuzz::textOf(data, size));
    const QImage painted = harness.paint();
    if (painted.size() != harness.viewportSize)
        abort();

    QString info;
    view->getGridLineInfo(info);
    KesFuzz::Harness::parseReported(info);
    view->setGridLineInfo(info);
    QString again;
    view->getGridLineInfo(again);
    if (again != info) {
        fprintf(stderr, "grid text does not go round: %s -> %s\n", qPrintable(info), qPrintable(again));
        abort();
    }
    return 0;
}
