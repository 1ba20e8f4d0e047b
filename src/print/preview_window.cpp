#include "print/preview_window.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "print/form_print_dialog.h"
#include "print/page_printer.h"
#include "print/print_environment.h"

using sonalyx::Box;
using sonalyx::PagePrinter;
using sonalyx::PaperLayout;
using sonalyx::ZoomMode;

namespace {

constexpr int kSeparatorWidth = 8;
const QColor kDeskGrey(128, 128, 128);

void Paint(QWidget* widget, const QColor& colour) {
    widget->setAutoFillBackground(true);
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, colour);
    widget->setPalette(palette);
}

}  // namespace

PreviewWindow::PreviewWindow(const Setup& setup, QList<sonalyx::PrintPage> pages,
                             sonalyx::Messenger& messenger, sonalyx::PrintEnvironment& environment,
                             QWidget* parent)
    : QDialog(parent),
      setup_(setup),
      pages_(std::move(pages)),
      messenger_(messenger),
      environment_(environment),
      printer_(QPrinter::HighResolution) {
    caption_ = tr("Preview");
    setWindowTitle(caption_);
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    resize(800, 600);
    // The pages are a wide window and sheets drawn for it: they go on paper across.
    PagePrinter(messenger_).SetLandscape(printer_);

    BuildToolBar();
    scrollBox_ = new QScrollArea(this);
    scrollBox_->setObjectName(QStringLiteral("ScrollBox1"));
    scrollBox_->setWidgetResizable(false);
    scrollBox_->setFrameShape(QFrame::NoFrame);
    desk_ = new QWidget;
    desk_->setObjectName(QStringLiteral("Panel1"));
    Paint(desk_, kDeskGrey);
    auto* paper = new QFrame(desk_);
    paper->setObjectName(QStringLiteral("PanelPaper"));
    paper->setFrameShape(QFrame::Box);
    paper->setStyleSheet(QStringLiteral("#PanelPaper{background:#fff; border:1px solid #3c3c3c;}"));
    paper_ = paper;
    image_ = new QLabel(paper_);
    image_->setObjectName(QStringLiteral("Image1"));
    image_->setScaledContents(true);
    scrollBox_->setWidget(desk_);
    scrollBox_->installEventFilter(this);

    statusBar_ = new QStatusBar(this);
    statusBar_->setObjectName(QStringLiteral("StatusBar"));
    statusBar_->setSizeGripEnabled(false);
    zoomPanel_ = new QLabel(QStringLiteral("0%"));
    zoomPanel_->setMinimumWidth(40);
    pagePanel_ = new QLabel(tr("Page:"));
    pagePanel_->setMinimumWidth(50);
    statusBar_->addWidget(zoomPanel_);
    statusBar_->addWidget(pagePanel_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolBar_);
    layout->addWidget(scrollBox_, 1);
    layout->addWidget(statusBar_);
    Button(QStringLiteral("ZoomFit"))->setChecked(true);
}

