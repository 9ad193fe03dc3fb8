#include "review/window_values.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/real.h"
#include "physics/data_fit.h"
#include "sounding/plot_limits.h"

#include <cmath>
#include <string>
#include <string_view>

namespace keldrin {

namespace {

bool isNumber(float value) {
    return isPresent(value) && std::isfinite(value);
}

std::string cellText(float value) {
    return isNumber(value) ? Number_Text(value, "(1P,G14.4E2)") : "";
}

std::string decimals(float value, std::string_view format) {
    return isNumber(value) ? std::string(trimBlanks(formatReal(format, value))) : "";
}

HeadedColumn headed(std::string_view quantity, std::string_view unit) {
    return {std::string(quantity).append("\n(").append(unit).append(")"), true};
}

std::vector<HeadedColumn> columnsOf(const ControlValues &control) {
    const std::string_view unit = control.TEMUnits.view();
    return {{"Window", true},
            headed("Time", "msec"),
            headed("Width", "msec"),
            headed("dB/dt", unit),
            headed("Error", "%"),
            {"Mark", false},
            headed("App. res.", "ohm-m"),
            headed("Calculated", unit),
            headed("Misfit", "std. dev.")};
}

// Not above this a window has no resistivity, as on the page.
std::string resistivityText(float value) {
    return value > LeastResistivity ? cellText(value) : "";
}

} // namespace

TableContent windowValues(const ControlValues &control, const SoundingRecord &sounding) {
    const SoundingFit fit = soundingFit(control, sounding);
    TableContent table;
    table.columns = columnsOf(control);
    for (std::size_t i = 0; i < windowCount(sounding); ++i) {
        const bool skipped = isSkipped(sounding.TEMerr[i]);
        const float error = skipped ? trueError(sounding.TEMerr[i]) : sounding.TEMerr[i];
        table.rows.push_back({std::to_string(i + 1), cellText(sounding.TWcenter[i]),
                              cellText(sounding.TWwidth[i]), cellText(sounding.TEMobs[i]),
                              decimals(error, "(F14.1)"), skipped ? "skipped" : "",
                              resistivityText(sounding.AResObs[i]), cellText(sounding.TEMcalc[i]),
                              decimals(fit.residuals[i], "(F14.2)")});
    }
    return table;
}

} // namespace keldrin
