#include "print/form_print_multi.h"

#include <QAction>
#include <QStatusBar>
#include <QToolButton>

TFormPrintMulti::TFormPrintMulti(const Setup& setup, QList<sonalyx::PrintPage> pages,
                                 sonalyx::Messenger& messenger,
                                 sonalyx::PrintEnvironment& environment, QWidget* parent)
    : PreviewWindow(setup, std::move(pages), messenger, environment, parent) {
    setObjectName(QStringLiteral("FormPrintMulti"));
    ButtonAction(QStringLiteral("SaveReport"))->setVisible(false);
    ButtonAction(QStringLiteral("LoadReport"))->setVisible(false);
    SetCaption(windowTitle());
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

QString TFormPrintMulti::CaptionFor(const QString& caption) const {
    // The status bar that would say so is hidden here.
    return tr("%1 - Page %2 of %3").arg(caption).arg(PageIndex() + 1).arg(PageCount());
}