void PreviewWindow::BuildToolBar() {
    toolBar_ = new QToolBar(this);
    toolBar_->setObjectName(QStringLiteral("ToolBar1"));
    toolBar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QStyle* s = style();
    const auto icon = [s](QStyle::StandardPixmap p) { return s->standardIcon(p); };
    AddButton(QStringLiteral("ZoomFit"), tr("Whole Page"), tr("ZoomToFit"));
    AddButton(QStringLiteral("Zoom100"), tr("100%"), tr("100%"));
    AddButton(QStringLiteral("ZoomToWidth"), tr("Page Width"), tr("ZoomToWidth"));
    for (const char* name : {"ZoomFit", "Zoom100", "ZoomToWidth"}) {
        Button(QLatin1String(name))->setCheckable(true);
        Button(QLatin1String(name))->setAutoExclusive(true);
    }
    connect(Button(QStringLiteral("ZoomFit")), &QToolButton::clicked, this,
            &PreviewWindow::ZoomToFitClick);
    connect(Button(QStringLiteral("Zoom100")), &QToolButton::clicked, this,
            &PreviewWindow::ZoomTo100Click);
    connect(Button(QStringLiteral("ZoomToWidth")), &QToolButton::clicked, this,
            &PreviewWindow::ZoomToWidthClick);
    AddSeparator();
    AddButton(QStringLiteral("FirstPage"), QString(), tr("First page"))
        ->setIcon(icon(QStyle::SP_MediaSkipBackward));
    AddButton(QStringLiteral("PreviousPage"), QString(), tr("Previous page"))
        ->setIcon(icon(QStyle::SP_MediaSeekBackward));
    AddButton(QStringLiteral("NextPage"), QString(), tr("Next page"))
        ->setIcon(icon(QStyle::SP_MediaSeekForward));
    AddButton(QStringLiteral("LastPage"), QString(), tr("Last page"))
        ->setIcon(icon(QStyle::SP_MediaSkipForward));
    AddSeparator();
    connect(AddButton(QStringLiteral("PrintSetup"), tr("Setup..."), tr("Printer setup")),
            &QToolButton::clicked, this, &PreviewWindow::PrintSetupClick);
    connect(AddButton(QStringLiteral("Print"), tr("Print..."), tr("Print")), &QToolButton::clicked,
            this, &PreviewWindow::PrintClick);
    AddSeparator();
    AddButton(QStringLiteral("SaveReport"), tr("Save"), tr("Save report"))
        ->setIcon(icon(QStyle::SP_DialogSaveButton));
    AddButton(QStringLiteral("LoadReport"), tr("Load"), tr("Load report"))
        ->setIcon(icon(QStyle::SP_DialogOpenButton));
    AddSeparator();
    connect(AddButton(QStringLiteral("ExitButton"), tr("Close(&C)"), tr("Close")),
            &QToolButton::clicked, this, &PreviewWindow::ExitClick);
}

QToolButton* PreviewWindow::AddButton(const QString& name, const QString& text,
                                      const QString& hint) {
    auto* button = new QToolButton(toolBar_);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(hint);
    button->setToolButtonStyle(text.isEmpty() ? Qt::ToolButtonIconOnly
                                              : Qt::ToolButtonTextBesideIcon);
    button->setProperty("action", QVariant::fromValue(toolBar_->addWidget(button)));
    return button;
}

void PreviewWindow::AddSeparator() {
    auto* gap = new QWidget(toolBar_);
    gap->setFixedWidth(kSeparatorWidth);
    toolBar_->addWidget(gap);
}

QToolButton* PreviewWindow::Button(const QString& name) const {
    return toolBar_->findChild<QToolButton*>(name);
}

QAction* PreviewWindow::ButtonAction(const QString& name) const {
    return Button(name)->property("action").value<QAction*>();
}

void PreviewWindow::SetCaption(const QString& caption) {
    caption_ = caption;
    setWindowTitle(CaptionFor(caption_));
}

void PreviewWindow::ZoomToFitClick() {
    Button(QStringLiteral("ZoomFit"))->setChecked(true);
    SetZoom(ZoomMode::WholePage);
}

void PreviewWindow::ZoomTo100Click() {
    Button(QStringLiteral("Zoom100"))->setChecked(true);
    SetZoom(ZoomMode::Actual);
}

void PreviewWindow::ZoomToWidthClick() {
    Button(QStringLiteral("ZoomToWidth"))->setChecked(true);
    SetZoom(ZoomMode::FitWidth);
}

void PreviewWindow::SetZoom(ZoomMode mode) {
    zoom_ = mode;
    Redraw();
}

void PreviewWindow::SetPage(int index) {
    index_ = std::clamp(index, 0, std::max(PageCount() - 1, 0));
    setWindowTitle(CaptionFor(caption_));
    Redraw();
}

QSize PreviewWindow::ClientSize() const {
    const QSize full = scrollBox_->maximumViewportSize();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scrollBox_);
    switch (zoom_) {
        case ZoomMode::FitWidth:
            return {full.width() - bar, full.height()};
        case ZoomMode::Actual:
            return {full.width() - bar, full.height() - bar};
        case ZoomMode::WholePage:
            break;
    }
    return full;
}

