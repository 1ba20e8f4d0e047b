#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <regex>

#include "app/main_form.h"
#include "modal_answerer.h"
#include "print/form_print.h"
#include "print/form_print_multi.h"
#include "print/print_command.h"
#include "print/print_environment.h"
#include "print/print_pages.h"
#include "print/report_command.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/parameters/parameters_view.h"

using sonalyx::test::DocumentWindow;
using sonalyx::test::sampleLines;

namespace {

// A printer and a screen this machine doesn't have; modal windows are noted and answered.
class StandInEnvironment : public sonalyx::PrintEnvironment {
  public:
    bool HasPrinter() const override { return printer; }
    QSize ScreenSize(const QWidget*) const override { return screen; }
    int RunModal(QDialog& dialog) override {
        modals.append(dialog.objectName());
        return answer ? answer(dialog) : QDialog::Rejected;
    }
    bool printer = true;
    QSize screen{1600, 1200};
    QStringList modals;
    std::function<int(QDialog&)> answer;
};

// The sample's lines with a part left out: the sections from the first line starting with
// `from` up to (not including) the one starting with `to` (empty: to the end).
std::vector<std::string> Without(std::vector<std::string> lines, const std::string& from,
                                 const std::string& to) {
    auto begin = std::find_if(lines.begin(), lines.end(),
                              [&](const std::string& l) { return l.rfind(from, 0) == 0; });
    auto end = to.empty() ? lines.end()
                          : std::find_if(begin + 1, lines.end(),
                                         [&](const std::string& l) { return l.rfind(to, 0) == 0; });
    lines.erase(begin, end);
    return lines;
}

const std::string kGroupDelay = "  \"Group Delay Characteristics\"";
const std::string kParameters = "  \"TORVE Parameters\"";
const std::string kMemo1 = "[MEMO1]";

int CountPdfPages(const QString& path) {
    QFile file(path);
    const std::string bytes = file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
    const std::regex page("/Type\\s*/Page[^s]");
    return static_cast<int>(
        std::distance(std::sregex_iterator(bytes.begin(), bytes.end(), page), {}));
}

void SaveScreenshot(QWidget& window, const QString& name) {
    QApplication::processEvents();
    EXPECT_TRUE(window.grab().save(sonalyx::test::screenshotPath(name))) << name.toStdString();
}

TEST(PrintCommand, ChecksRefuseInOrderAndGiveTheCursorBack) {
    enum Doc { Full, ReverbOnly, ParametersOnly };
    // clang-format off
    // message: what the user is told; empty when the preview opens.
    struct Row { const char* name; Doc doc; int tab; bool freq; int combo; bool printer; const char* message; };
    // clang-format on
    const Row rows[] = {
        {"reverb tab without reverb data", ParametersOnly, 0, false, 1, true, "No data."},
        {"all channels", Full, 0, false, 0, true, "Select the channel."},
        {"all bands", Full, 0, true, 0, true, "Select the frequency."},
        {"no group delay", ReverbOnly, 1, false, 0, true, "No data."},
        {"no parameters", ReverbOnly, 2, false, 0, true, "No data."},
        {"no printer after the data checks", Full, 0, false, 1, false, "No default printer."},
        {"no printer on the sheet", Full, 2, false, 0, false, "No default printer."},
        {"a channel chosen", Full, 0, false, 1, true, ""},
        {"group delay", Full, 1, false, 0, true, ""},
    };
    for (const Row& row : rows) {
        const auto full = sampleLines("5");
        const auto lines = row.doc == Full         ? full
                           : row.doc == ReverbOnly ? Without(full, kGroupDelay, "")
                                                   : Without(full, kMemo1, kParameters);
        DocumentWindow doc(lines, QStringLiteral("New Data"));
        ASSERT_TRUE(doc.loaded()) << row.name;
        doc->PageControl()->setCurrentIndex(row.tab);
        if (row.freq) {
            doc->FreqClick();
        }
        doc->Panel1()->ComboChannel()->setCurrentIndex(row.combo);
        QWidget main;
        StandInEnvironment environment;
        environment.printer = row.printer;
        sonalyx::PrintCommand(&main, doc.messenger, environment).Run(&doc.window(), true);
        const std::vector<std::string> expected =
            *row.message ? std::vector<std::string>{row.message} : std::vector<std::string>{};
        EXPECT_EQ(doc.messenger.texts(), expected) << row.name;
        EXPECT_EQ(environment.modals.size(), *row.message ? 0 : 1) << row.name;
        EXPECT_EQ(QApplication::overrideCursor(), nullptr) << row.name;
    }
}

TEST(PrintCommand, StopsTheDemonstrationBeforeAnyCheck) {
    QTemporaryDir folder;
    QSettings settings(folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
    StandInEnvironment environment;
    environment.printer = false;
    MainFormOptions options;
    options.settings = &settings;
    options.showSplash = false;
    options.printEnvironment = &environment;
    options.files = {QStringLiteral(SONALYX_SAMPLES_DIR "/sample-layout-7.csv")};
    TMainForm form(options);
    form.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return form.DocumentWindows().size() == 1; }));
    ModalAnswerer answers;
    answers.press(QStringLiteral("OK")).press(QStringLiteral("OK"));
    QAction* demo = form.Action(QStringLiteral("ActionDemo"));
    // clang-format off
    const struct { const char* action; int combo; const char* said; } steps[] = {
        {"FilePrint", 0, "Select the channel.|"}, {"FilePreview", 1, "No default printer.|"}};
    // clang-format on
    for (const auto& step : steps) {
        demo->setChecked(true);
        ASSERT_EQ(form.TimerTag(), 11);
        form.ActiveDocument()->Panel1()->ComboChannel()->setCurrentIndex(step.combo);
        form.Action(QLatin1String(step.action))->trigger();
        EXPECT_FALSE(demo->isChecked()) << step.action;
        EXPECT_NE(form.TimerTag(), 11) << step.action;
        EXPECT_EQ(answers.messages().last(), QLatin1String(step.said)) << step.action;
    }
}

