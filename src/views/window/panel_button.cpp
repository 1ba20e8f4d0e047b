#include "views/window/panel_button.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>

namespace sonalyx {

PanelButton::PanelButton(const QString& caption, QWidget* parent) : QLabel(caption, parent) {
    setAlignment(Qt::AlignCenter);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setMinimumHeight(24);
    setPressed(false);
}

void PanelButton::setPressed(bool pressed) {
    pressed_ = pressed;
    setProperty("down", pressed);
    setFrameStyle(QFrame::Panel | (pressed ? QFrame::Sunken : QFrame::Raised));
    // The style sheet keys on the property; re-polish so the look follows at once.
    style()->unpolish(this);
    style()->polish(this);
    update();
}

void PanelButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit clicked();
    }
    QLabel::mouseReleaseEvent(event);
}

void PanelButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return) {
        emit clicked();
        return;
    }
    QLabel::keyPressEvent(event);
}

}  // namespace sonalyx
