#pragma once

#include "engine/survey_plans.h"
#include "model/survey_model.h"
#include "physics/data_fit.h"

#include <Eigen/Core>
#include <span>
#include <vector>

namespace keldrin {

/// The usable data of a sounding: its windows that isUsable() takes.
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

/// The values of a vector.
inline std::span<const double> valuesOf(const Eigen::VectorXd &vector) {
    return {vector.data(), static_cast<std::size_t>(vector.size())};
}

/// Sum of r^2, or of 2 threshold |r| - threshold^2 beyond the threshold of a robust fit.
double huberSum(const Eigen::VectorXd &r, double threshold);

} // namespace keldrin
