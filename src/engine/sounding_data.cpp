#include "engine/sounding_data.h"

#include "base/index.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

/// A response of one component is that of Z.
std::array<bool, ComponentAxes> componentsOf(const SoundingRecord &record, std::size_t window,
                                             std::size_t components) {
    if (components == 1) {
        return {false, false, true};
    }
    const auto &weights = record.TEMwgt[window];
    return {weights[0] != 0.0F, weights[1] != 0.0F, weights[AxisZ] != 0.0F};
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
        const std::size_t axis = components == 1 ? std::size_t{AxisZ} : c;
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
    double square = componentCount(on) * noise * noise;
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
    SoundingData data;
    data.kind = dataKind(control, record);
    for (std::size_t k = 0; k < windowCount(record); ++k) {
        data.components = std::max(data.components, componentCount(switchedOn(control, record, k)));
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
        const double percent = errorPercent(control, record, k);
        data.observed[i] = static_cast<double>(record.TEMobs[k]);
        data.stated[i] = standardError(control, record, k);
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
                     componentsOf(record, k, plan.plan.components()), data.kind, e, derivatives);
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
        const auto on = componentsOf(record, k, plan.plan.components());
        if (componentCount(on) > 0) {
            values[k] =
                static_cast<float>(measured(fieldOf(plan, room, 0, k), on, kind, 0.0, none));
        }
    }
    return values;
}

double huberSum(const Eigen::VectorXd &r, double threshold) {
    double sum = 0.0;
    for (const double value : r) {
        const double size = std::fabs(value);
        sum += size <= threshold ? value * value : threshold * (2.0 * size - threshold);
    }
    return sum;
}

} // namespace keldrin