TEST(PrintCommand, SizesTheMainWindowForTheCaptureAndPutsItBack) {
    // clang-format off
    // during: the main window's size while the capture is taken; empty when maximised then.
    struct Row { const char* name; QSize screen; bool maximised; QSize during; };
    // clang-format on
    const Row rows[] = {
        {"large screen", {1600, 1200}, false, {1024, 768}},
        {"large screen, maximised before", {1600, 1200}, true, {1024, 768}},
        {"narrow screen", {900, 1200}, false, {900, 768}},
        {"small screen", {1024, 768}, false, {}},
    };
    for (const Row& row : rows) {
        DocumentWindow doc("9");
        doc->Panel1()->ComboChannel()->setCurrentIndex(2);
        QWidget main;
        main.resize(700, 500);
        row.maximised ? main.showMaximized() : main.show();
        QApplication::processEvents();
        const QSize before = main.size();
        StandInEnvironment environment;
        environment.screen = row.screen;
        bool maximisedDuring = false;
        QSize sizeDuring;
        environment.answer = [&](QDialog& dialog) {
            maximisedDuring = main.isMaximized() && doc->isMaximized();
            sizeDuring = main.size();
            EXPECT_EQ(dialog.windowTitle(), doc->windowTitle() + "(Preview)");
            return int(QDialog::Rejected);
        };
        sonalyx::PrintCommand(&main, doc.messenger, environment).Run(&doc.window(), true);
        ASSERT_EQ(environment.modals, QStringList{"FormPrint"}) << row.name;
        if (row.during.isEmpty()) {
            EXPECT_TRUE(maximisedDuring) << row.name;
        } else {
            EXPECT_EQ(sizeDuring, row.during) << row.name;
        }
        EXPECT_EQ(main.isMaximized(), row.maximised) << row.name;
        EXPECT_EQ(main.size(), before) << row.name;
        EXPECT_FALSE(doc->isMaximized()) << row.name;
    }
}

