#pragma once

#include <QGroupBox>

class QLabel;

namespace sonalyx {

// The part of Panel1 that tells what a comparison shows: which document is the reference
// (with the line styles that tell its curves from the window's own), which difference the
// graphs show, and what could not be matched. Hidden while nothing is compared.
class ReferenceNote : public QGroupBox {
    Q_OBJECT

  public:
    explicit ReferenceNote(QWidget* parent = nullptr);

    // An empty title: no reference; overlaid: the reference's curves are drawn dashed; an
    // empty difference: the graphs show the curves themselves.
    void ShowComparison(const QString& title, bool overlaid, const QString& difference,
                        const QString& unmatched);

    // The same in one line, for the legend of an exported view: the reference ("dashed" when
    // its curves are drawn) and the difference shown; empty while nothing is compared.
    QString Summary() const;

    QLabel* LabelReference() const { return reference_; }
    QLabel* LabelDifference() const { return difference_; }
    QLabel* LabelUnmatched() const { return unmatched_; }

  private:
    QWidget* BuildLineKey();

    QLabel* reference_ = nullptr;
    QWidget* lineKey_ = nullptr;
    QLabel* difference_ = nullptr;
    QLabel* unmatched_ = nullptr;
};

}  // namespace sonalyx
