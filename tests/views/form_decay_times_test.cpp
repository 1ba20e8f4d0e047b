#include <gtest/gtest.h>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "document/decay_table_csv.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/decay/form_decay_times.h"

namespace sonalyx::test {
namespace {

using Lines = std::vector<std::string>;

class FormDecayTimesTest : public ::testing::Test {
  protected:
    RecordingMessenger messenger_;
    QTemporaryDir folder_;
};

// One line per row: its header, then each cell, with the tool tip in braces where a dash says
// there is no figure.
void dump(const DecayTimesModel& model, Lines& lines) {
    QStringList header;
    for (int c = 0; c < model.columnCount(); ++c)
        header.append(model.headerData(c, Qt::Horizontal).toString().replace('\n', '/'));
    lines.push_back(header.join('|').toStdString());
    for (int r = 0; r < model.rowCount(); ++r) {
        QStringList row{model.headerData(r, Qt::Vertical).toString()};
        for (int c = 0; c < model.columnCount(); ++c) {
            const QString text = model.index(r, c).data().toString();
            row.append(text != QStringLiteral("\u2014")
                           ? text
                           : text + "{" + model.index(r, c).data(Qt::ToolTipRole).toString() + "}");
        }
        lines.push_back(row.join('|').toStdString());
    }
}

// Times and rates, by channel and by group, of three layouts (one with a flat curve: a dash),
// and the seven-channel layout with the five's columns beside it as a reference.
TEST_F(FormDecayTimesTest, TablesMatchGolden) {
    std::vector<GoldenSection> sections;
    for (const char* layout : {"5", "7", "10"}) {
        MeasurementDocument doc = loadSampleDocument(layout);
        doc.reverbValues[0][2][1].fill(3.0f);  // Right, 125 Hz before: flat
        TFormDecayTimes form(doc, 0, messenger_);
        for (const int rows : {0, 1}) {
            form.findChild<QComboBox*>(QStringLiteral("ComboRows"))->setCurrentIndex(rows);
            for (const int rates : {0, 1}) {
                form.findChild<QComboBox*>(QStringLiteral("ComboFigure"))->setCurrentIndex(rates);
                const std::string name = std::string(layout) + (rows ? " groups" : " channels");
                Lines& lines =
                    sections.emplace_back(name + (rates ? " rates" : " times"), Lines{}).second;
                lines.push_back(form.windowTitle().toStdString());
                dump(form.Model(), lines);
            }
        }
    }
    TFormDecayTimes form(loadSampleDocument("7"), 1, messenger_);
    form.Model().addColumnSet(QStringLiteral("Reference"),
                              buildDecayTable(loadSampleDocument("5"), true));
    dump(form.Model(), sections.emplace_back("7 groups, 5 as reference", Lines{}).second);
    expectSectionsMatchGolden(testDataPath("views/decay_times.txt"), sections);

    // Ctrl+C on a selection gives a spreadsheet the figures shown.
    form.show();
    form.Table()->setFocus();
    const auto& model = form.Model();
    form.Table()->selectionModel()->select(QItemSelection(model.index(0, 0), model.index(0, 5)),
                                           QItemSelectionModel::Select);
    QTest::keyClick(form.Table(), Qt::Key_C, Qt::ControlModifier);
    QStringList shown;
    for (int c = 0; c < 6; ++c)
        shown.append(model.index(0, c).data().toString());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), shown.join(QLatin1Char('\t')));
}

TEST_F(FormDecayTimesTest, ExportWritesTheShownTableOrSaysWhyNot) {
    const MeasurementDocument doc = loadSampleDocument("10");
    TFormDecayTimes form(doc, 1, messenger_);
    form.resize(1100, 420);
    form.show();
    const QString path = folder_.filePath(QStringLiteral("room.csv"));
    QTimer answer;
    QString offered;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            offered = dialog->selectedFiles().value(0);
            dialog->selectFile(path);
            QMetaObject::invokeMethod(dialog, "accept");
        }
    });
    answer.start(5);
    form.findChild<QPushButton*>(QStringLiteral("BtnExport"))->click();
    EXPECT_TRUE(offered.endsWith(QStringLiteral("/sample-layout-10 decay times.csv")));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), decayTableCsv(buildDecayTable(doc, true)));
    EXPECT_TRUE(messenger_.messages.empty());

    // A missing folder, and a folder where the file should be: told, and nothing left.
    for (const QString& bad :
         {folder_.filePath(QStringLiteral("gone/decay.csv")), folder_.path()}) {
        messenger_.messages.clear();
        EXPECT_FALSE(form.ExportCsv(bad));
        ASSERT_EQ(messenger_.messages.size(), 1u) << bad.toStdString();
        EXPECT_EQ(
            messenger_.said()[0].rfind("Can't write the file.|" + bad.toStdString() + " (", 0), 0u)
            << messenger_.said()[0];
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList{QStringLiteral("room.csv")});

    form.findChild<QComboBox*>(QStringLiteral("ComboRows"))->setCurrentIndex(0);
    EXPECT_TRUE(form.grab().save(screenshotPath(QStringLiteral("decay-times.png"))));
}

}  // namespace
}  // namespace sonalyx::test
