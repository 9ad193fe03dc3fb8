#include "engine/line_inversion.h"

#include "base/index.h"
#include "base/number_text.h"
#include "base/sorting.h"
#include "engine/line_system.h"
#include "engine/noise_estimate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace keldrin {

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

constexpr double LongestStep = 2.5;    ///< in ln(resistivity)
const double LeastLn = std::log(0.01); ///< of ohm-m
const double MostLn = std::log(1.0E5); ///< of ohm-m
constexpr double SmallestMove = 0.01;  ///< in ln(resistivity)
constexpr double SmallestGain = 0.002; ///< of the objective
constexpr double MeasuredShare = 0.6;  ///< of the misfit that becomes the scale
constexpr double UniformShare = 1.0;   ///< the same where one percentage stands for all windows
constexpr std::array OwnParts = {1.0, 0.5, 0.25, 0.125}; ///< of a step, tried by each sounding
constexpr std::array CommonParts = {1.0, 0.5, 0.25, 0.125, 0.0625}; ///< tried by the whole line

VectorXd heldModel(const VectorXd &m) {
    return m.cwiseMax(LeastLn).cwiseMin(MostLn);
}

/// With two decimals, in any locale.
std::string decimals(double value) {
    return std::string(trimLeft(formatReal("(F20.2)", value)));
}

/// What the data say about a sounding at one model.
struct DataState {
    VectorXd m;
    VectorXd r;
    MatrixXd matrix;   ///< J^T w J
    VectorXd gradient; ///< J^T w r
    VectorXd sensitivity;
    VectorXd scatter; ///< see scatterOf(); empty when errors are measured
};

/// A sounding while it is fitted.
struct Fitting {
    DataState state;
    VectorXd noise; ///< see noiseNear(), the least of all iterations
    double threshold = 2.5;
    double scale = std::numeric_limits<double>::infinity();
    double damping = 0.0;
    VectorXd proposed;
    DataState trial; ///< the step that was taken, until the line has agreed
    double part = 0.0;
};

class LineFit {
  public:
    LineFit(LineInversion &line, const EngineRun &run)
        : line_(line), run_(run), quiet_{run.threads, run.stop}, fits_(line.soundings.size()) {}

    LineResult run(LineSummary &summary);

  private:
    [[nodiscard]] int count() const { return static_cast<int>(fits_.size()); }
    [[nodiscard]] LineSounding &sounding(int i) { return line_.soundings[asIndex(i)]; }
    [[nodiscard]] Fitting &fit(int i) { return fits_[asIndex(i)]; }
    [[nodiscard]] double link(int i) const { return line_.links[asIndex(i)]; }

    void evaluate(int i, const VectorXd &m, DataState &state);
    bool renewErrors();
    void renewErrorsOf(int i);
    void renewScale(int i);
    void setNormalEquations(int i, DataState &state, double threshold);
    bool begin();
    bool formSystem(LineSystem &system);
    LineResult iterate(double &move, double &gain);
    void propose(const std::vector<VectorXd> &solution);
    bool tryOwnParts();
    double ownObjective(int i, const DataState &state);
    double dataAndSmoothness(int i, const DataState &state);
    double lineObjective(bool ofTrials);
    bool tryCommonParts(double before);
    double accept();
    LineResult finish(LineSummary &summary);
    void compareWithStated(int i);
    void summarise(LineSummary &summary);
    void summariseErrors(LineSummary &summary);
    void say(int iteration, const LineSummary &summary);

    LineInversion &line_;
    const EngineRun &run_;
    EngineRun quiet_; ///< without progress
    std::vector<Fitting> fits_;
};

