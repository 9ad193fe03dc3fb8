#include "conditioning/further_skip.h"
#include "page/drawing.h"
#include "page/surfaces/page_list.h"
#include "review/mark_travel.h"
#include "sounding/neighbour_curves.h"
#include "sounding/plot_limits.h"
#include "sounding/sounding_plot.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>

namespace keldrin {
namespace {

// What a review of a full line does between a key and its page: each step is to stay below 16 ms.

constexpr int ReviewSoundings = 2048;
constexpr int ReviewWindows = 30;
constexpr int Layers = 26;

/// A line of noisy decays, a tenth of whose windows is marked.
SurveyModel fullLine() {
    SurveyModel survey;
    survey.hTrn.resize(ReviewSoundings);
    survey.SoundingCount = ReviewSoundings;
    std::mt19937 random(7);
    std::normal_distribution<float> noise(0.0F, 0.05F);
    for (SoundingRecord &sounding : survey.hTrn) {
        sounding.NumTW = ReviewWindows;
        sounding.NumLayer = Layers;
        float time = 0.03F;
        for (std::size_t i = 0; i < ReviewWindows; ++i, time *= 1.23F) {
            sounding.TWcenter[i] = time;
            sounding.TEMobs[i] = 600.0F * std::pow(time, -2.5F) * (1.0F + noise(random));
            sounding.TEMcalc[i] = 600.0F * std::pow(time, -2.5F);
            sounding.TEMerr[i] = i % 10 == 9 ? SkipOffset + 30.0F : 3.0F;
            sounding.AResObs[i] = 40.0F + time;
            sounding.AResCalc[i] = 41.0F + time;
        }
        for (std::size_t i = 0; i < Layers; ++i) {
            sounding.ThkInv[i] = 10.0F;
            sounding.ZMid[i] = -10.0F * (static_cast<float>(i) + 0.5F);
            sounding.ResInv[i] = 50.0F + 30.0F * std::sin(0.4F * static_cast<float>(i));
            sounding.Rsns[i] = 10.0F;
        }
    }
    return survey;
}

/// The next sounding of the line, drawn as the window keeps it.
/// range 0: style, 1: neighbours on each side
void pageOfReview(benchmark::State &state) {
    const SurveyModel survey = fullLine();
    PlotLimits limits;
    limits.style = static_cast<PageStyle>(state.range(0));
    limits.neighbours = static_cast<int>(state.range(1));
    std::string date;
    std::string time;
    Plot_AutoLimits(survey, limits, date, time);
    PageList page;
    selectSurface(&page);
    int station = 0;
    for (auto _ : state) {
        page.begin(PageWidthCm, PageHeightCm);
        station = station % ReviewSoundings + 1;
        benchmark::DoNotOptimize(Plot_Sounding(survey, limits, station, "line1.std", date, time));
    }
    selectSurface(nullptr);
}
BENCHMARK(pageOfReview)->ArgsProduct({{0, 1}, {0, 1, 5}})->Unit(benchmark::kMillisecond);

void curvesOfNeighbours(benchmark::State &state) {
    const SurveyModel survey = fullLine();
    PlotLimits limits;
    limits.neighbours = static_cast<int>(state.range(0));
    int station = 0;
    for (auto _ : state) {
        station = station % ReviewSoundings + 1;
        benchmark::DoNotOptimize(neighbourCurves(survey, limits, station));
    }
}
BENCHMARK(curvesOfNeighbours)->Arg(1)->Arg(5)->Unit(benchmark::kMillisecond);

/// A number of Auto Skip has changed: all filters over the line, and the counts.
/// range 0: with the further filters
void liveFilters(benchmark::State &state) {
    const SurveyModel survey = fullLine();
    FurtherSkipSettings further;
    further.noiseFloor = further.curvature = further.neighbours = further.andLater =
        state.range(0) != 0;
    float cutoff = 10.0F;
    for (auto _ : state) {
        cutoff = cutoff < 90.0F ? cutoff + 1.0F : 10.0F;
        const SkipPlan plan = planAutoSkip(survey, {}, cutoff, further);
        benchmark::DoNotOptimize(marksBesidePlan(survey, plan));
    }
}
BENCHMARK(liveFilters)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Continue: the marks of the line as one step of undo.
void takeFilters(benchmark::State &state) {
    SurveyModel survey = fullLine();
    const SkipPlan plan = planAutoSkip(survey, {}, 10.0F, {});
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            changesOf(survey, 1, [&] { applySkipPlan(survey, plan, false); }).changes.size());
    }
}
BENCHMARK(takeFilters)->Unit(benchmark::kMillisecond);

/// What the status bar says of unsaved marks, after filters have taken half of the line.
void countUnsaved(benchmark::State &state) {
    SurveyModel survey = fullLine();
    AutoSkipSettings settings;
    settings.lastWindow = ReviewWindows / 2;
    const SkipPlan plan = planAutoSkip(survey, settings, 100.0F, {});
    MarkHistory history;
    recordMarks(history, changesOf(survey, 1, [&] { applySkipPlan(survey, plan, false); }));
    for (auto _ : state) {
        benchmark::DoNotOptimize(changedMarks(history));
    }
}
BENCHMARK(countUnsaved)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace keldrin
