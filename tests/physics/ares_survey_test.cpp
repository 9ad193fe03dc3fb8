#include "messages/message_log.h"
#include "physics/apparent_resistivity.h"
#include "physics/loop_field.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;

constexpr std::size_t Windows = 6;

/// A sounding with a curve that falls as a half-space's does and differs from its neighbours'.
SoundingRecord exampleRecord(int number) {
    SoundingRecord record;
    record.NumTW = Windows;
    record.Station = number;
    record.AResObs.fill(-5.0F);
    record.AResCalc.fill(-6.0F);
    for (std::size_t k = 0; k < Windows; ++k) {
        const float t = 0.1F * std::pow(2.0F, static_cast<float>(k));
        record.TWcenter[k] = t;
        record.TWwidth[k] = 0.2F * t;
        record.TEMobs[k] = (100.0F + static_cast<float>(number)) * std::pow(t, -2.5F);
        record.TEMwgt[k] = {0, 0, 1};
    }
    return record;
}

SurveyModel exampleModel(int array, int soundings) {
    SurveyModel model;
    setSurveyType(model.control, array);
    model.control.TxFreq = 8.0F;
    for (int i = 0; i < soundings; ++i) {
        model.hTrn.push_back(exampleRecord(i));
    }
    model.SoundingCount = soundings;
    return model;
}

AResInput inputOf(const ControlValues &control, const SoundingRecord &record) {
    AResInput input;
    input.iTemArray = control.SurveyTypeIndex;
    input.xLength = control.XTxLength;
    input.yLength = control.YTxLength;
    input.ramp = control.TxRamp;
    input.freq = control.TxFreq;
    input.ntw = record.NumTW;
    input.twCenter = record.TWcenter;
    input.twWidth = record.TWwidth;
    input.weights = record.TEMwgt;
    return input;
}

std::vector<float> resistivities(const AResInput &input, std::span<const float> dbdt,
                                 int *unfitted = nullptr) {
    std::vector<float> ares(static_cast<std::size_t>(input.ntw));
    const AResOutcome outcome = ARes_dBdt(input, dbdt, ares);
    if (unfitted != nullptr) {
        *unfitted += outcome.unfitted;
    }
    return ares;
}

std::vector<float> firstWindows(const WindowReals &values) {
    return {values.begin(), values.begin() + Windows};
}

TEST(AResSurvey, ManySoundingsGiveWhatEachGivesAloneInTheOrderOfTheLine) {
    MessageRecorder recorder;
    std::vector<std::string> said;
    messageLog().observer = [&](MessageKind, std::span<const MessageLine> lines) {
        said.push_back(lines.back().str());
    };
    SurveyModel model = exampleModel(InLoop, 100);
    model.hTrn[3].NumTW = 0;
    model.hTrn[57].TWcenter[2] = 2.0e4F;
    int unfitted = 0;
    std::vector<std::string> expected;
    for (int i = 1; i <= 100; ++i) {
        if (i != 4 && i != 58) {
            expected.push_back("Stn " + std::to_string(i) + "/100 ARes done");
        }
    }
    expected.emplace_back("Soundings without apparent resistivities: 1, the first at station 3");
    expected.emplace_back("Soundings without apparent resistivities: 1, the first at station 57");
    EXPECT_EQ(ARes_Survey(model), 0);
    const std::string last = said.back();
    said.pop_back();
    EXPECT_EQ(said, expected);
    for (const SoundingRecord &record : model.hTrn) {
        if (record.NumTW == 0 || record.TWcenter[2] > 1.0e4F) {
            EXPECT_THAT(record.AResObs, Each(-5.0F));
        } else {
            EXPECT_EQ(firstWindows(record.AResObs),
                      resistivities(inputOf(model.control, record), record.TEMobs, &unfitted));
            EXPECT_EQ(record.AResObs[Windows], -5.0F);
        }
        EXPECT_THAT(record.AResCalc, Each(-6.0F)); // nothing calculated yet
    }
    EXPECT_GT(unfitted, 0);
    EXPECT_EQ(last, "Windows that no half-space fits (more than 0.1 left in ArcSinh): " +
                        std::to_string(unfitted) + " of 588");
    model.hTrn[99].NumTW = 129;
    EXPECT_EQ(ARes_Survey(model), 1) << "the last sounding's";
    model.SoundingCount = 0;
    EXPECT_EQ(ARes_Survey(model), 0);
}

