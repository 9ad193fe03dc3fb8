#include "line/report.h"

#include "base/paths.h"
#include "line/plan_page.h"
#include "line/profile_page.h"
#include "line/report_title.h"
#include "line/section_page.h"
#include "line/sounding_text.h"
#include "page/drawing.h"
#include "page/hardcopy.h"
#include "sounding/page_layout.h"
#include "sounding/plot_document.h"
#include "sounding/plot_limits.h"
#include "sounding/sounding_plot.h"

#include <vector>

namespace keldrin {

namespace {

/// A page of the report and its place in the contents.
struct ReportPage {
    std::string bookmark;
    int level = 0;
    std::function<void()> draw;
};

/// The same in the order of the file; all that the pages draw lives as long as they do.
class Report {
  public:
    Report(const SurveyModel &survey, std::string_view path) : survey_(survey), path_(path) {
        limits_.style = PageStyle::Presentation;
        Plot_AutoLimits(survey, limits_, date_, time_);
        pages_.push_back({"Survey", 0, [this] {
                              drawTitlePage(survey_, path_);
                          }});
        pages_.push_back({"Plan", 0, [this] {
                              makePlanPage(survey_, LineSettings{}, path_).draw(0);
                          }});
        pages_.push_back({"Profiles", 0, [this] {
                              drawProfile(profilePage(survey_, ProfileLimits{}, path_));
                          }});
        pages_.push_back({"Section", 0, [this] {
                              drawSection(sectionPage(survey_, SectionLimits{}, path_));
                          }});
        for (int station = 1; station <= survey.SoundingCount; ++station) {
            if (hasSoundingPlot(survey, station)) {
                addSounding(station);
            }
        }
    }
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    [[nodiscard]] std::size_t size() const { return pages_.size(); }

    void draw(std::size_t i) const {
        const ReportPage &page = pages_[i];
        if (i == 0) {
            ToolkitDocumentTitle(reportTitle(survey_, path_));
        }
        if (page.level > 0 && pages_[i - 1].level == 0) {
            ToolkitBookmark("Soundings", 0);
        }
        ToolkitBookmark(page.bookmark, page.level);
        page.draw();
        drawPageNumber(i + 1);
    }

  private:
    void addSounding(int station) {
        const std::string name = stationText(survey_.sounding(station).Station);
        pages_.push_back({name.empty() ? "Sounding " + std::to_string(station) : "Station " + name,
                          1, [this, station] {
                              Plot_Sounding(survey_, limits_, station, path_, date_, time_);
                          }});
    }

    // In the lower right corner, which no page uses.
    void drawPageNumber(std::size_t number) const {
        constexpr float right = 23.6F;
        constexpr float base = 0.25F;
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        ToolkitTextOrientation(0.0F);
        IGrColour("BLACK");
        selectTextSize(NumberSize);
        const std::string text = std::to_string(number) + " / " + std::to_string(size());
        ToolkitDrawText(right - ToolkitTextWidth(text), base, text);
    }

    const SurveyModel &survey_;
    std::string path_;
    PlotLimits limits_;
    std::string date_;
    std::string time_;
    std::vector<ReportPage> pages_;
};

} // namespace

std::string reportPath(std::string_view projectPath) {
    return std::string(withoutExtension(projectPath)) + "_report.pdf";
}

bool drawReport(const SurveyModel &survey, std::string_view path, const std::string &file,
                const std::function<bool(std::size_t i, std::size_t n)> &goOn) {
    const Report report(survey, path);
    return plotPagesInOnePdf(
        file, report.size(), [&](std::size_t i) { report.draw(i); },
        [&](std::size_t i) { return goOn(i, report.size()); });
}

} // namespace keldrin
