#pragma once

#include "model/metadata.h"

namespace keldrin {

/// Takes a length unit (1 m, 2 ft) that a file states after lengths which it gave without one:
/// those were read in the unit of before and are now in the stated one.
void settleAssumedLengths(Metadata &metadata, int before, int stated);

/// Takes the units that a whole file states, as before the first of its records.
void adoptUnits(Metadata &metadata, const UnitMetadata &units);

} // namespace keldrin
