#include "keywords/length_units.h"

#include "base/index.h"
#include "model/enumerations.h"

#include <array>

namespace keldrin {

namespace {

float metresPer(int unit) {
    return LengthUnitMetres[asIndex((unit == Feet ? Feet : Metres) - 1)];
}

} // namespace

void settleAssumedLengths(Metadata &metadata, int before, int stated) {
    const std::array<SourcedLength *, 6> lengths = {&metadata.Tx.LengthX, &metadata.Tx.LengthY,
                                                    &metadata.Rx.ASpace,  &metadata.Rx.LengthX,
                                                    &metadata.Rx.LengthY, &metadata.Rx.SetupLength};
    for (SourcedLength *length : lengths) {
        if (length->unitAssumed && before != stated) {
            length->value *= metresPer(stated) / metresPer(before);
        }
        length->unitAssumed = false;
    }
}

void adoptUnits(Metadata &metadata, const UnitMetadata &units) {
    const int before = metadata.Unit.Length.value;
    metadata.Unit = units;
    if (units.Length.level > 0) {
        settleAssumedLengths(metadata, before, units.Length.value);
    }
}

} // namespace keldrin
