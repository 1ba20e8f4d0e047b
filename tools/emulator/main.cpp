// sonalyx-receiver-emulator: a receiver on a pseudo-terminal, for trying and testing a receive
// without the hardware.
#include <csignal>
#include <cstdio>
#include <iostream>

#include "emulator/emulator_options.h"
#include "emulator/pty_server.h"

namespace {

std::atomic<bool> stopRequested{false};

void requestStop(int) {
    stopRequested.store(true);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace sonalyx::emulator;
    std::string error;
    const auto options =
        EmulatorOptions::parse(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) {
        std::cerr << "sonalyx-receiver-emulator: " << error << "\n\n" << EmulatorOptions::usage();
        return 2;
    }
    if (options->help) {
        std::cout << EmulatorOptions::usage();
        return 0;
    }
    std::signal(SIGINT, requestStop);
    std::signal(SIGTERM, requestStop);
    std::signal(SIGHUP, requestStop);

    PtyServer server;
    if (!server.open(error) ||
        (!options->linkPath.empty() && !server.makeLink(options->linkPath, error))) {
        std::cerr << "sonalyx-receiver-emulator: " << error << '\n';
        return 1;
    }
    std::cout << server.portPath() << std::endl;
    ReceiverEmulator emulator(options->profile);
    server.serve(emulator, options->pace, options->verbose, stopRequested);
    server.close();
    return 0;
}
