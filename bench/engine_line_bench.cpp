#include "bench_survey.h"
#include "engine/invert_project.h"
#include "engine/survey_plans.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <thread>

#ifdef __linux__
#include <sys/resource.h>
#endif

namespace {

using namespace keldrin;

constexpr int LineWindows = 30;

/// An In-Loop line over three layers that change along it, with 2.5 percent noise and a floor.
void fillSurvey(SurveyModel &model, int soundings) {
    STD_Init_Namelist(model);
    allocateSoundings(model, soundings);
    setSurveyType(model.control, InLoop);
    setTEMUnits(model.control, NanovoltPerAmpereSquareMetre);
    model.control.TxFreq = 16.0F;
    STD_Check_TxWaveform(model.control);
    model.SoundingCount = soundings;
    for (int i = 0; i < soundings; ++i) {
        SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        record.Station = record.RxStn = record.TxStn = 50.0 * i;
        record.East = 50.0 * i;
        record.North = 0.0;
        record.NumTW = LineWindows;
        double time = 0.02;
        for (std::size_t k = 0; k < LineWindows; ++k, time *= 1.22) {
            record.TWcenter[k] = static_cast<float>(time);
            record.TWwidth[k] = static_cast<float>(0.2 * time);
            record.TEMwgt[k] = {0.0F, 0.0F, 1.0F};
        }
    }
}

void fillData(SurveyModel &model) {
    const std::vector<SoundingPlan> plans = planSurvey(model);
    ResponseWorkspace workspace;
    std::mt19937 random(3);
    std::normal_distribution<double> noise;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        SoundingRecord &record = model.hTrn[i];
        const double phase = 0.05 * static_cast<double>(i);
        const std::array<double, 3> lnResistivity = {std::log(15.0), std::log(120.0),
                                                     std::log(8.0)};
        const std::array<double, 2> thickness = {12.0 + 6.0 * std::sin(phase),
                                                 60.0 + 20.0 * std::cos(0.7 * phase)};
        std::array<double, LineWindows> values{};
        layeredResponse(plans[i].plan, lnResistivity, thickness, workspace, values);
        for (std::size_t k = 0; k < LineWindows; ++k) {
            const double floor = 0.02 / std::sqrt(static_cast<double>(record.TWcenter[k]));
            const double deviation = std::hypot(0.025 * values[k], floor);
            const double value = values[k] + deviation * noise(random);
            record.TEMobs[k] = static_cast<float>(value);
            record.TEMerr[k] = static_cast<float>(
                std::clamp(100.0 * deviation / std::hypot(value, 0.01), 0.1, 999.9));
        }
    }
}

void invertLineFromFile(benchmark::State &state) {
    messageLog().quiet = true;
    const auto soundings = static_cast<int>(state.range(0));
    const std::string path = bench::scratchPath("line" + std::to_string(soundings) + ".std");
    {
        SurveyModel model;
        fillSurvey(model, soundings);
        fillData(model);
        static_cast<void>(STD_File_Write(model, path));
    }
    EngineRun run{static_cast<int>(state.range(1))};
    std::string last;
    run.say = [&](std::string_view line) {
        last = line.find("median misfit") == std::string_view::npos ? last : line;
    };
    for (auto _ : state) {
        const InvertResult result =
            invertProject(path, {.forward = false, .fresh = true}, run, [](std::string_view) {});
        if (result != InvertResult::Done) {
            state.SkipWithError("not inverted");
        }
    }
#ifdef __linux__
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    last += "; " + std::to_string(usage.ru_maxrss / 1024) + " MB";
#endif
    state.SetLabel(last);
}

} // namespace

// Soundings of 30 windows and threads. Bars on two cores: 200 soundings within 2 s, 2048 within 20
// s and 200 MB.
BENCHMARK(invertLineFromFile)
    ->Args({200, 1})
    ->Args({200, 2})
    ->Args({2048, 2})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
