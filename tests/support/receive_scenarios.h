#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "retrieval/receive_engine.h"

namespace sonalyx::test {

// A receive run that succeeds against the receiver emulator: the emulator's arguments, the kinds
// asked for, and the golden file of the text received (tests/data/receive/<name>.txt, dated
// 2009.05.17 14:03). The same table serves the in-process runs and the runs over a real line.
struct ReceiveScenario {
    std::string name;
    std::vector<std::string> emulatorArguments;
    std::string kinds = "all";  // "all", "parameters-only", or the letters r, g, p
};

inline void PrintTo(const ReceiveScenario& scenario, std::ostream* os) {
    *os << scenario.name;
}

inline ReceiveOptions receiveOptions(const std::string& kinds) {
    ReceiveOptions options;
    if (kinds == "parameters-only") {
        options.parametersOnly = true;
    } else if (kinds != "all") {
        options.reverb = kinds.find('r') != std::string::npos;
        options.groupDelay = kinds.find('g') != std::string::npos;
        options.parameters = kinds.find('p') != std::string::npos;
    }
    return options;
}

inline const std::vector<ReceiveScenario>& receiveScenarios() {
    static const std::vector<ReceiveScenario> scenarios = {
        // Every configuration, band set and reverb type.
        {"config5", {"--config", "5", "--reverb-type", "4"}},
        {"config6", {"--config", "6", "--reverb-type", "0"}},
        {"config7", {"--config", "7", "--reverb-type", "5"}},
        {"config9", {"--config", "9", "--reverb-type", "1"}},
        {"config10", {}},
        {"config11", {"--config", "11", "--subwoofer-mode", "1", "--reverb-type", "3"}},
        {"config10_bands1", {"--bands", "1"}},
        {"config9_bands2", {"--config", "9", "--bands", "2", "--reverb-type", "9"}},
        {"config6_info2", {"--config", "6", "--info-length", "2"}},
        {"old_receiver", {"--old"}},
        // What is asked for.
        {"config10_no_after", {"--no-after"}},
        {"config7_no_after", {"--config", "7", "--no-after"}, "rg"},
        {"config10_reverb", {}, "r"},
        {"config5_groupdelay_parameters", {"--config", "5"}, "gp"},
        {"config10_parameters_only", {}, "parameters-only"},
        // The parameter layouts, by list and by the single-channel fallback.
        {"config5_fallback", {"--config", "5", "--refuse", "EQALL"}, "p"},
        {"config9_fallback", {"--config", "9", "--refuse", "EQALL"}, "p"},
        {"config10_fallback", {"--config", "10", "--refuse", "EQALL"}, "p"},
        {"config11_fallback", {"--config", "11", "--refuse", "EQALL"}, "p"},
        {"config9_inches_one_byte",
         {"--config", "9", "--distance-unit", "3", "--distance-one-byte"},
         "p"},
        {"config10_feet_three_memories", {"--distance-unit", "1", "--memories", "3"}, "p"},
        {"config11_millimetres",
         {"--config", "11", "--distance-unit", "2", "--level-length", "14"},
         "p"},
        {"config5_short_speaker_setting",
         {"--config", "5", "--sp-length", "5", "--xcurve", "7", "--crossover", "9"},
         "p"},
        // Replies a run survives.
        {"config10_not_measured", {"--invalid", "RVFL,RACT,FBS"}},
        {"config10_no_top_delay", {"--refuse", "FBTS"}},
    };
    return scenarios;
}

}  // namespace sonalyx::test
