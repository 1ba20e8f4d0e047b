#include "views/window/step_button.h"

#include <QMouseEvent>

namespace sonalyx {

StepButton::StepButton(Qt::ArrowType arrow, QWidget* parent) : QToolButton(parent) {
    setArrowType(arrow);
    setAutoRepeat(false);
    setFocusPolicy(Qt::TabFocus);
    setAutoRaise(false);
    setFixedSize(22, 18);
}

void StepButton::mousePressEvent(QMouseEvent* event) {
    QToolButton::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) {
        inside_ = true;
        emit mouseDown();
    }
}

void StepButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        inside_ = false;
        emit mouseUp();
    }
    QToolButton::mouseReleaseEvent(event);
}

void StepButton::mouseMoveEvent(QMouseEvent* event) {
    // While the button is held the pointer is grabbed, so leaving shows up as a move outside.
    if (inside_ && !rect().contains(event->position().toPoint())) {
        inside_ = false;
        emit mouseLeave();
    }
    QToolButton::mouseMoveEvent(event);
}

void StepButton::leaveEvent(QEvent* event) {
    inside_ = false;
    emit mouseLeave();
    QToolButton::leaveEvent(event);
}

}  // namespace sonalyx
