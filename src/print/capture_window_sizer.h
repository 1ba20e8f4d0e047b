#pragma once

#include <QPointer>
#include <QSize>
#include <QWidget>

namespace sonalyx {

// Gives the main window a steady size while a document window is captured, so a picture looks
// the same whatever the user's desktop: 1024x768 (no more than the screen), or maximised on a
// screen no bigger than that. Restore() puts back the size and state it found.
class CaptureWindowSizer {
  public:
    static constexpr int kWidth = 1024;
    static constexpr int kHeight = 768;

    CaptureWindowSizer(QWidget* window, QSize screen);
    ~CaptureWindowSizer() { Restore(); }
    CaptureWindowSizer(const CaptureWindowSizer&) = delete;
    CaptureWindowSizer& operator=(const CaptureWindowSizer&) = delete;

    void Prepare();
    void Restore();

  private:
    QPointer<QWidget> window_;
    QSize screen_;
    bool prepared_ = false;
    bool smallScreen_ = false;
    bool wasMaximized_ = false;
    QSize savedSize_;
};

}  // namespace sonalyx