// Residuals and, for the threshold that holds now, what they add to the normal equations. The
// derivatives themselves are not kept: a long line would fill the memory.
void LineFit::evaluate(int i, const VectorXd &m, DataState &state) {
    thread_local ResponseRoom room;
    thread_local Residuals residuals;
    LineSounding &s = sounding(i);
    computeResiduals(*s.record, *s.plan, s.data, {m, s.prior.thickness}, true, room, residuals);
    state.m = m;
    state.r = residuals.r;
    if (s.data.uniform) {
        state.scatter = scatterOf(s.data, residuals.calculated);
    }
    const double threshold = huberThreshold(valuesOf(state.r));
    const MatrixXd &jacobian = residuals.jacobian;
    VectorXd weights(state.r.size());
    for (Eigen::Index k = 0; k < weights.size(); ++k) {
        weights[k] = huberWeight(state.r[k], threshold);
    }
    const MatrixXd weighted = weights.asDiagonal() * jacobian;
    state.matrix.noalias() = jacobian.transpose() * weighted;
    state.gradient.noalias() = weighted.transpose() * state.r;
    VectorXd below = VectorXd::Zero(state.r.size());
    state.sensitivity.resize(m.size());
    for (Eigen::Index layer = m.size() - 1; layer >= 0; --layer) {
        below += jacobian.col(layer);
        state.sensitivity[layer] = below.norm();
    }
}

void LineFit::renewScale(int i) {
    Fitting &f = fit(i);
    f.threshold = huberThreshold(valuesOf(f.state.r));
    const double share = sounding(i).data.uniform ? UniformShare : MeasuredShare;
    f.scale = std::min(f.scale, std::max(1.0, share * misfitOf(valuesOf(f.state.r))));
}

// The noise that the models at hand leave over. It never rises, as an estimate that may rise feeds
// on itself.
bool LineFit::renewErrors() {
    std::vector<SoundingScatter> scatters;
    scatters.reserve(asIndex(count()));
    for (int i = 0; i < count(); ++i) {
        scatters.push_back({sounding(i).record, &sounding(i).data, &fit(i).state.scatter});
    }
    return forEachItem(count(), quiet_,
                       [&](int i) {
                           const VectorXd noise = noiseNear(scatters, asIndex(i));
                           VectorXd &least = fit(i).noise;
                           least = least.size() == 0 ? noise : VectorXd(least.cwiseMin(noise));
                       }) &&
           forEachItem(count(), quiet_, [&](int i) {
               renewErrorsOf(i);
               renewScale(i);
           });
}

void LineFit::renewErrorsOf(int i) {
    constexpr double noteworthy = 0.05;
    SoundingData &data = sounding(i).data;
    const VectorXd error = data.stated.cwiseMax(fit(i).noise);
    const VectorXd change = (error - data.error).cwiseAbs();
    if ((change.array() > noteworthy * data.error.array()).any()) {
        data.error = error;
        evaluate(i, VectorXd(fit(i).state.m), fit(i).state);
    }
}

bool LineFit::begin() {
    return forEachItem(count(), run_,
                       [&](int i) { evaluate(i, heldModel(sounding(i).m), fit(i).state); }) &&
           renewErrors();
}

bool LineFit::formSystem(LineSystem &system) {
    const auto blocks = fits_.size();
    system.diagonal.resize(blocks);
    system.right.resize(blocks);
    system.link = line_.links;
    return forEachItem(count(), quiet_, [&](int i) {
        const auto at = asIndex(i);
        const Fitting &f = fit(i);
        const double share = 1.0 / (f.scale * f.scale);
        MatrixXd &matrix = system.diagonal[at];
        matrix = f.state.matrix * share;
        VectorXd gradient = f.state.gradient * share;
        addSmoothness(sounding(i).prior, line_.weights, f.state.m, matrix, gradient);
        double diagonal = f.damping;
        for (const int k : {i - 1, i}) { // the link to the sounding before, and after
            const int neighbour = k < i ? i - 1 : i + 1;
            if (neighbour >= 0 && neighbour < count() && link(k) != 0.0) {
                diagonal += link(k);
                gradient += link(k) * (f.state.m - fit(neighbour).state.m);
            }
        }
        matrix.diagonal().array() += diagonal;
        system.right[at] = -gradient;
    });
}

void LineFit::propose(const std::vector<VectorXd> &solution) {
    for (int i = 0; i < count(); ++i) {
        const VectorXd step = solution[asIndex(i)].cwiseMax(-LongestStep).cwiseMin(LongestStep);
        fit(i).proposed = heldModel(fit(i).state.m + step);
    }
}

