#include "print/capture_window_sizer.h"

#include <QApplication>
#include <algorithm>

namespace sonalyx {

CaptureWindowSizer::CaptureWindowSizer(QWidget* window, QSize screen)
    : window_(window), screen_(screen) {}

void CaptureWindowSizer::Prepare() {
    if (window_.isNull() || prepared_) {
        return;
    }
    prepared_ = true;
    wasMaximized_ = window_->isMaximized();
    smallScreen_ = screen_.width() <= kWidth && screen_.height() <= kHeight;
    if (smallScreen_) {
        window_->showMaximized();
    } else {
        window_->showNormal();
        savedSize_ = window_->size();
        window_->resize(std::min(kWidth, screen_.width()), std::min(kHeight, screen_.height()));
    }
    // The document window lays itself out for the new size before it is captured.
    QApplication::processEvents();
}

void CaptureWindowSizer::Restore() {
    if (window_.isNull() || !prepared_) {
        return;
    }
    prepared_ = false;
    if (smallScreen_) {
        if (!wasMaximized_) {
            window_->showNormal();
        }
    } else {
        window_->resize(savedSize_);
        if (wasMaximized_) {
            window_->showMaximized();
        }
    }
    QApplication::processEvents();
}

}  // namespace sonalyx
