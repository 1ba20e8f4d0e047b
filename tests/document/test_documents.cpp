#include "test_documents.h"

#include "document/text_format.h"

namespace sonalyx::test {

const char* const kTimeRow =
    "Time[msec],5,10,15,20,25,30,35,40,45,50,55,60,65,70,75,80,85,90,95,100,105,110,115,120,"
    "125,130,135,140,145,150,155,160";

std::string headerRow(const std::string& name) {
    std::string row = name;
    for (int i = 0; i < 32; ++i)
        row += "," + std::to_string(i);
    return row;
}

std::string bandRow(const std::string& label, double start, double step, int count) {
    std::string row = label;
    for (int i = 0; i < count; ++i) {
        row += ',';
        appendFixed(row, start - step * i, 2);
    }
    return row;
}

std::vector<std::string> smallDocumentLines() {
    std::vector<std::string> lines = {
        "[DATE]",
        "2009.05.17 14:03",
        "",
        "  \"Reverb Characteristics\"",
        "",
        "[FILEMEMO]",
        "living room",
        "",
        "[CHANNEL]",
        "L,C,R,SR A,SL A",
        "",
        "[BAND]",
        "63,125,1k",
        "",
        "[REVERB TYPE]",
        "EQ ON,SYMMETRY",
        "",
        "[MEMO1]",
        "front left, tweeter",
        "",
        "[DATA1]",
        headerRow("L"),
        kTimeRow,
        bandRow("63Hz", 10.0, 0.5),
        bandRow("125Hz", 8.0, 0.5),
        bandRow("1kHz", 6.0, 0.25),
        "(Level[dB] = 58 + Value)",
        "",
        "[DATA1A]",
        headerRow("L"),
        kTimeRow,
        bandRow("63Hz", 9.0, 0.5),
        bandRow("125Hz", 7.0, 0.5),
        bandRow("1kHz", 5.0, 0.25),
        "(Level[dB] = 58 + Value)",
        "",
        "[DATA2]",
        "",
        "[DATA2A]",
        "",
        "[MEMO3]",
        "",
        "[DATA3]",
        headerRow("R"),
        kTimeRow,
        bandRow("63Hz", 12.0, 0.5),
        bandRow("125Hz", 10.0, 0.5),
        bandRow("1kHz", 8.0, 0.25),
        "(Level[dB] = 58 + Value)",
        "",
        "[DATA3A]",
        "",
        "[DATA4]",
        "",
        "[DATA4A]",
        "",
        "[DATA5]",
        "",
        "[DATA5A]",
        "",
        "[MEMOPAIR1]",
        "front pair",
        "",
        "",
        "",
        "  \"Group Delay Characteristics\"",
        "",
        "[FILEMEMO]",
        "",
        "[CHANNEL]",
        "Front,Center",
        "",
        "[Before]",
        ",0,1,2",
        "Freq[Hz],200,215,231",
        "Front,0.500000,0.400000,0.300000",
        "Center,0.250000,0.200000,0.150000",
        "",
        "[After]",
        ",0,1,2",
        "Freq[Hz],200,215,231",
        "Front,1.000000,0.900000,0.800000",
        "(Offset = +1.5ms)",
        "",
        "",
        "  \"TORVE Parameters\"",
        "",
        "[FILEMEMO]",
        "",
        "* Speaker Setting",
        "",
        "Front,,Large",
        "Center,,Small",
        "",
        "Crossover,,80Hz",
        "",
        "* Speaker Distance",
        ",,[M1],[M2]",
        "Left,,3.45m,3.40m",
        "* Channel Level",
    };
    return lines;
}

}  // namespace sonalyx::test
