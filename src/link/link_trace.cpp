#include "link/link_trace.h"

namespace sonalyx {

namespace {

constexpr std::size_t kLongestFullReceiveTrace = 2000;

void appendHexByte(std::string& line, std::uint8_t byte) {
    static constexpr char kDigits[] = "0123456789abcdef";
    line += kDigits[byte >> 4];
    line += kDigits[byte & 0x0F];
    line += ' ';
}

bool tracedAsCharacter(std::uint8_t byte) {
    return byte == '?' || (byte >= 'A' && byte <= 'Z');
}

}  // namespace

std::string sendTraceLine(const std::vector<std::uint8_t>& bytes) {
    std::string line = "<";
    line.reserve(bytes.size() * 3 + 2);
    for (std::uint8_t byte : bytes) {
        if (tracedAsCharacter(byte)) {
            line += static_cast<char>(byte);
            line += ' ';
        } else {
            appendHexByte(line, byte);
        }
    }
    line += '>';
    return line;
}

std::string receiveTraceLine(const std::vector<std::uint8_t>& bytes) {
    std::string line = "<";
    if (bytes.size() > kLongestFullReceiveTrace) {
        appendHexByte(line, bytes.front());
        line += " Too many data.";
    } else {
        line.reserve(bytes.size() * 3 + 2);
        for (std::uint8_t byte : bytes) {
            appendHexByte(line, byte);
        }
    }
    line += '>';
    return line;
}

}  // namespace sonalyx
