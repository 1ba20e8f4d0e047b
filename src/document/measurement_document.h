#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

inline constexpr int kMaxPositions = 15;
inline constexpr int kMaxBands = 15;
inline constexpr int kTimePoints = 32;  // 5 ... 160 ms, step 5
inline constexpr int kMaxGroups = 15;
inline constexpr int kVariants = 2;  // 0 measured ("[DATA%d]"), 1 after calibration ("[DATA%dA]")
inline constexpr int kMaxMemoLines = 20;
inline constexpr int kGroupDelayBands = 64;
inline constexpr int kLevelBase = 58;  // reverb values are dB relative to this
inline constexpr double kDefaultGroupDelaySpan = 1.8;

inline constexpr std::string_view kNewDataName = "New Data";

enum Section : int { kReverbSection = 0, kGroupDelaySection = 1, kParametersSection = 2 };

using Memo = std::vector<std::string>;
using Curve = std::array<float, kTimePoints>;
using BandCurves = std::array<Curve, kMaxBands>;

// Group delay values read from the kept lines of the group delay section.
struct GroupDelayData {
    // [variant][group of the layout][band 0..63], milliseconds
    std::array<std::array<std::array<float, kGroupDelayBands>, kMaxGroups>, kVariants> values{};
    std::array<std::array<bool, kMaxGroups>, kVariants> hasData{};
    int groupCount = 0;                    // groups read from the "[Before]" rows
    double span = kDefaultGroupDelaySpan;  // from the "Offset = " line
};

// One document: a date, the reverb measurements, the kept group delay and parameter lines.
struct MeasurementDocument {
    std::string fileName;  // full path, or exactly "New Data"
    bool modified = false;
    std::string date;  // "yyyy.mm.dd hh:mm"

    std::array<Memo, 3> fileMemos;  // by Section
    std::array<Memo, kMaxPositions> channelMemos;
    std::array<Memo, kMaxGroups> groupMemos;

    std::vector<std::string> groupDelayLines;  // after the section title, as text
    std::string groupDelayChannelLine;         // the line after the section's "[CHANNEL]"
    std::vector<std::string> parameterLines;   // after the parameters title, as text
    GroupDelayData groupDelay;

    std::vector<std::string> channelNames;      // [CHANNEL] short names as read
    std::vector<std::string> channelLongNames;  // same positions
    int channelCount = 0;
    int layoutNumber = 0;
    int groupCount = 0;

    std::vector<std::string> bandLabels;
    int bandCount = 0;

    // [variant][position][band][time point]
    std::array<std::array<BandCurves, kMaxPositions>, kVariants> reverbValues{};
    // [variant][group][band][time point], computed from the reverb values
    std::array<std::array<BandCurves, kMaxGroups>, kVariants> groupValues{};
    std::array<std::array<bool, kMaxPositions>, kVariants> positionHasData{};
    std::array<std::array<bool, kMaxGroups>, kVariants> groupHasData{};
    std::array<bool, kVariants> anyVariantData{};
    bool variant1BlocksPresent = false;

    // Positions holding data in either variant ([0]) or in one variant ([1] and [2] for
    // variants 0 and 1), in position order.
    struct PositionList {
        std::vector<std::string> shortNames;
        std::vector<std::string> longNames;
        int count = 0;
    };
    std::array<PositionList, 3> positionsWithData;
    struct GroupList {
        std::vector<std::string> names;
        std::vector<std::string> abbreviations;
        int count = 0;
    };
    GroupList groupsWithData;

    int reverbType = 0;  // 0..5
    bool symmetry = false;
    std::string reverbTypeLabel = "EQ OFF";

    std::array<bool, 3> sectionLoaded{};

    bool isNewData() const { return fileName == kNewDataName; }
    // Group identity (GroupId) of group index g of this document's layout.
    int groupIdAt(int g) const;
    // Every list, flag and value back to an empty document.
    void reset();
};

// Recomputes the group curves of one variant: the energy mean of each group's two positions.
void computeGroupValues(MeasurementDocument& doc, int variant);

// The label kept for display for a reverb type ("EQ ON\r\n(SYMMETRY)").
std::string reverbTypeLabelFor(int type);

}  // namespace sonalyx
