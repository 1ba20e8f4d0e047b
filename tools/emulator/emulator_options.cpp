#include "emulator/emulator_options.h"

#include <charconv>
#include <functional>
#include <map>

namespace sonalyx::emulator {

namespace {

std::optional<int> parseInt(const std::string& text) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::vector<std::string> splitList(const std::string& text) {
    std::vector<std::string> items;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t comma = text.find(',', start);
        const std::size_t end = comma == std::string::npos ? text.size() : comma;
        if (end > start) {
            items.push_back(text.substr(start, end - start));
        }
        start = end + 1;
    }
    return items;
}

std::string commandName(std::string text) {
    if (!text.empty() && text.front() == '?') {
        text.erase(0, 1);
    }
    return text;
}

bool oneOf(int value, std::initializer_list<int> allowed) {
    for (int candidate : allowed) {
        if (value == candidate) {
            return true;
        }
    }
    return false;
}

// "CMD" refuses always, "CMD:N" the first N times.
bool addRefusals(ReceiverProfile& profile, const std::string& list) {
    for (const std::string& item : splitList(list)) {
        const std::size_t colon = item.find(':');
        if (colon == std::string::npos) {
            profile.refusals[commandName(item)] = -1;
            continue;
        }
        const auto times = parseInt(item.substr(colon + 1));
        if (!times || *times < 1) {
            return false;
        }
        profile.refusals[commandName(item.substr(0, colon))] = *times;
    }
    return true;
}

void addCommands(std::set<std::string>& commands, const std::string& list) {
    for (const std::string& item : splitList(list)) {
        commands.insert(commandName(item));
    }
}

using IntSetter = std::function<bool(EmulatorOptions&, int)>;

const std::map<std::string, IntSetter>& intOptions() {
    static const std::map<std::string, IntSetter> options = {
        {"--config",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.configCode = v;
             return oneOf(v, {5, 6, 7, 9, 10, 11});
         }},
        {"--bands",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.bandSelector = v;
             return oneOf(v, {0, 1, 2});
         }},
        {"--info-length",
         [](EmulatorOptions& o, int v) {
             o.profile.infoLength = v;
             return oneOf(v, {2, 4});
         }},
        {"--reverb-type",
         [](EmulatorOptions& o, int v) {
             o.profile.infoA = v;
             return v >= 0 && v <= 255;
         }},
        {"--distance-unit",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.distanceUnit = v;
             return oneOf(v, {0, 1, 2, 3});
         }},
        {"--sp-length",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.speakerSettingLength = v;
             return oneOf(v, {5, 6, 9});
         }},
        {"--memories",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.memoryCount = v;
             return v >= 1 && v <= 6;
         }},
        {"--level-length",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.levelItemLength = v;
             return v >= 10 && v <= 40;
         }},
        {"--subwoofer-mode",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.subwooferMode = v;
             return v >= 0 && v <= 255;
         }},
        {"--xcurve",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.xCurveCode = v;
             return v >= 0 && v <= 255;
         }},
        {"--crossover",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.crossoverCode = v;
             return v >= 0 && v <= 255;
         }},
        {"--surr-back-size",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.surrBackSize = v;
             return v >= 0 && v <= 255;
         }},
        {"--subwoofer-code",
         [](EmulatorOptions& o, int v) {
             o.profile.parameters.subwooferCode = v;
             return v >= 0 && v <= 255;
         }},
    };
    return options;
}

using Flag = std::function<void(EmulatorOptions&)>;

const std::map<std::string, Flag>& flags() {
    static const std::map<std::string, Flag> options = {
        {"--pace", [](EmulatorOptions& o) { o.pace = true; }},
        {"--verbose", [](EmulatorOptions& o) { o.verbose = true; }},
        {"--help", [](EmulatorOptions& o) { o.help = true; }},
        {"--old", [](EmulatorOptions& o) { o.profile.extended = false; }},
        {"--no-after", [](EmulatorOptions& o) { o.profile.afterData = false; }},
        {"--silent", [](EmulatorOptions& o) { o.profile.silent = true; }},
        {"--bad-info-length", [](EmulatorOptions& o) { o.profile.badInfoLength = true; }},
        {"--distance-one-byte",
         [](EmulatorOptions& o) { o.profile.parameters.distanceOneByte = true; }},
    };
    return options;
}

using TextSetter = std::function<bool(EmulatorOptions&, const std::string&)>;

