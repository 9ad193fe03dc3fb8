#include "engine/sounding_data.h"

#include "base/index.h"
#include "base/sorting.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

constexpr std::size_t AxisZ = 2;
constexpr double LargestValue = 1.0E18; ///< nV/(A m2); above it a value is a dummy

bool isVectorArray(int surveyType) {
    return surveyType == FixedLoop || surveyType == MovingLoop;
}

/// A response of one component is that of Z.
std::array<bool, ComponentAxes> switchedOn(const SoundingRecord &record, std::size_t window,
                                           std::size_t components) {
    if (components == 1) {
        return {false, false, true};
    }
    const auto &weights = record.TEMwgt[window];
    return {weights[0] != 0.0F, weights[1] != 0.0F, weights[AxisZ] != 0.0F};
}

int countOf(const std::array<bool, ComponentAxes> &on) {
    return static_cast<int>(std::count(on.begin(), on.end(), true));
}

void findKind(const ControlValues &control, const SoundingRecord &record, SoundingData &data) {
    if (!isVectorArray(control.SurveyTypeIndex)) {
        return; // signed Z
    }
    bool negative = false;
    for (std::size_t k = 0; k < windowCount(record); ++k) {
        data.components = std::max(data.components, countOf(switchedOn(record, k, ComponentAxes)));
        negative = negative || record.TEMobs[k] < 0.0F;
    }
    data.kind = data.components == 1 && negative ? DataKind::Signed : DataKind::Magnitude;
}

bool isUsable(const ControlValues &control, const SoundingRecord &record, std::size_t k) {
    const auto observed = static_cast<double>(record.TEMobs[k]);
    const bool vector = isVectorArray(control.SurveyTypeIndex);
    return !isSkipped(record.TEMerr[k]) && trueError(record.TEMerr[k]) < control.DataCutoff &&
           std::fabs(observed) < LargestValue &&
           (!vector || countOf(switchedOn(record, k, ComponentAxes)) > 0);
}

/// Values and derivatives of the components of one window, in the axes of the line.
struct WindowField {
    std::array<double, ComponentAxes> value{};
    std::array<double *, ComponentAxes> row{}; ///< null without derivatives
};

/// Computes the response; horizontal components are turned to the line's axes.
void computeField(const SoundingPlan &plan, const LayeredEarth &earth, bool withJacobian,
                  ResponseRoom &room) {
    const auto layers = static_cast<std::size_t>(earth.lnResistivity.size());
    const std::size_t windows = plan.plan.windows();
    const std::size_t count = windows * plan.plan.components();
    room.values.resize(count);
    room.jacobian.resize(withJacobian ? count * layers : 0);
    layeredResponse(plan.plan, {earth.lnResistivity.data(), layers}, earth.thickness,
                    room.workspace, room.values, room.jacobian);
    if (plan.plan.components() == 1) {
        return;
    }
    for (std::size_t k = 0; k < windows; ++k) {
        turnToLine(plan, room.values[k], room.values[windows + k]);
        for (std::size_t l = 0; withJacobian && l < layers; ++l) {
            turnToLine(plan, room.jacobian[k * layers + l],
                       room.jacobian[(windows + k) * layers + l]);
        }
    }
}

WindowField fieldOf(const SoundingPlan &plan, ResponseRoom &room, std::size_t layers,
                    std::size_t k) {
    const std::size_t windows = plan.plan.windows();
    WindowField field;
    const std::size_t components = plan.plan.components();
    for (std::size_t c = 0; c < components; ++c) {
        const std::size_t axis = components == 1 ? AxisZ : c;
        field.value[axis] = room.values[c * windows + k];
        field.row[axis] =
            room.jacobian.empty() ? nullptr : &room.jacobian[(c * windows + k) * layers];
    }
    return field;
}

/// A value as it is compared with the observed one, and its derivatives.
double measured(const WindowField &field, const std::array<bool, ComponentAxes> &on, DataKind kind,
                double noise, Eigen::RowVectorXd &derivatives) {
    if (kind == DataKind::Signed) {
        for (std::size_t axis = 0; axis < ComponentAxes; ++axis) {
            if (on[axis]) {
                if (field.row[axis] != nullptr) {
                    derivatives =
                        Eigen::Map<Eigen::RowVectorXd>(field.row[axis], derivatives.size());
                }
                return field.value[axis];
            }
        }
        return 0.0;
    }
    double square = countOf(on) * noise * noise;
    derivatives.setZero();
    for (std::size_t axis = 0; axis < ComponentAxes; ++axis) {
        if (on[axis]) {
            square += field.value[axis] * field.value[axis];
            if (field.row[axis] != nullptr) {
                derivatives += field.value[axis] *
                               Eigen::Map<Eigen::RowVectorXd>(field.row[axis], derivatives.size());
            }
        }
    }
    const double length = std::sqrt(square);
    if (length > 0.0) {
        derivatives /= length;
    }
    return length;
}

} // namespace

