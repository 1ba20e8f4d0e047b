#pragma once

#include <QHeaderView>

namespace sonalyx {

// The column header of the decay table (DecayTimesModel) in two rows: each band's caption once,
// across all its columns, and below it what each column holds ("Before", "After", "Change").
class DecayHeaderView : public QHeaderView {
    Q_OBJECT

  public:
    explicit DecayHeaderView(QWidget* parent = nullptr);

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

  private:
    // The band's first and last column around a column (a band's columns are adjacent).
    std::pair<int, int> bandSpan(int logicalIndex) const;
    void paintCell(QPainter* painter, const QRect& cell, const QRect& clip, const QString& text,
                   int logicalIndex) const;
};

}  // namespace sonalyx
