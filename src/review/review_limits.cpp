#include "review/review_limits.h"

#include "review/review_dialogs.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/toolkit.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

namespace keldrin {

namespace {

enum class AxisKind { ArcSinh, Logarithmic, Linear };

struct LimitPair {
    int maximumField;
    int minimumField;
    float PlotLimits::*maximum;
    float PlotLimits::*minimum;
    std::string_view format;
    AxisKind kind;
};

constexpr std::string_view FourDigits = "(1P,G12.4E1)";
constexpr std::string_view OneDecimal = "(F12.1)";

constexpr std::array Pairs = {
    LimitPair{1027, 1045, &PlotLimits::PlotDataMax, &PlotLimits::PlotDataMin, FourDigits,
              AxisKind::ArcSinh},
    LimitPair{1062, 1063, &PlotLimits::PlotTimeMax, &PlotLimits::PlotTimeMin, FourDigits,
              AxisKind::Logarithmic},
    LimitPair{1064, 1065, &PlotLimits::PlotDepthMax, &PlotLimits::PlotDepthMin, OneDecimal,
              AxisKind::Linear},
    LimitPair{1066, 1080, &PlotLimits::PlotResMax, &PlotLimits::PlotResMin, FourDigits,
              AxisKind::Logarithmic},
};

// A limit as the user sees it, and as PlotLimits keeps it.
struct Limit {
    float shown = 0.0F;
    float kept = 0.0F;
};

Limit limitShown(float shown, AxisKind kind) {
    return {shown, kind == AxisKind::ArcSinh ? ArcSinh(shown) : shown};
}

Limit limitKept(float kept, AxisKind kind) {
    return {kind == AxisKind::ArcSinh ? std::sinh(kept) : kept, kept};
}

bool isOnAxis(const Limit &limit, AxisKind kind) {
    return std::isfinite(limit.kept) && (kind != AxisKind::Logarithmic || limit.shown > 0.0F);
}

// A number that was not edited must not come back rounded by ArcSinh(sinh(x)): the label at the
// end of the axis would be lost.
Limit readLimit(int field, float kept, AxisKind kind) {
    const Limit old = limitKept(kept, kind);
    float shown = old.shown;
    if (!WDialogGetReal(field, shown) || shown == old.shown) {
        return old;
    }
    const Limit read = limitShown(shown, kind);
    return isOnAxis(read, kind) ? read : old;
}

Limit widenedMaximum(const Limit &maximum, const Limit &minimum, AxisKind kind) {
    constexpr float leastRatio = 10.0F;
    constexpr float leastRange = 1.0F;
    if (kind == AxisKind::Logarithmic) {
        const bool wide = maximum.shown / minimum.shown >= leastRatio;
        return wide ? maximum : limitShown(leastRatio * minimum.shown, kind);
    }
    const bool wide = maximum.shown - minimum.shown >= leastRange;
    return wide ? maximum : limitShown(minimum.shown + leastRange, kind);
}

void readPair(const LimitPair &pair, PlotLimits &limits) {
    Limit maximum = readLimit(pair.maximumField, limits.*pair.maximum, pair.kind);
    Limit minimum = readLimit(pair.minimumField, limits.*pair.minimum, pair.kind);
    if (maximum.shown < minimum.shown) {
        std::swap(maximum, minimum);
    }
    maximum = widenedMaximum(maximum, minimum, pair.kind);
    if (isOnAxis(maximum, pair.kind) && maximum.kept > minimum.kept) {
        limits.*pair.maximum = maximum.kept;
        limits.*pair.minimum = minimum.kept;
    }
}

void fillDialog(const SurveyModel &survey, const PlotLimits &limits) {
    WDialogPutString(1054, "dBz/dt (" + survey.control.TEMUnits.str() + ")");
    WDialogPutString(1056, "Depth (" + survey.control.LengthUnits.str() + ")");
    for (const LimitPair &pair : Pairs) {
        WDialogPutReal(pair.maximumField, limitKept(limits.*pair.maximum, pair.kind).shown,
                       pair.format);
        WDialogPutReal(pair.minimumField, limitKept(limits.*pair.minimum, pair.kind).shown,
                       pair.format);
    }
}

} // namespace

int Review_EditLimits(const SurveyModel &survey, PlotLimits &limits) {
    CheckGraphicsError();
    WDialogLoad(PlotLimitsDialog);
    fillDialog(survey, limits);
    showAtLowerRight(DialogModal);
    const bool confirmed = ToolkitDialogInfo(1) == ButtonContinue;
    if (confirmed) {
        for (const LimitPair &pair : Pairs) {
            readPair(pair, limits);
        }
    }
    WDialogUnload();
    return confirmed ? 0 : 1;
}

} // namespace keldrin
