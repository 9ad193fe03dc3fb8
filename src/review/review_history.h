#pragma once

#include "model/survey_model.h"

#include <cstddef>
#include <vector>

namespace keldrin {

// Changes of skip marks, and of the error threshold that some come from, that can be taken back,
// and brought again. Only the stored errors that an action has changed are kept, so a history may
// be as long as the user likes. Taking back restores them bit for bit, which setting and clearing a
// mark does not: an error plus SkipOffset is rounded.

struct MarkChange {
    int station = 0;        ///< ordinal of the sounding, from 1
    std::size_t window = 0; ///< from 0
    float before = 0.0F;    ///< TEMerr
    float after = 0.0F;
};

/// The project's DataCutoff around an action, percent.
struct CutoffChange {
    float before = 0.0F;
    float after = 0.0F;
};

/// What one action has changed, in one sounding or in many.
struct MarkStep {
    int station = 0; ///< that was on show, from 1
    std::vector<MarkChange> changes;
    CutoffChange cutoff = {}; ///< two like values: it did not change

    [[nodiscard]] bool isEmpty() const { return changes.empty() && cutoff.before == cutoff.after; }
};

struct MarkHistory {
    std::vector<MarkStep> steps;        ///< the oldest first
    std::size_t applied = 0;            ///< the steps after this many have been taken back
    std::vector<MarkStep> dropped = {}; ///< by the step recorded last: had been taken back before
};

/// Notes what an action has done to a sounding, from its errors before and after.
void noteChanges(MarkStep &step, int station, const WindowReals &before, const WindowReals &after);

/// Adds an action to the history. One that changed nothing is not kept; any other one drops what
/// was taken back before.
/// returns  true when it was kept
bool recordMarks(MarkHistory &history, MarkStep step);

/// Makes the step recorded last as if it had never been: the marks, and what it dropped.
/// history  none of its steps has been taken back since
void forgetLastMarks(MarkHistory &history, SurveyModel &model);

/// Take the last action back, or bring again the one taken back last.
/// model    must hold the soundings that were recorded
/// returns  the step, which stands until the history changes; null when there is nothing left
const MarkStep *undoMarks(MarkHistory &history, SurveyModel &model);
const MarkStep *redoMarks(MarkHistory &history, SurveyModel &model);

/// Keeps what redoMarks() can still bring, for another entry of the review. Steps that stand in the
/// model are forgotten.
void keepUndoneMarks(MarkHistory &history);

/// The marks of the whole history are no longer in the model: it was loaded again.
inline void countAllAsUndone(MarkHistory &history) {
    history.applied = 0;
}

/// Fits a history of undone steps to soundings that were loaded again: the marks are those that
/// were recorded, the errors those of the model. Changes of windows that are gone are dropped.
void rebaseUndoneMarks(MarkHistory &history, const SurveyModel &model);

/// True when the project's DataCutoff is not what it was at the start of the history.
bool cutoffHasChanged(const MarkHistory &history);

/// How many windows are now marked as skipped that were not at the start of the history, or the
/// other way round.
std::size_t changedMarks(const MarkHistory &history);

} // namespace keldrin
