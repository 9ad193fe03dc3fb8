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

PlanFault makeResponsePlan(const LoopGeometry &loop, const WindowSet &windows, ResponsePlan &plan,
                           const ResponsePlan *sharing) {
    const PlanFault loopFault = checkLoop(loop);
    const PlanFault fault = loopFault != PlanFault::None ? loopFault : checkWindows(windows);
    if (fault != PlanFault::None) {
        return fault;
    }
    ResponsePlan made;
    if (sharing != nullptr && sharing->time && sharing->time->set == windows) {
        made.time = sharing->time;
    } else {
        made.time = std::make_shared<const TimePlan>(makeTimePlan(windows));
    }
    if (sharing != nullptr && sharing->loop && sharing->loop->geometry == loop) {
        made.loop = sharing->loop;
    } else {
        made.loop = std::make_shared<const LoopPlan>(makeLoopPlan(loop));
    }
    plan = made;
    return PlanFault::None;
}

void layeredResponse(const ResponsePlan &plan, std::span<const double> lnResistivity,
                     std::span<const double> thickness, ResponseWorkspace &workspace,
                     std::span<double> data, std::span<double> jacobian) {
    layeredResponse(fastestKernel(), plan, lnResistivity, thickness, workspace, data, jacobian);
}

} // namespace keldrin