double LineFit::dataAndSmoothness(int i, const DataState &state) {
    const Fitting &f = fit(i);
    return huberSum(state.r, f.threshold) / (f.scale * f.scale) +
           smoothnessSum(sounding(i).prior, line_.weights, state.m);
}

// The neighbours stand at their proposed models.
double LineFit::ownObjective(int i, const DataState &state) {
    double sum = dataAndSmoothness(i, state);
    if (i > 0 && link(i - 1) != 0.0) {
        sum += link(i - 1) * (state.m - fit(i - 1).proposed).squaredNorm();
    }
    if (i + 1 < count() && link(i) != 0.0) {
        sum += link(i) * (state.m - fit(i + 1).proposed).squaredNorm();
    }
    return sum;
}

double LineFit::lineObjective(bool ofTrials) {
    double sum = 0.0;
    for (int i = 0; i < count(); ++i) {
        const DataState &state = ofTrials ? fit(i).trial : fit(i).state;
        sum += dataAndSmoothness(i, state);
        if (i + 1 < count() && link(i) != 0.0) {
            const DataState &next = ofTrials ? fit(i + 1).trial : fit(i + 1).state;
            sum += link(i) * (state.m - next.m).squaredNorm();
        }
    }
    return sum;
}

bool LineFit::tryOwnParts() {
    return forEachItem(count(), run_, [&](int i) {
        Fitting &f = fit(i);
        const double before = ownObjective(i, f.state);
        for (const double part : OwnParts) {
            evaluate(i, f.state.m + part * (f.proposed - f.state.m), f.trial);
            if (ownObjective(i, f.trial) <= before) {
                f.part = part;
                return;
            }
        }
        f.part = 0.0;
        f.trial = f.state;
    });
}

// Single soundings that went their own way may have raised the objective of the line. The step of
// all together is a descent direction, so some part of it lowers it.
bool LineFit::tryCommonParts(double before) {
    for (const double part : CommonParts) {
        const bool complete = forEachItem(count(), run_, [&](int i) {
            Fitting &f = fit(i);
            evaluate(i, f.state.m + part * (f.proposed - f.state.m), f.trial);
            f.part = part;
        });
        if (!complete) {
            return false;
        }
        if (lineObjective(true) < before) {
            return true;
        }
    }
    for (Fitting &f : fits_) {
        f.part = 0.0;
        f.trial = f.state;
    }
    return true;
}

/// Takes the trials; returns the largest move.
double LineFit::accept() {
    constexpr double relief = 0.3;
    constexpr double pressure = 4.0;
    constexpr double negligible = 0.01;
    double move = 0.0;
    for (int i = 0; i < count(); ++i) {
        Fitting &f = fit(i);
        move = std::max(move, (f.trial.m - f.state.m).cwiseAbs().maxCoeff());
        if (f.part == 0.0) {
            f.damping = f.damping > 0.0 ? pressure * f.damping : 1.0;
        } else if (f.part == 1.0) {
            f.damping = relief * f.damping < negligible ? 0.0 : relief * f.damping;
        }
        f.state = std::move(f.trial);
        f.trial = {}; // a long line would fill the memory
    }
    return move;
}

LineResult LineFit::iterate(double &move, double &gain) {
    LineSystem system;
    std::vector<VectorXd> solution;
    if (!formSystem(system)) {
        return LineResult::Stopped;
    }
    const SolveStatus status = solveLine(std::move(system), quiet_, solution);
    if (status != SolveStatus::Solved) {
        return status == SolveStatus::Stopped ? LineResult::Stopped : LineResult::Failed;
    }
    propose(solution);
    const double before = lineObjective(false);
    if (!tryOwnParts() || (lineObjective(true) > before && !tryCommonParts(before))) {
        return LineResult::Stopped;
    }
    gain = before - lineObjective(true);
    gain = before > 0.0 ? gain / before : 0.0;
    move = accept();
    return renewErrors() ? LineResult::Done : LineResult::Stopped;
}

