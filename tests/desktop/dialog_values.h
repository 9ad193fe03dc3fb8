#pragma once

#include "toolkit/dialog_model.h"
#include "toolkit/field_number.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace keldrin::test {

/// What a control of a dialog holds: a number, a text or an entry of a list as it is read on the
/// screen, "on", or for a static another text.
struct ControlValue {
    int dialog = 0;
    int id = 0;
    std::string_view text;
};

/// Values of a survey as the program would put them, for every dialog.
inline constexpr ControlValue SurveyValues[] = {
    {101, 1082, "8040N FXL"},
    {101, 1083, "1.0E4"},
    {101, 1116, "1.0E4"},
    {101, 1117, "31.4"},
    {101, 1114, "-12500.25"},
    {101, 1115, "1"},
    {101, 1118, "0"},
    {101, 1119, "25"},
    {102, 1057, "13"},
    {102, 1069, "24"},
    {102, 1401, "13 of 24  Stn 8150"},
    {103, 1054, "dBz/dt (nV/Am2)"},
    {103, 1027, "1.0E4"},
    {103, 1045, "0"},
    {103, 1062, "10"},
    {103, 1063, "0.01"},
    {103, 1056, "Depth (m)"},
    {103, 1064, "0"},
    {103, 1065, "-420"},
    {103, 1066, "1000"},
    {103, 1080, "10"},
    {104, 1085, "2"},
    {104, 1086, "26"},
    {104, 3086, "of 26"},
    {104, 1087, "on"},
    {104, 1051, "3.5"},
    {104, 1088, "on"},
    {145, 1085, "2"},
    {145, 1086, "26"},
    {145, 3086, "of 26"},
    {145, 1087, "on"},
    {145, 1051, "3.5"},
    {145, 1088, "on"},
    {145, 1450, "on"},
    {145, 1451, "0.1"},
    {145, 1452, "-0.5"},
    {145, 1453, "on"},
    {145, 1454, "2"},
    {145, 1455, "on"},
    {145, 1456, "3"},
    {145, 1457, "on"},
    {145, 1462, "Skips 1700 of 53248 windows, some by several rules:"},
    {145, 1460, "error 1041, negative 129, slope 319, range 211"},
    {145, 1461, "noise floor 1305, curvature 1303, neighbours 1207, later windows 1412"},
    {145, 1463, "1021 other windows are skipped now and come back."},
    {106, 1061, "Match this Tx.Shape label"},
    {106, 1091, "Sqare"},
    {106, 1092, "Square"},
    {108, 1001, "Gravel Flat water survey  Line 8040N"},
    {108, 1003, "for Lower Valley Water Board"},
    {108, 1004, "Data from fixedloop.avg"},
    {108, 1071, "Gravel Flat water survey"},
    {108, 1100, "Gravel Flat"},
    {108, 1101, "Lower Valley Water Board"},
    {108, 1102, "Crew 2"},
    {108, 1072, "8040N"},
    {108, 1104, "8040"},
    {108, 1106, "90"},
    {108, 1108, "25"},
    {108, 1006, "m"},
    {108, 1008, "Fixed-Loop"},
    {108, 1011, "0"},
    {108, 1015, "400"},
    {108, 1016, "300"},
    {108, 1078, "90"},
    {108, 1024, "1"},
    {108, 1025, "150"},
    {108, 1026, "4"},
    {108, 1122, "1"},
    {108, 1046, "5000"},
    {108, 1047, "8000"},
    {108, 1032, "1"},
    {108, 1038, "3"},
    {108, 1037, "1"},
    {108, 1041, "8"},
    {108, 1051, "100"},
    {108, 1043, "fixedloop"},
    {121, 1130, "rkeldrin inverts fixedloop.std"},
    {122, 1130, "Sounding 12 of 24"},
    {110, 1060, "63"},
    {110, 1048, "90"},
};

inline std::vector<std::string> entriesOf(int list) {
    switch (list) {
    case 1006:
        return {"m", "ft"};
    case 1008:
        return {"Fixed-Loop", "Moving-Loop", "In-Loop", "Coincident-Loop"};
    case 1092:
        return {"Point", "Dipole", "Loop", "Square", "Rectangle", "Circle", "Grounded wire"};
    default:
        return {"8040N FXL", "8225N FXL", "T1 MVL", "T2 MVL"};
    }
}

/// Puts the values of SurveyValues into a loaded dialog.
inline void fillDialog(DialogModel &dialog) {
    for (const ControlValue &value : SurveyValues) {
        ControlState *control =
            value.dialog == dialog.number ? findControl(dialog, value.id) : nullptr;
        if (control == nullptr) {
            continue;
        }
        if (isNumberField(control->kind)) {
            putNumber(*control, *typedNumber(value.text, control->kind), control->format);
        } else if (control->kind == ControlKind::List) {
            const std::vector<std::string> entries = entriesOf(value.id);
            const auto chosen = std::find(entries.begin(), entries.end(), value.text);
            putEntries(*control, entries, static_cast<int>(chosen - entries.begin()) + 1);
        } else if (control->kind == ControlKind::Check) {
            control->on = value.text == "on";
        } else if (control->kind == ControlKind::Trackbar) {
            putLimits(*control, 1.0, 24.0);
            control->step = 2;
            control->index = std::stoi(std::string(value.text));
        } else {
            putText(*control, value.text);
        }
    }
}

} // namespace keldrin::test
