#pragma once

#include "model/survey_model.h"
#include "physics/ares_check.h"
#include "physics/ares_context.h"

#include <functional>
#include <span>

namespace keldrin {

/// A solution that leaves more than this in ArcSinh(dB/dt in nV/(A m2)) fits no half-space.
inline constexpr float AResPoorFit = 0.1F;

/// What a call of ARes_dBdt has to say.
struct AResOutcome {
    int error = 0;       ///< 0, 1 the input check failed, 2 the last solve found no solution
    int unsolved = 0;    ///< solves that found no solution; one message each
    int unfitted = 0;    ///< windows whose solution leaves more than AResPoorFit
    AResFailure failure; ///< of the input check
};

/// Apparent resistivities of one sounding, by a damped search on ln(conductivity) between 1e-6 and
/// 1e4 S/m, from the latest window to the earliest. Safe on any thread; does not report.
/// dbdt    nV/(A m2), ntw values
/// ares    ohm-m, ntw values; 0 where the value is not above the response of a 1e6 ohm-m half-space
///         (as 0 and every negative value) or is no number; such a window does not change the
///         starting value of the next one
/// returns error 1 with all of `ares` 0, otherwise the error of the last solve, that of the
///         earliest window: the failure of a later one shows in `unsolved` alone
AResOutcome ARes_dBdt(const AResInput &input, std::span<const float> dbdt, std::span<float> ares);

/// Reports the solves of a call that found no solution, each with a message of its own.
void ARes_ReportUnsolved(const AResOutcome &outcome);

/// How a long computation is done, and how its caller shows how far it is.
struct AResProgress {
    /// Called on the caller's thread after each sounding; false stops, and what is done stays.
    std::function<bool(int done, int total)> step;
    int threads = 0; ///< workers at most; 1: the caller's thread alone; 0: one a processor
};

/// Fills AResObs and AResCalc of all soundings and reports "Stn i/n ARes done" for each.
///
/// The soundings are computed on several threads where that pays; results, messages and their order
/// are those of one thread. A sounding that fails keeps what it had and the walk goes on. After the
/// last sounding, a value that the check refused is reported once for all soundings that have it,
/// and one line counts the windows of observed data that no half-space fits.
/// returns  the error of the last sounding tried, see AResOutcome
int ARes_Survey(SurveyModel &model, const AResProgress &progress = {});

} // namespace keldrin
