#include "physics/ares_context.h"

#include "base/index.h"
#include "physics/coincident.h"
#include "physics/gauss_rules.h"
#include "physics/loop_center.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

constexpr float NanovoltsPerVolt = 1.0e9F;

bool isArrayType(int type) {
    return type >= FixedLoop && type <= CoincidentLoop;
}

// Step response of the sounding's array at time t, in V/(A m2).
Response stepResponse(const ARes_Context &c, float t, float conductivity) {
    switch (c.iTemArray) {
    case InLoop:
        return Loop_CenterZ(c.xLength, c.yLength, t, conductivity);
    case CoincidentLoop: {
        const Response loop = Loop_CoincidentZ(c.radius, t, conductivity);
        return {loop.R / c.area, loop.S / c.area};
    }
    default:
        return Loop_Field(c.receiver, t, c.weights[c.window], conductivity);
    }
}

AResResidual residualOf(const ARes_Context &context, Response response) {
    const float R = response.R * NanovoltsPerVolt;
    const float S = response.S * NanovoltsPerVolt;
    return {ArcSinh(R) - context.target, S / std::sqrt(R * R + 1.0F)};
}

// The longer the ramp against the time, the more points. No ramp gives an infinite ratio.
GaussRuleView rampRule(float centre, float ramp) {
    const float ratio = centre / ramp;
    if (ratio > 200.0F) {
        return viewOf(Gauss1);
    }
    if (ratio > 4.0F) {
        return viewOf(Gauss3);
    }
    return ratio > 1.0F ? viewOf(Gauss5) : viewOf(Gauss9);
}

Response averagedResponse(const ARes_Context &c, float conductivity) {
    const float lower = c.lowerEdge[c.window];
    const float length = c.upperEdge[c.window] - lower;
    const GaussRuleView rule = rampRule(c.centre[c.window], c.ramp);
    Response sum;
    for (std::size_t i = 0; i < Gauss5.nodes.size(); ++i) {
        for (std::size_t j = 0; j < rule.nodes.size(); ++j) {
            const float t =
                rule.nodes[j] * c.ramp + Gauss5.nodes[i] * length + (lower - 0.5F * c.ramp);
            const Response step = stepResponse(c, t, conductivity);
            sum.R += step.R * Gauss5.weights[i] * rule.weights[j];
            sum.S += step.S * Gauss5.weights[i] * rule.weights[j];
        }
    }
    return sum;
}

// Takes off the steps of earlier half periods, at the centre time alone.
Response withRepetitions(const ARes_Context &c, float conductivity, Response sum) {
    constexpr int mostTerms = 33;
    float t = c.centre[c.window];
    for (int n = 0; n < mostTerms; ++n) {
        t += 0.25F / c.frequency;
        const Response step = stepResponse(c, t, conductivity);
        // Every term has the same minus sign, though the steps alternate: apparent resistivities
        // of existing projects are held to it.
        sum = sum - step;
        if (std::fabs(step.R / sum.R) < 0.01F) {
            break;
        }
    }
    return sum;
}

} // namespace

ARes_Context contextOf(const AResInput &input) {
    ARes_Context context;
    context.iTemArray = input.iTemArray;
    context.xLength = input.xLength;
    context.yLength = input.yLength;
    context.area = input.xLength * input.yLength;
    context.radius = std::sqrt(context.area / 3.1415927F);
    context.ramp = input.ramp * 1.0e-6F;
    context.frequency = input.freq;
    if (input.iTemArray == FixedLoop || input.iTemArray == MovingLoop) {
        context.receiver = loopView(input.rxX, input.rxY, input.xLength, input.yLength);
    }
    context.ntw = input.ntw;
    const float half = input.ramp * 5.0e-7F;
    for (std::size_t k = 0; k < asIndex(input.ntw); ++k) {
        const float w = 0.5F * input.twWidth[k];
        const float g = std::sqrt(input.twCenter[k] * input.twCenter[k] + w * w);
        context.centre[k] = input.twCenter[k] * 0.001F + half;
        context.lowerEdge[k] = (g - w) * 0.001F + half;
        context.upperEdge[k] = (g + w) * 0.001F + half;
        context.weights[k] = input.weights[k];
    }
    return context;
}

AResResidual ARes_ResidCenter(const ARes_Context &context, float x) {
    if (!isArrayType(context.iTemArray)) {
        return {1.0e32F, 1.0F};
    }
    return residualOf(context, stepResponse(context, context.centre[context.window], std::exp(x)));
}

AResResidual ARes_ResidWindow(const ARes_Context &context, float x) {
    if (!isArrayType(context.iTemArray)) {
        return {1.0e32F, 1.0F};
    }
    const float conductivity = std::exp(x);
    Response response = averagedResponse(context, conductivity);
    if (std::fabs(response.R) > 1.0e-9F) {
        response = withRepetitions(context, conductivity, response);
    }
    return residualOf(context, response);
}

float floorResponse(const ARes_Context &context) {
    constexpr float floorConductivity = 1.0e-6F; ///< S/m
    const float t = context.centre[context.window];
    switch (context.iTemArray) {
    case InLoop:
        return Loop_CircleFloor(context.radius, t, floorConductivity);
    case CoincidentLoop:
        return Loop_CoincidentFloor(context.radius, t, floorConductivity);
    default:
        return std::max(stepResponse(context, t, floorConductivity).R, LeastLoopField);
    }
}

} // namespace keldrin
