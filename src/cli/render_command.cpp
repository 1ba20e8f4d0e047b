#include "render_command.h"

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QSlider>
#include <QTabWidget>
#include <filesystem>
#include <iostream>

#include "cli_usage.h"
#include "document/document_file.h"
#include "render_options.h"
#include "render_sheet.h"
#include "stderr_messenger.h"
#include "views/mdi_child.h"
#include "views/view_export.h"

namespace sonalyx {

namespace {

// The command line never asks where to save.
class NoChooser : public FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return std::nullopt; }
};

int Fail(const std::string& message) {
    std::cerr << message << '\n';
    return 1;
}

// Applies the options in the order a user would set them.
int ApplyView(TMDIChild& window, const RenderOptions& o) {
    window.PageControl()->setCurrentIndex(o.tab);
    if (o.pair) {
        window.SetPairMode(1);
    }
    if (o.freq) {
        window.FreqClick();
    }
    if (o.after) {
        window.OnClickEQAfter();
    }
    if (o.graph2D) {
        window.SetGraph3D(false);
    }
    if (o.channel) {
        QComboBox* combo = window.Panel1()->ComboChannel();
        if (*o.channel >= combo->count()) {
            return Fail("No entry " + std::to_string(*o.channel) + " in the channel list (0 to " +
                        std::to_string(combo->count() - 1) + ").");
        }
        combo->setCurrentIndex(*o.channel);
    }
    const std::pair<Track, std::optional<int>> sliders[] = {{Track::Elevation, o.elevation},
                                                            {Track::Rotation, o.rotation},
                                                            {Track::Zoom, o.zoom},
                                                            {Track::Move, o.move},
                                                            {Track::TimeSlice, o.slice}};
    for (const auto& [track, position] : sliders) {
        if (position) {
            window.Panel1()->TrackBar(track)->setValue(*position);
        }
    }
    if (o.bar) {
        window.OnClickTimeSlice();
    }
    return 0;
}

bool TabHasNoData(const TMDIChild& window) {
    const QWidget* page = window.PageControl()->currentWidget();
    for (const auto* label : page->findChildren<QLabel*>(QStringLiteral("LabelNoData"))) {
        if (label->isVisibleTo(page)) {
            return true;
        }
    }
    return false;
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
        return renderParameterSheet(options.input, options.output, memory,
                                    options.page.value_or(0), options.pages.value_or(0));
    }
    StderrMessenger messenger;
    std::error_code ec;
    if (!std::filesystem::exists(options.input, ec)) {
        messenger.show("The file is not exist.", options.input, MessageMode::Ok);
        return 1;
    }
    const auto lines = readDocumentLines(options.input);
    if (!lines) {
        messenger.show("Can't read the file. Please close, if it's opened.", options.input,
                       MessageMode::Ok);
        return 1;
    }
    NoChooser chooser;
    const QString path = QFileInfo(QString::fromStdString(options.input)).absoluteFilePath();
    TMDIChild window(path, messenger, chooser);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.resize(options.width, options.height);
    window.show();
    if (!window.LoadDocument(*lines, path)) {
        return 1;
    }
    QApplication::processEvents();
    if (const int status = ApplyView(window, options); status != 0) {
        return status;
    }
    QApplication::processEvents();
    if (TabHasNoData(window)) {
        return Fail("No data.");
    }
    return kTabWriters[options.tab](window, options, QString::fromStdString(options.output));
}

}  // namespace sonalyx