void LineFit::summarise(LineSummary &summary) {
    std::vector<double> misfits;
    for (int i = 0; i < count(); ++i) {
        sounding(i).misfit = misfitOf(valuesOf(fit(i).state.r));
        if (fit(i).state.r.size() > 0) {
            misfits.push_back(sounding(i).misfit);
        }
    }
    summary.withData = static_cast<int>(misfits.size());
    if (!misfits.empty()) {
        summary.medianMisfit = upperMedian(misfits);
        summary.largestMisfit = *std::max_element(misfits.begin(), misfits.end());
    }
}

// How well the models fit by the errors that the file states.
void LineFit::compareWithStated(int i) {
    LineSounding &s = sounding(i);
    s.statedMisfit = s.misfit;
    s.noisier = (s.data.error.array() > s.data.stated.array()).any();
    if (s.noisier) {
        thread_local ResponseRoom room;
        SoundingData data = s.data;
        data.error = data.stated;
        Residuals residuals;
        computeResiduals(*s.record, *s.plan, data, {s.m, s.prior.thickness}, false, room,
                         residuals);
        s.statedMisfit = misfitOf(valuesOf(residuals.r));
    }
}

void LineFit::summariseErrors(LineSummary &summary) {
    std::vector<double> misfits;
    for (int i = 0; i < count(); ++i) {
        summary.noisier += sounding(i).noisier ? 1 : 0;
        if (!sounding(i).data.windows.empty()) {
            misfits.push_back(sounding(i).statedMisfit);
        }
    }
    summary.statedMisfit = upperMedian(misfits);
}

LineResult LineFit::finish(LineSummary &summary) {
    summarise(summary);
    for (int i = 0; i < count(); ++i) {
        LineSounding &s = sounding(i);
        s.m = fit(i).state.m;
        s.scale = fit(i).scale;
        s.sensitivity = fit(i).state.sensitivity;
        fit(i).scale = std::max(1.0, s.misfit);
        fit(i).damping = 0.0;
    }
    if (!forEachItem(count(), quiet_, [&](int i) { compareWithStated(i); })) {
        return LineResult::Stopped;
    }
    summariseErrors(summary);
    LineSystem system;
    std::vector<VectorXd> variances;
    if (!formSystem(system)) {
        return LineResult::Stopped;
    }
    const SolveStatus status = lineVariances(std::move(system), quiet_, variances);
    if (status != SolveStatus::Solved) {
        return status == SolveStatus::Stopped ? LineResult::Stopped : LineResult::Failed;
    }
    for (int i = 0; i < count(); ++i) {
        sounding(i).deviation = variances[asIndex(i)].cwiseMax(0.0).cwiseSqrt();
    }
    return LineResult::Done;
}

void LineFit::say(int iteration, const LineSummary &summary) {
    const std::string misfit = summary.withData == 0
                                   ? "no data to fit"
                                   : "misfit median " + decimals(summary.medianMisfit) +
                                         ", largest " + decimals(summary.largestMisfit);
    run_.say("iteration " + std::to_string(iteration) + " of " + std::to_string(line_.iterations) +
             ": " + misfit);
}

LineResult LineFit::run(LineSummary &summary) {
    summary = {};
    if (fits_.empty()) {
        return LineResult::Done;
    }
    if (!begin()) {
        return LineResult::Stopped;
    }
    while (summary.iterations < line_.iterations && !summary.converged) {
        double move = 0.0;
        double gain = 0.0;
        const LineResult result = iterate(move, gain);
        if (result != LineResult::Done) {
            return result;
        }
        ++summary.iterations;
        summarise(summary);
        say(summary.iterations, summary);
        summary.converged = move < SmallestMove || gain < SmallestGain;
    }
    return finish(summary);
}

} // namespace

bool isHeldModel(const VectorXd &m) {
    constexpr double rounding = 1.0E-4; // of resistivities in model files
    return (m - heldModel(m)).cwiseAbs().maxCoeff() < rounding;
}

LineResult invertLine(LineInversion &line, const EngineRun &run, LineSummary &summary) {
    return LineFit(line, run).run(summary);
}

} // namespace keldrin
