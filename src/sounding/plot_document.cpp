#include "sounding/plot_document.h"

#include "base/file_operations.h"
#include "base/paths.h"
#include "base/version.h"
#include "messages/message_log.h"
#include "page/hardcopy.h"
#include "screen/graphics_errors.h"
#include "sounding/hardcopy.h"
#include "sounding/sounding_plot.h"
#include "toolkit/long_work.h"
#include "toolkit/toolkit.h"

#include <vector>

namespace keldrin {

namespace {

// How a PDF names the program that made it: in 16 bits a character, after a mark.
std::string creatorOfOurs() {
    std::string text = "/Creator (\xFE\xFF";
    for (const char c : ProgramName) {
        text += '\0';
        text += c;
    }
    return text;
}

bool isOurDocument(const std::string &path) {
    constexpr std::size_t headBytes = 1024; // the entry stands in the first object
    return fileHead(path, headBytes).find(creatorOfOurs()) != std::string::npos;
}

std::vector<int> stationsWithPages(const SurveyModel &survey) {
    std::vector<int> stations;
    for (int station = 1; station <= survey.SoundingCount; ++station) {
        if (hasSoundingPlot(survey, station)) {
            stations.push_back(station);
        }
    }
    return stations;
}

} // namespace

std::string plotDocumentPath(std::string_view projectPath) {
    const std::string base(withoutExtension(projectPath));
    const std::string path = base + ".pdf";
    return !pathExists(path) || isOurDocument(path) ? path : base + "_soundings.pdf";
}

bool plotPagesInOnePdf(const std::string &path, std::size_t pages,
                       const std::function<void(std::size_t)> &draw,
                       const std::function<bool(std::size_t)> &goOn) {
    ToolkitHardcopySelect(HardcopyDevice, DriverPdf);
    IGrHardcopy(path);
    if (const int error = ToolkitErrorState(ErrorNumber); error != 0) {
        IGrHardcopy(HardcopyStop);
        ToolkitSetError(error);
        return true;
    }
    for (std::size_t i = 0; i < pages; ++i) {
        if (!goOn(i)) {
            ToolkitDropHardcopy();
            return false;
        }
        if (i > 0) {
            ToolkitNextPage();
        }
        draw(i);
    }
    IGrHardcopy(HardcopyStop);
    return true;
}

int Plot_AllSoundings(const SurveyModel &survey, const PlotLimits &limits, std::string_view path,
                      std::string_view date, std::string_view time) {
    const std::vector<int> stations = stationsWithPages(survey);
    const std::string document = plotDocumentPath(path);
    const std::string file(fileNameOf(document));
    ReportInfoLine("");
    if (stations.empty()) {
        ReportNotice(NoticeLevel::Status, {"No sounding has data to plot."});
        return 1;
    }
    ReportInfoLine("Saving plots of " + std::to_string(stations.size()) + " soundings in file " +
                   file);
    LongWork work({"Writing " + file, "Saving plots"});
    const bool done = plotPagesInOnePdf(
        document, stations.size(),
        [&](std::size_t i) { Plot_Sounding(survey, limits, stations[i], path, date, time); },
        [&](std::size_t i) {
            return work.step(static_cast<double>(i), static_cast<double>(stations.size()));
        });
    if (!done) {
        ReportNotice(NoticeLevel::Status, {"Stopped; no file has been written."});
        return 1;
    }
    reportWhereHardcopyWent(document);
    checkHardcopy(document, "Plot_AllSoundings");
    return 0;
}

} // namespace keldrin
