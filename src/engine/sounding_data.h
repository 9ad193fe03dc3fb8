#pragma once

#include "engine/survey_plans.h"
#include "model/survey_model.h"

#include <Eigen/Core>
#include <cmath>
#include <vector>

namespace keldrin {

/// What a window's value is made of.
enum class DataKind {
    Signed,    ///< one component, with its sign
    Magnitude, ///< length of the vector of the components that are switched on
};

/// The usable data of a sounding: windows that are not skipped, whose true error is below
/// DataCutoff, and whose values are finite and below 1e18 nV/(A m2). Loops that receive at their
/// centre or with their own wire give signed Z. Fixed and moving loops give magnitudes, unless one
/// component alone is switched on and a stored value of the sounding is negative.
struct SoundingData {
    DataKind kind = DataKind::Signed;
    int components = 1;               ///< most that a value is made of
    std::vector<std::size_t> windows; ///< of the record, from 0
    Eigen::VectorXd observed;         ///< nV/(A m2)
    Eigen::VectorXd stated;           ///< standard deviation by the file, nV/(A m2), above 0
    Eigen::VectorXd error;            ///< the one that is used; at least the stated one
    bool uniform = false;             ///< all windows state the same percentage
};

SoundingData usableData(const ControlValues &control, const SoundingRecord &record);

/// Response of a sounding's models, with the room that its computation needs. One for each thread.
struct ResponseRoom {
    ResponseWorkspace workspace;
    std::vector<double> values;
    std::vector<double> jacobian;
};

/// One layered earth: ln of resistivity in ohm-m, and thickness in m of all layers but the last.
struct LayeredEarth {
    const Eigen::VectorXd &lnResistivity;
    const std::vector<double> &thickness; ///< may hold one for the last layer too
};

/// Residuals of the usable data and their derivatives by lnResistivity.
///
///     r = [asinh(d / 2e) - asinh(f / 2e)] sqrt(d^2 + 4 e^2) / e
///
/// with observed d, calculated f and error e: logarithmic for good data, linear for noise, of unit
/// deviation for both. A magnitude of n noisy components is on average longer than that of the
/// field (Rice 1944); it is compared with sqrt(|B|^2 + n e^2).
struct Residuals {
    Eigen::VectorXd r;          ///< of each datum
    Eigen::MatrixXd jacobian;   ///< a row for each datum; empty when not asked for
    Eigen::VectorXd calculated; ///< what the observed value is compared with
};

void computeResiduals(const SoundingRecord &record, const SoundingPlan &plan,
                      const SoundingData &data, const LayeredEarth &earth, bool withJacobian,
                      ResponseRoom &room, Residuals &out);

/// Calculated values of all windows in nV/(A m2), as they are compared with TEMobs; missing where
/// no component is switched on.
std::vector<float> calculatedData(const SoundingRecord &record, const SoundingPlan &plan,
                                  DataKind kind, const LayeredEarth &earth, ResponseRoom &room);

// Robust fitting (Huber 1964): beyond the threshold a residual counts linearly.

/// 2.5 max(1, 1.48 median |r|); 2.5 without data.
double huberThreshold(const Eigen::VectorXd &r);
/// Weight of a residual in the normal equations, 0 to 1.
inline double huberWeight(double r, double threshold) {
    const double size = std::fabs(r);
    return size <= threshold ? 1.0 : threshold / size;
}
/// Sum of r^2, or of 2 threshold |r| - threshold^2 beyond the threshold.
double huberSum(const Eigen::VectorXd &r, double threshold);
/// Root of the mean of weighted squares: about 1 when errors are as stated. 0 without data.
double misfitOf(const Eigen::VectorXd &r);

} // namespace keldrin
