#pragma once

#include "model/survey_model.h"

#include <span>

namespace keldrin {

/// Sorts the soundings by (TxStn, RxStn), each rounded to single precision: station numbers of
/// many digits lose their low digits in the sort. The order of equal soundings is not preserved.
void SortByTxRx(SurveyModel &model);

/// Merges all soundings of one station pair into one, whatever their frequency, in sorted order.
/// A sounding that names no receiver is received at its station, and one that names no transmitter
/// is transmitted at its receiver, so that formats without these keys keep their soundings apart.
///
/// returns  0 in all cases
int AverageDuplicateTransients(SurveyModel &model);

/// Merges the readings, at least one, into a record, which may be the first of them. Windows within
/// 0.1 percent of a window's first time become one, weighted by inverse squared error; the merged
/// error is the weighted mean of the errors. At most 128 windows stay.
///
/// returns  0 in all cases
int MergeTransients(SoundingRecord &record, std::span<const SoundingRecord> readings);

} // namespace keldrin
