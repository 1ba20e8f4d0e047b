#pragma once

namespace sonalyx {

// Where a page goes, in the preview and on the printer: plain integer geometry, so the maths
// is the same on every platform and testable without widgets.
struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Box&) const = default;
};

// The printer's page metrics, in printer units.
struct PaperMetrics {
    int paperWidth = 0;  // the whole sheet
    int paperHeight = 0;
    int pageWidth = 0;  // the printable area a picture is fitted into
    int pageHeight = 0;
    int dpiX = 0;
    int dpiY = 0;
};

// The preview's zoom modes.
enum class ZoomMode { FitWidth = 0, Actual = 1, WholePage = 2 };

// The preview's desk (Panel1) and the paper on it (PanelPaper), for a zoom mode.
struct PaperPlacement {
    int deskWidth = 0;
    int deskHeight = 0;
    Box paper;
    bool horizontalScroll = false;
    bool verticalScroll = false;
};

class PaperLayout {
  public:
    // A picture fitted to the page keeping its aspect ratio and centred on it. Multiply before
    // dividing, in integers, as the printer gets it.
    static Box FitToPage(int pictureWidth, int pictureHeight, int pageWidth, int pageHeight);

    // Lays the paper out on the desk. client is the area below the tool bar; screenDpi the
    // preview's own pixels per inch.
    static PaperPlacement Place(ZoomMode mode, int clientWidth, int clientHeight,
                                const PaperMetrics& metrics, int screenDpi);

    // The placed picture (in printer units) as drawn on the paper on screen. centred: both ways;
    // otherwise across only, 20 pixels from the top, its height scaled by the paper height.
    static Box PictureOnPaper(const Box& placed, const Box& paper, const PaperMetrics& metrics,
                              bool centred);

    // The zoom the paper is shown at, in per cent of its actual size.
    static int ZoomPercent(const Box& paper, const PaperMetrics& metrics, int screenDpi);

    static constexpr int kDeskMargin = 20;
    static constexpr int kTopMargin = 20;
};

}  // namespace sonalyx
