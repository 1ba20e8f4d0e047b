#pragma once

#include <QImage>
#include <QList>
#include <string>

class TMDIChild;

namespace sonalyx {

// What the current tab of a document window gives to print: a picture of the window for the
// graph tabs, the sheet's pages for the Parameters tab. Shared by the program and sonalyx-cli.
class PrintPages {
  public:
    // Why the tab can't be printed ("No data.", "Select the frequency.", "Select the
    // channel."), or empty when it can.
    static std::string Refusal(const TMDIChild& window);
    static bool IsParametersTab(const TMDIChild& window);

    // The window's client area with its print appearance on and the five trackbars hidden;
    // both put back before it returns.
    static QImage Capture(TMDIChild& window);

    // The pages of the sheet: one for one memory; for all memories 2 (preview, the second
    // dropped without standing wave data) or 3 (print, the empty ones left null for the
    // printer to skip). Null list and false when the sheet can't be drawn. The screen sheet is
    // rebuilt afterwards.
    static QList<QImage> ParameterPages(TMDIChild& window, bool forPrint, bool& ok);

    // Fill the pre-sized page list: every page of an all-memory sheet (the list's size is the
    // page count), or the first with the page of the one memory chosen.
    static bool GetTORVEParaBitmapAll(TMDIChild& window, QList<QImage>& pages);
    static bool GetTORVEParaBitmap(TMDIChild& window, QList<QImage>& pages);
};

}  // namespace sonalyx
