#include "line/profile_page.h"

#include "line_survey.h"
#include "page/drawing.h"
#include "page/surfaces/page_transcript.h"
#include "page/surfaces/record_surface.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<float> timesOf(const ProfilePage &page) {
    std::vector<float> times;
    for (const ProfileCurve &curve : page.curves) {
        times.push_back(curve.time);
    }
    return times;
}

TEST(ProfilePage, ShowsEveryNthWindowOrTheChosenOnes) {
    const SurveyModel survey = lineSurvey(3, 25);
    const ProfilePage own = profilePage(survey, {}, "line.std");
    EXPECT_EQ(own.every, 3);
    EXPECT_THAT(own.curves, SizeIs(9));
    EXPECT_FLOAT_EQ(own.curves[1].time, 0.8F);
    ProfileLimits limits;
    limits.every = 12;
    EXPECT_THAT(profilePage(survey, limits, "line.std").curves, SizeIs(3));
    limits.windows = "2-4,9, 2";
    EXPECT_THAT(timesOf(profilePage(survey, limits, "line.std")),
                ElementsAre(0.2F, 0.4F, 0.8F, 25.6F));
}

TEST(ProfilePage, ListsOfWindowsAreOrdinals) {
    EXPECT_THAT(windowList("1-3,7"), ElementsAre(1, 2, 3, 7));
    EXPECT_THAT(windowList(" 4 , 2 "), ElementsAre(2, 4));
    for (const std::string_view bad :
         {"", "0", "129", "3-1", "a", "1,,2", "1-", "1.5", "1-99999999999"}) {
        EXPECT_THAT(windowList(bad), IsEmpty()) << bad;
    }
}

TEST(ProfilePage, WindowsOfAllSoundingsMeetByTheirTimes) {
    SurveyModel survey = lineSurvey(3);
    SoundingRecord &late = survey.sounding(2); // lacks the first window
    std::copy(late.TWcenter.begin() + 1, late.TWcenter.begin() + 5, late.TWcenter.begin());
    late.NumTW = 4;
    const ProfilePage page = profilePage(survey, {}, "line.std");
    ASSERT_THAT(page.curves, SizeIs(5));
    EXPECT_THAT(page.curves[0].points, SizeIs(2));
    ASSERT_THAT(page.curves[1].points, SizeIs(3));
    EXPECT_EQ(page.curves[1].points[1].window, 0);
}

class ProfileDrawing : public testing::Test {
  protected:
    ProfileDrawing() {
        ToolkitInit(backend, {"keldrin"});
        selectSurface(&page);
    }
    ~ProfileDrawing() override { ToolkitClose(); }
    ProfileDrawing(const ProfileDrawing &) = delete;
    ProfileDrawing &operator=(const ProfileDrawing &) = delete;

    /// Lines and markers of a curve by its colour, axes and frames being black.
    [[nodiscard]] std::vector<std::string> drawn() const {
        std::vector<std::string> lines = pageTranscript(page);
        std::erase_if(lines, [](const std::string &line) {
            return line.find(" #") == std::string::npos || line.starts_with("text");
        });
        return lines;
    }

    AnsweringBackend backend;
    RecordSurface page;
};

TEST_F(ProfileDrawing, CurvesAreOpenAtSkippedWindowsAndGaps) {
    SurveyModel survey = lineSurvey(8, 1);
    survey.sounding(3).TEMerr[0] = SkipOffset + 3.0F;
    survey.sounding(8).East += 200.0;
    drawProfile(profilePage(survey, {}, "line.std"));
    const std::vector<std::string> lines = drawn();
    const auto count = [&](std::string_view head) {
        return std::count_if(lines.begin(), lines.end(),
                             [=](const std::string &line) { return line.starts_with(head); });
    };
    EXPECT_EQ(count("line"), 2) << "1 to 2 and 4 to 7";
    EXPECT_EQ(count("mark dot"), 7);
    EXPECT_EQ(count("mark ring"), 1);
    EXPECT_EQ(count("poly"), 0);
    EXPECT_THAT(pageTranscript(page), Contains(HasSubstr("\"Time (msec)\"")));
    EXPECT_THAT(pageTranscript(page), Contains(HasSubstr("\"0.1\"")));
}

TEST_F(ProfileDrawing, TheAxisHoldsWholeDecadesOfBothSigns) {
    SurveyModel survey = lineSurvey(2, 3);
    survey.sounding(1).TEMobs[2] = -30.0F;
    survey.sounding(2).TEMobs[2] = -7000.0F;
    survey.sounding(2).TEMerr[2] = SkipOffset; // equal to the offset is not skipped
    const ProfilePage all = profilePage(survey, {}, "line.std");
    EXPECT_FLOAT_EQ(all.bottom, ArcSinh(-1.0e4F));
    survey.sounding(2).TEMerr[2] = SkipOffset + 1.0F;
    const ProfilePage usual = profilePage(survey, {}, "line.std");
    EXPECT_FLOAT_EQ(usual.bottom, ArcSinh(-100.0F));
    EXPECT_FLOAT_EQ(usual.top, ArcSinh(1000.0F));
    ProfileLimits limits;
    limits.setData = true;
    limits.data = {5.0F, 5.0F};
    EXPECT_EQ(profilePage(survey, limits, "line.std").bottom, usual.bottom);
    limits.data = {-5.0F, 50.0F};
    EXPECT_FLOAT_EQ(profilePage(survey, limits, "line.std").top, ArcSinh(50.0F));
}

TEST_F(ProfileDrawing, AHitIsThePointAtThePlace) {
    const SurveyModel survey = lineSurvey(5);
    const ProfilePage profile = profilePage(survey, {}, "line.std");
    const PageFrame &frame = profile.frame;
    const float x = frame.left + 0.3F * (frame.right - frame.left); // sounding 2
    const float part = (ArcSinh(500.0F) - profile.bottom) / (profile.top - profile.bottom);
    const float y = frame.bottom + part * (frame.top - frame.bottom);
    const LineHit hit = profileHit(profile, x + 0.1F, y - 0.05F);
    EXPECT_EQ(hit.sounding, 2);
    EXPECT_EQ(profileText(profile, hit), "Window 2: 0.2 msec   500 uV/A");
    const LineHit beside = profileHit(profile, x, frame.bottom + 1.0F);
    EXPECT_EQ(beside.sounding, 2);
    EXPECT_EQ(profileText(profile, beside), "");
    EXPECT_EQ(profileHit(profile, 0.5F, y).sounding, 0);
}

TEST_F(ProfileDrawing, AnySurveyCanBeDrawn) {
    SurveyModel odd = lineSurvey(3);
    odd.sounding(1).TWcenter.fill(0.0F);
    odd.sounding(2).TEMobs.fill(std::numeric_limits<float>::infinity());
    odd.sounding(3).TEMobs.fill(1.0e30F);
    for (const SurveyModel &survey : {odd, lineSurvey(1, 0), lineSurvey(1, 1), lineSurvey(2)}) {
        drawProfile(profilePage(survey, {}, "line.std"), 1);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
        for (const RecordedItem &item : page.items()) {
            for (const PagePoint &point : item.points) {
                EXPECT_TRUE(point.x >= -0.001F && point.x <= 24.001F) << item.text;
                EXPECT_TRUE(point.y >= -0.001F && point.y <= 18.001F) << item.text;
            }
        }
    }
}

} // namespace
} // namespace keldrin
