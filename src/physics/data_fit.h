#pragma once

#include "model/survey_model.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace keldrin {

// How calculated data meet observed ones, in units of the errors: what the engine fits, and what
// pages and exports say of a project.

/// What a window's value is made of.
enum class DataKind {
    Signed,    ///< one component, with its sign
    Magnitude, ///< length of the vector of the components that are switched on
};

/// Loops that receive at their centre or with their own wire give signed Z. Fixed and moving loops
/// give magnitudes, unless one component alone is switched on and a stored value is negative.
DataKind dataKind(const ControlValues &control, const SoundingRecord &record);

/// The components X, Y, Z that a window's value is made of, and how many they are.
std::array<bool, ComponentAxes> switchedOn(const ControlValues &control,
                                           const SoundingRecord &record, std::size_t window);
int componentCount(const std::array<bool, ComponentAxes> &on);

/// True for a window that is fitted: not skipped, its true error below DataCutoff, its value finite
/// and below 1e18 nV/(A m2), and a component switched on.
bool isUsable(const ControlValues &control, const SoundingRecord &record, std::size_t window);

/// Error of a window in percent: its true error or, where that is smaller, ErrorFloor.
double errorPercent(const ControlValues &control, const SoundingRecord &record, std::size_t window);

/// Standard deviation of a window's value in nV/(A m2): its errorPercent() of
/// sqrt(value^2 + 1e-4), as the importers define the percentage.
double standardError(const ControlValues &control, const SoundingRecord &record,
                     std::size_t window);

/// Residual of an observed and a calculated value, in standard deviations `error` (above 0):
///
///     r = [asinh(d / 2e) - asinh(f / 2e)] sqrt(d^2 + 4 e^2) / e
///
/// logarithmic for good data, linear for noise.
double residual(double observed, double calculated, double error);

/// A calculated magnitude as it is compared with noisy ones: a length of n components, each with
/// this error, is on average sqrt(|B|^2 + n e^2) (Rice 1944).
double noisyMagnitude(double magnitude, int components, double error);

// Robust fitting (Huber 1964): beyond the threshold a residual counts linearly.

inline constexpr double UsualThreshold = 2.5;     ///< standard deviations
inline constexpr double MedianToDeviation = 1.48; ///< of a normal distribution

/// 2.5 max(1, 1.48 median |r|); 2.5 without data.
double huberThreshold(std::span<const double> residuals);

/// Weight of a residual in the normal equations, 0 to 1.
double huberWeight(double residual, double threshold);

/// Root of the mean of weighted squares: about 1 when errors are as stated. 0 without data.
double misfitOf(std::span<const double> residuals);

/// The fit of one sounding as a project holds it, from TEMobs and TEMcalc.
struct SoundingFit {
    std::vector<float> residuals; ///< by window, skipped ones too; missing without both values
    float misfit = MissingValue;  ///< misfitOf() the usable windows
    float median = MissingValue;  ///< of their sizes |r|
};

SoundingFit soundingFit(const ControlValues &control, const SoundingRecord &record);

/// How many layers the data see: those from the surface down whose sensitivity Rsns is 3 or more.
int seenLayers(const SoundingRecord &record);

} // namespace keldrin
