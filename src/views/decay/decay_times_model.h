#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <vector>

#include "document/decay_table.h"

namespace sonalyx {

// The decay table for a table view: one row per channel or group; for every band, each column
// set's before, after and change. The document's own figures are the first set; a second
// document's (a reference) can follow as another set, matched by item and band name.
class DecayTimesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum class Figure { Rt60, Rate };
    enum Kind { kBefore = 0, kAfter = 1, kChange = 2, kKinds = 3 };
    // Column header roles besides the display text ("1k\nBefore"): its two lines apart.
    enum HeaderRole { kBandRole = Qt::UserRole + 1, kKindRole };

    explicit DecayTimesModel(QObject* parent = nullptr);

    // The document's table; any further column sets are dropped.
    void setTable(DecayTable table);
    // Adds a set of columns for another document under a caption ("Reference").
    void addColumnSet(const QString& caption, DecayTable table);
    void setFigure(Figure figure);
    Figure figure() const { return figure_; }
    const DecayTable& table() const { return sets_.front().table; }
    // The second set's table, when there is one.
    const DecayTable* reference() const { return sets_.size() > 1 ? &sets_[1].table : nullptr; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    // What a column shows.
    struct ColumnRole {
        int band;
        int set;
        Kind kind;
    };
    ColumnRole columnRole(int column) const;
    // The text of a figure as the table shows it ("739", "-81.2", "+12", "—").
    QString figureText(const std::optional<double>& value, bool signedChange) const;

  private:
    struct ColumnSet {
        QString caption;
        DecayTable table;
    };
    std::optional<double> value(int row, const ColumnRole& role) const;
    QString toolTip(int row, const ColumnRole& role) const;

    std::vector<ColumnSet> sets_;
    Figure figure_ = Figure::Rt60;
};

}  // namespace sonalyx
