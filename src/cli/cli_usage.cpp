#include "cli_usage.h"

#include <iostream>

namespace sonalyx {

const char* cliUsage() {
    return "usage:\n"
           "  sonalyx-cli --help | --version\n"
           "  sonalyx-cli receive --port PORT [--data reverb,groupdelay,parameters]\n"
           "                      [--parameters-only] [--tick-ms N] [--raw] [--log FILE]\n"
           "                      -o FILE\n"
           "  sonalyx-cli convert IN -o OUT\n"
           "  sonalyx-cli render IN -o OUT.png|OUT.svg|OUT.pdf|OUT.json|OUT.txt\n"
           "                     [--tab reverb|groupdelay|parameters] [--size WxH]\n"
           "                     [--channel K] [--freq] [--pair] [--after] [--2d] [--bar]\n"
           "                     [--slice P] [--zoom Z] [--move M] [--elevation E]\n"
           "                     [--rotation R] [--memory 0..6] [--page P --pages N]\n"
           "                     [--compare REF.csv [--difference]] [--after-minus-before]\n"
           "                     [--fit]\n"
           "  sonalyx-cli print IN -o OUT.pdf [the view options of render, without --page]\n"
           "  sonalyx-cli report IN -o OUT.pdf [--compare REF.csv] [--paper a4|letter]\n"
           "exit status: 0 done, 1 failed with a message, 2 usage error\n";
}

int usageError(const std::string& problem) {
    if (!problem.empty())
        std::cerr << "sonalyx-cli: " << problem << '\n';
    std::cerr << cliUsage();
    return 2;
}

}  // namespace sonalyx
