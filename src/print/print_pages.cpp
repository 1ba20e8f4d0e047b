#include "print/print_pages.h"

#include <QComboBox>
#include <QPainter>
#include <QPicture>
#include <QPointer>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <array>

#include "views/parameters/parameters_view.h"
#include "views/window/mdi_child.h"
#include "views/window/view_controls.h"

namespace sonalyx {

namespace {

bool HasReverbData(const MeasurementDocument& document) {
    return document.anyVariantData[0] || document.anyVariantData[1];
}

bool HasGroupDelayData(const MeasurementDocument& document) {
    for (const auto& variant : document.groupDelay.hasData) {
        for (bool has : variant) {
            if (has) {
                return true;
            }
        }
    }
    return false;
}

// The window in its print look with the trackbars hidden, for as long as it is drawn.
class PrintLook {
  public:
    explicit PrintLook(TMDIChild& window) : window_(window) {
        window_.SetPrintAppearance(true);
        for (int t = 0; t < kTrackCount; ++t) {
            QSlider* track = window_.Panel1()->TrackBar(static_cast<Track>(t));
            shown_[t] = track->isVisibleTo(window_.Panel1());
            track->hide();
        }
    }
    ~PrintLook() {
        window_.SetPrintAppearance(false);
        for (int t = 0; t < kTrackCount; ++t) {
            window_.Panel1()->TrackBar(static_cast<Track>(t))->setVisible(shown_[t]);
        }
    }
    PrintLook(const PrintLook&) = delete;
    PrintLook& operator=(const PrintLook&) = delete;

  private:
    TMDIChild& window_;
    std::array<bool, kTrackCount> shown_{};
};

// Draws the widget and its children as drawing commands. A picture keeps no widget's bounds
// as a clip, and a tab bar paints its selected tab beyond its own: the tab bars go in last,
// each within its rectangle.
void RecordWidget(QWidget& client, QPainter& recorder) {
    QList<QTabBar*> bars;
    for (QTabBar* bar : client.findChildren<QTabBar*>()) {
        if (bar->isVisibleTo(&client)) {
            bars.append(bar);
            bar->hide();
        }
    }
    client.render(&recorder, QPoint(), QRegion(),
                  QWidget::DrawWindowBackground | QWidget::DrawChildren);
    for (QTabBar* bar : bars) {
        bar->show();
        const QRect rect(bar->mapTo(&client, QPoint(0, 0)), bar->size());
        recorder.save();
        recorder.setClipRect(rect);
        bar->render(&recorder, rect.topLeft(), QRegion(), QWidget::DrawChildren);
        recorder.restore();
    }
}

PrintPage SheetPage(TMDIChild& window, int page, int count) {
    PrintPage out;
    out.preview = window.Parameters()->BuildParameterPage(page, count);
    if (out.preview.isNull()) {
        return out;
    }
    out.size = out.preview.size();
    const QPointer<ParametersView> view = window.Parameters();
    out.paint = [view, page, count](QPainter& painter) {
        if (!view.isNull()) {
            view->PaintParameterPage(painter, page, count);
        }
    };
    return out;
}

}  // namespace

std::string PrintPages::Refusal(const TMDIChild& window) {
    const MeasurementDocument& document = window.Document();
    switch (window.PageControl()->currentIndex()) {
        case TMDIChild::kReverbTab:
            if (!HasReverbData(document)) {
                return "No data.";
            }
            if (window.Panel1()->ComboChannel()->currentIndex() <= 0) {
                return window.ChFreqMode() != 0 ? "Select the frequency." : "Select the channel.";
            }
            return {};
        case TMDIChild::kGroupDelayTab:
            return HasGroupDelayData(document) ? std::string() : "No data.";
        default:
            return document.parameterLines.empty() ? "No data." : std::string();
    }
}

bool PrintPages::IsParametersTab(const TMDIChild& window) {
    return window.PageControl()->currentIndex() == TMDIChild::kParametersTab;
}

QImage PrintPages::Capture(TMDIChild& window) {
    const PrintLook look(window);
    QWidget* client = window.widget();
    return client->grab(client->rect()).toImage();
}

PrintPage PrintPages::WindowPage(TMDIChild& window) {
    PrintPage page;
    page.preview = Capture(window);
    page.size = window.widget()->size();
    const QPointer<TMDIChild> guard(&window);
    page.paint = [guard](QPainter& painter) {
        if (guard.isNull()) {
            return;
        }
        // Widgets render onto a printer only through a screen picture of themselves; recorded
        // as drawing commands first, they reach it as text and lines. The charts among them
        // take the vector road there too (see ChartWidget::paintEvent).
        QPicture drawing;
        {
            const PrintLook look(*guard);
            QPainter recorder(&drawing);
            RecordWidget(*guard->widget(), recorder);
        }
        // A picture plays back scaled from its resolution to the device's; the painter is
        // already scaled to the paper.
        const QPaintDevice* device = painter.device();
        painter.save();
        painter.scale(static_cast<qreal>(drawing.logicalDpiX()) / device->logicalDpiX(),
                      static_cast<qreal>(drawing.logicalDpiY()) / device->logicalDpiY());
        painter.drawPicture(0, 0, drawing);
        painter.restore();
    };
    return page;
}

QList<PrintPage> PrintPages::ParameterPages(TMDIChild& window, bool forPrint, bool& ok) {
    ParametersView* view = window.Parameters();
    QList<PrintPage> pages;
    if (view->Memory() != 0) {
        pages.resize(1);
        ok = GetTORVEParaBitmap(window, pages);
    } else {
        pages.resize(forPrint ? 3 : 2);
        ok = GetTORVEParaBitmapAll(window, pages);
        if (ok && !forPrint && !view->HasStandingWave()) {
            pages.removeAt(1);
        }
    }
    view->BuildParameterSheet();
    if (!ok) {
        pages.clear();
    }
    return pages;
}

bool PrintPages::GetTORVEParaBitmapAll(TMDIChild& window, QList<PrintPage>& pages) {
    const int count = static_cast<int>(pages.size());
    pages[0] = SheetPage(window, 0, count);
    if (pages[0].IsEmpty()) {
        return false;
    }
    // Without standing wave data that page stays empty; the Acoustic Cal EQ tables have a page
    // of their own in a three-page print all the same (a two-page one has them on page 0).
    const bool standingWave = window.Parameters()->HasStandingWave();
    for (int page = 1; page < count; ++page) {
        if (standingWave || (page == 2 && count == 3)) {
            pages[page] = SheetPage(window, page, count);
        }
    }
    return true;
}

bool PrintPages::GetTORVEParaBitmap(TMDIChild& window, QList<PrintPage>& pages) {
    pages[0] = SheetPage(window, 0, 1);
    return !pages[0].IsEmpty();
}

}  // namespace sonalyx
