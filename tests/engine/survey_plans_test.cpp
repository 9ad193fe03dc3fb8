#include "engine/response_cases.h"
#include "engine/survey_plans.h"
#include "engine/time_plan.h"
#include "physics/apparent_resistivity.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cmath>

namespace keldrin {
namespace {

// A line of three soundings with windows from 0.05 to 2 msec, loop 200 x 100 m.
SurveyModel lineOf(int array) {
    SurveyModel model;
    allocateSoundings(model, 3);
    model.SoundingCount = 3;
    ControlValues &control = model.control;
    setSurveyType(control, array);
    control.XTxLength = 200.0F;
    control.YTxLength = 100.0F;
    control.TxAzimuth = 60.0F;
    control.LineAzimuth = 90.0F;
    control.TxFreq = 2.0F;
    control.TxRamp = 20.0F;
    control.NTxWF = 4;
    control.TxWFT0 = 125.02F;
    control.TxWFT = {0.0F, 0.04F, 125.0F, 125.02F};
    control.TxWFI = {0.0F, 1.0F, 1.0F, 0.0F};
    for (int i = 0; i < 3; ++i) {
        SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        record.RxStn = record.Station = 50.0 * i;
        record.TxStn = record.RxStn - 170.0;
        record.East = 30.0 + 90.0 * i;
        record.North = 20.0 - 45.0 * i;
        record.NumTW = 8;
        for (std::size_t k = 0; k < 8; ++k) {
            record.TWcenter[k] = 0.05F * std::pow(1.7F, static_cast<float>(k));
            record.TWwidth[k] = 0.2F * record.TWcenter[k];
            record.TEMwgt[k] = {1.0F, 1.0F, 1.0F};
        }
    }
    return model;
}

std::vector<double> magnitudes(const SoundingPlan &plan, double rho) {
    const auto data = dataOf(plan.plan, {rho});
    const std::size_t n = plan.plan.windows();
    std::vector<double> result;
    for (std::size_t w = 0; w < n; ++w) {
        double sum = 0.0;
        for (std::size_t i = w; i < data.size(); i += n) {
            sum += data[i] * data[i];
        }
        result.push_back(std::sqrt(sum));
    }
    return result;
}

// The half-space that gives a response is found by the apparent resistivity of that response: the
// same place of the receiver, windows, units and sign. Its formulas are good to some percent.
TEST(SurveyPlans, ApparentResistivityFindsTheHalfSpace) {
    for (const int array : {FixedLoop, MovingLoop, InLoop, CoincidentLoop}) {
        for (const int unit : {Metres, Feet}) {
            SurveyModel model = lineOf(array);
            setLengthUnits(model.control, unit);
            if (array == CoincidentLoop) {
                model.control.XTxLength = 100.0F; // taken as the circle of the same area
            }
            const std::vector<SoundingPlan> plans = planSurvey(model);
            ASSERT_EQ(plans.size(), 3U);
            for (std::size_t i = 0; i < plans.size(); ++i) {
                ASSERT_EQ(plans[i].fault, PlanFault::None);
                const auto values = magnitudes(plans[i], 30.0);
                for (std::size_t k = 0; k < values.size(); ++k) {
                    model.hTrn[i].TEMobs[k] = static_cast<float>(values[k]);
                }
            }
            ARes_Survey(model);
            for (const SoundingRecord &record : model.hTrn) {
                for (std::size_t k = 0; k < 8; ++k) {
                    EXPECT_NEAR(std::log(record.AResObs[k] / 30.0F), 0.0, 0.08)
                        << "array " << array << " unit " << unit << " station " << record.Station
                        << " window " << k;
                }
            }
        }
    }
}

TEST(SurveyPlans, TurnsStationScaleAndWindowsAreThoseOfTheProject) {
    SurveyModel model = lineOf(MovingLoop);
    const SoundingPlan plan = planSurvey(model)[1];
    const auto once = magnitudes(plan, 30.0);
    const WindowSet &windows = plan.plan.time->set;
    for (std::size_t k = 0; k < once.size(); ++k) { // in seconds
        const auto centre = static_cast<double>(model.hTrn[1].TWcenter[k]);
        const auto width = static_cast<double>(model.hTrn[1].TWwidth[k]);
        EXPECT_NEAR(std::sqrt(windows.lower[k] * windows.upper[k]), 1.0e-3 * centre, 1.0e-12);
        EXPECT_NEAR(windows.upper[k] - windows.lower[k], 1.0e-3 * width, 1.0e-12);
    }
    model.control.NTxTurn = 3;
    model.control.StnScale = 2.0F;
    model.hTrn[1].TxStn = model.hTrn[1].RxStn - 85.0;
    const auto threeTurns = magnitudes(planSurvey(model)[1], 30.0);
    for (std::size_t k = 0; k < once.size(); ++k) {
        EXPECT_NEAR(threeTurns[k], 3.0 * once[k], 1.0e-9 * once[k]) << k;
    }
}

// X, Y and Z along the line at each window.
std::vector<double> alongLine(const SoundingPlan &plan) {
    auto data = dataOf(plan.plan, {30.0, 3.0}, {60.0});
    const std::size_t n = plan.plan.windows();
    for (std::size_t w = 0; w < n; ++w) {
        turnToLine(plan, data[w], data[n + w]);
    }
    return data;
}

TEST(SurveyPlans, ALoopTurnedByAQuarterIsTheSameLoop) {
    SurveyModel model = lineOf(FixedLoop);
    const auto before = alongLine(planSurvey(model)[1]);
    model.control.TxAzimuth += 90.0F;
    std::swap(model.control.XTxLength, model.control.YTxLength);
    const auto after = alongLine(planSurvey(model)[1]);
    ASSERT_EQ(before.size(), 24U);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_NEAR(after[i], before[i], 1.0e-5 * std::fabs(before[i]) + 1.0e-6) << i;
    }
}

// Outside of a small loop the horizontal field points away from it, wherever the line runs.
TEST(SurveyPlans, ComponentsTurnWithTheLine) {
    SurveyModel model = lineOf(FixedLoop);
    model.control.XTxLength = model.control.YTxLength = 1.0F;
    SoundingRecord &record = model.hTrn[0];
    record.East = 300.0;
    record.North = 400.0;
    for (const double azimuth : {0.0, 36.87, 90.0, 200.0}) {
        model.control.LineAzimuth = static_cast<float>(azimuth);
        const auto data = alongLine(planSurvey(model)[0]);
        // The receiver lies at the bearing 36.87 degrees; y is to the left of the line.
        const double angle = (azimuth - 36.87) * 3.14159265358979 / 180.0;
        const double size = std::hypot(data[7], data[15]);
        EXPECT_NEAR(data[7] / size, std::cos(angle), 1.0e-3) << azimuth;
        EXPECT_NEAR(data[15] / size, std::sin(angle), 1.0e-3) << azimuth;
    }
}

TEST(SurveyPlans, ShareEqualPartsAndNameFaults) {
    SurveyModel model = lineOf(MovingLoop);
    model.hTrn[1].TWcenter[3] = 0.2F;
    model.hTrn[2].TxStn -= 20.0;
    auto plans = planSurvey(model);
    EXPECT_NE(plans[0].plan.time, plans[1].plan.time);
    EXPECT_EQ(plans[0].plan.time, plans[2].plan.time);
    EXPECT_EQ(plans[0].plan.loop, plans[1].plan.loop);
    EXPECT_NE(plans[0].plan.loop, plans[2].plan.loop);
    EXPECT_EQ(plans[0].plan.components(), 3U);

    for (auto &words : model.hTrn[0].TEMwgt) {
        words = {0.0F, 0.0F, 1.0F};
    }
    model.hTrn[1].NumTW = 0;
    model.hTrn[2].TxStn = MissingValue;
    plans = planSurvey(model);
    EXPECT_EQ(plans[0].plan.components(), 1U);
    EXPECT_EQ(plans[1].fault, PlanFault::Windows);
    EXPECT_EQ(plans[2].fault, PlanFault::Receiver);
}

TEST(SurveyPlans, AreTheSameOnAnyNumberOfThreadsAndStopWithTheRun) {
    SurveyModel model = lineOf(MovingLoop);
    for (std::size_t i = 0; i < 3; ++i) { // no two share a part
        model.hTrn[i].TWcenter[3] += 0.01F * static_cast<float>(i);
        model.hTrn[i].TxStn -= 5.0 * static_cast<double>(i);
    }
    std::atomic<bool> stop = false;
    int planned = 0;
    EngineRun run{1, &stop};
    run.progress = [&](int done, int total) {
        EXPECT_EQ(total, 3);
        planned = done;
    };
    const std::vector<SoundingPlan> serial = planSurvey(model, run);
    EXPECT_EQ(planned, 3);
    run.threads = 4;
    const std::vector<SoundingPlan> parallel = planSurvey(model, run);
    EXPECT_NE(parallel[1].plan.time, parallel[0].plan.time);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(dataOf(parallel[i].plan, {30.0}), dataOf(serial[i].plan, {30.0})) << i;
    }
    run.threads = 1;
    run.progress = [&](int done, int) {
        stop = done == 2;
    };
    EXPECT_EQ(planSurvey(model, run)[2].plan.windows(), 0U);
}

} // namespace
} // namespace keldrin
