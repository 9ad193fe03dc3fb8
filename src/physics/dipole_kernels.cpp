#include "physics/dipole_kernels.h"

#include "physics/dipole_branches.h"
#include "physics/dipole_lanes.h"

namespace keldrin {

namespace {

constexpr float TwoPi = 6.2831855F;

template <class Kernel>
Response valueOf(const Kernel &kernel, float rho) {
    const DipoleDistance distance = dipoleDistance(rho);
    switch (kernel.branchOf(rho)) {
    case 0:
        return kernel.template at<0>(distance);
    case 1:
        return kernel.template at<1>(distance);
    case 2:
        return kernel.template at<2>(distance);
    default:
        return kernel.template at<3>(distance);
    }
}

} // namespace

Response Dipole_HKernel(float rho, float theta) {
    return valueOf(RadialKernel{theta}, rho);
}

Response Dipole_ZKernel(float rho, float theta) {
    return valueOf(VerticalKernel{theta}, rho);
}

HorizontalResponse Dipole_HSum(const DipolePlan &plan, float t, float s) {
    const auto [X, Y] = fastestDipoleSums().radial(plan, inverseDiffusionLength(t, s));
    const float scale = plan.area / (TwoPi * t);
    return {scale * X, scale * Y};
}

Response Dipole_ZSum(const DipolePlan &plan, float t, float s) {
    // By conductivity here, by time in the horizontal sum: the two kernels are scaled so.
    return (plan.area / (TwoPi * s)) *
           fastestDipoleSums().vertical(plan, inverseDiffusionLength(t, s));
}

HorizontalResponse Dipole_HSum(float x, float y, float Lx, float Ly, float t, float s) {
    return Dipole_HSum(makeDipolePlan(x, y, Lx, Ly), t, s);
}

Response Dipole_ZSum(float x, float y, float Lx, float Ly, float t, float s) {
    return Dipole_ZSum(makeDipolePlan(x, y, Lx, Ly), t, s);
}

} // namespace keldrin