void PreviewWindow::Redraw() {
    // Switching the scroll bars resizes the viewport, not the box; guard anyway.
    const QScopedValueRollback guard(redrawing_, true);
    QToolButton* exit = Button(QStringLiteral("ExitButton"));
    exit->setEnabled(false);
    const sonalyx::PaperMetrics metrics = PagePrinter::Metrics(printer_);
    if (metrics.paperWidth <= 0 || metrics.paperHeight <= 0) {
        exit->setEnabled(true);
        return;
    }
    const QSize client = ClientSize();
    placement_ =
        PaperLayout::Place(zoom_, client.width(), client.height(), metrics, setup_.pixelsPerInch);
    scrollBox_->setHorizontalScrollBarPolicy(placement_.horizontalScroll ? Qt::ScrollBarAlwaysOn
                                                                         : Qt::ScrollBarAlwaysOff);
    scrollBox_->setVerticalScrollBarPolicy(placement_.verticalScroll ? Qt::ScrollBarAlwaysOn
                                                                     : Qt::ScrollBarAlwaysOff);
    desk_->resize(placement_.deskWidth, placement_.deskHeight);
    const Box& p = placement_.paper;
    paper_->setGeometry(p.left, p.top, p.width, p.height);

    const QImage page = pages_.isEmpty() ? QImage() : pages_.at(index_).preview;
    if (page.isNull()) {
        image_->hide();
    } else {
        const Box placed = PaperLayout::FitToPage(page.width(), page.height(), metrics.pageWidth,
                                                  metrics.pageHeight);
        const Box shown = PaperLayout::PictureOnPaper(placed, p, metrics, CentrePicture());
        image_->setGeometry(shown.left, shown.top, shown.width, shown.height);
        image_->setPixmap(QPixmap::fromImage(page.scaled(
            shown.width, shown.height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
        image_->show();
    }
    UpdateStatus();
    exit->setEnabled(true);
}

void PreviewWindow::UpdateStatus() {
    const int percent = PaperLayout::ZoomPercent(placement_.paper, PagePrinter::Metrics(printer_),
                                                 setup_.pixelsPerInch);
    zoomPanel_->setText(QStringLiteral("%1%").arg(percent));
    pagePanel_->setText(tr("Page: %1/%2").arg(index_ + 1).arg(PageCount()));
}

bool PreviewWindow::eventFilter(QObject* watched, QEvent* event) {
    // The scroll box, not the window, decides the room: the tool bar and status bar come and go.
    if (watched == scrollBox_ && event->type() == QEvent::Resize && !redrawing_) {
        Redraw();
    }
    return QDialog::eventFilter(watched, event);
}

void PreviewWindow::PrintSetupClick() {
    QPageSetupDialog dialog(&printer_, this);
    dialog.setObjectName(QStringLiteral("PrinterSetupDialog1"));
    if (environment_.RunModal(dialog) == QDialog::Accepted) {
        Redraw();
    }
}

void PreviewWindow::PrintClick() {
    const int count = PageCount();
    QPrintDialog dialog(&printer_, this);
    dialog.setObjectName(QStringLiteral("PrintDialog1"));
    if (OffersPageRange()) {
        dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
        dialog.setMinMax(1, count);
        printer_.setPrintRange(QPrinter::AllPages);
        printer_.setFromTo(1, count);
    } else {
        dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    }
    if (environment_.RunModal(dialog) != QDialog::Accepted) {
        return;
    }
    int first = 1;
    int last = count;
    if (OffersPageRange() && printer_.printRange() == QPrinter::PageRange &&
        printer_.fromPage() > 0) {
        first = printer_.fromPage();
        last = std::max(printer_.toPage(), first);
    }
    QToolButton* exit = Button(QStringLiteral("ExitButton"));
    exit->setEnabled(false);
    {
        TFormPrintDialog printing(this);
        printing.ShowNow();
        index_ = first - 1;
        PagePrinter(messenger_).Print(printer_, pages_, first, last, setup_.title);
    }
    exit->setEnabled(true);
    done(QDialog::Rejected);
}

void PreviewWindow::ExitClick() {
    close();
}
