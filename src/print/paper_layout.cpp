#include "print/paper_layout.h"

#include <algorithm>
#include <cstdint>

namespace sonalyx {

namespace {

// a * b / c in 64 bits: printer units times screen pixels overflow 32 bits at 1200 dpi.
int MulDiv(int a, int b, int c) {
    if (c == 0) {
        return 0;
    }
    return static_cast<int>(static_cast<std::int64_t>(a) * b / c);
}

void Centre(PaperPlacement& placement) {
    placement.paper.left = (placement.deskWidth - placement.paper.width) / 2;
    placement.paper.top = (placement.deskHeight - placement.paper.height) / 2;
}

}  // namespace

Box PaperLayout::FitToPage(int pictureWidth, int pictureHeight, int pageWidth, int pageHeight) {
    Box box;
    if (pictureWidth <= 0 || pictureHeight <= 0) {
        return box;
    }
    box.width = MulDiv(pictureWidth, pageHeight, pictureHeight);
    if (box.width < pageWidth) {
        box.height = pageHeight;
    } else {
        box.width = pageWidth;
        box.height = MulDiv(pictureHeight, pageWidth, pictureWidth);
    }
    box.left = (pageWidth - box.width) / 2;
    box.top = (pageHeight - box.height) / 2;
    return box;
}

PaperPlacement PaperLayout::Place(ZoomMode mode, int clientWidth, int clientHeight,
                                  const PaperMetrics& m, int screenDpi) {
    PaperPlacement p;
    switch (mode) {
        case ZoomMode::FitWidth:
            p.verticalScroll = true;
            p.deskWidth = clientWidth;
            p.deskHeight = MulDiv(clientWidth, m.paperHeight, m.paperWidth);
            if (p.deskHeight < clientHeight) {
                p.deskHeight = clientHeight;
            }
            p.paper.width = p.deskWidth - kDeskMargin;
            p.paper.height = MulDiv(p.paper.width, m.paperHeight, m.paperWidth);
            break;
        case ZoomMode::Actual:
            p.horizontalScroll = p.verticalScroll = true;
            p.paper.width = MulDiv(m.paperWidth, screenDpi, m.dpiX);
            p.paper.height = MulDiv(m.paperHeight, screenDpi, m.dpiY);
            p.deskWidth = std::max(clientWidth, p.paper.width + kDeskMargin);
            p.deskHeight = std::max(clientHeight, p.paper.height + kDeskMargin / 2);
            break;
        case ZoomMode::WholePage:
            p.deskWidth = clientWidth;
            p.deskHeight = clientHeight;
            p.paper.width = p.deskWidth - kDeskMargin;
            p.paper.height = MulDiv(p.paper.width, m.paperHeight, m.paperWidth);
            if (p.paper.height > p.deskHeight) {
                p.paper.height = p.deskHeight - kDeskMargin;
                p.paper.width = MulDiv(p.paper.height, m.paperWidth, m.paperHeight);
            }
            break;
    }
    Centre(p);
    return p;
}

Box PaperLayout::PictureOnPaper(const Box& placed, const Box& paper, const PaperMetrics& m,
                                bool centred) {
    Box image;
    image.width = MulDiv(placed.width, paper.width, m.paperWidth);
    if (centred) {
        image.height = MulDiv(placed.height, paper.width, m.paperWidth);
        image.top = (paper.height - image.height) / 2;
    } else {
        image.height = MulDiv(placed.height, paper.height, m.paperHeight);
        // 20 pixels down, unless that would push the page off the bottom of the paper.
        image.top = std::clamp(paper.height - image.height, 0, kTopMargin);
    }
    image.left = (paper.width - image.width) / 2;
    return image;
}

int PaperLayout::ZoomPercent(const Box& paper, const PaperMetrics& m, int screenDpi) {
    const int actual = MulDiv(m.paperWidth, screenDpi, m.dpiX);
    return actual > 0 ? MulDiv(paper.width, 100, actual) : 0;
}

}  // namespace sonalyx
