// sonalyx-cli: the document and receive engine without windows, for scripts and tests.
#include <cstdio>
#include <string>
#include <vector>

#include "cli_usage.h"
#include "convert_command.h"
#include "receive_command.h"

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
    if (command == "--help" || command == "-h" || command == "help") {
        std::fputs(cliUsage(), stdout);
        return 0;
    }
    return usageError("unknown command: " + command);
}
