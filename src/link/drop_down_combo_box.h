#pragma once

#include <QComboBox>

namespace sonalyx {

// A combo box that says when its list drops down and when it closes up again.
class DropDownComboBox : public QComboBox {
    Q_OBJECT

  public:
    using QComboBox::QComboBox;

    void showPopup() override;
    void hidePopup() override;

  signals:
    void droppedDown();
    void closedUp();
};

}  // namespace sonalyx
