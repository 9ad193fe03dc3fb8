#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr double FullCircle = 360.0;

constexpr std::array Controls = {
    ControlSpec{.id = 1060,
                .kind = Integer,
                .label = "Stn file trend",
                .limits = {-FullCircle, FullCircle},
                .enabled = false},
    ControlSpec{.id = 1048,
                .kind = Integer,
                .label = "Verify Line azimuth",
                .limits = {-FullCircle, FullCircle}},
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
};

} // namespace

const DialogSpec LineAzimuthDialog = {Dialog::LineAzimuth, "Verify line azimuth", ButtonContinue,
                                      Controls};

} // namespace keldrin
