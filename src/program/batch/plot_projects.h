#pragma once

#include "program/batch/command.h"
#include "program/batch/plot_options.h"
#include "toolkit/scripted/answering_backend.h"

#include <string_view>

namespace keldrin {

/// A program that plots projects without a user.
struct PlotProgram {
    std::string_view name; ///< as its messages begin
    FormatChoice formats;
    AnsweringBackend &backend; ///< has the devices of its formats
};

/// Plots the projects that the words name (see readPlotOptions) with one line of output for each,
/// and says on stderr what is wrong with words that cannot be used. Projects are not changed.
/// returns  the exit code
int plotProjects(const PlotProgram &program, CommandWords words);

} // namespace keldrin
