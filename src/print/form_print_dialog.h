#pragma once

#include <QWidget>

// The small window that stays on top saying "Printing..." while a job goes to the printer.
class TFormPrintDialog : public QWidget {
    Q_OBJECT

  public:
    explicit TFormPrintDialog(QWidget* owner = nullptr);

    // Shows it centred over its owner and paints it at once: the job that follows keeps the
    // event loop busy.
    void ShowNow();
};
