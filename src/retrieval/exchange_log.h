#pragma once

#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "retrieval/receive_observer.h"

namespace sonalyx {

struct ReceiveOptions;

// The record of one receive run: every open, close and transfer with its time since the start,
// the bytes as hex and as printable characters, and the step of the dialogue each command
// belongs to. Each entry is flushed as it is written, so a crash or a pulled cable still
// leaves the log. A log that cannot be written stays silent: it never fails the run.
class ExchangeLog {
  public:
    // Milliseconds from any fixed origin.
    using Clock = std::function<long long()>;

    ExchangeLog() = default;
    ExchangeLog(const ExchangeLog&) = delete;
    ExchangeLog& operator=(const ExchangeLog&) = delete;

    // Creates the file at path (UTF-8, replacing one of that name) and writes the heading;
    // startedAt is the wall-clock time for people. False when the file cannot be written.
    bool start(const std::string& path, const std::string& startedAt, Clock clock = {});
    bool writing() const { return writing_; }
    const std::string& path() const { return path_; }

    void runOptions(const ReceiveOptions& options);
    void opened(const std::string& portName, bool ok);
    void closed();
    void sent(const std::vector<std::uint8_t>& bytes, bool ok);
    // A read that asked for count bytes: bytes empty (and ok) means they were not all there.
    void received(std::size_t count, const std::vector<std::uint8_t>& bytes, bool ok);
    // The last entry: how the run ended. The file is closed after it.
    void ended(const ReceiveResult& result);

  private:
    void entry(std::string_view what, std::string_view text);
    void dump(const std::vector<std::uint8_t>& bytes);
    void write(const std::string& line);
    long long elapsedMs() const;

    std::ofstream out_;
    std::string path_;
    Clock clock_;
    long long origin_ = 0;
    bool writing_ = false;
    std::string lastCommand_;
};

}  // namespace sonalyx
