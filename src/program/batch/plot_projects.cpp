#include "program/batch/plot_projects.h"

#include "base/index.h"
#include "base/paths.h"
#include "line/profile_page.h"
#include "line/report.h"
#include "line/section_page.h"
#include "messages/message_log.h"
#include "model/survey_model.h"
#include "page/drawn_plot.h"
#include "page/hardcopy.h"
#include "physics/ordered_work.h"
#include "program/batch/output_files.h"
#include "shell/open_project.h"
#include "sounding/hardcopy.h"
#include "sounding/plan_view.h"
#include "sounding/plot_document.h"
#include "sounding/plot_limits.h"
#include "sounding/sounding_plot.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <set>
#include <string>
#include <thread>
#include <vector>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace keldrin {

namespace {

/// Pages are drawn until so many wait for their files.
constexpr std::size_t MostDrawnPages = 64;

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

// In a list of pages, among the ordinals of soundings from 1, those of the whole line are 0, -1 and
// so on: minus their places in LinePageNames.
bool isLinePage(int page) {
    return page < 1;
}

std::size_t indexOfLinePage(int page) {
    return static_cast<std::size_t>(-page);
}

// Pages to be plotted, each once, those of the whole line first.
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
    for (const std::string &name : options.pages) {
        const auto *found = std::find(LinePageNames.begin(), LinePageNames.end(), name);
        pages.insert(-static_cast<int>(found - LinePageNames.begin()));
    }
    return pages;
}

std::string pathOfPage(const std::string &project, int page, std::string_view extension) {
    constexpr int longestOrdinal = 9999;
    const std::string base(withoutExtension(project));
    if (isLinePage(page)) {
        return base + "_" + std::string(LinePageNames[indexOfLinePage(page)]) +
               std::string(extension);
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

// What draws the pages of LinePageNames; false where the device cannot show the page.
constexpr std::array<bool (*)(const PlottedProject &), LinePageNames.size()> LinePageDrawings = {
    [](const PlottedProject &project) {
        Plot_PlanView(project.model, project.path);
        return true;
    },
    [](const PlottedProject &project) {
        drawProfile(profilePage(project.model, ProfileLimits{}, project.path));
        return true;
    },
    [](const PlottedProject &project) {
        return drawSection(sectionPage(project.model, SectionLimits{}, project.path));
    },
};

bool drawPage(const PlottedProject &project, int page) {
    if (isLinePage(page)) {
        return LinePageDrawings[indexOfLinePage(page)](project);
    }
    Plot_Sounding(project.model, project.limits, page, project.path, project.date, project.time);
    return true;
}

/// A page that was drawn for a file of its own.
struct PageFile {
    std::string path;
    std::string fault; ///< why there will be no file; blank so far
    bool opened = false;
    DrawnPlot plot;
};

PageFile drawPageFile(const PlottedProject &project, int page, const PlotFormat &format) {
    PageFile file;
    file.path = pathOfPage(project.namedAfter, page, format.extension);
    messageLog().GraphicsErrorCount = 0; // a page with faults must not end the pages after it
    ToolkitHardcopySelect(HardcopyDevice, format.driver);
    IGrHardcopy(file.path);
    file.opened = ToolkitErrorState(ErrorNumber) == 0;
    if (file.opened && !drawPage(project, page)) {
        ToolkitDropHardcopy();
        file.fault = std::string(format.name) + " has no filled areas, which this page needs";
    } else {
        file.plot = ToolkitTakeHardcopy();
    }
    return file;
}

// Blank when the file was written, else why not.
std::string writePageFile(PageFile &file) {
    if (!file.fault.empty()) {
        return file.fault;
    }
    writePlot(file.plot);
    return ToolkitErrorState(ErrorNumber) == 0 && file.opened ? "" : ToolkitHardcopyFault();
}

// fault  blank when the file was written
void countFile(const std::string &path, const std::string &fault, PlotResult &result) {
    if (fault.empty()) {
        ++result.written;
    } else {
        ++result.failed;
        result.fail(path + ": " + fault);
    }
}

// Encodes the pages on all processors and writes them in their order.
void writePageFiles(std::vector<PageFile> &files, PlotResult &result) {
    struct Nothing {};
    OrderedWork<Nothing> work(
        static_cast<int>(files.size()),
        [&](int item, Nothing &) {
            PageFile &file = files[asIndex(item)];
            if (file.fault.empty()) {
                encodePlot(file.plot);
            }
        },
        [&](int item, const Nothing &) {
            PageFile &file = files[asIndex(item)];
            countFile(file.path, writePageFile(file), result);
            file.plot = {};
            return true;
        });
    const auto processors = static_cast<int>(std::thread::hardware_concurrency());
    work.run(std::min(processors, static_cast<int>(files.size())));
    files.clear();
}

// All pages that have something on them; result as of plotPage().
std::string plotDocument(const PlottedProject &project, const std::string &path,
                         const std::set<int> &pages, Progress &progress) {
    std::vector<int> drawn;
    std::copy_if(pages.begin(), pages.end(), std::back_inserter(drawn), [&](int page) {
        return isLinePage(page) || hasSoundingPlot(project.model, page);
    });
    plotPagesInOnePdf(
        path, drawn.size(),
        [&](std::size_t i) {
            messageLog().GraphicsErrorCount = 0;
            drawPage(project, drawn[i]);
        },
        [&](std::size_t) {
            progress.step();
            return true;
        });
    return ToolkitErrorState(ErrorNumber) == 0 ? "" : ToolkitHardcopyFault();
}

std::string plotReport(const PlottedProject &project, const std::string &path, Progress &progress) {
    drawReport(project.model, project.path, path, [&](std::size_t, std::size_t) {
        messageLog().GraphicsErrorCount = 0;
        progress.step();
        return true;
    });
    return ToolkitErrorState(ErrorNumber) == 0 ? "" : ToolkitHardcopyFault();
}

void plotPages(const PlottedProject &project, const PlotOptions &options, PlotResult &result) {
    const std::set<int> pages = pagesOf(options, result);
    Progress progress(project.path, pages.size() * options.formats.size());
    const auto isDocument = [&](const PlotFormat &format) {
        return options.allInOne && format.driver == DriverPdf;
    };
    for (const PlotFormat &format : options.formats) {
        if (format.report) {
            const std::string path = reportPath(project.namedAfter);
            countFile(path, plotReport(project, path, progress), result);
        } else if (isDocument(format)) {
            const std::string path = plotDocumentPath(project.namedAfter);
            countFile(path, plotDocument(project, path, pages, progress), result);
        }
    }
    std::vector<PageFile> drawn;
    for (const int page : pages) {
        for (const PlotFormat &format : options.formats) {
            if (!isDocument(format) && !format.report) {
                progress.step();
                drawn.push_back(drawPageFile(project, page, format));
            }
        }
        if (drawn.size() >= MostDrawnPages || page == *pages.rbegin()) {
            writePageFiles(drawn, result);
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
        project.limits.style = options.style;
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

int plotProjects(const PlotProgram &program, CommandWords words) {
    PlotOptions options;
    const std::string fault = readPlotOptions(words, program.formats, options);
    if (!fault.empty()) {
        std::fprintf(stderr, "%s: %s\n", std::string(program.name).c_str(), fault.c_str());
        return ExitUsage;
    }
    return runOverFiles(program.name, program.backend, options.files, options.outputDirectory,
                        [&](const std::string &file, bool taken) {
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
