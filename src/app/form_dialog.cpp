#include "app/form_dialog.h"

#include <QApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace {

constexpr int kLabelLeft = 6;
constexpr int kNarrowLabelLeft = 2;
constexpr int kLabel1Top = 14;
constexpr int kLabel2Top = 40;
constexpr int kButtonTop = 74;
constexpr int kButtonGap = 4;
constexpr int kFittedMinimumWidth = 260;
constexpr int kFittedMargin = 24;

}  // namespace

TFormDialog::TFormDialog(const QString& message, const QString& secondLine,
                         sonalyx::MessageMode mode, QWidget* parent)
    : QDialog(parent),
      label1_(new QLabel(this)),
      label2_(new QLabel(this)),
      button1_(MakeButton(QStringLiteral("Button1"), tr("YES"), sonalyx::Answer::Yes)),
      button2_(MakeButton(QStringLiteral("Button2"), tr("NO"), sonalyx::Answer::No)),
      button3_(MakeButton(QStringLiteral("Button3"), tr("CANCEL"), sonalyx::Answer::Cancel)),
      mode_(mode) {
    setObjectName(QStringLiteral("FormDialog"));
    setWindowTitle(tr("Sonalyx"));
    setWindowFlags(Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint);
    label1_->setObjectName(QStringLiteral("Label1"));
    label2_->setObjectName(QStringLiteral("Label2"));
    label1_->setTextFormat(Qt::PlainText);
    label2_->setTextFormat(Qt::PlainText);

    switch (mode) {
        case sonalyx::MessageMode::Ok:
            LayOutDesign();
            LayOutSingleButton();
            break;
        case sonalyx::MessageMode::YesNoCancel:
            LayOutDesign();
            LayOutNarrowed(ShrinkFactor(message, secondLine));
            button1_->setDefault(true);
            break;
        case sonalyx::MessageMode::OkFitted:
            LayOutSingleButton();
            break;
    }
    SetTexts(message, secondLine);
    if (mode == sonalyx::MessageMode::OkFitted) {
        LayOutFitted();
    }
    setFixedSize(width_, kDesignHeight);
}

QPushButton* TFormDialog::MakeButton(const QString& objectName, const QString& caption,
                                     sonalyx::Answer answer) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    button->resize(kButtonWidth, kButtonHeight);
    connect(button, &QPushButton::clicked, this,
            [this, answer] { done(static_cast<int>(answer)); });
    return button;
}

void TFormDialog::LayOutDesign() {
    width_ = kDesignWidth;
    label1_->setGeometry(kLabelLeft, kLabel1Top, kLabel1Width, 18);
    label2_->setGeometry(kLabelLeft, kLabel2Top, kLabel2Width, 18);
    PlaceButtonRow(width_ / 2);
}

void TFormDialog::PlaceButtonRow(int centreX) {
    const int middle = centreX - kButtonWidth / 2;
    button2_->move(middle, kButtonTop);
    button1_->move(middle - kButtonGap - kButtonWidth, kButtonTop);
    button3_->move(middle + kButtonWidth + kButtonGap, kButtonTop);
}

void TFormDialog::LayOutSingleButton() {
    button1_->hide();
    button3_->hide();
    button2_->setText(tr("OK"));
    button2_->setDefault(true);
    // The single button answers OK, whichever way the dialog is left.
    disconnect(button2_, &QPushButton::clicked, nullptr, nullptr);
    connect(button2_, &QPushButton::clicked, this,
            [this] { done(static_cast<int>(sonalyx::Answer::Ok)); });
}

int TFormDialog::ShrinkFactor(const QString& message, const QString& secondLine) {
    const auto length1 = message.size();
    const auto length2 = secondLine.size();
    // Characters against pixels, compared without rounding the halves and thirds down.
    if (2 * length1 < kLabel1Width && 2 * length2 < kLabel2Width) {
        return 2;
    }
    if (3 * length1 < kLabel1Width && 3 * length2 < kLabel2Width) {
        return 3;
    }
    return 1;
}

void TFormDialog::LayOutNarrowed(int factor) {
    if (factor <= 1) {
        return;
    }
    width_ = kDesignWidth / factor;
    label1_->setGeometry(kNarrowLabelLeft, kLabel1Top, kLabel1Width / factor, 18);
    label2_->setGeometry(kNarrowLabelLeft, kLabel2Top, kLabel2Width / factor, 18);
    PlaceButtonRow(width_ / 2);
}

void TFormDialog::LayOutFitted() {
    const QFontMetrics metrics(label1_->font());
    const int textWidth = std::max(metrics.horizontalAdvance(label1_->text()),
                                   metrics.horizontalAdvance(label2_->text()));
    width_ = std::clamp(textWidth + kFittedMargin, kFittedMinimumWidth, kDesignWidth);
    label1_->setGeometry(kFittedMargin / 2, kLabel1Top, width_ - kFittedMargin, 18);
    label2_->setGeometry(kFittedMargin / 2, kLabel2Top, width_ - kFittedMargin, 18);
    PlaceButtonRow(width_ / 2);
}

void TFormDialog::SetTexts(const QString& message, const QString& secondLine) {
    // A text longer than its label keeps both ends readable; the whole of it is in the tip.
    const auto fit = [](QLabel* label, const QString& text) {
        const QFontMetrics metrics(label->font());
        const int room = label->width() > 0 ? label->width() : kLabel1Width;
        label->setText(metrics.horizontalAdvance(text) > room
                           ? metrics.elidedText(text, Qt::ElideMiddle, room)
                           : text);
        label->setToolTip(label->text() == text ? QString() : text);
    };
    if (mode_ == sonalyx::MessageMode::OkFitted) {
        label1_->setText(message);
        label2_->setText(secondLine);
        return;
    }
    fit(label1_, message);
    fit(label2_, secondLine);
}

void TFormDialog::keyPressEvent(QKeyEvent* event) {
    // Y, N and C answer a question as its buttons would.
    const bool plain = (event->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    if (mode_ == sonalyx::MessageMode::YesNoCancel && plain) {
        const std::pair<int, QPushButton*> keys[] = {
            {Qt::Key_Y, button1_}, {Qt::Key_N, button2_}, {Qt::Key_C, button3_}};
        for (const auto& [key, button] : keys) {
            if (event->key() == key) {
                button->click();
                return;
            }
        }
    }
    // Escape means CANCEL for a question and OK for a message.
    if (event->key() == Qt::Key_Escape) {
        done(static_cast<int>(mode_ == sonalyx::MessageMode::YesNoCancel ? sonalyx::Answer::Cancel
                                                                         : sonalyx::Answer::Ok));
        return;
    }
    QDialog::keyPressEvent(event);
}

sonalyx::Answer TFormDialog::Show(const QString& message, const QString& secondLine,
                                  sonalyx::MessageMode mode, QWidget* parent) {
    if (parent == nullptr) {
        parent = QApplication::activeWindow();
    }
    TFormDialog dialog(message, secondLine, mode, parent);
    // Never underneath a window that keeps itself on top (the "Receiving" window, say).
    const auto windows = QApplication::topLevelWidgets();
    if (std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->isVisible() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
        })) {
        dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    const QRect desktop = dialog.screen()->availableGeometry();
    dialog.move(desktop.center() - QPoint(dialog.width() / 2, dialog.height() / 2));
    const int result = dialog.exec();
    if (result == 0) {
        // Closed by the window's own close button.
        return mode == sonalyx::MessageMode::YesNoCancel ? sonalyx::Answer::Cancel
                                                         : sonalyx::Answer::Ok;
    }
    return static_cast<sonalyx::Answer>(result);
}
