#include "retrieval/receive_run.h"

#include "document/channel_name.h"
#include "document/speaker_layout.h"
#include "retrieval/receive_plan.h"

namespace sonalyx {

void ReceiveRun::reset() {
    reverb.reset();
    parameters.reset();
    lines.clear();
    tracker.reset();
    groupDelayEndedAt.clear();
    phase = kReverbPhase;
    infoPending = 0;
    retryCount = 0;
    extended = 0;
    fl1Data.clear();
    channelStep = 0;
    dataNumber = 1;
    paramStep = 0;
    attribute = 0;
    lastCommand.clear();
    items.clear();
    itemAttributes.clear();
    itemCount = itemIndex = subIndex = 0;
    afterVariant = 0;
    afterAvailable = 1;
    progressStep = 0;
    progressPosition = 0;
    fallbackChannel = 0;
    // Until the receiver says otherwise its channels are those of configuration 9; the code
    // itself stays unknown (0) so that the first reply's extended flag is read.
    useConfiguration(kAssumedConfiguration);
    configCode = 0;
}

void ReceiveRun::replan() {
    PlanFacts facts;
    facts.reverb = options.reverb;
    facts.groupDelay = options.groupDelay;
    facts.parameters = options.parameters;
    facts.extended = extended != 0;
    facts.channelCodes = channelCodes;
    facts.configCode = configCode;
    facts.afterData = afterAvailable != 0;
    facts.groupDelayEndedAt = groupDelayEndedAt;
    facts.fallback = phase == kFallback;
    for (int i = 0; i < static_cast<int>(kFallbackCodes.size()); ++i) {
        if (!kFallbackCodes[static_cast<size_t>(i)].empty() && parameters.fallbackChannelPresent(i))
            facts.fallbackEqCodes.emplace_back(kFallbackCodes[static_cast<size_t>(i)]);
    }
    // Every change of plan is followed by a command or the end, which report it.
    tracker.setPlan(planCommands(facts));
}

void ReceiveRun::useConfiguration(int code) {
    configCode = code;
    channelCodes.clear();
    if (const SpeakerLayout* layout = layoutByNumber(code)) {
        for (int id : layout->channelIds)
            channelCodes.emplace_back(channelName(id).queryCode);
    } else {
        // A configuration without a channel list: only the front left, asked by the probe.
        channelCodes.emplace_back("FL");
    }
}

int ReceiveRun::channelCount() const {
    return static_cast<int>(channelCodes.size());
}

int ReceiveRun::eqRecordsPerGroup() const {
    return configCode == 11 ? 9 : configCode;
}

}  // namespace sonalyx
