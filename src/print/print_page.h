#pragma once

#include <QImage>
#include <QSize>
#include <functional>

class QPainter;

namespace sonalyx {

// One page as it goes to paper. paint() draws it in a space of `size` units (the window's
// pixels, the sheet's pixels) and the printer scales that space to the paper, so lines and
// text are drawn at the printer's own resolution. The preview shows `preview`, a picture of
// the same page. A page without paint() is empty: it takes a place in the list and prints
// nothing.
struct PrintPage {
    QSize size;
    std::function<void(QPainter&)> paint;
    QImage preview;

    bool IsEmpty() const { return !paint || size.isEmpty(); }
    // A page that is a picture and nothing more.
    static PrintPage FromImage(const QImage& image);
};

}  // namespace sonalyx
