#include "print/report_text_block.h"

#include <QFontMetricsF>
#include <QPainter>

#include "print/report_style.h"

namespace sonalyx {

namespace {

constexpr double kRuleGap = 3;
constexpr int kFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

QFont FontOf(ReportTextBlock::Kind kind) {
    switch (kind) {
        case ReportTextBlock::Kind::Heading:
            return ReportStyle::Font(ReportStyle::kHeadingSize, true);
        case ReportTextBlock::Kind::Subheading:
            return ReportStyle::Font(ReportStyle::kSubheadingSize, true);
        case ReportTextBlock::Kind::Note:
            return ReportStyle::Font(ReportStyle::kSmallSize);
        case ReportTextBlock::Kind::Paragraph:
            break;
    }
    return ReportStyle::Font(ReportStyle::kBodySize);
}

}  // namespace

ReportTextBlock::ReportTextBlock(Kind kind, QString text) : kind_(kind), text_(std::move(text)) {}

QRectF ReportTextBlock::TextRect(double width) const {
    return QFontMetricsF(FontOf(kind_)).boundingRect(QRectF(0, 0, width, 1e6), kFlags, text_);
}

double ReportTextBlock::Height(double width) const {
    const double text = TextRect(width).height();
    return kind_ == Kind::Heading ? text + 2 * kRuleGap : text;
}

double ReportTextBlock::SpaceAfter() const {
    return kind_ == Kind::Heading ? 10 : kind_ == Kind::Subheading ? 4 : 8;
}

void ReportTextBlock::Paint(QPainter& painter, const QRectF& rect) const {
    painter.save();
    painter.setFont(FontOf(kind_));
    painter.setPen(kind_ == Kind::Note ? ReportStyle::Muted() : ReportStyle::Ink());
    painter.drawText(rect, kFlags, text_);
    if (kind_ == Kind::Heading) {
        painter.setPen(QPen(ReportStyle::Rule(), 0.8));
        const double y = rect.top() + TextRect(rect.width()).height() + kRuleGap;
        painter.drawLine(QPointF(rect.left(), y), QPointF(rect.right(), y));
    }
    painter.restore();
}

}  // namespace sonalyx
