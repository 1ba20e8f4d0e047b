#include <gtest/gtest.h>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "app/form_dialog.h"
#include "modal_answerer.h"
#include "support/golden.h"

namespace {

using sonalyx::Answer;
using sonalyx::MessageMode;

QString rect(const QRect& r) {
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

// The layouts at design size (mode 0), halved for short texts or kept for long ones (mode 1):
// the dialog, its labels and visible buttons with their texts and places, one section each.
TEST(FormDialogTest, LayoutsMatchGolden) {
    const QString x360(360, 'x'), x400(400, 'x'), y357(357, 'y');
    const auto ync = MessageMode::YesNoCancel;
    const struct {
        const char* name;
        QString first, second;
        MessageMode mode;
    } rows[] = {{"ok", "Illegal file format.", "/x/run.csv", MessageMode::Ok},
                {"yes no cancel, short", "Save changes to run1.csv ?", {}, ync},
                {"yes no cancel, 360 characters", x360, {}, ync},
                {"yes no cancel, 400 characters", x400, {}, ync},
                {"yes no cancel, long second line", "short", y357, ync}};
    std::vector<sonalyx::test::GoldenSection> sections;
    for (const auto& r : rows) {
        TFormDialog dialog(r.first, r.second, r.mode);
        auto& lines = sections.emplace_back(r.name, std::vector<std::string>{}).second;
        lines.push_back(QStringLiteral("%1 %2x%3 shrink %4")
                            .arg(dialog.windowTitle())
                            .arg(dialog.width())
                            .arg(dialog.height())
                            .arg(TFormDialog::ShrinkFactor(r.first, r.second))
                            .toStdString());
        // The whole text stays in the tool tip where the label cannot show it all.
        for (const QLabel* label : {dialog.Label1(), dialog.Label2()})
            lines.push_back((rect(label->geometry()) + " " + label->text().left(40) + " | " +
                             label->toolTip().left(40))
                                .toStdString());
        for (const char* name : {"Button1", "Button2", "Button3"}) {
            const auto* button = dialog.findChild<QPushButton*>(QLatin1String(name));
            if (button->isVisibleTo(&dialog))
                lines.push_back((rect(button->geometry()) + " " + button->text()).toStdString());
        }
    }
    sonalyx::test::expectSectionsMatchGolden(sonalyx::test::testDataPath("app/form_dialog.txt"),
                                             sections);
}

// Mode 2 fits the dialog to its text, whatever the font.
TEST(FormDialogTest, ModeTwoFitsTheDialogToItsText) {
    TFormDialog shortOne("No more window.", {}, MessageMode::OkFitted);
    TFormDialog longer(QString("No more window. ").repeated(5), {}, MessageMode::OkFitted);
    EXPECT_LT(shortOne.width(), 732);
    EXPECT_GT(longer.width(), shortOne.width());
    EXPECT_GE(longer.Label1()->width(),
              longer.Label1()->fontMetrics().horizontalAdvance(longer.Label1()->text()));
    const auto* ok = shortOne.findChild<QPushButton*>(QStringLiteral("Button2"));
    EXPECT_EQ(ok->text(), QStringLiteral("OK"));
    EXPECT_EQ(ok->geometry().center().x(), shortOne.width() / 2);
}

TEST(FormDialogTest, ShowReturnsTheButtonPressed) {
    ModalAnswerer answers;
    answers.press(QStringLiteral("YES"))
        .press(QStringLiteral("NO"))
        .press(QStringLiteral("CANCEL"));
    answers.press(QStringLiteral("OK"));
    const auto ync = MessageMode::YesNoCancel;
    EXPECT_EQ(TFormDialog::Show("Q1", {}, ync), Answer::Yes);
    EXPECT_EQ(TFormDialog::Show("Q2", {}, ync), Answer::No);
    EXPECT_EQ(TFormDialog::Show("Q3", {}, ync), Answer::Cancel);
    EXPECT_EQ(TFormDialog::Show("M", "two", MessageMode::Ok), Answer::Ok);
    EXPECT_EQ(answers.messages(), (QStringList{"Q1|", "Q2|", "Q3|", "M|two"}));
    EXPECT_EQ(answers.unexpected(), 0);

    // The keys answer too, wherever the focus stands; a message has only its OK.
    const std::tuple<MessageMode, Qt::Key, int> keys[] = {{ync, Qt::Key_Y, 6},
                                                          {ync, Qt::Key_N, 7},
                                                          {ync, Qt::Key_C, 2},
                                                          {MessageMode::Ok, Qt::Key_N, 0}};
    for (const auto& [mode, key, result] : keys) {
        TFormDialog dialog("Q", {}, mode);
        dialog.show();
        QTest::keyClick(dialog.findChild<QPushButton*>(QStringLiteral("Button2")), key);
        EXPECT_EQ(dialog.result(), result) << key;
    }
}

}  // namespace
