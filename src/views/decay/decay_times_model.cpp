#include "views/decay/decay_times_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>

#include "document/text_format.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

const QString kNone = QStringLiteral("\u2014");

QString kindCaption(DecayTimesModel::Kind kind) {
    switch (kind) {
        case DecayTimesModel::kBefore:
            return QObject::tr("Before");
        case DecayTimesModel::kAfter:
            return QObject::tr("After");
        default:
            return QObject::tr("Change");
    }
}

QString fixed(double value, int decimals) {
    return QString::fromStdString(formatFixed(value, decimals));
}

}  // namespace

DecayTimesModel::DecayTimesModel(QObject* parent) : QAbstractTableModel(parent) {
    sets_.push_back({});
}

void DecayTimesModel::setTable(DecayTable table) {
    beginResetModel();
    sets_.clear();
    sets_.push_back({QString(), std::move(table)});
    endResetModel();
}

void DecayTimesModel::addColumnSet(const QString& caption, DecayTable table) {
    beginResetModel();
    sets_.push_back({caption, std::move(table)});
    endResetModel();
}

void DecayTimesModel::setFigure(Figure figure) {
    if (figure == figure_)
        return;
    figure_ = figure;
    if (rowCount() == 0 || columnCount() == 0)
        return;
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

int DecayTimesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table().items.size());
}

int DecayTimesModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return static_cast<int>(table().bands.size() * sets_.size()) * kKinds;
}

DecayTimesModel::ColumnRole DecayTimesModel::columnRole(int column) const {
    const int sets = static_cast<int>(sets_.size());
    return {column / (kKinds * sets), (column / kKinds) % sets, static_cast<Kind>(column % kKinds)};
}

std::optional<double> DecayTimesModel::value(int row, const ColumnRole& role) const {
    const DecayTable& own = table();
    const DecayCell* cell =
        role.set == 0
            ? &own.cells[static_cast<size_t>(row)][static_cast<size_t>(role.band)]
            : sets_[static_cast<size_t>(role.set)].table.find(
                  own.items[static_cast<size_t>(row)], own.bands[static_cast<size_t>(role.band)]);
    if (cell == nullptr)
        return std::nullopt;
    const bool rate = figure_ == Figure::Rate;
    if (role.kind == kChange)
        return rate ? cell->rateChange() : cell->rt60Change();
    const auto& estimate = cell->variant(role.kind == kBefore ? 0 : 1);
    if (!estimate)
        return std::nullopt;
    return rate ? estimate->rate : estimate->rt60Ms;
}

QString DecayTimesModel::figureText(const std::optional<double>& value, bool signedChange) const {
    if (!value)
        return kNone;
    const QString text = fixed(*value, figure_ == Figure::Rate ? 1 : 0);
    return signedChange && *value > 0 ? QLatin1Char('+') + text : text;
}

QString DecayTimesModel::toolTip(int row, const ColumnRole& role) const {
    const DecayTable& own = table();
    QString where = MemoCodec::decodeLine(own.items[static_cast<size_t>(row)]) +
                    QStringLiteral(", ") +
                    MemoCodec::decodeLine(own.bands[static_cast<size_t>(role.band)]);
    const QString& caption = sets_[static_cast<size_t>(role.set)].caption;
    if (!caption.isEmpty())
        where += QStringLiteral(" (%1)").arg(caption);
    const std::optional<double> shown = value(row, role);
    if (!shown)
        return tr("%1: no decay time (no data, or the curve does not fall)").arg(where);
    const QString unit = figure_ == Figure::Rate ? tr("dB/s") : tr("ms");
    return QStringLiteral("%1, %2: %3 %4")
        .arg(where, kindCaption(role.kind).toLower(), figureText(shown, role.kind == kChange),
             unit);
}

QVariant DecayTimesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    const ColumnRole column = columnRole(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return figureText(value(index.row(), column), column.kind == kChange);
        case Qt::ToolTipRole:
            return toolTip(index.row(), column);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::ForegroundRole:
            if (!value(index.row(), column))
                return QBrush(QColor(150, 150, 150));
            return {};
        case Qt::FontRole:
            // Another document's figures in italics, so a glance tells them from this one's.
            if (column.set > 0) {
                QFont font;
                font.setItalic(true);
                return font;
            }
            return {};
        case Qt::BackgroundRole:
            // Every other band tinted, so the three columns of a band read as one.
            if (column.band % 2 == 1)
                return QBrush(QColor(236, 242, 250));
            return {};
        default:
            return {};
    }
}

QVariant DecayTimesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool ours = role == Qt::DisplayRole || role == kBandRole || role == kKindRole;
    if (!ours)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole || section < 0 || section >= rowCount())
            return {};
        return MemoCodec::decodeLine(table().items[static_cast<size_t>(section)]);
    }
    if (section < 0 || section >= columnCount())
        return {};
    const ColumnRole column = columnRole(section);
    const QString band = MemoCodec::decodeLine(table().bands[static_cast<size_t>(column.band)]);
    if (role == kBandRole)
        return band;
    const QString& caption = sets_[static_cast<size_t>(column.set)].caption;
    QString kind = kindCaption(column.kind);
    if (!caption.isEmpty())
        kind = caption + QLatin1Char(' ') + kind.toLower();
    return role == kKindRole ? kind : band + QLatin1Char('\n') + kind;
}

}  // namespace sonalyx
