#include "conditioning/configuration_dialog.h"

#include "conditioning/dialog_fixture.h"
#include "conditioning/survey_configuration.h"
#include "projectfile/control_block.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using namespace ConfigurationControl;
using testing::ElementsAre;
using CV = ControlValues;

SoundingRecord soundingOf(double transmitter, double receiver) {
    SoundingRecord record;
    record.TxStn = transmitter;
    record.RxStn = receiver;
    record.Station = receiver;
    record.NumTW = 1;
    record.TWcenter[0] = 1.0F;
    record.TEMobs[0] = 5.0F;
    return record;
}

class ConfigurationDialogTest : public DialogTest {
  protected:
    ConfigurationDialogTest() {
        model.hTrn = {soundingOf(100.0, 1.0), soundingOf(105.0, 2.0)};
        model.SoundingCount = 2;
        model.control.LineAzimuth = 30.0F;
        model.control.SurveyTypeIndex = FixedLoop;
        model.control.TxStn = 100.0;
        setDefaultTxWaveform(model.control);
    }

    int edit(const Edits &edits, int button = ButtonContinue, std::function<void()> look = {}) {
        answer(edits, button, std::move(look));
        return EditSurveyConfiguration(model, path,
                                       [this](const CV & /*before*/, const std::string &chosen) {
                                           written.push_back(chosen);
                                           return writes;
                                       });
    }

    SurveyModel model;
    std::string path = "folder/line1.std";
    std::vector<std::string> written;
    bool writes = true;
};

TEST_F(ConfigurationDialogTest, EveryFieldIsShownTypedAndHeldInItsLimits) {
    const struct {
        int id;
        const char *shown;
        const char *typed;
        double (*value)(const CV &);
        double expected;
    } cases[] = {
        {LineNumber, "0.0", "-2E9", [](const CV &c) { return double(c.LineNumber); }, -2.0E9},
        {LineAzimuth, "30", "-400", [](const CV &c) { return double(c.LineAzimuth); }, -360},
        {StnScale, "1.000", "0", [](const CV &c) { return double(c.StnScale); }, double(1.0E-6F)},
        {LoopSizeX, "100.0", "1E9", [](const CV &c) { return double(c.XTxLength); }, 990000},
        {LoopSizeY, "100.0", "12,5", [](const CV &c) { return double(c.YTxLength); }, 12.5},
        {LoopAzimuth, "90", "361", [](const CV &c) { return double(c.TxAzimuth); }, 360},
        {Turns, "1", "33", [](const CV &c) { return double(c.NTxTurn); }, 32},
        {Ramp, "50.0", "0", [](const CV &c) { return double(c.TxRamp); }, double(0.1F)},
        {Frequency, "1.000", "2000", [](const CV &c) { return double(c.TxFreq); }, 1024},
        {LoopEast, "0.", "1E12", [](const CV &c) { return c.XTxCenter; }, 1.0E12},
        {LoopNorth, "0.", "-7.25", [](const CV &c) { return c.YTxCenter; }, -7.25},
        {BackgroundWeight, "1.000", "1D3", [](const CV &c) { return double(c.dpWeight); }, 100},
        {SmoothnessWeight, "3.000", "0", [](const CV &c) { return double(c.dzWeight); },
         double(0.01F)},
        {ErrorFloor, "1.0", "99999", [](const CV &c) { return double(c.ErrorFloor); },
         double(9999.9F)},
        {Iterations, "8", "-1", [](const CV &c) { return double(c.Niteration); }, 0},
        {DataCutoff, "100.0", "0.1", [](const CV &c) { return double(c.DataCutoff); },
         double(0.1F)},
    };
    Edits edits;
    for (const auto &c : cases) {
        edits.emplace_back(c.id, c.typed);
    }
    const auto look = [&] {
        for (const auto &c : cases) {
            EXPECT_EQ(shown(c.id), c.shown) << c.id;
        }
        EXPECT_EQ(shown(SaveAs), "line1");
    };
    EXPECT_EQ(edit(edits, ButtonContinue, look), 0);
    for (const auto &c : cases) {
        EXPECT_EQ(c.value(model.control), c.expected) << c.id;
    }
    EXPECT_THAT(unreadTold(), ElementsAre());
}

