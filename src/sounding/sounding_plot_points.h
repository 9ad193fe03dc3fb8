#pragma once

#include "model/survey_model.h"

#include <optional>
#include <vector>

namespace keldrin {

/// A value with its error bar.
struct ErrorPoint {
    float time = 0.0F; ///< msec
    float value = 0.0F;
    float halfBar = 0.0F; ///< ln(1 + percent/50), in ArcSinh units or as a logarithm
    bool skipped = false;
};

/// The corners of a curve.
struct CurvePoints {
    std::vector<float> time; ///< msec
    std::vector<float> value;
};

/// What the data plot of a sounding shows. Missing values and numbers that are not finite are
/// left out; skipped windows stay.
struct SoundingCurves {
    std::vector<ErrorPoint> observed;    ///< dB/dt
    std::vector<ErrorPoint> resistivity; ///< apparent, ohm-m
    CurvePoints calculated;              ///< dB/dt of the model
    CurvePoints calculatedResistivity;

    /// Root mean square of (observed - calculated) over the half bar; none without a window that
    /// has both.
    std::optional<float> residual;
};

/// errorFloor  percent; smaller errors count as this
SoundingCurves soundingCurves(const SoundingRecord &sounding, float errorFloor);

} // namespace keldrin
