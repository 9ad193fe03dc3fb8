#pragma once

#include "model/survey_model.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace keldrin {

// The report of a survey: one PDF with a title page, the plan, the profiles, the section and all
// soundings, with a title, bookmarks and page numbers.

/// The file of a project's report: its path with "_report.pdf" in place of its extension.
std::string reportPath(std::string_view projectPath);

/// Draws the report into a file, which is written when all is drawn. Soundings without windows have
/// no page; without models the section shows apparent resistivities alone.
///
/// path     of the project, which the pages name
/// file     of the report
/// goOn     asked before page i of n; false drops the whole file
/// returns  false when it was stopped. A file that could not be written is in the error state
bool drawReport(const SurveyModel &survey, std::string_view path, const std::string &file,
                const std::function<bool(std::size_t i, std::size_t n)> &goOn);

} // namespace keldrin
