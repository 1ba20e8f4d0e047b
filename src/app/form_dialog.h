#pragma once

#include <QDialog>

#include "document/messenger.h"

class QLabel;
class QPushButton;

// The message dialog: every message and question of the program goes through it. Mode 0 shows
// a single OK at design size, mode 1 YES/NO/CANCEL narrowed for short texts, mode 2 a single
// OK with the dialog fitted to its texts.
class TFormDialog : public QDialog {
    Q_OBJECT

  public:
    static constexpr int kDesignWidth = 732;
    static constexpr int kDesignHeight = 110;
    static constexpr int kLabel1Width = 721;
    static constexpr int kLabel2Width = 713;
    static constexpr int kButtonWidth = 65;
    static constexpr int kButtonHeight = 25;

    TFormDialog(const QString& message, const QString& secondLine, sonalyx::MessageMode mode,
                QWidget* parent = nullptr);

    // Shows the dialog modally and returns the answer (YES 6, NO 7, CANCEL 2; OK counts as 1).
    static sonalyx::Answer Show(const QString& message, const QString& secondLine,
                                sonalyx::MessageMode mode, QWidget* parent = nullptr);

    // The narrowing factor of mode 1: 2 when both texts are short, else 1.
    static int ShrinkFactor(const QString& message, const QString& secondLine);

    QLabel* Label1() const { return label1_; }
    QLabel* Label2() const { return label2_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void LayOutDesign();
    void LayOutSingleButton();
    void LayOutNarrowed(int factor);
    void LayOutFitted();
    void PlaceButtonRow(int centreX);
    void SetTexts(const QString& message, const QString& secondLine);
    QPushButton* MakeButton(const QString& objectName, const QString& caption,
                            sonalyx::Answer answer);

    QLabel* label1_;
    QLabel* label2_;
    QPushButton* button1_;
    QPushButton* button2_;
    QPushButton* button3_;
    sonalyx::MessageMode mode_;
    int width_ = kDesignWidth;
};
