#include "conditioning/line_azimuth_dialog.h"

#include "base/real.h"
#include "conditioning/unread_fields.h"
#include "projectfile/control_table.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"

#include <array>
#include <cmath>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr FieldLimits Circle = {control_ranges::Azimuth.low, control_ranges::Azimuth.high};

constexpr std::array LineAzimuthControls = {
    ControlSpec{.id = LineAzimuthControl::Trend,
                .kind = Integer,
                .label = "Stn file trend",
                .unit = "deg",
                .limits = Circle,
                .enabled = false,
                .field = fieldOf<&LineAzimuthAnswers::trend>()},
    ControlSpec{.id = LineAzimuthControl::Azimuth,
                .kind = Integer,
                .label = "Verify Line azimuth",
                .unit = "deg",
                .limits = Circle,
                .field = fieldOf<&LineAzimuthAnswers::azimuth>()},
    ContinueRow,
};

float withinCircle(float degrees) {
    return std::fmod(degrees, 360.0F); // keeps its sign
}

} // namespace

const DialogForm<LineAzimuthAnswers> LineAzimuthDialog = DialogSpec{
    .number = 110,
    .caption = "Verify line azimuth",
    .defaultButton = ButtonContinue,
    .controls = LineAzimuthControls,
    .firstControl = ButtonContinue,
};

void VerifyLineAzimuth(float trend, float &azimuth) {
    LineAzimuthAnswers answers;
    answers.azimuth = withinCircle(azimuth);
    if (isPresent(trend)) { // one point has no trend
        answers.trend = withinCircle(trend);
    }
    const DialogAnswer answer = askDialog(LineAzimuthDialog, answers); // has no Cancel
    azimuth = answers.azimuth;
    reportUnreadFields(answer.unread);
    CheckGraphicsError("VerifyLineAzimuth");
}

} // namespace keldrin
