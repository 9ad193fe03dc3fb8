#pragma once

#include "toolkit/dialog_form.h"

#include <string>

namespace keldrin {

/// What dialog 150 shows: the windows of the sounding on show.
struct ValuesShown {
    std::string sounding; ///< "Sounding 4 of 24, station 1150"
    TableContent table;
    TableRows rows; ///< selected
};

namespace ValuesControl {
inline constexpr int Table = 1500;
inline constexpr int Mark = 1501;
inline constexpr int Clear = 1502;
inline constexpr int Copy = 1503;
inline constexpr int Close = 1504;
inline constexpr int Sounding = 1505;
} // namespace ValuesControl

extern const DialogForm<ValuesShown> ValuesDialog;

} // namespace keldrin
