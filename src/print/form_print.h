#pragma once

#include "print/preview_window.h"

// The preview of one page (the document window): centred on the paper, printed on one sheet.
// In print mode it asks for the printer and prints as soon as it is made.
class TFormPrint : public PreviewWindow {
    Q_OBJECT

  public:
    TFormPrint(const Setup& setup, const sonalyx::PrintPage& page, sonalyx::Messenger& messenger,
               sonalyx::PrintEnvironment& environment, QWidget* parent = nullptr);

  protected:
    bool CentrePicture() const override { return true; }
    bool OffersPageRange() const override { return false; }
};
