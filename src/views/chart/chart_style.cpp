#include "views/chart/chart_style.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace sonalyx::chart {

struct ChartStyle::FontEntry {
    explicit FontEntry(int pixelSize) : font(makeFont(pixelSize)), metrics(font) {}

    static QFont makeFont(int pixelSize) {
        QFont f(QStringLiteral("Arial"));
        f.setStyleHint(QFont::SansSerif);
        f.setPixelSize(pixelSize);
        return f;
    }

    QFont font;
    QFontMetricsF metrics;
    QHash<QString, double> widths;
};

namespace {

constexpr int kMinPixelSize = 9;
constexpr int kMaxPixelSize = 16;
constexpr qsizetype kWidthCacheLimit = 4096;

ChartColours screenColours(const ChartModel& model) {
    ChartColours c;
    c.background = model.background;
    c.backWall = model.walls.back;
    c.leftWall = model.walls.left;
    c.bottomWall = model.walls.bottom;
    c.edges = model.walls.lines;
    // The dark shadow colour of the walls is too faint for a dotted grid on black.
    c.grid = model.walls.lines.lighter(150);
    c.labels = model.axisLabelColour;
    c.leftTitle = model.left.titleColour;
    c.bottomTitle = model.bottom.titleColour;
    c.depthTitle = model.depth.titleColour;
    return c;
}

ChartColours paperColours() {
    ChartColours c;
    c.background = Qt::white;
    c.backWall = c.leftWall = c.bottomWall = QColor(238, 238, 238);
    c.edges = QColor(150, 150, 150);
    c.grid = Qt::black;
    c.labels = c.leftTitle = c.bottomTitle = c.depthTitle = Qt::black;
    return c;
}

}  // namespace

ChartStyle::ChartStyle(const ChartModel& model, const QRectF& rect,
                       const ChartAppearance& appearance)
    : colours_(appearance.paper ? paperColours() : screenColours(model)) {
    // Fonts are made on first use and kept: there are only a handful of sizes.
    static std::map<int, std::unique_ptr<FontEntry>> cache;
    const int size = pixelSizeFor(rect);
    auto& slot = cache[size];
    if (!slot) {
        slot = std::make_unique<FontEntry>(size);
    }
    entry_ = slot.get();
    lineHeight_ = entry_->metrics.height();
    ascent_ = entry_->metrics.ascent();
    gap_ = std::max(2.0, std::round(lineHeight_ * 0.3));
}

const QFont& ChartStyle::font() const {
    return entry_->font;
}

double ChartStyle::textWidth(const QString& text) const {
    const auto it = entry_->widths.constFind(text);
    if (it != entry_->widths.constEnd()) {
        return *it;
    }
    if (entry_->widths.size() > kWidthCacheLimit) {
        entry_->widths.clear();
    }
    const double width = entry_->metrics.horizontalAdvance(text);
    entry_->widths.insert(text, width);
    return width;
}

int ChartStyle::pixelSizeFor(const QRectF& rect) {
    const double bySize = std::min(rect.width() / 40.0, rect.height() / 24.0);
    return std::clamp(static_cast<int>(std::lround(bySize)), kMinPixelSize, kMaxPixelSize);
}

}  // namespace sonalyx::chart
