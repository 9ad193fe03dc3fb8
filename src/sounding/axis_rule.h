#pragma once

#include "base/real.h"
#include "toolkit/dialog_field.h"

#include <cmath>
#include <string_view>
#include <variant>

namespace keldrin {

/// What an axis can show; a field does not accept anything else.
struct AxisRule {
    bool (*holds)(float value);
    std::string_view refusal;
};
inline constexpr AxisRule ArcSinhAxis = {[](float value) { return std::isfinite(ArcSinh(value)); },
                                         "is too large for the axis"};
inline constexpr AxisRule LinearAxis = {[](float value) { return std::isfinite(value); },
                                        "is too large for the axis"};
inline constexpr AxisRule LogarithmicAxis = {
    [](float value) { return std::isfinite(value) && value > 0.0F; }, "is not above 0"};

/// Takes over the end of an axis that the user has typed.
template <const AxisRule &rule>
bool takeEnd(float &end, const FieldValue &value) {
    const auto typed = static_cast<float>(std::get<double>(value));
    const bool accepted = rule.holds(typed);
    end = accepted ? typed : end;
    return accepted;
}

} // namespace keldrin
