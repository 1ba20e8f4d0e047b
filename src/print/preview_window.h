#pragma once

#include <QDialog>
#include <QImage>
#include <QList>
#include <QPrinter>

#include "print/paper_layout.h"
#include "print/print_page.h"

class QLabel;
class QScrollArea;
class QStatusBar;
class QToolBar;
class QToolButton;

namespace sonalyx {
class Messenger;
class PrintEnvironment;
}  // namespace sonalyx

// What TFormPrint and TFormPrintMulti share: a tool bar, the paper on a grey desk in a scroll
// box laid out for the zoom mode, the pages shown one at a time, and printing them. Created in
// preview mode it is shown modally by its creator; in print mode the derived window prints at
// once.
class PreviewWindow : public QDialog {
    Q_OBJECT

  public:
    struct Setup {
        bool preview = true;
        QString title;           // the document's; the print job's title
        int pixelsPerInch = 96;  // of the screen the pages were drawn for
    };

    PreviewWindow(const Setup& setup, QList<sonalyx::PrintPage> pages,
                  sonalyx::Messenger& messenger, sonalyx::PrintEnvironment& environment,
                  QWidget* parent);

    // The caption: the document's title and "(Preview)"; a list of pages adds where it is.
    void SetCaption(const QString& caption);

    sonalyx::ZoomMode Zoom() const { return zoom_; }
    int PageIndex() const { return index_; }
    int PageCount() const { return static_cast<int>(pages_.size()); }
    const sonalyx::PaperPlacement& Placement() const { return placement_; }
    QPrinter& Printer() { return printer_; }

    void ZoomToFitClick();
    void ZoomTo100Click();
    void ZoomToWidthClick();
    void PrintSetupClick();
    // Asks for the printer (and the page range where the pages are several), prints, closes.
    void PrintClick();
    void ExitClick();
    // Lays the paper out for the zoom mode and draws the current page on it.
    void Redraw();

  protected:
    // Where the page picture goes on the paper: centred both ways, or across and from the top.
    virtual bool CentrePicture() const = 0;
    virtual bool OffersPageRange() const = 0;
    void SetPage(int index);
    QToolButton* Button(const QString& name) const;
    // The tool bar's own handle of a button: hiding the button itself does nothing there.
    QAction* ButtonAction(const QString& name) const;
    virtual QString CaptionFor(const QString& caption) const { return caption; }
    QStatusBar* StatusBar() const { return statusBar_; }
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildToolBar();
    QToolButton* AddButton(const QString& name, const QString& text, const QString& hint);
    void AddSeparator();
    void SetZoom(sonalyx::ZoomMode mode);
    QSize ClientSize() const;
    void UpdateStatus();

    Setup setup_;
    QList<sonalyx::PrintPage> pages_;
    QString caption_;
    sonalyx::Messenger& messenger_;
    sonalyx::PrintEnvironment& environment_;
    QPrinter printer_;
    sonalyx::ZoomMode zoom_ = sonalyx::ZoomMode::WholePage;
    int index_ = 0;
    bool redrawing_ = false;
    sonalyx::PaperPlacement placement_;

    QToolBar* toolBar_ = nullptr;
    QScrollArea* scrollBox_ = nullptr;
    QWidget* desk_ = nullptr;
    QWidget* paper_ = nullptr;
    QLabel* image_ = nullptr;
    QStatusBar* statusBar_ = nullptr;
    QLabel* zoomPanel_ = nullptr;
    QLabel* pagePanel_ = nullptr;
};
