#pragma once

#include <QToolButton>

namespace sonalyx {

// A glyph button of the view controls. Besides clicked() it reports the raw mouse press,
// release and leave, which drive the auto-repeat of its step.
class StepButton : public QToolButton {
    Q_OBJECT

  public:
    StepButton(Qt::ArrowType arrow, QWidget* parent = nullptr);

  signals:
    void mouseDown();
    void mouseUp();
    void mouseLeave();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    bool inside_ = false;
};

}  // namespace sonalyx
