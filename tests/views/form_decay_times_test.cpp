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
#include "document/document_loader.h"
#include "support/document_window.h"
#include "views/form_decay_times.h"

namespace sonalyx::test {
namespace {

MeasurementDocument sample(const char* layout) {
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, sampleLines(layout),
                                     std::string("/samples/sample-layout-") + layout + ".csv",
                                     nullptr));
    return doc;
}

QString cell(TFormDecayTimes& form, int row, int column) {
    return form.Model().index(row, column).data().toString();
}

const QString kDash = QStringLiteral("\u2014");

class FormDecayTimesTest : public ::testing::Test {
  protected:
    RecordingMessenger messenger_;
    QTemporaryDir folder_;
};

// The figures are the golden CSV's (Left: 63 Hz, then 125 Hz).
TEST_F(FormDecayTimesTest, ShowsTimesOrRatesAndADashWhereThereIsNone) {
    MeasurementDocument doc = sample("5");
    doc.reverbValues[0][2][1].fill(3.0f);  // Right, 125 Hz before: flat
    TFormDecayTimes form(doc, 0, messenger_);
    auto& model = form.Model();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Decay Times - sample-layout-5.csv"));
    ASSERT_EQ(model.rowCount(), 5);
    ASSERT_EQ(model.columnCount(), 6 * 3);
    EXPECT_EQ(model.headerData(2, Qt::Vertical).toString(), QStringLiteral("Right"));
    EXPECT_EQ(model.headerData(4, Qt::Horizontal).toString(), QStringLiteral("125\nAfter"));
    const QStringList rt60 = {"670", "472", "-198", "603", "430", "-173"};
    const QStringList rates = {"-89.5", "-127.2", "-37.7", "-99.5", "-139.4", "-39.9"};
    const QStringList flat = {kDash, "419", kDash};
    auto* figure = form.findChild<QComboBox*>(QStringLiteral("ComboFigure"));
    for (int c = 0; c < 6; ++c) {
        EXPECT_EQ(cell(form, 0, c), rt60[c]) << "column " << c;
        if (c < 3) {
            EXPECT_EQ(cell(form, 2, 3 + c), flat[c]) << "column " << 3 + c;
        }
    }
    EXPECT_TRUE(model.index(2, 3).data(Qt::ToolTipRole).toString().contains("does not fall"));

    // Ctrl+C on a selection gives a spreadsheet the figures shown.
    figure->setCurrentIndex(1);
    form.show();
    form.Table()->setFocus();
    form.Table()->selectionModel()->select(QItemSelection(model.index(0, 0), model.index(0, 5)),
                                           QItemSelectionModel::Select);
    QTest::keyClick(form.Table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), rates.join(QLatin1Char('\t')));

    form.findChild<QComboBox*>(QStringLiteral("ComboRows"))->setCurrentIndex(1);
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.headerData(0, Qt::Vertical).toString(), QStringLiteral("Front"));
    EXPECT_EQ(cell(form, 0, 0), QStringLiteral("-89.4"));
}

TEST_F(FormDecayTimesTest, AReferenceAddsItsColumnsBesideEachBand) {
    TFormDecayTimes form(sample("7"), 1, messenger_);
    auto& model = form.Model();
    const int bands = static_cast<int>(model.table().bands.size());
    model.addColumnSet(QStringLiteral("Reference"), buildDecayTable(sample("5"), true));
    ASSERT_EQ(model.columnCount(), bands * 6);
    // As in the golden CSV of these two: 63 Hz, then 500 Hz, which the reference lacks.
    EXPECT_EQ(model.headerData(3, Qt::Horizontal).toString(),
              QStringLiteral("63\nReference before"));
    EXPECT_EQ(cell(form, 0, 3), QStringLiteral("671"));
    EXPECT_EQ(cell(form, 0, 5), QStringLiteral("-200"));
    EXPECT_EQ(model.headerData(3 * 6 + 3, Qt::Horizontal).toString(),
              QStringLiteral("500\nReference before"));
    EXPECT_EQ(cell(form, 0, 3 * 6 + 3), kDash);
}

TEST_F(FormDecayTimesTest, ExportWritesTheShownTableOrSaysWhyNot) {
    const MeasurementDocument doc = sample("10");
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
