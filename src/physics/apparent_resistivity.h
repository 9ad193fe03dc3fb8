#pragma once

#include "model/survey_model.h"
#include "physics/ares_check.h"
#include "physics/ares_context.h"

#include <functional>
#include <span>

namespace keldrin {

/// What a call of ARes_dBdt has to say.
struct AResOutcome {
    int error = 0;       ///< 0, 1 the input check failed, 2 the last solve found no solution
    int unsolved = 0;    ///< solves that found no solution; one message each
    AResFailure failure; ///< of the input check
};

/// Apparent resistivities of one sounding, by a damped search on ln(conductivity) between 1e-6 and
/// 1e4 S/m, from the latest window to the earliest. Safe on any thread; does not report.
/// dbdt    nV/(A m2), ntw values
/// ares    ohm-m, ntw values; 0 where the value is below the response of a 1e6 ohm-m half-space
///         (as every negative value is) or is no number
/// returns error 1 with all of `ares` 0, otherwise the error of the last solve, that of the
///         earliest window: the failure of a later one shows in `unsolved` alone
AResOutcome ARes_dBdt(const AResInput &input, std::span<const float> dbdt, std::span<float> ares);

/// Sends the messages of a call through ReportError, in their order.
void ARes_Report(const AResOutcome &outcome);

/// Lets the caller of a long computation show how far it is.
struct AResProgress {
    /// Called on the caller's thread after each sounding; false stops, and what is done stays.
    std::function<bool(int done, int total)> step;
};

/// Fills AResObs and AResCalc of all soundings and reports "Stn i/n ARes done" for each.
///
/// The soundings are computed on several threads where that pays; results, messages and their order
/// are those of one thread. A sounding that fails keeps what it had and the walk goes on.
/// returns  the error of the last sounding tried, see AResOutcome
int ARes_Survey(SurveyModel &model, const AResProgress &progress = {});

} // namespace keldrin
