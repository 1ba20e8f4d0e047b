#include "retrieval/receive_commands.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace sonalyx {

namespace {

constexpr std::string_view kInformationCommand = "?EI\r";
constexpr int kProgressCap = 95;

// Group delay steps; the empty first entry is never sent.
constexpr std::array<std::string_view, 7> kGroupDelaySteps = {"", "F", "S", "C", "B", "ES", "TS"};

// Parameter commands by re-mapped step: asked as SI, SP, EQALL, DLALL, LVALL, STALL.
constexpr std::array<std::string_view, 6> kParameterWords = {"SI",    "SP",    "DLALL",
                                                             "LVALL", "STALL", "EQALL"};
constexpr int kParameterEnd = 7;

int remapParameterStep(int step) {
    switch (step) {
        case 2:
            return 5;
        case 5:
            return 6;
        case 6:
            return 2;
        default:
            return step;
    }
}

}  // namespace

void ReceiveCommands::SendNextCommand() {
    if (run_.probePending) {
        // Every run starts with the front-left reverb query: its reply tells whether the
        // receiver speaks the extended protocol.
        run_.probePending = false;
        run_.configCode = 0;
        run_.infoPending = 0;
        run_.extended = 0;
        sendNextReverbCommand();
        return;
    }
    continueWithPhase();
}

void ReceiveCommands::continueWithPhase() {
    if (run_.configCode != 0) {
        run_.infoPending = 0;
    } else if (run_.extended) {
        run_.infoPending = 1;
        sender_.sendCommand(std::string(kInformationCommand));
        return;
    } else {
        assumeConfiguration9();
    }
    switch (run_.phase) {
        case ReceiveRun::kReverbPhase:
            sendNextReverbCommand();
            break;
        case ReceiveRun::kGroupDelayPhase:
            if (run_.extended)
                sendNextGroupDelayCommand();
            else
                sender_.FinishRun();
            break;
        case ReceiveRun::kParameterPhase:
            if (run_.extended)
                sendNextParameterCommand();
            else
                sender_.FinishRun();
            break;
        default:
            sendNextFallbackCommand();
            break;
    }
}

void ReceiveCommands::assumeConfiguration9() {
    run_.useConfiguration(ReceiveRun::kAssumedConfiguration);
    run_.replan();
}

void ReceiveCommands::sendNextReverbCommand() {
    const int channels = run_.channelCount();
    if (run_.channelStep != 0 && run_.channelStep >= channels) {
        if (run_.options.groupDelay && run_.extended) {
            run_.phase = ReceiveRun::kGroupDelayPhase;
            run_.infoPending = 1;
            run_.channelStep = 1;
            run_.retryCount = 0;
        } else if (run_.options.parameters && run_.extended) {
            enterParameterPhase();
        } else {
            sender_.FinishRun();
            return;
        }
        continueWithPhase();
        return;
    }
    if (run_.channelStep == 1 && run_.afterVariant == 0) {
        int following = 0;
        if (run_.extended) {
            if (run_.options.groupDelay && run_.options.parameters)
                following = 10;
            else if (run_.options.groupDelay)
                following = 2;
            else if (run_.options.parameters)
                following = 8;
        }
        run_.progressStep = (100 - run_.progressPosition) / (channels + following);
    }
    const std::string command = (run_.afterVariant ? "?RA" : "?RV") +
                                run_.channelCodes[static_cast<size_t>(run_.channelStep)] + "\r";
    // With after-calibration data each channel is asked twice, measured then after.
    if (!run_.afterAvailable || !run_.options.reverb) {
        run_.afterVariant = 0;
        ++run_.channelStep;
    } else if (run_.afterVariant) {
        ++run_.channelStep;
    }
    if (!sender_.sendCommand(command))
        return;
    run_.progressPosition = std::min(run_.progressPosition + run_.progressStep, kProgressCap);
    sender_.showProgress(run_.channelStep == 1 ? 1 : run_.progressPosition);
}

void ReceiveCommands::enterParameterPhase() {
    run_.phase = ReceiveRun::kParameterPhase;
    run_.infoPending = 1;
    run_.paramStep = 0;
    run_.channelStep = 1;
    run_.retryCount = 0;
}

