#pragma once

#include "model/survey_model.h"

#include <Eigen/Core>
#include <vector>

namespace keldrin {

/// The layers of a sounding and what is known of them without its data.
struct LayerPrior {
    std::vector<double> thickness; ///< m, of all layers; the last one is a half-space in responses
    Eigen::VectorXd background;    ///< ln of ohm-m
    Eigen::VectorXd deviation;     ///< of the background, in ln
    Eigen::VectorXd dzW;           ///< smoothness weight of each layer
};

/// Weights of the control block.
struct SmoothnessWeights {
    double dp = 1.0;
    double dx = 1.0;
    double dz = 3.0;
    double dzz = 1.0;
};
SmoothnessWeights smoothnessWeights(const ControlValues &control);

// A smooth model (Constable, Parker and Constable 1987) costs, beside its misfit, the squares of
//
//     dz/3  w_k (m_{k+1} - m_k) / sqrt(v_k)
//     dzz/3 sqrt(w_{k-1} w_k) [(m_{k+1} - m_k) / v_k - (m_k - m_{k-1}) / v_{k-1}] / sqrt(h_k)
//     dp    (m_k - background_k) / (deviation_k sqrt(n))
//
// where m is ln(resistivity) of n layers; v_k is 16 log10 of the ratio of the depths of two
// layers' middles, at least 0.1, so that layers of any spacing are equally smooth: at the default
// dz of 3 a step of factor e within 1/16 decade of depth costs 1. h_k is the mean of v_{k-1} and
// v_k, and w_k the geometric mean of two layers' dzW: a small dzW opens the boundary.

/// Adds half the derivatives of these squares at `m`: the matrix of second ones to `matrix`, the
/// vector of first ones to `gradient`.
void addSmoothness(const LayerPrior &prior, const SmoothnessWeights &weights,
                   const Eigen::VectorXd &m, Eigen::MatrixXd &matrix, Eigen::VectorXd &gradient);

/// The sum of the squares at `m`.
double smoothnessSum(const LayerPrior &prior, const SmoothnessWeights &weights,
                     const Eigen::VectorXd &m);

/// Weights of the squares (m_k - m_k of the next sounding)^2 along a line (Auken and Christiansen
/// 2004): (1.5 dx)^2 times the median spacing of the line over this one, held to 0.1..10. 0 where
/// the layers differ by more than the rounding of the model file.
/// spacings  from each sounding to the next, in any unit; one fewer than soundings
std::vector<double> lateralLinks(const std::vector<LayerPrior> &priors,
                                 const std::vector<double> &spacings,
                                 const SmoothnessWeights &weights);

} // namespace keldrin
