#pragma once

#include "model/survey_model.h"
#include "physics/loop_field.h"

#include <array>
#include <span>

namespace keldrin {

// Apparent resistivity of one sounding: the resistivity of the half-space that would give the
// value of a window, for the sounding's own loop, receiver, ramp and repetition. Nothing here
// reports; what is to be said is returned and said by the caller in the order of the soundings.

/// One sounding's geometry and windows as apparent resistivity needs them.
struct AResInput {
    int iTemArray = 0;               ///< 1 Fixed-Loop, 2 Moving-Loop, 3 In-Loop, 4 Coincident-Loop
    float xLength = 0.0F;            ///< loop side along x, m
    float yLength = 0.0F;            ///< loop side along y, m
    float ramp = 0.0F;               ///< usec
    float freq = 0.0F;               ///< repetition, Hz
    float rxX = 0.0F;                ///< receiver from the loop's centre, m
    float rxY = 0.0F;                ///< m
    int ntw = 0;                     ///< windows in use; the spans hold at least as many
    std::span<const float> twCenter; ///< msec
    std::span<const float> twWidth;  ///< msec
    std::span<const ComponentWords> weights; ///< not zero switches a component on
};

/// What the residual functions know of a sounding while the solver walks its windows.
struct ARes_Context {
    int iTemArray = 0;
    float xLength = 0.0F;
    float yLength = 0.0F;
    float area = 0.0F;      ///< of the loop, m2
    float radius = 0.0F;    ///< of the circle of the same area, m
    float ramp = 0.0F;      ///< s
    float frequency = 0.0F; ///< Hz
    LoopView receiver{};    ///< of Fixed-Loop and Moving-Loop; else not set
    int ntw = 0;
    std::size_t window = 0;  ///< the current window, from 0
    WindowReals centre{};    ///< s after the middle of the ramp
    WindowReals lowerEdge{}; ///< s
    WindowReals upperEdge{}; ///< s
    std::array<ComponentWords, MaxWindows> weights{};
    float target = 0.0F; ///< ArcSinh of the value in nV/(A m2)
};

/// The context of a sounding that passed ARes_Check. The centre is taken as the geometric mean of
/// the window's edges and the width as their difference.
ARes_Context contextOf(const AResInput &input);

/// A misfit and its derivative by x, the logarithm of conductivity.
struct AResResidual {
    float f;
    float dfdx;
};

/// ArcSinh of the half-space response (in nV/(A m2)) less the target of the current window, at its
/// centre time. An unknown array type gives 1e32 and slope 1.
AResResidual ARes_ResidCenter(const ARes_Context &context, float x);

/// The same with the response averaged over ramp and window, and with the steps of earlier half
/// periods.
AResResidual ARes_ResidWindow(const ARes_Context &context, float x);

/// The response that no value can fall below, of a half-space of 1e-6 S/m, at the centre of the
/// current window. That of the coincident loop is not divided by the area; that of a loop's field
/// is at least LeastLoopField, for a smaller value would start the search where it has no slope.
float floorResponse(const ARes_Context &context);

} // namespace keldrin
