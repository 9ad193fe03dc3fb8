#include "conditioning/configuration_change.h"

#include <gtest/gtest.h>

#include <functional>

namespace keldrin {
namespace {

TEST(ConfigurationChange, CountsWhereResistivitiesDependOnIt) {
    // Whether a change counts on Fixed-Loop, Moving-Loop, In-Loop and Coincident-Loop.
    const struct {
        const char *what;
        std::function<void(ControlValues &)> change;
        const char *counts;
    } cases[] = {
        {"nothing", [](ControlValues &) {}, "0000"},
        {"loop side x", [](ControlValues &c) { c.XTxLength = 400.0F; }, "1111"},
        {"loop side y", [](ControlValues &c) { c.YTxLength = 400.0F; }, "1111"},
        {"length units", [](ControlValues &c) { setLengthUnits(c, Feet); }, "1111"},
        {"ramp", [](ControlValues &c) { c.TxRamp = 7.0F; }, "1111"},
        {"frequency", [](ControlValues &c) { c.TxFreq = 7.0F; }, "1111"},
        {"loop azimuth", [](ControlValues &c) { c.TxAzimuth = 7.0F; }, "1100"},
        {"loop east", [](ControlValues &c) { c.XTxCenter = 7.0; }, "1000"},
        {"loop north", [](ControlValues &c) { c.YTxCenter = 7.0; }, "1000"},
        {"line azimuth", [](ControlValues &c) { c.LineAzimuth = 7.0F; }, "0100"},
        {"station scale", [](ControlValues &c) { c.StnScale = 7.0F; }, "0100"},
        {"offset across", [](ControlValues &c) { c.YRxOffset = 7.0F; }, "0100"},
        {"turns", [](ControlValues &c) { c.NTxTurn = 7; }, "0000"},
        {"error floor", [](ControlValues &c) { c.ErrorFloor = 7.0F; }, "0000"},
        {"job", [](ControlValues &c) { c.JobName = "another"; }, "0000"},
    };
    for (const auto &c : cases) {
        for (int array = FixedLoop; array <= CoincidentLoop; ++array) {
            ControlValues before;
            setSurveyType(before, array);
            ControlValues after = before;
            c.change(after);
            EXPECT_EQ(changesResistivities(before, after), c.counts[array - 1] == '1')
                << c.what << ", array " << array;
        }
    }
    ControlValues inLoop;
    setSurveyType(inLoop, InLoop);
    ControlValues moving = inLoop;
    setSurveyType(moving, MovingLoop);
    EXPECT_TRUE(changesResistivities(inLoop, moving));
}

} // namespace
} // namespace keldrin
