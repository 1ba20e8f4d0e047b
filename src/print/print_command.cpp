#include "print/print_command.h"

#include <QApplication>
#include <QTabWidget>
#include <exception>

#include "document/messenger.h"
#include "print/capture_window_sizer.h"
#include "print/form_print.h"
#include "print/form_print_multi.h"
#include "print/print_environment.h"
#include "print/print_pages.h"
#include "views/parameters/parameters_view.h"
#include "views/window/mdi_child.h"

namespace sonalyx {

PrintCommand::PrintCommand(QWidget* mainWindow, Messenger& messenger, PrintEnvironment& environment)
    : mainWindow_(mainWindow), messenger_(messenger), environment_(environment) {}

PrintCommand::~PrintCommand() = default;

void PrintCommand::SetBusy() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    busy_ = true;
}

void PrintCommand::ReleaseBusy() {
    if (busy_) {
        busy_ = false;
        QApplication::restoreOverrideCursor();
    }
}

void PrintCommand::Refuse(const char* text) {
    messenger_.show(text, "", MessageMode::Ok);
}

void PrintCommand::Run(TMDIChild* window, bool preview) {
    if (window == nullptr) {
        return;
    }
    try {
        const std::string refusal = PrintPages::Refusal(*window);
        if (!refusal.empty()) {
            Refuse(refusal.c_str());
            return;
        }
        SetBusy();
        const struct Unbusy {
            PrintCommand* command;
            ~Unbusy() { command->ReleaseBusy(); }
        } unbusy{this};
        if (!environment_.HasPrinter()) {
            ReleaseBusy();
            Refuse("No default printer.");
            return;
        }
        sizer_ =
            std::make_unique<CaptureWindowSizer>(mainWindow_, environment_.ScreenSize(mainWindow_));
        sizer_->Prepare();
        restoreWindow_ = !window->isMaximized();
        if (restoreWindow_) {
            window->showMaximized();
            QApplication::processEvents();
        }
        if (PrintPages::IsParametersTab(*window)) {
            preview ? ExecutePreviewTORVEPara(*window) : ExecutePrintTORVEPara(*window);
        } else {
            preview ? ExecutePreview(*window) : ExecutePrint(*window);
        }
        RestoreWindows(*window);
    } catch (const std::exception&) {
        RestoreWindows(*window);
        ReleaseBusy();
        Refuse("Printer is not ready.");
    }
}

void PrintCommand::RestoreWindows(TMDIChild& window) {
    if (sizer_) {
        sizer_->Restore();
        sizer_.reset();
    }
    if (restoreWindow_) {
        restoreWindow_ = false;
        window.showNormal();
    }
}

void PrintCommand::ShowPreview(PreviewWindow& form, const TMDIChild& window) {
    form.SetCaption(window.windowTitle() + QStringLiteral("(Preview)"));
    if (mainWindow_ != nullptr) {
        form.move(mainWindow_->pos());
    }
    ReleaseBusy();
    environment_.RunModal(form);
}

void PrintCommand::ExecutePreview(TMDIChild& window) {
    try {
        const PrintPage page = PrintPages::WindowPage(window);
        TFormPrint form({true, window.windowTitle(), window.logicalDpiX()}, page, messenger_,
                        environment_, mainWindow_);
        ShowPreview(form, window);
    } catch (const std::exception&) {
        Refuse("Printer is not ready. Please try again.");
    }
}

void PrintCommand::ExecutePrint(TMDIChild& window) {
    try {
        // The window is drawn onto the paper as it stands for the capture, so its size is
        // given back only once the job is out.
        const PrintPage page = PrintPages::WindowPage(window);
        ReleaseBusy();
        TFormPrint form({false, window.windowTitle(), window.logicalDpiX()}, page, messenger_,
                        environment_, mainWindow_);
        RestoreWindows(window);
    } catch (const std::exception&) {
        Refuse("Printer is not ready. Please try again.");
    }
}

void PrintCommand::ExecutePreviewTORVEPara(TMDIChild& window) {
    try {
        bool ok = false;
        QList<PrintPage> pages = PrintPages::ParameterPages(window, false, ok);
        if (!ok) {
            ReleaseBusy();
            Refuse("No data.");
            return;
        }
        TFormPrintMulti form({true, window.windowTitle(), window.logicalDpiX()}, std::move(pages),
                             messenger_, environment_, mainWindow_);
        ShowPreview(form, window);
    } catch (const std::exception&) {
        Refuse("Printer is not ready. Please try again.");
    }
}

void PrintCommand::ExecutePrintTORVEPara(TMDIChild& window) {
    try {
        bool ok = false;
        QList<PrintPage> pages = PrintPages::ParameterPages(window, true, ok);
        RestoreWindows(window);
        ReleaseBusy();
        if (!ok) {
            Refuse("No data.");
            return;
        }
        TFormPrintMulti form({false, window.windowTitle(), window.logicalDpiX()}, std::move(pages),
                             messenger_, environment_, mainWindow_);
    } catch (const std::exception&) {
        Refuse("Printer is not ready. Please try again.");
    }
}

}  // namespace sonalyx
