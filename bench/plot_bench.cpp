#include "line/section_page.h"
#include "page/drawing.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/page_list.h"
#include "page/surfaces/record_surface.h"
#include "page/surfaces/svg_surface.h"
#include "page/surfaces/wmf_surface.h"
#include "review/plot_limits.h"
#include "review/sounding_plot.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

namespace keldrin {
namespace {

/// An In-Loop line of soundings with `windows` windows and `layers` layers.
SurveyModel surveyOf(int soundings, int windows, int layers) {
    SurveyModel survey;
    survey.hTrn.resize(static_cast<std::size_t>(soundings));
    survey.SoundingCount = soundings;
    for (SoundingRecord &sounding : survey.hTrn) {
        sounding.NumTW = windows;
        sounding.NumLayer = layers;
        for (int i = 0; i < windows; ++i) {
            const auto k = static_cast<std::size_t>(i);
            const float time =
                0.03F * std::pow(400.0F, static_cast<float>(i) / static_cast<float>(windows));
            sounding.TWcenter[k] = time;
            sounding.TEMobs[k] = 600.0F * std::pow(time, -2.5F);
            sounding.TEMcalc[k] = 1.02F * sounding.TEMobs[k];
            sounding.TEMerr[k] = i % 10 == 9 ? SkipOffset + 30.0F : 3.0F;
            sounding.AResObs[k] = 40.0F + time;
            sounding.AResCalc[k] = 41.0F + time;
        }
        for (int i = 0; i < layers; ++i) {
            const auto k = static_cast<std::size_t>(i);
            sounding.ThkInv[k] = 10.0F;
            sounding.ZMid[k] = -10.0F * (static_cast<float>(i) + 0.5F);
            sounding.ResInv[k] = 50.0F + 30.0F * std::sin(0.4F * static_cast<float>(i));
        }
    }
    return survey;
}

constexpr int SoundingsOfLine = 2000;

void autoLimits(benchmark::State &state) {
    const SurveyModel survey = surveyOf(SoundingsOfLine, 30, 20);
    PlotLimits limits;
    std::string date;
    std::string time;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Plot_AutoLimits(survey, limits, date, time));
    }
    state.counters["soundings"] = benchmark::Counter(
        static_cast<double>(state.iterations() * SoundingsOfLine), benchmark::Counter::kIsRate);
}
BENCHMARK(autoLimits);

/// One page, from the cleared surface to its end.
template <class Page>
void drawSounding(benchmark::State &state) {
    const SurveyModel survey =
        surveyOf(1, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    PlotLimits limits;
    std::string date;
    std::string time;
    Plot_AutoLimits(survey, limits, date, time);
    Page page;
    selectSurface(&page);
    for (auto _ : state) {
        page.begin(PageWidthCm, PageHeightCm);
        benchmark::DoNotOptimize(Plot_Sounding(survey, limits, 1, "line1.std", date, time));
        benchmark::DoNotOptimize(page.end());
    }
    selectSurface(nullptr);
}
BENCHMARK_TEMPLATE(drawSounding, RecordSurface)->Args({30, 20})->Args({MaxWindows, MaxLayers});
BENCHMARK_TEMPLATE(drawSounding, SvgSurface)->Args({30, 20})->Args({MaxWindows, MaxLayers});
BENCHMARK_TEMPLATE(drawSounding, HpglSurface)->Args({30, 20})->Args({MaxWindows, MaxLayers});
BENCHMARK_TEMPLATE(drawSounding, WmfSurface)->Args({30, 20})->Args({MaxWindows, MaxLayers});

/// A section of a full line of soundings with models, laid out and drawn.
template <class Page>
void drawFullSection(benchmark::State &state) {
    SurveyModel survey =
        surveyOf(2048, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    double station = 0.0;
    for (SoundingRecord &sounding : survey.soundings()) {
        sounding.Station = station += 25.0;
        sounding.Rsns.fill(10.0F);
    }
    Page page;
    selectSurface(&page);
    for (auto _ : state) {
        page.begin(PageWidthCm, PageHeightCm);
        benchmark::DoNotOptimize(drawSection(sectionPage(survey, {}, "line1.std")));
        benchmark::DoNotOptimize(page.end());
    }
    selectSurface(nullptr);
}
BENCHMARK_TEMPLATE(drawFullSection, RecordSurface)->Args({30, 26})->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drawFullSection, PageList)->Args({30, 26})->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drawFullSection, SvgSurface)->Args({30, 26})->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drawFullSection, WmfSurface)->Args({30, 26})->Unit(benchmark::kMillisecond);

} // namespace
} // namespace keldrin
