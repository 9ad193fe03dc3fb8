#include "base/decimal_digits.h"
#include "base/number_text.h"
#include "base/real.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace keldrin {
namespace {

struct NumberCase {
    const char *descriptor;
    double value;
    const char *text;
};

TEST(NumberText, FixedPoint) {
    const NumberCase cases[] = {
        {"(F14.3)", 0.0, "0"},
        {"(F14.3)", 100.0, "100"},
        {"(F14.3)", 1200.5, "1200.5"},
        {"(F14.3)", -0.25, "-0.25"},
        {"(F14.3)", -0.0001, "-0"}, // the sign of what rounds to zero stays
        {"(F14.3)", 0.0005, "0.001"},
        {"(F14.3)", 9999999999.9994, "9999999999.999"},
        {"(F14.3)", 9999999999.9996, "**************"},
        {"(F14.3)", -999999999.9994, "-999999999.999"},
        {"(F14.3)", 1e300, "**************"},
        {"(F12.0)", 450120.0, "450120"},
        {"(F12.0)", 0.0, "0"},
        {"(F12.0)", 10.0, "10"},  // zeros before the point are no trailing zeros
        {"(F5.3)", -0.5, "-0.5"}, // no room for the zero before the point
        {"(1P,F12.2)", 1.25, "12.5"},
    };
    for (const NumberCase &c : cases) {
        EXPECT_EQ(Number_Text(c.value, c.descriptor), c.text) << c.descriptor << ' ' << c.value;
    }
}

TEST(NumberText, RoundsTheExactBinaryValueHalfToEven) {
    EXPECT_EQ(Number_Text(0.125, "(F12.2)"), "0.12");
    EXPECT_EQ(Number_Text(0.375, "(F12.2)"), "0.38");
    EXPECT_EQ(Number_Text(2.5, "(F12.0)"), "2");
    EXPECT_EQ(Number_Text(-3.5, "(F12.0)"), "-4");
    EXPECT_EQ(Number_Text(2.675, "(F12.2)"), "2.67"); // lies below its decimal spelling
    EXPECT_EQ(Number_Text(10005.0, "(1P,G11.4E1)"), "1.000E+4");
    EXPECT_EQ(Number_Text(10015.0, "(1P,G11.4E1)"), "1.002E+4");
    // 0.15 lies above 15 hundredths in 32 bits and below in 64
    EXPECT_EQ(Number_Text(0.15F, "(F12.1)"), "0.2");
    EXPECT_EQ(Number_Text(0.15, "(F12.1)"), "0.1");
    EXPECT_EQ(Number_Text(0.1F, "(F16.12)"), "0.10000000149");
}

TEST(NumberText, GeneralFormChangesToAnExponentAfterRounding) {
    const NumberCase cases[] = {
        {"(1P,G11.4E1)", 0.0, "0"},
        {"(1P,G11.4E1)", 0.1, "0.1"},
        {"(1P,G11.4E1)", 0.0999951, "0.1"},
        {"(1P,G11.4E1)", 0.0999949, "9.999E-2"},
        {"(1P,G11.4E1)", 9999.4, "9999"},
        {"(1P,G11.4E1)", 9999.6, "1.000E+4"}, // an exponent keeps its zeros
        {"(1P,G11.4E1)", -123456.0, "-1.235E+5"},
        {"(1P,G11.4E1)", 9.9994e9, "9.999E+9"},
        {"(1P,G11.4E1)", 9.9996e9, "***********"}, // an exponent of two digits
        {"(1P,G11.4E1)", 1e-10, "***********"},
        {"(1P,G14.4E1)", 32.0, "32"},
        {"(0P,G12.4E1)", 32.5, "32.5"},
        {"(0P,G12.4E1)", 0.01, "0.1000E-1"},
        {"(0P,G12.4E1)", 10000.0, "0.1000E+5"},
    };
    for (const NumberCase &c : cases) {
        EXPECT_EQ(Number_Text(c.value, c.descriptor), c.text) << c.descriptor << ' ' << c.value;
    }
}

TEST(NumberText, ScientificForm) {
    EXPECT_EQ(Number_Text(0.0, "(ES14.5)"), "0.00000E+00");
    EXPECT_EQ(Number_Text(-12.5F, "(ES14.5)"), "-1.25000E+01");
    EXPECT_EQ(Number_Text(9.999996, "(ES14.5)"), "1.00000E+01");
    EXPECT_EQ(Number_Text(std::numeric_limits<float>::max(), "(ES14.5)"), "3.40282E+38");
    EXPECT_EQ(Number_Text(1e100, "(ES14.5)"), "**************");
    EXPECT_EQ(Number_Text(100.0, "(ES12.4E1)"), "1.0000E+2");
    EXPECT_EQ(Number_Text(1e10, "(ES12.4E1)"), "************");
}

TEST(NumberText, NoValueAndNoDescriptorGiveAnAsterisk) {
    EXPECT_EQ(Number_Text(static_cast<float>(MissingValue), "(F14.3)"), "*");
    EXPECT_EQ(Number_Text(-9.9e31, "(ES14.5)"), "*");
    EXPECT_EQ(Number_Text(std::numeric_limits<double>::quiet_NaN(), "(F14.3)"), "*");
    for (const char *text : {"", "F14.3", "(F14)", "(F14.3", "(2P,F14.3)", "(I5)", "(G12.0E1)",
                             "(F17.3)", "(F123.3)", "(E14.5)", "(ES14.5E)", "(ES14.5E9)"}) {
        EXPECT_EQ(Number_Text(1.0, text), "*") << text;
    }
    EXPECT_EQ(Number_Text(std::numeric_limits<float>::infinity(), "(F4.1)"), "****");
    EXPECT_EQ(Int_Text(-2147483646), "*");
    EXPECT_EQ(Int_Text(-2147483645), "-2147483645");
}

TEST(FormatReal, FillsTheColumnsOfTheDescriptor) {
    EXPECT_EQ(formatReal("(F12.1)", 0.5), "         0.5");
    EXPECT_EQ(formatReal("(F6.2)", -0.001), " -0.00");
    EXPECT_EQ(formatReal("(F5.2)", -0.001), "-0.00");
    EXPECT_EQ(formatReal("(F4.2)", -0.001), "-.00");
    EXPECT_EQ(formatReal("(1P,G12.4E1)", 100.0), "    100.0   ");
    EXPECT_EQ(formatReal("(0p,g12.4e1)", 2.0e5F), "   0.2000E+6");
    EXPECT_EQ(formatReal("(G12.4)", 2.0), "   2.000    ");
    EXPECT_EQ(formatReal("(G3.1E1)", 1.0), "***");
    EXPECT_EQ(formatReal("(G7.4E1)", 100.0), "*******");
    EXPECT_EQ(formatReal("(F1.0)", 0.0), "*");
    EXPECT_EQ(formatReal("12.1", 0.5), "");
}

/// The digits of |value| as the standard library rounds them.
template <class Real>
std::string libraryText(Real value, std::chars_format form, int precision) {
    std::array<char, 400> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), std::fabs(value), form, precision);
    return {text.data(), end.ptr};
}

