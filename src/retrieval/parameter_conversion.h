#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

// One received list item (or a single reply): its attribute/prefix byte and its body.
struct ReplyItem {
    int attribute = 0;
    std::vector<std::uint8_t> body;
};

// Turns the parameter phase's replies into the rows of the "TORVE Parameters" section.
// The receive engine owns one per run and calls it as the replies arrive.
class ParameterConverter {
  public:
    // Forgets everything of a previous run.
    void reset();
    // The receiver's configuration code (5, 6, 7, 9, 10, 11) and band selector from "?EI".
    void setConfiguration(int configCode, int bandSelector);

    // "?SI": crossover and X-curve codes, kept for the speaker setting and X-curve rows.
    void convertSystemInfo(std::span<const std::uint8_t> body);
    // "?SP": the "* Speaker Setting" group with the crossover row. attribute is the reply's
    // attribute byte (the subwoofer mode).
    void convertSpeakerSetting(int attribute, std::span<const std::uint8_t> body,
                               std::vector<std::string>& lines);
    // "?EQALL": records[g * recordsPerGroup + r] is record r of group (memory) g;
    // groupAttributes[g] is the memory number. Writes "* Acoustic Cal EQ", then "* X-Curve".
    void convertEqList(const std::vector<ReplyItem>& records, int recordsPerGroup,
                       const std::vector<int>& groupAttributes, std::vector<std::string>& lines);
    // "?DLALL", "?LVALL", "?STALL": one item per memory, attribute = memory number.
    void convertDistanceList(const std::vector<ReplyItem>& items, std::vector<std::string>& lines);
    void convertLevelList(const std::vector<ReplyItem>& items, std::vector<std::string>& lines);
    void convertStandingWaveList(const std::vector<ReplyItem>& items,
                                 std::vector<std::string>& lines);

    // The single-channel fallback when "?EQALL" is refused: "?DL", "?LV", then "?EQ<code>"
    // for each present channel (channelIndex 0..14 of the fallback code table), then the end.
    void convertSingleDistance(const ReplyItem& reply, std::vector<std::string>& lines);
    void convertSingleLevel(const ReplyItem& reply, std::vector<std::string>& lines);
    void convertSingleEq(int channelIndex, const ReplyItem& reply, std::vector<std::string>& lines);
    void finishFallback(std::vector<std::string>& lines);
    // Whether the speaker setting marks fallback channel index 0..14 present (index 6 when its
    // setting value is 1 or 3; 9, 10 and 13 never).
    bool fallbackChannelPresent(int channelIndex) const;

    // Whether the speaker setting marks a channel (by channel id) present.
    bool channelPresent(int channelId) const;
    // The channel id the fallback asks for at channelIndex, or -1 for the unused indexes.
    int fallbackChannelId(int channelIndex) const;
    // The fallback's query code at channelIndex ("FL", "EXSL"), empty for 9, 10 and 13.
    static std::string_view fallbackChannelCode(int channelIndex);
    static constexpr int kFallbackChannelCount = 15;

  private:
    using FilterCellText = std::string (*)(std::span<const std::uint8_t>, std::size_t);

    int settingByte(int index) const;
    int frontSize() const;
    int surroundSize() const;
    int centerSize() const;
    int surrBackSize() const;
    int subwooferCode() const;
    int speakerBSize() const;
    int surroundBSize() const;
    int topSurrSize() const;
    std::string subwooferText() const;
    bool subwooferPresent() const;
    bool twoSubwoofers() const;
    std::vector<int> mainChannels() const;
    std::vector<int> channelsWithSubwoofers() const;

    static std::string distanceCell(int channelId, std::span<const std::uint8_t> body);
    static std::string formatDistance(long long v, int unit);
    std::string levelCell(int channelId, std::span<const std::uint8_t> body) const;
    static std::string memoryHeading(const std::vector<ReplyItem>& items);

    static void appendStandingWaveBlock(const ReplyItem& item, std::vector<std::string>& lines);
    static std::string filterRow(std::string_view label, std::span<const std::uint8_t> body,
                                 int byteInFilter, FilterCellText cellText);

    std::string_view bandHeading() const;
    int eqBandCount() const;
    std::string eqChannelLabel(int channelId) const;
    std::string eqRow(int channelId, std::span<const std::uint8_t> body) const;
    static std::string curveRow(int curveCode);
    void startFallbackEq(std::vector<std::string>& lines);
    void appendXCurve(std::vector<std::string>& lines) const;

    int configCode_ = 0;
    int bandSelector_ = 0;
    int crossoverCode_ = 0;
    int xCurveCode_ = 0;
    int subwooferMode_ = 0;
    std::vector<std::uint8_t> speakerSetting_;
    bool fallbackEqStarted_ = false;
};

}  // namespace sonalyx
