#include "conditioning/configuration_change.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

template <auto value>
bool differs(const ControlValues &before, const ControlValues &after) {
    return before.*value != after.*value;
}

/// A control value and the arrays whose resistivities it enters.
struct Dependency {
    bool (*differs)(const ControlValues &, const ControlValues &);
    bool fixedLoop;
    bool movingLoop;
    bool inLoop; ///< and Coincident-Loop

    [[nodiscard]] bool counts(int array) const {
        return array == FixedLoop ? fixedLoop : array == MovingLoop ? movingLoop : inLoop;
    }
};

// No array's resistivities depend on turns, weights or waveform points.
constexpr std::array Dependencies = {
    Dependency{differs<&ControlValues::SurveyTypeIndex>, true, true, true},
    Dependency{differs<&ControlValues::LengthUnitsIndex>, true, true, true},
    Dependency{differs<&ControlValues::XTxLength>, true, true, true},
    Dependency{differs<&ControlValues::YTxLength>, true, true, true},
    Dependency{differs<&ControlValues::TxRamp>, true, true, true},
    Dependency{differs<&ControlValues::TxFreq>, true, true, true},
    Dependency{differs<&ControlValues::TxAzimuth>, true, true, false},
    Dependency{differs<&ControlValues::XTxCenter>, true, false, false},
    Dependency{differs<&ControlValues::YTxCenter>, true, false, false},
    Dependency{differs<&ControlValues::LineAzimuth>, false, true, false},
    Dependency{differs<&ControlValues::StnScale>, false, true, false},
    Dependency{differs<&ControlValues::YRxOffset>, false, true, false},
};

} // namespace

bool changesResistivities(const ControlValues &before, const ControlValues &after) {
    return std::any_of(Dependencies.begin(), Dependencies.end(), [&](const Dependency &value) {
        return value.counts(after.SurveyTypeIndex) && value.differs(before, after);
    });
}

} // namespace keldrin
