#include "engine/response.h"

#include "engine/layer_kernel.h"
#include "engine/layered_sum.h"
#include "engine/loop_plan.h"
#include "engine/time_plan.h"

namespace keldrin {

std::size_t ResponsePlan::windows() const {
    return time ? time->windows : 0;
}

std::size_t ResponsePlan::components() const {
    return loop ? loop->components : 1;
}

std::string planFaultText(PlanFault fault) {
    switch (fault) {
    case PlanFault::None:
        return "no fault";
    case PlanFault::Side:
        return "loop side outside of 0.001 to 1e6 m";
    case PlanFault::Receiver:
        return "receiver farther away than 1e6 m";
    case PlanFault::Waveform:
        return "waveform without change of current, or of which the times do not rise up to the "
               "time origin";
    case PlanFault::Frequency:
        return "frequency below 0";
    case PlanFault::Windows:
        return "no windows";
    case PlanFault::Window:
        return "window outside of 1e-7 to 1000 s";
    }
    return "unknown fault";
}

PlanFault checkResponsePlan(const LoopGeometry &loop, const WindowSet &windows) {
    const PlanFault fault = checkLoop(loop);
    return fault != PlanFault::None ? fault : checkWindows(windows);
}

PlanFault makeResponsePlan(const LoopGeometry &loop, const WindowSet &windows, ResponsePlan &plan) {
    const PlanFault fault = checkResponsePlan(loop, windows);
    if (fault == PlanFault::None) {
        plan.time = std::make_shared<const TimePlan>(makeTimePlan(windows));
        plan.loop = std::make_shared<const LoopPlan>(makeLoopPlan(loop));
    }
    return fault;
}

void layeredResponse(const ResponsePlan &plan, std::span<const double> lnResistivity,
                     std::span<const double> thickness, ResponseWorkspace &workspace,
                     std::span<double> data, std::span<double> jacobian) {
    layeredResponse(fastestKernel(), plan, lnResistivity, thickness, workspace, data, jacobian);
}

} // namespace keldrin