TEST_F(ConfigurationDialogTest, TextsAndListsGoToTheirFields) {
    const std::pair<int, FixedText<128> CV::*> texts[] = {{JobName, &CV::JobName},
                                                          {JobArea, &CV::JobArea},
                                                          {JobFor, &CV::JobFor},
                                                          {JobBy, &CV::JobBy}};
    Edits edits = {{Header2, "second"}, {Header3, "third"},       {Header4, "fourth"},
                   {LineName, "L1"},    {SurveyArray, "In-Loop"}, {LengthUnits, "ft"}};
    for (const auto &[id, text] : texts) {
        edits.emplace_back(id, "text " + std::to_string(id));
    }
    EXPECT_EQ(edit(edits), 0);
    for (const auto &[id, text] : texts) {
        EXPECT_EQ(model.control.*text, "text " + std::to_string(id));
    }
    EXPECT_EQ(model.control.Header[1], "second");
    EXPECT_EQ(model.control.Header[2], "third");
    EXPECT_EQ(model.control.Header[3], "fourth");
    EXPECT_EQ(model.control.LineName, "L1");
    EXPECT_EQ(model.control.SurveyType, "In-Loop");
    EXPECT_EQ(model.control.LengthUnits, "ft");
    const auto look = [] {
        EXPECT_EQ(control(LoopSizeTitle).label, "Tx Loop Size (ft)");
        EXPECT_EQ(control(LoopCenterTitle).label, "FXL Tx Loop Center (ft)");
        EXPECT_EQ(control(OffsetUnit).label, "ft");
        EXPECT_FALSE(control(Transmitter).enabled);
        EXPECT_FALSE(control(LoopEast).enabled);
        EXPECT_FALSE(control(Offset).enabled);
    };
    EXPECT_EQ(edit({}, ButtonContinue, look), 0);
}

TEST_F(ConfigurationDialogTest, UntouchedNumbersStayExactButAzimuthsBecomeWhole) {
    model.control.TxRamp = 100.0F / 3.0F;
    model.control.XTxCenter = 5000.0 + 1.0 / 3.0;
    model.control.TxAzimuth = 44.5F;
    model.control.LineAzimuth = -9.9E9F; // unset
    const CV before = model.control;
    EXPECT_EQ(edit({}), 0);
    EXPECT_EQ(model.control.TxRamp, before.TxRamp);
    EXPECT_EQ(model.control.XTxCenter, before.XTxCenter);
    EXPECT_EQ(model.control.TxAzimuth, 45.0F);
    EXPECT_EQ(model.control.LineAzimuth, 90.0F);
}

TEST_F(ConfigurationDialogTest, ValuesOutsideTheirRangeAreChangedWithAWarning) {
    model.control.StnScale = 2.0E6F; // tighter than the field
    model.control.LineNumber = 1.0E12F;
    model.control.NTxTurn = 0;
    EXPECT_EQ(edit({}), 0);
    EXPECT_EQ(model.control.StnScale, 900000.0F);
    EXPECT_EQ(model.control.LineNumber, 9.9E9F);
    EXPECT_EQ(model.control.NTxTurn, 1);
    EXPECT_THAT(
        messages.warnings,
        testing::Contains("EditSurveyConfiguration.WARNING: StnScale = 2000000 < 1.1e-06 or "
                          "> 900000|StnScale will be set = 900000"));
    EXPECT_EQ(messages.warnings.size(), 3U);
}

TEST_F(ConfigurationDialogTest, CancelRestoresAllAndWritesNothing) {
    model.control.TxStn = 98.0; // of no sounding: snapped while the dialog is open
    model.control.LineAzimuth = 30.25F;
    const CV before = model.control;
    const auto look = [] {
        EXPECT_EQ(shown(Transmitter), "100.0");
        EXPECT_EQ(shown(LineAzimuth), "30");
    };
    EXPECT_EQ(edit({{Ramp, "77"},
                    {LengthUnits, "ft"},
                    {SurveyArray, "Moving-Loop"},
                    {JobName, "other"},
                    {SaveAs, "line2"},
                    {Turns, "x"}},
                   ButtonCancel, look),
              1);
    EXPECT_EQ(model.control.TxStn, before.TxStn);
    EXPECT_EQ(model.control.LineAzimuth, before.LineAzimuth);
    EXPECT_EQ(model.control.TxRamp, before.TxRamp);
    EXPECT_EQ(model.control.LengthUnits, before.LengthUnits);
    EXPECT_EQ(model.control.LengthUnitsIndex, before.LengthUnitsIndex);
    EXPECT_EQ(model.control.SurveyTypeIndex, before.SurveyTypeIndex);
    EXPECT_EQ(model.control.JobName, before.JobName);
    EXPECT_EQ(path, "folder/line1.std");
    EXPECT_THAT(written, ElementsAre());
    EXPECT_THAT(unreadTold(), ElementsAre()) << "what is cancelled needs no message";
}