TEST(AResSurvey, WhatAllSoundingsLackIsSaidOnce) {
    MessageRecorder messages;
    SurveyModel model = exampleModel(InLoop, 40);
    model.control.TxFreq = 0.0F;
    EXPECT_EQ(ARes_Survey(model), 1);
    EXPECT_THAT(messages.errors,
                ElementsAre("ARes_dBdt.ERROR|Tx Freq=0 is < 0.001 or > 1000 hertz|Soundings "
                            "without apparent resistivities: 40, the first at station 0"));
    // Soundings with the same fault are reported together, another fault by itself.
    model.control.TxFreq = 8.0F;
    model.hTrn[7].NumTW = model.hTrn[9].NumTW = 0;
    model.hTrn[8].TWcenter[0] = 2.0e4F;
    messages.errors.clear();
    EXPECT_EQ(ARes_Survey(model), 0);
    EXPECT_THAT(messages.errors,
                ElementsAre("ARes_dBdt.ERROR|NTW=0 is < 1 or > 128|Soundings without apparent "
                            "resistivities: 2, the first at station 7",
                            "ARes_dBdt.ERROR|Time-window Center =20000 is < 1.0E-4 or > 1.0E4 "
                            "msec|Soundings without apparent resistivities: 1, the first at "
                            "station 8"));
}

// At a high repetition rate the response of a coincident loop turns around with conductivity, and
// the search may run out of passes.
TEST(AResSurvey, AFailedSolveIsSaidAndCountsOnlyInTheEarliestWindow) {
    MessageRecorder messages;
    SurveyModel model = exampleModel(CoincidentLoop, 1);
    model.control.TxFreq = 50.0F;
    SoundingRecord &record = model.hTrn[0];
    const auto surveyWith = [&](int windows, float late) {
        record.NumTW = windows;
        record.TWcenter[0] = windows == 1 ? 8.0F : 0.1F;
        record.TEMobs[0] = windows == 1 ? late : 20000.0F;
        record.TWcenter[1] = 8.0F;
        record.TEMobs[1] = late;
        record.TWwidth[0] = record.TWwidth[1] = 0.2F;
        record.AResObs.fill(-5.0F);
        record.TEMcalc.fill(MissingValue);
        messages.infos.clear();
        messages.errors.clear();
        return ARes_Survey(model);
    };
    float late = 100.0F;
    while (late < 1.0e5F && surveyWith(1, late) == 0) {
        late *= 1.01F;
    }
    ASSERT_LT(late, 1.0e5F) << "no such value";
    EXPECT_EQ(surveyWith(1, late), 2);
    EXPECT_EQ(record.AResObs[0], -5.0F);
    EXPECT_THAT(messages.infos, Not(Contains("Stn 1/1 ARes done")));
    ASSERT_EQ(messages.errors.size(), 1U);
    EXPECT_EQ(surveyWith(2, late), 0);
    EXPECT_GT(record.AResObs[0], 0.0F);
    EXPECT_GT(record.AResObs[1], 0.0F);
    EXPECT_THAT(messages.infos, Contains("Stn 1/1 ARes done"));
    EXPECT_EQ(messages.errors.size(), 1U);
}

TEST(AResSurvey, CancellingKeepsWhatIsDone) {
    const MessageRecorder messages;
    for (const int soundings : {7, 400}) { // on the caller's thread, and on several
        SurveyModel model = exampleModel(InLoop, soundings);
        std::vector<int> steps;
        const AResProgress progress = {[&](int done, int total) {
            EXPECT_EQ(total, soundings);
            steps.push_back(done);
            return done < 3;
        }};
        EXPECT_EQ(ARes_Survey(model, progress), 0);
        EXPECT_THAT(steps, ElementsAre(1, 2, 3));
        EXPECT_GT(model.hTrn[2].AResObs[0], 0.0F);
        EXPECT_EQ(model.hTrn[3].AResObs[0], -5.0F);
    }
}

// The second call's lists are closed up over the missing window, its weights are not.
TEST(AResSurvey, CalculatedValuesBehindAGapTakeTheWeightsOfAnEarlierWindow) {
    const MessageRecorder messages;
    SurveyModel model = exampleModel(FixedLoop, 1);
    SoundingRecord &record = model.hTrn[0];
    record.East = 20.0;
    record.North = 30.0;
    model.control.TxAzimuth = 90.0F;
    record.TEMwgt = {};
    for (std::size_t k = 0; k < Windows; ++k) {
        record.TEMwgt[k][k % 2 == 0 ? 2 : 0] = 1.0F;
    }
    record.TEMcalc = record.TEMobs;
    record.TEMcalc[1] = MissingValue;
    EXPECT_EQ(ARes_Survey(model), 0);
    AResInput closedUp = inputOf(model.control, record);
    closedUp.rxX = 20.0F;
    closedUp.rxY = 30.0F;
    WindowReals centre = record.TWcenter;
    WindowReals width = record.TWwidth;
    WindowReals values = record.TEMobs;
    for (std::size_t k = 1; k + 1 < Windows; ++k) {
        centre[k] = centre[k + 1];
        width[k] = width[k + 1];
        values[k] = values[k + 1];
    }
    closedUp.ntw = Windows - 1;
    closedUp.twCenter = centre;
    closedUp.twWidth = width;
    std::vector<float> expected = resistivities(closedUp, values);
    expected.insert(expected.begin() + 1, -6.0F);
    const std::vector<float> got = firstWindows(record.AResCalc);
    for (std::size_t k = 0; k < Windows; ++k) {
        EXPECT_NEAR(got[k], expected[k], 1.0e-3F * std::fabs(expected[k])) << k;
    }
    EXPECT_GT(std::fabs(record.AResObs[3] / got[3] - 1.0F), 0.05F);
}

