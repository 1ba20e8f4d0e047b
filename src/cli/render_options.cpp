#include "render_options.h"

#include <charconv>

namespace sonalyx {

namespace {

bool ParseInt(const std::string& text, int& out) {
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, out);
    return ec == std::errc() && ptr == end;
}

struct Ranged {
    const char* name;
    std::optional<int> RenderOptions::*field;
    int min;
    int max;
};

// The numeric options and the positions their controls accept.
constexpr Ranged kRanged[] = {
    {"--channel", &RenderOptions::channel, 0, 15},
    {"--slice", &RenderOptions::slice, 0, 63},
    {"--zoom", &RenderOptions::zoom, 0, 19},
    {"--move", &RenderOptions::move, 0, 40},
    {"--elevation", &RenderOptions::elevation, 0, 90},
    {"--rotation", &RenderOptions::rotation, 0, 90},
    {"--memory", &RenderOptions::memory, 0, 6},
    {"--page", &RenderOptions::page, 1, 9999},
    {"--pages", &RenderOptions::pages, 1, 9999},
};

}  // namespace

bool RenderOptions::Parse(const std::vector<std::string>& args, RenderOptions& options,
                          std::string& problem) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == "--freq") {
            options.freq = true;
        } else if (arg == "--pair") {
            options.pair = true;
        } else if (arg == "--after") {
            options.after = true;
        } else if (arg == "--2d") {
            options.graph2D = true;
        } else if (arg == "--bar") {
            options.bar = true;
        } else if (arg == "--fit") {
            options.fit = true;
        } else if (arg == "--difference") {
            options.difference = true;
        } else if (arg == "--after-minus-before") {
            options.afterMinusBefore = true;
        } else if (arg == "--compare" && hasValue) {
            options.compare = args[++i];
        } else if (arg == "-o" && hasValue) {
            options.output = args[++i];
        } else if (arg == "--tab" && hasValue) {
            const std::string tab = args[++i];
            if (tab == "reverb") {
                options.tab = 0;
            } else if (tab == "groupdelay") {
                options.tab = 1;
            } else if (tab == "parameters") {
                options.tab = 2;
            } else {
                problem = "--tab takes reverb, groupdelay or parameters";
                return false;
            }
        } else if (arg == "--size" && hasValue) {
            const std::string size = args[++i];
            const auto x = size.find('x');
            if (x == std::string::npos || !ParseInt(size.substr(0, x), options.width) ||
                !ParseInt(size.substr(x + 1), options.height) || options.width < 200 ||
                options.height < 150 || options.width > 8000 || options.height > 8000) {
                problem = "--size takes WxH, from 200x150 to 8000x8000";
                return false;
            }
        } else if (!arg.empty() && arg[0] != '-' && options.input.empty()) {
            options.input = arg;
        } else {
            bool known = false;
            for (const Ranged& r : kRanged) {
                if (arg != r.name) {
                    continue;
                }
                known = true;
                int value = 0;
                if (!hasValue || !ParseInt(args[++i], value) || value < r.min || value > r.max) {
                    problem = std::string(r.name) + " takes a whole number from " +
                              std::to_string(r.min) + " to " + std::to_string(r.max);
                    return false;
                }
                options.*(r.field) = value;
            }
            if (!known) {
                problem = "unexpected argument: " + arg;
                return false;
            }
        }
    }
    if (options.input.empty() || options.output.empty()) {
        problem = "render needs IN and -o OUT";
        return false;
    }
    if (options.page.has_value() != options.pages.has_value()) {
        problem = "--page and --pages go together";
        return false;
    }
    if (options.page && *options.page > *options.pages) {
        problem = "--page must not pass --pages";
        return false;
    }
    if (options.slice && options.tab == 0 && *options.slice > 31) {
        problem = "--slice takes 0 to 31 on the reverb tab";
        return false;
    }
    if (options.difference && options.compare.empty()) {
        problem = "--difference needs --compare REF.csv";
        return false;
    }
    if (options.difference && options.afterMinusBefore) {
        problem = "--difference and --after-minus-before exclude each other";
        return false;
    }
    if ((options.difference || options.afterMinusBefore) && options.tab == 2) {
        problem = "--difference and --after-minus-before belong to the graph tabs";
        return false;
    }
    if ((options.memory || options.page) && options.tab != 2) {
        problem = "--memory, --page and --pages belong to --tab parameters";
        return false;
    }
    return true;
}

}  // namespace sonalyx
