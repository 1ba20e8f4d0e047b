#include "views/decay/decay_header_view.h"

#include <QPainter>
#include <QStyleOptionHeader>

#include "views/decay/decay_times_model.h"

namespace sonalyx {

DecayHeaderView::DecayHeaderView(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setDefaultAlignment(Qt::AlignCenter);
    // A band's caption is centred over all its columns, so a resized column moves it.
    connect(this, &QHeaderView::sectionResized, this, [this] { viewport()->update(); });
}

std::pair<int, int> DecayHeaderView::bandSpan(int logicalIndex) const {
    const auto bandOf = [this](int column) {
        return model()->headerData(column, Qt::Horizontal, DecayTimesModel::kBandRole);
    };
    const QVariant band = bandOf(logicalIndex);
    int first = logicalIndex;
    int last = logicalIndex;
    while (first > 0 && bandOf(first - 1) == band)
        --first;
    while (last + 1 < count() && bandOf(last + 1) == band)
        ++last;
    return {first, last};
}

void DecayHeaderView::paintCell(QPainter* painter, const QRect& cell, const QRect& clip,
                                const QString& text, int logicalIndex) const {
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = cell;
    option.section = logicalIndex;
    option.text = text;
    option.textAlignment = Qt::AlignCenter;
    option.position = QStyleOptionHeader::Middle;
    painter->save();
    painter->setClipRect(clip);
    style()->drawControl(QStyle::CE_Header, &option, painter, this);
    painter->restore();
}

void DecayHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    if (model() == nullptr || !rect.isValid())
        return;
    const int half = rect.height() / 2;
    const QRect lower(rect.left(), rect.top() + half, rect.width(), rect.height() - half);
    const QRect upper(rect.left(), rect.top(), rect.width(), half);

    // Every column of a band draws its share of one cell that spans them all.
    const auto [first, last] = bandSpan(logicalIndex);
    const int left = sectionViewportPosition(first);
    const int right = sectionViewportPosition(last) + sectionSize(last);
    const QRect band(left, rect.top(), right - left, half);
    paintCell(
        painter, band, upper,
        model()->headerData(logicalIndex, Qt::Horizontal, DecayTimesModel::kBandRole).toString(),
        logicalIndex);
    paintCell(
        painter, lower, lower,
        model()->headerData(logicalIndex, Qt::Horizontal, DecayTimesModel::kKindRole).toString(),
        logicalIndex);
}

}  // namespace sonalyx
