#pragma once

#include "engine/response.h"

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace keldrin {

// Short ways to plans and responses, shared by the tests.

/// The default pulse of a project: a rise of twice the ramp, a quarter period, a fall; or a fall
/// alone where the frequency is 0. Windows touch one another and have equal ratios.
inline WindowSet rampWindows(double frequency, double ramp, double first, double last, int count) {
    WindowSet set;
    set.frequency = frequency;
    const double quarter = frequency > 0.0 ? 0.25 / frequency : 0.0;
    if (frequency > 0.0) {
        set.times = {0.0, 2.0 * ramp, quarter, quarter + ramp};
        set.currents = {0.0, 1.0, 1.0, 0.0};
    } else {
        set.times = {0.0, ramp};
        set.currents = {1.0, 0.0};
    }
    set.origin = quarter + ramp;
    const double ratio = std::pow(last / first, 1.0 / (count - 1));
    for (int i = 0; i < count; ++i) {
        const double centre = first * std::pow(ratio, i);
        set.lower.push_back(centre / std::sqrt(ratio));
        set.upper.push_back(centre * std::sqrt(ratio));
    }
    return set;
}

/// A step at time 0 and samples of the response.
inline WindowSet samples(const std::vector<double> &times) {
    WindowSet set;
    set.times = {0.0, 0.0};
    set.currents = {1.0, 0.0};
    set.lower = times;
    set.upper = times;
    return set;
}

inline ResponsePlan planOf(const LoopGeometry &loop, const WindowSet &set) {
    ResponsePlan plan;
    makeResponsePlan(loop, set, plan);
    return plan;
}

inline std::vector<double> logOf(std::span<const double> values) {
    std::vector<double> logs;
    for (const double value : values) {
        logs.push_back(std::log(value));
    }
    return logs;
}

inline std::vector<double> dataOf(const ResponsePlan &plan, const std::vector<double> &rho,
                                  const std::vector<double> &thickness = {}) {
    ResponseWorkspace workspace;
    std::vector<double> data(plan.windows() * plan.components());
    layeredResponse(plan, logOf(rho), thickness, workspace, data);
    return data;
}

/// Derivatives by all layers, a row for each value.
inline std::vector<double> slopesOf(const ResponsePlan &plan, const std::vector<double> &rho,
                                    const std::vector<double> &thickness = {}) {
    ResponseWorkspace workspace;
    std::vector<double> data(plan.windows() * plan.components());
    std::vector<double> slopes(data.size() * rho.size());
    layeredResponse(plan, logOf(rho), thickness, workspace, data, slopes);
    return slopes;
}

} // namespace keldrin
