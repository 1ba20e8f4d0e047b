#pragma once

#include "print/preview_window.h"

// The preview of a list of pages (the parameter sheets): one page at a time, 20 pixels from
// the top of the paper, printed with a choice of pages; the caption says which page it is. In
// print mode it asks for the printer and prints as soon as it is made.
class TFormPrintMulti : public PreviewWindow {
    Q_OBJECT

  public:
    TFormPrintMulti(const Setup& setup, QList<sonalyx::PrintPage> pages,
                    sonalyx::Messenger& messenger, sonalyx::PrintEnvironment& environment,
                    QWidget* parent = nullptr);

    void OnClickFirstPage();
    void OnClickPreviousPage();
    void OnClickNextPage();
    void OnClickLastPage();

  protected:
    bool CentrePicture() const override { return false; }
    bool OffersPageRange() const override { return true; }
    QString CaptionFor(const QString& caption) const override;
};
