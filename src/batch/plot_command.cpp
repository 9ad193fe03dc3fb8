#include "batch/command.h"

#include "base/paths.h"
#include "batch/output_files.h"
#include "messages/message_log.h"
#include "model/survey_model.h"
#include "review/hardcopy.h"
#include "review/plan_view.h"
#include "review/plot_limits.h"
#include "review/sounding_plot.h"
#include "shell/open_project.h"
#include "toolkit/hardcopy.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace keldrin {

namespace {

constexpr int PlanView = 0; ///< in a list of pages, among the ordinals of soundings

struct Format {
    std::string_view name;
    std::string_view extension;
    int driver;
};

constexpr std::array Formats = {Format{"svg", ".svg", DriverSvg},
                                Format{"hpgl", ".hpg", DriverHpgl},
                                Format{"wmf", ".wmf", DriverMetafile}};

struct OrdinalRange {
    int first = 1;
    int last = 1;
};

struct PlotOptions {
    std::vector<Format> formats = {Formats[0]};
    bool allSoundings = true;
    std::vector<OrdinalRange> soundings; ///< in place of all
    bool plan = false;
    std::string outputDirectory; ///< blank: beside each project
    std::vector<std::string> files;
};

// ---- Arguments

// Words between commas.
std::vector<std::string_view> listWords(std::string_view list) {
    std::vector<std::string_view> words;
    for (;;) {
        const std::size_t end = list.find(',');
        words.push_back(list.substr(0, end));
        if (end == std::string_view::npos) {
            return words;
        }
        list.remove_prefix(end + 1);
    }
}

bool readFormats(std::string_view list, PlotOptions &options) {
    options.formats.clear();
    for (const std::string_view name : listWords(list)) {
        const auto *found = std::find_if(Formats.begin(), Formats.end(),
                                         [&](const Format &f) { return f.name == name; });
        if (found == Formats.end()) {
            return false;
        }
        options.formats.push_back(*found);
    }
    return true;
}

bool readOrdinal(std::string_view word, int &ordinal) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), ordinal);
    return error == std::errc{} && end == word.data() + word.size() && ordinal >= 1;
}

bool readSoundings(std::string_view list, PlotOptions &options) {
    options.soundings.clear();
    options.allSoundings = list == "all";
    if (options.allSoundings || list == "none") {
        return true;
    }
    for (const std::string_view word : listWords(list)) {
        const std::size_t dash = word.find('-');
        OrdinalRange range;
        const bool read =
            readOrdinal(word.substr(0, dash), range.first) &&
            readOrdinal(dash == std::string_view::npos ? word : word.substr(dash + 1), range.last);
        if (!read || range.last < range.first) {
            return false;
        }
        options.soundings.push_back(range);
    }
    return true;
}

// An option with a value; empty when it can be used, else what is wrong.
std::string readValue(std::string_view option, std::string_view value, PlotOptions &options) {
    if (option == "--format" && !readFormats(value, options)) {
        return "--format takes svg, hpgl and wmf, with commas between them";
    }
    if (option == "--soundings" && !readSoundings(value, options)) {
        return "--soundings takes ordinals from 1 such as 1-5,9, or all, or none";
    }
    if (option == "--out") {
        options.outputDirectory = value;
    }
    return "";
}

// Empty when the words can be used, else what is wrong with them.
std::string readOptions(CommandWords words, PlotOptions &options) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        std::string fault;
        if (word == "--out" || word == "--format" || word == "--soundings") {
            fault = i + 1 < words.size() ? readValue(word, words[i + 1], options)
                                         : std::string(word) + " needs a value";
            ++i;
        } else if (word == "--plan") {
            options.plan = true;
        } else if (word.substr(0, 2) == "--" && word.size() > 2) {
            fault = "unknown option " + std::string(word);
        } else if (word != "--") {
            options.files.emplace_back(word);
        }
        if (!fault.empty()) {
            return fault;
        }
    }
    if (!options.plan && !options.allSoundings && options.soundings.empty()) {
        return "--soundings none without --plan leaves nothing to plot";
    }
    return options.files.empty() ? "no project is named" : "";
}

// ---- Plots

/// What became of one project.
struct PlotResult {
    int soundings = 0;  ///< of the project
    int written = 0;    ///< files
    int failed = 0;     ///< files that could not be written
    std::string reason; ///< of the first failure, in one line; empty when all went well

    void fail(std::string why) {
        if (reason.empty()) {
            reason = std::move(why);
        }
    }
};

/// Shows on a terminal how far the plots are; nothing is shown in a file or a pipe.
class Progress {
  public:
    Progress(std::string file, std::size_t plots) : file_(std::move(file)), plots_(plots) {}
    ~Progress() {
        if (shown_) {
            std::fputs("\r\x1B[K", stderr); // leaves the line to the result
        }
    }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void step() {
        ++done_;
        if (onTerminal()) {
            shown_ = true;
            std::fprintf(stderr, "\r%s: plot %zu of %zu", file_.c_str(), done_, plots_);
        }
    }

  private:
    static bool onTerminal() {
#ifdef _WIN32
        return _isatty(_fileno(stderr)) != 0;
#else
        return ::isatty(STDERR_FILENO) == 1;
#endif
    }

