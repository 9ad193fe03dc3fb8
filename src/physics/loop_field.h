#pragma once

#include "physics/dipole_plan.h"
#include "physics/response.h"

#include <array>

namespace keldrin {

// Response of the rectangular loop at a receiver anywhere on the surface. A receiver with
// |x| > Lx or |y| > Ly (the whole sides, not the half) is outside, and the loop is a grid of
// dipoles; within that box it is four wires.

/// Word of each component, X Y Z; one that is not zero switches the component on.
using ComponentWords = std::array<float, 3>;

/// A receiver and a loop, with what all their field values share.
struct LoopView {
    float x;
    float y;
    float Lx;
    float Ly;
    bool outside;
    DipolePlan dipoles; ///< of a receiver outside; else not set
};
LoopView loopView(float x, float y, float Lx, float Ly);

/// Magnitude of the components that are switched on; never negative. A component that is off is
/// not computed. The slope is 0 where the magnitude is 1e-30 or less.
Response Loop_Field(const LoopView &view, float t, const ComponentWords &words, float s);

/// The same for one value, with a view of its own; for tests and benchmarks.
Response Loop_Field(float x, float y, float Lx, float Ly, float t, const ComponentWords &words,
                    float s);

/// Magnitudes below this one come out as 0, for the squares of their components underflow: the root
/// of the smallest normal number, V/(A m2).
inline constexpr float LeastLoopField = 1.0842022e-19F;

/// Horizontal components; 0 nearer than 0.01 m to the axis on which they vanish. Programs take them
/// through Loop_Field, tests one by one.
Response Loop_FieldX(float x, float y, float Lx, float Ly, float t, float s);
Response Loop_FieldY(float x, float y, float Lx, float Ly, float t, float s);

/// Vertical component.
Response Loop_FieldZ(float x, float y, float Lx, float Ly, float t, float s);

} // namespace keldrin
