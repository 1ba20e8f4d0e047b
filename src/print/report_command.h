#pragma once

#include <QPointer>
#include <QString>

class QSettings;
class QWidget;
class TMDIChild;

namespace sonalyx {

class Messenger;

// File > Report...: the active document (and the reference it is compared with, if any) as
// one PDF file the user picks, written by the report writer behind a progress bar that can
// stop it.
class ReportCommand {
  public:
    ReportCommand(QWidget* parent, Messenger& messenger);

    // Asks for the file and writes the report. False when nothing was written: the user
    // cancelled or stopped it, or the write failed (the user has been told).
    bool Run(TMDIChild& window, QSettings& settings);
    bool Write(TMDIChild& window, const QString& path);

    // "hall-report.pdf" for hall.csv.
    static QString DefaultName(const TMDIChild& window);

  private:
    QString ChoosePath(const TMDIChild& window, QSettings& settings);

    QPointer<QWidget> parent_;
    Messenger& messenger_;
};

}  // namespace sonalyx
