#include "print/print_environment.h"

#include <QDialog>
#include <QGuiApplication>
#include <QPrinterInfo>
#include <QScreen>
#include <QWidget>

namespace sonalyx {

bool PrintEnvironment::HasPrinter() const {
    // Queues without a default are not enough: the system itself prints nowhere then.
    return !QPrinterInfo::defaultPrinterName().isEmpty();
}

QSize PrintEnvironment::ScreenSize(const QWidget* window) const {
    const QScreen* screen = window != nullptr ? window->screen() : nullptr;
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    return screen != nullptr ? screen->size() : QSize(1024, 768);
}

int PrintEnvironment::RunModal(QDialog& dialog) {
    return dialog.exec();
}

}  // namespace sonalyx
