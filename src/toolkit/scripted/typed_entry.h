#pragma once

#include "toolkit/dialog_model.h"

#include <string_view>

namespace keldrin {

// What a user does to a control, given as text: a check box takes "on" or "off", a list "#INDEX" or
// the text of an entry, a trackbar a number, a table its rows to be selected as "1-5,9", "all" or
// "none", a field what is typed in place of its content.

/// True when the control is there, enabled, and takes this value.
bool takesEntry(DialogModel &dialog, int id, std::string_view value);

/// Enters a value that the control takes, and leaves the field.
void enterValue(DialogModel &dialog, int id, std::string_view value);

/// The entry of a list that "#INDEX" or its text names, from 1; 0 when there is none.
int chosenEntry(DialogModel &dialog, int id, std::string_view value);

/// The id of an enabled button, by its id or its caption without "&"; 0 when there is none.
int findButton(DialogModel &dialog, std::string_view idOrCaption);
bool isEnabledButton(DialogModel &dialog, int id);

} // namespace keldrin
