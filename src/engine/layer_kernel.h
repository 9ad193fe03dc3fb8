#pragma once

#include <cstddef>
#include <numbers>

namespace keldrin {

/// Magnetic permeability of the ground, that of free space. H/m
inline constexpr double VacuumPermeability = 4.0e-7 * std::numbers::pi;

// The reflection of a layered earth at a row of wavenumbers and one complex frequency, summed with
// weights, and its derivatives by all layers. Pointers must not overlap, nor be null unless stated.

/// Wavenumbers are worked on in blocks of so many.
inline constexpr std::size_t KernelLanes = 8;
inline constexpr std::size_t KernelComponents = 3;

struct LayerKernelTask {
    std::size_t layers = 0;
    const double *muOverRho = nullptr; ///< mu0 over resistivity of each layer, s/m2
    const double *thickness = nullptr; ///< m, of all layers but the last
    double sRe = 0.0;                  ///< complex frequency, 1/s; the imaginary part above 0
    double sIm = 0.0;
    const double *wavenumber = nullptr; ///< 1/m, rising, `blocks` times KernelLanes
    std::size_t blocks = 0;
    std::size_t components = 0;                  ///< 1 to KernelComponents
    const double *weight[KernelComponents] = {}; ///< of each wavenumber, for each component

    double sumRe[KernelComponents] = {}; ///< result: sum of weight times R
    double sumIm[KernelComponents] = {};
    /// Result: derivatives of the sums by ln(resistivity), `layers` of them; null: not wanted.
    double *slopeRe[KernelComponents] = {};
    double *slopeIm[KernelComponents] = {};
    double *scratch = nullptr; ///< scratchSize() doubles
};

/// Doubles that a task of so many layers needs as scratch.
constexpr std::size_t kernelScratchSize(std::size_t layers) {
    return layers * KernelLanes * (4 + 2 * KernelComponents);
}

/// target[row][i] += Im(m[row] (re[i] + i im[i])) for the rows from `first` to `last`.
struct RowsTask {
    std::size_t first = 0;
    std::size_t last = 0;
    const double *mRe = nullptr;
    const double *mIm = nullptr;
    std::size_t length = 0;
    const double *re = nullptr;
    const double *im = nullptr;
    double *target = nullptr; ///< rows of `length`
};

/// The two loops in which the time goes, as compiled for one kind of processor. Data of
/// different kernels agree to 1e-9 of each value, derivatives to 1e-8.
struct LayerKernel {
    const char *name;
    void (*sums)(LayerKernelTask &task);
    void (*addRows)(const RowsTask &task);
};

extern const LayerKernel PlainKernel;

/// The fastest kernel that this processor runs. KELDRIN_KERNEL=plain in the environment, or avx2,
/// asks for another one; unknown names, and what the processor lacks, are ignored.
const LayerKernel &fastestKernel();

/// All kernels that this processor runs; the plain one is the first. Ends with a null. For tests,
/// which compare them.
const LayerKernel *const *availableKernels();

} // namespace keldrin
