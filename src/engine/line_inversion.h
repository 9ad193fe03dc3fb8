#pragma once

#include "engine/engine_run.h"
#include "engine/smoothness.h"
#include "engine/sounding_data.h"

#include <span>
#include <string>
#include <vector>

namespace keldrin {

/// One sounding of a line that is inverted.
struct LineSounding {
    const SoundingRecord *record = nullptr;
    const SoundingPlan *plan = nullptr;
    SoundingData data; ///< may be empty: the model then comes from neighbours and background
    LayerPrior prior;
    Eigen::VectorXd m; ///< in: starting model; out: the result; ln of ohm-m

    // What is known of the result.
    double misfit = 0.0;         ///< see misfitOf(); 0 without data
    double statedMisfit = 0.0;   ///< the same by the errors of the file
    bool noisier = false;        ///< errors were estimated, and exceed those of the file
    double scale = 1.0;          ///< by which errors had to be taken larger, at least 1
    Eigen::VectorXd deviation;   ///< posterior standard deviation of m
    Eigen::VectorXd sensitivity; ///< see invertLine()
};

struct LineInversion {
    std::vector<LineSounding> soundings;
    std::vector<double> links; ///< between neighbours, see lateralLinks()
    SmoothnessWeights weights;
    int iterations = 8; ///< at most
};

enum class LineResult { Done, Stopped, Failed };

/// How an inversion went.
struct LineSummary {
    int iterations = 0;
    bool converged = false;
    int withData = 0;          ///< soundings; the misfits are 0 when there are none
    double medianMisfit = 0.0; ///< of soundings with data
    int noisier = 0;           ///< soundings whose estimated errors exceed those of the file
    double statedMisfit = 0.0; ///< median of all soundings with data, by the errors of the file
    double largestMisfit = 0.0;
};

/// True when every value of ln(resistivity) is within 0.01 to 100,000 ohm-m, where models are held.
bool isHeldModel(const Eigen::VectorXd &m);

/// Fits the models of a line together: Gauss-Newton on the sum of the robust misfit of each
/// sounding divided by the square of its scale, the smoothness of each model (smoothness.h), and
/// the lateral links. Says the misfit after each iteration.
///
/// The scale of a sounding is max(1, 0.6 times its misfit), renewed with each iteration and never
/// raised: it cools the first iterations, and keeps data that no model can meet from roughening
/// the model. It is the whole misfit where a file states one percentage for all windows: errors
/// that nobody has measured claim no more than what the models leave over. No iteration raises the
/// objective. Ends when no ln(resistivity) moves by 0.01, or the objective falls by less than 0.2
/// percent.
///
/// Where a file states one percentage for all windows of a sounding, `data.error` becomes the noise
/// that its data show (noise_estimate.h), where that is larger. It is renewed with each iteration
/// and never raised.
///
/// Afterwards `deviation` is the square root of the diagonal of the inverse of the line's matrix,
/// with scales of max(1, misfit). `sensitivity` of a layer is by how many standard deviations the
/// data change when everything from this layer down changes by a factor e (idea: Christiansen and
/// Auken 2012): it falls with depth, and below 3 the data hardly see.
///
/// returns  Failed when the equations could not be solved; models are then as they were
LineResult invertLine(LineInversion &line, const EngineRun &run, LineSummary &summary);

} // namespace keldrin
