#pragma once

#include <QLabel>

namespace sonalyx {

// A toggle drawn as a panel whose bevel shows the state: lowered while pressed, raised
// otherwise. The owner decides what a click means and sets the state itself.
class PanelButton : public QLabel {
    Q_OBJECT

  public:
    PanelButton(const QString& caption, QWidget* parent = nullptr);

    void setPressed(bool pressed);
    bool isPressed() const { return pressed_; }

  signals:
    void clicked();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool pressed_ = false;
};

}  // namespace sonalyx