SoundingData usableData(const ControlValues &control, const SoundingRecord &record) {
    constexpr double absoluteFloor =
        1.0E-4; // (nV/(A m2))^2, as the importers define the percentage
    SoundingData data;
    findKind(control, record, data);
    for (std::size_t k = 0; k < windowCount(record); ++k) {
        if (isUsable(control, record, k)) {
            data.windows.push_back(k);
        }
    }
    const auto count = static_cast<Eigen::Index>(data.windows.size());
    data.observed.resize(count);
    data.stated.resize(count);
    data.uniform = count > 0;
    double first = 0.0; // percentage
    for (Eigen::Index i = 0; i < count; ++i) {
        const std::size_t k = data.windows[asIndex(i)];
        const auto value = static_cast<double>(record.TEMobs[k]);
        const auto percent =
            static_cast<double>(std::max(trueError(record.TEMerr[k]), control.ErrorFloor));
        data.observed[i] = value;
        data.stated[i] = percent / 100.0 * std::sqrt(value * value + absoluteFloor);
        first = i == 0 ? percent : first;
        data.uniform = data.uniform && percent == first;
    }
    data.error = data.stated;
    return data;
}

void computeResiduals(const SoundingRecord &record, const SoundingPlan &plan,
                      const SoundingData &data, const LayeredEarth &earth, bool withJacobian,
                      ResponseRoom &room, Residuals &out) {
    const auto count = static_cast<Eigen::Index>(data.windows.size());
    const Eigen::Index layers = earth.lnResistivity.size();
    out.r.resize(count);
    out.jacobian.resize(withJacobian ? count : 0, layers);
    out.calculated.resize(count);
    if (count == 0) {
        return;
    }
    computeField(plan, earth, withJacobian, room);
    Eigen::RowVectorXd derivatives(layers);
    for (Eigen::Index i = 0; i < count; ++i) {
        const std::size_t k = data.windows[asIndex(i)];
        const double e = data.error[i];
        const double d = data.observed[i];
        const double f =
            measured(fieldOf(plan, room, static_cast<std::size_t>(layers), k),
                     switchedOn(record, k, plan.plan.components()), data.kind, e, derivatives);
        out.calculated[i] = f;
        const double slope = std::sqrt(d * d + 4.0 * e * e) / e;
        out.r[i] = (std::asinh(d / (2.0 * e)) - std::asinh(f / (2.0 * e))) * slope;
        if (withJacobian) {
            out.jacobian.row(i) = derivatives * (-slope / std::sqrt(f * f + 4.0 * e * e));
        }
    }
}

std::vector<float> calculatedData(const SoundingRecord &record, const SoundingPlan &plan,
                                  DataKind kind, const LayeredEarth &earth, ResponseRoom &room) {
    computeField(plan, earth, false, room);
    std::vector<float> values(windowCount(record), MissingValue);
    Eigen::RowVectorXd none;
    for (std::size_t k = 0; k < values.size(); ++k) {
        const auto on = switchedOn(record, k, plan.plan.components());
        if (countOf(on) > 0) {
            values[k] =
                static_cast<float>(measured(fieldOf(plan, room, 0, k), on, kind, 0.0, none));
        }
    }
    return values;
}

double huberThreshold(const Eigen::VectorXd &r) {
    constexpr double threshold = 2.5;
    constexpr double medianToDeviation = 1.48;
    if (r.size() == 0) {
        return threshold;
    }
    std::vector<double> sizes(static_cast<std::size_t>(r.size()));
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        sizes[i] = std::fabs(r[static_cast<Eigen::Index>(i)]);
    }
    return threshold * std::max(1.0, medianToDeviation * upperMedian(std::move(sizes)));
}

double huberSum(const Eigen::VectorXd &r, double threshold) {
    double sum = 0.0;
    for (const double value : r) {
        const double size = std::fabs(value);
        sum += size <= threshold ? value * value : threshold * (2.0 * size - threshold);
    }
    return sum;
}

double misfitOf(const Eigen::VectorXd &r) {
    if (r.size() == 0) {
        return 0.0;
    }
    const double threshold = huberThreshold(r);
    double sum = 0.0;
    for (const double value : r) {
        sum += huberWeight(value, threshold) * value * value;
    }
    return std::sqrt(sum / static_cast<double>(r.size()));
}

} // namespace keldrin
