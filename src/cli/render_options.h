#pragma once

#include <optional>
#include <string>
#include <vector>

namespace sonalyx {

// The options of sonalyx-cli render, as given on the command line.
struct RenderOptions {
    std::string input;
    std::string output;
    int tab = 0;  // 0 reverb, 1 groupdelay, 2 parameters
    int width = 1024;
    int height = 768;
    std::optional<int> channel;
    bool freq = false;
    bool pair = false;
    bool after = false;
    bool graph2D = false;
    bool bar = false;
    bool fit = false;  // Fit to Data, after every other view option
    std::optional<int> slice;
    std::optional<int> zoom;
    std::optional<int> move;
    std::optional<int> elevation;
    std::optional<int> rotation;
    std::optional<int> memory;
    std::optional<int> page;
    std::optional<int> pages;
    std::string compare;            // a reference document, drawn dashed beside the curves
    bool difference = false;        // the document minus the reference
    bool afterMinusBefore = false;  // the document's after curves minus its before curves

    // Reads the arguments after "render"; on a usage error returns false with problem set.
    static bool Parse(const std::vector<std::string>& args, RenderOptions& options,
                      std::string& problem);
};

}  // namespace sonalyx
