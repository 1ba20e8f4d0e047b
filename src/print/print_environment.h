#pragma once

#include <QSize>

class QDialog;
class QWidget;

namespace sonalyx {

// What printing asks of the system: whether it has a default printer, how big the screen is, and a
// modal run of a dialog. Tests replace it to stand in for a printer and a screen they don't
// have and to answer the dialogs.
class PrintEnvironment {
  public:
    virtual ~PrintEnvironment() = default;
    virtual bool HasPrinter() const;
    // The screen the window stands on (the primary screen when it has none yet).
    virtual QSize ScreenSize(const QWidget* window) const;
    // Runs the dialog modally; returns its result.
    virtual int RunModal(QDialog& dialog);
};

}  // namespace sonalyx
