#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSet>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <algorithm>

#include "document/document_file.h"
#include "main_form_fixture.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/chart/chart_widget.h"
#include "views/decay/form_decay_times.h"
#include "views/window/mdi_child.h"

namespace {

QStringList captions(const TMainForm& form) {
    QStringList list;
    for (const TMDIChild* child : form.DocumentWindows()) {
        list.append(child->windowTitle());
    }
    return list;
}

void editFileMemo(TMDIChild* child, const QString& text) {
    auto* memo = child->findChild<QPlainTextEdit*>(QStringLiteral("MemoFile1"));
    ASSERT_NE(memo, nullptr);
    memo->appendPlainText(text);
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// One line per menu item: name, caption, shortcut, and whether it is enabled while the frame
// starts and once it has started.
void describeMenu(const QList<QAction*>& actions, const QString& indent,
                  const QMap<QAction*, bool>& enabledAtFirst, QStringList& lines) {
    for (QAction* action : actions) {
        if (action->isSeparator() || (action->objectName().isEmpty() && action->text().isEmpty()))
            continue;
        lines.append(QStringLiteral("%1%2|%3|%4|%5|%6")
                         .arg(indent, action->objectName(), action->text(),
                              action->shortcut().toString(),
                              enabledAtFirst.value(action) ? "on" : "off",
                              action->isEnabled() ? "on" : "off"));
        if (action->menu() != nullptr)
            describeMenu(action->menu()->actions(), indent + "  ", enabledAtFirst, lines);
    }
}

TEST_F(MainFormTest, MenusToolBarAndTheirStatesMatchGolden) {
    MainFormOptions options;
    options.settings = settings_.get();
    options.showSplash = false;
    TMainForm form(options);
    QMap<QAction*, bool> enabledAtFirst;
    for (QAction* action : form.findChildren<QAction*>())
        enabledAtFirst[action] = action->isEnabled();
    ASSERT_TRUE(waitFor([&form] { return form.StartupFinished(); }));

    QStringList lines = {form.windowTitle()};
    describeMenu(form.menuBar()->actions(), QString(), enabledAtFirst, lines);
    lines.append(QStringLiteral("ToolBar1"));
    describeMenu(form.findChild<QToolBar*>(QStringLiteral("ToolBar1"))->actions(), "  ",
                 enabledAtFirst, lines);
    // Actions on no menu or tool bar, by name.
    QList<QAction*> others;
    for (QAction* action : form.findChildren<QAction*>()) {
        if (!action->objectName().isEmpty() &&
            !lines.join('\n').contains(action->objectName() + '|'))
            others.append(action);
    }
    std::sort(others.begin(), others.end(),
              [](QAction* a, QAction* b) { return a->objectName() < b->objectName(); });
    lines.append(QStringLiteral("Elsewhere"));
    describeMenu(others, "  ", enabledAtFirst, lines);
    std::vector<std::string> actual;
    for (const QString& line : lines)
        actual.push_back(line.toStdString());
    sonalyx::test::expectMatchesGolden(sonalyx::test::testDataPath("app/main_window_menus.txt"),
                                       actual);
}

TEST_F(MainFormTest, OpensFromTheOpenDialogAndSavesAs) {
    TMainForm& form = start();
    const QString path = sample(QStringLiteral("7"));
    ModalAnswerer answers;
    answers.choose(QString()).choose(path);
    form.FileOpen1Execute();
    EXPECT_TRUE(form.DocumentWindows().isEmpty());
    form.FileOpen1Execute();
    EXPECT_EQ(captions(form), QStringList{path});
    EXPECT_EQ(form.History().Entries(), QStringList{path});
    EXPECT_EQ(form.findChild<QAction*>(QStringLiteral("HistoryItem0"))->text(), path);
    EXPECT_TRUE(answers.messages().isEmpty());
    EXPECT_TRUE(answers.allUsed());
    EXPECT_TRUE(form.Action(QStringLiteral("FileSave1"))->isEnabled());
    EXPECT_TRUE(form.Action(QStringLiteral("Graph2D"))->isEnabled());
    EXPECT_FALSE(form.Action(QStringLiteral("Graph3D"))->isEnabled());

    // Save As writes a copy, which the window then shows and the history puts first.
    const QString copy = folder_.filePath(QStringLiteral("copy.csv"));
    answers.choose(copy);
    form.FileSaveAs1Execute();
    EXPECT_EQ(form.History().Entries(), (QStringList{copy, path}));
    EXPECT_EQ(captions(form), QStringList{copy});
    EXPECT_EQ(contents(copy), contents(path));
}

TEST_F(MainFormTest, OpensAHistoryItemAndReportsOneThatIsGone) {
    const QString present = sample(QStringLiteral("9"));
    const QString gone = folder_.filePath(QStringLiteral("gone.csv"));
    settings_->setValue(QStringLiteral("FILEHISTORY/COUNT"), 2);
    settings_->setValue(QStringLiteral("FILEHISTORY/PATH0"), gone);
    settings_->setValue(QStringLiteral("FILEHISTORY/PATH1"), present);
    settings_->sync();
    TMainForm& form = start();
    QAction* first = form.findChild<QAction*>(QStringLiteral("HistoryItem0"));
    QAction* second = form.findChild<QAction*>(QStringLiteral("HistoryItem1"));
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(second->text(), present);
    EXPECT_FALSE(form.findChild<QAction*>(QStringLiteral("HistoryItem2"))->isVisible());

    ModalAnswerer answers;
    first->trigger();
    EXPECT_EQ(answers.messages(), QStringList{"The file is not exist.|" + gone});
    second->trigger();
    EXPECT_EQ(captions(form), QStringList{present});
    EXPECT_EQ(form.History().Entries(), (QStringList{present, gone}));
}

// The command line, a drop, the open dialog and both receives stop at nine windows, each with
// one "No more window." however many files it brings.
TEST_F(MainFormTest, EveryWayInStopsAtNineWindowsWithOneMessage) {
    const QStringList files = samples(12);
    ModalAnswerer answers;
    TMainForm& form = start(files.mid(0, 11));
    EXPECT_EQ(answers.messages(), QStringList{"No more window.|"});
    const auto windows = form.MdiArea()->subWindowList(QMdiArea::CreationOrder);
    ASSERT_EQ(windows.size(), 9);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(windows.at(i)->windowTitle(), files.at(i));
    }

    windows.back()->close();
    ASSERT_TRUE(waitFor([&form] { return form.DocumentWindows().size() == 8; }));
    dropFiles(files.mid(9, 3));
    ASSERT_TRUE(waitFor([&] { return answers.messages().size() == 2; }));
    EXPECT_EQ(form.DocumentWindows().size(), 9);
    EXPECT_TRUE(captions(form).contains(files.at(9)));
    EXPECT_FALSE(captions(form).contains(files.at(10)));

    form.FileOpen1Execute();
    form.Action(QStringLiteral("FileReceive"))->trigger();
    form.Action(QStringLiteral("FileOtherReceive"))->trigger();
    EXPECT_EQ(answers.messages(), QStringList(5, QStringLiteral("No more window.|")));
    // The messages were all: no file dialog and no port dialog came up, no receive started.
    EXPECT_TRUE(answers.otherWindows().isEmpty());
    EXPECT_EQ(answers.unexpected(), 5);
    EXPECT_FALSE(form.Receiving());
}

// Command-line files: a relative path opens under its full path; a file that is not a document
// and one that cannot be read are reported, and their windows close without joining the history.
TEST_F(MainFormTest, CommandLineFilesOpenOrAreReported) {
    const QString path = sample(QStringLiteral("5"));
    const QString notes = writeFile(QStringLiteral("notes.csv"), "just some notes\r\n");
    const QString folder = folder_.filePath(QStringLiteral("folder.csv"));
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString previous = QDir::currentPath();
    QDir::setCurrent(folder_.path());
    ModalAnswerer answers;
    TMainForm& form = start({notes, QStringLiteral("layout-5.csv"), folder});
    QDir::setCurrent(previous);
    EXPECT_EQ(answers.messages(),
              (QStringList{"Illegal file format.|" + notes,
                           "Can't read the file. Please close, if it's opened.|" + folder}));
    ASSERT_TRUE(waitFor([&form] { return form.MdiArea()->subWindowList().size() == 1; }));
    EXPECT_EQ(captions(form), QStringList{path});
    EXPECT_EQ(form.History().Entries(), QStringList{path});
}

// Closing the frame asks each modified document, front (the last opened) first: YES saves,
// NO discards, CANCEL keeps that window and the frame; the history is written all the same.
TEST_F(MainFormTest, FrameCloseAsksEachDocumentFrontFirstAndStopsAtCancel) {
    const QString cancelPath = sample(QStringLiteral("9"), QStringLiteral("cancel.csv"));
    const QString noPath = sample(QStringLiteral("7"), QStringLiteral("no.csv"));
    const QString yesPath = sample(QStringLiteral("5"), QStringLiteral("yes.csv"));
    const QByteArray noBefore = contents(noPath);
    TMainForm& form = start({cancelPath, noPath, yesPath});
    for (TMDIChild* child : form.DocumentWindows()) {
        editFileMemo(child, QStringLiteral("second visit"));
    }
    ModalAnswerer answers;
    answers.press(QStringLiteral("YES"))
        .press(QStringLiteral("NO"))
        .press(QStringLiteral("CANCEL"));
    EXPECT_FALSE(form.close());
    EXPECT_EQ(answers.messages(),
              (QStringList{"Save changes to yes.csv ?|", "Save changes to no.csv ?|",
                           "Save changes to cancel.csv ?|"}));
    EXPECT_TRUE(contents(yesPath).contains("second visit"));
    EXPECT_EQ(contents(noPath), noBefore);
    ASSERT_TRUE(waitFor([&form] { return form.DocumentWindows().size() == 1; }));
    EXPECT_EQ(captions(form), QStringList{cancelPath});
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(storedHistory(), (QStringList{yesPath, noPath, cancelPath}));
}

// YES saves under a chosen name, which joins the history; with the dialog cancelled the
// window closes all the same.
TEST_F(MainFormTest, ReceivedDocumentAsksSaveNewDataOnClose) {
    const auto lines = sonalyx::readDocumentLines(sample(QStringLiteral("11")).toStdString());
    ASSERT_TRUE(lines.has_value());
    TMainForm& form = start();
    TMDIChild* cancelled = form.OpenReceivedLines(*lines);
    TMDIChild* saved = form.OpenReceivedLines(*lines);
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(saved->windowTitle(), QStringLiteral("New Data"));
    EXPECT_TRUE(saved->IsModified());

    const QString target = folder_.filePath(QStringLiteral("received.csv"));
    ModalAnswerer answers;
    answers.press(QStringLiteral("YES")).choose(QString());
    EXPECT_TRUE(cancelled->close());
    EXPECT_TRUE(form.History().Entries().isEmpty());
    answers.press(QStringLiteral("YES")).choose(target);
    EXPECT_TRUE(saved->close());
    EXPECT_EQ(answers.messages(), QStringList(2, QStringLiteral("Save New Data ?|")));
    EXPECT_TRUE(answers.allUsed());
    EXPECT_TRUE(QFile::exists(target));
    EXPECT_EQ(form.History().Entries(), QStringList{target});
}

TEST_F(MainFormTest, SaveOfNewDataAsksForANameAndOverwriteNoAsksAgain) {
    const auto lines = sonalyx::readDocumentLines(sample(QStringLiteral("9")).toStdString());
    const QString existing = writeFile(QStringLiteral("taken.csv"), "old");
    const QString fresh = folder_.filePath(QStringLiteral("fresh.csv"));
    TMainForm& form = start();
    form.OpenReceivedLines(*lines);
    ModalAnswerer answers;
    answers.choose(existing).press(QStringLiteral("NO")).choose(fresh);
    form.FileSave1Execute();
    EXPECT_EQ(answers.messages(), QStringList{"Overwrite , OK ?|"});
    EXPECT_EQ(contents(existing), QByteArray("old"));
    EXPECT_TRUE(contents(fresh).startsWith("[DATE]"));
    EXPECT_EQ(captions(form), QStringList{fresh});
    EXPECT_EQ(form.History().Entries(), QStringList{fresh});
    EXPECT_FALSE(form.DocumentWindows().front()->IsModified());
}

TEST_F(MainFormTest, GraphModeSwitchesEveryWindowChannelTypeOnlyTheActive) {
    const QStringList files = samples(3);
    TMainForm& form = start(files.mid(0, 2));
    QAction* graph2D = form.Action(QStringLiteral("Graph2D"));
    QAction* graph3D = form.Action(QStringLiteral("Graph3D"));
    graph2D->trigger();
    EXPECT_FALSE(graph2D->isEnabled());
    EXPECT_TRUE(graph3D->isEnabled());
    for (TMDIChild* child : form.DocumentWindows()) {
        EXPECT_FALSE(child->IsGraph3D());
    }
    form.OpenDocumentFile(files.at(2));
    EXPECT_FALSE(form.ActiveDocument()->IsGraph3D());
    graph3D->trigger();
    for (TMDIChild* child : form.DocumentWindows()) {
        EXPECT_TRUE(child->IsGraph3D());
    }
    EXPECT_TRUE(graph2D->isEnabled());
    EXPECT_FALSE(graph3D->isEnabled());

    // The channel type is the active window's alone.
    TMDIChild* active = form.ActiveDocument();
    form.Action(QStringLiteral("ActionPairCh"))->trigger();
    EXPECT_EQ(active->PairMode(), 1);
    for (TMDIChild* child : form.DocumentWindows()) {
        EXPECT_EQ(child->PairMode(), child == active ? 1 : 0) << child->windowTitle().toStdString();
    }
    form.Action(QStringLiteral("ActionEachCh"))->trigger();
    EXPECT_EQ(active->PairMode(), 0);
}

TEST_F(MainFormTest, DemoRotatesTheActiveDocumentAndClosingTheLastEndsIt) {
    TMainForm& form = start(samples(1));
    QAction* demo = form.Action(QStringLiteral("ActionDemo"));
    const int before = form.ActiveDocument()->RotationPosition();
    demo->setChecked(true);
    EXPECT_EQ(form.TimerTag(), 11);
    ASSERT_TRUE(waitFor([&] { return form.ActiveDocument()->RotationPosition() != before; }));
    demo->setChecked(false);
    EXPECT_NE(form.TimerTag(), 11);

    // Closing the last document disables what needs one.
    form.Action(QStringLiteral("FileClose1"))->trigger();
    ASSERT_TRUE(waitFor([&form] { return form.MdiArea()->subWindowList().isEmpty(); }));
    for (const char* name : {"FileSave1", "FileSaveAs1", "Graph2D", "Graph3D", "ActionDemo"}) {
        EXPECT_FALSE(form.Action(QLatin1String(name))->isEnabled()) << name;
    }
}

TEST_F(MainFormTest, WindowArrangementTilesAndMinimises) {
    TMainForm& form = start(samples(3));
    const QRect area = form.MdiArea()->viewport()->rect();
    form.WindowTileHorizontal1Execute();
    auto windows = form.MdiArea()->subWindowList(QMdiArea::CreationOrder);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(windows.at(i)->geometry(),
                  QRect(0, i * (area.height() / 3), area.width(), area.height() / 3));
    }
    form.WindowTileVertical1Execute();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(windows.at(i)->geometry(),
                  QRect(i * (area.width() / 3), 0, area.width() / 3, area.height()));
    }
    form.WindowMinimizeAll1Execute();
    form.WindowArrangeAll1Execute();
    int left = 0;
    for (QMdiSubWindow* window : windows) {
        EXPECT_TRUE(window->isMinimized());
        EXPECT_EQ(window->geometry().bottom(), area.height() - 1);
        EXPECT_EQ(window->x(), left);
        left += window->width();
    }
}

