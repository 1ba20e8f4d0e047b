#include "render_command.h"

#include <QFileInfo>
#include <iostream>

#include "cli_usage.h"
#include "render_options.h"
#include "render_sheet.h"
#include "stderr_messenger.h"
#include "view_window.h"
#include "views/window/mdi_child.h"
#include "views/window/view_export.h"

namespace sonalyx {

namespace {

int Fail(const std::string& message) {
    std::cerr << message << '\n';
    return 1;
}

int Save(const TMDIChild& window, const QString& output) {
    QString error;
    if (!ViewExport(window).Save(output, error)) {
        return Fail(error.toStdString());
    }
    return 0;
}

// One writer per tab: adding a tab is adding a function here.
int WriteReverbTab(const TMDIChild& window, const RenderOptions&, const QString& output) {
    return Save(window, output);
}

int WriteGroupDelayTab(const TMDIChild& window, const RenderOptions&, const QString& output) {
    return Save(window, output);
}

using TabWriter = int (*)(const TMDIChild&, const RenderOptions&, const QString&);
constexpr TabWriter kTabWriters[] = {WriteReverbTab, WriteGroupDelayTab};

std::string SuffixProblem(const RenderOptions& o) {
    const QString suffix = QFileInfo(QString::fromStdString(o.output)).suffix().toLower();
    if (suffix == QLatin1String("txt")) {
        return o.tab == 2 ? std::string() : ".txt is the parameters tab's sheet text";
    }
    if (suffix == QLatin1String("json") && o.tab == 2) {
        return ".json is the chart data of a graph tab";
    }
    if (!ViewExport::IsKnownSuffix(suffix)) {
        return "OUT must end in .png, .svg, .pdf, .json or .txt";
    }
    return {};
}

}  // namespace

int runRenderCommand(const std::vector<std::string>& args) {
    RenderOptions options;
    std::string problem;
    if (!RenderOptions::Parse(args, options, problem)) {
        return usageError(problem);
    }
    problem = SuffixProblem(options);
    if (!problem.empty()) {
        return usageError(problem);
    }
    if (options.tab == 2) {
        // The sheet is drawn from the document alone, at the sheet's own size; on this tab
        // --channel picks the memory as the tab's selector does.
        const int memory = options.memory.value_or(options.channel.value_or(0));
        if (memory > 6) {
            return Fail("No entry " + std::to_string(memory) + " in the memory list (0 to 6).");
        }
        return renderParameterSheet(options.input, options.output, memory, options.page.value_or(0),
                                    options.pages.value_or(0));
    }
    StderrMessenger messenger;
    int status = 0;
    const auto window = openViewWindow(options, messenger, status);
    if (!window) {
        return status;
    }
    // A graph tab without data is written as it shows: the "No Data" label.
    return kTabWriters[options.tab](*window, options, QString::fromStdString(options.output));
}

}  // namespace sonalyx
