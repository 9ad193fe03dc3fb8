#include "engine/layered_sum.h"

#include "engine/hankel_curve.h"
#include "engine/loop_plan.h"
#include "engine/time_plan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

// Wavenumbers above this many sqrt(mu0/(rho t)) have died away at time t: exp(-16).
// The end is moved in steps: each changes the data by up to 1e-6, of which derivatives know
// nothing.
constexpr double HighestDiffusion = 4.0;
constexpr double WavenumberSteps = 4.0;
// R counts as -1 below this many sqrt(|s| mu0/rho) where it is also below the next one over the
// largest distance of the receiver from the loop.
constexpr double LowestDiffusion = 0.02;
constexpr double LowestArgument = 0.03;

const double SmallestLog = std::log(1.0e-3);
const double LargestLog = std::log(1.0e6);

/// Results and room of one call, as parts of the workspace.
struct Parts {
    double *muOverRho;
    double *scratch;
    double *slopeRe; // components times layers
    double *slopeIm;
};

Parts divide(ResponseWorkspace &workspace, std::size_t layers) {
    const std::size_t slopes = KernelComponents * layers;
    workspace.store.resize(layers + kernelScratchSize(layers) + 2 * slopes);
    double *begin = workspace.store.data();
    Parts parts{};
    parts.muOverRho = begin;
    parts.slopeRe = begin + layers;
    parts.slopeIm = parts.slopeRe + slopes;
    parts.scratch = parts.slopeIm + slopes;
    return parts;
}

// Index of a wavenumber, as a real number.
double placeOf(double wavenumber) {
    return std::log(wavenumber) / LogSpacing - LowestWavenumber;
}

std::size_t heldIndex(double place, std::size_t most) {
    return static_cast<std::size_t>(std::clamp(place, 0.0, static_cast<double>(most)));
}

/// What a call works on.
struct Call {
    const LayerKernel &kernel;
    const TimePlan &time;
    const LoopPlan &loop;
    Parts parts;
    LayerKernelTask task;
    double largest = 0.0; ///< mu0 over resistivity
    double smallest = 0.0;
    bool slopes = false;
    std::span<double> data;
    std::span<double> jacobian;
};

// Sets the wavenumbers of a node: they end at `end` and begin where R is -1.
std::size_t setWavenumbers(Call &call, std::size_t end, double sizeOfS) {
    const double lowest = placeOf(std::min(LowestDiffusion * std::sqrt(sizeOfS * call.smallest),
                                           LowestArgument / call.loop.farthest));
    const std::size_t wanted = std::max<std::size_t>(end - heldIndex(lowest, end), 1);
    call.task.blocks = (wanted + KernelLanes - 1) / KernelLanes;
    const std::size_t length = call.task.blocks * KernelLanes;
    const std::size_t begin = end > length ? end - length : 0;
    call.task.wavenumber = call.loop.wavenumber.data() + begin;
    for (std::size_t c = 0; c < call.loop.components; ++c) {
        call.task.weight[c] = call.loop.weight[c].data() + begin;
    }
    return begin;
}

// One node's part of all data of a component.
void addNode(const Call &call, const TimeRange &range, std::size_t node, std::size_t component,
             double re, double im) {
    const std::size_t windows = call.time.windows;
    RowsTask rows;
    rows.first = range.firstWindow;
    rows.last = range.endWindow;
    rows.mRe = call.time.mRe.data() + node * windows;
    rows.mIm = call.time.mIm.data() + node * windows;
    rows.length = 1;
    rows.re = &re;
    rows.im = &im;
    rows.target = call.data.data() + component * windows;
    call.kernel.addRows(rows);
    if (call.slopes) {
        rows.length = call.task.layers;
        rows.re = call.task.slopeRe[component];
        rows.im = call.task.slopeIm[component];
        rows.target = call.jacobian.data() + component * windows * call.task.layers;
        call.kernel.addRows(rows);
    }
}

void addRange(Call &call, const TimeRange &range) {
    const LoopPlan &loop = call.loop;
    const double highest = placeOf(HighestDiffusion * std::sqrt(call.largest / range.begin));
    const std::size_t end =
        heldIndex(WavenumberSteps * std::floor(highest / WavenumberSteps + 1.0), loop.used);
    bool early[KernelComponents] = {};
    for (std::size_t node = range.firstNode; node < range.endNode; ++node) {
        call.task.sRe = call.time.sRe[node];
        call.task.sIm = call.time.sIm[node];
        const std::size_t begin =
            setWavenumbers(call, end, std::hypot(call.task.sRe, call.task.sIm));
        call.kernel.sums(call.task);
        for (std::size_t c = 0; c < loop.components; ++c) {
            const double im = call.task.sumIm[c];
            const double re = call.task.sumRe[c] - loop.below[c][begin];
            const double all = loop.below[c].back();
            // At early times the ground holds the primary field: F is close to -C, and a constant
            // has no response after switch-off.
            if (node == range.firstNode) {
                early[c] = std::hypot(re + all, im) < std::hypot(re, im);
            }
            addNode(call, range, node, c, early[c] ? re + all : re, im);
        }
    }
}

} // namespace

void layeredResponse(const LayerKernel &kernel, const ResponsePlan &plan,
                     std::span<const double> lnResistivity, std::span<const double> thickness,
                     ResponseWorkspace &workspace, std::span<double> data,
                     std::span<double> jacobian) {
    const std::size_t layers = lnResistivity.size();
    std::fill(data.begin(), data.end(), 0.0);
    std::fill(jacobian.begin(), jacobian.end(), 0.0);
    if (!plan.time || !plan.loop || layers == 0 || thickness.size() + 1 < layers) {
        return;
    }
    Call call{kernel, *plan.time, *plan.loop, divide(workspace, layers),
              {},     0.0,        0.0,        !jacobian.empty(),
              data,   jacobian};
    for (std::size_t k = 0; k < layers; ++k) {
        call.parts.muOverRho[k] =
            VacuumPermeability * std::exp(-std::clamp(lnResistivity[k], SmallestLog, LargestLog));
    }
    const auto [low, high] =
        std::minmax_element(call.parts.muOverRho, call.parts.muOverRho + layers);
    call.smallest = *low;
    call.largest = *high;
    LayerKernelTask &task = call.task;
    task.layers = layers;
    task.muOverRho = call.parts.muOverRho;
    task.thickness = thickness.data();
    task.components = plan.loop->components;
    task.scratch = call.parts.scratch;
    for (std::size_t c = 0; call.slopes && c < task.components; ++c) {
        task.slopeRe[c] = call.parts.slopeRe + c * layers;
        task.slopeIm[c] = call.parts.slopeIm + c * layers;
    }
    for (const TimeRange &range : plan.time->ranges) {
        addRange(call, range);
    }
}

} // namespace keldrin
