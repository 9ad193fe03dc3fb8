#include "conditioning/line_azimuth_dialog.h"

#include "base/real.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/toolkit.h"

#include <cmath>

namespace keldrin {

namespace {
constexpr int TrendField = 1060;
constexpr int AzimuthField = 1048;
constexpr float FullCircle = 360.0F;
} // namespace

void VerifyLineAzimuth(float trend, float &azimuth) {
    azimuth = std::fmod(azimuth, FullCircle); // keeps its sign
    WDialogLoad(LineAzimuthDialog);
    if (isPresent(trend)) {
        WDialogPutInteger(TrendField, nearestInt(std::fmod(trend, FullCircle)));
    } else {
        WDialogPutString(TrendField, ""); // one point has no trend
    }
    WDialogRangeInteger(AzimuthField, -360, 360);
    WDialogPutInteger(AzimuthField, nearestInt(azimuth));
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    int answer = 0;
    if (WDialogGetInteger(AzimuthField, answer)) {
        azimuth = static_cast<float>(answer);
    }
    WDialogUnload();
    CheckGraphicsError("VerifyLineAzimuth");
}

} // namespace keldrin
