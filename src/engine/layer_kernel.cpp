// This file is compiled once for each kind of processor, with a name of its own for what it
// exports. The compiler may contract products and sums here, and only here.

#include "engine/layer_kernel.h"

#include "engine/vector_math.h"

#include <cmath>

#ifndef KELDRIN_KERNEL
#define KELDRIN_KERNEL PlainKernel
#define KELDRIN_KERNEL_NAME "plain"
#endif

namespace keldrin {

namespace {

// Below a damping of exp(-DeepEnough) each way nothing is seen: the layer is taken as the last one.
constexpr double DeepEnough = 12.0;

constexpr std::size_t Lanes = KernelLanes;

// Four values for every lane of a layer. First u and du/dln(rho), which the upward recursion
// replaces by dY/dY of the next layer and dY/dln(rho).
struct alignas(8) LayerLanes {
    double aRe[Lanes], aIm[Lanes];
    double bRe[Lanes], bIm[Lanes];
};

struct SumLanes {
    double re[Lanes], im[Lanes];
};

struct Complex {
    double re, im;
};
inline Complex operator+(Complex a, Complex b) {
    return {a.re + b.re, a.im + b.im};
}
inline Complex operator-(Complex a, Complex b) {
    return {a.re - b.re, a.im - b.im};
}
inline Complex operator*(Complex a, Complex b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
inline Complex operator*(double a, Complex b) {
    return {a * b.re, a * b.im};
}
inline Complex inverse(Complex a) {
    const double scale = 1.0 / (a.re * a.re + a.im * a.im);
    return {a.re * scale, -a.im * scale};
}

// u = sqrt(lambda^2 + s mu0/rho) and du/dln(rho) = -s mu0/(2 rho u). The root is taken of the part
// that does not cancel; the imaginary part of its argument is above 0.
void layerRoots(const double *__restrict wavenumber, Complex k, LayerLanes &__restrict layer) {
    for (std::size_t i = 0; i < Lanes; ++i) {
        const double re = wavenumber[i] * wavenumber[i] + k.re;
        const double size = std::sqrt(re * re + k.im * k.im);
        const double larger = std::sqrt(0.5 * (size + std::fabs(re)));
        const double scale = 0.5 / (larger * size);
        const double smaller = k.im * (scale * size);
        const double uRe = re < 0.0 ? smaller : larger;
        const double uIm = re < 0.0 ? larger : smaller;
        const double half = scale * larger; // 1 / (2 |u|^2)
        layer.aRe[i] = uRe;
        layer.aIm[i] = uIm;
        layer.bRe[i] = -half * (k.re * uRe + k.im * uIm);
        layer.bIm[i] = -half * (k.im * uRe - k.re * uIm);
    }
}

// Fills the layers down to the one that counts as the last; returns its index.
std::size_t rootsDown(const LayerKernelTask &task, const double *wavenumber, LayerLanes *layers) {
    double damping = 0.0;
    for (std::size_t k = 0; k + 1 < task.layers; ++k) {
        layerRoots(wavenumber, task.muOverRho[k] * Complex{task.sRe, task.sIm}, layers[k]);
        damping += layers[k].aRe[0] * task.thickness[k]; // the real part rises with the wavenumber
        if (damping > DeepEnough) {
            return k;
        }
    }
    const std::size_t last = task.layers - 1;
    layerRoots(wavenumber, task.muOverRho[last] * Complex{task.sRe, task.sIm}, layers[last]);
    return last;
}

// Surface admittance Y of a layer of thickness h from that of the next one (Ward and Hohmann 1988):
//   Y = u N/D,  N = (u + Y') - (u - Y') e,  D = (u + Y') + (u - Y') e,  e = exp(-2 u h)
// and its derivatives
//   dY/dY' = 4 u^2 e/D^2,   dY/du = N/D + 4 u e (h (u^2 - Y'^2) - Y')/D^2
template <bool Slopes>
void admittance(double h, LayerLanes &__restrict layer, SumLanes &__restrict Y) {
    constexpr double mostDamping = 80.0; // in e; nothing is left then
    constexpr double largestAngle = 1.0e6;
    for (std::size_t i = 0; i < Lanes; ++i) {
        const Complex u = {layer.aRe[i], layer.aIm[i]};
        const Complex y = {Y.re[i], Y.im[i]};
        const double damping = 2.0 * h * u.re;
        const double turn = 2.0 * h * u.im;
        const double size = expOfNegative(damping < mostDamping ? -damping : -mostDamping);
        const SineCosine angle = sineCosine(turn < largestAngle ? turn : largestAngle);
        const Complex e = {size * angle.cosine, -size * angle.sine};
        const Complex sum = u + y;
        const Complex difference = u - y;
        const Complex reflected = difference * e;
        const Complex inverseD = inverse(sum + reflected);
        const Complex ratio = (sum - reflected) * inverseD;
        const Complex above = u * ratio;
        Y.re[i] = above.re;
        Y.im[i] = above.im;
        if constexpr (Slopes) {
            const Complex x = 4.0 * ((u * inverseD) * (e * inverseD));
            const Complex byNext = x * u;
            const Complex byRoot = ratio + x * (h * (sum * difference) - y);
            const Complex byRho = byRoot * Complex{layer.bRe[i], layer.bIm[i]};
            layer.aRe[i] = byNext.re;
            layer.aIm[i] = byNext.im;
            layer.bRe[i] = byRho.re;
            layer.bIm[i] = byRho.im;
        }
    }
}

// R = (lambda - Y)/(lambda + Y); Y becomes dR/dY.
void reflection(const double *__restrict wavenumber, SumLanes &__restrict Y,
                SumLanes &__restrict R) {
    for (std::size_t i = 0; i < Lanes; ++i) {
        const double lambda = wavenumber[i];
        const Complex w = inverse({lambda + Y.re[i], Y.im[i]});
        const Complex r = Complex{lambda - Y.re[i], -Y.im[i]} * w;
        const Complex slope = (-2.0 * lambda) * (w * w);
        R.re[i] = r.re;
        R.im[i] = r.im;
        Y.re[i] = slope.re;
        Y.im[i] = slope.im;
    }
}

// dR/dln(rho) of a layer into the sums of all components; P, the product of the derivatives above,
// takes in this layer's.
template <std::size_t Components>
void addSlope(const LayerLanes &__restrict layer, const double *const *weight,
              SumLanes &__restrict P, SumLanes *__restrict sums) {
    for (std::size_t i = 0; i < Lanes; ++i) {
        const Complex p = {P.re[i], P.im[i]};
        const Complex slope = p * Complex{layer.bRe[i], layer.bIm[i]};
        const Complex next = p * Complex{layer.aRe[i], layer.aIm[i]};
        P.re[i] = next.re;
        P.im[i] = next.im;
        for (std::size_t c = 0; c < Components; ++c) {
            sums[c].re[i] += weight[c][i] * slope.re;
            sums[c].im[i] += weight[c][i] * slope.im;
        }
    }
}

Complex total(const SumLanes &sum) {
    const auto of = [](const double *v) {
        return ((v[0] + v[1]) + (v[2] + v[3])) + ((v[4] + v[5]) + (v[6] + v[7]));
    };
    return {of(sum.re), of(sum.im)};
}

template <bool Slopes, std::size_t Components>
void sumBlocks(LayerKernelTask &task) {
    auto *layers = reinterpret_cast<LayerLanes *>(task.scratch);
    auto *slopes = reinterpret_cast<SumLanes *>(task.scratch + task.layers * Lanes * 4);
    for (std::size_t i = 0; Slopes && i < task.layers * Components; ++i) {
        slopes[i] = SumLanes{};
    }
    SumLanes sums[Components] = {};
    for (std::size_t block = 0; block < task.blocks; ++block) {
        const double *wavenumber = task.wavenumber + block * Lanes;
        const double *weight[Components];
        for (std::size_t c = 0; c < Components; ++c) {
            weight[c] = task.weight[c] + block * Lanes;
        }
        const std::size_t last = rootsDown(task, wavenumber, layers);
        SumLanes Y;
        for (std::size_t i = 0; i < Lanes; ++i) {
            Y.re[i] = layers[last].aRe[i];
            Y.im[i] = layers[last].aIm[i];
        }
        for (std::size_t k = last; k-- > 0;) {
            admittance<Slopes>(task.thickness[k], layers[k], Y);
        }
        SumLanes R;
        reflection(wavenumber, Y, R);
        for (std::size_t c = 0; c < Components; ++c) {
            for (std::size_t i = 0; i < Lanes; ++i) {
                sums[c].re[i] += weight[c][i] * R.re[i];
                sums[c].im[i] += weight[c][i] * R.im[i];
            }
        }
        for (std::size_t k = 0; Slopes && k <= last; ++k) {
            addSlope<Components>(layers[k], weight, Y, slopes + k * Components);
        }
    }
    for (std::size_t c = 0; c < Components; ++c) {
        const Complex sum = total(sums[c]);
        task.sumRe[c] = sum.re;
        task.sumIm[c] = sum.im;
        for (std::size_t k = 0; Slopes && k < task.layers; ++k) {
            const Complex slope = total(slopes[k * Components + c]);
            task.slopeRe[c][k] = slope.re;
            task.slopeIm[c][k] = slope.im;
        }
    }
}

void sums(LayerKernelTask &task) {
    const bool slopes = task.slopeRe[0] != nullptr;
    if (task.components == 1) {
        slopes ? sumBlocks<true, 1>(task) : sumBlocks<false, 1>(task);
    } else {
        slopes ? sumBlocks<true, 3>(task) : sumBlocks<false, 3>(task);
    }
}

void addRows(const RowsTask &task) {
    for (std::size_t row = task.first; row < task.last; ++row) {
        const double mRe = task.mRe[row];
        const double mIm = task.mIm[row];
        double *__restrict target = task.target + row * task.length;
        const double *__restrict re = task.re;
        const double *__restrict im = task.im;
        for (std::size_t i = 0; i < task.length; ++i) {
            target[i] += mRe * im[i] + mIm * re[i];
        }
    }
}

} // namespace

extern const LayerKernel KELDRIN_KERNEL;
const LayerKernel KELDRIN_KERNEL = {KELDRIN_KERNEL_NAME, sums, addRows};

} // namespace keldrin
