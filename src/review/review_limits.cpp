#include "review/review_limits.h"

#include "conditioning/unread_fields.h"
#include "screen/graphics_errors.h"
#include "sounding/plot_limits_dialog.h"

#include <array>
#include <cmath>
#include <utility>

namespace keldrin {

namespace {

enum class AxisKind { ArcSinh, Logarithmic, Linear };

/// An axis: its ends in the dialog, and as PlotLimits keeps them.
struct AxisFields {
    AxisEnds PlotLimitsAnswers::*shown;
    float PlotLimits::*maximum;
    float PlotLimits::*minimum;
    AxisKind kind;
};

constexpr std::array Axes = {
    AxisFields{&PlotLimitsAnswers::data, &PlotLimits::PlotDataMax, &PlotLimits::PlotDataMin,
               AxisKind::ArcSinh},
    AxisFields{&PlotLimitsAnswers::time, &PlotLimits::PlotTimeMax, &PlotLimits::PlotTimeMin,
               AxisKind::Logarithmic},
    AxisFields{&PlotLimitsAnswers::depth, &PlotLimits::PlotDepthMax, &PlotLimits::PlotDepthMin,
               AxisKind::Linear},
    AxisFields{&PlotLimitsAnswers::resistivity, &PlotLimits::PlotResMax, &PlotLimits::PlotResMin,
               AxisKind::Logarithmic},
    AxisFields{&PlotLimitsAnswers::apparent, &PlotLimits::PlotAResMax, &PlotLimits::PlotAResMin,
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
Limit answeredLimit(float shown, float kept, AxisKind kind) {
    const Limit old = limitKept(kept, kind);
    return shown == old.shown ? old : limitShown(shown, kind);
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

void takeAxis(const AxisFields &axis, const PlotLimitsAnswers &answers, PlotLimits &limits) {
    const AxisEnds &ends = answers.*axis.shown;
    Limit maximum = answeredLimit(ends.maximum, limits.*axis.maximum, axis.kind);
    Limit minimum = answeredLimit(ends.minimum, limits.*axis.minimum, axis.kind);
    if (maximum.shown < minimum.shown) {
        std::swap(maximum, minimum);
    }
    maximum = widenedMaximum(maximum, minimum, axis.kind);
    const bool onAxis = isOnAxis(maximum, axis.kind) && isOnAxis(minimum, axis.kind);
    if (onAxis && maximum.kept > minimum.kept) {
        limits.*axis.maximum = maximum.kept;
        limits.*axis.minimum = minimum.kept;
    }
}

// The axes of the page on show, which has one data axis.
std::array<AxisFields, Axes.size()> axesOf(const PlotLimits &limits) {
    std::array<AxisFields, Axes.size()> axes = Axes;
    if (limits.logData) {
        axes[0] = {&PlotLimitsAnswers::data, &PlotLimits::PlotLogMax, &PlotLimits::PlotLogMin,
                   AxisKind::Logarithmic};
    }
    return axes;
}

bool isTouched(const AxisEnds &ends, const AxisEnds &before) {
    return ends.maximum != before.maximum || ends.minimum != before.minimum;
}

PlotLimitsAnswers answersOf(const SurveyModel &survey, const PlotLimits &limits) {
    PlotLimitsAnswers answers;
    answers.dataUnits = survey.control.TEMUnits.str();
    answers.lengthUnits = survey.control.LengthUnits.str();
    answers.style = static_cast<int>(limits.style) + 1;
    for (const AxisFields &axis : axesOf(limits)) {
        answers.*axis.shown = {limitKept(limits.*axis.maximum, axis.kind).shown,
                               limitKept(limits.*axis.minimum, axis.kind).shown};
    }
    return answers;
}

} // namespace

int Review_EditLimits(const SurveyModel &survey, PlotLimits &limits) {
    CheckGraphicsError();
    PlotLimitsAnswers answers = answersOf(survey, limits);
    const PlotLimitsAnswers before = answers;
    const DialogAnswer answer = askDialog(PlotLimitsDialog, answers);
    if (!answer.confirmed()) {
        return 1;
    }
    for (const AxisFields &axis : axesOf(limits)) {
        if (isTouched(answers.*axis.shown, before.*axis.shown)) {
            takeAxis(axis, answers, limits);
        }
    }
    limits.style = answers.style == 1 ? PageStyle::Standard : PageStyle::Presentation;
    reportUnreadFields(answer.unread);
    return 0;
}

} // namespace keldrin
