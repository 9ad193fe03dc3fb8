#include "toolkit/dialog_form.h"

#include "toolkit/control_ids.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include "base/fixed_text.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace keldrin {
namespace {

struct Shared {
    std::array<float, 2> reals = {1.5F, 2.5F};
};

struct Sample {
    Shared *shared = nullptr;
    int whole = 3;
    double wide = 0.1;
    float bearing = 44.5F;
    std::optional<int> trend;
    bool on = true;
    FixedText<4> text = "abcd";
    std::string name = "line";
    int choice = 2;
    int most = 8;
};

enum Id : int { Whole = 1, Wide, Bearing, Trend, On, Text, Name, Choice, Second, Title, Off };

bool takeName(std::string &name, const FieldValue &value) {
    const std::string &typed = std::get<std::string>(value);
    const bool accepted = typed != "bad";
    name = accepted ? typed : name;
    return accepted;
}

FieldLimits wholeLimits(const Sample &sample) {
    return {1.0, static_cast<double>(sample.most)};
}

std::string titleOf(const Sample &sample) {
    return sample.on ? "on" : "off";
}

bool isOn(const Sample &sample) {
    return sample.on;
}

constexpr std::array<std::string_view, 3> Names = {"one", "two", "three"};

constexpr std::array Controls = {
    ControlSpec{.id = Whole,
                .kind = ControlKind::Integer,
                .label = "&Whole",
                .field = fieldOf<&Sample::whole>(),
                .limitsFrom = givenBy<wholeLimits>()},
    ControlSpec{.id = Wide,
                .kind = ControlKind::Double,
                .label = "Wide",
                .format = "(F12.1)",
                .unit = "m",
                .limits = {-5.0, 5.0},
                .field = fieldOf<&Sample::wide>()},
    ControlSpec{.id = Bearing, .kind = ControlKind::Integer, .field = fieldOf<&Sample::bearing>()},
    ControlSpec{.id = Trend,
                .kind = ControlKind::Integer,
                .enabled = false,
                .field = fieldOf<&Sample::trend>()},
    ControlSpec{.id = On, .kind = ControlKind::Check, .field = fieldOf<&Sample::on>()},
    ControlSpec{.id = Text, .kind = ControlKind::Text, .field = fieldOf<&Sample::text>()},
    ControlSpec{.id = Name,
                .kind = ControlKind::Text,
                .label = "Save",
                .unit = ".std",
                .field = fieldTakenBy<takeName, &Sample::name>("is bad")},
    ControlSpec{.id = Choice,
                .kind = ControlKind::List,
                .field = fieldOf<&Sample::choice>(),
                .entries = alwaysNamed<Names>()},
    ControlSpec{.id = Second,
                .kind = ControlKind::Real,
                .label = "2nd",
                .format = "(F12.1)",
                .field = fieldOf<&Sample::shared, &Shared::reals, 1>(),
                .enabledFrom = givenBy<isOn>(),
                .name = "Second"},
    ControlSpec{.id = Title, .label = "as the table has it", .field = shownBy<titleOf>()},
    ControlSpec{.id = ButtonContinue, .kind = ControlKind::Button, .label = "Continue"},
};

constexpr std::array<int, 2> Followers = {Title, Second};

const DialogForm<Sample> Form = DialogSpec{.number = 9,
                                           .caption = "Sample",
                                           .defaultButton = ButtonContinue,
                                           .controls = Controls,
                                           .followers = Followers};

class DialogFormTest : public testing::Test {
  protected:
    DialogFormTest() {
        toolkitState() = ToolkitState{};
        sample.shared = &shared;
        openDialog(Form, sample, DialogModelessAlone);
    }
    ~DialogFormTest() override { toolkitState() = ToolkitState{}; }

    static void type(int id, std::string_view text) {
        typeText(*topDialog(), id, text);
        commitField(*topDialog(), id);
    }
    static const ControlState &control(int id) { return *findControl(*topDialog(), id); }

    Shared shared;
    Sample sample;
};

TEST_F(DialogFormTest, UntouchedFieldsComeBackExactlyAndIntegersWhole) {
    EXPECT_EQ(control(Bearing).text, "45");
    EXPECT_EQ(control(Trend).text, "");
    EXPECT_EQ(control(Choice).entries.size(), 3U);
    EXPECT_EQ(readFields(Form, sample), std::vector<UnreadField>{});
    EXPECT_EQ(sample.wide, 0.1);
    EXPECT_EQ(sample.bearing, 45.0F);
    EXPECT_EQ(sample.trend, std::nullopt);
    EXPECT_EQ(sample.text, "abcd");
    EXPECT_EQ(shared.reals[1], 2.5F);
    sample.trend = -7;
    putField(Form, Trend, sample);
    EXPECT_EQ(control(Trend).text, "-7");
}

TEST_F(DialogFormTest, EditsGoThroughLimitsAndRulesToTheirFields) {
    type(Whole, "9");
    type(Wide, "-7,5");
    type(Text, "xyz");
    type(Name, "other");
    type(Second, "8");
    userChooses(*topDialog(), Choice, 3);
    userChecks(*topDialog(), On, false);
    EXPECT_TRUE(readFields(Form, sample).empty());
    EXPECT_EQ(sample.whole, 8);
    EXPECT_EQ(sample.wide, -5.0);
    EXPECT_EQ(sample.text, "xyz");
    EXPECT_EQ(sample.name, "other");
    EXPECT_EQ(sample.choice, 3);
    EXPECT_FALSE(sample.on);
    EXPECT_EQ(shared.reals[1], 8.0F);
}

TEST_F(DialogFormTest, WhatCannotBeReadIsListedAndKept) {
    type(Whole, "8.0");
    type(Wide, "1.2.3");
    type(Name, "bad");
    type(Second, std::string(50, 'x'));
    const std::vector<UnreadField> unread = readFields(Form, sample);
    EXPECT_EQ(sample.whole, 3);
    EXPECT_EQ(sample.name, "line");
    EXPECT_EQ(
        unreadLines(unread),
        (std::vector<std::string>{
            "Whole: \"8.0\" cannot be read; 3 stays.",
            "Wide: \"1.2.3\" cannot be read; 0.1 m stays.", "Save: \"bad\" is bad; \"line\" stays.",
            "Second: \"" + std::string(40, 'x') + "...\" cannot be read; 2.5 stays."}));
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
}

TEST_F(DialogFormTest, FollowersChangeOnlyWhenTheyAreTold) {
    EXPECT_EQ(control(Title).label, "as the table has it");
    type(Second, "x");
    sample.on = false;
    followRecord(Form, sample);
    EXPECT_EQ(control(Title).label, "off");
    EXPECT_FALSE(control(Second).enabled);
    EXPECT_TRUE(readFields(Form, sample).empty()) << "a disabled field is not read";
}

TEST_F(DialogFormTest, LimitsBringInWhatALimitedFieldWouldNotAllow) {
    sample.whole = 99;
    sample.wide = -6.0;
    sample.bearing = 1.0E9F; // its control has none
    limitFields(Form, sample);
    EXPECT_EQ(sample.whole, 8);
    EXPECT_EQ(sample.wide, -5.0);
    EXPECT_EQ(sample.bearing, 1.0E9F);
}

} // namespace
} // namespace keldrin