TEST_F(MainFormTest, HelpOpensTheVersionBoxAndTheGlossary) {
    TMainForm& form = start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    QTest::keyClick(&form, Qt::Key_F1);
    auto* glossary = form.findChild<QWidget*>(QStringLiteral("Glossary"));
    ASSERT_NE(glossary, nullptr);
    EXPECT_TRUE(glossary->isVisible());
    ModalAnswerer answers;
    form.findChild<QAction*>(QStringLiteral("HelpAboutItem"))->trigger();
    EXPECT_EQ(answers.otherWindows(), QStringList{"Version Information"});
}

// Worked from the keyboard (Alt+E), the Edit menu still acts on the memo the user came from.
TEST_F(MainFormTest, EditMenuFromTheKeyboardActsOnTheMemo) {
    TMainForm& form = start({sample(QStringLiteral("5"))});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    auto* memo = form.ActiveDocument()->findChild<QPlainTextEdit*>(QStringLiteral("MemoFile1"));
    memo->setPlainText(QStringLiteral("cut me"));
    memo->setFocus();
    memo->selectAll();
    QTest::keyClick(memo, Qt::Key_E, Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(form.Action(QStringLiteral("EditCut1"))->isEnabled());
    QTest::keyClick(menu, Qt::Key_T);
    EXPECT_EQ(memo->toPlainText(), QString());
}

// The frame starts inside the screen's free area and comes back where it was left, in the
// settings it was given.
TEST_F(MainFormTest, FrameStartsOnTheScreenAndComesBackWhereItWasLeft) {
    const QRect area = start().screen()->availableGeometry();
    EXPECT_TRUE(area.contains(form_->frameGeometry())) << area.width() << "x" << area.height();
    const QRect left(area.topLeft() + QPoint(40, 30), QSize(500, 400));
    form_->setGeometry(left);
    EXPECT_TRUE(form_->close());
    form_.reset();
    EXPECT_EQ(start().geometry(), left);
}

// Display > Decay Times opens the table of the active document, in the window's pair mode,
// and is offered only while a document is open (the menus golden has it off at the start).
TEST_F(MainFormTest, DecayTimesShowsTheActiveDocument) {
    TMainForm& form = start();
    QAction* action = form.Action(QStringLiteral("DisplayDecayTimes"));

    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("5"), QStringLiteral("five.csv"))));
    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("7"), QStringLiteral("seven.csv"))));
    EXPECT_TRUE(action->isEnabled());
    form.ActiveDocument()->SetPairMode(1);

    int rows = -1;
    ModalAnswerer answers;
    answers.inspect([&rows](QWidget& shown) {
        auto* table = qobject_cast<TFormDecayTimes*>(&shown);
        ASSERT_NE(table, nullptr) << shown.windowTitle().toStdString();
        rows = table->Model().rowCount();
    });
    action->trigger();
    const QString title = answers.otherWindows().value(0);
    EXPECT_EQ(title, QStringLiteral("Decay Times - seven.csv"));
    EXPECT_EQ(rows, 4);  // the groups of the seven-channel layout

    form.MdiArea()->closeAllSubWindows();
    EXPECT_FALSE(action->isEnabled());
}

