#include "parameter_feed.h"

namespace sonalyx::test {

std::vector<std::string> documentWithParameters(const std::vector<std::string>& rows) {
    std::vector<std::string> lines = {
        "[DATE]", "2024.05.17 14:03", "", "", "", "  \"TORVE Parameters\"", "", "[FILEMEMO]", ""};
    lines.insert(lines.end(), rows.begin(), rows.end());
    return lines;
}

}  // namespace sonalyx::test
