#include <gtest/gtest.h>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "document/decay_table_csv.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "views/form_decay_times.h"

namespace {

class Recorder : public sonalyx::Messenger {
  public:
    sonalyx::Answer show(const std::string& text, const std::string& second,
                         sonalyx::MessageMode) override {
        said.push_back(text + "|" + second);
        return sonalyx::Answer::Ok;
    }
    std::vector<std::string> said;
};

sonalyx::MeasurementDocument sample(const char* layout) {
    const std::string path = std::string(SONALYX_SAMPLES_DIR "/sample-layout-") + layout + ".csv";
    sonalyx::MeasurementDocument doc;
    const auto lines = sonalyx::readDocumentLines(path);
    EXPECT_TRUE(lines && sonalyx::DocumentLoader::load(doc, *lines, path, nullptr));
    return doc;
}

QString cell(const TFormDecayTimes& form, int row, int column) {
    auto& model = const_cast<TFormDecayTimes&>(form).Model();
    return model.data(model.index(row, column)).toString();
}

class FormDecayTimesTest : public ::testing::Test {
  protected:
    Recorder messenger_;
    QTemporaryDir folder_;
};

TEST_F(FormDecayTimesTest, ShowsEachChannelOrGroupInEachBand) {
    TFormDecayTimes form(sample("5"), 0, messenger_);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Decay Times - sample-layout-5.csv"));
    auto& model = form.Model();
    ASSERT_EQ(model.rowCount(), 5);
    ASSERT_EQ(model.columnCount(), 6 * 3);
    EXPECT_EQ(model.headerData(0, Qt::Vertical).toString(), QStringLiteral("Left"));
    EXPECT_EQ(model.headerData(4, Qt::Horizontal).toString(), QStringLiteral("125\nAfter"));
    // Left in 63 Hz and 125 Hz, as the CSV golden file has them.
    const QStringList rt60 = {"670", "472", "-198", "603", "430", "-173"};
    const QStringList rates = {"-89.5", "-127.2", "-37.7", "-99.5", "-139.4", "-39.9"};
    for (int c = 0; c < rt60.size(); ++c) {
        EXPECT_EQ(cell(form, 0, c), rt60[c]) << "column " << c;
    }
    form.findChild<QComboBox*>(QStringLiteral("ComboFigure"))->setCurrentIndex(1);
    for (int c = 0; c < rates.size(); ++c) {
        EXPECT_EQ(cell(form, 0, c), rates[c]) << "column " << c;
    }

    // Ctrl+C on a selection gives a spreadsheet the figures shown.
    form.show();
    form.Table()->setFocus();
    form.Table()->setCurrentIndex(model.index(0, 0));
    form.Table()->selectionModel()->select(QItemSelection(model.index(0, 0), model.index(1, 1)),
                                           QItemSelectionModel::Select);
    QTest::keyClick(form.Table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), cell(form, 0, 0) + "\t" + cell(form, 0, 1) +
                                                        "\n" + cell(form, 1, 0) + "\t" +
                                                        cell(form, 1, 1));

    form.findChild<QComboBox*>(QStringLiteral("ComboRows"))->setCurrentIndex(1);
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.headerData(0, Qt::Vertical).toString(), QStringLiteral("Front"));
    EXPECT_EQ(cell(form, 0, 0), QStringLiteral("-89.4"));
    EXPECT_FALSE(form.findChild<QLabel*>(QStringLiteral("LabelNoData"))->isVisibleTo(&form));
}

TEST_F(FormDecayTimesTest, DashWhereACurveHasNoDataOrDoesNotFall) {
    sonalyx::MeasurementDocument doc = sample("5");
    doc.positionHasData[1][0] = false;     // Left: no data after calibration
    doc.reverbValues[0][2][1].fill(3.0f);  // Right (position 2), 125 Hz: flat
    TFormDecayTimes form(doc, 0, messenger_);
    const auto& model = form.Model();
    const QString dash = QStringLiteral("\u2014");
    EXPECT_EQ(cell(form, 0, 0), QStringLiteral("670"));
    EXPECT_EQ(cell(form, 0, 1), dash);
    EXPECT_EQ(cell(form, 0, 2), dash);
    const int right = 2;
    EXPECT_EQ(model.headerData(right, Qt::Vertical).toString(), QStringLiteral("Right"));
    EXPECT_EQ(cell(form, right, 3), dash);
    EXPECT_NE(cell(form, right, 4), dash);
    EXPECT_EQ(cell(form, right, 5), dash);
    EXPECT_TRUE(model.data(model.index(0, 1), Qt::ToolTipRole).toString().contains("no data"));
}

TEST_F(FormDecayTimesTest, AReferenceAddsItsColumnsBesideEachBand) {
    TFormDecayTimes form(sample("7"), 1, messenger_);
    auto& model = form.Model();
    const int bands = static_cast<int>(model.table().bands.size());
    model.addColumnSet(QStringLiteral("Reference"), sonalyx::buildDecayTable(sample("5"), true));
    ASSERT_EQ(model.columnCount(), bands * 6);
    EXPECT_EQ(model.headerData(3, Qt::Horizontal).toString(),
              QStringLiteral("63\nReference before"));
    // The same figures as the golden CSV of these two documents: 63 Hz, then 500 Hz, which
    // the reference lacks.
    EXPECT_EQ(cell(form, 0, 3), QStringLiteral("671"));
    EXPECT_EQ(cell(form, 0, 5), QStringLiteral("-200"));
    EXPECT_EQ(model.headerData(3 * 6 + 3, Qt::Horizontal).toString(),
              QStringLiteral("500\nReference before"));
    EXPECT_EQ(cell(form, 0, 3 * 6 + 3), QStringLiteral("\u2014"));
}

TEST_F(FormDecayTimesTest, ExportWritesTheShownTableThroughTheSaveDialog) {
    const sonalyx::MeasurementDocument doc = sample("9");
    TFormDecayTimes form(doc, 1, messenger_);
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
    EXPECT_TRUE(offered.endsWith(QStringLiteral("/sample-layout-9 decay times.csv")));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(),
              sonalyx::decayTableCsv(sonalyx::buildDecayTable(doc, true)));
    EXPECT_TRUE(messenger_.said.empty());
}

TEST_F(FormDecayTimesTest, AFolderThatCannotBeWrittenGivesAClearMessage) {
    TFormDecayTimes form(sample("5"), 0, messenger_);
    const QString missing = folder_.filePath(QStringLiteral("gone/decay.csv"));
    const QString folderItself = folder_.path();
    for (const QString& path : {missing, folderItself}) {
        messenger_.said.clear();
        EXPECT_FALSE(form.ExportCsv(path)) << path.toStdString();
        ASSERT_EQ(messenger_.said.size(), 1u) << path.toStdString();
        EXPECT_EQ(messenger_.said[0].rfind("Can't write the file.|" + path.toStdString() + " (", 0),
                  0u)
            << messenger_.said[0];
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList());
}

TEST_F(FormDecayTimesTest, Screenshot) {
    TFormDecayTimes form(sample("10"), 0, messenger_);
    form.resize(1100, 420);
    form.show();
    QApplication::processEvents();
    const QString folder = QStringLiteral(SONALYX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    const QImage image = form.grab().toImage();
    ASSERT_TRUE(image.save(folder + QStringLiteral("/decay-times.png")));
    EXPECT_TRUE(form.Table()->isVisible());
}

}  // namespace
