#pragma once

#include <QDir>
#include <QImage>
#include <QString>

class QPrinter;

namespace sonalyx {

// What the print path saw, written for a support case: the printer's metrics to
// "dbg_devicecap.txt" and each page as it went to paper ("image-…", "info-…"). Off unless
// SONALYX_PRINT_DIAGNOSTICS names a folder; a user never finds stray files by default.
class PrintDiagnostics {
  public:
    static constexpr const char* kVariable = "SONALYX_PRINT_DIAGNOSTICS";

    PrintDiagnostics();
    bool Enabled() const { return enabled_; }

    // Appends the printer's metrics under a time-stamped header naming what is printed.
    void WriteDeviceCaps(const QPrinter& printer, const QString& what) const;
    // Saves page `number` (1-based) and a line about where it went on the paper.
    void SavePage(const QImage& page, int number, const QString& info) const;

  private:
    bool enabled_ = false;
    QDir folder_;
};

}  // namespace sonalyx
