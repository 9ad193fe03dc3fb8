#include "messages/message_log.h"
#include "model/survey_model.h"
#include "physics/apparent_resistivity.h"
#include "physics/coincident.h"
#include "physics/loop_center.h"
#include "physics/loop_field.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <string>

namespace keldrin {
namespace {

constexpr int PhysicsWindows = 30;
constexpr float HostConductivity = 1.0F / 30.0F;

/// A survey with one sounding over a half-space of 30 ohm-m, its curve slightly wavy.
struct Example {
    const char *name;
    int array;
    float side;
    float rxX;
    float rxY;
    ComponentWords words;
};

constexpr std::array Examples = {
    Example{"In-Loop", InLoop, 100.0F, 0.0F, 0.0F, {0.0F, 0.0F, 1.0F}},
    Example{"Coincident-Loop", CoincidentLoop, 50.0F, 0.0F, 0.0F, {0.0F, 0.0F, 1.0F}},
    Example{"Moving-Loop outside X Z", MovingLoop, 100.0F, 150.0F, 0.0F, {1.0F, 0.0F, 1.0F}},
    Example{"Fixed-Loop outside X Y Z", FixedLoop, 300.0F, 400.0F, 120.0F, {1.0F, 1.0F, 1.0F}},
    Example{"Fixed-Loop inside X Y Z", FixedLoop, 300.0F, 60.0F, 40.0F, {1.0F, 1.0F, 1.0F}},
};

float halfSpaceValue(const Example &example, float t) {
    const float side = example.side;
    const float area = side * side;
    switch (example.array) {
    case InLoop:
        return Loop_CenterZ(side, side, t, HostConductivity).R;
    case CoincidentLoop:
        return Loop_CoincidentZ(std::sqrt(area / 3.1415927F), t, HostConductivity).R / area;
    default:
        return Loop_Field(example.rxX, example.rxY, side, side, t, example.words, HostConductivity)
            .R;
    }
}

SoundingRecord soundingOf(const Example &example, int number) {
    SoundingRecord record;
    record.NumTW = PhysicsWindows;
    for (std::size_t k = 0; k < PhysicsWindows; ++k) {
        const float centre = 0.03F * std::pow(10.0F, 0.09F * static_cast<float>(k)); // msec
        const float wiggle =
            1.0F + 0.05F * std::sin(static_cast<float>(k) + 0.1F * static_cast<float>(number));
        record.TWcenter[k] = centre;
        record.TWwidth[k] = 0.2F * centre;
        record.TEMobs[k] = halfSpaceValue(example, centre * 1.0e-3F) * 1.0e9F * wiggle;
        record.TEMwgt[k] = example.words;
    }
    return record;
}

void sounding(benchmark::State &state) {
    const Example &example = Examples[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(example.name);
    const SoundingRecord record = soundingOf(example, 0);
    AResInput input;
    input.iTemArray = example.array;
    input.xLength = input.yLength = example.side;
    input.ramp = 50.0F;
    input.freq = 8.0F;
    input.rxX = example.rxX;
    input.rxY = example.rxY;
    input.ntw = PhysicsWindows;
    input.twCenter = record.TWcenter;
    input.twWidth = record.TWwidth;
    input.weights = record.TEMwgt;
    WindowReals ares{};
    while (state.KeepRunning()) {
        const AResOutcome outcome = ARes_dBdt(input, record.TEMobs, ares);
        benchmark::DoNotOptimize(outcome);
        benchmark::DoNotOptimize(ares);
    }
}
BENCHMARK(sounding)->DenseRange(0, Examples.size() - 1)->Unit(benchmark::kMicrosecond);

void line(benchmark::State &state) {
    constexpr int soundings = 2048;
    messageLog().quiet = true;
    SurveyModel model;
    setSurveyType(model.control, InLoop);
    model.control.TxFreq = 8.0F;
    allocateSoundings(model, soundings);
    for (int i = 0; i < soundings; ++i) {
        model.hTrn[static_cast<std::size_t>(i)] = soundingOf(Examples[0], i);
    }
    model.SoundingCount = soundings;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(ARes_Survey(model));
    }
    state.SetItemsProcessed(state.iterations() * soundings);
}
BENCHMARK(line)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace keldrin
