#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "document/measurement_document.h"

namespace sonalyx::test {

// A unified diff of two texts (empty when they are equal), for readable golden failures.
std::string unifiedDiff(const std::vector<std::string>& expected,
                        const std::vector<std::string>& actual);

// Lines of a file under tests/data (or an absolute path); fails the test when missing.
std::vector<std::string> readLinesOrFail(const std::string& path);

// Compares actual with the golden file; with SONALYX_UPDATE_GOLDEN=1 in the environment the
// golden file is rewritten instead.
void expectMatchesGolden(const std::string& goldenPath, const std::vector<std::string>& actual);

// A golden file of named sections: each section starts with a line "## name" followed by its
// lines. Each section is compared on its own, so a failure names the case that changed; with
// SONALYX_UPDATE_GOLDEN=1 the whole file is rewritten.
using GoldenSection = std::pair<std::string, std::vector<std::string>>;
void expectSectionsMatchGolden(const std::string& goldenPath,
                               const std::vector<GoldenSection>& sections);

// The whole file (empty when it cannot be read) and a text split at white space.
std::string fileBytes(const std::filesystem::path& path);
std::vector<std::string> words(const std::string& text);

// A shipped sample ("5", "7", "9", "10", "11") loaded under its own path.
MeasurementDocument loadSampleDocument(const std::string& layout);

std::string testDataPath(const std::string& relative);
std::string samplesPath(const std::string& relative);

}  // namespace sonalyx::test
