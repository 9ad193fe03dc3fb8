#include "engine/layer_kernel.h"
#include "engine/layered_sum.h"
#include "engine/loop_plan.h"
#include "engine/response.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <vector>

namespace keldrin {
namespace {

constexpr int ForwardWindows = 30;

/// 30 windows from 0.01 to 10 msec after a ramp of 60 usec; with a frequency the default pulse and
/// its repetition.
WindowSet windowsOf(double frequency) {
    WindowSet set;
    constexpr double ramp = 6.0e-5;
    const double quarter = frequency > 0.0 ? 0.25 / frequency : 0.0;
    set.frequency = frequency;
    set.times = {0.0, 2.0 * ramp, quarter, quarter + ramp};
    set.currents = {0.0, 1.0, 1.0, 0.0};
    if (frequency == 0.0) {
        set.times = {0.0, ramp};
        set.currents = {1.0, 0.0};
    }
    set.origin = set.times.back();
    const double ratio = std::pow(1000.0, 1.0 / (ForwardWindows - 1));
    for (int i = 0; i < ForwardWindows; ++i) {
        const double centre = 1.0e-5 * std::pow(ratio, i);
        set.lower.push_back(centre / std::sqrt(ratio));
        set.upper.push_back(centre * std::sqrt(ratio));
    }
    return set;
}

constexpr LoopGeometry InLoopGeometry = {100, 100, 0, 0, 1, false, false};
constexpr LoopGeometry OffsetGeometry = {100, 100, 150, 20, 1, false, true};

/// One response of 3, 30 or 48 layers from 1 to 300 m, 10 to 90 ohm-m.
/// Arguments: layers, frequency in Hz, derivatives or not.
void response(benchmark::State &state, const LayerKernel &kernel, const LoopGeometry &loop) {
    const auto layers = static_cast<std::size_t>(state.range(0));
    ResponsePlan plan;
    if (makeResponsePlan(loop, windowsOf(static_cast<double>(state.range(1))), plan) !=
        PlanFault::None) {
        state.SkipWithError("no plan");
        return;
    }
    std::vector<double> m(layers);
    std::vector<double> thickness(layers - 1);
    const double factor = std::pow(300.0, 1.0 / static_cast<double>(layers - 1));
    for (std::size_t k = 0; k < layers; ++k) {
        m[k] = std::log(30.0) + 1.1 * std::sin(0.7 * static_cast<double>(k));
    }
    for (std::size_t k = 0; k + 1 < layers; ++k) {
        thickness[k] = std::pow(factor, static_cast<double>(k)) * (factor - 1.0);
    }
    std::vector<double> data(plan.windows() * plan.components());
    std::vector<double> slopes(state.range(2) != 0 ? data.size() * layers : 0);
    ResponseWorkspace workspace;
    for (auto _ : state) {
        layeredResponse(kernel, plan, m, thickness, workspace, data, slopes);
        benchmark::DoNotOptimize(data.data());
    }
    state.SetLabel(kernel.name);
}

void arguments(benchmark::internal::Benchmark *benchmark) {
    benchmark->ArgNames({"layers", "Hz", "derivatives"})
        ->ArgsProduct({{3, 30, 48}, {0, 16}, {0, 1}})
        ->Unit(benchmark::kMillisecond);
}

void inLoop(benchmark::State &state) {
    response(state, fastestKernel(), InLoopGeometry);
}
void offsetThreeComponents(benchmark::State &state) {
    response(state, fastestKernel(), OffsetGeometry);
}
void inLoopPlain(benchmark::State &state) {
    response(state, PlainKernel, InLoopGeometry);
}

/// What a survey costs once: the part of windows and waveform, and that of a loop.
void plan(benchmark::State &state) {
    const WindowSet set = windowsOf(16);
    const LoopGeometry &loop = state.range(0) == 0 ? InLoopGeometry : OffsetGeometry;
    for (auto _ : state) {
        if (state.range(1) != 0) {
            const LoopPlan made = makeLoopPlan(loop);
            benchmark::DoNotOptimize(&made);
        } else {
            ResponsePlan made;
            makeResponsePlan(loop, set, made);
            benchmark::DoNotOptimize(made.loop.get());
        }
    }
}

BENCHMARK(inLoop)->Name("Forward/In-Loop")->Apply(arguments);
BENCHMARK(offsetThreeComponents)->Name("Forward/offset X Y Z")->Apply(arguments);
BENCHMARK(inLoopPlain)
    ->Name("Forward/In-Loop, plain code")
    ->ArgNames({"layers", "Hz", "derivatives"})
    ->ArgsProduct({{30}, {0, 16}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(plan)
    ->Name("Forward/plan")
    ->ArgNames({"XYZ", "loop alone"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace keldrin
