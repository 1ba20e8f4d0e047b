#include "print/form_print.h"

#include <QToolButton>

TFormPrint::TFormPrint(const Setup& setup, const sonalyx::PrintPage& page,
                       sonalyx::Messenger& messenger, sonalyx::PrintEnvironment& environment,
                       QWidget* parent)
    : PreviewWindow(setup, {page}, messenger, environment, parent) {
    setObjectName(QStringLiteral("FormPrint"));
    // One picture: nothing to page through.
    for (const char* name : {"FirstPage", "PreviousPage", "NextPage", "LastPage"}) {
        Button(QLatin1String(name))->setEnabled(false);
    }
    if (!setup.preview) {
        PrintClick();
    }
}
