#include "pdf_report_command.h"

#include <QFileInfo>
#include <filesystem>
#include <iostream>

#include "cli_usage.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "print/report_writer.h"
#include "stderr_messenger.h"

namespace sonalyx {

namespace {

struct ReportOptions {
    std::string input;
    std::string output;
    std::string compare;
    ReportWriter::Paper paper = ReportWriter::Paper::A4;
};

std::string Parse(const std::vector<std::string>& args, ReportOptions& o) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == "-o" && hasValue) {
            o.output = args[++i];
        } else if (arg == "--compare" && hasValue) {
            o.compare = args[++i];
        } else if (arg == "--paper" && hasValue) {
            const auto paper = ReportWriter::PaperNamed(args[++i]);
            if (!paper) {
                return "--paper is a4 or letter";
            }
            o.paper = *paper;
        } else if (o.input.empty() && !arg.empty() && arg[0] != '-') {
            o.input = arg;
        } else {
            return "unexpected argument: " + arg;
        }
    }
    if (o.input.empty() || o.output.empty()) {
        return "report needs IN and -o OUT.pdf";
    }
    if (QFileInfo(QString::fromStdString(o.output)).suffix().toLower() != QLatin1String("pdf")) {
        return "OUT must end in .pdf";
    }
    return {};
}

// The document of a file; false when the user has been told why not.
bool Load(const std::string& path, MeasurementDocument& document, Messenger& messenger) {
    std::error_code ec;
    if (!std::filesystem::exists(path, ec)) {
        messenger.show("The file is not exist.", path, MessageMode::Ok);
        return false;
    }
    const auto lines = readDocumentLines(path);
    if (!lines) {
        messenger.show("Can't read the file. Please close, if it's opened.", path, MessageMode::Ok);
        return false;
    }
    return DocumentLoader::load(document, *lines, path, &messenger);
}

QString NameOf(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).fileName();
}

}  // namespace

int runReportCommand(const std::vector<std::string>& args) {
    ReportOptions options;
    const std::string problem = Parse(args, options);
    if (!problem.empty()) {
        return usageError(problem);
    }
    StderrMessenger messenger;
    MeasurementDocument document;
    if (!Load(options.input, document, messenger)) {
        return 1;
    }
    ReportWriter writer(document, NameOf(options.input));
    writer.SetPaper(options.paper);
    if (!options.compare.empty()) {
        MeasurementDocument reference;
        if (!Load(options.compare, reference, messenger)) {
            return 1;
        }
        writer.SetReference(reference, NameOf(options.compare));
    }
    QString error;
    if (!writer.Write(QString::fromStdString(options.output), error)) {
        std::cerr << error.toStdString() << '\n';
        return 1;
    }
    return 0;
}

}  // namespace sonalyx
