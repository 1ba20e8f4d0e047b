#include "parameter_feed.h"

namespace sonalyx::test {

ReplyItem toItem(const emulator::Reply& reply) {
    return {reply.attribute, reply.body};
}

namespace {

ParameterConverter startedConverter(const emulator::ParameterProfile& profile,
                                    std::vector<std::string>& lines) {
    ParameterConverter converter;
    converter.setConfiguration(profile.configCode, profile.bandSelector);
    converter.convertSystemInfo(emulator::systemInfoReply(profile).body);
    const emulator::Reply sp = emulator::speakerSettingReply(profile);
    converter.convertSpeakerSetting(sp.attribute, sp.body, lines);
    return converter;
}

std::vector<ReplyItem> toItems(const std::vector<emulator::Reply>& replies) {
    std::vector<ReplyItem> items;
    for (const emulator::Reply& reply : replies)
        items.push_back(toItem(reply));
    return items;
}

}  // namespace

std::vector<std::string> convertListReplies(const emulator::ParameterProfile& profile) {
    std::vector<std::string> lines;
    ParameterConverter converter = startedConverter(profile, lines);

    std::vector<ReplyItem> records;
    std::vector<int> memories;
    int recordsPerGroup = 0;
    for (const auto& group : emulator::eqAllReply(profile)) {
        recordsPerGroup = static_cast<int>(group.size());
        for (const emulator::PrefixedReply& record : group)
            records.push_back(toItem(record.reply));
        memories.push_back(group.empty() ? 0 : group.back().prefix);
    }
    converter.convertEqList(records, recordsPerGroup, memories, lines);
    converter.convertDistanceList(toItems(emulator::distanceAllReply(profile)), lines);
    converter.convertLevelList(toItems(emulator::levelAllReply(profile)), lines);
    converter.convertStandingWaveList(toItems(emulator::standingWaveAllReply(profile)), lines);
    return lines;
}

std::vector<std::string> convertFallbackReplies(const emulator::ParameterProfile& profile) {
    std::vector<std::string> lines;
    ParameterConverter converter = startedConverter(profile, lines);
    converter.convertSingleDistance(toItem(emulator::singleDistanceReply(profile)), lines);
    converter.convertSingleLevel(toItem(emulator::singleLevelReply(profile)), lines);
    for (int index = 0; index < ParameterConverter::kFallbackChannelCount; ++index) {
        if (!converter.fallbackChannelPresent(index))
            continue;
        const std::string code(ParameterConverter::fallbackChannelCode(index));
        converter.convertSingleEq(index, toItem(emulator::singleEqReply(profile, code)), lines);
    }
    converter.finishFallback(lines);
    return lines;
}

std::vector<std::string> documentWithParameters(const std::vector<std::string>& rows) {
    std::vector<std::string> lines = {
        "[DATE]", "2024.05.17 14:03", "", "", "", "  \"TORVE Parameters\"", "", "[FILEMEMO]", ""};
    lines.insert(lines.end(), rows.begin(), rows.end());
    return lines;
}

}  // namespace sonalyx::test
