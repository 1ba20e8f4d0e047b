#include "golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "document/document_file.h"
#include "document/document_loader.h"

namespace sonalyx::test {

namespace {

bool updating() {
    const char* update = std::getenv("SONALYX_UPDATE_GOLDEN");
    return update != nullptr && std::string(update) == "1";
}

}  // namespace

// One hunk from the first to the last differing line, with three lines of context around it:
// goldens change in one place at a time, and this reads as well as a full diff there.
std::string unifiedDiff(const std::vector<std::string>& expected,
                        const std::vector<std::string>& actual) {
    if (expected == actual)
        return {};
    size_t head = 0;
    while (head < expected.size() && head < actual.size() && expected[head] == actual[head])
        ++head;
    size_t tail = 0;
    while (tail + head < expected.size() && tail + head < actual.size() &&
           expected[expected.size() - 1 - tail] == actual[actual.size() - 1 - tail]) {
        ++tail;
    }
    std::string out = "--- expected\n+++ actual\n@@ line " + std::to_string(head + 1) + " @@\n";
    for (size_t k = head - std::min<size_t>(head, 3); k < head; ++k)
        out += " " + expected[k] + "\n";
    for (size_t k = head; k < expected.size() - tail; ++k)
        out += "-" + expected[k] + "\n";
    for (size_t k = head; k < actual.size() - tail; ++k)
        out += "+" + actual[k] + "\n";
    for (size_t k = expected.size() - tail; k < expected.size() - tail + std::min<size_t>(tail, 3);
         ++k)
        out += " " + expected[k] + "\n";
    return out;
}

std::vector<std::string> readLinesOrFail(const std::string& path) {
    auto lines = readDocumentLines(path);
    if (!lines) {
        ADD_FAILURE() << "cannot read " << path;
        return {};
    }
    return *lines;
}

void expectMatchesGolden(const std::string& goldenPath, const std::vector<std::string>& actual) {
    if (updating()) {
        ASSERT_TRUE(writeDocumentLinesAtomically(goldenPath, actual)) << goldenPath;
        return;
    }
    const std::string diff = unifiedDiff(readLinesOrFail(goldenPath), actual);
    EXPECT_TRUE(diff.empty()) << goldenPath << " differs:\n" << diff;
}

void expectSectionsMatchGolden(const std::string& goldenPath,
                               const std::vector<GoldenSection>& sections) {
    if (updating()) {
        std::vector<std::string> all;
        for (const auto& [name, lines] : sections) {
            all.push_back("## " + name);
            all.insert(all.end(), lines.begin(), lines.end());
        }
        ASSERT_TRUE(writeDocumentLinesAtomically(goldenPath, all)) << goldenPath;
        return;
    }
    std::map<std::string, std::vector<std::string>> expected;
    std::vector<std::string>* current = nullptr;
    for (const auto& line : readLinesOrFail(goldenPath)) {
        if (line.starts_with("## "))
            current = &expected[line.substr(3)];
        else if (current != nullptr)
            current->push_back(line);
    }
    for (const auto& [name, lines] : sections) {
        const auto found = expected.find(name);
        if (found == expected.end()) {
            ADD_FAILURE() << goldenPath << " has no section \"" << name << "\"";
            continue;
        }
        const std::string diff = unifiedDiff(found->second, lines);
        EXPECT_TRUE(diff.empty()) << goldenPath << ", section \"" << name << "\" differs:\n"
                                  << diff;
        expected.erase(found);
    }
    for (const auto& [name, lines] : expected)
        ADD_FAILURE() << goldenPath << " has a section no case writes: \"" << name << "\"";
}

std::string fileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

MeasurementDocument loadSampleDocument(const std::string& layout) {
    const std::string path = samplesPath("sample-layout-" + layout + ".csv");
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, readLinesOrFail(path), path, nullptr)) << path;
    return doc;
}

std::string testDataPath(const std::string& relative) {
    return std::string(SONALYX_TEST_DATA_DIR) + "/" + relative;
}

std::string samplesPath(const std::string& relative) {
    return std::string(SONALYX_SAMPLES_DIR) + "/" + relative;
}

}  // namespace sonalyx::test
