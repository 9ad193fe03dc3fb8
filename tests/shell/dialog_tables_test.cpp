#include "support/dialog_tables.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_model.h"

#include <gtest/gtest.h>

#include <set>

namespace keldrin {
namespace {

TEST(DialogTables, HaveOwnIdsAndAButtonToLeave) {
    std::set<int> numbers;
    for (const DialogSpec *table : DialogTables) {
        const int number = table->number;
        EXPECT_TRUE(numbers.insert(number).second) << number;
        DialogModel dialog = makeDialog(*table);
        std::set<int> ids;
        for (const ControlState &control : dialog.controls) {
            EXPECT_TRUE(ids.insert(control.id).second) << number << ": " << control.id;
            EXPECT_EQ(control.kind == ControlKind::Real || control.kind == ControlKind::Double,
                      !control.format.empty())
                << control.id;
        }
        const bool pressesNone = table->place == DialogPlace::Docked || // by Enter
                                 number == ProgressDialog.number || number == EngineDialog.number;
        const ControlState *button = findControl(dialog, table->defaultButton);
        EXPECT_EQ(button != nullptr && button->kind == ControlKind::Button, !pressesNone) << number;
        EXPECT_NE(closeButtonOf(dialog), 0);
    }
    DialogModel azimuth = makeDialog(LineAzimuthDialog);
    EXPECT_EQ(closeButtonOf(azimuth), ButtonContinue) << "the only way out";
    EXPECT_FALSE(findControl(azimuth, 1060)->enabled);
}

} // namespace
} // namespace keldrin
