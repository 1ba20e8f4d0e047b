#pragma once

#include <QDialog>
#include <QTimer>
#include <string>

#include "link/serial_port_link.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;

namespace sonalyx {

// The "Receiving" window. It exists for one receive run and owns that run's serial session
// (link()); in monitor mode the session's trace collects in the invisible Memo1.
class TFormRS232C : public QDialog {
    Q_OBJECT

  public:
    explicit TFormRS232C(Messenger& messenger, QWidget* parent = nullptr);

    // Opens the session's port; Memo1 gets its vertical scroll bar whatever the result.
    bool OpenPort(const std::string& portName, bool monitor);
    void LogLine(const std::string& text);
    void setProgress(int percent);
    SerialPortLink& link() { return link_; }
    bool timedOut() const { return timedOut_; }

  private:
    void buildLayout();
    void centreOnScreen();
    void Timer1Timer();
    void appendToMemo(const std::string& text);

    QLabel* Label1;
    QProgressBar* ProgressBar1;
    QPlainTextEdit* Memo1;
    QTimer* Timer1;
    SerialPortLink link_;
    bool timedOut_ = false;
};

}  // namespace sonalyx
