#include "link/drop_down_combo_box.h"

namespace sonalyx {

void DropDownComboBox::showPopup() {
    emit droppedDown();
    QComboBox::showPopup();
}

void DropDownComboBox::hidePopup() {
    QComboBox::hidePopup();
    emit closedUp();
}

}  // namespace sonalyx
