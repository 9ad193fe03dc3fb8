#pragma once

#include "line/line_columns.h"
#include "model/survey_model.h"
#include "sounding/page_layout.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// What the pages along the line share.

inline constexpr float SectionLeft = 2.2F; ///< of the plots, page cm
inline constexpr float SectionRight = 20.3F;

/// A number with about three digits.
std::string lineNumberText(double value);

/// Lines that stand above a page.
/// what  the page shows
std::vector<std::string> lineTitle(const ControlValues &control, std::string_view what,
                                   std::string_view path);
void drawLineTitle(std::span<const std::string> title);

/// The stretch that the columns take, which must be some.
Stretch distanceLimits(std::span<const LineColumn> columns);

/// Sets a plot up on a frame of the page, with distances on its X axis.
void setUpLinePlot(const PageFrame &frame, const Stretch &distances, double bottom, double top,
                   bool logarithmic);

/// Draws ticks and station numbers of the columns on top of the plot, as many as can be read.
void drawStations(std::span<const LineColumn> columns, std::span<const std::string> stations);

/// Draws the axis of distances below the plot.
void drawDistances(std::string_view lengthUnits);

/// A caption in small letters above the left or right corner of a frame.
void drawCaption(const PageFrame &frame, std::string_view text, bool right = false);

/// Marks a column with red lines along its sides.
void markColumn(const LineColumn &column, double bottom, double top);

} // namespace keldrin
