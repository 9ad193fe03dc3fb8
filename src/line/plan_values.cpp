#include "line/plan_values.h"

#include "base/number_text.h"
#include "base/real.h"
#include "page/plot_scale.h"
#include "physics/data_fit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

constexpr float Percent = 100.0F;

float skippedShare(const SurveyModel & /*survey*/, const SoundingRecord &sounding,
                   float /*depth*/) {
    const std::span errors = std::span(sounding.TEMerr).first(windowCount(sounding));
    const auto skipped =
        std::count_if(errors.begin(), errors.end(), [](float error) { return isSkipped(error); });
    return errors.empty()
               ? static_cast<float>(MissingValue)
               : Percent * static_cast<float>(skipped) / static_cast<float>(errors.size());
}

float misfit(const SurveyModel &survey, const SoundingRecord &sounding, float /*depth*/) {
    return soundingFit(survey.control, sounding).misfit;
}

float resistivity(const SurveyModel & /*survey*/, const SoundingRecord &sounding, float depth) {
    return resistivityAt(sounding, depth);
}

AxisLimits allPercent(std::span<const float> /*values*/) {
    return {0.0F, Percent};
}

// Up to twice the errors as they are stated, or more where a sounding fits worse.
AxisLimits fromNothing(std::span<const float> values) {
    constexpr float least = 2.0F;
    float high = least;
    for (const float value : values) {
        high = isPresent(value) && std::isfinite(value) ? std::max(high, value) : high;
    }
    return {0.0F, high > least ? roundPercentiles(std::array{high}).high : high};
}

AxisLimits roundResistivities(std::span<const float> values) {
    return roundPercentiles(values);
}

struct QuantityRow {
    std::string_view name;
    std::string_view label;
    std::string_view unit;
    bool logarithmic;
    float (*valueOf)(const SurveyModel &, const SoundingRecord &, float depth);
    AxisLimits (*limitsOf)(std::span<const float> values);
};

constexpr std::array QuantityRows = {
    QuantityRow{"none", "", "", false, nullptr, nullptr},
    QuantityRow{"share of skipped windows", "Skipped windows (%)", "", false, skippedShare,
                allPercent},
    QuantityRow{"misfit", "Misfit in units of the stated errors", "", false, misfit, fromNothing},
    QuantityRow{"resistivity at the depth", "Resistivity (ohm-m)", "ohm-m", true, resistivity,
                roundResistivities},
};

std::string atDepth(const QuantityRow &quantity, const SurveyModel &survey, float depth) {
    return quantity.valueOf == resistivity
               ? " at " + messageNumber(depth) + " " + survey.control.LengthUnits.str()
               : "";
}

bool canBeShown(const AxisLimits &limits, bool logarithmic) {
    return PlotScale{static_cast<double>(limits.low), static_cast<double>(limits.high), logarithmic}
               .isUsable() &&
           limits.low < limits.high;
}

} // namespace

std::vector<std::string> planQuantityNames() {
    std::vector<std::string> names;
    names.reserve(QuantityRows.size());
    for (const QuantityRow &quantity : QuantityRows) {
        names.emplace_back(quantity.name);
    }
    return names;
}

PlanValues planValues(const SurveyModel &survey, const PlanLimits &limits,
                      std::span<const int> soundings) {
    const int count = static_cast<int>(QuantityRows.size());
    const bool known = limits.quantity > PlainDots && limits.quantity <= count;
    if (!known) {
        return {};
    }
    const QuantityRow &quantity = QuantityRows[asIndex(limits.quantity - 1)];
    const std::string place = atDepth(quantity, survey, limits.depth);
    PlanValues shown;
    shown.label = std::string(quantity.label) + place;
    shown.unit = quantity.unit.empty() ? "" : std::string(quantity.unit) + place;
    shown.logarithmic = quantity.logarithmic;
    for (const int sounding : soundings) {
        shown.values.push_back(quantity.valueOf(survey, survey.sounding(sounding), limits.depth));
    }
    const bool chosen = limits.setValues && canBeShown(limits.values, quantity.logarithmic);
    shown.limits = chosen ? limits.values : quantity.limitsOf(shown.values);
    return shown;
}

float resistivityAt(const SoundingRecord &sounding, float depth) {
    for (std::size_t i = 0; i < layerCount(sounding); ++i) {
        const float half = isPresent(sounding.ThkInv[i]) ? sounding.ThkInv[i] / 2.0F : 0.0F;
        const float middle = -sounding.ZMid[i];
        if (depth >= middle - half && depth <= middle + half) {
            return sounding.ResInv[i];
        }
    }
    return MissingValue;
}

} // namespace keldrin