// A negative calculated value is a value: it has no apparent resistivity, and one from an earlier
// model must not stay.
TEST(AResSurvey, ANegativeCalculatedValueGivesZero) {
    const MessageRecorder messages;
    SurveyModel model = exampleModel(InLoop, 1);
    SoundingRecord &record = model.hTrn[0];
    record.TEMcalc = record.TEMobs;
    record.TEMcalc[1] = -5.0F;
    record.TEMcalc[2] = MissingValue;
    EXPECT_EQ(ARes_Survey(model), 0);
    EXPECT_GT(record.AResCalc[0], 0.0F);
    EXPECT_EQ(record.AResCalc[1], 0.0F);
    EXPECT_EQ(record.AResCalc[2], -6.0F);
    EXPECT_GT(record.AResCalc[3], 0.0F);
}

// Metres matter six million metres from the origin of the coordinates.
TEST(AResSurvey, LargeCoordinatesLoseNothing) {
    const MessageRecorder messages;
    WindowReals atOrigin{};
    for (const double origin : {0.0, 6.0e6 + 0.1875}) {
        SurveyModel model = exampleModel(FixedLoop, 1);
        model.control.XTxCenter = model.control.YTxCenter = origin;
        model.hTrn[0].East = origin + 12.3125;
        model.hTrn[0].North = origin + 7.40625;
        EXPECT_EQ(ARes_Survey(model), 0);
        if (origin == 0.0) {
            atOrigin = model.hTrn[0].AResObs;
        } else {
            EXPECT_EQ(model.hTrn[0].AResObs, atOrigin);
        }
    }
}

// The receiver is where the coordinates, the azimuths and the unit put it: a sounding's results are
// those of that place and no other.
TEST(AResSurvey, PlacesTheReceiverInTheLoopsAxes) {
    const MessageRecorder messages;
    struct Case {
        int array;
        int unit;
        float TxAzimuth, LineAzimuth;
        double east, north;  ///< Fixed-Loop, from the centre
        double rxStn, txStn; ///< Moving-Loop
        float YRxOffset;
        float rxX, rxY;
    };
    const Case cases[] = {
        {FixedLoop, Metres, 90.0F, 0.0F, 200.0, 50.0, 0, 0, 7.0F, 200.0F, 50.0F},
        {FixedLoop, Metres, 0.0F, 0.0F, 200.0, 50.0, 0, 0, 7.0F, 50.0F, -200.0F},
        {FixedLoop, Feet, 90.0F, 0.0F, 200.0, 50.0, 0, 0, 7.0F, 60.96F, 15.24F},
        {MovingLoop, Metres, 30.0F, 30.0F, 0, 0, 14.0, 10.0, 20.0F, 100.0F, 20.0F},
        {MovingLoop, Metres, 30.0F, 120.0F, 0, 0, 14.0, 10.0, 20.0F, 20.0F, -100.0F},
        {MovingLoop, Metres, 30.0F, 60.0F, 0, 0, 14.0, 10.0, 20.0F, 96.602540F, -32.679492F},
        {MovingLoop, Feet, 30.0F, 30.0F, 0, 0, 10.0, 14.0, 0.0F, -30.48F, 0.0F},
    };
    for (const Case &c : cases) {
        SurveyModel model = exampleModel(c.array, 1);
        ControlValues &control = model.control;
        setLengthUnits(control, c.unit);
        control.XTxCenter = 4.0e5;
        control.YTxCenter = 6.0e6;
        control.YTxLength = 40.0F;
        control.TxAzimuth = c.TxAzimuth;
        control.LineAzimuth = c.LineAzimuth;
        control.StnScale = 25.0F;
        control.XRxOffset = 99.0F; // plays no part
        control.YRxOffset = c.YRxOffset;
        SoundingRecord &record = model.hTrn[0];
        record.East = control.XTxCenter + c.east;
        record.North = control.YTxCenter + c.north;
        record.RxStn = c.rxStn;
        record.TxStn = c.txStn;
        record.TEMwgt.fill({1.0F, 0.0F, 1.0F});
        EXPECT_EQ(ARes_Survey(model), 0);
        AResInput input = inputOf(control, record);
        const float unit = c.unit == Feet ? 0.3048F : 1.0F;
        input.xLength *= unit;
        input.yLength *= unit;
        input.rxX = c.rxX;
        input.rxY = c.rxY;
        const std::vector<float> expected = resistivities(input, record.TEMobs);
        for (std::size_t k = 0; k < Windows; ++k) {
            EXPECT_NEAR(record.AResObs[k], expected[k], 2.0e-3F * expected[k]) << c.rxX << ' ' << k;
        }
    }
}

} // namespace
} // namespace keldrin
