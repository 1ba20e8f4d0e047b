#include "retrieval/receive_plan.h"

#include <array>

#include "document/channel_name.h"

namespace sonalyx {

namespace {

struct Label {
    std::string_view command;
    std::string_view text;
};

// Replies that are one fixed query each.
constexpr std::array<Label, 9> kFixedLabels = {{
    {"?EI", "Receiver information"},
    {"?SI", "Parameters: system information"},
    {"?SP", "Parameters: speaker setting"},
    {"?EQALL", "Parameters: EQ"},
    {"?DLALL", "Parameters: distances"},
    {"?LVALL", "Parameters: levels"},
    {"?STALL", "Parameters: standing wave control"},
    {"?DL", "Parameters: distances"},
    {"?LV", "Parameters: levels"},
}};

constexpr std::array<std::string_view, 6> kGroupDelayCodes = {"F", "S", "C", "B", "ES", "TS"};
constexpr std::array<std::string_view, 6> kListWords = {"?SI",    "?SP",    "?EQALL",
                                                        "?DLALL", "?LVALL", "?STALL"};

std::string channelLongName(std::string_view queryCode) {
    for (const ChannelName& name : channelNames()) {
        if (!name.queryCode.empty() && name.queryCode == queryCode)
            return std::string(name.longName);
    }
    return std::string(queryCode);
}

// The same rule the engine applies: "ES" only for configurations 10 and 11, "TS" only for 10.
bool groupDelayAsked(int configCode, std::size_t index) {
    const std::size_t step = index + 1;
    return !((configCode < 10 && step >= 5) || (configCode == 11 && step >= 6));
}

void planReverb(const PlanFacts& facts, std::vector<std::string>& plan) {
    // The front left's measured block came with the probe; its after block is asked next.
    plan.emplace_back("?RAFL");
    for (std::size_t i = 1; i < facts.channelCodes.size(); ++i) {
        plan.push_back("?RV" + facts.channelCodes[i]);
        if (facts.afterData)
            plan.push_back("?RA" + facts.channelCodes[i]);
    }
}

void planGroupDelay(const PlanFacts& facts, std::vector<std::string>& plan) {
    for (std::size_t i = 0; i < kGroupDelayCodes.size(); ++i) {
        if (!groupDelayAsked(facts.configCode, i))
            break;
        plan.push_back("?FB" + std::string(kGroupDelayCodes[i]));
        if (plan.back() == facts.groupDelayEndedAt)
            break;
    }
}

void planParameters(const PlanFacts& facts, std::vector<std::string>& plan) {
    if (!facts.fallback) {
        plan.insert(plan.end(), kListWords.begin(), kListWords.end());
        return;
    }
    plan.insert(plan.end(), {"?SI", "?SP", "?EQALL", "?DL", "?LV"});
    for (const std::string& code : facts.fallbackEqCodes)
        plan.push_back("?EQ" + code);
}

}  // namespace

std::vector<std::string> planCommands(const PlanFacts& facts) {
    std::vector<std::string> plan = {"?RVFL"};
    if (!facts.extended) {
        // An old receiver gives reverb only, for configuration 9.
        if (facts.reverb)
            planReverb(facts, plan);
        return plan;
    }
    plan.emplace_back("?EI");
    if (facts.reverb)
        planReverb(facts, plan);
    if (facts.groupDelay)
        planGroupDelay(facts, plan);
    if (facts.parameters)
        planParameters(facts, plan);
    return plan;
}

std::string describeCommand(std::string_view command) {
    for (const Label& label : kFixedLabels) {
        if (label.command == command)
            return std::string(label.text);
    }
    if (command.starts_with("?RV"))
        return "Reverb, " + channelLongName(command.substr(3)) + ", measured";
    if (command.starts_with("?RA"))
        return "Reverb, " + channelLongName(command.substr(3)) + ", after calibration";
    if (command.starts_with("?FB"))
        return "Group delay";
    if (command.starts_with("?EQ"))
        return "Parameters: EQ, " + channelLongName(command.substr(3));
    return std::string(command);
}

std::string_view stepOfCommand(std::string_view command) {
    if (command == "?RVFL")
        return "probe";
    if (command == "?EI")
        return "information";
    if (command.starts_with("?RV") || command.starts_with("?RA"))
        return "reverb";
    if (command.starts_with("?FB"))
        return "group delay";
    if (command == "?DL" || command == "?LV" || (command.starts_with("?EQ") && command != "?EQALL"))
        return "parameters by channel";
    return "parameters";
}

}  // namespace sonalyx
