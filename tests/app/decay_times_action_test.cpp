#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "main_form_fixture.h"
#include "views/form_decay_times.h"
#include "views/mdi_child.h"

// Display > Decay Times opens the table of the active document, in the window's pair mode,
// and is offered only while a document is open.
TEST_F(MainFormTest, DecayTimesShowsTheActiveDocument) {
    TMainForm& form = start();
    QAction* action = form.Action(QStringLiteral("DisplayDecayTimes"));
    ASSERT_NE(action, nullptr);
    EXPECT_FALSE(action->isEnabled());
    QMenu* display = form.menuBar()->actions().at(2)->menu();
    EXPECT_TRUE(display->actions().contains(action));

    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("5"), QStringLiteral("five.csv"))));
    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("7"), QStringLiteral("seven.csv"))));
    EXPECT_TRUE(action->isEnabled());
    form.ActiveDocument()->SetPairMode(1);

    QString title;
    int rows = -1;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* shown = qobject_cast<TFormDecayTimes*>(QApplication::activeModalWidget())) {
            title = shown->windowTitle();
            rows = shown->Model().rowCount();
            shown->reject();
        }
    });
    answer.start(5);
    action->trigger();
    EXPECT_EQ(title, QStringLiteral("Decay Times - seven.csv"));
    EXPECT_EQ(rows, 4);  // the groups of the seven-channel layout

    form.MdiArea()->closeAllSubWindows();
    EXPECT_FALSE(action->isEnabled());
}
