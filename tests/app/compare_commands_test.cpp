#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "app/form_compare.h"
#include "main_form_fixture.h"
#include "views/window/mdi_child.h"

// Display > Compare With picks another open document in the chooser; the comparison outlives
// the window it came from; Difference needs a reference, After minus Before does not, and
// Compare Off ends the reference and its difference.
TEST_F(MainFormTest, CompareCommandsFollowTheActiveDocument) {
    TMainForm& form = start();
    QAction* with = form.Action(QStringLiteral("DisplayCompareWith"));
    QAction* off = form.Action(QStringLiteral("DisplayCompareOff"));
    QAction* difference = form.Action(QStringLiteral("DisplayDifference"));
    QAction* step = form.Action(QStringLiteral("DisplayAfterMinusBefore"));
    ASSERT_TRUE(with && off && difference && step);
    EXPECT_FALSE(with->isEnabled() || step->isEnabled());

    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("5"), QStringLiteral("five.csv"))));
    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("7"), QStringLiteral("seven.csv"))));
    TMDIChild* seven = form.ActiveDocument();
    EXPECT_TRUE(with->isEnabled() && step->isEnabled());
    EXPECT_FALSE(off->isEnabled() || difference->isEnabled());

    QStringList offered;
    ModalAnswerer answers;
    answers.inspect([&offered](QWidget& shown) {
        auto* chooser = qobject_cast<TFormCompare*>(&shown);
        ASSERT_NE(chooser, nullptr) << shown.windowTitle().toStdString();
        QListWidget* list = chooser->ListDocuments();
        for (int i = 0; i < list->count(); ++i) {
            offered.append(list->item(i)->text());
        }
        list->setCurrentRow(0);
    });
    with->trigger();
    EXPECT_EQ(offered, (QStringList{QStringLiteral("five.csv"), QStringLiteral("Other file…")}));
    ASSERT_NE(seven->Reference(), nullptr);
    EXPECT_EQ(seven->ReferenceTitle(), QStringLiteral("five.csv"));
    EXPECT_TRUE(off->isEnabled() && difference->isEnabled());

    for (QMdiSubWindow* window : form.MdiArea()->subWindowList()) {
        if (window != seven) {
            window->close();
        }
    }
    QApplication::processEvents();
    form.MdiArea()->setActiveSubWindow(seven);
    ASSERT_NE(seven->Reference(), nullptr);
    EXPECT_EQ(seven->Reference()->channelCount, 5);

    difference->trigger();
    EXPECT_EQ(seven->Difference(), TMDIChild::DifferenceMode::FromReference);
    step->trigger();
    EXPECT_EQ(seven->Difference(), TMDIChild::DifferenceMode::AfterMinusBefore);
    EXPECT_TRUE(step->isChecked() && !difference->isChecked());
    difference->trigger();
    off->trigger();
    EXPECT_EQ(seven->Reference(), nullptr);
    EXPECT_EQ(seven->Difference(), TMDIChild::DifferenceMode::Off);
    EXPECT_FALSE(difference->isEnabled() || difference->isChecked() || off->isEnabled());
}
