#pragma once

#include "toolkit/dialog_form.h"

#include <vector>

namespace keldrin {

/// Says in the log and the status bar which fields of a dialog could not be read, what was typed
/// there and what stands; nothing where all were read.
void reportUnreadFields(const std::vector<UnreadField> &fields);

} // namespace keldrin
