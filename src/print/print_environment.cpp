#include "print/print_environment.h"

#include <QDialog>
#include <QGuiApplication>
#include <QPrinterInfo>
#include <QScreen>
#include <QWidget>

namespace sonalyx {

bool PrintEnvironment::HasPrinter() const {
    return !QPrinterInfo::availablePrinterNames().isEmpty();
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