template <class Real>
void expectLibraryDigits(Real value, int count) {
    DecimalDigits digits;
    significantDigits(value, count, digits);
    std::string text(digits.text.data(), static_cast<std::size_t>(digits.count));
    text.insert(1, count > 1 ? "." : "");
    std::string power = std::to_string(std::abs(digits.exponent));
    power.insert(0, power.size() < 2 ? "0" : "");
    ASSERT_EQ(text + (digits.exponent < 0 ? "e-" : "e+") + power,
              libraryText(value, std::chars_format::scientific, count - 1));
    if (std::fabs(value) < static_cast<Real>(1e15)) {
        const std::string descriptor = "(F40." + std::to_string(count) + ")";
        const std::string shown = formatReal(descriptor, std::fabs(value));
        ASSERT_EQ(shown.substr(shown.find_last_of(' ') + 1),
                  libraryText(value, std::chars_format::fixed, count));
    }
}

TEST(DecimalDigits, AgreeWithTheExactConversionOfTheLibrary) {
    std::mt19937_64 random(20);
    for (int i = 0; i < 50000; ++i) {
        const std::uint64_t bits = random();
        const int count = 1 + static_cast<int>(random() % 18);
        const auto any4 = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        const auto any8 = std::bit_cast<double>(bits);
        // short binary fractions and integers, where ties are frequent
        const double tie = std::ldexp(static_cast<double>(bits % 100000 + 1),
                                      static_cast<int>(random() % 40) - 20);
        if (std::isnormal(any4)) {
            expectLibraryDigits(any4, count);
        }
        if (std::isnormal(any8)) {
            expectLibraryDigits(any8, count);
        }
        expectLibraryDigits(tie, count);
        expectLibraryDigits(static_cast<float>(tie), count);
    }
}

TEST(MessageNumber, AtMostSixDigits) {
    const std::pair<double, const char *> cases[] = {
        {0.0, "0"},          {0.001, "0.001"},  {-2.5, "-2.5"},     {123.4567, "123.457"},
        {1e6, "1000000"},    {1e7, "1e+07"},    {9.9e9, "9.9e+09"}, {0.000015, "0.000015"},
        {9.9e-6, "9.9e-06"}, {-1e32, "-1e+32"}, {1e-300, "1e-300"}, {999999.6, "1000000"}};
    for (const auto &[value, text] : cases) {
        EXPECT_EQ(messageNumber(value), text);
    }
    EXPECT_EQ(messageNumber(0.1F), "0.1");
    EXPECT_EQ(messageNumber(-std::numeric_limits<float>::infinity()), "-inf");
}

} // namespace
} // namespace keldrin
