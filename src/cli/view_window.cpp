#include "view_window.h"

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QSlider>
#include <QTabWidget>
#include <filesystem>
#include <iostream>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "views/window/mdi_child.h"

namespace sonalyx {

namespace {

// The command line never asks where to save.
class NoChooser : public FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return std::nullopt; }
};

NoChooser& noChooser() {
    static NoChooser chooser;
    return chooser;
}

// The lines of a document file; nullopt when the user has been told why not.
std::optional<std::vector<std::string>> ReadLines(const std::string& path, Messenger& messenger) {
    std::error_code ec;
    if (!std::filesystem::exists(path, ec)) {
        messenger.show("The file is not exist.", path, MessageMode::Ok);
        return std::nullopt;
    }
    auto lines = readDocumentLines(path);
    if (!lines) {
        messenger.show("Can't read the file. Please close, if it's opened.", path, MessageMode::Ok);
    }
    return lines;
}

// Compare With and the difference toggles, as the Display menu sets them.
bool ApplyComparison(TMDIChild& window, const RenderOptions& o, Messenger& messenger) {
    if (!o.compare.empty()) {
        const auto lines = ReadLines(o.compare, messenger);
        auto reference = std::make_shared<MeasurementDocument>();
        if (!lines || !DocumentLoader::load(*reference, *lines, o.compare, &messenger)) {
            return false;
        }
        window.SetReference(std::move(reference),
                            QFileInfo(QString::fromStdString(o.compare)).fileName());
    }
    if (o.difference) {
        window.SetDifferenceMode(TMDIChild::DifferenceMode::FromReference);
    } else if (o.afterMinusBefore) {
        window.SetDifferenceMode(TMDIChild::DifferenceMode::AfterMinusBefore);
    }
    return true;
}

// Applies the options in the order a user would set them.
bool ApplyView(TMDIChild& window, const RenderOptions& o) {
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
            std::cerr << "No entry " << *o.channel << " in the channel list (0 to "
                      << combo->count() - 1 << ").\n";
            return false;
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
    if (o.fit) {
        window.FitToData();
    }
    return true;
}

}  // namespace

std::unique_ptr<TMDIChild> openViewWindow(const RenderOptions& options, Messenger& messenger,
                                          int& status) {
    status = 1;
    const auto lines = ReadLines(options.input, messenger);
    if (!lines) {
        return nullptr;
    }
    const QString path = QFileInfo(QString::fromStdString(options.input)).absoluteFilePath();
    auto window = std::make_unique<TMDIChild>(path, messenger, noChooser());
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->resize(options.width, options.height);
    window->show();
    if (!window->LoadDocument(*lines, path)) {
        return nullptr;
    }
    QApplication::processEvents();
    if (!ApplyComparison(*window, options, messenger) || !ApplyView(*window, options)) {
        return nullptr;
    }
    QApplication::processEvents();
    status = 0;
    return window;
}

}  // namespace sonalyx
