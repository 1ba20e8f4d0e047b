#include "views/parameters/sheet_scroll_box.h"

#include <QResizeEvent>
#include <QScrollBar>
#include <QWheelEvent>

SheetScrollBox::SheetScrollBox(QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("ScrollBox3"));
    setWidgetResizable(false);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    verticalScrollBar()->setSingleStep(kStep);
    horizontalScrollBar()->setSingleStep(kStep);
}

void SheetScrollBox::SetSheetSize(const QSize& size) {
    sheetSize_ = size;
    FitPanel();
}

void SheetScrollBox::FitPanel() {
    if (widget() == nullptr)
        return;
    // The scroll bars take room from the viewport; decide them from the sheet and the whole box.
    const QSize box = maximumViewportSize();
    const bool scrollsDown = sheetSize_.height() > box.height();
    const bool scrollsAcross =
        sheetSize_.width() >
        box.width() - (scrollsDown ? verticalScrollBar()->sizeHint().width() : 0);
    QSize client = box;
    if (scrollsDown)
        client.rwidth() -= verticalScrollBar()->sizeHint().width();
    if (scrollsAcross)
        client.rheight() -= horizontalScrollBar()->sizeHint().height();
    widget()->resize(sheetSize_.expandedTo(client));
}

void SheetScrollBox::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    FitPanel();
}

void SheetScrollBox::wheelEvent(QWheelEvent* event) {
    const bool across =
        (event->modifiers() & Qt::ShiftModifier) != 0 || event->angleDelta().y() == 0;
    wheelRemainder_ +=
        across ? event->angleDelta().x() + event->angleDelta().y() : event->angleDelta().y();
    const int notches = wheelRemainder_ / QWheelEvent::DefaultDeltasPerStep;
    wheelRemainder_ -= notches * QWheelEvent::DefaultDeltasPerStep;
    QScrollBar* bar = across ? horizontalScrollBar() : verticalScrollBar();
    bar->setValue(bar->value() - notches * kStep);
    event->accept();
}
