#pragma once

#include <optional>
#include <string>

#include "measurement_document.h"
#include "messenger.h"

namespace sonalyx {

// Picks the file a document is saved to. The GUI shows the save dialog (default extension
// "csv", filter "All Files(*.*)|*.*|Text Files(*.csv; *.txt)|*.csv; *.txt", index 2).
class FileChooser {
  public:
    virtual ~FileChooser() = default;
    // The chosen path, or nullopt when the user cancelled. presetPath is the current name.
    virtual std::optional<std::string> chooseSaveFile(const std::string& presetPath) = 0;
};

// Save, Save As and the close query. The caller stores the memo text it is editing into the
// document before asking for any of them.
class DocumentSaver {
  public:
    DocumentSaver(Messenger& messenger, FileChooser& chooser)
        : messenger_(messenger), chooser_(chooser) {}

    // Writes the document to its file name. On failure the user is told, and the document
    // stays modified under its name.
    bool save(MeasurementDocument& doc);
    // Asks for a file name (asking before overwriting), then saves under it.
    bool saveAs(MeasurementDocument& doc);

    struct CloseDecision {
        bool mayClose = true;
        // Set when a "New Data" document was saved under a new name: it joins the history.
        std::optional<std::string> savedAsPath;
    };
    // Asks whether a modified document is to be saved before its window closes.
    CloseDecision closeQuery(MeasurementDocument& doc);

  private:
    enum class SaveAsResult { Saved, Cancelled, Failed };
    SaveAsResult trySaveAs(MeasurementDocument& doc);

    Messenger& messenger_;
    FileChooser& chooser_;
};

// "run1.csv" for "/home/me/run1.csv" (either kind of separator).
std::string fileNameWithoutFolder(const std::string& path);

}  // namespace sonalyx
