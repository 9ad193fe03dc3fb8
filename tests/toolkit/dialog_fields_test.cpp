#include "toolkit/control_ids.h"
#include "toolkit/dialog_model.h"
#include "toolkit/field_number.h"
#include "toolkit/sample_dialogs.h"
#include "toolkit/toolkit.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace keldrin {
namespace {

struct TypedCase {
    const char *text;
    ControlKind kind;
    double value; ///< NaN: no number
};

const double None = std::nan("");
const double Overflow = std::numeric_limits<double>::infinity();

TEST(TypedNumber, TakesSignDigitsOnePointOrCommaAndExponent) {
    using enum ControlKind;
    const TypedCase cases[] = {
        {" 12.5 ", Real, 12.5},
        {"+.5", Real, 0.5},
        {"5.", Double, 5.0},
        {"-1.5E3", Double, -1500.0},
        {"1d-2", Double, 0.01},
        {"1D+2", Double, 100.0},
        {"007", Integer, 7.0},
        {"-360", Integer, -360.0},
        {"0.1", Real, double(0.1F)},
        {"", Real, None},
        {".", Real, None},
        {"-", Integer, None},
        {"1,5", Real, 1.5},
        {"-,5E3", Double, -500.0},
        {"1,000", Real, 1.0},
        {"1,5.", Real, None},
        {"1.5,", Real, None},
        {"1,5,", Real, None},
        {",", Real, None},
        {"1E1,5", Real, None},
        {"1,5", Integer, None},
        {"1.5.2", Real, None},
        {"1E", Real, None},
        {"E5", Real, None},
        {"1 2", Real, None},
        {"0x10", Real, None},
        {"inf", Real, None},
        {"nan", Double, None},
        {"1F2", Real, None},
        {"12.5", Integer, None},
        {"1E2", Integer, None},
        {"--1", Real, None},
        {"1e99", Real, Overflow},
        {"-1e999", Double, -Overflow},
        {"1e-999", Double, 0.0},
        {"99999999999", Integer, Overflow},
        {"0.00000000000000000000000000000000000000000000001E50", Real, double(1000.0F)},
        {"1E99999999999999999999", Double, Overflow},
        {"0E99999999999999999999", Double, 0.0},
    };
    for (const TypedCase &c : cases) {
        const std::optional<double> value = typedNumber(c.text, c.kind);
        EXPECT_EQ(value.has_value(), !std::isnan(c.value)) << c.text;
        EXPECT_EQ(value.value_or(0.0), std::isnan(c.value) ? 0.0 : c.value) << c.text;
    }
}

/// The configuration dialog, loaded and shown without anybody to serve it.
class ConfigurationFields : public testing::Test {
  protected:
    ConfigurationFields() {
        toolkitState() = ToolkitState{};
        WDialogLoad(SampleFields);
        WDialogShow(-1, -1, 0, DialogModelessAlone);
    }
    ~ConfigurationFields() override { toolkitState() = ToolkitState{}; }

    static void type(int id, std::string_view text) {
        typeText(*topDialog(), id, text);
        commitField(*topDialog(), id);
    }
    static std::string shown(int id) { return shownValue(*findControl(*topDialog(), id)); }
};

TEST_F(ConfigurationFields, UntouchedNumbersComeBackExactly) {
    const float ramp = 1.0F / 3.0F;
    WDialogPutReal(1025, ramp, "(F12.1)");
    const double station = 100.0 + 1.0 / 3.0;
    WDialogPutDouble(1122, station, "(F14.1)");
    WDialogPutReal(1026, std::nanf(""), "(0P,G12.4E1)");
    WDialogPutReal(1015, 4.0E9F, "(F12.1)");  // above its limits
    WDialogPutReal(1016, 1.0E30F, "(F12.1)"); // shown as asterisks
    WDialogPutInteger(1106, -144);
    EXPECT_EQ(shown(1025), "0.3");
    EXPECT_EQ(shown(1016), "************");

    type(1025, "0.3"); // typed again as it stands: not an edit
    type(1015, "4000000000.0");
    float real = 0.0F;
    double number = 0.0;
    EXPECT_TRUE(WDialogGetReal(1025, real));
    EXPECT_EQ(real, ramp);
    EXPECT_TRUE(WDialogGetDouble(1122, number));
    EXPECT_EQ(number, station);
    EXPECT_TRUE(WDialogGetReal(1015, real));
    EXPECT_EQ(real, 4.0E9F);
    EXPECT_TRUE(WDialogGetReal(1016, real));
    EXPECT_EQ(real, 1.0E30F);
    EXPECT_TRUE(WDialogGetReal(1106, real)); // a whole number read as a real
    EXPECT_EQ(real, -144.0F);
}

TEST_F(ConfigurationFields, LimitsActOnWhatIsTypedWhenItIsCommitted) {
    WDialogRangeInteger(1024, 1, 32);
    WDialogPutInteger(1024, 3);
    typeText(*topDialog(), 1024, "99");
    int turns = 0;
    EXPECT_TRUE(WDialogGetInteger(1024, turns));
    EXPECT_EQ(turns, 3) << "an edit counts only when it is committed";
    commitField(*topDialog(), 1024);
    EXPECT_EQ(shown(1024), "32");
    EXPECT_TRUE(WDialogGetInteger(1024, turns));
    EXPECT_EQ(turns, 32);

    WDialogPutReal(1032, 1.0F, "(0P,G12.4E1)");
    type(1032, "0.01"); // the lower limit, in single
    EXPECT_EQ(shown(1032), "0.01") << "a value on the limit stays as typed";
    type(1032, "1E9");
    EXPECT_EQ(shown(1032), "100.0");
    float weight = 0.0F;
    EXPECT_TRUE(WDialogGetReal(1032, weight));
    EXPECT_EQ(weight, 100.0F);

    WDialogPutReal(1104, 5.0F, "(F12.1)"); // the line number has no limits
    type(1104, "-123456789");
    EXPECT_TRUE(WDialogGetReal(1104, weight));
    EXPECT_EQ(weight, -123456789.0F);
}

TEST_F(ConfigurationFields, TextThatIsNoNumberStaysAndTheValueHolds) {
    WDialogPutReal(1025, 50.0F, "(F12.1)");
    type(1025, "5O");
    float ramp = 7.0F;
    EXPECT_FALSE(WDialogGetReal(1025, ramp));
    EXPECT_EQ(ramp, 7.0F);
    EXPECT_EQ(shown(1025), "5O");
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0)
        << "a failed read leaves no error for the next caller";
    type(1025, "50.0"); // the text that was put stands for the exact value again
    EXPECT_TRUE(WDialogGetReal(1025, ramp));
    EXPECT_EQ(ramp, 50.0F);
    type(1104, "1E39"); // no limits, and no single either
    EXPECT_FALSE(WDialogGetReal(1104, ramp));

