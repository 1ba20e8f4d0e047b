#include "print/print_pages.h"

#include <QComboBox>
#include <QSlider>
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
    window.SetPrintAppearance(true);
    std::array<bool, kTrackCount> shown{};
    for (int t = 0; t < kTrackCount; ++t) {
        QSlider* track = window.Panel1()->TrackBar(static_cast<Track>(t));
        shown[t] = track->isVisibleTo(window.Panel1());
        track->hide();
    }
    QWidget* client = window.widget();
    const QImage image = client->grab(client->rect()).toImage();
    window.SetPrintAppearance(false);
    for (int t = 0; t < kTrackCount; ++t) {
        window.Panel1()->TrackBar(static_cast<Track>(t))->setVisible(shown[t]);
    }
    return image;
}

QList<QImage> PrintPages::ParameterPages(TMDIChild& window, bool forPrint, bool& ok) {
    ParametersView* view = window.Parameters();
    QList<QImage> pages;
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

bool PrintPages::GetTORVEParaBitmapAll(TMDIChild& window, QList<QImage>& pages) {
    const ParametersView* view = window.Parameters();
    const int count = static_cast<int>(pages.size());
    pages[0] = view->BuildParameterPage(0, count);
    if (pages[0].isNull()) {
        return false;
    }
    // Without standing wave data the later pages have nothing to show and stay empty.
    if (view->HasStandingWave()) {
        for (int page = 1; page < count; ++page) {
            pages[page] = view->BuildParameterPage(page, count);
        }
    }
    return true;
}

bool PrintPages::GetTORVEParaBitmap(TMDIChild& window, QList<QImage>& pages) {
    pages[0] = window.Parameters()->BuildParameterPage(0, 1);
    return !pages[0].isNull();
}

}  // namespace sonalyx
