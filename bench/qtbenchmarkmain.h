#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>

// The main of a benchmark that shows widgets: a QApplication on the offscreen
// platform unless QT_QPA_PLATFORM names another, then Google Benchmark with
// the command line; then, if given, a summary of the run while the
// application still lives.
inline int runWidgetBenchmarks(int argc, char** argv, void (*summary)() = nullptr)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    if (summary)
        summary();
    benchmark::Shutdown();
    return 0;
}
