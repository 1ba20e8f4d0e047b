#include "document_saver.h"

#include <filesystem>

#include "document_file.h"
#include "document_writer.h"
#include "platform/path_text.h"

namespace sonalyx {

namespace {
constexpr const char* kCantWrite = "Can't write the file. Please close, if it's opened.";
}

std::string fileNameWithoutFolder(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool DocumentSaver::save(MeasurementDocument& doc) {
    std::vector<std::string> lines;
    DocumentWriter::write(doc, lines);
    if (!writeDocumentLinesAtomically(platform::pathFromUtf8(doc.fileName), lines)) {
        messenger_.show(kCantWrite, doc.fileName, MessageMode::Ok);
        return false;
    }
    doc.modified = false;
    return true;
}

DocumentSaver::SaveAsResult DocumentSaver::trySaveAs(MeasurementDocument& doc) {
    while (true) {
        const std::optional<std::string> chosen = chooser_.chooseSaveFile(doc.fileName);
        if (!chosen || chosen->empty())
            return SaveAsResult::Cancelled;
        std::error_code ec;
        if (std::filesystem::exists(platform::pathFromUtf8(*chosen), ec)) {
            const Answer answer = messenger_.show("Overwrite , OK ?", "", MessageMode::YesNoCancel);
            if (answer == Answer::No)
                continue;
            if (answer != Answer::Yes)
                return SaveAsResult::Cancelled;
        }
        // The document keeps its old name unless the new file was really written.
        const std::string previous = doc.fileName;
        doc.fileName = *chosen;
        if (save(doc))
            return SaveAsResult::Saved;
        doc.fileName = previous;
        return SaveAsResult::Failed;
    }
}

bool DocumentSaver::saveAs(MeasurementDocument& doc) {
    return trySaveAs(doc) == SaveAsResult::Saved;
}

DocumentSaver::CloseDecision DocumentSaver::closeQuery(MeasurementDocument& doc) {
    CloseDecision decision;
    if (!doc.modified)
        return decision;
    const std::string question =
        doc.isNewData() ? std::string("Save New Data ?")
                        : "Save changes to " + fileNameWithoutFolder(doc.fileName) + " ?";
    const Answer answer = messenger_.show(question, "", MessageMode::YesNoCancel);
    if (answer == Answer::No)
        return decision;
    if (answer != Answer::Yes) {
        decision.mayClose = false;
        return decision;
    }
    // YES means "close": also when the user then cancels the save dialog. A save that failed
    // (read-only folder, full disk) keeps the window, so nothing is lost.
    if (doc.isNewData()) {
        const SaveAsResult result = trySaveAs(doc);
        if (result == SaveAsResult::Saved)
            decision.savedAsPath = doc.fileName;
        decision.mayClose = result != SaveAsResult::Failed;
    } else {
        decision.mayClose = save(doc);
    }
    return decision;
}

}  // namespace sonalyx
