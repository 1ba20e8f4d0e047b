#include "emulator/parameter_feed.h"

namespace sonalyx::emulator {

ReplyItem toItem(const Reply& reply) {
    return {reply.attribute, reply.body};
}

namespace {

ParameterConverter startedConverter(const ParameterProfile& profile,
                                    std::vector<std::string>& lines) {
    ParameterConverter converter;
    converter.setConfiguration(profile.configCode, profile.bandSelector);
    converter.convertSystemInfo(systemInfoReply(profile).body);
    const Reply sp = speakerSettingReply(profile);
    converter.convertSpeakerSetting(sp.attribute, sp.body, lines);
    return converter;
}

std::vector<ReplyItem> toItems(const std::vector<Reply>& replies) {
    std::vector<ReplyItem> items;
    for (const Reply& reply : replies)
        items.push_back(toItem(reply));
    return items;
}

}  // namespace

std::vector<std::string> convertListReplies(const ParameterProfile& profile) {
    std::vector<std::string> lines;
    ParameterConverter converter = startedConverter(profile, lines);

    std::vector<ReplyItem> records;
    std::vector<int> memories;
    int recordsPerGroup = 0;
    for (const auto& group : eqAllReply(profile)) {
        recordsPerGroup = static_cast<int>(group.size());
        for (const PrefixedReply& record : group)
            records.push_back(toItem(record.reply));
        memories.push_back(group.empty() ? 0 : group.back().prefix);
    }
    converter.convertEqList(records, recordsPerGroup, memories, lines);
    converter.convertDistanceList(toItems(distanceAllReply(profile)), lines);
    converter.convertLevelList(toItems(levelAllReply(profile)), lines);
    converter.convertStandingWaveList(toItems(standingWaveAllReply(profile)), lines);
    return lines;
}

std::vector<std::string> convertFallbackReplies(const ParameterProfile& profile) {
    std::vector<std::string> lines;
    ParameterConverter converter = startedConverter(profile, lines);
    converter.convertSingleDistance(toItem(singleDistanceReply(profile)), lines);
    converter.convertSingleLevel(toItem(singleLevelReply(profile)), lines);
    for (int index = 0; index < ParameterConverter::kFallbackChannelCount; ++index) {
        if (!converter.fallbackChannelPresent(index))
            continue;
        const std::string code(ParameterConverter::fallbackChannelCode(index));
        converter.convertSingleEq(index, toItem(singleEqReply(profile, code)), lines);
    }
    converter.finishFallback(lines);
    return lines;
}

}  // namespace sonalyx::emulator
