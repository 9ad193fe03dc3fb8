#include "conditioning/further_skip.h"

#include "conditioning/auto_skip_dialog.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace keldrin {
namespace {

constexpr AutoSkipSettings NoFurtherFilter = {1, 128, false, false, false};

/// A sounding of ten windows to the decade from 0.1 msec on.
SoundingRecord sounding(const std::vector<float> &observed) {
    SoundingRecord record;
    for (const float value : observed) {
        const auto i = static_cast<std::size_t>(record.NumTW++);
        record.TWcenter[i] = 0.1F * std::pow(10.0F, 0.1F * static_cast<float>(i));
        record.TEMobs[i] = value;
        record.TEMerr[i] = 3.0F;
    }
    return record;
}

/// Values that fall by a power of time.
std::vector<float> decay(std::size_t windows, float power = -2.5F) {
    std::vector<float> values;
    for (std::size_t i = 0; i < windows; ++i) {
        values.push_back(1000.0F * std::pow(10.0F, 0.1F * power * static_cast<float>(i)));
    }
    return values;
}

SurveyModel lineOf(const std::vector<SoundingRecord> &soundings) {
    SurveyModel model;
    model.hTrn = soundings;
    model.SoundingCount = static_cast<int>(soundings.size());
    setSurveyType(model.control, InLoop);
    return model;
}

std::string digits(const ChosenWindows &windows, const SoundingRecord &record) {
    std::string text;
    for (std::size_t i = 0; i < windowCount(record); ++i) {
        text += windows[i] ? '1' : '0';
    }
    return text;
}

/// What a plan takes of each sounding.
std::vector<std::string> taken(const SurveyModel &model, const AutoSkipSettings &settings,
                               const FurtherSkipSettings &further) {
    const SkipPlan plan = planAutoSkip(model, settings, 100.0F, further);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < plan.taken.size(); ++i) {
        texts.push_back(digits(plan.taken[i], model.hTrn[i]));
    }
    return texts;
}

TEST(FurtherSkip, TheNoiseFloorFallsWithTimeAndLooksAtMagnitudes) {
    FurtherSkipSettings settings;
    settings.noiseLevel = 1.0F;
    settings.noiseExponent = -1.0F; // 10 at 0.1 msec, 1 at 1 msec
    SoundingRecord record = sounding(std::vector<float>(12, 2.0F));
    EXPECT_EQ(digits(belowNoiseFloor(record, {0, 12}, settings), record), "111111100000");
    record.TEMobs[1] = -50.0F; // well above the noise, though negative
    record.TEMobs[2] = MissingValue;
    record.TEMobs[11] = -0.1F;
    EXPECT_EQ(digits(belowNoiseFloor(record, {0, 12}, settings), record), "100111100001");
    EXPECT_EQ(digits(belowNoiseFloor(record, {3, 5}, settings), record), "000110000000");
}

TEST(FurtherSkip, OfASpikeOnlyTheSpikeIsBent) {
    FurtherSkipSettings settings;
    settings.slopeChange = 1.0F;
    const auto bent = [&](const std::vector<float> &values) {
        const SoundingRecord record = sounding(values);
        return digits(bentWindows(record, {0, values.size()}, settings), record);
    };
    std::vector<float> values = decay(9);
    EXPECT_EQ(bent(values), "000000000") << "a straight decay, however steep";
    values[4] *= 3.0F; // the windows beside it bend by half as much, and more than they may
    EXPECT_EQ(bent(values), "000010000");
    values[4] /= 9.0F;
    EXPECT_EQ(bent(values), "000010000") << "a dip";
    values = decay(9);
    values[0] *= 9.0F; // seen at the window after it alone, and nobody knows which one is wrong
    EXPECT_EQ(bent(values), "010000000");
    values = decay(9);
    values[3] = -values[3]; // has no logarithm: those beside it follow one another
    values[5] = MissingValue;
    EXPECT_EQ(bent(values), "000000000");
    EXPECT_EQ(bent({5.0F, 4.0F}), "00");
    EXPECT_EQ(bent({}), "");
}

