#include "fake_receiver.h"

#include "emulator/parameter_replies.h"

namespace sonalyx::test {

namespace {

using Bytes = std::vector<std::uint8_t>;

void append(Bytes& out, const Bytes& more) {
    out.insert(out.end(), more.begin(), more.end());
}

int codeSeed(const std::string& code) {
    int seed = 0;
    for (char c : code)
        seed = seed * 31 + c;
    return seed;
}

int groupAttribute(const std::string& group) {
    if (group == "F")
        return 0;
    if (group == "S")
        return 1;
    if (group == "C")
        return 2;
    if (group == "B")
        return 3;
    if (group == "ES")
        return 5;
    return 7;  // "TS"
}

emulator::ParameterProfile profileOf(const FakeReceiver& receiver) {
    emulator::ParameterProfile profile;
    profile.configCode = receiver.configCode;
    profile.bandSelector = receiver.bandSelector;
    profile.memoryCount = receiver.memoryCount;
    return profile;
}

}  // namespace

Bytes errorReply() {
    return {'E', '0', '4', 0, 0};
}

Bytes replyOfLength(int length, bool extended) {
    Bytes bytes = {0, static_cast<std::uint8_t>(((length >> 8) & 0x7F) | (extended ? 0x80 : 0)),
                   static_cast<std::uint8_t>(length & 0xFF)};
    bytes.resize(bytes.size() + static_cast<size_t>(length), 0x11);
    return bytes;
}

Bytes FakeReceiver::frame(int attribute, const Bytes& body) const {
    const auto length = static_cast<int>(body.size());
    Bytes bytes = {static_cast<std::uint8_t>(attribute),
                   static_cast<std::uint8_t>(((length >> 8) & 0x7F) | (extended ? 0x80 : 0)),
                   static_cast<std::uint8_t>(length & 0xFF)};
    append(bytes, body);
    return bytes;
}

Bytes FakeReceiver::reverbBody(const std::string& code, bool after) const {
    const int bands = bandSelector == 1 || bandSelector == 2 ? 6 : 9;
    const int seed = codeSeed(code) + (after ? 500 : 0);
    Bytes body;
    for (int band = 0; band < bands; ++band) {
        for (int t = 0; t < 32; ++t) {
            // Decays from a few dB above the base to well below it, with some ripple.
            const int value = 600 - t * 97 - band * 31 + (seed + band * 7 + t * 13) % 41;
            const auto raw = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
            body.push_back(static_cast<std::uint8_t>(raw >> 8));
            body.push_back(static_cast<std::uint8_t>(raw & 0xFF));
        }
    }
    return body;
}

Bytes FakeReceiver::groupDelayBody(const std::string& group) const {
    const int seed = codeSeed(group);
    Bytes body;
    for (int i = 0; i < 128; ++i)
        body.push_back(
            static_cast<std::uint8_t>(static_cast<std::int8_t>((seed + i * 37) % 255 - 127)));
    body.push_back(18);  // scale 1.8 ms
    body.push_back(5);   // base 0.5 ms
    body.push_back(15);  // offset 1.5 ms
    return body;
}

Bytes FakeReceiver::reply(const std::string& command) {
    if (silent.count(command))
        return {};
    if (auto it = scripted.find(command); it != scripted.end() && !it->second.empty()) {
        Bytes bytes = it->second.front();
        it->second.pop_front();
        return bytes;
    }
    if (auto it = refusals.find(command); it != refusals.end() && it->second != 0) {
        if (it->second > 0)
            --it->second;
        return errorReply();
    }
    return normalReply(command);
}

Bytes FakeReceiver::normalReply(const std::string& command) const {
    if (command.starts_with("?RV"))
        return frame(0, reverbBody(command.substr(3), false));
    if (command.starts_with("?RA")) {
        if (!afterData)
            return errorReply();
        return frame(0, reverbBody(command.substr(3), true));
    }
    if (command == "?EI") {
        return {0,
                0,
                4,
                static_cast<std::uint8_t>(configCode),
                static_cast<std::uint8_t>(bandSelector),
                static_cast<std::uint8_t>(reverbType),
                0};
    }
    if (command.starts_with("?FB")) {
        const std::string group = command.substr(3);
        return frame(groupAttribute(group), groupDelayBody(group));
    }
    return parameterReply(command);
}

Bytes FakeReceiver::parameterReply(const std::string& command) const {
    const auto profile = profileOf(*this);
    auto single = [this](const emulator::Reply& r) { return frame(r.attribute, r.body); };
    auto list = [&](const std::vector<emulator::Reply>& items) {
        Bytes bytes = {static_cast<std::uint8_t>(items.size())};
        for (const auto& item : items)
            append(bytes, single(item));
        return bytes;
    };
    if (command == "?SI")
        return single(emulator::systemInfoReply(profile));
    if (command == "?SP")
        return single(emulator::speakerSettingReply(profile));
    if (command == "?DLALL")
        return list(emulator::distanceAllReply(profile));
    if (command == "?LVALL")
        return list(emulator::levelAllReply(profile));
    if (command == "?STALL")
        return list(emulator::standingWaveAllReply(profile));
    if (command == "?EQALL") {
        const auto groups = emulator::eqAllReply(profile);
        Bytes bytes = {static_cast<std::uint8_t>(groups.size())};
        for (const auto& records : groups) {
            for (const auto& record : records) {
                bytes.push_back(record.prefix);
                append(bytes, single(record.reply));
            }
        }
        return bytes;
    }
    if (command == "?DL")
        return single(emulator::singleDistanceReply(profile));
    if (command == "?LV")
        return single(emulator::singleLevelReply(profile));
    if (command.starts_with("?EQ"))
        return single(emulator::singleEqReply(profile, command.substr(3)));
    return {};
}

}  // namespace sonalyx::test
