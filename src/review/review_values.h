#pragma once

#include "review/review_entry.h"

#include <span>

namespace keldrin {

// The values of the sounding on show as a table in a window beside the page (dialog 150).

std::span<const ReviewBinding> valuesBindings();

/// Esc closes the window while it is open; false for other events.
bool serveValues(Review &review, const ToolkitEvent &event);

/// Opens and closes the window with the panel; it opens where the user wants it on show.
void openValues(Review &review);
void closeValues(Review &review);

/// Brings the table up to date. Rows stay selected as long as the sounding is the same. The dialog
/// is selected then.
void showValues(Review &review);

/// Points at the row of the window whose point on show is nearest to a place of the page.
void pointAtValues(const Review &review, float x, float y);

} // namespace keldrin