TEST(FurtherSkip, NeighboursAtTheEndsOfTheLineAreOnOneSide) {
    FurtherSkipSettings settings;
    settings.neighbours = true;
    std::vector<SoundingRecord> line(7, sounding(decay(3)));
    for (const std::size_t wrong : {0U, 1U, 3U, 6U}) {
        std::vector<SoundingRecord> soundings = line;
        soundings[wrong].TEMobs[1] *= 5.0F;
        std::vector<std::string> expected(7, "000");
        expected[wrong] = "010"; // and none of those around it
        EXPECT_EQ(taken(lineOf(soundings), NoFurtherFilter, settings), expected) << wrong;
    }
    // What changes along the line by half of its soundings is ground, not noise.
    std::vector<SoundingRecord> contact = line;
    for (const std::size_t right : {3U, 4U, 5U, 6U}) {
        contact[right] = sounding(decay(3));
        for (std::size_t i = 0; i < 3; ++i) {
            contact[right].TEMobs[i] *= 50.0F;
        }
    }
    EXPECT_EQ(taken(lineOf(contact), NoFurtherFilter, settings),
              std::vector<std::string>(7, "000"));
    // Another sign is another value, however small both are.
    line[2].TEMobs[2] = -line[2].TEMobs[2];
    EXPECT_EQ(taken(lineOf(line), NoFurtherFilter, settings)[2], "001");
    // Two others are no majority against one.
    line.resize(3);
    EXPECT_EQ(taken(lineOf(line), NoFurtherFilter, settings)[2], "000");
}

TEST(FurtherSkip, OnlySoundingsThatCanBeComparedAreNeighbours) {
    FurtherSkipSettings settings;
    settings.neighbours = true;
    std::vector<SoundingRecord> line(8, sounding(decay(3)));
    for (std::size_t i = 0; i < line.size(); i += 2) { // two loops in turn
        line[i].TxStn = 2.0;
        for (std::size_t window = 0; window < 3; ++window) {
            line[i].TEMobs[window] *= 20.0F;
        }
    }
    SurveyModel model = lineOf(line);
    setSurveyType(model.control, FixedLoop);
    model.hTrn[3].TEMobs[0] *= 20.0F; // as the other loop has it
    EXPECT_EQ(taken(model, NoFurtherFilter, settings)[3], "100");
    EXPECT_EQ(taken(model, NoFurtherFilter, settings)[4], "000");
    // Windows are compared by time, not by number.
    SurveyModel shifted = lineOf(std::vector<SoundingRecord>(5, sounding(decay(6))));
    SoundingRecord &late = shifted.hTrn[2];
    const SoundingRecord whole = late;
    late.NumTW = 3;
    for (std::size_t i = 0; i < 3; ++i) {
        late.TWcenter[i] = whole.TWcenter[i + 3];
        late.TEMobs[i] = whole.TEMobs[i + 3];
    }
    EXPECT_EQ(taken(shifted, NoFurtherFilter, settings),
              (std::vector<std::string>{"000000", "000000", "000", "000000", "000000"}));
}

TEST(FurtherSkip, LaterWindowsFollowOneThatAFilterTakesNotTheRange) {
    FurtherSkipSettings settings;
    settings.andLater = true;
    AutoSkipSettings negative = {3, 8, false, true, false};
    std::vector<float> values = decay(10);
    const SurveyModel clean = lineOf({sounding(values)});
    EXPECT_EQ(taken(clean, negative, settings)[0], "1100000011");
    values[4] = -1.0F;
    values[0] = -1.0F; // taken by the range, as all before the first window
    const SurveyModel model = lineOf({sounding(values)});
    EXPECT_EQ(taken(model, negative, settings)[0], "1100111111");
    const SkipPlan plan = planAutoSkip(model, negative, 100.0F, settings);
    EXPECT_EQ(plan.counts.negative, 1);
    EXPECT_EQ(plan.counts.outsideRange, 4);
    EXPECT_EQ(plan.further.later, 3) << "by this rule alone";
    EXPECT_EQ(plan.counts.skipped, 8);
    settings.andLater = false;
    EXPECT_EQ(taken(model, negative, settings)[0], "1100100011");
}

