#include "print/report_command.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QObject>
#include <QProgressDialog>
#include <QSettings>

#include "document/messenger.h"
#include "print/report_writer.h"
#include "views/window/mdi_child.h"

namespace sonalyx {

namespace {

constexpr const char* kFolderKey = "Report/folder";

QString DocumentName(const TMDIChild& window) {
    return window.IsNewData() ? window.windowTitle() : QFileInfo(window.FileName()).fileName();
}

}  // namespace

ReportCommand::ReportCommand(QWidget* parent, Messenger& messenger)
    : parent_(parent), messenger_(messenger) {}

QString ReportCommand::DefaultName(const TMDIChild& window) {
    const QString base =
        window.IsNewData() ? QStringLiteral("New Data") : QFileInfo(window.FileName()).baseName();
    return base + QStringLiteral("-report.pdf");
}

QString ReportCommand::ChoosePath(const TMDIChild& window, QSettings& settings) {
    QString folder = settings.value(QLatin1String(kFolderKey)).toString();
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        folder =
            window.IsNewData() ? QDir::homePath() : QFileInfo(window.FileName()).absolutePath();
    }
    QFileDialog dialog(parent_.data(), QObject::tr("Report"), folder);
    dialog.setObjectName(QStringLiteral("ReportDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters({QObject::tr("PDF document (*.pdf)")});
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(DefaultName(window));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    const QString path = QFileInfo(dialog.selectedFiles().constFirst()).absoluteFilePath();
    settings.setValue(QLatin1String(kFolderKey), QFileInfo(path).absolutePath());
    return path;
}

bool ReportCommand::Write(TMDIChild& window, const QString& path) {
    window.StoreMemos();
    ReportWriter writer(window.Document(), DocumentName(window));
    if (const MeasurementDocument* reference = window.Reference()) {
        writer.SetReference(*reference, window.ReferenceTitle());
    }
    QProgressDialog progress(QObject::tr("Writing the report..."), QObject::tr("Cancel"), 0, 1,
                             parent_.data());
    progress.setObjectName(QStringLiteral("ReportProgress"));
    progress.setWindowTitle(QObject::tr("Report"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    progress.setValue(0);
    QString error;
    const bool written = writer.Write(path, error, [&progress](int done, int total) {
        progress.setMaximum(total);
        progress.setValue(done);
        QApplication::processEvents();
        return !progress.wasCanceled();
    });
    progress.reset();
    if (!written && !error.isEmpty()) {
        messenger_.show("Can't write the file. Please close, if it's opened.", error.toStdString(),
                        MessageMode::OkFitted);
    }
    return written;
}

bool ReportCommand::Run(TMDIChild& window, QSettings& settings) {
    const QString path = ChoosePath(window, settings);
    return !path.isEmpty() && Write(window, path);
}

}  // namespace sonalyx
