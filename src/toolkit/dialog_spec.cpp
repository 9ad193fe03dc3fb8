#include "toolkit/dialog_spec.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

constexpr std::array Dialogs = {&DataInputDialog,   &ReviewDialog,        &PlotLimitsDialog,
                                &AutoSkipDialog,    &MatchingLabelDialog, &ConfigurationDialog,
                                &LineAzimuthDialog, &EngineDialog,        &ProgressDialog};

} // namespace

const DialogSpec *findDialogSpec(int number) {
    const auto *found = std::find_if(Dialogs.begin(), Dialogs.end(),
                                     [=](const DialogSpec *d) { return d->number == number; });
    return found == Dialogs.end() ? nullptr : *found;
}

} // namespace keldrin