/// A line of anything that a project can hold.
SurveyModel oddLine(unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> part(0.0F, 1.0F);
    SurveyModel model = lineOf(std::vector<SoundingRecord>(12, sounding(decay(20))));
    for (SoundingRecord &record : model.hTrn) {
        record.NumTW = static_cast<int>(part(random) * 21.0F);
        for (std::size_t i = 0; i < 20; ++i) {
            const float kind = part(random);
            record.TEMobs[i] = kind < 0.1F   ? static_cast<float>(MissingValue)
                               : kind < 0.2F ? std::nanf("")
                               : kind < 0.3F ? -1.0F
                               : kind < 0.4F ? 0.0F
                                             : 1.0e3F * part(random);
            record.TEMerr[i] =
                part(random) < 0.3F ? SkipOffset + 120.0F * part(random) : 120.0F * part(random);
        }
    }
    return model;
}

TEST(FurtherSkip, WithoutThemAPlanIsTheToldPassBitForBit) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SurveyModel told = oddLine(seed);
        told.control.DataCutoff = 60.0F;
        SurveyModel planned = told;
        const AutoSkipSettings settings = {2, 15 - static_cast<int>(seed % 16), true, seed % 2 == 0,
                                           seed % 3 == 0};
        const AutoSkipCounts counts = applyAutoSkip(told, settings);
        const SkipPlan plan = planAutoSkip(planned, settings, 60.0F, {});
        applySkipPlan(planned, plan, false);
        for (std::size_t k = 0; k < told.hTrn.size(); ++k) {
            for (std::size_t i = 0; i < MaxWindows; ++i) {
                ASSERT_EQ(std::bit_cast<unsigned>(planned.hTrn[k].TEMerr[i]),
                          std::bit_cast<unsigned>(told.hTrn[k].TEMerr[i]));
            }
        }
        EXPECT_EQ(plan.counts.skipped, counts.skipped);
        EXPECT_EQ(plan.counts.windows, counts.windows);
        for (const AutoSkipFilter &filter : AutoSkipFilters) {
            EXPECT_EQ(plan.counts.*filter.taken, counts.*filter.taken) << filter.name;
        }
    }
}

TEST(FurtherSkip, MarksDoNotChangeWhatIsTakenAndStayWhenTheyAreKept) {
    FurtherSkipSettings all = {true, 1.0F, -0.5F, true, 1.0F, true, 2.0F, true, true};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SurveyModel model = oddLine(seed);
        SurveyModel unmarked = model;
        for (SoundingRecord &record : unmarked.hTrn) {
            for (float &error : record.TEMerr) {
                error = withSkipMark(error, false);
            }
        }
        const SkipPlan plan = planAutoSkip(model, {}, 60.0F, all);
        EXPECT_EQ(plan.taken, planAutoSkip(unmarked, {}, 60.0F, all).taken);
        const SurveyModel before = model;
        int beside = 0;
        applySkipPlan(model, plan, true);
        for (std::size_t k = 0; k < model.hTrn.size(); ++k) {
            for (std::size_t i = 0; i < windowCount(model.hTrn[k]); ++i) {
                const bool was = isSkipped(before.hTrn[k].TEMerr[i]);
                EXPECT_EQ(isSkipped(model.hTrn[k].TEMerr[i]), was || plan.taken[k][i]);
                beside += was && !plan.taken[k][i] ? 1 : 0;
            }
        }
        EXPECT_EQ(marksBesidePlan(before, plan), beside);
    }
}

TEST(FurtherSkip, TheTextsSayWhatEachHasTaken) {
    AutoSkipAnswers answers;
    answers.counted.counts = {11, 41, 9, 19, 80, 624};
    EXPECT_EQ(totalText(answers), "Skips 80 of 624 windows:");
    answers.counted.counts.skipped = 79;
    EXPECT_EQ(totalText(answers), "Skips 79 of 624 windows, some by several rules:");
    EXPECT_EQ(takenText(answers), "error 41, negative 9, slope 19, range 11");
    EXPECT_EQ(takenFurtherText(answers), "");
    EXPECT_EQ(otherMarksText(answers), "");
    answers.counted.otherMarks = 21;
    EXPECT_EQ(otherMarksText(answers), "21 other windows are skipped now and come back.");
    answers.further.keepMarks = true;
    answers.counted.otherMarks = 1;
    EXPECT_EQ(otherMarksText(answers), "1 other window is skipped now and stays so.");
    answers.further.neighbours = answers.further.noiseFloor = true;
    answers.counted.further = {5, 6, 7, 8};
    EXPECT_EQ(takenFurtherText(answers), "noise floor 5, neighbours 7");
}

} // namespace
} // namespace keldrin
