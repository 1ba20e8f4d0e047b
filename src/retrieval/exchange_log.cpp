#include "retrieval/exchange_log.h"

#include <charconv>
#include <chrono>

#include "platform/path_text.h"
#include "retrieval/receive_engine.h"
#include "retrieval/receive_plan.h"

namespace sonalyx {

namespace {

constexpr std::size_t kBytesPerLine = 16;
constexpr std::size_t kTimeWidth = 8;
constexpr std::size_t kWhatWidth = 9;

long long steadyMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

std::string number(long long value) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string padLeft(std::string text, std::size_t width) {
    if (text.size() < width)
        text.insert(0, width - text.size(), ' ');
    return text;
}

std::string padRight(std::string text, std::size_t width) {
    if (text.size() < width)
        text.append(width - text.size(), ' ');
    return text;
}

std::string bytesText(std::size_t count) {
    return number(static_cast<long long>(count)) + (count == 1 ? " byte" : " bytes");
}

std::string commandOf(const std::vector<std::uint8_t>& bytes) {
    std::string command(bytes.begin(), bytes.end());
    if (!command.empty() && command.back() == '\r')
        command.pop_back();
    return command;
}

std::string kindsOf(const ReceiveOptions& options) {
    if (options.parametersOnly)
        return "parameters only";
    std::string kinds;
    const auto add = [&kinds](bool selected, const char* name) {
        if (!selected)
            return;
        if (!kinds.empty())
            kinds += ", ";
        kinds += name;
    };
    add(options.reverb, "reverb");
    add(options.groupDelay, "group delay");
    add(options.parameters, "parameters");
    return kinds;
}

}  // namespace

bool ExchangeLog::start(const std::string& path, const std::string& startedAt, Clock clock) {
    path_ = path;
    clock_ = clock ? std::move(clock) : Clock(steadyMs);
    origin_ = clock_();
    out_.open(platform::pathFromUtf8(path), std::ios::out | std::ios::trunc | std::ios::binary);
    writing_ = out_.is_open();
    write("Sonalyx receive log");
    write("Started: " + startedAt);
    return writing_;
}

void ExchangeLog::runOptions(const ReceiveOptions& options) {
    write("Port: " + options.portName);
    write("Data: " + kindsOf(options));
    write("Tick: " + number(options.tickMs) + " ms");
    write("");
    write(padLeft("ms", kTimeWidth) + "  " + padRight("what", kWhatWidth) + "detail");
}

void ExchangeLog::opened(const std::string& portName, bool ok) {
    entry("open", ok ? portName : portName + ", failed");
}

void ExchangeLog::closed() {
    entry("close", "");
}

void ExchangeLog::sent(const std::vector<std::uint8_t>& bytes, bool ok) {
    const std::string command = commandOf(bytes);
    const bool repeat = command == lastCommand_;
    lastCommand_ = command;
    entry("step", std::string(stepOfCommand(command)) + (repeat ? " (asked again): " : ": ") +
                      describeCommand(command));
    entry("send", bytesText(bytes.size()) + (ok ? "" : ", failed"));
    dump(bytes);
}

void ExchangeLog::received(std::size_t count, const std::vector<std::uint8_t>& bytes, bool ok) {
    if (!ok) {
        entry("receive", bytesText(count) + ", failed");
        return;
    }
    if (bytes.empty()) {
        entry("wait", bytesText(count) + " not there yet");
        return;
    }
    entry("receive", bytesText(bytes.size()));
    dump(bytes);
}

void ExchangeLog::ended(const ReceiveResult& result) {
    if (result.success) {
        entry("end", "done, " + number(static_cast<long long>(result.lines.size())) +
                         " lines of document text");
    } else if (result.cancelled) {
        entry("end", "cancelled");
    } else {
        const std::string step = lastCommand_.empty() ? std::string("before the first command")
                                                      : std::string(stepOfCommand(lastCommand_)) +
                                                            ", " + describeCommand(lastCommand_) +
                                                            " (" + lastCommand_ + ")";
        const std::string why = result.message.empty() ? "the line failed" : result.message;
        entry("end", "failed at " + step + ": " + why);
    }
    out_.close();
}

void ExchangeLog::entry(std::string_view what, std::string_view text) {
    std::string line = padLeft(number(elapsedMs()), kTimeWidth) + "  ";
    line += padRight(std::string(what), kWhatWidth);
    line += text;
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    write(line);
}

void ExchangeLog::dump(const std::vector<std::uint8_t>& bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    for (std::size_t start = 0; start < bytes.size(); start += kBytesPerLine) {
        const std::size_t end = std::min(bytes.size(), start + kBytesPerLine);
        std::string hex;
        std::string printable;
        for (std::size_t i = start; i < end; ++i) {
            hex += kDigits[bytes[i] >> 4];
            hex += kDigits[bytes[i] & 0x0F];
            hex += ' ';
            printable += bytes[i] >= 0x20 && bytes[i] < 0x7F ? static_cast<char>(bytes[i]) : '.';
        }
        std::string offset(4, '0');
        for (std::size_t i = 0, value = start; i < 4; ++i, value >>= 4)
            offset[3 - i] = kDigits[value & 0x0F];
        write(std::string(kTimeWidth + 2 + kWhatWidth, ' ') + offset + "  " +
              padRight(hex, kBytesPerLine * 3) + " |" + printable + "|");
    }
}

void ExchangeLog::write(const std::string& line) {
    if (!writing_)
        return;
    out_ << line << '\n';
    out_.flush();
    // A full disk or a vanished folder ends the log, never the run.
    if (!out_)
        writing_ = false;
}

long long ExchangeLog::elapsedMs() const {
    return clock_ ? clock_() - origin_ : 0;
}

}  // namespace sonalyx
