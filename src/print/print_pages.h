#pragma once

#include <QImage>
#include <QList>
#include <string>

#include "print/print_page.h"

class TMDIChild;

namespace sonalyx {

// What the current tab of a document window gives to print: the window itself for the graph
// tabs, the sheet's pages for the Parameters tab. Shared by the program and sonalyx-cli. The
// pages draw from the window when they are printed: it must outlive them and keep its size.
class PrintPages {
  public:
    // Why the tab can't be printed ("No data.", "Select the frequency.", "Select the
    // channel."), or empty when it can.
    static std::string Refusal(const TMDIChild& window);
    static bool IsParametersTab(const TMDIChild& window);

    // The window's client area with its print appearance on and the five trackbars hidden;
    // both put back before it returns.
    static QImage Capture(TMDIChild& window);
    // The window as one page: drawn onto the paper as the capture shows it (charts through
    // their own paint(), the other widgets rendered), the capture its preview.
    static PrintPage WindowPage(TMDIChild& window);

    // The pages of the sheet: one for one memory; for all memories 2 (preview, the second
    // dropped without standing wave data) or 3 (print). Without standing wave data the print's
    // second page stays empty for the printer to skip and its third holds the Acoustic Cal EQ
    // tables, so paper shows every table the preview does. Empty list and false when the
    // sheet can't be drawn. The screen sheet is rebuilt afterwards.
    static QList<PrintPage> ParameterPages(TMDIChild& window, bool forPrint, bool& ok);

    // Fill the pre-sized page list: every page of an all-memory sheet (the list's size is the
    // page count), or the first with the page of the one memory chosen.
    static bool GetTORVEParaBitmapAll(TMDIChild& window, QList<PrintPage>& pages);
    static bool GetTORVEParaBitmap(TMDIChild& window, QList<PrintPage>& pages);
};

}  // namespace sonalyx