// What the cursor reads off any chart, the Reverb tab's or the Group Delay tab's, shows in the
// status bar; leaving the plot gives the status back. (The readout itself: chart_readout_test.)
TEST_F(MainFormTest, ChartReadoutShowsInTheStatusBar) {
    TMainForm& form = start({sample(QStringLiteral("9"), QStringLiteral("nine.csv"))});
    TMDIChild* child = form.ActiveDocument();
    for (const char* name : {"Chart15", "Chart101"}) {
        auto* chart = child->findChild<sonalyx::chart::ChartWidget*>(QLatin1String(name));
        ASSERT_NE(chart, nullptr) << name;
        emit chart->readoutChanged(QStringLiteral("Left: 20 ms, 74 dB"));
        EXPECT_EQ(form.statusBar()->currentMessage(), QStringLiteral("Left: 20 ms, 74 dB"));
        emit chart->readoutChanged(QString());
        EXPECT_EQ(form.statusBar()->currentMessage(), child->FileName()) << name;
    }
}

// Draws the frame with three documents into build/screenshots/, for a person to look at;
// the checks make sure the picture shows the real windows, not an empty frame.
TEST_F(MainFormTest, ScreenshotWithThreeDocuments) {
    TMainForm& form = start(
        {sample(QStringLiteral("7")), sample(QStringLiteral("10")), sample(QStringLiteral("5"))});
    form.resize(1440, 900);
    ASSERT_EQ(form.DocumentWindows().size(), 3);
    form.WindowCascade1Execute();
    const auto windows = form.MdiArea()->subWindowList(QMdiArea::CreationOrder);
    // A second document on its group delay tab, the front one on its reverb charts.
    qobject_cast<TMDIChild*>(windows.at(1))->PageControl()->setCurrentIndex(1);
    for (int i = 0; i < windows.size(); ++i) {
        windows.at(i)->resize(1060, 640);
    }
    form.MdiArea()->setActiveSubWindow(windows.back());
    waitFor([] { return true; });
    QApplication::processEvents();

    const QImage image = form.grab().toImage();
    ASSERT_TRUE(image.save(
        sonalyx::test::screenshotPath(QStringLiteral("main-window-three-documents.png"))));

    EXPECT_EQ(image.size(), form.size() * image.devicePixelRatio());
    // Many distinct colours: charts, tool bar pictures and text, not a flat frame.
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); x += 3) {
            colours.insert(image.pixel(x, y));
        }
    }
    EXPECT_GT(colours.size(), 500);
}

}  // namespace