#pragma once

#include <array>
#include <span>

namespace keldrin {

// Interpolation in tables. R4 works in single precision, R8 in double; the rest is the same.
//
// X and Y hold NP points, NP being the length of the shorter; X rises. An empty table reports one
// error and gives 0, a table of one point gives its Y. S holds the slopes left of X(1) and right
// of X(NP); one of 1e6 or more in magnitude means "not given", and the end interval is extended.
// In a falling table every x counts as outside. `hint`, where given, speeds up a walk through the
// table: it holds the last index and plays no part in the result.
//
// The programs call P1Intrp_R8 alone; the others complete the documented family.

/// Stands for an end slope that is not given.
inline constexpr double SlopeNotGiven = 1.0e6;

/// Piecewise linear. The mean of two points that are not more than 1e-20 apart.
float P1Intrp_R4(std::span<const float> X, std::span<const float> Y, const std::array<float, 2> &S,
                 float x, int *hint = nullptr);
double P1Intrp_R8(std::span<const double> X, std::span<const double> Y,
                  const std::array<double, 2> &S, double x, int *hint = nullptr);

/// Piecewise cubic with slopes of parabolas through three points (tension 0), of the chord
/// (tension 1) or in between. The mean of two points that are not more than 1e-5 apart.
float P2Intrp_R4(std::span<const float> X, std::span<const float> Y, const std::array<float, 2> &S,
                 float tension, float x, int *hint = nullptr);
double P2Intrp_R8(std::span<const double> X, std::span<const double> Y,
                  const std::array<double, 2> &S, double tension, double x, int *hint = nullptr);

/// The same for a table with X at X1, X1 + DX, ...; held flat beyond its ends.
float P2Intrp0_DX_R4(float X1, float DX, std::span<const float> Y, float tension, float x);
double P2Intrp0_DX_R8(double X1, double DX, std::span<const double> Y, double tension, double x);

} // namespace keldrin