const std::map<std::string, TextSetter>& textOptions() {
    static const std::map<std::string, TextSetter> options = {
        {"--link",
         [](EmulatorOptions& o, const std::string& v) {
             o.linkPath = v;
             return !v.empty();
         }},
        {"--refuse",
         [](EmulatorOptions& o, const std::string& v) { return addRefusals(o.profile, v); }},
        {"--bad-probe",
         [](EmulatorOptions& o, const std::string& v) {
             using BadProbe = ReceiverProfile::BadProbe;
             o.profile.badProbe = v == "once" ? BadProbe::Once : BadProbe::Always;
             return v == "once" || v == "always";
         }},
        {"--oversize",
         [](EmulatorOptions& o, const std::string& v) {
             addCommands(o.profile.oversizeCommands, v);
             return !v.empty();
         }},
        {"--invalid",
         [](EmulatorOptions& o, const std::string& v) {
             addCommands(o.profile.invalidCommands, v);
             return !v.empty();
         }},
        {"--cut-off",
         [](EmulatorOptions& o, const std::string& v) {
             o.profile.cutOffCommand = commandName(v);
             return !v.empty();
         }},
        {"--stall",
         [](EmulatorOptions& o, const std::string& v) {
             o.profile.stallCommand = commandName(v);
             return !v.empty();
         }},
    };
    return options;
}

bool applyValue(EmulatorOptions& options, const std::string& name, const std::string& value) {
    if (const auto text = textOptions().find(name); text != textOptions().end()) {
        return text->second(options, value);
    }
    const auto number = parseInt(value);
    return number && intOptions().at(name)(options, *number);
}

bool takesValue(const std::string& name) {
    return textOptions().count(name) != 0 || intOptions().count(name) != 0;
}

}  // namespace

std::optional<EmulatorOptions> EmulatorOptions::parse(const std::vector<std::string>& arguments,
                                                      std::string& error) {
    EmulatorOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        std::string value;
        const std::size_t equals = name.find('=');
        const bool inlineValue = equals != std::string::npos;
        if (inlineValue) {
            value = name.substr(equals + 1);
            name.erase(equals);
        }
        if (const auto flag = flags().find(name); flag != flags().end() && !inlineValue) {
            flag->second(options);
            continue;
        }
        if (!takesValue(name)) {
            error = "unknown option: " + arguments[i];
            return std::nullopt;
        }
        if (!inlineValue) {
            if (i + 1 >= arguments.size()) {
                error = "missing value for " + name;
                return std::nullopt;
            }
            value = arguments[++i];
        }
        if (!applyValue(options, name, value)) {
            error = "bad value for " + name + ": " + value;
            return std::nullopt;
        }
    }
    return options;
}

std::string EmulatorOptions::usage() {
    return R"(Usage: sonalyx-receiver-emulator [OPTIONS]
Serves the receiver's side of the serial dialogue on a pseudo-terminal and prints its path.

Line:
  --link PATH            also make PATH a symlink to the port (removed on exit)
  --pace                 send replies at the speed of a 9600-baud line
  --verbose              log every command on stderr
Receiver:
  --config N             speaker configuration 5, 6, 7, 9, 10 (default) or 11
  --bands N              band selector: 0 nine bands (default), 1 or 2 six bands
  --old                  an old receiver: not extended, no "?EI", configuration 9
  --no-after             no after-calibration data: every "?RA.." is refused
  --info-length N        "?EI" body of 2 or 4 (default) bytes
  --reverb-type N        the information value that picks the reverb type (default 2)
Parameters:
  --distance-unit N      0 cm (default), 1 1/100 ft, 2 1/10 mm, 3 1/100 in
  --distance-one-byte    12-byte distance items instead of 16-bit values
  --sp-length N          speaker setting body of 5, 6 or 9 (default) bytes
  --memories N           calibration memories 1..6 (default 6)
  --level-length N       level item body length (default 10)
  --subwoofer-mode N     speaker setting attribute (default 0)
  --xcurve N             X-curve code (default 2)
  --crossover N          crossover code (default 1)
  --surr-back-size N     speaker setting byte 3 (default: what the configuration has)
  --subwoofer-code N     speaker setting byte 4 (default 1)
Faults:
  --silent               never answer
  --refuse CMD[:N],...   answer E04 to these commands (N: only the first N times)
  --bad-probe once|always  answer the probe "?RVFL" with 500 bytes
  --oversize CMD,...     answer these commands with a body of 2049 bytes
  --invalid CMD,...      mark these replies as not measured (attribute 0xF0)
  --bad-info-length      answer "?EI" with 3 bytes
  --cut-off CMD          stop half-way through this reply and close the line
  --stall CMD            stop half-way through this reply the first time it is asked, and
                         keep the line open (for stopping a receive mid-transfer)
Commands are named without '?' and CR, for example RVFL, RAFL, EI, FBS, EQALL.
)";
}

}  // namespace sonalyx::emulator