void ReceiveCommands::sendNextGroupDelayCommand() {
    if (run_.channelStep == 1)
        run_.progressStep = (100 - run_.progressPosition) / (run_.options.parameters ? 10 : 2);
    // "ES" is asked only of configurations 10 and 11, "TS" only of 10.
    if ((run_.configCode < 10 && run_.channelStep >= 5) ||
        (run_.configCode == 11 && run_.channelStep >= 6))
        run_.channelStep = ReceiveRun::kGroupDelayEnd;
    if (run_.channelStep >= ReceiveRun::kGroupDelayEnd) {
        endGroupDelayPhase();
        return;
    }
    while (kGroupDelaySteps[static_cast<size_t>(run_.channelStep)].empty())
        ++run_.channelStep;
    const std::string command =
        "?FB" + std::string(kGroupDelaySteps[static_cast<size_t>(run_.channelStep)]) + "\r";
    ++run_.channelStep;
    if (!sender_.sendCommand(command))
        return;
    advanceProgress();
}

void ReceiveCommands::endGroupDelayPhase() {
    if (run_.reverb.hasGroupDelay()) {
        run_.lines.insert(run_.lines.end(),
                          {"", "", "  \"Group Delay Characteristics\"", "", "[FILEMEMO]", ""});
        run_.reverb.writeGroupDelaySection(run_.lines);
    }
    if (run_.options.parameters && run_.extended) {
        enterParameterPhase();
        continueWithPhase();
    } else {
        sender_.FinishRun();
    }
}

void ReceiveCommands::sendNextParameterCommand() {
    const int entry = run_.paramStep;
    if (entry == 0) {
        run_.progressStep = (100 - run_.progressPosition) / 8;
        run_.lines.insert(run_.lines.end(),
                          {"", "", "  \"TORVE Parameters\"", "", "[FILEMEMO]", ""});
    }
    convertListReply(entry);
    const int mapped = remapParameterStep(entry);
    run_.paramStep = mapped + 1;
    if (mapped < static_cast<int>(kParameterWords.size())) {
        const std::string_view word = kParameterWords[static_cast<size_t>(mapped)];
        if (!sender_.sendCommand("?" + std::string(word) + "\r"))
            return;
        // Only the EQ list is asked again after an error reply; the others end the run.
        if (word != "EQALL")
            run_.lastCommand.clear();
        advanceProgress();
    }
    if (run_.paramStep == kParameterEnd)
        sender_.FinishRun();
}

void ReceiveCommands::convertListReply(int entry) {
    switch (entry) {
        case 3:
            run_.parameters.convertDistanceList(run_.items, run_.lines);
            break;
        case 4:
            run_.parameters.convertLevelList(run_.items, run_.lines);
            break;
        case 5:
            run_.parameters.convertStandingWaveList(run_.items, run_.lines);
            break;
        case ReceiveRun::kEqListStep:
            run_.parameters.convertEqList(run_.items, run_.eqRecordsPerGroup(), run_.itemAttributes,
                                          run_.lines);
            break;
        default:
            break;
    }
}

void ReceiveCommands::sendNextFallbackCommand() {
    std::string command;
    if (run_.paramStep == ReceiveRun::kFallbackStart) {
        run_.progressStep = (100 - run_.progressPosition) / 12;
        command = "?DL\r";
        run_.paramStep = ReceiveRun::kFallbackDistance;
    } else if (run_.paramStep == ReceiveRun::kFallbackDistance) {
        command = "?LV\r";
        run_.paramStep = ReceiveRun::kFallbackLevel;
        run_.channelStep = 0;
    } else {
        while (run_.channelStep < static_cast<int>(ReceiveRun::kFallbackCodes.size()) &&
               (ReceiveRun::kFallbackCodes[static_cast<size_t>(run_.channelStep)].empty() ||
                !run_.parameters.fallbackChannelPresent(run_.channelStep)))
            ++run_.channelStep;
        if (run_.channelStep >= static_cast<int>(ReceiveRun::kFallbackCodes.size())) {
            run_.parameters.finishFallback(run_.lines);
            sender_.FinishRun();
            return;
        }
        run_.fallbackChannel = run_.channelStep++;
        run_.paramStep = ReceiveRun::kFallbackEq;
        command =
            "?EQ" +
            std::string(ReceiveRun::kFallbackCodes[static_cast<size_t>(run_.fallbackChannel)]) +
            "\r";
    }
    if (!sender_.sendCommand(command))
        return;
    advanceProgress();
}

void ReceiveCommands::advanceProgress() {
    run_.progressPosition = std::min(run_.progressPosition + run_.progressStep, kProgressCap);
    sender_.showProgress(run_.progressPosition);
}

}  // namespace sonalyx
