#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "document/speaker_layout.h"

namespace sonalyx {

// Turns the reverb and group delay replies of a receive run into document text: the channel,
// band and reverb type header, the [MEMO%d]/[DATA%d]/[DATA%dA] blocks and the group delay
// section. The receive engine owns one per run.
class ReverbConverter {
  public:
    // Forgets everything of a previous run; the layout is 9 until told otherwise.
    void reset();
    // The receiver's configuration code, band selector and reverb type from "?EI" (or the
    // assumed configuration 9 of an old receiver).
    void setConfiguration(int configCode, int bandSelector, int reverbType);

    // "[CHANNEL]", "[BAND]" and "[REVERB TYPE]" with their lines and the empty lines between.
    void writeHeader(std::vector<std::string>& lines) const;

    // One reverb block: the [MEMO%d] heading once per number, then "[DATA%d]" (or "[DATA%dA]"
    // for the after-calibration variant), the rows when valid, and an empty line.
    void writeDataBlock(int dataNumber, bool after, bool valid, std::span<const std::uint8_t> body,
                        std::vector<std::string>& lines);

    // Keeps the before and after rows of one "?FB" reply; attribute names the speaker group.
    void convertGroupDelay(int attribute, std::span<const std::uint8_t> body);
    bool hasGroupDelay() const;
    // "[CHANNEL]", the group names, "[Before]", "[After]" and the offset line.
    void writeGroupDelaySection(std::vector<std::string>& lines) const;

  private:
    void writeBandRows(std::span<const std::uint8_t> body, std::vector<std::string>& lines) const;
    std::string channelLabel(int dataNumber) const;
    void writeGroupRows(const std::array<std::optional<std::string>, kGroupIdCount>& rows,
                        std::vector<std::string>& lines) const;

    int configCode_ = 9;
    int bandSelector_ = 0;
    int reverbType_ = 0;
    int lastDataNumber_ = 0;
    bool memoHeadingWritten_ = false;
    std::array<std::optional<std::string>, kGroupIdCount> before_;
    std::array<std::optional<std::string>, kGroupIdCount> after_;
    float offset_ = 0.0f;
};

}  // namespace sonalyx
