#include "receive_command.h"

#include <QCoreApplication>
#include <charconv>
#include <ctime>
#include <iostream>
#include <memory>
#include <optional>

#include "cli_usage.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "link/receive_runner.h"
#include "link/serial_port_link.h"
#include "retrieval/date_stamp.h"
#include "retrieval/log_naming_messenger.h"
#include "stderr_messenger.h"
#include "termination_signals.h"

namespace sonalyx {

namespace {

const char* const kCantWrite = "Can't write the file. Please close, if it's opened.";

struct ReceiveArguments {
    ReceiveOptions options;
    std::string outputPath;
    std::string logPath;
    bool raw = false;
};

std::optional<int> parsePositive(const std::string& text) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value <= 0) {
        return std::nullopt;
    }
    return value;
}

// Fills the three kinds from "reverb,groupdelay,parameters"; empty problem when all is well.
std::string parseKinds(const std::string& list, ReceiveOptions& options) {
    options.reverb = options.groupDelay = options.parameters = false;
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t comma = std::min(list.find(',', start), list.size());
        const std::string kind = list.substr(start, comma - start);
        if (kind == "reverb") {
            options.reverb = true;
        } else if (kind == "groupdelay") {
            options.groupDelay = true;
        } else if (kind == "parameters") {
            options.parameters = true;
        } else {
            return "unknown kind of data: " + kind;
        }
        start = comma + 1;
    }
    return {};
}

// The problem with the arguments, or an empty text when they are good.
std::string parseArguments(const std::vector<std::string>& args, ReceiveArguments& parsed) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == "--parameters-only") {
            parsed.options.parametersOnly = true;
        } else if (arg == "--raw") {
            parsed.raw = true;
        } else if ((arg == "--port" || arg == "-o" || arg == "--data" || arg == "--tick-ms" ||
                    arg == "--log") &&
                   !hasValue) {
            return arg + " needs a value";
        } else if (arg == "--port") {
            parsed.options.portName = args[++i];
        } else if (arg == "-o") {
            parsed.outputPath = args[++i];
        } else if (arg == "--log") {
            parsed.logPath = args[++i];
        } else if (arg == "--data") {
            if (std::string problem = parseKinds(args[++i], parsed.options); !problem.empty()) {
                return problem;
            }
        } else if (arg == "--tick-ms") {
            const auto tick = parsePositive(args[++i]);
            if (!tick) {
                return "--tick-ms needs a positive number of milliseconds";
            }
            parsed.options.tickMs = *tick;
        } else {
            return "unexpected argument: " + arg;
        }
    }
    if (parsed.options.portName.empty() || parsed.outputPath.empty()) {
        return "receive needs --port PORT and -o FILE";
    }
    return {};
}

std::tm localNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

std::string currentDateStamp() {
    return formatDateStamp(localNow());
}

std::string logStartTime() {
    const std::tm local = localNow();
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

// The received text as Save would write it: loaded as a "New Data" document, written back.
bool documentLines(std::vector<std::string>& lines, Messenger& messenger) {
    MeasurementDocument doc;
    if (!DocumentLoader::load(doc, lines, "New Data", &messenger)) {
        return false;
    }
    lines.clear();
    DocumentWriter::write(doc, lines);
    return true;
}

int receiveAndWrite(const ReceiveArguments& parsed) {
    StderrMessenger messenger;
    // The link's own failures name the log as the engine's do.
    LogNamingMessenger linkMessenger(messenger);
    SerialPortLink link(linkMessenger);
    ReceiveRunner runner(link, messenger);
    if (!parsed.logPath.empty()) {
        if (runner.startLog(parsed.logPath, logStartTime())) {
            linkMessenger.setLogPath(parsed.logPath);
        } else {
            std::cerr << "sonalyx-cli: cannot write the log " << parsed.logPath
                      << "; receiving without it\n";
        }
    }
    ReceiveResult result;
    {
        const TerminationSignals watch([&runner] { runner.cancel(); });
        result = runner.run(parsed.options);
    }
    if (result.cancelled) {
        std::cerr << "Receive cancelled.\n";
        return 1;
    }
    if (!result.success) {
        return 1;
    }
    stampDate(result.lines, currentDateStamp());
    if (!parsed.raw && !documentLines(result.lines, messenger)) {
        return 1;
    }
    if (!writeDocumentLinesAtomically(parsed.outputPath, result.lines)) {
        messenger.show(kCantWrite, parsed.outputPath, MessageMode::Ok);
        return 1;
    }
    return 0;
}

}  // namespace

int runReceiveCommand(const std::vector<std::string>& args) {
    ReceiveArguments parsed;
    if (const std::string problem = parseArguments(args, parsed); !problem.empty()) {
        return usageError(problem);
    }
    // The run is paced by timers, which need an application object.
    std::unique_ptr<QCoreApplication> application;
    if (QCoreApplication::instance() == nullptr) {
        static int argc = 1;
        static char name[] = "sonalyx-cli";
        static char* argv[] = {name, nullptr};
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    return receiveAndWrite(parsed);
}

}  // namespace sonalyx
