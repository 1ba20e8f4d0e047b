#include "fake_receiver.h"

#include <algorithm>

#include "emulator/measurement_replies.h"

namespace sonalyx::test {

using Bytes = std::vector<std::uint8_t>;

Bytes replyOfLength(int length, bool extended) {
    Bytes bytes = {0, static_cast<std::uint8_t>(((length >> 8) & 0x7F) | (extended ? 0x80 : 0)),
                   static_cast<std::uint8_t>(length & 0xFF)};
    bytes.resize(bytes.size() + static_cast<size_t>(length), 0x11);
    return bytes;
}

Bytes FakeReceiver::frame(int attribute, const Bytes& body) const {
    Bytes bytes = replyOfLength(static_cast<int>(body.size()), extended);
    bytes[0] = static_cast<std::uint8_t>(attribute);
    std::copy(body.begin(), body.end(), bytes.begin() + 3);
    return bytes;
}

Bytes FakeReceiver::reverbBody(const std::string& code, bool after) const {
    const auto codes = emulator::reverbChannelCodes(configCode);
    const auto index = std::find(codes.begin(), codes.end(), code) - codes.begin();
    return emulator::reverbBody(static_cast<int>(index), bandSelector, after);
}

Bytes FakeReceiver::reply(const std::string& command) {
    if (silent.count(command))
        return {};
    if (auto it = scripted.find(command); it != scripted.end() && !it->second.empty()) {
        Bytes bytes = it->second.front();
        it->second.pop_front();
        return bytes;
    }
    if (!emulator_) {
        emulator::ReceiverProfile profile;
        profile.parameters.configCode = configCode;
        profile.parameters.bandSelector = bandSelector;
        profile.parameters.memoryCount = memoryCount;
        profile.infoA = reverbType;
        profile.extended = extended;
        profile.afterData = afterData;
        for (const auto& [refused, times] : refusals)
            profile.refusals[refused.substr(1)] = times;  // the emulator names them without '?'
        emulator_.emplace(profile);
    }
    const std::string line = command + "\r";
    return emulator_->feed({line.begin(), line.end()}).bytes;
}

}  // namespace sonalyx::test
