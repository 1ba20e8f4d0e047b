#include "app/export_command.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTabWidget>
#include <algorithm>

#include "document/messenger.h"
#include "sheets/sheet_painter.h"
#include "views/parameters/parameters_view.h"
#include "views/parameters/sheet_export.h"
#include "views/window/mdi_child.h"
#include "views/window/view_export.h"

namespace {

const char* const kFolderKey = "Export/Folder";
const char* const kFilterKey = "Export/Filter";
const char* const kTabNames[] = {"reverb", "groupdelay", "parameters"};

// The suffix a filter writes: "PNG image (*.png)" -> "png".
QString FilterSuffix(const QString& filter) {
    static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
    return pattern.match(filter).captured(1);
}

// The cursor says "busy" while a big sheet or a window of charts is drawn, on every way out.
class BusyCursor {
  public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace

ExportCommand::ExportCommand(QWidget* parent, sonalyx::Messenger& messenger)
    : parent_(parent), messenger_(messenger) {}

QStringList ExportCommand::Filters(int tab) {
    QStringList filters = {QObject::tr("PNG image (*.png)"), QObject::tr("SVG drawing (*.svg)"),
                           QObject::tr("PDF document (*.pdf)")};
    filters.append(tab == TMDIChild::kParametersTab ? QObject::tr("Sheet text (*.txt)")
                                                    : QObject::tr("Chart data (*.json)"));
    return filters;
}

QString ExportCommand::DefaultName(const TMDIChild& window, const QString& suffix) {
    const QString file = window.FileName();
    const QString base = window.IsNewData() || file.isEmpty() ? QStringLiteral("New Data")
                                                              : QFileInfo(file).completeBaseName();
    const int tab = std::clamp(window.PageControl()->currentIndex(), 0, 2);
    return QStringLiteral("%1-%2.%3").arg(base, QLatin1String(kTabNames[tab]), suffix);
}

bool ExportCommand::TabIsEmpty(const TMDIChild& window) const {
    if (sonalyx::ViewExport::TabHasNoData(window)) {
        return true;
    }
    return window.PageControl()->currentIndex() == TMDIChild::kParametersTab &&
           window.Parameters()->Sheet().ops.empty();
}

QString ExportCommand::ChoosePath(const TMDIChild& window, QSettings& settings) {
    const QStringList filters = Filters(window.PageControl()->currentIndex());
    QString filter = settings.value(QLatin1String(kFilterKey)).toString();
    if (!filters.contains(filter)) {
        filter = filters.constFirst();
    }
    // The last export folder, else the document's own folder.
    QString folder = settings.value(QLatin1String(kFolderKey)).toString();
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        folder =
            window.IsNewData() ? QDir::homePath() : QFileInfo(window.FileName()).absolutePath();
    }
    QFileDialog dialog(parent_.data(), QObject::tr("Export"), folder);
    dialog.setObjectName(QStringLiteral("ExportDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filter);
    dialog.setDefaultSuffix(FilterSuffix(filter));
    // A name typed without a suffix gets the chosen format's, before the overwrite question.
    QObject::connect(
        &dialog, &QFileDialog::filterSelected, &dialog,
        [&dialog](const QString& chosen) { dialog.setDefaultSuffix(FilterSuffix(chosen)); });
    dialog.selectFile(DefaultName(window, FilterSuffix(filter)));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    QString path = QFileInfo(dialog.selectedFiles().constFirst()).absoluteFilePath();
    // A suffix this tab can't write ("notes.v2") keeps the name and gains the chosen filter's;
    // the dialog asked about overwriting the other name, so ask about this one.
    auto written = std::find_if(filters.begin(), filters.end(), [&path](const QString& each) {
        return FilterSuffix(each) == QFileInfo(path).suffix().toLower();
    });
    if (written == filters.end()) {
        path += QLatin1Char('.') + FilterSuffix(dialog.selectedNameFilter());
        if (QFileInfo::exists(path) &&
            messenger_.show("Overwrite , OK ?", "", sonalyx::MessageMode::YesNoCancel) !=
                sonalyx::Answer::Yes) {
            return {};
        }
        written = std::find(filters.begin(), filters.end(), dialog.selectedNameFilter());
    }
    settings.setValue(QLatin1String(kFolderKey), QFileInfo(path).absolutePath());
    // The format the file was written in is offered first next time.
    if (written != filters.end()) {
        settings.setValue(QLatin1String(kFilterKey), *written);
    }
    return path;
}

bool ExportCommand::Write(const TMDIChild& window, const QString& path) {
    QString error;
    bool written = false;
    {
        const BusyCursor busy;
        if (window.PageControl()->currentIndex() == TMDIChild::kParametersTab) {
            const ParametersView* view = window.Parameters();
            written =
                sonalyx::SheetExport(view->Sheet(), view->Fonts(), sonalyx::SheetColours::screen())
                    .Save(path, error);
        } else {
            written = sonalyx::ViewExport(window).Save(path, error);
        }
    }
    if (!written) {
        messenger_.show("Can't write the file. Please close, if it's opened.", error.toStdString(),
                        sonalyx::MessageMode::OkFitted);
    }
    return written;
}

bool ExportCommand::Run(const TMDIChild& window, QSettings& settings) {
    if (TabIsEmpty(window)) {
        messenger_.show("No data.", "", sonalyx::MessageMode::Ok);
        return false;
    }
    const QString path = ChoosePath(window, settings);
    return !path.isEmpty() && Write(window, path);
}
