#include "test_documents.h"

#include "document/text_format.h"
#include "support/golden.h"

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
    return readLinesOrFail(testDataPath("document/small.csv"));
}

}  // namespace sonalyx::test
