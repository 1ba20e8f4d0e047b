#include <gtest/gtest.h>
#include <QLabel>
#include <QPushButton>

#include "app/form_dialog.h"
#include "modal_answerer.h"

namespace {

using sonalyx::Answer;
using sonalyx::MessageMode;

QPushButton* button(const TFormDialog& dialog, const char* name) {
    return dialog.findChild<QPushButton*>(QLatin1String(name));
}

TEST(FormDialogTest, ModeZeroIsASingleOkAtDesignSize) {
    TFormDialog dialog(QStringLiteral("Illegal file format."), QStringLiteral("/x/run.csv"),
                       MessageMode::Ok);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Sonalyx"));
    EXPECT_EQ(dialog.size(), QSize(732, 110));
    EXPECT_FALSE(button(dialog, "Button1")->isVisibleTo(&dialog));
    EXPECT_FALSE(button(dialog, "Button3")->isVisibleTo(&dialog));
    EXPECT_EQ(button(dialog, "Button2")->text(), QStringLiteral("OK"));
    EXPECT_EQ(button(dialog, "Button2")->size(), QSize(65, 25));
    EXPECT_EQ(dialog.Label1()->text(), QStringLiteral("Illegal file format."));
    EXPECT_EQ(dialog.Label2()->text(), QStringLiteral("/x/run.csv"));
}

TEST(FormDialogTest, ModeOneNarrowsForShortTexts) {
    TFormDialog dialog(QStringLiteral("Save changes to run1.csv ?"), QString(),
                       MessageMode::YesNoCancel);
    EXPECT_EQ(dialog.width(), 732 / 2);
    EXPECT_EQ(dialog.Label1()->width(), 721 / 2);
    EXPECT_EQ(dialog.Label2()->width(), 713 / 2);
    EXPECT_EQ(dialog.Label1()->x(), 2);
    EXPECT_EQ(dialog.Label2()->x(), 2);
    const QRect yes = button(dialog, "Button1")->geometry();
    const QRect no = button(dialog, "Button2")->geometry();
    const QRect cancel = button(dialog, "Button3")->geometry();
    EXPECT_EQ(no.center().x(), dialog.width() / 2);
    EXPECT_EQ(no.left() - yes.right() - 1, 4);
    EXPECT_EQ(cancel.left() - no.right() - 1, 4);
    EXPECT_EQ(button(dialog, "Button1")->text(), QStringLiteral("YES"));
    EXPECT_EQ(button(dialog, "Button2")->text(), QStringLiteral("NO"));
    EXPECT_EQ(button(dialog, "Button3")->text(), QStringLiteral("CANCEL"));
}

TEST(FormDialogTest, ModeOneKeepsDesignWidthForLongTexts) {
    const QString longText(400, QLatin1Char('x'));
    EXPECT_EQ(TFormDialog::ShrinkFactor(longText, QString()), 1);
    EXPECT_EQ(TFormDialog::ShrinkFactor(QString(360, QLatin1Char('x')), QString()), 2);
    EXPECT_EQ(TFormDialog::ShrinkFactor(QStringLiteral("short"), QString(357, QLatin1Char('y'))),
              1);
    TFormDialog dialog(longText, QString(), MessageMode::YesNoCancel);
    EXPECT_EQ(dialog.width(), 732);
    EXPECT_EQ(dialog.Label1()->width(), 721);
    // The whole text stays available even where the label cannot show it all.
    EXPECT_EQ(dialog.Label1()->toolTip(), longText);
}

TEST(FormDialogTest, ModeTwoFitsTheDialogToItsText) {
    TFormDialog shortOne(QStringLiteral("No more window."), QString(), MessageMode::OkFitted);
    TFormDialog longer(QStringLiteral("No more window. No more window. No more window. "
                                      "No more window. No more window."),
                       QString(), MessageMode::OkFitted);
    EXPECT_LT(shortOne.width(), 732);
    EXPECT_GT(longer.width(), shortOne.width());
    EXPECT_GE(longer.Label1()->width(),
              longer.Label1()->fontMetrics().horizontalAdvance(longer.Label1()->text()));
    EXPECT_EQ(button(shortOne, "Button2")->text(), QStringLiteral("OK"));
    EXPECT_EQ(button(shortOne, "Button2")->geometry().center().x(), shortOne.width() / 2);
}

TEST(FormDialogTest, ShowReturnsTheButtonPressed) {
    ModalAnswerer answers;
    answers.press(QStringLiteral("YES"))
        .press(QStringLiteral("NO"))
        .press(QStringLiteral("CANCEL"));
    answers.press(QStringLiteral("OK"));
    EXPECT_EQ(TFormDialog::Show(QStringLiteral("Q1"), {}, MessageMode::YesNoCancel), Answer::Yes);
    EXPECT_EQ(TFormDialog::Show(QStringLiteral("Q2"), {}, MessageMode::YesNoCancel), Answer::No);
    EXPECT_EQ(TFormDialog::Show(QStringLiteral("Q3"), {}, MessageMode::YesNoCancel),
              Answer::Cancel);
    EXPECT_EQ(TFormDialog::Show(QStringLiteral("M"), QStringLiteral("two"), MessageMode::Ok),
              Answer::Ok);
    EXPECT_EQ(answers.messages(), (QStringList{"Q1|", "Q2|", "Q3|", "M|two"}));
    EXPECT_EQ(answers.unexpected(), 0);
}

}  // namespace
