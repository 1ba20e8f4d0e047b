#pragma once

#include <QScrollArea>

// The scroll box of the parameter sheet (ScrollBox3). Its panel fills the box when the sheet is
// smaller and keeps the sheet's size when it is larger, so a small sheet sits on a black field
// and a large one scrolls; the wheel and the arrow keys move 32 pixels a step.
class SheetScrollBox : public QScrollArea {
    Q_OBJECT

  public:
    static constexpr int kStep = 32;

    explicit SheetScrollBox(QWidget* parent = nullptr);

    void SetSheetSize(const QSize& size);
    QSize SheetSize() const { return sheetSize_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void FitPanel();

    QSize sheetSize_;
    int wheelRemainder_ = 0;
};
