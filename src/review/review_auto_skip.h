#pragma once

#include "conditioning/auto_skip_dialog.h"
#include "conditioning/further_skip.h"
#include "toolkit/toolkit.h"

namespace keldrin {

// Auto Skip beside the page of the review (dialog 145). It does not block: soundings are walked and
// windows marked as ever, while the windows that the filters would take are ringed on the page and
// counted over the line. Continue, or Enter, marks them as one step of undo, which holds the error
// threshold too; it is the project's DataCutoff, and is written with the marks when the review
// ends. Cancel, Esc, the close box, a page of the line and the end of the review leave all as it
// was.

struct Review;

/// The dialog while it is open.
struct LiveSkip {
    AutoSkipAnswers answers; ///< as they stand in it
    SkipPlan plan;           ///< of these
};

/// Takes an event that belongs to the open dialog: those of its controls, Enter and Esc.
/// returns  false when the review is to serve it
bool serveAutoSkip(Review &review, const ToolkitEvent &event);

/// Brings rings and counts up to date, on a page that was just drawn.
void showAutoSkip(Review &review);

/// Closes the dialog, if it is open, with nothing changed.
void closeAutoSkip(Review &review);

} // namespace keldrin
