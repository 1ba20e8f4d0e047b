#pragma once

#include <QPointer>
#include <QWidget>

#include "document/messenger.h"

// The GUI's Messenger: every message is shown in TFormDialog over the main window.
class DialogMessenger : public sonalyx::Messenger {
  public:
    explicit DialogMessenger(QWidget* popupParent = nullptr) : popupParent_(popupParent) {}
    void setPopupParent(QWidget* parent) { popupParent_ = parent; }

    sonalyx::Answer show(const std::string& text, const std::string& secondLine,
                         sonalyx::MessageMode mode) override;

  private:
    QPointer<QWidget> popupParent_;
};
