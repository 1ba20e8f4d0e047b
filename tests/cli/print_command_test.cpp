#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "render_fixture.h"
#include "sample_documents.h"

namespace sonalyx::test {
namespace {

using CliPrint = RenderFixture;

// What a program prints on stdout.
std::string Output(const std::string& command) {
    std::string out;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        std::array<char, 4096> buffer{};
        for (std::size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
            out.append(buffer.data(), n);
        }
        pclose(pipe);
    }
    return out;
}

// What a reader of the PDF gets: its page count and size (pdfinfo), then its text laid out as
// on the page (pdftotext), without trailing blanks and page breaks.
std::vector<std::string> PdfReading(const std::string& pdf) {
    std::vector<std::string> lines;
    const std::string info = Output("pdfinfo '" + pdf + "'");
    for (const char* key : {"Pages:", "Page size:"}) {
        std::smatch m;
        if (std::regex_search(info, m, std::regex(std::string(key) + " *([^\n]*)"))) {
            lines.push_back(key + std::string(" ") + m[1].str());
        }
    }
    std::istringstream text(Output("pdftotext -layout '" + pdf + "' -"));
    for (std::string line; std::getline(text, line);) {
        line.erase(std::remove(line.begin(), line.end(), '\f'), line.end());
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(line);
    }
    return lines;
}

bool FontsEmbedded(const std::string& pdf) {
    std::istringstream fonts(Output("pdffonts '" + pdf + "'"));
    const std::regex font(".* (yes|no) +(yes|no) +(yes|no) +[0-9]+ +[0-9]+ *");
    int count = 0;
    for (std::string line; std::getline(fonts, line);) {
        std::smatch m;
        if (std::regex_match(line, m, font)) {
            ++count;
            if (m[1] != "yes") {
                return false;
            }
        }
    }
    return count > 0;
}

// sonalyx-cli print and report onto PDF files: the pages, their size, searchable text in
// embedded fonts, the refusals.
TEST_F(CliPrint, PutsPagesOnPdfs) {
    // Inputs: a sample by its layout; 0 the layout-7 sample without standing wave data; -1 a
    // file that is not a document. pages, size (of pdfinfo) and text (one line of pdftotext
    // holds it) when the status is 0; said: how stderr starts when it is 1.
    const auto lines = readLinesOrFail(sample(7));
    std::ofstream noStandingWave(path("no-sw.csv"), std::ios::binary);
    for (auto it = lines.begin(); it != lines.end(); ++it) {
        if (it->rfind("* Standing Wave Control", 0) == 0) {
            while (it + 1 != lines.end() && (it + 1)->rfind("* ", 0) != 0) {
                ++it;
            }
        } else {
            noStandingWave << *it << "\r\n";
        }
    }
    noStandingWave.close();
    std::ofstream(path("notes.csv")) << "not a document\r\n";
    const char* const landscape = "Page size: 842 x 595 pts (A4)";
    // clang-format off
    struct Row { const char* name; int input; const char* options; const char* output; int status; int pages; const char* size; const char* text; const char* said; };
    const Row rows[] = {
        {"one channel", 7, "print --channel 1", "a.pdf", 0, 1, landscape, "Time[msec]", ""},
        {"group delay", 7, "print --tab groupdelay --2d", "b.pdf", 0, 1, landscape, "Group Delay[msec]", ""},
        {"all memories", 7, "print --tab parameters", "c.pdf", 0, 3, landscape, "Standing Wave Control", ""},
        {"all memories, no standing wave", 0, "print --tab parameters", "d.pdf", 0, 2, landscape, "Acoustic Cal EQ", ""},
        {"one memory", 7, "print --tab parameters --memory 3", "e.pdf", 0, 1, landscape, "[MEMORY3]", ""},
        {"report on letter", 9, "report --paper letter", "f.pdf", 0, 13, "Page size: 612 x 792 pts (letter)", "Page 13 of 13", ""},
        {"all channels", 7, "print", "g.pdf", 1, 0, "", "", "Select the channel.\n"},
        {"all bands", 7, "print --freq", "h.pdf", 1, 0, "", "", "Select the frequency.\n"},
        {"report of no document", -1, "report", "i.pdf", 1, 0, "", "", "Illegal file format.\n"},
        {"not a pdf", 7, "print --channel 1", "j.png", 2, 0, "", "", ""},
        {"a render page", 7, "print --tab parameters --page 1 --pages 2", "k.pdf", 2, 0, "", "", ""},
        {"paper of no size", 7, "report --paper a3", "l.pdf", 2, 0, "", "", ""},
    };
    // clang-format on
    for (const Row& row : rows) {
        const std::string command = row.options;
        const std::string verb = command.substr(0, command.find(' '));
        const std::string input = row.input > 0    ? sample(row.input)
                                  : row.input == 0 ? path("no-sw.csv")
                                                   : path("notes.csv");
        EXPECT_EQ(run(verb + " '" + input + "' -o '" + path(row.output) + "'" +
                      command.substr(verb.size())),
                  row.status)
            << row.name << ": " << err_;
        if (row.status == 1) {
            EXPECT_TRUE(err_.starts_with(row.said)) << row.name << ": " << err_;
        }
        EXPECT_EQ(std::filesystem::exists(path(row.output)), row.status == 0) << row.name;
        if (row.status != 0) {
            continue;
        }
        const auto reading = PdfReading(path(row.output));
        ASSERT_GE(reading.size(), 2u) << row.name;
        EXPECT_EQ(reading[0], "Pages: " + std::to_string(row.pages)) << row.name;
        EXPECT_EQ(reading[1], row.size) << row.name;
        EXPECT_TRUE(std::any_of(reading.begin() + 2, reading.end(), [&](const std::string& l) {
            return l.find(row.text) != std::string::npos;
        })) << row.name;
        EXPECT_TRUE(FontsEmbedded(path(row.output))) << row.name;
        const auto permissions = std::filesystem::status(path(row.output)).permissions();
        EXPECT_NE(permissions & std::filesystem::perms::others_read, std::filesystem::perms::none)
            << row.name << ": written as any saved file, not as a private temporary one";
    }
    // Nothing half-written is left behind by the refusals.
    std::set<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(dir_)) {
        left.insert(entry.path().filename().string());
    }
    EXPECT_EQ(left, (std::set<std::string>{"a.pdf", "b.pdf", "c.pdf", "d.pdf", "e.pdf", "f.pdf",
                                           "no-sw.csv", "notes.csv", "stderr.txt"}));
}

// The report of every sample, and of one compared with another, as a reader gets it.
// Refresh with SONALYX_UPDATE_GOLDEN=1 after a change of the samples (and check the diff).
TEST_F(CliPrint, ReportsReadAsTheirGolden) {
    std::vector<GoldenSection> sections;
    const auto add = [&](const std::string& name, const std::string& options) {
        ASSERT_EQ(run("report " + options + " -o '" + path("report.pdf") + "'"), 0) << err_;
        sections.emplace_back(name, PdfReading(path("report.pdf")));
    };
    for (int layout : kSampleLayouts) {
        add(sampleFileName(layout), "'" + sample(layout) + "'");
    }
    add("sample-layout-7.csv compared with sample-layout-5.csv",
        "'" + sample(7) + "' --compare '" + sample(5) + "'");
    expectSectionsMatchGolden(testDataPath("print/report.txt"), sections);
}

}  // namespace
}  // namespace sonalyx::test