    WDialogPutInteger(1106, 45);
    WDialogPutString(1106, "");
    int azimuth = 3;
    EXPECT_FALSE(WDialogGetInteger(1106, azimuth));
    EXPECT_EQ(azimuth, 3);
}

TEST_F(ConfigurationFields, AReadLeavesEarlierErrorsToTheirOwnReader) {
    ToolkitSetError(ErrorCannotRun, 2);
    float value = 0.0F;
    WDialogPutReal(1025, 50.0F, "(F12.1)");
    EXPECT_TRUE(WDialogGetReal(1025, value));
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorCannotRun);
    EXPECT_EQ(ToolkitErrorState(ErrorOfSystem), 2);
    int missing = 0;
    EXPECT_FALSE(WDialogGetInteger(9999, missing));
    EXPECT_FALSE(WDialogGetMenu(1025, missing)) << "a field is no list";
    EXPECT_FALSE(WDialogGetMenu(1006, missing)) << "a list without entries";
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    WDialogPutInteger(9999, 1);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchControl);
    WDialogPutCheckBox(1025, true);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorWrongKind);
}

TEST_F(ConfigurationFields, TextsAreCutToTheirLengthAtACharacter) {
    const std::string fifteen(15, 'x');
    WDialogPutString(1072, fifteen + "\xC3\xA9"); // a letter of two bytes across the limit of 16
    std::string name;
    WDialogGetString(1072, name);
    EXPECT_EQ(name, fifteen);
    type(1072, "abcdefghijklmnopqrst");
    WDialogGetString(1072, name);
    EXPECT_EQ(name, "abcdefghijklmnop");
    type(1043, std::string(300, 'n'));
    WDialogGetString(1043, name);
    EXPECT_EQ(name.size(), 255U);
}

TEST_F(ConfigurationFields, ListsHoldWhatTheirTableAllows) {
    WDialogPutMenu(1006, {"m", "ft", "mile"}, 2);
    int unit = 0;
    EXPECT_TRUE(WDialogGetMenu(1006, unit));
    EXPECT_EQ(unit, 2);
    userChooses(*topDialog(), 1006, 3);
    EXPECT_TRUE(WDialogGetMenu(1006, unit));
    EXPECT_EQ(unit, 2) << "the third entry is not in a list of two";
    WDialogPutMenu(1008, {"a", "b"}, 5);
    EXPECT_FALSE(WDialogGetMenu(1008, unit)) << "nothing chosen";
    EXPECT_EQ(unit, 2);
}

TEST_F(ConfigurationFields, LabelsAndUnitsCanBeWritten) {
    WDialogPutString(1010, "Tx Loop Size (ft)");
    std::string text;
    WDialogGetString(1010, text);
    EXPECT_EQ(text, "Tx Loop Size (ft)");
    WDialogPutString(1025 + LabelIdOffset, "Ramp");
    WDialogPutString(1025 + UnitIdOffset, "msec");
    EXPECT_EQ(findControl(*topDialog(), 1025)->label, "Ramp");
    WDialogGetString(1025 + UnitIdOffset, text);
    EXPECT_EQ(text, "msec");
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
}

TEST(ProgressBar, ShowsPercentOrThatTheEndIsNotKnown) {
    ControlState bar;
    bar.kind = ControlKind::Bar;
    EXPECT_EQ(shownValue(bar), "0%");
    putFraction(bar, 0.426);
    EXPECT_EQ(shownValue(bar), "43%");
    putFraction(bar, 1.5);
    EXPECT_EQ(shownValue(bar), "100%");
    putFraction(bar, -1.0);
    EXPECT_EQ(shownValue(bar), "busy");
    putFraction(bar, std::nan(""));
    EXPECT_EQ(shownValue(bar), "busy");
}

} // namespace
} // namespace keldrin
