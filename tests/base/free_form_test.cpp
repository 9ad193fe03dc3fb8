#include "base/free_form.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

namespace keldrin {
namespace {

TEST(FreeForm, ReadsRealsAsAListReads) {
    const std::pair<const char *, double> cases[] = {
        {"1", 1.0},        {" \t7\t", 7.0},   {"+5", 5.0},      {"-.5", -0.5},
        {"5.", 5.0},       {"1.e3", 1000.0},  {"1.5D2", 150.0}, {"1d-2", 0.01},
        {"2E+02", 200.0},  {"2e-02", 0.02},   {"1.5D+1", 15.0}, {"1,5", 1.0},
        {"2/3", 2.0},      {"12 x", 12.0},    {"1e-400", 0.0},  {"0e999999999999", 0.0},
        {"007.250", 7.25}, {"1e0000002", 100}};
    for (const auto &[text, expected] : cases) {
        double value = -9.0;
        EXPECT_EQ(readFreeForm(text, value), FreeForm::Value) << text;
        EXPECT_EQ(value, expected) << text;
    }
}

TEST(FreeForm, LeavesTheTargetAloneUnlessAValueWasRead) {
    for (const char *text : {"",      "  ",
                             "12x",   ".",
                             "+",     "-",
                             "+-5",   "e5",
                             "1e",    "1e+",
                             "1.2.3", "1:30",
                             "1+5",   "1.5-3",
                             "0+25",  "nan",
                             "inf",   "-Infinity",
                             "0x10",  "1e39",
                             "1e400", "1e99999999999999999999",
                             "5*2",   "1e5.0"}) {
        float value = -9.0F;
        EXPECT_EQ(readFreeForm(text, value), FreeForm::Failed) << text;
        EXPECT_EQ(value, -9.0F) << text;
    }
    for (const char *text : {",", " /", "\t,5"}) {
        double real = -9.0;
        std::int32_t integer = -9;
        EXPECT_EQ(readFreeForm(text, real), FreeForm::Null) << text;
        EXPECT_EQ(readFreeForm(text, integer), FreeForm::Null) << text;
        EXPECT_EQ(real, -9.0);
        EXPECT_EQ(integer, -9);
    }
}

// Only where nothing stands before the number or after it, not even what ends a value.
TEST(FreeForm, WholeNumbersAloneAreReadInOneStep) {
    for (const char *text :
         {"7", "-0.5", "+1.25E+03", "1d2", "5.", ".5", "-1e-40", "1e-400", "12345678901234567890.5",
          "0000000000000000000000001.5", "0.00000000000000000000000015"}) {
        double wide = -9.0;
        double whole = -9.0;
        ASSERT_EQ(readFreeForm(text, wide), FreeForm::Value) << text;
        EXPECT_TRUE(readWholeNumber(text, whole)) << text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(whole), std::bit_cast<std::uint64_t>(wide)) << text;
    }
    for (const char *text : {"", "-", ".", "+.", " 7", "7 ", "7,", "7/2", "7\t", "7*", "1e", "1e39",
                             "1.2.3", "inf", "7E5x"}) {
        float value = -9.0F;
        EXPECT_FALSE(readWholeNumber(text, value)) << text;
        EXPECT_EQ(value, -9.0F) << text;
    }
}

TEST(FreeForm, ReadsIntegers) {
    std::int32_t value = -9;
    for (const char *text : {"12.5", "1e3", "2147483648", "-2147483649", "+", "+-1", "12x", ""}) {
        EXPECT_EQ(readFreeForm(text, value), FreeForm::Failed) << text;
        EXPECT_EQ(value, -9) << text;
    }
    EXPECT_EQ(readFreeForm(" +12,3", value), FreeForm::Value);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(readFreeForm("-2147483648/", value), FreeForm::Value);
    EXPECT_EQ(value, std::numeric_limits<std::int32_t>::min());
    std::int64_t wide = 0;
    EXPECT_EQ(readFreeForm("9223372036854775807", wide), FreeForm::Value);
    EXPECT_EQ(wide, std::numeric_limits<std::int64_t>::max());
}

TEST(FreeForm, DenormalsCountAsZeroAndKeepTheSign) {
    float value = 1.0F;
    EXPECT_EQ(readFreeForm("-1e-40", value), FreeForm::Value);
    EXPECT_EQ(value, 0.0F);
    EXPECT_TRUE(std::signbit(value));
    EXPECT_EQ(readFreeForm("1.1754944e-38", value), FreeForm::Value);
    EXPECT_EQ(value, std::numeric_limits<float>::min());
    EXPECT_EQ(readFreeForm("0." + std::string(400, '0') + "1e401", value), FreeForm::Value);
    EXPECT_EQ(value, 1.0F);
}

template <class Real>
void expectNearest(const std::string &text) {
    // from_chars rounds some numbers twice on 32-bit x86; the C library does not
    const Real expected = std::is_same_v<Real, float>
                              ? static_cast<Real>(std::strtof(text.c_str(), nullptr))
                              : static_cast<Real>(std::strtod(text.c_str(), nullptr));
    Real value = 0;
    ASSERT_EQ(readFreeForm(text, value), FreeForm::Value) << text;
    ASSERT_EQ(value, expected) << text;
}

std::string spelled(double value, int digits) {
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::general, digits);
    return {text.data(), end.ptr};
}

TEST(FreeForm, GivesTheNearestNumber) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> exponents(-36.0, 36.0);
    for (int i = 0; i < 200000; ++i) {
        const double value = std::pow(10.0, exponents(random));
        const std::string text = spelled(value, 1 + static_cast<int>(random() % 20));
        expectNearest<float>(text);
        expectNearest<double>(text);
        // A spelling right beside the middle of two 32-bit numbers: its nearest 64-bit number is
        // often that middle, and rounding that again would go to the wrong side.
        const auto low = static_cast<float>(value);
        const float high = std::nextafter(low, 2.0F * low);
        const double middle = (static_cast<double>(low) + static_cast<double>(high)) / 2.0;
        expectNearest<float>(spelled(middle, 15));
    }
}

} // namespace
} // namespace keldrin
