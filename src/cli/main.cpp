// sonalyx-cli: the document and receive engine without windows, for scripts and tests.
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "cli_usage.h"
#include "convert_command.h"
#include "receive_command.h"
#include "render_sheet.h"

namespace {

bool readInt(const std::string& text, int low, int high, int& value) {
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value);
    return ec == std::errc() && ptr == end && value >= low && value <= high;
}

// render IN -o OUT --tab parameters [--memory 0..6] [--channel K] [--page P --pages N]: the
// options of the parameters tab. The view options of the graph tabs are taken and have no
// effect on a sheet.
int runRender(const std::vector<std::string>& args) {
    using sonalyx::usageError;
    static const std::set<std::string> kValued = {"--size", "--slice",     "--zoom",
                                                  "--move", "--elevation", "--rotation"};
    static const std::set<std::string> kFlags = {"--freq", "--pair", "--after", "--2d", "--bar"};
    std::string input, output, tab;
    int memory = -1, channel = 0, page = 0, pages = 0;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == "-o" && hasValue) {
            output = args[++i];
        } else if (arg == "--tab" && hasValue) {
            tab = args[++i];
        } else if (arg == "--memory" && hasValue) {
            if (!readInt(args[++i], 0, 6, memory))
                return usageError("--memory takes 0 (all) to 6");
        } else if (arg == "--channel" && hasValue) {
            if (!readInt(args[++i], 0, 6, channel))
                return usageError("on the parameters tab --channel picks memory 0 to 6");
        } else if (arg == "--page" && hasValue) {
            if (!readInt(args[++i], 1, 3, page))
                return usageError("--page takes 1 to 3");
        } else if (arg == "--pages" && hasValue) {
            if (!readInt(args[++i], 1, 3, pages))
                return usageError("--pages takes 1 to 3");
        } else if (kValued.count(arg) && hasValue) {
            ++i;
        } else if (kFlags.count(arg)) {
        } else if (input.empty() && !arg.empty() && arg[0] != '-') {
            input = arg;
        } else {
            return usageError("unexpected argument: " + arg);
        }
    }
    if (input.empty() || output.empty())
        return usageError("render needs IN and -o OUT");
    if (tab != "parameters")
        return usageError("this build renders --tab parameters only");
    const std::string extension = std::filesystem::path(output).extension().string();
    if (extension != ".txt" && extension != ".png" && extension != ".svg" && extension != ".pdf")
        return usageError("the parameters tab renders to .txt, .png, .svg or .pdf");
    if ((page == 0) != (pages == 0) || page > pages)
        return usageError("--page P needs --pages N with P from 1 to N");
    // ComboChannel is the memory selector on this tab; --memory says so directly.
    return sonalyx::renderParameterSheet(input, output, memory >= 0 ? memory : channel, page,
                                         pages);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace sonalyx;
    if (argc < 2)
        return usageError("");
    const std::string command = argv[1];
    const std::vector<std::string> args(argv + 2, argv + argc);
    if (command == "convert")
        return runConvertCommand(args);
    if (command == "receive")
        return runReceiveCommand(args);
    if (command == "render")
        return runRender(args);
    if (command == "--help" || command == "-h" || command == "help") {
        std::fputs(cliUsage(), stdout);
        return 0;
    }
    return usageError("unknown command: " + command);
}