TEST(PrintPages, SheetPagesByMemoryAndPurpose) {
    // clang-format off
    struct Row { const char* name; bool standingWave; int memory; bool forPrint; int pages; int drawn; };
    // clang-format on
    const Row rows[] = {
        {"all memories, preview", true, 0, false, 2, 2},
        {"all memories, preview, no standing wave", false, 0, false, 1, 1},
        {"all memories, print", true, 0, true, 3, 3},
        {"all memories, print, no standing wave", false, 0, true, 3, 2},
        {"one memory, preview", true, 2, false, 1, 1},
        {"one memory, print", true, 2, true, 1, 1},
    };
    for (const Row& row : rows) {
        const auto full = sampleLines("10");
        DocumentWindow doc(row.standingWave ? full : Without(full, "* Standing Wave Control", "* "),
                           QStringLiteral("New Data"));
        doc->PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
        doc->Parameters()->SetMemory(row.memory);
        bool ok = false;
        const QList<sonalyx::PrintPage> pages =
            sonalyx::PrintPages::ParameterPages(doc.window(), row.forPrint, ok);
        EXPECT_TRUE(ok) << row.name;
        EXPECT_EQ(pages.size(), row.pages) << row.name;
        EXPECT_EQ(std::count_if(pages.begin(), pages.end(),
                                [](const sonalyx::PrintPage& p) { return !p.IsEmpty(); }),
                  row.drawn)
            << row.name;
        EXPECT_GT(doc->Parameters()->Sheet().width, 0) << row.name << ": screen sheet rebuilt";
    }
}

TEST(FormPrintMulti, PageButtonsStayInsideTheList) {
    StandInEnvironment environment;
    sonalyx::test::RecordingMessenger messenger;
    const auto page = sonalyx::PrintPage::FromImage(QImage(647, 1310, QImage::Format_RGB32));
    for (int count : {1, 3}) {
        TFormPrintMulti form({true, QStringLiteral("doc"), 96},
                             QList<sonalyx::PrintPage>(count, page), messenger, environment);
        const std::pair<const char*, int> clicks[] = {{"PreviousPage", 0}, {"FirstPage", 0},
                                                      {"NextPage", 1},     {"LastPage", 2},
                                                      {"NextPage", 2},     {"PreviousPage", 1}};
        for (const auto& [button, index] : clicks) {
            form.findChild<QToolButton*>(QLatin1String(button))->click();
            EXPECT_EQ(form.PageIndex(), std::min(index, count - 1))
                << count << " pages, " << button;
        }
    }
}

TEST(FormPrintMulti, PrintsTheChosenPagesOnlySkippingEmptyOnes) {
    // clang-format off
    // from, to: the page range chosen in the dialog; 0 for all pages.
    struct Row { const char* name; std::vector<bool> drawn; int from, to; int printed; };
    // clang-format on
    const Row rows[] = {
        {"pages 2 to 2 of 2", {true, true}, 2, 2, 1},
        {"all of 3, two empty", {true, false, false}, 0, 0, 1},
        {"all of 3", {true, true, true}, 0, 0, 3},
        {"pages 1 to 2 of 3", {true, true, true}, 1, 2, 2},
        {"pages 2 to 3 of 3, both empty", {true, false, false}, 2, 3, 0},
    };
    QTemporaryDir folder;
    for (const Row& row : rows) {
        QList<sonalyx::PrintPage> pages;
        for (bool drawn : row.drawn) {
            QImage page(647, 1310, QImage::Format_RGB32);
            page.fill(Qt::white);
            pages.append(drawn ? sonalyx::PrintPage::FromImage(page) : sonalyx::PrintPage());
        }
        const QString pdf = folder.filePath(QString::fromLatin1(row.name) + ".pdf");
        StandInEnvironment environment;
        environment.answer = [&](QDialog& dialog) {
            QPrinter* printer = static_cast<QPrintDialog&>(dialog).printer();
            printer->setOutputFormat(QPrinter::PdfFormat);
            printer->setOutputFileName(pdf);
            if (row.from > 0) {
                printer->setPrintRange(QPrinter::PageRange);
                printer->setFromTo(row.from, row.to);
            }
            return int(QDialog::Accepted);
        };
        sonalyx::test::RecordingMessenger messenger;
        TFormPrintMulti form({false, QStringLiteral("doc"), 96}, pages, messenger, environment);
        EXPECT_EQ(CountPdfPages(pdf), row.printed) << row.name;
        EXPECT_TRUE(messenger.texts().empty()) << row.name;
    }
}

