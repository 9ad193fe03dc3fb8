#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace keldrin {

// Many pages in one PDF.

/// The PDF of all pages of a project: the project's path with ".pdf" in place of its extension. A
/// document of that name that this program has not made is somebody's work; then the name ends in
/// "_soundings.pdf".
std::string plotDocumentPath(std::string_view projectPath);

/// Draws pages one after the other into one PDF, which is written when all are drawn.
/// draw     draws page i, from 0
/// goOn     asked before page i; false drops the whole file
/// returns  false when it was stopped. The error state reports a file that could not be written
bool plotPagesInOnePdf(const std::string &path, std::size_t pages,
                       const std::function<void(std::size_t i)> &draw,
                       const std::function<bool(std::size_t i)> &goOn);

/// Draws the pages of all soundings that have windows into one PDF beside the project, while the
/// user watches and may stop it. Logs what it does; a file that cannot be written is reported.
/// path        of the project
/// date, time  as Plot_AutoLimits() gives them
/// returns     0, or 1 when no file was to be written: no sounding has windows, or it was stopped
int Plot_AllSoundings(const SurveyModel &survey, const PlotLimits &limits, std::string_view path,
                      std::string_view date, std::string_view time);

} // namespace keldrin
