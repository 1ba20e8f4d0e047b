#include "emulator/emulator_options.h"

#include <gtest/gtest.h>

namespace sonalyx::emulator {
namespace {

std::optional<EmulatorOptions> parse(const std::vector<std::string>& arguments,
                                     std::string* error = nullptr) {
    std::string problem;
    auto options = EmulatorOptions::parse(arguments, problem);
    if (error != nullptr) {
        *error = problem;
    }
    return options;
}

TEST(EmulatorOptions, DefaultsPlayAnExtendedConfiguration10WithAfterData) {
    const auto options = parse({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->profile.parameters.configCode, 10);
    EXPECT_TRUE(options->profile.extended);
    EXPECT_TRUE(options->profile.afterData);
    EXPECT_FALSE(options->pace);
    EXPECT_TRUE(options->linkPath.empty());
}

TEST(EmulatorOptions, ReadsReceiverLineAndParameterOptions) {
    const auto options =
        parse({"--config", "11", "--bands=2", "--old", "--no-after", "--pace", "--link", "/tmp/rx",
               "--distance-unit", "3", "--distance-one-byte", "--sp-length", "6", "--memories", "2",
               "--info-length", "2", "--xcurve", "7"});
    ASSERT_TRUE(options);
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
}

TEST(EmulatorOptions, ReadsFaults) {
    const auto options =
        parse({"--refuse", "RAFL,?EQALL:2", "--bad-probe", "once", "--oversize", "RVCT",
               "--invalid", "FBS,RVFR", "--cut-off", "?STALL", "--bad-info-length", "--silent"});
    ASSERT_TRUE(options);
    const ReceiverProfile& profile = options->profile;
    EXPECT_EQ(profile.refusals, (std::map<std::string, int>{{"RAFL", -1}, {"EQALL", 2}}));
    EXPECT_EQ(profile.badProbe, ReceiverProfile::BadProbe::Once);
    EXPECT_EQ(profile.oversizeCommands, std::set<std::string>({"RVCT"}));
    EXPECT_EQ(profile.invalidCommands, std::set<std::string>({"FBS", "RVFR"}));
    EXPECT_EQ(profile.cutOffCommand, "STALL");
    EXPECT_TRUE(profile.badInfoLength);
    EXPECT_TRUE(profile.silent);
}

TEST(EmulatorOptions, RefusesWhatItDoesNotKnow) {
    std::string error;
    EXPECT_FALSE(parse({"--config", "8"}, &error));
    EXPECT_EQ(error, "bad value for --config: 8");
    EXPECT_FALSE(parse({"--bands", "x"}, &error));
    EXPECT_FALSE(parse({"--sp-length", "7"}, &error));
    EXPECT_FALSE(parse({"--bad-probe", "twice"}, &error));
    EXPECT_FALSE(parse({"--refuse", "RVCT:0"}, &error));
    EXPECT_FALSE(parse({"--link"}, &error));
    EXPECT_EQ(error, "missing value for --link");
    EXPECT_FALSE(parse({"--colour"}, &error));
    EXPECT_EQ(error, "unknown option: --colour");
    EXPECT_FALSE(parse({"--pace=1"}, &error));
}

TEST(EmulatorOptions, UsageNamesEveryOption) {
    const std::string usage = EmulatorOptions::usage();
    for (const char* option : {"--link",
                               "--pace",
                               "--verbose",
                               "--config",
                               "--bands",
                               "--old",
                               "--no-after",
                               "--info-length",
                               "--reverb-type",
                               "--distance-unit",
                               "--distance-one-byte",
                               "--sp-length",
                               "--memories",
                               "--level-length",
                               "--subwoofer-mode",
                               "--xcurve",
                               "--crossover",
                               "--silent",
                               "--refuse",
                               "--bad-probe",
                               "--oversize",
                               "--invalid",
                               "--bad-info-length",
                               "--cut-off"}) {
        EXPECT_NE(usage.find(option), std::string::npos) << option;
        EXPECT_TRUE(parse({"--help"}));
    }
}

}  // namespace
}  // namespace sonalyx::emulator
