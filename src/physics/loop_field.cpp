#include "physics/loop_field.h"

#include "physics/dipole_kernels.h"
#include "physics/side_kernel.h"
#include "physics/wire_kernel.h"

#include <cmath>

namespace keldrin {

namespace {

constexpr float OnAxisHorizontal = 0.01F; ///< m
constexpr float OnAxisVertical = 0.001F;  ///< m

// The whole side lengths, not the half: at exactly |x| = Lx the receiver is still inside.
bool isOutside(float x, float y, float Lx, float Ly) {
    return std::fabs(x) > Lx || std::fabs(y) > Ly;
}

// Offsets of the sides from the receiver.
struct SideOffsets {
    float x1, x2, y1, y2;
};
SideOffsets sideOffsets(float x, float y, float Lx, float Ly) {
    return {-0.5F * Lx - x, 0.5F * Lx - x, -0.5F * Ly - y, 0.5F * Ly - y};
}

// Two opposite sides, their currents opposite: from a to b at offset w1 and back at w2.
Response wirePair(float a, float b, float w1, float w2, float t, float s) {
    const float q = diffusionScale(t, s);
    return Wire_Romberg(a, b, w1, t, q) + Wire_Romberg(b, a, w2, t, q);
}

Response insideX(float x, float y, float Lx, float Ly, float t, float s) {
    const SideOffsets side = sideOffsets(x, y, Lx, Ly);
    return wirePair(y - 0.5F * Ly, y + 0.5F * Ly, side.x1, side.x2, t, s);
}
Response insideY(float x, float y, float Lx, float Ly, float t, float s) {
    const SideOffsets side = sideOffsets(x, y, Lx, Ly);
    return wirePair(side.x1, side.x2, side.y1, side.y2, t, s);
}

// The four sides at a receiver off both axes. Single precision would lose the small difference of
// the eight ends.
Response fourSidesOffAxis(const SideOffsets &side, float s, float q) {
    const auto &[x1, x2, y1, y2] = side;
    const auto K = [s, q](float a, float b) {
        return Side_ZKernelD(a, b, s, q);
    };
    return (K(x2, y1) - K(x1, y1)) + (K(x1, y2) - K(x2, y2)) + (K(-y2, x2) - K(-y1, x2)) +
           (K(-y1, x1) - K(-y2, x1));
}

// The same on one axis or both, where symmetry folds equal terms.
Response fourSidesOnAxis(const SideOffsets &side, bool xIsZero, bool yIsZero, float s, float q) {
    const auto &[x1, x2, y1, y2] = side;
    const auto K = [s, q](float a, float b) {
        return Side_ZKernel(a, b, s, q);
    };
    if (xIsZero && yIsZero) {
        return 4.0F * (K(x1, y2) + K(y1, x2));
    }
    if (xIsZero) {
        return 2.0F * K(x2, y1) + 2.0F * K(x1, y2) + (K(-y2, x2) - K(-y1, x2)) +
               (K(-y1, x1) - K(-y2, x1));
    }
    return (K(x2, y1) - K(x1, y1)) + (K(x1, y2) - K(x2, y2)) + 2.0F * K(-y2, x2) +
           2.0F * K(-y1, x1);
}

// X and Y together, for the price of one where a single dipole sum gives both.
HorizontalResponse horizontalField(const LoopView &view, float t, bool wantX, bool wantY, float s) {
    const float x = view.x;
    const float y = view.y;
    wantX = wantX && std::fabs(x) >= OnAxisHorizontal;
    wantY = wantY && std::fabs(y) >= OnAxisHorizontal;
    if (!wantX && !wantY) {
        return {};
    }
    if (view.outside) {
        const HorizontalResponse both = Dipole_HSum(view.dipoles, t, s);
        return {wantX ? both.X : Response{}, wantY ? both.Y : Response{}};
    }
    return {wantX ? insideX(x, y, view.Lx, view.Ly, t, s) : Response{},
            wantY ? insideY(x, y, view.Lx, view.Ly, t, s) : Response{}};
}

Response verticalField(const LoopView &view, float t, float s) {
    if (view.outside) {
        return Dipole_ZSum(view.dipoles, t, s);
    }
    const SideOffsets side = sideOffsets(view.x, view.y, view.Lx, view.Ly);
    const float q = diffusionScale(t, s);
    const bool xIsZero = std::fabs(view.x) < OnAxisVertical;
    const bool yIsZero = std::fabs(view.y) < OnAxisVertical;
    return xIsZero || yIsZero ? fourSidesOnAxis(side, xIsZero, yIsZero, s, q)
                              : fourSidesOffAxis(side, s, q);
}

} // namespace

LoopView loopView(float x, float y, float Lx, float Ly) {
    LoopView view{x, y, Lx, Ly, isOutside(x, y, Lx, Ly), {}};
    if (view.outside) {
        view.dipoles = makeDipolePlan(x, y, Lx, Ly);
    }
    return view;
}

Response Loop_FieldX(float x, float y, float Lx, float Ly, float t, float s) {
    return horizontalField(loopView(x, y, Lx, Ly), t, true, false, s).X;
}

Response Loop_FieldY(float x, float y, float Lx, float Ly, float t, float s) {
    return horizontalField(loopView(x, y, Lx, Ly), t, false, true, s).Y;
}

Response Loop_FieldZ(float x, float y, float Lx, float Ly, float t, float s) {
    return verticalField(loopView(x, y, Lx, Ly), t, s);
}

Response Loop_Field(const LoopView &view, float t, const ComponentWords &words, float s) {
    const bool wantX = words[0] != 0.0F;
    const bool wantY = words[1] != 0.0F;
    const bool wantZ = words[2] != 0.0F;
    const auto [X, Y] = horizontalField(view, t, wantX, wantY, s);
    const Response Z = wantZ ? verticalField(view, t, s) : Response{};
    const float R = std::sqrt(X.R * X.R + Y.R * Y.R + Z.R * Z.R);
    if (!(R > 1.0e-30F)) {
        return {R, 0.0F};
    }
    return {R, (X.R * X.S + Y.R * Y.S + Z.R * Z.S) / R};
}

Response Loop_Field(float x, float y, float Lx, float Ly, float t, const ComponentWords &words,
                    float s) {
    return Loop_Field(loopView(x, y, Lx, Ly), t, words, s);
}

} // namespace keldrin
