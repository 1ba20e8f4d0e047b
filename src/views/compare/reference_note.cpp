#include "views/compare/reference_note.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>

namespace sonalyx {

namespace {

constexpr int kKeyWidth = 28;
constexpr int kKeyHeight = 10;

// A short line in the style of the curves: solid for the document, dashed for the reference.
QPixmap LineSample(Qt::PenStyle style, const QColor& colour) {
    QPixmap sample(kKeyWidth, kKeyHeight);
    sample.fill(Qt::transparent);
    QPainter painter(&sample);
    QPen pen(colour, 1.5, style);
    painter.setPen(pen);
    painter.drawLine(QPointF(1, kKeyHeight / 2.0), QPointF(kKeyWidth - 1, kKeyHeight / 2.0));
    return sample;
}

QLabel* WrappedLabel(const QString& name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

ReferenceNote::ReferenceNote(QWidget* parent) : QGroupBox(tr("Compare"), parent) {
    setObjectName(QStringLiteral("PanelReference"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 4);
    layout->setSpacing(3);
    reference_ = WrappedLabel(QStringLiteral("LabelReference"), this);
    layout->addWidget(reference_);
    lineKey_ = BuildLineKey();
    layout->addWidget(lineKey_);
    difference_ = WrappedLabel(QStringLiteral("LabelDifference"), this);
    difference_->setStyleSheet(QStringLiteral("color:#9fd4ff;"));
    layout->addWidget(difference_);
    unmatched_ = WrappedLabel(QStringLiteral("LabelUnmatched"), this);
    unmatched_->setStyleSheet(QStringLiteral("color:#e8b450; font-size:8pt;"));
    layout->addWidget(unmatched_);
    hide();
}

QWidget* ReferenceNote::BuildLineKey() {
    auto* key = new QWidget(this);
    key->setObjectName(QStringLiteral("ReferenceLineKey"));
    auto* grid = new QGridLayout(key);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(1);
    const QColor colour(201, 206, 214);
    const struct {
        Qt::PenStyle style;
        QColor colour;
        QString text;
    } rows[] = {{Qt::SolidLine, colour, tr("this document")},
                {Qt::DashLine, colour.lighter(120), tr("reference")}};
    int row = 0;
    for (const auto& entry : rows) {
        auto* sample = new QLabel(key);
        sample->setPixmap(LineSample(entry.style, entry.colour));
        grid->addWidget(sample, row, 0);
        auto* text = new QLabel(entry.text, key);
        text->setStyleSheet(QStringLiteral("font-size:8pt;"));
        grid->addWidget(text, row, 1);
        ++row;
    }
    grid->setColumnStretch(1, 1);
    return key;
}

void ReferenceNote::ShowComparison(const QString& title, bool overlaid, const QString& difference,
                                   const QString& unmatched) {
    const bool reference = !title.isEmpty();
    reference_->setText(reference ? tr("Reference: %1").arg(title) : QString());
    reference_->setToolTip(reference_->text());
    reference_->setVisible(reference);
    lineKey_->setVisible(overlaid);
    difference_->setText(difference);
    difference_->setVisible(!difference.isEmpty());
    unmatched_->setText(unmatched);
    unmatched_->setVisible(reference && !unmatched.isEmpty());
    setVisible(reference || !difference.isEmpty());
}

QString ReferenceNote::Summary() const {
    // The texts, not the labels' visibility: a note never shown yet has its labels unhidden.
    QStringList parts;
    if (!reference_->text().isEmpty()) {
        parts << reference_->text() + (lineKey_->isVisibleTo(this) ? tr(" (dashed)") : QString());
    }
    if (!difference_->text().isEmpty()) {
        parts << difference_->text();
    }
    return parts.join(QStringLiteral("   "));
}

}  // namespace sonalyx