    std::string file_;
    std::size_t plots_;
    std::size_t done_ = 0;
    bool shown_ = false;
};

// Ordinals to be plotted, each once, behind the plan view.
std::set<int> pagesOf(const PlotOptions &options, PlotResult &result) {
    std::set<int> pages;
    const int count = result.soundings;
    std::vector<OrdinalRange> ranges = options.soundings;
    if (options.allSoundings) {
        ranges = {{1, count}};
    }
    for (const OrdinalRange &range : ranges) {
        if (range.last > count) {
            result.fail("sounding " + std::to_string(std::max(range.first, count + 1)) +
                        " is not there, only " + std::to_string(count) + " are");
        }
        for (int station = range.first; station <= std::min(range.last, count); ++station) {
            pages.insert(station);
        }
    }
    if (options.plan) {
        pages.insert(PlanView);
    }
    return pages;
}

std::string pathOfPage(const std::string &project, int page, std::string_view extension) {
    constexpr int longestOrdinal = 9999;
    const std::string base(withoutExtension(project));
    if (page == PlanView) {
        return base + "_plan" + std::string(extension);
    }
    // The review's own name for a longer ordinal is the same for all of them.
    return page > longestOrdinal ? base + std::to_string(page) + std::string(extension)
                                 : plotFilePath(project, page, extension);
}

/// A project that is being plotted.
struct PlottedProject {
    SurveyModel model;
    std::string path;       ///< of the project
    std::string namedAfter; ///< the same in the directory where the plots go
    PlotLimits limits;
    std::string date;
    std::string time;
};

void drawPage(const PlottedProject &project, int page) {
    if (page == PlanView) {
        Plot_PlanView(project.model, project.path);
    } else {
        Plot_Sounding(project.model, project.limits, page, project.path, project.date,
                      project.time);
    }
}

// False when the file could not be written; ToolkitHardcopyFault() then says why.
bool plotPage(const PlottedProject &project, int page, const Format &format) {
    messageLog().GraphicsErrorCount = 0; // a page with faults must not end the pages behind it
    ToolkitHardcopySelect(1, format.driver);
    IGrHardcopy(pathOfPage(project.namedAfter, page, format.extension));
    const bool opened = ToolkitErrorState(1) == 0;
    if (opened) {
        drawPage(project, page);
    }
    IGrHardcopy("S");
    return ToolkitErrorState(1) == 0 && opened;
}

void plotPages(const PlottedProject &project, const PlotOptions &options, PlotResult &result) {
    const std::set<int> pages = pagesOf(options, result);
    Progress progress(project.path, pages.size() * options.formats.size());
    for (const int page : pages) {
        for (const Format &format : options.formats) {
            progress.step();
            if (plotPage(project, page, format)) {
                ++result.written;
            } else {
                ++result.failed;
                result.fail(pathOfPage(project.namedAfter, page, format.extension) + ": " +
                            ToolkitHardcopyFault());
            }
        }
    }
}

void watchErrors(PlotResult &result) {
    messageLog().observer = [&result](MessageKind kind, std::span<const MessageLine> lines) {
        if (kind == MessageKind::Error) {
            std::string text;
            for (const MessageLine &line : lines) {
                text.append(text.empty() ? "" : "; ").append(line.view());
            }
            result.fail(std::move(text));
        }
    };
}

PlotResult plotProject(const std::string &file, const PlotOptions &options) {
    PlotResult result;
    messageLog() = MessageLog{}; // no log files are named, so none are written
    watchErrors(result);
    PlottedProject project;
    project.path = file;
    if (!pathExists(existingForm(file))) {
        result.fail("there is no such file");
    } else if (OpenProject(project.model, project.path) != 0) {
        result.fail("it cannot be read");
    } else {
        result.soundings = project.model.SoundingCount;
        project.namedAfter = options.outputDirectory.empty()
                                 ? project.path
                                 : joinPath(options.outputDirectory, fileNameOf(project.path));
        Plot_AutoLimits(project.model, project.limits, project.date, project.time);
        plotPages(project, options, result);
    }
    messageLog() = MessageLog{};
    return result;
}

void printResult(const std::string &file, const PlotResult &result) {
    std::string text = file + ": ";
    if (result.soundings > 0) {
        text += std::to_string(result.soundings) + " soundings, " + std::to_string(result.written) +
                " plot files";
        if (result.failed > 0) {
            text += ", " + std::to_string(result.failed) + " could not be written";
        }
        text += result.reason.empty() ? "" : ", ";
    }
    text += result.reason.empty() ? "" : "FAILED: " + result.reason;
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

} // namespace

int plotCommand(CommandWords words) {
    PlotOptions options;
    const std::string fault = readOptions(words, options);
    if (!fault.empty()) {
        std::fprintf(stderr, "keldrin-batch plot: %s\n", fault.c_str());
        return ExitUsage;
    }
    return runOverFiles("plot", options.files, options.outputDirectory,
                        [&](AnsweringBackend &, const std::string &file, bool taken) {
                            PlotResult result;
                            if (taken) {
                                result.fail("an earlier project has made plots of these names");
                            } else {
                                result = plotProject(file, options);
                            }
                            printResult(file, result);
                            return result.reason.empty();
                        });
}

} // namespace keldrin
