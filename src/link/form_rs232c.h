#pragma once

#include <QDialog>
#include <QTimer>
#include <string>

#include "link/serial_port_link.h"
#include "retrieval/receive_observer.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace sonalyx {

// The "Receiving" window. It exists for one receive run and owns that run's serial session
// (link()); in monitor mode the session's trace collects in the invisible Memo1. It shows how
// far the run is, what is being fetched and the time left, and lets the user stop the run:
// the Cancel button, Esc and closing the window all ask for it through CancelRequested().
class TFormRS232C : public QDialog {
    Q_OBJECT

  public:
    explicit TFormRS232C(Messenger& messenger, QWidget* parent = nullptr);

    // Opens the session's port; Memo1 gets its vertical scroll bar whatever the result.
    bool OpenPort(const std::string& portName, bool monitor);
    void LogLine(const std::string& text);
    // Commands answered out of the run's total; a busy bar while the total is unknown.
    void ShowProgress(const ReceiveProgress& progress);
    SerialPortLink& link() { return link_; }
    bool timedOut() const { return timedOut_; }

    // "About 25 s left", "About 1 min 5 s left".
    static QString TimeLeftText(long long remainingMs);

  signals:
    void CancelRequested();

  public slots:
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void buildLayout();
    void centreOnScreen();
    void Timer1Timer();
    void ButtonCancelClick();
    void appendToMemo(const std::string& text);

    QLabel* Label1;
    QLabel* LabelKind;
    QProgressBar* ProgressBar1;
    QLabel* LabelTimeLeft;
    QPushButton* ButtonCancel;
    QPlainTextEdit* Memo1;
    QTimer* Timer1;
    SerialPortLink link_;
    bool timedOut_ = false;
};

}  // namespace sonalyx
