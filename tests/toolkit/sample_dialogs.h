#pragma once

#include "toolkit/control_ids.h"
#include "toolkit/dialog_spec.h"

#include <array>

namespace keldrin {

// Dialogs of every kind of control, smaller than the program's own.

namespace sample {

using enum ControlKind;

inline constexpr std::array Fields = {
    ControlSpec{.id = 1072, .kind = Text, .label = "Line Name", .length = 16},
    ControlSpec{.id = 1104, .kind = Real, .label = "Line Number", .format = "(F12.1)"},
    ControlSpec{.id = 1106, .kind = Integer, .label = "Line Azimuth", .limits = {-360.0, 360.0}},
    ControlSpec{.id = 1006, .kind = List, .label = "Length Units", .length = 2},
    ControlSpec{.id = 1008, .kind = List, .label = "TEM Array", .length = 4},
    ControlSpec{
        .id = 1011, .kind = Real, .label = "Tx-Rx Offset (across-line)", .format = "(F12.1)"},
    ControlSpec{.id = 1010, .label = "Tx Loop Size (m)"},
    ControlSpec{.id = 1015,
                .kind = Real,
                .label = "x along line",
                .format = "(F12.1)",
                .limits = {0.1, 990000.0}},
    ControlSpec{.id = 1016,
                .kind = Real,
                .label = "y across line",
                .format = "(F12.1)",
                .limits = {0.1, 990000.0}},
    ControlSpec{.id = 1024, .kind = Integer, .label = "# Turns"},
    ControlSpec{.id = 1025,
                .kind = Real,
                .label = "Transmitter Ramp Time",
                .format = "(F12.1)",
                .unit = "usec",
                .limits = {0.1, 990000.0}},
    ControlSpec{.id = 1026,
                .kind = Real,
                .label = "Transmitter Frequency",
                .format = "(0P,G12.4E1)",
                .unit = "Hz"},
    ControlSpec{.id = 1122, .kind = Double, .label = "Tx.Stn =Tx ID", .format = "(F14.1)"},
    ControlSpec{.id = 1032,
                .kind = Real,
                .label = "Background Model Weighting",
                .format = "(0P,G12.4E1)",
                .limits = {0.01, 100.0}},
    ControlSpec{.id = 1043, .kind = Text, .label = "Save As", .unit = ".std", .length = 255},
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

inline constexpr std::array Areas = {
    ControlSpec{.id = 1082, .kind = List, .label = "Select Line", .length = 32},
    ControlSpec{.id = 1083,
                .kind = Real,
                .label = "along-line X",
                .format = "(1P,G14.4E1)",
                .unit = "m^2",
                .limits = {0.1, 9.9E9}},
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

inline constexpr std::array Names = {
    ControlSpec{.id = 1091, .kind = Text, .enabled = false},
    ControlSpec{.id = 1092, .kind = List, .length = 16, .rows = 16},
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

inline constexpr std::array Azimuths = {
    ControlSpec{.id = 1060, .kind = Integer, .label = "Stn file trend", .enabled = false},
    ControlSpec{.id = 1048, .kind = Integer, .label = "Line azimuth", .limits = {-360.0, 360.0}},
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
};

inline constexpr std::array Stations = {
    ControlSpec{.id = 1057, .kind = Trackbar, .limits = {1.0, 2.0}},
    ControlSpec{.id = 1068, .kind = Button, .label = "E&xit Review"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel Changes", .sameRow = true},
};

inline constexpr std::array Work = {
    ControlSpec{.id = WorkWords},
    ControlSpec{.id = WorkBar, .kind = Bar},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Stop"},
};

} // namespace sample

inline constexpr DialogSpec SampleFields = {108, "Verify TEM survey configuration", ButtonContinue,
                                            sample::Fields};
inline constexpr DialogSpec SampleAreas = {101, "Verify data input parameters.", ButtonContinue,
                                           sample::Areas};
inline constexpr DialogSpec SampleNames = {106, "Select matching label", ButtonContinue,
                                           sample::Names};
inline constexpr DialogSpec SampleAzimuths = {110, "Verify line azimuth", ButtonContinue,
                                              sample::Azimuths};
inline constexpr DialogSpec SampleStations = {102, "Review TEM data and models", 0,
                                              sample::Stations};
inline constexpr DialogSpec SampleWork = {121, "Inversion is running", 0, sample::Work};

} // namespace keldrin
