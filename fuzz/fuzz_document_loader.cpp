// Feeds arbitrary bytes to the document loader, then writes the document and reads it again.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"

namespace {

using namespace sonalyx;

// Memo text is free text: a memo line that reads like a section title or a marker cannot be
// told apart from one when the file is read again, so only documents without such lines must
// come back exactly as they were written.
bool memosAreUnambiguous(const MeasurementDocument& doc) {
    const auto plain = [](const Memo& memo) {
        for (const std::string& line : memo) {
            if (!line.empty() && (line[0] == ' ' || line[0] == '"' || line[0] == '[' ||
                                  line[0] == '*' || line[0] == '(')) {
                return false;
            }
        }
        return true;
    };
    for (const Memo& m : doc.fileMemos) {
        if (!plain(m))
            return false;
    }
    for (const Memo& m : doc.channelMemos) {
        if (!plain(m))
            return false;
    }
    for (const Memo& m : doc.groupMemos) {
        if (!plain(m))
            return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    MeasurementDocument doc;
    if (!DocumentLoader::load(doc, splitLines(text), "fuzz.csv", nullptr))
        return 0;
    std::vector<std::string> written;
    DocumentWriter::write(doc, written);
    MeasurementDocument again;
    if (!DocumentLoader::load(again, written, "fuzz.csv", nullptr))
        __builtin_trap();
    std::vector<std::string> rewritten;
    DocumentWriter::write(again, rewritten);
    if (!memosAreUnambiguous(doc))
        return 0;
    // Otherwise the writer's output is a fixed point of load and write.
    if (rewritten != written)
        __builtin_trap();
    return 0;
}
