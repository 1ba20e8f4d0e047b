#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTabWidget>

#include "document/decay_table.h"
#include "view_fixture.h"
#include "views/view_export.h"

namespace sonalyx::test {
namespace {

using DecayTimesJsonTest = ViewFixture;

QJsonObject tabJson(const TMDIChild& window) {
    QJsonParseError error{};
    const QJsonDocument json =
        QJsonDocument::fromJson(QByteArray::fromStdString(ViewExport(window).TabJson()), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return json.object();
}

QJsonValue figures(const std::optional<DecayEstimate>& estimate) {
    if (!estimate)
        return QJsonValue::Null;
    return QJsonObject{{"rate", estimate->rate}, {"rt60", estimate->rt60Ms}};
}

// The reverb tab's JSON carries the decay table of what it shows: channels or groups, one
// entry per item and band in table order, null where a variant has no data.
TEST_F(DecayTimesJsonTest, ReverbTabCarriesTheDecayTable) {
    auto window = open(9);
    for (int pairMode : {0, 1}) {
        window->SetPairMode(pairMode);
        const DecayTable table = buildDecayTable(window->Document(), pairMode == 1);
        const QJsonObject json = tabJson(*window);
        const QJsonArray entries = json.value(QStringLiteral("decayTimes")).toArray();
        ASSERT_EQ(entries.size(), static_cast<qsizetype>(table.items.size() * table.bands.size()))
            << pairMode;
        int nulls = 0;
        for (qsizetype e = 0; e < entries.size(); ++e) {
            const size_t item = static_cast<size_t>(e) / table.bands.size();
            const size_t band = static_cast<size_t>(e) % table.bands.size();
            const DecayCell& cell = table.cells[item][band];
            const QJsonObject expected{{"item", QString::fromStdString(table.items[item])},
                                       {"band", QString::fromStdString(table.bands[band])},
                                       {"before", figures(cell.before)},
                                       {"after", figures(cell.after)}};
            EXPECT_EQ(entries[e].toObject(), expected) << pairMode << " entry " << e;
            nulls += entries[e].toObject().value(QStringLiteral("after")).isNull() ? 1 : 0;
        }
        // Some channels have no after-calibration data: both kinds of entry are written.
        EXPECT_GT(nulls, 0) << pairMode;
        EXPECT_LT(nulls, entries.size()) << pairMode;
    }
    EXPECT_EQ(tabJson(*window)
                  .value(QStringLiteral("decayTimes"))
                  .toArray()
                  .first()
                  .toObject()
                  .value(QStringLiteral("item")),
              QStringLiteral("Front"));

    // The last key, after the charts.
    const std::string text = ViewExport(*window).TabJson();
    EXPECT_GT(text.find("\"decayTimes\""), text.find("\"charts\""));
    EXPECT_EQ(text.find("\"decayTimes\""), text.rfind("\n  \"") + 3);

    window->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    EXPECT_FALSE(tabJson(*window).contains(QStringLiteral("decayTimes")));
}

}  // namespace
}  // namespace sonalyx::test
