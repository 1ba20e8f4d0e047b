#include "print/form_print_dialog.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

TFormPrintDialog::TFormPrintDialog(QWidget* owner)
    : QWidget(owner,
              Qt::Tool | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
    setObjectName(QStringLiteral("FormPrintDialog"));
    setWindowTitle(tr("Printing..."));
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* label = new QLabel(tr("Printing..."), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    label->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    setFixedSize(240, 80);
}

void TFormPrintDialog::ShowNow() {
    if (const QWidget* owner = parentWidget()) {
        const QRect frame = owner->window()->frameGeometry();
        move(frame.center() - rect().center());
    }
    show();
    raise();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
