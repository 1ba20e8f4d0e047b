#pragma once

#include <QWidget>

class QLabel;

// The splash: a borderless picture in the middle of the desktop while the program starts.
class TFormOpenning : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kWidth = 451;
    static constexpr int kHeight = 275;

    explicit TFormOpenning(QWidget* parent = nullptr);

    QLabel* Image1() const { return image_; }

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    QLabel* image_;
};
