#include "modal_answerer.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "app/form_dialog.h"

namespace {

QString fullText(const QLabel* label) {
    return label->toolTip().isEmpty() ? label->text() : label->toolTip();
}

QPushButton* buttonCaptioned(QWidget* dialog, const QString& caption) {
    for (auto* button : dialog->findChildren<QPushButton*>()) {
        if (button->isVisibleTo(dialog) && button->text() == caption) {
            return button;
        }
    }
    return nullptr;
}

bool coveredByAlwaysOnTop(const QWidget* message) {
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [message](const QWidget* window) {
        return window != message && window->isVisible() &&
               window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    });
}

}  // namespace

ModalAnswerer::ModalAnswerer() {
    timer_.setInterval(5);
    connect(&timer_, &QTimer::timeout, this, &ModalAnswerer::poll);
    timer_.start();
}

ModalAnswerer& ModalAnswerer::press(const QString& button) {
    answers_.push_back({false, button});
    return *this;
}

ModalAnswerer& ModalAnswerer::choose(const QString& path) {
    answers_.push_back({true, path});
    return *this;
}

ModalAnswerer& ModalAnswerer::onMessage(std::function<void(QWidget&)> look) {
    onMessage_ = std::move(look);
    return *this;
}

ModalAnswerer& ModalAnswerer::inspect(std::function<void(QWidget&)> look) {
    looks_.push_back(std::move(look));
    return *this;
}

void ModalAnswerer::poll() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || !modal->isVisible()) {
        return;
    }
    if (auto* message = qobject_cast<TFormDialog*>(modal)) {
        messages_.append(fullText(message->Label1()) + QLatin1Char('|') +
                         fullText(message->Label2()));
        covered_ += coveredByAlwaysOnTop(message) ? 1 : 0;
        if (onMessage_) {
            onMessage_(*message);
        }
        QString caption = QStringLiteral("OK");
        if (!answers_.empty() && !answers_.front().file) {
            caption = answers_.front().value;
            answers_.pop_front();
        } else {
            ++unexpected_;
        }
        QPushButton* button = buttonCaptioned(message, caption);
        if (button == nullptr) {
            button = buttonCaptioned(message, QStringLiteral("OK"));
        }
        if (button == nullptr) {
            button = buttonCaptioned(message, QStringLiteral("CANCEL"));
        }
        button->click();
        return;
    }
    if (auto* files = qobject_cast<QFileDialog*>(modal)) {
        if (answers_.empty() || !answers_.front().file) {
            ++unexpected_;
            files->reject();
            return;
        }
        const QString path = answers_.front().value;
        answers_.pop_front();
        if (path.isEmpty()) {
            files->reject();
        } else {
            files->selectFile(path);
            QMetaObject::invokeMethod(files, "accept");
        }
        return;
    }
    others_.append(modal->windowTitle());
    if (!looks_.empty()) {
        const auto look = std::move(looks_.front());
        looks_.pop_front();
        look(*modal);
        if (!modal->isVisible()) {
            return;
        }
    }
    if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        dialog->accept();
    } else {
        modal->close();
    }
}
