#include "app/dialog_messenger.h"

#include "app/form_dialog.h"

sonalyx::Answer DialogMessenger::show(const std::string& text, const std::string& secondLine,
                                      sonalyx::MessageMode mode) {
    return TFormDialog::Show(QString::fromStdString(text), QString::fromStdString(secondLine), mode,
                             popupParent_.data());
}