TEST(PreviewWindows, LookLikePaperOnAGreyDesk) {
    DocumentWindow doc("11", {1000, 700});
    doc->Panel1()->ComboChannel()->setCurrentIndex(1);
    StandInEnvironment environment;
    const sonalyx::PrintPage capture = sonalyx::PrintPages::WindowPage(doc.window());
    EXPECT_FALSE(doc->PrintAppearance());
    TFormPrint single({true, doc->windowTitle(), 96}, capture, doc.messenger, environment);
    single.show();
    EXPECT_EQ(single.size(), QSize(800, 600));
    const std::pair<const char*, const char*> zooms[] = {
        {"ZoomFit", "whole-page"}, {"Zoom100", "actual"}, {"ZoomToWidth", "page-width"}};
    for (const auto& [button, name] : zooms) {
        single.findChild<QToolButton*>(QLatin1String(button))->click();
        const auto& placement = single.Placement();
        EXPECT_LE(std::abs(2 * placement.paper.left + placement.paper.width - placement.deskWidth),
                  1)
            << button << ": paper centred across";
        SaveScreenshot(single, QStringLiteral("print-preview-%1.png").arg(QLatin1String(name)));
    }
    doc->PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
    bool ok = false;
    TFormPrintMulti multi({true, doc->windowTitle(), 96},
                          sonalyx::PrintPages::ParameterPages(doc.window(), false, ok),
                          doc.messenger, environment);
    multi.SetCaption(QStringLiteral("doc(Preview)"));
    multi.show();
    EXPECT_EQ(multi.PageCount(), 2);
    // Save and Load are gone from the sheets' tool bar, not merely asked to hide.
    for (const auto& [form, shown] : {std::pair<QWidget*, bool>{&single, true}, {&multi, false}}) {
        for (const char* name : {"SaveReport", "LoadReport"}) {
            EXPECT_EQ(form->findChild<QToolButton*>(QLatin1String(name))->isVisible(), shown)
                << name;
        }
    }
    multi.findChild<QToolButton*>(QStringLiteral("NextPage"))->click();
    EXPECT_EQ(multi.windowTitle(), QStringLiteral("doc(Preview) - Page 2 of 2"));
    SaveScreenshot(multi, QStringLiteral("print-preview-sheet.png"));
    multi.findChild<QToolButton*>(QStringLiteral("ZoomToWidth"))->click();
    SaveScreenshot(multi, QStringLiteral("print-preview-sheet-width.png"));
    EXPECT_TRUE(doc.messenger.texts().empty());
}

// File > Report writes the window's document, compared with its reference, behind a progress
// bar that counts its pages.
TEST(ReportCommand, WritesTheWindowsDocumentBehindAProgressBar) {
    DocumentWindow doc("7");
    doc->SetReference(
        std::make_shared<sonalyx::MeasurementDocument>(sonalyx::test::loadSampleDocument("5")),
        QStringLiteral("sample-layout-5.csv"));
    int pages = 0;
    QTimer::singleShot(0, [&pages] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* bar = qobject_cast<QProgressDialog*>(widget)) {
                pages = bar->maximum();
            }
        }
    });
    const QString path = doc.filePath(QStringLiteral("report.pdf"));
    ASSERT_TRUE(sonalyx::ReportCommand(nullptr, doc.messenger).Write(doc.window(), path));
    EXPECT_TRUE(doc.messenger.texts().empty());
    EXPECT_EQ(pages, CountPdfPages(path));
    EXPECT_GT(pages, 20) << "the reference's charts are there";
}

}  // namespace
