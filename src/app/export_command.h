#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>

class QSettings;
class QWidget;
class TMDIChild;

namespace sonalyx {
class Messenger;
}  // namespace sonalyx

// File > Export: the active document window's current tab written to a file the user picks,
// through the same writers as the command line's render (pictures, vectors, chart data on the
// graph tabs, the sheet text on the Parameters tab).
class ExportCommand {
  public:
    ExportCommand(QWidget* parent, sonalyx::Messenger& messenger);

    // Asks for a file and writes the tab to it. False when nothing was written: the tab has no
    // data, the user cancelled, or the write failed (the user has been told, and no partial
    // file is left).
    bool Run(const TMDIChild& window, QSettings& settings);
    // Writes the current tab to path in the format of its suffix; false (the user told) on
    // failure.
    bool Write(const TMDIChild& window, const QString& path);

    // The dialog's filters for a tab, the picture formats first.
    static QStringList Filters(int tab);
    // The file name offered: the document's name and the tab, e.g. "hall-reverb.png".
    static QString DefaultName(const TMDIChild& window, const QString& suffix);

  private:
    bool TabIsEmpty(const TMDIChild& window) const;
    QString ChoosePath(const TMDIChild& window, QSettings& settings);

    QPointer<QWidget> parent_;
    sonalyx::Messenger& messenger_;
};
