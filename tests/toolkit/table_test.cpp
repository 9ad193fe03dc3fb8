#include "toolkit/dialog_form.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/scripted_backend.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace keldrin {
namespace {

struct NamesSample {
    std::vector<std::string> names = {"a", "b\t\"c\"", "d"};
    TableRows rows = {2};
};

TableContent tableOf(const NamesSample &sample) {
    TableContent table;
    table.columns = {{"No.", true}, {"Name\n(of all)", false}};
    for (const std::string &name : sample.names) {
        table.rows.push_back({std::to_string(table.rows.size() + 1), name});
    }
    return table;
}

enum TableId : int { Table = 1, Shut = 2, OtherName = 3 };

constexpr std::array TableControls = {
    ControlSpec{.id = Table,
                .kind = ControlKind::Grid,
                .label = "Names",
                .field = fieldOf<&NamesSample::rows>(),
                .table = givenBy<tableOf>()},
    ControlSpec{.id = Shut, .kind = ControlKind::Button, .label = "Shut"},
};

const DialogForm<NamesSample> TableForm = DialogSpec{.number = 9,
                                                     .caption = "Sample",
                                                     .defaultButton = Shut,
                                                     .controls = TableControls,
                                                     .place = DialogPlace::Beside};

constexpr std::array OtherControls = {
    ControlSpec{.id = OtherName, .kind = ControlKind::Button, .label = "Other"}};
const DialogForm<NamesSample> OtherForm =
    DialogSpec{.number = 8, .caption = "Other", .controls = OtherControls, .inRoot = true};

TEST(TableText, RowsAreNamedByNumbersAndRuns) {
    EXPECT_EQ(rowsText({}), "");
    EXPECT_EQ(rowsText({1, 2, 3, 5, 9, 10}), "1-3,5,9-10");
    EXPECT_EQ(rowsNamed("9,1-3,2", 10), (TableRows{1, 2, 3, 9}));
    EXPECT_EQ(rowsNamed("all", 3), (TableRows{1, 2, 3}));
    EXPECT_EQ(rowsNamed("none", 3), TableRows{});
    for (const char *text :
         {"", "0", "4", "2-4", "3-1", "1,", "1;2", "-1", "x", "1 2", "99999999999"}) {
        EXPECT_EQ(rowsNamed(text, 3), std::nullopt) << text;
    }
}

TEST(TableText, TabsAndLineEndsOfCellsDoNotMakeNewCells) {
    const NamesSample sample;
    EXPECT_EQ(tabbedText(tableOf(sample), {2, 3}), "No.\tName (of all)\n2\tb \"c\"\n3\td\n");
    EXPECT_EQ(tabbedText(tableOf(sample), {}).size(),
              std::string_view("No.\tName (of all)\n1\ta\n2\tb \"c\"\n3\td\n").size());
}

TEST(TableDialog, ShowsItsRecordAndTellsWhatIsSelected) {
    toolkitState() = ToolkitState{};
    NamesSample sample;
    openDialog(TableForm, sample, DialogModeless);
    DialogModel &dialog = *topDialog();
    WDialogPointAtRow(Table, 3);
    userSelectsRows(dialog, Table, {1, 3, 7});
    ToolkitEvent event;
    ASSERT_TRUE(ToolkitPeekEvent(event));
    EXPECT_EQ(event.type, EventFieldChange);
    EXPECT_EQ(event.window, 9);
    EXPECT_TRUE(readField(TableForm, Table, sample));
    EXPECT_EQ(sample.rows, (TableRows{1, 3})) << "row 7 is not there";
    EXPECT_EQ(findControl(dialog, Table)->index, 3) << "the selection moves no pointer";
    userSelectsRows(dialog, Table, {1, 3});
    EXPECT_FALSE(ToolkitPeekEvent(event)) << "nothing has changed";

    sample.names = {"other"};
    sample.rows = {};
    putFields(TableForm, sample);
    EXPECT_EQ(findControl(dialog, Table)->rows, TableRows{});
    EXPECT_EQ(findControl(dialog, Table)->index, 0) << "row 3 is gone";
    EXPECT_EQ(findControl(dialog, Table)->table.rows.size(), 1U);
    toolkitState() = ToolkitState{};
}

std::string played(const std::string &scenario, const std::function<void()> &program) {
    Script script;
    EXPECT_TRUE(parseScript(scenario, script).empty());
    std::ostringstream out;
    ScriptedBackend backend(std::move(script), out);
    ToolkitInit(backend, {"keldrin"});
    program();
    EXPECT_EQ(ToolkitClose(), 0) << out.str();
    return out.str();
}

TEST(TableDialog, AScenarioSelectsRowsExpectsCellsAndReachesTheDialogBelow) {
    std::vector<int> events;
    const std::string transcript =
        played("set 1 1,3\n"
               "show dialog\n"
               "expect row 1 2 \"2\" \"b \\\"c\\\"\"\n"
               "expect field 1 grid on \"Names\" = \"1,3\"\n"
               "press Other\n"
               "set 1 none\n"
               "expect | 3?d\n"
               "close dialog\n"
               "press Other\n",
               [&] {
                   NamesSample sample;
                   openDialog(OtherForm, sample, DialogModeless);
                   openDialog(TableForm, sample, DialogModeless);
                   for (int i = 0; i < 5; ++i) {
                       ToolkitEvent event;
                       ToolkitNextEvent(event);
                       events.push_back(event.window * 10 + event.value);
                       if (event.value == Table) {
                           WDialogSelect(TableForm.number);
                           readField(TableForm, Table, sample);
                           ToolkitCopyText(tabbedText(tableOf(sample), sample.rows));
                       }
                       if (event.value == Shut) {
                           closeDialog(TableForm);
                       }
                   }
               });
    EXPECT_EQ(events, (std::vector<int>{91, 83, 91, 92, 83})) << transcript;
    EXPECT_NE(transcript.find("head 1 \"No.\" \"Name (of all)\"\nrow 1 1 \"1\" \"a\"\n"),
              std::string::npos)
        << transcript;
}

} // namespace
} // namespace keldrin
