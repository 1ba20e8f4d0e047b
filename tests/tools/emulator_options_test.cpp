#include "emulator/emulator_options.h"

#include <gtest/gtest.h>

namespace sonalyx::emulator {
namespace {

TEST(EmulatorOptions, DefaultsPlayAnExtendedConfiguration10WithAfterData) {
    std::string error;
    const auto options = EmulatorOptions::parse({}, error);
    ASSERT_TRUE(options) << error;
    EXPECT_EQ(options->profile.parameters.configCode, 10);
    EXPECT_TRUE(options->profile.extended);
    EXPECT_TRUE(options->profile.afterData);
    EXPECT_FALSE(options->pace);
    EXPECT_TRUE(options->linkPath.empty());
}

TEST(EmulatorOptions, ReadsTheReceiverTheLineAndTheFaults) {
    std::string error;
    const auto options = EmulatorOptions::parse({"--config",
                                                 "11",
                                                 "--bands=2",
                                                 "--old",
                                                 "--no-after",
                                                 "--pace",
                                                 "--link",
                                                 "/tmp/rx",
                                                 "--distance-unit",
                                                 "3",
                                                 "--distance-one-byte",
                                                 "--sp-length",
                                                 "6",
                                                 "--memories",
                                                 "2",
                                                 "--info-length",
                                                 "2",
                                                 "--xcurve",
                                                 "7",
                                                 "--refuse",
                                                 "RAFL,?EQALL:2",
                                                 "--bad-probe",
                                                 "once",
                                                 "--oversize",
                                                 "RVCT",
                                                 "--invalid",
                                                 "FBS,RVFR",
                                                 "--cut-off",
                                                 "?STALL",
                                                 "--bad-info-length",
                                                 "--silent"},
                                                error);
    ASSERT_TRUE(options) << error;
    const ReceiverProfile& profile = options->profile;
    EXPECT_EQ(profile.parameters.configCode, 11);
    EXPECT_EQ(profile.parameters.bandSelector, 2);
    EXPECT_FALSE(profile.extended);
    EXPECT_FALSE(profile.afterData);
    EXPECT_TRUE(options->pace);
    EXPECT_EQ(options->linkPath, "/tmp/rx");
    EXPECT_EQ(profile.parameters.distanceUnit, 3);
    EXPECT_TRUE(profile.parameters.distanceOneByte);
    EXPECT_EQ(profile.parameters.speakerSettingLength, 6);
    EXPECT_EQ(profile.parameters.memoryCount, 2);
    EXPECT_EQ(profile.infoLength, 2);
    EXPECT_EQ(profile.parameters.xCurveCode, 7);
    EXPECT_EQ(profile.refusals, (std::map<std::string, int>{{"RAFL", -1}, {"EQALL", 2}}));
    EXPECT_EQ(profile.badProbe, ReceiverProfile::BadProbe::Once);
    EXPECT_EQ(profile.oversizeCommands, std::set<std::string>({"RVCT"}));
    EXPECT_EQ(profile.invalidCommands, std::set<std::string>({"FBS", "RVFR"}));
    EXPECT_EQ(profile.cutOffCommand, "STALL");
    EXPECT_TRUE(profile.badInfoLength);
    EXPECT_TRUE(profile.silent);
}

TEST(EmulatorOptions, RefusesWhatItDoesNotKnow) {
    const struct {
        std::vector<std::string> arguments;
        const char* error;  // nullptr: any message
    } rows[] = {
        {{"--config", "8"}, "bad value for --config: 8"},
        {{"--bands", "x"}, nullptr},
        {{"--sp-length", "7"}, nullptr},
        {{"--bad-probe", "twice"}, nullptr},
        {{"--refuse", "RVCT:0"}, nullptr},
        {{"--link"}, "missing value for --link"},
        {{"--colour"}, "unknown option: --colour"},
        {{"--pace=1"}, nullptr},
    };
    for (const auto& row : rows) {
        std::string error;
        EXPECT_FALSE(EmulatorOptions::parse(row.arguments, error)) << row.arguments.front();
        EXPECT_FALSE(error.empty()) << row.arguments.front();
        if (row.error != nullptr) {
            EXPECT_EQ(error, row.error);
        }
    }
}

TEST(EmulatorOptions, HelpIsAnOptionAndTheUsageNamesTheFaults) {
    std::string error;
    EXPECT_TRUE(EmulatorOptions::parse({"--help"}, error)->help);
    const std::string usage = EmulatorOptions::usage();
    for (const char* option : {"--refuse", "--bad-probe", "--oversize", "--invalid", "--cut-off"})
        EXPECT_NE(usage.find(option), std::string::npos) << option;
}

}  // namespace
}  // namespace sonalyx::emulator
