#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "retrieval/parameter_conversion.h"
#include "retrieval/progress_tracker.h"
#include "retrieval/reverb_converter.h"

namespace sonalyx {

// What a receive run fetches and how it is paced.
struct ReceiveOptions {
    std::string portName;
    bool reverb = true;
    bool groupDelay = true;
    bool parameters = true;
    // The "other receive": parameters only; the three kinds above are then ignored.
    bool parametersOnly = false;
    // Interval of the reply poll and the pause before the port is reopened after a bad first
    // reply; shorter values serve tests and tools.
    int tickMs = 1000;
    int reopenPauseMs = 3000;
};

// What one receive run has learnt and collected so far: the receiver's configuration, where
// the dialogue stands, the list reply being assembled and the document text. The engine that
// reads the replies and the chooser of the next command share it.
class ReceiveRun {
  public:
    enum Phase : int { kReverbPhase = 0, kGroupDelayPhase = 1, kParameterPhase = 2, kFallback = 3 };

    // Until the receiver names its configuration its channels are those of this one.
    static constexpr int kAssumedConfiguration = 9;
    // channelStep past the last group delay command.
    static constexpr int kGroupDelayEnd = 7;
    // paramStep of the EQ list, whose items come in groups.
    static constexpr int kEqListStep = 6;
    // paramStep values of the fallback: which reply is outstanding.
    static constexpr int kFallbackStart = 2;
    static constexpr int kFallbackDistance = 3;
    static constexpr int kFallbackLevel = 4;
    static constexpr int kFallbackEq = 5;
    // Single-channel codes of the fallback by channel index; empty ones are never asked.
    static constexpr std::array<std::string_view, 15> kFallbackCodes = {
        "FL",   "FR", "SL", "SR",   "CT",   "SBL", "SBR", "SPBL",
        "SPBR", "",   "",   "EXSL", "EXSR", "",    "TS"};

    // Forgets everything of a previous run except the options.
    void reset();
    // Takes the channel list of a configuration (only the front left for an unknown one).
    void useConfiguration(int configCode);
    // The whole list of commands follows from what the receiver has told so far.
    void replan();
    int channelCount() const;
    int eqRecordsPerGroup() const;

    ReceiveOptions options;
    ReverbConverter reverb;
    ParameterConverter parameters;
    ProgressTracker tracker;
    // The document text collected so far.
    std::vector<std::string> lines;

    bool probePending = false;
    int phase = kReverbPhase;
    int infoPending = 0;
    int retryCount = 0;
    int configCode = 0;
    int extended = 0;
    std::vector<std::uint8_t> fl1Data;
    int channelStep = 0;
    int dataNumber = 1;
    int paramStep = 0;
    int attribute = 0;
    // The command to repeat after an error reply; empty when it may not be repeated.
    std::string lastCommand;
    // The list reply being assembled.
    std::vector<ReplyItem> items;
    int itemCount = 0;
    int itemIndex = 0;
    int subIndex = 0;
    std::vector<int> itemAttributes;
    int afterVariant = 0;
    int afterAvailable = 1;
    int progressStep = 0;
    int progressPosition = 0;
    std::vector<std::string> channelCodes;
    int fallbackChannel = 0;
    // The group delay command whose refusal ended that phase early.
    std::string groupDelayEndedAt;
};

}  // namespace sonalyx