TEST_F(ConfigurationDialogTest, ATypedTransmitterSnapsToTheNearestThatExists) {
    const std::pair<const char *, double> cases[] = {
        {"103.4", 105.0}, {"102.5", 100.0}, {"1E6", 105.0}, {"100.0", 100.0}};
    for (const auto &[typed, expected] : cases) {
        model.control.TxStn = expected == 100.0 ? 105.0 : 100.0;
        EXPECT_EQ(edit({{Transmitter, typed}}), 0);
        EXPECT_EQ(model.control.TxStn, expected) << typed;
    }
    model.control.SurveyTypeIndex = MovingLoop;
    model.control.TxStn = 42.0;
    EXPECT_EQ(edit({}), 0);
    EXPECT_EQ(model.control.TxStn, 42.0) << "of no meaning to this array";
    EXPECT_EQ(edit({{SurveyArray, "Fixed-Loop"}}), 0);
    EXPECT_EQ(model.control.TxStn, 100.0) << "42 belongs to no sounding";
}

TEST_F(ConfigurationDialogTest, WhatCannotBeReadIsNamedAndKeepsItsValue) {
    const CV before = model.control;
    EXPECT_EQ(edit({{Ramp, "5O"}, {Turns, "2.5"}, {LoopSizeX, ""}, {LoopSizeY, "200"}}), 0);
    EXPECT_EQ(model.control.TxRamp, before.TxRamp);
    EXPECT_EQ(model.control.NTxTurn, before.NTxTurn);
    EXPECT_EQ(model.control.XTxLength, before.XTxLength);
    EXPECT_EQ(model.control.YTxLength, 200.0F);
    EXPECT_THAT(unreadTold(),
                ElementsAre("3 fields keep their values, see the log.",
                            "Tx Loop Size x along line: \"\" cannot be read; 100.0 stays.",
                            "# Turns: \"2.5\" cannot be read; 1 stays.",
                            "Transmitter Ramp Time: \"5O\" cannot be read; 50.0 usec stays."));
}

TEST_F(ConfigurationDialogTest, AFieldOfAnotherArrayDoesNotCount) {
    model.control.SurveyTypeIndex = MovingLoop;
    EXPECT_EQ(edit({{Offset, "1.2.3"}, {SurveyArray, "Fixed-Loop"}}), 0);
    EXPECT_THAT(unreadTold(), ElementsAre());
}

TEST_F(ConfigurationDialogTest, SaveAsTakesAPlainNameOnly) {
    const struct {
        const char *typed;
        const char *file; ///< that is written
        bool accepted;
    } cases[] = {
        {"line2", "line2.std", true},
        {" line3.STD ", "line3.std", true},
        {"line4.std.std", "line4.std.std", true},
        {"sub/line5", "line1.std", false},
        {"..\\line6", "line1.std", false},
        {".std", "line1.std", false},
        {"  ", "line1.std", false},
        {"line.7", "line.7.std", true},
    };
    for (const auto &c : cases) {
        messages.infos.clear();
        path = "folder/line1.std";
        EXPECT_EQ(edit({{SaveAs, c.typed}}), 0);
        EXPECT_EQ(path, std::string("folder/") + c.file) << c.typed;
        EXPECT_EQ(written.back(), path);
        EXPECT_EQ(unreadTold().empty(), c.accepted) << c.typed;
    }
}

TEST_F(ConfigurationDialogTest, AProjectThatCannotBeWrittenKeepsItsName) {
    writes = false;
    EXPECT_EQ(edit({{SaveAs, "line2"}}), 0);
    EXPECT_THAT(written, ElementsAre("folder/line2.std"));
    EXPECT_EQ(path, "folder/line1.std");
}

TEST(ConfigurationTable, HasTheLimitsOfTheProjectFile) {
    for (const ControlSpec &row : ConfigurationDialog.controls) {
        const bool number = row.kind == ControlKind::Integer || row.kind == ControlKind::Real ||
                            row.kind == ControlKind::Double;
        EXPECT_EQ(number, !row.key.empty()) << row.id;
    }
}

} // namespace
} // namespace keldrin
