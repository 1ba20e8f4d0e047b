#pragma once

#include <QFrame>

#include "views/curve_preview.h"

class QLabel;
class QPlainTextEdit;

namespace sonalyx {

// One channel (or channel group) of the Reverb tab: its name, which measurements it holds, a
// picture of its decay curves and its memo, editable in place.
class ChannelCard : public QFrame {
    Q_OBJECT

  public:
    explicit ChannelCard(QWidget* parent = nullptr);

    void setTitle(const QString& longName, const QString& shortName);
    void setAvailability(bool before, bool after);
    void setCurves(QVector<CurvePreview::Series> series, bool depth);
    void setMemo(const QString& text);
    QString memo() const;
    QPlainTextEdit* memoEditor() const { return memo_; }
    CurvePreview* preview() const { return preview_; }

  signals:
    void memoEdited(const QString& text);

  private:
    QLabel* title_;
    QLabel* badges_;
    CurvePreview* preview_;
    QPlainTextEdit* memo_;
    bool filling_ = false;
};

}  // namespace sonalyx
