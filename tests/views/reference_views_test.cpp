#include <gtest/gtest.h>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

#include "document/decay_table_csv.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/decay/form_decay_times.h"
#include "views/parameters/parameters_view.h"

namespace sonalyx::test {
namespace {

// The calibrated room against the measured one: three settings changed (each first '0' made a
// '5'), one of them in memory 1 only. The count follows the memory shown.
TEST(ReferenceViewsTest, ParametersCountAndMarkTheChangedCellsOfTheMemoryShown) {
    const MeasurementDocument before = loadSampleDocument("9");
    MeasurementDocument after = before;
    for (auto& line : after.parameterLines) {
        if (line == "Crossover,,80Hz" || line == ",,-1.0dB/oct" ||
            line == "Center,,+2.0dB,+5.0dB,-5.0dB,-2.0dB,+1.0dB,+4.0dB")
            line.replace(line.find('0'), 1, "5");
    }
    ParametersView view;
    view.SetDocument(&after);
    view.resize(760, 900);
    view.show();
    view.SetMemory(1);
    auto* label = view.findChild<QLabel*>(QStringLiteral("LabelComparison"));
    auto* picture = view.findChild<QLabel*>(QStringLiteral("ImageSheet"));
    ASSERT_TRUE(label && picture);
    const QImage plain = picture->pixmap().toImage();
    EXPECT_FALSE(label->isVisible());

    view.SetReference(&before, QStringLiteral("measured.csv"));
    EXPECT_EQ(label->text(), QStringLiteral("3 cells differ from measured.csv"));
    EXPECT_EQ(label->toolTip(), QStringLiteral("Speaker Setting: 1, X-Curve: 1, Channel Level: 1"));
    EXPECT_NE(picture->pixmap().toImage(), plain);
    const SheetOp& crossover = view.Sheet().ops[view.Comparison().Differences().at(0).op];
    EXPECT_EQ(view.DifferenceText(QPoint(crossover.x + 1, crossover.y + 1)),
              QStringLiteral("measured.csv: 80Hz"));
    EXPECT_TRUE(view.grab().save(screenshotPath(QStringLiteral("parameters-compare.png"))));
    view.SetMemory(5);
    EXPECT_EQ(view.DifferingCells(), 2);
    view.SetMemory(1);
    view.SetReference(nullptr, QString());
    EXPECT_FALSE(label->isVisible());
    EXPECT_EQ(picture->pixmap().toImage(), plain);
}

// A small layout against a larger one: the reference's columns follow the rows combo, the note
// names what of the reference has no row here, and the CSV carries the table shown.
TEST(ReferenceViewsTest, DecayTimesTakeTheReferencesColumnsIntoTheCsv) {
    const MeasurementDocument five = loadSampleDocument("5");
    const MeasurementDocument seven = loadSampleDocument("7");
    RecordingMessenger messenger;
    TFormDecayTimes form(five, 0, messenger);
    form.SetReference(&seven, QStringLiteral("seven.csv"));
    auto* rows = form.findChild<QComboBox*>(QStringLiteral("ComboRows"));
    ASSERT_TRUE(rows);
    EXPECT_EQ(form.findChild<QLabel*>(QStringLiteral("LabelReference"))->text().toStdString(),
              "Reference columns: seven.csv. Its channels not in this document: Surr Back R, Surr "
              "Back L. Its bands not in this document: 500, 2k, 8k, 16k.");
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("decay.csv"));
    for (const bool groups : {false, true}) {
        rows->setCurrentIndex(groups ? 1 : 0);
        ASSERT_TRUE(form.ExportCsv(path));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const DecayTable reference = buildDecayTable(seven, groups);
        EXPECT_EQ(file.readAll().toStdString(),
                  decayTableCsv(buildDecayTable(five, groups), &reference));
    }
}

}  // namespace
}  // namespace sonalyx::test
