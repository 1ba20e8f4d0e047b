#include "emulator/receiver_emulator.h"

#include <algorithm>

#include "emulator/measurement_replies.h"

namespace sonalyx::emulator {

namespace {

constexpr std::uint8_t kCommandEnd = 0x0D;
constexpr std::uint8_t kNotMeasured = 0xF0;
constexpr std::size_t kBadProbeLength = 500;
constexpr std::size_t kOversizeLength = 2049;
constexpr std::size_t kBadInfoLength = 3;

const std::vector<std::uint8_t> kErrorReply = {'E', '0', '4', 0x0D, 0x0A};

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::vector<std::uint8_t> filler(std::size_t length) {
    std::vector<std::uint8_t> body(length);
    for (std::size_t i = 0; i < length; ++i) {
        body[i] = static_cast<std::uint8_t>(0xF0 - i % 32);
    }
    return body;
}

}  // namespace

ReceiverEmulator::ReceiverEmulator(ReceiverProfile profile) : profile_(std::move(profile)) {}

int ReceiverEmulator::configCode() const {
    return profile_.extended ? profile_.parameters.configCode : 9;
}

int ReceiverEmulator::bandSelector() const {
    return profile_.extended ? profile_.parameters.bandSelector : 0;
}

ReceiverEmulator::Output ReceiverEmulator::feed(const std::vector<std::uint8_t>& input) {
    Output output;
    for (std::uint8_t byte : input) {
        if (lineClosed_) {
            break;
        }
        if (byte != kCommandEnd) {
            pending_ += static_cast<char>(byte);
            continue;
        }
        Output reply = answer(pending_);
        pending_.clear();
        output.bytes.insert(output.bytes.end(), reply.bytes.begin(), reply.bytes.end());
        output.closeLine = reply.closeLine;
        lineClosed_ = reply.closeLine;
    }
    return output;
}

ReceiverEmulator::Output ReceiverEmulator::answer(const std::string& line) {
    const std::string command = startsWith(line, "?") ? line.substr(1) : line;
    commands_.push_back(command);
    if (profile_.silent) {
        return {};
    }
    Output output;
    output.bytes = refuses(command) ? kErrorReply : replyBytes(command);
    if (command == profile_.cutOffCommand) {
        output.bytes.resize(std::max<std::size_t>(4, output.bytes.size() / 2));
        output.closeLine = true;
    }
    if (command == profile_.stallCommand && !stalled_) {
        // The computer gets the header and part of the body, then waits for the rest.
        stalled_ = true;
        output.bytes.resize(std::max<std::size_t>(4, output.bytes.size() / 2));
    }
    return output;
}

bool ReceiverEmulator::refuses(const std::string& command) {
    if (startsWith(command, "RA") && !profile_.afterData) {
        return true;
    }
    const auto found = profile_.refusals.find(command);
    if (found == profile_.refusals.end() || found->second == 0) {
        return false;
    }
    if (found->second > 0) {
        --found->second;
    }
    return true;
}

std::vector<std::uint8_t> ReceiverEmulator::replyBytes(const std::string& command) {
    if (startsWith(command, "RV") || startsWith(command, "RA")) {
        return reverbReply(command);
    }
    if (!profile_.extended) {
        return kErrorReply;
    }
    if (command == "EI") {
        return infoReply();
    }
    if (startsWith(command, "FB")) {
        return groupDelayReply(command.substr(2));
    }
    return parameterReply(command);
}

std::vector<std::uint8_t> ReceiverEmulator::reverbReply(const std::string& command) {
    const std::vector<std::string> codes = reverbChannelCodes(configCode());
    const std::string code = command.substr(2);
    const auto found = std::find(codes.begin(), codes.end(), code);
    if (found == codes.end()) {
        return kErrorReply;
    }
    const bool after = startsWith(command, "RA");
    Reply reply;
    reply.body = reverbBody(static_cast<int>(found - codes.begin()), bandSelector(), after);
    const bool spoilProbe =
        profile_.badProbe == ReceiverProfile::BadProbe::Always ||
        (profile_.badProbe == ReceiverProfile::BadProbe::Once && !probeSpoiled_);
    if (command == "RVFL" && spoilProbe) {
        reply.body.resize(kBadProbeLength);
        probeSpoiled_ = true;
    }
    return singleReply(command, std::move(reply));
}

std::vector<std::uint8_t> ReceiverEmulator::infoReply() const {
    std::vector<std::uint8_t> body = {static_cast<std::uint8_t>(profile_.parameters.configCode),
                                      static_cast<std::uint8_t>(profile_.parameters.bandSelector),
                                      static_cast<std::uint8_t>(profile_.infoA),
                                      static_cast<std::uint8_t>(profile_.infoB)};
    body.resize(profile_.badInfoLength ? kBadInfoLength : profile_.infoLength == 2 ? 2 : 4);
    // The information reply's length is read whole, so it never carries the extended bit.
    std::vector<std::uint8_t> bytes = {0x00, static_cast<std::uint8_t>(body.size() >> 8),
                                       static_cast<std::uint8_t>(body.size() & 0xFF)};
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
}

std::vector<std::uint8_t> ReceiverEmulator::groupDelayReply(const std::string& code) const {
    const int group = groupDelayGroup(code);
    if (group < 0) {
        return kErrorReply;
    }
    Reply reply;
    reply.attribute = configurationHasGroup(configCode(), group) ? group : kNotMeasured | group;
    reply.body = groupDelayBody(group);
    return singleReply("FB" + code, std::move(reply));
}

std::vector<std::uint8_t> ReceiverEmulator::parameterReply(const std::string& command) const {
    const ParameterProfile& parameters = profile_.parameters;
    if (command == "SI") {
        return singleReply(command, systemInfoReply(parameters));
    }
    if (command == "SP") {
        return singleReply(command, speakerSettingReply(parameters));
    }
    if (command == "EQALL") {
        return eqListReply();
    }
    if (command == "DLALL") {
        return listReply(distanceAllReply(parameters));
    }
    if (command == "LVALL") {
        return listReply(levelAllReply(parameters));
    }
    if (command == "STALL") {
        return listReply(standingWaveAllReply(parameters));
    }
    if (command == "DL") {
        return singleReply(command, singleDistanceReply(parameters));
    }
    if (command == "LV") {
        return singleReply(command, singleLevelReply(parameters));
    }
    if (startsWith(command, "EQ") && command.size() > 2) {
        return singleReply(command, singleEqReply(parameters, command.substr(2)));
    }
    return kErrorReply;
}

std::vector<std::uint8_t> ReceiverEmulator::singleReply(const std::string& command,
                                                        Reply reply) const {
    if (profile_.oversizeCommands.count(command) != 0) {
        reply.body = filler(kOversizeLength);
    }
    if (profile_.invalidCommands.count(command) != 0) {
        reply.attribute |= kNotMeasured;
    }
    std::vector<std::uint8_t> bytes;
    appendFrame(bytes, reply);
    return bytes;
}

void ReceiverEmulator::appendFrame(std::vector<std::uint8_t>& bytes, const Reply& reply) const {
    const std::size_t length = reply.body.size();
    const std::uint8_t extendedBit = profile_.extended ? 0x80 : 0x00;
    bytes.push_back(static_cast<std::uint8_t>(reply.attribute));
    bytes.push_back(static_cast<std::uint8_t>(((length >> 8) & 0x7F) | extendedBit));
    bytes.push_back(static_cast<std::uint8_t>(length & 0xFF));
    bytes.insert(bytes.end(), reply.body.begin(), reply.body.end());
}

std::vector<std::uint8_t> ReceiverEmulator::listReply(const std::vector<Reply>& items) const {
    std::vector<std::uint8_t> bytes = {static_cast<std::uint8_t>(items.size())};
    for (const Reply& item : items) {
        appendFrame(bytes, item);
    }
    return bytes;
}

std::vector<std::uint8_t> ReceiverEmulator::eqListReply() const {
    const auto groups = eqAllReply(profile_.parameters);
    std::vector<std::uint8_t> bytes = {static_cast<std::uint8_t>(groups.size())};
    for (const auto& records : groups) {
        for (const PrefixedReply& record : records) {
            bytes.push_back(record.prefix);
            appendFrame(bytes, record.reply);
        }
    }
    return bytes;
}

}  // namespace sonalyx::emulator
