#pragma once

#include "toolkit/dialog_spec.h"

namespace keldrin {

extern const DialogSpec DataInputDialog;
extern const DialogSpec ReviewDialog;
extern const DialogSpec PlotLimitsDialog;
extern const DialogSpec MatchingLabelDialog;
extern const DialogSpec ConfigurationDialog;
extern const DialogSpec LineAzimuthDialog;
extern const DialogSpec EngineDialog;

} // namespace keldrin
