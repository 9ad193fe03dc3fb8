#include "engine/response.h"

#include "physics/loop_center.h"

#include <cmath>

namespace keldrin {

struct TimePlan {
    WindowSet windows;
};
struct LoopPlan {
    LoopGeometry loop;
};

std::size_t ResponsePlan::windows() const {
    return time ? time->windows.lower.size() : 0;
}

std::size_t ResponsePlan::components() const {
    return loop && loop->loop.horizontal ? 3 : 1;
}

std::string planFaultText(PlanFault fault) {
    switch (fault) {
    case PlanFault::None:
        return "no fault";
    case PlanFault::Side:
        return "loop side outside of 0.001 to 1e6 m";
    case PlanFault::Receiver:
        return "receiver on the wire or farther away than 1e6 m";
    case PlanFault::Waveform:
        return "waveform of which the times do not rise to the time origin";
    case PlanFault::Frequency:
        return "frequency below 0";
    case PlanFault::Windows:
        return "no windows";
    case PlanFault::Window:
        return "window outside of 1e-7 to 1000 s";
    }
    return "unknown fault";
}

PlanFault makeResponsePlan(const LoopGeometry &loop, const WindowSet &windows, ResponsePlan &plan,
                           const ResponsePlan * /*sharing*/) {
    if (windows.lower.empty()) {
        return PlanFault::Windows;
    }
    plan = {std::make_shared<TimePlan>(TimePlan{windows}),
            std::make_shared<LoopPlan>(LoopPlan{loop})};
    return PlanFault::None;
}

void layeredResponse(const ResponsePlan &plan, std::span<const double> lnResistivity,
                     std::span<const double> /*thickness*/, ResponseWorkspace & /*workspace*/,
                     std::span<double> data, std::span<double> jacobian) {
    const std::size_t layers = lnResistivity.size();
    double mean = 0.0;
    for (const double m : lnResistivity) {
        mean += m / static_cast<double>(layers);
    }
    const WindowSet &set = plan.time->windows;
    const LoopGeometry &loop = plan.loop->loop;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::size_t w = i % set.lower.size();
        const auto t = static_cast<float>(0.5 * (set.lower[w] + set.upper[w]));
        const Response z =
            Loop_CenterZ(static_cast<float>(loop.sideX), static_cast<float>(loop.sideY), t,
                         static_cast<float>(std::exp(-mean)));
        data[i] = 1.0e9 * static_cast<double>(z.R) * loop.turns;
        for (std::size_t l = 0; l < layers && !jacobian.empty(); ++l) {
            jacobian[i * layers + l] =
                -1.0e9 * static_cast<double>(z.S) * loop.turns / static_cast<double>(layers);
        }
    }
}

} // namespace keldrin
