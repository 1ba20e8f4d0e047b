#include "print/form_print_multi.h"

#include <QStatusBar>
#include <QToolButton>

TFormPrintMulti::TFormPrintMulti(const Setup& setup, QList<QImage> pages,
                                 sonalyx::Messenger& messenger,
                                 sonalyx::PrintEnvironment& environment, QWidget* parent)
    : PreviewWindow(setup, std::move(pages), messenger, environment, parent) {
    setObjectName(QStringLiteral("FormPrintMulti"));
    Button(QStringLiteral("SaveReport"))->hide();
    Button(QStringLiteral("LoadReport"))->hide();
    StatusBar()->hide();
    connect(Button(QStringLiteral("FirstPage")), &QToolButton::clicked, this,
            &TFormPrintMulti::OnClickFirstPage);
    connect(Button(QStringLiteral("PreviousPage")), &QToolButton::clicked, this,
            &TFormPrintMulti::OnClickPreviousPage);
    connect(Button(QStringLiteral("NextPage")), &QToolButton::clicked, this,
            &TFormPrintMulti::OnClickNextPage);
    connect(Button(QStringLiteral("LastPage")), &QToolButton::clicked, this,
            &TFormPrintMulti::OnClickLastPage);
    if (!setup.preview) {
        PrintClick();
    }
}

void TFormPrintMulti::OnClickFirstPage() {
    SetPage(0);
}

void TFormPrintMulti::OnClickPreviousPage() {
    SetPage(PageIndex() - 1);
}

void TFormPrintMulti::OnClickNextPage() {
    SetPage(PageIndex() + 1);
}

void TFormPrintMulti::OnClickLastPage() {
    SetPage(PageCount() - 1);
}
