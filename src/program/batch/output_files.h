#pragma once

#include "toolkit/scripted/answering_backend.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

/// What a command does with one of its files. `taken`: an earlier file of the run has given what
/// would be made of this one its name. False when it failed, which has then been reported.
using FileTask = std::function<bool(const std::string &file, bool taken)>;

/// Runs a command over its files with every question answered by its default: makes the output
/// directory, then gives each file to the task. Returns the exit code.
/// program  program and command, as messages begin
int runOverFiles(std::string_view program, AnsweringBackend &backend,
                 std::span<const std::string> files, const std::string &directory,
                 const FileTask &task);

} // namespace keldrin
