#include "bench_line.h"
#include "line/section_page.h"
#include "page/drawing.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/page_list.h"
#include "page/surfaces/record_surface.h"
#include "page/surfaces/svg_surface.h"
#include "page/surfaces/wmf_surface.h"
#include "sounding/plot_limits.h"
#include "sounding/sounding_plot.h"

#include <benchmark/benchmark.h>

#include <string>

namespace keldrin {
namespace {

using bench::lineOf;

constexpr int SoundingsOfLine = 2000;

void autoLimits(benchmark::State &state) {
    const SurveyModel survey = lineOf(SoundingsOfLine, 30, 20);
    PlotLimits limits;
    std::string date;
    std::string time;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Plot_AutoLimits(survey, limits, date, time));
    }
    state.SetItemsProcessed(state.iterations() * SoundingsOfLine);
}
BENCHMARK(autoLimits);

/// One page, from the cleared surface to its end.
template <class Page>
void drawSounding(benchmark::State &state) {
    const SurveyModel survey =
        lineOf(1, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
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
    const SurveyModel survey =
        lineOf(2048, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
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
