#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstdio>

namespace sonalyx::bench {

// The window benchmarks' main: a QApplication on the offscreen platform unless another is asked
// for, quiet about what that platform says at every shown window (it ignores size hints).
inline int RunOffscreenBenchmarks(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        if (!text.contains(QLatin1String("propagateSizeHints"))) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace sonalyx::bench
