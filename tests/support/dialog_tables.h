#pragma once

#include "conditioning/auto_skip_dialog.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/long_work.h"

#include <algorithm>
#include <vector>

namespace keldrin {

/// Every dialog of the program.
inline const std::vector<const DialogSpec *> DialogTables = {
    &DataInputDialog,   &ReviewDialog,        &PlotLimitsDialog,
    &AutoSkipDialog,    &MatchingLabelDialog, &ConfigurationDialog,
    &LineAzimuthDialog, &EngineDialog,        &ProgressDialog};

inline const DialogSpec &dialogTable(int number) {
    return **std::find_if(DialogTables.begin(), DialogTables.end(),
                          [=](const DialogSpec *table) { return table->number == number; });
}

} // namespace keldrin
