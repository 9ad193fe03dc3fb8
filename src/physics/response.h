#pragma once

#include <cmath>

namespace keldrin {

// What all kernels of this folder share.
//
// A kernel gives minus dB/dt after the transmitter current of one ampere was switched off in a
// step, on the surface of a uniform half-space, per square metre of receiver coil: T/s per ampere,
// which is V/(A m2). Z is up; the loop's moment is up, so Z is positive inside the loop. Lengths
// are metres, t is seconds after the step, s is the conductivity in S/m. The loop lies on the
// surface, centred on the origin, with sides Lx and Ly along the axes; (x, y) is the receiver.
//
// Kernels are pure functions of their arguments, safe on any thread. They are meant for t and s
// above 0; other arguments, NaN and infinity included, give some number, possibly not finite, and
// never a trap or a loop without end. Arithmetic is single precision except where it says double.

/// Magnetic permeability of free space, H/m.
inline constexpr float Mu0 = 1.2566371e-6F;

/// A value with its derivative by the logarithm of conductivity.
struct Response {
    float R = 0.0F; ///< value
    float S = 0.0F; ///< dR / d ln(conductivity)
};

constexpr Response operator+(Response a, Response b) {
    return {a.R + b.R, a.S + b.S};
}
constexpr Response operator-(Response a, Response b) {
    return {a.R - b.R, a.S - b.S};
}
constexpr Response operator*(float factor, Response a) {
    return {factor * a.R, factor * a.S};
}

/// Diffusion scale q = t / (mu0 s), m2.
inline float diffusionScale(float t, float s) {
    return t / (Mu0 * s);
}

/// theta = sqrt(mu0 s / (4 t)), 1/m.
inline float inverseDiffusionLength(float t, float s) {
    return std::sqrt(Mu0 * s / (4.0F * t));
}

} // namespace keldrin
