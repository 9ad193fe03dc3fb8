#pragma once

#include "model/survey_model.h"

#include <span>
#include <vector>

namespace keldrin {

// Where the soundings stand along the line, and which stretch of it each one stands for.

/// A part of an axis, from its lower to its upper end.
struct Stretch {
    double from = 0.0;
    double to = 0.0;
};

/// The cells of places in rising order. A cell reaches half way to its neighbours; where the
/// spacing is wider than three times the median, and at both ends, by half the nearer spacing but
/// not by more than half the median. Equal places share their cell in equal parts.
/// lone  width of the cell where all places are equal
std::vector<Stretch> cellsOf(std::span<const double> places, double lone);

/// The stretch of the line that a sounding stands for. Distances are LengthUnits from the first
/// sounding that is shown, along the path from one to the next, so that a line that doubles back
/// goes on.
struct LineColumn {
    int sounding = 0; ///< ordinal from 1
    double place = 0.0;
    double left = 0.0;
    double right = 0.0;
};

/// The columns of all soundings but those of other transmitters, in the order of the project. The
/// places come from East and North where all have them, else from Station and StnScale; a sounding
/// without a place is left out. The place of a sounding of another transmitter stays empty where it
/// lies between two that are shown.
std::vector<LineColumn> lineColumns(const SurveyModel &survey);

/// The column that holds a distance, as an index; -1 in a gap and beyond the ends.
int columnAt(std::span<const LineColumn> columns, double distance);

} // namespace keldrin
