#include "golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "document/document_file.h"

namespace sonalyx::test {

namespace {

// Longest common subsequence table over lines; documents are a few thousand lines at most.
std::vector<std::vector<int>> lcsTable(const std::vector<std::string>& a,
                                       const std::vector<std::string>& b) {
    std::vector<std::vector<int>> t(a.size() + 1, std::vector<int>(b.size() + 1, 0));
    for (size_t i = a.size(); i-- > 0;) {
        for (size_t j = b.size(); j-- > 0;) {
            t[i][j] = a[i] == b[j] ? t[i + 1][j + 1] + 1 : std::max(t[i + 1][j], t[i][j + 1]);
        }
    }
    return t;
}

}  // namespace

std::string unifiedDiff(const std::vector<std::string>& expected,
                        const std::vector<std::string>& actual) {
    if (expected == actual)
        return {};
    // Trim the common head and tail so the table stays small.
    size_t head = 0;
    while (head < expected.size() && head < actual.size() && expected[head] == actual[head])
        ++head;
    size_t tail = 0;
    while (tail + head < expected.size() && tail + head < actual.size() &&
           expected[expected.size() - 1 - tail] == actual[actual.size() - 1 - tail]) {
        ++tail;
    }
    const std::vector<std::string> a(expected.begin() + static_cast<long>(head),
                                     expected.end() - static_cast<long>(tail));
    const std::vector<std::string> b(actual.begin() + static_cast<long>(head),
                                     actual.end() - static_cast<long>(tail));
    std::string out = "--- expected\n+++ actual\n@@ line " + std::to_string(head + 1) + " @@\n";
    const size_t context = std::min<size_t>(head, 3);
    for (size_t k = head - context; k < head; ++k)
        out += " " + expected[k] + "\n";
    if (a.size() * b.size() > 4'000'000) {
        for (const auto& l : a)
            out += "-" + l + "\n";
        for (const auto& l : b)
            out += "+" + l + "\n";
        return out;
    }
    const auto t = lcsTable(a, b);
    size_t i = 0;
    size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            out += " " + a[i] + "\n";
            ++i;
            ++j;
        } else if (j < b.size() && (i == a.size() || t[i][j + 1] >= t[i + 1][j])) {
            out += "+" + b[j++] + "\n";
        } else {
            out += "-" + a[i++] + "\n";
        }
    }
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
    const char* update = std::getenv("SONALYX_UPDATE_GOLDEN");
    if (update && std::string(update) == "1") {
        ASSERT_TRUE(writeDocumentLinesAtomically(goldenPath, actual)) << goldenPath;
        return;
    }
    const auto expected = readLinesOrFail(goldenPath);
    const std::string diff = unifiedDiff(expected, actual);
    EXPECT_TRUE(diff.empty()) << goldenPath << " differs:\n" << diff;
}

void expectSectionsMatchGolden(const std::string& goldenPath,
                               const std::vector<GoldenSection>& sections) {
    const char* update = std::getenv("SONALYX_UPDATE_GOLDEN");
    if (update && std::string(update) == "1") {
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

std::string testDataPath(const std::string& relative) {
    return std::string(SONALYX_TEST_DATA_DIR) + "/" + relative;
}

std::string samplesPath(const std::string& relative) {
    return std::string(SONALYX_SAMPLES_DIR) + "/" + relative;
}

}  // namespace sonalyx::test
