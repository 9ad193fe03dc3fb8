#include "program/batch/command.h"

#include "base/clock.h"
#include "line/profile_page.h"
#include "line/section_page.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "shell/open_project.h"
#include "sounding/plan_view.h"
#include "sounding/sounding_plot.h"
#include "support/files.h"
#include "support/picture.h"
#include "support/sanitizer.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

/// A program that reads plot files and knows nothing of ours.
struct Reader {
    std::string format;
    std::string extension;
    std::vector<std::string> programs;
    std::string command; ///< from file $IN to a picture $OUT
};

void PrintTo(const Reader &reader, std::ostream *out) {
    *out << reader.format;
}

const Reader Readers[] = {
    {"svg",
     ".svg",
     {"rsvg-convert", "pngtopnm"},
     "rsvg-convert -b white -w 960 $IN -o $OUT.png && pngtopnm $OUT.png >$OUT"},
    {"hpgl",
     ".hpg",
     {"hp2xx", "pngtopnm"},
     "hp2xx -q -t -d 102 -c 124 -p 222 -x 0 -X 9600 -y 0 -Y 7200 -m png -f $OUT.png $IN"
     " && pngtopnm $OUT.png >$OUT"},
    {"wmf",
     ".wmf",
     {"wmf2svg", "rsvg-convert", "pngtopnm"},
     "wmf2svg -o $OUT.svg $IN && rsvg-convert -b white -w 960 $OUT.svg -o $OUT.png"
     " && pngtopnm $OUT.png >$OUT"},
};

bool runs(const std::string &command) {
    return std::system(("(" + command + ") >/dev/null 2>&1").c_str()) == 0;
}

class PlotPicture : public testing::TestWithParam<Reader> {
  protected:
    PlotPicture() {
        fixClock(DateTime{2026, 5, 14, 9, 30, 0});
        const std::string examples = std::string(SourceDirectory) + "/examples/project/";
        for (const std::string name : {"inloop.std", "inloop.m1d"}) {
            std::filesystem::copy_file(examples + name, directory.path(name));
        }
    }
    ~PlotPicture() override {
        selectSurface(nullptr);
        fixClock({});
        messageLog() = MessageLog{};
    }
    PlotPicture(const PlotPicture &) = delete;
    PlotPicture &operator=(const PlotPicture &) = delete;

    void record() {
        std::string path = directory.path("inloop.std");
        SurveyModel survey;
        ASSERT_EQ(OpenProject(survey, path), 0);
        PlotLimits limits;
        std::string date;
        std::string time;
        Plot_AutoLimits(survey, limits, date, time);
        selectSurface(&soundingPage);
        Plot_Sounding(survey, limits, 1, path, date, time);
        selectSurface(&planPage);
        Plot_PlanView(survey, path);
        selectSurface(&profilePageOfLine);
        drawProfile(profilePage(survey, {}, path));
        selectSurface(&sectionPageOfLine);
        drawSection(sectionPage(survey, {}, path));
        selectSurface(nullptr);
        messageLog() = MessageLog{};
    }

    enum class Colours { Kept, ThoseOfPens };

    void compare(const RecordSurface &page, const std::string &name,
                 Colours colours = Colours::Kept) {
        constexpr double slack = 0.05; // coloured edges of letters
        SCOPED_TRACE(name);
        const std::string out = directory.path(name + ".pnm");
        ASSERT_TRUE(
            runs("IN='" + directory.path(name) + "' OUT='" + out + "'; " + GetParam().command));
        Picture picture;
        ASSERT_TRUE(picture.read(fileContent(out)));
        const InkMap wanted = pictureOf(page).inkMap();
        const InkMap shown = picture.inkMap();
        EXPECT_GT(correlation(wanted, shown), 0.9);
        EXPECT_EQ(inkWithoutCounterpart(wanted, shown), "") << "missing in the picture";
        EXPECT_EQ(inkWithoutCounterpart(shown, wanted), "") << "only in the picture";
        std::vector<std::pair<double, double>> inks = {{wanted.total(), shown.total()}};
        if (colours == Colours::Kept) {
            inks.insert(inks.end(), {{wanted.red, shown.red}, {wanted.blue, shown.blue}});
        }
        for (const auto &[a, b] : inks) {
            EXPECT_GE(b, a / 2.0 - slack);
            EXPECT_LE(b, a * 2.0 + slack);
        }
    }

    TemporaryDirectory directory;
    RecordSurface soundingPage;
    RecordSurface planPage;
    RecordSurface profilePageOfLine;
    RecordSurface sectionPageOfLine;
};

// Other programs read our files and show the page that was drawn.
TEST_P(PlotPicture, AnIndependentReaderShowsThePage) {
    if (UnderSanitizer) {
        GTEST_SKIP() << "the files are those of the other builds";
    }
    for (const std::string &program : GetParam().programs) {
        if (!runs("command -v " + program)) {
            GTEST_SKIP() << program << " is not installed";
        }
    }
    record();
    const std::string project = directory.path("inloop.std");
    const bool plotter = GetParam().format == "hpgl"; // has few pens and fills no areas
    std::vector<std::string_view> words = {"--plan", "--profile", "--soundings",
                                           "1",      "--format",  GetParam().format};
    if (!plotter) {
        words.emplace_back("--section");
    }
    words.emplace_back(project);
    testing::internal::CaptureStdout();
    const int exitCode = plotCommand(words);
    const std::string output = testing::internal::GetCapturedStdout();
    ASSERT_EQ(exitCode, ExitOk) << output;
    compare(soundingPage, "inloop0001" + GetParam().extension);
    compare(planPage, "inloop_plan" + GetParam().extension);
    compare(profilePageOfLine, "inloop_profile" + GetParam().extension,
            plotter ? Colours::ThoseOfPens : Colours::Kept);
    if (!plotter) {
        compare(sectionPageOfLine, "inloop_section" + GetParam().extension);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, PlotPicture, testing::ValuesIn(Readers),
                         [](const auto &format) { return format.param.format; });

} // namespace
} // namespace keldrin
