#pragma once

#include "physics/ares_context.h"

#include <string>

namespace keldrin {

/// Which limit a sounding breaks first.
enum class AResFault {
    None,
    ArrayType,
    XSide,
    YSide,
    Ramp,
    Frequency,
    RxX,
    RxY,
    WindowCount,
    WindowCentre,
    WindowWidth,
};

struct AResFailure {
    AResFault fault = AResFault::None;
    float value = 0.0F; ///< the number that the message shows
    int count = 0;      ///< the same for WindowCount
    bool operator==(const AResFailure &) const = default;
};

/// Tests a sounding's input in a fixed order and stops at the first fault. NaN is out of range.
/// Does not report.
AResFailure ARes_Check(const AResInput &input);

/// The second line of the failure's message.
std::string failureText(const AResFailure &failure);

} // namespace keldrin
