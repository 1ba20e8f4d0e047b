#include "convert_command.h"

#include <filesystem>
#include <iostream>

#include "cli_usage.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "stderr_messenger.h"

namespace sonalyx {

int runConvertCommand(const std::vector<std::string>& args) {
    std::string input;
    std::string output;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "-o" && i + 1 < args.size()) {
            output = args[++i];
        } else if (input.empty() && !args[i].empty() && args[i][0] != '-') {
            input = args[i];
        } else {
            return usageError("unexpected argument: " + args[i]);
        }
    }
    if (input.empty() || output.empty())
        return usageError("convert needs IN and -o OUT");

    StderrMessenger messenger;
    std::error_code ec;
    if (!std::filesystem::exists(input, ec)) {
        messenger.show("The file is not exist.", input, MessageMode::Ok);
        return 1;
    }
    const auto lines = readDocumentLines(input);
    if (!lines) {
        messenger.show("Can't read the file. Please close, if it's opened.", input,
                       MessageMode::Ok);
        return 1;
    }
    MeasurementDocument doc;
    if (!DocumentLoader::load(doc, *lines, input, &messenger))
        return 1;
    std::vector<std::string> out;
    DocumentWriter::write(doc, out);
    if (!writeDocumentLinesAtomically(output, out)) {
        messenger.show("Can't write the file. Please close, if it's opened.", output,
                       MessageMode::Ok);
        return 1;
    }
    return 0;
}

}  // namespace sonalyx
