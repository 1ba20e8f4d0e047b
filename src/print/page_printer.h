#pragma once

#include <QList>
#include <QString>

#include "print/paper_layout.h"
#include "print/print_page.h"

class QPrinter;

namespace sonalyx {

class Messenger;

// Sends pages to a printer: one job titled with the document, each page drawn at the printer's
// resolution, fitted to the paper keeping its aspect ratio and centred; empty pages are skipped,
// and a range of empty pages starts no job at all (so no blank sheet comes out).
class PagePrinter {
  public:
    explicit PagePrinter(Messenger& messenger);

    // Turns the printer's page to landscape; "Set Landscape failed." where it refuses.
    bool SetLandscape(QPrinter& printer);
    // The printer's paper and printable page, in its own units.
    static PaperMetrics Metrics(const QPrinter& printer);

    // Prints pages first..last (1-based, inclusive) of the list. False, the user told, when
    // the job could not be started or a page not be prepared.
    bool Print(QPrinter& printer, const QList<PrintPage>& pages, int first, int last,
               const QString& title);
    int PagesPrinted() const { return printed_; }

  private:
    Messenger& messenger_;
    int printed_ = 0;
};

}  // namespace sonalyx
