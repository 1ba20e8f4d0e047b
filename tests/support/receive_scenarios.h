#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "retrieval/receive_engine.h"
#include "support/golden.h"

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
        {"config5", words("--config 5 --reverb-type 4")},
        {"config6", words("--config 6 --reverb-type 0")},
        {"config7", words("--config 7 --reverb-type 5")},
        {"config9", words("--config 9 --reverb-type 1")},
        {"config10", {}},
        {"config11", words("--config 11 --subwoofer-mode 1 --reverb-type 3")},
        {"config10_bands1", words("--bands 1")},
        {"config9_bands2", words("--config 9 --bands 2 --reverb-type 9")},
        {"config6_info2", words("--config 6 --info-length 2")},
        {"old_receiver", words("--old")},
        // What is asked for.
        {"config10_no_after", words("--no-after")},
        {"config7_no_after", words("--config 7 --no-after"), "rg"},
        {"config10_reverb", {}, "r"},
        {"config5_groupdelay_parameters", words("--config 5"), "gp"},
        {"config10_parameters_only", {}, "parameters-only"},
        // The parameter layouts, by list and by the single-channel fallback.
        {"config5_fallback",
         words("--config 5 --refuse EQALL --sp-length 5 --distance-unit 3 --xcurve 7"), "p"},
        {"config9_fallback",
         words("--config 9 --refuse EQALL --sp-length 6 --bands 1 --subwoofer-mode 1 "
               "--subwoofer-code 0 --crossover 3 --distance-unit 1 --xcurve 9"),
         "p"},
        {"config10_fallback",
         words("--config 10 --refuse EQALL --distance-one-byte --xcurve 10 --level-length 15"),
         "p"},
        {"config11_fallback",
         words("--config 11 --refuse EQALL --distance-unit 2 --level-length 15 --bands 2 "
               "--surr-back-size 4"),
         "p"},
        {"config9_inches_one_byte",
         words("--config 9 --distance-unit 3 --distance-one-byte --sp-length 6 --bands 1 "
               "--subwoofer-mode 1 --subwoofer-code 0 --crossover 3 --xcurve 9"),
         "p"},
        {"config10_feet_three_memories",
         words("--distance-unit 1 --memories 3 --xcurve 10 --level-length 15"), "p"},
        {"config11_millimetres",
         words("--config 11 --distance-unit 2 --level-length 14 --bands 2 --surr-back-size 4"),
         "p"},
        {"config5_short_speaker_setting",
         words("--config 5 --sp-length 5 --xcurve 7 --crossover 9 --distance-unit 3"), "p"},
        // Replies a run survives.
        {"config10_not_measured", words("--invalid RVFL,RACT,FBS")},
        {"config10_no_top_delay", words("--refuse FBTS")},
    };
    return scenarios;
}

}  // namespace sonalyx::test
