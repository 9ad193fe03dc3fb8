#include "physics/ares_check.h"

#include "base/index.h"
#include "base/number_text.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace keldrin {

namespace {

struct Limits {
    AResFault fault;
    float AResInput::*value;
    float low;
    float high;
};

constexpr std::array SingleLimits = {
    Limits{AResFault::XSide, &AResInput::xLength, 0.1F, 1.0e5F},
    Limits{AResFault::YSide, &AResInput::yLength, 0.1F, 1.0e5F},
    Limits{AResFault::Ramp, &AResInput::ramp, 0.0F, 1000.0F},
    Limits{AResFault::Frequency, &AResInput::freq, 0.001F, 1000.0F},
    Limits{AResFault::RxX, &AResInput::rxX, -1.0e10F, 1.0e10F},
    Limits{AResFault::RxY, &AResInput::rxY, -1.0e10F, 1.0e10F},
};

struct Wording {
    std::string_view label;
    std::string_view tail;
};

// In the order of AResFault. The first side's tail has no unit.
constexpr std::array Wordings = {
    Wording{"", ""},
    Wording{"iTemArray=", " is < 1 or > 4"},
    Wording{"X Tx Length=", " is < 0.1 or > 1.0E5"},
    Wording{"Y Tx Length=", " is < 0.1 or > 1.0E5 m"},
    Wording{"Tx Ramp=", " is < 0 or > 1000 usec"},
    Wording{"Tx Freq=", " is < 0.001 or > 1000 hertz"},
    Wording{"Rx X w.r.t. Tx center =", " is < -1.0E10 or > 1.0E10 m"},
    Wording{"Rx Y w.r.t. Tx center =", " is < -1.0E10 or > 1.0E10 m"},
    Wording{"NTW=", " is < 1 or > 128"},
    Wording{"Time-window Center =", " is < 1.0E-4 or > 1.0E4 msec"},
    Wording{"Time-window Width =", " is < 0 or > 1.0E3 msec"},
};

bool isWithin(float value, float low, float high) {
    return value >= low && value <= high;
}

} // namespace

AResFailure ARes_Check(const AResInput &input) {
    if (input.iTemArray < FixedLoop || input.iTemArray > CoincidentLoop) {
        return {AResFault::ArrayType, 1.0F, 0}; // the message shows 1 whatever the type
    }
    for (const Limits &limits : SingleLimits) {
        const float value = input.*limits.value;
        if (!isWithin(value, limits.low, limits.high)) {
            return {limits.fault, value, 0};
        }
    }
    if (input.ntw < 1 || input.ntw > MaxWindows) {
        return {AResFault::WindowCount, 0.0F, input.ntw};
    }
    for (std::size_t k = 0; k < asIndex(input.ntw); ++k) {
        const float centre = input.twCenter[k];
        if (!isWithin(centre, 1.0e-4F, 1.0e4F)) {
            return {AResFault::WindowCentre, centre, 0};
        }
        if (!isWithin(input.twWidth[k], 0.0F, 1000.0F)) {
            return {AResFault::WindowWidth, centre, 0}; // shows the centre: it names the window
        }
    }
    return {};
}

std::string failureText(const AResFailure &failure) {
    const Wording &wording = Wordings[static_cast<std::size_t>(failure.fault)];
    const std::string number = failure.fault == AResFault::WindowCount
                                   ? std::to_string(failure.count)
                                   : messageNumber(failure.value);
    return std::string(wording.label).append(number).append(wording.tail);
}

} // namespace keldrin
