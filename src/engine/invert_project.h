#pragma once

#include "engine/engine_run.h"

#include <string>

namespace keldrin {

struct InvertOptions {
    bool forward = false; ///< compute the response of the models; change none
    bool fresh = false;   ///< as if there were no model file
};

/// What became of a project; the numbers are the program's exit codes.
enum class InvertResult {
    Done = 0,
    Failed = 1,  ///< cannot be read, holds no sounding, or cannot be written; reported by `fail`
    Stopped = 3, ///< both files are as they were
};

/// Inverts a project and writes its three calculated columns and its model file, both or neither.
/// run   threads, stop flag, and the sink for progress lines
/// fail  called once with the reason when the result is Failed
InvertResult invertProject(const std::string &path, const InvertOptions &options,
                           const EngineRun &run, const std::function<void(std::string_view)> &fail);

} // namespace keldrin
