#pragma once

#include "toolkit/dialog_form.h"

#include <vector>

namespace keldrin {

/// Tells the user which fields of a dialog could not be read, what was typed there and what stands,
/// in one message of up to five fields; nothing where all were read.
void reportUnreadFields(const std::vector<UnreadField> &fields);

} // namespace keldrin
