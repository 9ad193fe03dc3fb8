#include "toolkit/long_work.h"

namespace keldrin {

namespace {

constexpr auto Controls = workControls("Cancel");

} // namespace

const DialogSpec ProgressDialog = {.number = 122, .caption = "Please wait", .controls = Controls};

} // namespace keldrin
