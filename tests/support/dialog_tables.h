#pragma once

#include "conditioning/auto_skip_dialog.h"
#include "conditioning/configuration_dialog.h"
#include "conditioning/data_input_dialog.h"
#include "conditioning/line_azimuth_dialog.h"
#include "review/review_panel.h"
#include "review/values_dialog.h"
#include "shell/engine_dialog.h"
#include "shell/matching_label_dialog.h"
#include "sounding/plot_limits_dialog.h"
#include "toolkit/long_work.h"

#include <algorithm>
#include <vector>

namespace keldrin {

/// Every dialog of the program.
inline const std::vector<const DialogSpec *> DialogTables = {
    &DataInputDialog,     &ReviewDialog,        &PlotLimitsDialog,  &AutoSkipDialog,
    &MatchingLabelDialog, &ConfigurationDialog, &LineAzimuthDialog, &EngineDialog,
    &ProgressDialog,      &LiveAutoSkipDialog,  &ValuesDialog};

inline const DialogSpec &dialogTable(int number) {
    return **std::find_if(DialogTables.begin(), DialogTables.end(),
                          [=](const DialogSpec *table) { return table->number == number; });
}

} // namespace keldrin
