#include "engine/layer_kernel.h"
#include "engine/layered_sum.h"
#include "engine/response_cases.h"
#include "engine/vector_math.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace keldrin {
namespace {

TEST(VectorMath, ExpAndCircularFunctionsHaveTheStatedErrors) {
    double worstExp = 0.0;
    for (double x = -700.0; x <= 0.0; x += 0.0173) {
        worstExp = std::max(worstExp, std::fabs(expOfNegative(x) / std::exp(x) - 1.0));
    }
    EXPECT_LT(worstExp, 5.0e-16);
    EXPECT_EQ(expOfNegative(0.0), 1.0);
    struct Range {
        double end, error;
    };
    for (const auto &[end, error] :
         {Range{100.0, 4.0e-16}, Range{1.0e4, 1.0e-15}, Range{1.0e6, 1.0e-13}}) {
        double worst = 0.0;
        for (double x = 0.0; x <= end; x += end / 40000.0) {
            const SineCosine value = sineCosine(x);
            worst = std::max({worst, std::fabs(value.sine - std::sin(x)),
                              std::fabs(value.cosine - std::cos(x))});
        }
        EXPECT_LT(worst, error) << end;
    }
}

TEST(LayerKernels, AgreeWithOneAnother) {
    const ResponsePlan plan =
        planOf({100, 80, 90, 10, 1, false, true}, rampWindows(8, 5e-5, 1e-5, 1e-2, 15));
    const std::vector<double> rho = {20.0, 2000.0, 2.0, 50.0};
    const std::vector<double> thickness = {5.0, 50.0, 20.0};
    ResponseWorkspace workspace;
    std::vector<double> plain(plan.windows() * plan.components());
    std::vector<double> plainSlopes(plain.size() * rho.size());
    layeredResponse(PlainKernel, plan, logOf(rho), thickness, workspace, plain, plainSlopes);
    for (const LayerKernel *const *kernel = availableKernels(); *kernel != nullptr; ++kernel) {
        SCOPED_TRACE((*kernel)->name);
        std::vector<double> data(plain.size());
        std::vector<double> slopes(plainSlopes.size());
        layeredResponse(**kernel, plan, logOf(rho), thickness, workspace, data, slopes);
        for (std::size_t i = 0; i < data.size(); ++i) {
            EXPECT_NEAR(data[i], plain[i], 1.0e-9 * std::fabs(plain[i]) + 1.0e-12);
        }
        for (std::size_t i = 0; i < slopes.size(); ++i) {
            EXPECT_NEAR(slopes[i], plainSlopes[i], 1.0e-8 * std::fabs(plainSlopes[i]) + 1.0e-10);
        }
    }
}

TEST(LayerKernels, StartWithThePlainOneAndEndWithTheOneInUse) {
    const LayerKernel *const *list = availableKernels();
    EXPECT_EQ(std::string(list[0]->name), "plain");
    if (std::getenv("KELDRIN_KERNEL") == nullptr) {
        const LayerKernel *last = nullptr;
        for (; *list != nullptr; ++list) {
            last = *list;
        }
        EXPECT_EQ(last, &fastestKernel());
    }
}

} // namespace
} // namespace keldrin
