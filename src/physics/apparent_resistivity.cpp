#include "physics/apparent_resistivity.h"

#include "base/index.h"
#include "messages/message_log.h"
#include "physics/ares_newton.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

// Search range of ln(conductivity in S/m): 1e6 to 1e-4 ohm-m.
constexpr float LowestX = -13.815511F;
constexpr float HighestX = 9.2103405F;

// Late-time formula: rho = (a^2 / t^5)^(1/3) with a = area * 1.5896e-17 / v.
float lateTimeResistivity(float area, float t, float v) {
    const float a = area * 1.5896e-17F / v;
    const float t2 = t * t;
    return std::pow(a * a / (t2 * t2 * t), 0.333333F);
}

// The solve against the plain response starts the one against the averaged response.
AResRoot solveWindow(const ARes_Context &context, float rho, AResOutcome &outcome) {
    const auto atCentre = [&](float x) {
        return ARes_ResidCenter(context, x);
    };
    const auto averaged = [&](float x) {
        return ARes_ResidWindow(context, x);
    };
    const AResRoot start = ARes_Newton(-std::log(rho), LowestX, HighestX, atCentre);
    const AResRoot root = ARes_Newton(start.x, LowestX, HighestX, averaged);
    outcome.unsolved += (start.error != 0 ? 1 : 0) + (root.error != 0 ? 1 : 0);
    outcome.unfitted += std::fabs(root.residual) <= AResPoorFit ? 0 : 1; // a NaN fits nothing
    return root;
}

} // namespace

AResOutcome ARes_dBdt(const AResInput &input, std::span<const float> dbdt, std::span<float> ares) {
    AResOutcome outcome;
    std::fill(ares.begin(), ares.end(), 0.0F);
    outcome.failure = ARes_Check(input);
    if (outcome.failure.fault != AResFault::None) {
        outcome.error = 1;
        return outcome;
    }
    ARes_Context context = contextOf(input);
    bool started = false;
    float rho = 0.0F;
    for (std::size_t k = asIndex(input.ntw); k-- > 0;) {
        const float v = dbdt[k] * 1.0e-9F;
        context.window = k;
        if (!(v > floorResponse(context))) {
            continue; // the current solution remains the starting value of the next window
        }
        context.target = ArcSinh(dbdt[k]);
        if (!started) {
            rho = lateTimeResistivity(context.area, context.centre[k], v);
            started = true;
        }
        const AResRoot root = solveWindow(context, rho, outcome);
        rho = std::exp(-root.x);
        ares[k] = rho;
        outcome.error = root.error; // that of the earliest window is left at the end
    }
    return outcome;
}

void ARes_ReportUnsolved(const AResOutcome &outcome) {
    for (int i = 0; i < outcome.unsolved; ++i) {
        // 16 though 17 passes ran: the number is part of the message.
        ReportError({"WARNING:", "No apparent resistivity solution after 16 iterations",
                     "while calculating TEM apparent resistivities."});
    }
}

} // namespace keldrin
