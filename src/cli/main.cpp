// sonalyx-cli: the document and receive engine without windows, for scripts and tests.
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli_usage.h"
#include "convert_command.h"
#include "pdf_print_command.h"
#include "pdf_report_command.h"
#include "receive_command.h"
#include "render_command.h"
#include "sonalyx_version.h"

int main(int argc, char** argv) {
    using namespace sonalyx;
    if (argc < 2)
        return usageError("");
    const std::string command = argv[1];
    const std::vector<std::string> args(argv + 2, argv + argc);
    if (command == "convert")
        return runConvertCommand(args);
    if (command == "receive")
        return runReceiveCommand(args);
    if (command == "render" || command == "print" || command == "report") {
        // The document window is built without a screen unless the caller chose a platform.
        if (std::getenv("QT_QPA_PLATFORM") == nullptr)
            setenv("QT_QPA_PLATFORM", "offscreen", 1);
        // Qt's own chatter about the offscreen platform is no message of this program.
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (type == QtCriticalMsg || type == QtFatalMsg)
                std::fprintf(stderr, "%s\n", qPrintable(text));
        });
        int qtArgc = 1;
        QApplication app(qtArgc, argv);
        if (command == "report")
            return runReportCommand(args);
        return command == "render" ? runRenderCommand(args) : runPrintCommand(args);
    }
    if (command == "--help" || command == "-h" || command == "help") {
        std::fputs(cliUsage(), stdout);
        return 0;
    }
    if (command == "--version") {
        std::printf("sonalyx-cli %s\n", SONALYX_VERSION);
        return 0;
    }
    return usageError("unknown command: " + command);
}
